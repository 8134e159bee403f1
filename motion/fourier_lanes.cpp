// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lane_math.h"
#include "motion/fourier_rows.h"

namespace lobemax {

namespace {

constexpr std::size_t pair = 2;
constexpr std::size_t blocks = lane_count < pair ? 1 : lane_count / pair;  // side by side

/// Two doubles of each block.
struct Pairs {
    typedef double Vector __attribute__((vector_size(sizeof(double) * pair * blocks)));
    typedef long long Bits __attribute__((vector_size(sizeof(double) * pair * blocks)));
    Vector v;

    friend Pairs operator+(Pairs a, Pairs b) { return {a.v + b.v}; }
    friend Pairs operator-(Pairs a, Pairs b) { return {a.v - b.v}; }
    friend Pairs operator*(Pairs a, Pairs b) { return {a.v * b.v}; }
    friend Pairs operator*(double a, Pairs b) { return {a * b.v}; }
    friend Pairs operator*(Pairs a, double b) { return {a.v * b}; }
    friend Pairs operator/(Pairs a, double b) { return {a.v / b}; }
};

Pairs Leading_Bits(Pairs x)
{
    return {(Pairs::Vector)((Pairs::Bits)x.v & ~0x1FFFLL)};
}

Pairs Load(const double* from)
{
    Pairs x;
    __builtin_memcpy(&x.v, from, sizeof x.v);
    return x;
}

/// The same two for every block.
Pairs Load_for_All(const double* from)
{
#if LOBEMAX_LANES == 8
    return {(Pairs::Vector)_mm512_maskz_broadcast_f64x2(0xFF, _mm_loadu_pd(from))};
#elif LOBEMAX_LANES == 4
    return {(Pairs::Vector)_mm256_broadcast_pd(reinterpret_cast<const __m128d*>(from))};
#else
    return Load(from);
#endif
}

void Total(Pairs sums, double* total)
{
    for (std::size_t k = 0; k < blocks; ++k)
        total[k] = sums.v[pair * k] + sums.v[pair * k + 1];
}

void Sums(const Sample_Blocks& samples, std::size_t group, double* cos, double* sin)
{
    const double* x = samples.x + group * samples.block * blocks;
    Pairs c[2]{};
    Pairs s[2]{};
    for (std::size_t q = 0; q < samples.block; q += 2 * pair)  // two running sums hide the time of an addition
        for (std::size_t u = 0; u < 2; ++u) {
            const Pairs sample = Load(x);
            c[u] = c[u] + Load_for_All(samples.cosines + q + u * pair) * sample;
            s[u] = s[u] + Load_for_All(samples.sines + q + u * pair) * sample;
            x += pair * blocks;
        }
    Total(c[0] + c[1], cos);
    Total(s[0] + s[1], sin);
}

void Slipped_Sums(const Sample_Blocks& samples, const formulas::Angle_Slip& slip, std::size_t group, double* cos,
                  double* sin)
{
    const double* x = samples.x + group * samples.block * blocks;
    Pairs m;
    for (std::size_t k = 0; k < pair * blocks; ++k)
        m.v[k] = static_cast<double>((group * blocks + k / pair) * samples.block + k % pair);
    Pairs c{};
    Pairs s{};
    Pairs c_turned{};
    Pairs s_turned{};
    for (std::size_t q = 0; q < samples.block; q += pair) {
        const Pairs sample = Load(x);
        const Pairs turned = slip.Times_N(m) * sample;
        const Pairs cosine = Load_for_All(samples.cosines + q);
        const Pairs sine = Load_for_All(samples.sines + q);
        c = c + cosine * sample;
        s = s + sine * sample;
        c_turned = c_turned + cosine * turned;
        s_turned = s_turned + sine * turned;
        m.v += static_cast<double>(pair);
        x += pair * blocks;
    }
    Total(c - s_turned / slip.n, cos);
    Total(s + c_turned / slip.n, sin);
}

void Turn(double* cos, double* sin, const double* step_cos, const double* step_sin, std::size_t count)
{
    for (std::size_t j = 0; j < count; ++j) {
        const double c = cos[j] * step_cos[j] - sin[j] * step_sin[j];
        sin[j] = sin[j] * step_cos[j] + cos[j] * step_sin[j];
        cos[j] = c;
    }
}

const Fourier_Kernels kernels{.side_by_side = blocks, .sums = Sums, .slipped_sums = Slipped_Sums, .turn = Turn};

}  // namespace

template <>
const Fourier_Kernels& Kernels<Fourier_Kernels, LOBEMAX_LANES>()
{
    return kernels;
}

}  // namespace lobemax
