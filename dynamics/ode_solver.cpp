// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/ode_solver.h"

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
constexpr int steps_between_looks = 256;                   // at the user's Stop
constexpr int largest_count = 32767;

void Count(Integer& counter)
{
    if (counter < largest_count)
        counter += 1;
}

/// A question with Retry and Cancel. @return whether to go on
bool Go_on(Design_State& design, const std::string& text)
{
    if (Show_Message(text, Buttons::Retry_Cancel, Symbol::exclamation) == Answer::Retry)
        return true;
    design.flags.Calc_Abort = true;
    return false;
}

/// Once a run.
void Show_Hint(Design_State& design, Dwell_Advice advice = Dwell_Advice::vibration)
{
    if (design.flags.Ode_Hint_Shown)
        return;
    design.dynamics.Ode_Message = Start_in_Dwell_Hint(advice);
    Show_Message(design.dynamics.Ode_Message, Buttons::OK, Symbol::information);
    design.flags.Ode_Hint_Shown = true;
}

std::string Insignificant_Step(const Design_State& design, double step, double time)
{
    const auto shown = [&](double value) { return In_Number_Format(design, Shortest(value)); };
    return "\nThe step size has become insignificant in the Runge-Kutta ODE solver.\n Time step =  " + shown(step) +
           "  sec,  Time position =  " + shown(time) +
           "  sec\n\nYour system may be too stiff or your accuracy too large. \n\n"
           "Try reducing the system K, changing the mass, or changing accuracy value. ";
}

void Store(Design_State& design, const Ode_Step& step, int nvar)
{
    Long& count = design.dynamics.Ode_Count;
    ++count;
    design.results.Ode_Time(count) = step.x;
    for (int i = 1; i <= nvar; ++i)
        design.results.Ode_States(i, count) = step.y[static_cast<std::size_t>(i - 1)];
}

}  // namespace

std::string Start_in_Dwell_Hint(Dwell_Advice advice)
{
    return std::string(
               "If your cam starts with a dwell at zero displacement, that will\n"
               "cause the Runge-Kutta step size to be too small, and it will abort.\n"
               "\n") +
           (advice == Dwell_Advice::vibration
                ? "You must start your cam program cycle with a rise or a fall:\n"
                : "Start your cam program cycle with a rise, a fall, or a high dwell instead,\n") +
           "i.e., phase shift the cam program to do this dynamic analysis.";
}

bool Ode_Go_on(Design_State& design, const std::string& text, Dwell_Advice advice)
{
    if (!Go_on(design, text))
        return false;
    Show_Hint(design, advice);
    return true;
}

Single Ode_Max(double a, double b)
{
    // A start from rest has a scale of 1e-30, over which an error may be more than 32 bits hold.
    constexpr double most = std::numeric_limits<float>::max();
    const double larger = b > a ? b : a;
    return std::min(larger, most);
}

void Ode_Rk4(const Ode_Derivatives& derivs, const Ode_Vector& y, const Ode_Vector& dydx, int n, double x, double h,
             Ode_Vector& yout)
{
    const auto count = static_cast<std::size_t>(n);
    const double hh = h * 0.5;
    const double h6 = h / 6.0;
    const double xh = x + hh;
    Ode_Vector yt{};
    Ode_Vector dyt = dydx;
    for (std::size_t i = 0; i < count; ++i)
        yt[i] = y[i] + hh * dydx[i];
    derivs(xh, yt, dyt);
    for (std::size_t i = 0; i < count; ++i)
        yt[i] = y[i] + hh * dyt[i];
    Ode_Vector dym = dyt;
    derivs(xh, yt, dym);
    for (std::size_t i = 0; i < count; ++i) {
        yt[i] = y[i] + h * dym[i];
        dym[i] += dyt[i];
    }
    derivs(x + h, yt, dyt);
    for (std::size_t i = 0; i < count; ++i)
        yout[i] = y[i] + h6 * (dydx[i] + dyt[i] + 2.0 * dym[i]);
}

void Ode_Step_Doubling(Design_State& design, const Ode_Derivatives& derivs, Ode_Step& step, double& h,
                       const Ode_Vector& ysav, const Ode_Vector& dysav, int n, double xsav, double eps,
                       const Ode_Vector& yscal, double& errmax, Ode_Vector& ytemp, Dwell_Advice advice)
{
    const auto count = static_cast<std::size_t>(n);
    while (true) {
        const double hh = h * 0.5;
        Ode_Rk4(derivs, ysav, dysav, n, xsav, hh, ytemp);
        step.x = xsav + hh;
        step.dydx = dysav;  // and not that of a trial before, which may have gone further
        derivs(step.x, ytemp, step.dydx);
        Ode_Rk4(derivs, ytemp, step.dydx, n, step.x, hh, step.y);
        step.x = xsav + h;
        if (step.x == xsav) {
            if (!Ode_Go_on(design, Insignificant_Step(design, h, step.x), advice)) {
                Restore_Pointer();
                return;
            }
        }
        Ode_Rk4(derivs, ysav, dysav, n, xsav, h, ytemp);
        Single largest = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            ytemp[i] = step.y[i] - ytemp[i];
            largest = Ode_Max(largest, std::abs(ytemp[i] / yscal[i]));
        }
        errmax = largest / eps;
        if (!(errmax > 1.0))
            return;
        h = safety * h * std::pow(errmax, shrink_power);
    }
}

void Ode_Quality_Step(Design_State& design, const Ode_Derivatives& derivs, Ode_Step& step, int n, double htry,
                      double eps, const Ode_Vector& yscal, double& hdid, double& hnext, Dwell_Advice advice)
{
    const Ode_Vector ysav = step.y;
    const Ode_Vector dysav = step.dydx;
    const double xsav = step.x;
    double h = htry;
    double errmax = 0.0;
    Ode_Vector ytemp{};
    design.flags.Calc_Abort = false;
    Ode_Step_Doubling(design, derivs, step, h, ysav, dysav, n, xsav, eps, yscal, errmax, ytemp, advice);
    if (design.flags.Calc_Abort)
        return;
    hdid = h;
    hnext = errmax > error_of_largest_growth ? safety * h * std::pow(errmax, growth_power) : largest_growth * h;
    for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
        step.y[i] += ytemp[i] * fifth_order_share;
}

void Ode_Integrate(Design_State& design, const Ode_Derivatives& derivs, Ode_Vector& ystart, int nvar, double x1,
                   double x2, Single eps, double h1, double hmin, Integer& nok, Integer& nbad)
{
    Checked_Place(nvar, 1, Max_Ode_Equations);
    const auto count = static_cast<std::size_t>(nvar);
    Flags_Group& f = design.flags;
    Dynamics_Group& d = design.dynamics;
    f.Ode_Hint_Shown = false;
    f.Calc_Abort = false;
    if (eps == 0.0)
        throw Fault{division_by_zero};
    double h = x2 <= x1 ? -std::abs(h1) : std::abs(h1);
    nok = 0;
    nbad = 0;
    d.Ode_Count = 0;
    Ode_Step step{ystart, {}, x1};
    Ode_Vector yscal{};
    const double interval = std::abs(double{d.Ode_Save_Interval});
    double xsav = x1 - 2.0 * d.Ode_Save_Interval;  // the first point is always stored
    for (Long taken = 0; taken < d.Ode_Max_Steps; ++taken) {
        if (taken % steps_between_looks == 0 && Stop_Wished((step.x - x1) / (x2 - x1))) {
            f.Calc_Abort = true;
            break;
        }
        derivs(step.x, step.y, step.dydx);
        for (std::size_t i = 0; i < count; ++i)
            yscal[i] = std::abs(h * step.dydx[i]) + std::abs(step.y[i]) + tiny_scale;
        if (std::abs(Single(step.x - xsav)) > interval && d.Ode_Count < d.Ode_Max_Steps - 1) {
            Store(design, step, nvar);
            xsav = step.x;
        }
        if ((step.x + h - x2) * (step.x + h - x1) > 0.0)
            h = x2 - step.x;  // the last step lands on the end
        double hdid = 0.0;
        double hnext = 0.0;
        Ode_Quality_Step(design, derivs, step, nvar, h, eps, yscal, hdid, hnext);
        if (f.Calc_Abort)
            break;
        Count(hdid == h ? nok : nbad);
        if ((step.x - x2) * (x2 - x1) >= 0.0) {
            ystart = step.y;
            Store(design, step, nvar);
            Stop_Wished(1.0);
            return;
        }
        if (std::abs(hnext) < hmin) {
            if (!Go_on(design, "Runge-Kutta step size has become smaller than minimum"))
                break;
            Show_Hint(design);
        }
        h = hnext;
    }
    Stop_Wished(1.0);
    if (f.Calc_Abort)
        return;
    d.Ode_Message = "\n\nDid not converge.  Took too many steps in the integration routine and has given up.";
    Show_Message(d.Ode_Message, Buttons::OK, Symbol::information);
    f.Calc_Abort = true;
    Restore_Pointer();
}

std::string Solver_Status_Text(int code)
{
    switch (code) {
    case 0:
        return "All is ok";
    case 1:
        return "Both error bounds  Eps...  are too small (relative to the machine constant)";
    case 2:
        return "TimeEnd <= Time (relative to the machine constant)";
    case 3:
        return "Step size  Start_Step <= 0  (rel. to machine precision)";
    case 4:
        return "No_Eqns > mc_Max_Eqns   or   No_Eqns <= 0";
    case 5:
        return "Number of allowed function evaluations was exceeded;\ntry to restart with Time, Ystart and Start_Step.";
    case 6:
        return " Time, Ystart, Start_Step contain the values reached.";
    default:
        return {};
    }
}

void Report_Solver_Status(Design_State& design, int code)
{
    constexpr int out_of_evaluations = 5;
    if (code == out_of_evaluations) {
        Show_Message(Solver_Status_Text(code) + "in " + std::to_string(design.dynamics.Ode_Count) + " total steps",
                     Buttons::OK, Symbol::information);
        design.flags.Calc_Abort = true;
    } else if (code > 1 && Go_on(design, Solver_Status_Text(code))) {
        Show_Hint(design);
    }
}

}  // namespace lobemax
