// SPDX-License-Identifier: GPL-3.0-or-later
/// The desktop's one design: the screens own it and hand it down to the routines below.
#pragma once

#include <functional>

#include "core/design_state.h"
#include "edit/history.h"

namespace lobemax::screens {

/// The design on the desk.
extern Design_State design;

/// Its history: what the user can take back.
History& Desk_History();

/// What shall happen after each step of the history; returns what did before.
std::function<void()> On_Step(std::function<void()> work);
/// Calls it.
void Step_Taken();

/// Messages that the user has not sent away for this run of the program.
struct Wanted_Messages {
    bool axial_cam = true;
    bool linear_help = true;
    bool animation_done = true;
};
inline Wanted_Messages wanted_messages;

}  // namespace lobemax::screens
