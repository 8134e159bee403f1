// SPDX-License-Identifier: GPL-3.0-or-later
/// The drawing of a cam with its follower, onto any surface: outline, prime circle, shaft with keyway, follower on a
/// stem or an arm, and the paths on request. A linear cam is a flat strip; a barrel cam is not drawn.
///
/// World coordinates are length units, the cam centre at the origin. The surface's y runs downward, so every y is drawn
/// as Flip_Y - y. A translating follower stands at Follower_Angle from the x axis, and the cam turned with it.
#pragma once

#include "core/surface.h"

namespace lobemax {

/// Base_Circle: prime radius less the roller's. @return false, after a message, where it is not positive
bool Set_Base_Circle();

/// World window around the whole mechanism, with margin and zoom: View_Left, View_Right, Flip_Y.
void Set_Scale(Surface& surface);

/// The strip of a linear cam with its track. @return false, after a message, for a flat follower
bool Plot_Cam_Setup(Surface& surface);

/// The cam with its follower as the sizing screen shows it; false where there is nothing to draw.
bool Draw_Cam_Preview(Surface& surface);

/// The full drawing with the paths that Show_Follower_Path, Show_Cutter_Path, Show_Surface and Show_Cam_Key ask for.
bool Draw_Cam(Surface& surface);

/// Shaft, prime circle (Show_Prime), base circle and keyway, the keyway at an angle in degrees.
void Draw_Shaft(Surface& surface, double angle);
/// A mark of the keyway's direction on a radius; direction +1 or -1 is the sense of the angle.
void Draw_Keyway_Marker(Surface& surface, double angle, double radius, double direction);
void Draw_Roller(Surface& surface, double x, double y, double radius, Ink ink);
void Draw_Follower_Translating(Surface& surface);
void Draw_Follower_Arm(Surface& surface);

/// The pen to point i of a path.
void Trace_Roller_Point(Surface& surface, int i);
void Trace_Cutter_Point(Surface& surface, int i);
void Trace_Surface_Point(Surface& surface, int i);
void Trace_Key_Point(Surface& surface, int i);

}  // namespace lobemax
