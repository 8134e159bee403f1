// SPDX-License-Identifier: GPL-3.0-or-later
/// Linkages at the finest step: all points of each train, the scale of its scene, and a frame of it.
#include <benchmark/benchmark.h>

#include <array>

#include "core/design_state.h"
#include "core/lanes.h"
#include "core/startup.h"
#include "core/surface.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "linkage/linkage_drawing.h"
#include "linkage/linkage_kinematics.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

Design_State design;

/// What is drawn on it is lost.
class No_Surface : public Surface {
public:
    void Scale(double, double, double, double) override {}
    void Window(double, double, double, double) override {}
    void Clear() override {}
    void PSet(double, double, Ink) override {}
    void Line(double, double, double, double, Ink) override {}
    void Line_to(double, double, Ink) override {}
    void Circle(double, double, double, Ink) override {}
    void Outline(std::span<const World_Point> points, Ink) override { benchmark::DoNotOptimize(points.data()); }
    void Label(double, double, std::string_view, Ink) override {}
};

/// A train by the code of Linkage_Type, 2881 points.
void Make_Train(std::int64_t type)
{
    constexpr std::array names{"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"};
    Sub_Main(design, "", {});
    Load_Example(design, names[static_cast<std::size_t>(type)]);
    Set_Step(design, 0.125);
    Calculate_Example(design);
    Run_Size(design);
    Run_Linkage(design);
}

void All_Points(benchmark::State& state)
{
    Make_Train(state.range(0));
    Integer answer;
    bool reached = true;
    for (auto _ : state)
        reached = Calc_Linkage_All(design, answer) && reached;
    if (!reached)
        state.SkipWithError("the linkage was not calculated");
}
BENCHMARK(All_Points)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

/// The same point by point: the formula over one double and the C library.
void All_Points_One_by_One(benchmark::State& state)
{
    const Forced_Lanes forced(Lane_Width::reference);
    All_Points(state);
}
BENCHMARK(All_Points_One_by_One)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

void Scene(benchmark::State& state)
{
    Make_Train(state.range(0));
    No_Surface surface;
    bool drawn = true;
    for (auto _ : state)
        drawn = Link_Anim_Setup(design, surface) && drawn;
    if (!drawn)
        state.SkipWithError("there was nothing to draw");
}
BENCHMARK(Scene)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

void Frame(benchmark::State& state)
{
    Make_Train(state.range(0));
    No_Surface surface;
    bool drawn = Link_Anim_Setup(design, surface);
    int i = 0;
    for (auto _ : state) {
        drawn = Link_Anim_Frame(design, surface, i) && drawn;
        i = (i + 40) % 2881;
    }
    if (!drawn)
        state.SkipWithError("there was nothing to draw");
}
BENCHMARK(Frame)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

/// The worst frame: no point connects, and every one is tried for the last pose.
void Frame_of_a_Broken_Train(benchmark::State& state)
{
    Make_Train(state.range(0));
    design.linkage.Link_3 = 20.0;
    design.linkage.S3y = 400.0;
    No_Surface surface;
    bool drawn = Link_Anim_Setup(design, surface);
    for (auto _ : state)
        drawn = Link_Anim_Frame(design, surface, 1440) && drawn;
    if (!drawn)
        state.SkipWithError("there was nothing to draw");
}
BENCHMARK(Frame_of_a_Broken_Train)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lobemax
