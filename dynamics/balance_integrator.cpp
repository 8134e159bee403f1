// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/balance_integrator.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"

namespace lobemax {

namespace {

constexpr double tiny_scale = 1e-30;                       // guards a scale of zero
constexpr double safety = 0.9;                             // of a step's next length
constexpr double growth_power = -0.2;                      // the error of a step goes with its fifth power
constexpr double shrink_power = -0.25;                     // one less, on the safe side
const double error_of_largest_growth = Single(6e-4);       // (4 / 0.9)^-5: below it the step grows by four
constexpr double largest_growth = 4.0;                     // of a step from one to the next
constexpr double fifth_order_share = 0.06666666666666667;  // 1 / (2^4 - 1)
constexpr double largest_error = std::numeric_limits<float>::max();

std::string Insignificant_Step(const Design_State& design, double step, double time)
{
    const auto shown = [&](double value) { return In_Number_Format(design, Shortest(value)); };
    return "\nThe step size has become insignificant in the Runge-Kutta ODE solver.\n Time step =  " + shown(step) +
           "  sec,  Time position =  " + shown(time) +
           "  sec\n\nYour system may be too stiff or your accuracy too large. \n\n"
           "Try reducing the system K, changing the mass, or changing accuracy value. ";
}

}  // namespace

Balance_Integrator::Balance_Integrator(Design_State& design, const Balance_Derivatives& derivs,
                                       const Balance_Accuracy& accuracy)
    : design_(design), derivs_(derivs), accuracy_(accuracy)
{
    design.flags.Ode_Hint_Shown = false;
    design.flags.Calc_Abort = false;
}

void Balance_Integrator::Start(double x, const Balance_State& y)
{
    x_ = x;
    y_ = y;
    h_ = accuracy_.start_step;
    steps_of_motion_ = 0;
}

/// A question with Retry and Cancel, and once a run the hint why a step may have become too short.
/// @return whether to go on
bool Balance_Integrator::Go_on(const std::string& text)
{
    if (Show_Message(text, Buttons::Retry_Cancel, Symbol::exclamation) != Answer::Retry) {
        design_.flags.Calc_Abort = true;
        Restore_Pointer();
        return false;
    }
    if (!design_.flags.Ode_Hint_Shown)
        Show_Message(
            "If your cam starts with a dwell at zero displacement, that will\n"
            "cause the Runge-Kutta step size to be too small, and it will abort.\n"
            "\n"
            "Start your cam program cycle with a rise, a fall, or a high dwell instead,\n"
            "i.e., phase shift the cam program to do this dynamic analysis.",
            Buttons::OK, Symbol::information);
    design_.flags.Ode_Hint_Shown = true;
    return true;
}

void Balance_Integrator::Rk4(const Balance_State& y, const Balance_State& dydx, double x, double h,
                             Balance_State& yout) const
{
    const double hh = h * 0.5;
    const double h6 = h / 6.0;
    const double xh = x + hh;
    Balance_State yt{};
    Balance_State dyt{};
    Balance_State dym{};
    for (std::size_t i = 0; i < y.size(); ++i)
        yt[i] = y[i] + hh * dydx[i];
    derivs_(xh, yt, dyt);
    for (std::size_t i = 0; i < y.size(); ++i)
        yt[i] = y[i] + hh * dyt[i];
    derivs_(xh, yt, dym);
    for (std::size_t i = 0; i < y.size(); ++i) {
        yt[i] = y[i] + h * dym[i];
        dym[i] += dyt[i];
    }
    derivs_(x + h, yt, dyt);
    for (std::size_t i = 0; i < y.size(); ++i)
        yout[i] = y[i] + h6 * (dydx[i] + dyt[i] + 2.0 * dym[i]);
}

/// A step that keeps to the accuracy. @param h  length to try; takes the one that was taken
bool Balance_Integrator::Quality_Step(double& h, double& hnext)
{
    const Balance_State ysav = y_;
    const double xsav = x_;
    Balance_State whole{};
    double errmax = 0.0;
    while (true) {
        const double hh = h * 0.5;
        Balance_State half{};
        Balance_State slope{};
        Rk4(ysav, dydx_, xsav, hh, half);
        derivs_(xsav + hh, half, slope);
        Rk4(half, slope, xsav + hh, hh, y_);
        x_ = xsav + h;
        if (x_ == xsav && !Go_on(Insignificant_Step(design_, h, x_)))
            return false;
        Rk4(ysav, dydx_, xsav, h, whole);
        double largest = 0.0;
        for (std::size_t i = 0; i < y_.size(); ++i) {
            whole[i] = y_[i] - whole[i];
            const double error = std::min(std::abs(whole[i] / scale_[i]), largest_error);
            largest = error > largest ? error : largest;
        }
        errmax = Single(largest) / accuracy_.eps;
        if (!(errmax > 1.0))
            break;
        h = safety * h * std::pow(errmax, shrink_power);
    }
    hnext = errmax > error_of_largest_growth ? safety * h * std::pow(errmax, growth_power) : largest_growth * h;
    for (std::size_t i = 0; i < y_.size(); ++i)
        y_[i] += whole[i] * fifth_order_share;
    return true;
}

bool Balance_Integrator::To(double x2)
{
    const double x1 = x_;
    if (accuracy_.eps == 0.0)
        throw Fault{division_by_zero};
    h_ = x2 <= x1 ? -std::abs(h_) : std::abs(h_);
    while (steps_of_motion_ < accuracy_.max_steps) {
        derivs_(x_, y_, dydx_);
        for (std::size_t i = 0; i < y_.size(); ++i)
            scale_[i] = std::abs(h_ * dydx_[i]) + std::abs(y_[i]) + tiny_scale;
        if ((x_ + h_ - x2) * (x_ + h_ - x1) > 0.0)
            h_ = x2 - x_;  // the last step lands on the end
        if (h_ < 0.0) {    // a mirrored motion runs forward in a time of its own
            Show_Message("H has gone negative at line 22", Buttons::OK, Symbol::information);
            design_.flags.Calc_Abort = true;
            return false;
        }
        double hnext = 0.0;
        if (!Quality_Step(h_, hnext))
            return false;
        ++steps_;
        ++steps_of_motion_;
        h_ = hnext;
        if ((x_ - x2) * (x2 - x1) >= 0.0)
            return true;
        if (std::abs(hnext) < accuracy_.min_step && !Go_on("Runge-Kutta step size has become smaller than minimum"))
            return false;
    }
    Show_Message("\n\nDid not converge.  Took too many steps in the integration routine and has given up.", Buttons::OK,
                 Symbol::information);
    design_.flags.Calc_Abort = true;
    Restore_Pointer();
    return false;
}

}  // namespace lobemax
