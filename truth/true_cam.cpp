// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/true_cam.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"

namespace lobemax {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

/// The reciprocal of a curvature.
double Radius_of(double curvature)
{
    return curvature == 0.0 ? infinite : 1.0 / curvature;
}

/// The angle at the pivot, radians, at which the roller stands on the prime circle: (74); none where it cannot.
double Angle_at_Rest(const Mechanism& m, bool& reaches)
{
    const double D = m.pivot_distance;
    const double r = m.arm_length;
    const double cosine = (D * D + r * r - m.prime * m.prime) / (2.0 * D * r);
    reaches = D > 0.0 && r > 0.0 && std::abs(cosine) <= 1.0;
    return reaches ? std::acos(cosine) : 0.0;
}

/// The arc sine of a share of a length.
double Arc_Sine_of(double part, double whole, bool& reaches)
{
    reaches = whole > 0.0 && std::abs(part) <= whole;
    return reaches ? std::asin(part / whole) : 0.0;
}

}  // namespace

Mechanism::Mechanism(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    body = c.Camtype == "Barrel" ? Cam_Body::barrel : c.Camtype == "Linear" ? Cam_Body::linear : Cam_Body::disk;
    const bool disk = body == Cam_Body::disk;
    roller = !disk || c.Followtype == 1;
    arm = !c.Translating;
    rot = c.Rotflag < 0 ? -1 : 1;
    swing = (c.ArmDirect < 0 ? -1 : 1) * (c.Conjugate ? -1 : 1);
    prime = c.Prime_Rad;
    roller_radius = roller ? double{c.Follow_Rad} : 0.0;
    cutter = c.Cutter_Radius;
    offset = disk ? double{c.Offset} : 0.0;
    pivot_x = c.ArmX;
    pivot_y = c.ArmY;
    arm_length = c.ArmRad;
    pivot_distance = std::hypot(pivot_x, pivot_y);
    pivot_angle = std::atan2(pivot_y, pivot_x);
    if (disk) {
        side = roller && c.In_Out > 0 ? -1 : 1;
        if (!arm) {
            reaches = !roller || std::abs(offset) <= prime;
            rest = !roller ? prime : reaches ? std::sqrt(prime * prime - offset * offset) : 0.0;
        } else {
            rest = roller ? Angle_at_Rest(*this, reaches) : Arc_Sine_of(offset + prime, pivot_distance, reaches);
        }
        return;
    }
    // Where the profile rows lay the wall: (102), (103).
    side = (arm ? rot : -rot) * (c.Top_Bot < 0 ? -1 : 1);
    if (arm) {
        z_sense = swing;
        const double level = Arc_Sine_of(pivot_y, arm_length, reaches);
        rest = pivot_x > 0.0 ? PI - level : level;
    }
}

Vector Mechanism::Center(double s) const
{
    if (body == Cam_Body::disk) {
        if (!arm)
            return {rest + s, -rot * offset};
        return Vector{pivot_x, pivot_y} + arm_length * Direction(pivot_angle + PI + swing * (rest + s));
    }
    if (!arm)
        return {0.0, s};
    const Vector tip = Vector{pivot_x, 0.0} + arm_length * Direction(rest + swing * s);
    return {tip.x, z_sense * tip.y};
}

True_Cam::True_Cam(const Design_State& design) : motion_(design), follower_(design)
{
    if (!follower_.reaches || !(follower_.prime > 0.0))
        throw Fault{invalid_argument};
}

True_Point True_Cam::At(double theta) const
{
    return At(theta, motion_.At(theta));
}

True_Point True_Cam::At(double theta, const Follower_Point& motion) const
{
    return follower_.roller ? Of_Center(theta, motion, true) : Of_Face(theta, motion);
}

True_Point True_Cam::Path_At(double theta, const Follower_Point& motion) const
{
    return follower_.roller ? Of_Center(theta, motion, false) : Of_Face(theta, motion);
}

namespace {

/// The roller centre in the machine and its derivatives by the cam angle.
struct Center_Path {
    Vector f;
    Vector first;
    Vector second;
    Vector rise;  // unit, the way of the roller in a rise
};

Center_Path Path_of(const Mechanism& m, const Follower_Point& p)
{
    Center_Path path;
    path.f = m.Center(p.s);
    if (!m.arm) {
        path.rise = m.body == Cam_Body::disk ? Vector{1.0, 0.0} : Vector{0.0, 1.0};
        path.first = p.v * path.rise;
        path.second = p.a * path.rise;
        return path;
    }
    const Vector pivot = m.body == Cam_Body::disk ? Vector{m.pivot_x, m.pivot_y} : Vector{m.pivot_x, 0.0};
    const Vector arm = path.f - pivot;
    const Vector across = m.swing * m.z_sense * Quarter(arm);
    path.rise = 1.0 / m.arm_length * across;
    path.first = p.v * across;
    path.second = p.a * across - p.v * p.v * arm;
    return path;
}

/// (233): the drum passes the roller's axis at the speed of the depth.
struct Wall_Contact {
    Wall_Contact(const Mechanism& m, const Center_Path& path, int side, double depth)
        : first{depth + m.rot * path.first.x, path.first.y}
    {
        const Vector normal = 1.0 / Length(first) * Quarter(first);
        lateral = m.rot * path.f.x - side * m.roller_radius * normal.x;
        Z = path.f.y - side * m.roller_radius * normal.y;
    }

    Vector first;
    double lateral;
    double Z;
};

Wall_Point Wall_of(const Mechanism& m, const Center_Path& path, double theta, int side, double depth)
{
    const Wall_Contact contact(m, path, side, depth);
    const Vector& first = contact.first;
    if (m.body == Cam_Body::linear)
        return {depth, theta + contact.lateral / m.prime * Deg_per_Rad, contact.Z, 1.0 / Length(first) * first};
    // Square to the wall's normal and to the radius of the contact, (299).
    const double radius = std::hypot(contact.lateral, depth);
    const Vector along{first.x, first.y * depth / radius};
    return {radius, theta + std::atan2(contact.lateral, depth) * Deg_per_Rad, contact.Z, 1.0 / Length(along) * along};
}

/// The depth at which the contact lies on a cylinder: each turn leaves the square of roller over drum of what was
/// missing.
Wall_Point Wall_on_Cylinder(const Mechanism& m, const Center_Path& path, double theta, int side, double radius)
{
    constexpr int turns = 20;
    constexpr double exact = 1e-14;
    double depth = radius;
    for (int i = 0; i < turns && m.body != Cam_Body::linear; ++i) {
        const double lateral = Wall_Contact(m, path, side, depth).lateral;
        const double reached = std::hypot(lateral, depth);
        const double square = radius * radius - (reached * reached - depth * depth);
        if (std::abs(reached - radius) <= exact * radius || square <= 0.0)
            break;
        depth = std::sqrt(square);
    }
    return Wall_of(m, path, theta, side, depth);
}

}  // namespace

True_Point True_Cam::Of_Center(double theta, const Follower_Point& motion, bool whole) const
{
    const Mechanism& m = follower_;
    const Center_Path path = Path_of(m, motion);
    const double turned = theta * Rad_per_Deg;
    True_Point p;
    p.theta = theta;
    p.s = motion.s;
    Vector first;
    Vector second;
    Vector rise;
    double convex = 0.0;  // the sense in which the path of a convex cam turns
    if (m.body == Cam_Body::disk) {
        // (227) to (229): seen from the cam the machine turns backwards.
        const Vector e = Direction(-m.rot * turned);
        const double k = -m.rot;
        p.center = Turned(path.f, e);
        first = Turned(path.first + k * Quarter(path.f), e);
        second = Turned(path.second + 2.0 * k * Quarter(path.first) - path.f, e);
        rise = Turned(path.rise, e);
        convex = -m.rot;
    } else {
        // (232): the drum unrolled; Lambda runs with the cam angle in either sense.
        const double lateral = m.rot * path.f.x;
        const double around = m.body == Cam_Body::barrel ? m.prime * std::atan2(lateral, m.prime) : lateral;
        p.center = {m.prime * turned + around, path.f.y};
        first = {m.prime + m.rot * path.first.x, path.first.y};
        second = {m.rot * path.second.x, path.second.y};
        rise = {m.rot * path.rise.x, path.rise.y};
        convex = -1.0;
    }
    const double speed = Length(first);
    p.normal = -convex / speed * Quarter(first);
    p.Rho = Radius_of(convex * Cross(first, second) / (speed * speed * speed));
    if (!whole) {
        p.Phi = std::numeric_limits<double>::quiet_NaN();
    } else if (m.body == Cam_Body::disk) {
        p.Phi = m.rot * std::atan2(Cross(rise, p.normal), Dot(rise, p.normal)) * Deg_per_Rad;
    } else {
        // The wall that drives a rise: the one below where the roller goes up.
        const double up = rise.y < 0.0 ? -1.0 : 1.0;
        const Vector push = Dot(rise, p.normal) < 0.0 ? -1.0 * p.normal : p.normal;
        p.Phi = up * std::atan2(Cross(rise, push), Dot(rise, push)) * Deg_per_Rad;
    }
    p.Rho_Surface = m.side * p.Rho - m.roller_radius;
    if (m.body == Cam_Body::barrel) {
        // (234): across the roller's axis the wall of a drum turns by what lies beside the axis too.
        const double beside = m.rot * path.f.x - m.side * m.roller_radius * p.normal.x;
        const double turning = Cross(first, second) - beside * first.y;
        p.Rho_Surface = -m.side * Radius_of(turning / (speed * speed * speed)) - m.roller_radius;
        if (whole) {
            const Wall_Point wall = Wall_on_Cylinder(m, path, theta, m.side, m.prime);
            p.surface = {m.prime * wall.Lambda * Rad_per_Deg, wall.Z};
        }
    } else {
        p.surface = p.center - m.side * m.roller_radius * p.normal;
    }
    return p;
}

True_Point True_Cam::Of_Face(double theta, const Follower_Point& motion) const
{
    const Mechanism& m = follower_;
    const double turned = theta * Rad_per_Deg;
    True_Point p;
    p.theta = theta;
    p.s = motion.s;
    // (230), (231): the face as a line at the distance h from the cam centre, whose normal turns by b.
    Vector normal{1.0, 0.0};
    double h = m.rest + motion.s;
    double h1 = motion.v;
    double h2 = motion.a;
    double b1 = -m.rot;
    double b2 = 0.0;
    if (m.arm) {
        const double psi = m.rest + motion.s;
        const double D = m.pivot_distance;
        const double across = D * std::cos(psi);
        h = D * std::sin(psi) - m.offset;
        h1 = across * motion.v;
        h2 = across * motion.a - D * std::sin(psi) * motion.v * motion.v;
        b1 += m.swing * motion.v;
        b2 = m.swing * motion.a;
        normal = m.swing * Quarter(Direction(m.pivot_angle + PI + m.swing * psi));
    }
    const double slope = h1 / b1;
    const Vector contact = h * normal + slope * Quarter(normal);
    if (m.arm) {
        const Vector along_arm = -m.swing * Quarter(normal);
        p.along = Dot(contact - Vector{m.pivot_x, m.pivot_y}, along_arm);
    } else {
        p.along = motion.v - m.offset;
    }
    const Vector e = Direction(-m.rot * turned);
    p.center = Turned(h * normal, e);
    p.surface = Turned(contact, e);
    p.normal = Turned(normal, e);
    p.Rho = h + (h2 - slope * b2) / (b1 * b1);
    p.Rho_Surface = p.Rho;
    return p;
}

Vector True_Cam::Cutter(const True_Point& point, double radius) const
{
    const Mechanism& m = follower_;
    if (!m.roller)
        return point.surface + radius * point.normal;
    return point.center - m.side * (m.roller_radius - radius) * point.normal;
}

Wall_Point True_Cam::Wall(double theta, int side, double depth) const
{
    return Wall_of(follower_, Path_of(follower_, motion_.At(theta)), theta, side, depth);
}

Wall_Point True_Cam::Wall_at_Radius(double theta, int side, double radius) const
{
    return Wall_at_Radius(theta, motion_.At(theta), side, radius);
}

Wall_Point True_Cam::Wall_at_Radius(double theta, const Follower_Point& motion, int side, double radius) const
{
    return Wall_on_Cylinder(follower_, Path_of(follower_, motion), theta, side, radius);
}

}  // namespace lobemax
