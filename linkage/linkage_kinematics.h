// SPDX-License-Identifier: GPL-3.0-or-later
/// The linkage that an oscillating follower drives: a fourbar, a sixbar (Watt or Stephenson), and either ending in a
/// slider. Position, velocity and acceleration of every link over the cycle, and the ratios of the last link's motion
/// to the arm's.
///
///   Linkage_Type  train             links
///   0             fourbar           1 ground, 2 on the arm, 3 coupler, 4 rocker
///   1             sixbar            the same, then 5 coupler, 6 rocker; Watt: 5 hangs on link 4 at D, Stephenson: on
///                                   link 3
///   2             fourbar slider    2 on the arm, 3 coupler, 4 slider
///   3             sixbar slider     the fourbar, then 5 coupler on link 4 at D, 6 slider
///
/// Angles of the first stage count from the line of its pivots, those of a second stage from the line O4 to O6, those
/// of a slider stage from the slider's axis; all counterclockwise. Lengths in the design's unit, Omega in rad/s, Alpha
/// in rad/s^2; a slider's row has its place on the axis, its velocity and acceleration. Source: docs/theory.md, 13.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/basic_types.h"
#include "core/design_state.h"
#include "core/surface.h"
#include "linkage/linkage_rows.h"

namespace lobemax {

/// Six links, or four.
bool Six_Links(const Design_State& design);
/// Whether the last link slides.
bool Ends_in_Slider(const Design_State& design);
/// A sixbar whose second stage hangs on the coupler.
bool Is_Stephenson(const Design_State& design);
/// The number of the last link: row of the Link tables.
int Last_Link(const Design_State& design);
/// The number of the link that carries D, where a second stage hangs: 4, of a Stephenson train 3.
int Link_of_D(const Design_State& design);

inline constexpr int First_Moving_Link = 2;  // on the arm

/// One link at one instant.
struct Link_Motion {
    double theta = 0.0;  // radians; of a slider the place on its axis
    double omega = 0.0;
    double alpha = 0.0;
};

/// The input of a train: link 2, counted from the line of pivots.
struct Link_Input {
    double theta2 = 0.0;  // radians
    double omega2 = 0.0;
    double alpha2 = 0.0;
};

/// A train at one instant.
struct Train_Pose {
    std::array<Link_Motion, Max_Links + 1> link{};   // by number, from 2 on
    std::array<World_Point, Max_Links + 1> point{};  // by link_point
    int fails_at = 0;                                // the stage that cannot connect, 1 or 2; 0: the train is whole
    bool slider_fails = false;                       // that stage ends in the slider
    bool dead_centre = false;                        // it connects, but its velocities have no limit: they are 0 here

    bool Connects() const { return fails_at == 0; }
};

/// The dimensions of a train, taken once from the design, and its pose for any input.
class Linkage_Train {
public:
    explicit Linkage_Train(const Design_State& design);

    Train_Pose At(const Link_Input& input) const;
    /// Direction of the line of pivots, radians.
    double Theta1() const { return theta1_; }

    Train_Kind Kind() const { return kind_; }
    const formulas::Train& Formula() const { return train_; }

private:
    Train_Kind kind_;
    double theta1_;
    formulas::Train train_;
};

/// Arm angle at rest in degrees: from the arm's pivot to the roller centre where the follower starts. Arm_Geometry's
/// start point on a radial cam, the arm's own angle at zero displacement on the others. @throws Fault{5}, Fault{11}
/// where arm and cam close no triangle
double Arm_Angle_at_Rest(Design_State& design);

/// The input at point i, variables 1 to 3 brought to radians and seconds.
///
/// Omega2 and Alpha2 take one factor in the bases of degrees and of radians, and no sign of the arm's direction: meant.
/// Mechanics has both 57.3 times as large in the base of degrees, and those of a clockwise arm negative: rates of its
/// links have the other sign, and what accelerations have of the square of the speed counts against the rest.
/// True_Input has them so.
Link_Input Input_at(const Design_State& design, double rest, int i);
/// The same by what is constant of it over a design.
formulas::Arm_Input Arm_Input_of(const Design_State& design, double rest);
Link_Input Input_at(const Design_State& design, const formulas::Arm_Input& input, int i);
/// The same as mechanics has it.
Link_Input True_Input(const Design_State& design, double rest, int i);

/// The line of pivots from ArmX, ArmY to O4x, O4y.
struct Ground_Line {
    Single length;
    Single direction;  // degrees
};
Ground_Line Ground_of(const Design_State& design);

/// Theta1 and Link 1 are those of the line of pivots; O4D.
void Set_Ground(Design_State& design);

/// Why the train cannot be calculated: a length that is missing, in one sentence. Empty: it can.
std::string Missing_Length(const Design_State& design);

/// One point, while the train is moved by hand: Link tables and working values. A pose that does not connect keeps that
/// of the point before. Under its trap.
/// @param answer  3 Abort, 4 Retry (ask), 5 Ignore; what the user answered last
/// @return false after Abort, after a slider that has no place, and after a fault
bool Calc_Linkage_At(Design_State& design, int point, Integer& answer);

/// All points, the end effector's ratios, and Linkage_Calc. Points that do not connect keep the pose before, at rest;
/// Link_Broken counts them, Link_Indeterminate those at a dead centre, which have no velocities. Under its trap.
/// @return whether Linkage_Calc was reached
bool Calc_Linkage_All(Design_State& design, Integer& answer);

/// "Linkage cannot connect ...": Abort, Retry or Ignore into the answer. @param angle  degrees
void Report_No_Connect(const Design_State& design, double angle, Integer& answer);
void Report_No_Connect_Stage(const Design_State& design, int stage, double angle, Integer& answer);

/// Link_Ratio_S, _V and _A over all points: last link's motion over the arm's, each normalised by its range or peak.
/// (195) to (198).
void Normalize_Ratios(Design_State& design);

/// A value with the cam angle, degrees, where it occurs.
struct At_Angle {
    double value = 0.0;
    double angle = 0.0;
};
/// Least and largest of the last link's position (degrees without jumps, or length), velocity and acceleration.
struct Effector_Summary {
    std::array<At_Angle, 3> least{};
    std::array<At_Angle, 3> largest{};
};
Effector_Summary Summary_of_Effector(const Design_State& design);

/// The last link's peak velocity and acceleration as mechanics has them, beside those of the tables; none where both
/// agree: derivatives per second or radian and a counterclockwise arm.
struct Effector_Truth {
    double velocity = 0.0;
    double acceleration = 0.0;
    double stored_velocity = 0.0;
    double stored_acceleration = 0.0;
};
std::optional<Effector_Truth> Truth_of_Effector(Design_State& design);

/// With the end effector driven: how far its motion misses the wanted one once the arm moves by the displacement over
/// the ratio, the largest over the cycle as a share of the stroke. (199)
double Error_of_Driving(Design_State& design);

/// A row of angles without its jumps of a turn, degrees.
std::vector<double> Unwrapped(std::span<const Single> angles);

}  // namespace lobemax
