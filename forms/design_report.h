// SPDX-License-Identifier: GPL-3.0-or-later
/// The whole design as a report to be filed: its words and tables, for a text file and for pages.
#pragma once

#include <string>
#include <vector>

#include "core/design_state.h"
#include "present/report.h"

namespace lobemax {

/// A part of a report: lines, then a table, then notes; any of them may be empty.
struct Report_Part {
    std::string title;
    Report_Lines lines;
    Report_Table table;
    Report_Lines notes;
};

struct Design_Report {
    std::string title;
    Report_Lines header;  // what identifies the print
    std::vector<Report_Part> parts;
};

/// All that the design holds and as far as it is calculated, numbers to six figures in the number format in force:
/// units and motion, segments, conditions with coefficients or knots, continuity, sizes, pressure angle and curvature,
/// extremes of every calculated row, forces, stress, vibration, polydyne cam, transform, balancing cam, linkage.
///
/// The design is taken by value: what a report works out on its way stays out of the caller's.
Design_Report Make_Design_Report(Design_State design);

/// The report as lines of at most 100 characters, except where a table is wider.
std::string Report_Text(const Design_Report& report);

}  // namespace lobemax
