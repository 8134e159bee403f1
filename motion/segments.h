// SPDX-License-Identifier: GPL-3.0-or-later
/// The segment table and the driver that turns each segment into stored points.
///
/// Point i of CalcData belongs to cam angle i x Deltatheta degrees from the start of the first segment.
/// S is stored as it is; V, A, J and Ping are stored per second, degree or radian by Time_Base.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/design_state.h"

namespace lobemax {

/// Shift and Gamma of every segment in use, from the betas, in degrees.
void Update_Segment_Angles(Design_State& design);

/// Stores the shaft speed, rad/s, with its square and cube. Exactly 0 is refused with a message and becomes 1.
void Set_Shaft_Speed(Design_State& design, Single rad_per_s);

/// Set_Shaft_Speed from the text of txt_Omega, revolutions per minute. docs/theory.md, (43).
void Read_Omega(Design_State& design, std::string_view txt_Omega);

/// Whether low <= value <= high; if not, the message appears, unless Quiet_Checks suppresses it.
bool Check_Range(const Design_State& design, double value, double low, double high, const std::string& message);

/// Angles of variable 0 (added up in 32 bits) for points 0..max_point, zeros for variables 1..max_variable.
/// Torque (8) is zeroed only while Torque_Start_Fresh; the external force (44) is refilled from its table.
void Clear_Motion_Data(Design_State& design, int max_point, int max_variable);

/// The zeroing of Clear_Motion_Data for variables first..max_variable, the angle left alone.
void Clear_Variables_From(Design_State& design, int max_point, int max_variable, int first);

/// What unticking the external force does: its table and row 44 are zeroed, and a motion is wanted again.
void Drop_External_Force(Design_State& design);

/// Sets the step: 1, 0.5, 0.25 or 0.125 degrees. The arrays are reallocated and all results lost; every
/// row waits for its calculation again. Any other step is refused: false, nothing changed.
bool Set_Step(Design_State& design, double Deltatheta);

/// What every calculation of a segment throws away: all later results, and the choice of a force function.
void Reset_Status(Design_State& design);

/// Whether a segment has a duration. One without is not calculated.
bool Has_Beta(const Design_State& design, int segment);

/// Whether every row in use has an end position: then cmd_Done is open.
bool All_Rows_Filled(const Design_State& design);

/// The work of cmd_CalcSeg on row 0..19, from the segment's stored texts, under its trap. A segment without a beta is
/// told of by its number and not calculated.
///
/// @param rpm  shaft speed as the screen shows it; none: the stored speed counts
/// @return     true when the segment's points were stored
bool Calc_Segment(Design_State& design, int row, std::optional<double> rpm = std::nullopt);

/// The work of cmd_CalcAll: every segment in turn, those behind one that was refused too. Calculated is set when all
/// were stored.
///
/// @param motion  true: a follower motion, false: an external force function
/// @return        true when all were stored
bool Calc_All(Design_State& design, bool motion, std::optional<double> rpm = std::nullopt);

/// What calculates row 0..19; true when its points were stored.
using Row_Runner = std::function<bool(int row)>;

/// The same where a row asks for more than its stored texts, as a screen does that opens the conditions first.
bool Calc_All(Design_State& design, bool motion, const Row_Runner& run);

/// The work of cmd_Done: later results cleared, the design stamped and counted, extremes of S found.
bool Motion_Done(Design_State& design, std::optional<double> rpm = std::nullopt);

}  // namespace lobemax
