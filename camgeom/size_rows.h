// SPDX-License-Identifier: GPL-3.0-or-later
/// Pressure angle and curvature of a cycle: the loops over the rows, by configuration (core/lanes.h).
#pragma once

#include <cstddef>

#include "camgeom/size_formulas.h"

namespace lobemax {

/// The rows in force; ratios are null where no end effector is driven.
struct Size_Rows {
    const float* s;
    const float* v;
    const float* a;
    const float* Phi;  // of the curvature
    const float* ratio_S;
    const float* ratio_V;
    const float* ratio_A;
};

/// Each stores into `to` from the point first on and returns the first point that it did not store, or count.
struct Size_Kernels {
    template <class Formula>
    using Kernel = std::size_t (*)(const Formula&, const Size_Rows&, float* to, std::size_t first, std::size_t count);

    Kernel<formulas::Phi_Translating_Axial> phi_translating_axial;
    Kernel<formulas::Phi_Translating_Roller> phi_translating_roller;
    Kernel<formulas::Phi_Oscillating_Axial> phi_oscillating_axial;
    Kernel<formulas::Phi_Oscillating_Roller> phi_oscillating_roller;
    Kernel<formulas::Rho_Translating_Axial> rho_translating_axial;
    Kernel<formulas::Rho_Translating_Flat> rho_translating_flat;
    Kernel<formulas::Rho_Translating_Roller> rho_translating_roller;
    Kernel<formulas::Rho_Oscillating_Axial> rho_oscillating_axial;
    Kernel<formulas::Rho_Oscillating_Roller> rho_oscillating_roller;
    Kernel<formulas::Rho_Oscillating_Flat> rho_oscillating_flat;
};

}  // namespace lobemax
