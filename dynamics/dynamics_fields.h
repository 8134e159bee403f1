// SPDX-License-Identifier: GPL-3.0-or-later
/// The dynamics screen without its window: what it opens with, its entries, its choices and its button.
#pragma once

#include <string>
#include <string_view>

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
    bool force_closed = true;  // opt_Closure(0)
    bool start_fresh = true;   // opt_Torque(0)
};

/// What the screen shows when it opens; the choice of a flat face forces the closure by a spring.
Dynamics_Form Opening_Dynamics_Form();

/// Units and what is open or shown.
struct Dynamics_Labels {
    std::string mass;
    std::string spring;   // force per length
    std::string damping;  // force x s per length
    std::string length;
    std::string force;
    std::string torque;
    bool form_closure_enabled;  // opt_Closure(1): not for a flat face
    bool spring_frames;         // spring, preload, damping and the frequencies are shown
    bool damping_enabled;       // txt_Damping: with a spring rate of zero; txt_Zeta otherwise
    bool external_enabled;      // chk_Extforce
    bool compcam_enabled;       // chk_compcam
};
Dynamics_Labels Labels_of_Dynamics(bool force_closed, std::string_view txt_Spring);

/// The fields that are validated, by name.
enum class Dynamics_Field { Mass, Preload, Spring, Damping, Journal, Zeta, Folfrict, Jnlfrict, Fluct };

/// Validates an edited field. A refused one shows its new text, after a message; in the spring's case that text is
/// taken as the value too.
struct Dynamics_Entry {
    bool accepted;
    std::string text;
};
Dynamics_Entry Edit_Dynamics_Field(Dynamics_Field field, std::string_view text);

/// Reads the fields into the design; under a form closure spring, preload and damping become 0.
void Read_Dynamics_Fields(const Dynamics_Form& form);

/// The work of cmd_Calc up to its charts: choices, fields, forces and torques; the stresses rest on the old ones.
/// @return Dynamicflag
bool Calc_Dynamics(const Dynamics_Form& form);

/// What choosing opt_Closure(1) does beside reading and calculating: a tracked follower has the first vibration model.
void Choose_Form_Closure();

/// What choosing opt_Torque(1) does: torques accumulate, after a warning.
void Choose_Accumulate();

}  // namespace lobemax
