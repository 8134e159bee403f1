// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/unit_change.h"

#include <array>
#include <initializer_list>

#include "core/ladder.h"
#include "core/linkage_setup.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"

namespace lobemax {

namespace {

enum System : int { inch = 1, foot = 2, metre = 3, centimetre = 4, millimetre = 5 };

std::size_t Place_of(int code)
{
    return Checked_Place(code, First_Unit_System, Last_Unit_System);
}

template <class T>
using By_Units = std::array<T, 5>;

constexpr double lb_to_N = 4.448222;
constexpr double bl_to_kg = 386 / 2.2046225;
constexpr double in_to_m = 0.0254;

// From inches to each system. Masses, inertias and spring rates of all three metric systems are in kg,
// kg-m^2 and N/m.
constexpr By_Units<Unit_Factors> from_inches{{
    {1.0, 1.0, 1.0, 1.0, 1.0, 1.0},
    {1.0 / 12, 1.0, 1.0 / 12, 12.0, 1.0 / 12, 12.0},
    {in_to_m, lb_to_N, 0.1129848388, bl_to_kg, in_to_m* in_to_m* bl_to_kg, lb_to_N / in_to_m},
    {2.54, lb_to_N, 11.29848388, bl_to_kg, in_to_m* in_to_m* bl_to_kg, lb_to_N / in_to_m},
    {25.4, lb_to_N, 112.9848388, bl_to_kg, in_to_m* in_to_m* bl_to_kg, lb_to_N / in_to_m},
}};

/// A number text in the new unit; an empty text stays empty.
void Convert_Text(const Design_State& design, std::string& text, double factor, int places)
{
    if (text.empty())
        return;
    const Single value = Val(design, text);
    text = FNRoundStr(design, value * factor, places);
}

void Convert(Single& value, double factor, int places)
{
    value = FNRound(value * factor, places);
}

/// Positions and condition tables of a translating follower's segments. The condition angles and the
/// derivatives take the length factor too: the whole table is treated alike, and meant.
void Convert_Segment_Texts(Design_State& design, double length, int places)
{
    Motion_Group& m = design.motion;
    for (int i = 1; i <= Max_Segments; ++i) {
        Convert_Text(design, m.Start_Value(i), length, places);
        Convert_Text(design, m.End_Value(i), length, places);
        for (int k = 1; k <= 9; ++k) {
            Convert_Text(design, m.T_boundary_cond(i, k), length, places);
            Convert_Text(design, m.S_boundary_cond(i, k), length, places);
            Convert_Text(design, m.V_boundary_cond(i, k), length, places);
            Convert_Text(design, m.A_boundary_cond(i, k), length, places);
            Convert_Text(design, m.J_boundary_cond(i, k), length, places);
        }
    }
}

/// Displacements of the closed-form segments follow their converted texts; with no segment filled the
/// lift is the default of the new system.
void Rederive_Lift(Design_State& design)
{
    Motion_Group& m = design.motion;
    bool any = false;
    for (int i = 1; i <= m.No_of_segments; ++i) {
        const std::string& kind = m.Rise_Fall_Dwell(i);
        if (m.Start_Value(i).empty() || m.End_Value(i).empty() || (kind != "R" && kind != "F" && kind != "D"))
            continue;
        any = true;
        const Single low = Val(design, m.Start_Value(i));
        const Single high = Val(design, m.End_Value(i));
        m.Total_Displacement(i) = kind == "D" ? double{high} : std::abs(high - low);
        m.Base_Shift(i) = kind == "R" ? low : kind == "F" ? high : Single{};
        if (i == m.Seg)
            m.Lift = m.Total_Displacement(i);
    }
    if (!any)
        m.Lift = Shop_Length(design, 1.0);
}

/// One pass of the conversion, to a system that Single_Pass_Factors reaches directly.
void Convert_Design(Design_State& design, int to)
{
    const Unit_Factors f = Single_Pass_Factors(design.identity.WhichUnit, to);
    design.identity.WhichUnit = to;
    Set_Decimals(design);
    const Identity_Group& id = design.identity;
    Cam_Group& c = design.cam;
    Linkage_Group& k = design.linkage;
    Dynamics_Group& d = design.dynamics;

    if (c.Translating)
        Convert_Segment_Texts(design, f.length, id.Decimals_1);
    for (Single* length : {&c.Prime_Rad, &c.Offset, &c.Follow_Rad, &c.Cutter_Radius, &c.ArmX, &c.ArmY, &c.ArmRad})
        Convert(*length, f.length, id.Decimals_1);
    for (Single* length : {&k.Link_2, &k.Link_3, &k.Link_4, &k.Link_1, &k.Link_4a, &k.Link_5, &k.Link_6, &k.O4x, &k.O4y,
                           &k.O6x, &k.O6y, &k.Offset6, &k.S3x, &k.S3y})
        Convert(*length, f.length, id.Decimals_1);
    Convert(d.Mass, f.mass, id.Decimals_4);
    Convert(d.Return_Spring_Rate, f.spring_rate, id.Decimals_6);
    Convert(d.Preload, f.force, id.Decimals_2);
    Convert(d.Bearing_Radius, f.length, id.Decimals_1);
    Convert(d.Comp_Mass, f.mass, id.Decimals_4);
    Convert(d.Comp_Preload, f.force, id.Decimals_2);
    Convert(d.Comp_Spring_Rate, f.spring_rate, id.Decimals_6);
    Convert(d.Roller_length, f.length, id.Decimals_1);
    Convert(d.Crown_radius, f.length, id.Decimals_1);
    Convert(d.Follower_Weight, f.force, id.Decimals_2);
    for (int i = 1; i <= 2; ++i) {
        Convert(d.Mass_m(i), f.mass, id.Decimals_4);
        Convert(d.Kspring(i), f.spring_rate, id.Decimals_6);
    }
    for (int n = 2; n <= Max_Links; ++n) {
        Convert(k.Mass_of_link(n), f.mass, id.Decimals_4);
        Convert(k.CGx_of_link(n), f.length, id.Decimals_1);
        Convert(k.Inertia_of_link(n), f.inertia, id.Decimals_5);
        Convert(k.Stiffness_of_link(n), f.spring_rate, id.Decimals_6);
    }
    // The force function is what later results are calculated with: it goes along, as a curve and so unrounded. Its row
    // goes with it: no calculation makes that, and a model file keeps the function there alone.
    for (const auto forces : {design.results.Ext_Force_Table.Points(), design.results.CalcData.Points(var::Ext_Force)})
        for (Single& force : forces)
            force *= f.force;
    k.O4D = k.Link_4a;
    Set_Up_Linkage(design, k.Links);
    Set_Omega_Powers(design);
    if (c.Translating)
        Rederive_Lift(design);
}

}  // namespace

Unit_Factors Single_Pass_Factors(int from, int to)
{
    const Unit_Factors& a = from_inches[Place_of(from)];
    const Unit_Factors& b = from_inches[Place_of(to)];
    if (from == to)
        return {};
    if (from == inch)
        return b;
    if (to == inch && from == foot)  // the reciprocals, written out: 1 / (1.0 / 12) is 12 exactly
        return {12.0, 1.0, 12.0, 1.0 / 12, 12.0, 1.0 / 12};
    if (to == inch)
        return {1 / a.length, 1 / a.force, 1 / a.torque, 1 / a.mass, 1 / a.inertia, 1 / a.spring_rate};
    if (from == foot || to == foot)
        throw Fault{invalid_argument};
    // among the metric systems only lengths and torques differ
    constexpr By_Units<double> per_metre{{0.0, 0.0, 1.0, 100.0, 1000.0}};
    const double scale = per_metre[Place_of(to)] / per_metre[Place_of(from)];
    return {scale, 1.0, scale, 1.0, 1.0, 1.0};
}

void Change_Units(Design_State& design, int code)
{
    const int from = design.identity.WhichUnit;
    Words_of_Units(from);
    Words_of_Units(code);
    if (from == code)
        return;
    const bool through_inches = (from == foot && code > foot) || (code == foot && from > foot);
    const Design_State before = design;
    try {
        if (through_inches)
            Convert_Design(design, inch);
        Convert_Design(design, code);
    } catch (const Fault&) {
        design = before;  // a field too large for the new system: all of the design stays in the old one
        throw;
    }
    // A way back by another conversion leaves fields rounded twice: only a new calculation makes the results the
    // design's own again.
    if (Any_Result(design) && !Results_in_Other_Units(design))
        design.results.WhichUnit = from;
    Set_Units(design);
    Reach(design, Mark::units_changed);
}

}  // namespace lobemax
