// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_CompCam.h"

#include <QAction>
#include <QTableWidget>
#include <QTimer>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "core/ladder.h"
#include "dynamics/torque_compensation.h"
#include "paint/chart.h"
#include "screens/frm_Dynamics.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_CompCam;
using screens::frm_Dynamics;
using testing::Driver;
using testing::Expected_Box;

class Compensation_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    /// Answers whatever a run has to tell with its usual button, or with the one that a test prefers.
    void Answer_All(std::optional<std::string> path = std::nullopt)
    {
        Host host = Installed_Host();
        host.messenger = [this](const Message& box) {
            told_ += box.title + box.text + "\n";
            return cancel_ && Offers(box.buttons, Answer::Cancel) ? Answer::Cancel : Usual_Answer(box.buttons);
        };
        host.save_dialog = [this, path](const File_Dialog& dialog) {
            asked_ = dialog;
            return path;
        };
        Install_Host(std::move(host));
    }
    bool Told(const std::string& words) const { return told_.find(words) != std::string::npos; }

    std::string told_;
    bool cancel_ = false;
    File_Dialog asked_;
    Flags_Group& f_ = design.flags;
};

TEST_F(Compensation_Screen, calculate_fills_plots_lists_and_figures_and_opens_what_follows)
{
    Answer_All();
    frm_CompCam screen;
    const Driver user(screen);
    for (const char* const button : {"cmd_Done", "cmd_Outputfile", "cmd_Replot"})
        EXPECT_FALSE(user.Find<QAbstractButton>(button).isEnabled()) << button;
    EXPECT_EQ(user.Text("txt_eps"), "0.001");
    user.Press("cmd_Calc");
    for (const char* const button : {"cmd_Done", "cmd_Outputfile", "cmd_Replot"})
        EXPECT_TRUE(user.Find<QAbstractButton>(button).isEnabled()) << button << told_;
    for (int k = 0; k < 4; ++k)
        EXPECT_EQ(user.Find<paint::Chart>(Element("grf_Plot", k)).Curves().size(), k == 3 ? 3U : 1U);
    EXPECT_EQ(user.Find<QTableWidget>("ListView1").rowCount(), 361);
    EXPECT_EQ(user.Find<QTableWidget>("ListView1").columnCount(), 10);
    EXPECT_EQ(user.Find<QTableWidget>("ListView2").columnCount(), 8);
    EXPECT_EQ(user.Find<QTableWidget>("ListView3").columnCount(), 10);
    EXPECT_EQ(user.Find<QTableWidget>("ListView3").verticalHeaderItem(0)->text(), "Max");
    EXPECT_GT(std::stoi(user.Text("lbl_percent")), 50) << user.Text("lbl_percent");
    EXPECT_NE(design.results.CalcData(var::Comp_Torque, 30), 0.0);
    EXPECT_FALSE(f_.CompCam_Calc) << "the primary stays in memory";

    user.Fill("txt_Mass", "1.5");  // an accepted change takes the result away
    EXPECT_EQ(design.dynamics.Comp_Mass, 1.5);
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    EXPECT_EQ(user.Find<QTableWidget>("ListView1").rowCount(), 0);
    EXPECT_EQ(user.Text("lbl_percent"), "");
    user.Press("cmd_Reset");
    EXPECT_EQ(design.dynamics.Comp_Mass, design.dynamics.Mass / 2.0);
}

TEST_F(Compensation_Screen, entries_that_are_not_positive_are_refused)
{
    const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
    frm_CompCam screen;
    const Driver user(screen);
    for (const char* const field :
         {"txt_Mass", "txt_Spring", "txt_Preload", "txt_eps", "txt_max_steps", "txt_start_step"}) {
        const std::string before = user.Text(field);
        script_.Expect(positive);
        user.Fill(field, "-2");
        EXPECT_EQ(user.Text(field), before) << field;
    }
    script_.Expect(
        {"Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely.\n"
         "Continue anyway?",
         Buttons::Yes_No, Symbol::exclamation, Answer::No});
    user.Fill("txt_eps", "0.00001");
    EXPECT_EQ(user.Text("txt_eps"), "0.001");
}

TEST_F(Compensation_Screen, the_output_file_and_the_instructions)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("comp.out").toStdString();
    Answer_All(path);
    frm_CompCam screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    user.Press("cmd_Outputfile");
    EXPECT_EQ(asked_.title, "Output the Data");
    EXPECT_EQ(asked_.filter, "(*.out)|*.out");
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_TRUE(text.str().starts_with("start step"));
    auto* const instructions = screen.findChild<QAction*>("mnu_Instructions");
    ASSERT_NE(instructions, nullptr);
    instructions->trigger();
    EXPECT_TRUE(
        Told("Instructions for Creating a Torque Compensating CamA torque compensation cam generates a torque "
             "opposite to that of the primary cam "));
}

TEST_F(Compensation_Screen, a_run_shows_its_progress_and_stop_ends_it)
{
    Answer_All();
    frm_CompCam screen;
    const Driver user(screen);
    user.Press("cmd_Calc");
    ASSERT_TRUE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    const auto torque = design.results.CalcData;
    user.Fill("txt_eps", "0.0001");
    auto* const undo = screen.findChild<QAction*>("mnu_Undo");
    ASSERT_NE(undo, nullptr);
    bool seen = false;
    bool undo_open = true;
    std::string motion;
    QTimer::singleShot(0, &screen, [&] {  // at the first look of the run
        undo_open = undo->isEnabled();
        seen = user.Visible("cmd_Stop") && user.Visible("pgs_step") && user.Visible("Lbl_Step");
        for (const char* const closed : {"cmd_Calc", "cmd_Cancel", "cmd_Reset", "cmd_Done", "cmd_Outputfile"})
            seen = seen && !user.Find<QAbstractButton>(closed).isEnabled();
        seen = seen && !user.Find<QWidget>("txt_Mass").isEnabled();
        motion = user.Text("Lbl_Step");
        user.Press("cmd_Stop");
    });
    user.Press("cmd_Calc");
    EXPECT_TRUE(seen);
    EXPECT_FALSE(undo_open);
    EXPECT_EQ(motion, "fall") << "the primary's rise takes torque, which the balancing follower gives";
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    EXPECT_FALSE(user.Visible("pgs_step"));
    EXPECT_TRUE(user.Find<QAbstractButton>("cmd_Calc").isEnabled());
    EXPECT_TRUE(user.Find<QWidget>("txt_Mass").isEnabled());
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    EXPECT_EQ(user.Find<QTableWidget>("ListView1").rowCount(), 0);
    EXPECT_EQ(user.Text("lbl_percent"), "");
    for (int i = 0; i <= 360; ++i)
        ASSERT_EQ(design.results.CalcData(var::Comp_Torque, i), torque(var::Comp_Torque, i)) << "of the run before";

    user.Press("cmd_Calc");  // and the next one is not stopped
    EXPECT_TRUE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
}

TEST_F(Compensation_Screen, the_window_closes_after_a_stop_alone)
{
    Answer_All();
    frm_CompCam screen;
    const Driver user(screen);
    screen.show();
    QTimer::singleShot(0, &screen, [&] { screen.close(); });  // amid the run: it is the Stop
    user.Press("cmd_Calc");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    screen.close();
    EXPECT_FALSE(screen.isVisible());
}

/// A follower that weighs nothing, integrated roughly, runs away.
TEST_F(Compensation_Screen, a_fault_in_mid_run_is_told_and_leaves_the_screen_open)
{
    Answer_All();
    frm_CompCam screen;
    const Driver user(screen);
    user.Fill("txt_Mass", "1E-6");
    user.Fill("txt_eps", "10000");
    user.Press("cmd_Calc");
    EXPECT_TRUE(Told("Error 6   (Overflow)  has occurred in Calc_Compensation")) << told_;
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    EXPECT_FALSE(user.Visible("pgs_step"));
    for (const char* const open : {"cmd_Calc", "cmd_Cancel", "cmd_Reset", "cmd_Print"})
        EXPECT_TRUE(user.Find<QAbstractButton>(open).isEnabled()) << open;
    EXPECT_FALSE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
    EXPECT_TRUE(user.Find<QWidget>("txt_eps").isEnabled());
    EXPECT_EQ(user.Text("lbl_percent"), "");
    user.Press("cmd_Reset");
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Find<QAbstractButton>("cmd_Done").isEnabled());
}

TEST_F(Compensation_Screen, what_the_torques_unit_does_not_say_stands_beside_them)
{
    Answer_All();
    frm_CompCam screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Visible("lbl_Notes"));
    user.Press("cmd_Calc");
    EXPECT_EQ(user.Text("lbl_Notes"), Note_of_Compcam(design));
    EXPECT_EQ(user.Visible("lbl_Notes"), !Note_of_Compcam(design).empty());
}

/// From the dynamics screen: Back and Cancel leave the primary; Next with OK puts the compensating cam in its place,
/// and sizing follows.
TEST_F(Compensation_Screen, the_way_from_the_dynamics_screen)
{
    Answer_All();
    std::vector<QString> seen;
    cancel_ = true;
    const auto before = screens::Play_Modals([&](QDialog& dialog) {
        seen.push_back(dialog.objectName());
        const Driver user(dialog);
        user.Press("cmd_Calc");
        user.Press("cmd_Done");  // its question is answered with Cancel
        EXPECT_TRUE(Told("You are about to overwrite the primary cam data in memory\n"));
        user.Press("cmd_Cancel");
    });
    const double lift = design.results.CalcData(var::S, 100);
    {
        frm_Dynamics dynamics;
        const Driver user(dynamics);
        user.Press("cmd_Calc");
        user.Press("chk_compcam");
        EXPECT_FALSE(user.Find<QAbstractButton>("chk_compcam").isChecked());
        EXPECT_EQ(dynamics.result(), 0) << "it stays open";
    }
    EXPECT_EQ(seen, std::vector<QString>{"frm_CompCam"});
    EXPECT_FALSE(f_.CompCam_Calc);
    EXPECT_EQ(design.results.CalcData(var::S, 100), lift);

    seen.clear();
    cancel_ = false;
    screens::Play_Modals([&](QDialog& dialog) {
        seen.push_back(dialog.objectName());
        const Driver user(dialog);
        if (dialog.objectName() == "frm_CompCam") {
            user.Press("cmd_Calc");
            user.Press("cmd_Done");
        } else {
            dialog.reject();
        }
    });
    {
        frm_Dynamics dynamics;
        const Driver user(dynamics);
        user.Press("cmd_Calc");
        user.Press("chk_compcam");
    }
    EXPECT_EQ(seen, (std::vector<QString>{"frm_CompCam", "frm_SizeCam"}));
    EXPECT_TRUE(f_.CompCam_Calc);
    EXPECT_FALSE(f_.Sized);
    EXPECT_NE(design.results.CalcData(var::S, 100), lift);
    screens::Play_Modals(before);
}

TEST_F(Compensation_Screen, a_finer_step_is_told_of_and_the_screen_does_not_open)
{
    bool opened = false;
    const auto before = screens::Play_Modals([&](QDialog& dialog) {
        opened = true;
        dialog.reject();
    });
    Answer_All();
    frm_Dynamics dynamics;
    const Driver user(dynamics);
    user.Press("cmd_Calc");
    design.motion.Deltatheta = 0.5;
    user.Press("chk_compcam");
    EXPECT_TRUE(
        Told("This routine requires that delta theta be no smaller than 1 degree.\n"
             "Please return to the SVAJ screen and recalculate the cam with delta theta = 1."));
    EXPECT_FALSE(opened);
    EXPECT_FALSE(user.Find<QAbstractButton>("chk_compcam").isChecked());
    screens::Play_Modals(before);
}

}  // namespace
}  // namespace lobemax
