// SPDX-License-Identifier: GPL-3.0-or-later
/// Linkages on the command line: their levels, results, exports, drawings and plots.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

#include "core/text.h"
#include "tests/cli/cli_folder.h"
#include "tests/support/number_in.h"

namespace lobemax {
namespace {

using testing::Number_In;
using testing::Result;

class Linkage_Cli : public testing::Cli_Folder {
protected:
    /// An example, sized, with links that weigh.
    void Make(const std::string& example, const std::string& more = "") const
    {
        ASSERT_EQ(Run("example '" + example + "' -o e.cam " + stamps).status, 0);
        std::string masses;
        for (const char* link : {"2", "3", "4", "5", "6"})
            masses += std::string(" --set 'Mass of link(") + link + ")=0.5' --set 'Inertia of link(" + link +
                      ")=0.002' --set 'CGx of link(" + link + ")=60'";
        const Result result = Run("calc e.cam -o c.cam --levels size " + stamps + masses + more);
        ASSERT_EQ(result.status, 0) << result.err;
    }
    /// No file holds the stiffness of links.
    static std::string Stiffness(double third = 2e6)
    {
        return " --set 'Stiffness of link(2)=2e6' --set 'Stiffness of link(3)=" + Shortest(third) +
               "' --set 'Stiffness of link(4)=2e6'";
    }
    static double Number(const std::string& file, const std::string& field)
    {
        const std::string line = Show(file, "'" + field + "'");
        return Number_In(line.substr(line.find('=') + 1));
    }
    static bool Tells(const Result& result, const std::string& words)
    {
        return result.err.find(words) != std::string::npos;
    }
};

TEST_F(Linkage_Cli, the_level_linkage_tells_the_end_effectors_range)
{
    for (const char* example : {"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"}) {
        Make(example);
        const Result result = Run("calc c.cam -o d.cam --levels linkage " + stamps);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(Tells(result, std::string("lobemax-cli: linkage: End effector, link ") + example[0] + ": "))
            << result.err;
        EXPECT_TRUE(Tells(result, "those of this clockwise arm have the other sign.")) << result.err;
    }
}

TEST_F(Linkage_Cli, a_translating_follower_has_no_linkage)
{
    ASSERT_EQ(Run("example 'Single Dwell' -o e.cam " + stamps).status, 0);
    const Result result = Run("calc e.cam -o d.cam --levels linkage " + stamps);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Tells(result, "This feature requires an oscillating follower.")) << result.err;
    EXPECT_FALSE(Exists("d.cam"));
    const Result driven = Run("calc e.cam -o d.cam --end-effector " + stamps);
    EXPECT_EQ(driven.status, 2);
    EXPECT_TRUE(Tells(driven, "--end-effector: ")) << driven.err;
    EXPECT_EQ(Run("calc e.cam -o d.cam --watt --stephenson " + stamps).status, 2);
    EXPECT_EQ(Run("calc e.cam -o d.cam --stephenson " + stamps).status, 2);
}

TEST_F(Linkage_Cli, results_that_no_file_holds_are_worked_out_where_they_are_shown)
{
    Make("4-bar Linkage");
    // The loop of the vectors closes: A from the pivot, B from O4 and from A.
    const double ArmX = Number("c.cam", "ArmX");
    const double O4x = Number("c.cam", "O4x");
    for (const char* point : {"0", "60", "200"}) {
        const auto at = [&](const char* row, const char* field) {
            return Number("c.cam", std::string(field) + "(" + row + ", " + point + ")");
        };
        EXPECT_NEAR(std::hypot(at("2", "Link_X") - ArmX, at("2", "Link_Y") - Number("c.cam", "ArmY")),
                    Number("c.cam", "Link 2"), 1e-3);
        EXPECT_NEAR(std::hypot(at("3", "Link_X") - O4x, at("3", "Link_Y") - Number("c.cam", "O4y")),
                    Number("c.cam", "Link 4"), 1e-3);
        EXPECT_NEAR(std::hypot(at("3", "Link_X") - at("2", "Link_X"), at("3", "Link_Y") - at("2", "Link_Y")),
                    Number("c.cam", "Link 3"), 1e-3);
    }
    EXPECT_EQ(Show("c.cam", "Linkage_Calc"), "Linkage_Calc = false\n");
    const Result json = Run("show c.cam 'Link_Theta(4, 90)' 'Link_Ratio_S(20)' --json");
    EXPECT_EQ(json.status, 0);
    EXPECT_NE(json.out.find("\"Link_Theta(4, 90)\": 80.467"), std::string::npos) << json.out;
}

TEST_F(Linkage_Cli, the_end_effector_changes_what_the_sizing_rests_on)
{
    Make("4-bar Linkage", " --set 'Link 4=60' --set 'Link 3=175' --set 'Link 4a=60'");
    const double arm = Number("c.cam", "CalcData(9, 45)");
    const Result result = Run("calc c.cam -o d.cam --levels size,linkage --end-effector " + stamps);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Tells(result, "Driven by its ratios, the end effector ")) << result.err;
    EXPECT_EQ(Show("d.cam", "Drive_End_Effector"), "Drive_End_Effector = true\n");
    EXPECT_GT(std::abs(Number("d.cam", "CalcData(9, 45)") - arm), 1e-3);
    // A new motion does not take the choice away; without the option it does, and says so.
    const Result anew = Run("calc c.cam -o n.cam --levels svaj,size,linkage --end-effector " + stamps);
    ASSERT_EQ(anew.status, 0) << anew.err;
    EXPECT_EQ(Show("n.cam", "Drive_End_Effector"), "Drive_End_Effector = true\n");
    EXPECT_EQ(Number("n.cam", "CalcData(9, 45)"), Number("d.cam", "CalcData(9, 45)"));
    const Result given_up = Run("calc d.cam -o g.cam --levels svaj,size " + stamps);
    EXPECT_TRUE(Tells(given_up, "svaj: a new motion is the arm's")) << given_up.err;
    EXPECT_EQ(Show("g.cam", "Drive_End_Effector"), "Drive_End_Effector = false\n");
    EXPECT_EQ(Number("g.cam", "CalcData(9, 45)"), arm);
    // Without its level the size falls.
    ASSERT_EQ(Run("calc c.cam -o f.cam --levels linkage --end-effector " + stamps).status, 0);
    EXPECT_EQ(Show("f.cam", "Sized"), "Sized = false\n");
}

TEST_F(Linkage_Cli, stephenson_is_told_to_each_command)
{
    const std::string links =
        " --set 'Link 4a=90' --set Delta4=35 --set 'Link 5=190' --set 'Link 6=150' --set 'O6x=450'";
    Make("6-bar Linkage");
    const Result result = Run("calc c.cam -o d.cam --levels linkage --stephenson " + stamps + links);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Tells(result, "This file has no place for the choice of Stephenson")) << result.err;
    // D rides 90 from A on the coupler, and the dyad hangs on it.
    const auto point = [&](const char* row, const char* flag) {
        const std::string text =
            Run(std::string("show d.cam 'Link_X(") + row + ", 50)' 'Link_Y(" + row + ", 50)' " + flag).out;
        const std::size_t second = text.find('\n');
        return std::pair{Number_In(text.substr(text.find("= ") + 2)),
                         Number_In(text.substr(text.find("= ", second) + 2))};
    };
    const auto apart = [](std::pair<double, double> a, std::pair<double, double> b) {
        return std::hypot(a.first - b.first, a.second - b.second);
    };
    EXPECT_NEAR(apart(point("0", "--stephenson"), point("2", "--stephenson")), 90.0, 1e-3);
    EXPECT_NEAR(apart(point("0", "--stephenson"), point("5", "--stephenson")), 190.0, 1e-3);
    EXPECT_GT(std::abs(apart(point("0", "--watt"), point("2", "--watt")) - 90.0), 1.0);
    EXPECT_EQ(Run("draw d.cam --stephenson -o s.svg").status, 0);
    EXPECT_EQ(Run("draw d.cam --watt -o w.svg").status, 0);
    EXPECT_NE(Content("s.svg"), Content("w.svg"));
    EXPECT_EQ(Run("draw c.cam --watt -o w.svg").status, 0);
    Make("6-bar Slider");
    EXPECT_EQ(Run("draw c.cam --stephenson -o w.svg").status, 2);
}

TEST_F(Linkage_Cli, a_driven_stephenson_train_that_is_read_keeps_its_size)
{
    Make("6-bar Linkage");
    ASSERT_EQ(Run("calc c.cam -o d.cam --levels size --stephenson --end-effector " + stamps +
                  " --set 'Link 4a=90' --set Delta4=35 --set 'Link 5=190' --set 'Link 6=150'")
                  .status,
              0);
    const Result drawn = Run("draw d.cam --stephenson -o s.svg");
    EXPECT_EQ(drawn.status, 0) << drawn.err;
}

TEST_F(Linkage_Cli, masses_are_told_with_their_units_and_go_into_the_model)
{
    Make("4-bar Linkage");
    const Result result = Run("calc c.cam -o d.cam --levels masses " + stamps + Stiffness());
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Tells(result, "lobemax-cli: masses: Mass 1, with the follower: ")) << result.err;
    EXPECT_TRUE(Tells(result, " kg, effective stiffness at the follower: ")) << result.err;
    EXPECT_TRUE(Tells(result, " N/m.")) << result.err;
    EXPECT_TRUE(Tells(result, "By its kinetic energy the train weighs from ")) << result.err;
    const double peak = Number("d.cam", "Mass");
    const std::string words = "Effective mass at the follower: ";
    EXPECT_NEAR(Number_In(result.err.substr(result.err.find(words) + words.size())), peak, 1e-4);
    const Result mean = Run("calc c.cam -o m.cam --levels masses --average-velocity " + stamps + Stiffness());
    ASSERT_EQ(mean.status, 0) << mean.err;
    EXPECT_NE(Number("m.cam", "Mass"), peak);
    EXPECT_NEAR(Number("m.cam", "Mass"), peak, peak * 0.02);  // a small swing: the speeds go together
}

TEST_F(Linkage_Cli, masses_after_the_forces_say_that_these_are_out_of_date)
{
    Make("4-bar Linkage");
    const Result result = Run("calc c.cam -o d.cam --levels dynamics,masses " + stamps + Stiffness());
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(Show("d.cam", "Dynamicflag"), "Dynamicflag = false\n");
    EXPECT_TRUE(Tells(result, "calculate dynamics again")) << result.err;
}

TEST_F(Linkage_Cli, a_link_without_stiffness_leaves_the_mass_alone)
{
    Make("4-bar Linkage");
    const Result result = Run("calc c.cam -o d.cam --levels masses " + stamps + Stiffness(0));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Tells(result, "At least one of your stiffnesses is zero. / None may be.  Please redo.")) << result.err;
    EXPECT_TRUE(Tells(result, "no effective stiffness")) << result.err;
    EXPECT_EQ(Number("d.cam", "Kspring(1)"), Number("c.cam", "Kspring(1)"));
}

TEST_F(Linkage_Cli, motion_files_have_the_links_of_the_train)
{
    Make("4-bar Slider");
    for (const char* kind : {"sva", "xdot"}) {
        const Result result = Run(std::string("export c.cam ") + kind + " -o m.sva " + stamps);
        ASSERT_EQ(result.status, 0) << result.err;
        const std::string text = Content("m.sva");
        EXPECT_NE(text.find("Theta2\tOmega2\tAlpha2\tTheta3\tOmega3\tAlpha3\tS4\tV4\tA4\t\r\n"), std::string::npos);
        EXPECT_NE(text.find("deg\trad/sec\trad/sec^2\tmm\tmm/sec\tmm/sec^2\t\r\n"), std::string::npos);
    }
}

TEST_F(Linkage_Cli, a_design_with_links_is_drawn_with_its_train)
{
    Make("6-bar Slider");
    for (const char* at : {"", "--at 0 ", "--at 90 ", "--at 360 ", "--conjugate "})
        EXPECT_EQ(Run(std::string("draw c.cam -o d.svg ") + at).status, 0) << at;
    EXPECT_NE(Content("d.svg").find("O2"), std::string::npos);
    ASSERT_EQ(Run("draw c.cam -o alone.svg --cam-only").status, 0);
    EXPECT_EQ(Content("alone.svg").find("O2"), std::string::npos);
    ASSERT_EQ(Run("draw c.cam -o path.svg --path follower").status, 0);
    EXPECT_EQ(Content("path.svg").find("O2"), std::string::npos);
    ASSERT_EQ(Run("example Oscillating -o o.cam " + stamps).status, 0);
    ASSERT_EQ(Run("calc o.cam -o p.cam --levels size " + stamps).status, 0);
    ASSERT_EQ(Run("draw p.cam -o arm.svg").status, 0);
    EXPECT_EQ(Content("arm.svg").find("O2"), std::string::npos);
}

TEST_F(Linkage_Cli, a_train_that_does_not_connect_is_drawn_as_broken)
{
    Make("4-bar Slider");
    ASSERT_EQ(Run("calc c.cam -o d.cam --levels size --set 'Link 3=20' --set S3y=400 " + stamps).status, 0);
    const Result result = Run("draw d.cam -o d.svg");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(Tells(result, "There is a problem with your data.  Cannot calculate linkage.")) << result.err;
    EXPECT_NE(Content("d.svg").find("does not connect"), std::string::npos);
    // What would need its motion is not written.
    EXPECT_EQ(Run("show d.cam 'Link_Theta(4, 3)'").status, 1);
    EXPECT_EQ(Run("export d.cam sva -o d.sva").status, 1);
    EXPECT_FALSE(Exists("d.sva"));
    EXPECT_EQ(Run("plot d.cam --vars 'S 4' -o p.svg").status, 1);
    EXPECT_EQ(Run("calc d.cam -o f.cam --levels linkage " + stamps).status, 1);
    EXPECT_EQ(Run("calc d.cam -o f.cam --levels masses " + stamps).status, 1);
    EXPECT_FALSE(Exists("f.cam"));
}

TEST_F(Linkage_Cli, functions_of_the_links_are_plotted_by_their_names)
{
    Make("4-bar Slider");
    ASSERT_EQ(Run("plot c.cam --vars 'S 4,V 4' -o two.svg").status, 0);
    const std::string two = Content("two.svg");
    for (const char* words :
         {"Dsplcmt of Link 4", "Veloc of Link 4", "mm/sec", "Cam Angle (deg)", "Selected Linkage Parameters    c"})
        EXPECT_NE(two.find(words), std::string::npos) << words;
    ASSERT_EQ(Run("plot c.cam --vars 'Theta 3,Omega 3,Alpha 3,Ratio V' --style 3 -o four.svg").status, 0);
    EXPECT_NE(Content("four.svg").find("Velocity Out / Velocity In"), std::string::npos);
    EXPECT_EQ(Run("plot c.cam --vars 'Angle of Link 2' -o one.pdf").status, 0);
}

TEST_F(Linkage_Cli, a_plot_has_one_kind_of_function)
{
    Make("4-bar Linkage");
    const Result mixed = Run("plot c.cam --vars 'Theta 4,S' -o p.svg");
    EXPECT_EQ(mixed.status, 2);
    EXPECT_TRUE(Tells(mixed, "'S' is no function of the linkage")) << mixed.err;
    EXPECT_EQ(Run("plot c.cam --vars 'Theta 4' --style 4 -o p.svg").status, 2);
    EXPECT_EQ(Run("plot c.cam --vars 'Theta 4' --style 2 -o p.svg").status, 2);
    EXPECT_EQ(Run("plot c.cam --vars 'Theta 4' --segment 1 -o p.svg").status, 2);
    EXPECT_EQ(Run("plot c.cam --vars 'Theta 5' -o p.svg").status, 2);
    EXPECT_FALSE(Exists("p.svg"));
    EXPECT_EQ(Run("plot c.cam --vars S,V -o p.svg").status, 0);
    ASSERT_EQ(Run("example Oscillating -o o.cam " + stamps).status, 0);
    EXPECT_EQ(Run("plot o.cam --vars 'Theta 2' -o q.svg").status, 2);
}

TEST_F(Linkage_Cli, the_help_has_every_option)
{
    const std::string calc = Run("calc --help").out;
    for (const char* option : {"--end-effector", "--watt", "--stephenson", "--average-velocity", "linkage, masses"})
        EXPECT_NE(calc.find(option), std::string::npos) << option;
    EXPECT_NE(Run("draw --help").out.find("--cam-only"), std::string::npos);
    EXPECT_NE(Run("plot --help").out.find("Theta 4"), std::string::npos);
}

}  // namespace
}  // namespace lobemax
