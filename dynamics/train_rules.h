// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the follower train's fields: forces, contact, compensation. Those of the vibration have their own.
#pragma once

#include <span>

#include "core/field_rule.h"

namespace lobemax {

std::span<const Field_Rule> Train_Rules();

}  // namespace lobemax
