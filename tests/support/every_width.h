// SPDX-License-Identifier: GPL-3.0-or-later
/// The widths of core/lanes.h, for tests of kernels, and rows as bits: minus zero and not-a-numbers count.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "core/design_state.h"
#include "core/lanes.h"

namespace lobemax::testing {

/// The first works on one point after the other.
inline constexpr std::array every_width{Lane_Width::reference, Lane_Width::sse2, Lane_Width::avx2, Lane_Width::avx512};

using Row_Bits = std::vector<std::uint32_t>;

/// The points of these rows, one row behind the other.
inline Row_Bits Bits_of_Rows(const Design_State& of, std::initializer_list<int> rows)
{
    Row_Bits bits;
    for (const int row : rows)
        for (const Single x : of.results.CalcData.Points(row))
            bits.push_back(std::bit_cast<std::uint32_t>(x.Bits()));
    return bits;
}

/// How many differ; both have the same rows.
inline std::size_t Different(const Row_Bits& a, const Row_Bits& b)
{
    std::size_t different = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        different += a.at(i) == b.at(i) ? 0 : 1;
    return different;
}

}  // namespace lobemax::testing
