// SPDX-License-Identifier: GPL-3.0-or-later
/// The import screen without its window: its entries, choices and curves, and what its buttons do.
///
/// A change of what is read or fitted takes the fit away, and any change the right to go on, so that nothing is kept
/// which does not belong to what stands on the screen. The text of the file is held: the profile follows a choice of
/// how it is read without the file being opened again.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "camgeom/profile_import.h"
#include "core/messages.h"
#include "forms/arc_form.h"
#include "forms/form_table.h"

namespace lobemax {

/// What the screen holds: its texts as typed, its choices, the profile, and how far it has got.
struct Import_Form {
    std::string txt_Omega;
    std::string txt_Base;
    std::string txt_follower;
    std::string txt_ShiftAng;
    std::string txt_Harmonics;
    std::string txt_Bound;
    Import_Coord coord = Import_Coord::RT;   // opt_Coord
    Fit_Method method = Fit_Method::spline;  // opt_Interpolate
    bool normalize = false;                  // chk_Normalize
    bool raw = false;                        // chk_Rawdata
    bool close = false;                      // chk_Close
    std::string text;                        // of the file or of arcs; empty: none was read
    Arc_Form arcs;                           // as cmd_Arcs was left by OK
    std::optional<int> Followtype;           // of the cam of arcs; none: the data are a file's
    Profile profile;
    bool stored = false;       // what stands on the screen is in the design
    bool overwritten = false;  // functions were stored over the motion that was there
};

/// An imported model opens with its speed and sizes; for any other these are to be typed, since a measured cam has its
/// own.
Import_Form Opening_Import_Form(const Design_State& design);

/// The fields and all other captioned controls of the screen, each in the order of the layout.
std::span<const Form_Field<Import_Form>> Fields_of_Import();
std::span<const Form_Control> Controls_of_Import();

/// The items of cmb_Units, unit systems 1 to 5; those of cmb_Delta are Step_Texts.
std::span<const std::string_view> Import_Units_Items();
std::string_view Import_Units_Item(const Design_State& design);

/// The item of cmb_Delta for the step in force.
std::string Step_Item(const Design_State& design);

/// An item picked or typed; one that is not listed is told of and changes nothing.
/// @return whether it is listed
bool Choose_Import_Units(Design_State& design, Import_Form& form, std::string_view item);
/// The data are to be read again afterwards, which is told.
bool Choose_Import_Step(Design_State& design, Import_Form& form, std::string_view item);

/// Translating or oscillating; what the displacements of an arm must be is told.
void Choose_Import_Motion(Design_State& design, Import_Form& form, bool translating);

/// The other choices: coordinates and the two boxes of how data are read, the method, the displacement that is kept.
void Choose_Import_Coord(Design_State& design, Import_Form& form, Import_Coord coord);
void Choose_Normalize(Design_State& design, Import_Form& form, bool normalize);
void Choose_Close(Design_State& design, Import_Form& form, bool close);
void Choose_Import_Method(Import_Form& form, Fit_Method method);
void Choose_Raw(Import_Form& form, bool raw);

/// The file dialog of cmd_Import.
File_Dialog Import_Dialog();

/// cmd_Import: asks for the file by the host and reads it. @return false when it was cancelled, or after a message: a
/// profile that was read before then stands as it was where no file was picked, else it is gone
bool Import_Data(Design_State& design, Import_Form& form);

/// cmd_Arcs, left by OK: the pairs of the cam of arcs at the step in force, as if a file of them had been read, and the
/// sizes of its follower; the follower's kind goes to the design with the functions. @return false after a message
bool Import_Arcs(Design_State& design, Import_Form& form, const Arc_Form& arcs);

/// cmd_Calc. @return false after a message
bool Fit_Functions(Design_State& design, Import_Form& form);

/// lbl_Advice: what the file must hold, shown until one was read.
std::string Advice_of_Import();

/// What cmd_Derivs tells.
std::string Derivatives_Text();

/// What became of cmd_Save_Functions.
enum class Save_Outcome {
    stored,
    refused,   // by a message, or by Cancel
    no_omega,  // OK: the cursor goes to the field that is empty
    no_base,
};
Save_Outcome Save_Imported(Design_State& design, Import_Form& form);

/// Which buttons are open.
struct Import_Buttons {
    bool cmd_Calc;
    bool fitted;  // cmd_Copy, cmd_PlotPrint, cmd_Derivs, cmd_Functions, cmd_Save_Functions
    bool cmd_Done;
};
Import_Buttons Buttons_of_Import(const Import_Form& form);
/// Which entries the method uses.
bool Harmonics_Open(const Import_Form& form);
bool Bound_Open(const Import_Form& form);

/// txt_Data: the number of data points; empty before a file was read.
std::string Data_Text(const Import_Form& form);

/// A series of grf_Plot over degrees, derivatives per degree.
struct Import_Series {
    std::string_view name;
    std::vector<double> x;
    std::vector<double> y;
};
/// A chart of grf_Plot: "RawData" and "Splined", "Veloc", "Accel", "Jerk"; one without series is empty.
struct Import_Chart {
    std::string axis;
    std::vector<Import_Series> series;
};
inline constexpr int Import_Chart_Count = 4;
std::vector<Import_Chart> Charts_of_Import(const Design_State& design, const Import_Form& form);

/// lbl_Notes: the lines of Import_Notes; empty before a fit.
std::string Notes_of_Import(const Design_State& design, const Import_Form& form);

}  // namespace lobemax
