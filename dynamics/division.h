// SPDX-License-Identifier: GPL-3.0-or-later
/// A division by what is constant over a run.
#pragma once

#include <cmath>

namespace lobemax {

/// x / divisor. Where the divisor is a power of two, as the usual steps of a cycle are, a product has the same bits and
/// is there sooner: an integration waits for each of its quotients.
class Division {
public:
    /// @param divisor  above zero
    explicit Division(double divisor) : divisor_(divisor), factor_(1.0 / divisor)
    {
        constexpr double of_power_of_two = 0.5;
        int exponent;
        exact_ = std::frexp(divisor, &exponent) == of_power_of_two;
    }
    double operator()(double x) const { return exact_ ? x * factor_ : x / divisor_; }

private:
    double divisor_;
    double factor_;
    bool exact_;
};

}  // namespace lobemax
