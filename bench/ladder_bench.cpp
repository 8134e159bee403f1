// SPDX-License-Identifier: GPL-3.0-or-later
/// Each rung of the ladder at the finest step, 2881 points.
#include <benchmark/benchmark.h>

#include "core/circle.h"
#include "core/design_state.h"
#include "core/numeric.h"
#include "core/startup.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/torque_compensation.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
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

/// Rise and fall of half a turn each by one law, 2881 points.
void Motion_by_Law(benchmark::State& state, const char* code)
{
    Make_Cycle("Double Dwell");
    Motion_Group& m = design.motion;
    m.No_of_segments = 2;
    for (const int segment : {1, 2}) {
        m.Beta_Deg(segment) = 180.0;
        m.Beta_Rad(segment) = PI;
        Pick_Motion(design, segment, segment == 1 ? 'R' : 'F');
        Pick_Program(design, segment, code);
    }
    m.Start_Value(2) = m.End_Value(1);
    m.End_Value(2) = m.Start_Value(1);
    for (auto _ : state)
        Calculate_Example(design);
}
BENCHMARK_CAPTURE(Motion_by_Law, modified_sine, "MS")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, modified_trapezoid, "MT")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, cycloid, "CF")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, double_harmonic, "DH")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, polynomial_5_11, "11")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, dudley, "DU")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, thoren, "TH")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Law, gutman, "GU")->Unit(benchmark::kMicrosecond);

/// Rise and fall of half a turn each through eight conditions, 2881 points.
void Motion_by_Conditions(benchmark::State& state, const char* code)
{
    Make_Cycle("Double Dwell");
    Motion_Group& m = design.motion;
    m.No_of_segments = 2;
    for (const int segment : {1, 2}) {
        m.Beta_Deg(segment) = 180.0;
        m.Beta_Rad(segment) = PI;
        Pick_Program(design, segment, code);
        m.No_Conditions(segment) = 8;
        m.EvenKnots(segment) = true;
        for (const int row : {0, Last_Condition_Row})
            for (const int order : {1, 2, 3})
                Bound_Text(design, segment, row, order) = "0";
    }
    m.Start_Value(2) = m.End_Value(1);
    m.End_Value(2) = m.Start_Value(1);
    for (auto _ : state)
        if (!Calculate_Example(design))
            state.SkipWithError("not solved");
}
BENCHMARK_CAPTURE(Motion_by_Conditions, polynomial, "PO")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Motion_by_Conditions, spline, "BS")->Unit(benchmark::kMicrosecond);

/// Extremes of a row of 2881 points, with their points.
void Extremes_of_a_Row(benchmark::State& state)
{
    Make_Cycle("Double Dwell");
    for (auto _ : state)
        benchmark::DoNotOptimize(MaxMin2(design.results.CalcData, var::A, 0, design.motion.Max_Data_Points_used));
}
BENCHMARK(Extremes_of_a_Row)->Unit(benchmark::kMicrosecond);

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
