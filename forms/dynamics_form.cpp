// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dynamics_form.h"

#include "forms/compcam_form.h"

#include <array>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "dynamics/kinetostatics.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "forms/workflow.h"

namespace lobemax {

namespace {

/// The journal's radius from its diameter as typed, which must be a number of the design itself.
Single Radius_of_Journal(const Design_State& design, std::string_view diameter)
{
    return Single(Val(design, diameter)) / 2;
}

/// Stores the value of a field, or refuses it.
Form_Entry Store_Entry(Design_State& design, Dynamics_Field field, std::string_view text);

/// The rule of a field in the form's table.
template <Dynamics_Field field>
Form_Entry Edit(Design_State& design, Dynamics_Form&, std::string_view typed)
{
    return Edit_Dynamics_Field(design, field, typed);
}

// "fluctuaion" is the screen's own spelling.
constexpr std::array fields{
    Form_Field<Dynamics_Form>{
        {"txt_Mass", "Effective Mass", "Effective mass at roller follower - must be in mass units", Form_Unit::mass},
        &Dynamics_Form::txt_Mass,
        Edit<Dynamics_Field::Mass>},
    Form_Field<Dynamics_Form>{{"txt_Spring", "Spring Constant", "Return spring rate", Form_Unit::spring},
                              &Dynamics_Form::txt_Spring,
                              Edit<Dynamics_Field::Spring>},
    Form_Field<Dynamics_Form>{{"txt_Preload", "Spring Preload", "Initial spring load at assembly", Form_Unit::force},
                              &Dynamics_Form::txt_Preload,
                              Edit<Dynamics_Field::Preload>},
    Form_Field<Dynamics_Form>{{"txt_Zeta", "Ratio z", "Dimensionless damping ratio, zeta"},
                              &Dynamics_Form::txt_Zeta,
                              Edit<Dynamics_Field::Zeta>},
    Form_Field<Dynamics_Form>{{"txt_Damping", "Coefficient C", "Damping coefficient", Form_Unit::damping},
                              &Dynamics_Form::txt_Damping,
                              Edit<Dynamics_Field::Damping>},
    Form_Field<Dynamics_Form>{
        {"txt_Journal", "Cam Journal Dia", "Camshaft diameter for friction torque calculation", Form_Unit::length},
        &Dynamics_Form::txt_Journal,
        Edit<Dynamics_Field::Journal>},
    Form_Field<Dynamics_Form>{
        {"txt_Folfrict", "Follower Friction"}, &Dynamics_Form::txt_Folfrict, Edit<Dynamics_Field::Folfrict>},
    Form_Field<Dynamics_Form>{
        {"txt_Jnlfrict", "Journal Friction"}, &Dynamics_Form::txt_Jnlfrict, Edit<Dynamics_Field::Jnlfrict>},
    Form_Field<Dynamics_Form>{{"txt_Fluct", "Coef Fluctuation", "Desired coefficient of fluctuaion for a flywheel"},
                              &Dynamics_Form::txt_Fluct,
                              Edit<Dynamics_Field::Fluct>},
};

constexpr std::array read_outs{
    Form_Field<Dynamics_Texts>{{"lbl_Fmax", "Fmax", "", Form_Unit::force}, &Dynamics_Texts::lbl_Fmax},
    Form_Field<Dynamics_Texts>{{"lbl_Fmin", "Fmin", "", Form_Unit::force}, &Dynamics_Texts::lbl_Fmin},
    Form_Field<Dynamics_Texts>{{"lbl_Tmax", "Tmax", "", Form_Unit::torque}, &Dynamics_Texts::lbl_Tmax},
    Form_Field<Dynamics_Texts>{{"lbl_OmegaN", "Undamped natural frequency", "", Form_Unit::frequency},
                               &Dynamics_Texts::lbl_OmegaN},
    Form_Field<Dynamics_Texts>{{"lbl_OmegaD", "Damped natural frequency", "", Form_Unit::frequency},
                               &Dynamics_Texts::lbl_OmegaD},
    Form_Field<Dynamics_Texts>{{"lbl_Cc", "Coefficient of critical damping", "", Form_Unit::damping},
                               &Dynamics_Texts::lbl_Cc},
};

constexpr std::array controls{
    Form_Control{"frm_Dynamics", "Cam Dynamics"},
    Form_Control{"fra_Closure", "Joint Closure"},
    Form_Control{"opt_Closure(0)", "Force Closed", "Uses a spring closure"},
    Form_Control{"opt_Closure(1)", "Form Closed", "Tracked, ribbed, or conjugate cam"},
    Form_Control{"chk_Extforce", "Add ext. force", "This will superpose any external force previously calculated"},
    Form_Control{"fra_Torque", "Torque Calcs"},
    Form_Control{"opt_Torque(0)", "Start Fresh", "New torque calculation overwrites previous values"},
    Form_Control{"opt_Torque(1)", "Accumulate", "Retains previous torque and adds new to it"},
    Form_Control{"chk_compcam", "Calc Comp Cam", "Create a torque compensation cam"},
    Form_Control{"grf_Plot(0)", "Kinetostatic camshaft torque"},
    Form_Control{"grf_Plot(1)", "Kinetostatic force at follower"},
    Form_Control{"pct_Pict1", "", "These data can be used to calculate flywheel size - see textbook"},
    Form_Control{
        "pct_Drive", "",
        "What the drive has to give over a cycle, without and with friction: mean, RMS and peak torque, power at "
        "the cam's speed, the energy that comes and goes about the mean, the flywheel that holds the coefficient "
        "of fluctuation, and the inertia of the follower at the shaft"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Calc", "&Calculate"},
    Form_Control{"cmd_Done", "&Next >"},
    Form_Control{"cmd_Print", "&Print Form"},
    Form_Control{"cmd_Copy", "Cop&y"},
};

}  // namespace

Dynamics_Form Opening_Dynamics_Form(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const Identity_Group& id = design.identity;
    const bool compensating = design.flags.CompCam_Calc;
    const double mass = compensating ? d.Comp_Mass : d.Mass;
    const double spring = compensating ? d.Comp_Spring_Rate : d.Return_Spring_Rate;
    const double preload = compensating ? d.Comp_Preload : d.Preload;
    double zeta = d.Zeta_Initial;
    if (design.flags.Modelflag && d.Model_Type != 1)  // of the model's spring that returns the follower
        zeta = d.Model_Type == 2 || d.Model_Type == 5 ? d.Zeta(2) : d.Zeta(1);
    Dynamics_Form form;
    form.txt_Mass = Shown(design, FNRound(mass, id.Decimals_4));
    form.txt_Spring = Shown(design, FNRound(spring, id.Decimals_6));
    form.txt_Preload = Shown(design, FNRound(preload, id.Decimals_2));
    form.txt_Zeta = Shown(design, FNRound(zeta, 2));
    form.txt_Damping = Shown(design, FNRound(d.Damping, 2));
    form.txt_Journal = Shown(design, FNRound(2.0 * d.Bearing_Radius, id.Decimals_1));
    form.txt_Folfrict = Shown(design, FNRound(d.Mu_of_Follower, 3));
    form.txt_Jnlfrict = Shown(design, FNRound(d.Mu_of_Shaft, 3));
    form.txt_Fluct = Shown(design, FNRound(d.Coeff_of_Fluctuation, 2));
    form.force_closed = design.cam.Followtype == 2 || design.cam.Closure == "Force";
    form.start_fresh = d.Torque_Start_Fresh;
    form.add_external = design.flags.Ext_Force_Calc && d.Ext_Force_Add;
    return form;
}

Dynamics_Openings Openings_of_Dynamics(const Design_State& design, bool force_closed, std::string_view txt_Spring)
{
    const bool no_spring = Val(design, txt_Spring) == 0.0;
    return {design.cam.Followtype != 2, force_closed, no_spring, design.flags.Ext_Force_Calc, Compcam_Open(design)};
}

bool Dynamics_Entry_Hides_Charts(const Design_State& design)
{
    return !design.dynamics.Torque_Start_Fresh;
}

Form_Entry Edit_Dynamics_Field(Design_State& design, Dynamics_Field field, std::string_view text)
{
    Form_Entry entry = Store_Entry(design, field, text);
    entry.recalculate = design.dynamics.Torque_Start_Fresh && entry.accepted;
    entry.disable_done = true;  // the results are not those of what stands typed
    return entry;
}

namespace {

Form_Entry Store_Entry(Design_State& design, Dynamics_Field field, std::string_view text)
{
    /// The field of the design that an entry goes into, and what a refused one shows instead.
    struct Place {
        std::string_view field;
        std::string_view instead;
    };
    constexpr std::array<Place, 9> places{{{"Mass", "0.01"},
                                           {"Preload", "1"},
                                           {"Return_Spring_Rate", "1"},
                                           {"Damping", "1"},
                                           {"Bearing Radius", "1"},
                                           {"Zeta_Initial", "0.25"},
                                           {"Mu of Follower", "0.1"},
                                           {"Mu of Shaft", "0.01"},
                                           {"Coeff of Fluctuation", "0.05"}}};
    const Place& place = places.at(static_cast<std::size_t>(field));
    Dynamics_Group& d = design.dynamics;
    const double value = field == Dynamics_Field::Journal ? double{Radius_of_Journal(design, text)} : Val(design, text);
    if (const Verdict verdict = Put(design, place.field, value); !verdict) {
        Show_Refusal(verdict);
        Form_Entry entry{false, In_Number_Format(design, place.instead)};
        if (field == Dynamics_Field::Spring) {  // a refused entry's new text is the value, too
            const Single own = d.Comp_Spring_Rate;
            Put(design, place.field, Val(design, entry.text));
            d.Comp_Spring_Rate = own;
        }
        if (field == Dynamics_Field::Fluct)
            d.Coeff_of_Fluctuation = 0.05;
        Apply(design, Event::forces_edited);
        return entry;
    }
    return {true, std::string(text)};
}

}  // namespace

bool Read_Dynamics_Fields(Design_State& design, const Dynamics_Form& form)
{
    return Trap("Read_Dynamics_Fields", [&] {
        const bool spring_closed = design.cam.Closure == "Force";
        Dynamics_Group read = design.dynamics;  // all or nothing
        read.Mass = Val(design, form.txt_Mass);
        if (spring_closed) {
            read.Return_Spring_Rate = Val(design, form.txt_Spring);
            read.Preload = Val(design, form.txt_Preload);
            read.Zeta_Initial = Val(design, form.txt_Zeta);
        } else {
            read.Preload = read.Return_Spring_Rate = read.Damping = 0.0;
        }
        read.Bearing_Radius = Radius_of_Journal(design, form.txt_Journal);
        read.Mu_of_Follower = Val(design, form.txt_Folfrict);
        read.Mu_of_Shaft = Val(design, form.txt_Jnlfrict);
        read.Coeff_of_Fluctuation = Val(design, form.txt_Fluct);
        read.Torque_Start_Fresh = form.start_fresh;
        design.dynamics = read;
    });
}

bool Calc_Dynamics(Design_State& design, const Dynamics_Form& form)
{
    design.cam.Closure = form.force_closed ? "Force" : "Form";
    if (!Read_Dynamics_Fields(design, form)) {
        Apply(design, Event::forces_edited);
        return false;
    }
    Run_Forces(design);
    return design.flags.Dynamicflag || design.flags.Calc_Abort;
}

bool Choose_Closure(Design_State& design, const Dynamics_Form& form)
{
    if (!form.force_closed)
        Put(design, "Model_Type", 1);
    return Calc_Dynamics(design, form);
}

bool Choose_Start_Fresh(Design_State& design, Dynamics_Form& form)
{
    form.start_fresh = true;
    return Calc_Dynamics(design, form);
}

bool Tick_Add_External_Force(Design_State& design, Dynamics_Form& form, bool ticked)
{
    form.add_external = ticked;
    Put(design, "Ext_Force_Add", ticked ? 1 : 0);
    return Calc_Dynamics(design, form);
}

Dynamics_Texts Texts_of_Dynamics(const Design_State& design, const Dynamics_Figures& figures)
{
    constexpr std::string_view one_decimal = "#,###,###,##0.0";
    constexpr std::string_view two_decimals = "#,###,###,##0.00";
    const Dynamics_Group& d = design.dynamics;
    Dynamics_Texts texts;
    texts.lbl_Fmax = Format_Picture(design, figures.Fmax, one_decimal);
    texts.lbl_Fmin = Format_Picture(design, figures.Fmin, one_decimal);
    texts.lbl_Tmax = Format_Picture(design, figures.Tmax, one_decimal);
    if (!figures.frequencies)
        return texts;
    texts.lbl_OmegaN = Format_Picture(design, d.Omega_N, one_decimal);
    texts.lbl_OmegaD = Format_Picture(design, d.Omega_D, one_decimal);
    texts.lbl_Cc = Format_Picture(design, d.Critical_Damping, two_decimals);
    texts.txt_Damping = Format_Picture(design, d.Damping, two_decimals);
    return texts;
}

bool Closing_Dynamics_Is_Done(const Design_State& design)
{
    return design.flags.Dynamicflag;
}

std::span<const Form_Field<Dynamics_Form>> Fields_of_Dynamics()
{
    return fields;
}

std::span<const Form_Field<Dynamics_Texts>> Read_Outs_of_Dynamics()
{
    return read_outs;
}

std::span<const Form_Control> Controls_of_Dynamics()
{
    return controls;
}

void Choose_Accumulate(Design_State& design)
{
    Put(design, "Torque_Start_Fresh", 0);
    Show_Message(
        "Selecting Torque Accumulation will cause each succeeding\n"
        " torque calculation to add to the existing torque function.\n"
        "So do not click the Calculate Button on this form more than once\n"
        "for each new cam on the camshaft after designing it on the other forms.",
        Buttons::OK, Symbol::exclamation);
}

}  // namespace lobemax
