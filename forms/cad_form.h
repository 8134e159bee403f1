// SPDX-License-Identifier: GPL-3.0-or-later
/// Files for CAD, machines and controllers: the kinds, what may be chosen of each, and how a file is made. The command
/// line and the screen both read these tables.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text.h"
#include "forms/form_table.h"
#include "shop/curve_set.h"

namespace lobemax {

struct Design_State;
struct Solid_Options;
struct Solid_Report;
enum class Solid_Format;

/// What a file is for.
enum class Cad_Kind { dxf, xyz, csv, svg, pdf, gcode, plc, table, step, stl };
inline constexpr int Cad_Kinds = 10;

struct Cad_Kind_Entry {
    Cad_Kind kind;
    std::string_view name;     // on the command line
    std::string_view caption;  // on the screen
    std::string_view ending;   // of its files
    std::string_view words;    // what it holds
    bool surface;              // of the cam: its check may speak against it
};
std::span<const Cad_Kind_Entry> Cad_Kind_Table();
const Cad_Kind_Entry& Entry_of(Cad_Kind kind);
/// @return none for a name that no kind has
std::optional<Cad_Kind> Cad_Kind_of(std::string_view name);

/// How an option is given.
enum class Cad_Entry {
    number,
    count,   // a whole number
    choice,  // one of some words
    flag,    // yes or no
    word,
};

/// What its number is measured in.
enum class Cad_Unit {
    none,
    length,          // of the design
    program_length,  // millimetres or inches, as the machine's program has them
    program_feed,    // those per minute
    degrees,
    per_minute,
    position,  // of the follower: length or degrees
};

/// Which cams an option means something for.
enum class Cad_Body_Need { any, disk, unrolled, barrel, round, plate };

/// An option of some kinds. A name may stand in two rows for different kinds.
struct Cad_Option {
    std::string_view name;  // "tool-radius"
    std::string_view caption;
    std::string_view words;
    Cad_Entry entry;
    Cad_Unit unit;
    unsigned kinds;              // a bit each, by Cad_Kind
    Cad_Body_Need need;          // of the cam
    std::string_view usual;      // empty: what the words say; of a flag "yes" or "no"
    std::string_view in_inches;  // the usual value of a program in inches
    std::string_view choices;    // "arcs|lines"
};
std::span<const Cad_Option> Cad_Options();
/// The row of a name for a kind; none where it means nothing there.
const Cad_Option* Find_Option(Cad_Kind kind, std::string_view name);
std::vector<std::string> Choices_of(const Cad_Option& option);
/// Those of a kind that mean something for the design's cam, in the order of the table.
std::vector<const Cad_Option*> Options_for(const Design_State& design, Cad_Kind kind);

/// What is wanted: texts by the options' names, numbers with a point; one that is not given has its usual value.
struct Cad_Wish {
    Cad_Kind kind = Cad_Kind::dxf;
    std::map<std::string, std::string, std::less<>> given{};
    bool even_if_wrong = false;
};

/// Takes the text of an option; an empty one gives its usual value back.
/// @return empty, or the sentence of the refusal
std::string Put_Option(const Design_State& design, Cad_Wish& wish, std::string_view name, std::string_view text,
                       Decimal_Symbol symbol = Decimal_Symbol::point);

/// What an option has: its text as given, its usual value else; empty where it has none.
std::string Value_of(const Design_State& design, const Cad_Wish& wish, std::string_view name);

/// "mm", "in/min", "deg"; empty for none.
std::string Unit_of_Option(const Design_State& design, const Cad_Wish& wish, const Cad_Option& option);

/// Why --even-if-wrong means nothing for a kind; empty where it does.
std::string Why_Not_Even_if_Wrong(Cad_Kind kind);

using Cad_Facts = std::vector<std::pair<std::string, std::string>>;

/// A drawing sheet in words and curves: how it stands on paper is painted above.
struct Cad_Sheet {
    Curve_Set curves;
    std::string paper;   // "A4" to "A1"
    double scale = 0.0;  // of the drawing to the cam; 0: one that fits
    Cad_Facts title;     // block
    Cad_Facts data;      // what a shop asks for
    std::string radii;   // heading of the table
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> rows;
    std::string note;  // below it
};

/// A file as it is to be written, or the sentence why there is none.
struct Made_Cad {
    std::string refusal;
    bool may_be_forced = false;  // even_if_wrong makes it
    std::string bytes;           // of a kind that is text
    std::optional<Cad_Sheet> sheet;
    Cad_Facts facts;  // of the text beside it
};
/// What makes solids, Make_Solid: it stands above this room.
using Solid_Maker =
    std::function<std::string(const Design_State&, const Solid_Options&, Solid_Format, std::string&, Solid_Report&)>;
/// @param solids  wanted of the kinds step and stl
Made_Cad Make_Cad(const Design_State& design, const Cad_Wish& wish, std::string_view path,
                  const Solid_Maker& solids = {});

/// What makes a sheet's bytes and tells of it in its facts, paint::Make_Sheet: it stands above this room.
/// @return the sentence why there is none; empty where there is
using Sheet_Maker = std::function<std::string(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts)>;

struct Written_Cad {
    std::string refusal;  // a sentence; empty where it was written
    std::string text_path;
    Cad_Facts facts;
};
/// Writes a made file and the text beside it, each whole or not at all.
/// @param make_sheet  wanted of a sheet
/// @throws Fault as Write_with_Text
Written_Cad Write_Cad(const Made_Cad& made, const std::string& path, const Sheet_Maker& make_sheet);

/// What is told of a file that was written, a line each: where, arcs or points, the largest deviation, warnings.
std::vector<std::string> Lines_of_Written(const Cad_Facts& facts, const std::string& path,
                                          const std::string& text_path);

/// The direction of a place of the cam's plane: where a ray from the centre meets a curve the furthest out.
/// @param degrees  counterclockwise from x @return none where it meets nothing
std::optional<double> Radius_in_Direction(const Shop_Curve& curve, double degrees);

// ---- the screen

/// Its captioned controls but the options.
std::span<const Form_Control> Controls_of_Cad();

/// Name of the control of an option: "txt_dxf_key_width".
std::string Control_of_Option(Cad_Kind kind, const Cad_Option& option);

/// Captions with an access key each, as far as there are letters, none of them in `taken`.
std::vector<std::string> With_Access_Keys(const std::vector<std::string>& captions, std::string_view taken);

/// What an option's field shows, in the design's number format.
std::string Text_of_Option(const Design_State& design, const Cad_Wish& wish, const Cad_Option& option);

/// An entry. A refused one shows its message and what stood before.
Form_Entry Enter_Option(const Design_State& design, Cad_Wish& wish, const Cad_Option& option, std::string_view text);

/// The question before a file is written that the check speaks against.
std::string Question_of_Cad(const Made_Cad& made);

/// A name for the file to start with.
std::string Suggested_Cad_Name(const Design_State& design, Cad_Kind kind);

}  // namespace lobemax
