// SPDX-License-Identifier: GPL-3.0-or-later
/// A second cam on the shaft whose torque is opposite to the inertia torque of the first.
///
/// Its follower train, a mass on a spring with a preload, takes up energy where the primary train gives it back: the
/// sum of both energies is constant, so the shaft feels neither. Only what a train stores can be cancelled; what a
/// damper or friction takes remains. docs/theory.md, 12.
///
/// Reads rows 1 to 3; Calc_Compensation writes rows 48 and 49, Overwrite_Motion rows 1 to 4 and 17.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dynamics/balance_accuracy.h"

namespace lobemax {

inline constexpr int Comp_Points = 360;  // of the cycle, a degree apart

/// A value for each point, the last that of the first again.
using Comp_Row = std::array<double, Comp_Points + 1>;

/// The torque of the primary cam, by points over the cycle, and the train that is to balance it. Lengths are those of
/// the forces: metres, inches or feet.
struct Comp_Balance {
    double omega = 0.0;       // rad/s
    double Deltatheta = 1.0;  // degrees
    double mass = 0.0;
    double spring = 0.0;
    double preload = 0.0;
    double velocity_limit = 0.0;  // Torque_Velocity_Limit, length / s
    Comp_Row torque{};            // force x length
};

/// The primary's torque at a time from the start of the cycle, linear between the points. docs/theory.md, (166).
double Comp_Torque_At(const Comp_Balance& balance, double t);

/// dy for y = position and velocity of the balancing train: the power balance; below the velocity limit, where it
/// cannot be divided by the velocity, a quadratic.
///
/// The quadratic takes the torque where mechanics has its rate of change per second, and meant: it matters for a
/// millionth of the peak velocity. Restarts use the rate. docs/theory.md, (167), (168).
/// @throws Fault{5} below the limit where the quadratic has no real root
void Comp_Derivs(const Comp_Balance& balance, double t, const Balance_State& y, Balance_State& dy);

enum class Comp_Motion_Kind { rise, fall, dwell };
/// "rise", "fall", "dwell"
std::string_view Name_of(Comp_Motion_Kind kind);

/// A run of one sign of the primary's torque.
struct Comp_Motion {
    Comp_Motion_Kind kind;
    double from;        // degrees, 0 to 360
    double to;          // degrees, above from; beyond 360 where the motion crosses the start of the cycle
    double level_from;  // energy of the balancing train at both ends
    double level_to;
};

/// How far a run has got.
struct Comp_Progress {
    Comp_Motion_Kind kind;
    double share;  // of the cycle that is done, 0 to 1
    Long steps;
};

/// The figures of a run that no design keeps.
struct Compensation_Run : Balance_Accuracy {
    std::function<bool(const Comp_Progress&)> progress{};  // true: the user stops the run
};

/// A balancing cam: per second, in the lengths of the forces.
struct Compensation {
    Compensation_Run run;
    Comp_Row S{};
    Comp_Row V{};
    Comp_Row A{};  // central differences of V
    Comp_Row Tp{};
    Comp_Row Tc{};
    Comp_Row net{};
    Comp_Row F{};    // contact force
    Comp_Row phi{};  // degrees, on a cam of the design's present size
    Comp_Row rho{};  // the design's length unit, the same
    std::vector<Comp_Motion> motions;
    double percent = 0.0;         // by which the peak of the torque falls
    double smallest_force = 0.0;  // contact force
    double smallest_angle = 0.0;  // degrees
    double energy_error = 0.0;    // largest distance of a point from the energy level, over the range of the level
    Long steps = 0;
};

/// Whether the stored points are a degree apart; finer ones are told of.
bool Points_a_Degree_Apart(const Design_State& design);

/// The balancing cam of the motion that is stored, under its trap; rows 48 and 49 take its torque and the net torque,
/// Torque_Velocity_Limit a millionth of the primary's peak velocity. A step other than a degree, a shaft that does not
/// turn forward and a torque that is zero or never changes its sign are refused with a message. After a run that ended
/// the user is told where the follower would leave the cam, and what else the figures do not hold for.
///
/// In centimetres and millimetres lengths are brought to metres with derivatives per second alone: meant. Mechanics
/// has metres in every time base; in the others spring and inertia count 100 or 1000 times beside the preload. The
/// user is told.
/// @return false after a message; Calc_Abort is then set where the integration was given up or stopped
bool Calc_Compensation(Design_State& design, const Compensation_Run& run, Compensation& result);

/// The balancing cam in place of the primary's: rows 1 to 3 in the design's units and time base, 4 and 17 the central
/// differences around the cycle of 3 and 4. What follows the motion (Liftmax, the extremes of S) follows.
/// docs/theory.md, (175).
void Overwrite_Motion(Design_State& design, const Compensation& result);

/// Positions that the rows hold, of lengths of the forces: degrees of an arm, or the design's unit by its time base.
double Shown_Length(const Design_State& design, double length);

}  // namespace lobemax
