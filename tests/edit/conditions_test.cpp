// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/conditions.h"

#include <gtest/gtest.h>

#include <string>

#include "core/ladder.h"
#include "core/startup.h"
#include "core/text.h"
#include "edit/door.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segment_store.h"
#include "motion/segments.h"
#include "motion/spline.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

const std::string knot_limit =
    "This program can only handle cases with 17 or fewer interior knots.\n"
    "Increase the order of your spline to reduce the number of interior knots required.\n"
    "Alternatively, you may go back to the boundary condition form and add more boundary conditions which will reduce "
    "the number of interior knots for a given spline order.";
const std::string ascending = " Knot values must be in ascending order, left to right.  Please redo.";

Expected_Box Box(const std::string& text)
{
    return {text, Buttons::OK, Symbol::exclamation, Answer::OK};
}

Motion_Group& m()
{
    return design.motion;
}

void Fresh_Cycle(double step)
{
    design = {};
    Set_Max_Variables(design);
    m().Deltatheta = step;
    m().Max_Data_Points_used = To_Integer(360.0 / step);
    Dimension_Arrays(design, 53, m().Max_Data_Points_used);
    m().Time_Base = 3;
    m().Shaft_speed = 1.0;
    Set_Omega_Powers(design);
    m().Orders.Fill(6);
    m().EvenKnots.Fill(true);
}

/// Segment 1, 'S' or 'P', with a beta in degrees and end positions as typed.
void Segment(char kind, double beta, const std::string& start, const std::string& end, int conditions)
{
    ASSERT_TRUE(Pick_Motion(design, 1, kind));
    ASSERT_TRUE(Put(design, "Beta_Deg", At(1), beta));
    ASSERT_TRUE(Put(design, "Start Value", At(1), start));
    ASSERT_TRUE(Put(design, "End Value", At(1), end));
    ASSERT_TRUE(Put(design, "No of conditions", At(1), std::to_string(conditions)));
}

void Inner_Condition(int row, double theta, int order, double value)
{
    m().T_boundary_cond(1, row) = Shortest(theta);
    Bound_Text(design, 1, row, order) = Shortest(value);
}

void Rest_at_Both_Ends(int orders)
{
    for (int order = 1; order <= orders; ++order)
        Bound_Text(design, 1, 0, order) = Bound_Text(design, 1, 9, order) = "0";
}

/// A rise of 100 degrees at rest at both ends, with four positions between: ten conditions.
void Ten_Conditions(char kind)
{
    Segment(kind, 100.0, "0", "1", 10);
    Rest_at_Both_Ends(2);
    Inner_Condition(1, 20, 0, 0.1);
    Inner_Condition(2, 40, 0, 0.3);
    Inner_Condition(3, 60, 0, 0.75);
    Inner_Condition(4, 80, 1, 0.5);
}

/// The motion and the size stand.
void Reach_Size()
{
    m().Seg_Done(1) = true;
    m().Splines_Calculated(1) = true;
    Reach(design, Mark::motion);
    Reach(design, Mark::size);
}

bool Waits()
{
    return !m().Seg_Done(1) && !design.flags.Calculated && !design.flags.Sized;
}

TEST(NumberOfConditions, IsTwoToForty)
{
    Fresh_Cycle(1.0);
    const std::string limit = "Number of boundary conditions must be between 2 and 40 - please re-enter";
    {
        Script none;
        EXPECT_TRUE(Set_No_of_Conditions(design, 3, "2"));
        EXPECT_TRUE(Set_No_of_Conditions(design, 3, "40"));
        EXPECT_TRUE(Set_No_of_Conditions(design, 3, ""));
    }
    EXPECT_EQ(m().No_Conditions(3), 40);
    EXPECT_EQ(m().No_of_conditions(3), "40");
    Script boxes({Box(limit), Box(limit), Box(limit), Box(limit)});
    EXPECT_FALSE(Set_No_of_Conditions(design, 3, "41"));
    EXPECT_FALSE(Set_No_of_Conditions(design, 3, "1"));
    EXPECT_FALSE(Set_No_of_Conditions(design, 3, "1e9"));
    EXPECT_FALSE(Set_No_of_Conditions(design, 3, "many"));
    EXPECT_EQ(m().No_Conditions(3), 40);
    EXPECT_EQ(m().No_of_conditions(3), "40");
}

TEST(NumberOfConditions, TellsOfMoreFilledBoxesThanAskedFor)
{
    Fresh_Cycle(1.0);
    Segment('P', 90.0, "0", "1", 6);
    Ask_Boundaries(design, 1);
    Rest_at_Both_Ends(2);
    Script box({Box("You have input more boundary conditions than specified")});
    EXPECT_TRUE(Set_No_of_Conditions(design, 1, "6"));
    EXPECT_TRUE(Set_No_of_Conditions(design, 1, "5"));
    EXPECT_EQ(m().No_Conditions(1), 5);
}

TEST(NumberOfConditions, AnotherOneTakesTheMotionAwayAndTheSameOneDoesNot)
{
    Fresh_Cycle(1.0);
    Segment('P', 90.0, "0", "1", 6);
    const auto all_stand = [] {
        m().Seg_Done(1) = true;
        Reach(design, Mark::motion);
        Reach(design, Mark::size);
    };
    all_stand();
    EXPECT_TRUE(Set_No_of_Conditions(design, 1, "6"));
    EXPECT_TRUE(m().Seg_Done(1) && design.flags.Calculated && design.flags.Sized);
    EXPECT_TRUE(Set_No_of_Conditions(design, 1, "7"));
    EXPECT_FALSE(m().Seg_Done(1) || design.flags.Calculated || design.flags.Sized);
}

TEST(SplineOrder, TypedOrderFollowsItsRules)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script boxes;
    EXPECT_TRUE(Set_Order(design, 1, "5"));
    EXPECT_EQ(m().Orders(1), 5);
    EXPECT_EQ(m().Number_of_Knots(1), 15);
    EXPECT_EQ(m().Interior_Knots(1), 5);
    boxes.Expect(Box("Spline order must be four or greater"));
    EXPECT_FALSE(Set_Order(design, 1, "3"));
    EXPECT_EQ(m().Orders(1), 5);
    boxes.Expect(Box("Spline order must be four or greater"));
    EXPECT_FALSE(Set_Order(design, 1, ""));
    boxes.Expect(Box("Spline Order must be less than 11"));
    EXPECT_FALSE(Set_Order(design, 1, "11"));
    EXPECT_EQ(m().Orders(1), 10);
    EXPECT_EQ(m().Interior_Knots(1), 0);
    boxes.Expect(Box("Spline Order must be less than 11"));
    EXPECT_FALSE(Set_Order(design, 1, "1e9"));
    EXPECT_TRUE(Set_Order(design, 1, "4"));
    EXPECT_EQ(m().Interior_Knots(1), 6);
    EXPECT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Orders(1), 4);
    EXPECT_EQ(Min_Order(design, 1), 4);
    EXPECT_EQ(Max_Order(design, 1), 10);
}

TEST(SplineOrder, ChangedOrderReturnsTheKnotsToEvenSpacing)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    ASSERT_TRUE(Calc_Spline(design, 1));
    ASSERT_TRUE(Set_Knot(design, 1, 1, "11"));
    EXPECT_FALSE(m().EvenKnots(1));
    EXPECT_FALSE(m().Splines_Calculated(1));
    ASSERT_TRUE(Set_Order(design, 1, "7"));
    EXPECT_TRUE(m().EvenKnots(1));
    EXPECT_EQ(m().Knots(8, 1), 25.0);
    EXPECT_EQ(m().Knots(10, 1), 75.0);
}

TEST(SplineOrder, OrderFourWithTwentyTwoConditionsMeetsTheKnotLimit)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "1", 21);
    Script boxes;
    EXPECT_TRUE(Set_Order(design, 1, "4"));  // 17 interior knots
    m().No_Conditions(1) = 22;
    boxes.Expect(Box(knot_limit));
    EXPECT_FALSE(Set_Order(design, 1, "4"));
    EXPECT_EQ(m().Orders(1), 4);
    EXPECT_EQ(m().Interior_Knots(1), 18);
    m().No_Conditions(1) = 40;  // 40 + 30 knots are more than the table holds
    boxes.Expect(Box(knot_limit));
    EXPECT_FALSE(Set_Order(design, 1, "30"));
}

TEST(SplineKnots, TypedKnotMustStandBetweenItsNeighbours)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script boxes;
    ASSERT_TRUE(Set_Knot(design, 1, 2, "35"));  // knots 20, 35, 60, 80
    EXPECT_EQ(m().Knots(8, 1), 35.0);
    EXPECT_FALSE(m().EvenKnots(1));
    boxes.Expect(Box(ascending));
    EXPECT_FALSE(Set_Knot(design, 1, 2, "61"));
    boxes.Expect(Box(ascending));
    EXPECT_FALSE(Set_Knot(design, 1, 2, "19"));
    boxes.Expect(Box(ascending));
    EXPECT_FALSE(Set_Knot(design, 1, 4, "101"));
    boxes.Expect(Box("This value must be positive.  Please redo."));
    EXPECT_FALSE(Set_Knot(design, 1, 1, "-1"));
    boxes.Expect(Error_Box(9, "Index out of bounds", "txt_Knot"));
    EXPECT_FALSE(Set_Knot(design, 1, 5, "90"));
    EXPECT_EQ(m().Knots(8, 1), 35.0);
}

TEST(SplineKnots, AndOrderOfASegmentThatIsNotThereAreError9)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script boxes;
    for (const int segment : {0, -1, 21}) {
        boxes.Expect(Error_Box(9, "Index out of bounds", "txt_Order"));
        EXPECT_FALSE(Set_Order(design, segment, "3"));  // before the order is judged
        boxes.Expect(Error_Box(9, "Index out of bounds", "txt_Order"));
        EXPECT_FALSE(Set_Order(design, segment, "5"));
        boxes.Expect(Error_Box(9, "Index out of bounds", "txt_Knot"));
        EXPECT_FALSE(Set_Knot(design, segment, 1, "10"));
    }
    EXPECT_EQ(m().Orders(0), 6);
    EXPECT_TRUE(m().EvenKnots(0));
}

TEST(SplineOrder, TypedAnewAfterAnotherCountOfConditionsCountsTheKnotsAgain)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    ASSERT_TRUE(Set_Order(design, 1, "6"));
    EXPECT_EQ(m().Interior_Knots(1), 4);
    ASSERT_TRUE(Set_No_of_Conditions(design, 1, "9"));
    ASSERT_TRUE(Set_Order(design, 1, "6"));
    EXPECT_EQ(m().Interior_Knots(1), 3);
    EXPECT_EQ(m().Knots(7, 1), 25.0);
}

TEST(SplineOrder, AnotherOneTakesTheMotionAwayAndTheSameOneDoesNot)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    Reach_Size();
    EXPECT_TRUE(Set_Order(design, 1, "6"));
    EXPECT_FALSE(Waits());
    EXPECT_TRUE(Set_Order(design, 1, "5"));
    EXPECT_TRUE(Waits());
}

TEST(SplineKnots, AnotherPlaceTakesTheMotionAwayAndTheSameOneDoesNot)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    Reach_Size();
    EXPECT_TRUE(Set_Knot(design, 1, 2, "35"));
    EXPECT_TRUE(Waits());
    Reach_Size();
    EXPECT_TRUE(Set_Knot(design, 1, 2, "35"));
    EXPECT_FALSE(Waits());
}

TEST(SplineKnots, OneTypedWhereItStoodStaysThereAllTheSame)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    ASSERT_TRUE(Set_Knot(design, 1, 1, "20"));  // even knots stand at 20, 40, 60, 80
    EXPECT_FALSE(m().EvenKnots(1));
    Reach_Size();
    ASSERT_TRUE(Put(design, "EvenKnots", At(1), 1));
    EXPECT_TRUE(Waits());
    ASSERT_TRUE(Put(design, "Knots", At(7, 1), 12.0));
    EXPECT_FALSE(m().EvenKnots(1));
    ASSERT_TRUE(Put(design, "EvenKnots", At(1), 1));
    EXPECT_EQ(m().Knots(7, 1), 20.0);
    EXPECT_FALSE(m().Splines_Calculated(1));
}

TEST(SplineOrder, ByNameLaysTheKnotsAsTheTypedOneDoes)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    ASSERT_TRUE(Set_Knot(design, 1, 1, "11"));
    EXPECT_EQ(Apply_Setting(design, "Orders(1)=7"), "");
    EXPECT_TRUE(m().EvenKnots(1));
    EXPECT_EQ(m().Number_of_Knots(1), 17);
    EXPECT_EQ(m().Interior_Knots(1), 3);
    EXPECT_EQ(m().Knots(8, 1), 25.0);
    EXPECT_EQ(m().Knots(10, 1), 75.0);
    EXPECT_EQ(m().Knots(11, 1), 100.0);
}

TEST(EndConditions, AreThePositionsOfTheRowAndTheStartOfTheNext)
{
    Fresh_Cycle(1.0);
    ASSERT_TRUE(Put(design, "No of segments", 4));
    Segment('P', 90.0, "0", "1", 6);
    ASSERT_TRUE(Put(design, "Rise_Fall_Dwell", At(2), std::string("D")));
    ASSERT_TRUE(Put(design, "Rise_Fall_Dwell", At(3), std::string("F")));
    m().Seg_Done.Fill(true);
    EXPECT_TRUE(Put_Condition(design, 1, 9, 0, "12.5"));
    EXPECT_EQ(m().End_Value(1), "12.5");
    EXPECT_EQ(m().Start_Value(2), "12.5");
    EXPECT_EQ(m().End_Value(2), "12.5") << "a dwell";
    EXPECT_EQ(m().Start_Value(3), "12.5");
    EXPECT_EQ(m().End_Value(3), "");
    EXPECT_FALSE(m().Seg_Done(1) || m().Seg_Done(2) || m().Seg_Done(3));
    EXPECT_TRUE(m().Seg_Done(4));
    EXPECT_EQ(Apply_Setting(design, "S boundary cond(1, 0)=2.5"), "");
    EXPECT_EQ(m().Start_Value(1), "2.5");
    EXPECT_EQ(m().End_Value(1), "12.5");
    // Neither a velocity, nor a position between the ends, nor a condition of a row that has none is a position of it.
    EXPECT_TRUE(Put_Condition(design, 1, 9, 1, "7"));
    EXPECT_TRUE(Put_Condition(design, 1, 4, 0, "8"));
    EXPECT_TRUE(Put_Condition(design, 3, 0, 0, "9"));
    EXPECT_TRUE(Put_Condition(design, 3, 9, 0, "9"));
    EXPECT_EQ(m().Start_Value(1), "2.5");
    EXPECT_EQ(m().End_Value(1), "12.5");
    EXPECT_EQ(m().Start_Value(3), "12.5");
    EXPECT_EQ(m().End_Value(3), "");
}

TEST(NumberOfConditions, ByNameIsAWholeNumberAndSoIsItsText)
{
    Fresh_Cycle(1.0);
    EXPECT_EQ(Apply_Setting(design, "No of conditions(2)=6.4"), "");
    EXPECT_EQ(m().No_Conditions(2), 6);
    EXPECT_EQ(m().No_of_conditions(2), "6");
}

}  // namespace
}  // namespace lobemax
