// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/vibration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/ode_steps.h"

namespace lobemax {

namespace {

constexpr double whole_turn = 360.0;
constexpr int speed_model = 6;  // reserved: the shaft's own speed; no screen sets it

// The rows of the trajectory.
constexpr int error_row = 0;
constexpr int x_row = 1;
constexpr int xdot_row = 2;
constexpr int xddot_row = 3;

/// Last point of the cycle, 360 / Deltatheta.
/// @throws Fault{9} when the table of the calculated data has no such point
int Last_Point(const Design_State& design)
{
    const int last = To_Integer(whole_turn / design.motion.Deltatheta);
    Checked_Place(last, 0, std::min(Max_Points, design.results.CalcData.Last_Point()));
    return last;
}

double Degrees_per_Second(const Design_State& design)
{
    return design.motion.Shaft_speed * Deg_per_Rad;
}

/// The end of the trajectory, counted from 1.
/// @throws Fault{9} when the arrays are shorter than the count says
int Stored(const Design_State& design)
{
    const int count = design.dynamics.Ode_Count;
    Checked_Place(count, 0, std::min(design.results.Ode_Time.Last(), design.results.Ode_States.Last_Point()));
    return count;
}

}  // namespace

double Cam_Period(const Design_State& design)
{
    if (design.motion.Shaft_speed == 0.0)
        throw Fault{division_by_zero};
    return PI2 / design.motion.Shaft_speed;
}

namespace {

void Find_Model_Frequencies(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    const double k1 = d.Kspring(1);
    const double k2 = d.Kspring(2);
    const double m1 = d.Mass_m(1);
    const double m2 = d.Mass_m(2);
    switch (d.Model_Type) {
    case 1:
        d.Omega_Sq(1) = 0.0;
        d.Omega_Sq(2) = k1 / m1;
        break;
    case 2:
        d.Omega_Sq(1) = k1 / m1;
        d.Omega_Sq(2) = (k2 + k1) / m1;
        break;
    case 3:
        d.Omega_Sq(1) = k1 * k2 / (k1 + k2) / m1;
        d.Omega_Sq(2) = k2 / m1;
        break;
    case 4:
        d.Omega_Sq(1) = k1 / m1;
        d.Omega_Sq(2) = k2 / m2;
        break;
    default:
        d.Omega_Sq(1) = k2 / m2;
        d.Omega_Sq(2) = (k2 + k1) / m2;
        break;
    }
    for (const int j : {1, 2})
        d.Omega(j) = Sqr(d.Omega_Sq(j));
}

void Find_Model_Damping(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    const auto critical = [&](int mass, int omega) { return 2 * d.Mass_m(mass) * d.Omega(omega); };
    switch (d.Model_Type) {
    case 1:
        d.Crit_Damping(1) = critical(1, 2);
        d.Crit_Damping(2) = 0.0;
        d.Damping_C(1) = d.Zeta(1) * critical(1, 2);
        d.Damping_C(2) = 0.0;
        break;
    case 2:
        d.Crit_Damping(1) = critical(1, 2);
        d.Crit_Damping(2) = critical(1, 1);
        d.Damping_C(2) = critical(1, 1) * d.Zeta(1);
        d.Damping_C(1) = critical(1, 2) * d.Zeta(2) - d.Damping_C(2);
        break;
    case 3:
        d.Crit_Damping(1) = critical(1, 1);
        d.Crit_Damping(2) = critical(1, 2);
        break;
    case 4:
        d.Crit_Damping(1) = critical(1, 1);
        d.Crit_Damping(2) = critical(2, 2);
        break;
    default:
        d.Crit_Damping(1) = critical(2, 1);
        d.Crit_Damping(2) = critical(2, 2);
        d.Damping_C(1) = critical(2, 1) * d.Zeta(1);
        d.Damping_C(2) = critical(2, 2) * d.Zeta(2) - d.Damping_C(1);
        break;
    }
    if (d.Model_Type == 3 || d.Model_Type == 4) {
        d.Damping_C(1) = d.Zeta(1) * d.Crit_Damping(1);
        d.Damping_C(2) = d.Zeta(2) * d.Crit_Damping(2);
    }
}

void Find_Freq_Ratio(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    const double omega = design.motion.Shaft_speed;
    switch (d.Model_Type) {
    case 1:
        d.Freq_Ratio = omega / d.Omega(2);
        break;
    case 2:
        d.Freq_Ratio = omega / Sqr(d.Kspring(2) / d.Mass_m(1));
        break;
    default:
        if (d.Omega(1) != 0.0)
            d.Freq_Ratio = omega / d.Omega(1);
        break;
    }
}

}  // namespace

double Natural_Hertz(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    return d.Omega(d.Model_Type == 2 ? 1 : 2) / PI2;
}

double Shortest_Motion(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    double shortest = m.Beta_Rad(1);
    for (int i = 2; i <= m.No_of_segments; ++i)
        shortest = std::min<double>(shortest, m.Beta_Rad(i));
    if (m.Shaft_speed == 0.0)
        throw Fault{division_by_zero};
    return shortest / m.Shaft_speed;
}

void Find_Model_Figures(Design_State& design)
{
    Find_Model_Frequencies(design);
    Find_Model_Damping(design);
    Find_Freq_Ratio(design);
    design.dynamics.Gamma_Ratio = Shortest_Motion(design) * Natural_Hertz(design);
}

bool Model_Setup(Design_State& design)
{
    return Trap("Model_Setup", [&] { Find_Model_Figures(design); });
}

Vibration_Model::Vibration_Model(const Design_State& design)
{
    const Table<Single>& data = design.results.CalcData;
    const Dynamics_Group& d = design.dynamics;
    const bool polydyne = design.flags.Polydyne_Calc;
    last_ = static_cast<std::size_t>(Last_Point(design));
    S_ = data.Points(polydyne ? var::Polydyne_S : var::S);
    V_ = data.Points(polydyne ? var::Polydyne_V : var::V);
    by_step_ = Division(design.motion.Deltatheta);
    omega_ = design.motion.Shaft_speed;
    degrees_per_second_ = Degrees_per_Second(design);
    V_per_second_ = Per_Second(design, 1);
    of_xdot_ = 2 * d.Zeta(2) * d.Omega(2);
    of_x_ = d.Omega_Sq(2);
    // Models 1, 3 and 4 follow the cam through their second spring and damper. Model 5 has the form of model 1, and
    // meant: mechanics has that of model 2, and the mass at rest at k1 / (k1 + k2) of the cam's position, half of it
    // for two springs alike. Model 1 reads the second damping ratio though its field fills the first, and meant.
    const int cam = d.Model_Type == 2 ? 1 : 2;
    of_V_ = 2 * d.Zeta(cam) * d.Omega(cam);
    of_S_ = d.Omega_Sq(cam);
    speed_model_ = d.Model_Type == speed_model;
    if (speed_model_) {
        if (!polydyne)
            integral_ = data.Points(var::Torque_Integral);
        integral_max_ = d.Torque_Integral_Max;
        K_ = d.Kspring(1);
        preload_ = d.Preload;
        mass_ = d.Mass;
    }
}

double Vibration_Model::Rate_of_Speed(const Cam& cam) const
{
    return Sqr((2 * omega_ * cam.E - cam.S * cam.S * K_ - 2 * preload_ * cam.S) / mass_);
}

Vibration_Model::Reached Vibration_Model::Reached_at(double t, double x, double xdot) const
{
    Bracket at = Bracket_of(t);
    at.lo = std::min(at.lo, last_);
    at.hi = std::min(at.hi, last_);
    const Cam cam = Cam_at(at);
    return {cam.S, Acceleration(of_V_ * cam.V + of_S_ * cam.S, x, xdot)};
}

namespace {

/// Room for Ode_Max_Steps points, all of them zero. Arrays that have it hold zeros behind the points stored before.
void Clear_Trajectory(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    Row<Single>& time = design.results.Ode_Time;
    Table<Single>& states = design.results.Ode_States;
    const bool fits =
        time.Last() == d.Ode_Max_Steps && states.Last_Point() == d.Ode_Max_Steps && states.Last_Row() == xddot_row;
    if (fits && Bounds{0, time.Last()}.Holds(d.Ode_Count)) {
        const auto stored = static_cast<std::size_t>(d.Ode_Count) + 1;
        std::ranges::fill(time.Points().first(stored), Single{});
        for (int row = 0; row <= xddot_row; ++row)
            std::ranges::fill(states.Points(row).first(stored), Single{});
    } else {
        time.Dimension(d.Ode_Max_Steps, Max_Stored_Steps);
        states.Dimension(xddot_row, d.Ode_Max_Steps, Max_Stored_Steps);
    }
    d.Ode_Count = 0;
}

}  // namespace

bool Solve_Model(Design_State& design, const Vibration_Run& run, Step_Counts& steps, Ode_Method method, int status)
{
    Apply(design, Event::vibration_began);
    design.flags.Calc_Abort = false;
    const bool no_fault = Trap("Solve_Model", [&] {
        Dynamics_Group& d = design.dynamics;
        Clear_Trajectory(design);
        const double end = run.t_end ? *run.t_end : 2 * Cam_Period(design);
        d.Ode_Save_Interval = (end - run.t_start) / d.Ode_Max_Steps;
        if (method == Ode_Method::Gear) {
            Report_Solver_Status(design, status);
            return;
        }
        const Vibration_Model model(design);
        Ode_Vector y{d.x_Initial, 0.0};
        const int equations = d.Model_Type == speed_model ? 1 : 2;
        Ode_Integrate(design, model, y, equations, run.t_start, end, run.eps, run.start_step, run.smallest_step,
                      steps.good, steps.retried);
        if (!design.flags.Calc_Abort)
            Reach(design, Mark::vibration);
    });
    return no_fault && design.flags.Modelflag;
}

bool Model_Results(Design_State& design)
{
    const bool no_fault = Trap("Model_Results", [&] {
        const Vibration_Model model(design);
        const auto count = static_cast<std::size_t>(Stored(design)) + 1;
        const auto times = design.results.Ode_Time.Points().first(count);
        const auto states = [&](int row) { return design.results.Ode_States.Points(row).first(count); };
        const auto error = states(error_row);
        const auto x = states(x_row);
        const auto xdot = states(xdot_row);
        const auto xddot = states(xddot_row);
        for (std::size_t j = 1; j < count; ++j) {
            const auto reached = model.Reached_at(times[j], x[j], xdot[j]);
            xddot[j] = reached.Xddot;
            error[j] = reached.S - x[j];
        }
        Model_Force(design);
    });
    return no_fault && !design.flags.Calc_Abort;
}

namespace {

/// Rows 29 to 32 at one place of the trajectory, in time.
struct Response {
    double error;
    double x;
    double xdot;
    double xddot;
};

/// The stored trajectory, asked at rising times. Beyond its last point it holds the last state.
class Trajectory {
public:
    explicit Trajectory(const Design_State& design)
        : last_(static_cast<std::size_t>(Stored(design))),
          time_(design.results.Ode_Time.Points().first(last_ + 1)),
          degrees_per_second_(Degrees_per_Second(design))
    {
        for (const int row : {error_row, x_row, xdot_row, xddot_row})
            states_[static_cast<std::size_t>(row)] = design.results.Ode_States.Points(row).first(last_ + 1);
    }
    /// Goes on to the last stored point at or before t.
    void Go_to(double t)
    {
        while (j_ < last_ && time_[j_ + 1] <= t)
            ++j_;
    }
    /// @return false when the two points about the angle, degrees, are one
    bool At(double angle, Response& found)
    {
        Go_to(angle / degrees_per_second_);
        const std::size_t k = std::min(j_ + 1, last_);
        double share = 0.0;
        if (k > j_) {
            const double a_j = degrees_per_second_ * time_[j_];
            const double d = degrees_per_second_ * time_[k] - a_j;
            if (d == 0.0)
                return false;
            share = (angle - a_j) / d;
        }
        const auto between = [&](std::size_t row) {
            const double from = states_[row][j_];
            return (states_[row][k] - from) * share + from;
        };
        found = {between(error_row), between(x_row), between(xdot_row), between(xddot_row)};
        return true;
    }
    bool Advanced() const { return last_ > 1 && time_[last_] != 0.0; }

private:
    std::size_t last_;
    std::span<const Single> time_;
    std::array<std::span<const Single>, xddot_row + 1> states_{};
    double degrees_per_second_;
    std::size_t j_ = 0;
};

/// What does not change from point to point of the force.
class Dynamic_Train {
public:
    explicit Dynamic_Train(const Design_State& design)
        : d_(design.dynamics),
          model_(design.dynamics.Model_Type),
          V_per_second_(Per_Second(design, 1)),
          A_per_second_(Per_Second(design, 2)),
          length_(Length_Divisor(design)),
          arm_(design.cam.Translating ? 1.0 : Rad_per_Deg * design.cam.ArmRad)
    {
    }
    bool Tests() const { return model_ != Form_Closed_Model; }
    /// A force of zero or less shows as 0 where the cam carries a mass of its own.
    bool Shows_Zero() const { return model_ >= 4; }
    /// @param r, s  response and cam motion as their rows hold them
    double Force(const Response& r, double S, double V, double A) const
    {
        const double x = Length(r.x);
        const double v = Length(r.xdot);
        const double a = Length(r.xddot);
        const double m1 = d_.Mass_m(1);
        switch (model_) {
        case 1:  // a track pulls as it pushes: neither preload nor test
            return a * m1;
        case 2:  // C2 is the train's damper in the equation, and meant here as the closing one's: 78 N at 0.9 m/s
            return a * m1 + v * d_.Damping_C(2) + x * d_.Kspring(2) + d_.Preload;
        case 3:  // the mass presses the closing spring, and meant: mechanics has the cam. 0.2 % for a stiff train
            return a * m1 + v * d_.Damping_C(1) + x * d_.Kspring(1) + d_.Preload;
        case 4:
            return (d_.Damping_C(1) + d_.Damping_C(2)) * Length(V) * V_per_second_ + Length(A) * A_per_second_ * m1 +
                   (d_.Kspring(1) + d_.Kspring(2)) * Length(S) - v * d_.Damping_C(2) - x * d_.Kspring(2) + d_.Preload;
        default:
            return a * d_.Mass_m(2) + Length(A) * A_per_second_ * m1 + v * d_.Damping_C(2) + x * d_.Kspring(2) +
                   d_.Preload;
        }
    }

private:
    double Length(double motion) const { return motion * arm_ / length_; }

    const Dynamics_Group& d_;
    int model_;
    double V_per_second_;
    double A_per_second_;
    double length_;
    double arm_;
};

/// The follower leaves the cam. @return false when the user's abort takes effect
bool Jumps(Design_State& design, double theta)
{
    constexpr int abort_answer = 3;
    constexpr int retry_answer = 4;
    Flags_Group& f = design.flags;
    f.Separated = true;
    if (f.Separation_Answer == abort_answer) {
        f.Calc_Abort = true;
        return false;
    }
    if (f.Separation_Answer == retry_answer)
        Check_Separation(design, theta, f.Separation_Answer);
    return true;
}

void No_Solution(Design_State& design)
{
    Show_Message(
        " The solution has not advanced beyond time zero\n"
        "Something is wrong with the solution. - Cannot continue.",
        Buttons::OK, Symbol::exclamation);
    design.flags.Calc_Abort = true;
}

}  // namespace

void Model_Force(Design_State& design)
{
    Table<Single>& data = design.results.CalcData;
    const int last = Last_Point(design);
    const auto row = [&](int v) { return data.Points(v).first(static_cast<std::size_t>(last) + 1); };
    for (const int v : {var::Response_Error, var::Response_X, var::Response_Xdot, var::Response_Xddot})
        std::ranges::fill(row(v), Single{});
    const auto theta = row(var::Angle);
    const auto S = row(var::S);
    const auto V = row(var::V);
    const auto A = row(var::A);
    const auto error = row(var::Response_Error);
    const auto x = row(var::Response_X);
    const auto xdot = row(var::Response_Xdot);
    const auto xddot = row(var::Response_Xddot);
    const auto force = row(var::Dynamic_Force);
    const double xdot_divisor = Per_Second(design, 1);
    const double xddot_divisor = Per_Second(design, 2);
    const Dynamic_Train train(design);
    Trajectory trajectory(design);
    if (!trajectory.Advanced()) {
        No_Solution(design);
        return;
    }
    for (int i = 0; i <= last; ++i) {
        const auto p = static_cast<std::size_t>(i);
        Response at{};
        if (!trajectory.At(whole_turn + i * design.motion.Deltatheta, at)) {
            No_Solution(design);
            return;
        }
        error[p] = at.error;
        x[p] = at.x;
        xdot[p] = at.xdot / xdot_divisor;
        xddot[p] = at.xddot / xddot_divisor;
        const double F = train.Force({error[p], x[p], xdot[p], xddot[p]}, S[p], V[p], A[p]);
        const bool jumps = train.Tests() && F <= 0.0;
        force[p] = jumps && train.Shows_Zero() ? 0.0 : F;
        if (jumps && !Jumps(design, theta[p]))
            return;
    }
    const Extremes extremes = MaxMin2(data, var::Dynamic_Force, 0, design.motion.Max_Data_Points_used);
    design.dynamics.Force_Dyn_Max = extremes.largest;
    design.dynamics.Force_Dyn_Min = extremes.smallest;
}

Polydyne_Terms Polydyne_Terms_of(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const double f = design.motion.Shaft_speed / PI2;
    // 36 for the square of two pi, 39.478: meant.
    const auto dynamic = [f](double mass, double spring) {
        if (spring == 0.0)
            throw Fault{division_by_zero};
        return f * f * 36.0 * mass / spring;
    };
    switch (d.Model_Type) {
    case 2:
    case 5:  // of model 5 the mass of the follower stands where the equation has that of the end: meant
        return {(d.Kspring(2) + d.Kspring(1)) / d.Kspring(1), dynamic(d.Mass_m(1), d.Kspring(1))};
    case 3:
        return {1.0, dynamic(d.Mass_m(1), d.Kspring(2))};
    case 4:
        return {1.0, dynamic(d.Mass_m(2), d.Kspring(2))};
    default:  // a form-closed train has none: its polydyne cam would stand still
        return {};
    }
}

Polydyne_Scales Polydyne_Scales_of(const Design_State& design)
{
    const double omega = design.motion.Shaft_speed;
    const double w = 1 / omega;
    constexpr double degrees = 180 / PI;
    constexpr double thousand = 1000.0;  // in which jerk and ping are kept per second
    switch (design.motion.Time_Base) {
    case 2:
        return {degrees, degrees, degrees, degrees, PI / 180, PI / 180};
    case 3:
        return {1, 1, 1, 1, 1, 1};
    default:  // the square for all three, where mechanics has the second, third and fourth power: meant
        return {w, w * w, w * w * thousand, w * w * thousand, omega, omega * omega};
    }
}

bool Calc_Polydyne(Design_State& design)
{
    return Trap("Calc_Polydyne", [&] {
        if (design.motion.Shaft_speed == 0.0)
            throw Fault{division_by_zero};
        Table<Single>& data = design.results.CalcData;
        const int last = design.motion.Max_Data_Points_used;
        Checked_Place(last, 0, std::min(Max_Points, data.Last_Point()));
        const Polydyne_Terms terms = Polydyne_Terms_of(design);
        const Polydyne_Scales scale = Polydyne_Scales_of(design);
        for (int i = 0; i <= last; ++i) {
            const double A = data(var::A, i) * scale.A;
            data(var::Polydyne_S, i) = A * terms.c1 + data(var::S, i) * terms.c0;
            data(var::Polydyne_V, i) =
                (data(var::V, i) * scale.V * terms.c0 + data(var::J, i) * scale.J * terms.c1) * scale.V_back;
            data(var::Polydyne_A, i) = (data(var::Ping, i) * scale.P * terms.c1 + A * terms.c0) * scale.A_back;
            data(var::Response_Error, i) = data(var::Polydyne_S, i) - data(var::Response_X, i);
        }
        const Extremes extremes = MaxMin2(data, var::Polydyne_S, 0, last);
        design.dynamics.Polydyne_Max = extremes.largest;
        design.dynamics.Polydyne_Min = extremes.smallest;
    });
}

namespace {

/// Displacement and velocity at a time between two stored points, by the cubic through their states and slopes.
struct Moment {
    double x;
    double xdot;
};

std::optional<Moment> State_at(const Design_State& design, double t)
{
    const Results_Group& r = design.results;
    const int count = Stored(design);
    if (count < 2 || r.Ode_Time(1) > t || Single(r.Ode_Time(count)) < Single(t))
        return std::nullopt;
    const auto times = r.Ode_Time.Points().subspan(1, static_cast<std::size_t>(count));
    const auto after = std::upper_bound(times.begin(), times.end(), t, [](double a, const Single& b) { return a < b; });
    const int k = std::min(static_cast<int>(after - times.begin()) + 1, count);
    const int j = k - 1;
    const double h = r.Ode_Time(k) - r.Ode_Time(j);
    if (!(h > 0.0))
        return std::nullopt;
    const double u = std::min((t - r.Ode_Time(j)) / h, 1.0);
    const auto cubic = [&](int row, int slope) {
        const double a = r.Ode_States(row, j);
        const double b = r.Ode_States(row, k);
        return (1 + 2 * u) * (1 - u) * (1 - u) * a + u * u * (3 - 2 * u) * b +
               u * (1 - u) * h * ((1 - u) * r.Ode_States(slope, j) - u * r.Ode_States(slope, k));
    };
    return Moment{cubic(x_row, xdot_row), cubic(xdot_row, xddot_row)};
}

}  // namespace

Transient Find_Transient(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const double period = Cam_Period(design);
    const auto one = State_at(design, period);
    const auto two = State_at(design, 2 * period);
    const double omega = d.Omega(2);
    if (!one || !two || omega == 0.0)
        return {};
    // The amplitude of a free vibration that would make the difference, over the range of the response.
    const double difference = std::hypot(two->x - one->x, (two->xdot - one->xdot) / omega);
    Transient found;
    const Table<Single>& data = design.results.CalcData;
    double weight = 1.0;
    for (const int row : {var::Response_X, var::Response_Xdot, var::Response_Xddot}) {
        const Extremes extremes = MaxMin2(data, row, 0, design.motion.Max_Data_Points_used);
        const int order = row - var::Response_X;
        const double to_time = order == 0 ? 1.0 : Per_Second(design, order);
        const double range = (extremes.largest - extremes.smallest) * to_time;
        if (range > 0.0)
            found.share = std::max(found.share, difference * weight / range);
        weight *= omega;
    }
    // In a turn it falls to exp(-decay) of itself, so that the difference is at least 1 - exp(-decay) of it.
    const double decay = d.Zeta(2) * omega * period;
    if (decay > 0.0)
        found.share /= -std::expm1(-decay);
    found.died_out = found.share <= Transient_Limit;
    if (!found.died_out && decay > 0.0)
        found.cycles = 1 + std::ceil(std::log(found.share / Transient_Limit) / decay);
    return found;
}

void Tell_Transient(const Design_State& design, const Transient& transient)
{
    if (transient.died_out)
        return;
    const auto shown = [&](double value, int decimals) {
        return In_Number_Format(design, Shortest(FNRound(value, decimals)));
    };
    std::string text =
        "Two cam cycles were not enough for the transient of the start to die out: \nat the end of the "
        "first it is up to " +
        shown(transient.share * 100, 0) + " % of the response.\n";
    text += transient.cycles > 0.0 ? "It would take " + shown(transient.cycles, 0) + " cycles until it is below " +
                                         shown(Transient_Limit * 100, 0) + " %.\n"
                                   : std::string("Without damping it never dies out.\n");
    text += "The results over the cam angle are those of the second cycle.";
    Show_Message(text, Buttons::OK, Symbol::information);
}

void Keep_Kinematic_Profile(Design_State& design)
{
    Table<Single>& data = design.results.CalcData;
    constexpr int rows = 4;
    for (int k = 0; k < rows; ++k)
        std::ranges::copy(data.Points(var::X + k), data.Points(var::Nonpolydyne_X + k).begin());
}

}  // namespace lobemax
