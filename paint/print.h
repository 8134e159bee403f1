// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QPagedPaintDevice;
class QWidget;

namespace lobemax::paint {

/// Prints a form as it stands, after the note about better prints and the printer's own dialog.
void Print_Form(QWidget& form);

/// Paints a form onto a page, whole and as large as it fits.
void Paint_Form(QWidget& form, QPagedPaintDevice& page);

}  // namespace lobemax::paint
