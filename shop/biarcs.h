// SPDX-License-Identifier: GPL-3.0-or-later
/// A curve as arcs: as few as a greedy fit needs to stay within a tolerance of the curve, each tangent to the next. Or
/// as straight lines. docs/theory.md, 20.
#pragma once

#include <functional>
#include <vector>

#include "truth/retrace.h"
#include "truth/vector.h"

namespace lobemax {

/// A place of a curve.
struct Curve_Place {
    Vector point;
    Vector tangent;  // unit, the way the parameter runs
};

/// A curve over a parameter: the cam angle in degrees.
struct Shop_Curve {
    std::function<Curve_Place(double)> at;  // at a break the piece that starts there answers
    double from = 0.0;
    double to = 360.0;
    bool closed = true;          // the last place is the first
    std::vector<double> breaks;  // rising, between from and to: where the curve's pieces meet (segments of the motion)
    struct Circle {              // a stretch that is an exact arc or line, run through evenly: a dwell
        double from;
        double to;
    };
    std::vector<Circle> circles;  // rising, apart
};

/// A stretch of a curve without a corner.
struct Curve_Piece {
    double from = 0.0;
    double to = 0.0;
    bool circle = false;  // an exact arc or line
    Curve_Place first;    // at from, as this piece has it
    Curve_Place last;     // at to, as this piece has it
    bool corner = false;  // the curve turns or jumps to the next piece, that of the last of a closed one to the first
};

/// A curve at even steps of its parameter, and its pieces: what a fit works on.
class Curve_Samples {
public:
    /// Evenly spaced steps of a whole curve.
    static constexpr int Steps = 2880;
    /// A turn, radians, from which on a joint is a corner.
    static constexpr double Corner = 1e-5;
    /// A share of the size below which nothing is told apart: the shortest element, the widest gap that is closed.
    static constexpr double Least = 1e-6;

    /// @throws Fault{5} for a curve without an extent or with places that are no numbers
    explicit Curve_Samples(const Shop_Curve& curve);

    const Shop_Curve& Curve() const { return curve_; }
    /// The larger side of the box around the curve.
    double Size() const { return size_; }
    Vector Low() const { return low_; }
    Vector High() const { return high_; }
    const std::vector<Curve_Piece>& Pieces() const { return pieces_; }
    /// The pieces as they are without the exact stretches.
    std::vector<Curve_Piece> Pieces_between_Corners() const;

    struct Node {
        double t;
        Curve_Place place;
    };
    const std::vector<Node>& Nodes() const { return nodes_; }
    /// The place shortly before a parameter: at a break that of the piece that ends there.
    Curve_Place Before(double t) const;

private:
    Shop_Curve curve_;
    std::vector<Node> nodes_;
    std::vector<Curve_Piece> pieces_;
    Vector low_;
    Vector high_;
    double size_ = 0.0;
};

/// Arcs and lines along a curve.
struct Arc_Path {
    std::vector<Surface_Element> elements;
    std::vector<double> parameters;  // where each element starts, and where the last ends
    double largest_deviation = 0.0;  // from the curve, measured between the ends on an oversampled curve
    double at = 0.0;                 // parameter
};

/// The smallest and the largest share of a curve's size that a tolerance may be.
inline constexpr double Least_Tolerance = 1e-7;
inline constexpr double Most_Tolerance = 0.01;

/// Arcs in pairs, the ends of each pair on the curve and along it. Corners stay corners, exact stretches are arcs or
/// lines of their own; a surface that jumps where its motion has a corner is joined by the arc that the follower itself
/// leaves there. (291) to (296)
/// @param tolerance  length; Least_Tolerance to Most_Tolerance of the curve's size
/// @throws Fault{5} for a tolerance or a curve that is none
Arc_Path Fit_Biarcs(const Shop_Curve& curve, double tolerance);
Arc_Path Fit_Biarcs(const Curve_Samples& samples, double tolerance);

/// Straight lines between points of the curve, as few as stay within a tolerance. (297) @throws as Fit_Biarcs
Arc_Path Fit_Lines(const Curve_Samples& samples, double tolerance);

}  // namespace lobemax
