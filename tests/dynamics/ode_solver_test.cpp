// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/ode_steps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "core/startup.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

constexpr double pi = 3.14159265358979323846;

const std::string hint =
    "If your cam starts with a dwell at zero displacement, that will\n"
    "cause the Runge-Kutta step size to be too small, and it will abort.\n"
    "\n"
    "You must start your cam program cycle with a rise or a fall:\n"
    "i.e., phase shift the cam program to do this dynamic analysis.";

Expected_Box Too_Small(Answer answer)
{
    return {"Runge-Kutta step size has become smaller than minimum", Buttons::Retry_Cancel, Symbol::exclamation,
            answer};
}

Expected_Box Insignificant(const std::string& step, const std::string& time, Answer answer)
{
    return {"\nThe step size has become insignificant in the Runge-Kutta ODE solver.\n Time step =  " + step +
                "  sec,  Time position =  " + time +
                "  sec\n\nYour system may be too stiff or your accuracy too large. \n\n"
                "Try reducing the system K, changing the mass, or changing accuracy value. ",
            Buttons::Retry_Cancel, Symbol::exclamation, answer};
}

const Expected_Box did_not_converge{
    "\n\nDid not converge.  Took too many steps in the integration routine and has given up."};

/// x'' + 2 zeta w x' + w^2 x = f(t), which counts how often it is asked.
struct Oscillator {
    double w = 10.0;
    double zeta = 0.0;
    std::function<double(double)> f = [](double) { return 0.0; };
    mutable long calls = 0;

    void operator()(double t, const Ode_Vector& y, Ode_Vector& dydx) const
    {
        ++calls;
        dydx[0] = y[1];
        dydx[1] = f(t) - 2 * zeta * w * y[1] - w * w * y[0];
    }
};

/// The free vibration of an oscillator that starts with x0 and v0.
double Free(const Oscillator& o, double x0, double v0, double t)
{
    const double wd = o.w * std::sqrt(1 - o.zeta * o.zeta);
    return std::exp(-o.zeta * o.w * t) * (x0 * std::cos(wd * t) + (v0 + o.zeta * o.w * x0) / wd * std::sin(wd * t));
}

class Integrator : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    /// Runs from x1 to x2; the save interval is that of a run.
    template <class Model>
    void Run(const Model& model, double x1, double x2, double eps, Long steps = 20000, double h1 = 1e-4,
             double hmin = 0.0)
    {
        Dynamics_Group& d = design.dynamics;
        d.Ode_Max_Steps = steps;
        d.Ode_Save_Interval = interval_ > 0.0 ? interval_ : (x2 - x1) / steps;
        design.results.Ode_Time.Dimension(steps, Max_Stored_Steps);
        design.results.Ode_States.Dimension(3, steps, Max_Stored_Steps);
        Ode_Integrate(design, Ode_Derivatives(model), y_, 2, x1, x2, eps, h1, hmin, good_, retried_);
    }
    static double Time(int j) { return design.results.Ode_Time(j); }
    static double X(int j) { return design.results.Ode_States(1, j); }
    static double V(int j) { return design.results.Ode_States(2, j); }
    static int Count() { return design.dynamics.Ode_Count; }

    void Expect_Path(const std::function<double(double)>& exact, double tolerance) const
    {
        ASSERT_GT(Count(), 20);
        for (int j = 1; j <= Count(); ++j)
            ASSERT_NEAR(X(j), exact(Time(j)), tolerance) << "at " << Time(j);
    }

    Script script_;
    Ode_Vector y_{};
    double interval_ = 0.0;  // 0: that of a run
    Integer good_;
    Integer retried_;
};

// ---- closed forms

TEST_F(Integrator, follows_an_oscillator_under_a_sine)
{
    for (const double zeta : {0.0, 0.1, 0.6}) {
        const double a = 3.0, W = 4.0;
        const Oscillator o{10.0, zeta, [=](double t) { return a * std::sin(W * t); }};
        // x = X sin(W t - phi) and the free vibration that starts at rest
        const double re = o.w * o.w - W * W, im = 2 * zeta * o.w * W;
        const double X = a / std::hypot(re, im), phi = std::atan2(im, re);
        y_ = {};
        Run(o, 0.0, 3.0, 1e-6);
        Expect_Path(
            [&](double t) { return X * std::sin(W * t - phi) + Free(o, X * std::sin(phi), -X * W * std::cos(phi), t); },
            2e-5 * X);
    }
}

TEST_F(Integrator, follows_an_oscillator_under_a_step)
{
    for (const double zeta : {0.0, 0.1, 0.6}) {
        const double a = 5.0;
        const Oscillator o{10.0, zeta, [=](double) { return a; }};
        const double rest = a / (o.w * o.w);
        y_ = {};
        Run(o, 0.0, 3.0, 1e-6);
        Expect_Path([&](double t) { return rest + Free(o, -rest, 0.0, t); }, 2e-5 * rest);
    }
}

TEST_F(Integrator, follows_an_oscillator_under_a_ramp)
{
    for (const double zeta : {0.0, 0.1, 0.6}) {
        const double a = 5.0;
        const Oscillator o{10.0, zeta, [=](double t) { return a * t; }};
        const double slope = a / (o.w * o.w), lag = 2 * zeta / o.w;
        y_ = {};
        Run(o, 0.0, 3.0, 1e-6);
        Expect_Path([&](double t) { return slope * (t - lag) + Free(o, slope * lag, -slope, t); }, 2e-5 * slope * 3);
    }
}

TEST_F(Integrator, goes_back_in_time_when_the_end_lies_before_the_start)
{
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    Run(o, 1.0, 0.0, 1e-7);
    EXPECT_EQ(Time(1), 1.0);
    EXPECT_EQ(Time(Count()), 0.0);
    EXPECT_NEAR(y_[0], std::cos(10.0), 1e-5);
    EXPECT_NEAR(y_[1], 10.0 * std::sin(10.0), 1e-4);
}

TEST_F(Integrator, takes_one_equation_too)
{
    const auto decay = [](double, const Ode_Vector& y, Ode_Vector& dydx) { dydx[0] = -2.0 * y[0]; };
    y_ = {1.0, 77.0};
    design.dynamics.Ode_Max_Steps = 1000;
    design.dynamics.Ode_Save_Interval = 0.001;
    design.results.Ode_Time.Dimension(1000);
    design.results.Ode_States.Dimension(3, 1000);
    Ode_Integrate(design, Ode_Derivatives(decay), y_, 1, 0.0, 1.0, 1e-6, 0.01, 0.0, good_, retried_);
    EXPECT_NEAR(y_[0], std::exp(-2.0), 1e-6);
    EXPECT_EQ(design.results.Ode_States(2, Count()), 0.0) << "the second row is not of this system";
}

// ---- order and work

TEST_F(Integrator, has_the_order_four_with_fixed_steps)
{
    const Oscillator o{1.0};
    const auto error = [&](int steps) {
        Ode_Vector y{1.0, 0.0}, dydx{};
        const double h = 2.0 / steps;
        for (int k = 0; k < steps; ++k) {
            o(k * h, y, dydx);
            Ode_Vector next{};
            Ode_Rk4(Ode_Derivatives(o), y, dydx, k * h, h, next);
            y = next;
        }
        return std::hypot(y[0] - std::cos(2.0), y[1] + std::sin(2.0));
    };
    for (const int steps : {10, 20, 40, 80})
        EXPECT_NEAR(std::log2(error(steps) / error(2 * steps)), 4.0, 0.1) << steps;
}

TEST_F(Integrator, weighs_its_stages_so_that_a_cubic_is_exact)
{
    const auto cubic = [](double t, const Ode_Vector&, Ode_Vector& dydx) { dydx = {1 + 2 * t + 3 * t * t, -t}; };
    Ode_Vector y{}, dydx{}, end{};
    cubic(0.5, y, dydx);
    Ode_Rk4(Ode_Derivatives(cubic), y, dydx, 0.5, 1.5, end);
    EXPECT_NEAR(end[0], (2 + 4 + 8) - (0.5 + 0.25 + 0.125), 1e-14);
    EXPECT_NEAR(end[1], -(4 - 0.25) / 2, 1e-14);
}

TEST_F(Integrator, asks_the_derivatives_eleven_times_a_step_that_needs_no_retry)
{
    const Oscillator o{10.0, 0.1, [](double t) { return std::sin(3 * t); }};
    y_ = {0.1, 0.0};
    Run(o, 0.0, 0.5, 1e-3);
    EXPECT_EQ(retried_, 0);
    ASSERT_GT(good_, 5);
    EXPECT_EQ(o.calls, 11 * good_);
}

TEST_F(Integrator, asks_them_ten_times_more_for_each_retry)
{
    const Oscillator o{10.0};
    Ode_Step step{{1.0, 0.0}, {0.0, -100.0}, 0.0};
    double hdid = 0.0, hnext = 0.0;
    Ode_Quality_Step(design, Ode_Derivatives(o), step, 0.5, 1e-6, {1.0, 10.0}, hdid, hnext);
    EXPECT_LT(hdid, 0.5);
    EXPECT_EQ(o.calls % 10, 0);
    EXPECT_GE(o.calls, 20);
}

/// An oscillator that is driven by time; it counts how often it is asked where its drive stands.
struct Driven {
    mutable int instants = 0;
    mutable int slopes = 0;

    double At(double t) const
    {
        ++instants;
        return std::sin(30 * t);
    }
    void Slope(double drive, const Ode_Vector& y, Ode_Vector& dydx) const
    {
        ++slopes;
        dydx = {y[1], 400 * (drive - y[0]) - 2 * y[1]};
    }
};

TEST_F(Integrator, finds_what_an_instant_decides_once_for_all_stages_that_fall_on_it)
{
    const Driven driven;
    double hdid = 0.0, hnext = 0.0;
    Ode_Step step{{0.1, 0.0}, {0.0, -40.0}, 0.0};
    const double drive = Ode_Quality_Step(design, driven, step, 1e-4, 1e-3, {1.0, 1.0}, hdid, hnext);
    EXPECT_EQ(drive, std::sin(30 * step.x)) << "the next step starts there";
    EXPECT_EQ(driven.instants, 5) << "both ends of the second half are asked for, the whole step's and its own";
    EXPECT_EQ(driven.slopes, 10);
}

TEST_F(Integrator, takes_the_same_steps_whether_an_equation_shares_its_instants_or_not)
{
    const Driven driven;
    const auto by_time = [&](double t, const Ode_Vector& y, Ode_Vector& dydx) { driven.Slope(driven.At(t), y, dydx); };
    const auto trajectory = [&](const auto& equation) {
        design.dynamics.Ode_Max_Steps = 5000;
        design.results.Ode_Time.Dimension(5000);
        design.results.Ode_States.Dimension(3, 5000);
        y_ = {0.1, 0.0};
        Ode_Integrate(design, equation, y_, 2, 0.0, 2.0, 1e-5, 0.01, 0.0, good_, retried_);
        std::vector<double> points;
        for (int j = 1; j <= Count(); ++j)
            for (const double value : {double{design.results.Ode_Time(j)}, double{design.results.Ode_States(1, j)},
                                       double{design.results.Ode_States(2, j)}})
                points.push_back(value);
        points.insert(points.end(), {y_[0], y_[1], double(good_), double(retried_)});
        return points;
    };
    const std::vector<double> shared = trajectory(driven);
    EXPECT_GT(Count(), 100);
    EXPECT_GT(retried_, 5);
    EXPECT_EQ(shared, trajectory(Ode_Derivatives(by_time)));
}

TEST_F(Integrator, corrects_a_step_by_a_fifteenth_of_the_difference_of_halves_and_whole)
{
    const Oscillator o{3.0, 0.2, [](double t) { return t * t; }};
    const Ode_Derivatives f(o);
    const double h = 0.05;
    Ode_Step step{{0.3, -0.2}, {}, 0.7};
    o(0.7, step.y, step.dydx);
    const Ode_Step before = step;
    Ode_Vector half{}, slope{}, halves{}, whole{};
    Ode_Rk4(f, before.y, before.dydx, 0.7, h / 2, half);
    o(0.7 + h / 2, half, slope);
    Ode_Rk4(f, half, slope, 0.7 + h / 2, h / 2, halves);
    Ode_Rk4(f, before.y, before.dydx, 0.7, h, whole);
    double hdid = 0.0, hnext = 0.0;
    Ode_Quality_Step(design, f, step, h, 1.0, {1.0, 1.0}, hdid, hnext);
    EXPECT_EQ(hdid, h);
    EXPECT_EQ(step.x, 0.7 + h);
    for (const std::size_t i : {0U, 1U})
        EXPECT_NEAR(step.y[i], halves[i] + (halves[i] - whole[i]) / 15, 1e-16);
    EXPECT_EQ(hnext, 4 * h) << "an error far below the accuracy lets a step grow by four, and no more";
}

TEST_F(Integrator, sets_the_next_step_by_the_fifth_root_of_the_error)
{
    const Oscillator o{3.0};
    const Ode_Derivatives f(o);
    const double h = 0.05;
    Ode_Vector dydx{}, half{}, slope{}, halves{}, whole{};
    const Ode_Vector y{1.0, 0.0};
    o(0.0, y, dydx);
    Ode_Rk4(f, y, dydx, 0.0, h / 2, half);
    o(h / 2, half, slope);
    Ode_Rk4(f, half, slope, h / 2, h / 2, halves);
    Ode_Rk4(f, y, dydx, 0.0, h, whole);
    const double error = std::max(std::abs(halves[0] - whole[0]), std::abs(halves[1] - whole[1]));
    for (const double share : {0.9, 0.01, 0.0007}) {
        Ode_Step step{y, dydx, 0.0};
        double hdid = 0.0, hnext = 0.0;
        Ode_Quality_Step(design, f, step, h, error / share, {1.0, 1.0}, hdid, hnext);
        EXPECT_EQ(hdid, h);
        EXPECT_NEAR(hnext, 0.9 * h * std::pow(share, -0.2), 1e-7 * h) << share;
    }
    Ode_Step step{y, dydx, 0.0};
    double hdid = 0.0, hnext = 0.0;
    Ode_Quality_Step(design, f, step, h, error / 0.0005, {1.0, 1.0}, hdid, hnext);
    EXPECT_EQ(hnext, 4 * h);
    // An error above the accuracy shortens the step by its fourth root.
    step = {y, dydx, 0.0};
    Ode_Quality_Step(design, f, step, h, error / 3.0, {1.0, 1.0}, hdid, hnext);
    EXPECT_NEAR(hdid, 0.9 * h * std::pow(3.0, -0.25), 1e-7 * h);
}

TEST_F(Integrator, leaves_what_the_derivatives_leave)
{
    // Of a right side that writes nothing the derivative stays the one before.
    const auto silent = [](double, const Ode_Vector&, Ode_Vector&) {};
    Ode_Vector end{};
    Ode_Rk4(Ode_Derivatives(silent), {1.0, 2.0}, {6.0, 12.0}, 0.0, 0.5, end);
    EXPECT_DOUBLE_EQ(end[0], 1.0 + 0.5 * 6.0);
    EXPECT_DOUBLE_EQ(end[1], 2.0 + 0.5 * 12.0);
}

TEST_F(Integrator, Ode_Max_saturates_at_the_largest_Single)
{
    EXPECT_EQ(Ode_Max(1.0, 2.0), 2.0);
    EXPECT_EQ(Ode_Max(2.0, 1.0), 2.0);
    EXPECT_EQ(Ode_Max(2.0, 2.0), 2.0);
    EXPECT_EQ(Ode_Max(2.0, std::nan("")), 2.0) << "what is not greater leaves the first";
    EXPECT_EQ(Ode_Max(0.0, 1e300), double{std::numeric_limits<float>::max()});
    EXPECT_EQ(Ode_Max(0.0, std::numeric_limits<double>::infinity()), double{std::numeric_limits<float>::max()});
}

// ---- what is stored

TEST_F(Integrator, ends_at_the_end_exactly)
{
    const Oscillator o{10.0};
    for (const double end : {0.1, 1.0 / 3.0, 2.0 * pi / 15.0}) {
        y_ = {1.0, 0.0};
        Run(o, 0.0, end, 1e-4);
        EXPECT_LT(Count(), 20000);
        EXPECT_EQ(Time(1), 0.0);
        EXPECT_EQ(X(1), 1.0);
        EXPECT_EQ(Time(Count()), double{Single(end)});
        EXPECT_EQ(X(Count()), double{Single(y_[0])});
        EXPECT_EQ(V(Count()), double{Single(y_[1])});
    }
}

TEST_F(Integrator, stores_no_two_points_nearer_than_the_interval)
{
    const Oscillator o{20.0};
    y_ = {1.0, 0.0};
    Run(o, 0.0, 1.0, 1e-6, 1000, 1e-7);  // an interval of 0.001, and steps below it at first
    EXPECT_EQ(design.dynamics.Ode_Save_Interval, 0.001F);
    EXPECT_LT(Count(), good_ + retried_);
    for (int j = 2; j < Count(); ++j)
        EXPECT_GT(Single(Time(j) - Time(j - 1)), 0.0009999);
}

TEST_F(Integrator, keeps_one_place_for_the_end_when_the_trajectory_is_full)
{
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    script_.Expect(did_not_converge);
    interval_ = 1e-9;
    Run(o, 0.0, 100.0, 1e-6, 50);
    EXPECT_EQ(Count(), 49);
    EXPECT_EQ(good_ + retried_, 50) << "the integration carries on to its last step";
    EXPECT_TRUE(design.flags.Calc_Abort);
    // With as many steps as it takes, the last place is the end's.
    y_ = {1.0, 0.0};
    Run(o, 0.0, 1.0, 1e-4);
    const int steps = good_ + retried_;
    y_ = {1.0, 0.0};
    Run(o, 0.0, 1.0, 1e-4, steps);
    EXPECT_EQ(Count(), steps);
    EXPECT_EQ(Time(Count()), 1.0);
}

TEST_F(Integrator, counts_up_to_32767)
{
    const Oscillator o{2000.0};
    y_ = {1.0, 0.0};
    Run(o, 0.0, 8.0, 1e-6, 200000);
    EXPECT_EQ(good_, 32767);
    EXPECT_GT(Count(), 32767);
    EXPECT_EQ(Time(Count()), 8.0);
}

TEST_F(Integrator, raises_the_faults_of_what_cannot_be)
{
    const auto fault = [&](auto&& work) {
        try {
            work();
        } catch (const Fault& f) {
            return f.Number();
        }
        return 0;
    };
    const Oscillator o{10.0};
    EXPECT_EQ(fault([&] { Run(o, 0.0, 1.0, 0.0); }), division_by_zero);
    const auto explosion = [](double, const Ode_Vector& y, Ode_Vector& dydx) { dydx = {1e5 * y[0], 0.0}; };
    y_ = {1.0, 0.0};
    EXPECT_EQ(fault([&] { Run(explosion, 0.0, 1.0, 1e-3); }), overflow);
    y_ = {};
    EXPECT_EQ(
        fault([&] { Ode_Integrate(design, Ode_Derivatives(o), y_, 3, 0.0, 1.0, 1e-3, 0.1, 0.0, good_, retried_); }),
        out_of_bounds);
}

// ---- messages

TEST_F(Integrator, asks_when_the_step_falls_below_the_smallest_and_cancels)
{
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    script_.Expect(Too_Small(Answer::Cancel));
    Run(o, 0.0, 1.0, 1e-6, 1000, 1e-4, 0.5);
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_FALSE(design.flags.Ode_Hint_Shown);
    EXPECT_EQ(good_, 1);
    EXPECT_EQ(Count(), 1);
}

TEST_F(Integrator, goes_on_with_Retry_shows_the_hint_once_and_gives_up_at_the_last_step)
{
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    script_.Expect(Too_Small(Answer::Retry));
    script_.Expect({hint});
    for (int k = 2; k <= 6; ++k)
        script_.Expect(Too_Small(Answer::Retry));
    script_.Expect(did_not_converge);
    Run(o, 0.0, 100.0, 1e-9, 6, 1e-4, 0.5);
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_TRUE(design.flags.Ode_Hint_Shown);
    EXPECT_EQ(design.dynamics.Ode_Message, did_not_converge.text);
}

TEST_F(Integrator, asks_when_a_step_does_not_move_the_time)
{
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    script_.Expect(Insignificant("0", "0.5", Answer::Cancel));
    Run(o, 0.5, 1.0, 1e-6, 1000, 0.0);
    EXPECT_TRUE(design.flags.Calc_Abort);
    // With Retry it goes on as it is: a step of nothing stays one, until the steps run out.
    y_ = {1.0, 0.0};
    script_.Expect(Insignificant("0", "0.5", Answer::Retry));
    script_.Expect({hint});
    script_.Expect(Insignificant("0", "0.5", Answer::Retry));
    script_.Expect(Insignificant("0", "0.5", Answer::Cancel));
    Run(o, 0.5, 1.0, 1e-6, 1000, 0.0);
    EXPECT_EQ(good_, 2);
}

TEST_F(Integrator, shows_step_and_time_in_the_number_format_of_the_design)
{
    design.identity.Number_Format = "Europe";
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    script_.Expect(Insignificant("1E-20", "0,5", Answer::Cancel));
    Run(o, 0.5, 1.0, 1e-6, 1000, 1e-20);
}

/// Rest until 0.5 s, then a push.
struct Late_Push {
    double exponent;  // of the push's growth
    void operator()(double t, const Ode_Vector& y, Ode_Vector& dydx) const
    {
        dydx[0] = y[1];
        dydx[1] = (t > 0.5 ? 1e6 * std::pow(t - 0.5, exponent) : 0.0) - 100.0 * y[0];
    }
};

TEST_F(Integrator, a_start_from_rest_that_is_pushed_at_once_becomes_insignificant_and_hints_once)
{
    // A scale of 1e-30 has room for no error at all: the steps shrink before the push until they move no time.
    int asked = 0, hinted = 0;
    Host host;
    host.messenger = [&](const Message& box) {
        hinted += box.text == hint ? 1 : 0;
        if (box.buttons == Buttons::Retry_Cancel) {
            EXPECT_NE(box.text.find("insignificant"), std::string::npos);
            return ++asked < 4 ? Answer::Retry : Answer::Cancel;
        }
        return Answer::OK;
    };
    const Host before = Install_Host(host);
    Run(Late_Push{0.0}, 0.0, 1.0, 1e-3);
    Install_Host(before);
    EXPECT_EQ(asked, 4);
    EXPECT_EQ(hinted, 1);
    EXPECT_TRUE(design.flags.Calc_Abort);
}

TEST_F(Integrator, a_start_from_rest_that_is_pushed_gently_finds_its_way)
{
    const Late_Push push{8.0};
    Run(push, 0.0, 1.0, 1e-4);
    EXPECT_FALSE(design.flags.Calc_Abort);
    EXPECT_GT(retried_, 5) << "the steps shrink before the push and grow again behind it";
    Ode_Vector y{}, dydx{};
    constexpr int steps = 20000;
    for (int k = 0; k < steps; ++k) {
        push(k * 1.0 / steps, y, dydx);
        Ode_Rk4(Ode_Derivatives(push), y, dydx, k * 1.0 / steps, 1.0 / steps, y);
    }
    ASSERT_NE(y[0], 0.0);
    EXPECT_NEAR(y_[0] / y[0], 1.0, 1e-4);
}

TEST_F(Integrator, stops_when_the_host_says_that_the_user_wishes_it)
{
    std::vector<double> shares;
    Host host;
    host.progress = [&](double share) {
        shares.push_back(share);
        return shares.size() == 3;
    };
    const Host before = Install_Host(host);
    const Oscillator o{2000.0};
    y_ = {1.0, 0.0};
    Run(o, 0.0, 10.0, 1e-6, 200000);
    Install_Host(before);
    EXPECT_TRUE(design.flags.Calc_Abort);
    ASSERT_EQ(shares.size(), 4U) << "begin, two looks, and the end of the work";
    EXPECT_EQ(shares[0], 0.0);
    EXPECT_GT(shares[1], 0.0);
    EXPECT_GT(shares[2], shares[1]);
    EXPECT_LT(shares[2], 0.5);
    EXPECT_EQ(shares[3], 1.0);
    EXPECT_EQ(good_ + retried_, 512);
}

TEST_F(Integrator, starts_each_run_without_the_hint_and_the_abort_of_the_one_before)
{
    design.flags.Calc_Abort = design.flags.Ode_Hint_Shown = true;
    const Oscillator o{10.0};
    y_ = {1.0, 0.0};
    Run(o, 0.0, 1.0, 1e-3);
    EXPECT_FALSE(design.flags.Calc_Abort);
    EXPECT_FALSE(design.flags.Ode_Hint_Shown);
}

// ---- result codes

TEST_F(Integrator, words_the_result_codes_of_a_solver)
{
    EXPECT_EQ(Solver_Status_Text(0), "All is ok");
    EXPECT_EQ(Solver_Status_Text(1), "Both error bounds  Eps...  are too small (relative to the machine constant)");
    EXPECT_EQ(Solver_Status_Text(2), "TimeEnd <= Time (relative to the machine constant)");
    EXPECT_EQ(Solver_Status_Text(3), "Step size  Start_Step <= 0  (rel. to machine precision)");
    EXPECT_EQ(Solver_Status_Text(4), "No_Eqns > mc_Max_Eqns   or   No_Eqns <= 0");
    EXPECT_EQ(Solver_Status_Text(5),
              "Number of allowed function evaluations was exceeded;\n"
              "try to restart with Time, Ystart and Start_Step.");
    EXPECT_EQ(Solver_Status_Text(6), " Time, Ystart, Start_Step contain the values reached.");
    EXPECT_EQ(Solver_Status_Text(7), "");
}

TEST_F(Integrator, reports_a_result_code_by_its_weight)
{
    design.dynamics.Ode_Count = 123;
    for (const int code : {0, 1})
        Report_Solver_Status(design, code);
    EXPECT_FALSE(design.flags.Calc_Abort);
    script_.Expect({Solver_Status_Text(5) + "in 123 total steps"});
    Report_Solver_Status(design, 5);
    EXPECT_TRUE(design.flags.Calc_Abort);
    design.flags.Calc_Abort = false;
    script_.Expect({Solver_Status_Text(2), Buttons::Retry_Cancel, Symbol::exclamation, Answer::Retry});
    script_.Expect({hint});
    Report_Solver_Status(design, 2);
    EXPECT_FALSE(design.flags.Calc_Abort);
    script_.Expect({Solver_Status_Text(6), Buttons::Retry_Cancel, Symbol::exclamation, Answer::Cancel});
    Report_Solver_Status(design, 6);
    EXPECT_TRUE(design.flags.Calc_Abort);
}

}  // namespace
}  // namespace lobemax
