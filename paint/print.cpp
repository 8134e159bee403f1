// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/print.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>

#include "core/messages.h"

namespace lobemax::paint {

void Paint_Form(QWidget& form, QPagedPaintDevice& page)
{
    QPainter painter(&page);
    const QRectF area(0, 0, page.width(), page.height());
    const double scale = std::min(area.width() / form.width(), area.height() / form.height());
    painter.scale(scale, scale);
    form.render(&painter);
}

void Print_Form(QWidget& form)
{
    Print_Form(form,
               "You can print this form directly to a printer from here.\n"
               "But a better quality print can be obtained by copying the\n"
               "screen to the clipboard with the key combo Alt-PrintScrn,\n"
               "and pasting it into a word processing or graphics program,");
}

void Print_Form(QWidget& form, const std::string& note)
{
    Show_Message(note, Buttons::OK, Symbol::information);
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(form.width() > form.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPrintDialog dialog(&printer, &form);
    dialog.setWindowModality(Qt::WindowModal);  // the help stays usable
    if (dialog.exec() == QDialog::Accepted)
        Paint_Form(form, printer);
}

}  // namespace lobemax::paint
