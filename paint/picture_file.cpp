// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/picture_file.h"

#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace lobemax::paint {

bool Save_Picture(const QSize& size, const QString& path, const std::function<void(QPainter&)>& paint)
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
        svg.setFileName(path);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        return paint_on(svg, 1.0);
    }
    if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        QPdfWriter pdf(path);
        pdf.setPageSize(QPageSize(QSizeF(size), QPageSize::Point));
        pdf.setPageMargins(QMarginsF());
        return paint_on(pdf, double(pdf.width()) / size.width());
    }
    constexpr int fine = 2;
    QImage picture(size * fine, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return paint_on(picture, fine) && picture.save(path);
}

}  // namespace lobemax::paint
