// SPDX-License-Identifier: GPL-3.0-or-later
/// Force on the follower and torque on the camshaft of a rigid train: the follower moves exactly as the cam commands.
///
/// Reads rows 0 to 3 (motion) and 5 (pressure angle); writes 7 follower force, without the external force; 8 camshaft
/// torque, new or accumulated; 15 friction torque; 16 flywheel torque; 45 integral of this run's torque, torque x
/// degree.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

inline constexpr int Max_Pulses = 20;  // of each sign, that the table has room for

/// The torque above and below its mean, run by run, in the order of the cycle.
struct Torque_Pulses {
    int first_sign = 0;                             // +1, -1; 0: undecided, no table
    int rows = 0;                                   // of the table
    int left_out = 0;                               // pulses beyond the room of the table
    std::array<Single, Max_Pulses + 1> positive{};  // areas, torque x degree, from 1
    std::array<Single, Max_Pulses + 1> negative{};
    Single average;                  // torque
    std::vector<std::string> lines;  // as the screen and the reports show them
};

/// What the screen shows beside the curves.
struct Dynamics_Figures {
    Single Fmax;
    Single Fmin;
    Single Tmax;
    Single Tmin;
    bool frequencies = false;  // Omega_N, Omega_D and Critical_Damping hold: there is a spring
    Torque_Pulses pulses;
};

/// What a velocity (order 1) or acceleration (order 2) of a motion row is multiplied with to be one of time. In the
/// degrees base both carry one factor of 180 over pi, as their rows do: docs/theory.md, (41).
double Per_Second(const Design_State& design, int order);

/// The figures of what stands in the rows, under its trap; a fault leaves the rest of them 0.
Dynamics_Figures Present_Figures(Design_State& design);

/// Force, torque, friction, integral and pulses of the whole cycle, under its trap; sets Dynamicflag.
///
/// A spring rate other than zero replaces Damping by Zeta_Initial times the critical damping. In the degrees base
/// inertia carries 180 / pi once, not squared: meant, it undoes the single factor of the rows, docs/theory.md, (41).
/// Friction is reported alone and never enters the torque. The run allocates nothing but for its messages.
/// @return Dynamicflag: false after a fault, and when the user aborted at a separation (Calc_Abort)
/// Source: docs/theory.md, (108) to (119).
bool Calc_Force_Torque(Design_State& design);

/// Average torque and the pulse table of row 8, under its trap; fills row 16 from point 1. A run is decided by the sign
/// of the torque's excess over its mean, zero counting as positive. A fault leaves the lines empty.
Torque_Pulses Show_Torque_Areas(Design_State& design);

/// The question at a point where cam and follower separate; answer 5 (ignore) asks nothing. The answer takes the
/// button: 3 abort, 4 retry, 5 ignore.
/// @param theta  cam angle, degrees
void Check_Separation(const Design_State& design, double theta, Integer& answer);

/// Clears what a new screen must not show: row 7, row 8 unless torques accumulate, and Dynamicflag; row 44 takes the
/// external force. Under its trap.
void Reset_Dynamics(Design_State& design);

}  // namespace lobemax
