// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/motion_programs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/text.h"
#include "core/traps.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

// More circle constants of the laws, literals as the others are.
constexpr double PI3 = 9.424777962;
constexpr double PI6 = 18.849555924;
constexpr double PISQ = 9.869604403666765;
constexpr double PI2SQ = 39.47841761466706;
constexpr double HALF_PISQ = 4.934802201833382;
constexpr double HALF_PICUBE = 15.50313834622278;

// Powers that the laws form of the plain literals. They differ from the literals above in the last digits only.
constexpr double PI_pow2 = PI * PI;
constexpr double PI_pow3 = PI_pow2 * PI;
constexpr double PI_pow4 = PI_pow3 * PI;
constexpr double PI2_pow2 = PI2 * PI2;
constexpr double PI2_pow3 = PI2_pow2 * PI2;
constexpr double PISQ_pow2 = PISQ * PISQ;

/// The values of Seg_Program.
enum Law_Selector : int {
    shm = 1,
    cycloid = 2,
    mod_sine = 3,
    mod_trap = 4,
    double_harmonic = 5,
    polynomial = 6,
    dwell = 7,
    poly_345 = 8,
    poly_3456 = 9,
    poly_4567 = 10,
    spline = 11,
    poly_11 = 12,
    berzak_d = 13,
    berzak_e = 14,
    dudley = 15,
    stoddard = 16,
    thoren = 17,
    freudenstein = 18,
    gutman = 19,
};

constexpr std::array<Motion_Program, 23> programs{{
    {0, "MS", "MS - Mod Sine", "MS - Mod Sine", mod_sine, 1, 0, "RF"},
    {1, "MT", "MT - Mod Trap", "MT - Mod Trap", mod_trap, 1, 0, "RF"},
    {2, "CF", "CF - Cycloid Full", "CF - Cycloid Full", cycloid, 1, 0, "RF"},
    // The blank at the end of this list entry is meant; what is stored goes without it.
    {3, "C1", "C1 - Cycloid 1st Half ", "C1 - Cycloid 1st Half", cycloid, 2, 1, "RF"},
    {4, "C2", "C2 - Cycloid 2nd Half", "C2 - Cycloid 2nd Half", cycloid, 2, 2, "RF"},
    {5, "SF", "SF - SHM Full", "SF - SHM Full", shm, 1, 0, "RF"},
    {6, "S1", "S1 - SHM 1st Half", "S1 - SHM 1st Half", shm, 2, 1, "RF"},
    {7, "S2", "S2 - SHM 2nd Half", "S2 - SHM 2nd Half", shm, 2, 2, "RF"},
    {8, "DH", "DH - Double Harmonic", "DH - Double Harmonic", double_harmonic, 1, 0, "RF"},
    {9, "PO", "PO - Polynomial", "PO - Polynomial", polynomial, 1, 0, "P"},
    {10, "DW", "DW - Dwell", "DW - Dwell", dwell, 1, 0, "D"},
    {11, "45", "45 - 345 Poly", "45 - 345 Poly", poly_345, 1, 0, "RF"},
    {12, "56", "56 - 3456 Poly", "56 - 3456 Poly", poly_3456, 1, 0, "RF"},
    {13, "67", "67 - 4567 Poly", "67 - 4567 Poly", poly_4567, 1, 0, "RF"},
    {14, "BS", "BS - B-Spline", "BS - B-Spline", spline, 1, 0, "S"},
    {15, "11", "11 - 5-11 Poly", "11 - 5-11 Poly", poly_11, 1, 0, "RF"},
    {16, "BD", "BD - Berzak_D", "BD - Berzak_D", berzak_d, 1, 0, "RF"},
    {17, "BE", "BE - Berzak_E", "BE - Berzak_E", berzak_e, 1, 0, "RF"},
    {18, "DU", "DU - Dudley", "DU - Dudley", dudley, 1, 0, "RF"},
    {19, "ST", "ST - Stoddard", "ST - Stoddard", stoddard, 1, 0, "RF"},
    {20, "TH", "TH - Thoren", "TH - Thoren", thoren, 1, 0, "RF"},
    {21, "FR", "FR - Freudenstein 1-3", "FR - Freudenstein 1-3", freudenstein, 1, 0, "RF"},
    {22, "GU", "GU - Gutman F3", "GU - Gutman F3", gutman, 1, 0, "RF"},
}};

/// A segment of the table; error 9 otherwise, before anything is changed.
void Check_Segment(int Seg)
{
    Checked_Place(Seg, 1, Max_Segments);
}

void Set_Program(Design_State& design, int Seg, const Motion_Program& program)
{
    Motion_Group& m = design.motion;
    m.Program(Seg) = program.code;
    m.Function(Seg) = program.stored_text;
    m.Seg_Program(Seg) = program.Seg_Program;
    m.Full_Half(Seg) = program.Full_Half;
    if (program.Which_half != 0)
        m.Which_half(Seg) = program.Which_half;
}

/// What the formulas of a law read of the segment at work.
struct Segment_Terms {
    double L;   // lift
    double b;   // beta, radians
    double b2;  // its square and cube as stored in 32 bits
    double b3;
    double b_sq;  // its square, cube and fourth power as formed on the spot
    double b_cu;
    double b4;
};

/// A point of a law: S, and its derivatives per radian.
struct Svajp {
    double S;
    double V;
    double A;
    double J;
    double P;
};

/// Makes the point the working point, each value rounded to 32 bits.
void Set_Working_Point(Design_State& design, const Svajp& point)
{
    Motion_Group& m = design.motion;
    m.Seg_S = point.S;
    m.Seg_V = point.V;
    m.Seg_A = point.A;
    m.Seg_J = point.J;
    m.Seg_P = point.P;
}

/// Turns the working point of a rise into that of the fall: the same curve upside down.
void Fall_Mirror(Design_State& design)
{
    Motion_Group& m = design.motion;
    m.Seg_S = m.Lift - m.Seg_S;
    m.Seg_V = -m.Seg_V;
    m.Seg_A = -m.Seg_A;
    m.Seg_J = -m.Seg_J;
    // Seg_P is left alone, and meant: a mirrored fall keeps the rise's sign of Ping.
}

/// The point loop of every law: both ends of the segment included, as far as the step meets them.
///
/// set_point(terms, x, theta) sets the working point at local angle theta, degrees; x = theta / beta.
template <class Set_Point>
void For_Each_Point(Design_State& design, Set_Point&& set_point)
{
    Load_Beta(design);
    Motion_Group& m = design.motion;
    const Single beta = m.Beta_Deg(m.Seg);
    const double b = m.Beta_Rad(m.Seg);
    const Segment_Terms terms{.L = m.Lift,
                              .b = b,
                              .b2 = m.Beta_Sq,
                              .b3 = m.Beta_Cu,
                              .b_sq = Power(b, 2),
                              .b_cu = Power(b, 3),
                              .b4 = Power(b, 4)};
    for (Single theta; theta <= beta; theta += m.Deltatheta) {
        const Single x = theta / beta;  // a beta of zero ends here: 0 / 0 is no Single
        set_point(terms, double{x}, theta);
        Store_Point(design, theta);
    }
}

/// A law given for the rise; the fall is its mirror.
template <class Law>
void Mirrored_Law(Design_State& design, Law&& law)
{
    const bool fall = design.motion.Rise_Fall_Dwell(design.motion.Seg) == "F";
    For_Each_Point(design, [&](const Segment_Terms& s, double x, Single theta) {
        Set_Working_Point(design, law(s, x, theta));
        if (fall)
            Fall_Mirror(design);
    });
}

/// A law with a form of its own for each direction. A segment of another kind keeps the working point
/// that it found, and stores it all the same: meant.
template <class Rise, class Fall>
void Two_Form_Law(Design_State& design, Rise&& rise, Fall&& fall)
{
    const std::string& kind = design.motion.Rise_Fall_Dwell(design.motion.Seg);
    const bool rises = kind == "R";
    const bool falls = kind == "F";
    For_Each_Point(design, [&](const Segment_Terms& s, double x, Single) {
        if (rises)
            Set_Working_Point(design, rise(s, x));
        else if (falls)
            Set_Working_Point(design, fall(s, x));
    });
}

// ---- Simple harmonic family. Source: Norton, Cam Design and Manufacturing Handbook; Rothbart, Cams.

void SHM_Full(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        return {.S = 0.5 * s.L * (1 - std::cos(PI * x)),
                .V = (0.5 * s.L * PI / s.b) * std::sin(PI * x),
                .A = (PI_pow2 * (0.5 * s.L) / s.b_sq) * std::cos(PI * x),
                .J = -(PI_pow3 * (0.5 * s.L) / s.b_cu) * std::sin(PI * x),
                .P = -(PI_pow4 * (0.5 * s.L) / s.b4) * std::cos(PI * x)};
    });
}

void SHM_First(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        const double u = PIH * x;
        return {.S = s.L * (1 - std::cos(u)),
                .V = (0.5 * s.L * PI / s.b) * std::sin(u),
                .A = (PI_pow2 * (0.25 * s.L) / s.b_sq) * std::cos(u),
                .J = (PI_pow3 * (-0.125 * s.L) / s.b_cu) * std::sin(u),
                .P = (PI_pow4 * (-0.0625 * s.L) / s.b4) * std::cos(u)};
    });
}

void SHM_Second(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        const double u = PIH * x;
        return {.S = s.L * std::sin(u),
                .V = (0.5 * s.L * PI / s.b) * std::cos(u),
                .A = (PI_pow2 * (-0.25 * s.L) / s.b_sq) * std::sin(u),
                .J = (PI_pow3 * (-0.125 * s.L) / s.b_cu) * std::cos(u),
                .P = (PI_pow4 * (0.0625 * s.L) / s.b4) * std::sin(u)};
    });
}

// ---- Cycloid family: a sinusoidal acceleration. Source: Norton, Cam Design and Manufacturing Handbook.

void Cycloid_Full(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        return {.S = s.L * (x - (1 / PI2) * std::sin(PI2 * x)),
                .V = (s.L / s.b) * (1 - std::cos(PI2 * x)),
                .A = (s.L * PI2 / s.b2) * std::sin(PI2 * x),
                .J = (s.L * PI2SQ / s.b3) * std::cos(PI2 * x),
                .P = (-PI2_pow3 * s.L / s.b4) * std::sin(PI2 * x)};
    });
}

void Cycloid_First(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        return {.S = s.L * (x - (1 / PI) * std::sin(PI * x)),
                .V = (s.L / s.b) * (1 - std::cos(PI * x)),
                .A = (s.L * PI / s.b2) * std::sin(PI * x),
                .J = (s.L * PISQ / s.b3) * std::cos(PI * x),
                .P = (-PI_pow3 * s.L / s.b4) * std::sin(PI * x)};
    });
}

void Cycloid_Second(Design_State& design)
{
    Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
        return {.S = s.L * (x + (1 / PI) * std::sin(PI * x)),
                .V = (s.L / s.b) * (1 + std::cos(PI * x)),
                .A = (-s.L * PI / s.b2) * std::sin(PI * x),
                .J = (-s.L * PISQ / s.b3) * std::cos(PI * x),
                .P = (PI_pow3 * s.L / s.b4) * std::sin(PI * x)};
    });
}

// ---- Double harmonic: a harmonic and its second harmonic. Source: Rothbart, Cams.

void Double_Harmonic(Design_State& design)
{
    const auto rise = [](const Segment_Terms& s, double x) -> Svajp {
        const double c1 = std::cos(PI * x), c2 = std::cos(PI2 * x);
        const double s1 = std::sin(PI * x), s2 = std::sin(PI2 * x);
        return {.S = (s.L / 2) * ((1 - c1) - 0.25 * (1 - c2)),
                .V = (s.L / s.b) * PI * 0.5 * (s1 - 0.5 * s2),
                .A = (s.L * HALF_PISQ / s.b2) * (c1 - c2),
                .J = (s.L * (-HALF_PICUBE) / s.b3) * (s1 - 2 * s2),
                .P = (-0.5 * PISQ_pow2 * s.L / s.b4) * (c1 - 4 * c2)};
    };
    const auto fall = [](const Segment_Terms& s, double x) -> Svajp {
        const double c1 = std::cos(PI * x), c2 = std::cos(PI2 * x);
        const double s1 = std::sin(PI * x), s2 = std::sin(PI2 * x);
        return {.S = (s.L / 2) * ((c1 + 1) - 0.25 * (1 - c2)),
                .V = (-(s.L / s.b) * PI * 0.5) * (0.5 * s2 + s1),
                .A = (s.L * (-HALF_PISQ) / s.b2) * (c2 + c1),
                .J = (s.L * HALF_PICUBE / s.b3) * (2 * s2 + s1),
                .P = (0.5 * PISQ_pow2 * s.L / s.b4) * (4 * c2 + c1)};
    };
    Two_Form_Law(design, rise, fall);
}

// ---- Modified sine: a quarter sine at each end, one longer half sine between them.
// Source: Norton, Cam Design and Manufacturing Handbook.

void Mod_Sine(Design_State& design)
{
    const Single beta = design.motion.Beta_Deg(design.motion.Seg);
    const Single end_1 = beta / 8;
    const Single end_2 = 7 * beta / 8;
    // Ping counts as 0 in the whole law: meant. A region includes its upper bound.
    Mirrored_Law(design, [&](const Segment_Terms& s, double x, Single theta) -> Svajp {
        if (theta <= end_1) {
            const double u = PI4 * x;
            return {.S = s.L * (0.43990085 * x - 0.0350062 * std::sin(u)),
                    .V = (s.L * 0.43990085 / s.b) * (1 - std::cos(u)),
                    .A = (s.L * 5.5279571 / s.b2) * std::sin(u),
                    .J = (s.L * 69.4663577 / s.b3) * std::cos(u),
                    .P = 0};
        }
        if (theta <= end_2) {
            const double u = (PI4 / 3) * x - PI / 6;
            return {.S = s.L * (0.43990085 * x + 0.28004957 - 0.31505577 * std::cos(u)),
                    .V = (s.L / s.b) * (1.31970255 * std::sin(u) + 0.43990085),
                    .A = (s.L * 5.5279571 / s.b2) * std::cos(u),
                    .J = (s.L * (-23.1553) / s.b3) * std::sin(u),
                    .P = 0};
        }
        const double u = (2 * x - 1) * PI2;
        return {.S = s.L * (0.43990085 * x + 0.56009915 - 0.0350062 * std::sin(u)),
                .V = (s.L / s.b) * (1 - std::cos(u)) * 0.43990085,
                .A = (s.L * 5.5279571 / s.b2) * std::sin(u),
                .J = (s.L * 69.4663577 / s.b3) * std::cos(u),
                .P = 0};
    });
}

// ---- Modified trapezoid: constant accelerations joined by quarter sines.
// Source: Norton, Cam Design and Manufacturing Handbook.

void Mod_Trap(Design_State& design)
{
    const Single beta = design.motion.Beta_Deg(design.motion.Seg);
    const Single end_1 = beta / 8;
    const Single end_2 = 3 * beta / 8;
    const Single end_3 = beta / 2;
    const Single end_4 = 5 * beta / 8;
    const Single end_5 = 7 * beta / 8;
    // Ping counts as 0 in the whole law: meant. A region includes its upper bound. Coefficients with fewer
    // digits than their partners (0.03095, 0.222031, 1.61102) are meant: their curves stand as they are.
    Mirrored_Law(design, [&](const Segment_Terms& s, double x, Single theta) -> Svajp {
        if (theta <= end_1) {
            const double u = PI4 * x;
            return {.S = s.L * (0.3889845 * x - 0.03095 * std::sin(u)),
                    .V = (s.L * 0.3889845 / s.b) * (1 - std::cos(u)),
                    .A = (s.L * 4.888124 / s.b2) * std::sin(u),
                    .J = (s.L * 61.425769 / s.b3) * std::cos(u),
                    .P = 0};
        }
        if (theta <= end_2)
            return {.S = s.L * (2.44406184 * (x * x) - 0.22203097 * x + 0.00723407),
                    .V = (s.L / s.b) * (4.888124 * x - 0.222031),
                    .A = (s.L / s.b2) * 4.888124,
                    .J = 0,
                    .P = 0};
        if (theta <= end_3) {
            const double u = PI4 * x - PI;
            return {.S = s.L * (1.6110154 * x - 0.0309544 * std::sin(u) - 0.3055077),
                    .V = (s.L / s.b) * (1.61102 - 0.3889845 * std::cos(u)),
                    .A = (s.L / s.b2) * 4.888124 * std::sin(u),
                    .J = (s.L * 61.425769 / s.b3) * std::cos(u),
                    .P = 0};
        }
        if (theta <= end_4) {
            const double u = PI4 * x - PI2;
            return {.S = s.L * (1.6110154 * x + 0.0309544 * std::sin(u) - 0.3055077),
                    .V = (s.L / s.b) * (0.3889845 * std::cos(u) + 1.61102),
                    .A = (s.L / s.b2) * (-4.888124) * std::sin(u),
                    .J = (s.L * (-61.425769) / s.b3) * std::cos(u),
                    .P = 0};
        }
        if (theta <= end_5)
            return {.S = s.L * (-2.44406184 * (x * x) + 4.6660917 * x - 1.2292648),
                    .V = (s.L / s.b) * (-4.888124 * x + 4.6660917),
                    .A = -(s.L / s.b2) * 4.888124,
                    .J = 0,
                    .P = 0};
        const double u = PI4 * x - PI3;
        return {.S = s.L * (0.3889845 * x + 0.6110154 + 0.0309544 * std::sin(u)),
                .V = (s.L / s.b) * (0.3889845 * std::cos(u) + 0.3889845),
                .A = -(s.L / s.b2) * 4.888124 * std::sin(u),
                .J = (s.L * (-61.425769) / s.b3) * std::cos(u),
                .P = 0};
    });
}

// ---- Polynomials with fixed coefficients, S = L sum(c(k) x^k), k = 0..11.

using Coefficients = std::array<double, 12>;

/// The sum of a polynomial's terms at x after a number of derivations by the power rule.
double Term_Sum(const Coefficients& c, int derivations, double x)
{
    double sum = 0;
    for (int k = static_cast<int>(c.size()) - 1; k >= derivations; --k) {
        double factor = c[static_cast<std::size_t>(k)];
        for (int d = 0; d < derivations; ++d)
            factor *= k - d;
        sum = sum * x + factor;
    }
    return sum;
}

void Fixed_Polynomial(Design_State& design, const Coefficients& c)
{
    Mirrored_Law(design, [&](const Segment_Terms& s, double x, Single) -> Svajp {
        return {.S = s.L * Term_Sum(c, 0, x),
                .V = (s.L / s.b) * Term_Sum(c, 1, x),
                .A = (s.L / s.b_sq) * Term_Sum(c, 2, x),
                .J = (s.L / s.b_cu) * Term_Sum(c, 3, x),
                .P = (s.L / s.b4) * Term_Sum(c, 4, x)};
    });
}

/// A law's bare number takes the place of the list text, once all its points stand: meant.
void Replace_Function(Design_State& design, std::string_view text)
{
    design.motion.Function(design.motion.Seg) = text;
}

// V and A are zero at both ends. Source: Norton, Cam Design and Manufacturing Handbook.
bool Poly_345(Design_State& design)
{
    return Trap("Poly_345", [&] {
        Fixed_Polynomial(design, {0, 0, 0, 10, -15, 6});
        Replace_Function(design, "5");
    });
}

// Rise and return in one segment; the lift is the height at its middle. Source: as above.
bool Poly_3456(Design_State& design)
{
    return Trap("Poly_3456", [&] { Fixed_Polynomial(design, {0, 0, 0, 64, -192, 192, -64}); });
}

// V, A and J are zero at both ends. Source: as above.
bool Poly_4567(Design_State& design)
{
    return Trap("Poly_4567", [&] {
        Fixed_Polynomial(design, {0, 0, 0, 0, 35, -84, 70, -20});
        Replace_Function(design, "7");
    });
}

// V, A, J and Ping are zero at both ends.
bool Poly_11(Design_State& design)
{
    return Trap("Poly_11", [&] {
        Fixed_Polynomial(design, {0, 0, 0, 0, 0, 336, -1890, 4740, -6615, 5320, -2310, 420});
        Replace_Function(design, "11");
    });
}

// Source: Berzak and Freudenstein, Optimization Criteria in Polydyne Cam Design, 1979.
bool Berzak_D(Design_State& design)
{
    return Trap("Berzak_D", [&] { Fixed_Polynomial(design, {0, 0, 0, 12.1, -25.5, 24.9, -14.7, 4.2}); });
}

bool Berzak_E(Design_State& design)
{
    return Trap("Berzak_E", [&] { Fixed_Polynomial(design, {0, 0, 0, 5.35, 8.2, -35.74, 32.46, -9.27}); });
}

// ---- Harmonic series of the first and third harmonic.

// Source: Freudenstein, On the Dynamics of High-Speed Cam Profiles, 1960.
bool Freudenstein_1_3(Design_State& design)
{
    return Trap("Freudenstein 1-3", [&] {
        Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
            const double c1 = std::cos(PI2 * x), c3 = std::cos(PI6 * x);
            const double s1 = std::sin(PI2 * x), s3 = std::sin(PI6 * x);
            return {.S = s.L * (x - (1 / PI2) * ((1.0 / 84) * s3 + (27.0 / 28) * s1)),
                    .V = (s.L / s.b) * (1 - (27.0 / 28) * c1 - (1.0 / 28) * c3),
                    .A = (s.L / s.b_sq) * PI2 * ((3.0 / 28) * s3 + (27.0 / 28) * s1),
                    .J = (s.L / s.b_cu) * PI2_pow2 * ((9.0 / 28) * c3 + (27.0 / 28) * c1),
                    .P = (s.L / s.b4) * PI2_pow3 * ((-27.0 / 28) * s1 - (27.0 / 28) * s3)};
        });
    });
}

// Source: Gutman, To Avoid Vibration, Try This New Cam Profile, Product Engineering, 1961.
bool GutmanF3(Design_State& design)
{
    return Trap("GutmanF3", [&] {
        Mirrored_Law(design, [](const Segment_Terms& s, double x, Single) -> Svajp {
            const double c1 = std::cos(PI2 * x), c3 = std::cos(PI6 * x);
            const double s1 = std::sin(PI2 * x), s3 = std::sin(PI6 * x);
            return {.S = s.L * (x - (1 / PI2) * ((1.0 / 48) * s3 + (15.0 / 16) * s1)),
                    .V = (s.L / s.b) * (1 - (15.0 / 16) * c1 - (1.0 / 16) * c3),
                    .A = (s.L / s.b_sq) * PI2 * ((3.0 / 16) * s3 + (15.0 / 16) * s1),
                    .J = (s.L / s.b_cu) * PI2_pow2 * ((9.0 / 16) * c3 + (15.0 / 16) * c1),
                    .P = (s.L / s.b4) * PI2_pow3 * ((-15.0 / 16) * s1 - (27.0 / 16) * s3)};
        });
    });
}

// ---- Polydyne families: an even base term and a few high powers of the place y, counted from full lift.

/// One term c y^n of a polydyne series.
struct Term {
    double c;
    double n;

    /// The term's derivative with respect to y, of order 0 to 4.
    double Derivative(int order, double y) const
    {
        double factor = c;
        for (int d = 0; d < order; ++d)
            factor *= n - d;
        return factor * Power(y, n - order);
    }
};

/// The square term, whose derivatives end with the second, and the high powers of a polydyne series.
template <std::size_t High_Powers>
struct Polydyne_Series {
    double C2;
    std::array<Term, High_Powers> high;

    double High_Sum(int order, double y) const
    {
        double sum = 0;
        for (const Term& term : high)
            sum += term.Derivative(order, y);
        return sum;
    }
    /// Without a constant term; G1 to G4 are its derivatives.
    double Sum(double y) const { return C2 * y * y + High_Sum(0, y); }
    double G1(double y) const { return 2 * C2 * y + High_Sum(1, y); }
    double G2(double y) const { return 2 * C2 + High_Sum(2, y); }
    double G3(double y) const { return High_Sum(3, y); }
    double G4(double y) const { return High_Sum(4, y); }
};

/// Which way a polydyne law runs, with the place y and the sign that odd derivatives take.
template <class Law>
void Polydyne_Law(Design_State& design, Law&& law)
{
    Two_Form_Law(
        design, [&](const Segment_Terms& s, double x) -> Svajp { return law(s, 1 - x, -1.0); },
        [&](const Segment_Terms& s, double x) -> Svajp { return law(s, x, 1.0); });
}

// ---- The choice of the law.

/// Runs the full law or one of its halves; other values of Full_Half and Which_half choose no law.
template <class Full, class First, class Second>
void Run_Full_or_Half(Design_State& design, int Seg, Full full, First first, Second second)
{
    const int extent = design.motion.Full_Half(Seg);
    const int half = design.motion.Which_half(Seg);
    if (extent == 1)
        full(design);
    else if (extent == 2 && half == 1)
        first(design);
    else if (extent == 2 && half == 2)
        second(design);
}

/// Runs the law that the segment's selector names; false when it reported a fault under its own name.
bool Run_Law(Design_State& design, int Seg)
{
    switch (design.motion.Seg_Program(Seg)) {
    case shm:
        Run_Full_or_Half(design, Seg, SHM_Full, SHM_First, SHM_Second);
        return true;
    case cycloid:
        Run_Full_or_Half(design, Seg, Cycloid_Full, Cycloid_First, Cycloid_Second);
        return true;
    case mod_sine:
        Mod_Sine(design);
        return true;
    case mod_trap:
        Mod_Trap(design);
        return true;
    case double_harmonic:
        Double_Harmonic(design);
        return true;
    case dwell:
        Dwell(design, design.motion.Lift);
        return true;
    case poly_345:
        return Poly_345(design);
    case poly_3456:
        return Poly_3456(design);
    case poly_4567:
        return Poly_4567(design);
    case poly_11:
        return Poly_11(design);
    case berzak_d:
        return Berzak_D(design);
    case berzak_e:
        return Berzak_E(design);
    case dudley:
        return Dudley(design, 10);
    case stoddard:
        return Thoren(design, 10, 20, 30, 40);
    case thoren:
        return Thoren(design, 14, 26, 38, 50);
    case freudenstein:
        return Freudenstein_1_3(design);
    case gutman:
        return GutmanF3(design);
    default:  // polynomial and spline segments are calculated from their own tables
        return true;
    }
}

}  // namespace

std::span<const Motion_Program> Motion_Programs()
{
    return programs;
}

const Motion_Program* Find_Program(std::string_view code)
{
    const auto found = std::find_if(programs.begin(), programs.end(),
                                    [&](const Motion_Program& program) { return Same_Text(program.code, code); });
    return found == programs.end() ? nullptr : &*found;
}

bool Pick_Program(Design_State& design, int Seg, std::string_view code)
{
    Check_Segment(Seg);
    const Motion_Program* const program = Find_Program(code);
    if (program == nullptr)
        return false;
    Set_Program(design, Seg, *program);
    if (program->kinds.size() == 1)
        design.motion.Rise_Fall_Dwell(Seg) = program->kinds;
    return true;
}

bool Pick_Motion(Design_State& design, int Seg, char kind)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    const std::string letter = To_Upper({&kind, 1});
    switch (letter[0]) {
    case 'R':
    case 'F':
        m.Rise_Fall_Dwell(Seg) = letter;
        m.Function(Seg) = letter;
        m.Program(Seg).clear();
        return true;
    case 'P':
        return Pick_Program(design, Seg, "PO");
    case 'D':
        return Pick_Program(design, Seg, "DW");
    case 'S':
        return Pick_Program(design, Seg, "BS");
    default:
        return false;
    }
}

void Load_Beta(Design_State& design)
{
    Motion_Group& m = design.motion;
    const double b = m.Beta_Rad(m.Seg);
    m.Beta_Sq = b * b;
    m.Beta_Cu = b * b * b;
}

bool Run_Motion_Program(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    design.motion.Seg = Seg;
    if (!Run_Law(design, Seg))
        return false;
    Store_Segment_Ends(design);
    Update_Liftmax(design);
    return true;
}

// Source: Dudley, New Methods in Valve Cam Design, SAE, 1948.
bool Dudley(Design_State& design, Single p)
{
    return Trap("Dudley", [&] {
        if (p < 4)
            p = 4;
        const Single q = p + 2;
        const Single r = p + 4;
        // Held in 32 bits, meant.
        const Single D = 6 * p * p - 8 * p - 8;
        const Single C2 = (-6 * p * p - 24 * p) / D;
        const Single Cp = (7 * p * p + p * p * p + 14 * p + 8) / D;
        const Single Cq = (-2 * p * p * p - 4 * p * p + 16 * p) / D;
        const Single Cr = (p * p * p - 3 * p * p + 2 * p) / D;
        const Polydyne_Series<3> series{C2, {{{Cp, p}, {Cq, q}, {Cr, r}}}};

        Polydyne_Law(design, [&](const Segment_Terms& s, double y, double odd) -> Svajp {
            return {.S = s.L * (1 + series.Sum(y)),
                    .V = (odd * s.L / s.b) * series.G1(y),
                    .A = (s.L / s.b_sq) * series.G2(y),
                    .J = (odd * s.L / s.b_cu) * series.G3(y),
                    .P = (s.L / s.b4) * series.G4(y)};
        });
        Replace_Function(design, Shortest(r));
    });
}

// Source: Stoddart, Polydyne Cam Design, Machine Design, 1953; Thoren, Engemann and Stoddart, Cam Design as
// Related to Valve Train Dynamics, SAE, 1952.
bool Thoren(Design_State& design, Single p, Single q, Single r, Single s)
{
    return Trap("Thoren", [&] {
        const double C2 = -p * q * r * s / ((p - 2) * (q - 2) * (r - 2) * (s - 2));
        const double Cp = 2 * q * r * s / ((q - p) * (p - 2) * (r - p) * (s - p));
        const double Cq = -2 * p * r * s / ((q - p) * (q - 2) * (r - q) * (s - q));
        const double Cr = 2 * p * q * s / ((r - p) * (r - 2) * (r - q) * (s - r));
        const double Cs = -2 * p * q * r / ((s - p) * (s - 2) * (s - q) * (s - r));
        const Polydyne_Series<4> series{C2, {{{Cp, p}, {Cq, q}, {Cr, r}, {Cs, s}}}};
        const double L = design.motion.Lift;
        const double L2 = Power(L, 2);
        const double L3 = Power(L, 3);
        const double L4 = Power(L, 4);

        // The lift is added to S and raised to a power in A, J and Ping: meant. The rows belong together as
        // derivatives only at a lift of 1; any other lift runs between L - 1 and L.
        Polydyne_Law(design, [&](const Segment_Terms& t, double y, double odd) -> Svajp {
            return {.S = L + series.Sum(y),
                    .V = (odd * L / t.b) * series.G1(y),
                    .A = (L2 / t.b_sq) * series.G2(y),
                    .J = (odd * L3 / t.b_cu) * series.G3(y),
                    .P = (L4 / t.b4) * series.G4(y)};
        });
        Replace_Function(design, Shortest(r));
    });
}

void Dwell(Design_State& design, Single value)
{
    Motion_Group& m = design.motion;
    m.Total_Displacement(m.Seg) = value;
    For_Each_Point(design, [&](const Segment_Terms&, double, Single) {
        Set_Working_Point(design, {.S = m.Total_Displacement(m.Seg), .V = 0, .A = 0, .J = 0, .P = 0});
    });
}

}  // namespace lobemax
