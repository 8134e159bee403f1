// SPDX-License-Identifier: GPL-3.0-or-later
/// The extremes of calculated rows over the cycle, with their cam angles.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

struct Row_Extremes {
    int row = 0;
    std::string name;  // "Velocity"
    std::string unit;
    Single smallest;
    Single smallest_at;  // degrees
    Single largest;
    Single largest_at;
};

/// Of the rows, in their order. The unit is that of the row's axis.
std::vector<Row_Extremes> Extremes_of(const Design_State& design, std::span<const int> rows);

/// Of displacement and its derivatives, force, torque and stress, the dynamic force after a vibration, as far as they
/// are calculated. Torques of the metric systems have the unit that they are in, N-m.
std::vector<Row_Extremes> Main_Extremes(const Design_State& design);

}  // namespace lobemax
