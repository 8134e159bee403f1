// SPDX-License-Identifier: GPL-3.0-or-later
/// The desktop's one design: the screens own it and hand it down to the routines below.
#pragma once

#include <functional>
#include <optional>

#include "core/design_state.h"
#include "edit/history.h"
#include "truth/check.h"

namespace lobemax::screens {

/// The design on the desk.
extern Design_State design;

/// Its history: what the user can take back.
History& Desk_History();

/// What shall happen after each step of the history; returns what did before.
std::function<void()> On_Step(std::function<void()> work);
/// Calls it.
void Step_Taken();

/// The user's limits: the usual ones until the program reads its file.
const Limits& Desk_Limits();
/// Other limits: what keeps them is called.
void Set_Desk_Limits(const Limits& limits);
/// What keeps changed limits; returns what did before. None does until it is set.
std::function<void(const Limits&)> Keep_Limits(std::function<void(const Limits&)> keep);

/// The check of the design on the desk within these limits. It is worked out where one of both has changed since, and
/// takes some milliseconds then: after a calculation, never in an event that paints. The reference holds until then.
const lobemax::Check& Desk_Check();

/// The screen that the user chose among the findings, for the Home screen to open when it is reached again.
std::optional<Finding_Place>& Chosen_Place();

/// Messages that the user has not sent away for this run of the program.
struct Wanted_Messages {
    bool axial_cam = true;
    bool linear_help = true;
    bool animation_done = true;
};
inline Wanted_Messages wanted_messages;

}  // namespace lobemax::screens
