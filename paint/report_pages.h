// SPDX-License-Identifier: GPL-3.0-or-later
/// Reports and tables on pages, for the printer, its preview and PDF files: a head with design, file and date on every
/// page, and below it "Page n of m".
#pragma once

#include <string>

#include "forms/design_report.h"
#include "forms/print_form.h"
#include "paint/picture_file.h"

namespace lobemax::paint {

/// Whether prints of a design go onto paper of the inch's size: letter for the systems in inch and foot, else A4.
bool Prints_on_Letter(const Design_State& design);

/// The pages of a table: what identifies the print, then the rows under their heads, which each page repeats.
Page_Maker Table_Pages(const Design_State& design, const Table_in_Texts& table);

/// The pages of a report: its parts, plots of what is calculated, four a page, and the drawing of cam and linkage. They
/// keep a design of their own.
Page_Maker Report_Pages(const Design_State& design, const Design_Report& report);

/// Writes a report's pages to a PDF file (Save_Pages). @return whether it was written
bool Save_Report(const Design_State& design, const Design_Report& report, const std::string& path,
                 std::string* why = nullptr);

}  // namespace lobemax::paint
