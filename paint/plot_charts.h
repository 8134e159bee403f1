// SPDX-License-Identifier: GPL-3.0-or-later
/// The picked functions of a plot in charts, for the plot screens and for pictures.
#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <vector>

#include "core/design_state.h"
#include "paint/chart.h"
#include "paint/picture_file.h"

namespace lobemax::paint {

/// In gray, the functions of a chart are told apart by their pattern. @param place  of the curve among them
void Take_Colour_Away(Curve& curve, std::size_t place);

/// Ticks a chart of the whole cycle by the cam angle, as the plots of a whole cycle are.
void Set_Angle_Ticks(const Design_State& design, Chart& chart);

/// Shows a row of the table over the whole cycle, with its name and unit beside it.
void Show_Cycle(const Design_State& design, Chart& chart, int row, bool with_bottom_title = true);

/// Shows true values beside a row of the whole cycle, thin and dashed, in place of those before; none: takes them away.
/// The curves and the part of them in view stay. @param values  of the points of the table; not finite: none there
void Put_Beside(Chart& chart, const QString& name, const std::vector<double>& values);

/// Charts of a style 1..4: one, two, four, one.
int Windows_of(int plot_style);

/// The curve of a picked variable or composite choice in a style, over the range of the picked segment.
Curve Plotted_Curve(const Design_State& design, int plot_style, int variable);

/// How the picked functions are drawn unless the user wants it otherwise: curves by a line, harmonics by sticks. Where
/// both stand side by side, by both.
Curve_Style Usual_Look(const Design_State& design, int plot_style);

/// Shows the picked functions in the charts of a style, as many as Windows_of, each chart with the abscissa, ticks and
/// titles of what it shows.
///
/// @param look  of all functions; none: of each chart's own kind
/// @return      the title that stands once above several charts. It is empty where a chart has its title itself: a
///              chart alone, and charts of different titles
QString Fill_Plot(const Design_State& design, const std::vector<Chart*>& charts, int plot_style,
                  std::optional<Curve_Style> look = {});

/// Writes the plot of the picked functions to a picture (Save_Picture).
/// @param why  out: what went wrong
/// @return     whether it was written
bool Save_Plot(const Design_State& design, int plot_style, const QSize& size, const std::string& path,
               double scale = Screen_Picture_Scale, std::string* why = nullptr);

}  // namespace lobemax::paint
