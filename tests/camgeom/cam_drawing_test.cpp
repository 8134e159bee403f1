// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "camgeom/sizing.h"
#include "core/numeric.h"
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

class Cam_Drawing : public ::testing::Test {
protected:
    void SetUp() override { Make(true); }
    void TearDown() override { design = {}; }
    static void Make(bool translating)
    {
        Cam_Maker maker;
        maker.translating = translating;
        maker.Make();
        ASSERT_TRUE(Run_Size(design));
    }
    Cam_Group& c_ = design.cam;
    Recording_Surface surface_;
    testing::Script script_;
};

TEST_F(Cam_Drawing, the_window_is_square_and_holds_the_whole_mechanism)
{
    for (const bool translating : {true, false}) {
        Make(translating);
        ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
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

TEST_F(Cam_Drawing, a_warned_stretch_is_drawn_over_the_outline_between_its_points)
{
    // From 10 to 20 degrees: the ways from point 9 to 10 up to 20 to 21 touch it. From 350 over the turn to 5: those
    // from 349 to 360 and from 0 to 6. At 100 alone: the two beside it.
    const std::vector<Cam_Stretch> warned{{10.0, 20.0}, {350.0, 5.0}, {100.0, 100.0}};
    ASSERT_TRUE(Draw_Cam_at(design, surface_, 0, warned));
    EXPECT_EQ(surface_.Lines_in(Ink::warned), 12 + 11 + 6 + 2);
    ASSERT_EQ(surface_.outlines.size(), 1U);
    const auto& outline = surface_.outlines.front().points;
    for (const auto& line : surface_.lines) {
        if (line.ink != Ink::warned)
            continue;
        for (const World_Point end : {World_Point{line.x1, line.y1}, World_Point{line.x2, line.y2}})
            EXPECT_TRUE(std::ranges::any_of(
                outline, [&](const World_Point& p) { return std::hypot(p.x - end.x, p.y - end.y) < 1e-9; }));
    }
    const auto preview_and_full = [&] {
        surface_.Clear();
        Repaint_Cam_Preview(design, surface_, warned);
        EXPECT_EQ(surface_.Lines_in(Ink::warned), 31);
        surface_.Clear();
        c_.Show_Surface = true;
        ASSERT_TRUE(Draw_Cam(design, surface_, {.warned = warned}));
        EXPECT_EQ(surface_.Lines_in(Ink::warned), 31);
        ASSERT_TRUE(Draw_Cam(design, surface_));
        EXPECT_EQ(surface_.Lines_in(Ink::warned), 0);
    };
    preview_and_full();
    c_.Camtype = "Linear";
    Set_Units(design);
    ASSERT_TRUE(Run_Size(design));
    preview_and_full();
}

TEST_F(Cam_Drawing, the_margin_comes_from_prime_and_roller_radius_and_the_zoom_widens_the_window)
{
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    double high = -1e9;
    for (int i = 0; i <= 360; ++i)
        for (const int row : {9, 10, 36, 37})
            high = std::max(high, Data(row, i));
    EXPECT_NEAR(surface_.right, high + 60.0 * 0.1 + 12.0 * 1.35, 1e-3);
    const double before = surface_.right;
    c_.Zoom_Factor = 2.0;
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    EXPECT_NEAR(surface_.right, 2 * before, 1e-3);
}

TEST_F(Cam_Drawing, the_window_of_an_arm_lies_evenly_about_the_cams_centre_and_holds_cam_pivot_and_a_quarter_more)
{
    Make(false);
    const double margin = 60.0 * 0.1 + 12.0 * 1.35;
    const auto reach = [&](double pivot_x, double pivot_y, int row, double coordinate) {
        for (const int cleared : {9, 10, 36, 37})
            for (int i = 0; i <= 360; ++i)
                design.results.CalcData(cleared, i) = 0.0;
        c_.ArmX = pivot_x;
        c_.ArmY = pivot_y;
        design.results.CalcData(row, 200) = coordinate;
        Set_Scale(design, surface_);
        EXPECT_EQ(surface_.left, -surface_.right);
        EXPECT_EQ(surface_.top, surface_.left);
        EXPECT_EQ(surface_.bottom, surface_.right);
        EXPECT_EQ(c_.Flip_Y, 0.0);
        return surface_.right;
    };
    // Never less than a quarter beyond the roller on the prime circle.
    EXPECT_NEAR(reach(0, 0, 9, 0), (60.0 + 12.0) * 1.25, 1e-4);
    EXPECT_NEAR(reach(67, 67, 37, 67), (60.0 + 12.0) * 1.25, 1e-4);
    for (const double sign : {-1.0, 1.0}) {
        EXPECT_NEAR(reach(sign * 200, 10, 9, 0), 200.0 + margin, 1e-4);
        EXPECT_NEAR(reach(10, sign * 210, 9, 0), 210.0 + margin, 1e-4);
        for (const int row : {9, 10, 36, 37})
            EXPECT_NEAR(reach(80, -80, row, sign * 150), 150.0 + margin, 1e-4) << row;
    }
}

TEST_F(Cam_Drawing, the_window_in_which_a_cam_turns_holds_the_pivot_of_an_arm)
{
    const double margin = 60.0 * 0.1 + 12.0 * 1.35;
    Make(false);
    c_.ArmX = 300.0;
    c_.ArmY = -400.0;
    ASSERT_TRUE(Draw_Cam_at(design, surface_, 55));
    EXPECT_NEAR(surface_.right, 500.0 + margin, 1e-4);
    EXPECT_EQ(surface_.left, -surface_.right);
    // With a translating follower the pivot is nowhere.
    Make(true);
    c_.ArmX = 300.0;
    c_.ArmY = -400.0;
    ASSERT_TRUE(Draw_Cam_at(design, surface_, 55));
    EXPECT_LT(surface_.right, 200.0);
}

TEST_F(Cam_Drawing, the_outline_is_the_surface_and_closes)
{
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
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
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    const auto cw = surface_.outlines[0].points;
    const double cw_flip = c_.Flip_Y;
    c_.Rotflag = 1;
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    const auto& ccw = surface_.outlines[0].points;
    for (std::size_t i = 0; i <= 360; i += 20) {
        EXPECT_NEAR(ccw[i].x, cw[360 - i].x, 1e-3);
        EXPECT_NEAR(c_.Flip_Y - ccw[i].y, -(cw_flip - cw[360 - i].y), 1e-3);
    }
}

TEST_F(Cam_Drawing, shaft_base_and_prime_circle_have_their_proportions)
{
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    EXPECT_EQ(c_.Base_Circle, 48.0);
    EXPECT_NEAR(c_.Shaft_Radius, 48.0 * 0.15, 1e-5);
    EXPECT_EQ(surface_.Circles_in(Ink::prime), 1);
    ASSERT_EQ(surface_.Circles_in(Ink::shaft), 2);
    EXPECT_NEAR(surface_.circles[0].radius, 7.2, 1e-5);
    EXPECT_EQ(surface_.circles[0].y, c_.Flip_Y);
    c_.Show_Prime = false;
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::prime), 0);
    EXPECT_GT(surface_.Lines_in(Ink::key), 50);  // the keyway and its hatching
}

TEST_F(Cam_Drawing, a_roller_follower_stands_on_the_pitch_curve_on_stem_or_arm)
{
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    ASSERT_EQ(surface_.Circles_in(Ink::follower), 1);
    const auto& roller = surface_.circles.back();
    EXPECT_NEAR(roller.x, Data(9, 0), 1e-4);
    EXPECT_EQ(roller.radius, 12.0);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 4);  // two sides of the stem, a cross
    Make(false);
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    EXPECT_NEAR(c_.Foll_X, Data(9, 0), 1e-4);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 3);    // the arm, a cross
    EXPECT_GT(surface_.Circles_in(Ink::follower), 5);  // the hatched pivot
}

TEST_F(Cam_Drawing, the_follower_axis_turns_cam_and_stem_together)
{
    c_.Follower_Angle = 90.0;
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    const auto& roller = surface_.circles.back();
    EXPECT_NEAR(roller.x, -Data(10, 0), 1e-3);
    EXPECT_NEAR(c_.Flip_Y - roller.y, Data(9, 0), 1e-3);
}

TEST_F(Cam_Drawing, a_flat_face_has_no_roller)
{
    c_.Followtype = 2;
    c_.Follow_Rad = 0.0;
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    EXPECT_EQ(c_.Base_Circle, 60.0);
    EXPECT_EQ(surface_.Circles_in(Ink::follower), 0);
    EXPECT_EQ(surface_.Lines_in(Ink::follower), 3);
}

TEST_F(Cam_Drawing, the_outline_and_the_paths_appear_on_request)
{
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_TRUE(surface_.outlines.empty());
    for (const Ink ink : {Ink::path, Ink::cutter})
        EXPECT_EQ(surface_.Lines_in(ink), 0);
    const auto bare = surface_.Lines_in(Ink::key);
    c_.Show_Follower_Path = c_.Show_Cutter_Path = c_.Show_Surface = true;
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_EQ(surface_.outlines.size(), 1U);
    for (const Ink ink : {Ink::path, Ink::cutter})
        EXPECT_EQ(surface_.Lines_in(ink), 360);
    EXPECT_EQ(surface_.Lines_in(Ink::key), bare + 1);  // the marker
    c_.Show_Follower_Path = c_.Show_Cutter_Path = c_.Show_Surface = false;
    c_.Show_Cam_Key = true;
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_EQ(surface_.Lines_in(Ink::key), bare + 360 + 1);
}

TEST_F(Cam_Drawing, a_path_shows_the_follower_or_the_cutter_over_three_path_steps)
{
    c_.Show_Follower_Path = c_.Show_Cutter_Path = true;
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::path), 3);
    ASSERT_EQ(surface_.Circles_in(Ink::cutter), 3);
    for (const auto& circle : surface_.circles)
        if (circle.ink == Ink::cutter) {
            EXPECT_EQ(circle.radius, 8.0);
        }
    c_.Path_Step = 120;
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::path), 360);
    c_.Path_Step = 121;  // not beyond the last point
    ASSERT_TRUE(Draw_Cam(design, surface_));
    EXPECT_EQ(surface_.Circles_in(Ink::path), 360);
}

TEST_F(Cam_Drawing, a_flat_face_is_shown_along_its_path_as_a_line_that_touches_the_cam)
{
    c_.Followtype = 2;
    c_.Path_Step = 120;
    c_.Show_Follower_Path = true;
    for (const double axis : {0.0, 30.0}) {
        c_.Follower_Angle = axis;
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Draw_Cam(design, surface_));
        EXPECT_EQ(surface_.Circles_in(Ink::path), 0);
        ASSERT_EQ(surface_.Lines_in(Ink::path), 720);
        const auto& line = surface_.lines[360 + 49];  // of point 50, after the path itself
        const double dx = line.x2 - line.x1;
        const double dy = line.y2 - line.y1;
        EXPECT_NEAR(std::hypot(dx, dy), 72.0, 1e-4);
        const double a = axis * Rad_per_Deg;
        const double x = Data(9, 50) * std::cos(a) - Data(10, 50) * std::sin(a);
        const double y = c_.Flip_Y - (Data(9, 50) * std::sin(a) + Data(10, 50) * std::cos(a));
        EXPECT_NEAR((dx * (y - line.y1) - dy * (x - line.x1)) / 72.0, 0.0, 1e-3);
    }
}

TEST_F(Cam_Drawing, each_path_is_traced_with_the_pen_in_its_ink_and_its_rows)
{
    struct {
        void (*trace)(Design_State&, Surface&, int);
        int row;
        Ink ink;
    } const paths[] = {{Trace_Roller_Point, 9, Ink::path},
                       {Trace_Surface_Point, 36, Ink::surface},
                       {Trace_Key_Point, 38, Ink::key},
                       {Trace_Cutter_Point, 40, Ink::cutter}};
    c_.Shift_Angle = 25.0;
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    for (const auto& [trace, row, ink] : paths) {
        surface_.Clear();
        for (const int i : {0, 1, 2})
            trace(design, surface_, i);
        ASSERT_EQ(surface_.lines.size(), 2U) << row;  // the first point only sets the pen
        const auto& line = surface_.lines.back();
        EXPECT_EQ(line.ink, ink) << row;
        EXPECT_NEAR(line.x1, Data(row, 1), 1e-4) << row;
        EXPECT_NEAR(c_.Flip_Y - line.y2, Data(row + 1, 2), 1e-4) << row;
        EXPECT_NEAR(c_.Pen_X, Data(row, 2), 1e-4) << row;
        EXPECT_NEAR(c_.Pen_Y, Data(row + 1, 2), 1e-4) << row;
    }
}

/// Angle in degrees of the floor of the keyway, which is the line of the key's ink that is nearest to the centre.
double Keyway_Direction(const Recording_Surface& surface)
{
    double nearest = 1e9;
    double angle = 0.0;
    for (const auto& line : surface.lines) {
        const double x = (line.x1 + line.x2) / 2;
        const double y = design.cam.Flip_Y - (line.y1 + line.y2) / 2;
        if (line.ink == Ink::key && std::hypot(x, y) < nearest) {
            nearest = std::hypot(x, y);
            angle = Atan2D(x, y);
        }
    }
    return angle;
}

TEST_F(Cam_Drawing, the_keyway_stands_at_its_clock_time_whatever_the_rotation_and_the_follower_s_axis)
{
    struct {
        const char* text;
        double direction;
    } const clock[] = {{"12 O'clock", 90.0}, {"3 O'clock", 0.0}, {"6 O'clock", 270.0}, {"9 O'clock", 180.0}};
    for (const bool translating : {true, false}) {
        Make(translating);
        for (const int rotation : {-1, 1})
            for (const double axis : {0.0, 90.0})
                for (const auto& [text, direction] : clock) {
                    c_.Rotflag = rotation;
                    c_.Follower_Angle = axis;
                    c_.Keyway_Text = text;
                    ASSERT_TRUE(Run_Size(design));
                    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
                    const double off = std::remainder(Keyway_Direction(surface_) - direction, 360.0);
                    EXPECT_NEAR(off, 0.0, 1e-3) << text << " at " << axis << ", rotation " << rotation;
                }
    }
}

TEST_F(Cam_Drawing, the_start_angle_turns_the_keyway_with_the_cam_from_machine_zero_to_cam_zero)
{
    c_.Keyway_Text = "3 O'clock";
    c_.Shift_Angle = 20.0;
    for (const int rotation : {-1, 1}) {
        c_.Rotflag = rotation;
        c_.Show_Cam_Key = false;
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Draw_Cam(design, surface_));
        EXPECT_NEAR(std::remainder(Keyway_Direction(surface_) - rotation * 20.0, 360.0), 0.0, 1e-3);
        c_.Show_Cam_Key = true;
        ASSERT_TRUE(Draw_Cam(design, surface_));
        EXPECT_NEAR(std::remainder(Keyway_Direction(surface_), 360.0), 0.0, 1e-3);
    }
}

/// Angle in degrees of the marker, the line of the key's ink that lies across the base circle.
double Marker_Direction(const Recording_Surface& surface)
{
    for (const auto& line : surface.lines) {
        const double y1 = design.cam.Flip_Y - line.y1;
        const double y2 = design.cam.Flip_Y - line.y2;
        if (line.ink == Ink::key && std::abs(std::hypot(line.x1, y1) / design.cam.Base_Circle - 0.85) < 1e-4 &&
            std::abs(std::hypot(line.x2, y2) / design.cam.Base_Circle - 1.15) < 1e-4)
            return Atan2D(line.x2, y2);
    }
    return -1.0;
}

TEST_F(Cam_Drawing, the_marker_points_at_the_first_roller_centre_of_the_cam_that_is_shown)
{
    for (const bool translating : {true, false}) {
        Make(translating);
        for (const int rotation : {-1, 1})
            for (const double axis : {0.0, 40.0}) {
                c_.Rotflag = rotation;
                c_.Follower_Angle = axis;
                c_.Shift_Angle = 25.0;
                c_.Offset = translating ? 15.0 : 0.0;
                const double turn = translating ? axis : 0.0;
                ASSERT_TRUE(Run_Size(design));
                c_.Show_Surface = true;
                c_.Show_Cam_Key = false;
                c_.Arm_Start_Theta = c_.Cam_Shift_Sign_Angle = 0.0;  // no model file keeps them
                ASSERT_TRUE(Draw_Cam(design, surface_));
                const double start = Atan2D(Data(9, 0), Data(10, 0)) + turn;
                EXPECT_NEAR(std::remainder(Marker_Direction(surface_) - start, 360.0), 0.0, 1e-2);
                c_.Show_Surface = false;
                c_.Show_Cam_Key = true;
                ASSERT_TRUE(Draw_Cam(design, surface_));
                const double zero = Atan2D(Data(13, 0), Data(14, 0)) + turn;
                EXPECT_NEAR(std::remainder(Marker_Direction(surface_) - zero, 360.0), 0.0, 1e-2);
            }
    }
}

TEST_F(Cam_Drawing, as_the_cam_turns_a_translating_follower_stays_on_its_axis_and_touches_the_cam)
{
    for (const int rotation : {-1, 1}) {
        c_.Rotflag = rotation;
        c_.Offset = 15.0;
        ASSERT_TRUE(Run_Size(design));
        const double rest = std::sqrt(60.0 * 60.0 - 15.0 * 15.0);
        for (const int i : {0, 55, 130, 230, 360}) {
            ASSERT_TRUE(Draw_Cam_at(design, surface_, i));
            const auto& roller = surface_.circles.back();
            EXPECT_NEAR(roller.x, rest + Data(var::S, i), 1e-3) << i;
            EXPECT_NEAR(c_.Flip_Y - roller.y, -rotation * 15.0, 1e-3) << i;
            double clearance = 1e9;
            for (const World_Point& p : surface_.outlines[0].points)
                clearance = std::min(clearance, std::hypot(p.x - roller.x, p.y - roller.y) - roller.radius);
            EXPECT_NEAR(clearance, 0.0, 0.02) << i;
        }
    }
}

TEST_F(Cam_Drawing, as_the_cam_turns_an_arm_turns_about_its_pivot_by_the_displacement)
{
    Make(false);
    for (const int rotation : {-1, 1}) {
        c_.Rotflag = rotation;
        ASSERT_TRUE(Run_Size(design));
        double first = 0.0;
        for (const int i : {0, 55, 130, 230, 360}) {
            ASSERT_TRUE(Draw_Cam_at(design, surface_, i));
            EXPECT_NEAR(std::hypot(c_.Foll_X - c_.ArmX, c_.Foll_Y - c_.ArmY), 80.0, 1e-3) << i;
            const double angle = Atan2D(c_.Foll_X - c_.ArmX, c_.Foll_Y - c_.ArmY);
            if (i == 0)
                first = angle;
            EXPECT_NEAR(std::abs(std::remainder(angle - first, 360.0)), Data(var::S, i), 1e-3) << i;
            EXPECT_NEAR(surface_.lines[surface_.lines.size() - 3].x1, c_.ArmX, 1e-4);  // the arm, then the cross
        }
    }
}

TEST_F(Cam_Drawing, a_flat_face_rises_on_its_stem_while_the_contact_wanders_along_it)
{
    c_.Followtype = 2;
    ASSERT_TRUE(Run_Size(design));
    for (const int i : {0, 55, 130, 230}) {
        ASSERT_TRUE(Draw_Cam_at(design, surface_, i));
        const auto& face = surface_.lines.back();
        EXPECT_NEAR(face.x1, 60.0 + Data(var::S, i), 1e-3) << i;
        EXPECT_NEAR(face.x2, face.x1, 1e-6) << i;
        EXPECT_NEAR(face.y1 + face.y2, 2 * c_.Flip_Y, 1e-3) << i;
        double beyond = -1e9;
        for (const World_Point& p : surface_.outlines[0].points)
            beyond = std::max(beyond, p.x - face.x1);
        EXPECT_NEAR(beyond, 0.0, 0.02) << i;
    }
}

TEST_F(Cam_Drawing, the_window_stands_still_and_holds_the_cam_in_every_position)
{
    for (const bool translating : {true, false}) {
        Make(translating);
        ASSERT_TRUE(Draw_Cam_at(design, surface_, 0));
        const double right = surface_.right;
        EXPECT_EQ(surface_.left, -right);
        for (int i = 0; i <= 360; i += 30) {
            ASSERT_TRUE(Draw_Cam_at(design, surface_, i));
            EXPECT_EQ(surface_.right, right);
            for (const World_Point& p : surface_.outlines[0].points)
                ASSERT_LT(std::hypot(p.x, p.y), right);
        }
    }
    EXPECT_FALSE(Draw_Cam_at(design, surface_, -1));
    EXPECT_FALSE(Draw_Cam_at(design, surface_, 361));
}

TEST_F(Cam_Drawing, the_conjugate_cam_holds_its_roller_opposite_and_falls_while_the_cam_rises)
{
    ASSERT_TRUE(Use_Conjugate(design));
    EXPECT_EQ(c_.Side_Sign, -1);
    EXPECT_EQ(c_.Follower_Angle, 180.0);
    for (const int i : {0, 55, 130, 230}) {
        ASSERT_TRUE(Draw_Cam_at(design, surface_, i));
        const auto& roller = surface_.circles.back();
        EXPECT_NEAR(roller.x, -(60.0 + 20.0 - Data(var::S, i)), 1e-3) << i;
        double clearance = 1e9;
        for (const World_Point& p : surface_.outlines[0].points)
            clearance = std::min(clearance, std::hypot(p.x - roller.x, p.y - roller.y) - roller.radius);
        EXPECT_NEAR(clearance, 0.0, 0.02) << i;
    }
}

TEST_F(Cam_Drawing, the_conjugate_of_an_offset_follower_is_offset_to_the_other_side)
{
    c_.Offset = 15.0;
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Use_Conjugate(design));
    EXPECT_EQ(c_.Offset, -15.0);
}

TEST_F(Cam_Drawing, a_base_circle_of_nothing_is_told_of)
{
    c_.Follow_Rad = 60.0;
    script_.Expect(
        {"Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Draw_Cam_Preview(design, surface_));
    surface_.Clear();
    Repaint_Cam_Preview(design, surface_);  // silent, as a window repaints itself at any time
    EXPECT_TRUE(surface_.circles.empty());
}

TEST_F(Cam_Drawing, a_linear_cam_is_a_strip_and_a_barrel_cam_nothing)
{
    c_.Camtype = "Linear";
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Draw_Cam_Preview(design, surface_));
    const double L = 60.0 * PI2;
    EXPECT_NEAR(surface_.right, (L + 12.0) * 1.25, 1e-2);
    EXPECT_EQ(surface_.Lines_in(Ink::cam), 4);
    EXPECT_NEAR(surface_.lines[0].x2 - surface_.lines[0].x1, L, 1e-2);
    EXPECT_NEAR(surface_.lines[0].y1 - surface_.lines[1].y1, 2.5 * L / 6, 1e-2);
    EXPECT_EQ(surface_.Lines_in(Ink::path), 360);
    EXPECT_NEAR(surface_.circles.back().x, -L / 2, 1e-3);
    c_.Rotflag = -1;
    ASSERT_TRUE(Draw_Cam_at(design, surface_, 90));
    EXPECT_NEAR(surface_.circles.back().x, -L / 4, 1e-2);
    EXPECT_NEAR(c_.Flip_Y - surface_.circles.back().y, Data(var::S, 90), 1e-3);
    c_.Followtype = 2;
    script_.Expect({"Something is wrong.  Cannot have a flat follower on a linear cam"});
    EXPECT_FALSE(Draw_Cam_Preview(design, surface_));
    c_.Camtype = "Barrel";
    EXPECT_FALSE(Draw_Cam_Preview(design, surface_));
}

TEST_F(Cam_Drawing, without_motion_or_size_there_is_nothing_to_draw)
{
    design.flags.Sized = false;
    EXPECT_FALSE(Draw_Cam(design, surface_));
    design.flags.Calculated = false;
    EXPECT_FALSE(Draw_Cam_Preview(design, surface_));
}

}  // namespace
}  // namespace lobemax
