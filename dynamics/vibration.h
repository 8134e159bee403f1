// SPDX-License-Identifier: GPL-3.0-or-later
/// The elastic follower train: five lumped models driven by the cam's motion, their response over the cam angle, the
/// dynamic force with the follower's jumps, and the polydyne cam that makes up for the train's elasticity.
///
///   model  masses           the closing spring acts at  element 1, element 2
///   1      one, form closed  (a track closes)           k and m of the train; zeta is the second element's
///   2      one              the end effector            the train's spring, the closing spring
///   3      one              the cam follower            the closing spring, the train's spring
///   4      two              the cam follower            mass, closing spring of the follower; of the end effector
///   5      two              the end effector            mass of the follower, train's spring; end mass, closing spring
///
/// Masses in the design's mass unit, springs in force per length (per metre in all metric systems), times in seconds,
/// motions in the design's length unit or degrees of an arm. Source: docs/theory.md, (142) to (160).
#pragma once

#include <optional>
#include <span>
#include <string>

#include "core/basic_types.h"
#include "core/numeric.h"
#include "dynamics/division.h"
#include "dynamics/ode_solver.h"

namespace lobemax {

struct Design_State;

inline constexpr int First_Model = 1;
inline constexpr int Last_Model = 5;
inline constexpr int Form_Closed_Model = 1;

/// How a run is integrated: what the screen holds beside the design, and the command's options.
struct Vibration_Run {
    double t_start = 0.0;           // seconds
    std::optional<double> t_end{};  // seconds; none: twice the cam's period, unrounded
    double start_step = 0.0001;     // seconds
    double smallest_step = 0.0;     // seconds
    Single eps = 0.001;             // accuracy
};

/// Time of one turn of the cam, seconds. @throws Fault{11} when the cam stands still
double Cam_Period(const Design_State& design);

/// Natural frequencies, damping coefficients and ratios of the model picked, under its trap: Omega, Omega_Sq,
/// Crit_Damping, Damping_C, Freq_Ratio, Gamma_Ratio. (144) to (148).
/// @return false after a fault, as for a mass of zero
bool Model_Setup(Design_State& design);

/// The same without a trap. @throws Fault{5}, Fault{11}
void Find_Model_Figures(Design_State& design);

/// Natural frequency, hertz, that the periods are compared with: the second of the model, the first of model 2.
double Natural_Hertz(const Design_State& design);

/// Duration of the shortest segment, seconds.
double Shortest_Motion(const Design_State& design);

/// The right-hand side of the model picked. It takes the design's rows and figures once, as they are then.
class Vibration_Model {
public:
    /// @throws Fault{9} when the table has not the points of the cycle
    explicit Vibration_Model(const Design_State& design);

    /// What the cam does to the mass at an instant.
    struct Push {
        double of_cam;  // of V and S; of the speed model its rate
        bool within;    // the cycle has a point behind the instant
    };
    Push At(double t) const
    {
        const Bracket at = Bracket_of(t);
        return at.within ? Push{Push_of(Cam_at(at)), true} : Push{0.0, false};
    }

    /// Model_Derivs: dydx of (x, dx/dt) under a push. Just before a whole turn, where the angle rounds to 360 degrees
    /// in 32 bits, dydx is left as it was: within 2E-8 of a turn, and meant. (149), (150).
    void Slope(const Push& push, const Ode_Vector& y, Ode_Vector& dydx) const
    {
        if (!push.within)
            return;
        if (speed_model_)
            dydx[0] = push.of_cam;
        else
            dydx = {y[1], Acceleration(push.of_cam, y[0], y[1])};
    }

    /// Displacement of the cam and acceleration of the mass at a state that was reached, for the trajectory.
    struct Reached {
        double S;
        double Xddot;
    };
    Reached Reached_at(double t, double x, double xdot) const;

private:
    struct Cam {
        double S;
        double V;  // per second
        double E;  // energy left to the shaft, torque x degree
    };
    struct Bracket {
        std::size_t lo;
        std::size_t hi;
        double share;
        bool within;  // the cycle has a point at its upper end
    };
    /// Degrees within the turn, 32 bits.
    double Angle_at(double t) const
    {
        constexpr double turn = 360.0;
        constexpr double most = 1e9;
        const double angle = t * degrees_per_second_;
        const double turns = angle / turn;
        if (!(turns >= 0.0 && turns < most)) [[unlikely]]
            return FN_Modulo(angle, turn);
        return Single((turns - static_cast<int>(turns)) * turn);  // FN_Modulo without its call of floor
    }
    Bracket Bracket_of(double t) const
    {
        const double place = by_step_(Angle_at(t));
        const int lo = static_cast<int>(place);
        const auto at = static_cast<std::size_t>(lo);
        return {at, at + 1, place - lo, at < last_};
    }
    Cam Cam_at(const Bracket& at) const
    {
        const auto between = [&](double lo, double hi) { return (hi - lo) * at.share + lo; };
        return {between(S_[at.lo], S_[at.hi]), between(V_[at.lo], V_[at.hi]) * V_per_second_,
                integral_.empty() ? 0.0 : between(integral_max_ - integral_[at.lo], integral_max_ - integral_[at.hi])};
    }
    double Push_of(const Cam& cam) const { return speed_model_ ? Rate_of_Speed(cam) : of_V_ * cam.V + of_S_ * cam.S; }
    double Rate_of_Speed(const Cam& cam) const;
    double Acceleration(double push, double x, double xdot) const { return push - of_xdot_ * xdot - of_x_ * x; }

    std::span<const Single> S_;
    std::span<const Single> V_;
    std::span<const Single> integral_;  // of the torque; empty where the model does not ask for it
    double integral_max_ = 0.0;
    Division by_step_{1.0};
    double degrees_per_second_ = 0.0;
    double V_per_second_ = 1.0;
    std::size_t last_ = 0;
    double of_V_ = 0.0;
    double of_S_ = 0.0;
    double of_xdot_ = 0.0;
    double of_x_ = 0.0;
    bool speed_model_ = false;  // one equation, of the shaft's speed
    double omega_ = 0.0;
    double K_ = 0.0;
    double preload_ = 0.0;
    double mass_ = 0.0;
};

/// The codes of the screen's solvers.
enum class Ode_Method { Runge_Kutta, Gear };

/// Counts of a run's steps.
struct Step_Counts {
    Integer good;
    Integer retried;
};

/// Clears the trajectory and integrates the model over the run, under its trap. Modelflag is set where the end was
/// reached. No integrator stands behind Gear: it reports the code of its status and leaves Modelflag alone.
/// @param status  a code of Solver_Status_Text, for Gear
/// @return whether the end was reached; Calc_Abort tells a cancelled run
bool Solve_Model(Design_State& design, const Vibration_Run& run, Step_Counts& steps,
                 Ode_Method method = Ode_Method::Runge_Kutta, int status = 0);

/// The acceleration and the difference of cam and mass along the trajectory, then Model_Force; under its trap.
/// @return false after a fault and after an abort, which has set Calc_Abort
bool Model_Results(Design_State& design);

/// The second turn of the trajectory mapped onto the cam angle, rows 29 to 32, and the dynamic force, row 33, with the
/// question at each point where the follower leaves the cam.
///
/// Rows 31 and 32 are in the design's time base, as rows 2 and 3 are. Outside the base of seconds the force takes the
/// mass's velocity and acceleration per radian or degree and not per second, and meant: mechanics has omega and
/// omega^2 on them. With a polydyne cam the cam's own motion in the force of models 4 and 5 stays that of rows 1 to 3,
/// and meant: mechanics has rows 22 to 24. (151) to (156).
/// @throws Fault{9} when the table or the trajectory is too short
void Model_Force(Design_State& design);

/// The two coefficients of the polydyne displacement c0 S + c1 A, A per radian. (160).
struct Polydyne_Terms {
    double c0 = 0.0;
    double c1 = 0.0;
};
/// @throws Fault{11} without a spring
Polydyne_Terms Polydyne_Terms_of(const Design_State& design);

/// What the derivatives of the motion rows are multiplied with to be per radian, and the polydyne ones to be stored.
struct Polydyne_Scales {
    double V, A, J, P;
    double V_back, A_back;
};
Polydyne_Scales Polydyne_Scales_of(const Design_State& design);

/// Polydyne displacement, velocity and acceleration, rows 22 to 24, and row 29 from it; Polydyne_Max and _Min. Under
/// its trap.
///
/// The constant 36 stands where the square of two pi, 39.478, belongs, and meant: 8.8 % of the correction is left out.
/// Per second jerk and ping are brought to radians by the square of the speed, where mechanics has its third and fourth
/// power; rows 23 and 24, and so the pressure angle and curvature, are right in the other bases alone. (157) to (160).
/// @return false after a fault
bool Calc_Polydyne(Design_State& design);

/// What is left of the transient of the start when the turn begins that the rows show.
struct Transient {
    double share = 0.0;    // of the response's range: the largest of displacement, velocity and acceleration
    bool died_out = true;  // it is below Transient_Limit
    double cycles = 0.0;   // turns until it is; 0: never, there is no damping
};
inline constexpr double Transient_Limit = 0.01;

/// Compares the states one and two turns after time zero. A trajectory that does not hold both counts as died out.
Transient Find_Transient(const Design_State& design);

/// Tells of a transient that has not died out; says nothing of one that has.
void Tell_Transient(const Design_State& design, const Transient& transient);

/// Rows 9 to 12 as they are go to rows 25 to 28: the profile of the cam that is not polydyne.
void Keep_Kinematic_Profile(Design_State& design);

}  // namespace lobemax
