// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "camgeom/arm.h"
#include "camgeom/sizing.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Script;
using Point = std::complex<double>;

constexpr double pi = 3.14159265358979323846;

Cam_Group& c()
{
    return design.cam;
}

Point At(int row, int i)
{
    return {Data(row, i), Data(row + 1, i)};
}

/// Unit tangent of a closed curve of rows row, row + 1 at point i, by central differences over four points.
Point Tangent(int row, int i)
{
    const int n = design.motion.Max_Data_Points_used;
    const auto at = [&](int k) { return At(row, ((i + k) % n + n) % n); };
    const Point d = 8.0 * (at(1) - at(-1)) - (at(2) - at(-2));
    return d / std::abs(d);
}

double Dot(const Point& a, const Point& b)
{
    return (std::conj(a) * b).real();
}

struct Configuration {
    const char* name;
    bool translating;
    int time_base;
    int Rotflag;
    int ArmDirect;
    double offset;
};

class Radial_Roller : public ::testing::TestWithParam<Configuration> {
protected:
    void SetUp() override
    {
        const Configuration& p = GetParam();
        Cam_Maker maker;
        maker.translating = p.translating;
        maker.time_base = p.time_base;
        maker.step = 0.25;
        maker.Make();
        c().Rotflag = p.Rotflag;
        c().ArmDirect = p.ArmDirect;
        c().Offset = p.offset;
        ASSERT_TRUE(Calc_Phi(design, 1));
        ASSERT_FALSE(design.flags.Calc_Error);
    }
    void TearDown() override { design = {}; }

    Script script_;
};

TEST_P(Radial_Roller, the_surface_is_a_roller_radius_from_the_pitch_curve_along_its_normal)
{
    const int n = design.motion.Max_Data_Points_used;
    for (int i = 0; i < n; i += 7) {
        const Point to_surface = At(36, i) - At(9, i);
        ASSERT_NEAR(std::abs(to_surface), 12.0, 1e-4) << i;
        ASSERT_NEAR(Dot(to_surface / 12.0, Tangent(9, i)), 0.0, 2e-4) << i;
        // The cam lies inside the pitch curve.
        ASSERT_LT(std::abs(At(36, i)), std::abs(At(9, i))) << i;
    }
}

TEST_P(Radial_Roller, the_pressure_angle_is_between_the_contact_normal_and_the_followers_motion)
{
    const Configuration& p = GetParam();
    const int n = design.motion.Max_Data_Points_used;
    for (int i = 0; i < n; i += 7) {
        const Point normal = Point(0, 1) * Tangent(9, i);
        const Point motion = [&]() -> Point {
            if (p.translating)  // the follower moves along its axis, which the cam's turn takes to angle -theta
                return std::polar(1.0, -p.Rotflag * Data(var::Angle, i) * pi / 180);
            const Point arm = At(9, i) - Point(design.results.Arm_Pivot_X(i), design.results.Arm_Pivot_Y(i));
            return Point(0, 1) * arm / std::abs(arm);
        }();
        const double angle = std::acos(std::min(1.0, std::abs(Dot(normal, motion)))) * 180 / pi;
        ASSERT_NEAR(std::abs(Data(var::Phi, i)), angle, 0.03) << i;
    }
}

TEST_P(Radial_Roller, polar_and_cartesian_forms_are_one_point)
{
    for (int i = 0; i <= design.motion.Max_Data_Points_used; i += 11) {
        EXPECT_NEAR(std::abs(At(9, i)), Data(11, i), 1e-4);
        const double sense = GetParam().translating ? -GetParam().Rotflag : 1;
        EXPECT_NEAR(std::abs(At(9, i) - std::polar(Data(11, i), sense * Data(12, i) * pi / 180)), 0.0, 1e-3);
        EXPECT_NEAR(std::abs(At(13, i)), Data(34, i), 1e-4);
        EXPECT_NEAR(std::abs(At(13, i) - std::polar(Data(34, i), Data(35, i) * pi / 180)), 0.0, 1e-3);
    }
}

TEST_P(Radial_Roller, the_prime_circle_is_the_smallest_path_of_the_roller_centre)
{
    double smallest = 1e9;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        smallest = std::min(smallest, std::abs(At(9, i)));
    EXPECT_NEAR(smallest, 60.0, 1e-3);
}

TEST_P(Radial_Roller, the_cutter_runs_on_the_contact_normal)
{
    const int i = 200;
    EXPECT_NEAR(std::abs(At(40, i) - At(9, i)), 12.0 - 8.0, 1e-4);
    c().Cutter_Radius = 12.0;
    Cam_Profile(design);
    EXPECT_NEAR(std::abs(At(40, i) - At(9, i)), 0.0, 1e-4);  // the roller's own size: on the roller centre's path
    c().Cutter_Radius = 0.0;
    Cam_Profile(design);
    EXPECT_NEAR(std::abs(At(40, i) - At(36, i)), 0.0, 1e-4);
}

TEST_P(Radial_Roller, machine_zero_is_one_rigid_rotation)
{
    for (int i = 0; i <= design.motion.Max_Data_Points_used; i += 13) {
        EXPECT_EQ(At(13, i), At(9, i));  // start angle 0
        EXPECT_EQ(At(38, i), At(36, i));
    }
    c().Shift_Angle = 35.0;
    Cam_Profile(design);
    const Point turn = std::polar(1.0, -GetParam().Rotflag * 35.0 * pi / 180);
    for (int i = 0; i <= design.motion.Max_Data_Points_used; i += 13) {
        EXPECT_NEAR(std::abs(At(13, i) - At(9, i) * turn), 0.0, 1e-3);
        EXPECT_NEAR(std::abs(At(38, i) - At(36, i) * turn), 0.0, 1e-3);
    }
}

TEST_P(Radial_Roller, the_other_side_of_the_roller_is_the_outer_track)
{
    c().In_Out = 1;
    Cam_Profile(design);
    for (int i = 0; i < design.motion.Max_Data_Points_used; i += 97) {
        EXPECT_NEAR(std::abs(At(36, i) - At(9, i)), 12.0, 1e-4);
        EXPECT_GT(std::abs(At(36, i)), std::abs(At(9, i)));
        EXPECT_GT(std::abs(At(40, i)), std::abs(At(9, i)));
    }
}

TEST_P(Radial_Roller, both_senses_of_rotation_are_mirrors)
{
    std::vector<Point> surface;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        surface.push_back(At(36, i));
    c().Rotflag = -GetParam().Rotflag;
    if (!GetParam().translating) {
        c().ArmY = -c().ArmY;
        c().ArmDirect = -GetParam().ArmDirect;
    }
    ASSERT_TRUE(Calc_Phi(design, 1));
    for (int i = 0; i <= design.motion.Max_Data_Points_used; i += 17)
        EXPECT_NEAR(std::abs(At(36, i) - std::conj(surface[static_cast<std::size_t>(i)])), 0.0, 2e-3) << i;
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, Radial_Roller,
    ::testing::Values(
        Configuration{"ccw", true, 1, 1, 1, 0.0}, Configuration{"cw", true, 1, -1, 1, 0.0},
        Configuration{"offset", true, 1, -1, 1, 15.0}, Configuration{"offset_negative", true, 1, 1, 1, -15.0},
        Configuration{"degrees", true, 2, -1, 1, 10.0}, Configuration{"radians", true, 3, -1, 1, 10.0},
        Configuration{"arm_ccw_ccw", false, 1, 1, 1, 0.0}, Configuration{"arm_ccw_cw", false, 1, 1, -1, 0.0},
        Configuration{"arm_cw_ccw", false, 1, -1, 1, 0.0}, Configuration{"arm_cw_cw", false, 1, -1, -1, 0.0},
        Configuration{"arm_degrees", false, 2, -1, 1, 0.0}, Configuration{"arm_radians", false, 3, 1, 1, 0.0}),
    [](const auto& each) { return std::string(each.param.name); });

class Profile : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    Script script_;
};

TEST_F(Profile, a_flat_face_is_touched_off_its_axis_by_the_velocity_and_lies_on_the_cam)
{
    for (const int Rotflag : {1, -1}) {
        Cam_Maker maker;
        maker.step = 0.25;
        maker.Make();
        c().Followtype = 2;
        c().Rotflag = Rotflag;
        ASSERT_TRUE(Calc_Phi(design, 2));
        for (int i = 0; i < design.motion.Max_Data_Points_used; i += 7) {
            const Point axis = std::polar(1.0, -Rotflag * Data(var::Angle, i) * pi / 180);
            ASSERT_NEAR(Dot(Tangent(36, i), axis), 0.0, 3e-4) << i;                // the face is tangent
            ASSERT_NEAR(Dot(At(36, i), axis), 60.0 + Data(var::S, i), 1e-3) << i;  // at its height
            ASSERT_EQ(At(36, i), At(9, i));
            ASSERT_EQ(At(38, i), At(13, i));
            ASSERT_EQ(Data(var::Phi, i), 0.0);
        }
        EXPECT_NEAR(std::abs(At(36, 4 * 330)), 60.0, 1e-4);  // in the dwell: a plain circle
        EXPECT_NEAR(std::abs(At(40, 4 * 330)), 68.0, 1e-4);  // and the cutter one outside it
        EXPECT_NEAR(std::abs(At(40, 220) - At(36, 220)), 8.0, 1e-3);
    }
}

TEST_F(Profile, a_flat_face_on_an_arm_lies_on_the_cam_where_cam_and_arm_turn_the_same_way)
{
    for (const int sense : {1, -1}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.step = 0.25;
        maker.lift = 8.0;
        maker.Make();
        c().Followtype = 2;
        c().Rotflag = sense;
        c().ArmDirect = sense;
        ASSERT_TRUE(Calc_Phi(design, 2));
        for (int i = 0; i < design.motion.Max_Data_Points_used; i += 7) {
            Flat_Contact contact;
            ASSERT_TRUE(Flat_Osc_Contact(design, i, c().ArmX, c().ArmY, contact));
            const Point face = std::polar(1.0, (contact.direction - sense * Data(var::Angle, i)) * pi / 180);
            ASSERT_NEAR(std::abs(Dot(Tangent(36, i), face)), 1.0, 1e-6) << i;
            const Point normal = face * Point(0, 1);
            const double D = std::hypot(90.0, 30.0);
            ASSERT_NEAR(std::abs(Dot(At(36, i), normal)), D * std::sin(contact.arm * pi / 180), 1e-3) << i;
            ASSERT_NEAR(std::abs(At(40, i) - At(36, i)), 8.0, 1e-3);
            // The cutter is turned off the face's normal by the swing, where mechanics has none: docs/theory.md, (98).
            ASSERT_NEAR(std::abs(Dot(At(40, i) - At(36, i), normal)), 8.0 * std::cos(Data(var::S, i) * pi / 180), 1e-3);
        }
        EXPECT_NEAR(std::abs(Dot(At(36, 4 * 330), At(36, 4 * 330))), 3600.0, 1.0);  // in the dwell: the prime circle
    }
}

TEST_F(Profile, a_flat_face_on_an_arm_has_its_distance_by_one_minus_the_velocity_in_either_sense)
{
    // For opposite senses of cam and arm mechanics would have one plus the velocity,
    // docs/theory.md, (84); one minus it is meant.
    for (const int ArmDirect : {1, -1}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.lift = 8.0;
        maker.Make();
        c().Followtype = 2;
        c().Rotflag = 1;
        c().ArmDirect = ArmDirect;
        Flat_Contact contact;
        ASSERT_TRUE(Flat_Osc_Contact(design, 55, c().ArmX, c().ArmY, contact));
        const double w = Data(var::V, 55) / 12.0 * pi / 180;
        const double u = std::hypot(90.0, 30.0) * std::cos(contact.arm * pi / 180) / (1 - w);
        EXPECT_NEAR(std::abs(Point(contact.Xf, contact.Yf) - std::polar(1.0, -55 * pi / 180) * Point(90, 30)), u, 1e-3);
    }
}

TEST_F(Profile, a_flat_face_beside_its_arm_has_its_contact_by_the_tangent_of_its_distance)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Followtype = 2;
    c().Offset = 15.0;
    Flat_Contact contact;
    ASSERT_TRUE(Flat_Osc_Contact(design, 320, 90.0, 30.0, contact));
    EXPECT_NEAR(contact.start_angle, std::asin(75.0 / std::hypot(90.0, 30.0)) * 180 / pi, 1e-4);
    const double u = std::hypot(90.0, 30.0) * std::cos(contact.arm * pi / 180);
    const double d = std::hypot(15.0, u);
    const Point pivot = Point(90, 30) * std::polar(1.0, -c().Rotflag * 320 * pi / 180);
    EXPECT_NEAR(std::abs(Point(contact.Xf, contact.Yf) - pivot), u, 1e-3);
    EXPECT_NEAR(std::abs(Point(contact.Xc, contact.Yc) - pivot), d, 1e-3);
    // Mechanics has atan(15 / u) for the angle between arm and contact; with the hypotenuse it is smaller. Meant.
    EXPECT_NEAR(contact.direction - contact.pivot_angle - 180.0 - contact.arm, std::atan(15.0 / d) * 180 / pi, 1e-3);
}

TEST_F(Profile, the_conjugate_of_a_flat_face_on_an_arm_starts_a_lift_of_the_last_segment_calculated_higher)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Followtype = 2;
    c().Conjugate = true;
    c().Side_Sign = -1;
    design.motion.Lift = 7.0;  // mechanics has the whole lift, 20: docs/theory.md, (83). Meant.
    Flat_Contact contact;
    ASSERT_TRUE(Flat_Osc_Contact(design, 55, 90.0, 30.0, contact));
    EXPECT_NEAR(contact.start_angle, std::asin(60.0 / std::hypot(90.0, 30.0)) * 180 / pi + 7.0, 1e-4);
    EXPECT_NEAR(contact.arm, contact.start_angle - Data(var::S, 55), 1e-4);
    const double w = Data(var::V, 55) * pi / 180 / 12.0;  // of the main cam; mechanics has its negative
    const double u = std::hypot(90.0, 30.0) * std::cos(contact.arm * pi / 180) / (1 - w);
    const Point pivot = Point(90, 30) * std::polar(1.0, -c().Rotflag * 55 * pi / 180);
    EXPECT_NEAR(std::abs(Point(contact.Xf, contact.Yf) - pivot), std::abs(u), 1e-3);
}

TEST_F(Profile, a_pivot_on_the_cam_centre_is_an_error_of_the_calculation)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().ArmX = c().ArmY = 0.0;
    Flat_Contact contact;
    EXPECT_FALSE(Flat_Osc_Contact(design, 0, 0.0, 0.0, contact));
    EXPECT_TRUE(design.flags.Calc_Error);
}

/// The unwrapped drum: arc length along, height up.
Point Unwrapped(int lambda_row, int z_row, int i)
{
    return {c().Prime_Rad * Data(lambda_row, i) * pi / 180, Data(z_row, i)};
}

TEST_F(Profile, a_flat_face_is_touched_at_one_point_whatever_the_time_base)
{
    std::vector<Point> per_second;
    for (const int time_base : {1, 2, 3}) {
        Cam_Maker maker;
        maker.time_base = time_base;
        maker.Make();
        c().Followtype = 2;
        ASSERT_TRUE(Calc_Phi(design, 2));
        for (int i = 0; i <= 360; i += 15)
            if (time_base == 1)
                per_second.push_back(At(36, i));
            else
                EXPECT_NEAR(std::abs(At(36, i) - per_second.at(static_cast<std::size_t>(i / 15))), 0.0, 1e-3)
                    << time_base << " " << i;
    }
}

TEST_F(Profile, the_surface_of_an_axial_cam_is_a_roller_radius_along_the_normal_on_the_unwrapped_drum)
{
    for (const int Rotflag : {1, -1})
        for (const int side : {1, -1}) {
            Cam_Maker maker;
            maker.step = 0.25;
            maker.Make();
            c().Camtype = "Barrel";
            c().Rotflag = Rotflag;
            c().Top_Bot = side;
            ASSERT_TRUE(Calc_Phi(design, 1));
            const int n = design.motion.Max_Data_Points_used;
            for (int i = 10; i < n - 10; i += 7) {
                const Point to_surface = Unwrapped(37, 36, i) - Unwrapped(12, 11, i);
                const Point along = Unwrapped(12, 11, i + 1) - Unwrapped(12, 11, i - 1);
                ASSERT_NEAR(std::abs(to_surface), 12.0, 1e-3) << i;
                ASSERT_NEAR(Dot(to_surface / 12.0, along / std::abs(along)), 0.0, 1e-3) << i;
                ASSERT_GT(to_surface.imag() * Rotflag * side, 0.0) << i;
                ASSERT_NEAR(Data(var::Phi, i), std::atan2(along.imag(), along.real()) * 180 / pi, 0.02) << i;
                for (const int row : {9, 10, 13, 14, 34, 35, 38, 39, 40, 41})
                    ASSERT_EQ(Data(row, i), 0.0);
            }
            EXPECT_EQ(Data(11, 300), Data(var::S, 300));
            EXPECT_EQ(Data(12, 300), Data(var::Angle, 300));
        }
}

TEST_F(Profile, an_axial_cam_with_an_arm_keeps_the_roller_at_its_radius_and_the_arm_on_its_arc)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    c().ArmX = -80.0;
    c().ArmY = 10.0;
    ASSERT_TRUE(Calc_Phi(design, 1));
    const double g0 = std::asin(10.0 / 80.0);
    for (int i = 0; i <= 360; i += 9) {
        const double arm = g0 + Data(var::S, i) * pi / 180;
        EXPECT_NEAR(Data(11, i), 80.0 * std::sin(arm), 1e-3) << i;
        const double xa = 80.0 * std::cos(arm) - 80.0;
        const double lag = 80.0 / std::hypot(xa, 60.0) * std::cos(arm) * 180 / pi;
        double lambda = c().Rotflag * lag + Data(var::Angle, i);
        if (lambda > 360.0)
            lambda -= 360.0;
        EXPECT_NEAR(Data(12, i), lambda, 1e-3) << i;
        EXPECT_NEAR(std::abs(Unwrapped(37, 36, i) - Unwrapped(12, 11, i)), 12.0, 1e-2) << i;
    }
    c().ArmRad = 0.0;
    Axial_Coords center;
    EXPECT_FALSE(Axial_Osc_Coords(design, 0, 60.0, -80.0, 10.0, 0.0, center));
    EXPECT_TRUE(design.flags.Calc_Error);
}

/// Largest deviation from a right angle between surface and track of a barrel cam with an arm, degrees.
double Off_Square(int Rotflag, int ArmDirect, int side)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.step = 0.25;
    maker.Make();
    c().Camtype = "Barrel";
    c().Rotflag = Rotflag;
    c().ArmDirect = ArmDirect;
    c().ArmX = side * 80.0;
    c().ArmY = 0.0;
    EXPECT_TRUE(Calc_Phi(design, 1));
    double largest = 0.0;
    for (int i = 60; i < 4 * 100; i += 7) {  // in the rise
        const Point to_surface = Unwrapped(37, 36, i) - Unwrapped(12, 11, i);
        Point along = Unwrapped(12, 11, i + 2) - Unwrapped(12, 11, i - 2);
        const double sine = std::abs(Dot(to_surface, along)) / std::abs(to_surface) / std::abs(along);
        if (std::abs(along) < 5.0)  // not where Lambda passes a full turn
            largest = std::max(largest, std::asin(std::min(sine, 1.0)) * 180 / pi);
    }
    return largest;
}

TEST_F(Profile, an_axial_arms_surface_is_square_to_its_track_where_rotation_arm_and_pivot_agree)
{
    // Mechanics has it square in all eight; docs/theory.md, section 8.2. Meant.
    for (const int side : {1, -1}) {
        EXPECT_LT(Off_Square(side, side, side), 0.5);
        EXPECT_GT(Off_Square(side, -side, side), 1.0);
        EXPECT_GT(Off_Square(-side, side, side), 20.0);
        EXPECT_GT(Off_Square(-side, -side, side), 20.0);
    }
}

TEST_F(Profile, an_axial_arm_turns_its_height_with_its_direction_and_a_linear_cam_has_no_arc)
{
    for (const int ArmDirect : {1, -1}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.Make();
        c().ArmDirect = ArmDirect;
        for (const char* kind : {"Barrel", "Linear"}) {
            c().Camtype = kind;
            for (const int side : {1, -1}) {
                // Mechanics has the height of the arm's end, ArmDirect or not: docs/theory.md, (89). Meant.
                const double start = side > 0 ? pi - std::asin(0.25) : std::asin(0.25);
                const double end = 80.0 * std::sin(start + ArmDirect * Data(var::S, 140) * pi / 180);
                Axial_Coords point;
                ASSERT_TRUE(Axial_Osc_Coords(design, 140, 60.0, side * 80.0, 20.0, 80.0, point));
                EXPECT_NEAR(point.Z, ArmDirect * end, 1e-3);
                if (c().Camtype == "Linear")
                    EXPECT_EQ(point.Lambda, 140.0);
                else
                    EXPECT_GT(std::abs(point.Lambda - 140.0), 30.0);  // a ratio for an angle, the pivot left out
            }
        }
    }
}

TEST_F(Profile, a_linear_cam_has_lengths_for_angles)
{
    Cam_Maker().Make();
    c().Camtype = "Linear";
    c().Prime_Rad = 400.0 / PI2;
    for (const int row : {9, 10, 13, 14, 34, 35, 38, 39, 40, 41})
        design.results.CalcData(row, 55) = 7.0;  // of a radial cam before
    ASSERT_TRUE(Calc_Phi(design, 1));
    EXPECT_EQ(Data(12, 0), 0.0);
    EXPECT_NEAR(Data(12, 90), 100.0, 1e-4);
    EXPECT_NEAR(Data(12, 360), 400.0, 1e-4);
    EXPECT_NEAR(Data(37, 150), 400.0 * 150 / 360, 1e-3);  // in a dwell: straight above the roller centre
    for (const int row : {9, 10, 13, 14, 34, 35, 38, 39, 40, 41})
        EXPECT_EQ(Data(row, 55), 0.0);
}

TEST_F(Profile, a_prime_radius_of_zero_is_told_of)
{
    Cam_Maker().Make();
    c().Camtype = "Barrel";
    c().Prime_Rad = 0.0;
    script_.Expect({" Your prime circle radius is zero - Please provide a positive value."});
    Cam_Profile(design);
    EXPECT_TRUE(design.flags.Calc_Error);
}

TEST_F(Profile, the_keyway_has_its_clock_angle_by_the_sense_of_rotation)
{
    design = {};
    const std::vector<std::pair<std::string, int>> texts{{"12 O'clock", 0},  {"3 O'clock", 90}, {"6 O'clock", 180},
                                                         {"9 O'clock", 270}, {"noon", 0},       {"", 0}};
    for (const int Rotflag : {1, -1})
        for (const auto& [text, angle] : texts) {
            c().Rotflag = Rotflag;
            c().Keyway_Text = text;
            Set_Keyway_Angle(design);
            EXPECT_EQ(c().Keyway_Clockangle, Rotflag * angle) << text;
        }
}

TEST_F(Profile, machine_zero_comes_from_start_angle_and_follower_axis)
{
    design = {};
    c().Rotflag = -1;
    c().Follower_Angle = 90.0;
    c().Shift_Angle = 20.0;
    c().Keyway_Clockangle = 180;
    c().Translating = true;
    Set_Machine_Zero(design);
    EXPECT_EQ(c().Cam_Shift_Angle, -110.0);
    EXPECT_EQ(c().Cam_Draw_Angle, 180 + 90 - 110.0);
    c().Translating = false;
    Set_Machine_Zero(design);
    EXPECT_EQ(c().Cam_Shift_Angle, -20.0);
}

TEST_F(Profile, the_signed_shift_is_kept_for_the_drawing)
{
    Cam_Maker maker;
    maker.Make();
    c().Shift_Angle = 20.0;
    Cam_Profile(design);
    EXPECT_EQ(c().Cam_Shift_Sign_Angle, -c().Cam_Shift_Angle);
    maker.translating = false;
    maker.Make();
    c().Shift_Angle = 20.0;
    Cam_Profile(design);
    EXPECT_EQ(c().Cam_Shift_Sign_Angle, c().Rotflag * c().Cam_Shift_Angle);
}

TEST_F(Profile, a_conjugate_falls_where_the_cam_rises)
{
    Cam_Maker().Make();
    c().Offset = 10.0;
    c().Conjugate = true;
    c().Side_Sign = -1;
    Cam_Profile(design);
    for (int i = 0; i <= 360; i += 10) {
        const double height = std::sqrt(60.0 * 60 + 10.0 * 10) + 20.0 - Data(var::S, i);  // the sum of squares, meant
        EXPECT_NEAR(Data(11, i), std::hypot(height, 10.0), 1e-3) << i;
    }
}

TEST_F(Profile, an_example_being_loaded_keeps_the_profile_as_it_was)
{
    Cam_Maker().Make();
    ASSERT_TRUE(Calc_Phi(design, 1));
    const double before = Data(9, 40);
    c().Prime_Rad = 90.0;
    design.flags.Skip_Profile = true;
    ASSERT_TRUE(Calc_Phi(design, 1));
    EXPECT_EQ(Data(9, 40), before);
    design.flags.Skip_Profile = false;
    ASSERT_TRUE(Calc_Phi(design, 1));
    EXPECT_NE(Data(9, 40), before);
}

TEST_F(Profile, nothing_is_calculated_while_the_program_starts)
{
    Cam_Maker().Make();
    design.flags.Starting = true;
    Cam_Profile(design);
    EXPECT_TRUE(Calc_Phi(design, 1));
    EXPECT_TRUE(Calc_Rho(design, 1));
    EXPECT_EQ(Data(9, 40), 0.0);
    EXPECT_EQ(Data(var::Phi, 40), 0.0);
}

TEST_F(Profile, a_polydyne_cam_takes_its_own_motion)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(22, i) = Data(var::S, i) + 1.0;
    design.flags.Polydyne_Calc = true;
    Cam_Profile(design);
    EXPECT_NEAR(Data(11, 330), 61.0, 1e-4);
}

TEST_F(Profile, a_driven_end_effector_divides_the_displacement)
{
    Cam_Maker().Make();
    design.linkage.Drive_End_Effector = true;
    for (int i = 0; i <= 360; ++i)
        design.results.Link_Ratio_S(i) = i == 150 ? 0.0 : 2.0;
    Cam_Profile(design);
    EXPECT_NEAR(Data(11, 140), 70.0, 1e-4);
    EXPECT_NEAR(Data(11, 150), 80.0, 1e-4);  // a ratio of zero counts as 1
}

}  // namespace
}  // namespace lobemax
