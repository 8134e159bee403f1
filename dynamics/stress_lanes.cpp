// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "dynamics/stress_rows.h"

namespace lobemax {

namespace {

using namespace formulas;

template <class Contact>
std::size_t Stresses(const Contact_Force& load, const Contact& contact, const Stress_Rows& r, std::size_t first,
                     std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const auto along = load.Along_Normal(at[r.force], at[r.Phi]);
        const Lanes closed = load.By_Closure(along.value);
        const Lanes W = r.external == nullptr ? closed : Rounded(closed + at[r.external]);
        const auto stress = contact(at[r.Rho], load.With_Weight(W));
        return at.Store(along.alike && load.Presses(W) && stress.clear, To_Row{r.sigma, stress.sigma},
                        To_Row{r.tau, stress.tau});
    });
}

const Stress_Kernels kernels{.line = Stresses<Line_Contact>, .crowned = Stresses<Crowned_Contact>};

}  // namespace

template <>
const Stress_Kernels& Kernels<Stress_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
