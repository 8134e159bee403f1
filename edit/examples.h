// SPDX-License-Identifier: GPL-3.0-or-later
/// The library of example designs, each by its list text.
#pragma once

#include <array>
#include <string_view>

namespace lobemax {

struct Design_State;

/// List texts of the nine examples, in the order of the examples menu.
inline constexpr std::array<std::string_view, 9> Example_Names{
    "Single Dwell",  "Double Dwell",  "Flat Follower", "Four Dwell",   "Oscillating",
    "4-bar Linkage", "6-bar Linkage", "4-bar Slider",  "6-bar Slider",
};

/// Puts an example's inputs into a fresh design, in the unit system in force; nothing is calculated.
/// @return false, and the design as it was, when there is no example of that name
bool Load_Example(Design_State& design, std::string_view name);

/// Loads an example and calculates its motion alone.
bool Build_Example(Design_State& design, std::string_view name);

/// Calculates the motion of an example that was loaded; no later rung's flag is set.
bool Calculate_Example(Design_State& design);

}  // namespace lobemax
