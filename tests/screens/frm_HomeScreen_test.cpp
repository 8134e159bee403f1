// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_HomeScreen.h"

#include <QAction>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUrl>
#include <filesystem>
#include <fstream>

#include "core/units.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/model_file.h"
#include "files/recovery.h"
#include "files/run_record.h"
#include "forms/workflow.h"
#include "screens/frm_InputData.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_HomeScreen;
using testing::Driver;
using testing::Expected_Box;

const Expected_Box confirm_new{"Please confirm your order to reset all variables to initial values", Buttons::OK_Cancel,
                               Symbol::exclamation, Answer::OK};

/// A Home screen that a test can drop a file onto: Qt gives a drop only to the target of its own drag.
class Drop_Home : public frm_HomeScreen {
public:
    using frm_HomeScreen::dropEvent;
    using frm_HomeScreen::frm_HomeScreen;
};

class Home_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        screens::Load_Resources();
        folder_ = temporary_.path().toStdString() + "/";
    }
    static void Trigger(const frm_HomeScreen& home, const char* name)
    {
        auto* const action = home.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
    static bool Open(const frm_HomeScreen& home, const char* name)
    {
        const auto* const action = home.findChild<QAction*>(name);
        return action != nullptr && action->isEnabled();
    }
    std::string Saved_Model(const char* example)
    {
        Build(example);
        design.identity.File_Name = folder_ + "model.cam";
        script_.Expect({"The file was successfully written to \n" + design.identity.File_Name});
        EXPECT_TRUE(Write_Model_File(design, std::string(design.identity.File_Name), Save_From::home_screen));
        return design.identity.File_Name;
    }

    QTemporaryDir temporary_;
    std::string folder_;
};

TEST_F(Home_Screen, recalculate_brings_the_results_into_the_units_in_force)
{
    frm_HomeScreen home("");
    const Driver user(home);
    EXPECT_FALSE(Open(home, "mnu_Recalculate"));  // there is nothing to calculate yet
    Build("Double Dwell");
    home.Refresh();
    script_.Expect(
        {"The results in memory are those of the units before (mm-kg-N-s): \n"
         "a change of units converts the data of the design, and no calculated results. \n"
         "Until they are recalculated (File menu, Recalculate) plots and figures carry the names of \n"
         "those units, and the results can neither be exported nor printed."});
    Trigger(home, "mnu_pick(1)");
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(Data(var::S, 120), 25.0);
    Trigger(home, "mnu_Recalculate");
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_NEAR(Data(var::S, 120), 0.984, 1e-6);  // 25 mm, to three decimals of an inch
    EXPECT_EQ(design.plot.Var_Unit(var::S), "in");
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "Dynamics", "in-lb-bl-s"}));
    EXPECT_TRUE(user.Enabled("cmd_Plot"));
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo Recalculate");
    ASSERT_TRUE(screens::Desk_History().Undo());
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(Data(var::S, 120), 25.0);
}

TEST_F(Home_Screen, standard_size_gives_back_the_size_before_full_screen)
{
    frm_HomeScreen home("");
    const Driver user(home);
    home.setGeometry(40, 30, 700, 500);
    QApplication::processEvents();
    Trigger(home, "mnu_FullScreen");
    QApplication::processEvents();
    EXPECT_TRUE(home.isMaximized());
    EXPECT_TRUE(design.run.Full_Screen);
    Trigger(home, "mnu_StandardSize");
    QApplication::processEvents();
    EXPECT_FALSE(home.isMaximized());
    EXPECT_EQ(home.size(), QSize(700, 500));
}

TEST_F(Home_Screen, a_fresh_design_opens_input_and_quit_alone)
{
    frm_HomeScreen home("");
    const Driver user(home);
    for (const char* name :
         {"cmd_Size", "cmd_Draw", "cmd_Force", "cmd_Model", "cmd_Stress", "cmd_Linkage", "cmd_Plot", "cmd_Print"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_TRUE(user.Enabled("cmd_Input"));
    EXPECT_TRUE(user.Enabled("cmd_Quit"));
    EXPECT_EQ(user.Tip("cmd_Input"), "Create a cam");
    EXPECT_EQ(user.Text("cmd_Size"), "Si&ze Cam");
    EXPECT_FALSE(user.Visible("pnl_compcam"));
    EXPECT_EQ(user.Tip("Pnl_Status"), "Shows what has been calculated so far");
    EXPECT_FALSE(user.Visible(Element("lbl_Status", 0)));
    EXPECT_EQ(user.Text(Element("lbl_Status", 10)), "mm-kg-N-s");
    EXPECT_FALSE(Open(home, "mnu_CalcFFT"));
}

TEST_F(Home_Screen, an_example_opens_the_ladder_and_lights_its_lamps)
{
    frm_HomeScreen home("");
    const Driver user(home);
    Trigger(home, "mnu_DoubleDwell");
    for (const char* name : {"cmd_Input", "cmd_Size", "cmd_Draw", "cmd_Force", "cmd_Model", "cmd_Stress", "cmd_Linkage",
                             "cmd_Plot", "cmd_Print"})
        EXPECT_TRUE(user.Enabled(name)) << name;
    EXPECT_EQ(user.Text(Element("lbl_Status", 0)), "S-V-A-J");
    EXPECT_TRUE(user.Visible(Element("lbl_Status", 1)));
    EXPECT_TRUE(user.Visible(Element("lbl_Status", 2)));
    EXPECT_FALSE(user.Visible(Element("lbl_Status", 3)));
    EXPECT_TRUE(Open(home, "mnu_profile"));
    EXPECT_FALSE(Open(home, "mnu_Barrel"));
    EXPECT_FALSE(home.isWindowModified());
    design.cam.Prime_Rad = 99.0;
    home.Refresh();
    EXPECT_TRUE(home.isWindowModified());
}

TEST_F(Home_Screen, all_nine_examples_open_from_their_menu)
{
    frm_HomeScreen home("");
    for (const char* name : {"mnu_SingleDwell", "mnu_DoubleDwell", "mnu_Flat", "mnu_FourDwell", "mnu_Oscillate",
                             "mnu_Fourbar", "mnu_Sixbar", "mnu_Fourslide", "mnu_Sixslide"}) {
        Trigger(home, name);
        EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && design.flags.Dynamicflag) << name;
    }
}

TEST_F(Home_Screen, new_confirms_and_empties)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    const Driver user(home);
    script_.Expect(confirm_new);
    Trigger(home, "mnu_New");
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_FALSE(user.Enabled("cmd_Size"));
}

TEST_F(Home_Screen, a_model_is_opened_by_the_menu_a_drop_and_the_recent_list)
{
    const std::string path = Saved_Model("Four Dwell");
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Mark_Saved(design);
    Drop_Home home("");
    const Driver user(home);
    const auto expect_read = [&] {
        Host host = Installed_Host();
        host.messenger = [](const Message& box) { return Usual_Answer(box.buttons); };
        Install_Host(host);
    };
    expect_read();  // the long text of a read belongs to the file's own tests
    script_.path = path;
    Trigger(home, "mnu_Open");
    EXPECT_EQ(design.motion.No_of_segments, 8);
    EXPECT_EQ(user.Text(Element("lbl_Status", 0)), "DiskFile");
    EXPECT_TRUE(user.Enabled("cmd_Draw"));

    ASSERT_TRUE(Sub_Main(design, "", {}));
    Mark_Saved(design);
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    home.dropEvent(&drop);
    EXPECT_EQ(design.motion.No_of_segments, 8);

    ASSERT_TRUE(Sub_Main(design, "", {}));
    Mark_Saved(design);
    auto* const recent = home.findChild<QMenu*>("mnu_Recent");
    ASSERT_NE(recent, nullptr);
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    recent->actions().front()->trigger();
    EXPECT_EQ(design.motion.No_of_segments, 8);
}

TEST_F(Home_Screen, a_motion_typed_after_clear_all_is_no_longer_that_of_the_file)
{
    const std::string path = Saved_Model("Four Dwell");
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Mark_Saved(design);
    frm_HomeScreen home("");
    const Driver user(home);
    Host host = Installed_Host();
    host.messenger = [](const Message& box) { return Usual_Answer(box.buttons); };
    Install_Host(host);  // the long text of a read belongs to the file's own tests
    home.Open_Path(QString::fromStdString(path));
    ASSERT_EQ(user.Text(Element("lbl_Status", 0)), "DiskFile");
    const testing::Modals modals([&](QDialog& open) {
        const Driver screen(open);
        if (open.objectName() == "frm_Continuity") {
            screen.Press("cmd_Done");
            return;
        }
        screen.Press("cmd_Clear_SVAJ");
        home.Refresh();
        EXPECT_FALSE(user.Visible(Element("lbl_Status", 0)));
        screen.Pick(Element("cmb_Motion", 0), "Dwell");
        screen.Fill(Element("txt_Beta", 0), "360");
        screen.Fill(Element("txt_Low", 0), "5");
        screen.Press("cmd_CalcAll");
        screen.Press("cmd_Done");
    });
    user.Press("cmd_Input");
    EXPECT_EQ(user.Text(Element("lbl_Status", 0)), "S-V-A-J");
    EXPECT_FALSE(design.flags.From_Disk);
}

TEST_F(Home_Screen, a_file_that_is_no_model_is_refused_and_the_design_reset)
{
    std::ofstream(folder_ + "text.cam") << "hello\n";
    Build("Double Dwell");
    frm_HomeScreen home("");
    script_.Expect({"This data file is not compatible with LOBEMAX Plus. ", Buttons::OK, Symbol::exclamation});
    home.Open_Path(QString::fromStdString(folder_ + "text.cam"));
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Home_Screen, save_writes_the_file_of_the_design)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    script_.path = folder_ + "mine.cam";  // an example has no name yet: one is asked for
    script_.Expect({"The file was successfully written to \n" + *script_.path});
    Trigger(home, "mnu_Save");
    EXPECT_TRUE(std::filesystem::exists(*script_.path));
    EXPECT_FALSE(home.isWindowModified());
}

TEST_F(Home_Screen, undo_and_redo_go_over_accepted_changes_by_their_names)
{
    Build("Double Dwell");
    screens::Desk_History().Start_Anew();
    const double prime = design.cam.Prime_Rad;
    frm_HomeScreen home("");
    const Driver user(home);
    EXPECT_FALSE(home.findChild<QAction*>("mnu_Undo")->isEnabled());
    const testing::Modals modals([&](QDialog& open) {
        const Driver size(open);
        size.Type("txt_Prime", "120");
        size.Find<screens::Entry>("txt_Prime").Leave();
        size.Press("cmd_Calc");
        size.Press("cmd_Done");
    });
    user.Press("cmd_Size");
    EXPECT_EQ(design.cam.Prime_Rad, 120.0);
    EXPECT_TRUE(home.isWindowModified());
    QAction* const undo = home.findChild<QAction*>("mnu_Undo");
    std::vector<std::string> names;
    while (undo->isEnabled()) {
        names.push_back(undo->text().remove('&').toStdString());
        undo->trigger();
    }
    EXPECT_EQ(names.back(), "Undo Prime radius");
    EXPECT_EQ(design.cam.Prime_Rad, prime);
    EXPECT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_FALSE(home.isWindowModified());
    QAction* const redo = home.findChild<QAction*>("mnu_Redo");
    EXPECT_EQ(redo->text().remove('&').toStdString(), "Redo Prime radius");
    while (redo->isEnabled())
        redo->trigger();
    EXPECT_EQ(design.cam.Prime_Rad, 120.0);
    EXPECT_TRUE(home.isWindowModified());
}

TEST_F(Home_Screen, back_on_a_screen_gives_back_exactly_what_was_before)
{
    Build("Double Dwell");
    screens::Desk_History().Start_Anew();
    const std::uint64_t before = Key_of(design);
    frm_HomeScreen home("");
    const Driver user(home);
    for (const char* button : {"cmd_Input", "cmd_Size", "cmd_Force"}) {
        const testing::Modals modals([&](QDialog& open) {
            const Driver screen(open);
            if (open.objectName() == "frm_InputData")
                screen.Type("txt_Beta(0)", "80");
            else if (open.objectName() == "frm_SizeCam")
                screen.Type("txt_Prime", "120");
            else
                screen.Type("txt_Mass", "3");
            EXPECT_EQ(open.findChild<QAction*>("mnu_Undo")->text().remove('&').toStdString(), "Undo");
            screen.Press("cmd_Cancel");
        });
        user.Press(button);
        EXPECT_EQ(Key_of(design), before) << button;
        EXPECT_FALSE(home.isWindowModified()) << button;
    }
}

TEST_F(Home_Screen, save_as_holds_the_three_formats)
{
    const frm_HomeScreen home("");
    const auto* const menu = home.findChild<QMenu*>("mnu_Saveas");
    ASSERT_NE(menu, nullptr);
    std::vector<std::string> names;
    for (const QAction* const action : menu->actions())
        names.push_back(action->objectName().toStdString());
    EXPECT_EQ(names, (std::vector<std::string>{"mnu_Plus", "mnu_V8", "mnu_V7"}));
}

TEST_F(Home_Screen, units_time_base_and_format_are_marked)
{
    frm_HomeScreen home("");
    EXPECT_TRUE(home.findChild<QAction*>("mnu_pick(5)")->isChecked());
    Trigger(home, "mnu_pick(1)");
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_TRUE(home.findChild<QAction*>("mnu_pick(1)")->isChecked());
    EXPECT_FALSE(home.findChild<QAction*>("mnu_pick(5)")->isChecked());
    Trigger(home, "mnu_Sec_Deg(3)");
    EXPECT_EQ(design.motion.Time_Base, 3);
    Mark_Saved(design);
    EXPECT_TRUE(home.findChild<QAction*>("mnu_Sec_Deg(3)")->isChecked());
    script_.Expect(
        {"This will set your number system to have a comma as the decimal point\n"
         "and a period as the thousands grouping symbol.\n"
         "This can only be used if your Windows operating system is set for European units."});
    Trigger(home, "mnu_Europe");
    EXPECT_TRUE(home.findChild<QAction*>("mnu_Europe")->isChecked());
}

TEST_F(Home_Screen, quit_of_unsaved_work_asks_to_save_and_cancel_stays)
{
    Build("Double Dwell");
    design.cam.Prime_Rad = 99.0;
    frm_HomeScreen home(folder_);
    const Driver user(home);
    for (const Answer answer : {Answer::Cancel, Answer::Yes}) {  // the save dialog of the Yes is cancelled
        script_.Expect({"The current data has not been saved.  Do you want to save it before quitting?",
                        Buttons::Yes_No_Cancel, Symbol::none, answer});
        user.Press("cmd_Quit");
        EXPECT_TRUE(home.isVisible());
    }
    EXPECT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(design.cam.Prime_Rad, 99.0);
}

TEST_F(Home_Screen, quit_of_unsaved_work_offers_the_save_before_the_question)
{
    Build("Double Dwell");
    design.cam.Prime_Rad = 99.0;
    const Expected_Box question{"The current data has not been saved.  Do you want to save it before quitting?",
                                Buttons::Yes_No_Cancel, Symbol::none, Answer::No};
    script_.Expect(question);
    script_.Expect(question);
    Check_Run_Record(design, folder_, "");
    frm_HomeScreen home(folder_);
    const Driver user(home);
    bool asked = false;
    const testing::Modals modals([&](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Quit");
        const Driver reader(open);
        EXPECT_TRUE(reader.Find<QPushButton>("cmd_NoQuit").isDefault());
        reader.Press(asked ? "cmd_YesQuit" : "cmd_NoQuit");
        asked = true;
    });
    user.Press("cmd_Quit");
    EXPECT_TRUE(asked);
    EXPECT_TRUE(home.isVisible());
    home.close();  // the close box goes the same way
    EXPECT_FALSE(home.isVisible());
    std::string word;
    std::getline(std::ifstream(folder_ + "Run_Check.txt"), word);
    EXPECT_EQ(word, "Normal Exit\r");
}

TEST_F(Home_Screen, unsaved_work_is_kept_beside_the_run_record_and_dropped_when_saved)
{
    frm_HomeScreen home(folder_);
    Build("Double Dwell");
    design.cam.Prime_Rad = 99.0;
    home.Keep_Recovery();
    EXPECT_TRUE(std::filesystem::exists(Recovery_Model_Path(folder_)));
    Mark_Saved(design);
    home.Keep_Recovery();
    EXPECT_FALSE(std::filesystem::exists(Recovery_Model_Path(folder_)));
}

TEST_F(Home_Screen, leaving_a_working_screen_by_back_drops_what_was_done_on_it)
{
    Build("Double Dwell");
    frm_HomeScreen home(folder_);
    const Driver user(home);
    const Single prime = design.cam.Prime_Rad;
    const Single phi = design.results.CalcData(var::Phi, 45);
    const auto size = [&](const char* way_out) {
        const testing::Modals modals([way_out](QDialog& open) {
            const Driver hands(open);
            hands.Fill("txt_Prime", "150");
            hands.Press("cmd_Calc");
            hands.Press(way_out);
        });
        user.Press("cmd_Size");
    };
    size("cmd_Cancel");
    EXPECT_EQ(design.cam.Prime_Rad, prime);
    EXPECT_EQ(design.results.CalcData(var::Phi, 45), phi);
    EXPECT_TRUE(design.flags.Dynamicflag);
    size("cmd_Done");
    EXPECT_EQ(design.cam.Prime_Rad, 150.0);
    EXPECT_NE(design.results.CalcData(var::Phi, 45), phi);
    EXPECT_FALSE(design.flags.Dynamicflag);
}

TEST_F(Home_Screen, the_data_of_a_linkage_open_when_it_is_calculated)
{
    Build("4-bar Linkage");
    frm_HomeScreen home("");
    EXPECT_FALSE(Open(home, "mnu_linkagedata"));
    Work_Out_Linkage(design);
    home.Refresh();
    std::string opened;
    const testing::Modals modals([&](QDialog& open) {
        opened = open.objectName().toStdString();
        open.reject();
    });
    Trigger(home, "mnu_linkagedata");
    EXPECT_EQ(opened, "frm_Linkplots");
}

TEST_F(Home_Screen, clicks_that_lead_nowhere_say_why)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    const Driver user(home);
    script_.Expect(
        {" Your cam currently has a translating follower.\n"
         " This feature requires an oscillating follower. ",
         Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Linkage");
    script_.Expect({"Presently this program can only export the roller-center coordinates of conjugate radial cams."});
    Trigger(home, "mnu_Cadkey");
    design.flags.CompCam_Calc = true;
    home.Refresh();
    EXPECT_TRUE(user.Visible("pnl_compcam"));
    EXPECT_EQ(user.Text("pnl_compcam"), std::string(Compcam_Panel_Text));
    script_.Expect(
        {"You currently have a compensating cam calculated and\n"
         "have not yet saved that data.  If you continue without\n"
         "first saving the model, you will lose the data.",
         Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
    user.Press("cmd_Input");
}

TEST_F(Home_Screen, preferences_are_used_and_saved)
{
    frm_HomeScreen home(folder_);
    const testing::Modals modals([](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Preferences");
        const Driver user(open);
        EXPECT_TRUE(user.Checked(Element("opt_Unitdefault", 4)));
        EXPECT_EQ(user.Tip("cmd_UseNow"), "Apply to this run of program only");
        user.Press(Element("opt_Unitdefault", 0));
        user.Press(Element("opt_Camtype", 1));
        user.Press("chk_Aspect_ratio");
        user.Press("cmd_Save");
    });
    Trigger(home, "mnu_Preferences");
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.cam.Camtype, "Barrel");
    EXPECT_TRUE(design.run.Aspect_Flag);
    std::string line;
    std::getline(std::ifstream(folder_ + "Preferences.txt"), line);
    EXPECT_EQ(line, "\"Unit Code =  \",1\r");
}

TEST_F(Home_Screen, leaving_preferences_changes_nothing)
{
    frm_HomeScreen home(folder_);
    const testing::Modals modals([](QDialog& open) {
        const Driver user(open);
        user.Press(Element("opt_Unitdefault", 0));
        user.Press("cmd_Exit");
    });
    Trigger(home, "mnu_Preferences");
    EXPECT_EQ(design.identity.WhichUnit, 5);
    EXPECT_FALSE(std::filesystem::exists(folder_ + "Preferences.txt"));
}

/// A whole session: typed, calculated, checked, saved, emptied, opened again.
void Play_Session(testing::Script& script, const std::string& path, bool european)
{
    if (european)
        design.identity.Number_Format = "Europe";
    const QString lift = european ? "25,5" : "25.5";
    frm_HomeScreen home("");
    const Driver user(home);
    const testing::Modals modals([&](QDialog& open) {
        const Driver screen(open);
        if (open.objectName() == "frm_InputData") {
            screen.Fill("txt_Segmts", "4");
            screen.Fill("txt_Omega", "120");
            struct Row {
                const char* kind;
                const char* program;
                QString low, high;
            };
            const std::array rows{Row{"Rise", "MT - Mod Trap", "0", lift}, Row{"Dwell", "", lift, ""},
                                  Row{"Fall", "MS - Mod Sine", lift, "0"}, Row{"Dwell", "", "0", ""}};
            for (int r = 0; r < 4; ++r) {
                const Row& row = rows[static_cast<std::size_t>(r)];
                screen.Pick(Element("cmb_Motion", r), row.kind);
                if (*row.program != '\0')
                    screen.Pick(Element("cmb_Program", r), row.program);
                screen.Fill(Element("txt_Beta", r), "90");
                screen.Fill(Element("txt_Low", r), row.low);
                if (!row.high.isEmpty())
                    screen.Fill(Element("txt_High", r), row.high);
            }
            screen.Press("cmd_CalcAll");
            screen.Press("cmd_Done");
        } else if (open.objectName() == "frm_Continuity") {
            script.Expect(
                {"The small discontinuities seen in S, V, and A\n"
                 "are due to computational roundoff error\n"
                 "and can be safely ignored.  Jerk discontinuities\n"
                 "are not critical to proper function."});
            screen.Press("cmd_Done");
        }
    });
    user.Press("cmd_Input");
    ASSERT_TRUE(design.flags.Calculated);
    script.path = path;
    script.Expect({"The file was successfully written to \n" + path});
    home.findChild<QAction*>("mnu_Plus")->trigger();
    const Design_State saved = design;
    script.Expect(confirm_new);
    home.findChild<QAction*>("mnu_New")->trigger();
    ASSERT_FALSE(design.flags.Calculated);
    Host host = Installed_Host();
    host.messenger = [](const Message& box) { return Usual_Answer(box.buttons); };
    const Host before = Install_Host(host);
    home.findChild<QAction*>("mnu_Open")->trigger();
    Install_Host(before);
    EXPECT_EQ(design.motion.No_of_segments, 4);
    EXPECT_TRUE(design.flags.Calculated);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(design.motion.End_Value(i), saved.motion.End_Value(i));
        EXPECT_EQ(design.motion.Program(i), saved.motion.Program(i));
    }
    for (const int v : {var::S, var::V, var::A, var::J, var::Ping})
        for (int p = 0; p <= 360; ++p)
            ASSERT_EQ(design.results.CalcData(v, p), saved.results.CalcData(v, p));
    EXPECT_NEAR(design.results.CalcData(var::S, 120), 25.5, 1e-5);
}

TEST_F(Home_Screen, a_whole_session_typed_saved_and_opened_again)
{
    Play_Session(script_, folder_ + "session.cam", false);
}

TEST_F(Home_Screen, the_same_session_in_the_european_format)
{
    Play_Session(script_, folder_ + "session.cam", true);
}

/// The program itself, in a home of its own.
class Program : public Home_Screen {
protected:
    void Start(QProcess& program, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", temporary_.path());
        environment.insert("XDG_CONFIG_HOME", temporary_.path() + "/config");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setProcessEnvironment(environment);
        program.start(LOBEMAX_PROGRAM, arguments);
    }
    std::string Record() const
    {
        std::string word;
        std::getline(std::ifstream(folder_ + "Documents/LOBEMAX/Run_Check.txt"), word);
        return word;
    }
};

TEST_F(Program, tells_its_version_and_its_options)
{
    QProcess program;
    Start(program, {"--version"});
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().startsWith("lobemax "));
    Start(program, {"--help"});
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_TRUE(program.readAllStandardOutput().contains("FILE.cam"));
}

TEST_F(Program, asked_to_terminate_it_ends_properly)
{
    QProcess program;
    Start(program, {"--no-title"});
    ASSERT_TRUE(program.waitForStarted(20000));
    for (int tries = 0; tries < 200 && Record() != "Running\r"; ++tries)
        QTest::qWait(50);
    QTest::qWait(500);  // its event loop runs
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(Record(), "Normal Exit\r");
}

TEST_F(Program, a_killed_run_leaves_its_mark_for_the_next_start)
{
    QProcess program;
    Start(program, {"--no-title"});
    ASSERT_TRUE(program.waitForStarted(20000));
    const std::string preferences = folder_ + "Documents/LOBEMAX/Preferences.txt";
    for (int tries = 0; tries < 400 && !(Record() == "Running\r" && std::filesystem::exists(preferences)); ++tries)
        QTest::qWait(50);
    EXPECT_EQ(Record(), "Running\r");
    program.kill();
    ASSERT_TRUE(program.waitForFinished(20000));
    script_.Expect(
        {"   The program did not shut down properly on its last run.     \n"
         "            This problem will now be corrected.\n"
         "   To avoid this problem in the future, please use the   \n"
         "   Quit button or File/Quit menu to stop the program.   "});
    EXPECT_EQ(Check_Run_Record(design, folder_ + "Documents/LOBEMAX/", ""), Run_Start::after_a_crash);
    EXPECT_TRUE(std::filesystem::exists(preferences));
}

}  // namespace
}  // namespace lobemax
