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

/// Which of the lanes from a place on have a value.
unsigned Found(const float* row, std::size_t at, float value)
{
    return Bits_of(Load_Lanes(row + at) == Lanes(static_cast<double>(value)));
}

std::size_t First_Place(const float* row, std::size_t count, float value)
{
    std::size_t i = 0;
    for (; i + lane_count <= count; i += lane_count)
        if (const unsigned found = Found(row, i, value); found != 0)
            return i + static_cast<std::size_t>(__builtin_ctz(found));
    while (row[i] != value)
        ++i;
    return i;
}

std::size_t Last_Place(const float* row, std::size_t count, float value)
{
    std::size_t end = count;
    for (; end >= lane_count; end -= lane_count)
        if (const unsigned found = Found(row, end - lane_count, value); found != 0)
            return end - lane_count + 31U - static_cast<std::size_t>(__builtin_clz(found));
    while (row[end - 1] != value)
        --end;
    return end - 1;
}

const Row_Kernels kernels{.extremes = Extremes_of, .first_place = First_Place, .last_place = Last_Place};

}  // namespace

template <>
const Row_Kernels& Kernels<Row_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
