// SPDX-License-Identifier: GPL-3.0-or-later
/// The limits that a designer works within: what a check compares a design with. They belong to the user, not to a
/// design, and are kept in millimetres, newtons, seconds and their products whatever unit system a design has.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

enum class Limit {
    Phi,            // largest |pressure angle|, translating
    Phi_Arm,        // of an arm
    Rho_Ratio,      // smallest radius of the centre path over the roller's radius
    Sigma,          // largest contact stress
    Contact_Force,  // smallest
    V,              // largest |velocity|, |acceleration|, |jerk|, in time
    A,
    J,
    V_Arm,
    A_Arm,
    J_Arm,
    Torque,      // largest |torque|
    Face_Width,  // that a flat face needs
    Cam_Size,    // largest radius of a disk cam, length of an axial one
    Surface,     // tolerance of the lift that a surface gives back, translating
    Swing,       // of an arm
    Chord,       // tolerance of straight lines between the points of the surface
};
inline constexpr int Limit_Count = 17;

/// What a limit is measured in.
enum class Limit_Unit {
    none,
    degrees,
    length,
    force,
    torque,
    stress,
    length_1,
    length_2,
    length_3,
    degrees_1,
    degrees_2,
    degrees_3
};

struct Limit_Entry {
    Limit limit;
    std::string_view name;     // as it is set: "Phi"
    std::string_view key;      // as it is kept: "Phi_Arm"
    std::string_view caption;  // "Pressure angle"
    Limit_Unit unit;
    bool least;                   // a value below it breaks it; else one above
    std::optional<double> usual;  // in the units that limits are kept in; none: off
};
std::span<const Limit_Entry> Limit_Table();
const Limit_Entry& Entry_of(Limit limit);

/// The limits of a user; none: off.
struct Limits {
    Limits();
    std::array<std::optional<double>, Limit_Count> value;

    const std::optional<double>& operator[](Limit limit) const { return value[static_cast<std::size_t>(limit)]; }
    std::optional<double>& operator[](Limit limit) { return value[static_cast<std::size_t>(limit)]; }
    friend bool operator==(const Limits&, const Limits&) = default;
};

/// What a limit's unit is worth in the units of a design: a value of the design times this is one as limits are kept.
double Limit_Factor(const Design_State& design, Limit_Unit unit);
/// The same limit in the design's units; none: off.
std::optional<double> In_Design_Units(const Design_State& design, const Limits& limits, Limit limit);
/// "mm", "deg/sec"; empty for a ratio.
std::string Unit_of_Limit(const Design_State& design, Limit limit);

/// Whether a limit is one of the design's follower: that of an arm, or that of a translating one.
bool Applies(const Design_State& design, Limit limit);

/// Why a limit cannot have a value, in the units that limits are kept in; empty where it can.
std::string Refused_Limit(Limit limit, double value);

/// Sets a limit by its name, as the design's follower has it, to a number in the design's units, or off: "Phi", "28";
/// "Sigma", "off". Names are the same in upper and lower case; a key names its own limit.
/// @return empty, or why it is refused
std::string Put_Limit(Limits& limits, const Design_State& design, std::string_view name, std::string_view text);
/// The same of one limit, whatever follower the design has.
std::string Put_Limit(Limits& limits, const Design_State& design, Limit limit, std::string_view text);

}  // namespace lobemax
