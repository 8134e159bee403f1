// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "tests/core/lane_words.h"

namespace lobemax {

namespace {

using testing::Lane_Words;

/// word of count floats; a multiple of the lanes.
template <class F>
void Each(const float* from, double* to, std::size_t count, F word)
{
    for (std::size_t i = 0; i < count; i += lane_count) {
        const Lanes answer = word(Load_Lanes(from + i));
        __builtin_memcpy(to + i, &answer, sizeof answer);
    }
}

std::size_t Reciprocals(const float* from, float* to, float* too, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Lanes x = at[from];
        return at.Store(x >= 0.0, To_Row{to, 1.0 / x}, To_Row{too, 1.0 / x});
    });
}

const Lane_Words words{
    .sin = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Sin(x); }); },
    .cos = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Cos(x); }); },
    .sine_of_both = [](const float* f, double* t,
                       std::size_t n) { Each(f, t, n, [](Lanes x) { return Sin_Cos(x).sin; }); },
    .cosine_of_both = [](const float* f, double* t,
                         std::size_t n) { Each(f, t, n, [](Lanes x) { return Sin_Cos(x).cos; }); },
    .tan = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Tan(x); }); },
    .atan = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Atan(x); }); },
    .root = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Root(x); }); },
    .abs = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Abs(x); }); },
    .floor = [](const float* f, double* t, std::size_t n) { Each(f, t, n, [](Lanes x) { return Floor(x); }); },
    .rounded_third = [](const float* f, double* t,
                        std::size_t n) { Each(f, t, n, [](Lanes x) { return Rounded(x / 3.0); }); },
    .cube = [](const float* f, double* t,
               std::size_t n) { Each(f, t, n, [](Lanes x) { return Raised(x, Lanes(3.0)); }); },
    .larger = [](const float* f, double* t,
                 std::size_t n) { Each(f, t, n, [](Lanes x) { return Select(x > 1.0, x, Lanes(1.0)); }); },
    .reciprocals = Reciprocals};

}  // namespace

template <>
const Lane_Words& Kernels<Lane_Words, LOBEMAX_LANES>()
{
    return words;
}

}  // namespace lobemax
