// SPDX-License-Identifier: GPL-3.0-or-later
/// The check of a design on the command line, and what it does to exports, drawings, plots and tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "edit/examples.h"
#include "tests/cli/cli_folder.h"

namespace lobemax {
namespace {

using nlohmann::json;
using testing::Result;

class Check_Cli : public testing::Cli_Folder {
protected:
    /// Dwell 60, cycloidal rise of 30 mm over 120, dwell 20, fall over 80, dwell 80 degrees, base circle 19 mm, roller
    /// 42 mm, offset: the cam that was published with its true curve. Every quarter of a degree.
    void Make_Published(const std::string& name, const std::string& offset, const std::string& roller = "42") const
    {
        Do("new -o " + name +
           " --rpm 60 --delta 0.25 'D DW 60 0 0' 'R CF 120 0 30' 'D DW 20 30 30' 'F CF 80 30 0' 'D DW 80 0 0' " +
           stamps);
        Do("calc " + name + " -o " + name + " --levels svaj,size --set Prime_Rad=61 --set Offset=" + offset +
           " --set Follow_Rad=" + roller + " --set 'Cutter Radius=10' " + stamps);
    }
    /// The gentle cam of the folder, sized: 25 mm over 90 degrees on a prime radius of 80 mm.
    void Make_Sound(const std::string& name, const std::string& settings = "") const
    {
        Make_Calculated("s.cam");
        Do("calc s.cam -o " + name + " --levels size --set Prime_Rad=80 --set Follow_Rad=15 " + settings + " " +
           stamps);
    }
    /// A flat face on an arm whose senses are opposed: its rows of the surface give another lift.
    void Make_Flat_Arm(const std::string& name) const
    {
        Do("new -o " + name + " --rpm 60 --oscillating 'R MS 120 0 10' 'D DW 60 10 10' 'F MS 120 10 0' 'D DW 60 0 0' " +
           stamps);
        Do("calc " + name + " -o " + name +
           " --levels svaj,size --set Followtype=2 --set Prime_Rad=40 --set ArmX=90 --set ArmY=0 --set ArmRad=90 "
           "--set Rotflag=-1 --set ArmDirect=1 " +
           stamps);
    }
    static void Do(const std::string& line)
    {
        const Result result = Run(line);
        ASSERT_EQ(result.status, 0) << line << "\n" << result.err;
    }
    static json Findings(const std::string& line, int status)
    {
        const Result result = Run("check " + line + " --json");
        EXPECT_EQ(result.status, status) << result.err;
        return json::parse(result.out);
    }
    static json Of_Code(const json& check, const std::string& code)
    {
        for (const json& finding : check["findings"])
            if (finding["code"] == code)
                return finding;
        return {};
    }
    static bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(Check_Cli, finds_what_a_published_cam_is_known_for)
{
    Make_Published("p.cam", "-7.04");
    const Result result = Run("check p.cam");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "lobemax-cli: the cam should not be cut\n");
    const std::string first = result.out.substr(0, result.out.find("\n\n"));
    EXPECT_TRUE(Holds(first, "Severity")) << first;
    EXPECT_TRUE(Holds(first, "Do not cut")) << first;
    EXPECT_TRUE(Holds(first, "221.25")) << first;
    EXPECT_TRUE(Holds(first, "42.097")) << first;
    EXPECT_TRUE(Holds(first, "43.656")) << first;
    EXPECT_TRUE(Holds(result.out, "\nLimits: Phi 30 deg, Rho_Ratio 1.5, Surface 0.01 mm, Chord 0.01 mm; off: Sigma, "))
        << result.out;

    const json check = Findings("p.cam", 1);
    EXPECT_EQ(check["do_not_cut"], true);
    EXPECT_EQ(check["fails"], true);
    EXPECT_EQ(check["units"], "mm-kg-N-s");
    const json& worst = check["findings"][0];
    EXPECT_EQ(worst["severity"], "do not cut");
    EXPECT_NEAR(worst["truth"], 42.097, 5e-4);
    EXPECT_NEAR(worst["row"], 43.656, 5e-4);
    EXPECT_EQ(worst["angle"], 221.25);
    EXPECT_EQ(worst["segment"], 4);
    EXPECT_EQ(worst["unit"], "mm");
    EXPECT_EQ(worst["place"], "size");
    EXPECT_EQ(worst["beyond_limit"], false);
    ASSERT_FALSE(worst["stretch"].empty());
    EXPECT_LT(worst["stretch"][0][0], 221.25);
    EXPECT_GT(worst["stretch"][0][1], 221.25);
}

TEST_F(Check_Cli, gives_a_finding_all_its_fields_as_json_and_the_limits_used)
{
    Make_Published("p.cam", "-7.04");
    const json check = Findings("p.cam --limit V=100 --limit phi=OFF", 1);
    const std::set<std::string> expected{"code", "name",  "severity", "beyond_limit", "row",   "truth",    "limit",
                                         "unit", "angle", "segment",  "stretch",      "place", "sentence", "advice"};
    ASSERT_FALSE(check["findings"].empty());
    for (const json& finding : check["findings"]) {
        std::set<std::string> keys;
        for (const auto& [key, value] : finding.items())
            keys.insert(key);
        EXPECT_EQ(keys, expected);
        EXPECT_NE(finding["sentence"], "");
        EXPECT_NE(finding["advice"], "");
    }
    EXPECT_EQ(check["limits"]["V"]["value"], 100.0);
    EXPECT_EQ(check["limits"]["V"]["unit"], "mm/sec");
    EXPECT_TRUE(check["limits"]["Phi"]["value"].is_null());
    EXPECT_EQ(check["limits"]["Rho_Ratio"]["value"], 1.5);
    EXPECT_EQ(check["limits"].size(), 12U);
    EXPECT_EQ(check["not_checked"].size(), 2U);
}

/// The fall of 30 mm over 80 degrees at 60 rpm is fastest half way: a cycloid's 2 h / T = 60 mm / (80/360 s) = 270
/// mm/s.
TEST_F(Check_Cli, holds_a_design_against_the_limits_of_the_line)
{
    Make_Published("p.cam", "0", "20");
    EXPECT_EQ(Findings("p.cam --limit Phi=off --limit V=270.1", 0)["fails"], false);
    const json check = Findings("p.cam --limit Phi=off --limit V=269.9", 1);
    EXPECT_EQ(check["do_not_cut"], false);
    const json finding = Of_Code(check, "V");
    ASSERT_FALSE(finding.is_null());
    EXPECT_EQ(finding["beyond_limit"], true);
    EXPECT_NEAR(finding["truth"], 270.0, 0.01);
    EXPECT_NEAR(finding["limit"], 269.9, 1e-9);
    EXPECT_EQ(finding["angle"], 240.0);
    EXPECT_EQ(finding["place"], "motion");
    const Result text = Run("check p.cam --limit V=269.9");
    EXPECT_EQ(text.err, "lobemax-cli: the design is beyond a limit\n");
    EXPECT_TRUE(Holds(text.out, "Beyond a limit")) << text.out;
    EXPECT_EQ(Findings("p.cam --limit Phi=off --limit V=1 --limit V=off", 0)["limits"]["V"]["value"], nullptr)
        << "the last one counts";
}

TEST_F(Check_Cli, takes_limits_in_the_units_of_the_design)
{
    Make_Published("p.cam", "0", "20");
    Do("convert p.cam -o inch.cam --units 1 --recalculate " + stamps);
    const json check = Findings("inch.cam --limit Phi=off --limit V=10.62", 1);
    const json finding = Of_Code(check, "V");
    ASSERT_FALSE(finding.is_null());
    EXPECT_NEAR(finding["truth"], 270.0 / 25.4, 1e-3);
    EXPECT_EQ(finding["unit"], "in/sec");
    EXPECT_EQ(Findings("inch.cam --limit Phi=off --limit V=10.64", 0)["fails"], false);
}

TEST_F(Check_Cli, refuses_a_limit_that_is_none)
{
    Make_Sound("c.cam");
    const auto refused = [&](const std::string& limit) {
        const Result result = Run("check c.cam --limit " + limit);
        EXPECT_EQ(result.status, 2) << limit;
        EXPECT_EQ(result.out, "") << limit;
        return result.err;
    };
    EXPECT_EQ(refused("Phi"), "lobemax-cli: --limit: 'Phi' is not NAME=VALUE\n");
    EXPECT_EQ(refused("Phy=3"),
              "lobemax-cli: --limit Phy=3: There is no limit 'Phy'; there are Phi, Rho_Ratio, Sigma, Contact_Force, V, "
              "A, J, Torque, Face_Width, Cam_Size, Surface, Chord.\n");
    EXPECT_EQ(refused("Phi=wide"), "lobemax-cli: --limit Phi=wide: 'wide' is neither a number nor off.\n");
    EXPECT_EQ(refused("Phi="), "lobemax-cli: --limit Phi=: '' is neither a number nor off.\n");
    EXPECT_EQ(refused("Phi=-5"), "lobemax-cli: --limit Phi=-5: A limit must be positive, or off.\n");
    EXPECT_EQ(refused("Phi=1E999"), "lobemax-cli: --limit Phi=1E999: A limit must not be so large.\n");
    EXPECT_EQ(Run("check none.cam").status, 2);
    EXPECT_EQ(Run("check").status, 2);
}

TEST_F(Check_Cli, tells_what_it_could_not_look_at)
{
    Do("new -o n.cam --rpm 120 " + stamps + segments);
    const Result nothing = Run("check n.cam");
    EXPECT_EQ(nothing.status, 0);
    EXPECT_TRUE(nothing.out.starts_with("No findings\nThe motion is not calculated: nothing could be checked.\n"))
        << nothing.out;
    EXPECT_EQ(nothing.err, "");
    Make_Calculated("c.cam");
    EXPECT_EQ(Findings("c.cam", 0)["not_checked"].size(), 3U);
    Make_Sound("c.cam");
    EXPECT_EQ(Findings("c.cam", 0)["not_checked"].size(), 2U);
    Do("calc c.cam -o c.cam --levels dynamics,stress " + stamps);
    EXPECT_EQ(Findings("c.cam", 0)["not_checked"].size(), 0U);
}

TEST_F(Check_Cli, changes_no_file)
{
    Make_Published("p.cam", "-7.04");
    const std::string before = Content("p.cam");
    Run("check p.cam --limit Phi=10");
    EXPECT_EQ(Content("p.cam"), before);
}

TEST_F(Check_Cli, lets_every_example_be_cut)
{
    for (const auto& name : Example_Names)
        for (const char* const units : {"1", "5"}) {
            Do("example '" + std::string(name) + "' -o e.cam --units " + units + " " + stamps);
            const Result result = Run("check e.cam --json");
            EXPECT_EQ(json::parse(result.out)["do_not_cut"], false) << name << "\n" << result.out;
        }
}

TEST_F(Check_Cli, an_export_of_a_profile_that_must_not_be_cut_writes_nothing_unless_told_so)
{
    Make_Published("p.cam", "-7.04");
    for (int code = 1; code <= 5; ++code) {
        const Result result = Run("export p.cam profile --code " + std::to_string(code) + " -o p.pts " + stamps);
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.err.starts_with("lobemax-cli: Do not cut: ")) << result.err;
        EXPECT_TRUE(Holds(result.err, "42.097 mm")) << result.err;
        EXPECT_TRUE(result.err.ends_with("lobemax-cli: nothing was written: --even-if-wrong writes it all the same\n"));
        EXPECT_FALSE(Exists("p.pts"));
    }
    Write("p.pts", "older");
    EXPECT_EQ(Run("export p.cam profile --code 2 -o p.pts " + stamps).status, 1);
    EXPECT_EQ(Content("p.pts"), "older");
    const Result wrong = Run("export p.cam profile --code 2 -o p.pts --even-if-wrong " + stamps);
    EXPECT_EQ(wrong.status, 0);
    EXPECT_TRUE(wrong.err.starts_with("lobemax-cli: Do not cut: ")) << wrong.err;
    EXPECT_TRUE(Content("p.pts").starts_with("File: \t"));
    EXPECT_EQ(Run("export p.cam spreadsheet -o p.txt " + stamps).status, 0) << "nothing is cut by a spreadsheet";
}

TEST_F(Check_Cli, an_export_of_a_sound_cam_says_no_more_than_it_did)
{
    Make_Sound("c.cam");
    for (int code = 1; code <= 5; ++code) {
        const Result result = Run("export c.cam profile --code " + std::to_string(code) + " -o c.pts " + stamps);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err,
                  "[information] The profile data for this cam has been written to c.pts / This tab-delimited file can "
                  "be opened in any spreadsheet program\n");
    }
}

TEST_F(Check_Cli, a_profile_that_is_wrong_in_the_rows_alone_is_cut_by_its_true_points)
{
    Make_Flat_Arm("a.cam");
    const Result refused = Run("export a.cam profile --code 2 -o a.pts " + stamps);
    EXPECT_EQ(refused.status, 1) << refused.err;
    EXPECT_TRUE(Holds(refused.err, "Surface does not give the lift")) << refused.err;
    const Result truth = Run("export a.cam profile --code 2 -o a.pts --true " + stamps);
    EXPECT_EQ(truth.status, 0) << truth.err;
    EXPECT_TRUE(truth.err.starts_with("[information] The profile data for this cam has been written to a.pts / "))
        << truth.err;
    EXPECT_TRUE(Holds(truth.err, " / Its points are true ones, up to ")) << truth.err;
    EXPECT_TRUE(Holds(truth.err, " mm from those that the program calculates.")) << truth.err;
    EXPECT_EQ(Run("export a.cam profile --code 2 -o rows.pts --even-if-wrong " + stamps).status, 0);
    const std::string of_truth = Content("a.pts"), of_rows = Content("rows.pts");
    EXPECT_NE(of_truth, of_rows);
    EXPECT_EQ(of_truth.substr(0, of_truth.find("\r\n\r\n\r\n")), of_rows.substr(0, of_rows.find("\r\n\r\n\r\n")))
        << "the same heads";
    EXPECT_EQ(std::ranges::count(of_truth, '\n'), std::ranges::count(of_rows, '\n'));
}

TEST_F(Check_Cli, true_points_of_an_undercut_cam_are_refused_as_well)
{
    Make_Published("p.cam", "-7.04");
    EXPECT_EQ(Run("export p.cam profile --code 2 -o p.pts --true " + stamps).status, 1);
    EXPECT_FALSE(Exists("p.pts"));
    EXPECT_EQ(Run("export p.cam profile --code 2 -o p.pts --true --even-if-wrong " + stamps).status, 0);
    EXPECT_TRUE(Exists("p.pts"));
}

/// The rows of an axial cam have no cutter centre; the truth has. Along a dwell the cutter stands off the roller by the
/// difference of their radii: the groove's wall is one and the same.
TEST_F(Check_Cli, the_cutter_of_an_axial_cam_is_exported_by_its_true_points)
{
    Make_Sound("b.cam", "--set Camtype=Barrel --set 'Cutter Radius=10'");
    EXPECT_EQ(Run("export b.cam profile --code 3 -o b.pts " + stamps).status, 1);
    EXPECT_FALSE(Exists("b.pts"));
    const Result result = Run("export b.cam profile --code 3 -o b.pts --true --even-if-wrong " + stamps);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(Holds(result.err, "Its points are true ones.\n")) << result.err;
    const auto z_of_first = [&](const std::string& name) {
        const std::string text = Content(name);
        const std::string rows = text.substr(text.find("\r\n\r\n\r\n") + 6);
        const std::string line = rows.substr(0, rows.find("\r\n") - 1);
        return std::stod(line.substr(line.rfind('\t') + 1));
    };
    ASSERT_EQ(Run("export b.cam profile --code 1 -o centre.pts --true --even-if-wrong " + stamps).status, 0);
    EXPECT_NEAR(std::abs(z_of_first("b.pts") - z_of_first("centre.pts")), 15.0 - 10.0, 1e-4);
}

TEST_F(Check_Cli, tables_plots_and_drawings_show_the_true_rows)
{
    Make_Published("p.cam", "-7.04");
    const auto rho_at_worst = [](const std::string& options) {
        const std::string table = Run("table p.cam --vars Rho --step 1 --decimals 3 " + options).out;
        const std::size_t at = table.find("\n221.25") + 1;
        return table.substr(at, table.find('\n', at) - at);
    };
    EXPECT_TRUE(Holds(rho_at_worst(""), "43.6")) << rho_at_worst("");
    EXPECT_TRUE(Holds(rho_at_worst("--true"), "42.097")) << rho_at_worst("--true");
    for (const std::string command : {"plot p.cam --vars Rho", "draw p.cam --path cutter"}) {
        Do(command + " -o rows.svg --size 300x300");
        Do(command + " -o true.svg --size 300x300 --true");
        EXPECT_NE(Content("true.svg"), "");
        if (command.starts_with("plot")) {
            EXPECT_NE(Content("rows.svg"), Content("true.svg"));
        }
    }
    Make_Flat_Arm("a.cam");
    Do("draw a.cam -o rows.svg --size 300x300");
    Do("draw a.cam -o true.svg --size 300x300 --true");
    EXPECT_NE(Content("rows.svg"), Content("true.svg"));
}

TEST_F(Check_Cli, a_drawing_is_red_where_the_cam_must_not_be_cut)
{
    const auto is_red = [this](const std::string& command) {
        Do(command + " -o drawing.svg --size 300x300");
        return Holds(Content("drawing.svg"), "#d62f2f");
    };
    Make_Published("p.cam", "-7.04");
    EXPECT_TRUE(is_red("draw p.cam"));
    EXPECT_TRUE(is_red("draw p.cam --at 221.25"));
    EXPECT_FALSE(is_red("draw p.cam --path machine"));  // which draws no outline
    Make_Flat_Arm("a.cam");
    EXPECT_TRUE(is_red("draw a.cam"));
    EXPECT_FALSE(is_red("draw a.cam --true"));
    Do("example 'Double Dwell' -o d.cam");
    EXPECT_FALSE(is_red("draw d.cam"));
}

TEST_F(Check_Cli, what_has_no_truth_is_told_in_a_sentence)
{
    Make_Calculated("c.cam");
    const std::string unsized = "lobemax-cli: --true: The cam is not sized: it has no true surface.\n";
    for (const std::string command : {"table c.cam --vars S --true", "plot c.cam --vars S --true -o c.svg"}) {
        const Result result = Run(command);
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_EQ(result.err, unsized) << command;
        EXPECT_EQ(result.out, "") << command;
    }
    EXPECT_FALSE(Exists("c.svg"));
    Make_Sound("c.cam");
    for (const std::string option : {"--true", "--even-if-wrong"}) {
        const Result result = Run("export c.cam spreadsheet -o c.txt " + option);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "lobemax-cli: " + option + " is for a profile\n");
    }
}

}  // namespace
}  // namespace lobemax
