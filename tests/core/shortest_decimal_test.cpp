// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/shortest_decimal.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace lobemax {
namespace {

/// The library's shortest digits of a number, written the same way: "1234e-6".
std::string By_Library(float value)
{
    std::array<char, 64> text;
    const char* const end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific).ptr;
    const std::string whole(text.data(), static_cast<std::size_t>(end - text.data()));
    std::string digits = whole.substr(0, whole.find('e'));
    const int exponent = std::stoi(whole.substr(whole.find('e') + 1));
    if (digits.size() > 1)
        digits.erase(1, 1);
    return digits + "e" + std::to_string(exponent - static_cast<int>(digits.size()) + 1);
}

std::string By_Us(float value)
{
    const Decimal decimal = Shortest_Decimal(value);
    return std::to_string(decimal.digits) + "e" + std::to_string(decimal.power);
}

void Expect_Same(std::uint32_t bits)
{
    const auto value = std::bit_cast<float>(bits);
    ASSERT_EQ(By_Us(value), By_Library(value)) << std::hex << bits;
}

constexpr std::uint32_t one_exponent = 1U << 23;
constexpr std::uint32_t infinity = 255U << 23;

TEST(Shortest_Decimals, known_ones)
{
    EXPECT_EQ(By_Us(1.0F), "1e0");
    EXPECT_EQ(By_Us(0.1F), "1e-1");
    EXPECT_EQ(By_Us(25.4F), "254e-1");
    EXPECT_EQ(By_Us(1.0F / 3.0F), "33333334e-8");
    EXPECT_EQ(By_Us(16777216.0F), "16777216e0");
    EXPECT_EQ(By_Us(1e10F), "1e10");
    EXPECT_EQ(By_Us(std::numeric_limits<float>::max()), "34028235e31");
    EXPECT_EQ(By_Us(std::numeric_limits<float>::min()), "11754944e-45");
    EXPECT_EQ(By_Us(std::numeric_limits<float>::denorm_min()), "1e-45");
}

/// At a power of two the lower neighbour is half as far away as the upper one; below the least there are no more digits
/// to a number than its own.
TEST(Shortest_Decimals, about_every_power_of_two)
{
    for (std::uint32_t bits = one_exponent; bits < infinity; bits += one_exponent)
        for (std::uint32_t near = bits - 20; near <= bits + 20; ++near)
            ASSERT_NO_FATAL_FAILURE(Expect_Same(near));
    for (std::uint32_t bits = 1; bits < 2000; ++bits)
        ASSERT_NO_FATAL_FAILURE(Expect_Same(bits));
    for (int power = 0; power < 23; ++power)
        ASSERT_NO_FATAL_FAILURE(Expect_Same(1U << power));
}

/// All of them, 2 139 095 039, have been held against the library's once; here a part spread over all.
TEST(Shortest_Decimals, are_those_of_the_library)
{
    for (std::uint32_t bits = 1; bits < infinity; bits += 10007)
        ASSERT_NO_FATAL_FAILURE(Expect_Same(bits));
    for (int hundredths = 1; hundredths <= 100000; ++hundredths)  // what is typed
        ASSERT_NO_FATAL_FAILURE(Expect_Same(std::bit_cast<std::uint32_t>(static_cast<float>(hundredths) / 100.0F)));
}

/// The decimal reads as the number; one digit fewer, rounded either way, reads as another.
TEST(Shortest_Decimals, read_back_and_have_no_digit_too_many)
{
    const auto reads_as = [](std::uint32_t digits, int power) {
        const std::string text = std::to_string(digits) + "e" + std::to_string(power);
        float value = 0.0F;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    };
    for (std::uint32_t bits = 1; bits < infinity; bits += 99991) {
        const auto value = std::bit_cast<float>(bits);
        const auto [digits, power] = Shortest_Decimal(value);
        ASSERT_EQ(reads_as(digits, power), value);
        ASSERT_NE(digits % 10, 0U);
        if (digits < 10)
            continue;
        ASSERT_NE(reads_as(digits / 10, power + 1), value);
        ASSERT_NE(reads_as(digits / 10 + 1, power + 1), value);
    }
}

}  // namespace
}  // namespace lobemax
