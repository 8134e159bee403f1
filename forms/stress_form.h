// SPDX-License-Identifier: GPL-3.0-or-later
/// The stress screen without its window: materials, entries, labels, and the calculation behind its button.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"

namespace lobemax {

/// What the fields of the stress screen hold, as typed.
struct Stress_Form {
    std::string txt_Cam_E;
    std::string txt_Cam_V;
    std::string txt_Fol_E;
    std::string txt_Fol_v;
    std::string txt_Length;
    std::string txt_Crownrad;
    std::string txt_Weight;
    bool cam_steel = true;
    bool follower_steel = true;
    bool crowned = false;  // opt_Fol_type(1)
};

/// What the screen opens with: the stored values, and steel where a material has none or has that of steel.
///
/// Moduli are not converted with the design: steel of any unit system counts, and shows as that of the system in force.
/// Centimetres have no steel; a modulus typed there stays, also where it is that of steel in MPa.
Stress_Form Opening_Stress_Form(const Design_State& design);

/// Texts and visibilities that follow from the follower.
struct Stress_Labels {
    std::string lbl_follower;  // "Roller" or "Flat-Faced"
    std::string lbl_foltype;
    bool roller_options;  // opt_Fol_type, the crown label and field are shown
    bool length_enabled;
    bool crown_enabled;
};
/// @param chosen  whether a type of roller was chosen on the open screen
Stress_Labels Labels_of_Stress(const Design_State& design, bool chosen, bool crowned);

/// Steel: its modulus and Poisson's ratio in the unit system and the number format in force; the modulus is empty where
/// the unit system has none.
std::string Steel_Modulus(const Design_State& design);
std::string Steel_Ratio(const Design_State& design);

/// The fields, by name.
enum class Stress_Field { Cam_E, Cam_V, Fol_E, Fol_v, Length, Crownrad, Weight };

/// Validates an edited field and, when accepted, stores it; any weight is accepted.
/// @throws Fault{6} when the number is too large to be stored; the design is then as it was
Form_Entry Edit_Stress_Field(Design_State& design, Stress_Field field, std::string_view text);

/// The fields, in the order of Stress_Field, and all other captioned controls of the screen.
std::span<const Form_Field<Stress_Form>> Fields_of_Stress();
std::span<const Form_Control> Controls_of_Stress();

/// Stores and validates all fields, under its trap: after a number too large to be stored none is.
///
/// The validation's last store puts the follower's Poisson's ratio into the cam's place: meant. Mechanics keeps two; a
/// follower's 0.21 for a cam's 0.28 takes 0.9 % off the peak pressure. docs/theory.md, (122).
/// @param refused  out: the field to return to, where one was refused or too large
/// @return         false after a message
bool Apply_Stress_Fields(Design_State& design, const Stress_Form& form, Stress_Field& refused);

/// The work of cmd_Calc up to its plots: fields, contact length or crown radius, stresses, Stressflag.
/// @return false when a field was refused and nothing was calculated
bool Calc_Stress(Design_State& design, const Stress_Form& form, Stress_Field& refused);

/// Rows that the four plots show: force, curvature, stress, shear.
std::array<int, 4> Stress_Plot_Rows(const Design_State& design);

}  // namespace lobemax
