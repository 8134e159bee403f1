// SPDX-License-Identifier: GPL-3.0-or-later
/// The rules of the input screen without its window: what a row of the segment table enables, what its entries become
/// and copy, which questions and advice appear. Rows are counted from 0, segments from 1.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"

namespace lobemax {

/// What of a row is open. A rise or fall waits for its program before its positions; a dwell has one position; a
/// polynomial or a spline has its program with its kind.
struct Row_Openings {
    bool program = false;
    bool low = false;
    bool high = false;
    bool calculate = false;  // cmd_CalcSeg: it has its program and a position, and is not calculated
    bool show = false;       // cmd_PlotSeg and cmd_PrntSeg: calculated
};
Row_Openings Openings_of_Row(const Design_State& design, int row);

/// Places in the list of motion kinds: "Rise", "Fall", "Poly", "Dwell", "Spline".
int Kind_Place(const Design_State& design, int row);  // -1 for none
char Kind_at(int place);
/// Place in the list of programs, or -1 for none.
int Program_Place(const Design_State& design, int row);

/// Place in the list of kinds of a typed first letter, in upper or lower case; -1 for any other text.
int Kind_Place_of(std::string_view letter);
/// Place in the list of programs of a typed two-letter code, in upper or lower case; -1 for any other text.
int Program_Place_of(std::string_view code);

/// Picks a kind for a row, by its place; the row waits for its calculation again. A row that becomes a dwell ends
/// where it starts, and so does what its end is copied to.
void Pick_Row_Kind(Design_State& design, int row, int place);
/// Picks a program by its place in the list; a program that belongs to another kind brings that kind with it.
void Pick_Row_Program(Design_State& design, int row, int place);

/// A row waits for its calculation again.
void Rearm_Row(Design_State& design, int row);
void Rearm_All_Rows(Design_State& design);

/// Enters a position as typed. A dwell's end is its start; the end of a row is the start of the next, unless it is the
/// last. Base_Shift of the segment at work becomes 0.
void Enter_Low(Design_State& design, int row, std::string_view text);
void Enter_High(Design_State& design, int row, std::string_view text);

/// Enters a duration. An empty text only rearms the row. One outside 0..360 degrees, or one whose end lies beyond 360,
/// is refused with a message; the second is emptied.
/// @return the text that the field then shows
std::string Enter_Beta(Design_State& design, int row, std::string_view text);
/// Whether the one row of a one-segment cam has its whole turn; if not, and no file was loaded, a message tells.
bool Whole_Turn(const Design_State& design);

/// Start and end angle of a row with the decimals of the step; empty where they are not known yet.
std::string Start_Label(const Design_State& design, int row);
std::string End_Label(const Design_State& design, int row);

/// The number of segments as typed, brought into 1..20. @return the text that the field then shows
std::string Enter_Segment_Count(Design_State& design, std::string_view text, bool clear_rows);

/// The step that a text of the list of steps means, in the number format in force; any other text is told of.
std::optional<double> Listed_Step(const Design_State& design, std::string_view text);

/// The step by its text in the number format in force; any other text sets 1 and tells. Results are lost, rows with an
/// end position wait for their calculation again.
/// @return the text that the field then shows
std::string Enter_Step(Design_State& design, std::string_view text);

/// The shaft speed in rpm as typed; then as after a change of the step.
/// @throws Fault{6} when the speed or its cube is no Single; the design is then as it was
void Enter_Omega(Design_State& design, std::string_view text);
std::string Omega_Text(const Design_State& design);

/// The start angle in degrees.
void Enter_Start_Angle(Design_State& design, std::string_view text);

/// What the fields of the head hold, as typed.
struct Input_Head {
    std::string txt_Segmts;
    std::string txt_Omega;     // rpm
    std::string cmb_Delta;     // degrees
    std::string txt_ShiftAng;  // degrees
    bool clear_rows = false;   // chk_ClearOnOpen
};
/// What the head shows of a design; a step that the list does not have shows as nothing.
Input_Head Input_Head_of_Design(const Design_State& design);

/// The fields of the head, line by line, and its other captioned controls.
std::span<const Form_Field<Input_Head>> Fields_of_Input();
std::span<const Form_Control> Controls_of_Input();

/// Chooses the follower's motion; with advice unless an example or a file stands behind the table.
void Choose_Follower_Motion_on_Input(Design_State& design, bool translating);

/// Headings of the table for a motion or a force function.
struct Table_Headings {
    std::string lbl_Function;
    std::string lbl_Contour;
    std::string lbl_RFD;
    std::string lbl_Motion;
    std::string lbl_Unit;
};
Table_Headings Headings(const Design_State& design);

/// Ticking the external force asks first. @return whether a force function is being typed now
bool Tick_External_Force(Design_State& design, bool ticked);

/// Whether cmd_CalcAll is open: every row has its program, its duration and its end position.
bool May_Calculate_All(const Design_State& design);

/// Whether cmd_Done is open: every row has its end position and is calculated.
bool May_Be_Done(const Design_State& design);

/// A row of a force function was calculated, which ends with a motion wanted again: the rows that still wait belong to
/// the force function too.
void Force_Row_Calculated(Design_State& design);

/// What of the design the examples list has put into the table: its sizing and forces stand when cmd_Done is pressed.
void Example_Picked(Design_State& design);

/// cmd_ClearSegs: the rows emptied, the calculated data zeroed; neither an example nor a file stands behind the table.
void Clear_All_Rows(Design_State& design);

/// cmd_Clear_SVAJ: the segments cleared, the speed 1 rpm, one segment, step 1, start angle 0.
void Clear_All_Input(Design_State& design);

/// The screen opens: with changed units the motion no longer holds, and every row waits for its calculation again.
void Open_Input(Design_State& design);

/// The units were changed from the screen's own menu, the fields being converted.
void Units_Changed_in_Table(Design_State& design);

}  // namespace lobemax
