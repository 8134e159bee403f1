// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/size_rows.h"
#include "core/lane_math.h"

namespace lobemax {

namespace {

using namespace formulas;

/// A row of ratios that may be absent; a ratio of zero counts as 1.
template <class P>
Lanes Ratio(const P& at, const float* row)
{
    if (row == nullptr)
        return 1.0;
    const Lanes ratio = at[row];
    return Select(ratio == 0.0, Lanes(1.0), ratio);
}

std::size_t Phi_Axial(const Phi_Translating_Axial& f, const Size_Rows& r, float* to, std::size_t first,
                      std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) { return at.Store(All_Lanes(), To_Row{to, f(at[r.v])}); });
}

std::size_t Phi_Roller(const Phi_Translating_Roller& f, const Size_Rows& r, float* to, std::size_t first,
                       std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(at[r.s], at[r.v])});
    });
}

std::size_t Phi_Axial_Arm(const Phi_Oscillating_Axial& f, const Size_Rows& r, float* to, std::size_t first,
                          std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(at[r.s], at[r.v])});
    });
}

std::size_t Phi_Arm(const Phi_Oscillating_Roller& f, const Size_Rows& r, float* to, std::size_t first,
                    std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const auto answer = f(at[r.s], at[r.v], Ratio(at, r.ratio_S));
        return at.Store(!answer.told, To_Row{to, answer.Phi});
    });
}

std::size_t Rho_Axial(const Rho_Translating_Axial& f, const Size_Rows& r, float* to, std::size_t first,
                      std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(at[r.v], at[r.a])});
    });
}

std::size_t Rho_Flat(const Rho_Translating_Flat& f, const Size_Rows& r, float* to, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(at[r.s], at[r.a])});
    });
}

std::size_t Rho_Roller(const Rho_Translating_Roller& f, const Size_Rows& r, float* to, std::size_t first,
                       std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(at[r.s], at[r.v], at[r.a])});
    });
}

std::size_t Rho_Axial_Arm(const Rho_Oscillating_Axial& f, const Size_Rows& r, float* to, std::size_t first,
                          std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const auto answer = f(at[r.s], at[r.v], at[r.a]);
        return at.Store(!answer.told, To_Row{to, answer.Rho});
    });
}

template <class P, class Formula>
auto Arm_Motion(const P& at, const Formula& f, const Size_Rows& r)
{
    return f.motion(at[r.s], at[r.v], at[r.a], Ratio(at, r.ratio_S), Ratio(at, r.ratio_V), Ratio(at, r.ratio_A));
}

std::size_t Rho_Arm(const Rho_Oscillating_Roller& f, const Size_Rows& r, float* to, std::size_t first,
                    std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const auto answer = f(Arm_Motion(at, f, r), at[r.Phi]);
        return at.Store(!answer.told, To_Row{to, answer.Rho});
    });
}

std::size_t Rho_Arm_Flat(const Rho_Oscillating_Flat& f, const Size_Rows& r, float* to, std::size_t first,
                         std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, f(Arm_Motion(at, f, r), at[r.s])});
    });
}

const Size_Kernels kernels{.phi_translating_axial = Phi_Axial,
                           .phi_translating_roller = Phi_Roller,
                           .phi_oscillating_axial = Phi_Axial_Arm,
                           .phi_oscillating_roller = Phi_Arm,
                           .rho_translating_axial = Rho_Axial,
                           .rho_translating_flat = Rho_Flat,
                           .rho_translating_roller = Rho_Roller,
                           .rho_oscillating_axial = Rho_Axial_Arm,
                           .rho_oscillating_roller = Rho_Arm,
                           .rho_oscillating_flat = Rho_Arm_Flat};

}  // namespace

template <>
const Size_Kernels& Kernels<Size_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
