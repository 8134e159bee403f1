// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/compcam_form.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/train_rules.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/model_file.h"
#include "forms/drive_words.h"

namespace lobemax {

namespace {

constexpr std::string_view usual_accuracy = "0.001";

void Fill_Train(const Design_State& design, Compcam_Form& form)
{
    const Dynamics_Group& d = design.dynamics;
    form.txt_Mass = Shown(design, d.Comp_Mass);
    form.txt_Spring = Shown(design, d.Comp_Spring_Rate);
    form.txt_Preload = Shown(design, d.Comp_Preload);
}

std::string Whole(Long value)
{
    return std::to_string(value);
}

void Fill_Run(const Design_State& design, Compcam_Form& form)
{
    form.txt_eps = Shown(design, form.run.eps);
    form.txt_max_steps = Whole(form.run.max_steps);
    form.txt_start_step = Shown(design, form.run.start_step);
}

Form_Entry Accepted(Compcam_Form& form, std::string_view typed)
{
    form.result.reset();
    return {.accepted = true, .text = std::string(typed), .disable_done = true};
}

/// An entry of the balancing train, which is the design's.
Form_Entry Edit_Train(Design_State& design, Compcam_Form& form, std::string_view field, const Single& stored,
                      std::string_view typed)
{
    const Verdict verdict = Put(design, field, Val(design, typed));
    if (verdict)
        return Accepted(form, typed);
    Show_Refusal(verdict);
    return {false, Shown(design, stored)};
}

Form_Entry Edit_Mass(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    return Edit_Train(design, form, "Comp_Mass", design.dynamics.Comp_Mass, typed);
}

Form_Entry Edit_Spring(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    return Edit_Train(design, form, "Comp_Spring_Rate", design.dynamics.Comp_Spring_Rate, typed);
}

Form_Entry Edit_Preload(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    return Edit_Train(design, form, "Comp_Preload", design.dynamics.Comp_Preload, typed);
}

/// Whether a figure of the run may be; a refusal is told.
bool Figure_Accepted(double figure)
{
    const Verdict verdict = Figure_may_be(figure);
    if (!verdict)
        Show_Refusal(verdict);
    return static_cast<bool>(verdict);
}

Form_Entry Edit_Accuracy(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    const Single eps = Val(design, typed);
    if (!Figure_Accepted(eps))
        return {false, Shown(design, form.run.eps)};
    const bool stands = Accept_Accuracy(Val(design, typed));
    form.run.eps = stands ? double{eps} : Val(usual_accuracy, Decimal_Symbol::point);
    return Accepted(form, stands ? std::string(typed) : In_Number_Format(design, usual_accuracy));
}

Form_Entry Edit_Max_Steps(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    const double steps = FNRound(Val(design, typed), 0);
    if (!Figure_Accepted(steps))
        return {false, Whole(form.run.max_steps)};
    if (steps > std::numeric_limits<Long>::max())
        throw Fault{overflow};
    form.run.max_steps = static_cast<Long>(steps);
    return Accepted(form, Whole(form.run.max_steps));
}

Form_Entry Edit_Start_Step(Design_State& design, Compcam_Form& form, std::string_view typed)
{
    const Single step = Val(design, typed);
    if (!Figure_Accepted(step))
        return {false, Shown(design, form.run.start_step)};
    form.run.start_step = step;
    return Accepted(form, typed);
}

constexpr std::array fields{
    Form_Field<Compcam_Form>{
        {"txt_Mass", "Comp Mass", "Effective mass of the compensating follower train - must be in mass units",
         Form_Unit::mass},
        &Compcam_Form::txt_Mass,
        Edit_Mass},
    Form_Field<Compcam_Form>{
        {"txt_Spring", "Comp Spring", "Spring rate of the compensating follower", Form_Unit::spring},
        &Compcam_Form::txt_Spring,
        Edit_Spring},
    Form_Field<Compcam_Form>{{"txt_Preload", "Comp Preload",
                              "Load of that spring with its follower at its lowest position", Form_Unit::force},
                             &Compcam_Form::txt_Preload,
                             Edit_Preload},
    Form_Field<Compcam_Form>{{"txt_eps", "Accuracy", "Largest error of a step, as a share of the state"},
                             &Compcam_Form::txt_eps,
                             Edit_Accuracy},
    Form_Field<Compcam_Form>{{"txt_max_steps", "Max Steps", "The integration of a motion gives up after so many"},
                             &Compcam_Form::txt_max_steps,
                             Edit_Max_Steps},
    Form_Field<Compcam_Form>{{"txt_start_step", "Start Step", "First step of a motion, seconds"},
                             &Compcam_Form::txt_start_step,
                             Edit_Start_Step},
};

constexpr std::array read_outs{
    Form_Field<Compcam_Texts>{{"lbl_percent", "Torque Reduced % ",
                               "By so much the largest net torque is below the largest "
                               "primary torque, inertia components only"},
                              &Compcam_Texts::lbl_percent},
    Form_Field<Compcam_Texts>{{"lbl_Kount", "Iterations", "Steps of the integration"}, &Compcam_Texts::lbl_Kount},
    Form_Field<Compcam_Texts>{
        {"lbl_Fmin", "Smallest Force", "Contact force of the compensating follower", Form_Unit::force},
        &Compcam_Texts::lbl_Fmin},
};

constexpr std::array controls{
    Form_Control{"frm_CompCam", "Torque Compensation"},
    Form_Control{"lbl_Notes", "", "What the units do not say"},
    Form_Control{"pgs_step", "", "Share of the cycle that is calculated"},
    Form_Control{"Lbl_Step", "", "Motion of the compensating follower at work"},
    Form_Control{"ListView1", "", "Motion, torques and force of each point"},
    Form_Control{"ListView2", "", "Extremes of motion and force"},
    Form_Control{"ListView3", "", "Extremes of torques and geometry"},
    Form_Control{"cmd_Stop", "&Stop", "Ends the integration"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Calc", "&Calculate"},
    Form_Control{"cmd_Replot", "Replot"},
    Form_Control{"cmd_Reset", "&Reset",
                 "Half the mass of the primary follower, twice its spring rate, and its preload"},
    Form_Control{"cmd_Outputfile", "&Output File"},
    Form_Control{"cmd_Print", "&Print Form"},
    Form_Control{"cmd_Copy", "Cop&y"},
    Form_Control{"cmd_Done", "&Next >"},
    Form_Control{"mnu_Instructions", "&Instructions"},
};

/// Six figures: what the eye compares.
std::string Six_Figures(const Design_State& design, double value)
{
    return In_Figures(design, value, 6);
}

/// A column of the lists: its head, its unit, its values as shown.
struct Column {
    std::string_view head;
    std::string unit;
    Comp_Row values;

    std::string Head() const { return std::string(head) + " (" + unit + ")"; }
};

Comp_Row Scaled(const Comp_Row& row, double factor)
{
    Comp_Row scaled = row;
    for (double& value : scaled)
        value *= factor;
    return scaled;
}

/// The design's unit of length, along an arm's arc.
double Lengths_Shown(const Design_State& design)
{
    return design.motion.Time_Base == 1 ? Length_Divisor(design) : 1.0;
}

std::array<Column, 3> Motion_Columns_of(const Design_State& design, const Compensation& c)
{
    const double factor = Lengths_Shown(design);
    const std::string length = Unit_Word(design, Form_Unit::length);
    return {Column{"S", length, Scaled(c.S, factor)}, Column{"S'", length + "/s", Scaled(c.V, factor)},
            Column{"S''", length + "/s^2", Scaled(c.A, factor)}};
}

std::array<Column, 3> Torque_Columns_of(const Design_State& design, const Compensation& c)
{
    const std::string torque = Unit_Word(design, Form_Unit::torque);
    return {Column{"Tp", torque, c.Tp}, Column{"Tc", torque, c.Tc}, Column{"Tp+Tc", torque, c.net}};
}

Column Force_Column(const Design_State& design, const Compensation& c)
{
    return {"F", Unit_Word(design, Form_Unit::force), c.F};
}

Column Curvature_Column(const Design_State& design, const Compensation& c)
{
    return {"rho", Unit_Word(design, Form_Unit::length), c.rho};
}

std::string Angle(const Design_State& design, std::size_t point)
{
    return Shown(design, static_cast<double>(point) * design.motion.Deltatheta);
}

Compcam_List Extremes_of(const Design_State& design, const std::vector<Column>& columns)
{
    Compcam_List list;
    list.names = {"Max", "Min"};
    list.rows.resize(2);
    for (const Column& column : columns) {
        list.heads.push_back(column.Head());
        list.heads.emplace_back("theta");
        const auto& values = column.values;
        const auto largest = static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
        const auto smallest = static_cast<std::size_t>(std::min_element(values.begin(), values.end()) - values.begin());
        for (const auto& [row, at] : {std::pair{0U, largest}, std::pair{1U, smallest}}) {
            list.rows[row].push_back(Six_Figures(design, values[at]));
            list.rows[row].push_back(Angle(design, at));
        }
    }
    return list;
}

}  // namespace

bool Compcam_Open(const Design_State& design)
{
    return Holds(design, Mark::forces);
}

bool May_Open_Compcam(const Design_State& design)
{
    return Points_a_Degree_Apart(design);
}

Compcam_Form Opening_Compcam_Form(const Design_State& design)
{
    Compcam_Form form;
    Fill_Train(design, form);
    Fill_Run(design, form);
    return form;
}

std::span<const Form_Field<Compcam_Form>> Fields_of_Compcam()
{
    return fields;
}

std::span<const Form_Field<Compcam_Texts>> Read_Outs_of_Compcam()
{
    return read_outs;
}

std::span<const Form_Control> Controls_of_Compcam()
{
    return controls;
}

void Reset_Compcam(Design_State& design, Compcam_Form& form)
{
    const Dynamics_Group& d = design.dynamics;
    // A value that may not be is not one that the primary has: the balancing train keeps its own.
    Put(design, "Comp_Mass", d.Mass / 2.0);
    Put(design, "Comp_Spring_Rate", 2.0 * d.Return_Spring_Rate);
    Put(design, "Comp_Preload", d.Preload);
    form = Opening_Compcam_Form(design);
}

bool Calc_Compcam(Design_State& design, Compcam_Form& form)
{
    form.result.reset();
    Compensation result;
    if (!Run_Compensation(design, form.run, result))
        return false;
    form.result = std::move(result);
    return true;
}

Compcam_List Points_of_Compcam(const Design_State& design, const Compensation& result)
{
    std::vector<Column> columns;
    for (const auto& group : {Motion_Columns_of(design, result), Torque_Columns_of(design, result)})
        columns.insert(columns.end(), group.begin(), group.end());
    columns.push_back({"phi", "rad", Scaled(result.phi, Rad_per_Deg)});
    columns.push_back(Curvature_Column(design, result));
    columns.push_back(Force_Column(design, result));
    Compcam_List list;
    list.heads = {"Theta (deg)"};
    for (const Column& column : columns)
        list.heads.push_back(column.Head());
    for (std::size_t i = 0; i <= Comp_Points; ++i) {
        std::vector<std::string> row{Angle(design, i)};
        for (const Column& column : columns)
            row.push_back(Six_Figures(design, column.values[i]));
        list.rows.push_back(std::move(row));
    }
    return list;
}

Compcam_List Motion_Extremes_of_Compcam(const Design_State& design, const Compensation& result)
{
    const auto motion = Motion_Columns_of(design, result);
    std::vector<Column> columns(motion.begin(), motion.end());
    columns.push_back(Force_Column(design, result));
    return Extremes_of(design, columns);
}

Compcam_List Torque_Extremes_of_Compcam(const Design_State& design, const Compensation& result)
{
    const auto torques = Torque_Columns_of(design, result);
    std::vector<Column> columns(torques.begin(), torques.end());
    columns.push_back({"phi", "deg", result.phi});
    columns.push_back(Curvature_Column(design, result));
    return Extremes_of(design, columns);
}

std::array<Compcam_Plot, 4> Plots_of_Compcam(const Design_State& design, const Compensation& result)
{
    const auto motion = Motion_Columns_of(design, result);
    const auto torques = Torque_Columns_of(design, result);
    const auto plot = [](std::string_view title, const Column& column) {
        return Compcam_Plot{title, column.unit, {{column.head, column.values}}};
    };
    std::array<Compcam_Plot, 4> plots{plot("Displacement of compensating follower", motion[0]),
                                      plot("Velocity of compensating follower", motion[1]),
                                      plot("Acceleration of compensating follower", motion[2]),
                                      plot("Primary, compensating and net torque", torques[0])};
    for (const std::size_t k : {1U, 2U})
        plots[3].curves.push_back({torques[k].head, torques[k].values});
    return plots;
}

Compcam_Texts Texts_of_Compcam(const Design_State& design, const Compensation& result)
{
    Compcam_Texts texts;
    texts.lbl_percent = In_Number_Format(design, Shortest(Percent_Shown(result)));
    texts.lbl_Kount = Whole(result.steps);
    texts.lbl_Fmin = Six_Figures(design, result.smallest_force);
    return texts;
}

double Percent_Shown(const Compensation& result)
{
    return std::floor(result.percent * 10.0) / 10.0;
}

std::string Note_of_Compcam(const Design_State& design)
{
    return design.motion.Time_Base == 1 ? Note_on_Torque_Unit(design) : std::string();  // others: the calculation tells
}

std::string Step_Text(const Comp_Progress& progress)
{
    return std::string(Name_of(progress.kind));
}

bool Confirm_Compcam(Design_State& design)
{
    const Answer answer = Show_Message(
        "You are about to overwrite the primary cam data in memory\n"
        "with this compensating cam data.  If you have not yet\n"
        "saved the model for the primary cam you must do so now\n"
        "or you will lose that data.  \n"
        "Then you will be taken to the Size Cam screen to create the\n"
        "profile for the compensating cam.\n"
        "If you do not want to do this, hit 'Cancel' and then use the\n"
        "'Back' button to exit this form without overwriting any data.",
        Buttons::OK_Cancel, Symbol::exclamation);
    if (answer == Answer::OK)
        return true;
    Apply(design, Event::compensation_given_up);
    return false;
}

bool Compcam_Done(Design_State& design, const Compcam_Form& form)
{
    if (!form.result || !Confirm_Compcam(design))
        return false;
    SaveAs(design, "");
    return Take_Compensation(design, *form.result);
}

std::string Compcam_Instructions()
{
    return "A torque compensation cam generates a torque opposite to that of the primary cam \n"
           "in order to cancel the inertia torque on the camshaft completely.  The 'Calculate' button will \n"
           "compute the displacement, velocity and acceleration functions needed to accomplish this.  \n"
           "It can only cancel the inertia components of torque.  Any torque due to damping will remain.\n"
           "The 'Torque Reduced % ' reported at the left is for inertia components only.\n"
           "\n"
           "Enter the effective mass, the spring rate and the preload of the compensating follower train: \n"
           "its cam is on the same shaft.  A stiffer spring gives it a smaller lift; a larger preload a larger \n"
           "force on the cam.  Where the figures show a contact force that is not positive, the follower would \n"
           "leave its cam: raise the spring rate or the preload, or make the mass smaller.\n"
           "Accuracy, Max Steps and Start Step belong to the integration; their first values serve most cams.\n"
           "\n"
           "'Next' puts the compensating cam in the place of the primary cam, to be sized and exported: save the \n"
           "primary cam's model before.  'Back' leaves the primary cam as it is.";
}

}  // namespace lobemax
