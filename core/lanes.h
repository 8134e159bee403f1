// SPDX-License-Identifier: GPL-3.0-or-later
/// Rows worked on several points at a time, as wide as the processor allows, with the same bits on each.
///
/// How a room gets kernels:
/// - The formula is a template over its number (core/real_math.h), in a header `NAME_formulas.h` with a struct of the
///   constants of a design.
/// - `NAME_lanes.cpp` has the loops over the rows. It is compiled once for each width, with LOBEMAX_LANES set to the
///   doubles worked on at once, includes "core/lane_math.h" and puts its loops into a table of function pointers, which
///   it hands out as `template <> const Table& Kernels<Table, LOBEMAX_LANES>()`. It includes nothing of the standard
///   library that leaves functions in the object file: another width's object could be linked in their place, and end
///   a program on a smaller processor (.ci/run looks).
/// - The caller takes `Kernels_in_Use<Table>()` and runs it by `Run_Points`.
///
/// Sines, cosines and arc tangents are those of SLEEF, the variants that have the same bits at every width: error
/// below 1 unit in the last place of a double. No fused multiplication anywhere. The reference, one double at a time by
/// the C library, is what the benches compare with and what other processors than x86-64 use.
#pragma once

#include <cfenv>
#include <cstddef>
#include <span>

#include "core/basic_types.h"

namespace lobemax {

enum class Lane_Width : int { reference = 1, sse2 = 2, avx2 = 4, avx512 = 8 };

/// The widest that this processor has.
Lane_Width Widest_Lanes() noexcept;

/// The one in force: the widest, or a smaller one that the environment names (LOBEMAX_LANES = reference, sse2, avx2 or
/// avx512; what is not there or wider than the processor counts as none).
Lane_Width Lanes_in_Use() noexcept;

/// While it lives, all threads use this width, or the widest there is below it. For tests and benches.
class Forced_Lanes {
public:
    explicit Forced_Lanes(Lane_Width width) noexcept;
    ~Forced_Lanes();
    Forced_Lanes(const Forced_Lanes&) = delete;
    Forced_Lanes& operator=(const Forced_Lanes&) = delete;

private:
    int before_;
};

/// The kernels of one width, defined by the lane files.
template <class Table, int Width>
const Table& Kernels();

template <class Table>
const Table& Kernels_in_Use()
{
    switch (Lanes_in_Use()) {
#if defined(__x86_64__)
    case Lane_Width::sse2:
        return Kernels<Table, 2>();
    case Lane_Width::avx2:
        return Kernels<Table, 4>();
    case Lane_Width::avx512:
        return Kernels<Table, 8>();
#endif
    default:
        return Kernels<Table, 1>();
    }
}

/// The 32-bit numbers of a row, for a kernel.
inline float* Bits(std::span<Single> row) noexcept
{
    static_assert(sizeof(Single) == sizeof(float) && alignof(Single) == alignof(float));
    return reinterpret_cast<float*>(row.data());
}
inline const float* Bits(std::span<const Single> row) noexcept
{
    return reinterpret_cast<const float*>(row.data());
}

/// Keeps the floating status: a kernel works out both sides of a choice, and what the other side meets is no fault.
class Status_Kept {
public:
    Status_Kept() noexcept { std::fegetexceptflag(&flags_, FE_ALL_EXCEPT); }
    ~Status_Kept() { std::fesetexceptflag(&flags_, FE_ALL_EXCEPT); }
    Status_Kept(const Status_Kept&) = delete;
    Status_Kept& operator=(const Status_Kept&) = delete;

private:
    std::fexcept_t flags_{};
};

/// All points of a cycle in their order. `kernel(first, count)` works on points first to count - 1, stores those before
/// the first that it cannot store (a value that is no finite Single, a triangle that does not close) and returns that
/// one, or count. `odd(i)` is the scalar way for such a point, with its messages and faults.
template <class Kernel, class Odd>
void Run_Points(std::size_t count, const Kernel& kernel, const Odd& odd)
{
    for (std::size_t i = 0;; ++i) {
        {
            const Status_Kept status;
            i = kernel(i, count);
        }
        if (i >= count)
            return;
        odd(i);
    }
}

}  // namespace lobemax
