// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segment_curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "motion/motion_programs.h"
#include "motion/segment_store.h"
#include "motion/segments.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

constexpr std::array rows{var::S, var::V, var::A, var::J, var::Ping};

std::array<double, 5> Values(const Svajp& p)
{
    return {p.S, p.V, p.A, p.J, p.P};
}

/// A started design of one segment in the radians base, points every 0.25 degrees; the rest of the cycle is a dwell.
class Curve_of_a_Segment : public ::testing::Test {
protected:
    void Make(char kind, const char* code, double beta, double from, double to)
    {
        design_ = {};
        ASSERT_TRUE(Sub_Main(design_, "", {}));
        ASSERT_TRUE(Set_Step(design_, 0.25));
        design_.motion.Time_Base = 3;
        design_.motion.No_of_segments = 2;
        Row(1, kind, code, beta, from, to);
        Row(2, 'D', "DW", 360.0 - beta, to, to);
        Update_Segment_Angles(design_);
    }
    void Row(int i, char kind, const char* code, double beta, double from, double to)
    {
        Motion_Group& m = design_.motion;
        Pick_Motion(design_, i, kind);
        Pick_Program(design_, i, code);
        m.Beta_Deg(i) = beta;
        m.Beta_Rad(i) = m.Beta_Deg(i) / Deg_per_Rad;
        m.Start_Value(i) = Shortest(Single(from));
        m.End_Value(i) = Shortest(Single(to));
    }
    /// V and A at both ends, J at neither.
    void Conditions_of_Rest()
    {
        Motion_Group& m = design_.motion;
        m.No_Conditions(1) = 6;
        m.No_of_conditions(1) = "6";
        for (const int row : {0, 9}) {
            m.V_boundary_cond(1, row) = "0";
            m.A_boundary_cond(1, row) = "0";
        }
    }
    /// The ten conditions of a rise with a given position and velocity inside.
    void Ten_Conditions()
    {
        Conditions_of_Rest();
        Motion_Group& m = design_.motion;
        m.No_Conditions(1) = 10;
        m.No_of_conditions(1) = "10";
        m.T_boundary_cond(1, 1) = "30";
        m.S_boundary_cond(1, 1) = "5";
        m.V_boundary_cond(1, 1) = "9";
        m.T_boundary_cond(1, 2) = "70";
        m.S_boundary_cond(1, 2) = "16";
        m.V_boundary_cond(1, 2) = "10";
    }
    double Data(int row, int i) const { return design_.results.CalcData(row, i); }
    int Last_Point() const { return To_Integer(design_.motion.Beta_Deg(1) / design_.motion.Deltatheta); }
    double Largest(int row) const
    {
        double largest = 0.0;
        for (int i = 0; i <= Last_Point(); ++i)
            largest = std::max(largest, std::abs(Data(row, i)));
        return largest;
    }
    /// The curve at every point of the segment but its last, which the dwell stores anew; the table has its 24 bits of
    /// the place and of each value.
    void Expect_the_Table(const Segment_Curve& curve, double share) const
    {
        for (int i = 0; i < Last_Point(); ++i) {
            const auto at = Values(curve.At(i * 0.25));
            for (std::size_t d = 0; d < rows.size(); ++d)
                ASSERT_NEAR(at[d] + (d == 0 ? double{design_.motion.Base_Shift(1)} : 0.0), Data(rows[d], i),
                            share * Largest(rows[d]) + 1e-12)
                    << "row " << rows[d] << ", point " << i;
        }
    }
    /// Each row is the derivative of the one before it, by central differences of the step h degrees, between the
    /// points. bounds: places, degrees, beside which the curve has a joint of its own.
    void Expect_Derivatives(const Segment_Curve& curve, int derivatives, double share,
                            const std::vector<double>& bounds = {}) const
    {
        constexpr double h = 0.01;
        std::array<double, 5> largest{};
        for (double theta = 0.0; theta <= design_.motion.Beta_Deg(1); theta += 0.25)
            for (std::size_t d = 0; d < largest.size(); ++d)
                largest[d] = std::max(largest[d], std::abs(Values(curve.At(theta))[d]));
        for (double theta = 0.137; theta < design_.motion.Beta_Deg(1) - h; theta += 0.731) {
            if (std::ranges::any_of(bounds, [&](double b) { return std::abs(theta - b) < 2 * h; }))
                continue;
            const auto low = Values(curve.At(theta - h));
            const auto high = Values(curve.At(theta + h));
            const auto at = Values(curve.At(theta));
            for (int d = 1; d <= derivatives; ++d) {
                const auto place = static_cast<std::size_t>(d);
                const double slope = (high[place - 1] - low[place - 1]) / (2 * h / Deg_per_Rad);
                ASSERT_NEAR(at[place], slope, share * largest[place]) << "order " << d << " at " << theta;
            }
        }
    }

    Design_State design_;
};

// ---- Laws

struct Course {
    const char* code;
    double lift = 25.0;
    int derivatives = 4;  // that belong together: MS and MT count Ping as 0
    double digits = 1e-5;
    std::vector<double> bounds = {};  // eighths of beta
};

std::vector<Course> All_Laws()
{
    return {{"MS", 25, 3, 1e-5, {1, 7}},
            {"MT", 25, 3, 4e-5, {1, 3, 4, 5, 7}},
            {"CF"},
            {"C1"},
            {"C2"},
            {"SF"},
            {"S1"},
            {"S2"},
            {"DH"},
            {"45"},
            {"56"},
            {"67"},
            {"11", 25, 4, 1e-5},
            {"BD"},
            {"BE"},
            {"DU", 25, 4, 1e-5},
            {"ST", 1, 4, 1e-4},
            {"TH", 1, 4, 1e-4},
            {"FR"},
            {"GU"}};
}

using Law_as_a_Curve = Curve_of_a_Segment;

TEST_F(Law_as_a_Curve, is_the_stored_table_at_the_points_of_rises_and_falls)
{
    for (const Course& law : All_Laws()) {
        for (const char kind : {'R', 'F'}) {
            SCOPED_TRACE(std::string(law.code) + kind);
            Make(kind, law.code, 96.5, kind == 'R' ? 10.0 : 10.0 + law.lift, kind == 'R' ? 10.0 + law.lift : 10.0);
            ASSERT_TRUE(Calc_All(design_, true));
            Expect_the_Table(Curve_of_Segment(design_, 1), 2e-5);
        }
    }
}

TEST_F(Law_as_a_Curve, is_the_stored_table_of_a_lift_that_polydyne_laws_do_not_scale_by)
{
    for (const char* code : {"ST", "TH"}) {
        for (const char kind : {'R', 'F'}) {
            SCOPED_TRACE(std::string(code) + kind);
            Make(kind, code, 80.0, kind == 'R' ? 0.0 : 3.0, kind == 'R' ? 3.0 : 0.0);
            ASSERT_TRUE(Calc_All(design_, true));
            const Segment_Curve curve = Curve_of_Segment(design_, 1);
            Expect_the_Table(curve, 2e-5);
            EXPECT_NEAR(curve.At(kind == 'R' ? 0.0 : 80.0).S, 2.0, 1e-12);  // L - 1, meant
            EXPECT_NEAR(curve.At(kind == 'R' ? 80.0 : 0.0).S, 3.0, 1e-12);
        }
    }
}

TEST_F(Law_as_a_Curve, has_derivatives_that_belong_together_between_the_points)
{
    for (const Course& law : All_Laws()) {
        for (const char kind : {'R', 'F'}) {
            SCOPED_TRACE(std::string(law.code) + kind);
            Make(kind, law.code, 96.5, kind == 'R' ? 0.0 : law.lift, kind == 'R' ? law.lift : 0.0);
            ASSERT_TRUE(Calc_All(design_, true));
            // The mirror of a fall leaves the sign of Ping alone; laws with a fall of their own have the true one.
            const bool own_fall = std::string_view("DH,DU,ST,TH").find(law.code) != std::string_view::npos;
            std::vector<double> bounds;
            for (const double eighths : law.bounds)
                bounds.push_back(eighths * 96.5 / 8.0);
            Expect_Derivatives(Curve_of_Segment(design_, 1), kind == 'R' || own_fall ? law.derivatives : 3, law.digits,
                               bounds);
        }
    }
}

TEST_F(Law_as_a_Curve, of_a_mirrored_fall_keeps_the_sign_of_Ping_of_the_rise)
{
    Make('R', "CF", 90.0, 0.0, 8.0);
    const Svajp rise = Segment_Curve(Law_of_Segment(design_, 1, 8.0), 90.0).At(20.0);
    Make('F', "CF", 90.0, 8.0, 0.0);
    const Svajp fall = Segment_Curve(Law_of_Segment(design_, 1, 8.0), 90.0).At(20.0);
    EXPECT_EQ(fall.S, 8.0 - rise.S);
    EXPECT_EQ(fall.V, -rise.V);
    EXPECT_EQ(fall.A, -rise.A);
    EXPECT_EQ(fall.J, -rise.J);
    EXPECT_EQ(fall.P, rise.P);  // mechanics has -P
    EXPECT_LT(fall.P, 0.0);
}

TEST_F(Law_as_a_Curve, is_one_point_everywhere_in_a_dwell)
{
    Make('D', "DW", 90.0, 7.5, 7.5);
    ASSERT_TRUE(Calc_All(design_, true));
    const Segment_Curve curve = Curve_of_Segment(design_, 1);
    for (const double theta : {0.0, 12.3456, 90.0})
        EXPECT_EQ(Values(curve.At(theta)), (std::array{7.5, 0.0, 0.0, 0.0, 0.0}));
}

TEST_F(Law_as_a_Curve, with_two_forms_holds_the_working_point_when_neither_rise_nor_fall)
{
    Make('R', "DH", 90.0, 0.0, 2.0);
    Motion_Group& m = design_.motion;
    m.Rise_Fall_Dwell(1) = "x";
    m.Seg_S = 1.5;
    m.Seg_V = 2.5;
    m.Seg_A = 3.5;
    m.Seg_J = 4.5;
    m.Seg_P = 5.5;
    const Segment_Curve curve = Curve_of_Segment(design_, 1);
    m.Seg_S = 9.0;  // the curve was made before
    EXPECT_EQ(Values(curve.At(33.3)), (std::array{1.5, 2.5, 3.5, 4.5, 5.5}));
}

TEST_F(Law_as_a_Curve, tells_by_an_error_that_there_is_no_point_to_give)
{
    const auto number = [](auto&& work) {
        try {
            work();
        } catch (const Fault& fault) {
            return fault.Number();
        }
        return 0;
    };
    Make('R', "CF", 90.0, 0.0, 2.0);
    Motion_Group& m = design_.motion;
    EXPECT_EQ(number([&] { Curve_of_Segment(design_, 0); }), 9);
    EXPECT_EQ(number([&] { Curve_of_Segment(design_, 21); }), 9);
    m.Full_Half(1) = 2;
    m.Which_half(1) = 3;
    EXPECT_FALSE(Curve_of_Segment(design_, 1).Has_Points());
    EXPECT_EQ(number([&] { Curve_of_Segment(design_, 1).At(10.0); }), 5);
    m.Full_Half(1) = 1;
    m.Beta_Deg(1) = m.Beta_Rad(1) = 0.0;
    for (const char* code : {"CF", "MS", "DH", "DU", "45"}) {
        Pick_Program(design_, 1, code);
        EXPECT_EQ(number([&] { Curve_of_Segment(design_, 1).At(0.0); }), 6) << code;
    }
    testing::Script none;
    Make('P', "PO", 90.0, 0.0, 2.0);
    EXPECT_EQ(number([&] { Curve_of_Segment(design_, 1); }), 5) << "never solved";
    Make('S', "BS", 90.0, 0.0, 2.0);
    EXPECT_EQ(number([&] { Curve_of_Segment(design_, 1); }), 5) << "never solved";
}

// ---- Polynomials and splines

using Conditions_as_a_Curve = Curve_of_a_Segment;

TEST_F(Conditions_as_a_Curve, a_polynomial_is_the_stored_table_and_has_derivatives_that_belong_together)
{
    for (const int base : {1, 2, 3}) {
        SCOPED_TRACE(base);
        Make('P', "PO", 90.0, 0.0, 25.0);
        Ten_Conditions();
        design_.motion.Time_Base = base;
        design_.motion.Shaft_speed = 1.0;
        ASSERT_TRUE(Calc_All(design_, true));
        const Segment_Curve curve = Curve_of_Segment(design_, 1);
        ASSERT_NE(curve.Polynomial(), nullptr);
        Expect_Derivatives(curve, 4, 1e-3);
        EXPECT_NEAR(curve.At(30.0).S, 5.0, 1e-6);
        EXPECT_NEAR(curve.At(30.0).V, 9.0, 1e-5);  // conditions of the degrees base count per radian: meant
        EXPECT_NEAR(curve.At(90.0).S, 25.0, 1e-6);
        EXPECT_NEAR(curve.At(90.0).A, 0.0, 1e-4);
        if (base == 3)
            Expect_the_Table(curve, 2e-5);
    }
}

TEST_F(Conditions_as_a_Curve, a_spline_is_the_stored_table_and_has_derivatives_that_belong_together)
{
    Make('S', "BS", 90.0, 0.0, 25.0);
    Ten_Conditions();
    design_.motion.Orders(1) = 7;
    ASSERT_TRUE(Calc_All(design_, true));
    const Segment_Curve curve = Curve_of_Segment(design_, 1);
    ASSERT_NE(curve.Spline(), nullptr);
    Expect_the_Table(curve, 2e-5);
    std::vector<double> knots;
    for (int i = 1; i <= design_.motion.Number_of_Knots(1); ++i)
        knots.push_back(design_.motion.Knots(i, 1));
    Expect_Derivatives(curve, 4, 1e-3, knots);
    EXPECT_NEAR(curve.At(30.0).S, 5.0, 1e-6);
    EXPECT_NEAR(curve.At(70.0).V, 10.0, 1e-5);
}

TEST_F(Conditions_as_a_Curve, one_segments_spline_does_not_depend_on_the_segment_calculated_last)
{
    Make('S', "BS", 90.0, 0.0, 25.0);
    Ten_Conditions();
    ASSERT_TRUE(Calc_All(design_, true));
    const Svajp alone = Curve_of_Segment(design_, 1).At(41.7);
    design_.motion.No_of_segments = 2;
    Row(2, 'S', "BS", 270.0, 25.0, 0.0);
    design_.motion.No_Conditions(2) = 6;
    design_.motion.No_of_conditions(2) = "6";
    for (const int row : {0, 9})
        design_.motion.V_boundary_cond(2, row) = design_.motion.A_boundary_cond(2, row) = "0";
    ASSERT_TRUE(Calc_All(design_, true));
    EXPECT_EQ(Values(Curve_of_Segment(design_, 1).At(41.7)), Values(alone));
}

// ---- The whole cycle

class Curve_of_the_Cycle : public Curve_of_a_Segment {
protected:
    void Four_Segments(double start)
    {
        Make('R', "45", 100.0, start, start + 20.0);
        design_.motion.No_of_segments = 4;
        Row(2, 'D', "DW", 60.0, start + 20.0, start + 20.0);
        Row(3, 'F', "C1", 120.0, start + 20.0, start);
        Row(4, 'D', "DW", 80.0, start, start);
        Update_Segment_Angles(design_);
        ASSERT_TRUE(Calc_All(design_, true));
    }
};

TEST_F(Curve_of_the_Cycle, is_the_table_at_every_point_but_the_end_of_a_joint_that_jumps)
{
    Four_Segments(3.0);
    const Motion_Curve curve(design_);
    for (int i = 0; i <= 1440; ++i) {
        const auto at = Values(curve.At(Data(var::Angle, i)));
        ASSERT_NEAR(at[0], Data(var::S, i), 1e-5) << i;
        ASSERT_NEAR(at[1], Data(var::V, i), 1e-4) << i;
        ASSERT_NEAR(at[2], Data(var::A, i), 1e-3) << i;
    }
}

TEST_F(Curve_of_the_Cycle, takes_the_segment_that_starts_at_a_joint)
{
    Four_Segments(3.0);
    const Motion_Curve curve(design_);
    // The first half of a cycloid ends at full speed; the dwell after it starts there.
    EXPECT_LT(curve.At(279.999).V, -19.0);
    EXPECT_EQ(curve.At(280.0).V, 0.0);
    EXPECT_EQ(curve.At(280.0).S, 3.0);
    EXPECT_EQ(curve.At(100.0).S, 23.0);
    EXPECT_NEAR(curve.At(0.0).J, 60.0 * 20.0 / std::pow(double{design_.motion.Beta_Rad(1)}, 3), 1e-3);
}

TEST_F(Curve_of_the_Cycle, takes_whole_turns_off)
{
    Four_Segments(0.0);
    const Motion_Curve curve(design_);
    for (const double angle : {0.0, 50.0, 130.5, 200.25, 359.5}) {
        EXPECT_EQ(Values(curve.At(angle)), Values(curve.At(angle + 720.0))) << angle;
        EXPECT_EQ(Values(curve.At(angle)), Values(curve.At(angle - 360.0))) << angle;
    }
    EXPECT_EQ(Values(curve.At(-1e-20)), Values(curve.At(0.0)));
}

TEST_F(Curve_of_the_Cycle, tells_an_angle_that_no_segment_covers)
{
    Four_Segments(0.0);
    design_.motion.Beta_Deg(4) = 70.0;
    const Motion_Curve gap(design_);
    EXPECT_NO_THROW(gap.At(349.9));
    EXPECT_THROW(gap.At(350.0), Fault);
    EXPECT_THROW(gap.At(std::nan("")), Fault);
    design_.motion.Beta_Deg(4) = 79.8;  // most of a step short
    EXPECT_THROW(Motion_Curve(design_).At(359.9), Fault);
    design_.motion.Beta_Deg(4) = 79.9;  // less than half a step short
    EXPECT_EQ(Motion_Curve(design_).At(359.95).S, 0.0);
}

TEST_F(Curve_of_the_Cycle, passes_over_a_segment_of_no_length)
{
    Four_Segments(0.0);
    Motion_Group& m = design_.motion;
    m.Shift(2) = m.Shift(3);
    m.Beta_Deg(2) = 0.0;
    m.Beta_Deg(1) = m.Shift(3);
    EXPECT_EQ(Motion_Curve(design_).At(m.Shift(3)).S, 20.0);
}

TEST_F(Curve_of_the_Cycle, outlives_its_design_and_leaves_it_as_it_is)
{
    Four_Segments(1.0);
    const Table<Single> before = design_.results.CalcData;
    const std::array working{design_.motion.Seg_S.Bits(), design_.motion.Seg_V.Bits(), design_.motion.Lift.Bits(),
                             design_.motion.Beta_Sq.Bits(), design_.motion.Liftmax.Bits()};
    const int at_work = design_.motion.Seg;
    const Motion_Curve curve(design_);
    const double there = curve.At(33.0).S;
    for (int row = 0; row <= before.Last_Row(); ++row)
        for (int i = 0; i <= before.Last_Point(); ++i)
            ASSERT_EQ(before(row, i).Bits(), design_.results.CalcData(row, i).Bits());
    EXPECT_EQ(working, (std::array{design_.motion.Seg_S.Bits(), design_.motion.Seg_V.Bits(), design_.motion.Lift.Bits(),
                                   design_.motion.Beta_Sq.Bits(), design_.motion.Liftmax.Bits()}));
    EXPECT_EQ(design_.motion.Seg, at_work);
    design_ = {};
    EXPECT_EQ(curve.At(33.0).S, there);
}

}  // namespace
}  // namespace lobemax
