// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/input_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/startup.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/examples.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

const Expected_Box whole_turn_box{"Cam must contain exactly 360 degrees"};
const Expected_Box beta_box{"Beta cannot be > 360 or < 0", Buttons::OK, Symbol::exclamation};
const Expected_Box end_box{"End angle cannot be > 360 deg", Buttons::OK, Symbol::exclamation};
const Expected_Box step_box{"Please select one of the drop-down menu items for Delta Theta"};

class Input_Rules : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    /// Types a row: kind by its letter, program by its code (empty for P, D, S), duration, positions.
    static void Type(int row, std::string_view kind, std::string_view program, std::string_view beta,
                     std::string_view low, std::string_view high)
    {
        Pick_Row_Kind(design, row, Kind_Place_of(kind));
        if (!program.empty())
            Pick_Row_Program(design, row, Program_Place_of(program));
        Enter_Beta(design, row, beta);
        if (!low.empty())
            Enter_Low(design, row, low);
        if (!high.empty())
            Enter_High(design, row, high);
    }
    static void Type_Rise_and_Fall()
    {
        Enter_Segment_Count(design, "2", false);
        Type(0, "R", "MS", "180", "0", "10");
        Type(1, "F", "MS", "180", "", "0");
    }
    /// program, low, high, Calc, Plot and Print as letters, in this order; '-' for one that is closed.
    static std::string Openings(int row)
    {
        const Row_Openings open = Openings_of_Row(design, row);
        std::string text = "-----";
        const bool flags[] = {open.program, open.low, open.high, open.calculate, open.show};
        for (std::size_t k = 0; k < text.size(); ++k)
            if (flags[k])
                text[k] = "plhcs"[k];
        return text;
    }
    static bool Row_is_Zero(int variable)
    {
        const auto points = design.results.CalcData.Points(variable);
        return std::all_of(points.begin(), points.end(), [](Single v) { return v == 0.0; });
    }

    Motion_Group& m_ = design.motion;
    Flags_Group& f_ = design.flags;
    Script script_;
};

// ---- what a row opens

TEST_F(Input_Rules, an_empty_row_opens_nothing)
{
    for (int row = 0; row < Max_Segments; ++row)
        EXPECT_EQ(Openings(row), "-----") << row;
}

TEST_F(Input_Rules, a_rise_or_a_fall_waits_for_its_program)
{
    for (const char* kind : {"R", "F", "r", "f"}) {
        Pick_Row_Kind(design, 0, Kind_Place_of(kind));
        EXPECT_EQ(Openings(0), "p----") << kind;
        EXPECT_EQ(Program_Place(design, 0), -1);
        EXPECT_EQ(m_.Rise_Fall_Dwell(1), To_Upper(kind));
        EXPECT_EQ(m_.Function(1), To_Upper(kind));
        Pick_Row_Program(design, 0, Program_Place_of("CF"));
        EXPECT_EQ(Openings(0), "plh--") << kind;
    }
}

TEST_F(Input_Rules, kinds_with_one_program_bring_it)
{
    struct Case {
        const char* kind;
        int program;  // place in the list
        const char* openings;
    };
    for (const Case& c : {Case{"P", Program_Place_of("PO"), "-lh--"}, Case{"D", 10, "-l---"},
                          Case{"S", Program_Place_of("BS"), "-lh--"}}) {
        Pick_Row_Kind(design, 0, Kind_Place_of(c.kind));
        EXPECT_EQ(Program_Place(design, 0), c.program) << c.kind;
        EXPECT_EQ(Openings(0), c.openings) << c.kind;
        EXPECT_EQ(m_.Rise_Fall_Dwell(1), c.kind);
    }
}

TEST_F(Input_Rules, the_segment_at_work_is_the_first_but_for_a_spline)
{
    for (const char* kind : {"R", "F", "P", "D"}) {
        m_.Seg = 7;
        Pick_Row_Kind(design, 4, Kind_Place_of(kind));
        EXPECT_EQ(m_.Seg, 1) << kind;
    }
    Pick_Row_Kind(design, 4, Kind_Place_of("S"));
    EXPECT_EQ(m_.Seg, 5);
}

TEST_F(Input_Rules, kinds_stand_in_their_list_by_first_letter)
{
    const std::string letters = "RFPDS";  // Rise, Fall, Poly, Dwell, Spline
    for (int place = 0; place < 5; ++place) {
        EXPECT_EQ(Kind_at(place), letters[static_cast<std::size_t>(place)]);
        EXPECT_EQ(Kind_Place_of(letters.substr(static_cast<std::size_t>(place), 1)), place);
        Pick_Row_Kind(design, 0, place);
        EXPECT_EQ(Kind_Place(design, 0), place);
    }
    EXPECT_EQ(Kind_Place(design, 1), -1);
    for (const char* unknown : {"", "X", "RI", " ", "1"})
        EXPECT_EQ(Kind_Place_of(unknown), -1) << unknown;
}

TEST_F(Input_Rules, programs_are_typed_by_two_letters)
{
    EXPECT_EQ(Program_Place_of("MS"), 0);
    EXPECT_EQ(Program_Place_of("mt"), 1);
    EXPECT_EQ(Program_Place_of("cF"), 2);
    EXPECT_EQ(Program_Place_of("DW"), 10);
    for (const char* unknown : {"", "M", "XX", "MSX"})
        EXPECT_EQ(Program_Place_of(unknown), -1) << unknown;
}

TEST_F(Input_Rules, a_program_of_another_kind_brings_that_kind)
{
    for (const auto& [code, kind] : {std::pair{"PO", "P"}, std::pair{"BS", "S"}, std::pair{"DW", "D"}}) {
        Pick_Row_Kind(design, 0, Kind_Place_of("R"));
        Pick_Row_Program(design, 0, Program_Place_of(code));
        EXPECT_EQ(m_.Rise_Fall_Dwell(1), kind);
    }
    Pick_Row_Kind(design, 0, Kind_Place_of("F"));
    Pick_Row_Program(design, 0, Program_Place_of("MS"));
    EXPECT_EQ(m_.Rise_Fall_Dwell(1), "F");
}

TEST_F(Input_Rules, any_position_opens_the_calculation_of_a_row)
{
    Pick_Row_Kind(design, 0, Kind_Place_of("R"));
    Pick_Row_Program(design, 0, Program_Place_of("MS"));
    EXPECT_EQ(Openings(0), "plh--");
    Enter_Low(design, 0, "0");
    EXPECT_EQ(Openings(0), "plhc-");
    Enter_Low(design, 0, "");
    EXPECT_EQ(Openings(0), "plh--");
    Enter_High(design, 0, "10");
    EXPECT_EQ(Openings(0), "plhc-");
}

TEST_F(Input_Rules, a_row_without_a_duration_is_told_by_its_number)
{
    Pick_Row_Kind(design, 0, Kind_Place_of("R"));
    Pick_Row_Program(design, 0, Program_Place_of("MS"));
    Enter_Low(design, 0, "0");
    Enter_High(design, 0, "10");
    script_.Expect(testing::No_Beta_Box(1));
    EXPECT_FALSE(Calc_Segment(design, 0));
    EXPECT_FALSE(m_.Seg_Done(1));
}

TEST_F(Input_Rules, a_calculated_row_shows_and_every_edit_rearms_it)
{
    Type_Rise_and_Fall();
    const auto calculated = [&] {
        ASSERT_TRUE(Calc_Segment(design, 0));
        ASSERT_EQ(Openings(0), "plh-s");
        f_.Model_Saved = true;
    };
    const auto rearmed = [&](const char* edit) {
        EXPECT_EQ(Openings(0), "plhc-") << edit;
        EXPECT_FALSE(f_.Model_Saved) << edit;
    };
    calculated();
    Enter_Low(design, 0, "1");
    rearmed("low");
    calculated();
    Enter_High(design, 0, "11");
    rearmed("high");
    calculated();
    Enter_Beta(design, 0, "170");
    rearmed("beta");
    calculated();
    Enter_Beta(design, 0, "");
    rearmed("empty beta");
    EXPECT_EQ(m_.Beta_Deg(1), 170.0);  // and nothing else
    calculated();
    Pick_Row_Program(design, 0, Program_Place_of("MT"));
    rearmed("program");
}

TEST_F(Input_Rules, a_new_duration_moves_the_rows_behind_it)
{
    Type_Rise_and_Fall();
    Enter_Beta(design, 1, "90");
    ASSERT_TRUE(Calc_All(design, true));
    Enter_Beta(design, 0, "180");  // as it was
    EXPECT_TRUE(m_.Seg_Done(2));
    Enter_Beta(design, 0, "170");
    EXPECT_FALSE(m_.Seg_Done(2));
}

// ---- what is copied where

TEST_F(Input_Rules, an_end_is_the_next_start)
{
    Enter_Segment_Count(design, "3", false);
    Type(0, "R", "MS", "100", "0", "12.5");
    EXPECT_EQ(m_.Start_Value(2), "12.5");
    EXPECT_EQ(m_.End_Value(2), "");
    EXPECT_EQ(m_.Start_Value(3), "");
}

TEST_F(Input_Rules, the_last_row_in_use_copies_to_none)
{
    Enter_Segment_Count(design, "2", false);
    Enter_High(design, 1, "7");
    EXPECT_EQ(m_.Start_Value(3), "");
    Enter_Segment_Count(design, "20", false);
    Enter_High(design, 19, "7");  // there is no row behind it at all
    EXPECT_EQ(m_.End_Value(20), "7");
}

TEST_F(Input_Rules, a_dwell_ends_where_it_starts_and_dwells_pass_it_on)
{
    Enter_Segment_Count(design, "4", false);
    Pick_Row_Kind(design, 1, Kind_Place_of("D"));
    Pick_Row_Kind(design, 2, Kind_Place_of("D"));
    Enter_Low(design, 1, "3");
    EXPECT_EQ(m_.End_Value(2), "3");
    EXPECT_EQ(m_.Start_Value(3), "3");
    EXPECT_EQ(m_.End_Value(3), "3");
    EXPECT_EQ(m_.Start_Value(4), "3");
    EXPECT_EQ(m_.End_Value(4), "");
    Enter_High(design, 1, "4");
    EXPECT_EQ(m_.Start_Value(2), "4");
}

TEST_F(Input_Rules, a_row_that_becomes_a_dwell_keeps_its_start_and_passes_it_on)
{
    Enter_Segment_Count(design, "3", false);
    Type(0, "R", "MS", "90", "0", "25");  // row 1 starts at 25
    Pick_Row_Kind(design, 1, Kind_Place_of("D"));
    EXPECT_EQ(m_.End_Value(2), "25");
    EXPECT_EQ(m_.Start_Value(3), "25");
    Type(1, "R", "MS", "90", "", "30");
    Pick_Row_Program(design, 1, Program_Place_of("DW"));
    EXPECT_EQ(m_.End_Value(2), "25");
    EXPECT_EQ(m_.Start_Value(3), "25");
}

TEST_F(Input_Rules, a_position_clears_the_base_of_the_segment_at_work_not_of_its_row)
{
    // meant
    Enter_Segment_Count(design, "4", false);
    for (int i = 1; i <= 4; ++i)
        m_.Base_Shift(i) = 9.0;
    m_.Seg = 3;
    Enter_Low(design, 0, "1");
    EXPECT_EQ(m_.Base_Shift(1), 9.0);
    EXPECT_EQ(m_.Base_Shift(3), 0.0);
    m_.Seg = 2;
    Enter_High(design, 3, "1");
    EXPECT_EQ(m_.Base_Shift(4), 9.0);
    EXPECT_EQ(m_.Base_Shift(2), 0.0);
}

// ---- durations and angles

TEST_F(Input_Rules, a_duration_is_kept_in_degrees_and_radians)
{
    Enter_Segment_Count(design, "2", false);
    EXPECT_EQ(Enter_Beta(design, 0, "90"), "90");
    EXPECT_EQ(m_.Beta_Deg(1), 90.0);
    EXPECT_EQ(m_.Beta_Rad(1), static_cast<float>(90.0 / 57.29577950560105));
    Enter_Beta(design, 1, "100");
    EXPECT_EQ(m_.Shift(2), 90.0);
    EXPECT_EQ(m_.Gamma(2), 190.0);
}

TEST_F(Input_Rules, a_duration_outside_the_turn_keeps_the_old_one)
{
    Enter_Segment_Count(design, "2", false);
    Enter_Beta(design, 0, "90");
    for (const char* refused : {"361", "-1"}) {
        script_.Expect(beta_box);
        EXPECT_EQ(Enter_Beta(design, 0, refused), "90") << refused;
        EXPECT_EQ(m_.Beta_Deg(1), 90.0);
    }
    EXPECT_EQ(Enter_Beta(design, 0, "0"), "0");
    EXPECT_EQ(Enter_Beta(design, 0, "360"), "360");
    EXPECT_EQ(Enter_Beta(design, 0, "45 deg"), "45 deg");  // leading digits count
    EXPECT_EQ(m_.Beta_Deg(1), 45.0);
}

TEST_F(Input_Rules, an_end_beyond_the_turn_empties_the_duration)
{
    Enter_Segment_Count(design, "2", false);
    Enter_Beta(design, 0, "200");
    script_.Expect(end_box);
    EXPECT_EQ(Enter_Beta(design, 1, "160.5"), "");
    EXPECT_EQ(End_Label(design, 1), "");
    EXPECT_EQ(Enter_Beta(design, 1, "160"), "160");
    EXPECT_EQ(End_Label(design, 1), "360.");
}

TEST_F(Input_Rules, a_cycle_short_of_the_turn_is_accepted_and_keeps_its_rest)
{
    Enter_Segment_Count(design, "2", false);
    Type(0, "R", "MS", "150", "0", "10");
    Type(1, "F", "MS", "150", "", "0");
    ASSERT_TRUE(Calc_All(design, true));
    EXPECT_TRUE(May_Be_Done(design));
    for (int i = 301; i <= 360; ++i)
        ASSERT_EQ(design.results.CalcData(var::S, i), 0.0) << i;
}

TEST_F(Input_Rules, labels_have_the_decimals_of_the_step)
{
    Enter_Segment_Count(design, "2", false);
    Enter_Beta(design, 0, "90.5");
    Enter_Beta(design, 1, "100");
    struct Case {
        const char* step;
        const char* first_end;
        const char* second_end;
    };
    for (const Case& c : {Case{"0.125", "90.500", "190.500"}, Case{"0.25", "90.50", "190.50"},
                          Case{"0.50", "90.5", "190.5"}, Case{"1.0", "91.", "191."}}) {
        EXPECT_EQ(Enter_Step(design, c.step), c.step);
        EXPECT_EQ(Start_Label(design, 0), "0");
        EXPECT_EQ(End_Label(design, 0), c.first_end);
        EXPECT_EQ(Start_Label(design, 1), c.first_end);
        EXPECT_EQ(End_Label(design, 1), c.second_end);
    }
}

TEST_F(Input_Rules, one_segment_must_be_the_whole_turn)
{
    EXPECT_TRUE(Whole_Turn(design));  // nothing typed yet
    Enter_Beta(design, 0, "180");
    script_.Expect(whole_turn_box);
    EXPECT_FALSE(Whole_Turn(design));
    EXPECT_EQ(End_Label(design, 0), "");
    f_.File_Loaded = true;  // then in silence
    EXPECT_FALSE(Whole_Turn(design));
    Enter_Beta(design, 0, "360");
    EXPECT_TRUE(Whole_Turn(design));
    EXPECT_EQ(End_Label(design, 0), "360.");
    Enter_Segment_Count(design, "2", false);
    Enter_Beta(design, 0, "180");
    EXPECT_TRUE(Whole_Turn(design));  // the second is to come
}

// ---- the head of the screen

TEST_F(Input_Rules, the_count_stays_between_1_and_20)
{
    for (const auto& [typed, shown] : {std::pair{"25", 20}, std::pair{"20", 20}, std::pair{"21", 20}, std::pair{"0", 1},
                                       std::pair{"-3", 1}, std::pair{"", 1}, std::pair{"abc", 1}, std::pair{"7", 7}}) {
        EXPECT_EQ(Enter_Segment_Count(design, typed, false), std::to_string(shown)) << typed;
        EXPECT_EQ(m_.No_of_segments, shown) << typed;
    }
}

TEST_F(Input_Rules, a_new_count_clears_the_rows_only_when_told)
{
    Type_Rise_and_Fall();
    Enter_Segment_Count(design, "3", false);
    EXPECT_EQ(m_.End_Value(1), "10");
    Enter_Segment_Count(design, "3", true);
    EXPECT_EQ(m_.End_Value(1), "");
    EXPECT_EQ(Openings(0), "-----");
}

TEST_F(Input_Rules, each_step_has_its_points)
{
    for (const auto& [text, step, points] : {std::tuple{"0.50", 0.5, 720}, std::tuple{"0.25", 0.25, 1440},
                                             std::tuple{"0.125", 0.125, 2880}, std::tuple{"1.0", 1.0, 360}}) {
        EXPECT_EQ(Enter_Step(design, text), text);
        EXPECT_EQ(m_.Deltatheta, step);
        EXPECT_EQ(m_.Max_Data_Points_used, points);
        EXPECT_EQ(design.results.CalcData(var::Angle, points), 360.0) << text;
    }
}

TEST_F(Input_Rules, the_step_is_matched_to_the_letter)
{
    for (const char* text : {"0.5", "1", ".25", "", "0,50", "0.50 ", "two"}) {
        Enter_Step(design, "0.25");
        script_.Expect(step_box);
        EXPECT_EQ(Enter_Step(design, text), "1.0") << text;
        EXPECT_EQ(m_.Deltatheta, 1.0) << text;
    }
}

TEST_F(Input_Rules, the_european_steps_have_commas)
{
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Enter_Step(design, "0,125"), "0,125");
    EXPECT_EQ(m_.Deltatheta, 0.125);
    script_.Expect(step_box);
    EXPECT_EQ(Enter_Step(design, "0.50"), "1,0");
    EXPECT_EQ(m_.Deltatheta, 1.0);
    Enter_Segment_Count(design, "2", false);
    Enter_Step(design, "0,50");
    Enter_Beta(design, 0, "90,5");
    EXPECT_EQ(m_.Beta_Deg(1), 90.5);
    EXPECT_EQ(End_Label(design, 0), "90,5");
}

TEST_F(Input_Rules, a_new_step_asks_for_every_row_again)
{
    Type_Rise_and_Fall();
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(May_Be_Done(design));
    Enter_Step(design, "0.50");
    EXPECT_EQ(Openings(0), "plhc-");
    EXPECT_EQ(Openings(1), "plhc-");
    EXPECT_TRUE(May_Calculate_All(design));
    EXPECT_FALSE(May_Be_Done(design));
    EXPECT_FALSE(f_.Calculated);
    EXPECT_TRUE(Row_is_Zero(var::S));
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_FALSE(May_Be_Done(design));
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_TRUE(May_Be_Done(design));
}

TEST_F(Input_Rules, a_new_speed_asks_for_every_row_again_and_leaves_no_result)
{
    Type_Rise_and_Fall();
    ASSERT_TRUE(Calc_All(design, true));
    f_.Sized = f_.Dynamicflag = f_.Modelflag = f_.Stressflag = true;
    Enter_Omega(design, "120");
    EXPECT_FLOAT_EQ(static_cast<float>(m_.Shaft_speed), static_cast<float>(120.0 * 3.141592654 / 30.0));
    EXPECT_TRUE(Row_is_Zero(var::S));
    EXPECT_FALSE(May_Be_Done(design));
    EXPECT_TRUE(May_Calculate_All(design));
    EXPECT_FALSE(f_.Calculated || f_.Sized || f_.Dynamicflag || f_.Modelflag || f_.Stressflag);
}

TEST_F(Input_Rules, the_data_of_an_example_outlive_a_new_speed_but_not_their_claim)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    Example_Picked(design);
    Enter_Omega(design, "120");
    EXPECT_FALSE(Row_is_Zero(var::S));
    EXPECT_FALSE(f_.Calculated);
    EXPECT_FALSE(May_Be_Done(design));
}

TEST_F(Input_Rules, a_speed_of_zero_is_told_once_and_becomes_one)
{
    script_.Expect({" Shaft Omega cannot be zero - Please check", Buttons::OK, Symbol::exclamation});
    Enter_Omega(design, "abc");
    EXPECT_EQ(m_.Shaft_speed, 1.0);
    EXPECT_EQ(Omega_Text(design), "9.5493");  // 30 / pi rpm
}

TEST_F(Input_Rules, a_speed_too_large_to_keep_changes_nothing)
{
    Enter_Omega(design, "120");
    const Single before = m_.Shaft_speed;
    for (const char* typed : {"1E39", "1E20", "1E999"}) {  // itself, its cube, even as a double
        EXPECT_THROW(Enter_Omega(design, typed), Fault) << typed;
        EXPECT_EQ(m_.Shaft_speed, before) << typed;
        EXPECT_NEAR(m_.Shaft_Speed_Cu, before * before * before, 1e-3) << typed;
    }
}

TEST_F(Input_Rules, the_start_angle_has_its_point_at_every_step)
{
    Enter_Start_Angle(design, "45");
    EXPECT_EQ(design.cam.Shift_Angle, 45.0);
    EXPECT_EQ(design.cam.Shift_Points, 45);
    Enter_Start_Angle(design, "2.5");
    EXPECT_EQ(design.cam.Shift_Points, 2);  // a tie goes to the even point
    Enter_Start_Angle(design, "45");
    Enter_Step(design, "0.25");
    EXPECT_EQ(design.cam.Shift_Points, 180);
    EXPECT_EQ(design.cam.Shift_Angle, 45.0);
}

TEST_F(Input_Rules, a_new_start_angle_or_segment_count_is_not_saved_yet)
{
    f_.Model_Saved = true;
    Enter_Start_Angle(design, "45");
    EXPECT_FALSE(f_.Model_Saved);
    f_.Model_Saved = true;
    Enter_Segment_Count(design, "3", false);
    EXPECT_FALSE(f_.Model_Saved);
}

// ---- follower, function, external force

TEST_F(Input_Rules, the_advice_is_quiet_for_an_example_or_a_file)
{
    f_.Example_Loaded = true;
    Choose_Follower_Motion_on_Input(design, false);
    EXPECT_EQ(Headings(design).lbl_Unit, "(deg)");
    f_.Example_Loaded = false;
    f_.File_Loaded = true;
    Choose_Follower_Motion_on_Input(design, true);
    EXPECT_EQ(Headings(design).lbl_Unit, "(mm)");
}

TEST_F(Input_Rules, headings_tell_a_motion_from_a_force)
{
    Table_Headings h = Headings(design);
    EXPECT_EQ(h.lbl_Function + "/" + h.lbl_Contour + "/" + h.lbl_RFD + "/" + h.lbl_Motion,
              "Position/Cam Contour/Motion/Program");
    EXPECT_EQ(h.lbl_Unit, "(" + design.plot.Var_Unit(1) + ")");
    m_.Motion = false;
    h = Headings(design);
    EXPECT_EQ(h.lbl_Function + "/" + h.lbl_Contour + "/" + h.lbl_RFD + "/" + h.lbl_Motion,
              "Force/Force Contour/Force/Shape");
    EXPECT_EQ(h.lbl_Unit, "(" + design.plot.Var_Unit(44) + ")");
}

TEST_F(Input_Rules, unticking_the_external_force_forgets_it)
{
    m_.Ext_Force_On = -1;
    m_.Motion = false;
    design.results.Ext_Force_Table(10) = 5.0;
    EXPECT_FALSE(Tick_External_Force(design, false));
    EXPECT_TRUE(m_.Motion);
    EXPECT_EQ(m_.Ext_Force_On, 0);
    EXPECT_EQ(design.results.Ext_Force_Table(10), 0.0);
}

TEST_F(Input_Rules, the_rows_of_a_force_function_are_calculated_in_any_order)
{
    Type_Rise_and_Fall();
    m_.Ext_Force_On = -1;
    m_.Motion = false;
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_TRUE(m_.Motion);  // as every calculation leaves it
    Force_Row_Calculated(design);
    EXPECT_FALSE(m_.Motion);
    ASSERT_TRUE(Calc_Segment(design, 0));
    Force_Row_Calculated(design);
    EXPECT_TRUE(m_.Motion);  // complete: now the motion
    for (const int i : {45, 90, 135, 225, 315})
        EXPECT_EQ(design.results.Ext_Force_Table(i), design.results.CalcData(var::S, i)) << i;
    EXPECT_GT(design.results.Ext_Force_Table(90), 0.0);
}

// ---- done, clear, open

TEST_F(Input_Rules, done_waits_for_the_last_row)
{
    Type_Rise_and_Fall();
    EXPECT_FALSE(May_Be_Done(design));
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_FALSE(May_Be_Done(design));
    ASSERT_TRUE(Calc_Segment(design, 1));
    EXPECT_TRUE(May_Be_Done(design));
    Enter_Segment_Count(design, "3", false);  // one more, empty
    EXPECT_FALSE(May_Be_Done(design));
    EXPECT_FALSE(May_Calculate_All(design));
}

TEST_F(Input_Rules, done_keeps_the_size_and_forces_of_a_picked_example)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.results.CalcData(var::Torque, 5) = 3.0;
    Example_Picked(design);
    ASSERT_TRUE(Motion_Done(design));
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
    EXPECT_EQ(design.results.CalcData(var::Torque, 5), 3.0);
    EXPECT_FALSE(f_.Example_Loaded);
    ASSERT_TRUE(Motion_Done(design));  // pressed once more it is a design like any other
    EXPECT_FALSE(f_.Sized || f_.Dynamicflag);
    EXPECT_EQ(design.results.CalcData(var::Torque, 5), 0.0);
}

TEST_F(Input_Rules, clearing_the_segments_empties_all_twenty_and_their_results)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    m_.Polydone(20) = true;
    m_.No_of_conditions(20) = "6";
    m_.S_boundary_cond(20, 3) = "1";
    m_.EvenKnots(20) = false;
    m_.Orders(20) = 4;
    m_.Splines_Calculated(20) = true;
    f_.Sized = f_.Dynamicflag = f_.Modelflag = f_.Polydyne_Calc = f_.Example_Loaded = f_.File_Loaded = true;
    f_.Model_Saved = true;
    Clear_All_Rows(design);
    for (int row = 0; row < Max_Segments; ++row) {
        EXPECT_EQ(Openings(row), "-----") << row;
        EXPECT_EQ(m_.Start_Value(row + 1) + m_.End_Value(row + 1), "") << row;
        EXPECT_EQ(Start_Label(design, row), row == 0 ? "0" : "") << row;
        EXPECT_EQ(End_Label(design, row), "") << row;
        EXPECT_FALSE(m_.Seg_Done(row + 1)) << row;
    }
    EXPECT_FALSE(m_.Polydone(20) || m_.Splines_Calculated(20));
    EXPECT_EQ(m_.No_of_conditions(20) + m_.S_boundary_cond(20, 3), "");
    EXPECT_TRUE(m_.EvenKnots(20));
    EXPECT_EQ(m_.Orders(20), 6);
    EXPECT_TRUE(Row_is_Zero(var::S));
    EXPECT_FALSE(f_.Calculated || f_.Sized || f_.Dynamicflag || f_.Modelflag || f_.Polydyne_Calc);
    EXPECT_FALSE(f_.Example_Loaded || f_.File_Loaded || f_.Model_Saved);
    EXPECT_FALSE(May_Calculate_All(design) || May_Be_Done(design));
    EXPECT_EQ(m_.No_of_segments, 8);  // stays
}

TEST_F(Input_Rules, clearing_all_also_resets_the_head)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    Enter_Step(design, "0.25");
    Enter_Start_Angle(design, "30");
    Clear_All_Input(design);
    EXPECT_EQ(Omega_Text(design), "1");
    EXPECT_EQ(m_.No_of_segments, 1);
    EXPECT_EQ(m_.Deltatheta, 1.0);
    EXPECT_EQ(m_.Max_Data_Points_used, 360);
    EXPECT_EQ(design.cam.Shift_Angle, 0.0);
    EXPECT_EQ(design.cam.Shift_Points, 0);
    EXPECT_EQ(m_.End_Value(1), "");
}

TEST_F(Input_Rules, changed_units_close_the_motion_when_the_screen_opens)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    ASSERT_TRUE(May_Be_Done(design));
    m_.Running_Min = -4.0;
    m_.Running_Max = 4.0;
    Open_Input(design);
    EXPECT_TRUE(May_Be_Done(design));
    EXPECT_TRUE(f_.Calculated);
    EXPECT_EQ(m_.Running_Min, 1000000.0);
    EXPECT_EQ(m_.Running_Max, -1000000.0);
    Change_Units(design, 1);
    Open_Input(design);
    EXPECT_FALSE(f_.Calculated);
    EXPECT_FALSE(May_Be_Done(design));
    ASSERT_TRUE(Calc_Segment(design, 0));
    EXPECT_FALSE(May_Be_Done(design));  // the other rows still hold points in the old units
}

TEST_F(Input_Rules, units_changed_in_the_table_leave_no_result)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    f_.Sized = f_.Dynamicflag = f_.Modelflag = f_.Stressflag = f_.Model_Saved = true;
    Change_Units(design, 1);
    Units_Changed_in_Table(design);
    EXPECT_FALSE(f_.Calculated || f_.Sized || f_.Dynamicflag || f_.Modelflag || f_.Stressflag || f_.Model_Saved);
    EXPECT_FALSE(May_Be_Done(design));
}

}  // namespace
}  // namespace lobemax
