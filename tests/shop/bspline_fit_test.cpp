// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/bspline_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/design_state.h"

namespace lobemax {
namespace {

constexpr double degree = std::numbers::pi / 180.0;

Shop_Curve Circle(double radius)
{
    Shop_Curve curve;
    curve.at = [radius](double t) {
        const Vector d = Direction(t * degree);
        return Curve_Place{radius * d, Quarter(d)};
    };
    return curve;
}

/// Two half circles whose ends lie apart by 4: a closed curve with two jumps that lines join.
Shop_Curve Two_Halves()
{
    Shop_Curve curve;
    curve.at = [](double t) {
        const double turned = std::fmod(t + 360.0, 360.0);
        const Vector d = Direction(turned * degree);
        return Curve_Place{30.0 * d + Vector{0.0, turned < 180.0 ? 2.0 : -2.0}, Quarter(d)};
    };
    curve.breaks = {180.0};
    return curve;
}

// De Boor's scheme on the knots and control points alone: every point of the circle's spline has the radius within the
// told deviation, the seam included, and the largest is what was told.
TEST(Spline_Fit, lies_on_a_circle_within_what_it_tells)
{
    const Shop_Curve curve = Circle(50.0);
    const Curve_Samples samples(curve);
    for (const double tolerance : {1e-1, 1e-3, 1e-5}) {
        const Cubic_Spline spline = Fit_Spline(samples, tolerance);
        ASSERT_EQ(spline.knots.size(), spline.control.size() + 4);
        EXPECT_TRUE(std::ranges::is_sorted(spline.knots));
        double worst = 0.0;
        for (int i = 0; i <= 20000; ++i)
            worst = std::max(worst, std::abs(Length(spline.At(spline.knots.back() * i / 20000.0)) - 50.0));
        EXPECT_LE(spline.largest_deviation, tolerance);
        EXPECT_NEAR(worst, spline.largest_deviation, 0.05 * spline.largest_deviation);
        EXPECT_LT(Length(spline.control.front() - spline.control.back()), 1e-9);
    }
}

// Between n points the spline of a circle misses it by r h^4 / 384 at h = 2 pi / n.
TEST(Spline_Fit, falls_with_the_fourth_power_of_the_points)
{
    const Shop_Curve curve = Circle(50.0);
    const Curve_Samples samples(curve);
    const Cubic_Spline spline = Fit_Spline(samples, 1e-5);
    const double h = 2.0 * std::numbers::pi / static_cast<double>(spline.points - 1);
    EXPECT_NEAR(spline.largest_deviation, 50.0 * std::pow(h, 4) / 384.0, 0.1 * spline.largest_deviation);
}

TEST(Spline_Fit, is_twice_differentiable_at_its_seam)
{
    const Shop_Curve curve = Circle(50.0);
    const Curve_Samples samples(curve);
    const Cubic_Spline spline = Fit_Spline(samples, 1e-3);
    const double end = spline.knots.back();
    const double h = 1e-3;
    const Vector first = 1.0 / h * (spline.At(h) - spline.At(0.0));
    const Vector last = 1.0 / h * (spline.At(end) - spline.At(end - h));
    EXPECT_LT(Length(first - last), 1.1 * h / 50.0);
    const Vector bend_first = 1.0 / (h * h) * (spline.At(2 * h) - 2.0 * spline.At(h) + spline.At(0.0));
    const Vector bend_last = 1.0 / (h * h) * (spline.At(end) - 2.0 * spline.At(end - h) + spline.At(end - 2 * h));
    EXPECT_LT(Length(bend_first - bend_last), 0.01 / 50.0);
    EXPECT_NEAR(Length(bend_first), 1.0 / 50.0, 0.001);
}

TEST(Spline_Fit, keeps_corners_and_joins_jumps_by_lines)
{
    const Shop_Curve curve = Two_Halves();
    const Curve_Samples samples(curve);
    const Cubic_Spline spline = Fit_Spline(samples, 1e-3);
    double worst = 0.0;
    for (int i = 0; i <= 20000; ++i) {
        const Vector p = spline.At(spline.knots.back() * i / 20000.0);
        const double side = p.y > 2.0 ? 2.0 : p.y < -2.0 ? -2.0 : p.y;
        const double off = std::abs(p.y) > 2.0 ? Length(p - Vector{0.0, side}) - 30.0 : std::abs(p.x) - 30.0;
        worst = std::max(worst, std::abs(off));
    }
    EXPECT_LE(worst, 1e-3);
    EXPECT_LT(Length(spline.control.front() - spline.control.back()), 1e-9);
}

TEST(Spline_Fit, refuses_what_is_no_tolerance)
{
    const Shop_Curve curve = Circle(50.0);
    const Curve_Samples samples(curve);
    for (const double tolerance : {0.0, -1.0, 1e-12, 50.0, std::nan("")})
        EXPECT_THROW(Fit_Spline(samples, tolerance), Fault);
}

}  // namespace
}  // namespace lobemax
