// SPDX-License-Identifier: GPL-3.0-or-later
/// The skin of a drum whose groove or rib has the walls that a roller leaves, right at every depth. docs/theory.md, 22.
#pragma once

#include <string>

#include "solid/body_parts.h"
#include "truth/true_cam.h"

namespace lobemax {

/// A drum about z. Lengths of the design.
struct Drum {
    double outer = 0.0;  // radius of the drum's surface, of a rib's outer face
    double inner = 0.0;  // radius of the groove's floor, of the drum beside a rib
    bool rib = false;
    double rib_width = 0.0;
    double length = 0.0;  // 0: the walls' reach and a roller radius on either side
    double tolerance = 0.0;
    Outline bore{};            // counterclockwise; empty: none
    double millimetres = 1.0;  // of a unit of the design
};

/// What the walls came to.
struct Drum_Walls {
    double largest_deviation = 0.0;  // square to the wall, between the depths and the angles too
    double at = 0.0;                 // degrees
    int depths = 0;                  // that the walls go through, the floor and the drum's surface among them
    int places = 0;                  // along both walls
    double low = 0.0;                // ends of the drum
    double high = 0.0;
};

/// Adds the skin of a drum, in millimetres. @return why there is none; empty where there is
std::string Add_Drum(const True_Cam& cam, const Drum& drum, Skin& skin, Drum_Walls& walls);

}  // namespace lobemax
