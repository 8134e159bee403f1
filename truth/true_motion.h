// SPDX-License-Identifier: GPL-3.0-or-later
/// What the follower does, as a curve over the cam angle: the motion that the geometry of the cam is made from.
#pragma once

#include <optional>
#include <vector>

#include "motion/segment_curve.h"

namespace lobemax {

/// Displacement and its derivatives per radian of cam: lengths, or radians of an arm.
struct Follower_Point {
    double s = 0.0;
    double v = 0.0;
    double a = 0.0;
    double j = 0.0;
};

/// The follower's motion in double, at any angle. Of segments it is their own curve; the derivatives of a law whose
/// formulas are not those of its displacement, as of a series over a lift other than 1, are the displacement's. A
/// motion that stands in the rows alone, as an imported one, a polydyne or a balancing cam's or that of a linkage whose
/// end effector is driven, is the curve of fifth degree from point to point that has their displacement and its first
/// two derivatives: docs/theory.md, (225).
///
/// A conjugate cam has its own follower's motion: Liftmax less the displacement.
class True_Motion {
public:
    /// @throws Fault{5} for a design without a motion, Fault as Motion_Curve's
    explicit True_Motion(const Design_State& design);

    /// @param theta  degrees, any number of turns. @throws Fault as Motion_Curve::At
    Follower_Point At(double theta) const;

    /// Whether it was made from the rows.
    bool From_Rows() const { return !curve_; }

    /// The curve of the segments; none of a motion that was made from the rows.
    const Motion_Curve* Curve() const { return curve_ ? &*curve_ : nullptr; }

    /// The segments whose own derivatives are not those of their displacement.
    const std::vector<int>& Odd_Segments() const { return odd_; }

    /// The segment at an angle, 0 of a motion from the rows.
    int Segment_at(double theta) const { return curve_ ? curve_->Find(theta).segment : 0; }

private:
    Follower_Point From_Nodes(double theta) const;
    Follower_Point From_Curve(double theta) const;

    std::optional<Motion_Curve> curve_;
    std::vector<int> odd_;
    std::vector<Follower_Point> nodes_;  // of the stored points, in the unit of position
    double step_ = 0.0;                  // degrees
    double scale_ = 1.0;                 // of a position: radians of an arm
    double highest_ = 0.0;               // Liftmax of a conjugate, else 0
    double sign_ = 1.0;
};

}  // namespace lobemax
