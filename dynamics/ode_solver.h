// SPDX-License-Identifier: GPL-3.0-or-later
/// An adaptive Runge-Kutta integrator of fourth order: it takes each step whole and in two halves, and the difference
/// of the two is the error that sets the step's length.
///
/// A driver marches over the interval and stores the trajectory in the design, a quality step keeps to the accuracy,
/// one plain step advances. Working values are doubles, the trajectory is stored in 32 bits. Nothing is allocated on
/// the way but for messages. docs/theory.md, (135) to (141).
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

inline constexpr int Max_Ode_Equations = 2;
inline constexpr Long Max_Stored_Steps = 1'000'000;  // of a trajectory: 20 MB

/// A state, its derivative, or a scale of it; elements 1 and 2 of the equations stand at places 0 and 1.
using Ode_Vector = std::array<double, Max_Ode_Equations>;

/// dydx = f(t, y), asked without an allocation. It may leave dydx as it was; the one before within the step then
/// stands.
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
    void operator()(double t, const Ode_Vector& y, Ode_Vector& dydx) const { call_(model_, t, y, dydx); }

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

/// One classic step of fourth order from (x, y), dydx = f(x, y), over h: three derivative calls.
void Ode_Rk4(const Ode_Derivatives& derivs, const Ode_Vector& y, const Ode_Vector& dydx, int n, double x, double h,
             Ode_Vector& yout);

/// The larger of two in 32 bits, a where b is not greater, the largest Single where one of them is larger still.
Single Ode_Max(double a, double b);

/// What a step of the integration works on.
struct Ode_Step {
    Ode_Vector y{};
    Ode_Vector dydx{};  // at y; a refused trial leaves another one there
    double x = 0.0;     // seconds
};

/// Tries a step of length h from (xsav, ysav) whole and in halves, and shortens it until the error keeps to eps:
/// step.y is then the result of the halves, ytemp its difference from the whole.
///
/// A step too short to move x asks Retry or Cancel; Cancel sets Calc_Abort.
/// @param yscal   what the error is compared with, element by element
/// @param errmax  out: the error in units of eps
void Ode_Step_Doubling(Design_State& design, const Ode_Derivatives& derivs, Ode_Step& step, double& h,
                       const Ode_Vector& ysav, const Ode_Vector& dysav, int n, double xsav, double eps,
                       const Ode_Vector& yscal, double& errmax, Ode_Vector& ytemp,
                       Dwell_Advice advice = Dwell_Advice::vibration);

/// One step that keeps to the accuracy: 11 derivative calls with the driver's own where it is taken at once.
///
/// @param htry   length to try; @param hdid  out: length that was taken; @param hnext  out: length to try next, at
///               most four times hdid
void Ode_Quality_Step(Design_State& design, const Ode_Derivatives& derivs, Ode_Step& step, int n, double htry,
                      double eps, const Ode_Vector& yscal, double& hdid, double& hnext,
                      Dwell_Advice advice = Dwell_Advice::vibration);

/// Integrates from x1 to x2 and stores the trajectory: Ode_Time and rows 1 to nvar of Ode_States from index 1 on,
/// Ode_Count points, no two nearer than Ode_Save_Interval but for the last, which is the end.
///
/// Asks Retry or Cancel where a step becomes too short, tells where a start in a dwell may be the reason, once a run,
/// and gives up after Ode_Max_Steps. Cancel, giving up and the user's Stop set Calc_Abort. The host is told of the
/// progress.
/// @param ystart     start values; takes the final ones
/// @param nvar       count of equations, 1 or 2
/// @param eps        accuracy: largest error of a step, over the state and its change in the step
/// @param h1, hmin   first and smallest step, seconds
/// @param nok, nbad  out: steps that were taken at once and steps that were shortened; both stop at 32767
/// @throws Fault{6} when a state is no Single, Fault{9} when the arrays are too short, Fault{11} for an accuracy of 0
void Ode_Integrate(Design_State& design, const Ode_Derivatives& derivs, Ode_Vector& ystart, int nvar, double x1,
                   double x2, Single eps, double h1, double hmin, Integer& nok, Integer& nbad);

/// What the result codes 0 to 6 of a solver that reports one mean; empty for any other.
std::string Solver_Status_Text(int code);

/// Tells a result code above 0 that needs telling, and takes the user's answer.
///
/// Code 5 adds the count of steps and sets Calc_Abort; any other above 1 asks Retry, which shows the hint, or Cancel,
/// which sets Calc_Abort.
void Report_Solver_Status(Design_State& design, int code);

}  // namespace lobemax
