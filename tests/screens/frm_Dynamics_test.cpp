// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Dynamics.h"

#include <QPlainTextEdit>

#include "core/text.h"
#include "dynamics/kinetostatics.h"
#include "paint/chart.h"
#include "screens/frm_Stress.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Dynamics;
using screens::frm_Stress;
using testing::Driver;

class Dynamics_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
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
    EXPECT_EQ(user.Text("unit_txt_Spring"), "N/m");
    EXPECT_FALSE(user.Visible(Element("grf_Plot", 0)));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(user.Enabled("chk_Extforce") || user.Enabled("chk_compcam") || user.Enabled("txt_Damping"));
    EXPECT_EQ(user.Tip("txt_Fluct"), "Desired coefficient of fluctuaion for a flywheel");
}

TEST_F(Dynamics_Screen, the_button_calculates_and_shows_charts_figures_and_pulses)
{
    f_.Stressflag = true;
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_FALSE(f_.Stressflag);
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves()[0].y.size(), 361U);
    EXPECT_EQ(user.Text("lbl_OmegaN"), Trim(FNRoundStr(d_.Omega_N, 1)));
    EXPECT_EQ(user.Text("lbl_Tmax"), Trim(FNRoundStr(Present_Figures().Tmax, 1)));
    EXPECT_TRUE(user.Find<QPlainTextEdit>("pct_Pict1").toPlainText().startsWith(" Areas of Camshaft Torque"));
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Dynamics_Screen, an_accepted_entry_recalculates_at_once)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Fill("txt_Preload", "500");
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_EQ(d_.Preload, 500.0);
    EXPECT_NEAR(design.results.CalcData(var::Force, 300), 500.0, 1e-2);
}

TEST_F(Dynamics_Screen, refused_entries_show_their_message_and_text)
{
    frm_Dynamics screen;
    const Driver user(screen);
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Mass", "0");
    EXPECT_EQ(user.Text("txt_Mass"), "0.01");
    EXPECT_FALSE(f_.Dynamicflag);
    script_.Expect({"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Zeta", "2");
    EXPECT_EQ(user.Text("txt_Zeta"), "0.25");
}

TEST_F(Dynamics_Screen, accumulating_warns_and_waits_for_the_button)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    const double T = design.results.CalcData(var::Torque, 40);
    script_.Expect(
        {"Selecting Torque Accumulation will cause each succeeding\n"
         " torque calculation to add to the existing torque function.\n"
         "So do not click the Calculate Button on this form more than once\n"
         "for each new cam on the camshaft after designing it on the other forms.",
         Buttons::OK, Symbol::exclamation});
    user.Press(Element("opt_Torque", 1));
    user.Fill("txt_Fluct", "0.04");
    EXPECT_EQ(design.results.CalcData(var::Torque, 40), T);
    EXPECT_FALSE(user.Visible(Element("grf_Plot", 0)));
    user.Press("cmd_Calc");
    EXPECT_NEAR(design.results.CalcData(var::Torque, 40), 2 * T, 1e-4);
}

TEST_F(Dynamics_Screen, form_closure_hides_the_spring_and_calculates)
{
    frm_Dynamics screen;
    const Driver user(screen);
    user.Press(Element("opt_Closure", 1));
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Return_Spring_Rate, 0.0);
    for (const char* name : {"txt_Spring", "txt_Preload", "txt_Zeta", "txt_Damping", "lbl_OmegaN"})
        EXPECT_FALSE(user.Visible(name)) << name;
    EXPECT_TRUE(f_.Dynamicflag);
}

TEST_F(Dynamics_Screen, a_flat_face_cannot_be_form_closed)
{
    Build("Flat Follower");
    frm_Dynamics screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Closure", 0)));
    EXPECT_FALSE(user.Enabled(Element("opt_Closure", 1)));
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

class Stress_Screen : public Dynamics_Screen {};

TEST_F(Stress_Screen, opens_with_steel_and_a_first_calculation)
{
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_TRUE(f_.Stressflag);
    EXPECT_EQ(user.Text("txt_Cam_E"), "206.8E3");
    EXPECT_EQ(user.Text("lbl_follower"), "Roller");
    EXPECT_EQ(user.Text("lbl_foltype"), "Please specify type.");
    EXPECT_TRUE(user.Find<QLineEdit>("txt_Cam_E").isReadOnly());
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    const auto& stress = user.Find<paint::Chart>(Element("pct_Plot", 2));
    EXPECT_LT(*std::ranges::min_element(stress.Curves()[0].y), -10.0);
}

TEST_F(Stress_Screen, another_material_can_be_typed)
{
    frm_Stress screen;
    const Driver user(screen);
    const double before = design.results.CalcData(42, 100);
    user.Press(Element("opt_Follower", 1));
    EXPECT_FALSE(user.Find<QLineEdit>("txt_Fol_E").isReadOnly());
    user.Fill("txt_Fol_E", "70000");
    EXPECT_GT(design.results.CalcData(42, 100), before);  // softer: less stress
    script_.Expect({"This value must be positive and nonzero.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Fol_E", "-5");
    EXPECT_EQ(user.Text("txt_Fol_E"), "0.01");
}

TEST_F(Stress_Screen, the_type_of_roller_opens_its_field)
{
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Enabled("txt_Length"));
    EXPECT_FALSE(user.Enabled("txt_Crownrad"));
    user.Press(Element("opt_Fol_type", 1));
    EXPECT_EQ(user.Text("lbl_foltype"), "Please specify the follower crown radius.");
    EXPECT_FALSE(user.Enabled("txt_Length"));
    EXPECT_TRUE(user.Enabled("txt_Crownrad"));
    EXPECT_NEAR(design.results.CalcData(43, 9) / design.results.CalcData(42, 9), -0.34, 1e-5);
    script_.Expect({"You must specify a positive, nonzero crown radius", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Crownrad", "0");
    EXPECT_EQ(user.Text("txt_Crownrad"), "1500");
}

TEST_F(Stress_Screen, a_flat_face_has_its_length_alone)
{
    Build("Flat Follower");
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_follower"), "Flat-Faced");
    EXPECT_EQ(user.Text("lbl_foltype"), "Contact length is the smaller of cam face width or roller length.");
    EXPECT_FALSE(user.Visible(Element("opt_Fol_type", 0)) || user.Visible("txt_Crownrad"));
    EXPECT_TRUE(user.Visible("txt_Length"));
}

TEST_F(Stress_Screen, centimetres_have_no_steel_and_ask_for_a_modulus)
{
    Start_Services services;
    services.read_preferences = [] { design.identity.WhichUnit = 4; };
    ASSERT_TRUE(Sub_Main("", services));
    Build("Double Dwell");
    script_.Expect({"This value must be positive and nonzero.  Please redo.", Buttons::OK, Symbol::exclamation});
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Cam_E"), "");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(user.Find<QLineEdit>("txt_Cam_E").isReadOnly());
}

}  // namespace
}  // namespace lobemax
