// SPDX-License-Identifier: GPL-3.0-or-later
/// What the tests of the shop's files ask of arcs.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "shop/biarcs.h"

namespace lobemax::testing {

/// Direction of an element where it starts or ends, radians.
inline double Direction_of(const Surface_Element& e, bool at_end)
{
    const Vector chord = e.to - e.from;
    return std::atan2(chord.y, chord.x) + (at_end ? 2.0 : -2.0) * std::atan(e.bulge);
}

/// The largest kink between an element and the next, radians, and the widest gap.
struct Joints {
    double kink = 0.0;
    double gap = 0.0;
};
inline Joints Joints_of(const std::vector<Surface_Element>& elements, bool closed)
{
    Joints worst;
    for (std::size_t i = 0; i + (closed ? 0 : 1) < elements.size(); ++i) {
        const Surface_Element& next = elements[(i + 1) % elements.size()];
        worst.gap = std::max(worst.gap, Length(next.from - elements[i].to));
        const double kink = Direction_of(next, false) - Direction_of(elements[i], true);
        worst.kink = std::max(worst.kink, std::abs(std::remainder(kink, 2.0 * std::numbers::pi)));
    }
    return worst;
}

/// Distance of a point from an element, by its centre and ends.
inline double Distance(Vector p, const Surface_Element& e)
{
    const Vector chord = e.to - e.from;
    const double length = Length(chord);
    double best = std::min(Length(p - e.from), Length(p - e.to));
    if (e.bulge == 0.0) {
        const double x = Dot(p - e.from, chord) / (length * length);
        return x > 0.0 && x < 1.0 ? std::min(best, std::abs(Cross(chord, p - e.from)) / length) : best;
    }
    const double half = 2.0 * std::atan(e.bulge);  // of the arc's angle
    const double radius = length / (2.0 * std::sin(std::abs(half)));
    const Vector center = e.from + 0.5 * chord + (length / (2.0 * std::tan(half)) / length) * Vector{-chord.y, chord.x};
    const double start = std::atan2(e.from.y - center.y, e.from.x - center.x);
    const double here = std::atan2(p.y - center.y, p.x - center.x);
    double turned = std::remainder(here - start, 2.0 * std::numbers::pi);
    if (half < 0.0)
        turned = -turned;
    if (turned < 0.0)
        turned += 2.0 * std::numbers::pi;
    return turned <= 2.0 * std::abs(half) ? std::min(best, std::abs(Length(p - center) - radius)) : best;
}

/// Of the nearest element.
inline double Distance(Vector p, const std::vector<Surface_Element>& elements)
{
    double best = 1e300;
    for (const Surface_Element& e : elements)
        best = std::min(best, Distance(p, e));
    return best;
}

/// The area that closed elements go round, positive counterclockwise: chords and the segments of circles over them.
inline double Area(const std::vector<Surface_Element>& elements)
{
    double area = 0.0;
    for (const Surface_Element& e : elements) {
        area += 0.5 * Cross(e.from, e.to);
        if (e.bulge != 0.0) {
            const double angle = 4.0 * std::atan(e.bulge);
            const double radius = Length(e.to - e.from) / (2.0 * std::sin(0.5 * angle));
            area += 0.5 * radius * radius * (angle - std::sin(angle));
        }
    }
    return area;
}

inline double Length_Along(const std::vector<Surface_Element>& elements)
{
    double length = 0.0;
    for (const Surface_Element& e : elements) {
        const double half = 2.0 * std::atan(e.bulge);
        const double chord = Length(e.to - e.from);
        length += half == 0.0 ? chord : chord * half / std::sin(half);
    }
    return length;
}

/// The same arcs in short pieces, or points on them joined by straight lines.
inline std::vector<Surface_Element> Chopped(const std::vector<Surface_Element>& elements, double longest, bool straight)
{
    std::vector<Surface_Element> pieces;
    for (const Surface_Element& e : elements) {
        const Vector chord = e.to - e.from;
        const int parts = static_cast<int>(std::ceil(Length(chord) / longest));
        const double half = 2.0 * std::atan(e.bulge);
        Vector from = e.from;
        for (int i = 1; i <= parts; ++i) {
            Vector to = e.from + static_cast<double>(i) / parts * chord;
            if (half != 0.0) {
                // A point of an arc is seen from its start at an angle to the chord that is half of what is left.
                const double part = half * i / parts;
                const double reach = std::sin(part) / std::sin(half);
                to = e.from + reach * Turned(chord, Direction(part - half));
            }
            if (i == parts)
                to = e.to;
            pieces.push_back({from, to, straight ? 0.0 : std::tan(half / parts / 2.0)});
            from = to;
        }
    }
    return pieces;
}

}  // namespace lobemax::testing
