// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of a cam of arcs without its window, and what such a cam makes of an import: its pairs are read as those
/// of a file, and the follower that rides on it becomes the design's.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "camgeom/arc_cam.h"
#include "camgeom/profile_import.h"
#include "core/field_rule.h"
#include "forms/form_table.h"

namespace lobemax {

/// What the screen holds: its texts as typed.
struct Arc_Form {
    std::string txt_Base;
    std::string txt_Flank;
    std::string txt_Nose;
    std::string txt_Lift;
    std::string txt_Roller;  // 0 or empty: a flat face
};

/// The fields and all other captioned controls of the screen, each in the order of the layout.
std::span<const Form_Field<Arc_Form>> Fields_of_Arcs();
std::span<const Form_Control> Controls_of_Arcs();

/// What the texts make.
struct Arcs_Read {
    std::optional<Arc_Cam> cam{};  // none: they make no cam
    std::string line;              // lbl_Arcs: why not, or how long the lobe lasts
};
Arcs_Read Read_Arcs(const Design_State& design, const Arc_Form& form);

/// What pairs of a whole turn are read as: closed, but for a Fourier series, by angle and displacement.
void Choose_as_Arcs(Import_Choice& choice);

/// The cam whose motion is imported.
struct Measured_Cam {
    std::optional<int> Followtype{};  // of a cam of arcs, 1 a roller, 2 a flat face; none: as the design has it
    double Prime_Rad = 0.0;
    std::optional<double> Follow_Rad{};  // none: as the design has it
};
Measured_Cam Measured_Cam_of(const Arc_Cam& cam);

/// Stores them through the door. On a cam of arcs the follower rides radially: a radial cam without eccentricity.
/// @return  empty, or why one may not be; those before it are stored
Verdict Put_Measured_Cam(Design_State& design, const Measured_Cam& cam);

}  // namespace lobemax
