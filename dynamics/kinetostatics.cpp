// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/kinetostatics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/force_rows.h"

namespace lobemax {

namespace {

using formulas::Rigid_Train;

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

Rigid_Train Train_of(const Design_State& design, double S_min)
{
    const Dynamics_Group& d = design.dynamics;
    const double divisor = Length_Divisor(design);
    return {.base = design.motion.Time_Base,
            .omega = design.motion.Shaft_speed,
            .divisor = divisor,
            .translating = design.cam.Translating,
            .arm = design.cam.ArmRad,
            .S_min = S_min,
            .mass = d.Mass,
            .damping = d.Damping,
            .spring_rate = d.Return_Spring_Rate,
            .preload = d.Preload,
            .mu_follower = d.Mu_of_Follower,
            .mu_shaft = d.Mu_of_Shaft,
            .b = d.Bearing_Radius / divisor,
            .r_p = (design.cam.Camtype == "Radial" ? double{design.cam.Prime_Rad} : 0.0) / divisor,
            .followtype = design.cam.Followtype};
}

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

/// Force and torque at the points of the cycle.
class Force_Run {
public:
    /// @param torque  of this run, all zero
    Force_Run(Design_State& design, const Rigid_Train& train, std::span<Single> torque)
        : design_(design), train_(train), torque_(torque)
    {
        if (!design.dynamics.Ext_Force_Add || !design.flags.Ext_Force_Calc)
            return;
        external_ = design.results.Ext_Force_Table.Points();
        if (external_.size() < torque.size())
            throw Fault{out_of_bounds};
    }

    /// @return false when the user aborted
    bool All_Points()
    {
        bool goes_on = true;
        if (train_.base < 1 || train_.base > 3) {  // each force is that of the point before
            for (std::size_t i = 0; i < torque_.size() && goes_on; ++i)
                goes_on = Point(i);
            return goes_on;
        }
        Run_Points(
            torque_.size(),
            [&](std::size_t first, std::size_t count) { return goes_on ? By_Lanes(first, count) : count; },
            [&](std::size_t i) { goes_on = Point(i); });
        return goes_on;
    }

private:
    std::size_t By_Lanes(std::size_t first, std::size_t count) const
    {
        const Force_Rows rows{.S = Bits(S_),
                              .V = Bits(V_),
                              .A = Bits(A_),
                              .Phi = Bits(Phi_),
                              .external = external_.empty() ? nullptr : Bits(external_),
                              .force = Bits(force_),
                              .friction = Bits(friction_),
                              .torque = Bits(torque_),
                              .total = Bits(total_)};
        const bool tells = force_closed_ && design_.flags.Separation_Answer != ignore_answer;
        return Kernels_in_Use<Force_Kernels>().forces(train_, rows, {fresh_, tells}, first, count);
    }

    /// @return false when the user aborted
    bool Point(std::size_t i)
    {
        const auto motion = train_.Motion_of(double{S_[i]}, double{V_[i]}, double{A_[i]});
        F_ = train_.Force(motion, F_);
        force_[i] = F_;
        if (!external_.empty())
            F_ += external_[i];
        const auto load = train_.Load_of(F_, motion, double{Phi_[i]});
        if (force_closed_ && load.separated && !Separation(design_, theta_[i]))
            return false;
        friction_[i] = load.friction;
        torque_[i] = load.torque;
        total_[i] = fresh_ ? double{torque_[i]} : total_[i] + torque_[i];
        return true;
    }

    Design_State& design_;
    const Rigid_Train& train_;
    std::span<Single> torque_;
    Table<Single>& data_ = design_.results.CalcData;
    std::span<const Single> theta_ = data_.Points(var::Angle);
    std::span<const Single> S_ = data_.Points(var::S);
    std::span<const Single> V_ = data_.Points(var::V);
    std::span<const Single> A_ = data_.Points(var::A);
    std::span<const Single> Phi_ = data_.Points(var::Phi);
    std::span<const Single> external_;  // none where no external force is added
    std::span<Single> force_ = data_.Points(var::Force);
    std::span<Single> total_ = data_.Points(var::Torque);
    std::span<Single> friction_ = data_.Points(var::Friction_Torque);
    bool fresh_ = design_.dynamics.Torque_Start_Fresh;
    bool force_closed_ = design_.cam.Closure == "Force";
    double F_ = 0.0;
};

/// Integral of this run's torque over the angle in degrees, by trapezoids from point 1, straight into its row; and its
/// extremes. Each sum is rounded, so that one waits for the other.
void Integrate(Design_State& design, std::span<const Single> torque)
{
    const double step = design.motion.Deltatheta;
    const auto integral = design.results.CalcData.Points(var::Torque_Integral).first(torque.size());
    std::fill(integral.begin(), integral.end(), Single{});
    Single sum;
    Single largest;
    Single smallest;
    for (std::size_t i = 2; i < torque.size(); ++i) {
        sum += (torque[i - 1] + torque[i]) / 2 * step;
        integral[i] = sum;
        largest = std::max(largest, sum);
        smallest = std::min(smallest, sum);
    }
    design.dynamics.Torque_Integral_Max = largest;
    design.dynamics.Torque_Integral_Min = smallest;
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

/// Mean and areas of the torque, without their lines; allocates nothing.
Torque_Pulses Torque_Areas(const Design_State& design)
{
    const auto last = static_cast<std::size_t>(Last_Point(design));
    const auto torque = design.results.CalcData.Points(var::Torque);
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
    return pulses;
}

/// A row times a factor, all of it or up to the first product that is no finite Single.
/// @return how many were stored
std::size_t Scale(double factor, std::span<const Single> row, std::span<Single> to)
{
    const Status_Kept status;
    return Kernels_in_Use<Force_Kernels>().scaled(factor, Bits(row), Bits(to), 0, row.size());
}

/// Whether no area of the torque can leave the 32-bit numbers, so that there is nothing to tell of them: an excess is
/// at most twice the largest torque, and all trapezoids together at most a turn of it. With a factor of 2 to spare.
/// @param work  as long as the row, overwritten
bool Areas_Fit(const Design_State& design, std::span<Single> work)
{
    const double turn = std::abs(design.motion.Deltatheta * static_cast<double>(work.size()));
    const auto torque = design.results.CalcData.Points(var::Torque).first(work.size());
    return Scale(4.0 * std::max(1.0, turn), torque, work) == work.size();
}

/// The flywheel torque, row 16 from point 1.
void Fill_Flywheel(Design_State& design)
{
    const double fluctuation = design.dynamics.Coeff_of_Fluctuation;
    const auto last = static_cast<std::size_t>(Last_Point(design));
    const auto torque = design.results.CalcData.Points(var::Torque).subspan(1, last);
    const auto flywheel = design.results.CalcData.Points(var::Flywheel_Torque).subspan(1, last);
    if (const std::size_t i = Scale(fluctuation, torque, flywheel); i < last)
        flywheel[i] = fluctuation * torque[i];  // the fault
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
        const Rigid_Train train = Train_of(design, MaxMin2(data, var::S, 0, last).smallest);
        f.Separated = false;
        f.Separation_Answer = retry_answer;
        if (!Force_Run(design, train, torque).All_Points())
            return;
        Integrate(design, torque);
        if (!Areas_Fit(design, torque))
            Torque_Areas(design);  // for their fault alone: who shows the areas works them out
        Fill_Flywheel(design);
        Reach(design, Mark::forces);
    });
    return no_fault && f.Dynamicflag;
}

Torque_Pulses Show_Torque_Areas(Design_State& design)
{
    Torque_Pulses pulses;
    Trap("Show_Torque_Areas", [&] {
        pulses = Torque_Areas(design);
        Fill_Flywheel(design);
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
