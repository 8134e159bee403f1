// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/true_motion.h"

#include <algorithm>
#include <cmath>

#include "camgeom/arm.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "dynamics/departures.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;

/// Whether the cam is not made from the curves of the segments.
bool Stands_in_Rows(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    return f.Imported_Model || f.Polydyne_Calc || f.CompCam_Calc || design.linkage.Drive_End_Effector;
}

/// Of rows of displacement, velocity and acceleration, (60), (61): per radian.
std::vector<Follower_Point> Nodes_of(const Design_State& design, int s, int v, int a)
{
    const Motion_Group& m = design.motion;
    const Table<Single>& data = design.results.CalcData;
    const bool per_second = m.Time_Base == 1;
    const double first = per_second ? 1.0 / m.Shaft_speed : m.Time_Base == 2 ? Deg_per_Rad : 1.0;
    const double second = per_second ? 1.0 / m.Shaft_Speed_Sq : m.Time_Base == 2 ? Deg_per_Rad : 1.0;
    std::vector<Follower_Point> nodes;
    nodes.reserve(static_cast<std::size_t>(m.Max_Data_Points_used) + 1);
    for (int i = 0; i <= m.Max_Data_Points_used; ++i)
        nodes.push_back({data(s, i), data(v, i) * first, data(a, i) * second, 0.0});
    return nodes;
}

/// The follower's motion under a linkage whose end effector is driven: its displacement is the wanted one over the
/// ratio of the point; the derivatives are those of this closed series, by differences over a quarter of a degree.
std::vector<Follower_Point> Driven_Nodes(const Design_State& design)
{
    std::vector<Follower_Point> nodes = Nodes_of(design, var::S, var::V, var::A);
    for (std::size_t i = 0; i < nodes.size(); ++i)
        nodes[i].s /= Link_Ratios(design, static_cast<int>(i)).S;
    const auto points = static_cast<std::ptrdiff_t>(nodes.size()) - 1;  // the last is the first
    const double step = design.motion.Deltatheta;
    const std::ptrdiff_t stride = std::max<std::ptrdiff_t>(1, std::lround(0.25 / step));
    const double h = static_cast<double>(stride) * step * Rad_per_Deg;
    const auto at = [&](std::ptrdiff_t i) {
        return nodes[static_cast<std::size_t>(((i % points) + points) % points)].s;
    };
    for (std::ptrdiff_t i = 0; i <= points; ++i) {
        const double near = at(i + stride) - at(i - stride);
        const double far = at(i + 2 * stride) - at(i - 2 * stride);
        const double near_sum = at(i + stride) + at(i - stride);
        const double far_sum = at(i + 2 * stride) + at(i - 2 * stride);
        Follower_Point& node = nodes[static_cast<std::size_t>(i)];
        node.v = (8.0 * near - far) / (12.0 * h);
        node.a = (16.0 * near_sum - far_sum - 30.0 * at(i)) / (12.0 * h * h);
    }
    return nodes;
}

std::vector<Follower_Point> Nodes_of(const Design_State& design)
{
    if (design.linkage.Drive_End_Effector)
        return Driven_Nodes(design);
    if (!design.flags.Polydyne_Calc)
        return Nodes_of(design, var::S, var::V, var::A);
    Design_State corrected = design;  // rows 23 and 24 need not be the derivatives of row 22
    Correct_Polydyne_Derivatives(corrected);
    return Nodes_of(corrected, var::Polydyne_S, var::Polydyne_V, var::Polydyne_A);
}

/// Displacement of a curve and its derivatives by differences of fourth order, (226). The formulas of a law go on
/// beyond its ends, so that no end needs another rule.
Follower_Point Differences(const Segment_Curve& curve, double beta, double local)
{
    // Degrees: truncation goes with the fourth power of the step's share of beta, rounding with 1E-16 over its square.
    const double step = std::min(0.1, beta / 500.0);
    const double h = step * Rad_per_Deg;
    const auto at = [&](int k) { return curve.At(local + k * step).S; };
    const double s = at(0);
    const double near_sum = at(1) + at(-1);
    const double far_sum = at(2) + at(-2);
    const double near = at(1) - at(-1);
    const double far = at(2) - at(-2);
    return {s, (8.0 * near - far) / (12.0 * h), (16.0 * near_sum - far_sum - 30.0 * s) / (12.0 * h * h),
            (far - 2.0 * near) / (2.0 * h * h * h)};
}

/// Whether the velocity and acceleration of a segment's curve are those of its displacement.
bool Has_Own_Derivatives(const Segment_Curve& curve, double beta)
{
    constexpr double same = 1e-3;  // of the largest; the roundings of a law's constants stay below 1e-4
    if (!curve.Law() || !(beta > 0.0))
        return true;
    double v = 0.0;
    double a = 0.0;
    double off_v = 0.0;
    double off_a = 0.0;
    for (const double x : {0.11, 0.29, 0.43, 0.57, 0.71, 0.89}) {
        const Svajp own = curve.At(x * beta);
        const Follower_Point by_differences = Differences(curve, beta, x * beta);
        v = std::max(v, std::abs(by_differences.v));
        a = std::max(a, std::abs(by_differences.a));
        off_v = std::max(off_v, std::abs(own.V - by_differences.v));
        off_a = std::max(off_a, std::abs(own.A - by_differences.a));
    }
    return off_v <= same * v && off_a <= same * a;
}

}  // namespace

True_Motion::True_Motion(const Design_State& design)
    : step_(design.motion.Deltatheta), scale_(design.cam.Translating ? 1.0 : Rad_per_Deg)
{
    if (!Holds(design, Mark::motion))
        throw Fault{invalid_argument};
    if (design.cam.Conjugate) {
        highest_ = design.motion.Liftmax;
        sign_ = -1.0;
    }
    if (Stands_in_Rows(design)) {
        nodes_ = Nodes_of(design);
        return;
    }
    curve_.emplace(design);
    for (int i = 1; i <= curve_->Segments(); ++i) {
        const Motion_Curve::Place end = curve_->End_of(i);
        if (!Has_Own_Derivatives(*end.curve, end.local))
            odd_.push_back(i);
    }
}

Follower_Point True_Motion::At(double theta) const
{
    const Follower_Point p = curve_ ? From_Curve(theta) : From_Nodes(theta);
    const double k = sign_ * scale_;
    return {highest_ * scale_ + k * p.s, k * p.v, k * p.a, k * p.j};
}

Follower_Point True_Motion::From_Curve(double theta) const
{
    const Motion_Curve::Place place = curve_->Find(theta);
    if (std::ranges::find(odd_, place.segment) != odd_.end()) {
        Follower_Point p = Differences(*place.curve, curve_->End_of(place.segment).local, place.local);
        p.s += place.base;
        return p;
    }
    const Svajp at = place.curve->At(place.local);
    return {at.S + place.base, at.V, at.A, at.J};
}

Follower_Point True_Motion::From_Nodes(double theta) const
{
    if (!std::isfinite(theta))
        throw Fault{overflow};
    double place = std::fmod(theta, turn);
    if (place < 0.0)
        place += turn;
    const auto last = static_cast<std::ptrdiff_t>(nodes_.size()) - 2;
    const std::ptrdiff_t i = std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(place / step_), 0, last);
    const Follower_Point& p = nodes_[static_cast<std::size_t>(i)];
    const Follower_Point& q = nodes_[static_cast<std::size_t>(i) + 1];
    const double h = step_ * Rad_per_Deg;
    const double x = place / step_ - static_cast<double>(i);
    // (225): p in place, its derivatives by x, and what is left for the three powers above.
    const double v = h * p.v;
    const double a = 0.5 * h * h * p.a;
    const double ds = q.s - p.s - v - a;
    const double dv = h * q.v - v - 2.0 * a;
    const double da = h * h * q.a - 2.0 * a;
    const double c3 = 10.0 * ds - 4.0 * dv + 0.5 * da;
    const double c4 = -15.0 * ds + 7.0 * dv - da;
    const double c5 = 6.0 * ds - 3.0 * dv + 0.5 * da;
    return {p.s + x * (v + x * (a + x * (c3 + x * (c4 + x * c5)))),
            (v + x * (2.0 * a + x * (3.0 * c3 + x * (4.0 * c4 + x * 5.0 * c5)))) / h,
            (2.0 * a + x * (6.0 * c3 + x * (12.0 * c4 + x * 20.0 * c5))) / (h * h),
            (6.0 * c3 + x * (24.0 * c4 + x * 60.0 * c5)) / (h * h * h)};
}

}  // namespace lobemax
