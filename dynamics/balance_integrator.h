// SPDX-License-Identifier: GPL-3.0-or-later
/// The integrator of the torque compensation: Runge-Kutta of fourth order with step doubling for two equations, from
/// one point of the cycle to the next. It keeps no trajectory, so that of a vibration stays what it is.
/// docs/theory.md, 11.1.
#pragma once

#include "core/basic_types.h"
#include "dynamics/ode_solver.h"

namespace lobemax {

struct Design_State;

/// A state or its derivative: position and velocity.
using Balance_State = Ode_Vector;

/// dydx = f(t, y), asked without an allocation.
using Balance_Derivatives = Ode_Derivatives;

/// How finely is integrated.
struct Balance_Accuracy {
    Single eps = 0.001;          // largest error of a step, over the state and its change in the step
    double start_step = 0.0001;  // seconds
    double min_step = 0.0;       // seconds
    Long max_steps = 1'000'000;  // of a motion; no trajectory is stored, so they cost time alone
};

/// One motion, from rest to rest. It ends early with Calc_Abort: after the user's Cancel at a step that became too
/// short, and when max_steps were not enough, which is told.
class Balance_Integrator {
public:
    Balance_Integrator(Design_State& design, const Balance_Derivatives& derivs, const Balance_Accuracy& accuracy);

    /// Begins a motion at (x, y), seconds.
    void Start(double x, const Balance_State& y);

    /// On to x2, where a step ends. 11 derivative calls a step that is taken at once.
    /// @return false when Calc_Abort was set
    /// @throws Fault{11} for an accuracy of 0
    bool To(double x2);

    const Balance_State& State() const { return step_.y; }
    /// Steps that were taken, in all motions.
    Long Steps() const { return steps_; }

private:
    Design_State& design_;
    Balance_Derivatives derivs_;
    Balance_Accuracy accuracy_;
    Ode_Step step_{};
    double h_ = 0.0;
    Long steps_ = 0;
    Long steps_of_motion_ = 0;
};

}  // namespace lobemax
