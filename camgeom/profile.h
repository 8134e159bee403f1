// SPDX-License-Identifier: GPL-3.0-or-later
/// Manufacturing coordinates of the cam at every point of the cycle: roller centre, surface and cutter centre, versus
/// cam zero, where the displacement diagram starts, and versus machine zero, turned by the cam start angle.
///
/// Radial cams: rows 9, 10 roller centre x, y (flat face: its foot point); 11, 12 its polar form; 13, 14 and 34, 35 the
/// same versus machine zero; 36, 37 surface and 38, 39 surface versus machine zero; 40, 41 cutter centre.
/// Barrel and linear cams: 11 Z and 12 Lambda of the roller centre, 36 and 37 of the surface, all others zero.
/// Lengths in the length unit, angles in degrees; Lambda of a linear cam is a length.
#pragma once

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// Fills the rows above and Arm_Pivot_X, Arm_Pivot_Y, the arm's pivot in the turning cam's frame. Reads Phi. Calc_Error
/// tells that a formula could not be evaluated; a prime radius of zero is told by a message. Nothing while Starting.
/// Source: docs/theory.md, (92) to (105).
void Cam_Profile(Design_State& design);

/// Keyway_Clockangle, degrees, from Keyway_Text and the sense of rotation; any other text gives 0. docs/theory.md,
/// (101).
void Set_Keyway_Angle(Design_State& design);

/// Cam_Shift_Angle, from the follower's frame to the start of the cam, and Cam_Draw_Angle with the keyway, degrees.
/// docs/theory.md, (100), (101).
void Set_Machine_Zero(Design_State& design);

/// Contact point on the surface of a barrel or linear cam: Z, and Lambda in degrees. docs/theory.md, (102), (103).
///
/// With an arm the surface stands square to the stored track for Rotflag = ArmDirect = sgn(ArmX) only: meant, up to a
/// roller radius out of place otherwise, where mechanics takes the normal of the track; a translating cam is exact.
///
/// @param sign          side of the roller, +1 or -1
/// @param normal_angle  degrees, of the contact normal; an arm finds its own
/// @return              false, with Calc_Error, for a prime radius of zero, after a message
struct Axial_Surface {
    double Z = 0.0;
    double Lambda = 0.0;
};
bool Axial_Surface_Point(Design_State& design, double sign, int i, double Z, double Lambda, double normal_angle,
                         double Follow_Rad, Axial_Surface& point);

/// Surface point and cutter centre of a radial cam: both on the contact normal through the roller centre (X, Y), the
/// surface a roller radius from it, the cutter the roller radius less its own. A cutter of the roller's size therefore
/// runs on the roller centre's path, one of radius 0 on the surface. docs/theory.md, (95), (96). Zeros while Starting.
///
/// @param nu  degrees, direction of the normal; sign tells on which side the cam lies
struct Surface_Cutter {
    double Xs = 0.0;
    double Ys = 0.0;
    double Xc = 0.0;
    double Yc = 0.0;
};
Surface_Cutter Surface_Cutter_Point(const Design_State& design, double sign, double X, double Y, double nu,
                                    double radius, double Cutter);

}  // namespace lobemax
