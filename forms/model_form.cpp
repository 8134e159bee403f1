// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/model_form.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "edit/rungs.h"

namespace lobemax {

namespace {

constexpr std::array choices{
    Model_Choice{5, "Two-Mass SDOF Model - Spring at end effector"},
    Model_Choice{2, "One-Mass SDOF Model - Spring at end effector"},
    Model_Choice{3, "One-Mass SDOF Model - Spring at cam follower"},
    Model_Choice{4, "Two-Mass SDOF Model - Spring at cam follower"},
};
constexpr std::string_view form_closed_title = "One-Mass SDOF Model - Form-closed cam";

const Model_Choice& Choice_at(int choice)
{
    return choices[Checked_Place(choice, 0, static_cast<int>(choices.size()) - 1)];
}

bool Two_Masses(int model)
{
    return model == 4 || model == 5;
}

bool Spring_at_End(int model)
{
    return model == 2 || model == 5;
}

using enum Model_Field;

constexpr std::array fields{
    Model_Row{{"txt_Mass(0)", "Mass m&1", "Effective mass - must be in mass units", Form_Unit::mass}, {Mass, 0}},
    Model_Row{{"txt_Mass(1)", "Mass m&2", "Effective mass at the end of the follower train", Form_Unit::mass},
              {Mass, 1}},
    Model_Row{{"txt_Spring(0)", "Spring &k1", "Stiffness of the first spring of the picture", Form_Unit::spring},
              {Spring, 0}},
    Model_Row{{"txt_Spring(1)", "&Spring k2", "Stiffness of the second spring of the picture", Form_Unit::spring},
              {Spring, 1}},
    Model_Row{{"txt_Zeta(0)", "&Damping ratio z1", "Dimensionless, from 0 to 1"}, {Zeta, 0}},
    Model_Row{{"txt_Zeta(1)", "Damping ratio &z2", "Dimensionless, from 0 to 1"}, {Zeta, 1}},
    Model_Row{{"txt_Preload", "Spring Pre&load", "Closure spring's load at assembly", Form_Unit::force}, {Preload, 0}},
    Model_Row{{"txt_x_start", "&x-Initial", "Displacement of the mass at the start", Form_Unit::length}, {x_start, 0}},
    Model_Row{{"txt_t_start", "S&tart Time", "Seconds"}, {t_start, 0}},
    Model_Row{{"txt_t_end", "&End Time", "Seconds: more than two cam cycles, so that transients die out"}, {t_end, 0}},
    Model_Row{{"txt_eps", "&Accuracy", "Largest error of a step, as a share of the state"}, {eps, 0}},
    Model_Row{{"txt_start_step", "Start Ste&p", "Seconds: the first step that is tried"}, {start_step, 0}},
    Model_Row{{"txt_max_steps", "&Max Steps", "The integration gives up after so many"}, {max_steps, 0}},
};

constexpr std::array read_outs{
    Form_Control{"lbl_Period", "Cam Period", "Seconds a turn of the cam"},
    Form_Control{"lbl_T_rise", "Motion Period", "Seconds of the shortest segment"},
    Form_Control{"lbl_T_natural", "Nat. Period 1/ f1", "Seconds a natural vibration"},
    Form_Control{"lbl_Gamma", "Gamma Ratio", "Motion period over natural period"},
    Form_Control{"lbl_FreqRatio", "Frequency Ratio", "Camshaft speed over the natural frequency"},
    Form_Control{"lbl_Delta_t", "Delta t", "Smallest distance of the stored points, seconds"},
    Form_Control{"lbl_Kount", "Points", "Points of the trajectory that are stored"},
};

constexpr std::array controls{
    Form_Control{"frm_ModelType", "Vibration Model"},
    Form_Control{"opt_PickPlot(0)", choices[0].title},
    Form_Control{"opt_PickPlot(1)", choices[1].title},
    Form_Control{"opt_PickPlot(2)", choices[2].title},
    Form_Control{"opt_PickPlot(3)", choices[3].title},
    Form_Control{"cmd_Help(0)", "&1  Help", "Where the spring acts, where the mass is"},
    Form_Control{"cmd_Help(1)", "&2  Help", "Where the spring acts, where the mass is"},
    Form_Control{"cmd_Help(2)", "&3  Help", "Where the spring acts, where the mass is"},
    Form_Control{"cmd_Help(3)", "&4  Help", "Where the spring acts, where the mass is"},
    Form_Control{"fra_Model", "Model"},
    Form_Control{"fra_Solver", "Solution"},
    Form_Control{"fra_Figures", "Frequencies and periods"},
    Form_Control{"opt_Solver(0)", "R&unge Kutta"},
    Form_Control{"opt_Solver(1)", "Gear", "No Gear integrator is part of this program: use Runge Kutta"},
    Form_Control{"opt_Color(0)", "Color Plots"},
    Form_Control{"opt_Color(1)", "Gray Plots"},
    Form_Control{"chk_Vertline", "&Vertical Grid"},
    Form_Control{
        "chk_Polydyne", "Make Polydyne Cam",
        "Choose the time base of radians first: per second its velocity, pressure angle, curvature and surface "
        "are not those of its displacement"},
    Form_Control{"lbl_Notes", "", "What mechanics has beside these figures"},
    Form_Control{"cmd_Stop", "St&op", "Ends the integration, as Cancel in its questions does"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_Print", "Print &Form"},
    Form_Control{"cmd_Calc", "&Calculate", "Forces, then the response over two turns of the cam or more"},
    Form_Control{"cmd_Replot", "&Replot"},
    Form_Control{"cmd_Done", "&Next >"},
};

}  // namespace

bool Asks_Model_Type(const Design_State& design)
{
    return design.cam.Closure != "Form";
}

std::span<const Model_Choice> Model_Choices()
{
    return choices;
}

int Choice_of_Model(const Design_State& design)
{
    for (std::size_t k = 0; k < choices.size(); ++k)
        if (choices[k].model == design.dynamics.Model_Type)
            return static_cast<int>(k);
    return -1;
}

void Choose_Model_Type(Design_State& design, int choice)
{
    Put(design, "Model_Type", Choice_at(choice).model);
}

std::string Model_Help(int choice)
{
    const int model = Choice_at(choice).model;
    const bool at_end = Spring_at_End(model);
    std::string text = "This model is for systems that have the joint-closure 'spring'\n";
    text += at_end ? "acting at the end of the follower train\n"
                   : "acting close to the cam and a significant amount of\n"
                     "follower mass 'downstream' of the joint-closure spring.\n";
    text += Two_Masses(model) ? "This model splits the mass of the follower train \n"
                                "into two masses, one located at the roller follower.\n"
                                "and one located at the end of the follower train\n"
                              : "This model also lumps the entire mass of the follower train \n"
                                "as a single mass located at the roller follower.\n";
    const std::string train = at_end ? "k1" : "k2";
    const std::string closing = at_end ? "k2" : "k1";
    return text + "The effective spring rate " + train + " of the follower system is distinct\nfrom the spring rate " +
           closing + " of the joint-closure spring.";
}

std::string_view Title_of_Model(const Design_State& design)
{
    const int choice = Choice_of_Model(design);
    return choice < 0 ? form_closed_title : Choice_at(choice).title;
}

std::string& Model_Form::Text(const Model_Place& place)
{
    const auto element = Checked_Place(place.second, 0, 1);
    switch (place.first) {
    case Model_Field::Mass:
        return txt_Mass[element];
    case Model_Field::Spring:
        return txt_Spring[element];
    case Model_Field::Zeta:
        return txt_Zeta[element];
    case Model_Field::Preload:
        return txt_Preload;
    case Model_Field::x_start:
        return txt_x_start;
    case Model_Field::t_start:
        return txt_t_start;
    case Model_Field::t_end:
        return txt_t_end;
    case Model_Field::eps:
        return txt_eps;
    case Model_Field::start_step:
        return txt_start_step;
    case Model_Field::max_steps:
        return txt_max_steps;
    }
    throw Fault{internal_error};
}

Model_Fields_Shown Fields_of_Model(const Design_State& design)
{
    const int model = design.dynamics.Model_Type;
    const bool force_closed = model != Form_Closed_Model;
    return {Two_Masses(model), force_closed, force_closed, force_closed};
}

namespace {

bool Europe(const Design_State& design)
{
    return design.identity.Number_Format == "Europe";
}

/// Whether the masses are the ones that a new design in inches starts with.
bool New_in_Inches(const Design_State& design)
{
    const Pair<Single>& m = design.dynamics.Mass_m;
    return design.identity.WhichUnit == 1 && !design.flags.From_Disk && m(1) == Single(0.01) && m(2) == Single(0.03);
}

std::string Twice_the_Period(const Design_State& design)
{
    std::string text;
    Trap("Twice_the_Period", [&] { text = Format_Picture(design, 2 * Cam_Period(design), "0.000"); });
    return text;
}

/// What a refused field shows.
std::string Text_Instead(const Design_State& design, Model_Field field)
{
    const auto shown = [&](std::string_view text) { return In_Number_Format(design, text); };
    switch (field) {
    case Model_Field::Mass:
        return Europe(design) ? "1" : "0.01";
    case Model_Field::Spring:
        return "1";
    case Model_Field::Zeta:
        return shown("0.05");
    case Model_Field::Preload:
        return "10";
    case Model_Field::t_end:
        return Twice_the_Period(design);
    case Model_Field::eps:
        return shown("0.001");
    case Model_Field::start_step:
        return shown("0.0001");
    case Model_Field::x_start:
    case Model_Field::t_start:
    case Model_Field::max_steps:
        return "0";
    }
    throw Fault{internal_error};
}

/// Preload as this screen has it: none is allowed, where the door asks for one.
Verdict Put_Preload(Design_State& design, double value)
{
    if (value != 0.0)
        return Put(design, "Preload", value);
    design.dynamics.Preload = 0.0;
    Apply(design, Event::closing_spring_edited);
    return {};
}

/// Whether the value may be, by the screen's own words.
Verdict Entry_may_be(const Design_State& design, const Model_Place& place, double value)
{
    const int element = place.second + 1;
    switch (place.first) {
    case Model_Field::Mass:
        return Query(design, "Mass_m", At(element), value);
    case Model_Field::Spring:
        return Query(design, "Kspring", At(element), value);
    case Model_Field::Zeta:
        return Query(design, "Zeta", At(element), value);
    case Model_Field::Preload:
        return Preload_of_Model_may_be(value);
    case Model_Field::x_start:
        return Query(design, "x-Initial", value);
    case Model_Field::max_steps:
        return Query(design, "Ode_Max_Steps", value);
    case Model_Field::t_end:
        return End_Time_may_be(design, value);
    case Model_Field::t_start:
    case Model_Field::eps:
    case Model_Field::start_step:
        return Not_Below_Zero_may_be(value);
    }
    throw Fault{internal_error};
}

/// A count of steps as the field holds it. @throws Fault{6} beyond 32 bits
double Whole_Steps(double value)
{
    constexpr double most = 2147483647.0;
    if (value > most)
        throw Fault{overflow};
    return FNRound(value, 0);
}

void Store_Entry(Design_State& design, Model_Form& form, const Model_Place& place, double value)
{
    const int element = place.second + 1;
    Vibration_Run& run = form.run;
    switch (place.first) {
    case Model_Field::Mass:
        Put(design, "Mass_m", At(element), value);
        return;
    case Model_Field::Spring:
        Put(design, "Kspring", At(element), value);
        return;
    case Model_Field::Zeta:
        Put(design, "Zeta", At(element), value);
        return;
    case Model_Field::Preload:
        Put_Preload(design, value);
        return;
    case Model_Field::x_start:
        Put(design, "x-Initial", value);
        return;
    case Model_Field::max_steps:
        Put(design, "Ode_Max_Steps", Whole_Steps(value));
        return;
    case Model_Field::t_start:
        run.t_start = value;
        break;
    case Model_Field::t_end:
        run.t_end = value;
        break;
    case Model_Field::eps:
        run.eps = value;
        break;
    case Model_Field::start_step:
        run.start_step = value;
        break;
    }
    Apply(design, Event::vibration_edited);
}

/// The closing spring of the model picked, or the train's, beside its pair.
void Refresh_Spring_Copy(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    d.Follower_Stiffness = d.Kspring(d.Model_Type == 3 || d.Model_Type == 4 ? 2 : 1);
}

}  // namespace

Model_Form Open_Model_Form(Design_State& design)
{
    if (!Asks_Model_Type(design))
        Put(design, "Model_Type", Form_Closed_Model);
    Give_Up_Polydyne(design);
    Refresh_Spring_Copy(design);
    Model_Form form;
    Show_Design(design, form);
    form.calculated = false;
    if (New_in_Inches(design))
        form.txt_Mass[0] = Europe(design) ? "1" : "0.02";
    form.txt_t_start = "0";
    form.txt_t_end = Twice_the_Period(design);
    form.txt_eps = In_Number_Format(design, "0.001");
    form.txt_start_step = In_Number_Format(design, "0.0001");
    Model_Setup(design);
    if (design.motion.Rise_Fall_Dwell(1) == "D" && design.dynamics.x_Initial == 0.0)
        Show_Message(Start_in_Dwell_Hint(), Buttons::OK, Symbol::exclamation);
    else
        Refresh_Screens();
    return form;
}

void Show_Design(const Design_State& design, Model_Form& form)
{
    const Dynamics_Group& d = design.dynamics;
    for (const int k : {1, 2}) {
        const auto element = static_cast<std::size_t>(k - 1);
        form.txt_Mass[element] = Shown(design, d.Mass_m(k));
        form.txt_Spring[element] = Shown(design, d.Kspring(k));
        form.txt_Zeta[element] = Shown(design, d.Zeta(k));
    }
    form.txt_Preload = Shown(design, d.Preload);
    form.txt_x_start = Shown(design, d.x_Initial);
    form.txt_max_steps = std::to_string(d.Ode_Max_Steps);
    form.refused.clear();
    form.calculated = design.flags.Modelflag;
}

std::string Polydyne_Caption(const Design_State& design)
{
    return Has_Spline(design) ? "Make Splinedyne Cam" : "Make Polydyne Cam";
}

Model_Entry Edit_Model_Field(Design_State& design, Model_Form& form, const Model_Place& place, std::string_view text)
{
    const double value = Val(design, text);
    const Verdict verdict = Entry_may_be(design, place, value);
    if (!verdict)
        Show_Refusal(verdict);
    if (!verdict || (place.first == Model_Field::eps && !Accept_Accuracy(value))) {
        form.Text(place) = Text_Instead(design, place.first);
        form.refused.insert(place);
        Apply(design, Event::vibration_edited);
        return {false, form.Text(place)};
    }
    Store_Entry(design, form, place, value);
    form.Text(place) = text;
    form.refused.erase(place);
    form.calculated = false;
    return {true, form.Text(place)};
}

namespace {

/// Stores what refusals have left in their fields, under its trap.
bool Store_Refused(Design_State& design, Model_Form& form)
{
    return Trap("Read_Model_Fields", [&] {
        for (const Model_Place& place : form.refused)
            if (place.first == Model_Field::t_end)
                form.run.t_end.reset();  // twice the period as it is, not as it is shown
            else
                Store_Entry(design, form, place, Val(design, form.Text(place)));
        form.refused.clear();
    });
}

}  // namespace

bool Calc_Model(Design_State& design, Model_Form& form)
{
    form.calculated = Store_Refused(design, form) && Run_Vibration(design, form.run);
    return form.calculated;
}

bool Tick_Polydyne(Design_State& design, Model_Form& form, bool ticked)
{
    if (ticked) {
        const Flag before = design.flags.Polydyne_Calc;
        const bool reached = Store_Refused(design, form) && Run_Polydyne(design, form.run);
        if (before != design.flags.Polydyne_Calc)
            form.calculated = reached;
        return design.flags.Polydyne_Calc;
    }
    Apply(design, Event::polydyne_given_up);
    if (Calc_Model(design, form))
        Calc_Model(design, form);
    return false;
}

bool Model_Done(Design_State& design)
{
    if (!design.flags.Polydyne_Calc)
        return false;
    Keep_Kinematic_Profile(design);
    return true;
}

bool May_Leave_Model(Design_State& design, Model_Form& form)
{
    if (!design.flags.Polydyne_Calc)
        return true;
    if (Show_Message("You have calculated a Polydyne cam but have not gone forward with creating its \n"
                     "profile, which requires that you exit this form with the Next button.\n"
                     "Do you wish to abandon the Polydyne calculation at this point?",
                     Buttons::Yes_No, Symbol::exclamation) != Answer::Yes)
        return false;
    Tick_Polydyne(design, form, false);
    return true;
}

Model_Texts Texts_of_Model(const Design_State& design)
{
    constexpr std::string_view no_decimal = "#,###,###,##0";
    constexpr std::string_view one_decimal = "#,###,###,##0.0";
    constexpr std::string_view two_decimals = "#,###,###,##0.00";
    constexpr std::string_view three_decimals = "#,###,###,##0.000";
    constexpr std::string_view six_decimals = "#,###,###,##0.000000";
    constexpr double seconds_a_minute = 60.0;
    const auto shown = [&](double value, std::string_view picture) { return Format_Picture(design, value, picture); };
    const Dynamics_Group& d = design.dynamics;
    Model_Texts texts;
    Trap("Texts_of_Model", [&] {
        for (const int k : {1, 2}) {
            const std::size_t first = k == 1 ? 0 : 3;
            const double hertz = d.Omega(k) / PI2;
            texts.lbl_OmegaN[first] = shown(d.Omega(k), two_decimals);
            texts.lbl_OmegaN[first + 1] = shown(hertz, one_decimal);
            texts.lbl_OmegaN[first + 2] = shown(hertz * seconds_a_minute, no_decimal);
        }
        texts.lbl_FreqRatio = shown(d.Freq_Ratio, two_decimals);
        texts.lbl_Delta_t = shown(d.Ode_Save_Interval, six_decimals);
        texts.lbl_Kount = std::to_string(d.Ode_Count);
        texts.lbl_Period = shown(Cam_Period(design), three_decimals);
        texts.lbl_T_rise = shown(Shortest_Motion(design), three_decimals);
        const double f1 = Natural_Hertz(design);
        if (f1 != 0.0)
            texts.lbl_T_natural = shown(1 / f1, three_decimals);
        texts.lbl_Gamma = shown(d.Gamma_Ratio, two_decimals);
    });
    return texts;
}

std::array<Model_Plot, 4> Plots_of_Model(const Design_State& design)
{
    constexpr std::array variables{var::Time_Error, var::Time_X, var::Time_Xdot, var::Time_Xddot};
    const Results_Group& r = design.results;
    const auto count = static_cast<std::size_t>(design.dynamics.Ode_Count);
    std::array<Model_Plot, 4> plots{};
    for (std::size_t row = 0; row < plots.size(); ++row) {
        Model_Plot& plot = plots[row];
        plot.variable = variables[row];
        if (count == 0)
            continue;
        plot.time = r.Ode_Time.Points().subspan(1, count);
        plot.values = r.Ode_States.Points(static_cast<int>(row)).subspan(1, count);
        MaxMin1(plot.values, 0, static_cast<int>(count) - 1, plot.largest, plot.smallest);
        plot.peak_to_peak = plot.largest - plot.smallest;
    }
    return plots;
}

std::span<const Model_Row> Fields_of_Model_Screen()
{
    return fields;
}

std::span<const Form_Control> Read_Outs_of_Model()
{
    return read_outs;
}

std::span<const Form_Control> Controls_of_Model()
{
    return controls;
}

}  // namespace lobemax
