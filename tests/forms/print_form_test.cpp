// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/print_form.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "motion/fourier.h"
#include "motion/segments.h"
#include "tests/support/cam_design.h"
#include "tests/support/faulty_files.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;
using Texts = std::vector<std::string>;

/// The calculated cam of four segments, with S at point p replaced by 1000 + p / 4.
class Print_Forms : public ::testing::Test {
protected:
    void SetUp() override
    {
        testing::Cam_Maker{}.Make();
        for (int p = 0; p <= 360; ++p)
            design.results.CalcData(var::S, p) = 1000 + p / 4.0;
    }
    void TearDown() override { design = {}; }

    static Print_Choice Of_S(int step = 1, int segment = 0, int decimals = 3)
    {
        Print_Choice choice;
        choice.variables = {var::S, 0, 0, 0};
        choice.decimals.fill(decimals);
        choice.step = step;
        choice.segment = segment;
        return choice;
    }
    /// A response of five stored points in memory.
    static void Lay_Response()
    {
        design.flags.Modelflag = true;
        design.dynamics.Ode_Count = 5;
        for (int j = 1; j <= 5; ++j) {
            design.results.Ode_Time(j) = j * 0.25;
            for (int state = 0; state <= 3; ++state)
                design.results.Ode_States(state, j) = 100 * state + j;
        }
    }

    Script script_;
};

// ---- rows

TEST_F(Print_Forms, a_step_of_10_at_360_points_gives_37_rows)
{
    const Table_in_Texts table = Print_Table(design, Of_S(10));
    ASSERT_EQ(table.rows.size(), 37U);
    EXPECT_EQ(table.rows.front(), (Texts{"0", "1,000.000"}));
    EXPECT_EQ(table.rows.back(), (Texts{"360", "1,090.000"}));
}

TEST_F(Print_Forms, a_segment_shows_its_own_rows_and_their_extremes)
{
    const Table_in_Texts table = Print_Table(design, Of_S(20, 2, 1));  // from 110 to 170 degrees
    EXPECT_EQ(table.rows,
              (std::vector<Texts>{{"110", "1,027.5"}, {"130", "1,032.5"}, {"150", "1,037.5"}, {"170", "1,042.5"}}));
    EXPECT_EQ(table.smallest, (Texts{"Min", "1,027.5"}));
    EXPECT_EQ(table.largest, (Texts{"Max", "1,042.5"}));
}

TEST_F(Print_Forms, extremes_are_those_of_the_rows_shown_and_not_of_the_cycle)
{
    design.results.CalcData(var::S, 115) = 5000;
    EXPECT_EQ(Print_Table(design, Of_S(20, 2, 1)).largest, (Texts{"Max", "1,042.5"})) << "115 degrees has no row";
    EXPECT_EQ(Print_Table(design, Of_S(5, 2, 1)).largest, (Texts{"Max", "5,000.0"}));
}

TEST_F(Print_Forms, each_column_has_its_decimals)
{
    Print_Choice choice = Of_S(360);
    choice.variables = {var::S, 0, var::S, var::S};
    choice.decimals = {0, 6, 4, Print_Exponent};
    const Table_in_Texts table = Print_Table(design, choice);
    EXPECT_EQ(table.heads, (Texts{"Angle", "Displ", "Displ", "Displ"}));
    EXPECT_EQ(table.rows.front(), (Texts{"0", "1,000.", "1,000.000 0", "1.000 E+3"}));
}

TEST_F(Print_Forms, numbers_follow_the_format_in_force)
{
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Print_Table(design, Of_S(360, 0, 2)).rows.back(), (Texts{"360", "1.090,00"}));
}

TEST_F(Print_Forms, the_angle_has_the_decimals_of_the_step)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    EXPECT_EQ(Print_Table(design, Of_S(1)).rows.at(3).front(), "0.375");
    ASSERT_TRUE(Set_Step(design, 0.5));
    EXPECT_EQ(Print_Table(design, Of_S(1)).rows.at(3).front(), "1.50");
}

TEST_F(Print_Forms, jerk_in_thousands_says_so_in_its_unit)
{
    Print_Choice choice = Of_S(360);
    choice.variables = {var::V, var::J, 0, 0};
    EXPECT_EQ(Print_Table(design, choice).units, (Texts{"deg", "mm/sec", "E3 mm/sec^3"}));
    Set_Time_Base(design, 3);
    EXPECT_EQ(Print_Table(design, choice).units, (Texts{"deg", "mm/rad", "mm/rad"}));
}

// ---- bases

TEST_F(Print_Forms, the_response_over_time_follows_the_points_of_the_integrator)
{
    Print_Choice choice;
    EXPECT_FALSE(Time_Table_Possible(design));
    Lay_Response();
    ASSERT_TRUE(Time_Table_Possible(design));
    choice.over_time = true;
    choice.step = 2;
    choice.segment = 3;  // a segment is one of the cam angle
    EXPECT_EQ(Print_Variables(design, choice),
              (std::vector<int>{var::Time_X, var::Time_Xdot, var::Time_Xddot, var::Time_Error}));
    EXPECT_TRUE(Print_Presets(design, choice).empty());
    choice.variables = {var::Time_X, var::Time_Error, 0, 0};
    choice.decimals.fill(0);
    ASSERT_TRUE(Print_OK(design, choice));
    const Table_in_Texts table = Print_Table(design, choice);
    EXPECT_EQ(table.heads, (Texts{"Time", "x", "s - x"}));
    EXPECT_EQ(table.units.front(), "sec");
    EXPECT_EQ(table.rows,
              (std::vector<Texts>{{"0.250000", "101.", "1."}, {"0.750000", "103.", "3."}, {"1.250000", "105.", "5."}}));
    design.flags.Modelflag = false;
    Fit_Print_Choice(design, choice);
    EXPECT_FALSE(choice.over_time);
    EXPECT_TRUE(Picked_Columns(choice).empty());
}

TEST_F(Print_Forms, a_transform_has_its_harmonics_in_the_first_column)
{
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 360, 5));
    design.flags.FFT_Done = true;
    Print_Choice choice;
    choice.variables = {var::FFT_Mag, 0, 0, 0};
    const Table_in_Texts table = Print_Table(design, choice);
    EXPECT_EQ(table.heads, (Texts{"Harmonic", "Mag"}));
    EXPECT_EQ(table.units, (Texts{"", "mm/sec"}));
    ASSERT_EQ(table.rows.size(), 5U);
    EXPECT_EQ(table.rows.at(4).front(), "5");
    EXPECT_TRUE(Print_OK(design, choice));
    choice.variables[1] = var::S;
    EXPECT_FALSE(Print_OK(design, choice));
    EXPECT_EQ(Why_No_Table(design, choice),
              "The harmonics of a Fourier transform and functions of the cam angle cannot share a table.");
}

// ---- what is offered

TEST_F(Print_Forms, displacement_is_offered_on_the_screen_alone)
{
    design.flags.Sized = design.flags.Dynamicflag = false;
    Print_Choice choice;
    EXPECT_EQ(Print_Variables(design, choice), (std::vector<int>{1, 2, 3, 4, 17}));
    choice.variables = {1, 2, 0, 0};
    for (const Print_To where : {Print_To::Printer, Print_To::File}) {
        choice.where = where;
        EXPECT_EQ(Print_Variables(design, choice), (std::vector<int>{2, 3, 4, 17}));
    }
    Fit_Print_Choice(design, choice);
    EXPECT_EQ(Picked_Columns(choice), std::vector<int>{2});
    EXPECT_FALSE(design.run.Selecting_Print) << "it holds only while a list is filled";
}

TEST_F(Print_Forms, tables_have_no_coordinates_but_in_presets)
{
    design.flags.Sized = true;
    Print_Choice choice;
    EXPECT_EQ(Print_Variables(design, choice), (std::vector<int>{1, 2, 3, 4, 17, 5, 6}));
    EXPECT_EQ(Print_Presets(design, choice), (std::vector<int>{2, 3, 4, 15, 16}));
    choice.presets = true;
    Pick_Print_Preset(choice, 3);
    EXPECT_EQ(Picked_Columns(choice), (std::vector<int>{var::X, var::Y, var::Radius, var::Theta}));
    Fit_Print_Choice(design, choice);
    EXPECT_EQ(choice.preset, 3);
    design.flags.Sized = false;
    Fit_Print_Choice(design, choice);
    EXPECT_EQ(choice.preset, 0);
    EXPECT_FALSE(choice.presets) << "no preset is left";
    EXPECT_TRUE(Picked_Columns(choice).empty());
}

TEST_F(Print_Forms, nothing_picked_is_no_table)
{
    const Print_Choice choice;
    EXPECT_FALSE(Print_OK(design, choice));
    EXPECT_EQ(Why_No_Table(design, choice), "");
}

TEST_F(Print_Forms, a_segment_outside_the_cycle_makes_no_table)
{
    design.motion.Gamma(4) = 400.0;
    EXPECT_EQ(Why_No_Table(design, Of_S(1, 4)), "Segment 4 does not lie within the cycle.");
}

TEST_F(Print_Forms, the_choice_opens_with_the_designs_own_step)
{
    design.cam.Printstep = 7;
    const Print_Choice choice = Open_Print_Choice(design);
    EXPECT_EQ(choice.step, 7);
    EXPECT_EQ(Print_Steps(choice), (std::vector<int>{1, 2, 4, 5, 7, 8, 10, 15, 20, 30, 40, 45, 60, 80, 90}));
    design.cam.Printstep = 0;
    EXPECT_EQ(Open_Print_Choice(design).step, 1);
}

TEST_F(Print_Forms, the_print_of_a_segment_has_S_V_A_and_J)
{
    const Print_Choice choice = Segment_Print_Choice(design, 3);
    EXPECT_EQ(Picked_Columns(choice), (std::vector<int>{1, 2, 3, 4}));
    const Table_in_Texts table = Print_Table(design, choice);
    EXPECT_EQ(table.rows.front().front(), "170");
    EXPECT_EQ(table.rows.back().front(), "290");
}

// ---- the file

TEST_F(Print_Forms, a_file_has_plain_numbers_between_tabs)
{
    design.identity.File_Name = "c.cam";
    design.identity.User = "Jane";
    design.identity.Design_No = 3;
    EXPECT_EQ(Print_File_Text(design, Of_S(30, 2, 4)),
              "File: c.cam  by Jane\n"
              "Design # 3\n"
              "2026-11-21  12:34:56\n"
              "\n"
              "Angle\tDispl\n"
              "deg\tmm\n"
              "110\t1027.5000\n"
              "140\t1035.0000\n"
              "170\t1042.5000\n"
              "Min\t1027.5000\n"
              "Max\t1042.5000\n");
    design.identity.Number_Format = "Europe";
    EXPECT_NE(Print_File_Text(design, Of_S(30, 2, 1)).find("140\t1035,0\n"), std::string::npos);
    EXPECT_NE(Print_File_Text(design, Of_S(30, 2, Print_Exponent)).find("140\t1,035E+03\n"), std::string::npos);
}

TEST_F(Print_Forms, the_file_is_that_of_the_save_dialog)
{
    const std::string path = ::testing::TempDir() + "print_form_table.txt";
    script_.path = path;
    EXPECT_TRUE(Print_to_File(design, Of_S(90)));
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    EXPECT_EQ(content.str(), Print_File_Text(design, Of_S(90)));
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs.front().title, "Save the table");
    EXPECT_TRUE(script_.dialogs.front().overwrite_prompt);
    std::filesystem::remove(path);
}

TEST_F(Print_Forms, a_dialog_called_off_writes_nothing)
{
    EXPECT_FALSE(Print_to_File(design, Of_S(90)));
}

TEST_F(Print_Forms, a_file_that_cannot_be_written_is_reported)
{
    script_.path = "/no/such/folder/table.txt";
    script_.Expect(
        {"Error 53   (File not found)  has occurred in Print_to_File\n"
         "There are no files with your chosen name in the selected directory"});
    EXPECT_FALSE(Print_to_File(design, Of_S(90)));
}

TEST(Print_Note, of_a_moving_picture_has_its_text)
{
    EXPECT_EQ(Picture_Print_Note(),
              "Note: The image on this screen may not print correctly on some printers.\n"
              "If this occurs, you can still get a printout of the screen by copying it to the clipboard");
}

}  // namespace
}  // namespace lobemax
