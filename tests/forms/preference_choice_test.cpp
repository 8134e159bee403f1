// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/preference_choice.h"

#include <gtest/gtest.h>

#include "core/startup.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Preferences_Chosen : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
};

TEST_F(Preferences_Chosen, the_screen_opens_with_what_holds)
{
    EXPECT_EQ(Present_Preferences(design), Preference_Choice{});
    design.cam.Camtype = "Linear";
    design.run.Full_Screen = true;
    const Preference_Choice now = Present_Preferences(design);
    EXPECT_EQ(now.Camtype, "Linear");
    EXPECT_TRUE(now.Full_Screen);
}

TEST_F(Preferences_Chosen, other_units_convert_the_design)
{
    Preference_Choice choice = Present_Preferences(design);
    choice.WhichUnit = 1;
    const double before = design.cam.Prime_Rad;
    Apply_Preferences(design, choice);
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_NEAR(design.cam.Prime_Rad, before / 25.4, 0.0005);  // to the three decimals of inches
    EXPECT_EQ(design.plot.Var_Unit(var::Rho), "in");
}

TEST_F(Preferences_Chosen, another_cam_or_follower_throws_the_sizing_away)
{
    Flags_Group& f = design.flags;
    f.Calculated = f.Sized = f.Dynamicflag = f.Stressflag = true;
    Apply_Preferences(design, Present_Preferences(design));
    EXPECT_TRUE(f.Sized && f.Dynamicflag && f.Stressflag);
    Preference_Choice choice = Present_Preferences(design);
    choice.Camtype = "Barrel";
    Apply_Preferences(design, choice);
    EXPECT_TRUE(f.Calculated);
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.Stressflag);
    EXPECT_EQ(design.cam.Barrel_Type, "Grooved");
    EXPECT_EQ(design.plot.Var_Name(var::Z), "Z-coord");
    choice.Followtype = 2;
    Apply_Preferences(design, choice);
    EXPECT_EQ(design.cam.Camtype, "Radial");  // a flat face rides on a radial cam only
    EXPECT_EQ(design.plot.Var_Name(var::Radius), "Radius");
    EXPECT_EQ(design.cam.Barrel_Type, "");
}

TEST_F(Preferences_Chosen, an_arm_has_its_positions_in_degrees)
{
    Preference_Choice choice = Present_Preferences(design);
    choice.Translating = false;
    Apply_Preferences(design, choice);
    EXPECT_EQ(design.plot.Var_Unit(var::S), "deg");
}

TEST_F(Preferences_Chosen, the_number_format_is_left_to_its_menu)
{
    Preference_Choice choice = Present_Preferences(design);
    choice.Number_Format = "Europe";
    choice.Aspect_Flag = choice.Full_Screen = true;
    choice.Open_Clicked_File = false;
    Apply_Preferences(design, choice);
    EXPECT_EQ(design.identity.Number_Format, "USA");
    EXPECT_TRUE(design.run.Aspect_Flag && design.run.Full_Screen);
    EXPECT_FALSE(design.run.Open_Clicked_File);
}

TEST_F(Preferences_Chosen, an_unknown_unit_system_changes_nothing)
{
    Preference_Choice choice = Present_Preferences(design);
    choice.WhichUnit = 6;
    choice.Camtype = "Linear";
    EXPECT_THROW(Apply_Preferences(design, choice), Fault);
    EXPECT_EQ(design.cam.Camtype, "Radial");
}

TEST_F(Preferences_Chosen, a_circle_is_as_wide_as_the_points_of_the_screen_ask_for)
{
    Set_Screen_Scale(design, 1280, 1024, 125.0, 100.0);  // points narrower than high
    EXPECT_EQ(design.run.Screen_Width, 1280.0);
    EXPECT_EQ(design.run.Screen_Height, 1024.0);
    EXPECT_EQ(Circle_Width(design), 1.0);  // the correction was not chosen
    design.run.Aspect_Flag = true;
    EXPECT_EQ(Circle_Width(design), 1.25);
    for (const auto& [across, up] : {std::pair{0.0, 96.0}, std::pair{96.0, 0.0}, std::pair{500.0, 96.0},
                                     std::pair{96.0, 500.0}, std::pair{96.0, 96.0}}) {
        Set_Screen_Scale(design, 1280, 1024, across, up);
        EXPECT_EQ(Circle_Width(design), 1.0) << across << " " << up;
    }
}

}  // namespace
}  // namespace lobemax
