// SPDX-License-Identifier: GPL-3.0-or-later
/// The text file of a balancing cam: its parameters, then its motion and torques point by point.
#pragma once

#include <string>

#include "dynamics/torque_compensation.h"

namespace lobemax {

/// Nine lines of parameters, a name and its value; an empty line; the heads, and a line a point.
///
/// Items are separated by a tab, lines end with carriage return and line feed, numbers are the shortest decimal text
/// with a point. Motion and forces are those of the balance: per second, lengths in metres, inches or feet.
std::string Compensation_Text(const Design_State& design, const Compensation& result);

/// cmd_Outputfile: asks for a name and writes the file, whole or not at all, under its trap.
/// @return true when it was written; a cancelled dialog writes nothing
bool Output_Compensation(const Design_State& design, const Compensation& result);

}  // namespace lobemax
