// SPDX-License-Identifier: GPL-3.0-or-later
/// Schematics of the lumped models of a follower train: cam, roller, masses, springs, dampers and where the closure
/// spring stands.
#pragma once

#include "core/surface.h"

namespace lobemax {

/// Draws the model of a type 1 to 5, with the symbols of its equations: m1, m2, k1, k2, c1, c2, the cam's lift s and
/// the motion x of the mass that is solved for. Any other type draws nothing.
void Draw_Model(Surface& surface, int Model_Type);

}  // namespace lobemax
