// SPDX-License-Identifier: GPL-3.0-or-later
/// Schematics of the linkages that a follower arm drives: cam, arm, numbered links, pivots and the end effector.
#pragma once

#include "core/surface.h"

namespace lobemax {

/// Draws the train of a Linkage_Type, 0 to 3, in its proportions of the examples. Any other type draws nothing.
void Draw_Linkage_Type(Surface& surface, int Linkage_Type);

}  // namespace lobemax
