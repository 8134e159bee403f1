// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Model.h"

#include <QCheckBox>
#include <QProgressBar>
#include <QTimer>
#include <algorithm>

#include "core/ladder.h"
#include "dynamics/ode_solver.h"
#include "forms/departure_notes.h"
#include "paint/chart.h"
#include "screens/frm_ModelType.h"
#include "screens/frm_SizeCam.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Model;
using screens::frm_ModelType;
using testing::Driver;
using testing::Expected_Box;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};

class Model_Screens : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
        design.motion.Shaft_speed = 15.0;
        Choose_Model_Type(design, 1);
    }
    /// Answers whatever a run has to tell, as transients or jumps of the follower.
    void Answer_All()
    {
        Host host = Installed_Host();
        host.messenger = [this](const Message& box) {
            told_.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        Install_Host(std::move(host));
    }
    bool Told(const std::string& words) const
    {
        return std::ranges::any_of(told_,
                                   [&](const std::string& text) { return text.find(words) != std::string::npos; });
    }
    static std::size_t Points(const Driver& user, int plot)
    {
        const auto& curves = user.Find<paint::Chart>(Element("pct_Plot", plot)).Curves();
        return curves.empty() ? 0 : curves[0].x.size();
    }
    std::vector<std::string> told_;
    Flags_Group& f_ = design.flags;
};

TEST_F(Model_Screens, the_four_choices_have_their_titles_and_help_and_next_takes_one)
{
    const char* const titles[]{
        "Two-Mass SDOF Model - Spring at end effector", "One-Mass SDOF Model - Spring at end effector",
        "One-Mass SDOF Model - Spring at cam follower", "Two-Mass SDOF Model - Spring at cam follower"};
    const int models[]{5, 2, 3, 4};
    Answer_All();
    for (int k = 0; k < 4; ++k) {
        frm_ModelType screen;
        const Driver user(screen);
        EXPECT_EQ(user.Find<QRadioButton>(Element("opt_PickPlot", k)).text(), titles[k]);
        user.Press(Element("cmd_Help", k));
        EXPECT_TRUE(Told("This model is for systems that have the joint-closure 'spring'"));
        user.Press(Element("opt_PickPlot", k));
        int checked = 0;
        for (int other = 0; other < 4; ++other)
            checked += user.Find<QRadioButton>(Element("opt_PickPlot", other)).isChecked();
        EXPECT_EQ(checked, 1) << "one of the four frames";
        user.Press("cmd_Done");
        EXPECT_EQ(screen.result(), QDialog::Accepted);
        EXPECT_EQ(design.dynamics.Model_Type, models[k]);
    }
}

TEST_F(Model_Screens, shows_the_fields_that_the_model_has)
{
    const struct {
        int choice;
        bool second_mass;
    } cases[]{{0, true}, {1, false}, {2, false}, {3, true}};
    for (const auto& c : cases) {
        Choose_Model_Type(design, c.choice);
        frm_Model screen;
        const Driver user(screen);
        EXPECT_TRUE(user.Visible(Element("txt_Mass", 0)));
        EXPECT_EQ(user.Visible(Element("txt_Mass", 1)), c.second_mass);
        for (const QString& field : {Element("txt_Spring", 1), Element("txt_Zeta", 1), QString("txt_Preload")})
            EXPECT_TRUE(user.Visible(field)) << field.toStdString();
    }
    design.cam.Closure = "Form";
    frm_Model screen;
    const Driver user(screen);
    EXPECT_EQ(design.dynamics.Model_Type, 1);
    for (const QString& field :
         {Element("txt_Mass", 1), Element("txt_Spring", 1), Element("txt_Zeta", 1), QString("txt_Preload")})
        EXPECT_FALSE(user.Visible(field)) << field.toStdString();
}

TEST_F(Model_Screens, before_a_calculation_nothing_follows_and_looking_changes_nothing)
{
    const double spring = design.dynamics.Kspring(1);
    frm_Model screen;
    const Driver user(screen);
    for (const char* const button : {"cmd_Done", "cmd_Replot", "chk_Polydyne"})
        EXPECT_FALSE(user.Find<QAbstractButton>(button).isEnabled()) << button;
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    EXPECT_FALSE(user.Find<QAbstractButton>("opt_Solver(1)").isEnabled());
    EXPECT_EQ(user.Find<QAbstractButton>("opt_Solver(1)").toolTip(),
              "No Gear integrator is part of this program: use Runge Kutta");
    EXPECT_EQ(user.Text("txt_eps"), "0.001");
    EXPECT_EQ(user.Text("txt_start_step"), "0.0001");
    EXPECT_EQ(user.Text("txt_t_end"), "0.838");  // two turns at 15 rad/s
    user.Press("cmd_Cancel");
    EXPECT_EQ(screen.result(), QDialog::Rejected);
    EXPECT_EQ(design.dynamics.Kspring(1), spring);
}

TEST_F(Model_Screens, calculate_fills_the_plots_and_opens_what_follows)
{
    Answer_All();
    frm_Model screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    ASSERT_TRUE(f_.Modelflag);
    for (const char* const button : {"cmd_Done", "cmd_Replot", "chk_Polydyne"})
        EXPECT_TRUE(user.Find<QAbstractButton>(button).isEnabled()) << button;
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(Points(user, k), static_cast<std::size_t>(design.dynamics.Ode_Count)) << k;
        for (const char* const label : {"lbl_Min", "lbl_Max", "lbl_Peak"})
            EXPECT_NE(user.Text(Element(label, k)), "") << k;
    }
    EXPECT_EQ(user.Text("lbl_Kount"), std::to_string(design.dynamics.Ode_Count));
    user.Press("opt_Color(1)");
    user.Press("chk_Vertline");
    EXPECT_GT(Points(user, 0), 0U);

    // An accepted change takes plots and Next away; what is typed is stored.
    user.Fill(Element("txt_Spring", 0), "500000");
    EXPECT_EQ(design.dynamics.Kspring(1), 500000.0);
    EXPECT_EQ(Points(user, 0), 0U);
    EXPECT_EQ(user.Text(Element("lbl_Max", 0)), "");
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    user.Press("cmd_Calc");
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Model_Screens, refused_entries_have_their_messages_and_texts)
{
    frm_Model screen;
    const Driver user(screen);
    const struct {
        QString field;
        const char* typed;
        Expected_Box box;
        const char* shown;
    } cases[]{
        {Element("txt_Mass", 0), "-1", positive, "0.01"},
        {Element("txt_Spring", 0), "0", positive, "1"},
        {Element("txt_Zeta", 0),
         "1.5",
         {"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation},
         "0.05"},
        {"txt_Preload", "-3", {"Preload must be > 0.  Please redo", Buttons::OK, Symbol::exclamation}, "10"},
        {"txt_x_start", "-1", positive, "0"},
        {"txt_t_start", "-1", positive, "0"},
        {"txt_max_steps", "-1", positive, "0"},
        {"txt_t_end",
         "0.5",
         {"You need to calculate at least two cam cycles to let transients die out", Buttons::OK, Symbol::exclamation},
         "0.838"},
        {"txt_eps", "-1", positive, "0.001"},
        {"txt_start_step", "-1", positive, "0.0001"}};
    for (const auto& c : cases) {
        script_.Expect(c.box);
        user.Fill(c.field, c.typed);
        EXPECT_EQ(user.Text(c.field), c.shown) << c.field.toStdString();
    }
}

TEST_F(Model_Screens, a_run_shows_its_progress_and_stop_ends_it_as_cancel_does)
{
    Answer_All();
    frm_Model screen;
    const Driver user(screen);
    user.Fill("txt_t_end", "200");  // long enough to be stopped
    user.Fill("txt_max_steps", "900000");
    auto* const undo = screen.findChild<QAction*>("mnu_Undo");
    ASSERT_NE(undo, nullptr);
    bool seen = false;
    bool undo_open = true;
    QTimer::singleShot(0, &screen, [&] {
        undo_open = undo->isEnabled();
        seen =
            user.Visible("cmd_Stop") && user.Visible("pgs_Run") && !user.Find<QAbstractButton>("cmd_Calc").isEnabled();
        user.Press("cmd_Stop");
    });
    user.Press("cmd_Calc");
    EXPECT_TRUE(seen);
    EXPECT_FALSE(undo_open) << "another design under the calculation would be its end";
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_TRUE(Told("The calculation has been cancelled at your request."));
    EXPECT_FALSE(f_.Modelflag);
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    EXPECT_TRUE(user.Find<QAbstractButton>("cmd_Calc").isEnabled());
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
}

/// Steps far longer than the natural period let the integration run away.
TEST_F(Model_Screens, a_fault_in_mid_run_is_told_and_leaves_the_screen_open)
{
    Answer_All();
    frm_Model screen;
    const Driver user(screen);
    user.Fill("txt_eps", "1E9");
    user.Fill("txt_start_step", "0.5");
    user.Fill("txt_t_end", "500");
    user.Press("cmd_Calc");
    EXPECT_TRUE(Told("Error 6   (Overflow)  has occurred in Solve_Model")) << ::testing::PrintToString(told_);
    EXPECT_FALSE(f_.Modelflag);
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    EXPECT_FALSE(user.Visible("pgs_Run"));
    for (const char* const open : {"cmd_Calc", "cmd_Cancel", "cmd_Print"})
        EXPECT_TRUE(user.Find<QAbstractButton>(open).isEnabled()) << open;
    EXPECT_TRUE(user.Find<QWidget>("fra_Solver").isEnabled());
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    EXPECT_FALSE(user.Find<QAbstractButton>("chk_Polydyne").isEnabled());
}

TEST_F(Model_Screens, a_polydyne_cam_is_made_given_up_and_asked_about)
{
    Answer_All();
    frm_Model screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    ASSERT_TRUE(f_.Modelflag);
    user.Press("chk_Polydyne");
    EXPECT_TRUE(f_.Polydyne_Calc);
    EXPECT_TRUE(user.Find<QCheckBox>("chk_Polydyne").isChecked());
    EXPECT_TRUE(Told("continuous through the 4th derivative"));
    user.Press("chk_Polydyne");
    EXPECT_FALSE(f_.Polydyne_Calc);
    user.Press("chk_Polydyne");
    ASSERT_TRUE(f_.Polydyne_Calc);
    user.Press("cmd_Cancel");  // the question's usual answer is Yes
    EXPECT_TRUE(Told("Do you wish to abandon the Polydyne calculation at this point?"));
    EXPECT_FALSE(f_.Polydyne_Calc);
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

/// Home's button leads through both screens; Back from the model comes back to the choice, Back from there leaves
/// everything as it was.
TEST_F(Model_Screens, what_mechanics_has_stands_beside_the_figures)
{
    Answer_All();
    Choose_Model_Type(design, 2);
    frm_Model screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Visible("lbl_Notes"));
    user.Press("cmd_Calc");
    EXPECT_EQ(user.Text("lbl_Notes"), As_Lines(Departure_Notes(design)));
    EXPECT_TRUE(user.Text("lbl_Notes").starts_with("Force-Dyn is off mechanics by up to "));
    user.Press("chk_Polydyne");
    EXPECT_NE(user.Text("lbl_Notes").find("Polydn S takes 36 for the square of two pi, 39.478"), std::string::npos);
    EXPECT_TRUE(user.Visible("lbl_Notes"));
    Model_Done(design);
    {
        screens::frm_SizeCam size;
        const Driver sizing(size);
        EXPECT_EQ(sizing.Text("lbl_Notes"), As_Lines(Notes_of_Polydyne(design)));
        EXPECT_NE(sizing.Text("lbl_Notes").find("With them Phi goes from "), std::string::npos);
        EXPECT_TRUE(sizing.Visible("lbl_Notes"));
    }
}

TEST_F(Model_Screens, gray_plots_and_grid_stay_over_a_calculation)
{
    Answer_All();
    frm_Model screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked("opt_Color(0)"));
    user.Press("opt_Color(1)");
    user.Press("chk_Vertline");
    for (int k = 0; k < 2; ++k) {
        user.Press("cmd_Calc");
        EXPECT_TRUE(user.Checked("opt_Color(1)"));
        EXPECT_FALSE(user.Checked("opt_Color(0)"));
        EXPECT_TRUE(user.Checked("opt_Solver(0)"));
        EXPECT_TRUE(user.Checked("chk_Vertline"));
        const auto& curves = user.Find<paint::Chart>(Element("pct_Plot", 1)).Curves();
        ASSERT_EQ(curves.size(), 1U);
        EXPECT_TRUE(curves[0].colour.isValid()) << "not one of the palette of curves";
    }
    user.Press("opt_Color(0)");
    EXPECT_FALSE(user.Find<paint::Chart>(Element("pct_Plot", 1)).Curves()[0].colour.isValid());
}

TEST_F(Model_Screens, an_edit_takes_the_notes_away)
{
    Answer_All();
    Choose_Model_Type(design, 2);
    frm_Model screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Visible("lbl_Notes"));
    user.Fill("txt_Mass(0)", "2.5");
    EXPECT_FALSE(user.Visible("lbl_Notes"));
}

TEST_F(Model_Screens, the_way_through_the_screens)
{
    Answer_All();
    std::vector<QString> seen;
    int round = 0;
    const auto before = screens::Play_Modals([&](QDialog& dialog) {
        seen.push_back(dialog.objectName());
        const Driver user(dialog);
        if (dialog.objectName() == "frm_ModelType") {
            if (++round == 2) {
                user.Press("cmd_Cancel");
                return;
            }
            user.Press("opt_PickPlot(3)");
            user.Press("cmd_Done");
        } else {
            user.Press("cmd_Cancel");
        }
    });
    screens::Run_Vibration_Screens(nullptr);
    EXPECT_EQ(seen, (std::vector<QString>{"frm_ModelType", "frm_Model", "frm_ModelType"}));
    EXPECT_EQ(design.dynamics.Model_Type, 2) << "Back gives back what was";

    seen.clear();
    screens::Play_Modals([&](QDialog& dialog) {
        seen.push_back(dialog.objectName());
        const Driver user(dialog);
        if (dialog.objectName() == "frm_Model")
            user.Press("cmd_Calc");
        user.Press("cmd_Done");
    });
    screens::Run_Vibration_Screens(nullptr);
    EXPECT_EQ(seen, (std::vector<QString>{"frm_ModelType", "frm_Model"}));
    EXPECT_TRUE(f_.Modelflag);

    design.cam.Closure = "Form";
    seen.clear();
    screens::Run_Vibration_Screens(nullptr);
    EXPECT_EQ(seen, (std::vector<QString>{"frm_Model"}));
    EXPECT_EQ(design.dynamics.Model_Type, 1);
    screens::Play_Modals(before);
}

TEST_F(Model_Screens, a_cam_that_starts_in_a_dwell_gets_the_hint_at_the_opening)
{
    Build("Four Dwell");
    design.motion.Rise_Fall_Dwell(1) = "D";
    script_.Expect({Start_in_Dwell_Hint(), Buttons::OK, Symbol::exclamation});
    const frm_Model screen;
}

}  // namespace
}  // namespace lobemax
