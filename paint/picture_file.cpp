// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/picture_file.h"

#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace lobemax::paint {

namespace {

/// Writes a picture to an open file. @param why  out: what went wrong
bool Write_Picture(QIODevice& file, const QString& path, const QSize& size, const std::function<void(QPainter&)>& paint,
                   QString& why)
{
    const auto paint_on = [&](QPaintDevice& device, double scale) {
        QPainter painter;
        if (!painter.begin(&device))
            return false;
        painter.scale(scale, scale);
        paint(painter);
        return painter.end();
    };
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        return paint_on(svg, 1.0);
    }
    if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        QPdfWriter pdf(&file);
        pdf.setPageSize(QPageSize(QSizeF(size), QPageSize::Point));
        pdf.setPageMargins(QMarginsF());
        return paint_on(pdf, double(pdf.width()) / size.width());
    }
    constexpr int fine = 2;
    QImage picture(size * fine, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QImageWriter writer(&file, QFileInfo(path).suffix().toLatin1());
    const bool written = paint_on(picture, fine) && writer.write(picture);
    if (!written)
        why = writer.errorString();
    return written;
}

}  // namespace

bool Save_Picture(const QSize& size, const QString& path, const std::function<void(QPainter&)>& paint, QString* why)
{
    QSaveFile file(path);
    QString reason;
    const bool written = file.open(QIODevice::WriteOnly) && Write_Picture(file, path, size, paint, reason) &&
                         file.error() == QFileDevice::NoError && file.commit();
    if (!written && why != nullptr)
        *why = reason.isEmpty() ? file.errorString() : reason;
    return written;
}

}  // namespace lobemax::paint
