// SPDX-License-Identifier: GPL-3.0-or-later
/// The inner sums of the transform: its loops over the samples (core/lanes.h). motion/fourier.cpp says what they are.
#pragma once

#include <cstddef>

#include "motion/fourier_formulas.h"

namespace lobemax {

/// The samples in blocks, some of them side by side: two samples of each, then the next two of each. A block has a
/// multiple of four.
struct Sample_Blocks {
    const double* x;
    std::size_t block;  // samples of one
    const double* cosines;
    const double* sines;  // of the places within a block
};

/// The running sums of a block are the same at every width: four where no slip is felt, else two.
struct Fourier_Kernels {
    std::size_t side_by_side;
    /// Sums of the blocks of one group, blocks `group * side_by_side` on, into cos and sin.
    void (*sums)(const Sample_Blocks&, std::size_t group, double* cos, double* sin);
    /// The same with each term's slip.
    void (*slipped_sums)(const Sample_Blocks&, const formulas::Angle_Slip&, std::size_t group, double* cos,
                         double* sin);
    /// Turns each phasor by a step of its own.
    void (*turn)(double* cos, double* sin, const double* step_cos, const double* step_sin, std::size_t count);
};

}  // namespace lobemax
