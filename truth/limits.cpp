// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/limits.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/text.h"
#include "core/units.h"

namespace lobemax {

namespace {

using L = Limit;
using U = Limit_Unit;
constexpr auto off = std::nullopt;

constexpr std::array<Limit_Entry, Limit_Count> table{{
    {L::Phi, "Phi", "Phi", "Pressure angle", U::degrees, false, 30.0},
    {L::Phi_Arm, "Phi", "Phi_Arm", "Pressure angle, arm", U::degrees, false, 35.0},
    {L::Rho_Ratio, "Rho_Ratio", "Rho_Ratio", "Radius of curvature over roller radius", U::none, true, 1.5},
    {L::Sigma, "Sigma", "Sigma", "Contact stress", U::stress, false, off},
    {L::Contact_Force, "Contact_Force", "Contact_Force", "Contact force", U::force, true, off},
    {L::V, "V", "V", "Velocity", U::length_1, false, off},
    {L::A, "A", "A", "Acceleration", U::length_2, false, off},
    {L::J, "J", "J", "Jerk", U::length_3, false, off},
    {L::V_Arm, "V", "V_Arm", "Velocity, arm", U::degrees_1, false, off},
    {L::A_Arm, "A", "A_Arm", "Acceleration, arm", U::degrees_2, false, off},
    {L::J_Arm, "J", "J_Arm", "Jerk, arm", U::degrees_3, false, off},
    {L::Torque, "Torque", "Torque", "Torque", U::torque, false, off},
    {L::Face_Width, "Face_Width", "Face_Width", "Width of the flat face", U::length, false, off},
    {L::Cam_Size, "Cam_Size", "Cam_Size", "Size of the cam", U::length, false, off},
    {L::Surface, "Surface", "Surface", "Lift by the surface", U::length, false, 0.01},
    {L::Swing, "Surface", "Swing", "Swing by the surface", U::degrees, false, 0.01},
    {L::Chord, "Chord", "Chord", "Straight lines between points", U::length, false, 0.01},
}};

constexpr bool in_order()
{
    for (std::size_t i = 0; i < table.size(); ++i)
        if (static_cast<std::size_t>(table[i].limit) != i)
            return false;
    return true;
}
static_assert(in_order());

/// Limits of an arm, whose translating counterparts have the same name.
bool Of_an_Arm(Limit limit)
{
    return limit == L::Phi_Arm || limit == L::V_Arm || limit == L::A_Arm || limit == L::J_Arm || limit == L::Swing;
}

bool Has_Counterpart(Limit limit)
{
    return std::ranges::any_of(
        table, [&](const Limit_Entry& other) { return other.limit != limit && other.name == Entry_of(limit).name; });
}

constexpr double pound = 4.4482216152605;  // N
constexpr double inch = 25.4;              // mm
constexpr double foot = 304.8;
constexpr double psi = pound / (inch * inch);  // N/mm^2

double Millimetres(int code)
{
    constexpr std::array lengths{inch, foot, 1000.0, 10.0, 1.0};
    return lengths[Checked_Place(code, First_Unit_System, Last_Unit_System)];
}

}  // namespace

std::span<const Limit_Entry> Limit_Table()
{
    return table;
}

const Limit_Entry& Entry_of(Limit limit)
{
    return table[static_cast<std::size_t>(limit)];
}

Limits::Limits()
{
    for (const Limit_Entry& entry : table)
        (*this)[entry.limit] = entry.usual;
}

double Limit_Factor(const Design_State& design, Limit_Unit unit)
{
    const int code = design.identity.WhichUnit;
    const bool metric = code >= 3;
    switch (unit) {
    case U::length:
    case U::length_1:
    case U::length_2:
    case U::length_3:
        return Millimetres(code);
    case U::force:
        return metric ? 1.0 : pound;
    case U::torque:  // metric torques are in N-m, whatever the length
        return metric ? 1.0 : pound * Millimetres(code) / 1000.0;
    case U::stress:  // of feet in psi too, of centimetres in MPa
        return code == 3 ? 1E-6 : metric ? 1.0 : psi;
    default:
        return 1.0;
    }
}

std::optional<double> In_Design_Units(const Design_State& design, const Limits& limits, Limit limit)
{
    const std::optional<double>& value = limits[limit];
    if (!value)
        return std::nullopt;
    return *value / Limit_Factor(design, Entry_of(limit).unit);
}

std::string Unit_of_Limit(const Design_State& design, Limit limit)
{
    const int code = design.identity.WhichUnit;
    const Unit_Words& words = Words_of_Units(code);
    const std::string length = words.length;
    switch (Entry_of(limit).unit) {
    case U::none:
        return "";
    case U::degrees:
        return "deg";
    case U::length:
        return length;
    case U::force:
        return words.force;
    case U::torque:
        return code >= 3 ? "N-m" : length + "-" + words.force;
    case U::stress:
        return code == 3 ? "Pa" : code > 3 ? "MPa" : "psi";
    case U::length_1:
        return length + "/sec";
    case U::length_2:
        return length + "/sec^2";
    case U::length_3:
        return length + "/sec^3";
    case U::degrees_1:
        return "deg/sec";
    case U::degrees_2:
        return "deg/sec^2";
    case U::degrees_3:
        return "deg/sec^3";
    }
    return "";
}

bool Applies(const Design_State& design, Limit limit)
{
    if (Of_an_Arm(limit))
        return !design.cam.Translating;
    return design.cam.Translating || !Has_Counterpart(limit);
}

std::string Refused_Limit(Limit limit, double value)
{
    if (std::isinf(value) && value > 0.0)
        return "A limit must not be so large.";
    if (value > 0.0 || (value == 0.0 && limit == L::Contact_Force))
        return "";
    return "A limit must be positive, or off.";
}

std::string Put_Limit(Limits& limits, const Design_State& design, std::string_view name, std::string_view text)
{
    const auto by_key = std::ranges::find_if(
        table, [&](const Limit_Entry& entry) { return Same_Text(entry.key, name) && !Has_Counterpart(entry.limit); });
    auto found = by_key;
    if (found == table.end())
        found = std::ranges::find_if(table, [&](const Limit_Entry& entry) {
            return Same_Text(entry.name, name) && Applies(design, entry.limit);
        });
    if (found == table.end())
        found = std::ranges::find_if(table, [&](const Limit_Entry& entry) { return Same_Text(entry.key, name); });
    if (found == table.end()) {
        std::string names;
        for (const Limit_Entry& entry : table)
            if (Applies(design, entry.limit))
                names += (names.empty() ? "" : ", ") + std::string(entry.name);
        return "There is no limit '" + std::string(name) + "'; there are " + names + ".";
    }
    return Put_Limit(limits, design, found->limit, text);
}

std::string Put_Limit(Limits& limits, const Design_State& design, Limit limit, std::string_view text)
{
    if (Same_Text(Trim(text), "off")) {
        limits[limit] = std::nullopt;
        return "";
    }
    Number_Read number;
    try {
        number = Read_Number(text, Current_Decimal_Symbol(design));
    } catch (const Fault&) {
        return Refused_Limit(limit, std::numeric_limits<double>::infinity());
    }
    if (!number.any || !number.whole)
        return "'" + std::string(text) + "' is neither a number nor off.";
    const double kept = number.value * Limit_Factor(design, Entry_of(limit).unit);
    if (std::string refusal = Refused_Limit(limit, kept); !refusal.empty())
        return refusal;
    limits[limit] = kept;
    return "";
}

}  // namespace lobemax
