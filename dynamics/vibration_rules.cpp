// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/vibration_rules.h"

#include <vector>

#include "core/design_state.h"

namespace lobemax {

namespace {

using enum Field_Role;

constexpr std::string_view must_be_positive = "This value must be positive.  Please redo.";
constexpr double small_accuracy = 0.0001;

Verdict Model_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(First_Model, Last_Model, value);
}

Verdict Not_Negative(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Not_Below_Zero_may_be(value.number);
}

Verdict Spring_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, must_be_positive);
}

Verdict Zeta_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Zeta_of_Model_may_be(value.number);
}

std::vector<Field_Rule> Make_Rules()
{
    const auto rule = [](std::string_view field, std::string_view words, decltype(Field_Rule::may_be) may_be,
                         Event event = Event::vibration_edited,
                         decltype(Field_Rule::follow) follow = nullptr) -> Field_Rule {
        return {.field = field, .role = input, .words = words, .event = event, .may_be = may_be, .follow = follow};
    };
    std::vector<Field_Rule> rules{
        rule("Model_Type", "Vibration model", Model_may_be),
        rule("Mass_m", "Mass %1", Not_Negative),
        rule("Kspring", "Spring %1", Spring_may_be, Event::closing_spring_edited, Return_Spring_Follows),
        rule("Zeta", "Damping ratio %1", Zeta_may_be),
        rule("Follower_Stiffness", "Follower stiffness", Not_Negative),
        rule("x-Initial", "Initial displacement", Not_Negative),
        rule("Ode_Max_Steps", "Steps of the integration", Not_Negative),
    };
    const auto derived_from = [&rules](std::string_view from, std::initializer_list<std::string_view> fields) {
        for (const std::string_view field : fields)
            rules.push_back({.field = field, .role = derived, .words = from, .event = {}});
    };
    derived_from("Mass_m, Kspring and Zeta",
                 {"Omega_Sq", "Omega", "Crit_Damping", "Damping_C", "Freq_Ratio", "Gamma_Ratio"});
    derived_from("the vibration", {"Ode_Save_Interval", "Ode_Count", "Force_Dyn_Max", "Force_Dyn_Min"});
    derived_from("the polydyne cam", {"Polydyne_Max", "Polydyne_Min"});
    return rules;
}

}  // namespace

std::span<const Field_Rule> Vibration_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

Verdict Zeta_of_Model_may_be(double zeta)
{
    return zeta >= 0.0 && zeta <= 1.0 ? Verdict{} : Verdict{"Zeta must be between 0 and 1.  Please redo"};
}

Verdict Preload_of_Model_may_be(double preload)
{
    return preload < 0.0 ? Verdict{"Preload must be > 0.  Please redo"} : Verdict{};
}

Verdict Not_Below_Zero_may_be(double value)
{
    return value < 0.0 ? Verdict{std::string(must_be_positive)} : Verdict{};
}

Verdict End_Time_may_be(const Design_State& design, double seconds)
{
    return seconds > 2 * Cam_Period(design)
               ? Verdict{}
               : Verdict{"You need to calculate at least two cam cycles to let transients die out"};
}

bool Accept_Accuracy(double eps)
{
    return eps >= small_accuracy ||
           Show_Message(
               "Too small an accuracy value may cause the Runge-Kutta algorithm to loop infinitely.\n"
               "Continue anyway?",
               Buttons::Yes_No, Symbol::exclamation) == Answer::Yes;
}

Verdict Run_may_be(const Design_State& design, const Vibration_Run& run)
{
    if (!(design.motion.Shaft_speed > 0.0))
        return {"A vibration needs a positive shaft speed: time runs forward."};
    for (const double value : {run.t_start, run.start_step, run.smallest_step, double{run.eps}})
        if (Verdict verdict = Not_Below_Zero_may_be(value); !verdict)
            return verdict;
    if (run.eps == 0.0)
        return {"The accuracy must be greater than zero.  Please redo."};
    if (run.t_end)
        if (Verdict verdict = End_Time_may_be(design, *run.t_end); !verdict)
            return verdict;
    if (run.t_start > Cam_Period(design))
        return {"The integration must start within the first cam cycle.  Please redo."};
    const Long steps = design.dynamics.Ode_Max_Steps;
    if (steps < 1 || steps > Max_Stored_Steps)
        return {"The number of steps must lie between 1 and " + std::to_string(Max_Stored_Steps) + ".  Please redo."};
    return {};
}

void Return_Spring_Follows(Design_State& design, const Field_Index& at)
{
    Dynamics_Group& d = design.dynamics;
    d.Follower_Stiffness = d.Kspring(at.at[0]);
    switch (d.Model_Type) {
    case 1:
        d.Return_Spring_Rate = 0.0;
        break;
    case 2:
    case 5:
        d.Return_Spring_Rate = d.Kspring(2);
        break;
    default:
        d.Return_Spring_Rate = d.Kspring(1);
        break;
    }
}

}  // namespace lobemax
