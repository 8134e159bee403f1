// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/law_curves.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"
#include "motion/motion_programs.h"
#include "motion/segment_curve.h"

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
    constexpr int steps = 180;  // degrees of the segment, a point each
    constexpr double b = steps / Deg_per_Rad;
    const Segment_Law law(program->Seg_Program, program->Full_Half, program->Which_half,
                          {.L = 1.0, .beta = steps, .b = b, .kind = "R", .working_point = {}});
    const Segment_Curve curve(law, steps);
    Law_Curves curves;
    for (int p = 0; p <= steps; ++p) {
        const Svajp point = curve.At(p);
        curves.x.push_back(static_cast<double>(p) / steps);
        curves.S.push_back(point.S);
        curves.V.push_back(point.V * b);
        curves.A.push_back(point.A * b * b);
        curves.J.push_back(point.J * b * b * b);
    }
    curves.peak_V = Largest(curves.V);
    curves.peak_A = Largest(curves.A);
    curves.peak_J = Largest(curves.J);
    return curves;
}

}  // namespace lobemax
