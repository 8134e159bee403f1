// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/vibration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using namespace train_design;

void Expect_Near(const std::vector<double>& row, const std::vector<double>& expected, double share, const char* what)
{
    ASSERT_EQ(row.size(), expected.size());
    const double range = Range(expected);
    ASSERT_GT(range, 0.0);
    for (std::size_t i = 0; i < row.size(); ++i)
        ASSERT_NEAR(row[i], expected[i], share * range) << what << " at " << i;
}

/// x.. + a x. + b x = c V(t) + e S(t): the equation of a model, with coefficients of mechanics' own.
struct Equation {
    double a, b, c, e;
};

/// The equation that each model solves. Of model 5 the cam's side is that of model 1.
Equation Equation_of(int model, const Values& v)
{
    const auto simple = [](double k, double m, double z) {
        const double w = std::sqrt(k / m);
        return Equation{2 * z * w, w * w, 2 * z * w, w * w};
    };
    switch (model) {
    case 1:
        return simple(v.k1, v.m1, v.z2);
    case 2: {
        const double w1 = std::sqrt(v.k1 / v.m1), w2 = std::sqrt((v.k1 + v.k2) / v.m1);
        return {2 * v.z2 * w2, w2 * w2, 2 * v.z1 * w1, w1 * w1};
    }
    case 3:
        return simple(v.k2, v.m1, v.z2);
    case 4:
        return simple(v.k2, v.m2, v.z2);
    default:
        return simple(v.k1 + v.k2, v.m2, v.z2);
    }
}

/// The cam between its points, as straight lines, per second.
struct Straight_Cam {
    std::vector<double> S = Row_of(var::S);
    std::vector<double> V = Row_of(var::V);
    double omega = design.motion.Shaft_speed;
    double step = design.motion.Deltatheta;

    double At(const std::vector<double>& row, double t) const
    {
        double theta = std::fmod(omega * t * 180 / pi, 360.0) / step;
        const auto i = std::min(static_cast<std::size_t>(theta), row.size() - 2);
        theta -= static_cast<double>(i);
        return row[i] + (row[i + 1] - row[i]) * theta;
    }
};

struct Response_Rows {
    std::vector<double> x, v, a;
};

/// The second turn of an equation from rest, by the method of constant average acceleration over fixed, fine steps.
Response_Rows Newmark(const Equation& q, const Straight_Cam& cam)
{
    const double period = 2 * pi / cam.omega;
    const auto points = static_cast<int>(cam.S.size()) - 1;
    constexpr int fine = 40;  // steps between two points
    const double h = period / points / fine;
    const auto force = [&](double t) { return q.c * cam.At(cam.V, t) + q.e * cam.At(cam.S, t); };
    double x = 0.0, v = 0.0, a = force(0.0);
    Response_Rows rows;
    for (int k = 0; k <= 2 * points * fine; ++k) {
        if (k >= points * fine && k % fine == 0) {
            rows.x.push_back(x);
            rows.v.push_back(v);
            rows.a.push_back(a);
        }
        const double next = (force((k + 1) * h) - q.a * (v + h / 2 * a) - q.b * (x + h * v + h * h / 4 * a)) /
                            (1 + q.a * h / 2 + q.b * h * h / 4);
        x += h * v + h * h / 4 * (a + next);
        v += h / 2 * (a + next);
        a = next;
    }
    return rows;
}

class Vibration : public ::testing::Test {
protected:
    void SetUp() override { Make(); }
    void TearDown() override { design = {}; }

    static void Make(int base = 1, bool translating = true, double omega = 30.0)
    {
        Cam_Maker maker;
        maker.time_base = base;
        maker.translating = translating;
        maker.omega = omega;
        maker.lift = 15.0;
        maker.Make();
        Use({});
    }
    /// A run without the forces, as the screen makes it behind them.
    static bool Run(int model, double eps = 1e-3)
    {
        d().Model_Type = model;
        Vibration_Run run;
        run.eps = eps;
        Step_Counts steps;
        return Model_Setup(design) && Solve_Model(design, run, steps) && Model_Results(design);
    }

    Script script_;
};

// ---- frequencies and damping

TEST_F(Vibration, frequencies_and_damping_of_each_model)
{
    const Values v;
    const auto root = [](double x) { return std::sqrt(x); };
    struct Case {
        int model;
        double w1, w2, critical1, critical2, c1, c2, speed_over;
    };
    const double series = v.k1 * v.k2 / (v.k1 + v.k2);
    const double w1_2 = root(v.k1 / v.m1), w2_2 = root((v.k1 + v.k2) / v.m1);
    const double w1_3 = root(series / v.m1), w2_3 = root(v.k2 / v.m1);
    const double w1_4 = root(v.k1 / v.m1), w2_4 = root(v.k2 / v.m2);
    const double w1_5 = root(v.k2 / v.m2), w2_5 = root((v.k1 + v.k2) / v.m2);
    for (const Case& c :
         {Case{1, 0, root(v.k1 / v.m1), 2 * v.m1 * root(v.k1 / v.m1), 0, v.z1 * 2 * v.m1 * root(v.k1 / v.m1), 0,
               root(v.k1 / v.m1)},
          Case{2, w1_2, w2_2, 2 * v.m1 * w2_2, 2 * v.m1 * w1_2, 2 * v.m1 * v.z2 * w2_2 - 2 * v.m1 * v.z1 * w1_2,
               2 * v.m1 * v.z1 * w1_2, root(v.k2 / v.m1)},
          Case{3, w1_3, w2_3, 2 * v.m1 * w1_3, 2 * v.m1 * w2_3, v.z1 * 2 * v.m1 * w1_3, v.z2 * 2 * v.m1 * w2_3, w1_3},
          Case{4, w1_4, w2_4, 2 * v.m1 * w1_4, 2 * v.m2 * w2_4, v.z1 * 2 * v.m1 * w1_4, v.z2 * 2 * v.m2 * w2_4, w1_4},
          Case{5, w1_5, w2_5, 2 * v.m2 * w1_5, 2 * v.m2 * w2_5, 2 * v.m2 * v.z1 * w1_5,
               2 * v.m2 * v.z2 * w2_5 - 2 * v.m2 * v.z1 * w1_5, w1_5}}) {
        d().Model_Type = c.model;
        ASSERT_TRUE(Model_Setup(design));
        EXPECT_FLOAT_EQ(d().Omega(1).Bits(), static_cast<float>(c.w1)) << c.model;
        EXPECT_FLOAT_EQ(d().Omega(2).Bits(), static_cast<float>(c.w2)) << c.model;
        EXPECT_NEAR(d().Omega_Sq(1), c.w1 * c.w1, 1e-6 * c.w2 * c.w2) << c.model;
        EXPECT_NEAR(d().Omega_Sq(2), c.w2 * c.w2, 1e-6 * c.w2 * c.w2) << c.model;
        EXPECT_FLOAT_EQ(d().Crit_Damping(1).Bits(), static_cast<float>(c.critical1)) << c.model;
        EXPECT_FLOAT_EQ(d().Crit_Damping(2).Bits(), static_cast<float>(c.critical2)) << c.model;
        EXPECT_NEAR(d().Damping_C(1), c.c1, 1e-5 * std::abs(c.critical1)) << c.model;
        EXPECT_NEAR(d().Damping_C(2), c.c2, 1e-5 * std::abs(c.critical1)) << c.model;
        EXPECT_FLOAT_EQ(d().Freq_Ratio.Bits(), static_cast<float>(30.0 / c.speed_over)) << c.model;
        EXPECT_NEAR(Natural_Hertz(design), (c.model == 2 ? c.w1 : c.w2) / (2 * pi), 1e-4);
        // the shortest segment is the dwell of 60 degrees
        EXPECT_NEAR(d().Gamma_Ratio, 60.0 * pi / 180 / 30.0 * Natural_Hertz(design), 1e-5);
    }
}

TEST_F(Vibration, a_mass_or_a_speed_of_zero_is_error_11)
{
    d().Mass_m(1) = 0.0;
    for (const int model : {1, 2, 3}) {
        d().Model_Type = model;
        script_.Expect(testing::Error_Box(11, "Division by zero", "Model_Setup"));
        EXPECT_FALSE(Model_Setup(design));
    }
    EXPECT_THROW(
        {
            design.motion.Shaft_speed = 0.0;
            Cam_Period(design);
        },
        Fault);
}

// ---- the response against an independent solution

class Each_Model : public Vibration, public ::testing::WithParamInterface<int> {};

TEST_P(Each_Model, follows_its_equation_solved_by_another_method_from_rest)
{
    const int model = GetParam();
    const Straight_Cam cam;
    const Response_Rows expected = Newmark(Equation_of(model, {}), cam);
    ASSERT_TRUE(Run(model, 1e-6));
    EXPECT_TRUE(f().Modelflag);
    Expect_Near(Row_of(var::Response_X), expected.x, 2e-4, "x");
    Expect_Near(Row_of(var::Response_Xdot), expected.v, 1e-3, "v");
    Expect_Near(Row_of(var::Response_Xddot), expected.a, 2e-2, "a");  // straight between the steps of the integration
    for (int i = 0; i <= 360; ++i)
        EXPECT_NEAR(Data(var::Response_Error, i), Data(var::S, i) - Data(var::Response_X, i), 2e-3) << i;
}

TEST_P(Each_Model, of_the_default_accuracy_stays_within_a_percent)
{
    const int model = GetParam();
    const Response_Rows expected = Newmark(Equation_of(model, {}), Straight_Cam{});
    ASSERT_TRUE(Run(model));
    Expect_Near(Row_of(var::Response_X), expected.x, 3e-3, "x");
    Expect_Near(Row_of(var::Response_Xdot), expected.v, 1e-2, "v");
}

TEST_P(Each_Model, comes_to_the_same_rows_in_every_time_base)
{
    const int model = GetParam();
    std::vector<std::vector<double>> rows;
    for (const int base : {1, 2, 3}) {
        Make(base);
        ASSERT_TRUE(Run(model, 1e-5));
        const double V = base == 1 ? 1.0 : base == 2 ? 30.0 * 180 / pi : 30.0;
        const double A = base == 1 ? 1.0 : base == 2 ? 900.0 * 180 / pi : 900.0;  // one factor of 180 / pi
        std::vector<double> x = Row_of(var::Response_X), v = Row_of(var::Response_Xdot),
                            a = Row_of(var::Response_Xddot);
        std::ranges::for_each(v, [V](double& value) { value *= V; });
        std::ranges::for_each(a, [A](double& value) { value *= A; });
        if (base == 1) {
            rows = {x, v, a};
            continue;
        }
        Expect_Near(x, rows[0], 3e-4, "x");
        Expect_Near(v, rows[1], 1e-3, "v");
        Expect_Near(a, rows[2], 1e-2, "a");
    }
}

TEST_P(Each_Model, follows_an_arm_in_degrees)
{
    const int model = GetParam();
    Make(1, false);
    const Response_Rows expected = Newmark(Equation_of(model, {}), Straight_Cam{});
    ASSERT_TRUE(Run(model, 1e-6));
    Expect_Near(Row_of(var::Response_X), expected.x, 2e-4, "x");
}

INSTANTIATE_TEST_SUITE_P(Of_the_Follower_Train, Each_Model, ::testing::Values(1, 2, 3, 4, 5),
                         [](const auto& of) { return "model_" + std::to_string(of.param); });

TEST_F(Vibration, the_steady_state_is_the_sum_of_the_harmonics_answers)
{
    Use({.z1 = 0.2, .z2 = 0.2});
    ASSERT_TRUE(Run(3, 1e-6));
    const Equation q = Equation_of(3, {.z1 = 0.2, .z2 = 0.2});
    const std::vector<double> S = Row_of(var::S);
    constexpr int N = 360;
    std::vector<double> x(N + 1, 0.0);
    for (int n = 0; n <= 60; ++n) {
        std::complex<double> c{};
        for (int i = 0; i < N; ++i)
            c += S[static_cast<std::size_t>(i)] * std::polar(1.0, -2 * pi * n * i / N);
        c *= (n == 0 ? 1.0 : 2.0) / N;
        const double W = 30.0 * n;
        const std::complex<double> H =
            (std::complex<double>{q.e, q.c * W}) / std::complex<double>{q.b - W * W, q.a * W};
        for (int i = 0; i <= N; ++i)
            x[static_cast<std::size_t>(i)] += (H * c * std::polar(1.0, 2 * pi * n * i / N)).real();
    }
    Expect_Near(Row_of(var::Response_X), x, 3e-4, "x");
}

TEST_F(Vibration, model_1_reads_the_second_damping_ratio)
{
    ASSERT_TRUE(Run(1));
    const std::vector<double> x = Row_of(var::Response_X);
    d().Zeta(1) = 0.9;  // the one that its field fills
    ASSERT_TRUE(Run(1));
    EXPECT_EQ(Row_of(var::Response_X), x);
    d().Zeta(2) = 0.3;
    ASSERT_TRUE(Run(1));
    EXPECT_NE(Row_of(var::Response_X), x);
}

TEST_F(Vibration, model_5_stands_at_the_cams_position_where_mechanics_has_its_share)
{
    ASSERT_TRUE(Run(5, 1e-5));
    EXPECT_NEAR(Data(var::Response_X, 165), 15.0, 0.05) << "at the end of the upper dwell";
    ASSERT_TRUE(Run(2, 1e-5));
    EXPECT_NEAR(Data(var::Response_X, 165), 15.0 * 3 / 8, 0.05) << "k1 / (k1 + k2) of it";
}

TEST_F(Vibration, the_start_value_is_the_masss_first_displacement)
{
    d().x_Initial = 2.5;
    ASSERT_TRUE(Run(3));
    EXPECT_EQ(design.results.Ode_States(1, 1), 2.5);
    EXPECT_EQ(design.results.Ode_States(2, 1), 0.0);
}

// ---- the right-hand side

TEST_F(Vibration, the_right_side_reads_the_cam_on_a_straight_line_between_its_points)
{
    d().Model_Type = 2;
    ASSERT_TRUE(Model_Setup(design));
    const Vibration_Model model(design);
    const double degree = pi / 180 / 30.0;
    const Equation q = Equation_of(2, {});
    for (const double angle : {40.3, 360.0 + 40.3, 359.5}) {
        const auto i = static_cast<int>(std::fmod(angle, 360.0));
        const double share = std::fmod(angle, 1.0);
        const double S = Data(1, i) + (Data(1, i + 1) - Data(1, i)) * share;
        const double V = Data(2, i) + (Data(2, i + 1) - Data(2, i)) * share;
        Ode_Vector dydx{};
        model.Slope(model.At(angle * degree), {0.7, -3.0}, dydx);
        EXPECT_EQ(dydx[0], -3.0);
        EXPECT_NEAR(dydx[1], q.c * V + q.e * S + q.a * 3.0 - q.b * 0.7, 2e-4 * q.b);
    }
}

TEST_F(Vibration, the_right_side_leaves_the_derivative_where_the_angle_rounds_to_a_whole_turn)
{
    d().Model_Type = 3;
    ASSERT_TRUE(Model_Setup(design));
    const Vibration_Model model(design);
    const double turn = 360.0 / (30.0 * Deg_per_Rad);
    Ode_Vector dydx{123.0, 456.0};
    model.Slope(model.At(turn * (1 - 1e-9)), {1.0, 1.0}, dydx);
    EXPECT_EQ(dydx, (Ode_Vector{123.0, 456.0}));
    model.Slope(model.At(turn * (1 - 1e-6)), {1.0, 1.0}, dydx);
    EXPECT_EQ(dydx[0], 1.0);
    // The trajectory takes the last point there.
    EXPECT_NEAR(model.Reached_at(turn * (1 - 1e-9), 0.0, 0.0).S, Data(1, 360), 1e-6);
}

TEST_F(Vibration, the_reserved_model_of_the_shafts_speed_has_one_equation)
{
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Torque_Integral, i) = 10.0 * i;
    d().Model_Type = 6;
    d().Torque_Integral_Max = 3600.0;
    d().Preload = 20.0;
    d().Kspring(1) = 4.0;
    d().Mass = 2.0;
    const Vibration_Model model(design);
    Ode_Vector dydx{0.0, 99.0};
    const double t = 200.5 * pi / 180 / 30.0;
    model.Slope(model.At(t), {5.0, 6.0}, dydx);
    const double S = (Data(1, 200) + Data(1, 201)) / 2, E = 3600.0 - 2005.0;
    EXPECT_NEAR(dydx[0], std::sqrt((2 * 30.0 * E - S * S * 4.0 - 2 * 20.0 * S) / 2.0), 1e-3);
    EXPECT_EQ(dydx[1], 99.0);
}

TEST_F(Vibration, a_table_without_the_cycles_points_is_error_9)
{
    design.motion.Deltatheta = 0.5;
    d().Model_Type = 3;
    ASSERT_TRUE(Model_Setup(design));
    script_.Expect(testing::Error_Box(9, "Index out of bounds", "Solve_Model"));
    Step_Counts steps;
    EXPECT_FALSE(Solve_Model(design, {}, steps));
    EXPECT_FALSE(f().Modelflag);
}

// ---- mapping back onto the cam angle

/// A trajectory of the test's own: x = t, so that a row tells the time it was taken at.
void Lay_Trajectory(double from, double to, int points)
{
    d().Ode_Max_Steps = points;
    d().Ode_Count = points;
    design.results.Ode_Time.Dimension(points);
    design.results.Ode_States.Dimension(3, points);
    for (int j = 1; j <= points; ++j) {
        const double t = from + (to - from) * (j - 1) / (points - 1);
        design.results.Ode_Time(j) = t;
        for (int row = 0; row <= 3; ++row)
            design.results.Ode_States(row, j) = t * (row + 1);
    }
}

TEST_F(Vibration, rows_29_to_32_are_the_second_turn_on_straight_lines)
{
    d().Model_Type = 1;
    const double T = 2 * pi / 30.0;
    Lay_Trajectory(0.0, 2 * T, 97);
    Model_Force(design);
    for (const int i : {0, 1, 100, 359, 360})
        for (int row = 0; row <= 3; ++row)
            EXPECT_NEAR(Data(29 + row, i), T * (1 + i / 360.0) * (row + 1), 1e-6) << i;
}

TEST_F(Vibration, beyond_the_last_stored_point_the_last_value_is_held)
{
    d().Model_Type = 1;
    const double T = 2 * pi / 30.0;
    Lay_Trajectory(0.0, 1.5 * T, 50);
    Model_Force(design);
    EXPECT_NEAR(Data(30, 90), 1.25 * T * 2, 1e-6);
    for (const int i : {181, 270, 360})
        EXPECT_NEAR(Data(30, i), 1.5 * T * 2, 1e-6);
    EXPECT_FALSE(f().Calc_Abort);
}

TEST_F(Vibration, a_trajectory_that_has_not_advanced_is_told_of)
{
    const Expected_Box box{
        " The solution has not advanced beyond time zero\n"
        "Something is wrong with the solution. - Cannot continue.",
        Buttons::OK, Symbol::exclamation};
    d().Model_Type = 3;
    Lay_Trajectory(0.0, 0.0, 10);
    script_.Expect(box);
    EXPECT_FALSE(Model_Results(design));
    EXPECT_TRUE(f().Calc_Abort);
    d().Ode_Count = 0;
    f().Calc_Abort = false;
    script_.Expect(box);
    EXPECT_FALSE(Model_Results(design));
}

// ---- dynamic force

/// Newtons, by the formulas of mechanics per second, lengths in metres.
double Force_at(int model, const Values& v, int i, double per_length)
{
    const double x = Data(30, i) / per_length, xd = Data(31, i) / per_length, xdd = Data(32, i) / per_length;
    const double S = Data(1, i) / per_length, V = Data(2, i) / per_length, A = Data(3, i) / per_length;
    switch (model) {
    case 1:
        return v.m1 * xdd;
    case 2: {
        const double c2 = 2 * v.m1 * v.z1 * std::sqrt(v.k1 / v.m1);
        return v.m1 * xdd + c2 * xd + v.k2 * x + v.preload;
    }
    case 3: {
        const double c1 = v.z1 * 2 * v.m1 * std::sqrt(v.k1 * v.k2 / (v.k1 + v.k2) / v.m1);
        return v.m1 * xdd + c1 * xd + v.k1 * x + v.preload;
    }
    case 4: {
        const double c1 = v.z1 * 2 * v.m1 * std::sqrt(v.k1 / v.m1), c2 = v.z2 * 2 * v.m2 * std::sqrt(v.k2 / v.m2);
        return (c1 + c2) * V + v.m1 * A + (v.k1 + v.k2) * S - c2 * xd - v.k2 * x + v.preload;
    }
    default: {
        const double c1 = 2 * v.m2 * v.z1 * std::sqrt(v.k2 / v.m2);
        const double c2 = 2 * v.m2 * v.z2 * std::sqrt((v.k1 + v.k2) / v.m2) - c1;
        return v.m2 * xdd + v.m1 * A + c2 * xd + v.k2 * x + v.preload;
    }
    }
}

TEST_P(Each_Model, has_the_force_of_its_masses_springs_and_dampers)
{
    const int model = GetParam();
    for (const int units : {5, 4, 3, 1}) {
        Make();
        design.identity.WhichUnit = units;
        Use({.preload = 5000.0});
        f().Separation_Answer = 5;
        ASSERT_TRUE(Run(model));
        const double per_length = units == 5 ? 1000.0 : units == 4 ? 100.0 : 1.0;
        if (units == 5)
            for (int i = 0; i <= 360; ++i) {
                const double F = std::max(Force_at(model, {.preload = 5000.0}, i, per_length), model >= 4 ? 0.0 : -1e9);
                EXPECT_NEAR(Data(33, i), F, 1e-3 * std::abs(F) + 0.5) << i;
            }
        EXPECT_EQ(d().Force_Dyn_Max, Highest(Row_of(33)));
        EXPECT_EQ(d().Force_Dyn_Min, Lowest(Row_of(33)));
        // In longer units the same numbers are longer motions: the springs' part grows as the unit.
        if (units != 5) {
            EXPECT_NEAR(Data(33, 165) - (model == 1 ? 0.0 : 5000.0), Force_at(model, {.preload = 0.0}, 165, per_length),
                        1e-3 * std::abs(Force_at(model, {.preload = 0.0}, 165, per_length)) + 0.5);
        }
    }
}

TEST_F(Vibration, an_arms_force_takes_its_length)
{
    Make(1, false);
    Use({.preload = 5000.0});
    ASSERT_TRUE(Run(3));
    const double per_length = 1000.0 / (80.0 * pi / 180);  // an arm of 80 mm, degrees to metres
    for (const int i : {30, 100, 165, 220})
        EXPECT_NEAR(Data(33, i), Force_at(3, {.preload = 5000.0}, i, per_length), 0.5);
}

TEST_F(Vibration, outside_the_base_of_seconds_the_force_takes_the_masss_motion_as_its_rows_have_it)
{
    Make(3);
    Use({.preload = 5000.0});
    ASSERT_TRUE(Run(3));
    // The rows are per radian; mechanics has omega and its square on them.
    const double c1 = d().Damping_C(1);
    for (const int i : {30, 55, 100, 220}) {
        const double F = (Data(32, i) * 1.5 + Data(31, i) * c1 + Data(30, i) * 300000.0) / 1000.0 + 5000.0;
        EXPECT_NEAR(Data(33, i), F, 1e-2);
    }
    // The cam's own motion is brought to seconds.
    ASSERT_TRUE(Run(4));
    const double c2 = d().Damping_C(2), c = d().Damping_C(1) + c2;
    for (const int i : {30, 55, 100, 220}) {
        const double F = (c * Data(2, i) * 30.0 + Data(3, i) * 900.0 * 1.5 + 800000.0 * Data(1, i) - c2 * Data(31, i) -
                          500000.0 * Data(30, i)) /
                             1000.0 +
                         5000.0;
        EXPECT_NEAR(Data(33, i), F, 0.1);
    }
}

// ---- jumping off the cam

TEST_F(Vibration, model_1_ignores_the_preload_and_never_jumps)
{
    Use({.preload = 0.0});
    ASSERT_TRUE(Run(1));
    const std::vector<double> force = Row_of(33);
    EXPECT_LT(d().Force_Dyn_Min, 0.0);
    EXPECT_FALSE(f().Separated);
    d().Preload = 1e5;
    ASSERT_TRUE(Run(1));
    EXPECT_EQ(Row_of(33), force);
}

int Jumps_of(const std::vector<double>& force)
{
    return static_cast<int>(std::ranges::count_if(force, [](double F) { return F <= 0.0; }));
}

TEST_F(Vibration, a_jump_shows_the_negative_force_of_models_2_and_3_and_zero_of_models_4_and_5)
{
    for (const int model : {2, 3, 4, 5}) {
        Use({.m1 = 30.0, .m2 = 30.0, .preload = 0.0});
        f().Separated = false;
        f().Separation_Answer = 5;  // asks nothing
        ASSERT_TRUE(Run(model)) << model;
        EXPECT_TRUE(f().Separated) << model;
        EXPECT_GT(Jumps_of(Row_of(33)), 0) << model;
        if (model <= 3)
            EXPECT_LT(d().Force_Dyn_Min, 0.0) << model;
        else
            EXPECT_EQ(d().Force_Dyn_Min, 0.0) << model;
    }
}

TEST_F(Vibration, a_jump_asks_by_the_last_answer)
{
    Use({.m1 = 30.0, .preload = 0.0});
    f().Separation_Answer = 5;
    ASSERT_TRUE(Run(3));
    const std::vector<double> force = Row_of(33);
    const int jumps = Jumps_of(force);
    ASSERT_GT(jumps, 3);

    std::vector<std::string> boxes;
    Answer answer = Answer::Retry;
    Host host;
    host.messenger = [&](const Message& box) {
        EXPECT_EQ(box.buttons, Buttons::Abort_Retry_Ignore);
        boxes.push_back(box.text.substr(0, box.text.find('\n')));
        return answer;
    };
    const Host before = Install_Host(host);
    // Retry: asks at each point.
    f().Separation_Answer = 4;
    EXPECT_TRUE(Run(3));
    EXPECT_EQ(static_cast<int>(boxes.size()), jumps);
    const auto first = std::ranges::find_if(force, [](double F) { return F <= 0.0; }) - force.begin();
    EXPECT_EQ(boxes.front(), "The cam and follower have separated at Theta =  " + std::to_string(first) + " deg");
    // Ignore: once.
    boxes.clear();
    answer = Answer::Ignore;
    f().Separation_Answer = 4;
    EXPECT_TRUE(Run(3));
    EXPECT_EQ(boxes.size(), 1U);
    // Abort: at the next such point the run ends.
    boxes.clear();
    answer = Answer::Abort;
    f().Separation_Answer = 4;
    EXPECT_FALSE(Run(3));
    EXPECT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(f().Calc_Abort);
    Install_Host(before);
}

// ---- the solver's choice

TEST_F(Vibration, Gear_reports_its_status_and_calculates_nothing)
{
    d().Model_Type = 3;
    ASSERT_TRUE(Model_Setup(design));
    Step_Counts steps;
    EXPECT_FALSE(Solve_Model(design, {}, steps, Ode_Method::Gear, 0));
    EXPECT_FALSE(f().Modelflag);
    EXPECT_FALSE(f().Calc_Abort);
    EXPECT_EQ(d().Ode_Count, 0);
    script_.Expect({Solver_Status_Text(5) + "in 0 total steps"});
    EXPECT_FALSE(Solve_Model(design, {}, steps, Ode_Method::Gear, 5));
    EXPECT_TRUE(f().Calc_Abort);
}

TEST_F(Vibration, a_cancelled_run_leaves_the_flag_down)
{
    d().Model_Type = 3;
    ASSERT_TRUE(Run(3));
    ASSERT_TRUE(f().Modelflag);
    Vibration_Run run;
    run.smallest_step = 1.0;
    script_.Expect({"Runge-Kutta step size has become smaller than minimum", Buttons::Retry_Cancel, Symbol::exclamation,
                    Answer::Cancel});
    Step_Counts steps;
    EXPECT_FALSE(Solve_Model(design, run, steps));
    EXPECT_FALSE(f().Modelflag);
    EXPECT_TRUE(f().Calc_Abort);
}

TEST_F(Vibration, a_shorter_run_leaves_nothing_of_a_longer_one_behind)
{
    ASSERT_TRUE(Run(3, 1e-6));
    const int longer = d().Ode_Count;
    ASSERT_TRUE(Run(3));
    const int count = d().Ode_Count;
    ASSERT_LT(count, longer);
    const Results_Group& r = design.results;
    EXPECT_GT(r.Ode_Time(count), 0.0);
    for (int j = count + 1; j <= r.Ode_Time.Last(); ++j) {
        ASSERT_EQ(r.Ode_Time(j), 0.0) << j;
        for (int row = 0; row <= r.Ode_States.Last_Row(); ++row)
            ASSERT_EQ(r.Ode_States(row, j), 0.0) << row << ", " << j;
    }
}

TEST_F(Vibration, an_error_in_mid_run_leaves_the_flag_down)
{
    Use({.z2 = -3.0});  // a damper that drives
    d().Model_Type = 3;
    ASSERT_TRUE(Model_Setup(design));
    script_.Expect(testing::Error_Box(6, "Overflow", "Solve_Model"));
    Step_Counts steps;
    EXPECT_FALSE(Solve_Model(design, {}, steps));
    EXPECT_FALSE(f().Modelflag);
}

TEST_F(Vibration, the_save_interval_is_the_run_over_its_steps)
{
    d().Model_Type = 3;
    d().Ode_Max_Steps = 4000;
    ASSERT_TRUE(Run(3));
    EXPECT_FLOAT_EQ(d().Ode_Save_Interval.Bits(), static_cast<float>(2 * 2 * pi / 30.0 / 4000));
    EXPECT_EQ(design.results.Ode_Time.Last(), 4000);
    EXPECT_EQ(design.results.Ode_States.Last_Point(), 4000);
}

// ---- transients

TEST_F(Vibration, a_transient_that_dies_out_is_not_told_of)
{
    ASSERT_TRUE(Run(3, 1e-6));
    const Transient transient = Find_Transient(design);
    EXPECT_TRUE(transient.died_out) << transient.share;
    Tell_Transient(design, transient);
}

TEST_F(Vibration, a_transient_is_measured_by_the_states_a_turn_apart)
{
    // From a large start value: of the free vibration x0 exp(-zeta w t) is left after a turn.
    const Values v{.z1 = 0.006, .z2 = 0.006};
    Use(v);
    d().x_Initial = 8.0;
    ASSERT_TRUE(Run(3, 1e-6));
    const double w = std::sqrt(v.k2 / v.m1), T = 2 * pi / 30.0;
    const double decay = v.z2 * w * T;
    const double left = 8.0 * std::exp(-decay);
    const double by_x = left / Range(Row_of(30)), by_v = left * w / Range(Row_of(31)),
                 by_a = left * w * w / Range(Row_of(32));
    const double largest = std::max({by_x, by_v, by_a});
    const Transient transient = Find_Transient(design);
    EXPECT_FALSE(transient.died_out);
    // The estimate is an upper bound that is nearly reached: between (1 - q) / (1 - q) and (1 + q) / (1 - q).
    const double q = std::exp(-decay);
    EXPECT_GT(transient.share, 0.95 * largest);
    EXPECT_LT(transient.share, 1.05 * largest * (1 + q) / (1 - q));
    EXPECT_EQ(transient.cycles, 1 + std::ceil(std::log(transient.share / 0.01) / decay));
    const int percent = static_cast<int>(std::floor(transient.share * 100 + 0.5));
    script_.Expect(
        {"Two cam cycles were not enough for the transient of the start to die out: \n"
         "at the end of the first it is up to " +
         std::to_string(percent) +
         " % of the response.\n"
         "It would take " +
         std::to_string(static_cast<int>(transient.cycles)) +
         " cycles until it is below 1 %.\n"
         "The results over the cam angle are those of the second cycle."});
    Tell_Transient(design, transient);
    // After so many turns the free vibration is below the limit, and not long before.
    EXPECT_LE(largest * std::exp(-decay * (transient.cycles - 1)), Transient_Limit);
    EXPECT_GT(largest * std::exp(-decay * (transient.cycles - 2)) * (1 + q) / (1 - q), Transient_Limit);
}

TEST_F(Vibration, without_damping_a_transient_never_dies_out)
{
    Use({.z1 = 0.0, .z2 = 0.0});
    d().x_Initial = 8.0;
    ASSERT_TRUE(Run(3, 1e-6));
    const Transient transient = Find_Transient(design);
    EXPECT_FALSE(transient.died_out);
    EXPECT_EQ(transient.cycles, 0.0);
    script_.Expect(
        {"Two cam cycles were not enough for the transient of the start to die out: \n"
         "at the end of the first it is up to " +
         std::to_string(static_cast<int>(std::floor(transient.share * 100 + 0.5))) +
         " % of the response.\n"
         "Without damping it never dies out.\n"
         "The results over the cam angle are those of the second cycle."});
    Tell_Transient(design, transient);
}

// ---- polydyne

/// A harmonic motion over the whole turn.
class Polydyne_Cam : public Vibration {
protected:
    static constexpr double h = 20.0;
    static constexpr double omega = 10.0;

    static void Lay(int base)
    {
        Make(base, true, omega);
        Lay_Harmonic(base, h, omega);
    }
    /// The two coefficients as they are meant, of model 3 by default.
    static double C1(double m, double k) { return 36.0 * (omega / 6.283185308) * (omega / 6.283185308) * m / k; }
};

TEST_F(Polydyne_Cam, displacement_is_the_motion_and_a_share_of_its_acceleration)
{
    const Values v;
    struct Case {
        int model;
        double c0, c1;
    };
    for (const int base : {1, 2, 3})
        for (const Case& c :
             {Case{1, 0.0, 0.0}, Case{2, (v.k1 + v.k2) / v.k1, C1(v.m1, v.k1)}, Case{3, 1.0, C1(v.m1, v.k2)},
              Case{4, 1.0, C1(v.m2, v.k2)}, Case{5, (v.k1 + v.k2) / v.k1, C1(v.m1, v.k1)}}) {
            Lay(base);
            d().Model_Type = c.model;
            design.results.CalcData(var::Response_X, 77) = 1.25;
            ASSERT_TRUE(Calc_Polydyne(design));
            for (int i = 0; i <= 360; i += 7) {
                const double t = i * pi / 180;
                const double S = h * (1 - std::cos(t)) / 2 * c.c0 + h * std::cos(t) / 2 * c.c1;
                EXPECT_NEAR(Data(var::Polydyne_S, i), S, 1e-5 * h) << c.model << " " << base;
            }
            EXPECT_EQ(Data(var::Response_Error, 77), double{Single(Data(var::Polydyne_S, 77) - 1.25)});
            EXPECT_EQ(d().Polydyne_Max, Highest(Row_of(var::Polydyne_S)));
            EXPECT_EQ(d().Polydyne_Min, Lowest(Row_of(var::Polydyne_S)));
        }
}

TEST_F(Polydyne_Cam, velocity_and_acceleration_are_its_derivatives_per_radian_and_per_degree)
{
    const double c1 = C1(1.5, 500000.0);
    for (const int base : {2, 3}) {
        Lay(base);
        d().Model_Type = 3;
        ASSERT_TRUE(Calc_Polydyne(design));
        const double back = base == 2 ? pi / 180 : 1.0;
        for (int i = 0; i <= 360; i += 7) {
            const double t = i * pi / 180;
            EXPECT_NEAR(Data(var::Polydyne_V, i), h / 2 * std::sin(t) * (1 - c1) * back, 1e-5 * h) << base;
            EXPECT_NEAR(Data(var::Polydyne_A, i), h / 2 * std::cos(t) * (1 - c1) * back, 1e-5 * h) << base;
        }
    }
}

TEST_F(Polydyne_Cam, per_second_jerk_and_ping_go_with_the_square_of_the_speed)
{
    const double c1 = C1(1.5, 500000.0);
    Lay(1);
    d().Model_Type = 3;
    ASSERT_TRUE(Calc_Polydyne(design));
    for (int i = 0; i <= 360; i += 7) {
        const double t = i * pi / 180;
        // Mechanics has c1 where omega c1 and omega^2 c1 stand.
        EXPECT_NEAR(Data(var::Polydyne_V, i), h / 2 * std::sin(t) * (1 - c1 * omega) * omega, 1e-4 * h * omega);
        EXPECT_NEAR(Data(var::Polydyne_A, i), h / 2 * std::cos(t) * (1 - c1 * omega * omega) * omega * omega,
                    1e-4 * h * omega * omega);
    }
}

TEST_F(Polydyne_Cam, through_the_model_again_gives_the_motion_within_what_its_coefficient_leaves_out)
{
    // A slow natural frequency, so that the train matters: omega / Omega = 0.2.
    Lay(3);
    const Values v{.m1 = 2.0, .k2 = 2.0 * 2500.0, .z2 = 0.08};
    Use(v);
    d().Model_Type = 3;
    ASSERT_TRUE(Model_Setup(design));
    const double r = 0.2;
    const auto answer = [&](double c1) {  // of the motion's one harmonic
        const std::complex<double> H =
            std::complex<double>{1.0, 2 * v.z2 * r} / std::complex<double>{1 - r * r, 2 * v.z2 * r};
        return std::vector<std::complex<double>>{h / 2, -h / 2 * (1 - c1) * H};
    };
    const auto row = [&](const std::vector<std::complex<double>>& parts) {
        std::vector<double> x;
        for (int i = 0; i <= 360; ++i)
            x.push_back(parts[0].real() + (parts[1] * std::polar(1.0, i * pi / 180)).real());
        return x;
    };
    // The transient of the start is long gone after many turns; the second turn's is not, so let it start there.
    const auto steady = [&](double c1) {
        const auto parts = answer(c1);
        d().x_Initial = parts[0].real() + parts[1].real();
    };
    steady(0.0);
    ASSERT_TRUE(Run(3, 1e-6));
    Expect_Near(Row_of(var::Response_X), row(answer(0.0)), 2e-3, "the cam of the motion itself");
    ASSERT_TRUE(Calc_Polydyne(design));
    f().Polydyne_Calc = true;
    const double c1 = 36.0 / (6.283185308 * 6.283185308) * r * r;
    steady(c1);
    ASSERT_TRUE(Run(3, 1e-6));
    Expect_Near(Row_of(var::Response_X), row(answer(c1)), 2e-3, "the polydyne cam");
    // With the square of two pi nothing but damping would be left: (1 - r^2) H is 1 at zeta 0.
    std::vector<double> off, plain;
    const auto before = row(answer(0.0));
    for (int i = 0; i <= 360; ++i) {
        off.push_back(std::abs(Data(var::Response_X, i) - Data(var::S, i)));
        plain.push_back(std::abs(before[static_cast<std::size_t>(i)] - Data(var::S, i)));
    }
    const double left = *std::ranges::max_element(off) / *std::ranges::max_element(plain);
    EXPECT_LT(left, 0.1 + 36 * 0.01);
    EXPECT_GT(left, 0.05) << "8.8 % of the correction is left out";
}

TEST_F(Polydyne_Cam, drives_the_model_and_keeps_the_motion_in_the_force)
{
    Lay(3);
    Use({.preload = 5000.0});
    d().Model_Type = 4;
    ASSERT_TRUE(Calc_Polydyne(design));
    f().Polydyne_Calc = true;
    for (int i = 0; i <= 360; ++i) {  // half of the motion, so that the two can be told apart
        design.results.CalcData(var::Polydyne_S, i) = Data(var::S, i) / 2;
        design.results.CalcData(var::Polydyne_V, i) = Data(var::V, i) / 2;
    }
    ASSERT_TRUE(Run(4, 1e-4));
    EXPECT_NEAR(Data(var::Response_X, 180), h / 2, 0.02);
    EXPECT_NEAR(Data(var::Response_Error, 180), 0.0, 0.02) << "of the polydyne cam";
    // The springs of the force are pressed by row 1.
    EXPECT_NEAR(Data(33, 180), (800000.0 * h - 500000.0 * h / 2 - h / 2 * omega * omega * 1.5) / 1000 + 5000, 40.0);
}

TEST_F(Polydyne_Cam, without_a_spring_is_error_11)
{
    Lay(1);
    d().Model_Type = 3;
    d().Kspring(2) = 0.0;
    script_.Expect(testing::Error_Box(11, "Division by zero", "Calc_Polydyne"));
    EXPECT_FALSE(Calc_Polydyne(design));
}

TEST_F(Vibration, the_profile_of_the_motions_own_cam_is_kept)
{
    for (int i = 0; i <= 360; ++i)
        for (int k = 0; k < 4; ++k)
            design.results.CalcData(9 + k, i) = 100 * k + i;
    Keep_Kinematic_Profile(design);
    for (const int i : {0, 17, 360})
        for (int k = 0; k < 4; ++k)
            EXPECT_EQ(Data(25 + k, i), 100 * k + i);
}

}  // namespace
}  // namespace lobemax
