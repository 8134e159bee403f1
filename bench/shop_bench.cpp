// SPDX-License-Identifier: GPL-3.0-or-later
/// Curves for the shop at the finest step, 2881 points, and a tolerance of a micrometre. The fit of the surface aims at
/// 20 ms, the drawing exchange file of all curves, the check before it included, at 30 ms.
#include <benchmark/benchmark.h>

#include <string>

#include "core/design_state.h"
#include "core/startup.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "shop/curve_files.h"
#include "shop/dxf.h"

namespace lobemax {
namespace {

Design_State design;

void Make_Cam(const char* Camtype)
{
    constexpr double per_degree = 1.0 / Deg_per_Rad;
    Sub_Main(design, "", {});
    Set_Step(design, 0.125);
    Motion_Group& m = design.motion;
    m.No_of_segments = 4;
    const char* const programs[] = {"67", "DW", "67", "DW"};
    const double betas[] = {110.0, 60.0, 120.0, 70.0};
    const char* const ends[] = {"0", "20", "20", "0", "0"};
    for (int i = 1; i <= 4; ++i) {
        Pick_Motion(design, i, "RDFD"[i - 1]);
        Pick_Program(design, i, programs[i - 1]);
        m.Beta_Deg(i) = betas[i - 1];
        m.Beta_Rad(i) = betas[i - 1] * per_degree;
        m.Start_Value(i) = ends[i - 1];
        m.End_Value(i) = ends[i];
    }
    Update_Segment_Angles(design);
    Calc_All(design, true);
    Motion_Done(design);
    Cam_Group& c = design.cam;
    c.Camtype = Camtype;
    c.Followtype = 1;
    c.Prime_Rad = 60.0;
    c.Follow_Rad = 12.0;
    Set_Units(design);
    Run_Size(design);
}

void Fit_of_Arcs(benchmark::State& state)
{
    Make_Cam("Radial");
    const True_Cam cam(design);
    std::size_t arcs = 0;
    for (auto _ : state)
        arcs = Fit_Biarcs(Surface_of(cam), 1e-3).elements.size();
    state.counters["arcs"] = static_cast<double>(arcs);
}
BENCHMARK(Fit_of_Arcs)->Unit(benchmark::kMillisecond);

void Fit_of_a_Spline(benchmark::State& state)
{
    Make_Cam("Radial");
    const True_Cam cam(design);
    std::size_t points = 0;
    for (auto _ : state)
        points = Fit_Spline(Curve_Samples(Surface_of(cam)), 1e-3).points;
    state.counters["points"] = static_cast<double>(points);
}
BENCHMARK(Fit_of_a_Spline)->Unit(benchmark::kMillisecond);

void Drawing_File(benchmark::State& state, const char* Camtype)
{
    Make_Cam(Camtype);
    std::size_t bytes = 0;
    for (auto _ : state) {
        const Made_Curves made = Make_Curve_Set(design, {});
        bytes = made.set ? Dxf_Text(*made.set, "cam.dxf").size() : 0;
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK_CAPTURE(Drawing_File, disk, "Radial")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Drawing_File, barrel, "Barrel")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lobemax
