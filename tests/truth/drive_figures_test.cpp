// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/drive_figures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "core/startup.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "edit/rungs.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

constexpr double pi = std::numbers::pi;

/// Torque M + C sin(2 theta) and friction G + H cos(2 theta), with a harmonic motion.
class Drive : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static constexpr double M = 7, C = 20, G = 3, H = 2, omega = 12, h = 30;

    static void Lay(int unit_system, int base = 1, bool translating = true)
    {
        design.identity.WhichUnit = unit_system;
        design.cam.Translating = translating;
        Set_Time_Base(design, base);
        design.motion.Shaft_speed = omega;
        design.dynamics.Mass = 2;
        design.dynamics.Coeff_of_Fluctuation = 0.05;
        train_design::Lay_Harmonic(base, h, omega);
        for (int i = 0; i <= 360; ++i) {
            design.results.CalcData(var::Torque, i) = M + C * std::sin(2 * i * pi / 180);
            design.results.CalcData(var::Friction_Torque, i) = G + H * std::cos(2 * i * pi / 180);
        }
        design.flags.Dynamicflag = true;
    }
    static Drive_Figures Found()
    {
        const std::optional<Drive_Figures> found = Find_Drive_Figures(design);
        EXPECT_TRUE(found.has_value());
        return found.value_or(Drive_Figures{});
    }

    testing::Script script_;
};

TEST_F(Drive, a_wave_about_a_mean_has_the_figures_of_its_closed_form)
{
    Lay(5);
    const auto [torque, whole, inertia_peak, inertia_mean] = Found();
    EXPECT_NEAR(torque.mean, M, 1E-6);
    EXPECT_NEAR(torque.rms, std::sqrt(M * M + C * C / 2), 1E-5);
    EXPECT_NEAR(torque.peak, M + C, 1E-6);
    EXPECT_EQ(torque.peak_angle, 45.0);
    EXPECT_NEAR(torque.power_mean, M * omega, 1E-5);
    EXPECT_NEAR(torque.power_peak, (M + C) * omega, 1E-5);
    // The work of a half wave, C integral sin(2 theta) from 0 to 90 degrees, by trapezoids of one degree.
    EXPECT_NEAR(torque.energy_swing, C, C * std::pow(2 * pi / 180, 2) / 12 * 1.05);
    ASSERT_TRUE(torque.flywheel.has_value());
    EXPECT_NEAR(*torque.flywheel, C / (0.05 * omega * omega), 1E-3 * *torque.flywheel);

    const double wave = std::hypot(C, H);
    EXPECT_NEAR(whole.mean, M + G, 1E-6) << "friction hinders";
    EXPECT_NEAR(whole.rms, std::sqrt((M + G) * (M + G) + wave * wave / 2), 1E-5);
    EXPECT_NEAR(whole.peak, M + G + wave, 2E-3);
    EXPECT_NEAR(whole.energy_swing, wave, 2E-2);
}

TEST_F(Drive, the_peak_is_of_the_largest_amount_and_keeps_its_sign)
{
    Lay(5);
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Torque, i) = -design.results.CalcData(var::Torque, i);
    const Drive_Figures found = Found();
    EXPECT_NEAR(found.torque.peak, -(M + C), 1E-6);
    EXPECT_NEAR(found.torque.power_peak, -(M + C) * omega, 1E-5);
    EXPECT_NEAR(found.with_friction.mean, -M + G, 1E-6);
}

TEST_F(Drive, figures_are_in_si_whatever_the_units_are)
{
    struct System {
        int code;
        double torque, mass, length;
    };
    constexpr double pound = 4.4482216152605;
    for (const auto& [code, torque, mass, length] :
         {System{1, pound * 0.0254, pound / 0.0254, 0.0254}, System{2, pound * 0.3048, pound / 0.3048, 0.3048},
          System{3, 1.0, 1.0, 1.0}, System{4, 1.0, 1.0, 0.01}, System{5, 1.0, 1.0, 0.001}}) {
        Lay(code);
        const Drive_Figures found = Found();
        EXPECT_NEAR(found.torque.mean / torque, M, 1E-5) << code;
        EXPECT_NEAR(found.torque.peak / torque, M + C, 1E-5) << code;
        EXPECT_NEAR(Newton_Metres(design), torque, 1E-12) << code;
        EXPECT_NEAR(found.inertia_peak / (2 * mass * std::pow(h / 2 * length, 2)), 1.0, 1E-5) << code;
    }
    EXPECT_NEAR(Newton_Metres_per_Inch_Pound, pound * 0.0254, 1E-15);
    EXPECT_NEAR(Watts_per_Horsepower, 550 * pound * 0.3048, 1E-9) << "550 ft-lb per second";
}

TEST_F(Drive, the_follower_weighs_on_the_shaft_by_the_square_of_its_way)
{
    // x = h (1 - cos theta) / 2: m (dx/dtheta)^2 = m h^2 sin^2 theta / 4, the mean of which is a half
    for (const int base : {1, 2, 3}) {
        for (const bool translating : {true, false}) {
            Lay(5, base, translating);
            design.cam.ArmRad = 80;
            const double way = translating ? h / 1000 : h * pi / 180 * 0.08;
            const Drive_Figures found = Found();
            // The degrees base has one factor of 180 over pi for a length; an arm's rows are degrees per degree of cam
            // there, without one.
            EXPECT_NEAR(found.inertia_peak / (2 * way * way / 4), 1.0, 1E-5) << base << translating;
            EXPECT_NEAR(found.inertia_mean / (2 * way * way / 8), 1.0, 1E-5) << base << translating;
        }
    }
}

TEST_F(Drive, of_a_mass_alone_swings_by_its_kinetic_energy)
{
    for (const int base : {1, 2, 3}) {
        testing::Cam_Maker{.time_base = base, .step = 0.25}.Make();
        design.cam.Closure = "Form";
        design.dynamics.Mass = 3;
        design.dynamics.Return_Spring_Rate = design.dynamics.Preload = design.dynamics.Damping = 0;
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Run_Forces(design));
        const Drive_Figures found = Found();
        // T = m omega^2 x' x'': the work is m (omega x')^2 / 2, that of the equivalent inertia
        EXPECT_NEAR(found.torque.energy_swing / (found.inertia_peak * 12 * 12 / 2), 1.0, 1E-3) << base;
        EXPECT_NEAR(found.torque.mean, 0, 1E-3 * found.torque.rms) << "what goes in comes out: " << base;
        EXPECT_GT(found.with_friction.mean, 0) << base;
    }
}

TEST_F(Drive, there_is_no_flywheel_without_speed_or_fluctuation)
{
    Lay(5);
    design.dynamics.Coeff_of_Fluctuation = 0;
    EXPECT_FALSE(Found().torque.flywheel.has_value());
    Lay(5);
    design.motion.Shaft_speed = 0;
    EXPECT_FALSE(Found().with_friction.flywheel.has_value());
    EXPECT_EQ(Found().inertia_peak, 0.0);
}

TEST_F(Drive, has_no_figures_before_the_forces_or_in_other_units)
{
    Lay(5);
    design.flags.Units_Changed = true;
    EXPECT_FALSE(Find_Drive_Figures(design).has_value());
    design.flags.Units_Changed = false;
    design.flags.Dynamicflag = false;
    EXPECT_FALSE(Find_Drive_Figures(design).has_value());
}

}  // namespace
}  // namespace lobemax
