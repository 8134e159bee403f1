// SPDX-License-Identifier: GPL-3.0-or-later
/// What the drive of the cam has to give, in words: for the dynamics screen, `show` and the design report.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "present/report.h"

namespace lobemax {

struct Design_State;

/// A figure of the drive in one unit.
struct Drive_Figure {
    std::string_view name;  // "Mean torque"; the same in each of its units
    std::string unit;       // "N-m"
    double value = 0.0;
    std::optional<double> with_friction;  // none where friction has no part in it
};

/// All figures in the order of their reading: mean, RMS and peak torque, where the peak is, mean and peak power, energy
/// swing, flywheel, and the follower's inertia at the shaft. Inch and foot systems have each in their own units and in
/// SI ones below, power in watts and horsepower; the metric systems in SI units alone. What is less than a millionth of
/// the peak counts as 0: it is rounding of the rows. A figure too large for 32 bits is left out. Empty where the forces
/// are not calculated.
std::vector<Drive_Figure> Figures_of_Drive(const Design_State& design);

/// How a number is written.
using Number_Writer = std::function<std::string(double)>;

/// The figures as a table: figure, unit, without and with friction. A figure in its second unit has no name again.
Report_Table Drive_Table(const std::vector<Drive_Figure>& figures, const Number_Writer& write);

/// The table of the screen, in numbers of four figures and the number format in force, with the note on the unit below.
std::vector<std::string> Drive_Panel(const Design_State& design);

/// What stands below the figures where there is room for words: what they mean, and the note on the unit.
std::vector<std::string> Notes_on_Drive(const Design_State& design);

/// What the word beside a torque row does not say: in centimetres and millimetres it has the design's length, and the
/// values are N-m, for lengths are brought to metres first. Empty where both agree.
std::string Note_on_Torque_Unit(const Design_State& design);

/// The unit that the torque rows really are in: "N-m" of all metric systems, else the word of their row.
std::string Unit_of_Torque_Rows(const Design_State& design);

}  // namespace lobemax
