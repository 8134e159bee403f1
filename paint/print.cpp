// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/print.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "core/basic_types.h"
#include "core/messages.h"
#include "core/traps.h"

namespace lobemax::paint {

namespace {

void Paint_Whole(QWidget& form, QPainter& painter, const QRectF& area)
{
    painter.save();
    const double scale = std::min(area.width() / form.width(), area.height() / form.height());
    painter.scale(scale, scale);
    form.render(&painter);
    painter.restore();
}

/// Lists below each other, their heads again at the top of each page.
class List_Painter {
public:
    List_Painter(QPainter& painter, QPagedPaintDevice& page)
        : painter_(painter), page_(page), area_(0, 0, page.width(), page.height())
    {
        constexpr int points = 8;
        plain_ = QFont(painter.font());
        plain_.setPointSize(points);
        bold_ = plain_;
        bold_.setBold(true);
        painter_.setFont(plain_);
        line_ = painter_.fontMetrics().height() * 1.15;
    }
    void Paint(const Printed_List& list)
    {
        constexpr int least_rows = 4;  // with less room a list begins on a page of its own
        if (pages_ == 0 || !Fits(least_rows))
            Turn();
        else
            y_ += line_;
        Head(list);
        for (const QStringList& row : list.rows) {
            if (!Fits(1)) {
                Turn();
                Head(list);
            }
            Row(row, plain_);
        }
    }
    int Pages() const { return pages_; }

private:
    bool Fits(int rows) const { return y_ + rows * line_ <= area_.height(); }
    void Turn()
    {
        page_.newPage();
        ++pages_;
        y_ = 0.0;
    }
    void Head(const Printed_List& list)
    {
        painter_.setFont(bold_);
        painter_.drawText(QRectF(0, y_, area_.width(), line_), Qt::AlignLeft | Qt::AlignVCenter, list.title);
        y_ += line_;
        Row(list.heads, bold_);
        painter_.drawLine(QPointF(0, y_), QPointF(area_.width(), y_));
    }
    void Row(const QStringList& cells, const QFont& font)
    {
        painter_.setFont(font);
        const double width = area_.width() / static_cast<double>(std::max<qsizetype>(cells.size(), 1));
        double x = 0.0;
        for (const QString& cell : cells) {
            painter_.drawText(QRectF(x, y_, width, line_), Qt::AlignRight | Qt::AlignVCenter, cell);
            x += width;
        }
        y_ += line_;
    }

    QPainter& painter_;
    QPagedPaintDevice& page_;
    QRectF area_;
    QFont plain_;
    QFont bold_;
    double line_ = 0.0;
    double y_ = 0.0;
    int pages_ = 0;
};

}  // namespace

int Paint_Form(QWidget& form, const std::vector<Printed_List>& lists, QPagedPaintDevice& page)
{
    QPainter painter;
    if (!painter.begin(&page))
        return 0;
    Paint_Whole(form, painter, QRectF(0, 0, page.width(), page.height()));
    List_Painter behind(painter, page);
    for (const Printed_List& list : lists)
        behind.Paint(list);
    return 1 + behind.Pages();
}

void Paint_Form(QWidget& form, QPagedPaintDevice& page)
{
    Paint_Form(form, {}, page);
}

namespace {

Print_Player& Player()
{
    static Print_Player player;
    return player;
}

void Set_Paper(QPrinter& printer, bool letter)
{
    printer.setPageSize(QPageSize(letter ? QPageSize::Letter : QPageSize::A4));
    printer.setPageMargins(QMarginsF(Page_Margin, Page_Margin, Page_Margin, Page_Margin), QPageLayout::Millimeter);
}

/// Whether the user wishes to print, with the printer set as he wishes.
bool Ask_Printer(QPrinter& printer, QWidget* parent)
{
    if (Player())
        return Player()(printer);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowModality(Qt::WindowModal);  // the help stays usable
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

Print_Player Play_Prints(Print_Player player)
{
    return std::exchange(Player(), std::move(player));
}

void Print_Form(QWidget& form, const std::vector<Printed_List>& lists)
{
    Print_Form(form,
               "You can print this form directly to a printer from here.\n"
               "But a better quality print can be obtained by copying the\n"
               "screen to the clipboard with the key combo Alt-PrintScrn,\n"
               "and pasting it into a word processing or graphics program,",
               lists);
}

void Print_Form(QWidget& form, const std::string& note, const std::vector<Printed_List>& lists)
{
    Show_Message(note, Buttons::OK, Symbol::information);
    Trap("Print_Form in " + form.objectName().toStdString(), [&] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setPageOrientation(form.width() > form.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
        if (Ask_Printer(printer, &form) && Paint_Form(form, lists, printer) == 0)
            throw Fault{printer_error};
    });
}

bool Print_Pages(QWidget* parent, const Page_Maker& make, bool letter, std::string_view routine)
{
    bool printed = false;
    Trap(routine, [&] {
        QPrinter printer(QPrinter::HighResolution);
        Set_Paper(printer, letter);
        if (!Ask_Printer(printer, parent))
            return;
        if (!Paint_Pages(make, printer))
            throw Fault{printer_error};
        printed = true;
    });
    return printed;
}

void Preview_Pages(QWidget* parent, const Page_Maker& make, bool letter, std::string_view routine)
{
    Trap(routine, [&] {
        QPrinter printer(QPrinter::HighResolution);
        Set_Paper(printer, letter);
        bool failed = false;
        const auto paint = [&](QPrinter* onto) { failed = !Paint_Pages(make, *onto) || failed; };
        if (Player()) {
            if (Player()(printer))
                paint(&printer);
        } else {
            QPrintPreviewDialog preview(&printer, parent);
            preview.setWindowModality(Qt::WindowModal);
            preview.setWindowFlag(Qt::WindowMaximizeButtonHint);
            QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, paint);
            preview.exec();
        }
        if (failed)
            throw Fault{printer_error};
    });
}

}  // namespace lobemax::paint
