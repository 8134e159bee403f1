// SPDX-License-Identifier: GPL-3.0-or-later
// Contact stresses at every width of the processor: the same bytes as one point after the other, on the good way and
// where a point has something to tell or takes a number of the point before, at the first point of a cycle, within a
// block and in the last one.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "core/traps.h"
#include "dynamics/contact_stress.h"
#include "tests/support/every_width.h"
#include "tests/support/random_design.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using namespace train_design;
using testing::Bits_of_Rows;
using testing::Dice;
using testing::Different;
using testing::every_width;
using testing::Row_Bits;

constexpr int last = 360;  // a block of one point is left over at each width
constexpr double untouched = 1.0;
constexpr double youngs[2]{206800.0, 206800.0};
constexpr double poissons[2]{0.28, 0.28};
constexpr double length = 20.0;

/// Points of which each may stand at an edge of a block.
const std::vector<std::vector<int>> odd_points{{0}, {3}, {last}, {7, 8, 9}, {0, 1, 2, 3}, {2, 5, 11, 359, 360}};

void Set(int row, int i, double value)
{
    design.results.CalcData(row, i) = value;
}

Row_Bits Stress_Bits()
{
    return Bits_of_Rows(design, {var::Sigma_Max, var::Tau_Max});
}

/// A roller of 12 mm on 50 mm of its path, pressed on by 800 N; no vibration model.
class Stress_Lanes : public ::testing::Test {
protected:
    void SetUp() override { Make(); }
    void TearDown() override { design = {}; }

    static void Make()
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        for (int i = 0; i <= last; ++i) {
            Set(var::Angle, i, i);
            Set(var::Force, i, 800.0);
            Set(var::Phi, i, 20.0);
            Set(var::Rho, i, 50.0);
            Set(var::Sigma_Max, i, untouched);
            Set(var::Tau_Max, i, untouched);
        }
        design.cam.Followtype = 1;
        design.cam.Follow_Rad = 12.0;
        design.cam.Closure = "Force";
        d().Model_Type = 3;
        f().Dynamicflag = true;
    }
    void Expect_Warning(const std::string& text) { script_.Expect({text, Buttons::OK, Symbol::exclamation}); }
    static bool Run(int roller_type, double size = length)
    {
        return Calc_Contact_Stress(design, roller_type, youngs, poissons, size);
    }
    /// The points before i have this stress, those from it on none.
    static void Expect_End(int i, double before)
    {
        for (int k = 0; k <= last; ++k) {
            EXPECT_EQ(Data(var::Sigma_Max, k), k < i ? before : untouched) << k;
            EXPECT_EQ(Data(var::Tau_Max, k) == untouched, k >= i) << k;
        }
    }

    Script script_;
};

TEST_F(Stress_Lanes, rows_of_random_contacts_are_the_same_bytes)
{
    std::size_t values = 0;
    std::size_t different = 0;
    for (std::uint32_t seed = 1; seed <= 600; ++seed) {
        Dice dice(seed);
        const int kind = dice.Whole(1, 3);  // cylindrical, crowned, flat
        design.cam.Followtype = kind == 3 ? 2 : 1;
        design.cam.Follow_Rad = dice.Real(0.1, 30.0);
        design.cam.Closure = dice.Chance(50) ? "Form" : "Force";
        d().Model_Type = 1;
        d().Follower_Weight = dice.Chance(50) ? 0.0 : dice.Real(0.0, 9.0);
        d().Ext_Force_Add = f().Ext_Force_Calc = dice.Chance(40);
        f().Modelflag = dice.Chance(30);
        const double E[2]{dice.Real(1e4, 3e5), dice.Real(1e4, 3e5)};
        const double nu[2]{dice.Real(0.2, 0.4), dice.Real(0.2, 0.4)};
        const double size = dice.Real(0.5, 40.0) * (kind == 2 ? 10.0 : 1.0);
        for (int i = 0; i <= last; ++i) {
            // A roller may run in a hollow, but not in one so narrow that it touches at two points.
            const double surface = dice.Real(0.5, 90.0) * (kind == 1 && dice.Chance(20) ? -60.0 : 1.0);
            Set(var::Rho, i, surface + (kind == 3 ? 0.0 : double{design.cam.Follow_Rad}));
            Set(var::Phi, i, dice.Chance(20) ? 0.0 : dice.Real(-80.0, 80.0));
            for (const int row : {var::Force, var::Dynamic_Force})
                Set(row, i, kind != 3 && dice.Chance(5) ? 0.0 : dice.Real(1.0, 5000.0));
            design.results.Ext_Force_Table(i) = dice.Real(0.0, 90.0);
        }
        Row_Bits reference;
        for (const Lane_Width width : every_width) {
            const Forced_Lanes forced(width);
            for (int i = 0; i <= last; ++i)
                Set(var::Sigma_Max, i, untouched);
            ASSERT_TRUE(Calc_Contact_Stress(design, kind, E, nu, size)) << seed;
            if (width == Lane_Width::reference)
                reference = Stress_Bits();
            values += reference.size();
            different += Different(reference, Stress_Bits());
        }
        EXPECT_EQ(std::ranges::count(Row_of(var::Sigma_Max), untouched), 0);
    }
    std::printf("%zu values, %zu differ\n", values, different);
    EXPECT_EQ(different, 0U);
}

TEST_F(Stress_Lanes, a_negative_radicand_takes_the_half_width_of_the_point_before)
{
    d().Model_Type = 1;
    for (const Lane_Width width : every_width)
        for (const int followtype : {1, 2})
            for (const std::vector<int>& points : odd_points) {
                const Forced_Lanes forced(width);
                design.cam.Followtype = followtype;
                std::vector<double> force;
                for (int i = 0; i <= last; ++i) {
                    force.push_back(std::ranges::count(points, i) > 0 ? -500.0 : 800.0 + i);
                    Set(var::Force, i, force.back());
                }
                const bool without_any = points.front() == 0;
                if (without_any && followtype == 2) {  // only a roller has its zero half-width looked after
                    Expect_Warning("Attempting to take square root of negative number in Sub Stress for flat follower");
                    script_.Expect(testing::Error_Box(division_by_zero, "Division by zero", "Calc_Contact_Stress"));
                    EXPECT_FALSE(Run(cylindrical_roller));
                    continue;
                }
                for (std::size_t k = 0; k < points.size(); ++k)
                    Expect_Warning(std::string("Attempting to take square root of negative number in Sub Stress for ") +
                                   (followtype == 1 ? "cylindrical follower" : "flat follower"));
                ASSERT_TRUE(Run(cylindrical_roller));
                for (const int i : points) {
                    // Of the same half-width the pressure goes with the force.
                    int before = i;
                    while (before >= 0 && force[static_cast<std::size_t>(before)] < 0.0)
                        --before;
                    const double expected =
                        before < 0 ? 0.0
                                   : Data(var::Sigma_Max, before) * -500.0 / force[static_cast<std::size_t>(before)];
                    EXPECT_NEAR(Data(var::Sigma_Max, i), expected, std::abs(expected) * 3e-7) << i;
                    EXPECT_NEAR(Data(var::Tau_Max, i), -0.304 * expected, std::abs(expected) * 1e-7) << i;
                }
            }
}

TEST_F(Stress_Lanes, an_ellipse_without_its_difference_takes_that_of_the_point_before)
{
    // 1/31 - 1/23.25 is -1/93: the radicand is the square of nothing, and rounding takes it just below zero.
    design.cam.Follow_Rad = 31.0;
    for (const std::vector<int>& points : odd_points) {
        Row_Bits reference;
        for (const Lane_Width width : every_width) {
            const Forced_Lanes forced(width);
            for (int i = 0; i <= last; ++i)
                Set(var::Rho, i, 31.0 + (std::ranges::count(points, i) > 0 ? 93.0 : 19.0 + i / 90));
            for (std::size_t k = 0; k < points.size(); ++k)
                Expect_Warning("Attempting to take square root of negative number in Sub Stress for crowned follower");
            ASSERT_TRUE(Run(crowned_roller, 23.25));
            if (width == Lane_Width::reference)
                reference = Stress_Bits();
            EXPECT_EQ(Different(reference, Stress_Bits()), 0U);
        }
        for (std::size_t k = 1; k < points.size(); ++k)
            if (points[k] == points[k - 1] + 1) {
                EXPECT_EQ(Data(var::Sigma_Max, points[k]), Data(var::Sigma_Max, points[k - 1]));  // the same difference
            }
    }
}

TEST_F(Stress_Lanes, a_point_without_a_contact_ends_the_run)
{
    struct Case {
        int followtype;
        int row;
        double value;
        const char* before;
        const char* after;
    };
    const std::array cases{
        Case{1, var::Rho, 12.0, "Something is wrong. - The radius of curvature of the cam is zero at cam angle ",
             " deg.  Stresses will be infinite there."},
        Case{2, var::Rho, 0.0, "Something is wrong. - The cam's radius of curvature is zero or negative at cam angle ",
             " deg."},
        Case{2, var::Rho, -5.0, "Something is wrong. - The cam's radius of curvature is zero or negative at cam angle ",
             " deg."},
        Case{1, var::Force, 0.0, "Something is wrong. - The follower force is zero at cam angle ",
             " deg.  Stresses will be larger than theoretical due to impact."},
        Case{2, var::Force, -1.0, "Something is wrong. - The follower force is zero at cam angle ",
             " deg.  Stresses will be larger than theoretical due to impact."},
    };
    for (const Case& c : cases) {
        Make();
        design.cam.Followtype = c.followtype;
        ASSERT_TRUE(Run(cylindrical_roller));
        const double sigma = Data(var::Sigma_Max, 0);
        ASSERT_LT(sigma, 0.0);
        for (const Lane_Width width : every_width)
            for (const int i : {0, 3, 8, last}) {
                const Forced_Lanes forced(width);
                Make();
                design.cam.Followtype = c.followtype;
                Set(c.row, i, c.value);
                Expect_Warning(c.before + std::to_string(i) + c.after);
                EXPECT_FALSE(Run(cylindrical_roller));
                Expect_End(i, sigma);
            }
    }
}

TEST_F(Stress_Lanes, a_radius_of_zero_is_told_of_once)
{
    for (const Lane_Width width : every_width) {
        const Forced_Lanes forced(width);
        design.cam.Follow_Rad = 0.0;
        for (const int roller : {cylindrical_roller, crowned_roller}) {
            Expect_Warning("Something is wrong. - The radius of the roller follower is zero");
            EXPECT_FALSE(Run(roller, 300.0));
        }
        design.cam.Follow_Rad = 12.0;
        Expect_Warning("Something is wrong. - The crown radius of the roller follower is zero");
        EXPECT_FALSE(Run(crowned_roller, 0.0));
        Expect_End(0, untouched);
    }
}

TEST_F(Stress_Lanes, a_curvature_beyond_the_32_bit_numbers_is_an_overflow_where_it_is)
{
    design.cam.Followtype = 2;
    ASSERT_TRUE(Run(cylindrical_roller));
    const double sigma = Data(var::Sigma_Max, 0);
    for (const Lane_Width width : every_width)
        for (const int i : {0, 3, 8, last}) {
            const Forced_Lanes forced(width);
            Make();
            design.cam.Followtype = 2;
            Set(var::Rho, i, 1e-40);
            script_.Expect(testing::Error_Box(overflow, "Overflow", "Calc_Contact_Stress"));
            EXPECT_FALSE(Run(cylindrical_roller));
            Expect_End(i, sigma);
        }
}

TEST_F(Stress_Lanes, an_ellipse_beyond_its_angle_ends_the_run_where_it_is)
{
    for (const Lane_Width width : every_width)
        for (const int i : {0, 3, 8, last}) {
            const Forced_Lanes forced(width);
            Make();
            ASSERT_TRUE(Run(crowned_roller, 300.0));
            const double sigma = Data(var::Sigma_Max, 0);
            Make();
            Set(var::Rho, i, 7.0);  // a hollow narrower than the roller
            script_.Expect(testing::Error_Box(invalid_argument, "Invalid argument", "Calc_Contact_Stress"));
            EXPECT_FALSE(Run(crowned_roller, 300.0));
            EXPECT_TRUE(f().Math_Error);
            Expect_End(i, sigma);
        }
}

TEST_F(Stress_Lanes, points_beyond_a_table_are_refused_after_those_before_it)
{
    ASSERT_TRUE(Run(cylindrical_roller));
    const double sigma = Data(var::Sigma_Max, 0);
    for (const Lane_Width width : every_width) {
        const Forced_Lanes forced(width);
        Make();
        design.motion.Max_Data_Points_used = 720;
        script_.Expect(testing::Error_Box(out_of_bounds, "Index out of bounds", "Calc_Contact_Stress"));
        EXPECT_FALSE(Run(cylindrical_roller));
        Expect_End(last + 1, sigma);
        Make();
        d().Ext_Force_Add = f().Ext_Force_Calc = true;
        design.results.Ext_Force_Table.Dimension(99);
        script_.Expect(testing::Error_Box(out_of_bounds, "Index out of bounds", "Calc_Contact_Stress"));
        EXPECT_FALSE(Run(cylindrical_roller));
        Expect_End(100, sigma);
    }
}

}  // namespace
}  // namespace lobemax
