// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lanes.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace lobemax {

namespace {

/// The width that is forced, 0 for none.
std::atomic<int> forced{0};

Lane_Width Asked_by_Environment() noexcept
{
    constexpr std::array<std::pair<std::string_view, Lane_Width>, 4> names{{{"reference", Lane_Width::reference},
                                                                            {"sse2", Lane_Width::sse2},
                                                                            {"avx2", Lane_Width::avx2},
                                                                            {"avx512", Lane_Width::avx512}}};
    const char* const asked = std::getenv("LOBEMAX_LANES");
    const auto name = std::ranges::find(names, asked == nullptr ? "" : std::string_view(asked),
                                        &std::pair<std::string_view, Lane_Width>::first);
    return name == names.end() ? Widest_Lanes() : std::min(name->second, Widest_Lanes());
}

}  // namespace

Lane_Width Widest_Lanes() noexcept
{
#if defined(__x86_64__)
    // What the objects of each width are compiled for.
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl"))
        return Lane_Width::avx512;
    return __builtin_cpu_supports("avx2") ? Lane_Width::avx2 : Lane_Width::sse2;
#else
    return Lane_Width::reference;
#endif
}

Lane_Width Lanes_in_Use() noexcept
{
    static const Lane_Width usual = Asked_by_Environment();
    const int width = forced.load(std::memory_order_relaxed);
    return width == 0 ? usual : std::min(static_cast<Lane_Width>(width), Widest_Lanes());
}

Forced_Lanes::Forced_Lanes(Lane_Width width) noexcept : before_(forced.exchange(static_cast<int>(width))) {}

Forced_Lanes::~Forced_Lanes()
{
    forced.store(before_);
}

}  // namespace lobemax
