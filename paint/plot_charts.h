// SPDX-License-Identifier: GPL-3.0-or-later
/// The picked functions of a plot in charts, for the plot screens and for pictures.
#pragma once

#include <QSize>
#include <QString>
#include <vector>

#include "paint/chart.h"

namespace lobemax::paint {

/// Charts of a style 1..4: one, two, four, one.
int Windows_of(int plot_style);

/// The curve of a picked variable or composite choice in a style, over the range of the picked segment.
Curve Plotted_Curve(int plot_style, int variable);

/// Shows the picked functions in the charts of a style, as many as Windows_of.
///
/// @param sticks  whether the harmonics of a transform take the look, too
/// @return        the title of the plot
QString Fill_Plot(const std::vector<Chart*>& charts, int plot_style, bool sticks, Curve_Style look);

/// Writes the plot of the picked functions to a picture. @return whether it was written
bool Save_Plot(int plot_style, const QSize& size, const QString& path);

}  // namespace lobemax::paint
