// SPDX-License-Identifier: GPL-3.0-or-later
/// Programs for milling machines and grinders with three axes, and for a drum with a rotary axis. docs/theory.md, 21.
#pragma once

#include "shop/machine_file.h"

namespace lobemax {

enum class Program_Unit { mm, inch };

/// Who takes the tool's radius into account.
enum class Radius_Offset {
    in_path,     // the program is the path of the tool's centre
    in_control,  // the program is the contour, G41 or G42 with the radius in the control's table
};

/// How the tool comes to the contour and leaves it.
enum class Lead {
    arc,   // a quarter circle that ends along the contour
    ramp,  // down along the contour itself
};

/// Words that both programs have. Lengths in the program's unit, feeds per minute.
struct Program_Words {
    Program_Unit unit = Program_Unit::mm;
    double tolerance = 0.005;  // of the path from the true one, without the control's resolution
    double feed = 200.0;       // of the contact along the surface
    double plunge_feed = 100.0;
    double spindle = 1000.0;  // turns per minute; 0: none is written
    bool coolant = false;
    double safe_height = 25.0;  // Z of rapid moves
    double clearance = 2.0;     // Z from which the feed counts; Z 0 is the top of the blank
    double depth = 10.0;        // of the contour below Z 0
    double depth_step = 0.0;    // most that goes down at a time; 0: all at once
    int program_number = 0;     // 0: none
    int tool_number = 0;        // 0: no tool change
    int line_step = 0;          // of line numbers; 0: none
    bool cut_anyway = false;    // although the check says not to
};

/// The contour of a disk cam. Cam centre at X 0 Y 0, turned as the profile rows are.
struct Contour_Options : Program_Words {
    bool arcs = true;  // G2 and G3; else straight moves alone
    double tool_radius = 5.0;
    Radius_Offset offset = Radius_Offset::in_path;
    int offset_number = 1;   // the control's entry with the radius, D
    bool climb = true;       // material on the right of the tool; else on its left
    bool from_back = false;  // the blank lies face down: X has the other sign
    double stock = 0.0;      // on the contour of the blank
    double finish = 0.0;     // what the last pass takes off
    int passes = 1;          // the last one with nothing left
    Lead lead = Lead::arc;
    double lead_size = 3.0;     // radius of the arc, length of the ramp
    double highest_feed = 0.0;  // of the tool's centre; 0: ten times the feed
};

/// Each pass leaves stock(k); the last one nothing, that before it `finish`, those before in equal shares from `stock`.
/// Roughing goes down in steps of depth, all passes at each, finishing at once. A point where no dwell offers itself is
/// told in the notes.
Machine_File Contour_Program(const Design_State& design, const Contour_Options& options);

/// The groove or wall of a drum by a tool of the roller's size on a rotary axis: X the follower's way along the drum, Y
/// across it (0 of a translating follower), A the drum, Z down towards its axis from Z 0 at its outer surface.
struct Drum_Options : Program_Words {
    bool reverse_rotary = false;  // A+ turns the drum clockwise seen from its X+ end
    double ramp = 10.0;           // degrees of the drum in which the tool goes down a step of depth
};
Machine_File Drum_Program(const Design_State& design, const Drum_Options& options);

}  // namespace lobemax
