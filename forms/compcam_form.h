// SPDX-License-Identifier: GPL-3.0-or-later
/// The torque compensation screen without its window: its entries, its lists, plots and figures, and what its buttons
/// do.
///
/// An accepted entry takes the last result away, so that nothing is accepted which does not belong to what stands
/// typed. The primary cam stays in memory until "Next" is answered with OK.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dynamics/torque_compensation.h"
#include "forms/form_table.h"

namespace lobemax {

/// What the screen holds: its texts, the figures of the run, which no design keeps, and the last result.
struct Compcam_Form {
    std::string txt_Mass;
    std::string txt_Spring;
    std::string txt_Preload;
    std::string txt_eps;
    std::string txt_max_steps;
    std::string txt_start_step;
    Compensation_Run run{};
    std::optional<Compensation> result{};
};

/// Whether chk_compcam of the dynamics screen is open, which opens the screen.
bool Compcam_Open(const Design_State& design);

/// Whether the screen may stay: a step finer than a degree is told of, and it closes.
bool May_Open_Compcam(const Design_State& design);

Compcam_Form Opening_Compcam_Form(const Design_State& design);

/// The fields and all other captioned controls of the screen, each in the order of the layout.
std::span<const Form_Field<Compcam_Form>> Fields_of_Compcam();
std::span<const Form_Control> Controls_of_Compcam();

/// cmd_Reset: the balancing train that a new design has, half the primary's mass, twice its spring and its preload, and
/// the figures that the screen opens with. What the primary does not have, as the spring of a form-closed cam, stays.
void Reset_Compcam(Design_State& design, Compcam_Form& form);

/// The work of cmd_Calc up to its lists and plots. @return whether there is a balancing cam: then cmd_Done,
/// cmd_Outputfile and cmd_Replot are open
bool Calc_Compcam(Design_State& design, Compcam_Form& form);

/// A list view: its heads and its rows, as texts in the number format in force. Rows of extremes have names.
struct Compcam_List {
    std::vector<std::string> heads;
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> rows;
};
/// ListView1: a row for each point. Lengths in the design's unit, of an arm along its arc; the pressure angle in
/// radians.
Compcam_List Points_of_Compcam(const Design_State& design, const Compensation& result);
/// ListView2 and ListView3: the extremes of the motion and the force, and of the torques, the pressure angle in degrees
/// and the curvature, each followed by the cam angle; rows "Max" and "Min".
Compcam_List Motion_Extremes_of_Compcam(const Design_State& design, const Compensation& result);
Compcam_List Torque_Extremes_of_Compcam(const Design_State& design, const Compensation& result);

/// A curve of a plot over the points, values as the lists show them.
struct Compcam_Curve {
    std::string_view name;
    Comp_Row values;
};
/// A plot: its title, the unit of its values, and its curves.
struct Compcam_Plot {
    std::string_view title;
    std::string unit;
    std::vector<Compcam_Curve> curves;
};
/// S, S', S'' and the three torques.
std::array<Compcam_Plot, 4> Plots_of_Compcam(const Design_State& design, const Compensation& result);

/// lbl_percent: cut to one decimal, so that it never reads better than it was computed.
double Percent_Shown(const Compensation& result);

/// The figures beside the plots, in the number format in force.
struct Compcam_Texts {
    std::string lbl_percent;
    std::string lbl_Kount;
    std::string lbl_Fmin;
};
Compcam_Texts Texts_of_Compcam(const Design_State& design, const Compensation& result);
std::span<const Form_Field<Compcam_Texts>> Read_Outs_of_Compcam();

/// Note_on_Torque_Unit for the base of seconds; in another the calculation tells of it.
std::string Note_of_Compcam(const Design_State& design);

/// Lbl_Step while a run is at work: the kind of the motion.
std::string Step_Text(const Comp_Progress& progress);

/// The question before the balancing cam takes the primary's place; Cancel gives up one that stands in memory.
/// @return whether to go on
bool Confirm_Compcam(Design_State& design);

/// cmd_Done: the question; then the primary's model is offered to be saved, and the balancing cam takes its place.
/// @return whether the sizing screen follows, which makes its profile
bool Compcam_Done(Design_State& design, const Compcam_Form& form);

/// mnu_Instructions: title and text.
inline constexpr std::string_view Compcam_Instructions_Title = "Instructions for Creating a Torque Compensating Cam";
std::string Compcam_Instructions();

}  // namespace lobemax
