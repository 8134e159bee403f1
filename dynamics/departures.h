// SPDX-License-Identifier: GPL-3.0-or-later
/// How far the figures of a vibration that depart from mechanics, and meant, stand from what mechanics has: for a
/// designer to read beside them. The figures themselves stay. docs/theory.md, 11.2 to 11.4, "Departure".
#pragma once

#include <optional>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// Of a row, in the row's own unit.
struct Departure {
    double largest = 0.0;  // distance of a point
    double range = 0.0;    // of what mechanics has

    /// The distance over the range; 0 where there is no difference.
    double Share() const;
};

/// Row 22 beside the displacement of (157) and (158) by which the mass does the motion: with the square of two pi, in
/// model 5 with the mass of the end, in model 1 that of model 3. @throws Fault{11} without a spring
Departure Departure_of_Polydyne(const Design_State& design);

/// Rows 23 and 24 beside the derivatives of row 22: they are apart per second alone.
struct Polydyne_Derivatives {
    Departure V;
    Departure A;
};
Polydyne_Derivatives Departures_of_Polydyne_Derivatives(const Design_State& design);

/// Puts the derivatives of row 22 into rows 23 and 24.
void Correct_Polydyne_Derivatives(Design_State& design);

/// Pressure angles, degrees, and the radius of the sharpest curvature of a cam.
struct Cam_Extremes {
    double Phi_Max;
    double Phi_Min;
    double Rho_Smallest;
};
/// Of the cam of the design's size by rows 22 to 24 as they are, and with the derivatives of row 22 in 23 and 24.
struct Polydyne_Extremes {
    Cam_Extremes of_rows;
    Cam_Extremes of_mechanics;
};
/// @return none where it cannot be sized. The design stays as it is.
std::optional<Polydyne_Extremes> Find_Polydyne_Extremes(const Design_State& design);

/// Row 33 beside the force by (153) to (155) for the response and the cam's motion as they are: per second in every
/// time base, with the closing damper of (143) in model 2, the closing spring on the cam in model 3, and the polydyne
/// cam's own motion. A force below zero counts as the zero that models 4 and 5 show.
/// @throws Fault{5}, Fault{11} for a train without frequencies
Departure Departure_of_Force(const Design_State& design);

/// Where the mass of model 5 stands by mechanics over where it stands here, at rest: k1 / (k1 + k2).
/// @throws Fault{11} without springs
double True_Share_of_Model_5(const Design_State& design);

}  // namespace lobemax
