// SPDX-License-Identifier: GPL-3.0-or-later
/// The numbers and words of plots: windows, ticks, decimals, titles, the panels beside a plot, and the painter of the
/// calculation screens onto a surface.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/surface.h"

namespace lobemax {

/// World window of a plot: y runs upward.
struct Plot_Window {
    double left;
    double right;
    double bottom;
    double top;
};

/// The window of one of two or four plots. A ymax of exactly 0 counts as 0.0001, so the scale never collapses.
/// @throws Fault{9} for another count of windows
Plot_Window SetWindow(int windows, double ymax, double x_start, double x_end);

/// Decimals of the extremes beside a plot: 0, 1 below 1000, 2 below 100, 3 below 10.
int Plot_Decimals(double ymax);

/// What stands beside a plot of one variable.
struct Plot_Figures {
    std::string left_title;  // name of the variable
    std::string units;
    std::string ymax;
    std::string ymin;
    double largest = 0.0;
    double smallest = 0.0;
    double peak = 0.0;  // largest absolute value
};

/// Paints a variable over points first..last onto a surface: axes, ticks, segment boundaries on request, curve.
///
/// @param windows  how many plots share the screen, 2 or 4
/// @return         the figures beside it
/// @throws Fault{9} for a row or points outside the table
Plot_Figures Plot_Dynamics(Surface& surface, int windows, int variable, int first, int last, bool vertical_lines);

/// The fixed numbers and titles of a chart of the plot screens.
struct Plot_Setup {
    int NumPoints;
    int TickEvery;
    int LabelEvery;
    std::string bottom_title;
    std::string graph_title;
};
/// @param fourier  whether the plot shows harmonics
Plot_Setup PlotSetup(int plot_style, int first, int last, bool fourier);

/// Whether a variable is a result of the Fourier transform, which has harmonics for its abscissa.
bool Is_Fourier(int variable);

/// Captions and values of the panels "Cam Basic Data" and "Cam Size Data".
using Panel_Lines = std::vector<std::pair<std::string, std::string>>;
Panel_Lines Basic_Data();
Panel_Lines Size_Data();

/// The line above a plot or a table: design number, file, time.
std::string Plot_Header();

}  // namespace lobemax
