// SPDX-License-Identifier: GPL-3.0-or-later
/// The words that the findings of a check are shown in: on the command line, on the screens, in the question before an
/// export. Numbers are in the design's number format.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "truth/check.h"

namespace lobemax {

/// What a mark and a list say where there is nothing to tell.
inline constexpr std::string_view No_Findings = "No findings";

/// "Do not cut", "Beyond a limit", "Warning", "Note".
std::string Severity_Caption(const Finding& finding);

/// The screen where a finding is mended, as its button on the Home screen: "Input", "Size Cam", "Dynamics", "Stress".
std::string_view Screen_of(Finding_Place place);

/// A value with a unit, "0.097 mm"; "infinite" for one that is practically so, "none" for what is no number.
std::string Figure_Text(const Design_State& design, double value, const std::string& unit);

/// An angle of the cam, "221.25".
std::string Degrees_Text(const Design_State& design, double angle);

/// Where a finding is worst: "at 221.25 deg, segment 4"; empty where it has no place.
std::string Where_of(const Design_State& design, const Finding& finding);

/// Where it holds: "210 to 233 deg and 300 to 12 deg"; empty where it has no stretch.
std::string Stretches_of(const Design_State& design, const Finding& finding);

/// "Row 43.656 mm, true 42.097 mm, limit 63 mm": those of the three that there are.
std::string Figures_of(const Design_State& design, const Finding& finding);

/// On one line: "Do not cut: Undercut at 221.25 deg, segment 4: the surface runs back on itself."
std::string Line_of(const Design_State& design, const Finding& finding);

/// The same at length: severity, name and where; the sentence; the figures; the stretch; the advice. A line each, those
/// that there are.
std::vector<std::string> Lines_of(const Design_State& design, const Finding& finding);

/// The quiet mark of a screen: the worst of its findings on one line, or No_Findings.
std::string Mark_Text(const Design_State& design, const Check& check, Finding_Place place);
/// That of the whole design.
std::string Mark_Text(const Design_State& design, const Check& check);

/// "1 do not cut, 2 warnings; 1 beyond a limit", "No findings".
std::string Count_of_Findings(const Check& check);

/// What a check of the design has not looked at, a sentence each: what it rests on is not calculated.
std::vector<std::string> Not_Checked(const Design_State& design);

/// What the user is asked before a surface is exported that must not be cut, a line a finding and the question; empty
/// where there is nothing to ask.
std::string Export_Question(const Design_State& design, const Check& check);

}  // namespace lobemax
