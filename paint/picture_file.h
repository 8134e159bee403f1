// SPDX-License-Identifier: GPL-3.0-or-later
/// Pictures as files.
#pragma once

#include <QPainter>
#include <QSize>
#include <functional>
#include <string>

namespace lobemax::paint {

/// Pixels a point of a PNG that is saved from a screen.
inline constexpr double Screen_Picture_Scale = 2.0;

/// Writes what is painted into an area of some points, from 0 on, to a PNG, SVG or PDF file by the ending of its path;
/// any other ending names its format. The file is written whole or not at all, and the same picture gives the same
/// bytes: no clock stands in it. The ground of a PNG is white.
///
/// @param size   of the area, points
/// @param scale  pixels a point of a PNG; the others have no pixels
/// @param paint  false: there is no picture, and an older file stays as it was
/// @param why    out: what went wrong
/// @return       whether the file was written
bool Save_Picture(const QSize& size, const std::string& path, double scale, const std::function<bool(QPainter&)>& paint,
                  std::string* why = nullptr);

}  // namespace lobemax::paint
