// SPDX-License-Identifier: GPL-3.0-or-later
/// The drawing of a cam with the linkage that its arm drives, onto any surface, for one position of the cam.
///
/// World coordinates as in camgeom/cam_drawing.h: length units, the cam centre at the origin, y drawn as Flip_Y - y.
/// The pose comes from the train itself and not from the tables: with the end effector driven the arm stands at the
/// displacement over its ratio, as the cam has it.
#pragma once

#include <span>
#include <vector>

#include "core/surface.h"

namespace lobemax {

struct Design_State;

/// Which cam is drawn: that of the size that stands, or, while another choice has taken the size away, the one whose
/// profile the rows still hold. What shows it so draws it as out of date.
enum class Drawn_Cam { sized, of_before };

/// The scale step: a world window that holds cam, arm and links in all positions of the cycle. View_Left, View_Right,
/// Flip_Y. @return false where there is nothing to draw: no size, no motion, or a length is missing
bool Link_Anim_Setup(Design_State& design, Surface& surface, Drawn_Cam cam = Drawn_Cam::sized);

/// One frame: the cam turned to point step, shaft and keyway, arm and roller, pivots, links with their pins, the slider
/// with its guide, the end effector's mark. A train that does not connect there is drawn in its last pose, as broken.
/// @return false where there is no such point or nothing to draw
bool Link_Anim_Frame(Design_State& design, Surface& surface, int step, Drawn_Cam cam = Drawn_Cam::sized);

/// Both of them, for a picture. @throws Fault{9} for a point outside the cycle
bool Draw_Linkage_at(Design_State& design, Surface& surface, int point);

/// What the mouse can move with Shift held: opt_Shift_Drag names it.
enum class Drag_Point { O4, O6, slider };
struct Draggable {
    Drag_Point point;
    const char* name;  // "O4", "O6", "Slider axis"
    World_Point at;    // in the machine, y upward
};
/// The points of the train at hand that can be moved.
std::vector<Draggable> Draggable_Points(const Design_State& design);

}  // namespace lobemax
