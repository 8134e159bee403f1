// SPDX-License-Identifier: GPL-3.0-or-later
/// The one reader and the one writer of numbers, and small helpers for texts.
///
/// No locale, no streams, no strtod: what a text means depends on the decimal symbol handed in, or on the
/// Number_Format of the design where none is.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

enum class Decimal_Symbol { point, comma };

/// The decimal symbol of the design's Number_Format: a comma for "Europe", a point for anything else.
Decimal_Symbol Current_Decimal_Symbol(const Design_State& design);

/// A number at the start of a text.
struct Number_Read {
    double value = 0.0;
    std::size_t used = 0;  // bytes of the number, with the blanks before and after it; 0: no number
    bool any = false;      // there is a number
    bool whole = false;    // and nothing follows it
};

/// Reads the number at the start of a text; "no number" gives the value 0.
///
/// Leading blanks, a sign, and digits, between which and after which blanks may stand. In the integer part
/// the grouping symbol (a comma where the decimal symbol is the point, a point where it is the comma) may
/// stand directly between groups of digits: a first of one to three, then groups of exactly three. Then the
/// decimal symbol and decimals, and an exponent: E or D in either case, a sign, digits, blanks before and
/// after each. Reading ends at the first character that does not fit. Blanks are the space and the tab. The
/// time is linear in the length of the text; the value is the nearest double, ties to even, and a zero has
/// no sign.
/// @throws Fault{6} when the number is too large for a double
Number_Read Read_Number(std::string_view text, Decimal_Symbol symbol);

/// What was left out where a typed text was no whole number: "'25,7' was read as 25". Empty for a whole number and for
/// an empty text. @throws Fault{6} when the number is too large for a double
std::string Cut_Sentence(const Design_State& design, std::string_view text);

/// The text as it is read by the number format in force: the number that it begins with; the text itself where it is a
/// whole number, empty, or too large to be read.
std::string Text_as_Read(const Design_State& design, std::string_view text);

/// A number text with a decimal point as the number format in force shows it: "0.05" or "0,05".
std::string In_Number_Format(const Design_State& design, std::string_view text);

/// The texts of the step list, finest last, in the number format in force: "1.0", "0.50", "0.25", "0.125".
std::array<std::string, 4> Step_Texts(const Design_State& design);

/// The value of Read_Number.
double Val(std::string_view text, Decimal_Symbol symbol);

/// Val by the Number_Format of the design.
double Val(const Design_State& design, std::string_view text);

/// The picture that shows a number with so many decimals, 0 to 6; the exponent picture for any other count.
std::string_view Set_Format(int decimals);

/// Writes a value by a picture.
///
/// '#' and '0' are places of digits, the first place of the integer part taking all further digits; '#'
/// shows no leading and no closing zero. ',' among the integer places groups by three, '.' is the decimal
/// symbol and is printed even when no decimal follows. "E+" or "E-" before places is the exponent, its sign
/// printed always or only when negative. Every other character is printed where it stands, the blanks inside
/// the decimals too. After a ';' stands the picture of a negative value, which shows its absolute value;
/// without one a '-' is put in front. What follows a second ';' is not used.
///
/// The value's 15 significant decimal digits count; from them it is rounded to the places shown, a half
/// away from zero. A negative value of which only zeros would show is printed as zero. A value that is not
/// finite is printed as Shortest does.
std::string Format_Picture(double value, std::string_view picture, Decimal_Symbol symbol);

/// Format_Picture by the Number_Format of the design.
std::string Format_Picture(const Design_State& design, double value, std::string_view picture);

/// A value rounded by FNRound, written by the picture for that count of decimals in the design's Number_Format.
std::string FNRoundStr(const Design_State& design, double value, int decimals);

/// Shortest text that reads back, with a decimal point, as the same number: plain ("0.5", "25", "-0.001"),
/// or with an exponent ("1E-06", "1.5E+10") below 1E-5 and from 1E+09 on for a Single, from 1E+15 on for a
/// double. Zero has no sign. What is not finite reads "NaN", "Infinity" or "-Infinity".
std::string Shortest(Single value);
std::string Shortest(double value);
/// The same put into a place of Most_Shortest_Bytes, for what writes many. @return its end there
char* Put_Shortest(char* at, Single value);
inline constexpr std::size_t Most_Shortest_Bytes = 32;
/// The same with another decimal symbol.
std::string Shortest(Single value, Decimal_Symbol symbol);

/// A value as a field or a message shows it: the shortest text of its 32 bits in the number format in force.
std::string Shown(const Design_State& design, Single value);

/// A number rounded to so many figures, in the number format in force.
std::string In_Figures(const Design_State& design, double value, int figures);

/// Text without the blanks, tabs and line ends at both ends.
std::string Trim(std::string_view text);

/// The longest text that a field takes. It is shorter than the longest record that a
/// model file can have.
inline constexpr std::size_t Most_Text_Bytes = 10000;

/// The text with each control character (line breaks, tabs and their kin) as a blank: what may stand in a line of a
/// line-oriented output, or in a cell of a table.
std::string On_One_Line(std::string_view text);

/// Text without its first n characters; a text of fewer than 4 characters gives its last character alone,
/// on purpose and whatever n is. A character is one of UTF-8.
std::string Short(std::string_view text, int n);

/// The file name of a path without folders, after '/' or '\', and without extension, which is what follows
/// the last dot; a name that begins with its only dot keeps it.
std::string StripFilename(std::string_view path);

/// Whether two texts are equal but for the case of the ASCII letters.
bool Same_Text(std::string_view a, std::string_view b);

/// Text with its ASCII letters in upper case.
std::string To_Upper(std::string_view text);

/// Bytes of a file as UTF-8: as they are when they are valid UTF-8, otherwise every byte taken as
/// Windows-1252, whose five unassigned bytes become the control characters of the same value.
/// Source: RFC 3629, section 4 (no overlong forms, no surrogates, nothing above U+10FFFF).
std::string To_Utf8(std::string bytes);

}  // namespace lobemax
