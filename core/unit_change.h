// SPDX-License-Identifier: GPL-3.0-or-later
/// The conversion of a design from one unit system to another.
#pragma once

namespace lobemax {

struct Design_State;

/// What a value is multiplied by when the design goes from one system to another, by kind.
struct Unit_Factors {
    double length = 1.0;
    double force = 1.0;
    double torque = 1.0;
    double mass = 1.0;
    double inertia = 1.0;
    double spring_rate = 1.0;
};

/// Factors of a single pass: between inches and any other system, or among m, cm and mm. Feet reach
/// the metric systems in two passes, through inches.
/// @throws Fault{9} for a code outside 1..5, Fault{5} for a pair that needs two passes
Unit_Factors Single_Pass_Factors(int from, int to);

/// Converts the design from its system to another, field by field in a fixed order, each number rounded to
/// the decimals of the system arrived at. Calculated rows stay as they are and keep the names of their units; an
/// external force, the row Ext_Force with it, goes along. Does nothing for its own system.
/// @throws Fault{9} for a code outside 1..5, Fault{6} when a number is too large for the new system; the
///         design is then as it was
void Change_Units(Design_State& design, int code);

}  // namespace lobemax
