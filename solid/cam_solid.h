// SPDX-License-Identifier: GPL-3.0-or-later
/// A cam as a solid for CAD, by the true geometry: plate of a disk cam with bore, hub and keyway; plate with a track;
/// drum with a groove or a rib; straight cam. Written as STEP (AP214) or as STL for viewers. docs/theory.md, 22.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shop/cam_curves.h"

namespace lobemax {

struct Design_State;

/// What is wanted beyond the design. Lengths of the design; 0: the usual one that stands beside it.
struct Solid_Options {
    double tolerance = 0.0;       // of the cam's surface; Usual_Tolerance
    double thickness = 0.0;       // of a disk or linear cam: of its plate; the design's Face_Width
    Bore bore{};                  // of a disk or barrel cam
    double hub_diameter = 0.0;    // of a disk cam; none
    double hub_length = 0.0;      // beyond the plate's upper face
    bool groove = false;          // a disk cam's roller runs in a track, on two walls
    double plate_diameter = 0.0;  // of a plate with a track; the track's reach and two roller radii
    double groove_depth = 0.0;    // of a track or groove, height of a rib; the design's Face_Width
    double drum_radius = 0.0;     // of a barrel: of its surface, of a rib's outer face; the prime radius
    double body_length = 0.0;     // of a barrel along its axis, of a linear cam's plate along the follower's way; the
                                  // walls' reach and a roller radius on either side
    double rib_width = 0.0;       // of a rib at rest, between its two rollers; two roller radii
    bool though_do_not_cut = false;  // make it in spite of the check
};

/// What was made. Lengths of the design.
struct Solid_Report {
    double tolerance = 0.0;
    double largest_deviation = 0.0;  // of the cam's surface, between the places that it goes through too
    double deviation_at = 0.0;       // degrees of cam angle
    double volume = 0.0;
    double area = 0.0;  // of the whole skin
    int faces = 0;
    int triangles = 0;                                       // of an STL
    double triangle_deviation = 0.0;                         // how far they lie beside the solid's faces
    std::string text_path;                                   // where the text beside the file stands
    std::vector<std::pair<std::string, std::string>> facts;  // its lines, the file's name left out
};

enum class Solid_Format { step, stl };

/// The bytes of a file. A STEP file is in inches where the design is in inches or feet, else in millimetres; an STL,
/// which has no unit of its own, in the same.
///
/// Refused are what Why_No_Cam refuses; sizes that make no body (a bore beyond the cam, a hub inside its bore or beyond
/// the cam, a groove through the drum); a wall that runs back on itself or has a corner at some depth, which no roller
/// leaves; a body that the checker of the library does not find valid, closed and of a volume above 0.
/// @return the sentence why there is none; empty where there is
std::string Make_Solid(const Design_State& design, const Solid_Options& options, Solid_Format format,
                       std::string& bytes, Solid_Report& report);

/// The entry of the library that this room stands in, which is Make_Solid (files/library_on_demand).
using Make_Solid_Entry = void (*)(std::string& refusal, const Design_State& design, const Solid_Options& options,
                                  Solid_Format format, std::string& bytes, Solid_Report& report);

/// Writes a file, .step or .stp, or .stl, and the text beside it; each whole or not at all.
/// @return the refusal as Make_Solid's, with nothing written; empty where it is written
/// @throws Fault as Write_Whole_File
std::string Write_Solid(const Design_State& design, const Solid_Options& options, const std::string& path,
                        Solid_Report& report);

}  // namespace lobemax
