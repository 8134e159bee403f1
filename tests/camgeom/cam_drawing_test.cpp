// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_drawing.h"

#include <gtest/gtest.h>

#include <cmath>

#include "camgeom/sizing_fields.h"
#include "tests/support/cam_design.h"
#include "tests/support/recording_surface.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Recording_Surface;

class Cam_Drawing : public ::testing::Test {
protected:
    void SetUp() override { Make(true); }
    void TearDown() override { design = {}; }
    static void Make(bool translating)
    {
        Cam_Maker maker;
        maker.translating = translating;
        maker.Make();
        ASSERT_TRUE(Size_Design());
    }
    Cam_Group& c_ = design.cam;
    Recording_Surface surface_;
    testing::Script script_;
};

TEST_F(Cam_Drawing, the_window_is_square_and_holds_the_whole_mechanism)
{
    for (const bool translating : {true, false}) {
        Make(translating);
        ASSERT_TRUE(Draw_Cam_Preview(surface_));
        EXPECT_EQ(surface_.left, surface_.top);
        EXPECT_EQ(surface_.right, surface_.bottom);
        EXPECT_EQ(c_.Flip_Y, c_.View_Left + c_.View_Right);
        for (const auto& circle : surface_.circles) {
            EXPECT_GE(circle.x - circle.radius, surface_.left);
            EXPECT_LE(circle.x + circle.radius, surface_.right);
            EXPECT_GE(circle.y - circle.radius, surface_.top);
            EXPECT_LE(circle.y + circle.radius, surface_.bottom);
        }
    }
}

TEST_F(Cam_Drawing, the_margin_is_told_and_the_zoom_widens_the_window)
{
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    double high = -1e9;
    for (int i = 0; i <= 360; ++i)
        for (const int row : {9, 10, 36, 37})
            high = std::max(high, Data(row, i));
    EXPECT_NEAR(surface_.right, high + 60.0 * 0.1 + 12.0 * 1.35, 1e-3);
    const double before = surface_.right;
    c_.Zoom_Factor = 2.0;
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    EXPECT_NEAR(surface_.right, 2 * before, 1e-3);
}

TEST_F(Cam_Drawing, the_outline_is_the_surface_and_closes)
{
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    ASSERT_EQ(surface_.outlines.size(), 1U);
    const auto& points = surface_.outlines[0].points;
    ASSERT_EQ(points.size(), 361U);
    EXPECT_NEAR(points.front().x, points.back().x, 1e-3);
    EXPECT_NEAR(points.front().y, points.back().y, 1e-3);
    EXPECT_NEAR(points[0].x, Data(36, 360), 1e-4);  // clockwise: from the last point down
    EXPECT_NEAR(points[100].x, Data(36, 260), 1e-4);
    EXPECT_NEAR(points[100].y, c_.Flip_Y - Data(37, 260), 1e-4);
}

TEST_F(Cam_Drawing, the_counterclockwise_cam_is_the_mirror)
{
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    const auto cw = surface_.outlines[0].points;
    const double cw_flip = c_.Flip_Y;
    c_.Rotflag = 1;
    ASSERT_TRUE(Size_Design());
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    const auto& ccw = surface_.outlines[0].points;
    for (std::size_t i = 0; i <= 360; i += 20) {
        EXPECT_NEAR(ccw[i].x, cw[360 - i].x, 1e-3);
        EXPECT_NEAR(c_.Flip_Y - ccw[i].y, -(cw_flip - cw[360 - i].y), 1e-3);
    }
}

TEST_F(Cam_Drawing, shaft_base_and_prime_circle_have_their_proportions)
{
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    EXPECT_EQ(c_.Base_Circle, 48.0);
    EXPECT_NEAR(c_.Shaft_Radius, 48.0 * 0.15, 1e-5);
    EXPECT_EQ(surface_.Circles_in(Ink::prime), 0);
    ASSERT_EQ(surface_.Circles_in(Ink::shaft), 2);
    EXPECT_NEAR(surface_.circles[0].radius, 7.2, 1e-5);
    EXPECT_EQ(surface_.circles[0].y, c_.Flip_Y);
    c_.Show_Prime = true;
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::prime), 1);
    EXPECT_GT(surface_.Lines_in(Ink::key), 50);  // the keyway and its hatching
}

TEST_F(Cam_Drawing, a_roller_follower_stands_on_the_pitch_curve_on_stem_or_arm)
{
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    ASSERT_EQ(surface_.Circles_in(Ink::follower), 1);
    const auto& roller = surface_.circles.back();
    EXPECT_NEAR(roller.x, Data(9, 0), 1e-4);
    EXPECT_EQ(roller.radius, 12.0);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 4);  // two sides of the stem, a cross
    Make(false);
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    EXPECT_NEAR(c_.Foll_X, Data(9, 0), 1e-4);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 3);    // the arm, a cross
    EXPECT_GT(surface_.Circles_in(Ink::follower), 5);  // the hatched pivot
}

TEST_F(Cam_Drawing, the_follower_axis_turns_cam_and_stem_together)
{
    c_.Follower_Angle = 90.0;
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    const auto& roller = surface_.circles.back();
    EXPECT_NEAR(roller.x, -Data(10, 0), 1e-3);
    EXPECT_NEAR(c_.Flip_Y - roller.y, Data(9, 0), 1e-3);
}

TEST_F(Cam_Drawing, a_flat_face_has_no_roller)
{
    c_.Followtype = 2;
    c_.Follow_Rad = 0.0;
    ASSERT_TRUE(Size_Design());
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    EXPECT_EQ(c_.Base_Circle, 60.0);
    EXPECT_EQ(surface_.Circles_in(Ink::follower), 0);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 3);
}

TEST_F(Cam_Drawing, paths_appear_on_request)
{
    ASSERT_TRUE(Draw_Cam(surface_));
    for (const Ink ink : {Ink::path, Ink::cutter, Ink::surface})
        EXPECT_EQ(surface_.Lines_in(ink), 0);
    c_.Show_Follower_Path = c_.Show_Cutter_Path = c_.Show_Surface = true;
    ASSERT_TRUE(Draw_Cam(surface_));
    for (const Ink ink : {Ink::path, Ink::cutter, Ink::surface})
        EXPECT_EQ(surface_.Lines_in(ink), 360);
    EXPECT_EQ(surface_.Circles_in(Ink::path), 3);
}

TEST_F(Cam_Drawing, a_base_circle_of_nothing_is_told_of)
{
    c_.Follow_Rad = 60.0;
    script_.Expect(
        {"Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Draw_Cam_Preview(surface_));
}

TEST_F(Cam_Drawing, a_linear_cam_is_a_strip_and_a_barrel_cam_nothing)
{
    c_.Camtype = "Linear";
    ASSERT_TRUE(Size_Design());
    ASSERT_TRUE(Draw_Cam_Preview(surface_));
    const double L = 60.0 * PI2;
    EXPECT_NEAR(surface_.right, (L + 12.0) * 1.25, 1e-2);
    EXPECT_EQ(surface_.Lines_in(Ink::cam), 4);
    EXPECT_NEAR(surface_.lines[0].x2 - surface_.lines[0].x1, L, 1e-2);
    EXPECT_NEAR(surface_.lines[0].y1 - surface_.lines[1].y1, 2.5 * L / 6, 1e-2);
    EXPECT_EQ(surface_.Lines_in(Ink::path), 360);
    c_.Followtype = 2;
    script_.Expect({"Something is wrong.  Cannot have a flat follower on a linear cam"});
    EXPECT_FALSE(Draw_Cam_Preview(surface_));
    c_.Camtype = "Barrel";
    EXPECT_FALSE(Draw_Cam_Preview(surface_));
}

TEST_F(Cam_Drawing, without_motion_or_size_there_is_nothing_to_draw)
{
    design.flags.Sized = false;
    EXPECT_FALSE(Draw_Cam(surface_));
    design.flags.Calculated = false;
    EXPECT_FALSE(Draw_Cam_Preview(surface_));
}

}  // namespace
}  // namespace lobemax
