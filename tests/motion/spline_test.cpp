// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/spline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "edit/conditions.h"
#include "tests/support/bounds_design.h"

namespace lobemax {
namespace {

using namespace bounds_design;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

constexpr std::array derivative_rows{var::S, var::V, var::A, var::J, var::Ping};

const std::string solver_message =
    "There has been an error in the calculation of the \n"
    "spline data with your choice of knot locations.\n"
    "Please review your data and try again.";

/// Segment 1 of 400 degrees, which no entry gives.
void Segment_beyond_the_Cycle(int conditions)
{
    Segment('S', 100.0, "0", "1", conditions);
    m().Beta_Deg(1) = 400.0;
    m().Beta_Rad(1) = 400.0 / Deg_per_Rad;
    Update_Segment_Angles(design);
}

double Largest(int variable, int last_point)
{
    double largest = 0;
    for (int p = 0; p <= last_point; ++p)
        largest = std::max(largest, std::abs(Data(variable, p)));
    return largest;
}

TEST(SplineOfFullOrder, EqualsThePolynomialWithTheSameConditionsInAllTimeBases)
{
    for (const int base : {1, 2, 3}) {
        std::vector<std::vector<double>> polynomial;
        for (const char kind : {'P', 'S'}) {
            Fresh_Cycle(0.5, base, 7.0);
            Segment(kind, 90.0, "0.5", "2", 6);
            Bound_Text(design, 1, 0, 1) = "0.25";
            Bound_Text(design, 1, 0, 2) = "0";
            Bound_Text(design, 1, 9, 1) = "-1";
            Inner_Condition(3, 50, 0, 1.25);
            Script none;
            ASSERT_TRUE(Calc_Bounds_Segment(design, 1));
            if (kind == 'P') {
                for (const int v : derivative_rows) {
                    std::vector<double>& row = polynomial.emplace_back();
                    for (int p = 0; p <= 180; ++p)
                        row.push_back(Data(v, p));
                }
                continue;
            }
            EXPECT_EQ(m().Orders(1), 6);
            EXPECT_EQ(m().Interior_Knots(1), 0);
            EXPECT_EQ(m().Number_of_Knots(1), 12);
            for (std::size_t d = 0; d < derivative_rows.size(); ++d) {
                const double size = Largest(derivative_rows[d], 180);
                EXPECT_GT(size, 0.0);
                for (int p = 0; p <= 180; ++p) {
                    EXPECT_NEAR(Data(derivative_rows[d], p), polynomial[d][static_cast<std::size_t>(p)], 4e-6 * size)
                        << base << " " << d << " " << p;
                    EXPECT_EQ(Data(var::Angle, p), 0.5 * p);
                }
            }
        }
    }
}

TEST(SplineOfFullOrder, EqualsThe345Law)
{
    Fresh_Cycle(1.0, 1, 3.0);
    Segment('S', 80.0, "0", "1", 6);
    Rest_at_Both_Ends(2);
    ASSERT_TRUE(Calc_Spline(design, 1));
    for (int p = 0; p <= 80; ++p) {
        const double x = p / 80.0;
        EXPECT_NEAR(Data(var::S, p), x * x * x * (10 + x * (-15 + 6 * x)), 1e-6);
    }
    EXPECT_TRUE(m().Splines_Calculated(1));
    EXPECT_EQ(Data(var::S, 80), 1.0);  // the end belongs to the last basis function
    EXPECT_EQ(m().Firstlast(1, 2, 0), 1.0);
    EXPECT_EQ(m().Liftmax, 1.0);
}

TEST(SplineWithEvenKnots, MeetsEveryConditionPerRadian)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Interior_Knots(1), 4);
    EXPECT_EQ(m().Number_of_Knots(1), 16);
    for (int i = 1; i <= 6; ++i) {
        EXPECT_EQ(m().Knots(i, 1), 0.0);
        EXPECT_EQ(m().Knots(10 + i, 1), 100.0);
    }
    for (int i = 7; i <= 10; ++i)
        EXPECT_EQ(m().Knots(i, 1), 20.0 * (i - 6));
    for (int i = 1; i <= 10; ++i) {
        const int variable = derivative_rows[static_cast<std::size_t>(m().Constraints(i, 2))];
        const int point = To_Integer(m().Constraints(i, 1));
        EXPECT_NEAR(Data(variable, point), m().Constraints(i, 3), 2e-6 * std::max(1.0, Largest(variable, 100))) << i;
    }
}

TEST(SplineWithEvenKnots, StoresTheConditionsAsEachTimeBaseTells)
{
    for (const int base : {1, 2, 3}) {
        Fresh_Cycle(1.0, base, 4.0);
        Segment('S', 90.0, "0", "1", 7);
        Bound_Text(design, 1, 9, 1) = "0.5";
        Bound_Text(design, 1, 9, 2) = "-2";
        Bound_Text(design, 1, 9, 3) = "30";
        Bound_Text(design, 1, 9, 4) = "400";
        Inner_Condition(1, 30, 0, 0.5);
        ASSERT_TRUE(Calc_Spline(design, 1));
        const std::array typed{1.0, 0.5, -2.0, 30.0, 400.0};
        for (std::size_t d = 0; d < typed.size(); ++d) {
            double stored = typed[d];
            if (base == 1 && d >= 3)
                stored /= 1000.0;
            if (base == 2 && d >= 1)
                stored *= 3.141592654 / 180.0;
            // The basis is held in 32 bits: its terms cancel down to the value.
            EXPECT_NEAR(Data(derivative_rows[d], 90), stored, 4e-6 * Largest(derivative_rows[d], 90))
                << base << " " << d;
        }
    }
}

TEST(SplineWithEvenKnots, DerivativesMatchNumericOnes)
{
    Fresh_Cycle(0.25);
    Ten_Conditions('S');
    ASSERT_TRUE(Calc_Spline(design, 1));
    const double h = 0.25 / Deg_per_Rad;
    for (std::size_t d = 0; d + 1 < derivative_rows.size(); ++d) {
        const double size = Largest(derivative_rows[d + 1], 400);
        for (int p = 1; p < 400; ++p) {
            if (d == 3 && p % 80 == 0)
                continue;  // ping of order 6 turns at the knots
            const double slope = (Data(derivative_rows[d], p + 1) - Data(derivative_rows[d], p - 1)) / (2 * h);
            EXPECT_NEAR(slope, Data(derivative_rows[d + 1], p), 5e-3 * size) << d << " " << p;
        }
    }
}

TEST(SplineWithEvenKnots, IsContinuousThroughDerivativesUpToOrderMinusTwo)
{
    Fresh_Cycle(0.125);
    Ten_Conditions('S');
    m().Orders(1) = 4;  // cubic pieces: acceleration is continuous, jerk steps at the knots
    ASSERT_TRUE(Calc_Spline(design, 1));
    ASSERT_EQ(m().Interior_Knots(1), 6);
    double largest_step = 0;
    for (int p = 1; p <= 800; ++p) {
        EXPECT_NEAR(Data(var::A, p), Data(var::A, p - 1), 0.02 * Largest(var::A, 800)) << p;
        largest_step = std::max(largest_step, std::abs(Data(var::J, p) - Data(var::J, p - 1)));
        EXPECT_EQ(Data(var::Ping, p), 0.0);  // a derivative of the order of the spline
    }
    EXPECT_GT(largest_step, 0.05 * Largest(var::J, 800));
}

TEST(BSpline, RecursionAgreesWithTheTableOfAllBasisFunctions)
{
    const std::vector<double> knots{0, 0, 0, 0, 0, 1, 2.5, 2.5, 4, 7, 7, 7, 7};  // order 4, 8 functions
    for (double x = 0; x <= 7; x += 0.125) {
        Basis_Values basis;
        New_B_Spline(knots, x, 4, 8, basis);
        double sum = 0;
        for (int i = 1; i <= 8; ++i) {
            const int at = i - basis.first;
            const double expected = at >= 0 && at < 4 ? basis.value[0][static_cast<std::size_t>(at)] : 0.0;
            const double value = B_Spline(knots, x, 4, i, 8);
            EXPECT_NEAR(value, expected, 1e-14) << i << " " << x;
            sum += value;
        }
        EXPECT_NEAR(sum, 1.0, 1e-14);
    }
    EXPECT_EQ(B_Spline(knots, 7.0, 4, 8, 8), 1.0);
    EXPECT_THROW(B_Spline(knots, 1.0, 4, 9, 8), Fault);
}

TEST(BSpline, OfOrderOneIsOneInItsIntervalAndTheLastIntervalIsClosed)
{
    const std::vector<double> knots{0, 0, 1, 2, 3};
    EXPECT_EQ(B_Spline(knots, 1.0, 1, 1, 3), 0.0);
    EXPECT_EQ(B_Spline(knots, 1.0, 1, 2, 3), 1.0);
    EXPECT_EQ(B_Spline(knots, 3.0, 1, 3, 3), 1.0);
    EXPECT_EQ(B_Spline(knots, 3.0, 1, 3, 2), 0.0);  // beyond the last function
    EXPECT_EQ(B_Spline(knots, 2.0, 1, 2, 3), 0.0);
}

TEST(BSpline, WithoutInteriorKnotsHasTheBernsteinPolynomials)
{
    // Order 5 on 0..2: function i is C(4, i - 1) u^(i-1) (1 - u)^(5-i), u = x / 2.
    const std::vector<double> knots{0, 0, 0, 0, 0, 0, 2, 2, 2, 2, 2};
    const std::array binomial{1.0, 4.0, 6.0, 4.0, 1.0};
    for (const double x : {0.0, 0.3, 1.0, 1.9, 2.0}) {
        Basis_Values basis;
        New_B_Spline(knots, x, 5, 5, basis);
        EXPECT_EQ(basis.first, 1);
        const double u = x / 2;
        for (int i = 0; i < 5; ++i) {
            const std::size_t at = static_cast<std::size_t>(i);
            EXPECT_NEAR(basis.value[0][at], binomial[at] * std::pow(u, i) * std::pow(1 - u, 4 - i), 1e-15);
            // The fourth derivative of the Bernstein polynomials: 4! (-1)^i C(4, i) per u^4.
            EXPECT_NEAR(basis.value[4][at], 24 * (i % 2 == 0 ? 1 : -1) * binomial[at] / 16, 1e-12);
        }
    }
}

TEST(BSpline, DerivativesOfTheBasisMatchDifferences)
{
    const std::vector<double> knots{0, 0, 0, 0, 0, 0, 0, 1, 2, 4, 6, 6, 6, 6, 6, 6};  // order 6, 9 functions
    const double h = 1e-5;
    for (const double x : {0.4, 1.3, 3.1, 5.2}) {
        Basis_Values low, at, high;
        New_B_Spline(knots, x - h, 6, 9, low);
        New_B_Spline(knots, x, 6, 9, at);
        New_B_Spline(knots, x + h, 6, 9, high);
        for (std::size_t d = 0; d < 4; ++d)
            for (std::size_t j = 0; j < 6; ++j)
                EXPECT_NEAR((high.value[d][j] - low.value[d][j]) / (2 * h), at.value[d + 1][j], 1e-6);
    }
}

TEST(SplineOrder, AboveTheCountBecomesTheCountOnCalculation)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "3", 2);
    Script none;
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Orders(1), 2);
    for (int p = 0; p <= 90; ++p) {
        EXPECT_NEAR(Data(var::S, p), p / 30.0, 1e-6);
        EXPECT_EQ(Data(var::A, p), 0.0);
    }
    // With more conditions the order goes back to the usual one.
    Rest_at_Both_Ends(3);
    m().No_Conditions(1) = 8;
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Orders(1), 6);
    EXPECT_EQ(m().No_Conditions(1), 8);
    EXPECT_EQ(m().No_of_conditions(1), "8");
}

TEST(SplineKnots, TypedKnotsStayWhileTheyFitAndMoveTheSpline)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    ASSERT_TRUE(Calc_Spline(design, 1));
    const double even = Data(var::S, 10);
    ASSERT_TRUE(Set_Knot(design, 1, 1, "12"));
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Knots(7, 1), 12.0);
    EXPECT_FALSE(m().EvenKnots(1));
    EXPECT_NE(Data(var::S, 10), even);
    EXPECT_NEAR(Data(var::S, 20), 0.1, 1e-6);  // the conditions are met all the same
    // A shorter segment leaves the knot at 80 outside.
    m().Beta_Deg(1) = 75.0;
    m().Beta_Rad(1) = 75.0 / Deg_per_Rad;
    m().T_boundary_cond(1, 4) = "70";
    Update_Segment_Angles(design);
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_TRUE(m().EvenKnots(1));
    EXPECT_EQ(m().Knots(7, 1), 15.0);
    EXPECT_EQ(m().Knots(16, 1), 75.0);
}

TEST(SplineKnots, TwoEqualInteriorKnotsStillSolve)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    ASSERT_TRUE(Set_Knot(design, 1, 2, "60"));  // with the third
    Script none;
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_NEAR(Data(var::S, 40), 0.3, 1e-6);
    EXPECT_NEAR(Data(var::S, 60), 0.75, 1e-6);
}

TEST(SplineKnots, MayBeEqualToBothNeighboursAndStandAtBothEnds)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    Script none;
    ASSERT_TRUE(Set_Knot(design, 1, 2, "20"));  // with the first
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_FALSE(m().EvenKnots(1));
    EXPECT_EQ(m().Knots(8, 1), 20.0);
    EXPECT_NEAR(Data(var::S, 20), 0.1, 1e-6);
    EXPECT_NEAR(Data(var::S, 60), 0.75, 1e-6);
    ASSERT_TRUE(Set_Knot(design, 1, 1, "0"));
    ASSERT_TRUE(Set_Knot(design, 1, 4, "100"));
    ASSERT_TRUE(New_Spline(design, 1));  // what was typed still fits
    EXPECT_FALSE(m().EvenKnots(1));
    EXPECT_EQ(m().Knots(7, 1), 0.0);
    EXPECT_EQ(m().Knots(10, 1), 100.0);
}

void Expect_Refusal(std::deque<Expected_Box> boxes)
{
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            design.results.CalcData(v, p) = v * 1000 + p;
    m().Splines_Calculated(1) = true;
    {
        Script script(std::move(boxes));
        EXPECT_FALSE(Calc_Spline(design, 1));
    }
    EXPECT_FALSE(m().Splines_Calculated(1));
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            ASSERT_EQ(Data(v, p), v * 1000 + p) << v << " " << p;
}

TEST(RefusedSpline, MoreThanSeventeenInteriorKnotsAlsoWhenTheOrderWasNeverTyped)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "1", 24);
    Rest_at_Both_Ends(2);
    for (int row = 1; row <= 8; ++row)
        for (int order = 0; order < (row == 3 || row == 6 ? 3 : 2); ++order)
            Inner_Condition(row, 10.0 * row, order, order == 0 ? row / 9.0 : 0.0);
    ASSERT_EQ((Ask_Boundaries(design, 1), Count_Filled_Boxes(design, 1)), 24);
    Expect_Refusal({Box(knot_limit)});
    EXPECT_EQ(m().Orders(1), 6);
    EXPECT_EQ(m().Interior_Knots(1), 18);
    ASSERT_TRUE(Set_Order(design, 1, "7"));
    EXPECT_TRUE(Calc_Spline(design, 1));
}

TEST(RefusedSpline, FortyConditionsWithMoreKnotsThanTheTableHolds)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "1", 40);
    for (int row = 0; row <= 9; ++row)
        for (int order = 0; order < 4; ++order) {
            if (row >= 1)
                m().T_boundary_cond(1, row) = std::to_string(10 * row);
            Bound_Text(design, 1, row, order) = "0";
        }
    m().Orders(1) = 30;
    Expect_Refusal({Box(knot_limit)});
    m().Orders(1) = 24;  // 64 knots, 16 of them inside
    EXPECT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(m().Number_of_Knots(1), 64);
}

TEST(RefusedSpline, DifferentNumberOfConditions)
{
    Fresh_Cycle(1.0);
    Ten_Conditions('S');
    m().No_Conditions(1) = 9;
    Expect_Refusal({Box("Something wrong - Have input different number of boundary conditions than specified")});
    EXPECT_FALSE(m().Poly_OK);
}

TEST(RefusedSpline, SingularSystemTellsThePivotFirst)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "1", 6);
    Rest_at_Both_Ends(1);
    Inner_Condition(1, 30, 0, 0.2);
    Inner_Condition(2, 30, 0, 0.3);  // the same place twice
    // One of the two fixes the third coefficient, nothing is left for the fourth: the end fixes only the last two.
    Expect_Refusal({Box("There is a zero value on diagonal in column 4"), Box(solver_message)});
}

TEST(RefusedSpline, ConditionOnADerivativeThatTheOrderDoesNotHave)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "0", "1", 5);
    Bound_Text(design, 1, 0, 4) = "1";  // ping of cubic pieces
    Bound_Text(design, 1, 0, 1) = "0";
    Bound_Text(design, 1, 9, 1) = "0";
    m().Orders(1) = 4;
    // The ends fix the first two coefficients and the last two, the row of zeros nothing.
    Expect_Refusal({Box("There is a zero value on diagonal in column 3"), Box(solver_message)});
}

TEST(RefusedSpline, PointBeyondTheCyclePutsTheFormerPointsBack)
{
    Fresh_Cycle(1.0);
    Segment_beyond_the_Cycle(2);
    Expect_Refusal({Error_Box(9, "Index out of bounds", "CalcSplines")});
}

TEST(SplineSegment, StartsAtItsOwnPointAndHasNoBaseShift)
{
    Fresh_Cycle(0.5);
    ASSERT_TRUE(Pick_Motion(design, 1, 'D'));
    ASSERT_TRUE(Put(design, "Beta_Deg", At(1), 45.5));
    ASSERT_TRUE(Put(design, "Start Value", At(1), "5"));
    ASSERT_TRUE(Put(design, "End Value", At(1), "5"));
    m().No_of_segments = 2;
    Pick_Motion(design, 2, 'S');
    m().Beta_Deg(2) = 100.0;
    m().Beta_Rad(2) = 100.0 / Deg_per_Rad;
    m().Start_Value(2) = "5";
    m().End_Value(2) = "7";
    m().Base_Shift(2) = 3.0;
    m().No_Conditions(2) = 6;
    for (const int row : {0, 9})
        for (const int order : {1, 2})
            Bound_Text(design, 2, row, order) = "0";
    Update_Segment_Angles(design);
    ASSERT_TRUE(Calc_Bounds_Segment(design, 2));
    EXPECT_EQ(Data(var::Angle, 91), 45.5);
    EXPECT_EQ(Data(var::S, 91), 5.0);
    EXPECT_NEAR(Data(var::S, 191), 6.0, 1e-6);
    EXPECT_EQ(Data(var::S, 291), 7.0);
    EXPECT_EQ(Data(var::S, 90), 0.0);
    EXPECT_EQ(m().Firstlast(2, 1, 0), 5.0);
    EXPECT_EQ(m().Knots(12, 2), 100.0);
}

TEST(SplineSegment, RowNineWithoutPositionTakesTheLiftFromTheSpline)
{
    Fresh_Cycle(1.0);
    Segment('S', 100.0, "0", "", 4);
    Bound_Text(design, 1, 0, 1) = "0";
    Bound_Text(design, 1, 9, 1) = "0";
    Inner_Condition(1, 50, 0, 1.0);
    ASSERT_TRUE(Calc_Spline(design, 1));  // s = x^2 (6 - 4 x) of x = theta / 100: 2 at the end
    EXPECT_NEAR(Data(var::S, 100), 2.0, 1e-6);
    EXPECT_EQ(m().Lift, Data(var::S, 100));
}

TEST(SplineSegment, OfAForceFunctionIsStoredAsTheForce)
{
    Fresh_Cycle(1.0);
    Segment('S', 90.0, "1", "2", 2);
    m().Motion = false;
    ASSERT_TRUE(Calc_Spline(design, 1));
    EXPECT_EQ(Data(var::Ext_Force, 90), 2.0);
    EXPECT_EQ(design.results.Ext_Force_Table(0), 1.0);
    EXPECT_TRUE(design.flags.Ext_Force_Calc);
}

/// A force function that cannot be stored to its end: its table and whether one counts as calculated are as before.
TEST(ForceFunction, OfASplineThatIsRefusedLeavesTheOneBefore)
{
    for (const bool calculated : {false, true}) {
        Fresh_Cycle(1.0);  // the segment goes on beyond the cycle
        Segment_beyond_the_Cycle(6);
        Rest_at_Both_Ends(2);
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            design.results.Ext_Force_Table(p) = design.results.CalcData(var::Ext_Force, p) = 7000.0 + p;
        design.flags.Ext_Force_Calc = calculated;
        m().Motion = false;
        Script script({Error_Box(9, "Index out of bounds", "CalcSplines")});
        EXPECT_FALSE(Calc_Spline(design, 1));
        EXPECT_EQ(design.flags.Ext_Force_Calc, calculated);
        for (int p = 0; p <= m().Max_Data_Points_used; ++p) {
            ASSERT_EQ(design.results.Ext_Force_Table(p), 7000.0 + p) << p;
            ASSERT_EQ(Data(var::Ext_Force, p), 7000.0 + p) << p;
        }
    }
}

TEST(SplineHelp, TellsTheNumberOfConditions)
{
    Fresh_Cycle(1.0);
    m().No_Conditions(1) = 12;
    EXPECT_EQ(Order_Help(design, 1),
              "Order must be an integer, and should be four or greater for practical cams.\n"
              "Order must also be <= the number of boundary conditions, which for this design is 12. \n"
              "The resulting spline functions will be continuous through derivatives up to order minus 2.\n"
              "Lower orders than the maximum allowed may give better results.\n"
              "Changing the order of the spline will default the interior knots to even spacing.\n"
              "Moving the interior knot locations can make significant improvements in the result.\n"
              "Interior knot locations must be in ascending order from left to right.\n"
              "You must hit 'Enter' or move off a (yellow) text box for your input value to be accepted.");
    EXPECT_EQ(Knot_Help(),
              "To move the interior knot locations you may:\n"
              "   1.  Type the new location of a knot in its yellow box at right of form, or\n"
              "   2.  Select a knot by clicking on the dot to the left of its yellow box,\n"
              "       or select it by 'shift-clicking' near the knot's vertical magenta line on any plot.\n"
              "   3.  Then, clicking on any plot where you want that knot to be will move it there.\n"
              "Note that knots must be in ascending order left to right.");
}

}  // namespace
}  // namespace lobemax
