// SPDX-License-Identifier: GPL-3.0-or-later
/// The drawing of a cam with its follower, onto any surface: outline, prime circle, shaft with keyway, follower on a
/// stem or an arm, and the paths on request. A linear cam is a flat strip; a barrel cam is not drawn.
///
/// World coordinates are length units, the cam centre at the origin. The surface's y runs downward, so every y is drawn
/// as Flip_Y - y. A translating follower stands at Follower_Angle from the x axis, and the cam turned with it.
#pragma once

#include <span>

#include "core/surface.h"

namespace lobemax {

struct Design_State;

/// A part of the cycle whose outline is drawn thick, in the ink of a warning, over the rest of it: degrees of cam; to
/// is below from where it runs over the end of the turn.
struct Cam_Stretch {
    double from = 0.0;
    double to = 0.0;
};

/// Base_Circle: prime radius less the roller's. @return false, after a message, where it is not positive
bool Set_Base_Circle(Design_State& design);

/// World window around the whole mechanism, with margin and zoom: View_Left, View_Right, Flip_Y.
void Set_Scale(Design_State& design, Surface& surface);

/// The strip of a linear cam with its track. @return false, after a message, for a flat follower
bool Plot_Cam_Setup(Design_State& design, Surface& surface);

/// The cam with its follower as the sizing screen shows it; false where there is nothing to draw.
bool Draw_Cam_Preview(Design_State& design, Surface& surface);

/// The two halves of it, for a window that repaints itself: whether there is something to draw, told once where sizes
/// forbid it, and the drawing without a word, which is empty then.
bool Cam_Preview_Possible(Design_State& design);
void Repaint_Cam_Preview(Design_State& design, Surface& surface, std::span<const Cam_Stretch> warned = {});

/// How the full drawing is shown: in a window that holds the cam in all its positions, so that it stands still when the
/// cam turns, with the follower or cutter of a path all around, one each Path_Step degrees, and with a warning where
/// the outline must not be cut so.
struct Cam_View {
    bool turning_window = false;
    bool whole_paths = false;
    std::span<const Cam_Stretch> warned = {};
};

/// The full drawing: the follower and, each by its flag, the cam's outline (Show_Surface), the follower's or the
/// cutter's path (Show_Follower_Path, Show_Cutter_Path), and the surface at machine zero (Show_Cam_Key).
///
/// A path starts with 3 x Path_Step / Deltatheta outlines of the follower or cutter, from the second point on, unless
/// the view wants them all around.
bool Draw_Cam(Design_State& design, Surface& surface, const Cam_View& view = {});

/// The cam turned until point i lies under the follower, which stands on its axis, or its arm about its pivot, as in
/// the machine. The window holds all positions. @return false where there is nothing to draw or no such point
bool Draw_Cam_at(Design_State& design, Surface& surface, int i, std::span<const Cam_Stretch> warned = {});

/// The parts of it for a scene that holds more than the cam, in a window that stands: whether the base circle is a
/// circle, without a word; shaft with keyway, and outline, of a radial cam turned for point i.
bool Find_Base_Circle(Design_State& design);
void Draw_Turned_Shaft(Design_State& design, Surface& surface, int i);
void Draw_Turned_Outline(Design_State& design, Surface& surface, int i);

/// Shaft, prime circle (Show_Prime), base circle and keyway. The keyway's angle in degrees is that of Cam_Draw_Angle:
/// from the follower's axis, against the cam's turning.
void Draw_Shaft(Design_State& design, Surface& surface, double angle);
/// A mark of the keyway's direction on a radius; direction +1 or -1 is the sense of the angle.
void Draw_Keyway_Marker(Design_State& design, Surface& surface, double angle, double radius, double direction);
void Draw_Roller(Design_State& design, Surface& surface, double x, double y, double radius, Ink ink);
/// The follower while point i is under it.
void Draw_Follower_Translating(Design_State& design, Surface& surface, int i = 0);
void Draw_Follower_Arm(Design_State& design, Surface& surface, int i = 0);

/// The pen to point i of a path.
void Trace_Roller_Point(Design_State& design, Surface& surface, int i);
void Trace_Cutter_Point(Design_State& design, Surface& surface, int i);
void Trace_Surface_Point(Design_State& design, Surface& surface, int i);
void Trace_Key_Point(Design_State& design, Surface& surface, int i);

}  // namespace lobemax
