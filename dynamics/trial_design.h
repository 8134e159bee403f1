// SPDX-License-Identifier: GPL-3.0-or-later
/// A copy of a design for a sizing that is to leave the design as it is.
#pragma once

#include "core/design_state.h"

namespace lobemax {

/// All that a motion, a size and the forces ask for. Trajectory, transform, constraint curves and the points of the
/// links stay behind, empty: nobody asks for them there, and they are most of a design.
Design_State Trial_Design(const Design_State& design);

}  // namespace lobemax
