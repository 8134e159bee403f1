// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/laws.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "core/design_state.h"
#include "core/lanes.h"
#include "motion/motion_programs.h"

namespace lobemax {

namespace {

// More circle constants of the laws, literals as the others are.
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

/// L / b^n before the n-th derivative.
Svajp Factors(const law_forms::Terms& t)
{
    return {.S = t.L, .V = t.L / t.b, .A = t.L / t.b_sq, .J = t.L / t.b_cu, .P = t.L / t.b4};
}

/// The region that a local angle lies in, degrees.
template <class Law>
int Region_of(const Law& law, double theta)
{
    int region = 0;
    while (region < Law::regions - 1 && theta > law.end[region])
        ++region;
    return region;
}

/// The place of a region's end: 32 bits.
double Region_End(double theta)
{
    return Single(theta);
}

using Coefficients = std::array<double, 12>;
constexpr Coefficients c_345{0, 0, 0, 10, -15, 6};
constexpr Coefficients c_3456{0, 0, 0, 64, -192, 192, -64};
constexpr Coefficients c_4567{0, 0, 0, 0, 35, -84, 70, -20};
constexpr Coefficients c_11{0, 0, 0, 0, 0, 336, -1890, 4740, -6615, 5320, -2310, 420};
constexpr Coefficients c_berzak_d{0, 0, 0, 12.1, -25.5, 24.9, -14.7, 4.2};
constexpr Coefficients c_berzak_e{0, 0, 0, 5.35, 8.2, -35.74, 32.46, -9.27};

constexpr law_forms::Harmonic_Series freudenstein_1_3{
    27.0 / 28, {.S = 1.0 / 84, .V = 1.0 / 28, .A = 3.0 / 28, .J = 9.0 / 28, .P = 27.0 / 28}};
constexpr law_forms::Harmonic_Series gutman_f3{
    15.0 / 16, {.S = 1.0 / 48, .V = 1.0 / 16, .A = 3.0 / 16, .J = 9.0 / 16, .P = 27.0 / 16}};

}  // namespace

namespace law_forms {

Terms::Terms(const Law_Segment& segment)
    : L(segment.L),
      b(segment.b),
      b2(Single(b * b)),
      b3(Single(b * b * b)),
      b_sq(Power(b, 2)),
      b_cu(Power(b, 3)),
      b4(Power(b, 4))
{
}

// ---- Simple harmonic family

SHM_Full::SHM_Full(const Terms& t)
    : k{.S = 0.5 * t.L,
        .V = 0.5 * t.L * PI / t.b,
        .A = PI_pow2 * (0.5 * t.L) / t.b_sq,
        .J = -(PI_pow3 * (0.5 * t.L) / t.b_cu),
        .P = -(PI_pow4 * (0.5 * t.L) / t.b4)}
{
}

SHM_First::SHM_First(const Terms& t)
    : k{.S = t.L,
        .V = 0.5 * t.L * PI / t.b,
        .A = PI_pow2 * (0.25 * t.L) / t.b_sq,
        .J = PI_pow3 * (-0.125 * t.L) / t.b_cu,
        .P = PI_pow4 * (-0.0625 * t.L) / t.b4}
{
}

SHM_Second::SHM_Second(const Terms& t)
    : k{.S = t.L,
        .V = 0.5 * t.L * PI / t.b,
        .A = PI_pow2 * (-0.25 * t.L) / t.b_sq,
        .J = PI_pow3 * (-0.125 * t.L) / t.b_cu,
        .P = PI_pow4 * (0.0625 * t.L) / t.b4}
{
}

// ---- Cycloid family: a sinusoidal acceleration

Cycloid_Full::Cycloid_Full(const Terms& t)
    : k{.S = t.L, .V = t.L / t.b, .A = t.L * PI2 / t.b2, .J = t.L * PI2SQ / t.b3, .P = -PI2_pow3 * t.L / t.b4}
{
}

Cycloid_First::Cycloid_First(const Terms& t)
    : k{.S = t.L, .V = t.L / t.b, .A = t.L * PI / t.b2, .J = t.L * PISQ / t.b3, .P = -PI_pow3 * t.L / t.b4}
{
}

Cycloid_Second::Cycloid_Second(const Terms& t)
    : k{.S = t.L, .V = t.L / t.b, .A = -t.L * PI / t.b2, .J = -t.L * PISQ / t.b3, .P = PI_pow3 * t.L / t.b4}
{
}

// ---- Double harmonic: a harmonic and its second harmonic

Double_Harmonic::Double_Harmonic(const Terms& t, bool fall)
    : falls(fall),
      k{.S = t.L / 2,
        .V = fall ? -(t.L / t.b) * PI * 0.5 : (t.L / t.b) * PI * 0.5,
        .A = fall ? t.L * (-HALF_PISQ) / t.b2 : t.L * HALF_PISQ / t.b2,
        .J = fall ? t.L * HALF_PICUBE / t.b3 : t.L * (-HALF_PICUBE) / t.b3,
        .P = fall ? 0.5 * PISQ_pow2 * t.L / t.b4 : -0.5 * PISQ_pow2 * t.L / t.b4}
{
}

// ---- Modified sine: a quarter sine at each end, one longer half sine between them

Mod_Sine::Mod_Sine(const Terms& t, double beta)
    : L(t.L),
      L_b(t.L / t.b),
      k{.S = 0, .V = t.L * 0.43990085 / t.b, .A = t.L * 5.5279571 / t.b2, .J = t.L * 69.4663577 / t.b3, .P = 0},
      J_middle(t.L * (-23.1553) / t.b3),
      end{Region_End(beta / 8), Region_End(7 * beta / 8)}
{
}

// ---- Modified trapezoid: constant accelerations joined by quarter sines

Mod_Trap::Mod_Trap(const Terms& t, double beta)
    : L(t.L),
      L_b(t.L / t.b),
      k{.S = 0, .V = t.L * 0.3889845 / t.b, .A = t.L * 4.888124 / t.b2, .J = t.L * 61.425769 / t.b3, .P = 0},
      A_constant((t.L / t.b2) * 4.888124),
      end{Region_End(beta / 8), Region_End(3 * beta / 8), Region_End(beta / 2), Region_End(5 * beta / 8),
          Region_End(7 * beta / 8)}
{
}

// ---- Harmonic series of the first and third harmonic

Harmonic_Series::Curve::Curve(const Terms& t, const Harmonic_Series& weights)
    : weight(weights),
      k{.S = t.L,
        .V = t.L / t.b,
        .A = (t.L / t.b_sq) * PI2,
        .J = (t.L / t.b_cu) * PI2_pow2,
        .P = (t.L / t.b4) * PI2_pow3}
{
}

// ---- Polydyne families: a square term and a few high powers of the place y, counted from full lift

namespace {

template <std::size_t High_Powers>
Polydyne Series(bool rises, double C2, const std::array<std::array<double, 2>, High_Powers>& high)
{
    Polydyne series{.rises = rises,
                    .lift_is_added = false,
                    .L = 0,
                    .k = {},
                    .C2 = C2,
                    .count = static_cast<int>(High_Powers),
                    .term = {}};
    for (std::size_t i = 0; i < High_Powers; ++i) {
        const auto [c, n] = high[i];
        series.term[i].n = n;
        double factor = c;
        for (int d = 0; d < 5; ++d) {
            series.term[i].factor[d] = factor;
            factor *= n - d;
        }
    }
    return series;
}

/// The series at place x = theta / beta of its segment. @throws as Power
Svajp At_Place(const Polydyne& law, double x)
{
    const double y = law.Place(x);
    Polydyne::Powers<double> powers{};
    for (int i = 0; i < law.count; ++i)
        for (int d = 0; d < 5; ++d)
            powers.of[i][d] = Power(y, law.term[i].n - d);
    return law(y, powers).point;
}

}  // namespace

Polydyne Dudley_Series(const Terms& t, bool rises, Single p)
{
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
    Polydyne law = Series<3>(rises, C2, {{{Cp, p}, {Cq, q}, {Cr, r}}});
    const double odd = rises ? -1.0 : 1.0;
    law.L = t.L;
    law.k = {.S = 0, .V = odd * t.L / t.b, .A = t.L / t.b_sq, .J = odd * t.L / t.b_cu, .P = t.L / t.b4};
    return law;
}

Polydyne Thoren_Series(const Terms& t, bool rises, Single p, Single q, Single r, Single s)
{
    const double C2 = -p * q * r * s / ((p - 2) * (q - 2) * (r - 2) * (s - 2));
    const double Cp = 2 * q * r * s / ((q - p) * (p - 2) * (r - p) * (s - p));
    const double Cq = -2 * p * r * s / ((q - p) * (q - 2) * (r - q) * (s - q));
    const double Cr = 2 * p * q * s / ((r - p) * (r - 2) * (r - q) * (s - r));
    const double Cs = -2 * p * q * r / ((s - p) * (s - 2) * (s - q) * (s - r));
    Polydyne law = Series<4>(rises, C2, {{{Cp, p}, {Cq, q}, {Cr, r}, {Cs, s}}});
    const double odd = rises ? -1.0 : 1.0;
    law.lift_is_added = true;
    law.L = t.L;
    law.k = {.S = 0,
             .V = odd * t.L / t.b,
             .A = Power(t.L, 2) / t.b_sq,
             .J = odd * Power(t.L, 3) / t.b_cu,
             .P = Power(t.L, 4) / t.b4};
    return law;
}

}  // namespace law_forms

using namespace law_forms;

/// A law with a form of its own for each direction. A segment that is neither holds the working point that was found:
/// meant. Mechanics has no such segment; only a file can bring one.
template <class Make>
Segment_Law Segment_Law::Two_Forms(const Law_Segment& segment, Make&& make)
{
    Segment_Law law;
    law.L_ = segment.L;
    const bool rises = segment.kind == "R";
    if (segment.beta == 0.0)
        law.form_ = Standing{};
    else if (rises || segment.kind == "F")
        law.form_ = make(Terms(segment), rises);
    else
        law.form_ = Standing{segment.working_point};
    return law;
}

Segment_Law Segment_Law::Dwell(double position)
{
    Segment_Law law;
    law.form_ = Standing{{.S = position}};
    return law;
}

Segment_Law Segment_Law::Dudley(const Law_Segment& segment, Single p)
{
    return Two_Forms(segment, [p](const Terms& t, bool rises) { return Dudley_Series(t, rises, p); });
}

Segment_Law Segment_Law::Thoren(const Law_Segment& segment, Single p, Single q, Single r, Single s)
{
    return Two_Forms(segment, [&](const Terms& t, bool rises) { return Thoren_Series(t, rises, p, q, r, s); });
}

Segment_Law Segment_Law::Laid(int Seg_Program, int Full_Half, int Which_half, const Law_Segment& segment)
{
    Segment_Law law;
    // A law given for the rise; its constants, which may divide by zero, are not formed where no place has a value.
    const auto mirrored = [&](auto&& make) {
        law.L_ = segment.L;
        law.mirrored_ = segment.kind == "F";
        if (segment.beta == 0.0)
            law.form_ = Standing{};
        else
            law.form_ = make(Terms(segment));
        return law;
    };
    const auto form = [&]<class Form>(std::type_identity<Form>) {
        return mirrored([](const Terms& t) { return Form(t); });
    };
    const auto full_or_half = [&](auto full, auto first, auto second) {
        if (Full_Half == 1)
            return form(full);
        if (Full_Half == 2 && Which_half == 1)
            return form(first);
        if (Full_Half == 2 && Which_half == 2)
            return form(second);
        return law;
    };
    const auto polynomial = [&](const Coefficients& c) {
        const auto end = std::ranges::find_if(c.rbegin(), c.rend(), [](double value) { return value != 0.0; });
        const int count = static_cast<int>(c.rend() - end);
        return mirrored([&c, count](const Terms& t) { return Fixed_Polynomial(Factors(t), c.data(), count); });
    };
    const auto harmonics = [&](const Harmonic_Series& weights) {
        return mirrored([&weights](const Terms& t) { return Harmonic_Series::Curve(t, weights); });
    };
    const auto thoren = [&](const std::array<double, 4>& n) { return Thoren(segment, n[0], n[1], n[2], n[3]); };
    switch (Seg_Program) {
    case selector::shm:
        return full_or_half(std::type_identity<SHM_Full>{}, std::type_identity<SHM_First>{},
                            std::type_identity<SHM_Second>{});
    case selector::cycloid:
        return full_or_half(std::type_identity<Cycloid_Full>{}, std::type_identity<Cycloid_First>{},
                            std::type_identity<Cycloid_Second>{});
    case selector::mod_sine:
        return mirrored([&](const Terms& t) { return Mod_Sine(t, segment.beta); });
    case selector::mod_trap:
        return mirrored([&](const Terms& t) { return Mod_Trap(t, segment.beta); });
    case selector::double_harmonic:
        return Two_Forms(segment, [](const Terms& t, bool rises) { return Double_Harmonic(t, !rises); });
    case selector::dwell:
        return Dwell(segment.L);
    case selector::poly_345:
        return polynomial(c_345);
    case selector::poly_3456:
        return polynomial(c_3456);
    case selector::poly_4567:
        return polynomial(c_4567);
    case selector::poly_11:
        return polynomial(c_11);
    case selector::berzak_d:
        return polynomial(c_berzak_d);
    case selector::berzak_e:
        return polynomial(c_berzak_e);
    case selector::dudley:
        return Dudley(segment, dudley_power);
    case selector::stoddard:
        return thoren(stoddard_powers);
    case selector::thoren:
        return thoren(thoren_powers);
    case selector::freudenstein:
        return harmonics(freudenstein_1_3);
    case selector::gutman:
        return harmonics(gutman_f3);
    default:  // polynomial and spline segments have curves of their own
        return law;
    }
}

Segment_Law::Segment_Law(int Seg_Program, int Full_Half, int Which_half, const Law_Segment& segment)
    : Segment_Law(Laid(Seg_Program, Full_Half, Which_half, segment))
{
}

Svajp Segment_Law::Before_Mirror(double x, double theta) const
{
    return std::visit(
        [&]<class Form>(const Form& form) -> Svajp {
            if constexpr (std::is_same_v<Form, std::monostate>)
                throw Fault{invalid_argument};
            else if constexpr (std::is_same_v<Form, Polydyne>)
                return At_Place(form, x);
            else if constexpr (requires { Form::regions; })
                return form.In_Region(Region_of(form, theta), x);
            else
                return form(x);
        },
        form_);
}

std::size_t Segment_Law::Store(const Segment_Run& run, std::size_t first, std::size_t count) const
{
    return std::visit(
        [&]<class Form>(const Form& form) -> std::size_t {
            if constexpr (std::is_same_v<Form, std::monostate>)
                return first;
            else
                return Kernels_in_Use<Law_Kernels>().Law_Kernel<Form>::store(form, run, first, count);
        },
        form_);
}

Svajp Segment_Law::At(double x, double theta) const
{
    const Svajp point = Before_Mirror(x, theta);
    if (!mirrored_)
        return point;
    return {.S = L_ - point.S, .V = -point.V, .A = -point.A, .J = -point.J, .P = point.P};
}

}  // namespace lobemax
