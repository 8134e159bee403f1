// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/sizing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <utility>
#include <vector>

#include "camgeom/arm.h"
#include "core/text.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

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
        ASSERT_TRUE(Calc_Phi(design, type));
        ASSERT_TRUE(Calc_Rho(design, type));
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

TEST_F(Sizing, the_sign_of_zero_is_zero)
{
    EXPECT_EQ(Sgn(0.0), 0.0);
    EXPECT_EQ(Sgn(-2.5), -1.0);
    EXPECT_EQ(Sgn(2.5), 1.0);
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
        for (int i = 30; i < 1440; i += 37) {
            if (std::abs(Data(var::Rho, i)) > 400)
                continue;  // nearly straight
            EXPECT_NEAR(Numeric_Rho(i) * -p.Rotflag, Data(var::Rho, i), std::abs(Data(var::Rho, i)) * 0.02)
                << i << " " << p.translating << p.Rotflag << p.ArmDirect;
        }
    }
}

TEST_F(Sizing, a_translating_follower_has_the_same_curvature_in_all_time_bases)
{
    // In the degrees base row 3 holds the acceleration with the factor of one degree only, not of its square, and the
    // formula takes that factor off once. The two belong together, so nothing is lost.
    for (const int type : {1, 2}) {
        std::vector<double> Rho;
        for (const int base : {1, 2, 3}) {
            Cam_Maker maker;
            maker.time_base = base;
            maker.Make();
            c().Followtype = type;
            Size(type);
            for (int i = 0; i <= 360; i += 6) {
                const auto k = static_cast<std::size_t>(i / 6);
                if (base == 1)
                    Rho.push_back(Data(var::Rho, i));
                else
                    EXPECT_NEAR(1 / Data(var::Rho, i), 1 / Rho[k], 1e-6) << type << base << " " << i;
            }
        }
    }
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

TEST_F(Sizing, a_roller_arm_at_an_instant_of_rest_has_its_distance_whatever_its_acceleration)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    // Mechanics has 1 / rho = c (1 - c 80 w' cos(phi)), c = cos(phi) / (D sin(gamma)); the distance is right in a dwell
    // alone. docs/theory.md, (82). Meant.
    design.results.CalcData(var::A, 320) = 900.0;
    Size();
    const double ph = Data(var::Phi, 320) * pi / 180;
    const double k = std::cos(ph) / (std::hypot(90.0, 30.0) * std::sin(c().Arm_Start_Angle * pi / 180));
    const double mechanics = 1 / (k * (1 - k * 80.0 * 900.0 * pi / 180 / 144.0 * std::cos(ph)));
    EXPECT_GT(std::abs(mechanics - 60.0), 3.0);
    EXPECT_NEAR(Data(var::Rho, 320), 60.0, 1e-3);
}

TEST_F(Sizing, a_roller_arm_has_its_paths_curvature_where_cam_and_arm_turn_alike_and_else_one_term_less)
{
    for (const int ArmDirect : {1, -1}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.step = 0.25;
        maker.Make();
        c().Rotflag = -1;
        c().ArmDirect = ArmDirect;
        Size();
        const double D = std::hypot(90.0, 30.0);
        int checked = 0;
        for (int i = 30; i < 1100; i += 37) {
            const double w = Data(var::V, i) * pi / 180 / 12.0;
            if (w == 0.0)
                continue;
            const double ph = Data(var::Phi, i) * pi / 180;
            const double Q = D * std::sin((c().Arm_Start_Angle + Data(var::S, i)) * pi / 180);
            // The path's own curvature by differences; the cam turns clockwise, so its points run counterclockwise.
            const double path = 1 / Numeric_Rho(i);
            // 1 - w stands for 1 - K w, K = Rotflag ArmDirect: 2 w^2 sin(phi) is missing at K = -1. Meant.
            const double missing =
                ArmDirect == -1 ? 0.0 : 2 * w * w * std::sin(ph) * 80.0 * std::pow(std::cos(ph) / Q, 2);
            EXPECT_NEAR(1 / Data(var::Rho, i), path - missing, 2e-4) << ArmDirect << ", " << i;
            ++checked;
        }
        EXPECT_GT(checked, 15);
    }
}

TEST_F(Sizing, an_arm_of_no_length_or_a_pivot_on_the_centre_is_an_error)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().ArmRad = 0.0;
    Calc_Phi(design, 1);
    EXPECT_TRUE(f().Calc_Error);
    f().Calc_Error = false;
    c().ArmRad = 80.0;
    c().ArmX = c().ArmY = 0.0;
    Calc_Phi(design, 1);
    EXPECT_TRUE(f().Calc_Error);
}

TEST_F(Sizing, sides_that_close_no_triangle_set_math_error)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().ArmRad = 10.0;
    Calc_Phi(design, 1);
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
    ASSERT_TRUE(Axial_Osc_Rho(design, 320, -80.0, 0.0, 80.0, Rho));
    EXPECT_EQ(Rho, 1000000.0);
    Axial_Phi point;
    ASSERT_TRUE(Axial_Osc_Phi(design, 320, -80.0, 0.0, 80.0, point));
    EXPECT_NEAR(point.Phi, 0.0, 1e-6);
    EXPECT_EQ(point.g0, 0.0);
    // The slope of the roller's path against the drum, at mid-rise, where the arm is off level by its angle.
    ASSERT_TRUE(Axial_Osc_Phi(design, 55, -80.0, 0.0, 80.0, point));
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
    EXPECT_FALSE(Calc_Rho(design, 1));
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
    // Liftmax + S, a plus that is meant: in the low dwell the arm stands one lift above its start, in the high dwell
    // two.
    const double D = std::hypot(90.0, 30.0);
    for (const auto& [i, lifts] : {std::pair{320, 1}, std::pair{140, 2}}) {
        const double gamma = c().Arm_Start_Angle * pi / 180 + lifts * 20 * pi / 180;
        const double R = std::sqrt(D * D + 6400 - 2 * D * 80 * std::cos(gamma));
        const double tau = std::acos((R * R + D * D - 6400) / (2 * D * R));
        const double al = pi - gamma - tau;
        EXPECT_NEAR(Data(var::Phi, i), c().Rotflag * c().ArmDirect * (al - pi / 2) * 180 / pi, 1e-3) << i;
        // In the curvature the conjugate plays no part: the standing arm's roller centre is where the motion has it.
        const double plain = (c().Arm_Start_Angle + Data(var::S, i)) * pi / 180;
        EXPECT_NEAR(Data(var::Rho, i), std::sqrt(D * D + 6400 - 2 * D * 80 * std::cos(plain)), 1e-3) << i;
    }
}

TEST_F(Sizing, the_ratio_of_displacement_divides_the_cam_angle_in_the_arms_pressure_angle)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    design.linkage.Drive_End_Effector = true;
    for (int i = 0; i <= 360; ++i)
        design.results.Link_Ratio_S(i) = 4.0;
    Arm_Geometry(design);
    Autopress(design);
    // The last point leaves its working angle: the pivot turned by a quarter of the cycle, less the start's own angle.
    const double expected = c().Arm_Pivot_Angle - c().Rotflag * 360.0 / 4 - c().ArmDirect * c().Arm_Cam_Angle;
    EXPECT_NEAR(c().Arm_Work_Angle * 180 / pi, expected, 1e-3);
}

TEST_F(Sizing, a_zero_divisor_keeps_the_point_and_is_told_of)
{
    script_.Expect(
        {"An attempt to divide by zero was detected in Autopress when calculating\n"
         "the pressure angle at theta = 12.5\n"
         "Will continue to attempt calculation at other pointsDenom2",
         Buttons::OK, Symbol::exclamation});
    Autopress_Message(design, "Denom2", 12.5);
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
    Phi_Extremes(design);
    EXPECT_EQ(c().Phi_Max, 0.0);
    EXPECT_EQ(c().Phi_Max_Angle, 0.0);
    EXPECT_EQ(c().Phi_Min, -5.0);
    EXPECT_EQ(c().Phi_Min_Angle, 1.0);
    set(var::Rho, {50, 40.128, 40.128, 70.04});
    Rho_Extremes(design);
    EXPECT_EQ(c().Rho_Min_Pos_Angle, 1.0);
    EXPECT_EQ(Trim(c().Rho_Min_Pos_Text), "40.13");
    EXPECT_EQ(Trim(c().Rho_Max_Pos_Text), "70.0");
    EXPECT_EQ(c().Rho_Max_Neg_Text, "None");
    EXPECT_EQ(c().Rho_Min_Neg_Text, "None");
    EXPECT_EQ(c().Rho_Smallest, c().Rho_Min_Pos);
    set(var::Rho, {50, -8.5, 0.0, -90});
    Rho_Extremes(design);
    EXPECT_EQ(c().Rho_Min_Neg, 0.0);  // zero counts as negative
    EXPECT_EQ(c().Rho_Max_Neg, -90.0);
    EXPECT_EQ(c().Rho_Smallest, 0.0);
    set(var::Rho, {50, -8.5, -90});
    Rho_Extremes(design);
    EXPECT_EQ(c().Rho_Smallest, -8.5);
    EXPECT_EQ(Trim(c().Rho_Min_Neg_Text), "-8.50");
}

TEST_F(Sizing, an_all_rise_curve_has_its_smallest_pressure_angle_at_zero)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Phi, i) = i == 0 ? 0.0 : 5.0;
    Phi_Extremes(design);
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
    script_.Expect({"The minimum base circle radius for no negative Radius of Curvature is " +
                    Trim(FNRoundStr(design, Rb, 2)) + "  mm"});
    Flat_Min_Base_Radius(design);
    f().Skip_Profile = true;
    Flat_Min_Base_Radius(design);  // silent
    f().Skip_Profile = false;
    design.run.Reading_File = true;
    Flat_Min_Base_Radius(design);
    // Per radian the acceleration is divided by the speed's square all the same: docs/theory.md, (71). Meant.
    Cam_Maker per_radian;
    per_radian.time_base = 3;
    per_radian.Make();
    const double radians = -Data(var::A, where) / 144.0 - Data(var::S, where);
    script_.Expect({"The minimum base circle radius for no negative Radius of Curvature is " +
                    Trim(FNRoundStr(design, radians, 2)) + "  mm"});
    Flat_Min_Base_Radius(design);
}

TEST_F(Sizing, an_offset_beyond_the_prime_radius_is_reported)
{
    Cam_Maker().Make();
    c().Offset = 70.0;
    script_.Expect(Error_Box(5, "Invalid argument", "Calc_Phi"));
    EXPECT_FALSE(Calc_Phi(design, 1));
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
    EXPECT_EQ(Link_Ratios(design, 3).S, 1.0);
    design.linkage.Drive_End_Effector = true;
    design.results.Link_Ratio_S(3) = 2.5;
    design.results.Link_Ratio_V(3) = -1.5;
    const Ratios r = Link_Ratios(design, 3);
    EXPECT_EQ(r.S, 2.5);
    EXPECT_EQ(r.V, -1.5);
    EXPECT_EQ(r.A, 1.0);
}

TEST_F(Sizing, a_zero_divisor_is_met_where_the_roller_centre_comes_to_the_cam_centre)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    // An arm as long as its pivot is away, closed to a hair: the third side vanishes, the velocity does not.
    c().Arm_Pivot_Dist = c().ArmRad = 80.0;
    c().Arm_Start_Angle = 1e-8;
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(var::S, i) = i == 25 ? 0.0 : 20.0;
        design.results.CalcData(var::V, i) = 5.0;
        design.results.CalcData(var::Phi, i) = 99.0;
    }
    script_.Expect(
        {"An attempt to divide by zero was detected in Autopress when calculating\n"
         "the pressure angle at theta = 25\n"
         "Will continue to attempt calculation at other pointsDenom2",
         Buttons::OK, Symbol::exclamation});
    Autopress(design);
    EXPECT_EQ(Data(var::Phi, 25), 99.0);  // the point keeps its value
    EXPECT_NE(Data(var::Phi, 24), 99.0);
    EXPECT_NE(Data(var::Phi, 26), 99.0);
}

TEST_F(Sizing, the_third_terms_of_both_senses_have_their_own_labels)
{
    for (const char* label : {"Term3  in K2", "Term3c  in K1"}) {
        script_.Expect({std::string("An attempt to divide by zero was detected in Autopress when calculating\n"
                                    "the pressure angle at theta = 0\n"
                                    "Will continue to attempt calculation at other points") +
                            label,
                        Buttons::OK, Symbol::exclamation});
        Autopress_Message(design, label, 0.0);
    }
}

TEST_F(Sizing, a_vanishing_curvature_of_the_pitch_curve_is_reported)
{
    Cam_Maker().Make();
    design.results.CalcData(var::S, 40) = 0.0;
    design.results.CalcData(var::V, 40) = 0.0;
    design.results.CalcData(var::A, 40) = 60.0 * 144.0;  // r^2 - r a = 0
    script_.Expect(Error_Box(11, "Division by zero", "Calc_Rho"));
    EXPECT_FALSE(Calc_Rho(design, 1));
    EXPECT_TRUE(f().Calc_Error);
}

TEST_F(Sizing, the_conjugate_of_a_translating_roller_runs_the_motion_backwards_from_the_top)
{
    Cam_Maker().Make();
    c().Offset = 12.0;
    c().Conjugate = true;
    c().Side_Sign = -1;
    Size();
    const double Rp = std::sqrt(60.0 * 60 - 144);
    for (int i = 0; i <= 360; i += 9) {
        const double s = 20.0 - Data(var::S, i);
        const double v = -Data(var::V, i) / 12.0;
        const double a = -Data(var::A, i) / 144.0;
        EXPECT_NEAR(Data(var::Phi, i), std::atan2(v - 12.0, s + Rp) * 180 / pi, 1e-4) << i;
        const double r = std::hypot(60.0 + s, 12.0);
        const double curvature = (r * r + 2 * v * v - r * a) / std::pow(r * r + v * v, 1.5);  // of a polar curve
        EXPECT_NEAR(1 / Data(var::Rho, i), curvature, std::abs(curvature) * 1e-4 + 1 / 600.1 * (curvature < 1 / 600.0))
            << i;
    }
}

TEST_F(Sizing, an_eccentric_circle_has_its_own_radius_of_curvature)
{
    // A circle of radius 50 about a point 8 off the centre, followed by a roller centre without offset: the distance to
    // its points is e cos x + sqrt(R^2 - e^2 sin^2 x), which has all derivatives in closed form.
    Cam_Maker maker;
    maker.time_base = 3;
    maker.Make();
    constexpr double R = 50.0;
    constexpr double e = 8.0;
    c().Prime_Rad = R - e;
    for (int i = 0; i <= 360; ++i) {
        const double x = i * pi / 180;
        const double q = std::sqrt(R * R - e * e * std::sin(x) * std::sin(x));
        const double dq = -e * e * std::sin(x) * std::cos(x) / q;
        const double ddq = (-e * e * std::cos(2 * x) - dq * dq) / q;
        design.results.CalcData(var::S, i) = e * std::cos(x) + q - (R - e);
        design.results.CalcData(var::V, i) = -e * std::sin(x) + dq;
        design.results.CalcData(var::A, i) = -e * std::cos(x) + ddq;
    }
    Size();
    for (int i = 0; i <= 360; ++i) {
        EXPECT_NEAR(Data(var::Rho, i), R, 1e-3) << i;
        // The normal goes through the circle's own centre: sine rule in the triangle of both centres and the roller.
        const double x = i * pi / 180;
        EXPECT_NEAR(std::sin(Data(var::Phi, i) * pi / 180), -e * std::sin(x) / R, 1e-5) << i;
    }
    EXPECT_NEAR(c().Rho_Smallest, R, 1e-3);
}

TEST_F(Sizing, an_arm_has_the_same_angles_and_curvature_in_all_time_bases)
{
    for (const char* kind : {"Radial", "Barrel", "Linear"}) {
        std::vector<double> Phi;
        std::vector<double> Rho;
        for (const int base : {1, 2, 3}) {
            Cam_Maker maker;
            maker.translating = false;
            maker.time_base = base;
            maker.Make();
            c().Camtype = kind;
            Size();
            for (int i = 3; i <= 360; i += 7) {
                const auto k = static_cast<std::size_t>(i / 7);
                if (base == 1) {
                    Phi.push_back(Data(var::Phi, i));
                    Rho.push_back(Data(var::Rho, i));
                    continue;
                }
                EXPECT_NEAR(Data(var::Phi, i), Phi[k], 1e-3) << kind << base << " " << i;
                EXPECT_NEAR(1 / Data(var::Rho, i), 1 / Rho[k], 1e-5) << kind << base << " " << i;
            }
        }
    }
}

TEST_F(Sizing, a_standing_arm_has_the_other_sign_where_cam_and_arm_turn_opposite_ways)
{
    for (const int Rotflag : {1, -1})
        for (const int ArmDirect : {1, -1}) {
            Cam_Maker maker;
            maker.translating = false;
            maker.Make();
            c().Rotflag = Rotflag;
            c().ArmDirect = ArmDirect;
            Size();
            const double D = std::hypot(90.0, 30.0);
            for (const int i : {320, 140}) {  // low and high dwell
                const double gamma = (c().Arm_Start_Angle + Data(var::S, i)) * pi / 180;
                const double R = std::sqrt(D * D + 6400 - 2 * D * 80 * std::cos(gamma));
                const double at_roller = std::acos((6400 + R * R - D * D) / (2 * 80 * R));
                EXPECT_NEAR(Data(var::Phi, i), Rotflag * ArmDirect * (at_roller * 180 / pi - 90), 1e-3);
                EXPECT_NEAR(Data(var::Rho, i), R, 1e-3);
            }
        }
}

TEST_F(Sizing, the_start_of_the_arm_lies_on_the_prime_circle_an_arm_from_the_pivot)
{
    for (const int ArmDirect : {1, -1})
        for (const int side : {1, -1}) {
            Cam_Maker maker;
            maker.translating = false;
            maker.Make();
            c().ArmDirect = ArmDirect;
            c().Side_Sign = side;
            Arm_Geometry(design);
            const Point start(c().Arm_Start_X, c().Arm_Start_Y);
            const Point pivot(90.0, 30.0);
            EXPECT_NEAR(std::abs(start), 60.0, 1e-4);
            EXPECT_NEAR(std::abs(start - pivot), 80.0, 1e-4);
            // On the clockwise side of the line of centres for a counter-clockwise arm; a conjugate on the other.
            EXPECT_LT((std::conj(pivot) * start).imag() * ArmDirect * side, 0.0);
            EXPECT_NEAR(std::abs(std::arg(start / pivot)) * 180 / pi, c().Arm_Cam_Angle, 1e-3);
            EXPECT_NEAR(std::abs(std::polar(1.0, c().Arm_Start_Theta * pi / 180) - start / 60.0), 0.0, 1e-5);
        }
}

TEST_F(Sizing, the_triangle_of_the_arm_closes_at_any_angle)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    Arm_Geometry(design);
    for (const double gamma : {15.0, 40.0, 75.0, 130.0})
        for (const double delta : {-700.0, -30.0, 18.0, 200.0}) {
            Arm_Place place;
            ASSERT_TRUE(Arm_Position(design, gamma, delta, place));
            const Point pivot(place.Px, place.Py);
            const Point roller(place.X, place.Y);
            EXPECT_NEAR(std::abs(pivot), std::hypot(90.0, 30.0), 1e-4);
            EXPECT_NEAR(std::abs(pivot - std::polar(std::abs(pivot), delta * pi / 180)), 0.0, 1e-4);
            EXPECT_NEAR(std::abs(roller - pivot), 80.0, 1e-3);
            EXPECT_NEAR(std::abs(roller), place.R, 1e-3);
            EXPECT_NEAR(std::abs(std::arg((roller - pivot) / (-pivot))) * 180 / pi, gamma, 1e-2);
            EXPECT_NEAR(std::abs(std::arg(roller / pivot)) * 180 / pi, place.tau, 1e-2);
            EXPECT_GE(place.theta_c, 0.0);
            EXPECT_LE(place.theta_c, 360.0);
            EXPECT_NEAR(std::abs(roller - std::polar(place.R, place.theta_c * pi / 180)), 0.0, 1e-2);
        }
}

TEST_F(Sizing, a_roller_centre_on_the_cam_centre_has_no_angle)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Arm_Pivot_Dist = c().ArmRad = 80.0;
    Arm_Place place;
    ASSERT_TRUE(Arm_Position(design, 0.0, 90.0, place));
    EXPECT_EQ(place.R, 0.0);
    EXPECT_EQ(place.tau, 0.0);  // no divisor: the angle keeps its start value
    EXPECT_NEAR(place.theta_c, 90.0, 1e-4);
    EXPECT_NEAR(place.Py, 80.0, 1e-4);
}

TEST_F(Sizing, a_standing_flat_face_on_an_arm_has_its_distance_from_the_cam_centre)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Followtype = 2;
    Size(2);
    const double D = std::hypot(90.0, 30.0);
    // Dwell: a circle about the cam centre, touched by a face at that distance.
    EXPECT_NEAR(Data(var::Rho, 320), 60.0, 1e-3);
    EXPECT_NEAR(Data(var::Rho, 140), D * std::sin(std::asin(60.0 / D) + 20 * pi / 180), 1e-3);
    EXPECT_EQ(c().Phi_Max, 0.0);
    EXPECT_EQ(c().Phi_Min, 0.0);
    // An offset face adds its offset where the start angle has it already: prime radius and twice the offset. Meant.
    c().Offset = 7.0;
    Size(2);
    EXPECT_NEAR(Data(var::Rho, 320), 60.0 + 2 * 7.0, 1e-3);
    // Standing still with an acceleration, as at the ends of a simple harmonic rise: rho = h + d2h/dalpha2.
    c().Offset = 0.0;
    design.results.CalcData(var::A, 320) = 500.0;
    Size(2);
    const double aa = 500.0 * pi / 180 / 144.0;
    EXPECT_NEAR(Data(var::Rho, 320), 60.0 + aa * std::sqrt(D * D - 3600), 1e-3);
}

TEST_F(Sizing, a_moving_flat_face_on_an_arm_has_the_envelopes_curvature_but_for_its_first_divisor)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.time_base = 3;
    maker.step = 0.25;
    maker.Make();
    c().Followtype = 2;
    Size(2);
    const double D = std::hypot(90.0, 30.0);
    // The face's distance h from the cam centre over its direction alpha in the cam is the support function of the cam:
    // rho = h + d2h/dalpha2. It is taken here by differences from the displacement alone.
    const auto face = [&](int i) { return std::asin(60.0 / D) + Data(var::S, i) * pi / 180; };
    const auto h = [&](int i) { return D * std::sin(face(i)); };
    const auto alpha = [&](int i) { return i * 0.25 * pi / 180 - face(i); };
    constexpr int reach = 8;
    int checked = 0;
    for (int i = 40; i < 1100; i += 31) {
        const double w = Data(var::V, i) * pi / 180;
        if (w == 0.0)
            continue;
        const double before = (h(i) - h(i - reach)) / (alpha(i) - alpha(i - reach));
        const double after = (h(i + reach) - h(i)) / (alpha(i + reach) - alpha(i));
        const double rho = h(i) + (after - before) / ((alpha(i + reach) - alpha(i - reach)) / 2);
        // One plus the velocity squared stands where mechanics has one minus it. Meant.
        EXPECT_NEAR(Data(var::Rho, i) * std::pow((1 + w) / (1 - w), 2), rho, std::abs(rho) * 0.03 + 0.5) << i;
        ++checked;
    }
    EXPECT_GT(checked, 20);
}

TEST_F(Sizing, ratios_divide_the_arms_motion_at_its_follower)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    design.linkage.Drive_End_Effector = true;
    for (int i = 0; i <= 360; ++i) {
        design.results.Link_Ratio_S(i) = 2.0;
        design.results.Link_Ratio_V(i) = 2.0;
        design.results.Link_Ratio_A(i) = 2.0;
    }
    Size();
    const double D = std::hypot(90.0, 30.0);
    const double gamma = (c().Arm_Start_Angle + 10.0) * pi / 180;  // half the lift of 20 at the high dwell
    const double R = std::sqrt(D * D + 6400 - 2 * D * 80 * std::cos(gamma));
    const double at_roller = std::acos((6400 + R * R - D * D) / (2 * 80 * R)) * 180 / pi;
    EXPECT_NEAR(Data(var::Rho, 140), R, 1e-3);
    EXPECT_NEAR(std::abs(Data(var::Phi, 140)), std::abs(at_roller - 90), 1e-3);
    // Ratio_V and Ratio_A in the curvature: with a face of which displacement is not divided, half the motion's terms.
    c().Followtype = 2;
    Size(2);
    const double ad = std::asin(60.0 / D) + Data(var::S, 30) * pi / 180;
    const double v = Data(var::V, 30) / 2 * pi / 180 / 12.0;
    const double a = Data(var::A, 30) / 2 * pi / 180 / 144.0;
    const double rho = D * std::sin(ad) * (1 - v * v / ((1 - v) * (1 - v))) + D * std::cos(ad) * a / std::pow(1 - v, 3);
    EXPECT_NEAR(Data(var::Rho, 30), rho * std::pow((1 - v) / (1 + v), 2), 1e-2);
}

TEST_F(Sizing, an_arm_level_with_its_pivot_keeps_the_curvature_of_the_point_before)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.time_base = 2;
    maker.Make();
    Size();
    const double start = c().Arm_Start_Angle;
    const double before = Data(var::Rho, 54);
    // Arm and line of centres fall together at points 0 and 55: the divisor D sin(gamma) vanishes.
    for (const int i : {0, 55}) {
        design.results.CalcData(var::S, i) = -start;
        design.results.CalcData(var::V, i) = 0.1;
        design.results.CalcData(var::A, i) = 0.0;
        design.results.CalcData(var::Phi, i) = 0.0;
    }
    ASSERT_TRUE(Calc_Rho(design, 1));
    EXPECT_EQ(Data(var::Rho, 0), 0.0);  // no point before: nothing to keep
    EXPECT_NEAR(Data(var::Rho, 54), before, 1e-3);
    // With Phi and acceleration of zero 1 / rho is the kept c1 alone, cos(Phi) over D sin(gamma) of point 54.
    const double gamma = (start + Data(var::S, 54)) * pi / 180;
    const double c1 = std::cos(Data(var::Phi, 54) * pi / 180) / (std::hypot(90.0, 30.0) * std::sin(gamma));
    EXPECT_NEAR(Data(var::Rho, 55), 1 / c1, 1e-2);
}

TEST_F(Sizing, an_axial_arm_has_the_curvature_of_its_unrolled_path_but_for_one_term)
{
    struct Configuration {
        double ArmX;
        int ArmDirect;
    };
    for (const auto& p : {Configuration{-70.0, 1}, Configuration{-70.0, -1}, Configuration{70.0, 1}}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.Make();
        c().Camtype = "Barrel";
        c().ArmDirect = p.ArmDirect;
        for (int i = 30; i < 300; i += 20) {
            const double w = Data(var::V, i) * pi / 180;
            const double dw = Data(var::A, i) * pi / 180;
            const double level = p.ArmX > 0 ? pi : 0.0;
            const double arm = level + p.ArmDirect * Data(var::S, i) * pi / 180;
            const double Ra = std::hypot(80.0 * std::cos(arm) + p.ArmX, 60.0);
            // The roller centre on the unrolled drum of radius Ra near this instant, the arm accelerating evenly.
            const auto path = [&](double t) {
                const double at = arm + p.ArmDirect * (w * t + dw * t * t / 2);
                return Point(Ra * 12.0 * t - 80.0 * std::cos(at), 80.0 * std::sin(at));
            };
            constexpr double h = 1e-4;
            const Point d1 = (path(h) - path(-h)) / (2 * h);
            const Point d2 = (path(h) - 2.0 * path(0) + path(-h)) / (h * h);
            const double speed_cubed = std::pow(std::abs(d1), 3);
            // The cube of the arm's own velocity enters with a plus where the path has a minus. Meant.
            const double M = (std::conj(d1) * d2).imag() + 2 * p.ArmDirect * 80.0 * 80.0 * w * w * w;
            double Rho = 0.0;
            ASSERT_TRUE(Axial_Osc_Rho(design, i, p.ArmX, 0.0, 80.0, Rho));
            const double sign = (p.ArmX > 0 ? 1 : -1) * p.ArmDirect;
            if (std::abs(M) < 1e-6) {
                EXPECT_EQ(Rho, 1000000.0) << i;
                continue;
            }
            EXPECT_NEAR(1 / Rho, sign * M / speed_cubed, std::abs(M / speed_cubed) * 1e-3 + 1e-8) << i;
        }
    }
}

TEST_F(Sizing, an_axial_arms_curvature_does_not_look_at_the_sense_of_rotation)
{
    // The speed's square belongs to a clockwise cam, the divisor to a counterclockwise one: docs/theory.md, (91).
    // Meant.
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    double Rho[2]{};
    for (const int sense : {0, 1}) {
        c().Rotflag = sense == 0 ? 1 : -1;
        ASSERT_TRUE(Axial_Osc_Rho(design, 40, -70.0, 0.0, 80.0, Rho[sense]));
    }
    EXPECT_EQ(Rho[0], Rho[1]);
}

TEST_F(Sizing, an_axial_arms_pressure_angle_is_that_of_its_speeds_or_of_the_cam_turned_the_other_way)
{
    for (const int Rotflag : {1, -1})
        for (const int ArmDirect : {1, -1})
            for (const int side : {1, -1}) {
                Cam_Maker maker;
                maker.translating = false;
                maker.Make();
                c().Camtype = "Barrel";
                c().Rotflag = Rotflag;
                c().ArmDirect = ArmDirect;
                for (const int i : {40, 55, 200}) {
                    Axial_Phi point;
                    ASSERT_TRUE(Axial_Osc_Phi(design, i, side * 80.0, 20.0, 80.0, point));
                    const double arm = point.arm * pi / 180;
                    const double Ra = std::hypot(80.0 * std::cos(arm) + side * 80.0, 60.0);
                    const Point along = std::polar(1.0, arm);
                    // Speed of the arm's end less that of the drum under it, over the shaft speed. Where the arm's
                    // direction is not its pivot's side it is the drum of the other sense: meant, section 7.5.
                    const int sense = ArmDirect == side ? -Rotflag : Rotflag;
                    const double w = Data(var::V, i) * pi / 180 / 12.0;
                    const Point speed = 80.0 * ArmDirect * w * along * Point(0, 1) - Point(sense * Ra, 0.0);
                    const Point seen = speed * std::conj(along);  // along the arm, across it
                    EXPECT_NEAR(std::abs(point.Phi), std::abs(std::atan(seen.imag() / seen.real())) * 180 / pi, 1e-3)
                        << Rotflag << ArmDirect << side << ", " << i;
                }
            }
}

TEST_F(Sizing, an_axial_arm_at_rest_curves_by_its_acceleration_alone)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    design.results.CalcData(var::A, 320) = 900.0;
    double Rho = 0.0;
    ASSERT_TRUE(Axial_Osc_Rho(design, 320, -80.0, 0.0, 80.0, Rho));
    // y'' of the path is 80 times the arm's acceleration over the drum's speed squared; ArmX below zero turns the sign.
    EXPECT_NEAR(Rho, -std::pow(60.0 * 12.0, 2) / (80.0 * 900.0 * pi / 180), 1e-2);
}

TEST_F(Sizing, an_axial_pivot_on_the_far_side_measures_its_arm_from_the_other_end)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    Axial_Phi point;
    ASSERT_TRUE(Axial_Osc_Phi(design, 320, -80.0, 40.0, 80.0, point));
    EXPECT_NEAR(point.g0, 30.0, 1e-5);
    ASSERT_TRUE(Axial_Osc_Phi(design, 140, 80.0, 40.0, 80.0, point));
    EXPECT_NEAR(point.g0, 150.0, 1e-5);
    EXPECT_NEAR(point.arm, 170.0, 1e-4);
    // Upright the arm leaves no divisor.
    design.results.CalcData(var::S, 320) = 0.0;
    Axial_Phi upright;
    design.results.CalcData(var::S, 5) = 90.0;
    ASSERT_TRUE(Axial_Osc_Phi(design, 5, -80.0, 0.0, 80.0, upright));
    EXPECT_GT(std::abs(upright.Phi), 89.0);
}

TEST_F(Sizing, an_axial_arm_of_a_polydyne_cam_keeps_its_displacement_and_takes_its_velocity)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    c().Camtype = "Barrel";
    f().Polydyne_Calc = true;
    design.results.CalcData(22, 140) = 3.0;
    design.results.CalcData(23, 140) = 100.0;
    design.results.CalcData(var::V, 140) = 0.0;
    Axial_Phi point;
    ASSERT_TRUE(Axial_Osc_Phi(design, 140, -80.0, 0.0, 80.0, point));
    EXPECT_NEAR(point.arm, 20.0, 1e-4);  // row 1, not the 3 of row 22
    const double moving = point.Phi;
    design.results.CalcData(23, 140) = 0.0;
    ASSERT_TRUE(Axial_Osc_Phi(design, 140, -80.0, 0.0, 80.0, point));
    EXPECT_NEAR(std::abs(point.Phi), 20.0, 1e-4);  // at rest the arm's own inclination
    EXPECT_GT(std::abs(moving - point.Phi), 1.0);
}

TEST_F(Sizing, a_polydyne_cam_has_the_curvature_of_its_own_rows)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(22, i) = 5.0;
        design.results.CalcData(23, i) = 0.0;
        design.results.CalcData(24, i) = 144.0;  // 1 per radian squared at 12 rad/s
    }
    f().Polydyne_Calc = true;
    Size();
    EXPECT_NEAR(Data(var::Rho, 77), 65.0 * 65.0 / (65.0 - 1.0), 1e-3);
    c().Followtype = 2;
    Size(2);
    EXPECT_NEAR(Data(var::Rho, 77), 5.0 + 60.0 + 1.0, 1e-4);
}

TEST_F(Sizing, the_kind_of_follower_is_not_looked_at_on_an_axial_cam)
{
    Cam_Maker().Make();
    c().Camtype = "Barrel";
    Size(1);
    const double Phi = Data(var::Phi, 55);
    const double Rho = Data(var::Rho, 30);
    Size(2);
    EXPECT_EQ(Data(var::Phi, 55), Phi);
    EXPECT_EQ(Data(var::Rho, 30), Rho);
}

TEST_F(Sizing, nothing_is_calculated_while_the_program_starts)
{
    Cam_Maker().Make();
    Size();
    design.results.CalcData(var::Phi, 55) = 99.0;
    design.results.CalcData(var::Rho, 55) = 99.0;
    f().Starting = true;
    Calc_Phi(design, 1);
    Calc_Rho(design, 1);
    EXPECT_EQ(Data(var::Phi, 55), 99.0);
    EXPECT_EQ(Data(var::Rho, 55), 99.0);
    f().Calc_Error = true;
    Axial_Phi point;
    double Rho = 5.0;
    EXPECT_FALSE(Axial_Osc_Phi(design, 3, 1.0, 0.0, 1.0, point));
    EXPECT_FALSE(Axial_Osc_Rho(design, 3, 1.0, 0.0, 1.0, Rho));
    EXPECT_EQ(Rho, 5.0);
    EXPECT_TRUE(f().Calc_Error);  // not even that is cleared
}

TEST_F(Sizing, clipping_keeps_what_lies_on_its_limits)
{
    Cam_Maker().Make();
    design.results.CalcData(var::Rho, 0) = 600.0;
    design.results.CalcData(var::Rho, 1) = 600.5;
    design.results.CalcData(var::Rho, 2) = -600.0;
    design.results.CalcData(var::Rho, 3) = -7000.0;
    design.results.CalcData(var::Rho, 4) = 12.0;
    Clip_Rho(design, 600.0);
    const double clipped[]{600.0, 600.0, -600.0, -600.0, 12.0};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Data(var::Rho, i), clipped[i]) << i;
}

TEST_F(Sizing, an_axial_cam_that_never_curves_has_no_smallest_radius)
{
    Cam_Maker().Make();
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Rho, i) = 100000.0;
    Rho_Extremes(design);
    EXPECT_EQ(c().Rho_Max_Pos_Text, "+ Infinity");
    EXPECT_EQ(c().Rho_Min_Pos_Text, "None");  // nothing lies below the start value
    EXPECT_EQ(c().Rho_Min_Pos, 100000.0);
    EXPECT_EQ(c().Rho_Smallest, 100000.0);
}

// ---- the conjugate

/// Stands where no curvature is calculated.
constexpr double untouched = -12345.0;

void Mark_Rho()
{
    for (Single& rho : design.results.CalcData.Points(var::Rho))
        rho = untouched;
}

TEST_F(Sizing, of_the_conjugate_calculates_pressure_angle_and_curvature_anew)
{
    Cam_Maker().Make();
    Size();
    Mark_Rho();
    EXPECT_TRUE(Use_Conjugate(design));
    EXPECT_NE(Data(var::Rho, 55), untouched);
    EXPECT_EQ(c().Follower_Angle, 180.0);
}

TEST_F(Sizing, of_a_conjugate_whose_arm_does_not_meet_the_cam_ends_before_the_curvature)
{
    Cam_Maker{.translating = false}.Make();
    c().ArmX = c().ArmY = 0.0;  // the pivot in the cam's centre
    Mark_Rho();
    EXPECT_FALSE(Use_Conjugate(design));
    EXPECT_TRUE(f().Calc_Error);
    EXPECT_EQ(Data(var::Rho, 55), untouched);
}

TEST_F(Sizing, of_a_conjugate_without_a_real_angle_is_none)
{
    Cam_Maker{.translating = false}.Make();
    c().Followtype = 2;
    c().Prime_Rad = 95.0;  // the pivot stands at 94.9: the face does not reach that circle
    EXPECT_FALSE(Use_Conjugate(design));
    EXPECT_FALSE(f().Calc_Error);
    EXPECT_TRUE(f().Math_Error);
}

}  // namespace
}  // namespace lobemax
