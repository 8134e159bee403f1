// SPDX-License-Identifier: GPL-3.0-or-later
/// Small numeric routines shared by all calculations: inverse circular functions, triangles, polar
/// coordinates, remainders, a linear solver, rounding, extremes and means, turning and shifting a point.
///
/// Arguments are doubles taken by value, so an argument may also be named as a result. Results held in the
/// design are Singles and round at their store. A Fault passes through to the trap of the caller.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// Arc cosine from the arc tangent, radians in (0, pi).
///
/// At both ends of the range, x = 1 and x = -1, the answer is the number 1, on purpose not 0 or pi: callers
/// are built on it. Outside the range Math_Error is set, with no message, and the answer is an empty value,
/// carried as 0. Math_Error is never cleared here. A not-a-number shows a message and answers 0.
/// Source: docs/theory.md, (1).
double FNArcCos(Design_State& design, double x);

/// The same routine under the name that formulas use.
inline double Arc_Cos(Design_State& design, double x)
{
    return FNArcCos(design, x);
}

/// Arc sine from the arc tangent, radians in (-pi/2, pi/2).
///
/// At x = 1 and x = -1 the answer is 0, on purpose not plus or minus pi/2. Otherwise as FNArcCos.
/// Source: docs/theory.md, (1).
double FNArcSin(Design_State& design, double x);
/// The same without a design; none out of the domain.
std::optional<double> Arc_Sine(double x);

/// Third side c of a triangle from the sides a and b, one length unit, and their included angle C, radians.
///
/// @return  false when c squared, held as a Single, came out negative: a message was shown, c is as it was
/// @throws Fault{6} when c squared is no finite Single
/// Source: law of cosines; docs/theory.md, (2).
bool CosineLaw_Side(double a, double b, double C, Single& c);

/// Angle A, radians, opposite the side a of a triangle of sides a, b, c, one length unit.
///
/// Sides that close no triangle set Math_Error as FNArcCos does, and A is then 0; a flat triangle gives the
/// 1 of FNArcCos.
/// @return  false when 2 b c, held as a Single, is exactly zero: a message was shown, A is as it was
/// @throws Fault{6} when numerator or denominator is no finite Single
/// Source: law of cosines, solved for the angle; docs/theory.md, (3).
bool CosineLaw_Angle(Design_State& design, double a, double b, double c, Single& A);

/// Angle of the point (x, y) in radians, from -pi/2 to 3 pi/2: callers rely on this range, which is not the
/// usual -pi to pi. The origin has angle 0. The order of the arguments is x, y.
double Atan2(double x, double y);

/// Atan2 in degrees, -90 to 270.
double Atan2D(double x, double y);

/// Radius, in the unit of x and y, and angle, degrees by the rule of Atan2, of the point (x, y).
/// @throws Fault{6} when the radius is no finite Single
void Cart_to_Polar(double x, double y, Single& radius, Single& angle);

/// Floored remainder (a / b - Int(a / b)) b: it has the sign of b. A quotient a hair below a whole number
/// may round up to b itself.
/// @throws Fault{11} when b is zero, Fault{6} when both are
/// Source: docs/theory.md, (6).
Single FN_Modulo(double a, double b);

/// One step of wrapping, not a loop: a value above base gives value + base when it is zero or negative and
/// value - base otherwise; any other value stays as it is, a negative one too.
void Modulo(double value, double base, Single& result);

/// A(1..rows, 1..columns) laid over row-major doubles that belong to the caller: A(i, j) stands at
/// (i - 1) * leading + (j - 1). Checked; a view is copied freely and never allocates.
class Matrix_View {
public:
    /// @param leading  elements from one row to the next, at least columns
    /// @throws Fault{9} when the matrix does not fit into the elements
    Matrix_View(std::span<double> elements, int rows, int columns, int leading);

    int Rows() const noexcept { return rows_; }
    int Columns() const noexcept { return columns_; }
    double& operator()(int i, int j) const { return Elements(i)[Checked_Place(j, 1, columns_)]; }
    /// Row i for a loop, checked once: A(i, j) is its element j - 1.
    std::span<double> Elements(int i) const
    {
        return elements_.subspan(Checked_Place(i, 1, rows_) * leading_, static_cast<std::size_t>(columns_));
    }

private:
    std::span<double> elements_;
    int rows_;
    int columns_;
    std::size_t leading_;
};

/// Solves A X = B by Gaussian elimination with row pivoting, in double precision; allocates nothing.
///
/// A later row replaces the candidate for the pivot only when it is strictly larger.
/// @param n       number of unknowns, at least 1
/// @param A       A(1..n, 1..n), overwritten; a larger matrix keeps what lies beyond
/// @param B       B(1..n) in elements 0..n - 1, overwritten by the solution
/// @param status  0: solved; otherwise the first column with no pivot, after a message that names it, and
///                B holds no solution
/// @throws Fault{9} when A or B holds fewer than n
/// Source: docs/theory.md, (9), (10).
void SimQ(int n, Matrix_View A, std::span<double> B, int& status);

/// Rounds to a number of decimals: the integer part (Int, the next whole number at or below) of
/// value x 10^decimals + 0.5, over 10^decimals. A half therefore goes up, for a negative value too: -2.5
/// gives -2. Negative decimals round to tens, hundreds and so on.
double FNRound(double value, int decimals);

/// Largest and smallest of array(first..last), indices from 0; both start from the element at first, which
/// alone counts when last lies below first.
/// @throws Fault{9} when an index lies outside the array
void MaxMin1(std::span<const Single> array, int first, int last, Single& largest, Single& smallest);

/// Extremes of a row, with the point of each.
struct Extremes {
    Single largest;
    Single smallest;
    int largest_point = 0;
    int smallest_point = 0;
};

/// Extremes of array(row, first..last); a later point wins only when strictly greater or strictly smaller.
/// @throws Fault{9} when the row or a point lies outside the array
Extremes MaxMin2(const Table<Single>& array, int row, int first, int last);

/// MaxMin2 under the name that the linkage's tables use.
inline Extremes MaxMin2A(const Table<Single>& array, int row, int first, int last)
{
    return MaxMin2(array, row, first, last);
}

/// Arithmetic mean of array(first..last), indices from 0: the sum over last - first + 1.
/// @throws Fault{9} when an index lies outside the array, Fault{6} when last is first - 1
void Average(int first, int last, std::span<const Single> array, Single& mean);

/// Mean along one index of a two-dimensional array, the sum over last - first + 1.
///
/// @param order  "I_Pointer" for array(first..last, fixed), "Pointer_I" for array(fixed, first..last); any
///               other text adds nothing, so that the mean is 0
/// @throws Fault{9} when an index lies outside the array, Fault{6} when last is first - 1
void Average2(int first, int last, const Table<Single>& array, std::string_view order, int fixed, Single& mean);

/// Turns the point (x, y) about the origin by sign x angle degrees, counter-clockwise; the angle is rounded
/// to a Single in radians.
void Rotate(double x, double y, double angle, double sign, Single& x2, Single& y2);

/// Shifts the point (x, y) by sign times (dx, dy), one length unit.
void Shift_Vector(double x, double y, double dx, double dy, double sign, Single& x2, Single& y2);

}  // namespace lobemax
