// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/examples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

constexpr double true_pi = 3.14159265358979323846;

Motion_Group& m()
{
    return design.motion;
}

void Start_In(int units, const std::string& number_format = "USA")
{
    Start_Services services;
    services.read_preferences = [&] {
        design.identity.WhichUnit = units;
        design.identity.Number_Format = number_format;
    };
    ASSERT_TRUE(Sub_Main(design, "", services));
}

// What an inch is in each system: the shop's round numbers, the prime radius closer.
constexpr std::array inch{1.0, 1.0 / 12, 1.0 / 40, 2.5, 25.0};
constexpr std::array prime_inch{1.0, 1.0 / 12, 1.0 / 40, 2.54, 25.4};
// The roller of each system.
constexpr std::array roller{0.5, 0.0415, 0.0125, 1.3, 12.5};
constexpr std::array cutter{0.25, 0.0208, 0.00625, 1.0, 8.0};

struct Table_Row {
    const char* kind;
    const char* program;
    double beta;
    double start;
    double end;
};

enum class Position { inches, plain };

struct Expected {
    const char* name;
    std::vector<Table_Row> table;
    Position position;
    double omega;
    double prime;   // inches
    double offset;  // inches
    double roller;  // times the default of the units
    int followtype;
    bool translating;

    friend void PrintTo(const Expected& e, std::ostream* os) { *os << e.name; }
};

const std::vector<Table_Row> single_dwell{
    {"R", "DH", 90, 0, 1},
    {"F", "DH", 90, 1, 0},
    {"D", "DW", 180, 0, 0},
};
const std::vector<Table_Row> double_dwell{
    {"R", "MT", 90, 0, 1},
    {"D", "DW", 90, 1, 1},
    {"F", "MS", 90, 1, 0},
    {"D", "DW", 90, 0, 0},
};
const std::vector<Table_Row> four_dwell{
    {"R", "MS", 50, 0, 1}, {"D", "DW", 40, 1, 1}, {"F", "CF", 50, 1, 0}, {"D", "DW", 40, 0, 0},
    {"R", "45", 50, 0, 1}, {"D", "DW", 40, 1, 1}, {"F", "67", 50, 1, 0}, {"D", "DW", 40, 0, 0},
};
const std::vector<Table_Row> oscillating{
    {"R", "67", 90, 0, 5},
    {"D", "DW", 90, 5, 5},
    {"F", "45", 90, 5, 0},
    {"D", "DW", 90, 0, 0},
};

const Expected examples[] = {
    {"Single Dwell", single_dwell, Position::inches, 15, 3, 0.75, 2, 1, true},
    {"Double Dwell", double_dwell, Position::inches, 18, 4, 0, 1.5, 1, true},
    {"Flat Follower", single_dwell, Position::inches, 15, 4, 0, 0, 2, true},
    {"Four Dwell", four_dwell, Position::plain, 10.471975, 4, 0, 2, 1, true},
    {"Oscillating", oscillating, Position::plain, 21, 2.5, 0, 1, 1, false},
    {"4-bar Linkage", oscillating, Position::plain, 21, 2.5, 0, 1, 1, false},
    {"6-bar Linkage", oscillating, Position::plain, 21, 2.5, 0, 1, 1, false},
    {"4-bar Slider", oscillating, Position::plain, 21, 2.5, 0, 1, 1, false},
    {"6-bar Slider", oscillating, Position::plain, 21, 2.5, 0, 1, 1, false},
};

class Example_in_Units : public ::testing::TestWithParam<std::tuple<Expected, int>> {
protected:
    void SetUp() override { Start_In(units()); }
    void TearDown() override { design = {}; }

    static const Expected& example() { return std::get<0>(GetParam()); }
    static int units() { return std::get<1>(GetParam()); }
    static std::size_t place() { return static_cast<std::size_t>(units() - 1); }
    /// A position of the table in the unit of the design.
    static double Position_of(double table)
    {
        return example().position == Position::plain ? table : table * inch[place()];
    }

    Script user;
};

TEST_P(Example_in_Units, has_its_table)
{
    ASSERT_TRUE(Load_Example(design, example().name));
    ASSERT_EQ(m().No_of_segments, static_cast<int>(example().table.size()));
    int i = 0;
    double start = 0.0;
    for (const Table_Row& row : example().table) {
        SCOPED_TRACE(++i);
        EXPECT_EQ(m().Rise_Fall_Dwell(i), row.kind);
        EXPECT_EQ(m().Program(i), row.program);
        const Motion_Program* program = Find_Program(row.program);
        ASSERT_NE(program, nullptr);
        EXPECT_EQ(m().Function(i), program->stored_text);
        EXPECT_EQ(m().Seg_Program(i), program->Seg_Program);
        EXPECT_EQ(m().Full_Half(i), 1);
        EXPECT_EQ(m().Beta_Deg(i), row.beta);
        EXPECT_NEAR(m().Beta_Rad(i), row.beta * true_pi / 180.0, 1e-6);
        EXPECT_EQ(m().Shift(i), start);
        start += row.beta;
        EXPECT_EQ(m().Gamma(i), start);
        EXPECT_EQ(Single(Val(design, m().Start_Value(i))), Single(Position_of(row.start)));
        EXPECT_EQ(Single(Val(design, m().End_Value(i))), Single(Position_of(row.end)));
        EXPECT_FALSE(m().Seg_Done(i)) << "nothing is calculated yet";
    }
    EXPECT_EQ(start, 360.0);
    for (i = m().No_of_segments + 1; i <= 20; ++i) {
        EXPECT_EQ(m().Rise_Fall_Dwell(i), "");
        EXPECT_EQ(m().End_Value(i), "");
    }
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_TRUE(design.flags.Example_Loaded);
}

TEST_P(Example_in_Units, has_its_speed_and_sizes)
{
    ASSERT_TRUE(Load_Example(design, example().name));
    const double omega = Single(example().omega);
    EXPECT_EQ(m().Shaft_speed, omega);
    EXPECT_EQ(m().Shaft_Speed_Sq, Single(omega * omega));
    EXPECT_NEAR(m().Shaft_Speed_Cu, omega * omega * omega, 1e-6 * omega * omega * omega);
    const Cam_Group& c = design.cam;
    EXPECT_EQ(c.Prime_Rad, Single(example().prime * prime_inch[place()]));
    EXPECT_EQ(c.Offset, Single(example().offset * inch[place()]));  // 2.5 and 25, not 2.54: meant
    EXPECT_EQ(c.Follow_Rad, Single(example().roller * roller[place()]));
    EXPECT_EQ(c.Cutter_Radius, Single(cutter[place()]));
    EXPECT_EQ(c.Followtype, example().followtype);
    EXPECT_EQ(static_cast<bool>(c.Translating), example().translating);
    if (!example().translating) {
        EXPECT_EQ(c.ArmX, Single(4.0 * inch[place()]));
        EXPECT_EQ(c.ArmY, Single(2.5 * inch[place()]));
        EXPECT_EQ(c.ArmRad, Single(4.0 * inch[place()]));
        EXPECT_EQ(c.ArmDirect, -1);
    }
}

TEST_P(Example_in_Units, is_a_radial_cam_at_a_step_of_1_degree_in_the_system_in_force)
{
    design.cam.Camtype = "Barrel";
    design.cam.Barrel_Type = "Ribbed";
    design.cam.Rotflag = 1;
    ASSERT_TRUE(Set_Step(design, 0.25));
    ASSERT_TRUE(Load_Example(design, example().name));
    EXPECT_EQ(design.cam.Camtype, "Radial");
    EXPECT_EQ(design.cam.Barrel_Type, "");
    EXPECT_EQ(design.cam.Rotflag, -1);  // "true"
    EXPECT_EQ(m().Deltatheta, 1.0);
    EXPECT_EQ(m().Max_Data_Points_used, 360);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
    EXPECT_EQ(design.identity.WhichUnit, units());
    constexpr std::array length{"in", "ft", "m", "cm", "mm"};
    EXPECT_EQ(design.plot.Var_Unit(1), example().translating ? length[place()] : "deg");
    EXPECT_EQ(design.plot.Var_Name(var::Theta), "Theta");
}

TEST_P(Example_in_Units, is_calculated_with_its_flags)
{
    ASSERT_TRUE(Build_Example(design, example().name));
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_FALSE(design.flags.Example_Loaded || design.flags.File_Loaded);
    EXPECT_FALSE(design.flags.Modelflag || design.flags.Stressflag || design.flags.Ext_Force_Calc);
    EXPECT_FALSE(design.flags.CompCam_Calc || design.flags.Polydyne_Calc);
    EXPECT_TRUE(m().Motion);
    EXPECT_EQ(design.identity.Date, "2026-11-21");
    EXPECT_EQ(design.identity.Time, "12:34:56");
    const double top = Position_of(example().position == Position::plain && !example().translating ? 5.0 : 1.0);
    const double slack = 1e-6 * top;
    EXPECT_NEAR(m().Max_Pos_Disp, top, slack);
    EXPECT_NEAR(m().Max_Neg_Disp, 0.0, slack);
    EXPECT_NEAR(m().MaxLift, top, slack);
    EXPECT_NEAR(m().Liftmax, top, slack);
    for (int i = 1; i <= m().No_of_segments; ++i)
        EXPECT_TRUE(m().Seg_Done(i));
}

TEST_P(Example_in_Units, runs_through_the_positions_of_its_table)
{
    ASSERT_TRUE(Build_Example(design, example().name));
    const Table<Single>& data = design.results.CalcData;
    int point = 0;
    const double slack = 2e-6 * Position_of(5.0);
    for (const Table_Row& row : example().table) {
        EXPECT_NEAR(data(var::S, point), Position_of(row.start), slack) << point;
        point += static_cast<int>(row.beta);
        EXPECT_NEAR(data(var::S, point), Position_of(row.end), slack) << point;
    }
    for (int p = 0; p <= 360; ++p)
        ASSERT_EQ(data(var::Angle, p), p);
}

INSTANTIATE_TEST_SUITE_P(All, Example_in_Units,
                         ::testing::Combine(::testing::ValuesIn(examples), ::testing::Values(1, 2, 3, 4, 5)),
                         [](const auto& test) {
                             std::string name = std::get<0>(test.param).name;
                             std::replace_if(
                                 name.begin(), name.end(), [](char c) { return c == ' ' || c == '-'; }, '_');
                             return name + "_in_" + std::to_string(std::get<1>(test.param));
                         });

class Examples : public ::testing::Test {
protected:
    void SetUp() override { Start_In(5); }
    void TearDown() override { design = {}; }

    Script user;
};

TEST_F(Examples, stand_in_the_order_of_their_menu)
{
    const std::vector<std::string> menu{"Single Dwell",  "Double Dwell",  "Flat Follower", "Four Dwell",  "Oscillating",
                                        "4-bar Linkage", "6-bar Linkage", "4-bar Slider",  "6-bar Slider"};
    EXPECT_EQ(std::vector<std::string>(Example_Names.begin(), Example_Names.end()), menu);
}

TEST_F(Examples, are_found_in_upper_and_lower_case)
{
    EXPECT_TRUE(Load_Example(design, "single dwell"));
    EXPECT_TRUE(Load_Example(design, "4-BAR LINKAGE"));
}

TEST_F(Examples, of_another_name_do_not_exist_and_the_design_stays)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    for (const char* name : {"", "Triple Dwell", "Single", "Single Dwell "}) {
        EXPECT_FALSE(Load_Example(design, name)) << name;
        EXPECT_FALSE(Build_Example(design, name)) << name;
        EXPECT_EQ(m().No_of_segments, 4);
        EXPECT_EQ(m().Program(1), "MT");
        EXPECT_EQ(m().Shaft_speed, 18.0);
        EXPECT_TRUE(design.flags.Calculated);
        EXPECT_NEAR(design.results.CalcData(var::S, 120), 25.0, 1e-5);
    }
}

TEST_F(Examples, type_their_positions_with_the_decimal_symbol_of_the_number_format)
{
    // An inch is 2.5 cm and 1/40 m.
    Start_In(4, "USA");
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    EXPECT_EQ(m().Start_Value(1), "0");
    EXPECT_EQ(m().End_Value(1), "2.5");
    EXPECT_EQ(m().Start_Value(2), "2.5");
    Start_In(4, "Europe");
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    EXPECT_EQ(m().Start_Value(1), "0");
    EXPECT_EQ(m().End_Value(1), "2,5");
    EXPECT_EQ(m().Start_Value(3), "2,5");
    Start_In(3, "Europe");
    ASSERT_TRUE(Load_Example(design, "Single Dwell"));
    EXPECT_EQ(m().End_Value(1), "0,025");
}

TEST_F(Examples, run_the_same_in_both_number_formats)
{
    for (const int units : {2, 3, 4}) {
        Start_In(units, "USA");
        ASSERT_TRUE(Build_Example(design, "Single Dwell"));
        const Table<Single> usa = design.results.CalcData;
        ASSERT_GT(usa(var::S, 90), 0.0);
        Start_In(units, "Europe");
        ASSERT_TRUE(Build_Example(design, "Single Dwell"));
        for (int v = 0; v <= 53; ++v)
            for (int p = 0; p <= 360; ++p)
                ASSERT_EQ(design.results.CalcData(v, p), usa(v, p));
    }
}

TEST_F(Examples, lift_of_the_Four_Dwell_is_the_plain_number_1_in_every_system)
{
    for (int units = 1; units <= 5; ++units) {
        Start_In(units);
        ASSERT_TRUE(Build_Example(design, "Four Dwell"));
        EXPECT_EQ(m().End_Value(1), "1");
        EXPECT_NEAR(m().MaxLift, 1.0, 1e-6);
    }
}

TEST_F(Examples, take_the_place_of_the_whole_design)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.identity.Model_Name = "Mine";
    design.cam.Conjugate = true;
    design.dynamics.Preload = 123.0;
    ASSERT_TRUE(Load_Example(design, "Single Dwell"));
    EXPECT_EQ(m().No_of_segments, 3);
    EXPECT_EQ(m().Rise_Fall_Dwell(4), "");
    EXPECT_EQ(m().Beta_Deg(4), 0.0);
    EXPECT_EQ(design.identity.Model_Name, "Model1");
    EXPECT_FALSE(design.cam.Conjugate);
    EXPECT_EQ(design.dynamics.Preload, 100.0);  // the default of its field
    EXPECT_EQ(design.results.CalcData(var::S, 45), 0.0);
}

TEST_F(Examples, follow_one_another_without_a_trace)
{
    ASSERT_TRUE(Build_Example(design, "Single Dwell"));
    const Table<Single> first = design.results.CalcData;
    ASSERT_TRUE(Build_Example(design, "Oscillating"));
    EXPECT_FALSE(design.cam.Translating);
    ASSERT_TRUE(Build_Example(design, "Flat Follower"));
    EXPECT_EQ(design.cam.Followtype, 2);
    ASSERT_TRUE(Build_Example(design, "Single Dwell"));
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_TRUE(design.cam.Translating);
    for (const int v : {0, 1, 2, 3, 4, 17})
        for (int p = 0; p <= 360; ++p)
            ASSERT_EQ(design.results.CalcData(v, p), first(v, p));
}

TEST_F(Examples, of_a_single_dwell_have_the_harmonics_of_their_law)
{
    // S = (L / 2) ((1 - cos) - (1 - cos 2) / 4): a quarter of L at mid-rise, and V = (L / b) (pi / 2) there.
    ASSERT_TRUE(Build_Example(design, "Single Dwell"));
    const Table<Single>& data = design.results.CalcData;
    EXPECT_NEAR(data(var::S, 45), 25.0 / 4.0, 1e-5);
    EXPECT_NEAR(data(var::V, 45), 15.0 * 25.0, 1e-3);  // omega (L / (pi / 2)) (pi / 2)
    EXPECT_NEAR(data(var::V, 135), -15.0 * 25.0, 1e-3);
    for (int p = 0; p <= 90; ++p)
        ASSERT_NEAR(data(var::S, p), data(var::S, 180 - p), 1e-5) << "the fall is the rise backwards";
}

TEST_F(Examples, that_were_loaded_are_calculated_with_what_was_changed_since)
{
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    m().End_Value(1) = m().Start_Value(2) = m().End_Value(2) = m().Start_Value(3) = "10";
    ASSERT_TRUE(Calculate_Example(design));
    EXPECT_NEAR(m().MaxLift, 10.0, 1e-5);
}

TEST_F(Examples, that_cannot_be_calculated_say_so)
{
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    m().Beta_Deg(4) = 0.0;
    user.Expect(testing::No_Beta_Box(4));
    EXPECT_FALSE(Calculate_Example(design));
    EXPECT_FALSE(design.flags.Calculated);
}

}  // namespace
}  // namespace lobemax
