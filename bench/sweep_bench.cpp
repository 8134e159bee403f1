// SPDX-License-Identifier: GPL-3.0-or-later
/// Designs a second of one core: the ladder of a sweep over prime radius and lift, each design through the door.
#include <benchmark/benchmark.h>

#include "core/startup.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

void Sweep(benchmark::State& state, const char* example, double step, const Standing& levels)
{
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Set_Step(design, step);
    const double prime = design.cam.Prime_Rad;
    int number = 0;
    for (auto _ : state) {
        number = (number + 1) % 1000;
        Put(design, "Prime_Rad", prime * (1.0 + 1e-4 * number));
        Put(design, "Shaft speed", 10.0 + 0.01 * number);
        if (!Ladder(design, levels).reached)
            state.SkipWithError("a design of the sweep was not reached");
    }
    state.counters["designs/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

constexpr Standing to_size{.motion = true, .size = true};
constexpr Standing to_forces{.motion = true, .size = true, .forces = true};
constexpr Standing to_stress{.motion = true, .size = true, .forces = true, .stress = true};

BENCHMARK_CAPTURE(Sweep, translating_361_to_size, "Double Dwell", 1.0, to_size)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, translating_361_to_forces, "Double Dwell", 1.0, to_forces)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, translating_361_to_stress, "Double Dwell", 1.0, to_stress)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, arm_361_to_forces, "Oscillating", 1.0, to_forces)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, translating_2881_to_forces, "Double Dwell", 0.125, to_forces)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, arm_2881_to_forces, "Oscillating", 0.125, to_forces)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Sweep, two_threads_361_to_forces, "Double Dwell", 1.0, to_forces)
    ->Unit(benchmark::kMicrosecond)
    ->Threads(2)
    ->UseRealTime();

}  // namespace
}  // namespace lobemax
