// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/departure_notes.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/text.h"
#include "dynamics/departures.h"
#include "dynamics/vibration.h"
#include "forms/form_table.h"

namespace lobemax {

namespace {

constexpr double least_share = 0.0005;  // of a range: less is not worth a line
constexpr int figures = 3;

std::string Value(const Design_State& design, double value, int row)
{
    return In_Figures(design, value, figures) + " " + Trim(design.plot.Var_Unit(row));
}

/// "4.42 N (0.71 %)"
std::string Amount(const Design_State& design, const Departure& departure, int row)
{
    return Value(design, departure.largest, row) + " (" + In_Figures(design, 100.0 * departure.Share(), 2) + " %)";
}

/// Why the force departs from mechanics.
std::string Reasons(const Design_State& design)
{
    constexpr int per_second = 1;
    const int model = design.dynamics.Model_Type;
    std::string reasons;
    const auto add = [&reasons](const std::string& reason) { reasons += (reasons.empty() ? "" : ", and ") + reason; };
    if (design.motion.Time_Base != per_second)
        add("in this time base the motion of the mass lacks the shaft speed and its square (per second it has them)");
    if (model == 2)
        add("the damper of the train stands for that of the closing spring");
    if (model == 3)
        add("the closing spring follows the mass and not the cam");
    if (model >= 4 && design.flags.Polydyne_Calc)
        add("the cam has the motion of S, V, A and not its polydyne one");
    return reasons;
}

void Add_Force(const Design_State& design, std::vector<std::string>& notes)
{
    const Departure departure = Departure_of_Force(design);
    const std::string reasons = Reasons(design);
    if (departure.Share() >= least_share && !reasons.empty())
        notes.push_back("Force-Dyn is off mechanics by up to " + Amount(design, departure, var::Dynamic_Force) + ": " +
                        reasons + ".");
}

void Add_Model(const Design_State& design, std::vector<std::string>& notes)
{
    const Dynamics_Group& d = design.dynamics;
    const auto shown = [&](double value) { return In_Figures(design, value, figures); };
    if (d.Model_Type == Form_Closed_Model && d.Zeta(1) != d.Zeta(2))
        notes.push_back("The response is damped by the second ratio, " + shown(d.Zeta(2)) +
                        ": mechanics has the first, " + shown(d.Zeta(1)) + ".");
    if (d.Model_Type == 5)
        notes.push_back("X rests at the position of the cam: mechanics has k1 / (k1 + k2) of it, " +
                        shown(True_Share_of_Model_5(design)) + ".");
}

std::string Coefficient_Note(const Design_State& design)
{
    const std::string amount = Amount(design, Departure_of_Polydyne(design), var::Polydyne_S);
    switch (design.dynamics.Model_Type) {
    case Form_Closed_Model:
        return "Polydn S of a form-closed cam is zero: mechanics has S + m/k A, off by up to " + amount + ".";
    case 5:
        return "Polydn S takes 36 for the square of two pi, 39.478, and m1 where mechanics has m2: off by up to " +
               amount + ".";
    default:
        return "Polydn S takes 36 for the square of two pi, 39.478: 8.8 % of its correction is left out, up to " +
               amount + ".";
    }
}

void Add_Derivatives(const Design_State& design, std::vector<std::string>& notes)
{
    const Polydyne_Derivatives departures = Departures_of_Polydyne_Derivatives(design);
    if (departures.V.Share() < least_share && departures.A.Share() < least_share)
        return;
    std::string note = "Per second Polydn ";
    auto add = [&, first = true](const char* name, const Departure& departure, int row) mutable {
        if (departure.Share() < least_share)
            return;
        note += (first ? std::string(name) + " is off the derivative of Polydn S" : std::string(", ") + name) +
                " by up to " + Amount(design, departure, row);
        first = false;
    };
    add("V", departures.V, var::Polydyne_V);
    add("A", departures.A, var::Polydyne_A);
    notes.push_back(note + ": jerk and ping lack one and two powers of the shaft speed. Per radian both are right.");
    const auto extremes = Holds(design, Mark::size) ? Find_Polydyne_Extremes(design) : std::nullopt;
    if (!extremes)
        return;
    const auto shown = [&](double value) { return In_Figures(design, value, figures); };
    const auto& [rows, truth] = *extremes;
    notes.push_back("With them Phi goes from " + shown(rows.Phi_Min) + " to " + shown(rows.Phi_Max) +
                    " where mechanics has " + shown(truth.Phi_Min) + " to " + Value(design, truth.Phi_Max, var::Phi) +
                    ", and the sharpest Rho is " + shown(rows.Rho_Smallest) + " where it has " +
                    Value(design, truth.Rho_Smallest, var::Rho) + ".");
}

/// The lines that a design has where the figures are those of its own units. One whose figures cannot be compared, as
/// that of a damaged file, has none.
template <class Add>
std::vector<std::string> Notes_under(const Design_State& design, Mark mark, Add add)
{
    std::vector<std::string> notes;
    if (!Holds(design, mark) || Holds(design, Mark::units_changed))
        return notes;
    try {
        add(notes);
    } catch (const Fault&) {
        notes.clear();
    }
    return notes;
}

}  // namespace

std::vector<std::string> Notes_of_Vibration(const Design_State& design)
{
    return Notes_under(design, Mark::vibration, [&](std::vector<std::string>& notes) {
        Add_Model(design, notes);
        Add_Force(design, notes);
    });
}

std::vector<std::string> Notes_of_Polydyne(const Design_State& design)
{
    return Notes_under(design, Mark::polydyne, [&](std::vector<std::string>& notes) {
        notes.push_back(Coefficient_Note(design));
        if (design.dynamics.Model_Type != Form_Closed_Model)
            Add_Derivatives(design, notes);
    });
}

std::vector<std::string> Departure_Notes(const Design_State& design)
{
    std::vector<std::string> notes = Notes_of_Vibration(design);
    const std::vector<std::string> more = Notes_of_Polydyne(design);
    notes.insert(notes.end(), more.begin(), more.end());
    return notes;
}

std::string As_Lines(const std::vector<std::string>& notes)
{
    std::string text;
    for (const std::string& note : notes)
        text += (text.empty() ? "" : "\n") + note;
    return text;
}

}  // namespace lobemax
