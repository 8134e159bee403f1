// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

class QPagedPaintDevice;
class QWidget;

namespace lobemax::paint {

/// A list of a form, which may hold more than the form shows.
struct Printed_List {
    QString title;
    QStringList heads;
    std::vector<QStringList> rows;  // a text for each head
};

/// Prints a form as it stands, after the note about better prints and the printer's own dialog; behind it its lists,
/// whole, on pages of their own.
void Print_Form(QWidget& form, const std::vector<Printed_List>& lists = {});
/// The same with another note.
void Print_Form(QWidget& form, const std::string& note, const std::vector<Printed_List>& lists = {});

/// Paints a form onto the first page, as Paint_Form below, and the lists onto those behind. @return the pages
int Paint_Form(QWidget& form, const std::vector<Printed_List>& lists, QPagedPaintDevice& page);

/// Paints a form onto a page, whole and as large as it fits.
void Paint_Form(QWidget& form, QPagedPaintDevice& page);

}  // namespace lobemax::paint
