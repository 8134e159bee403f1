// SPDX-License-Identifier: GPL-3.0-or-later
/// The profile of a cycle: the loops over the rows, by configuration (core/lanes.h).
#pragma once

#include <cstddef>

#include "camgeom/profile_formulas.h"

namespace lobemax {

struct Profile_Rows {
    const float* theta;
    const float* S;  // row 1
    const float* s;  // the motion in force
    const float* v;
    const float* Phi;
    const float* ratio_S;  // null where no end effector is driven
    float* row[42];        // CalcData by number, 9 to 14 and 34 to 41
    float* pivot_x;
    float* pivot_y;
};

/// Each stores from the point first on and returns the first point that it did not store, or count.
struct Profile_Kernels {
    template <class Formula>
    using Kernel = std::size_t (*)(const Formula&, const Profile_Rows&, std::size_t first, std::size_t count);

    Kernel<formulas::Translating_Roller_Profile> translating_roller;
    Kernel<formulas::Translating_Flat_Profile> translating_flat;
    Kernel<formulas::Oscillating_Roller_Profile> oscillating_roller;
    Kernel<formulas::Oscillating_Flat_Profile> oscillating_flat;
    Kernel<formulas::Translating_Axial_Profile> translating_axial;
    Kernel<formulas::Oscillating_Axial_Profile> oscillating_axial;
};

}  // namespace lobemax
