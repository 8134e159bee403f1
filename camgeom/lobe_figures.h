// SPDX-License-Identifier: GPL-3.0-or-later
/// The figures by which engine cams are told apart, of any motion: how long it is open at a lift, where its middle is,
/// how much it opens.
#pragma once

#include <optional>

namespace lobemax {

struct Design_State;

/// Of the stretch of the cycle that holds the largest displacement and lies above a stated lift. Cam degrees; the lift
/// counts from the smallest displacement.
struct Lobe_Figures {
    double opens = 0.0;   // cam angle, 0 to 360
    double closes = 0.0;  // above opens; beyond 360 where the lobe crosses the start of the cycle
    double duration = 0.0;
    double centre = 0.0;  // middle between both, 0 to 360
    double peak = 0.0;    // cam angle of the largest displacement, the middle of where it rests
    double area = 0.0;    // of the whole curve above its smallest displacement, displacement x degrees
};
/// @return none where the motion never has that lift, or always
std::optional<Lobe_Figures> Figures_of_Lobe(const Design_State& design, double lift);

}  // namespace lobemax
