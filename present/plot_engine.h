// SPDX-License-Identifier: GPL-3.0-or-later
/// The numbers and words of plots: windows, ticks, decimals, titles, the panels beside a plot, and the painter of the
/// calculation screens onto a surface.
#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/surface.h"

namespace lobemax {

struct Design_State;

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

/// What stands beside a plot of one variable; the texts by the names of their labels.
struct Plot_Figures {
    double largest = 0.0;
    double smallest = 0.0;
    double peak = 0.0;  // peak to peak
    double ymax = 0.0;  // of the scale, which reaches as far down
    std::string pnl_LeftTitle;
    std::string pnl_Units;
    std::string pnl_Ymax;
    std::string pnl_Ymin;
    std::string lbl_Min;
    std::string lbl_Max;
    std::string lbl_Peak;
};
/// @throws Fault{9} for a row or points outside the table
Plot_Figures Figures_of_Plot(const Design_State& design, int variable, int first, int last);

/// Paints a variable over points first..last onto a surface: axes, ticks, segment boundaries on request, curve.
///
/// @param windows  how many plots share the screen, 2 or 4
/// @return         the figures beside it
/// @throws Fault{9} for a row or points outside the table
Plot_Figures Plot_Dynamics(const Design_State& design, Surface& surface, int windows, int variable, int first, int last,
                           bool vertical_lines);

/// The fixed numbers and titles of a chart of the plot screens.
struct Plot_Setup {
    int NumPoints;
    int TickEvery;   // points between two marks of the abscissa
    int LabelEvery;  // points between two labels
    int NumSets;
    std::string bottom_title;
    std::string graph_title;
};
/// @param variables  the functions that the chart shows; harmonics have their number for the abscissa
Plot_Setup PlotSetup(const Design_State& design, int plot_style, int first, int last, std::span<const int> variables);

/// Whether a variable is a result of the Fourier transform, which has harmonics for its abscissa.
bool Is_Fourier(int variable);

/// Whether the transform whose rows stand in the table is in memory; a design read from a file has none.
bool Transform_in_Memory(const Design_State& design);

/// Harmonics that a plot of the transform goes over, at least 1. Without a transform it is those that would be shown.
int Plotted_Harmonics(const Design_State& design);

/// What stands left of a plot of a variable: its name, or "FFT of " with it.
std::string Left_Title(const Design_State& design, int variable);

/// Unit of a plot's axis: that of the variable, but degrees for the polar angle of a radial cam, which the unit table
/// has as a length, and that of the transformed variable for the parts of its transform.
std::string Axis_Unit(const Design_State& design, int variable);

/// Captions and values of the panels "Cam Basic Data" and "Cam Size Data".
using Panel_Lines = std::vector<std::pair<std::string, std::string>>;
Panel_Lines Basic_Data(const Design_State& design);
Panel_Lines Size_Data(const Design_State& design);

/// The line above a plot or a table: design number, file, time.
std::string Plot_Header(const Design_State& design);

}  // namespace lobemax
