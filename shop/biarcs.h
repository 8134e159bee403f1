// SPDX-License-Identifier: GPL-3.0-or-later
/// A closed curve as arcs: as few as a greedy fit needs to stay within a tolerance of the curve, each tangent to the
/// next. docs/theory.md, 20.
#pragma once

#include <functional>
#include <vector>

#include "truth/retrace.h"
#include "truth/vector.h"

namespace lobemax {

/// A place of a curve.
struct Curve_Place {
    Vector point;
    Vector tangent;  // unit, the way the parameter runs
};

/// A curve over a parameter: the cam angle in degrees.
struct Shop_Curve {
    std::function<Curve_Place(double)> at;
    double from = 0.0;
    double to = 360.0;
    bool closed = true;          // the last place is the first
    std::vector<double> breaks;  // rising, between from and to: where the curve's pieces meet (segments of the motion)
    struct Circle {              // a stretch that is an exact arc: a dwell of a disk cam
        double from;
        double to;
    };
    std::vector<Circle> circles;
};

/// Arcs and lines along a curve.
struct Arc_Path {
    std::vector<Surface_Element> elements;
    std::vector<double> parameters;  // where each element starts, and where the last ends
    double largest_deviation = 0.0;  // from the curve, measured between the ends on an oversampled curve
    double at = 0.0;                 // parameter
};

/// @param tolerance  length, above 0. @throws Fault{5} for a tolerance or a curve that is none
Arc_Path Fit_Biarcs(const Shop_Curve& curve, double tolerance);

}  // namespace lobemax
