// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Stress.h"

#include <qcustomplot.h>

#include <QGroupBox>
#include <algorithm>
#include <vector>

#include "core/text.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "edit/rungs.h"
#include "paint/chart.h"
#include "present/plot_engine.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Stress;
using testing::Driver;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Watched_Boxes;

const Expected_Box positive{"This value must be positive and nonzero.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box radius{"You must specify a positive, nonzero crown radius", Buttons::OK, Symbol::exclamation};

class Stress_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static void Start_in(int unit_system)
    {
        Start_Services services;
        services.read_preferences = [unit_system] { design.identity.WhichUnit = unit_system; };
        ASSERT_TRUE(Sub_Main(design, "", services));
        Build("Double Dwell");
    }
    static void Make_External_Force(double force)
    {
        design.flags.Ext_Force_Calc = true;
        for (int i = 0; i <= 360; ++i)
            design.results.Ext_Force_Table(i) = force;
    }
    static const std::vector<paint::Curve>& Curves(const Driver& user, int plot)
    {
        return user.Find<paint::Chart>(Element("pct_Plot", plot)).Curves();
    }
    /// Whether a field only shows; it then looks so.
    static bool Read_Only(const Driver& user, const char* field)
    {
        const auto& entry = user.Find<QLineEdit>(field);
        const QPalette own = entry.palette();
        EXPECT_EQ(own.color(QPalette::Base) == own.color(QPalette::Window), entry.isReadOnly()) << field;
        return entry.isReadOnly();
    }
    static bool Has_Focus(const Driver& user, const char* field) { return user.Find<QLineEdit>(field).hasFocus(); }
    Dynamics_Group& d_ = design.dynamics;
    Flags_Group& f_ = design.flags;
};

TEST_F(Stress_Screen, opens_with_steel_and_a_first_calculation)
{
    frm_Stress screen;
    EXPECT_FALSE(f_.Stressflag || screen.Control<QAbstractButton>("cmd_Done").isEnabled());  // not before it is shown
    const Driver user(screen);
    EXPECT_TRUE(f_.Stressflag);
    for (const char* field : {"txt_Cam_E", "txt_Fol_E"})
        EXPECT_EQ(user.Text(field), "206.8E3");
    for (const char* field : {"txt_Cam_V", "txt_Fol_v"})
        EXPECT_EQ(user.Text(field), "0.28");
    for (const char* field : {"txt_Cam_E", "txt_Cam_V", "txt_Fol_E", "txt_Fol_v"})
        EXPECT_TRUE(Read_Only(user, field)) << field;
    EXPECT_EQ(user.Text("txt_Length"), "25");
    EXPECT_EQ(user.Text("txt_Crownrad"), "1500");
    EXPECT_EQ(user.Text("txt_Weight"), "0");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_LT(std::ranges::min(Curves(user, 2)[0].y), -10.0);
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "Dynamics", "Stress", "mm-kg-N-s"}));
}

TEST_F(Stress_Screen, the_first_calculation_speaks_over_the_open_screen_and_only_once)
{
    d_.Model_Type = 3;
    design.results.CalcData(var::Force, 5) = 0.0;
    frm_Stress screen;
    const Watched_Boxes boxes(Answer::OK, [&screen] { EXPECT_TRUE(screen.isVisible()); });
    screen.show();
    EXPECT_TRUE(boxes.texts.empty());  // while it is still being shown
    const Driver user(screen);
    EXPECT_EQ(boxes.texts, (std::vector<std::string>{
                               "Something is wrong. - The follower force is zero at cam angle 5 deg.  Stresses will be "
                               "larger than theoretical due to impact."}));
    screen.hide();
    const Driver again(screen);
    EXPECT_EQ(boxes.texts.size(), 1U);
}

TEST_F(Stress_Screen, has_its_captions_and_prompts)
{
    frm_Stress screen;
    const Driver user(screen);
    for (const auto& [frame, title] :
         {std::pair{"fra_Cam", "Cam Material Parameters"}, std::pair{"fra_Follower", "Follower Material Parameters"},
          std::pair{"fra_Configuration", "Follower Configuration"}})
        EXPECT_EQ(user.Find<QGroupBox>(frame).title().toStdString(), title);
    for (const auto& [name, caption] : {
             std::pair{"opt_Cam(0)", "Steel"},
             std::pair{"opt_Cam(1)", "Other"},
             std::pair{"opt_Follower(0)", "Steel"},
             std::pair{"opt_Follower(1)", "Other"},
             std::pair{"lbl_txt_Cam_E", "Young's Modulus"},
             std::pair{"lbl_txt_Cam_V", "Poisson's ratio"},
             std::pair{"lbl_txt_Fol_E", "Young's Modulus"},
             std::pair{"lbl_txt_Fol_v", "Poisson's ratio"},
             std::pair{"opt_Fol_type(0)", "Cylindrical"},
             std::pair{"opt_Fol_type(1)", "Crowned"},
             std::pair{"lbl_txt_Length", "Contact Length"},
             std::pair{"lbl_txt_Crownrad", "Crown Radius"},
             std::pair{"lbl_txt_Weight", "Follower Weight Force on Cam"},
             std::pair{"chk_Extforce", " Include dynamic external force  "},
             std::pair{"lbl_chosen", "You have chosen a "},
             std::pair{"lbl_follower", "Roller"},
             std::pair{"lbl_kind", "follower."},
             std::pair{"lbl_foltype", "Please specify type."},
             std::pair{"cmd_Cancel", "< &Back"},
             std::pair{"cmd_Calc", "&Calculate"},
             std::pair{"cmd_Done", "&Next >"},
             std::pair{"cmd_Print", "&Print Form"},
         })
        EXPECT_EQ(user.Text(name), caption) << name;
    EXPECT_EQ(user.Find<QWidget>("lbl_chosen").parentWidget(), user.Find<QWidget>("lbl_kind").parentWidget());
}

TEST_F(Stress_Screen, moduli_lengths_and_the_weight_have_their_units)
{
    struct Units {
        int system;
        const char *stress, *length, *force;
    };
    for (const Units& u : {Units{1, "psi", "in", "lb"}, Units{2, "psf", "ft", "lb"}, Units{3, "Pa", "m", "N"},
                           Units{4, "MPa", "cm", "N"}, Units{5, "MPa", "mm", "N"}}) {
        Start_in(u.system);
        frm_Stress screen;
        for (const auto& [name, unit] :
             {std::pair{"unit_txt_Cam_E", u.stress}, std::pair{"unit_txt_Fol_E", u.stress},
              std::pair{"unit_txt_Length", u.length}, std::pair{"unit_txt_Crownrad", u.length},
              std::pair{"unit_txt_Weight", u.force}, std::pair{"unit_txt_Cam_V", ""}, std::pair{"unit_txt_Fol_v", ""}})
            EXPECT_EQ(screen.Control<QLabel>(name).text().toStdString(), unit) << name << " in system " << u.system;
    }
}

TEST_F(Stress_Screen, the_plots_show_force_curvature_and_both_stresses)
{
    for (const bool vibration : {false, true}) {
        f_.Modelflag = vibration;
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(33, i) = 300.0 + i;
        frm_Stress screen;
        const Driver user(screen);
        const std::array rows{vibration ? 33 : 7, 6, 42, 43};
        for (int k = 0; k < 4; ++k) {
            ASSERT_EQ(Curves(user, k).size(), 1U) << k;
            EXPECT_EQ(Curves(user, k)[0].y, Row(rows[static_cast<std::size_t>(k)])) << k;
            EXPECT_EQ(Curves(user, k)[0].x, Row(var::Angle));
            const auto [least, most] = std::ranges::minmax(Curves(user, k)[0].y);
            const int decimals = Plot_Decimals(std::max(most, -least));
            EXPECT_EQ(user.Text(Element("lbl_Min", k)), Trim(FNRoundStr(design, least, decimals)));
            EXPECT_EQ(user.Text(Element("lbl_Max", k)), Trim(FNRoundStr(design, most, decimals)));
            EXPECT_EQ(user.Text(Element("lbl_Peak", k)), Trim(FNRoundStr(design, most - least, decimals)));
        }
    }
}

TEST_F(Stress_Screen, another_material_can_be_typed_and_steel_comes_back)
{
    struct Member {
        const char *option, *modulus, *ratio;
        int index;
    };
    for (const auto& [option, modulus, ratio, index] :
         {Member{"opt_Cam", "txt_Cam_E", "txt_Cam_V", 1}, Member{"opt_Follower", "txt_Fol_E", "txt_Fol_v", 2}}) {
        Build("Double Dwell");
        frm_Stress screen;
        const Driver user(screen);
        const double steel = Data(42, 100);
        f_.Stressflag = false;
        user.Press(Element(option, 1));
        EXPECT_TRUE(f_.Stressflag);  // either choice recalculates
        EXPECT_FALSE(Read_Only(user, modulus) || Read_Only(user, ratio));
        EXPECT_EQ(user.Text(modulus), "206.8E3");
        user.Fill(modulus, "70000");
        EXPECT_GT(Data(42, 100), steel);  // softer: less stress
        user.Fill(ratio, "0.33");
        EXPECT_EQ(d_.Youngs_modulus(index), 70000.0);
        user.Press(Element(option, 0));
        EXPECT_EQ(user.Text(modulus), "206.8E3");
        EXPECT_EQ(user.Text(ratio), "0.28");
        EXPECT_TRUE(Read_Only(user, modulus) && Read_Only(user, ratio));
        EXPECT_EQ(d_.Youngs_modulus(index), 206800.0);
        EXPECT_NEAR(Data(42, 100), steel, -steel * 1e-6);
    }
}

TEST_F(Stress_Screen, steel_stays_steel_when_the_screen_opens_again)
{
    for (int k = 0; k < 2; ++k) {
        frm_Stress screen;
        const Driver user(screen);
        EXPECT_TRUE(user.Checked(Element("opt_Cam", 0)) && user.Checked(Element("opt_Follower", 0)));
        EXPECT_EQ(user.Text("txt_Cam_E"), "206.8E3");
    }
    Change_Units(design, 1);
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Cam", 0)) && user.Checked(Element("opt_Follower", 0)));
    EXPECT_EQ(user.Text("txt_Cam_E"), "3E7");
    EXPECT_EQ(user.Text("txt_Fol_E"), "3E7");
    EXPECT_EQ(d_.Youngs_modulus(1), 3e7);
    EXPECT_EQ(d_.Youngs_modulus(2), 3e7);
}

TEST_F(Stress_Screen, another_material_stays_when_the_screen_opens_again)
{
    d_.Youngs_modulus(1) = 206800.0;
    d_.Poissons_ratio(1) = 0.3;
    d_.Youngs_modulus(2) = 70000.0;
    d_.Poissons_ratio(2) = 0.28;
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Cam", 1)) && user.Checked(Element("opt_Follower", 1)));
    EXPECT_EQ(user.Text("txt_Cam_E"), "206800");
    EXPECT_EQ(user.Text("txt_Cam_V"), "0.3");
    EXPECT_EQ(user.Text("txt_Fol_E"), "70000");
    EXPECT_FALSE(Read_Only(user, "txt_Cam_E") || Read_Only(user, "txt_Fol_v"));
}

TEST_F(Stress_Screen, centimetres_have_no_steel_and_ask_for_a_modulus)
{
    Start_in(4);
    script_.Expect(positive);
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Cam", 0)));
    EXPECT_EQ(user.Text("txt_Cam_E"), "");
    EXPECT_EQ(user.Text("txt_Cam_V"), "0.28");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(Read_Only(user, "txt_Cam_E"));
    EXPECT_TRUE(Has_Focus(user, "txt_Cam_E"));
    for (int k = 0; k < 4; ++k)
        EXPECT_TRUE(Curves(user, k).empty());
    script_.Expect(positive);  // the follower's is still to come
    user.Fill("txt_Cam_E", "206800");
    user.Fill("txt_Fol_E", "206800");
    EXPECT_TRUE(f_.Stressflag && user.Enabled("cmd_Done"));
    frm_Stress again;
    const Driver other(again);
    EXPECT_EQ(other.Text("txt_Cam_E"), "206800");  // typed in its own unit: not taken away
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
    EXPECT_EQ(d_.Roller_type, 2);
    EXPECT_NEAR(Data(43, 9) / Data(42, 9), -0.34, 1e-5);
    user.Press(Element("opt_Fol_type", 0));
    EXPECT_EQ(user.Text("lbl_foltype"),
              "Please specify contact length as the smaller of cam face width or roller length.");
    EXPECT_TRUE(user.Enabled("txt_Length"));
    EXPECT_FALSE(user.Enabled("txt_Crownrad"));
    EXPECT_EQ(d_.Roller_type, 1);
    EXPECT_NEAR(Data(43, 9) / Data(42, 9), -0.304, 1e-5);
    EXPECT_EQ(Curves(user, 3)[0].y, Row(43));
}

TEST_F(Stress_Screen, a_type_whose_size_is_refused_leaves_the_plots_empty)
{
    d_.Crown_radius = 0.0;
    frm_Stress screen;
    const Driver user(screen);
    ASSERT_EQ(Curves(user, 0).size(), 1U);
    const std::vector<double> before = Row(42);
    script_.Expect(positive);
    user.Press(Element("opt_Fol_type", 1));
    for (int k = 0; k < 4; ++k)
        EXPECT_TRUE(Curves(user, k).empty() && user.Text(Element("lbl_Max", k)).empty()) << k;
    EXPECT_TRUE(Has_Focus(user, "txt_Crownrad"));
    EXPECT_EQ(Row(42), before);
    user.Fill("txt_Crownrad", "800");
    for (int k = 0; k < 4; ++k)
        EXPECT_EQ(Curves(user, k).size(), 1U) << k;
}

TEST_F(Stress_Screen, a_flat_face_has_its_length_alone)
{
    Build("Flat Follower");
    frm_Stress screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_follower"), "Flat-Faced");
    EXPECT_EQ(user.Text("lbl_foltype"), "Contact length is the smaller of cam face width or roller length.");
    for (const char* name :
         {"opt_Fol_type(0)", "opt_Fol_type(1)", "txt_Crownrad", "lbl_txt_Crownrad", "unit_txt_Crownrad"})
        EXPECT_FALSE(user.Visible(name)) << name;
    EXPECT_TRUE(user.Visible("txt_Length") && user.Enabled("txt_Length"));
}

/// A field that can be typed into, what it stores, and what it refuses.
struct Field_Case {
    const char* field;
    const char* accepted;
    double value;
    const char* refused;
    const Expected_Box& box;
    const char* shown;  // after the refusal
    double (*stored)();
};

const std::vector<Field_Case>& Field_Cases()
{
    static const std::vector<Field_Case> cases{
        {"txt_Cam_E", "100000", 100000, "-5", positive, "0.01",
         [] { return double{design.dynamics.Youngs_modulus(1)}; }},
        {"txt_Fol_E", "100000", 100000, "-5", positive, "0.01",
         [] { return double{design.dynamics.Youngs_modulus(2)}; }},
        {"txt_Fol_v", "0.25", 0.25, "-5", positive, "0.01", [] { return double{design.dynamics.Poissons_ratio(2)}; }},
        // After each calculation the cam has the follower's ratio: meant.
        {"txt_Cam_V", "0.375", 0.25, "-5", positive, "0.3", [] { return double{design.dynamics.Poissons_ratio(1)}; }},
        {"txt_Length", "30", 30, "0", radius, "30", [] { return double{design.dynamics.Roller_length}; }},
        {"txt_Crownrad", "600", 600, "-1", radius, "600", [] { return double{design.dynamics.Crown_radius}; }},
    };
    return cases;
}

class Stress_Entries : public Stress_Screen {
protected:
    /// Opens all fields.
    static void Choose_Other(const Driver& user, const char* field)
    {
        user.Press(Element("opt_Cam", 1));
        user.Press(Element("opt_Follower", 1));
        if (std::string_view(field) == "txt_Crownrad")
            user.Press(Element("opt_Fol_type", 1));
        else
            user.Press(Element("opt_Fol_type", 0));
    }
    /// A typed text is told of; what was stored stays, and nothing is calculated.
    void Expect_Nothing_Stored(const Driver& user, const Field_Case& c, const char* typed, const Expected_Box& box,
                               const char* shown)
    {
        Choose_Other(user, c.field);
        user.Fill(c.field, c.accepted);
        const double before = c.stored();
        f_.Stressflag = false;
        script_.Expect(box);
        user.Fill(c.field, typed);
        EXPECT_EQ(user.Text(c.field), shown) << c.field;
        EXPECT_EQ(c.stored(), before) << c.field;
        EXPECT_FALSE(f_.Stressflag) << c.field;
    }
};

TEST_F(Stress_Entries, accepted_ones_are_stored_and_recalculate)
{
    frm_Stress screen;
    const Driver user(screen);
    for (const Field_Case& c : Field_Cases()) {
        Choose_Other(user, c.field);
        f_.Stressflag = false;
        user.Type(c.field, c.accepted);
        user.Enter(c.field);
        EXPECT_EQ(c.stored(), c.value) << c.field;
        EXPECT_EQ(user.Text(c.field), c.accepted);
        EXPECT_TRUE(f_.Stressflag) << c.field;
        f_.Stressflag = false;
        user.Leave(c.field);  // unchanged since
        EXPECT_FALSE(f_.Stressflag) << c.field;
    }
}

TEST_F(Stress_Entries, refused_ones_show_their_message_and_text_and_store_nothing)
{
    frm_Stress screen;
    const Driver user(screen);
    for (const Field_Case& c : Field_Cases()) {
        Expect_Nothing_Stored(user, c, c.refused, c.box, c.shown);
        user.Fill(c.field, c.accepted);
    }
}

TEST_F(Stress_Entries, a_number_too_large_is_told_and_the_field_shows_its_stored_text_again)
{
    frm_Stress screen;
    const Driver user(screen);
    for (const Field_Case& c : Field_Cases())
        Expect_Nothing_Stored(user, c, "1E40", Error_Box(6, "Overflow", std::string("frm_Stress.") + c.field),
                              c.accepted);
}

TEST_F(Stress_Entries, the_weight_counts_as_typed_and_only_a_number_too_large_is_told)
{
    frm_Stress screen;
    const Driver user(screen);
    const double without = Data(42, 300);
    user.Fill("txt_Weight", "50");
    EXPECT_EQ(d_.Follower_Weight, 50.0);
    EXPECT_LT(Data(42, 300), without);
    const double with = Data(42, 300);
    script_.Expect(Error_Box(6, "Overflow", "frm_Stress.txt_Weight"));
    user.Fill("txt_Weight", "1E40");
    EXPECT_EQ(user.Text("txt_Weight"), "50");
    EXPECT_EQ(d_.Follower_Weight, 50.0);
    EXPECT_EQ(Data(42, 300), with);
    user.Fill("txt_Weight", "abc");
    EXPECT_EQ(d_.Follower_Weight, 0.0);
    EXPECT_EQ(Data(42, 300), without);
}

TEST_F(Stress_Entries, a_refused_calculation_returns_to_its_field_and_leaves_the_stresses)
{
    for (const char* field : {"txt_Cam_E", "txt_Cam_V", "txt_Fol_E", "txt_Fol_v"}) {
        Build("Double Dwell");
        frm_Stress screen;
        const Driver user(screen);
        Choose_Other(user, field);
        const std::vector<double> before = Row(42);
        script_.Expect(positive);
        user.Fill(field, "0");  // passes its entry, which refuses negative values alone
        EXPECT_EQ(user.Text(field), "0");
        EXPECT_TRUE(Has_Focus(user, field)) << field;
        f_.Stressflag = false;
        script_.Expect(positive);
        user.Press("cmd_Calc");
        EXPECT_TRUE(Has_Focus(user, field)) << field;
        EXPECT_FALSE(f_.Stressflag);
        EXPECT_EQ(Row(42), before);
        EXPECT_EQ(Curves(user, 2)[0].y, before);
    }
}

TEST_F(Stress_Screen, the_external_force_is_offered_where_there_is_one)
{
    Expect_External_Force_Offered<frm_Stress>();
}

TEST_F(Stress_Screen, the_tick_adds_the_external_force_and_takes_it_away)
{
    Make_External_Force(300.0);
    frm_Stress screen;
    const Driver user(screen);
    const double without = Data(42, 300);
    user.Press("chk_Extforce");
    EXPECT_TRUE(d_.Ext_Force_Add);
    // In the dwell under 100 N of preload; the stress of a line contact goes with the root of the force.
    EXPECT_NEAR(Data(42, 300), 2.0 * without, -without * 1e-4);
    EXPECT_EQ(Curves(user, 2)[0].y, Row(42));
    user.Press("chk_Extforce");
    EXPECT_FALSE(d_.Ext_Force_Add);
    EXPECT_EQ(Data(42, 300), without);
}

TEST_F(Stress_Screen, next_and_back_leave_it)
{
    for (const auto& [button, result] :
         {std::pair{"cmd_Done", QDialog::Accepted}, std::pair{"cmd_Cancel", QDialog::Rejected}}) {
        frm_Stress screen;
        const Driver user(screen);
        user.Press(button);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(screen.result(), result) << button;
    }
}

TEST_F(Stress_Screen, closing_the_window_is_done_with_stresses_and_back_without)
{
    for (const bool stresses : {true, false}) {
        frm_Stress screen;
        const Driver user(screen);
        f_.Stressflag = stresses;
        screen.close();
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(screen.result(), stresses ? QDialog::Accepted : QDialog::Rejected);
    }
}

TEST_F(Stress_Screen, closing_the_window_takes_the_entry_that_is_being_typed)
{
    frm_Stress screen;
    const Driver user(screen);
    f_.Stressflag = false;
    user.Type("txt_Length", "40");
    screen.close();  // the entry calculates before the way out is chosen
    EXPECT_EQ(d_.Roller_length, 40.0);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Stress_Screen, its_mark_and_charts_have_limits_and_true_stresses)
{
    Limits limits;
    limits[Limit::Sigma] = 50.0;  // N/mm^2
    screens::Set_Desk_Limits(limits);
    frm_Stress screen;
    EXPECT_FALSE(screen.Control<QAbstractButton>("cmd_Mark").isEnabled());  // before the first calculation
    const Driver user(screen);
    ASSERT_TRUE(f_.Stressflag);
    EXPECT_TRUE(user.Enabled("cmd_Mark"));
    const Finding* const worst = screens::Desk_Check().Worst_of(Finding_Place::stress);
    ASSERT_NE(worst, nullptr);
    EXPECT_EQ(worst->code, "Sigma");
    EXPECT_TRUE(user.Text("cmd_Mark").starts_with("\u26A0 Beyond a limit: Contact stress")) << user.Text("cmd_Mark");
    const auto& sigma = user.Find<paint::Chart>(Element("pct_Plot", 2));
    ASSERT_EQ(sigma.Levels().size(), 1U);
    EXPECT_EQ(sigma.Levels()[0].value, -50.0);
    for (int k = 0; k < 4; ++k)
        EXPECT_EQ(Curves(user, k).size(), 1U) << k;
    user.Press("chk_True");
    for (int k = 0; k < 4; ++k) {
        ASSERT_EQ(Curves(user, k).size(), 2U) << k;
        EXPECT_TRUE(Curves(user, k)[1].beside) << k;
    }
    EXPECT_NEAR(Curves(user, 2)[1].y[135] / Curves(user, 2)[0].y[135], 1.0, 0.01);  // in the dwell both are right
    user.Fill("txt_Length", "12");                                                  // a new calculation brings its own
    EXPECT_EQ(Curves(user, 2).size(), 2U);
    EXPECT_NEAR(Curves(user, 2)[1].y[135] / Curves(user, 2)[0].y[135], 1.0, 0.01);
}

}  // namespace
}  // namespace lobemax
