// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the motion's fields: the segment table, its conditions and knots, step, speed, base.
#pragma once

#include <span>

#include "core/field_rule.h"

namespace lobemax {

std::span<const Field_Rule> Motion_Rules();

// ---- the sentences that screens and command line share
inline constexpr std::string_view Beta_Range = "Beta cannot be > 360 or < 0";
inline constexpr std::string_view End_Angle_Range = "End angle cannot be > 360 deg";
inline constexpr std::string_view Zero_Speed = " Shaft Omega cannot be zero - Please check";

/// Why a duration, degrees, may not be that of a segment: it lies outside 0..360, or an end angle then lies beyond 360.
/// The sentence names the row whose end it is, where that is a later one.
Verdict Beta_may_be(const Design_State& design, int segment, double beta);

/// The start angle in degrees, with the count of points that it stands for.
/// @throws Fault{6} when the count is no Integer
void Place_Start_Angle(Design_State& design, double angle);

/// Puts a position text into a row: a dwell's end is its start, the end of a row is the start of the next unless it is
/// the last; each row that changes waits for its calculation again.
void Put_Start_Value(Design_State& design, int segment, const std::string& text);
void Put_End_Value(Design_State& design, int segment, const std::string& text);

/// Whether a segment stands still, by its kind or its program.
bool Dwells(const Design_State& design, int segment);

/// A dwell ends where it starts, and the next row starts where it ends.
void Level_Dwell(Design_State& design, int segment);

}  // namespace lobemax
