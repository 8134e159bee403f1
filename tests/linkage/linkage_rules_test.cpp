// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_rules.h"

#include <gtest/gtest.h>

#include "core/unit_change.h"
#include "edit/door.h"
#include "tests/support/linkage_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

Linkage_Group& k()
{
    return design.linkage;
}

class Linkage_Rule : public ::testing::Test {
protected:
    void SetUp() override { testing::Make_Train({1, "W"}); }
    void Calculate()
    {
        Integer answer;
        ASSERT_TRUE(Calc_Linkage_All(design, answer));
    }
    testing::Script script_;
};

TEST_F(Linkage_Rule, gives_each_type_its_links_and_its_kind)
{
    struct Expected {
        int type;
        int links;
        const char* kind;
        const char* stage;
    };
    for (const Expected& e : {Expected{0, 4, "Linkage", ""}, Expected{1, 6, "Linkage", "W"},
                              Expected{2, 4, "Fourslide", ""}, Expected{3, 6, "Sixslide", ""}}) {
        ASSERT_TRUE(Put(design, "Linkage_Type", e.type));
        EXPECT_EQ(k().Links, e.links);
        EXPECT_EQ(k().Linkage_Kind, e.kind);
        EXPECT_EQ(k().Stage_Mode, e.stage);
        EXPECT_EQ(Six_Links(design), e.links == 6);
        EXPECT_EQ(Ends_in_Slider(design), e.type > 1);
        EXPECT_EQ(Last_Link(design), e.links);
    }
    ASSERT_TRUE(Put(design, "Links", 4));
    EXPECT_EQ(k().Linkage_Type, 2);
    EXPECT_EQ(Put(design, "Links", 5).sentence, "A linkage has 4 or 6 links.");
    EXPECT_FALSE(Put(design, "Linkage_Type", 4));
    EXPECT_EQ(k().Linkage_Type, 2);
}

TEST_F(Linkage_Rule, lets_only_a_sixbar_choose_between_Watt_and_Stephenson)
{
    ASSERT_TRUE(Put(design, "Stage_Mode", std::string("S")));
    EXPECT_TRUE(Is_Stephenson(design));
    EXPECT_EQ(Link_of_D(design), 3);
    EXPECT_FALSE(Put(design, "Stage_Mode", std::string("X")));
    ASSERT_TRUE(Put(design, "Linkage_Type", 3));
    EXPECT_FALSE(Is_Stephenson(design));
    EXPECT_EQ(Put(design, "Stage_Mode", std::string("S")).sentence,
              "Watt and Stephenson are trains of six links without a slider.");
}

TEST_F(Linkage_Rule, refuses_lengths_that_are_none)
{
    for (const char* const field : {"Link 1", "Link 2", "Link 3", "Link 4", "Link 5", "Link 6"})
        for (const double value : {0.0, -3.0})
            EXPECT_EQ(Put(design, field, value).sentence, "This value must be positive.  Please redo.") << field;
    EXPECT_EQ(k().Link_3, 150.0F);
    EXPECT_FALSE(Put(design, "Link 4a", -1.0));
    EXPECT_TRUE(Put(design, "Link 4a", 0.0)) << "D on the pivot: a fourbar has no need of it";
    EXPECT_FALSE(Put(design, "Assemflag1", 0));
    EXPECT_TRUE(Put(design, "Assemflag2", 1));
    EXPECT_FALSE(Put(design, "Mass of link", At(2), -1.0));
    EXPECT_TRUE(Put(design, "Mass of link", At(2), 0.0));
    EXPECT_FALSE(Put(design, "Stiffness of link", At(6), -1.0));
}

TEST_F(Linkage_Rule, takes_the_linkage_away_with_each_of_its_dimensions)
{
    for (const char* const field : {"Link 2", "Link 3", "Link 4", "Link 4a", "Link 5", "Link 6", "O4x", "O4y", "O6x",
                                    "O6y", "Delta2", "Delta4", "S3x", "S3y", "Offset6", "Global_Slider_angle_deg"}) {
        Calculate();
        ASSERT_TRUE(design.flags.Linkage_Calc);
        ASSERT_TRUE(Put(design, field, std::get<Single*>(Find_Field(field)->at(design, {}))->Bits() + 0.25)) << field;
        EXPECT_FALSE(design.flags.Linkage_Calc) << field;
    }
    Calculate();
    for (const char* const field : {"Mass of link", "Inertia of link", "CGx of link", "CGy of link"})
        ASSERT_TRUE(Put(design, field, At(3), 0.75));
    EXPECT_TRUE(design.flags.Linkage_Calc) << "what a link weighs moves nothing";
}

TEST_F(Linkage_Rule, drives_the_end_effector_of_an_oscillating_follower_alone)
{
    design.flags.Sized = design.flags.Dynamicflag = true;
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    EXPECT_FALSE(design.flags.Sized || design.flags.Dynamicflag) << "the cam is another";
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 0));
    design.cam.Translating = true;
    EXPECT_EQ(Put(design, "Drive_End_Effector", 1).sentence,
              " Your cam currently has a translating follower.\n This feature requires an oscillating follower. ");
    EXPECT_FALSE(k().Drive_End_Effector);
}

TEST_F(Linkage_Rule, brings_every_length_to_another_unit_system)
{
    ASSERT_TRUE(Put(design, "S3x", 254.0));
    ASSERT_TRUE(Put(design, "S3y", 50.8));
    ASSERT_TRUE(Put(design, "Offset6", 25.4));
    const double L3 = k().Link_3;
    Change_Units(design, 1);
    EXPECT_NEAR(k().Link_3, L3 / 25.4, 1E-3);
    EXPECT_NEAR(k().S3x, 10.0, 1E-3);
    EXPECT_NEAR(k().S3y, 2.0, 1E-3);
    EXPECT_NEAR(k().Offset6, 1.0, 1E-3);
    EXPECT_EQ(k().O4D, k().Link_4a);
}

}  // namespace
}  // namespace lobemax
