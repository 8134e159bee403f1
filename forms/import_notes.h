// SPDX-License-Identifier: GPL-3.0-or-later
/// What a designer must know of a fit to measured data: how near it comes, and where the noise of the data drowns its
/// derivatives. The import screen and the command line tell the same lines.
#pragma once

#include <string>
#include <vector>

#include "camgeom/profile_import.h"
#include "core/text.h"

namespace lobemax {

/// @param symbol  of the numbers: that of the screens, or a point
std::vector<std::string> Import_Notes(const Design_State& design, const Import_Choice& choice, const Profile& profile,
                                      Decimal_Symbol symbol);

}  // namespace lobemax
