// SPDX-License-Identifier: GPL-3.0-or-later
/// The findings of a check on the screens, without their windows: the panel that lists them, what the plots and the
/// drawing show of them, and the question before an export.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "camgeom/cam_drawing.h"
#include "forms/form_table.h"
#include "forms/workflow.h"
#include "truth/check.h"

namespace lobemax {

/// Every captioned control of the panel, and of the question.
std::span<const Form_Control> Controls_of_Findings();
std::span<const Form_Control> Controls_of_Export_Question();

/// The entry of the Export menu that makes the others write the true profile.
inline constexpr std::string_view True_Profile_Caption = "&True Profile";
inline constexpr std::string_view True_Profile_Tip =
    "The profile entries write the true surface, centres and cutter path in place of the rows";

/// The columns of the panel's table.
inline constexpr int Finding_Columns = 7;
/// A head a column.
std::array<std::string_view, Finding_Columns> Heads_of_Findings();
/// A finding in these columns: severity with its sign, name, where, what the row says, what is true, the limit, screen.
std::array<std::string, Finding_Columns> Cells_of(const Design_State& design, const Finding& finding);

/// A sign that tells severities apart without colour: a cross, a triangle, an i.
std::string_view Sign_of(const Finding& finding);
/// Whether a finding is to be seen at once: must not be cut, or beyond a limit.
bool Is_Grave(const Finding& finding);

/// What the mark of a screen shows: a tick, or the sign of its worst finding, severity and sentence.
std::string Sign_and_Words(const Check& check, std::optional<Finding_Place> place);
/// The same at length, with what to do.
std::string Mark_Tip(const Design_State& design, const Check& check, std::optional<Finding_Place> place);

/// The button of the Home screen that opens the screen of a place.
Home_Button Button_of(Finding_Place place);
/// Whether its button is open.
bool May_Go(const Design_State& design, Finding_Place place);

/// What a chart of a row has lines for: the limits that are on, in the units of the row.
struct Limit_Level {
    double value = 0.0;
    std::string words;  // "limit 30 deg"
};
std::vector<Limit_Level> Levels_of(const Design_State& design, const Limits& limits, int row);

/// The true values of a row of pressure angle, curvature, force or stress at the points of the table, in the row's
/// unit; empty where they are not known, infinite where the path is as good as straight.
std::vector<double> True_Values(const Design_State& design, const Check& check, int row);

/// The stretches of the outline that must not be cut so, or break a limit of the size.
enum class Warned { faults, faults_and_limits };
std::vector<Cam_Stretch> Warned_Stretches(const Check& check, Warned warned = Warned::faults_and_limits);

/// Whether an entry of the Export list writes a profile, and does not refuse to.
bool Is_Profile_Export(std::string_view entry);

/// What the question before an export offers: whether there is a true surface, whether it can be cut, and a sentence of
/// it. Where the rows alone are wrong it is the better one.
struct True_Offer {
    bool there = false;
    bool sound = false;
    std::string words;
};
True_Offer Offer_of_True_Surface(const Design_State& design, const Limits& limits);

}  // namespace lobemax
