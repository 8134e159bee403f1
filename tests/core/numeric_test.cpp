// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/numeric.h"

#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/lanes.h"
#include "core/messages.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double true_pi = std::acos(-1.0);  // to judge results by; the program's own pi differs in the tenth digit

/// The number of the fault that work throws, 0 when it throws none.
template <class Work>
int Fault_Of(Work&& work)
{
    try {
        work();
    } catch (const Fault& fault) {
        return fault.Number();
    }
    return 0;
}

/// A fresh design, and every message that is shown; one that a test does not take fails it.
class Numeric : public testing::Test {
protected:
    Numeric()
    {
        design.flags = {};
        Host host;
        host.messenger = [this](const Message& box) {
            boxes_.push_back(box);
            return Answer::OK;
        };
        before_ = Install_Host(std::move(host));
    }
    ~Numeric() override
    {
        Install_Host(std::move(before_));
        for (const Message& box : boxes_)
            ADD_FAILURE() << "unexpected box: " << box.text;
        design.flags = {};
    }

    /// The only box so far has this text and symbol and an OK button.
    void Expect_Box(const std::string& text, Symbol symbol)
    {
        ASSERT_EQ(boxes_.size(), 1U);
        EXPECT_EQ(boxes_[0].text, text);
        EXPECT_EQ(boxes_[0].symbol, symbol);
        EXPECT_EQ(boxes_[0].buttons, Buttons::OK);
        boxes_.clear();
    }

private:
    std::vector<Message> boxes_;
    Host before_;
};

using Numeric_Inverse_Functions = Numeric;
using Numeric_Triangle = Numeric;
using Numeric_Polar = Numeric;
using Numeric_Remainder = Numeric;
using Numeric_Linear_System = Numeric;
using Numeric_Rounding = Numeric;
using Numeric_Extremes_of_an_Array = Numeric;
using Numeric_Mean_Value = Numeric;
using Numeric_Moved_Point = Numeric;

// ---- FNArcCos, FNArcSin

TEST_F(Numeric_Inverse_Functions, arc_cosine_at_both_ends_of_its_range_gives_one_on_purpose)
{
    EXPECT_EQ(FNArcCos(design, 1.0), 1.0);
    EXPECT_EQ(FNArcCos(design, -1.0), 1.0);
    EXPECT_FALSE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, arc_sine_at_both_ends_of_its_range_gives_zero_on_purpose)
{
    EXPECT_EQ(FNArcSin(design, 1.0), 0.0);
    EXPECT_EQ(FNArcSin(design, -1.0), 0.0);
    EXPECT_FALSE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, arc_cosine_outside_its_range_sets_Math_Error_without_a_message)
{
    EXPECT_EQ(FNArcCos(design, 1.5), 0.0);
    EXPECT_TRUE(design.flags.Math_Error);
    design.flags.Math_Error = false;
    EXPECT_EQ(FNArcCos(design, -1.000001), 0.0);
    EXPECT_TRUE(design.flags.Math_Error);
    design.flags.Math_Error = false;
    EXPECT_EQ(FNArcCos(design, std::numeric_limits<double>::infinity()), 0.0);
    EXPECT_TRUE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, arc_sine_outside_its_range_sets_Math_Error_without_a_message)
{
    EXPECT_EQ(FNArcSin(design, 1.5), 0.0);
    EXPECT_TRUE(design.flags.Math_Error);
    design.flags.Math_Error = false;
    EXPECT_EQ(FNArcSin(design, -1.5), 0.0);
    EXPECT_TRUE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, a_good_argument_does_not_clear_Math_Error)
{
    FNArcCos(design, 2.0);
    FNArcCos(design, 0.5);
    FNArcSin(design, 0.5);
    FNArcCos(design, 1.0);
    EXPECT_TRUE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, arc_cosine_of_zero_is_half_of_the_program_s_own_pi)
{
    EXPECT_EQ(FNArcCos(design, 0.0), 3.141592654 / 2.0);
}

TEST_F(Numeric_Inverse_Functions, arc_cosine_inverts_the_cosine)
{
    // The program's pi/2 is 2.05e-10 above the true one.
    for (double angle = 0.01; angle < 3.13; angle += 0.01)
        EXPECT_NEAR(FNArcCos(design, std::cos(angle)), angle, 3e-10) << angle;
}

TEST_F(Numeric_Inverse_Functions, arc_sine_inverts_the_sine)
{
    for (double angle = -1.56; angle < 1.56; angle += 0.01)
        EXPECT_NEAR(FNArcSin(design, std::sin(angle)), angle, 1e-12) << angle;
}

TEST_F(Numeric_Inverse_Functions, Arc_Cos_is_the_same_routine)
{
    EXPECT_EQ(Arc_Cos(design, -1.0), 1.0);
    EXPECT_EQ(Arc_Cos(design, 0.25), FNArcCos(design, 0.25));
}

TEST_F(Numeric_Inverse_Functions, arc_cosine_of_a_not_a_number_says_so)
{
    EXPECT_EQ(FNArcCos(design, not_a_number), 0.0);
    Expect_Box("Something wrong - cannot take ArcCos of NaN", Symbol::none);
    EXPECT_FALSE(design.flags.Math_Error);
}

TEST_F(Numeric_Inverse_Functions, arc_sine_of_a_not_a_number_says_so)
{
    EXPECT_EQ(FNArcSin(design, not_a_number), 0.0);
    Expect_Box("Something wrong - cannot take ArcSin of NaN", Symbol::none);
    EXPECT_FALSE(design.flags.Math_Error);
}

// ---- law of cosines

TEST_F(Numeric_Triangle, third_side_of_known_triangles)
{
    Single c;
    EXPECT_TRUE(CosineLaw_Side(3.0, 4.0, true_pi / 2.0, c));
    EXPECT_EQ(c, 5.0);
    EXPECT_TRUE(CosineLaw_Side(2.0, 2.0, true_pi / 3.0, c));  // equilateral
    EXPECT_EQ(c, 2.0);
    EXPECT_TRUE(CosineLaw_Side(3.0, 4.0, true_pi, c));  // stretched out
    EXPECT_EQ(c, 7.0);
    EXPECT_TRUE(CosineLaw_Side(3.0, 3.0, 0.0, c));  // folded up
    EXPECT_EQ(c, 0.0);
}

TEST_F(Numeric_Triangle, square_of_the_side_is_held_as_a_Single)
{
    // a is a hair above halfway from 1 to the next Single, 1 + 2^-23, and would round up to it. Its square
    // rounds to 1 + 2^-23 too, the root of which lies below halfway: the side comes out as 1.
    const double a = 1.0 + std::ldexp(1.0, -24) + std::ldexp(1.0, -30);
    ASSERT_GT(Single(a), 1.0);
    Single c;
    EXPECT_TRUE(CosineLaw_Side(a, 0.0, 1.0, c));
    EXPECT_EQ(c, 1.0);
}

TEST_F(Numeric_Triangle, negative_square_of_the_side_is_told_and_leaves_the_side)
{
    // Sides that differ by one part in 1E9, with no angle between them: the square is 1.2E-17, less than what
    // the rounding of its terms takes away, and -3.6E-15 remains.
    const double a = 3.5;
    Single c = 77.0;
    EXPECT_FALSE(CosineLaw_Side(a, a + a * 1e-9, 0.0, c));
    EXPECT_EQ(c, 77.0);
    Expect_Box("Cannot do law of cosines - negative Sqrt argument in Sub CosineLaw_Side; check your data",
               Symbol::exclamation);
}

TEST_F(Numeric_Triangle, side_beyond_a_Single_is_an_overflow)
{
    Single c;
    EXPECT_EQ(Fault_Of([&] { CosineLaw_Side(1e30, 1.0, 1.0, c); }), overflow);
}

TEST_F(Numeric_Triangle, angles_of_known_triangles)
{
    Single A;
    EXPECT_TRUE(CosineLaw_Angle(design, 5.0, 3.0, 4.0, A));
    EXPECT_EQ(A, Single(3.141592654 / 2.0));
    EXPECT_TRUE(CosineLaw_Angle(design, 1.0, 1.0, 1.0, A));
    EXPECT_NEAR(A, true_pi / 3.0, 1e-7);
    EXPECT_TRUE(CosineLaw_Angle(design, 3.0, 5.0, 7.0, A));  // cos A = (25 + 49 - 9) / 70 = 13/14
    EXPECT_NEAR(A, 0.3802512067, 1e-7);
}

TEST_F(Numeric_Triangle, three_angles_add_up_to_pi)
{
    Single A;
    Single B;
    Single C;
    CosineLaw_Angle(design, 2.5, 3.75, 4.0, A);
    CosineLaw_Angle(design, 3.75, 4.0, 2.5, B);
    CosineLaw_Angle(design, 4.0, 2.5, 3.75, C);
    EXPECT_NEAR(A + B + C, true_pi, 3e-7);
}

TEST_F(Numeric_Triangle, side_and_angle_are_inverse)
{
    Single side;
    Single angle;
    CosineLaw_Side(30.0, 50.0, 1.25, side);
    CosineLaw_Angle(design, side, 30.0, 50.0, angle);
    EXPECT_NEAR(angle, 1.25, 1e-6);
}

TEST_F(Numeric_Triangle, zero_denominator_is_told_in_words_about_a_negative_number)
{
    Single A = 77.0;
    EXPECT_FALSE(CosineLaw_Angle(design, 3.0, 0.0, 4.0, A));
    EXPECT_EQ(A, 77.0);
    Expect_Box("Are trying to divide by negative number in Sub CosineLaw_Angle; check your data", Symbol::exclamation);
}

TEST_F(Numeric_Triangle, denominator_that_vanishes_as_a_Single_is_zero_too)
{
    Single A = 77.0;
    EXPECT_FALSE(CosineLaw_Angle(design, 0.0, 1e-25, 1e-25, A));  // 2E-50 is below the smallest Single
    EXPECT_EQ(A, 77.0);
    Expect_Box("Are trying to divide by negative number in Sub CosineLaw_Angle; check your data", Symbol::exclamation);
}

TEST_F(Numeric_Triangle, negative_denominator_is_divided_by_in_silence)
{
    Single A;
    EXPECT_TRUE(CosineLaw_Angle(design, 1.0, -1.0, 1.0, A));  // cos A = 1 / -2
    EXPECT_NEAR(A, 2.0 * true_pi / 3.0, 1e-7);
}

TEST_F(Numeric_Triangle, sides_that_close_no_triangle_set_Math_Error)
{
    Single A = 77.0;
    EXPECT_TRUE(CosineLaw_Angle(design, 10.0, 1.0, 1.0, A));
    EXPECT_TRUE(design.flags.Math_Error);
    EXPECT_EQ(A, 0.0);
}

TEST_F(Numeric_Triangle, flat_triangle_gives_the_one_of_the_arc_cosine)
{
    Single A;
    EXPECT_TRUE(CosineLaw_Angle(design, 2.0, 1.0, 1.0, A));  // 180 degrees by geometry
    EXPECT_EQ(A, 1.0);
    EXPECT_FALSE(design.flags.Math_Error);
}

// ---- Atan2, Cart_to_Polar

TEST_F(Numeric_Polar, axes_have_the_program_s_own_values)
{
    EXPECT_EQ(Atan2(0.0, 2.0), 1.570796327);
    EXPECT_EQ(Atan2(0.0, -2.0), -1.570796327);
    EXPECT_EQ(Atan2(-0.0, 2.0), 1.570796327);
    EXPECT_EQ(Atan2(0.0, 0.0), 0.0);
    EXPECT_EQ(Atan2(1.0, 0.0), 0.0);
    EXPECT_EQ(Atan2(-1.0, 0.0), 3.141592654);
}

TEST_F(Numeric_Polar, third_quadrant_lies_above_pi_not_below_zero)
{
    EXPECT_GT(Atan2(-1.0, -1.0), 3.141592654);
    EXPECT_NEAR(Atan2(-1.0, -1.0), 5.0 * true_pi / 4.0, 1e-9);
}

TEST_F(Numeric_Polar, angle_runs_from_minus_a_quarter_turn_to_three_quarters_around_the_circle)
{
    for (int step = -899; step < 2700; ++step) {  // tenths of a degree
        const double angle = step * true_pi / 1800.0;
        // 4.1E-10 is what the program's pi adds in the two quadrants on the left.
        EXPECT_NEAR(Atan2(3.0 * std::cos(angle), 3.0 * std::sin(angle)), angle, 5e-10) << step;
        EXPECT_NEAR(Atan2D(0.25 * std::cos(angle), 0.25 * std::sin(angle)), step / 10.0, 3e-8) << step;
    }
}

TEST_F(Numeric_Polar, angle_jumps_by_a_turn_at_the_negative_y_axis)
{
    EXPECT_NEAR(Atan2(1e-9, -1.0), -true_pi / 2.0, 1e-8);
    EXPECT_NEAR(Atan2(-1e-9, -1.0), 3.0 * true_pi / 2.0, 1e-8);
}

TEST_F(Numeric_Polar, degrees_are_the_radians_times_the_program_s_factor)
{
    EXPECT_EQ(Atan2D(-1.0, 0.0), 3.141592654 * 57.29577950560105);
    EXPECT_NEAR(Atan2D(1.0, 1.0), 45.0, 1e-7);
    EXPECT_NEAR(Atan2D(-1.0, -1.0), 225.0, 1e-7);
}

TEST_F(Numeric_Polar, radius_and_angle_of_known_points)
{
    Single radius;
    Single angle;
    Cart_to_Polar(3.0, 4.0, radius, angle);
    EXPECT_EQ(radius, 5.0);
    EXPECT_NEAR(angle, 53.13010235, 1e-5);
    Cart_to_Polar(-1.0, -1.0, radius, angle);
    EXPECT_NEAR(radius, std::sqrt(2.0), 1e-7);
    EXPECT_NEAR(angle, 225.0, 1e-5);
}

TEST_F(Numeric_Polar, points_of_the_y_axis_and_the_origin)
{
    Single radius;
    Single angle;
    Cart_to_Polar(0.0, 2.0, radius, angle);
    EXPECT_EQ(radius, 2.0);
    EXPECT_EQ(angle, Single(1.570796327 * 57.29577950560105));
    Cart_to_Polar(0.0, -2.0, radius, angle);
    EXPECT_EQ(radius, 2.0);
    EXPECT_EQ(angle, Single(-1.570796327 * 57.29577950560105));
    Cart_to_Polar(0.0, 0.0, radius, angle);
    EXPECT_EQ(radius, 0.0);
    EXPECT_EQ(angle, 0.0);
}

TEST_F(Numeric_Polar, point_may_be_replaced_by_its_polar_coordinates)
{
    Single a = -4.0;
    Single b = 3.0;
    Cart_to_Polar(a, b, a, b);
    EXPECT_EQ(a, 5.0);
    EXPECT_NEAR(b, 143.1301024, 2e-5);
}

TEST_F(Numeric_Polar, radius_beyond_a_Single_is_an_overflow)
{
    Single radius;
    Single angle;
    EXPECT_EQ(Fault_Of([&] { Cart_to_Polar(1e60, 0.0, radius, angle); }), overflow);
}

// ---- FN_Modulo, Modulo

TEST_F(Numeric_Remainder, floored_remainder_has_the_sign_of_the_base)
{
    EXPECT_NEAR(FN_Modulo(370.0, 360.0), 10.0, 1e-5);
    EXPECT_NEAR(FN_Modulo(-10.0, 360.0), 350.0, 1e-5);
    EXPECT_NEAR(FN_Modulo(-370.0, 360.0), 350.0, 1e-4);
    EXPECT_NEAR(FN_Modulo(10.0, -360.0), -350.0, 1e-4);
    EXPECT_EQ(FN_Modulo(720.0, 360.0), 0.0);
    EXPECT_EQ(FN_Modulo(90.0, 360.0), 90.0);
}

TEST_F(Numeric_Remainder, value_and_floored_remainder_differ_by_whole_bases)
{
    for (int a = -2000; a <= 2000; a += 7) {
        const int expected = ((a % 360) + 360) % 360;
        EXPECT_NEAR(FN_Modulo(a, 360.0), expected, 1e-4) << a;
    }
}

TEST_F(Numeric_Remainder, value_a_hair_below_a_whole_number_of_bases_may_give_the_base_itself)
{
    EXPECT_EQ(FN_Modulo(-1e-20, 360.0), 360.0);
}

TEST_F(Numeric_Remainder, base_zero_is_a_division_by_zero_and_of_zero_an_overflow)
{
    EXPECT_EQ(Fault_Of([] { FN_Modulo(5.0, 0.0); }), division_by_zero);
    EXPECT_EQ(Fault_Of([] { FN_Modulo(0.0, 0.0); }), overflow);
}

double Wrapped(double value, double base)
{
    Single result;
    Modulo(value, base, result);
    return result;
}

TEST_F(Numeric_Remainder, Modulo_wraps_a_single_turn_only)
{
    EXPECT_EQ(Wrapped(370.0, 360.0), 10.0);
    EXPECT_EQ(Wrapped(740.0, 360.0), 380.0);
}

TEST_F(Numeric_Remainder, Modulo_leaves_what_is_not_above_the_base_and_a_negative_value_too)
{
    EXPECT_EQ(Wrapped(-10.0, 360.0), -10.0);
    EXPECT_EQ(Wrapped(0.0, 360.0), 0.0);
    EXPECT_EQ(Wrapped(359.5, 360.0), 359.5);
    EXPECT_EQ(Wrapped(360.0, 360.0), 360.0);
}

TEST_F(Numeric_Remainder, Modulo_adds_a_negative_base_to_a_value_above_it_that_is_zero_or_negative)
{
    EXPECT_EQ(Wrapped(-5.0, -10.0), -15.0);
    EXPECT_EQ(Wrapped(0.0, -10.0), -10.0);
    EXPECT_EQ(Wrapped(5.0, -10.0), 15.0);
    EXPECT_EQ(Wrapped(-20.0, -10.0), -20.0);
}

TEST_F(Numeric_Remainder, Modulo_may_replace_its_value)
{
    Single angle = 400.0;
    Modulo(angle, 360.0, angle);
    EXPECT_EQ(angle, 40.0);
}

// ---- SimQ

/// A square system with its own storage.
struct System {
    explicit System(int size) : n(size), a(Count(size * size)), b(Count(size)) {}
    System(int size, std::vector<double> matrix, std::vector<double> right) : n(size), a(matrix), b(right) {}
    static std::size_t Count(int count) { return static_cast<std::size_t>(count); }
    Matrix_View A() { return {a, n, n, n}; }
    double& B(int i) { return b[Count(i - 1)]; }
    int Solve()
    {
        int status = -1;
        SimQ(n, A(), b, status);
        return status;
    }

    int n;
    std::vector<double> a;
    std::vector<double> b;
};

TEST_F(Numeric_Linear_System, one_unknown)
{
    System s(1, {4.0}, {10.0});
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.B(1), 2.5);
}

TEST_F(Numeric_Linear_System, two_unknowns_by_hand)
{
    System s(2, {2.0, 1.0, 1.0, 3.0}, {5.0, 10.0});  // 2x + y = 5, x + 3y = 10: x = 1, y = 3
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.B(1), 1.0);
    EXPECT_EQ(s.B(2), 3.0);
}

TEST_F(Numeric_Linear_System, zero_on_the_diagonal_is_overcome_by_an_exchange_of_rows)
{
    System s(3, {0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 1.0, 0.0, 0.0}, {20.0, 30.0, 10.0});  // a permutation
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.b, (std::vector<double>{10.0, 20.0, 30.0}));
}

TEST_F(Numeric_Linear_System, row_of_equal_size_does_not_become_the_pivot)
{
    System s(2, {1.0, 2.0, -1.0, 5.0}, {3.0, 4.0});
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.A()(1, 1), 1.0);
    EXPECT_EQ(s.A()(1, 2), 2.0);
    EXPECT_EQ(s.A()(2, 2), 7.0);
}

TEST_F(Numeric_Linear_System, strictly_larger_row_becomes_the_pivot_whatever_its_sign)
{
    System s(2, {1.0, 2.0, -2.0, 5.0}, {3.0, 4.0});
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.A()(1, 1), -2.0);
    EXPECT_EQ(s.A()(1, 2), 5.0);
    EXPECT_EQ(s.A()(2, 2), 4.5);
}

TEST_F(Numeric_Linear_System, first_of_several_largest_rows_becomes_the_pivot)
{
    System s(3, {1.0, 0.0, 0.0, 2.0, 7.0, 1.0, -2.0, 9.0, 5.0}, {1.0, 1.0, 1.0});
    EXPECT_EQ(s.Solve(), 0);
    EXPECT_EQ(s.A()(1, 1), 2.0);
    EXPECT_EQ(s.A()(1, 2), 7.0);
}

TEST_F(Numeric_Linear_System, column_of_zeros_is_named)
{
    System s(3);
    EXPECT_EQ(s.Solve(), 1);
    Expect_Box("There is a zero value on diagonal in column 1", Symbol::exclamation);
}

TEST_F(Numeric_Linear_System, first_column_without_a_pivot_is_named)
{
    System s(4, {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 2.0, 1.0, 1.0, 2.0, 5.0, 1.0, 1.0, 3.0, 1.0},
             {1.0, 2.0, 3.0, 4.0});  // columns 1 and 2 are the same
    EXPECT_EQ(s.Solve(), 2);
    Expect_Box("There is a zero value on diagonal in column 2", Symbol::exclamation);
}

TEST_F(Numeric_Linear_System, zero_at_the_end_of_the_diagonal_is_named)
{
    System s(2, {1.0, 2.0, 2.0, 4.0}, {1.0, 2.0});
    EXPECT_EQ(s.Solve(), 2);
    Expect_Box("There is a zero value on diagonal in column 2", Symbol::exclamation);
    System one(1, {0.0}, {1.0});
    EXPECT_EQ(one.Solve(), 1);
    Expect_Box("There is a zero value on diagonal in column 1", Symbol::exclamation);
}

TEST_F(Numeric_Linear_System, random_systems_leave_a_residual_of_the_order_of_rounding)
{
    std::mt19937 generator(20081130);
    const auto number = [&generator] { return static_cast<double>(generator()) / 2147483648.0 - 1.0; };
    for (int n = 1; n <= 40; ++n) {
        System s(n);
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j)
                s.A()(i, j) = number();
            // Heavy off the diagonal, so that rows must be exchanged; heavy enough to be well conditioned.
            s.A()(i, i % n + 1) += 2.0 * n;
            s.B(i) = number();
        }
        System original = s;
        ASSERT_EQ(s.Solve(), 0) << n;
        for (int i = 1; i <= n; ++i) {
            long double residual = original.B(i);
            for (int j = 1; j <= n; ++j)
                residual -= static_cast<long double>(original.A()(i, j)) * s.B(j);
            EXPECT_LT(std::abs(residual), 1e-13) << n << ' ' << i;
        }
    }
}

TEST_F(Numeric_Linear_System, hilbert_matrices_are_solved_as_well_as_their_condition_allows)
{
    // Condition numbers 1.5E7 (n = 6) and 1.6E13 (n = 10); the residual does not suffer from them.
    for (const auto& [n, error] : {std::pair{6, 1e-8}, std::pair{10, 1e-2}}) {
        System s(n);
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j) {
                s.A()(i, j) = 1.0 / (i + j - 1);
                s.B(i) += s.A()(i, j);  // the solution is a one in every place
            }
        }
        System original = s;
        ASSERT_EQ(s.Solve(), 0);
        for (int i = 1; i <= n; ++i) {
            EXPECT_NEAR(s.B(i), 1.0, error);
            long double residual = original.B(i);
            for (int j = 1; j <= n; ++j)
                residual -= static_cast<long double>(original.A()(i, j)) * s.B(j);
            EXPECT_LT(std::abs(residual), 1e-14);
        }
    }
}

TEST_F(Numeric_Linear_System, matrix_within_a_wider_array_is_solved_in_its_place)
{
    std::array<double, 12> storage;
    storage.fill(-99.0);
    const Matrix_View A(storage, 3, 3, 4);
    for (int i = 1; i <= 2; ++i) {
        for (int j = 1; j <= 2; ++j)
            A(i, j) = i == j ? 0.0 : 2.0;
    }
    std::array<double, 3> B{4.0, 6.0, -99.0};
    int status = -1;
    SimQ(2, A, B, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(B[0], 3.0);
    EXPECT_EQ(B[1], 2.0);
    EXPECT_EQ(B[2], -99.0);
    for (const std::size_t beyond : {2U, 3U, 6U, 7U, 8U, 9U, 10U, 11U})
        EXPECT_EQ(storage[beyond], -99.0) << beyond;
}

TEST_F(Numeric_Linear_System, too_small_arrays_are_out_of_bounds)
{
    std::array<double, 4> storage{1.0, 0.0, 0.0, 1.0};
    std::array<double, 2> B{1.0, 1.0};
    int status = -1;
    const Matrix_View A(storage, 2, 2, 2);
    EXPECT_EQ(Fault_Of([&] { SimQ(0, A, B, status); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { SimQ(3, A, B, status); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { SimQ(2, A, std::span(B).first(1), status); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { Matrix_View(storage, 2, 2, 3); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { Matrix_View(storage, 2, 3, 2); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { A(1, 3) = 0.0; }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { A(0, 1) = 0.0; }), out_of_bounds);
    EXPECT_EQ(status, -1);
}

// ---- FNRound

TEST_F(Numeric_Rounding, halves_go_up_for_negative_values_too)
{
    EXPECT_EQ(FNRound(2.5, 0), 3.0);
    EXPECT_EQ(FNRound(-2.5, 0), -2.0);
    EXPECT_EQ(FNRound(-2.51, 0), -3.0);
    EXPECT_EQ(FNRound(0.5, 0), 1.0);
    EXPECT_EQ(FNRound(-0.5, 0), 0.0);
    EXPECT_EQ(FNRound(1.25, 1), 1.3);
    EXPECT_EQ(FNRound(-1.25, 1), -1.2);
    EXPECT_EQ(FNRound(-0.125, 2), -0.12);
}

TEST_F(Numeric_Rounding, known_values)
{
    EXPECT_EQ(FNRound(3.14159265, 2), 3.14);
    EXPECT_EQ(FNRound(3.14159265, 4), 3.1416);
    EXPECT_EQ(FNRound(Single(38.1), 1), 38.1);  // the Single lies 1.5E-6 below
    EXPECT_EQ(FNRound(1234.5678, -2), 1200.0);
    EXPECT_EQ(FNRound(1250.0, -2), 1300.0);
}

TEST_F(Numeric_Rounding, number_of_so_many_decimals_stays_and_rounding_twice_changes_nothing)
{
    const std::array<double, 7> scale{1.0, 10.0, 100.0, 1000.0, 10000.0, 100000.0, 1000000.0};
    for (int decimals = 0; decimals <= 6; ++decimals) {
        const double units = scale[static_cast<std::size_t>(decimals)];
        for (int k = -5000; k <= 5000; k += 37) {
            const double exact = k / units;
            EXPECT_EQ(FNRound(exact, decimals), exact) << k << ' ' << decimals;
            const double near = FNRound(exact + 0.3 / units, decimals);
            EXPECT_EQ(near, exact) << k << ' ' << decimals;
            EXPECT_EQ(FNRound(near, decimals), near);
        }
    }
}

TEST_F(Numeric_Rounding, counts_beyond_every_digit_of_a_double_are_harmless)
{
    EXPECT_EQ(FNRound(1.5, 400), 1.5);
    EXPECT_EQ(FNRound(0.0, 400), 0.0);
    EXPECT_EQ(FNRound(1.5, -400), 0.0);
    EXPECT_EQ(FNRound(1.5, std::numeric_limits<int>::max()), 1.5);
    EXPECT_EQ(FNRound(1.5, std::numeric_limits<int>::min()), 0.0);
}

// ---- MaxMin1, MaxMin2, MaxMin2A

std::vector<Single> Values(std::initializer_list<double> values)
{
    return {values.begin(), values.end()};
}

TEST_F(Numeric_Extremes_of_an_Array, largest_and_smallest_of_a_range)
{
    const std::vector<Single> array = Values({99.0, 3.0, -1.0, 4.0, 1.0, -99.0});
    Single largest;
    Single smallest;
    MaxMin1(array, 1, 4, largest, smallest);
    EXPECT_EQ(largest, 4.0);
    EXPECT_EQ(smallest, -1.0);
    MaxMin1(array, 0, 5, largest, smallest);
    EXPECT_EQ(largest, 99.0);
    EXPECT_EQ(smallest, -99.0);
}

TEST_F(Numeric_Extremes_of_an_Array, both_start_from_the_first_element)
{
    const std::vector<Single> array = Values({7.0, 5.0, 3.0});
    Single largest;
    Single smallest;
    MaxMin1(array, 1, 1, largest, smallest);
    EXPECT_EQ(largest, 5.0);
    EXPECT_EQ(smallest, 5.0);
    MaxMin1(array, 2, 0, largest, smallest);
    EXPECT_EQ(largest, 3.0);
    EXPECT_EQ(smallest, 3.0);
}

TEST_F(Numeric_Extremes_of_an_Array, range_outside_the_array_is_out_of_bounds)
{
    const std::vector<Single> array = Values({7.0, 5.0, 3.0});
    Single largest = 1.0;
    Single smallest = 2.0;
    EXPECT_EQ(Fault_Of([&] { MaxMin1(array, 0, 3, largest, smallest); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { MaxMin1(array, -1, 2, largest, smallest); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { MaxMin1({}, 0, 0, largest, smallest); }), out_of_bounds);
    EXPECT_EQ(largest, 1.0);
    EXPECT_EQ(smallest, 2.0);
}

Table<Single> Small_Table()
{
    Table<Single> table;
    table.Dimension(2, 4);
    const std::array<std::array<double, 5>, 3> rows{
        {{9.0, 9.0, 9.0, 9.0, 9.0}, {2.0, 5.0, -3.0, 5.0, -3.0}, {-9.0, -9.0, -9.0, -9.0, -9.0}}};
    for (int row = 0; row <= 2; ++row) {
        for (int p = 0; p <= 4; ++p)
            table(row, p) = rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(p)];
    }
    return table;
}

TEST_F(Numeric_Extremes_of_an_Array, row_gives_the_extremes_with_the_first_point_of_each)
{
    const Table<Single> table = Small_Table();
    const Extremes found = MaxMin2(table, 1, 0, 4);
    EXPECT_EQ(found.largest, 5.0);
    EXPECT_EQ(found.largest_point, 1);  // point 3 is as large, not larger
    EXPECT_EQ(found.smallest, -3.0);
    EXPECT_EQ(found.smallest_point, 2);  // point 4 is as small, not smaller
}

TEST_F(Numeric_Extremes_of_an_Array, points_count_from_the_start_of_the_row_whatever_the_range)
{
    const Table<Single> table = Small_Table();
    const Extremes found = MaxMin2(table, 1, 2, 3);
    EXPECT_EQ(found.largest_point, 3);
    EXPECT_EQ(found.smallest_point, 2);
    const Extremes even = MaxMin2(table, 0, 1, 4);
    EXPECT_EQ(even.largest_point, 1);
    EXPECT_EQ(even.smallest_point, 1);
}

TEST_F(Numeric_Extremes_of_an_Array, linkage_name_gives_the_same)
{
    const Table<Single> table = Small_Table();
    const Extremes found = MaxMin2A(table, 1, 0, 4);
    EXPECT_EQ(found.largest, 5.0);
    EXPECT_EQ(found.largest_point, 1);
    EXPECT_EQ(found.smallest, -3.0);
    EXPECT_EQ(found.smallest_point, 2);
}

TEST_F(Numeric_Extremes_of_an_Array, row_or_point_outside_the_table_is_out_of_bounds)
{
    const Table<Single> table = Small_Table();
    EXPECT_EQ(Fault_Of([&] { MaxMin2(table, 3, 0, 4); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { MaxMin2(table, 1, 0, 5); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { MaxMin2(Table<Single>{}, 0, 0, 0); }), out_of_bounds);
}

/// Rows of several lengths about those of registers; some have their extremes twice, some zeros of both signs.
TEST(Numeric_Extremes_of_Rows, are_those_of_the_definition_at_every_width)
{
    std::minstd_rand dice(5);
    for (const Lane_Width width : {Lane_Width::reference, Lane_Width::sse2, Lane_Width::avx2, Lane_Width::avx512}) {
        const Forced_Lanes forced(width);
        for (int count = 1; count <= 70; ++count)
            for (const int kinds : {2, 3, 5, 1000}) {
                Table<Single> table;
                table.Dimension(0, count);
                for (int i = 0; i <= count; ++i) {
                    const int value = static_cast<int>(dice() % static_cast<unsigned>(kinds));
                    table(0, i) = value == 0 ? (dice() % 2 == 0 ? -0.0 : 0.0) : (kinds == 2 ? 1.0 : 0.5) * value - 1.0;
                }
                const int first = static_cast<int>(dice() % 2);
                int most = first, least = first, last_most = first;
                for (int i = first; i <= count; ++i) {
                    if (table(0, i) > table(0, most))
                        most = i;
                    if (table(0, i) < table(0, least))
                        least = i;
                    if (table(0, i) >= table(0, last_most))
                        last_most = i;
                }
                const Extremes found = MaxMin2(table, 0, first, count);
                ASSERT_EQ(found.largest_point, most);
                ASSERT_EQ(found.smallest_point, least);
                ASSERT_EQ(std::signbit(found.largest), std::signbit(table(0, most)));
                ASSERT_EQ(found.largest, table(0, most));
                ASSERT_EQ(found.smallest, table(0, least));
                ASSERT_EQ(std::signbit(found.smallest), std::signbit(table(0, least)));
                Single largest;
                Single smallest;
                MaxMin1(table.Points(0), first, count, largest, smallest);
                ASSERT_EQ(largest, found.largest);
                ASSERT_EQ(smallest, found.smallest);
                ASSERT_EQ(std::signbit(largest), std::signbit(table(0, last_most)));  // the last of them
                ASSERT_EQ(std::signbit(smallest), std::signbit(table(0, least)));     // the first
            }
    }
}

// ---- Average, Average2

TEST_F(Numeric_Mean_Value, mean_of_a_range)
{
    const std::vector<Single> array = Values({100.0, 1.0, 2.0, 6.0, 100.0});
    Single mean;
    Average(1, 3, array, mean);
    EXPECT_EQ(mean, 3.0);
    Average(2, 2, array, mean);
    EXPECT_EQ(mean, 2.0);
}

TEST_F(Numeric_Mean_Value, sum_is_held_in_double)
{
    // In 32 bits the ones would be lost beside 2^24.
    const std::vector<Single> array = Values({16777216.0, 1.0, 1.0, -16777216.0});
    Single mean;
    Average(0, 3, array, mean);
    EXPECT_EQ(mean, 0.5);
}

TEST_F(Numeric_Mean_Value, mean_of_nothing_is_an_overflow_and_a_range_outside_out_of_bounds)
{
    const std::vector<Single> array = Values({1.0, 2.0});
    Single mean;
    std::feraiseexcept(FE_DIVBYZERO);  // of a division before, which is not this one's fault
    EXPECT_EQ(Fault_Of([&] { Average(1, 0, array, mean); }), overflow);
    std::feclearexcept(FE_DIVBYZERO);
    EXPECT_EQ(Fault_Of([&] { Average(0, 2, array, mean); }), out_of_bounds);
}

TEST_F(Numeric_Mean_Value, order_says_which_index_runs)
{
    Table<Single> table;
    table.Dimension(2, 2);
    for (int i = 0; i <= 2; ++i) {
        for (int j = 0; j <= 2; ++j)
            table(i, j) = 10.0 * i + j;
    }
    Single mean;
    Average2(1, 2, table, "I_Pointer", 0, mean);
    EXPECT_EQ(mean, 15.0);  // 10 and 20
    Average2(1, 2, table, "Pointer_I", 2, mean);
    EXPECT_EQ(mean, 21.5);  // 21 and 22
}

TEST_F(Numeric_Mean_Value, order_of_other_words_adds_nothing)
{
    const Table<Single> table = Small_Table();
    for (const char* order : {"", "i_pointer", "Row"}) {
        Single mean = 77.0;
        Average2(0, 2, table, order, 1, mean);
        EXPECT_EQ(mean, 0.0) << order;
    }
}

TEST_F(Numeric_Mean_Value, index_outside_the_table_is_out_of_bounds)
{
    const Table<Single> table = Small_Table();
    Single mean;
    EXPECT_EQ(Fault_Of([&] { Average2(0, 3, table, "I_Pointer", 1, mean); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { Average2(0, 5, table, "Pointer_I", 1, mean); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { Average2(0, 2, table, "I_Pointer", 5, mean); }), out_of_bounds);
    EXPECT_EQ(Fault_Of([&] { Average2(1, 0, table, "I_Pointer", 1, mean); }), overflow);
}

// ---- Rotate, Shift_Vector

TEST_F(Numeric_Moved_Point, quarter_turn_carries_the_x_axis_onto_the_y_axis)
{
    Single x;
    Single y;
    Rotate(2.0, 0.0, 90.0, 1.0, x, y);
    EXPECT_NEAR(x, 0.0, 1e-6);
    EXPECT_EQ(y, 2.0);
    Rotate(2.0, 0.0, 90.0, -1.0, x, y);
    EXPECT_NEAR(x, 0.0, 1e-6);
    EXPECT_EQ(y, -2.0);
}

TEST_F(Numeric_Moved_Point, angle_is_rounded_to_a_Single_in_radians)
{
    // The Single nearest to pi/2 is 13176795 / 2^23, 4.37113883E-8 above it, and so the cosine is that much
    // below 0. Unrounded, the program's 1.570796327 would leave 2.05E-10.
    Single x;
    Single y;
    Rotate(1.0, 0.0, 90.0, 1.0, x, y);
    EXPECT_NEAR(x, true_pi / 2.0 - 13176795.0 / 8388608.0, 4e-15);  // a Single's step there
}

TEST_F(Numeric_Moved_Point, turn_keeps_the_radius_and_is_undone_by_the_other_sign)
{
    for (double angle = -720.0; angle <= 720.0; angle += 12.5) {
        Single x;
        Single y;
        Rotate(30.0, -40.0, angle, 1.0, x, y);
        EXPECT_NEAR(std::hypot(x, y), 50.0, 1e-5) << angle;
        Rotate(x, y, angle, -1.0, x, y);
        EXPECT_NEAR(x, 30.0, 1e-5) << angle;
        EXPECT_NEAR(y, -40.0, 1e-5) << angle;
    }
}

TEST_F(Numeric_Moved_Point, turn_by_thirty_degrees)
{
    Single x;
    Single y;
    Rotate(2.0, 0.0, 30.0, 1.0, x, y);
    EXPECT_NEAR(x, std::sqrt(3.0), 1e-6);
    EXPECT_NEAR(y, 1.0, 1e-6);
}

TEST_F(Numeric_Moved_Point, shift_adds_or_subtracts_the_vector)
{
    Single x;
    Single y;
    Shift_Vector(1.0, 2.0, 0.5, -4.0, 1.0, x, y);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.0);
    Shift_Vector(x, y, 0.5, -4.0, -1.0, x, y);
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(y, 2.0);
}

}  // namespace
}  // namespace lobemax
