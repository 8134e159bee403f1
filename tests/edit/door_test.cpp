// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/door.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "camgeom/cam_rules.h"
#include "core/field_directory.h"
#include "core/startup.h"
#include "core/text.h"
#include "dynamics/train_rules.h"
#include "dynamics/vibration_rules.h"
#include "edit/examples.h"
#include "linkage/linkage_rules.h"
#include "motion/motion_programs.h"
#include "motion/motion_rules.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

Motion_Group& m()
{
    return design.motion;
}

/// Every field of the design with its value, the large tables of points left out.
std::vector<std::string> Whole_Design()
{
    std::vector<std::string> values;
    for (const Field& field : Field_Directory()) {
        const auto bounds = field.bounds(design);
        if (field.dimensions > 0 && bounds[0].hi > 100)
            continue;
        if (field.dimensions > 1 && bounds[1].hi > 100)
            continue;
        Each_Element(design, field, [&](const Field_Index& index) {
            values.push_back(Field_Name(field, index) + " = " + Field_Value(design, field, index));
        });
    }
    return values;
}

class Setting : public ::testing::Test {
protected:
    void SetUp() override
    {
        Start_Services services;
        ASSERT_TRUE(Sub_Main(design, "", services));
        m().No_of_segments = 3;
    }
    void TearDown() override { design = {}; }

    /// The setting is refused with this text, and the design stays whole as it was.
    static void Expect_Refused(const std::string& setting, const std::string& why)
    {
        SCOPED_TRACE(setting);
        const std::vector<std::string> before = Whole_Design();
        EXPECT_EQ(Apply_Setting(design, setting), why);
        const std::vector<std::string> after = Whole_Design();
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_EQ(after[i], before[i]);
    }

    Script user;
};

// ---- The form of a setting

TEST_F(Setting, puts_a_number_a_text_and_a_flag_into_their_fields)
{
    EXPECT_EQ(Apply_Setting(design, "Prime_Rad=40.5"), "");
    EXPECT_EQ(design.cam.Prime_Rad, 40.5);
    EXPECT_EQ(Apply_Setting(design, "User=A. B. C"), "");
    EXPECT_EQ(design.identity.User, "A. B. C");
    EXPECT_EQ(Apply_Setting(design, "Conjugate=true"), "");
    EXPECT_TRUE(design.cam.Conjugate);
    EXPECT_EQ(Apply_Setting(design, "Conjugate=0"), "");
    EXPECT_FALSE(design.cam.Conjugate);
}

TEST_F(Setting, finds_its_field_in_any_case_with_blanks_around_the_name)
{
    EXPECT_EQ(Apply_Setting(design, "  prime_RAD =41"), "");
    EXPECT_EQ(design.cam.Prime_Rad, 41.0);
    EXPECT_EQ(Apply_Setting(design, "beta_deg( 2 )=45"), "");
    EXPECT_EQ(m().Beta_Deg(2), 45.0);
}

TEST_F(Setting, ends_its_name_at_the_first_equals_sign)
{
    EXPECT_EQ(Apply_Setting(design, "User=a=b"), "");
    EXPECT_EQ(design.identity.User, "a=b");
}

TEST_F(Setting, reads_a_decimal_point_whatever_the_number_format)
{
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Apply_Setting(design, "Prime_Rad=40.5"), "");
    EXPECT_EQ(design.cam.Prime_Rad, 40.5);
    EXPECT_EQ(Apply_Setting(design, "Deltatheta=0.5"), "");
    EXPECT_EQ(m().Deltatheta, 0.5);
    EXPECT_EQ(Apply_Setting(design, "No of conditions(1)=6"), "");
    EXPECT_EQ(m().No_Conditions(1), 6);
}

TEST_F(Setting, without_an_equals_sign_is_refused)
{
    Expect_Refused("Prime_Rad", "'Prime_Rad' is not FIELD=VALUE");
    Expect_Refused("", "'' is not FIELD=VALUE");
}

TEST_F(Setting, of_an_unknown_field_is_refused)
{
    Expect_Refused("Prime=40", "there is no field 'Prime'");
    Expect_Refused("=40", "there is no field ''");
}

TEST_F(Setting, with_a_wrong_index_is_refused)
{
    Expect_Refused("Beta_Deg(21)=40", "index 21 of 'Beta_Deg' is outside 0 to 20");
    Expect_Refused("Beta_Deg=40", "'Beta_Deg' needs an index");
    Expect_Refused("Prime_Rad(1)=40", "'Prime_Rad' has 0 indices");
    Expect_Refused("Beta_Deg(two)=40", "'Beta_Deg(two)' has no readable index");
}

TEST_F(Setting, of_a_field_that_follows_from_others_is_refused)
{
    Expect_Refused("Max Data Points used=720", "'Max Data Points used' follows from Deltatheta and cannot be set");
    Expect_Refused("Shaft_Speed_Sq=4", "'Shaft_Speed_Sq' follows from Shaft speed and cannot be set");
    Expect_Refused("Decimals_1=3", "'Decimals_1' follows from WhichUnit and cannot be set");
}

TEST_F(Setting, of_what_is_no_number_is_refused)
{
    Expect_Refused("Prime_Rad=large", "'large' is not a number");
    Expect_Refused("Prime_Rad=4mm", "'4mm' is not a number");
    Expect_Refused("Prime_Rad=", "'' is not a number");
    Expect_Refused("Beta_Deg(1)=wide", "'wide' is not a number");
    Expect_Refused("Zoom Factor=x", "'x' is not a number");
}

TEST_F(Setting, of_too_large_a_number_is_refused)
{
    Expect_Refused("Prime_Rad=1e39", "'1e39' is too large for 'Prime_Rad'");
    Expect_Refused("Design No.=32768", "'32768' is too large for 'Design No.'");
}

TEST_F(Setting, of_a_flag_to_another_word_is_refused)
{
    Expect_Refused("Conjugate=maybe", "'maybe' is not true, false, -1 or 0");
}

// ---- Words

TEST_F(Setting, of_a_word_takes_the_words_of_the_list_and_writes_them_as_the_list_does)
{
    EXPECT_EQ(Apply_Setting(design, "Camtype$= barrel "), "");
    EXPECT_EQ(design.cam.Camtype, "Barrel");
    EXPECT_EQ(Apply_Setting(design, "Camtype=LINEAR"), "");
    EXPECT_EQ(design.cam.Camtype, "Linear");
    EXPECT_EQ(Apply_Setting(design, "Barrel_Type$=ribbed"), "");
    EXPECT_EQ(design.cam.Barrel_Type, "Ribbed");
    EXPECT_EQ(Apply_Setting(design, "Barrel_Type$="), "");
    EXPECT_EQ(design.cam.Barrel_Type, "");
    EXPECT_EQ(Apply_Setting(design, "Closure$=form"), "");
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(Apply_Setting(design, "Number_Format=europe"), "");
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(Apply_Setting(design, "Keyway_Text=3 o'clock"), "");
    EXPECT_EQ(design.cam.Keyway_Text, "3 O'clock");
    EXPECT_EQ(Apply_Setting(design, "Rise_Fall_Dwell(2)=f"), "");
    EXPECT_EQ(m().Rise_Fall_Dwell(2), "F");
}

TEST_F(Setting, of_a_word_that_the_list_does_not_hold_is_refused)
{
    Expect_Refused("Camtype$=Conical", "'Conical' is none of Radial|Barrel|Linear");
    Expect_Refused("Camtype$=", "'' is none of Radial|Barrel|Linear");
    Expect_Refused("Barrel_Type$=Plain", "'Plain' is none of |Grooved|Ribbed");
    Expect_Refused("Closure$=Glue", "'Glue' is none of Force|Form");
    Expect_Refused("Number_Format=Asia", "'Asia' is none of USA|Europe");
    Expect_Refused("Keyway_Text=1 O'clock", "'1 O'clock' is none of 12 O'clock|3 O'clock|6 O'clock|9 O'clock");
    Expect_Refused("Rise_Fall_Dwell(2)=X", "'X' is none of R|F|P|D|S");
    Expect_Refused("Rise_Fall_Dwell(2)=R|F", "'R|F' is none of R|F|P|D|S");
}

// ---- Ranges

TEST_F(Setting, of_a_whole_number_takes_the_ends_of_its_range)
{
    for (const char* setting : {"WhichUnit=1", "WhichUnit=5", "No of segments=1", "No of segments=20", "Seg=1",
                                "Seg=20", "Time Base=1", "Time Base=3", "Followtype=1", "Followtype=2", "Model_Type=1",
                                "Model_Type=5", "Linkage_Type=0", "Linkage_Type=3", "Printstep=1", "Printstep=32767"})
        EXPECT_EQ(Apply_Setting(design, setting), "") << setting;
}

TEST_F(Setting, of_a_whole_number_outside_its_range_is_refused)
{
    const std::pair<const char*, const char*> ranges[] = {
        {"WhichUnit", "1 to 5"},  {"No of segments", "1 to 20"}, {"Seg", "1 to 20"},          {"Time Base", "1 to 3"},
        {"Followtype", "1 to 2"}, {"Model_Type", "1 to 5"},      {"Printstep", "1 to 32767"},
    };
    for (const auto& [field, range] : ranges) {
        Expect_Refused(std::string(field) + "=0", std::string("'0' is not a whole number from ") + range);
        Expect_Refused(std::string(field) + "=40000", std::string("'40000' is not a whole number from ") + range);
        Expect_Refused(std::string(field) + "=x", std::string("'x' is not a whole number from ") + range);
    }
    Expect_Refused("Linkage_Type=4", "'4' is not a whole number from 0 to 3");
    Expect_Refused("Linkage_Type=-1", "'-1' is not a whole number from 0 to 3");
    Expect_Refused("No of segments=2.5", "'2.5' is not a whole number");
}

TEST_F(Setting, of_a_direction_takes_1_and_minus_1_only)
{
    for (const char* field : {"Rotflag", "ArmDirect", "In_Out", "Top_Bot", "Assemflag1", "Assemflag2", "Side_Sign"}) {
        EXPECT_EQ(Apply_Setting(design, std::string(field) + "=-1"), "") << field;
        EXPECT_EQ(Apply_Setting(design, std::string(field) + "=1"), "") << field;
        for (const char* value : {"0", "2", "-2", "left", ""})
            Expect_Refused(std::string(field) + "=" + value, std::string("'") + value + "' is neither 1 nor -1");
    }
}

TEST_F(Setting, of_a_beta_outside_a_turn_is_refused_with_the_words_of_the_screen)
{
    Expect_Refused("Beta_Deg(1)=360.5", "Beta cannot be > 360 or < 0");
    Expect_Refused("Beta_Deg(1)=-1", "Beta cannot be > 360 or < 0");
    EXPECT_EQ(Apply_Setting(design, "Beta_Deg(1)=0"), "");
    EXPECT_EQ(Apply_Setting(design, "Beta_Deg(1)=360"), "");
}

TEST_F(Setting, of_a_zoom_that_is_not_above_0_is_refused)
{
    Expect_Refused("Zoom Factor=0", "'0' is not above 0");
    Expect_Refused("Zoom Factor=-2", "'-2' is not above 0");
    EXPECT_EQ(Apply_Setting(design, "Zoom Factor=0.5"), "");
    EXPECT_EQ(design.cam.Zoom_Factor, 0.5);
}

// ---- What follows

TEST_F(Setting, of_the_step_makes_room_for_its_points_and_loses_the_results)
{
    ASSERT_TRUE(Pick_Motion(design, 1, 'R'));
    ASSERT_TRUE(Pick_Program(design, 1, "45"));
    m().No_of_segments = 1;
    m().End_Value(1) = "5";
    ASSERT_EQ(Apply_Setting(design, "Beta_Deg(1)=360"), "");
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_EQ(design.results.CalcData(var::S, 360), 5.0);
    EXPECT_EQ(Apply_Setting(design, "Deltatheta=0.25"), "");
    EXPECT_EQ(m().Deltatheta, 0.25);
    EXPECT_EQ(m().Max_Data_Points_used, 1440);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 1440);
    EXPECT_EQ(design.results.CalcData(var::S, 360), 0.0);
    EXPECT_EQ(design.results.CalcData(var::Angle, 360), 90.0);
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_FALSE(m().Seg_Done(1));
}

TEST_F(Setting, of_the_step_takes_the_four_steps_as_numbers)
{
    for (const char* step : {"1", "1.0", "0.5", "0.50", "0.25", "0.125", " .125 "})
        EXPECT_EQ(Apply_Setting(design, std::string("Deltatheta=") + step), "") << step;
}

TEST_F(Setting, of_another_step_is_refused)
{
    for (const char* step : {"2", "0", "0.1", "-1", "0.5x", "fine", "", "0,5"})
        Expect_Refused(std::string("Deltatheta=") + step,
                       std::string("'") + step + "' is no step: 1.0, 0.50, 0.25, 0.125");
}

TEST_F(Setting, of_the_shaft_speed_refreshes_its_powers)
{
    EXPECT_EQ(Apply_Setting(design, "Shaft speed=2.5"), "");
    EXPECT_EQ(m().Shaft_speed, 2.5);
    EXPECT_EQ(m().Shaft_Speed_Sq, 6.25);
    EXPECT_EQ(m().Shaft_Speed_Cu, 15.625);
}

TEST_F(Setting, of_a_shaft_speed_of_0_is_refused)
{
    Expect_Refused("Shaft speed=0", " Shaft Omega cannot be zero - Please check");
}

TEST_F(Setting, of_a_beta_sets_its_radians_and_the_angles_of_all_segments)
{
    EXPECT_EQ(Apply_Setting(design, "Beta_Deg(1)=90"), "");
    EXPECT_EQ(Apply_Setting(design, "Beta_Deg(3)=200"), "");
    EXPECT_EQ(Apply_Setting(design, "Beta_Deg(2)=57.29577950560105"), "");
    EXPECT_NEAR(m().Beta_Rad(2), 1.0, 1e-7);
    EXPECT_NEAR(m().Beta_Rad(1), 1.570796, 1e-6);
    EXPECT_EQ(m().Shift(1), 0.0);
    EXPECT_EQ(m().Shift(2), 90.0);
    EXPECT_NEAR(m().Shift(3), 147.29578, 1e-5);
    EXPECT_NEAR(m().Gamma(3), 347.29578, 1e-4);
}

TEST_F(Setting, of_the_number_of_segments_sets_the_angles_of_those_that_came)
{
    m().No_of_segments = 1;
    ASSERT_EQ(Apply_Setting(design, "Beta_Deg(1)=90"), "");
    ASSERT_EQ(Apply_Setting(design, "Beta_Deg(2)=100"), "");
    EXPECT_EQ(m().Shift(2), 0.0);
    EXPECT_EQ(Apply_Setting(design, "No of segments=2"), "");
    EXPECT_EQ(m().Shift(2), 90.0);
    EXPECT_EQ(m().Gamma(2), 190.0);
}

TEST_F(Setting, of_a_program_picks_its_law)
{
    EXPECT_EQ(Apply_Setting(design, "Program(2)= c2 "), "");
    EXPECT_EQ(m().Program(2), "C2");
    EXPECT_EQ(m().Function(2), "C2 - Cycloid 2nd Half");
    EXPECT_EQ(m().Seg_Program(2), 2);
    EXPECT_EQ(m().Full_Half(2), 2);
    EXPECT_EQ(m().Which_half(2), 2);
    EXPECT_EQ(Apply_Setting(design, "Program(2)=DW"), "");
    EXPECT_EQ(m().Rise_Fall_Dwell(2), "D");
}

TEST_F(Setting, of_an_unknown_program_is_refused)
{
    Expect_Refused("Program(2)=XX", "there is no motion program 'XX'");
    Expect_Refused("Program(2)=M", "there is no motion program 'M'");
    Expect_Refused("Program(2)=", "there is no motion program ''");
}

TEST_F(Setting, of_a_kind_with_one_program_picks_it)
{
    struct Only {
        const char* kind;
        const char* code;
        int Seg_Program;
    };
    for (const Only& only : {Only{"D", "DW", 7}, Only{"p", "PO", 6}, Only{"S", "BS", 11}}) {
        ASSERT_TRUE(Pick_Motion(design, 2, 'R'));
        ASSERT_TRUE(Pick_Program(design, 2, "MS"));
        EXPECT_EQ(Apply_Setting(design, std::string("Rise_Fall_Dwell(2)=") + only.kind), "");
        EXPECT_EQ(m().Program(2), only.code);
        EXPECT_EQ(m().Seg_Program(2), only.Seg_Program);
    }
}

TEST_F(Setting, of_a_rise_or_a_fall_keeps_the_program)
{
    ASSERT_TRUE(Pick_Motion(design, 2, 'R'));
    ASSERT_TRUE(Pick_Program(design, 2, "MS"));
    EXPECT_EQ(Apply_Setting(design, "Rise_Fall_Dwell(2)=F"), "");
    EXPECT_EQ(m().Rise_Fall_Dwell(2), "F");
    EXPECT_EQ(m().Program(2), "MS");
    EXPECT_EQ(m().Seg_Program(2), 3);
}

TEST_F(Setting, of_a_row_asks_for_its_calculation_again)
{
    for (const char* setting :
         {"Beta_Deg(2)=90", "Rise_Fall_Dwell(2)=R", "Program(2)=MS", "Start Value(2)=1", "End Value(2)=4"}) {
        m().Seg_Done.Fill(true);
        EXPECT_EQ(Apply_Setting(design, setting), "");
        EXPECT_FALSE(m().Seg_Done(2)) << setting;
        EXPECT_TRUE(m().Seg_Done(1)) << setting;
        // A row behind waits where its start has moved.
        const bool moved = std::string(setting).starts_with("Beta") || std::string(setting).starts_with("End");
        EXPECT_EQ(m().Seg_Done(3), !moved) << setting;
    }
    m().Seg_Done.Fill(true);
    EXPECT_EQ(Apply_Setting(design, "Prime_Rad=40"), "");
    EXPECT_TRUE(m().Seg_Done(2));
}

TEST_F(Setting, of_no_external_force_clears_its_table)
{
    design.results.Ext_Force_Table.Fill(7.0);
    Clear_Motion_Data(design, 360, 53);
    ASSERT_EQ(design.results.CalcData(var::Ext_Force, 9), 7.0);
    m().Motion = false;
    design.flags.Ext_Force_Calc = true;
    EXPECT_EQ(Apply_Setting(design, "Ext_Force_On=-1"), "");
    EXPECT_EQ(design.results.Ext_Force_Table(9), 7.0);
    EXPECT_EQ(Apply_Setting(design, "Ext_Force_On=0"), "");
    for (int p = 0; p <= 360; ++p) {
        ASSERT_EQ(design.results.Ext_Force_Table(p), 0.0);
        ASSERT_EQ(design.results.CalcData(var::Ext_Force, p), 0.0);
    }
    EXPECT_TRUE(m().Motion);
    EXPECT_FALSE(design.flags.Ext_Force_Calc);
}

TEST_F(Setting, of_the_number_of_conditions_sets_its_value)
{
    EXPECT_EQ(Apply_Setting(design, "No of conditions(2)=7"), "");
    EXPECT_EQ(m().No_of_conditions(2), "7");
    EXPECT_EQ(m().No_Conditions(2), 7);
}

TEST_F(Setting, of_the_starting_angle_counts_its_points)
{
    EXPECT_EQ(Apply_Setting(design, "Shift_Angle=90"), "");
    EXPECT_EQ(design.cam.Shift_Points, 90);
    ASSERT_EQ(Apply_Setting(design, "Deltatheta=0.125"), "");
    EXPECT_EQ(Apply_Setting(design, "Shift_Angle=4095.875"), "");  // the last angle with a point of 16 bits
    Expect_Refused("Shift_Angle=4096", "'4096' is too large for 'Shift_Angle'");
    EXPECT_EQ(Apply_Setting(design, "Shift_Angle=-45"), "");
    EXPECT_EQ(design.cam.Shift_Points, -360);
}

TEST_F(Setting, of_the_arm_pivot_sets_its_distance)
{
    EXPECT_EQ(Apply_Setting(design, "ArmX=30"), "");
    EXPECT_EQ(Apply_Setting(design, "ArmY=-40"), "");
    EXPECT_EQ(design.cam.Arm_Pivot_Dist, 50.0);
}

TEST_F(Setting, of_units_time_base_and_follower_renames_the_variables)
{
    EXPECT_EQ(Apply_Setting(design, "WhichUnit=1"), "");
    EXPECT_EQ(design.plot.Var_Unit(1), "in");
    EXPECT_EQ(design.plot.Var_Unit(2), "in/sec");
    EXPECT_EQ(design.identity.Decimals_1, 3);
    EXPECT_EQ(Apply_Setting(design, "Time Base=2"), "");
    EXPECT_EQ(design.plot.Var_Unit(2), "in/deg");
    EXPECT_EQ(Apply_Setting(design, "Translating=false"), "");
    EXPECT_EQ(design.plot.Var_Unit(1), "deg");
    EXPECT_EQ(design.plot.Var_Unit(12), "in");
    EXPECT_EQ(Apply_Setting(design, "Camtype$=Barrel"), "");
    EXPECT_EQ(design.plot.Var_Unit(12), "deg");
    EXPECT_EQ(design.plot.Var_Name(12), "Lambda");
    EXPECT_EQ(Apply_Setting(design, "Camtype$=Radial"), "");
    EXPECT_EQ(design.plot.Var_Name(12), "Theta");
}

TEST_F(Setting, of_the_units_converts_the_design)
{
    ASSERT_EQ(Apply_Setting(design, "Prime_Rad=50.8"), "");
    EXPECT_EQ(Apply_Setting(design, "WhichUnit=1"), "");
    EXPECT_EQ(design.cam.Prime_Rad, 2.0);
    EXPECT_TRUE(design.flags.Units_Changed);
}

TEST_F(Setting, of_the_links_sets_the_linkage_up)
{
    EXPECT_EQ(Apply_Setting(design, "Links=6"), "");
    EXPECT_EQ(design.linkage.Stage_Mode, "W");
    EXPECT_EQ(design.linkage.Linkage_Kind, "Linkage");
    EXPECT_EQ(Apply_Setting(design, "Linkage_Type=3"), "");
    EXPECT_EQ(design.linkage.Linkage_Kind, "Sixslide");
    EXPECT_EQ(Apply_Setting(design, "Links=4"), "");
    EXPECT_EQ(design.linkage.Linkage_Kind, "Fourslide");
}

// ---- Values that fit their field, but not what follows from it

TEST_F(Setting, whose_consequence_does_not_fit_is_refused_and_leaves_the_design)
{
    Expect_Refused("Shaft speed=1e20", "'1e20' is too large for 'Shaft speed'");  // its square
    Expect_Refused("Shaft speed=1e15", "'1e15' is too large for 'Shaft speed'");  // its cube
    Expect_Refused("Shift_Angle=1e6", "'1e6' is too large for 'Shift_Angle'");    // its points
    Expect_Refused("No of conditions(2)=99999",
                   "Number of boundary conditions must be between 2 and 40 - please re-enter");
}

/// The rows and tables of the results, as bytes; another size is another text.
std::string Rows_of_Results()
{
    const Results_Group& r = design.results;
    std::string bytes;
    const auto add = [&bytes](const auto& values) {
        bytes += std::to_string(values.size()) + ":";
        bytes.append(reinterpret_cast<const char*>(values.data()), values.size_bytes());
    };
    for (const auto* table : {&r.CalcData, &r.Link_Theta, &r.Link_Omega, &r.Link_Alpha, &r.Link_X, &r.Link_Y})
        for (int row = 0; row <= table->Last_Row(); ++row)
            add(table->Points(row));
    for (const auto* row : {&r.Profile_X, &r.Profile_Y, &r.Ext_Force_Table, &r.Arm_Pivot_X, &r.Arm_Pivot_Y,
                            &r.Link_Ratio_S, &r.Link_Ratio_V, &r.Link_Ratio_A, &r.Ode_Time})
        add(row->Points());
    return bytes;
}

TEST_F(Setting, keeps_the_rows_for_its_faults_where_its_store_writes_them)
{
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    ASSERT_TRUE(Calculate_Example(design));
    const Design_State calculated = design;
    const std::string rows = Rows_of_Results();
    std::set<std::string_view> writing;
    int stored = 0;
    for (const auto rules :
         {General_Rules(), Motion_Rules(), Cam_Rules(), Train_Rules(), Vibration_Rules(), Linkage_Rules()})
        for (const Field_Rule& rule : rules) {
            if ((rule.store == nullptr && rule.follow == nullptr) || rule.role == Field_Role::derived)
                continue;
            const Field& field = *Find_Field(rule.field);
            const std::string at = field.dimensions == 0 ? "" : field.dimensions == 1 ? "(1)" : "(1, 1)";
            for (const char* const value :
                 {"0",      "1",     "-1",   "2",         "3",       "0.5",    "10",  "30",  "90",     "R",
                  "F",      "D",     "P",    "S",         "MS",      "PO",     "BS",  "5",   "Radial", "Barrel",
                  "Linear", "Force", "Form", "6 O'clock", "Grooved", "Europe", "USA", "true"}) {
                design = calculated;
                if (!Apply_Setting(design, std::string(rule.field) + at + "=" + value).empty())
                    continue;
                ++stored;
                if (Rows_of_Results() != rows)
                    writing.insert(rule.field);
            }
        }
    EXPECT_GT(stored, 100);
    EXPECT_EQ(writing, std::set<std::string_view>{"Deltatheta"});
    // The other two write the table of a force function, which this design has not.
    for (const std::string_view name : {"Deltatheta", "WhichUnit", "Ext_Force_On"})
        EXPECT_TRUE(Rule_of(*Find_Field(name)).rows) << name;
}

TEST_F(Setting, every_field_has_a_rule_of_its_own)
{
    std::set<std::string_view> ruled;
    int inputs = 0;
    for (const auto rules :
         {General_Rules(), Motion_Rules(), Cam_Rules(), Train_Rules(), Vibration_Rules(), Linkage_Rules()})
        for (const Field_Rule& rule : rules) {
            EXPECT_NE(Find_Field(rule.field), nullptr) << rule.field;
            EXPECT_TRUE(ruled.insert(rule.field).second) << rule.field << " has two rules";
            EXPECT_FALSE(rule.words.empty()) << rule.field;
            inputs += rule.role == Field_Role::input ? 1 : 0;
            EXPECT_TRUE(rule.role == Field_Role::input || !rule.event || rule.event == Event::edited) << rule.field;
        }
    for (const Field& field : Field_Directory())
        EXPECT_EQ(ruled.count(field.name), 1U) << field.name << " has no rule";
    EXPECT_GT(inputs, 80);
}

TEST_F(Setting, of_what_follows_or_is_calculated_is_refused_whatever_its_value)
{
    for (const char* setting :
         {"Beta_Rad(1)=9", "Seg_Program(1)=99", "Calculated=true", "CalcData(1, 5)=3", "CalcData=x", "Sized=maybe"}) {
        const Design_State before = design;
        const std::string refusal = Apply_Setting(design, setting);
        EXPECT_NE(refusal.find("follows from"), std::string::npos) << setting << ": " << refusal;
        EXPECT_NE(refusal.find("cannot be set"), std::string::npos) << setting;
    }
}

TEST_F(Setting, of_a_value_that_a_screen_refuses_is_refused_with_the_screens_sentence)
{
    ASSERT_EQ(Apply_Setting(design, "Beta_Deg(1)=90"), "");
    ASSERT_EQ(Apply_Setting(design, "No of segments=3"), "");
    struct Case {
        const char* setting;
        const char* sentence;
    };
    for (const Case& c :
         {Case{"Prime_Rad=-5", "Prime radius cannot be zero or negative or less than the offset"},
          Case{"Mu of Follower=-3", "Friction cannot be zero or negative.  Please redo."},
          Case{"Mu of Shaft=0", "Friction cannot be zero or negative.  Please redo."},
          Case{"Follow_Rad=5000",
               "Something is wrong\n\nThe follower radius is greater than the prime circle radius\n\nPlease check your "
               "data."},
          Case{"Follow_Rad=-1", "The follower radius must be zero or positive"},
          Case{"Cutter Radius=-1", "This value must be positive.  Please redo."},
          Case{"Offset=5000",
               "Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity"},
          Case{"ArmRad=0", "Arm radius cannot be zero. Please reenter."},
          Case{"Mass=0", "This value must be positive.  Please redo."},
          Case{"Zeta_Initial=1.5", "Zeta must be between 0 and 1.  Please redo"},
          Case{"Young's modulus(1)=-1", "This value must be positive and nonzero.  Please redo."},
          Case{"Roller length=0", "You must specify a positive, nonzero crown radius"},
          Case{"Beta_Deg(2)=300", "End angle cannot be > 360 deg"},
          Case{"Beta_Deg(2)=400", "Beta cannot be > 360 or < 0"}})
        Expect_Refused(c.setting, c.sentence);
    // A beta that pushes a later row over the end names that row.
    ASSERT_EQ(Apply_Setting(design, "Beta_Deg(3)=200"), "");
    Expect_Refused("Beta_Deg(2)=100", "End angle cannot be > 360 deg\nThis is the end of segment 3.");
}

TEST_F(Setting, of_a_prime_radius_of_0_or_of_an_arm_that_just_touches_is_refused)
{
    Expect_Refused("Prime_Rad=0", "Prime radius cannot be zero or negative or less than the offset");
    ASSERT_EQ(Apply_Settings(design, {"Prime_Rad=40", "ArmX=100", "ArmY=0", "ArmRad=100", "Translating=false"}), "");
    for (const char* setting : {"ArmRad=60", "ArmRad=140"}) {
        const std::string refusal = Apply_Setting(design, setting);
        EXPECT_EQ(refusal.find("The roller follower arm misses the cam entirely"), 0U) << setting << ": " << refusal;
    }
    EXPECT_EQ(Apply_Setting(design, "ArmRad=60.01"), "");
}

TEST_F(Setting, that_waits_for_another_is_applied_after_it)
{
    // The roller is above the prime radius until the next setting.
    EXPECT_EQ(Apply_Settings(design, {"Follow_Rad=400", "Prime_Rad=900"}), "");
    EXPECT_EQ(design.cam.Follow_Rad, 400.0);
    EXPECT_EQ(Apply_Settings(design, {"Mass=-1", "Prime_Rad=950", "Zeta_Initial=9"}),
              "This value must be positive.  Please redo.");
}

TEST_F(Setting, takes_away_the_results_that_rest_on_the_field)
{
    const auto fallen = [](const char* setting) {
        for (const Mark_Entry& entry : Mark_Table())
            Reach(design, entry.mark);
        EXPECT_EQ(Apply_Setting(design, setting), "") << setting;
        const Flags_Group& f = design.flags;
        return std::string(f.Calculated ? "" : "motion ") + (f.Sized ? "" : "size ") +
               (f.Dynamicflag ? "" : "forces ") + (f.Stressflag ? "" : "stress ") + (f.Model_Saved ? "" : "saved");
    };
    EXPECT_EQ(fallen("Beta_Deg(2)=33"), "motion size forces stress saved");
    EXPECT_EQ(fallen("Shaft speed=33"), "motion size forces stress saved");
    EXPECT_EQ(fallen("Prime_Rad=333"), "size forces stress saved");
    EXPECT_EQ(fallen("Mass=33"), "forces stress saved");
    EXPECT_EQ(fallen("Roller length=33"), "stress saved");
    EXPECT_EQ(fallen("Zoom Factor=3"), "");
    // An equal value changes nothing.
    EXPECT_EQ(fallen("Mass=33"), "");
}

TEST_F(Setting, of_a_knot_may_equal_its_neighbours_and_not_pass_them)
{
    ASSERT_EQ(Apply_Settings(design, {"Knots(3, 2)=40", "Knots(2, 2)=30", "Knots(1, 2)=20"}), "");
    const char* const order = " Knot values must be in ascending order, left to right.  Please redo.";
    m().Number_of_Knots(2) = 3;
    EXPECT_EQ(Apply_Setting(design, "Knots(2, 2)=20"), "");
    EXPECT_EQ(Apply_Setting(design, "Knots(2, 2)=40"), "");
    Expect_Refused("Knots(2, 2)=40.5", order);
    Expect_Refused("Knots(2, 2)=19.5", order);
    EXPECT_EQ(m().Knots(2, 2), 40.0);
    // Behind the last knot the table's rests are no neighbours.
    EXPECT_EQ(Apply_Setting(design, "Knots(3, 2)=55"), "");
    EXPECT_EQ(Apply_Setting(design, "Knots(1, 2)=0"), "");
    Expect_Refused("Knots(1, 2)=-0.5", "This value must be positive.  Please redo.");
}

TEST_F(Setting, of_a_count_of_32_bits_takes_its_end)
{
    EXPECT_EQ(Apply_Setting(design, "Ode_Max_Steps=2147483647"), "");
    Expect_Refused("Ode_Max_Steps=2147483648", "'2147483648' is too large for 'Ode_Max_Steps'");
}

TEST_F(Setting, of_a_flat_face_does_what_its_choice_does)
{
    ASSERT_EQ(Apply_Setting(design, "Offset=5"), "");
    ASSERT_EQ(Apply_Setting(design, "Camtype$=Barrel"), "");
    EXPECT_EQ(design.cam.Barrel_Type, "Grooved");
    ASSERT_EQ(Apply_Setting(design, "Followtype=2"), "");
    EXPECT_EQ(design.cam.Camtype, "Radial");
    EXPECT_EQ(design.cam.Offset, 0.0);
    EXPECT_EQ(design.cam.Follow_Rad, 0.0);
    Expect_Refused("Closure$=Form", "a flat face is closed by a spring");
    EXPECT_EQ(Apply_Setting(design, "Keyway_Text=3 o'clock"), "");
    EXPECT_EQ(design.cam.Keyway_Clockangle, 90 * design.cam.Rotflag);
}

TEST_F(Setting, of_the_number_format_keeps_the_numbers_of_the_texts)
{
    ASSERT_EQ(Apply_Setting(design, "End Value(2)=12.5"), "");
    EXPECT_EQ(Apply_Setting(design, "Number_Format=europe"), "");
    EXPECT_EQ(m().End_Value(2), "12,5");
    EXPECT_EQ(Val(design, m().End_Value(2)), 12.5);
    // Settings carry a decimal point, the design its own symbol.
    EXPECT_EQ(Apply_Setting(design, "End Value(2)=7.25"), "");
    EXPECT_EQ(m().End_Value(2), "7,25");
    EXPECT_EQ(Apply_Setting(design, "Number_Format=USA"), "");
    EXPECT_EQ(m().End_Value(2), "7.25");
    Expect_Refused("End Value(2)=25,7", "'25,7' is not a number");
    Expect_Refused("Start Value(2)=90abc", "'90abc' is not a number");
}

TEST_F(Setting, of_program_or_kind_of_segment_0_is_refused)
{
    Expect_Refused("Program(0)=MS", "index 0 of 'Program' is outside 1 to 20");  // that row is not in use
    Expect_Refused("Rise_Fall_Dwell(0)=R", "index 0 of 'Rise_Fall_Dwell' is outside 1 to 20");
}

}  // namespace
}  // namespace lobemax
