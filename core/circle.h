// SPDX-License-Identifier: GPL-3.0-or-later
/// The circle constants: literals of the program; no library value of pi takes their place.
#pragma once

namespace lobemax {

inline constexpr double PI = 3.141592654;
inline constexpr double PI2 = 6.283185308;
inline constexpr double PI4 = 12.566370616;
inline constexpr double PIH = 1.570796327;
inline constexpr double Deg_per_Rad = 57.29577950560105;
inline constexpr double Rad_per_Deg = 0.017453292522222223;

}  // namespace lobemax
