// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/limits_form.h"

#include <gtest/gtest.h>

#include "core/startup.h"
#include "core/units.h"
#include "forms/home_commands.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Limits_Form : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static const Limit_Line& Line(const std::array<Limit_Line, Limit_Count>& lines, Limit limit)
    {
        return lines[static_cast<std::size_t>(limit)];
    }
    Limits limits_;
    testing::Script script_;
};

TEST_F(Limits_Form, shows_every_limit_in_the_designs_units)
{
    const auto metric = Lines_of_Limits(design, limits_);
    EXPECT_TRUE(Line(metric, Limit::Phi).on);
    EXPECT_EQ(Line(metric, Limit::Phi).text, "30");
    EXPECT_EQ(Line(metric, Limit::Chord).text, "0.01");
    EXPECT_FALSE(Line(metric, Limit::Torque).on);
    EXPECT_EQ(Line(metric, Limit::Torque).text, "");
    Change_Units_from_Home(design, 1);
    EXPECT_EQ(Line(Lines_of_Limits(design, limits_), Limit::Chord).text, "0.0003937008");  // 0.01 / 25.4
    EXPECT_EQ(Tip_of_Limit(design, Limit::Phi),
              "The most that is allowed; usually 30. On the command line --limit Phi");
    EXPECT_EQ(Tip_of_Limit(design, Limit::Contact_Force),
              "The least that is allowed; usually off. On the command line --limit Contact_Force");
}

TEST_F(Limits_Form, an_entry_is_kept_in_the_units_of_limits_for_any_follower)
{
    Change_Units_from_Home(design, 1);
    EXPECT_TRUE(Enter_Limit(design, limits_, Limit::Cam_Size, "10").accepted);
    EXPECT_DOUBLE_EQ(*limits_[Limit::Cam_Size], 254.0);
    ASSERT_TRUE(design.cam.Translating);
    EXPECT_TRUE(Enter_Limit(design, limits_, Limit::Phi_Arm, "40").accepted);  // not that of this follower
    EXPECT_EQ(limits_[Limit::Phi_Arm], 40.0);
    EXPECT_EQ(limits_[Limit::Phi], 30.0);
}

TEST_F(Limits_Form, a_refused_entry_is_told_and_shows_what_stands)
{
    script_.Expect({"A limit must be positive, or off.", Buttons::OK, Symbol::exclamation});
    const Form_Entry result = Enter_Limit(design, limits_, Limit::Phi, "-5");
    EXPECT_FALSE(result.accepted);
    EXPECT_TRUE(result.takes_focus);
    EXPECT_EQ(result.text, "30");
    EXPECT_EQ(limits_[Limit::Phi], 30.0);
}

TEST_F(Limits_Form, a_ticked_limit_takes_its_text_or_its_usual_value_or_waits)
{
    limits_[Limit::Phi].reset();
    EXPECT_TRUE(Turn_On(design, limits_, Limit::Phi, "25"));
    EXPECT_EQ(limits_[Limit::Phi], 25.0);
    limits_[Limit::Phi].reset();
    EXPECT_TRUE(Turn_On(design, limits_, Limit::Phi, " "));
    EXPECT_EQ(limits_[Limit::Phi], 30.0);
    EXPECT_FALSE(Turn_On(design, limits_, Limit::Torque, ""));
    EXPECT_FALSE(limits_[Limit::Torque]);
}

TEST_F(Limits_Form, a_limit_that_is_on_without_a_value_is_told)
{
    auto lines = Lines_of_Limits(design, limits_);
    Limit missing{};
    EXPECT_TRUE(Limits_Are_Whole(design, lines, missing));
    lines[static_cast<std::size_t>(Limit::Torque)].on = true;
    script_.Expect({"'Torque' is on and has no value.\nType one in N-m, or take the tick away.", Buttons::OK,
                    Symbol::exclamation});
    EXPECT_FALSE(Limits_Are_Whole(design, lines, missing));
    EXPECT_EQ(missing, Limit::Torque);
}

}  // namespace
}  // namespace lobemax
