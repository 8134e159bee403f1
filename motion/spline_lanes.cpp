// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "motion/spline_rows.h"

namespace lobemax {

namespace {

using namespace formulas;

/// The functions' values are held in 32 bits before they are summed up.
Lanes Sum_of_Tabulated(const Spline_Piece& piece, const Lanes* values)
{
    const double* const C = piece.C + (piece.span - piece.order);
    Lanes sum = 0.0;
    for (int j = 0; j < piece.order; ++j)
        sum = sum + C[j] * Rounded(values[j]);
    return sum;
}

std::size_t Store(const Spline_Piece& piece, const Spline_Run& run, std::size_t first, std::size_t count)
{
    Lanes work[most_functions];
    Lanes values[spline_derivatives + 1][most_functions];
    return Over_Points(first, count, [&](const auto& at) {
        const Lanes theta = Lane_Numbers(at.at) * run.step;
        Basis(piece.knots, theta, piece.order, piece.span, work, [&](int d) { return values[d]; });
        const auto stored = [&](int d) {
            return To_Row{run.row[d], Sum_of_Tabulated(piece, values[d]) * run.scale[d]};
        };
        return at.Store(All_Lanes(), To_Row{run.angle, run.shift + theta}, stored(0), stored(1), stored(2), stored(3),
                        stored(4));
    });
}

const Spline_Kernels kernels{.store = Store};

}  // namespace

template <>
const Spline_Kernels& Kernels<Spline_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
