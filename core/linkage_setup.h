// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lobemax {

struct Design_State;

/// What follows from the number of links and the kind of linkage picked: Linkage_Kind and Stage_Mode.
/// Linkage_Type 0 is a fourbar, 1 a sixbar, 2 a fourbar with slider, 3 a sixbar with slider.
void Set_Up_Linkage(Design_State& design, int links);

}  // namespace lobemax
