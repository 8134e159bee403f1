// SPDX-License-Identifier: GPL-3.0-or-later
/// Contact stress at a point, over any kind of real number (core/real_math.h). Equations are those of docs/theory.md,
/// 10; dynamics/contact_stress.cpp makes the structs and has the words for what cannot be calculated.
///
/// What the program holds in 32 bits is rounded where it is. `clear` of an answer is false where a point has something
/// to tell, lacks a number or takes one of the point before; or where a last place might hang on who works a sine out.
#pragma once

#include "core/numeric_formulas.h"
#include "dynamics/rounding.h"

namespace lobemax::formulas {

inline constexpr double line_shear = -0.304;
inline constexpr double ellipse_shear = -0.34;

/// A 32-bit number and whether it is the same whoever works it out.
template <class X>
struct Sure {
    X value;
    Mask_of<X> alike;
};

/// Force that presses follower and cam together.
struct Contact_Force {
    bool form_closed;
    bool tells_of_none;  // a force of none or less ends the run
    double weight;       // of the follower

    /// Along the common normal; Phi in degrees.
    template <class X>
    Sure<X> Along_Normal(X force, X Phi) const
    {
        const X phi = Rounded(Phi * Rad_per_Deg);
        const X W = force / Cos(phi);
        return {Rounded(W), Rounds_Alike(W)};
    }
    template <class X>
    X By_Closure(X W) const
    {
        return form_closed ? Abs(W) : W;
    }
    /// Whether the point has a stress.
    template <class X>
    Mask_of<X> Presses(X W) const
    {
        return tells_of_none ? W > 0.0 : W == W;
    }
    /// (121)
    template <class X>
    X With_Weight(X W) const
    {
        return Rounded(weight + W);
    }
};

template <class X>
struct Stress {
    X sigma;
    X tau;
    Mask_of<X> clear;
};

/// Line contact: flat face, or cylindrical roller of the radius R2.
struct Line_Contact {
    double m;       // compliance, (122)
    double length;  // of the contact
    bool flat;
    double R2;

    /// Radius of the cam's surface, from that of the path of the roller's centre. (123)
    template <class X>
    X Radius(X Rho) const
    {
        return flat ? Rho : Rounded(Rho - R2);
    }
    /// A flat face lies on convex cams alone, a roller has no place on a point.
    template <class X>
    Mask_of<X> No_Contact(X R1) const
    {
        return flat ? R1 <= 0.0 : R1 == 0.0;
    }
    /// (124)
    template <class X>
    X B(X R1) const
    {
        return flat ? Rounded(1.0 / R1 * 0.5) : Rounded((1.0 / R2 + 1.0 / R1) * 0.5);
    }
    /// Square of the half-width. (125)
    template <class X>
    X Width_Squared(X B, X W) const
    {
        return Rounded(m * (2.0 / PI) / B * W / length);
    }
    template <class X>
    X Half_Width(X squared) const
    {
        return Rounded(Root(squared));
    }
    /// Largest pressure; a must not be zero. (125)
    template <class X>
    X Pressure(X W, X a) const
    {
        return Rounded((W + W) / (a * PI * length));
    }
    /// Of a point without questions.
    template <class X>
    Stress<X> operator()(X Rho, X W) const
    {
        const X R1 = Radius(Rho);
        const Mask_of<X> contact = !No_Contact(R1);
        const X b = B(Select(contact, R1, X(1.0)));
        const X squared = Width_Squared(b, W);
        const X a = Half_Width(squared);
        const Mask_of<X> wide = a != 0.0;
        const X p_max = Select(wide, Pressure(W, Select(wide, a, X(1.0))), X(0.0));
        const X sigma = -p_max;
        const Mask_of<X> clear = contact && Finite(R1 + b + squared) && squared >= 0.0;
        return {sigma, sigma * line_shear, flat ? clear && wide : clear};
    }
};

/// Factors of the semi-axes against the angle of the ellipse, degrees: Ka = ka_factor theta^ka_exponent, (133), and Kb,
/// (134).
inline constexpr double ka_factor = 50.192;
inline constexpr double ka_exponent = -0.86215;
template <class X>
X Kb(X theta)
{
    const X t2 = theta * theta;
    const X t3 = t2 * theta;
    return 1.1469e-8 * t3 * t2 - 3.6649e-11 * t3 * t3 - 1.4119e-6 * t2 * t2 + 8.7039e-5 * t3 - 0.0028054 * t2 +
           0.051792 * theta + 0.0012181;
}

/// Point contact of a crowned roller.
struct Crowned_Contact {
    double m;   // compliance, (122)
    double R2;  // of the roller
    double R3;  // of its crown
    double D;   // of both, 1/R2 - 1/R3 in 32 bits

    /// (123)
    template <class X>
    X Radius(X Rho) const
    {
        return Rounded(Rho - R2);
    }
    /// (127)
    template <class X>
    X Sum(X R1) const
    {
        return Rounded((1.0 / R2 + 1.0 / R1 + 1.0 / R3) * 0.5);
    }
    /// Four times the square of the difference. (128)
    template <class X>
    X Diff_Squared(X R1) const
    {
        return Rounded(1.0 / (R1 * R1) + D * D + D * (1.0 / R1) + D * (1.0 / R1));
    }
    template <class X>
    X Diff(X squared) const
    {
        return Rounded(Root(squared) * 0.5);
    }
    /// Cube of the length that the semi-axes are counted in. (131)
    template <class X>
    X Cube(X W, X Sum) const
    {
        return Abs(W) * 3.0 * m / (Sum * 4.0);
    }
    /// (132)
    template <class X>
    X Pressure(X W, X area) const
    {
        return Rounded(W * 1.5 / area);
    }
    /// Of a point without questions.
    template <class X>
    Stress<X> operator()(X Rho, X W) const
    {
        constexpr double angle_error = library_error * 100.0;  // degrees: of a difference of two quarter turns
        const X R1 = Radius(Rho);
        const Mask_of<X> contact = R1 != 0.0;
        const X r1 = Select(contact, R1, X(1.0));
        const X sum = Sum(r1);
        const X squared = Diff_Squared(r1);
        const auto arc = Arc<X>::Cosine(Diff(squared) / sum);
        const X theta = arc.angle * Deg_per_Rad;
        const X c = Raised(Cube(W, sum), X(1.0 / 3.0));
        const X a = Rounded(c) * (ka_factor * Raised(Rounded(theta), X(ka_exponent)));
        const X b = Rounded(c) * Kb(Rounded(theta));
        const X area = Rounded(a) * PI * Rounded(b);
        const Mask_of<X> some = area != 0.0;
        const X sigma = Select(some, -Pressure(W, Select(some, area, X(1.0))), X(0.0));
        const Mask_of<X> alike = Rounds_Alike(theta, X(angle_error)) && Rounds_Alike(c) && Rounds_Alike(a);
        return {sigma, sigma * ellipse_shear,
                contact && squared >= 0.0 && arc.exists && Finite(R1 + sum + area) && alike};
    }
};

}  // namespace lobemax::formulas
