// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/polynomial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "core/ladder.h"
#include "tests/support/bounds_design.h"

namespace lobemax {
namespace {

using namespace bounds_design;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

constexpr std::array motion_rows{var::Angle, var::S, var::V, var::A, var::J, var::Ping};
constexpr std::array derivative_rows{var::S, var::V, var::A, var::J, var::Ping};

const std::string solver_message =
    " There has been an error in the calculation of your polynomial coefficients"
    " - Check your boundary condition data";
const std::string count_message = "Something wrong - Have input different number of boundary conditions than specified";

/// Segment 1 with a beta in degrees and end positions as typed.
void Polynomial_Segment(double beta, const std::string& start, const std::string& end, int conditions)
{
    ASSERT_TRUE(Pick_Motion(design, 1, 'P'));
    m().Beta_Deg(1) = beta;
    m().Beta_Rad(1) = beta / Deg_per_Rad;
    Update_Segment_Angles(design);
    m().Start_Value(1) = start;
    m().End_Value(1) = end;
    m().No_Conditions(1) = conditions;
    m().No_of_conditions(1) = std::to_string(conditions);
}

/// Zero derivatives of the orders 1..orders at both ends.
void Rest_at_Both_Ends(int Seg, int orders)
{
    for (int order = 1; order <= orders; ++order)
        Bound_Text(design, Seg, 0, order) = Bound_Text(design, Seg, 9, order) = "0";
}

std::vector<std::vector<double>> Rows(int last_point)
{
    std::vector<std::vector<double>> rows;
    for (const int variable : motion_rows) {
        std::vector<double>& row = rows.emplace_back();
        for (int p = 0; p <= last_point; ++p)
            row.push_back(Data(variable, p));
    }
    return rows;
}

/// Compares rows as Singles of the size of each row's largest value.
void Expect_Equal_Rows(const std::vector<std::vector<double>>& a, const std::vector<std::vector<double>>& b)
{
    constexpr double few_units = 4 * 0x1p-24 * 2;
    for (std::size_t v = 0; v < a.size(); ++v) {
        double largest = 0;
        double worst = 0;
        for (std::size_t p = 0; p < a[v].size(); ++p) {
            largest = std::max(largest, std::abs(a[v][p]));
            worst = std::max(worst, std::abs(a[v][p] - b[v][p]));
        }
        EXPECT_LE(worst, few_units * largest) << "variable " << motion_rows[v];
    }
}

std::vector<std::vector<double>> Law_Rows(const char* code, double L, double beta, double step, int base, double omega)
{
    Fresh_Cycle(step, base, omega);
    Pick_Motion(design, 1, 'R');
    EXPECT_TRUE(Pick_Program(design, 1, code));
    m().Beta_Deg(1) = beta;
    m().Beta_Rad(1) = beta / Deg_per_Rad;
    Update_Segment_Angles(design);
    m().Lift = m().Total_Displacement(1) = L;
    EXPECT_TRUE(Run_Motion_Program(design, 1));
    return Rows(To_Integer(beta / step));
}

TEST(PolynomialByConditions, EqualsThe345LawInAllTimeBases)
{
    for (const int base : {1, 2, 3}) {
        const auto law = Law_Rows("45", 1.5, 75.0, 0.25, base, 12.5);
        Fresh_Cycle(0.25, base, 12.5);
        Polynomial_Segment(75.0, "0", "1.5", 6);
        Rest_at_Both_Ends(1, 2);
        Script none;
        ASSERT_TRUE(Calc_Polynomial(design, 1)) << base;
        Expect_Equal_Rows(law, Rows(300));
        EXPECT_TRUE(m().Polydone(1));
        EXPECT_TRUE(m().Poly_OK);
    }
}

TEST(PolynomialByConditions, EqualsThe4567LawInAllTimeBases)
{
    for (const int base : {1, 2, 3}) {
        const auto law = Law_Rows("67", 2.0, 120.0, 0.5, base, 3.0);
        Fresh_Cycle(0.5, base, 3.0);
        Polynomial_Segment(120.0, "0", "2", 8);
        Rest_at_Both_Ends(1, 3);
        Script none;
        ASSERT_TRUE(Calc_Polynomial(design, 1)) << base;
        Expect_Equal_Rows(law, Rows(240));
    }
}

TEST(PolynomialByConditions, FallEqualsTheMirroredLawExceptForTheSignOfPing)
{
    Fresh_Cycle(1.0);
    Pick_Motion(design, 1, 'F');
    ASSERT_TRUE(Pick_Program(design, 1, "45"));
    m().Beta_Deg(1) = 90.0;
    m().Beta_Rad(1) = 90.0 / Deg_per_Rad;
    Update_Segment_Angles(design);
    m().Lift = 1.0;
    ASSERT_TRUE(Run_Motion_Program(design, 1));
    auto law = Rows(90);
    for (double& ping : law.back())
        ping = -ping;  // the law keeps the rise's sign, the polynomial is the true derivative

    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "1", "0", 6);
    Rest_at_Both_Ends(1, 2);
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    Expect_Equal_Rows(law, Rows(90));
}

TEST(PolynomialByConditions, DerivativeConditionsAreMetInTheSecondsAndRadiansBaseAndTakeOneFactorInTheDegreesBase)
{
    // Row 9 asks for 0.5, -2, 3 and 40: what is stored there depends on the time base alone.
    const std::array typed{1.0, 0.5, -2.0, 3.0, 40.0};
    for (const int base : {1, 2, 3}) {
        Fresh_Cycle(1.0, base, 2.0);
        Polynomial_Segment(80.0, "0", "1", 6);
        Bound_Text(design, 1, 9, 1) = "0.5";
        Bound_Text(design, 1, 9, 2) = "-2";
        Bound_Text(design, 1, 9, 3) = "3";
        Bound_Text(design, 1, 9, 4) = "40";
        ASSERT_TRUE(Calc_Polynomial(design, 1));
        for (std::size_t d = 0; d < typed.size(); ++d) {
            double stored = typed[d];
            if (base == 1 && d >= 3)
                stored /= 1000.0;
            if (base == 2 && d >= 1)
                stored *= 3.141592654 / 180.0;
            EXPECT_NEAR(Data(derivative_rows[d], 80), stored, 1e-5 * std::abs(stored)) << base << " " << d;
        }
    }
}

TEST(PolynomialByConditions, DerivativesMatchNumericOnesPerRadian)
{
    Fresh_Cycle(0.5);
    Polynomial_Segment(100.0, "0.25", "1", 8);
    Rest_at_Both_Ends(1, 2);
    m().T_boundary_cond(1, 3) = "40";
    Bound_Text(design, 1, 3, 0) = "0.9";
    m().T_boundary_cond(1, 5) = "70";
    Bound_Text(design, 1, 5, 1) = "0.1";
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    const double h = 0.5 / Deg_per_Rad;
    for (std::size_t d = 0; d + 1 < derivative_rows.size(); ++d) {
        double largest = 0;
        for (int p = 0; p <= 200; ++p)
            largest = std::max(largest, std::abs(Data(derivative_rows[d + 1], p)));
        for (int p = 1; p < 200; ++p) {
            const double slope = (Data(derivative_rows[d], p + 1) - Data(derivative_rows[d], p - 1)) / (2 * h);
            EXPECT_NEAR(slope, Data(derivative_rows[d + 1], p), 2e-3 * largest) << d << " " << p;
        }
    }
    EXPECT_NEAR(Data(var::S, 80), 0.9, 1e-6);
    EXPECT_NEAR(Data(var::V, 140), 0.1, 1e-6);
}

TEST(PolynomialByConditions, TwoConditionsMakeAStraightLine)
{
    EXPECT_EQ(Bound_Element(0, 0, 0.0), 1.0);
    EXPECT_EQ(Bound_Element(0, 1, 0.0), 0.0);
    EXPECT_EQ(Bound_Element(0, 0, 1.0), 1.0);
    EXPECT_EQ(Bound_Element(0, 1, 1.0), 1.0);
    Fresh_Cycle(1.0);
    Polynomial_Segment(64.0, "0", "1", 0);  // no count asked for: two
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(m().No_Conditions(1), 2);
    EXPECT_EQ(m().No_of_conditions(1), "2");
    EXPECT_EQ(m().Total_No_of_BCs(1), 2);
    EXPECT_EQ(m().Coefficient(1, 1), 0.0);
    EXPECT_EQ(m().Coefficient(2, 1), 1.0);
    EXPECT_EQ(m().Power(2, 1), 1.0);
    for (int p = 0; p <= 64; ++p)
        EXPECT_EQ(Data(var::S, p), p / 64.0);
    EXPECT_EQ(m().Liftmax, 1.0);  // points without a segment are at 0
    EXPECT_EQ(m().Firstlast(1, 2, 0), 1.0);
}

TEST(BoundElement, FollowsThePowerRule)
{
    EXPECT_EQ(Bound_Element(3, 2, 0.5), 0.0);
    EXPECT_EQ(Bound_Element(2, 2, 0.0), 2.0);
    EXPECT_EQ(Bound_Element(2, 5, 0.5), 20 * 0.125);
    EXPECT_EQ(Bound_Element(4, 6, 0.5), 360 * 0.25);
    EXPECT_EQ(Bound_Element(1, 2, 0.0), 0.0);
}

TEST(BoundScaling, DividesByThePowersOfTheShaftSpeedInTheSecondsBase)
{
    Fresh_Cycle(1.0, 1, 2.0);
    Polynomial_Segment(57.0, "0", "1", 3);
    m().Beta_Rad(1) = 1.0;
    Bound_Text(design, 1, 0, 1) = "1";
    ASSERT_TRUE((Ask_Boundaries(design, 1), Read_Bounds(design, 1)));
    EXPECT_EQ(m().BC(2, 1), 0.5);
    EXPECT_EQ(m().Boundary(2, 1), 1.0);  // as typed
    EXPECT_EQ(m().Eq(2, 1), 1.0);
    EXPECT_EQ(m().Theta_Normalized(2, 1), 0.0);
}

TEST(BoundScaling, MultipliesByThePowersOfBetaInTheDegreesAndRadiansBase)
{
    for (const int base : {2, 3}) {
        Fresh_Cycle(1.0, base, 2.0);
        Polynomial_Segment(90.0, "0", "1", 3);
        m().Beta_Rad(1) = 2.0;
        m().T_boundary_cond(1, 4) = "45";
        Bound_Text(design, 1, 4, 3) = "5";
        ASSERT_TRUE((Ask_Boundaries(design, 1), Read_Bounds(design, 1)));
        EXPECT_EQ(m().BC(3, 1), 40.0);
        EXPECT_EQ(m().Boundary(3, 1), 5.0);
        EXPECT_EQ(m().Theta_Normalized(3, 1), 0.5);
        EXPECT_EQ(m().Constraints(3, 1), 45.0);
        EXPECT_EQ(m().Constraints(3, 2), 3.0);
        EXPECT_EQ(m().Constraints(3, 3), 5.0);
    }
}

TEST(ReadBounds, TakesRowZeroThenRowNineThenTheRowsBetween)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(100.0, "1", "2", 5);
    m().T_boundary_cond(1, 1) = "25";
    Bound_Text(design, 1, 1, 0) = "3";
    Bound_Text(design, 1, 0, 4) = "4";
    Bound_Text(design, 1, 9, 2) = "5";
    ASSERT_TRUE((Ask_Boundaries(design, 1), Read_Bounds(design, 1)));
    const std::array values{1.0, 4.0, 2.0, 5.0, 3.0};
    const std::array orders{0.0, 4.0, 0.0, 2.0, 0.0};
    const std::array places{0.0, 0.0, 1.0, 1.0, 0.25};
    for (int k = 1; k <= 5; ++k) {
        const std::size_t at = static_cast<std::size_t>(k - 1);
        EXPECT_EQ(m().Boundary(k, 1), values[at]);
        EXPECT_EQ(m().Eq(k, 1), orders[at]);
        EXPECT_EQ(m().Theta_Normalized(k, 1), places[at]);
        EXPECT_EQ(m().Power(k, 1), k - 1);
    }
    EXPECT_EQ(m().Lift, 3.0);  // raised to the largest S
    EXPECT_FALSE(m().Poly_Lift_Fix);
}

TEST(ReadBounds, ReadsNumbersInTheFormatInForce)
{
    Fresh_Cycle(1.0);
    design.identity.Number_Format = "Europe";
    Polynomial_Segment(90.0, "0,5", "1,5", 2);
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(m().Boundary(1, 1), 0.5);
    EXPECT_EQ(Data(var::S, 90), 1.5);
}

TEST(ReadBounds, AnEmptyValueBoxOrARowWithoutAngleCountsNothing)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 2);
    Ask_Boundaries(design, 1);
    m().T_boundary_cond(1, 2) = "30";   // no value
    Bound_Text(design, 1, 3, 0) = "7";  // no angle
    Bound_Text(design, 1, 3, 1) = "7";
    EXPECT_EQ(Count_Filled_Boxes(design, 1), 2);
    EXPECT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(Data(var::S, 45), 0.5);
}

TEST(ReadBounds, WithRowNineEmptyTheLiftIsTheEndThatThePolynomialFinds)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(100.0, "0", "", 3);
    m().T_boundary_cond(1, 1) = "50";
    Bound_Text(design, 1, 1, 0) = "1";
    Bound_Text(design, 1, 0, 1) = "0";
    m().Lift = 10.0;
    ASSERT_TRUE(Calc_Polynomial(design, 1));  // S = 4 x^2
    EXPECT_TRUE(m().Poly_Lift_Fix);
    EXPECT_NEAR(Data(var::S, 100), 4.0, 1e-6);
    EXPECT_EQ(m().Lift, Data(var::S, 100));
}

TEST(ReadBounds, StartAndEndPositionsAreRefreshedOnEachCalculation)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 2);
    m().S_boundary_cond(1, 9) = "99";
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(m().S_boundary_cond(1, 9), "1");
    m().End_Value(1) = "3";
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(Data(var::S, 90), 3.0);
    m().Base_Shift(1) = 5.0;  // left by another kind of motion
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(Data(var::S, 90), 3.0);
}

/// Stores a pattern in all points of the segment, to see that a refusal leaves it alone.
void Expect_Refusal(std::deque<Expected_Box> boxes)
{
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            design.results.CalcData(v, p) = v * 1000 + p;
    m().Firstlast(1, 2, 0) = 77.0;
    {
        Script script(std::move(boxes));
        EXPECT_FALSE(Calc_Polynomial(design, 1));
    }
    EXPECT_FALSE(m().Poly_OK);
    EXPECT_FALSE(m().Polydone(1));
    EXPECT_EQ(m().Firstlast(1, 2, 0), 77.0);
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            ASSERT_EQ(Data(v, p), v * 1000 + p) << v << " " << p;
}

TEST(RefusedPolynomial, DifferentNumberOfConditions)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 5);
    Rest_at_Both_Ends(1, 2);
    Expect_Refusal({Box(count_message)});
    m().No_Conditions(1) = 7;
    Expect_Refusal({Box(count_message)});
}

TEST(RefusedPolynomial, MoreBoxesThanThereAreConditions)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "1", "1", 40);
    for (int row = 0; row <= 9; ++row) {
        if (row >= 1)
            m().T_boundary_cond(1, row) = std::to_string(10 * row);
        for (int order = 0; order <= 4; ++order)
            Bound_Text(design, 1, row, order) = "1";
    }
    EXPECT_EQ(Count_Filled_Boxes(design, 1), 50);
    Expect_Refusal({Box(count_message)});
}

TEST(RefusedPolynomial, CountOutsideItsLimits)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 50);
    Expect_Refusal({Box("Number of boundary conditions must be between 2 and 40 - please re-enter")});
}

TEST(RefusedPolynomial, SingularTableTellsThePivotFirst)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 3);
    m().T_boundary_cond(1, 1) = "90";  // S at the end a second time
    Bound_Text(design, 1, 1, 0) = "2";
    Expect_Refusal({Box("There is a zero value on diagonal in column 3"), Box(solver_message)});
    // No S anywhere: nothing fixes the constant term.
    m().Start_Value(1) = m().End_Value(1) = "";
    m().T_boundary_cond(1, 1) = "";
    m().No_Conditions(1) = 2;
    Bound_Text(design, 1, 0, 1) = Bound_Text(design, 1, 9, 1) = "1";
    Expect_Refusal({Box("There is a zero value on diagonal in column 1"), Box(solver_message)});
}

TEST(RefusedPolynomial, TableThatLeavesNoDigits)
{
    // Positions 0, 1, 0, 1 within 0.0003 degrees: terms of the size of (90 / 0.0001)^3 cancel down to 1.
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 5);
    for (int row = 1; row <= 3; ++row) {
        m().T_boundary_cond(1, row) = Shortest(90.0 - 0.0001 * row);
        Bound_Text(design, 1, row, 0) = row % 2 == 1 ? "0" : "1";
    }
    Expect_Refusal({Box(solver_message)});
}

/// Ten rows of S, V, A and J: 40 conditions on a segment of one radian, so that typed derivatives are those of x.
template <class Value>
void Forty_Conditions(Value&& value)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, Shortest(value(0, 0.0)), Shortest(value(0, 1.0)), 40);
    m().Beta_Rad(1) = 1.0;
    for (int row = 0; row <= 9; ++row) {
        if (row >= 1)
            m().T_boundary_cond(1, row) = std::to_string(10 * row);
        for (int order = 0; order <= 3; ++order)
            Bound_Text(design, 1, row, order) = Shortest(value(order, row / 9.0));
    }
}

TEST(RefusedPolynomial, FortyConditionsThatNoDoublesCanMeet)
{
    // Ten stops, in turn at 0 and 1.
    Forty_Conditions([](int order, double x) { return order == 0 ? std::fmod(std::round(9 * x), 2.0) : 0.0; });
    Expect_Refusal({Box(solver_message)});
}

TEST(RefusedPolynomial, ZeroBeta)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(0.0, "0", "1", 3);
    m().T_boundary_cond(1, 1) = "0";
    Bound_Text(design, 1, 1, 1) = "2";
    Expect_Refusal({Box("Something wrong - Beta is zero for this segment")});
    m().T_boundary_cond(1, 1) = "";
    m().No_Conditions(1) = 2;
    Expect_Refusal({Error_Box(11, "Division by zero", "CalPoly")});
}

TEST(RefusedPolynomial, PointThatCannotBeStoredPutsTheFormerPointsBack)
{
    Fresh_Cycle(1.0, 1, 1e10);  // the fourth power of this speed leaves the range of ping halfway
    Polynomial_Segment(90.0, "0", "1", 6);
    Rest_at_Both_Ends(1, 2);
    Expect_Refusal({Error_Box(6, "Overflow", "CalPoly")});
    Fresh_Cycle(1.0);
    Polynomial_Segment(400.0, "0", "1", 2);  // beyond the cycle
    Expect_Refusal({Error_Box(9, "Index out of bounds", "CalPoly")});
}

TEST(RefusedPolynomial, ConditionsThatWereNeverRead)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "1", 4);
    Script box({Box("Something is wrong - no. of boundary conditions doesn't match no. of equations ")});
    m().Poly_OK = true;
    EXPECT_FALSE(CalPoly(design, 1));
    EXPECT_FALSE(m().Poly_OK);
}

TEST(FortyConditions, AreSolvedWhereTheTableAllowsIt)
{
    // The cubic x^2 (3 - 2 x) meets all of them, and is the only polynomial of degree 39 that does.
    Forty_Conditions([](int order, double x) {
        const std::array derivatives{x * x * (3 - 2 * x), 6 * x * (1 - x), 6 - 12 * x, -12.0};
        return derivatives[static_cast<std::size_t>(order)];
    });
    Script none;
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(m().Total_No_of_BCs(1), 40);
    for (int p = 0; p <= 90; ++p) {
        const double x = p / 90.0;
        EXPECT_NEAR(Data(var::S, p), x * x * (3 - 2 * x), 0.001) << p;
    }
}

TEST(TwentySegments, EachKeepsItsOwnPolynomial)
{
    Fresh_Cycle(0.5);
    m().No_of_segments = 20;
    for (int i = 1; i <= 20; ++i) {
        ASSERT_TRUE(Pick_Motion(design, i, 'P'));
        m().Beta_Deg(i) = 18.0;
        m().Beta_Rad(i) = 18.0 / Deg_per_Rad;
        m().Start_Value(i) = std::to_string(i - 1);
        m().End_Value(i) = std::to_string(i);
        m().No_Conditions(i) = 6;
        Rest_at_Both_Ends(i, 2);
    }
    Update_Segment_Angles(design);
    for (int i = 20; i >= 1; --i)
        ASSERT_TRUE(Calc_Bounds_Segment(design, i)) << i;
    for (int i = 1; i <= 20; ++i) {
        EXPECT_NEAR(Data(var::S, 36 * i - 18), i - 0.5, 1e-5);
        EXPECT_NEAR(Data(var::S, 36 * i), i, 1e-5);
        EXPECT_EQ(m().Coefficient(1, i), i - 1);
        EXPECT_TRUE(m().Polydone(i));
    }
}

TEST(SegmentByConditions, OfAnotherProgramIsCorrupted)
{
    Fresh_Cycle(1.0);
    Pick_Motion(design, 1, 'R');
    ASSERT_TRUE(Pick_Program(design, 1, "45"));
    m().Poly_OK = true;
    Script box({Box("Something is wrong - Data are corrupted")});
    EXPECT_FALSE(Calc_Bounds_Segment(design, 1));
    EXPECT_FALSE(m().Poly_OK);
    EXPECT_THROW(Calc_Bounds_Segment(design, 21), Fault);
}

TEST(ForceFunction, OfAPolynomialIsStored)
{
    Fresh_Cycle(1.0);
    Polynomial_Segment(90.0, "0", "9", 2);
    m().Motion = false;
    ASSERT_TRUE(Calc_Polynomial(design, 1));
    EXPECT_EQ(Data(var::Ext_Force, 90), 9.0);
    EXPECT_TRUE(design.flags.Ext_Force_Calc);
}

/// A force function that cannot be stored to its end: its table and whether one counts as calculated are as before.
TEST(ForceFunction, OfAPolynomialThatIsRefusedLeavesTheOneBefore)
{
    for (const bool calculated : {false, true}) {
        Fresh_Cycle(1.0);  // the segment goes on beyond the cycle
        Polynomial_Segment(400.0, "0", "1", 2);
        for (int p = 0; p <= m().Max_Data_Points_used; ++p)
            design.results.Ext_Force_Table(p) = design.results.CalcData(var::Ext_Force, p) = 7000.0 + p;
        design.flags.Ext_Force_Calc = calculated;
        m().Motion = false;
        Script script({Error_Box(9, "Index out of bounds", "CalPoly")});
        EXPECT_FALSE(Calc_Polynomial(design, 1));
        EXPECT_EQ(design.flags.Ext_Force_Calc, calculated);
        for (int p = 0; p <= m().Max_Data_Points_used; ++p) {
            ASSERT_EQ(design.results.Ext_Force_Table(p), 7000.0 + p) << p;
            ASSERT_EQ(Data(var::Ext_Force, p), 7000.0 + p) << p;
        }
    }
}

}  // namespace
}  // namespace lobemax
