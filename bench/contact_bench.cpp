// SPDX-License-Identifier: GPL-3.0-or-later
/// Forces of a follower that separates, and stresses by kind of contact, at 2881 points.
#include <benchmark/benchmark.h>

#include <utility>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/startup.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

constexpr double youngs[2]{206800.0, 206800.0};
constexpr double poissons[2]{0.28, 0.28};

Design_State design;

void Make_Forces()
{
    Sub_Main(design, "", {});
    Load_Example(design, "Double Dwell");
    Set_Step(design, 0.125);
    Calculate_Example(design);
    Run_Size(design);
    Calc_Force_Torque(design);
}

/// A follower that is off its cam all the time: the one question is answered by going on.
void Forces_of_a_Follower_off_its_Cam(benchmark::State& state)
{
    Make_Forces();
    design.cam.Closure = "Force";
    design.dynamics.Preload = -1e6;
    Host host;
    host.messenger = [](const Message&) { return Answer::Ignore; };
    Host before = Install_Host(std::move(host));
    for (auto _ : state)
        Calc_Force_Torque(design);
    Install_Host(std::move(before));
}
BENCHMARK(Forces_of_a_Follower_off_its_Cam)->Unit(benchmark::kMicrosecond);

void Stresses_of(benchmark::State& state, int followtype, int roller_type, double size)
{
    Make_Forces();
    design.cam.Followtype = followtype;
    design.cam.Closure = "Form";
    for (int i = 0; followtype == 2 && i <= design.motion.Max_Data_Points_used; ++i)
        design.results.CalcData(var::Rho, i) = 60.0;  // a face has no place in a hollow
    for (auto _ : state)
        if (!Calc_Contact_Stress(design, roller_type, youngs, poissons, size))
            state.SkipWithError("not all points");
}
BENCHMARK_CAPTURE(Stresses_of, cylindrical_roller, 1, cylindrical_roller, 25.0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Stresses_of, crowned_roller, 1, crowned_roller, 300.0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Stresses_of, flat_face, 2, cylindrical_roller, 25.0)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lobemax
