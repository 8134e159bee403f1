// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/drive_figures.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "core/design_state.h"
#include "core/ladder.h"
#include "truth/limits.h"

namespace lobemax {

namespace {

/// Of values at even steps of a closed cycle, the last of which is the first again: half a step of both. (276)
double Mean_over_Cycle(std::span<const double> values)
{
    double sum = 0.0;
    for (std::size_t i = 1; i < values.size(); ++i)
        sum += (values[i - 1] + values[i]) / 2.0;
    return sum / static_cast<double>(values.size() - 1);
}

Torque_Figures Figures_of(const Design_State& design, std::span<const double> torque)
{
    const double omega = design.motion.Shaft_speed;
    const double fluctuation = design.dynamics.Coeff_of_Fluctuation;
    const auto angle = design.results.CalcData.Points(var::Angle);
    Torque_Figures found;
    found.mean = Mean_over_Cycle(torque);
    std::vector<double> squares(torque.begin(), torque.end());
    for (double& value : squares)
        value *= value;
    found.rms = std::sqrt(Mean_over_Cycle(squares));
    const auto peak =
        std::ranges::max_element(torque, {}, [](double value) { return std::abs(value); }) - torque.begin();
    found.peak = torque[static_cast<std::size_t>(peak)];
    found.peak_angle = angle[static_cast<std::size_t>(peak)];
    found.power_mean = found.mean * omega;
    found.power_peak = found.peak * omega;
    const double step = PI2 / static_cast<double>(torque.size() - 1);
    double work = 0.0;
    double largest = 0.0;
    double smallest = 0.0;
    for (std::size_t i = 1; i < torque.size(); ++i) {
        work += step * ((torque[i - 1] + torque[i]) / 2.0 - found.mean);
        largest = std::max(largest, work);
        smallest = std::min(smallest, work);
    }
    found.energy_swing = largest - smallest;
    if (fluctuation > 0.0 && omega != 0.0)
        found.flywheel = found.energy_swing / (fluctuation * omega * omega);  // (120)
    return found;
}

/// What a value of row V is multiplied with to be metres of the follower's way per radian of the cam. (60), (61)
double Metres_per_Radian(const Design_State& design)
{
    constexpr int seconds = 1;
    constexpr int degrees = 2;
    constexpr double millimetre = 1E-3;
    const double length = Limit_Factor(design, Limit_Unit::length) * millimetre;
    const double way = design.cam.Translating ? length : Rad_per_Deg * design.cam.ArmRad * length;
    const double omega = design.motion.Shaft_speed;
    switch (design.motion.Time_Base) {
    case seconds:
        return omega == 0.0 ? 0.0 : way / omega;
    case degrees:
        return way * Deg_per_Rad;
    default:
        return way;
    }
}

/// What a mass of the design is worth in kilograms: a force over an acceleration of its own units.
double Kilograms(const Design_State& design)
{
    constexpr int foot = 2;
    constexpr double millimetre = 1E-3;
    if (design.identity.WhichUnit > foot)
        return 1.0;
    return Limit_Factor(design, Limit_Unit::force) / (Limit_Factor(design, Limit_Unit::length) * millimetre);
}

}  // namespace

std::optional<Drive_Figures> Find_Drive_Figures(const Design_State& design)
{
    if (!Holds(design, Mark::forces) || Holds(design, Mark::units_changed))
        return std::nullopt;
    const Table<Single>& data = design.results.CalcData;
    const int last = std::min<int>(design.motion.Max_Data_Points_used, data.Last_Point());
    if (last < 1)
        return std::nullopt;
    const auto count = static_cast<std::size_t>(last) + 1;
    const double newton_metres = Newton_Metres(design);
    std::vector<double> torque(count);
    std::vector<double> whole(count);
    std::vector<double> inertia(count);
    const double mass = design.dynamics.Mass * Kilograms(design);
    const double per_radian = Metres_per_Radian(design);
    const auto row = data.Points(var::Torque);
    const auto friction = data.Points(var::Friction_Torque);
    const auto V = data.Points(var::V);
    for (std::size_t i = 0; i < count; ++i) {
        torque[i] = row[i] * newton_metres;
        whole[i] = (row[i] + std::abs(friction[i])) * newton_metres;
        const double way = V[i] * per_radian;
        inertia[i] = mass * way * way;
    }
    Drive_Figures figures;
    figures.torque = Figures_of(design, torque);
    figures.with_friction = Figures_of(design, whole);
    figures.inertia_peak = *std::ranges::max_element(inertia);
    figures.inertia_mean = Mean_over_Cycle(inertia);
    return figures;
}

double Newton_Metres(const Design_State& design)
{
    return Limit_Factor(design, Limit_Unit::torque);
}

}  // namespace lobemax
