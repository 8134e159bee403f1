// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "motion/law_rows.h"

namespace lobemax {

namespace {

using namespace law_forms;
using Point = Svajp_of<Lanes>;

/// Points of a law, and which of them may be stored.
struct Worked {
    Point point;
    Mask fine;
};

template <class Formula>
std::size_t Store(const Segment_Run& run, std::size_t first, std::size_t count, const Formula& worked)
{
    const Segment_Place& segment = run.place;
    return Over_Points(first, count, [&](const auto& at) {
        const Lanes theta = Lane_Numbers(at.at) * segment.step;
        const Worked answer = worked(Rounded(theta / segment.beta));
        const Point w = segment.Working(answer.point);
        const Point stored = segment.units(w);
        return at.Store(answer.fine, To_Row{run.angle, theta + segment.shift}, To_Row{run.S, w.S + segment.base},
                        To_Row{run.V, stored.V}, To_Row{run.A, stored.A}, To_Row{run.J, stored.J},
                        To_Row{run.P, stored.P});
    });
}

template <class Law>
std::size_t By_Law(const Law& law, const Segment_Run& run, std::size_t first, std::size_t count)
{
    return Store(run, first, count, [&](Lanes x) { return Worked{law(x), All_Lanes()}; });
}

std::size_t By_Double_Harmonic(const Double_Harmonic& law, const Segment_Run& run, std::size_t first, std::size_t count)
{
    return Store(run, first, count, [&](Lanes x) {
        const Point point = law(x);
        return Worked{point, !law.Cancels(point)};
    });
}

/// A region is a run of points.
template <class Law>
std::size_t By_Regions(const Law& law, const Segment_Run& run, std::size_t first, std::size_t count)
{
    std::size_t at = first;
    for (int region = 0; region < Law::regions && at < count; ++region) {
        std::size_t until = count;
        if (region < Law::regions - 1) {
            const double last = law.end[region] / run.place.step;  // exact, as the angles are
            if (last < static_cast<double>(count - 1))
                until = static_cast<std::size_t>(last) + 1;
        }
        if (until <= at)
            continue;
        at = Store(run, at, until, [&](Lanes x) { return Worked{law.In_Region(region, x), All_Lanes()}; });
        if (at < until)
            break;
    }
    return at;
}

/// One power of each term, and by multiplication the powers below it that its derivatives have.
std::size_t By_Polydyne(const Polydyne& law, const Segment_Run& run, std::size_t first, std::size_t count)
{
    return Store(run, first, count, [&](Lanes x) {
        const Lanes y = law.Place(x);
        Polydyne::Powers<Lanes> powers;
        for (int i = 0; i < law.count; ++i) {
            powers.of[i][4] = Raised(y, law.term[i].n - 4);
            for (int d = 3; d >= 0; --d)
                powers.of[i][d] = powers.of[i][d + 1] * y;
        }
        const auto answer = law(y, powers);
        return Worked{answer.point, !answer.cancels};
    });
}

const Law_Kernels kernels{{By_Law<Standing>},
                          {By_Law<SHM_Full>},
                          {By_Law<SHM_First>},
                          {By_Law<SHM_Second>},
                          {By_Law<Cycloid_Full>},
                          {By_Law<Cycloid_First>},
                          {By_Law<Cycloid_Second>},
                          {By_Double_Harmonic},
                          {By_Regions<Mod_Sine>},
                          {By_Regions<Mod_Trap>},
                          {By_Law<Fixed_Polynomial>},
                          {By_Law<Solved_Polynomial>},
                          {By_Law<Harmonic_Series::Curve>},
                          {By_Polydyne}};

}  // namespace

template <>
const Law_Kernels& Kernels<Law_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
