// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/law_curves.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/design_state.h"
#include "motion/motion_programs.h"

namespace lobemax {

namespace {

double Largest(const std::vector<double>& values)
{
    double largest = 0.0;
    for (const double value : values)
        largest = std::max(largest, std::abs(value));
    return largest;
}

}  // namespace

Law_Curves Curves_of_Law(std::string_view code)
{
    const Motion_Program* const program = Find_Program(code);
    if (program == nullptr || program->kinds != "RF")
        return {};
    Design_State design;
    constexpr int steps = 180;  // degrees of the segment, a point each
    Allocate_Arrays(design, design.run.Saved_Variables, design.motion.Max_Data_Points_used);
    Motion_Group& m = design.motion;
    m.Time_Base = 3;
    m.Rise_Fall_Dwell(1) = "R";
    Pick_Program(design, 1, code);
    m.Beta_Deg(1) = steps;
    m.Beta_Rad(1) = steps / Deg_per_Rad;
    m.Gamma(1) = steps;
    m.Total_Displacement(1) = m.Lift = 1.0;
    Law_Curves curves;
    if (!Run_Motion_Program(design, 1))
        return curves;
    const double beta = m.Beta_Rad(1);
    for (int p = 0; p <= steps; ++p) {
        const auto value = [&design, p](int variable) -> double { return design.results.CalcData(variable, p); };
        curves.x.push_back(static_cast<double>(p) / steps);
        curves.S.push_back(value(var::S));
        curves.V.push_back(value(var::V) * beta);
        curves.A.push_back(value(var::A) * beta * beta);
        curves.J.push_back(value(var::J) * beta * beta * beta);
    }
    curves.peak_V = Largest(curves.V);
    curves.peak_A = Largest(curves.A);
    curves.peak_J = Largest(curves.J);
    return curves;
}

}  // namespace lobemax
