// SPDX-License-Identifier: GPL-3.0-or-later
/// The motion as a curve that can be asked at any angle: of one segment, and of the whole cycle.
///
/// A curve is made from a const design and keeps what it needs: it outlives the design, may be asked by many threads at
/// once, and asking allocates nothing. It answers in double, unrounded; the table of the stored points holds the same
/// curve through the roundings of Store_Segment, some 1E-7 of the largest value of its row away.
#pragma once

#include <variant>
#include <vector>

#include "core/design_state.h"
#include "motion/laws.h"
#include "motion/polynomial.h"
#include "motion/spline.h"

namespace lobemax {

/// The curve of one segment: a law, a polynomial or a spline.
class Segment_Curve {
public:
    /// @param beta  degrees, the length of the segment
    Segment_Curve(const Segment_Law& law, double beta) : curve_(law), beta_(beta) {}
    Segment_Curve(const Polynomial_Curve& polynomial, double beta) : curve_(polynomial), beta_(beta) {}
    Segment_Curve(const Spline_Curve& spline, double beta) : curve_(spline), beta_(beta) {}

    /// The point at local angle theta, degrees: S from the segment's Base_Shift on, in the unit of position, V to Ping
    /// per radian of cam to the order of the derivative. Meant for 0..beta; outside it the formulas go on.
    ///
    /// @throws Fault{6} for a law or a polynomial over a beta of zero, Fault{5} of a segment without points
    Svajp At(double theta) const;

    /// False for a selector without a law: such a segment has no points.
    bool Has_Points() const;

    /// Which curve it is; one of the three.
    const Segment_Law* Law() const { return std::get_if<Segment_Law>(&curve_); }
    const Polynomial_Curve* Polynomial() const { return std::get_if<Polynomial_Curve>(&curve_); }
    const Spline_Curve* Spline() const { return std::get_if<Spline_Curve>(&curve_); }

private:
    std::variant<Segment_Law, Polynomial_Curve, Spline_Curve> curve_;
    double beta_;
};

/// What a law needs to know of segment Seg 1..20, over a lift (of a dwell: its position).
/// @throws Fault{9} when there is no such segment
Law_Segment Segment_of_Law(const Design_State& design, int Seg, double lift);

/// The law that the selector of segment Seg 1..20 names, over a lift.
/// @throws Fault{9} when there is no such segment
Segment_Law Law_of_Segment(const Design_State& design, int Seg, double lift);

/// The curve of segment Seg 1..20 as it was calculated last: the law that its selector names, over Total_Displacement,
/// or the polynomial or spline through the conditions that were read for it, solved anew in double. After a change of
/// units the segments have to be calculated again, as for the table.
///
/// @throws Fault{9} when there is no such segment, Fault{5} for a polynomial or spline that is not solved
Segment_Curve Curve_of_Segment(const Design_State& design, int Seg);

/// The motion of the whole cycle: position and its derivatives at any cam angle.
class Motion_Curve {
public:
    /// Takes the curves of all segments in use. @throws Fault as Curve_of_Segment
    explicit Motion_Curve(const Design_State& design);

    /// The point at a cam angle in degrees, any number of turns: S the position, V to Ping per radian.
    ///
    /// At a joint the segment that starts there answers, so that the end of one before it, its last derivatives
    /// included, is asked of its Segment_Curve. A last segment that falls short of the full turn by half a step at the
    /// most, the betas' rounding, goes on to it.
    /// @throws Fault{9} at an angle that no segment covers, Fault{6} at one that is no finite number
    Svajp At(double angle) const;

    /// A segment of the cycle, and a place in it.
    struct Place {
        const Segment_Curve* curve = nullptr;  // lives as long as the motion
        int segment = 0;                       // 1..20
        double local = 0.0;                    // degrees from the segment's start
        double base = 0.0;                     // position that the curve's S is added to
    };
    /// Where a cam angle lies, by the rules of At. @throws Fault as At
    Place Find(double angle) const;

    /// Segments in use.
    int Segments() const { return static_cast<int>(parts_.size()); }
    /// The end of a segment 1..Segments(), as its own curve has it. @throws Fault{9} when there is no such segment
    Place End_of(int segment) const;

private:
    struct Part {
        double start;  // degrees
        double end;
        double beta;
        double base;  // position that the curve's S is added to
        Segment_Curve curve;
    };
    std::vector<Part> parts_;
};

}  // namespace lobemax
