// SPDX-License-Identifier: GPL-3.0-or-later
/// The points of a spline, stored many at a time: the loop over the rows (core/lanes.h).
#pragma once

#include <cstddef>

#include "motion/spline_formulas.h"

namespace lobemax {

/// Neighbouring points of the table from a segment's start on: point p has the local angle p step.
struct Spline_Run {
    double step;   // degrees
    double shift;  // degrees
    double scale[formulas::spline_derivatives + 1];
    float* angle;
    float* row[formulas::spline_derivatives + 1];  // S to Ping
};

/// A spline within one interval of its knots.
struct Spline_Piece {
    const double* knots;
    const double* C;  // of the functions 1, 2, ...
    int order;
    int span;
};

struct Spline_Kernels {
    /// Stores points first to count - 1, all within the piece, and returns the first that it did not store, or count.
    std::size_t (*store)(const Spline_Piece&, const Spline_Run&, std::size_t first, std::size_t count);
};

}  // namespace lobemax
