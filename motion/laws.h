// SPDX-License-Identifier: GPL-3.0-or-later
/// The closed-form laws of motion, as formulas that can be asked at any place of their segment.
///
/// A law knows the lift L (unit of position: length, or degrees of an arm) and the duration of its segment, b in
/// radians. It is a curve s(x) over the place x = theta / beta, 0..1, with S = L s and the n-th derivative
/// (L / b^n) d^n s / dx^n, per radian^n: docs/theory.md, (13). It knows neither the time base nor the shaft speed nor
/// where its segment stands in the cycle. Constants are taken out once, when the law is laid over its segment; asking
/// it allocates nothing and touches nothing. Outside 0..1 the formulas go on.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <variant>

#include "core/basic_types.h"

namespace lobemax {

/// A point of a curve of motion: S, and its derivatives per radian of cam.
struct Svajp {
    double S = 0.0;
    double V = 0.0;
    double A = 0.0;
    double J = 0.0;
    double P = 0.0;
};

/// What a law needs to know of its segment: plain values.
struct Law_Segment {
    double L = 0.0;         // lift; of a dwell: its position
    double beta = 0.0;      // degrees
    double b = 0.0;         // the same in radians, as it is stored
    std::string_view kind;  // "R" rise, "F" fall; any other is neither
    Svajp working_point;    // what a law with two forms holds in a segment that is neither
};

namespace law_forms {

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

    Svajp operator()(double, double) const { return point; }
};

/// Full harmonic (SF): half a turn of a circle, 0 to L. A jumps at both ends of a segment beside a dwell, 4.93 L / b^2.
/// docs/theory.md, (15).
struct SHM_Full {
    explicit SHM_Full(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;  // what sine and cosine are multiplied by
};

/// First half of a harmonic (S1): a standing start, full velocity pi / 2 L / b at the end. docs/theory.md, (16).
struct SHM_First {
    explicit SHM_First(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;
};

/// Second half of a harmonic (S2): from full velocity to a standing end. docs/theory.md, (17).
struct SHM_Second {
    explicit SHM_Second(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;
};

/// Full cycloid (CF): a whole wave of acceleration, zero at both ends. docs/theory.md, (18).
struct Cycloid_Full {
    explicit Cycloid_Full(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;
};

/// First half of a cycloid (C1): half a wave of acceleration, a standing start, 2 L / b at the end.
/// docs/theory.md, (19).
struct Cycloid_First {
    explicit Cycloid_First(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;
};

/// Second half of a cycloid (C2): from 2 L / b to a standing end. docs/theory.md, (20).
struct Cycloid_Second {
    explicit Cycloid_Second(const Terms& t);
    Svajp operator()(double x, double theta) const;

    Svajp k;
};

/// Double harmonic (DH), for a rise that meets a fall: A and J are zero at x = 0 of a rise, A is -pi^2 L / b^2 at its
/// end. The fall is the rise run backwards, with a form and a true sign of Ping of its own. docs/theory.md, (21), (22).
struct Double_Harmonic {
    Double_Harmonic(const Terms& t, bool falls);
    Svajp operator()(double x, double theta) const;

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
    Svajp operator()(double x, double theta) const;

    double L;
    double L_b;  // L / b
    Svajp k;
    double J_middle;
    double end_1;  // degrees
    double end_2;
};

/// Modified trapezoid (MT): constant accelerations joined by quarter sines, six regions ending at 1, 3, 4, 5, 7 and 8
/// eighths of beta. A region includes its upper bound, held in 32 bits. docs/theory.md, (26), (27).
///
/// Coefficients with fewer digits than their partners (0.03095, 0.222031, 1.61102) are meant: mechanics has the same
/// number throughout, and S then jumps by 4.4e-6 L less at beta / 8. Ping counts as 0, as in the modified sine.
struct Mod_Trap {
    Mod_Trap(const Terms& t, double beta);
    Svajp operator()(double x, double theta) const;

    double L;
    double L_b;
    Svajp k;
    double A_constant;
    std::array<double, 5> end;  // degrees
};

/// Polynomial with fixed coefficients, s = sum c(k) x^k, k = 0..11, derived by the power rule.
///
/// 345 and 4567 rest at both ends, V and A, or V, A and J: docs/theory.md, (28), (29). 3456 rises and returns in one
/// segment, L is the height at its middle, so the end position typed for the segment is not reached: (30). 5-11 has V,
/// A, J and Ping zero at both ends: (31). Berzak D and E, Berzak and Freudenstein, Optimization Criteria in Polydyne
/// Cam Design, 1979: (32), (33); E ends with 0.02 L / b of V and 0.16 L / b^2 of A, for its coefficients have two
/// decimals.
struct Fixed_Polynomial {
    using Coefficients = std::array<double, 12>;

    Fixed_Polynomial(const Terms& t, const Coefficients& c);
    Svajp operator()(double x, double theta) const;
    double Sum(std::size_t derivations, double x) const;

    Svajp k;
    std::array<Coefficients, 5> factor;  // (derivations, power before them)
};

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
    Svajp operator()(double x, double theta) const;

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
    struct Term {
        double n;                      // power
        std::array<double, 5> factor;  // of y^(n - d) after d derivations
    };

    Svajp operator()(double x, double theta) const;
    double High_Sum(std::size_t derivations, double y) const;

    bool rises;
    bool lift_is_added;
    double L;
    Svajp k;
    double C2;
    std::size_t count;
    std::array<Term, 4> term;
};

/// The first power of DU, and the four high powers of ST and TH.
inline constexpr double dudley_power = 10;
inline constexpr std::array<double, 4> stoddard_powers{10, 20, 30, 40};
inline constexpr std::array<double, 4> thoren_powers{14, 26, 38, 50};

/// Dudley's series 2-p-q-r with q = p + 2, r = p + 4 over a rise or fall; p is at least 4.
Polydyne Dudley_Series(const Terms& t, bool rises, Single p);

/// The series 2-p-q-r-s of Stoddard and Thoren over a rise or fall.
Polydyne Thoren_Series(const Terms& t, bool rises, Single p, Single q, Single r, Single s);

}  // namespace law_forms

/// A law laid over a segment.
class Segment_Law {
public:
    /// The law of a selector (Seg_Program) and, of the harmonic and cycloid families, its full form or half (Full_Half,
    /// Which_half). Polynomial and spline segments, other selectors and other values of the halves have no law.
    ///
    /// A beta of zero has no formula: any place in it is an error 6.
    /// @throws Fault{6} when a square or cube of the duration is no Single
    Segment_Law(int Seg_Program, int Full_Half, int Which_half, const Law_Segment& segment);

    /// The polydyne laws with powers of the caller's.
    static Segment_Law Dudley(const Law_Segment& segment, Single p);
    static Segment_Law Thoren(const Law_Segment& segment, Single p, Single q, Single r, Single s);

    /// Holds the segment at one position. docs/theory.md, (39).
    static Segment_Law Dwell(double position);

    bool Has_Points() const { return !std::holds_alternative<std::monostate>(form_); }

    /// The law at place x = theta / beta; theta, degrees, chooses the region of MS and MT.
    /// @throws Fault{5} of a selector without a law
    Svajp At(double x, double theta) const;

    /// A place in the segment: x = theta / beta as its asker holds it, and theta, degrees.
    struct Place {
        double x;
        double theta;
    };

    /// A run of places before the mirror of a fall, for whoever rounds in between: points as many as places.
    /// @throws Fault{5} of a selector without a law
    void Before_Mirror(std::span<const Place> places, std::span<Svajp> points) const;

    /// Whether the law is given for the rise, and this is its fall: the curve upside down, docs/theory.md, (14).
    ///
    /// The mirror leaves the sign of Ping alone: meant. Mechanics has -P; row 17 of such falls has the rise's sign.
    bool Mirrored() const { return mirrored_; }

private:
    Segment_Law() = default;
    template <class Series>
    static Segment_Law Two_Forms(const Law_Segment& segment, Series&& series);
    static Segment_Law Laid(int Seg_Program, int Full_Half, int Which_half, const Law_Segment& segment);

    std::variant<std::monostate, law_forms::Standing, law_forms::SHM_Full, law_forms::SHM_First, law_forms::SHM_Second,
                 law_forms::Cycloid_Full, law_forms::Cycloid_First, law_forms::Cycloid_Second,
                 law_forms::Double_Harmonic, law_forms::Mod_Sine, law_forms::Mod_Trap, law_forms::Fixed_Polynomial,
                 law_forms::Harmonic_Series::Curve, law_forms::Polydyne>
        form_;
    bool mirrored_ = false;
    double L_ = 0.0;
};

}  // namespace lobemax
