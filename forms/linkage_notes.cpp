// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_notes.h"

#include <cmath>

#include "core/design_state.h"
#include "forms/form_table.h"
#include "linkage/linkage_kinematics.h"
#include "present/linkage_plots.h"

namespace lobemax {

namespace {

/// Numbers of five digits with a decimal symbol.
class Numbers {
public:
    explicit Numbers(Decimal_Symbol symbol) : symbol_(symbol) {}

    std::string operator()(double value) const
    {
        constexpr int digits = 5;
        if (value == 0.0 || !std::isfinite(value))
            return Shortest(Single(value), symbol_);
        const double unit = std::pow(10.0, std::floor(std::log10(std::abs(value))) - (digits - 1));
        return Shortest(Single(std::round(value / unit) * unit), symbol_);
    }

private:
    Decimal_Symbol symbol_;
};

std::string With_Unit(const std::string& number, const std::string& unit)
{
    return unit.empty() ? number : number + " " + unit;
}

/// Whether two figures differ by more than their rounding.
bool Differ(double a, double b)
{
    constexpr double rounding = 1E-4;
    return std::abs(a - b) > rounding * std::max(std::abs(a), std::abs(b));
}

/// "from 1 mm at cam angle 0 to 2 mm at 90"
std::string Range_Text(const At_Angle& least, const At_Angle& largest, const std::string& unit, const Numbers& number)
{
    return "from " + With_Unit(number(least.value), unit) + " at cam angle " + number(least.angle) + " to " +
           With_Unit(number(largest.value), unit) + " at " + number(largest.angle);
}

void Tell_Truth(Design_State& design, const std::string& velocity, const std::string& acceleration,
                const Numbers& number, std::vector<std::string>& notes)
{
    const std::optional<Effector_Truth> truth = Truth_of_Effector(design);
    if (!truth)
        return;
    if (Differ(truth->velocity, truth->stored_velocity) || Differ(truth->acceleration, truth->stored_acceleration))
        notes.push_back("True peaks of the end effector: velocity " + With_Unit(number(truth->velocity), velocity) +
                        ", acceleration " + With_Unit(number(truth->acceleration), acceleration) +
                        "; the tables have " + number(truth->stored_velocity) + " and " +
                        number(truth->stored_acceleration) + ".");
    if (design.motion.Time_Base == 2)
        notes.emplace_back(
            "The rates of the tables take derivatives per degree for derivatives per radian. Calculate in the time "
            "base of radians or seconds for true ones.");
    if (design.cam.ArmDirect < 0)
        notes.emplace_back(
            "The rates of the tables are those of a counterclockwise arm: those of this clockwise arm have the other "
            "sign.");
}

}  // namespace

std::vector<std::string> Linkage_Notes(Design_State& design)
{
    return Linkage_Notes(design, Current_Decimal_Symbol(design));
}

std::vector<std::string> Linkage_Notes(Design_State& design, Decimal_Symbol symbol)
{
    if (!design.flags.Linkage_Calc)
        return {};
    using enum Link_Quantity;
    const Numbers number(symbol);
    const int last = Last_Link(design);
    const bool slides = Ends_in_Slider(design);
    const Effector_Summary summary = Summary_of_Effector(design);
    const auto unit = [&](Link_Quantity quantity) { return Unit_of(design, {last, quantity}); };
    std::vector<std::string> notes;
    notes.push_back(std::string("End effector, link ") + std::to_string(last) + ": " +
                    (slides ? "displacement " : "angle ") +
                    Range_Text(summary.least[0], summary.largest[0], unit(position), number) + ", a range of " +
                    With_Unit(number(summary.largest[0].value - summary.least[0].value), unit(position)) + ".");
    notes.push_back("Its velocity goes " + Range_Text(summary.least[1], summary.largest[1], unit(velocity), number) +
                    ", its acceleration " +
                    Range_Text(summary.least[2], summary.largest[2], unit(acceleration), number) + ".");
    for (std::string& caution : Linkage_Cautions(design, symbol))
        notes.push_back(std::move(caution));
    return notes;
}

std::vector<std::string> Linkage_Cautions(Design_State& design, Decimal_Symbol symbol)
{
    if (!design.flags.Linkage_Calc)
        return {};
    using enum Link_Quantity;
    const Numbers number(symbol);
    const int last = Last_Link(design);
    std::vector<std::string> notes;
    if (const int dead = design.linkage.Link_Indeterminate; dead > 0)
        notes.push_back("Dead centre at " + std::to_string(dead) +
                        (dead == 1 ? " point, which has no velocities." : " points, which have no velocities."));
    Tell_Truth(design, Unit_of(design, {last, velocity}), Unit_of(design, {last, acceleration}), number, notes);
    if (design.linkage.Drive_End_Effector && design.flags.Calculated) {
        constexpr double least_percent = 0.001;
        const double percent = Error_of_Driving(design) * 100.0;
        notes.push_back(percent < least_percent
                            ? "Driven by its ratios, the end effector has the motion wanted."
                            : "Driven by its ratios, the end effector misses the motion wanted by up to " +
                                  number(percent) + " % of its stroke.");
    }
    return notes;
}

std::vector<std::string> Mass_Notes(Design_State& design, const Link_Effect& effect)
{
    return Mass_Notes(design, effect, Current_Decimal_Symbol(design));
}

std::vector<std::string> Mass_Notes(Design_State& design, const Link_Effect& effect, Decimal_Symbol symbol)
{
    const Numbers number(symbol);
    const std::string mass = Unit_Word(design, Form_Unit::mass);
    const auto weight = [&](double value) { return With_Unit(number(value), mass); };
    std::vector<std::string> notes;
    notes.push_back("Mass 1, with the follower: " + weight(effect.mass.at_follower) +
                    ", Mass 2, the rest of the train: " + weight(effect.mass.at_effector) + ".");
    notes.push_back("Effective mass at the follower: " + weight(effect.mass.Total()) +
                    (effect.stiffness ? ", effective stiffness at the follower: " +
                                            With_Unit(number(*effect.stiffness), Unit_Word(design, Form_Unit::spring))
                                      : std::string(", no effective stiffness")) +
                    ".");
    notes.push_back(Weight_Note(design, symbol));
    return notes;
}

std::string Weight_Note(Design_State& design, Decimal_Symbol symbol)
{
    const Numbers number(symbol);
    const std::string mass = Unit_Word(design, Form_Unit::mass);
    const auto weight = [&](double value) { return With_Unit(number(value), mass); };
    const Mass_over_Cycle real = True_Mass_over_Cycle(design);
    return "By its kinetic energy the train weighs from " + weight(real.least) + " to " + weight(real.largest) +
           " at the follower over the cycle, " + weight(real.mean) + " on the mean.";
}

}  // namespace lobemax
