// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/picture_file.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QHashSeed>
#include <QImage>
#include <QImageWriter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSvgGenerator>
#include <algorithm>

#include "core/basic_types.h"
#include "core/traps.h"
#include "files/whole_file.h"

namespace lobemax::paint {

namespace {

/// The order of the fonts in a PDF is that of a hash table: while this stands, new tables are the same in every run.
class Fixed_Hashes {
public:
    Fixed_Hashes() { QHashSeed::setDeterministicGlobalSeed(); }
    ~Fixed_Hashes() { QHashSeed::resetRandomGlobalSeed(); }
    Fixed_Hashes(const Fixed_Hashes&) = delete;
    Fixed_Hashes& operator=(const Fixed_Hashes&) = delete;
};

/// Blanks out the date of making of a PDF, an entry that a file may do without. Places of other objects in the file
/// are told by their offsets, so its length stays.
void Take_Out_Date(QByteArray& pdf)
{
    const qsizetype from = pdf.lastIndexOf("/CreationDate");
    const qsizetype to = from < 0 ? -1 : pdf.indexOf(')', from);
    if (to > from)
        std::fill(pdf.begin() + from, pdf.begin() + to + 1, ' ');
}

/// The bytes of a picture; empty where it could not be made. @param why  out: what went wrong, where it is known
QByteArray Picture_Bytes(const QSize& size, const QString& path, double scale,
                         const std::function<bool(QPainter&)>& paint, std::string& why)
{
    const auto paint_on = [&](QPaintDevice& device, double per_point) {
        QPainter painter;
        if (!painter.begin(&device))
            return false;
        painter.scale(per_point, per_point);
        return paint(painter) && painter.end();
    };
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    bool made = false;
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        made = paint_on(svg, 1.0);
    } else if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        const Fixed_Hashes fixed;
        {
            QPdfWriter pdf(&buffer);
            pdf.setPageSize(QPageSize(QSizeF(size), QPageSize::Point));
            pdf.setPageMargins(QMarginsF());
            made = paint_on(pdf, double(pdf.width()) / size.width());
        }
        Take_Out_Date(bytes);
    } else {
        QImage picture((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
        if (picture.isNull()) {
            why = Error_Description(out_of_memory);
            return {};
        }
        picture.fill(Qt::white);
        QImageWriter writer(&buffer, QFileInfo(path).suffix().toLatin1());
        made = paint_on(picture, scale) && writer.write(picture);
        if (!made && writer.error() != QImageWriter::UnknownError)
            why = writer.errorString().toStdString();
    }
    return made ? bytes : QByteArray();
}

}  // namespace

namespace {

bool Write_Bytes(const QByteArray& bytes, const std::string& reason, const std::string& path, std::string* why)
{
    if (bytes.isEmpty()) {
        if (why != nullptr)
            *why = reason;
        return false;
    }
    try {
        Write_Whole_File(path, {bytes.data(), static_cast<std::size_t>(bytes.size())});
    } catch (const Fault& fault) {
        if (why != nullptr)
            *why = Error_Description(fault.Number());
        return false;
    }
    return true;
}

/// The first and the last page to print, from 1.
std::pair<int, int> Pages_Wished(const QPagedPaintDevice& device, int pages)
{
    const auto* const printer = dynamic_cast<const QPrinter*>(&device);
    if (printer == nullptr || printer->printRange() != QPrinter::PageRange || printer->fromPage() < 1)
        return {1, pages};
    return {printer->fromPage(), std::min(std::max(printer->toPage(), printer->fromPage()), pages)};
}

}  // namespace

bool Save_Picture(const QSize& size, const std::string& path, double scale, const std::function<bool(QPainter&)>& paint,
                  std::string* why)
{
    std::string reason;
    const QByteArray bytes = Picture_Bytes(size, QFile::decodeName(path.c_str()), scale, paint, reason);
    return Write_Bytes(bytes, reason, path, why);
}

bool Paint_Pages(const Page_Maker& make, QPagedPaintDevice& device)
{
    const QSizeF area = device.pageLayout().paintRect(QPageLayout::Point).size();
    const std::vector<Page> pages = make(area);
    const auto [first, last] = Pages_Wished(device, static_cast<int>(pages.size()));
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.scale(device.width() / area.width(), device.height() / area.height());
    for (int k = first; k <= last; ++k) {
        if (k > first && !device.newPage())
            return false;
        painter.save();
        pages[static_cast<std::size_t>(k - 1)](painter);
        painter.restore();
    }
    return painter.end();
}

bool Save_Pages(const Page_Maker& make, bool letter, const std::string& path, std::string* why)
{
    QByteArray bytes;
    const Fixed_Hashes fixed;
    bool made = false;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setPageSize(QPageSize(letter ? QPageSize::Letter : QPageSize::A4));
        pdf.setPageMargins(QMarginsF(Page_Margin, Page_Margin, Page_Margin, Page_Margin), QPageLayout::Millimeter);
        made = Paint_Pages(make, pdf);
    }
    Take_Out_Date(bytes);
    return Write_Bytes(made ? bytes : QByteArray(), {}, path, why);
}

std::string Page_Bytes(const QSizeF& size, const Page& paint)
{
    QByteArray bytes;
    const Fixed_Hashes fixed;
    bool made = false;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        const bool wide = size.width() > size.height();
        pdf.setPageSize(
            QPageSize(wide ? size.transposed() : size, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch));
        pdf.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
        pdf.setPageMargins(QMarginsF());
        constexpr int dots = 2540;  // an inch: a hundred a millimetre
        pdf.setResolution(dots);
        QPainter painter;
        if (painter.begin(&pdf)) {
            constexpr double millimetre = dots / 25.4;
            painter.scale(millimetre, millimetre);
            paint(painter);
            made = painter.end();
        }
    }
    if (!made)
        throw Fault(out_of_memory);
    Take_Out_Date(bytes);
    return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace lobemax::paint
