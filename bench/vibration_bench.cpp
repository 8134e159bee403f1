// SPDX-License-Identifier: GPL-3.0-or-later
/// Two turns of each model of the follower train, with the default values of millimetres.
#include <benchmark/benchmark.h>

#include "core/design_state.h"
#include "core/startup.h"
#include "dynamics/ode_steps.h"
#include "dynamics/vibration.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

Design_State design;

void Make_Train(const char* example, int model, double omega, double step)
{
    Sub_Main(design, "", {});
    Load_Example(design, example);
    if (step != 1.0)
        Set_Step(design, step);
    Set_Shaft_Speed(design, omega);
    Calculate_Example(design);
    Run_Size(design);
    design.dynamics.Preload = 20000.0;
    design.dynamics.Model_Type = model;
    Run_Forces(design);
}

/// The work of cmd_Calc: forces, integration, response.
void Run(benchmark::State& state, double eps, Long steps)
{
    Vibration_Run run;
    run.eps = eps;
    design.dynamics.Ode_Max_Steps = steps;
    bool reached = true;
    for (auto _ : state)
        reached = Run_Vibration(design, run) && reached;
    if (!reached)
        state.SkipWithError("the run did not reach its end");
    state.counters["points"] = design.dynamics.Ode_Count;
}

void Two_Turns(benchmark::State& state)
{
    Make_Train("Double Dwell", static_cast<int>(state.range(0)), 15.0, 1.0);
    Run(state, 1e-3, 20000);
}
BENCHMARK(Two_Turns)->DenseRange(First_Model, Last_Model)->Unit(benchmark::kMicrosecond);

/// Its integration alone, with the equation as a function of time that is called at every stage: the reference.
void Two_Turns_of_a_Function(benchmark::State& state)
{
    Make_Train("Double Dwell", static_cast<int>(state.range(0)), 15.0, 1.0);
    Run_Vibration(design, {});
    const Vibration_Model model(design);
    const auto function = [&model](double t, const Ode_Vector& y, Ode_Vector& dydx) {
        model.Slope(model.At(t), y, dydx);
    };
    Step_Counts steps;
    for (auto _ : state) {
        Ode_Vector y{};
        Ode_Integrate(design, Ode_Derivatives(function), y, 2, 0.0, 2 * Cam_Period(design), 1e-3, 1e-4, 0.0, steps.good,
                      steps.retried);
    }
    state.counters["points"] = design.dynamics.Ode_Count;
}
BENCHMARK(Two_Turns_of_a_Function)->DenseRange(First_Model, Last_Model)->Unit(benchmark::kMicrosecond);

/// The same as the program has it: what an instant decides is found once for all its stages.
void Two_Turns_Integrated(benchmark::State& state)
{
    Make_Train("Double Dwell", static_cast<int>(state.range(0)), 15.0, 1.0);
    Run_Vibration(design, {});
    Step_Counts steps;
    for (auto _ : state)
        Solve_Model(design, {}, steps);
    state.counters["points"] = design.dynamics.Ode_Count;
}
BENCHMARK(Two_Turns_Integrated)->DenseRange(First_Model, Last_Model)->Unit(benchmark::kMicrosecond);

void Two_Turns_to_a_Millionth(benchmark::State& state)
{
    Make_Train("Double Dwell", static_cast<int>(state.range(0)), 15.0, 1.0);
    Run(state, 1e-6, 20000);
}
BENCHMARK(Two_Turns_to_a_Millionth)->DenseRange(First_Model, Last_Model)->Unit(benchmark::kMicrosecond);

/// A slow shaft: in its dwells the velocity dies away to nothing, and an accuracy that is a share of it asks for ever
/// shorter steps.
void Slow_Shaft_with_Dwells(benchmark::State& state)
{
    Make_Train("Double Dwell", 3, static_cast<double>(state.range(0)), 1.0);
    Run(state, 1e-3, 1'000'000);
}
BENCHMARK(Slow_Shaft_with_Dwells)->Arg(15)->Arg(8)->Arg(4)->Unit(benchmark::kMicrosecond);

void Finest_Step(benchmark::State& state)
{
    Make_Train("Double Dwell", 3, 15.0, 0.125);
    Run(state, 1e-3, 20000);
}
BENCHMARK(Finest_Step)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lobemax
