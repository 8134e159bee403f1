// SPDX-License-Identifier: GPL-3.0-or-later
/// The short lines that stand beside figures of a vibration which depart from mechanics, and meant: what mechanics has,
/// and by how much the figures differ from it in this design. Screens, `calc` and `show` read the same lines.
#pragma once

#include <string>
#include <vector>

namespace lobemax {

struct Design_State;

/// Of the response and the dynamic force; empty without a vibration, and where they do not depart by 0.05 % of the
/// force's range.
std::vector<std::string> Notes_of_Vibration(const Design_State& design);

/// Of the polydyne rows, and of pressure angle and curvature where the cam is sized by them; empty without a polydyne
/// cam.
std::vector<std::string> Notes_of_Polydyne(const Design_State& design);

/// Both, in this order.
std::vector<std::string> Departure_Notes(const Design_State& design);

/// A line each.
std::string As_Lines(const std::vector<std::string>& notes);

}  // namespace lobemax
