// SPDX-License-Identifier: GPL-3.0-or-later
/// Pictures as files.
#pragma once

#include <QPainter>
#include <QSize>
#include <QString>
#include <functional>

namespace lobemax::paint {

/// Writes what is painted into an area of some points, from 0 on, to a PNG, SVG or PDF file by the ending of its path.
/// A PNG has two pixels a point; its ground is white. A file that stood there stays until the new one is whole.
/// @param why  out: what went wrong
/// @return     whether the file was written
bool Save_Picture(const QSize& size, const QString& path, const std::function<void(QPainter&)>& paint,
                  QString* why = nullptr);

}  // namespace lobemax::paint
