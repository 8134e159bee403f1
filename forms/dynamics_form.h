// SPDX-License-Identifier: GPL-3.0-or-later
/// The dynamics screen without its window: what it opens with, its entries, its choices and its button.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"

namespace lobemax {

/// What the fields of the dynamics screen hold, as typed.
struct Dynamics_Form {
    std::string txt_Mass;
    std::string txt_Preload;
    std::string txt_Spring;
    std::string txt_Damping;
    std::string txt_Zeta;
    std::string txt_Journal;  // the diameter
    std::string txt_Folfrict;
    std::string txt_Jnlfrict;
    std::string txt_Fluct;
    bool force_closed = true;   // opt_Closure(0)
    bool start_fresh = true;    // opt_Torque(0)
    bool add_external = false;  // chk_Extforce
};

/// What the screen shows when it opens; the choice of a flat face forces the closure by a spring.
Dynamics_Form Opening_Dynamics_Form(const Design_State& design);

/// What is open or shown.
struct Dynamics_Openings {
    bool form_closure_enabled;  // opt_Closure(1): not for a flat face
    bool spring_frames;         // spring, preload, damping and the frequencies are shown
    bool damping_enabled;       // txt_Damping: with a spring rate of zero; txt_Zeta otherwise
    bool external_enabled;      // chk_Extforce
    bool compcam_enabled;       // chk_compcam
};
Dynamics_Openings Openings_of_Dynamics(const Design_State& design, bool force_closed, std::string_view txt_Spring);

/// The fields that are validated, by name.
enum class Dynamics_Field { Mass, Preload, Spring, Damping, Journal, Zeta, Folfrict, Jnlfrict, Fluct };

/// Whether an entry hides the charts before anything else happens to it: while torques accumulate.
bool Dynamics_Entry_Hides_Charts(const Design_State& design);

/// Validates an edited field. A refused one shows its new text, after a message; in the spring's case that text is
/// taken as the value too. While torques accumulate nothing is recalculated, so that no cam counts twice; otherwise an
/// accepted one recalculates at once, over the charts that are shown.
/// @throws Fault{6} when the number is too large to be stored; the design is then as it was
Form_Entry Edit_Dynamics_Field(Design_State& design, Dynamics_Field field, std::string_view text);

/// Reads the fields into the design, under its trap; under a form closure spring, preload and damping become 0. The
/// damping coefficient is not read: its entry has stored it, and a spring replaces it.
/// @return false after a number too large to be stored: none of the fields is then stored
bool Read_Dynamics_Fields(Design_State& design, const Dynamics_Form& form);

/// The work of cmd_Calc up to its charts: choices, fields, forces and torques; the stresses rest on the old ones.
/// @return whether the fields were read and the calculation ran, to its end (Dynamicflag) or to the user's abort: after
/// a fault its figures are none
bool Calc_Dynamics(Design_State& design, const Dynamics_Form& form);

/// Choosing opt_Closure, by form.force_closed: a tracked follower has the first vibration model; then fields and
/// calculation. The charts are hidden before.
/// @return as Calc_Dynamics
bool Choose_Closure(Design_State& design, const Dynamics_Form& form);

/// What choosing opt_Torque(1) does: torques accumulate, after a warning.
void Choose_Accumulate(Design_State& design);

/// Choosing opt_Torque(0): the next torque overwrites the last; calculates at once. The charts are hidden before.
/// @return as Calc_Dynamics
bool Choose_Start_Fresh(Design_State& design, Dynamics_Form& form);

/// chk_Extforce: the external force joins the follower's; calculates at once.
/// @return as Calc_Dynamics
bool Tick_Add_External_Force(Design_State& design, Dynamics_Form& form, bool ticked);

/// The figures as the labels show them, in the number format in force: forces, torque and frequencies with one decimal,
/// damping with two. The last four are empty without a spring: the labels keep what they show.
struct Dynamics_Texts {
    std::string lbl_Fmax;
    std::string lbl_Fmin;
    std::string lbl_Tmax;
    std::string lbl_OmegaN;
    std::string lbl_OmegaD;
    std::string lbl_Cc;
    std::string txt_Damping;
};
struct Dynamics_Figures;
Dynamics_Texts Texts_of_Dynamics(const Design_State& design, const Dynamics_Figures& figures);

/// Whether closing the window acts as cmd_Done; otherwise it acts as cmd_Cancel.
bool Closing_Dynamics_Is_Done(const Design_State& design);

/// The fields, the read-outs and all other captioned controls of the screen, each in the order of the layout.
std::span<const Form_Field<Dynamics_Form>> Fields_of_Dynamics();
std::span<const Form_Field<Dynamics_Texts>> Read_Outs_of_Dynamics();
std::span<const Form_Control> Controls_of_Dynamics();

}  // namespace lobemax
