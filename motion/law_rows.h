// SPDX-License-Identifier: GPL-3.0-or-later
/// The points of a segment, stored many at a time: the loops over the rows, by law (core/lanes.h).
#pragma once

#include <cstddef>

#include "motion/law_formulas.h"

namespace lobemax {

/// A run of points that stand side by side in the table, a step from one to the next: point p of the run has the local
/// angle p step, without a rounding. Rows begin at the run's first point.
struct Segment_Run {
    Segment_Place place;
    float* angle;
    float* S;
    float* V;
    float* A;
    float* J;
    float* P;
};

/// Stores points first to count - 1 of a run by a law and returns the first point that it did not store, or count: one
/// with a value that is no finite Single, or whose terms cancel so far that their last digits matter.
template <class Law>
struct Law_Kernel {
    std::size_t (*store)(const Law&, const Segment_Run&, std::size_t first, std::size_t count);
};

struct Law_Kernels : Law_Kernel<law_forms::Standing>,
                     Law_Kernel<law_forms::SHM_Full>,
                     Law_Kernel<law_forms::SHM_First>,
                     Law_Kernel<law_forms::SHM_Second>,
                     Law_Kernel<law_forms::Cycloid_Full>,
                     Law_Kernel<law_forms::Cycloid_First>,
                     Law_Kernel<law_forms::Cycloid_Second>,
                     Law_Kernel<law_forms::Double_Harmonic>,
                     Law_Kernel<law_forms::Mod_Sine>,
                     Law_Kernel<law_forms::Mod_Trap>,
                     Law_Kernel<law_forms::Fixed_Polynomial>,
                     Law_Kernel<law_forms::Solved_Polynomial>,
                     Law_Kernel<law_forms::Harmonic_Series::Curve>,
                     Law_Kernel<law_forms::Polydyne> {};

}  // namespace lobemax
