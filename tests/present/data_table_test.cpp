// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/data_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "motion/segments.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

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

/// A cycle of 361 points in three segments, 0 to 90, 90 to 150 and 150 to 360 degrees. At point p variable 1
/// is p, variable 2 is (p - 100) squared, variable 7 is -p / 8.
class Data_Tables : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        Motion_Group& m = design.motion;
        m.No_of_segments = 3;
        m.Beta_Deg(1) = 90;
        m.Beta_Deg(2) = 60;
        m.Beta_Deg(3) = 210;
        Update_Segment_Angles(design);
        Fill();
    }
    void TearDown() override { design = {}; }

    static void Fill()
    {
        for (int p = 0; p <= design.motion.Max_Data_Points_used; ++p) {
            design.results.CalcData(0, p) = p * design.motion.Deltatheta;
            design.results.CalcData(1, p) = p;
            design.results.CalcData(2, p) = (p - 100) * (p - 100);
            design.results.CalcData(7, p) = -p / 8.0;
        }
    }
};

// ---- rows

TEST_F(Data_Tables, every_point_of_the_cycle_has_a_row)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 0, 1});
    ASSERT_EQ(table.rows.size(), 361U);
    for (std::size_t p = 0; p <= 360; ++p) {
        ASSERT_EQ(table.rows[p].size(), 2U);
        EXPECT_EQ(table.rows[p][0], static_cast<double>(p));
        EXPECT_EQ(table.rows[p][1], static_cast<double>(p));
    }
}

TEST_F(Data_Tables, a_step_of_10_at_360_points_gives_37_rows)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 0, 10});
    ASSERT_EQ(table.rows.size(), 37U);
    for (std::size_t k = 0; k < 37; ++k)
        EXPECT_EQ(table.rows[k][0], 10.0 * static_cast<double>(k));
}

TEST_F(Data_Tables, a_step_that_does_not_end_on_the_last_point_stops_before_it)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 0, 7});
    EXPECT_EQ(table.rows.size(), 52U);  // 0, 7 .. 357
    EXPECT_EQ(table.rows.back()[0], 357.0);
}

TEST_F(Data_Tables, a_step_beyond_the_range_shows_the_first_row_alone)
{
    EXPECT_EQ(Make_Data_Table(design, {{1}, 0, 361}).rows.size(), 1U);
    const Data_Table table = Make_Data_Table(design, {{1}, 2, 32767});
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows[0][0], 90.0);
}

TEST_F(Data_Tables, four_columns_stand_in_the_order_of_the_choice)
{
    const Data_Table table = Make_Data_Table(design, {{7, 1, 2, 1}, 0, 100});
    ASSERT_EQ(table.rows.size(), 4U);
    EXPECT_EQ(table.rows[2], (std::vector<double>{200, -25, 200, 10000, 200}));
}

TEST_F(Data_Tables, a_segment_shows_its_own_rows_both_ends_included)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 2, 1});
    ASSERT_EQ(table.rows.size(), 61U);
    EXPECT_EQ(table.rows.front()[0], 90.0);
    EXPECT_EQ(table.rows.back()[0], 150.0);
}

TEST_F(Data_Tables, a_segment_is_stepped_from_its_own_start)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 2, 25});
    ASSERT_EQ(table.rows.size(), 3U);
    EXPECT_EQ(table.rows[0][0], 90.0);
    EXPECT_EQ(table.rows[1][0], 115.0);
    EXPECT_EQ(table.rows[2][0], 140.0);
}

TEST_F(Data_Tables, the_points_of_a_segment_follow_the_step_of_the_cycle)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    Fill();
    const Point_Range range = Points_of_Segment(design, 2);
    EXPECT_EQ(range.first, 720);
    EXPECT_EQ(range.last, 1200);
    const Point_Range cycle = Points_of_Segment(design, 0);
    EXPECT_EQ(cycle.first, 0);
    EXPECT_EQ(cycle.last, 2880);
    const Data_Table table = Make_Data_Table(design, {{1}, 2, 8});
    EXPECT_EQ(table.rows.size(), 61U);
    EXPECT_EQ(table.rows.back()[0], 150.0);
}

TEST_F(Data_Tables, an_angle_between_points_goes_to_the_nearest_with_ties_to_even)
{
    design.motion.Shift(2) = 90.5;
    design.motion.Gamma(2) = 151.5;
    const Point_Range range = Points_of_Segment(design, 2);
    EXPECT_EQ(range.first, 90);
    EXPECT_EQ(range.last, 152);
}

// ---- extremes

TEST_F(Data_Tables, extremes_are_those_of_the_whole_cycle)
{
    const Data_Table table = Make_Data_Table(design, {{1, 2, 7}, 0, 1});
    ASSERT_EQ(table.smallest.size(), 4U);
    ASSERT_EQ(table.largest.size(), 4U);
    EXPECT_EQ(table.smallest[1], 0.0);
    EXPECT_EQ(table.largest[1], 360.0);
    EXPECT_EQ(table.smallest[2], 0.0);     // at 100 degrees
    EXPECT_EQ(table.largest[2], 67600.0);  // 260 squared, at 360 degrees
    EXPECT_EQ(table.smallest[3], -45.0);
    EXPECT_EQ(table.largest[3], 0.0);
}

TEST_F(Data_Tables, extremes_are_those_of_the_rows_shown)
{
    const Data_Table segment = Make_Data_Table(design, {{2}, 3, 1});
    EXPECT_EQ(segment.smallest[1], 2500.0);  // 50 squared, at 150 degrees
    EXPECT_EQ(segment.largest[1], 67600.0);
    const Data_Table stepped = Make_Data_Table(design, {{2}, 0, 30});
    EXPECT_EQ(stepped.smallest[1], 100.0);  // at 90 degrees: 100 degrees is not shown
    const Data_Table second = Make_Data_Table(design, {{2}, 2, 40});
    EXPECT_EQ(second.smallest[1], 100.0);  // 90 and 130 degrees are shown
    EXPECT_EQ(second.largest[1], 900.0);
}

// ---- refusals

TEST_F(Data_Tables, what_the_design_does_not_have_is_error_9)
{
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, 4, 1}); }), 9);  // three segments
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, -1, 1}); }), 9);
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, 0, 0}); }), 9);
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, 0, -10}); }), 9);
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{54}, 0, 1}); }), 9);  // a composite of the plots has no row
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{60}, 0, 1}); }), 9);
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{-1}, 0, 1}); }), 9);
}

TEST_F(Data_Tables, a_segment_that_ends_beyond_the_cycle_is_error_9)
{
    design.motion.Gamma(3) = 361.0;
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, 3, 1}); }), 9);
}

TEST_F(Data_Tables, a_segment_that_ends_before_it_starts_is_error_9)
{
    design.motion.Gamma(2) = 10.0;
    EXPECT_EQ(Fault_Of([] { Make_Data_Table(design, {{1}, 2, 1}); }), 9);
}

// ---- heads

TEST_F(Data_Tables, heads_of_the_profile_follow_the_kind_of_cam)
{
    const auto heads = [](const char* kind) {
        design.cam.Camtype = kind;
        Set_Units(design);
        return Make_Data_Table(design, {{11, 12, 36, 37}, 0, 1}).heads;
    };
    using Texts = std::vector<std::string>;
    for (const char* kind : {"Barrel", "Linear"})
        EXPECT_EQ(heads(kind), (Texts{"Angle", "Z-coord", "Lambda", "Z_Surface", "Lambda_Surf"}));
    EXPECT_EQ(Variable_Named(design, "Lambda"), 12);
    EXPECT_EQ(Variable_Named(design, "Z"), 11);
    EXPECT_EQ(heads("Radial"), (Texts{"Angle", "Radius", "Theta", "X_Surface", "Y_Surface"}));
    EXPECT_FALSE(Variable_Named(design, "Lambda"));
}

TEST_F(Data_Tables, heads_are_the_angle_and_the_short_headings)
{
    const Data_Table table = Make_Data_Table(design, {{1, 4, 8, 22}, 0, 360});
    EXPECT_EQ(table.heads, (std::vector<std::string>{"Angle", "Displ", "Jrk", "Torque", "PD-Disp"}));
}

TEST_F(Data_Tables, a_variable_without_a_short_heading_is_headed_by_its_name)
{
    EXPECT_EQ(Column_Head(design, 34), "Radius_key");
    EXPECT_EQ(Column_Head(design, 42), "Sig_max");
    EXPECT_EQ(Column_Head(design, 47), "World_Y");
    EXPECT_EQ(Column_Head(design, 0), "Angle");
    EXPECT_EQ(Column_Head(design, 48), "Comp Cam Torque");
}

TEST_F(Data_Tables, no_head_is_empty)
{
    for (int v = 0; v <= 53; ++v)
        EXPECT_NE(Column_Head(design, v), "") << v;
}

// ---- variables by name

TEST_F(Data_Tables, a_variable_is_named_by_number_name_or_symbol)
{
    EXPECT_EQ(Variable_Named(design, "0"), 0);
    EXPECT_EQ(Variable_Named(design, "5"), 5);
    EXPECT_EQ(Variable_Named(design, "53"), 53);
    EXPECT_EQ(Variable_Named(design, "Phi"), 5);
    EXPECT_EQ(Variable_Named(design, "phi"), 5);
    EXPECT_EQ(Variable_Named(design, "Displcmnt"), 1);
    EXPECT_EQ(Variable_Named(design, "Jerk *E3"), 4);
    EXPECT_EQ(Variable_Named(design, "F-kin"), 7);
    EXPECT_EQ(Variable_Named(design, " S "), 1);
    EXPECT_EQ(Variable_Named(design, "Pg"), 17);
}

TEST_F(Data_Tables, symbols_differ_by_their_case)
{
    EXPECT_EQ(Variable_Named(design, "r"), 6);
    EXPECT_EQ(Variable_Named(design, "R"), 11);
}

TEST_F(Data_Tables, no_variable_for_what_names_none)
{
    for (const char* text : {"", " ", "54", "-1", "60", "Nothing", "5x", "Cam Profile", "99999999999"})
        EXPECT_EQ(Variable_Named(design, text), std::nullopt) << text;
}

// ---- text

TEST_F(Data_Tables, the_text_has_heads_rows_and_the_two_extremes_between_tabs)
{
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{1, 7}, 2, 20}), std::nullopt),
              "Angle\tDispl\tForce\n"
              "90\t90\t-11.25\n"
              "110\t110\t-13.75\n"
              "130\t130\t-16.25\n"
              "150\t150\t-18.75\n"
              "Min\t90\t-18.75\n"
              "Max\t150\t-11.25\n");
}

TEST_F(Data_Tables, decimals_count_for_every_column)
{
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{7}, 2, 60}), 3),
              "Angle\tForce\n"
              "90.000\t-11.250\n"
              "150.000\t-18.750\n"
              "Min\t-18.750\n"
              "Max\t-11.250\n");
}

TEST_F(Data_Tables, the_shortest_text_of_a_number_is_that_of_a_Single)
{
    design.results.CalcData(1, 0) = 0.1;
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{1}, 0, 361}), std::nullopt),
              "Angle\tDispl\n0\t0.1\nMin\t0.1\nMax\t0.1\n");
}

TEST_F(Data_Tables, a_negative_zero_has_no_sign)
{
    design.results.CalcData(1, 0) = -0.0;
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{1}, 0, 361}), 2),
              "Angle\tDispl\n0.00\t0.00\nMin\t0.00\nMax\t0.00\n");
}

TEST_F(Data_Tables, a_number_that_rounds_to_zero_has_no_sign)
{
    design.results.CalcData(1, 0) = -0.001;
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{1}, 0, 361}), 2),
              "Angle\tDispl\n0.00\t0.00\nMin\t0.00\nMax\t0.00\n");
}

TEST_F(Data_Tables, the_European_format_leaves_the_text_with_points)
{
    design.identity.Number_Format = "Europe";
    design.results.CalcData(1, 0) = 1234.5;
    EXPECT_EQ(Table_Text(Make_Data_Table(design, {{1}, 0, 361}), 1),
              "Angle\tDispl\n0.0\t1234.5\nMin\t1234.5\nMax\t1234.5\n");
}

TEST_F(Data_Tables, a_step_at_the_end_of_the_integers_is_taken)
{
    const Data_Table table = Make_Data_Table(design, {{1}, 2, std::numeric_limits<int>::max()});
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows[0][0], 90.0);
}

TEST_F(Data_Tables, of_the_response_over_time_goes_over_the_points_of_the_integration)
{
    Results_Group& r = design.results;
    design.dynamics.Ode_Count = 7;
    for (int j = 1; j <= 7; ++j) {
        r.Ode_Time(j) = j * 0.5;
        for (int row = 0; row <= 3; ++row)
            r.Ode_States(row, j) = 10 * row + j;
    }
    Table_Choice choice;
    choice.variables = {var::Time_X, var::Time_Xddot, var::Time_Error};
    choice.step = 3;
    EXPECT_EQ(Make_Data_Table(design, choice).heads.front(), "Angle") << "no vibration is in memory";
    design.flags.Modelflag = true;
    const Data_Table table = Make_Data_Table(design, choice);
    EXPECT_EQ(table.heads, (std::vector<std::string>{"Time", "x", "x ddot", "s - x"}));
    EXPECT_EQ(table.rows, (std::vector<std::vector<double>>{{0.5, 11, 31, 1}, {2.0, 14, 34, 4}, {3.5, 17, 37, 7}}));
    EXPECT_EQ(table.largest[1], 17);
    EXPECT_EQ(table.units.front(), "sec");
    EXPECT_EQ(table.base, Table_Base::time);
    choice.variables.push_back(var::Response_X);
    EXPECT_EQ(Make_Data_Table(design, choice).heads.front(), "Angle") << "the response over the cam angle is not";
}

TEST_F(Data_Tables, of_a_transform_goes_over_its_harmonics)
{
    for (int k = 1; k <= 15; ++k)
        design.results.CalcData(var::FFT_Mag, k) = k * k;
    design.motion.Fft_Half = 180;
    design.motion.No_Harmonics = 15;
    design.motion.Fft_Variable = var::S;
    Table_Choice choice;
    choice.variables = {var::FFT_Mag};
    EXPECT_EQ(Make_Data_Table(design, choice).heads.front(), "Angle") << "no transform is in memory";
    design.flags.FFT_Done = true;
    choice.step = 7;
    choice.segment = 2;  // a segment is one of the cam angle
    const Data_Table table = Make_Data_Table(design, choice);
    EXPECT_EQ(table.heads, (std::vector<std::string>{"Harmonic", "Mag"}));
    EXPECT_EQ(table.rows, (std::vector<std::vector<double>>{{1, 1}, {8, 64}, {15, 225}}));
    choice.step = 32767;
    EXPECT_EQ(Make_Data_Table(design, choice).rows.size(), 1U);
    choice.variables.push_back(var::V);
    choice.step = 1;
    EXPECT_EQ(Make_Data_Table(design, choice).heads.front(), "Angle") << "a function of the cam angle is among them";
}

}  // namespace
}  // namespace lobemax
