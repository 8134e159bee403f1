// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/true_motion.h"

#include <cmath>

#include "core/ladder.h"
#include "tests/support/cam_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;

TEST(True_Motions, a_motion_of_segments_is_that_of_the_rows_unrounded)
{
    for (const bool translating : {true, false}) {
        ASSERT_NO_FATAL_FAILURE((Cam_Maker{.translating = translating}.Make()));
        const True_Motion motion(design);
        const double unit = translating ? 1.0 : Rad_per_Deg;
        EXPECT_FALSE(motion.From_Rows());
        EXPECT_TRUE(motion.Odd_Segments().empty());
        for (int i = 0; i < 360; ++i) {
            const Follower_Point p = motion.At(i);
            EXPECT_NEAR(p.s, Data(var::S, i) * unit, 2e-6 * unit);
            EXPECT_NEAR(p.v, Data(var::V, i) / 12.0 * unit, 1e-5 * unit);
            EXPECT_NEAR(p.a, Data(var::A, i) / 144.0 * unit, 1e-4 * unit);
        }
        EXPECT_EQ(motion.Segment_at(10.0), 1);
        EXPECT_EQ(motion.Segment_at(369.0), 1);
        EXPECT_EQ(motion.Segment_at(200.0), 3);
    }
}

TEST(True_Motions, a_conjugate_has_what_is_left_of_the_lift)
{
    ASSERT_NO_FATAL_FAILURE(Cam_Maker{}.Make());
    const True_Motion primary(design);
    design.cam.Conjugate = true;
    const True_Motion conjugate(design);
    for (const double theta : {0.0, 31.7, 64.2, 140.0, 255.5}) {
        const Follower_Point p = primary.At(theta);
        const Follower_Point q = conjugate.At(theta);
        EXPECT_NEAR(p.s + q.s, 20.0, 1e-6);
        EXPECT_DOUBLE_EQ(p.v, -q.v);
        EXPECT_DOUBLE_EQ(p.a, -q.a);
    }
}

// The quintic through the stored points of a motion whose curve is known: between the points it is as near as the
// roundings of the rows let it be.
TEST(True_Motions, a_motion_of_rows_goes_through_them_and_between_them_as_their_curve)
{
    for (const int base : {1, 2, 3}) {
        ASSERT_NO_FATAL_FAILURE((Cam_Maker{.time_base = base}.Make()));
        const True_Motion curve(design);
        design.flags.Imported_Model = true;
        const True_Motion rows(design);
        ASSERT_TRUE(rows.From_Rows());
        EXPECT_EQ(rows.Segment_at(10.0), 0);
        for (double theta = 0.0; theta < 360.0; theta += 0.37) {
            const Follower_Point p = curve.At(theta);
            const Follower_Point q = rows.At(theta);
            EXPECT_NEAR(q.s, p.s, 5e-6);
            EXPECT_NEAR(q.v, p.v, 5e-4);  // a displacement's last bit over a degree
            // At a joint the jerk of this law jumps by nothing, its derivative does.
            EXPECT_NEAR(q.a, p.a, 0.05);
        }
        EXPECT_NEAR(rows.At(-30.0).s, curve.At(330.0).s, 5e-6);
    }
}

// Over a lift of 20 the series' own velocity is not the derivative of its displacement: docs/theory.md, (38).
TEST(True_Motions, a_series_over_another_lift_has_the_derivatives_of_its_displacement)
{
    ASSERT_NO_FATAL_FAILURE(Cam_Maker{}.Make());
    ASSERT_TRUE(Pick_Program(design, 1, "ST"));
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    const True_Motion motion(design);
    ASSERT_EQ(motion.Odd_Segments(), std::vector{1});
    const double h = 0.01 * Rad_per_Deg;
    for (const double theta : {12.3, 40.0, 77.7, 101.0}) {
        const Follower_Point before = motion.At(theta - 0.01);
        const Follower_Point after = motion.At(theta + 0.01);
        EXPECT_NEAR(motion.At(theta).v, (after.s - before.s) / (2.0 * h), 1e-4);
        EXPECT_NEAR(motion.At(theta).a, (after.v - before.v) / (2.0 * h), 2e-3);
        EXPECT_GT(std::abs(motion.At(theta).v - Data(var::V, static_cast<int>(theta)) / 12.0), 0.1);
    }
}

// A train without mass asks for the wanted motion itself: nonsense in the rows of its derivatives does no harm.
TEST(True_Motions, a_polydyne_cam_has_the_derivatives_of_its_own_displacement)
{
    ASSERT_NO_FATAL_FAILURE((Cam_Maker{.step = 0.5}.Make()));
    const True_Motion wanted(design);
    for (const int end : {1, 2}) {
        design.dynamics.Mass_m(end) = 0.0;
        design.dynamics.Kspring(end) = 1000.0;
    }
    for (int i = 0; i <= 720; ++i) {
        design.results.CalcData(var::Polydyne_S, i) = design.results.CalcData(var::S, i);
        design.results.CalcData(var::Polydyne_V, i) = 1000.0;
        design.results.CalcData(var::Polydyne_A, i) = -1000.0;
    }
    Reach(design, Mark::polydyne);
    const True_Motion motion(design);
    ASSERT_TRUE(motion.From_Rows());
    for (const double theta : {20.25, 111.0, 222.2, 300.0}) {
        EXPECT_NEAR(motion.At(theta).s, wanted.At(theta).s, 1e-5);
        EXPECT_NEAR(motion.At(theta).v, wanted.At(theta).v, 2e-3);
        EXPECT_NEAR(motion.At(theta).a, wanted.At(theta).a, 0.1);
    }
}

TEST(True_Motions, a_driven_end_effector_has_the_wanted_motion_over_the_ratio)
{
    ASSERT_NO_FATAL_FAILURE((Cam_Maker{.step = 0.5, .translating = false}.Make()));
    design.linkage.Drive_End_Effector = true;
    for (int i = 0; i <= 720; ++i) {
        const double t = 0.5 * i * Rad_per_Deg;
        design.results.CalcData(var::S, i) = 2.0 * (10.0 + 5.0 * std::sin(t));
        design.results.Link_Ratio_S(i) = 2.0;
    }
    const True_Motion motion(design);
    for (const double theta : {20.25, 111.0, 222.2, 359.75}) {
        const double t = theta * Rad_per_Deg;
        EXPECT_NEAR(motion.At(theta).s, (10.0 + 5.0 * std::sin(t)) * Rad_per_Deg, 1e-7);
        EXPECT_NEAR(motion.At(theta).v, 5.0 * std::cos(t) * Rad_per_Deg, 2e-5);
        EXPECT_NEAR(motion.At(theta).a, -5.0 * std::sin(t) * Rad_per_Deg, 3e-3);
    }
}

TEST(True_Motions, no_motion_is_an_invalid_argument)
{
    ASSERT_NO_FATAL_FAILURE(Cam_Maker{}.Make());
    Apply(design, Event::step_changed);
    try {
        const True_Motion motion(design);
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), 5);
    }
}

}  // namespace
}  // namespace lobemax
