// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Dynamics.h"

#include <qcustomplot.h>

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <vector>

#include "core/text.h"
#include "dynamics/kinetostatics.h"
#include "forms/drive_words.h"
#include "paint/chart.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Dynamics;
using testing::Driver;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Watched_Boxes;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box zeta{"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation};
const Expected_Box friction{"Friction cannot be zero or negative.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box fluctuation{" Coefficient of fluctuation must be between zero and one - Try .05 ", Buttons::OK,
                               Symbol::none};
const Expected_Box accumulation{
    "Selecting Torque Accumulation will cause each succeeding\n"
    " torque calculation to add to the existing torque function.\n"
    "So do not click the Calculate Button on this form more than once\n"
    "for each new cam on the camshaft after designing it on the other forms.",
    Buttons::OK, Symbol::exclamation};

class Dynamics_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static void Start_in(int unit_system, const char* example)
    {
        Start_Services services;
        services.read_preferences = [unit_system] { design.identity.WhichUnit = unit_system; };
        ASSERT_TRUE(Sub_Main(design, "", services));
        Build(example);
    }
    /// A force that the motion brought with it.
    static void Make_External_Force(double force)
    {
        design.flags.Ext_Force_Calc = true;
        for (int i = 0; i <= 360; ++i)
            design.results.Ext_Force_Table(i) = force;
    }
    static const paint::Chart& Chart(const Driver& user, int index)
    {
        return user.Find<paint::Chart>(Element("grf_Plot", index));
    }
    static bool Charts_Visible(const Driver& user)
    {
        const bool first = user.Visible(Element("grf_Plot", 0));
        EXPECT_EQ(user.Visible(Element("grf_Plot", 1)), first);
        return first;
    }
    static std::string Pulses(const Driver& user)
    {
        return user.Find<QPlainTextEdit>("pct_Pict1").toPlainText().toStdString();
    }
    Dynamics_Group& d_ = design.dynamics;
    Flags_Group& f_ = design.flags;
};

TEST_F(Dynamics_Screen, opens_reset_with_the_designs_values)
{
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_FALSE(f_.Dynamicflag);
    EXPECT_EQ(user.Text("txt_Mass"), "4");
    EXPECT_EQ(user.Text("txt_Zeta"), "0.05");
    EXPECT_FALSE(Charts_Visible(user));
    EXPECT_EQ(Pulses(user), "");
    for (const char* figure : {"lbl_Fmax", "lbl_Fmin", "lbl_Tmax", "lbl_OmegaN", "lbl_OmegaD", "lbl_Cc"})
        EXPECT_EQ(user.Text(figure), "") << figure;
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(user.Enabled("chk_Extforce") || user.Enabled("chk_compcam") || user.Enabled("txt_Damping"));
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "mm-kg-N-s"}));
}

TEST_F(Dynamics_Screen, has_its_titles_captions_and_tips)
{
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_EQ(screen.windowTitle().toStdString(), "Cam Dynamics");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Closure").title().toStdString(), "Joint Closure");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Torque").title().toStdString(), "Torque Calcs");
    struct Row {
        const char* words;  // the control that shows the caption
        const char* caption;
        const char* named;  // the control that has the tip
        const char* tip;
    };
    for (const auto& [words, caption, named, tip] : {
             Row{"opt_Closure(0)", "Force Closed", "opt_Closure(0)", "Uses a spring closure"},
             Row{"opt_Closure(1)", "Form Closed", "opt_Closure(1)", "Tracked, ribbed, or conjugate cam"},
             Row{"lbl_txt_Mass", "Effective Mass", "txt_Mass",
                 "Effective mass at roller follower - must be in mass units"},
             Row{"lbl_txt_Preload", "Spring Preload", "txt_Preload", "Initial spring load at assembly"},
             Row{"lbl_txt_Spring", "Spring Constant", "txt_Spring", "Return spring rate"},
             Row{"lbl_txt_Damping", "Coefficient C", "txt_Damping", "Damping coefficient"},
             Row{"lbl_txt_Zeta", "Ratio z", "txt_Zeta", "Dimensionless damping ratio, zeta"},
             Row{"chk_Extforce", "Add ext. force", "chk_Extforce",
                 "This will superpose any external force previously calculated"},
             Row{"lbl_txt_Journal", "Cam Journal Dia", "txt_Journal",
                 "Camshaft diameter for friction torque calculation"},
             Row{"lbl_txt_Folfrict", "Follower Friction", "txt_Folfrict", ""},
             Row{"lbl_txt_Jnlfrict", "Journal Friction", "txt_Jnlfrict", ""},
             Row{"opt_Torque(0)", "Start Fresh", "opt_Torque(0)", "New torque calculation overwrites previous values"},
             Row{"opt_Torque(1)", "Accumulate", "opt_Torque(1)", "Retains previous torque and adds new to it"},
             Row{"lbl_txt_Fluct", "Coef Fluctuation", "txt_Fluct", "Desired coefficient of fluctuaion for a flywheel"},
             Row{"chk_compcam", "Calc Comp Cam", "chk_compcam", "Create a torque compensation cam"},
             Row{"cap_lbl_Fmax", "Fmax", "lbl_Fmax", ""},
             Row{"cap_lbl_Fmin", "Fmin", "lbl_Fmin", ""},
             Row{"cap_lbl_Tmax", "Tmax", "lbl_Tmax", ""},
             Row{"cap_lbl_OmegaN", "Undamped natural frequency", "lbl_OmegaN", ""},
             Row{"cap_lbl_OmegaD", "Damped natural frequency", "lbl_OmegaD", ""},
             Row{"cap_lbl_Cc", "Coefficient of critical damping", "lbl_Cc", ""},
             Row{"cmd_Cancel", "< &Back", "cmd_Cancel", ""},
             Row{"cmd_Calc", "&Calculate", "cmd_Calc", ""},
             Row{"cmd_Done", "&Next >", "cmd_Done", ""},
             Row{"cmd_Print", "&Print Form", "cmd_Print", ""},
             Row{"cmd_Copy", "Cop&y", "cmd_Copy", ""},
         }) {
        EXPECT_EQ(user.Text(words), caption);
        EXPECT_EQ(user.Tip(named), tip) << named;
    }
    EXPECT_EQ(Chart(user, 0).Title().toStdString(), "Kinetostatic camshaft torque");
    EXPECT_EQ(Chart(user, 1).Title().toStdString(), "Kinetostatic force at follower");
    EXPECT_EQ(user.Tip("pct_Pict1"), "These data can be used to calculate flywheel size - see textbook");
    EXPECT_TRUE(
        user.Tip("pct_Drive").starts_with("What the drive has to give over a cycle, without and with friction"));
}

TEST_F(Dynamics_Screen, the_drives_figures_stand_whole_in_their_panel)
{
    for (const int system : {1, 5}) {
        Start_in(system, "Double Dwell");
        frm_Dynamics screen;
        const Driver user(screen);
        const auto& panel = user.Find<QPlainTextEdit>("pct_Drive");
        EXPECT_EQ(panel.toPlainText().toStdString(), "");
        user.Press("cmd_Calc");
        EXPECT_EQ(panel.toPlainText().toStdString() + "\n", Joined(Drive_Panel(design)));
        EXPECT_EQ(panel.toPlainText().contains("N-m"), true);
        EXPECT_TRUE(panel.isEnabled());
        EXPECT_EQ(panel.horizontalScrollBar()->maximum(), 0) << system;
        EXPECT_EQ(panel.verticalScrollBar()->maximum(), 0) << system;
        script_.Expect(positive);
        user.Fill("txt_Mass", "-1");
        EXPECT_FALSE(panel.isEnabled()) << "the figures of what stood before";
    }
}

TEST_F(Dynamics_Screen, every_field_and_figure_has_its_unit)
{
    struct Units {
        int system;
        const char *mass, *spring, *force, *damping, *length, *torque;
    };
    for (const Units& u :
         {Units{1, "bl", "lb/in", "lb", "lb-s/in", "in", "in-lb"},
          Units{2, "sl", "lb/ft", "lb", "lb-s/ft", "ft", "ft-lb"}, Units{3, "kg", "N/m", "N", "N-s/m", "m", "m-N"},
          Units{4, "kg", "N/m", "N", "N-s/m", "cm", "cm-N"}, Units{5, "kg", "N/m", "N", "N-s/m", "mm", "mm-N"}}) {
        Start_in(u.system, "Double Dwell");
        frm_Dynamics screen;
        const Driver user(screen);
        for (const auto& [name, unit] :
             {std::pair{"txt_Mass", u.mass}, std::pair{"txt_Spring", u.spring}, std::pair{"txt_Preload", u.force},
              std::pair{"txt_Damping", u.damping}, std::pair{"txt_Journal", u.length}, std::pair{"txt_Zeta", ""},
              std::pair{"txt_Folfrict", ""}, std::pair{"txt_Jnlfrict", ""}, std::pair{"txt_Fluct", ""},
              std::pair{"lbl_Fmax", u.force}, std::pair{"lbl_Fmin", u.force}, std::pair{"lbl_Tmax", u.torque},
              std::pair{"lbl_OmegaN", "rad/s"}, std::pair{"lbl_OmegaD", "rad/s"}, std::pair{"lbl_Cc", u.damping}})
            EXPECT_EQ(user.Text(QString("unit_") + name), unit) << name << " in system " << u.system;
    }
}

TEST_F(Dynamics_Screen, the_button_calculates_and_shows_charts_and_pulses)
{
    f_.Stressflag = true;
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_FALSE(f_.Stressflag);
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "Dynamics", "mm-kg-N-s"}));
    EXPECT_TRUE(Pulses(user).starts_with(" Areas of Camshaft Torque\n Pulses in Order over 1 cycle \n\n"));
    EXPECT_NE(Pulses(user).find("    Average Torque:\n"), std::string::npos);
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Dynamics_Screen, the_charts_show_torque_and_force_over_a_turn)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    const auto expect = [&user](int index, int row, const char* axis) {
        const paint::Chart& chart = Chart(user, index);
        ASSERT_EQ(chart.Curves().size(), 1U);
        EXPECT_EQ(chart.Curves()[0].y, Row(row));
        EXPECT_EQ(chart.Curves()[0].x, Row(var::Angle));
        const auto& plot = user.Find<QCustomPlot>(Element("grf_Plot", index) + "_plot");
        EXPECT_EQ(plot.xAxis->label().toStdString(), "Cam Angle (Deg)");
        EXPECT_EQ(plot.yAxis->label().toStdString(), axis);
        EXPECT_EQ(plot.xAxis->range(), QCPRange(0, 360));
    };
    expect(0, 8, "Torque  mm-N");
    expect(1, 7, "Force-kin  N");
}

TEST_F(Dynamics_Screen, figures_show_extremes_and_frequencies)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Fill("txt_Spring", "1000000");
    user.Fill("txt_Preload", "2000");
    const auto force = Row(7);
    const auto torque = Row(8);
    EXPECT_NEAR(Val(design, user.Text("lbl_Fmax")), *std::ranges::max_element(force), 0.05 + 1e-3);
    EXPECT_NEAR(Val(design, user.Text("lbl_Fmin")), *std::ranges::min_element(force), 0.05 + 1e-3);
    EXPECT_NEAR(Val(design, user.Text("lbl_Tmax")), *std::ranges::max_element(torque), 0.05 + 1e-3);
    // 25 mm x 1000 N/mm over the preload, at the top of the lift
    EXPECT_NEAR(Val(design, user.Text("lbl_Fmax")), 27000.0, 100.0);
    EXPECT_EQ(user.Text("lbl_Fmax").substr(2, 1), ",");
    // sqrt(1000000 / 4); 2 x 4 x 500; 0.05 of it; sqrt(500^2 - 25^2)
    EXPECT_EQ(user.Text("lbl_OmegaN"), "500.0");
    EXPECT_EQ(user.Text("lbl_Cc"), "4,000.00");
    EXPECT_EQ(user.Text("txt_Damping"), "200.00");
    EXPECT_EQ(user.Text("lbl_OmegaD"), "499.4");
}

TEST_F(Dynamics_Screen, accepted_entries_are_stored_and_recalculate_at_once)
{
    frm_Dynamics screen;
    const Driver user(screen);
    struct Case {
        const char* field;
        const char* typed;
        Single Dynamics_Group::*stored;
        double value;
    };
    for (const auto& [field, typed, stored, value] :
         {Case{"txt_Mass", "3.5", &Dynamics_Group::Mass, 3.5},
          Case{"txt_Spring", "2000", &Dynamics_Group::Return_Spring_Rate, 2000},
          Case{"txt_Preload", "500", &Dynamics_Group::Preload, 500},
          Case{"txt_Zeta", "0.25", &Dynamics_Group::Zeta_Initial, 0.25},
          Case{"txt_Journal", "30", &Dynamics_Group::Bearing_Radius, 15},
          Case{"txt_Folfrict", "0.5", &Dynamics_Group::Mu_of_Follower, 0.5},
          Case{"txt_Jnlfrict", "0.75", &Dynamics_Group::Mu_of_Shaft, 0.75},
          Case{"txt_Fluct", "0.125", &Dynamics_Group::Coeff_of_Fluctuation, 0.125}}) {
        f_.Dynamicflag = false;
        user.Fill(field, typed);
        EXPECT_EQ(d_.*stored, value) << field;
        EXPECT_TRUE(f_.Dynamicflag) << field;
        EXPECT_TRUE(user.Enabled("cmd_Done"));
    }
    EXPECT_NEAR(Data(var::Force, 300), 500.0, 1e-2);  // the low dwell: preload alone
}

TEST_F(Dynamics_Screen, enter_validates_and_an_unchanged_field_is_left_alone)
{
    frm_Dynamics screen;
    const Driver user(screen);
    QTest::mouseClick(&user.Find<QLineEdit>("txt_Preload"), Qt::LeftButton);
    user.Leave("txt_Preload");
    user.Enter("txt_Preload");
    EXPECT_FALSE(f_.Dynamicflag);
    user.Type("txt_Preload", "500");
    EXPECT_EQ(d_.Preload, 100.0);
    user.Enter("txt_Preload");
    EXPECT_EQ(d_.Preload, 500.0);
    EXPECT_TRUE(f_.Dynamicflag);
    f_.Dynamicflag = false;
    user.Leave("txt_Preload");
    EXPECT_FALSE(f_.Dynamicflag);
}

TEST_F(Dynamics_Screen, refused_entries_show_their_message_and_text)
{
    d_.Return_Spring_Rate = 0.0;  // opens txt_Damping
    frm_Dynamics screen;
    const Driver user(screen);
    struct Case {
        const char* field;
        const char* typed;
        const Expected_Box& box;
        const char* shown;
    };
    for (const auto& [field, typed, box, shown] :
         {Case{"txt_Damping", "0", positive, "1"}, Case{"txt_Mass", "0", positive, "0.01"},
          Case{"txt_Preload", "-1", positive, "1"}, Case{"txt_Spring", "abc", positive, "1"},
          Case{"txt_Journal", "0", positive, "1"}, Case{"txt_Zeta", "2", zeta, "0.25"},
          Case{"txt_Folfrict", "0", friction, "0.1"}, Case{"txt_Jnlfrict", "0", friction, "0.01"},
          Case{"txt_Fluct", "-1", fluctuation, "0.05"}}) {
        script_.Expect(box);
        user.Fill(field, typed);
        EXPECT_EQ(user.Text(field), shown) << field;
        EXPECT_FALSE(f_.Dynamicflag) << field;
    }
}

TEST_F(Dynamics_Screen, a_number_too_large_is_told_and_the_field_shows_its_stored_text_again)
{
    frm_Dynamics screen;
    const Driver user(screen);
    const Dynamics_Group before = d_;
    for (const auto& [field, typed] :
         {std::pair{"txt_Mass", "1E40"}, std::pair{"txt_Spring", "1E40"}, std::pair{"txt_Preload", "1E40"},
          std::pair{"txt_Zeta", "1E400"}, std::pair{"txt_Journal", "4E38"}, std::pair{"txt_Folfrict", "1E40"},
          std::pair{"txt_Jnlfrict", "1E40"}, std::pair{"txt_Fluct", "1E40"}}) {
        const std::string shown = user.Text(field);
        script_.Expect(Error_Box(6, "Overflow", std::string("frm_Dynamics.") + field));
        user.Fill(field, typed);
        EXPECT_EQ(user.Text(field), shown) << field;
        EXPECT_FALSE(f_.Dynamicflag);
    }
    EXPECT_EQ(d_.Mass, before.Mass);
    EXPECT_EQ(d_.Comp_Mass, before.Comp_Mass);
    EXPECT_EQ(d_.Return_Spring_Rate, before.Return_Spring_Rate);
    EXPECT_EQ(d_.Comp_Spring_Rate, before.Comp_Spring_Rate);
    EXPECT_EQ(d_.Preload, before.Preload);
    EXPECT_EQ(d_.Comp_Preload, before.Comp_Preload);
    EXPECT_EQ(d_.Zeta_Initial, before.Zeta_Initial);
    EXPECT_EQ(d_.Bearing_Radius, before.Bearing_Radius);
    EXPECT_EQ(d_.Mu_of_Follower, before.Mu_of_Follower);
    EXPECT_EQ(d_.Mu_of_Shaft, before.Mu_of_Shaft);
    EXPECT_EQ(d_.Coeff_of_Fluctuation, before.Coeff_of_Fluctuation);
}

TEST_F(Dynamics_Screen, without_a_spring_the_damping_is_typed_and_its_ratio_closed)
{
    d_.Return_Spring_Rate = 0.0;
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Enabled("txt_Damping"));
    EXPECT_FALSE(user.Enabled("txt_Zeta"));
    user.Fill("txt_Damping", "7.5");
    EXPECT_EQ(d_.Damping, 7.5);
    EXPECT_EQ(user.Text("txt_Damping"), "7.5");
    EXPECT_EQ(user.Text("lbl_OmegaN"), "");
    user.Fill("txt_Spring", "1000");
    EXPECT_FALSE(user.Enabled("txt_Damping"));
    EXPECT_TRUE(user.Enabled("txt_Zeta"));
    EXPECT_EQ(user.Text("txt_Damping"), "6.32");  // the spring's own
}

TEST_F(Dynamics_Screen, a_compensating_cam_opens_with_its_own_train)
{
    f_.CompCam_Calc = true;
    d_.Comp_Mass = 1.5;
    d_.Comp_Spring_Rate = 3000.0;
    d_.Comp_Preload = 77.0;
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Mass"), "1.5");
    EXPECT_EQ(user.Text("txt_Spring"), "3000");
    EXPECT_EQ(user.Text("txt_Preload"), "77");
    EXPECT_FALSE(user.Enabled("chk_compcam")) << "another one is made from forces that are calculated";
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Enabled("chk_compcam"));
}

TEST_F(Dynamics_Screen, accumulating_warns_and_waits_for_the_button)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    const double T = Data(var::Torque, 40);
    const std::string pulses = Pulses(user);
    script_.Expect(accumulation);
    user.Press(Element("opt_Torque", 1));
    EXPECT_FALSE(d_.Torque_Start_Fresh);
    EXPECT_TRUE(Charts_Visible(user));
    user.Fill("txt_Fluct", "0.04");
    EXPECT_EQ(Data(var::Torque, 40), T);
    EXPECT_FALSE(Charts_Visible(user));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(Pulses(user), pulses);  // the charts alone are hidden
    EXPECT_NE(user.Text("lbl_Fmax"), "");
    user.Press("cmd_Calc");
    EXPECT_NEAR(Data(var::Torque, 40), 2 * T, 1e-4);
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_TRUE(user.Enabled("cmd_Done"));
}

TEST_F(Dynamics_Screen, while_torques_accumulate_the_charts_go_before_a_refusal_is_told)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    script_.Expect(accumulation);
    user.Press(Element("opt_Torque", 1));
    const Watched_Boxes boxes(Answer::OK, [&] { EXPECT_FALSE(Charts_Visible(user)); });
    user.Fill("txt_Mass", "0");
    EXPECT_EQ(boxes.texts, (std::vector<std::string>{positive.text}));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(user.Find<QLabel>("lbl_Fmax").isEnabled());  // gray: of the values before
}

TEST_F(Dynamics_Screen, a_faulted_run_shows_no_figures_as_its_own_and_keeps_next_closed)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_TRUE(user.Find<QLabel>("lbl_Fmax").isEnabled());
    script_.Expect(testing::Error_Box(6, "Overflow", "Calc_Force_Torque"));
    user.Fill("txt_Mass", "3e38");
    EXPECT_FALSE(design.flags.Dynamicflag);
    EXPECT_FALSE(Charts_Visible(user));
    EXPECT_FALSE(user.Find<QLabel>("lbl_Fmax").isEnabled());
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Fill("txt_Mass", "3");
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_TRUE(user.Find<QLabel>("lbl_Fmax").isEnabled());
    EXPECT_TRUE(user.Enabled("cmd_Done"));
}

TEST_F(Dynamics_Screen, starting_fresh_overwrites_the_accumulated_torque)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    const double T = Data(var::Torque, 40);
    script_.Expect(accumulation);
    user.Press(Element("opt_Torque", 1));
    user.Press("cmd_Calc");
    user.Press(Element("opt_Torque", 0));
    EXPECT_TRUE(d_.Torque_Start_Fresh);
    EXPECT_EQ(Data(var::Torque, 40), T);
    EXPECT_TRUE(Charts_Visible(user));
    user.Fill("txt_Preload", "500");  // and entries recalculate again
    EXPECT_NEAR(Data(var::Force, 300), 500.0, 1e-2);
}

TEST_F(Dynamics_Screen, the_external_force_is_offered_where_there_is_one)
{
    Expect_External_Force_Offered<frm_Dynamics>();
}

TEST_F(Dynamics_Screen, a_ticked_external_force_joins_torque_and_friction_but_not_the_force)
{
    Make_External_Force(100.0);
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    const double F = Data(7, 40);
    const double T = Data(8, 40);
    const double friction_torque = Data(15, 40);
    f_.Stressflag = true;
    user.Press("chk_Extforce");
    EXPECT_TRUE(d_.Ext_Force_Add);
    EXPECT_EQ(Data(7, 40), F);
    EXPECT_NEAR(Data(8, 40), T * (F + 100.0) / F, std::abs(T) * 1e-6);
    EXPECT_NEAR(Data(15, 40), friction_torque * (F + 100.0) / F, friction_torque * 1e-6);
    EXPECT_FALSE(f_.Stressflag);
    EXPECT_EQ(Chart(user, 0).Curves()[0].y[40], Data(8, 40));
    user.Press("chk_Extforce");
    EXPECT_FALSE(d_.Ext_Force_Add);
    EXPECT_EQ(Data(8, 40), T);
}

TEST_F(Dynamics_Screen, form_closure_hides_the_spring_and_force_closure_brings_it_back)
{
    frm_Dynamics screen;
    const Driver user(screen);
    const auto expect_shown = [&user](bool shown) {
        for (const char* name : {"txt_Spring", "txt_Preload", "txt_Zeta", "txt_Damping"})
            for (const char* prefix : {"", "lbl_", "unit_"})
                EXPECT_EQ(user.Visible(QString(prefix) + name), shown) << prefix << name;
        for (const char* name : {"lbl_OmegaN", "lbl_OmegaD", "lbl_Cc"})
            for (const char* prefix : {"", "cap_", "unit_"})
                EXPECT_EQ(user.Visible(QString(prefix) + name), shown) << prefix << name;
        for (const char* name : {"txt_Mass", "txt_Journal", "txt_Folfrict", "txt_Jnlfrict", "txt_Fluct", "lbl_Fmax",
                                 "cap_lbl_Fmin", "unit_lbl_Tmax"})
            EXPECT_TRUE(user.Visible(name)) << name;
    };
    user.Fill("txt_Preload", "300");
    expect_shown(true);
    user.Press(Element("opt_Closure", 1));
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Return_Spring_Rate, 0.0);
    EXPECT_EQ(d_.Preload, 0.0);
    EXPECT_EQ(d_.Damping, 0.0);
    expect_shown(false);
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_EQ(user.Text("lbl_Fmin").front(), '-');
    user.Press(Element("opt_Closure", 0));
    EXPECT_EQ(design.cam.Closure, "Force");
    EXPECT_EQ(d_.Return_Spring_Rate, 1000.0);
    EXPECT_EQ(d_.Preload, 300.0);
    EXPECT_EQ(user.Text("txt_Preload"), "300");
    expect_shown(true);
    EXPECT_EQ(user.Text("lbl_OmegaN"), "15.8");
}

TEST_F(Dynamics_Screen, a_separation_on_choosing_the_spring_is_asked_over_its_fields)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press(Element("opt_Closure", 1));
    user.Find<screens::Entry>("txt_Preload").Show_Text("1");  // too weak
    const Watched_Boxes boxes(Answer::Ignore, [&] {
        EXPECT_TRUE(user.Visible("txt_Spring") && user.Visible("txt_Preload") && user.Visible("lbl_OmegaN"));
        EXPECT_FALSE(Charts_Visible(user));
    });
    user.Press(Element("opt_Closure", 0));
    ASSERT_EQ(boxes.texts.size(), 1U);
    EXPECT_TRUE(boxes.texts[0].starts_with("The cam and follower have separated at Theta =  "));
    EXPECT_TRUE(Charts_Visible(user));
}

TEST_F(Dynamics_Screen, an_aborted_run_shows_what_it_has_filled)
{
    frm_Dynamics screen;
    const Driver user(screen);
    f_.Stressflag = true;
    const Watched_Boxes boxes(Answer::Abort);
    user.Fill("txt_Preload", "1");
    EXPECT_EQ(boxes.texts.size(), 1U);
    EXPECT_TRUE(f_.Calc_Abort);
    EXPECT_FALSE(f_.Dynamicflag);
    EXPECT_FALSE(f_.Stressflag);
    EXPECT_TRUE(Charts_Visible(user));
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    ASSERT_EQ(Chart(user, 1).Curves().size(), 1U);
    const auto& force = Chart(user, 1).Curves()[0].y;
    EXPECT_EQ(force, Row(7));
    const auto separated = std::ranges::find_if(force, [](double F) { return F <= 0.0; });
    ASSERT_LT(separated - force.begin(), 100);  // in the rise
    EXPECT_EQ(force[300], 0.0);                 // the dwell behind was not reached
    EXPECT_NEAR(Val(design, user.Text("lbl_Fmax")), *std::ranges::max_element(force), 0.05 + 1e-3);
    EXPECT_NE(Pulses(user), "");
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "mm-kg-N-s"}));
    screen.close();  // without forces it is no way on
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Dynamics_Screen, a_flat_face_cannot_be_form_closed)
{
    Build("Flat Follower");
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Closure", 0)));
    EXPECT_FALSE(user.Enabled(Element("opt_Closure", 1)));
}

TEST_F(Dynamics_Screen, copying_only_tells_how)
{
    frm_Dynamics screen;
    const Driver user(screen);
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    EXPECT_FALSE(f_.Dynamicflag);
}

TEST_F(Dynamics_Screen, back_leaves_without_calculating)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Cancel");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(screen.result(), QDialog::Rejected);
    EXPECT_FALSE(f_.Dynamicflag);
}

TEST_F(Dynamics_Screen, closing_the_window_is_done_or_back)
{
    frm_Dynamics screen;
    const Driver user(screen);
    screen.close();
    EXPECT_EQ(screen.result(), QDialog::Rejected);
    frm_Dynamics again;
    const Driver other(again);
    other.Press("cmd_Calc");
    again.close();
    EXPECT_EQ(again.result(), QDialog::Accepted);
}

TEST_F(Dynamics_Screen, closing_the_window_takes_the_entry_that_is_being_typed)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Type("txt_Preload", "500");
    screen.close();
    EXPECT_EQ(d_.Preload, 500.0);
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace lobemax
