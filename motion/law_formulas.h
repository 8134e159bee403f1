// SPDX-License-Identifier: GPL-3.0-or-later
/// The closed-form laws of motion as formulas over any kind of real number (core/real_math.h), and how a point of a
/// curve becomes one of the table. motion/laws.h says what a law is; equations are those of docs/theory.md, 3.
///
/// Each struct holds the constants of a law that is laid over a segment. Laws of one formula have operator()(x) with
/// the place x = theta / beta; laws in regions have In_Region(region, x), and a point belongs to the region that its
/// local angle lies in.
#pragma once

#include "core/circle.h"
#include "core/real_math.h"

namespace lobemax {

struct Law_Segment;

/// A point of a curve of motion: S, and its derivatives per radian of cam.
template <class X>
struct Svajp_of {
    X S = 0.0;
    X V = 0.0;
    X A = 0.0;
    X J = 0.0;
    X P = 0.0;
};
using Svajp = Svajp_of<double>;

namespace law_forms {

// More circle constants of the laws, literals as the others are.
inline constexpr double PI3 = 9.424777962;
inline constexpr double PI6 = 18.849555924;

/// Lift and powers of the duration. Squares and cubes come in two widths: some laws divide by those held in 32 bits
/// (Beta_Sq, Beta_Cu), some by those of a double. Meant; they differ by 6e-8 of themselves.
struct Terms {
    explicit Terms(const Law_Segment& segment);

    double L;
    double b;
    double b2;  // 32 bits
    double b3;  // 32 bits
    double b_sq;
    double b_cu;
    double b4;
};

/// One point everywhere: a dwell, docs/theory.md, (39).
struct Standing {
    Svajp point;

    template <class X>
    Svajp_of<X> operator()(X) const
    {
        return {.S = point.S, .V = point.V, .A = point.A, .J = point.J, .P = point.P};
    }
};

/// Full harmonic (SF): half a turn of a circle, 0 to L. A jumps at both ends of a segment beside a dwell, 4.93 L / b^2.
/// docs/theory.md, (15).
struct SHM_Full {
    explicit SHM_Full(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PI * x);
        return {.S = k.S * (1 - c), .V = k.V * s, .A = k.A * c, .J = k.J * s, .P = k.P * c};
    }

    Svajp k;  // what sine and cosine are multiplied by
};

/// First half of a harmonic (S1): a standing start, full velocity pi / 2 L / b at the end. docs/theory.md, (16).
struct SHM_First {
    explicit SHM_First(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PIH * x);
        return {.S = k.S * (1 - c), .V = k.V * s, .A = k.A * c, .J = k.J * s, .P = k.P * c};
    }

    Svajp k;
};

/// Second half of a harmonic (S2): from full velocity to a standing end. docs/theory.md, (17).
struct SHM_Second {
    explicit SHM_Second(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PIH * x);
        return {.S = k.S * s, .V = k.V * c, .A = k.A * s, .J = k.J * c, .P = k.P * s};
    }

    Svajp k;
};

/// Full cycloid (CF): a whole wave of acceleration, zero at both ends. docs/theory.md, (18).
struct Cycloid_Full {
    explicit Cycloid_Full(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PI2 * x);
        return {.S = k.S * (x - (1 / PI2) * s), .V = k.V * (1 - c), .A = k.A * s, .J = k.J * c, .P = k.P * s};
    }

    Svajp k;
};

/// First half of a cycloid (C1): half a wave of acceleration, a standing start, 2 L / b at the end.
/// docs/theory.md, (19).
struct Cycloid_First {
    explicit Cycloid_First(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PI * x);
        return {.S = k.S * (x - (1 / PI) * s), .V = k.V * (1 - c), .A = k.A * s, .J = k.J * c, .P = k.P * s};
    }

    Svajp k;
};

/// Second half of a cycloid (C2): from 2 L / b to a standing end. docs/theory.md, (20).
struct Cycloid_Second {
    explicit Cycloid_Second(const Terms& t);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s, c] = Sin_Cos(PI * x);
        return {.S = k.S * (x + (1 / PI) * s), .V = k.V * (1 + c), .A = k.A * s, .J = k.J * c, .P = k.P * s};
    }

    Svajp k;
};

/// Double harmonic (DH), for a rise that meets a fall: A and J are zero at x = 0 of a rise, A is -pi^2 L / b^2 at its
/// end. The fall is the rise run backwards, with a form and a true sign of Ping of its own. docs/theory.md, (21), (22).
struct Double_Harmonic {
    Double_Harmonic(const Terms& t, bool falls);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s1, c1] = Sin_Cos(PI * x);
        const auto [s2, c2] = Sin_Cos(PI2 * x);
        if (falls)
            return {.S = k.S * ((c1 + 1) - 0.25 * (1 - c2)),
                    .V = k.V * (0.5 * s2 + s1),
                    .A = k.A * (c2 + c1),
                    .J = k.J * (2 * s2 + s1),
                    .P = k.P * (4 * c2 + c1)};
        return {.S = k.S * ((1 - c1) - 0.25 * (1 - c2)),
                .V = k.V * (s1 - 0.5 * s2),
                .A = k.A * (c1 - c2),
                .J = k.J * (s1 - 2 * s2),
                .P = k.P * (c1 - 4 * c2)};
    }

    /// Whether S is below 1E-6 of its terms: the last digits of the cosines show in it.
    template <class X>
    Mask_of<X> Cancels(const Svajp_of<X>& point) const
    {
        return Abs(point.S) < 1E-6 * Abs(X(k.S));
    }

    bool falls;
    Svajp k;
};

/// Modified sine (MS): a quarter sine of acceleration up to beta / 8, a half sine three times as long up to 7 beta / 8,
/// a quarter sine. A region includes its upper bound, which is held in 32 bits. docs/theory.md, (23) to (25).
///
/// Ping counts as 0 in the whole law: meant. Mechanics has -16 pi^2 C sin 4 pi x, 873 L / b^4 at its peak; S to J do
/// not depend on it.
struct Mod_Sine {
    Mod_Sine(const Terms& t, double beta);

    static constexpr int regions = 3;

    template <class X>
    Svajp_of<X> In_Region(int region, X x) const
    {
        if (region == 0) {
            const auto [s, c] = Sin_Cos(PI4 * x);
            return {.S = L * (0.43990085 * x - 0.0350062 * s), .V = k.V * (1 - c), .A = k.A * s, .J = k.J * c};
        }
        if (region == 1) {
            const auto [s, c] = Sin_Cos((PI4 / 3) * x - PI / 6);
            return {.S = L * (0.43990085 * x + 0.28004957 - 0.31505577 * c),
                    .V = L_b * (1.31970255 * s + 0.43990085),
                    .A = k.A * c,
                    .J = J_middle * s};
        }
        const auto [s, c] = Sin_Cos((2 * x - 1) * PI2);
        return {.S = L * (0.43990085 * x + 0.56009915 - 0.0350062 * s),
                .V = L_b * (1 - c) * 0.43990085,
                .A = k.A * s,
                .J = k.J * c};
    }

    double L;
    double L_b;  // L / b
    Svajp k;
    double J_middle;
    double end[regions - 1];  // degrees, of all regions but the last, which goes on
};

/// Modified trapezoid (MT): constant accelerations joined by quarter sines, six regions ending at 1, 3, 4, 5, 7 and 8
/// eighths of beta. A region includes its upper bound, held in 32 bits. docs/theory.md, (26), (27).
///
/// Coefficients with fewer digits than their partners (0.03095, 0.222031, 1.61102) are meant: mechanics has the same
/// number throughout, and S then jumps by 4.4e-6 L less at beta / 8. Ping counts as 0, as in the modified sine.
struct Mod_Trap {
    Mod_Trap(const Terms& t, double beta);

    static constexpr int regions = 6;

    template <class X>
    Svajp_of<X> In_Region(int region, X x) const
    {
        switch (region) {
        case 0: {
            const auto [s, c] = Sin_Cos(PI4 * x);
            return {.S = L * (0.3889845 * x - 0.03095 * s), .V = k.V * (1 - c), .A = k.A * s, .J = k.J * c};
        }
        case 1:
            return {.S = L * (2.44406184 * (x * x) - 0.22203097 * x + 0.00723407),
                    .V = L_b * (4.888124 * x - 0.222031),
                    .A = A_constant};
        case 2: {
            const auto [s, c] = Sin_Cos(PI4 * x - PI);
            return {.S = L * (1.6110154 * x - 0.0309544 * s - 0.3055077),
                    .V = L_b * (1.61102 - 0.3889845 * c),
                    .A = A_constant * s,
                    .J = k.J * c};
        }
        case 3: {
            const auto [s, c] = Sin_Cos(PI4 * x - PI2);
            return {.S = L * (1.6110154 * x + 0.0309544 * s - 0.3055077),
                    .V = L_b * (0.3889845 * c + 1.61102),
                    .A = -A_constant * s,
                    .J = -k.J * c};
        }
        case 4:
            return {.S = L * (-2.44406184 * (x * x) + 4.6660917 * x - 1.2292648),
                    .V = L_b * (-4.888124 * x + 4.6660917),
                    .A = -A_constant};
        default: {
            const auto [s, c] = Sin_Cos(PI4 * x - PI3);
            return {.S = L * (0.3889845 * x + 0.6110154 + 0.0309544 * s),
                    .V = L_b * (0.3889845 * c + 0.3889845),
                    .A = -A_constant * s,
                    .J = -k.J * c};
        }
        }
    }

    double L;
    double L_b;
    Svajp k;
    double A_constant;
    double end[regions - 1];  // degrees
};

/// A sum of powers, s = sum c(i) x^i, i below Powers, derived by the power rule; each derivative has a factor of its
/// own before it. Lanes and doubles have the same bits.
template <int Powers>
struct Power_Series {
    /// From the coefficients c(0..count - 1).
    Power_Series(const Svajp& factors, const double* c, int count) : k(factors), last(count - 1)
    {
        for (int d = 0; d < 5; ++d)
            for (int i = 0; i + d < count; ++i) {
                double product = c[i + d];
                for (int j = 0; j < d; ++j)
                    product *= i + d - j;
                factor[d][i] = product;
            }
    }

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        Svajp_of<X> sum;
        for (int i = last; i >= 0; --i) {
            sum.S = sum.S * x + factor[0][i];
            sum.V = sum.V * x + factor[1][i];
            sum.A = sum.A * x + factor[2][i];
            sum.J = sum.J * x + factor[3][i];
            sum.P = sum.P * x + factor[4][i];
        }
        return {.S = k.S * sum.S, .V = k.V * sum.V, .A = k.A * sum.A, .J = k.J * sum.J, .P = k.P * sum.P};
    }

    Svajp k;
    int last;                    // power
    double factor[5][Powers]{};  // (derivations, power that it stands before)
};

/// Polynomial with fixed coefficients.
///
/// 345 and 4567 rest at both ends, V and A, or V, A and J: docs/theory.md, (28), (29). 3456 rises and returns in one
/// segment, L is the height at its middle, so the end position typed for the segment is not reached: (30). 5-11 has V,
/// A, J and Ping zero at both ends: (31). Berzak D and E, Berzak and Freudenstein, Optimization Criteria in Polydyne
/// Cam Design, 1979: (32), (33); E ends with 0.02 L / b of V and 0.16 L / b^2 of A, for its coefficients have two
/// decimals.
using Fixed_Polynomial = Power_Series<12>;

/// Polynomial through the conditions of a segment.
using Solved_Polynomial = Power_Series<40>;

/// A harmonic series of the first and the third harmonic: V and A are zero at both ends. docs/theory.md, (34).
///
/// FR: Freudenstein, On the Dynamics of High-Speed Cam Profiles, 1960. GU: Gutman, To Avoid Vibration, Try This New Cam
/// Profile, Product Engineering, 1961.
struct Harmonic_Series {
    double first;  // weight of the first harmonic in every derivative
    Svajp third;   // of the third

    struct Curve;
};
struct Harmonic_Series::Curve {
    Curve(const Terms& t, const Harmonic_Series& weights);

    template <class X>
    Svajp_of<X> operator()(X x) const
    {
        const auto [s1, c1] = Sin_Cos(PI2 * x);
        const auto [s3, c3] = Sin_Cos(PI6 * x);
        const double k1 = weight.first;
        const Svajp& k3 = weight.third;
        return {.S = k.S * (x - (1 / PI2) * (k3.S * s3 + k1 * s1)),
                .V = k.V * (1 - k1 * c1 - k3.V * c3),
                .A = k.A * (k3.A * s3 + k1 * s1),
                .J = k.J * (k3.J * c3 + k1 * c1),
                .P = k.P * (-k1 * s1 - k3.P * s3)};
    }

    Harmonic_Series weight;
    Svajp k;
};

/// A polydyne series of the place y, counted from full lift: g(y) = 1 + C2 y^2 + sum C(i) y^n(i), docs/theory.md, (35).
/// A rise has y = 1 - x and turns the sign of odd derivatives, a fall y = x; Ping has its true sign in both.
///
/// DU, Dudley, New Methods in Valve Cam Design, SAE, 1948: (36), coefficients in 32 bits. It sets Ping and not the jerk
/// to zero at the foot of the ramp, meant: 105 L / b^3 of jerk stay there, where mechanics could have none.
///
/// ST and TH, Stoddart, Polydyne Cam Design, Machine Design, 1953; Thoren, Engemann and Stoddart, Cam Design as Related
/// to Valve Train Dynamics, SAE, 1952: (37), (38). The lift is added to S and raised to a power in A, J and Ping:
/// meant. Mechanics has S = L g and (L / b^k) G_k; the rows belong together as derivatives at a lift of 1 only, any
/// other lift runs between L - 1 and L, and of 30 mm A is 30 times and J 900 times too large.
struct Polydyne {
    static constexpr int most_terms = 4;

    struct Term {
        double n;          // power
        double factor[5];  // of y^(n - d) after d derivations
    };

    /// y^(n - d) of each term after d derivations.
    template <class X>
    struct Powers {
        X of[most_terms][5];
    };

    template <class X>
    X Place(X x) const
    {
        return rises ? 1 - x : x;
    }

    /// A sum of high powers, and of their sizes: what it has lost when they cancel.
    template <class X>
    struct Sum {
        X value = 0.0;
        X size = 0.0;
    };
    template <class X>
    Sum<X> High_Sum(int derivations, const Powers<X>& powers) const
    {
        Sum<X> sum;
        for (int i = 0; i < count; ++i) {
            const X high = term[i].factor[derivations] * powers.of[i][derivations];
            sum.value = sum.value + high;
            sum.size = sum.size + Abs(high);
        }
        return sum;
    }

    template <class X>
    struct Answer {
        Svajp_of<X> point;
        Mask_of<X> cancels;  // some sum is below 1E-5 of its terms: the last digits of the powers show in the point
    };
    template <class X>
    Answer<X> operator()(X y, const Powers<X>& powers) const
    {
        const Sum<X> high[5]{High_Sum(0, powers), High_Sum(1, powers), High_Sum(2, powers), High_Sum(3, powers),
                             High_Sum(4, powers)};
        const X g = C2 * y * y + high[0].value;
        const X G1 = 2 * C2 * y + high[1].value;
        const X G2 = 2 * C2 + high[2].value;
        const X s = lift_is_added ? L + g : 1 + g;
        const auto cancels = [](X sum, X size) { return Abs(sum) < 1E-5 * size; };
        return {{.S = lift_is_added ? s : L * s,
                 .V = k.V * G1,
                 .A = k.A * G2,
                 .J = k.J * high[3].value,
                 .P = k.P * high[4].value},
                cancels(s, X(1.0)) || cancels(G1, high[1].size) || cancels(G2, high[2].size) ||
                    cancels(high[3].value, high[3].size) || cancels(high[4].value, high[4].size)};
    }

    bool rises;
    bool lift_is_added;
    double L;
    Svajp k;
    double C2;
    int count;
    Term term[most_terms];
};

}  // namespace law_forms

/// How a point of a segment becomes one of the table. Each value is rounded to 32 bits where the working point holds
/// it.
struct Table_Units {
    int Time_Base;
    double Shaft_speed;
    double Shaft_Speed_Sq;
    double Shaft_Speed_Cu;

    /// V to Ping in the units of the time base; per radian in any that is none. docs/theory.md, (40) to (42).
    template <class X>
    Svajp_of<X> operator()(const Svajp_of<X>& w) const
    {
        switch (Time_Base) {
        case 1:  // per second; jerk and ping are kept in thousands
            return {.S = w.S,
                    .V = Shaft_speed * w.V,
                    .A = Shaft_Speed_Sq * w.A,
                    .J = Shaft_Speed_Cu * w.J / 1000.0,
                    .P = w.P * Shaft_Speed_Cu * Shaft_speed / 1000.0};
        case 2:  // per degree: one factor whatever the order, meant
            return {
                .S = w.S, .V = w.V * PI / 180.0, .A = w.A * PI / 180.0, .J = w.J * PI / 180.0, .P = w.P * PI / 180.0};
        default:
            return w;
        }
    }
};

/// Where a segment stands in the cycle, and how its curve is stored: constants of a segment.
struct Segment_Place {
    double step;   // degrees
    double beta;   // degrees
    double shift;  // degrees
    double base;   // position that S is added to
    double lift;   // what a mirrored fall hangs from
    bool mirrored;
    Table_Units units;

    /// The working point of a point of the curve: rounded, and mirrored in a fall, docs/theory.md, (14). Ping is left
    /// alone there, and meant; see Fall_Mirror.
    template <class X>
    Svajp_of<X> Working(const Svajp_of<X>& p) const
    {
        const Svajp_of<X> w{
            .S = Rounded(p.S), .V = Rounded(p.V), .A = Rounded(p.A), .J = Rounded(p.J), .P = Rounded(p.P)};
        if (!mirrored)
            return w;
        return {.S = Rounded(lift - w.S), .V = -w.V, .A = -w.A, .J = -w.J, .P = w.P};
    }
};

}  // namespace lobemax
