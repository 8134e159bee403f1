// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of the links' plots without its window: up to four functions of the links over the cam angle.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "forms/form_table.h"
#include "present/linkage_plots.h"

namespace lobemax {

inline constexpr int Link_Plots = 4;
inline constexpr int No_Link_Function = -1;

/// What cmb_Function(0) to (3) offer: "None", then the functions of the train at hand.
std::vector<std::string> Link_Function_Texts(const Design_State& design);

/// The functions of the four plots, places in Link_Functions; none: No_Link_Function.
using Link_Picks = std::array<int, Link_Plots>;

/// What the screen opens with: position, velocity and acceleration of the last link, and the ratio of the positions.
Link_Picks Usual_Link_Picks(const Design_State& design);

/// The extremes of a function as the labels below its plot show them.
struct Link_Plot_Figures {
    std::string smallest;
    std::string largest;
    std::string peak_to_peak;
};
/// @throws Fault{9} before a linkage was calculated
Link_Plot_Figures Figures_of_Link_Plot(const Design_State& design, const Link_Function& function);

/// Every captioned control of the screen.
std::span<const Form_Control> Controls_of_Linkplots();

}  // namespace lobemax
