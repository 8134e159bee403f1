// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/plot_engine.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/fourier.h"
#include "present/plot_selection.h"

namespace lobemax {

namespace {

constexpr double least_ymax = 0.0001;
constexpr double tick_share = 0.04166667;  // of the range, 1/24
constexpr double tick_half = 0.07;         // of ymax
constexpr std::array levels{-1.0, -0.5, 0.0, 0.5, 1.0};

double Held(double ymax)
{
    return ymax == 0.0 ? least_ymax : ymax;
}

void CartesianAxes(Surface& s, double start, double end, double ymax)
{
    s.Line(start, 0, end, 0, Ink::axis);
    s.Line(start, -ymax, start, ymax, Ink::axis);
}

void XticMarks(Surface& s, double start, double end, double ymax)
{
    const double step = (end - start) * tick_share;
    constexpr int ticks = 24;
    for (int k = 0; k <= ticks; ++k) {
        const double x = start + k * step;
        s.Line(x, -tick_half * ymax, x, tick_half * ymax, Ink::axis);
    }
}

void YticMarks(Surface& s, double start, double end, double ymax)
{
    const double half = (end - start) * 0.01;
    for (const double level : levels)
        s.Line(start - half, level * ymax, start + half, level * ymax, Ink::axis);
}

void Vertical_lines(const Design_State& design, Surface& s, double start, double end, double ymax)
{
    const Motion_Group& m = design.motion;
    for (int i = 2; i <= m.No_of_segments; ++i)
        if (m.Shift(i) > start && m.Shift(i) < end)
            s.Line(m.Shift(i), -ymax, m.Shift(i), ymax, Ink::prime);
}

/// As the sizing screen names the sense of rotation; a linear cam goes to and fro.
std::string Rotation_Text(const Design_State& design)
{
    const bool forward = design.cam.Rotflag > 0;
    if (design.cam.Camtype == "Linear")
        return forward ? "-->>" : "<<--";
    return forward ? "Ccw" : "Cw";
}

bool Shows_Harmonics(std::span<const int> variables)
{
    return !variables.empty() && std::ranges::all_of(variables, Is_Fourier);
}

/// A function of the response beside others makes it a plot of the response.
bool Shows_Response(std::span<const int> variables)
{
    return std::ranges::any_of(variables, [](int v) { return v >= var::Response_Error && v <= var::Dynamic_Force; });
}

/// What the functions have in common, then whose they are. The transform's own name stands for both.
std::string Graph_Title(const Design_State& design, std::span<const int> variables)
{
    if (Shows_Harmonics(variables))
        return Transform_in_Memory(design) ? Fft_Function_Text(design, design.motion.Fft_Variable)
                                           : "Fourier Transform of  ";
    const char* const what =
        Shows_Response(variables) ? "Dynamic Response of Follower" : "Selected Cam-Follower Parameters";
    return what + ("    " + design.identity.Model_Name + "  ");
}

/// A figure of the sizing with its length unit; a word stands alone.
std::string With_Length(const Design_State& design, const std::string& text, const std::string& length)
{
    const std::string word = Trim(text);
    return Read_Number(word, Current_Decimal_Symbol(design)).whole ? word + length : word;
}

std::string Rounded(const Design_State& design, double value, int decimals)
{
    return Trim(FNRoundStr(design, value, decimals));
}

}  // namespace

Plot_Window SetWindow(int windows, double ymax, double x_start, double x_end)
{
    const double y = Held(ymax);
    const double d = x_end - x_start;
    switch (windows) {
    case 2:
        return {x_start - 0.16 * d, x_end + 0.04 * d, -1.4 * y, 1.14 * y};
    case 4:
        return {x_start - 0.18 * d, x_end + 0.04 * d, -1.7 * y, 1.15 * y};
    default:
        throw Fault{out_of_bounds};
    }
}

int Plot_Decimals(double ymax)
{
    int decimals = 0;
    if (ymax < 1000)
        decimals = 1;
    if (ymax < 100)
        decimals = 2;
    if (ymax < 10)
        decimals = 3;
    return decimals;
}

Plot_Figures Figures_of_Plot(const Design_State& design, int variable, int first, int last)
{
    const Extremes extremes = MaxMin2(design.results.CalcData, variable, first, last);
    Plot_Figures figures;
    figures.largest = extremes.largest;
    figures.smallest = extremes.smallest;
    figures.peak = figures.largest - figures.smallest;
    figures.ymax = std::max(figures.largest, std::abs(figures.smallest));
    const int decimals = Plot_Decimals(figures.ymax);
    figures.pnl_LeftTitle = Trim(design.plot.Var_Name(variable));
    figures.pnl_Units = design.plot.Var_Unit(variable);
    figures.pnl_Ymax = FNRoundStr(design, figures.ymax, decimals);
    figures.pnl_Ymin = FNRoundStr(design, -figures.ymax, decimals);
    figures.lbl_Min = FNRoundStr(design, figures.smallest, decimals);
    figures.lbl_Max = FNRoundStr(design, figures.largest, decimals);
    figures.lbl_Peak = FNRoundStr(design, figures.peak, decimals);
    return figures;
}

Plot_Figures Plot_Dynamics(const Design_State& design, Surface& surface, int windows, int variable, int first, int last,
                           bool vertical_lines)
{
    const Plot_Figures figures = Figures_of_Plot(design, variable, first, last);
    const double ymax = figures.ymax;
    const Table<Single>& data = design.results.CalcData;
    const auto angle = data.Points(var::Angle);
    const auto row = data.Points(variable);
    const double start = angle[static_cast<std::size_t>(first)];
    const double end = angle[static_cast<std::size_t>(last)];
    const Plot_Window window = SetWindow(windows, ymax, start, end);
    surface.Clear();
    surface.Window(window.left, window.top, window.right, window.bottom);
    if (end > start) {
        const double held = Held(ymax);
        CartesianAxes(surface, start, end, held);
        XticMarks(surface, start, end, held);
        YticMarks(surface, start, end, held);
        if (vertical_lines)
            Vertical_lines(design, surface, start, end, held);
    }
    surface.PSet(start, row[static_cast<std::size_t>(first)], Ink::curve);
    for (int i = first + 1; i <= last; ++i)
        surface.Line_to(angle[static_cast<std::size_t>(i)], row[static_cast<std::size_t>(i)], Ink::curve);
    return figures;
}

Plot_Setup PlotSetup(const Design_State& design, int plot_style, int first, int last, std::span<const int> variables)
{
    const bool fourier = Shows_Harmonics(variables);
    const int count = fourier ? Plotted_Harmonics(design) : 0;
    Plot_Setup setup{};
    setup.NumPoints = fourier ? count + 1 : last - first + 1;
    setup.TickEvery = std::max(fourier ? count / 15 : (last - first) / 12, 1);
    setup.LabelEvery = setup.TickEvery * 2;
    setup.NumSets = static_cast<int>(variables.size());
    if (plot_style == style::polar)
        setup.bottom_title = design.cam.Followtype == 2 ? "Cam Surface Profile" : "Cam Profile at Follower Centerline";
    else
        setup.bottom_title = fourier ? "Harmonic Number" : "Cam Angle (Deg)";
    setup.graph_title = Graph_Title(design, variables);
    return setup;
}

bool Is_Fourier(int variable)
{
    return variable >= 0 && variable <= var::Last && Variable_at(variable).rung == Rung::fft;
}

bool Transform_in_Memory(const Design_State& design)
{
    return design.flags.FFT_Done && Shown_Harmonics(design) > 0;
}

int Plotted_Harmonics(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    if (Transform_in_Memory(design))
        return Shown_Harmonics(design);
    return std::max(std::min<int>(m.No_Harmonics, m.Max_Data_Points_used / 2), 1);
}

std::string Left_Title(const Design_State& design, int variable)
{
    const std::string name = Trim(design.plot.Var_Name(variable));
    return Is_Fourier(variable) ? "FFT of " + name : name;
}

std::string Axis_Unit(const Design_State& design, int variable)
{
    const Plot_Group& p = design.plot;
    if (variable == var::Theta && design.cam.Camtype == "Radial")
        return "deg";
    if (Is_Fourier(variable) && variable != var::FFT_Phase && Transform_in_Memory(design))
        return p.Var_Unit(design.motion.Fft_Variable);
    return p.Var_Unit(variable);
}

Panel_Lines Basic_Data(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    const Plot_Group& p = design.plot;
    return {{"Segment", p.Segment_Pick},
            {"Start Theta", Rounded(design, p.Plot_First, 2)},
            {"End Theta", Rounded(design, p.Plot_Last, 2)},
            {"Delta Theta", Rounded(design, m.Deltatheta, 3)},
            {"Cam Rotates", Rotation_Text(design)},
            {"Cam Omega", Rounded(design, m.Shaft_speed, 2) + " rad/sec"}};
}

Panel_Lines Size_Data(const Design_State& design)
{
    if (!design.flags.Sized)
        return {};
    const Cam_Group& c = design.cam;
    const int decimals = design.identity.Decimals_1;
    const std::string length = std::string(" ") + Words_of_Units(design.identity.WhichUnit).length;
    const std::string length_of_results = std::string(" ") + Words_of_Units(Units_of_Results(design)).length;
    return {{"Min Phi", Rounded(design, c.Phi_Min, 2) + " deg"},
            {"Max Phi", Rounded(design, c.Phi_Max, 2) + " deg"},
            {"Offset", Rounded(design, c.Offset, decimals) + length},
            {"Prime Radius", Rounded(design, c.Prime_Rad, decimals) + length},
            {"Min Rho +", With_Length(design, c.Rho_Min_Pos_Text, length_of_results)},
            {"Min Rho -", With_Length(design, c.Rho_Min_Neg_Text, length_of_results)},
            {"Folwr Rad", Rounded(design, c.Follow_Rad, decimals) + length}};
}

std::string Plot_Header(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    return " Design No. " + std::to_string(id.Design_No) + " File: " + id.Model_Name + " at " + id.Time;
}

}  // namespace lobemax
