// SPDX-License-Identifier: GPL-3.0-or-later
/// Cam sizing: pressure angle Phi and radius of curvature Rho of every configuration, with their extremes.
///
/// Everything reads the design state: motion rows 1 to 3, or 22 to 24 of a polydyne cam, and the fields of cam and
/// follower. Phi goes to row 5, degrees, Rho to row 6, length units. Calc_Error tells that a formula could not be
/// evaluated; whoever starts a calculation clears it. While Starting holds nothing is calculated.
///
/// How velocity and acceleration are brought to the cam's radians differs between the configurations; the differences
/// are the system's own and meant.
#pragma once

#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// Fills Phi of all points, then the profile (unless Skip_Profile), then the extremes of Phi; under its trap.
///
/// @param type  Followtype: 1 roller, 2 flat-faced
/// @return      false after a reported fault, which sets Calc_Error too
/// Source: Norton, Cam Design and Manufacturing Handbook, chapter 7 (pressure angle).
bool Calc_Phi(Design_State& design, int type);

/// Fills Rho of all points, then its extremes, then clips the curve at ten prime radii; under its trap. Reads Phi.
///
/// @return false after a reported fault, which sets Calc_Error too, and after a Cancel of the user
/// Source: Norton, Cam Design and Manufacturing Handbook, chapter 7 (radius of curvature).
bool Calc_Rho(Design_State& design, int type);

/// Turns the design to its conjugate cam, whose follower stands opposite and falls while the other rises: Conjugate,
/// Side_Sign, Follower_Angle and, of a translating radial follower, Offset; then Calc_Phi and Calc_Rho. The design's
/// own angle and offset are the caller's to keep.
///
/// @return false when the sizes do not go with a conjugate
bool Use_Conjugate(Design_State& design);

/// Phi of a radial cam with a roller on an arm; Arm_Geometry comes before.
void Autopress(Design_State& design);

/// Tells of a zero divisor of Autopress at the cam angle theta, degrees.
void Autopress_Message(const Design_State& design, std::string_view label, Single theta);

/// The arm with its roller on the prime circle: derived fields Arm_Pivot_Dist to Arm_Work_Angle from ArmX, ArmY, ArmRad
/// and Prime_Rad. An arm or pivot distance of zero sets Calc_Error.
void Arm_Geometry(Design_State& design);

/// Distance of the arm's pivot from the cam centre.
double Arm_Pivot_Distance(const Design_State& design);

/// The triangle of cam centre, arm pivot and roller centre.
struct Arm_Place {
    double tau = 0.0;      // degrees, angle at the cam centre
    double R = 0.0;        // distance of the roller centre from the cam centre
    double theta_c = 0.0;  // degrees, polar angle of the roller centre, 0 to 360
    double Px = 0.0;       // pivot
    double Py = 0.0;
    double X = 0.0;  // roller centre
    double Y = 0.0;
};

/// Solves that triangle for an arm angle gamma at the pivot and a pivot direction delta, both in degrees; leaves
/// Arm_Work_Angle. @return false when the triangle has no side: a message was shown
bool Arm_Position(Design_State& design, double gamma, double delta, Arm_Place& place);

/// Divisors of motion between end effector and follower at a point: 1 unless the end effector is driven, and 1 where
/// the stored ratio is exactly zero.
struct Ratios {
    double S = 1.0;
    double V = 1.0;
    double A = 1.0;
};
Ratios Link_Ratios(const Design_State& design, int i);

/// One point of a barrel or linear cam with an arm. Clears Calc_Error first, and sets it for an arm of zero.
struct Axial_Phi {
    double Phi = 0.0;  // degrees
    double g0 = 0.0;   // degrees, arm angle at zero displacement
    double arm = 0.0;  // degrees, arm angle
};
bool Axial_Osc_Phi(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, Axial_Phi& point);
bool Axial_Osc_Rho(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, double& Rho);

/// Largest and smallest pressure angle, degrees, with their cam angles. The first of equal extremes wins; the largest
/// starts at 0, so it cannot fall below it.
void Phi_Extremes(Design_State& design);

/// Extremes of the radius of curvature: largest and smallest positive, largest and smallest negative, with cam angles
/// and texts, and the smallest of all in magnitude. Zero counts as negative.
void Rho_Extremes(Design_State& design);

/// Limits the stored curve of Rho to -limit..limit, for plotting; the extremes stay what they are.
void Clip_Rho(Design_State& design, double limit);

/// Tells the smallest base circle radius that keeps a flat follower's curvature positive; nothing is changed. Silent
/// while an example or a file is being loaded.
void Flat_Min_Base_Radius(const Design_State& design);

}  // namespace lobemax
