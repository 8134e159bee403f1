// SPDX-License-Identifier: GPL-3.0-or-later
/// When a 32-bit number that comes out of sines, arc tangents and powers is the same whoever works those out.
#pragma once

#include "core/real_math.h"

namespace lobemax::formulas {

/// What a product of a few factors may differ by, relative to itself, where one of them is a circular function or a
/// power of the C library or of SLEEF: each is within a unit in the last place of a double, each product half of one.
inline constexpr double library_error = 0x1p-48;

/// Whether all numbers within `error` of x have one 32-bit number. One in ten million has not, at library_error: such a
/// point is left to the scalar way, and the rows are the same to the bit at every width of core/lanes.h.
template <class X>
Mask_of<X> Rounds_Alike(X x, X error)
{
    return Rounded(x - error) == Rounded(x + error);
}
template <class X>
Mask_of<X> Rounds_Alike(X x)
{
    return Rounds_Alike(x, x * library_error);
}

}  // namespace lobemax::formulas
