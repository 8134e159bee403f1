// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/fourier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <string>
#include <vector>

#include "core/lanes.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Script;

constexpr double pi = 3.14159265358979323846;

/// The transform as its definition says it: two nested sums, a cosine and a sine for each term.
std::vector<std::complex<double>> Plain_Sum(int variable, int first, int last)
{
    const int N = last - first;
    std::vector<std::complex<double>> harmonics;
    for (int k = 1; k <= N; ++k) {
        double real = 0.0;
        double imag = 0.0;
        for (int n = 1; n <= N; ++n) {
            const double a = ((k - 1) * 6.283185308) * (n - 1) / N;
            const double x = design.results.CalcData(variable, first + n - 1);
            real += std::cos(a) * x / N;
            imag -= std::sin(a) * x / N;
        }
        harmonics.emplace_back(real, imag);
    }
    return harmonics;
}

class Fourier : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    }
    void TearDown() override { design = {}; }

    static double B(int row, int k) { return design.results.Fft_Work_B(row, k); }
    static double A(int row, int k) { return design.results.Fft_Work_A(row, k); }
    static double Stored(int variable, int k) { return design.results.CalcData(variable, k); }
    static void Fill(int variable, const auto& function)
    {
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
            design.results.CalcData(variable, i) = function(i);
    }
    static void Expect_Plain_Sum(int variable, int first, int last)
    {
        Calc_DFT(design, variable, first, last);
        const auto plain = Plain_Sum(variable, first, last);
        double largest = 0.0;
        for (const auto& value : plain)
            largest = std::max({largest, std::abs(value.real()), std::abs(value.imag())});
        for (int k = 1; k <= last - first; ++k) {
            ASSERT_NEAR(B(0, k), plain[static_cast<std::size_t>(k - 1)].real(), 1e-12 * largest) << k;
            ASSERT_NEAR(B(1, k), plain[static_cast<std::size_t>(k - 1)].imag(), 1e-12 * largest) << k;
        }
    }

    Script script_;
};

TEST_F(Fourier, it_is_the_plain_double_sum_for_any_count_of_points)
{
    for (const int last : {1, 2, 3, 4, 7, 17, 90, 97, 180, 359, 360})
        Expect_Plain_Sum(var::A, 0, last);
    Expect_Plain_Sum(var::V, 13, 110);  // a prime count that starts inside
}

TEST_F(Fourier, it_is_the_plain_double_sum_at_the_finest_step)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    ASSERT_TRUE(Calc_All(design, true));
    Expect_Plain_Sum(var::J, 0, 2880);
    Expect_Plain_Sum(var::A, 0, 2879);
}

TEST_F(Fourier, a_spike_and_noise_follow_the_roundings_of_the_plain_sum)
{
    // All harmonics of a spike are of one size, so nothing hides what its angle loses by rounding: up to 6e-12 here.
    ASSERT_TRUE(Set_Step(design, 0.125));
    Fill(var::S, [](int i) { return i == 2870 ? 1.0 : 0.0; });
    Expect_Plain_Sum(var::S, 0, 2880);
    std::mt19937 random(1);
    Fill(var::S, [&](int) { return static_cast<double>(random()) / 4294967296.0 - 0.5; });
    Expect_Plain_Sum(var::S, 0, 2879);  // a prime
    Expect_Plain_Sum(var::S, 1440, 2879);
}

TEST_F(Fourier, it_has_the_same_bits_at_every_width_of_lanes)
{
    ASSERT_TRUE(Set_Step(design, 0.125));
    ASSERT_TRUE(Calc_All(design, true));
    for (const int last : {2880, 2879, 1441, 97, 5, 1}) {
        const auto harmonics = [&](Lane_Width width) {
            const Forced_Lanes forced(width);
            Calc_DFT(design, var::A, 0, last);
            std::vector<double> all;
            for (const int row : {0, 1, 2, 3, 4})
                for (int k = 1; k <= last; ++k)
                    all.push_back(B(row, k));
            return all;
        };
        const std::vector<double> reference = harmonics(Lane_Width::reference);
        for (const Lane_Width width : {Lane_Width::sse2, Lane_Width::avx2, Lane_Width::avx512})
            EXPECT_EQ(harmonics(width), reference) << last << ", " << static_cast<int>(width);
    }
}

TEST_F(Fourier, a_variable_of_zeros_has_no_harmonic_and_no_phase)
{
    Fill(var::S, [](int) { return 0.0; });
    ASSERT_TRUE(Do_DFT(design, var::S, 0, 360, 15));
    for (int row = 0; row <= 4; ++row)
        for (int k = 1; k <= 180; ++k)
            ASSERT_EQ(A(row, k), 0.0);
    EXPECT_EQ(Harmonic_Power(design), 0.0);
    EXPECT_EQ(Harmonic_Sum(design), 0.0);
}

TEST_F(Fourier, a_constant_gives_its_value_at_entry_1_and_nothing_elsewhere)
{
    Fill(var::S, [](int) { return 7.5; });
    Calc_DFT(design, var::S, 0, 360);
    EXPECT_NEAR(B(0, 1), 7.5, 1e-12);
    EXPECT_EQ(B(1, 1), 0.0);
    for (int k = 2; k <= 360; ++k)
        // The circle constant is 8.2e-10 above two pi: of k - 1 turns so much is left over, at most 4.7e-8 of the
        // value.
        ASSERT_LT(B(2, k), 7.5 * 5e-8) << k;
    EXPECT_EQ(design.motion.Fft_Points, 360);
}

TEST_F(Fourier, a_cosine_and_a_sine_stand_at_their_harmonic)
{
    Fill(var::S, [](int i) { return 3.0 * std::cos(5 * i * pi / 180) + 4.0 * std::sin(5 * i * pi / 180) + 2.0; });
    ASSERT_TRUE(Do_DFT(design, var::S, 0, 360, 15));
    // One-sided values are twice those of the full transform, the mean's too.
    EXPECT_NEAR(A(0, 6), 3.0, 1e-6);
    EXPECT_NEAR(A(1, 6), -4.0, 1e-6);
    EXPECT_NEAR(A(2, 6), 5.0, 1e-6);
    EXPECT_NEAR(A(4, 6), 25.0, 1e-5);
    EXPECT_NEAR(A(3, 6), std::atan(-4.0 / 3.0) * 180 / pi, 1e-5);
    EXPECT_NEAR(A(0, 1), 4.0, 1e-6);
    EXPECT_NEAR(B(0, 1), 2.0, 1e-6);
    EXPECT_NEAR(B(0, 6), 1.5, 1e-6);
    EXPECT_EQ(Stored(18, 6), Single(A(0, 6)));
    EXPECT_EQ(Stored(19, 6), Single(A(1, 6)));
    EXPECT_EQ(Stored(20, 6), Single(A(2, 6)));
    EXPECT_EQ(Stored(21, 6), Single(A(3, 6)));
}

TEST_F(Fourier, the_phase_does_not_look_at_the_quadrant)
{
    EXPECT_EQ(Dft_Phase(0.0, 0.0), 0.0);
    EXPECT_NEAR(Dft_Phase(0.0, 2.0), 90.0, 1e-7);
    EXPECT_NEAR(Dft_Phase(0.0, -2.0), 90.0, 1e-7);  // +90 also for a negative imaginary part, meant
    EXPECT_NEAR(Dft_Phase(-1.0, -1.0), 45.0, 1e-7);
    EXPECT_NEAR(Dft_Phase(-1.0, 1.0), -45.0, 1e-7);
}

TEST_F(Fourier, a_segment_has_the_harmonics_of_its_own_length)
{
    const Dft_Range range = Range_of_Segment(design, 1);
    EXPECT_EQ(range.first, 0.0);
    EXPECT_EQ(range.last, 90.0);
    ASSERT_TRUE(Do_DFT(design, var::V, range.first, range.last, 15));
    EXPECT_EQ(design.motion.Fft_Points, 90);
    EXPECT_EQ(design.motion.Fft_Half, 45);
    const Dft_Range third = Range_of_Segment(design, 3);
    EXPECT_EQ(third.first, 180.0);
    EXPECT_EQ(third.last, 270.0);
    EXPECT_EQ(Range_of_Segment(design, 0).last, 360.0);
    EXPECT_THROW(Range_of_Segment(design, 5), Fault);
}

TEST_F(Fourier, an_odd_count_of_points_has_half_of_them_rounded_up)
{
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 45, 15));
    EXPECT_EQ(design.motion.Fft_Half, 23);
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 360, 15));
    EXPECT_EQ(design.motion.Fft_Half, 180);
}

TEST_F(Fourier, nothing_of_a_longer_transform_remains_in_the_rows)
{
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    ASSERT_NE(Stored(20, 100), 0.0);
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 90, 15));
    for (int variable = 18; variable <= 21; ++variable)
        for (int p = 46; p <= 360; ++p)
            ASSERT_EQ(Stored(variable, p), 0.0);
}

TEST_F(Fourier, the_power_of_all_harmonics_is_the_mean_square_of_the_samples)
{
    // Parseval. An odd count has no harmonic at half the count; an even one adds that harmonic's square.
    for (const int n : {89, 360}) {
        ASSERT_TRUE(Do_DFT(design, var::A, 0, n, 180));
        double mean_square = 0.0;
        for (int i = 0; i < n; ++i)
            mean_square += Stored(var::A, i) * Stored(var::A, i) / n;
        const double nyquist = n % 2 == 0 ? B(4, n / 2 + 1) : 0.0;
        EXPECT_NEAR(Harmonic_Power(design) + nyquist, mean_square, mean_square * 1e-6) << n;
    }
}

TEST_F(Fourier, the_sum_of_the_amplitudes_bounds_the_signal)
{
    Fill(var::S, [](int i) { return 2.0 + 3.0 * std::cos(i * pi / 180) + 1.5 * std::cos(2 * i * pi / 180); });
    ASSERT_TRUE(Do_DFT(design, var::S, 0, 360, 15));
    EXPECT_NEAR(Harmonic_Sum(design), 6.5, 1e-5);  // reached at angle 0
    EXPECT_NEAR(Harmonic_Power(design), 4.0 + 9.0 / 2 + 2.25 / 2, 1e-5);
    design.motion.No_Harmonics = 2;
    EXPECT_NEAR(Harmonic_Sum(design), 5.0, 1e-5);
}

TEST_F(Fourier, no_more_harmonics_are_shown_than_there_are)
{
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 20, 150));
    EXPECT_EQ(Shown_Harmonics(design), 10);
    design.motion.No_Harmonics = -3;
    EXPECT_EQ(Shown_Harmonics(design), 0);
    EXPECT_EQ(Harmonic_Power(design), 0.0);
}

TEST_F(Fourier, harmonics_above_half_the_points_are_capped_with_a_message)
{
    script_.Expect(
        {"Number of harmonics cannot exceed 1/2 the number of data points available.\n"
         "If you want more bandwidth, recalculate all data with smaller increments. \n"
         "Use the [INPUT] button from the Home Screen to do so."});
    EXPECT_EQ(Set_Harmonics(design, 2000), 180);
    EXPECT_EQ(design.motion.No_Harmonics, 180);
    EXPECT_EQ(Set_Harmonics(design, 180), 180);
    EXPECT_EQ(Set_Harmonics(design, 15), 15);
}

TEST_F(Fourier, it_starts_with_a_variable_and_a_count)
{
    script_.Expect({"Please select a variable from the list provided", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Transform(false, std::nullopt, 15));
    script_.Expect({" Please select a function for FFT calculation", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Transform(true, std::nullopt, 15));
    script_.Expect({" Must set the number of harmonics to a value > 0", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(May_Transform(true, var::A, 0));
    EXPECT_TRUE(May_Transform(true, var::A, 1));
}

TEST_F(Fourier, a_range_outside_the_table_is_reported_and_changes_no_row)
{
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    const double before = Stored(18, 3);
    for (const auto& [first, last] : std::vector<std::pair<int, int>>{{0, 361}, {10, 10}, {20, 10}, {-1, 10}}) {
        script_.Expect(Error_Box(9, "Index out of bounds", "Do_DFT"));
        EXPECT_FALSE(Do_DFT(design, var::A, first, last, 15)) << first << " " << last;
    }
    script_.Expect(Error_Box(9, "Index out of bounds", "Do_DFT"));
    EXPECT_FALSE(Do_DFT(design, 54, 0, 360, 15));
    EXPECT_EQ(Stored(18, 3), before);
}

TEST_F(Fourier, what_fits_no_single_or_no_integer_is_reported_and_changes_no_row)
{
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    const double before = Stored(18, 3);
    ASSERT_NE(before, 0.0);
    Fill(var::S, [](int) { return 3e38; });  // the fold doubles the mean
    script_.Expect(Error_Box(6, "Overflow", "Do_DFT"));
    EXPECT_FALSE(Do_DFT(design, var::S, 0, 360, 20));
    EXPECT_EQ(Stored(18, 3), before);
    EXPECT_EQ(design.motion.No_Harmonics, 15);
    script_.Expect(Error_Box(6, "Overflow", "Do_DFT"));
    EXPECT_FALSE(Do_DFT(design, var::A, 0, 360, 40000));
    EXPECT_EQ(design.motion.No_Harmonics, 15);
}

TEST_F(Fourier, the_screen_names_function_and_units)
{
    EXPECT_EQ(Fft_Function_Text(design, var::A), "Fourier Transform of  Accel");
    EXPECT_EQ(Fft_Power_Unit(design, var::Rho), "(mm) ^2");
    EXPECT_EQ(Fft_Sum_Unit(design, var::Rho), "(mm)");
}

TEST_F(Fourier, done_tells_where_the_result_is_and_clear_takes_it_away)
{
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    EXPECT_FALSE(design.flags.FFT_Done);
    script_.Expect(
        {" The FFT of the selected function is \n"
         " now available for output as \n"
         " 'Current FFT' from the Preset Format\n"
         " lists on the PRINT and PLOT screens"});
    Finish_FFT(design);
    EXPECT_TRUE(design.flags.FFT_Done);
    Clear_FFT(design);
    EXPECT_FALSE(design.flags.FFT_Done);
    EXPECT_EQ(Stored(20, 1), 0.0);
    EXPECT_EQ(A(2, 1), 0.0);
    EXPECT_EQ(design.motion.Fft_Points, 0);
}

}  // namespace
}  // namespace lobemax
