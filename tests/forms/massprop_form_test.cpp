// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/massprop_form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "edit/examples.h"
#include "forms/linkage_form.h"
#include "tests/support/number_in.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;
using enum Link_Column;

class Massprop_Forms : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
    static void Build(const char* example)
    {
        ASSERT_TRUE(Build_Example(design, example) && Run_Size(design) && Run_Linkage(design));
    }
    static void Fill(double mass_of_each, double spring)
    {
        for (int link = 2; link <= Max_Links; ++link) {
            design.linkage.Mass_of_link(link) = mass_of_each;
            design.linkage.CGx_of_link(link) = 60.0;
            design.linkage.Stiffness_of_link(link) = spring;
        }
    }

    Script script_;
    Linkage_Group& k_ = design.linkage;
};

TEST_F(Massprop_Forms, columns_have_the_headings_of_four_and_of_six_links)
{
    const char* const four[]{"Mass of Link", "Mass Moment of Inertia about CG", "Distance to CG from Pivot",
                             "Angle to CG in LRCS*", "Stiffness (k)"};
    const char* const six[]{"Mass of Link", "Mass Mom of Inertia vs CG", "Dist to CG from Pivot",
                            "Angle to CG in LRCS*", "Stiffness (k)"};
    const char* const names[]{"txt_Mass", "txt_Inertia", "txt_DistCG", "txt_AngCG", "txt_Spring"};
    const auto columns = Columns_of_Massprop();
    ASSERT_EQ(columns.size(), 5U);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].name, names[i]);
        EXPECT_EQ(&Column_at(columns[i].column), &columns[i]);
        Choose_Linkage_Type(design, 0);
        EXPECT_EQ(Heading_of(design, columns[i]), four[i]);
        Choose_Linkage_Type(design, 3);
        EXPECT_EQ(Heading_of(design, columns[i]), six[i]);
    }
    EXPECT_EQ(Massprop_Note, "*  LCRS = Local Rotating Coordinate System Referenced to Link's Line of Centers");
}

TEST_F(Massprop_Forms, results_have_their_captions)
{
    std::vector<std::string> captions;
    for (const auto& row : Read_Outs_of_Massprop())
        captions.emplace_back(row.caption);
    EXPECT_EQ(captions, (std::vector<std::string>{"Mass 1", "Mass 2", "Effective Mass at Follower",
                                                  "Effective Stiffness at Follower"}));
}

TEST_F(Massprop_Forms, the_screen_and_the_links_are_those_of_the_train)
{
    const char* const screens[]{"frm_MassProp4", "frm_MassProp6", "frm_MassProp4", "frm_MassProp6"};
    const char* const last[]{"Link 4", "Link 6", "Link 4 (slider)", "Link 6 (slider)"};
    for (int choice = 0; choice < 4; ++choice) {
        Choose_Linkage_Type(design, choice);
        EXPECT_EQ(Screen_of_Massprop(design), screens[choice]);
        const int end = choice % 2 == 0 ? 4 : 6;
        EXPECT_EQ(Segment_of_Link(design, end), last[choice]);
        EXPECT_EQ(Segment_of_Link(design, 2), "Link 2");
        for (const Link_Column column : {mass, inertia, dist_cg, angle_cg, stiffness}) {
            EXPECT_TRUE(Massprop_Open(design, column, 3));
            EXPECT_EQ(Massprop_Open(design, column, end), choice < 2 || column == mass || column == stiffness);
        }
    }
}

TEST_F(Massprop_Forms, each_entry_reaches_its_link)
{
    for (int link = 2; link <= 6; ++link) {
        const std::string n = std::to_string(link);
        EXPECT_TRUE(Edit_Massprop(design, mass, link, n + ".5").accepted);
        EXPECT_TRUE(Edit_Massprop(design, inertia, link, "0." + n).accepted);
        EXPECT_TRUE(Edit_Massprop(design, dist_cg, link, "1" + n).accepted);
        EXPECT_TRUE(Edit_Massprop(design, stiffness, link, n + "E5").accepted);
    }
    for (int link = 2; link <= 6; ++link) {
        EXPECT_EQ(k_.Mass_of_link(link), Single(link + 0.5));
        EXPECT_EQ(k_.Inertia_of_link(link), Single(link / 10.0));
        EXPECT_EQ(k_.CGx_of_link(link), Single(10.0 + link));
        EXPECT_EQ(k_.Stiffness_of_link(link), Single(link * 1E5));
        EXPECT_EQ(Massprop_Text(design, mass, link), std::to_string(link) + ".5");
    }
    EXPECT_THROW(Massprop_Text(design, mass, 7), Fault);
}

TEST_F(Massprop_Forms, the_angle_is_degrees_with_two_decimals_and_stored_in_radians)
{
    EXPECT_EQ(Massprop_Text(design, angle_cg, 3), "0.00");
    const Form_Entry entry = Edit_Massprop(design, angle_cg, 3, "12.3456");
    EXPECT_TRUE(entry.accepted);
    EXPECT_EQ(entry.text, "12.35");
    EXPECT_NEAR(k_.CGy_of_link(3), 12.3456 * 3.14159265358979 / 180.0, 1E-6) << "what was typed, not what is shown";
    EXPECT_TRUE(Edit_Massprop(design, angle_cg, 3, "-90").accepted);
    EXPECT_EQ(Massprop_Text(design, angle_cg, 3), "-90.00");
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Massprop_Text(design, angle_cg, 3), "-90,00");
}

TEST_F(Massprop_Forms, a_negative_mass_is_told_and_zero_is_allowed)
{
    k_.Mass_of_link(2) = 0.5;
    script_.Expect({"'-1' is below 0", Buttons::OK, Symbol::exclamation});
    const Form_Entry refused = Edit_Massprop(design, mass, 2, "-1");
    EXPECT_FALSE(refused.accepted);
    EXPECT_EQ(refused.text, "0.5");
    EXPECT_TRUE(Edit_Massprop(design, mass, 2, "0").accepted);
    EXPECT_EQ(k_.Mass_of_link(2), Single(0.0));
}

TEST_F(Massprop_Forms, nothing_is_calculated_before_the_linkage)
{
    Choose_Linkage_Type(design, 0);
    script_.Expect({"Calculate the linkage first.", Buttons::OK, Symbol::exclamation});
    const Massprop_Result result = Calc_Massprop(design, Speed_Choice::peak);
    EXPECT_EQ(result.texts.lbl_Effmass, "");
    EXPECT_TRUE(result.notes.empty());
}

TEST_F(Massprop_Forms, a_stiffness_of_zero_is_told_and_the_masses_stand)
{
    Build("4-bar Linkage");
    Fill(0.5, 1E6);
    k_.Stiffness_of_link(3) = 0.0;
    script_.Expect(
        {"At least one of your stiffnesses is zero.\nNone may be.  Please redo.", Buttons::OK, Symbol::none});
    const Massprop_Result result = Calc_Massprop(design, Speed_Choice::peak);
    EXPECT_NE(result.texts.lbl_Effmass, "");
    EXPECT_EQ(result.texts.lbl_Effspring, "");
    EXPECT_TRUE(result.notes[0].ends_with("; its stiffness is as it was."));
}

TEST_F(Massprop_Forms, the_results_go_into_the_model_and_onto_the_labels)
{
    Build("4-bar Linkage");
    design.dynamics.Model_Type = 5;
    Fill(0.5, 1E6);
    const Massprop_Texts texts = Calc_Massprop(design, Speed_Choice::peak).texts;
    const double m1 = testing::Number_In(texts.lbl_Mass1);
    const double m2 = testing::Number_In(texts.lbl_Mass2);
    EXPECT_NEAR(m1, design.dynamics.Mass_m(1), 1E-6);
    EXPECT_NEAR(m2, design.dynamics.Mass_m(2), 1E-6);
    EXPECT_NEAR(testing::Number_In(texts.lbl_Effmass), m1 + m2, 1E-5);
    EXPECT_NEAR(testing::Number_In(texts.lbl_Effspring), design.dynamics.Kspring(1), 1.0);
    const std::vector<std::string> two = Calc_Massprop(design, Speed_Choice::peak).notes;
    ASSERT_EQ(two.size(), 2U);
    EXPECT_EQ(two[0], "The model of the follower train has taken m1 = " + texts.lbl_Mass1 +
                          " kg and m2 = " + texts.lbl_Mass2 + " kg and the stiffness.");
    EXPECT_TRUE(two[1].starts_with("By its kinetic energy the train weighs from "));
    design.dynamics.Model_Type = 2;  // of one mass
    EXPECT_EQ(Calc_Massprop(design, Speed_Choice::peak).notes[0],
              "The model of the follower train has taken m1 = " + texts.lbl_Effmass + " kg and the stiffness.");
    EXPECT_NE(Calc_Massprop(design, Speed_Choice::average).texts.lbl_Mass2, texts.lbl_Mass2) << "the speeds count";
}

/// Springs in series: each compliance is halved, and so is their sum.
TEST_F(Massprop_Forms, twice_the_stiffness_of_all_links_is_twice_the_effective_one)
{
    for (const char* const example : {"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"}) {
        Build(example);
        Fill(0.5, 1E6);
        const double once = testing::Number_In(Calc_Massprop(design, Speed_Choice::peak).texts.lbl_Effspring);
        Fill(1.0, 2E6);
        const Massprop_Texts twice = Calc_Massprop(design, Speed_Choice::peak).texts;
        EXPECT_NEAR(testing::Number_In(twice.lbl_Effspring), 2.0 * once, 1E-4 * once) << example;
        EXPECT_GT(once, 0.0);
    }
}

}  // namespace
}  // namespace lobemax
