// SPDX-License-Identifier: GPL-3.0-or-later
/// A linkage at an instant, over any kind of real number (core/real_math.h). Equations are those of docs/theory.md, 13;
/// linkage/linkage_kinematics.h says what the trains are and where they depart from mechanics.
///
/// Of the sines and cosines only those of the input are asked of the library. The loop of a stage gives the tangent of
/// half an angle, t, and with it cos = (1 - t^2) / (1 + t^2) and sin = 2 t / (1 + t^2); angles beside it differ from it
/// by what is constant over a design, and are turned by that.
#pragma once

#include "core/numeric_formulas.h"

namespace lobemax {

/// Rows of Link_X and Link_Y, points in the machine's coordinates, the cam centre at the origin.
namespace link_point {
inline constexpr int D = 0;         // the joint or mark on its link, at Link 4a and Delta4
inline constexpr int ground = 1;    // O4; of a fourbar slider the foot of the arm pivot on the axis
inline constexpr int A = 2;         // end of link 2
inline constexpr int B = 3;         // end of link 3
inline constexpr int D_Linked = 4;  // D as link 4's own arithmetic places it, see Train::Fourbar
inline constexpr int C = 5;         // end of link 5
inline constexpr int end = 6;       // O6; of a six-link slider the foot of O4 on the axis
}  // namespace link_point

}  // namespace lobemax

namespace lobemax::formulas {

inline constexpr int link_rows = 7;  // of links and points, from 0

/// Sine and cosine of the sum of two angles, and of their difference.
template <class X, class A>
Circular<X> Turned(const Circular<X>& angle, const Circular<A>& by)
{
    return {angle.sin * by.cos + angle.cos * by.sin, angle.cos * by.cos - angle.sin * by.sin};
}
template <class X>
X Sine_of_Difference(const Circular<X>& a, const Circular<X>& b)
{
    return a.sin * b.cos - a.cos * b.sin;
}

/// A vector of a length.
template <class X>
Vector<X> Along(double length, const Circular<X>& direction)
{
    return {length * direction.cos, length * direction.sin};
}
template <class X, class Y>
Vector<X> operator+(const Vector<X>& a, const Vector<Y>& b)
{
    return {a.x + b.x, a.y + b.y};
}
template <class X>
X Dot(const Vector<X>& a, const Circular<X>& direction)
{
    return a.x * direction.cos + a.y * direction.sin;
}
/// A vector in coordinates that are turned, unrounded.
template <class X>
Vector<X> Turned(const Vector<X>& v, const Circular<double>& by)
{
    return {v.x * by.cos - v.y * by.sin, v.x * by.sin + v.y * by.cos};
}

/// One link at one instant; of a slider theta is its place, and there is no direction.
template <class X>
struct Link {
    X theta{};
    X omega{};
    X alpha{};
    Circular<X> direction{};  // of theta
};

/// Links that connect, or do not, and move, or stand at a dead centre.
template <class X>
struct Driven_Pair {
    Link<X> coupler;
    Link<X> output;
    Mask_of<X> connects;
    Mask_of<X> moves;  // has velocities; those of a dead centre have no limit and are 0 here
};

/// Two links in a line have no limit to their speed; rounding leaves the sine of their angle a little beside zero.
template <class X>
Mask_of<X> In_Line(X sine)
{
    constexpr double rounding = 1E-12;
    return Abs(sine) < rounding;
}

/// A fourbar stage: position (180) to (184), velocity (186), acceleration (187). Angles count from its ground.
///
/// A stage whose A or Ac is zero counts as indeterminate: meant. Mechanics has an angle of 180 degrees there, which the
/// half-angle formula cannot give; it is one position between two points of the cycle.
struct Fourbar_Stage {
    double L1, L2, L3, L4;  // ground, input, coupler, output
    double sign;            // of the root
    double K1, K2, K3, K4, K5;

    static Fourbar_Stage Of(double ground, double input, double coupler, double output, double sign)
    {
        const double L1 = ground;
        const double L2 = input;
        const double L3 = coupler;
        const double L4 = output;
        return {.L1 = L1,
                .L2 = L2,
                .L3 = L3,
                .L4 = L4,
                .sign = sign,
                .K1 = L1 / L2,
                .K2 = L1 / L4,
                .K3 = (L2 * L2 - L3 * L3 + L4 * L4 + L1 * L1) / (2 * L2 * L4),
                .K4 = L1 / L3,
                .K5 = (L4 * L4 - L1 * L1 - L2 * L2 - L3 * L3) / (2 * L2 * L3)};
    }

    template <class X>
    Mask_of<X> Connects(const Circular<X>& in) const
    {
        return Of_Output(in).Has_Root() && Of_Coupler(in).Has_Root();
    }

    template <class X>
    Driven_Pair<X> operator()(const Link<X>& in) const
    {
        const X c = in.direction.cos;
        const X s = in.direction.sin;
        Driven_Pair<X> pair;
        pair.connects = Connects(in.direction);
        Take_Angle(Of_Output(in.direction), pair.output);
        Take_Angle(Of_Coupler(in.direction), pair.coupler);
        const X sine = Sine_of_Difference(pair.coupler.direction, pair.output.direction);
        pair.moves = !In_Line(sine);
        const X per_sine = 1.0 / Select(pair.moves, sine, X(1.0));
        const X w = in.omega * L2 * per_sine;
        const X still = 0.0;
        pair.coupler.omega =
            Select(pair.moves, w / L3 * Sine_of_Difference(pair.output.direction, in.direction), still);
        pair.output.omega =
            Select(pair.moves, w / L4 * Sine_of_Difference(pair.coupler.direction, in.direction), still);

        const Vector<X> r3 = Along(L3, pair.coupler.direction);
        const Vector<X> r4 = Along(L4, pair.output.direction);
        const X w2 = in.omega * in.omega;
        const X w3 = pair.coupler.omega * pair.coupler.omega;
        const X w4 = pair.output.omega * pair.output.omega;
        const X P = w2 * L2 * c + in.alpha * L2 * s + w3 * r3.x - w4 * r4.x;
        const X Q = in.alpha * L2 * c - w2 * L2 * s - w3 * r3.y + w4 * r4.y;
        const X per_Den = -per_sine / (L3 * L4);  // of r3.x r4.y - r4.x r3.y
        pair.coupler.alpha = Select(pair.moves, (r4.x * P - Q * r4.y) * per_Den, still);
        pair.output.alpha = Select(pair.moves, (r3.x * P - Q * r3.y) * per_Den, still);
        return pair;
    }

private:
    /// a t^2 + b t + c = 0 for the tangent t of half an angle.
    template <class X>
    struct Quadratic {
        X a, b, c;

        X Discriminant() const { return b * b - 4 * a * c; }
        Mask_of<X> Has_Root() const { return !(Discriminant() < 0.0 || a == 0.0); }
        /// 0 where there is none. Of the two equal forms of a root the one that adds: the other loses all its digits
        /// where a is small.
        X Root_of(double sign_of_root) const
        {
            const X root = sign_of_root * Root(Discriminant());
            const Mask_of<X> adds = -b * root >= 0.0;
            const Mask_of<X> has_root = Has_Root();
            const X above = Select(adds, -b + root, c + c);
            const X below = Select(adds, a + a, -b - root);
            return Select(has_root, above / Select(has_root, below, X(1.0)), X(0.0));
        }
    };
    template <class X>
    Quadratic<X> Of_Output(const Circular<X>& in) const
    {
        return {K3 + in.cos - K1 - K2 * in.cos, -2.0 * in.sin, K3 + K1 - (K2 + 1) * in.cos};
    }
    template <class X>
    Quadratic<X> Of_Coupler(const Circular<X>& in) const
    {
        return {(K4 + 1) * in.cos + K5 - K1, -2.0 * in.sin, (K4 - 1) * in.cos + K5 + K1};
    }
    template <class X>
    void Take_Angle(const Quadratic<X>& equation, Link<X>& link) const
    {
        const X t = equation.Root_of(sign);
        const X square = t * t;
        const X share = 1.0 / (1.0 + square);
        link.theta = 2.0 * Atan(t);
        link.direction = {2.0 * t * share, (1.0 - square) * share};
    }
};

/// A stage that ends in a slider: coupler (191), slider (192) to (194). The coupler's angle is that of the line from
/// the slider to the end of the link that drives it; the other assembly takes ArcSin(-r) and half a turn, so that it
/// closes as well.
///
/// Where r is 1 or -1 to the last bit ArcSin gives 0: meant, as everywhere. Mechanics has a coupler square to the axis,
/// and its slider a coupler's length off; no other position is touched. Where the coupler is too short it does not
/// connect: mechanics has no place for the slider either.
struct Slider_Stage {
    double input, coupler;  // lengths
    double offset;          // of the axis
    double sign;            // of the assembly
    Circular<double> half_turn;

    template <class X>
    Driven_Pair<X> operator()(const Link<X>& in) const
    {
        const auto [x, y] = Along(input, in.direction);
        const X r = (y - offset) / coupler;
        const X square = 1.0 - r * r;
        Driven_Pair<X> pair;
        pair.connects = square >= 0.0;
        pair.moves = square > 0.0;
        const X root = Root(square);
        const X sine = Select(pair.moves, r, X(0.0));
        const X cosine = Select(pair.moves, root, X(1.0));
        const X angle = Atan(sine / cosine);
        if (sign < 0.0) {
            pair.coupler.theta = angle;
            pair.coupler.direction = {sine, cosine};
        } else {
            pair.coupler.theta = PI - angle;
            pair.coupler.direction = Turned(Circular<X>{-sine, cosine}, half_turn);
        }
        const auto [bx, by] = Along(coupler, pair.coupler.direction);
        const X still = 0.0;
        const X w = in.omega * in.omega;
        pair.coupler.omega = Select(pair.moves, x / bx * in.omega, still);
        const X wc = pair.coupler.omega * pair.coupler.omega;
        pair.coupler.alpha = Select(pair.moves, (in.alpha * x - w * y + wc * by) / bx, still);
        pair.output.theta = Select(pair.connects, x - bx, still);
        pair.output.omega = Select(pair.moves, -y * in.omega + by * pair.coupler.omega, still);
        pair.output.alpha = Select(pair.moves, -y * in.alpha - x * w + by * pair.coupler.alpha + bx * wc, still);
        return pair;
    }
};

/// An end that moves: place, velocity, acceleration.
template <class X>
struct Moving_End {
    Vector<X> at{};
    Vector<X> velocity{};
    Vector<X> acceleration{};

    /// The far end of a link that hangs on this one.
    Moving_End End_of(double length, const Circular<X>& direction, const Link<X>& link) const
    {
        const Vector<X> arm = Along(length, direction);
        const X w2 = link.omega * link.omega;
        return {at + arm, velocity + Vector<X>{-link.omega * arm.y, link.omega * arm.x},
                acceleration + Vector<X>{-link.alpha * arm.y - w2 * arm.x, link.alpha * arm.x - w2 * arm.y}};
    }
};

/// The angle of a vector of a length above zero, -pi to pi.
template <class X>
X Argument(const Vector<X>& v, X length)
{
    const Mask_of<X> ahead = v.x >= 0.0;
    return 2.0 * Atan(Select(ahead, v.y, length - v.x) / Select(ahead, length + v.x, v.y));
}

/// Links 5 and 6 between D, which rides on the coupler, and O6. The sign of the root is that of a fourbar whose input
/// ends in D. (188) to (190). Angles count from the line O4 to O6.
struct Dyad {
    double L5, L6;
    double sign;  // of the root
    Vector<double> O6;
    double theta1b;  // direction of O4 to O6

    template <class X>
    struct Motion {
        Driven_Pair<X> pair;
        Vector<X> C;
    };

    template <class X>
    Motion<X> operator()(const Moving_End<X>& D) const
    {
        const Vector<X> line{D.at.x - O6.x, D.at.y - O6.y};
        const X R = Root(line.x * line.x + line.y * line.y);
        const Mask_of<X> apart = !(R == 0.0);
        const X length = Select(apart, R, X(1.0));
        const X cosine = (length * length + L6 * L6 - L5 * L5) / (2.0 * length * L6);
        const X square = 1.0 - cosine * cosine;
        const X sine = sign * Root(square);
        const Circular<X> e6 = Turned(Circular<X>{line.y / length, line.x / length}, Circular<X>{sine, cosine});
        const Vector<X> r6 = Along(L6, e6);
        const Vector<X> r5{O6.x + r6.x - D.at.x, O6.y + r6.y - D.at.y};
        const X long5 = Root(r5.x * r5.x + r5.y * r5.y);
        const Circular<X> e5{r5.y / long5, r5.x / long5};
        const X sine56 = Sine_of_Difference(e5, e6);

        Motion<X> motion;
        Driven_Pair<X>& pair = motion.pair;
        pair.connects = apart && !(square < 0.0);
        pair.moves = !In_Line(sine56);
        pair.coupler.theta = Argument(r5, long5) - theta1b;
        pair.output.theta = Argument(line, length) + Argument(Vector<X>{cosine, sine}, X(1.0)) - theta1b;
        motion.C = D.at + r5;

        const X still = 0.0;
        const X cosine56 = e5.cos * e6.cos + e5.sin * e6.sin;
        const X per_sine = 1.0 / Select(pair.moves, sine56, X(1.0));
        pair.output.omega = Select(pair.moves, Dot(D.velocity, e5) * per_sine / L6, still);
        pair.coupler.omega = Select(pair.moves, Dot(D.velocity, e6) * per_sine / L5, still);
        const X w5 = pair.coupler.omega * pair.coupler.omega * L5;
        const X w6 = pair.output.omega * pair.output.omega * L6;
        pair.output.alpha = Select(pair.moves, (Dot(D.acceleration, e5) - w5 + w6 * cosine56) * per_sine / L6, still);
        pair.coupler.alpha = Select(pair.moves, (Dot(D.acceleration, e6) + w6 - w5 * cosine56) * per_sine / L5, still);
        return motion;
    }
};

/// A train at one instant.
template <class X>
struct Pose {
    Link<X> link[link_rows];     // by number, from 2 on
    Vector<X> point[link_rows];  // by link_point
    Mask_of<X> first_connects;
    Mask_of<X> connects;
    Mask_of<X> moves;
};

/// The input of a train, link 2, from the motion of its arm: variables 1 to 3 to radians and seconds.
struct Arm_Input {
    double direction;  // ArmDirect
    double rest;       // degrees, from the line of pivots
    double speed;      // of the derivatives' time base

    template <class X>
    X Theta2(X s) const
    {
        return (direction * s + rest) * Rad_per_Deg;
    }
    template <class X>
    X Omega2(X v) const
    {
        return v * Rad_per_Deg * speed;
    }
    template <class X>
    X Alpha2(X a) const
    {
        return a * Rad_per_Deg * speed * speed;
    }
};

/// What a train is made of.
struct Train {
    Vector<double> pivot, O4, O6;
    double L1, L2, L4, L4a, L6;
    double delta4_degrees;  // as typed
    Fourbar_Stage first;
    Fourbar_Stage second;
    Dyad dyad;
    Slider_Stage slider;
    Circular<double> theta1;        // direction of the line of pivots
    Circular<double> D_on_link;     // of D from the near end of its link, over the link's angle
    Circular<double> second_input;  // of link 4a from the second stage's ground, over theta4
    Circular<double> theta1b;       // direction of the second stage's ground
    Circular<double> slider_input;  // of the slider's driving link from its axis, over its own angle
    Circular<double> axis;          // direction of the slider's axis

    /// Links 2 to 4 and their points, (185).
    ///
    /// D_Linked adds the typed degrees of Delta4 to the radians of Theta4, turns the sum to radians once more, and
    /// starts at B: meant. Mechanics starts at O4 and has 57.3 times the angle: D then rides on link 4, as
    /// link_point::D does, which drives the second stage and is what is drawn. D_Linked stays beside B, at Delta4 = 0
    /// within 6.3 degrees of straight along the ground, however link 4 turns.
    template <class X>
    Pose<X> Fourbar(const Link<X>& input) const
    {
        Pose<X> pose;
        pose.link[2] = input;
        const Driven_Pair<X> pair = first(pose.link[2]);
        pose.link[3] = pair.coupler;
        pose.link[4] = pair.output;
        pose.first_connects = pose.connects = pair.connects;
        pose.moves = pair.moves;
        const Circular<X>& four = pair.output.direction;
        const X g = (delta4_degrees + pair.output.theta) * Rad_per_Deg;
        const Vector<X> ground_to_B{L4 * four.cos + L1, L4 * four.sin};
        pose.point[link_point::ground] = {O4.x, O4.y};
        pose.point[link_point::A] = Of_Ground(Along(L2, pose.link[2].direction));
        pose.point[link_point::B] = Of_Ground(ground_to_B);
        pose.point[link_point::D_Linked] = Of_Ground(ground_to_B + Along(L4a, Sin_Cos(g)));
        const Vector<X> D = Along(L4a, Turned(four, D_on_link)) + O4;
        pose.point[link_point::D] = pose.point[link_point::C] = pose.point[link_point::end] = D;
        return pose;
    }

    /// A sixbar whose second stage hangs on the rocker.
    template <class X>
    Pose<X> Watt(const Link<X>& input) const
    {
        Pose<X> pose = Fourbar(input);
        Link<X> four = pose.link[4];
        four.direction = Turned(four.direction, second_input);
        Take_Second(pose, second(four));
        pose.point[link_point::C] = Along(L6, Turned(pose.link[6].direction, theta1b)) + O6;
        pose.point[link_point::end] = {O6.x, O6.y};
        return pose;
    }

    /// A sixbar whose second stage hangs on the coupler.
    template <class X>
    Pose<X> Stephenson(const Link<X>& input) const
    {
        Pose<X> pose = Fourbar(input);
        const Moving_End<X> at_pivot{{pivot.x, pivot.y}};
        const Moving_End<X> A = at_pivot.End_of(L2, Turned(pose.link[2].direction, theta1), pose.link[2]);
        const Moving_End<X> D = A.End_of(L4a, Turned(pose.link[3].direction, D_on_link), pose.link[3]);
        const Dyad::Motion<X> motion = dyad(D);
        Take_Second(pose, motion.pair);
        pose.point[link_point::C] = {Select(pose.connects, motion.C.x, pose.point[link_point::D].x),
                                     Select(pose.connects, motion.C.y, pose.point[link_point::D].y)};
        pose.point[link_point::D] = D.at;
        pose.point[link_point::end] = {O6.x, O6.y};
        return pose;
    }

    /// A fourbar whose rocker drives a slider.
    template <class X>
    Pose<X> Six_Slider(const Link<X>& input) const
    {
        Pose<X> pose = Fourbar(input);
        Link<X> four = pose.link[4];
        four.direction = Turned(four.direction, slider_input);
        Take_Second(pose, slider(four));
        pose.point[link_point::C] = On_Axis(O4, pose.link[6].theta);
        pose.point[link_point::end] = On_Axis(O4, X(0.0));
        return pose;
    }

    /// The arm's link drives a slider.
    template <class X>
    Pose<X> Four_Slider(const Link<X>& input) const
    {
        Pose<X> pose;
        pose.link[2] = input;
        Link<X> two = pose.link[2];
        two.direction = Turned(two.direction, slider_input);
        const Driven_Pair<X> pair = slider(two);
        pose.link[3] = pair.coupler;
        pose.link[4] = pair.output;
        pose.first_connects = pose.connects = pair.connects;
        pose.moves = pair.moves;
        pose.point[link_point::A] = Along(L2, Turned(pose.link[2].direction, theta1)) + pivot;
        pose.point[link_point::ground] = On_Axis(pivot, X(0.0));
        const Vector<X> slide = On_Axis(pivot, pair.output.theta);
        pose.point[link_point::B] = pose.point[link_point::D_Linked] = slide;
        pose.point[link_point::D] = pose.point[link_point::C] = pose.point[link_point::end] = slide;
        return pose;
    }

private:
    template <class X>
    static void Take_Second(Pose<X>& pose, const Driven_Pair<X>& pair)
    {
        pose.link[5] = pair.coupler;
        pose.link[6] = pair.output;
        pose.connects = pose.connects && pair.connects;
        pose.moves = pose.moves && pair.moves;
    }
    template <class X>
    Vector<X> Of_Ground(const Vector<X>& v) const
    {
        return Turned(v, theta1) + pivot;
    }
    /// A place on the slider's axis, which lies off a pivot.
    template <class X>
    Vector<X> On_Axis(const Vector<double>& from, X along) const
    {
        return Turned(Vector<X>{along, slider.offset}, axis) + from;
    }
};

/// A motion as a share: a place of the range, from one of its ends, or a rate of its peak. A motion that stands has
/// none. (195) to (197)
struct Motion_Share {
    bool place;
    double end;    // of a place
    double whole;  // range or peak

    template <class X>
    X operator()(X value) const
    {
        return whole == 0.0 ? X(0.0) : (place ? Abs(value - end) : value) / whole;
    }
};

/// The share of the last link's motion over the arm's, 0 where the arm's is.
struct Motion_Ratio {
    Motion_Share last;
    Motion_Share arm;

    template <class X>
    X operator()(X of_last, X of_arm) const
    {
        const X a = arm(of_arm);
        const Mask_of<X> rests = a == 0.0;
        return Select(rests, X(0.0), last(of_last) / Select(rests, X(1.0), a));
    }
};

}  // namespace lobemax::formulas
