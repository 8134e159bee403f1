// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/drive_words.h"

#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/form_table.h"
#include "truth/drive_figures.h"

namespace lobemax {

namespace {

constexpr int inch = 1;
constexpr int foot = 2;

/// A unit that a figure is told in: the SI figure times the factor.
struct Told_Unit {
    std::string word;
    double factor;
};
using Told_Units = std::vector<Told_Unit>;

/// The units of a design's drive: its own before the SI ones.
struct Drive_Units {
    Told_Units torque{{"N-m", 1.0}};
    Told_Units energy{{"J", 1.0}};
    Told_Units power{{"W", 1.0}};
    Told_Units inertia{{"kg-m^2", 1.0}};
};

Drive_Units Units_of_Drive(const Design_State& design)
{
    Drive_Units units;
    const int code = design.identity.WhichUnit;
    if (code != inch && code != foot)
        return units;
    const std::string word = Unit_of_Torque_Rows(design);
    const double share = 1.0 / Newton_Metres(design);
    units.torque.insert(units.torque.begin(), {word, share});
    units.energy.insert(units.energy.begin(), {word, share});
    units.inertia.insert(units.inertia.begin(), {code == inch ? "lb-in-s^2" : "lb-ft-s^2", share});
    units.power.push_back({"hp", 1.0 / Watts_per_Horsepower});
    return units;
}

/// Fills the list, each figure in all units of its kind.
class Drive_List {
public:
    explicit Drive_List(const Drive_Figures& found) : found_(found) {}

    /// @param least  what is smaller counts as 0; none: nothing
    void Add(std::string_view name, const Told_Units& units, double value, std::optional<double> with_friction,
             double least = 0.0)
    {
        const auto shown = [least](double x) { return std::abs(x) < least ? 0.0 : x; };
        const auto holds = [](double x) { return std::abs(x) <= double{std::numeric_limits<float>::max()}; };
        for (const Told_Unit& unit : units) {
            if (!holds(value * unit.factor) || !holds(with_friction.value_or(0.0) * unit.factor))
                continue;
            Drive_Figure& figure = list.emplace_back();
            figure.name = name;
            figure.unit = unit.word;
            figure.value = shown(value) * unit.factor;
            if (with_friction)
                figure.with_friction = shown(*with_friction) * unit.factor;
        }
    }
    void Add_Torque(std::string_view name, const Told_Units& units, double Torque_Figures::*figure, double least)
    {
        Add(name, units, found_.torque.*figure, found_.with_friction.*figure, least);
    }

    std::vector<Drive_Figure> list;

private:
    const Drive_Figures& found_;
};

}  // namespace

std::vector<Drive_Figure> Figures_of_Drive(const Design_State& design)
{
    constexpr double rounding = 1E-6;
    const std::optional<Drive_Figures> found = Find_Drive_Figures(design);
    if (!found)
        return {};
    const Drive_Units units = Units_of_Drive(design);
    const double torque = rounding * std::abs(found->torque.peak);
    const double power = rounding * std::abs(found->torque.power_peak);
    Drive_List figures(*found);
    figures.Add_Torque("Mean torque", units.torque, &Torque_Figures::mean, torque);
    figures.Add_Torque("RMS torque", units.torque, &Torque_Figures::rms, torque);
    figures.Add_Torque("Peak torque", units.torque, &Torque_Figures::peak, torque);
    figures.Add_Torque("Peak at", {{"deg", 1.0}}, &Torque_Figures::peak_angle, 0.0);
    figures.Add_Torque("Mean power", units.power, &Torque_Figures::power_mean, power);
    figures.Add_Torque("Peak power", units.power, &Torque_Figures::power_peak, power);
    figures.Add_Torque("Energy swing", units.energy, &Torque_Figures::energy_swing, torque);
    if (found->torque.flywheel) {
        const double omega = design.motion.Shaft_speed;
        figures.Add("Flywheel", units.inertia, *found->torque.flywheel, found->with_friction.flywheel,
                    torque / (design.dynamics.Coeff_of_Fluctuation * omega * omega));
    }
    figures.Add("Inertia peak", units.inertia, found->inertia_peak, std::nullopt);
    figures.Add("Inertia mean", units.inertia, found->inertia_mean, std::nullopt);
    return figures.list;
}

Report_Table Drive_Table(const std::vector<Drive_Figure>& figures, const Number_Writer& write)
{
    Report_Table table{{{"Drive", true}, {"Unit", true}, {"Torque"}, {"with friction"}}, {}};
    std::string_view former;
    for (const Drive_Figure& figure : figures) {
        table.rows.push_back({figure.name == former ? std::string() : std::string(figure.name), figure.unit,
                              write(figure.value), figure.with_friction ? write(*figure.with_friction) : ""});
        former = figure.name;
    }
    return table;
}

std::vector<std::string> Drive_Panel(const Design_State& design)
{
    constexpr int shown = 4;  // figures
    constexpr std::size_t width = 46;
    const std::vector<Drive_Figure> figures = Figures_of_Drive(design);
    if (figures.empty())
        return {};
    Report_Table table = Drive_Table(figures, [&](double value) { return In_Figures(design, value, shown); });
    table.columns.back().head = "+ friction";  // within the width, even in inches
    std::vector<std::string> lines = Table_Lines(table);
    if (const std::string note = Note_on_Torque_Unit(design); !note.empty()) {
        lines.emplace_back();
        for (std::string& line : Wrapped(note, width, 0))
            lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::string> Notes_on_Drive(const Design_State& design)
{
    std::vector<std::string> notes{
        "Power is that of the torque at the cam's speed. The energy swing is what comes and goes about the mean in a "
        "cycle; the flywheel holds the speed within the coefficient of fluctuation alone. The inertia is that of the "
        "follower's mass at the shaft."};
    if (std::string note = Note_on_Torque_Unit(design); !note.empty())
        notes.push_back(std::move(note));
    return notes;
}

std::string Note_on_Torque_Unit(const Design_State& design)
{
    const double divisor = Length_Divisor(design);
    if (divisor == 1.0)
        return {};
    return "The torques are in N-m, lengths being brought to metres: in " + Unit_Word(design, Form_Unit::torque) +
           " they are " + Shortest(divisor) + " times as many.";
}

std::string Unit_of_Torque_Rows(const Design_State& design)
{
    return Units_of_Results(design) > foot ? "N-m" : Trim(design.plot.Var_Unit(var::Torque));
}

}  // namespace lobemax
