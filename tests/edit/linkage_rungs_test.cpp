// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "core/ladder.h"
#include "core/variables.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "tests/support/linkage_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Script;

class Linkage_Rungs : public ::testing::Test {
protected:
    void SetUp() override { testing::Make_Train({}); }
    Script script_;
};

TEST_F(Linkage_Rungs, refuse_a_translating_follower)
{
    design.cam.Translating = true;
    script_.Expect({" Your cam currently has a translating follower.\n This feature requires an oscillating follower. ",
                    Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Run_Linkage(design));
    EXPECT_FALSE(Has_Linkage(design));
    Work_Out_Linkage(design);  // without a word
    EXPECT_FALSE(design.flags.Linkage_Calc);
}

TEST_F(Linkage_Rungs, leave_nothing_to_be_saved_and_are_a_step_of_the_history)
{
    Mark_Saved(design);
    const std::uint64_t before = Key_of(design);
    ASSERT_TRUE(Run_Linkage(design));
    EXPECT_FALSE(Unsaved(design)) << "no file keeps it";
    EXPECT_NE(Key_of(design), before) << "Undo gives it back";
}

TEST_F(Linkage_Rungs, work_a_linkage_out_where_one_is_and_none_was_calculated)
{
    EXPECT_TRUE(Has_Linkage(design));
    Work_Out_Linkage(design);
    EXPECT_TRUE(design.flags.Linkage_Calc);
    Apply(design, Event::linkage_edited);
    design.linkage.Link_3 = 0.0;
    EXPECT_FALSE(Has_Linkage(design));
    Work_Out_Linkage(design);
    EXPECT_FALSE(design.flags.Linkage_Calc);
}

TEST_F(Linkage_Rungs, tell_how_many_points_do_not_connect)
{
    ASSERT_TRUE(Run_Linkage(design));
    ASSERT_TRUE(Put(design, "Link 3", 150.0));
    // Shorter and shorter until a part of the swing is lost.
    Host host;
    std::vector<std::string> boxes;
    host.messenger = [&boxes](const Message& box) {
        boxes.push_back(box.text);
        return Usual_Answer(box.buttons);
    };
    const Host before = Install_Host(std::move(host));
    for (double length = 149.0; length > 20.0 && (design.linkage.Link_Broken == 0 || !design.flags.Linkage_Calc);
         length -= 1.0) {
        ASSERT_TRUE(Put(design, "Link 3", length));
        boxes.clear();
        if (!Run_Linkage(design))
            break;
    }
    Install_Host(before);
    ASSERT_TRUE(design.flags.Linkage_Calc);
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[1], "The links do not connect at " + std::to_string(design.linkage.Link_Broken) +
                            " of 361 points.\nThey keep their last position there, at rest.");
}

TEST_F(Linkage_Rungs, size_the_cam_of_a_driven_end_effector_by_the_ratios_of_the_links_as_they_are)
{
    ASSERT_TRUE(Run_Size(design));
    const double by_arm = design.results.CalcData(var::Phi, 60);
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    ASSERT_TRUE(Run_Size(design));
    EXPECT_TRUE(design.flags.Linkage_Calc) << "the train was worked out first";
    EXPECT_NE(design.results.Link_Ratio_S(60), 0.0F);
    const double by_effector = design.results.CalcData(var::Phi, 60);
    EXPECT_GT(std::abs(by_effector - by_arm), 1E-3);
    // Other links, another cam: no ratio of the links before is used.
    ASSERT_TRUE(Put(design, "Link 4", 90.0));
    EXPECT_FALSE(design.flags.Sized) << "the size rests on the ratios";
    ASSERT_TRUE(Run_Size(design));
    EXPECT_GT(std::abs(design.results.CalcData(var::Phi, 60) - by_effector), 1E-4);
}

TEST_F(Linkage_Rungs, keep_the_driven_end_effector_and_the_linkage_when_all_is_recalculated)
{
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Run_Linkage(design));
    const double phi = design.results.CalcData(var::Phi, 60);
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_TRUE(design.linkage.Drive_End_Effector);
    EXPECT_TRUE(design.flags.Linkage_Calc && design.flags.Sized);
    EXPECT_EQ(design.results.CalcData(var::Phi, 60), phi);
}

class Linkage_Rung_of_Example : public ::testing::TestWithParam<const char*> {};

TEST_P(Linkage_Rung_of_Example, stands_with_the_others)
{
    Host host;  // every box has its usual answer
    const Host before = Install_Host(std::move(host));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    ASSERT_TRUE(Open_Example(design, GetParam()));
    ASSERT_TRUE(Run_Linkage(design));
    const double mass = design.dynamics.Mass;
    const auto effect = Run_Link_Masses(design, Speed_Choice::average);
    ASSERT_TRUE(effect);
    EXPECT_EQ(effect->mass.Total(), 0.0) << "links of metric systems have no mass of their own yet";
    EXPECT_EQ(design.dynamics.Mass, mass);
    EXPECT_FALSE(effect->stiffness);
    Install_Host(before);
}

INSTANTIATE_TEST_SUITE_P(All, Linkage_Rung_of_Example,
                         ::testing::Values("4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"));

}  // namespace
}  // namespace lobemax
