// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/biarcs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/design_state.h"

namespace lobemax {

namespace {

bool Is_Number(const Curve_Place& place)
{
    return std::isfinite(place.point.x) && std::isfinite(place.point.y) && std::isfinite(place.tangent.x) &&
           std::isfinite(place.tangent.y);
}

/// From a to b, radians, counterclockwise.
double Turn(Vector a, Vector b)
{
    return std::atan2(Cross(a, b), Dot(a, b));
}

/// Tangent of half the angle from a to b, b of any length. (293)
double Tangent_of_Half(Vector a, Vector b)
{
    return Cross(a, b) / (Length(b) + Dot(a, b));
}

/// (294): of an arc over a chord.
double Curvature(double bulge, double chord)
{
    return 4.0 * bulge / (chord * (1.0 + bulge * bulge));
}

/// (295): how far a point lies beside the arc through a place, positive to the right of a line.
double Beside(Vector point, const Curve_Place& place, double curvature)
{
    const Vector q = point - place.point;
    const double f = curvature * Square(q) - 2.0 * Dot(Quarter(place.tangent), q);
    return f / (1.0 + std::sqrt(std::max(0.0, 1.0 + curvature * f)));
}

/// The points within a distance of the arc through a place: Beside solved for its f, which rises with the distance as
/// far as the arc's centre, so that nothing has to be divided and no root to be drawn.
class Band {
public:
    Band(const Curve_Place& place, double curvature, double wide)
        : place_(place),
          curvature_(curvature),
          wide_(wide),
          least_(-wide * (2.0 - curvature * wide)),
          most_(wide * (2.0 + curvature * wide)),
          reaches_centre_(std::abs(curvature) * wide >= 1.0)
    {
    }

    bool Holds(Vector point) const
    {
        if (reaches_centre_)
            return std::abs(Beside(point, place_, curvature_)) <= wide_;
        const Vector q = point - place_.point;
        const double f = curvature_ * Square(q) - 2.0 * Dot(Quarter(place_.tangent), q);
        return f >= least_ && f <= most_;
    }

private:
    Curve_Place place_;
    double curvature_;
    double wide_;
    double least_;
    double most_;
    bool reaches_centre_;
};

/// Two arcs from place to place that meet in a common tangent, or one line.
struct Span {
    Curve_Place first;
    Curve_Place joint;
    Curve_Place last;
    double bulge_1 = 0.0;
    double bulge_2 = 0.0;
    double curvature_1 = 0.0;
    double curvature_2 = 0.0;
    bool line = false;
    bool sound = false;  // it exists and turns forwards

    bool Before_Joint(Vector point) const { return Dot(point - joint.point, joint.tangent) <= 0.0; }
    double Off(Vector point) const
    {
        return std::abs(Before_Joint(point) ? Beside(point, first, curvature_1) : Beside(point, last, curvature_2));
    }
};

/// (291), (292): the two tangent lengths alike.
Span Biarc(const Curve_Place& first, const Curve_Place& last)
{
    Span span;
    span.first = first;
    span.last = last;
    const Vector v = last.point - first.point;
    const double square = Square(v);
    const double b = Dot(v, first.tangent + last.tangent);
    if (!(square > 0.0) || Dot(v, first.tangent) <= 0.0 || Dot(v, last.tangent) <= 0.0)
        return span;
    const double a = 2.0 * (1.0 - Dot(first.tangent, last.tangent));
    const double d = square / (b + std::sqrt(b * b + a * square));
    const Vector q0 = first.point + d * first.tangent;
    const Vector q1 = last.point - d * last.tangent;
    span.joint.point = 0.5 * (q0 + q1);
    span.joint.tangent = 1.0 / Length(q1 - q0) * (q1 - q0);
    const Vector chord_1 = span.joint.point - first.point;
    const Vector chord_2 = last.point - span.joint.point;
    span.bulge_1 = Tangent_of_Half(first.tangent, chord_1);
    span.bulge_2 = -Tangent_of_Half(last.tangent, chord_2);
    span.curvature_1 = Curvature(span.bulge_1, Length(chord_1));
    span.curvature_2 = Curvature(span.bulge_2, Length(chord_2));
    span.sound = true;
    return span;
}

Span Line(const Curve_Place& first, const Curve_Place& last)
{
    Span span;
    const Vector v = last.point - first.point;
    const double length = Length(v);
    span.line = true;
    if (!(length > 0.0))
        return span;
    const Vector along = 1.0 / length * v;
    span.first = {first.point, along};
    span.last = {last.point, along};
    span.joint = span.last;
    span.sound = true;
    return span;
}

/// The greedy fit of one curve.
class Fitter {
public:
    Fitter(const Curve_Samples& samples, double tolerance, bool lines)
        : samples_(samples), curve_(samples.Curve()), tolerance_(tolerance), lines_(lines)
    {
    }

    Arc_Path Fit()
    {
        const std::vector<Curve_Piece> pieces = lines_ ? samples_.Pieces_between_Corners() : samples_.Pieces();
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const bool end = i + 1 == pieces.size();
            Curve_Piece piece = pieces[i];
            const Curve_Place next = end && !curve_.closed ? curve_.at(curve_.to) : pieces[end ? 0 : i + 1].first;
            const Vector onward = next.point;
            const double gap = Length(onward - piece.last.point);
            const bool apart = gap > Curve_Samples::Least * samples_.Size();
            if (!apart)
                piece.last.point = onward;
            if (piece.circle)
                Fit_Circle(piece);
            else
                Fit_Piece(piece);
            if (apart)
                Join(piece.to, piece.last, onward);
        }
        path_.parameters.push_back(curve_.to);
        Drop_Short();
        return std::move(path_);
    }

private:
    static constexpr int Own_Points = 8;  // of the curve that a span is held against at least
    static constexpr int Probes = 8;
    static constexpr double Near = 1e-3;  // of a span's length: how exactly its end is looked for

    void Add(double t, Vector from, Vector to, double bulge)
    {
        path_.elements.push_back({from, to, bulge});
        path_.parameters.push_back(t);
    }

    void Tell(double off, double t)
    {
        if (off > path_.largest_deviation) {
            path_.largest_deviation = off;
            path_.at = t;
        }
    }

    /// An exact arc, in parts of half a turn at the most.
    void Fit_Circle(const Curve_Piece& piece)
    {
        constexpr int eighths = 8;  // a dwell of a whole turn has those of it
        const double step = (piece.to - piece.from) / eighths;
        const double turned = eighths * Turn(piece.first.tangent, curve_.at(piece.from + step).tangent);
        const int parts = std::max(1, static_cast<int>(std::ceil(std::abs(turned) / PI - 1e-6)));
        const double bulge = lines_ ? 0.0 : std::tan(0.25 * turned / parts);
        Vector from = piece.first.point;
        for (int i = 1; i <= parts; ++i) {
            const double start = piece.from + (piece.to - piece.from) * (i - 1) / parts;
            const double end = piece.from + (piece.to - piece.from) * i / parts;
            const Vector to = i == parts ? piece.last.point : curve_.at(end).point;
            Add(start, from, to, bulge);
            const Vector chord = to - from;
            const Vector tangent = Turned(1.0 / Length(chord) * chord, Direction(-0.5 * turned / parts));
            const Curve_Place place{from, tangent};
            for (int k = 1; k < 4; ++k) {
                const double t = start + (end - start) * k / 4;
                Tell(std::abs(Beside(curve_.at(t).point, place, Curvature(bulge, Length(chord)))), t);
            }
            from = to;
        }
    }

    /// What joins two pieces that lie apart: the arc that leaves along the first.
    void Join(double t, const Curve_Place& leaves, Vector to)
    {
        const Vector chord = to - leaves.point;
        const double bulge = lines_ ? 0.0 : Tangent_of_Half(leaves.tangent, chord);
        Add(t, leaves.point, to, std::abs(bulge) <= 1.0 ? bulge : 0.0);
    }

    Span Make(const Curve_Place& first, const Curve_Place& last) const
    {
        return lines_ ? Line(first, last) : Biarc(first, last);
    }

    /// Asks a question of the places of the curve that a span is held against, until one says no.
    template <class Question>
    bool Everywhere(double from, double to, Question holds) const
    {
        const auto& nodes = samples_.Nodes();
        const auto first = std::upper_bound(nodes.begin(), nodes.end(), from,
                                            [](double t, const Curve_Samples::Node& n) { return t < n.t; });
        const auto after =
            std::lower_bound(first, nodes.end(), to, [](const Curve_Samples::Node& n, double t) { return n.t < t; });
        const std::ptrdiff_t count = after - first;
        // A few first: a span that is too long leaves the curve there too.
        for (int k = 1; k < 2 * Probes && count > 4 * Probes; k += 2)
            if (!holds(first[count * k / (2 * Probes)].place))
                return false;
        for (auto node = first; node != after; ++node)
            if (!holds(node->place))
                return false;
        if (count < Own_Points)
            for (int i = 1; i <= Own_Points; ++i)
                if (!holds(curve_.at(from + (to - from) * i / (Own_Points + 1))))
                    return false;
        return true;
    }

    /// Whether the curve has not turned back since a place.
    bool Goes_On(const Curve_Place& place, const Curve_Place& first) const
    {
        return lines_ || Dot(place.tangent, first.tangent) > 0.0;
    }

    /// The largest distance of the curve from a span; infinite for one that cannot be, or is beyond the tolerance.
    double Off(const Curve_Place& first, const Curve_Place& last, double from, double to) const
    {
        const Span span = Make(first, last);
        double worst = 0.0;
        const bool held = span.sound && Everywhere(from, to, [&](const Curve_Place& place) {
                              worst = std::max(worst, span.Off(place.point));
                              return Goes_On(place, first) && worst <= tolerance_;
                          });
        return held ? worst : std::numeric_limits<double>::infinity();
    }

    bool Holds(const Curve_Place& first, const Curve_Place& last, double from, double to) const
    {
        const Span span = Make(first, last);
        if (!span.sound)
            return false;
        const Band before(span.first, span.curvature_1, tolerance_);
        const Band after(span.last, span.curvature_2, tolerance_);
        return Everywhere(from, to, [&](const Curve_Place& place) {
            return Goes_On(place, first) && (span.Before_Joint(place.point) ? before : after).Holds(place.point);
        });
    }

    struct Knot {
        double t;
        Curve_Place place;
    };

    /// The farthest end of a span that starts at a knot.
    Knot Farthest(const Knot& start, const Knot& end)
    {
        // Where nothing holds, as at a cusp: an eighth of a node's step, so that there is an end to it.
        const double least = 0.125 * (curve_.to - curve_.from) / Curve_Samples::Steps;
        const auto knot_at = [&](double t) { return t >= end.t ? end : Knot{t, curve_.at(t)}; };
        double step = step_ > 0.0 ? step_ : (end.t - start.t) / 16;
        Knot good = start;
        Knot bad = end;
        bool failed = false;
        while (true) {
            const Knot trial = knot_at(good.t == start.t ? start.t + step : start.t + 1.25 * (good.t - start.t));
            if (Holds(start.place, trial.place, start.t, trial.t)) {
                good = trial;
                if (failed || trial.t >= end.t)
                    break;
            } else {
                bad = trial;
                failed = true;
                if (good.t > start.t)
                    break;
                step *= 0.5;
                if (step < least)
                    return knot_at(start.t + least);
            }
        }
        while (failed && bad.t - good.t > Near * (good.t - start.t)) {
            const Knot trial = knot_at(0.5 * (good.t + bad.t));
            (Holds(start.place, trial.place, start.t, trial.t) ? good : bad) = trial;
        }
        step_ = good.t - start.t;
        return good;
    }

    void Fit_Piece(const Curve_Piece& piece)
    {
        const Knot end{piece.to, piece.last};
        std::vector<Knot> knots{{piece.from, piece.first}};
        while (knots.back().t < end.t)
            knots.push_back(Farthest(knots.back(), end));
        if (knots.size() > 2)
            Balance(knots);
        for (std::size_t i = 0; i + 1 < knots.size(); ++i)
            Put(knots[i], knots[i + 1]);
    }

    /// The last span is what was left over: it and the one before it are made to depart alike.
    void Balance(std::vector<Knot>& knots) const
    {
        constexpr int halvings = 12;
        const Knot& start = knots[knots.size() - 3];
        const Knot& end = knots.back();
        Knot& middle = knots[knots.size() - 2];
        double low = start.t;
        double high = middle.t;
        for (int i = 0; i < halvings; ++i) {
            const double t = 0.5 * (low + high);
            const Knot trial{t, curve_.at(t)};
            const double first = Off(start.place, trial.place, start.t, t);
            const double second = Off(trial.place, end.place, t, end.t);
            if (first <= tolerance_ && second <= first) {
                middle = trial;
                high = t;
            } else if (second <= tolerance_ && first <= second) {
                middle = trial;
                low = t;
            } else {
                low = t;  // the second is still too long
            }
        }
    }

    void Put(const Knot& first, const Knot& last)
    {
        constexpr std::size_t points = 16;
        Span span = Make(first.place, last.place);
        if (!span.sound)
            span = Line(first.place, last.place);
        if (!span.sound)
            return;
        const double step = (last.t - first.t) / points;
        std::array<double, points + 1> off{};
        for (std::size_t i = 1; i < points; ++i) {
            const double t = first.t + step * static_cast<double>(i);
            off[i] = span.Off(curve_.at(t).point);
            Tell(off[i], t);
        }
        // The parabola through the largest and its neighbours tells where the summit is.
        const auto top = static_cast<std::size_t>(std::ranges::max_element(off) - off.begin());
        if (top > 0 && top < points) {
            const double bend = 2.0 * off[top] - off[top - 1] - off[top + 1];
            const double shift = bend > 0.0 ? 0.5 * (off[top + 1] - off[top - 1]) / bend : 0.0;
            const double t = first.t + step * (static_cast<double>(top) + shift);
            Tell(span.Off(curve_.at(t).point), t);
        }
        if (span.line) {
            Add(first.t, first.place.point, last.place.point, 0.0);
            return;
        }
        Add(first.t, first.place.point, span.joint.point, span.bulge_1);
        Add(0.5 * (first.t + last.t), span.joint.point, last.place.point, span.bulge_2);
    }

    /// An element too short to be cut leaves its end to the one before it.
    void Drop_Short()
    {
        const double least = Curve_Samples::Least * samples_.Size();
        auto& elements = path_.elements;
        for (std::size_t i = elements.size(); i-- > 0 && elements.size() > 1;) {
            if (Length(elements[i].to - elements[i].from) >= least)
                continue;
            if (i > 0)
                elements[i - 1].to = elements[i].to;
            else
                elements[1].from = elements[0].from;
            elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(i));
            path_.parameters.erase(path_.parameters.begin() + static_cast<std::ptrdiff_t>(i > 0 ? i : 1));
        }
    }

    const Curve_Samples& samples_;
    const Shop_Curve& curve_;
    double tolerance_;
    bool lines_;
    double step_ = 0.0;  // of the last span
    Arc_Path path_;
};

/// What was missed between the points that a span was held against is made up for by a narrower bound.
Arc_Path Fit(const Curve_Samples& samples, double tolerance, bool lines)
{
    constexpr int tries = 5;
    if (!(tolerance >= Least_Tolerance * samples.Size()) || !(tolerance <= Most_Tolerance * samples.Size()))
        throw Fault{invalid_argument};
    double bound = tolerance;
    Arc_Path path;
    for (int i = 0; i < tries; ++i) {
        path = Fitter(samples, bound, lines).Fit();
        if (path.largest_deviation <= tolerance)
            break;
        bound *= std::max(0.5, 0.999 * tolerance / path.largest_deviation);
    }
    return path;
}

}  // namespace

Curve_Samples::Curve_Samples(const Shop_Curve& curve) : curve_(curve)
{
    if (!(curve.to > curve.from))
        throw Fault{invalid_argument};
    constexpr double infinite = std::numeric_limits<double>::infinity();
    low_ = {infinite, infinite};
    high_ = {-infinite, -infinite};
    nodes_.reserve(Steps + 1);
    for (int i = 0; i <= Steps; ++i) {
        const double t = curve.from + (curve.to - curve.from) * i / Steps;
        nodes_.push_back({t, curve.at(t)});
        const Curve_Place& place = nodes_.back().place;
        if (!Is_Number(place))
            throw Fault{invalid_argument};
        low_ = {std::min(low_.x, place.point.x), std::min(low_.y, place.point.y)};
        high_ = {std::max(high_.x, place.point.x), std::max(high_.y, place.point.y)};
    }
    size_ = std::max(high_.x - low_.x, high_.y - low_.y);
    if (!(size_ > 0.0))
        throw Fault{invalid_argument};

    const double least = 1e-5 * (curve.to - curve.from);
    std::vector<double> cuts{curve.from};
    const auto cut = [&](double t) {
        if (t - cuts.back() > least && curve.to - t > least)
            cuts.push_back(t);
    };
    std::vector<double> wanted;
    for (const Shop_Curve::Circle& c : curve.circles)
        if (c.to - c.from > least) {
            wanted.push_back(c.from);
            wanted.push_back(c.to);
        }
    const auto is_corner = [&](const Curve_Place& a, const Curve_Place& b) {
        return std::abs(Turn(a.tangent, b.tangent)) > Corner || Length(b.point - a.point) > Least * size_;
    };
    for (const double t : curve.breaks)
        if (t > curve.from && t < curve.to && is_corner(Before(t), curve.at(t)))
            wanted.push_back(t);
    std::ranges::sort(wanted);
    for (const double t : wanted)
        cut(t);
    cuts.push_back(curve.to);
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const double middle = 0.5 * (cuts[i] + cuts[i + 1]);
        const bool circle = std::ranges::any_of(
            curve.circles, [&](const Shop_Curve::Circle& c) { return c.from < middle && middle < c.to; });
        pieces_.push_back({cuts[i], cuts[i + 1], circle, curve.at(cuts[i]), Before(cuts[i + 1]), false});
    }
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const bool end = i + 1 == pieces_.size();
        if (end && !curve.closed)
            break;
        pieces_[i].corner = is_corner(pieces_[i].last, pieces_[end ? 0 : i + 1].first);
    }
}

Curve_Place Curve_Samples::Before(double t) const
{
    constexpr double hair = 1e-12;
    return curve_.at(t - hair * (curve_.to - curve_.from));
}

std::vector<Curve_Piece> Curve_Samples::Pieces_between_Corners() const
{
    std::vector<Curve_Piece> joined;
    for (const Curve_Piece& piece : pieces_) {
        if (joined.empty() || joined.back().corner) {
            joined.push_back(piece);
        } else {
            joined.back().to = piece.to;
            joined.back().last = piece.last;
            joined.back().corner = piece.corner;
        }
        joined.back().circle = false;
    }
    return joined;
}

Arc_Path Fit_Biarcs(const Curve_Samples& samples, double tolerance)
{
    return Fit(samples, tolerance, false);
}

Arc_Path Fit_Biarcs(const Shop_Curve& curve, double tolerance)
{
    return Fit_Biarcs(Curve_Samples(curve), tolerance);
}

Arc_Path Fit_Lines(const Curve_Samples& samples, double tolerance)
{
    return Fit(samples, tolerance, true);
}

}  // namespace lobemax
