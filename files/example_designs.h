// SPDX-License-Identifier: GPL-3.0-or-later
/// The examples menu: a design from the library, worked up from its motion to its forces.
#pragma once

#include <string_view>

namespace lobemax {

struct Design_State;

/// Calculates what the examples menu calculates of a loaded example: motion, pressure angle, curvature and profile,
/// follower force and camshaft torque. Nothing is unsaved afterwards.
///
/// @return whether Calculated, Sized and Dynamicflag were all reached
bool Example_Done(Design_State& design);

/// Loads an example by its list text, in the unit system in force, and calculates it. Home screen, input screen and
/// command line build the same design here.
///
/// @return false, and the design as it was, when there is no example of that name
bool Open_Example(Design_State& design, std::string_view name);

}  // namespace lobemax
