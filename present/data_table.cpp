// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/data_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "core/design_state.h"
#include "core/points.h"
#include "core/text.h"
#include "dynamics/ode_solver.h"
#include "present/plot_engine.h"

namespace lobemax {

namespace {

std::string Cell(double value, std::optional<int> decimals)
{
    if (!decimals)
        return Shortest(Single(value));
    if (std::abs(value) * 2 < std::pow(10.0, -*decimals))
        value = 0.0;  // what shows as zero has no sign
    std::array<char, 128> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value == 0.0 ? 0.0 : value,
                                            std::chars_format::fixed, *decimals);
    return error == std::errc{} ? std::string(text.data(), end) : Shortest(Single(value));
}

void Add_Line(std::string& text, const std::vector<double>& values, std::size_t from, std::optional<int> decimals)
{
    for (std::size_t column = from; column < values.size(); ++column) {
        if (column > 0)
            text += '\t';
        text += Cell(values[column], decimals);
    }
    text += '\n';
}

}  // namespace

std::optional<int> Variable_Named(const Design_State& design, std::string_view text)
{
    const std::string word = Trim(text);
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error == std::errc{} && end == word.data() + word.size())
        return number >= 0 && number <= design.results.CalcData.Last_Row() ? std::optional(number) : std::nullopt;
    if (word.empty())
        return std::nullopt;
    for (int v = 1; v <= design.run.Saved_Variables; ++v)
        if (Same_Text(Trim(design.plot.Var_Name(v)), word))
            return v;
    for (int v = 1; v <= design.run.Saved_Variables; ++v)
        if (design.plot.Var_Symbol(v) == word)  // symbols differ by case: R and r
            return v;
    return std::nullopt;
}

std::string Column_Head(const Design_State& design, int variable)
{
    if (variable > Plot_Group::Last_Variable)
        return "Variable " + std::to_string(variable);
    const std::string head = Trim(Short_Heading(design, variable));
    if (!head.empty())
        return head;
    return variable == var::Angle ? Angle_Head : Trim(design.plot.Var_Name(variable));
}

Point_Range Points_of_Segment(const Design_State& design, int segment)
{
    const Motion_Group& m = design.motion;
    if (segment == 0)
        return {0, m.Max_Data_Points_used};
    if (segment < 1 || segment > m.No_of_segments)
        throw Fault{out_of_bounds};
    return {Point_at(design, m.Shift(segment)), Point_at(design, m.Gamma(segment))};
}

bool Is_Time_Response(const Design_State& design, std::span<const int> variables)
{
    return design.flags.Modelflag && design.dynamics.Ode_Count > 0 && !variables.empty() &&
           std::ranges::all_of(variables, [](int v) { return v >= var::Time_X && v <= var::Time_Error; });
}

Table_Base Base_of_Table(const Design_State& design, std::span<const int> variables)
{
    if (Is_Time_Response(design, variables))
        return Table_Base::time;
    if (Transform_in_Memory(design) && !variables.empty() && std::ranges::all_of(variables, Is_Fourier))
        return Table_Base::harmonics;
    return Table_Base::angle;
}

namespace {

/// The unit of a column: of a row that is kept in thousands it tells so, as its short head does not.
std::string Table_Unit(const Design_State& design, int variable)
{
    if (variable > Plot_Group::Last_Variable)
        return {};
    const std::string unit = Axis_Unit(design, variable);
    return design.plot.Var_Name(variable).ends_with("*E3") ? "E3 " + unit : unit;
}

/// Rows over the cam angle.
void Fill_over_Angle(const Design_State& design, const Table_Choice& choice, Data_Table& table)
{
    const Table<Single>& data = design.results.CalcData;
    const Point_Range range = Points_of_Segment(design, choice.segment);
    table.heads.emplace_back(Angle_Head);
    table.units.emplace_back("deg");
    const int step = std::min(choice.step, Max_Points + 1);
    for (int p = range.first; p <= range.last; p += step) {
        std::vector<double>& row = table.rows.emplace_back();
        row.push_back(data(var::Angle, p));
        for (const int v : choice.variables)
            row.push_back(data(v, p));
    }
}

/// Rows over time: the points that the integration stored.
void Fill_over_Time(const Design_State& design, const Table_Choice& choice, Data_Table& table)
{
    const Results_Group& r = design.results;
    table.heads.emplace_back(Time_Head);
    table.units.emplace_back("sec");
    const auto state = [](int v) { return v == var::Time_Error ? 0 : v - var::Time_X + 1; };
    const Long step = std::min<Long>(choice.step, Max_Stored_Steps);
    for (Long j = 1; j <= design.dynamics.Ode_Count; j += step) {
        std::vector<double>& row = table.rows.emplace_back();
        row.push_back(r.Ode_Time(j));
        for (const int v : choice.variables)
            row.push_back(r.Ode_States(state(v), j));
    }
}

/// Rows over the harmonics of the transform that are shown, numbered as in its plots.
void Fill_over_Harmonics(const Design_State& design, const Table_Choice& choice, Data_Table& table)
{
    const int last = Plotted_Harmonics(design);
    table.heads.emplace_back(Harmonic_Head);
    table.units.emplace_back();
    for (int k = 1; k <= last; k += std::min(choice.step, last)) {
        std::vector<double>& row = table.rows.emplace_back();
        row.push_back(k);
        for (const int v : choice.variables)
            row.push_back(design.results.CalcData(v, k));
    }
}

}  // namespace

Data_Table Make_Data_Table(const Design_State& design, const Table_Choice& choice)
{
    if (choice.step < 1)
        throw Fault{out_of_bounds};
    Data_Table table;
    table.base = Base_of_Table(design, choice.variables);
    if (table.base == Table_Base::time)
        Fill_over_Time(design, choice, table);
    else if (table.base == Table_Base::harmonics)
        Fill_over_Harmonics(design, choice, table);
    else
        Fill_over_Angle(design, choice, table);
    for (const int v : choice.variables) {
        table.heads.push_back(Column_Head(design, v));
        table.units.push_back(Table_Unit(design, v));
    }
    if (table.rows.empty())
        throw Fault{out_of_bounds};
    table.smallest = table.largest = table.rows.front();
    for (const std::vector<double>& row : table.rows)
        for (std::size_t column = 0; column < row.size(); ++column) {
            table.smallest[column] = std::min(table.smallest[column], row[column]);
            table.largest[column] = std::max(table.largest[column], row[column]);
        }
    return table;
}

std::string Table_Text(const Data_Table& table, std::optional<int> decimals)
{
    std::string text;
    for (std::size_t column = 0; column < table.heads.size(); ++column)
        text += (column > 0 ? "\t" : "") + table.heads[column];
    text += '\n';
    for (const std::vector<double>& row : table.rows)
        Add_Line(text, row, 0, decimals);
    text += "Min";
    Add_Line(text, table.smallest, 1, decimals);
    text += "Max";
    Add_Line(text, table.largest, 1, decimals);
    return text;
}

}  // namespace lobemax
