// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/conditions.h"

#include <gtest/gtest.h>

#include <string>

#include "core/ladder.h"
#include "motion/spline.h"
#include "tests/support/bounds_design.h"

namespace lobemax {
namespace {

using namespace bounds_design;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

const std::string ascending = " Knot values must be in ascending order, left to right.  Please redo.";

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
