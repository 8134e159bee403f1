// SPDX-License-Identifier: GPL-3.0-or-later
// The kernels of laws, polynomials and splines against the store of one point at a time, and against each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/circle.h"
#include "core/ladder.h"
#include "core/lanes.h"
#include "motion/polynomial.h"
#include "motion/segment_curve.h"
#include "motion/segments.h"
#include "tests/support/one_segment.h"

namespace lobemax {
namespace {

using namespace one_segment;

constexpr std::array widths{Lane_Width::reference, Lane_Width::sse2, Lane_Width::avx2, Lane_Width::avx512};
constexpr std::array rows{var::Angle, var::S, var::V, var::A, var::J, var::Ping, var::Ext_Force};

class Motion_Lanes : public ::testing::Test, protected Motion_Programs_Fixture {};

/// The number of the fault that work raises, 0 for none.
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

/// All that the store of a segment leaves: rows, force function, working point.
std::vector<float> Left()
{
    std::vector<float> left;
    for (const int row : rows)
        for (const Single& value : design.results.CalcData.Points(row))
            left.push_back(value.Bits());
    for (const Single& value : design.results.Ext_Force_Table.Points())
        left.push_back(value.Bits());
    for (const Single& value : {m().Seg_S, m().Seg_V, m().Seg_A, m().Seg_J, m().Seg_P, m().Liftmax})
        left.push_back(value.Bits());
    return left;
}

/// The same, stored by Store_Point from the curve asked at each 32-bit place.
void Store_Point_by_Point(const Segment_Curve& curve, int Seg)
{
    m().Seg = Seg;
    const double beta = m().Beta_Deg(Seg);
    const bool mirrored = curve.Law() != nullptr && curve.Law()->Mirrored();
    const int last = To_Integer(std::floor(beta / m().Deltatheta));
    for (int p = 0; p <= last; ++p) {
        const double theta = p * m().Deltatheta;
        const Single x = theta / beta;
        const Svajp point = curve.Law() != nullptr ? curve.Law()->Before_Mirror(x, theta) : curve.Polynomial()->At(x);
        m().Seg_S = point.S;
        m().Seg_V = point.V;
        m().Seg_A = point.A;
        m().Seg_J = point.J;
        m().Seg_P = point.P;
        if (mirrored) {
            m().Seg_S = m().Lift - m().Seg_S;
            m().Seg_V = -m().Seg_V;
            m().Seg_A = -m().Seg_A;
            m().Seg_J = -m().Seg_J;
        }
        Store_Point(design, theta);
    }
}

/// 32-bit numbers from one to the other.
std::int64_t Places_between(float a, float b)
{
    const auto place = [](float x) {
        const auto bits = std::bit_cast<std::int32_t>(x);
        return bits < 0 ? -std::int64_t{bits & 0x7FFFFFFF} : std::int64_t{bits};
    };
    return std::abs(place(a) - place(b));
}

/// Counts what differs, and how far.
struct Tally {
    std::size_t values = 0;
    std::size_t differing = 0;
    std::int64_t farthest = 0;

    void Add(const std::vector<float>& a, const std::vector<float>& b)
    {
        ASSERT_EQ(a.size(), b.size());
        values += a.size();
        for (std::size_t i = 0; i < a.size(); ++i)
            if (std::bit_cast<std::uint32_t>(a[i]) != std::bit_cast<std::uint32_t>(b[i])) {
                ++differing;
                farthest = std::max(farthest, Places_between(a[i], b[i]));
            }
    }
};

/// Whether the bytes are the same, minus zeros and all.
bool Same_Bytes(const std::vector<float>& a, const std::vector<float>& b)
{
    return std::ranges::equal(
        a, b, [](float x, float y) { return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y); });
}

/// A segment of some law that starts at `shift` and at a height.
void Lay(char kind, std::string_view code, double L, double beta, double shift, double step, int Time_Base)
{
    One_Segment(kind, code, L, beta, step);
    m().Shift(1) = shift;
    m().Base_Shift(1) = 3.7;
    m().Time_Base = Time_Base;
    Set_Shaft_Speed(design, 41.3);
}

TEST_F(Motion_Lanes, all_laws_store_the_same_bytes_at_every_width_and_those_of_single_points_but_for_few_last_places)
{
    Tally tally;
    for (const Motion_Program& program : Motion_Programs()) {
        if (program.kinds == "P" || program.kinds == "S")
            continue;
        for (const char kind : program.kinds)
            for (const auto& [beta, L, step] : {std::tuple{180.0, 25.4, 0.125}, std::tuple{77.125, 0.3, 0.125},
                                                std::tuple{33.3, 1.0, 0.25}, std::tuple{9.0, 120.0, 1.0}})
                for (const int Time_Base : {1, 2, 3}) {
                    SCOPED_TRACE(std::string(program.code) + kind + " over " + std::to_string(beta));
                    Lay(kind, program.code, L, beta, 90.5, step, Time_Base);
                    Store_Point_by_Point({Law_of_Segment(design, 1, L), beta}, 1);
                    const std::vector<float> single = Left();
                    std::vector<float> narrowest;
                    for (const Lane_Width width : widths) {
                        const Forced_Lanes forced(width);
                        Lay(kind, program.code, L, beta, 90.5, step, Time_Base);
                        Store_Segment(design, 1, {Law_of_Segment(design, 1, L), beta});
                        const std::vector<float> left = Left();
                        tally.Add(single, left);
                        if (width == Lane_Width::sse2)
                            narrowest = left;
                        if (width > Lane_Width::sse2) {
                            ASSERT_TRUE(Same_Bytes(narrowest, left)) << "width " << static_cast<int>(width);
                        }
                    }
                }
    }
    EXPECT_GT(tally.values, 10'000'000U);
    EXPECT_LT(tally.differing * 100'000, tally.values);
    EXPECT_LE(tally.farthest, 1);
}

TEST_F(Motion_Lanes, a_segment_between_two_points_goes_to_the_nearest_as_single_points_do)
{
    // Starts off the steps: a third of a step, a hair on either side of the middle between two points, the middle.
    for (const double shift : {10.04, 10.0625 - 1e-5, 10.0625, 10.0625 + 1e-5, 10.1, 0.0624, 270.03})
        for (const char* code : {"CF", "TH", "45"}) {
            SCOPED_TRACE(std::to_string(shift) + code);
            Lay('R', code, 8.0, 60.0, shift, 0.125, 1);
            Store_Point_by_Point({Law_of_Segment(design, 1, 8.0), 60.0}, 1);
            const std::vector<float> single = Left();
            for (const Lane_Width width : widths) {
                const Forced_Lanes forced(width);
                Lay('R', code, 8.0, 60.0, shift, 0.125, 1);
                Store_Segment(design, 1, {Law_of_Segment(design, 1, 8.0), 60.0});
                Tally tally;
                tally.Add(single, Left());
                EXPECT_LE(tally.farthest, 1);
                EXPECT_LT(tally.differing, 3U);
            }
        }
}

TEST_F(Motion_Lanes, a_step_that_is_none_of_the_programs_is_added_up_in_32_bits)
{
    for (const Lane_Width width : widths) {
        const Forced_Lanes forced(width);
        One_Segment('R', "45", 1.0, 90.0, 1.0);
        m().Deltatheta = 0.3;
        Store_Segment(design, 1, {Law_of_Segment(design, 1, 1.0), 90.0});
        Single theta;
        for (int p = 0; p <= 200; ++p) {
            ASSERT_EQ(Data(var::Angle, p), theta);
            theta += Single(0.3);
        }
        EXPECT_NE(theta, Single(201 * double{Single(0.3)})) << "the example must show the rounding";
    }
}

TEST_F(Motion_Lanes, a_run_that_leaves_the_table_is_error_9_with_the_points_before_stored)
{
    for (const Lane_Width width : widths)
        for (const bool motion : {true, false}) {
            const Forced_Lanes forced(width);
            Lay('R', "MS", 2.0, 100.0, 300.0, 0.5, 3);
            m().Motion = motion;
            Apply(design, Event::external_force_dropped);
            EXPECT_EQ(Fault_Of([] { Store_Segment(design, 1, {Law_of_Segment(design, 1, 2.0), 100.0}); }), 9);
            const Svajp end = Law_of_Segment(design, 1, 2.0).At(Single(0.6), 60.0);
            EXPECT_EQ(Data(var::Angle, 720), 360.0);
            EXPECT_NEAR(Data(var::S, 720), end.S + 3.7, 1e-6);
            EXPECT_NEAR(Data(var::V, 720), end.V, 1e-6);
            // The working point is that of the first point outside.
            EXPECT_EQ(m().Seg_S, Single(Law_of_Segment(design, 1, 2.0).At(Single(60.5 / 100.0), 60.5).S));
            EXPECT_EQ(design.flags.Ext_Force_Calc, !motion);
            EXPECT_EQ(Data(var::Ext_Force, 720), motion ? 0.0 : Data(var::S, 720));
            EXPECT_EQ(design.results.Ext_Force_Table(720), motion ? 0.0 : Data(var::S, 720));
        }
}

TEST_F(Motion_Lanes, a_point_that_fits_no_single_is_error_6_with_the_points_before_it_stored)
{
    for (const Lane_Width width : widths) {
        const Forced_Lanes forced(width);
        Lay('R', "C2", 1e38, 90.0, 0.0, 0.125, 3);
        m().Beta_Rad(1) = 2.0;
        m().Base_Shift(1) = 0.0;
        // Ping = pi^3 L / b^4 sin(pi x) = 1.94e38 sin, J = -1.23e38 cos, A = -0.785e38 sin: all points hold.
        EXPECT_EQ(Fault_Of([] { Store_Segment(design, 1, {Law_of_Segment(design, 1, 1e38), 90.0}); }), 0);

        Lay('R', "C1", 1e38, 90.0, 0.0, 0.125, 3);
        m().Beta_Rad(1) = 1.7;
        m().Base_Shift(1) = 0.0;
        // Ping = -3.712e38 sin(pi x) is no Single from sin = 0.9166 on: x = 0.3691, between the points 265 and 266.
        EXPECT_EQ(Fault_Of([] { Store_Segment(design, 1, {Law_of_Segment(design, 1, 1e38), 90.0}); }), 6);
        EXPECT_LT(Data(var::Ping, 265), -3.39e38);
        EXPECT_GT(Data(var::S, 265), 0.0);
        EXPECT_EQ(Data(var::Ping, 266), 0.0);
        EXPECT_EQ(Data(var::S, 266), 0.0) << "the working point comes before the table";
        EXPECT_GT(m().Seg_S, Data(var::S, 265));
    }
}

TEST_F(Motion_Lanes, a_power_of_zero_that_has_no_value_is_error_11_at_the_same_point)
{
    for (const Lane_Width width : widths) {
        const Forced_Lanes forced(width);
        One_Segment('F', "TH", 1.0, 90.0, 0.125);
        m().Seg = 1;
        EXPECT_EQ(Fault_Of([] {
                      Store_Segment(design, 1, {Segment_Law::Thoren(Segment_of_Law(design, 1, 1.0), 3, 5, 7, 9), 90.0});
                  }),
                  11);
        EXPECT_EQ(Data(var::Angle, 1), 0.0) << "y is zero at the first point of a fall";
        One_Segment('R', "TH", 1.0, 90.0, 0.125);
        m().Seg = 1;
        EXPECT_EQ(Fault_Of([] {
                      Store_Segment(design, 1, {Segment_Law::Thoren(Segment_of_Law(design, 1, 1.0), 3, 5, 7, 9), 90.0});
                  }),
                  11);
        EXPECT_EQ(Data(var::Angle, 719), 89.875) << "and at the last of a rise";
        EXPECT_EQ(Data(var::Angle, 720), 0.0);
    }
}

/// The points of a segment are those of its curve; a spline's basis is held in 32 bits.
void Expect_Curve(const Segment_Curve& curve, int segment)
{
    constexpr std::array derivatives{var::S, var::V, var::A, var::J, var::Ping};
    const int start = To_Integer(m().Shift(segment) / 0.125);
    for (int p = 0; p < To_Integer(m().Beta_Deg(segment) / 0.125); ++p) {
        std::array<double, 5> expected{};
        if (const Spline_Curve* const spline = curve.Spline()) {
            Basis_Values basis;
            spline->Basis(p * 0.125, basis);
            for (int d = 0; d <= Max_Spline_Derivative; ++d)
                expected[static_cast<std::size_t>(d)] =
                    spline->Sum_of_Tabulated(basis, d) * (d == 0 ? 1.0 : Power(Deg_per_Rad, d));
        } else {
            const Svajp place = curve.Polynomial()->At(Single(p * 0.125 / m().Beta_Deg(segment)));
            expected = {place.S, place.V, place.A, place.J, place.P};
        }
        for (std::size_t d = 0; d < derivatives.size(); ++d)
            ASSERT_EQ(Data(derivatives[d], start + p), Single(expected[d])) << "point " << p << ", order " << d;
    }
}

/// Two segments given by conditions, the second falls.
void Lay_Conditions(std::string_view code, int order, double beta, int Time_Base, bool motion)
{
    Fresh_Cycle(0.125);
    m().No_of_segments = 2;
    m().Time_Base = Time_Base;
    m().Motion = motion;
    Set_Shaft_Speed(design, 12.5);
    for (const int segment : {1, 2}) {
        m().Beta_Deg(segment) = segment == 1 ? beta : 360.0 - beta;
        m().Beta_Rad(segment) = m().Beta_Deg(segment) / Deg_per_Rad;
        Pick_Program(design, segment, code);
        m().Start_Value(segment) = segment == 1 ? "1.5" : "12";
        m().End_Value(segment) = segment == 1 ? "12" : "1.5";
        m().No_Conditions(segment) = 9;
        m().Orders(segment) = order;
        m().EvenKnots(segment) = true;
        for (const int row : {0, Last_Condition_Row})
            for (const int derivative : {1, 2, 3})
                Bound_Text(design, segment, row, derivative) = "0";
        m().T_boundary_cond(segment, 1) = "40";
        m().S_boundary_cond(segment, 1) = "7";
    }
    Update_Segment_Angles(design);
}

TEST_F(Motion_Lanes, polynomials_and_splines_store_the_bytes_of_single_points_at_every_width)
{
    for (const auto& [code, order] : {std::pair{"PO", 6}, std::pair{"BS", 6}, std::pair{"BS", 9}})
        for (const double beta : {180.0, 100.125, 133.3})
            for (const int Time_Base : {1, 2, 3})
                for (const bool motion : {true, false}) {
                    SCOPED_TRACE(std::string(code) + std::to_string(order) + " over " + std::to_string(beta));
                    std::vector<float> reference;
                    for (const Lane_Width width : widths) {
                        const Forced_Lanes forced(width);
                        Lay_Conditions(code, order, beta, Time_Base, motion);
                        ASSERT_TRUE(Calc_All(design, motion));
                        const std::vector<float> left = Left();
                        if (width == Lane_Width::reference)
                            reference = left;
                        ASSERT_TRUE(Same_Bytes(reference, left)) << "width " << static_cast<int>(width);
                    }
                    if (Time_Base != 3)
                        continue;
                    for (const int segment : {1, 2})
                        Expect_Curve(Curve_of_Segment(design, segment), segment);
                    EXPECT_EQ(Data(var::Ext_Force, 1500), motion ? 0.0 : Data(var::S, 1500));
                }
}

TEST_F(Motion_Lanes, a_refused_spline_leaves_every_point_as_it_was)
{
    for (const Lane_Width width : widths) {
        const Forced_Lanes forced(width);
        Lay_Conditions("BS", 6, 180.0, 1, true);
        ASSERT_TRUE(Calc_All(design, true));
        const std::vector<float> before = Left();
        m().Shift(2) = 270.0;  // its second half stands beyond the table
        m().Gamma(2) = 450.0;
        EXPECT_FALSE(Calc_Spline(design, 2));
        const std::vector<float> after = Left();
        const std::size_t table = rows.size() * 2881 + 2881;
        EXPECT_TRUE(std::equal(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(table), after.begin()));
        const std::vector<std::string> told = Taken_Boxes();
        ASSERT_EQ(told.size(), 1U);
        EXPECT_NE(told[0].find("CalcSplines"), std::string::npos) << told[0];
    }
}

}  // namespace
}  // namespace lobemax
