// SPDX-License-Identifier: GPL-3.0-or-later
/// The curves of a law in normal form, for comparing laws: lift 1 over a segment of length 1.
#pragma once

#include <string_view>
#include <vector>

namespace lobemax {

/// Curves over x = theta / beta in 0..1 with unit lift, and their largest absolute values: the peak factors of
/// velocity, acceleration and jerk, by which laws are compared.
/// Source: docs/theory.md, (13); its table of peak factors.
struct Law_Curves {
    std::vector<double> x;
    std::vector<double> S;
    std::vector<double> V;
    std::vector<double> A;
    std::vector<double> J;
    double peak_V = 0.0;
    double peak_A = 0.0;
    double peak_J = 0.0;
};

/// Lays the law of a two-letter code over a rise of its own; no design is needed. Empty for a code that is no
/// closed-form law.
Law_Curves Curves_of_Law(std::string_view code);

}  // namespace lobemax
