// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/torque_compensation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/balance_integrator.h"
#include "dynamics/division.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/trial_design.h"
#include "motion/segment_store.h"

namespace lobemax {

namespace {

constexpr int per_second = 1;
constexpr double whole_turn = 360.0;
constexpr double share_of_dwell = 1e-6;           // of the peak torque: less is none
constexpr double share_of_velocity_limit = 1e-6;  // of the primary's peak velocity
constexpr double start_over_limit = 2.0;          // a motion starts with this many velocity limits
constexpr double rest_over_limit = 4.0;           // and has all but ended with less
constexpr double largest_energy_error = 0.01;     // that nobody needs to be told of

/// Lengths of the forces in one unit of a row of positions.
double Length_of_Position(const Design_State& design)
{
    const double length = design.cam.Translating ? 1.0 : Rad_per_Deg * design.cam.ArmRad;
    return design.motion.Time_Base == per_second ? length / Length_Divisor(design) : length;
}

bool Refuse(const std::string& why)
{
    Show_Message(why, Buttons::OK, Symbol::exclamation);
    return false;
}

double Peak(const Comp_Row& row)
{
    double peak = 0.0;
    for (const double value : row)
        peak = std::max(peak, std::abs(value));
    return peak;
}

/// Area of a straight line from a to b over a length of 1, apart above and below zero.
struct Areas {
    double above = 0.0;
    double below = 0.0;
};
Areas Areas_between(double a, double b)
{
    if (a * b >= 0.0) {
        const double area = (a + b) / 2.0;
        return area > 0.0 ? Areas{area, 0.0} : Areas{0.0, area};
    }
    const double first = a * a / (a - b) / 2.0;  // signed as a
    const double second = b * b / (b - a) / 2.0;
    return a > 0.0 ? Areas{first, second} : Areas{second, first};
}

/// The motion, force and torque of the primary train. docs/theory.md, (161), (162).
struct Primary {
    double peak_velocity = 0.0;
    Comp_Row torque{};
};
Primary Primary_of(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const Table<Single>& data = design.results.CalcData;
    const double length = Length_of_Position(design);
    const double first = length * Per_Second(design, 1);
    const double second = length * Per_Second(design, 2);
    Primary primary;
    for (int i = 0; i <= Comp_Points; ++i) {
        const double v = data(var::V, i) * first;
        const double force =
            d.Return_Spring_Rate * (data(var::S, i) * length) + d.Preload + d.Mass * (data(var::A, i) * second);
        primary.peak_velocity = std::max(primary.peak_velocity, std::abs(v));
        primary.torque[static_cast<std::size_t>(i)] = force * v / design.motion.Shaft_speed;
    }
    return primary;
}

/// What the balancing train is made for: dwells without any torque, and as much of it above as below zero.
///
/// The sum over the points of a stored motion misses zero by its rounding and by the corners of the torque, some 1e-6
/// of it. Both signs are scaled to meet, so that the energy closes after a turn. docs/theory.md, (165).
/// @return false for a torque of one sign
bool Close_Cycle(Comp_Row& torque)
{
    const double least = share_of_dwell * Peak(torque);
    for (double& value : torque)
        if (std::abs(value) <= least)
            value = 0.0;
    torque.back() = torque.front();
    Areas sum;
    for (std::size_t i = 0; i < Comp_Points; ++i) {
        const Areas areas = Areas_between(torque[i], torque[i + 1]);
        sum.above += areas.above;
        sum.below += areas.below;
    }
    if (!(sum.above > 0.0 && sum.below < 0.0))
        return false;
    const double excess = (sum.above + sum.below) / (sum.above - sum.below);
    for (double& value : torque)
        value *= value > 0.0 ? 1.0 - excess : 1.0 + excess;
    return true;
}

/// The cycle in motions, and the level of the balancing train's energy at the points. docs/theory.md, (163), (164).
class Cycle {
public:
    explicit Cycle(const Comp_Balance& balance) : balance_(balance)
    {
        Find_Rests();
        Find_Motions();
    }
    const std::vector<Comp_Motion>& Motions() const { return motions_; }
    double Level(int point) const { return level_[static_cast<std::size_t>(point)]; }
    double Range() const { return range_; }

private:
    /// An instant without torque, where the balancing follower rests.
    struct Rest {
        double theta;
        double level;
    };

    void Find_Rests()
    {
        const Comp_Row& T = balance_.torque;
        const double step = balance_.Deltatheta * Rad_per_Deg;
        double given = 0.0;  // by the shaft to the primary train since the start
        rests_.reserve(Comp_Points);
        for (std::size_t i = 0; i < Comp_Points; ++i) {
            const double angle = static_cast<double>(i) * balance_.Deltatheta;
            level_[i] = -given;
            if (T[i] == 0.0) {
                rests_.push_back({angle, -given});
            } else if (T[i] * T[i + 1] < 0.0) {
                const double share = T[i] / (T[i] - T[i + 1]);
                rests_.push_back({angle + share * balance_.Deltatheta, -given - T[i] * share / 2.0 * step});
            }
            given += (T[i] + T[i + 1]) / 2.0 * step;
        }
        const auto [lowest, highest] = std::minmax_element(
            rests_.begin(), rests_.end(), [](const Rest& a, const Rest& b) { return a.level < b.level; });
        const double least = lowest->level;
        range_ = highest->level - least;
        level_.back() = level_.front();
        for (double& level : level_)
            level -= least;
        for (Rest& rest : rests_)
            rest.level -= least;
    }

    void Find_Motions()
    {
        motions_.reserve(rests_.size());
        for (std::size_t k = 0; k < rests_.size(); ++k) {
            const Rest& from = rests_[k];
            const bool last = k + 1 == rests_.size();
            const Rest& to = rests_[last ? 0 : k + 1];
            const double end = last ? to.theta + whole_turn : to.theta;
            const double point = (std::floor(from.theta / balance_.Deltatheta) + 1.0) * balance_.Deltatheta;
            const double torque = Torque_at_Angle(std::min(point, end));
            const Comp_Motion_Kind kind = torque < 0.0   ? Comp_Motion_Kind::rise
                                          : torque > 0.0 ? Comp_Motion_Kind::fall
                                                         : Comp_Motion_Kind::dwell;
            if (kind == Comp_Motion_Kind::dwell && !motions_.empty() && motions_.back().kind == kind)
                motions_.back().to = end;
            else
                motions_.push_back({kind, from.theta, end, from.level, to.level});
        }
    }
    double Torque_at_Angle(double theta) const
    {
        return balance_.torque[static_cast<std::size_t>(std::lround(theta / balance_.Deltatheta)) % Comp_Points];
    }

    const Comp_Balance& balance_;
    std::vector<Rest> rests_;
    std::vector<Comp_Motion> motions_;
    Comp_Row level_{};
    double range_ = 0.0;
};

/// Where the balancing train rests on a level of energy: docs/theory.md, (164).
double Rest_Position(const Comp_Balance& b, double level)
{
    return level <= 0.0 ? 0.0 : 2.0 * level / (b.preload + std::sqrt(b.preload * b.preload + 2.0 * b.spring * level));
}

/// Comp_Torque_At, within the steps of the integration.
inline double Torque_at(const Comp_Balance& balance, const Division& by_step, double t)
{
    double theta = balance.omega * t * (180.0 / PI);
    if (theta >= whole_turn)
        theta -= whole_turn;
    if (theta < 0.0)  // the start of the cycle, to the rounding of its time
        theta = 0.0;
    const auto place = static_cast<std::int64_t>(by_step(theta));
    const double lo = static_cast<double>(place) * balance.Deltatheta;
    const double frac = by_step(theta - lo);
    const std::size_t i = static_cast<std::size_t>(place) % Comp_Points;
    return balance.torque[i] + frac * (balance.torque[i + 1] - balance.torque[i]);
}

inline void Derivs_under(const Comp_Balance& b, double T, const Balance_State& y, Balance_State& dy)
{
    dy[0] = y[1];
    if (std::abs(dy[0]) >= b.velocity_limit) {
        dy[1] = (-b.omega * T) / (b.mass * y[1]) - (b.spring * y[0]) / b.mass - b.preload / b.mass;
        return;
    }
    const double f = b.spring * y[0] + b.preload;
    dy[1] = (-f + Sqr(f * f - (b.mass * 4.0 * b.omega) * T)) / (b.mass + b.mass);
}

/// The right-hand side of one motion in a time of its own, from its start; a fall runs backwards from its end, which
/// makes it a rise under the opposite torque.
struct Motion_Equation {
    const Comp_Balance* balance;
    Division by_step;
    double start = 0.0;  // seconds from the start of the cycle
    double sign = 1.0;   // -1: mirrored

    /// The torque.
    double At(double t) const { return sign * Torque_at(*balance, by_step, start + sign * t); }
    void Slope(double T, const Balance_State& y, Balance_State& dy) const { Derivs_under(*balance, T, y, dy); }
};

/// The integration of one cycle.
class Run_Through {
public:
    Run_Through(Design_State& design, const Comp_Balance& balance, const Cycle& cycle, Compensation& result)
        : design_(design), balance_(balance), by_step_(balance.Deltatheta), cycle_(cycle), result_(result)
    {
    }

    /// @return false when Calc_Abort was set
    bool Go()
    {
        Balance_Integrator integrator(design_, Motion_Equation{&balance_, by_step_}, result_.run);
        for (const Comp_Motion& motion : cycle_.Motions()) {
            Rest_at_Ends(motion);
            if (motion.kind != Comp_Motion_Kind::dwell && !Integrate(motion, integrator))
                return false;
        }
        result_.steps = integrator.Steps();
        result_.S.back() = result_.S.front();
        result_.V.back() = result_.V.front();
        return true;
    }

    /// Where a motion has not come to rest: there its cam pushes no more.
    bool Left_Cam() const { return left_cam_; }
    double Left_at() const { return left_at_; }

private:
    double Seconds(double degrees) const { return degrees * Rad_per_Deg / balance_.omega; }
    std::size_t Place(int point) const { return static_cast<std::size_t>(point % Comp_Points); }

    void Rest_at_Ends(const Comp_Motion& motion)
    {
        const auto first = static_cast<int>(std::ceil(motion.from / balance_.Deltatheta));
        const auto last = static_cast<int>(std::floor(motion.to / balance_.Deltatheta));
        const double position = Rest_Position(balance_, motion.level_from);
        for (int i = first; i <= last; ++i) {
            const double angle = i * balance_.Deltatheta;
            if (motion.kind == Comp_Motion_Kind::dwell || angle == motion.from)
                result_.S[Place(i)] = position;
            else if (angle == motion.to)
                result_.S[Place(i)] = Rest_Position(balance_, motion.level_to);
            else
                continue;
            result_.V[Place(i)] = 0.0;
        }
    }

    /// The state a little after rest, where the velocity has grown to a few limits: docs/theory.md, (169).
    Balance_State After_Rest(const Motion_Equation& equation, double rest, double to_first_point, double& t) const
    {
        const double T = equation.At(to_first_point);
        const double rate = -balance_.omega * T / to_first_point;  // of the power, positive
        const double f = balance_.spring * rest + balance_.preload;
        const double a = 2.0 * rate / (f + std::sqrt(f * f + 4.0 * balance_.mass * rate));
        t = std::min(start_over_limit * balance_.velocity_limit / a, to_first_point / 2.0);
        return {rest + a * t * t / 2.0, a * t};
    }

    bool Integrate(const Comp_Motion& motion, Balance_Integrator<Motion_Equation>& integrator)
    {
        const bool mirrored = motion.kind == Comp_Motion_Kind::fall;
        const double begin = mirrored ? motion.to : motion.from;
        const auto first = static_cast<int>(std::floor(motion.from / balance_.Deltatheta)) + 1;
        const auto last = static_cast<int>(std::ceil(motion.to / balance_.Deltatheta)) - 1;
        const Motion_Equation equation{&balance_, by_step_, Seconds(begin), mirrored ? -1.0 : 1.0};
        const double rest = Rest_Position(balance_, mirrored ? motion.level_to : motion.level_from);
        const auto time_to = [&](int point) { return Seconds(std::abs(point * balance_.Deltatheta - begin)); };
        double t = 0.0;
        const Balance_State started = After_Rest(equation, rest, time_to(mirrored ? last : first), t);
        integrator.Start(t, started, equation);
        for (int k = 0; k <= last - first; ++k) {
            const int point = mirrored ? last - k : first + k;
            if (!integrator.To(time_to(point)))
                return false;
            Store(point, integrator.State(), equation.sign);
            if (Stopped(motion.kind, integrator.Steps()))
                return false;
            const bool slows_down = 2 * k > last - first;
            if (slows_down && integrator.State()[1] < rest_over_limit * balance_.velocity_limit) {
                Creep(mirrored, mirrored ? first : last, point);
                return true;
            }
        }
        const int end_point = mirrored ? first : last;
        if (!Comes_to_Rest(equation, integrator.State(), time_to(end_point),
                           Seconds(motion.to - motion.from) - time_to(end_point))) {
            left_cam_ = true;
            left_at_ = std::fmod(mirrored ? motion.from : motion.to, whole_turn);
        }
        return true;
    }

    /// The last points of a motion that has all but ended: they lie on the level of the energy.
    void Creep(bool mirrored, int end_point, int from_point)
    {
        while (from_point != end_point) {
            from_point += mirrored ? -1 : 1;
            const double position = Rest_Position(balance_, cycle_.Level(from_point % Comp_Points));
            Store(from_point, {position, 0.0}, 1.0);
        }
    }

    /// Whether a motion comes to rest after its last point, where the torque goes to zero in a straight line.
    /// docs/theory.md, (174).
    bool Comes_to_Rest(const Motion_Equation& equation, const Balance_State& y, double t, double left) const
    {
        const double T = equation.At(t);
        const double rate = -balance_.omega * T / left;  // of the power, positive
        const double f = balance_.spring * y[0] + balance_.preload;
        const double radicand = f * f - 4.0 * balance_.mass * rate;
        return radicand >= 0.0 && y[1] <= (f + std::sqrt(radicand)) / (2.0 * balance_.mass) * left;
    }

    void Store(int point, const Balance_State& y, double sign)
    {
        const std::size_t i = Place(point);
        result_.S[i] = y[0];
        result_.V[i] = sign * y[1];
        const double energy =
            balance_.mass * y[1] * y[1] / 2.0 + balance_.spring * y[0] * y[0] / 2.0 + balance_.preload * y[0];
        const double error = std::abs(energy - cycle_.Level(static_cast<int>(i))) / cycle_.Range();
        result_.energy_error = std::max(result_.energy_error, error);
        ++done_;
    }

    bool Stopped(Comp_Motion_Kind kind, Long steps)
    {
        if (!result_.run.progress || !result_.run.progress({kind, done_ / double{Comp_Points}, steps}))
            return false;
        design_.flags.Calc_Abort = true;
        return true;
    }

    Design_State& design_;
    const Comp_Balance& balance_;
    Division by_step_;
    const Cycle& cycle_;
    Compensation& result_;
    int done_ = 0;
    bool left_cam_ = false;
    double left_at_ = 0.0;
};

/// Acceleration, contact force, torques and their figures. docs/theory.md, (170) to (173).
void Find_Torques(const Comp_Balance& b, Compensation& c)
{
    const double step = b.Deltatheta * Rad_per_Deg / b.omega;
    for (std::size_t i = 0; i < Comp_Points; ++i) {
        const std::size_t before = (i + Comp_Points - 1) % Comp_Points;
        c.A[i] = (c.V[i + 1] - c.V[before]) / (2.0 * step);
        c.F[i] = b.mass * c.A[i] + b.spring * c.S[i] + b.preload;
        c.Tc[i] = c.F[i] * c.V[i] / b.omega;
        c.net[i] = c.Tp[i] + c.Tc[i];
    }
    for (Comp_Row* row : {&c.A, &c.F, &c.Tc, &c.net})
        row->back() = row->front();
    c.percent = 100.0 * (1.0 - Peak(c.net) / Peak(c.Tp));
    const auto smallest = std::min_element(c.F.begin(), c.F.end());
    c.smallest_force = *smallest;
    c.smallest_angle = static_cast<double>(smallest - c.F.begin()) * b.Deltatheta;
}

/// Pressure angle and curvature of the balancing cam on a cam of the design's size; the design stays as it is.
void Find_Geometry(const Design_State& design, Compensation& c)
{
    Design_State other = Trial_Design(design);
    other.flags.Skip_Profile = true;
    other.flags.Calc_Error = other.flags.Math_Error = false;
    Overwrite_Motion(other, c);
    Apply(other, Event::compensation_done);
    if (!Calc_Phi(other, other.cam.Followtype) || !Calc_Rho(other, other.cam.Followtype))
        return;
    for (int i = 0; i <= Comp_Points; ++i) {
        c.phi[static_cast<std::size_t>(i)] = other.results.CalcData(var::Phi, i);
        c.rho[static_cast<std::size_t>(i)] = other.results.CalcData(var::Rho, i);
    }
}

void Store_Torques(Design_State& design, const Compensation& c)
{
    Table<Single>& data = design.results.CalcData;
    for (int i = 0; i <= Comp_Points; ++i) {
        data(var::Comp_Torque, i) = c.Tc[static_cast<std::size_t>(i)];
        data(var::Net_Torque, i) = c.net[static_cast<std::size_t>(i)];
    }
}

void Tell_Figures(const Design_State& design, const Compensation& c)
{
    const auto tell = [](const std::string& text) { Show_Message(text, Buttons::OK, Symbol::exclamation); };
    const Unit_Words& words = Words_of_Units(design.identity.WhichUnit);
    if (!(c.smallest_force > 0.0))
        tell("The compensating follower would leave its cam at Theta =  " +
             In_Number_Format(design, Shortest(FNRound(c.smallest_angle, 2))) + " deg: its smallest contact force is " +
             Trim(FNRoundStr(design, c.smallest_force, design.identity.Decimals_2)) + " " + words.force + ".\n" +
             (c.run.eps > Balance_Accuracy{}.eps
                  ? "The accuracy value is rough: try a smaller one first, and recalculate."
                  : "Try increasing its spring rate, its preload, or both, or a smaller mass, and recalculate."));
    if (c.energy_error > largest_energy_error)
        tell("The compensating motion misses its energy by " +
             In_Number_Format(design, Shortest(FNRound(100.0 * c.energy_error, 1))) +
             " %.\nTry a smaller accuracy value, and recalculate.");
    if (Length_Divisor(design) != 1.0 && design.motion.Time_Base != per_second)
        tell(std::string("In this time base the compensation counts lengths in ") + words.length +
             " beside a spring rate per metre.\n"
             "Choose derivatives per second for a cam that is to be made, and recalculate.");
}

bool May_Compensate(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    if (!Points_a_Degree_Apart(design))
        return false;
    if (m.Deltatheta != 1.0 || m.Max_Data_Points_used != Comp_Points)
        return Refuse("The stored motion must have a point each degree of the cycle.");
    if (!(m.Shaft_speed > 0.0))
        return Refuse("A compensating cam needs a positive shaft speed: time runs forward.");
    return true;
}

bool Compensate(Design_State& design, Compensation& result)
{
    Dynamics_Group& d = design.dynamics;
    const Primary primary = Primary_of(design);
    result.Tp = primary.torque;
    Comp_Balance balance{.omega = design.motion.Shaft_speed,
                         .Deltatheta = design.motion.Deltatheta,
                         .mass = d.Comp_Mass,
                         .spring = d.Comp_Spring_Rate,
                         .preload = d.Comp_Preload,
                         .velocity_limit = share_of_velocity_limit * primary.peak_velocity,
                         .torque = primary.torque};
    d.Torque_Velocity_Limit = balance.velocity_limit;
    if (!Close_Cycle(balance.torque))
        return Refuse(
            "The inertia torque of this cam is zero or never changes its sign: there is nothing to compensate.");
    const Cycle cycle(balance);
    Run_Through work(design, balance, cycle, result);
    if (!work.Go())
        return false;
    result.motions = cycle.Motions();
    Find_Torques(balance, result);
    if (work.Left_Cam() && result.smallest_force > 0.0) {
        result.smallest_force = 0.0;
        result.smallest_angle = work.Left_at();
    }
    Store_Torques(design, result);
    Find_Geometry(design, result);
    return true;
}

/// Central differences around the cycle of a row, over a step; the last point is the first again.
void Differentiate(Table<Single>& data, int from, int into, double step)
{
    const auto y = data.Points(from);
    const auto slope = data.Points(into);
    for (std::size_t i = 0; i < Comp_Points; ++i) {
        const std::size_t before = (i + Comp_Points - 1) % Comp_Points;
        slope[i] = (y[i + 1] - y[before]) / (2.0 * step);
    }
    slope[Comp_Points] = slope[0];
}

}  // namespace

double Comp_Torque_At(const Comp_Balance& balance, double t)
{
    return Torque_at(balance, Division(balance.Deltatheta), t);
}

void Comp_Derivs(const Comp_Balance& balance, double t, const Balance_State& y, Balance_State& dy)
{
    Derivs_under(balance, Comp_Torque_At(balance, t), y, dy);
}

std::string_view Name_of(Comp_Motion_Kind kind)
{
    switch (kind) {
    case Comp_Motion_Kind::rise:
        return "rise";
    case Comp_Motion_Kind::fall:
        return "fall";
    case Comp_Motion_Kind::dwell:
        return "dwell";
    }
    throw Fault{internal_error};
}

bool Points_a_Degree_Apart(const Design_State& design)
{
    return design.motion.Deltatheta >= 1.0 ||
           Refuse(
               "This routine requires that delta theta be no smaller than 1 degree.\n"
               "Please return to the SVAJ screen and recalculate the cam with delta theta = 1.");
}

bool Calc_Compensation(Design_State& design, const Compensation_Run& run, Compensation& result)
{
    bool done = false;
    design.flags.Calc_Abort = false;
    Trap("Calc_Compensation", [&] {
        if (!May_Compensate(design))
            return;
        result = {};
        result.run = run;
        done = Compensate(design, result);
    });
    if (done)
        Tell_Figures(design, result);
    return done;
}

void Overwrite_Motion(Design_State& design, const Compensation& result)
{
    Table<Single>& data = design.results.CalcData;
    const Motion_Group& m = design.motion;
    const double first = Per_Second(design, 1);
    const double second = Per_Second(design, 2);
    for (int i = 0; i <= Comp_Points; ++i) {
        const auto k = static_cast<std::size_t>(i);
        data(var::S, i) = Shown_Length(design, result.S[k]);
        data(var::V, i) = Shown_Length(design, result.V[k]) / first;
        data(var::A, i) = Shown_Length(design, result.A[k]) / second;
    }
    const double radians = m.Deltatheta * Rad_per_Deg;
    const bool in_time = m.Time_Base == per_second;
    const double step = in_time ? radians / m.Shaft_speed : radians;
    Differentiate(data, var::A, var::J, in_time ? 1000.0 * step : step);
    Differentiate(data, var::J, var::Ping, step);
    Update_Liftmax(design);
    MaxMin1(data.Points(var::S), 0, Comp_Points, design.motion.Max_Pos_Disp, design.motion.Max_Neg_Disp);
    design.motion.MaxLift = design.motion.Max_Pos_Disp - design.motion.Max_Neg_Disp;
}

double Shown_Length(const Design_State& design, double length)
{
    return length / Length_of_Position(design);
}

}  // namespace lobemax
