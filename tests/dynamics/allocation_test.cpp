// SPDX-License-Identifier: GPL-3.0-or-later
/// The loops over the points allocate nothing: eight times the points, not one allocation more.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "camgeom/profile.h"
#include "camgeom/sizing.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/torque_compensation.h"
#include "dynamics/vibration.h"
#include "tests/support/allocations.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace {

std::atomic<long> allocations{0};

}  // namespace

// The whole test program counts its allocations; nothing else about them changes. The sanitizer brings operators of
// its own, so its build does not count. Not inlined: the compiler would see new and free meet and take it for a
// mistake.
#ifndef LOBEMAX_ADDRESS_SANITIZER
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
#endif

namespace lobemax {

long testing::Allocations()
{
    return allocations;
}

namespace {

using testing::Cam_Maker;

constexpr double youngs[2]{206800.0, 206800.0};
constexpr double poissons[2]{0.28, 0.28};

template <class Work>
long Allocations_of(Work&& work)
{
    work();  // the first time fills whatever is made once
    const long before = allocations;
    work();
    return allocations - before;
}

struct Counts {
    long motion, phi, rho, forces, stresses;
};

Counts Count(bool translating, int followtype, const char* camtype, double step)
{
    Cam_Maker maker;
    maker.translating = translating;
    maker.lift = 8.0;
    maker.step = step;
    maker.Make();
    design.cam.Followtype = followtype;
    design.cam.Camtype = camtype;
    design.dynamics.Preload = 1e6;
    Counts counts{};
    counts.motion = Allocations_of([] { Calc_All(design, true); });
    counts.phi = Allocations_of([followtype] { Calc_Phi(design, followtype); });
    counts.rho = Allocations_of([followtype] { Calc_Rho(design, followtype); });
    // The pulse table has as many lines as the torque has runs, which does not hang on the step.
    counts.forces = Allocations_of([] { Calc_Force_Torque(design); });
    design.cam.Closure = "Form";
    counts.stresses = Allocations_of([] { Calc_Contact_Stress(design, crowned_roller, youngs, poissons, 300.0); });
    return counts;
}

TEST(Point_Loops, allocate_nothing_in_any_configuration)
{
    testing::Script script;
    struct Configuration {
        bool translating;
        int followtype;
        const char* camtype;
    };
    for (const auto& [translating, followtype, camtype] :
         {Configuration{true, 1, "Radial"}, Configuration{false, 1, "Radial"}, Configuration{true, 1, "Barrel"},
          Configuration{false, 1, "Barrel"}, Configuration{true, 1, "Linear"}}) {
        const Counts coarse = Count(translating, followtype, camtype, 1.0);
        const Counts fine = Count(translating, followtype, camtype, 0.125);
        EXPECT_EQ(coarse.motion, fine.motion) << camtype << translating;
        EXPECT_EQ(coarse.phi, fine.phi) << camtype << translating;
        EXPECT_EQ(coarse.rho, fine.rho) << camtype << translating;
        EXPECT_EQ(coarse.forces, fine.forces) << camtype << translating;
        EXPECT_EQ(coarse.stresses, fine.stresses) << camtype << translating;
    }
    design = {};
}

TEST(Integration, allocates_nothing_a_step_but_its_trajectory_once)
{
    testing::Script script;
    Cam_Maker{}.Make();
    design.dynamics.Preload = 1e6;
    ASSERT_TRUE(Model_Setup(design));
    const auto allocations_at = [](double accuracy) {
        return Allocations_of([accuracy] {
            Vibration_Run run;
            run.eps = accuracy;
            Step_Counts steps;
            ASSERT_TRUE(Solve_Model(design, run, steps));
            ASSERT_TRUE(Model_Results(design));
            ASSERT_TRUE(Calc_Polydyne(design));
        });
    };
    const long coarse = allocations_at(1e-2);
    const Long few = design.dynamics.Ode_Count;
    EXPECT_EQ(allocations_at(1e-6), coarse);
    EXPECT_GT(design.dynamics.Ode_Count, 4 * few);
}

TEST(Point_Loops, a_compensation_allocates_nothing_for_its_steps)
{
    testing::Script script;
    Cam_Maker{}.Make();
    const auto allocations_at = [](double eps, Long& steps) {
        Compensation_Run run;
        run.eps = eps;
        Compensation result;
        const long counted = Allocations_of([&] { EXPECT_TRUE(Calc_Compensation(design, run, result)); });
        steps = result.steps;
        return counted;
    };
    Long few = 0;
    Long many = 0;
    const long rough = allocations_at(1e-3, few);
    EXPECT_EQ(allocations_at(1e-8, many), rough);
    EXPECT_GT(many, few);
    design = {};
}

}  // namespace
}  // namespace lobemax
