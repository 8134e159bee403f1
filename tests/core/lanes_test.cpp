// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lanes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "tests/core/lane_words.h"

namespace lobemax {
namespace {

using testing::Lane_Words;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr std::array widths{Lane_Width::reference, Lane_Width::sse2, Lane_Width::avx2, Lane_Width::avx512};

const Lane_Words& Words(Lane_Width width)
{
    const Forced_Lanes forced(width);
    return Kernels_in_Use<Lane_Words>();
}

/// Angles over several turns both ways, the quarters among them, large and small numbers.
std::vector<float> Some_Numbers()
{
    std::vector<float> numbers{0.0F,    -0.0F,   1.0F,    -1.0F,   1e-30F,   -1e-30F,  1e5F,   -1e5F,
                               1e-8F,   2.5F,    -2.5F,   0.5F,    359.5F,   1e18F,    -7.0F,  12.0F,
                               1.5707F, 3.1416F, 4.7124F, 6.2832F, -1.5708F, -3.1416F, 720.0F, 1e-3F};
    for (int i = -2000; i < 2000; ++i)
        numbers.push_back(static_cast<float>(i) * 0.00731F);
    return numbers;
}

std::vector<double> Of(Lane_Words::Word word, const std::vector<float>& numbers)
{
    std::vector<double> answers(numbers.size());
    word(numbers.data(), answers.data(), numbers.size());
    return answers;
}

/// Units in the last place of the first.
double Places(double a, double b)
{
    if (a == b || (std::isnan(a) && std::isnan(b)))
        return 0.0;
    return std::abs(a - b) / (std::nextafter(std::abs(a), std::numeric_limits<double>::infinity()) - std::abs(a));
}

struct Named_Word {
    const char* name;
    Lane_Words::Word Lane_Words::*word;
    double (*expected)(double);
    double places;  // that it may be off
};

const std::array named{
    Named_Word{"sin", &Lane_Words::sin, [](double x) { return std::sin(x); }, 1.5},
    Named_Word{"cos", &Lane_Words::cos, [](double x) { return std::cos(x); }, 1.5},
    Named_Word{"sine of both", &Lane_Words::sine_of_both, [](double x) { return std::sin(x); }, 1.5},
    Named_Word{"cosine of both", &Lane_Words::cosine_of_both, [](double x) { return std::cos(x); }, 1.5},
    Named_Word{"tan", &Lane_Words::tan, [](double x) { return std::tan(x); }, 1.5},
    Named_Word{"atan", &Lane_Words::atan, [](double x) { return std::atan(x); }, 1.5},
    Named_Word{"abs", &Lane_Words::abs, [](double x) { return std::abs(x); }, 0.0},
    Named_Word{"floor", &Lane_Words::floor, [](double x) { return std::floor(x); }, 0.0},
    Named_Word{"a rounded third", &Lane_Words::rounded_third,
               [](double x) { return double{static_cast<float>(x / 3.0)}; }, 0.0},
    Named_Word{"cube", &Lane_Words::cube, [](double x) { return std::pow(x, 3.0); }, 1.5},
    Named_Word{"larger", &Lane_Words::larger, [](double x) { return x > 1.0 ? x : 1.0; }, 0.0},
};

TEST(Lanes, each_word_is_that_of_the_c_library_but_for_a_last_place)
{
    const std::vector<float> numbers = Some_Numbers();
    for (const Lane_Width width : widths)
        for (const Named_Word& word : named) {
            const std::vector<double> answers = Of(Words(width).*word.word, numbers);
            for (std::size_t i = 0; i < numbers.size(); ++i)
                ASSERT_LE(Places(word.expected(double{numbers[i]}), answers[i]), word.places)
                    << word.name << " of " << numbers[i] << " at width " << static_cast<int>(width);
        }
}

TEST(Lanes, roots_are_rounded_as_the_processor_rounds_them)
{
    std::vector<float> numbers(64);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = 0.37F * static_cast<float>(i);
    for (const Lane_Width width : widths) {
        const std::vector<double> roots = Of(Words(width).root, numbers);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            EXPECT_EQ(roots[i], std::sqrt(double{numbers[i]}));
    }
}

TEST(Lanes, every_width_has_the_same_bits)
{
    const std::vector<float> numbers = Some_Numbers();
    for (const Named_Word& word : named) {
        const std::vector<double> two = Of(Words(Lane_Width::sse2).*word.word, numbers);
        for (const Lane_Width width : {Lane_Width::avx2, Lane_Width::avx512}) {
            const std::vector<double> more = Of(Words(width).*word.word, numbers);
            EXPECT_EQ(std::memcmp(two.data(), more.data(), two.size() * sizeof(double)), 0)
                << word.name << " at width " << static_cast<int>(width);
        }
    }
}

TEST(Lanes, not_a_number_stays_none_and_is_no_side_of_a_choice)
{
    std::vector<float> numbers(8, nan);
    for (const Lane_Width width : widths) {
        for (const double x : Of(Words(width).atan, numbers))
            EXPECT_TRUE(std::isnan(x));
        for (const double x : Of(Words(width).larger, numbers))
            EXPECT_EQ(x, 1.0);
    }
}

TEST(Lanes, a_zero_keeps_its_sign)
{
    std::vector<float> numbers(8, -0.0F);
    for (const Lane_Width width : widths)
        for (const double x : Of(Words(width).rounded_third, numbers))
            EXPECT_TRUE(x == 0.0 && std::signbit(x));
}

/// Reciprocals of so many points, `bad` at one of them, begun at `first`.
struct Reciprocal_Run {
    std::vector<float> from;
    std::vector<float> to;
    std::vector<float> too;
    std::size_t stopped;

    Reciprocal_Run(Lane_Width width, std::size_t count, std::size_t place, float bad, std::size_t first = 0)
        : from(count), to(count, -5.0F), too(count, -6.0F)
    {
        for (std::size_t i = 0; i < count; ++i)
            from[i] = static_cast<float>(i + 1);
        if (place < count)
            from[place] = bad;
        stopped = Words(width).reciprocals(from.data(), to.data(), too.data(), first, count);
    }
};

TEST(Lanes, all_points_of_any_count_are_stored)
{
    for (const Lane_Width width : widths)
        for (std::size_t count = 0; count < 40; ++count) {
            const Reciprocal_Run run(width, count, count, 0.0F);
            EXPECT_EQ(run.stopped, count);
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_EQ(run.to[i], 1.0F / static_cast<float>(i + 1)) << i << " of " << count;
                EXPECT_EQ(run.too[i], run.to[i]);
            }
        }
}

TEST(Lanes, what_cannot_be_stored_stops_the_run_and_nothing_behind_it_is_touched)
{
    for (const Lane_Width width : widths)
        for (const float bad : {0.0F, -1.0F, nan, 1e-39F})  // infinite, refused, no number, too large for 32 bits
            for (std::size_t count = 1; count < 30; ++count)
                for (std::size_t place = 0; place < count; ++place) {
                    const Reciprocal_Run run(width, count, place, bad);
                    ASSERT_EQ(run.stopped, place) << bad << " of " << count;
                    for (std::size_t i = 0; i < count; ++i) {
                        ASSERT_EQ(run.to[i], i < place ? 1.0F / static_cast<float>(i + 1) : -5.0F) << i;
                        ASSERT_EQ(run.too[i], i < place ? 1.0F / static_cast<float>(i + 1) : -6.0F) << i;
                    }
                }
}

TEST(Lanes, a_run_may_begin_anywhere)
{
    for (const Lane_Width width : widths)
        for (std::size_t first = 0; first < 20; ++first) {
            const Reciprocal_Run run(width, 20, 20, 0.0F, first);
            EXPECT_EQ(run.stopped, 20U);
            for (std::size_t i = 0; i < 20; ++i)
                EXPECT_EQ(run.to[i], i < first ? -5.0F : 1.0F / static_cast<float>(i + 1)) << i;
        }
}

TEST(Run_Points, hands_the_odd_points_over_and_goes_on_behind_them)
{
    for (const Lane_Width width : widths) {
        std::vector<float> from{1.0F, 0.0F, 4.0F, 5.0F, nan, 8.0F, -1.0F, 2.0F, 0.0F};
        std::vector<float> to(from.size(), 0.0F);
        std::vector<float> too(from.size(), 0.0F);
        std::vector<std::size_t> odd;
        const Lane_Words& words = Words(width);
        Run_Points(
            from.size(),
            [&](std::size_t first, std::size_t count) {
                return words.reciprocals(from.data(), to.data(), too.data(), first, count);
            },
            [&](std::size_t i) { odd.push_back(i); });
        EXPECT_EQ(odd, (std::vector<std::size_t>{1, 4, 6, 8}));
        EXPECT_EQ(to, (std::vector<float>{1.0F, 0.0F, 0.25F, 0.2F, 0.0F, 0.125F, 0.0F, 0.5F, 0.0F}));
    }
}

TEST(Run_Points, what_a_kernel_meets_beside_its_answer_is_no_fault_later)
{
    std::vector<float> from{0.0F, 2.0F};
    std::vector<float> to(2);
    Clear_Floating_Status();
    Run_Points(
        2,
        [&](std::size_t first, std::size_t count) {
            return Words(Lane_Width::sse2).reciprocals(from.data(), to.data(), to.data(), first, count);
        },
        [](std::size_t) {});
    volatile double huge = 1e300;
    try {
        const Single too_large = huge * 10.0;
        FAIL() << too_large;
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), overflow);
    }
}

TEST(Forced_Lanes, hold_while_they_live_and_never_beyond_the_processor)
{
    const Lane_Width usual = Lanes_in_Use();
    {
        const Forced_Lanes outer(Lane_Width::sse2);
        EXPECT_EQ(Lanes_in_Use(), std::min(Lane_Width::sse2, Widest_Lanes()));
        {
            const Forced_Lanes inner(Lane_Width::reference);
            EXPECT_EQ(Lanes_in_Use(), Lane_Width::reference);
        }
        EXPECT_EQ(Lanes_in_Use(), std::min(Lane_Width::sse2, Widest_Lanes()));
        const Forced_Lanes widest(Lane_Width::avx512);
        EXPECT_EQ(Lanes_in_Use(), Widest_Lanes());
    }
    EXPECT_EQ(Lanes_in_Use(), usual);
}

}  // namespace
}  // namespace lobemax
