// SPDX-License-Identifier: GPL-3.0-or-later
/// Closed functions through measured points: a periodic cubic spline and a Fourier series, and their values and
/// derivatives on the grid of the cycle.
///
/// Angles of the data in radians, rising; displacements in the design's unit. What a fit gives stands in a Fit_Result:
/// rows 1 to 4 displacement and its first three derivatives, per degree. Source: docs/theory.md, 14.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// How a fit ended, in 16 bits.
enum class Fit_Status : std::uint16_t {
    too_small = 0,  // too few points, and a singular matrix
    success = 1,
    not_periodic = 2,
    few_points = 65534,  // -2: the matrix has fewer than three rows
    failed = 65535,      // -1: not positive definite
};

/// Rows 0 to 4 over the points of the grid: raw displacement, S, V, A, J per degree.
using Fit_Result = Table<Single>;

/// Pieces i = 0..n-1 over u = t - x(i): y + b u + c u^2 + d u^3.
struct Periodic_Spline {
    std::vector<Single> x;
    std::vector<Single> y;
    std::vector<Single> b;
    std::vector<Single> c;
    std::vector<Single> d;
};

/// Value and derivatives by t of a closed function.
struct Fit_Point {
    double s = 0.0;
    double v = 0.0;
    double a = 0.0;
    double j = 0.0;
};

/// Whether data end where they begin, have so many intervals and rise; a message tells what they do not.
Fit_Status Check_Closed(std::span<const Single> x, std::span<const Single> y, int fewest);

/// Builds and solves, (207) to (209). A message tells what is wrong: data that do not end where they begin, fewer than
/// three intervals, a repeated angle.
Fit_Status Spline_Coeffs(std::span<const Single> x, std::span<const Single> y, Periodic_Spline& spline);

/// A cyclic tridiagonal system of n rows, elements 1..n of each array (element 0 is not used): a1 the diagonal, a2(i)
/// couples rows i and i + 1, a3(1) row 1 and row n. All are overwritten; c(1..n) is the solution and c(0) = c(n).
Fit_Status Solve_Periodic(int n, std::span<Single> a1, std::span<Single> a2, std::span<Single> a3, std::span<Single> r,
                          std::span<Single> c);

/// Its factors L D L', the diagonal D in a1, the band of L in a2, its last row in a3. (210), (211)
Fit_Status Factor_Cyclic(int n, std::span<Single> a1, std::span<Single> a2, std::span<Single> a3);
/// Forward and backward substitution with the factors; r is overwritten.
void Back_Solve_Cyclic(int n, std::span<const Single> a1, std::span<const Single> a2, std::span<const Single> a3,
                       std::span<Single> r, std::span<Single> c);

/// The spline at t radians: the piece that ends at the first x at or above t. Below the first angle the pieces a turn
/// further on serve.
Fit_Point Spline_At(const Periodic_Spline& spline, double t);

/// A Fourier series of a period: a0 + sum of ak cos(k g) + bk sin(k g), g = (t - x0) w. (212), (213)
struct Fourier_Series {
    double x0 = 0.0;
    double w = 0.0;         // per radian
    std::vector<double> a;  // a(0) the mean
    std::vector<double> b;
};
/// Whether the angles go on by even steps, within a hundredth of one.
bool Even_Steps(std::span<const Single> x);

/// The series through all points, or the first harmonics of it. @param harmonics  0: all
Fourier_Series Fourier_Coeffs(std::span<const Single> x, std::span<const Single> y, int harmonics = 0);
Fit_Point Fourier_Eval(const Fourier_Series& series, double t);

/// The points of the grid by a function of the angle in radians: rows 1 to 4 of the result, row 0 of CalcData.
void Fill_Grid(Design_State& design, Fit_Result& result, const std::function<Fit_Point(double)>& at);

/// The whole fits: coefficients, then the grid; row 0 of CalcData becomes the angles. Rows 1 to 4 of the result.
/// @return whether there is a result; else a message was shown
bool Periodic_Spline_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y,
                         Fit_Result& result);
bool Fourier_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, Fit_Result& result,
                 int harmonics = 0);

/// Smooths a series by its fourth differences: each value becomes that of the parabola through its five neighbours that
/// misses them least. (214) @throws Fault{9} for fewer than five values
void Lanczos_Smooth(std::span<double> y);

/// First derivative of a closed series, its last value that of its first, h apart: the slope of the same parabola,
/// (2 f(i+2) + f(i+1) - f(i-1) - 2 f(i-2)) / 10 h. (215)
std::vector<double> Lanczos_Derivative(std::span<const double> f, double h);

/// The fit by a spline, smoothed, and three derivatives in turn.
bool Lanczos_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, Fit_Result& result);

}  // namespace lobemax
