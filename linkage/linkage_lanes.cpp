// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "linkage/linkage_rows.h"

namespace lobemax {

namespace {

using namespace formulas;

Lanes Degrees(const Link<Lanes>& link)
{
    return Remainder(link.theta * Deg_per_Rad, 360.0);
}

/// Links 2 to 4 and all points, and the rows of a second stage besides.
template <class P, class... More>
std::size_t Store(const P& at, const Linkage_Rows& r, const Pose<Lanes>& p, Lanes theta4, const More&... more)
{
    return at.Store(p.connects && p.moves, To_Row{r.theta[2], Degrees(p.link[2])}, To_Row{r.omega[2], p.link[2].omega},
                    To_Row{r.alpha[2], p.link[2].alpha}, To_Row{r.theta[3], Degrees(p.link[3])},
                    To_Row{r.omega[3], p.link[3].omega}, To_Row{r.alpha[3], p.link[3].alpha},
                    To_Row{r.theta[4], theta4}, To_Row{r.omega[4], p.link[4].omega},
                    To_Row{r.alpha[4], p.link[4].alpha}, To_Row{r.x[0], p.point[0].x}, To_Row{r.y[0], p.point[0].y},
                    To_Row{r.x[1], p.point[1].x}, To_Row{r.y[1], p.point[1].y}, To_Row{r.x[2], p.point[2].x},
                    To_Row{r.y[2], p.point[2].y}, To_Row{r.x[3], p.point[3].x}, To_Row{r.y[3], p.point[3].y},
                    To_Row{r.x[4], p.point[4].x}, To_Row{r.y[4], p.point[4].y}, To_Row{r.x[5], p.point[5].x},
                    To_Row{r.y[5], p.point[5].y}, To_Row{r.x[6], p.point[6].x}, To_Row{r.y[6], p.point[6].y}, more...);
}

template <class P>
std::size_t Store_Six(const P& at, const Linkage_Rows& r, const Pose<Lanes>& p, Lanes theta6)
{
    return Store(at, r, p, Degrees(p.link[4]), To_Row{r.theta[5], Degrees(p.link[5])},
                 To_Row{r.omega[5], p.link[5].omega}, To_Row{r.alpha[5], p.link[5].alpha}, To_Row{r.theta[6], theta6},
                 To_Row{r.omega[6], p.link[6].omega}, To_Row{r.alpha[6], p.link[6].alpha});
}

/// The input at points.
template <class P>
Link<Lanes> Input(const P& at, const Arm_Input& input, const Linkage_Rows& r)
{
    const Lanes theta2 = input.Theta2(at[r.S]);
    return {theta2, input.Omega2(at[r.V]), input.Alpha2(at[r.A]), Sin_Cos(theta2)};
}

std::size_t Fourbars(const Train& f, const Arm_Input& input, const Linkage_Rows& r, std::size_t first,
                     std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Pose<Lanes> pose = f.Fourbar(Input(at, input, r));
        return Store(at, r, pose, Degrees(pose.link[4]));
    });
}

std::size_t Watts(const Train& f, const Arm_Input& input, const Linkage_Rows& r, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Pose<Lanes> pose = f.Watt(Input(at, input, r));
        return Store_Six(at, r, pose, Degrees(pose.link[6]));
    });
}

std::size_t Stephensons(const Train& f, const Arm_Input& input, const Linkage_Rows& r, std::size_t first,
                        std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Pose<Lanes> pose = f.Stephenson(Input(at, input, r));
        return Store_Six(at, r, pose, Degrees(pose.link[6]));
    });
}

std::size_t Four_Sliders(const Train& f, const Arm_Input& input, const Linkage_Rows& r, std::size_t first,
                         std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Pose<Lanes> pose = f.Four_Slider(Input(at, input, r));
        return Store(at, r, pose, pose.link[4].theta);
    });
}

std::size_t Six_Sliders(const Train& f, const Arm_Input& input, const Linkage_Rows& r, std::size_t first,
                        std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        const Pose<Lanes> pose = f.Six_Slider(Input(at, input, r));
        return Store_Six(at, r, pose, pose.link[6].theta);
    });
}

std::size_t Ratios(const Motion_Ratio& f, const float* last, const float* arm, float* ratio, std::size_t first,
                   std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{ratio, f(at[last], at[arm])});
    });
}

Row_Range Range(const float* row, std::size_t count)
{
    Lanes least = static_cast<double>(*row);
    Lanes largest = least;
    Over_Points(0, count, [&](const auto& at) {
        const Lanes value = at[row];
        least = Select(value < least, value, least);
        largest = Select(value > largest, value, largest);
        return lane_count;
    });
    double low[lane_count];
    double high[lane_count];
    __builtin_memcpy(low, &least, sizeof low);
    __builtin_memcpy(high, &largest, sizeof high);
    Row_Range range{low[0], high[0]};
    for (std::size_t k = 1; k < lane_count; ++k) {
        range.least = low[k] < range.least ? low[k] : range.least;
        range.largest = high[k] > range.largest ? high[k] : range.largest;
    }
    return range;
}

bool Jumps(const float* row, std::size_t count)
{
    constexpr double half_turn = 180.0;
    bool jumps = false;
    Over_Points(0, count - 1, [&](const auto& at) {
        jumps = jumps || Bits_of(Abs(at[row + 1] - at[row]) >= half_turn) != 0U;
        return lane_count;
    });
    return jumps;
}

const Linkage_Kernels kernels{.poses = {Fourbars, Watts, Stephensons, Four_Sliders, Six_Sliders},
                              .ratios = Ratios,
                              .range = Range,
                              .jumps = Jumps};

}  // namespace

template <>
const Linkage_Kernels& Kernels<Linkage_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
