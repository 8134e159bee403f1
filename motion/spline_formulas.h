// SPDX-License-Identifier: GPL-3.0-or-later
/// The basis of a spline over any kind of real number (core/real_math.h), at places within one interval of its knots.
///
/// Knot 1 stands in element 1; `span` is the index of the interval's first knot. Lanes and doubles have the same bits.
#pragma once

#include "core/real_math.h"

namespace lobemax::formulas {

inline constexpr int spline_derivatives = 4;
inline constexpr int most_functions = 40;

/// One step of derivation: from the values of the functions span - order + 2..span of order - 1 (or from a derivative
/// of them) to the next derivative of the functions span - order + 1..span of the order, in place. docs/theory.md,
/// (48); a term with a denominator of 0 is 0.
template <class X>
void Derive(const double* knots, int span, int order, X* values)
{
    const int first = span - order + 1;
    X before = 0.0;  // what one function adds, the one before it loses
    for (int j = 0; j < order; ++j) {
        const double d = knots[first + j + order] - knots[first + j + 1];
        const X after = j < order - 1 && d != 0.0 ? values[j] / d : X(0.0);
        values[j] = (order - 1) * (before - after);
        before = after;
    }
}

/// The functions span - order + 1..span with their derivatives, value(derivative, function): derivatives of an order at
/// or above the spline's are 0. docs/theory.md, (46) to (48).
///
/// `work` has room for as many values as the spline's order, as value(derivative) has.
template <class X, class Value>
void Basis(const double* knots, X x, int order, int span, X* work, const Value& value)
{
    // Up the orders 1, 2 .. at x; the values of the orders that a derivative starts from are set aside.
    work[0] = 1.0;
    for (int m = 1; m <= order; ++m) {
        for (int j = m - 1; m > 1 && j >= 0; --j) {
            const int i = span - m + 1 + j;
            const double d1 = knots[i + m - 1] - knots[i];
            const double d2 = knots[i + m] - knots[i + 1];
            X sum = 0.0;
            if (j > 0 && d1 != 0.0)
                sum = sum + (x - knots[i]) / d1 * work[j - 1];
            if (j < m - 1 && d2 != 0.0)
                sum = sum + (knots[i + m] - x) / d2 * work[j];
            work[j] = sum;
        }
        if (order - m <= spline_derivatives)
            for (int j = 0; j < m; ++j)
                value(order - m)[j] = work[j];
    }
    for (int d = 1; d <= spline_derivatives; ++d) {
        X* const values = value(d);
        if (d >= order)
            for (int j = 0; j < order; ++j)
                values[j] = 0.0;
        else
            for (int m = order - d + 1; m <= order; ++m)
                Derive(knots, span, m, values);
    }
}

}  // namespace lobemax::formulas
