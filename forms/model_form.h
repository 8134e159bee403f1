// SPDX-License-Identifier: GPL-3.0-or-later
/// The vibration screens without their windows: the choice of the model, its entries, figures, plots, and what their
/// buttons do.
///
/// An entry is stored as it is accepted; what a refusal puts into a field is stored when the model is calculated. A
/// field that was not changed is never read back, so that looking at a screen changes nothing.
#pragma once

#include <array>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "dynamics/vibration.h"
#include "forms/form_table.h"

namespace lobemax {

struct Design_State;

// ---- the choice of the model

/// Whether frm_ModelType asks for a model: of a force-closed cam. A form-closed one has its own.
bool Asks_Model_Type(const Design_State& design);

/// A choice of frm_ModelType, opt_PickPlot(0) to (3).
struct Model_Choice {
    int model;
    std::string_view title;
};
std::span<const Model_Choice> Model_Choices();

/// The choice that stands for the design's model; -1: none does.
int Choice_of_Model(const Design_State& design);

/// "Next" of frm_ModelType. @throws Fault{9} for a choice that there is not
void Choose_Model_Type(Design_State& design, int choice);

/// The text behind the help button of a choice: where the closing spring acts, where the mass is. @throws Fault{9}
std::string Model_Help(int choice);

/// The title of frm_Model: of the model picked.
std::string_view Title_of_Model(const Design_State& design);

// ---- the model's screen

/// The fields that are validated, by name; the first three are arrays of two.
enum class Model_Field { Mass, Spring, Zeta, Preload, x_start, t_start, t_end, eps, start_step, max_steps };

/// A field of the screen: txt_Mass(1) is {Mass, 1}. Elements count from 0 as the controls do, the design's from 1.
using Model_Place = std::pair<Model_Field, int>;

/// What the screen holds: its texts, and the figures of the run, which no design keeps.
struct Model_Form {
    std::array<std::string, 2> txt_Mass;
    std::array<std::string, 2> txt_Spring;
    std::array<std::string, 2> txt_Zeta;
    std::string txt_Preload;
    std::string txt_x_start;
    std::string txt_t_start;
    std::string txt_t_end;
    std::string txt_eps;
    std::string txt_start_step;
    std::string txt_max_steps;
    Vibration_Run run;
    bool calculated = false;        // chk_Polydyne, cmd_Done and cmd_Replot are open
    std::set<Model_Place> refused;  // whose new text is not stored yet

    std::string& Text(const Model_Place& place);
};

/// The fields that the model has: the others are hidden.
struct Model_Fields_Shown {
    bool second_mass;  // txt_Mass(1)
    bool second_spring;
    bool second_zeta;
    bool preload;
};
Model_Fields_Shown Fields_of_Model(const Design_State& design);

/// Opens frm_Model: a polydyne cam is given up, and sized as the motion's again where it was sized; the spring's copy
/// and the model's figures are refreshed. A start in a dwell from rest shows the hint.
///
/// A new design in inches shows 0.02 for its first mass (1 in the European format), and 0.03 for the second, where
/// 0.01 and 0.03 are stored: meant. What is shown is what a designer begins with, what is stored is what is calculated
/// with until he types; a mass twice as large has a natural frequency 29 % lower.
Model_Form Open_Model_Form(Design_State& design);

/// The texts of the fields that the design keeps, as it has them; those of the run stay.
void Show_Design(const Design_State& design, Model_Form& form);

/// "Make Polydyne Cam", or "Make Splinedyne Cam" where a segment is a spline.
std::string Polydyne_Caption(const Design_State& design);

/// Validates an edited field. A refused one shows its new text, after a message; of an accuracy that is too small the
/// user is asked. Any accepted change clears the plots and closes cmd_Done.
struct Model_Entry {
    bool accepted;
    std::string text;  // that the field then shows
};
/// @throws Fault{6} when the number is too large to be stored; the design is then as it was
Model_Entry Edit_Model_Field(Design_State& design, Model_Form& form, const Model_Place& place, std::string_view text);

/// The work of cmd_Calc up to its plots: what refusals left in the fields, forces, integration, response.
/// @return whether Modelflag was reached: then chk_Polydyne, cmd_Done and cmd_Replot are open
bool Calc_Model(Design_State& design, Model_Form& form);

/// Ticks or unticks chk_Polydyne: the polydyne cam is made, after its note, or given up; then the model is calculated
/// twice, as the screen has it. @return whether the box stays ticked
bool Tick_Polydyne(Design_State& design, Model_Form& form, bool ticked);

/// cmd_Done. @return whether the sizing screen follows, which makes the polydyne profile; the profile that stands is
///                   then kept as the one that is not polydyne
bool Model_Done(Design_State& design);

/// cmd_Cancel: asks whether a polydyne cam is to be abandoned; Yes gives it up and calculates again.
/// @return whether the screen is left; frm_ModelType follows where it asks, else the Home screen
bool May_Leave_Model(Design_State& design, Model_Form& form);

/// The figures as the labels show them, in the number format in force; empty where a frequency is 0.
struct Model_Texts {
    std::array<std::string, 6> lbl_OmegaN;  // rad/s, hertz, rpm of the first frequency, then of the second
    std::string lbl_FreqRatio;
    std::string lbl_Period;
    std::string lbl_T_rise;
    std::string lbl_T_natural;
    std::string lbl_Gamma;
    std::string lbl_Delta_t;
    std::string lbl_Kount;
};
/// Under its trap: a standing cam leaves the texts empty.
Model_Texts Texts_of_Model(const Design_State& design);

/// One of the four plots over time: its variable and its points, and the extremes beside them.
struct Model_Plot {
    int variable;  // of the table of variables: its name and unit
    std::span<const Single> time;
    std::span<const Single> values;
    Single smallest;
    Single largest;
    Single peak_to_peak;
};
/// S - X, X, X dot, X double dot; empty without a trajectory.
std::array<Model_Plot, 4> Plots_of_Model(const Design_State& design);

/// A field of the screen by its place: its control's name is txt_Mass(0) and so on.
struct Model_Row : Form_Control {
    Model_Place place;
};
std::span<const Model_Row> Fields_of_Model_Screen();

/// The read-outs beside the fields.
std::span<const Form_Control> Read_Outs_of_Model();

/// Every other captioned control of the two screens.
std::span<const Form_Control> Controls_of_Model();

}  // namespace lobemax
