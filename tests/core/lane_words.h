// SPDX-License-Identifier: GPL-3.0-or-later
/// The words of core/lane_math.h, one width each, for tests/core/lanes_test.cpp.
#pragma once

#include <cstddef>

namespace lobemax::testing {

struct Lane_Words {
    using Word = void (*)(const float* from, double* to, std::size_t count);
    Word sin;
    Word cos;
    Word sine_of_both;
    Word cosine_of_both;
    Word tan;
    Word atan;
    Word root;
    Word abs;
    Word floor;
    Word rounded_third;  // x / 3 in 32 bits
    Word cube;           // by Raised
    Word larger;         // of x and 1, by Select; a not-a-number gives 1
    /// Stores 1 / x of the points that are not negative; two rows of it.
    std::size_t (*reciprocals)(const float* from, float* to, float* too, std::size_t first, std::size_t count);
};

}  // namespace lobemax::testing
