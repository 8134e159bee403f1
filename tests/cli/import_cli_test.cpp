// SPDX-License-Identifier: GPL-3.0-or-later
/// The command that makes a design of a measured profile, and what the other commands make of the design.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "core/text.h"
#include "tests/cli/cli_folder.h"
#include "tests/support/number_in.h"

namespace lobemax {
namespace {

using testing::Number_In;
using testing::Result;

constexpr double pi = 3.14159265358979323846;

double Harmonic(double degrees)
{
    return 5 - 5 * std::cos(degrees * pi / 180);
}

class Import_Cli : public testing::Cli_Folder {
protected:
    void SetUp() override { Write("lobe.txt", Pairs(360, 1.0, Harmonic)); }

    static std::string Pairs(int count, double step, const std::function<double(double)>& f)
    {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += Shortest(i * step) + "\t" + Shortest(Single(f(i * step))) + "\n";
        return text;
    }
    Result Import(const std::string& options, const std::string& file = "lobe.txt") const
    {
        return Run("import " + file + " -o m.cam --prime 30 --rpm 120 " + options + " " + stamps);
    }
    static double Value(const std::string& field)
    {
        const std::string line = Show("m.cam", "'" + field + "'");
        const std::size_t at = line.find(" = ");
        return at == std::string::npos ? NAN : Number_In(line.substr(at + 3));
    }
    static double S(int i) { return Value("CalcData(1, " + std::to_string(i) + ")"); }

    static const inline std::string read =
        "[information] File lobe.txt /  /    of Cam Profile data successfully read.\n";
    static const inline std::string saved =
        "[information] The interpolated functions from your imported profile data  / have been saved within the "
        "program "
        "for further calculation. / You still need to save the model to disk with the File/Save option. / When you "
        "select the Next button, you will return to the home page / and can plot the interpolated functions, size the "
        "cam, calculate / dynamic properties, and export the cam profile data for manufacture. / If you use the Back "
        "button, it will reset and lose the imported data.\n";
};

TEST_F(Import_Cli, a_file_of_pairs_becomes_a_design_that_can_be_sized_loaded_and_exported)
{
    const Result import = Import("--close");
    EXPECT_EQ(import.status, 0) << import.err;
    EXPECT_TRUE(import.err.starts_with(read + "lobemax-cli: import: The fit misses the data by 0 mm at most, at "))
        << import.err;
    EXPECT_NE(import.err.find(saved + "[information] The file was successfully written to  / m.cam\n"),
              std::string::npos)
        << import.err;
    EXPECT_EQ(Show("m.cam", "Calculated Sized 'Time Base' Deltatheta Prime_Rad"),
              "Calculated = true\nSized = false\nTime Base = 1\nDeltatheta = 1\nPrime_Rad = 30\n");
    EXPECT_NEAR(Value("Shaft speed"), 4 * pi, 1E-5);
    for (const int i : {0, 33, 180, 359, 360})
        EXPECT_NEAR(S(i), Harmonic(i), 1E-5);
    EXPECT_NEAR(Value("CalcData(2, 90)"), 5 * 4 * pi, 1E-3);
    EXPECT_NEAR(Value("CalcData(3, 0)"), 5 * 16 * pi * pi, 0.5);

    const Result calc = Run("calc m.cam -o s.cam --levels size,dynamics " + stamps);
    EXPECT_EQ(calc.status, 0) << calc.err;
    EXPECT_EQ(Show("s.cam", "Sized Dynamicflag"), "Sized = true\nDynamicflag = true\n");
    const Result exported = Run("export s.cam profile -o p.txt " + stamps);
    EXPECT_EQ(exported.status, 0) << exported.err;
    EXPECT_GT(Content("p.txt").size(), 361U * 10);
}

TEST_F(Import_Cli, its_table_is_empty_and_a_recalculation_of_it_is_refused_without_a_file)
{
    ASSERT_EQ(Import("--close").status, 0);
    const Result calc = Run("calc m.cam -o again.cam " + stamps);
    EXPECT_EQ(calc.status, 1);
    EXPECT_NE(calc.err.find("Segment 1 has no beta"), std::string::npos) << calc.err;
    EXPECT_FALSE(Exists("again.cam"));
    EXPECT_NEAR(S(180), 10.0, 1E-5) << "what was read stands as it was";
}

TEST_F(Import_Cli, every_method_comes_near_to_a_harmonic)
{
    struct Method {
        const char* options;
        double S, A;
    };
    // Second derivatives at a degree feel the 32 bits of the displacements: two parts in a thousand.
    for (const Method& method : {Method{"--method spline --close", 1E-5, 2.0},
                                 {"--method fourier", 1E-5, 2.0},
                                 {"--method fourier --harmonics 2", 1E-5, 0.01},
                                 {"--method lanczos --close", 1E-5, 2.0},
                                 {"--method smooth --bound 0.001 --close", 1.1E-3, 1.0}}) {
        ASSERT_EQ(Import(method.options).status, 0) << method.options;
        for (const int i : {0, 45, 180, 270}) {
            EXPECT_NEAR(S(i), Harmonic(i), method.S) << method.options;
            EXPECT_NEAR(Value("CalcData(3, " + std::to_string(i) + ")"), 80 * pi * pi * std::cos(i * pi / 180),
                        method.A)
                << method.options;
        }
    }
}

TEST_F(Import_Cli, a_smoothing_tells_how_far_it_went)
{
    const Result import = Import("--close --method smooth --bound 0.01");
    EXPECT_EQ(import.status, 0);
    EXPECT_NE(import.err.find("lobemax-cli: import: The smoothing moves a point by 0.01 mm at most, at "),
              std::string::npos)
        << import.err;
    EXPECT_NE(import.err.find(" deg; 0.01 mm are allowed.\n"), std::string::npos);
}

TEST_F(Import_Cli, takes_points_of_a_path)
{
    // An eccentric circle of radius 40 about (5, 0).
    std::string text;
    for (int i = 0; i < 72; ++i)
        text += Shortest(Single(5 + 40 * std::cos(i * 5 * pi / 180))) + "," +
                Shortest(Single(40 * std::sin(i * 5 * pi / 180))) + "\n";
    Write("path.txt", text);
    const Result import = Run("import path.txt -o m.cam --coord xy --prime 35 --rpm 60 " + stamps);
    ASSERT_EQ(import.status, 0) << import.err;
    EXPECT_NEAR(S(0), 10.0, 1E-4);
    EXPECT_NEAR(S(180), 0.0, 1E-4);
    EXPECT_NEAR(S(90), std::sqrt(1600.0 - 25.0) - 35, 1E-4);
}

TEST_F(Import_Cli, follows_each_option)
{
    Write("high.txt", Pairs(360, 1.0, [](double t) { return 7 + Harmonic(t); }));
    ASSERT_EQ(Import("--close", "high.txt").status, 0);
    EXPECT_NEAR(S(180), 17.0, 1E-5);
    ASSERT_EQ(Import("--close --normalize", "high.txt").status, 0);
    EXPECT_NEAR(S(180), 10.0, 1E-5);
    ASSERT_EQ(Import("--close --shift 20").status, 0);
    EXPECT_NEAR(S(200), 10.0, 1E-5);
    ASSERT_EQ(Import("--close --units 1").status, 0);
    EXPECT_EQ(Show("m.cam", "WhichUnit"), "WhichUnit = 1\n");
    EXPECT_NEAR(S(180), 10.0, 1E-5) << "the numbers are inches";
    ASSERT_EQ(Import("--close --delta 0.50").status, 0);
    EXPECT_EQ(Show("m.cam", "Deltatheta"), "Deltatheta = 0.5\n");
    EXPECT_NEAR(S(360), 10.0, 1E-5);
    ASSERT_EQ(Import("--close --oscillating").status, 0);
    EXPECT_EQ(Show("m.cam", "Translating"), "Translating = false\n");
    ASSERT_EQ(Import("--close --set Follow_Rad=7 --set Model_Name=lobe").status, 0);
    EXPECT_EQ(Show("m.cam", "Follow_Rad"), "Follow_Rad = 7\n");
    ASSERT_EQ(Import("--close --shift 36000020").status, 0);
    EXPECT_NEAR(S(200), 10.0, 1E-5) << "whole turns do not count";
    // The raw displacement beside smoothed derivatives.
    ASSERT_EQ(Import("--close --method smooth --bound 0.5").status, 0);
    EXPECT_GT(std::abs(S(0)), 0.4);
    ASSERT_EQ(Import("--close --method smooth --bound 0.5 --raw").status, 0);
    EXPECT_NEAR(S(0), 0.0, 1E-6);
}

TEST_F(Import_Cli, more_pairs_than_points_take_a_finer_step)
{
    Write("fine.txt", Pairs(720, 0.5, Harmonic));
    const Result import = Import("--close", "fine.txt");
    EXPECT_EQ(import.status, 0);
    EXPECT_NE(import.err.find("[information] There are 720 data sets in this file.  / Delta Theta has been reset to "
                              "allow that many.\n"),
              std::string::npos)
        << import.err;
    EXPECT_EQ(Show("m.cam", "Deltatheta"), "Deltatheta = 0.5\n");
}

TEST_F(Import_Cli, a_profile_that_cannot_be_read_is_status_2_and_no_file)
{
    Write("falls.txt", "0 1\n10 2\n5 3\n360 1\n");
    Write("words.txt", "0 1\n10 two\n");
    Write("many.txt", Pairs(2881, 360.0 / 2881, Harmonic));
    Write("turns.txt", "0 1\n200 2\n400 1\n");
    Write("none.txt", "");
    struct Refused {
        const char* file;
        const char* sentence;
    };
    for (const Refused& r : {Refused{"falls.txt", "Line 3: the angle 5 does not rise above 10 of line 2."},
                             {"words.txt", "Line 2: '10 two' is not a pair of numbers."},
                             {"many.txt", "Cannot have more than 2881 for this routine."},
                             {"turns.txt", "Line 3: the angles run over more than one turn, from 0 to 400 degrees."},
                             {"none.txt", "There is no pair of numbers in this file."},
                             {"absent.txt", "File not found"}}) {
        const Result import = Import("", r.file);
        EXPECT_EQ(import.status, 2) << r.file;
        EXPECT_NE(import.err.find(r.sentence), std::string::npos) << import.err;
        EXPECT_FALSE(Exists("m.cam")) << r.file;
    }
}

TEST_F(Import_Cli, a_fit_that_fails_is_status_1_and_no_file)
{
    struct Refused {
        const char* options;
        const char* sentence;
    };
    for (const Refused& r :
         {Refused{"", "The function is not periodic - will terminate the calculation. (Check = 1)"},
          {"--method lanczos", "The function is not periodic"},
          {"--method smooth --bound 0.1", "The function is not periodic"},
          {"--method smooth --bound 5 --close", "A bound of half the lift and more leaves nothing of the motion."},
          {"--method smooth --bound -1 --close", "The bound of the smoothing cannot be negative."},
          {"--method fourier --close", "N must be even and the first and last data points unequal."}}) {
        const Result import = Import(r.options);
        EXPECT_EQ(import.status, 1) << r.options;
        EXPECT_NE(import.err.find(r.sentence), std::string::npos) << import.err;
        EXPECT_NE(import.err.find("Something is wrong with the solution - cannot continue"), std::string::npos);
        EXPECT_FALSE(Exists("m.cam")) << r.options;
    }
}

TEST_F(Import_Cli, a_command_line_that_cannot_be_is_status_2)
{
    for (const char* const options :
         {"--delta 0.3", "--delta x", "--prime 0", "--prime abc", "--rpm x", "--shift y", "--bound z", "--method cubic",
          "--method smooth", "--coord polar", "--units 6", "--harmonics -1", "--harmonics 1441", "--set Nothing=1",
          "--set Prime_Rad=-4", "--shift 1E39", "--rpm 1E39", "--method smooth --bound 1E39"}) {
        const Result import = Run("import lobe.txt -o m.cam --close " + std::string(options) + " " + stamps);
        EXPECT_EQ(import.status, 2) << options << import.err;
        EXPECT_NE(import.err, "") << options;
        EXPECT_FALSE(Exists("m.cam")) << options;
    }
    EXPECT_EQ(Run("import -o m.cam").status, 2);
    EXPECT_EQ(Run("import lobe.txt").status, 2) << "an output is needed";
    const Result standing = Import("--close --rpm 0");
    EXPECT_NE(standing.status, 0);
    EXPECT_FALSE(Exists("m.cam"));
}

TEST_F(Import_Cli, a_cam_of_arcs_is_made_of_its_radii)
{
    // Base 20, flanks 60, nose 5, lift 8 under a flat face: the support of each circle along the face.
    const Result made = Run("import --arcs '20 60 5 8' -o m.cam --rpm 600 --delta 0.5 " + stamps);
    ASSERT_EQ(made.status, 0) << made.err;
    const double d = 20 + 8 - 5;
    const double end = std::acos((55.0 * 55.0 - d * d - 40.0 * 40.0) / (2 * d * 40.0));
    EXPECT_NEAR(S(360), 8.0, 1E-5);
    const auto nose = [&](double degrees) { return 5 + d * std::cos(degrees * pi / 180) - 20; };
    const auto flank = [&](double degrees) { return 60 - 40 * std::cos(degrees * pi / 180 - end) - 20; };
    EXPECT_NEAR(S(360 + 2 * 10), nose(10), 1E-4);
    EXPECT_NEAR(S(360 - 2 * 45), flank(45), 1E-4);
    EXPECT_NEAR(S(0), 0.0, 1E-5);
    EXPECT_EQ(Value("Followtype"), 2.0);
    EXPECT_EQ(Value("Prime_Rad"), 20.0);
    EXPECT_EQ(Run("calc m.cam -o s.cam --levels size " + stamps).status, 0);
    // With a roller the prime radius is that of its centre.
    ASSERT_EQ(Run("import --arcs '20 60 5 8' --roller 9 -o m.cam " + stamps).status, 0);
    EXPECT_EQ(Value("Prime_Rad"), 29.0);
    EXPECT_EQ(Value("Follow_Rad"), 9.0);
    EXPECT_NEAR(S(180), 8.0, 1E-5);

    const auto refused = [this](const std::string& arguments, const std::string& why) {
        const Result result = Run("import " + arguments + " -o n.cam");
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_NE(result.err.find(why), std::string::npos) << result.err;
        EXPECT_FALSE(Exists("n.cam"));
    };
    refused("--arcs '20 60 5'", "not 'BASE FLANK NOSE LIFT'");
    refused("--arcs '20 60 5 x'", "'x' is not a number");
    refused("--arcs '20 15 5 8'", "The flank's radius must be larger than those of base and nose.");
    refused("--arcs '20 60 5 8' --oscillating", "--oscillating: the follower of a cam of arcs moves along a line");
    refused("--arcs '20 60 5 8' --roller x", "--roller: 'x' is not a number");
    refused("lobe.txt --arcs '20 60 5 8'", "either a file or --arcs tells what to import");
    refused("", "either a file or --arcs tells what to import");
}

TEST_F(Import_Cli, the_figures_of_a_lobe_are_shown_at_a_lift)
{
    ASSERT_EQ(Import("--close").status, 0);
    // 5 - 5 cos passes 2.5 at 60 and 300 degrees; its mean is 5.
    const std::string shown = Run("show m.cam Prime_Rad --lobe 2.5").out;
    const auto figure = [&](const std::string& name) {
        return Number_In(shown.substr(shown.find(name + " = ") + name.size() + 3));
    };
    EXPECT_NEAR(figure("Lobe opens"), 60.0, 1E-3);
    EXPECT_NEAR(figure("Lobe closes"), 300.0, 1E-3);
    EXPECT_NEAR(figure("Lobe duration"), 240.0, 1E-3);
    EXPECT_NEAR(figure("Lobe centre"), 180.0, 1E-3);
    EXPECT_NEAR(figure("Lobe peak"), 180.0, 1E-3);
    EXPECT_NEAR(figure("Lobe area"), 1800.0, 0.1);
    const std::string json = Run("show m.cam Prime_Rad --json --lobe 2.5").out;
    const std::string name = "\"Lobe duration\": ";
    ASSERT_NE(json.find(name), std::string::npos) << json;
    EXPECT_NEAR(Number_In(json.substr(json.find(name) + name.size())), 240.0, 1E-3);
    EXPECT_EQ(Run("show m.cam --lobe 10.5").status, 2);
    EXPECT_EQ(Run("show m.cam --lobe 0").status, 2);
}

TEST_F(Import_Cli, numbers_that_no_design_holds_are_refused)
{
    for (const char* const arguments :
         {"lobe.txt --prime 1e400", "lobe.txt --delta 1e400", "lobe.txt --rpm 1e39", "lobe.txt --shift 1e400",
          "lobe.txt --method smooth --bound 1e400", "--arcs '20 60 5 1e400'", "--arcs '20 60 5 8' --roller 1e400"}) {
        const Result result = Run(std::string("import ") + arguments + " -o n.cam");
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.err, "lobemax-cli: a number of the command line is too large\n") << arguments;
        EXPECT_FALSE(Exists("n.cam"));
    }
}

}  // namespace
}  // namespace lobemax
