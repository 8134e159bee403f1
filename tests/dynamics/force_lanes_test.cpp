// SPDX-License-Identifier: GPL-3.0-or-later
// Forces and torques at every width of the processor: the same bytes as one point after the other, on the good way and
// where a point has something to tell, at the first point of a cycle, within a block and in the last one.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "core/traps.h"
#include "dynamics/kinetostatics.h"
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
constexpr double largest = std::numeric_limits<float>::max();

void Set(int row, int i, double value)
{
    design.results.CalcData(row, i) = value;
}

Row_Bits Force_Bits()
{
    return Bits_of_Rows(design,
                        {var::Force, var::Torque, var::Friction_Torque, var::Flywheel_Torque, var::Torque_Integral});
}

/// A train without spring and damper, a kilogram on a preload of 100 N, at 10 rad/s in metres; motion at rest.
class Force_Lanes : public ::testing::Test {
protected:
    void SetUp() override { Make(); }
    void TearDown() override { design = {}; }

    static void Make()
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = 3;
        Set_Time_Base(design, 3);
        Set_Shaft_Speed(design, 10.0);
        design.cam.Camtype = "Radial";
        design.cam.Closure = "Force";
        d().Mass = 1.0;
        d().Return_Spring_Rate = d().Damping = d().Zeta_Initial = 0.0;
        d().Preload = 100.0;
        for (int i = 0; i <= last; ++i) {
            Set(var::Angle, i, i);
            for (const int row : {var::S, var::V, var::A, var::Phi})
                Set(row, i, 0.0);
            for (const int row : {var::Force, var::Torque, var::Friction_Torque, var::Flywheel_Torque})
                Set(row, i, untouched);
        }
    }
    static constexpr double untouched = -7777.0;

    Script script_;
};

/// A train that a machine could have, and rows that are no motion but cross zero everywhere.
void Draw_Train(Dice& dice)
{
    design.identity.WhichUnit = dice.Whole(1, 5);
    design.motion.Time_Base = dice.Whole(1, 3);
    design.motion.Shaft_speed = dice.Real(1.0, 300.0);
    design.cam.Translating = dice.Chance(60);
    design.cam.ArmRad = dice.Real(0.05, 90.0);
    design.cam.Camtype = dice.Chance(60) ? "Radial" : "Barrel";
    design.cam.Prime_Rad = dice.Real(0.05, 90.0);
    design.cam.Followtype = dice.Whole(1, 2);
    design.cam.Closure = dice.Chance(60) ? "Force" : "Form";
    d().Mass = dice.Real(0.1, 9.0);
    d().Return_Spring_Rate = dice.Chance(80) ? dice.Real(10.0, 9000.0) : 0.0;
    d().Zeta_Initial = dice.Real(0.0, 0.9);
    d().Preload = dice.Real(0.0, 900.0);
    d().Bearing_Radius = dice.Real(0.01, 30.0);
    d().Mu_of_Shaft = dice.Real(0.0, 0.2);
    d().Mu_of_Follower = dice.Real(0.0, 0.2);
    d().Coeff_of_Fluctuation = dice.Real(0.01, 0.2);
    d().Torque_Start_Fresh = dice.Chance(70);
    d().Ext_Force_Add = f().Ext_Force_Calc = dice.Chance(40);
    for (int i = 0; i <= last; ++i) {
        Set(var::S, i, dice.Real(-20.0, 20.0));
        Set(var::V, i, dice.Chance(20) ? 0.0 : dice.Real(-50.0, 50.0));
        Set(var::A, i, dice.Real(-90.0, 90.0));
        Set(var::Phi, i, dice.Chance(20) ? 0.0 : dice.Real(-80.0, 80.0));
        Set(var::Torque, i, dice.Real(-9.0, 9.0));
        design.results.Ext_Force_Table(i) = dice.Real(-90.0, 90.0);
    }
}

TEST_F(Force_Lanes, rows_of_random_trains_are_the_same_bytes)
{
    Host host;
    host.messenger = [](const Message& box) { return box.default_answer; };
    Host before = Install_Host(std::move(host));
    std::size_t values = 0;
    std::size_t different = 0;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        Dice dice(seed);
        Draw_Train(dice);
        const Design_State drawn = design;
        Row_Bits reference;
        for (const Lane_Width width : every_width) {
            design = drawn;
            const Forced_Lanes forced(width);
            ASSERT_TRUE(Calc_Force_Torque(design)) << seed;
            if (width == Lane_Width::reference)
                reference = Force_Bits();
            values += reference.size();
            different += Different(reference, Force_Bits());
        }
    }
    Install_Host(std::move(before));
    std::printf("%zu values, %zu differ\n", values, different);
    EXPECT_EQ(different, 0U);
}

/// Points of which each may stand at an edge of a block.
const std::vector<std::vector<int>> odd_points{{0}, {3}, {last}, {7, 8}, {0, 1, 2, 3}, {2, 5, 11, 359, 360}};

TEST_F(Force_Lanes, a_separation_is_asked_about_where_it_is)
{
    for (const Lane_Width width : every_width)
        for (const std::vector<int>& points : odd_points)
            for (const Answer answer : {Answer::Retry, Answer::Ignore, Answer::Abort}) {
                const Forced_Lanes forced(width);
                Make();
                for (const int i : points)
                    Set(var::A, i, -2.0);  // of 100 rad^2/s^2: a force of -100
                // Each is asked about, only the first, or the first and the run ends at the second.
                const std::size_t asked = answer == Answer::Retry ? points.size() : 1;
                for (std::size_t k = 0; k < asked; ++k)
                    script_.Expect(Separation_Box(std::to_string(points[k]), answer));
                const bool ends = answer == Answer::Abort && points.size() > 1;
                EXPECT_EQ(Calc_Force_Torque(design), !ends);
                EXPECT_TRUE(f().Separated);
                EXPECT_EQ(f().Calc_Abort, ends);
                const int end = ends ? points[1] : last + 1;
                for (int i = 0; i <= last; ++i) {
                    const bool separated = std::ranges::count(points, i) > 0;
                    EXPECT_EQ(Data(var::Force, i), i > end ? untouched : separated ? -100.0 : 100.0) << i;
                    EXPECT_EQ(Data(var::Torque, i), i >= end ? untouched : 0.0) << i;
                    EXPECT_EQ(Data(var::Friction_Torque, i) == untouched, i >= end) << i;
                    EXPECT_EQ(Data(var::Flywheel_Torque, i) == untouched, ends || i == 0) << i;
                }
            }
}

TEST_F(Force_Lanes, an_overflow_ends_the_run_where_it_is)
{
    for (const Lane_Width width : every_width)
        for (const int i : {0, 3, 8, last}) {
            const Forced_Lanes forced(width);
            Make();
            design.cam.Closure = "Form";
            Set(var::A, i, largest);  // a hundred times that is no 32-bit number
            script_.Expect(testing::Error_Box(overflow, "Overflow", "Calc_Force_Torque"));
            EXPECT_FALSE(Calc_Force_Torque(design));
            EXPECT_EQ(Data(var::Force, i), untouched);
            EXPECT_EQ(Data(var::Torque, last), untouched);
            if (i > 0) {
                EXPECT_EQ(Data(var::Force, i - 1), 100.0);
                EXPECT_EQ(Data(var::Torque, i - 1), 0.0);
            }
        }
}

/// The velocities become the torques: a force of one, in the radians base.
void Lay_Torques(const std::vector<double>& torques)
{
    d().Preload = 1.0;
    design.cam.Closure = "Form";
    for (int i = 0; i <= last; ++i)
        Set(var::V, i, torques[static_cast<std::size_t>(i)]);
}

/// Sums of the trapezoids, each rounded, one after the other, up to one that is no finite number; the rest is zero.
std::vector<float> Chain_of_Sums(const std::vector<double>& torques)
{
    std::vector<float> sums(torques.size());
    for (std::size_t i = 2; i < torques.size(); ++i) {
        const double sum = sums[i - 1] + (double{Single(torques[i - 1])} + double{Single(torques[i])}) / 2;
        if (std::abs(sum) > largest)
            break;
        sums[i] = static_cast<float>(sum);
    }
    return sums;
}

/// Torques about zero, of one order or of all that 32 bits have; some of them zero or in runs of one sign.
std::vector<double> Draw_Torques(Dice& dice)
{
    std::vector<double> torques;
    const int widest = dice.Chance(50) ? 0 : dice.Whole(1, 44);
    const double share = dice.Real(0.0, 1.0);
    for (int i = 0; i <= last; ++i)
        torques.push_back(dice.Chance(15) ? 0.0
                                          : dice.Real(share - 1.0, share) *
                                                std::pow(10.0, dice.Whole(-widest, std::min(widest, 33))));
    return torques;
}

TEST_F(Force_Lanes, the_integral_is_the_chain_of_sums_rounded_at_each_point)
{
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        Dice dice(seed);
        const std::vector<double> torques = Draw_Torques(dice);
        Lay_Torques(torques);
        const std::vector<float> chain = Chain_of_Sums(torques);
        for (const Lane_Width width : every_width) {
            const Forced_Lanes forced(width);
            ASSERT_TRUE(Calc_Force_Torque(design));
            for (int i = 0; i <= last; ++i)
                ASSERT_EQ(design.results.CalcData(var::Torque_Integral, i).Bits(), chain[static_cast<std::size_t>(i)])
                    << seed << " " << i;
            EXPECT_EQ(d().Torque_Integral_Max, Single(*std::ranges::max_element(chain)));
            EXPECT_EQ(d().Torque_Integral_Min, Single(*std::ranges::min_element(chain)));
        }
    }
}

TEST_F(Force_Lanes, an_integral_that_overflows_keeps_the_sums_before)
{
    for (const int rise : {3, 12, 100, last - 1}) {
        std::vector<double> torques(last + 1, 0.0);
        for (int i = 1; i <= last; ++i)
            torques[static_cast<std::size_t>(i)] = i < rise ? 1e30 : 3e38;
        Lay_Torques(torques);
        const std::vector<float> chain = Chain_of_Sums(torques);
        for (const Lane_Width width : every_width) {
            const Forced_Lanes forced(width);
            script_.Expect(testing::Error_Box(overflow, "Overflow", "Calc_Force_Torque"));
            EXPECT_FALSE(Calc_Force_Torque(design));
            EXPECT_EQ(chain.back(), 0.0F);
            for (int i = 0; i <= last; ++i)
                ASSERT_EQ(design.results.CalcData(var::Torque_Integral, i).Bits(), chain[static_cast<std::size_t>(i)])
                    << rise << " " << i;
        }
    }
}

TEST_F(Force_Lanes, an_excess_over_the_mean_that_overflows_is_told_of_and_leaves_the_flywheel)
{
    // One torque of the largest number over a negative mean: the integral stays a number, the excess does not.
    std::vector<double> torques(last + 1, -1.2e36);
    torques[5] = largest;
    Lay_Torques(torques);
    for (const Lane_Width width : every_width) {
        const Forced_Lanes forced(width);
        script_.Expect(testing::Error_Box(overflow, "Overflow", "Calc_Force_Torque"));
        EXPECT_FALSE(Calc_Force_Torque(design));
        EXPECT_LT(Data(var::Torque_Integral, last), 0.0);
        EXPECT_EQ(Data(var::Flywheel_Torque, 1), untouched);
    }
}

TEST_F(Force_Lanes, a_time_base_of_no_kind_adds_the_external_forces_up)
{
    // The force of each point is the former one, which had the external force added: meant, as a force is kept whole.
    design.motion.Time_Base = 4;
    d().Ext_Force_Add = f().Ext_Force_Calc = true;
    for (int i = 0; i <= last; ++i)
        design.results.Ext_Force_Table(i) = 2.0;
    for (const Lane_Width width : every_width) {
        const Forced_Lanes forced(width);
        ASSERT_TRUE(Calc_Force_Torque(design));
        for (int i = 0; i <= last; ++i) {
            EXPECT_EQ(Data(var::Force, i), 2.0 * i);
            EXPECT_EQ(Data(var::Torque, i), 0.0);
        }
    }
}

TEST_F(Force_Lanes, a_table_of_external_forces_that_is_too_short_is_refused)
{
    d().Ext_Force_Add = f().Ext_Force_Calc = true;
    design.results.Ext_Force_Table.Dimension(last - 1);
    script_.Expect(testing::Error_Box(out_of_bounds, "Index out of bounds", "Calc_Force_Torque"));
    EXPECT_FALSE(Calc_Force_Torque(design));
    EXPECT_EQ(Data(var::Force, 0), untouched);
}

}  // namespace
}  // namespace lobemax
