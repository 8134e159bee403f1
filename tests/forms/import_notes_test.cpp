// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/import_notes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/startup.h"
#include "tests/support/number_in.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Number_In;
using testing::Script;

constexpr double pi = 3.14159265358979323846;

class Notes_of_an_Import : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        choice_.prime = 30.0;
        choice_.close = true;
    }
    void TearDown() override { design = {}; }

    /// A harmonic of 10 mm over the turn with normal noise, at steps of a degree from 0 up to an angle.
    std::vector<std::string> Notes(double noise, int last = 359, Decimal_Symbol symbol = Decimal_Symbol::point)
    {
        std::mt19937 random(3);
        std::normal_distribution<double> error(0.0, 1.0);
        std::string text;
        for (int i = 0; i <= last; ++i)
            text += std::to_string(i) + " " + Shortest(Single(5 - 5 * std::cos(i * pi / 180) + noise * error(random))) +
                    "\n";
        EXPECT_TRUE(Take_Profile(design, text, "", choice_, profile_));
        EXPECT_TRUE(Fit_Profile(design, choice_, profile_));
        return Import_Notes(design, choice_, profile_, symbol);
    }
    Script script_;
    Import_Choice choice_;
    Profile profile_;
};

TEST_F(Notes_of_an_Import, say_nothing_before_a_fit)
{
    EXPECT_TRUE(Import_Notes(design, choice_, profile_, Decimal_Symbol::point).empty());
}

TEST_F(Notes_of_an_Import, tell_how_far_a_fit_misses_clean_data_and_no_more)
{
    const auto notes = Notes(0.0);
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(notes[0].starts_with("The fit misses the data by 0 mm at most, at ")) << notes[0];
    EXPECT_TRUE(notes[0].ends_with(" deg; root mean square 0 mm.")) << notes[0];
}

TEST_F(Notes_of_an_Import, tell_what_noise_does_to_a_spline)
{
    const auto notes = Notes(0.001);
    ASSERT_EQ(notes.size(), 2U);
    const std::string& note = notes[1];
    constexpr std::string_view before = "The data are rough by about ";
    ASSERT_TRUE(note.starts_with(before)) << note;
    EXPECT_NEAR(Number_In(note.substr(before.size())), 0.001, 0.0002);
    // 6 times the noise per square degree, of an acceleration that ranges over 10 per square radian.
    const std::string_view middle = "an acceleration of it that is ";
    const std::size_t at = note.find(middle);
    ASSERT_NE(at, std::string::npos);
    EXPECT_NEAR(Number_In(note.substr(at + middle.size())), 100 * 6 * 0.001 / (10 * std::pow(pi / 180, 2)), 40);
    EXPECT_TRUE(
        note.ends_with(" % of the whole.  Take a smoothing spline, Lanczos, or a Fourier series of few "
                       "harmonics."))
        << note;
    choice_.method = Fit_Method::lanczos;
    EXPECT_TRUE(Notes(0.001)[1].ends_with(": what stands in acceleration and jerk may be this noise."));
}

TEST_F(Notes_of_an_Import, tell_how_far_a_smoothing_went_and_where)
{
    choice_.method = Fit_Method::smooth;
    choice_.bound = 0.004;
    const auto notes = Notes(0.001);
    ASSERT_EQ(notes.size(), 2U) << "the noise is out";
    EXPECT_TRUE(notes[1].starts_with("The smoothing moves a point by 0.004 mm at most, at ")) << notes[1];
    EXPECT_TRUE(notes[1].ends_with(" deg; 0.004 mm are allowed.")) << notes[1];
    // The place is that of the point that lies farthest off.
    const double degrees =
        Number_In(notes[1].substr(std::string("The smoothing moves a point by 0.004 mm at most, at ").size()));
    const auto i = static_cast<int>(std::lround(degrees));
    EXPECT_NEAR(std::abs(profile_.result(1, i) - profile_.y[static_cast<std::size_t>(i)]), 0.004, 1E-5);
    choice_.bound = 0.001;
    const auto tight = Notes(0.001);
    ASSERT_EQ(tight.size(), 3U);
    EXPECT_TRUE(
        tight[2].ends_with(" mm: less than 3.5 times that as the bound leaves some of it in acceleration and jerk."))
        << tight[2];
}

TEST_F(Notes_of_an_Import, tell_of_a_cycle_that_is_not_a_turn)
{
    // The fit takes the data for the whole cycle.
    choice_.close = false;
    choice_.method = Fit_Method::fourier;
    const auto notes = Notes(0.0, 299);
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_EQ(notes[1],
              "The data cover 300 deg of a turn, and the fit takes this for the whole cycle: beyond it it does not "
              "hold.  Close the cycle.");
    EXPECT_EQ(Notes(0.0).size(), 1U);
}

TEST_F(Notes_of_an_Import, are_written_in_the_number_format_asked_for)
{
    choice_.method = Fit_Method::smooth;
    choice_.bound = 0.004;
    const auto notes = Notes(0.001, 359, Decimal_Symbol::comma);
    EXPECT_TRUE(notes[1].ends_with(" deg; 0,004 mm are allowed.")) << notes[1];
}

}  // namespace
}  // namespace lobemax
