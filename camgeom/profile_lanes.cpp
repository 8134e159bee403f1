// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile_rows.h"
#include "core/lane_math.h"

namespace lobemax {

namespace {

using namespace formulas;

/// The ratio of displacements of a driven end effector, where there is one; a ratio of zero counts as 1.
template <class P>
Lanes Ratio(const P& at, const Profile_Rows& r)
{
    if (r.ratio_S == nullptr)
        return 1.0;
    const Lanes ratio = at[r.ratio_S];
    return Select(ratio == 0.0, Lanes(1.0), ratio);
}

/// The rows of a radial cam, and those that a follower on an arm has besides.
template <class P, class... More>
std::size_t Store(const P& at, const Profile_Rows& r, Mask fine, const Radial_Point<Lanes>& p, const More&... more)
{
    // The polar rows are those of the coordinates as they are stored, which is how they are rounded already.
    const Polar<Lanes> key = p.Key_Polar();
    return at.Store(fine, To_Row{r.row[9], p.center.x}, To_Row{r.row[10], p.center.y}, To_Row{r.row[11], p.radius},
                    To_Row{r.row[12], p.angle}, To_Row{r.row[13], p.center_key.x}, To_Row{r.row[14], p.center_key.y},
                    To_Row{r.row[34], key.radius}, To_Row{r.row[35], key.angle}, To_Row{r.row[36], p.surface.x},
                    To_Row{r.row[37], p.surface.y}, To_Row{r.row[38], p.surface_key.x},
                    To_Row{r.row[39], p.surface_key.y}, To_Row{r.row[40], p.cutter.x}, To_Row{r.row[41], p.cutter.y},
                    more...);
}

template <class P>
std::size_t Store(const P& at, const Profile_Rows& r, const Arm_Point<Lanes>& p)
{
    return Store(at, r, p.closes, p.point, To_Row{r.pivot_x, p.pivot.x}, To_Row{r.pivot_y, p.pivot.y});
}

template <class P>
std::size_t Store(const P& at, const Profile_Rows& r, const Axial_Point<Lanes>& p)
{
    return at.Store(All_Lanes(), To_Row{r.row[11], p.Z}, To_Row{r.row[12], p.Lambda}, To_Row{r.row[36], p.surface_Z},
                    To_Row{r.row[37], p.surface_Lambda});
}

std::size_t Roller(const Translating_Roller_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return Store(at, r, All_Lanes(), f(at[r.theta], at[r.s], at[r.Phi], Ratio(at, r)));
    });
}

std::size_t Flat(const Translating_Flat_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return Store(at, r, All_Lanes(), f(at[r.theta], at[r.s], at[r.v], Ratio(at, r)));
    });
}

std::size_t Arm_Roller(const Oscillating_Roller_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count,
                       [&](const auto& at) { return Store(at, r, f(at[r.theta], at[r.s], at[r.Phi], Ratio(at, r))); });
}

std::size_t Arm_Flat(const Oscillating_Flat_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return Store(at, r, f(at[r.theta], at[r.s], at[r.v], at[r.S], Ratio(at, r)));
    });
}

std::size_t Axial(const Translating_Axial_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) { return Store(at, r, f(at[r.theta], at[r.S], at[r.Phi])); });
}

std::size_t Axial_Arm(const Oscillating_Axial_Profile& f, const Profile_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) { return Store(at, r, f(at[r.theta], at[r.S], at[r.v])); });
}

const Profile_Kernels kernels{.translating_roller = Roller,
                              .translating_flat = Flat,
                              .oscillating_roller = Arm_Roller,
                              .oscillating_flat = Arm_Flat,
                              .translating_axial = Axial,
                              .oscillating_axial = Axial_Arm};

}  // namespace

template <>
const Profile_Kernels& Kernels<Profile_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
