// SPDX-License-Identifier: GPL-3.0-or-later
/// The number that a text begins with, with a decimal point in every locale: Qt sets the process's own.
#pragma once

#include <charconv>
#include <limits>
#include <string_view>

namespace lobemax::testing {

/// NaN where there is none, which no comparison passes.
inline double Number_In(std::string_view text)
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    double value = std::numeric_limits<double>::quiet_NaN();
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

}  // namespace lobemax::testing
