// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace lobemax {

/// digits times ten to the power.
struct Decimal {
    std::uint32_t digits;
    int power;
};

/// Of all decimals that read as this 32-bit number the one of the fewest digits, and of those the nearest to it. The
/// last of the digits is not 0.
///
/// Source: R. Giulietti, The Schubfach way to render doubles, 2020, in its form for 32 bits. The digits are those of
/// the standard library, in half of its time; all 32-bit numbers have been held against it once, and the tests
/// hold a part.
/// @param value  finite, above 0
Decimal Shortest_Decimal(float value);

}  // namespace lobemax
