// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/contact_stress.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/traps.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Data;
using testing::Error_Box;
using testing::Script;

constexpr double pi = 3.14159265358979323846;
constexpr double E = 206800.0;
constexpr double nu = 0.28;
constexpr double youngs[2]{E, E};
constexpr double poissons[2]{nu, nu};

/// A sized design in mm with a constant force of 800 N at a pressure angle of 20 degrees, curvature 50 mm of the roller
/// centre's path, roller radius 12 mm, force closed by a spring, no vibration model.
class Contact_Stress : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        for (int i = 0; i <= 360; ++i) {
            Set(var::Angle, i, i);
            Set(var::Force, i, 800.0);
            Set(var::Phi, i, 20.0);
            Set(var::Rho, i, 50.0);
            Set(42, i, 1.0);
            Set(43, i, 1.0);
        }
        design.cam.Followtype = 1;
        design.cam.Follow_Rad = 12.0;
        design.cam.Closure = "Force";
        design.dynamics.Model_Type = 3;
        design.flags.Dynamicflag = true;
    }
    void TearDown() override { design = {}; }
    static void Set(int row, int i, double value) { design.results.CalcData(row, i) = value; }
    static constexpr double W() { return 800.0 / 0.93969262078590838; }  // the contact force, over cos 20 degrees

    /// Peak pressure of line contact of two cylinders: docs/theory.md, (125), is p0 = sqrt(P E* / (pi R)) per length.
    static double Line(double force, double length, double R)
    {
        const double E_star = 1 / (2 * (1 - nu * nu) / E);
        return std::sqrt(force / length * E_star / (pi * R));
    }

    Script script_;
};

TEST_F(Contact_Stress, a_cylindrical_roller_has_the_pressure_of_line_contact)
{
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 100), -Line(W(), 20.0, R), Line(W(), 20.0, R) * 1e-6);
    EXPECT_NEAR(Data(43, 100), 0.304 * Line(W(), 20.0, R), 1e-3);
}

TEST_F(Contact_Stress, a_flat_face_touches_the_curvature_of_the_cam)
{
    design.cam.Followtype = 2;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_NEAR(Data(42, 0), -Line(W(), 20.0, 50.0), Line(W(), 20.0, 50.0) * 1e-6);
    EXPECT_NEAR(Data(43, 0) / Data(42, 0), -0.304, 1e-6);
}

TEST_F(Contact_Stress, a_hollow_cam_counts_as_it_stands)
{
    for (int i = 0; i <= 360; ++i)
        Set(var::Rho, i, -60.0);
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 - 1 / 72.0);
    EXPECT_NEAR(Data(42, 0), -Line(W(), 20.0, R), 1e-2);
}

TEST_F(Contact_Stress, materials_enter_by_their_compliances)
{
    const double soft[2]{E, E / 3};
    const double other[2]{0.28, 0.35};
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, soft, other, 20.0));
    const double m = (1 - 0.28 * 0.28) / E + (1 - 0.35 * 0.35) / (E / 3);
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 0), -std::sqrt(W() / 20.0 / m / (pi * R)), 1e-2);
}

TEST_F(Contact_Stress, a_crowned_roller_has_the_pressure_of_its_ellipse)
{
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 300.0));
    const double R1 = 38.0;
    const double R2 = 12.0;
    const double R3 = 300.0;
    const double sum = (1 / R2 + 1 / R1 + 1 / R3) / 2;
    const double diff =
        std::sqrt(1 / (R1 * R1) + (1 / R2 - 1 / R3) * (1 / R2 - 1 / R3) + 2 / R1 * (1 / R2 - 1 / R3)) / 2;
    const double angle = std::acos(diff / sum) * 180 / pi;
    const double c = std::cbrt(3 * W() * 2 * (1 - nu * nu) / E / (4 * sum));
    const double p = 1.5 * W() / (pi * c * Ellipse_Ka(angle) * c * Ellipse_Kb(angle));
    EXPECT_NEAR(Data(42, 0), -p, p * 1e-5);
    EXPECT_NEAR(Data(43, 0) / Data(42, 0), -0.34, 1e-6);
}

TEST_F(Contact_Stress, the_ellipse_factors_are_near_those_of_equal_curvatures)
{
    // At 90 degrees the ellipse is a circle, where both factors are 1.
    EXPECT_NEAR(Ellipse_Ka(90.0), 1.0, 0.05);
    EXPECT_NEAR(Ellipse_Kb(90.0), 1.0, 0.05);
    EXPECT_NEAR(Ellipse_Ka(50.0), 50.192 * std::exp(-0.86215 * std::log(50.0)), 1e-9);
    EXPECT_NEAR(Ellipse_Kb(0.0), 0.0012181, 1e-12);
}

TEST_F(Contact_Stress, the_ellipse_factors_give_the_exact_pressure_within_five_percent)
{
    // The exact factors by the complete elliptic integrals, docs/theory.md, (130) and (131): from the ratio of the axes
    // to that of the curvatures, which gives the angle.
    for (const double ratio : {0.05, 0.1, 0.2, 0.3, 0.5, 0.7, 0.9, 0.999}) {
        const double e = std::sqrt(1 - ratio * ratio);
        const double K = std::comp_ellint_1(e);
        const double Ec = std::comp_ellint_2(e);
        const double B_of_A = (Ec / (ratio * ratio) - K) / (K - Ec);
        const double angle = std::acos((B_of_A - 1) / (B_of_A + 1)) * 180 / pi;
        const double ka = std::cbrt(2 * Ec / (pi * ratio * ratio));
        const double pressure = ka * ka * ratio / (Ellipse_Ka(angle) * Ellipse_Kb(angle));
        EXPECT_GT(angle, 10.0);
        EXPECT_NEAR(pressure, 1.0, 0.05) << angle << " deg";
    }
}

TEST_F(Contact_Stress, a_nearly_straight_crown_stays_an_ellipse)
{
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 30000.0));
    EXPECT_NEAR(Data(43, 0) / Data(42, 0), -0.34, 1e-6);
    EXPECT_LT(Data(42, 0), 0.0);
}

TEST_F(Contact_Stress, a_crown_without_end_keeps_the_ellipse_and_its_arc_cosine_of_one)
{
    // Equal radii and a crown that vanishes in 32 bits: difference and sum agree, and the arc cosine of 1 is 1 radian.
    design.cam.Follow_Rad = 16.0;
    for (int i = 0; i <= 360; ++i)
        Set(var::Rho, i, 32.0);
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 1e12));
    const double sum = (1 / 16.0 + 1 / 16.0) / 2;
    const double c = std::cbrt(3 * W() * 2 * (1 - nu * nu) / E / (4 * sum));
    const double p = 1.5 * W() / (pi * c * c * Ellipse_Ka(180 / pi) * Ellipse_Kb(180 / pi));
    EXPECT_NEAR(Data(42, 7), -p, p * 1e-5);
    EXPECT_NEAR(Data(43, 7), 0.34 * p, p * 1e-5);
}

TEST_F(Contact_Stress, a_ball_on_a_plane_has_the_pressure_of_point_contact)
{
    // docs/theory.md, (131) and (132) of a circle: p0 = (6 P E*^2 / (pi^3 R^2))^(1/3); the fitted factors stand for 1.
    for (int i = 0; i <= 360; ++i)
        Set(var::Rho, i, 1e12);
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 12.0));
    const double E_star = 1 / (2 * (1 - nu * nu) / E);
    const double p0 = std::cbrt(6 * W() * E_star * E_star / (pi * pi * pi * 12.0 * 12.0));
    EXPECT_NEAR(Data(42, 0) * Ellipse_Ka(90.0) * Ellipse_Kb(90.0), -p0, p0 * 1e-5);
    EXPECT_NEAR(Data(42, 0), -p0, p0 * 0.1);
}

TEST_F(Contact_Stress, an_ellipse_without_its_difference_takes_that_of_the_point_before)
{
    // 1/31 - 1/23.25 is -1/93: the radicand is the square of nothing, and rounding takes it just below zero.
    design.cam.Follow_Rad = 31.0;
    for (const int i : {0, 5}) {
        Set(var::Rho, i, 93.0 + 31.0);
        script_.Expect({"Attempting to take square root of negative number in Sub Stress for crowned follower",
                        Buttons::OK, Symbol::exclamation});
    }
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 23.25));
    const double sum = (1 / 31.0 + 1 / 93.0 + 1 / 23.25) / 2;
    const auto pressure = [&](double diff) {
        const double angle = std::acos(diff / sum) * 180 / pi;
        const double c = std::cbrt(3 * W() * 2 * (1 - nu * nu) / E / (4 * sum));
        return 1.5 * W() / (pi * c * c * Ellipse_Ka(angle) * Ellipse_Kb(angle));
    };
    EXPECT_NEAR(Data(42, 0), -pressure(0.0), pressure(0.0) * 1e-5);
    const double before = (1 / 19.0 - 1 / 93.0) / 2;  // of point 4: surface of 50 - 31
    EXPECT_NEAR(Data(42, 5), -pressure(before), pressure(before) * 1e-5);
}

TEST_F(Contact_Stress, a_crowned_roller_without_force_has_no_stress)
{
    design.dynamics.Model_Type = 1;
    Set(var::Force, 3, 0.0);
    ASSERT_TRUE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 300.0));
    EXPECT_EQ(Data(42, 3), 0.0);
    EXPECT_EQ(Data(43, 3), 0.0);
    EXPECT_LT(Data(42, 4), 0.0);
}

TEST_F(Contact_Stress, a_flat_face_without_force_divides_nothing_by_nothing)
{
    // Only a roller has its zero half-width looked after.
    design.cam.Followtype = 2;
    design.dynamics.Model_Type = 1;
    Set(var::Force, 3, 0.0);
    script_.Expect(Error_Box(6, Error_Description(6), "Calc_Contact_Stress"));
    EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_LT(Data(42, 2), 0.0);
    EXPECT_EQ(Data(42, 3), 1.0);
}

TEST_F(Contact_Stress, the_dynamic_force_counts_once_there_is_one)
{
    for (int i = 0; i <= 360; ++i)
        Set(33, i, 1600.0);
    design.flags.Modelflag = true;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 100), -Line(2 * W(), 20.0, R), 1e-2);
}

TEST_F(Contact_Stress, external_force_and_weight_are_added_without_the_cosine)
{
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = 100.0;
    design.flags.Ext_Force_Calc = design.dynamics.Ext_Force_Add = true;
    design.dynamics.Follower_Weight = 50.0;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 100), -Line(W() + 150.0, 20.0, R), 1e-2);
}

TEST_F(Contact_Stress, the_external_force_needs_its_tick_and_its_table)
{
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = 100.0;
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    for (const bool tick : {false, true}) {
        design.dynamics.Ext_Force_Add = tick;
        design.flags.Ext_Force_Calc = !tick;
        ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
        EXPECT_NEAR(Data(42, 100), -Line(W(), 20.0, R), 1e-2);
    }
}

TEST_F(Contact_Stress, lift_off_is_judged_with_the_external_force_and_before_the_weight)
{
    Set(var::Force, 20, -80.0);
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = 100.0;
    design.results.Ext_Force_Table(90) = -W() - 10.0;
    design.flags.Ext_Force_Calc = design.dynamics.Ext_Force_Add = true;
    design.dynamics.Follower_Weight = 50.0;
    script_.Expect(
        {"Something is wrong. - The follower force is zero at cam angle 90 deg.  Stresses will be larger than "
         "theoretical due to impact.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 20), -Line(150.0 - W() / 10, 20.0, R), 1e-2);
}

TEST_F(Contact_Stress, form_closure_takes_the_absolute_force_and_does_not_warn)
{
    for (int i = 0; i <= 360; ++i)
        Set(var::Force, i, -800.0);
    design.cam.Closure = "Form";
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 100), -Line(W(), 20.0, R), 1e-2);
}

TEST_F(Contact_Stress, a_force_of_zero_ends_a_spring_closed_run_and_leaves_the_later_points)
{
    Set(var::Force, 90, 0.0);
    script_.Expect(
        {"Something is wrong. - The follower force is zero at cam angle 90 deg.  Stresses will be larger than "
         "theoretical due to impact.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_LT(Data(42, 89), 0.0);
    EXPECT_EQ(Data(42, 90), 1.0);
    EXPECT_EQ(Data(42, 200), 1.0);
}

TEST_F(Contact_Stress, with_the_first_model_a_force_of_zero_is_no_warning)
{
    Set(var::Force, 90, 0.0);
    design.dynamics.Model_Type = 1;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_EQ(Data(42, 90), 0.0);
}

TEST_F(Contact_Stress, without_forces_each_point_takes_the_force_left_by_the_one_before)
{
    design.flags.Dynamicflag = false;
    design.dynamics.Model_Type = 1;
    design.dynamics.Follower_Weight = 800.0;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    const double R = 1 / (1 / 12.0 + 1 / 38.0);
    EXPECT_NEAR(Data(42, 0), -Line(800.0, 20.0, R), 1e-2);
    EXPECT_NEAR(Data(42, 1), -Line(1600.0, 20.0, R), 1e-2);  // with the weight once more: meant, docs/theory.md, (121)
}

TEST_F(Contact_Stress, each_impossible_geometry_has_its_words)
{
    const auto expect = [this](const std::string& text) { script_.Expect({text, Buttons::OK, Symbol::exclamation}); };
    Set(var::Rho, 30, 12.0);
    expect(
        "Something is wrong. - The radius of curvature of the cam is zero at cam angle 30 deg.  Stresses will be "
        "infinite there.");
    EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_LT(Data(42, 29), 0.0);  // the points before it stand, those from it on are as they were
    EXPECT_GT(Data(43, 29), 100.0);
    for (const int i : {30, 31, 360}) {
        EXPECT_EQ(Data(42, i), 1.0) << i;
        EXPECT_EQ(Data(43, i), 1.0) << i;
    }
    design.cam.Follow_Rad = 0.0;
    expect("Something is wrong. - The radius of the roller follower is zero");
    EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    design.cam.Follow_Rad = 11.0;
    expect("Something is wrong. - The crown radius of the roller follower is zero");
    EXPECT_FALSE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 0.0));
    design.cam.Followtype = 2;
    for (const double rho : {-5.0, 0.0}) {
        Set(var::Rho, 0, rho);
        expect("Something is wrong. - The cam's radius of curvature is zero or negative at cam angle 0 deg.");
        EXPECT_FALSE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    }
}

TEST_F(Contact_Stress, a_negative_radicand_keeps_the_half_width_before)
{
    design.dynamics.Model_Type = 1;
    Set(var::Force, 1, -800.0);
    for (int i = 2; i <= 360; ++i)
        Set(var::Force, i, 800.0);
    script_.Expect({"Attempting to take square root of negative number in Sub Stress for cylindrical follower",
                    Buttons::OK, Symbol::exclamation});
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_NEAR(Data(42, 1), -Data(42, 0), 1e-3);
    design.cam.Followtype = 2;
    script_.Expect({"Attempting to take square root of negative number in Sub Stress for flat follower", Buttons::OK,
                    Symbol::exclamation});
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
}

TEST_F(Contact_Stress, an_ellipse_beyond_its_angle_sets_math_error)
{
    // A roller in a hollow smaller than itself: no contact of this kind exists, and the difference exceeds the sum.
    for (int i = 0; i <= 360; ++i)
        Set(var::Rho, i, 7.0);
    script_.Expect(Error_Box(5, "Invalid argument", "Calc_Contact_Stress"));
    EXPECT_FALSE(Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 300.0));
    EXPECT_EQ(Data(42, 0), 1.0);
    EXPECT_TRUE(design.flags.Math_Error);
}

TEST_F(Contact_Stress, a_follower_of_no_kind_stores_what_came_before)
{
    design.cam.Followtype = 3;
    ASSERT_TRUE(Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 20.0));
    EXPECT_EQ(Data(42, 5), 0.0);
}

}  // namespace
}  // namespace lobemax
