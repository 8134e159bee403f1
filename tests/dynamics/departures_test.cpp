// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/departures.h"

#include <gtest/gtest.h>

#include <cmath>

#include "camgeom/sizing.h"
#include "core/units.h"
#include "dynamics/vibration.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using namespace train_design;

constexpr double h = 20.0;
constexpr double omega = 10.0;

/// A harmonic motion over the whole turn, on the trains of the tests; millimetres.
class Departures : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }

    static void Lay(int base, int model)
    {
        Cam_Maker maker;
        maker.time_base = base;
        maker.omega = omega;
        maker.Make();
        Use({});
        d().Model_Type = model;
        Lay_Harmonic(base, h, omega);
    }
    Script script_;
};

TEST_F(Departures, a_share_is_of_the_range_of_mechanics)
{
    EXPECT_EQ((Departure{2.0, 8.0}.Share()), 0.25);
    EXPECT_EQ((Departure{0.0, 0.0}.Share()), 0.0);
    EXPECT_EQ((Departure{3.0, 0.0}.Share()), 1.0);
}

TEST_F(Departures, the_polydyne_displacement_is_compared_with_that_of_the_square_of_two_pi)
{
    const Values v;
    struct Case {
        int model;
        double c0, c1;  // of mechanics
        double made;    // coefficient of A that the program takes
    };
    const double w2 = omega * omega;
    const double f36 = 36.0 / (4 * pi * pi);
    for (const int base : {1, 2, 3})
        for (const Case& c : {Case{2, (v.k1 + v.k2) / v.k1, w2 * v.m1 / v.k1, f36 * w2 * v.m1 / v.k1},
                              Case{3, 1.0, w2 * v.m1 / v.k2, f36 * w2 * v.m1 / v.k2},
                              Case{4, 1.0, w2 * v.m2 / v.k2, f36 * w2 * v.m2 / v.k2},
                              Case{5, (v.k1 + v.k2) / v.k1, w2 * v.m2 / v.k1, f36 * w2 * v.m1 / v.k1}}) {
            Lay(base, c.model);
            ASSERT_TRUE(Calc_Polydyne(design));
            const Departure found = Departure_of_Polydyne(design);
            // S = c0 h/2 (1 - cos) + c1 h/2 cos: the coefficients of A are apart, by h/2 at most.
            const double rounding = 4e-7 * h * c.c0;  // of 32 bits
            EXPECT_NEAR(found.largest, h / 2 * std::abs(c.c1 - c.made), rounding) << c.model << " " << base;
            EXPECT_NEAR(found.range, h * (c.c0 - c.c1), 1e-5 * h) << c.model << " " << base;
        }
    Lay(1, 1);  // a form-closed train follows its cam by the one spring, and its polydyne cam stands still
    ASSERT_TRUE(Calc_Polydyne(design));
    EXPECT_NEAR(Departure_of_Polydyne(design).Share(), 1.0, 1e-3);
}

TEST_F(Departures, velocity_and_acceleration_are_off_by_powers_of_the_speed_per_second_alone)
{
    const Values v;
    const double c1 = 36.0 / (4 * pi * pi) * omega * omega * v.m1 / v.k2;
    Lay(1, 3);
    ASSERT_TRUE(Calc_Polydyne(design));
    const Polydyne_Derivatives seconds = Departures_of_Polydyne_Derivatives(design);
    const double velocity = h / 2 * omega;
    const double acceleration = velocity * omega;
    EXPECT_NEAR(seconds.V.largest, velocity * c1 * (omega - 1), 1e-5 * velocity);
    EXPECT_NEAR(seconds.A.largest, acceleration * c1 * (omega * omega - 1), 1e-5 * acceleration);
    EXPECT_NEAR(seconds.V.range, 2 * velocity * (1 - c1), 1e-5 * velocity);
    for (const int base : {2, 3}) {
        Lay(base, 3);
        ASSERT_TRUE(Calc_Polydyne(design));
        const Polydyne_Derivatives angles = Departures_of_Polydyne_Derivatives(design);
        EXPECT_LT(angles.V.Share(), 1e-6) << base;
        EXPECT_LT(angles.A.Share(), 1e-6) << base;
    }
}

TEST_F(Departures, corrected_derivatives_are_those_of_the_displacement)
{
    const double c1 = 36.0 / (4 * pi * pi) * omega * omega * Values{}.m1 / Values{}.k2;
    Lay(1, 3);
    ASSERT_TRUE(Calc_Polydyne(design));
    Correct_Polydyne_Derivatives(design);
    for (int i = 0; i <= 360; i += 9) {
        const double t = i * pi / 180;
        EXPECT_NEAR(Data(var::Polydyne_V, i), h / 2 * (1 - c1) * std::sin(t) * omega, 1e-4);
        EXPECT_NEAR(Data(var::Polydyne_A, i), h / 2 * (1 - c1) * std::cos(t) * omega * omega, 1e-3);
    }
}

/// The cam per radian has the right derivatives, so what it is sized to is what mechanics has per second.
TEST_F(Departures, true_pressure_angle_and_curvature_are_those_of_the_base_of_radians)
{
    const auto size = [] {
        d().Kspring(2) = 1500.0;  // a soft train: a tenth of the displacement is correction
        ASSERT_TRUE(Calc_Polydyne(design));
        f().Polydyne_Calc = true;
        f().Skip_Profile = true;
        ASSERT_TRUE(Calc_Phi(design, design.cam.Followtype));
        ASSERT_TRUE(Calc_Rho(design, design.cam.Followtype));
    };
    Lay(3, 3);
    size();
    const Cam_Group radians = design.cam;
    Lay(1, 3);
    size();
    const Cam_Group stored = design.cam;
    f().Polydyne_Calc = false;  // as before it is sized by its polydyne rows
    const auto extremes = Find_Polydyne_Extremes(design);
    ASSERT_TRUE(extremes);
    EXPECT_EQ(extremes->of_rows.Phi_Max, stored.Phi_Max);
    EXPECT_EQ(extremes->of_rows.Phi_Min, stored.Phi_Min);
    EXPECT_EQ(extremes->of_rows.Rho_Smallest, stored.Rho_Smallest);
    EXPECT_NEAR(extremes->of_mechanics.Phi_Max, radians.Phi_Max, 1e-4);
    EXPECT_NEAR(extremes->of_mechanics.Phi_Min, radians.Phi_Min, 1e-4);
    EXPECT_NEAR(extremes->of_mechanics.Rho_Smallest, radians.Rho_Smallest, 1e-3);
    EXPECT_GT(std::abs(stored.Phi_Max - radians.Phi_Max), 1.0);
    EXPECT_EQ(design.cam.Phi_Max, stored.Phi_Max) << "the design keeps its figures";
    EXPECT_FALSE(f().Polydyne_Calc);
}

/// Row 33 is laid as mechanics has it for a response of its own, with a difference at one point: that is what is found.
TEST_F(Departures, the_force_is_compared_with_that_of_its_train)
{
    const Values v{.preload = 5000.0};
    const double w1_2 = std::sqrt(v.k1 / v.m1);
    const double c_closing_2 = 2 * v.m1 * v.z2 * std::sqrt((v.k1 + v.k2) / v.m1) - 2 * v.m1 * v.z1 * w1_2;
    const double c_closing_3 = 2 * v.z1 * std::sqrt(v.k1 * v.k2 / (v.k1 + v.k2) * v.m1);
    const double c_closing_4 = 2 * v.z1 * std::sqrt(v.k1 * v.m1), c_train_4 = 2 * v.z2 * std::sqrt(v.k2 * v.m2);
    const double c_5 = 2 * v.z2 * std::sqrt((v.k1 + v.k2) * v.m2) - 2 * v.z1 * std::sqrt(v.k2 * v.m2);
    for (const int base : {1, 2, 3})
        for (int model = 1; model <= 5; ++model) {
            Lay(base, model);
            Use(v);
            Table<Single>& data = design.results.CalcData;
            for (int i = 0; i <= 360; ++i) {
                const double t = i * pi / 180;
                // The cam in metres and seconds, and a mass that follows it a little behind.
                const double s = h / 2000 * (1 - std::cos(t)), sv = h / 2000 * omega * std::sin(t),
                             sa = h / 2000 * omega * omega * std::cos(t);
                const double x = 0.97 * s, xv = 0.96 * sv, xa = 0.95 * sa;
                const double to_v = base == 1 ? 1 : base == 2 ? pi / 180 / omega : 1 / omega;
                const double to_a = base == 1 ? 1 : base == 2 ? pi / 180 / (omega * omega) : 1 / (omega * omega);
                data(var::Response_X, i) = 1000 * x;
                data(var::Response_Xdot, i) = 1000 * xv * to_v;
                data(var::Response_Xddot, i) = 1000 * xa * to_a;
                const double forces[]{
                    v.m1 * xa, v.m1 * xa + c_closing_2 * xv + v.k2 * x + v.preload,
                    v.m1 * xa + c_closing_3 * sv + v.k1 * s + v.preload,
                    v.m1 * sa + c_closing_4 * sv + v.k1 * s + c_train_4 * (sv - xv) + v.k2 * (s - x) + v.preload,
                    v.m1 * sa + v.m2 * xa + c_5 * xv + v.k2 * x + v.preload};
                data(var::Dynamic_Force, i) = forces[model - 1] + (i == 77 ? 12.5 : 0.0);
            }
            EXPECT_NEAR(Departure_of_Force(design).largest, 12.5, 0.02) << model << " " << base;
        }
}

TEST_F(Departures, a_force_below_zero_counts_as_the_zero_that_two_masses_show)
{
    for (const int model : {3, 4}) {
        Lay(1, model);
        Use({.preload = -1e6});
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(var::Dynamic_Force, i) = 0.0;
        EXPECT_EQ(Departure_of_Force(design).largest == 0.0, model == 4) << model;
    }
}

TEST_F(Departures, model_5_stands_where_both_springs_would_hold_it)
{
    Lay(1, 5);
    EXPECT_NEAR(True_Share_of_Model_5(design), 3.0 / 8.0, 1e-12);
    d().Kspring.Fill(0.0);
    EXPECT_THROW(True_Share_of_Model_5(design), Fault);
    EXPECT_THROW(Departure_of_Polydyne(design), Fault);
}

}  // namespace
}  // namespace lobemax
