// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/units.h"

#include <array>
#include <initializer_list>

#include "core/ladder.h"
#include "core/linkage_setup.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"

namespace lobemax {

namespace {

enum System : int { inch = 1, foot = 2, metre = 3, centimetre = 4, millimetre = 5 };

std::size_t Place_of_Units(int code)
{
    return Checked_Place(code, First_Unit_System, Last_Unit_System);
}

template <class T>
using By_Units = std::array<T, 5>;

constexpr By_Units<Unit_Words> words{{
    {"in", "lb", "bl", "psi", "in-lb", "in-lb-bl-s"},
    {"ft", "lb", "sl", "psf", "ft-lb", "ft-lb-sl-s"},
    {"m", "N", "kg", "Pa", "m-N", "m-kg-N-s"},
    {"cm", "N", "kg", "MPa", "cm-N", "cm-kg-N-s"},
    {"mm", "N", "kg", "MPa", "mm-N", "mm-kg-N-s"},
}};

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

constexpr By_Units<std::array<int, 6>> decimals{{
    {3, 2, 2, 4, 2, 1},
    {3, 2, 3, 3, 2, 1},
    {4, 2, 3, 3, 3, 0},
    {3, 2, 3, 3, 3, 0},
    {2, 2, 3, 3, 3, 0},
}};

void Use_Decimals(Design_State& design, int code)
{
    const std::array<int, 6>& d = decimals[Place_of_Units(code)];
    Identity_Group& id = design.identity;
    id.Decimals_1 = d[0];
    id.Decimals_2 = d[1];
    id.Decimals_3 = d[2];
    id.Decimals_4 = d[3];
    id.Decimals_5 = d[4];
    id.Decimals_6 = d[5];
}

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
    Use_Decimals(design, to);
    const Identity_Group& id = design.identity;
    Cam_Group& c = design.cam;
    Linkage_Group& k = design.linkage;
    Dynamics_Group& d = design.dynamics;

    if (c.Translating)
        Convert_Segment_Texts(design, f.length, id.Decimals_1);
    for (Single* length : {&c.Prime_Rad, &c.Offset, &c.Follow_Rad, &c.Cutter_Radius, &c.ArmX, &c.ArmY, &c.ArmRad})
        Convert(*length, f.length, id.Decimals_1);
    for (Single* length : {&k.Link_2, &k.Link_3, &k.Link_4, &k.Link_1, &k.Link_4a, &k.Link_5, &k.Link_6, &k.O4x, &k.O4y,
                           &k.O6x, &k.O6y, &k.Offset6})
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
    design.identity.WhichUnit = to;
    Set_Up_Linkage(design, k.Links);
    Set_Omega_Powers(design);
    if (c.Translating)
        Rederive_Lift(design);
}

/// Per-second, per-degree or per-radian form of a derivative of this order.
std::string Derivative(const Design_State& design, const std::string& unit, int order)
{
    switch (design.motion.Time_Base) {
    case 2:
        return unit + "/deg";
    case 3:
        return unit + "/rad";
    default:
        return unit + (order == 1 ? "/sec" : "/sec^" + std::to_string(order));
    }
}

}  // namespace

const Unit_Words& Words_of_Units(int code)
{
    return words[Place_of_Units(code)];
}

Unit_Factors Single_Pass_Factors(int from, int to)
{
    const Unit_Factors& a = from_inches[Place_of_Units(from)];
    const Unit_Factors& b = from_inches[Place_of_Units(to)];
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
    const double scale = per_metre[Place_of_Units(to)] / per_metre[Place_of_Units(from)];
    return {scale, 1.0, scale, 1.0, 1.0, 1.0};
}

void Set_Decimals(Design_State& design)
{
    Use_Decimals(design, design.identity.WhichUnit);
}

std::string Unit_Text(const Design_State& design, int code, Unit_Kind kind)
{
    const Unit_Words& w = Words_of_Units(code);
    const std::string length = w.length;
    const std::string position = design.cam.Translating ? length : "deg";
    switch (kind) {
    case Unit_Kind::none:
        return "";
    case Unit_Kind::degrees:
        return "deg";
    case Unit_Kind::position:
        return position;
    case Unit_Kind::position_1:
        return Derivative(design, position, 1);
    case Unit_Kind::position_2:
        return Derivative(design, position, 2);
    case Unit_Kind::position_3:
        return Derivative(design, position, 3);
    case Unit_Kind::position_per_sec:
        return position + "/sec";
    case Unit_Kind::position_per_sec2:
        return position + "/sec^2";
    case Unit_Kind::length:
        return length;
    case Unit_Kind::length_1:
        return Derivative(design, length, 1);
    case Unit_Kind::length_2:
        return Derivative(design, length, 2);
    case Unit_Kind::length_4:
        return Derivative(design, length, 4);
    case Unit_Kind::Lambda:
        return design.cam.Camtype == "Barrel" ? "deg" : length;
    case Unit_Kind::force:
        return w.force;
    case Unit_Kind::torque:
        return length + "-" + w.force;
    case Unit_Kind::stress:
        return w.stress;
    }
    throw Fault{internal_error};
}

bool CamUnits(const Design_State& design, int code, Bounded<std::string, 0, Plot_Group::Last_Unit>& table,
              int table_size)
{
    return Trap("CamUnits in mod_Main", [&] {
        for (int v = 0; v <= table_size + 6; ++v)
            table(v) = Unit_Text(design, code, v <= var::Last ? Variable_at(v).unit : Unit_Kind::none);
    });
}

void Set_Units(Design_State& design)
{
    Name_Variables(design);
    CamUnits(design, design.identity.WhichUnit, design.plot.Var_Unit, design.run.Unit_Table_Size);
    Set_Decimals(design);
}

void Set_Time_Base(Design_State& design, int code)
{
    if (code < 1 || code > 3)
        throw Fault{invalid_argument};
    design.motion.Time_Base = code;
    Set_Units(design);
}

void Change_Units(Design_State& design, int code)
{
    const int from = design.identity.WhichUnit;
    Place_of_Units(from);
    Place_of_Units(code);
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
    Set_Units(design);
    Reach(design, Mark::units_changed);
}

double Shop_Length(const Design_State& design, double inches)
{
    switch (design.identity.WhichUnit) {
    case foot:
        return inches / 12;
    case metre:
        return inches / 40;
    case centimetre:
        return inches * 2.5;
    case millimetre:
        return inches * 25;
    default:
        return inches;
    }
}

double Shop_Prime_Radius(const Design_State& design, double inches)
{
    switch (design.identity.WhichUnit) {
    case centimetre:
        return inches * 2.54;
    case millimetre:
        return inches * 25.4;
    default:
        return Shop_Length(design, inches);
    }
}

void MassProp(Design_State& design)
{
    struct Defaults {
        double Mass, Return_Spring_Rate, Preload, Follower_Stiffness, Mass_m_1, Mass_m_2, Kspring, Roller_length,
            Crown_radius;
    };
    // The foot system has no values of its own for the two-mass model: its fields stay as they are.
    constexpr By_Units<Defaults> defaults{{
        {0.04, 75, 25, 6000, 0.01, 0.03, 6000, 1.0, 56},
        {0.48, 900, 300, 0, 0, 0, 0, 0.083, 4.667},
        {4, 1000, 100, 600000, 2, 3, 400000, 0.025, 1.5},
        {4, 1000, 100, 600000, 2, 3, 400000, 2.5, 150},
        {4, 1000, 100, 600000, 2, 3, 400000, 25, 1500},
    }};
    const int code = design.identity.WhichUnit;
    const Defaults& v = defaults[Place_of_Units(code)];
    Dynamics_Group& d = design.dynamics;
    d.Mass = v.Mass;
    d.Return_Spring_Rate = v.Return_Spring_Rate;
    d.Preload = v.Preload;
    d.Roller_length = v.Roller_length;
    d.Crown_radius = v.Crown_radius;
    if (code != foot) {
        d.Follower_Stiffness = v.Follower_Stiffness;
        d.Mass_m(1) = v.Mass_m_1;
        d.Mass_m(2) = v.Mass_m_2;
        d.Kspring(1) = d.Kspring(2) = v.Kspring;
    }
    d.Comp_Mass = d.Mass / 2;
    d.Comp_Spring_Rate = 2 * d.Return_Spring_Rate;
    d.Comp_Preload = d.Preload;
    d.Zeta_Initial = 0.05;
    d.Bearing_Radius = 1.0;
    d.Mu_of_Shaft = 0.01;
    d.Mu_of_Follower = 0.01;
    d.Coeff_of_Fluctuation = 0.05;
    d.Zeta(1) = d.Zeta(2) = 0.05;
    d.Follower_Weight = 0;
    if (code == inch) {  // the other systems keep their links
        for (int n = 2; n <= Max_Links; ++n) {
            design.linkage.Mass_of_link(n) = 0.001;
            design.linkage.Inertia_of_link(n) = 0.004;
            design.linkage.CGx_of_link(n) = 1.0;
            design.linkage.CGy_of_link(n) = 0;
        }
    }
}

void Roller_Defaults(Design_State& design, double scale)
{
    constexpr By_Units<double> roller{{0.5, 0.0415, 0.0125, 1.3, 12.5}};
    constexpr By_Units<double> cutter{{0.25, 0.0208, 0.00625, 1.0, 8.0}};
    const std::size_t place = Place_of_Units(design.identity.WhichUnit);
    design.cam.Follow_Rad = roller[place] * scale;
    design.cam.Cutter_Radius = cutter[place];
}

}  // namespace lobemax
