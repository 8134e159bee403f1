// SPDX-License-Identifier: GPL-3.0-or-later
/// The points of a cycle: the steps that a design may have, and the point that stands at an angle.
#pragma once

#include <array>

#include "core/basic_types.h"
#include "core/design_state.h"

namespace lobemax {

/// In degrees, coarsest first.
inline constexpr std::array<double, 4> Steps{1.0, 0.5, 0.25, 0.125};

/// Points of a whole cycle with some step, the one at 0 not counted.
inline Integer Points_of_Cycle(double step)
{
    return To_Integer(360.0 / step);
}

/// The point of the design's table nearest to an angle in degrees, ties to even.
/// @throws Fault{6} where it is beyond 16 bits; Fault{11} with a step of 0
inline Integer Point_at(const Design_State& design, double angle)
{
    return To_Integer(angle / design.motion.Deltatheta);
}

}  // namespace lobemax
