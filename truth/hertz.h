// SPDX-License-Identifier: GPL-3.0-or-later
/// Contact of two elastic bodies by theory: line and ellipse. Lengths, forces and pressures in units that go together.
/// docs/theory.md, 10 and 18.
#pragma once

#include <array>

namespace lobemax {

/// The contact of a force.
struct Contact {
    double half_width = 0.0;   // of the strip, or the ellipse's shorter half axis
    double half_length = 0.0;  // the ellipse's longer half axis; 0 of a strip
    double pressure = 0.0;     // largest
    double shear = 0.0;        // largest below the surface
    double depth = 0.0;        // where
};

/// A strip of a length. (124), (125), (261). The shear is that of the plane across; a body whose Poisson's ratio is
/// below 0.242 has a larger one along the strip: that of a very long ellipse. @param convexity  1/R_1 + 1/R_2, above 0
/// @param compliance  (122)
Contact Line_Contact(double force, double length, double convexity, double compliance);

/// The ellipse of two bodies of the gap A x^2 + B y^2, both curvatures above 0, in any order: exact, by the complete
/// elliptic integrals and the stresses below the centre. (130) to (132), (262) to (269)
/// @param poisson  of the body whose shear is asked for
Contact Elliptic_Contact(double force, double A, double B, double compliance, double poisson);

/// Ratio b/a (0..1] of the ellipse's half axes by the ratio B/A >= 1 of the gap's curvatures: the root of (130), to
/// 1E-11 of it, from the circle up to a strip.
double Axes_Ratio(double B_over_A);

/// A shear stress over the largest pressure and its depth over the ellipse's shorter half axis.
struct Shear_Below {
    double shear = 0.0;
    double depth = 0.0;
};

/// The largest shear below the centre of an ellipse. (264) to (269) @param axes_ratio  b/a, (0..1]
Shear_Below Largest_Shear(double axes_ratio, double poisson);

/// The ellipse of a ratio of half axes, and the integrals that it has. (262)
struct Contact_Ellipse {
    double kappa = 1.0;  // b/a
    double P = 0.0;      // R_D(0, 1, kappa^2) = 3 (E / kappa^2 - K) / e^2
    double Q = 0.0;      // R_D(0, kappa^2, 1) = 3 (K - E) / e^2
    double E = 0.0;      // of second kind
};

/// The contacts of one pair of bodies, one after another as along a cam: the exact shear at nodes of the axes' ratio,
/// worked out where it is needed, and a curve of third degree between, within 1E-5 of the largest pressure. All else as
/// Elliptic_Contact has it; a contact whose curvatures are like those of the one before starts from its ellipse, which
/// changes no figure by more than 1E-12 of itself.
class Elliptic_Contacts {
public:
    Elliptic_Contacts(double compliance, double poisson) : compliance_(compliance), poisson_(poisson) {}

    Contact At(double force, double A, double B);

private:
    static constexpr int Nodes = 25;
    /// The largest shear of both directions.
    struct Node {
        bool found = false;
        Shear_Below across;
        Shear_Below along;
    };
    const Node& Node_at(int k);
    Contact_Ellipse Ellipse_near(double r);

    double compliance_;
    double poisson_;
    std::array<Node, Nodes> nodes_{};
    double curvatures_ = 0.0;  // ratio of the contact before, 0 of none
    Contact_Ellipse ellipse_;  // the last that was worked out
};

}  // namespace lobemax
