// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segment_curve.h"

#include <algorithm>
#include <cmath>

#include "motion/motion_programs.h"

namespace lobemax {

Svajp Segment_Curve::At(double theta) const
{
    if (const Spline_Curve* const spline = Spline())
        return spline->At(theta);
    if (beta_ == 0.0)
        throw Fault{overflow};
    const double x = theta / beta_;
    const Segment_Law* const law = Law();
    return law != nullptr ? law->At(x, theta) : Polynomial()->At(x);
}

bool Segment_Curve::Has_Points() const
{
    const Segment_Law* const law = Law();
    return law == nullptr || law->Has_Points();
}

Law_Segment Segment_of_Law(const Design_State& design, int Seg, double lift)
{
    Check_Segment(Seg);
    const Motion_Group& m = design.motion;
    return {.L = lift,
            .beta = m.Beta_Deg(Seg),
            .b = m.Beta_Rad(Seg),
            .kind = m.Rise_Fall_Dwell(Seg),
            .working_point = {.S = m.Seg_S, .V = m.Seg_V, .A = m.Seg_A, .J = m.Seg_J, .P = m.Seg_P}};
}

Segment_Law Law_of_Segment(const Design_State& design, int Seg, double lift)
{
    const Motion_Group& m = design.motion;
    const Law_Segment segment = Segment_of_Law(design, Seg, lift);
    return {m.Seg_Program(Seg), m.Full_Half(Seg), m.Which_half(Seg), segment};
}

Segment_Curve Curve_of_Segment(const Design_State& design, int Seg)
{
    Check_Segment(Seg);
    const Motion_Group& m = design.motion;
    const bool conditions = Asks_Conditions(design, Seg);
    if (conditions && m.Seg_Program(Seg) == selector::polynomial) {
        Polynomial_Solution solution;
        if (!m.Polydone(Seg) || !Solve_Polynomial(design, Seg, solution))
            throw Fault{invalid_argument};
        return {Polynomial_Curve(solution, m.Beta_Rad(Seg)), m.Beta_Deg(Seg)};
    }
    if (conditions && m.Seg_Program(Seg) == selector::spline) {
        Spline_Curve spline;
        if (!m.Splines_Calculated(Seg) || !Solve_Spline(design, Seg, spline))
            throw Fault{invalid_argument};
        return {spline, m.Beta_Deg(Seg)};
    }
    return {Law_of_Segment(design, Seg, m.Total_Displacement(Seg)), m.Beta_Deg(Seg)};
}

Motion_Curve::Motion_Curve(const Design_State& design)
{
    constexpr double turn = 360.0;
    const Motion_Group& m = design.motion;
    parts_.reserve(static_cast<std::size_t>(m.No_of_segments));
    for (int i = 1; i <= m.No_of_segments; ++i)
        parts_.push_back(
            {m.Shift(i), m.Shift(i) + m.Beta_Deg(i), m.Beta_Deg(i), m.Base_Shift(i), Curve_of_Segment(design, i)});
    if (!parts_.empty() && turn - parts_.back().end <= m.Deltatheta / 2.0)
        parts_.back().end = std::max(parts_.back().end, turn);
}

Svajp Motion_Curve::At(double angle) const
{
    const Place place = Find(angle);
    Svajp point = place.curve->At(place.local);
    point.S += place.base;
    return point;
}

Motion_Curve::Place Motion_Curve::Find(double angle) const
{
    constexpr double turn = 360.0;
    if (!std::isfinite(angle))
        throw Fault{overflow};
    double place = std::fmod(angle, turn);
    if (place < 0.0)
        place += turn;
    if (place >= turn)  // a hair below zero rounds up to the turn
        place = 0.0;
    // The last segment that starts at or before the place, so that one of no length is passed over.
    const auto next = std::upper_bound(parts_.begin(), parts_.end(), place,
                                       [](double value, const Part& part) { return value < part.start; });
    if (next == parts_.begin())
        throw Fault{out_of_bounds};
    const Part& part = *(next - 1);
    if (place >= part.end)
        throw Fault{out_of_bounds};
    return {&part.curve, static_cast<int>(next - parts_.begin()), place - part.start, part.base};
}

Motion_Curve::Place Motion_Curve::End_of(int segment) const
{
    const Part& part = parts_[Checked_Place(segment, 1, Segments())];
    return {&part.curve, segment, part.beta, part.base};
}

}  // namespace lobemax
