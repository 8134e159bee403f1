// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/lobe_figures.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"
#include "core/variables.h"

namespace lobemax {

namespace {

double Within_a_Turn(double angle)
{
    constexpr double turn = 360.0;
    return angle - turn * std::floor(angle / turn);
}

}  // namespace

std::optional<Lobe_Figures> Figures_of_Lobe(const Design_State& design, double lift)
{
    const auto S = design.results.CalcData.Points(var::S);
    const double step = design.motion.Deltatheta;
    const int N = design.motion.Max_Data_Points_used;  // the last point is the first again
    const auto at = [&](int i) { return double{S[static_cast<std::size_t>(((i % N) + N) % N)]}; };
    const auto cycle = S.first(static_cast<std::size_t>(N));
    const auto [least, largest] = std::minmax_element(cycle.begin(), cycle.end());
    const double level = *least + lift;
    if (!(lift > 0.0) || !(level < *largest))
        return {};
    const int top = static_cast<int>(largest - cycle.begin());

    // Outwards from the top to where the curve passes the level, straight between two points.
    const auto crossing = [&](int direction) {
        int i = top;
        while (at(i + direction) > level)
            i += direction;
        return i + direction * (at(i) - level) / (at(i) - at(i + direction));
    };
    int first = top;
    while (at(first - 1) == at(top) && top - first < N)
        --first;
    int last = top;
    while (at(last + 1) == at(top) && last - top < N)
        ++last;
    double area = 0.0;
    for (int i = 0; i < N; ++i)
        area += at(i) - *least;

    Lobe_Figures figures;
    const double opens = crossing(-1) * step;
    const double closes = crossing(1) * step;
    figures.opens = Within_a_Turn(opens);
    figures.duration = closes - opens;
    figures.closes = figures.opens + figures.duration;
    figures.centre = Within_a_Turn((opens + closes) / 2);
    figures.peak = Within_a_Turn((first + last) * step / 2);
    figures.area = area * step;
    return figures;
}

}  // namespace lobemax
