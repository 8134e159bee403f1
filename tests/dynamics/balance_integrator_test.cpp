// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/balance_integrator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

const std::string did_not_converge =
    "\n\nDid not converge.  Took too many steps in the integration routine and has given up.";
const std::string below_minimum = "Runge-Kutta step size has become smaller than minimum";
const std::string hint =
    "If your cam starts with a dwell at zero displacement, that will\n"
    "cause the Runge-Kutta step size to be too small, and it will abort.\n"
    "\n"
    "Start your cam program cycle with a rise, a fall, or a high dwell instead,\n"
    "i.e., phase shift the cam program to do this dynamic analysis.";

/// y'' = -w^2 y from (1, 0): y = cos w t.
struct Oscillator {
    double w = 3.0;
    mutable int calls = 0;
    void operator()(double, const Balance_State& y, Balance_State& dydx) const
    {
        ++calls;
        dydx = {y[1], -w * w * y[0]};
    }
};

class Balance_Steps : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }

    static double Error_at(double t, double eps)
    {
        const Oscillator equation;
        Balance_Accuracy accuracy;
        accuracy.eps = eps;
        Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
        integrator.Start(0.0, {1.0, 0.0});
        for (int k = 1; k <= 10; ++k)
            EXPECT_TRUE(integrator.To(t * k / 10));
        return std::abs(integrator.State()[0] - std::cos(3.0 * t));
    }

    Script script_;
};

TEST_F(Balance_Steps, an_oscillator_keeps_to_the_accuracy_asked)
{
    double before = 1.0;
    for (const double eps : {1e-3, 1e-5, 1e-7}) {
        const double error = Error_at(4.0, eps);
        EXPECT_LT(error, 10 * eps);
        EXPECT_LT(error, before);
        before = error;
    }
}

TEST_F(Balance_Steps, a_polynomial_of_time_is_exact_to_the_fifth_power)
{
    // y' = t^4: the halves and their correction are exact to fifth order, so a single step hits t^5 / 5.
    const auto equation = [](double t, const Balance_State&, Balance_State& dydx) { dydx = {t * t * t * t, 0.0}; };
    Balance_Accuracy accuracy;
    accuracy.eps = 1.0;
    accuracy.start_step = 1.0;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(1.0, {0.2, 1.0});
    ASSERT_TRUE(integrator.To(2.0));
    EXPECT_EQ(integrator.Steps(), 1);
    EXPECT_NEAR(integrator.State()[0], 6.4, 1e-12);
}

TEST_F(Balance_Steps, a_step_that_is_taken_at_once_costs_eleven_derivatives)
{
    const Oscillator equation;
    Balance_Accuracy accuracy;
    accuracy.eps = 1.0;
    accuracy.start_step = 0.01;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 0.0});
    ASSERT_TRUE(integrator.To(0.01));
    EXPECT_EQ(integrator.Steps(), 1);
    EXPECT_EQ(equation.calls, 11);
}

TEST_F(Balance_Steps, a_step_grows_by_four_at_the_most)
{
    const auto equation = [](double, const Balance_State&, Balance_State& dydx) { dydx = {1.0, 0.0}; };
    Balance_Accuracy accuracy;
    accuracy.start_step = 1.0;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 1.0});
    ASSERT_TRUE(integrator.To(1.0 + 4.0 + 16.0));
    EXPECT_EQ(integrator.Steps(), 3);
    EXPECT_NEAR(integrator.State()[0], 22.0, 1e-12);
}

TEST_F(Balance_Steps, too_many_steps_are_told_and_given_up)
{
    const Oscillator equation;
    Balance_Accuracy accuracy;
    accuracy.eps = 1e-6;
    accuracy.max_steps = 5;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 0.0});
    script_.Expect({did_not_converge});
    EXPECT_FALSE(integrator.To(100.0));
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_EQ(integrator.Steps(), 5);
}

TEST_F(Balance_Steps, the_count_of_steps_begins_anew_with_a_motion)
{
    const auto equation = [](double, const Balance_State&, Balance_State& dydx) { dydx = {1.0, 0.0}; };
    Balance_Accuracy accuracy;
    accuracy.start_step = 1.0;
    accuracy.max_steps = 1;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    for (int motion = 1; motion <= 3; ++motion) {
        integrator.Start(0.0, {1.0, 1.0});
        EXPECT_TRUE(integrator.To(1.0));
    }
    EXPECT_EQ(integrator.Steps(), 3);
}

TEST_F(Balance_Steps, a_step_below_the_smallest_asks_and_hints_once)
{
    const Oscillator equation;
    Balance_Accuracy accuracy;
    accuracy.eps = 1e-7;
    accuracy.start_step = 0.001;
    accuracy.min_step = 10.0;  // every step is below it
    accuracy.max_steps = 3;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 0.0});
    script_.Expect({below_minimum, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Retry});
    script_.Expect({hint});
    script_.Expect({below_minimum, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Retry});
    script_.Expect({below_minimum, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Retry});
    script_.Expect({did_not_converge});
    EXPECT_FALSE(integrator.To(100.0));
    EXPECT_TRUE(design.flags.Calc_Abort);
}

TEST_F(Balance_Steps, cancel_at_a_step_below_the_smallest_ends_the_run)
{
    const Oscillator equation;
    Balance_Accuracy accuracy;
    accuracy.min_step = 10.0;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 0.0});
    script_.Expect({below_minimum, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Cancel});
    EXPECT_FALSE(integrator.To(100.0));
    EXPECT_TRUE(design.flags.Calc_Abort);
}

TEST_F(Balance_Steps, a_step_that_does_not_move_the_time_asks)
{
    const auto equation = [](double, const Balance_State&, Balance_State& dydx) { dydx = {0.0, 0.0}; };
    Balance_Accuracy accuracy;
    accuracy.start_step = 1e-16;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(10.0, {0.0, 0.0});
    const std::string asks =
        "\nThe step size has become insignificant in the Runge-Kutta ODE solver.\n Time step =  1E-16  sec,  Time "
        "position =  10  sec\n\nYour system may be too stiff or your accuracy too large. \n\n"
        "Try reducing the system K, changing the mass, or changing accuracy value. ";
    script_.Expect({asks, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Cancel});
    EXPECT_FALSE(integrator.To(11.0));
    EXPECT_TRUE(design.flags.Calc_Abort);

    // Retry takes the step that stood still as one, after the hint.
    accuracy.max_steps = 1;
    Balance_Integrator again(design, Ode_Derivatives(equation), accuracy);
    EXPECT_FALSE(design.flags.Calc_Abort);
    again.Start(10.0, {0.0, 0.0});
    script_.Expect({asks, Buttons::Retry_Cancel, Symbol::exclamation, Answer::Retry});
    script_.Expect({hint});
    script_.Expect({did_not_converge});
    EXPECT_FALSE(again.To(11.0));
}

TEST_F(Balance_Steps, an_interval_that_runs_backwards_is_refused)
{
    const Oscillator equation;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), {});
    integrator.Start(1.0, {1.0, 0.0});
    script_.Expect({"H has gone negative at line 22"});
    EXPECT_FALSE(integrator.To(0.5));
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_EQ(integrator.Steps(), 0);
}

TEST_F(Balance_Steps, an_accuracy_of_zero_is_a_division_by_zero)
{
    const Oscillator equation;
    Balance_Accuracy accuracy;
    accuracy.eps = 0.0;
    Balance_Integrator integrator(design, Ode_Derivatives(equation), accuracy);
    integrator.Start(0.0, {1.0, 0.0});
    try {
        integrator.To(1.0);
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), division_by_zero);
    }
}

}  // namespace
}  // namespace lobemax
