// SPDX-License-Identifier: GPL-3.0-or-later
/// The integrator of the torque compensation: Runge-Kutta of fourth order with step doubling for two equations, from
/// one point of the cycle to the next. It keeps no trajectory, so that of a vibration stays what it is.
/// docs/theory.md, 11.1.
#pragma once

#include <cmath>

#include "dynamics/balance_accuracy.h"
#include "dynamics/ode_steps.h"

namespace lobemax {

/// One motion, from rest to rest. It ends early with Calc_Abort: after the user's Cancel at a step that became too
/// short, and when max_steps were not enough, which is told.
template <Ode_Equation E>
class Balance_Integrator {
public:
    Balance_Integrator(Design_State& design, const E& equation, const Balance_Accuracy& accuracy)
        : design_(design), equation_(equation), accuracy_(accuracy)
    {
        design.flags.Ode_Hint_Shown = false;
        design.flags.Calc_Abort = false;
    }

    /// Begins a motion at (x, y), seconds.
    void Start(double x, const Balance_State& y)
    {
        step_ = {};
        step_.x = x;
        step_.y = y;
        now_ = equation_.At(x);
        h_ = accuracy_.start_step;
        steps_of_motion_ = 0;
    }
    /// The same under an equation of its own.
    void Start(double x, const Balance_State& y, const E& equation)
    {
        equation_ = equation;
        Start(x, y);
    }

    /// On to x2, where a step ends. 11 slopes a step that is taken at once.
    /// @return false when Calc_Abort was set
    /// @throws Fault{11} for an accuracy of 0
    bool To(double x2);

    const Balance_State& State() const { return step_.y; }
    /// Steps that were taken, in all motions.
    Long Steps() const { return steps_; }

private:
    Design_State& design_;
    E equation_;
    Balance_Accuracy accuracy_;
    Ode_Step step_{};
    Ode_Instant<E> now_{};  // at step_.x
    double h_ = 0.0;
    Long steps_ = 0;
    Long steps_of_motion_ = 0;
};

template <Ode_Equation E>
bool Balance_Integrator<E>::To(double x2)
{
    const double x1 = step_.x;
    if (accuracy_.eps == 0.0)
        throw Fault{division_by_zero};
    h_ = x2 <= x1 ? -std::abs(h_) : std::abs(h_);
    while (steps_of_motion_ < accuracy_.max_steps) {
        equation_.Slope(now_, step_.y, step_.dydx);
        const Ode_Vector scale = Ode_Scale(step_, h_);
        if ((step_.x + h_ - x2) * (step_.x + h_ - x1) > 0.0)
            h_ = x2 - step_.x;  // the last step lands on the end
        if (h_ < 0.0) {         // a mirrored motion runs forward in a time of its own
            Show_Message("H has gone negative at line 22", Buttons::OK, Symbol::information);
            design_.flags.Calc_Abort = true;
            return false;
        }
        double hdid = 0.0;
        double hnext = 0.0;
        now_ = Ode_Quality_Step(design_, equation_, step_, h_, accuracy_.eps, scale, hdid, hnext,
                                Dwell_Advice::compensation);
        if (design_.flags.Calc_Abort)
            return false;
        ++steps_;
        ++steps_of_motion_;
        h_ = hnext;
        if ((step_.x - x2) * (x2 - x1) >= 0.0)
            return true;
        if (std::abs(hnext) < accuracy_.min_step && !Ode_Takes_Short_Step(design_, Dwell_Advice::compensation)) {
            Restore_Pointer();
            return false;
        }
    }
    Ode_Gives_Up(design_);
    return false;
}

}  // namespace lobemax
