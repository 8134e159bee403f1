// SPDX-License-Identifier: GPL-3.0-or-later
/// The true geometry and the check of a whole design at the finest step, 2881 points.
#include <benchmark/benchmark.h>

#include <vector>

#include "core/design_state.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"
#include "truth/check.h"
#include "truth/retrace.h"

namespace lobemax {
namespace {

Design_State design;

/// An example at the finest step up to the stresses of a crowned roller.
void Make(const char* example)
{
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Set_Step(design, 0.125);
    Calculate_Example(design);
    Run_Size(design);
    Run_Forces(design);
    Put_Materials(design);
    design.dynamics.Roller_type = 2;
    design.dynamics.Crown_radius = 500.0;
    Contact_Field refused{};
    Run_Stress(design, refused);
}

void Whole_Check(benchmark::State& state, const char* example)
{
    Make(example);
    const Limits limits;
    for (auto _ : state)
        benchmark::DoNotOptimize(Check_Design(design, limits));
}
BENCHMARK_CAPTURE(Whole_Check, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Whole_Check, offset, "Single Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Whole_Check, flat, "Flat Follower")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Whole_Check, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

void True_Points(benchmark::State& state, const char* example)
{
    Make(example);
    const True_Cam cam(design);
    for (auto _ : state)
        for (int i = 0; i <= 2880; ++i)
            benchmark::DoNotOptimize(cam.At(0.125 * i));
}
BENCHMARK_CAPTURE(True_Points, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(True_Points, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

/// @param step  degrees, of the angles and of the surface's points
void Retrace_Steps(benchmark::State& state, const char* example, double step, Looking looking)
{
    Make(example);
    const True_Cam cam(design);
    std::vector<Vector> points;
    std::vector<double> angles;
    for (int i = 0; i * step < 360.0; ++i) {
        angles.push_back(i * step);
        points.push_back(cam.At(angles.back()).surface);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(Retrace(cam, Surface_Path::Through(points), angles, looking));
}

void Retracing(benchmark::State& state, const char* example)
{
    Retrace_Steps(state, example, 0.125, Looking::where_it_may_touch);
}
BENCHMARK_CAPTURE(Retracing, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Retracing, flat, "Flat Follower")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Retracing, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

void Retracing_of_361_Points(benchmark::State& state, const char* example)
{
    Retrace_Steps(state, example, 1.0, Looking::where_it_may_touch);
}
BENCHMARK_CAPTURE(Retracing_of_361_Points, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Retracing_of_361_Points, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

/// What leaving out saves: every element at every angle.
void Retracing_Everywhere(benchmark::State& state, const char* example)
{
    Retrace_Steps(state, example, 1.0, Looking::everywhere);
}
BENCHMARK_CAPTURE(Retracing_Everywhere, translating, "Double Dwell")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Retracing_Everywhere, arm, "Oscillating")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lobemax
