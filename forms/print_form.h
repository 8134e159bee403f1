// SPDX-License-Identifier: GPL-3.0-or-later
/// The choice of a table to print, and the table in texts: what frm_PrintSelect and frm_PrintData say and hold, without
/// their windows.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form_table.h"
#include "present/data_table.h"
#include "present/report.h"

namespace lobemax {

/// Where a table goes: opt_Whereto, in its order.
enum class Print_To { Screen, Printer, File };
inline constexpr std::array<std::string_view, 3> Print_To_Captions{"Screen", "Printer", "Disk File"};

inline constexpr int Print_Columns = 4;
inline constexpr int Most_Print_Decimals = 6;
/// The place of the exponent form in the lists of decimals, behind 0 to 6.
inline constexpr int Print_Exponent = Most_Print_Decimals + 1;

/// What is chosen on frm_PrintSelect. It stays while tables are shown, and for the next one.
struct Print_Choice {
    Print_To where = Print_To::Screen;
    bool over_time = false;  // the response as it was integrated
    bool presets = false;
    int preset = 0;                              // an entry of the four-window presets; 0: none is picked
    std::array<int, Print_Columns> variables{};  // 0: none
    int segment = 0;                             // 0: the whole cycle
    int step = 1;
    std::array<int, Print_Columns> decimals{3, 3, 3, 3};  // of each picked column
};

/// The choice that the screen opens with: no column, the design's print step.
Print_Choice Open_Print_Choice(const Design_State& design);

/// Whether a response over time is in memory, so that opt_Base offers time.
bool Time_Table_Possible(const Design_State& design);

/// The variables that the lists offer: those of a table that goes there, or the response over time. Selecting_Print
/// holds while they are found.
std::vector<int> Print_Variables(Design_State& design, const Print_Choice& choice);
/// The entries of cmb_Preset by their numbers; none over time.
std::vector<int> Print_Presets(Design_State& design, const Print_Choice& choice);

/// The steps of cmb_Step, that of the choice among them.
std::vector<int> Print_Steps(const Print_Choice& choice);

/// The texts of cmb_Decimal and cmb_DecimalAll: "0" to "6" and "E".
std::vector<std::string> Decimal_Texts();

/// Takes out of the choice what is no longer offered: after another destination, base or rung.
void Fit_Print_Choice(Design_State& design, Print_Choice& choice);

/// Picks a preset: its variables become the columns.
void Pick_Print_Preset(Print_Choice& choice, int entry);

/// The columns that are picked, in their order.
std::vector<int> Picked_Columns(const Print_Choice& choice);

/// Why the columns make no table, as the user is told; empty where they do, and where none is picked.
std::string Why_No_Table(const Design_State& design, const Print_Choice& choice);

/// Whether cmd_Done is enabled: something is picked, and it makes a table.
bool Print_OK(const Design_State& design, const Print_Choice& choice);

/// A table in texts, as screen and printer show it.
struct Table_in_Texts {
    std::vector<std::string> heads;
    std::vector<std::string> units;
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> smallest;  // "Min" and that of each column
    std::vector<std::string> largest;   // "Max" ...
};

/// The table of a choice, its columns in their own decimals by the number format in force; the angle by the pictures
/// of angles, a harmonic's number without decimals, time with six.
/// @throws Fault{9} as Make_Data_Table
Table_in_Texts Print_Table(const Design_State& design, const Print_Choice& choice);

/// The same in a text file: what identifies the print, heads, units, then the rows between tabs, "Min" and "Max". The
/// numbers have no symbol between their groups, so that any program reads them.
std::string Print_File_Text(const Design_State& design, const Print_Choice& choice);

/// Print_to_File: the text goes to the file of a save dialog, under its trap.
/// @return whether it was written; false after a fault, and where the user called it off
bool Print_to_File(const Design_State& design, const Print_Choice& choice);

/// S, V, A and J of one segment: what cmd_PrntSeg prints.
Print_Choice Segment_Print_Choice(const Design_State& design, int segment);

/// All captioned controls of frm_PrintSelect and frm_PrintData.
std::span<const Form_Control> Controls_of_Print();

/// Before a screen with a moving picture is printed.
std::string Picture_Print_Note();

}  // namespace lobemax
