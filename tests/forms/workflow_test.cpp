// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/workflow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

constexpr const char* compensating =
    "You currently have a compensating cam calculated and\n"
    "have not yet saved that data.  If you continue without\n"
    "first saving the model, you will lose the data.";

class Workflow : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    /// Names of the enabled buttons, in order, without their "cmd_".
    static std::string Enabled()
    {
        const Home_Buttons enabled = Set_Homeform_Buttons(design);
        std::string names;
        for (int b = 0; b < Home_Button_Count; ++b)
            if (enabled[static_cast<std::size_t>(b)])
                names += std::string(Home_Button_at(static_cast<Home_Button>(b)).name.substr(4)) + " ";
        return names;
    }
    /// Texts of the lit lamps.
    static std::string Lit()
    {
        std::string texts;
        for (const Lamp& lamp : Status_Lamps(design))
            if (lamp.lit)
                texts += lamp.text + "|";
        return texts;
    }

    Script script_;
    Flags_Group& f_ = design.flags;
};

TEST_F(Workflow, a_fresh_design_has_input_and_quit_alone)
{
    EXPECT_EQ(Enabled(), "Input Quit ");
    EXPECT_EQ(Lit(), "mm-kg-N-s|");
}

TEST_F(Workflow, each_rung_opens_its_buttons)
{
    f_.Calculated = true;
    EXPECT_EQ(Enabled(), "Input Size Plot Print Quit ");
    f_.Sized = true;
    EXPECT_EQ(Enabled(), "Input Size Draw Force Linkage Plot Print Quit ");
    f_.Dynamicflag = true;
    EXPECT_EQ(Enabled(), "Input Size Draw Force Model Stress Linkage Plot Print Quit ");
    f_.Imported_Model = true;
    EXPECT_EQ(Enabled(), "Size Draw Force Model Stress Linkage Plot Print Quit ");
}

TEST_F(Workflow, a_barrel_cam_that_is_sized_is_not_drawn)
{
    f_.Calculated = f_.Sized = true;
    for (const char* type : {"Barrel", "Linear"}) {
        design.cam.Camtype = type;
        EXPECT_EQ(Enabled(), "Input Size Force Linkage Plot Print Quit ");
    }
}

TEST_F(Workflow, the_buttons_follow_their_order_where_the_flags_disagree)
{
    f_.Sized = true;  // without Calculated: the second step opens what the first closed
    EXPECT_EQ(Enabled(), "Input Draw Force Linkage Quit ");
    f_.Sized = false;
    f_.Dynamicflag = true;
    EXPECT_EQ(Enabled(), "Input Model Stress Quit ");
}

TEST_F(Workflow, a_design_from_disk_that_is_sized_has_its_lamps_and_draw_open)
{
    f_.Calculated = f_.From_Disk = f_.Sized = true;
    EXPECT_EQ(Lit(), "DiskFile|Sized|mm-kg-N-s|");
    EXPECT_NE(Enabled().find("Draw"), std::string::npos);
}

TEST_F(Workflow, the_first_lamp_tells_where_the_motion_comes_from)
{
    const auto first = [] { return Status_Lamps(design)[0]; };
    EXPECT_FALSE(first().lit);
    EXPECT_EQ(first().caption, "Calculated");
    f_.Calculated = true;
    EXPECT_EQ(first().text, "S-V-A-J");
    f_.From_Disk = true;
    EXPECT_EQ(first().text, "DiskFile");
    f_.Imported_Model = true;
    EXPECT_EQ(first().text, "Imported");
    f_.Calculated = f_.From_Disk = false;
    EXPECT_TRUE(first().lit);
}

TEST_F(Workflow, every_other_lamp_has_its_flag_and_shows_its_caption)
{
    const std::vector<std::pair<Flag*, std::string>> lamps{
        {&f_.Sized, "Sized"},         {&f_.Dynamicflag, "Dynamics"},     {&f_.Linkage_Calc, "Linkage"},
        {&f_.Modelflag, "Vibration"}, {&f_.Stressflag, "Stress"},        {&f_.Polydyne_Calc, "Polydyne"},
        {&f_.FFT_Done, "FFT Done"},   {&f_.Ext_Force_Calc, "Ext Force"}, {&f_.CompCam_Calc, "Torq Comp"}};
    for (const auto& [flag, caption] : lamps) {
        *flag = true;
        EXPECT_EQ(Lit(), caption + "|mm-kg-N-s|");
        *flag = false;
    }
    for (int units = 1; units <= 5; ++units) {
        design.identity.WhichUnit = units;
        const std::vector<std::string> words{"in-lb-bl-s", "ft-lb-sl-s", "m-kg-N-s", "cm-kg-N-s", "mm-kg-N-s"};
        EXPECT_EQ(Lit(), words[static_cast<std::size_t>(units - 1)] + "|");
    }
    EXPECT_EQ(Status_Tip, "Shows what has been calculated so far");
}

TEST_F(Workflow, captions_carry_their_access_keys)
{
    using enum Home_Button;
    EXPECT_EQ(Home_Button_at(Input).tip, "Create a cam");
    const std::vector<std::pair<Home_Button, std::string>> captions{
        {Size, "Si&ze Cam"},   {Draw, "&Draw Cam"}, {Force, "D&ynamics"}, {Model, "V&ibration"}, {Stress, "S&tress"},
        {Linkage, "&Linkage"}, {Plot, "&Plot"},     {Print, "P&rint"},    {Quit, "&Quit"}};
    for (const auto& [button, caption] : captions)
        EXPECT_EQ(Home_Button_at(button).caption, caption);
}

TEST_F(Workflow, a_linkage_needs_an_oscillating_follower)
{
    script_.Expect(
        {" Your cam currently has a translating follower.\n"
         " This feature requires an oscillating follower. ",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Open_Linkage(design));
    design.cam.Translating = false;
    EXPECT_TRUE(May_Open_Linkage(design));
}

TEST_F(Workflow, a_vibration_needs_a_first_segment_that_moves)
{
    design.motion.Rise_Fall_Dwell(1) = "D";
    script_.Expect(
        {"Your current SVAJ program starts with a dwell segment.\n"
         "This arrangement does not allow a vibration analysis, because the \n"
         "Runge-Kutta algorithm used requires that follower motion begin at time zero.\n"
         "You must start your cam program cycle with a rise or a fall:\n"
         "i.e., phase shift the cam program to do this dynamic analysis.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Open_Vibration(design));
    design.motion.Rise_Fall_Dwell(1) = "R";
    EXPECT_TRUE(May_Open_Vibration(design));
}

TEST_F(Workflow, an_imported_model_keeps_the_input_screen_closed)
{
    f_.Imported_Model = true;
    script_.Expect(
        {"You currently have imported cam data stored.\n"
         "The SVAJ button has been disabled to prevent\n"
         "overwriting the imported data.\n"
         "Use File/New to re-enable the SVAJ button,\n"
         "but save your imported model first.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Open_Input(design));
}

TEST_F(Workflow, going_on_gives_an_unsaved_compensating_cam_up)
{
    EXPECT_FALSE(Compcam_Panel_Visible(design));
    for (bool (*may_go_on)(Design_State&) : {&May_Open_Input, &May_Build_Example}) {
        f_.CompCam_Calc = true;
        EXPECT_TRUE(Compcam_Panel_Visible(design));
        script_.Expect({compensating, Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
        EXPECT_FALSE(may_go_on(design));
        EXPECT_TRUE(f_.CompCam_Calc);
        script_.Expect({compensating, Buttons::OK_Cancel, Symbol::exclamation, Answer::OK});
        EXPECT_TRUE(may_go_on(design));
        EXPECT_FALSE(f_.CompCam_Calc);
        EXPECT_TRUE(may_go_on(design));  // nothing more to say
    }
    EXPECT_EQ(Compcam_Panel_Text,
              "You have calculated a torque compensating cam.  Its data are in memory.  You must save this model and "
              "export the compensating cam profile data before doing any other cam designs");
}

TEST(Copy_Button, advises_the_key_combination)
{
    EXPECT_EQ(Copy_Advice, "Use the Alt-PrintScrn key combo to copy the screen to the clipboard");
}

TEST(Rungs_of_Home, do_not_open_over_results_of_other_units)
{
    Design_State d;
    std::vector<std::string> boxes;
    Host host;
    host.messenger = [&](const Message& box) {
        boxes.push_back(box.text);
        return Answer::OK;
    };
    const Host before = Install_Host(std::move(host));
    using enum Home_Button;
    for (const Home_Button button : {Input, Size, Draw, Force, Model, Stress, Linkage, Plot, Print, Quit})
        EXPECT_TRUE(May_Open_Rung(d, button));
    EXPECT_TRUE(boxes.empty());
    d.results.WhichUnit = 1;
    for (const Home_Button button : {Input, Plot, Quit})
        EXPECT_TRUE(May_Open_Rung(d, button));
    for (const Home_Button button : {Size, Draw, Force, Model, Stress, Linkage, Print})
        EXPECT_FALSE(May_Open_Rung(d, button));
    EXPECT_EQ(boxes.size(), 7U);
    Install_Host(before);
}

}  // namespace
}  // namespace lobemax
