// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "core/ladder.h"
#include "core/text.h"
#include "truth/check_parts.h"

namespace lobemax {

namespace {

constexpr double same_position = 1e-4;  // of the stroke: above it a position does not fit
constexpr double same_rate = 1e-3;      // of the largest rate

double Stroke(const std::vector<Follower_Point>& points)
{
    const auto [low, high] = std::ranges::minmax(points, {}, &Follower_Point::s);
    return high.s - low.s;
}

/// Jumps where segments meet, and at the end of the turn.
void Check_Joints(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points)
{
    const Motion_Curve* const curve = motion.Curve();
    if (curve == nullptr)
        return;
    constexpr std::array words{"position", "velocity", "acceleration"};
    std::array<double, 3> largest{};  // of the motion
    for (const Follower_Point& p : points) {
        largest[1] = std::max(largest[1], std::abs(p.v));
        largest[2] = std::max(largest[2], std::abs(p.a));
    }
    largest[0] = Stroke(points);
    const double unit = work.design.cam.Translating ? 1.0 : Rad_per_Deg;
    std::array<double, 3> worst{};
    std::array<double, 3> where{};
    for (int i = 1; i <= curve->Segments(); ++i) {
        const Motion_Curve::Place end = curve->End_of(i);
        Svajp before = end.curve->At(end.local);
        before.S += end.base;
        const double angle = i == curve->Segments() ? 0.0 : double{work.design.motion.Shift(i + 1)};
        const Svajp after = curve->At(angle);
        const std::array jumps{after.S - before.S, after.V - before.V, after.A - before.A};
        for (std::size_t k = 0; k < jumps.size(); ++k) {
            if (std::abs(jumps[k]) * unit > std::abs(worst[k])) {
                worst[k] = jumps[k] * unit;
                where[k] = angle;
            }
        }
    }
    for (std::size_t k = 0; k < worst.size(); ++k) {
        const double share = largest[k] > 0.0 ? std::abs(worst[k]) / largest[k] : 0.0;
        if (share <= (k == 0 ? same_position : same_rate))
            continue;
        const Severity severity = k == 0 ? Severity::do_not_cut : k == 1 ? Severity::warning : Severity::note;
        constexpr std::array<std::string_view, 3> codes{"jump_of_position", "jump_of_velocity", "jump_of_acceleration"};
        Finding& f = work.Add(codes[k], std::string("Jump of ") + words[k], severity, Finding_Place::motion);
        Check_Work::Put_Angle(f, where[k], &motion);
        f.sentence = std::string("The ") + words[k] + " jumps " + work.At(where[k]) + " by " +
                     work.Number(100.0 * share, 3) + " % of its " + (k == 0 ? "stroke" : "largest value") + ".";
        f.advice = k == 0   ? "Make the end of each segment the start of the next, that of the last included."
                   : k == 1 ? "No follower can do this: choose laws whose velocities meet at the joints."
                            : "The jerk is infinite there and the train is struck: choose laws whose accelerations "
                              "meet.";
    }
}

/// The stored rows beside the curve of the segment table.
void Check_Rows(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points)
{
    if (motion.From_Rows() || work.design.cam.Conjugate)
        return;
    const double unit = work.design.cam.Translating ? 1.0 : Rad_per_Deg;
    double worst = 0.0;
    int at = 0;
    for (int i = 0; i < work.Last(); ++i) {
        const double off = std::abs(work.Row(var::S, i) * unit - points[static_cast<std::size_t>(i)].s);
        if (off > worst) {
            worst = off;
            at = i;
        }
    }
    const double stroke = Stroke(points);
    if (worst <= same_position * stroke || stroke == 0.0)
        return;
    Finding& f = work.Add("stale_motion", "Motion is not the table's", Severity::do_not_cut, Finding_Place::motion);
    Check_Work::Put_Angle(f, work.Angle(at), &motion);
    f.row = work.Row(var::S, at);
    f.truth = points[static_cast<std::size_t>(at)].s / unit;
    f.unit = work.Position_Unit();
    f.sentence = "The calculated displacement is " + work.Position(*f.row) + " " + work.At(work.Angle(at)) +
                 ", by the segment table it is " + work.Position(*f.truth) + ".";
    f.advice = "Calculate the motion anew.";
}

void Check_Laws(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points)
{
    if (motion.Odd_Segments().empty())
        return;
    std::string names;
    for (const int segment : motion.Odd_Segments())
        names += (names.empty() ? "" : ", ") + std::to_string(segment);
    // By how much the table's velocity is off, of the true largest.
    const Motion_Curve& curve = *motion.Curve();
    const double unit = work.design.cam.Translating ? 1.0 : Rad_per_Deg;
    double off = 0.0;
    double largest = 0.0;
    int at = 0;
    for (int i = 0; i < work.Last(); ++i) {
        const Follower_Point& p = points[static_cast<std::size_t>(i)];
        const double difference = std::abs(std::abs(curve.At(work.Angle(i)).V) * unit - std::abs(p.v));
        largest = std::max(largest, std::abs(p.v));
        if (difference > off) {
            off = difference;
            at = i;
        }
    }
    Finding& f = work.Add("series_lift", "Series over another lift than 1", Severity::warning, Finding_Place::motion);
    Check_Work::Put_Angle(f, work.Angle(at), &motion);
    f.segment = motion.Odd_Segments().front();
    f.sentence = "Velocity, acceleration and jerk of segment " + names +
                 " are not the derivatives of its displacement: this series is right for a lift of 1 alone. The "
                 "velocity is off by up to " +
                 work.Number(largest > 0.0 ? 100.0 * off / largest : 0.0, 3) + " % of its largest.";
    f.advice = "Take another law; pressure angle, curvature, forces and stresses rest on these rows.";
}

void Check_Motion_Limits(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points)
{
    const bool translating = work.design.cam.Translating;
    const double unit = translating ? 1.0 : Deg_per_Rad;
    const double omega = work.design.motion.Shaft_speed;
    const std::array limits{translating ? Limit::V : Limit::V_Arm, translating ? Limit::A : Limit::A_Arm,
                            translating ? Limit::J : Limit::J_Arm};
    const std::array rates{&Follower_Point::v, &Follower_Point::a, &Follower_Point::j};
    double factor = unit;
    for (std::size_t k = 0; k < limits.size(); ++k) {
        factor *= omega;
        if (!work.limits[limits[k]])
            continue;
        const auto worst =
            std::ranges::max_element(points, {}, [&](const Follower_Point& p) { return std::abs(p.*rates[k]); });
        const double value = std::abs((*worst).*rates[k]) * factor;
        if (Finding* const f = work.Hold_Against(limits[k], value, static_cast<int>(worst - points.begin()),
                                                 Finding_Place::motion, &motion))
            f->advice = "Run slower, or give the segment more of the cycle or a law with a lower peak.";
    }
}

}  // namespace

void Check_Motion(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points)
{
    Check_Joints(work, motion, points);
    Check_Rows(work, motion, points);
    Check_Laws(work, motion, points);
    Check_Motion_Limits(work, motion, points);
    if (motion.From_Rows()) {
        // A motion of rows has no joints; it must come back to where it began.
        const double stroke = Stroke(points);
        const double gap = std::abs(points.back().s - points.front().s);
        if (gap > same_position * stroke) {
            Finding& f = work.Add("jump_of_position", "Jump of position", Severity::do_not_cut, Finding_Place::motion);
            Check_Work::Put_Angle(f, 0.0, &motion);
            f.sentence = "The motion does not come back to where it began: the gap is " +
                         work.Number(100.0 * gap / stroke, 3) + " % of its stroke.";
            f.advice = "Close the measured data, or make the end of the last segment the start of the first.";
        }
    }
}

}  // namespace lobemax
