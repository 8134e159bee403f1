// SPDX-License-Identifier: GPL-3.0-or-later
/// The steps of the Runge-Kutta integrator, for any Ode_Equation, so that its slopes stand within the steps.
///
/// A driver marches over the interval and stores the trajectory in the design, a quality step keeps to the accuracy,
/// one plain step advances. Working values are doubles, the trajectory is stored in 32 bits. Nothing is allocated on
/// the way but for messages. docs/theory.md, (135) to (141).
#pragma once

#include <cmath>
#include <cstddef>

#include "core/design_state.h"
#include "core/messages.h"
#include "dynamics/ode_solver.h"

namespace lobemax {

inline constexpr double Ode_Safety = 0.9;  // of a step's next length

/// The two instants of a classic step beside its start.
template <Ode_Equation E>
struct Ode_Stages {
    Ode_Instant<E> middle;
    Ode_Instant<E> end;
};

/// One classic step of fourth order from y, dydx = f there, over h: three slopes.
template <Ode_Equation E>
inline void Ode_Rk4(const E& equation, const Ode_Stages<E>& at, const Ode_Vector& y, const Ode_Vector& dydx, double h,
                    Ode_Vector& yout)
{
    constexpr std::size_t count = Max_Ode_Equations;
    const double hh = h * 0.5;
    const double h6 = h / 6.0;
    Ode_Vector yt;
    Ode_Vector dyt = dydx;
    for (std::size_t i = 0; i < count; ++i)
        yt[i] = y[i] + hh * dydx[i];
    equation.Slope(at.middle, yt, dyt);
    for (std::size_t i = 0; i < count; ++i)
        yt[i] = y[i] + hh * dyt[i];
    Ode_Vector dym = dyt;
    equation.Slope(at.middle, yt, dym);
    for (std::size_t i = 0; i < count; ++i) {
        yt[i] = y[i] + h * dym[i];
        dym[i] += dyt[i];
    }
    equation.Slope(at.end, yt, dyt);
    for (std::size_t i = 0; i < count; ++i)
        yout[i] = y[i] + h6 * (dydx[i] + dyt[i] + 2.0 * dym[i]);
}

/// The same from x.
template <Ode_Equation E>
inline void Ode_Rk4(const E& equation, const Ode_Vector& y, const Ode_Vector& dydx, double x, double h,
                    Ode_Vector& yout)
{
    Ode_Rk4(equation, {equation.At(x + h * 0.5), equation.At(x + h)}, y, dydx, h, yout);
}

/// Tries a step of length h from (xsav, ysav) whole and in halves, and shortens it until the error keeps to eps:
/// step.y is then the result of the halves, ytemp its difference from the whole.
///
/// A step too short to move x asks Retry or Cancel; Cancel sets Calc_Abort.
/// @param yscal   what the error is compared with, element by element
/// @param errmax  out: the error in units of eps
/// @return the instant at step.x
template <Ode_Equation E>
Ode_Instant<E> Ode_Step_Doubling(Design_State& design, const E& equation, Ode_Step& step, double& h,
                                 const Ode_Vector& ysav, const Ode_Vector& dysav, double xsav, double eps,
                                 const Ode_Vector& yscal, double& errmax, Ode_Vector& ytemp,
                                 Dwell_Advice advice = Dwell_Advice::vibration)
{
    constexpr double shrink_power = -0.25;  // the error of a step goes with its fifth power; one less, on the safe side
    while (true) {
        const double hh = h * 0.5;
        const Ode_Instant<E> half = equation.At(xsav + hh);
        Ode_Rk4(equation, {equation.At(xsav + hh * 0.5), half}, ysav, dysav, hh, ytemp);
        step.x = xsav + hh;
        step.dydx = dysav;  // and not that of a trial before, which may have gone further
        equation.Slope(half, ytemp, step.dydx);
        Ode_Rk4(equation, ytemp, step.dydx, step.x, hh, step.y);
        step.x = xsav + h;
        if (step.x == xsav && !Ode_Takes_Insignificant_Step(design, h, step.x, advice))
            return half;
        const Ode_Instant<E> end = equation.At(step.x);
        Ode_Rk4(equation, {half, end}, ysav, dysav, h, ytemp);
        double largest = 0.0;
        for (std::size_t i = 0; i < ytemp.size(); ++i) {
            ytemp[i] = step.y[i] - ytemp[i];
            largest = std::max(largest, std::abs(ytemp[i] / yscal[i]));
        }
        errmax = Ode_Max(0.0, largest) / eps;
        if (!(errmax > 1.0))
            return end;
        h = Ode_Safety * h * std::pow(errmax, shrink_power);
    }
}

/// One step that keeps to the accuracy: 11 slopes with the driver's own where it is taken at once, at five instants.
///
/// @param htry   length to try; @param hdid  out: length that was taken; @param hnext  out: length to try next, at
///               most four times hdid
/// @return the instant at step.x, the start of the next step
template <Ode_Equation E>
Ode_Instant<E> Ode_Quality_Step(Design_State& design, const E& equation, Ode_Step& step, double htry, double eps,
                                const Ode_Vector& yscal, double& hdid, double& hnext,
                                Dwell_Advice advice = Dwell_Advice::vibration)
{
    constexpr double growth_power = -0.2;                      // the error of a step goes with its fifth power
    constexpr double error_of_largest_growth = 6e-4F;          // (4 / 0.9)^-5: below it the step grows by four
    constexpr double largest_growth = 4.0;                     // of a step from one to the next
    constexpr double fifth_order_share = 0.06666666666666667;  // 1 / (2^4 - 1)
    const Ode_Vector ysav = step.y;
    const Ode_Vector dysav = step.dydx;
    const double xsav = step.x;
    double h = htry;
    double errmax = 0.0;
    Ode_Vector ytemp{};
    design.flags.Calc_Abort = false;
    const Ode_Instant<E> end =
        Ode_Step_Doubling(design, equation, step, h, ysav, dysav, xsav, eps, yscal, errmax, ytemp, advice);
    if (design.flags.Calc_Abort)
        return end;
    hdid = h;
    hnext = errmax > error_of_largest_growth ? Ode_Safety * h * std::pow(errmax, growth_power) : largest_growth * h;
    for (std::size_t i = 0; i < ytemp.size(); ++i)
        step.y[i] += ytemp[i] * fifth_order_share;
    return end;
}

/// What an error is compared with: the state and its change over h.
inline Ode_Vector Ode_Scale(const Ode_Step& step, double h)
{
    constexpr double tiny_scale = 1e-30;  // guards a scale of zero
    Ode_Vector scale;
    for (std::size_t i = 0; i < scale.size(); ++i)
        scale[i] = std::abs(h * step.dydx[i]) + std::abs(step.y[i]) + tiny_scale;
    return scale;
}

/// Integrates from x1 to x2 and stores the trajectory: Ode_Time and rows 1 to nvar of Ode_States from index 1 on,
/// Ode_Count points, no two nearer than Ode_Save_Interval but for the last, which is the end.
///
/// Asks Retry or Cancel where a step becomes too short, tells where a start in a dwell may be the reason, once a run,
/// and gives up after Ode_Max_Steps. Cancel, giving up and the user's Stop set Calc_Abort. The host is told of the
/// progress.
/// @param ystart     start values; takes the final ones
/// @param nvar       count of equations, 1 or 2
/// @param eps        accuracy: largest error of a step, over the state and its change in the step
/// @param h1, hmin   first and smallest step, seconds
/// @param nok, nbad  out: steps that were taken at once and steps that were shortened; both stop at 32767
/// @throws Fault{6} when a state is no Single, Fault{9} when the arrays are too short, Fault{11} for an accuracy of 0
template <Ode_Equation E>
void Ode_Integrate(Design_State& design, const E& equation, Ode_Vector& ystart, int nvar, double x1, double x2,
                   Single eps, double h1, double hmin, Integer& nok, Integer& nbad)
{
    constexpr int steps_between_looks = 256;  // at the user's Stop
    constexpr int largest_count = 32767;
    Checked_Place(nvar, 1, Max_Ode_Equations);
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
    const double interval = std::abs(double{d.Ode_Save_Interval});
    double xsav = x1 - 2.0 * d.Ode_Save_Interval;  // the first point is always stored
    Ode_Instant<E> now = equation.At(x1);
    for (Long taken = 0; taken < d.Ode_Max_Steps; ++taken) {
        if (taken % steps_between_looks == 0 && Stop_Wished((step.x - x1) / (x2 - x1))) {
            f.Calc_Abort = true;
            break;
        }
        equation.Slope(now, step.y, step.dydx);
        const Ode_Vector scale = Ode_Scale(step, h);
        if (std::abs(Single(step.x - xsav)) > interval && d.Ode_Count < d.Ode_Max_Steps - 1) {
            Ode_Store(design, step, nvar);
            xsav = step.x;
        }
        if ((step.x + h - x2) * (step.x + h - x1) > 0.0)
            h = x2 - step.x;  // the last step lands on the end
        double hdid = 0.0;
        double hnext = 0.0;
        now = Ode_Quality_Step(design, equation, step, h, eps, scale, hdid, hnext);
        if (f.Calc_Abort)
            break;
        Integer& counter = hdid == h ? nok : nbad;
        if (counter < largest_count)
            counter += 1;
        if ((step.x - x2) * (x2 - x1) >= 0.0) {
            ystart = step.y;
            Ode_Store(design, step, nvar);
            Stop_Wished(1.0);
            return;
        }
        if (std::abs(hnext) < hmin && !Ode_Takes_Short_Step(design))
            break;
        h = hnext;
    }
    Stop_Wished(1.0);
    if (!f.Calc_Abort)
        Ode_Gives_Up(design, &d.Ode_Message);
}

}  // namespace lobemax
