// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the follower train's fields: forces, contact, compensation. Those of the vibration have their own.
#pragma once

#include <span>

#include "core/field_rule.h"
#include "dynamics/balance_accuracy.h"

namespace lobemax {

std::span<const Field_Rule> Train_Rules();

/// Whether a balancing cam can be integrated so; each figure must be positive, the smallest step may be zero.
Verdict Accuracy_may_be(const Balance_Accuracy& accuracy);
/// The same of one of them.
Verdict Figure_may_be(double figure);

}  // namespace lobemax
