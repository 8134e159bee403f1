// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/cad_form.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/traps.h"
#include "core/units.h"
#include "forms/finding_words.h"
#include "shop/cam_curves.h"
#include "shop/cam_tables.h"
#include "shop/curve_files.h"
#include "shop/dxf.h"
#include "shop/gcode.h"
#include "solid/cam_solid.h"
#include "truth/check.h"

namespace lobemax {

namespace {

constexpr std::array<Cad_Kind_Entry, Cad_Kinds> kinds{{
    {Cad_Kind::dxf, "dxf", "Drawing exchange (DXF)", ".dxf",
     "The true curves for CAD and CAM: surface, roller centre, cutter, circles, bore, each on its own layer", true},
    {Cad_Kind::xyz, "xyz", "Curve for CAD (XYZ)", ".xyz", "Points of one curve in space: three columns, no heads",
     true},
    {Cad_Kind::csv, "csv", "Points as a table (CSV)", ".csv",
     "Points of one curve with cam angle and direction, under heads", true},
    {Cad_Kind::svg, "svg", "Picture in true size (SVG)", ".svg", "The curves in millimetres: one on the paper is one",
     true},
    {Cad_Kind::pdf, "pdf", "Drawing sheet (PDF)", ".pdf",
     "Frame, title block, the cam at a standard scale, table of radii, data for the shop", true},
    {Cad_Kind::gcode, "gcode", "Milling or grinding program (G-code)", ".nc",
     "The contour of a disk cam for three axes, or the groove of a barrel cam for a rotary axis", true},
    {Cad_Kind::plc, "plc", "Motion for a controller (PLC)", ".csv",
     "The motion as points or polynomials, for an electronic cam", false},
    {Cad_Kind::table, "table", "Lift table for grinders and engines", ".csv",
     "Lift over the cam angle from the nose, duration, lobe centre, area", false},
    {Cad_Kind::step, "step", "Solid for CAD (STEP)", ".step",
     "The cam as a body with its true walls: plate, plate with a track, drum, straight cam", true},
    {Cad_Kind::stl, "stl", "Solid for viewers (STL)", ".stl", "The same body in triangles", true},
}};

constexpr unsigned In(Cad_Kind kind)
{
    return 1U << static_cast<unsigned>(kind);
}
constexpr unsigned fitted = In(Cad_Kind::dxf) | In(Cad_Kind::svg);
constexpr unsigned drawn = fitted | In(Cad_Kind::pdf);
constexpr unsigned points = In(Cad_Kind::xyz) | In(Cad_Kind::csv);
constexpr unsigned sheets = In(Cad_Kind::pdf);
constexpr unsigned gcode = In(Cad_Kind::gcode);
constexpr unsigned plc = In(Cad_Kind::plc);
constexpr unsigned lift = In(Cad_Kind::table);
constexpr unsigned solid = In(Cad_Kind::step) | In(Cad_Kind::stl);

using enum Cad_Entry;
using Unit = Cad_Unit;
using Need = Cad_Body_Need;

constexpr std::array option_rows{
    // curves
    Cad_Option{"tolerance", "Tolerance",
               "How far the curves may lie from the true ones; where it is left out a micrometre", number, Unit::length,
               drawn | solid, Need::any, "", "", ""},
    Cad_Option{"form", "Made of", "Arcs in pairs, straight lines, or a cubic spline", choice, Unit::none, fitted,
               Need::any, "arcs", "", "arcs|lines|spline"},
    Cad_Option{"cutter", "Cutter radius", "The path of a cutter's centre too, if any", number, Unit::length, drawn,
               Need::any, "", "", ""},
    Cad_Option{"pitch", "Roller centre", "The path of the roller's centre too", flag, Unit::none, drawn, Need::any,
               "yes", "", ""},
    Cad_Option{"circles", "Base and prime circle", "Base and prime circle too", flag, Unit::none, drawn, Need::disk,
               "yes", "", ""},
    Cad_Option{"bore", "Bore diameter", "The hole for the shaft, if any", number, Unit::length, drawn, Need::disk, "",
               "", ""},
    Cad_Option{"keyway", "Keyway", "A keyway in the bore, at the keyway's clock time", flag, Unit::none, drawn,
               Need::disk, "no", "", ""},
    Cad_Option{"key-width", "Keyway width", "Else that of the standard key of the bore", number, Unit::length, drawn,
               Need::disk, "", "", ""},
    Cad_Option{"key-depth", "Keyway depth", "Beyond the bore; else that of the standard key", number, Unit::length,
               drawn, Need::disk, "", "", ""},
    Cad_Option{"notes", "Segment marks", "A tick and the angle where each segment of the motion starts", flag,
               Unit::none, drawn, Need::any, "yes", "", ""},
    // the sheet
    Cad_Option{"paper", "Paper", "The size of the sheet", choice, Unit::none, sheets, Need::any, "A3", "",
               "A4|A3|A2|A1"},
    Cad_Option{"scale", "Scale", "Of the drawing; fit: the first standard one that the sheet has room for", choice,
               Unit::none, sheets, Need::any, "fit", "", "fit|5:1|2:1|1:1|1:2|1:5|1:10"},
    Cad_Option{"every", "Radii every", "The step of the table of radii", number, Unit::degrees, sheets, Need::any, "10",
               "", ""},
    // points
    Cad_Option{"curve", "Curve", "Which curve the points lie on", choice, Unit::none, points, Need::any, "surface", "",
               "surface|pitch|cutter"},
    Cad_Option{"cutter", "Cutter radius", "Of the cutter whose centre's path is wanted, if any", number, Unit::length,
               points, Need::any, "", "", ""},
    Cad_Option{"flank", "Flank", "Of a groove: below or above the roller", choice, Unit::none, points, Need::unrolled,
               "in-use", "", "in-use|below|above"},
    Cad_Option{"step", "Step", "Of the cam angle from point to point; else that of the design", number, Unit::degrees,
               points, Need::any, "", "", ""},
    Cad_Option{"units", "Written in", "The unit of the file; design: that of the model", choice, Unit::none, points,
               Need::any, "design", "", "design|mm|cm|m|in|ft"},
    // solids
    Cad_Option{"bore", "Bore diameter", "The hole for the shaft, if any", number, Unit::length, solid, Need::round, "",
               "", ""},
    Cad_Option{"keyway", "Keyway", "A keyway in the bore, at the keyway's clock time", flag, Unit::none, solid,
               Need::round, "no", "", ""},
    Cad_Option{"key-width", "Keyway width", "Else that of the standard key of the bore", number, Unit::length, solid,
               Need::round, "", "", ""},
    Cad_Option{"key-depth", "Keyway depth", "Beyond the bore; else that of the standard key", number, Unit::length,
               solid, Need::round, "", "", ""},
    Cad_Option{"thickness", "Thickness", "Of the plate; else the design's face width", number, Unit::length, solid,
               Need::plate, "", "", ""},
    Cad_Option{"hub-diameter", "Hub diameter", "A hub around the bore, if any", number, Unit::length, solid, Need::disk,
               "", "", ""},
    Cad_Option{"hub-length", "Hub length", "Beyond the plate's upper face", number, Unit::length, solid, Need::disk, "",
               "", ""},
    Cad_Option{"groove", "Track", "The roller runs in a track, on two walls", flag, Unit::none, solid, Need::disk, "no",
               "", ""},
    Cad_Option{"plate-diameter", "Plate diameter",
               "Of a plate with a track; else the track's reach and two roller radii", number, Unit::length, solid,
               Need::disk, "", "", ""},
    Cad_Option{"groove-depth", "Groove depth", "Of a track or groove, height of a rib; else the design's face width",
               number, Unit::length, solid, Need::any, "", "", ""},
    Cad_Option{"drum-radius", "Drum radius", "Of its surface, of a rib's outer face; else the prime radius", number,
               Unit::length, solid, Need::barrel, "", "", ""},
    Cad_Option{"body-length", "Body length",
               "Along the follower's way; else the walls' reach and a roller radius on either side", number,
               Unit::length, solid, Need::unrolled, "", "", ""},
    Cad_Option{"rib-width", "Rib width", "Of a rib at rest; else two roller radii", number, Unit::length, solid,
               Need::barrel, "", "", ""},
    // machines
    Cad_Option{"units", "Program in",
               "Every length and feed below is of this unit; design: inches where the model is "
               "in inches or feet, else millimetres",
               choice, Unit::none, gcode, Need::any, "design", "", "design|mm|in"},
    Cad_Option{"tolerance", "Tolerance", "How far the tool may leave the true contour", number, Unit::program_length,
               gcode, Need::any, "0.005", "0.0002", ""},
    Cad_Option{"form", "Made of", "Arcs (G2, G3) or short straight moves", choice, Unit::none, gcode, Need::disk,
               "arcs", "", "arcs|lines"},
    Cad_Option{"tool-radius", "Tool radius", "Of the mill or wheel", number, Unit::program_length, gcode, Need::disk,
               "5", "0.25", ""},
    Cad_Option{"compensation", "Tool radius in", "The path of the tool's centre, or the contour with G41 and G42",
               choice, Unit::none, gcode, Need::disk, "path", "", "path|control"},
    Cad_Option{"offset-number", "Radius number", "The control's entry with the tool's radius, D", count, Unit::none,
               gcode, Need::disk, "1", "", ""},
    Cad_Option{"cut", "Milling", "Climb: the material on the right of the tool", choice, Unit::none, gcode, Need::disk,
               "climb", "", "climb|conventional"},
    Cad_Option{"from-back", "Face down", "The blank lies on its other face: X has the other sign", flag, Unit::none,
               gcode, Need::disk, "no", "", ""},
    Cad_Option{"stock", "Stock", "On the contour of the blank", number, Unit::program_length, gcode, Need::disk, "0",
               "0", ""},
    Cad_Option{"finish", "Finishing cut", "What the last pass takes off", number, Unit::program_length, gcode,
               Need::disk, "0", "0", ""},
    Cad_Option{"passes", "Passes", "The last one with nothing left", count, Unit::none, gcode, Need::disk, "1", "", ""},
    Cad_Option{"lead", "Lead-in", "A quarter circle, or a ramp down along the contour", choice, Unit::none, gcode,
               Need::disk, "arc", "", "arc|ramp"},
    Cad_Option{"lead-size", "Lead-in size", "Radius of the arc, length of the ramp", number, Unit::program_length,
               gcode, Need::disk, "3", "0.125", ""},
    Cad_Option{"reverse-rotary", "Reverse rotary axis", "A+ turns the drum clockwise seen from its X+ end", flag,
               Unit::none, gcode, Need::barrel, "no", "", ""},
    Cad_Option{"ramp", "Ramp", "Degrees of the drum in which the tool goes down a step", number, Unit::degrees, gcode,
               Need::barrel, "10", "", ""},
    Cad_Option{"feed", "Feed", "Of the contact along the surface", number, Unit::program_feed, gcode, Need::any, "200",
               "8", ""},
    Cad_Option{"plunge-feed", "Plunge feed", "Down into the material", number, Unit::program_feed, gcode, Need::any,
               "100", "4", ""},
    Cad_Option{"highest-feed", "Highest feed", "Of the tool's centre; 0: ten times the feed", number,
               Unit::program_feed, gcode, Need::disk, "0", "0", ""},
    Cad_Option{"spindle", "Spindle", "Turns per minute; 0: none is written", number, Unit::per_minute, gcode, Need::any,
               "1000", "", ""},
    Cad_Option{"coolant", "Coolant", "M8 and M9", flag, Unit::none, gcode, Need::any, "no", "", ""},
    Cad_Option{"safe-height", "Safe height", "Z of rapid moves above the blank", number, Unit::program_length, gcode,
               Need::any, "25", "1", ""},
    Cad_Option{"clearance", "Clearance", "Z from which the feed counts", number, Unit::program_length, gcode, Need::any,
               "2", "0.1", ""},
    Cad_Option{"depth", "Depth", "Of the contour below the top of the blank", number, Unit::program_length, gcode,
               Need::any, "10", "0.5", ""},
    Cad_Option{"depth-step", "Depth step", "The most that goes down at a time; 0: all at once", number,
               Unit::program_length, gcode, Need::any, "0", "0", ""},
    Cad_Option{"program-number", "Program number", "0: none", count, Unit::none, gcode, Need::any, "0", "", ""},
    Cad_Option{"tool-number", "Tool number", "0: no tool change", count, Unit::none, gcode, Need::any, "0", "", ""},
    Cad_Option{"line-step", "Line numbers by", "0: none", count, Unit::none, gcode, Need::any, "0", "", ""},
    // controllers and tables
    Cad_Option{"form", "Written as", "Points at even steps, or the polynomials of the segments", choice, Unit::none,
               plc, Need::any, "points", "", "points|polynomials"},
    Cad_Option{"language", "Language", "A table of text, or IEC 61131-3 structured text", choice, Unit::none, plc,
               Need::any, "csv", "", "csv|st"},
    Cad_Option{"points", "Points", "Of the turn: a power of two from 256 to 8192", count, Unit::none, plc, Need::any,
               "1024", "", ""},
    Cad_Option{"closing-point", "Closing point", "The first point again at 360 degrees", flag, Unit::none, plc,
               Need::any, "yes", "", ""},
    Cad_Option{"derivatives", "Derivatives", "Velocity and acceleration per degree beside the position", flag,
               Unit::none, plc, Need::any, "no", "", ""},
    Cad_Option{"number", "Numbers", "Structured text: what the points are", choice, Unit::none, plc, Need::any, "LREAL",
               "", "REAL|LREAL|INT|DINT"},
    Cad_Option{"counts", "Counts per unit", "Structured text: of integers; 0: the largest power of ten that fits",
               number, Unit::none, plc, Need::any, "0", "", ""},
    Cad_Option{"name", "Name", "Structured text: of the constants", word, Unit::none, plc, Need::any, "Cam", "", ""},
    Cad_Option{"step", "Step", "Of the cam angle: a part of 180 degrees, 1 or less", number, Unit::degrees, lift,
               Need::any, "1", "", ""},
    Cad_Option{"at-lift", "Duration at a lift of", "Else at a tenth of the lift", number, Unit::position, lift,
               Need::any, "", "", ""},
    Cad_Option{"separator", "Separator", "Of the columns", choice, Unit::none, plc | lift, Need::any, "semicolon", "",
               "semicolon|comma|tab"},
    Cad_Option{"decimal", "Decimal symbol", "Of the numbers", choice, Unit::none, plc | lift, Need::any, "point", "",
               "point|comma"},
};

bool Fits(const Design_State& design, Need need)
{
    const std::string& type = design.cam.Camtype;
    switch (need) {
    case Need::disk:
        return type != "Barrel" && type != "Linear";
    case Need::unrolled:
        return type == "Barrel" || type == "Linear";
    case Need::barrel:
        return type == "Barrel";
    case Need::round:
        return type != "Linear";
    case Need::plate:
        return type != "Barrel";
    case Need::any:
        break;
    }
    return true;
}

std::string_view Words_of(Need need)
{
    switch (need) {
    case Need::disk:
        return "a disk cam";
    case Need::unrolled:
        return "a barrel or linear cam";
    case Need::barrel:
        return "a barrel cam";
    case Need::round:
        return "a disk or barrel cam";
    case Need::plate:
        return "a disk or linear cam";
    case Need::any:
        break;
    }
    return "any cam";
}

bool In_Inches(const Design_State& design, const Cad_Wish& wish)
{
    const auto units = wish.given.find("units");
    if (units != wish.given.end() && units->second != "design")
        return units->second == "in";
    return design.identity.WhichUnit <= 2;
}

std::string Names(std::span<const std::string> words, const char* last)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 == words.size() ? last : ", ") + words[i];
    return text;
}

/// The kinds that a name means something for: "dxf, svg and pdf".
std::string Kinds_of(std::string_view name)
{
    std::vector<std::string> of;
    for (const Cad_Kind_Entry& kind : kinds)
        if (Find_Option(kind.kind, name) != nullptr)
            of.emplace_back(kind.name);
    return Names(of, " and ");
}

/// The options of a wish as the shop has them.
class Reader {
public:
    Reader(const Design_State& design, const Cad_Wish& wish) : design_(design), wish_(wish) {}

    std::string Word(std::string_view name) const { return Value_of(design_, wish_, name); }
    bool Is(std::string_view name, std::string_view word) const { return Word(name) == word; }
    bool Flag(std::string_view name) const { return Is(name, "yes"); }
    /// 0 for none.
    double Number(std::string_view name) const { return Read_Number(Word(name), Decimal_Symbol::point).value; }
    int Count(std::string_view name) const { return static_cast<int>(Number(name)); }
    bool Has(std::string_view name) const { return !Word(name).empty(); }

    Curve_Choice Curves() const
    {
        Curve_Choice choice;
        choice.tolerance = Number("tolerance");
        if (wish_.kind != Cad_Kind::pdf)
            choice.form = Is("form", "lines")    ? Curve_Form::lines
                          : Is("form", "spline") ? Curve_Form::spline
                                                 : Curve_Form::arcs;
        choice.pitch = Flag("pitch");
        if (Has("cutter"))
            choice.cutter = Number("cutter");
        choice.circles = Flag("circles");
        choice.bore = {Number("bore"), Flag("keyway"), Number("key-width"), Number("key-depth")};
        choice.notes = Flag("notes");
        choice.though_do_not_cut = wish_.even_if_wrong;
        return choice;
    }

    Solid_Options Solid() const
    {
        Solid_Options o;
        o.tolerance = Number("tolerance");
        o.thickness = Number("thickness");
        o.bore = {Number("bore"), Flag("keyway"), Number("key-width"), Number("key-depth")};
        o.hub_diameter = Number("hub-diameter");
        o.hub_length = Number("hub-length");
        o.groove = Flag("groove");
        o.plate_diameter = Number("plate-diameter");
        o.groove_depth = Number("groove-depth");
        o.drum_radius = Number("drum-radius");
        o.body_length = Number("body-length");
        o.rib_width = Number("rib-width");
        o.though_do_not_cut = wish_.even_if_wrong;
        return o;
    }

    Point_Choice Points() const
    {
        Point_Choice choice;
        choice.layer = Is("curve", "pitch")    ? Curve_Layer::pitch
                       : Is("curve", "cutter") ? Curve_Layer::cutter
                                               : Curve_Layer::surface;
        choice.flank = Is("flank", "below") ? 1 : Is("flank", "above") ? -1 : 0;
        choice.cutter = Number("cutter");
        choice.step = Number("step");
        for (int units = First_Unit_System; units <= Last_Unit_System; ++units)
            if (Is("units", Length_Unit_of(units)))
                choice.units = units;
        choice.though_do_not_cut = wish_.even_if_wrong;
        return choice;
    }

    Contour_Options Contour() const
    {
        Contour_Options o;
        Words(o);
        o.arcs = Is("form", "arcs");
        o.tool_radius = Number("tool-radius");
        o.offset = Is("compensation", "control") ? Radius_Offset::in_control : Radius_Offset::in_path;
        o.offset_number = Count("offset-number");
        o.climb = Is("cut", "climb");
        o.from_back = Flag("from-back");
        o.stock = Number("stock");
        o.finish = Number("finish");
        o.passes = Count("passes");
        o.lead = Is("lead", "ramp") ? Lead::ramp : Lead::arc;
        o.lead_size = Number("lead-size");
        o.highest_feed = Number("highest-feed");
        return o;
    }

    Drum_Options Drum() const
    {
        Drum_Options o;
        Words(o);
        o.reverse_rotary = Flag("reverse-rotary");
        o.ramp = Number("ramp");
        return o;
    }

    Motion_Table_Options Motion() const
    {
        Motion_Table_Options o;
        Language(o);
        o.points = Count("points");
        o.closing_point = Flag("closing-point");
        o.derivatives = Flag("derivatives");
        constexpr std::array<std::pair<std::string_view, Plc_Number>, 4> numbers{{{"REAL", Plc_Number::REAL},
                                                                                  {"LREAL", Plc_Number::LREAL},
                                                                                  {"INT", Plc_Number::INT},
                                                                                  {"DINT", Plc_Number::DINT}}};
        for (const auto& [name, number] : numbers)
            if (Is("number", name))
                o.number = number;
        o.scale = Number("counts");
        return o;
    }

    Piece_Table_Options Pieces() const
    {
        Piece_Table_Options o;
        Language(o);
        return o;
    }

    Lift_Table_Options Lifts() const
    {
        Lift_Table_Options o;
        o.step = Number("step");
        o.at_lift = Number("at-lift");
        Columns(o);
        return o;
    }

private:
    void Words(Program_Words& o) const
    {
        o.unit = In_Inches(design_, wish_) ? Program_Unit::inch : Program_Unit::mm;
        o.tolerance = Number("tolerance");
        o.feed = Number("feed");
        o.plunge_feed = Number("plunge-feed");
        o.spindle = Number("spindle");
        o.coolant = Flag("coolant");
        o.safe_height = Number("safe-height");
        o.clearance = Number("clearance");
        o.depth = Number("depth");
        o.depth_step = Number("depth-step");
        o.program_number = Count("program-number");
        o.tool_number = Count("tool-number");
        o.line_step = Count("line-step");
        o.cut_anyway = wish_.even_if_wrong;
    }
    template <class Table>
    void Columns(Table& o) const
    {
        o.separator = Is("separator", "comma") ? ',' : Is("separator", "tab") ? '\t' : ';';
        o.decimal = Is("decimal", "comma") ? Decimal_Symbol::comma : Decimal_Symbol::point;
    }
    template <class Table>
    void Language(Table& o) const
    {
        o.form = Is("language", "st") ? Table_Form::structured_text : Table_Form::csv;
        o.name = Word("name");
        Columns(o);
    }

    const Design_State& design_;
    const Cad_Wish& wish_;
};

std::string Three(double value)
{
    std::string text = Plain_Number(value, 3, false);
    const std::size_t dot = text.find('.');
    const std::size_t decimals = dot == std::string::npos ? 0 : text.size() - dot - 1;
    if (decimals == 0)
        text += '.';
    return text + std::string(3 - decimals, '0');
}

// ---- the sheet

/// What a shop asks for of a cam.
class Sheet_Words {
public:
    Sheet_Words(const Design_State& design, const True_Design& truth, const Reader& options)
        : design_(design),
          truth_(truth),
          m_(truth.cam.Follower()),
          options_(options),
          unit_(Length_Unit_of(design.identity.WhichUnit))
    {
    }

    /// Fills all but the curves.
    void Fill(Cad_Sheet& sheet) const
    {
        sheet.paper = options_.Word("paper");
        const std::string scale = options_.Word("scale");
        const std::size_t colon = scale.find(':');
        if (colon != std::string::npos)
            sheet.scale = std::atof(scale.substr(0, colon).c_str()) / std::atof(scale.substr(colon + 1).c_str());
        Fill_Title(sheet);
        Fill_Data(sheet);
        Fill_Radii(sheet, options_.Number("every"));
    }

private:
    std::string Length(double value) const { return Three(value) + " " + unit_; }

    void Fill_Title(Cad_Sheet& sheet) const
    {
        const Identity_Group& id = design_.identity;
        const double tolerance = options_.Number("tolerance");
        sheet.title = {
            {"Model", On_One_Line(id.Model_Name)},
            {"Design", std::to_string(id.Design_No)},
            {"User", On_One_Line(id.User)},
            {"Date", On_One_Line(Today_Text() + " " + Now_Text())},
            {"Units", unit_},
            {"Tolerance", Plain_Figures(tolerance > 0.0 ? tolerance : Usual_Tolerance(id.WhichUnit), 4) + " " + unit_}};
    }

    void Fill_Data(Cad_Sheet& sheet) const
    {
        const auto tell = [&](const char* name, std::string words) { sheet.data.emplace_back(name, std::move(words)); };
        const bool disk = m_.body == Cam_Body::disk;
        tell("Cam", (disk                          ? (m_.side > 0 ? "disk, outer surface" : "disk, inner surface")
                     : m_.body == Cam_Body::barrel ? "barrel, unrolled at the prime radius"
                                                   : "linear"));
        tell("Rotation", m_.rot > 0 ? "counterclockwise" : "clockwise");
        if (disk) {
            tell("Base circle", "radius " + Length(Base_Radius(truth_.cam)));
            if (m_.roller)
                tell("Prime circle", "radius " + Length(m_.prime));
        } else {
            tell("Prime radius", Length(m_.prime));
        }
        tell("Follower", m_.roller ? "roller, radius " + Length(m_.roller_radius) : std::string("flat face"));
        if (m_.arm) {
            tell("Arm", "length " + Length(m_.arm_length));
            tell("Pivot", "x " + Length(m_.pivot_x) + ", y " + Length(m_.pivot_y));
        }
        if (!m_.arm || !m_.roller)
            tell("Offset", Length(m_.offset));
        double most = 0.0;
        for (const Follower_Point& p : truth_.motion)
            most = std::max(most, p.s);
        tell(m_.arm ? "Swing" : "Lift", m_.arm ? Three(most * Deg_per_Rad) + " deg" : Length(most));
        Tell_Radii(sheet, true);
        Tell_Radii(sheet, false);
        double steepest = 0.0;
        double at = 0.0;
        for (const True_Point& p : truth_.points)
            if (std::abs(p.Phi) > std::abs(steepest)) {
                steepest = p.Phi;
                at = p.theta;
            }
        tell("Pressure angle",
             "up to " + Plain_Number(std::abs(steepest), 2, false) + " deg at " + Plain_Figures(at, 6) + " deg");
        tell("Check", Count_of_Findings(Check_Design(design_, Limits())));
        if (disk) {
            double furthest = 0.0;
            for (const True_Point& p : truth_.points)
                furthest = std::max(furthest, lobemax::Length(p.surface));
            tell("Blank", (m_.side > 0 ? "disk of diameter " : "ring, hole of diameter ") + Length(2.0 * furthest) +
                              (m_.side > 0 ? " at least" : " at the most"));
        } else {
            double low = truth_.points.front().center.y;
            double high = low;
            for (const True_Point& p : truth_.points) {
                low = std::min(low, p.center.y);
                high = std::max(high, p.center.y);
            }
            tell("Blank", "length of one turn " + Length(Turn_of(truth_.cam)) + ", groove or rib over " +
                              Length(high - low + 2.0 * m_.roller_radius));
        }
    }

    /// The smallest radius of the surface where it is convex, or hollow.
    void Tell_Radii(Cad_Sheet& sheet, bool convex) const
    {
        const True_Point* least = nullptr;
        for (const True_Point& p : truth_.points)
            if ((p.Rho_Surface > 0.0) == convex && std::isfinite(p.Rho_Surface) &&
                (least == nullptr || std::abs(p.Rho_Surface) < std::abs(least->Rho_Surface)))
                least = &p;
        sheet.data.emplace_back(
            convex ? "Smallest convex radius" : "Smallest hollow radius",
            least == nullptr ? std::string("none")
                             : Length(std::abs(least->Rho_Surface)) + " at " + Plain_Figures(least->theta, 6) + " deg");
    }

    void Fill_Radii(Cad_Sheet& sheet, double every) const
    {
        const int steps = static_cast<int>(std::ceil(360.0 / every - 1e-9));
        if (m_.body != Cam_Body::disk) {
            sheet.radii = "Roller centre";
            sheet.heads = {"Cam angle (deg)", "Along (" + unit_ + ")", "Z (" + unit_ + ")"};
            for (int i = 0; i < steps; ++i) {
                const True_Point p = truth_.cam.At(i * every);
                sheet.rows.push_back({Plain_Number(i * every, 3, false), Three(p.center.x), Three(p.center.y)});
            }
            sheet.note = "Along: from cam angle 0, with the cam angle.";
            return;
        }
        sheet.radii = "Radii";
        sheet.heads = {"Angle (deg)", "Surface (" + unit_ + ")"};
        if (m_.roller)
            sheet.heads.insert(sheet.heads.begin() + 1, "Centre (" + unit_ + ")");
        const Shop_Curve surface = Surface_of(truth_.cam);
        const Shop_Curve pitch = m_.roller ? Pitch_of(truth_.cam) : Shop_Curve{};
        for (int i = 0; i < steps; ++i) {
            const double angle = i * every;
            const auto cell = [&](const Shop_Curve& curve) {
                const std::optional<double> radius = Radius_in_Direction(curve, angle);
                return radius ? Three(*radius) : std::string("-");
            };
            std::vector<std::string> row{Plain_Number(angle, 3, false)};
            if (m_.roller)
                row.push_back(cell(pitch));
            row.push_back(cell(surface));
            sheet.rows.push_back(std::move(row));
        }
        sheet.note = "Angles on the drawing, counterclockwise from the right; radii from the cam centre.";
    }

    const Design_State& design_;
    const True_Design& truth_;
    const Mechanism& m_;
    const Reader& options_;
    std::string unit_;
};

// ---- making

Made_Cad Refused_Cad(std::string why)
{
    Made_Cad made;
    made.refusal = std::move(why);
    return made;
}

Made_Cad Of_Curves(const Design_State& design, const Cad_Wish& wish, std::string_view path)
{
    const Reader options(design, wish);
    Made_Curves curves = Make_Curve_Set(design, options.Curves());
    if (!curves.set)
        return Refused_Cad(curves.refusal);
    Made_Cad made;
    made.facts = Facts_of(*curves.set, path);
    if (wish.kind == Cad_Kind::dxf)
        made.bytes = Dxf_Text(*curves.set, path);
    else if (wish.kind == Cad_Kind::svg)
        made.bytes = Svg_Text(*curves.set, path);
    else {
        const double every = options.Number("every");
        if (!(every >= 1.0) || !(every <= 90.0))
            return Refused_Cad("Radii are told every 1 to 90 degrees.");
        const std::optional<True_Design> truth = Find_Truth(design);
        if (!truth)
            return Refused_Cad(Why_No_Cam(design, true));
        Cad_Sheet drawing;
        drawing.curves = std::move(*curves.set);
        Sheet_Words(design, *truth, options).Fill(drawing);
        drawing.title.push_back(made.facts.front());
        made.sheet = std::move(drawing);
    }
    return made;
}

Made_Cad Of_Points(const Design_State& design, const Cad_Wish& wish, std::string_view path)
{
    Made_Points all = Make_Curve_Points(design, Reader(design, wish).Points());
    if (!all.points)
        return Refused_Cad(all.refusal);
    Made_Cad made;
    made.facts = {{"File", std::string(path.substr(path.find_last_of('/') + 1))}};
    made.facts.insert(made.facts.end(), all.points->facts.begin(), all.points->facts.end());
    made.bytes = wish.kind == Cad_Kind::xyz ? Xyz_Text(*all.points) : Csv_Text(*all.points);
    return made;
}

Made_Cad Of_Machine(const Design_State& design, const Cad_Wish& wish, std::string_view path)
{
    const Reader options(design, wish);
    Machine_File file;
    std::string unit;
    if (wish.kind == Cad_Kind::gcode) {
        file = design.cam.Camtype == "Barrel" ? Drum_Program(design, options.Drum())
                                              : Contour_Program(design, options.Contour());
        unit = In_Inches(design, wish) ? "in" : "mm";
    } else {
        file = wish.kind == Cad_Kind::table        ? Lift_Table(design, options.Lifts())
               : options.Is("form", "polynomials") ? Piece_Table(design, options.Pieces())
                                                   : Motion_Table(design, options.Motion());
        unit = Position_Unit_of(design);
    }
    if (!file.refusal.empty())
        return Refused_Cad(file.refusal);
    Made_Cad made;
    made.bytes = std::move(file.text);
    made.facts = {{"File", std::string(path.substr(path.find_last_of('/') + 1))}};
    for (auto& fact : Opening_Facts(design))
        made.facts.push_back(std::move(fact));
    made.facts.back().second = unit;
    const auto counted = [](int n, const char* what) { return std::to_string(n) + " " + what + (n == 1 ? "" : "s"); };
    std::string written;
    if (wish.kind == Cad_Kind::gcode) {
        made.facts.emplace_back("Tolerance", Value_of(design, wish, "tolerance") + " " + unit);
        written = file.arcs > 0 ? counted(file.arcs, "arc") : "";
        if (file.lines > 0 || file.arcs == 0)
            written += (written.empty() ? "" : " and ") + counted(file.lines, "line");
    } else {
        written = counted(file.points,
                          options.Is("form", "polynomials") && wish.kind == Cad_Kind::plc ? "polynomial" : "point");
    }
    made.facts.emplace_back("Written", written + ", largest deviation " + Plain_Figures(file.largest_deviation, 3) +
                                           " " + unit + " at " + Plain_Figures(file.at, 6) + " deg");
    for (const std::string& note : file.notes)
        made.facts.emplace_back("Note", note);
    if (wish.even_if_wrong)
        if (const std::string why = Why_No_Cam(design, false); !why.empty())
            made.facts.emplace_back("WARNING", why);
    return made;
}

Made_Cad Of_Solid(const Design_State& design, const Cad_Wish& wish, std::string_view path, const Solid_Maker& solids)
{
    if (!solids)
        return Refused_Cad("Nothing that makes solids is at hand.");
    Made_Cad made;
    Solid_Report report;
    made.refusal = solids(design, Reader(design, wish).Solid(),
                          wish.kind == Cad_Kind::stl ? Solid_Format::stl : Solid_Format::step, made.bytes, report);
    made.facts = {{"File", std::string(path.substr(path.find_last_of('/') + 1))}};
    made.facts.insert(made.facts.end(), report.facts.begin(), report.facts.end());
    return made;
}

Made_Cad Make_Once(const Design_State& design, const Cad_Wish& wish, std::string_view path, const Solid_Maker& solids)
{
    try {
        switch (wish.kind) {
        case Cad_Kind::step:
        case Cad_Kind::stl:
            return Of_Solid(design, wish, path, solids);
        case Cad_Kind::xyz:
        case Cad_Kind::csv:
            return Of_Points(design, wish, path);
        case Cad_Kind::gcode:
        case Cad_Kind::plc:
        case Cad_Kind::table:
            return Of_Machine(design, wish, path);
        default:
            return Of_Curves(design, wish, path);
        }
    } catch (const Fault& fault) {
        return Refused_Cad("The file could not be made: " + Error_Description(fault.Number()) + ".");
    }
}

}  // namespace

std::span<const Cad_Kind_Entry> Cad_Kind_Table()
{
    return kinds;
}

const Cad_Kind_Entry& Entry_of(Cad_Kind kind)
{
    return kinds[static_cast<std::size_t>(kind)];
}

std::optional<Cad_Kind> Cad_Kind_of(std::string_view name)
{
    const auto* const found = std::ranges::find(kinds, name, &Cad_Kind_Entry::name);
    return found == kinds.end() ? std::nullopt : std::optional(found->kind);
}

std::span<const Cad_Option> Cad_Options()
{
    return option_rows;
}

const Cad_Option* Find_Option(Cad_Kind kind, std::string_view name)
{
    for (const Cad_Option& option : option_rows)
        if (option.name == name && (option.kinds & In(kind)) != 0)
            return &option;
    return nullptr;
}

std::vector<std::string> Choices_of(const Cad_Option& option)
{
    std::vector<std::string> all;
    for (std::size_t from = 0; from <= option.choices.size();) {
        const std::size_t to = std::min(option.choices.find('|', from), option.choices.size());
        all.emplace_back(option.choices.substr(from, to - from));
        from = to + 1;
    }
    return all;
}

std::vector<const Cad_Option*> Options_for(const Design_State& design, Cad_Kind kind)
{
    std::vector<const Cad_Option*> all;
    for (const Cad_Option& option : option_rows)
        if ((option.kinds & In(kind)) != 0 && Fits(design, option.need))
            all.push_back(&option);
    return all;
}

std::string Put_Option(const Design_State& design, Cad_Wish& wish, std::string_view name, std::string_view text,
                       Decimal_Symbol symbol)
{
    const std::string what(name);
    const Cad_Option* const option = Find_Option(wish.kind, name);
    if (option == nullptr)
        return what + " means nothing for " + std::string(Entry_of(wish.kind).name) + ": it is for " + Kinds_of(name) +
               ".";
    if (!Fits(design, option->need))
        return what + " means nothing for this cam: it is for " + std::string(Words_of(option->need)) + ".";
    const std::string trimmed = Trim(text);
    if (trimmed.empty()) {
        wish.given.erase(what);
        return "";
    }
    if (option->entry == number || option->entry == count) {
        Number_Read read;
        try {
            read = Read_Number(trimmed, symbol);
        } catch (const Fault&) {
        }
        if (!read.whole)
            return what + ": '" + trimmed + "' is no number.";
        if (option->entry == count && (read.value != std::floor(read.value) || std::abs(read.value) > 32767.0))
            return what + ": '" + trimmed + "' is no whole number from -32767 to 32767.";
        wish.given[what] = Shortest(read.value);
        return "";
    }
    std::vector<std::string> words{trimmed};
    if (option->entry == choice)
        words = Choices_of(*option);
    else if (option->entry == flag)
        words = {"yes", "no"};
    const auto found = std::ranges::find_if(words, [&](const std::string& word) { return Same_Text(word, trimmed); });
    if (found == words.end())
        return what + ": '" + trimmed + "' is none of " + Names(words, " and ") + ".";
    wish.given[what] = *found;
    return "";
}

std::string Value_of(const Design_State& design, const Cad_Wish& wish, std::string_view name)
{
    const auto given = wish.given.find(name);
    if (given != wish.given.end())
        return given->second;
    const Cad_Option* const option = Find_Option(wish.kind, name);
    if (option == nullptr)
        return "";
    return std::string(!option->in_inches.empty() && In_Inches(design, wish) ? option->in_inches : option->usual);
}

std::string Unit_of_Option(const Design_State& design, const Cad_Wish& wish, const Cad_Option& option)
{
    const std::string program = In_Inches(design, wish) ? "in" : "mm";
    switch (option.unit) {
    case Unit::length:
        return Length_Unit_of(design.identity.WhichUnit);
    case Unit::program_length:
        return program;
    case Unit::program_feed:
        return program + "/min";
    case Unit::degrees:
        return "deg";
    case Unit::per_minute:
        return "rpm";
    case Unit::position:
        return Position_Unit_of(design);
    case Unit::none:
        break;
    }
    return "";
}

std::string Why_Not_Even_if_Wrong(Cad_Kind kind)
{
    if (Entry_of(kind).surface)
        return "";
    return "even-if-wrong means nothing for " + std::string(Entry_of(kind).name) +
           ": it holds the motion, and nothing is cut by it.";
}

Made_Cad Make_Cad(const Design_State& design, const Cad_Wish& wish, std::string_view path, const Solid_Maker& solids)
{
    Made_Cad made = Make_Once(design, wish, path, solids);
    if (!made.refusal.empty() && Entry_of(wish.kind).surface && !wish.even_if_wrong) {
        Cad_Wish forced = wish;
        forced.even_if_wrong = true;
        made.may_be_forced = Make_Once(design, forced, path, solids).refusal.empty();
    }
    return made;
}

Written_Cad Write_Cad(const Made_Cad& made, const std::string& path, const Sheet_Maker& make_sheet)
{
    Written_Cad written;
    written.facts = made.facts;
    std::string bytes = made.bytes;
    if (made.sheet)
        written.refusal = make_sheet(*made.sheet, bytes, written.facts);
    if (written.refusal.empty())
        written.text_path = Write_with_Text(path, bytes, written.facts);
    return written;
}

std::vector<std::string> Lines_of_Written(const Cad_Facts& facts, const std::string& path, const std::string& text_path)
{
    std::vector<std::string> lines{"Written: " + path, "Text beside it: " + text_path};
    constexpr std::array<std::string_view, 5> known{"File", "Model", "Design", "Date", "Unit"};
    for (const auto& [name, words] : facts)
        if (std::ranges::find(known, name) == known.end())
            lines.push_back(name + ": " + words);
    return lines;
}

std::optional<double> Radius_in_Direction(const Shop_Curve& curve, double degrees)
{
    const Vector ray = Direction(degrees / Deg_per_Rad);
    constexpr int steps = 1440;
    std::optional<double> furthest;
    const auto beside = [&](double t) { return Cross(ray, curve.at(t).point); };
    double before = beside(curve.from);
    for (int i = 1; i <= steps; ++i) {
        const double from = curve.from + (curve.to - curve.from) * (i - 1) / steps;
        const double to = curve.from + (curve.to - curve.from) * i / steps;
        const double after = beside(to);
        if (before == 0.0 || (before < 0.0) != (after < 0.0)) {
            double low = from;
            double high = to;
            for (int k = 0; k < 60; ++k) {
                const double middle = 0.5 * (low + high);
                ((beside(middle) < 0.0) == (before < 0.0) ? low : high) = middle;
            }
            const double reach = Dot(ray, curve.at(before == 0.0 ? from : low).point);
            if (reach > 0.0 && (!furthest || reach > *furthest))
                furthest = reach;
        }
        before = after;
    }
    return furthest;
}

// ---- the screen

namespace {

constexpr std::array controls{
    Form_Control{"frm_Cad", "For CAD and Machines"},
    Form_Control{"cmb_Kind", "&Kind of file", "What the file is for"},
    Form_Control{"lbl_Kind", "", "What such a file holds"},
    Form_Control{"txt_Written", "", "The file that was written last: what it is made of, and how far it departs"},
    Form_Control{"cmd_Write", "&Write...", "Asks for the file's name and writes it, and a text beside it"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_Close", "&Close"},
};

}  // namespace

std::span<const Form_Control> Controls_of_Cad()
{
    return controls;
}

std::string Control_of_Option(Cad_Kind kind, const Cad_Option& option)
{
    std::string name(option.name);
    std::ranges::replace(name, '-', '_');
    const char* const prefix = option.entry == flag ? "chk_" : option.entry == choice ? "cmb_" : "txt_";
    return prefix + std::string(Entry_of(kind).name) + "_" + name;
}

std::vector<std::string> With_Access_Keys(const std::vector<std::string>& captions, std::string_view taken)
{
    std::string used;
    const auto upper = [](char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); };
    for (const char c : taken)
        used += upper(c);
    std::vector<std::string> all;
    for (const std::string& caption : captions) {
        std::size_t best = std::string::npos;
        for (const bool starts : {true, false})
            for (std::size_t i = 0; i < caption.size() && best == std::string::npos; ++i)
                if (std::isalpha(static_cast<unsigned char>(caption[i])) != 0 &&
                    (!starts || i == 0 || caption[i - 1] == ' ') && used.find(upper(caption[i])) == std::string::npos)
                    best = i;
        std::string keyed = caption;
        if (best != std::string::npos) {
            used += upper(caption[best]);
            keyed.insert(best, 1, '&');
        }
        all.push_back(std::move(keyed));
    }
    return all;
}

std::string Text_of_Option(const Design_State& design, const Cad_Wish& wish, const Cad_Option& option)
{
    std::string text = Value_of(design, wish, option.name);
    if (option.entry == number || option.entry == count)
        if (Current_Decimal_Symbol(design) == Decimal_Symbol::comma)
            std::ranges::replace(text, '.', ',');
    return text;
}

Form_Entry Enter_Option(const Design_State& design, Cad_Wish& wish, const Cad_Option& option, std::string_view text)
{
    const std::string refusal = Put_Option(design, wish, option.name, text, Current_Decimal_Symbol(design));
    if (refusal.empty())
        return {true, Text_of_Option(design, wish, option)};
    Show_Message(refusal, Buttons::OK, Symbol::exclamation);
    return {false, Text_of_Option(design, wish, option), true};
}

std::string Question_of_Cad(const Made_Cad& made)
{
    return made.refusal + "\n\nWrite the file all the same?";
}

std::string Suggested_Cad_Name(const Design_State& design, Cad_Kind kind)
{
    return design.identity.Model_Name + std::string(Entry_of(kind).ending);
}

}  // namespace lobemax
