// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/kinetostatics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "camgeom/sizing.h"
#include "core/numeric.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using namespace train_design;

/// A harmonic motion S = h (1 - cos theta) / 2 over the whole cycle, rows as the time base stores them, on a sized
/// radial roller cam in metres: h 0.02 m, prime radius 0.06 m, 10 rad/s.
class Kinetostatics : public ::testing::Test {
protected:
    void SetUp() override { Make(1); }
    void TearDown() override { design = {}; }

    static void Make(int base, int units = 3)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = units;
        Set_Time_Base(design, base);
        Set_Shaft_Speed(design, omega);
        const double scale = units == 5 ? 1000 : units == 4 ? 100 : 1;
        Lay_Harmonic(base, h * scale, omega);
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(var::Phi, i) = 10.0 * std::sin(i * pi / 180);
        design.cam.Camtype = "Radial";
        design.cam.Followtype = 1;
        design.cam.Prime_Rad = 0.06 * scale;
        design.cam.Closure = "Force";
        d().Mass = 2.0;
        d().Return_Spring_Rate = 5000.0;
        d().Preload = 100.0;
        d().Zeta_Initial = 0.1;
        d().Bearing_Radius = 0.02 * scale;
        d().Mu_of_Shaft = 0.03;
        d().Mu_of_Follower = 0.02;
        d().Coeff_of_Fluctuation = 0.05;
    }
    static constexpr double omega = 10.0;
    static constexpr double h = 0.02;
    /// The closed form at angle i degrees, in newtons.
    static double Force(int i, double inertia = 1.0)
    {
        const double t = i * pi / 180;
        const double C = 0.1 * 2 * 2.0 * std::sqrt(5000.0 / 2.0);
        return 5000.0 * h * (1 - std::cos(t)) / 2 + 100.0 + C * h * std::sin(t) / 2 * omega +
               inertia * 2.0 * h * std::cos(t) / 2 * omega * omega;
    }

    Script script_;
};

TEST_F(Kinetostatics, force_and_torque_are_those_of_the_closed_form_per_second_and_per_radian)
{
    for (const int base : {1, 3}) {
        Make(base);
        ASSERT_TRUE(Calc_Force_Torque(design));
        for (int i = 0; i <= 360; i += 15) {
            EXPECT_NEAR(Data(var::Force, i), Force(i), 1e-4) << base;
            EXPECT_NEAR(Data(var::Torque, i), Force(i) * h * std::sin(i * pi / 180) / 2, 1e-6) << base;
        }
        EXPECT_TRUE(f().Dynamicflag);
        EXPECT_FALSE(f().Separated);
    }
}

TEST_F(Kinetostatics, in_the_degrees_base_inertia_has_its_factor_once)
{
    Make(2);
    // Row 3 holds the acceleration times pi / 180 once: taking it off once gives the same force here, where a stored
    // value per degree squared would need the factor twice.
    ASSERT_TRUE(Calc_Force_Torque(design));
    for (int i = 0; i <= 360; i += 15)
        EXPECT_NEAR(Data(var::Force, i), Force(i), 1e-4);
    d().Zeta_Initial = 1E-6;
    d().Return_Spring_Rate = 0.0;
    d().Damping = 0.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(Data(var::Force, 0) - 100.0, omega * omega * 2.0 * Data(var::A, 0) * 180 / pi, 1e-4);
}

TEST_F(Kinetostatics, centimetres_and_millimetres_are_brought_to_metres)
{
    for (const int units : {4, 5}) {
        Make(1, units);
        ASSERT_TRUE(Calc_Force_Torque(design));
        for (int i = 0; i <= 360; i += 45) {
            EXPECT_NEAR(Data(var::Force, i), Force(i), 1e-3) << units;
            EXPECT_NEAR(Data(var::Torque, i), Force(i) * h * std::sin(i * pi / 180) / 2, 1e-5) << units;
        }
        const double Fc = Force(90) / std::cos(10 * pi / 180);
        EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2 + 0.06) + 0.03 * Fc * 0.02, 1e-5);
    }
}

TEST_F(Kinetostatics, the_spring_is_measured_from_the_lowest_point_of_the_motion)
{
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::S, i) = Data(var::S, i) - 0.5;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(Data(var::Force, 180), Force(180), 1e-3);
}

TEST_F(Kinetostatics, an_arm_moves_its_roller_by_its_length)
{
    design.cam.Translating = false;
    design.cam.ArmRad = 0.08;
    for (int i = 0; i <= 360; ++i)
        for (const int row : {var::S, var::V, var::A})
            design.results.CalcData(row, i) = Data(row, i) / 0.08 * 180 / pi;
    ASSERT_TRUE(Calc_Force_Torque(design));
    for (int i = 0; i <= 360; i += 30)
        EXPECT_NEAR(Data(var::Force, i), Force(i), 1e-3);
}

TEST_F(Kinetostatics, without_damping_the_work_of_a_cycle_is_zero_and_with_it_what_the_damper_takes)
{
    d().Zeta_Initial = 0.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    double work = 0.0;
    for (int i = 1; i <= 360; ++i)
        work += Data(var::Torque, i) * pi / 180;
    EXPECT_NEAR(work, 0.0, 1e-5);
    d().Zeta_Initial = 0.1;
    ASSERT_TRUE(Calc_Force_Torque(design));
    work = 0.0;
    for (int i = 1; i <= 360; ++i)
        work += Data(var::Torque, i) * pi / 180;
    // C v^2 over one turn: pi C (h / 2)^2 omega.
    EXPECT_NEAR(work, pi * d().Damping * h * h / 4 * omega, 1e-5);
    // The integral is of torque over degrees, without point 0 and its first trapezoid.
    double integral = 0.0;
    for (int i = 2; i <= 360; ++i)
        integral += (Data(var::Torque, i - 1) + Data(var::Torque, i)) / 2;
    EXPECT_NEAR(Data(45, 360), integral, 1e-4);
    EXPECT_EQ(Data(45, 0), 0.0);
    EXPECT_EQ(Data(45, 1), 0.0);
    EXPECT_GE(d().Torque_Integral_Max, Data(45, 90));
    EXPECT_LE(d().Torque_Integral_Min, 0.0);
}

TEST_F(Kinetostatics, frequencies_and_damping_follow_mass_and_spring)
{
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(d().Omega_N, 50.0, 1e-5);
    EXPECT_NEAR(d().Critical_Damping, 200.0, 1e-4);
    EXPECT_NEAR(d().Damping, 20.0, 1e-5);
    EXPECT_NEAR(d().Omega_D, 50.0 * std::sqrt(1 - 0.01), 1e-4);
    EXPECT_TRUE(Present_Figures(design).frequencies);
}

TEST_F(Kinetostatics, critical_damping_leaves_no_damped_frequency)
{
    // Among so many masses some leave a radicand a rounding below zero, which is no negative root.
    for (int tenths = 1; tenths <= 200; ++tenths) {
        d().Mass = tenths / 10.0;
        d().Zeta_Initial = 1.0;
        ASSERT_TRUE(Calc_Force_Torque(design));
        EXPECT_NEAR(d().Omega_D, 0.0, d().Omega_N * 1e-3);
    }
}

TEST_F(Kinetostatics, without_a_spring_the_typed_damping_stands)
{
    d().Return_Spring_Rate = 0.0;
    d().Damping = 7.0;
    d().Omega_N = 99.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_EQ(d().Damping, 7.0);
    EXPECT_EQ(d().Omega_N, 99.0);
    EXPECT_FALSE(Present_Figures(design).frequencies);
    d().Return_Spring_Rate = 5000.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(d().Damping, 20.0, 1e-5);
}

TEST_F(Kinetostatics, friction_is_reported_alone_for_roller_and_flat_face)
{
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double Fc = Force(90) / std::cos(10 * pi / 180);
    EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2 + 0.06) + 0.03 * Fc * 0.02, 1e-6);
    design.cam.Followtype = 2;
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double Fs = Force(90) * std::tan(10 * pi / 180);
    EXPECT_NEAR(Data(15, 90), 0.02 * Fs * (h / 2 + 0.06) + 0.03 * Fc * 0.02, 1e-6);
    // A face has no pressure angle, so the side load and its friction are 0; mechanics has that of the force itself,
    // docs/theory.md, (115). Meant.
    design.results.CalcData(var::Phi, 90) = 0.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(Data(15, 90), 0.03 * Force(90) * 0.02, 1e-6);
    design.results.CalcData(var::Phi, 90) = 10.0;
    design.cam.Camtype = "Barrel";
    design.cam.Followtype = 1;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2) + 0.03 * Fc * 0.02, 1e-6);  // no radius under the roller
}

TEST_F(Kinetostatics, accumulated_torque_doubles_and_the_integral_is_of_one_pass)
{
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double T = Data(var::Torque, 77);
    const double integral = Data(45, 200);
    const double Tmax = Present_Figures(design).Tmax;
    d().Torque_Start_Fresh = false;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_NEAR(Data(var::Torque, 77), 2 * T, 1e-6);
    EXPECT_EQ(Data(45, 200), integral);
    EXPECT_NEAR(Present_Figures(design).Tmax, 2 * Tmax, 1e-6);
    EXPECT_EQ(Data(16, 77), Single(d().Coeff_of_Fluctuation * Data(var::Torque, 77)));
}

TEST_F(Kinetostatics, an_external_force_enters_all_but_the_force_row)
{
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double F = Data(var::Force, 90);
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = 40.0;
    f().Ext_Force_Calc = true;
    ASSERT_TRUE(Calc_Force_Torque(design));  // calculated, but not ticked
    EXPECT_NEAR(Data(var::Torque, 90), F * h / 2, 1e-6);
    d().Ext_Force_Add = true;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_EQ(Data(var::Force, 90), F);
    EXPECT_NEAR(Data(var::Torque, 90), (F + 40.0) * h / 2, 1e-6);
    const double Fc = (F + 40.0) / std::cos(10 * pi / 180);
    EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2 + 0.06) + 0.03 * Fc * 0.02, 1e-6);
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = i == 90 ? -1000.0 : 0.0;
    script_.Expect(Separation_Box("90", Answer::Ignore));
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_TRUE(f().Separated);
}

/// Makes the contact force negative at these points and positive elsewhere.
void Separate_at(const std::vector<int>& points)
{
    d().Mass = 1.0;
    d().Return_Spring_Rate = 0.0;
    d().Damping = 0.0;
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::A, i) = std::ranges::count(points, i) > 0 ? -150.0 : 0.0;
}

TEST_F(Kinetostatics, retry_asks_at_each_separated_point_and_ignore_at_none_after_it)
{
    Separate_at({10, 20, 30});
    script_.Expect(Separation_Box("10", Answer::Retry));
    script_.Expect(Separation_Box("20", Answer::Ignore));
    EXPECT_TRUE(Calc_Force_Torque(design));
    EXPECT_TRUE(f().Separated);
    EXPECT_EQ(f().Separation_Answer, 5);
    script_.Expect(Separation_Box("10", Answer::Ignore));  // the next run asks again
    EXPECT_TRUE(Calc_Force_Torque(design));
}

TEST_F(Kinetostatics, abort_ends_the_run_at_the_next_separated_point)
{
    Separate_at({10, 20, 30});
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(15, i) = -1.0;
    script_.Expect(Separation_Box("10", Answer::Abort));
    EXPECT_FALSE(Calc_Force_Torque(design));
    EXPECT_FALSE(f().Dynamicflag);
    EXPECT_TRUE(f().Calc_Abort);
    EXPECT_NE(Data(15, 19), -1.0);  // the point of the abort and those after it were finished
    EXPECT_EQ(Data(15, 20), -1.0);
}

TEST_F(Kinetostatics, abort_at_the_last_separated_point_lets_the_run_finish)
{
    Separate_at({10});
    script_.Expect(Separation_Box("10", Answer::Abort));
    EXPECT_TRUE(Calc_Force_Torque(design));
    EXPECT_TRUE(f().Dynamicflag);
    EXPECT_FALSE(f().Calc_Abort);
}

TEST_F(Kinetostatics, a_contact_force_of_exactly_zero_separates)
{
    Separate_at({});
    design.results.CalcData(var::A, 50) = -100.0;
    script_.Expect(Separation_Box("50", Answer::Ignore));
    EXPECT_TRUE(Calc_Force_Torque(design));
}

TEST_F(Kinetostatics, a_form_closed_cam_does_not_separate)
{
    Separate_at({10, 20});
    design.cam.Closure = "Form";
    EXPECT_TRUE(Calc_Force_Torque(design));
    EXPECT_LT(Data(var::Force, 10), 0.0);
    EXPECT_FALSE(f().Separated);
}

TEST_F(Kinetostatics, a_constant_torque_is_one_run_and_two_rows_of_nothing)
{
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Torque, i) = 4.0;
    const Torque_Pulses pulses = Show_Torque_Areas(design);
    EXPECT_EQ(pulses.first_sign, 1);
    EXPECT_EQ(pulses.rows, 2);
    EXPECT_EQ(pulses.average, 4.0);
    EXPECT_EQ(pulses.positive[1], 0.0);
    EXPECT_EQ(pulses.negative[1], 0.0);
}

/// A square wave about zero: so many runs of each sign, the first of the sign given.
void Square_Torque(int pairs, double first)
{
    for (int i = 1; i <= 360; ++i) {
        const int run = (i - 1) * 2 * pairs / 360;
        design.results.CalcData(var::Torque, i) = run % 2 == 0 ? first : -first;
    }
}

TEST_F(Kinetostatics, pulses_are_summed_by_their_trapezoids_in_order)
{
    Square_Torque(2, 3.0);  // runs of 90 points: 3, -3, 3, -3
    const Torque_Pulses pulses = Show_Torque_Areas(design);
    EXPECT_EQ(pulses.first_sign, 1);
    EXPECT_EQ(pulses.average, 0.0);
    EXPECT_EQ(pulses.positive[1], 89 * 3.0);  // from point 1: the trapezoid that turns over is zero
    EXPECT_EQ(pulses.negative[1], 89 * -3.0);
    EXPECT_EQ(pulses.positive[2], 89 * 3.0);
    EXPECT_EQ(pulses.negative[2], 89 * -3.0);
    EXPECT_EQ(pulses.rows, 3);
    Square_Torque(2, -3.0);
    EXPECT_EQ(Show_Torque_Areas(design).first_sign, -1);
}

TEST_F(Kinetostatics, the_pulse_table_prints_areas_in_order_and_the_average)
{
    Square_Torque(1, 3.0);
    design.plot.Var_Unit(var::Torque) = "m-N";
    EXPECT_EQ(
        Show_Torque_Areas(design).lines,
        (std::vector<std::string>{" Areas of Camshaft Torque", " Pulses in Order over 1 cycle ", "",
                                  "    in Energy Units of :", "   N - m - Radians", "", " Order   Pos Area   Neg Area",
                                  "----------------------------------------------", "   1   537       -537",
                                  "   2   0         0", "", "    Average Torque:", "   0  m-N"}));
    Square_Torque(1, -3.0);
    const std::vector<std::string> negative = Show_Torque_Areas(design).lines;
    EXPECT_EQ(negative[6], " Order   Neg Area   Pos Area");
    EXPECT_EQ(negative[8], "");
    EXPECT_EQ(negative[9], "   1   -537      537");
}

TEST_F(Kinetostatics, twenty_pulses_of_each_sign_fill_the_table_and_more_are_counted)
{
    Square_Torque(20, 1.0);
    Torque_Pulses pulses = Show_Torque_Areas(design);
    EXPECT_EQ(pulses.rows, 20);
    EXPECT_EQ(pulses.left_out, 0);
    EXPECT_NE(pulses.positive[20], 0.0);
    EXPECT_NE(pulses.negative[20], 0.0);
    Square_Torque(30, 1.0);
    pulses = Show_Torque_Areas(design);
    EXPECT_EQ(pulses.rows, 20);
    EXPECT_EQ(pulses.left_out, 20);
    EXPECT_EQ(std::ranges::count(pulses.lines, "   20 further pulses left out"), 1);
}

TEST_F(Kinetostatics, a_reset_clears_what_a_new_screen_must_not_show)
{
    ASSERT_TRUE(Calc_Force_Torque(design));
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = i;
    d().Torque_Start_Fresh = false;
    Reset_Dynamics(design);
    EXPECT_FALSE(f().Dynamicflag);
    EXPECT_EQ(Data(var::Force, 90), 0.0);
    EXPECT_NE(Data(var::Torque, 90), 0.0);
    EXPECT_EQ(Data(var::Ext_Force, 90), 90.0);
    d().Torque_Start_Fresh = true;
    Reset_Dynamics(design);
    EXPECT_EQ(Data(var::Torque, 90), 0.0);
}

TEST_F(Kinetostatics, a_follower_of_no_kind_has_no_friction_and_a_time_base_of_no_kind_no_force)
{
    design.cam.Followtype = 3;
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_EQ(Data(15, 90), 0.0);
    design.motion.Time_Base = 4;
    design.cam.Closure = "Form";
    ASSERT_TRUE(Calc_Force_Torque(design));
    EXPECT_EQ(Data(var::Force, 90), 0.0);
    EXPECT_EQ(Data(var::Torque, 90), 0.0);
}

TEST_F(Kinetostatics, a_true_acceleration_per_degree_squared_gives_inertia_a_degree_too_small)
{
    Make(2);
    constexpr double degree = pi / 180;
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::A, i) = h * std::cos(i * degree) / 2 * degree * degree;
    ASSERT_TRUE(Calc_Force_Torque(design));
    for (int i = 0; i <= 360; i += 15)
        EXPECT_NEAR(Data(var::Force, i), Force(i, degree), 1e-4);  // meant: the factor 180 / pi comes once
}

TEST_F(Kinetostatics, a_mass_of_zero_on_a_spring_is_a_division_by_zero)
{
    d().Mass = 0.0;
    d().Omega_N = 31.0;
    f().Dynamicflag = true;
    script_.Expect(testing::Error_Box(11, "Division by zero", "Calc_Force_Torque"));
    EXPECT_FALSE(Calc_Force_Torque(design));
    EXPECT_FALSE(f().Dynamicflag);
    EXPECT_EQ(d().Omega_N, 31.0);  // kept: no frequency of nothing
    EXPECT_EQ(d().Critical_Damping, 0.0);
}

TEST_F(Kinetostatics, a_linear_cam_has_no_radius_under_its_roller)
{
    design.cam.Camtype = "Linear";
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double Fc = Force(90) / std::cos(10 * pi / 180);
    EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2) + 0.03 * Fc * 0.02, 1e-6);
}

TEST_F(Kinetostatics, friction_is_positive_also_where_the_force_is_negative)
{
    design.cam.Closure = "Form";
    d().Return_Spring_Rate = 0.0;
    d().Damping = 0.0;
    d().Preload = -50.0;
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::A, i) = 0.0;
    ASSERT_TRUE(Calc_Force_Torque(design));
    const double Fc = 50.0 / std::cos(10 * pi / 180);
    EXPECT_NEAR(Data(15, 90), 0.02 * Fc * (h / 2 + 0.06) + 0.03 * Fc * 0.02, 1e-6);
}

TEST_F(Kinetostatics, an_aborted_run_has_its_rows_up_to_the_abort)
{
    Separate_at({10, 20, 30});
    for (int i = 0; i <= 360; ++i)
        for (const int row : {7, 8, 15, 45})
            design.results.CalcData(row, i) = -7777.0;
    f().Dynamicflag = true;  // of an earlier run
    script_.Expect(Separation_Box("10", Answer::Abort));
    EXPECT_FALSE(Calc_Force_Torque(design));
    EXPECT_FALSE(f().Dynamicflag);
    for (const int row : {7, 8, 15})
        EXPECT_NE(Data(row, 19), -7777.0) << row;
    EXPECT_NEAR(Data(var::Force, 20), 100.0 - 150.0, 1e-4);  // the force is found before the question
    EXPECT_EQ(Data(var::Torque, 20), -7777.0);
    EXPECT_EQ(Data(15, 20), -7777.0);
    EXPECT_EQ(Data(var::Force, 21), -7777.0);
    EXPECT_EQ(Data(45, 5), -7777.0);
}

TEST_F(Kinetostatics, the_separated_angle_has_two_decimals_in_the_number_format)
{
    Separate_at({10});
    design.results.CalcData(var::Angle, 10) = 0.125;  // a half goes up
    script_.Expect(Separation_Box("0.13", Answer::Ignore));
    EXPECT_TRUE(Calc_Force_Torque(design));
    design.identity.Number_Format = "Europe";
    script_.Expect(Separation_Box("0,13", Answer::Ignore));
    EXPECT_TRUE(Calc_Force_Torque(design));
}

TEST_F(Kinetostatics, the_question_prefers_ignore_and_after_it_asks_nothing)
{
    std::vector<Answer> preferred;
    Host host;
    host.messenger = [&preferred](const Message& box) {
        preferred.push_back(box.default_answer);
        return box.default_answer;
    };
    Host before = Install_Host(std::move(host));
    Integer answer = 4;
    Check_Separation(design, 12.0, answer);
    EXPECT_EQ(answer, 5);
    Check_Separation(design, 13.0, answer);
    Install_Host(std::move(before));
    EXPECT_EQ(preferred, std::vector{Answer::Ignore});
}

TEST_F(Kinetostatics, point_zero_enters_neither_the_mean_nor_the_flywheel_row)
{
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Torque, i) = i == 0 ? 9000.0 : 2.0;
    design.results.CalcData(16, 0) = -3.0;
    EXPECT_EQ(Show_Torque_Areas(design).average, 2.0);
    EXPECT_EQ(Data(16, 0), -3.0);
    EXPECT_EQ(Data(16, 1), Single(Single(0.05) * 2.0));
}

/// So many runs of each five points, about a mean of zero as near as their number allows.
Torque_Pulses Pulses_of_Runs(int runs)
{
    for (int i = 1; i <= 360; ++i) {
        const int run = std::min((i - 1) / 5, runs - 1);
        design.results.CalcData(var::Torque, i) = run % 2 == 0 ? 1.0 : -1.0;
    }
    return Show_Torque_Areas(design);
}

TEST_F(Kinetostatics, rows_are_half_the_runs_and_one_a_half_to_the_even_neighbour)
{
    EXPECT_EQ(Pulses_of_Runs(2).rows, 2);  // (3 + 1) / 2
    EXPECT_EQ(Pulses_of_Runs(3).rows, 2);  // 2.5 goes to 2
    EXPECT_EQ(Pulses_of_Runs(5).rows, 4);  // 3.5 goes to 4
    EXPECT_EQ(Pulses_of_Runs(40).rows, 20);
    EXPECT_EQ(Pulses_of_Runs(40).left_out, 0);
    const Torque_Pulses one_more = Pulses_of_Runs(41);
    EXPECT_EQ(one_more.rows, 20);
    EXPECT_EQ(one_more.left_out, 1);
    EXPECT_EQ(std::ranges::count(one_more.lines, "   1 further pulse left out"), 1);
}

TEST_F(Kinetostatics, an_area_too_wide_for_its_column_leaves_a_blank_before_the_next)
{
    Square_Torque(1, 33554432.0);
    const std::vector<std::string> lines = Show_Torque_Areas(design).lines;
    // 179 trapezoids of one degree and 2^25, exact in 32 bits: ten digits fill columns 8 to 17.
    const std::string row = lines.at(8);
    EXPECT_EQ(row, "   1   " + std::string("6006243328") + " " + "-6006243328") << row;
}

TEST_F(Kinetostatics, the_pulse_table_follows_the_number_format)
{
    design.identity.Number_Format = "Europe";
    design.plot.Var_Unit(var::Torque) = "m-N";
    for (int i = 1; i <= 360; ++i)
        design.results.CalcData(var::Torque, i) = 2.5;
    EXPECT_EQ(Show_Torque_Areas(design).lines.back(), "   2,5  m-N");
}

TEST_F(Kinetostatics, points_beyond_the_calculated_table_are_refused)
{
    design.motion.Max_Data_Points_used = 720;
    for (const char* routine : {"Calc_Force_Torque", "Reset_Dynamics", "Present_Figures", "Show_Torque_Areas"})
        script_.Expect(testing::Error_Box(9, "Index out of bounds", routine));
    EXPECT_FALSE(Calc_Force_Torque(design));
    Reset_Dynamics(design);
    EXPECT_TRUE(Present_Figures(design).pulses.lines.empty());
}

TEST_F(Kinetostatics, a_shaft_at_rest_has_no_torque_per_second)
{
    design.motion.Shaft_speed = 0.0;
    design.results.CalcData(var::V, 0) = 0.5;
    script_.Expect(testing::Error_Box(11, "Division by zero", "Calc_Force_Torque"));
    EXPECT_FALSE(Calc_Force_Torque(design));
}

}  // namespace
}  // namespace lobemax
