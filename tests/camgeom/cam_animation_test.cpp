// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_animation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "edit/rungs.h"
#include "tests/support/cam_design.h"
#include "tests/support/recording_surface.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Recording_Surface;

class Cam_Animation : public ::testing::Test {
protected:
    void SetUp() override { Make({}); }
    void TearDown() override { design = {}; }
    static void Make(const Cam_Maker& maker)
    {
        maker.Make();
        ASSERT_TRUE(Run_Size(design));
    }
    static std::vector<int> Run_Points()
    {
        Anim_Run run(design);
        std::vector<int> points;
        while (const auto point = run.Next())
            points.push_back(*point);
        EXPECT_FALSE(run.Next());
        return points;
    }
    Cam_Group& c_ = design.cam;
    Recording_Surface surface_;
    testing::Script script_;
};

TEST_F(Cam_Animation, a_run_has_a_frame_every_five_degrees_whatever_the_step_of_the_table)
{
    const std::pair<double, int> strides[] = {{1.0, 5}, {0.5, 10}, {0.25, 20}, {0.125, 40}};
    for (const auto& [step, stride] : strides) {
        Make({.step = step});
        EXPECT_EQ(Anim_Stride(design), stride) << step;
        const std::vector<int> points = Run_Points();
        ASSERT_EQ(points.size(), 73U) << step;
        for (std::size_t k = 0; k < points.size(); ++k)
            EXPECT_EQ(Data(var::Angle, points[k]), 5.0 * static_cast<double>(k)) << step;
    }
}

TEST_F(Cam_Animation, a_stride_is_rounded_to_the_nearest_whole_point_ties_to_even)
{
    EXPECT_EQ(Anim_Stride(design, 2.5), 2);
    EXPECT_EQ(Anim_Stride(design, 3.5), 4);
    EXPECT_EQ(Anim_Stride(design, 7.4), 7);
    design.motion.Deltatheta = 0.0;
    EXPECT_THROW(Anim_Stride(design), Fault);
}

TEST_F(Cam_Animation, the_step_beyond_the_last_point_is_the_first_one)
{
    c_.Anim_Step = 359;
    for (const int frame : {359, 360, 0, 1})
        EXPECT_EQ(Take_Anim_Step(design), frame);
    EXPECT_EQ(c_.Anim_Step, 2);
    for (const int beyond : {361, 2880, 32767, -1}) {
        c_.Anim_Step = static_cast<Integer>(beyond);
        EXPECT_EQ(Take_Anim_Step(design), 0) << beyond;
        EXPECT_EQ(c_.Anim_Step, 1) << beyond;
    }
}

TEST_F(Cam_Animation, the_point_of_contact_comes_to_lie_under_the_follower)
{
    for (const bool translating : {true, false})
        for (const int rotation : {-1, 1}) {
            Make({.translating = translating});
            c_.Rotflag = static_cast<Integer>(rotation);
            ASSERT_TRUE(Run_Size(design));
            for (const int i : {0, 40, 140, 220, 360}) {
                ASSERT_TRUE(Anim_Frame(design, surface_, i));
                const auto& points = surface_.outlines[0].points;  // in the order in which the cam turns
                const World_Point contact = points[static_cast<std::size_t>(rotation < 0 ? 360 - i : i)];
                const auto& roller = surface_.circles[surface_.circles.size() - (translating ? 1U : 9U)];
                ASSERT_NEAR(roller.radius, 12.0, 1e-6) << translating;
                EXPECT_NEAR(std::hypot(contact.x - roller.x, contact.y - roller.y), 12.0, 1e-3) << i;
            }
        }
    EXPECT_FALSE(Anim_Frame(design, surface_, 361));
}

TEST_F(Cam_Animation, the_cam_at_rest_stands_in_the_window_of_its_frames)
{
    for (const bool translating : {true, false}) {
        Make({.translating = translating});
        c_.Follower_Angle = 30.0;
        c_.Show_Surface = true;
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Anim_Rest(design, surface_));
        const double left = surface_.left;
        const double right = surface_.right;
        const auto at_rest = surface_.outlines[0].points;
        ASSERT_TRUE(Anim_Frame(design, surface_, 0));
        EXPECT_EQ(surface_.left, left);
        EXPECT_EQ(surface_.right, right);
        const auto& turned = surface_.outlines[0].points;
        ASSERT_EQ(turned.size(), at_rest.size());
        for (std::size_t k = 0; k < turned.size(); ++k) {
            ASSERT_NEAR(turned[k].x, at_rest[k].x, 1e-9);
            ASSERT_NEAR(turned[k].y, at_rest[k].y, 1e-9);
        }
    }
}

TEST_F(Cam_Animation, a_path_goes_all_around_with_an_outline_each_path_step)
{
    for (const double step : {1.0, 0.5}) {
        Make({.step = step});
        for (const int degrees : {1, 10, 90}) {
            c_.Path_Step = static_cast<Integer>(degrees);
            c_.Show_Cutter_Path = false;
            c_.Show_Follower_Path = true;
            ASSERT_TRUE(Anim_Rest(design, surface_));
            EXPECT_EQ(surface_.Circles_in(Ink::path), 360 / degrees) << step;
            const auto& second = *std::ranges::find(surface_.circles, Ink::path, &Recording_Surface::Drawn_Circle::ink);
            EXPECT_EQ(second.x, Data(9, static_cast<int>(degrees / step)));
            c_.Show_Follower_Path = false;
            c_.Show_Cutter_Path = true;
            ASSERT_TRUE(Anim_Rest(design, surface_));
            EXPECT_EQ(surface_.Circles_in(Ink::cutter), 360 / degrees) << step;
        }
    }
    c_.Path_Step = 0;  // as a file may have it: every point, and an end
    ASSERT_TRUE(Anim_Rest(design, surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::cutter), 720);
}

TEST_F(Cam_Animation, a_loop_of_pictures_leaves_out_the_end_that_is_the_beginning)
{
    const std::vector<int> five = Loop_Points(design, 5);
    ASSERT_EQ(five.size(), 72U);
    EXPECT_EQ(five.front(), 0);
    EXPECT_EQ(five.back(), 355);
    EXPECT_EQ(Loop_Points(design, 7).size(), 52U);
    EXPECT_EQ(Loop_Points(design, 7).back(), 357);
    EXPECT_EQ(Loop_Points(design, 1).size(), 360U);
}

TEST_F(Cam_Animation, a_larger_wait_is_slower_and_every_frame_comes_within_a_second)
{
    const int intervals[] = {10, 25, 63, 158, 398, 1000};
    for (std::size_t k = 0; k < Anim_Waits.size(); ++k) {
        EXPECT_EQ(Anim_Waits[k], static_cast<Long>(std::pow(10.0, static_cast<double>(k))));
        EXPECT_EQ(Anim_Interval(Anim_Waits[k]), intervals[k]);
        c_.Anim_Wait = Anim_Waits[k];
        EXPECT_EQ(Anim_Wait_Place(design), static_cast<int>(k));
    }
    for (const Long other : {0, -5, 7}) {
        c_.Anim_Wait = other;
        EXPECT_EQ(Anim_Wait_Place(design), Usual_Anim_Wait);
        EXPECT_GE(Anim_Interval(other), 10);
    }
}

}  // namespace
}  // namespace lobemax
