// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/division.h"

#include <gtest/gtest.h>

#include <random>

namespace lobemax {
namespace {

TEST(Divisions, have_the_bits_of_the_quotient_for_every_divisor)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(0.0, 360.0);
    for (const double divisor : {0.125, 0.25, 0.5, 1.0, 2.0, 4.0, 0.1, 0.2, 3.0, 5.0, 0.3333333432674408, 360.0}) {
        const Division by(divisor);
        for (int k = 0; k < 10000; ++k) {
            const double x = angle(random);
            ASSERT_EQ(by(x), x / divisor) << x << " / " << divisor;
        }
        EXPECT_EQ(by(0.0), 0.0);
    }
}

}  // namespace
}  // namespace lobemax
