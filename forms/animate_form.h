// SPDX-License-Identifier: GPL-3.0-or-later
/// The animation screen without its window: what is shown of the cam, the sizes that can be changed in place, the paths
/// and the zoom, and the series of pictures.
///
/// The screen draws a copy of the design, its view: the conjugate cam and the surface that the screen opens with stand
/// there, so that looking leaves the design, its results and its history alone. What is entered goes into the design,
/// and the view is made anew from it.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form_table.h"

namespace lobemax {

/// What the controls of the screen hold, texts as typed.
struct Animate_Form {
    bool conjugate = false;  // which cam is shown; the summary is that of the same one
    bool summary = false;    // opt_Show(1)
    bool outer = false;      // Opt_Surface(1)
    std::string txt_Prime;
    std::string txt_Follower;
    std::string txt_Offset;
};

/// The screen opens: the primary cam with its inner surface, no path, the cam at rest; a zoom beyond its range is 1.
Animate_Form Open_Animation(Design_State& design);
/// The sizes as the design holds them.
void Show_Sizes(const Design_State& design, Animate_Form& form);

std::span<const Form_Field<Animate_Form>> Fields_of_Animate();
std::span<const Form_Control> Controls_of_Animate();

/// The paths, in the order of their check boxes; each excludes the others.
enum class Anim_Path { none, follower, cutter, machine_zero };
Anim_Path Present_Path(const Design_State& design);
/// A box was ticked or cleared. The cam at machine zero is seen alone; with anything else its outline at cam zero is.
void Choose_Path(Design_State& design, Anim_Path path, bool ticked);

/// opt_Show: the primary cam, the summary of the cam that was shown, the conjugate.
void Choose_Show(Animate_Form& form, int choice);
/// Opt_Surface: In_Out, inner or outer; the paths go.
void Choose_Surface(Design_State& design, Animate_Form& form, bool outer);
/// opt_Rotate: Rotflag.
void Choose_Turning(Design_State& design, bool ccw);

/// Sizes the cam again after a change; where nothing has changed nothing falls.
/// @return whether it is sized
bool Size_Animated(Design_State& design);

/// The cam that the screen shows. Its conjugate stands opposite: Follower_Angle + 180, of a translating follower the
/// offset to the other side, and the design's own values stay what they are.
/// @param view  out: a copy of the design, calculated for what is shown
/// @return      false, after a message, where it cannot be calculated
bool Make_View(const Design_State& design, const Animate_Form& form, Design_State& view);
/// Brings from one to the other what needs no calculation: flags of the paths, zoom, step and speed.
void Follow_Settings(const Design_State& from, Design_State& to);

/// What is shown and open.
struct Animate_Panels {
    bool picture;         // pct_Cam
    bool charts;          // pct_Pang, pct_Radcurv
    bool motion;          // hsc_step, cmd_Step, cmd_Run, mnu_Save
    bool follower_entry;  // a flat face has no radius
    bool offset_entry;    // a roller on an arm has none
    bool done;
};
Animate_Panels Panels_of_Animate(const Design_State& design, const Animate_Form& form);

/// The summary's figures as its labels show them: each extreme with its cam angle, or a word.
struct Animate_Figures {
    std::string lbl_Pamin;
    std::string lbl_Pamax;
    std::string lbl_Rhomin;  // smallest positive radius
    std::string lbl_Rhomax;  // smallest negative one
    std::string lbl_Rholargest_pos;
    std::string lbl_Rholargest_neg;
    bool clipped;  // the curve of the radius is cut off: its extremes are not those of the cam
};
/// Empty where the view is not sized.
Animate_Figures Figures_of_Animate(const Design_State& view);

/// pnl_Profile: the name of the profile that the view draws.
std::string Profile_Name(const Design_State& view);

/// Beside the choice of a surface while the design's own is the other one, as after opening; else empty.
std::string Surface_Note(const Design_State& design, const Animate_Form& form);

/// The zoom menu: nearer by so many steps, farther by negative ones; 0 is the picture as it was computed. Within a
/// range beyond which there is nothing to see.
void Zoom_Animation(Design_State& design, int steps);

/// cmb_wait: Anim_Wait. @param place  in the list of speeds
void Choose_Wait(Design_State& design, int place);
/// lbl_theta: cam angle of a point.
std::string Theta_Text(const Design_State& design, int i);

std::string Animate_Done_Message();
// ---- the series of pictures

/// A choice of the distance from picture to picture.
struct Picture_Stride {
    std::string words;
    int points;
    friend bool operator==(const Picture_Stride&, const Picture_Stride&) = default;
};
/// Every point of the table, then whole degrees.
std::vector<Picture_Stride> Picture_Strides(const Design_State& design);
/// Place of the one that a run has.
int Usual_Picture_Stride(const Design_State& design);

/// Path of one of so many pictures: "turn.png" is "turn_000.png", "turn_001.png" and so on.
std::string Picture_Path(std::string_view name, int number, int count);

/// Writes a picture of a point to a path. @param why  out: what went wrong
using Write_Picture = std::function<bool(int point, const std::string& path, std::string& why)>;

/// Writes the pictures of one turn, that of its end left out: shown over and over they turn on without a halt. Older
/// pictures are replaced once the user says so. Ends at the first that cannot be written; tells what there is.
/// @param stop  told how many are done; true ends the series
/// @return      how many were written
int Save_Pictures(const Design_State& design, std::string_view name, int stride, const Write_Picture& write,
                  const std::function<bool(int done, int count)>& stop);

}  // namespace lobemax
