// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of the lobe's figures without its window, and the one table of their names and units.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "camgeom/lobe_figures.h"
#include "forms/form_table.h"

namespace lobemax {

/// The figures as the labels show them.
struct Lobe_Texts {
    std::string lbl_Opens;
    std::string lbl_Closes;
    std::string lbl_Duration;
    std::string lbl_Centre;
    std::string lbl_Peak;
    std::string lbl_Area;
};

/// A figure: its caption is its name on the command line, too.
struct Lobe_Row : Form_Field<Lobe_Texts> {
    double Lobe_Figures::*figure;
};
/// All of them, in their order.
std::span<const Lobe_Row> Rows_of_Lobe();

/// Degrees; of the area, which has no Form_Unit, the displacement's unit times degrees.
std::string Unit_of_Lobe(const Design_State& design, const Lobe_Row& row);

/// Every other captioned control of the screen.
std::span<const Form_Control> Controls_of_Lobe();

/// Why a motion has no figures at a lift.
inline constexpr std::string_view No_Lobe =
    "the motion never has this lift above its lowest position, or has it always";

/// txt_Lift as the screen opens: half of the whole lift; empty where nothing moves.
std::string Opening_Lift(const Design_State& design);

/// The figures at a lift as typed.
struct Lobe_Result {
    Lobe_Texts texts{};
    std::string note{};  // lbl_Note: why there are none
};
Lobe_Result Lobe_at(const Design_State& design, std::string_view typed);

}  // namespace lobemax
