// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "dynamics/force_rows.h"

namespace lobemax {

namespace {

using namespace formulas;

std::size_t Forces(const Rigid_Train& train, const Force_Rows& r, const Force_Kernels::Choices& choices,
                   std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const auto motion = train.Motion_of(at[r.S], at[r.V], at[r.A]);
        const Lanes force = train.Force(motion, Lanes(0.0));
        const Lanes F = r.external == nullptr ? force : force + at[r.external];
        const auto load = train.Load_of(F, motion, at[r.Phi]);
        const Lanes torque = Rounded(load.torque);
        const Lanes total = choices.fresh ? torque : at[r.total] + torque;
        Mask fine = Rounds_Alike(load.friction);
        if (choices.tells_separated)
            fine = fine && !load.separated;
        return at.Store(fine, To_Row{r.force, force}, To_Row{r.friction, load.friction}, To_Row{r.torque, torque},
                        To_Row{r.total, total});
    });
}

std::size_t Scaled(double factor, const float* row, float* to, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, factor * at[row]});
    });
}

const Force_Kernels kernels{.forces = Forces, .scaled = Scaled};

}  // namespace

template <>
const Force_Kernels& Kernels<Force_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
