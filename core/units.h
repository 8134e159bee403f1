// SPDX-License-Identifier: GPL-3.0-or-later
/// The five unit systems, their labels, decimals and defaults.
///
/// A design is held in one system: 1 in-lb-bl, 2 ft-lb-sl, 3 m-kg-N, 4 cm-kg-N, 5 mm-kg-N.
#pragma once

#include <string>

#include "core/design_state.h"

namespace lobemax {

inline constexpr int First_Unit_System = 1;
inline constexpr int Last_Unit_System = 5;

/// The words of a unit system.
struct Unit_Words {
    const char* length;
    const char* force;
    const char* mass;
    const char* stress;
    const char* menu;    // "in-lb"
    const char* status;  // "in-lb-bl-s"
};

/// @throws Fault{9} for a code outside 1..5
const Unit_Words& Words_of_Units(int code);

/// Sets Decimals_1 to Decimals_6 for the system in force.
void Set_Decimals(Design_State& design);

/// The label of a kind of unit in a system, for the follower, the time base and the kind of cam of a design.
/// @throws Fault{9} for a code outside 1..5
std::string Unit_Text(const Design_State& design, int code, Unit_Kind kind);

/// Fills the unit table of the variables, Var_Unit, under its trap.
///
/// @param code   unit system 1..5
/// @param table  labels by variable, 0..table_size + 6
/// @param table_size  highest variable that can be picked, 59
bool CamUnits(const Design_State& design, int code, Bounded<std::string, 0, Plot_Group::Last_Unit>& table,
              int table_size);

/// What follows the unit system, the time base, the follower and the kind of cam: decimals, unit labels and the words
/// of the variables. Due after any change of these.
void Set_Units(Design_State& design);

/// The unit system of the calculated rows: the design's own, or after a change of units the one they were calculated
/// in, whose names they then carry.
int Units_of_Results(const Design_State& design);
/// Whether the results were calculated before a change of units.
bool Results_in_Other_Units(const Design_State& design);
/// The sentence that tells so.
std::string Other_Units_Sentence(const Design_State& design);
/// Tells that results of other units are not to be used; false, and silence, where they are the design's own.
bool Refuse_Other_Units(const Design_State& design);

/// Sets the time base, 1 per second, 2 per degree, 3 per radian, and renames what follows it.
/// @throws Fault{5} for any other code
void Set_Time_Base(Design_State& design, int code);

/// An inch value as a default of the system in force: x1, /12, /40, x2.5, x25. These are round numbers of
/// the shop, not conversions, and meant.
double Shop_Length(const Design_State& design, double inches);

/// The same for the prime radius, whose factors are x1, /12, /40, x2.54, x25.4; meant too.
double Shop_Prime_Radius(const Design_State& design, double inches);

/// Defaults of masses, springs, damping and friction for the system in force.
void MassProp(Design_State& design);

/// Radii of roller and cutter that a new design has in the system in force.
struct Roller_Sizes {
    double roller;
    double cutter;
};
Roller_Sizes Usual_Roller(const Design_State& design);

/// What a length of the design is divided by to be one of the forces' formulas: metres in all metric systems.
double Length_Divisor(const Design_State& design);

}  // namespace lobemax
