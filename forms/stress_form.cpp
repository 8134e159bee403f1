// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/stress_form.h"

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/contact_stress.h"

namespace lobemax {

namespace {

constexpr const char* must_be_positive = "This value must be positive and nonzero.  Please redo.";
/// Used for the length too, on purpose.
constexpr const char* must_have_radius = "You must specify a positive, nonzero crown radius";

std::string Shown(const Design_State& design, double value)
{
    return In_Number_Format(design, Shortest(Single(value)));
}

bool Refuse(const char* text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
    return false;
}

/// Steel's modulus by unit system, as it is typed; centimetres have none.
std::string_view Modulus_of_Steel(int unit_system)
{
    switch (unit_system) {
    case 1:
        return "3E7";
    case 2:
        return "208.4E3";
    case 3:
        return "206.8E9";
    case 5:
        return "206.8E3";
    default:
        return "";
    }
}

constexpr double ratio_of_steel = 0.28;

/// Whether a stored material is steel: nothing is stored, or steel of any unit system, as a design that was converted
/// still holds it. Where the system in force has no steel, a modulus in its own unit was typed.
bool Is_Steel(const Design_State& design, Single modulus, Single ratio)
{
    if (modulus == 0.0)
        return true;
    if (ratio != Single(ratio_of_steel))
        return false;
    const int here = design.identity.WhichUnit;
    const std::string_view unit = Words_of_Units(here).stress;
    for (int system = First_Unit_System; system <= Last_Unit_System; ++system) {
        const std::string_view steel = Modulus_of_Steel(system);
        const bool typed = Modulus_of_Steel(here).empty() && Words_of_Units(system).stress == unit;
        if (!steel.empty() && !typed && modulus == Single(Val(steel, Decimal_Symbol::point)))
            return true;
    }
    return false;
}

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

/// One of the two passes over the fields: each material value must be positive, each is stored, the follower's ratio
/// where the cam's stands.
bool Validate(Design_State& design, const Stress_Values& values, bool crowned, Stress_Field& refused)
{
    Dynamics_Group& d = design.dynamics;
    struct Check {
        Stress_Field field;
        Single value;
        Single& store;
    };
    const Check checks[]{{Stress_Field::Cam_E, values.cam_E, d.Youngs_modulus(1)},
                         {Stress_Field::Cam_V, values.cam_v, d.Poissons_ratio(1)},
                         {Stress_Field::Fol_E, values.fol_E, d.Youngs_modulus(2)},
                         {Stress_Field::Fol_v, values.fol_v, d.Poissons_ratio(1)}};
    for (const Check& check : checks) {
        if (!(check.value > 0.0)) {
            refused = check.field;
            return Refuse(must_be_positive);
        }
        check.store = check.value;
    }
    const bool length_counts = design.cam.Followtype == 2 || !crowned;
    if (!((length_counts ? values.length : values.crown) > 0.0)) {
        refused = length_counts ? Stress_Field::Length : Stress_Field::Crownrad;
        return Refuse(must_be_positive);
    }
    d.Follower_Weight = values.weight;
    return true;
}

}  // namespace

Stress_Form Opening_Stress_Form(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    Stress_Form form;
    form.cam_steel = Is_Steel(design, d.Youngs_modulus(1), d.Poissons_ratio(1));
    form.follower_steel = Is_Steel(design, d.Youngs_modulus(2), d.Poissons_ratio(2));
    form.txt_Cam_E = form.cam_steel ? Steel_Modulus(design) : Shown(design, d.Youngs_modulus(1));
    form.txt_Cam_V = form.cam_steel ? Steel_Ratio(design) : Shown(design, d.Poissons_ratio(1));
    form.txt_Fol_E = form.follower_steel ? Steel_Modulus(design) : Shown(design, d.Youngs_modulus(2));
    form.txt_Fol_v = form.follower_steel ? Steel_Ratio(design) : Shown(design, d.Poissons_ratio(2));
    form.txt_Length = Shown(design, d.Roller_length);
    form.txt_Crownrad = Shown(design, d.Crown_radius);
    form.txt_Weight = Shown(design, d.Follower_Weight);
    form.crowned = d.Roller_type == crowned_roller;
    return form;
}

Stress_Labels Labels_of_Stress(const Design_State& design, bool chosen, bool crowned)
{
    const Unit_Words& units = Words_of_Units(design.identity.WhichUnit);
    Stress_Labels labels{"Roller", "Please specify type.", true,         !crowned,
                         crowned,  units.stress,           units.length, units.force};
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
    return In_Number_Format(design, Modulus_of_Steel(design.identity.WhichUnit));
}

std::string Steel_Ratio(const Design_State& design)
{
    return In_Number_Format(design, "0.28");
}

Stress_Entry Edit_Stress_Field(Design_State& design, Stress_Field field, std::string_view text)
{
    Dynamics_Group& d = design.dynamics;
    const Single value = Val(design, text);
    const bool size = field == Stress_Field::Length || field == Stress_Field::Crownrad;
    if (size && !(value > 0.0)) {
        Refuse(must_have_radius);
        return {false, Shown(design, field == Stress_Field::Length ? d.Roller_length : d.Crown_radius)};
    }
    if (!size && field != Stress_Field::Weight && value < 0.0) {
        Refuse(must_be_positive);
        return {false, In_Number_Format(design, field == Stress_Field::Cam_V ? "0.3" : "0.01")};
    }
    switch (field) {
    case Stress_Field::Cam_E:
        d.Youngs_modulus(1) = value;
        break;
    case Stress_Field::Cam_V:
        d.Poissons_ratio(1) = value;
        break;
    case Stress_Field::Fol_E:
        d.Youngs_modulus(2) = value;
        break;
    case Stress_Field::Fol_v:
        d.Poissons_ratio(2) = value;
        break;
    case Stress_Field::Length:
        d.Roller_length = value;
        break;
    case Stress_Field::Crownrad:
        d.Crown_radius = value;
        break;
    case Stress_Field::Weight:
        d.Follower_Weight = value;
        break;
    }
    return {true, std::string(text)};
}

bool Apply_Stress_Fields(Design_State& design, const Stress_Form& form, Stress_Field& refused)
{
    bool valid = false;
    const bool no_fault = Trap("Apply_Stress_Fields", [&] {
        const Stress_Values values = Read(design, form, refused);
        Store(design, values, form.crowned);
        valid = Validate(design, values, form.crowned, refused) && Validate(design, values, form.crowned, refused);
    });
    return no_fault && valid;
}

bool Calc_Stress(Design_State& design, const Stress_Form& form, Stress_Field& refused)
{
    if (!Apply_Stress_Fields(design, form, refused))
        return false;
    const Dynamics_Group& d = design.dynamics;
    const bool crowned = design.cam.Followtype != 2 && d.Roller_type == crowned_roller;
    const double size = crowned ? d.Crown_radius : d.Roller_length;
    if (!(size > 0.0)) {
        refused = crowned ? Stress_Field::Crownrad : Stress_Field::Length;
        return Refuse(must_be_positive);
    }
    const double youngs[2]{d.Youngs_modulus(1), d.Youngs_modulus(2)};
    const double poissons[2]{d.Poissons_ratio(1), d.Poissons_ratio(2)};
    Calc_Contact_Stress(design, d.Roller_type, youngs, poissons, size);
    design.flags.Stressflag = true;  // also where the routine left early: the points before stand
    Refresh_Screens();
    return true;
}

std::array<int, 4> Stress_Plot_Rows(const Design_State& design)
{
    return {design.flags.Modelflag ? var::Dynamic_Force : var::Force, var::Rho, var::Sigma_Max, var::Tau_Max};
}

}  // namespace lobemax
