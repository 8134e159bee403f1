// SPDX-License-Identifier: GPL-3.0-or-later
/// What a user prefers for a new design and for the screens: the choices of the preferences screen.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// The choices as plain values, in the words of the screen.
struct Preference_Choice {
    int WhichUnit = 5;                  // 1..5
    std::string Number_Format = "USA";  // "USA" or "Europe"
    std::string Camtype = "Radial";
    int Followtype = 1;  // 1 roller, 2 flat
    bool Translating = true;
    bool Full_Screen = false;
    bool Open_Clicked_File = true;
    bool Aspect_Flag = false;
    friend bool operator==(const Preference_Choice&, const Preference_Choice&) = default;
};

inline constexpr std::array<std::string_view, 5> Unit_Default_Words{"in-lb-s", "ft-lb-s", "m-kg-s (SI)", "cm-kg-s ",
                                                                    "mm-kg-s "};
inline constexpr std::array<std::string_view, 3> Cam_Type_Words{"Radial", "Barrel", "Linear"};

/// What holds now.
Preference_Choice Present_Preferences(const Design_State& design);

/// Applies a choice to the run and to the design in memory: its units are converted, and a change of cam or follower
/// throws away the sizing and all that rests on it. The number format is not applied here, because its change resets
/// the design: the caller goes the way of the menu. A flat follower makes the cam radial.
/// @throws Fault{9} for a unit system outside 1..5, Fault{6} for a design too large for the new units; nothing is
///         then applied
void Apply_Preferences(Design_State& design, const Preference_Choice& choice);

/// The size of the screen, and how wide a circle must be drawn there to look round.
///
/// @param points_per_inch  across and up. A screen that does not know its own size tells nonsense: what no screen has,
///                         or none at all, counts as square points
void Set_Screen_Scale(Design_State& design, int width, int height, double points_per_inch_across,
                      double points_per_inch_up);

/// Width of a circle on the screen for a height of 1: with the correction chosen, that of the screen.
double Circle_Width(const Design_State& design);

}  // namespace lobemax
