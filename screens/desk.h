// SPDX-License-Identifier: GPL-3.0-or-later
/// The desktop's one design: the screens own it and hand it down to the routines below.
#pragma once

#include "core/design_state.h"

namespace lobemax::screens {

/// The design on the desk.
extern Design_State design;

}  // namespace lobemax::screens
