// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "tests/support/import_boxes.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

constexpr double pi = 3.14159265358979323846;

class Import_Rung : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        choice_.prime = 30.0;
        choice_.close = true;
    }
    void TearDown() override { design = {}; }

    /// A harmonic of 10 over the turn, fitted.
    void Fit()
    {
        std::string text;
        for (int i = 0; i < 360; ++i)
            text += std::to_string(i) + " " + Shortest(Single(5 - 5 * std::cos(i * pi / 180))) + "\n";
        ASSERT_TRUE(Take_Profile(design, text, "", choice_, profile_));
        ASSERT_TRUE(Fit_Profile(design, choice_, profile_));
    }

    Script script_;
    Import_Choice choice_;
    Profile profile_;
};

TEST_F(Import_Rung, stores_per_second_in_the_units_and_by_the_speed_given)
{
    Fit();
    Put(design, "Time Base", 3);
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_TRUE(Save_Functions(design, choice_, {1, 60.0}, profile_));
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.motion.Time_Base, 1);
    EXPECT_NEAR(design.motion.Shaft_speed, 2 * pi, 1E-6);
    EXPECT_EQ(design.plot.Var_Unit(var::V), "in/sec");
    EXPECT_FALSE(Results_in_Other_Units(design));
    const auto& data = design.results.CalcData;
    const double w = 2 * pi;
    for (const int i : {0, 45, 90, 200, 360}) {
        const double t = i * pi / 180;
        EXPECT_EQ(data(var::Angle, i), i);
        EXPECT_NEAR(data(var::S, i), 5 - 5 * std::cos(t), 1E-5) << "the numbers of the file, in its units";
        EXPECT_NEAR(data(var::V, i), 5 * w * std::sin(t), 1E-3);
        EXPECT_NEAR(data(var::A, i), 5 * w * w * std::cos(t), 2.0);
        EXPECT_EQ(data(var::Ping, i), 0.0);
    }
    EXPECT_NEAR(design.motion.MaxLift, 10.0, 1E-5);
}

TEST_F(Import_Rung, takes_away_what_rests_on_the_motion_before)
{
    ASSERT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
    Fit();
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_TRUE(Save_Functions(design, choice_, {5, 120.0}, profile_));
    const Flags_Group& f = design.flags;
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag || f.Polydyne_Calc || f.CompCam_Calc ||
                 f.Linkage_Calc || f.FFT_Done || f.Model_Saved);
}

TEST_F(Import_Rung, refuses_a_profile_without_a_fit_and_a_standing_shaft)
{
    script_.Expect({"Fit the functions first.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Save_Functions(design, choice_, {5, 120.0}, profile_));
    Fit();
    const float first = design.results.CalcData(var::S, 0).Bits();
    const Single speed = design.motion.Shaft_speed;
    const Verdict zero = Query(design, "Shaft speed", 0.0);
    ASSERT_FALSE(zero);
    script_.Expect({zero.sentence, Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Save_Functions(design, choice_, {1, 0.0}, profile_));
    EXPECT_EQ(design.identity.WhichUnit, 5) << "nothing of a refused save stays";
    EXPECT_EQ(design.motion.Shaft_speed, speed);
    EXPECT_EQ(design.results.CalcData(var::S, 0).Bits(), first);
}

TEST_F(Import_Rung, a_speed_too_large_for_its_powers_leaves_the_design)
{
    Fit();
    script_.Expect(testing::Error_Box(6, "Overflow", "Save_Functions"));
    EXPECT_FALSE(Save_Functions(design, choice_, {1, 1E30}, profile_));
    EXPECT_EQ(design.identity.WhichUnit, 5);
}

TEST_F(Import_Rung, kept_it_is_the_motion_of_a_design_that_counts_on)
{
    Fit();
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_TRUE(Save_Functions(design, choice_, {5, 120.0}, profile_));
    const int number = design.identity.Design_No;
    Keep_Import(design);
    const Flags_Group& f = design.flags;
    EXPECT_TRUE(f.Calculated && f.Imported_Model);
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.CompCam_Calc || f.Polydyne_Calc);
    EXPECT_EQ(design.identity.Design_No, number + 1);
    EXPECT_TRUE(Unsaved(design));
    const Standing standing = Standing_of(design);
    EXPECT_TRUE(standing.motion);
    EXPECT_FALSE(standing.size || standing.forces);
    // The ladder goes on from it.
    Put(design, "Prime_Rad", 40.0);
    EXPECT_TRUE(Run_Size(design));
    EXPECT_TRUE(f.Sized && f.Imported_Model);
}

TEST_F(Import_Rung, given_up_there_is_no_motion)
{
    Fit();
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_TRUE(Save_Functions(design, choice_, {5, 120.0}, profile_));
    Keep_Import(design);
    Give_Up_Import(design);
    const Flags_Group& f = design.flags;
    EXPECT_FALSE(f.Calculated || f.Imported_Model || f.Sized || f.Dynamicflag);
    EXPECT_EQ(Standing_of(design), Standing{});
}

TEST_F(Import_Rung, is_not_calculated_anew_from_the_table)
{
    Fit();
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_TRUE(Save_Functions(design, choice_, {5, 120.0}, profile_));
    Keep_Import(design);
    std::vector<float> before;
    for (const Single s : design.results.CalcData.Points(var::S))
        before.push_back(s.Bits());
    {
        Host host = Installed_Host();
        std::vector<std::string> told;
        host.messenger = [&](const Message& box) {
            told.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        const Host script = Install_Host(host);
        EXPECT_FALSE(Recalculate(design, Standing_of(design)));
        Install_Host(script);
        EXPECT_EQ(told.size(), 1U) << "it says why";
    }
    std::vector<float> after;
    for (const Single s : design.results.CalcData.Points(var::S))
        after.push_back(s.Bits());
    EXPECT_EQ(after, before);
    EXPECT_TRUE(design.flags.Calculated && design.flags.Imported_Model);
}

}  // namespace
}  // namespace lobemax
