// SPDX-License-Identifier: GPL-3.0-or-later
/// Functions of a linkage in charts, for the plot screen of linkages and for pictures.
#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "paint/chart.h"
#include "paint/picture_file.h"
#include "present/linkage_plots.h"

namespace lobemax::paint {

/// The curve of a function over the whole cycle. @throws Fault{9} before a linkage was calculated
Curve Link_Curve(const Design_State& design, const Link_Function& function);

/// Shows functions: all of them in a chart alone, else one a chart, with axis titles, ticks and title.
/// @param look  none: by lines
/// @return      the title that stands once above several charts, empty for a chart alone, which has it itself
/// @throws Fault{9} before a linkage was calculated
QString Fill_Link_Plot(const Design_State& design, const std::vector<Chart*>& charts,
                       const std::vector<Link_Function>& functions, std::optional<Curve_Style> look = {});

/// Writes the plot of functions in a style 1..3 to a picture (Save_Picture).
/// @param why  out: what went wrong
/// @return     whether it was written
bool Save_Link_Plot(const Design_State& design, int plot_style, const std::vector<Link_Function>& functions,
                    const QSize& size, const std::string& path, double scale = Screen_Picture_Scale,
                    std::string* why = nullptr);

}  // namespace lobemax::paint
