// SPDX-License-Identifier: GPL-3.0-or-later
/// What is typed about a segment's conditions beside their boxes: how many there are, a spline's order, its knots.
#pragma once

#include <string_view>

#include "core/design_state.h"

namespace lobemax {

/// Types the number of conditions, under its trap. An empty text does nothing. More filled boxes than asked
/// for are told of, with the count accepted.
/// @return false for a count outside 2..40: a message was shown, the former count stands
bool Set_No_of_Conditions(Design_State& design, int Seg, std::string_view text);

/// Types the order of a segment's spline, under its trap; the knots become even.
///
/// An order below 4 is refused; one above the count of conditions becomes the count. More than 17 interior knots are
/// told of, with the order taken.
/// @return false when a message was shown
bool Set_Order(Design_State& design, int Seg, std::string_view text);

/// Types interior knot 1..Interior_Knots of a segment's spline, local degrees, under its trap; EvenKnots becomes false.
/// @return false when a message was shown: the knot stays
bool Set_Knot(Design_State& design, int Seg, int interior, std::string_view text);

}  // namespace lobemax
