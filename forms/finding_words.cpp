// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/finding_words.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/numeric.h"
#include "core/text.h"

namespace lobemax {

namespace {

constexpr int figures = 5;
constexpr double most = 1E30;  // of a figure that means anything: a straight line's radius is beyond

std::string Joined_by(const std::vector<std::string>& parts, const std::string& between)
{
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : between) + part;
    return text;
}

std::string With_Unit(const std::string& number, const std::string& unit)
{
    return unit.empty() ? number : number + " " + unit;
}

/// "2 warnings"
std::string Counted(std::ptrdiff_t count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Text_of_Worst(const Design_State& design, const Finding* worst)
{
    return worst == nullptr ? std::string(No_Findings) : Line_of(design, *worst);
}

}  // namespace

std::string Severity_Caption(const Finding& finding)
{
    if (finding.beyond_limit && finding.severity != Severity::do_not_cut)
        return "Beyond a limit";
    std::string words(Words_of(finding.severity));
    return To_Upper(words.substr(0, 1)) + words.substr(1);
}

std::string_view Screen_of(Finding_Place place)
{
    constexpr std::array<std::string_view, 4> screens{"Input", "Size Cam", "Dynamics", "Stress"};
    return screens[static_cast<std::size_t>(place)];
}

std::string Figure_Text(const Design_State& design, double value, const std::string& unit)
{
    if (std::isnan(value))
        return "none";
    if (std::abs(value) > most)
        return value > 0.0 ? "infinite" : "-infinite";
    return With_Unit(In_Figures(design, value, figures), unit);
}

std::string Degrees_Text(const Design_State& design, double angle)
{
    constexpr int decimals = 3;  // the finest step is 0.125
    return Shown(design, Single(FNRound(angle, decimals)));
}

std::string Where_of(const Design_State& design, const Finding& finding)
{
    std::vector<std::string> parts;
    if (finding.angle)
        parts.push_back("at " + Degrees_Text(design, *finding.angle) + " deg");
    if (finding.segment > 0)
        parts.push_back((parts.empty() ? "in segment " : "segment ") + std::to_string(finding.segment));
    return Joined_by(parts, ", ");
}

std::string Stretches_of(const Design_State& design, const Finding& finding)
{
    constexpr std::size_t most_told = 6;
    std::vector<std::string> parts;
    for (const Stretch& stretch : finding.stretch) {
        if (parts.size() == most_told) {
            parts.push_back(std::to_string(finding.stretch.size() - most_told) + " more");
            break;
        }
        parts.push_back(stretch.from == stretch.to
                            ? Degrees_Text(design, stretch.from) + " deg"
                            : Degrees_Text(design, stretch.from) + " to " + Degrees_Text(design, stretch.to) + " deg");
    }
    if (parts.empty())
        return "";
    if (parts.size() == 1)
        return parts.front();
    const std::string last = parts.back();
    parts.pop_back();
    return Joined_by(parts, ", ") + " and " + last;
}

std::string Figures_of(const Design_State& design, const Finding& finding)
{
    std::vector<std::string> parts;
    const auto add = [&](const char* what, const std::optional<double>& value) {
        if (value)
            parts.push_back(what + Figure_Text(design, *value, finding.unit));
    };
    add("row ", finding.row);
    add("true ", finding.truth);
    add("limit ", finding.limit);
    std::string text = Joined_by(parts, ", ");
    return text.empty() ? text : To_Upper(text.substr(0, 1)) + text.substr(1);
}

std::string Line_of(const Design_State& design, const Finding& finding)
{
    const std::string where = Where_of(design, finding);
    return Severity_Caption(finding) + ": " + finding.name + (where.empty() ? "" : " " + where) + ": " +
           finding.sentence;
}

std::vector<std::string> Lines_of(const Design_State& design, const Finding& finding)
{
    const std::string where = Where_of(design, finding);
    const std::string stretches = Stretches_of(design, finding);
    std::vector<std::string> lines{Severity_Caption(finding) + ": " + finding.name +
                                   (where.empty() ? "" : " " + where)};
    for (const std::string& line :
         {finding.sentence, Figures_of(design, finding), stretches.empty() ? "" : "From " + stretches, finding.advice})
        if (!line.empty())
            lines.push_back(line);
    return lines;
}

std::string Mark_Text(const Design_State& design, const Check& check, Finding_Place place)
{
    return Text_of_Worst(design, check.Worst_of(place));
}

std::string Mark_Text(const Design_State& design, const Check& check)
{
    return Text_of_Worst(design, check.Worst());
}

std::string Count_of_Findings(const Check& check)
{
    const auto count = [&](auto of) { return std::ranges::count_if(check.findings, of); };
    const auto severity = [&](Severity wanted) {
        return count([wanted](const Finding& finding) { return finding.severity == wanted; });
    };
    std::vector<std::string> parts;
    if (const auto n = severity(Severity::do_not_cut); n > 0)
        parts.push_back(std::to_string(n) + " do not cut");
    if (const auto n = severity(Severity::warning); n > 0)
        parts.push_back(Counted(n, "warning", "warnings"));
    if (const auto n = severity(Severity::note); n > 0)
        parts.push_back(Counted(n, "note", "notes"));
    if (parts.empty())
        return std::string(No_Findings);
    const auto beyond = count([](const Finding& finding) { return finding.beyond_limit; });
    return Joined_by(parts, ", ") + (beyond > 0 ? "; " + std::to_string(beyond) + " beyond a limit" : "");
}

std::vector<std::string> Not_Checked(const Design_State& design)
{
    if (!Holds(design, Mark::motion))
        return {"The motion is not calculated: nothing could be checked."};
    if (Holds(design, Mark::units_changed))
        return {"The unit system was changed after the calculation: recalculate, then everything is checked."};
    std::vector<std::string> lines;
    if (!Holds(design, Mark::size))
        lines.emplace_back("The cam is not sized: surface, pressure angle and curvature were not checked.");
    if (!Holds(design, Mark::forces))
        lines.emplace_back("The forces are not calculated: contact force and torque were not checked.");
    if (!Holds(design, Mark::stress))
        lines.emplace_back("The stresses are not calculated: they were not checked.");
    return lines;
}

std::string Export_Question(const Design_State& design, const Check& check)
{
    if (!check.Do_Not_Cut())
        return "";
    std::string text = "This cam should not be cut from the surface that the program has calculated.\n";
    for (const Finding& finding : check.findings)
        if (finding.severity == Severity::do_not_cut)
            text += Line_of(design, finding) + "\n";
    return text + "Export it all the same?";
}

}  // namespace lobemax
