// SPDX-License-Identifier: GPL-3.0-or-later
/// Forces and torques of a cycle: the loops over the rows (core/lanes.h).
#pragma once

#include <cstddef>

#include "dynamics/force_formulas.h"

namespace lobemax {

struct Force_Rows {
    const float* S;
    const float* V;
    const float* A;
    const float* Phi;
    const float* external;  // null where no external force is added
    float* force;
    float* friction;
    float* torque;  // of this run
    float* total;   // the same, or what it is added to
};

struct Force_Kernels {
    /// Stores from the point first on and returns the first point that it did not store, or count.
    struct Choices {
        bool fresh;            // the total takes the torque; else the torque is added to it
        bool tells_separated;  // a separated point is left
    };
    std::size_t (*forces)(const formulas::Rigid_Train&, const Force_Rows&, const Choices&, std::size_t first,
                          std::size_t count);

    /// A row times a factor. Returns the first point whose product is no finite Single, or count.
    std::size_t (*scaled)(double factor, const float* row, float* to, std::size_t first, std::size_t count);
};

}  // namespace lobemax
