// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/retrace.h"

#include <algorithm>
#include <cmath>

#include "core/startup.h"
#include "tests/support/random_design.h"
#include "tests/support/truth_design.h"
#include "truth/check.h"

namespace lobemax {
namespace {

using testing::Data;
using testing::Every_Configuration;
using testing::Truth_Maker;

std::vector<double> Angles(double from, double step)
{
    std::vector<double> angles;
    for (double theta = from; theta < 360.0; theta += step)
        angles.push_back(theta);
    return angles;
}

double Turn_of(const True_Cam& cam)
{
    return cam.Follower().body == Cam_Body::disk ? 0.0 : PI2 * cam.Follower().prime;
}

std::vector<Vector> True_Surface(const True_Cam& cam, double step)
{
    std::vector<Vector> points;
    for (const double theta : Angles(0.0, step))
        points.push_back(cam.At(theta).surface);
    return points;
}

// The surface gives back the lift it was made for, in every configuration. Straight lines stand into a hollow by a
// fourth of a degree's share, so that 1E-6 of the lift is reached at the finest step.
TEST(Retracing, the_true_surface_gives_back_the_lift)
{
    for (Truth_Maker maker : Every_Configuration()) {
        maker.step = 0.125;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const Surface_Path path = Surface_Path::Through(True_Surface(cam, 0.125), Turn_of(cam));
        const Retraced lift = Retrace(cam, path, Angles(0.0, 0.125));
        const double stroke = maker.arm ? maker.lift * Rad_per_Deg : maker.lift;
        EXPECT_LT(lift.largest_error, 1e-6 * stroke) << "at " << lift.at;
        EXPECT_EQ(lift.s.size(), 2880U);
    }
}

// Between the points the follower sinks by no more than the height of an arc over its chord.
TEST(Retracing, between_the_points_a_follower_sinks_into_the_chords)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const std::vector<Vector> points = True_Surface(cam, 1.0);
    double sag = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double chord = Length(points[(i + 1) % points.size()] - points[i]);
        const True_Point p = cam.At(static_cast<double>(i));
        sag = std::max(sag, chord * chord / (8.0 * std::abs(p.Rho_Surface)) / std::cos(p.Phi * Rad_per_Deg));
    }
    const Retraced lift = Retrace(cam, Surface_Path::Through(points), Angles(0.5, 1.0));
    EXPECT_LT(lift.largest_error, 1.1 * sag);
    EXPECT_GT(lift.largest_error, 0.5 * sag);
}

/// A closed circle of lines or of arcs.
Surface_Path Circle(Vector center, double radius, int pieces, bool arcs)
{
    std::vector<Surface_Element> elements;
    const double angle = PI2 / pieces;
    for (int i = 0; i < pieces; ++i)
        elements.push_back({center + radius * Direction(i * angle), center + radius * Direction((i + 1) * angle),
                            arcs ? std::tan(angle / 4.0) : 0.0});
    return Surface_Path(std::move(elements));
}

// A roller on an eccentric circle of arcs stands where the two circles say, between the arcs' ends too: flat face and
// arm likewise.
TEST(Retracing, a_circle_of_a_few_arcs_is_a_circle)
{
    constexpr double e = 8.0;
    constexpr double r = 50.0;
    for (const int pieces : {3, 7, 24}) {
        const Surface_Path circle = Circle({-e, 0.0}, r, pieces, true);
        for (const int rot : {-1, 1}) {
            ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = rot}.Make()));
            const std::vector<double> angles = Angles(0.3, 3.7);
            const Retraced roller = Retrace(True_Cam(design), circle, angles);
            for (std::size_t i = 0; i < angles.size(); ++i) {
                const double t = angles[i] * Rad_per_Deg;
                const double l = r + 12.0;
                EXPECT_NEAR(roller.s[i] + 60.0, -e * std::cos(t) + std::sqrt(l * l - e * e * std::sin(t) * std::sin(t)),
                            1e-9);
            }
            ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true, .rot = rot}.Make()));
            const Retraced face = Retrace(True_Cam(design), circle, angles);
            for (std::size_t i = 0; i < angles.size(); ++i)
                EXPECT_NEAR(face.s[i] + 60.0, r - e * std::cos(angles[i] * Rad_per_Deg), 1e-9);
            for (const int dir : {-1, 1}) {
                ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .rot = rot, .dir = dir}.Make()));
                const True_Cam cam(design);
                const Retraced arm = Retrace(cam, circle, angles);
                for (std::size_t i = 0; i < angles.size(); ++i) {
                    const Vector center = Turned({-e, 0.0}, Direction(rot * angles[i] * Rad_per_Deg));
                    // The program's own two pi is 8E-10 too large, at an arm of 80.
                    EXPECT_NEAR(Length(cam.Follower().Center(arm.s[i]) - center), r + 12.0, 2e-7);
                }
            }
        }
    }
}

// A quarter of a circle of 50 and three of one of 30: beside its ends the larger one is not touched.
TEST(Retracing, an_arc_is_touched_between_its_ends_alone)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const double quarter = std::tan(PI / 8.0);
    const Surface_Path path({{{50, 0}, {0, 50}, quarter},
                             {{0, 50}, {0, 30}, 0.0},
                             {{0, 30}, {-30, 0}, quarter},
                             {{-30, 0}, {0, -30}, quarter},
                             {{0, -30}, {30, 0}, quarter},
                             {{30, 0}, {50, 0}, 0.0}});
    const std::vector<double> angles{10.0, 45.0, 80.0, 130.0, 200.0, 320.0};
    const Retraced lift = Retrace(True_Cam(design), path, angles);
    for (std::size_t i = 0; i < angles.size(); ++i)
        EXPECT_NEAR(lift.s[i] + 60.0, angles[i] < 90.0 ? 62.0 : 42.0, 1e-7) << angles[i];
}

TEST(Retracing, a_roller_lies_on_lines_and_in_corners)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    // A square of 100 mm: on its side the roller stands 50 + 12 from the centre, on its corner at 50 sqrt(2) + 12.
    const std::vector<Vector> square{{50, 50}, {-50, 50}, {-50, -50}, {50, -50}};
    const Retraced lift = Retrace(cam, Surface_Path::Through(square), std::vector<double>{0.0, 45.0, 90.0, 180.0});
    EXPECT_NEAR(lift.s[0] + 60.0, 62.0, 1e-12);
    EXPECT_NEAR(lift.s[1] + 60.0, 50.0 * std::sqrt(2.0) + 12.0, 1e-8);
    EXPECT_NEAR(lift.s[2] + 60.0, 62.0, 1e-8);
    EXPECT_NEAR(lift.s[3] + 60.0, 62.0, 1e-8);
    // In a notch of 90 degrees it lies on both sides: sqrt(2) of its radius above the corner.
    const std::vector<Vector> notch{{40, 0}, {70, 30}, {-60, 30}, {-60, -30}, {70, -30}};
    const Retraced low = Retrace(cam, Surface_Path::Through(notch), std::vector<double>{0.0});
    EXPECT_NEAR(low.s[0] + 60.0, 40.0 + 12.0 * std::sqrt(2.0), 1e-12);
}

TEST(Retracing, a_follower_that_meets_nothing_has_no_number)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const std::vector<Vector> aside{{0, 100}, {10, 100}, {10, 110}};
    const Retraced lift = Retrace(cam, Surface_Path::Through(aside), std::vector<double>{0.0});
    EXPECT_TRUE(std::isnan(lift.s[0]));
    EXPECT_TRUE(std::isinf(lift.largest_error));
    EXPECT_TRUE(std::isnan(Retrace(cam, Surface_Path::Through({}), std::vector<double>{0.0}).s[0]));
}

/// The surface by the rows.
std::vector<Vector> Row_Surface()
{
    std::vector<Vector> points;
    for (int i = 0; i < design.motion.Max_Data_Points_used; ++i)
        points.push_back({Data(var::X_Surface, i), Data(var::Y_Surface, i)});
    return points;
}

// A flat face on an arm whose sense is opposed to the cam's: several degrees. A translating roller: nothing.
TEST(Retracing, the_surface_of_the_rows_is_found_out)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .flat = true, .rot = -1, .dir = 1, .lift = 15.0}.Make()));
    const Retraced opposed = Retrace(True_Cam(design), Surface_Path::Through(Row_Surface()), Angles(0.0, 0.5));
    EXPECT_GT(opposed.largest_error * Deg_per_Rad, 5.0);
    for (const double offset : {0.0, 7.0}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.offset = offset}.Make()));
        const Retraced roller = Retrace(True_Cam(design), Surface_Path::Through(Row_Surface()), Angles(0.0, 0.5));
        EXPECT_LT(roller.largest_error, 2e-5);
    }
}

// A roller larger than the curvature: what is left of the surface lies on no roller's inside, and lifts less.
TEST(Retracing, what_is_left_after_undercutting_lifts_less)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.cam.Prime_Rad = 45.0;
    design.cam.Follow_Rad = 40.0;
    const True_Cam cam(design);
    std::vector<True_Point> points;
    for (const double theta : Angles(0.0, 0.5))
        points.push_back(cam.At(theta));
    const std::vector<Vector> left = Points_left(cam, points, 1e-7);
    ASSERT_LT(left.size(), points.size());
    ASSERT_GT(left.size(), 100U);
    for (const Vector& q : left)
        for (const True_Point& p : points)
            ASSERT_GT(Length(q - p.center), 40.0 - 1e-6);
    const Retraced lift = Retrace(cam, Surface_Path::Through(left), Angles(0.0, 0.5));
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_LT(lift.s[i], points[i].s + 1e-4);
    EXPECT_GT(lift.largest_error, 0.05);
    // A sound cam keeps all its points.
    design.cam.Follow_Rad = 12.0;
    const True_Cam sound(design);
    points.clear();
    for (const double theta : Angles(0.0, 0.5))
        points.push_back(sound.At(theta));
    EXPECT_EQ(Points_left(sound, points, 1e-7).size(), points.size());
}

/// What is found where the search looks and what is found by looking at every element at every angle.
void Expect_Nothing_Left_Out(const Mechanism& m, const Surface_Path& path, const std::vector<double>& angles,
                             const std::vector<double>& wanted)
{
    const Retraced quick = Retrace(m, path, angles, wanted);
    const Retraced whole = Retrace(m, path, angles, wanted, Looking::everywhere);
    EXPECT_EQ(quick.contact, whole.contact);
    EXPECT_EQ(quick.at, whole.at);
    EXPECT_EQ(quick.largest_error, whole.largest_error);
    ASSERT_EQ(quick.s.size(), angles.size());
    for (std::size_t i = 0; i < angles.size(); ++i) {
        ASSERT_EQ(std::isnan(quick.s[i]), std::isnan(whole.s[i])) << angles[i];
        if (!std::isnan(whole.s[i])) {
            ASSERT_EQ(quick.s[i], whole.s[i]) << angles[i];
        }
    }
}

std::vector<double> Wanted(const True_Cam& cam, const std::vector<double>& angles)
{
    std::vector<double> wanted;
    for (const double theta : angles)
        wanted.push_back(cam.Motion().At(theta).s);
    return wanted;
}

/// A surface that no cam has: a coarse and a fine star, a spiral that crosses itself, points strewn.
std::vector<Vector> Wild_Surface(int kind, testing::Dice& dice)
{
    std::vector<Vector> points;
    for (int i = 0; i < 900; ++i) {
        const double t = PI2 * i / 900;
        const double r = kind == 0   ? 50.0 + 8.0 * std::sin(9.0 * t)
                         : kind == 1 ? 50.0 + (i % 2 == 0 ? 0.4 : -0.4)
                         : kind == 2 ? 45.0 + 10.0 * std::sin(0.5 * t)
                                     : dice.Real(20.0, 60.0);
        points.push_back(r * Direction(kind == 2 ? 3.0 * t : t));
    }
    return points;
}

TEST(Retracing, finds_all_that_a_search_of_everything_finds)
{
    const std::vector<double> angles = Angles(0.0, 0.5);
    testing::Dice dice(7);
    int made = 0;
    for (Truth_Maker maker : Every_Configuration()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const Mechanism& m = cam.Follower();
        const std::vector<double> wanted = Wanted(cam, angles);
        const Surface_Path sound = Surface_Path::Through(True_Surface(cam, 0.5), Turn_of(cam), m.Hollow_Sense());
        Expect_Nothing_Left_Out(m, sound, angles, wanted);
        // The follower larger than it was made for, so that it bridges and strikes what is elsewhere.
        Mechanism large = m;
        large.roller_radius *= 3.0;
        Expect_Nothing_Left_Out(large, sound, angles, wanted);
        // The surface of a roller too large for the cam: it crosses itself.
        design.cam.Follow_Rad = 45.0;
        const True_Cam undercut(design);
        const Surface_Path loops = Surface_Path::Through(True_Surface(undercut, 0.5), Turn_of(cam), m.Hollow_Sense());
        Expect_Nothing_Left_Out(m, loops, angles, wanted);
        Expect_Nothing_Left_Out(undercut.Follower(), loops, angles, wanted);
        // Angles far apart, and back: whatever was left alone has moved.
        std::vector<double> jumps;
        for (int i = 0; i < 60; ++i)
            jumps.push_back(dice.Real(-400.0, 800.0));
        Expect_Nothing_Left_Out(m, sound, jumps, Wanted(cam, jumps));
        if (m.body == Cam_Body::disk && made++ % 4 == 0)
            for (int kind = 0; kind < 4; ++kind)
                Expect_Nothing_Left_Out(m, Surface_Path::Through(Wild_Surface(kind, dice)), angles, wanted);
    }
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const std::vector<double> wanted = Wanted(cam, angles);
    for (const int pieces : {3, 40, 201, 3000})
        for (const bool arcs : {false, true})
            Expect_Nothing_Left_Out(cam.Follower(), Circle({-8.0, 3.0}, 50.0, pieces, arcs), angles, wanted);
}

// The proof itself, without the search's own means: no place of the surface lies in the roller, and one touches it.
TEST(Retracing, no_place_of_a_surface_lies_in_the_roller_that_was_laid_on_it)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const Mechanism& m = cam.Follower();
    testing::Dice dice(11);
    const std::vector<double> angles = Angles(0.0, 1.5);
    for (int kind = 0; kind < 4; ++kind) {
        const Surface_Path path = Surface_Path::Through(Wild_Surface(kind, dice));
        const Retraced lift = Retrace(cam, path, angles);
        for (std::size_t i = 0; i < angles.size(); ++i) {
            const Vector center = Turned(m.Center(lift.s[i]), Direction(-m.rot * angles[i] * Rad_per_Deg));
            double nearest = 1e300;
            for (const Surface_Element& element : path.Elements())
                for (int k = 0; k <= 20; ++k)
                    nearest = std::min(nearest, Length(element.from + 0.05 * k * (element.to - element.from) - center));
            ASSERT_GT(nearest, m.roller_radius - 1e-10) << kind << ' ' << angles[i];
            ASSERT_LT(nearest, m.roller_radius + (kind == 3 ? 0.1 : 1e-3)) << kind << ' ' << angles[i];
        }
    }
}

// Designs that a machine could have: normals and curvature by differences, and the surface gives back its lift.
TEST(Retracing, random_cams_have_their_normals_and_give_back_their_lift)
{
    int cams = 0;
    for (std::uint32_t seed = 1; cams < 60 && seed < 2000; ++seed) {
        testing::Dice dice(seed);
        const testing::Drawn_Design drawn = testing::Draw_Design(dice);
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_EQ(testing::Type_into(design, drawn), "") << seed;
        if (!Calc_All(design, true) || !Motion_Done(design) || !Run_Size(design))
            continue;
        const Check check = Check_Design(design, Limits{});
        const bool rough = std::ranges::any_of(check.findings, [](const Finding& f) {
            return f.code == "jump_of_position" || f.code == "jump_of_velocity" || f.code == "series_lift" ||
                   f.code == "undercut" || f.code == "pointed" || f.code == "interference" || f.code == "dead_center" ||
                   f.code == "face_runs_back";
        });
        if (rough || !check.truth)
            continue;
        ++cams;
        SCOPED_TRACE(seed);
        const True_Cam& cam = check.truth->cam;
        const Mechanism& m = cam.Follower();
        double low = 1e300;
        double high = -1e300;
        for (const Follower_Point& p : check.truth->motion) {
            low = std::min(low, p.s);
            high = std::max(high, p.s);
        }
        const Surface_Path path = Surface_Path::Through(True_Surface(cam, 0.125), Turn_of(cam), m.Hollow_Sense());
        const Retraced lift = Retrace(cam, path, Angles(0.0, 0.125));
        // An arc's curvature is a mean where that of the motion jumps.
        EXPECT_LT(lift.largest_error, 6e-6 * (high - low)) << "at " << lift.at;
        constexpr double step = 0.01;
        for (double theta = 0.7; theta < 360.0; theta += 13.3) {
            const True_Point before = cam.At(theta - step);
            const True_Point p = cam.At(theta);
            const True_Point after = cam.At(theta + step);
            if (cam.Motion().Segment_at(theta - step) != cam.Motion().Segment_at(theta + step))
                continue;
            if (m.body == Cam_Body::barrel && m.arm)  // the wall's own tests have it
                continue;
            const Vector way = m.roller ? after.center - before.center : after.surface - before.surface;
            EXPECT_LT(std::abs(Dot(way, p.normal)), 3e-5 * Length(way)) << theta;
            const double turned = std::asin(Cross(before.normal, after.normal));
            EXPECT_NEAR(std::abs(1.0 / p.Rho), std::abs(turned) / Length(way),
                        1e-3 * std::abs(1.0 / p.Rho) + 1e-5 / m.prime)
                << theta;
        }
    }
    EXPECT_EQ(cams, 60);
}

}  // namespace
}  // namespace lobemax
