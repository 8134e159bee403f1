// SPDX-License-Identifier: GPL-3.0-or-later
/// The report of a design on the command line.
#include <gtest/gtest.h>

#include <string>

#include "tests/cli/cli_folder.h"

namespace lobemax {
namespace {

using testing::Result;

class Report_Cli : public testing::Cli_Folder {
protected:
    Result Report(const std::string& in, const std::string& out) const
    {
        return Run("report " + in + " -o " + out + " " + stamps);
    }
    /// Pages of a PDF file: each has its own object.
    static int Pages(const std::string& pdf)
    {
        int pages = 0;
        for (std::size_t at = 0; (at = pdf.find("/Type /Page\n", at)) != std::string::npos; ++at)
            ++pages;
        return pages;
    }
    static bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(Report_Cli, a_motion_gives_its_text)
{
    Make_Calculated("c.cam");
    const Result result = Report("c.cam", "c.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    const std::string text = Content("c.txt");
    EXPECT_EQ(text.substr(0, text.find("Continuity\n")),
              "Cam design report\n"
              "=================\n"
              "File: c.cam  by\n"
              "Design # 2\n"
              "2026-11-21  12:00:00\n"
              "\n"
              "Design\n"
              "------\n"
              "Model                        c\n"
              "Units                mm-kg-N-s\n"
              "Derivatives per         second\n"
              "Cam speed              12.5664  rad/sec\n"
              "                           120  rpm\n"
              "Cam rotates                 Cw\n"
              "Step of the tables           1  deg\n"
              "Points of the cycle        361\n"
              "Lift                        25  mm\n"
              "\n"
              "Segments\n"
              "--------\n"
              "No  Motion  Program            Start deg  End deg  Beta deg  From mm  To mm\n"
              " 1  Rise    MS - Mod Sine              0       90        90        0     25\n"
              " 2  Dwell   DW - Dwell                90      180        90       25     25\n"
              " 3  Fall    CF - Cycloid Full        180      270        90       25      0\n"
              " 4  Dwell   DW - Dwell               270      360        90        0      0\n"
              "\n");
    // The cycloid's largest velocity is 2 h omega / beta at its middle: 2 x 25 x 12.56637 / (pi / 2) = 400.
    EXPECT_TRUE(Holds(text, "-400     225")) << text;
    EXPECT_FALSE(Holds(text, "Cam and follower")) << "it is not sized";
}

TEST_F(Report_Cli, the_whole_ladder_stands_in_the_text)
{
    Make_Calculated("c.cam");
    ASSERT_EQ(Run("calc c.cam -o d.cam " + stamps +
                  "--set Preload=100000 --set Prime_Rad=100 --set 'Roller length=10' --levels "
                  "size,dynamics,vibration,stress")
                  .status,
              0);
    ASSERT_EQ(Report("d.cam", "d.txt").status, 0);
    const std::string text = Content("d.txt");
    for (const char* const part :
         {"Cam and follower\n", "Pressure angle and curvature\n", "Force and torque\n", "Areas of camshaft torque\n",
          "Contact stress\n", "Vibration\n", "Maximum pressure angle = ", "\nPrime radius ", "\nForce-Dyn "})
        EXPECT_TRUE(Holds(text, part)) << part;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 100U) << line;
        EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
    }
}

TEST_F(Report_Cli, a_polynomial_has_its_conditions_and_coefficients)
{
    ASSERT_EQ(Run("new -o p.cam --rpm 60 " + stamps +
                  "'P PO 180 0 10' 'D DW 180 0 0' --bc '1 0 0 0' --bc '1 0 1 0' --bc '1 180 0 10' --bc '1 180 1 0'")
                  .status,
              0);
    ASSERT_EQ(Run("calc p.cam -o q.cam --levels svaj " + stamps).status, 0);
    ASSERT_EQ(Report("q.cam", "q.txt").status, 0);
    // S = 10 (3 x^2 - 2 x^3)
    EXPECT_TRUE(Holds(Content("q.txt"),
                      "Exponent  Coefficient\n       0            0\n       1            0\n       2           30\n"
                      "       3          -20\n"))
        << Content("q.txt");
}

TEST_F(Report_Cli, numbers_have_a_point_whatever_the_format_of_the_model)
{
    Make_Calculated("c.cam");
    ASSERT_EQ(Run("calc c.cam -o e.cam --levels size " + stamps + "--set Number_Format=Europe").status, 0);
    ASSERT_EQ(Report("e.cam", "e.txt").status, 0);
    EXPECT_TRUE(Holds(Content("e.txt"), "12.5664"));
    EXPECT_FALSE(Holds(Content("e.txt"), "12,5664"));
}

TEST_F(Report_Cli, a_pdf_has_the_pages_and_the_same_bytes_each_time)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o c.cam " + stamps).status, 0);
    ASSERT_EQ(Report("c.cam", "c.pdf").status, 0);
    ASSERT_EQ(Report("c.cam", "again.pdf").status, 0);
    const std::string pdf = Content("c.pdf");
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_EQ(Pages(pdf), 6) << "three of words and tables, two of plots, a drawing";
    EXPECT_EQ(pdf, Content("again.pdf"));
}

TEST_F(Report_Cli, a_barrel_cam_has_no_drawing)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o c.cam " + stamps).status, 0);
    ASSERT_EQ(Run("calc c.cam -o b.cam --levels size " + stamps + "--set Camtype$=Barrel").status, 0);
    ASSERT_EQ(Report("b.cam", "b.pdf").status, 0);
    ASSERT_EQ(Report("c.cam", "c.pdf").status, 0);
    EXPECT_LT(Pages(Content("b.pdf")), Pages(Content("c.pdf")));
}

TEST_F(Report_Cli, a_linkage_is_worked_out_for_its_report)
{
    ASSERT_EQ(Run("example '6-bar Slider' -o l.cam " + stamps).status, 0);
    const Result result = Report("l.cam", "l.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Holds(Content("l.txt"), "Linkage\n-------\n")) << Content("l.txt");
    EXPECT_TRUE(Holds(Content("l.txt"), "sixbar with slider"));
    EXPECT_TRUE(Holds(Content("l.txt"), "End effector, link 6: "));
    ASSERT_EQ(Report("l.cam", "l.pdf").status, 0);
}

TEST_F(Report_Cli, what_is_wrong_is_told_and_an_older_file_stays)
{
    Make_Calculated("c.cam");
    const Result name = Report("c.cam", "c.doc");
    EXPECT_EQ(name.status, 2);
    EXPECT_EQ(name.err, "lobemax-cli: -o: the report's name must end in .txt or .pdf\n");
    EXPECT_FALSE(Exists("c.doc"));
    EXPECT_EQ(Report("c.cam", "").status, 2);
    EXPECT_EQ(Report("none.cam", "c.txt").status, 2);
    EXPECT_EQ(Run("report c.cam").status, 2);
    for (const char* const path : {"no/folder.txt", "no/folder.pdf"}) {
        const Result result = Report("c.cam", path);
        EXPECT_EQ(result.status, 1) << path;
        EXPECT_NE(result.err, "") << path;
    }
    Write("bad.cam", "no model");
    Write("old.txt", "older");
    EXPECT_EQ(Report("bad.cam", "old.txt").status, 2);
    EXPECT_EQ(Content("old.txt"), "older");
}

TEST_F(Report_Cli, a_design_that_is_not_calculated_says_so)
{
    ASSERT_EQ(Run("new -o n.cam " + stamps + segments).status, 0);
    ASSERT_EQ(Report("n.cam", "n.txt").status, 0);
    EXPECT_TRUE(Holds(Content("n.txt"), "Nothing is calculated yet.\n"));
    ASSERT_EQ(Report("n.cam", "n.pdf").status, 0);
    EXPECT_EQ(Pages(Content("n.pdf")), 1);
}

}  // namespace
}  // namespace lobemax
