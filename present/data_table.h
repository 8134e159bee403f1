// SPDX-License-Identifier: GPL-3.0-or-later
/// The data table: up to four variables beside the cam angle, row by row, with their extremes.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

struct Table_Choice {
    std::vector<int> variables;  // one to four rows of CalcData
    int segment = 0;             // 0: the whole cycle
    int step = 1;                // every how many points a row stands
};

/// What the rows of a table go over.
enum class Table_Base { angle, time, harmonics };

/// What the table shows, as numbers: the first column is the cam angle, in degrees, the time, in seconds, or the number
/// of a harmonic.
struct Data_Table {
    Table_Base base = Table_Base::angle;
    std::vector<std::string> heads;
    std::vector<std::string> units;  // by column
    std::vector<std::vector<double>> rows;
    std::vector<double> smallest;  // by column, of the rows shown; the angle's is left out
    std::vector<double> largest;
};

/// The variable meant by a number, a name or a symbol ("5", "Phi", "F-kin"); none when there is no such row.
std::optional<int> Variable_Named(const Design_State& design, std::string_view text);

/// The column head of a variable: its short heading, or its name where it has none.
std::string Column_Head(const Design_State& design, int variable);

/// First and last point of a choice: the cycle, or the points of one segment.
struct Point_Range {
    int first;
    int last;
};
Point_Range Points_of_Segment(const Design_State& design, int segment);

/// The heads of the first column of a table over time, in seconds, and of one of a Fourier transform.
inline constexpr const char* Time_Head = "Time";
inline constexpr const char* Harmonic_Head = "Harmonic";

/// Whether these variables are the response over time, rows 50 to 53, of a vibration in memory: their table then goes
/// over the points that the integration stored. A file keeps none of these.
bool Is_Time_Response(const Design_State& design, std::span<const int> variables);

/// What a table of these variables goes over: the harmonics where all of them are parts of a transform in memory, time
/// where Is_Time_Response, else the cam angle.
Table_Base Base_of_Table(const Design_State& design, std::span<const int> variables);

/// @throws Fault{9} for a variable, a segment or a step that the design does not have
Data_Table Make_Data_Table(const Design_State& design, const Table_Choice& choice);

/// The table as tab-delimited lines under its heads, ended by the rows "Min" and "Max".
///
/// @param decimals  none: the shortest text of each number; else so many places, the point as decimal symbol
std::string Table_Text(const Data_Table& table, std::optional<int> decimals);

}  // namespace lobemax
