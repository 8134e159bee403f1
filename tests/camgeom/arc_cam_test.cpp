// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/arc_cam.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>

#include "camgeom/profile_import.h"

namespace lobemax {
namespace {

constexpr double pi = 3.14159265358979323846;
using Vector = std::complex<double>;

/// The outline as points, each arc by its own circle: built from the tangency of the circles alone.
std::vector<Vector> Outline(const Arc_Cam& cam, int points)
{
    // The flank's centre: at flank - base from the cam's centre and flank - nose from the nose's.
    const Vector nose{cam.base + cam.lift - cam.nose, 0.0};
    const double q = cam.flank - cam.base;
    const double n = cam.flank - cam.nose;
    const double d = nose.real();
    const double x = (d * d + q * q - n * n) / (2 * d);
    const Vector flank{x, -std::sqrt(q * q - x * x)};  // below: it bulges above
    const double end = std::arg(-flank);
    const double nose_end = std::arg(nose - flank);
    std::vector<Vector> outline;
    for (int i = 0; i <= points; ++i) {
        const double normal = pi * i / points;
        const Vector e = std::polar(1.0, normal);
        const Vector p = normal <= nose_end ? nose + cam.nose * e
                         : normal <= end    ? flank + cam.flank * e
                                            : cam.base * e;
        outline.push_back(p);
        outline.push_back(std::conj(p));
    }
    return outline;
}

const Arc_Cam example{20, 60, 5, 8, 0};

TEST(Arc_Cams, carry_a_flat_face_by_the_support_of_their_outline)
{
    const std::vector<Vector> outline = Outline(example, 20000);
    for (int degrees = 0; degrees <= 180; degrees += 3) {
        const Vector u = std::polar(1.0, degrees * pi / 180);
        double support = 0.0;
        for (const Vector& p : outline)
            support = std::max(support, p.real() * u.real() + p.imag() * u.imag());
        EXPECT_NEAR(Lift_of(example, degrees * pi / 180)[0], support - example.base, 1E-5) << degrees;
        EXPECT_EQ(Lift_of(example, -degrees * pi / 180)[0], Lift_of(example, degrees * pi / 180)[0]);
    }
}

TEST(Arc_Cams, carry_a_roller_that_touches_and_does_not_cut)
{
    Arc_Cam cam = example;
    cam.roller = 9.0;
    const std::vector<Vector> outline = Outline(cam, 20000);
    for (int degrees = 0; degrees <= 180; degrees += 3) {
        const double r = Lift_of(cam, degrees * pi / 180)[0] + cam.base + cam.roller;
        const Vector centre = std::polar(r, degrees * pi / 180);
        double nearest = 1E9;
        for (const Vector& p : outline)
            nearest = std::min(nearest, std::abs(p - centre));
        EXPECT_NEAR(nearest, cam.roller, 1E-5) << degrees;
    }
}

TEST(Arc_Cams, have_the_lift_at_the_nose_and_none_on_the_base_circle)
{
    for (const double roller : {0.0, 9.0}) {
        Arc_Cam cam = example;
        cam.roller = roller;
        EXPECT_NEAR(Lift_of(cam, 0.0)[0], 8.0, 1E-12);
        EXPECT_EQ(Lift_of(cam, pi)[0], 0.0);
        const double end = Angles_of(cam).flank_end * pi / 180;
        EXPECT_NEAR(Lift_of(cam, end - 1E-6)[0], 0.0, 1E-9);
        EXPECT_NEAR(Lift_of(cam, end - 1E-6)[1], 0.0, 1E-4);
        EXPECT_LT(Angles_of(cam).nose_end, Angles_of(cam).flank_end);
    }
}

TEST(Arc_Cams, have_derivatives_and_are_smooth_where_arcs_meet)
{
    for (const double roller : {0.0, 9.0}) {
        Arc_Cam cam = example;
        cam.roller = roller;
        constexpr double h = 1E-5;
        for (const double degrees : {3.0, 10.0, 40.0, 50.0, -20.0}) {
            const double t = degrees * pi / 180;
            EXPECT_NEAR(Lift_of(cam, t)[1], (Lift_of(cam, t + h)[0] - Lift_of(cam, t - h)[0]) / (2 * h), 1E-5);
            EXPECT_NEAR(Lift_of(cam, t)[2], (Lift_of(cam, t + h)[1] - Lift_of(cam, t - h)[1]) / (2 * h), 1E-3);
        }
        const double meet = Angles_of(cam).nose_end * pi / 180;
        EXPECT_NEAR(Lift_of(cam, meet - 1E-7)[0], Lift_of(cam, meet + 1E-7)[0], 1E-5);
        EXPECT_NEAR(Lift_of(cam, meet - 1E-7)[1], Lift_of(cam, meet + 1E-7)[1], 1E-4);
        EXPECT_GT(std::abs(Lift_of(cam, meet - 1E-7)[2] - Lift_of(cam, meet + 1E-7)[2]), 10.0) << "a jump";
    }
}

TEST(Arc_Cams, say_why_their_arcs_make_none)
{
    const auto why = [](const Arc_Cam& cam) { return Arcs_may_be(cam); };
    EXPECT_EQ(why(example), "");
    EXPECT_EQ(why({20, 60, 0, 8, 0}), "Base, flank, nose and lift of a cam of arcs must be above zero.");
    EXPECT_EQ(why({20, 60, 5, 8, -1}), "The roller's radius must not be below zero.");
    EXPECT_EQ(why({20, 15, 5, 8, 0}), "The flank's radius must be larger than those of base and nose.");
    EXPECT_EQ(why({20, 60, 40, 8, 0}), "The nose is too large for this base circle and lift.");
    EXPECT_EQ(why({20, 21, 20.5, 8, 0}), "No flank of this radius joins base circle and nose.");
}

TEST(Arc_Cams, give_pairs_that_an_import_reads)
{
    const Pairs_Read read = Read_Pairs(Pairs_of(example, 0.5));
    EXPECT_EQ(read.problem, "");
    ASSERT_EQ(read.pairs.size(), 720U);
    EXPECT_EQ(read.pairs[360].first, 180.0);
    EXPECT_NEAR(read.pairs[360].second, 8.0, 1E-6);
    EXPECT_EQ(read.pairs[0].second, 0.0);
    EXPECT_NEAR(read.pairs[400].second, Lift_of(example, 20 * pi / 180)[0], 1E-6);
}

}  // namespace
}  // namespace lobemax
