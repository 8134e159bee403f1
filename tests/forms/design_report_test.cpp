// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/design_report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "edit/rungs.h"
#include "files/example_designs.h"
#include "forms/departure_notes.h"
#include "forms/linkage_notes.h"
#include "motion/fourier.h"
#include "motion/segments.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;
using Texts = std::vector<std::string>;

/// The reports of designs that are built in closed form or by the examples.
class Design_Reports : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }

    static Design_Report Made() { return Make_Design_Report(design); }
    static Texts Titles(const Design_Report& report)
    {
        Texts titles;
        for (const Report_Part& part : report.parts)
            titles.push_back(part.title);
        return titles;
    }
    static const Report_Part& Part(const Design_Report& report, const std::string& title)
    {
        const auto found = std::ranges::find(report.parts, title, &Report_Part::title);
        if (found == report.parts.end())
            throw std::out_of_range("no part " + title);
        return *found;
    }
    static Texts Row(const Report_Part& part, const std::string& caption)
    {
        for (const Texts& row : part.table.rows)
            if (row.front() == caption)
                return row;
        return {};
    }

    Script script_;
    Flags_Group& f_ = design.flags;
};

TEST_F(Design_Reports, a_motion_in_closed_form_gives_its_golden_text)
{
    // A dwell over the whole cycle at 5 mm: every figure of it is known without a calculation.
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Motion_Group& m = design.motion;
    m.No_of_segments = 1;
    Pick_Motion(design, 1, 'D');
    Pick_Program(design, 1, "DW");
    m.Beta_Deg(1) = 360.0;
    m.Beta_Rad(1) = PI2;
    m.Start_Value(1) = m.End_Value(1) = "5";
    Update_Segment_Angles(design);
    Set_Shaft_Speed(design, PI2 * 2);  // 120 rpm
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    design.identity.File_Name = "/cams/dwell.cam";
    design.identity.Model_Name = "dwell";
    design.identity.User = "Jane";
    design.identity.Design_No = 4;
    EXPECT_EQ(Report_Text(Made()),
              "Cam design report\n"
              "=================\n"
              "File: dwell.cam  by Jane\n"
              "Design # 4\n"
              "2026-11-21  12:34:56\n"
              "\n"
              "Design\n"
              "------\n"
              "Model                    dwell\n"
              "Units                mm-kg-N-s\n"
              "Derivatives per         second\n"
              "Cam speed              12.5664  rad/sec\n"
              "                           120  rpm\n"
              "Cam rotates                 Cw\n"
              "Step of the tables           1  deg\n"
              "Points of the cycle        361\n"
              "Lift                         0  mm\n"
              "\n"
              "Segments\n"
              "--------\n"
              "No  Motion  Program     Start deg  End deg  Beta deg  From mm  To mm\n"
              " 1  Dwell   DW - Dwell          0      360       360        5      5\n"
              "\n"
              "Continuity\n"
              "----------\n"
              "The segments meet within rounding.\n"
              "S: largest jump 0.000 000 mm, 0.000 0 % of the maximum\n"
              "V: largest jump 0.000 000 mm/sec, 0.000 0 % of the maximum\n"
              "A: largest jump 0.000 000 mm/sec^2, 0.000 0 % of the maximum\n"
              "\n"
              "Extremes of the calculated rows\n"
              "-------------------------------\n"
              "Variable   Unit      Smallest  at deg  Largest  at deg\n"
              "Displcmnt  mm               5       0        5       0\n"
              "Velocity   mm/sec           0       0        0       0\n"
              "Accel      mm/sec^2         0       0        0       0\n"
              "Jerk *E3   mm/sec^3         0       0        0       0\n"
              "Ping *E3   mm/sec^4         0       0        0       0\n"
              "Jerk and ping stand in thousands (E3).\n");
}

TEST_F(Design_Reports, extremes_stand_with_the_first_angle_where_they_are_reached)
{
    testing::Cam_Maker{}.Make();  // 20 mm by the 4-5-6-7 polynomial in 110 degrees
    for (int p = 0; p <= 360; ++p)
        design.results.CalcData(var::V, p) = p == 40 || p == 50 ? 123.4567 : p == 200 ? -1234567.0 : 0.0;
    const Design_Report report = Made();
    EXPECT_EQ(Row(Part(report, "Extremes of the calculated rows"), "Velocity"),
              (Texts{"Velocity", "mm/sec", "-1234570", "200", "123.457", "40"}));
    EXPECT_EQ(Row(Part(report, "Extremes of the calculated rows"), "Displcmnt"),
              (Texts{"Displcmnt", "mm", "0", "0", "20", "110"}));
}

TEST_F(Design_Reports, grow_with_the_ladder)
{
    testing::Cam_Maker{}.Make();
    EXPECT_EQ(Titles(Made()), (Texts{"Design", "Segments", "Continuity", "Extremes of the calculated rows"}));
    ASSERT_TRUE(Run_Size(design));
    EXPECT_EQ(Titles(Made()), (Texts{"Design", "Segments", "Continuity", "Cam and follower",
                                     "Pressure angle and curvature", "Extremes of the calculated rows"}));
    design.dynamics.Preload = 1e6;
    ASSERT_TRUE(Run_Forces(design));
    Texts titles = Titles(Made());
    ASSERT_EQ(titles.size(), 9U);
    EXPECT_EQ(titles[6], "Force and torque");
    EXPECT_EQ(titles[7], "Figures for the drive");
    EXPECT_EQ(titles[8], "Areas of camshaft torque");
    Put_Materials(design);
    design.dynamics.Roller_length = 10.0;
    Contact_Field refused{};
    ASSERT_TRUE(Run_Stress(design, refused));
    EXPECT_EQ(Titles(Made()).back(), "Contact stress");
    f_.Calculated = false;
    const Design_Report without = Made();
    EXPECT_EQ(Part(without, "Design").notes, Texts{"Nothing is calculated yet."});
}

TEST_F(Design_Reports, what_the_drive_has_to_give_stands_in_the_units_of_the_design_and_si)
{
    testing::Cam_Maker{}.Make();
    ASSERT_TRUE(Run_Size(design));
    f_.Dynamicflag = true;
    for (int p = 0; p <= 360; ++p)
        design.results.CalcData(var::Torque, p) = 3.0;
    const Design_Report metric = Made();
    const Report_Part& drive = Part(metric, "Figures for the drive");
    EXPECT_EQ(Row(drive, "Mean torque"), (Texts{"Mean torque", "N-m", "3", "3"}));
    EXPECT_EQ(Row(drive, "Mean power"), (Texts{"Mean power", "W", "36", "36"}));
    EXPECT_EQ(Row(drive, "Energy swing"), (Texts{"Energy swing", "J", "0", "0"}));
    design.dynamics.Coeff_of_Fluctuation = 0.05;
    EXPECT_EQ(Row(Part(Made(), "Figures for the drive"), "Flywheel"), (Texts{"Flywheel", "kg-m^2", "0", "0"}));
    EXPECT_NE(Report_Text(metric).find("in mm-N they are 1000 times as many."), std::string::npos);
    design.identity.WhichUnit = 1;
    Set_Units(design);
    const Design_Report inches = Made();
    const Report_Table& table = Part(inches, "Figures for the drive").table;
    EXPECT_EQ(table.rows.at(0), (Texts{"Mean torque", "in-lb", "3", "3"}));
    EXPECT_EQ(table.rows.at(1), (Texts{"", "N-m", "0.338954", "0.338954"}));
    design.flags.Units_Changed = true;
    EXPECT_EQ(std::ranges::count(Titles(Made()), "Figures for the drive"), 0);
}

TEST_F(Design_Reports, a_report_leaves_the_design_as_it_was)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    design.results.CalcData(var::Flywheel_Torque, 10) = 77.0;
    design.motion.Continuous = false;
    Made();
    EXPECT_EQ(design.results.CalcData(var::Flywheel_Torque, 10), 77.0);
    EXPECT_FALSE(design.motion.Continuous);
}

TEST_F(Design_Reports, forces_and_pulses_are_those_of_the_rows)
{
    testing::Cam_Maker{}.Make();
    ASSERT_TRUE(Run_Size(design));
    f_.Dynamicflag = true;
    // A torque of +2 over the first half of the cycle and -2 over the second: one pulse of each sign, 2 pi mm-N rad.
    for (int p = 0; p <= 360; ++p) {
        design.results.CalcData(var::Torque, p) = p < 180 ? 2.0 : -2.0;
        design.results.CalcData(var::Force, p) = p == 90 ? 40.0 : 30.0;
    }
    const Design_Report report = Made();
    const Report_Part& forces = Part(report, "Force and torque");
    EXPECT_EQ(Row(forces, "Largest force"), (Texts{"Largest force", "40", "N"}));
    EXPECT_EQ(Row(forces, "Smallest force"), (Texts{"Smallest force", "30", "N"}));
    EXPECT_EQ(Row(forces, "Largest torque"), (Texts{"Largest torque", "2", "mm-N"}));
    EXPECT_EQ(Row(forces, "Smallest torque"), (Texts{"Smallest torque", "-2", "mm-N"}));
    const Report_Part& pulses = Part(report, "Areas of camshaft torque");
    ASSERT_FALSE(pulses.table.rows.empty());
    const Texts& first = pulses.table.rows[0];
    constexpr double step = 4.0;  // of 2 mm-N over a point at either end, mm-N-deg
    EXPECT_NEAR(std::stod(first.at(1)), 360.0, step);
    EXPECT_NEAR(std::stod(first.at(2)), -360.0, step);
    EXPECT_NEAR(std::stod(first.at(3)), 2 * 3.14159265, step * 0.0174533);
    EXPECT_NEAR(std::stod(first.at(4)), -2 * 3.14159265, step * 0.0174533);
    EXPECT_EQ(pulses.table.columns[1].head, "Positive mm-N-deg");
    EXPECT_EQ(pulses.table.columns[4].head, "Negative mm-N");
}

TEST_F(Design_Reports, stresses_are_the_largest_in_magnitude)
{
    testing::Cam_Maker{}.Make();
    f_.Stressflag = true;
    for (int p = 0; p <= 360; ++p) {
        design.results.CalcData(var::Sigma_Max, p) = p == 10 ? -800.0 : -20.0;
        design.results.CalcData(var::Tau_Max, p) = p == 11 ? 250.0 : 0.0;
    }
    design.dynamics.Youngs_modulus(1) = 207000.0;
    design.dynamics.Roller_type = 2;
    design.dynamics.Crown_radius = 500.0;
    const Design_Report report = Made();
    const Report_Part& part = Part(report, "Contact stress");
    EXPECT_EQ(Row(part, "Young's modulus of the cam").at(1), "207000");
    EXPECT_EQ(Row(part, "Crown radius"), (Texts{"Crown radius", "500", "mm"}));
    EXPECT_EQ(Row(part, "Largest normal stress").at(1), "800");
    EXPECT_EQ(Row(part, "Largest shear stress").at(1), "250");
}

TEST_F(Design_Reports, a_polynomial_and_a_spline_have_their_tables)
{
    testing::Cam_Maker{}.Make();
    Motion_Group& m = design.motion;
    m.Rise_Fall_Dwell(1) = "P";
    m.Rise_Fall_Dwell(3) = "S";
    m.Total_No_of_BCs(1) = m.Total_No_of_BCs(3) = 2;
    m.Coefficient(2, 1) = 20.0;
    m.Thetanorm(2, 1) = 1.0;
    m.Boundary(2, 1) = 20.0;
    m.Orders(3) = 4;
    m.Number_of_Knots(3) = 3;
    m.Knots(2, 3) = 60.0;
    m.Knots(3, 3) = 120.0;
    const Design_Report report = Made();
    EXPECT_EQ(Part(report, "Segment 1, polynomial: boundary conditions imposed").table.rows,
              (std::vector<Texts>{{"S", "0", "0", "0"}, {"S", "110", "100", "20"}}));
    EXPECT_EQ(Part(report, "Segment 1, polynomial: equation coefficients resulting").table.rows,
              (std::vector<Texts>{{"0", "0"}, {"1", "20"}}));
    EXPECT_EQ(Part(report, "Segment 3, spline of order 4: knots").table.rows,
              (std::vector<Texts>{{"1", "0"}, {"2", "60"}, {"3", "120"}}));
    EXPECT_EQ(Part(report, "Segments").table.rows[0][1], "Polynomial");
}

TEST_F(Design_Reports, a_vibration_has_its_model_and_the_notes_of_the_screen)
{
    testing::Cam_Maker{}.Make();
    f_.Modelflag = true;
    design.dynamics.Model_Type = 4;
    design.dynamics.Mass_m(1) = 1.5;
    design.dynamics.Mass_m(2) = 2.5;
    design.dynamics.Kspring(1) = 6e5;
    design.dynamics.Kspring(2) = 1e6;
    for (int p = 0; p <= 360; ++p)
        design.results.CalcData(var::Dynamic_Force, p) = p == 77 ? 321.0 : 100.0;
    const Design_Report report = Made();
    const Report_Part& part = Part(report, "Vibration");
    EXPECT_EQ(Row(part, "Model").at(1), "4");
    EXPECT_EQ(Row(part, "Mass"), (Texts{"Mass", "1.5", "kg"}));
    EXPECT_EQ(Row(part, "  second"), (Texts{"  second", "2.5", "kg"}));
    EXPECT_EQ(Row(part, "Largest dynamic force"), (Texts{"Largest dynamic force", "321", "N"}));
    EXPECT_EQ(Row(part, "Smallest dynamic force"), (Texts{"Smallest dynamic force", "100", "N"}));
    EXPECT_GT(std::stod(Row(part, "Natural frequency").at(1)), 0.0) << "worked out again where a file lost it";
    EXPECT_EQ(part.notes, Notes_of_Vibration(design));
}

TEST_F(Design_Reports, a_linkage_has_its_links_and_the_notes_of_the_screen)
{
    ASSERT_TRUE(Open_Example(design, "4-bar Linkage"));
    ASSERT_TRUE(Run_Linkage(design));
    const Design_Report report = Made();
    const Report_Part& part = Part(report, "Linkage");
    EXPECT_EQ(Row(part, "Linkage").at(1), "fourbar");
    EXPECT_EQ(Row(part, "Link 2").at(2), "mm");
    EXPECT_EQ(part.notes, Linkage_Notes(design));
    EXPECT_EQ(Row(Part(report, "Cam and follower"), "Follower").at(1), "oscillating, roller");
}

TEST_F(Design_Reports, a_transform_has_a_row_for_each_harmonic)
{
    testing::Cam_Maker{}.Make();
    ASSERT_TRUE(Do_DFT(design, var::S, 0, 360, 4));
    f_.FFT_Done = true;
    const Design_Report report = Made();
    const Report_Part& part = Part(report, "Fourier transform of Displcmnt");
    ASSERT_EQ(part.table.rows.size(), 4U);
    EXPECT_EQ(part.table.columns[3].head, "Magnitude mm");
}

TEST_F(Design_Reports, an_imported_motion_has_no_conditions_and_no_joints)
{
    testing::Cam_Maker{}.Make();
    f_.Imported_Model = true;
    const Design_Report report = Made();
    EXPECT_EQ(Titles(report), (Texts{"Design", "Segments", "Extremes of the calculated rows"}));
    EXPECT_EQ(Part(report, "Segments").notes.size(), 1U);
}

TEST_F(Design_Reports, numbers_follow_the_format_in_force)
{
    testing::Cam_Maker{}.Make();
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Row(Part(Made(), "Design"), "").at(1), "114,592");  // 12 rad/s
}

}  // namespace
}  // namespace lobemax
