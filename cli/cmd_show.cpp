// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <unordered_set>
#include <vector>

#include "camgeom/lobe_figures.h"
#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/field_directory.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/departure_notes.h"
#include "forms/drive_words.h"
#include "forms/lobe_form.h"
#include "forms/row_extremes.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::vector<std::string> fields;
    bool json = false;
    Stage_Choice stage;
    std::optional<double> lobe;  // lift
};

/// A field's element as JSON: a number, a flag or a text.
nlohmann::ordered_json Json_Value(Design_State& design, const Field& field, const Field_Index& index)
{
    const std::string text = Field_Value(design, field, index);
    switch (field.type) {
    case Field_Type::text:
        return text;
    case Field_Type::flag:
        return text == "true";
    case Field_Type::integer:
    case Field_Type::long_integer:
        return std::stoi(text);
    case Field_Type::single:
    case Field_Type::real: {
        double value = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    }
    }
    return nullptr;
}

/// The fields of the summary, scalars; the segments stand above them.
constexpr std::array summary_fields{"Program_Name",
                                    "File_Name",
                                    "Model_Name",
                                    "Design No.",
                                    "User",
                                    "Date",
                                    "Time",
                                    "WhichUnit",
                                    "Time Base",
                                    "No of segments",
                                    "Deltatheta",
                                    "Max Data Points used",
                                    "Shaft speed",
                                    "MaxLift",
                                    "Max_Neg_Disp",
                                    "Camtype$",
                                    "Followtype",
                                    "Translating",
                                    "Closure$",
                                    "Rotflag",
                                    "Prime_Rad",
                                    "Offset",
                                    "Follow_Rad",
                                    "Cutter Radius",
                                    "ArmX",
                                    "ArmY",
                                    "ArmRad",
                                    "ArmDirect",
                                    "Shift_Angle",
                                    "Keyway_Text",
                                    "Mass",
                                    "Return_Spring_Rate",
                                    "Preload",
                                    "Phi_Max",
                                    "Phi_Max_Angle",
                                    "Phi_Min",
                                    "Phi_Min_Angle",
                                    "Rho_Min_Pos_Text",
                                    "Rho_Max_Pos_Text",
                                    "Rho_Min_Neg_Text",
                                    "Rho_Max_Neg_Text",
                                    "Calculated",
                                    "Sized",
                                    "Dynamicflag",
                                    "Modelflag",
                                    "Stressflag",
                                    "Linkage_Calc",
                                    "Polydyne_Calc",
                                    "FFT_Done",
                                    "Ext_Force_Calc",
                                    "CompCam_Calc",
                                    "From_Disk",
                                    "Imported_Model"};

constexpr std::array segment_fields{"Rise_Fall_Dwell", "Program",  "Function",    "Shift",
                                    "Gamma",           "Beta_Deg", "Start Value", "End Value"};

bool Shown_in_Summary(Design_State& design, std::string_view name)
{
    const bool of_sizing = name.starts_with("Phi_") || name.starts_with("Rho_");
    const bool of_arm = name.starts_with("Arm");
    return (!of_sizing || design.flags.Sized) && (!of_arm || !design.cam.Translating);
}

/// A text at the left (width below 0) or the right of a column.
std::string Column(const std::string& text, int width)
{
    const std::size_t wide = static_cast<std::size_t>(std::abs(width));
    const std::string blanks(wide > text.size() ? wide - text.size() : 0, ' ');
    return width < 0 ? text + blanks : blanks + text;
}

std::string Segment_Line(const std::array<std::string, 8>& cells)
{
    constexpr std::array widths{3, -4, -22, 9, 9, 9, 12, 12};
    std::string line;
    for (std::size_t k = 0; k < cells.size(); ++k)
        line += (k == 0 ? "" : "  ") + Column(On_One_Line(cells[k]), widths[k]);
    return line + "\n";
}

/// A number of 32 bits in the shortest text.
std::string Shortest_Single(double value)
{
    return Shortest(Single(value));
}

/// The extremes of the rows and the figures for the drive, as far as they are calculated.
std::string Tables_of_Results(const Design_State& design)
{
    std::string text;
    if (const std::vector<Row_Extremes> found = Main_Extremes(design); !found.empty()) {
        Report_Table table{{{"Extremes", true}, {"unit", true}, {"smallest"}, {"at deg"}, {"largest"}, {"at deg"}}, {}};
        for (const Row_Extremes& e : found)
            table.rows.push_back({e.name, e.unit, Shortest(e.smallest), Shortest(e.smallest_at), Shortest(e.largest),
                                  Shortest(e.largest_at)});
        text += "\n" + Joined(Table_Lines(table));
    }
    if (const std::vector<Drive_Figure> drive = Figures_of_Drive(design); !drive.empty()) {
        text += "\n" + Joined(Table_Lines(Drive_Table(drive, Shortest_Single)));
        if (const std::string note = Note_on_Torque_Unit(design); !note.empty())
            text += note + "\n";
    }
    return text;
}

/// The same as JSON: lists, of which each element says its unit.
void Add_Results(nlohmann::ordered_json& summary, const Design_State& design)
{
    nlohmann::ordered_json extremes = nlohmann::ordered_json::array();
    for (const Row_Extremes& e : Main_Extremes(design))
        extremes.push_back({{"row", e.row},
                            {"name", e.name},
                            {"unit", e.unit},
                            {"smallest", double{e.smallest}},
                            {"smallest_at", double{e.smallest_at}},
                            {"largest", double{e.largest}},
                            {"largest_at", double{e.largest_at}}});
    if (!extremes.empty())
        summary["Extremes"] = extremes;
    nlohmann::ordered_json drive = nlohmann::ordered_json::array();
    for (const Drive_Figure& figure : Figures_of_Drive(design)) {
        nlohmann::ordered_json element{{"name", figure.name}, {"unit", figure.unit}, {"value", figure.value}};
        if (figure.with_friction)
            element["with_friction"] = *figure.with_friction;
        drive.push_back(element);
    }
    if (!drive.empty())
        summary["Drive"] = drive;
}

std::string Summary(Design_State& design)
{
    const Motion_Group& m = design.motion;
    std::string text = "Segments (positions in " + Unit_Text(design, Field_Unit::position) + ")\n";
    text += Segment_Line({"no", "kind", "program", "from deg", "to deg", "beta deg", "start", "end"});
    for (int i = 1; i <= m.No_of_segments; ++i)
        text += Segment_Line({std::to_string(i), m.Rise_Fall_Dwell(i), m.Program(i), Shortest(m.Shift(i)),
                              Shortest(m.Gamma(i)), Shortest(m.Beta_Deg(i)), m.Start_Value(i), m.End_Value(i)});
    text += std::string("\nUnits ") + Words_of_Units(design.identity.WhichUnit).status + "\n";
    for (const char* name : summary_fields) {
        if (!Shown_in_Summary(design, name))
            continue;
        const Field& field = *Find_Field(name);
        const std::string unit = Unit_Text(design, field.unit);
        text += std::string(name) + " = " + On_One_Line(Field_Value(design, field, {})) + (unit.empty() ? "" : " ") +
                unit + "\n";
    }
    text += Tables_of_Results(design);
    for (const std::string& note : Departure_Notes(design))
        text += "Note: " + note + "\n";
    return text;
}

nlohmann::ordered_json Json_Summary(Design_State& design)
{
    nlohmann::ordered_json summary;
    nlohmann::ordered_json segments = nlohmann::ordered_json::array();
    for (int i = 1; i <= design.motion.No_of_segments; ++i) {
        nlohmann::ordered_json segment;
        for (const char* name : segment_fields)
            segment[name] = Json_Value(design, *Find_Field(name), Field_Index{1, {i}});
        segments.push_back(segment);
    }
    summary["Segments"] = segments;
    summary["Units"] = Words_of_Units(design.identity.WhichUnit).status;
    for (const char* name : summary_fields)
        if (Shown_in_Summary(design, name))
            summary[name] = Json_Value(design, *Find_Field(name), {});
    Add_Results(summary, design);
    if (const std::vector<std::string> notes = Departure_Notes(design); !notes.empty())
        summary["Notes"] = notes;
    return summary;
}

/// Whether a field is a result of the linkage, which no file holds.
bool Is_Link_Result(std::string_view text)
{
    constexpr std::array results{"Link_Theta",   "Link_Omega",   "Link_Alpha",   "Link_X",      "Link_Y",
                                 "Link_Ratio_S", "Link_Ratio_V", "Link_Ratio_A", "Link_Broken", "Link_Indeterminate"};
    const Field* const field = Find_Field(Trim(text.substr(0, text.find('('))));
    return field != nullptr && std::ranges::find(results, field->name) != results.end();
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (session.Load(options.input) == wrong_input)
        return wrong_input;
    if (!session.Read_as(options.stage))
        return wrong_input;
    if (std::ranges::any_of(options.fields, Is_Link_Result) && !session.Linkage_Worked_Out())
        return failed;
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    std::unordered_set<std::string> names;
    std::string lines;
    if (options.fields.empty()) {
        if (!options.json)
            lines = Summary(design);
        else
            object = Json_Summary(design);
    }
    for (const std::string& text : options.fields) {
        const Field_Reference reference = Read_Field_Reference(design, text);
        if (reference.field == nullptr)
            return session.Wrong(reference.error);
        const auto take = [&](const Field_Index& index) {
            const std::string name = Field_Name(*reference.field, index);
            if (!options.json)
                lines += name + " = " + On_One_Line(Field_Value(design, *reference.field, index)) + "\n";
            else if (names.insert(name).second)  // the object itself would look for its name among all before it
                object.get_ref<nlohmann::ordered_json::object_t&>().emplace_back(
                    name, Json_Value(design, *reference.field, index));
        };
        if (reference.index.count == reference.field->dimensions)
            take(reference.index);
        else  // an array without its index: all of it
            Each_Element(design, *reference.field, take);
    }
    if (options.lobe) {
        if (!design.flags.Calculated)
            return session.Wrong("--lobe: the motion is not calculated");
        const std::optional<Lobe_Figures> figures = Figures_of_Lobe(design, *options.lobe);
        if (!figures)
            return session.Wrong("--lobe: " + std::string(No_Lobe));
        for (const Lobe_Row& row : Rows_of_Lobe()) {
            const std::string name(row.caption);
            const Single value = *figures.*row.figure;
            if (options.json)
                object[name] = double{value};
            else
                lines += name + " = " + Shortest(value) + " " + Unit_of_Lobe(design, row) + "\n";
        }
    }
    if (options.json)
        lines = object.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    session.out << lines;
    return done;
}

}  // namespace

void Add_Show(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("show", "Shows fields of a model, or a summary of it");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("fields", options->fields, "fields, as 'Prime_Rad' or 'Beta_Deg(2)'")->type_name("FIELD");
    command->add_flag("--json", options->json, "as a JSON object");
    Add_Number(
        *command, "--lobe", 0.0, 1E30, [options](double lift) { options->lobe = lift; },
        "the cam angles at which the motion has a lift, its duration, middle and area")
        ->type_name("LIFT");
    Add_Stage_Options(*command, options->stage);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
