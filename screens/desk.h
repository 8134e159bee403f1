// SPDX-License-Identifier: GPL-3.0-or-later
/// The desktop's one design: the screens own it and hand it down to the routines below.
#pragma once

#include "core/design_state.h"
#include "edit/history.h"

namespace lobemax::screens {

/// The design on the desk.
extern Design_State design;

/// Its history: what the user can take back.
History& Desk_History();

}  // namespace lobemax::screens
