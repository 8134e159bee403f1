// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/design_state.h"

#include <algorithm>

#include "core/traps.h"

namespace lobemax {

void Curve_Store::Dimension(int last_point)
{
    *this = Curve_Store{};
    last_point_ = last_point;
}

void Curve_Store::Store(int column, int constraint, int p, Single value)
{
    const std::size_t place = Checked_Place(p, 0, last_point_);
    std::vector<Single>& curve = curves_(column, constraint);
    if (curve.empty())
        curve.resize(static_cast<std::size_t>(last_point_) + 1);
    curve[place] = value;
}

Single Curve_Store::operator()(int column, int constraint, int p) const
{
    const std::size_t place = Checked_Place(p, 0, last_point_);
    const std::vector<Single>& curve = curves_(column, constraint);
    return curve.empty() ? Single{} : curve[place];
}

void Set_Max_Variables(Design_State& design)
{
    design.run.Saved_Variables = var::Last_Stored;
    design.run.Max_Variables = var::Last;
    design.run.Unit_Table_Size = var::Last;
}

void Allocate_Arrays(Design_State& design, int saved_variables, int points)
{
    if (saved_variables < 0 || points < 1 || points > Max_Points)
        throw Fault{out_of_bounds};
    Results_Group& r = design.results;
    r.CalcData.Dimension(std::max<int>(saved_variables, design.run.Saved_Variables), points);
    r.Constraint_Curve.Dimension(points);
    r.Profile_X.Dimension(points);
    r.Profile_Y.Dimension(points);
    r.Fft_Work_A.Dimension(4, points / 2);
    r.Fft_Work_B.Dimension(4, points);
    r.Ext_Force_Table.Dimension(points);
    r.Arm_Pivot_X.Dimension(points);
    r.Arm_Pivot_Y.Dimension(points);
}

bool Dimension_Arrays(Design_State& design, int saved_variables, int points)
{
    return Trap("Dimension_Arrays in mod_Main", [&] { Allocate_Arrays(design, saved_variables, points); });
}

void Dimension_Link_Arrays(Design_State& design, int points)
{
    if (points < 1 || points > Max_Points)
        throw Fault{out_of_bounds};
    Results_Group& r = design.results;
    for (Table<Single>* table : {&r.Link_Theta, &r.Link_Omega, &r.Link_Alpha, &r.Link_X, &r.Link_Y})
        table->Dimension(Max_Links, points);
    for (Row<Single>* row : {&r.Link_Ratio_S, &r.Link_Ratio_V, &r.Link_Ratio_A})
        row->Dimension(points);
}

const std::string& Short_Heading(const Design_State& design, int variable)
{
    return design.plot.Var_Short(variable - 1);
}

void Set_Omega_Powers(Design_State& design)
{
    Motion_Group& m = design.motion;
    m.Shaft_Speed_Sq = m.Shaft_speed * m.Shaft_speed;
    m.Shaft_Speed_Cu = m.Shaft_Speed_Sq * m.Shaft_speed;
}

}  // namespace lobemax
