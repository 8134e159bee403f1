// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/basic_types.h"
#include "core/real_math.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <type_traits>

namespace lobemax {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Number of the fault that work throws; 0 when it throws none.
template <class Work>
int Fault_Of(Work&& work)
{
    Clear_Floating_Status();
    try {
        work();
    } catch (const Fault& fault) {
        return fault.Number();
    }
    return 0;
}

/// A division at run time, so that the processor sees it.
double Quotient(double a, double b)
{
    volatile double dividend = a;
    volatile double divisor = b;
    return dividend / divisor;
}

TEST(Widths, are_those_of_the_design)
{
    EXPECT_EQ(sizeof(Single), 4U);
    EXPECT_EQ(sizeof(Integer), 2U);
    EXPECT_EQ(sizeof(Flag), 2U);
    EXPECT_EQ(sizeof(Long), 4U);
}

TEST(Single, starts_at_zero)
{
    EXPECT_EQ(Single{}, 0.0);
    EXPECT_FALSE(std::signbit(static_cast<double>(Single{})));
}

TEST(Single, rounds_to_32_bits_at_the_store_and_is_a_double_in_an_expression)
{
    const Single tenth = 0.1;
    // 0.1 to 24 bits is 13421773 / 2^27.
    EXPECT_EQ(static_cast<double>(tenth), 13421773.0 / 134217728.0);
    EXPECT_NE(static_cast<double>(tenth), 0.1);
    EXPECT_TRUE((std::is_same_v<decltype(tenth * tenth), double>));
    // The product of two 24-bit numbers is exact in 53 bits.
    EXPECT_EQ(tenth * tenth, 13421773.0 * 13421773.0 / 134217728.0 / 134217728.0);
}

TEST(Single, rounds_ties_to_even)
{
    // Above 2^24 only even whole numbers are Singles.
    EXPECT_EQ(static_cast<double>(Single(16777217.0)), 16777216.0);
    EXPECT_EQ(static_cast<double>(Single(16777219.0)), 16777220.0);
}

/// Two neighbours at once, out of the compiler's sight: it must not make one vector of them and lose the rounding.
[[gnu::noinline]] void Round_Pair(const double* from, double factor, float* stored, double* thirds)
{
    stored[0] = static_cast<float>(from[0] * factor);
    stored[1] = static_cast<float>(from[1] * factor);
    const double x = Rounded(from[0] * factor);
    const double y = Rounded(from[1] * factor);
    thirds[0] = x / 3.0;
    thirds[1] = y / 3.0;
}

TEST(Single, a_value_of_32_bits_stays_one_when_two_are_worked_out_side_by_side)
{
    const double from[2]{1.1, 1.4333};
    float stored[2];
    double thirds[2];
    Round_Pair(from, 0.7, stored, thirds);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(thirds[i], double{stored[i]} / 3.0) << i;
}

TEST(Single, rounds_after_each_compound_assignment)
{
    Single sum = 16777216.0;
    sum += 1.0;  // lost in 24 bits
    sum += 1.0;
    EXPECT_EQ(static_cast<double>(sum), 16777216.0);
    sum -= 16777215.0;
    EXPECT_EQ(static_cast<double>(sum), 1.0);
    sum *= 0.1;
    EXPECT_EQ(sum.Bits(), 0.1F);
}

TEST(Single, keeps_its_largest_and_smallest_numbers)
{
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(Single(static_cast<double>(largest)).Bits(), largest);
    EXPECT_EQ(Single(-static_cast<double>(largest)).Bits(), -largest);
    const double smallest = std::ldexp(1.0, -149);
    EXPECT_EQ(static_cast<double>(Single(smallest)), smallest);
    EXPECT_EQ(static_cast<double>(Single(smallest / 4)), 0.0);  // below half of it: zero, and no fault
}

TEST(Single, too_large_a_value_is_error_6)
{
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(3.5E+38)); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(-3.5E+38)); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(infinity)); }), 6);
    EXPECT_EQ(Fault_Of([] {
                  Single x = 1E+30;
                  x *= 1E+30;
              }),
              6);
}

TEST(Single, a_division_by_zero_is_error_11)
{
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(Quotient(1.0, 0.0))); }), 11);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(Quotient(-2.5, 0.0))); }), 11);
}

TEST(Single, zero_by_zero_is_error_6)
{
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(Quotient(0.0, 0.0))); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(not_a_number)); }), 6);
}

TEST(Single, an_overflow_after_a_division_by_zero_that_was_forgotten_is_error_6)
{
    volatile double lost = Quotient(1.0, 0.0);
    EXPECT_TRUE(std::isinf(lost));
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Single(1E+300)); }), 6);  // Fault_Of forgets first, as a trap does
}

TEST(Single, the_fault_forgets_the_division_that_made_it)
{
    EXPECT_EQ(Fault_Of([] {
                  try {
                      static_cast<void>(Single(Quotient(1.0, 0.0)));
                  } catch (const Fault& first) {
                      EXPECT_EQ(first.Number(), 11);
                  }
                  static_cast<void>(Single(1E+300));
              }),
              6);
}

TEST(Single, keeps_its_old_value_when_a_new_one_is_refused)
{
    Single x = 2.5;
    EXPECT_EQ(Fault_Of([&] { x += 1E+39; }), 6);
    EXPECT_EQ(static_cast<double>(x), 2.5);
}

TEST(Integer, takes_16_bits_with_a_sign)
{
    EXPECT_EQ(Integer{}, 0);
    EXPECT_EQ(Integer(32767), 32767);
    EXPECT_EQ(Integer(-32768), -32768);
    EXPECT_EQ(Integer(20L), 20);
    EXPECT_EQ(Integer(std::int64_t{-7}), -7);
}

TEST(Integer, takes_integers_of_every_width_and_sign)
{
    EXPECT_EQ(Integer(5U), 5);
    EXPECT_EQ(Integer(std::size_t{2880}), 2880);
    EXPECT_EQ(Integer(std::uint8_t{200}), 200);
    EXPECT_EQ(Integer(std::uint16_t{32767}), 32767);
    EXPECT_EQ(Integer(std::int16_t{-32768}), -32768);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(std::uint16_t{32768})); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(4294967295U)); }), 6);
}

TEST(Integer, beyond_16_bits_is_error_6)
{
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(32768)); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(-32769)); }), 6);
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(65536)); }), 6);  // never wrapped to 0
    EXPECT_EQ(Fault_Of([] { static_cast<void>(Integer(std::int64_t{1} << 40)); }), 6);
}

TEST(Integer, a_sum_beyond_16_bits_is_error_6_and_leaves_the_old_value)
{
    Integer n = 32767;
    EXPECT_EQ(Fault_Of([&] { n += 1; }), 6);
    EXPECT_EQ(n, 32767);
    n += -65535;
    EXPECT_EQ(n, -32768);
    EXPECT_EQ(Fault_Of([&] { n += -1; }), 6);
    EXPECT_EQ(n, -32768);
}

TEST(Integer, no_real_becomes_one_unasked)
{
    EXPECT_FALSE((std::is_constructible_v<Integer, double>));
    EXPECT_FALSE((std::is_constructible_v<Integer, float>));
    EXPECT_FALSE((std::is_convertible_v<double, Integer>));
}

struct Rounding {
    double value;
    int nearest;
};

TEST(To_Integer, rounds_to_nearest_with_ties_to_even)
{
    for (const Rounding& row : {Rounding{0.0, 0},
                                {0.5, 0},
                                {1.5, 2},
                                {2.5, 2},
                                {3.5, 4},
                                {-0.5, 0},
                                {-1.5, -2},
                                {-2.5, -2},
                                {-3.5, -4},
                                {2.4999, 2},
                                {2.5001, 3},
                                {-2.5001, -3},
                                {359.5, 360},
                                {360.5, 360},
                                {2879.5, 2880}})
        EXPECT_EQ(To_Integer(row.value), row.nearest) << row.value;
}

TEST(To_Integer, judges_the_rounded_value_against_16_bits)
{
    EXPECT_EQ(To_Integer(32767.0), 32767);
    EXPECT_EQ(To_Integer(32767.49), 32767);
    EXPECT_EQ(To_Integer(-32768.5), -32768);              // a tie, to the even -32768
    EXPECT_EQ(Fault_Of([] { To_Integer(32767.5); }), 6);  // a tie, to the even 32768
    EXPECT_EQ(Fault_Of([] { To_Integer(-32768.51); }), 6);
    EXPECT_EQ(Fault_Of([] { To_Integer(1E+300); }), 6);
    EXPECT_EQ(Fault_Of([] { To_Integer(not_a_number); }), 6);
    EXPECT_EQ(Fault_Of([] { To_Integer(infinity); }), 6);
}

TEST(To_Integer, of_a_division_by_zero_is_error_11)
{
    EXPECT_EQ(Fault_Of([] { To_Integer(Quotient(360.0, 0.0)); }), 11);
}

TEST(Flag, is_minus_one_or_zero_in_16_bits)
{
    EXPECT_EQ(Flag{}.Value(), 0);
    EXPECT_EQ(Flag(true).Value(), -1);
    EXPECT_EQ(Flag(false).Value(), 0);
    EXPECT_EQ(std::bit_cast<std::uint16_t>(Flag(true)), 0xFFFFU);
    EXPECT_EQ(std::bit_cast<std::uint16_t>(Flag(false)), 0U);
    EXPECT_TRUE(Flag(true));
    EXPECT_FALSE(Flag(false));
}

TEST(Fault, carries_its_number)
{
    EXPECT_EQ(Fault{53}.Number(), 53);
    EXPECT_STREQ(Fault{53}.what(), "run-time error");
    EXPECT_TRUE((std::is_base_of_v<std::exception, Fault>));
}

TEST(Sqr, of_squares_and_of_zero)
{
    EXPECT_EQ(Sqr(0.0), 0.0);
    EXPECT_EQ(Sqr(2.25), 1.5);
    EXPECT_EQ(Sqr(3.0 * 3.0 + 4.0 * 4.0), 5.0);
    EXPECT_EQ(Sqr(-0.0), 0.0);
}

TEST(Sqr, of_a_negative_argument_is_error_5)
{
    EXPECT_EQ(Fault_Of([] { Sqr(-1.0); }), 5);
    EXPECT_EQ(Fault_Of([] { Sqr(-1E-300); }), 5);
}

TEST(Power, of_whole_exponents)
{
    EXPECT_EQ(Power(2.0, 10.0), 1024.0);
    EXPECT_EQ(Power(-2.0, 3.0), -8.0);
    EXPECT_EQ(Power(-2.0, -1.0), -0.5);
    EXPECT_EQ(Power(0.0, 0.0), 1.0);
    EXPECT_EQ(Power(0.0, 2.5), 0.0);
    EXPECT_EQ(Power(6.25, 0.5), 2.5);
}

TEST(Power, outside_its_domain_is_error_5_or_11)
{
    EXPECT_EQ(Fault_Of([] { Power(-2.0, 0.5); }), 5);
    EXPECT_EQ(Fault_Of([] { Power(0.0, -1.0); }), 11);
    EXPECT_EQ(Fault_Of([] { Power(0.0, -0.5); }), 11);
}

TEST(Bounds, hold_both_ends)
{
    constexpr Bounds b{-1, 59};
    EXPECT_TRUE(b.Holds(-1));
    EXPECT_TRUE(b.Holds(59));
    EXPECT_FALSE(b.Holds(-2));
    EXPECT_FALSE(b.Holds(60));
}

TEST(Checked_Place, counts_from_the_lower_bound)
{
    EXPECT_EQ(Checked_Place(-1, -1, 3), 0U);
    EXPECT_EQ(Checked_Place(3, -1, 3), 4U);
    EXPECT_EQ(Fault_Of([] { Checked_Place(-2, -1, 3); }), 9);
    EXPECT_EQ(Fault_Of([] { Checked_Place(4, -1, 3); }), 9);
    EXPECT_EQ(Fault_Of([] { Checked_Place(0, 0, -1); }), 9);  // an empty range holds nothing
}

TEST(Bounded, every_element_is_its_own_and_starts_empty)
{
    Bounded<Integer, -1, 20> a;
    for (int i = -1; i <= 20; ++i)
        EXPECT_EQ(a(i), 0);
    for (int i = -1; i <= 20; ++i)
        a(i) = 100 + i;
    for (int i = -1; i <= 20; ++i)
        EXPECT_EQ(a(i), 100 + i);
    a.Fill(6);
    EXPECT_EQ(a(-1), 6);
    EXPECT_EQ(a(20), 6);
}

TEST(Bounded, outside_its_bounds_is_error_9)
{
    Bounded<Single, 1, 6> a;
    const Bounded<Single, 1, 6>& fixed = a;
    for (int i : {0, 7, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(Fault_Of([&] { a(i) = 1.0; }), 9) << i;
        EXPECT_EQ(Fault_Of([&] { static_cast<void>(static_cast<double>(fixed(i))); }), 9) << i;
    }
}

TEST(Bounded2, every_element_is_its_own)
{
    Bounded2<Integer, 0, 4, 1, 9> a;
    for (int i = 0; i <= 4; ++i)
        for (int j = 1; j <= 9; ++j)
            a(i, j) = 10 * i + j;
    const auto& fixed = a;
    for (int i = 0; i <= 4; ++i)
        for (int j = 1; j <= 9; ++j)
            EXPECT_EQ(fixed(i, j), 10 * i + j);
    a.Fill(-3);
    EXPECT_EQ(a(0, 1), -3);
    EXPECT_EQ(a(4, 9), -3);
}

TEST(Bounded2, outside_either_index_is_error_9)
{
    Bounded2<Integer, 0, 4, 1, 9> a;
    const auto& fixed = a;
    struct Place {
        int i, j;
    };
    // (1, 10) and (2, 0) lie within the memory of the array, and are refused all the same
    for (const Place& p : {Place{-1, 1}, {5, 1}, {0, 0}, {0, 10}, {1, 10}, {2, 0}}) {
        EXPECT_EQ(Fault_Of([&] { a(p.i, p.j) = 1; }), 9) << p.i << ", " << p.j;
        EXPECT_EQ(Fault_Of([&] { static_cast<void>(static_cast<int>(fixed(p.i, p.j))); }), 9) << p.i << ", " << p.j;
    }
}

TEST(Bounded3, every_element_is_its_own)
{
    Bounded3<Integer, 0, 20, 0, 2, 0, 3> a;
    for (int i = 0; i <= 20; ++i)
        for (int j = 0; j <= 2; ++j)
            for (int k = 0; k <= 3; ++k)
                a(i, j, k) = 100 * i + 10 * j + k;
    const auto& fixed = a;
    for (int i = 0; i <= 20; ++i)
        for (int j = 0; j <= 2; ++j)
            for (int k = 0; k <= 3; ++k)
                EXPECT_EQ(fixed(i, j, k), 100 * i + 10 * j + k);
}

TEST(Bounded3, outside_any_index_is_error_9)
{
    Bounded3<Integer, 0, 20, 0, 2, 0, 3> a;
    const auto& fixed = a;
    struct Place {
        int i, j, k;
    };
    for (const Place& p : {Place{-1, 0, 0}, {21, 0, 0}, {0, -1, 0}, {0, 3, 0}, {0, 0, -1}, {0, 0, 4}}) {
        EXPECT_EQ(Fault_Of([&] { a(p.i, p.j, p.k) = 1; }), 9) << p.i << ", " << p.j << ", " << p.k;
        EXPECT_EQ(Fault_Of([&] { static_cast<void>(static_cast<int>(fixed(p.i, p.j, p.k))); }), 9)
            << p.i << ", " << p.j << ", " << p.k;
    }
}

TEST(Row, that_was_never_dimensioned_holds_nothing)
{
    Row<Single> row;
    EXPECT_EQ(row.Last(), -1);
    EXPECT_EQ(Fault_Of([&] { row(0) = 1.0; }), 9);
    EXPECT_TRUE(row.Points().empty());
}

TEST(Row, runs_from_zero_to_its_last_point)
{
    Row<Single> row;
    row.Dimension(360);
    EXPECT_EQ(row.Last(), 360);
    row(0) = 1.0;
    row(360) = 2.0;
    const Row<Single>& fixed = row;
    EXPECT_EQ(static_cast<double>(fixed(0)), 1.0);
    EXPECT_EQ(static_cast<double>(fixed(360)), 2.0);
    EXPECT_EQ(fixed.Points().size(), 361U);
    EXPECT_EQ(Fault_Of([&] { row(-1) = 0.0; }), 9);
    EXPECT_EQ(Fault_Of([&] { row(361) = 0.0; }), 9);
    EXPECT_EQ(Fault_Of([&] { static_cast<void>(static_cast<double>(fixed(361))); }), 9);
}

TEST(Row, Dimension_loses_the_contents)
{
    Row<Single> row;
    row.Dimension(10);
    row.Fill(3.0);
    EXPECT_EQ(static_cast<double>(row(10)), 3.0);
    row.Dimension(10);
    for (int p = 0; p <= 10; ++p)
        EXPECT_EQ(static_cast<double>(row(p)), 0.0);
}

TEST(Row, a_refused_Dimension_is_error_9_and_changes_nothing)
{
    Row<Single> row;
    row.Dimension(2);
    row.Fill(3.0);
    EXPECT_EQ(Fault_Of([&] { row.Dimension(-1); }), 9);
    EXPECT_EQ(Fault_Of([&] { row.Dimension(32768); }), 9);
    EXPECT_EQ(row.Last(), 2);
    EXPECT_EQ(static_cast<double>(row(2)), 3.0);
}

TEST(Table, that_was_never_dimensioned_holds_nothing)
{
    Table<Single> table;
    EXPECT_EQ(table.Last_Row(), -1);
    EXPECT_EQ(table.Last_Point(), -1);
    EXPECT_EQ(Fault_Of([&] { table(0, 0) = 1.0; }), 9);
    EXPECT_EQ(Fault_Of([&] { table.Points(0); }), 9);
}

TEST(Table, every_element_is_its_own_and_a_row_is_contiguous)
{
    Table<Integer> table;
    table.Dimension(3, 7);
    for (int v = 0; v <= 3; ++v)
        for (int p = 0; p <= 7; ++p)
            table(v, p) = 10 * v + p;
    const Table<Integer>& fixed = table;
    for (int v = 0; v <= 3; ++v) {
        const std::span<const Integer> points = fixed.Points(v);
        ASSERT_EQ(points.size(), 8U);
        for (int p = 0; p <= 7; ++p) {
            EXPECT_EQ(fixed(v, p), 10 * v + p);
            EXPECT_EQ(points[static_cast<std::size_t>(p)], 10 * v + p);
        }
    }
}

TEST(Table, outside_either_index_is_error_9)
{
    Table<Single> table;
    table.Dimension(53, 360);
    const Table<Single>& fixed = table;
    struct Place {
        int row, point;
    };
    for (const Place& p : {Place{-1, 0}, {54, 0}, {0, -1}, {0, 361}, {53, 361}}) {
        EXPECT_EQ(Fault_Of([&] { table(p.row, p.point) = 1.0; }), 9) << p.row << ", " << p.point;
        EXPECT_EQ(Fault_Of([&] { static_cast<void>(static_cast<double>(fixed(p.row, p.point))); }), 9)
            << p.row << ", " << p.point;
    }
    EXPECT_EQ(Fault_Of([&] { table.Points(54); }), 9);
    EXPECT_EQ(Fault_Of([&] { fixed.Points(-1); }), 9);
}

TEST(Table, Dimension_loses_the_contents)
{
    Table<Single> table;
    table.Dimension(1, 1);
    table(1, 1) = 5.0;
    table.Dimension(1, 1);
    EXPECT_EQ(static_cast<double>(table(1, 1)), 0.0);
}

TEST(Table, a_refused_Dimension_is_error_9_and_changes_nothing)
{
    Table<Single> table;
    table.Dimension(2, 3);
    table(2, 3) = 5.0;
    struct Size {
        int row, point;
    };
    for (const Size& s : {Size{-1, 3}, {2, -1}, {32768, 3}, {2, 32768}})
        EXPECT_EQ(Fault_Of([&] { table.Dimension(s.row, s.point); }), 9) << s.row << ", " << s.point;
    EXPECT_EQ(table.Last_Row(), 2);
    EXPECT_EQ(table.Last_Point(), 3);
    EXPECT_EQ(static_cast<double>(table(2, 3)), 5.0);
}

}  // namespace
}  // namespace lobemax
