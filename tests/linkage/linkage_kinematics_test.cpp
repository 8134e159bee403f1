// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_kinematics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>

#include "core/numeric.h"
#include "core/text.h"
#include "core/variables.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "tests/support/linkage_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Kind_of_Train;
using testing::Make_Train;
using testing::Script;
using testing::Turned;
using testing::Vector;

constexpr double pi = 3.14159265358979323846;
constexpr double to_degrees = 180.0 / pi;

Results_Group& r()
{
    return design.results;
}

const Linkage_Group& k()
{
    return design.linkage;
}

Vector Arm_Pivot()
{
    return {design.cam.ArmX, design.cam.ArmY};
}

Vector O4()
{
    return {k().O4x, k().O4y};
}

Vector O6()
{
    return {k().O6x, k().O6y};
}

Vector Point(int row, int i)
{
    return {r().Link_X(row, i), r().Link_Y(row, i)};
}

double Direction(const Vector& from, const Vector& to)
{
    return std::arg(to - from) * to_degrees;
}

bool Calculate()
{
    Integer answer;
    return Calc_Linkage_All(design, answer);
}

int Points()
{
    return design.motion.Max_Data_Points_used;
}

class Every_Train : public ::testing::TestWithParam<Kind_of_Train> {
protected:
    void SetUp() override { Make_Train(GetParam()); }
    bool Six() const { return GetParam().type % 2 == 1; }
    bool Slider() const { return GetParam().type > 1; }
    Script script_;
};

// Angles are stored as Singles of up to 360 degrees: 2E-5 degrees, 1E-4 mm on the longest link.
constexpr double closure = 2E-4;

TEST_P(Every_Train, closes_the_loop_of_its_first_stage_at_every_point)
{
    ASSERT_TRUE(Calculate());
    for (int i = 0; i <= Points(); ++i) {
        const double ground = Direction(Arm_Pivot(), O4());
        const Vector A = Arm_Pivot() + Turned(k().Link_2, r().Link_Theta(2, i) + ground);
        EXPECT_LT(std::abs(A - Point(link_point::A, i)), closure);
        if (Slider() && !Six()) {
            // From the slider, on its axis through S3, along the coupler to A.
            const double axis = k().Global_Slider_angle_deg;
            const Vector slider = Point(link_point::B, i);
            EXPECT_NEAR(std::imag((slider - Vector{k().S3x, k().S3y}) * Turned(1.0, -axis)), 0.0, closure);
            EXPECT_LT(std::abs(slider + Turned(k().Link_3, r().Link_Theta(3, i) + axis) - A), closure) << i;
            continue;
        }
        const Vector B = A + Turned(k().Link_3, r().Link_Theta(3, i) + ground);
        EXPECT_LT(std::abs(B - (O4() + Turned(k().Link_4, r().Link_Theta(4, i) + ground))), closure) << i;
        EXPECT_LT(std::abs(B - Point(link_point::B, i)), closure);
    }
}

class Every_Second_Stage : public Every_Train {};

TEST_P(Every_Second_Stage, closes_its_loop_at_every_point)
{
    ASSERT_TRUE(Calculate());
    const double ground = Direction(Arm_Pivot(), O4());
    for (int i = 0; i <= Points(); ++i) {
        const Vector A = Arm_Pivot() + Turned(k().Link_2, r().Link_Theta(2, i) + ground);
        const bool on_coupler = GetParam().stage[0] == 'S';
        const Vector D = on_coupler ? A + Turned(k().Link_4a, r().Link_Theta(3, i) + ground + k().Delta4)
                                    : O4() + Turned(k().Link_4a, r().Link_Theta(4, i) + ground + k().Delta4);
        EXPECT_LT(std::abs(D - Point(link_point::D, i)), closure);
        if (Slider()) {
            const double axis = k().Global_Slider_angle_deg;
            const Vector slider = O4() + Vector{r().Link_Theta(6, i), k().Offset6} * Turned(1.0, axis);
            EXPECT_LT(std::abs(slider - Point(link_point::C, i)), closure);
            EXPECT_LT(std::abs(slider + Turned(k().Link_5, r().Link_Theta(5, i) + axis) - D), closure) << i;
            continue;
        }
        const double second = Direction(O4(), O6());
        const Vector C = D + Turned(k().Link_5, r().Link_Theta(5, i) + second);
        EXPECT_LT(std::abs(C - (O6() + Turned(k().Link_6, r().Link_Theta(6, i) + second))), closure) << i;
        EXPECT_LT(std::abs(C - Point(link_point::C, i)), closure);
    }
}

/// A train's pose with its input moved by its own velocity and acceleration for a time.
Train_Pose After(const Linkage_Train& train, const Link_Input& now, double t)
{
    return train.At({now.theta2 + now.omega2 * t + now.alpha2 * t * t / 2, now.omega2 + now.alpha2 * t, now.alpha2});
}

TEST_P(Every_Train, moves_with_velocities_and_accelerations_that_are_the_derivatives_of_its_positions)
{
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    constexpr double h = 1E-4;
    for (const double swing : {0.0, 0.1, 0.2, 0.33}) {
        const Link_Input now{Input_at(design, rest, 0).theta2 + swing, 1.7, -2.3};
        const Train_Pose before = After(train, now, -h);
        const Train_Pose here = train.At(now);
        const Train_Pose after = After(train, now, h);
        ASSERT_TRUE(before.Connects() && here.Connects() && after.Connects());
        for (std::size_t link = 2; link <= (Six() ? 6U : 4U); ++link) {
            const double size = Slider() && link == (Six() ? 6U : 4U) ? 200.0 : 1.0;
            const double slope = (after.link[link].theta - before.link[link].theta) / (2 * h);
            EXPECT_NEAR(here.link[link].omega, slope, 1E-6 * size) << "link " << link;
            const double bend = (after.link[link].omega - before.link[link].omega) / (2 * h);
            EXPECT_NEAR(here.link[link].alpha, bend, 1E-5 * size) << "link " << link;
        }
    }
}

TEST_P(Every_Train, has_rates_in_its_tables_that_are_the_time_derivatives_of_its_tables)
{
    ASSERT_TRUE(Calculate());
    const double second = 2 * design.motion.Deltatheta / to_degrees / design.motion.Shaft_speed;  // of two steps
    const int last = Six() ? 6 : 4;
    for (int link = 2; link <= last; ++link) {
        const bool slides = Slider() && link == last;
        const auto place =
            slides ? std::vector<double>(r().Link_Theta.Points(link).begin(), r().Link_Theta.Points(link).end())
                   : Unwrapped(r().Link_Theta.Points(link));
        double peak = 0.0;
        for (const Single omega : r().Link_Omega.Points(link))
            peak = std::max(peak, std::abs(double{omega}));
        for (int i = 1; i < Points(); ++i) {
            const auto at = static_cast<std::size_t>(i);
            const double slope = (place[at + 1] - place[at - 1]) / second / (slides ? 1.0 : to_degrees);
            // The central difference of one-degree steps: 0.2 % of the peak.
            EXPECT_NEAR(r().Link_Omega(link, i), slope, 0.002 * peak) << "link " << link << " point " << i;
        }
    }
}

TEST_P(Every_Train, ends_where_it_began)
{
    ASSERT_TRUE(Calculate());
    for (int link = 2; link <= (Six() ? 6 : 4); ++link)
        EXPECT_NEAR(r().Link_Theta(link, 0), r().Link_Theta(link, Points()), 1E-4) << link;
    EXPECT_TRUE(design.flags.Linkage_Calc);
    EXPECT_EQ(k().Link_Broken, 0);
    EXPECT_EQ(k().Link_Indeterminate, 0);
}

TEST_P(Every_Train, is_calculated_at_one_point_as_at_all)
{
    ASSERT_TRUE(Calculate());
    const Results_Group all = r();
    Dimension_Link_Arrays(design, Points());
    Integer answer = 4;
    for (const int i : {0, 77, 200}) {
        ASSERT_TRUE(Calc_Linkage_At(design, i, answer));
        for (int link = 2; link <= (Six() ? 6 : 4); ++link) {
            EXPECT_EQ(r().Link_Theta(link, i), all.Link_Theta(link, i));
            EXPECT_EQ(r().Link_Omega(link, i), all.Link_Omega(link, i));
            EXPECT_EQ(r().Link_Alpha(link, i), all.Link_Alpha(link, i));
            EXPECT_EQ(k().Theta_of_link(link), all.Link_Theta(link, i));
        }
        EXPECT_EQ(r().Link_X(link_point::B, i), all.Link_X(link_point::B, i));
    }
}

TEST_P(Every_Train, has_ratios_that_carry_the_arms_motion_to_the_last_link)
{
    ASSERT_TRUE(Calculate());
    const int last = Six() ? 6 : 4;
    const auto largest = [](std::span<const Single> row) {
        double peak = 0.0;
        for (const Single value : row)
            peak = std::max(peak, std::abs(double{value}));
        return peak;
    };
    const double arm_peak = largest(r().Link_Omega.Points(2));
    const double last_peak = largest(r().Link_Omega.Points(last));
    for (int i = 0; i <= Points(); ++i) {
        const double in = r().Link_Omega(2, i) / arm_peak;
        const double out = r().Link_Omega(last, i) / last_peak;
        if (in == 0.0) {
            EXPECT_EQ(r().Link_Ratio_V(i), 0.0F);
        } else {
            EXPECT_NEAR(r().Link_Ratio_V(i) * in, out, 1E-6) << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Every_Train, ::testing::ValuesIn(testing::All_Trains()),
                         [](const auto& train) { return train.param.Name(); });

INSTANTIATE_TEST_SUITE_P(All, Every_Second_Stage, ::testing::ValuesIn(testing::Six_Link_Trains()),
                         [](const auto& train) { return train.param.Name(); });

class Linkage : public ::testing::Test {
protected:
    /// A fourbar of given links whose arm stands as the test wants it: only Linkage_Train is asked.
    static Linkage_Train Fourbar(double L1, double L2, double L3, double L4, int assembly = -1)
    {
        design.linkage.Linkage_Type = 0;
        design.linkage.Links = 4;
        design.cam.ArmX = 0.0;
        design.cam.ArmY = 0.0;
        design.linkage.O4x = L1;
        design.linkage.O4y = 0.0;
        design.linkage.Link_2 = L2;
        design.linkage.Link_3 = L3;
        design.linkage.Link_4 = L4;
        design.linkage.Assemflag1 = assembly;
        return Linkage_Train(design);
    }
    void SetUp() override { Make_Train({}); }
    Script script_;
};

TEST_F(Linkage, has_the_angles_of_a_parallelogram)
{
    const Linkage_Train train = Fourbar(8, 3, 8, 3);
    for (const double degrees : {20.0, 70.0, 130.0, 200.0, 300.0}) {
        const double theta = degrees / to_degrees;
        const Train_Pose pose = train.At({theta, 2.0, 5.0});
        ASSERT_TRUE(pose.Connects());
        // One of the two assemblies is the parallelogram above the ground, the other below.
        const Linkage_Train other = Fourbar(8, 3, 8, 3, 1);
        const Train_Pose crossed = other.At({theta, 2.0, 5.0});
        const Train_Pose& parallel = degrees < 180.0 ? pose : crossed;
        EXPECT_NEAR(std::remainder(parallel.link[4].theta - theta, 2 * PI), 0.0, 1E-7);
        EXPECT_NEAR(parallel.link[3].theta, 0.0, 1E-7);
        EXPECT_NEAR(parallel.link[4].omega, 2.0, 1E-6);
        EXPECT_NEAR(parallel.link[4].alpha, 5.0, 1E-5);
        EXPECT_NEAR(parallel.link[3].omega, 0.0, 1E-6);
    }
}

TEST_F(Linkage, is_open_with_the_sign_minus_and_crossed_with_plus)
{
    // Triangle of O4, A and B: link 4 stands the angle at O4 below or above the line to A.
    for (const double degrees : {40.0, 130.0, 260.0}) {
        const Vector A = Turned(40, degrees) - Vector{100, 0};
        const double f = std::abs(A);
        const double corner = std::acos((f * f + 80.0 * 80.0 - 120.0 * 120.0) / (2 * f * 80.0));
        for (const int assembly : {-1, 1}) {
            const Train_Pose pose = Fourbar(100, 40, 120, 80, assembly).At({degrees / to_degrees, 0, 0});
            EXPECT_NEAR(std::remainder(pose.link[4].theta - std::arg(A) - assembly * corner, 2 * pi), 0.0, 1E-9);
        }
    }
    // Open: B above the ground, links 2 and 4 do not cross.
    EXPECT_GT(Fourbar(100, 40, 120, 80).At({40 / to_degrees, 0, 0}).point[link_point::B].y, 0.0);
}

TEST_F(Linkage, keeps_its_digits_where_A_is_nearly_zero)
{
    // Nearly a rhombus: link 4 stands all but parallel to the arm, and A is 1E-6 whatever the angle.
    const double L2 = 4 + std::ldexp(1.0, -20);
    for (const double degrees : {30.0, 90.0, 150.0}) {
        const Vector A = Turned(L2, degrees) - Vector{4, 0};
        const double f = std::abs(A);
        const double expected = std::arg(A) - std::acos(f / 8);
        const Train_Pose pose = Fourbar(4, L2, 4, 4).At({degrees / to_degrees, 1.0, 0.0});
        ASSERT_TRUE(pose.Connects());
        EXPECT_NEAR(pose.link[4].theta, expected, 1E-9);
        EXPECT_NEAR(pose.link[4].theta * to_degrees, degrees, 1E-4);
    }
}

TEST_F(Linkage, connects_at_a_toggle_where_both_branches_coincide)
{
    // A (2, 0), O4 (4, 0): links 3 and 4 lie on the ground line, B at (6, 0), and D is exactly zero.
    for (const int assembly : {-1, 1}) {
        const Train_Pose pose = Fourbar(4, 2, 4, 2, assembly).At({0.0, 3.0, 1.0});
        EXPECT_TRUE(pose.Connects());
        EXPECT_EQ(pose.link[3].theta, 0.0);
        EXPECT_EQ(pose.link[4].theta, 0.0);
        EXPECT_DOUBLE_EQ(pose.point[link_point::B].x, 6.0);
        EXPECT_TRUE(pose.dead_centre);
        EXPECT_EQ(pose.link[4].omega, 0.0);
    }
}

TEST_F(Linkage, counts_a_position_whose_A_is_zero_as_indeterminate)
{
    // Link 4 would stand at 180 degrees: L1 8, L2 2, L4 2, L3 8, the arm at 180 degrees.
    EXPECT_EQ(Fourbar(8, 2, 8, 2).At({PI, 1.0, 0.0}).fails_at, 1);
    EXPECT_EQ(Fourbar(8, 2, 4, 2).At({0.0, 1.0, 0.0}).fails_at, 1);
}

TEST_F(Linkage, goes_round_with_a_crank_of_Grashof)
{
    const Linkage_Train train = Fourbar(100, 40, 120, 80);  // 40 + 120 < 100 + 80
    for (int degrees = 0; degrees < 360; ++degrees)
        EXPECT_TRUE(train.At({degrees / to_degrees, 1.0, 0.0}).Connects()) << degrees;
}

TEST_F(Linkage, goes_to_its_limit_and_no_further_without_Grashof)
{
    // 100 + 60 > 70 + 80: the arm turns to where links 3 and 4 stretch, cos = (L1^2 + L2^2 - (L3 + L4)^2) / (2 L1 L2).
    const double L1 = 100;
    const double L2 = 60;
    const double L3 = 40;
    const double L4 = 70;
    const double limit = std::acos((L1 * L1 + L2 * L2 - (L3 + L4) * (L3 + L4)) / (2 * L1 * L2));
    const Linkage_Train train = Fourbar(L1, L2, L3, L4);
    EXPECT_TRUE(train.At({limit - 1E-6, 1.0, 0.0}).Connects());
    EXPECT_FALSE(train.At({limit + 1E-6, 1.0, 0.0}).Connects());
    EXPECT_TRUE(train.At({-limit + 1E-6, 1.0, 0.0}).Connects());
    EXPECT_FALSE(train.At({-limit - 1E-6, 1.0, 0.0}).Connects());
}

TEST_F(Linkage, gives_its_arm_back_when_its_last_link_drives)
{
    // Seen from O4 with the ground turned about, the rocker is the arm and the arm the rocker.
    for (const int assembly : {-1, 1})
        for (const double degrees : {25.0, 60.0, 110.0, 250.0}) {
            const double theta2 = degrees / to_degrees;
            const Train_Pose forth = Fourbar(100, 40, 120, 80, assembly).At({theta2, 1.5, 4.0});
            const Link_Motion& four = forth.link[4];
            bool found = false;
            for (const int other : {-1, 1}) {
                const Linkage_Train backwards = Fourbar(100, 80, 120, 40, other);
                const Train_Pose back = backwards.At({four.theta - pi, four.omega, four.alpha});
                ASSERT_TRUE(back.Connects());
                if (std::abs(std::remainder(back.link[4].theta + pi - theta2, 2 * pi)) > 1E-7)
                    continue;
                found = true;
                EXPECT_NEAR(back.link[4].omega, 1.5, 1E-6);
                EXPECT_NEAR(back.link[4].alpha, 4.0, 1E-5);
                EXPECT_NEAR(back.link[3].omega, forth.link[3].omega, 1E-6);
            }
            EXPECT_TRUE(found) << degrees;
        }
}

TEST_F(Linkage, takes_the_angle_of_its_arm_from_the_line_of_pivots)
{
    const double rest = Arm_Angle_at_Rest(design);
    const Cam_Group& c = design.cam;
    // The roller centre stands on the prime circle, an arm's length from the pivot.
    const Vector roller = Arm_Pivot() + Turned(c.ArmRad, rest);
    EXPECT_NEAR(std::abs(roller), c.Prime_Rad, 1E-4);
    for (const int direction : {1, -1}) {
        design.cam.ArmDirect = direction;
        const double here = Arm_Angle_at_Rest(design);
        for (const int i : {0, 60, 150}) {
            const double expected =
                direction * r().CalcData(var::S, i) + here - k().Delta2 - Direction(Arm_Pivot(), O4());
            EXPECT_NEAR(Input_at(design, here, i).theta2 * to_degrees, expected, 1E-5);
        }
    }
}

TEST_F(Linkage, stands_on_the_arm_of_an_axial_cam)
{
    design.cam.Camtype = "Barrel";
    design.cam.ArmX = 100.0;
    design.cam.ArmY = 40.0;
    design.cam.ArmRad = 80.0;
    EXPECT_NEAR(Arm_Angle_at_Rest(design), 150.0, 1E-5);  // a roller 40 above, back towards the drum
    design.cam.ArmX = -100.0;
    EXPECT_NEAR(Arm_Angle_at_Rest(design), 30.0, 1E-5);
}

// Required arithmetic.

TEST_F(Linkage, takes_one_factor_in_the_bases_of_degrees_and_of_radians)
{
    const double omega = 12.0;  // rad/s, of the shaft
    for (const int base : {2, 3}) {
        Make_Train({}, base);
        r().CalcData(var::V, 50) = 0.5;
        r().CalcData(var::A, 50) = 0.25;
        const Link_Input in = Input_at(design, 0.0, 50);
        EXPECT_NEAR(in.omega2, 0.5 * omega / to_degrees, 1E-9) << base;
        EXPECT_NEAR(in.alpha2, 0.25 * omega * omega / to_degrees, 1E-9) << base;
    }
    // Mechanics: 0.5 degrees of arm a degree of cam is half the shaft's speed; the row's acceleration has its factor.
    design.motion.Time_Base = 2;
    EXPECT_NEAR(True_Input(design, 0.0, 50).omega2, 0.5 * omega, 1E-7);
    EXPECT_NEAR(True_Input(design, 0.0, 50).alpha2, 0.25 * omega * omega, 1E-5);
}

TEST_F(Linkage, has_true_rates_that_do_not_depend_on_the_time_base)
{
    std::vector<Link_Input> inputs;
    for (const int base : {1, 2, 3}) {
        Make_Train({}, base);
        inputs.push_back(True_Input(design, 0.0, 40));
    }
    for (const Link_Input& in : inputs) {
        EXPECT_NEAR(in.omega2, inputs[0].omega2, 1E-5 * std::abs(inputs[0].omega2));
        EXPECT_NEAR(in.alpha2, inputs[0].alpha2, 1E-5 * std::abs(inputs[0].alpha2));
    }
}

TEST_F(Linkage, takes_its_rates_without_the_direction_of_the_arm)
{
    design.cam.ArmDirect = -1;
    const double rest = Arm_Angle_at_Rest(design);
    const Link_Input in = Input_at(design, rest, 40);  // in the rise
    EXPECT_LT(in.theta2, Input_at(design, rest, 0).theta2);
    EXPECT_NEAR(in.omega2, r().CalcData(var::V, 40) / to_degrees, 1E-6);
    EXPECT_GT(in.omega2, 0.0);
    EXPECT_NEAR(True_Input(design, rest, 40).omega2, -in.omega2, 1E-12);
    EXPECT_NEAR(True_Input(design, rest, 40).alpha2, -in.alpha2, 1E-12);
}

TEST_F(Linkage, has_a_linked_point_of_degrees_and_radians_and_a_true_one)
{
    design.linkage.Link_4a = 3.0;
    design.linkage.Delta4 = 30.0;
    // Link 4 along the ground: Theta4 is 0 in either unit, and the sum is 30 degrees. B stands at (6, 0).
    const Train_Pose flat = Fourbar(4, 2, 4, 2).At({0.0, 0.0, 0.0});
    EXPECT_NEAR(flat.point[link_point::D_Linked].x, 6 + 3 * std::cos(30 / to_degrees), 1E-8);
    EXPECT_NEAR(flat.point[link_point::D_Linked].y, 1.5, 1E-8);
    // On link 4 it would start at O4 (4, 0).
    EXPECT_NEAR(flat.point[link_point::D].x, 4 + 3 * std::cos(30 / to_degrees), 1E-8);
    EXPECT_NEAR(flat.point[link_point::D].y, 1.5, 1E-8);

    // Link 4 upright (a square of 4): Theta4 is 1.5708, taken as so many degrees more.
    const Train_Pose square = Fourbar(4, 4 + 1E-6, 4, 4).At({PIH, 0.0, 0.0});
    ASSERT_NEAR(square.link[4].theta, PIH, 1E-6);
    const double turned = (30 + 1.5707963) / to_degrees;
    EXPECT_NEAR(square.point[link_point::D_Linked].x, 4 + 3 * std::cos(turned), 1E-6);
    EXPECT_NEAR(square.point[link_point::D_Linked].y, 4 + 3 * std::sin(turned), 1E-6);
    EXPECT_NEAR(square.point[link_point::D].x, 4 - 1.5, 1E-6);
    EXPECT_NEAR(square.point[link_point::D].y, 3 * std::cos(30 / to_degrees), 1E-6);
}

TEST_F(Linkage, has_the_slider_of_a_crank_in_line)
{
    // Axis through the pivot: x = a cos +- sqrt(b^2 - a^2 sin^2), the minus with the sign minus.
    design.linkage.Linkage_Type = 2;
    design.linkage.Links = 4;
    design.cam.ArmX = design.cam.ArmY = 0.0;
    design.linkage.O4x = 1.0;
    design.linkage.O4y = 0.0;
    design.linkage.S3x = 10.0;
    design.linkage.S3y = 0.0;
    design.linkage.Global_Slider_angle_deg = 0.0;
    design.linkage.Link_2 = 3.0;
    design.linkage.Link_3 = 7.0;
    for (const int assembly : {-1, 1}) {
        design.linkage.Assemflag1 = assembly;
        const Linkage_Train train(design);
        for (const double theta : {0.4, 1.2, 2.5, 4.0}) {
            const double y = 3 * std::sin(theta);
            const double x = 3 * std::cos(theta);
            const double root = std::sqrt(49 - y * y);
            const Train_Pose pose = train.At({theta, 2.0, 0.0});
            EXPECT_NEAR(pose.link[4].theta, x + assembly * root, 1E-8);
            EXPECT_NEAR(pose.link[4].omega, -2 * y - assembly * 2 * y * x / root, 1E-7);
        }
    }
}

TEST_F(Linkage, has_a_coupler_along_the_axis_where_it_should_stand_square_to_it)
{
    // r = 1 exactly, an arm upright as long as the coupler: ArcSin(1) is 0.
    design.linkage.Linkage_Type = 2;
    design.linkage.Links = 4;
    design.cam.ArmX = design.cam.ArmY = 0.0;
    design.linkage.O4x = 1.0;
    design.linkage.S3x = 10.0;
    design.linkage.S3y = design.linkage.O4y = 0.0;
    design.linkage.Global_Slider_angle_deg = 0.0;
    design.linkage.Link_2 = 4.0;
    design.linkage.Link_3 = 4.0;
    const Train_Pose pose = Linkage_Train(design).At({PIH, 1.0, 0.0});
    EXPECT_TRUE(pose.Connects());
    EXPECT_TRUE(pose.dead_centre);
    EXPECT_EQ(pose.link[3].theta, 0.0);
    EXPECT_NEAR(pose.link[4].theta, -4.0, 1E-8);  // mechanics: 0
    EXPECT_EQ(pose.link[4].omega, 0.0);
}

// What does not connect.

std::string No_Connect(const std::string& subject, const std::string& angle)
{
    return subject + " cannot connect or is indeterminate at Theta2 =  " + angle +
           " Degrees\n\nChoose Abort to terminate further calculations beyond the current position\n\n"
           "Choose Retry to continue calculating the linkage motion and flag new problem positions with this "
           "message\n\n"
           "Choose Ignore to continue calculating, skipping over new problem positions and suppressing further "
           "messages";
}

/// A fourbar that connects for the first 10 of 20 degrees of the arm's swing.
void Make_Short_Coupler(const Kind_of_Train& kind = {})
{
    Make_Train(kind);
    const double rest = Arm_Angle_at_Rest(design);
    double limit = 0.0;  // angle of the arm in the train, at half its swing
    for (int i = 0; i <= Points(); ++i)
        if (r().CalcData(var::S, i) >= 10.0) {
            limit = Input_at(design, rest, i).theta2;
            break;
        }
    Set_Ground(design);
    // The largest distance from A to O4 that links 3 and 4 span.
    const double L1 = k().Link_1;
    const double L2 = k().Link_2;
    const double span = std::sqrt(L1 * L1 + L2 * L2 - 2 * L1 * L2 * std::cos(limit));
    design.linkage.Link_3 = span - k().Link_4;
}

std::string Theta2_at_First_Gap()
{
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    for (int i = 0; i <= Points(); ++i)
        if (const Link_Input in = Input_at(design, rest, i); !train.At(in).Connects())
            return Shown(design, Single(FNRound(in.theta2 * to_degrees, 2)));
    return {};
}

TEST_F(Linkage, asks_once_and_then_ignores_what_does_not_connect)
{
    Make_Short_Coupler();
    script_.Expect({No_Connect("Linkage", Theta2_at_First_Gap()), Buttons::Abort_Retry_Ignore, Symbol::exclamation,
                    Answer::Ignore});
    Integer answer;
    EXPECT_TRUE(Calc_Linkage_All(design, answer));
    EXPECT_EQ(answer, 5);
    EXPECT_TRUE(design.flags.Linkage_Calc);
    int broken = 0;
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    for (int i = 1; i <= Points(); ++i) {
        if (train.At(Input_at(design, rest, i)).Connects())
            continue;
        ++broken;
        EXPECT_EQ(r().Link_Theta(4, i), r().Link_Theta(4, i - 1)) << "it keeps its last pose";
        EXPECT_EQ(r().Link_X(link_point::B, i), r().Link_X(link_point::B, i - 1));
        EXPECT_EQ(r().Link_Omega(4, i), 0.0F);
        EXPECT_EQ(r().Link_Alpha(4, i), 0.0F);
    }
    EXPECT_GT(broken, 50);
    EXPECT_EQ(k().Link_Broken, broken);
}

TEST_F(Linkage, asks_at_every_gap_after_Retry_and_stops_at_Abort)
{
    Make_Short_Coupler();
    const auto box = [](const std::string& angle, Answer answer) {
        return Expected_Box{No_Connect("Linkage", angle), Buttons::Abort_Retry_Ignore, Symbol::exclamation, answer};
    };
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    int first = 0;
    while (train.At(Input_at(design, rest, first)).Connects())
        ++first;
    const auto angle = [&](int i) {
        return Shown(design, Single(FNRound(Input_at(design, rest, i).theta2 * to_degrees, 2)));
    };
    script_.Expect(box(angle(first), Answer::Retry));
    script_.Expect(box(angle(first + 1), Answer::Retry));
    script_.Expect(box(angle(first + 2), Answer::Abort));
    Integer answer;
    EXPECT_FALSE(Calc_Linkage_All(design, answer));
    EXPECT_EQ(answer, 3);
    EXPECT_FALSE(design.flags.Linkage_Calc);
}

TEST_F(Linkage, begins_a_train_that_connects_late_in_its_first_pose)
{
    Make_Short_Coupler();
    // The motion runs from its largest swing on: the first points do not connect.
    Table<Single>& data = r().CalcData;
    for (int i = 0; i <= Points(); ++i)
        data(var::S, i) = 20.0 - data(var::S, i);
    script_.Expect({No_Connect("Linkage", Theta2_at_First_Gap()), Buttons::Abort_Retry_Ignore, Symbol::exclamation,
                    Answer::Ignore});
    ASSERT_TRUE(Calculate());
    int first_good = 0;
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    while (!train.At(Input_at(design, rest, first_good)).Connects())
        ++first_good;
    ASSERT_GT(first_good, 0);
    EXPECT_EQ(r().Link_Theta(4, 0), r().Link_Theta(4, first_good));
    EXPECT_EQ(r().Link_Omega(4, 0), 0.0F);
}

TEST_F(Linkage, names_the_stage_of_a_sixbar_that_does_not_connect)
{
    Make_Train({1, "W"});
    ASSERT_TRUE(Put(design, "Link 5", 20.0));
    const auto box = [](const char* stage) {
        return Expected_Box{No_Connect(std::string("Stage ") + stage + " of linkage", Theta2_at_First_Gap()),
                            Buttons::Abort_Retry_Ignore, Symbol::exclamation, Answer::Abort};
    };
    script_.Expect(box("2"));
    EXPECT_FALSE(Calculate());
    Make_Short_Coupler({1, "W"});
    script_.Expect(box("1"));
    EXPECT_FALSE(Calculate());
}

TEST_F(Linkage, says_when_it_connects_nowhere)
{
    ASSERT_TRUE(Put(design, "Link 3", 1.0));
    ASSERT_TRUE(Put(design, "Link 4", 1.0));
    script_.Expect({No_Connect("Linkage", Theta2_at_First_Gap()), Buttons::Abort_Retry_Ignore, Symbol::exclamation,
                    Answer::Ignore});
    script_.Expect({"The links connect at no point of the cycle.\nCheck their lengths, the pivots and the assembly.",
                    Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Calculate());
    EXPECT_FALSE(design.flags.Linkage_Calc);
}

TEST_F(Linkage, stops_at_a_slider_without_a_place)
{
    for (const int type : {2, 3}) {
        Make_Train({type});
        ASSERT_TRUE(Put(design, type == 2 ? "Link 3" : "Link 5", 2.0));
        script_.Expect({"There is a problem with your data.  Cannot calculate linkage.", Buttons::OK, Symbol::stop});
        EXPECT_FALSE(Calculate());
        EXPECT_FALSE(design.flags.Linkage_Calc);
        EXPECT_TRUE(design.flags.Calc_Abort);
        design.flags.Calc_Abort = false;
    }
}

TEST_F(Linkage, names_the_length_that_is_missing)
{
    const auto missing = [](const Kind_of_Train& kind, Single Linkage_Group::*length, const char* name) {
        Make_Train(kind);
        design.linkage.*length = 0.0;
        Script script(
            {{std::string(name) + " has no length above zero.  Please redo.", Buttons::OK, Symbol::exclamation}});
        EXPECT_FALSE(Calculate()) << name;
    };
    missing({0}, &Linkage_Group::Link_2, "Link 2");
    missing({0}, &Linkage_Group::Link_3, "Link 3");
    missing({0}, &Linkage_Group::Link_4, "Link 4");
    missing({1, "W"}, &Linkage_Group::Link_4a, "O4D");
    missing({1, "S"}, &Linkage_Group::Link_4a, "cp3 dist");
    missing({1, "W"}, &Linkage_Group::Link_5, "Link 5");
    missing({1, "W"}, &Linkage_Group::Link_6, "Link 6");
    missing({3}, &Linkage_Group::Link_5, "Link 5");
    Make_Train({2});
    design.linkage.Link_4 = 0.0;  // the slider
    EXPECT_EQ(Missing_Length(design), "");
    Make_Train({3});
    design.linkage.Link_6 = 0.0;
    EXPECT_EQ(Missing_Length(design), "");
}

TEST_F(Linkage, keeps_the_pose_before_while_it_is_moved_by_hand)
{
    Make_Short_Coupler();
    int gap = 0;
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    while (train.At(Input_at(design, rest, gap)).Connects())
        ++gap;
    Integer answer = 5;
    ASSERT_TRUE(Calc_Linkage_At(design, gap - 1, answer));
    ASSERT_TRUE(Calc_Linkage_At(design, gap, answer));
    EXPECT_EQ(r().Link_Theta(4, gap), r().Link_Theta(4, gap - 1));
    EXPECT_EQ(r().Link_Omega(4, gap), 0.0F);
    answer = 4;
    script_.Expect({No_Connect("Linkage", Theta2_at_First_Gap()), Buttons::Abort_Retry_Ignore, Symbol::exclamation,
                    Answer::Abort});
    EXPECT_FALSE(Calc_Linkage_At(design, gap, answer));
    EXPECT_EQ(answer, 3);
}

TEST_F(Linkage, reports_an_arm_that_does_not_reach_the_cam)
{
    design.cam.ArmRad = 500.0;
    script_.Expect(testing::Error_Box(5, "Invalid argument", "Calc_Linkage_All"));
    EXPECT_FALSE(Calculate());
}

// Ratios.

TEST_F(Linkage, has_ratios_of_one_in_a_parallelogram_and_zero_at_rest)
{
    // Link 4 parallel to the arm.
    ASSERT_TRUE(Put(design, "Link 2", 80.0));
    ASSERT_TRUE(Put(design, "Link 4", 80.0));
    Set_Ground(design);
    ASSERT_TRUE(Put(design, "Link 3", double{k().Link_1}));
    for (const int direction : {1, -1}) {
        design.cam.ArmDirect = direction;
        design.linkage.Assemflag1 = Input_at(design, Arm_Angle_at_Rest(design), 0).theta2 > 0 ? -1 : 1;
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= Points(); ++i) {
            const bool rests = r().CalcData(var::S, i) < 0.5;
            if (!rests) {
                EXPECT_NEAR(r().Link_Ratio_S(i), 1.0, 2E-3) << i;
            }
            if (r().CalcData(var::V, i) == 0.0) {
                EXPECT_EQ(r().Link_Ratio_V(i), 0.0F) << i;
            } else {
                EXPECT_NEAR(r().Link_Ratio_V(i), 1.0, 1E-3) << i;
            }
        }
        EXPECT_EQ(r().Link_Ratio_S(0), 0.0F);
    }
}

TEST_F(Linkage, starts_the_ratio_of_a_sixth_link_where_the_arm_rests_whatever_its_sense)
{
    bool rises = false;
    bool falls = false;
    for (const char* const stage : {"W", "S"})
        for (const int direction : {1, -1}) {
            Make_Train({1, stage}, 1, direction);
            ASSERT_TRUE(Calculate());
            // Both ends are those of the arm: at rest both are 0, at the full swing both are 1.
            EXPECT_NEAR(r().Link_Ratio_S(110), 1.0, 1E-4) << stage << direction;
            EXPECT_EQ(r().Link_Ratio_S(0), 0.0F);
            (Unwrapped(r().Link_Theta.Points(6))[110] > r().Link_Theta(6, 0) ? rises : falls) = true;
        }
    EXPECT_TRUE(rises && falls) << "both senses are among them";
}

TEST_F(Linkage, has_no_ratio_of_a_link_that_stands)
{
    for (Single& s : r().CalcData.Points(var::S))
        s = 3.0;
    for (Single& v : r().CalcData.Points(var::V))
        v = 0.0;
    for (Single& a : r().CalcData.Points(var::A))
        a = 0.0;
    ASSERT_TRUE(Calculate());
    for (int i = 0; i <= Points(); ++i) {
        EXPECT_EQ(r().Link_Ratio_S(i), 0.0F);
        EXPECT_EQ(r().Link_Ratio_V(i), 0.0F);
        EXPECT_EQ(r().Link_Ratio_A(i), 0.0F);
    }
}

TEST_F(Linkage, takes_angles_without_their_jumps)
{
    const std::vector<Single> wrapped{350.0, 358.0, 4.0, 20.0, 2.0, 355.0, 340.0};
    const std::vector<double> smooth = Unwrapped(wrapped);
    const std::vector<double> expected{350.0, 358.0, 364.0, 380.0, 362.0, 355.0, 340.0};
    ASSERT_EQ(smooth.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(smooth[i], expected[i], 1E-4);
}

TEST_F(Linkage, sums_up_its_end_effector)
{
    ASSERT_TRUE(Calculate());
    const Effector_Summary summary = Summary_of_Effector(design);
    double least = 1E9;
    double at = 0.0;
    for (int i = 0; i <= Points(); ++i)
        if (r().Link_Omega(4, i) < least) {
            least = r().Link_Omega(4, i);
            at = r().CalcData(var::Angle, i);
        }
    EXPECT_EQ(summary.least[1].value, least);
    EXPECT_EQ(summary.least[1].angle, at);
    EXPECT_GT(summary.largest[0].value, summary.least[0].value);
    EXPECT_GT(summary.largest[2].value, 0.0);
}

TEST_F(Linkage, tells_its_true_rates_beside_the_stored_ones)
{
    ASSERT_TRUE(Calculate());
    EXPECT_FALSE(Truth_of_Effector(design)) << "per second, counterclockwise: both agree";
    Make_Train({}, 2);
    const auto truth = Truth_of_Effector(design);
    ASSERT_TRUE(truth);
    EXPECT_NEAR(truth->velocity / truth->stored_velocity, to_degrees, 1E-3);
    // With it the share that goes with the square of the speed grows by 57.3 more.
    EXPECT_GT(truth->acceleration / truth->stored_acceleration, 50.0);
    Make_Train({}, 1, -1);
    const auto clockwise = Truth_of_Effector(design);
    ASSERT_TRUE(clockwise);
    EXPECT_NEAR(clockwise->velocity, clockwise->stored_velocity, 1E-9);
    EXPECT_GT(std::abs(clockwise->acceleration / clockwise->stored_acceleration - 1.0), 0.003);
}

TEST_F(Linkage, tells_how_far_the_ratios_miss_the_wanted_motion)
{
    ASSERT_TRUE(Calculate());
    // The arm takes S over the ratio, one step towards the inverse of the train: some hundredths of the stroke.
    const double error = Error_of_Driving(design);
    EXPECT_GT(error, 1E-5);
    EXPECT_LT(error, 0.05);
    // Without a correction the whole curve of the train is in it.
    double uncorrected = 0.0;
    const auto theta = Unwrapped(r().Link_Theta.Points(4));
    const auto [least, largest] = std::ranges::minmax(theta);
    for (int i = 0; i <= Points(); ++i) {
        const double n = (theta[static_cast<std::size_t>(i)] - least) / (largest - least);
        const double rising = theta[110] > theta[0] ? n : 1 - n;
        uncorrected = std::max(uncorrected, std::abs(rising - r().CalcData(var::S, i) / 20.0));
    }
    EXPECT_LT(error, uncorrected);
}

TEST_F(Linkage, lays_its_ground_from_the_arms_pivot_to_O4)
{
    ASSERT_TRUE(Put(design, "O4x", design.cam.ArmX + 30.0));
    ASSERT_TRUE(Put(design, "O4y", design.cam.ArmY + 40.0));
    EXPECT_NEAR(k().Link_1, 50.0, 1E-5);
    EXPECT_NEAR(k().Theta1, 53.13010, 1E-4);
    ASSERT_TRUE(Put(design, "Link 1", 100.0));
    EXPECT_NEAR(k().O4x, design.cam.ArmX + 60.0, 1E-4);
    EXPECT_NEAR(k().O4y, design.cam.ArmY + 80.0, 1E-4);
    ASSERT_TRUE(Put(design, "Theta1", 90.0));
    EXPECT_NEAR(k().O4x, design.cam.ArmX, 1E-4);
    EXPECT_NEAR(k().O4y, design.cam.ArmY + 100.0, 1E-4);
    EXPECT_NEAR(k().Link_1, 100.0, 1E-4);
}

class Linkage_Example : public ::testing::TestWithParam<std::tuple<const char*, int>> {};

TEST_P(Linkage_Example, connects_at_every_point_in_every_unit_system)
{
    Script script;
    ASSERT_TRUE(Sub_Main(design, "", {}));
    ASSERT_TRUE(Put(design, "WhichUnit", std::get<1>(GetParam())));
    ASSERT_TRUE(Build_Example(design, std::get<0>(GetParam())));
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(k().Link_Broken, 0);
    EXPECT_EQ(k().Link_Indeterminate, 0);
    // The same machine: what a pose is in inches it is in every unit.
    const double scale = design.cam.ArmRad / 4.0;
    EXPECT_NEAR(k().Link_1 / scale, 7.0, 0.02);
    const Effector_Summary summary = Summary_of_Effector(design);
    EXPECT_GT(summary.largest[0].value - summary.least[0].value, 0.1 * (Ends_in_Slider(design) ? scale : 1.0));
}

TEST(Linkage_Examples, stand_in_inches_as_their_triangles_have_them)
{
    // Pins of the law of cosines: A over Q at (4, 6.5), O4 at (11, 2.5), and so on to O6.
    Script script;
    const auto build = [](const char* name) {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Put(design, "WhichUnit", 1));
        ASSERT_TRUE(Build_Example(design, name));
        ASSERT_TRUE(Calculate());
    };
    build("6-bar Linkage");
    const int full_swing = 135;
    EXPECT_NEAR(r().Link_Theta(2, 0), 90.0, 1E-4);
    EXPECT_NEAR(r().Link_Theta(2, full_swing), 85.0, 1E-4);
    EXPECT_NEAR(r().Link_Theta(4, 0), 85.002437, 1E-4);
    EXPECT_NEAR(r().Link_Theta(4, full_swing), 80.934003, 1E-4);
    EXPECT_NEAR(r().Link_Theta(3, 0), 7.515762, 1E-4);
    EXPECT_NEAR(r().Link_Theta(6, 0), 77.610163, 1E-4);
    EXPECT_NEAR(r().Link_Theta(6, full_swing), 72.492328, 1E-4);
    build("4-bar Slider");
    // The coupler lies on the axis, which runs to the left: the slider stands a coupler's length to the right.
    EXPECT_NEAR(r().Link_Theta(4, 0), -8.0, 1E-4);
    EXPECT_NEAR(r().Link_X(link_point::B, 0), 12.0, 1E-4);
    EXPECT_NEAR(r().Link_Y(link_point::B, 0), 6.5, 1E-4);
}

INSTANTIATE_TEST_SUITE_P(All, Linkage_Example,
                         ::testing::Combine(::testing::Values("4-bar Linkage", "6-bar Linkage", "4-bar Slider",
                                                              "6-bar Slider"),
                                            ::testing::Values(1, 2, 3, 4, 5)));

}  // namespace
}  // namespace lobemax
