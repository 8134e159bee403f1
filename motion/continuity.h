// SPDX-License-Identifier: GPL-3.0-or-later
/// Jumps of S, V and A where neighbouring segments meet.
#pragma once

#include <array>
#include <string>

#include "core/design_state.h"

namespace lobemax {

/// Values of S, V, A, J at the two ends of each segment: (segment, end 1 or 2, order of derivative).
using Segment_Ends = Bounded3<Single, 0, Max_Segments, 0, 2, 0, 3>;

/// Compares S, V and A (not J) on both sides of every joint, the one around the end of the cycle included.
///
/// The stored values count: in the seconds time base V and A carry the shaft speed, and a jump is judged in
/// those units.
/// @param Continuous  out: false when any jump is strictly above Jump_Limit, 0.001
/// @param Max_Jump    out: the largest jump of S, V and A, in their units
void ContinuityCheck(const Design_State& design, const Segment_Ends& Firstlast, Flag& Continuous,
                     Bounded<Single, 0, 2>& Max_Jump);

/// The segment at whose end the largest jump of S (0), V (1) or A (2) stands, the last of the cycle being the
/// joint to the first; 0 when there is no jump at all.
int Worst_Joint(const Design_State& design, int derivative);

/// Largest |S|, |V| or |A| of points 0..Max_Data_Points_used, which a jump is a percentage of.
double Largest_Absolute(const Design_State& design, int variable);

/// A jump as a percentage of the largest value of its variable; 0 where that is 0.
double Jump_Percent(const Design_State& design, int derivative);

/// Text of the box that follows the check, by Continuous and Max_Jump of the design.
std::string Continuity_Text(const Design_State& design);

/// The work of cmd_Done of the continuity report: checks the design and tells the user.
///
/// @return true when the design stands as it is, false when the user wants to redesign it (Cancel)
bool Continuity_Report(Design_State& design);

}  // namespace lobemax
