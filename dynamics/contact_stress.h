// SPDX-License-Identifier: GPL-3.0-or-later
/// Hertz stress in the contact of cam and follower: cylindrical roller, crowned roller, flat face.
///
/// Reads the follower force, row 7, or the dynamic force, row 33, of a vibration; pressure angle, row 5; curvature,
/// row 6. Writes the peak contact stress to row 42, negative for compression, and the largest shear to row 43, both in
/// force per square of the length unit.
#pragma once

namespace lobemax {

struct Design_State;

/// Codes of Roller_type.
inline constexpr int cylindrical_roller = 1;
inline constexpr int crowned_roller = 2;

/// Stresses at all points, under its trap. A point that cannot be calculated is told of and ends the run: the points
/// after it keep what they held.
///
/// The shear is 0.304 of the peak for line contact and 0.34 for a crowned roller. Poisson's ratios enter by the
/// compliances alone.
/// @param roller_type  1 cylindrical, 2 crowned; of no account for a flat face
/// @param youngs       moduli of cam and follower, stress unit
/// @param poissons     their Poisson's ratios
/// @param size         crown radius of a crowned roller, contact length of the others, length unit
/// @return             whether all points were calculated
/// Source: docs/theory.md, (121) to (132).
bool Calc_Contact_Stress(Design_State& design, int roller_type, const double (&youngs)[2], const double (&poissons)[2],
                         double size);

/// Semi-axis factors of the contact ellipse against its angle, degrees.
/// Source: docs/theory.md, (133), (134), with the exact factors beside them.
double Ellipse_Ka(double theta);
double Ellipse_Kb(double theta);

}  // namespace lobemax
