// SPDX-License-Identifier: GPL-3.0-or-later
// Every figure against a closed form, against differences of other figures, or against the rows where these are right.
#include "truth/true_cam.h"

#include <algorithm>
#include <cmath>

#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Every_Configuration;
using testing::Put_Segments;
using testing::Truth_Maker;

/// Rows 1 to 3 of a motion that is not one of the laws.
template <class Motion>
void Put_Motion(Motion motion)
{
    const int last = design.motion.Max_Data_Points_used;
    const double omega = design.motion.Shaft_speed;
    for (int i = 0; i <= last; ++i) {
        const auto [s, v, a] = motion(design.motion.Deltatheta * i * Rad_per_Deg);
        design.results.CalcData(var::S, i) = s;
        design.results.CalcData(var::V, i) = v * omega;
        design.results.CalcData(var::A, i) = a * omega * omega;
    }
    design.flags.Imported_Model = true;
}

struct Motion_Point {
    double s;
    double v;
    double a;
};

// An eccentric circle of radius r, its centre e off: a flat face rides at r + e - e cos, the prime radius being r.
TEST(True_Cams, harmonic_motion_of_a_flat_face_is_an_eccentric_circle)
{
    for (const int rot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true, .rot = rot, .step = 0.125}.Make()));
        Put_Motion([](double t) {
            return Motion_Point{8.0 - 8.0 * std::cos(t), 8.0 * std::sin(t), 8.0 * std::cos(t)};
        });
        const True_Cam cam(design);
        for (double theta = 0.0; theta < 360.0; theta += 0.125) {
            // The motion in closed form: that of the rows carries their roundings.
            const double t = theta * Rad_per_Deg;
            const True_Point p = cam.At(theta, {8.0 - 8.0 * std::cos(t), 8.0 * std::sin(t), 8.0 * std::cos(t), 0.0});
            EXPECT_NEAR(p.Rho, 68.0, 68.0 * 1e-9);
            EXPECT_NEAR(Length(p.surface - Vector{-8.0, 0.0}), 68.0, 68.0 * 1e-9);
            EXPECT_NEAR(p.along, 8.0 * std::sin(t), 1e-9);
            EXPECT_NEAR(cam.At(theta).Rho, 68.0, 68.0 * 1e-5);
            EXPECT_EQ(p.Phi, 0.0);
        }
    }
}

// The same circle under a roller: with l = r + r_f the roller centre stands at -e cos + sqrt(l^2 - e^2 sin^2).
TEST(True_Cams, a_roller_on_an_eccentric_circle)
{
    constexpr double e = 8.0;
    constexpr double l = 68.0;  // of the circle and the roller
    for (const int rot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = rot}.Make()));
        design.cam.Prime_Rad = l - e;
        const True_Cam cam(design);
        for (double theta = 0.0; theta < 360.0; theta += 3.0) {
            const double t = theta * Rad_per_Deg;
            const double q = std::sqrt(l * l - e * e * std::sin(t) * std::sin(t));
            const double q1 = -e * e * std::sin(t) * std::cos(t) / q;
            const double q2 = (-e * e * std::cos(2.0 * t) - q1 * q1) / q;
            const Follower_Point motion{-e * std::cos(t) + q - (l - e), e * std::sin(t) + q1, e * std::cos(t) + q2,
                                        0.0};
            const True_Point p = cam.At(theta, motion);
            EXPECT_NEAR(p.Rho, l, l * 1e-9);
            EXPECT_NEAR(p.Rho_Surface, l - 12.0, l * 1e-9);
            EXPECT_NEAR(Length(p.surface - Vector{-e, 0.0}), l - 12.0, l * 1e-9);
            // The normal goes through the circle's centre, e sin aside of the axis at the distance q.
            EXPECT_NEAR(p.Phi, std::atan(e * std::sin(t) / q) * Deg_per_Rad, 1e-9);
            EXPECT_NEAR(Length(cam.Cutter(p, 5.0) - Vector{-e, 0.0}), l - 7.0, l * 1e-9);
        }
    }
}

// The same circle under an arm: its end is where the circle of the arm meets the circle of radius l.
TEST(True_Cams, an_arm_on_an_eccentric_circle)
{
    constexpr double e = 8.0;
    constexpr double l = 68.0;
    for (const int rot : {-1, 1}) {
        for (const int dir : {-1, 1}) {
            ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .rot = rot, .dir = dir}.Make()));
            const True_Cam cam(design);
            const Vector pivot{90.0, 30.0};
            const double start = std::atan2(30.0, 90.0) + PI + dir * cam.Follower().rest;
            const auto swing = [&](double theta) {
                // In the machine the circle's centre runs round the cam centre.
                const Vector center = e * Direction(0.3 + rot * theta * Rad_per_Deg);
                const Vector u = center - pivot;
                const double d = Length(u);
                const double leg = std::acos((80.0 * 80.0 + d * d - l * l) / (2.0 * 80.0 * d));
                return std::remainder(dir * (std::atan2(u.y, u.x) + dir * leg - start), PI2);
            };
            for (double theta = 0.0; theta < 360.0; theta += 7.0) {
                constexpr double step = 0.02;  // degrees
                constexpr double h = step * Rad_per_Deg;
                const double s = swing(theta);
                const double v = (8.0 * (swing(theta + step) - swing(theta - step)) -
                                  (swing(theta + 2 * step) - swing(theta - 2 * step))) /
                                 (12.0 * h);
                const double a = (16.0 * (swing(theta + step) + swing(theta - step)) -
                                  (swing(theta + 2 * step) + swing(theta - 2 * step)) - 30.0 * s) /
                                 (12.0 * h * h);
                const True_Point p = cam.At(theta, {s, v, a, 0.0});
                EXPECT_NEAR(Length(p.center - e * Direction(0.3)), l, l * 1e-9);
                EXPECT_NEAR(Length(p.surface - e * Direction(0.3)), l - 12.0, l * 1e-9);
                EXPECT_NEAR(p.Rho, l, l * 1e-6);
            }
        }
    }
}

// The cam of a published true curve: cycloid, dwell 60, rise 120 by 30 mm, dwell 20, fall 80, dwell 80; base circle 19,
// roller 42, offset -7.04 mm. Its smallest pitch radius was worked out apart from this program in double precision.
TEST(True_Cams, the_published_cam_has_the_smallest_radius_that_was_published)
{
    struct Case {
        double offset;
        double smallest;
        double angle;
    };
    for (const Case& c : {Case{-7.04, 42.097, 221.25}, Case{0.0, 43.458, 220.5}}) {
        ASSERT_NO_FATAL_FAILURE((Cam_Maker{.lift = 30.0, .step = 0.25}.Make()));
        ASSERT_NO_FATAL_FAILURE(Put_Segments({{'D', "DW", 60, 0, 0},
                                              {'R', "CF", 120, 0, 30},
                                              {'D', "DW", 20, 30, 30},
                                              {'F', "CF", 80, 30, 0},
                                              {'D', "DW", 80, 0, 0}}));
        design.cam.Prime_Rad = 61.0;
        design.cam.Follow_Rad = 42.0;
        design.cam.Offset = c.offset;
        const True_Cam cam(design);
        double smallest = 1e9;
        double angle = 0.0;
        for (double theta = 0.0; theta < 360.0; theta += 0.25) {
            const double rho = cam.At(theta).Rho;
            if (rho > 0.0 && rho < smallest) {
                smallest = rho;
                angle = theta;
            }
        }
        EXPECT_NEAR(smallest, c.smallest, 5e-4);
        EXPECT_EQ(angle, c.angle);
    }
}

// The true figures are the rows wherever these are what mechanics has: docs/theory.md, 6 to 8.
TEST(True_Cams, pressure_angles_are_the_rows_where_these_are_right)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        const bool axial = std::string(maker.Camtype) != "Radial";
        if (axial && maker.arm)
            continue;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        for (int i = 0; i < design.motion.Max_Data_Points_used; ++i) {
            const True_Point p = cam.At(Data(var::Angle, i));
            ASSERT_NEAR(p.Phi, Data(var::Phi, i), 3e-5) << i;
        }
    }
}

// An arm on an axial cam: right where rotation, arm and pivot have one sign, but for the drum's speed at the roller.
TEST(True_Cams, the_row_of_an_axial_arm_has_the_angle_at_the_rollers_radius)
{
    for (const char* const body : {"Barrel", "Linear"})
        for (const int rot : {-1, 1}) {
            const Truth_Maker maker{
                .Camtype = body, .arm = true, .rot = rot, .dir = 1, .ArmX = 100.0, .ArmY = 0.0, .ArmRad = 100.0};
            SCOPED_TRACE(maker.Name());
            ASSERT_NO_FATAL_FAILURE(maker.Make());
            const True_Cam cam(design);
            for (int i = 0; i < design.motion.Max_Data_Points_used; ++i)
                ASSERT_NEAR(cam.At(Data(var::Angle, i)).Phi, Data(var::Phi, i), 0.1) << i;
        }
}

TEST(True_Cams, surfaces_centres_and_cutters_are_the_rows_where_these_are_right)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        const bool disk = std::string(maker.Camtype) == "Radial";
        if (!disk || (maker.arm && maker.flat))
            continue;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        for (int i = 0; i < design.motion.Max_Data_Points_used; ++i) {
            const True_Point p = cam.At(Data(var::Angle, i));
            ASSERT_LT(Length(p.surface - Vector{Data(var::X_Surface, i), Data(var::Y_Surface, i)}), 5e-5) << i;
            ASSERT_LT(Length(cam.Cutter(p, 8.0) - Vector{Data(var::X_Cutter, i), Data(var::Y_Cutter, i)}), 5e-5) << i;
            if (!maker.flat) {
                ASSERT_LT(Length(p.center - Vector{Data(var::X, i), Data(var::Y, i)}), 5e-5) << i;
            }
        }
    }
}

// The normal is square to the path of the roller centre, the curvature turns the normal, whatever the mechanism: both
// by differences of the points.
TEST(True_Cams, normals_and_curvature_are_those_of_the_path_by_differences)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        if (maker.flat)
            continue;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const bool barrel_arm = maker.arm && std::string(maker.Camtype) == "Barrel";
        constexpr double step = 0.02;
        for (double theta = 1.3; theta < 360.0; theta += 7.1) {
            const True_Point before = cam.At(theta - step);
            const True_Point p = cam.At(theta);
            const True_Point after = cam.At(theta + step);
            const Vector way = after.center - before.center;
            EXPECT_NEAR(Length(p.normal), 1.0, 1e-12);
            if (barrel_arm)  // unrolled by its angle the lateral way is foreshortened; the wall's own test has it
                continue;
            EXPECT_LT(std::abs(Dot(way, p.normal)), 2e-6 * Length(way));
            const double turned = std::asin(Cross(before.normal, after.normal));
            const double convex = cam.Follower().body == Cam_Body::disk ? -maker.rot : -1.0;
            const double curvature = convex * turned / Length(way);
            EXPECT_NEAR(1.0 / p.Rho, curvature, 2e-5 * std::abs(curvature) + 1e-7);
        }
    }
}

TEST(True_Cams, a_flat_faces_contact_is_where_the_surface_is_along_the_face)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        if (!maker.flat)
            continue;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        constexpr double step = 0.02;
        for (double theta = 1.3; theta < 360.0; theta += 7.1) {
            const True_Point before = cam.At(theta - step);
            const True_Point p = cam.At(theta);
            const True_Point after = cam.At(theta + step);
            const Vector way = after.surface - before.surface;
            EXPECT_LT(std::abs(Dot(way, p.normal)), 2e-6 * Length(way));
            const double turned = std::asin(Cross(before.normal, after.normal));
            EXPECT_NEAR(p.Rho, std::abs(Length(way) / turned), 2e-5 * p.Rho);
            // The contact lies on the face: at the distance of the pivot's arm and its offset.
            EXPECT_NEAR(Dot(p.surface - p.center, p.normal), 0.0, 1e-9);
        }
    }
}

// A flat arm in a dwell drives nothing: the surface is a circle about the cam centre, of the prime radius at rest.
TEST(True_Cams, a_flat_arm_at_rest_stands_on_the_prime_circle_whatever_its_offset)
{
    for (const double offset : {0.0, 5.0, -4.0}) {
        ASSERT_NO_FATAL_FAILURE(
            (Truth_Maker{.arm = true, .flat = true, .offset = offset, .ArmX = 110.0, .lift = 6.0}.Make()));
        const True_Cam cam(design);
        const True_Point p = cam.At(330.0);
        EXPECT_NEAR(Length(p.surface), 60.0, 1e-9);
        EXPECT_NEAR(p.Rho, 60.0, 1e-9);
    }
}

// The wall of a drum: at each depth the roller's cylinder touches it, and nowhere goes through it.
TEST(True_Cams, the_wall_of_a_drum_is_touched_by_the_roller_at_every_depth)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        if (std::string(maker.Camtype) != "Barrel")
            continue;
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const Mechanism& m = cam.Follower();
        for (const int side : {-1, 1}) {
            for (const double depth : {50.0, 60.0, 66.0}) {
                for (double theta = 3.0; theta < 360.0; theta += 17.0) {
                    const Vector f = m.Center(cam.Motion().At(theta).s);
                    const double lateral = maker.rot * f.x;
                    // Seen along the roller's axis from the place of this angle: the walls of the angles around.
                    double nearest = 1e9;
                    for (double off = -0.5; off <= 0.5; off += 0.05) {
                        const Wall_Point wall = cam.Wall(theta + off, side, depth);
                        const double angle = (wall.Lambda - theta) * Rad_per_Deg;
                        const Vector seen{wall.radius * std::sin(angle), wall.Z};
                        const double gap = Length(seen - Vector{lateral, f.y}) - m.roller_radius;
                        nearest = std::min(nearest, gap);
                        if (std::abs(off) < 1e-9) {
                            EXPECT_NEAR(gap, 0.0, 1e-9);
                        }
                    }
                    // The wall crosses this plane at other depths of its rulings: the gap is of the second order.
                    EXPECT_GT(nearest, -2e-4);
                }
            }
        }
    }
}

TEST(True_Cams, the_wall_of_a_drum_is_found_at_a_radius)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    const True_Cam cam(design);
    for (double theta = 3.0; theta < 360.0; theta += 17.0) {
        const Wall_Point wall = cam.Wall_at_Radius(theta, 1, 64.0);
        EXPECT_NEAR(wall.radius, 64.0, 1e-10);
    }
    // In a dwell the wall is level: the roller's radius below its centre, at the cam angle.
    const Wall_Point dwell = cam.Wall_at_Radius(330.0, 1, 60.0);
    EXPECT_NEAR(dwell.Z, -12.0, 1e-12);
    EXPECT_NEAR(dwell.Lambda, 330.0, 1e-9);
}

/// A point of the wall of a drum in space, by cam angle and depth.
struct Space_Point {
    double x;
    double y;
    double z;
};

Space_Point In_Space(const True_Cam& cam, double theta, double depth)
{
    const Wall_Point wall = cam.Wall(theta, cam.Follower().side, depth);
    const Vector around = wall.radius * Direction(wall.Lambda * Rad_per_Deg);
    return {around.x, around.y, wall.Z};
}

Space_Point operator-(Space_Point a, Space_Point b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
double Dot3(Space_Point a, Space_Point b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Space_Point Cross3(Space_Point a, Space_Point b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// (234) against the first and second fundamental forms of the wall, by differences of its points in space: the normal
// curvature across the roller's axis.
TEST(True_Cams, the_walls_curvature_across_the_roller_is_that_of_the_surface_in_space)
{
    for (const int rot : {-1, 1})
        for (const bool arm : {false, true})
            for (const int Top_Bot : {-1, 1}) {
                const Truth_Maker maker{.Camtype = "Barrel",
                                        .arm = arm,
                                        .rot = rot,
                                        .Top_Bot = Top_Bot,
                                        .ArmX = 100.0,
                                        .ArmY = 0.0,
                                        .ArmRad = 100.0};
                SCOPED_TRACE(maker.Name());
                ASSERT_NO_FATAL_FAILURE(maker.Make());
                const True_Cam cam(design);
                constexpr double dt = 0.05;
                constexpr double dy = 0.05;
                constexpr double depth = 60.0;
                for (double theta = 12.0; theta < 360.0; theta += 23.0) {
                    const True_Point p = cam.At(theta);
                    const auto at = [&](int i, int k) { return In_Space(cam, theta + i * dt, depth + k * dy); };
                    const Space_Point u = at(1, 0) - at(-1, 0);
                    const Space_Point v = at(0, 1) - at(0, -1);
                    const Space_Point o = at(0, 0);
                    Space_Point n = Cross3(u, v);
                    const double length = std::sqrt(Dot3(n, n));
                    n = {n.x / length, n.y / length, n.z / length};
                    // Second differences along the parameters, as the first are over two steps.
                    const auto second = [&](Space_Point a, Space_Point b) {
                        return 4.0 * Dot3({a.x + b.x - 2 * o.x, a.y + b.y - 2 * o.y, a.z + b.z - 2 * o.z}, n);
                    };
                    const double L = second(at(1, 0), at(-1, 0));
                    const double N = second(at(0, 1), at(0, -1));
                    const Space_Point mixed = {at(1, 1).x - at(1, -1).x - at(-1, 1).x + at(-1, -1).x,
                                               at(1, 1).y - at(1, -1).y - at(-1, 1).y + at(-1, -1).y,
                                               at(1, 1).z - at(1, -1).z - at(-1, 1).z + at(-1, -1).z};
                    const double M = Dot3(mixed, n);
                    // The direction square to the roller's axis in the surface, in the two parameters.
                    const Vector radial = Direction(theta * Rad_per_Deg);
                    const Space_Point axis{radial.x, radial.y, 0.0};
                    const double a = Dot3(v, axis);
                    const double b = -Dot3(u, axis);
                    const Space_Point way{a * u.x + b * v.x, a * u.y + b * v.y, a * u.z + b * v.z};
                    const double curvature = (L * a * a + 2.0 * M * a * b + N * b * b) / Dot3(way, way);
                    const double by_formula = 1.0 / p.Rho_Surface;
                    EXPECT_NEAR(std::abs(curvature), std::abs(by_formula), 1e-3 * std::abs(by_formula) + 2e-6) << theta;
                }
            }
}

TEST(True_Cams, an_arm_that_does_not_reach_is_an_invalid_argument)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true}.Make()));
    design.cam.ArmRad = 10.0;
    EXPECT_FALSE(Mechanism(design).reaches);
    EXPECT_THROW(True_Cam{design}, Fault);
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.cam.Offset = 61.0;
    EXPECT_FALSE(Mechanism(design).reaches);
    EXPECT_THROW(True_Cam{design}, Fault);
}

}  // namespace
}  // namespace lobemax
