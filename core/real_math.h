// SPDX-License-Identifier: GPL-3.0-or-later
/// The words that a formula over any kind of real number is written in. Here they mean doubles and the C library;
/// core/lane_math.h has them for several doubles at once. A formula is a template over its number X and is the same
/// text for both:
///
///     template <class X> X Slope(X v, X s) { return Select(s == 0.0, X(PIH), Atan(v / s)); }
///
/// No word raises a fault or tells anything: what a point cannot have comes out as a not-a-number, an infinity or a
/// mask that the caller looks at.
#pragma once

#include <cmath>

namespace lobemax {

inline double Sin(double x)
{
    return std::sin(x);
}
inline double Cos(double x)
{
    return std::cos(x);
}
inline double Tan(double x)
{
    return std::tan(x);
}
inline double Atan(double x)
{
    return std::atan(x);
}
/// Square root; not-a-number below zero.
inline double Root(double x)
{
    return std::sqrt(x);
}
inline double Abs(double x)
{
    return std::fabs(x);
}
inline double Floor(double x)
{
    return std::floor(x);
}
/// x to the power y.
inline double Raised(double x, double y)
{
    return std::pow(x, y);
}
/// The nearest 32-bit number, as a store makes it; one that is too large becomes infinite.
inline double Rounded(double x)
{
    return static_cast<double>(static_cast<float>(x));
}
/// a where the condition holds, else b; both are worked out.
inline double Select(bool condition, double a, double b)
{
    return condition ? a : b;
}
inline bool Finite(double x)
{
    return std::isfinite(x);
}

/// Sine and cosine of one angle.
template <class X>
struct Circular {
    X sin;
    X cos;
};
inline Circular<double> Sin_Cos(double x)
{
    return {std::sin(x), std::cos(x)};
}

/// What a comparison of X gives.
template <class X>
using Mask_of = decltype(X(0.0) < X(0.0));

}  // namespace lobemax
