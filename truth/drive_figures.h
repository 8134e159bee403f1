// SPDX-License-Identifier: GPL-3.0-or-later
/// What the drive of a cam has to give: torque, power, energy and the flywheel, in SI units whatever the design's are.
/// docs/theory.md, 19.
#pragma once

#include <optional>

namespace lobemax {

struct Design_State;

/// Of one torque over the cycle: N-m, W, J. (276) to (280)
struct Torque_Figures {
    double mean = 0.0;
    double rms = 0.0;
    double peak = 0.0;        // of the largest amount, signed
    double peak_angle = 0.0;  // degrees
    double power_mean = 0.0;
    double power_peak = 0.0;    // of the largest amount, signed
    double energy_swing = 0.0;  // largest less smallest of the work integral about the mean
    // kg-m^2 for the coefficient of fluctuation at the speed of the shaft; none without one of them
    std::optional<double> flywheel;
};

struct Drive_Figures {
    Torque_Figures torque;         // row 8
    Torque_Figures with_friction;  // row 8 and row 15, which hinders
    double inertia_peak = 0.0;     // of the follower at the shaft, kg-m^2: m (dx/dtheta)^2, (282)
    double inertia_mean = 0.0;
};

/// Of a design whose forces are calculated and in the units of the design; none otherwise.
std::optional<Drive_Figures> Find_Drive_Figures(const Design_State& design);

/// What a torque row of the design is worth in N-m: rows of metric systems are in N-m, whatever their length is.
double Newton_Metres(const Design_State& design);

inline constexpr double Watts_per_Horsepower = 745.6998715822702;
inline constexpr double Newton_Metres_per_Inch_Pound = 0.1129848290276167;

}  // namespace lobemax
