// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/print_form.h"

#include <algorithm>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/number_format.h"
#include "core/text.h"
#include "core/traps.h"
#include "files/whole_file.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"

namespace lobemax {

namespace {

constexpr std::array time_rows{var::Time_X, var::Time_Xdot, var::Time_Xddot, var::Time_Error};

/// While it stands the lists are those of tables.
class Selecting {
public:
    explicit Selecting(Design_State& design) : design_(design), before_(design.run.Selecting_Print)
    {
        design_.run.Selecting_Print = true;
    }
    ~Selecting() { design_.run.Selecting_Print = before_; }
    Selecting(const Selecting&) = delete;
    Selecting& operator=(const Selecting&) = delete;

private:
    Design_State& design_;
    Flag before_;
};

bool Holds(const std::vector<int>& list, int entry)
{
    return std::ranges::find(list, entry) != list.end();
}

/// The picture of the first column.
std::string_view First_Picture(const Design_State& design, Table_Base base)
{
    switch (base) {
    case Table_Base::time:
        return "##0.000000";
    case Table_Base::harmonics:
        return "##0";
    case Table_Base::angle:
        break;
    }
    return Angle_Picture(design);
}

/// A number without blanks and grouping, with so many decimals.
std::string Plain(const Design_State& design, double value, int decimals)
{
    static constexpr std::array<std::string_view, Print_Exponent + 1> pictures{
        "0", "0.0", "0.00", "0.000", "0.0000", "0.00000", "0.000000", "0.000E+00"};
    return Format_Picture(design, value, pictures.at(static_cast<std::size_t>(decimals)));
}

std::string Shown_Cell(const Design_State& design, double value, int decimals)
{
    return Trim(Format_Picture(design, value, Set_Format(decimals)));
}

template <class Cell>
Table_in_Texts In_Texts(const Design_State& design, const Print_Choice& choice, Cell&& cell)
{
    const std::vector<int> columns = Picked_Columns(choice);
    const Data_Table table = Make_Data_Table(design, {columns, choice.over_time ? 0 : choice.segment, choice.step});
    std::vector<int> decimals;
    for (int k = 0; k < Print_Columns; ++k)
        if (choice.variables.at(static_cast<std::size_t>(k)) != 0)
            decimals.push_back(choice.decimals.at(static_cast<std::size_t>(k)));
    const std::string_view first = First_Picture(design, table.base);
    const auto texts = [&](const std::vector<double>& values, const std::string& head) {
        std::vector<std::string> row{head.empty() ? Format_Picture(design, values.front(), first) : head};
        for (std::size_t k = 1; k < values.size(); ++k)
            row.push_back(cell(design, values[k], decimals[k - 1]));
        return row;
    };
    Table_in_Texts result{table.heads, table.units, {}, texts(table.smallest, "Min"), texts(table.largest, "Max")};
    result.rows.reserve(table.rows.size());
    for (const std::vector<double>& values : table.rows)
        result.rows.push_back(texts(values, {}));
    return result;
}

}  // namespace

Print_Choice Open_Print_Choice(const Design_State& design)
{
    Print_Choice choice;
    choice.step = std::max<int>(design.cam.Printstep, 1);
    return choice;
}

bool Time_Table_Possible(const Design_State& design)
{
    return Is_Time_Response(design, time_rows);
}

std::vector<int> Print_Variables(Design_State& design, const Print_Choice& choice)
{
    if (choice.over_time)
        return {time_rows.begin(), time_rows.end()};
    const Selecting selecting(design);
    return Load_Names(design, choice.where == Print_To::Screen);
}

std::vector<int> Print_Presets(Design_State& design, const Print_Choice& choice)
{
    if (choice.over_time)
        return {};
    const Selecting selecting(design);
    return Load_Presets(design, style::four_windows);
}

std::vector<int> Print_Steps(const Print_Choice& choice)
{
    std::vector<int> steps{1, 2, 4, 5, 8, 10, 15, 20, 30, 40, 45, 60, 80, 90};
    if (!Holds(steps, choice.step))
        steps.insert(std::ranges::lower_bound(steps, choice.step), choice.step);
    return steps;
}

std::vector<std::string> Decimal_Texts()
{
    std::vector<std::string> texts;
    for (int decimals = 0; decimals <= Most_Print_Decimals; ++decimals)
        texts.push_back(std::to_string(decimals));
    texts.emplace_back("E");
    return texts;
}

void Fit_Print_Choice(Design_State& design, Print_Choice& choice)
{
    choice.over_time = choice.over_time && Time_Table_Possible(design);
    const std::vector<int> presets = Print_Presets(design, choice);
    if (choice.preset != 0 && !Holds(presets, choice.preset))
        choice.preset = 0;
    choice.presets = choice.presets && !presets.empty();
    if (choice.presets) {
        Pick_Print_Preset(choice, choice.preset);
    } else {
        const std::vector<int> offered = Print_Variables(design, choice);
        for (int& variable : choice.variables)
            if (!Holds(offered, variable))
                variable = 0;
    }
    if (choice.segment > design.motion.No_of_segments)
        choice.segment = 0;
}

void Pick_Print_Preset(Print_Choice& choice, int entry)
{
    choice.preset = entry;
    choice.variables.fill(0);
    if (entry == 0)
        return;
    const std::vector<Plot_Preset>& presets = Presets_of_Style(style::four_windows);
    const std::vector<int>& rows = presets[Checked_Place(entry, 1, static_cast<int>(presets.size()))].variables;
    std::copy_n(rows.begin(), std::min(rows.size(), choice.variables.size()), choice.variables.begin());
}

std::vector<int> Picked_Columns(const Print_Choice& choice)
{
    std::vector<int> columns;
    std::ranges::copy_if(choice.variables, std::back_inserter(columns), [](int v) { return v != 0; });
    return columns;
}

std::string Why_No_Table(const Design_State& design, const Print_Choice& choice)
{
    const std::vector<int> columns = Picked_Columns(choice);
    const auto harmonics = std::ranges::count_if(columns, Is_Fourier);
    if (harmonics > 0 && harmonics < static_cast<std::ptrdiff_t>(columns.size()))
        return "The harmonics of a Fourier transform and functions of the cam angle cannot share a table.";
    const Motion_Group& m = design.motion;
    if (choice.segment != 0 && !choice.over_time && harmonics == 0 &&
        (m.Gamma(choice.segment) < m.Shift(choice.segment) || m.Gamma(choice.segment) > 360.0))
        return "Segment " + std::to_string(choice.segment) + " does not lie within the cycle.";
    return {};
}

bool Print_OK(const Design_State& design, const Print_Choice& choice)
{
    return !Picked_Columns(choice).empty() && Why_No_Table(design, choice).empty();
}

Table_in_Texts Print_Table(const Design_State& design, const Print_Choice& choice)
{
    return In_Texts(design, choice, Shown_Cell);
}

std::string Print_File_Text(const Design_State& design, const Print_Choice& choice)
{
    const Table_in_Texts table = In_Texts(design, choice, Plain);
    std::string text = Joined(Namedate_Print(design));
    const auto add = [&text](const std::vector<std::string>& cells) {
        for (std::size_t k = 0; k < cells.size(); ++k)
            text += (k == 0 ? "" : "\t") + cells[k];
        text += '\n';
    };
    add(table.heads);
    add(table.units);
    std::ranges::for_each(table.rows, add);
    add(table.smallest);
    add(table.largest);
    return text;
}

bool Print_to_File(const Design_State& design, const Print_Choice& choice)
{
    bool written = false;
    Trap("Print_to_File", [&] {
        const Host& host = Installed_Host();
        const std::string text = Print_File_Text(design, choice);
        const std::optional<std::string> path =
            host.save_dialog ? host.save_dialog({"Save the table", "Text (*.txt)|*.txt|All files (*.*)|*.*", 1,
                                                 design.identity.Model_Name + ".txt", true})
                             : std::nullopt;
        if (!path || path->empty())
            return;
        Write_Whole_File(*path, text);
        written = true;
    });
    return written;
}

Print_Choice Segment_Print_Choice(const Design_State& design, int segment)
{
    Print_Choice choice = Open_Print_Choice(design);
    choice.variables = {var::S, var::V, var::A, var::J};
    choice.segment = segment;
    return choice;
}

namespace {

constexpr std::array controls{
    Form_Control{"fra_Whereto", "Direct Output to:"},
    Form_Control{"fra_Step", "Print Every"},
    Form_Control{"cmb_Step", "", "A row every so many points"},
    Form_Control{"fra_DecimalAll", "Set All Dec Plcs"},
    Form_Control{"cmb_DecimalAll", "", "Decimal places of all columns; E: with an exponent"},
    Form_Control{"cmb_Decimal", "", "Decimal places of this column; E: with an exponent"},
    Form_Control{"fra_Base", "Rows Over"},
    Form_Control{"opt_Base(0)", "Cam An&gle"},
    Form_Control{"opt_Base(1)", "&Time", "The response of the follower as it was integrated, point by point"},
    Form_Control{"fra_Segment", "Segment"},
    Form_Control{"cmb_Segment", "", "All points of the cycle, or those of one segment"},
    Form_Control{"fra_Preset", "Preset Formats"},
    Form_Control{"fra_Mix", "Mix and Match"},
    Form_Control{"opt_PrintSet(0)", "&Mix and Match"},
    Form_Control{"opt_PrintSet(1)", "Preset &Formats"},
    Form_Control{"cmd_ClearPreset", "&Clear"},
    Form_Control{"cmd_ClearAll", "C&lear", "Take all four picks away"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Report", "Design &Report", "The whole design on paper or in a file"},
    Form_Control{"cmd_Preview", "Pre&view", "The pages as they are printed"},
    Form_Control{"cmd_PDF", "P&DF", "The pages in a PDF file"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_Done", "&Next >", "Show, print or save the table"},
    Form_Control{"cmd_Another", "< &Another Table", "Choose other columns; the choice is kept"},
    Form_Control{"cmd_Print", "&Print", "Print it"},
    Form_Control{"cmd_File", "To &File", "Save it as text"},
    Form_Control{"cmd_Close", "Cl&ose"},
};

}  // namespace

std::span<const Form_Control> Controls_of_Print()
{
    return controls;
}

std::string Picture_Print_Note()
{
    return "Note: The image on this screen may not print correctly on some printers.\n"
           "If this occurs, you can still get a printout of the screen by copying it to the clipboard";
}

}  // namespace lobemax
