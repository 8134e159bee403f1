// SPDX-License-Identifier: GPL-3.0-or-later
/// The geometry of a follower on an arm at a point, over any kind of real number (core/real_math.h): what camgeom/arm.h
/// tells, without messages and faults. Each struct holds what is constant over a design.
#pragma once

#include "core/numeric_formulas.h"

namespace lobemax::formulas {

/// x num / den, one after the other: the units of a time base.
struct Scale {
    double num = 1.0;
    double den = 1.0;

    template <class X>
    X operator()(X x) const
    {
        return x * num / den;
    }
};

/// The triangle of cam centre, arm pivot and roller centre. docs/theory.md, (75), (76).
struct Arm_Triangle {
    double D;    // distance of the pivot
    double arm;  // length

    template <class X>
    struct Place {
        X R;                // distance of the roller centre from the cam centre
        X t;                // radians, angle at the cam centre
        X tau;              // degrees
        Mask_of<X> closes;  // false where a side or an angle has no value
    };

    /// The side that the arm angle at the pivot leaves open, from its cosine.
    template <class X>
    Third_Side<X> Side(X cos_gamma) const
    {
        return Third_Side<X>::Of(D, arm, cos_gamma);
    }

    template <class X>
    Place<X> At(X cos_gamma) const
    {
        const Third_Side<X> side = Side(cos_gamma);
        const X R = side.c;
        const X twice = 2.0 * D * R;
        const Mask_of<X> flat = twice == 0.0;
        const auto arc = Arc<X>::Cosine((R * R + D * D - arm * arm) / Select(flat, X(1.0), twice));
        const X t = Select(flat, X(0.0), arc.angle);
        return {R, t, t * Deg_per_Rad, side.Exists() && (flat || arc.exists)};
    }
};

/// The contact of a flat face on an arm. docs/theory.md, (83), (86).
struct Flat_Contact_Motion {
    double D;     // distance of the pivot
    double ArmX;  // the pivot
    double ArmY;
    double pivot_angle;  // degrees
    double start_angle;  // degrees; of a conjugate with the lift of the segment calculated last
    double side;         // Side_Sign
    double turn_sense;   // ArmDirect Side_Sign
    double rot;          // Rotflag
    double offset;
    Scale velocity;  // to radians per radian of cam

    template <class X>
    struct Contact {
        Vector<X> foot;
        Vector<X> contact;
        X direction;  // degrees
    };

    /// Angle of the arm, degrees.
    template <class X>
    X Arm(X s) const
    {
        return side * s + start_angle;
    }

    template <class X>
    Contact<X> operator()(X s, X v, X theta) const
    {
        const X w = velocity(v);
        const X arm = Arm(s);
        const X u = 1.0 / (1.0 - w) * D * Cos(arm * Rad_per_Deg);  // along the face, from the arm's foot
        const X d = Root(offset * offset + u * u);
        const X b = Atan(offset / d) * Deg_per_Rad;
        const X direction = (b + arm) * turn_sense + (pivot_angle + 180.0);
        const Circular<X> dr = Sin_Cos(direction * Rad_per_Deg);
        // Turned back by the cam's own angle, which is rounded in radians.
        const Circular<X> turn = Sin_Cos(Rounded(-1.0 * (rot * theta) * Rad_per_Deg));
        const Vector<X> foot{u * dr.cos + ArmX, u * dr.sin + ArmY};
        const Vector<X> contact{d * dr.cos + ArmX, d * dr.sin + ArmY};
        return {Rotated(foot, turn), Rotated(contact, turn), direction};
    }
};

/// Angle of the arm of an axial cam, and the radius at which its roller runs. docs/theory.md, (88).
struct Axial_Arm_Motion {
    double direct;  // ArmDirect
    double g0;      // degrees
    double ArmX;
    double ArmRad;
    double prime;

    template <class X>
    struct At {
        X arm;  // degrees
        Circular<X> ar;
        X Ra;
    };

    template <class X>
    At<X> operator()(X s) const
    {
        const X arm = direct * s + g0;
        const Circular<X> ar = Sin_Cos(arm * Rad_per_Deg);
        const X xa = ArmRad * ar.cos + ArmX;
        return {arm, ar, Root(xa * xa + prime * prime)};
    }
};

/// Its roller's centre on the unrolled drum. docs/theory.md, (89), (104).
template <class X>
struct Axial_Arm_Center {
    X arm;  // degrees
    X Z;
    X Lambda;  // degrees, in 32 bits

    static Axial_Arm_Center Of(const Axial_Arm_Motion& motion, double rot, bool linear, X S, X theta)
    {
        const auto at = motion(S);
        const X lag = motion.ArmRad / at.Ra * at.ar.cos * Deg_per_Rad;  // the angle by which the arc lags
        const X Lambda = linear ? theta : rot * lag + theta;
        // One step of wrapping, as Modulo does it.
        return {at.arm, motion.direct * motion.ArmRad * at.ar.sin,
                Rounded(Select(Lambda > 360.0, Lambda - 360.0, Lambda))};
    }
};

/// Motion of an arm in degrees on an axial cam, brought to radians per second (and per second squared).
/// docs/theory.md, (62).
struct Axial_Velocity {
    double first;
    double second = 1.0;

    template <class X>
    X operator()(X v) const
    {
        return v * first * second;
    }
};

}  // namespace lobemax::formulas
