// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/ladder.h"
#include "core/startup.h"
#include "core/unit_change.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

constexpr Standing Up_to_Forces{.motion = true, .size = true, .forces = true};
const std::string cancelled = "The calculation has been cancelled at your request.";
const std::string jumping = "The follower is jumping off the cam.  This design should not be used.";

/// The double-dwell example with a preload that keeps the follower on the cam. Boxes are collected; each is answered as
/// it usually is, or by the first of the answers that it offers.
class Vibration_Rungs : public ::testing::Test {
protected:
    Vibration_Rungs()
    {
        Host host;
        host.messenger = [this](const Message& box) {
            boxes.push_back(box);
            return Offers(box.buttons, preferred) ? preferred : Usual_Answer(box.buttons);
        };
        host.progress = [this](double) { return stop; };
        before_ = Install_Host(std::move(host));
        EXPECT_TRUE(Sub_Main(design, "", {}));
        EXPECT_TRUE(Open_Example(design, "Double Dwell"));
        EXPECT_TRUE(Put(design, "Preload", 20000.0));
        EXPECT_TRUE(Run_Forces(design));
        boxes.clear();
    }
    ~Vibration_Rungs() override
    {
        Install_Host(std::move(before_));
        design = {};
    }

    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const Message& box : boxes)
            texts.push_back(box.text);
        return texts;
    }

    std::vector<Message> boxes;
    Answer preferred = Answer::OK;
    bool stop = false;
    Dynamics_Group& d_ = design.dynamics;
    Flags_Group& f_ = design.flags;

private:
    Host before_;
};

double Value(int row, int point)
{
    return design.results.CalcData(row, point);
}

std::vector<double> Row_of(int row)
{
    const auto points = design.results.CalcData.Points(row);
    return {points.begin(), points.end()};
}

std::vector<std::vector<double>> All_Rows()
{
    std::vector<std::vector<double>> rows;
    for (int v = 0; v <= design.run.Saved_Variables; ++v)
        rows.push_back(Row_of(v));
    return rows;
}

TEST_F(Vibration_Rungs, a_run_brings_forces_response_and_flag_and_takes_the_stresses_away)
{
    Reach(design, Mark::stress);
    d_.Mass_m(1) = 3.0;
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(boxes.size(), 0U);
    EXPECT_TRUE(f_.Modelflag && f_.Dynamicflag);
    EXPECT_FALSE(f_.Stressflag);
    EXPECT_EQ(d_.Mass, 3.0) << "the forces are those of the model's mass";
    EXPECT_NEAR(Value(var::Force, 20),
                20000.0 + 3.0 * Value(var::A, 20) / 1000 + Value(var::S, 20) + d_.Damping * Value(var::V, 20) / 1000,
                0.5);
    EXPECT_GT(d_.Force_Dyn_Min, 0.0);
}

TEST_F(Vibration_Rungs, a_form_closed_cam_has_the_first_model)
{
    design.cam.Closure = "Form";
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Preload, 0.0);
    EXPECT_LT(d_.Force_Dyn_Min, 0.0);
    EXPECT_EQ(boxes.size(), 0U) << "a track pulls as it pushes";
}

TEST_F(Vibration_Rungs, a_follower_that_jumps_is_told_of_at_the_end)
{
    d_.Preload = 0.0;
    d_.Mass_m(1) = 40.0;
    d_.Kspring(1) = 1000.0;
    ASSERT_TRUE(Run_Vibration(design, {}));
    ASSERT_GE(boxes.size(), 2U);
    EXPECT_TRUE(boxes.front().text.starts_with("The cam and follower have separated at Theta =  "));
    EXPECT_EQ(boxes[1].text, jumping) << "Ignore, once for forces and response together";
    EXPECT_EQ(boxes[1].symbol, Symbol::stop);
    EXPECT_TRUE(f_.Modelflag);
}

TEST_F(Vibration_Rungs, an_abort_at_a_separation_cancels_the_run)
{
    d_.Preload = 0.0;
    d_.Mass_m(1) = 40.0;
    preferred = Answer::Abort;
    Reach(design, Mark::vibration);
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_EQ(boxes.back().text, cancelled);
    EXPECT_EQ(boxes.back().symbol, Symbol::information);
    EXPECT_FALSE(f_.Modelflag || f_.Calc_Abort);
}

TEST_F(Vibration_Rungs, an_abort_in_the_dynamic_force_alone_leaves_the_flag_down)
{
    d_.Model_Type = 2;  // whose dynamic force leaves the cam where the rigid train stays
    d_.Preload = 300.0;
    d_.Return_Spring_Rate = 1e6;
    d_.Kspring(2) = 1.0;
    d_.Mass_m(1) = 60.0;
    preferred = Answer::Abort;
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes.back().text, cancelled);
    EXPECT_TRUE(f_.Dynamicflag) << "the forces went through";
    EXPECT_FALSE(f_.Modelflag);
}

TEST_F(Vibration_Rungs, cancel_stop_and_giving_up_end_alike)
{
    Vibration_Run run;
    run.smallest_step = 1.0;
    EXPECT_FALSE(Run_Vibration(design, run));
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Runge-Kutta step size has become smaller than minimum", cancelled}));

    boxes.clear();
    stop = true;
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_EQ(Texts(), std::vector<std::string>{cancelled});

    boxes.clear();
    stop = false;
    d_.Ode_Max_Steps = 10;
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_EQ(Texts(), (std::vector<std::string>{
                           "\n\nDid not converge.  Took too many steps in the integration routine and has given up.",
                           cancelled}));
    EXPECT_FALSE(f_.Modelflag || f_.Calc_Abort);
    EXPECT_TRUE(f_.Dynamicflag);
}

TEST_F(Vibration_Rungs, retry_at_every_question_runs_to_the_last_step)
{
    preferred = Answer::Retry;
    Vibration_Run run;
    run.eps = 1e-7;
    run.smallest_step = 0.02;
    d_.Ode_Max_Steps = 30;
    EXPECT_FALSE(Run_Vibration(design, run));
    ASSERT_GT(boxes.size(), 20U);
    EXPECT_EQ(boxes[0].text, "Runge-Kutta step size has become smaller than minimum");
    EXPECT_EQ(boxes[1].text, Start_in_Dwell_Hint());
    EXPECT_EQ(std::ranges::count(Texts(), Start_in_Dwell_Hint()), 1);
    EXPECT_TRUE(boxes[boxes.size() - 2].text.find("Did not converge") != std::string::npos);
    EXPECT_EQ(boxes.back().text, cancelled);
}

TEST_F(Vibration_Rungs, figures_that_cannot_be_are_refused_before_anything_is_touched)
{
    Reach(design, Mark::vibration);
    const double T = Cam_Period(design);
    struct Case {
        Vibration_Run run;
        std::string sentence;
    };
    const std::string positive = "This value must be positive.  Please redo.";
    const std::string two = "You need to calculate at least two cam cycles to let transients die out";
    for (const Case& c : {Case{{.t_start = -1.0}, positive}, Case{{.start_step = -1.0}, positive},
                          Case{{.smallest_step = -1.0}, positive}, Case{{.eps = -1.0}, positive},
                          Case{{.eps = 0.0}, "The accuracy must be greater than zero.  Please redo."},
                          Case{{.t_end = 2 * T}, two}, Case{{.t_end = T}, two},
                          Case{{.t_start = 1.01 * T},
                               "The integration must start within the first cam cycle.  Please "
                               "redo."}}) {
        boxes.clear();
        EXPECT_FALSE(Run_Vibration(design, c.run));
        EXPECT_EQ(Texts(), std::vector<std::string>{c.sentence});
        EXPECT_TRUE(f_.Modelflag);
    }
    EXPECT_TRUE(End_Time_may_be(design, std::nextafter(2 * T, 1e9)));
    for (const Long steps : {0, Max_Stored_Steps + 1}) {
        boxes.clear();
        d_.Ode_Max_Steps = steps;
        EXPECT_FALSE(Run_Vibration(design, {}));
        EXPECT_EQ(Texts(),
                  std::vector<std::string>{"The number of steps must lie between 1 and 1000000.  Please redo."});
    }
}

TEST_F(Vibration_Rungs, a_cam_that_stands_or_turns_backwards_has_no_vibration)
{
    for (const double speed : {0.0, -18.0}) {
        boxes.clear();
        design.motion.Shaft_speed = speed;
        EXPECT_FALSE(Run_Vibration(design, {}));
        EXPECT_EQ(Texts(), std::vector<std::string>{"A vibration needs a positive shaft speed: time runs forward."});
    }
}

TEST_F(Vibration_Rungs, a_slow_shaft_passes_the_whole_turn_out_of_a_long_dwell)
{
    // In the dwell the response has died away to some 1E-15, and just before the turn the derivative is left as it was.
    ASSERT_TRUE(Put(design, "Shaft speed", 1.0));
    ASSERT_TRUE(Recalculate(design, Up_to_Forces));
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_TRUE(boxes.empty());
    EXPECT_LT(d_.Ode_Count, 20000);
    for (const int i : {0, 45, 135, 225, 315, 360})
        EXPECT_NEAR(Value(var::Response_X, i), Value(var::S, i), 1e-3) << "so slow a train is rigid";
}

TEST_F(Vibration_Rungs, a_slower_one_still_meets_a_rest_that_no_step_leaves)
{
    ASSERT_TRUE(Put(design, "Shaft speed", 0.5));
    ASSERT_TRUE(Recalculate(design, Up_to_Forces));
    d_.Ode_Max_Steps = 200000;
    EXPECT_FALSE(Run_Vibration(design, {}));
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_NE(boxes[0].text.find("The step size has become insignificant"), std::string::npos);
    EXPECT_EQ(boxes[1].text, cancelled);
}

TEST_F(Vibration_Rungs, a_longer_run_shows_the_second_turn_all_the_same)
{
    ASSERT_TRUE(Run_Vibration(design, {.eps = 1e-5}));
    const auto x = Row_of(var::Response_X);
    ASSERT_TRUE(Run_Vibration(design, {.t_end = 3.3 * Cam_Period(design), .eps = 1e-5}));
    for (std::size_t i = 0; i <= 360; ++i)
        EXPECT_NEAR(Value(var::Response_X, static_cast<int>(i)), x[i], 0.005) << i;
}

TEST_F(Vibration_Rungs, a_mass_of_zero_is_told_and_leaves_the_design)
{
    d_.Mass_m(1) = 0.0;
    const Single mass = d_.Mass;
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_EQ(Texts(), std::vector<std::string>{"Error 11   (Division by zero)  has occurred in Model_Setup\n"});
    EXPECT_EQ(d_.Mass, mass);
}

TEST_F(Vibration_Rungs, torques_that_were_added_up_stay_as_they_are)
{
    const auto once = Row_of(var::Torque);
    d_.Torque_Start_Fresh = false;
    ASSERT_TRUE(Run_Forces(design));
    const auto twice = Row_of(var::Torque);
    ASSERT_GT(std::abs(twice[20]), std::abs(once[20]) * 1.5);
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(Row_of(var::Torque), twice);
    EXPECT_FLOAT_EQ(static_cast<float>(Value(var::Flywheel_Torque, 20)),
                    static_cast<float>(d_.Coeff_of_Fluctuation * twice[20]));
}

TEST_F(Vibration_Rungs, results_of_other_units_are_refused)
{
    Change_Units(design, 1);
    EXPECT_FALSE(Run_Vibration(design, {}));
    EXPECT_FALSE(Run_Polydyne(design, {}));
    EXPECT_EQ(boxes.size(), 2U);
    EXPECT_TRUE(boxes[0].text.starts_with("The results in memory are those of the units before"));
}

// ---- what the fields take with them

TEST_F(Vibration_Rungs, a_closing_spring_takes_the_return_spring_along_and_results_away)
{
    for (const int model : {1, 2, 3, 4, 5}) {
        d_.Model_Type = model;
        for (const int k : {1, 2}) {
            ASSERT_TRUE(Put(design, "Kspring", At(k), 1000.0 * model + 100 * k));
            EXPECT_EQ(d_.Follower_Stiffness, 1000.0 * model + 100 * k);
        }
        const int closing = model == 2 || model == 5 ? 2 : 1;
        EXPECT_EQ(d_.Return_Spring_Rate, model == 1 ? 0.0 : 1000.0 * model + 100 * closing) << model;
    }
    d_.Model_Type = 3;
    for (const auto& [field, at, value] : {std::tuple{"Kspring", At(2), 7.0}, std::tuple{"Preload", At(), 7.0}}) {
        Reach(design, Mark::forces);
        Reach(design, Mark::stress);
        Reach(design, Mark::vibration);
        ASSERT_TRUE(Put(design, field, at, value));
        EXPECT_FALSE(f_.Dynamicflag || f_.Stressflag || f_.Modelflag) << field;
        EXPECT_TRUE(f_.Sized);
    }
    for (const auto& [field, at, value] :
         {std::tuple{"Mass_m", At(1), 7.0}, std::tuple{"Zeta", At(2), 0.5}, std::tuple{"x-Initial", At(), 0.5},
          std::tuple{"Model_Type", At(), 4.0}, std::tuple{"Ode_Max_Steps", At(), 7.0}}) {
        Reach(design, Mark::forces);
        Reach(design, Mark::vibration);
        ASSERT_TRUE(Put(design, field, at, value));
        EXPECT_FALSE(f_.Modelflag) << field;
        EXPECT_TRUE(f_.Dynamicflag) << field;
    }
}

TEST_F(Vibration_Rungs, what_a_field_of_the_model_may_not_be)
{
    const std::string positive = "This value must be positive.  Please redo.";
    const std::string zeta = "Zeta must be between 0 and 1.  Please redo";
    EXPECT_EQ(Query(design, "Mass_m", At(1), -0.1).sentence, positive);
    EXPECT_TRUE(Query(design, "Mass_m", At(1), 0.0));
    EXPECT_EQ(Query(design, "Kspring", At(2), 0.0).sentence, positive);
    EXPECT_EQ(Query(design, "Zeta", At(1), -0.01).sentence, zeta);
    EXPECT_EQ(Query(design, "Zeta", At(1), 1.01).sentence, zeta);
    EXPECT_TRUE(Query(design, "Zeta", At(1), 0.0));
    EXPECT_TRUE(Query(design, "Zeta", At(1), 1.0));
    EXPECT_EQ(Query(design, "x-Initial", -1.0).sentence, positive);
    EXPECT_EQ(Query(design, "Ode_Max_Steps", -1.0).sentence, positive);
    EXPECT_EQ(Query(design, "Model_Type", 6.0).sentence, "'6' is not a whole number from 1 to 5");
}

TEST_F(Vibration_Rungs, a_small_accuracy_is_asked_of)
{
    EXPECT_TRUE(Accept_Accuracy(0.0001));
    EXPECT_TRUE(boxes.empty());
    EXPECT_TRUE(Accept_Accuracy(0.00009));
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text,
              "Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely.\n"
              "Continue anyway?");
    EXPECT_EQ(boxes[0].buttons, Buttons::Yes_No);
    preferred = Answer::No;
    EXPECT_FALSE(Accept_Accuracy(1e-6));
}

// ---- polydyne

const std::string note_end =
    " cam requires a follower displacement function\n"
    "that is continuous through the 4th derivative of displacement (ping).\n"
    "For a double-dwell cam, the 11-deg Poly function is suitable.\n"
    "For a single-dwell cam, the Thoren and Stoddart functions are suitable.\n"
    "Also, any spline or polynomial function with suitable continuity will work.\n"
    "If you have chosen such suitable functions for all motions, select OK.\n"
    "Otherwise, select Cancel.";

/// The example's rise and fall by the polynomial that is continuous through ping.
void Make_Suitable()
{
    for (const int i : {1, 3})
        ASSERT_TRUE(Put(design, "Program", At(i), "11"));
    ASSERT_TRUE(Recalculate(design, Up_to_Forces));
}

TEST_F(Vibration_Rungs, a_polydyne_cam_is_made_after_its_note)
{
    Make_Suitable();
    ASSERT_TRUE(Run_Vibration(design, {}));
    boxes.clear();
    preferred = Answer::Cancel;
    EXPECT_FALSE(Run_Polydyne(design, {}));
    EXPECT_EQ(Texts(), std::vector<std::string>{"Note: A polydyne" + note_end});
    EXPECT_EQ(boxes[0].buttons, Buttons::OK_Cancel);
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_TRUE(f_.Modelflag);

    preferred = Answer::OK;
    ASSERT_TRUE(Run_Polydyne(design, {}));
    EXPECT_TRUE(f_.Polydyne_Calc && f_.Modelflag);
    for (const int i : {0, 20, 45, 100, 200, 360}) {
        const double w = 18.0, c1 = 36.0 * (w / 6.283185308) * (w / 6.283185308) * 2.0 / 400000.0;
        EXPECT_NEAR(Value(var::Polydyne_S, i), Value(var::S, i) + c1 * Value(var::A, i) / (w * w), 1e-4);
        EXPECT_EQ(Value(var::Response_Error, i), double{Single(Value(var::Polydyne_S, i) - Value(var::Response_X, i))});
    }
    design.motion.Seg_Program(3) = 11;
    EXPECT_TRUE(Has_Spline(design));
    boxes.clear();
    preferred = Answer::Cancel;
    EXPECT_FALSE(Run_Polydyne(design, {}));
    EXPECT_EQ(Texts(), std::vector<std::string>{"Note: A splinedyne" + note_end});
}

TEST_F(Vibration_Rungs, a_polydyne_cam_brings_the_follower_nearer_to_its_motion)
{
    Make_Suitable();
    ASSERT_TRUE(Put(design, "Time Base", 3.0));
    ASSERT_TRUE(Recalculate(design, Up_to_Forces));
    ASSERT_TRUE(Put(design, "Kspring", At(2), 40000.0));
    const auto largest_error = [] {
        double largest = 0.0;
        for (int i = 0; i <= 360; ++i)
            largest = std::max(largest, std::abs(Value(var::Response_X, i) - Value(var::S, i)));
        return largest;
    };
    ASSERT_TRUE(Run_Vibration(design, {.eps = 1e-5}));
    const double plain = largest_error();
    ASSERT_TRUE(Run_Polydyne(design, {.eps = 1e-5}));
    EXPECT_LT(largest_error(), 0.2 * plain);
    EXPECT_GT(largest_error(), 0.05 * plain) << "what the coefficient leaves out";
}

TEST_F(Vibration_Rungs, a_polydyne_cam_is_sized_by_its_displacement_and_the_kinematic_profile_kept)
{
    Make_Suitable();
    ASSERT_TRUE(Run_Vibration(design, {}));
    const auto radius = Row_of(var::Radius);
    const auto phi = Row_of(var::Phi);
    ASSERT_TRUE(Run_Polydyne(design, {}));
    ASSERT_TRUE(Size_Polydyne(design));
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag && f_.Modelflag && f_.Polydyne_Calc);
    EXPECT_EQ(Row_of(var::Nonpolydyne_Radius), radius);
    EXPECT_NE(Row_of(var::Radius), radius);
    EXPECT_NE(Row_of(var::Phi), phi);
    // A centred translating roller: the radius is the prime radius and the polydyne displacement.
    for (const int i : {0, 20, 45, 70, 200})
        EXPECT_NEAR(Value(var::Radius, i), design.cam.Prime_Rad + Value(var::Polydyne_S, i), 1e-3);

    ASSERT_TRUE(Give_Up_Polydyne(design));
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
    EXPECT_EQ(Row_of(var::Radius), radius);
    EXPECT_EQ(Row_of(var::Phi), phi);
}

TEST_F(Vibration_Rungs, vibration_and_polydyne_cam_are_recalculated_bit_for_bit)
{
    Make_Suitable();
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, false, true, false}));
    auto before = All_Rows();
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_TRUE(All_Rows() == before);
    EXPECT_TRUE(f_.Modelflag);

    ASSERT_TRUE(Run_Polydyne(design, {}) && Size_Polydyne(design));
    const Standing standing = Standing_of(design);
    EXPECT_EQ(standing, (Standing{true, true, true, false, true, true}));
    before = All_Rows();
    ASSERT_TRUE(Recalculate(design, standing));
    EXPECT_EQ(Standing_of(design), standing);
    const auto after = All_Rows();
    for (std::size_t v = 0; v < before.size(); ++v)
        EXPECT_TRUE(after[v] == before[v]) << v;
}

}  // namespace
}  // namespace lobemax
