// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "paint/picture_file.h"

class QPagedPaintDevice;
class QPrinter;
class QWidget;

namespace lobemax::paint {

/// A list of a form, which may hold more than the form shows.
struct Printed_List {
    QString title;
    QStringList heads;
    std::vector<QStringList> rows;  // a text for each head
};

/// Prints a form as it stands, after the note about better prints and the printer's own dialog; behind it its lists,
/// whole, on pages of their own. A printer that fails is told of, under the form's name.
void Print_Form(QWidget& form, const std::vector<Printed_List>& lists = {});
/// The same with another note.
void Print_Form(QWidget& form, const std::string& note, const std::vector<Printed_List>& lists = {});

/// The run-time error of a printer that does not take its pages.
inline constexpr int printer_error = 482;

/// Prints pages through the printer's own dialog; a failure is told under the routine's name.
/// @param letter  the paper that the dialog begins with: letter, else A4
/// @return        whether they were printed; false too where the user called it off
bool Print_Pages(QWidget* parent, const Page_Maker& make, bool letter, std::string_view routine);

/// Shows the pages as they would be printed; they can be printed from there.
void Preview_Pages(QWidget* parent, const Page_Maker& make, bool letter, std::string_view routine);

/// What answers the dialogs of printing in place of a user: it sets the printer and tells whether to go on. Returns the
/// one before; empty: the user does.
using Print_Player = std::function<bool(QPrinter&)>;
Print_Player Play_Prints(Print_Player player);

/// Paints a form onto the first page, as Paint_Form below, and the lists onto those behind.
/// @return the pages; 0 where the device takes none
int Paint_Form(QWidget& form, const std::vector<Printed_List>& lists, QPagedPaintDevice& page);

/// Paints a form onto a page, whole and as large as it fits.
void Paint_Form(QWidget& form, QPagedPaintDevice& page);

}  // namespace lobemax::paint
