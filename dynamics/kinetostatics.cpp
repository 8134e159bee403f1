// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/kinetostatics.h"

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

namespace lobemax {

namespace {

constexpr int abort_answer = 3;
constexpr int retry_answer = 4;
constexpr int ignore_answer = 5;

/// Last point of the cycle.
/// @throws Fault{9} when a row of the calculated table has no such point
int Last_Point(const Design_State& design)
{
    const int last = design.motion.Max_Data_Points_used;
    Checked_Place(last, 0, std::min(Max_Points, design.results.CalcData.Last_Point()));
    return last;
}

/// Natural frequencies and damping; with a spring rate of zero the typed coefficient stands.
void Find_Frequencies(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    if (d.Return_Spring_Rate == 0.0)
        return;
    if (d.Mass != 0.0)
        d.Omega_N = Sqr(d.Return_Spring_Rate / d.Mass);
    d.Critical_Damping = (d.Mass + d.Mass) * d.Omega_N;
    d.Damping = d.Zeta_Initial * d.Critical_Damping;
    const double decay = d.Damping / (d.Mass + d.Mass);
    const double radicand = d.Return_Spring_Rate / d.Mass - decay * decay;
    // At zeta 1 both terms are equal but for their rounding.
    const bool rounding = radicand < 0.0 && -radicand <= decay * decay * 1E-6;
    d.Omega_D = rounding ? 0.0 : Sqr(radicand);
}

/// What does not change from point to point.
struct Train {
    const Design_State& design;
    const Dynamics_Group& d = design.dynamics;
    int base = design.motion.Time_Base;
    double omega = design.motion.Shaft_speed;
    double divisor = Length_Divisor(design);
    bool translating = design.cam.Translating;
    double arm = design.cam.ArmRad;
    double S_min = 0.0;
    double b = design.dynamics.Bearing_Radius / divisor;
    double r_p = (design.cam.Camtype == "Radial" ? double{design.cam.Prime_Rad} : 0.0) / divisor;
    bool force_closed = design.cam.Closure == "Force";
    bool external = design.dynamics.Ext_Force_Add && design.flags.Ext_Force_Calc;
    int followtype = design.cam.Followtype;

    double Length(double motion) const { return (translating ? motion : motion * Rad_per_Deg * arm) / divisor; }
    /// Force of spring, damper and mass; a time base of no kind keeps the former one.
    double Force(double s, double v, double a, double former) const
    {
        const double spring = s * d.Return_Spring_Rate + d.Preload;
        switch (base) {
        case 1:
            return spring + v * d.Damping + d.Mass * a;
        case 2:  // a single factor of 180 over pi on the acceleration, and meant
            return omega * omega * (d.Mass * a * 180 / PI) + (v * d.Damping * 180 / PI) * omega + spring;
        case 3:
            return omega * omega * (d.Mass * a) + v * d.Damping * omega + spring;
        default:
            return former;
        }
    }
    /// Torque that drives the follower: power over shaft speed.
    double Torque(double F, double v, double former) const
    {
        switch (base) {
        case 1:
            return F * v / omega;
        case 2:
            return F * v * 180 / PI;
        case 3:
            return F * v;
        default:
            return former;
        }
    }
    double Friction(double Fc, double Fs, double s, double former) const
    {
        const double journal = std::abs(d.Mu_of_Shaft * Fc * b);
        if (followtype == 1)
            return std::abs(d.Mu_of_Follower * Fc * (s + r_p)) + journal;
        if (followtype == 2)
            return std::abs(d.Mu_of_Follower * Fs * (s + r_p)) + journal;
        return former;
    }
};

/// @return false when the user's abort takes effect
bool Separation(Design_State& design, double theta)
{
    Flags_Group& f = design.flags;
    f.Separated = true;
    if (f.Separation_Answer == abort_answer) {
        f.Calc_Abort = true;
        return false;
    }
    if (f.Separation_Answer == retry_answer)
        Check_Separation(design, FNRound(theta, 2), f.Separation_Answer);
    return true;
}

/// @return false when the user aborted
bool Run_Points(Design_State& design, const Train& train, std::span<Single> torque)
{
    Results_Group& r = design.results;
    const auto theta = r.CalcData.Points(var::Angle);
    const auto S = r.CalcData.Points(var::S);
    const auto V = r.CalcData.Points(var::V);
    const auto A = r.CalcData.Points(var::A);
    const auto Phi = r.CalcData.Points(var::Phi);
    const auto force = r.CalcData.Points(var::Force);
    const auto total = r.CalcData.Points(var::Torque);
    const auto friction = r.CalcData.Points(var::Friction_Torque);
    const auto external = r.Ext_Force_Table.Points();
    if (train.external && external.size() < torque.size())
        throw Fault{out_of_bounds};
    const bool fresh = design.dynamics.Torque_Start_Fresh;
    double F = 0.0;
    double T_f = 0.0;
    for (std::size_t i = 0; i < torque.size(); ++i) {
        const double phi = Phi[i] * Rad_per_Deg;
        const double s = train.Length(S[i] - train.S_min);
        const double v = train.Length(V[i]);
        const double a = train.Length(A[i]);
        F = train.Force(s, v, a, F);
        force[i] = F;
        if (train.external)
            F += external[i];
        const double Fs = std::abs(F * std::tan(phi));
        const double Fc = F / std::cos(phi);
        if (train.force_closed && Fc <= 0.0 && !Separation(design, theta[i]))
            return false;
        T_f = train.Friction(Fc, Fs, s, T_f);
        friction[i] = T_f;
        torque[i] = train.Torque(F, v, torque[i]);
        total[i] = fresh ? double{torque[i]} : total[i] + torque[i];
    }
    return true;
}

/// Integral of this run's torque over the angle in degrees, by trapezoids from point 1, straight into its row.
void Integrate(Design_State& design, std::span<const Single> torque)
{
    const double step = design.motion.Deltatheta;
    const auto integral = design.results.CalcData.Points(var::Torque_Integral).first(torque.size());
    std::fill(integral.begin(), integral.end(), Single{});
    for (std::size_t i = 2; i < torque.size(); ++i)
        integral[i] = integral[i - 1] + (torque[i - 1] + torque[i]) / 2 * step;
}

/// Runs of the torque above and below its mean; zero counts as above.
class Pulse_Counter {
public:
    explicit Pulse_Counter(Torque_Pulses& pulses) : pulses_(pulses) {}

    void Add(double excess, double area)
    {
        const bool positive = excess >= 0.0;
        const int sign = positive ? 1 : -1;
        if ((positive ? p_ : n_) == 1 && pulses_.first_sign == 0)
            pulses_.first_sign = sign;
        if (positive && run_ < 0)
            ++n_;
        if (!positive && run_ > 0)
            ++p_;
        run_ = sign;
        const int place = positive ? p_ : n_;
        if (place <= Max_Pulses) {
            Single& sum = (positive ? pulses_.positive : pulses_.negative).at(static_cast<std::size_t>(place));
            sum += area;
        } else {
            (positive ? last_p_ : last_n_) = place;
        }
    }
    void Finish()
    {
        pulses_.rows = std::min<int>(To_Integer((p_ + n_ + 1) / 2.0), Max_Pulses);
        pulses_.left_out = std::max(0, last_p_ - Max_Pulses) + std::max(0, last_n_ - Max_Pulses);
    }

private:
    Torque_Pulses& pulses_;
    int p_ = 1;
    int n_ = 1;
    int run_ = 0;
    int last_p_ = 0;
    int last_n_ = 0;
};

/// Places a text so that it begins in a column, counted from 1, of a print line; after a text too wide for its own
/// column, a blank further on.
void At_Column(std::string& line, std::size_t column, const std::string& text)
{
    line.resize(std::max(line.size() + 1, column - 1), ' ');
    line += text;
}

std::vector<std::string> Pulse_Lines(const Design_State& design, const Torque_Pulses& pulses)
{
    const Unit_Words& units = Words_of_Units(design.identity.WhichUnit);
    std::vector<std::string> lines{" Areas of Camshaft Torque",
                                   " Pulses in Order over 1 cycle ",
                                   "",
                                   "    in Energy Units of :",
                                   std::string("   ") + units.force + " - " + units.length + " - Radians",
                                   ""};
    constexpr const char* dashes = "----------------------------------------------";
    constexpr std::size_t first_column = 8;
    constexpr std::size_t second_column = 18;
    const bool positive_first = pulses.first_sign > 0;
    if (pulses.first_sign != 0) {
        lines.emplace_back(positive_first ? " Order   Pos Area   Neg Area" : " Order   Neg Area   Pos Area");
        lines.emplace_back(dashes);
        if (!positive_first)
            lines.emplace_back();
    }
    for (int row = 1; pulses.first_sign != 0 && row <= pulses.rows; ++row) {
        const auto place = static_cast<std::size_t>(row);
        const auto shown = [&](double area) { return In_Number_Format(design, Shortest(FNRound(area, 1))); };
        std::string line = "   " + std::to_string(row);
        At_Column(line, first_column, shown(positive_first ? pulses.positive[place] : pulses.negative[place]));
        At_Column(line, second_column, shown(positive_first ? pulses.negative[place] : pulses.positive[place]));
        lines.push_back(line);
    }
    if (pulses.left_out > 0)
        lines.push_back("   " + std::to_string(pulses.left_out) +
                        (pulses.left_out == 1 ? " further pulse left out" : " further pulses left out"));
    lines.emplace_back();
    lines.emplace_back("    Average Torque:");
    lines.push_back("   " + In_Number_Format(design, Shortest(FNRound(pulses.average, 2))) + "  " +
                    design.plot.Var_Unit(var::Torque));
    return lines;
}

/// Mean and areas of the torque, without their lines, and the flywheel torque row; allocates nothing.
Torque_Pulses Torque_Areas(Design_State& design)
{
    Table<Single>& data = design.results.CalcData;
    const auto last = static_cast<std::size_t>(Last_Point(design));
    const auto torque = data.Points(var::Torque);
    Torque_Pulses pulses;
    double sum = 0.0;
    for (std::size_t i = 1; i <= last; ++i)
        sum += torque[i];
    pulses.average = last == 0 ? sum : sum / static_cast<double>(last);
    Pulse_Counter counter(pulses);
    Single before = last == 0 ? Single{} : Single(torque[1] - pulses.average);
    for (std::size_t i = 2; i <= last; ++i) {
        const Single w = torque[i] - pulses.average;
        counter.Add(w, (before + w) / 2 * design.motion.Deltatheta);
        before = w;
    }
    counter.Finish();
    const auto flywheel = data.Points(var::Flywheel_Torque);
    for (std::size_t i = 1; i <= last; ++i)
        flywheel[i] = design.dynamics.Coeff_of_Fluctuation * torque[i];
    return pulses;
}

}  // namespace

double Per_Second(const Design_State& design, int order)
{
    const double omega = design.motion.Shaft_speed;
    const double power = order == 1 ? omega : omega * omega;
    switch (design.motion.Time_Base) {
    case 2:
        return 180 / PI * power;
    case 3:
        return power;
    default:
        return 1.0;
    }
}

Dynamics_Figures Present_Figures(Design_State& design)
{
    Dynamics_Figures figures;
    Trap("Present_Figures", [&] {
        const Table<Single>& data = design.results.CalcData;
        const int last = Last_Point(design);
        const Extremes force = MaxMin2(data, var::Force, 0, last);
        const Extremes torque = MaxMin2(data, var::Torque, 0, last);
        figures.Fmax = force.largest;
        figures.Fmin = force.smallest;
        figures.Tmax = torque.largest;
        figures.Tmin = torque.smallest;
        figures.frequencies = design.dynamics.Return_Spring_Rate != 0.0;
    });
    figures.pulses = Show_Torque_Areas(design);
    return figures;
}

bool Calc_Force_Torque(Design_State& design)
{
    Flags_Group& f = design.flags;
    Apply(design, Event::forces_began);
    const bool no_fault = Trap("Calc_Force_Torque", [&] {
        const Table<Single>& data = design.results.CalcData;
        const int last = Last_Point(design);
        // This run's torque, whatever row 8 accumulates; it lives for the run, on the stack.
        std::array<Single, Max_Points + 1> work{};
        const auto torque = std::span(work).first(static_cast<std::size_t>(last + 1));
        f.Calc_Abort = false;
        Find_Frequencies(design);
        Train train{design};
        train.S_min = MaxMin2(data, var::S, 0, last).smallest;
        f.Separated = false;
        f.Separation_Answer = retry_answer;
        if (!Run_Points(design, train, torque))
            return;
        Integrate(design, torque);
        const Extremes extremes = MaxMin2(data, var::Torque_Integral, 0, last);
        design.dynamics.Torque_Integral_Max = extremes.largest;
        design.dynamics.Torque_Integral_Min = extremes.smallest;
        Torque_Areas(design);
        Reach(design, Mark::forces);
    });
    return no_fault && f.Dynamicflag;
}

Torque_Pulses Show_Torque_Areas(Design_State& design)
{
    Torque_Pulses pulses;
    Trap("Show_Torque_Areas", [&] {
        pulses = Torque_Areas(design);
        pulses.lines = Pulse_Lines(design, pulses);
    });
    return pulses;
}

void Check_Separation(const Design_State& design, double theta, Integer& answer)
{
    if (answer == ignore_answer)
        return;
    const Answer pressed = Show_Message(
        "The cam and follower have separated at Theta =  " + Shown(design, theta) +
            " deg\n"
            "\n"
            "Choose ABORT to terminate further calculations beyond the current position\n"
            "\n"
            "Choose RETRY to continue calculating and pause at any other problem positions, redisplaying this "
            "message.\n"
            "\n"
            "Choose IGNORE to continue calculating and skip over other problem positions, suppressing further "
            "messages\n"
            "\n"
            "To fix the problem, try increasing the cam-closure spring rate, the preload, or both, and recalculate.",
        Buttons::Abort_Retry_Ignore, Symbol::exclamation, Answer::Ignore);
    answer = static_cast<int>(pressed);
}

void Reset_Dynamics(Design_State& design)
{
    Apply(design, Event::forces_began);
    Trap("Reset_Dynamics", [&] {
        Results_Group& r = design.results;
        const int last = Last_Point(design);
        const auto count = static_cast<std::size_t>(last) + 1;
        std::fill_n(r.CalcData.Points(var::Force).begin(), count, Single{});
        if (design.dynamics.Torque_Start_Fresh)
            std::fill_n(r.CalcData.Points(var::Torque).begin(), count, Single{});
        Checked_Place(last, 0, r.Ext_Force_Table.Last());
        std::copy_n(r.Ext_Force_Table.Points().begin(), count, r.CalcData.Points(var::Ext_Force).begin());
    });
}

}  // namespace lobemax
