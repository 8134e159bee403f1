// SPDX-License-Identifier: GPL-3.0-or-later
/// Several doubles at once, under the words of core/real_math.h. For files that are compiled once a width
/// (`*_lanes.cpp`, core/lanes.h), with LOBEMAX_LANES the number of doubles: 1 (the reference), 2, 4 or 8.
///
/// The type has no name outside of its file, so that no formula of one width can be taken for that of another.
#pragma once

#if !defined(LOBEMAX_LANES)
#error "core/lane_math.h is for files that are compiled once a width"
#endif

#include <cstddef>

#include "core/real_math.h"

#if LOBEMAX_LANES > 1
#include <immintrin.h>
#include <sleef.h>
#endif

namespace lobemax {

template <class Table, int Width>
const Table& Kernels();

namespace {

inline constexpr std::size_t lane_count = LOBEMAX_LANES;

#if LOBEMAX_LANES == 1

using Lanes = double;
using Mask = bool;

inline Lanes Load_Lanes(const float* from)
{
    return static_cast<double>(*from);
}
/// Rounds into 32 bits; bit k of the answer tells that lane k is finite there.
struct Stored_Lanes {
    explicit Stored_Lanes(Lanes x) : value(static_cast<float>(x)) {}
    /// Zero where the value is finite, else not-a-number.
    float Residue() const { return value - value; }
    void Store(float* to) const { *to = value; }
    float value;
};
inline bool Zeros(float x)
{
    return x == 0.0F;
}
inline unsigned Bits_of(bool mask)
{
    return mask ? 1U : 0U;
}

#else

#if LOBEMAX_LANES == 2
#define LOBEMAX_SLEEF(name) Sleef_cinz_##name##d2_u10sse2
using Raw = __m128d;
using Raw_Floats = __m128;  // the lower half of it
using Raw_Circular = Sleef___m128d_2;
#elif LOBEMAX_LANES == 4
#define LOBEMAX_SLEEF(name) Sleef_cinz_##name##d4_u10avx
using Raw = __m256d;
using Raw_Floats = __m128;
using Raw_Circular = Sleef___m256d_2;
#elif LOBEMAX_LANES == 8
#define LOBEMAX_SLEEF(name) Sleef_cinz_##name##d8_u10avx512fnofma
using Raw = __m512d;
using Raw_Floats = __m256;
using Raw_Circular = Sleef___m512d_2;
#else
#error "LOBEMAX_LANES is 1, 2, 4 or 8"
#endif
typedef long long Raw_Mask __attribute__((vector_size(8 * LOBEMAX_LANES)));

/// Which lanes a condition holds in: all bits of a lane are set or none.
struct Mask {
    Raw_Mask m;
    friend Mask operator&(Mask a, Mask b) { return {a.m & b.m}; }
    friend Mask operator|(Mask a, Mask b) { return {a.m | b.m}; }
    friend Mask operator!(Mask a) { return {~a.m}; }
    friend Mask operator&&(Mask a, Mask b) { return {a.m & b.m}; }
    friend Mask operator||(Mask a, Mask b) { return {a.m | b.m}; }
};

struct Lanes {
    Raw v;

    Lanes() : v{} {}
    Lanes(double x) : v(x - Raw{}) {}  // minus zero stays minus zero
    explicit Lanes(Raw raw) : v(raw) {}

    friend Lanes operator+(Lanes a, Lanes b) { return Lanes(a.v + b.v); }
    friend Lanes operator-(Lanes a, Lanes b) { return Lanes(a.v - b.v); }
    friend Lanes operator*(Lanes a, Lanes b) { return Lanes(a.v * b.v); }
    friend Lanes operator/(Lanes a, Lanes b) { return Lanes(a.v / b.v); }
    friend Lanes operator-(Lanes a) { return Lanes(-a.v); }
    friend Mask operator<(Lanes a, Lanes b) { return {a.v < b.v}; }
    friend Mask operator<=(Lanes a, Lanes b) { return {a.v <= b.v}; }
    friend Mask operator>(Lanes a, Lanes b) { return {a.v > b.v}; }
    friend Mask operator>=(Lanes a, Lanes b) { return {a.v >= b.v}; }
    friend Mask operator==(Lanes a, Lanes b) { return {a.v == b.v}; }
    friend Mask operator!=(Lanes a, Lanes b) { return {a.v != b.v}; }
};

inline Lanes Select(Mask condition, Lanes a, Lanes b)
{
    return Lanes((Raw)(((Raw_Mask)a.v & condition.m) | ((Raw_Mask)b.v & ~condition.m)));
}
inline Lanes Sin(Lanes x)
{
    return Lanes(LOBEMAX_SLEEF(sin)(x.v));
}
inline Lanes Cos(Lanes x)
{
    return Lanes(LOBEMAX_SLEEF(cos)(x.v));
}
inline Circular<Lanes> Sin_Cos(Lanes x)
{
    const Raw_Circular both = LOBEMAX_SLEEF(sincos)(x.v);
    return {Lanes(both.x), Lanes(both.y)};
}
inline Lanes Tan(Lanes x)
{
    return Lanes(LOBEMAX_SLEEF(tan)(x.v));
}
inline Lanes Atan(Lanes x)
{
    return Lanes(LOBEMAX_SLEEF(atan)(x.v));
}
inline Lanes Raised(Lanes x, Lanes y)
{
    return Lanes(LOBEMAX_SLEEF(pow)(x.v, y.v));
}
inline Lanes Root(Lanes x)
{
#if LOBEMAX_LANES == 2
    return Lanes(_mm_sqrt_pd(x.v));
#elif LOBEMAX_LANES == 4
    return Lanes(_mm256_sqrt_pd(x.v));
#else
    return Lanes(_mm512_maskz_sqrt_pd(0xFF, x.v));  // the plain one is warned of by GCC 12, falsely
#endif
}
inline Lanes Abs(Lanes x)
{
    return Lanes((Raw)((Raw_Mask)x.v & 0x7FFFFFFFFFFFFFFFLL));
}
inline Lanes Floor(Lanes x)
{
#if LOBEMAX_LANES == 2
    return Lanes(Sleef_floord2_sse2(x.v));
#elif LOBEMAX_LANES == 4
    return Lanes(_mm256_floor_pd(x.v));
#else
    return Lanes(_mm512_maskz_roundscale_pd(0xFF, x.v, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC));
#endif
}
/// Between doubles and 32-bit numbers, by the instructions themselves: GCC 12 makes two halves of a conversion of
/// vectors that it is told in its own words.
inline Raw_Floats Narrowed(Lanes x)
{
#if LOBEMAX_LANES == 2
    return _mm_cvtpd_ps(x.v);
#elif LOBEMAX_LANES == 4
    return _mm256_cvtpd_ps(x.v);
#else
    return _mm512_maskz_cvtpd_ps(0xFF, x.v);
#endif
}
inline Lanes Widened(Raw_Floats x)
{
#if LOBEMAX_LANES == 2
    return Lanes(_mm_cvtps_pd(x));
#elif LOBEMAX_LANES == 4
    return Lanes(_mm256_cvtps_pd(x));
#else
    return Lanes(_mm512_maskz_cvtps_pd(0xFF, x));
#endif
}
inline Lanes Rounded(Lanes x)
{
    return Widened(Narrowed(x));
}
inline Mask Finite(Lanes x)
{
    return Abs(x) <= __DBL_MAX__;
}

inline Mask Zeros(Raw_Floats x)
{
    return Widened(x) == 0.0;
}
inline Lanes Load_Lanes(const float* from)
{
#if LOBEMAX_LANES == 2
    return Widened(_mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(from)));
#elif LOBEMAX_LANES == 4
    return Widened(_mm_loadu_ps(from));
#else
    return Widened(_mm256_loadu_ps(from));
#endif
}
/// Bit k of the answer is lane k of the mask.
inline unsigned Bits_of(Mask mask)
{
#if LOBEMAX_LANES == 2
    return static_cast<unsigned>(_mm_movemask_pd((__m128d)mask.m));
#elif LOBEMAX_LANES == 4
    return static_cast<unsigned>(_mm256_movemask_pd((__m256d)mask.m));
#else
    return static_cast<unsigned>(_mm512_movepi64_mask((__m512i)mask.m));
#endif
}
/// Lanes rounded into 32 bits.
struct Stored_Lanes {
    explicit Stored_Lanes(Lanes x) : value(Narrowed(x)) {}
    Raw_Floats Residue() const { return value - value; }
    void Store(float* to) const
    {
#if LOBEMAX_LANES == 2
        _mm_storel_pi(reinterpret_cast<__m64*>(to), value);
#elif LOBEMAX_LANES == 4
        _mm_storeu_ps(to, value);
#else
        _mm256_storeu_ps(to, value);
#endif
    }
    Raw_Floats value;
};

#endif

/// A row, and what is to be stored into it.
struct To_Row {
    float* row;
    Lanes value;
};

/// The points at, at + 1, ... of all rows; whole: as many as there are lanes, else the last ones of a cycle.
template <bool whole>
struct Points {
    std::size_t at;
    std::size_t count = lane_count;

    /// The values of a row; lanes beyond the last point have the first one's.
    Lanes operator[](const float* row) const
    {
        if constexpr (whole)
            return Load_Lanes(row + at);
        float some[lane_count];
        for (std::size_t k = 0; k < lane_count; ++k)
            some[k] = row[k < count ? at + k : at];
        return Load_Lanes(some);
    }

    /// Stores the values of all points before the first that is not fine or has a value that is no finite Single.
    /// @return how many were stored
    template <class... Row>
    std::size_t Store(Mask fine, const Row&... to) const
    {
        return Store_Rounded(fine, Pending{to.row + at, Stored_Lanes(to.value)}...);
    }

private:
    struct Pending {
        float* place;
        Stored_Lanes value;
    };

    template <class... Value>
    std::size_t Store_Rounded(Mask fine, const Value&... values) const
    {
        const Mask good = fine && Zeros((values.value.Residue() + ...));
        constexpr unsigned all = (1U << lane_count) - 1U;
        const unsigned bad = ~Bits_of(good) & all;
        if (whole && bad == 0U) [[likely]] {
            (values.value.Store(values.place), ...);
            return lane_count;
        }
        const std::size_t until = bad == 0U ? lane_count : static_cast<std::size_t>(__builtin_ctz(bad));
        const std::size_t stored = until < count ? until : count;
        const auto some = [stored](const Pending& value) {
            float rounded[lane_count];
            value.value.Store(rounded);
            for (std::size_t k = 0; k < stored; ++k)
                value.place[k] = rounded[k];
        };
        (some(values), ...);
        return stored;
    }
};

/// The numbers at, at + 1, ...
inline Lanes Lane_Numbers(std::size_t at)
{
    constexpr float numbers[]{0, 1, 2, 3, 4, 5, 6, 7};
    return static_cast<double>(at) + Load_Lanes(numbers);
}

inline Mask All_Lanes()
{
    return Lanes(0.0) == Lanes(0.0);
}

/// Runs body(Points) over the points first to count - 1; body returns what its Store returned.
/// @return the first point that was not stored, count when all were
template <class Body>
std::size_t Over_Points(std::size_t first, std::size_t count, const Body& body)
{
    std::size_t i = first;
    for (; i + lane_count <= count; i += lane_count) {
        const std::size_t stored = body(Points<true>{i});
        if (stored != lane_count)
            return i + stored;
    }
    return i < count ? i + body(Points<false>{i, count - i}) : i;
}

}  // namespace

}  // namespace lobemax
