// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/basic_types.h"

#include <cfenv>

namespace lobemax {

void Raise_No_Single()
{
    const bool divided_by_zero = std::fetestexcept(FE_DIVBYZERO) != 0;
    Clear_Floating_Status();
    throw Fault{divided_by_zero ? division_by_zero : overflow};
}

void Clear_Floating_Status() noexcept
{
    std::feclearexcept(FE_DIVBYZERO);
}

Integer To_Integer(double x)
{
    // nearbyint rounds ties to even in the default rounding mode, which the program never changes.
    const double nearest = std::nearbyint(x);
    if (!(nearest >= -32768.0 && nearest <= 32767.0)) {
        if (std::isinf(x))
            Raise_No_Single();
        throw Fault{overflow};
    }
    return Integer(static_cast<int>(nearest));
}

double Sqr(double x)
{
    if (x < 0.0)
        throw Fault{invalid_argument};
    return std::sqrt(x);
}

double Power(double x, double y)
{
    if (x < 0.0 && y != std::floor(y))
        throw Fault{invalid_argument};
    if (x == 0.0 && y < 0.0)
        throw Fault{division_by_zero};
    return std::pow(x, y);
}

}  // namespace lobemax
