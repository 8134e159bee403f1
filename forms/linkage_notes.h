// SPDX-License-Identifier: GPL-3.0-or-later
/// What a designer must know of a calculated linkage, in sentences: the screens and the command line tell the same.
#pragma once

#include <string>
#include <vector>

#include "core/text.h"
#include "edit/rungs.h"

namespace lobemax {

struct Design_State;

/// After a calculation of the linkage: range and rates of the end effector, dead centres, what mechanics has where the
/// tables leave it, and by how much a driven end effector misses its motion. Empty before.
///
/// Numbers of five digits, in the number format in force or with a decimal symbol of the caller's.
std::vector<std::string> Linkage_Notes(Design_State& design);
std::vector<std::string> Linkage_Notes(Design_State& design, Decimal_Symbol symbol);

/// Of them what figures alone do not show: dead centres, what mechanics has beside the tables, the
/// error of a driven end effector.
std::vector<std::string> Linkage_Cautions(Design_State& design, Decimal_Symbol symbol);

/// After a calculation of effective masses: what went into the model, effective mass and stiffness at the follower, and
/// what the train really weighs there over the cycle.
std::vector<std::string> Mass_Notes(Design_State& design, const Link_Effect& effect);
std::vector<std::string> Mass_Notes(Design_State& design, const Link_Effect& effect, Decimal_Symbol symbol);

/// Of them what the train really weighs.
std::string Weight_Note(Design_State& design, Decimal_Symbol symbol);

}  // namespace lobemax
