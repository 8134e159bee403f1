// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/print_form.h"
#include "screens/screen.h"

class QTableWidget;

namespace lobemax::screens {

/// Puts the table of a choice onto the grid of frm_PrintData: heads with their units, rows, "Min" and "Max".
void Print_to_Form(QTableWidget& grd_Data, const Table_in_Texts& table);

/// The table of a choice through the printer's dialog, a page at a time. @return whether it was printed
bool Print_to_Printer(QWidget* parent, const Print_Choice& choice);

/// The table on its pages, before it is printed, and in a PDF file.
void Preview_Table(QWidget* parent, const Print_Choice& choice);
void Save_Table_as_PDF(const Print_Choice& choice);

/// A table on the screen. Accepted: the user is done; rejected: he wants another table.
class frm_PrintData : public Screen {
public:
    explicit frm_PrintData(const Print_Choice& choice, QWidget* parent = nullptr);
};

}  // namespace lobemax::screens
