// SPDX-License-Identifier: GPL-3.0-or-later
/// Two designs calculated in two threads at once. Built a second time, with the low rooms alone, as
/// lobemax_thread_test, which the thread sanitizer watches.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/startup.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/motion_programs.h"
#include "motion/segment_curve.h"
#include "motion/segments.h"

namespace lobemax {
namespace {

using Figures = std::vector<float>;

/// Bit by bit what a design's whole ladder came to.
Figures Figures_of(const Design_State& design)
{
    Figures figures;
    const Table<Single>& data = design.results.CalcData;
    for (int row = 0; row <= data.Last_Row(); ++row)
        for (const Single value : data.Points(row))
            figures.push_back(value.Bits());
    const Cam_Group& c = design.cam;
    for (const Single value : {c.Phi_Max, c.Phi_Min, c.Rho_Max_Pos, c.Rho_Min_Pos, c.Rho_Smallest,
                               design.dynamics.Omega_N, design.motion.Liftmax})
        figures.push_back(value.Bits());
    return figures;
}

void Climb_from_Size_to_Stresses(Design_State& design)
{
    Calc_Phi(design, design.cam.Followtype);
    Calc_Rho(design, design.cam.Followtype);
    design.dynamics.Mass = 0.5;
    design.dynamics.Return_Spring_Rate = 200.0;
    design.dynamics.Preload = 100.0;
    Calc_Force_Torque(design);
    constexpr double youngs[2]{206800.0, 206800.0};
    constexpr double poissons[2]{0.28, 0.28};
    Calc_Contact_Stress(design, cylindrical_roller, youngs, poissons, 25.0);
}

/// An example up its whole ladder.
Figures Ladder_of_Example(const char* name)
{
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, name);
    Set_Step(design, 0.5);
    Calculate_Example(design);
    Climb_from_Size_to_Stresses(design);
    return Figures_of(design);
}

/// A design of a polynomial, a spline and a law, its curve asked between the points.
Figures Ladder_of_Conditions()
{
    Design_State design;
    Sub_Main(design, "", {});
    Motion_Group& m = design.motion;
    m.No_of_segments = 3;
    const auto segment = [&](int i, char kind, const char* code, double beta, const char* from, const char* to) {
        Pick_Motion(design, i, kind);
        Pick_Program(design, i, code);
        m.Beta_Deg(i) = beta;
        m.Beta_Rad(i) = beta / Deg_per_Rad;
        m.Start_Value(i) = from;
        m.End_Value(i) = to;
        m.No_Conditions(i) = 6;
        m.No_of_conditions(i) = "6";
        for (const int row : {0, 9})
            m.V_boundary_cond(i, row) = m.A_boundary_cond(i, row) = "0";
    };
    segment(1, 'P', "PO", 120.0, "0", "20");
    segment(2, 'S', "BS", 130.0, "20", "5");
    segment(3, 'F', "TH", 110.0, "5", "0");
    Update_Segment_Angles(design);
    Calc_All(design, true);
    Motion_Done(design);
    design.cam.Prime_Rad = 60.0;
    design.cam.Follow_Rad = 12.0;
    Climb_from_Size_to_Stresses(design);
    Figures figures = Figures_of(design);
    const Motion_Curve curve(design);
    for (double angle = 0.1; angle < 360.0; angle += 0.77)
        figures.push_back(static_cast<float>(curve.At(angle).A));
    return figures;
}

/// Runs both works at once, several times; every round must come to what each came to alone.
void Expect_Alike(const std::function<Figures()>& first, const std::function<Figures()>& second)
{
    constexpr int rounds = 4;
    const std::array alone{first(), second()};
    ASSERT_GT(alone[0].size(), 1000U);
    ASSERT_NE(alone[0], alone[1]);
    for (int round = 0; round < rounds; ++round) {
        std::array<Figures, 2> together;
        std::thread one([&] { together[0] = first(); });
        std::thread other([&] { together[1] = second(); });
        one.join();
        other.join();
        EXPECT_EQ(together[0], alone[0]) << "round " << round;
        EXPECT_EQ(together[1], alone[1]) << "round " << round;
    }
}

TEST(Two_Designs_at_Once, come_to_the_figures_of_each_alone)
{
    Expect_Alike([] { return Ladder_of_Example("Double Dwell"); }, [] { return Ladder_of_Example("Oscillating"); });
}

TEST(Two_Designs_at_Once, given_by_laws_and_by_conditions_come_to_the_figures_of_each_alone)
{
    Expect_Alike([] { return Ladder_of_Example("Flat Follower"); }, [] { return Ladder_of_Conditions(); });
}

/// A vibration of a model, its polydyne cam and the vibration of that.
Figures Vibration_of_Example(const char* name, int model)
{
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, name);
    Calculate_Example(design);
    Run_Size(design);
    design.dynamics.Preload = 20000.0;
    design.dynamics.Model_Type = model;
    Run_Forces(design);
    Run_Vibration(design, {});
    Run_Polydyne(design, {});
    return Figures_of(design);
}

/// A sweep over prime radii; every other design has a spring so weak that the follower leaves the cam, and says so.
Figures Sweep_of_Example(const char* name)
{
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, name);
    const double prime = design.cam.Prime_Rad;
    Figures figures;
    for (int i = 0; i < 12; ++i) {
        Put(design, "Prime_Rad", prime * (1.0 + 0.01 * i));
        Put(design, "Preload", i % 2 == 0 ? 5000.0 : 0.001);
        const Ladder_Outcome outcome = Ladder(design, {.motion = true, .size = true, .forces = true});
        figures.push_back(outcome.reached ? 1.0F : 0.0F);
        figures.push_back(static_cast<float>(outcome.told.size()));
        const Figures more = Figures_of(design);
        figures.insert(figures.end(), more.begin(), more.end());
    }
    return figures;
}

TEST(Two_Designs_at_Once, are_swept_each_as_alone_and_show_nothing)
{
    std::vector<std::string> shown;
    Host host;
    host.messenger = [&shown](const Message& message) {
        shown.push_back(message.text);
        return Usual_Answer(message.buttons);
    };
    const Host before = Install_Host(host);
    Expect_Alike([] { return Sweep_of_Example("Double Dwell"); }, [] { return Sweep_of_Example("Oscillating"); });
    Install_Host(before);
    EXPECT_TRUE(shown.empty());
}

TEST(Two_Designs_at_Once, vibrate_each_as_alone)
{
    Expect_Alike([] { return Vibration_of_Example("Double Dwell", 3); },
                 [] { return Vibration_of_Example("Four Dwell", 4); });
}

TEST(Two_Designs_at_Once, ask_one_curve_at_once)
{
    Design_State design;
    Sub_Main(design, "", {});
    Load_Example(design, "Double Dwell");
    Calculate_Example(design);
    const Motion_Curve curve(design);
    const auto ask = [&curve] {
        Figures figures;
        for (double angle = 0.0; angle < 720.0; angle += 0.31)
            figures.push_back(static_cast<float>(curve.At(angle).S));
        return figures;
    };
    const Figures alone = ask();
    std::array<Figures, 2> together;
    std::thread one([&] { together[0] = ask(); });
    std::thread other([&] { together[1] = ask(); });
    one.join();
    other.join();
    EXPECT_EQ(together[0], alone);
    EXPECT_EQ(together[1], alone);
}

TEST(Two_Designs_at_Once, report_their_own_run_time_errors_to_a_messenger_that_locks)
{
    std::mutex door;
    std::vector<std::string> boxes;
    Host host;
    host.messenger = [&](const Message& message) {
        const std::lock_guard lock(door);
        boxes.push_back(message.text.substr(0, 8));
        return message.default_answer;
    };
    const Host before = Install_Host(host);
    // A division by zero in one thread is not the reason of the overflow in the other.
    const auto run = [](double beta_rad, double lift) {
        for (int i = 0; i < 200; ++i) {
            Design_State design;
            Sub_Main(design, "", {});
            Motion_Group& m = design.motion;
            Pick_Motion(design, 1, 'R');
            Pick_Program(design, 1, "CF");
            m.Beta_Deg(1) = 90.0;
            m.Beta_Rad(1) = beta_rad;
            m.Start_Value(1) = "0";
            m.End_Value(1) = std::to_string(lift);
            Calc_Segment(design, 0);
        }
    };
    std::thread one([&] { run(0.0, 1.0); });
    std::thread other([&] { run(1e-11, 1e30); });
    one.join();
    other.join();
    Install_Host(before);
    EXPECT_EQ(std::count(boxes.begin(), boxes.end(), "Error 11"), 200);
    EXPECT_EQ(std::count(boxes.begin(), boxes.end(), "Error 6 "), 200);
}

}  // namespace
}  // namespace lobemax
