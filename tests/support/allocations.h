// SPDX-License-Identifier: GPL-3.0-or-later
/// How often the test program has asked for memory (tests/dynamics/allocation_test.cpp counts).
#pragma once

namespace lobemax::testing {

long Allocations();

}  // namespace lobemax::testing
