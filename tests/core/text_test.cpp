// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"
#include "tests/support/test_design.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace lobemax {
namespace {

constexpr Decimal_Symbol point = Decimal_Symbol::point;
constexpr Decimal_Symbol comma = Decimal_Symbol::comma;

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

/// Sets the number format for one test.
struct Format_Guard {
    explicit Format_Guard(const char* format) { design.identity.Number_Format = format; }
    ~Format_Guard() { design.identity.Number_Format = "USA"; }
    Format_Guard(const Format_Guard&) = delete;
    Format_Guard& operator=(const Format_Guard&) = delete;
};

// ---- the number format in force

TEST(Number_Format, Europe_has_a_decimal_comma_and_anything_else_a_point)
{
    for (const char* format : {"USA", "", "europe", "Other"}) {
        const Format_Guard guard(format);
        EXPECT_EQ(Current_Decimal_Symbol(design), point) << format;
    }
    const Format_Guard guard("Europe");
    EXPECT_EQ(Current_Decimal_Symbol(design), comma);
}

TEST(Number_Format, reading_and_writing_follow_it)
{
    {
        const Format_Guard guard("USA");
        EXPECT_EQ(Val(design, "0.05"), 0.05);
        EXPECT_EQ(FNRoundStr(design, 1234.5, 1), "1,234.5 ");
        EXPECT_EQ(Format_Picture(design, 0.5, "0.00"), "0.50");
    }
    const Format_Guard guard("Europe");
    EXPECT_EQ(Val(design, "0,05"), 0.05);
    EXPECT_EQ(FNRoundStr(design, 1234.5, 1), "1.234,5 ");
    EXPECT_EQ(Format_Picture(design, 0.5, "0.00"), "0,50");
}

TEST(Number_Format, defaults_of_the_screens_read_alike_in_both)
{
    EXPECT_EQ(Val("0.01", point), Val("0,01", comma));
    EXPECT_EQ(Val("1.0", point), Val("1,0", comma));
    EXPECT_EQ(Val("0.50", point), Val("0,50", comma));
    EXPECT_EQ(Val("0.25", point), Val("0,25", comma));
    EXPECT_EQ(Val("0.125", point), Val("0,125", comma));
    EXPECT_EQ(Val("0,125", comma), 0.125);
}

// ---- Val and Read_Number

TEST(Val_Reader, plain_numbers)
{
    EXPECT_EQ(Val("25", point), 25.0);
    EXPECT_EQ(Val("-0.001", point), -0.001);
    EXPECT_EQ(Val("+7", point), 7.0);
    EXPECT_EQ(Val(".5", point), 0.5);
    EXPECT_EQ(Val("-.5", point), -0.5);
    EXPECT_EQ(Val("5.", point), 5.0);
    EXPECT_EQ(Val("007", point), 7.0);
    EXPECT_EQ(Val("3,25", comma), 3.25);
    EXPECT_EQ(Val(",5", comma), 0.5);
}

TEST(Val_Reader, no_number_at_all_gives_zero)
{
    for (const char* text : {"", " ", "abc", "-", "+ ", ".", "-.", "E5", "$1", "--5", "- -5", ",5"}) {
        const Number_Read read = Read_Number(text, point);
        EXPECT_EQ(read.value, 0.0) << text;
        EXPECT_EQ(read.used, 0U) << text;
        EXPECT_FALSE(read.any) << text;
        EXPECT_FALSE(read.whole) << text;
    }
}

TEST(Val_Reader, leading_digits_count_and_reading_ends_at_the_first_other_character)
{
    EXPECT_EQ(Val("12abc", point), 12.0);
    EXPECT_EQ(Val("12.5.7", point), 12.5);
    EXPECT_EQ(Val("1-2", point), 1.0);
    EXPECT_EQ(Val("3;4", point), 3.0);
    EXPECT_EQ(Val("8\n9", point), 8.0);
    EXPECT_EQ(Val("90 degrees", point), 90.0);  // the d begins no exponent: no digits follow
}

TEST(Val_Reader, blanks_may_lead_follow_the_sign_and_stand_between_and_after_digits)
{
    EXPECT_EQ(Val("   12", point), 12.0);
    EXPECT_EQ(Val(" - 12", point), -12.0);
    EXPECT_EQ(Val("1 2 3", point), 123.0);
    EXPECT_EQ(Val("0.123 45 ", point), 0.12345);
    EXPECT_EQ(Val("12 .5", point), 12.5);
    EXPECT_EQ(Val("\t1\t2 ", point), 12.0);
}

TEST(Val_Reader, groups_of_three_may_be_separated)
{
    EXPECT_EQ(Val("1,234", point), 1234.0);
    EXPECT_EQ(Val("12,345,678.25", point), 12345678.25);
    EXPECT_EQ(Val("123,456", point), 123456.0);
    EXPECT_EQ(Val("-1,234.5", point), -1234.5);
    EXPECT_EQ(Val("1.234,5", comma), 1234.5);
    EXPECT_EQ(Val("1.234.567", comma), 1234567.0);
    EXPECT_EQ(Val("1,234E2", point), 123400.0);
}

TEST(Val_Reader, grouping_symbol_elsewhere_ends_the_number)
{
    EXPECT_EQ(Val("1,23", point), 1.0);
    EXPECT_EQ(Val("1,2345", point), 1.0);
    EXPECT_EQ(Val("1,234 5", point), 1.0);  // four digits after all
    EXPECT_EQ(Val("1234,567", point), 1234.0);
    EXPECT_EQ(Val("12 34,567", point), 1234.0);
    EXPECT_EQ(Val("1,234,56", point), 1234.0);
    EXPECT_EQ(Val("1, 234", point), 1.0);
    EXPECT_EQ(Val("1 ,234", point), 1.0);
    EXPECT_EQ(Val("1,,234", point), 1.0);
    EXPECT_EQ(Val(",234", point), 0.0);
    EXPECT_EQ(Val("1.5,234", point), 1.5);
    EXPECT_EQ(Val("12.5", comma), 12.0);
    EXPECT_EQ(Val("1.234.5", comma), 1234.0);
}

TEST(Val_Reader, exponent_has_an_E_or_a_D_in_either_case)
{
    EXPECT_EQ(Val("1E3", point), 1000.0);
    EXPECT_EQ(Val("1e+3", point), 1000.0);
    EXPECT_EQ(Val("1D-3", point), 0.001);
    EXPECT_EQ(Val("1d3", point), 1000.0);
    EXPECT_EQ(Val("1E-03", point), 0.001);
    EXPECT_EQ(Val("1,5E2", comma), 150.0);
    EXPECT_EQ(Val(".5E1", point), 5.0);
    EXPECT_EQ(Val("5.E1", point), 50.0);
}

TEST(Val_Reader, blanks_may_stand_before_and_after_each_piece_of_the_exponent)
{
    EXPECT_EQ(Val("1.235 E+6 ", point), 1235000.0);
    EXPECT_EQ(Val("1 E 3", point), 1000.0);
    EXPECT_EQ(Val("1 E - 3", point), 0.001);
    EXPECT_EQ(Val("1E1 0", point), 1e10);
}

TEST(Val_Reader, exponent_without_digits_is_none)
{
    const Number_Read read = Read_Number("5E", point);
    EXPECT_EQ(read.value, 5.0);
    EXPECT_EQ(read.used, 1U);
    EXPECT_FALSE(read.whole);
    EXPECT_EQ(Val("5E+", point), 5.0);
    EXPECT_EQ(Val("5 Dwell", point), 5.0);
    EXPECT_EQ(Val("5E+-3", point), 5.0);
    EXPECT_EQ(Val("5EE3", point), 5.0);
    EXPECT_EQ(Val("5E2.5", point), 500.0);
}

TEST(Val_Reader, tells_what_it_used_and_whether_that_was_all)
{
    const Number_Read whole = Read_Number("  -1,234.5 E+2  ", point);
    EXPECT_TRUE(whole.any);
    EXPECT_TRUE(whole.whole);
    EXPECT_EQ(whole.used, 16U);
    EXPECT_EQ(whole.value, -123450.0);
    const Number_Read begun = Read_Number("12 mm", point);
    EXPECT_TRUE(begun.any);
    EXPECT_FALSE(begun.whole);
    EXPECT_EQ(begun.used, 3U);
    EXPECT_EQ(begun.value, 12.0);
    const Number_Read refused = Read_Number("1,23", point);
    EXPECT_EQ(refused.used, 1U);
    EXPECT_FALSE(refused.whole);
}

TEST(Val_Reader, zero_has_no_sign)
{
    EXPECT_FALSE(std::signbit(Val("-0", point)));
    EXPECT_FALSE(std::signbit(Val("-0.000E5", point)));
    EXPECT_FALSE(std::signbit(Val("-1E-400", point)));
}

TEST(Val_Reader, value_is_the_nearest_double_ties_to_even)
{
    EXPECT_EQ(Val("0.1", point), 0.1);
    EXPECT_EQ(Val("9007199254740993", point), 9007199254740992.0);  // 2^53 + 1, halfway
    EXPECT_EQ(Val("9007199254740995", point), 9007199254740996.0);  // 2^53 + 3, halfway
    EXPECT_EQ(Val("9007199254740993.0000000001", point), 9007199254740994.0);
    EXPECT_EQ(Val("1.7976931348623157E308", point), std::numeric_limits<double>::max());
    EXPECT_EQ(Val("4.9E-324", point), std::numeric_limits<double>::denorm_min());
}

TEST(Val_Reader, digits_far_behind_still_tip_a_tie)
{
    const std::string tie = "9007199254740993." + std::string(5000, '0');
    EXPECT_EQ(Val(tie, point), 9007199254740992.0);
    EXPECT_EQ(Val(tie + "1", point), 9007199254740994.0);
}

TEST(Val_Reader, number_too_large_for_a_double_is_an_overflow)
{
    for (const char* text : {"1E309", "-1E309", "1.7976931348623159E308", "1E99999999999999999999", "10E308"})
        EXPECT_EQ(Fault_Of([&] { Val(text, point); }), overflow) << text;
    EXPECT_EQ(Fault_Of([] { Val(std::string(400, '9'), point); }), overflow);
}

TEST(Val_Reader, number_too_small_for_a_double_is_zero)
{
    for (const char* text : {"1E-400", "1E-99999999999999999999", "0.0001E-322", "2E-324"})
        EXPECT_EQ(Val(text, point), 0.0) << text;
    EXPECT_EQ(Val("0E99999999999999999999", point), 0.0);
}

TEST(Val_Reader, very_long_texts_are_read_in_one_pass)
{
    const std::string zeros(1'000'000, '0');
    EXPECT_EQ(Val("1" + zeros + "E-1000000", point), 1.0);
    EXPECT_EQ(Val("0." + zeros + "1E1000001", point), 1.0);
    EXPECT_EQ(Val(zeros + "12", point), 12.0);
    EXPECT_EQ(Val("7" + std::string(1'000'000, ' ') + "8", point), 78.0);
    std::string grouped = "0";
    for (int i = 0; i < 300'000; ++i)
        grouped += ",000";
    EXPECT_EQ(Val(grouped + ",005", point), 5.0);
    std::string blanks = "1";
    for (int i = 0; i < 100'000; ++i)
        blanks += "E ";
    EXPECT_EQ(Val(blanks, point), 1.0);
}

TEST(Val_Reader, bytes_of_any_value_end_the_number)
{
    EXPECT_EQ(Val(std::string{'5', '\0', '6'}, point), 5.0);
    EXPECT_EQ(Val("5\xFF", point), 5.0);
    EXPECT_EQ(Val("5\xC2\xA0.6", point), 5.0);  // a no-break space is not a blank
}

// ---- Set_Format and Format_Picture

TEST(Picture, table_by_count_of_decimals)
{
    EXPECT_EQ(Set_Format(0), "###,###,###,###,##0. ; -###,###,###,###,##0.");
    EXPECT_EQ(Set_Format(1), "###,###,###,###,##0.0 ; -###,###,###,###,##0.0");
    EXPECT_EQ(Set_Format(2), "###,###,###,###,##0.00 ; -###,###,###,###,##0.00");
    EXPECT_EQ(Set_Format(3), "###,###,###,###,##0.000 ; -###,###,###,###,##0.000");
    EXPECT_EQ(Set_Format(4), "###,###,###,###,##0.000 0 ; -###,###,###,###,##0.000 0");
    EXPECT_EQ(Set_Format(5), "###,###,###,###,##0.000 00 ; -###,###,###,###,##0.000 00");
    EXPECT_EQ(Set_Format(6), "###,###,###,###,##0.000 000 ; -###,###,###,###,##0.000 000");
    for (const int other : {-1, 7, 8, 100, -32768})
        EXPECT_EQ(Set_Format(other), "0.000 E+##0 ; -0.000 E+##0") << other;
}

TEST(Picture, positive_numbers_end_with_the_blank_before_the_semicolon)
{
    EXPECT_EQ(Format_Picture(12.0, Set_Format(0), point), "12. ");
    EXPECT_EQ(Format_Picture(1234567.0, Set_Format(1), point), "1,234,567.0 ");
    EXPECT_EQ(Format_Picture(38.1, Set_Format(2), point), "38.10 ");
    EXPECT_EQ(Format_Picture(0.0, Set_Format(3), point), "0.000 ");
}

TEST(Picture, negative_numbers_begin_with_a_blank_and_end_without)
{
    EXPECT_EQ(Format_Picture(-12.0, Set_Format(0), point), " -12.");
    EXPECT_EQ(Format_Picture(-1234.5, Set_Format(2), point), " -1,234.50");
    EXPECT_EQ(Format_Picture(-0.5, Set_Format(7), point), " -5.000 E-1");
}

TEST(Picture, decimals_are_grouped_by_blanks)
{
    EXPECT_EQ(Format_Picture(0.1234567, Set_Format(4), point), "0.123 5 ");
    EXPECT_EQ(Format_Picture(0.12345, Set_Format(5), point), "0.123 45 ");
    EXPECT_EQ(Format_Picture(-0.1234567, Set_Format(6), point), " -0.123 457");
}

TEST(Picture, Europe_swaps_the_decimal_and_the_grouping_symbol)
{
    EXPECT_EQ(Format_Picture(1234567.891, Set_Format(2), comma), "1.234.567,89 ");
    EXPECT_EQ(Format_Picture(12.0, Set_Format(0), comma), "12, ");
    EXPECT_EQ(Format_Picture(-1234.5, Set_Format(4), comma), " -1.234,500 0");
    EXPECT_EQ(Format_Picture(1234.5, Set_Format(7), comma), "1,235 E+3 ");
}

TEST(Picture, groups_stand_at_every_third_digit)
{
    EXPECT_EQ(Format_Picture(999.0, Set_Format(0), point), "999. ");
    EXPECT_EQ(Format_Picture(1000.0, Set_Format(0), point), "1,000. ");
    EXPECT_EQ(Format_Picture(100000.0, Set_Format(0), point), "100,000. ");
    EXPECT_EQ(Format_Picture(1e15, Set_Format(0), point), "1,000,000,000,000,000. ");  // beyond the places
    EXPECT_EQ(Format_Picture(12.0, "0,000", point), "0,012");
}

TEST(Picture, exponent_always_shows_its_sign_and_no_leading_zero)
{
    EXPECT_EQ(Format_Picture(1.0, Set_Format(9), point), "1.000 E+0 ");
    EXPECT_EQ(Format_Picture(0.0, Set_Format(9), point), "0.000 E+0 ");
    EXPECT_EQ(Format_Picture(123456.0, Set_Format(9), point), "1.235 E+5 ");
    EXPECT_EQ(Format_Picture(0.000012345, Set_Format(9), point), "1.235 E-5 ");
    EXPECT_EQ(Format_Picture(1.5e300, Set_Format(9), point), "1.500 E+300 ");
    EXPECT_EQ(Format_Picture(9.9996, Set_Format(9), point), "1.000 E+1 ");  // the carry moves the exponent
    EXPECT_EQ(Format_Picture(1.5e7, "0.0E-00", point), "1.5E07");
    EXPECT_EQ(Format_Picture(1.5e-7, "0.0E-00", point), "1.5E-07");
    EXPECT_EQ(Format_Picture(12345.0, "#0.00E+0", point), "12.35E+3");  // mantissa fills its places
}

TEST(Picture, halves_round_away_from_zero)
{
    EXPECT_EQ(Format_Picture(0.5, "0", point), "1");
    EXPECT_EQ(Format_Picture(1.5, "0", point), "2");
    EXPECT_EQ(Format_Picture(2.5, "0", point), "3");
    EXPECT_EQ(Format_Picture(-2.5, "0", point), "-3");
    EXPECT_EQ(Format_Picture(0.125, "0.00", point), "0.13");
    EXPECT_EQ(Format_Picture(0.4999, "0", point), "0");
    EXPECT_EQ(Format_Picture(0.049, "0.0", point), "0.0");
    EXPECT_EQ(Format_Picture(0.05, "0.0", point), "0.1");
    EXPECT_EQ(Format_Picture(999.9996, "##0.000", point), "1000.000");
}

TEST(Picture, fifteen_significant_digits_count)
{
    // The double next to 2.675 lies 4E-17 below it: in fifteen digits it is the half.
    EXPECT_EQ(Format_Picture(2.675, "0.00", point), "2.68");
    EXPECT_EQ(Format_Picture(1.005, "0.00", point), "1.01");
    EXPECT_EQ(Format_Picture(1.0 / 3.0, "0.000000000000000000", point), "0.333333333333333000");
    EXPECT_EQ(Format_Picture(9007199254740993.0, "0", point), "9007199254740990");  // 2^53
    EXPECT_EQ(Format_Picture(1e22, "0", point), "10000000000000000000000");
}

TEST(Picture, negative_value_of_which_only_zeros_would_show_is_printed_as_zero)
{
    EXPECT_EQ(Format_Picture(-0.004, Set_Format(2), point), "0.00 ");
    EXPECT_EQ(Format_Picture(-0.005, Set_Format(2), point), " -0.01");
    EXPECT_EQ(Format_Picture(-0.0, Set_Format(2), point), "0.00 ");
    EXPECT_EQ(Format_Picture(-0.4, "0", point), "0");
    EXPECT_EQ(Format_Picture(-1e-300, Set_Format(7), point), " -1.000 E-300");  // no zero in this picture
}

TEST(Picture, optional_places_show_no_zeros_at_the_ends)
{
    EXPECT_EQ(Format_Picture(0.5, "#.##", point), ".5");
    EXPECT_EQ(Format_Picture(12.0, "#.##", point), "12.");
    EXPECT_EQ(Format_Picture(0.0, "#.##", point), ".");
    EXPECT_EQ(Format_Picture(1.25, "0.0##", point), "1.25");
    EXPECT_EQ(Format_Picture(1.0, "0.0##", point), "1.0");
    EXPECT_EQ(Format_Picture(1.0203, "0.####", point), "1.0203");
    EXPECT_EQ(Format_Picture(7.0, "0##", point), "007");
    EXPECT_EQ(Format_Picture(12.5, ".00", point), "12.50");
}

TEST(Picture, pictures_of_the_printer_and_the_totals)
{
    EXPECT_EQ(Format_Picture(7.25, "##0.000", point), "7.250");
    EXPECT_EQ(Format_Picture(360.0, "##0.00", point), "360.00");
    EXPECT_EQ(Format_Picture(2880.0, "##0", point), "2880");
    EXPECT_EQ(Format_Picture(1234567.84, "#,###,###,##0.0", point), "1,234,567.8");
}

TEST(Picture, other_characters_stand_where_they_are)
{
    EXPECT_EQ(Format_Picture(12.5, "[0.0] mm", point), "[12.5] mm");
    EXPECT_EQ(Format_Picture(12.5, "x", point), "x");
    EXPECT_EQ(Format_Picture(12.5, "", point), "");
    EXPECT_EQ(Format_Picture(2.0, "0E", point), "2E");
    EXPECT_EQ(Format_Picture(2.0, "0E+", point), "2E+");
}

TEST(Picture, without_a_picture_for_negatives_a_minus_is_put_in_front)
{
    EXPECT_EQ(Format_Picture(-1234.5, "#,##0.0", point), "-1,234.5");
    EXPECT_EQ(Format_Picture(-1.5, "0.0;", point), "-1.5");
    EXPECT_EQ(Format_Picture(-1.5, "0.0;(0.0);none", point), "(1.5)");
}

TEST(Picture, what_is_not_finite_is_named)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Format_Picture(infinity, Set_Format(2), point), "Infinity");
    EXPECT_EQ(Format_Picture(-infinity, Set_Format(2), point), "-Infinity");
    EXPECT_EQ(Format_Picture(std::numeric_limits<double>::quiet_NaN(), Set_Format(2), point), "NaN");
}

TEST(Picture, every_number_written_with_all_its_decimals_reads_back)
{
    const std::array<double, 7> scale{1.0, 10.0, 100.0, 1000.0, 10000.0, 100000.0, 1000000.0};
    for (const Decimal_Symbol symbol : {point, comma}) {
        for (int decimals = 0; decimals <= 6; ++decimals) {
            for (const double k :
                 {0.0, 1.0, 9.0, 10.0, 999.0, 1000.0, 123456.0, 1000000.0, 987654321.0, 123456789012.0}) {
                for (const double sign : {1.0, -1.0}) {
                    const double value = sign * k / scale[static_cast<std::size_t>(decimals)];
                    const std::string text = Format_Picture(value, Set_Format(decimals), symbol);
                    const Number_Read read = Read_Number(text, symbol);
                    EXPECT_EQ(read.value, value) << text;
                    EXPECT_TRUE(read.whole) << text;
                }
            }
        }
    }
}

TEST(Picture, every_number_written_with_an_exponent_reads_back)
{
    const std::vector<double> values{1.0,  1.5,     9.999e9,   1.234e-5,  2.5e100, 7.125e-300,
                                     -1.0, -1.5e10, -9.999e-9, -1.001e17, 0.0,     4.0e-5};
    for (const Decimal_Symbol symbol : {point, comma}) {
        for (const double value : values) {
            const std::string text = Format_Picture(value, Set_Format(7), symbol);
            const Number_Read read = Read_Number(text, symbol);
            EXPECT_EQ(read.value, value) << text;
            EXPECT_TRUE(read.whole) << text;
        }
    }
}

TEST(Picture, written_number_is_within_half_a_unit_of_its_last_place)
{
    std::mt19937 generator(381);
    const std::array<double, 7> scale{1.0, 10.0, 100.0, 1000.0, 10000.0, 100000.0, 1000000.0};
    for (int i = 0; i < 2000; ++i) {
        const double value = (static_cast<double>(generator()) - 2147483648.0) / 65536.0;
        for (int decimals = 0; decimals <= 6; ++decimals) {
            const std::string text = Format_Picture(value, Set_Format(decimals), comma);
            const double half = 0.5 / scale[static_cast<std::size_t>(decimals)];
            EXPECT_NEAR(Val(text, comma), value, half + 1e-10) << text;
        }
    }
}

// ---- FNRoundStr

TEST(Rounded_Text, is_the_rounded_number_in_the_picture_of_its_decimals)
{
    const Format_Guard usa("USA");
    EXPECT_EQ(FNRoundStr(design, Single(38.1), 2), "38.10 ");
    EXPECT_EQ(FNRoundStr(design, -12.345, 1), " -12.3");
    EXPECT_EQ(FNRoundStr(design, 1234.5678, 3), "1,234.568 ");
    EXPECT_EQ(FNRoundStr(design, 12345.678, 7), "1.235 E+4 ");
}

TEST(Rounded_Text, half_goes_up_before_it_is_written)
{
    const Format_Guard usa("USA");
    EXPECT_EQ(FNRoundStr(design, 2.5, 0), "3. ");
    EXPECT_EQ(FNRoundStr(design, -2.5, 0), " -2.");  // the picture alone would give -3
    EXPECT_EQ(FNRoundStr(design, -0.5, 0), "0. ");
}

// ---- Shortest

TEST(Shortest_Text, plain_decimals)
{
    EXPECT_EQ(Shortest(0.5), "0.5");
    EXPECT_EQ(Shortest(25.0), "25");
    EXPECT_EQ(Shortest(-0.001), "-0.001");
    EXPECT_EQ(Shortest(1234.5), "1234.5");
    EXPECT_EQ(Shortest(100.0), "100");
    EXPECT_EQ(Shortest(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(Shortest(Single(0.1)), "0.1");
    EXPECT_EQ(Shortest(Single(1.0 / 3.0)), "0.33333334");
    EXPECT_EQ(Shortest(Single(16777216.0)), "16777216");
}

TEST(Shortest_Text, zero_has_no_sign)
{
    EXPECT_EQ(Shortest(0.0), "0");
    EXPECT_EQ(Shortest(-0.0), "0");
    EXPECT_EQ(Shortest(Single(-0.0)), "0");
}

TEST(Shortest_Text, exponent_is_written_for_the_very_small_and_the_very_large_only)
{
    EXPECT_EQ(Shortest(0.00001), "0.00001");
    EXPECT_EQ(Shortest(0.000001), "1E-06");
    EXPECT_EQ(Shortest(-0.0000099), "-9.9E-06");
    EXPECT_EQ(Shortest(Single(0.00001)), "0.00001");
    EXPECT_EQ(Shortest(Single(0.000001)), "1E-06");
    EXPECT_EQ(Shortest(Single(500000000.0)), "500000000");
    EXPECT_EQ(Shortest(Single(1e9)), "1E+09");
    EXPECT_EQ(Shortest(Single(1.5e10)), "1.5E+10");
    EXPECT_EQ(Shortest(1.5e10), "15000000000");
    EXPECT_EQ(Shortest(999999999999999.0), "999999999999999");
    EXPECT_EQ(Shortest(1e15), "1E+15");
    EXPECT_EQ(Shortest(-1.25e-300), "-1.25E-300");
}

TEST(Shortest_Text, ends_of_the_ranges)
{
    EXPECT_EQ(Shortest(std::numeric_limits<double>::max()), "1.7976931348623157E+308");
    EXPECT_EQ(Shortest(std::numeric_limits<double>::denorm_min()), "5E-324");
    EXPECT_EQ(Shortest(Single(std::numeric_limits<float>::max())), "3.4028235E+38");
    EXPECT_EQ(Shortest(Single(std::numeric_limits<float>::denorm_min())), "1E-45");
}

TEST(Shortest_Text, what_is_not_finite_is_named)
{
    EXPECT_EQ(Shortest(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(Shortest(std::numeric_limits<double>::infinity()), "Infinity");
    EXPECT_EQ(Shortest(-std::numeric_limits<double>::infinity()), "-Infinity");
}

TEST(Shortest_Text, Singles_of_every_size_read_back)
{
    std::mt19937 generator(1);
    for (int i = 0; i < 200000; ++i) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(generator()));
        if (!std::isfinite(value))
            continue;
        const std::string text = Shortest(Single(value));
        const Number_Read read = Read_Number(text, point);
        EXPECT_EQ(Single(read.value).Bits(), value) << text;
        EXPECT_TRUE(read.whole) << text;
    }
}

TEST(Shortest_Text, the_one_Single_that_rounding_twice_would_miss_reads_back)
{
    const float value = std::bit_cast<float>(std::uint32_t{0x15AE43FD});  // shortest by itself: 7.038531E-26
    EXPECT_EQ(Single(Val(Shortest(Single(value)), point)).Bits(), value);
    EXPECT_EQ(Single(Val(Shortest(Single(-value)), point)).Bits(), -value);
    EXPECT_NE(Single(Val("7.038531E-26", point)).Bits(), value);
}

TEST(Shortest_Text, doubles_of_every_size_read_back)
{
    std::mt19937_64 generator(2);
    for (int i = 0; i < 200000; ++i) {
        const double value = std::bit_cast<double>(static_cast<std::uint64_t>(generator()));
        if (!std::isfinite(value))
            continue;
        const std::string text = Shortest(value);
        EXPECT_EQ(Val(text, point), value) << text;
    }
}

// ---- texts

TEST(Trimmed_Text, loses_blanks_and_line_ends_at_both_ends_only)
{
    EXPECT_EQ(Trim("  a b \t\r\n"), "a b");
    EXPECT_EQ(Trim("a"), "a");
    EXPECT_EQ(Trim(" \n "), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(Short, drops_the_first_characters)
{
    EXPECT_EQ(Short("Displacement", 4), "lacement");
    EXPECT_EQ(Short("abcd", 0), "abcd");
    EXPECT_EQ(Short("abcd", 3), "d");
    EXPECT_EQ(Short("abcd", 4), "");
    EXPECT_EQ(Short("abcd", 99), "");
    EXPECT_EQ(Short("abcd", -1), "abcd");
}

TEST(Short, text_of_fewer_than_four_characters_gives_its_last_on_purpose)
{
    EXPECT_EQ(Short("abc", 0), "c");
    EXPECT_EQ(Short("abc", 1), "c");
    EXPECT_EQ(Short("ab", 5), "b");
    EXPECT_EQ(Short("a", 1), "a");
    EXPECT_EQ(Short("", 1), "");
}

TEST(Short, counts_characters_not_bytes)
{
    EXPECT_EQ(Short("\xC3\xA4\xE2\x82\xACyz", 1), "\xE2\x82\xACyz");
    EXPECT_EQ(Short("ab\xC3\xA4", 1), "\xC3\xA4");  // three characters in four bytes
}

TEST(StripFilename, leaves_the_name_alone)
{
    EXPECT_EQ(StripFilename("/home/user/designs/Valve.cam"), "Valve");
    EXPECT_EQ(StripFilename("C:\\Cams\\Valve.cam"), "Valve");
    EXPECT_EQ(StripFilename("C:\\Cams/inlet\\Valve.cam"), "Valve");
    EXPECT_EQ(StripFilename("Valve.cam"), "Valve");
    EXPECT_EQ(StripFilename("Valve"), "Valve");
    EXPECT_EQ(StripFilename("Valve."), "Valve");
}

TEST(StripFilename, extension_begins_at_the_last_dot_of_the_name)
{
    EXPECT_EQ(StripFilename("/a/Valve.v2.cam"), "Valve.v2");
    EXPECT_EQ(StripFilename("/designs.old/Valve"), "Valve");
    EXPECT_EQ(StripFilename("/a/.cam"), ".cam");
    EXPECT_EQ(StripFilename("/a/.valve.cam"), ".valve");
    EXPECT_EQ(StripFilename("/a/"), "");
    EXPECT_EQ(StripFilename(""), "");
}

TEST(Letter_Case, only_ascii_letters_have_one)
{
    EXPECT_TRUE(Same_Text("Beta_Deg(2)", "BETA_deg(2)"));
    EXPECT_FALSE(Same_Text("Beta", "Beta "));
    EXPECT_FALSE(Same_Text("[", "{"));
    EXPECT_TRUE(Same_Text("", ""));
    EXPECT_FALSE(Same_Text("\xC3\xA4", "\xC3\x84"));
    EXPECT_EQ(To_Upper("az{`09-\xC3\xA4"), "AZ{`09-\xC3\xA4");
}

// ---- To_Utf8

TEST(To_Utf8, valid_utf8_stays_as_it_is)
{
    // The first and the last of each length, and the neighbours of the surrogates.
    for (const std::string text :
         {"", "plain", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "12 O'clock \xE2\x82\xAC \xC3\xA4"})
        EXPECT_EQ(To_Utf8(text), text);
    const std::string with_zero("a\0b", 3);
    EXPECT_EQ(To_Utf8(with_zero), with_zero);
}

TEST(To_Utf8, other_bytes_are_windows_1252)
{
    EXPECT_EQ(To_Utf8("M\xFCller"), "M\xC3\xBCller");
    EXPECT_EQ(To_Utf8("90\xB0"), "90\xC2\xB0");
    EXPECT_EQ(To_Utf8("\x80"), "\xE2\x82\xAC");                      // euro
    EXPECT_EQ(To_Utf8("\x93ok\x94"), "\xE2\x80\x9Cok\xE2\x80\x9D");  // quotation marks
    EXPECT_EQ(To_Utf8("\x8A\x9A\x8E\x9E\x9F"), "\xC5\xA0\xC5\xA1\xC5\xBD\xC5\xBE\xC5\xB8");
    EXPECT_EQ(To_Utf8("\xFF"), "\xC3\xBF");
}

TEST(To_Utf8, unassigned_bytes_become_the_control_characters_of_the_same_value)
{
    for (const unsigned byte : {0x81U, 0x8DU, 0x8FU, 0x90U, 0x9DU}) {
        const std::string expected{'\xC2', static_cast<char>(byte)};
        EXPECT_EQ(To_Utf8(std::string(1, static_cast<char>(byte))), expected) << byte;
    }
}

TEST(To_Utf8, malformed_sequences_make_the_whole_text_windows_1252)
{
    EXPECT_EQ(To_Utf8("\xC3\xA4 \xC3"), "\xC3\x83\xC2\xA4 \xC3\x83");  // the good letter too is two characters
    // Overlong forms, surrogates, beyond U+10FFFF, a stray later byte, cut off sequences: none may stay.
    for (const std::string text :
         {"\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\x80", "\xE2\x82", "\xF0\x90\x80", "\xC3(", "\xE2(\xAC", "\xFE"}) {
        const std::string result = To_Utf8(text);
        EXPECT_NE(result, text);
        EXPECT_EQ(To_Utf8(result), result);  // valid now
    }
}

TEST(Cut_Numbers, are_told_with_what_was_read_of_them)
{
    Design_State of;
    for (const auto& [typed, read] : {std::pair{"25,7", "25"}, {"90abc", "90"}, {"1.5.2", "1.5"}, {"-3e", "-3"}}) {
        EXPECT_EQ(Text_as_Read(of, typed), read);
        EXPECT_EQ(Cut_Sentence(of, typed), "'" + std::string(typed) + "' was read as " + read);
    }
    EXPECT_EQ(Cut_Sentence(of, "abc"), "'abc' was read as 0");
    for (const char* whole : {"", "  ", "25.7", " 25 ", "1,234.5", "+.5", "1E3", "1E999", "1E999mm"}) {
        EXPECT_EQ(Cut_Sentence(of, whole), "") << whole;
        EXPECT_EQ(Text_as_Read(of, whole), whole);
    }
    of.identity.Number_Format = "Europe";
    EXPECT_EQ(Cut_Sentence(of, "25,7"), "");
    EXPECT_EQ(Cut_Sentence(of, "25.7"), "'25.7' was read as 25");
    EXPECT_EQ(Cut_Sentence(of, "25,7mm"), "'25,7mm' was read as 25,7");
}

TEST(In_Figures, keeps_so_many_figures_in_the_number_format)
{
    Design_State of;
    EXPECT_EQ(In_Figures(of, 0.0, 3), "0");
    EXPECT_EQ(In_Figures(of, 0.0347812, 3), "0.0348");
    EXPECT_EQ(In_Figures(of, -1234567.0, 3), "-1230000");
    EXPECT_EQ(In_Figures(of, 25.0, 6), "25");
    EXPECT_EQ(In_Figures(of, 9.996, 3), "10");
    of.identity.Number_Format = "Europe";
    EXPECT_EQ(In_Figures(of, 0.0347812, 3), "0,0348");
}

}  // namespace
}  // namespace lobemax
