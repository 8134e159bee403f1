// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/finding_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/ladder.h"
#include "core/startup.h"
#include "tests/support/cam_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using Lines = std::vector<std::string>;

class Finding_Words : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static Finding Undercut()
    {
        Finding f;
        f.code = "undercut";
        f.name = "Undercut";
        f.severity = Severity::do_not_cut;
        f.row = 43.656;
        f.truth = 42.0970049;
        f.limit = 43.0;
        f.unit = "mm";
        f.angle = 221.25;
        f.segment = 4;
        f.stretch = {{220.0, 223.5}};
        f.sentence = "The surface crosses itself.";
        f.advice = "Take a smaller roller.";
        return f;
    }
    static Finding Beyond()
    {
        Finding f;
        f.name = "Pressure angle";
        f.severity = Severity::warning;
        f.beyond_limit = true;
        f.sentence = "It is 31 deg.";
        f.angle = 124.0;
        return f;
    }
    static Finding Note_of_Torque()
    {
        Finding f;
        f.name = "Unit of torque";
        f.place = Finding_Place::forces;
        f.sentence = "Torques are in N-m.";
        return f;
    }
    static Check Found(std::vector<Finding> findings)
    {
        Check check;
        check.findings = std::move(findings);
        return check;
    }
};

TEST_F(Finding_Words, a_finding_is_told_on_one_line)
{
    EXPECT_EQ(Line_of(design, Undercut()),
              "Do not cut: Undercut at 221.25 deg, segment 4: The surface crosses itself.");
    EXPECT_EQ(Line_of(design, Beyond()), "Beyond a limit: Pressure angle at 124 deg: It is 31 deg.");
    EXPECT_EQ(Line_of(design, Note_of_Torque()), "Note: Unit of torque: Torques are in N-m.");
    Finding plain = Beyond();
    plain.beyond_limit = false;
    plain.angle.reset();
    plain.segment = 2;
    EXPECT_EQ(Line_of(design, plain), "Warning: Pressure angle in segment 2: It is 31 deg.");
    Finding worst = Undercut();
    worst.beyond_limit = true;
    EXPECT_TRUE(Line_of(design, worst).starts_with("Do not cut: "));
}

TEST_F(Finding_Words, at_length_it_has_what_it_has_a_line_each)
{
    EXPECT_EQ(Lines_of(design, Undercut()),
              (Lines{"Do not cut: Undercut at 221.25 deg, segment 4", "The surface crosses itself.",
                     "Row 43.656 mm, true 42.097 mm, limit 43 mm", "From 220 to 223.5 deg", "Take a smaller roller."}));
    EXPECT_EQ(Lines_of(design, Note_of_Torque()), (Lines{"Note: Unit of torque", "Torques are in N-m."}));
}

TEST_F(Finding_Words, figures_have_five_digits_and_the_number_format)
{
    EXPECT_EQ(Figure_Text(design, 0.0971234, "mm"), "0.097123 mm");
    EXPECT_EQ(Figure_Text(design, -12345678.0, "deg/sec^3"), "-12346000 deg/sec^3");
    EXPECT_EQ(Figure_Text(design, 0.0, "mm"), "0 mm");
    EXPECT_EQ(Figure_Text(design, 1.5, ""), "1.5");
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Figure_Text(design, infinite, "mm"), "infinite");
    EXPECT_EQ(Figure_Text(design, -1e200, "mm"), "-infinite");
    EXPECT_EQ(Figure_Text(design, std::nan(""), "mm"), "none");
    EXPECT_EQ(Figure_Text(design, 1e-300, "mm"), "0 mm") << "less than a stored number has";
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Figures_of(design, Undercut()), "Row 43,656 mm, true 42,097 mm, limit 43 mm");
    EXPECT_EQ(Where_of(design, Undercut()), "at 221,25 deg, segment 4");
}

TEST_F(Finding_Words, figures_that_there_are_none_of_are_left_out)
{
    Finding f = Undercut();
    f.row.reset();
    EXPECT_EQ(Figures_of(design, f), "True 42.097 mm, limit 43 mm");
    f.truth.reset();
    EXPECT_EQ(Figures_of(design, f), "Limit 43 mm");
    f.limit.reset();
    EXPECT_EQ(Figures_of(design, f), "");
}

TEST_F(Finding_Words, stretches_are_listed_with_an_end)
{
    Finding f;
    EXPECT_EQ(Stretches_of(design, f), "");
    f.stretch = {{350.0, 12.0}};
    EXPECT_EQ(Stretches_of(design, f), "350 to 12 deg");
    f.stretch = {{10.0, 20.5}, {30.0, 30.0}};
    EXPECT_EQ(Stretches_of(design, f), "10 to 20.5 deg and 30 deg");
    f.stretch.assign(9, {1.0, 2.0});
    EXPECT_EQ(Stretches_of(design, f),
              "1 to 2 deg, 1 to 2 deg, 1 to 2 deg, 1 to 2 deg, 1 to 2 deg, 1 to 2 deg and 3 more");
}

TEST_F(Finding_Words, a_mark_has_the_worst_of_its_screen)
{
    const Check check = Found({Undercut(), Beyond(), Note_of_Torque()});
    EXPECT_EQ(Mark_Text(design, check, Finding_Place::size), Line_of(design, Undercut()));
    EXPECT_EQ(Mark_Text(design, check, Finding_Place::forces), Line_of(design, Note_of_Torque()));
    EXPECT_EQ(Mark_Text(design, check, Finding_Place::stress), No_Findings);
    EXPECT_EQ(Mark_Text(design, check), Line_of(design, Undercut()));
    EXPECT_EQ(Mark_Text(design, Found({})), No_Findings);
}

TEST_F(Finding_Words, findings_are_counted)
{
    EXPECT_EQ(Count_of_Findings(Found({})), "No findings");
    EXPECT_EQ(Count_of_Findings(Found({Note_of_Torque(), Note_of_Torque()})), "2 notes");
    EXPECT_EQ(Count_of_Findings(Found({Undercut(), Beyond(), Note_of_Torque()})),
              "1 do not cut, 1 warning, 1 note; 1 beyond a limit");
}

TEST_F(Finding_Words, an_export_asks_where_the_surface_must_not_be_cut)
{
    EXPECT_EQ(Export_Question(design, Found({Beyond(), Note_of_Torque()})), "");
    EXPECT_EQ(Export_Question(design, Found({Undercut(), Beyond()})),
              "This cam should not be cut from the surface that the program has calculated.\n"
              "Do not cut: Undercut at 221.25 deg, segment 4: The surface crosses itself.\n"
              "Export it all the same?");
}

TEST_F(Finding_Words, each_place_is_named_as_its_button)
{
    EXPECT_EQ(Screen_of(Finding_Place::motion), "Input");
    EXPECT_EQ(Screen_of(Finding_Place::size), "Size Cam");
    EXPECT_EQ(Screen_of(Finding_Place::forces), "Dynamics");
    EXPECT_EQ(Screen_of(Finding_Place::stress), "Stress");
}

TEST_F(Finding_Words, what_is_not_calculated_is_told_as_not_checked)
{
    EXPECT_EQ(Not_Checked(design), (Lines{"The motion is not calculated: nothing could be checked."}));
    testing::Cam_Maker{}.Make();
    EXPECT_EQ(Not_Checked(design),
              (Lines{"The cam is not sized: surface, pressure angle and curvature were not checked.",
                     "The forces are not calculated: contact force and torque were not checked.",
                     "The stresses are not calculated: they were not checked."}));
    for (const Mark mark : {Mark::size, Mark::forces})
        Reach(design, mark);
    EXPECT_EQ(Not_Checked(design), (Lines{"The stresses are not calculated: they were not checked."}));
    Reach(design, Mark::stress);
    EXPECT_EQ(Not_Checked(design), Lines{});
}

}  // namespace
}  // namespace lobemax
