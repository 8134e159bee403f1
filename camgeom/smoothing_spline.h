// SPDX-License-Identifier: GPL-3.0-or-later
/// A closed cubic spline that bends as little as data allow which may each be moved by no more than a bound: what
/// measured lift needs before its accelerations mean anything.
///
/// Angles in radians, rising over the cycle; displacements and the bound in the design's unit. Everything runs in
/// double: second derivatives of fine steps ask for it. Source: docs/theory.md, 15; C. H. Reinsch, Smoothing by spline
/// functions, Numerische Mathematik 10 (1967), for the equations of an open spline.
#pragma once

#include <span>
#include <vector>

#include "camgeom/periodic_fit.h"
#include "core/basic_types.h"

namespace lobemax {

/// Its points 0..n, moved, with their second derivatives; the last is the first a cycle further on.
struct Smoothing_Spline {
    std::vector<double> x;
    std::vector<double> s;
    std::vector<double> curvature;
    double factor = 0.0;  // of the bending against the squares of the moves; 0: it goes through the data
};

/// The most that a point was moved by, and where, in radians.
struct Largest_Move {
    double distance = 0.0;
    double x = 0.0;
};

/// A symmetric cyclic system of five diagonals and n >= 5 rows: diagonal[i], next[i] of rows i and i + 1, beyond[i] of
/// rows i and i + 2, indices modulo n. Positive definite; O(n). (220)
std::vector<double> Solve_Cyclic_Five(std::span<const double> diagonal, std::span<const double> next,
                                      std::span<const double> beyond, std::span<const double> right);

/// The spline of one smoothing factor through at least five intervals. (216), (218), (219)
/// @param factor  radians^3; 0: the spline through the data
Smoothing_Spline Spline_of_Factor(std::span<const Single> x, std::span<const Single> y, double factor);

Largest_Move Largest_Move_of(const Smoothing_Spline& spline, std::span<const Single> y);

/// The smoothest spline of this kind that moves no point by more than the bound.
/// @return success; else a message tells what is wrong: data that are not closed, fewer than five intervals, a repeated
///         angle, a negative bound, or one of half the lift and more, which leaves nothing of the motion
Fit_Status Smooth_within(std::span<const Single> x, std::span<const Single> y, double bound, Smoothing_Spline& spline);

/// Value and derivatives at t radians, (217); below the first angle the pieces a turn further on serve.
Fit_Point Smoothing_Spline_At(const Smoothing_Spline& spline, double t);

/// The whole fit: the spline, then the grid. @param move  out: the most that a point was moved by
bool Smoothing_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, double bound,
                   Fit_Result& result, Largest_Move& move);

}  // namespace lobemax
