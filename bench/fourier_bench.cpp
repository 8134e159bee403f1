// SPDX-License-Identifier: GPL-3.0-or-later
/// The transform against the plain double sum with two trigonometric calls a term, at 2880 points, in one run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "core/design_state.h"
#include "core/lanes.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "motion/fourier.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

Design_State design;

constexpr int points = 2880;

void Make_Cycle()
{
    Sub_Main(design, "", {});
    Load_Example(design, "Double Dwell");
    Set_Step(design, 0.125);
    Calculate_Example(design);
}

void Plain_Double_Sum(benchmark::State& state)
{
    Make_Cycle();
    std::vector<double> x;
    for (int i = 0; i < points; ++i)
        x.push_back(design.results.CalcData(var::A, i));
    std::vector<double> real(points);
    std::vector<double> imag(points);
    for (auto _ : state) {
        for (int k = 0; k < points; ++k) {
            double c = 0.0;
            double s = 0.0;
            for (int n = 0; n < points; ++n) {
                const double a = (k * PI2) * n / points;
                c += std::cos(a) * x[static_cast<std::size_t>(n)] / points;
                s -= std::sin(a) * x[static_cast<std::size_t>(n)] / points;
            }
            real[static_cast<std::size_t>(k)] = c;
            imag[static_cast<std::size_t>(k)] = s;
        }
        benchmark::DoNotOptimize(real.data());
        benchmark::DoNotOptimize(imag.data());
    }
}
BENCHMARK(Plain_Double_Sum)->Unit(benchmark::kMillisecond);

void Fourier_Transform(benchmark::State& state)
{
    Make_Cycle();
    for (auto _ : state)
        Do_DFT(design, var::A, 0, points, 15);
}
BENCHMARK(Fourier_Transform)->Unit(benchmark::kMillisecond);

/// The same sums, two doubles at a time.
void Fourier_Transform_by_Pairs(benchmark::State& state)
{
    const Forced_Lanes forced(Lane_Width::reference);
    Fourier_Transform(state);
}
BENCHMARK(Fourier_Transform_by_Pairs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lobemax
