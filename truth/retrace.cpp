// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/retrace.h"

#include <algorithm>
#include <cmath>
#include <optional>

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
    // Of what does not turn the way of a hollow the angle itself is of no use: 0 stands for it.
    const auto turn_before = [&](std::size_t i) {
        const Surface_Element& before = elements[(i > 0 ? i : count) - 1];
        const Vector a = before.to - before.from;
        const Vector b = elements[i].to - elements[i].from;
        const double cross = Cross(a, b);
        return hollow * cross > 0.0 ? std::atan2(cross, Dot(a, b)) : 0.0;
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

/// The box around points, which may have a width of their own, as a circle.
class Box {
public:
    void Take(Vector p, double r)
    {
        low_ = {std::min(low_.x, p.x - r), std::min(low_.y, p.y - r)};
        high_ = {std::max(high_.x, p.x + r), std::max(high_.y, p.y + r)};
    }
    Surface_Path::Block Circle() const
    {
        Surface_Path::Block block;
        block.center = 0.5 * (low_ + high_);
        block.radius = Length(high_ - block.center);
        return block;
    }

private:
    Vector low_{-nothing, -nothing};
    Vector high_{nothing, nothing};
};

/// Of a point from a straight line between two others.
double Square_of_Distance(Vector point, Vector from, Vector to)
{
    const Vector chord = to - from;
    const Vector d = point - from;
    const double square = Square(chord);
    const double x = square > 0.0 ? std::clamp(Dot(d, chord) / square, 0.0, 1.0) : 0.0;
    return Square(d - x * chord);
}

/// The unit vector whose angle has a cosine, and a sine of a sign.
Vector Direction_of(double cosine, double sign)
{
    return {cosine, sign * std::sqrt((1.0 - cosine) * (1.0 + cosine))};
}

/// std::remainder(angle, PI2), without its long division where the angle is below three half turns: there the
/// difference is exact.
double Short_Way(double angle)
{
    const double size = std::abs(angle);
    if (size <= 0.5 * PI2)
        return angle;
    if (size < 1.5 * PI2)
        return angle - std::copysign(PI2, angle);
    return std::remainder(angle, PI2);
}

/// The straight lines of a group of blocks.
struct Lines {
    static constexpr std::size_t Size = Surface_Path::Group_Size;
    using Row = std::array<double, Size>;
    static constexpr double far = 1e150;  // where there is none

    Lines()
    {
        x.fill(far);
        y.fill(far);
    }
    void Put(std::size_t k, Vector from, Vector to)
    {
        x[k] = from.x;
        y[k] = from.y;
        chord_x[k] = to.x - from.x;
        chord_y[k] = to.y - from.y;
        const double square = chord_x[k] * chord_x[k] + chord_y[k] * chord_y[k];
        per_square[k] = square > 0.0 ? 1.0 / square : 0.0;
    }

    Row x{};
    Row y{};
    Row chord_x{};
    Row chord_y{};
    Row per_square{};
};

/// The follower at one cam angle, in the cam's coordinates: where it stands for a displacement, and which displacement
/// brings it into touch. What is looked for is `push` times the displacement: the surface pushes it up.
class Placed_Follower {
public:
    /// It stands at cam angle 0.
    explicit Placed_Follower(const Mechanism& m) : m_(m)
    {
        if (m.body == Cam_Body::disk) {
            axis_at_zero_ = {1.0, 0.0};
            base_at_zero_ = m.arm ? Vector{m.pivot_x, m.pivot_y} : Vector{0.0, m.roller ? -m.rot * m.offset : 0.0};
            sense_ = m.swing;
            level_at_zero_ = Direction(m.pivot_angle + PI + m.swing * m.rest);
            push_ = m.side;
        } else {
            axis_at_zero_ = {0.0, 1.0};
            base_at_zero_ = {m.arm ? m.rot * m.pivot_x : 0.0, 0.0};
            // Seen with Lambda to the right the arm of a clockwise cam is mirrored, and again where Z counts downwards.
            sense_ = m.swing * m.rot * m.z_sense;
            level_at_zero_ = Direction(m.z_sense * (m.rot > 0 ? m.rest : PI - m.rest));
            const double level = m.arm ? m.swing * m.z_sense * std::cos(m.rest) : 1.0;
            push_ = level < 0.0 ? -m.side : m.side;
        }
        axis_ = axis_at_zero_;
        base_ = base_at_zero_;
        level_ = level_at_zero_;
    }

    /// Brings it to a cam angle, degrees; on a drum the surface goes by instead.
    void Turn_to(double theta)
    {
        if (m_.body != Cam_Body::disk)
            return;
        const Vector e = Direction(-m_.rot * theta * Rad_per_Deg);
        axis_ = e;
        base_ = Turned(base_at_zero_, e);
        level_ = Turned(level_at_zero_, e);
    }

    int Push() const { return push_; }

    /// Brings the follower to a displacement: what Covers, Covers_Circle and Off_Lines look at.
    void Stand(double s)
    {
        if (!m_.arm) {
            center_ = base_ + (m_.rest + s) * axis_;
            return;
        }
        const Vector along = Turned(level_, Direction(sense_ * s));
        center_ = base_ + m_.arm_length * along;
        if (!m_.roller)
            axis_ = sense_ * Quarter(along);
    }

    Vector Place() const { return center_; }
    /// The normal of a face, and how far its line lies from the origin along it.
    Vector Normal() const { return axis_; }
    double Height() const { return m_.arm ? Dot(base_, axis_) - m_.offset : Dot(center_, axis_); }

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

    /// How far the follower stands off straight lines; below 0 in them. Those that it comes nearer to than a depth are
    /// marked.
    double Off_Lines(const Lines& lines, double depth, std::array<bool, Lines::Size>& near) const
    {
        std::array<double, Lines::Size> off{};  // square of the distance, or the height over the face's line
        const double reach = m_.roller_radius + depth;
        if (m_.roller) {
            for (std::size_t k = 0; k < Lines::Size; ++k) {
                const double dx = center_.x - lines.x[k];
                const double dy = center_.y - lines.y[k];
                double t = (dx * lines.chord_x[k] + dy * lines.chord_y[k]) * lines.per_square[k];
                t = t < 0.0 ? 0.0 : t;
                t = t > 1.0 ? 1.0 : t;
                const double x = dx - t * lines.chord_x[k];
                const double y = dy - t * lines.chord_y[k];
                off[k] = x * x + y * y;
            }
        } else {
            const double height = Height();
            for (std::size_t k = 0; k < Lines::Size; ++k) {
                const double start = lines.x[k] * axis_.x + lines.y[k] * axis_.y;
                const double rise = lines.chord_x[k] * axis_.x + lines.chord_y[k] * axis_.y;
                off[k] = height - start - (rise > 0.0 ? rise : 0.0);
            }
        }
        const double bound = m_.roller ? reach * reach : depth;
        double least = off[0];
        for (std::size_t k = 0; k < Lines::Size; ++k) {
            least = off[k] < least ? off[k] : least;
            near[k] = !(off[k] > bound);
        }
        return m_.roller ? std::sqrt(least) - m_.roller_radius : least;
    }

    /// Which elements of a block the follower is off by more than a margin, as far as their ends tell: a point of a
    /// chord that is d from the roller's centre has an end whose square of distance is no more than that of d and that
    /// of half the chord, and an arc stays within its height of its chord.
    void Mark_Clear(std::span<const Surface_Element> block, double margin,
                    std::array<bool, Surface_Path::Block_Size>& clear) const
    {
        const double reach = m_.roller_radius + margin;
        const double height = m_.roller ? 0.0 : Height();
        for (std::size_t k = 0; k < block.size(); ++k) {
            const Surface_Element& element = block[k];
            const double half = 0.25 * Square(element.to - element.from);
            const double arc = element.bulge != 0.0 ? std::abs(element.bulge) * std::sqrt(half) : 0.0;
            if (m_.roller) {
                const double nearest = std::min(Square(element.from - center_), Square(element.to - center_));
                clear[k] = nearest - half > (reach + arc) * (reach + arc);
            } else {
                clear[k] = height - std::max(Dot(element.from, axis_), Dot(element.to, axis_)) > arc + margin;
            }
        }
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

    /// What Touch gives of anything within a circle is no more than this; infinite where that is not known.
    double Highest_Touch(Vector center, double radius) const
    {
        constexpr double unknown = std::numeric_limits<double>::infinity();
        const double apart = m_.roller_radius + radius;
        const Vector u = center - base_;
        if (!m_.arm) {
            const double along = push_ * (Dot(u, axis_) - m_.rest);
            if (!m_.roller)
                return along + radius;
            const double across = Cross(axis_, u);
            const double square = apart * apart - across * across;
            return square < 0.0 ? nothing : along + std::sqrt(square);
        }
        // The swings at which the arm is within reach of the circle lie about the one that points to its centre.
        const double d = Length(u);
        Vector toward = u;
        double leg = 0.0;
        if (m_.roller) {
            const double r = m_.arm_length;
            const double cosine = (r * r + d * d - apart * apart) / (2.0 * r * d);
            if (cosine > 1.0)
                return nothing;
            if (!(cosine > -1.0))
                return unknown;
            leg = std::acos(cosine);
        } else {
            const double c = m_.offset;
            if (!(d - radius > std::abs(c)))
                return unknown;
            toward = Toward_Face(u, c / d);
            leg = std::asin(radius / d) + std::abs(std::asin(c / (d - radius)) - std::asin(c / d));
        }
        const double swing = Swing_at(toward);
        return std::abs(swing) + leg < 0.5 * PI2 ? push_ * swing + leg : unknown;  // else it may come round
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
        return lobemax::Square_of_Distance(center_, element.from, element.to);
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

    /// The displacement of an arm that points along a vector, within half a turn.
    double Swing_at(Vector along) const { return sense_ * std::atan2(Cross(level_, along), Dot(level_, along)); }

    /// Where an arm points whose face goes through a point at u from the pivot, by the face's offset over the distance.
    Vector Toward_Face(Vector u, double sine) const
    {
        return Turned(u, {std::sqrt((1.0 - sine) * (1.0 + sine)), sense_ * sine});
    }

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
            return push_ * Swing_at(Toward_Face(u, c / d));
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
        const double leg = outside > 0 || radius < m_.roller_radius ? 1.0 : -1.0;
        return push_ * Swing_at(Turned(u, Direction_of(cosine, sense_ * push_ * leg)));
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
            const Vector arm = Turned(normal, Direction_of(cosine, -sense_ * push_));
            take(Swing_at(arm), base_ + m_.arm_length * arm);
        }
        return best;
    }

    const Mechanism& m_;
    Vector axis_;    // the way of the follower, or the normal of its face
    Vector base_;    // a point of the axis, or the pivot
    Vector center_;  // of the roller; of a translating face its foot
    double sense_ = 1.0;
    Vector level_;  // the way of the arm at displacement 0, unit
    int push_ = 1;
    Vector axis_at_zero_;  // of the cam angle
    Vector base_at_zero_;
    Vector level_at_zero_;
};

/// Elements, blocks and groups in the coordinates of the follower at an angle.
class Search {
public:
    Search(const Mechanism& follower, const Surface_Path& surface, Looking looking)
        : m_(follower),
          surface_(surface),
          follower_(follower),
          everywhere_(looking == Looking::everywhere),
          margin_(rounding * (surface.Extent() + m_.prime + m_.pivot_distance)),
          quiet_(surface.Groups().size(), 0.0)
    {
        for (std::size_t g = 0; g < quiet_.size(); ++g) {
            const auto own = Blocks_of(g);
            Lines& lines = lines_.emplace_back();
            double& depth = depths_.emplace_back(0.0);
            for (std::size_t k = 0; k < own.size(); ++k) {
                lines.Put(k, own[k].from, own[k].to);
                depth = std::max(depth, own[k].depth);
            }
        }
        if (m_.body == Cam_Body::disk)
            return;
        around_ = PI2 * m_.prime;
        if (m_.body == Cam_Body::barrel) {
            places_.reserve(surface_.Elements().size());
            for (const Surface_Element& element : surface_.Elements())
                places_.push_back({Direction(element.from.x / m_.prime), Direction(element.to.x / m_.prime)});
            for (const Block& block : surface_.Blocks())
                block_places_.push_back({Direction(block.from.x / m_.prime), Direction(block.to.x / m_.prime)});
        }
    }

    /// @param expected  displacement that the surface was made for; the follower is looked for within a quarter turn of
    ///                  an arm, on its own side of the cam
    /// @return displacement times push, nothing where the follower meets no element
    double At(double theta, double expected, int& push)
    {
        Placed_Follower& follower = follower_;
        follower.Turn_to(theta);
        push = follower.Push();
        expected_ = push * expected;
        passed_ = m_.prime * theta * Rad_per_Deg;
        if (m_.body == Cam_Body::barrel)
            turned_ = Direction(theta * Rad_per_Deg);
        if (Has_Back()) {
            follower.Stand(expected);
            toward_ = follower.Place();
        }
        const std::size_t count = surface_.Elements().size();
        double best = nothing;
        if (in_touch_ && count > few) {                              // the contact goes on by about an element a step
            for (std::size_t k = contact_; k < contact_ + 3; ++k) {  // or by more, as long as that raises it
                const std::size_t i = k < count ? k : k - count;
                const Surface_Element element = Brought(i);
                const bool is_short = Square(element.to - element.from) < 0.01 * m_.prime * m_.prime;
                Better(is_short ? follower.Touch_Start(element) : follower.Touch(element), i, best);
            }
        }
        if (best == nothing)
            Come_Down(follower, best);
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
    using Block = Surface_Path::Block;
    static constexpr std::size_t Size = Surface_Path::Block_Size;
    static constexpr std::size_t Group = Surface_Path::Group_Size;
    static constexpr double unknown = -1.0;
    static constexpr double rounding = 1e-8;  // of the lengths there are: far above that of a double

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

    /// The furthest that any element pushes: a follower that comes from outside meets that one first. Blocks that
    /// cannot push as far as one that is known to are left out.
    void Come_Down(const Placed_Follower& follower, double& best)
    {
        const auto elements = surface_.Elements();
        const auto blocks = surface_.Blocks();
        const auto groups = surface_.Groups();
        const double slack = m_.arm ? rounding : margin_;  // of a displacement
        double known = nothing;
        const auto learn = [&](std::size_t i) {
            if (everywhere_ || !In_View(elements[i].from, 0.0))
                return;
            const double s = follower.Touch_Start(Brought(i));
            if (s > known && In_Reach(s))
                known = s;
        };
        const auto cannot = [&](const Block& block) {
            const std::optional<Vector> seen = Seen(block);
            return Hidden(block) > 0.0 || (seen && follower.Highest_Touch(*seen, block.radius) + slack < known);
        };
        for (std::size_t g = 0; g < groups.size(); ++g)
            learn(g * Group * Size);
        for (std::size_t g = 0; g < groups.size(); ++g)
            if (!cannot(groups[g]))
                for (std::size_t b = g * Group; b < std::min((g + 1) * Group, blocks.size()); ++b)
                    learn(b * Size);
        for (std::size_t g = 0; g < groups.size(); ++g) {
            if (cannot(groups[g]))
                continue;
            for (std::size_t b = g * Group; b < std::min((g + 1) * Group, blocks.size()); ++b) {
                if (cannot(blocks[b]))
                    continue;
                for (std::size_t i = b * Size; i < std::min((b + 1) * Size, elements.size()); ++i)
                    if (In_View(elements[i].from, 0.0))
                        Better(follower.Touch(Brought(i)), i, best);
            }
        }
    }

    /// Lifts the follower off every element that comes into it. @return whether there was one
    ///
    /// A group that stood off the follower by some length is left alone until follower and surface have moved against
    /// each other by as much: until then none of its points can have come into the follower, since no point of the
    /// surface comes nearer by more than that way.
    bool Raise(Placed_Follower& follower, int push, double& best)
    {
        bool raised = false;
        Move_to(follower);
        const auto due = [&](double quiet) { return !(way_ < quiet); };
        for (auto quiet = std::ranges::find_if(quiet_, due); quiet != quiet_.end();
             quiet = std::find_if(quiet + 1, quiet_.end(), due)) {
            const auto g = static_cast<std::size_t>(quiet - quiet_.begin());
            std::array<bool, Group> near{};
            const double off = Off(follower, g, near) - margin_;
            *quiet = way_ + std::max(off, 0.0);
            if (off > 0.0)
                continue;
            const std::size_t blocks = Blocks_of(g).size();
            for (std::size_t k = 0; k < blocks; ++k)
                if (near[k] && Raise_off(g * Group + k, follower, push, best)) {
                    raised = true;
                    near.fill(true);  // it stands elsewhere now
                }
        }
        return raised;
    }

    bool Raise_off(std::size_t b, Placed_Follower& follower, int push, double& best)
    {
        if (!Meets(follower, surface_.Blocks()[b]))
            return false;
        const std::size_t first = b * Size;
        auto block = surface_.Elements().subspan(first);
        block = block.first(std::min(Size, block.size()));
        if (around_ != 0.0) {
            for (std::size_t k = 0; k < block.size(); ++k)
                brought_[k] = Brought(first + k);
            block = std::span(brought_).first(block.size());
        }
        std::array<bool, Size> clear{};
        if (!everywhere_)
            follower.Mark_Clear(block, margin_, clear);
        bool raised = false;
        for (std::size_t k = 0; k < block.size(); ++k) {
            if (clear[k] || !follower.Covers(block[k]) || !Better(follower.Touch(block[k]), first + k, best))
                continue;
            follower.Stand(push * best);
            Move_to(follower);
            raised = true;
            clear.fill(false);  // it stands elsewhere now
        }
        return raised;
    }

    /// Adds the way that any point of the surface can have come nearer to the follower since it stood last.
    void Move_to(const Placed_Follower& follower)
    {
        const Vector place = m_.roller ? follower.Place() : follower.Normal();
        const double height = m_.roller ? 0.0 : follower.Height();
        if (stood_) {
            const double moved = Length(place - place_);
            // A point within the extent comes nearer to a line that turns by no more than the extent times the turn.
            way_ += m_.roller ? moved : surface_.Extent() * moved + std::abs(height - height_);
            if (around_ != 0.0)
                way_ += std::abs(passed_ - stood_passed_);
        }
        stood_ = true;
        place_ = place;
        height_ = height;
        stood_passed_ = passed_;
    }

    std::span<const Block> Blocks_of(std::size_t g) const
    {
        const auto all = surface_.Blocks();
        return all.subspan(g * Group, std::min(Group, all.size() - g * Group));
    }

    /// How far the follower stands off all elements of a group at least, as far as it is known, and which of its blocks
    /// may come into it.
    double Off(const Placed_Follower& follower, std::size_t g, std::array<bool, Group>& near) const
    {
        if (everywhere_) {
            near.fill(true);
            return unknown;
        }
        if (around_ == 0.0)
            return follower.Off_Lines(lines_[g], depths_[g] + margin_, near) - depths_[g];
        const auto blocks = Blocks_of(g);
        Lines seen;
        std::array<bool, Group> unseen{};
        double least = std::numeric_limits<double>::infinity();
        double bent = 0.0;
        for (std::size_t k = 0; k < blocks.size(); ++k) {
            const Block& block = blocks[k];
            const double hidden = Hidden(block);
            if (hidden > 0.0) {
                least = std::min(least, hidden);
                continue;
            }
            const double edge = Off_Edge(block);
            least = std::min(least, edge);
            if (edge <= 0.0) {
                unseen[k] = true;
                continue;
            }
            const double wide = block.to.x - block.from.x;
            if (m_.body == Cam_Body::linear) {
                const double x = Beside(block.center.x) + (block.from.x - block.center.x);
                seen.Put(k, {x, block.from.y}, {x + wide, block.to.y});
                continue;
            }
            // As it is seen the sine bends what was straight, by no more than an eighth of its width's square over the
            // drum's radius.
            const Place& place = block_places_[g * Group + k];
            seen.Put(k, {m_.prime * Cross(turned_, place.from), block.from.y},
                     {m_.prime * Cross(turned_, place.to), block.to.y});
            bent = std::max(bent, wide * wide / (8.0 * m_.prime));
        }
        const double depth = depths_[g] + bent;
        least = std::min(least, follower.Off_Lines(seen, depth + margin_, near) - depth);
        for (std::size_t k = 0; k < near.size(); ++k)
            near[k] = near[k] || unseen[k];
        return least;
    }

    /// An outer wall has the cam between its two sides: the follower meets its own.
    bool Has_Back() const { return m_.side < 0 && around_ == 0.0; }
    bool In_View(Vector point, double radius) const
    {
        return !Has_Back() || Dot(point, toward_) > -radius * Length(toward_);
    }

    bool Meets(const Placed_Follower& follower, const Block& block) const
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

    /// How far the drum has to turn at least until something of a block comes up from behind; 0 of one that is in
    /// sight.
    double Hidden(const Block& block) const
    {
        if (m_.body != Cam_Body::barrel)
            return 0.0;
        return std::max(0.0, std::abs(Beside(block.center.x)) - block.radius - m_.prime * PIH);
    }

    /// How far a block of a drum is from the edge of what is seen, of a linear cam from the end of a turn.
    double Off_Edge(const Block& block) const
    {
        const double sight = m_.body == Cam_Body::barrel ? m_.prime * PIH : 0.5 * around_;
        return sight - block.radius - std::abs(Beside(block.center.x));
    }

    /// Where the middle of a block is seen; none of one that is not seen as a whole.
    std::optional<Vector> Seen(const Block& block) const
    {
        if (around_ == 0.0)
            return block.center;
        if (Off_Edge(block) <= 0.0)
            return std::nullopt;
        const double beside = Beside(block.center.x);
        return Vector{m_.body == Cam_Body::barrel ? m_.prime * std::sin(beside / m_.prime) : beside, block.center.y};
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
    Placed_Follower follower_;
    double around_ = 0.0;
    std::vector<Place> places_;  // of a drum's elements
    std::vector<Place> block_places_;
    double passed_ = 0.0;
    double expected_ = 0.0;
    Vector turned_;
    Vector toward_;            // where the follower is expected
    std::size_t contact_ = 0;  // the element touched last
    bool in_touch_ = false;

    std::array<Surface_Element, Size> brought_;  // of a block
    bool everywhere_;
    double margin_;               // of a length
    double way_ = 0.0;            // of follower and surface against each other since the start
    std::vector<double> quiet_;   // the way until which a group stands off
    std::vector<Lines> lines_;    // of the groups, as they lie on the surface
    std::vector<double> depths_;  // of their blocks, the largest
    bool stood_ = false;          // where the follower stood last
    Vector place_;
    double height_ = 0.0;
    double stood_passed_ = 0.0;
};

}  // namespace

Surface_Path::Surface_Path(std::vector<Surface_Element> elements) : elements_(std::move(elements))
{
    for (std::size_t i = 0; i < elements_.size(); i += Block_Size) {
        const auto own = std::span(elements_).subspan(i, std::min(Block_Size, elements_.size() - i));
        Box box;
        double aside = 0.0;   // square
        double height = 0.0;  // of an arc
        for (const Surface_Element& element : own) {
            box.Take(element.from, 0.0);
            box.Take(element.to, 0.0);
            aside = std::max({aside, Square_of_Distance(element.from, own.front().from, own.back().to),
                              Square_of_Distance(element.to, own.front().from, own.back().to)});
            if (element.bulge == 0.0)
                continue;
            // An arc lies within a circle about the middle of its chord, no flatter than half the chord.
            const double half = 0.5 * Length(element.to - element.from);
            box.Take(0.5 * (element.from + element.to), half * std::max(1.0, std::abs(element.bulge)));
            height = std::max(height, half * std::abs(element.bulge));
        }
        Block block = box.Circle();
        block.from = own.front().from;
        block.to = own.back().to;
        block.depth = std::sqrt(aside) + height;
        blocks_.push_back(block);
        extent_ = std::max(extent_, Length(block.center) + block.radius);
    }
    for (std::size_t b = 0; b < blocks_.size(); b += Group_Size) {
        Box box;
        for (std::size_t k = b; k < std::min(b + Group_Size, blocks_.size()); ++k)
            box.Take(blocks_[k].center, blocks_[k].radius);
        groups_.push_back(box.Circle());
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

Retraced Retrace(const Mechanism& follower, const Surface_Path& surface, std::span<const double> angles,
                 std::span<const double> wanted, Looking looking)
{
    Retraced result;
    result.s.reserve(angles.size());
    result.contact.reserve(angles.size());
    Search search(follower, surface, looking);
    for (std::size_t i = 0; i < angles.size(); ++i) {
        int push = 1;
        const double theta = angles[i];
        const double touch = search.At(theta, wanted[i], push);
        const bool met = touch != nothing;
        const double s = met ? push * touch : std::numeric_limits<double>::quiet_NaN();
        double error = std::numeric_limits<double>::infinity();
        if (met)
            error = std::abs(follower.arm ? Short_Way(s - wanted[i]) : s - wanted[i]);
        if (error > result.largest_error) {
            result.largest_error = error;
            result.at = theta;
        }
        result.s.push_back(s);
        result.contact.push_back(search.Contact());
    }
    return result;
}

Retraced Retrace(const True_Cam& cam, const Surface_Path& surface, std::span<const double> angles, Looking looking)
{
    std::vector<double> wanted;
    wanted.reserve(angles.size());
    for (const double theta : angles)
        wanted.push_back(cam.Motion().At(theta).s);
    return Retrace(cam.Follower(), surface, angles, wanted, looking);
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
