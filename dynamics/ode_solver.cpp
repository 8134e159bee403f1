// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/ode_solver.h"

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"

namespace lobemax {

namespace {

/// A question with Retry and Cancel. @return whether to go on
bool Go_on(Design_State& design, const std::string& text)
{
    if (Show_Message(text, Buttons::Retry_Cancel, Symbol::exclamation) == Answer::Retry)
        return true;
    design.flags.Calc_Abort = true;
    return false;
}

/// Once a run.
void Show_Hint(Design_State& design, Dwell_Advice advice = Dwell_Advice::vibration)
{
    if (design.flags.Ode_Hint_Shown)
        return;
    design.dynamics.Ode_Message = Start_in_Dwell_Hint(advice);
    Show_Message(design.dynamics.Ode_Message, Buttons::OK, Symbol::information);
    design.flags.Ode_Hint_Shown = true;
}

std::string Insignificant_Step(const Design_State& design, double step, double time)
{
    const auto shown = [&](double value) { return In_Number_Format(design, Shortest(value)); };
    return "\nThe step size has become insignificant in the Runge-Kutta ODE solver.\n Time step =  " + shown(step) +
           "  sec,  Time position =  " + shown(time) +
           "  sec\n\nYour system may be too stiff or your accuracy too large. \n\n"
           "Try reducing the system K, changing the mass, or changing accuracy value. ";
}

}  // namespace

std::string Start_in_Dwell_Hint(Dwell_Advice advice)
{
    return std::string(
               "If your cam starts with a dwell at zero displacement, that will\n"
               "cause the Runge-Kutta step size to be too small, and it will abort.\n"
               "\n") +
           (advice == Dwell_Advice::vibration
                ? "You must start your cam program cycle with a rise or a fall:\n"
                : "Start your cam program cycle with a rise, a fall, or a high dwell instead,\n") +
           "i.e., phase shift the cam program to do this dynamic analysis.";
}

bool Ode_Go_on(Design_State& design, const std::string& text, Dwell_Advice advice)
{
    if (!Go_on(design, text))
        return false;
    Show_Hint(design, advice);
    return true;
}

bool Ode_Takes_Insignificant_Step(Design_State& design, double step, double time, Dwell_Advice advice)
{
    if (Ode_Go_on(design, Insignificant_Step(design, step, time), advice))
        return true;
    Restore_Pointer();
    return false;
}

bool Ode_Takes_Short_Step(Design_State& design, Dwell_Advice advice)
{
    return Ode_Go_on(design, "Runge-Kutta step size has become smaller than minimum", advice);
}

void Ode_Gives_Up(Design_State& design, std::string* kept)
{
    const std::string text = "\n\nDid not converge.  Took too many steps in the integration routine and has given up.";
    if (kept)
        *kept = text;
    Show_Message(text, Buttons::OK, Symbol::information);
    design.flags.Calc_Abort = true;
    Restore_Pointer();
}

void Ode_Store(Design_State& design, const Ode_Step& step, int nvar)
{
    Long& count = design.dynamics.Ode_Count;
    ++count;
    design.results.Ode_Time(count) = step.x;
    for (int i = 1; i <= nvar; ++i)
        design.results.Ode_States(i, count) = step.y[static_cast<std::size_t>(i - 1)];
}

std::string Solver_Status_Text(int code)
{
    switch (code) {
    case 0:
        return "All is ok";
    case 1:
        return "Both error bounds  Eps...  are too small (relative to the machine constant)";
    case 2:
        return "TimeEnd <= Time (relative to the machine constant)";
    case 3:
        return "Step size  Start_Step <= 0  (rel. to machine precision)";
    case 4:
        return "No_Eqns > mc_Max_Eqns   or   No_Eqns <= 0";
    case 5:
        return "Number of allowed function evaluations was exceeded;\ntry to restart with Time, Ystart and Start_Step.";
    case 6:
        return " Time, Ystart, Start_Step contain the values reached.";
    default:
        return {};
    }
}

void Report_Solver_Status(Design_State& design, int code)
{
    constexpr int out_of_evaluations = 5;
    if (code == out_of_evaluations) {
        Show_Message(Solver_Status_Text(code) + "in " + std::to_string(design.dynamics.Ode_Count) + " total steps",
                     Buttons::OK, Symbol::information);
        design.flags.Calc_Abort = true;
    } else if (code > 1 && Go_on(design, Solver_Status_Text(code))) {
        Show_Hint(design);
    }
}

}  // namespace lobemax
