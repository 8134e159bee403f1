// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dynamics_form.h"

#include <gtest/gtest.h>
#include <algorithm>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "camgeom/sizing.h"
#include "dynamics/kinetostatics.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box zeta{"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation};
const Expected_Box friction{"Friction cannot be zero or negative.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box fluctuation{" Coefficient of fluctuation must be between zero and one - Try .05 ", Buttons::OK,
                               Symbol::none};

class Dynamics_Fields : public ::testing::Test {
protected:
    void SetUp() override
    {
        Cam_Maker().Make();
        ASSERT_TRUE(Calc_Phi(design, 1));
    }
    void TearDown() override { design = {}; }
    Dynamics_Group& d_ = design.dynamics;
    Script script_;
};

TEST_F(Dynamics_Fields, a_new_design_has_its_defaults_by_unit_system)
{
    struct Row {
        double mass, spring, preload;
    };
    const std::array rows{Row{0.04, 75, 25}, Row{0.48, 900, 300}, Row{4, 1000, 100}, Row{4, 1000, 100},
                          Row{4, 1000, 100}};
    for (int units = 1; units <= 5; ++units) {
        Start_Services services;
        services.read_preferences = [units] { design.identity.WhichUnit = units; };
        ASSERT_TRUE(Sub_Main(design, "", services));
        const Row& row = rows[static_cast<std::size_t>(units - 1)];
        EXPECT_EQ(d_.Mass, Single(row.mass));
        EXPECT_EQ(d_.Return_Spring_Rate, row.spring);
        EXPECT_EQ(d_.Preload, row.preload);
        EXPECT_EQ(d_.Comp_Mass, Single(row.mass) / 2);
        EXPECT_EQ(d_.Comp_Spring_Rate, row.spring * 2);
        EXPECT_EQ(d_.Comp_Preload, row.preload);
        EXPECT_EQ(d_.Zeta_Initial, Single(0.05));
        EXPECT_EQ(d_.Bearing_Radius, 1.0);
        EXPECT_EQ(d_.Mu_of_Shaft, Single(0.01));
        EXPECT_EQ(d_.Mu_of_Follower, Single(0.01));
        EXPECT_EQ(d_.Coeff_of_Fluctuation, Single(0.05));
        EXPECT_EQ(d_.Follower_Weight, 0.0);
    }
}

TEST_F(Dynamics_Fields, the_screen_opens_with_the_designs_values_in_its_number_format)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    EXPECT_EQ(form.txt_Mass, "4");
    EXPECT_EQ(form.txt_Spring, "1000");
    EXPECT_EQ(form.txt_Preload, "100");
    EXPECT_EQ(form.txt_Zeta, "0.05");
    EXPECT_EQ(form.txt_Journal, "2");  // the diameter
    EXPECT_EQ(form.txt_Folfrict, "0.01");
    EXPECT_TRUE(form.force_closed && form.start_fresh);
    design.identity.Number_Format = "Europe";
    form = Opening_Dynamics_Form(design);
    EXPECT_EQ(form.txt_Zeta, "0,05");
    EXPECT_EQ(form.txt_Jnlfrict, "0,01");
}

TEST_F(Dynamics_Fields, a_compensating_cam_shows_its_own_train)
{
    design.flags.CompCam_Calc = true;
    const Dynamics_Form form = Opening_Dynamics_Form(design);
    EXPECT_EQ(form.txt_Mass, "2");
    EXPECT_EQ(form.txt_Spring, "2000");
}

TEST_F(Dynamics_Fields, a_compensating_cam_can_be_made_once_the_forces_are_calculated)
{
    EXPECT_FALSE(Openings_of_Dynamics(design, true, "1").compcam_enabled);
    design.flags.Dynamicflag = true;
    EXPECT_TRUE(Openings_of_Dynamics(design, true, "1").compcam_enabled);
}

TEST_F(Dynamics_Fields, a_vibration_model_lends_its_damping)
{
    design.flags.Modelflag = true;
    d_.Zeta(1) = 0.2;
    d_.Zeta(2) = 0.3;
    d_.Model_Type = 3;
    EXPECT_EQ(Opening_Dynamics_Form(design).txt_Zeta, "0.2");
    d_.Model_Type = 5;
    EXPECT_EQ(Opening_Dynamics_Form(design).txt_Zeta, "0.3");
    d_.Model_Type = 1;
    EXPECT_EQ(Opening_Dynamics_Form(design).txt_Zeta, "0.05");
}

TEST_F(Dynamics_Fields, a_flat_face_is_closed_by_a_spring)
{
    EXPECT_TRUE(Openings_of_Dynamics(design, true, "1").form_closure_enabled);
    design.cam.Followtype = 2;
    design.cam.Closure = "Form";
    EXPECT_TRUE(Opening_Dynamics_Form(design).force_closed);
    EXPECT_FALSE(Openings_of_Dynamics(design, true, "1").form_closure_enabled);
}

TEST_F(Dynamics_Fields, a_spring_and_its_rate_open_their_fields)
{
    Dynamics_Openings labels = Openings_of_Dynamics(design, true, "0");
    EXPECT_TRUE(labels.damping_enabled && labels.spring_frames);
    EXPECT_FALSE(labels.external_enabled || labels.compcam_enabled);
    labels = Openings_of_Dynamics(design, false, "12");
    EXPECT_FALSE(labels.damping_enabled || labels.spring_frames);
    design.flags.Ext_Force_Calc = true;
    EXPECT_TRUE(Openings_of_Dynamics(design, true, "1").external_enabled);
}

TEST_F(Dynamics_Fields, accepted_entries_are_stored_and_lead_the_compensating_train)
{
    using enum Dynamics_Field;
    EXPECT_TRUE(Edit_Dynamics_Field(design, Mass, "3").accepted);
    EXPECT_EQ(d_.Mass, 3.0);
    EXPECT_EQ(d_.Comp_Mass, 1.5);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Preload, "50").accepted);
    EXPECT_EQ(d_.Comp_Preload, 50.0);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Spring, "700").accepted);
    EXPECT_EQ(d_.Comp_Spring_Rate, 700.0);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Journal, "30").accepted);
    EXPECT_EQ(d_.Bearing_Radius, 15.0);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Damping, "8").accepted);
    EXPECT_EQ(d_.Damping, 8.0);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Zeta, "1").accepted);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Folfrict, "0.2").accepted);
    EXPECT_TRUE(Edit_Dynamics_Field(design, Jnlfrict, "0.3").accepted);
    EXPECT_EQ(d_.Mu_of_Shaft, Single(0.3));
    design.flags.CompCam_Calc = true;
    EXPECT_TRUE(Edit_Dynamics_Field(design, Mass, "9").accepted);
    EXPECT_EQ(d_.Comp_Mass, 1.5);  // the compensating train is its own now
}

TEST_F(Dynamics_Fields, refused_entries_have_their_message_and_new_text)
{
    using enum Dynamics_Field;
    struct Case {
        Dynamics_Field field;
        std::string typed;
        Expected_Box box;
        std::string shown;
    };
    for (const auto& [field, typed, box, shown] : std::vector<Case>{{Mass, "0", positive, "0.01"},
                                                                    {Mass, "-4", positive, "0.01"},
                                                                    {Preload, "0", positive, "1"},
                                                                    {Spring, "-1", positive, "1"},
                                                                    {Damping, "", positive, "1"},
                                                                    {Journal, "0", positive, "1"},
                                                                    {Zeta, "0", zeta, "0.25"},
                                                                    {Zeta, "1.01", zeta, "0.25"},
                                                                    {Folfrict, "0", friction, "0.1"},
                                                                    {Jnlfrict, "-1", friction, "0.01"},
                                                                    {Fluct, "0", fluctuation, "0.05"}}) {
        script_.Expect(box);
        const Form_Entry entry = Edit_Dynamics_Field(design, field, typed);
        EXPECT_FALSE(entry.accepted) << typed;
        EXPECT_EQ(entry.text, shown);
    }
    EXPECT_EQ(d_.Mass, 4.0);
    EXPECT_EQ(d_.Return_Spring_Rate, 1.0);  // the refused spring's new text is its value, too
}

TEST_F(Dynamics_Fields, a_fluctuation_above_one_is_refused_one_entry_late)
{
    EXPECT_TRUE(Edit_Dynamics_Field(design, Dynamics_Field::Fluct, "1.5").accepted);  // meant
    EXPECT_EQ(d_.Coeff_of_Fluctuation, 1.5);
    script_.Expect(fluctuation);
    EXPECT_FALSE(Edit_Dynamics_Field(design, Dynamics_Field::Fluct, "0.2").accepted);
    EXPECT_EQ(d_.Coeff_of_Fluctuation, Single(0.05));
    EXPECT_TRUE(Edit_Dynamics_Field(design, Dynamics_Field::Fluct, "1").accepted);
}

TEST_F(Dynamics_Fields, the_button_reads_all_and_calculates)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.txt_Spring = "20000";
    form.txt_Preload = "800";
    form.txt_Journal = "40";
    design.flags.Stressflag = true;
    EXPECT_TRUE(Calc_Dynamics(design, form));
    EXPECT_TRUE(design.flags.Dynamicflag);
    EXPECT_FALSE(design.flags.Stressflag);
    EXPECT_EQ(d_.Bearing_Radius, 20.0);
    EXPECT_EQ(design.cam.Closure, "Force");
    EXPECT_NEAR(Data(var::Force, 320), 800.0, 1e-3);  // the low dwell: preload alone
}

TEST_F(Dynamics_Fields, a_form_closed_cam_has_no_spring)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.force_closed = false;
    EXPECT_TRUE(Choose_Closure(design, form));
    EXPECT_TRUE(design.flags.Dynamicflag);
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Return_Spring_Rate, 0.0);
    EXPECT_EQ(d_.Preload, 0.0);
    EXPECT_EQ(d_.Damping, 0.0);
    EXPECT_NEAR(Data(var::Force, 30), 4.0 * Data(var::A, 30) / 1000, 1e-3);
}

TEST_F(Dynamics_Fields, accumulating_warns)
{
    script_.Expect(
        {"Selecting Torque Accumulation will cause each succeeding\n"
         " torque calculation to add to the existing torque function.\n"
         "So do not click the Calculate Button on this form more than once\n"
         "for each new cam on the camshaft after designing it on the other forms.",
         Buttons::OK, Symbol::exclamation});
    Choose_Accumulate(design);
    EXPECT_FALSE(d_.Torque_Start_Fresh);
}

TEST_F(Dynamics_Fields, the_defaults_show_in_every_unit_system_and_number_format)
{
    struct Row {
        const char *mass, *spring, *preload, *spring_unit, *damping_unit, *mass_unit, *length, *force;
    };
    const std::array rows{Row{"0.04", "75", "25", "lb/in", "lb-s/in", "bl", "in", "lb"},
                          Row{"0.48", "900", "300", "lb/ft", "lb-s/ft", "sl", "ft", "lb"},
                          Row{"4", "1000", "100", "N/m", "N-s/m", "kg", "m", "N"},
                          Row{"4", "1000", "100", "N/m", "N-s/m", "kg", "cm", "N"},
                          Row{"4", "1000", "100", "N/m", "N-s/m", "kg", "mm", "N"}};
    for (const bool europe : {false, true})
        for (int units = 1; units <= 5; ++units) {
            Start_Services services;
            services.read_preferences = [units, europe] {
                design.identity.WhichUnit = units;
                design.identity.Number_Format = europe ? "Europe" : "USA";
            };
            ASSERT_TRUE(Sub_Main(design, "", services));
            const Row& row = rows[static_cast<std::size_t>(units - 1)];
            const auto shown = [europe](std::string text) {
                if (const auto at = text.find('.'); europe && at != std::string::npos)
                    text[at] = ',';
                return text;
            };
            const Dynamics_Form form = Opening_Dynamics_Form(design);
            EXPECT_EQ(form.txt_Mass, shown(row.mass)) << units;
            EXPECT_EQ(form.txt_Spring, row.spring);
            EXPECT_EQ(form.txt_Preload, row.preload);
            EXPECT_EQ(form.txt_Zeta, shown("0.05"));
            EXPECT_EQ(form.txt_Journal, "2");
            EXPECT_EQ(form.txt_Folfrict, shown("0.01"));
            EXPECT_EQ(form.txt_Jnlfrict, shown("0.01"));
            EXPECT_EQ(form.txt_Fluct, shown("0.05"));
            EXPECT_FALSE(form.add_external);
            for (const auto& [field, unit] :
                 {std::pair{"txt_Mass", row.mass_unit}, std::pair{"txt_Spring", row.spring_unit},
                  std::pair{"txt_Damping", row.damping_unit}, std::pair{"txt_Journal", row.length},
                  std::pair{"txt_Preload", row.force}, std::pair{"txt_Zeta", ""}})
                EXPECT_EQ(
                    Unit_Word(
                        design,
                        std::ranges::find(Fields_of_Dynamics(), std::string_view(field), &Form_Control::name)->unit),
                    unit)
                    << field;
            EXPECT_EQ(Unit_Word(design, Form_Unit::torque), design.plot.Var_Unit(8));
        }
}

TEST_F(Dynamics_Fields, entries_and_refusals_follow_the_european_format)
{
    design.identity.Number_Format = "Europe";
    EXPECT_TRUE(Edit_Dynamics_Field(design, Dynamics_Field::Mass, "2,5").accepted);
    EXPECT_EQ(d_.Mass, 2.5);
    script_.Expect(positive);
    EXPECT_EQ(Edit_Dynamics_Field(design, Dynamics_Field::Mass, "0").text, "0,01");
    script_.Expect(zeta);
    EXPECT_EQ(Edit_Dynamics_Field(design, Dynamics_Field::Zeta, "1,5").text, "0,25");
    script_.Expect(fluctuation);
    EXPECT_EQ(Edit_Dynamics_Field(design, Dynamics_Field::Fluct, "-1").text, "0,05");
}

TEST_F(Dynamics_Fields, an_entry_recalculates_at_once_unless_torques_accumulate)
{
    Form_Entry entry = Edit_Dynamics_Field(design, Dynamics_Field::Mass, "3");
    EXPECT_TRUE(entry.recalculate && entry.disable_done);
    EXPECT_FALSE(Dynamics_Entry_Hides_Charts(design));
    script_.Expect(positive);
    entry = Edit_Dynamics_Field(design, Dynamics_Field::Mass, "0");
    EXPECT_FALSE(entry.recalculate);
    EXPECT_TRUE(entry.disable_done);  // what stands typed is not what was calculated
    d_.Torque_Start_Fresh = false;
    EXPECT_TRUE(Dynamics_Entry_Hides_Charts(design));
    entry = Edit_Dynamics_Field(design, Dynamics_Field::Mass, "3");
    EXPECT_TRUE(entry.disable_done);
    EXPECT_FALSE(entry.recalculate);
    script_.Expect(positive);
    entry = Edit_Dynamics_Field(design, Dynamics_Field::Mass, "0");
    EXPECT_FALSE(entry.recalculate);
    EXPECT_TRUE(entry.disable_done);  // what stands typed is not what was calculated
}

TEST_F(Dynamics_Fields, a_number_too_large_is_no_entry)
{
    const Dynamics_Group before = d_;
    using enum Dynamics_Field;
    for (const Dynamics_Field field : {Mass, Preload, Damping, Spring, Folfrict, Jnlfrict, Fluct})
        EXPECT_THROW(Edit_Dynamics_Field(design, field, "1E40"), Fault);
    EXPECT_THROW(Edit_Dynamics_Field(design, Journal, "4E38"), Fault);  // its half would fit, but not be shown again
    EXPECT_THROW(Edit_Dynamics_Field(design, Zeta, "1E400"), Fault);
    EXPECT_EQ(d_.Mass, before.Mass);
    EXPECT_EQ(d_.Comp_Mass, before.Comp_Mass);
    EXPECT_EQ(d_.Comp_Preload, before.Comp_Preload);
    EXPECT_EQ(d_.Return_Spring_Rate, before.Return_Spring_Rate);
    EXPECT_EQ(d_.Comp_Spring_Rate, before.Comp_Spring_Rate);
    EXPECT_EQ(d_.Bearing_Radius, before.Bearing_Radius);
    EXPECT_EQ(d_.Coeff_of_Fluctuation, before.Coeff_of_Fluctuation);
}

TEST_F(Dynamics_Fields, with_a_number_too_large_no_field_is_read_and_nothing_calculated)
{
    for (std::string Dynamics_Form::*field :
         {&Dynamics_Form::txt_Mass, &Dynamics_Form::txt_Spring, &Dynamics_Form::txt_Preload, &Dynamics_Form::txt_Zeta,
          &Dynamics_Form::txt_Journal, &Dynamics_Form::txt_Folfrict, &Dynamics_Form::txt_Jnlfrict,
          &Dynamics_Form::txt_Fluct}) {
        Dynamics_Form form = Opening_Dynamics_Form(design);
        form.txt_Mass = "7";
        form.txt_Spring = "7000";
        form.txt_Fluct = "0.07";
        form.*field = "1E40";
        script_.Expect(Error_Box(6, "Overflow", "Read_Dynamics_Fields"));
        EXPECT_FALSE(Calc_Dynamics(design, form));
        EXPECT_EQ(d_.Mass, 4.0);
        EXPECT_EQ(d_.Return_Spring_Rate, 1000.0);
        EXPECT_EQ(d_.Coeff_of_Fluctuation, Single(0.05));
        EXPECT_FALSE(design.flags.Dynamicflag);
    }
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.force_closed = false;
    form.txt_Spring = "1E40";  // hidden, and of no account
    EXPECT_TRUE(Calc_Dynamics(design, form));
}

TEST_F(Dynamics_Fields, an_aborted_run_was_run)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.txt_Preload = "1";
    Host host;
    host.messenger = [](const Message&) { return Answer::Abort; };
    Host before = Install_Host(std::move(host));
    EXPECT_TRUE(Calc_Dynamics(design, form));
    Install_Host(std::move(before));
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_FALSE(design.flags.Dynamicflag);
}

TEST_F(Dynamics_Fields, a_refused_spring_rate_leaves_the_compensating_train)
{
    const double before = d_.Comp_Spring_Rate;
    script_.Expect(positive);
    EXPECT_FALSE(Edit_Dynamics_Field(design, Dynamics_Field::Spring, "0").accepted);
    EXPECT_EQ(d_.Return_Spring_Rate, 1.0);
    EXPECT_EQ(d_.Comp_Spring_Rate, before);
}

TEST_F(Dynamics_Fields, without_a_spring_the_damping_entry_stays_to_its_last_digit)
{
    Edit_Dynamics_Field(design, Dynamics_Field::Damping, "7.1234");
    d_.Return_Spring_Rate = 0.0;
    const Dynamics_Form form = Opening_Dynamics_Form(design);
    EXPECT_EQ(form.txt_Damping, "7.12");
    EXPECT_TRUE(Calc_Dynamics(design, form));
    EXPECT_EQ(d_.Damping, Single(7.1234));  // not its rounded show
}

TEST_F(Dynamics_Fields, choosing_a_closure_reads_and_calculates)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.txt_Spring = "20000";
    form.txt_Preload = "800";
    form.force_closed = false;
    EXPECT_TRUE(Choose_Closure(design, form));
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Return_Spring_Rate, 0.0);
    d_.Model_Type = 4;
    form.force_closed = true;  // the fields still hold their spring
    EXPECT_TRUE(Choose_Closure(design, form));
    EXPECT_EQ(design.cam.Closure, "Force");
    EXPECT_EQ(d_.Model_Type, 4);
    EXPECT_EQ(d_.Return_Spring_Rate, 20000.0);
    EXPECT_EQ(d_.Preload, 800.0);
}

TEST_F(Dynamics_Fields, starting_fresh_takes_the_accumulated_torque_away)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.txt_Spring = "20000";
    form.txt_Preload = "800";
    ASSERT_TRUE(Calc_Dynamics(design, form));
    const double T = Data(var::Torque, 40);
    form.start_fresh = false;
    ASSERT_TRUE(Calc_Dynamics(design, form));
    EXPECT_EQ(Data(var::Torque, 40), 2 * T);
    EXPECT_TRUE(Choose_Start_Fresh(design, form));
    EXPECT_TRUE(form.start_fresh && d_.Torque_Start_Fresh);
    EXPECT_EQ(Data(var::Torque, 40), T);
}

TEST_F(Dynamics_Fields, the_tick_adds_the_external_force_and_takes_it_away)
{
    Dynamics_Form form = Opening_Dynamics_Form(design);
    form.txt_Spring = "20000";
    form.txt_Preload = "800";
    design.flags.Ext_Force_Calc = true;
    for (int i = 0; i <= 360; ++i)
        design.results.Ext_Force_Table(i) = 100.0;
    ASSERT_TRUE(Calc_Dynamics(design, form));
    const double F = Data(var::Force, 40);
    const double T = Data(var::Torque, 40);
    int refreshed = 0;
    Host host;
    host.refresh = [&refreshed] { ++refreshed; };
    Host before = Install_Host(std::move(host));
    EXPECT_TRUE(Tick_Add_External_Force(design, form, true));
    Install_Host(std::move(before));
    EXPECT_EQ(refreshed, 1);
    EXPECT_TRUE(d_.Ext_Force_Add);
    EXPECT_TRUE(Opening_Dynamics_Form(design).add_external);
    EXPECT_EQ(Data(var::Force, 40), F);
    EXPECT_NEAR(Data(var::Torque, 40), T * (F + 100.0) / F, std::abs(T) * 1e-6);
    EXPECT_TRUE(Tick_Add_External_Force(design, form, false));
    EXPECT_EQ(Data(var::Torque, 40), T);
    d_.Ext_Force_Add = true;
    design.flags.Ext_Force_Calc = false;
    EXPECT_FALSE(Opening_Dynamics_Form(design).add_external);  // nothing to add: unticked
}

TEST_F(Dynamics_Fields, figures_have_one_decimal_and_damping_two)
{
    Dynamics_Figures figures;
    figures.Fmax = 1234567.25;
    figures.Fmin = -12.34;
    figures.Tmax = 0.04;
    figures.frequencies = true;
    d_.Omega_N = 15.8114;
    d_.Omega_D = 15.7916;
    d_.Critical_Damping = 1126.491;
    d_.Damping = 6.325;
    Dynamics_Texts texts = Texts_of_Dynamics(design, figures);
    EXPECT_EQ(texts.lbl_Fmax, "1,234,567.3");
    EXPECT_EQ(texts.lbl_Fmin, "-12.3");
    EXPECT_EQ(texts.lbl_Tmax, "0.0");
    EXPECT_EQ(texts.lbl_OmegaN, "15.8");
    EXPECT_EQ(texts.lbl_OmegaD, "15.8");
    EXPECT_EQ(texts.lbl_Cc, "1,126.49");
    EXPECT_EQ(texts.txt_Damping, "6.32");  // 6.325 is 6.32499980926514 in 32 bits
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Texts_of_Dynamics(design, figures).lbl_Cc, "1.126,49");
    figures.frequencies = false;
    texts = Texts_of_Dynamics(design, figures);
    EXPECT_EQ(texts.lbl_OmegaN + texts.lbl_OmegaD + texts.lbl_Cc + texts.txt_Damping, "");
}

TEST_F(Dynamics_Fields, closing_goes_on_only_with_forces)
{
    design.flags.Dynamicflag = false;
    EXPECT_FALSE(Closing_Dynamics_Is_Done(design));
    design.flags.Dynamicflag = true;
    EXPECT_TRUE(Closing_Dynamics_Is_Done(design));
}

TEST_F(Dynamics_Fields, controls_have_their_captions_and_tips)
{
    const auto field = [](std::string_view name) {
        return *std::ranges::find(Fields_of_Dynamics(), name, &Form_Control::name);
    };
    const auto control = [](std::string_view name) { return Control_of(Controls_of_Dynamics(), name); };
    EXPECT_EQ(control("opt_Closure(1)").tip, "Tracked, ribbed, or conjugate cam");
    EXPECT_EQ(field("txt_Mass").tip, "Effective mass at roller follower - must be in mass units");
    EXPECT_EQ(field("txt_Fluct").tip, "Desired coefficient of fluctuaion for a flywheel");  // spelled so
    EXPECT_EQ(control("pct_Pict1").tip, "These data can be used to calculate flywheel size - see textbook");
    EXPECT_EQ(control("grf_Plot(0)").caption, "Kinetostatic camshaft torque");
    EXPECT_EQ(control("cmd_Cancel").caption, "< &Back");
}

}  // namespace
}  // namespace lobemax
