// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segment_store.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/traps.h"
#include "tests/support/one_segment.h"

namespace lobemax {
namespace {

using namespace one_segment;

class Point_Loop : public ::testing::Test, protected Motion_Programs_Fixture {};
class Dispatcher : public ::testing::Test, protected Motion_Programs_Fixture {};

// ---- The point loop

TEST_F(Point_Loop, Load_Beta_stores_square_and_cube_of_beta_in_32_bits)
{
    m().Seg = 4;
    m().Beta_Rad(4) = 1.1;
    const double b = m().Beta_Rad(4);
    Load_Beta(design);
    EXPECT_EQ(m().Beta_Sq, Single(b * b));
    EXPECT_EQ(m().Beta_Cu, Single(b * b * b));
    EXPECT_NE(m().Beta_Sq, b * b) << "the example must show the rounding";
    EXPECT_EQ(m().Beta_Rad(4), b);
}

TEST_F(Point_Loop, ends_exactly_on_a_beta_that_is_a_multiple_of_the_step)
{
    for (const double step : {1.0, 0.5, 0.25, 0.125}) {
        SCOPED_TRACE(step);
        One_Segment('R', "45", 2.0, 360.0, step);
        ASSERT_TRUE(Calculate());
        const int last = m().Max_Data_Points_used;
        EXPECT_EQ(Data(var::Angle, last), 360.0);
        EXPECT_EQ(Data(var::S, last), 2.0);  // 10 - 15 + 6 = 1
        EXPECT_EQ(Data(var::Angle, 0), 0.0);
        EXPECT_EQ(Data(var::Angle, 1), step);
    }
}

TEST_F(Point_Loop, ends_at_the_last_step_below_a_beta_that_is_no_multiple_of_the_step)
{
    One_Segment('R', "45", 1.0, 90.75, 1.0);
    design.results.CalcData(var::S, 91) = -99.0;
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(Data(var::S, 91), -99.0);  // the law's end value is not stored
    const double x = 90.0 / 90.75;
    EXPECT_NEAR(Data(var::S, 90), ((6 * x - 15) * x + 10) * x * x * x, 2e-7);
    EXPECT_LT(Data(var::S, 90), 1.0);
    EXPECT_GT(Data(var::V, 90), 0.0);
}

TEST_F(Point_Loop, takes_the_place_in_the_segment_as_a_32_bit_number)
{
    // At the end of the rise and return 64 x^3 (1 - x)^3 the rounding of x shows: 1 - x has few digits left.
    One_Segment('R', "56", 1.0, 100.0);
    ASSERT_TRUE(Calculate());
    const double exact = 99.875 / 100.0;
    const double rounded = static_cast<double>(static_cast<float>(exact));
    const auto curve = [](double x) { return 64.0 * std::pow(x * (1.0 - x), 3); };
    ASSERT_GT(std::abs(curve(rounded) / curve(exact) - 1.0), 1e-5) << "the example must show the rounding";
    EXPECT_NEAR(Data(var::S, 799) / curve(rounded), 1.0, 1e-6);
}

TEST_F(Point_Loop, takes_the_place_from_degrees_and_the_derivatives_from_radians)
{
    One_Segment('R', "C1", 3.0, 80.0);
    m().Beta_Rad(1) = 2.0;
    ASSERT_TRUE(Calculate());
    const int middle = 320;  // 40 degrees of 80: x = 1/2
    EXPECT_NEAR(Data(var::S, middle), 3.0 * (0.5 - 1.0 / true_pi), 1e-6);
    EXPECT_NEAR(Data(var::V, middle), 3.0 / 2.0, 1e-6);
    EXPECT_NEAR(Data(var::A, middle), 3.0 * true_pi / 4.0, 1e-6);
    EXPECT_NEAR(Data(var::J, middle), 0.0, 1e-6);
    EXPECT_NEAR(Data(var::Ping, middle), -3.0 * std::pow(true_pi, 3) / 16.0, 1e-5);
}

TEST_F(Point_Loop, cycloid_divides_by_the_square_and_cube_of_beta_stored_in_32_bits)
{
    int seen_in_A = 0;
    int seen_in_J = 0;
    for (int n = 0; n < 50; ++n) {
        One_Segment('R', "CF", 1.0, 80.0, 1.0);
        m().Beta_Rad(1) = 1.1 + 0.03 * n;
        const double b = m().Beta_Rad(1);
        const double b2 = Single(b * b);
        const double b3 = Single(b * b * b);
        ASSERT_TRUE(Calculate());
        // The sine at x = 1/4 and the cosine at x = 0 are 1 in double.
        ASSERT_EQ(Data(var::A, 20), Single(6.283185308 / b2));
        ASSERT_EQ(Data(var::J, 0), Single(39.47841761466706 / b3));
        seen_in_A += Data(var::A, 20) != Single(6.283185308 / (b * b)) ? 1 : 0;
        seen_in_J += Data(var::J, 0) != Single(39.47841761466706 / (b * b * b)) ? 1 : 0;
    }
    EXPECT_GT(seen_in_A, 0) << "the examples must show the rounding";
    EXPECT_GT(seen_in_J, 0) << "the examples must show the rounding";
}

TEST_F(Point_Loop, stores_a_later_segment_from_its_own_start)
{
    Fresh_Cycle(1.0);
    m().No_of_segments = 2;
    m().Seg = 1;
    m().Beta_Deg(1) = m().Shift(2) = 90.0;
    Pick_Motion(design, 2, 'R');
    Pick_Program(design, 2, "45");
    m().Beta_Deg(2) = 60.0;
    m().Beta_Rad(2) = 60.0 / Deg_per_Rad;
    m().Base_Shift(2) = 2.0;
    m().Lift = 3.0;
    design.results.CalcData(var::S, 89) = -99.0;
    design.results.CalcData(var::S, 151) = -99.0;
    EXPECT_TRUE(Run_Motion_Program(design, 2));
    EXPECT_EQ(m().Seg, 2);
    EXPECT_EQ(Data(var::S, 89), -99.0);
    EXPECT_EQ(Data(var::S, 90), 2.0);
    EXPECT_EQ(Data(var::S, 120), 3.5);
    EXPECT_EQ(Data(var::S, 150), 5.0);
    EXPECT_EQ(Data(var::S, 151), -99.0);
    EXPECT_EQ(Data(var::Angle, 150), 150.0);
    EXPECT_EQ(m().Firstlast(2, 1, 0), 2.0);
    EXPECT_EQ(m().Firstlast(2, 2, 0), 5.0);
}

// ---- The dispatcher

TEST_F(Dispatcher, fills_the_segment_ends_and_Liftmax_after_the_law)
{
    One_Segment('F', "S1", 4.0, 90.0);
    ASSERT_TRUE(Calculate());
    EXPECT_NEAR(m().Firstlast(1, 1, 0), 4.0, 1e-6);
    EXPECT_NEAR(m().Firstlast(1, 2, 0), 0.0, 1e-6);
    const double b = m().Beta_Rad(1);
    EXPECT_NEAR(m().Firstlast(1, 1, 1), 0.0, 1e-6);
    EXPECT_NEAR(m().Firstlast(1, 2, 1), -4.0 * true_pi / (2.0 * b), 1e-5);
    EXPECT_NEAR(m().Firstlast(1, 1, 2), -4.0 * true_pi * true_pi / (4.0 * b * b), 1e-5);
    // Liftmax counts from point 1 on, where this fall is at 4 cos(pi / 2 / 720); zeros follow the segment.
    EXPECT_NEAR(m().Liftmax, 4.0 * std::cos(true_pi / 1440.0), 1e-6);
}

TEST_F(Dispatcher, runs_no_law_for_polynomial_spline_and_unknown_selectors_but_fills_ends_and_Liftmax)
{
    for (const int selector : {6, 11, 0, -3, 20, 32767}) {
        SCOPED_TRACE(selector);
        One_Segment('R', "MS", 1.0, 90.0, 1.0);
        m().Seg_Program(1) = selector;
        m().Function(1) = "as it was";
        m().Seg_S = 0.5;
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(var::S, i) = 10.0 + i;
        ASSERT_TRUE(Calculate());
        for (int i = 0; i <= 360; ++i)
            ASSERT_EQ(Data(var::S, i), 10.0 + i);
        EXPECT_EQ(m().Firstlast(1, 1, 0), 10.0);
        EXPECT_EQ(m().Firstlast(1, 2, 0), 100.0);
        EXPECT_EQ(m().Liftmax, 359.0);
        EXPECT_EQ(m().Function(1), "as it was");
        EXPECT_EQ(m().Seg_S, 0.5);
    }
}

TEST_F(Dispatcher, chooses_full_and_half_laws_by_Full_Half_and_Which_half)
{
    struct Expected {
        int Seg_Program;
        int Full_Half;
        int Which_half;
        double middle;  // S at x = 1/2 with lift 1
    };
    const double root_half = std::sqrt(0.5);
    const Expected expected[] = {
        {1, 1, 0, 0.5}, {1, 1, 2, 0.5}, {1, 2, 1, 1.0 - root_half},     {1, 2, 2, root_half},
        {2, 1, 0, 0.5}, {2, 1, 2, 0.5}, {2, 2, 1, 0.5 - 1.0 / true_pi}, {2, 2, 2, 0.5 + 1.0 / true_pi},
    };
    for (const Expected& e : expected) {
        One_Segment('R', "SF", 1.0, 90.0, 1.0);
        m().Seg_Program(1) = e.Seg_Program;
        m().Full_Half(1) = e.Full_Half;
        m().Which_half(1) = e.Which_half;
        ASSERT_TRUE(Calculate());
        EXPECT_NEAR(Data(var::S, 45), e.middle, 1e-6) << e.Seg_Program << e.Full_Half << e.Which_half;
    }
}

TEST_F(Dispatcher, runs_no_law_for_other_values_of_Full_Half_and_Which_half)
{
    const std::pair<int, int> others[] = {{0, 1}, {3, 1}, {2, 0}, {2, 3}};
    for (const int selector : {1, 2}) {
        for (const auto& [extent, half] : others) {
            One_Segment('R', "SF", 1.0, 90.0, 1.0);
            m().Seg_Program(1) = selector;
            m().Full_Half(1) = extent;
            m().Which_half(1) = half;
            design.results.CalcData(var::S, 45) = -99.0;
            ASSERT_TRUE(Calculate());
            EXPECT_EQ(Data(var::S, 45), -99.0);
        }
    }
}

TEST_F(Dispatcher, refuses_a_segment_outside_the_table_with_error_9)
{
    for (const int segment : {0, 21}) {
        try {
            Run_Motion_Program(design, segment);
            ADD_FAILURE() << "no fault for segment " << segment;
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), 9);
        }
        EXPECT_EQ(m().Seg, 1);
    }
}

TEST_F(Dispatcher, replaces_Function_by_a_bare_number_after_some_laws_only)
{
    const std::pair<const char*, const char*> expected[] = {
        {"MS", "MS - Mod Sine"},
        {"MT", "MT - Mod Trap"},
        {"CF", "CF - Cycloid Full"},
        {"C1", "C1 - Cycloid 1st Half"},
        {"C2", "C2 - Cycloid 2nd Half"},
        {"SF", "SF - SHM Full"},
        {"S1", "S1 - SHM 1st Half"},
        {"S2", "S2 - SHM 2nd Half"},
        {"DH", "DH - Double Harmonic"},
        {"45", "5"},
        {"56", "56 - 3456 Poly"},
        {"67", "7"},
        {"11", "11"},
        {"BD", "BD - Berzak_D"},
        {"BE", "BE - Berzak_E"},
        {"DU", "14"},
        {"ST", "30"},
        {"TH", "38"},
        {"FR", "FR - Freudenstein 1-3"},
        {"GU", "GU - Gutman F3"},
    };
    for (const auto& [code, text] : expected) {
        for (const char kind : {'R', 'F'}) {
            One_Segment(kind, code, 1.0, 90.0, 1.0);
            ASSERT_TRUE(Calculate());
            EXPECT_EQ(m().Function(1), text) << code;
            EXPECT_EQ(m().Program(1), code);
        }
    }
    One_Segment('D', "DW", 1.0, 90.0, 1.0);
    ASSERT_TRUE(Calculate());
    EXPECT_EQ(m().Function(1), "DW - Dwell");
}

// ---- Faults: who reports them

struct Reporter {
    const char* code;
    const char* routine;
    bool by_itself;  // reports under its own name, the dispatcher then returns false

    friend void PrintTo(const Reporter& r, std::ostream* os) { *os << r.code; }
};

constexpr Reporter reporters[] = {
    {"MS", "cmd_CalcSeg_Click", false},
    {"MT", "cmd_CalcSeg_Click", false},
    {"CF", "cmd_CalcSeg_Click", false},
    {"C1", "cmd_CalcSeg_Click", false},
    {"C2", "cmd_CalcSeg_Click", false},
    {"SF", "cmd_CalcSeg_Click", false},
    {"S1", "cmd_CalcSeg_Click", false},
    {"S2", "cmd_CalcSeg_Click", false},
    {"DH", "cmd_CalcSeg_Click", false},
    {"DW", "cmd_CalcSeg_Click", false},
    {"45", "Poly_345", true},
    {"56", "Poly_3456", true},
    {"67", "Poly_4567", true},
    {"11", "Poly_11", true},
    {"BD", "Berzak_D", true},
    {"BE", "Berzak_E", true},
    {"DU", "Dudley", true},
    {"ST", "Thoren", true},
    {"TH", "Thoren", true},
    {"FR", "Freudenstein 1-3", true},
    {"GU", "GutmanF3", true},
};

class Fault_of_a_Law : public ::testing::TestWithParam<Reporter>, protected Motion_Programs_Fixture {
protected:
    /// Marks what a failed law must leave alone.
    void Mark()
    {
        m().Liftmax = -77.0;
        m().Firstlast(1, 1, 0) = -77.0;
        m().Firstlast(1, 2, 0) = -77.0;
        m().Function(1) = "as it was";
        for (int i = 0; i <= m().Max_Data_Points_used; ++i)
            design.results.CalcData(var::S, i) = -99.0;
    }
    void Expect_Segment_Ends_Untouched()
    {
        EXPECT_EQ(m().Liftmax, -77.0);
        EXPECT_EQ(m().Firstlast(1, 1, 0), -77.0);
        EXPECT_EQ(m().Firstlast(1, 2, 0), -77.0);
        EXPECT_EQ(m().Function(1), "as it was");
    }
    /// Runs the segment; the caller's trap must see a fault only of a law that leaves the report to it.
    void Run_into_the_Fault()
    {
        bool all_well = true;
        const bool no_fault_came_out = Trap("cmd_CalcSeg_Click", [&] { all_well = Run_Motion_Program(design, 1); });
        EXPECT_EQ(no_fault_came_out, GetParam().by_itself);
        EXPECT_EQ(all_well, !GetParam().by_itself) << "only a law with a trap of its own can return false";
    }
};

TEST_P(Fault_of_a_Law, a_beta_of_zero_is_error_6_of_the_right_routine_and_leaves_the_segment_uncalculated)
{
    for (const char kind : {'R', 'F', 'D'}) {
        One_Segment(kind, GetParam().code, 1.0, 0.0, 1.0);
        m().Rise_Fall_Dwell(1) = kind;
        Mark();
        Run_into_the_Fault();
        EXPECT_EQ(Taken_Boxes(), std::vector<std::string>{Error_Text(6, GetParam().routine)});
        Expect_Segment_Ends_Untouched();
        EXPECT_EQ(Data(var::S, 0), -99.0);
    }
}

TEST_P(Fault_of_a_Law, a_segment_beyond_the_cycle_is_error_9_of_the_same_routine)
{
    One_Segment('R', GetParam().code, 1.0, 90.0, 1.0);
    m().Shift(1) = 300.0;
    Mark();
    Run_into_the_Fault();
    EXPECT_EQ(Taken_Boxes(), std::vector<std::string>{Error_Text(9, GetParam().routine)});
    Expect_Segment_Ends_Untouched();
}

INSTANTIATE_TEST_SUITE_P(Reporters, Fault_of_a_Law, ::testing::ValuesIn(reporters),
                         [](const auto& law) { return std::string(law.param.code); });

TEST_F(Dispatcher, a_point_that_fits_no_single_is_error_6_of_every_law_that_computes)
{
    for (const Reporter& reporter : reporters) {
        SCOPED_TRACE(reporter.code);
        One_Segment('R', reporter.code, 1e30, 90.0, 1.0);
        m().Beta_Rad(1) = 1e-11;  // V is of the order 1e41
        m().Liftmax = -77.0;
        if (std::string_view(reporter.code) == "DW") {
            EXPECT_TRUE(Calculate()) << "a dwell computes nothing";
            continue;
        }
        EXPECT_FALSE(Calculate());
        EXPECT_EQ(Taken_Boxes(), std::vector<std::string>{Error_Text(6, reporter.routine)});
        EXPECT_EQ(m().Liftmax, -77.0);
    }
}

TEST_F(Dispatcher, an_earlier_division_by_zero_elsewhere_does_not_change_the_number_of_a_fault)
{
    for (const Reporter& reporter : reporters) {
        SCOPED_TRACE(reporter.code);
        One_Segment('R', reporter.code, 1.0, 0.0, 1.0);
        std::feraiseexcept(FE_DIVBYZERO);
        const bool all_well = reporter.by_itself ? Run_Motion_Program(design, 1) : Calculate();
        EXPECT_FALSE(all_well);
        EXPECT_EQ(Taken_Boxes(), std::vector<std::string>{Error_Text(6, reporter.routine)});
    }
}

}  // namespace
}  // namespace lobemax
