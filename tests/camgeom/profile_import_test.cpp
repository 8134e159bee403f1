// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/startup.h"
#include "core/text.h"
#include "core/variables.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

constexpr double pi = 3.14159265358979323846;

// The reader of pairs.

void Expect_Pairs(std::string_view text, const std::vector<std::pair<double, double>>& expected)
{
    const Pairs_Read read = Read_Pairs(text);
    EXPECT_EQ(read.problem, "") << text;
    ASSERT_EQ(read.pairs.size(), expected.size()) << text;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(read.pairs[i].first, double{Single(expected[i].first)}) << text;
        EXPECT_EQ(read.pairs[i].second, double{Single(expected[i].second)}) << text;
    }
}

TEST(Pairs_of_a_Text, stand_apart_by_blanks_tabs_semicolons_or_a_comma)
{
    const std::vector<std::pair<double, double>> expected{{0, 1.5}, {90, -2.25}, {180, 3e-3}};
    Expect_Pairs("0 1.5\n90   -2.25\n180 3E-3\n", expected);
    Expect_Pairs("0\t1.5\n90\t-2.25\n180\t3e-3", expected);
    Expect_Pairs("0;1.5\n90; -2.25\n180 ;3E-3;\n", expected);
    Expect_Pairs("0,1.5\n90, -2.25\n180 , 3E-3\n", expected);
}

TEST(Pairs_of_a_Text, have_decimal_commas_where_nothing_else_can_be_meant)
{
    const std::vector<std::pair<double, double>> expected{{0, 1.5}, {90.25, -2.25}};
    Expect_Pairs("0;1,5\n90,25;-2,25\n", expected);
    Expect_Pairs("0 1,5\n90,25 -2,25\n", expected);
    Expect_Pairs("0\t1,5\r\n90,25\t-2,25\r\n", expected);
    // A comma between two numbers of a line that has nothing else separates, as it always did.
    Expect_Pairs("1,5\n2,25\n", {{1, 5}, {2, 25}});
}

TEST(Pairs_of_a_Text, end_in_any_line_end_and_may_begin_with_a_mark)
{
    const std::vector<std::pair<double, double>> expected{{0, 1}, {1, 2}, {2, 3}};
    Expect_Pairs("0 1\r\n1 2\r\n2 3\r\n", expected);
    Expect_Pairs("0 1\r1 2\r2 3\r", expected);
    Expect_Pairs(
        "\xEF\xBB\xBF"
        "0 1\n\n1 2\n   \n2 3",
        expected);
}

TEST(Pairs_of_a_Text, come_behind_heads_and_between_comments)
{
    Expect_Pairs("Angle Lift\n[deg] [mm]\n# measured on Monday\n0 1\n% a comment\n! another\n1 2\n// end\n",
                 {{0, 1}, {1, 2}});
    Expect_Pairs("\"Angle\",\"Lift\"\nCam No. 7\n0,1\n1,2\n", {{0, 1}, {1, 2}});
    Expect_Pairs("Winkel;Hub\nGrad;mm\n0;0,5\n", {{0, 0.5}});
}

TEST(Pairs_of_a_Text, name_the_line_that_is_none)
{
    const auto problem = [](std::string_view text) { return Read_Pairs(text).problem; };
    EXPECT_EQ(problem("0 1\n1 two\n"), "Line 2: '1 two' is not a pair of numbers.");
    EXPECT_EQ(problem("# head\n0 1\n\n1 2 3\n"),
              "Line 4: '1 2 3' has 3 entries, not two.  Each line holds one pair: angle and displacement, or x and y.");
    EXPECT_EQ(problem("0 1\n5\n"),
              "Line 2: '5' has 1 entry, not two.  Each line holds one pair: angle and displacement, or x and y.");
    EXPECT_EQ(problem("1,5,2,5\n"),
              "Line 1: '1,5,2,5' has 4 entries, not two.  Each line holds one pair: angle and displacement, or x and "
              "y.");
    EXPECT_EQ(problem("0 1\n1 1E+39\n"), "Line 2: '1 1E+39' is not a pair of numbers.") << "beyond 32 bits";
    EXPECT_EQ(problem("0 1\n1 1E+999\n"), "Line 2: '1 1E+999' is not a pair of numbers.");
    EXPECT_EQ(problem("0 1\n1 nan\n"), "Line 2: '1 nan' is not a pair of numbers.");
    EXPECT_EQ(problem(""), "There is no pair of numbers in this file.");
    EXPECT_EQ(problem("nothing\nhere\n"), "There is no pair of numbers in this file.");
    EXPECT_EQ(problem(std::string_view("0 1\n\0 2\n", 8)), "This is no text file.");
    const std::string long_line = "0 1\n" + std::string(200, 'x') + "\n";
    EXPECT_EQ(problem(long_line).size(), std::string("Line 2: '...' ").size() + 60 +
                                             std::string("has 1 entry, not two.  Each line holds one pair: angle and "
                                                         "displacement, or x and y.")
                                                 .size());
}

// The import.

class Import : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }

    static std::string Lines(int count, double step, double (*f)(double), double from = 0.0)
    {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += Shortest(from + i * step) + "\t" + Shortest(Single(f(from + i * step))) + "\n";
        return text;
    }
    static double Harmonic(double degrees) { return 5 - 5 * std::cos(degrees * pi / 180); }

    bool Take(const std::string& text, const Import_Choice& choice)
    {
        return Take_Profile(design, text, "lobe.txt", choice, profile_);
    }
    void Expect_Read() { script_.Expect({"File lobe.txt\n\n   of Cam Profile data successfully read."}); }
    static Import_Choice Choice()
    {
        Import_Choice choice;
        choice.prime = 30.0;
        return choice;
    }
    Script script_;
    Profile profile_;
};

TEST_F(Import, keeps_a_degree_for_360_pairs)
{
    Expect_Read();
    Import_Choice choice = Choice();
    choice.close = true;
    ASSERT_TRUE(Take(Lines(360, 1.0, Harmonic), choice));
    EXPECT_EQ(design.motion.Deltatheta, 1.0);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 360);
    EXPECT_EQ(profile_.Data_Count(), 361);
    EXPECT_EQ(profile_.y.back(), profile_.y.front());
    EXPECT_EQ(design.cam.Prime_Rad, 30.0F);
    EXPECT_EQ(design.motion.Lift, 10.0F);
}

TEST_F(Import, chooses_the_grid_by_the_count_of_pairs)
{
    struct Expected {
        int count;
        double step;
    };
    for (const Expected& e :
         {Expected{361, 0.5}, Expected{720, 0.5}, Expected{721, 0.25}, Expected{1441, 0.125}, Expected{2880, 0.125}}) {
        ASSERT_TRUE(Set_Step(design, 1.0));
        script_.Expect({"There are " + std::to_string(e.count) +
                        " data sets in this file. \nDelta Theta has been reset to allow that many."});
        Expect_Read();
        ASSERT_TRUE(Take(Lines(e.count, 360.0 / e.count, Harmonic), Choice()));
        EXPECT_EQ(design.motion.Deltatheta, e.step) << e.count;
        EXPECT_EQ(design.results.CalcData.Last_Point(), design.motion.Max_Data_Points_used);
    }
    ASSERT_TRUE(Set_Step(design, 0.5));
    Expect_Read();
    ASSERT_TRUE(Take(Lines(700, 360.0 / 700, Harmonic), Choice()));
    EXPECT_EQ(design.motion.Deltatheta, 0.5) << "720 points hold 700 pairs";
}

TEST_F(Import, stops_at_2881_pairs)
{
    for (const int count : {2881, 5000}) {
        script_.Expect({"There are " + std::to_string(count) +
                            " data sets in this file. \nCannot have more than 2881 for this routine.",
                        Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Take(Lines(count, 360.0 / count, Harmonic), Choice()));
        EXPECT_EQ(profile_.Data_Count(), 0);
    }
}

TEST_F(Import, asks_for_the_prime_radius)
{
    script_.Expect({"Please type the cam's prime radius in its box", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take(Lines(36, 10.0, Harmonic), {}));
    script_.Expect({"Import the data first.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Fit_Profile(design, {}, profile_));
}

TEST_F(Import, refuses_angles_that_do_not_rise_with_their_line)
{
    script_.Expect({"Line 4: the angle 20 does not rise above 30 of line 3.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take("0 0\n10 1\n30 2\n20 1\n40 0\n", Choice()));
    script_.Expect({"Line 3: the angle 10 does not rise above 10 of line 2.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take("0 0\n10 1\n10 1\n360 0\n", Choice()));
    script_.Expect(
        {"Line 3: the angles run over more than one turn, from 0 to 400 degrees.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take("0 0\n10 1\n400 0\n", Choice()));
    script_.Expect({"Line 2: 'x y' is not a pair of numbers.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take("0 0\nx y\n", Choice()));
}

TEST_F(Import, takes_the_mean_off_where_it_is_to_be_normalized)
{
    Expect_Read();
    Import_Choice choice = Choice();
    choice.normalize = true;
    ASSERT_TRUE(Take("0 12\n90 17\n180 22\n270 17\n360 12\n", choice));
    EXPECT_EQ(profile_.y[0], 0.0F);
    EXPECT_EQ(profile_.y[2], 10.0F);
    EXPECT_EQ(profile_.Raw_Displacement[2], 22.0F);
    EXPECT_EQ(design.motion.Lift, 10.0F);
}

TEST_F(Import, turns_points_into_angle_and_radius_in_any_order_and_closes_them)
{
    // An eccentric circle of radius 40 about (5, 0), by its points in the order of a scan that starts below.
    std::string text;
    for (int i = 0; i < 72; ++i) {
        const double t = (200 + i * 5) * pi / 180;
        text += Shortest(Single(5 + 40 * std::cos(t))) + "," + Shortest(Single(40 * std::sin(t))) + "\n";
    }
    Import_Choice choice = Choice();
    choice.coord = Import_Coord::XY;
    choice.prime = 35.0;
    Expect_Read();
    ASSERT_TRUE(Take(text, choice));
    ASSERT_EQ(profile_.Data_Count(), 73);
    EXPECT_EQ(profile_.y.back(), profile_.y.front());
    ASSERT_TRUE(Fit_Profile(design, choice, profile_));
    for (int i = 0; i <= 360; ++i) {
        const double t = i * pi / 180;
        const double radius = 5 * std::cos(t) + std::sqrt(1600 - 25 * std::sin(t) * std::sin(t));
        EXPECT_NEAR(profile_.result(1, i), radius - 35, 1E-4) << i;
    }
}

TEST_F(Import, fits_a_cycle_that_begins_elsewhere_and_shifts_it)
{
    Import_Choice choice = Choice();
    choice.close = true;
    for (const double shift : {0.0, 20.0, -50.0, 360.0}) {
        choice.shift = shift;
        Expect_Read();
        ASSERT_TRUE(Take(Lines(180, 2.0, Harmonic, 31.0), choice));
        ASSERT_TRUE(Fit_Profile(design, choice, profile_));
        for (int i = 0; i <= 360; i += 7)
            EXPECT_NEAR(profile_.result(1, i), Harmonic(i - shift), 1E-5) << i << " " << shift;
    }
}

TEST_F(Import, says_when_a_fit_fails_and_keeps_nothing_of_it)
{
    Expect_Read();
    ASSERT_TRUE(Take("0 0\n90 1\n180 2\n360 3\n", Choice()));
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    script_.Expect({"Something is wrong with the solution - cannot continue"});
    EXPECT_FALSE(Fit_Profile(design, Choice(), profile_));
    EXPECT_FALSE(profile_.fitted);
}

TEST_F(Import, tells_how_near_a_fit_comes_and_what_noise_does_to_it)
{
    Import_Choice choice = Choice();
    choice.close = true;
    Expect_Read();
    ASSERT_TRUE(Take(Lines(360, 1.0, Harmonic), choice));
    ASSERT_TRUE(Fit_Profile(design, choice, profile_));
    const Fit_Residuals smooth = Residuals_of(design, profile_);
    EXPECT_LT(smooth.largest, 1E-5) << "a spline goes through its points";
    EXPECT_LT(smooth.noise_share, 0.05);
    // White noise of 2 micrometres.
    std::mt19937 random(3);
    std::normal_distribution<double> error(0.0, 0.002);
    std::string text;
    for (int i = 0; i < 360; ++i)
        text += std::to_string(i) + " " + Shortest(Single(Harmonic(i) + error(random))) + "\n";
    choice.method = Fit_Method::lanczos;
    Expect_Read();
    ASSERT_TRUE(Take(text, choice));
    ASSERT_TRUE(Fit_Profile(design, choice, profile_));
    const Fit_Residuals rough = Residuals_of(design, profile_);
    EXPECT_NEAR(rough.noise, 0.002, 0.0004) << "found from the data alone";
    EXPECT_NEAR(rough.noise_share, 6 * 0.002 / (10 * std::pow(pi / 180, 2)), 1.0);
    // Smoothing moves a point by sqrt(18/35) of the noise.
    EXPECT_NEAR(rough.rms, 0.002 * std::sqrt(18.0 / 35.0), 0.0003);
    EXPECT_GT(rough.largest, rough.rms);
    const double moved = std::abs(profile_.result(1, static_cast<int>(std::lround(rough.angle))) -
                                  profile_.y[static_cast<std::size_t>(std::lround(rough.angle))]);
    EXPECT_NEAR(moved, rough.largest, 1E-6);
}

TEST_F(Import, tells_how_many_harmonics_its_noise_leaves)
{
    // Five harmonics of 1 mm and below, under noise of 5 micrometres: those above the fifth are noise.
    std::mt19937 random(11);
    std::normal_distribution<double> error(0.0, 0.005);
    std::string text;
    for (int i = 0; i < 360; ++i) {
        const double t = i * pi / 180;
        text += std::to_string(i) + " " +
                Shortest(Single(5 - 4 * std::cos(t) + std::sin(2 * t) + 0.3 * std::cos(5 * t) + error(random))) + "\n";
    }
    for (const bool close : {false, true}) {
        Import_Choice choice = Choice();
        choice.close = close;
        Expect_Read();
        ASSERT_TRUE(Take(text, choice));
        const auto harmonics = Harmonics_for_Noise(profile_);
        ASSERT_TRUE(harmonics);
        EXPECT_GE(*harmonics, 5);
        EXPECT_LE(*harmonics, 12);
    }
    Expect_Read();
    ASSERT_TRUE(Take(Lines(360, 1.0, Harmonic), Choice()));
    EXPECT_FALSE(Harmonics_for_Noise(profile_)) << "no noise to leave out";
}

TEST_F(Import, stores_its_functions_per_second)
{
    Set_Shaft_Speed(design, 10.0);
    Import_Choice choice = Choice();
    choice.close = true;
    Expect_Read();
    ASSERT_TRUE(Take(Lines(360, 1.0, Harmonic), choice));
    ASSERT_TRUE(Fit_Profile(design, choice, profile_));
    Store_Functions(design, choice, profile_);
    const auto& data = design.results.CalcData;
    for (int i = 0; i <= 360; i += 5) {
        const double t = i * pi / 180;
        EXPECT_NEAR(data(var::S, i), Harmonic(i), 1E-5);
        EXPECT_NEAR(data(var::V, i), 50 * std::sin(t), 5E-3);
        EXPECT_NEAR(data(var::A, i), 500 * std::cos(t), 5.0);
        EXPECT_NEAR(data(var::J, i), 1000 * profile_.result(4, i) * std::pow(180 / pi, 3), 1E-4 * 5000)
            << "not divided by 1000: meant";
        EXPECT_EQ(data(var::Ping, i), 0.0F);
    }
    EXPECT_NEAR(design.motion.MaxLift, 10.0, 1E-5);
    EXPECT_NEAR(design.motion.Max_Neg_Disp, 0.0, 1E-5);
    // The raw displacement in place of the fit.
    choice.raw = true;
    Store_Functions(design, choice, profile_);
    EXPECT_NEAR(data(var::S, 45), Harmonic(45), 1E-6);
}

// How near each method comes to a law.

struct Deviation {
    double S = 0.0, V = 0.0, A = 0.0, J = 0.0;  // largest, as a share of the law's own peak
};

/// A rise by a law over half a turn, the same back: fitted from samples of a step, with normal noise in mm.
Deviation Deviation_of(Fit_Method method, const char* code, double step, double noise = 0.0, int harmonics = 0,
                       double bound = 0.0)
{
    Host host;  // messages have their usual answers
    const Host before = Install_Host(std::move(host));
    EXPECT_TRUE(Sub_Main(design, "", {}));
    Motion_Group& m = design.motion;
    m.No_of_segments = 2;
    for (const int i : {1, 2}) {
        Pick_Motion(design, i, i == 1 ? 'R' : 'F');
        Pick_Program(design, i, code);
        m.Beta_Deg(i) = 180.0;
        m.Beta_Rad(i) = 180.0 / Deg_per_Rad;
        m.Start_Value(i) = i == 1 ? "0" : "10";
        m.End_Value(i) = i == 1 ? "10" : "0";
    }
    Update_Segment_Angles(design);
    EXPECT_TRUE(Set_Step(design, 0.5));
    EXPECT_TRUE(Calc_All(design, true));
    const Results_Group law = design.results;

    std::mt19937 random(7);
    std::normal_distribution<double> error(0.0, noise > 0.0 ? noise : 1.0);
    std::string text;
    // A step of 0 stands for uneven ones: a half, one, one and a half degrees in turn.
    double angle = 0.0;
    for (int i = 0; angle < 359.999; ++i) {
        const double lift = law.CalcData(var::S, static_cast<int>(std::lround(2 * angle)));
        text += Shortest(angle) + " " + Shortest(Single(noise > 0.0 ? lift + error(random) : lift)) + "\n";
        angle += step > 0.0 ? step : 0.5 * (1 + i % 3);
    }
    Import_Choice choice;
    choice.prime = 30.0;
    choice.method = method;
    choice.close = method != Fit_Method::fourier;
    choice.harmonics = harmonics;
    choice.bound = bound;
    Profile profile;
    EXPECT_TRUE(Take_Profile(design, text, "law", choice, profile));
    EXPECT_TRUE(Fit_Profile(design, choice, profile));
    Store_Functions(design, choice, profile);
    Deviation deviation;
    for (const auto& [row, share, scale] :
         {std::tuple{var::S, &deviation.S, 1.0}, std::tuple{var::V, &deviation.V, 1.0},
          std::tuple{var::A, &deviation.A, 1.0}, std::tuple{var::J, &deviation.J, 1000.0}}) {
        double peak = 0.0;
        for (int i = 0; i <= 720; ++i)
            peak = std::max(peak, std::abs(law.CalcData(row, i) * scale));
        for (int i = 0; i <= 720; ++i)
            *share = std::max(*share, std::abs(design.results.CalcData(row, i) - law.CalcData(row, i) * scale) / peak);
    }
    Install_Host(before);
    return deviation;
}

class Fit_of_a_Law : public ::testing::TestWithParam<const char*> {};

TEST_P(Fit_of_a_Law, comes_near_in_displacement_velocity_and_acceleration)
{
    // Displacements are kept in 32 bits, 5E-7 mm here: third derivatives at half a degree feel even that.
    for (const double step : {1.0, 0.5}) {
        for (const Fit_Method method : {Fit_Method::spline, Fit_Method::fourier}) {
            const Deviation d = Deviation_of(method, GetParam(), step);
            EXPECT_LT(d.S, 1E-6);
            EXPECT_LT(d.V, 1E-4);
            EXPECT_LT(d.A, 0.03);
        }
        const Deviation smooth = Deviation_of(Fit_Method::lanczos, GetParam(), step);
        EXPECT_LT(smooth.S, 1E-6);
        EXPECT_LT(smooth.V, 3E-4);
        EXPECT_LT(smooth.A, 0.05);
    }
}

TEST_P(Fit_of_a_Law, comes_near_from_uneven_steps_too)
{
    const Deviation spline = Deviation_of(Fit_Method::spline, GetParam(), 0.0);
    EXPECT_LT(spline.S, 1E-6);
    EXPECT_LT(spline.V, 1E-4);
    EXPECT_LT(spline.A, 0.03);
    const Deviation lanczos = Deviation_of(Fit_Method::lanczos, GetParam(), 0.0);
    EXPECT_LT(lanczos.V, 3E-4);
    EXPECT_LT(lanczos.A, 0.05);
    const Deviation smooth = Deviation_of(Fit_Method::smooth, GetParam(), 0.0, 0.001, 0, 0.004);
    EXPECT_LT(smooth.S, 5E-4);
    EXPECT_LT(smooth.A, 0.25);
}

TEST_P(Fit_of_a_Law, feels_a_micrometre_of_noise_by_its_method)
{
    for (const double step : {1.0, 0.5}) {
        const Deviation spline = Deviation_of(Fit_Method::spline, GetParam(), step, 0.001);
        EXPECT_LT(spline.S, 5E-4);
        EXPECT_LT(spline.V, 0.1);
        EXPECT_GT(spline.A, 2.0) << "the noise swamps the acceleration";
        const Deviation lanczos = Deviation_of(Fit_Method::lanczos, GetParam(), step, 0.001);
        EXPECT_LT(lanczos.V, 0.03);
        EXPECT_LT(lanczos.A, spline.A / 4);
        // Few harmonics leave the noise out.
        const Deviation few = Deviation_of(Fit_Method::fourier, GetParam(), step, 0.001, 15);
        EXPECT_LT(few.V, 0.01);
        EXPECT_LT(few.A, 0.2);
    }
}

TEST_P(Fit_of_a_Law, is_found_again_by_a_spline_that_may_move_each_point_by_the_noise)
{
    // A micrometre of noise, three and a half of it allowed. The largest errors stand where the law's jerk jumps.
    for (const double step : {1.0, 0.5}) {
        const Deviation smooth = Deviation_of(Fit_Method::smooth, GetParam(), step, 0.001, 0, 0.0035);
        const Deviation spline = Deviation_of(Fit_Method::spline, GetParam(), step, 0.001);
        EXPECT_LT(smooth.S, 5E-4);
        EXPECT_LT(smooth.V, 0.01);
        EXPECT_LT(smooth.A, 0.2);
        EXPECT_LT(smooth.A, spline.A / 10);
    }
    const Deviation exact = Deviation_of(Fit_Method::smooth, GetParam(), 1.0, 0.0, 0, 1E-5);
    EXPECT_LT(exact.S, 3E-6);
    EXPECT_LT(exact.A, 0.03);
}

INSTANTIATE_TEST_SUITE_P(Laws, Fit_of_a_Law, ::testing::Values("67", "CF", "MS"),
                         [](const auto& law) { return std::string("Law_") + law.param; });

}  // namespace
}  // namespace lobemax
