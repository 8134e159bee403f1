// SPDX-License-Identifier: GPL-3.0-or-later
/// The linkage screens without their windows: the choice of the train, its entries and choices, the end effector's
/// figures, the animation's steps and speed, what the mouse moves, and what their buttons do.
///
/// An entry is stored as it is accepted; a field that was not changed is never read back, so that looking at a screen
/// changes nothing.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "camgeom/cam_animation.h"
#include "core/design_state.h"
#include "forms/form_table.h"
#include "linkage/linkage_drawing.h"

namespace lobemax {

// ---- the choice of the train

/// A choice of frm_LinkageType, opt_Select(0) to (3).
struct Linkage_Choice {
    int type;
    std::string_view title;
};
std::span<const Linkage_Choice> Linkage_Choices();

/// The choice that stands for the design's train.
int Choice_of_Linkage(const Design_State& design);

/// "Next" of frm_LinkageType. @throws Fault{9} for a choice that there is not
void Choose_Linkage_Type(Design_State& design, int choice);

/// The text behind the help button of a choice. @throws Fault{9}
std::string Linkage_Help(int choice);

/// The train's screen has one name by the kind of linkage: frm_Linkage, frm_CamSlider4, frm_CamSlider6.
std::string_view Screen_of_Linkage(const Design_State& design);
std::string_view Title_of_Linkage(const Design_State& design);

// ---- the train's screen: its dimensions

/// A field of the train, txt_Linkout(index), and the design's field behind it.
struct Linkout_Row : Form_Control {
    std::string_view field;
};
/// All of them, by index.
std::span<const Linkout_Row> Fields_of_Linkage();

/// Whether the train at hand has the field; the others are hidden.
bool Linkout_Shown(const Design_State& design, int index);

/// The field's text. Link 1 and Theta1 are those of the pivots as they stand. @throws Fault{9}
std::string Linkout_Text(const Design_State& design, int index);

/// Takes an entry through the door; a refused one is told and shows what stays.
Form_Entry Edit_Linkout(Design_State& design, int index, std::string_view typed);

/// What the train at hand can choose.
struct Linkage_Choices_Shown {
    bool second_stage;  // opt_Assemflag2
    bool stage_mode;    // opt_SteveWatt
    std::string_view first_stage_title;
};
Linkage_Choices_Shown Choices_of_Linkage(const Design_State& design);

/// opt_Assemflag1 and 2, (0) open, (1) crossed. @param stage  1 or 2
void Choose_Assembly(Design_State& design, int stage, bool crossed);
bool Is_Crossed(const Design_State& design, int stage);
/// opt_SteveWatt, (0) Watt, (1) Stephenson.
void Choose_Stage_Mode(Design_State& design, bool stephenson);
/// Opt_SVAJ, (0) the arm has the motion, (1) the end effector.
void Choose_Effector(Design_State& design, bool end_effector);

/// Every other captioned control of the linkage screens.
std::span<const Form_Control> Controls_of_Linkage();

/// Why there is no train to be drawn, and what to type; empty: there is one.
std::string What_to_Type(const Design_State& design);

/// cmd_Suggest: open while a length is missing. Puts all dimensions of the train, in proportion to the arm: those of
/// the examples, whose arm is 4, with O4 on a level with the arm's pivot. The train lies on the side of the pivot that
/// is away from the cam.
bool May_Suggest(const Design_State& design);
/// @return whether it was put; a refusal is told
bool Suggest_Linkage(Design_State& design);

// ---- what it does

/// Calculates without a word: points that do not connect keep their last pose, as after Ignore. While the mouse moves
/// a point, and when a screen opens. @return whether Linkage_Calc was reached
bool Calc_Linkage_Quietly(Design_State& design);

/// The extremes of the end effector with the cam angles where they occur, in the number format in force; empty texts
/// before a calculation.
struct Effector_Line {
    std::string name;
    std::string least;
    std::string least_at;
    std::string largest;
    std::string largest_at;
    std::string unit;
};
std::array<Effector_Line, 3> Effector_Lines(const Design_State& design);

/// What must be known beside them and the picture: a cam that is out of date, at how many points the links do not
/// connect, and what else figures do not show.
std::vector<std::string> Notes_of_Linkage(Design_State& design);

// ---- the animation

/// The world window of the drawing, found once while a scene is new.
struct World_Window {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
};
/// None where there is nothing to draw. Under its trap.
std::optional<World_Window> Window_of_Linkage(Design_State& design);

/// cmb_Steps: points a step, "1" to "72". The usual one is a degree of the cam.
inline constexpr std::array<int, 8> Step_Strides{1, 2, 4, 8, 12, 24, 36, 72};
int Usual_Stride(const Design_State& design);
/// @return none, after a message, for a text that the list does not have
std::optional<int> Stride_of(std::string_view text);

/// hsc_speed shares out the wait picked in cmb_wait, one of Anim_Waits.
inline constexpr int Fastest_Speed = 100;  // of hsc_speed, from 0
/// Anim_Wait by both. @throws Fault{9}
Long Wait_of(int range, int speed);

/// cmd_Step: the point whose frame is drawn, after which Link_Anim_Step stands a stride further. One beyond the cycle
/// is its beginning.
int Take_Step(Design_State& design, int stride);

/// Before an animation that runs by itself: one that stands beyond the cycle begins with its first point.
void Begin_Anew_at_End(Design_State& design);
/// Whether it goes on: at the end of each turn one less is left.
bool Play_On(const Design_State& design, int& turns_left);

/// hsc_step was moved: Link_Anim_Step follows.
///
/// At its left end no frame is drawn: meant. The picture stays a step before the end until the bar is let go, which
/// draws it; a run backwards shows one frame less of its 360.
/// @param updating  the program moves the bar: nothing follows
/// @return          whether a frame is drawn
bool Move_Step(Design_State& design, int value, bool updating);

/// txt_Cycles: revolutions of an animation that runs by itself.
Form_Entry Edit_Cycles(const Design_State& design, int& cycles, std::string_view typed);

// ---- what the mouse moves

/// Brings a point of the train to a place in the machine, each of its fields through the door.
/// @param grain  what a step of the mouse is worth; the fields get no finer figures
/// @return       whether it was accepted; a refusal is not told, the point stays
bool Move_Point(Design_State& design, Drag_Point point, const World_Point& to, double grain);

// ---- how the screen is left

/// What cmd_Run tells.
std::string Run_Advice();
/// cmd_Done: tells what a changed choice of Opt_SVAJ asks for, or a size that was lost here otherwise, as with a link
/// of a train that drives.
/// @param drove  the choice as the screen opened
/// @param sized  whether the cam was sized then
/// @return       whether the sizing screen follows
bool Linkage_Done(const Design_State& design, bool drove, bool sized);

}  // namespace lobemax
