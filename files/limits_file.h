// SPDX-License-Identifier: GPL-3.0-or-later
/// Limits.txt: the limits of the user, beside the preferences.
///
/// A head line that tells the units, then a line a limit: its quoted key, a comma, and a number with a decimal point or
/// off. Lines end with carriage return and line feed; what stands after the last limit is an error as well as
/// a limit that is not there.
#pragma once

#include <string>

#include "truth/limits.h"

namespace lobemax {

struct Design_State;

/// The limits of a folder that ends with its separator; the usual ones where it has no such file, and none is made.
///
/// What cannot be read keeps its usual value: a key that is not known, a number that is none or out of range, a line
/// that is missing; without the head line all of them, since the numbers might be in other units. Of two lines of one
/// limit the first counts. All of it is told in one message, and the file is left as it is.
/// @param design  whose number format the message is written in
Limits Read_Limits(const Design_State& design, const std::string& folder);

/// Writes them, whole or not at all; a failure is reported. An older file that cannot be read in full is kept beside as
/// Limits.txt.bak, and the user is told.
/// @return whether they were written
bool Write_Limits(const Design_State& design, const std::string& folder, const Limits& limits);

}  // namespace lobemax
