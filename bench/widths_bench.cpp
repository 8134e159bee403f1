// SPDX-License-Identifier: GPL-3.0-or-later
/// The ladder at every width that the processor has, and as the reference, one double at a time by the C library:
/// before and after in one run. At 361 and at 2881 points.
#include <benchmark/benchmark.h>

#include <string>
#include <utility>

#include "core/lanes.h"
#include "core/startup.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

enum class Up_to { profile, stresses };

void Rungs(benchmark::State& state, const char* example, double step, Lane_Width width, Up_to rung)
{
    constexpr double youngs[2]{206800.0, 206800.0};
    constexpr double poissons[2]{0.28, 0.28};
    const Forced_Lanes forced(width);
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Set_Step(design, step);
    for (auto _ : state) {
        Calculate_Example(design);
        Run_Size(design);
        if (rung == Up_to::profile)
            continue;
        Calc_Force_Torque(design);
        Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 25.0);
    }
}

/// Registered when the program starts, since only then the processor is known.
const bool registered = [] {
    constexpr std::pair<Lane_Width, const char*> widths[]{{Lane_Width::reference, "reference"},
                                                          {Lane_Width::sse2, "SSE2"},
                                                          {Lane_Width::avx2, "AVX2"},
                                                          {Lane_Width::avx512, "AVX-512"}};
    constexpr std::pair<const char*, const char*> cams[]{{"Double Dwell", "translating"}, {"Oscillating", "arm"}};
    constexpr std::pair<Up_to, const char*> rungs[]{{Up_to::profile, "Motion_to_Profile"},
                                                    {Up_to::stresses, "Motion_to_Stresses"}};
    for (const auto& [rung, work] : rungs)
        for (const auto& [example, cam] : cams)
            for (const double step : {1.0, 0.125})
                for (const auto& [width, name] : widths) {
                    if (width > Widest_Lanes())
                        continue;
                    const std::string title =
                        std::string(work) + "/" + cam + "/" + (step == 1.0 ? "361" : "2881") + "/" + name;
                    benchmark::RegisterBenchmark(title.c_str(), Rungs, example, step, width, rung)
                        ->Unit(benchmark::kMicrosecond);
                }
    return true;
}();

}  // namespace
}  // namespace lobemax
