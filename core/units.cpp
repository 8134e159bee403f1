// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/units.h"

#include <array>

#include "core/messages.h"
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

constexpr By_Units<std::array<int, 6>> decimals{{
    {3, 2, 2, 4, 2, 1},
    {3, 2, 3, 3, 2, 1},
    {4, 2, 3, 3, 3, 0},
    {3, 2, 3, 3, 3, 0},
    {2, 2, 3, 3, 3, 0},
}};

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

void Set_Decimals(Design_State& design)
{
    const std::array<int, 6>& d = decimals[Place_of_Units(design.identity.WhichUnit)];
    Identity_Group& id = design.identity;
    id.Decimals_1 = d[0];
    id.Decimals_2 = d[1];
    id.Decimals_3 = d[2];
    id.Decimals_4 = d[3];
    id.Decimals_5 = d[4];
    id.Decimals_6 = d[5];
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
    CamUnits(design, Units_of_Results(design), design.plot.Var_Unit, design.run.Unit_Table_Size);
    // The external force is converted with the design, its row is never of other units.
    design.plot.Var_Unit(var::Ext_Force) = Unit_Text(design, design.identity.WhichUnit, Unit_Kind::force);
    Set_Decimals(design);
}

int Units_of_Results(const Design_State& design)
{
    return Results_in_Other_Units(design) ? design.results.WhichUnit : design.identity.WhichUnit;
}

bool Results_in_Other_Units(const Design_State& design)
{
    return design.results.WhichUnit != 0;
}

std::string Other_Units_Sentence(const Design_State& design)
{
    return std::string("The results in memory are those of the units before (") +
           Words_of_Units(Units_of_Results(design)).status +
           "): \na change of units converts the data of the design, and no calculated results. ";
}

bool Refuse_Other_Units(const Design_State& design)
{
    if (!Results_in_Other_Units(design))
        return false;
    Show_Message(Other_Units_Sentence(design) + "\nPlease recalculate first: File menu, Recalculate.", Buttons::OK,
                 Symbol::exclamation);
    return true;
}

void Set_Time_Base(Design_State& design, int code)
{
    if (code < 1 || code > 3)
        throw Fault{invalid_argument};
    design.motion.Time_Base = code;
    Set_Units(design);
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

Roller_Sizes Usual_Roller(const Design_State& design)
{
    constexpr By_Units<Roller_Sizes> sizes{{{0.5, 0.25}, {0.0415, 0.0208}, {0.0125, 0.00625}, {1.3, 1.0}, {12.5, 8.0}}};
    return sizes[Place_of_Units(design.identity.WhichUnit)];
}

double Length_Divisor(const Design_State& design)
{
    constexpr int centimetre = 4;
    constexpr int millimetre = 5;
    switch (design.identity.WhichUnit) {
    case centimetre:
        return 100.0;
    case millimetre:
        return 1000.0;
    default:
        return 1.0;
    }
}

}  // namespace lobemax
