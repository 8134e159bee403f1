// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/laws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "tests/support/one_segment.h"

namespace lobemax {
namespace {

using namespace one_segment;

class Law_Values : public ::testing::Test, protected Motion_Programs_Fixture {};

// ---- Every rise and fall law: its ends, and its rows as derivatives of each other

enum class Course {
    to_full_lift,        // a rise runs from 0 to L
    within_one_of_lift,  // from L - 1 to L whatever L: L is added to the series, meant
    there_and_back,      // from 0 to 0, with L at mid-segment
};

struct Law {
    const char* code;
    Course course = Course::to_full_lift;
    bool mirrored = true;     // its fall is the mirror of its rise, Ping excepted
    bool has_ping = true;     // MS and MT count Ping as 0
    double few_digits = 0;    // how far the law's printed constants let its rows differ, of the row's largest value
    double end_slack = 1e-7;  // the same for the ends of S, of L

    friend void PrintTo(const Law& law, std::ostream* os) { *os << law.code; }
};

// MS: 5.5279571 (PI4 / 3) = 23.15545 stands as 23.1553. MT: 0.0309544 PI4 = 0.3889845 stands as 0.03095 in
// region 1, 5.5e-5 off against a largest V of 2.
constexpr Law laws[] = {
    {.code = "MS", .has_ping = false, .few_digits = 5e-6},
    {.code = "MT", .has_ping = false, .few_digits = 3e-5, .end_slack = 2e-7},
    {.code = "CF"},
    {.code = "C1"},
    {.code = "C2"},
    {.code = "SF"},
    {.code = "S1"},
    {.code = "S2"},
    {.code = "DH", .mirrored = false},
    {.code = "45"},
    {.code = "56", .course = Course::there_and_back},
    {.code = "67"},
    {.code = "11"},
    {.code = "BD"},
    {.code = "BE"},
    {.code = "DU", .mirrored = false},
    {.code = "ST", .course = Course::within_one_of_lift, .mirrored = false},
    {.code = "TH", .course = Course::within_one_of_lift, .mirrored = false},
    {.code = "FR"},
    {.code = "GU"},
};

class Every_Law : public ::testing::TestWithParam<std::tuple<Law, char>>, protected Motion_Programs_Fixture {
protected:
    static constexpr double L = 2.5;
    static constexpr double beta = 120.0;
    static constexpr double step = 0.125;

    const Law& law() const { return std::get<0>(GetParam()); }
    char kind() const { return std::get<1>(GetParam()); }

    void SetUp() override
    {
        One_Segment(kind(), law().code, L, beta, step);
        ASSERT_TRUE(Calculate());
    }

    /// Whether a stencil from point i - reach to i + reach has a region's bound of MS or MT within it, where
    /// the printed constants leave small steps. The point on a bound belongs to the region below.
    bool Meets_a_Bound(int i, int reach) const
    {
        if (law().has_ping)
            return false;
        for (const double eighth : {1.0, 3.0, 4.0, 5.0, 7.0}) {
            const double bound = eighth * beta / 8.0;
            if ((i - reach) * step <= bound && bound < (i + reach) * step)
                return true;
        }
        return false;
    }

    /// Checks row `upper` against factor times the central differences of row `lower`.
    ///
    /// The difference over two steps, d2, has four times the error of that over one, d1: d1 is off by about
    /// (d2 - d1) / 3, so the largest d2 - d1 of the segment bounds the error everywhere. To it comes the
    /// rounding of both rows to 24 bits and what the law's printed constants leave.
    void Expect_Derivative(int lower, int upper, double factor) const
    {
        const double h = step / Deg_per_Rad;
        const auto difference = [&](int i, int reach) {
            return (Data(lower, i + reach) - Data(lower, i - reach)) / (2.0 * reach * h);
        };
        const int last = Last_Point();
        double step_error = 0.0;
        for (int i = 2; i <= last - 2; ++i)
            if (!Meets_a_Bound(i, 2))
                step_error = std::max(step_error, std::abs(difference(i, 2) - difference(i, 1)));
        const double bit = std::ldexp(1.0, -23);
        const double scale = Largest(upper);
        const double tolerance =
            std::abs(factor) * (step_error + bit * Largest(lower) / h) + scale * (bit + law().few_digits);
        ASSERT_GT(scale, 0.0);
        ASSERT_LT(tolerance, 0.01 * scale) << "a tolerance that would pass a wrong factor";
        int checked = 0;
        for (int i = 2; i <= last - 2; ++i) {
            if (Meets_a_Bound(i, 2))
                continue;
            ASSERT_NEAR(Data(upper, i), factor * difference(i, 1), tolerance) << "point " << i;
            ++checked;
        }
        EXPECT_GT(checked, 900);
    }

    /// The polydyne families carry one more factor L with every derivative: each stored row is L times the
    /// derivative of the row below. All other laws are plain derivatives.
    double Row_Factor() const { return law().course == Course::within_one_of_lift ? L : 1.0; }
};

TEST_P(Every_Law, S_runs_from_its_start_to_its_end)
{
    double start = 0.0;
    double end = L;
    if (law().course == Course::within_one_of_lift)
        start = L - 1.0;
    if (law().course == Course::there_and_back)
        end = 0.0;
    if (kind() == 'F') {
        if (law().course == Course::there_and_back)
            start = end = L;  // the mirror of a rise and return hangs from L
        else
            std::swap(start, end);
    }
    EXPECT_NEAR(Data(var::S, 0), start, law().end_slack * L);
    EXPECT_NEAR(Data(var::S, Last_Point()), end, law().end_slack * L);
}

TEST_P(Every_Law, V_is_the_derivative_of_S)
{
    Expect_Derivative(var::S, var::V, Row_Factor());
}

TEST_P(Every_Law, A_is_the_derivative_of_V)
{
    Expect_Derivative(var::V, var::A, Row_Factor());
}

TEST_P(Every_Law, J_is_the_derivative_of_A)
{
    Expect_Derivative(var::A, var::J, Row_Factor());
}

TEST_P(Every_Law, Ping_is_the_derivative_of_J_but_for_its_sign_in_a_mirrored_fall_and_for_MS_and_MT)
{
    if (!law().has_ping) {
        EXPECT_EQ(Largest(var::Ping), 0.0);
        return;
    }
    const double sign = law().mirrored && kind() == 'F' ? -1.0 : 1.0;
    Expect_Derivative(var::J, var::Ping, sign * Row_Factor());
}

INSTANTIATE_TEST_SUITE_P(Laws, Every_Law, ::testing::Combine(::testing::ValuesIn(laws), ::testing::Values('R', 'F')),
                         [](const auto& law) {
                             return std::string(std::get<0>(law.param).code) +
                                    (std::get<1>(law.param) == 'R' ? "_rise" : "_fall");
                         });

// ---- Single values of the laws

TEST_F(Law_Values, displacements_at_places_where_the_curves_have_closed_values)
{
    struct Place {
        const char* code;
        char kind;
        double x;
        double S;  // of a lift of 1
    };
    const double half_root_3 = std::sqrt(3.0) / 2.0;
    const double turn = 2.0 * true_pi;
    const Place places[] = {
        {"SF", 'R', 1.0 / 3, 0.25},  // cos 60 deg = 1/2
        {"SF", 'R', 2.0 / 3, 0.75},
        {"S1", 'R', 1.0 / 3, 1.0 - half_root_3},  // 30 and 60 deg of a quarter wave
        {"S1", 'R', 2.0 / 3, 0.5},
        {"S2", 'R', 1.0 / 3, 0.5},
        {"S2", 'R', 2.0 / 3, half_root_3},
        {"CF", 'R', 0.25, 0.25 - 1.0 / turn},
        {"CF", 'R', 0.50, 0.5},
        {"C1", 'R', 0.50, 0.5 - 1.0 / true_pi},
        {"C2", 'R', 0.50, 0.5 + 1.0 / true_pi},
        {"DH", 'R', 1.0 / 3, 0.5 * (0.5 - 0.25 * 1.5)},  // cos 60 = 1/2, cos 120 = -1/2
        {"DH", 'R', 0.50, 0.25},
        {"DH", 'F', 1.0 / 3, 0.5 * (1.5 - 0.25 * 1.5)},
        {"DH", 'F', 0.50, 0.25},
        {"FR", 'R', 0.25, 0.25 - (80.0 / 84) / turn},  // sines 1 and -1: (81 - 1) / 84
        {"GU", 'R', 0.25, 0.25 - (44.0 / 48) / turn},  // (45 - 1) / 48
        {"45", 'R', 0.25, 53.0 / 512},                 // exact fractions of the polynomials
        {"56", 'R', 0.25, 27.0 / 64},                  // 64 x^3 (1 - x)^3
        {"56", 'R', 0.50, 1.0},
        {"56", 'F', 0.50, 0.0},
        {"67", 'R', 0.25, 289.0 / 4096},
        {"11", 'R', 0.25, 76819.0 / 1048576},
        {"11", 'R', 0.50, 0.5},
        {"BD", 'R', 0.25, 9047.0 / 81920},
        {"BD", 'R', 0.50, 0.5},
        {"BE", 'R', 0.25, 144313.0 / 1638400},
        {"BE", 'R', 0.50, 0.499140625},
        {"DU", 'R', 0.50, 310581.0 / 524288},
        {"DU", 'F', 0.50, 310581.0 / 524288},
        {"MS", 'R', 0.125, 0.43990085 / 8 - 0.0350062},  // the sine is 1 at the bound
        {"MS", 'R', 0.50, 0.499999995},                  // 0.43990085 / 2 + 0.28004957
        {"MS", 'R', 0.9375, 0.9375 * 0.43990085 + 0.56009915 + 0.0350062 * std::sqrt(0.5)},
        {"MT", 'R', 0.25, 2.44406184 / 16 - 0.22203097 / 4 + 0.00723407},
        {"MT", 'R', 0.50, 0.5},  // 1.6110154 / 2 - 0.3055077
        {"MT", 'R', 0.5625, 0.5625 * 1.6110154 + 0.0309544 * std::sqrt(0.5) - 0.3055077},
        {"MT", 'R', 0.75, -2.44406184 * 9 / 16 + 4.6660917 * 3 / 4 - 1.2292648},
        {"MT", 'R', 0.9375, 0.3889845 * 0.9375 + 0.6110154 + 0.0309544 * std::sqrt(0.5)},
    };
    for (const Place& place : places) {
        SCOPED_TRACE(std::string(place.code) + place.kind + " at " + std::to_string(place.x));
        One_Segment(place.kind, place.code, 2.0, 48.0);
        ASSERT_TRUE(Calculate());
        const int i = To_Integer(place.x * 48.0 / 0.125);
        EXPECT_NEAR(Data(var::S, i), 2.0 * place.S, 3e-7);
    }
}

TEST_F(Law_Values, largest_V_A_and_J_of_the_common_laws_are_their_closed_values)
{
    // In units of L / b, L / b^2, L / b^3. With s = x (1 - x) the accelerations of 345 and 4567 are
    // 60 s sqrt(1 - 4 s), largest at s = 1/6, and 420 s^2 sqrt(1 - 4 s), largest at s = 1/5. The modified laws
    // follow from their parts of a sine: peak accelerations 4 pi^2 / (4 + pi) and 8 pi / (2 + pi).
    struct Peaks {
        const char* code;
        double V, A, J;
    };
    const double pi2 = true_pi * true_pi;
    const double ms = 4.0 * pi2 / (4.0 + true_pi);
    const double mt = 8.0 * true_pi / (2.0 + true_pi);
    const Peaks expected[] = {
        {"SF", true_pi / 2.0, pi2 / 2.0, pi2 * true_pi / 2.0},
        {"CF", 2.0, 2.0 * true_pi, 4.0 * pi2},
        {"MS", ms / true_pi, ms, 4.0 * true_pi * ms},
        {"MT", 2.0, mt, 4.0 * true_pi * mt},
        {"45", 1.875, 10.0 / std::sqrt(3.0), 60.0},
        {"67", 2.1875, 84.0 / 25.0 * std::sqrt(5.0), 52.5},
    };
    for (const Peaks& peaks : expected) {
        SCOPED_TRACE(peaks.code);
        Unit_Segment('R', peaks.code, 360.0);
        ASSERT_TRUE(Calculate());
        // A point lies within half a step of the peak: 1e-5 of it at most; six printed digits of MS and MT.
        EXPECT_NEAR(Largest(var::V), peaks.V, 1e-5 * peaks.V);
        EXPECT_NEAR(Largest(var::A), peaks.A, 1e-5 * peaks.A);
        EXPECT_NEAR(Largest(var::J), peaks.J, 1e-5 * peaks.J);
    }
}

TEST_F(Law_Values, polynomials_rest_at_both_ends_as_far_as_their_boundary_conditions_go)
{
    // Highest derivative that is zero at both ends: 2 for 345 and 3456, 3 for 4567, 4 for 5-11.
    const std::pair<const char*, int> orders[] = {{"45", 2}, {"56", 2}, {"67", 3}, {"11", 4}, {"BD", 2}};
    constexpr int rows[] = {var::S, var::V, var::A, var::J, var::Ping};
    for (const auto& [code, highest] : orders) {
        SCOPED_TRACE(code);
        Unit_Segment('R', code, 90.0);
        ASSERT_TRUE(Calculate());
        for (int order = 1; order <= highest; ++order) {
            EXPECT_NEAR(Data(rows[order], 0), 0.0, 1e-9);
            EXPECT_NEAR(Data(rows[order], Last_Point()), 0.0, 1e-9);
        }
    }
    // The printed coefficients of the E polynomial leave sum k c(k) = 0.02 and sum k (k - 1) c(k) = 0.16.
    Unit_Segment('R', "BE", 90.0);
    ASSERT_TRUE(Calculate());
    EXPECT_NEAR(Data(var::V, Last_Point()), 0.02, 1e-8);
    EXPECT_NEAR(Data(var::A, Last_Point()), 0.16, 1e-7);
}

TEST_F(Law_Values, polynomial_derivatives_at_mid_segment_are_the_exact_fractions)
{
    struct Middle {
        const char* code;
        double V, A, J, P;
    };
    const Middle expected[] = {
        {"45", 1.875, 0.0, -30.0, 0.0},
        {"56", 0.0, -24.0, 0.0, 1152.0},
        {"67", 2.1875, 0.0, -52.5, 0.0},
        {"11", 2.05078125, 0.0, -29.53125, 0.0},
        {"BD", 1.809375, 0.0, -25.275, 0.0},
        {"BE", 2.01609375, -0.004375, -40.36875, 0.45},
        // With y = 1/2; the sign of the odd derivatives is that of a rise.
        {"DU", 208845.0 / 131072, -164745.0 / 65536, -86205.0 / 8192, 467775.0 / 4096},
    };
    for (const Middle& e : expected) {
        SCOPED_TRACE(e.code);
        Unit_Segment('R', e.code, 90.0);
        ASSERT_TRUE(Calculate());
        EXPECT_NEAR(Data(var::V, 360), e.V, 1e-6);
        EXPECT_NEAR(Data(var::A, 360), e.A, 1e-6);
        EXPECT_NEAR(Data(var::J, 360), e.J, 1e-5);
        EXPECT_NEAR(Data(var::Ping, 360), e.P, 1e-4);
    }
}

TEST_F(Law_Values, a_fall_with_modified_sine_runs_down_with_negative_V_and_no_Ping)
{
    One_Segment('F', "MS", 3.0, 90.0);
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 0), 3.0);
    EXPECT_NEAR(Data(var::S, 720), 0.0, 1e-6);
    for (int i = 1; i < 720; ++i) {
        ASSERT_LT(Data(var::V, i), 0.0);
        ASSERT_LE(Data(var::S, i), Data(var::S, i - 1));
        ASSERT_EQ(Data(var::Ping, i), 0.0);
    }
}

TEST_F(Law_Values, a_fall_with_a_cycloid_keeps_the_sign_of_the_rises_Ping)
{
    double ping[2];
    int n = 0;
    for (const char kind : {'R', 'F'}) {
        Unit_Segment(kind, "CF", 80.0);
        ASSERT_TRUE(Calculate());
        ping[n++] = Data(var::Ping, 160);  // x = 1/4, where the sine is 1
    }
    EXPECT_EQ(ping[0], ping[1]);
    EXPECT_NEAR(ping[0], -std::pow(2.0 * true_pi, 3), 2e-5);
}

TEST_F(Law_Values, a_mirrored_fall_is_the_rise_upside_down_but_for_the_sign_of_Ping)
{
    for (const Law& law : laws) {
        if (!law.mirrored)
            continue;
        SCOPED_TRACE(law.code);
        One_Segment('R', law.code, 2.5, 120.0);
        ASSERT_TRUE(Calculate());
        const Table<Single> rise = design.results.CalcData;
        One_Segment('F', law.code, 2.5, 120.0);
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= Last_Point(); ++i) {
            ASSERT_EQ(Data(var::S, i), Single(2.5 - rise(var::S, i)));
            ASSERT_EQ(Data(var::V, i), -rise(var::V, i));
            ASSERT_EQ(Data(var::A, i), -rise(var::A, i));
            ASSERT_EQ(Data(var::J, i), -rise(var::J, i));
            ASSERT_EQ(Data(var::Ping, i), rise(var::Ping, i));  // the rise's sign, meant
        }
    }
}

TEST_F(Law_Values, a_fall_with_a_form_of_its_own_is_the_rise_backwards)
{
    // Odd derivatives change sign. x of one point and 1 - x of the other are rounded each on its own, by 2^-24 at
    // most: with powers up to 50 that is below 1e-5 of the largest value.
    for (const Law& law : laws) {
        if (law.mirrored)
            continue;
        SCOPED_TRACE(law.code);
        One_Segment('F', law.code, 2.5, 120.0);
        ASSERT_TRUE(Calculate());
        const Table<Single> fall = design.results.CalcData;
        One_Segment('R', law.code, 2.5, 120.0);
        ASSERT_TRUE(Calculate());
        const int last = Last_Point();
        double sign = 1.0;
        for (const int row : {var::S, var::V, var::A, var::J, var::Ping}) {
            for (int i = 0; i <= last; ++i)
                ASSERT_NEAR(fall(row, i), sign * Data(row, last - i), 1e-5 * Largest(row)) << row << ", " << i;
            sign = -sign;
        }
    }
}

TEST_F(Law_Values, a_mirrored_law_runs_as_a_rise_in_a_segment_of_any_kind_but_F)
{
    for (const char* kind : {"R", "P", "D", "S", ""}) {
        One_Segment('R', "SF", 2.0, 90.0, 1.0);
        m().Rise_Fall_Dwell(1) = kind;
        ASSERT_TRUE(Calculate());
        EXPECT_NEAR(Data(var::S, 30), 0.5, 1e-6) << kind;
    }
}

TEST_F(Law_Values, laws_with_two_forms_store_the_working_point_as_it_is_when_neither_rise_nor_fall)
{
    for (const char* code : {"DH", "DU", "ST", "TH"}) {
        SCOPED_TRACE(code);
        One_Segment('R', code, 2.0, 90.0, 1.0);
        m().Rise_Fall_Dwell(1) = "P";
        m().Base_Shift(1) = 10.0;
        m().Seg_S = 1.5;
        m().Seg_V = 2.5;
        m().Seg_A = 3.5;
        m().Seg_J = 4.5;
        m().Seg_P = 5.5;
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= 90; ++i) {
            ASSERT_EQ(Data(var::Angle, i), i);
            ASSERT_EQ(Data(var::S, i), 11.5);
            ASSERT_EQ(Data(var::V, i), 2.5);
            ASSERT_EQ(Data(var::A, i), 3.5);
            ASSERT_EQ(Data(var::J, i), 4.5);
            ASSERT_EQ(Data(var::Ping, i), 5.5);
        }
        EXPECT_EQ(Data(var::S, 91), 0.0);
    }
}

// ---- Rise and return

TEST_F(Law_Values, a_3456_polynomial_ends_where_it_began_whatever_end_was_typed)
{
    One_Segment('R', "56", 3.0, 90.0);
    m().Base_Shift(1) = 2.0;
    m().End_Value(1) = "5";
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 0), 2.0);
    EXPECT_EQ(Data(var::S, 360), 5.0);
    EXPECT_NEAR(Data(var::S, 720), 2.0, 1e-9);
    EXPECT_EQ(m().End_Value(1), "5");
    EXPECT_EQ(m().Firstlast(1, 2, 0), Data(var::S, 720));
}

// ---- Regions of the modified sine and the modified trapezoid, with L = b = 1

TEST_F(Law_Values, modified_sine_takes_a_bound_with_the_region_below_it)
{
    // The regions agree in S, V and A at their bounds; J tells them apart, through what the literal of pi leaves.
    Unit_Segment('R', "MS", 80.0);
    ASSERT_TRUE(Calculate());
    // Bound 1/8, region 1: cos(u) at u = PI4 / 8 is true pi / 2 - u. Region 2 would give 0 within 1e-14.
    EXPECT_NEAR(Data(var::J, 80), 69.4663577 * (true_pi / 2.0 - 12.566370616 / 8.0), 1e-13);
    EXPECT_LT(Data(var::J, 80), -1e-8);
    // Bound 7/8, region 2: sin(u) at u = PI is true pi - u. Region 3 would give 4.3e-8.
    EXPECT_NEAR(Data(var::J, 560), -23.1553 * (true_pi - 3.141592654), 1e-13);
}

TEST_F(Law_Values, modified_sine_enters_the_next_region_one_step_above_a_bound)
{
    Unit_Segment('R', "MS", 80.0);
    ASSERT_TRUE(Calculate());
    const double dx = 0.125 / 80.0;
    const double tolerance = 69.4663577 * 4.0 * true_pi * std::ldexp(1.0, -24);  // x is rounded to 24 bits
    // Above 1/8: -23.1553 sin((PI4 / 3) dx); below: 69.4663577 cos(pi / 2 - PI4 dx) = 69.4663577 sin(PI4 dx).
    EXPECT_NEAR(Data(var::J, 79), 69.4663577 * std::sin(4.0 * true_pi * dx), tolerance);
    EXPECT_NEAR(Data(var::J, 81), -23.1553 * std::sin(4.0 * true_pi / 3.0 * dx), tolerance);
    // Below 7/8: -23.1553 sin(pi - (PI4 / 3) dx); above: 69.4663577 cos(3 pi / 2 + PI4 dx).
    EXPECT_NEAR(Data(var::J, 559), -23.1553 * std::sin(4.0 * true_pi / 3.0 * dx), tolerance);
    EXPECT_NEAR(Data(var::J, 561), 69.4663577 * std::sin(4.0 * true_pi * dx), tolerance);
}

TEST_F(Law_Values, modified_sine_ends_in_its_last_region)
{
    Unit_Segment('R', "MS", 80.0);
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 640), 1.0);  // 0.43990085 + 0.56009915
    EXPECT_NEAR(Data(var::V, 640), 0.0, 1e-9);
    EXPECT_NEAR(Data(var::A, 640), 0.0, 1e-7);
    EXPECT_NEAR(Data(var::J, 640), 69.4663577, 1e-5);
}

TEST_F(Law_Values, modified_sine_keeps_the_six_digits_of_its_middle_jerk)
{
    Unit_Segment('R', "MS", 80.0);
    ASSERT_TRUE(Calculate());
    // At x = 1/2 u = pi / 2. Exact would be 5.5279571 * 4 pi / 3 = 23.15545.
    EXPECT_EQ(Data(var::J, 320), Single(-23.1553));
    EXPECT_EQ(Data(var::V, 320), Single(1.31970255 + 0.43990085));
}

TEST_F(Law_Values, modified_trapezoid_takes_a_bound_with_the_region_below_it)
{
    Unit_Segment('R', "MT", 80.0);
    ASSERT_TRUE(Calculate());
    // 1/8: S of region 1 with its sine at 1; region 2 would give 0.01766867.
    EXPECT_NEAR(Data(var::S, 80), 0.3889845 / 8 - 0.03095, 1e-8);
    // 3/8: V of region 2; region 3 would give 1.61102, its cosine being 0.
    EXPECT_EQ(Data(var::V, 240), Single(4.888124 * 0.375 - 0.222031));
    // 1/2: A of region 3 has a sine of the literal of pi; region 4 would give 0.
    EXPECT_NEAR(Data(var::A, 320), 4.888124 * (true_pi - 3.141592654), 1e-14);
    EXPECT_LT(Data(var::A, 320), -1e-9);
    // 5/8: V of region 4 with its cosine at 0; region 5 would give 1.6110142.
    EXPECT_NEAR(Data(var::V, 400), 1.61102, 1e-7);
    // 7/8: V of region 5; region 6 would give 0.3889845.
    EXPECT_EQ(Data(var::V, 560), Single(-4.888124 * 0.875 + 4.6660917));
}

TEST_F(Law_Values, modified_trapezoid_enters_the_next_region_one_step_above_a_bound)
{
    Unit_Segment('R', "MT", 80.0);
    ASSERT_TRUE(Calculate());
    const double dx = 0.125 / 80.0;
    const double slope = 4.0 * true_pi * std::ldexp(1.0, -24);  // of u, x being rounded to 24 bits
    const double swing = 61.425769 * std::sin(4.0 * true_pi * dx);
    EXPECT_NEAR(Data(var::J, 79), swing, 61.425769 * slope);  // cos(pi / 2 - PI4 dx)
    EXPECT_EQ(Data(var::J, 81), 0.0);                         // constant acceleration
    EXPECT_EQ(Data(var::J, 239), 0.0);
    EXPECT_NEAR(Data(var::J, 241), -swing, 61.425769 * slope);  // cos(pi / 2 + PI4 dx)
    // Regions 3 and 4 agree in all but the rounding; both reach -61.425769 at mid-segment.
    EXPECT_NEAR(Data(var::J, 320), -61.425769, 61.425769 * slope);
    EXPECT_NEAR(Data(var::A, 319), 4.888124 * std::sin(4.0 * true_pi * dx), 4.888124 * slope);
    EXPECT_NEAR(Data(var::A, 321), -4.888124 * std::sin(4.0 * true_pi * dx), 4.888124 * slope);
    EXPECT_NEAR(Data(var::J, 399), -swing, 61.425769 * slope);
    EXPECT_EQ(Data(var::J, 401), 0.0);
    EXPECT_EQ(Data(var::J, 559), 0.0);
    EXPECT_NEAR(Data(var::J, 561), swing, 61.425769 * slope);  // -cos(pi / 2 + PI4 dx)
}

TEST_F(Law_Values, modified_trapezoid_ends_in_its_last_region)
{
    Unit_Segment('R', "MT", 80.0);
    ASSERT_TRUE(Calculate());
    EXPECT_NEAR(Data(var::S, 640), 0.9999999, 4e-8);  // 0.3889845 + 0.6110154, not 1: meant
    EXPECT_LT(Data(var::S, 640), 1.0);
    EXPECT_NEAR(Data(var::V, 640), 0.0, 1e-9);
    EXPECT_NEAR(Data(var::A, 640), 0.0, 1e-7);
    EXPECT_NEAR(Data(var::J, 640), 61.425769, 1e-5);  // u = pi
}

TEST_F(Law_Values, modified_trapezoid_keeps_its_coefficients_of_fewer_digits)
{
    Unit_Segment('R', "MT", 80.0);
    ASSERT_TRUE(Calculate());
    // Region 1, x = 1/8: 0.03095, not 0.0309544.
    EXPECT_NEAR(Data(var::S, 80), 0.01767306, 1e-8);
    // Region 2, one step on: 0.222031, not the 0.22203097 of S.
    const double x = Single(10.125 / 80.0);
    EXPECT_EQ(Data(var::V, 81), Single(4.888124 * x - 0.222031));
    EXPECT_NE(Data(var::V, 81), Single(4.888124 * x - 0.22203097));
    // Regions 3 and 4: 1.61102, not 1.6110154; V at 1/2 is 1.61102 + 0.3889845.
    EXPECT_EQ(Data(var::V, 320), Single(2.0000045));
    EXPECT_NEAR(Data(var::V, 360), 1.61102 + 0.3889845 * std::sqrt(0.5), 2e-7);  // x = 9/16
}

/// What a law must give at a place where its sines and cosines are 0, 1 or the root of 1/2.
struct Digits {
    double sixteenths;  // x in sixteenths
    int row;
    double value;  // with L = b = 1
};

/// Each value to the last bit that 32 bits can hold, for many lifts: whatever digit one lift's rounding hides,
/// another's shows.
void Expect_Digits(std::string_view code, std::span<const Digits> expected)
{
    for (int n = 0; n < 64; ++n) {
        const double L = 1.0 + n / 64.0;
        Unit_Segment('R', code, 80.0, 1.0);
        m().Lift = L;
        ASSERT_TRUE(Calculate());
        for (const Digits& e : expected) {
            const double value = L * e.value;
            const double half_a_bit = std::ldexp(1.0, std::ilogb(value) - 24);
            const double literal_of_pi = 2e-9;  // the angles are off by some 1e-10
            EXPECT_NEAR(Data(e.row, static_cast<int>(5 * e.sixteenths)), value, half_a_bit + literal_of_pi * L)
                << code << ", x = " << e.sixteenths << "/16, row " << e.row << ", lift " << L;
        }
    }
}

TEST_F(Law_Values, modified_sine_has_all_digits_of_its_coefficients)
{
    const double root = std::sqrt(0.5);
    const Digits expected[] = {
        {0, var::J, 69.4663577},
        {1, var::S, 0.43990085 / 16 - 0.0350062 * root},
        {2, var::S, 0.43990085 / 8 - 0.0350062},
        {2, var::V, 0.43990085},
        {2, var::A, 5.5279571},
        {8, var::S, 0.43990085 / 2 + 0.28004957},
        {8, var::V, 1.31970255 + 0.43990085},
        {8, var::J, -23.1553},
        {14, var::S, 0.43990085 * 7 / 8 + 0.28004957 + 0.31505577},
        {14, var::V, 0.43990085},
        {14, var::A, -5.5279571},
        {15, var::S, 0.43990085 * 15 / 16 + 0.56009915 + 0.0350062 * root},
        {15, var::V, 0.43990085 * (1 - root)},
        {15, var::A, -5.5279571 * root},
        {16, var::S, 0.43990085 + 0.56009915},
        {16, var::J, 69.4663577},
    };
    Expect_Digits("MS", expected);
}

TEST_F(Law_Values, modified_trapezoid_has_all_digits_of_its_coefficients)
{
    const double root = std::sqrt(0.5);
    const Digits expected[] = {
        {0, var::J, 61.425769},
        {1, var::S, 0.3889845 / 16 - 0.03095 * root},
        {2, var::S, 0.3889845 / 8 - 0.03095},
        {2, var::V, 0.3889845},
        {2, var::A, 4.888124},
        {3, var::S, 2.44406184 * 9 / 256 - 0.22203097 * 3 / 16 + 0.00723407},
        {4, var::S, 2.44406184 / 16 - 0.22203097 / 4 + 0.00723407},
        {6, var::S, 2.44406184 * 9 / 64 - 0.22203097 * 3 / 8 + 0.00723407},
        {4, var::V, 4.888124 / 4 - 0.222031},
        {6, var::V, 4.888124 * 3 / 8 - 0.222031},
        {4, var::A, 4.888124},
        {7, var::S, 1.6110154 * 7 / 16 - 0.0309544 * root - 0.3055077},
        {7, var::V, 1.61102 + 0.3889845 * root},
        {7, var::A, 4.888124 * root},
        {7, var::J, -61.425769 * root},
        {8, var::V, 1.61102 + 0.3889845},
        {8, var::J, -61.425769},
        {9, var::S, 1.6110154 * 9 / 16 + 0.0309544 * root - 0.3055077},
        {10, var::S, 1.6110154 * 5 / 8 + 0.0309544 - 0.3055077},
        {9, var::V, 1.61102 + 0.3889845 * root},
        {10, var::V, 1.61102},
        {10, var::A, -4.888124},
        {9, var::J, -61.425769 * root},
        {11, var::S, -2.44406184 * 121 / 256 + 4.6660917 * 11 / 16 - 1.2292648},
        {12, var::S, -2.44406184 * 9 / 16 + 4.6660917 * 3 / 4 - 1.2292648},
        {14, var::S, -2.44406184 * 49 / 64 + 4.6660917 * 7 / 8 - 1.2292648},
        {12, var::V, -4.888124 * 3 / 4 + 4.6660917},
        {14, var::V, -4.888124 * 7 / 8 + 4.6660917},
        {12, var::A, -4.888124},
        {15, var::S, 0.3889845 * 15 / 16 + 0.6110154 + 0.0309544 * root},
        {16, var::S, 0.3889845 + 0.6110154},
        {15, var::V, 0.3889845 - 0.3889845 * root},
        {15, var::A, -4.888124 * root},
        {15, var::J, 61.425769 * root},
        {16, var::J, 61.425769},
    };
    Expect_Digits("MT", expected);
}

// ---- Polydyne families

TEST_F(Law_Values, Dudley_runs_with_first_power_10)
{
    // Coefficients -105/64, 231/64, -35/8, 45/32 of y^2, y^10, y^12, y^14, exact in 32 bits. At full lift only
    // the square counts: A = 2 C2. At the base G3 = 720 Cp - ... sums to -105 and G4 to 0.
    Unit_Segment('F', "DU", 90.0);
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 0), 1.0);
    EXPECT_EQ(Data(var::V, 0), 0.0);
    EXPECT_EQ(Data(var::A, 0), -3.28125);
    EXPECT_EQ(Data(var::S, 720), 0.0);
    EXPECT_EQ(Data(var::V, 720), 0.0);
    EXPECT_EQ(Data(var::A, 720), 0.0);
    EXPECT_EQ(Data(var::J, 720), -105.0);
    EXPECT_EQ(Data(var::Ping, 720), 0.0);
}

TEST_F(Law_Values, Dudley_raises_a_first_power_below_4_to_4)
{
    for (const char kind : {'R', 'F'}) {
        One_Segment(kind, "DU", 2.0, 90.0, 1.0);
        ASSERT_TRUE(Dudley(design, 4));
        EXPECT_EQ(m().Function(1), "8");
        const Table<Single> with_4 = design.results.CalcData;
        for (const double p : {3.999, 3.0, 0.0, -10.0}) {
            One_Segment(kind, "DU", 2.0, 90.0, 1.0);
            ASSERT_TRUE(Dudley(design, p));
            EXPECT_EQ(m().Function(1), "8");
            for (int i = 0; i <= 90; ++i)
                for (const int row : {var::S, var::V, var::A, var::J, var::Ping})
                    ASSERT_EQ(Data(row, i), with_4(row, i)) << p << ", row " << row << ", point " << i;
        }
        One_Segment(kind, "DU", 2.0, 90.0, 1.0);
        ASSERT_TRUE(Dudley(design, 4.5));
        EXPECT_EQ(m().Function(1), "8.5");
    }
}

TEST_F(Law_Values, Dudley_with_first_power_4_has_the_polynomial_of_these_powers)
{
    // 1 - 24/7 y^2 + 30/7 y^4 - 16/7 y^6 + 3/7 y^8 at y = 1/2, over the common denominator 7 * 256.
    const double middle = 1.0 + (-24.0 * 64 + 30.0 * 16 - 16.0 * 4 + 3.0) / (7.0 * 256);
    One_Segment('R', "DU", 2.0, 90.0, 1.0);
    ASSERT_TRUE(Dudley(design, 4));
    EXPECT_NEAR(Data(var::S, 45), 2.0 * middle, 1e-6);
    EXPECT_NEAR(Data(var::S, 90), 2.0, 1e-6);
}

TEST_F(Law_Values, Dudley_holds_its_coefficients_in_32_bits)
{
    // With first power 4 the coefficients are sevenths; rounded to 32 bits they do not sum to -1 exactly, and the
    // remainder is what S keeps at the base.
    const auto seventh = [](int n) { return static_cast<double>(static_cast<float>(n / 7.0)); };
    const double remainder = 1.0 + seventh(-24) + seventh(30) + seventh(-16) + seventh(3);
    ASSERT_GT(std::abs(remainder), 1e-9) << "the example must show the rounding";
    One_Segment('F', "DU", 1.0, 90.0, 1.0);
    ASSERT_TRUE(Dudley(design, 4));
    EXPECT_NEAR(Data(var::S, 90), remainder, 1e-15);
}

TEST_F(Law_Values, Stoddard_and_Thoren_run_within_one_below_the_lift)
{
    const std::pair<double, double> starts[] = {{1.0, 0.0}, {2.0, 1.0}, {0.25, -0.75}};
    for (const char* code : {"ST", "TH"}) {
        for (const auto& [L, base] : starts) {
            One_Segment('R', code, L, 90.0);
            ASSERT_TRUE(Calculate());
            EXPECT_NEAR(Data(var::S, 0), base, 1e-12);
            EXPECT_EQ(Data(var::S, 720), L);
            One_Segment('F', code, L, 90.0);
            ASSERT_TRUE(Calculate());
            EXPECT_EQ(Data(var::S, 0), L);
            EXPECT_NEAR(Data(var::S, 720), base, 1e-12);
        }
    }
}

TEST_F(Law_Values, Stoddard_and_Thoren_meet_their_base_with_V_A_J_and_Ping_zero)
{
    // Their five coefficients are the solution of: sum -1, and the first four derivatives zero at y = 1.
    for (const char* code : {"ST", "TH"}) {
        Unit_Segment('R', code, 90.0);
        ASSERT_TRUE(Calculate());
        EXPECT_NEAR(Data(var::S, 0), 0.0, 1e-12);  // coefficients in double: 32 bits would leave about 1e-8
        EXPECT_NEAR(Data(var::V, 0), 0.0, 1e-10);
        EXPECT_NEAR(Data(var::A, 0), 0.0, 1e-9);
        EXPECT_NEAR(Data(var::J, 0), 0.0, 1e-7);
        EXPECT_NEAR(Data(var::Ping, 0), 0.0, 1e-5);
    }
}

TEST_F(Law_Values, Stoddard_and_Thoren_have_the_powers_of_their_name)
{
    // At y = 1/2 the high powers weigh less than 1e-3, 1e-5 and so on; the square term and the first high power are
    // exact fractions: ST -1.566416 y^2 + y^10 - 2/3 y^20, TH -1.389693 y^2 + 0.794110 y^14 - 0.641397 y^26.
    Unit_Segment('R', "ST", 90.0);
    ASSERT_TRUE(Calculate());
    const double st = 1.0 - (10.0 * 20 * 30 * 40) / (8.0 * 18 * 28 * 38) / 4.0 + std::ldexp(1.0, -10) -
                      2.0 / 3.0 * std::ldexp(1.0, -20);
    EXPECT_NEAR(Data(var::S, 360), st, 6e-8);
    EXPECT_EQ(Data(var::A, 720), Single(-2.0 * 240000 / 153216));
    Unit_Segment('R', "TH", 90.0);
    ASSERT_TRUE(Calculate());
    const double th = 1.0 - (14.0 * 26 * 38 * 50) / (12.0 * 24 * 36 * 48) / 4.0 +
                      2.0 * 26 * 38 * 50 / (12.0 * 12 * 24 * 36) * std::ldexp(1.0, -14);
    EXPECT_NEAR(Data(var::S, 360), th, 7e-8);
    EXPECT_EQ(Data(var::A, 720), Single(-2.0 * 691600 / 497664));
}

TEST_F(Law_Values, Stoddard_and_Thoren_add_the_lift_to_S_and_raise_it_to_the_order_of_the_derivative)
{
    for (const char* code : {"ST", "TH"}) {
        for (const char kind : {'R', 'F'}) {
            Unit_Segment(kind, code, 90.0, 1.0);
            ASSERT_TRUE(Calculate());
            const Table<Single> unit = design.results.CalcData;
            Unit_Segment(kind, code, 90.0, 1.0);
            m().Lift = 2.0;  // powers of two leave the rounding as it is
            ASSERT_TRUE(Calculate());
            for (int i = 0; i <= 90; ++i) {
                ASSERT_NEAR(Data(var::S, i), unit(var::S, i) + 1.0, 1.2e-7);
                ASSERT_EQ(Data(var::V, i), 2.0 * unit(var::V, i));
                ASSERT_EQ(Data(var::A, i), 4.0 * unit(var::A, i));
                ASSERT_EQ(Data(var::J, i), 8.0 * unit(var::J, i));
                ASSERT_EQ(Data(var::Ping, i), 16.0 * unit(var::Ping, i));
            }
        }
    }
}

TEST_F(Law_Values, every_other_law_scales_with_its_lift)
{
    for (const Law& law : laws) {
        if (law.course == Course::within_one_of_lift)
            continue;
        SCOPED_TRACE(law.code);
        Unit_Segment('R', law.code, 90.0, 1.0);
        ASSERT_TRUE(Calculate());
        const Table<Single> unit = design.results.CalcData;
        Unit_Segment('R', law.code, 90.0, 1.0);
        m().Lift = 4.0;  // a power of two leaves the rounding as it is
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= 90; ++i)
            for (const int row : {var::S, var::V, var::A, var::J, var::Ping})
                ASSERT_EQ(Data(row, i), 4.0 * unit(row, i)) << "row " << row << ", point " << i;
    }
}

TEST_F(Law_Values, derivatives_scale_with_powers_of_beta)
{
    for (const Law& law : laws) {
        SCOPED_TRACE(law.code);
        Unit_Segment('F', law.code, 90.0, 1.0);
        ASSERT_TRUE(Calculate());
        const Table<Single> unit = design.results.CalcData;
        Unit_Segment('F', law.code, 90.0, 1.0);
        m().Beta_Rad(1) = 0.5;
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= 90; ++i) {
            ASSERT_EQ(Data(var::S, i), unit(var::S, i));
            ASSERT_EQ(Data(var::V, i), 2.0 * unit(var::V, i));
            ASSERT_EQ(Data(var::A, i), 4.0 * unit(var::A, i));
            ASSERT_EQ(Data(var::J, i), 8.0 * unit(var::J, i));
            ASSERT_EQ(Data(var::Ping, i), 16.0 * unit(var::Ping, i));
        }
    }
}

// ---- Dwell

TEST_F(Law_Values, a_dwell_holds_the_lift_with_all_derivatives_zero)
{
    One_Segment('D', "DW", 3.0, 90.0, 1.0);
    m().Seg_V = m().Seg_A = m().Seg_J = m().Seg_P = 9.0;
    ASSERT_TRUE(Calculate());
    for (int i = 0; i <= 90; ++i) {
        ASSERT_EQ(Data(var::S, i), 3.0);
        for (const int row : {var::V, var::A, var::J, var::Ping})
            ASSERT_EQ(Data(row, i), 0.0);
    }
    EXPECT_EQ(Data(var::S, 91), 0.0);
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
    EXPECT_EQ(m().Firstlast(1, 1, 0), 3.0);
    EXPECT_EQ(m().Firstlast(1, 2, 0), 3.0);
}

TEST_F(Law_Values, a_dwell_takes_its_position_from_the_value_it_is_given)
{
    One_Segment('D', "DW", 3.0, 90.0, 1.0);
    Dwell(design, -1.5);
    EXPECT_EQ(m().Total_Displacement(1), -1.5);
    EXPECT_EQ(Data(var::S, 0), -1.5);
    EXPECT_EQ(Data(var::S, 90), -1.5);
    EXPECT_EQ(m().Lift, 3.0);
}

TEST_F(Law_Values, a_dwell_is_not_mirrored)
{
    One_Segment('D', "DW", 3.0, 90.0, 1.0);
    m().Rise_Fall_Dwell(1) = "F";
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 45), 3.0);
}

}  // namespace
}  // namespace lobemax
