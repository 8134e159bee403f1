// SPDX-License-Identifier: GPL-3.0-or-later
/// Cam sizing: pressure angle Phi and radius of curvature Rho of every configuration, with their extremes.
///
/// Everything reads the design state: motion rows 1 to 3, or 22 to 24 of a polydyne cam, and the fields of cam and
/// follower. Phi goes to row 5, degrees, Rho to row 6, length units. Calc_Error tells that a formula could not be
/// evaluated; whoever starts a calculation clears it. While Starting holds nothing is calculated.
///
/// How velocity and acceleration are brought to the cam's radians differs between the configurations; the differences
/// are meant; docs/theory.md, 5 and 6.3.
#pragma once

#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// Fills Phi of all points, then the profile (unless Skip_Profile), then the extremes of Phi; under its trap.
///
/// @param type  Followtype: 1 roller, 2 flat-faced
/// @return      false after a reported fault, which sets Calc_Error too
/// Source: docs/theory.md, (66), (72), (79), (90).
bool Calc_Phi(Design_State& design, int type);

/// Fills Rho of all points, then its extremes, then clips the curve at ten prime radii; under its trap. Reads Phi.
///
/// @return false after a reported fault, which sets Calc_Error too, and after a Cancel of the user
/// Source: docs/theory.md, (68), (70), (73), (81), (82), (87), (91).
bool Calc_Rho(Design_State& design, int type);

/// Turns the design to its conjugate cam, whose follower stands opposite and falls while the other rises: Conjugate,
/// Side_Sign, Follower_Angle and, of a translating radial follower, Offset; then Calc_Phi and Calc_Rho. The design's
/// own angle and offset are the caller's to keep.
///
/// @return false when the sizes do not go with a conjugate
bool Use_Conjugate(Design_State& design);

/// Phi of a radial cam with a roller on an arm, degrees, all points; Arm_Geometry comes before. docs/theory.md, (78),
/// (79).
///
/// A point whose divisor is zero keeps its former Phi, after a message. A conjugate adds its displacement: meant.
/// Mechanics has Liftmax - s; -33.06 deg for -24.95 in section 7.2's design.
void Autopress(Design_State& design);

/// Tells of a zero divisor of Autopress at the cam angle theta, degrees.
void Autopress_Message(const Design_State& design, std::string_view label, Single theta);

/// Largest and smallest pressure angle, degrees, with their cam angles. The first of equal extremes wins; the largest
/// starts at 0, so it cannot fall below it.
void Phi_Extremes(Design_State& design);

/// Extremes of the radius of curvature: largest and smallest positive, largest and smallest negative, with cam angles
/// and texts, and the smallest of all in magnitude. Zero counts as negative.
void Rho_Extremes(Design_State& design);

/// Limits the stored curve of Rho to -limit..limit, for plotting; the extremes stay what they are.
void Clip_Rho(Design_State& design, double limit);

/// Tells the smallest base circle radius that keeps a flat follower's curvature positive; nothing is changed. Silent
/// while an example or a file is being loaded. docs/theory.md, (71).
///
/// The acceleration is divided by the square of the shaft speed in every time base: meant. It is right in seconds only;
/// in the others the radius told is too small by nearly the whole of the acceleration's share.
void Flat_Min_Base_Radius(const Design_State& design);

}  // namespace lobemax
