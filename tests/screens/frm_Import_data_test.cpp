// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Import_data.h"

#include <QAction>
#include <QComboBox>
#include <QTemporaryDir>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>

#include "core/text.h"
#include "edit/rungs.h"
#include "files/model_file.h"
#include "paint/chart.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_SizeCam.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"
#include "tests/support/import_boxes.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_HomeScreen;
using screens::frm_Import_data;
using testing::Driver;

constexpr double pi = 3.14159265358979323846;

double Harmonic(int degrees)
{
    return 5 - 5 * std::cos(degrees * pi / 180);
}

class Import_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        screens::Load_Resources();
        Write(359);
    }
    void Write(int last)
    {
        script_.path = folder_.filePath("lobe.txt").toStdString();
        std::ofstream file(*script_.path);
        for (int i = 0; i <= last; ++i)
            file << i << "\t" << Shortest(Single(Harmonic(i))) << "\n";
    }
    static const paint::Chart& Chart(const Driver& user, int k)
    {
        return user.Find<paint::Chart>(Element("grf_Plot", k));
    }
    /// Types into the line of a list and leaves it with the tabulator.
    static void Type_Item(const Driver& user, const char* list, const char* text)
    {
        auto& box = user.Find<QComboBox>(list);
        box.setFocus();
        box.lineEdit()->selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
        QApplication::processEvents();
    }
    void Import_and_Fit(const Driver& user)
    {
        user.Fill("txt_Base", "30");
        if (!user.Checked("chk_Close"))
            user.Press("chk_Close");
        script_.Expect(testing::Profile_Read_Box);
        user.Press("cmd_Import");
        user.Press("cmd_Calc");
    }
    void Save(const Driver& user)
    {
        user.Fill("txt_Omega", "120");
        script_.Expect(testing::Functions_Saved_Box);
        user.Press("cmd_Save_Functions");
    }
    static void Trigger(const frm_HomeScreen& home, const char* name)
    {
        auto* const action = home.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
        QApplication::processEvents();
    }
    /// Opens the import from the Home screen and plays it.
    void Play_Import(const frm_HomeScreen& home, const std::function<void(const Driver&)>& play)
    {
        int played = 0;
        const testing::Modals modals([&](QDialog& screen) {
            ++played;
            play(Driver(screen));
        });
        Trigger(home, "mnu_Import");
        EXPECT_EQ(played, 1);
    }

    QTemporaryDir folder_;
};

TEST_F(Import_Screen, reads_fits_and_saves_from_its_controls)
{
    frm_Import_data screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Coord", 0)));
    EXPECT_TRUE(user.Checked(Element("opt_Interpolate", 0)));
    EXPECT_TRUE(user.Checked(Element("opt_Folmotion", 0)));
    EXPECT_EQ(user.Text(Element("opt_Interpolate", 1)), "Fourier Series");
    EXPECT_EQ(user.Text(Element("opt_Interpolate", 2)), "Lanzcos C.S.");
    EXPECT_EQ(user.Text("cmb_Units"), "mm-Kg-s");
    EXPECT_EQ(user.Text("cmb_Delta"), "1.0");
    EXPECT_EQ(user.Tip("chk_Normalize"), "Check to remove any DC component from the imported data.");
    EXPECT_EQ(user.Tip("chk_Rawdata"), "Check to save the raw displacement data instead of the interpolated");
    EXPECT_FALSE(user.Visible("grf_Plot"));
    EXPECT_TRUE(user.Visible("lbl_Advice"));
    for (const char* const name :
         {"cmd_Calc", "cmd_Copy", "cmd_PlotPrint", "cmd_Derivs", "cmd_Functions", "cmd_Save_Functions", "cmd_Done"})
        EXPECT_FALSE(user.Enabled(name)) << name;

    script_.Expect({"Please type the cam's prime radius in its box", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Import");
    user.Fill("txt_Base", "30");
    user.Press("chk_Close");
    script_.Expect(testing::Profile_Read_Box);
    user.Press("cmd_Import");
    EXPECT_EQ(user.Text("txt_Data"), "361");
    EXPECT_TRUE(user.Visible("grf_Plot"));
    ASSERT_EQ(Chart(user, 0).Curves().size(), 1U);
    EXPECT_EQ(Chart(user, 0).Curves()[0].name, "RawData");
    EXPECT_FALSE(user.Enabled("cmd_Save_Functions"));

    user.Press("cmd_Calc");
    ASSERT_EQ(Chart(user, 0).Curves().size(), 2U);
    EXPECT_EQ(Chart(user, 0).Curves()[1].name, "Splined");
    EXPECT_EQ(Chart(user, 1).Curves()[0].name, "Veloc");
    EXPECT_EQ(Chart(user, 2).Curves()[0].name, "Accel");
    EXPECT_EQ(Chart(user, 3).Curves()[0].name, "Jerk");
    EXPECT_TRUE(user.Text("lbl_Notes").starts_with("The fit misses the data by 0 mm at most"));
    for (const char* const name : {"cmd_Copy", "cmd_PlotPrint", "cmd_Derivs", "cmd_Functions", "cmd_Save_Functions"})
        EXPECT_TRUE(user.Enabled(name)) << name;
    EXPECT_FALSE(user.Enabled("cmd_Done"));

    script_.Expect(
        {"These derivatives have units of length/degree and length/degree^2 \n"
         "and do not have the camshaft angular velocity yet applied to them.\n"
         "When the functions are saved, the angular velocity will be applied.\n"
         "Please be sure that the correct angular velocity is typed in its box."});
    user.Press("cmd_Derivs");
    EXPECT_FALSE(user.Visible(Element("grf_Plot", 0)));
    EXPECT_TRUE(user.Visible(Element("grf_Plot", 3)));
    user.Press("cmd_Functions");
    EXPECT_TRUE(user.Visible(Element("grf_Plot", 0)));
    EXPECT_FALSE(user.Visible(Element("grf_Plot", 1)));

    script_.Expect({"Please type the Cam Omega in its box", Buttons::OK_Cancel, Symbol::exclamation});
    user.Press("cmd_Save_Functions");
    EXPECT_EQ(screen.focusWidget()->objectName(), "txt_Omega");
    Save(user);
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    const int number = design.identity.Design_No;
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_TRUE(design.flags.Calculated && design.flags.Imported_Model);
    EXPECT_EQ(design.identity.Design_No, number + 1);
    EXPECT_NEAR(Data(var::S, 90), 5.0, 1E-5);
    EXPECT_NEAR(Data(var::V, 90), 5 * 4 * pi, 1E-3);
}

TEST_F(Import_Screen, refuses_items_that_its_lists_do_not_have)
{
    frm_Import_data screen;
    const Driver user(screen);
    script_.Expect({"Please select one of the drop-down menu items for units"});
    Type_Item(user, "cmb_Units", "miles");
    EXPECT_EQ(user.Text("cmb_Units"), "mm-Kg-s");
    script_.Expect({"Please select one of the drop-down menu items for Delta Theta"});
    Type_Item(user, "cmb_Delta", "0.7");
    EXPECT_EQ(user.Text("cmb_Delta"), "1.0");
    Type_Item(user, "cmb_Units", "ips");
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(user.Text("unit_txt_Base"), "in");
    user.Pick("cmb_Units", "SI");
    EXPECT_EQ(design.identity.WhichUnit, 3);
    EXPECT_EQ(user.Text("cmb_Units"), "SI");
    Import_and_Fit(user);
    script_.Expect({"Must reimport the data after changing delta theta"});
    user.Pick("cmb_Delta", "0.25");
    EXPECT_EQ(user.Text("cmb_Delta"), "0.25");
    EXPECT_EQ(user.Text("txt_Data"), "");
    EXPECT_FALSE(user.Enabled("cmd_Calc"));
    EXPECT_FALSE(user.Visible("grf_Plot"));
}

TEST_F(Import_Screen, shows_the_step_that_a_file_needs)
{
    Write(359);
    {
        std::ofstream file(*script_.path);
        for (int i = 0; i < 720; ++i)
            file << i * 0.5 << "; " << Harmonic(i) << "\n";
    }
    frm_Import_data screen;
    const Driver user(screen);
    user.Fill("txt_Base", "30");
    script_.Expect({"There are 720 data sets in this file. \nDelta Theta has been reset to allow that many."});
    script_.Expect(testing::Profile_Read_Box);
    user.Press("cmd_Import");
    EXPECT_EQ(user.Text("cmb_Delta"), "0.50");
    EXPECT_EQ(design.motion.Deltatheta, 0.5);
}

TEST_F(Import_Screen, a_method_takes_the_fit_before_away_and_brings_its_entry)
{
    frm_Import_data screen;
    const Driver user(screen);
    Import_and_Fit(user);
    EXPECT_FALSE(user.Visible("txt_Harmonics") || user.Visible("txt_Bound"));
    user.Press(Element("opt_Interpolate", 3));
    EXPECT_TRUE(user.Visible("txt_Bound"));
    EXPECT_EQ(Chart(user, 0).Curves().size(), 1U);
    EXPECT_FALSE(user.Enabled("cmd_Save_Functions"));
    EXPECT_EQ(user.Text("lbl_Notes"), "");
    script_.Expect({"Please type by how much a point may be moved in its box", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Calc");
    user.Fill("txt_Bound", "0.01");
    user.Press("cmd_Calc");
    EXPECT_NE(user.Text("lbl_Notes").find("The smoothing moves a point by 0.01 mm at most"), std::string::npos)
        << user.Text("lbl_Notes");
    user.Press(Element("opt_Interpolate", 1));
    user.Press("chk_Close");  // a series takes an open cycle
    user.Fill("txt_Harmonics", "3");
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Enabled("cmd_Save_Functions"));
    EXPECT_NEAR(Chart(user, 0).Curves()[1].y[90], 5.0, 1E-5);
    // A fit that fails stores nothing and shows nothing.
    user.Press(Element("opt_Interpolate", 0));
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    script_.Expect({"Something is wrong with the solution - cannot continue"});
    user.Press("cmd_Calc");
    EXPECT_FALSE(user.Enabled("cmd_Save_Functions"));
    EXPECT_EQ(Chart(user, 0).Curves().size(), 1U);
}

TEST_F(Import_Screen, tells_what_the_data_of_an_arm_must_be)
{
    frm_Import_data screen;
    const Driver user(screen);
    script_.Expect({"For an oscillating follower, your displacement data must be in degrees."});
    user.Press(Element("opt_Folmotion", 1));
    EXPECT_FALSE(design.cam.Translating);
    user.Press(Element("opt_Interpolate", 3));
    EXPECT_EQ(user.Text("unit_txt_Bound"), "deg");
}

TEST_F(Import_Screen, back_leaves_the_design_as_it_was)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    const std::vector<double> before = Row(var::S);
    Play_Import(home, [this](const Driver& user) {
        user.Pick("cmb_Units", "SI");
        user.Pick("cmb_Delta", "0.50");
        Import_and_Fit(user);
        user.Press("cmd_Cancel");
    });
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_FALSE(design.flags.Imported_Model);
    EXPECT_EQ(design.identity.WhichUnit, 5);
    EXPECT_EQ(design.motion.Deltatheta, 1.0);
    EXPECT_EQ(Row(var::S), before);
}

TEST_F(Import_Screen, back_after_a_save_leaves_no_motion_and_undo_brings_the_old_one)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    const Driver hub(home);
    const std::vector<double> before = Row(var::S);
    const Single prime = design.cam.Prime_Rad;
    Play_Import(home, [this](const Driver& user) {
        Import_and_Fit(user);
        Save(user);
        user.Press("cmd_Cancel");
    });
    EXPECT_FALSE(design.flags.Calculated || design.flags.Imported_Model || design.flags.Sized);
    EXPECT_EQ(design.cam.Prime_Rad, prime) << "what was typed before is there";
    EXPECT_FALSE(hub.Enabled("cmd_Size"));
    EXPECT_TRUE(hub.Enabled("cmd_Input"));
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo import given up");
    Trigger(home, "mnu_Undo");
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized);
    EXPECT_EQ(Row(var::S), before);
}

TEST_F(Import_Screen, next_can_be_taken_back)
{
    Build("Double Dwell");
    screens::Desk_History().Start_Anew();
    frm_HomeScreen home("");
    const Driver hub(home);
    const std::vector<double> before = Row(var::S);
    Play_Import(home, [this](const Driver& user) {
        Import_and_Fit(user);
        Save(user);
        user.Press("cmd_Done");
    });
    EXPECT_TRUE(design.flags.Imported_Model);
    EXPECT_FALSE(hub.Enabled("cmd_Input"));
    EXPECT_TRUE(hub.Enabled("cmd_Size"));
    EXPECT_EQ(Lit_Lamps(hub), (std::vector<std::string>{"Imported", "mm-kg-N-s"}));
    EXPECT_EQ(home.findChild<QAction*>("mnu_Recalculate")->isEnabled(), false);
    while (screens::Desk_History().May_Undo())
        Trigger(home, "mnu_Undo");
    EXPECT_FALSE(design.flags.Imported_Model);
    EXPECT_EQ(Row(var::S), before);
    EXPECT_TRUE(hub.Enabled("cmd_Input"));
}

TEST_F(Import_Screen, an_unsaved_compensating_cam_is_asked_about)
{
    Build("Double Dwell");
    design.flags.CompCam_Calc = true;
    frm_HomeScreen home("");
    script_.Expect(
        {"You currently have a compensating cam calculated and\n"
         "have not yet saved that data.  If you continue without\n"
         "first saving the model, you will lose the data.",
         Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
    Trigger(home, "mnu_Import");  // no screen opens
    EXPECT_TRUE(design.flags.CompCam_Calc);
}

TEST_F(Import_Screen, the_whole_way_from_a_file_to_a_profile_for_the_shop)
{
    frm_HomeScreen home("");
    const Driver hub(home);
    Play_Import(home, [this](const Driver& user) {
        user.Fill("txt_follower", "8");
        Import_and_Fit(user);
        Save(user);
        user.Press("cmd_Done");
    });
    {
        const testing::Modals modals([&](QDialog& screen) {
            const Driver user(screen);
            EXPECT_EQ(user.Text("txt_Prime"), "30");
            EXPECT_EQ(user.Text("txt_follower"), "8");
            user.Press("cmd_Calc");
            user.Press("cmd_Done");
        });
        hub.Press("cmd_Size");
    }
    ASSERT_TRUE(design.flags.Sized);
    EXPECT_EQ(Lit_Lamps(hub), (std::vector<std::string>{"Imported", "Sized", "mm-kg-N-s"}));
    const std::vector<double> S = Row(var::S);
    const std::vector<double> A = Row(var::A);

    // Saved, thrown away, opened.
    const std::string model = folder_.filePath("lobe.cam").toStdString();
    script_.path = model;
    script_.Expect({"The file was successfully written to \n" + model});
    Trigger(home, "mnu_Save");
    Host host = Installed_Host();
    Host quiet = host;
    std::vector<std::string> told;
    quiet.messenger = [&](const Message& box) {
        told.push_back(box.text);
        return Usual_Answer(box.buttons);
    };
    Install_Host(quiet);
    Trigger(home, "mnu_New");
    EXPECT_FALSE(design.flags.Imported_Model || design.flags.Calculated);
    Trigger(home, "mnu_Open");
    Install_Host(host);
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && design.flags.From_Disk);
    EXPECT_EQ(Row(var::S), S);
    EXPECT_EQ(Row(var::A), A);
    EXPECT_EQ(design.cam.Follow_Rad, 8.0);

    // No file keeps the mark of an import: a recalculation of the empty table is refused, and nothing is lost.
    EXPECT_FALSE(design.flags.Imported_Model);
    EXPECT_TRUE(hub.Enabled("cmd_Input"));
    script_.Expect(testing::No_Beta_Box(1));
    Trigger(home, "mnu_Recalculate");
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized);
    EXPECT_EQ(Row(var::S), S);
    {
        const testing::Modals modals([&](QDialog& screen) {
            const Driver user(screen);
            user.Press("cmd_Cancel");
        });
        hub.Press("cmd_Input");
    }
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized);
    EXPECT_EQ(Row(var::S), S);

    // The profile of the roller's centre: radius 30 + S.
    const std::string profile = folder_.filePath("profile.txt").toStdString();
    script_.path = profile;
    Install_Host(quiet);
    Trigger(home, "mnu_profile");
    Install_Host(host);
    ASSERT_TRUE(std::filesystem::exists(profile));
    std::ifstream file(profile);
    std::vector<double> radii;
    for (std::string line; std::getline(file, line);) {
        std::istringstream cells(line);
        cells.imbue(std::locale::classic());
        double x = 0.0;
        double y = 0.0;
        if (cells >> x >> y)
            radii.push_back(std::hypot(x, y));
    }
    ASSERT_GE(radii.size(), 360U);
    radii.erase(radii.begin(), radii.end() - 360);  // numbers of its head
    for (int i = 0; i < 360; ++i)
        EXPECT_NEAR(radii[static_cast<std::size_t>(i)], 30 + Harmonic(i), 2E-4) << i;
}

}  // namespace
}  // namespace lobemax
