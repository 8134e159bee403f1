// SPDX-License-Identifier: GPL-3.0-or-later
/// The angle of a term of the transform with its roundings, for one term or several (core/real_math.h).
#pragma once

#include <cmath>

#include "core/circle.h"

namespace lobemax::formulas {

/// The leading 40 of the 53 bits of a double.
inline double Leading_Bits(double x)
{
    long long bits;
    static_assert(sizeof bits == sizeof x);
    __builtin_memcpy(&bits, &x, sizeof x);
    bits &= ~0x1FFFLL;
    __builtin_memcpy(&x, &bits, sizeof x);
    return x;
}

/// How far the angle of a term as the plain sum forms it, which is rounded after each of its three operations, lies
/// above (k - 1) x 6.283185308 x m / N, for one harmonic k and the terms m = n - 1.
///
/// At 2880 points the angle reaches 18000 radians, where its roundings come to 6e-12: left out, they would be the
/// whole difference between a fast sum and the plain one. The slip is the difference of two products, found without
/// loss: of each the leading 40 bits of one factor times a count of up to 12 bits have room in a double.
/// Source: Dekker, A floating-point technique for extending the available precision, Numerische Mathematik 18.
struct Angle_Slip {
    double turn;
    double high;  // turn = high + low, the latter with what the product that made turn lost
    double low;
    double n;

    static Angle_Slip Of(int k, double n)
    {
        const double turn = (k - 1) * PI2;
        const double high = Leading_Bits(turn);
        const double lost = std::fma(1.0 - k, PI2, turn);
        return {turn, high, (turn - high) - lost, n};
    }

    /// The angle of term m, with its roundings.
    double Angle(double m) const { return turn * m / n; }

    /// The slip times N of terms m.
    template <class X>
    X Times_N(X m) const
    {
        const X angle = turn * m / n;
        const X leading = Leading_Bits(angle);
        return (leading * n - high * m) + ((angle - leading) * n - low * m);
    }
};

}  // namespace lobemax::formulas
