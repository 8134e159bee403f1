// SPDX-License-Identifier: GPL-3.0-or-later
/// What can be plotted or tabled: variables, presets and segments, in lists that grow with the ladder.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/design_state.h"

namespace lobemax {

/// Plot styles: the windows a plot has.
namespace style {
inline constexpr int single_window = 1;
inline constexpr int two_windows = 2;
inline constexpr int four_windows = 3;
inline constexpr int polar = 4;
}  // namespace style

/// The caption of opt_PickPlot for a style 1..4. @throws Fault{9} outside
std::string_view Style_Caption(int plot_style);

/// Functions that a style shows: at least, and at most. @throws Fault{9} outside 1..4
struct Function_Count {
    int least;
    int most;
};
Function_Count Functions_of_Style(int plot_style);

/// The variables of a list, in its order, by how far the design has got.
///
/// While Selecting_Print holds, a table is being chosen: no coordinates, and no displacement unless the table goes to
/// the screen.
/// @param to_screen  whether a table goes to the screen; counts only while Selecting_Print holds
std::vector<int> Load_Names(const Design_State& design, bool to_screen = true);

/// The closed curves of two coordinates that a polar plot offers beside the variables, as far as they are calculated.
std::vector<int> Composite_Choices(const Design_State& design);

/// The variable behind a list's entry: the first of the list whose Var_Name it is.
std::optional<int> Variable_Picked(const Design_State& design, std::span<const int> list, std::string_view name);

/// Whether a variable or closed curve is offered for a plot at this rung of the ladder: by a list, or by a preset.
bool Is_Offered(const Design_State& design, int choice);

/// That no model file keeps a transform: its rows are in the file, but neither their variable nor their count.
inline constexpr std::string_view Transform_not_Kept =
    "A model file keeps no Fourier transform to plot. The FFT screen makes one, and the command fft prints one.";
/// That sentence where the rows hold harmonics of a file and no transform stands behind them; else empty.
std::string Note_on_Transform(const Design_State& design);

/// Why functions cannot share the windows of a style, as the user is told; empty where they can. Harmonics and cam
/// angles are no one abscissa, and harmonics have no place in a polar plot.
std::string Why_Not_Together(int plot_style, std::span<const int> variables);

/// A ready choice of variables.
struct Plot_Preset {
    std::string_view text;
    std::vector<int> variables;
};

/// All presets of a style, in order; entry n is element n - 1. The four-window presets serve the tables too.
const std::vector<Plot_Preset>& Presets_of_Style(int plot_style);

/// Entry numbers, from 1, of the presets that are offered, in the order of the list. A style without presets, or with
/// nothing to offer, gives none.
std::vector<int> Load_Presets(const Design_State& design, int plot_style);

/// Fills Plot_Vars and Num_Sets from entry n of a style's presets. @throws Fault{9} where there is no such entry
void Choose_Preset2(Design_State& design, int plot_style, int entry);

/// "All", then an entry for each segment: its number and its motion kind, "D", "P" and "S" in brackets.
std::vector<std::string> Load_SegmentList(const Design_State& design);

/// The segment of an entry of that list; 0 for "All" and for any text that names no segment in use.
int Segment_of_Entry(const Design_State& design, std::string_view entry);

/// Sets Segment_Pick, Plot_First and Plot_Last, degrees, from an entry of the segment list.
void Pick_Segment(Design_State& design, std::string_view entry);

/// Places the picked variables, zero for none, into Plot_Vars and counts them.
/// @return whether the style has the functions it needs
bool Select_OK(Design_State& design, int plot_style, std::span<const int> variables);

}  // namespace lobemax
