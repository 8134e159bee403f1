// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/cam_curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "camgeom/profile.h"
#include "core/design_state.h"
#include "tests/support/shop_curve.h"
#include "tests/support/truth_design.h"
#include "truth/retrace.h"

namespace lobemax {
namespace {

using testing::Every_Configuration;
using testing::Truth_Maker;

/// Every curve of a cam that the configuration has.
std::vector<Shop_Curve> All_Curves(const True_Cam& cam)
{
    std::vector<Shop_Curve> curves{Surface_of(cam)};
    if (cam.Follower().body != Cam_Body::disk) {
        curves.push_back(Flank_of(cam, 1));
        curves.push_back(Flank_of(cam, -1));
    }
    if (cam.Follower().roller)
        curves.push_back(Pitch_of(cam));
    if (cam.Follower().body != Cam_Body::barrel)
        curves.push_back(Cutter_of(cam, 8.0));
    return curves;
}

// The tangent told is the way of the point, by differences of the points alone, in every configuration.
TEST(Cam_Curves, have_the_tangents_of_their_points)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        for (const Shop_Curve& curve : All_Curves(cam)) {
            for (double t = 1.37; t < 359.0; t += 4.21) {
                const double h = 0.01;
                const Vector near = curve.at(t + h).point - curve.at(t - h).point;
                const Vector far = curve.at(t + 2 * h).point - curve.at(t - 2 * h).point;
                const Vector way = 8.0 * near - far;
                EXPECT_NEAR(std::atan2(Cross(way, curve.at(t).tangent), Dot(way, curve.at(t).tangent)), 0.0, 2e-7)
                    << "at " << t;
                EXPECT_NEAR(Length(curve.at(t).tangent), 1.0, 1e-12);
            }
        }
    }
}

// Where a face swings faster than the cam turns, and where a surface comes to a cusp, the way is turned about, as the
// points are.
TEST(Cam_Curves, turn_about_where_their_points_do)
{
    for (const Truth_Maker& maker :
         {Truth_Maker{.arm = true, .flat = true, .rot = 1, .dir = 1, .ArmX = 110.0, .lift = 80.0},
          Truth_Maker{.flat = true, .lift = 90.0}, Truth_Maker{}}) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        if (!maker.flat) {
            design.cam.Prime_Rad = 45.0;
            design.cam.Follow_Rad = 40.0;
        }
        const True_Cam cam(design);
        int turned = 0;
        for (const Shop_Curve& curve : {Surface_of(cam), Cutter_of(cam, 1.0)}) {
            double before = 0.0;
            for (double t = 0.5; t < 360.0; t += 0.37) {
                const Vector way = curve.at(t + 1e-4).point - curve.at(t - 1e-4).point;
                const double along = Dot(curve.at(t).tangent, way);
                EXPECT_GT(along, -1e-9) << "at " << t;
                const double sense = Dot(curve.at(t).tangent, Quarter(cam.At(t).normal));
                turned += sense * before < 0.0 ? 1 : 0;
                before = sense;
            }
        }
        EXPECT_EQ(turned > 1, !maker.arm);  // a face that runs back has its contact far away, on the same way
    }
}

TEST(Cam_Curves, close_or_go_on_by_a_turn)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const bool disk = cam.Follower().body == Cam_Body::disk;
        for (const Shop_Curve& curve : All_Curves(cam)) {
            EXPECT_EQ(curve.closed, disk);
            const Vector round = curve.at(360.0).point - curve.at(0.0).point;
            EXPECT_LT(Length(round - Vector{Turn_of(cam), 0.0}), 1e-6);
            EXPECT_NEAR(Turn_of(cam), disk ? 0.0 : 2.0 * std::numbers::pi * 60.0, 1e-6);
        }
    }
}

// The surface's fit, in every configuration, moves the follower as the motion wants: within the tolerance over the
// cosine of the pressure angle, on an arm over the arm's length too.
TEST(Cam_Curves, give_the_lift_back_from_the_arcs_that_are_written)
{
    constexpr double tolerance = 1e-3;
    std::vector<double> angles;
    for (double theta = 0.1; theta < 360.0; theta += 0.77)
        angles.push_back(theta);
    for (const Truth_Maker& maker : Every_Configuration()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const Arc_Path path = Fit_Biarcs(Surface_of(cam), tolerance);
        EXPECT_LE(path.largest_deviation, tolerance);
        // In short pieces, as the search for a contact looks at where they start; a drum is seen along the roller's
        // axis, which turns an arc of its unrolled surface into another curve.
        const bool drum = cam.Follower().body == Cam_Body::barrel;
        const Surface_Path pieces(testing::Chopped(path.elements, drum ? 0.25 : 1.0, drum));
        const Retraced lift = Retrace(cam, pieces, angles);
        double least = 1.0;
        for (const double theta : angles)
            least = std::min(least, std::abs(std::cos(cam.At(theta).Phi * Rad_per_Deg)));
        // What an arm lifts by a unit of angle; a flat face is met by its arm where it touches.
        const double reach = !maker.arm ? 1.0 : maker.flat ? 40.0 : maker.ArmRad;
        EXPECT_LT(lift.largest_error, 1.1 * tolerance / least / reach) << "at " << lift.at;
    }
}

TEST(Cam_Curves, have_dwells_as_exact_circles)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const Shop_Curve surface = Surface_of(cam);
    ASSERT_EQ(surface.circles.size(), 2U);
    EXPECT_NEAR(surface.circles[0].from, 110.0, 1e-9);
    EXPECT_NEAR(surface.circles[0].to, 170.0, 1e-9);
    EXPECT_NEAR(surface.circles[1].from, 290.0, 1e-9);
    EXPECT_NEAR(surface.circles[1].to, 360.0, 1e-9);
    EXPECT_EQ(surface.breaks.size(), 3U);
    // One arc about the cam centre for each: 60 + 20 - 12 and 60 - 12.
    const Arc_Path path = Fit_Biarcs(surface, 1e-2);
    int dwells = 0;
    for (std::size_t i = 0; i < path.elements.size(); ++i) {
        const Surface_Element& e = path.elements[i];
        for (const auto& [start, sweep, radius] : {std::array{110.0, 60.0, 68.0}, std::array{290.0, 70.0, 48.0}})
            if (std::abs(path.parameters[i] - start) < 1e-9) {
                ++dwells;
                EXPECT_NEAR(Length(e.from), radius, 1e-9);
                EXPECT_NEAR(Length(e.to), radius, 1e-7);
                EXPECT_NEAR(e.bulge, std::tan(sweep / 4.0 * Rad_per_Deg), 1e-9);  // clockwise cam: counterclockwise
            }
    }
    EXPECT_EQ(dwells, 2);
}

// Unrolled, a dwell is one line square to Z.
TEST(Cam_Curves, have_dwells_of_a_drum_as_lines)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    const True_Cam cam(design);
    for (const int side : {1, -1}) {
        const Arc_Path path = Fit_Biarcs(Flank_of(cam, side), 1e-2);
        int lines = 0;
        for (const Surface_Element& e : path.elements)
            if (std::abs(e.bulge) < 1e-12 && std::abs(e.to.y - e.from.y) < 1e-9)
                ++lines;
        EXPECT_EQ(lines, 2);
        EXPECT_NEAR(path.elements.front().from.y, -side * 12.0, 1e-9);
    }
}

// Both flanks lie a roller radius from the roller's centre, on their own sides.
TEST(Cam_Curves, put_the_flanks_on_both_sides_of_the_roller)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear"}.Make()));
    const True_Cam cam(design);
    const Shop_Curve pitch = Pitch_of(cam);
    const Shop_Curve below = Flank_of(cam, 1);
    const Shop_Curve above = Flank_of(cam, -1);
    for (double t = 0.0; t < 360.0; t += 7.3) {
        EXPECT_NEAR(Length(below.at(t).point - pitch.at(t).point), 12.0, 1e-9);
        EXPECT_NEAR(Length(above.at(t).point - pitch.at(t).point), 12.0, 1e-9);
        EXPECT_LT(below.at(t).point.y, pitch.at(t).point.y);
        EXPECT_GT(above.at(t).point.y, pitch.at(t).point.y);
    }
    EXPECT_THROW(Cutter_of(cam, -1.0), Fault);
}

// Halves of a cycloid that start and end at full speed beside the lower dwell: the roller's path has a corner at each,
// where the roller lies still and its own circle is the surface.
TEST(Cam_Curves, keep_a_corner_where_the_velocity_jumps)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Pick_Program(design, 1, "C2");
    Pick_Program(design, 3, "C1");
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    ASSERT_TRUE(Run_Size(design));
    const True_Cam cam(design);
    const Curve_Samples pitch(Pitch_of(cam));
    EXPECT_EQ(std::ranges::count(pitch.Pieces(), true, &Curve_Piece::corner), 2);
    const Arc_Path path = Fit_Biarcs(pitch, 1e-3);
    // The largest slope of a half cycloid is twice its mean: 40 in 110 degrees, on a radius of 60.
    EXPECT_NEAR(testing::Joints_of(path.elements, true).kink, std::atan(40.0 / (110.0 * Rad_per_Deg) / 60.0), 1e-6);
    EXPECT_EQ(testing::Joints_of(path.elements, true).gap, 0.0);
    const Arc_Path surface = Fit_Biarcs(Surface_of(cam), 1e-3);
    EXPECT_EQ(testing::Joints_of(surface.elements, true).gap, 0.0);
    EXPECT_LT(testing::Joints_of(surface.elements, true).kink, 1e-6);
    const auto joined = std::ranges::count_if(surface.elements, [](const Surface_Element& e) {
        const double half = 2.0 * std::atan(e.bulge);
        return e.bulge != 0.0 && std::abs(Length(e.to - e.from) / (2.0 * std::sin(std::abs(half))) - 12.0) < 1e-6;
    });
    EXPECT_EQ(joined, 2);
}

// With no curves of segments the places of the rows' dwells are found.
TEST(Cam_Curves, find_dwells_in_rows)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.flags.Imported_Model = true;
    const True_Cam cam(design);
    ASSERT_TRUE(cam.Motion().From_Rows());
    const Shop_Curve curve = Surface_of(cam);
    EXPECT_TRUE(curve.breaks.empty());
    ASSERT_EQ(curve.circles.size(), 2U);
    EXPECT_NEAR(curve.circles[0].from, 110.0, 0.5);
    EXPECT_NEAR(curve.circles[0].to, 170.0, 0.5);
    EXPECT_EQ(curve.circles[1].to, 360.0);
    EXPECT_LE(Fit_Biarcs(curve, 1e-3).largest_deviation, 1e-3);
}

TEST(Cam_Curves, find_the_hollow_that_a_cutter_does_not_reach)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.lift = 50.0}.Make()));
    const True_Cam cam(design);
    double narrowest = 1e9;
    for (double t = 0.0; t < 360.0; t += 0.25)
        if (cam.At(t).Rho_Surface < 0.0)
            narrowest = std::min(narrowest, -cam.At(t).Rho_Surface);
    ASSERT_LT(narrowest, 1e9);
    EXPECT_FALSE(Hollow_below(cam, 0.99 * narrowest));
    ASSERT_TRUE(Hollow_below(cam, 1.01 * narrowest));
    EXPECT_NEAR(Hollow_below(cam, 1.01 * narrowest)->radius, narrowest, 1e-9);
}

TEST(Cam_Curves, have_no_roller_centre_under_a_flat_face)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true}.Make()));
    const True_Cam cam(design);
    EXPECT_THROW(Pitch_of(cam), Fault);
    EXPECT_THROW(Flank_of(cam, 1), Fault);
    EXPECT_EQ(Base_Radius(cam), 60.0);
    // A wheel on the other side of the face's line.
    for (double t = 0.0; t < 360.0; t += 11.0)
        EXPECT_NEAR(Length(Cutter_of(cam, 30.0).at(t).point - Surface_of(cam).at(t).point), 30.0, 1e-9);
}

TEST(Cam_Curves, tell_the_base_circle_of_either_surface)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    EXPECT_EQ(Base_Radius(True_Cam(design)), 48.0);
    EXPECT_NEAR(Length(True_Cam(design).At(0.0).surface), 48.0, 1e-9);
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.In_Out = 1}.Make()));
    EXPECT_EQ(Base_Radius(True_Cam(design)), 72.0);
    EXPECT_NEAR(Length(True_Cam(design).At(0.0).surface), 72.0, 1e-9);
}

// Parallel keys: a shaft of 25 mm has one of 8 x 7, whose hub keyway is 3.3 deep; one of 1 inch a square of 1/4.
TEST(Keyways, have_the_usual_sizes)
{
    ASSERT_TRUE(Usual_Keyway(25.0, 5));
    EXPECT_EQ(Usual_Keyway(25.0, 5)->width, 8.0);
    EXPECT_EQ(Usual_Keyway(25.0, 5)->depth, 3.3);
    EXPECT_NEAR(Usual_Keyway(2.5, 4)->width, 0.8, 1e-15);
    EXPECT_NEAR(Usual_Keyway(0.025, 3)->depth, 0.0033, 1e-15);
    EXPECT_EQ(Usual_Keyway(22.0, 5)->width, 6.0) << "a bore at the end of a range belongs to it";
    EXPECT_FALSE(Usual_Keyway(6.0, 5));
    EXPECT_FALSE(Usual_Keyway(231.0, 5));
    EXPECT_EQ(Usual_Keyway(1.0, 1)->width, 0.25);
    // From the far side of the bore to the keyway's bottom 1.114 in.
    EXPECT_NEAR(1.0 + Usual_Keyway(1.0, 1)->depth, 1.114, 5e-4);
    EXPECT_NEAR(Usual_Keyway(1.0 / 12.0, 2)->width, 0.25 / 12.0, 1e-15);
    EXPECT_FALSE(Usual_Keyway(0.3, 1));
    EXPECT_FALSE(Usual_Keyway(7.0, 1));
}

TEST(Keyways, have_an_outline_of_their_own_area)
{
    for (const double angle : {0.0, 90.0, 123.0}) {
        const std::vector<Surface_Element> outline = Keyway_Outline(30.0, {8.0, 3.3}, angle);
        const auto joints = testing::Joints_of(outline, true);
        EXPECT_LT(joints.gap, 1e-12);
        const double r = 15.0;
        const double half = std::asin(4.0 / r);
        // The circle, and the rectangle up to the bottom less the piece of the circle over the keyway's width.
        const double cap = r * r * half - 4.0 * r * std::cos(half);
        const double rectangle = 8.0 * (r + 3.3 - r * std::cos(half));
        EXPECT_NEAR(testing::Area(outline), std::numbers::pi * r * r + rectangle - cap, 1e-6);
        // Its middle lies in the direction.
        const Vector bottom = 0.5 * (outline[1].from + outline[1].to);
        EXPECT_NEAR(std::atan2(bottom.y, bottom.x) * Deg_per_Rad, angle, 1e-6);
        EXPECT_NEAR(Length(bottom), 18.3, 1e-12);
    }
    EXPECT_THROW(Keyway_Outline(8.0, {8.0, 3.0}, 0.0), Fault);
    EXPECT_THROW(Keyway_Outline(8.0, {0.0, 3.0}, 0.0), Fault);
}

// At machine zero the cam has turned by the start angle and the keyway stands at its clock time, seen from the machine,
// where the follower's axis is at the follower's angle.
TEST(Keyways, stand_at_their_clock_time_at_machine_zero)
{
    for (const int rot : {-1, 1})
        for (const double shift : {0.0, 25.0})
            for (const double axis : {0.0, 40.0}) {
                ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = rot}.Make()));
                Cam_Group& c = design.cam;
                c.Shift_Angle = shift;
                c.Follower_Angle = axis;
                c.Keyway_Text = "3 O'clock";
                Set_Keyway_Angle(design);
                Set_Machine_Zero(design);
                // (99): the profile at machine zero is that at cam zero turned by -rot shift.
                const double stands = Keyway_Angle(design) - rot * shift + axis;
                EXPECT_NEAR(std::remainder(stands - 0.0, 360.0), 0.0, 1e-4) << rot << ' ' << shift << ' ' << axis;
            }
}

}  // namespace
}  // namespace lobemax
