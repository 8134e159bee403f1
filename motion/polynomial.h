// SPDX-License-Identifier: GPL-3.0-or-later
/// Segments given by a table of boundary conditions: the table and its rules, and the polynomial that meets it.
///
/// The table has ten rows: row 0 at local angle 0, row 9 at local angle beta, rows 1 to 8 at angles of their
/// own, each with a box for S, V, A, J and Ping. The texts of the boxes rest in the design; a box that is not
/// empty is one condition. Spline segments take their conditions from the same table.
///
/// Segments are 1..20 (error 9 otherwise), conditions 1..40. Texts are read in the number format in force.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "core/design_state.h"
#include "core/field_rule.h"
#include "core/numeric.h"
#include "motion/laws.h"

namespace lobemax {

/// Fewest conditions of a segment, and the count of a table where none was asked for.
inline constexpr int Min_Bounds = 2;

/// The derivatives that a condition may name: S 0, V 1, A 2, J 3, Ping 4.
inline constexpr int Max_Bound_Order = 4;

/// The last row of the condition table, at the local angle beta; row 0 stands at 0.
inline constexpr int Last_Condition_Row = 9;

/// The text of one box of the condition table, row 0..9, order 0..4. @throws Fault{9} outside
std::string& Bound_Text(Design_State& design, int Seg, int row, int order);

/// Opens the table of a segment: rows 0 and 9 take its start and end positions as typed for their S boxes, and
/// a segment without a count of conditions asks for 2. Both follow from what was typed elsewhere: no result falls.
void Ask_Boundaries(Design_State& design, int Seg);

/// The conditions asked for: No_Conditions, or 2 where it is 0.
int Requested_Conditions(const Design_State& design, int Seg);

/// The conditions that the boxes hold. A row 1 to 8 without an angle counts nothing.
int Count_Filled_Boxes(Design_State& design, int Seg);

/// Why a segment may not have so many conditions: they are 2 to 40.
Verdict No_of_Conditions_may_be(double count);

/// Reads the boxes of a segment, which becomes the one at work, into its conditions.
///
/// Sets Poly_OK, and Poly_Lift_Fix where row 9 has no S. Lift is raised to the largest S. Accepted conditions
/// go to Constraints: (i, 1) local angle in degrees, (i, 2) order, (i, 3) value as typed.
/// @return Poly_OK; a message told of a refusal
/// @throws Fault{6} for a number that is no Single, Fault{11} where the shaft speed is 0
bool Read_Bounds(Design_State& design, int Seg);

/// Stores condition k of the segment at work, whose value as typed stands in BC(k): an angle in local degrees,
/// order 0..4. A beta of zero is refused with a message.
void Add_Bound(Design_State& design, int k, Single theta, int order);

/// Element (condition, coefficient) of the system: the derivative of order d of x^p at x in 0..1. docs/theory.md, (45).
double Bound_Element(int d, int p, double x);

/// Whether a solved system has too few digits left to meet its own conditions to a thousandth of their size.
///
/// The terms of a condition cancel down to its value; what cancels carries the rounding of a double with it.
/// Conditions of different orders are compared through the length over n: a derivative of order d weighs with
/// (length / n)^d.
/// @param A       matrix A(1..n, 1..n) before elimination
/// @param orders  derivative order of each condition
/// @param length  length of the segment in the variable of A
/// Source: docs/theory.md, (11).
bool Digits_Lost(int n, Matrix_View A, std::span<const double> solution, std::span<const double> right_side,
                 std::span<const int> orders, double length);

/// The coefficients C(0..count - 1) of the powers of x = theta / beta, in the unit of S.
struct Polynomial_Solution {
    int count = 0;
    std::array<double, Max_Bounds> C{};
};

/// Builds and solves the system of the conditions that Read_Bounds stored for a segment. docs/theory.md, (45).
///
/// Reads Total_No_of_BCs, Theta_Normalized, Eq, BC and Power. The coefficients are doubles: the table Coefficient holds
/// them in 32 bits, too few for the terms that cancel in a polynomial of many conditions.
/// @return false where the system is singular, which SimQ tells, or too few digits are left
bool Solve_Polynomial(const Design_State& design, int Seg, Polynomial_Solution& solution);

/// A solved polynomial over a segment of b radians: S is a position, not a lift.
class Polynomial_Curve {
public:
    /// @throws Fault{11} for a b of zero, Fault{6} where a power of 1 / b is no Single: they are held in 32 bits, meant
    Polynomial_Curve(const Polynomial_Solution& solution, double b);

    /// The point at x = theta / beta, derivatives per radian. Outside 0..1 the polynomial goes on.
    Svajp At(double x) const;

    /// Stores points of a run, as Segment_Law::Store does.
    std::size_t Store(const Segment_Run& run, std::size_t first, std::size_t count) const;

private:
    law_forms::Solved_Polynomial form_;
};

}  // namespace lobemax
