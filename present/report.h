// SPDX-License-Identifier: GPL-3.0-or-later
/// The fixed reports of a design as lines of text, in the number format in force, and tables of texts in fixed width.
#pragma once

#include <string>
#include <vector>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

using Report_Lines = std::vector<std::string>;

/// A table of texts.
struct Report_Table {
    struct Column {
        std::string head;
        bool left = false;  // words stand at the left, numbers at the right
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;  // a text for each column
};

/// The table in columns as wide as what they hold, two blanks between them. Heads that are all empty are left out;
/// lines have no blanks at their ends.
Report_Lines Table_Lines(const Report_Table& table);

/// Lines of no more than so many characters, broken at blanks; those that follow the first are indented.
Report_Lines Wrapped(const std::string& line, std::size_t width, std::size_t indent);

/// A line each.
std::string Joined(const Report_Lines& lines);

/// The picture of a column of cam angles: as many decimals, none, two or three, as the step of the design has.
std::string_view Angle_Picture(const Design_State& design);

/// An angle by the first of the pictures "##0", "##0.00" and "##0.000" that shows it whole, else by the last.
std::string Angle_Text(const Design_State& design, double angle);

/// What identifies a print: file, user, design number, date and time of now, an empty line.
Report_Lines Namedate_Print(const Design_State& design);

/// Start, beta and end of each segment, degrees.
Report_Lines Print_Segment_Data(const Design_State& design);

/// The extremes of pressure angle and radius of curvature with their cam angles; empty before a size. A radius that
/// there is none of is the word "None"; one that is practically infinite has no unit.
Report_Lines PrintPressMax(const Design_State& design);

/// The conditions of a polynomial or spline segment: function, local angle in degrees, its share of beta, value as
/// typed.
Report_Table Condition_Table(const Design_State& design, int segment);
/// The coefficients of a polynomial segment, of theta / beta, by exponent.
Report_Table Coefficient_Table(const Design_State& design, int segment);

/// The headings of the two tables on the form and on the printer, and what underlines them there.
inline constexpr std::string_view Conditions_Heading = "   Boundary Conditions Imposed";
inline constexpr std::string_view Conditions_Underline = "_________________________________";
inline constexpr std::string_view Equation_Heading_of_Form = "      Equation Resulting";
inline constexpr std::string_view Equation_Heading_of_Printer = "      Equation Coefficients Resulting";
inline constexpr std::string_view Equation_Underline = "_______________________________________     ";

/// Both tables of a polynomial segment, under the headings of the form.
/// @throws Fault{9} for a segment outside 1..20
Report_Lines Polytable_Form(const Design_State& design, int segment);
/// The same under the printer's headings, underlined.
Report_Lines Polytable_Printer(const Design_State& design, int segment);

/// Whether the segments meet, and the largest jump of S, V and A with the joint where it stands.
Report_Lines Continuity_Form(const Design_State& design);

}  // namespace lobemax
