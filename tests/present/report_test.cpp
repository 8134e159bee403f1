// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/report.h"

#include <gtest/gtest.h>

#include "motion/segments.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

class Reports : public ::testing::Test {
protected:
    void SetUp() override { testing::Cam_Maker{}.Make(); }
    void TearDown() override { design = {}; }

    Motion_Group& m_ = design.motion;
    Cam_Group& c_ = design.cam;
};

TEST_F(Reports, a_print_is_identified_by_file_user_design_number_date_and_time)
{
    const Script script;
    design.identity.File_Name = "/home/jane/cams/press.cam";
    design.identity.User = "Jane";
    design.identity.Design_No = 7;
    EXPECT_EQ(Namedate_Print(design),
              (Report_Lines{"File: press.cam  by Jane", "Design # 7", "2026-11-21  12:34:56", ""}));
}

TEST_F(Reports, a_design_without_a_file_is_identified_by_its_name)
{
    const Script script;
    design.identity.File_Name = "";
    design.identity.Model_Name = "Model1";
    design.identity.User = "";
    EXPECT_EQ(Namedate_Print(design).front(), "File: Model1  by");
}

TEST_F(Reports, each_segment_has_its_start_beta_and_end)
{
    EXPECT_EQ(Print_Segment_Data(design), (Report_Lines{
                                              "Segment 1  Start Angle 0 deg    Beta 110 deg  End angle 110 deg",
                                              "Segment 2  Start Angle 110 deg  Beta 60 deg   End angle 170 deg",
                                              "Segment 3  Start Angle 170 deg  Beta 120 deg  End angle 290 deg",
                                              "Segment 4  Start Angle 290 deg  Beta 70 deg   End angle 360 deg",
                                          }));
}

TEST_F(Reports, pressure_angle_and_curvature_are_told_with_their_angles)
{
    EXPECT_TRUE(PrintPressMax(design).empty()) << "the cam is not sized";
    design.flags.Sized = true;
    c_.Phi_Max = 23.456;
    c_.Phi_Max_Angle = 41.0;
    c_.Phi_Min = -17.0;
    c_.Phi_Min_Angle = 200.5;
    c_.Rho_Min_Pos = 31.247;
    c_.Rho_Min_Pos_Angle = 60.125;
    c_.Rho_Min_Pos_Text = "31.25";
    c_.Rho_Max_Pos = 1e12;
    c_.Rho_Max_Pos_Angle = 90.0;
    c_.Rho_Max_Pos_Text = "+ Infinity";
    c_.Rho_Min_Neg_Text = "None";
    c_.Rho_Max_Neg = -1234.56;
    c_.Rho_Max_Neg_Angle = 10.0;
    c_.Rho_Max_Neg_Text = "-1234.6";
    EXPECT_EQ(PrintPressMax(design), (Report_Lines{
                                         "Maximum pressure angle = 23.46 deg @ cam angle 41 deg",
                                         "Minimum pressure angle = -17.00 deg @ cam angle 200.50 deg",
                                         "Smallest positive radius of curvature = 31.25 mm @ cam angle 60.125 deg",
                                         "Largest positive radius of curvature = + Infinity @ cam angle 90 deg",
                                         "Smallest negative radius of curvature = None",
                                         "Largest negative radius of curvature = -1,234.6 mm @ cam angle 10 deg",
                                     }));
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(PrintPressMax(design).front(), "Maximum pressure angle = 23,46 deg @ cam angle 41 deg");
}

/// S = 25 (10 x^3 - 15 x^4 + 6 x^5): the polynomial of no velocity and acceleration at either end.
void Lay_345()
{
    Motion_Group& m = design.motion;
    m.Rise_Fall_Dwell(1) = "P";
    m.Beta_Deg(1) = 90.0;
    m.Total_No_of_BCs(1) = 6;
    constexpr std::array coefficients{0.0, 0.0, 0.0, 250.0, -375.0, 150.0};
    for (int j = 1; j <= 6; ++j) {
        m.Thetanorm(j, 1) = j <= 3 ? 0.0 : 1.0;
        m.Equation(j, 1) = (j - 1) % 3;
        m.Boundary(j, 1) = j == 4 ? 25.0 : 0.0;
        m.Coefficient(j, 1) = coefficients[static_cast<std::size_t>(j - 1)];
    }
}

TEST_F(Reports, the_table_of_a_polynomial_stands_under_the_headings_of_the_form)
{
    Lay_345();
    EXPECT_EQ(Joined(Polytable_Form(design, 1)),
              "   Boundary Conditions Imposed\n"
              "Function    Theta  % Beta  Boundary Cond.\n"
              "S               0       0               0\n"
              "V               0       0               0\n"
              "A               0       0               0\n"
              "S              90     100              25\n"
              "V              90     100               0\n"
              "A              90     100               0\n"
              "\n"
              "      Equation Resulting\n"
              "Exponent  Coefficient\n"
              "       0            0\n"
              "       1            0\n"
              "       2            0\n"
              "       3          250\n"
              "       4         -375\n"
              "       5          150\n");
}

TEST_F(Reports, the_printer_underlines_its_headings)
{
    Lay_345();
    const Report_Lines lines = Polytable_Printer(design, 1);
    EXPECT_EQ(lines.at(0), "   Boundary Conditions Imposed");
    EXPECT_EQ(lines.at(1), "_________________________________");
    EXPECT_EQ(lines.at(10), "      Equation Coefficients Resulting");
    EXPECT_EQ(lines.at(11), "_______________________________________     ");
    EXPECT_EQ(lines.back(), "       5          150");
}

TEST_F(Reports, conditions_of_a_spline_are_those_that_were_typed)
{
    Lay_345();
    m_.Rise_Fall_Dwell(1) = "S";
    for (int j = 1; j <= 6; ++j)
        m_.Theta_Normalized(j, 1) = 0.5;
    m_.Eq(2, 1) = 4;
    const Report_Table table = Condition_Table(design, 1);
    EXPECT_EQ(table.rows.at(1), (std::vector<std::string>{"Ping", "45", "50", "0"}));
}

TEST_F(Reports, continuity_names_the_joint_of_the_largest_jump)
{
    m_.No_of_segments = 2;
    for (int segment = 1; segment <= 2; ++segment)
        for (int end = 1; end <= 2; ++end)
            for (int d = 0; d <= 2; ++d)
                m_.Firstlast(segment, end, d) = 0.0;
    m_.Firstlast(1, 2, 1) = 0.5;  // V leaves segment 1 with 0.5 and enters segment 2 at rest
    auto& data = design.results.CalcData;
    for (int p = 0; p <= 360; ++p)
        data(var::S, p) = data(var::V, p) = data(var::A, p) = 0.0;
    data(var::V, 100) = -2.0;
    EXPECT_EQ(Continuity_Form(design),
              (Report_Lines{
                  "One or more of the segment boundaries is discontinuous.",
                  "S: largest jump 0.000 000 mm, 0.000 0 % of the maximum",
                  "V: largest jump 0.500 000 mm/sec, 25.000 0 % of the maximum, at the end of segment 1",
                  "A: largest jump 0.000 000 mm/sec^2, 0.000 0 % of the maximum",
              }));
    m_.Firstlast(1, 2, 1) = 0.0;
    EXPECT_EQ(Continuity_Form(design).front(), "The segments meet within rounding.");
}

TEST_F(Reports, an_angle_has_the_fewest_decimals_that_show_it)
{
    EXPECT_EQ(Angle_Text(design, 360.0), "360");
    EXPECT_EQ(Angle_Text(design, 0.25), "0.25");
    EXPECT_EQ(Angle_Text(design, 0.5), "0.50");
    EXPECT_EQ(Angle_Text(design, 0.125), "0.125");
    EXPECT_EQ(Angle_Text(design, 100.0 / 3), "33.333");
    for (const auto& [step, picture] :
         {std::pair{1.0, "##0"}, std::pair{0.5, "##0.00"}, std::pair{0.25, "##0.00"}, std::pair{0.125, "##0.000"}}) {
        m_.Deltatheta = step;
        EXPECT_EQ(Angle_Picture(design), picture);
    }
}

TEST(Report_Lines_of_Tables, have_columns_as_wide_as_what_they_hold)
{
    EXPECT_EQ(Table_Lines({{{"Name", true}, {"Value"}}, {{"a", "1"}, {"long one", "-12.5"}, {"\xC3\xA4", ""}}}),
              (Report_Lines{"Name      Value", "a             1", "long one  -12.5", "\xC3\xA4"}));
    EXPECT_EQ(Table_Lines({{{"", true}, {""}}, {{"a", "1"}}}), Report_Lines{"a  1"});
}

TEST(Report_Lines_of_Sentences, are_broken_at_blanks)
{
    EXPECT_EQ(Wrapped("one two three", 8, 2), (Report_Lines{"one two", "  three"}));
    EXPECT_EQ(Wrapped("one", 8, 2), Report_Lines{"one"});
    EXPECT_EQ(Wrapped("averylongword x", 5, 2), (Report_Lines{"averylongword", "  x"}));
}

}  // namespace
}  // namespace lobemax
