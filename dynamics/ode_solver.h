// SPDX-License-Identifier: GPL-3.0-or-later
/// An adaptive Runge-Kutta integrator of fourth order: it takes each step whole and in two halves, and the difference
/// of the two is the error that sets the step's length.
///
/// Here is what an equation is to it, and what it asks, tells and stores; its steps are in ode_steps.h.
/// docs/theory.md, (135) to (141).
#pragma once

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

inline constexpr int Max_Ode_Equations = 2;
inline constexpr Long Max_Stored_Steps = 1'000'000;  // of a trajectory: 20 MB

/// A state, its derivative, or a scale of it; elements 1 and 2 of the equations stand at places 0 and 1.
using Ode_Vector = std::array<double, Max_Ode_Equations>;

/// A differential equation as the integrator asks it. At(t) is what an instant decides alone, as where the cam stands:
/// it is found once for all stages that fall on it. Slope(instant, y, dydx) is f(t, y); it may leave dydx as it was,
/// and the one before within the step then stands. An equation of one unknown leaves the second rate at its zero.
template <class E>
concept Ode_Equation = requires(const E& equation, double t, const Ode_Vector& y, Ode_Vector& dydx)
{
    equation.Slope(equation.At(t), y, dydx);
};

template <Ode_Equation E>
using Ode_Instant = decltype(std::declval<const E&>().At(0.0));

/// Any function as an equation, asked without an allocation; of an instant it knows the time alone.
class Ode_Derivatives {
public:
    /// @param model  called as model(t, y, dydx); lives as long as the view
    template <class Model>
    explicit Ode_Derivatives(const Model& model)
        : model_(&model), call_([](const void* of, double t, const Ode_Vector& y, Ode_Vector& dydx) {
              (*static_cast<const Model*>(of))(t, y, dydx);
          })
    {
    }
    double At(double t) const { return t; }
    void Slope(double t, const Ode_Vector& y, Ode_Vector& dydx) const { call_(model_, t, y, dydx); }

private:
    const void* model_;
    void (*call_)(const void*, double, const Ode_Vector&, Ode_Vector&);
};

/// What a cam that starts in a dwell should start with: for its own vibration a rise or a fall; for the cam that
/// balances it a high dwell will do, too.
enum class Dwell_Advice { vibration, compensation };

/// The hint that a start in a dwell is where the step becomes too short.
std::string Start_in_Dwell_Hint(Dwell_Advice advice = Dwell_Advice::vibration);

/// A question of the integration, with Retry and Cancel; Retry shows the hint, once a run. Cancel sets Calc_Abort.
/// @return whether to go on
bool Ode_Go_on(Design_State& design, const std::string& text, Dwell_Advice advice = Dwell_Advice::vibration);

/// The larger of two in 32 bits, a where b is not greater, the largest Single where one of them is larger still.
inline Single Ode_Max(double a, double b)
{
    // A start from rest has a scale of 1e-30, over which an error may be more than 32 bits hold.
    constexpr double most = std::numeric_limits<float>::max();
    const double larger = b > a ? b : a;
    return std::min(larger, most);
}

/// What a step of the integration works on.
struct Ode_Step {
    Ode_Vector y{};
    Ode_Vector dydx{};  // at y; a refused trial leaves another one there
    double x = 0.0;     // seconds
};

/// A step too short to move x: Retry or Cancel, as Ode_Go_on.
bool Ode_Takes_Insignificant_Step(Design_State& design, double step, double time, Dwell_Advice advice);

/// A step below the smallest one: Retry or Cancel, as Ode_Go_on.
bool Ode_Takes_Short_Step(Design_State& design, Dwell_Advice advice = Dwell_Advice::vibration);

/// Tells that too many steps were taken, and sets Calc_Abort.
/// @param kept  takes the message, too; none: nothing does
void Ode_Gives_Up(Design_State& design, std::string* kept = nullptr);

/// The state as the next point of the trajectory. @throws Fault{6} when it is no Single, Fault{9} when the arrays are
/// too short
void Ode_Store(Design_State& design, const Ode_Step& step, int nvar);

/// What the result codes 0 to 6 of a solver that reports one mean; empty for any other.
std::string Solver_Status_Text(int code);

/// Tells a result code above 0 that needs telling, and takes the user's answer.
///
/// Code 5 adds the count of steps and sets Calc_Abort; any other above 1 asks Retry, which shows the hint, or Cancel,
/// which sets Calc_Abort.
void Report_Solver_Status(Design_State& design, int code);

}  // namespace lobemax
