// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/stress_form.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/contact_stress.h"
#include "edit/door.h"
#include "edit/rungs.h"

namespace lobemax {

namespace {

/// The numbers of all fields.
struct Stress_Values {
    Single cam_E;
    Single cam_v;
    Single fol_E;
    Single fol_v;
    Single length;
    Single crown;
    Single weight;
};

/// @param refused  out: the field that was read last, so after a fault the one that was too large
Stress_Values Read(const Design_State& design, const Stress_Form& form, Stress_Field& refused)
{
    const auto number = [&](Stress_Field field, const std::string& text) {
        refused = field;
        return Single(Val(design, text));
    };
    using enum Stress_Field;
    return {number(Cam_E, form.txt_Cam_E),  number(Cam_V, form.txt_Cam_V),   number(Fol_E, form.txt_Fol_E),
            number(Fol_v, form.txt_Fol_v),  number(Length, form.txt_Length), number(Crownrad, form.txt_Crownrad),
            number(Weight, form.txt_Weight)};
}

void Store(Design_State& design, const Stress_Values& values, bool crowned)
{
    Dynamics_Group& d = design.dynamics;
    d.Youngs_modulus(1) = values.cam_E;
    d.Youngs_modulus(2) = values.fol_E;
    d.Poissons_ratio(1) = values.cam_v;
    d.Poissons_ratio(2) = values.fol_v;
    if (design.cam.Followtype == 1)
        d.Roller_type = crowned ? crowned_roller : cylindrical_roller;
    d.Roller_length = values.length;
    d.Crown_radius = values.crown;
}

/// The rule of a field in the form's table.
template <Stress_Field field>
Form_Entry Edit(Design_State& design, Stress_Form&, std::string_view typed)
{
    return Edit_Stress_Field(design, field, typed);
}

constexpr std::array fields{
    Form_Field<Stress_Form>{{"txt_Cam_E", "Young's Modulus", "Young's Modulus", Form_Unit::stress},
                            &Stress_Form::txt_Cam_E,
                            Edit<Stress_Field::Cam_E>},
    Form_Field<Stress_Form>{
        {"txt_Cam_V", "Poisson's ratio", "Poisson's ratio"}, &Stress_Form::txt_Cam_V, Edit<Stress_Field::Cam_V>},
    Form_Field<Stress_Form>{{"txt_Fol_E", "Young's Modulus", "Young's Modulus", Form_Unit::stress},
                            &Stress_Form::txt_Fol_E,
                            Edit<Stress_Field::Fol_E>},
    Form_Field<Stress_Form>{
        {"txt_Fol_v", "Poisson's ratio", "Poisson's ratio"}, &Stress_Form::txt_Fol_v, Edit<Stress_Field::Fol_v>},
    Form_Field<Stress_Form>{{"txt_Length", "Contact Length", "Contact Length", Form_Unit::length},
                            &Stress_Form::txt_Length,
                            Edit<Stress_Field::Length>},
    Form_Field<Stress_Form>{{"txt_Crownrad", "Crown Radius", "Crown Radius", Form_Unit::length},
                            &Stress_Form::txt_Crownrad,
                            Edit<Stress_Field::Crownrad>},
    Form_Field<Stress_Form>{
        {"txt_Weight", "Follower Weight Force on Cam", "Follower Weight Force on Cam", Form_Unit::force},
        &Stress_Form::txt_Weight,
        Edit<Stress_Field::Weight>},
};

constexpr std::array controls{
    Form_Control{"frm_Stress", "Contact stress"},
    Form_Control{"fra_Cam", "Cam Material Parameters"},
    Form_Control{"opt_Cam(0)", "Steel"},
    Form_Control{"opt_Cam(1)", "Other"},
    Form_Control{"fra_Follower", "Follower Material Parameters"},
    Form_Control{"opt_Follower(0)", "Steel"},
    Form_Control{"opt_Follower(1)", "Other"},
    Form_Control{"fra_Configuration", "Follower Configuration"},
    Form_Control{"lbl_chosen", "You have chosen a "},
    Form_Control{"lbl_kind", "follower."},
    Form_Control{"opt_Fol_type(0)", "Cylindrical"},
    Form_Control{"opt_Fol_type(1)", "Crowned"},
    Form_Control{"chk_Extforce", " Include dynamic external force  "},
    Form_Control{"chk_True", "&True curves", "What geometry alone gives, dashed beside the rows"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Print", "&Print Form"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_Calc", "&Calculate"},
    Form_Control{"cmd_Done", "&Next >"},
};

}  // namespace

std::span<const Form_Field<Stress_Form>> Fields_of_Stress()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Stress()
{
    return controls;
}

Stress_Form Opening_Stress_Form(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const Materials materials = Materials_of(design);
    const auto modulus = [&](std::size_t k) {
        return materials.steel[k] ? Steel_Modulus(design) : Shown(design, materials.E[k]);
    };
    Stress_Form form;
    form.cam_steel = materials.steel[0];
    form.follower_steel = materials.steel[1];
    form.txt_Cam_E = modulus(0);
    form.txt_Cam_V = Shown(design, materials.nu[0]);
    form.txt_Fol_E = modulus(1);
    form.txt_Fol_v = Shown(design, materials.nu[1]);
    form.txt_Length = Shown(design, d.Roller_length);
    form.txt_Crownrad = Shown(design, d.Crown_radius);
    form.txt_Weight = Shown(design, d.Follower_Weight);
    form.crowned = d.Roller_type == crowned_roller;
    return form;
}

Stress_Labels Labels_of_Stress(const Design_State& design, bool chosen, bool crowned)
{
    Stress_Labels labels{"Roller", "Please specify type.", true, !crowned, crowned};
    if (design.cam.Followtype == 2) {
        labels.lbl_follower = "Flat-Faced";
        labels.lbl_foltype = "Contact length is the smaller of cam face width or roller length.";
        labels.roller_options = false;
        labels.length_enabled = true;
        labels.crown_enabled = false;
    } else if (chosen) {
        labels.lbl_foltype = crowned
                                 ? "Please specify the follower crown radius."
                                 : "Please specify contact length as the smaller of cam face width or roller length.";
    }
    return labels;
}

std::string Steel_Modulus(const Design_State& design)
{
    return In_Number_Format(design, Modulus_of_Steel(design));
}

std::string Steel_Ratio(const Design_State& design)
{
    return Shown(design, Ratio_of_Steel);
}

Form_Entry Edit_Stress_Field(Design_State& design, Stress_Field field, std::string_view text)
{
    struct Place {
        std::string_view field;
        int index;  // 0: the field is no array
    };
    constexpr std::array<Place, 7> places{{{"Young's modulus", 1},
                                           {"Poissons' ratio", 1},
                                           {"Young's modulus", 2},
                                           {"Poissons' ratio", 2},
                                           {"Roller length", 0},
                                           {"Crown radius", 0},
                                           {"Follower_Weight", 0}}};
    const Place& place = places.at(static_cast<std::size_t>(field));
    const Field_Index at = place.index == 0 ? Field_Index{} : At(place.index);
    const Verdict verdict = Put(design, place.field, at, Val(design, text));
    if (verdict)
        return {true, std::string(text)};
    Show_Refusal(verdict);
    const Dynamics_Group& d = design.dynamics;
    if (field == Stress_Field::Length || field == Stress_Field::Crownrad)
        return {false, Shown(design, field == Stress_Field::Length ? d.Roller_length : d.Crown_radius)};
    return {false, In_Number_Format(design, field == Stress_Field::Cam_V ? "0.3" : "0.01")};
}

bool Apply_Stress_Fields(Design_State& design, const Stress_Form& form, Stress_Field& refused)
{
    bool valid = false;
    const bool no_fault = Trap("Apply_Stress_Fields", [&] {
        const Stress_Values values = Read(design, form, refused);
        Store(design, values, form.crowned);
        Contact_Field contact{};
        valid = Check_Contact(design, contact);
        if (valid)
            design.dynamics.Follower_Weight = values.weight;
        else
            refused = static_cast<Stress_Field>(contact);
    });
    if (!no_fault || !valid)
        Apply(design, Event::stress_edited);  // the figures in memory are those of other values
    return no_fault && valid;
}

bool Calc_Stress(Design_State& design, const Stress_Form& form, Stress_Field& refused)
{
    if (!Apply_Stress_Fields(design, form, refused))
        return false;
    Contact_Field contact{};
    if (Run_Stress(design, contact))
        return true;
    refused = static_cast<Stress_Field>(contact);
    return false;
}

std::array<int, 4> Stress_Plot_Rows(const Design_State& design)
{
    return {design.flags.Modelflag ? var::Dynamic_Force : var::Force, var::Rho, var::Sigma_Max, var::Tau_Max};
}

}  // namespace lobemax
