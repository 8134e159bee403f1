// SPDX-License-Identifier: GPL-3.0-or-later
/// Contact stresses of a cycle: the loops over the rows (core/lanes.h).
#pragma once

#include <cstddef>

#include "dynamics/stress_formulas.h"

namespace lobemax {

struct Stress_Rows {
    const float* force;  // the follower's, without the external one
    const float* Phi;
    const float* Rho;
    const float* external;  // null where no external force is added
    float* sigma;
    float* tau;
};

/// Each stores from the point first on and returns the first point that it did not store, or count.
struct Stress_Kernels {
    template <class Contact>
    using Kernel = std::size_t (*)(const formulas::Contact_Force&, const Contact&, const Stress_Rows&,
                                   std::size_t first, std::size_t count);

    Kernel<formulas::Line_Contact> line;
    Kernel<formulas::Crowned_Contact> crowned;
};

}  // namespace lobemax
