// SPDX-License-Identifier: GPL-3.0-or-later
/// A cubic B-spline through points of a curve, as CAD systems have it. docs/theory.md, 20.3.
#pragma once

#include <vector>

#include "shop/biarcs.h"
#include "truth/vector.h"

namespace lobemax {

/// A cubic B-spline whose end knots stand four times: it starts at its first control point and ends at its last.
struct Cubic_Spline {
    std::vector<double> knots;  // control points + 4, not falling
    std::vector<Vector> control;
    std::size_t points = 0;          // of the curve that it goes through
    double largest_deviation = 0.0;  // from the curve, measured between the points
    double at = 0.0;                 // parameter of the curve

    /// The point at a parameter between the first and the last knot.
    Vector At(double u) const;
};

/// Through as many points, even in the curve's parameter and doubled until the deviation is within the tolerance, from
/// corner to corner. A closed curve without a corner has a spline that is periodic, twice differentiable at its seam;
/// at a corner, and at the ends of an open curve, it leaves along the curve's tangent. (301) to (303)
/// @throws Fault{5} as Fit_Biarcs; where so many points as Most_Spline_Points do not do
Cubic_Spline Fit_Spline(const Curve_Samples& samples, double tolerance);
inline constexpr int Most_Spline_Points = 20000;

}  // namespace lobemax
