// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/balance_integrator.h"

#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"

namespace lobemax {

namespace {

constexpr double tiny_scale = 1e-30;  // guards a scale of zero

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
    step_ = {};
    step_.x = x;
    step_.y = y;
    h_ = accuracy_.start_step;
    steps_of_motion_ = 0;
}

bool Balance_Integrator::To(double x2)
{
    const double x1 = step_.x;
    if (accuracy_.eps == 0.0)
        throw Fault{division_by_zero};
    h_ = x2 <= x1 ? -std::abs(h_) : std::abs(h_);
    while (steps_of_motion_ < accuracy_.max_steps) {
        Ode_Vector scale{};
        derivs_(step_.x, step_.y, step_.dydx);
        for (std::size_t i = 0; i < scale.size(); ++i)
            scale[i] = std::abs(h_ * step_.dydx[i]) + std::abs(step_.y[i]) + tiny_scale;
        if ((step_.x + h_ - x2) * (step_.x + h_ - x1) > 0.0)
            h_ = x2 - step_.x;  // the last step lands on the end
        if (h_ < 0.0) {         // a mirrored motion runs forward in a time of its own
            Show_Message("H has gone negative at line 22", Buttons::OK, Symbol::information);
            design_.flags.Calc_Abort = true;
            return false;
        }
        double hdid = 0.0;
        double hnext = 0.0;
        Ode_Quality_Step(design_, derivs_, step_, Max_Ode_Equations, h_, accuracy_.eps, scale, hdid, hnext,
                         Dwell_Advice::compensation);
        if (design_.flags.Calc_Abort)
            return false;
        ++steps_;
        ++steps_of_motion_;
        h_ = hnext;
        if ((step_.x - x2) * (x2 - x1) >= 0.0)
            return true;
        if (std::abs(hnext) < accuracy_.min_step &&
            !Ode_Go_on(design_, "Runge-Kutta step size has become smaller than minimum", Dwell_Advice::compensation)) {
            Restore_Pointer();
            return false;
        }
    }
    Show_Message("\n\nDid not converge.  Took too many steps in the integration routine and has given up.", Buttons::OK,
                 Symbol::information);
    design_.flags.Calc_Abort = true;
    Restore_Pointer();
    return false;
}

}  // namespace lobemax
