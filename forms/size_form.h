// SPDX-License-Identifier: GPL-3.0-or-later
/// The sizing screen without its window: its entries and choices with their checks, what the kind of cam changes on the
/// screen, and the calculation behind its button.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"

namespace lobemax {

/// The kinds of cam in the order of opt_CamType.
enum class Cam_Choice { Radial, Axial_Groove, Linear, Axial_Ribbed };
Cam_Choice Present_Cam_Choice(const Design_State& design);

/// What the controls of the sizing screen hold, texts as typed.
struct Size_Form {
    Cam_Choice cam = Cam_Choice::Radial;
    bool translating = true;
    bool roller = true;
    bool ccw = true;          // opt_Rotate(0)
    bool arm_ccw = true;      // opt_ArmRotate(0)
    bool inner_track = true;  // opt_topbot(0)
    std::string txt_Prime;    // of a linear cam its length
    std::string txt_follower;
    std::string txt_Cutter;
    std::string txt_Offset;
    std::string txt_folwrangle;
    std::string txt_CLx;
    std::string txt_CLy;
    std::string txt_ArmRadius;
    std::string txt_ShiftAng;
    std::string cmb_keyway;
};

/// What the screen opens with: every number by its shortest text, so that reading it back gives the same.
Size_Form Size_Form_of_Design(const Design_State& design);

/// The entries, each checked and stored. A refused one shows its message and the new text; what was stored stays.
Form_Entry Enter_Prime(Design_State& design, std::string_view text);
Form_Entry Enter_Roller(Design_State& design, std::string_view text);
Form_Entry Enter_Cutter(Design_State& design, std::string_view text);
Form_Entry Enter_Offset(Design_State& design, std::string_view text);
Form_Entry Enter_Follower_Angle(Design_State& design, std::string_view text);
Form_Entry Enter_Arm_Radius(Design_State& design, std::string_view text);
Form_Entry Enter_Shift_Angle(Design_State& design, std::string_view text);
void Enter_ArmX(Design_State& design, std::string_view text);  // the arm's radius is checked next, by Enter_Arm_Radius
void Enter_ArmY(Design_State& design, std::string_view text);

/// The fields and all other captioned controls of the screen, each in the order of the layout. A moved pivot tests the
/// arm against the cam as if its radius had been typed.
std::span<const Form_Field<Size_Form>> Fields_of_Size();
std::span<const Form_Control> Controls_of_Size();

/// A number stepped by the arrow keys or the wheel: by one in its second figure, from 0 by 1. In the number format in
/// force. @throws Fault{6} beyond what a field holds
std::string Step_Number(const Design_State& design, std::string_view text, int steps);

/// The choices of the option buttons, each stored with what hangs on it.
void Choose_Cam(Design_State& design, Cam_Choice choice);
void Choose_Follower_Motion(Design_State& design, bool translating);
/// A flat face makes the cam radial and its offset zero, and drives no end effector. For a translating follower the
/// smallest base radius is told.
void Choose_Follower(Design_State& design, bool roller);
/// The sense of rotation alone: Top_Bot takes the sign opposite to the one that the calculation gives it. The asymmetry
/// is meant.
void Choose_Rotation(Design_State& design, bool ccw, bool inner_track);
void Choose_Arm_Rotation(Design_State& design, bool ccw);
void Choose_Track(Design_State& design, bool inner);

/// What the kind of cam changes in words and in what is shown.
struct Size_Panels {
    std::string fra_Prime;      // "Prime Radius" or "Cam Length"
    std::string opt_Rotate[2];  // "Ccw", "Cw" or the directions of a linear cam
    std::string fra_Rotate;     // "Cam Rotation" or "Cam Direction"
    std::string lbl_Yinit;      // "y" or "z"
    bool flat_enabled;          // opt_Foltype(1)
    bool translate_panel;       // pnl_translate: offset and follower angle
    bool oscillate_panel;       // pnl_oscillate: arm
    bool arm_frame;             // fra_CL
    bool info_panel;            // pnl_info
    bool track_frame;           // fra_topbot
    bool arm_y_enabled;         // txt_CLy
};
/// Forces what the kind of cam forces and tells what the screen shows.
Size_Panels Set_Cam_Type_Panels(Design_State& design);

/// The work of cmd_Calc but its drawing.
///
/// Picks a place of the keyway, by its words.
void Choose_Keyway(Design_State& design, const std::string& words);

/// Reads all controls in their order, tests the arm (unless Autocalc is on, whose handlers have done it), calculates
/// Phi, profile and Rho. Any error is told by "Incompatible dimensions - check your data".
/// @return Sized
bool Calc_Size(Design_State& design, Size_Form& form, bool autocalc);

/// The message of cmd_Done for a cam that is not drawn, with OK and Cancel; empty for a radial cam.
std::string Axial_Cam_Message(const Design_State& design);

/// The message of choosing a linear cam, with OK and Cancel.
std::string Linear_Cam_Message();

/// The figures beside the views, as their labels show them.
struct Size_Texts {
    std::string lbl_Pamin;
    std::string lbl_Pamax;
    std::string lbl_Rhomin;  // the smallest positive and negative radius, or a word
    std::string lbl_Rhomax;
    std::string lbl_CL;    // distance of the arm's pivot from the cam centre
    std::string pnl_info;  // where the roller centre starts, and the base circle
};
Size_Texts Texts_of_Size(const Design_State& design);

/// Help texts of the screen, lines separated by '\n'.
inline constexpr std::string_view Start_Angle_Text =
    "'Starting Angle' allows you to input the timing-diagram-angle at which \n"
    "you choose to start the displacement diagram (i.e., cam zero) with respect to machine zero.";
std::string Start_Angle_Help();
std::string Linear_Help();
std::string Barrel_Help();
std::string Arm_Help();
std::string Roller_Help();
std::string Cam_Surface_Help();

}  // namespace lobemax
