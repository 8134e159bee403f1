// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>

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

/// A number beside which a double has no finer grid than a 32-bit number has at x.
double Coarse(float x)
{
    constexpr std::uint64_t exponent = 0x7FF0000000000000;
    const double power_of_2 =
        __builtin_bit_cast(double, __builtin_bit_cast(std::uint64_t, static_cast<double>(x)) & exponent);
    return power_of_2 * (1.5 * 0x1p29);  // 53 - 24 binary places; in the middle of its own power of 2
}

/// (116). A sum that is rounded at each point is a chain of conversions, each as slow as several additions. So the sums
/// of a stretch are guessed first, by one addition a point, beside a number that rounds them as 32 bits would. Then all
/// are worked out from the guess of the one before, as the chain does it: they are the chain's own up to the first that
/// is not the guess, as where the sum has come to another power of 2.
std::size_t Integral(double step, const float* torque, float* integral, std::size_t first, std::size_t count)
{
    constexpr std::size_t longest = 128;
    float guess[1 + longest];
    const auto area = [step](auto before, auto here) { return (before + here) / 2.0 * step; };
    std::size_t stretch = lane_count;
    while (first < count) {
        const float* const t = torque + first;
        float* const to = integral + first;
        const std::size_t n = count - first < stretch ? count - first : stretch;
        guess[0] = to[-1];
        const double coarse = Coarse(guess[0]);
        double sum = coarse + static_cast<double>(guess[0]);
        for (std::size_t k = 0; k < n; ++k) {
            sum += area(double{t[k - 1]}, double{t[k]});
            guess[k + 1] = static_cast<float>(sum - coarse);
        }
        const std::size_t stored = Over_Points(0, n, [&](const auto& at) {
            const Lanes here = at[guess] + area(at[t - 1], at[t]);
            return at.Store(Rounded(here) == at[guess + 1], To_Row{to, here});
        });
        first += stored;
        if (stored == n) {
            stretch = 2 * stretch < longest ? 2 * stretch : longest;
            continue;
        }
        const Points<false> at{stored, 1};
        if (at.Store(All_Lanes(), To_Row{to, at[to - 1] + area(at[t - 1], at[t])}) == 0)
            break;
        ++first;
        stretch = lane_count;
    }
    return first;
}

std::size_t Scaled(double factor, const float* row, float* to, std::size_t first, std::size_t count)
{
    return Over_Points(first, count, [&](const auto& at) {
        return at.Store(All_Lanes(), To_Row{to, factor * at[row]});
    });
}

const Force_Kernels kernels{.forces = Forces, .integral = Integral, .scaled = Scaled};

}  // namespace

template <>
const Force_Kernels& Kernels<Force_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
