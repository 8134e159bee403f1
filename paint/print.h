// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>

class QPagedPaintDevice;
class QWidget;

namespace lobemax::paint {

/// Prints a form as it stands, after the note about better prints and the printer's own dialog.
void Print_Form(QWidget& form);
/// The same with another note.
void Print_Form(QWidget& form, const std::string& note);

/// Paints a form onto a page, whole and as large as it fits.
void Paint_Form(QWidget& form, QPagedPaintDevice& page);

}  // namespace lobemax::paint
