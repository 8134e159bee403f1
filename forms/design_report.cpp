// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/design_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <span>

#include "core/field_directory.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/vibration.h"
#include "forms/departure_notes.h"
#include "forms/drive_words.h"
#include "forms/form_table.h"
#include "forms/linkage_notes.h"
#include "forms/model_form.h"
#include "forms/row_extremes.h"
#include "motion/motion_programs.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"

namespace lobemax {

namespace {

constexpr int figures = 6;
constexpr std::size_t line_width = 100;

/// A field of the design as a line of a part: what it is called there.
struct Told_Field {
    const char* caption;
    const char* field;
    int index = 0;  // of an array
};

Report_Table Value_Table()
{
    return {{{"", true}, {""}, {"", true}}, {}};
}

std::string Number(const Design_State& design, double value)
{
    return In_Figures(design, value, figures);
}

void Add_Value(Report_Table& table, const std::string& caption, const std::string& value, const std::string& unit = {})
{
    table.rows.push_back({caption, value, unit});
}

void Add_Field(Design_State& design, Report_Table& table, const Told_Field& told)
{
    const Field& field = *Find_Field(told.field);
    const Field_Index index = told.index == 0 ? Field_Index{} : At(told.index);
    const Field_Ref at = field.at(design, index);
    if (const auto* const single = std::get_if<Single*>(&at))
        Add_Value(table, told.caption, Number(design, **single), Unit_Text(design, field.unit));
    else
        Add_Value(table, told.caption, On_One_Line(Field_Value(design, field, index)), Unit_Text(design, field.unit));
}

void Add_Fields(Design_State& design, Report_Table& table, std::span<const Told_Field> fields)
{
    for (const Told_Field& told : fields)
        Add_Field(design, table, told);
}

std::string Panel_Value(const Panel_Lines& lines, std::string_view caption)
{
    const auto found = std::ranges::find(lines, caption, &std::pair<std::string, std::string>::first);
    return found == lines.end() ? std::string() : found->second;
}

Report_Part Motion_Part(Design_State& design)
{
    constexpr std::array bases{"second", "degree", "radian"};
    constexpr double seconds_a_minute = 60.0;
    const Motion_Group& m = design.motion;
    Report_Part part{"Design", {}, Value_Table(), {}};
    Add_Value(part.table, "Model", On_One_Line(design.identity.Model_Name));
    Add_Value(part.table, "Units", Words_of_Units(design.identity.WhichUnit).status);
    Add_Value(part.table, "Derivatives per", bases.at(Checked_Place(m.Time_Base, 1, 3)));
    Add_Value(part.table, "Cam speed", Number(design, m.Shaft_speed), "rad/sec");
    Add_Value(part.table, "", Number(design, m.Shaft_speed / PI2 * seconds_a_minute), "rpm");
    Add_Value(part.table, "Cam rotates", Panel_Value(Basic_Data(design), "Cam Rotates"));
    Add_Value(part.table, "Step of the tables", Number(design, m.Deltatheta), "deg");
    Add_Value(part.table, "Points of the cycle", std::to_string(m.Max_Data_Points_used + 1));
    if (design.flags.Calculated)
        Add_Value(part.table, "Lift", Number(design, m.MaxLift), design.plot.Var_Unit(var::S));
    if (!design.flags.Calculated)
        part.notes.emplace_back("Nothing is calculated yet.");
    if (Results_in_Other_Units(design))
        part.notes.push_back(On_One_Line(Other_Units_Sentence(design)));
    return part;
}

std::string Kind_Word(const std::string& kind)
{
    constexpr std::array words{std::pair{"R", "Rise"}, std::pair{"F", "Fall"}, std::pair{"D", "Dwell"},
                               std::pair{"P", "Polynomial"}, std::pair{"S", "Spline"}};
    for (const auto& [letter, word] : words)
        if (kind == letter)
            return word;
    return kind;
}

/// The program of a segment as its list has it.
std::string Program_Text(const Design_State& design, int segment)
{
    const Motion_Group& m = design.motion;
    const Motion_Program* const program = Find_Program(m.Program(segment));
    if (program != nullptr)
        return std::string(program->list_text);
    return On_One_Line(Trim(m.Function(segment).empty() ? m.Program(segment) : m.Function(segment)));
}

Report_Part Segment_Part(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    const std::string unit = Unit_Text(design, Field_Unit::position);
    Report_Part part{"Segments", {}, {}, {}};
    part.table.columns = {{"No"},      {"Motion", true}, {"Program", true}, {"Start deg"},
                          {"End deg"}, {"Beta deg"},     {"From " + unit},  {"To " + unit}};
    for (int i = 1; i <= m.No_of_segments; ++i)
        part.table.rows.push_back({std::to_string(i), Kind_Word(m.Rise_Fall_Dwell(i)), Program_Text(design, i),
                                   Angle_Text(design, m.Shift(i)), Angle_Text(design, m.Gamma(i)),
                                   Angle_Text(design, m.Beta_Deg(i)), On_One_Line(m.Start_Value(i)),
                                   On_One_Line(m.End_Value(i))});
    if (design.flags.Imported_Model)
        part.notes.emplace_back("The motion was imported as a table of points: it has no program of its own.");
    return part;
}

void Add_Polynomial(const Design_State& design, int segment, std::vector<Report_Part>& parts)
{
    const std::string name = "Segment " + std::to_string(segment) + ", polynomial";
    parts.push_back({name + ": boundary conditions imposed", {}, Condition_Table(design, segment), {}});
    parts.push_back({name + ": equation coefficients resulting",
                     {"S is the sum of coefficient times (theta / beta) to the exponent."},
                     Coefficient_Table(design, segment),
                     {}});
}

void Add_Spline(const Design_State& design, int segment, std::vector<Report_Part>& parts)
{
    const Motion_Group& m = design.motion;
    const std::string name =
        "Segment " + std::to_string(segment) + ", spline of order " + std::to_string(m.Orders(segment));
    parts.push_back({name + ": conditions imposed", {}, Condition_Table(design, segment), {}});
    Report_Part knots{name + ": knots", {}, {{{"Knot"}, {"Theta deg"}}, {}}, {}};
    for (int k = 1; k <= std::min<int>(m.Number_of_Knots(segment), Max_Knots); ++k)
        knots.table.rows.push_back({std::to_string(k), Number(design, m.Knots(k, segment))});
    parts.push_back(std::move(knots));
}

void Add_Conditions(const Design_State& design, std::vector<Report_Part>& parts)
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i) {
        if (m.Total_No_of_BCs(i) == 0)
            continue;
        if (m.Rise_Fall_Dwell(i) == "P")
            Add_Polynomial(design, i, parts);
        if (m.Rise_Fall_Dwell(i) == "S")
            Add_Spline(design, i, parts);
    }
}

Report_Part Size_Part(Design_State& design)
{
    const Cam_Group& c = design.cam;
    Report_Part part{"Cam and follower", {}, Value_Table(), {}};
    Report_Table& table = part.table;
    const bool roller = c.Followtype == 1;
    Add_Value(table, "Cam", On_One_Line(c.Camtype + (c.Barrel_Type.empty() ? "" : ", " + c.Barrel_Type)));
    Add_Value(table, "Follower",
              std::string(c.Translating ? "translating" : "oscillating") + (roller ? ", roller" : ", flat-faced"));
    Add_Field(design, table, {"Closure", "Closure$"});
    Add_Field(design, table, {"Prime radius", "Prime_Rad"});
    if (roller) {
        Add_Field(design, table, {"Roller radius", "Follow_Rad"});
        Add_Field(design, table, {"Cutter radius", "Cutter Radius"});
    }
    if (c.Translating) {
        Add_Field(design, table, {"Offset", "Offset"});
        Add_Field(design, table, {"Angle of the follower's axis", "Follower_Angle"});
    } else {
        constexpr std::array arm{Told_Field{"Arm pivot X", "ArmX"}, Told_Field{"Arm pivot Y", "ArmY"},
                                 Told_Field{"Arm radius", "ArmRad"}};
        Add_Fields(design, table, arm);
        Add_Value(table, "Arm turns", c.ArmDirect < 0 ? "clockwise" : "counterclockwise");
    }
    Add_Field(design, table, {"Starting angle", "Shift_Angle"});
    Add_Field(design, table, {"Keyway", "Keyway_Text"});
    return part;
}

Report_Part Extremes_Part(const Design_State& design)
{
    Report_Part part{"Extremes of the calculated rows", {}, {}, {}};
    part.table.columns = {{"Variable", true}, {"Unit", true}, {"Smallest"}, {"at deg"}, {"Largest"}, {"at deg"}};
    std::vector<int> rows = Load_Names(design);
    std::erase_if(rows, Is_Fourier);
    for (const Row_Extremes& e : Extremes_of(design, rows))
        part.table.rows.push_back({e.name, e.unit, Number(design, e.smallest), Angle_Text(design, e.smallest_at),
                                   Number(design, e.largest), Angle_Text(design, e.largest_at)});
    if (design.motion.Time_Base == 1)
        part.notes.emplace_back("Jerk and ping stand in thousands (E3).");
    if (design.flags.Sized)
        part.notes.emplace_back(
            "The row Rho is held within ten prime radii; the true extremes are those of pressure angle and curvature.");
    return part;
}

/// Areas of the torque above and below its mean, pulse by pulse.
void Add_Pulses(const Design_State& design, const Torque_Pulses& pulses, std::vector<Report_Part>& parts)
{
    if (pulses.rows == 0)
        return;
    const std::string unit = " " + design.plot.Var_Unit(var::Torque);
    Report_Part part{"Areas of camshaft torque",
                     {"Pulses above and below the average torque, in order over one cycle: torque times degrees, and "
                      "their energy."},
                     {{{"Order"},
                       {"Positive" + unit + "-deg"},
                       {"Negative" + unit + "-deg"},
                       {"Positive" + unit},
                       {"Negative" + unit}},
                      {}},
                     {}};
    for (int k = 1; k <= pulses.rows; ++k) {
        const auto at = static_cast<std::size_t>(k);
        if (pulses.positive[at] == 0.0 && pulses.negative[at] == 0.0)
            continue;
        std::vector<std::string>& row = part.table.rows.emplace_back();
        row.push_back(std::to_string(k));
        for (const double share : {1.0, Rad_per_Deg})
            for (const double area : {double{pulses.positive[at]}, double{pulses.negative[at]}})
                row.push_back(Number(design, area * share));
    }
    if (pulses.left_out > 0)
        part.notes.push_back(std::to_string(pulses.left_out) + " further pulses have no room in the table.");
    parts.push_back(std::move(part));
}

/// What the drive has to give; empty in other units.
Report_Part Drive_Part(const Design_State& design)
{
    const std::vector<Drive_Figure> drive = Figures_of_Drive(design);
    Report_Part part{"Figures for the drive", {}, {}, {}};
    if (drive.empty())
        return part;
    part.table = Drive_Table(drive, [&](double value) { return Number(design, value); });
    part.notes = Notes_on_Drive(design);
    return part;
}

void Add_Forces(Design_State& design, std::vector<Report_Part>& parts)
{
    Report_Part part{"Force and torque", {}, Value_Table(), {}};
    constexpr std::array train{
        Told_Field{"Mass at the follower", "Mass"},
        Told_Field{"Return spring rate", "Return_Spring_Rate"},
        Told_Field{"Preload", "Preload"},
        Told_Field{"Damping ratio", "Zeta_Initial"},
        Told_Field{"Damping", "Damping"},
        Told_Field{"Bearing radius", "Bearing Radius"},
        Told_Field{"Friction of the shaft", "Mu of Shaft"},
        Told_Field{"Friction of the follower", "Mu of Follower"},
        Told_Field{"Coefficient of fluctuation", "Coeff of Fluctuation"},
    };
    Add_Fields(design, part.table, train);
    const Dynamics_Figures found = Present_Figures(design);
    Add_Value(part.table, "Largest force", Number(design, found.Fmax), design.plot.Var_Unit(var::Force));
    Add_Value(part.table, "Smallest force", Number(design, found.Fmin), design.plot.Var_Unit(var::Force));
    Add_Value(part.table, "Largest torque", Number(design, found.Tmax), design.plot.Var_Unit(var::Torque));
    Add_Value(part.table, "Smallest torque", Number(design, found.Tmin), design.plot.Var_Unit(var::Torque));
    Add_Value(part.table, "Average torque", Number(design, found.pulses.average), design.plot.Var_Unit(var::Torque));
    if (found.frequencies && design.dynamics.Omega_N > 0.0) {  // a model file keeps none of them
        constexpr std::array frequencies{Told_Field{"Natural frequency", "Omega_N"},
                                         Told_Field{"Damped frequency", "Omega_D"},
                                         Told_Field{"Critical damping", "Critical_Damping"}};
        Add_Fields(design, part.table, frequencies);
    }
    parts.push_back(std::move(part));
    if (Report_Part drive = Drive_Part(design); !drive.table.rows.empty())
        parts.push_back(std::move(drive));
    Add_Pulses(design, found.pulses, parts);
}

Report_Part Stress_Part(Design_State& design)
{
    Report_Part part{"Contact stress", {}, Value_Table(), {}};
    constexpr std::array contact{
        Told_Field{"Young's modulus of the cam", "Young's modulus", 1},
        Told_Field{"Poisson's ratio of the cam", "Poissons' ratio", 1},
        Told_Field{"Young's modulus of the follower", "Young's modulus", 2},
        Told_Field{"Poisson's ratio of the follower", "Poissons' ratio", 2},
        Told_Field{"Contact length", "Roller length"},
    };
    Add_Fields(design, part.table, contact);
    if (design.dynamics.Roller_type == 2)
        Add_Field(design, part.table, {"Crown radius", "Crown radius"});
    for (const auto& [caption, row] :
         {std::pair{"Largest normal stress", var::Sigma_Max}, std::pair{"Largest shear stress", var::Tau_Max}}) {
        const Extremes e = MaxMin2(design.results.CalcData, row, 0, design.motion.Max_Data_Points_used);
        Add_Value(part.table, caption, Number(design, std::max(std::abs(e.smallest), std::abs(e.largest))),
                  design.plot.Var_Unit(row));
    }
    return part;
}

Report_Part Vibration_Part(Design_State& design)
{
    const Model_Fields_Shown has = Fields_of_Model(design);
    Report_Part part{"Vibration", {}, Value_Table(), Notes_of_Vibration(design)};
    Add_Field(design, part.table, {"Model", "Model_Type"});
    const auto pair = [&](const char* caption, const char* field, bool second) {
        Add_Field(design, part.table, {caption, field, 1});
        if (second)
            Add_Field(design, part.table, {"  second", field, 2});
    };
    pair("Mass", "Mass_m", has.second_mass);
    pair("Stiffness", "Kspring", has.second_spring);
    pair("Damping ratio", "Zeta", has.second_zeta);
    Model_Setup(design);  // no file keeps its figures
    for (const int k : {1, 2})
        if (design.dynamics.Omega(k) > 0.0)
            Add_Field(design, part.table, {"Natural frequency", "Omega", k});
    const Extremes force = MaxMin2(design.results.CalcData, var::Dynamic_Force, 0, design.motion.Max_Data_Points_used);
    Add_Value(part.table, "Largest dynamic force", Number(design, force.largest),
              design.plot.Var_Unit(var::Dynamic_Force));
    Add_Value(part.table, "Smallest dynamic force", Number(design, force.smallest),
              design.plot.Var_Unit(var::Dynamic_Force));
    return part;
}

Report_Part Transform_Part(const Design_State& design)
{
    const int variable = design.motion.Fft_Variable;
    const std::string unit = " " + Axis_Unit(design, var::FFT_Mag);
    Report_Part part{"Fourier transform of " + Trim(design.plot.Var_Name(variable)), {}, {}, {}};
    part.table.columns = {{"Harmonic"}, {"Real" + unit}, {"Imag" + unit}, {"Magnitude" + unit}, {"Phase deg"}};
    for (int k = 1; k <= Plotted_Harmonics(design); ++k) {
        std::vector<std::string>& row = part.table.rows.emplace_back();
        row.push_back(std::to_string(k));
        for (const int v : {var::FFT_Real, var::FFT_Imag, var::FFT_Mag, var::FFT_Phase})
            row.push_back(Number(design, design.results.CalcData(v, k)));
    }
    return part;
}

Report_Part Balance_Part(Design_State& design)
{
    Report_Part part{"Torque compensation", {}, Value_Table(), {}};
    constexpr std::array fields{Told_Field{"Mass", "Comp_Mass"}, Told_Field{"Spring rate", "Comp_Spring_Rate"},
                                Told_Field{"Preload", "Comp_Preload"}};
    Add_Fields(design, part.table, fields);
    part.notes.emplace_back("The motion in the tables is that of the compensating cam.");
    return part;
}

Report_Part Linkage_Part(Design_State& design)
{
    const Linkage_Group& l = design.linkage;
    Report_Part part{"Linkage", {}, Value_Table(), Linkage_Notes(design)};
    constexpr std::array kinds{"fourbar", "sixbar", "fourbar with slider", "sixbar with slider"};
    Add_Value(part.table, "Linkage", kinds.at(Checked_Place(l.Linkage_Type, 0, 3)));
    constexpr std::array lengths{Told_Field{"Link 1", "Link 1"},   Told_Field{"Link 2", "Link 2"},
                                 Told_Field{"Link 3", "Link 3"},   Told_Field{"Link 4", "Link 4"},
                                 Told_Field{"Link 4a", "Link 4a"}, Told_Field{"Link 5", "Link 5"},
                                 Told_Field{"Link 6", "Link 6"}};
    for (const Told_Field& told : lengths)
        if (const Field_Ref at = Find_Field(told.field)->at(design, {}); *std::get<Single*>(at) != 0.0)
            Add_Field(design, part.table, told);
    return part;
}

void Add_Wrapped(std::string& text, const Report_Lines& lines)
{
    constexpr std::size_t indent = 2;
    for (const std::string& line : lines)
        text += Joined(Wrapped(line, line_width, indent));
}

}  // namespace

Design_Report Make_Design_Report(Design_State design)
{
    const Flags_Group& f = design.flags;
    Design_Report report{"Cam design report", Namedate_Print(design), {}};
    std::vector<Report_Part>& parts = report.parts;
    parts.push_back(Motion_Part(design));
    parts.push_back(Segment_Part(design));
    if (f.Calculated && !f.Imported_Model) {
        Add_Conditions(design, parts);
        parts.push_back({"Continuity", Continuity_Form(design), {}, {}});
    }
    if (f.Sized) {
        parts.push_back(Size_Part(design));
        parts.push_back({"Pressure angle and curvature", PrintPressMax(design), {}, {}});
    }
    if (f.Calculated)
        parts.push_back(Extremes_Part(design));
    if (f.Dynamicflag)
        Add_Forces(design, parts);
    if (f.Stressflag)
        parts.push_back(Stress_Part(design));
    if (f.Modelflag)
        parts.push_back(Vibration_Part(design));
    if (f.Polydyne_Calc)
        parts.push_back({"Polydyne cam", {}, {}, Notes_of_Polydyne(design)});
    if (Transform_in_Memory(design))
        parts.push_back(Transform_Part(design));
    if (f.CompCam_Calc)
        parts.push_back(Balance_Part(design));
    if (f.Linkage_Calc)
        parts.push_back(Linkage_Part(design));
    return report;
}

std::string Report_Text(const Design_Report& report)
{
    std::string text = report.title + '\n' + std::string(report.title.size(), '=') + '\n' + Joined(report.header);
    for (std::size_t k = 0; k < report.parts.size(); ++k) {
        const Report_Part& part = report.parts[k];
        text += (k == 0 ? "" : "\n") + part.title + '\n' + std::string(part.title.size(), '-') + '\n';
        Add_Wrapped(text, part.lines);
        text += Joined(Table_Lines(part.table));
        Add_Wrapped(text, part.notes);
    }
    return text;
}

}  // namespace lobemax
