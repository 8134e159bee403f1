// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_notes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/startup.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "linkage/linkage_kinematics.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Linkage_Notes_of : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    static void Make(const char* train, int time_base = 1, int direction = -1)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Load_Example(design, train));
        Set_Time_Base(design, time_base);
        ASSERT_TRUE(Put(design, "ArmDirect", direction));
        ASSERT_TRUE(Calculate_Example(design));
        ASSERT_TRUE(Run_Linkage(design));
    }
    static std::string Joined(const std::vector<std::string>& notes)
    {
        std::string text;
        for (const std::string& note : notes)
            text += note + "\n";
        return text;
    }
    static bool Tells(const std::vector<std::string>& notes, const std::string& words)
    {
        return Joined(notes).find(words) != std::string::npos;
    }
    testing::Script script_;
};

TEST_F(Linkage_Notes_of, the_range_of_the_end_effector_is_that_of_its_row)
{
    Make("4-bar Slider", 1, 1);
    const auto places = design.results.Link_Theta.Points(4);
    const auto [least, largest] = std::ranges::minmax(places);
    const auto notes = Linkage_Notes(design, Decimal_Symbol::point);
    ASSERT_EQ(notes.size(), 2U) << Joined(notes);  // a counterclockwise arm per second: the tables are true
    EXPECT_TRUE(notes[0].starts_with("End effector, link 4: displacement from "));
    const auto number_after = [&](const std::string& text, const std::string& words) {
        return std::stod(text.substr(text.find(words) + words.size()));
    };
    EXPECT_NEAR(number_after(notes[0], "displacement from "), least, 0.006);
    EXPECT_NEAR(number_after(notes[0], "a range of "), largest - least, 6e-4);
    EXPECT_TRUE(notes[0].ends_with(" mm."));
    const auto rates = std::ranges::minmax(design.results.Link_Omega.Points(4));
    EXPECT_NEAR(number_after(notes[1], "velocity goes from "), rates.min, 0.006);
    EXPECT_TRUE(Tells(notes, "mm/sec^2"));
}

TEST_F(Linkage_Notes_of, an_angle_is_counted_without_its_jump_of_a_turn)
{
    Make("4-bar Linkage", 1, 1);
    for (int i = 0; i <= 360; ++i)
        design.results.Link_Theta(4, i) = i < 180 ? 350.0 : 20.0;
    EXPECT_TRUE(Tells(Linkage_Notes(design, Decimal_Symbol::point),
                      "angle from 350 deg at cam angle 0 to 380 deg at 180, a range of 30 deg."));
}

TEST_F(Linkage_Notes_of, derivatives_per_degree_are_told_with_the_true_peaks)
{
    Make("4-bar Linkage", 2, 1);
    const auto notes = Linkage_Notes(design, Decimal_Symbol::point);
    EXPECT_TRUE(Tells(notes, "True peaks of the end effector: velocity "));
    EXPECT_TRUE(Tells(notes, "per degree"));
    EXPECT_FALSE(Tells(notes, "clockwise arm have"));
}

TEST_F(Linkage_Notes_of, the_sign_of_a_clockwise_arm_is_told)
{
    Make("4-bar Linkage");
    const auto notes = Linkage_Notes(design, Decimal_Symbol::point);
    EXPECT_TRUE(Tells(notes, "those of this clockwise arm have the other sign."));
    EXPECT_FALSE(Tells(notes, "per degree"));
    // Its accelerations differ, so that the true peaks stand beside them.
    EXPECT_TRUE(Tells(notes, "True peaks"));
}

TEST_F(Linkage_Notes_of, a_driven_end_effector_is_told_how_far_it_misses)
{
    Make("4-bar Linkage", 1, 1);
    EXPECT_FALSE(Tells(Linkage_Notes(design), "Driven"));
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    ASSERT_TRUE(Run_Linkage(design));
    const auto notes = Linkage_Notes(design, Decimal_Symbol::point);
    const std::string words = "misses the motion wanted by up to ";
    const std::string text = Joined(notes);
    ASSERT_NE(text.find(words), std::string::npos) << text;
    EXPECT_NEAR(std::stod(text.substr(text.find(words) + words.size())), Error_of_Driving(design) * 100.0, 1e-3);
}

TEST_F(Linkage_Notes_of, numbers_follow_the_number_format_or_the_callers_symbol)
{
    Make("4-bar Linkage", 1, 1);
    design.identity.Number_Format = "Europe";
    EXPECT_TRUE(Tells(Linkage_Notes(design), ","));
    EXPECT_FALSE(Tells(Linkage_Notes(design), "0."));
    EXPECT_EQ(Linkage_Notes(design), Linkage_Notes(design, Decimal_Symbol::comma));
    EXPECT_NE(Linkage_Notes(design), Linkage_Notes(design, Decimal_Symbol::point));
}

TEST_F(Linkage_Notes_of, there_are_none_before_the_calculation)
{
    ASSERT_TRUE(Sub_Main(design, "", {}));
    EXPECT_TRUE(Linkage_Notes(design).empty());
}

TEST_F(Linkage_Notes_of, masses_are_told_as_they_went_into_the_model_and_as_they_are)
{
    Make("4-bar Linkage", 1, 1);
    for (int link = 2; link <= 4; ++link) {
        ASSERT_TRUE(Put(design, "Mass of link", At(link), 0.5));
        ASSERT_TRUE(Put(design, "Inertia of link", At(link), 0.002));
        ASSERT_TRUE(Put(design, "CGx of link", At(link), 60));
        ASSERT_TRUE(Put(design, "Stiffness of link", At(link), 2e6));
    }
    const auto effect = Run_Link_Masses(design, Speed_Choice::peak);
    ASSERT_TRUE(effect);
    const auto notes = Mass_Notes(design, *effect, Decimal_Symbol::point);
    ASSERT_EQ(notes.size(), 3U);
    const auto number_after = [&](std::size_t k, const std::string& words) {
        EXPECT_NE(notes[k].find(words), std::string::npos) << notes[k];
        return std::stod(notes[k].substr(notes[k].find(words) + words.size()));
    };
    EXPECT_NEAR(number_after(0, "Mass 1, with the follower: "), effect->mass.at_follower, 1e-4);
    EXPECT_NEAR(number_after(0, "Mass 2, the rest of the train: "), effect->mass.at_effector, 1e-4);
    EXPECT_NEAR(number_after(1, "Effective mass at the follower: "), effect->mass.Total(), 1e-4);
    EXPECT_NEAR(number_after(1, "effective stiffness at the follower: "), *effect->stiffness, 10.0);
    EXPECT_TRUE(notes[1].ends_with(" N/m."));
    const Mass_over_Cycle real = True_Mass_over_Cycle(design);
    EXPECT_NEAR(number_after(2, "weighs from "), real.least, 1e-4);
    EXPECT_NEAR(number_after(2, " to "), real.largest, 1e-4);
    EXPECT_NEAR(number_after(2, "over the cycle, "), real.mean, 1e-4);
}

}  // namespace
}  // namespace lobemax
