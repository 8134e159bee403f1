// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/model_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/ladder.h"
#include "core/startup.h"
#include "core/text.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;
using enum Model_Field;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box zeta{"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation};
const Expected_Box preload{"Preload must be > 0.  Please redo", Buttons::OK, Symbol::exclamation};
const Expected_Box two_cycles{"You need to calculate at least two cam cycles to let transients die out", Buttons::OK,
                              Symbol::exclamation};

Expected_Box Small_Accuracy(Answer answer)
{
    return {"Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely.\nContinue anyway?",
            Buttons::Yes_No, Symbol::exclamation, answer};
}

class Model_Screen : public ::testing::Test {
protected:
    void SetUp() override { Open(5); }
    void TearDown() override { design = {}; }

    static void Open(int units)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = units;
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        ASSERT_TRUE(Put(design, "Preload", 20000.0));
        ASSERT_TRUE(Run_Forces(design));
    }
    Model_Entry Edit(Model_Field field, std::string_view text, int element = 0)
    {
        return Edit_Model_Field(design, form_, {field, element}, text);
    }

    Script script_;
    Model_Form form_;
    Dynamics_Group& d_ = design.dynamics;
    Flags_Group& f_ = design.flags;
};

// ---- the choice of the model

TEST_F(Model_Screen, the_four_choices_carry_the_title_of_their_model)
{
    const std::vector<std::pair<int, std::string_view>> expected{{5, "Two-Mass SDOF Model - Spring at end effector"},
                                                                 {2, "One-Mass SDOF Model - Spring at end effector"},
                                                                 {3, "One-Mass SDOF Model - Spring at cam follower"},
                                                                 {4, "Two-Mass SDOF Model - Spring at cam follower"}};
    ASSERT_EQ(Model_Choices().size(), 4U);
    for (int k = 0; k < 4; ++k) {
        const auto& [model, title] = expected[static_cast<std::size_t>(k)];
        EXPECT_EQ(Model_Choices()[static_cast<std::size_t>(k)].model, model);
        EXPECT_EQ(Model_Choices()[static_cast<std::size_t>(k)].title, title);
        Choose_Model_Type(design, k);
        EXPECT_EQ(d_.Model_Type, model);
        EXPECT_EQ(Choice_of_Model(design), k);
        EXPECT_EQ(Title_of_Model(design), title);
    }
    d_.Model_Type = 1;
    EXPECT_EQ(Choice_of_Model(design), -1);
    EXPECT_EQ(Title_of_Model(design), "One-Mass SDOF Model - Form-closed cam");
    EXPECT_THROW(Choose_Model_Type(design, 4), Fault);
    EXPECT_TRUE(Asks_Model_Type(design));
    design.cam.Closure = "Form";
    EXPECT_FALSE(Asks_Model_Type(design));
}

TEST_F(Model_Screen, help_tells_where_spring_and_masses_are)
{
    EXPECT_EQ(Model_Help(2),
              "This model is for systems that have the joint-closure 'spring'\n"
              "acting close to the cam and a significant amount of\n"
              "follower mass 'downstream' of the joint-closure spring.\n"
              "This model also lumps the entire mass of the follower train \n"
              "as a single mass located at the roller follower.\n"
              "The effective spring rate k2 of the follower system is distinct\n"
              "from the spring rate k1 of the joint-closure spring.");
    EXPECT_EQ(Model_Help(0),
              "This model is for systems that have the joint-closure 'spring'\n"
              "acting at the end of the follower train\n"
              "This model splits the mass of the follower train \n"
              "into two masses, one located at the roller follower.\n"
              "and one located at the end of the follower train\n"
              "The effective spring rate k1 of the follower system is distinct\n"
              "from the spring rate k2 of the joint-closure spring.");
}

// ---- opening

TEST_F(Model_Screen, shows_the_fields_that_the_model_has)
{
    struct Case {
        int model;
        bool second_mass, second_spring;
    };
    for (const auto& [model, second_mass, second_spring] :
         {Case{1, false, false}, Case{2, false, true}, Case{3, false, true}, Case{4, true, true},
          Case{5, true, true}}) {
        d_.Model_Type = model;
        const Model_Fields_Shown shown = Fields_of_Model(design);
        EXPECT_EQ(shown.second_mass, second_mass) << model;
        EXPECT_EQ(shown.second_spring, second_spring) << model;
        EXPECT_EQ(shown.second_zeta, second_spring) << model;
        EXPECT_EQ(shown.preload, second_spring) << model;
    }
}

TEST_F(Model_Screen, opens_with_the_stored_values_and_its_own_defaults)
{
    for (const auto& [format, comma] : {std::pair{"USA", false}, std::pair{"Europe", true}}) {
        design.identity.Number_Format = format;
        form_ = Open_Model_Form(design);
        const auto text = [european = comma](const char* usa, const char* europe) {
            return std::string(european ? europe : usa);
        };
        EXPECT_EQ(form_.txt_Mass[0], "2");
        EXPECT_EQ(form_.txt_Mass[1], "3");
        EXPECT_EQ(form_.txt_Spring[1], "400000");
        EXPECT_EQ(form_.txt_Zeta[0], text("0.05", "0,05"));
        EXPECT_EQ(form_.txt_Preload, "20000");
        EXPECT_EQ(form_.txt_x_start, "0");
        EXPECT_EQ(form_.txt_t_start, "0");
        EXPECT_EQ(form_.txt_t_end, text("0.698", "0,698"));  // 2 x 2 pi / 18
        EXPECT_EQ(form_.txt_eps, text("0.001", "0,001"));
        EXPECT_EQ(form_.txt_start_step, text("0.0001", "0,0001"));
        EXPECT_EQ(form_.txt_max_steps, "20000");
        EXPECT_FALSE(form_.run.t_end.has_value());
        EXPECT_FALSE(form_.calculated);
    }
}

TEST_F(Model_Screen, the_end_time_shows_three_decimals)
{
    design.motion.Shaft_speed = 12.566370616;  // two turns a second
    EXPECT_EQ(Open_Model_Form(design).txt_t_end, "1.000");
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Open_Model_Form(design).txt_t_end, "1,000");
}

TEST_F(Model_Screen, looking_at_it_changes_no_value_but_the_springs_copy)
{
    d_.Model_Type = 4;
    const Dynamics_Group before = d_;
    form_ = Open_Model_Form(design);
    EXPECT_EQ(d_.Mass_m(1), before.Mass_m(1));
    EXPECT_EQ(d_.Mass, before.Mass);
    EXPECT_EQ(d_.Return_Spring_Rate, before.Return_Spring_Rate);
    EXPECT_EQ(d_.Follower_Stiffness, before.Kspring(2));
    EXPECT_TRUE(f_.Dynamicflag);
}

TEST_F(Model_Screen, the_springs_copy_is_that_of_the_model)
{
    d_.Kspring(1) = 11.0;
    d_.Kspring(2) = 22.0;
    for (const auto& [model, copy] :
         {std::pair{1, 11.0}, std::pair{2, 11.0}, std::pair{3, 22.0}, std::pair{4, 22.0}, std::pair{5, 11.0}}) {
        d_.Model_Type = model;
        Open_Model_Form(design);
        EXPECT_EQ(d_.Follower_Stiffness, copy) << model;
    }
}

TEST_F(Model_Screen, a_new_design_in_inches_shows_twice_its_first_mass)
{
    Open(1);
    ASSERT_EQ(d_.Mass_m(1), 0.01F);
    EXPECT_EQ(Open_Model_Form(design).txt_Mass[0], "0.02");
    EXPECT_EQ(Open_Model_Form(design).txt_Mass[1], "0.03");
    EXPECT_EQ(d_.Mass_m(1), 0.01F);
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Open_Model_Form(design).txt_Mass[0], "1");
    EXPECT_EQ(Open_Model_Form(design).txt_Mass[1], "0,03");
    Reach(design, Mark::from_disk);
    EXPECT_EQ(Open_Model_Form(design).txt_Mass[0], "0,01") << "a file's mass is shown as it is";
}

TEST_F(Model_Screen, a_start_in_a_dwell_from_rest_shows_the_hint)
{
    design.motion.Rise_Fall_Dwell(1) = "D";
    script_.Expect({Start_in_Dwell_Hint(), Buttons::OK, Symbol::exclamation});
    Open_Model_Form(design);
    d_.x_Initial = 0.5;
    Open_Model_Form(design);
}

TEST_F(Model_Screen, opening_gives_a_polydyne_cam_up)
{
    ASSERT_TRUE(Run_Vibration(design, {}));
    const double radius = design.results.CalcData(var::Radius, 20);
    ASSERT_TRUE(Calc_Polydyne(design));
    Reach(design, Mark::polydyne);
    ASSERT_TRUE(Size_Polydyne(design));
    ASSERT_NE(design.results.CalcData(var::Radius, 20), radius);
    Open_Model_Form(design);
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_EQ(design.results.CalcData(var::Radius, 20), radius);
}

TEST_F(Model_Screen, a_form_closed_cam_has_its_own_model)
{
    design.cam.Closure = "Form";
    Open_Model_Form(design);
    EXPECT_EQ(d_.Model_Type, 1);
}

TEST_F(Model_Screen, the_box_is_called_by_the_motion)
{
    EXPECT_EQ(Polydyne_Caption(design), "Make Polydyne Cam");
    design.motion.Seg_Program(3) = 11;
    EXPECT_EQ(Polydyne_Caption(design), "Make Splinedyne Cam");
    design.motion.Seg_Program(3) = 1;
    design.motion.Seg_Program(9) = 11;  // not in use
    EXPECT_EQ(Polydyne_Caption(design), "Make Polydyne Cam");
}

// ---- entries

TEST_F(Model_Screen, an_accepted_entry_is_stored_at_once)
{
    form_ = Open_Model_Form(design);
    form_.calculated = true;
    EXPECT_TRUE(Edit(Mass, "1.5").accepted);
    EXPECT_FALSE(form_.calculated) << "the plots are not those of what stands typed";
    EXPECT_TRUE(Edit(Mass, "2.5", 1).accepted);
    EXPECT_TRUE(Edit(Mass, "0").accepted);
    EXPECT_TRUE(Edit(Spring, "70000", 1).accepted);
    EXPECT_EQ(d_.Return_Spring_Rate, 400000.0);
    EXPECT_EQ(d_.Follower_Stiffness, 70000.0);
    EXPECT_TRUE(Edit(Zeta, "0").accepted);
    EXPECT_TRUE(Edit(Zeta, "1", 1).accepted);
    EXPECT_TRUE(Edit(Preload, "0").accepted);
    EXPECT_EQ(d_.Preload, 0.0);
    EXPECT_TRUE(Edit(Preload, "350").accepted);
    EXPECT_TRUE(Edit(x_start, "0.5").accepted);
    EXPECT_TRUE(Edit(t_start, "0.01").accepted);
    EXPECT_TRUE(Edit(t_end, "0.7").accepted);
    EXPECT_TRUE(Edit(eps, "0.01").accepted);
    EXPECT_TRUE(Edit(start_step, "0.002").accepted);
    EXPECT_TRUE(Edit(max_steps, "1234").accepted);
    EXPECT_EQ(d_.Mass_m(1), 0.0);
    EXPECT_EQ(d_.Mass_m(2), 2.5);
    EXPECT_EQ(d_.Kspring(2), 70000.0);
    EXPECT_EQ(d_.Zeta(1), 0.0);
    EXPECT_EQ(d_.Zeta(2), 1.0);
    EXPECT_EQ(d_.Preload, 350.0);
    EXPECT_EQ(d_.x_Initial, 0.5);
    EXPECT_EQ(d_.Ode_Max_Steps, 1234);
    EXPECT_EQ(form_.run.t_start, 0.01);
    EXPECT_EQ(form_.run.t_end, 0.7);
    EXPECT_EQ(form_.run.eps, Single(0.01));
    EXPECT_EQ(form_.run.start_step, 0.002);
    EXPECT_EQ(form_.txt_Mass[1], "2.5");
    EXPECT_TRUE(form_.refused.empty());
}

TEST_F(Model_Screen, a_refused_entry_tells_why_and_shows_its_own_text)
{
    struct Case {
        Model_Field field;
        const char* text;
        Expected_Box box;
        const char* usa;
        const char* europe;
    };
    for (const char* format : {"USA", "Europe"})
        for (const Case& c :
             {Case{Mass, "-1", positive, "0.01", "1"}, Case{Preload, "-1", preload, "10", "10"},
              Case{Spring, "0", positive, "1", "1"}, Case{Spring, "-1", positive, "1", "1"},
              Case{Zeta, "-1", zeta, "0.05", "0,05"}, Case{Zeta, "2", zeta, "0.05", "0,05"},
              Case{x_start, "-1", positive, "0", "0"}, Case{t_start, "-1", positive, "0", "0"},
              Case{max_steps, "-1", positive, "0", "0"}, Case{t_end, "0", two_cycles, "0.698", "0,698"},
              Case{eps, "-1", positive, "0.001", "0,001"}, Case{start_step, "-1", positive, "0.0001", "0,0001"}}) {
            design.identity.Number_Format = format;
            form_ = Open_Model_Form(design);
            const Dynamics_Group before = d_;
            script_.Expect(c.box);
            const Model_Entry entry = Edit(c.field, c.text);
            EXPECT_FALSE(entry.accepted) << c.box.text;
            EXPECT_EQ(entry.text, std::string(format) == "USA" ? c.usa : c.europe) << c.box.text;
            EXPECT_EQ(form_.Text({c.field, 0}), entry.text);
            EXPECT_EQ(d_.Mass_m(1), before.Mass_m(1));
            EXPECT_EQ(d_.Kspring(1), before.Kspring(1));
            EXPECT_EQ(d_.Ode_Max_Steps, before.Ode_Max_Steps);
        }
}

TEST_F(Model_Screen, an_end_time_of_exactly_two_periods_is_refused_and_one_above_accepted)
{
    form_ = Open_Model_Form(design);
    const double two = 2 * Cam_Period(design);
    script_.Expect(two_cycles);
    EXPECT_FALSE(Edit(t_end, Shortest(two)).accepted);
    EXPECT_TRUE(Edit(t_end, Shortest(two * (1 + 1e-9))).accepted);
    // The refused one's text is the period rounded, what is run with the period itself.
    script_.Expect(two_cycles);
    Edit(t_end, "0.1");
    ASSERT_TRUE(Calc_Model(design, form_));
    EXPECT_FALSE(form_.run.t_end.has_value());
}

TEST_F(Model_Screen, a_small_accuracy_is_asked_of)
{
    form_ = Open_Model_Form(design);
    script_.Expect(Small_Accuracy(Answer::Yes));
    EXPECT_TRUE(Edit(eps, "0.00005").accepted);
    EXPECT_EQ(form_.run.eps, Single(0.00005));
    script_.Expect(Small_Accuracy(Answer::No));
    const Model_Entry entry = Edit(eps, "0.00004");
    EXPECT_FALSE(entry.accepted);
    EXPECT_EQ(entry.text, "0.001");
    ASSERT_TRUE(Calc_Model(design, form_));
    EXPECT_EQ(form_.run.eps, Single(0.001));
}

TEST_F(Model_Screen, what_a_refusal_shows_is_what_the_next_calculation_takes)
{
    form_ = Open_Model_Form(design);
    script_.Expect(preload);
    Edit(Preload, "-5");
    script_.Expect(zeta);
    Edit(Zeta, "7", 1);
    d_.Zeta(2) = 0.2;
    f_.Separation_Answer = 5;
    EXPECT_EQ(d_.Preload, 20000.0);
    script_.Expect(positive);
    Edit(max_steps, "-3");
    script_.Expect(
        {"The number of steps must lie between 1 and 1000000.  Please redo.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Calc_Model(design, form_));
    EXPECT_EQ(d_.Preload, 10.0);
    EXPECT_EQ(d_.Zeta(2), 0.05F);
    EXPECT_EQ(d_.Ode_Max_Steps, 0);
    EXPECT_TRUE(form_.refused.empty());
}

TEST_F(Model_Screen, a_number_too_large_is_a_fault_and_stores_nothing)
{
    form_ = Open_Model_Form(design);
    EXPECT_THROW(Edit(Mass, "1E39"), Fault);
    EXPECT_THROW(Edit(max_steps, "3E9"), Fault);
    EXPECT_EQ(d_.Mass_m(1), 2.0);
    EXPECT_EQ(d_.Ode_Max_Steps, 20000);
}

// ---- buttons

TEST_F(Model_Screen, calculating_opens_the_buttons_and_brings_figures_and_plots)
{
    form_ = Open_Model_Form(design);
    EXPECT_EQ(Plots_of_Model(design)[0].values.size(), 0U);
    ASSERT_TRUE(Calc_Model(design, form_));
    EXPECT_TRUE(form_.calculated);
    const auto plots = Plots_of_Model(design);
    const int variables[]{var::Time_Error, var::Time_X, var::Time_Xdot, var::Time_Xddot};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_EQ(plots[k].variable, variables[k]);
        ASSERT_EQ(plots[k].values.size(), static_cast<std::size_t>(d_.Ode_Count));
        ASSERT_EQ(plots[k].time.size(), plots[k].values.size());
        EXPECT_EQ(plots[k].values[5], design.results.Ode_States(static_cast<int>(k), 6));
        EXPECT_EQ(plots[k].largest, *std::ranges::max_element(plots[k].values));
        EXPECT_EQ(plots[k].smallest, *std::ranges::min_element(plots[k].values));
        EXPECT_EQ(plots[k].peak_to_peak, Single(plots[k].largest - plots[k].smallest));
    }
    EXPECT_EQ(plots[0].time.back(), design.results.Ode_Time(d_.Ode_Count));
    const Model_Texts texts = Texts_of_Model(design);
    // Model 3: 2 kg on 200 kN/m in series and on 400 kN/m, at 18 rad/s.
    EXPECT_EQ(texts.lbl_OmegaN, (std::array<std::string, 6>{"316.23", "50.3", "3,020", "447.21", "71.2", "4,271"}));
    EXPECT_EQ(texts.lbl_FreqRatio, "0.06");
    EXPECT_EQ(texts.lbl_Period, "0.349");
    EXPECT_EQ(texts.lbl_T_rise, "0.087");
    EXPECT_EQ(texts.lbl_T_natural, "0.014");
    EXPECT_EQ(texts.lbl_Gamma, "6.21");
    EXPECT_EQ(texts.lbl_Delta_t, "0.000035");
    EXPECT_EQ(texts.lbl_Kount, std::to_string(d_.Ode_Count));
}

TEST_F(Model_Screen, figures_of_a_standing_cam_and_of_no_frequency_are_empty)
{
    d_.Omega(1) = 0.0;
    d_.Omega(2) = 0.0;
    EXPECT_EQ(Texts_of_Model(design).lbl_T_natural, "");
    design.motion.Shaft_speed = 0.0;
    script_.Expect(testing::Error_Box(11, "Division by zero", "Texts_of_Model"));
    EXPECT_EQ(Texts_of_Model(design).lbl_Period, "");
}

const std::string note =
    "Note: A polydyne cam requires a follower displacement function\n"
    "that is continuous through the 4th derivative of displacement (ping).\n"
    "For a double-dwell cam, the 11-deg Poly function is suitable.\n"
    "For a single-dwell cam, the Thoren and Stoddart functions are suitable.\n"
    "Also, any spline or polynomial function with suitable continuity will work.\n"
    "If you have chosen such suitable functions for all motions, select OK.\n"
    "Otherwise, select Cancel.";

TEST_F(Model_Screen, the_box_makes_a_polydyne_cam_and_gives_it_up)
{
    form_ = Open_Model_Form(design);
    ASSERT_TRUE(Calc_Model(design, form_));
    script_.Expect({note, Buttons::OK_Cancel, Symbol::none, Answer::Cancel});
    EXPECT_FALSE(Tick_Polydyne(design, form_, true));
    EXPECT_TRUE(form_.calculated);
    EXPECT_FALSE(f_.Polydyne_Calc);

    script_.Expect({note, Buttons::OK_Cancel, Symbol::none, Answer::OK});
    EXPECT_TRUE(Tick_Polydyne(design, form_, true));
    EXPECT_TRUE(f_.Polydyne_Calc && form_.calculated);
    const double driven = design.results.CalcData(var::Response_X, 30);

    EXPECT_FALSE(Tick_Polydyne(design, form_, false));
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_TRUE(f_.Modelflag && form_.calculated);
    EXPECT_NE(design.results.CalcData(var::Response_X, 30), driven);
}

TEST_F(Model_Screen, next_keeps_the_profile_of_the_motion_under_a_polydyne_cam)
{
    EXPECT_FALSE(Model_Done(design));
    Reach(design, Mark::polydyne);
    EXPECT_TRUE(Model_Done(design));
    EXPECT_EQ(design.results.CalcData(var::Nonpolydyne_X, 30), design.results.CalcData(var::X, 30));
}

TEST_F(Model_Screen, back_asks_before_it_abandons_a_polydyne_cam)
{
    form_ = Open_Model_Form(design);
    EXPECT_TRUE(May_Leave_Model(design, form_));
    ASSERT_TRUE(Calc_Model(design, form_));
    ASSERT_TRUE(Calc_Polydyne(design));
    Reach(design, Mark::polydyne);
    const std::string question =
        "You have calculated a Polydyne cam but have not gone forward with creating its \n"
        "profile, which requires that you exit this form with the Next button.\n"
        "Do you wish to abandon the Polydyne calculation at this point?";
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::No});
    EXPECT_FALSE(May_Leave_Model(design, form_));
    EXPECT_TRUE(f_.Polydyne_Calc);
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(May_Leave_Model(design, form_));
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_TRUE(f_.Modelflag);
}

TEST_F(Model_Screen, every_control_has_a_name_of_its_own_and_Gear_says_why_it_is_closed)
{
    std::set<std::string_view> names;
    const auto take = [&](const Form_Control& control) {
        EXPECT_TRUE(names.insert(control.name).second) << control.name;
    };
    for (const Model_Row& row : Fields_of_Model_Screen()) {
        take(row);
        EXPECT_FALSE(row.caption.empty() || row.tip.empty()) << row.name;
    }
    for (const Form_Control& control : Read_Outs_of_Model())
        take(control);
    for (const Form_Control& control : Controls_of_Model())
        take(control);
    const Form_Control& gear = Control_of(Controls_of_Model(), "opt_Solver(1)");
    EXPECT_EQ(gear.caption, "Gear");
    EXPECT_EQ(gear.tip, "No Gear integrator is part of this program: use Runge Kutta");
}

}  // namespace
}  // namespace lobemax
