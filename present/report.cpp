// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/report.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/continuity.h"

namespace lobemax {

namespace {

constexpr std::size_t between = 2;  // blanks between two columns

/// Characters of a UTF-8 text.
std::size_t Width(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Without_End(std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string Rounded(const Design_State& design, double value, int decimals)
{
    return Trim(FNRoundStr(design, value, decimals));
}

/// A line of an extreme of curvature: value and angle, or the word that stands for the value.
std::string Curvature_Line(const Design_State& design, const std::string& what, double value, int decimals,
                           const std::string& text, double angle)
{
    const std::string word = Trim(text);
    if (word == "None")
        return what + word;
    const bool infinite = word.ends_with("Infinity");
    return what +
           (infinite ? word
                     : Rounded(design, value, decimals) + " " + Words_of_Units(Units_of_Results(design)).length) +
           " @ cam angle " + Angle_Text(design, angle) + " deg";
}

void Append(Report_Lines& lines, const Report_Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

Report_Lines Polytable(const Design_State& design, int segment, bool printer)
{
    Report_Lines lines{std::string(Conditions_Heading)};
    if (printer)
        lines.emplace_back(Conditions_Underline);
    Append(lines, Table_Lines(Condition_Table(design, segment)));
    lines.emplace_back();
    lines.emplace_back(printer ? Equation_Heading_of_Printer : Equation_Heading_of_Form);
    if (printer)
        lines.emplace_back(Equation_Underline);
    Append(lines, Table_Lines(Coefficient_Table(design, segment)));
    return lines;
}

}  // namespace

Report_Lines Table_Lines(const Report_Table& table)
{
    std::vector<std::size_t> widths;
    for (const Report_Table::Column& column : table.columns)
        widths.push_back(Width(column.head));
    for (const std::vector<std::string>& row : table.rows)
        for (std::size_t k = 0; k < row.size(); ++k)
            widths.at(k) = std::max(widths.at(k), Width(row[k]));
    const auto line = [&](const auto& text_of) {
        std::string text;
        for (std::size_t k = 0; k < widths.size(); ++k) {
            const std::string cell = text_of(k);
            const std::string fill(widths[k] - Width(cell), ' ');
            text += (k == 0 ? "" : std::string(between, ' ')) + (table.columns[k].left ? cell + fill : fill + cell);
        }
        return Without_End(text);
    };
    Report_Lines lines;
    if (std::ranges::any_of(table.columns, [](const Report_Table::Column& c) { return !c.head.empty(); }))
        lines.push_back(line([&](std::size_t k) { return table.columns[k].head; }));
    for (const std::vector<std::string>& row : table.rows)
        lines.push_back(line([&](std::size_t k) { return row.at(k); }));
    return lines;
}

Report_Lines Wrapped(const std::string& line, std::size_t width, std::size_t indent)
{
    Report_Lines lines;
    std::string rest = line;
    while (Width(rest) > width) {
        std::size_t at = rest.rfind(' ', width);
        const std::size_t from = rest.find_first_not_of(' ');
        if (at == std::string::npos || at <= from)
            at = rest.find(' ', width);  // a word longer than a line stands on one of its own
        if (at == std::string::npos)
            break;
        lines.push_back(rest.substr(0, at));
        rest = std::string(indent, ' ') + rest.substr(at + 1);
    }
    lines.push_back(rest);
    return lines;
}

std::string Joined(const Report_Lines& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

namespace {

constexpr std::array<std::string_view, 3> angle_pictures{"##0", "##0.00", "##0.000"};

/// The first of the pictures that shows a value whole.
std::string_view Picture_of(double value)
{
    constexpr std::array factors{1.0, 100.0, 1000.0};
    constexpr double rounding = 1e-6;
    for (std::size_t k = 0; k < factors.size(); ++k)
        if (std::abs(value * factors[k] - std::round(value * factors[k])) < rounding * factors[k])
            return angle_pictures[k];
    return angle_pictures.back();
}

}  // namespace

std::string_view Angle_Picture(const Design_State& design)
{
    return Picture_of(design.motion.Deltatheta);
}

std::string Angle_Text(const Design_State& design, double angle)
{
    return Format_Picture(design, angle, Picture_of(angle));
}

Report_Lines Namedate_Print(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    const std::string path = id.File_Name;
    const std::string file = path.substr(path.find_last_of("/\\") + 1);
    return {Without_End("File: " + On_One_Line(file.empty() ? std::string(id.Model_Name) : file) + "  by " +
                        On_One_Line(id.User)),
            "Design # " + std::to_string(id.Design_No), Today_Text() + "  " + Now_Text(), ""};
}

Report_Lines Print_Segment_Data(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    Report_Table table{{{"", true}, {"", true}, {"", true}, {"", true}}, {}};
    for (int i = 1; i <= m.No_of_segments; ++i)
        table.rows.push_back({"Segment " + std::to_string(i), "Start Angle " + Angle_Text(design, m.Shift(i)) + " deg",
                              "Beta " + Angle_Text(design, m.Beta_Deg(i)) + " deg",
                              "End angle " + Angle_Text(design, m.Gamma(i)) + " deg"});
    return Table_Lines(table);
}

Report_Lines PrintPressMax(const Design_State& design)
{
    if (!design.flags.Sized)
        return {};
    const Cam_Group& c = design.cam;
    const auto pressure = [&](const char* what, double value, double angle) {
        return what + Rounded(design, value, 2) + " deg @ cam angle " + Angle_Text(design, angle) + " deg";
    };
    return {pressure("Maximum pressure angle = ", c.Phi_Max, c.Phi_Max_Angle),
            pressure("Minimum pressure angle = ", c.Phi_Min, c.Phi_Min_Angle),
            Curvature_Line(design, "Smallest positive radius of curvature = ", c.Rho_Min_Pos, 2, c.Rho_Min_Pos_Text,
                           c.Rho_Min_Pos_Angle),
            Curvature_Line(design, "Largest positive radius of curvature = ", c.Rho_Max_Pos, 1, c.Rho_Max_Pos_Text,
                           c.Rho_Max_Pos_Angle),
            Curvature_Line(design, "Smallest negative radius of curvature = ", c.Rho_Min_Neg, 2, c.Rho_Min_Neg_Text,
                           c.Rho_Min_Neg_Angle),
            Curvature_Line(design, "Largest negative radius of curvature = ", c.Rho_Max_Neg, 1, c.Rho_Max_Neg_Text,
                           c.Rho_Max_Neg_Angle)};
}

Report_Table Condition_Table(const Design_State& design, int segment)
{
    const Motion_Group& m = design.motion;
    constexpr std::array functions{"S", "V", "A", "J", "Ping"};
    Report_Table table{{{"Function", true}, {"  Theta"}, {"% Beta"}, {"Boundary Cond."}}, {}};
    const bool polynomial = m.Rise_Fall_Dwell(segment) == "P";  // keeps copies of what it was solved for
    for (int j = 1; j <= m.Total_No_of_BCs(segment); ++j) {
        const double x = polynomial ? m.Thetanorm(j, segment) : m.Theta_Normalized(j, segment);
        const double eq = polynomial ? m.Equation(j, segment) : m.Eq(j, segment);
        const auto order = static_cast<std::size_t>(std::clamp(eq, 0.0, 4.0));
        table.rows.push_back({functions[order], Shown(design, x * m.Beta_Deg(segment)), Shown(design, x * 100.0),
                              Shown(design, m.Boundary(j, segment))});
    }
    return table;
}

Report_Table Coefficient_Table(const Design_State& design, int segment)
{
    const Motion_Group& m = design.motion;
    Report_Table table{{{"Exponent"}, {"Coefficient"}}, {}};
    for (int j = 1; j <= m.Total_No_of_BCs(segment); ++j)
        table.rows.push_back({std::to_string(j - 1), Shown(design, m.Coefficient(j, segment))});
    return table;
}

Report_Lines Polytable_Form(const Design_State& design, int segment)
{
    return Polytable(design, segment, false);
}

Report_Lines Polytable_Printer(const Design_State& design, int segment)
{
    return Polytable(design, segment, true);
}

Report_Lines Continuity_Form(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    Flag continuous;
    Bounded<Single, 0, 2> jumps;
    ContinuityCheck(design, m.Firstlast, continuous, jumps);
    Report_Lines lines{continuous ? "The segments meet within rounding."
                                  : "One or more of the segment boundaries is discontinuous."};
    constexpr std::array names{"S", "V", "A"};
    for (int d = 0; d <= 2; ++d) {
        const double peak = Largest_Absolute(design, var::S + d);
        const double percent = peak == 0.0 ? 0.0 : jumps(d) / peak * 100.0;
        std::string line = std::string(names[static_cast<std::size_t>(d)]) + ": largest jump " +
                           Rounded(design, jumps(d), 6) + " " + design.plot.Var_Unit(var::S + d) + ", " +
                           Rounded(design, percent, 4) + " % of the maximum";
        if (const int joint = Worst_Joint(design, d); joint > 0)
            line += ", at the end of segment " + std::to_string(joint);
        lines.push_back(line);
    }
    return lines;
}

}  // namespace lobemax
