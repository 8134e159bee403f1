// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the linkage's fields.
#pragma once

#include <span>

#include "core/field_rule.h"

namespace lobemax {

std::span<const Field_Rule> Linkage_Rules();

/// Whether the design may have a linkage: it hangs on an oscillating follower.
Verdict Linkage_may_be(const Design_State& design);

}  // namespace lobemax
