// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/sizing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "core/text.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Error_Box;
using testing::Script;
using Point = std::complex<double>;

constexpr double pi = 3.14159265358979323846;

Cam_Group& c()
{
    return design.cam;
}

Flags_Group& f()
{
    return design.flags;
}

/// Radius of curvature of the closed curve of rows 9 and 10 at point i, by differences over five points each way.
double Numeric_Rho(int i)
{
    const int n = design.motion.Max_Data_Points_used;
    const auto at = [&](int k) {
        const int p = ((i + k) % n + n) % n;
        return Point(Data(9, p), Data(10, p));
    };
    constexpr int reach = 6;  // wide enough that the 32-bit rounding of the points does not show
    const Point d1 = (at(reach) - at(-reach)) / (2.0 * reach);
    const Point d2 = (at(reach) - 2.0 * at(0) + at(-reach)) / double(reach * reach);
    const double cross = (std::conj(d1) * d2).imag();
    return std::pow(std::abs(d1), 3) / cross;
}

class Sizing : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    static void Size(int type = 1)
    {
        ASSERT_TRUE(Calc_Phi(type));
        ASSERT_TRUE(Calc_Rho(type));
        ASSERT_FALSE(f().Calc_Error);
    }
    Script script_;
};

TEST_F(Sizing, a_translating_roller_has_the_pressure_angle_of_its_closed_form_in_all_time_bases)
{
    for (const int base : {1, 2, 3}) {
        Cam_Maker maker;
        maker.time_base = base;
        maker.Make();
        c().Offset = 12.0;
        Size();
        // 4-5-6-7 rise of 20 over 110 degrees, at its middle: s = 10, ds/dx = 35 / 16 lift.
        const double v = 35.0 / 16 * 20.0 / (110 * pi / 180);
        EXPECT_NEAR(Data(var::Phi, 55), std::atan((v - 12.0) / (10.0 + std::sqrt(60.0 * 60 - 144))) * 180 / pi, 1e-4);
        EXPECT_NEAR(Data(var::Phi, 320), std::atan(-12.0 / std::sqrt(60.0 * 60 - 144)) * 180 / pi, 1e-5);
    }
}

TEST_F(Sizing, without_offset_a_dwell_has_no_pressure_angle_and_a_fall_a_negative_one)
{
    Cam_Maker().Make();
    Size();
    EXPECT_EQ(Data(var::Phi, 320), 0.0);
    EXPECT_GT(c().Phi_Max, 0.0);
    EXPECT_LT(c().Phi_Min, 0.0);
    EXPECT_NEAR(c().Phi_Max_Angle, 51, 6);
    EXPECT_NEAR(c().Phi_Min_Angle, 233, 6);
}

TEST_F(Sizing, the_curvature_is_that_of_the_pitch_curve)
{
    struct Configuration {
        bool translating;
        int Rotflag;
        int ArmDirect;
        int base;
    };
    for (const auto& p : {Configuration{true, 1, 1, 1}, Configuration{true, -1, 1, 2}, Configuration{false, 1, 1, 1},
                          Configuration{false, -1, -1, 2}, Configuration{false, 1, 1, 3}}) {
        Cam_Maker maker;
        maker.translating = p.translating;
        maker.time_base = p.base;
        maker.step = 0.25;
        maker.Make();
        c().Rotflag = p.Rotflag;
        c().ArmDirect = p.ArmDirect;
        Size();
        // In the degrees base a translating follower's acceleration carries its factor once, so its curvature there
        // is not the curve's; in the arm's it happens to be whole.
        const bool whole = !(p.translating && p.base == 2);
        for (int i = 30; i < 1440 && whole; i += 37) {
            if (std::abs(Data(var::Rho, i)) > 400)
                continue;  // nearly straight
            EXPECT_NEAR(Numeric_Rho(i) * -p.Rotflag, Data(var::Rho, i), std::abs(Data(var::Rho, i)) * 0.02)
                << i << " " << p.translating << p.Rotflag << p.ArmDirect;
        }
    }
}

TEST_F(Sizing, the_degrees_base_scales_acceleration_once_and_is_therefore_off)
{
    Cam_Maker maker;
    maker.time_base = 2;
    maker.Make();
    c().Followtype = 2;
    Size(2);
    // Row 3 holds a per radian squared times pi / 180 once; the formula takes the factor off once.
    const double a = Data(var::A, 30) * 180 / pi;
    EXPECT_NEAR(Data(var::Rho, 30), 60.0 + Data(var::S, 30) + a, 1e-3);
}

TEST_F(Sizing, a_flat_face_has_base_radius_plus_displacement_plus_acceleration)
{
    Cam_Maker().Make();
    c().Followtype = 2;
    Size(2);
    for (int i = 0; i <= 360; i += 15)
        EXPECT_NEAR(Data(var::Rho, i), 60.0 + Data(var::S, i) + Data(var::A, i) / 144.0, 1e-3) << i;
    EXPECT_EQ(c().Phi_Max, 0.0);
    EXPECT_EQ(c().Phi_Min, 0.0);
    c().Conjugate = true;
    c().Side_Sign = -1;
    Size(2);
    EXPECT_NEAR(Data(var::Rho, 30), 20.0 - Data(var::S, 30) + 60.0 - Data(var::A, 30) / 144.0, 1e-3);
}

TEST_F(Sizing, the_offset_enters_the_curvature_by_the_radius_alone)
{
    Cam_Maker().Make();
    c().Offset = 20.0;
    Size();
    // In a dwell: the circle through the roller centre as prime radius and offset would have it; meant so.
    EXPECT_NEAR(Data(var::Rho, 320), std::hypot(60.0, 20.0), 1e-4);
}

TEST_F(Sizing, a_standing_arm_has_the_triangles_angle_and_the_roller_centres_distance)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    Size();
    const double D = std::hypot(90.0, 30.0);
    // In the low dwell the triangle has the sides D, arm 80 and prime radius 60.
    const double at_roller = std::acos((80.0 * 80 + 60.0 * 60 - D * D) / (2 * 80 * 60));
    EXPECT_NEAR(std::abs(Data(var::Phi, 320)), std::abs(90 - at_roller * 180 / pi), 1e-3);
    EXPECT_NEAR(Data(var::Rho, 320), 60.0, 1e-3);
    EXPECT_NEAR(c().Arm_Start_Angle, std::acos((80.0 * 80 + D * D - 3600) / (2 * 80 * D)) * 180 / pi, 1e-4);
    EXPECT_NEAR(c().Arm_Start_Radius, 60.0, 1e-4);
    EXPECT_NEAR(c().Arm_Pivot_Angle, std::atan2(30, 90) * 180 / pi, 1e-4);
}

TEST_F(Sizing, an_arm_of_no_length_or_a_pivot_on_the_centre_is_an_error)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().ArmRad = 0.0;
    Calc_Phi(1);
    EXPECT_TRUE(f().Calc_Error);
    f().Calc_Error = false;
    c().ArmRad = 80.0;
    c().ArmX = c().ArmY = 0.0;
    Calc_Phi(1);
    EXPECT_TRUE(f().Calc_Error);
}

TEST_F(Sizing, sides_that_close_no_triangle_set_math_error)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().ArmRad = 10.0;
    Calc_Phi(1);
    EXPECT_TRUE(f().Math_Error);
}

TEST_F(Sizing, an_axial_cam_has_the_slope_of_its_unwrapped_drum)
{
    Cam_Maker().Make();
    c().Camtype = "Barrel";
    Size();
    const double v = 35.0 / 16 * 20.0 / (110 * pi / 180);
    EXPECT_NEAR(Data(var::Phi, 55), std::atan(v / 60.0) * 180 / pi, 1e-4);
    const double vn = Data(var::V, 30) / 12.0 / 60.0;
    const double an = Data(var::A, 30) / 144.0 / 3600.0;
    EXPECT_NEAR(Data(var::Rho, 30), -std::pow(1 + vn * vn, 1.5) / an, std::abs(Data(var::Rho, 30)) * 1e-5);
    EXPECT_EQ(c().Rho_Max_Pos_Text, "+ Infinity");
    EXPECT_EQ(c().Rho_Max_Pos, 100000.0);
    EXPECT_EQ(Data(var::Rho, 320), 600.0);  // clipped at ten prime radii, the extreme not
}

TEST_F(Sizing, the_axial_curvature_of_the_degrees_base_has_its_factor_the_other_way_round)
{
    Cam_Maker maker;
    maker.time_base = 2;
    maker.Make();
    c().Camtype = "Barrel";
    Size();
    EXPECT_NEAR(Data(var::Phi, 55), std::atan(35.0 / 16 * 20.0 / (110 * pi / 180) / 60.0) * 180 / pi, 1e-4);
    const double vn = Data(var::V, 30) * pi / 180 / 60.0;  // meant
    const double an = Data(var::A, 30) * pi / 180 / 3600.0;
    EXPECT_GT(std::abs(std::pow(1 + vn * vn, 1.5) / an), 600.0);
    EXPECT_EQ(std::abs(Data(var::Rho, 30)), 600.0);
    EXPECT_GT(std::abs(c().Rho_Max_Neg), 600.0);
}

TEST_F(Sizing, a_barely_curved_axial_cam_is_clipped_and_keeps_its_extreme)
{
    Cam_Maker().Make();
    c().Camtype = "Linear";
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(var::V, i) = 0.0;
        design.results.CalcData(var::A, i) = 0.0;
    }
    design.results.CalcData(var::A, 7) = 1.5E-7 * 144.0 * 3600.0;
    Size();
    EXPECT_EQ(Data(var::Rho, 7), -600.0);
    EXPECT_NEAR(c().Rho_Max_Neg, -1 / 1.5E-7, 10.0);
    EXPECT_EQ(c().Rho_Max_Neg_Angle, 7.0);
    EXPECT_EQ(c().Rho_Max_Neg_Text, "- Infinity");
    EXPECT_EQ(Data(var::Rho, 8), 600.0);
}

TEST_F(Sizing, an_axial_arm_without_curvature_or_slope_has_the_stand_in_values)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    c().ArmX = -80.0;
    c().ArmY = 0.0;
    Size();
    // Arm level and still: the roller runs on a plain circle around the drum.
    double Rho = 0.0;
    ASSERT_TRUE(Axial_Osc_Rho(320, -80.0, 0.0, 80.0, Rho));
    EXPECT_EQ(Rho, 1000000.0);
    Axial_Phi point;
    ASSERT_TRUE(Axial_Osc_Phi(320, -80.0, 0.0, 80.0, point));
    EXPECT_NEAR(point.Phi, 0.0, 1e-6);
    EXPECT_EQ(point.g0, 0.0);
    // The slope of the roller's path against the drum, at mid-rise, where the arm is off level by its angle.
    ASSERT_TRUE(Axial_Osc_Phi(55, -80.0, 0.0, 80.0, point));
    const double ar = Data(var::S, 55) * pi / 180;
    const double Ra = std::hypot(80 * std::cos(ar) - 80, 60.0);
    const double w = Data(var::V, 55) * pi / 180 / 12.0;
    const double tangent = (-c().Rotflag * 80.0 * w - Ra * std::sin(ar)) / (Ra * std::cos(ar));
    EXPECT_NEAR(point.Phi, -c().Rotflag * std::atan(tangent) * 180 / pi, 1e-3);
}

TEST_F(Sizing, an_axial_arm_of_no_length_asks_at_each_point_until_the_user_cancels)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    c().ArmRad = 0.0;
    const testing::Expected_Box retry{"Hit Retry to continue or Cancel to Abort the calculation", Buttons::Retry_Cancel,
                                      Symbol::information, Answer::Retry};
    script_.Expect(retry);
    script_.Expect(retry);
    auto cancel = retry;
    cancel.answer = Answer::Cancel;
    script_.Expect(cancel);
    c().Rho_Max_Pos_Text = "untouched";
    EXPECT_FALSE(Calc_Rho(1));
    EXPECT_TRUE(f().Calc_Error);
    EXPECT_EQ(c().Rho_Max_Pos_Text, "untouched");
}

TEST_F(Sizing, the_conjugate_adds_its_lift_in_the_arms_pressure_angle)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    f().Skip_Profile = true;
    c().Conjugate = true;
    Size();
    // Liftmax + S, a plus that is meant: in the low dwell the arm stands a lift above its start.
    const double D = std::hypot(90.0, 30.0);
    const double gamma = c().Arm_Start_Angle * pi / 180 + 20 * pi / 180;
    const double R = std::sqrt(D * D + 6400 - 2 * D * 80 * std::cos(gamma));
    const double tau = std::acos((R * R + D * D - 6400) / (2 * D * R));
    const double al = pi - gamma - tau;
    EXPECT_NEAR(Data(var::Phi, 320), c().Rotflag * c().ArmDirect * (al - pi / 2) * 180 / pi, 1e-3);
}

TEST_F(Sizing, a_zero_divisor_keeps_the_point_and_is_told_of)
{
    script_.Expect(
        {"An attempt to divide by zero was detected in Autopress when calculating\n"
         "the pressure angle at theta = 12.5\n"
         "Will continue to attempt calculation at other pointsDenom2",
         Buttons::OK, Symbol::exclamation});
    Autopress_Message("Denom2", 12.5);
}

TEST_F(Sizing, extremes_take_the_first_of_equals_and_a_floor_of_zero)
{
    Cam_Maker().Make();
    const auto set = [](int variable, const std::vector<double>& values) {
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(variable, i) =
                values[std::min<std::size_t>(static_cast<std::size_t>(i), values.size() - 1)];
    };
    set(var::Phi, {-3, -5, -5, -4});
    Phi_Extremes();
    EXPECT_EQ(c().Phi_Max, 0.0);
    EXPECT_EQ(c().Phi_Max_Angle, 0.0);
    EXPECT_EQ(c().Phi_Min, -5.0);
    EXPECT_EQ(c().Phi_Min_Angle, 1.0);
    set(var::Rho, {50, 40.128, 40.128, 70.04});
    Rho_Extremes();
    EXPECT_EQ(c().Rho_Min_Pos_Angle, 1.0);
    EXPECT_EQ(Trim(c().Rho_Min_Pos_Text), "40.13");
    EXPECT_EQ(Trim(c().Rho_Max_Pos_Text), "70.0");
    EXPECT_EQ(c().Rho_Max_Neg_Text, "None");
    EXPECT_EQ(c().Rho_Min_Neg_Text, "None");
    EXPECT_EQ(c().Rho_Smallest, c().Rho_Min_Pos);
    set(var::Rho, {50, -8.5, 0.0, -90});
    Rho_Extremes();
    EXPECT_EQ(c().Rho_Min_Neg, 0.0);  // zero counts as negative
    EXPECT_EQ(c().Rho_Max_Neg, -90.0);
    EXPECT_EQ(c().Rho_Smallest, 0.0);
    set(var::Rho, {50, -8.5, -90});
    Rho_Extremes();
    EXPECT_EQ(c().Rho_Smallest, -8.5);
    EXPECT_EQ(Trim(c().Rho_Min_Neg_Text), "-8.50");
}

TEST_F(Sizing, an_all_rise_curve_has_its_smallest_pressure_angle_at_zero)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Phi, i) = i == 0 ? 0.0 : 5.0;
    Phi_Extremes();
    EXPECT_EQ(c().Phi_Min, 0.0);
}

TEST_F(Sizing, a_flat_follower_is_told_its_smallest_base_radius)
{
    Cam_Maker().Make();
    double least = 0.0;
    int where = 0;
    for (int i = 0; i <= 360; ++i)
        if (Data(var::A, i) < least) {
            least = Data(var::A, i);
            where = i;
        }
    const double Rb = -least / 144.0 - Data(var::S, where);
    script_.Expect(
        {"The minimum base circle radius for no negative Radius of Curvature is " + FNRoundStr(Rb, 2) + "  mm"});
    Flat_Min_Base_Radius();
    f().Skip_Profile = true;
    Flat_Min_Base_Radius();  // silent
    f().Skip_Profile = false;
    design.run.Reading_File = true;
    Flat_Min_Base_Radius();
}

TEST_F(Sizing, an_offset_beyond_the_prime_radius_is_reported)
{
    Cam_Maker().Make();
    c().Offset = 70.0;
    script_.Expect(Error_Box(5, "Invalid argument", "Calc_Phi"));
    EXPECT_FALSE(Calc_Phi(1));
    EXPECT_TRUE(f().Calc_Error);
}

TEST_F(Sizing, a_polydyne_cam_is_sized_from_its_own_rows)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(22, i) = 5.0;
        design.results.CalcData(23, i) = 24.0;  // 2 per radian at 12 rad/s
        design.results.CalcData(24, i) = 0.0;
    }
    f().Polydyne_Calc = true;
    Size();
    EXPECT_NEAR(Data(var::Phi, 100), std::atan(2.0 / 65.0) * 180 / pi, 1e-5);
}

TEST_F(Sizing, ratios_of_a_driven_end_effector_divide_and_zero_counts_as_one)
{
    Cam_Maker().Make();
    EXPECT_EQ(Link_Ratios(3).S, 1.0);
    design.linkage.Drive_End_Effector = true;
    design.results.Link_Ratio_S(3) = 2.5;
    design.results.Link_Ratio_V(3) = -1.5;
    const Ratios r = Link_Ratios(3);
    EXPECT_EQ(r.S, 2.5);
    EXPECT_EQ(r.V, -1.5);
    EXPECT_EQ(r.A, 1.0);
}

}  // namespace
}  // namespace lobemax
