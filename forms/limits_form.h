// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of the limits without its window. Values stand in the units of the design on the desk.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"
#include "truth/limits.h"

namespace lobemax {

/// Every captioned control of the screen but the lines of the limits.
std::span<const Form_Control> Controls_of_Limits();

/// What a line tells of its limit on its tip.
std::string Tip_of_Limit(const Design_State& design, Limit limit);

/// A limit's box and entry.
struct Limit_Line {
    bool on = false;
    std::string text;
};
/// The lines of limits; one that is off is empty.
std::array<Limit_Line, Limit_Count> Lines_of_Limits(const Design_State& design, const Limits& limits);

/// An entry: the limit takes it. A refused one shows its message and what the limit was before.
Form_Entry Enter_Limit(const Design_State& design, Limits& limits, Limit limit, std::string_view text);

/// A ticked box: the limit takes what its entry holds, its usual value where that is empty and there is one.
/// @return whether it is on; else its entry waits for a value
bool Turn_On(const Design_State& design, Limits& limits, Limit limit, std::string_view text);

/// OK: whether every ticked limit has a value; the first that has none is told and named.
bool Limits_Are_Whole(const Design_State& design, std::span<const Limit_Line, Limit_Count> lines, Limit& missing);

}  // namespace lobemax
