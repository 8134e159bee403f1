// SPDX-License-Identifier: GPL-3.0-or-later
/// Pictures as files.
#pragma once

#include <QPainter>
#include <QSize>
#include <functional>
#include <string>
#include <vector>

class QPagedPaintDevice;

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

/// What stands on a page: painted in points, from the upper left corner of the page's area.
using Page = std::function<void(QPainter&)>;
/// The pages of a print for an area of some points each: what fits on one depends on the paper.
using Page_Maker = std::function<std::vector<Page>(const QSizeF& area)>;

/// Paints pages onto a printer or into a PDF file within the margins that it has; of a print of a range those in it.
/// @return whether the device took them
bool Paint_Pages(const Page_Maker& make, QPagedPaintDevice& device);

/// Margins of a printed page, millimetres.
inline constexpr double Page_Margin = 15.0;

/// Writes pages to a PDF file, whole or not at all, the same bytes each time.
/// @param letter  the paper: letter, else A4
/// @param why     out: what went wrong
/// @return        whether the file was written
bool Save_Pages(const Page_Maker& make, bool letter, const std::string& path, std::string* why = nullptr);

/// The bytes of a PDF file of one page without margins, the same each time.
/// @param size   of the page, millimetres
/// @param paint  paints in millimetres from its upper left corner
/// @throws Fault{7} where the device does not take it
std::string Page_Bytes(const QSizeF& size, const Page& paint);

}  // namespace lobemax::paint
