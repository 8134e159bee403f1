// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/home_commands.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "edit/examples.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

const Expected_Box save_before_quitting{"The current data has not been saved.  Do you want to save it before quitting?",
                                        Buttons::Yes_No_Cancel, Symbol::none, Answer::No};
const Expected_Box save_first{"The current data has not been saved.  Do you want to save it before resetting?",
                              Buttons::Yes_No_Cancel, Symbol::none, Answer::No};
const Expected_Box confirm{"Please confirm your order to reset all variables to initial values", Buttons::OK_Cancel,
                           Symbol::exclamation, Answer::OK};

Expected_Box With(Expected_Box box, Answer answer)
{
    box.answer = answer;
    return box;
}

class Home_Commands : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override
    {
        if (script_.path)
            std::filesystem::remove(*script_.path);
        design = {};
    }
    void Make_Unsaved()
    {
        ASSERT_TRUE(Build_Example(design, "Double Dwell"));
        design.flags.Model_Saved = false;
    }
    /// Names of the open export entries, without "mnu_".
    static std::string Open_Exports()
    {
        const std::vector<bool> open = Menu_Update(design);
        std::string names;
        for (std::size_t i = 0; i < open.size(); ++i)
            if (open[i])
                names += std::string(Export_Menu()[i].name.substr(4)) + " ";
        return names;
    }
    std::string Temporary(const std::string& name) { return ::testing::TempDir() + std::to_string(::getpid()) + name; }

    Script script_;
};

TEST_F(Home_Commands, every_menu_entry_has_a_name_of_its_own_and_a_caption)
{
    std::set<std::string_view> names;
    for (const Menu_Entry& entry : Home_Menus()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
        EXPECT_FALSE(entry.caption.empty()) << entry.name;
    }
    for (const Export_Entry& entry : Export_Menu())
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
    for (const std::string_view name :
         {"mnu_New", "mnu_Open", "mnu_OpenExample", "mnu_Save", "mnu_Plus", "mnu_V8", "mnu_V7", "mnu_Import", "mnu_USA",
          "mnu_Europe", "mnu_CalcFFT", "mnu_FullScreen", "mnu_StandardSize", "mnu_Aspect", "mnu_Circles",
          "mnu_Preferences"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST_F(Home_Commands, each_menu_has_its_entries_in_their_order)
{
    const auto names_of = [](std::string_view menu) {
        std::string names;
        for (const Menu_Entry& entry : Home_Menus())
            if (entry.menu == menu)
                names += std::string(entry.name.substr(4)) + " ";
        return names;
    };
    EXPECT_EQ(names_of("&File"), "New Open OpenExample Save Plus V8 V7 Import Recalculate Lobe Findings Limits Cad ");
    EXPECT_EQ(names_of("&Units"),
              "pick(1) pick(2) pick(3) pick(4) pick(5) USA Europe Sec_Deg(1) Sec_Deg(2) Sec_Deg(3) ");
    EXPECT_EQ(names_of("E&xamples"),
              "SingleDwell DoubleDwell Flat FourDwell Oscillate Fourbar Sixbar Fourslide Sixslide ");
    EXPECT_EQ(names_of("FFT"), "CalcFFT ");
    EXPECT_EQ(names_of("S&creen"), "FullScreen StandardSize Aspect Circles Preferences ");
}

TEST_F(Home_Commands, every_entry_that_needs_no_motion_is_open_on_a_fresh_design)
{
    for (const Menu_Entry& entry : Home_Menus())
        EXPECT_EQ(entry.enabled(design), entry.name != "mnu_CalcFFT" && entry.name != "mnu_Recalculate" &&
                                             entry.name != "mnu_Lobe" && entry.name != "mnu_Findings" &&
                                             entry.name != "mnu_Cad")
            << entry.name;
}

TEST_F(Home_Commands, export_entries_have_their_captions)
{
    const std::vector<std::pair<std::string_view, std::string_view>> captions{
        {"mnu_Spread", "&Spreadsheet"},
        {"mnu_profile", "Roller center x-y coordinates versus Cam Zero"},
        {"mnu_Surface", "Cam surface x-y coordinates versus Cam Zero"},
        {"mnu_Cutter", "Cutter center x-y coordinates versus Cam Zero"},
        {"mnu_Profile_mach", "Roller center x-y coordinates versus Machine Zero"},
        {"mnu_Surface_mach", "Cam surface x-y coordinates versus Machine Zero"},
        {"mnu_Barrel", "Barrel cam roller center R-Lambda-Z versus Cam Zero"},
        {"mnu_Barrel_Surf", "Barrel cam surface  R-Lambda-Z versus Cam Zero"},
        {"mnu_Barrel_Ctr", "Barrel cam cutter center R-Lambda-Z versus Cam Zero"},
        {"mnu_Barrel_mach", "Barrel cam roller center  R-Lambda-Z versus Machine Zero"},
        {"mnu_Barrel_Surf_mach", "Barrel cam surface R-Lambda-Z versus Machine Zero"},
        {"mnu_Linear", "Linear cam roller center R-Lambda-Z versus Cam Zero"},
        {"mnu_Linear_surf", "Linear cam surface  R-Lambda-Z versus Cam Zero"},
        {"mnu_sva", "S - V - A data"},
        {"mnu_xdot", "X - Xdot - Xddot data"},
        {"mnu_Cadkey", "&DXF"}};
    for (const auto& [name, caption] : captions) {
        const auto entry = std::ranges::find(Export_Menu(), name, &Export_Entry::name);
        ASSERT_NE(entry, Export_Menu().end()) << name;
        EXPECT_EQ(entry->caption, caption);
    }
    // Beside these stand the two cutter entries versus machine zero, which refuse.
    EXPECT_EQ(Export_Menu().size(), captions.size() + 2);
}

TEST_F(Home_Commands, the_examples_menu_has_the_nine_in_their_order)
{
    std::vector<std::string_view> captions;
    for (const Menu_Entry& entry : Home_Menus())
        if (entry.menu == "E&xamples")
            captions.push_back(entry.caption);
    EXPECT_EQ(captions, (std::vector<std::string_view>{"Single Dwell", "Double Dwell", "Flat Follower", "Four Dwell",
                                                       "Oscillating", "4-bar Linkage", "6-bar Linkage", "4-bar Slider",
                                                       "6-bar Slider"}));
    EXPECT_TRUE(std::equal(captions.begin(), captions.end(), Example_Names.begin(), Example_Names.end()));
}

TEST_F(Home_Commands, a_transform_and_the_figures_of_a_lobe_need_a_motion)
{
    for (const std::string_view name : {"mnu_CalcFFT", "mnu_Lobe", "mnu_Findings"}) {
        const auto entry = std::ranges::find(Home_Menus(), name, &Menu_Entry::name);
        ASSERT_NE(entry, Home_Menus().end()) << name;
        design.flags.Calculated = false;
        EXPECT_FALSE(entry->enabled(design)) << name;
        design.flags.Calculated = true;
        EXPECT_TRUE(entry->enabled(design)) << name;
    }
}

TEST_F(Home_Commands, export_entries_follow_the_kind_of_cam_and_its_size)
{
    const std::string always = "Spread ";
    const std::string linkage = "sva xdot Cadkey ";
    EXPECT_EQ(Open_Exports(), always + linkage);
    design.flags.Sized = true;
    EXPECT_EQ(Open_Exports(), always + "profile Cutter Surface Profile_mach Cutter_mach Surface_mach " + linkage);
    design.cam.Camtype = "Barrel";
    EXPECT_EQ(Open_Exports(),
              always + "Barrel Barrel_Ctr Barrel_Surf Barrel_mach Barrel_Ctr_mach Barrel_Surf_mach " + linkage);
    design.cam.Camtype = "Linear";
    EXPECT_EQ(Open_Exports(), always + "Linear Linear_surf " + linkage);
    design.flags.Sized = false;
    EXPECT_EQ(Open_Exports(), always + linkage);
}

TEST_F(Home_Commands, a_flat_face_has_no_roller_entries)
{
    design.flags.Sized = true;
    design.cam.Followtype = 2;
    EXPECT_EQ(Open_Exports(), "Spread Cutter Surface Cutter_mach Surface_mach sva xdot Cadkey ");
    design.cam.Camtype = "Barrel";
    EXPECT_EQ(Open_Exports(), "Spread Barrel_Ctr Barrel_Surf Barrel_Ctr_mach Barrel_Surf_mach sva xdot Cadkey ");
    design.cam.Camtype = "Linear";
    EXPECT_EQ(Open_Exports(), "Spread Linear_surf sva xdot Cadkey ");
}

TEST_F(Home_Commands, new_confirms_and_resets)
{
    Make_Unsaved();
    design.flags.From_Disk = design.flags.Imported_Model = true;
    design.cam.Prime_Rad = 50.0;
    design.cam.Offset = 4.0;
    design.cam.Follow_Rad = 9.0;
    script_.Expect(save_first);
    script_.Expect(confirm);
    EXPECT_TRUE(File_New(design));
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_EQ(design.motion.No_of_segments, 1);
    EXPECT_FALSE(design.flags.From_Disk || design.flags.Imported_Model);
    EXPECT_FLOAT_EQ(static_cast<float>(design.cam.Prime_Rad), 76.2F);  // three inches
    EXPECT_EQ(design.cam.Offset, 0.0);
    EXPECT_EQ(design.cam.Follow_Rad, 12.5);
    EXPECT_EQ(design.identity.Model_Name, "Model1");
    EXPECT_EQ(Set_Homeform_Buttons(design)[static_cast<std::size_t>(Home_Button::Size)], false);
}

TEST_F(Home_Commands, new_of_a_saved_or_uncalculated_design_asks_only_for_confirmation)
{
    Mark_Saved(design);
    script_.Expect(confirm);
    EXPECT_TRUE(File_New(design));
    Make_Unsaved();
    Mark_Saved(design);
    script_.Expect(With(confirm, Answer::Cancel));
    EXPECT_FALSE(File_New(design));
    EXPECT_TRUE(design.flags.Calculated);
}

TEST_F(Home_Commands, new_saves_when_the_user_wants_so)
{
    Make_Unsaved();
    script_.path = Temporary("new.cam");
    // The text of the success box belongs to the save; any will do here.
    Host host = Installed_Host();
    std::vector<std::string> boxes;
    host.messenger = [&](const Message& box) {
        boxes.push_back(box.text);
        return box.buttons == Buttons::Yes_No_Cancel ? Answer::Yes : Answer::OK;
    };
    const Host before = Install_Host(host);
    EXPECT_TRUE(File_New(design));
    Install_Host(before);
    EXPECT_EQ(boxes.size(), 3U);
    EXPECT_TRUE(std::filesystem::exists(*script_.path));
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Home_Commands, new_keeps_a_design_whose_save_was_cancelled)
{
    Make_Unsaved();
    script_.Expect(With(save_first, Answer::Yes));
    EXPECT_FALSE(File_New(design));  // no path: the dialog was cancelled
    EXPECT_TRUE(design.flags.Calculated);
}

TEST_F(Home_Commands, quit_of_unsaved_work_shows_the_save_dialog_before_the_quit_screen)
{
    Make_Unsaved();
    script_.path = Temporary("before_quit.cam");
    script_.Expect(With(save_before_quitting, Answer::Yes));
    script_.Expect({"The file was successfully written to \n" + *script_.path});
    bool dialog_came_first = false;
    EXPECT_TRUE(Quit_Requested(design, [&] {
        dialog_came_first = script_.dialogs.size() == 1;
        return true;
    }));
    EXPECT_TRUE(dialog_came_first);
}

TEST_F(Home_Commands, quit_stays_when_its_question_or_its_save_is_cancelled)
{
    Make_Unsaved();
    bool asked = false;
    const auto quit_screen = [&] { return asked = true; };
    for (const Answer answer : {Answer::Cancel, Answer::Yes}) {  // without a path the save dialog is cancelled
        script_.Expect(With(save_before_quitting, answer));
        EXPECT_FALSE(Quit_Requested(design, quit_screen));
    }
    EXPECT_FALSE(asked);
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs.front().title, "Save the Model");
    script_.Expect(With(save_before_quitting, Answer::No));
    EXPECT_TRUE(Quit_Requested(design, quit_screen));
}

TEST_F(Home_Commands, quit_writes_the_model_where_the_dialog_says)
{
    Make_Unsaved();
    script_.path = Temporary("quit.cam");
    script_.Expect(With(save_before_quitting, Answer::Yes));
    script_.Expect({"The file was successfully written to \n" + *script_.path});
    EXPECT_TRUE(Quit_Requested(design, [] { return design.flags.Model_Saved; }));
    EXPECT_TRUE(std::filesystem::exists(*script_.path));
}

TEST_F(Home_Commands, quit_of_saved_or_empty_work_goes_straight_to_the_quit_screen)
{
    Mark_Saved(design);
    EXPECT_FALSE(Quit_Requested(design, [] { return false; }));
    Make_Unsaved();
    Mark_Saved(design);
    EXPECT_TRUE(Quit_Requested(design, [] { return true; }));
    EXPECT_TRUE(script_.dialogs.empty());
}

const Expected_Box other_units{
    "The results in memory are those of the units before (mm-kg-N-s): \n"
    "a change of units converts the data of the design, and no calculated results. \n"
    "Until they are recalculated (File menu, Recalculate) plots and figures carry the names of \n"
    "those units, and the results can neither be exported nor printed."};

TEST_F(Home_Commands, units_from_home_convert_and_keep_the_flags)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.flags.Sized = true;
    const double before = design.cam.Prime_Rad;
    script_.Expect(other_units);
    EXPECT_TRUE(Change_Units_from_Home(design, 1));
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_NEAR(design.cam.Prime_Rad, before / 25.4, 5e-4);
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized);
    EXPECT_TRUE(design.flags.Units_Changed);
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(design.plot.Var_Unit(var::S), "mm");
    script_.Expect(Error_Box(9, "Index out of bounds", "frm_Homescreen.Units"));
    EXPECT_FALSE(Change_Units_from_Home(design, 6));
}

TEST_F(Home_Commands, units_of_a_design_without_results_change_in_silence)
{
    EXPECT_TRUE(Change_Units_from_Home(design, 1));
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_EQ(design.plot.Var_Unit(var::S), "in");
}

TEST_F(Home_Commands, recalculate_brings_the_whole_ladder_into_the_new_units)
{
    const auto entry = std::ranges::find(Home_Menus(), "mnu_Recalculate", &Menu_Entry::name);
    ASSERT_NE(entry, Home_Menus().end());
    EXPECT_FALSE(entry->enabled(design));
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    EXPECT_TRUE(entry->enabled(design));
    script_.Expect(other_units);
    ASSERT_TRUE(Change_Units_from_Home(design, 1));
    EXPECT_NEAR(design.results.CalcData(var::S, 120), 25.0, 1e-5);
    EXPECT_TRUE(Recalculate_from_Home(design));
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_NEAR(design.results.CalcData(var::S, 120), 0.984, 1e-6);  // 25 mm, to three decimals of an inch
    EXPECT_EQ(design.plot.Var_Unit(var::S), "in");
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_FALSE(design.flags.Model_Saved);
    design.flags.Imported_Model = true;
    EXPECT_FALSE(entry->enabled(design));
}

TEST_F(Home_Commands, another_time_base_asks_before_it_throws_results_away)
{
    const Expected_Box ask{
        "The calculated results keep the time base that they were calculated in.\n"
        "Another time base throws them away, and the motion must be calculated again.\n"
        "Do you want to change the time base?",
        Buttons::Yes_No, Symbol::exclamation, Answer::No};
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    EXPECT_TRUE(Change_Time_Base_from_Home(design, 1));  // it was the base already
    script_.Expect(ask);
    EXPECT_FALSE(Change_Time_Base_from_Home(design, 2));
    EXPECT_TRUE(design.flags.Calculated && design.motion.Seg_Done(1));
    EXPECT_EQ(design.motion.Time_Base, 1);
    script_.Expect(With(ask, Answer::Yes));
    EXPECT_TRUE(Change_Time_Base_from_Home(design, 2));
    EXPECT_EQ(design.plot.Var_Name(var::J), "Jerk");
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_FALSE(design.motion.Seg_Done(1));
    EXPECT_TRUE(Change_Time_Base_from_Home(design, 3));  // nothing is lost: no question
    script_.Expect(Error_Box(5, "Invalid argument", "frm_Homescreen.Time_Base"));
    EXPECT_FALSE(Change_Time_Base_from_Home(design, 4));
}

TEST_F(Home_Commands, the_european_format_asks_about_unsaved_work_before_it_resets)
{
    Make_Unsaved();
    script_.Expect(With(save_first, Answer::Yes));  // and the save dialog is cancelled
    EXPECT_FALSE(Change_Number_Format(design, "Europe"));
    EXPECT_EQ(design.identity.Number_Format, "USA");
    EXPECT_TRUE(design.flags.Calculated);
    script_.Expect(save_first);
    script_.Expect(
        {"This will set your number system to have a comma as the decimal point\n"
         "and a period as the thousands grouping symbol.\n"
         "This can only be used if your Windows operating system is set for European units."});
    EXPECT_TRUE(Change_Number_Format(design, "Europe"));
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_FALSE(design.flags.Calculated);
    script_.Expect(
        {"This will set your number system to have a period as the decimal point\n"
         "and a comma as the thousands grouping symbol.\n"
         "This can only be used if your Windows operating system is set for US units."});
    EXPECT_TRUE(Change_Number_Format(design, "USA"));
    EXPECT_EQ(design.identity.Number_Format, "USA");
}

TEST_F(Home_Commands, the_home_screen_comes_up_with_the_state)
{
    ASSERT_TRUE(Build_Example(design, "Oscillating"));
    design.run.Keep_Step = true;
    design.flags.Linkage_Calc = design.flags.CompCam_Calc = true;
    const Home_View view = Home_Activate(design);
    EXPECT_FALSE(design.run.Keep_Step);
    EXPECT_EQ(view.unit_system, 5);
    EXPECT_TRUE(view.compcam_panel);
    EXPECT_TRUE(view.linkage_data_entry);
    EXPECT_EQ(view.lamps[0].text, "S-V-A-J");
    EXPECT_EQ(view.export_entries.size(), Export_Menu().size());
}

TEST_F(Home_Commands, an_error_while_the_home_screen_comes_up_is_reported_and_the_rest_is_shown)
{
    design.flags.Calculated = true;
    design.identity.WhichUnit = 6;
    script_.Expect(Error_Box(9, "Index out of bounds", "frm_Homescreen.activate"));
    const Home_View view = Home_Activate(design);
    EXPECT_TRUE(view.buttons[static_cast<std::size_t>(Home_Button::Size)]);
    EXPECT_EQ(view.export_entries.size(), Export_Menu().size());
    EXPECT_FALSE(view.lamps[0].lit);
}

}  // namespace
}  // namespace lobemax
