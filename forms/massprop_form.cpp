// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/massprop_form.h"

#include "core/design_state.h"
#include "core/text.h"
#include "edit/door.h"
#include "forms/linkage_notes.h"
#include "linkage/linkage_kinematics.h"

namespace lobemax {

namespace {

using enum Link_Column;

constexpr std::array columns{
    Massprop_Column{{"txt_Mass", "Mass of Link", "Mass of the link, in mass units", Form_Unit::mass},
                    mass,
                    "Mass of link",
                    "Mass of Link"},
    Massprop_Column{{"txt_Inertia", "Mass Moment of Inertia about CG",
                     "Of the link about its centre of gravity; metres in all metric systems", Form_Unit::inertia},
                    inertia,
                    "Inertia of link",
                    "Mass Mom of Inertia vs CG"},
    Massprop_Column{{"txt_DistCG", "Distance to CG from Pivot",
                     "From the link's pivot, of a coupler from the end that is driven", Form_Unit::length},
                    dist_cg,
                    "CGx of link",
                    "Dist to CG from Pivot"},
    Massprop_Column{
        {"txt_AngCG", "Angle to CG in LRCS*", "From the link's line of centres, counterclockwise", Form_Unit::degrees},
        angle_cg,
        "CGy of link",
        "Angle to CG in LRCS*"},
    Massprop_Column{{"txt_Spring", "Stiffness (k)", "Of the link, at its end", Form_Unit::spring},
                    stiffness,
                    "Stiffness of link",
                    "Stiffness (k)"},
};

constexpr std::array read_outs{
    Form_Field<Massprop_Texts>{
        {"lbl_Mass1", "Mass 1", "What moves with the follower: link 2 and its share of the coupler", Form_Unit::mass},
        &Massprop_Texts::lbl_Mass1},
    Form_Field<Massprop_Texts>{
        {"lbl_Mass2", "Mass 2", "The rest of the train, as it is felt at the follower", Form_Unit::mass},
        &Massprop_Texts::lbl_Mass2},
    Form_Field<Massprop_Texts>{
        {"lbl_Effmass", "Effective Mass at Follower", "Both together, by equal kinetic energy", Form_Unit::mass},
        &Massprop_Texts::lbl_Effmass},
    Form_Field<Massprop_Texts>{{"lbl_Effspring", "Effective Stiffness at Follower",
                                "The links' springs in series, by equal potential energy", Form_Unit::spring},
                               &Massprop_Texts::lbl_Effspring},
};

constexpr std::array controls{
    Form_Control{"frm_MassProp", "Mass properties of the links"},
    Form_Control{"fra_Speeds", "Speeds of the links"},
    Form_Control{"opt_Max_Avg(0)", "Use Max Veloc", "Each link counts with its peak speed over the cycle"},
    Form_Control{"opt_Max_Avg(1)", "Use Avg Veloc", "Each link counts with its mean speed over the cycle"},
    Form_Control{"fra_Results", "At the follower"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Copy", "C&opy"},
    Form_Control{"cmd_Print", "&Print"},
    Form_Control{"cmd_Calc", "&Calculate", "Puts effective mass and stiffness into the model of the follower train"},
    Form_Control{"cmd_Done", "&Next >"},
};

const Single& Stored(const Design_State& design, Link_Column column, int link)
{
    const Linkage_Group& k = design.linkage;
    switch (column) {
    case mass:
        return k.Mass_of_link(link);
    case inertia:
        return k.Inertia_of_link(link);
    case dist_cg:
        return k.CGx_of_link(link);
    case angle_cg:
        return k.CGy_of_link(link);
    case stiffness:
        return k.Stiffness_of_link(link);
    }
    throw Fault{internal_error};
}

}  // namespace

std::span<const Massprop_Column> Columns_of_Massprop()
{
    return columns;
}

const Massprop_Column& Column_at(Link_Column column)
{
    return columns.at(static_cast<std::size_t>(column));
}

std::string_view Heading_of(const Design_State& design, const Massprop_Column& column)
{
    return Six_Links(design) ? column.caption_of_6 : column.caption;
}

std::string_view Screen_of_Massprop(const Design_State& design)
{
    return Six_Links(design) ? "frm_MassProp6" : "frm_MassProp4";
}

bool Massprop_Open(const Design_State& design, Link_Column column, int link)
{
    const bool slider = Ends_in_Slider(design) && link == Last_Link(design);
    return !slider || column == mass || column == stiffness;
}

std::string Segment_of_Link(const Design_State& design, int link)
{
    const bool slider = Ends_in_Slider(design) && link == Last_Link(design);
    return "Link " + std::to_string(link) + (slider ? " (slider)" : "");
}

std::string Massprop_Text(const Design_State& design, Link_Column column, int link)
{
    const Single& stored = Stored(design, column, link);
    return column == angle_cg ? Trim(FNRoundStr(design, stored * Deg_per_Rad, 2)) : Shown(design, stored);
}

Form_Entry Edit_Massprop(Design_State& design, Link_Column column, int link, std::string_view typed)
{
    const double value = Val(design, typed);
    const Verdict verdict =
        Put(design, Column_at(column).field, At(link), column == angle_cg ? value * Rad_per_Deg : value);
    if (verdict)
        return {true, column == angle_cg ? Massprop_Text(design, column, link) : std::string(typed)};
    Show_Refusal(verdict);
    return {false, Massprop_Text(design, column, link)};
}

std::span<const Form_Field<Massprop_Texts>> Read_Outs_of_Massprop()
{
    return read_outs;
}

Massprop_Result Calc_Massprop(Design_State& design, Speed_Choice choice)
{
    const std::optional<Link_Effect> effect = Run_Link_Masses(design, choice);
    if (!effect)
        return {};
    const Massprop_Texts texts{Shown(design, effect->mass.at_follower), Shown(design, effect->mass.at_effector),
                               Shown(design, effect->mass.Total()),
                               effect->stiffness ? Shown(design, *effect->stiffness) : std::string()};
    // The model's type decides which of them it has.
    const Dynamics_Group& d = design.dynamics;
    const std::string unit = " " + Unit_Word(design, Form_Unit::mass);
    const bool two_masses = d.Mass_m(1) != Single(effect->mass.Total());
    std::string model = "The model of the follower train has taken m1 = " + Shown(design, d.Mass_m(1)) + unit;
    if (two_masses)
        model += " and m2 = " + Shown(design, d.Mass_m(2)) + unit;
    model += effect->stiffness ? " and the stiffness." : "; its stiffness is as it was.";
    return {texts, {model, Weight_Note(design, Current_Decimal_Symbol(design))}};
}

std::span<const Form_Control> Controls_of_Massprop()
{
    return controls;
}

}  // namespace lobemax
