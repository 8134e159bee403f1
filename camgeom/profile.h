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
/// Source: Norton, Cam Design and Manufacturing Handbook, chapter 13 (cam contours).
void Cam_Profile(Design_State& design);

/// Keyway_Clockangle, degrees, from Keyway_Text and the sense of rotation; any other text gives 0.
void Set_Keyway_Angle(Design_State& design);

/// Cam_Shift_Angle, from the follower's frame to the start of the cam, and Cam_Draw_Angle with the keyway, degrees.
void Set_Machine_Zero(Design_State& design);

/// Roller centre of a barrel or linear cam with an arm, at point i.
struct Axial_Coords {
    double arm = 0.0;     // degrees, arm angle
    double Z = 0.0;       // length
    double Lambda = 0.0;  // degrees
};
bool Axial_Osc_Coords(Design_State& design, int i, double Prime_Rad, double ArmX, double ArmY, double ArmRad,
                      Axial_Coords& point);

/// Contact point on the surface of a barrel or linear cam: Z, and Lambda in degrees.
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
/// runs on the roller centre's path, one of radius 0 on the surface.
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

/// Contact of a flat face on an arm, in the cam's frame, at point i: foot point, contact point and the angles of the
/// triangle, degrees. @return false, with Calc_Error, where the pivot stands on the cam centre
struct Flat_Contact {
    double Xf = 0.0;
    double Yf = 0.0;
    double Xc = 0.0;
    double Yc = 0.0;
    double pivot_angle = 0.0;
    double start_angle = 0.0;
    double arm = 0.0;
    double direction = 0.0;
};
bool Flat_Osc_Contact(Design_State& design, int i, double ArmX, double ArmY, Flat_Contact& contact);

}  // namespace lobemax
