// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/motion_programs.h"
#include "motion/segment_store.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Expected_Box;
using testing::No_Beta_Box;
using testing::Script;

constexpr double true_pi = 3.14159265358979323846;
constexpr const char* zero_omega = " Shaft Omega cannot be zero - Please check";

Motion_Group& m()
{
    return design.motion;
}

Single& Data(int variable, int point)
{
    return design.results.CalcData(variable, point);
}

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

/// A started design at 2 rad/s with an empty segment table; every box must be expected.
class Segments : public ::testing::Test {
protected:
    void SetUp() override
    {
        Start_Services services;
        ASSERT_TRUE(Sub_Main(design, "", services));
        Set_Shaft_Speed(design, 2.0);
    }
    void TearDown() override { design = {}; }

    /// Fills a row of the table as a person does; the number of segments follows.
    static void Row_Is(int segment, char kind, std::string_view program, double beta, const std::string& low,
                       const std::string& high)
    {
        m().No_of_segments = std::max<int>(m().No_of_segments, segment);
        ASSERT_TRUE(Pick_Motion(design, segment, kind));
        ASSERT_TRUE(Pick_Program(design, segment, program));
        m().Beta_Deg(segment) = beta;
        m().Beta_Rad(segment) = beta / Deg_per_Rad;
        m().Start_Value(segment) = low;
        m().End_Value(segment) = high;
    }

    static void Double_Dwell(double step = 1.0)
    {
        ASSERT_TRUE(Set_Step(design, step));
        Row_Is(1, 'R', "MT", 90, "0", "25");
        Row_Is(2, 'D', "DW", 90, "25", "25");
        Row_Is(3, 'F', "MS", 90, "25", "0");
        Row_Is(4, 'D', "DW", 90, "0", "0");
    }

    /// Every row of CalcData but the angle holds 1000 v + p at point p.
    static void Mark_Data()
    {
        for (int v = 1; v <= 53; ++v)
            for (int p = 0; p <= m().Max_Data_Points_used; ++p)
                Data(v, p) = 1000.0 * v + p;
    }

    static void Set_Every_Result_Flag()
    {
        Flags_Group& f = design.flags;
        f.Calculated = f.Sized = f.Dynamicflag = f.Modelflag = f.Stressflag = f.Polydyne_Calc = true;
        f.CompCam_Calc = f.Ext_Force_Calc = f.File_Loaded = f.Linkage_Calc = f.FFT_Done = true;
    }

    Script user;
};

// ---- Angles

TEST_F(Segments, follow_each_other_from_0_degrees_on)
{
    m().No_of_segments = 3;
    m().Beta_Deg(1) = 90.5;
    m().Beta_Deg(2) = 30.25;
    m().Beta_Deg(3) = 100.0;
    m().Beta_Deg(4) = 7.0;
    m().Shift(4) = m().Gamma(4) = -1.0;
    Update_Segment_Angles(design);
    EXPECT_EQ(m().Shift(1), 0.0);
    EXPECT_EQ(m().Gamma(1), 90.5);
    EXPECT_EQ(m().Shift(2), 90.5);
    EXPECT_EQ(m().Gamma(2), 120.75);
    EXPECT_EQ(m().Shift(3), 120.75);
    EXPECT_EQ(m().Gamma(3), 220.75);
    EXPECT_EQ(m().Shift(4), -1.0);  // not in use
    EXPECT_EQ(m().Gamma(4), -1.0);
}

// ---- Shaft speed

TEST_F(Segments, Read_Omega_turns_revolutions_per_minute_into_radians_per_second_with_their_powers)
{
    Read_Omega(design, "120");
    const double omega = Single(4.0 * 3.141592654);  // 2 revolutions a second, with the program's own pi
    EXPECT_EQ(m().Shaft_speed, omega);
    EXPECT_EQ(m().Shaft_Speed_Sq, Single(omega * omega));
    EXPECT_EQ(m().Shaft_Speed_Cu, Single(Single(omega * omega) * omega));
}

TEST_F(Segments, Read_Omega_reads_the_number_format_in_force)
{
    design.identity.Number_Format = "Europe";
    Read_Omega(design, "7,5");
    EXPECT_EQ(m().Shaft_speed, Single(0.25 * 3.141592654));
}

TEST_F(Segments, Read_Omega_of_zero_says_so_once_and_takes_1)
{
    for (const char* text : {"0", "0.000", "", "fast"}) {
        m().Shaft_speed = 5.0;
        Set_Omega_Powers(design);
        user.Expect({zero_omega, Buttons::OK, Symbol::exclamation});
        Read_Omega(design, text);
        EXPECT_EQ(m().Shaft_speed, 1.0);
        EXPECT_EQ(m().Shaft_Speed_Sq, 1.0);
        EXPECT_EQ(m().Shaft_Speed_Cu, 1.0);
    }
}

TEST_F(Segments, a_shaft_may_turn_backwards)
{
    Read_Omega(design, "-30");
    EXPECT_EQ(m().Shaft_speed, Single(-3.141592654));
    EXPECT_GT(m().Shaft_Speed_Sq, 0.0);
    EXPECT_LT(m().Shaft_Speed_Cu, 0.0);
}

TEST_F(Segments, a_speed_of_zero_in_a_calculation_says_so_once_and_the_calculation_goes_on)
{
    Row_Is(1, 'R', "45", 90, "0", "3");
    user.Expect({zero_omega, Buttons::OK, Symbol::exclamation});
    EXPECT_TRUE(Calc_Segment(design, 0, 0.0));
    EXPECT_EQ(m().Shaft_speed, 1.0);
    EXPECT_EQ(Data(var::S, 90), 3.0);
    const double b = true_pi / 2.0;
    EXPECT_NEAR(Data(var::V, 45), 1.875 * 3.0 / b, 1e-6);  // 15/8 L / b at mid-segment, at 1 rad/s
}

// ---- Check_Range

TEST_F(Segments, Check_Range_takes_both_ends_in)
{
    EXPECT_TRUE(Check_Range(design, 0.0, 0.0, 360.0, "no box"));
    EXPECT_TRUE(Check_Range(design, 360.0, 0.0, 360.0, "no box"));
    EXPECT_TRUE(Check_Range(design, 12.5, 0.0, 360.0, "no box"));
}

TEST_F(Segments, Check_Range_shows_its_message_outside)
{
    for (const double value : {-0.001, 360.001}) {
        user.Expect({"Beta cannot be > 360 or < 0", Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Check_Range(design, value, 0.0, 360.0, "Beta cannot be > 360 or < 0"));
    }
}

TEST_F(Segments, Quiet_Checks_suppresses_the_box_but_not_the_answer)
{
    design.flags.Quiet_Checks = true;
    EXPECT_FALSE(Check_Range(design, 361.0, 0.0, 360.0, "no box"));
    EXPECT_TRUE(Check_Range(design, 360.0, 0.0, 360.0, "no box"));
}

// ---- Clearing

TEST_F(Segments, Clear_Motion_Data_adds_the_angle_up_in_32_bits)
{
    m().Deltatheta = 0.1;  // no step of the list: those add exactly, this one shows the rounding
    Clear_Motion_Data(design, 360, 53);
    float angle = 0.0F;
    for (int i = 0; i <= 360; ++i) {
        ASSERT_EQ(Data(var::Angle, i).Bits(), angle) << i;
        angle += 0.1F;
    }
    EXPECT_NE(Data(var::Angle, 360), Single(36.0)) << "the example must show the rounding";
}

TEST_F(Segments, Clear_Motion_Data_zeroes_the_variables_and_points_it_is_given)
{
    Mark_Data();
    Clear_Motion_Data(design, 100, 20);
    for (int p = 0; p <= 360; ++p) {
        EXPECT_EQ(Data(var::Angle, p), p <= 100 ? p : 0.0);
        for (int v = 1; v <= 53; ++v)
            ASSERT_EQ(Data(v, p), v <= 20 && p <= 100 ? 0.0 : 1000.0 * v + p) << v << ", " << p;
    }
}

TEST_F(Segments, clearing_spares_the_torque_while_runs_accumulate)
{
    design.dynamics.Torque_Start_Fresh = false;
    Mark_Data();
    Clear_Motion_Data(design, 360, 53);
    EXPECT_EQ(Data(var::Torque, 7), 8007.0);
    EXPECT_EQ(Data(var::Force, 7), 0.0);
    EXPECT_EQ(Data(9, 7), 0.0);
    Clear_Variables_From(design, 360, 53, 5);
    EXPECT_EQ(Data(var::Torque, 7), 8007.0);
    design.dynamics.Torque_Start_Fresh = true;
    Clear_Variables_From(design, 360, 53, 5);
    EXPECT_EQ(Data(var::Torque, 7), 0.0);
}

TEST_F(Segments, clearing_refills_the_external_force_from_its_table)
{
    for (int p = 0; p <= 360; ++p)
        design.results.Ext_Force_Table(p) = 0.5 * p;
    Mark_Data();
    Clear_Motion_Data(design, 360, 53);
    for (int p = 0; p <= 360; ++p)
        ASSERT_EQ(Data(var::Ext_Force, p), 0.5 * p);
    Mark_Data();
    Clear_Variables_From(design, 360, 53, 5);
    for (int p = 0; p <= 360; ++p)
        ASSERT_EQ(Data(var::Ext_Force, p), 0.5 * p);
}

TEST_F(Segments, Clear_Variables_From_leaves_the_angle_and_the_variables_below_alone)
{
    for (int p = 0; p <= 360; ++p)
        Data(var::Angle, p) = -5.0;
    Mark_Data();
    Clear_Variables_From(design, 100, 50, 5);
    for (int p = 0; p <= 360; ++p) {
        ASSERT_EQ(Data(var::Angle, p), -5.0);
        for (int v = 1; v <= 53; ++v)
            ASSERT_EQ(Data(v, p), v >= 5 && v <= 50 && p <= 100 ? 0.0 : 1000.0 * v + p) << v << ", " << p;
    }
}

TEST_F(Segments, clearing_beyond_the_arrays_is_error_9)
{
    EXPECT_EQ(Fault_Of([] { Clear_Motion_Data(design, 361, 53); }), 9);
    EXPECT_EQ(Fault_Of([] { Clear_Variables_From(design, 361, 53, 5); }), 9);
    EXPECT_EQ(Fault_Of([] { Clear_Variables_From(design, 360, 54, 5); }), 9);
}

// ---- The step

TEST_F(Segments, each_step_sets_its_point_count_and_sizes_the_arrays)
{
    const std::pair<double, int> steps[] = {{0.125, 2880}, {0.25, 1440}, {0.5, 720}, {1.0, 360}};
    for (const auto& [step, points] : steps) {
        ASSERT_TRUE(Set_Step(design, step));
        EXPECT_EQ(m().Deltatheta, step);
        EXPECT_EQ(m().Max_Data_Points_used, points);
        const Results_Group& r = design.results;
        EXPECT_EQ(r.CalcData.Last_Row(), 53);
        EXPECT_EQ(r.CalcData.Last_Point(), points);
        EXPECT_EQ(r.Ext_Force_Table.Last(), points);
        EXPECT_EQ(r.Profile_X.Last(), points);
        EXPECT_EQ(r.Profile_Y.Last(), points);
        EXPECT_EQ(r.Arm_Pivot_X.Last(), points);
        EXPECT_EQ(r.Link_Theta.Last_Point(), points);
        EXPECT_EQ(r.Link_Ratio_S.Last(), points);
        for (int p = 0; p <= points; ++p)
            ASSERT_EQ(Data(var::Angle, p), p * step);
        EXPECT_EQ(Data(var::Angle, points), 360.0);
    }
}

TEST_F(Segments, a_new_step_loses_all_results_and_asks_for_every_row_again)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    for (int p = 0; p <= 360; ++p)
        design.results.Ext_Force_Table(p) = 1.0;
    Set_Every_Result_Flag();
    design.flags.Model_Saved = true;
    ASSERT_TRUE(Set_Step(design, 0.5));
    for (int v = 1; v <= 53; ++v)
        for (int p = 0; p <= 720; ++p)
            ASSERT_EQ(Data(v, p), 0.0);
    for (int i = 1; i <= 4; ++i)
        EXPECT_FALSE(m().Seg_Done(i));
    const Flags_Group& f = design.flags;
    EXPECT_FALSE(f.Calculated || f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag);
    EXPECT_FALSE(f.Polydyne_Calc || f.CompCam_Calc || f.Ext_Force_Calc || f.Linkage_Calc || f.FFT_Done);
    EXPECT_FALSE(f.Model_Saved);
    EXPECT_EQ(m().End_Value(1), "25");  // the table itself stays
    EXPECT_EQ(m().No_of_segments, 4);
}

TEST_F(Segments, any_other_step_is_refused_and_nothing_changes)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    const double s = Data(var::S, 45);
    ASSERT_GT(s, 0.0);
    for (const double step : {0.0, -1.0, 2.0, 0.1, 0.3, 0.0625, 1e30, std::nan("")}) {
        EXPECT_FALSE(Set_Step(design, step));
        EXPECT_EQ(m().Deltatheta, 1.0);
        EXPECT_EQ(m().Max_Data_Points_used, 360);
        EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
        EXPECT_EQ(Data(var::S, 45), s);
        EXPECT_TRUE(m().Seg_Done(1));
        EXPECT_TRUE(design.flags.Calculated);
    }
}

// ---- Store_Point

class Store : public Segments {
protected:
    void SetUp() override
    {
        Segments::SetUp();
        m().Seg = 2;
        m().Shift(2) = 90.0;
        m().Base_Shift(2) = 10.0;
        m().Shaft_speed = 2.5;
        Set_Omega_Powers(design);  // 6.25 and 15.625
        m().Seg_S = 2.0;
        m().Seg_V = 3.0;
        m().Seg_A = 4.0;
        m().Seg_J = 8.0;
        m().Seg_P = 16.0;
        Mark_Data();
    }
};

TEST_F(Store, per_second_the_derivatives_take_the_powers_of_the_speed_and_jerk_and_ping_are_in_thousands)
{
    m().Time_Base = 1;
    Store_Point(design, 5.0);
    EXPECT_EQ(Data(var::Angle, 95), 95.0);
    EXPECT_EQ(Data(var::S, 95), 12.0);
    EXPECT_EQ(Data(var::V, 95), 7.5);
    EXPECT_EQ(Data(var::A, 95), 25.0);
    EXPECT_EQ(Data(var::J, 95), 0.125);     // 8 x 15.625 / 1000
    EXPECT_EQ(Data(var::Ping, 95), 0.625);  // 16 x 39.0625 / 1000
}

TEST_F(Store, per_degree_one_factor_serves_all_four_derivatives_on_purpose)
{
    m().Time_Base = 2;
    m().Seg_V = m().Seg_A = m().Seg_J = m().Seg_P = 3.0;
    Store_Point(design, 5.0);
    EXPECT_EQ(Data(var::Angle, 95), 95.0);
    EXPECT_EQ(Data(var::S, 95), 12.0);
    EXPECT_NEAR(Data(var::V, 95), true_pi / 60.0, 1e-8);
    EXPECT_EQ(Data(var::A, 95), Data(var::V, 95));
    EXPECT_EQ(Data(var::J, 95), Data(var::V, 95));
    EXPECT_EQ(Data(var::Ping, 95), Data(var::V, 95));
}

TEST_F(Store, per_radian_the_derivatives_stand_as_the_law_gave_them)
{
    m().Time_Base = 3;
    Store_Point(design, 5.0);
    EXPECT_EQ(Data(var::Angle, 95), 95.0);
    EXPECT_EQ(Data(var::S, 95), 12.0);
    EXPECT_EQ(Data(var::V, 95), 3.0);
    EXPECT_EQ(Data(var::A, 95), 4.0);
    EXPECT_EQ(Data(var::J, 95), 8.0);
    EXPECT_EQ(Data(var::Ping, 95), 16.0);
}

TEST_F(Store, any_other_time_base_writes_angle_and_displacement_only)
{
    for (const int base : {0, 4, -1}) {
        Mark_Data();
        m().Time_Base = base;
        Store_Point(design, 5.0);
        EXPECT_EQ(Data(var::Angle, 95), 95.0);
        EXPECT_EQ(Data(var::S, 95), 12.0);
        for (const int v : {var::V, var::A, var::J, var::Ping})
            EXPECT_EQ(Data(v, 95), 1000.0 * v + 95);
    }
}

TEST_F(Store, a_point_writes_its_own_six_variables_and_nothing_else)
{
    Store_Point(design, 5.0);
    for (int v = 1; v <= 53; ++v)
        for (int p = 0; p <= 360; ++p) {
            if (p == 95 && (v <= 4 || v == var::Ping))
                continue;
            ASSERT_EQ(Data(v, p), 1000.0 * v + p) << v << ", " << p;
        }
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
    EXPECT_EQ(design.results.Ext_Force_Table(95), 0.0);
}

TEST_F(Store, an_angle_between_two_points_goes_to_the_nearest_and_a_tie_to_the_even_one)
{
    const std::pair<double, int> places[] = {{0.25, 90}, {0.5, 90}, {0.75, 91}, {1.5, 92}, {2.5, 92}, {2.75, 93}};
    for (const auto& [theta, point] : places) {
        Mark_Data();
        Store_Point(design, theta);
        EXPECT_EQ(Data(var::S, point), 12.0) << theta;
        EXPECT_EQ(Data(var::Angle, point), 90.0 + theta) << "the angle itself is not rounded";
    }
}

TEST_F(Store, the_point_counts_by_the_step)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    Store_Point(design, 5.0);
    EXPECT_EQ(Data(var::S, 760), 12.0);
    EXPECT_EQ(Data(var::Angle, 760), 95.0);
}

TEST_F(Store, the_last_point_of_the_finest_step_is_2880_at_360_degrees)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    Store_Point(design, 270.0);
    EXPECT_EQ(Data(var::S, 2880), 12.0);
    EXPECT_EQ(Data(var::Angle, 2880), 360.0);
    EXPECT_EQ(Fault_Of([] { Store_Point(design, 270.125); }), 9);
}

TEST_F(Store, a_point_outside_the_cycle_is_error_9)
{
    EXPECT_EQ(Fault_Of([] { Store_Point(design, 271.0); }), 9);
    EXPECT_EQ(Fault_Of([] { Store_Point(design, -91.0); }), 9);
}

TEST_F(Store, a_force_function_goes_to_its_table_as_well)
{
    m().Motion = false;
    Store_Point(design, 5.0);
    EXPECT_EQ(design.results.Ext_Force_Table(95), 12.0);
    EXPECT_EQ(Data(var::Ext_Force, 95), 12.0);
    EXPECT_EQ(Data(var::S, 95), 12.0);
    EXPECT_TRUE(design.flags.Ext_Force_Calc);
    EXPECT_EQ(design.results.Ext_Force_Table(94), 0.0);
}

TEST_F(Store, a_value_beyond_32_bits_is_error_6)
{
    m().Seg_A = 1e38;
    EXPECT_EQ(Fault_Of([] { Store_Point(design, 5.0); }), 6);
}

// ---- Store_Segment_Ends

TEST_F(Store, ends_of_a_segment_are_its_first_and_last_points)
{
    for (const char* kind : {"R", "F", "P", "S"}) {
        m().Rise_Fall_Dwell(2) = kind;
        m().Beta_Deg(2) = 60.0;
        m().Lift = 77.0;
        Store_Segment_Ends(design);
        for (int d = 0; d <= 3; ++d) {
            EXPECT_EQ(m().Firstlast(2, 1, d), 1000.0 * (d + 1) + 90);
            EXPECT_EQ(m().Firstlast(2, 2, d), 1000.0 * (d + 1) + 150);
        }
        EXPECT_EQ(m().Lift, 77.0);
    }
}

TEST_F(Store, ends_of_a_dwell_are_taken_one_step_inside_because_its_end_points_are_shared)
{
    m().Rise_Fall_Dwell(2) = "D";
    m().Beta_Deg(2) = 60.0;
    Store_Segment_Ends(design);
    for (int d = 0; d <= 3; ++d) {
        EXPECT_EQ(m().Firstlast(2, 1, d), 1000.0 * (d + 1) + 91);
        EXPECT_EQ(m().Firstlast(2, 2, d), 1000.0 * (d + 1) + 149);
    }
}

TEST_F(Store, ends_between_two_points_round_to_the_even_one)
{
    m().Shift(2) = 90.5;
    m().Beta_Deg(2) = 61.0;  // to 151.5
    m().Rise_Fall_Dwell(2) = "R";
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Firstlast(2, 1, 0), 1090.0);
    EXPECT_EQ(m().Firstlast(2, 2, 0), 1152.0);
    m().Rise_Fall_Dwell(2) = "D";  // 91.5 and 150.5
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Firstlast(2, 1, 0), 1092.0);
    EXPECT_EQ(m().Firstlast(2, 2, 0), 1150.0);
}

TEST_F(Store, ends_count_by_the_step)
{
    ASSERT_TRUE(Set_Step(design, 0.5));
    Mark_Data();
    m().Beta_Deg(2) = 60.0;
    m().Rise_Fall_Dwell(2) = "F";
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Firstlast(2, 1, 1), 2180.0);
    EXPECT_EQ(m().Firstlast(2, 2, 1), 2300.0);
    m().Rise_Fall_Dwell(2) = "D";
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Firstlast(2, 1, 1), 2181.0);
    EXPECT_EQ(m().Firstlast(2, 2, 1), 2299.0);
}

TEST_F(Store, Poly_Lift_Fix_makes_the_end_displacement_the_lift_but_not_of_a_dwell)
{
    m().Poly_Lift_Fix = true;
    m().Beta_Deg(2) = 60.0;
    m().Lift = 77.0;
    m().Rise_Fall_Dwell(2) = "D";
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Lift, 77.0);
    m().Rise_Fall_Dwell(2) = "P";
    Store_Segment_Ends(design);
    EXPECT_EQ(m().Lift, 1150.0);
}

TEST_F(Store, Liftmax_is_the_range_of_S_from_point_1_on)
{
    for (int p = 0; p <= 360; ++p)
        Data(var::S, p) = 3.0;
    Data(var::S, 0) = -100.0;  // not looked at, meant
    Data(var::S, 1) = -2.0;
    Data(var::S, 360) = 5.0;
    Update_Liftmax(design);
    EXPECT_EQ(m().Liftmax, 7.0);
}

// ---- Positions of a segment

TEST_F(Segments, a_rise_adds_to_its_start)
{
    Row_Is(1, 'R', "45", 90, "2", "5");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
    EXPECT_EQ(m().Lift, 3.0);
    EXPECT_EQ(m().Base_Shift(1), 2.0);
    EXPECT_EQ(Data(var::S, 0), 2.0);
    EXPECT_EQ(Data(var::S, 45), 3.5);
    EXPECT_EQ(Data(var::S, 90), 5.0);
}

TEST_F(Segments, a_mirrored_fall_adds_to_its_end)
{
    Row_Is(1, 'F', "45", 90, "5", "2");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
    EXPECT_EQ(m().Base_Shift(1), 2.0);
    EXPECT_EQ(Data(var::S, 0), 5.0);
    EXPECT_EQ(Data(var::S, 45), 3.5);
    EXPECT_EQ(Data(var::S, 90), 2.0);
    EXPECT_LT(Data(var::V, 45), 0.0);
}

TEST_F(Segments, a_rise_through_zero)
{
    Row_Is(1, 'R', "45", 90, "-1", "1");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), 2.0);
    EXPECT_EQ(m().Base_Shift(1), -1.0);
    EXPECT_EQ(Data(var::S, 0), -1.0);
    EXPECT_EQ(Data(var::S, 45), 0.0);
    EXPECT_EQ(Data(var::S, 90), 1.0);
}

TEST_F(Segments, the_base_of_a_rise_from_zero_and_of_a_fall_to_zero_has_no_sign)
{
    Row_Is(1, 'R', "45", 90, "-0", "1");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Base_Shift(1), 0.0);
    EXPECT_FALSE(std::signbit(m().Base_Shift(1).Bits()));
    Row_Is(1, 'F', "45", 90, "1", "-0");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Base_Shift(1), 0.0);
    EXPECT_FALSE(std::signbit(m().Base_Shift(1).Bits()));
}

TEST_F(Segments, a_rise_typed_downwards_rises_from_its_start_all_the_same)
{
    Row_Is(1, 'R', "45", 90, "5", "2");  // the displacement has no sign: meant
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
    EXPECT_EQ(m().Base_Shift(1), 5.0);
    EXPECT_EQ(Data(var::S, 0), 5.0);
    EXPECT_EQ(Data(var::S, 90), 8.0);
}

TEST_F(Segments, a_dwell_holds_its_absolute_position)
{
    Row_Is(1, 'D', "DW", 90, "3", "3");
    m().Base_Shift(1) = 9.0;
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
    EXPECT_EQ(m().Base_Shift(1), 0.0);
    for (int p = 0; p <= 90; ++p)
        EXPECT_EQ(Data(var::S, p), 3.0);
}

TEST_F(Segments, a_dwell_below_zero_keeps_its_sign_and_only_its_end_counts)
{
    Row_Is(1, 'D', "DW", 90, "1", "-3");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Total_Displacement(1), -3.0);
    EXPECT_EQ(Data(var::S, 45), -3.0);
}

TEST_F(Segments, a_polynomial_or_spline_has_no_base)
{
    Host deaf;  // what is told of a segment without conditions is not the matter here
    const Host before = Install_Host(std::move(deaf));
    for (const char kind : {'P', 'S'}) {
        Row_Is(1, kind, kind == 'P' ? "PO" : "BS", 90, "5", "2");
        m().Base_Shift(1) = 9.0;
        Calc_Segment(design, 0);
        EXPECT_EQ(m().Total_Displacement(1), 3.0);
        EXPECT_EQ(m().Base_Shift(1), 0.0);
    }
    Install_Host(before);
}

TEST_F(Segments, a_position_that_is_no_number_is_0_and_leading_digits_count)
{
    Row_Is(1, 'R', "45", 90, "low", "3 mm");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Base_Shift(1), 0.0);
    EXPECT_EQ(m().Total_Displacement(1), 3.0);
}

TEST_F(Segments, positions_are_read_in_the_number_format_in_force)
{
    design.identity.Number_Format = "Europe";
    Row_Is(1, 'R', "45", 90, "0,5", "1,25");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Base_Shift(1), 0.5);
    EXPECT_EQ(m().Total_Displacement(1), 0.75);
}

TEST_F(Segments, a_3456_polynomial_ends_at_its_base)
{
    Row_Is(1, 'R', "56", 90, "2", "5");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(Data(var::S, 45), 5.0);
    EXPECT_NEAR(Data(var::S, 90), 2.0, 1e-6);  // and not at 5 as typed: meant
    EXPECT_EQ(m().End_Value(1), "5");
}

// ---- Reset_Status

TEST_F(Segments, Reset_Status_throws_the_later_results_away_and_returns_to_motion)
{
    Set_Every_Result_Flag();
    design.flags.Example_Loaded = design.flags.Units_Changed = true;
    m().Motion = false;
    m().Ext_Force_On = 1;
    Reset_Status(design);
    const Flags_Group& f = design.flags;
    EXPECT_TRUE(m().Motion);
    EXPECT_FALSE(f.Calculated || f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag);
    EXPECT_FALSE(f.Polydyne_Calc || f.CompCam_Calc || f.Ext_Force_Calc || f.File_Loaded || f.Linkage_Calc);
    EXPECT_TRUE(f.Example_Loaded && f.Units_Changed);  // these belong to its callers
    EXPECT_EQ(m().Ext_Force_On, 1);
}

// ---- Calc_Segment

TEST_F(Segments, calculating_a_row_sets_its_segment_at_work)
{
    Row_Is(1, 'R', "MS", 90, "0", "3");
    Row_Is(2, 'F', "CF", 60, "3", "1");
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_EQ(m().Seg, 2);
    EXPECT_EQ(m().Seg_Start_Angle, 90.0);
    EXPECT_EQ(m().Seg_End_Angle, 150.0);
    EXPECT_TRUE(m().Seg_Done(2));
    EXPECT_FALSE(m().Seg_Done(1));
    EXPECT_EQ(m().Firstlast(2, 1, 0), 3.0);
    EXPECT_NEAR(m().Firstlast(2, 2, 0), 1.0, 1e-6);
}

TEST_F(Segments, calculating_a_row_forgets_where_the_table_came_from_and_all_later_results)
{
    Row_Is(1, 'R', "MS", 360, "0", "3");
    Set_Every_Result_Flag();
    design.flags.Example_Loaded = design.flags.Units_Changed = true;
    ASSERT_TRUE(Calc_Segment(design, 0));
    const Flags_Group& f = design.flags;
    EXPECT_FALSE(f.Example_Loaded || f.Units_Changed || f.File_Loaded);
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag || f.Polydyne_Calc || f.CompCam_Calc);
    EXPECT_FALSE(f.Linkage_Calc);
    EXPECT_TRUE(f.Calculated) << "its only row is filled";
}

TEST_F(Segments, Calculated_follows_the_end_positions_of_all_rows_in_use)
{
    Row_Is(1, 'R', "MS", 180, "0", "3");
    Row_Is(2, 'F', "MS", 180, "3", "");
    EXPECT_FALSE(All_Rows_Filled(design));
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_FALSE(design.flags.Calculated);
    m().End_Value(2) = "0";
    EXPECT_TRUE(All_Rows_Filled(design));
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_TRUE(design.flags.Calculated);  // filled is enough, calculated or not
    EXPECT_FALSE(m().Seg_Done(2));
    m().No_of_segments = 3;
    EXPECT_FALSE(All_Rows_Filled(design));
}

TEST_F(Segments, the_running_extremes_start_wide_open_and_follow_the_positions)
{
    EXPECT_EQ(m().Running_Min, 1000000.0);
    EXPECT_EQ(m().Running_Max, -1000000.0);
    Row_Is(1, 'R', "MS", 180, "2", "5");
    Row_Is(2, 'F', "MS", 180, "5", "1");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Running_Min, 2.0);
    EXPECT_EQ(m().Running_Max, 5.0);
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_EQ(m().Running_Min, 2.0) << "the minimum looks at start positions, the maximum at end positions: meant";
    EXPECT_EQ(m().Running_Max, 5.0);
}

TEST_F(Segments, the_speed_stays_as_stored_when_none_is_given)
{
    Row_Is(1, 'R', "45", 90, "0", "3");
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(m().Shaft_speed, 2.0);
    const double b = true_pi / 2.0;
    EXPECT_NEAR(Data(var::V, 45), 2.0 * 1.875 * 3.0 / b, 1e-5);
    ASSERT_TRUE(Calc_Segment(design, 0, 30.0));
    EXPECT_EQ(m().Shaft_speed, Single(3.141592654));
    EXPECT_NEAR(Data(var::V, 45), true_pi * 1.875 * 3.0 / b, 1e-5);
}

TEST_F(Segments, a_row_without_a_beta_is_told_by_its_number_and_stays_uncalculated)
{
    Row_Is(1, 'R', "MS", 0, "0", "3");
    Row_Is(2, 'D', "DW", 0, "3", "3");
    m().Seg_Done(1) = m().Seg_Done(2) = true;
    for (const int row : {0, 1}) {
        Set_Every_Result_Flag();
        user.Expect(No_Beta_Box(row + 1));
        EXPECT_FALSE(Calc_Segment(design, row));
        EXPECT_FALSE(m().Seg_Done(row + 1));
        EXPECT_FALSE(design.flags.Calculated || design.flags.Sized || design.flags.Ext_Force_Calc);
        EXPECT_TRUE(m().Motion);
    }
    Row_Is(1, 'P', "PO", 0, "0", "3");
    user.Expect(No_Beta_Box(1));
    EXPECT_FALSE(Calc_Segment(design, 0));
}

/// A duration without its radians: the laws divide by them.
void Beta_without_Radians(int segment)
{
    m().Beta_Rad(segment) = 0.0;
}

TEST_F(Segments, a_fault_is_reported_under_the_callers_name_and_leaves_the_row_uncalculated)
{
    Row_Is(1, 'R', "MS", 180, "0", "3");
    Beta_without_Radians(1);
    Set_Every_Result_Flag();
    user.Expect(Error_Box(11, "Division by zero", "cmd_CalcSeg_Click"));
    EXPECT_FALSE(Calc_Segment(design, 0));
    EXPECT_FALSE(m().Seg_Done(1));
    EXPECT_FALSE(design.flags.Calculated || design.flags.Sized || design.flags.Ext_Force_Calc);
    EXPECT_TRUE(m().Motion);
}

TEST_F(Segments, a_fault_of_a_law_with_a_name_is_reported_under_it)
{
    const std::pair<const char*, const char*> names[] = {
        {"45", "Poly_345"}, {"67", "Poly_4567"}, {"DU", "Dudley"}, {"TH", "Thoren"}, {"FR", "Freudenstein 1-3"}};
    for (const auto& [code, name] : names) {
        Row_Is(1, 'R', code, 180, "0", "3");
        Beta_without_Radians(1);
        user.Expect(Error_Box(11, "Division by zero", name));
        EXPECT_FALSE(Calc_Segment(design, 0));
        EXPECT_FALSE(m().Seg_Done(1));
        EXPECT_FALSE(design.flags.Calculated);
    }
}

TEST_F(Segments, a_segment_beyond_the_cycle_is_error_9)
{
    Row_Is(1, 'R', "MS", 300, "0", "3");
    Row_Is(2, 'F', "MS", 90, "3", "0");
    ASSERT_TRUE(Calc_Segment(design, 0));
    user.Expect(Error_Box(9, "Index out of bounds", "cmd_CalcSeg_Click"));
    EXPECT_FALSE(Calc_Segment(design, 1));
    EXPECT_FALSE(m().Seg_Done(2));
    EXPECT_FALSE(design.flags.Calculated);
    Row_Is(2, 'F', "45", 90, "3", "0");
    user.Expect(Error_Box(9, "Index out of bounds", "Poly_345"));
    EXPECT_FALSE(Calc_Segment(design, 1));
    EXPECT_FALSE(m().Seg_Done(2));
}

TEST_F(Segments, a_row_outside_the_table_is_error_9)
{
    for (const int row : {-2, -1, 20}) {
        user.Expect(Error_Box(9, "Index out of bounds", "cmd_CalcSeg_Click"));
        EXPECT_FALSE(Calc_Segment(design, row)) << row;
        EXPECT_FALSE(design.flags.Calculated);
    }
}

TEST_F(Segments, a_row_that_faults_and_is_mended_is_calculated)
{
    Row_Is(1, 'R', "MS", 0, "0", "3");
    user.Expect(No_Beta_Box(1));
    EXPECT_FALSE(Calc_Segment(design, 0));
    Row_Is(1, 'R', "MS", 360, "0", "3");
    EXPECT_TRUE(Calc_Segment(design, 0));
    EXPECT_TRUE(m().Seg_Done(1));
    EXPECT_TRUE(design.flags.Calculated);
}

// ---- Points between segments

TEST_F(Segments, the_point_that_two_segments_share_belongs_to_the_one_calculated_last)
{
    Row_Is(1, 'R', "45", 90, "0", "1");
    Row_Is(2, 'D', "DW", 270, "7", "7");  // a jump, to tell them apart
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(Data(var::S, 90), 1.0);
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_EQ(Data(var::S, 90), 7.0);
    EXPECT_EQ(Data(var::Angle, 90), 90.0);
    EXPECT_LT(Data(var::S, 89), 1.0);
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_EQ(Data(var::S, 90), 1.0);
    EXPECT_EQ(Data(var::S, 91), 7.0);
    EXPECT_EQ(Data(var::S, 360), 7.0);
    EXPECT_EQ(Data(var::S, 0),
              0.0);  // first and last point are the same place on the cam; nothing makes them agree
}

TEST_F(Segments, a_beta_of_half_a_step_leaves_its_end_to_the_rounding_of_the_next_segment)
{
    Row_Is(1, 'R', "45", 90.5, "0", "1");
    Row_Is(2, 'D', "DW", 100, "7", "7");
    Mark_Data();
    ASSERT_TRUE(Calc_Segment(design, 0));
    const double x = 90.0 / 90.5;  // the last point of the law, short of its end
    EXPECT_NEAR(Data(var::S, 90), ((6 * x - 15) * x + 10) * x * x * x, 1e-7);
    EXPECT_EQ(Data(var::Angle, 90), 90.0);
    EXPECT_EQ(Data(var::S, 91), 1091.0);
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_EQ(Data(var::S, 90), 7.0);  // 90.5 rounds to the even 90
    EXPECT_EQ(Data(var::Angle, 90), 90.5);
    // 91.5 and 92.5 both round to 92: every odd point of the dwell stays as it was.
    for (int p = 91; p <= 189; p += 2)
        EXPECT_EQ(Data(var::S, p), 1000.0 + p);
    for (int p = 92; p <= 190; p += 2)
        EXPECT_EQ(Data(var::S, p), 7.0);
}

TEST_F(Segments, that_end_before_the_cycle_leave_zeros_after_a_clear)
{
    Row_Is(1, 'R', "45", 150, "0", "1");
    Row_Is(2, 'D', "DW", 150, "1", "1");
    Clear_Motion_Data(design, 360, 53);
    ASSERT_TRUE(Calc_All(design, true));
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_EQ(Data(var::S, 300), 1.0);
    for (int p = 301; p <= 360; ++p) {
        EXPECT_EQ(Data(var::S, p), 0.0);
        EXPECT_EQ(Data(var::Angle, p), p);
    }
}

// ---- Calc_All

TEST_F(Segments, Calc_All_calculates_a_whole_cycle_without_a_jump)
{
    for (const double step : {1.0, 0.5, 0.25, 0.125}) {
        SCOPED_TRACE(step);
        Double_Dwell(step);
        ASSERT_TRUE(Calc_All(design, true));
        EXPECT_TRUE(design.flags.Calculated);
        const int last = m().Max_Data_Points_used;
        // Neither law is faster than 2 L / b, with b a quarter of a turn.
        const double largest_move = 25.0 * 2.0 / (true_pi / 2.0) * step * true_pi / 180.0 * (1.0 + 1e-5);
        for (int p = 1; p <= last; ++p)
            ASSERT_LE(std::abs(Data(var::S, p) - Data(var::S, p - 1)), largest_move) << p;
        for (int p = 0; p <= last; ++p)
            ASSERT_EQ(Data(var::Angle, p), p * step);
        EXPECT_EQ(Data(var::S, 0), 0.0);
        EXPECT_EQ(Data(var::S, last), 0.0);
        EXPECT_EQ(Data(var::S, last / 4 + 1), 25.0);
        for (int i = 1; i <= 4; ++i) {
            EXPECT_TRUE(m().Seg_Done(i));
            const int next = i % 4 + 1;
            EXPECT_NEAR(m().Firstlast(i, 2, 0), m().Firstlast(next, 1, 0), 1e-5) << i;
            // 1e-5: MT runs from 0 to 0.9999999 of its lift, its velocities leave 7e-6 at its ends
            EXPECT_NEAR(m().Firstlast(i, 2, 1), m().Firstlast(next, 1, 1), 1e-4) << i;
            EXPECT_NEAR(m().Firstlast(i, 2, 2), m().Firstlast(next, 1, 2), 1e-4) << i;
        }
    }
}

TEST_F(Segments, Calc_All_fills_a_cycle_of_20_segments)
{
    for (int i = 1; i <= 20; ++i)
        Row_Is(i, i % 2 == 1 ? 'R' : 'F', "67", 18, i % 2 == 1 ? "1" : "3", i % 2 == 1 ? "3" : "1");
    ASSERT_TRUE(Calc_All(design, true));
    EXPECT_TRUE(design.flags.Calculated);
    for (int i = 1; i <= 20; ++i) {
        EXPECT_TRUE(m().Seg_Done(i));
        EXPECT_EQ(m().Shift(i), 18.0 * (i - 1));
        EXPECT_EQ(m().Gamma(i), 18.0 * i);
        EXPECT_EQ(Data(var::S, 18 * i), i % 2 == 1 ? 3.0 : 1.0);
        EXPECT_EQ(Data(var::S, 18 * i - 9), 2.0);
    }
    EXPECT_EQ(m().Gamma(20), 360.0);
    EXPECT_EQ(m().Liftmax, 2.0);
}

TEST_F(Segments, Calc_All_with_a_row_that_faults_calculates_the_others_but_not_the_design)
{
    Row_Is(1, 'R', "MS", 180, "0", "3");
    Row_Is(2, 'D', "DW", 0, "3", "3");
    Row_Is(3, 'F', "MS", 180, "3", "0");
    user.Expect(No_Beta_Box(2));
    EXPECT_FALSE(Calc_All(design, true));
    EXPECT_TRUE(m().Seg_Done(1));
    EXPECT_FALSE(m().Seg_Done(2));
    EXPECT_TRUE(m().Seg_Done(3));
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Segments, Calc_All_with_the_last_row_faulting_does_not_count_as_calculated)
{
    Row_Is(1, 'R', "MS", 180, "0", "3");
    Row_Is(2, 'F', "45", 0, "3", "0");
    user.Expect(No_Beta_Box(2));
    EXPECT_FALSE(Calc_All(design, true));
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Segments, Calc_All_hands_each_row_to_its_runner_with_the_choice_of_motion_or_force)
{
    Double_Dwell();
    for (const bool motion : {true, false}) {
        std::vector<int> rows;
        const auto run = [&](int row) {
            EXPECT_EQ(m().Motion, motion);  // each calculation ends with a motion
            rows.push_back(row);
            return Calc_Segment(design, row) && row != 1;
        };
        EXPECT_FALSE(Calc_All(design, motion, run));
        EXPECT_EQ(rows, (std::vector<int>{0, 1, 2, 3}));
        EXPECT_EQ(design.results.CalcData(var::Ext_Force, 120), motion ? 0.0 : 25.0);
    }
}

TEST_F(Segments, Calc_All_takes_a_speed_in_revolutions_per_minute)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true, 60.0));
    EXPECT_EQ(m().Shaft_speed, Single(2.0 * 3.141592654));
    ASSERT_TRUE(Motion_Done(design, 120.0));
    EXPECT_EQ(m().Shaft_speed, Single(4.0 * 3.141592654));
}

// ---- A force function

TEST_F(Segments, a_force_function_of_several_segments_fills_its_table)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, false));
    for (int p = 0; p <= 360; ++p) {
        ASSERT_EQ(design.results.Ext_Force_Table(p), Data(var::S, p)) << p;
        ASSERT_EQ(Data(var::Ext_Force, p), Data(var::S, p)) << p;
    }
    EXPECT_EQ(design.results.Ext_Force_Table(120), 25.0);
    // The choice and the flag go back as soon as a segment has been stored: meant.
    EXPECT_TRUE(m().Motion);
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
}

TEST_F(Segments, a_motion_leaves_the_force_function_alone)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, false));
    const Row<Single> force = design.results.Ext_Force_Table;
    Row_Is(1, 'R', "MS", 360, "0", "1");
    m().No_of_segments = 1;
    ASSERT_TRUE(Calc_All(design, true));
    for (int p = 0; p <= 360; ++p) {
        ASSERT_EQ(design.results.Ext_Force_Table(p), force(p));
        ASSERT_EQ(Data(var::Ext_Force, p), force(p));
    }
    EXPECT_EQ(Data(var::S, 360), 1.0);
}

TEST_F(Segments, a_force_function_before_a_motion_is_there_when_the_motion_is_done)
{
    Double_Dwell();
    m().Ext_Force_On = -1;
    ASSERT_TRUE(Calc_All(design, false));
    const Row<Single> force = design.results.Ext_Force_Table;
    ASSERT_TRUE(Calc_All(design, true));
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_TRUE(design.flags.Ext_Force_Calc);
    for (int p = 0; p <= 360; ++p)
        ASSERT_EQ(Data(var::Ext_Force, p), force(p));
    EXPECT_EQ(Data(var::Ext_Force, 120), 25.0);
}

TEST_F(Segments, without_the_wish_for_a_force_it_does_not_count_as_calculated)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, false));
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
}

TEST_F(Segments, without_a_stored_force_the_wish_alone_does_not_count_as_calculated)
{
    Double_Dwell();
    m().Ext_Force_On = -1;
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
    EXPECT_EQ(Data(var::Ext_Force, 120), 0.0);
}

// ---- Motion_Done

TEST_F(Segments, a_motion_that_is_done_clears_the_later_variables_but_not_its_Ping)
{
    Double_Dwell();
    Row_Is(1, 'R', "CF", 90, "0", "25");
    Mark_Data();
    ASSERT_TRUE(Calc_All(design, true));
    const Table<Single> before = design.results.CalcData;
    ASSERT_LT(before(var::Ping, 22), 0.0);
    ASSERT_TRUE(Motion_Done(design));
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= 360; ++p)
            ASSERT_EQ(Data(v, p), v <= 4 || v == 17 ? double{before(v, p)} : 0.0) << v << ", " << p;
}

TEST_F(Segments, a_motion_that_is_done_keeps_an_accumulated_torque)
{
    Double_Dwell();
    design.dynamics.Torque_Start_Fresh = false;
    ASSERT_TRUE(Calc_All(design, true));
    Data(var::Torque, 7) = 4.0;
    Data(var::Force, 7) = 4.0;
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_EQ(Data(var::Torque, 7), 4.0);
    EXPECT_EQ(Data(var::Force, 7), 0.0);
}

TEST_F(Segments, a_design_that_is_done_sets_its_flags)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    Set_Every_Result_Flag();
    design.linkage.Drive_End_Effector = true;
    ASSERT_TRUE(Motion_Done(design));
    const Flags_Group& f = design.flags;
    EXPECT_TRUE(f.Calculated);
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.Modelflag || f.CompCam_Calc || f.Polydyne_Calc || f.FFT_Done);
    EXPECT_FALSE(f.Example_Loaded || f.File_Loaded);
    EXPECT_FALSE(design.linkage.Drive_End_Effector);
}

TEST_F(Segments, example_data_that_are_done_count_as_sized_and_keep_their_variables)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    Data(var::Phi, 7) = 4.0;
    design.flags.Example_Loaded = true;
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_TRUE(design.flags.Sized);
    EXPECT_TRUE(design.flags.Dynamicflag);
    EXPECT_EQ(Data(var::Phi, 7), 4.0);
    EXPECT_FALSE(design.flags.Example_Loaded);
}

TEST_F(Segments, a_force_function_that_is_done_clears_no_variables)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, false));
    Data(var::Phi, 7) = 4.0;
    m().Motion = false;
    design.flags.Sized = design.flags.Dynamicflag = true;
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_EQ(Data(var::Phi, 7), 4.0);
    EXPECT_FALSE(design.flags.Sized || design.flags.Dynamicflag);
}

TEST_F(Segments, a_design_that_is_done_is_counted_and_stamped)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    design.identity.Design_No = 41;
    design.identity.Date = design.identity.Time = "";
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_EQ(design.identity.Design_No, 42);
    EXPECT_EQ(design.identity.Date, "2026-11-21");  // the script's clock
    EXPECT_EQ(design.identity.Time, "12:34:56");
}

TEST_F(Segments, a_design_that_is_done_has_the_extremes_of_its_displacement)
{
    Row_Is(1, 'R', "45", 180, "-1", "4");
    Row_Is(2, 'F', "45", 180, "4", "-1");
    ASSERT_TRUE(Calc_All(design, true));
    Data(var::S, 0) = -2.0;  // first and last point count here
    Data(var::S, 360) = 4.5;
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_EQ(m().Max_Pos_Disp, 4.5);
    EXPECT_EQ(m().Max_Neg_Disp, -2.0);
    EXPECT_EQ(m().MaxLift, 6.5);
}

TEST_F(Segments, extremes_of_a_motion_away_from_zero_do_not_reach_zero)
{
    for (const double step : {1.0, 0.125}) {
        ASSERT_TRUE(Set_Step(design, step));
        Row_Is(1, 'R', "45", 180, "2", "5");
        Row_Is(2, 'F', "45", 180, "5", "2");
        ASSERT_TRUE(Calc_All(design, true));
        ASSERT_TRUE(Motion_Done(design));
        EXPECT_EQ(m().Max_Pos_Disp, 5.0);
        EXPECT_EQ(m().Max_Neg_Disp, 2.0);
        EXPECT_EQ(m().MaxLift, 3.0);
        EXPECT_EQ(m().Liftmax, 3.0);
    }
}

TEST_F(Segments, a_design_that_is_done_forgets_the_vibration)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    Results_Group& r = design.results;
    r.Ode_Time(3) = 1.5;
    r.Ode_States(2, 3) = 2.5;
    design.dynamics.Ode_Count = 17;
    const int last = r.Ode_Time.Last();
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_EQ(r.Ode_Time(3), 0.0);
    EXPECT_EQ(r.Ode_States(2, 3), 0.0);
    EXPECT_EQ(design.dynamics.Ode_Count, 0);
    EXPECT_EQ(r.Ode_Time.Last(), last) << "zeroed, not thrown away";
}

TEST_F(Segments, a_speed_of_zero_when_the_design_is_done_says_so_and_becomes_1)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    user.Expect({zero_omega, Buttons::OK, Symbol::exclamation});
    ASSERT_TRUE(Motion_Done(design, 0.0));
    EXPECT_EQ(m().Shaft_speed, 1.0);
    EXPECT_TRUE(design.flags.Calculated);
}

TEST_F(Segments, calculating_one_row_again_throws_away_what_followed_the_design)
{
    Double_Dwell();
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    design.flags.Sized = design.flags.Dynamicflag = design.flags.Stressflag = true;
    ASSERT_TRUE(Calc_Segment(design, 2));
    EXPECT_FALSE(design.flags.Sized || design.flags.Dynamicflag || design.flags.Stressflag);
    EXPECT_TRUE(design.flags.Calculated);
}

}  // namespace
}  // namespace lobemax
