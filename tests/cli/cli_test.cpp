// SPDX-License-Identifier: GPL-3.0-or-later
/// The command line tool as other programs see it: status, standard output and standard error, compared whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/messages.h"
#include "tests/cli/cli_folder.h"
#include "tests/support/number_in.h"

namespace lobemax {
namespace {

using testing::Result;
using Cli = testing::Cli_Folder;

TEST_F(Cli, help_and_version_come_for_the_tool_and_for_each_command)
{
    EXPECT_EQ(Run("--version").out.substr(0, 12), "lobemax-cli ");
    EXPECT_EQ(Run("--help").status, 0);
    for (const char* command :
         {"new", "example", "calc", "fft", "convert", "show", "table", "export", "plot", "draw"}) {
        const Result help = Run(std::string(command) + " --help");
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.out.find("Usage:"), std::string::npos) << command;
    }
}

TEST_F(Cli, a_wrong_command_line_is_status_2)
{
    for (const char* line : {"", "nonsense", "new", "new -o x.cam", "show", "calc x.cam", "example -o x.cam",
                             "new -o x.cam --units 6 'D DW 360 0 0'", "show x.cam --unknown",
                             "new -o x.cam --rpm 1 --omega 2 'D DW 360 0 0'", "table x.cam",
                             "convert x.cam -o y.cam --format 7.1", "show x.cam --answer maybe"})
        EXPECT_EQ(Run(line).status, 2) << line;
    EXPECT_FALSE(Exists("x.cam"));
}

TEST_F(Cli, new_makes_an_uncalculated_design_of_its_segments)
{
    const Result made = Run("new -o m.cam --rpm 120 " + segments);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.out, "");
    EXPECT_EQ(made.err, "[information] The file was successfully written to  / m.cam\n");
    EXPECT_EQ(Show("m.cam",
                   "'no OF segments' 'Beta_Deg(3)' 'Shift(4)' 'Program(3)' 'Start Value(3)' 'Function(1)' "
                   "'Shaft speed' Calculated 'Seg_Program(3)' 'CalcData(0, 359)' WhichUnit"),
              "No of segments = 4\nBeta_Deg(3) = 90\nShift(4) = 270\nProgram(3) = CF\nStart Value(3) = 25\n"
              "Function(1) = MS - Mod Sine\nShaft speed = 12.566371\nCalculated = false\nSeg_Program(3) = 2\n"
              "CalcData(0, 359) = 359\nWhichUnit = 5\n");
}

TEST_F(Cli, new_takes_step_units_speed_and_kind_of_follower)
{
    EXPECT_EQ(Run("new -o m.cam --units 1 --delta 0.25 --omega 3.5 --oscillating 'D DW 360 0 0'").status, 0);
    EXPECT_EQ(Show("m.cam",
                   "WhichUnit Deltatheta 'Max Data Points used' 'Shaft speed' Translating Prime_Rad Lift "
                   "'Var_Unit(1)' 'Follow_Rad'"),
              "WhichUnit = 1\nDeltatheta = 0.25\nMax Data Points used = 1440\nShaft speed = 3.5\n"
              "Translating = false\nPrime_Rad = 3\nLift = 1\nVar_Unit(1) = deg\nFollow_Rad = 0.5\n");
}

TEST_F(Cli, a_segment_that_cannot_be_is_refused_with_its_reason)
{
    struct Case {
        const char* arguments;
        const char* message;
    };
    for (const Case& c : {
             Case{"'R MS 90 0'", "lobemax-cli: segment 1: 'R MS 90 0' is not 'KIND PROGRAM BETA START END'\n"},
             Case{"'X MS 90 0 1'", "lobemax-cli: segment 1: 'X' is none of R|F|P|D|S\n"},
             Case{"'D DW 90 0 0' 'R XX 90 0 1'", "lobemax-cli: segment 2: there is no motion program 'XX'\n"},
             Case{"'R DW 90 0 1'", "lobemax-cli: segment 1: program DW does not serve motion kind R\n"},
             Case{"'D MS 90 0 0'", "lobemax-cli: segment 1: program MS does not serve motion kind D\n"},
             Case{"'R MS x 0 1'", "lobemax-cli: segment 1: 'x' is not a number\n"},
             Case{"'R MS 90 0 1mm'", "lobemax-cli: segment 1: '1mm' is not a number\n"},
             Case{"'D DW 90 5 6'", "lobemax-cli: segment 1: a dwell ends at the position where it starts\n"},
             Case{"'R MS 361 0 1'", "lobemax-cli: segment 1: Beta cannot be > 360 or < 0\n"},
             Case{"'R MS -1 0 1'", "lobemax-cli: segment 1: Beta cannot be > 360 or < 0\n"},
             Case{"'R MS 300 0 1' 'F MS 90 1 0'", "lobemax-cli: segment 2: End angle cannot be > 360 deg\n"},
             Case{"'D DW 180 0 0'",
                  "lobemax-cli: a single segment of 180 degrees: Cam must contain exactly 360 degrees\n"},
             Case{"'R MS 90 0 1E40' 'D DW 90 0 0'", "lobemax-cli: segment 1: a number is too large\n"},
             Case{"--delta 0.3 'D DW 360 0 0'", "lobemax-cli: --delta: '0.3' is no step: 1.0, 0.50, 0.25, 0.125\n"},
             Case{"--rpm fast 'D DW 360 0 0'", "lobemax-cli: 'fast' is not a shaft speed\n"},
         }) {
        const Result refused = Run(std::string("new -o m.cam ") + c.arguments);
        EXPECT_EQ(refused.status, 2) << c.arguments;
        EXPECT_EQ(refused.err, c.message);
        EXPECT_FALSE(Exists("m.cam"));
    }
}

TEST_F(Cli, more_than_twenty_segments_are_refused)
{
    std::string many;
    for (int n = 0; n < 21; ++n)
        many += "'D DW 10 0 0' ";
    const Result refused = Run("new -o m.cam " + many);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: 21 segments are more than 20\n");
}

TEST_F(Cli, a_shaft_speed_of_zero_is_told_and_becomes_one)
{
    const Result made = Run("new -o m.cam --rpm 0 'D DW 360 0 0'");
    EXPECT_EQ(made.status, 0);
    EXPECT_NE(made.err.find("[exclamation]  Shaft Omega cannot be zero - Please check\n"), std::string::npos);
    EXPECT_EQ(Show("m.cam", "'Shaft speed'"), "Shaft speed = 1\n");
}

TEST_F(Cli, calc_stores_the_motion_and_sets_its_flag)
{
    Make_Calculated("c.cam");
    EXPECT_EQ(Show("c.cam",
                   "Calculated Sized MaxLift Liftmax 'Design No.' Date Time 'CalcData(1, 45)' "
                   "'CalcData(1, 90)' 'CalcData(1, 135)' 'CalcData(1, 225)' 'CalcData(1, 360)'"),
              "Calculated = true\nSized = false\nMaxLift = 25\nLiftmax = 25\nDesign No. = 2\nDate = 2026-11-21\n"
              "Time = 12:00:00\nCalcData(1, 45) = 12.5\nCalcData(1, 90) = 25\nCalcData(1, 135) = 25\n"
              "CalcData(1, 225) = 12.5\nCalcData(1, 360) = 0\n");
    // Peak velocity of a cycloidal fall: -2 L / beta, in seconds at omega
    const double omega = 120 * 3.141592654 / 30;
    const double beta = 90 / 57.29577950560105;
    EXPECT_NEAR(testing::Number_In(Show("c.cam", "'CalcData(2, 225)'").substr(18)), -2 * 25 / beta * omega, 1e-3);
}

TEST_F(Cli, the_same_input_gives_the_same_output_byte_for_byte)
{
    Make_Calculated("a.cam");
    const std::string first = Content("a.cam");
    Make_Calculated("a.cam");
    EXPECT_TRUE(Content("a.cam") == first);
}

TEST_F(Cli, every_format_brings_the_calculated_data_back_bit_for_bit)
{
    Make_Calculated("c.cam");
    const std::string data = Show("c.cam", "CalcData");
    ASSERT_GT(data.size(), 300000U);
    for (const char* format : {"7.2", "8", "9"}) {
        const Result converted = Run(std::string("convert c.cam -o d.cam --format ") + format);
        EXPECT_EQ(converted.status, 0);
        EXPECT_EQ(converted.err.starts_with("[information] This will save in a format readable by an earlier version "
                                            "of  / Lobemax and will lose some information unique to this version. / "
                                            " / Do you wish to proceed? -> Yes\n"),
                  std::string(format) != "9");
        EXPECT_EQ(Run("convert d.cam -o e.cam").status, 0);
        EXPECT_TRUE(Show("e.cam", "CalcData") == data) << format;
    }
}

TEST_F(Cli, an_older_format_can_be_declined)
{
    Make_Calculated("c.cam");
    const Result declined = Run("convert c.cam -o d.cam --format 8 --answer no");
    EXPECT_EQ(declined.status, 1);
    EXPECT_NE(declined.err.find(" -> No\n"), std::string::npos);
    EXPECT_FALSE(Exists("d.cam"));
}

TEST_F(Cli, a_unit_change_converts_the_fields_and_keeps_the_flags)
{
    ASSERT_EQ(Run("new -o i.cam --units 1 'R MS 180 0 1' 'F MS 180 1 0'").status, 0);
    ASSERT_EQ(Run("calc i.cam -o i.cam --levels svaj").status, 0);
    const Result converted = Run("convert i.cam -o mm.cam --units 5");
    ASSERT_EQ(converted.status, 0);
    const char* const told =
        "lobemax-cli: the calculated results are still in the units before: calculate the motion again\n";
    EXPECT_TRUE(converted.err.starts_with(told));
    EXPECT_EQ(Run("convert i.cam -o same.cam --units 1").err.find(told), std::string::npos);
    EXPECT_EQ(Show("mm.cam", "WhichUnit Prime_Rad Follow_Rad Preload Calculated 'CalcData(1, 180)'"),
              "WhichUnit = 5\nPrime_Rad = 76.2\nFollow_Rad = 12.7\nPreload = 111.21\nCalculated = true\n"
              "CalcData(1, 180) = 1\n")
        << "calculated rows are not converted: the motion has to be recalculated";
    ASSERT_EQ(Run("calc mm.cam -o mm.cam --levels svaj").status, 0);
    EXPECT_EQ(Show("mm.cam", "'CalcData(1, 180)'"), "CalcData(1, 180) = 25.4\n");
    ASSERT_EQ(Run("convert mm.cam -o back.cam --units 1").status, 0);
    EXPECT_EQ(Show("back.cam", "Prime_Rad"), "Prime_Rad = 3\n");
}

TEST_F(Cli, time_bases_differ_as_stored)
{
    Make_Calculated("c.cam");
    ASSERT_EQ(Run("calc c.cam -o deg.cam --levels svaj --set 'Time Base=2'").status, 0);
    ASSERT_EQ(Run("calc c.cam -o rad.cam --levels svaj --set 'Time Base=3'").status, 0);
    const auto value = [&](const char* file, const char* field) {
        const std::string line = Show(file, std::string("'") + field + "'");
        return testing::Number_In(line.substr(line.find('=') + 1));
    };
    const double rad = value("rad.cam", "CalcData(3, 20)");
    EXPECT_NEAR(value("deg.cam", "CalcData(3, 20)"), rad * 3.141592654 / 180.0, 1e-5) << "a single factor, meant";
    EXPECT_NEAR(value("c.cam", "CalcData(3, 20)"), rad * std::pow(120 * 3.141592654 / 30, 2), 1e-2);
}

TEST_F(Cli, settings_change_fields_before_the_calculation)
{
    Make_Calculated("c.cam");
    ASSERT_EQ(Run("calc c.cam -o d.cam --levels svaj --set 'End Value(1)=30' --set 'Start Value(2)=30' "
                  "--set 'End Value(2)=30' --set 'Start Value(3)=30' --set 'program(3)=67' --set 'Prime_Rad=40' "
                  "--set Translating=0")
                  .status,
              0);
    EXPECT_EQ(Show("d.cam", "MaxLift Prime_Rad 'Function(3)' 'Seg_Program(3)' Translating"),
              "MaxLift = 30\nPrime_Rad = 40\nFunction(3) = 7\nSeg_Program(3) = 10\nTranslating = false\n");
}

TEST_F(Cli, a_setting_that_cannot_be_is_refused_and_nothing_is_written)
{
    Make_Calculated("c.cam");
    const std::string before = Content("c.cam");
    struct Case {
        const char* setting;
        const char* message;
    };
    for (const Case& c : {
             Case{"Nonsense=1", "there is no field 'Nonsense'"},
             Case{"Prime_Rad", "'Prime_Rad' is not FIELD=VALUE"},
             Case{"Prime_Rad=forty", "'forty' is not a number"},
             Case{"Prime_Rad(1)=4", "'Prime_Rad' has 0 indices"},
             Case{"Beta_Deg(21)=4", "index 21 of 'Beta_Deg' is outside 0 to 20"},
             Case{"Beta_Deg(1)=400", "Beta cannot be > 360 or < 0"},
             Case{"WhichUnit=6", "'6' is not a whole number from 1 to 5"},
             Case{"Camtype$=Conical", "'Conical' is none of Radial|Barrel|Linear"},
             Case{"Deltatheta=0.3", "'0.3' is no step: 1.0, 0.50, 0.25, 0.125"},
             Case{"Printstep=70000", "'70000' is not a whole number from 1 to 32767"},
             Case{"Prime_Rad=1E39", "'1E39' is too large for 'Prime_Rad'"},
             Case{"Follow_Rad=5000",
                  "Something is wrong /  / The follower radius is greater than the prime circle radius /  / Please "
                  "check your data."},
             Case{"Max Data Points used=9", "'Max Data Points used' follows from Deltatheta and cannot be set"},
         }) {
        const Result refused = Run(std::string("calc c.cam -o c.cam --levels svaj --set '") + c.setting + "'");
        EXPECT_EQ(refused.status, 2) << c.setting;
        EXPECT_EQ(refused.err, std::string("lobemax-cli: --set: ") + c.message + "\n");
        EXPECT_TRUE(Content("c.cam") == before);
    }
}

TEST_F(Cli, a_failed_calculation_is_status_1_and_leaves_the_older_file)
{
    Make_Calculated("c.cam");
    const std::string before = Content("c.cam");
    const Result failed = Run("calc c.cam -o c.cam --levels svaj --set 'Beta_Deg(2)=0'");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, "[exclamation] Segment 2 has no beta: please enter its duration in degrees.\n");
    EXPECT_TRUE(Content("c.cam") == before);
}

TEST_F(Cli, convert_recalculates_what_the_model_holds_where_it_is_asked_to)
{
    ASSERT_EQ(Run("example 'Double Dwell' --units 1 -o i.cam").status, 0);
    const Result plain = Run("convert i.cam -o p.cam --units 5");
    EXPECT_EQ(plain.status, 0);
    EXPECT_NE(plain.err.find("still in the units before"), std::string::npos);
    EXPECT_EQ(Show("p.cam", "'CalcData(1, 120)'"), "CalcData(1, 120) = 1\n");
    const Result anew = Run("convert i.cam -o n.cam --units 5 --recalculate");
    EXPECT_EQ(anew.status, 0);
    EXPECT_EQ(anew.err.find("still in the units before"), std::string::npos);
    EXPECT_EQ(Show("n.cam", "'CalcData(1, 120)' Calculated Sized Dynamicflag"),
              "CalcData(1, 120) = 25.4\nCalculated = true\nSized = true\nDynamicflag = true\n");

    ASSERT_EQ(Run("new -o bare.cam 'R MS 180 0 25' 'F MS 180 25 0'").status, 0);
    EXPECT_EQ(Run("convert bare.cam -o b.cam --units 1 --recalculate").status, 0);
    EXPECT_EQ(Show("b.cam", "Calculated WhichUnit"), "Calculated = false\nWhichUnit = 1\n");
}

TEST_F(Cli, convert_writes_nothing_where_a_rung_is_not_reached_again)
{
    ASSERT_EQ(Run("example 'Double Dwell' --units 1 -o c.cam").status, 0);
    // Centimetres have no steel: its modulus, psi in this model, must be typed.
    ASSERT_EQ(Run("calc c.cam -o s.cam --levels stress").status, 0);
    const Result failed = Run("convert s.cam -o d.cam --units 4 --recalculate");
    EXPECT_EQ(failed.status, 1);
    EXPECT_NE(failed.err.find("Young's modulus is not converted with the units"), std::string::npos) << failed.err;
    EXPECT_FALSE(std::filesystem::exists("d.cam"));
}

TEST_F(Cli, levels_refuse_results_of_other_units)
{
    Make_Calculated("c.cam");
    const Result refused = Run("calc c.cam -o d.cam --levels size --set WhichUnit=1");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.starts_with("[exclamation] The results in memory are those of the units before"))
        << refused.err;
    EXPECT_EQ(Run("calc c.cam -o d.cam --levels svaj,size --set WhichUnit=1").status, 0);
}

TEST_F(Cli, a_text_too_long_for_a_file_is_refused_and_one_of_several_lines_is_printed_in_one)
{
    Make_Calculated("c.cam");
    const Result refused = Run("calc c.cam -o d.cam --set User=" + std::string(70000, 'x'));
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: --set: 'User' has 10000 bytes at the most, this text has 70000\n");
    EXPECT_FALSE(Exists("d.cam"));
    ASSERT_EQ(Run("calc c.cam -o d.cam --set 'User=two\nlines\tand a tab'").status, 0);
    EXPECT_EQ(Show("d.cam", "User Version_Str"), "User = two lines and a tab\nVersion_Str = 9\n");
}

TEST_F(Cli, a_position_that_the_number_format_would_cut_short_is_told)
{
    Make_Calculated("c.cam");
    const Result refused = Run("calc c.cam -o d.cam --levels svaj --set 'End Value(4)=0,5'");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: --set: '0,5' is not a number\n");
    const Result europe = Run("calc c.cam -o d.cam --levels svaj --set 'End Value(4)=0,5' --set Number_Format=Europe");
    EXPECT_EQ(europe.err.find("is read as"), std::string::npos);
    EXPECT_EQ(Show("d.cam", "'Total_Displacement(4)'"), "Total_Displacement(4) = 0.5\n");
}

TEST_F(Cli, an_external_force_function_survives_the_motion_calculated_after_it)
{
    ASSERT_EQ(Run("new -o f.cam 'R SF 180 0 100' 'F SF 180 100 0'").status, 0);
    ASSERT_EQ(Run("calc f.cam -o g.cam --levels svaj --set Motion=false --set Ext_Force_On=-1").status, 0);
    EXPECT_EQ(Show("g.cam", "'CalcData(44, 180)' Motion"), "CalcData(44, 180) = 100\nMotion = true\n");
    ASSERT_EQ(Run("calc g.cam -o h.cam --levels svaj --set 'End Value(1)=8' --set 'Start Value(2)=8'").status, 0);
    EXPECT_EQ(Show("h.cam", "'CalcData(1, 180)' 'CalcData(44, 180)' Ext_Force_Calc"),
              "CalcData(1, 180) = 8\nCalcData(44, 180) = 100\nExt_Force_Calc = true\n");
}

TEST_F(Cli, a_polynomial_of_a_345_laws_conditions_moves_as_that_law)
{
    const std::string ends = "'D DW 90 10 10' 'F MS 90 10 0' 'D DW 90 0 0'";
    ASSERT_EQ(Run("new -o p.cam --rpm 120 'P PO 90 0 10' " + ends +
                  " --bc '1 0 1 0' --bc '1 0 2 0' --bc '1 90 1 0' --bc '1 90 2 0'")
                  .status,
              0);
    EXPECT_EQ(Show("p.cam", "'No of conditions(1)' 'S boundary cond(1, 9)' 'A boundary cond(1, 9)' 'Program(1)'"),
              "No of conditions(1) = 6\nS boundary cond(1, 9) = 10\nA boundary cond(1, 9) = 0\nProgram(1) = PO\n");
    ASSERT_EQ(Run("calc p.cam -o p.cam --levels svaj").status, 0);
    ASSERT_EQ(Run("new -o l.cam --rpm 120 'R 45 90 0 10' " + ends).status, 0);
    ASSERT_EQ(Run("calc l.cam -o l.cam --levels svaj").status, 0);
    const std::string fields = "'CalcData(1, 30)' 'CalcData(2, 30)' 'CalcData(3, 60)' 'CalcData(4, 60)'";
    const std::string polynomial = Show("p.cam", fields), law = Show("l.cam", fields);
    std::istringstream a(polynomial), b(law);
    for (std::string x, y; std::getline(a, x) && std::getline(b, y);) {
        const double value = testing::Number_In(y.substr(y.find('=') + 1));
        EXPECT_NEAR(testing::Number_In(x.substr(x.find('=') + 1)), value, 1e-5 * std::abs(value)) << x;
    }
    EXPECT_EQ(Show("p.cam", "'Polydone(1)' Calculated"), "Polydone(1) = true\nCalculated = true\n");
}

TEST_F(Cli, a_position_given_as_a_condition_is_its_segments_and_leaves_the_starts_of_the_others)
{
    ASSERT_EQ(Run("new -o p.cam 'P PO 120 0 -' 'D DW 60 12 12' 'F CF 180 13 0' --bc '1 0 0 1.5' --bc '1 120 0 10' "
                  "--bc '1 120 1 7'")
                  .status,
              0);
    EXPECT_EQ(Show("p.cam",
                   "'Start Value(1)' 'End Value(1)' 'Start Value(2)' 'End Value(2)' 'Start Value(3)' 'End Value(3)'"),
              "Start Value(1) = 1.5\nEnd Value(1) = 10\nStart Value(2) = 12\nEnd Value(2) = 12\n"
              "Start Value(3) = 13\nEnd Value(3) = 0\n");
}

TEST_F(Cli, a_spline_takes_conditions_order_and_knots)
{
    ASSERT_EQ(Run("new -o s.cam 'S BS 180 0 10' 'D DW 90 10 10' 'F CF 90 10 0' --bc '1 0 1 0' --bc '1 0 2 0' "
                  "--bc '1 180 1 0' --bc '1 180 2 0' --bc '1 60 0 2' --bc '1 120 0 8' --order '1 6' "
                  "--knots '1 70 130'")
                  .status,
              0);
    EXPECT_EQ(Show("s.cam", "'Orders(1)' 'Interior_Knots(1)' 'Knots(7, 1)' 'Knots(8, 1)' 'EvenKnots(1)'"),
              "Orders(1) = 6\nInterior_Knots(1) = 2\nKnots(7, 1) = 70\nKnots(8, 1) = 130\nEvenKnots(1) = false\n");
    ASSERT_EQ(Run("calc s.cam -o c.cam --levels svaj").status, 0);
    for (const auto& [point, expected] : {std::pair(0, 0.0), {60, 2.0}, {120, 8.0}, {180, 10.0}}) {
        const std::string line = Show("c.cam", "'CalcData(1, " + std::to_string(point) + ")'");
        EXPECT_NEAR(testing::Number_In(line.substr(line.find('=') + 1)), expected, 1e-4) << point;
    }
    EXPECT_EQ(Show("c.cam", "'Splines_Calculated(1)' Calculated 'Knots(8, 1)'"),
              "Splines_Calculated(1) = true\nCalculated = true\nKnots(8, 1) = 130\n");
}

TEST_F(Cli, an_order_above_the_conditions_becomes_their_count_and_the_command_goes_on)
{
    const std::string spline =
        "'S BS 180 0 10' 'F MS 180 10 0' --bc '1 0 1 0' --bc '1 0 2 0' --bc '1 180 1 0' --bc '1 180 2 0' ";
    const Result capped = Run("new -o s.cam " + spline + "--order '1 9'");
    EXPECT_EQ(capped.status, 0);
    EXPECT_TRUE(capped.err.starts_with("[exclamation] Spline Order must be less than 7\n")) << capped.err;
    EXPECT_EQ(Show("s.cam", "'Orders(1)' 'Interior_Knots(1)'"), "Orders(1) = 6\nInterior_Knots(1) = 0\n");
    ASSERT_EQ(Run("calc s.cam -o s.cam --levels svaj").status, 0);
    const Result refused = Run("new -o x.cam " + spline + "--order '1 3'");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: --order '1 3': Spline order must be four or greater\n");
    EXPECT_FALSE(Exists("x.cam"));
}

TEST_F(Cli, a_refused_polynomial_leaves_the_motion_uncalculated)
{
    // Two conditions at the same place on the same derivative: singular.
    ASSERT_EQ(Run("new -o p.cam 'P PO 180 0 10' 'F MS 180 10 0' --bc '1 60 0 2' --set 'T boundary cond(1, 2)=60' "
                  "--set 'S boundary cond(1, 2)=3' --set 'No of conditions(1)=4'")
                  .status,
              0);
    const Result refused = Run("calc p.cam -o c.cam --levels svaj");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("[exclamation]  There has been an error in the calculation of your polynomial "
                               "coefficients - Check your boundary condition data\n"),
              std::string::npos);
    EXPECT_FALSE(Exists("c.cam"));
}

TEST_F(Cli, conditions_that_cannot_be_are_refused_with_their_reason)
{
    const std::string rows = "'P PO 180 0 10' 'F MS 180 10 0' ";
    struct Case {
        const char* arguments;
        const char* message;
    };
    for (const Case& c : {
             Case{"--bc '2 0 1 0'", "lobemax-cli: --bc '2 0 1 0': segment 2 is not given by conditions\n"},
             Case{"--bc '1 0 1'", "lobemax-cli: --bc '1 0 1': not 'SEG THETA ORDER VALUE'\n"},
             Case{"--bc '1 x 1 0'", "lobemax-cli: --bc '1 x 1 0': 'x' is not a number\n"},
             Case{"--bc '1 181 1 0'", "lobemax-cli: --bc '1 181 1 0': the angle lies outside the segment\n"},
             Case{"--bc '1 0 5 0'", "lobemax-cli: --bc '1 0 5 0': the order is 0 to 4, for S, V, A, J, Ping\n"},
             Case{"--order '1 6'", "lobemax-cli: --order '1 6': the first word names no spline segment\n"},
         }) {
        const Result refused = Run("new -o m.cam " + rows + c.arguments);
        EXPECT_EQ(refused.status, 2) << c.arguments;
        EXPECT_EQ(refused.err, c.message);
        EXPECT_FALSE(Exists("m.cam"));
    }
}

TEST_F(Cli, a_level_that_this_release_does_not_have_is_refused)
{
    Make_Calculated("c.cam");
    const Result refused = Run("calc c.cam -o d.cam --levels svaj,nonsense");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: --levels: this release has no level 'nonsense'\n");
}

TEST_F(Cli, a_summary_tells_extremes_with_their_angles_and_the_figures_for_the_drive)
{
    Make_Calculated("c.cam");
    const std::string motion = Show("c.cam", "");
    EXPECT_NE(motion.find("\nExtremes   unit        smallest  at deg    largest  at deg\n"
                          "Displcmnt  mm                 0       0         25      90\n"),
              std::string::npos)
        << motion;
    EXPECT_EQ(motion.find("Torque"), std::string::npos);
    EXPECT_EQ(motion.find("Drive"), std::string::npos);

    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam --units 1").status, 0);
    ASSERT_EQ(Run("calc e.cam -o f.cam --levels stress").status, 0);
    const std::string whole = Show("f.cam", "");
    for (const char* const part :
         {"\nTorque     in-lb ", "\nSig_max    psi ", "\nTau_max    psi ", "\nForce-kin  lb ", "\nMean torque   in-lb ",
          "\n              N-m ", "\nPeak power    W ", "\n              hp ", "\nFlywheel      lb-in-s^2 "})
        EXPECT_NE(whole.find(part), std::string::npos) << part << whole;
    const std::string json = Run("show f.cam --json").out;
    for (const char* const part :
         {"\"Extremes\": [", "\"smallest_at\": ", "\"name\": \"Sig_max\"", "\"Drive\": [",
          "\"name\": \"Peak torque\",\n      \"unit\": \"N-m\",\n      \"value\": ", "\"with_friction\": "})
        EXPECT_NE(json.find(part), std::string::npos) << part;

    ASSERT_EQ(Run("example 'Double Dwell' -o m.cam").status, 0);
    const std::string metric = Show("m.cam", "");
    EXPECT_NE(metric.find("\nTorque     N-m "), std::string::npos) << metric;
    EXPECT_NE(metric.find("in mm-N they are 1000 times as many.\n"), std::string::npos);
    EXPECT_EQ(metric.find(" hp "), std::string::npos);
}

TEST_F(Cli, twenty_segments_give_their_cut_file_and_status_1)
{
    std::string many;
    for (int n = 0; n < 10; ++n)
        many += "'R MS 18 0 5' 'F MS 18 5 0' ";
    const Result made = Run("new -o m.cam " + many);
    EXPECT_EQ(made.status, 1);
    EXPECT_EQ(made.err, "[information] Error 9   (Index out of bounds)  has occurred in WriteFile_8\n");
    EXPECT_TRUE(Content("m.cam").ends_with("\"Pbound( 20, 9)\",\"\"\r\n"));
    const Result shown = Run("show m.cam");
    EXPECT_EQ(shown.status, 2);
    EXPECT_EQ(shown.err, "[information] Error 9   (Index out of bounds)  has occurred in ReadFile_8\n");
}

TEST_F(Cli, examples_come_calculated_in_every_unit_system)
{
    for (const char* name : {"Single Dwell", "Double Dwell", "Flat Follower", "Four Dwell", "Oscillating",
                             "4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"})
        for (int units = 1; units <= 5; ++units) {
            const Result made = Run(std::string("example '") + name + "' -o e.cam --units " + std::to_string(units));
            EXPECT_EQ(made.status, 0) << name;
            EXPECT_EQ(
                Show("e.cam", "Calculated Sized Dynamicflag WhichUnit"),
                "Calculated = true\nSized = true\nDynamicflag = true\nWhichUnit = " + std::to_string(units) + "\n");
        }
    ASSERT_EQ(Run("example 'double dwell' -o e.cam --set Prime_Rad=99").status, 0);
    EXPECT_EQ(Show("e.cam", "Liftmax 'Shaft speed' Prime_Rad Follow_Rad"),
              "Liftmax = 25\nShaft speed = 18\nPrime_Rad = 99\nFollow_Rad = 18.75\n");
    const Result unknown = Run("example 'Triple Dwell' -o t.cam");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.starts_with("lobemax-cli: there is no example 'Triple Dwell'; there are Single Dwell, "));
}

TEST_F(Cli, a_whole_table_as_json_has_each_element_once_and_soon)
{
    ASSERT_EQ(Run("new -o m.cam --delta 0.125 " + segments).status, 0);
    const auto began = std::chrono::steady_clock::now();
    const std::string json = Run("show m.cam CalcData 'CalcData(1, 2)' --json").out;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    EXPECT_EQ(std::ranges::count(json, ':'), 54 * 2881);
    EXPECT_TRUE(json.starts_with("{\n  \"CalcData(0, 0)\": 0.0,"));
    EXPECT_LT(took.count(), 30.0) << "the work goes with the number of elements, not with its square";
}

TEST_F(Cli, show_knows_every_element_a_summary_and_json)
{
    Make_Calculated("c.cam");
    EXPECT_EQ(Show("c.cam", "\"Young's modulus\" 'S boundary cond(1, 0)'"),
              "Young's modulus(1) = 0\nYoung's modulus(2) = 0\nS boundary cond(1, 0) = \n");
    EXPECT_EQ(Run("show c.cam 'Beta_Deg(2)' Calculated 'Start Value(3)' --json").out,
              "{\n  \"Beta_Deg(2)\": 90.0,\n  \"Calculated\": true,\n  \"Start Value(3)\": \"25\"\n}\n");
    const std::string summary = Show("c.cam", "");
    for (const char* part :
         {"Units mm-kg-N-s\n", "MaxLift = 25 mm\n", "Calculated = true\n", "Shaft speed = 12.566371 rad/s\n"})
        EXPECT_NE(summary.find(part), std::string::npos) << part;
    EXPECT_NE(Run("show c.cam --json").out.find("\"Rise_Fall_Dwell\": \"R\""), std::string::npos);
    const Result unknown = Run("show c.cam Prime_Radius");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.err, "lobemax-cli: there is no field 'Prime_Radius'\n");
}

TEST_F(Cli, table_prints_angle_variables_and_extremes)
{
    Make_Calculated("c.cam");
    EXPECT_EQ(
        Run("table c.cam --vars 1 --step 90 --decimals 2").out,
        "Angle\tDispl\n0.00\t0.00\n90.00\t25.00\n180.00\t25.00\n270.00\t0.00\n360.00\t0.00\nMin\t0.00\nMax\t25.00\n");
    EXPECT_EQ(Run("table c.cam --vars S,Velocity,3 --segment 2 --step 45").out,
              "Angle\tDispl\tVeloc\tAcc\n90\t25\t0\t0\n135\t25\t0\t0\n180\t25\t0\t0\nMin\t25\t0\t0\nMax\t25\t0\t0\n");
    EXPECT_EQ(Run("table c.cam --vars 1 --step 90 --decimals 0 -o t.tsv").status, 0);
    EXPECT_EQ(Content("t.tsv"), "Angle\tDispl\n0\t0\n90\t25\n180\t25\n270\t0\n360\t0\nMin\t0\nMax\t25\n");
    for (const char* line :
         {"table c.cam --vars 99", "table c.cam --vars 1,2,3,4,5", "table c.cam --vars 1 --segment 5",
          "table c.cam --vars 1 --segment 0", "table c.cam --vars 1 --segment -1", "table c.cam --vars ''",
          "table c.cam --vars 1 --step 0"})
        EXPECT_EQ(Run(line).status, 2) << line;
}

TEST_F(Cli, calc_takes_a_design_from_its_segments_to_its_stresses)
{
    ASSERT_EQ(Run("new -o n.cam --rpm 120 " + segments + " --set Preload=2000 --set Prime_Rad=80").status, 0);
    ASSERT_EQ(Run("calc n.cam -o c.cam " + stamps).status, 0);  // svaj, size, dynamics
    EXPECT_EQ(Show("c.cam", "Calculated Sized Dynamicflag Stressflag"),
              "Calculated = true\nSized = true\nDynamicflag = true\nStressflag = false\n");
    ASSERT_EQ(Run("calc c.cam -o s.cam --levels stress --follower-nu 0.3").status, 0);
    EXPECT_EQ(Show("s.cam", "Dynamicflag Stressflag \"Poissons' ratio(1)\""),
              "Dynamicflag = true\nStressflag = true\nPoissons' ratio(1) = 0.3\n");
    EXPECT_LT(testing::Number_In(Show("s.cam", "'CalcData(42, 45)'").substr(19)), -10.0);
    const double T = testing::Number_In(Show("c.cam", "'CalcData(8, 30)'").substr(18));
    ASSERT_EQ(Run("calc c.cam -o a.cam --levels dynamics --accumulate").status, 0);
    EXPECT_NEAR(testing::Number_In(Show("a.cam", "'CalcData(8, 30)'").substr(18)), 2 * T, std::abs(T) * 1e-5);
}

TEST_F(Cli, calc_of_a_level_whose_ground_is_missing_is_status_1)
{
    ASSERT_EQ(Run("new -o n.cam " + segments).status, 0);
    for (const char* level : {"size", "dynamics", "stress"}) {
        const Result missing = Run(std::string("calc n.cam -o x.cam --levels ") + level);
        EXPECT_EQ(missing.status, 1) << level;
        EXPECT_NE(missing.err, "") << level;
        EXPECT_FALSE(Exists("x.cam"));
    }
    EXPECT_EQ(Run("calc n.cam -o x.cam --levels nonsense").status, 2);
}

TEST_F(Cli, a_separation_is_asked_and_abort_ends_the_run)
{
    ASSERT_EQ(Run("new -o n.cam --rpm 600 " + segments).status, 0);
    const Result ignored = Run("calc n.cam -o c.cam");
    EXPECT_EQ(ignored.status, 0);
    EXPECT_NE(ignored.err.find("[exclamation] The cam and follower have separated at Theta =  "), std::string::npos);
    EXPECT_NE(ignored.err.find(" -> Ignore\n"), std::string::npos);
    const Result aborted = Run("calc n.cam -o d.cam --answer abort");
    EXPECT_EQ(aborted.status, 1);
    EXPECT_FALSE(Exists("d.cam"));
}

TEST_F(Cli, a_cam_that_cannot_be_sized_is_status_1)
{
    ASSERT_EQ(
        Run("new -o n.cam --oscillating 'R MS 90 0 10' 'D DW 90 10 10' 'F CF 90 10 0' 'D DW 90 0 0' --set ArmX=100 "
            "--set ArmRad=80 --set ArmX=900")
            .status,
        0);
    const Result failed = Run("calc n.cam -o c.cam --levels svaj,size");
    EXPECT_EQ(failed.status, 1);
    EXPECT_NE(failed.err.find("The roller follower arm misses the cam entirely"), std::string::npos);
    EXPECT_NE(failed.err.find("Incompatible dimensions - check your data"), std::string::npos);
    EXPECT_FALSE(Exists("c.cam"));
}

TEST_F(Cli, export_writes_each_kind_and_refuses_what_is_not_there)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam " + stamps).status, 0);
    const Result all = Run("export e.cam spreadsheet -o all.txt " + stamps);
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.err,
              "[information] All calculated data for this cam has been written to all.txt / This tab-delimited file "
              "can be opened in any spreadsheet program\n");
    EXPECT_EQ(Content("all.txt").substr(0, 21), "File: \te.cam\tDesign #");
    for (int code = 1; code <= 5; ++code) {
        const Result profile = Run("export e.cam profile --code " + std::to_string(code) + " -o p.pts");
        EXPECT_EQ(profile.status, 0);
        EXPECT_TRUE(
            profile.err.starts_with("[information] The profile data for this cam has been written to p.pts / "));
        const std::string text = Content("p.pts");
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7 + 360);
    }
    const Result translating = Run("export e.cam sva -o m.sva");
    EXPECT_EQ(translating.status, 2);
    EXPECT_EQ(translating.err, "[exclamation] This feature is intended for oscillating follower systems only.\n");
    ASSERT_EQ(Run("example Oscillating -o o.cam").status, 0);
    EXPECT_EQ(Run("export o.cam sva -o m.sva").status, 0);
    EXPECT_EQ(Run("export o.cam xdot -o x.sva").status, 0);
    ASSERT_EQ(Run("new -o n.cam " + segments).status, 0);
    for (const char* kind : {"spreadsheet", "profile", "sva"}) {
        const Result blank = Run(std::string("export n.cam ") + kind + " -o none.txt");
        EXPECT_EQ(blank.status, 2) << kind;
        EXPECT_EQ(blank.err,
                  "[exclamation] The current model is blank.  There is nothing to export.  Use S-V-A-J and Sizecam "
                  "buttons to calculate the model, then export\n");
    }
    EXPECT_FALSE(Exists("none.txt"));
    Make_Calculated("c.cam");
    EXPECT_EQ(Run("export c.cam profile -o none.pts").status, 2);
    EXPECT_EQ(Run("export e.cam profile --code 6 -o none.pts").status, 2);
    EXPECT_EQ(Run("export e.cam nothing -o none.pts").status, 2);
    ASSERT_EQ(Run("calc e.cam -o b.cam --levels size --set 'Camtype$=Barrel'").status, 0);
    EXPECT_EQ(Run("export b.cam profile --code 3 -o none.pts").status, 1);
    EXPECT_FALSE(Exists("none.pts"));
}

TEST_F(Cli, plot_and_draw_write_pictures_of_each_kind)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    const std::vector<std::pair<std::string, std::string>> heads{
        {"png", "\x89PNG"}, {"svg", "<?xml"}, {"pdf", "%PDF-"}};
    for (const auto& [ending, head] : heads) {
        const Result plotted = Run("plot e.cam --vars S,V,3,Jerk* --style 3 -o p." + ending);
        EXPECT_EQ(plotted.status, 2) << "a name is no pattern";
        ASSERT_EQ(Run("plot e.cam --vars S,V,3 --style 1 --segment 1 -o p." + ending).status, 0);
        EXPECT_TRUE(Content("p." + ending).starts_with(head)) << ending;
        ASSERT_EQ(Run("draw e.cam --path cutter -o d." + ending).status, 0);
        EXPECT_TRUE(Content("d." + ending).starts_with(head)) << ending;
    }
    EXPECT_EQ(Run("plot e.cam --preset 'pressure angle and radius of curvature' -o q.png").status, 0);
    EXPECT_EQ(Run("plot e.cam --vars 54,57 --style 4 --size 300x300 -o q.png").status, 0);
}

TEST_F(Cli, a_png_has_the_pixels_of_its_size_times_the_scale)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    const auto pixels = [&](const std::string& options) {  // width and height stand in the first block of a PNG
        EXPECT_EQ(Run(options + " -o q.png").status, 0) << options;
        const std::string head = Content("q.png").substr(16, 8);
        const auto number = [&](std::size_t at) {
            return static_cast<unsigned char>(head[at]) * 256 + static_cast<unsigned char>(head[at + 1]);
        };
        return std::pair(number(2), number(6));
    };
    EXPECT_EQ(pixels("plot e.cam --vars 1 --size 320x300"), std::pair(320, 300));
    EXPECT_EQ(pixels("plot e.cam --vars 1 --size 320x300 --scale 2"), std::pair(640, 600));
    EXPECT_EQ(pixels("plot e.cam --vars 1"), std::pair(900, 600));
    EXPECT_EQ(pixels("draw e.cam --size 100x60 --scale 2.5"), std::pair(250, 150));
    EXPECT_EQ(pixels("draw e.cam"), std::pair(800, 800));
    ASSERT_EQ(Run("draw e.cam --size 100x60 --scale 3 -o d.svg").status, 0);
    const std::string svg = Content("d.svg");
    ASSERT_EQ(Run("draw e.cam --size 100x60 -o d.svg").status, 0);
    EXPECT_EQ(Content("d.svg"), svg) << "it has no pixels";
    const Result refused = Run("draw e.cam --size 10000x60 --scale 2.01 -o x.png");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "lobemax-cli: --scale: the picture would have more than 20000 pixels each way\n");
    for (const char* scale : {"0", "-1", "11", "x"})
        EXPECT_EQ(Run(std::string("draw e.cam --scale ") + scale + " -o x.png").status, 2) << scale;
}

TEST_F(Cli, the_same_input_gives_the_same_picture_byte_for_byte)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    for (const std::string ending : {".png", ".svg", ".pdf"}) {
        for (const std::string name : {"a", "b"}) {
            ASSERT_EQ(Run("plot e.cam --vars 1,2 --style 2 -o p" + name + ending).status, 0);
            ASSERT_EQ(Run("draw e.cam --path cutter -o d" + name + ending).status, 0);
        }
        EXPECT_TRUE(Content("pa" + ending) == Content("pb" + ending)) << ending;
        EXPECT_TRUE(Content("da" + ending) == Content("db" + ending)) << ending;
    }
    EXPECT_EQ(Content("pa.pdf").find("/CreationDate"), std::string::npos);
}

TEST_F(Cli, a_plot_or_drawing_that_cannot_be_is_status_2_and_leaves_no_file)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    ASSERT_EQ(Run("new -o n.cam " + segments).status, 0);
    ASSERT_EQ(Run("calc e.cam -o b.cam --levels size --set 'Camtype$=Barrel'").status, 0);
    for (const char* line :
         {"plot e.cam -o x.png", "plot e.cam --vars 1 --preset 'Displacement and Velocity' -o x.png",
          "plot e.cam --vars 99 -o x.png", "plot e.cam --vars 54 -o x.png", "plot e.cam --vars 1 -o x.bmp",
          "plot e.cam --vars 1 --size 10x10 -o x.png", "plot e.cam --vars 1 --size wide -o x.png",
          "plot e.cam --vars 1 --style 2 -o x.png", "plot e.cam --vars 1 --segment 7 -o x.png",
          "plot e.cam --vars 1 --segment 0 -o x.png", "plot e.cam --preset 'Dynamic Response:  X and X dot' -o x.png",
          "plot n.cam --vars 1 -o x.png", "draw n.cam -o x.png", "draw b.cam -o x.png",
          "draw e.cam --path nowhere -o x.png", "draw e.cam -o x.txt"})
        EXPECT_EQ(Run(line).status, 2) << line;
    for (const char* name : {"x.png", "x.bmp", "x.txt"})
        EXPECT_FALSE(Exists(name));
    EXPECT_EQ(Run("draw e.cam -o no/such/folder/x.png").status, 1);
}

TEST_F(Cli, a_cam_that_cannot_be_drawn_tells_why_once)
{
    ASSERT_EQ(Run("new -o n.cam --rpm 900 'R C1 90 0 20' 'D DW 90 20 20' 'F SF 90 20 0' 'D DW 90 0 0'").status, 0);
    ASSERT_EQ(Run("calc n.cam -o n.cam --set Follow_Rad=12 --set Prime_Rad=8").status, 0);
    const Result refused = Run("draw n.cam -o n.svg");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err,
              "[exclamation] Something Wrong - Base Circle has become zero or minus.  Change follower radius or "
              "prime/base circle\n");
    EXPECT_FALSE(Exists("n.svg"));
}

/// Qt sets the user's locale, and what reads by that locale finds a comma in German.
TEST_F(Cli, a_number_among_the_options_has_a_point_in_every_locale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "this machine has no German locale";
    EXPECT_EQ(Run("example Oscillating -o e.cam").status, 0);
    EXPECT_EQ(Run("draw e.cam --at 70.2 -o d.svg").status, 0);
    EXPECT_EQ(Run("draw e.cam --scale 2.5 -o d.svg").status, 0);
    const Result comma = Run("draw e.cam --at 70,2 -o d.svg");
    const Result beyond = Run("draw e.cam --scale 10.5 -o d.svg");
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(comma.status, 2);
    EXPECT_EQ(beyond.status, 2);
    EXPECT_TRUE(beyond.err.starts_with("--scale: Value 10.5 not in range 0.1 to 10\n")) << beyond.err;
}

TEST_F(Cli, draw_turns_the_cam_and_draws_its_conjugate)
{
    ASSERT_EQ(Run("example Oscillating -o e.cam").status, 0);
    std::string first;
    for (const std::string option : {"", "--at 70", "--at 70.2", "--at 71", "--conjugate", "--conjugate --at 70"}) {
        ASSERT_EQ(Run("draw e.cam " + option + " -o d.svg").status, 0) << option;
        const std::string picture = Content("d.svg");
        if (option == "--at 70.2") {
            EXPECT_EQ(picture, first);  // the nearest calculated point
        } else {
            EXPECT_NE(picture, first) << option;
            first = picture;
        }
    }
    ASSERT_EQ(Run("draw e.cam --path machine -o d.svg").status, 0);
    for (const char* line : {"draw e.cam --at 361 -o x.svg", "draw e.cam --at -1 -o x.svg",
                             "draw e.cam --at x -o x.svg", "draw e.cam --at 10 --path cutter -o x.svg"})
        EXPECT_EQ(Run(line).status, 2) << line;
    ASSERT_EQ(Run("calc e.cam -o l.cam --set Camtype=Linear").status, 0);
    const Result linear = Run("draw l.cam --conjugate -o x.svg");
    EXPECT_EQ(linear.status, 2);
    EXPECT_EQ(linear.err, "lobemax-cli: only a radial cam has a conjugate\n");
    EXPECT_FALSE(Exists("x.svg"));
}

TEST_F(Cli, fft_prints_the_harmonics_and_keeps_them_in_the_model)
{
    Make_Calculated("c.cam");
    const Result all = Run("fft c.cam -o f.cam --var 1 --harmonics 3");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.out.substr(0, all.out.find('\n')), "Harmonic\tReal\tImag\tMag\tPhs");
    EXPECT_EQ(std::count(all.out.begin(), all.out.end(), '\n'), 4);
    EXPECT_EQ(all.err.substr(0, 14), "[information] ");
    // Up in a quarter of the cycle, held, down, held: the mean is half of 25, and the one-sided entry twice that.
    EXPECT_NEAR(testing::Number_In(Show("f.cam", "'CalcData(20, 1)'").substr(18)), 25.0, 0.01);
    const Result segment = Run("fft c.cam -o f.cam --var Accel --segment 1 --harmonics 100");
    EXPECT_EQ(segment.status, 0);
    EXPECT_EQ(std::count(segment.out.begin(), segment.out.end(), '\n'), 1 + 45);
    const Result capped = Run("fft c.cam -o f.cam --var V --harmonics 2000");
    EXPECT_EQ(capped.status, 0);
    EXPECT_EQ(std::count(capped.out.begin(), capped.out.end(), '\n'), 1 + 180);
    EXPECT_NE(capped.err.find("Number of harmonics cannot exceed 1/2"), std::string::npos);
    for (const char* line : {"fft c.cam -o f.cam --var 99", "fft c.cam -o f.cam --var 0", "fft c.cam -o f.cam",
                             "fft c.cam -o f.cam --var 1 --segment 5", "fft c.cam -o f.cam --var 1 --segment 0",
                             "fft c.cam -o f.cam --var 1 --harmonics 0"})
        EXPECT_EQ(Run(line).status, 2) << line;
    const Result nothing = Run("fft c.cam -o f2.cam --var 7");  // its row holds no values
    EXPECT_EQ(nothing.status, 2);
    EXPECT_EQ(nothing.err, "lobemax-cli: variable '7' is not calculated\n");
    ASSERT_EQ(Run("new -o n.cam 'D DW 360 0 0'").status, 0);
    const Result blank = Run("fft n.cam -o f2.cam --var 1");
    EXPECT_EQ(blank.status, 2);
    EXPECT_EQ(blank.err, "lobemax-cli: the design is not calculated: run calc first\n");
    EXPECT_FALSE(Exists("f2.cam"));
}

TEST_F(Cli, plot_says_that_a_file_keeps_no_transform)
{
    Make_Calculated("c.cam");
    ASSERT_EQ(Run("fft c.cam -o f.cam --var Accel").status, 0);
    ASSERT_GT(std::stod(Show("f.cam", "'CalcData(20, 4)'").substr(18)), 0.0);  // the file has the rows
    EXPECT_EQ(Show("f.cam", "FFT_Done"), "FFT_Done = false\n");
    for (const char* const file : {"f.cam", "c.cam"})
        for (const auto& [what, told] :
             {std::pair{"--vars 20", "variable '20'"}, std::pair{"--vars 'Mag FFT' --style 1", "variable 'Mag FFT'"},
              std::pair{"--vars 2,18 --style 2", "variable '18'"},
              std::pair{"--preset 'Magnitude and Phase Components of Current FFT'",
                        "preset 'Magnitude and Phase Components of Current FFT'"},
              std::pair{"--preset 'Current FFT:  Real, Imag, Magnitude, Phase' --style 3",
                        "preset 'Current FFT:  Real, Imag, Magnitude, Phase'"}}) {
            const Result plot = Run("plot " + std::string(file) + " " + what + " -o t.png");
            EXPECT_EQ(plot.status, 2) << what;
            EXPECT_EQ(plot.err, "lobemax-cli: " + std::string(told) +
                                    ": A model file keeps no Fourier transform to plot. The FFT screen makes one, and "
                                    "the command fft prints one.\n");
            EXPECT_FALSE(Exists("t.png"));
        }
}

TEST_F(Cli, calc_tells_of_a_jump_between_segments_and_cancel_gives_the_design_up)
{
    ASSERT_EQ(Run("new -o j.cam 'D DW 180 5 5' 'D DW 180 0 0'").status, 0);
    const Result told = Run("calc j.cam -o k.cam --levels svaj");
    EXPECT_EQ(told.status, 0);
    EXPECT_TRUE(told.err.starts_with("[exclamation] There may be a problem with your cam design. / "));
    EXPECT_NE(told.err.find("redesign of the cam program. -> OK\n"), std::string::npos);
    EXPECT_TRUE(Exists("k.cam"));
    const Result given_up = Run("calc j.cam -o l.cam --levels svaj --answer cancel");
    EXPECT_EQ(given_up.status, 1);
    EXPECT_FALSE(Exists("l.cam"));
    Make_Calculated("c.cam");
    EXPECT_EQ(Run("calc c.cam -o c2.cam --levels svaj").err.find("discontinu"), std::string::npos);
}

TEST_F(Cli, an_input_that_is_no_model_is_status_2_with_its_message)
{
    Write("text.cam", "hello\n");
    Write("empty.cam", "");
    const Result text = Run("show text.cam");
    EXPECT_EQ(text.status, 2);
    EXPECT_EQ(text.err, "[exclamation] This data file is not compatible with LOBEMAX Plus. \n");
    const Result empty = Run("calc empty.cam -o x.cam");
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(empty.err, "[information] Error 62   (Input past end of file)  has occurred in ReadFile\n");
    EXPECT_EQ(Run("show missing.cam").status, 2);
    EXPECT_EQ(Run("show .").status, 2);
}

/// A pivot whose distance from the cam centre no 32-bit number holds, though its coordinates are such numbers.
TEST_F(Cli, an_error_on_the_way_of_a_load_is_status_1_and_leaves_an_older_file)
{
    const std::string told = "[information] Error 6   (Overflow)  has occurred in Skip in mod_Disksubs\n";
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    Make_Changed("e.cam", "half.cam", "ArmX", "3E+38");
    Make_Changed("half.cam", "far.cam", "ArmY", "3E+38");
    for (const char* const command :
         {"convert far.cam -o", "calc far.cam -o", "fft far.cam --var 1 -o", "export far.cam spreadsheet -o",
          "export far.cam profile -o", "table far.cam --vars 1 -o"}) {
        Write("older", "as it was");
        const Result failed = Run(std::string(command) + " older");
        EXPECT_EQ(failed.status, 1) << command;
        EXPECT_EQ(failed.err, told) << command;
        EXPECT_EQ(Content("older"), "as it was") << command;
    }
    for (const char* const command : {"plot far.cam --vars 1 -o", "draw far.cam -o"}) {
        Write("older.png", "as it was");
        const Result failed = Run(std::string(command) + " older.png");
        EXPECT_EQ(failed.status, 1) << command;
        EXPECT_EQ(failed.err, told) << command;
        EXPECT_EQ(Content("older.png"), "as it was") << command;
    }
    // What only looks at the design shows it, and says by its status that not all is well.
    const Result shown = Run("show far.cam 'No of segments'");
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(shown.err, told);
    EXPECT_EQ(shown.out, "No of segments = 4\n");
    EXPECT_EQ(Run("table far.cam --vars 1").status, 1);
}

TEST_F(Cli, a_start_angle_beyond_16_bits_of_points_is_a_place_within_the_turn)
{
    Make_Calculated("c.cam");
    Make_Changed("c.cam", "turns.cam", "Shift_Angle", "1E+06");  // 2777 turns and 280 degrees
    const Result shown = Run("show turns.cam Shift_Angle Shift_Points");
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(
        shown.err,
        "[exclamation] The starting angle of this file, 1000000 degrees, is beyond any count of turns.  It is taken "
        "as 280 degrees.\n");
    EXPECT_EQ(shown.out, "Shift_Angle = 280\nShift_Points = 280\n");
    Make_Changed("c.cam", "three.cam", "Shift_Angle", "-1080");
    EXPECT_EQ(Show("three.cam", "Shift_Points"), "Shift_Points = -1080\n") << "a count that fits stays as it is";
    EXPECT_EQ(Run("convert turns.cam -o d.cam").status, 0);
}

TEST_F(Cli, a_run_time_error_of_the_stresses_writes_no_file)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    Write("s.cam", "as it was");
    const Result failed = Run("calc e.cam -o s.cam --levels stress --cam-e 1E-38 --follower-e 1E-38");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, "[information] Error 6   (Overflow)  has occurred in Calc_Contact_Stress\n");
    EXPECT_EQ(Content("s.cam"), "as it was");
}

TEST_F(Cli, runs_one_after_the_other_do_not_know_of_each_other)
{
    int boxes = 0;
    Host host;
    host.messenger = [&](const Message& box) {
        ++boxes;
        return Usual_Answer(box.buttons);
    };
    Host before = Install_Host(std::move(host));
    Make_Calculated("c.cam");
    const std::string first = Content("c.cam");
    EXPECT_EQ(Run("show missing.cam").status, 2);  // reports an error
    EXPECT_EQ(Run("convert c.cam -o d.cam --format 8 --answer no").status, 1);
    EXPECT_EQ(Run("convert c.cam -o d.cam --format 8").status, 0);
    EXPECT_EQ(Run("new -o u.cam --units 1 --delta 0.125 --oscillating 'D DW 360 0 0'").status, 0);
    Make_Calculated("c.cam");
    EXPECT_TRUE(Content("c.cam") == first);
    EXPECT_EQ(boxes, 0);
    Show_Message("still the host before");
    EXPECT_EQ(boxes, 1);
    Install_Host(std::move(before));
}

TEST_F(Cli, plot_refuses_what_is_not_calculated)
{
    ASSERT_EQ(Run("example 'Single Dwell' -o e.cam").status, 0);
    for (const auto& [variable, plot_style] :
         {std::pair<std::string, std::string>{"30", "1"}, {"42", "1"}, {"55", "4"}}) {
        const Result refused = Run("plot e.cam --vars " + variable + " --style " + plot_style + " -o p.svg");
        EXPECT_EQ(refused.status, 2) << variable;
        EXPECT_EQ(refused.err, "lobemax-cli: variable '" + variable + "' is not calculated\n");
    }
    EXPECT_FALSE(Exists("p.svg"));
    EXPECT_EQ(Run("plot e.cam --vars 'Cam Profile' --style 4 -o p.svg").status, 0);
    EXPECT_EQ(Run("plot e.cam --vars S,V --style 1 -o p.svg").status, 0);
    EXPECT_NE(Content("p.svg").find("Selected Cam-Follower Parameters"), std::string::npos);
}

TEST_F(Cli, an_output_that_cannot_be_written_is_status_1)
{
    const Result failed = Run("new -o no/such/folder/m.cam 'D DW 360 0 0'");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err,
              "[information] Error 53   (File not found)  has occurred in WriteFile_8 / There are no files with your "
              "chosen name in the selected directory\n");
}

TEST_F(Cli, the_documents_folder_is_never_touched)
{
    const Result made = Run("new -o m.cam 'D DW 360 0 0'");
    EXPECT_EQ(made.status, 0);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"m.cam"}));
}

}  // namespace
}  // namespace lobemax
