// SPDX-License-Identifier: GPL-3.0-or-later
/// The coordinates of a cam at a point, by configuration, over any kind of real number (core/real_math.h). Each struct
/// holds what is constant over a design; camgeom/profile.cpp makes them and says where they depart from mechanics.
/// Equations are those of docs/theory.md, 8.
#pragma once

#include "camgeom/size_formulas.h"

namespace lobemax::formulas {

/// The coordinates of one point of a radial cam; radius and angle in 32 bits as they are stored.
template <class X>
struct Radial_Point {
    Vector<X> center;       // rows 9, 10
    X radius;               // 11
    X angle;                // 12, degrees
    Vector<X> center_key;   // 13, 14
    Vector<X> surface;      // 36, 37
    Vector<X> surface_key;  // 38, 39
    Vector<X> cutter;       // 40, 41

    /// Rows 34, 35.
    Polar<X> Key_Polar() const { return Polar<X>::Of(center_key.x, center_key.y); }
};

/// docs/theory.md, (95), (96).
/// Surface and cutter stand on the contact normal through the roller centre, the surface a roller radius from it, the
/// cutter the roller radius less its own. A cutter of the roller's size therefore runs on the roller centre's path, one
/// of radius 0 on the surface.
template <class X>
struct Surface_Cutter_Point {
    Vector<X> surface;
    Vector<X> cutter;

    /// @param sign  on which side the cam lies   @param nu  direction of the normal, degrees
    static Surface_Cutter_Point Of(double sign, const Vector<X>& center, X nu, double radius, double Cutter)
    {
        const Circular<X> n = Sin_Cos(nu * Rad_per_Deg);
        return {{center.x + sign * radius * n.cos, center.y + sign * radius * n.sin},
                {center.x + sign * (radius - Cutter) * n.cos, center.y + sign * (radius - Cutter) * n.sin}};
    }
};

/// Displacement at a point as a radial profile takes it: by the ratio of a driven end effector, from the top for a
/// conjugate. docs/theory.md, (63).
struct Profile_Displacement {
    bool conjugate;
    double lift;

    template <class X>
    X operator()(X s, X ratio_S) const
    {
        const X S = s / ratio_S;
        return conjugate ? lift - S : S;
    }
};

/// A radial cam in general.
struct Radial_Cam {
    double rot;                     // Rotflag
    Circular<double> machine_zero;  // of the start angle that coordinates versus machine zero are turned back by, (99)
    double Follow_Rad;
    double Cutter_Radius;
    Profile_Displacement displacement;
};

/// Roller, (92), (93), (95), (96).
struct Translating_Roller_Profile {
    Radial_Cam cam;
    double height;  // of the roller's centre at the lowest point
    double offset;
    double In_Out;

    template <class X>
    Radial_Point<X> operator()(X theta, X s, X phi, X ratio_S) const
    {
        const X Rs = height + cam.displacement(s, ratio_S);
        const auto polar = Polar<X>::Of(Rs, X(offset));
        const X A = polar.angle + theta;
        const Circular<X> ar = Sin_Cos(A * Rad_per_Deg);
        const Vector<X> center{polar.radius * ar.cos, -cam.rot * ar.sin * polar.radius};
        const X nu = (phi - theta) * cam.rot;
        const auto normal = Surface_Cutter_Point<X>::Of(In_Out, center, nu, cam.Follow_Rad, cam.Cutter_Radius);
        return {.center = center,
                .radius = polar.radius,
                .angle = A,
                .center_key = Rotated(center, cam.machine_zero),
                .surface = normal.surface,
                .surface_key = Rotated(normal.surface, cam.machine_zero),
                .cutter = normal.cutter};
    }
};

/// Flat face, touched off its axis by the velocity per radian: (69), (97).
struct Translating_Flat_Profile {
    Radial_Cam cam;
    double height;
    double side;  // Side_Sign
    Scale per_radian_V;

    template <class X>
    Radial_Point<X> operator()(X theta, X s, X v, X ratio_S) const
    {
        const X w = per_radian_V(side * v);
        const X Rs = height + cam.displacement(s, ratio_S);
        const auto polar = Polar<X>::Of(Rs, w);
        const X A = polar.angle + theta;
        const Circular<X> ar = Sin_Cos(A * Rad_per_Deg);
        const Vector<X> center{polar.radius * ar.cos, -cam.rot * ar.sin * polar.radius};
        const Vector<X> key = Rotated(center, cam.machine_zero);
        const X face = cam.Cutter_Radius + Rs;
        const X Rc = Root(face * face + w * w);
        const Circular<X> Ac = Sin_Cos(Atan(w / face) + theta * Rad_per_Deg);
        return {.center = center,
                .radius = polar.radius,
                .angle = A,
                .center_key = key,
                .surface = center,
                .surface_key = key,
                .cutter = {Rc * Ac.cos, -cam.rot * Rc * Ac.sin}};
    }
};

/// A follower on an arm.
struct Oscillating_Cam {
    Radial_Cam cam;
    Arm_Triangle triangle;
    double start_angle;  // degrees
    double pivot_angle;  // degrees
    double turn_sense;   // ArmDirect Side_Sign
    double normal_sign;  // -(In_Out Side_Sign) ArmDirect

    template <class X>
    struct Place {
        Vector<X> pivot;
        X R;
        X theta_c;         // degrees, 0 to 360
        Vector<X> center;  // of the roller
        Mask_of<X> closes;
    };

    /// Angle of the arm at its pivot, degrees.
    template <class X>
    X Gamma(X s, X ratio_S) const
    {
        return start_angle + cam.displacement(s, ratio_S);
    }

    /// (74) to (77)
    template <class X>
    Place<X> At(X gamma, X theta) const
    {
        const X dr = (pivot_angle - cam.rot * theta) * Rad_per_Deg;
        const Circular<X> direction = Sin_Cos(dr);
        const auto at = triangle.At(Cos(gamma * Rad_per_Deg));
        const X work = Rounded(dr - turn_sense * at.t);
        const Circular<X> wr = Sin_Cos(work);
        return {.pivot = {Rounded(triangle.D * direction.cos), Rounded(triangle.D * direction.sin)},
                .R = at.R,
                .theta_c = Remainder(work * Deg_per_Rad, 360.0),
                .center = {at.R * wr.cos, at.R * wr.sin},
                .closes = at.closes};
    }
};

/// A point of an arm's cam, and what rows 9 to 41 do not hold.
template <class X>
struct Arm_Point {
    Radial_Point<X> point;
    Vector<X> pivot;
    Mask_of<X> closes;  // false where the triangle of the arm does not
};

/// Roller, (77), (94) to (96).
struct Oscillating_Roller_Profile {
    Oscillating_Cam arm;

    template <class X>
    Arm_Point<X> operator()(X theta, X s, X phi, X ratio_S) const
    {
        return From(arm.At(arm.Gamma(s, ratio_S), theta), phi);
    }

    template <class X>
    Arm_Point<X> From(const Oscillating_Cam::Place<X>& place, X phi) const
    {
        const Radial_Cam& cam = arm.cam;
        const Vector<X>& center = place.center;
        const X A = Angle_of(place.pivot.x - center.x, place.pivot.y - center.y) * Deg_per_Rad;
        const X nu = cam.rot * phi + (A + 90.0);
        const auto normal = Surface_Cutter_Point<X>::Of(arm.normal_sign, center, nu, cam.Follow_Rad, cam.Cutter_Radius);
        return {{.center = center,
                 .radius = place.R,
                 .angle = place.theta_c,
                 .center_key = Rotated(center, cam.machine_zero),
                 .surface = normal.surface,
                 .surface_key = Rotated(normal.surface, cam.machine_zero),
                 .cutter = normal.cutter},
                place.pivot,
                place.closes};
    }
};

/// Flat face, (86), (98).
struct Oscillating_Flat_Profile {
    Oscillating_Cam arm;
    Flat_Contact_Motion contact;

    /// @param S  row 1, which the cutter's normal is turned by; s and v are the motion in force
    template <class X>
    Arm_Point<X> operator()(X theta, X s, X v, X S, X ratio_S) const
    {
        return From(arm.At(arm.Gamma(s, ratio_S), theta), contact(s, v, theta), S);
    }

    template <class X>
    Arm_Point<X> From(const Oscillating_Cam::Place<X>& place, const Flat_Contact_Motion::Contact<X>& face, X S) const
    {
        const Radial_Cam& cam = arm.cam;
        const auto polar = Polar<X>::Of(face.contact.x, face.contact.y);
        const Vector<X> key = Rotated(face.contact, cam.machine_zero);
        const X A = Angle_of(place.pivot.x - face.foot.x, place.pivot.y - face.foot.y) * Deg_per_Rad;
        const X nu = cam.rot * S + (A + 90.0);
        const auto normal = Surface_Cutter_Point<X>::Of(arm.normal_sign, face.contact, nu, 0.0, cam.Cutter_Radius);
        return {{.center = face.foot,
                 .radius = polar.radius,
                 .angle = polar.angle,
                 .center_key = key,
                 .surface = face.contact,
                 .surface_key = key,
                 .cutter = normal.cutter},
                place.pivot,
                place.closes};
    }
};

/// A barrel or linear cam, (102) to (105).
///
/// With an arm the surface stands square to the stored track for Rotflag = ArmDirect = sgn(ArmX) only: meant, up to a
/// roller radius out of place otherwise, where mechanics takes the normal of the track; a translating cam is exact.
template <class X>
struct Axial_Point {
    X Z;               // 11, of the roller's centre
    X Lambda;          // 12, degrees, or length of a linear cam
    X surface_Z;       // 36
    X surface_Lambda;  // 37
};

struct Axial_Cam {
    double rot;
    double prime;
    double Follow_Rad;
    bool linear;
    double length;  // of a linear cam, once round
    double sign;    // of the wall

    /// From the roller's centre, in 32 bits as it is stored, and the direction of the wall's normal, radians.
    template <class X>
    Axial_Point<X> Axial_Surface_Point(X Z, X Lambda, X nu) const
    {
        const double q = rot * sign;
        const Circular<X> n = Sin_Cos(nu);
        const X th = Lambda * Rad_per_Deg;
        const X wall = (prime * th - q * Follow_Rad * n.sin) / prime * Deg_per_Rad;
        return {Z, Along(Lambda), q * Follow_Rad * n.cos + Z, Along(Rounded(wall))};
    }

private:
    template <class X>
    X Along(X Lambda) const
    {
        return linear ? Lambda / 360.0 * length : Lambda;
    }
};

struct Translating_Axial_Profile {
    Axial_Cam cam;

    template <class X>
    Axial_Point<X> operator()(X theta, X s, X phi) const
    {
        return cam.Axial_Surface_Point(s, theta, phi * Rad_per_Deg);
    }
};

/// (89), (104)
struct Oscillating_Axial_Profile {
    Axial_Cam cam;
    Axial_Arm_Motion arm;
    Phi_Oscillating_Axial Phi;

    /// @param S  row 1, which the arm is turned by
    template <class X>
    Axial_Point<X> operator()(X theta, X S, X v) const
    {
        const auto at = Axial_Arm_Center<X>::Of(arm, cam.rot, cam.linear, S, theta);
        const X nu = -cam.rot * Phi(S, v) * Rad_per_Deg + (at.arm * Rad_per_Deg - PI);
        return cam.Axial_Surface_Point(Rounded(at.Z), at.Lambda, nu);
    }
};

}  // namespace lobemax::formulas
