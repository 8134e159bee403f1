// SPDX-License-Identifier: GPL-3.0-or-later
/// The formulas of core/numeric.h over any kind of real number (core/real_math.h), without messages and faults. Values
/// that the design holds in 32 bits are rounded where they are there.
#pragma once

#include "core/circle.h"
#include "core/real_math.h"

namespace lobemax::formulas {

/// Atan2: -pi/2 to 3 pi/2, 0 at the origin.
template <class X>
X Angle_of(X x, X y)
{
    const Mask_of<X> on_axis = x == 0.0;
    const X angle = Atan(y / Select(on_axis, X(1.0), x));
    const X on = Select(y > 0.0, X(PIH), Select(y < 0.0, X(-PIH), X(0.0)));
    return Select(on_axis, on, Select(x < 0.0, angle + PI, angle));  // the third quadrant lies above pi, meant
}

/// Cart_to_Polar; both in 32 bits.
template <class X>
struct Polar {
    X radius;
    X angle;  // degrees

    static Polar Of(X x, X y) { return {Rounded(Root(x * x + y * y)), Rounded(Angle_of(x, y) * Deg_per_Rad)}; }
};

/// FNArcCos and FNArcSin. docs/theory.md, (1).
template <class X>
struct Arc {
    X angle;
    Mask_of<X> exists;  // false outside of -1..1 and for a not-a-number, where the angle is of no use

    static Arc Cosine(X x)
    {
        const X d = 1.0 - x * x;
        const Mask_of<X> at_end = d == 0.0;
        const X angle = -Atan(x / Root(Select(at_end, X(1.0), d))) + PI / 2.0;
        return {Select(at_end, X(1.0), angle), d >= 0.0};  // meant: the ends have the number 1, not 0 or pi
    }
    static Arc Sine(X x)
    {
        const X d = 1.0 - x * x;
        const Mask_of<X> at_end = d == 0.0;
        const X angle = Atan(x / Root(Select(at_end, X(1.0), d)));
        return {Select(at_end, X(0.0), angle), d >= 0.0};  // meant: the ends have 0, not plus or minus pi/2
    }
};

/// CosineLaw_Side, from the cosine of the included angle; square and side in 32 bits. docs/theory.md, (2).
template <class X>
struct Third_Side {
    X c_squared;  // there is no side where it is negative or infinite
    X c;

    static Third_Side Of(double a, double b, X cos_C)
    {
        const X c_squared = Rounded(a * a + b * b - 2.0 * a * b * cos_C);
        return {c_squared, Rounded(Root(c_squared))};
    }
    Mask_of<X> Exists() const { return c_squared >= 0.0 && Finite(c_squared); }
};

/// FN_Modulo by a base that is not zero; in 32 bits. docs/theory.md, (6).
template <class X>
X Remainder(X a, double b)
{
    const X quotient = a / b;
    return Rounded((quotient - Floor(quotient)) * b);
}

template <class X>
struct Vector {
    X x;
    X y;
};

/// Rotate, by the sine and cosine of the angle; both coordinates in 32 bits.
template <class X, class A>
Vector<X> Rotated(const Vector<X>& p, const Circular<A>& angle)
{
    return {Rounded(p.x * angle.cos - p.y * angle.sin), Rounded(p.x * angle.sin + p.y * angle.cos)};
}

}  // namespace lobemax::formulas
