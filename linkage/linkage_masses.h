// SPDX-License-Identifier: GPL-3.0-or-later
/// A linkage reduced to one mass and one spring at the follower, by equal kinetic and potential energy.
///
/// Masses in the design's mass unit, inertias with the square of the forces' length (metres in all metric systems),
/// stiffnesses in its spring rate. Source: docs/theory.md, (200) to (206).
#pragma once

#include <optional>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// opt_Max_Avg: each link's speed is one number, its peak or its mean over the cycle.
enum class Speed_Choice { peak, average };

/// What moves with the follower: link 2 and the coupler's share at its end, and the rest of the train.
struct Effective_Mass {
    double at_follower = 0.0;
    double at_effector = 0.0;
    double Total() const { return at_follower + at_effector; }
};

/// Effective stiffness at the follower: the springs of the links in series, each carried over by the square of a
/// velocity ratio, (200) to (202). Six links of either kind count 6, 5 and 4, then 3 and 2.
/// @return empty after a message: a stiffness of zero, or links that do not move. @throws Fault{11} without an arm
std::optional<double> Link_Stiffness(const Design_State& design, Speed_Choice choice);

/// Effective mass at the follower: pivoted links by their inertia about the pivot, couplers by a mass at each end and
/// the inertia that these leave over, the slider by its mass, (203) to (205). A mass of zero may be.
///
/// A coupler whose centre of gravity lies off its line has a part that goes with the speed of its first end across that
/// line; one speed a link cannot hold it. Mass_over_Cycle has it.
/// @return empty after a message: links that do not move. @throws Fault{11} without an arm
std::optional<Effective_Mass> Link_Mass(const Design_State& design, Speed_Choice choice);

/// Twice the kinetic energy over the square of the follower's speed, pose by pose: what the train really weighs at the
/// follower as the cam turns, (206). Poses that do not connect are left out.
struct Mass_over_Cycle {
    double least = 0.0;
    double mean = 0.0;
    double largest = 0.0;
};
/// @throws Fault{11} without an arm
Mass_over_Cycle True_Mass_over_Cycle(Design_State& design);

}  // namespace lobemax
