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
#include <string_view>
#include <variant>

#include "core/basic_types.h"
#include "motion/law_formulas.h"
#include "motion/law_rows.h"

namespace lobemax {

/// What a law needs to know of its segment: plain values.
struct Law_Segment {
    double L = 0.0;         // lift; of a dwell: its position
    double beta = 0.0;      // degrees
    double b = 0.0;         // the same in radians, as it is stored
    std::string_view kind;  // "R" rise, "F" fall; any other is neither
    Svajp working_point;    // what a law with two forms holds in a segment that is neither
};

namespace law_forms {

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

    /// The same before the mirror of a fall, for whoever rounds in between. @throws as At
    Svajp Before_Mirror(double x, double theta) const;

    /// Stores points of a run, first to count - 1, many at a time, as a kernel does: those before the first that it
    /// leaves to Before_Mirror. A kernel raises no fault.
    /// @return that point, or count
    std::size_t Store(const Segment_Run& run, std::size_t first, std::size_t count) const;

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
