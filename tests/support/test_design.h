// SPDX-License-Identifier: GPL-3.0-or-later
/// The design that a test works on: the desktop's own where screens are tested, else one of the tests.
#pragma once

#ifdef LOBEMAX_DESKTOP_TESTS

#include "screens/desk.h"

namespace lobemax {
using screens::design;
}  // namespace lobemax

#else

#include "core/design_state.h"

namespace lobemax {
inline Design_State design;
}  // namespace lobemax

#endif
