// SPDX-License-Identifier: GPL-3.0-or-later
/// Contact of two elastic bodies by theory: line and ellipse. docs/theory.md, 10 and 18.
#pragma once

namespace lobemax {

/// The contact of a force.
struct Contact {
    double half_width = 0.0;   // of the strip, or the ellipse's half axis across the rolling axis (its shorter one)
    double half_length = 0.0;  // the ellipse's longer half axis; 0 of a strip
    double pressure = 0.0;     // largest
    double shear = 0.0;        // largest below the surface
    double depth = 0.0;        // where
};

/// A strip of a length. (124), (125) @param convexity  1/R_1 + 1/R_2, above 0  @param compliance  (122)
Contact Line_Contact(double force, double length, double convexity, double compliance);

/// The ellipse of two bodies with the relative curvatures A <= B, both above 0, of the gap A x^2 + B y^2: exact, by the
/// complete elliptic integrals. (130) to (132)
/// @param poisson  of the body whose shear is asked for
Contact Elliptic_Contact(double force, double A, double B, double compliance, double poisson);

/// Ratio b/a (0..1] of the ellipse's half axes by the ratio B/A >= 1 of the gap's curvatures: the root of (130).
double Axes_Ratio(double B_over_A);

}  // namespace lobemax
