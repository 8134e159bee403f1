// SPDX-License-Identifier: GPL-3.0-or-later
/// The loops over the rows of a linkage (core/lanes.h).
#pragma once

#include <cstddef>

#include "linkage/linkage_formulas.h"

namespace lobemax {

enum class Train_Kind { fourbar, watt, stephenson, fourbar_slider, six_link_slider };
inline constexpr std::size_t Train_Kinds = 5;

struct Linkage_Rows {
    const float* S;
    const float* V;
    const float* A;
    float* theta[formulas::link_rows];  // by link, from 2 on
    float* omega[formulas::link_rows];
    float* alpha[formulas::link_rows];
    float* x[formulas::link_rows];  // by link_point
    float* y[formulas::link_rows];
};

/// The least and the largest value of a row.
struct Row_Range {
    double least;
    double largest;
};

struct Linkage_Kernels {
    /// Stores the poses from the point first on. @return the first one that does not connect, stands at a dead centre
    /// or has a value that is no finite Single, or count
    using Poses = std::size_t (*)(const formulas::Train&, const formulas::Arm_Input&, const Linkage_Rows&,
                                  std::size_t first, std::size_t count);
    /// A ratio over a row each. @return the first point whose ratio is no finite Single, or count
    using Ratios = std::size_t (*)(const formulas::Motion_Ratio&, const float* last, const float* arm, float* ratio,
                                   std::size_t first, std::size_t count);

    Poses poses[Train_Kinds];  // by Train_Kind
    Ratios ratios;
    Row_Range (*range)(const float* row, std::size_t count);
    /// Whether a row of degrees has a step of half a turn or more.
    bool (*jumps)(const float* row, std::size_t count);
};

}  // namespace lobemax
