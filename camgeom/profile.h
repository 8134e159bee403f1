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

}  // namespace lobemax
