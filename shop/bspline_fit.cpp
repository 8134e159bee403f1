// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/bspline_fit.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"

namespace lobemax {

namespace {

/// A cubic from point to point with its derivatives at both.
struct Cubic {
    Vector from;
    Vector leaves;
    Vector to;
    Vector arrives;
    double length = 0.0;  // of the parameter

    /// Coefficients of the powers of the parameter from the start on.
    Vector Second() const
    {
        const Vector slope = 1.0 / length * (to - from);
        return 1.0 / length * (3.0 * slope - 2.0 * leaves - arrives);
    }
    Vector Third() const
    {
        const Vector slope = 1.0 / length * (to - from);
        return 1.0 / (length * length) * (leaves + arrives - 2.0 * slope);
    }
    Vector At(double x) const { return from + x * (leaves + x * (Second() + x * Third())); }
    Vector Slope_at(double x) const { return leaves + x * (2.0 * Second() + 3.0 * x * Third()); }
    /// The value of the form that is symmetric in three parameters and linear in each. (303)
    Vector Blossom(double a, double b, double c) const
    {
        return from + (a + b + c) / 3.0 * leaves + (a * b + a * c + b * c) / 3.0 * Second() + a * b * c * Third();
    }
};

/// A row of the system for the derivatives: (301).
struct Row {
    double before;
    double here;
    double after;
    Vector right;
};

/// Solves rows without corners, in place. @return the right sides
std::vector<Vector> Solve(std::vector<Row> rows)
{
    const std::size_t n = rows.size();
    for (std::size_t i = 1; i < n; ++i) {
        const double k = rows[i].before / rows[i - 1].here;
        rows[i].here -= k * rows[i - 1].after;
        rows[i].right = rows[i].right - k * rows[i - 1].right;
    }
    std::vector<Vector> x(n);
    for (std::size_t i = n; i-- > 0;) {
        const Vector rest = i + 1 < n ? rows[i].right - rows[i].after * x[i + 1] : rows[i].right;
        x[i] = 1.0 / rows[i].here * rest;
    }
    return x;
}

/// The same around a cycle: the two corners are a matrix of rank one. (302)
std::vector<Vector> Solve_Cyclic(std::vector<Row> rows)
{
    const std::size_t n = rows.size();
    const double first_corner = rows.front().before;
    const double last_corner = rows.back().after;
    const double gamma = -rows.front().here;
    rows.front().here -= gamma;
    rows.back().here -= first_corner * last_corner / gamma;
    std::vector<Row> unit = rows;
    for (Row& row : unit)
        row.right = {};
    unit.front().right = {gamma, gamma};
    unit.back().right = {last_corner, last_corner};
    const std::vector<Vector> y = Solve(rows);
    const std::vector<Vector> z = Solve(unit);
    const double share = first_corner / gamma;
    const Vector sum_y = y.front() + share * y.back();
    const double sum_z = z.front().x + share * z.back().x;
    std::vector<Vector> x(n);
    for (std::size_t i = 0; i < n; ++i)
        x[i] = y[i] - z[i].x / (1.0 + sum_z) * sum_y;
    return x;
}

/// What a spline is made of, in order: cubics, and which of them start at a corner.
struct Chain {
    std::vector<Cubic> cubics;
    std::vector<bool> corner;  // before each
    std::vector<double> from;  // parameter of the curve at the start of each, negative where it joins two pieces
    std::vector<double> to;

    void Add(const Cubic& cubic, bool at_corner, double t0, double t1)
    {
        cubics.push_back(cubic);
        corner.push_back(at_corner);
        from.push_back(t0);
        to.push_back(t1);
    }
};

/// The points of a piece, joined twice differentiably.
void Add_Piece(Chain& chain, const Shop_Curve& curve, const Curve_Piece& piece, Vector end, std::size_t intervals,
               bool periodic)
{
    std::vector<Vector> p{piece.first.point};
    std::vector<double> t{piece.from};
    for (std::size_t i = 1; i < intervals; ++i) {
        t.push_back(piece.from + (piece.to - piece.from) * static_cast<double>(i) / static_cast<double>(intervals));
        p.push_back(curve.at(t.back()).point);
    }
    t.push_back(piece.to);
    p.push_back(end);
    std::vector<double> h;
    std::vector<Vector> pull;  // slope over length
    for (std::size_t i = 0; i < intervals; ++i) {
        h.push_back(Length(p[i + 1] - p[i]));
        if (!(h.back() > 0.0))
            throw Fault{invalid_argument};
        pull.push_back(1.0 / (h.back() * h.back()) * (p[i + 1] - p[i]));
    }
    std::vector<Row> rows;
    for (std::size_t i = 0; i <= intervals; ++i) {
        if (!periodic && (i == 0 || i == intervals)) {
            rows.push_back({0.0, 1.0, 0.0, (i == 0 ? piece.first : piece.last).tangent});
            continue;
        }
        if (i == intervals)
            break;
        const std::size_t before = i == 0 ? intervals - 1 : i - 1;
        rows.push_back({1.0 / h[before], 2.0 / h[before] + 2.0 / h[i], 1.0 / h[i], 3.0 * (pull[before] + pull[i])});
    }
    std::vector<Vector> slopes = periodic ? Solve_Cyclic(rows) : Solve(rows);
    if (periodic)
        slopes.push_back(slopes.front());
    for (std::size_t i = 0; i < intervals; ++i)
        chain.Add({p[i], slopes[i], p[i + 1], slopes[i + 1], h[i]}, i == 0, t[i], t[i + 1]);
}

Chain Make_Chain(const Curve_Samples& samples, int points)
{
    const Shop_Curve& curve = samples.Curve();
    const std::vector<Curve_Piece> pieces = samples.Pieces_between_Corners();
    const bool periodic = curve.closed && pieces.size() == 1 && !pieces.front().corner;
    constexpr double least = 4.0;  // intervals of a piece
    Chain chain;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Curve_Piece& piece = pieces[i];
        const bool end = i + 1 == pieces.size();
        const Curve_Place next = end && !curve.closed ? curve.at(curve.to) : pieces[end ? 0 : i + 1].first;
        const double share = (piece.to - piece.from) / (curve.to - curve.from);
        const auto intervals = static_cast<std::size_t>(std::max(least, std::ceil(share * points)));
        const bool apart = Length(next.point - piece.last.point) > Curve_Samples::Least * samples.Size();
        Add_Piece(chain, curve, piece, apart ? piece.last.point : next.point, intervals, periodic);
        if (apart) {
            const Vector chord = next.point - piece.last.point;
            const double length = Length(chord);
            const Vector along = 1.0 / length * chord;
            chain.Add({piece.last.point, along, next.point, along, length}, true, -1.0, -1.0);
        }
    }
    return chain;
}

Cubic_Spline Spline_of(const Chain& chain)
{
    Cubic_Spline spline;
    std::vector<double>& knots = spline.knots;
    std::vector<std::size_t> cubic_of{};  // that starts at each knot, or at the last of equal ones
    std::vector<double> starts;
    double u = 0.0;
    const auto put = [&](double value, int times, std::size_t cubic) {
        for (int i = 0; i < times; ++i) {
            knots.push_back(value);
            cubic_of.push_back(cubic);
        }
    };
    for (std::size_t i = 0; i < chain.cubics.size(); ++i) {
        put(u, i == 0 ? 4 : chain.corner[i] ? 3 : 1, i);
        starts.push_back(u);
        u += chain.cubics[i].length;
    }
    put(u, 4, chain.cubics.size() - 1);
    for (std::size_t j = 0; j + 4 < knots.size(); ++j) {
        // Any cubic between the first and the last of the control point's five knots does: the one that starts at the
        // last of equal knots, which has a length.
        std::size_t m = j;
        while (m < j + 3 && knots[m + 1] <= knots[m])
            ++m;
        if (knots[m + 1] <= knots[m]) {
            m = j;
            while (m > 0 && knots[m + 1] <= knots[m])
                --m;
        }
        const std::size_t c = cubic_of[m];
        const double s = starts[c];
        spline.control.push_back(chain.cubics[c].Blossom(knots[j + 1] - s, knots[j + 2] - s, knots[j + 3] - s));
    }
    spline.points = chain.cubics.size() + 1;
    return spline;
}

/// How far the curve lies beside the cubics between their ends.
void Measure(Cubic_Spline& spline, const Chain& chain, const Shop_Curve& curve)
{
    constexpr int parts = 4;
    constexpr int steps = 3;  // towards the foot of the perpendicular
    for (std::size_t i = 0; i < chain.cubics.size(); ++i) {
        if (chain.from[i] < 0.0)
            continue;
        const Cubic& cubic = chain.cubics[i];
        for (int k = 1; k < parts; ++k) {
            const double t = chain.from[i] + (chain.to[i] - chain.from[i]) * k / parts;
            const Vector point = curve.at(t).point;
            double x = cubic.length * k / parts;
            for (int step = 0; step < steps; ++step) {
                const Vector slope = cubic.Slope_at(x);
                x -= Dot(cubic.At(x) - point, slope) / Square(slope);
            }
            const double off = Length(cubic.At(std::clamp(x, 0.0, cubic.length)) - point);
            if (off > spline.largest_deviation) {
                spline.largest_deviation = off;
                spline.at = t;
            }
        }
    }
}

}  // namespace

Vector Cubic_Spline::At(double u) const
{
    // De Boor's scheme on the knot interval that holds u.
    const std::size_t n = control.size();
    const auto above = std::upper_bound(knots.begin() + 3, knots.begin() + static_cast<std::ptrdiff_t>(n), u);
    const auto k = static_cast<std::size_t>(above - knots.begin()) - 1;
    std::vector<Vector> d(control.begin() + static_cast<std::ptrdiff_t>(k) - 3,
                          control.begin() + static_cast<std::ptrdiff_t>(k) + 1);
    for (std::size_t r = 1; r <= 3; ++r)
        for (std::size_t j = 3; j >= r; --j) {
            const double low = knots[k - 3 + j];
            const double high = knots[k + 1 + j - r];
            const double x = (u - low) / (high - low);
            d[j] = (1.0 - x) * d[j - 1] + x * d[j];
        }
    return d[3];
}

Cubic_Spline Fit_Spline(const Curve_Samples& samples, double tolerance)
{
    if (!(tolerance >= Least_Tolerance * samples.Size()) || !(tolerance <= Most_Tolerance * samples.Size()))
        throw Fault{invalid_argument};
    int points = 24;
    while (true) {
        const Chain chain = Make_Chain(samples, points);
        Cubic_Spline spline = Spline_of(chain);
        Measure(spline, chain, samples.Curve());
        if (spline.largest_deviation <= tolerance)
            return spline;
        if (points >= Most_Spline_Points)
            throw Fault{invalid_argument};
        // The deviation falls with the fourth power of the count where the curve is smooth.
        const double more = 1.05 * std::pow(spline.largest_deviation / tolerance, 0.25);
        points = std::min(Most_Spline_Points, static_cast<int>(std::ceil(points * std::clamp(more, 1.1, 2.0))));
    }
}

}  // namespace lobemax
