// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/shortest_decimal.h"

#include <array>
#include <bit>
#include <cstddef>

namespace lobemax {

namespace {

// A power of two 2^q lies between two powers of ten; logarithms as fractions of a power of two hold for every q and k
// that a Single needs.

/// The whole part of log10(2^q), or of log10(3/4 2^q).
constexpr int Log10_of_Power_of_2(int q, bool three_quarters)
{
    return (q * 1262611 - (three_quarters ? 524031 : 0)) >> 22;
}

/// The whole part of log2(10^k).
constexpr int Log2_of_Power_of_10(int k)
{
    return (k * 1741647) >> 19;
}

/// A whole number of up to 192 bits, for the table below.
struct Wide {
    std::array<std::uint32_t, 6> parts{};  // lowest first

    constexpr void Times_10()
    {
        std::uint64_t carry = 0;
        for (std::uint32_t& part : parts) {
            carry += std::uint64_t{part} * 10;
            part = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    constexpr bool Bit(int place) const
    {
        return ((parts[static_cast<std::size_t>(place / 32)] >> (place % 32)) & 1U) != 0;
    }
    constexpr void Shift_In(bool bit)
    {
        std::uint32_t carry = bit ? 1 : 0;
        for (std::uint32_t& part : parts) {
            const std::uint32_t next = part >> 31;
            part = (part << 1) | carry;
            carry = next;
        }
    }
    constexpr bool Reaches(const Wide& other) const
    {
        for (std::size_t i = parts.size(); i-- > 0;)
            if (parts[i] != other.parts[i])
                return parts[i] > other.parts[i];
        return true;
    }
    constexpr void Take_Away(const Wide& other)
    {
        std::uint64_t borrow = 0;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::uint64_t rest = std::uint64_t{parts[i]} - other.parts[i] - borrow;
            parts[i] = static_cast<std::uint32_t>(rest);
            borrow = rest >> 63;
        }
    }
};

constexpr Wide Power_of_10(int k)
{
    Wide power{{1}};
    for (int i = 0; i < k; ++i)
        power.Times_10();
    return power;
}

/// The first 64 bits of 10^k, rounded up: 10^k 2^(63 - log2(10^k)).
constexpr std::uint64_t Leading_Bits(int k)
{
    const Wide power = Power_of_10(k < 0 ? -k : k);
    const int highest = Log2_of_Power_of_10(k);  // place of the highest bit
    std::uint64_t bits = 0;
    bool more = false;  // than these bits
    if (k >= 0) {
        for (int place = highest; place > highest - 64; --place)
            bits = (bits << 1) | (place >= 0 && power.Bit(place) ? 1 : 0);
        for (int place = 0; place <= highest - 64; ++place)
            more = more || power.Bit(place);
    } else {
        Wide rest{{1}};  // of a division of 1 by the power, bit by bit
        for (int place = 0; place > highest - 64; --place) {
            const bool one = rest.Reaches(power);
            if (one)
                rest.Take_Away(power);
            bits = (bits << 1) | (one ? 1 : 0);
            rest.Shift_In(false);
        }
        more = true;
    }
    return bits + (more ? 1 : 0);
}

constexpr int least_power = -31;
constexpr int most_power = 45;

constexpr auto leading_bits = [] {
    std::array<std::uint64_t, most_power - least_power + 1> table{};
    for (int k = least_power; k <= most_power; ++k)
        table[static_cast<std::size_t>(k - least_power)] = Leading_Bits(k);
    return table;
}();

/// The upper 32 bits of the product of 64 and 32 bits; odd where what is left of it is not nothing. So it lies on the
/// same side of every even number as the product itself.
constexpr std::uint32_t Upper_Bits_to_Odd(std::uint64_t bits, std::uint32_t factor)
{
    const std::uint64_t low = (bits & 0xFFFFFFFFU) * factor;
    const std::uint64_t high = (bits >> 32) * factor + (low >> 32);
    return static_cast<std::uint32_t>(high >> 32) | (static_cast<std::uint32_t>(high) > 1 ? 1U : 0U);
}

/// Without the zeros behind its other digits.
constexpr Decimal Trimmed(Decimal decimal)
{
    while (decimal.digits % 100 == 0) {
        decimal.digits /= 100;
        decimal.power += 2;
    }
    if (decimal.digits % 10 == 0) {
        decimal.digits /= 10;
        ++decimal.power;
    }
    return decimal;
}

/// The shortest decimal of c 2^q, whose lower neighbour may be but half as far away as the upper one.
Decimal Shortest_of(std::uint32_t c, int q, bool lower_is_closer)
{
    // In quarters of 2^q: the number and the ends of the interval of all that is rounded to it. They are brought to
    // quarters of 10^k, the greatest power of ten with a multiple in the interval for sure.
    const int k = Log10_of_Power_of_2(q, lower_is_closer);
    const int shift = q + Log2_of_Power_of_10(-k) + 1;
    const std::uint64_t power = leading_bits[static_cast<std::size_t>(-k - least_power)];
    const auto in_quarters = [&](std::uint32_t quarters) { return Upper_Bits_to_Odd(power, quarters << shift); };
    const std::uint32_t number = in_quarters(4 * c);
    const std::uint32_t open = c % 2;  // an even c has the ends of its interval too
    const std::uint32_t lower = in_quarters(4 * c - 2 + (lower_is_closer ? 1 : 0)) + open;
    const std::uint32_t upper = in_quarters(4 * c + 2) - open;
    // Two neighbours of the number among the multiples: of 10^(k+1), of which one at most lies in the interval, then of
    // 10^k.
    const std::uint32_t below = number / 4;
    if (const std::uint32_t tens = below / 10; tens > 0) {
        const bool lower_fits = lower <= 40 * tens;
        const bool upper_fits = 40 * tens + 40 <= upper;
        if (lower_fits != upper_fits)
            return {tens + (upper_fits ? 1 : 0), k + 1};
    }
    const bool lower_fits = lower <= 4 * below;
    const bool upper_fits = 4 * below + 4 <= upper;
    if (lower_fits != upper_fits)
        return {below + (upper_fits ? 1 : 0), k};
    const std::uint32_t middle = 4 * below + 2;
    const bool nearer_to_upper = number > middle || (number == middle && below % 2 != 0);
    return {below + (nearer_to_upper ? 1 : 0), k};
}

}  // namespace

Decimal Shortest_Decimal(float value)
{
    constexpr int fraction_bits = 23;
    constexpr int least_exponent = -149;
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t fraction = bits & ((1U << fraction_bits) - 1);
    const int exponent = static_cast<int>(bits >> fraction_bits);
    if (exponent == 0)
        return Trimmed(Shortest_of(fraction, least_exponent, false));
    return Trimmed(
        Shortest_of(fraction | (1U << fraction_bits), least_exponent + exponent - 1, fraction == 0 && exponent > 1));
}

}  // namespace lobemax
