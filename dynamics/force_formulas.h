// SPDX-License-Identifier: GPL-3.0-or-later
/// Force and torque of a rigid train at a point, over any kind of real number (core/real_math.h). Equations are those
/// of docs/theory.md, 9; dynamics/kinetostatics.cpp makes the struct and says where it departs from mechanics.
#pragma once

#include "core/circle.h"
#include "dynamics/rounding.h"

namespace lobemax::formulas {

/// What does not change from point to point; angles in degrees, all else in newtons and metres or their like.
struct Rigid_Train {
    int base;  // Time_Base
    double omega;
    double divisor;  // of the lengths
    bool translating;
    double arm;
    double S_min;
    double mass;
    double damping;
    double spring_rate;
    double preload;
    double mu_follower;
    double mu_shaft;
    double b;    // radius of the bearing
    double r_p;  // prime radius, of a radial cam
    int followtype;

    /// Of the follower, against the lowest point.
    template <class X>
    struct Motion {
        X s;
        X v;
        X a;
    };

    template <class X>
    X Length(X motion) const
    {
        return (translating ? motion : motion * Rad_per_Deg * arm) / divisor;
    }
    template <class X>
    Motion<X> Motion_of(X S, X V, X A) const
    {
        return {Length(S - S_min), Length(V), Length(A)};
    }

    /// (108): force of spring, damper and mass; a time base of no kind keeps the former one.
    template <class X>
    X Force(const Motion<X>& m, X former) const
    {
        const X spring = m.s * spring_rate + preload;
        switch (base) {
        case 1:
            return spring + m.v * damping + mass * m.a;
        case 2:  // a single factor of 180 over pi on the acceleration, and meant
            return omega * omega * (mass * m.a * 180.0 / PI) + (m.v * damping * 180.0 / PI) * omega + spring;
        case 3:
            return omega * omega * (mass * m.a) + m.v * damping * omega + spring;
        default:
            return former;
        }
    }

    /// (114): power over shaft speed drives the follower; none in a time base of no kind.
    template <class X>
    X Torque(X F, X v) const
    {
        switch (base) {
        case 1:
            return F * v / omega;
        case 2:
            return F * v * 180.0 / PI;
        case 3:
            return F * v;
        default:
            return X(0.0);
        }
    }

    /// (115); none of a follower of no kind.
    template <class X>
    X Friction(X F, X Fc, X phi, X s) const
    {
        const X journal = Abs(mu_shaft * Fc * b);
        if (followtype == 1)
            return Abs(mu_follower * Fc * (s + r_p)) + journal;
        if (followtype == 2) {
            const X Fs = Abs(F * Tan(phi));  // (110)
            return Abs(mu_follower * Fs * (s + r_p)) + journal;
        }
        return X(0.0);
    }

    template <class X>
    struct Load {
        X friction;
        X torque;
        Mask_of<X> separated;  // (111); also where nothing is to be told, as with form closure
    };

    /// What the force, the external one included, brings about; Phi in degrees.
    template <class X>
    Load<X> Load_of(X F, const Motion<X>& m, X Phi) const
    {
        const X phi = Phi * Rad_per_Deg;
        const X Fc = F / Cos(phi);  // (110)
        return {Friction(F, Fc, phi, m.s), Torque(F, m.v), Fc <= 0.0};
    }
};

}  // namespace lobemax::formulas
