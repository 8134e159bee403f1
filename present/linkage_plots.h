// SPDX-License-Identifier: GPL-3.0-or-later
/// The functions of a linkage over the cam angle, as they are picked and plotted: each moving link's position, velocity
/// and acceleration, and the ratios of the last link's motion to the arm's.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lobemax {

struct Design_State;

enum class Link_Quantity { position, velocity, acceleration, position_ratio, velocity_ratio };

struct Link_Function {
    int link = 0;  // of a ratio 0
    Link_Quantity quantity = Link_Quantity::position;
    friend bool operator==(const Link_Function&, const Link_Function&) = default;
};

/// The functions of the train at hand, link by link, then the ratios.
std::vector<Link_Function> Link_Functions(const Design_State& design);

/// Its title: "Angle of Link 4", "Dsplcmt of Link 4" of a slider, "Omega Out / Omega In".
std::string Title_of(const Design_State& design, const Link_Function& function);
/// "deg", "rad/sec", "rad/sec^2"; of a slider the length unit, per second; of a ratio empty.
std::string Unit_of(const Design_State& design, const Link_Function& function);

/// Its values at all points; angles without their jumps of a turn. @throws Fault{9} before a linkage was calculated
std::vector<double> Values_of(const Design_State& design, const Link_Function& function);

/// The function that a word names: its title, or short, "Theta 4", "Omega 4", "Alpha 4", "S 4", "Ratio S", "Ratio V";
/// upper and lower case are the same.
std::optional<Link_Function> Link_Function_Named(const Design_State& design, std::string_view word);

/// The axis of every plot of a linkage, and the title above it: "Selected Linkage Parameters" with the model's name.
inline constexpr std::string_view Link_Plot_Axis = "Cam Angle (deg)";
std::string Link_Plot_Title(const Design_State& design);

}  // namespace lobemax
