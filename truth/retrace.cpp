// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/retrace.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"

namespace lobemax {

namespace {

constexpr double nothing = -std::numeric_limits<double>::infinity();
constexpr std::size_t few = 200;  // elements that are all looked at

struct Arc {
    Vector center;
    double radius;
    Vector middle;       // unit, from the centre to the middle of the arc
    double half_cosine;  // of half its angle
};

Arc Arc_of(const Surface_Element& element)
{
    const Vector chord = element.to - element.from;
    const double b = element.bulge;
    const double length = Length(chord);
    const Vector half = element.from + 0.5 * chord;
    // The arc leaves its chord on the right for a positive bulge, its centre lies on the left.
    const Vector left = 1.0 / length * Quarter(chord);
    const double toward = length * (1.0 - b * b) / (4.0 * b);
    const double sense = b < 0.0 ? 1.0 : -1.0;
    const double q = b * b;
    return {half + toward * left, length * (1.0 + q) / (4.0 * std::abs(b)), sense * left, (1.0 - q) / (1.0 + q)};
}

/// Puts arcs in place of the lines that span a hollow: each turns by the mean of the turns at its ends. What turns by
/// more is a corner.
void Bend_Hollows(std::vector<Surface_Element>& elements, int hollow)
{
    constexpr double corner = 0.2;  // radians
    const std::size_t count = elements.size();
    const auto turn_before = [&](std::size_t i) {
        const Surface_Element& before = elements[(i + count - 1) % count];
        const Vector a = before.to - before.from;
        const Vector b = elements[i].to - elements[i].from;
        return std::atan2(Cross(a, b), Dot(a, b));
    };
    if (count == 0)
        return;
    double here = turn_before(0);
    const double first = here;
    for (std::size_t i = 0; i < count; ++i) {
        const double next = i + 1 < count ? turn_before(i + 1) : first;
        const bool bends = hollow * here > 0.0 && hollow * next > 0.0;
        if (bends && std::abs(here) < corner && std::abs(next) < corner)
            elements[i].bulge = std::tan(0.125 * (here + next));
        here = next;
    }
}

Surface_Path::Block Circle_around(Vector low, Vector high, double reach)
{
    const Vector center = 0.5 * (low + high);
    return {center, Length(high - center), reach};
}

/// The follower at one cam angle, in the cam's coordinates: where it stands for a displacement, and which displacement
/// brings it into touch. What is looked for is `push` times the displacement: the surface pushes it up.
class Placed_Follower {
public:
    Placed_Follower(const Mechanism& m, double theta) : m_(m)
    {
        const double turned = theta * Rad_per_Deg;
        if (m.body == Cam_Body::disk) {
            const Vector e = Direction(-m.rot * turned);
            axis_ = e;
            base_ = m.arm ? Turned({m.pivot_x, m.pivot_y}, e) : Turned({0.0, m.roller ? -m.rot * m.offset : 0.0}, e);
            sense_ = m.swing;
            zero_angle_ = m.pivot_angle + PI - m.rot * turned + m.swing * m.rest;
            push_ = m.side;
        } else {
            axis_ = {0.0, 1.0};
            base_ = {m.arm ? m.rot * m.pivot_x : 0.0, 0.0};
            // Seen with Lambda to the right the arm of a clockwise cam is mirrored, and again where Z counts downwards.
            sense_ = m.swing * m.rot * m.z_sense;
            zero_angle_ = m.z_sense * (m.rot > 0 ? m.rest : PI - m.rest);
            const double level = m.arm ? m.swing * m.z_sense * std::cos(m.rest) : 1.0;
            push_ = level < 0.0 ? -m.side : m.side;
        }
    }

    int Push() const { return push_; }

    /// Brings the follower to a displacement: what Covers and Covers_Circle look at.
    void Stand(double s)
    {
        if (!m_.arm) {
            center_ = base_ + (m_.rest + s) * axis_;
            return;
        }
        const Vector along = Direction(zero_angle_ + sense_ * s);
        center_ = base_ + m_.arm_length * along;
        if (!m_.roller)
            axis_ = sense_ * Quarter(along);
    }

    Vector Place() const { return center_; }

    /// Whether a circle comes into the follower.
    bool Covers_Circle(Vector center, double radius) const
    {
        if (!m_.roller)
            return Beyond_Face(center) + radius > 0.0;
        const double reach = m_.roller_radius + radius;
        return Square(center - center_) < reach * reach;
    }

    /// How far a point stands out over the face.
    double Beyond_Face(Vector point) const
    {
        return m_.arm ? Dot(point - base_, axis_) + m_.offset : Dot(point - center_, axis_);
    }

    bool Covers(const Surface_Element& element) const
    {
        if (!m_.roller) {
            const double tiny = 1e-13 * m_.prime;
            if (element.bulge != 0.0) {
                const Arc arc = Arc_of(element);
                if (Dot(axis_, arc.middle) >= arc.half_cosine && Beyond_Face(arc.center) + arc.radius > tiny)
                    return true;
            }
            return Beyond_Face(element.from) > tiny || Beyond_Face(element.to) > tiny;
        }
        constexpr double touching = 1.0 - 1e-13;
        const double reach = m_.roller_radius * touching;
        return Square_of_Distance(element) < reach * reach;
    }

    /// The largest `push` times displacement at which the follower touches the element; none where it never does.
    double Touch(const Surface_Element& element) const
    {
        double best = std::max(Touch_Start(element), Touch_Circle(element.to, 0.0, 1));
        if (element.bulge != 0.0) {
            const Arc arc = Arc_of(element);
            for (const int outside : {1, -1}) {
                const double s = Touch_Circle(arc.center, arc.radius, outside);
                if (s <= best)
                    continue;
                if (Touches_Within(arc, push_ * s, outside))
                    best = s;
            }
        } else if (m_.roller) {
            if (best != nothing) {
                Placed_Follower there = *this;
                there.Stand(push_ * best);
                if (!there.Covers(element))
                    return best;
            }
            best = std::max(best, Touch_Line(element));
        }
        return best;
    }

    /// The same for the point where the element starts.
    double Touch_Start(const Surface_Element& element) const { return Touch_Circle(element.from, 0.0, 1); }

private:
    double Square_of_Distance(const Surface_Element& element) const
    {
        if (element.bulge != 0.0) {
            const Arc arc = Arc_of(element);
            const Vector d = center_ - arc.center;
            const double length = Length(d);
            if (Dot(d, arc.middle) >= arc.half_cosine * length) {
                const double gap = length - arc.radius;
                return gap * gap;
            }
            return std::min(Square(center_ - element.from), Square(center_ - element.to));
        }
        const Vector chord = element.to - element.from;
        const Vector d = center_ - element.from;
        const double square = Square(chord);
        const double x = square > 0.0 ? std::clamp(Dot(d, chord) / square, 0.0, 1.0) : 0.0;
        return Square(d - x * chord);
    }

    /// Whether the follower that touches an arc's whole circle touches the arc.
    bool Touches_Within(const Arc& arc, double s, int outside) const
    {
        Placed_Follower there = *this;
        there.Stand(s);
        const Vector d = m_.roller ? static_cast<double>(arc.radius >= m_.roller_radius || outside > 0 ? 1 : -1) *
                                         (there.center_ - arc.center)
                                   : there.axis_;
        return Dot(d, arc.middle) >= arc.half_cosine * Length(d);
    }

    /// An arm at such an angle has the displacement.
    double Swing_at(double angle) const { return std::remainder(sense_ * (angle - zero_angle_), PI2); }

    /// Touching a circle from outside, or, a roller in a hollow, from inside; a point has the radius 0.
    double Touch_Circle(Vector center, double radius, int outside) const
    {
        const Vector u = center - base_;
        if (!m_.roller) {
            if (outside < 0)
                return nothing;
            if (!m_.arm)
                return push_ * (Dot(u, axis_) + radius - m_.rest);
            const double d = Length(u);
            const double c = m_.offset + radius;
            if (d <= std::abs(c))
                return nothing;
            return push_ * Swing_at(std::atan2(u.y, u.x) + sense_ * std::asin(c / d));
        }
        const double apart = outside > 0 ? radius + m_.roller_radius : std::abs(radius - m_.roller_radius);
        if (!m_.arm) {
            const double across = Cross(axis_, u);
            const double square = apart * apart - across * across;
            if (square < 0.0)
                return nothing;
            // In a hollow the roller lies on the arc from the other side of its centre.
            const double leg = outside > 0 || radius < m_.roller_radius ? std::sqrt(square) : -std::sqrt(square);
            return push_ * (Dot(u, axis_) - m_.rest) + leg;
        }
        const double d = Length(u);
        const double r = m_.arm_length;
        const double cosine = (r * r + d * d - apart * apart) / (2.0 * r * d);
        if (!(std::abs(cosine) <= 1.0))
            return nothing;
        const double leg = outside > 0 || radius < m_.roller_radius ? std::acos(cosine) : -std::acos(cosine);
        return push_ * Swing_at(std::atan2(u.y, u.x) + sense_ * push_ * leg);
    }

    /// A roller that touches a line between its ends.
    double Touch_Line(const Surface_Element& element) const
    {
        const Vector chord = element.to - element.from;
        const double length = Length(chord);
        if (length == 0.0)
            return nothing;
        const Vector along = 1.0 / length * chord;
        double best = nothing;
        const auto take = [&](double s, Vector center) {
            const double place = Dot(center - element.from, along);
            if (place >= 0.0 && place <= length)
                best = std::max(best, push_ * s);
        };
        if (!m_.arm) {
            Vector normal = Quarter(along);
            const double rise = Dot(axis_, normal);
            if (rise == 0.0)
                return nothing;
            if (rise * push_ < 0.0)
                normal = -1.0 * normal;
            const double t = (m_.roller_radius - Dot(base_ - element.from, normal)) / Dot(axis_, normal);
            take(t - m_.rest, base_ + t * axis_);
            return best;
        }
        for (const double to : {1.0, -1.0}) {
            const Vector normal = to * Quarter(along);
            const double cosine = (m_.roller_radius - Dot(base_ - element.from, normal)) / m_.arm_length;
            if (std::abs(cosine) > 1.0)
                continue;
            // Of the two angles the one whose motion upwards leaves the line.
            const double angle = std::atan2(normal.y, normal.x) - sense_ * push_ * std::acos(cosine);
            take(Swing_at(angle), base_ + m_.arm_length * Direction(angle));
        }
        return best;
    }

    const Mechanism& m_;
    Vector axis_;    // the way of the follower, or the normal of its face
    Vector base_;    // a point of the axis, or the pivot
    Vector center_;  // of the roller; of a translating face its foot
    double sense_ = 1.0;
    double zero_angle_ = 0.0;  // of the arm at displacement 0
    int push_ = 1;
};

/// Elements, blocks and groups in the coordinates of the follower at an angle.
class Search {
public:
    Search(const Mechanism& follower, const Surface_Path& surface) : m_(follower), surface_(surface)
    {
        if (m_.body == Cam_Body::disk)
            return;
        around_ = PI2 * m_.prime;
        if (m_.body == Cam_Body::barrel) {
            places_.reserve(surface_.Elements().size());
            for (const Surface_Element& element : surface_.Elements())
                places_.push_back({Direction(element.from.x / m_.prime), Direction(element.to.x / m_.prime)});
        }
    }

    /// @param expected  displacement that the surface was made for; the follower is looked for within a quarter turn of
    ///                  an arm, on its own side of the cam
    /// @return displacement times push, nothing where the follower meets no element
    double At(double theta, double expected, int& push)
    {
        Placed_Follower follower(m_, theta);
        push = follower.Push();
        expected_ = push * expected;
        passed_ = m_.prime * theta * Rad_per_Deg;
        turned_ = Direction(theta * Rad_per_Deg);
        follower.Stand(expected);
        toward_ = follower.Place();
        const std::size_t count = surface_.Elements().size();
        double best = nothing;
        if (in_touch_ && count > few) {  // the contact goes on by about an element a step
            for (std::size_t k = contact_; k < contact_ + 3; ++k) {
                const Surface_Element element = Brought(k % count);
                const bool is_short = Square(element.to - element.from) < 0.01 * m_.prime * m_.prime;
                Better(is_short ? follower.Touch_Start(element) : follower.Touch(element), k % count, best);
            }
        }
        if (best == nothing)
            for (std::size_t i = 0; i < count; ++i)
                if (In_View(surface_.Elements()[i].from, 0.0))
                    Better(follower.Touch(Brought(i)), i, best);
        if (best == nothing)
            return best;
        follower.Stand(push * best);
        while (Raise(follower, push, best)) {
        }
        return best;
    }

    /// The element that was touched last.
    std::size_t Contact() const { return contact_; }

private:
    struct Place {
        Vector from;
        Vector to;
    };

    bool Better(double s, std::size_t i, double& best)
    {
        if (s <= best || !In_Reach(s))
            return false;
        best = s;
        contact_ = i;
        in_touch_ = true;
        return true;
    }

    /// An arm stays on its own side of the line from its pivot to the cam centre, and of its track.
    bool In_Reach(double s) const
    {
        if (!m_.arm)
            return true;
        if (around_ == 0.0 && m_.roller) {
            const double gamma = m_.rest + m_.side * s;
            return gamma > 0.0 && gamma < PI;
        }
        return std::abs(s - expected_) <= PIH;
    }

    /// Lifts the follower off every element that comes into it. @return whether there was one
    bool Raise(Placed_Follower& follower, int push, double& best)
    {
        constexpr std::size_t size = Surface_Path::Block_Size;
        constexpr std::size_t group = Surface_Path::Group_Size;
        const auto elements = surface_.Elements();
        const auto blocks = surface_.Blocks();
        const auto groups = surface_.Groups();
        bool raised = false;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            if (!Meets(follower, groups[g]))
                continue;
            for (std::size_t b = g * group; b < std::min((g + 1) * group, blocks.size()); ++b) {
                if (!Meets(follower, blocks[b]))
                    continue;
                for (std::size_t i = b * size; i < std::min((b + 1) * size, elements.size()); ++i) {
                    const Surface_Element element = Brought(i);
                    if (!follower.Covers_Circle(element.from, blocks[b].reach) || !follower.Covers(element))
                        continue;
                    if (!Better(follower.Touch(element), i, best))
                        continue;
                    follower.Stand(push * best);
                    raised = true;
                }
            }
        }
        return raised;
    }

    /// An outer wall has the cam between its two sides: the follower meets its own.
    bool In_View(Vector point, double radius) const
    {
        return m_.side > 0 || around_ != 0.0 || Dot(point, toward_) > -radius * Length(toward_);
    }

    bool Meets(const Placed_Follower& follower, const Surface_Path::Block& block) const
    {
        if (around_ == 0.0)
            return follower.Covers_Circle(block.center, block.radius) && In_View(block.center, block.radius);
        const double beside = Beside(block.center.x);
        if (m_.body == Cam_Body::linear)
            return follower.Covers_Circle({beside, block.center.y}, block.radius);
        if (std::abs(beside) > m_.prime * PIH + block.radius)
            return false;
        return follower.Covers_Circle({m_.prime * std::sin(beside / m_.prime), block.center.y}, block.radius);
    }

    /// How far a place around the drum is beside the follower, on the shorter way.
    double Beside(double along) const
    {
        double beside = along - passed_;
        const double half = 0.5 * around_;
        while (beside > half)
            beside -= around_;
        while (beside < -half)
            beside += around_;
        return beside;
    }

    Surface_Element Brought(std::size_t i) const
    {
        Surface_Element here = surface_.Elements()[i];
        if (around_ == 0.0)
            return here;
        if (m_.body == Cam_Body::linear) {
            const double wide = here.to.x - here.from.x;
            here.from.x = Beside(here.from.x);
            here.to.x = here.from.x + wide;
            return here;
        }
        // A drum is seen along the roller's axis; its back is out of reach.
        const Place& place = places_[i];
        const bool front = Dot(turned_, place.from) > 0.0 && Dot(turned_, place.to) > 0.0;
        here.from.x = front ? m_.prime * Cross(turned_, place.from) : around_;
        here.to.x = front ? m_.prime * Cross(turned_, place.to) : around_;
        return here;
    }

    const Mechanism& m_;
    const Surface_Path& surface_;
    double around_ = 0.0;
    std::vector<Place> places_;  // of a drum's elements
    double passed_ = 0.0;
    double expected_ = 0.0;
    Vector turned_;
    Vector toward_;            // where the follower is expected
    std::size_t contact_ = 0;  // the element touched last
    bool in_touch_ = false;
};

}  // namespace

Surface_Path::Surface_Path(std::vector<Surface_Element> elements) : elements_(std::move(elements))
{
    for (std::size_t i = 0; i < elements_.size(); i += Block_Size) {
        Vector low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
        Vector high{nothing, nothing};
        double longest = 0.0;
        const auto take = [&](Vector p, double r) {
            low = {std::min(low.x, p.x - r), std::min(low.y, p.y - r)};
            high = {std::max(high.x, p.x + r), std::max(high.y, p.y + r)};
        };
        for (std::size_t k = i; k < std::min(i + Block_Size, elements_.size()); ++k) {
            const Surface_Element& element = elements_[k];
            // An arc lies within a circle about the middle of its chord, no flatter than half the chord.
            const double half = 0.5 * Length(element.to - element.from);
            longest = std::max(longest, 2.0 * half * std::max(1.0, std::abs(element.bulge)));
            take(element.from, 0.0);
            take(element.to, 0.0);
            if (element.bulge != 0.0)
                take(0.5 * (element.from + element.to), half * std::max(1.0, std::abs(element.bulge)));
        }
        blocks_.push_back(Circle_around(low, high, longest));
    }
    for (std::size_t b = 0; b < blocks_.size(); b += Group_Size) {
        Vector low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
        Vector high{nothing, nothing};
        for (std::size_t k = b; k < std::min(b + Group_Size, blocks_.size()); ++k) {
            const Block& block = blocks_[k];
            low = {std::min(low.x, block.center.x - block.radius), std::min(low.y, block.center.y - block.radius)};
            high = {std::max(high.x, block.center.x + block.radius), std::max(high.y, block.center.y + block.radius)};
        }
        groups_.push_back(Circle_around(low, high, 0.0));
    }
}

Surface_Path Surface_Path::Through(std::span<const Vector> points, double around, int hollow)
{
    std::vector<Surface_Element> elements;
    elements.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool last = i + 1 == points.size();
        Vector to = points[last ? 0 : i + 1];
        if (last)
            to.x += around;
        if (to.x != points[i].x || to.y != points[i].y)
            elements.push_back({points[i], to, 0.0});
    }
    if (hollow != 0)
        Bend_Hollows(elements, hollow);
    return Surface_Path(std::move(elements));
}

Retraced Retrace(const Mechanism& follower, const True_Motion& motion, const Surface_Path& surface,
                 std::span<const double> angles)
{
    Retraced result;
    result.s.reserve(angles.size());
    result.contact.reserve(angles.size());
    Search search(follower, surface);
    for (const double theta : angles) {
        int push = 1;
        const double wanted = motion.At(theta).s;
        const double touch = search.At(theta, wanted, push);
        const bool met = touch != nothing;
        const double s = met ? push * touch : std::numeric_limits<double>::quiet_NaN();
        double error = std::numeric_limits<double>::infinity();
        if (met)
            error = follower.arm ? std::abs(std::remainder(s - wanted, PI2)) : std::abs(s - wanted);
        if (error > result.largest_error) {
            result.largest_error = error;
            result.at = theta;
        }
        result.s.push_back(s);
        result.contact.push_back(search.Contact());
    }
    return result;
}

Retraced Retrace(const True_Cam& cam, const Surface_Path& surface, std::span<const double> angles)
{
    return Retrace(cam.Follower(), cam.Motion(), surface, angles);
}

std::vector<Vector> Points_left(const True_Cam& cam, std::span<const True_Point> points, double bound)
{
    const Mechanism& m = cam.Follower();
    const double around = m.body == Cam_Body::disk ? 0.0 : PI2 * m.prime;
    std::vector<Vector> left;
    for (const True_Point& point : points) {
        const bool cut = std::ranges::any_of(points, [&](const True_Point& other) {
            if (!m.roller)
                return Dot(point.surface - other.center, other.normal) > bound;
            Vector apart = point.surface - other.center;
            if (around != 0.0)
                apart.x = std::remainder(apart.x, around);
            const double reach = m.roller_radius - bound;
            return reach > 0.0 && Square(apart) < reach * reach;
        });
        if (!cut)
            left.push_back(point.surface);
    }
    return left;
}

}  // namespace lobemax
