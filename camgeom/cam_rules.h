// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the fields of cam and follower.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/field_rule.h"

namespace lobemax {

std::span<const Field_Rule> Cam_Rules();

/// The kinds of cam, as the field "Camtype$" has them.
inline constexpr std::string_view Cam_Types = "Radial|Barrel|Linear";

/// Shortest arm, in the length unit.
inline constexpr double Smallest_Arm = 0.001;

/// Whether a follower arm of that radius meets the cam; it always does where the follower translates or the cam is
/// linear.
/// @param proposal  out: the radius that the sentence proposes, where the arm misses
Verdict Arm_may_be(const Design_State& design, double ArmRad, std::string& proposal);

/// Gives the cam a kind by its words; only a radial cam carries a flat face.
void Put_Cam(Design_State& design, const std::string& Camtype, const std::string& Barrel_Type);

/// Gives the follower a roller, or a flat face: which has no radius and no offset, and rides on a radial cam.
void Put_Follower(Design_State& design, bool roller);

}  // namespace lobemax
