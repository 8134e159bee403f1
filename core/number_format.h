// SPDX-License-Identifier: GPL-3.0-or-later
/// The number format of a design and the texts that are kept in it: positions and conditions as they were typed.
#pragma once

#include <string_view>

#include "core/design_state.h"

namespace lobemax {

/// Puts the design into a number format, "USA" or "Europe": its texts are the same numbers in it.
void Use_Number_Format(Design_State& design, std::string_view format);

/// Texts that came from elsewhere, as no model file tells its number format: where one of them is no whole number in
/// the format in force, and all of them are in the other, they were typed in the other and are brought over.
/// @return whether they were brought over
bool Adopt_Texts(Design_State& design);

}  // namespace lobemax
