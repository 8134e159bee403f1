// SPDX-License-Identifier: GPL-3.0-or-later
/// Extremes of a row: the loops over its values (core/lanes.h).
#pragma once

#include <cstddef>

namespace lobemax {

struct Row_Extremes {
    float largest;
    float smallest;
};

struct Row_Kernels {
    /// Largest and smallest of the first count values, at least one, all of them finite. Where that is zero and the row
    /// has zeros of both signs, it has either sign.
    Row_Extremes (*extremes)(const float* row, std::size_t count);

    /// First and last place of a value that is there; zeros of both signs are one value.
    std::size_t (*first_place)(const float* row, std::size_t count, float value);
    std::size_t (*last_place)(const float* row, std::size_t count, float value);
};

}  // namespace lobemax
