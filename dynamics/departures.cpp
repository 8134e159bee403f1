// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/departures.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/trial_design.h"
#include "dynamics/vibration.h"

namespace lobemax {

namespace {

int Last_Point(const Design_State& design)
{
    const int last = design.motion.Max_Data_Points_used;
    Checked_Place(last, 0, std::min(Max_Points, design.results.CalcData.Last_Point()));
    return last;
}

/// Takes a row point by point beside what mechanics has.
class Comparison {
public:
    void Take(double stored, double truth)
    {
        largest_ = std::max(largest_, std::abs(stored - truth));
        highest_ = std::max(highest_, truth);
        lowest_ = std::min(lowest_, truth);
    }
    Departure Found() const { return {largest_, std::max(highest_ - lowest_, 0.0)}; }

private:
    double largest_ = 0.0;
    double highest_ = std::numeric_limits<double>::lowest();
    double lowest_ = std::numeric_limits<double>::max();
};

/// (157), (158).
Polydyne_Terms True_Terms(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const double omega = design.motion.Shaft_speed;
    const bool end_mass = d.Model_Type == 4 || d.Model_Type == 5;
    const bool train_first = d.Model_Type != 3 && d.Model_Type != 4;  // the train's spring is the first
    const double k = d.Kspring(train_first ? 1 : 2);
    if (k == 0.0)
        throw Fault{division_by_zero};
    const bool closed_behind = d.Model_Type == 2 || d.Model_Type == 5;
    return {closed_behind ? (d.Kspring(1) + d.Kspring(2)) / k : 1.0, omega * omega * d.Mass_m(end_mass ? 2 : 1) / k};
}

/// Velocity and acceleration of row 22 in the units of rows 23 and 24. (159).
class True_Derivatives {
public:
    explicit True_Derivatives(const Design_State& design)
        : data_(design.results.CalcData), terms_(Polydyne_Terms_of(design)), scale_(Polydyne_Scales_of(design))
    {
        if (design.motion.Time_Base == 1) {  // jerk and ping per radian ask for the third and the fourth power
            scale_.J /= design.motion.Shaft_speed;
            scale_.P /= design.motion.Shaft_speed * design.motion.Shaft_speed;
        }
    }
    double V(int i) const
    {
        return (data_(var::V, i) * scale_.V * terms_.c0 + data_(var::J, i) * scale_.J * terms_.c1) * scale_.V_back;
    }
    double A(int i) const
    {
        return (data_(var::A, i) * scale_.A * terms_.c0 + data_(var::Ping, i) * scale_.P * terms_.c1) * scale_.A_back;
    }

private:
    const Table<Single>& data_;
    Polydyne_Terms terms_;
    Polydyne_Scales scale_;
};

/// A place, its velocity and acceleration, in lengths of the forces and seconds.
struct Motion_at {
    double s, v, a;
};

/// What the follower is asked for by mechanics, positive as it presses.
double Force(const Dynamics_Group& d, const Motion_at& cam, const Motion_at& mass)
{
    const double m1 = d.Mass_m(1);
    const double C1 = d.Damping_C(1);
    const double C2 = d.Damping_C(2);
    const double k1 = d.Kspring(1);
    const double k2 = d.Kspring(2);
    switch (d.Model_Type) {
    case 1:
        return m1 * mass.a;
    case 2:
        return m1 * mass.a + C1 * mass.v + k2 * mass.s + d.Preload;
    case 3:
        return m1 * mass.a + C1 * cam.v + k1 * cam.s + d.Preload;
    case 4:
        return m1 * cam.a + C1 * cam.v + k1 * cam.s + C2 * (cam.v - mass.v) + k2 * (cam.s - mass.s) + d.Preload;
    default:
        return m1 * cam.a + d.Mass_m(2) * mass.a + C2 * mass.v + k2 * mass.s + d.Preload;
    }
}

std::optional<Cam_Extremes> Size(Design_State& design)
{
    design.flags.Skip_Profile = true;
    design.flags.Calc_Error = design.flags.Math_Error = false;
    const int type = design.cam.Followtype;
    if (!Calc_Phi(design, type) || design.flags.Math_Error || !Calc_Rho(design, type))
        return std::nullopt;
    return Cam_Extremes{design.cam.Phi_Max, design.cam.Phi_Min, design.cam.Rho_Smallest};
}

}  // namespace

double Departure::Share() const
{
    return largest == 0.0 ? 0.0 : range > 0.0 ? largest / range : 1.0;
}

Departure Departure_of_Polydyne(const Design_State& design)
{
    const Table<Single>& data = design.results.CalcData;
    const Polydyne_Terms truth = True_Terms(design);
    const Polydyne_Scales scale = Polydyne_Scales_of(design);
    Comparison rows;
    for (int i = 0; i <= Last_Point(design); ++i)
        rows.Take(data(var::Polydyne_S, i), data(var::S, i) * truth.c0 + data(var::A, i) * scale.A * truth.c1);
    return rows.Found();
}

Polydyne_Derivatives Departures_of_Polydyne_Derivatives(const Design_State& design)
{
    const Table<Single>& data = design.results.CalcData;
    const True_Derivatives truth(design);
    Comparison V;
    Comparison A;
    for (int i = 0; i <= Last_Point(design); ++i) {
        V.Take(data(var::Polydyne_V, i), truth.V(i));
        A.Take(data(var::Polydyne_A, i), truth.A(i));
    }
    return {V.Found(), A.Found()};
}

void Correct_Polydyne_Derivatives(Design_State& design)
{
    Table<Single>& data = design.results.CalcData;
    const True_Derivatives truth(design);
    for (int i = 0; i <= Last_Point(design); ++i) {
        data(var::Polydyne_V, i) = truth.V(i);
        data(var::Polydyne_A, i) = truth.A(i);
    }
}

std::optional<Polydyne_Extremes> Find_Polydyne_Extremes(const Design_State& design)
{
    Design_State other = Trial_Design(design);
    Reach(other, Mark::polydyne);
    const std::optional<Cam_Extremes> of_rows = Size(other);
    Correct_Polydyne_Derivatives(other);
    const std::optional<Cam_Extremes> of_mechanics = Size(other);
    if (!of_rows || !of_mechanics)
        return std::nullopt;
    return Polydyne_Extremes{*of_rows, *of_mechanics};
}

Departure Departure_of_Force(const Design_State& design)
{
    Design_State other = Trial_Design(design);
    Find_Model_Figures(other);
    const bool polydyne = design.flags.Polydyne_Calc;
    if (polydyne)
        Correct_Polydyne_Derivatives(other);
    const Dynamics_Group& d = other.dynamics;
    const Table<Single>& data = other.results.CalcData;
    const double arm = design.cam.Translating ? 1.0 : Rad_per_Deg * design.cam.ArmRad;
    const double length = arm / Length_Divisor(design);
    const double first = length * Per_Second(design, 1);
    const double second = length * Per_Second(design, 2);
    const auto motion = [&](int row, int i) {  // of three rows one behind another
        return Motion_at{data(row, i) * length, data(row + 1, i) * first, data(row + 2, i) * second};
    };
    Comparison rows;
    for (int i = 0; i <= Last_Point(design); ++i) {
        const double F = Force(d, motion(polydyne ? var::Polydyne_S : var::S, i), motion(var::Response_X, i));
        rows.Take(data(var::Dynamic_Force, i), d.Model_Type >= 4 ? std::max(F, 0.0) : F);
    }
    return rows.Found();
}

double True_Share_of_Model_5(const Design_State& design)
{
    const double both = design.dynamics.Kspring(1) + design.dynamics.Kspring(2);
    if (both == 0.0)
        throw Fault{division_by_zero};
    return design.dynamics.Kspring(1) / both;
}

}  // namespace lobemax
