// SPDX-License-Identifier: GPL-3.0-or-later
/// Each rung of the ladder at the finest step, 2881 points.
#include <benchmark/benchmark.h>

#include "core/design_state.h"
#include "core/startup.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/torque_compensation.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

Design_State design;

void Make_Cycle(const char* example)
{
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Set_Step(design, 0.125);
    Calculate_Example(design);
    Run_Size(design);
    Calc_Force_Torque(design);
}

constexpr double youngs[2]{206800.0, 206800.0};
constexpr double poissons[2]{0.28, 0.28};

void Motion(benchmark::State& state)
{
    Make_Cycle("Double Dwell");
    for (auto _ : state)
        Calculate_Example(design);
}
BENCHMARK(Motion)->Unit(benchmark::kMicrosecond);

void Size_and_Profile(benchmark::State& state, const char* example)
{
    Make_Cycle(example);
    for (auto _ : state)
        Run_Size(design);
}
BENCHMARK_CAPTURE(Size_and_Profile, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Size_and_Profile, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

void Forces(benchmark::State& state)
{
    Make_Cycle("Double Dwell");
    for (auto _ : state)
        Calc_Force_Torque(design);
}
BENCHMARK(Forces)->Unit(benchmark::kMicrosecond);

void Stresses(benchmark::State& state)
{
    Make_Cycle("Double Dwell");
    for (auto _ : state)
        Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 25.0);
}
BENCHMARK(Stresses)->Unit(benchmark::kMicrosecond);

void Whole_Ladder(benchmark::State& state, const char* example)
{
    Make_Cycle(example);
    for (auto _ : state) {
        Calculate_Example(design);
        Run_Size(design);
        Calc_Force_Torque(design);
        Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 25.0);
    }
}
BENCHMARK_CAPTURE(Whole_Ladder, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Whole_Ladder, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

/// A degree a point, the step that it asks for.
void Compensate(benchmark::State& state, const char* example, double eps)
{
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Calculate_Example(design);
    Run_Size(design);
    Calc_Force_Torque(design);
    Compensation_Run run;
    run.eps = eps;
    Compensation result;
    for (auto _ : state)
        Calc_Compensation(design, run, result);
    state.counters["steps"] = static_cast<double>(result.steps);
}
BENCHMARK_CAPTURE(Compensate, usual, "Double Dwell", 1e-3)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Compensate, fine, "Double Dwell", 1e-6)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Compensate, slow, "Four Dwell", 1e-3)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lobemax
