// SPDX-License-Identifier: GPL-3.0-or-later
/// The levels of the command line above the forces: vibration and polydyne cam.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/cli/cli_folder.h"

namespace lobemax {
namespace {

using testing::Result;

class Vibration_Cli : public testing::Cli_Folder {
protected:
    void SetUp() override
    {
        ASSERT_EQ(
            Run("new -o n.cam --omega 15 " + stamps + "'R 11 90 0 25' 'D DW 90 25 25' 'F 11 90 25 0' 'D DW 90 0 0'")
                .status,
            0);
        ASSERT_EQ(Run("calc n.cam -o c.cam " + stamps + "--set Preload=20000 --set Prime_Rad=120").status, 0);
    }
    Result Calc(const std::string& more) const { return Run("calc c.cam -o d.cam " + stamps + more); }
};

TEST_F(Vibration_Cli, each_model_reaches_its_flag)
{
    for (const char* model : {"1", "2", "3", "4", "5"}) {
        const Result result = Calc(std::string("--levels vibration --model ") + model);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(Show("d.cam", "Modelflag Model_Type Mass Dynamicflag"),
                  std::string("Modelflag = true\nModel_Type = ") + model + "\nMass = 2\nDynamicflag = true\n");
    }
    const Result table = Run("table d.cam --vars 'X ,X dot,Xdbl dot,Force-Dyn' --step 90");
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.out.substr(0, table.out.find('\n')), "Angle\tx\tx dot\tx ddot\tF dyn");
}

TEST_F(Vibration_Cli, the_same_input_gives_the_same_bytes_as_the_levels_in_one_call)
{
    ASSERT_EQ(Calc("--levels vibration").status, 0);
    ASSERT_EQ(Run("calc n.cam -o e.cam " + stamps +
                  "--set Preload=20000 --set Prime_Rad=120 --levels svaj,size,dynamics,vibration")
                  .status,
              0);
    EXPECT_EQ(Show("e.cam", "CalcData"), Show("d.cam", "CalcData"));
}

TEST_F(Vibration_Cli, a_polydyne_cam_is_made_and_sized)
{
    const Result result = Calc("--levels vibration,polydyne");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("[information] Note: A polydyne cam requires a follower displacement function / "),
              std::string::npos);
    EXPECT_NE(result.err.find("select Cancel. -> OK\n"), std::string::npos);
    EXPECT_EQ(Show("d.cam", "Polydyne_Calc Modelflag Sized Dynamicflag"),
              "Polydyne_Calc = true\nModelflag = true\nSized = true\nDynamicflag = true\n");
    EXPECT_EQ(Show("d.cam", "'CalcData(27, 20)'"), "CalcData(27, 20)" + Show("c.cam", "'CalcData(11, 20)'").substr(16));
    const Result again = Run("calc d.cam -o e.cam " + stamps + "--levels stress");
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(Show("e.cam", "Stressflag"), "Stressflag = true\n");

    const Result refused = Run("calc c.cam -o f.cam " + stamps + "--levels vibration,polydyne --answer cancel");
    EXPECT_EQ(refused.status, 1);
    EXPECT_FALSE(Exists("f.cam"));
}

TEST_F(Vibration_Cli, what_mechanics_has_is_said_beside_the_figures)
{
    const Result vibration = Calc("--levels vibration --model 3");
    ASSERT_EQ(vibration.status, 0);
    const std::string force = "Force-Dyn is off mechanics by up to ";
    EXPECT_NE(vibration.err.find("lobemax-cli: vibration: " + force), std::string::npos) << vibration.err;
    EXPECT_NE(Run("show d.cam").out.find("\nNote: " + force), std::string::npos);
    EXPECT_EQ(Run("show c.cam").out.find("Note: "), std::string::npos);
    EXPECT_EQ(Run("show c.cam --json").out.find("Notes"), std::string::npos);

    const Result polydyne = Calc("--levels vibration,polydyne --model 3");
    ASSERT_EQ(polydyne.status, 0);
    for (const char* const words :
         {"Polydn S takes 36 for the square of two pi, 39.478: 8.8 % of its correction is left out, up to ",
          "Per second Polydn V is off the derivative of Polydn S by up to ", "With them Phi goes from "}) {
        EXPECT_NE(polydyne.err.find(std::string("lobemax-cli: polydyne: ") + words), std::string::npos) << words;
        EXPECT_NE(Run("show d.cam").out.find(std::string("\nNote: ") + words), std::string::npos)
            << "the same from the file: " << words;
        EXPECT_NE(Run("show d.cam --json").out.find(words), std::string::npos) << words;
    }
}

TEST_F(Vibration_Cli, a_level_without_the_one_below_is_status_1)
{
    Result result = Run("calc n.cam -o d.cam --levels vibration");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "lobemax-cli: vibration: the forces are not calculated\n");
    result = Calc("--levels polydyne");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "lobemax-cli: polydyne: the vibration is not calculated\n");
    EXPECT_FALSE(Exists("d.cam"));
}

TEST_F(Vibration_Cli, a_setting_of_the_train_does_not_stand_in_the_way)
{
    const Result result = Calc("--levels vibration --model 2 --set 'Kspring(2)=7000' --set 'Preload=25000'");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(Show("d.cam", "Return_Spring_Rate Modelflag"), "Return_Spring_Rate = 7000\nModelflag = true\n");
}

TEST_F(Vibration_Cli, options_are_refused_in_the_screens_words)
{
    struct Case {
        const char* options;
        const char* message;
    };
    for (const Case& c :
         {Case{"--t-end 0.8",
               "--t-end: You need to calculate at least two cam cycles to let transients "
               "die out"},
          Case{"--t-start -1", "--t-start: This value must be positive.  Please redo."},
          Case{"--eps -1", "--eps: This value must be positive.  Please redo."},
          Case{"--start-step -1", "--start-step: This value must be positive.  Please redo."},
          Case{"--max-steps -1", "--max-steps: This value must be positive.  Please redo."},
          Case{"--x-start -1", "--x-start: This value must be positive.  Please redo."},
          Case{"--set 'Closure$=Form' --model 3", "--model: a form-closed cam has the vibration model 1 alone"}}) {
        const Result result = Calc(std::string("--levels vibration ") + c.options);
        EXPECT_EQ(result.status, 2) << c.options;
        EXPECT_EQ(result.err, std::string("lobemax-cli: ") + c.message + "\n") << c.options;
        EXPECT_FALSE(Exists("d.cam"));
    }
    for (const char* options :
         {"--model 6", "--model 0", "--eps x", "--max-steps 1e400", "--max-steps 2.5", "--x-start 1e39", "--eps 1e400"})
        EXPECT_EQ(Calc(std::string("--levels vibration ") + options).status, 2) << options;
    EXPECT_EQ(Calc("--levels vibration --eps 0").status, 1);
    EXPECT_EQ(Calc("--levels vibration --max-steps 0").status, 1);
}

TEST_F(Vibration_Cli, options_reach_the_run)
{
    ASSERT_EQ(Calc("--levels vibration --max-steps 5000 --x-start 0.25").status, 0);
    EXPECT_EQ(Run("calc c.cam -o e.cam --levels vibration --max-steps 10").status, 1);
    const Result small = Calc("--levels vibration --eps 1e-6");
    EXPECT_EQ(small.status, 0);
    EXPECT_EQ(small.err.substr(0, small.err.find('\n')),
              "[exclamation] Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely. / "
              "Continue anyway? -> Yes");
    EXPECT_EQ(Calc("--levels vibration --t-end 0.9").status, 0);
}

TEST_F(Vibration_Cli, a_cam_that_starts_in_a_dwell_has_no_vibration)
{
    ASSERT_EQ(Run("new -o n.cam --omega 15 'D DW 90 0 0' 'R 11 90 0 25' 'F 11 180 25 0'").status, 0);
    const Result result = Run("calc n.cam -o d.cam --levels svaj,size,dynamics,vibration --set Preload=20000");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("[exclamation] Your current SVAJ program starts with a dwell segment."),
              std::string::npos);
}

TEST_F(Vibration_Cli, a_jumping_follower_is_told_of)
{
    const Result result = Calc("--levels vibration --set Preload=10 --set 'Mass_m(1)=40' --set 'Kspring(1)=1000'");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.err.find("[stop] The follower is jumping off the cam.  This design should not be used.\n"),
              std::string::npos);
}

/// A bar where the messages go to a terminal, gone when the work is done, and none elsewhere.
TEST_F(Vibration_Cli, long_work_shows_its_progress_on_a_terminal)
{
    const auto run = [&](bool terminal) {
        std::istringstream in;
        std::ostringstream out, err;
        const auto words =
            testing::Words("calc c.cam -o d.cam --levels vibration --model 2 --t-end 20 --max-steps 100000");
        EXPECT_EQ(cli::Run(words, in, out, err, terminal), 0) << err.str();
        return err.str();
    };
    const std::string shown = run(true);
    EXPECT_NE(shown.find("\r[####"), std::string::npos) << shown;
    EXPECT_NE(shown.find("] 50 %"), std::string::npos);
    EXPECT_LT(shown.rfind("\r["), shown.rfind("\r\x1b[K")) << "the bar is gone at the end";
    EXPECT_EQ(run(false).find('\r'), std::string::npos);
}

}  // namespace
}  // namespace lobemax
