// SPDX-License-Identifier: GPL-3.0-or-later
/// Segments given by a B-spline in the local angle that meets the conditions of the segment's table.
///
/// N conditions and order k make N basis functions over N + k knots 1..N + k, local degrees: the first k at 0, the
/// last k at the segment's end, N - k inside. Segments are 1..20 (error 9 otherwise).
/// Source: docs/theory.md, (46) to (50).
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "core/field_rule.h"
#include "motion/laws.h"
#include "motion/spline_rows.h"

namespace lobemax {

/// The sentence about an order below the least.
inline constexpr std::string_view Order_Too_Low = "Spline order must be four or greater";

inline constexpr int Min_Spline_Order = 4;
inline constexpr int Default_Spline_Order = 6;
inline constexpr int Max_Interior_Knots = 17;
inline constexpr int Max_Spline_Derivative = 4;

/// The basis functions that may differ from zero at a point, with their derivatives per degree.
struct Basis_Values {
    int first = 0;  // index of the first of them; as many as the order of the spline
    /// (derivative 0..4, function counted from first)
    std::array<std::array<double, Max_Bounds>, Max_Spline_Derivative + 1> value{};
};

/// Value at x of basis function i of an order, by the recursion of Cox and de Boor.
///
/// @param knots  knot 1 in element 1; element 0 is not used
/// @param last   index of the last basis function: its interval is closed at the right, and the function
///               after it is 0. A term with a denominator of 0 is 0.
/// @throws Fault{9} where the function reaches beyond the knots
/// Source: docs/theory.md, (46), (47).
double B_Spline(std::span<const double> knots, double x, int order, int i, int last);

/// One step of derivation: from the values of the functions span - order + 2..span of order - 1 (or from a
/// derivative of them) to the next derivative of the functions span - order + 1..span of the order, in place.
/// Source: docs/theory.md, (48).
void MakeDerivs(std::span<const double> knots, int span, int order, std::span<double> values);

/// All basis functions at x with their derivatives to order 4. Outside the segment the end pieces go on; a derivative
/// of an order at or above the spline's is 0.
void New_B_Spline(std::span<const double> knots, double x, int order, int last, Basis_Values& basis);

/// Writes the knots at both ends of a segment's spline.
void Boundary_Knots(Design_State& design, int Seg);

/// Writes the interior knots evenly and sets EvenKnots. docs/theory.md, (49).
void Even_Knots(Design_State& design, int Seg);

/// Counts the knots that order and conditions give and lays them evenly; the spline is to be calculated again. More of
/// them than the table holds are counted alone.
void Lay_Even_Knots(Design_State& design, int Seg);

/// Order and knots for the conditions asked for, without a judgement on their number: an order below 4 becomes 6, one
/// above the count becomes the count. Interior knots that were typed stay where they still fit; otherwise they become
/// even. What it stores follows from what was typed: no result falls.
void Lay_Knots(Design_State& design, int Seg);

/// Whether order and conditions need no more knots than the table holds.
bool Knots_Fit_Table(const Design_State& design, int Seg);

/// The limits of what the program handles, with their messages: 17 interior knots, and those of Knots_Fit_Table.
bool Knot_Count_Allowed(const Design_State& design, int Seg);

/// Lay_Knots, and the judgement on their number.
/// @return false, after a message, for more than 17 interior knots or more knots than the table holds
bool New_Spline(Design_State& design, int Seg);

/// A solved spline over a segment: S is a position, not a lift.
class Spline_Curve {
public:
    /// The point at local angle theta, degrees; derivatives per radian. Outside the segment the end pieces go on; at a
    /// knot it belongs to the piece that starts there, at the segment's end to the last. docs/theory.md, (50).
    Svajp At(double theta) const;

    /// The basis functions at theta, and the derivative of order d 0..4 per degree that they sum up to.
    void Basis(double theta, Basis_Values& basis) const;
    double Sum(const Basis_Values& basis, int d) const;

    /// The same with the basis held in 32 bits, as the table of the points has it: meant, some 1E-7 of the largest
    /// coefficient. @throws Fault{6} when a basis value is no Single
    double Sum_of_Tabulated(const Basis_Values& basis, int d) const;

    /// Stores points first to count - 1 of a run by the tabulated basis, many at a time: those before the first with a
    /// value that is no finite Single. Raises no fault.
    /// @return that point, or count
    std::size_t Store(const Spline_Run& run, std::size_t first, std::size_t count) const;

private:
    friend bool Solve_Spline(const Design_State& design, int Seg, Spline_Curve& curve);

    int order_ = 0;
    int count_ = 0;
    std::array<double, Max_Knots + 1> knots_{};  // knot 1 in element 1
    std::array<double, Max_Bounds> C_{};
};

/// Builds and solves the collocation system of the conditions that Read_Bounds stored for a segment, over its knots.
/// docs/theory.md, (50).
///
/// Reads Total_No_of_BCs, Theta_Normalized, Eq, Boundary, Orders, Knots.
/// @return false where the system is singular, which SimQ tells, or too few digits are left
/// @throws Fault{9} for a derivative or an order beyond the limits
bool Solve_Spline(const Design_State& design, int Seg, Spline_Curve& curve);

/// Why a spline may not have this order: it lies outside Min_Order to Max_Order.
Verdict Order_may_be(const Design_State& design, int Seg, double order);

/// Why knot 1..Number_of_Knots of a spline may not lie there, local degrees: below 0 or beyond a neighbour.
Verdict Knot_may_be(const Design_State& design, int Seg, int knot, double value);

/// The limits of the order, as the screen shows them.
int Min_Order(const Design_State& design, int Seg);
int Max_Order(const Design_State& design, int Seg);

/// The help texts of the knot screen, lines separated by '\n'.
std::string Order_Help(const Design_State& design, int Seg);
std::string Knot_Help();

}  // namespace lobemax
