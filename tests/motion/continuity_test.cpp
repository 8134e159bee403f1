// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/continuity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/startup.h"
#include "core/text.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

const std::string all_smooth =
    "The small discontinuities seen in S, V, and A\n"
    "are due to computational roundoff error\n"
    "and can be safely ignored.  Jerk discontinuities\n"
    "are not critical to proper function.";
const std::string problem =
    "There may be a problem with your cam design.\n"
    "One or more of your segment boundaries is discontinuous.";
const std::string what_to_do =
    "\nIf the percent errors are very small it is due to computational roundoff error."
    "\nClick OK to ignore these discontinuities."
    "\nClick Cancel to return to the SVAJ screen for redesign of the cam program.";

Motion_Group& m()
{
    return design.motion;
}

class Continuity : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static void Segment(int i, char kind, const char* program, double beta, const char* from, const char* to)
    {
        m().No_of_segments = i;
        Pick_Motion(design, i, kind);
        Pick_Program(design, i, program);
        m().Beta_Deg(i) = beta;
        m().Beta_Rad(i) = beta / Deg_per_Rad;
        m().Start_Value(i) = from;
        m().End_Value(i) = to;
        Update_Segment_Angles(design);
    }
    static void Check() { ContinuityCheck(design, m().Firstlast, m().Continuous, m().Max_Jump); }

    Script script_;
};

TEST_F(Continuity, one_segment_is_judged_at_its_start_and_end_alone)
{
    m().No_of_segments = 1;
    m().Firstlast(1, 1, 0) = 0.0;
    m().Firstlast(1, 2, 0) = 10.0;
    m().Firstlast(1, 2, 1) = 3.0;
    m().Firstlast(1, 1, 1) = 3.0;
    m().Firstlast(2, 1, 0) = 99.0;  // not in use
    Check();
    EXPECT_FALSE(m().Continuous);
    EXPECT_EQ(m().Max_Jump(0), 10.0);
    EXPECT_EQ(m().Max_Jump(1), 0.0);
    EXPECT_EQ(m().Max_Jump(2), 0.0);
    EXPECT_EQ(Worst_Joint(design, 0), 1);
    EXPECT_EQ(Worst_Joint(design, 1), 0);
}

TEST_F(Continuity, a_jump_of_exactly_the_limit_is_none)
{
    m().No_of_segments = 2;
    m().Firstlast(1, 2, 2) = 0.001;
    m().Firstlast(2, 2, 2) = 0.0;
    Check();
    EXPECT_TRUE(m().Continuous);
    EXPECT_EQ(m().Max_Jump(2), Single(0.001));
    m().Firstlast(1, 2, 2) = std::nextafter(0.001F, 1.0F);
    Check();
    EXPECT_FALSE(m().Continuous);
}

TEST_F(Continuity, the_largest_jump_of_each_curve_is_kept_and_its_joint_found)
{
    m().No_of_segments = 3;
    for (int d = 0; d <= 3; ++d)
        for (int i = 1; i <= 3; ++i)
            m().Firstlast(i, 1, d) = m().Firstlast(i, 2, d) = 0.0;
    m().Firstlast(1, 2, 0) = 0.5;
    m().Firstlast(3, 2, 0) = -0.75;  // around the end of the cycle
    m().Firstlast(2, 2, 1) = 2.0;
    m().Firstlast(3, 1, 1) = -1.0;
    m().Firstlast(2, 1, 3) = 1000.0;  // jerk is not judged
    Check();
    EXPECT_EQ(m().Max_Jump(0), 0.75);
    EXPECT_EQ(m().Max_Jump(1), 3.0);
    EXPECT_EQ(m().Max_Jump(2), 0.0);
    EXPECT_EQ(Worst_Joint(design, 0), 3);
    EXPECT_EQ(Worst_Joint(design, 1), 2);
}

TEST_F(Continuity, a_fall_to_zero_and_a_dwell_at_zero_jump_by_rounding_only)
{
    Segment(1, 'R', "MS", 90, "0", "25");
    Segment(2, 'D', "DW", 90, "25", "25");
    Segment(3, 'F', "67", 90, "25", "0");
    Segment(4, 'D', "DW", 90, "0", "0");
    ASSERT_TRUE(Calc_All(design, true));
    script_.Expect({all_smooth});
    EXPECT_TRUE(Continuity_Report(design));
    EXPECT_TRUE(m().Continuous);
    EXPECT_LT(m().Max_Jump(0), 1e-5);
}

TEST_F(Continuity, two_dwells_at_different_heights_jump_in_s)
{
    Segment(1, 'D', "DW", 180, "5", "5");
    Segment(2, 'D', "DW", 180, "0", "0");
    ASSERT_TRUE(Calc_All(design, true));
    // The jump is 5 of a largest S of 5.
    const std::string text =
        problem +
        "\nThe largest discontinuity between adjacent S values is: 5.000 000,   or  100.000 0 % of "
        "maximum value." +
        what_to_do;
    script_.Expect({text, Buttons::OK_Cancel, Symbol::exclamation, Answer::OK});
    EXPECT_TRUE(Continuity_Report(design));
    EXPECT_FALSE(m().Continuous);
    EXPECT_TRUE(design.flags.Calculated);
    script_.Expect({text, Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
    EXPECT_FALSE(Continuity_Report(design));
}

TEST_F(Continuity, a_dwell_beside_a_rise_is_compared_one_step_inside_it)
{
    Set_Shaft_Speed(design, 10);
    Segment(1, 'R', "C1", 180, "0", "10");
    Segment(2, 'D', "DW", 180, "10", "10");
    ASSERT_TRUE(Calc_All(design, true));
    // A half cycloid ends at twice its mean velocity, 2 x 10 over pi radians, times the shaft speed; the dwell's
    // inner point stands still, though the point that both share holds whichever was stored last.
    const double v = 2 * 10.0 / PI * 10.0;
    Check();
    EXPECT_NEAR(m().Max_Jump(1), v, v * 1e-6);
    EXPECT_FALSE(m().Continuous);
    EXPECT_EQ(m().Firstlast(2, 1, 1), 0.0);
}

TEST_F(Continuity, the_box_names_each_curve_that_jumps_with_its_percentage)
{
    m().No_of_segments = 1;
    m().Firstlast(1, 2, 0) = 0.25;
    m().Firstlast(1, 2, 1) = -2.0;
    m().Firstlast(1, 2, 2) = 0.0005;
    design.results.CalcData(var::S, 10) = 0.5;
    design.results.CalcData(var::V, 20) = -8.0;  // the largest absolute value counts
    Check();
    EXPECT_EQ(Continuity_Text(design),
              problem +
                  "\nThe largest discontinuity between adjacent S values is: 0.250 000,   or  50.000 0 % of maximum "
                  "value."
                  "\nThe largest discontinuity between adjacent V values is: 2.000 000,   or  25.000 0 % of maximum "
                  "value." +
                  what_to_do);
    design.identity.Number_Format = "Europe";
    EXPECT_NE(Continuity_Text(design).find(" 0,250 000,   or  50,000 0 % "), std::string::npos);
}

TEST_F(Continuity, a_curve_of_zeros_has_no_percentage)
{
    m().Max_Jump(2) = 5.0;
    EXPECT_EQ(Jump_Percent(design, 2), 0.0);
}

}  // namespace
}  // namespace lobemax
