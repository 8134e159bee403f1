// SPDX-License-Identifier: GPL-3.0-or-later
/// What a run of the torque compensation is told of its integration.
#pragma once

#include "core/basic_types.h"
#include "dynamics/ode_solver.h"

namespace lobemax {

/// A state or its derivative: position and velocity.
using Balance_State = Ode_Vector;

/// How finely is integrated.
struct Balance_Accuracy {
    Single eps = 0.001;          // largest error of a step, over the state and its change in the step
    double start_step = 0.0001;  // seconds
    double min_step = 0.0;       // seconds
    Long max_steps = 1'000'000;  // of a motion; no trajectory is stored, so they cost time alone
};

}  // namespace lobemax
