// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the vibration model's fields, and what the figures of a run may be, which no design keeps.
#pragma once

#include <span>
#include <string>

#include "core/field_rule.h"
#include "dynamics/vibration.h"

namespace lobemax {

std::span<const Field_Rule> Vibration_Rules();

// ---- the entries of the screen and the options of the command line

Verdict Zeta_of_Model_may_be(double zeta);
/// The model's closing spring may have no load; the dynamics screen asks for one.
Verdict Preload_of_Model_may_be(double preload);
/// Of a start time, an accuracy, a first step or a start value.
Verdict Not_Below_Zero_may_be(double value);
/// An end time as it is typed: more than twice the cam's period. What is not typed is twice the period, and may be.
/// @throws Fault{11} when the cam stands still
Verdict End_Time_may_be(const Design_State& design, double seconds);

/// Asks whether an accuracy below 0.0001 is to stand. @return whether it does; one that is not so small is not asked
bool Accept_Accuracy(double eps);

/// Whether a run can be made by these figures and the design's; if not, why. The cam turns forward, the accuracy is
/// above zero, the run covers the second turn, and its steps are some and not more than the memory kept for them.
Verdict Run_may_be(const Design_State& design, const Vibration_Run& run);

/// Return_Spring_Rate by the model picked: 0 for model 1, else the closing spring of the two. Follower_Stiffness is the
/// spring that was entered.
void Return_Spring_Follows(Design_State& design, const Field_Index& at);

}  // namespace lobemax
