// SPDX-License-Identifier: GPL-3.0-or-later
/// Parts of the programs that stand in libraries of their own: loaded at the first use, so that runs that do without
/// them do not wait for the many libraries that they bring. They take the rooms that they need from the program.
#pragma once

#include <string>

namespace lobemax {

/// The libraries, each with its one entry.
inline constexpr char Drawing_Library[] = "lobemax_drawing.so";  // pictures by Qt, for the command line
inline constexpr char Drawing_Entry[] = "lobemax_open_drawing";
inline constexpr char Solid_Library[] = "lobemax_solid.so";  // solids by Open CASCADE
inline constexpr char Solid_Entry[] = "lobemax_make_solid";

/// The entry of a library, which is looked for where the program's own libraries stand and stays loaded.
/// @param why  out: where it cannot be had, a sentence
/// @return     none where it cannot be had
void* Entry_of_Library(const char* library, const char* entry, std::string& why);

}  // namespace lobemax
