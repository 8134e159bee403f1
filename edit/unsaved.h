// SPDX-License-Identifier: GPL-3.0-or-later
/// The one notion of unsaved work: the design differs from what was last opened, saved or made afresh.
#pragma once

#include <cstdint>

#include "core/design_state.h"

namespace lobemax {

/// A key of the user's work: the inputs, the marks of the results, the calculated rows. Equal designs have equal keys;
/// how a design is shown, named or at work on is not in it.
std::uint64_t Key_of(const Design_State& design);
/// The same of what a save would keep of it: the mark of a linkage counts not, since no file keeps its results; they
/// are worked out again where they are asked for.
std::uint64_t Key_of_Saved_Work(const Design_State& design);

/// Whether the design differs from what was last opened or saved: whatever was typed counts, calculated or not.
bool Unsaved(const Design_State& design);

/// The design is what a file holds, or holds nothing of the user's: a fresh one, an example.
void Mark_Saved(Design_State& design);

/// No file holds the design, as after a recovery.
void Mark_Unsaved(Design_State& design);

}  // namespace lobemax
