// SPDX-License-Identifier: GPL-3.0-or-later
/// Pressure angle and curvature at a point, by configuration, over any kind of real number (core/real_math.h). Each
/// struct holds what is constant over a design; angles in degrees, lengths in the length unit. camgeom/sizing.cpp makes
/// them and says where they depart from mechanics; equations are those of docs/theory.md, 6 and 7.
///
/// `told` marks a point that the caller works out by itself, because it has to tell something.
#pragma once

#include "camgeom/arm_formulas.h"

namespace lobemax::formulas {

inline constexpr double quarter_turn =
    1.5707964;  // pi / 2 as a 32-bit number, which the arm's angle is built on: 7e-8 more
inline constexpr double flat_curve = 100000.0;  // Rho where a translating axial cam does not curve
inline constexpr double no_bound = 1000000.0;   // Phi or Rho of an axial arm where its divisor vanishes
inline constexpr double no_divisor = 1E-9;

/// Displacement, velocity and acceleration as the follower of a translating cam has them: from the top for a conjugate,
/// velocity and acceleration per radian.
struct Translating_Motion {
    bool conjugate;
    double lift;
    Scale per_radian_V;
    Scale per_radian_A;

    template <class X>
    X S(X s) const
    {
        return conjugate ? lift - s : s;
    }
    template <class X>
    X V(X v) const
    {
        return per_radian_V(conjugate ? -v : v);
    }
    template <class X>
    X A(X a) const
    {
        return per_radian_A(conjugate ? -a : a);
    }
};

/// (72). A prime radius of zero gives +-90 or no number.
struct Phi_Translating_Axial {
    Scale per_radian_V;
    double prime;

    template <class X>
    X operator()(X v) const
    {
        return Atan(per_radian_V(v) / prime) * Deg_per_Rad;
    }
};

/// (66)
struct Phi_Translating_Roller {
    Translating_Motion motion;
    double offset;
    double Rp;  // height of the roller's centre at the lowest point

    template <class X>
    X operator()(X s, X v) const
    {
        return Atan((motion.V(v) - offset) / (motion.S(s) + Rp)) * Deg_per_Rad;
    }
};

/// (90)
struct Phi_Oscillating_Axial {
    Axial_Arm_Motion arm;
    Axial_Velocity velocity;
    double sgn_ArmX_rot;  // sgn(ArmX) Rotflag
    double rot;
    double ArmRad;
    double omega;

    template <class X>
    X operator()(X s, X v) const
    {
        const auto at = arm(s);
        const X w = velocity(v);
        const X num = sgn_ArmX_rot * ArmRad * w / omega - at.Ra * at.ar.sin;
        const X den = at.Ra * at.ar.cos;
        const Mask_of<X> some = Abs(den) > no_divisor;
        return Select(some, -rot * Atan(num / Select(some, den, X(1.0))) * Deg_per_Rad, X(no_bound));
    }
};

/// (78), (79)
struct Phi_Oscillating_Roller {
    Arm_Triangle triangle;
    Scale velocity;  // to radians per radian of cam, (61)
    int K;           // Rotflag ArmDirect
    bool conjugate;
    double lift;
    double start_angle;

    template <class X>
    struct Answer {
        X Phi;
        Mask_of<X> Denom2_vanishes;
        Mask_of<X> Term3_vanishes;
        Mask_of<X> told;
    };

    /// From the place of the arm: its angle at the pivot in degrees, with sine, the roller's distance R and the angle
    /// tau at the cam centre, degrees.
    template <class X>
    Answer<X> From(X gamma, X sin_gamma, X R, X tau, X v) const
    {
        const double D = triangle.D;
        const double arm = triangle.arm;
        const X gr = gamma * Rad_per_Deg;
        const X tr = tau * Rad_per_Deg;
        const X w = velocity(conjugate ? -v : v);
        const X al = PI - gr - tr;
        const X T0 = D * arm * sin_gamma * w;
        const Mask_of<X> rests = T0 == 0.0;
        const X T1 = R * R / Select(rests, X(1.0), T0);
        const X Denom2 = 2.0 * R * D * Sin(tr);
        const X T2 = (D * D - R * R - arm * arm) / Select(Denom2 == 0.0, X(1.0), Denom2);
        const X T3 = K > 0 ? T2 + T1 : T1 - T2;
        const X at_rest = K > 0 ? al - quarter_turn : quarter_turn - al;
        const X moving = at_rest + Atan(1.0 / Select(T3 == 0.0, X(1.0), T3));
        const Mask_of<X> no_Denom2 = !rests && Denom2 == 0.0;
        const Mask_of<X> no_Term3 = !rests && T3 == 0.0;
        return {Select(rests, at_rest, moving) * Deg_per_Rad, no_Denom2, no_Term3, no_Denom2 || no_Term3};
    }

    /// Angle of the arm at the pivot, degrees. The conjugate adds its displacement here and nowhere else; the plus sign
    /// is meant, mechanics has a minus.
    template <class X>
    X Gamma(X s, X ratio_S) const
    {
        const X sv = conjugate ? lift + s : s;
        return sv / ratio_S + start_angle;
    }

    template <class X>
    Answer<X> operator()(X s, X v, X ratio_S) const
    {
        const X gamma = Gamma(s, ratio_S);
        const Circular<X> at_pivot = Sin_Cos(gamma * Rad_per_Deg);
        const auto place = triangle.At(at_pivot.cos);
        Answer<X> answer = From(gamma, at_pivot.sin, place.R, place.tau, v);
        answer.told = answer.told || !place.closes;
        return answer;
    }
};

/// (73); 100000 where the track is straight.
struct Rho_Translating_Axial {
    Scale per_V;
    Scale per_A;

    template <class X>
    X operator()(X v, X a) const
    {
        constexpr double no_acceleration = 1E-7;
        const X vn = per_V(v);
        const X an = per_A(a);
        const X q = 1.0 + vn * vn;
        const Mask_of<X> curves = Abs(an) > no_acceleration;
        return Select(curves, -(q * Root(q)) / Select(curves, an, X(1.0)), X(flat_curve));
    }
};

/// (70)
struct Rho_Translating_Flat {
    Translating_Motion motion;
    double prime;

    template <class X>
    X operator()(X s, X a) const
    {
        return motion.S(s) + prime + motion.A(a);
    }
};

/// (68)
struct Rho_Translating_Roller {
    Translating_Motion motion;
    double side;  // Side_Sign
    double prime;
    double offset;

    template <class X>
    X operator()(X s, X v, X a) const
    {
        const X r0 = motion.conjugate ? motion.lift + prime - s : prime + s;
        const X r = Rounded(Root(r0 * r0 + offset * offset));
        const X vn = motion.per_radian_V(side * v);
        const X an = motion.per_radian_A(side * a);
        const X q = vn * vn + r * r;
        return Root(q * q * q) / (vn * vn + vn * vn + r * r - r * an);
    }
};

/// (91)
struct Rho_Oscillating_Axial {
    Axial_Arm_Motion arm;
    Axial_Velocity velocity;
    Axial_Velocity acceleration;
    double direct;  // ArmDirect
    double sgn_ArmX;
    double ArmRad;
    double omega;

    template <class X>
    struct Answer {
        X Rho;
        Mask_of<X> told;  // the square of a speed came out negative
    };

    template <class X>
    Answer<X> operator()(X s, X v, X a) const
    {
        const auto at = arm(s);
        const X w1 = velocity(v);
        const X w2 = acceleration(a);
        const X B = at.Ra * at.Ra * omega * omega + (direct * 2) * at.Ra * ArmRad * omega * w1 * at.ar.sin +
                    ArmRad * ArmRad * w1 * w1;
        const X N = B * Root(B);
        const X E1 = w1 * w1 * omega * at.Ra * at.ar.sin;
        const X E2 = w1 * w1 * w1 * direct * ArmRad;
        const X E3 = direct * at.Ra * omega * at.ar.cos * w2;
        const X M = (-E1 + E2 + E3) * ArmRad;
        const Mask_of<X> some = Abs(M) > no_divisor;
        return {Select(some, sgn_ArmX * direct * N / Select(some, M, X(1.0)), X(no_bound)), B < 0.0};
    }
};

/// What both followers on the arm of a radial cam have in common: the motion in radians per radian, (61), and the
/// arm's angle.
struct Radial_Arm_Motion {
    Scale per_radian_V;
    Scale per_radian_A;
    double start_angle;

    template <class X>
    struct At {
        X gd;  // degrees
        X vv;
        X aa;
    };

    template <class X>
    At<X> operator()(X s, X v, X a, X ratio_S, X ratio_V, X ratio_A) const
    {
        return {s / ratio_S + start_angle, per_radian_V(v / ratio_V), per_radian_A(a / ratio_A)};
    }
};

/// (81), at rest (82).
struct Rho_Oscillating_Roller {
    Radial_Arm_Motion motion;
    Arm_Triangle triangle;

    /// Divisor of both factors of (81).
    template <class X>
    X Q(X sin_gamma) const
    {
        return triangle.D * sin_gamma;
    }
    /// cos Phi / Q and l cos Phi / Q.
    template <class X>
    struct Factors {
        X c1;
        X c2;
    };
    template <class X>
    Factors<X> Factors_of(const Circular<X>& phi, X Q) const
    {
        return {phi.cos / Q, triangle.arm * phi.cos / Q};
    }
    /// 1 / Rho.
    template <class X>
    X Curvature(const Radial_Arm_Motion::At<X>& at, const Circular<X>& phi, const Factors<X>& factors) const
    {
        const X k = (1.0 - at.vv) * at.vv * phi.sin - at.aa * phi.cos;
        return (k * factors.c2 + 1.0) * factors.c1;
    }

    template <class X>
    struct Answer {
        X Rho;
        Mask_of<X> told;  // a divisor vanishes, or the arm has no place
    };

    template <class X>
    Answer<X> operator()(const Radial_Arm_Motion::At<X>& at, X phi) const
    {
        const Circular<X> pivot = Sin_Cos(at.gd * Rad_per_Deg);
        const Circular<X> ph = Sin_Cos(phi * Rad_per_Deg);
        const X vv = at.vv;
        const Mask_of<X> rests = vv == 0.0;
        const X divisor = Q(pivot.sin);
        const Mask_of<X> no_Q = divisor == 0.0;
        const X n = Curvature(at, ph, Factors_of(ph, Select(no_Q, X(1.0), divisor)));
        const Mask_of<X> no_n = n == 0.0;
        const auto side = triangle.Side(pivot.cos);
        return {Select(rests, side.c, 1.0 / Select(no_n, X(1.0), n)),
                (rests && !side.Exists()) || (!rests && (no_Q || no_n))};
    }
};

/// (87)
struct Rho_Oscillating_Flat {
    Radial_Arm_Motion motion;
    Flat_Contact_Motion contact;
    double D;  // distance of the pivot, in 32 bits
    double offset;

    template <class X>
    X operator()(const Radial_Arm_Motion::At<X>& at, X s) const
    {
        const Circular<X> ad = Sin_Cos(contact.Arm(s) * Rad_per_Deg);
        const X vv = at.vv;
        const X aa = at.aa;
        const X moving =
            D / ((vv + 1.0) * (vv + 1.0)) * (aa / (1.0 - vv) * ad.cos + (1.0 - (vv + vv)) * ad.sin) + offset;
        return Select(vv == 0.0, (aa * ad.cos + ad.sin) * D + offset, moving);
    }
};

}  // namespace lobemax::formulas
