// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/compcam_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

const Expected_Box not_positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
const std::string question =
    "You are about to overwrite the primary cam data in memory\n"
    "with this compensating cam data.  If you have not yet\n"
    "saved the model for the primary cam you must do so now\n"
    "or you will lose that data.  \n"
    "Then you will be taken to the Size Cam screen to create the\n"
    "profile for the compensating cam.\n"
    "If you do not want to do this, hit 'Cancel' and then use the\n"
    "'Back' button to exit this form without overwriting any data.";

class Compcam : public ::testing::Test {
protected:
    void SetUp() override { Open(5); }
    void TearDown() override { design = {}; }

    void Open(int units)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = units;
        Initialize(design);
        Set_Units(design);
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        form_ = Opening_Compcam_Form(design);
    }
    Form_Entry Enter(std::string_view name, std::string_view text)
    {
        const auto fields = Fields_of_Compcam();
        const auto field = std::ranges::find(fields, name, &Form_Control::name);
        EXPECT_NE(field, fields.end());
        return field->enter(design, form_, text);
    }

    Dynamics_Group& d_ = design.dynamics;
    Flags_Group& f_ = design.flags;
    Compcam_Form form_;
    Script script_;
};

TEST_F(Compcam, opens_over_forces_with_a_point_a_degree)
{
    EXPECT_TRUE(Compcam_Open(design));
    EXPECT_TRUE(May_Open_Compcam(design));
    f_.Dynamicflag = false;
    EXPECT_FALSE(Compcam_Open(design));
    design.motion.Deltatheta = 0.25;
    script_.Expect(
        {"This routine requires that delta theta be no smaller than 1 degree.\n"
         "Please return to the SVAJ screen and recalculate the cam with delta theta = 1.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Open_Compcam(design));
}

TEST_F(Compcam, shows_the_balancing_train_and_the_usual_figures)
{
    EXPECT_EQ(form_.txt_Mass, "2");
    EXPECT_EQ(form_.txt_Spring, "2000");
    EXPECT_EQ(form_.txt_Preload, "100");
    EXPECT_EQ(form_.txt_eps, "0.001");
    EXPECT_EQ(form_.txt_start_step, "0.0001");
    EXPECT_EQ(form_.txt_max_steps, "1000000");
    EXPECT_FALSE(form_.result.has_value());
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Opening_Compcam_Form(design).txt_eps, "0,001");
}

TEST_F(Compcam, fields_carry_their_captions_and_units)
{
    struct Row {
        std::string_view name, caption;
        std::string unit;
    };
    const std::array rows{Row{"txt_Mass", "Comp Mass", "kg"},      Row{"txt_Spring", "Comp Spring", "N/m"},
                          Row{"txt_Preload", "Comp Preload", "N"}, Row{"txt_eps", "Accuracy", ""},
                          Row{"txt_max_steps", "Max Steps", ""},   Row{"txt_start_step", "Start Step", ""}};
    const auto fields = Fields_of_Compcam();
    ASSERT_EQ(fields.size(), rows.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        EXPECT_EQ(fields[k].name, rows[k].name);
        EXPECT_EQ(fields[k].caption, rows[k].caption);
        EXPECT_EQ(Unit_Word(design, fields[k].unit), rows[k].unit);
    }
    for (const auto& [name, caption] : {std::pair{"frm_CompCam", "Torque Compensation"},
                                        std::pair{"cmd_Done", "&Next >"}, std::pair{"cmd_Cancel", "< &Back"},
                                        std::pair{"cmd_Replot", "Replot"}, std::pair{"cmd_Outputfile", "&Output File"}})
        EXPECT_EQ(Control_of(Controls_of_Compcam(), name).caption, caption);
    std::set<char> keys;
    for (const Form_Control& control : Controls_of_Compcam())
        if (const std::size_t at = control.caption.find('&');
            at != std::string_view::npos && control.name.starts_with("cmd_")) {
            const char key = static_cast<char>(std::tolower(control.caption[at + 1]));
            EXPECT_TRUE(keys.insert(key).second) << control.name;
        }
}

TEST_F(Compcam, accepted_entries_are_stored_and_take_the_result_away)
{
    f_.Model_Saved = true;
    ASSERT_TRUE(Calc_Compcam(design, form_));
    for (const auto& [name, text] :
         {std::pair{"txt_Mass", "1.5"}, std::pair{"txt_Spring", "1500"}, std::pair{"txt_Preload", "80.5"},
          std::pair{"txt_eps", "0.0005"}, std::pair{"txt_max_steps", "5000"}, std::pair{"txt_start_step", "0.00025"}}) {
        ASSERT_TRUE(Calc_Compcam(design, form_)) << name;
        const Form_Entry entry = Enter(name, text);
        EXPECT_TRUE(entry.accepted && entry.disable_done);
        EXPECT_EQ(entry.text, text);
        EXPECT_FALSE(form_.result.has_value());
    }
    EXPECT_EQ(d_.Comp_Mass, 1.5);
    EXPECT_EQ(d_.Comp_Spring_Rate, 1500.0);
    EXPECT_EQ(d_.Comp_Preload, 80.5);
    EXPECT_EQ(form_.run.eps, Single(0.0005));
    EXPECT_EQ(form_.run.max_steps, 5000);
    EXPECT_EQ(form_.run.start_step, Single(0.00025));
    EXPECT_FALSE(f_.Model_Saved);
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);  // the primary cam stands as it is
    EXPECT_EQ(d_.Mass, 4.0);
}

TEST_F(Compcam, refused_entries_give_the_value_back)
{
    for (const std::string_view text : {"0", "-1", ""})
        for (const auto& [name, back] :
             {std::pair{"txt_Mass", "2"}, std::pair{"txt_Spring", "2000"}, std::pair{"txt_Preload", "100"},
              std::pair{"txt_eps", "0.001"}, std::pair{"txt_max_steps", "1000000"},
              std::pair{"txt_start_step", "0.0001"}}) {
            script_.Expect(not_positive);
            const Form_Entry entry = Enter(name, text);
            EXPECT_FALSE(entry.accepted) << name;
            EXPECT_EQ(entry.text, back);
        }
    EXPECT_EQ(d_.Comp_Mass, 2.0);
    EXPECT_THROW(Enter("txt_max_steps", "3000000000"), Fault);
    EXPECT_THROW(Enter("txt_Mass", "1E60"), Fault);
    EXPECT_EQ(d_.Comp_Mass, 2.0);
    EXPECT_EQ(form_.run.max_steps, 1'000'000);
}

TEST_F(Compcam, a_count_of_steps_is_whole)
{
    EXPECT_EQ(Enter("txt_max_steps", "99.6").text, "100");
    script_.Expect(not_positive);
    EXPECT_EQ(Enter("txt_max_steps", "0.4").text, "100");
}

TEST_F(Compcam, a_small_accuracy_is_asked_about)
{
    const Expected_Box asks{
        "Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely.\nContinue anyway?",
        Buttons::Yes_No, Symbol::exclamation, Answer::Yes};
    EXPECT_TRUE(Enter("txt_eps", "0.0001").accepted);  // not below
    script_.Expect(asks);
    EXPECT_EQ(Enter("txt_eps", "0.00009").text, "0.00009");
    EXPECT_EQ(form_.run.eps, Single(0.00009));
    Expected_Box no = asks;
    no.answer = Answer::No;
    script_.Expect(no);
    EXPECT_EQ(Enter("txt_eps", "1E-6").text, "0.001");
    EXPECT_EQ(form_.run.eps, Single(0.001));
}

TEST_F(Compcam, reset_brings_the_train_of_a_new_design_back)
{
    Enter("txt_Mass", "9");
    Enter("txt_Spring", "9");
    Enter("txt_Preload", "9");
    Enter("txt_eps", "0.01");
    Reset_Compcam(design, form_);
    EXPECT_EQ(form_.txt_Mass, "2");
    EXPECT_EQ(form_.txt_Spring, "2000");
    EXPECT_EQ(form_.txt_Preload, "100");
    EXPECT_EQ(form_.txt_eps, "0.001");
    // A form-closed cam has no spring to take over.
    Enter("txt_Spring", "777");
    d_.Return_Spring_Rate = d_.Preload = 0.0;
    Reset_Compcam(design, form_);
    EXPECT_EQ(form_.txt_Spring, "777");
    EXPECT_EQ(form_.txt_Preload, "100");
}

TEST_F(Compcam, a_refused_calculation_leaves_no_result)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    d_.Comp_Mass = 0.0;
    script_.Expect(not_positive);
    EXPECT_FALSE(Calc_Compcam(design, form_));
    EXPECT_FALSE(form_.result.has_value());
    EXPECT_FALSE(Compcam_Done(design, form_));
}

TEST_F(Compcam, the_list_of_points_has_a_row_for_each)
{
    Open(1);
    ASSERT_TRUE(Calc_Compcam(design, form_));
    const Compcam_List list = Points_of_Compcam(design, *form_.result);
    EXPECT_EQ(list.heads, (std::vector<std::string>{"Theta (deg)", "S (in)", "S' (in/s)", "S'' (in/s^2)", "Tp (in-lb)",
                                                    "Tc (in-lb)", "Tp+Tc (in-lb)", "phi (rad)", "rho (in)", "F (lb)"}));
    ASSERT_EQ(list.rows.size(), 361U);
    const Compensation& c = *form_.result;
    for (const std::size_t i : {0U, 45U, 200U, 360U}) {
        const auto& row = list.rows[i];
        ASSERT_EQ(row.size(), list.heads.size());
        EXPECT_EQ(row[0], std::to_string(i));
        const std::array expected{c.S[i],   c.V[i], c.A[i], c.Tp[i], c.Tc[i], c.net[i], c.phi[i] * 3.14159265 / 180,
                                  c.rho[i], c.F[i]};
        for (std::size_t k = 0; k < expected.size(); ++k)
            EXPECT_NEAR(Val(row[k + 1], Decimal_Symbol::point), expected[k], 1e-5 * std::abs(expected[k])) << i << k;
    }
}

TEST_F(Compcam, lists_show_the_units_of_the_design)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    const Compcam_List list = Points_of_Compcam(design, *form_.result);
    EXPECT_EQ(list.heads[1], "S (mm)");
    EXPECT_EQ(list.heads[9], "F (N)");
    EXPECT_NEAR(Val(list.rows[0][1], Decimal_Symbol::point), form_.result->S[0] * 1000, 1e-3);
    design.identity.Number_Format = "Europe";
    EXPECT_NE(Points_of_Compcam(design, *form_.result).rows[45][1].find(','), std::string::npos);
}

TEST_F(Compcam, extremes_stand_with_their_angles)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    const Compensation& c = *form_.result;
    const Compcam_List motion = Motion_Extremes_of_Compcam(design, c);
    EXPECT_EQ(motion.heads, (std::vector<std::string>{"S (mm)", "theta", "S' (mm/s)", "theta", "S'' (mm/s^2)", "theta",
                                                      "F (N)", "theta"}));
    EXPECT_EQ(motion.names, (std::vector<std::string>{"Max", "Min"}));
    ASSERT_EQ(motion.rows.size(), 2U);
    EXPECT_EQ(motion.rows[1][0], "0");
    EXPECT_EQ(motion.rows[1][1], "90");
    const double force = Val(motion.rows[1][6], Decimal_Symbol::point);
    EXPECT_NEAR(force, c.smallest_force, 1e-3);
    EXPECT_EQ(motion.rows[1][7], Shortest(c.smallest_angle));
    const Compcam_List torques = Torque_Extremes_of_Compcam(design, c);
    const std::string torque = design.plot.Var_Unit(var::Torque);
    EXPECT_EQ(torques.heads,
              (std::vector<std::string>{"Tp (" + torque + ")", "theta", "Tc (" + torque + ")", "theta",
                                        "Tp+Tc (" + torque + ")", "theta", "phi (deg)", "theta", "rho (mm)", "theta"}));
    EXPECT_NEAR(Val(torques.rows[0][6], Decimal_Symbol::point), *std::max_element(c.phi.begin(), c.phi.end()), 1e-3);
}

TEST_F(Compcam, plots_hold_motion_and_torques)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    const auto plots = Plots_of_Compcam(design, *form_.result);
    for (const std::size_t k : {0U, 1U, 2U})
        EXPECT_EQ(plots[k].curves.size(), 1U);
    EXPECT_EQ(plots[1].unit, "mm/s");
    EXPECT_NEAR(plots[1].curves[0].values[45], form_.result->V[45] * 1000, 1e-9);
    ASSERT_EQ(plots[3].curves.size(), 3U);
    EXPECT_EQ(plots[3].curves[2].name, "Tp+Tc");
    EXPECT_EQ(plots[3].curves[2].values, form_.result->net);
}

TEST_F(Compcam, the_percentage_never_reads_better_than_computed)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    Compensation c = *form_.result;
    for (const auto& [percent, text] :
         {std::pair{99.99, "99.9"}, std::pair{99.0, "99"}, std::pair{0.04, "0"}, std::pair{-0.04, "-0.1"},
          std::pair{-12.31, "-12.4"}, std::pair{100.0, "100"}}) {
        c.percent = percent;
        EXPECT_EQ(Texts_of_Compcam(design, c).lbl_percent, text);
        EXPECT_LE(Percent_Shown(c), percent);
    }
    design.identity.Number_Format = "Europe";
    c.percent = 87.65;
    EXPECT_EQ(Texts_of_Compcam(design, c).lbl_percent, "87,6");
    EXPECT_EQ(Texts_of_Compcam(design, c).lbl_Kount, std::to_string(c.steps));
    EXPECT_EQ(Step_Text({Comp_Motion_Kind::fall, 0.5, 10}), "fall");
}

TEST_F(Compcam, torques_whose_unit_says_another_length_are_told_of)
{
    for (const auto& [units, times] :
         {std::pair{1, ""}, std::pair{2, ""}, std::pair{3, ""}, std::pair{4, "cm-N they are 100 times"},
          std::pair{5, "mm-N they are 1000 times"}}) {
        design.identity.WhichUnit = units;
        Set_Units(design);
        design.motion.Time_Base = 1;
        const std::string note = Note_of_Compcam(design);
        EXPECT_EQ(note.empty(), std::string(times).empty()) << units;
        EXPECT_NE(note.find(times), std::string::npos) << note;
        design.motion.Time_Base = 3;
        EXPECT_EQ(Note_of_Compcam(design), "") << "the calculation tells of it";
    }
}

TEST_F(Compcam, next_with_cancel_keeps_the_primary_cam)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    f_.CompCam_Calc = true;
    const Single before = design.results.CalcData(var::S, 45);
    script_.Expect({question, Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
    EXPECT_FALSE(Compcam_Done(design, form_));
    EXPECT_FALSE(f_.CompCam_Calc);
    EXPECT_EQ(design.results.CalcData(var::S, 45), before);
    EXPECT_TRUE(f_.Sized);
    EXPECT_TRUE(script_.dialogs.empty());
}

TEST_F(Compcam, next_with_ok_offers_to_save_the_primary_and_takes_its_place)
{
    ASSERT_TRUE(Calc_Compcam(design, form_));
    script_.Expect({question, Buttons::OK_Cancel, Symbol::exclamation, Answer::OK});
    EXPECT_TRUE(Compcam_Done(design, form_));  // the dialog is cancelled, which keeps nothing from going on
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs[0].title, "Save the Model");
    EXPECT_TRUE(f_.CompCam_Calc && f_.Calculated);
    EXPECT_FALSE(f_.Sized || f_.Dynamicflag || f_.Model_Saved);
    EXPECT_NEAR(design.results.CalcData(var::S, 0), form_.result->S[0] * 1000, 1e-4);
}

TEST_F(Compcam, the_instructions_begin_with_what_such_a_cam_does)
{
    EXPECT_EQ(Compcam_Instructions_Title, "Instructions for Creating a Torque Compensating Cam");
    EXPECT_EQ(
        Compcam_Instructions().find("A torque compensation cam generates a torque opposite to that of the primary "
                                    "cam \nin order to cancel the inertia torque on the camshaft completely."),
        0U);
    EXPECT_NE(
        Compcam_Instructions().find("The 'Torque Reduced % ' reported at the left is for inertia components only."),
        std::string::npos);
}

}  // namespace
}  // namespace lobemax
