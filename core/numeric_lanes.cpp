// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "core/numeric_rows.h"

namespace lobemax {

namespace {

/// As many floats as fill a register.
inline constexpr std::size_t float_count = 2 * lane_count;
typedef float Floats __attribute__((vector_size(4 * float_count)));

Floats Load_Floats(const float* from)
{
    Floats floats;
    __builtin_memcpy(&floats, from, sizeof floats);
    return floats;
}

Row_Extremes Extremes_of(const float* row, std::size_t count)
{
    Row_Extremes found{row[0], row[0]};
    const auto take = [&found](float value) {
        found.largest = value > found.largest ? value : found.largest;
        found.smallest = value < found.smallest ? value : found.smallest;
    };
    if (count < float_count) {
        for (std::size_t i = 1; i < count; ++i)
            take(row[i]);
        return found;
    }
    Floats largest = Load_Floats(row);
    Floats smallest = largest;
    for (std::size_t i = float_count; i < count; i += float_count) {
        // The last ones of the row once more, rather than what lies behind it.
        const Floats x = Load_Floats(row + (i + float_count <= count ? i : count - float_count));
        largest = x > largest ? x : largest;
        smallest = x < smallest ? x : smallest;
    }
    for (std::size_t k = 0; k < float_count; ++k) {
        take(largest[k]);
        take(smallest[k]);
    }
    return found;
}

const Row_Kernels kernels{.extremes = Extremes_of};

}  // namespace

template <>
const Row_Kernels& Kernels<Row_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
