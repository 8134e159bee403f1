// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/arc_cam.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"
#include "core/text.h"

namespace lobemax {

namespace {

/// The centres: the nose's a distance d from the cam's, the flank's a distance q on the far side of where it begins.
struct Centres {
    double d;
    double q;
    double cos_end;  // of the angle where the flank meets the base circle
};

Centres Centres_of(const Arc_Cam& cam)
{
    const double d = cam.base + cam.lift - cam.nose;
    const double q = cam.flank - cam.base;
    const double n = cam.flank - cam.nose;
    return {d, q, (n * n - d * d - q * q) / (2 * d * q)};
}

double End_of_Flank(const Arc_Cam& cam)
{
    return std::acos(Centres_of(cam).cos_end);
}

/// Direction of the line of both centres: where flank and nose have one normal.
double End_of_Nose_Normal(const Arc_Cam& cam)
{
    const Centres c = Centres_of(cam);
    const double end = End_of_Flank(cam);
    // The flank's centre stands opposite to its end.
    return std::atan2(c.q * std::sin(end), c.d + c.q * std::cos(end));
}

double End_of_Nose(const Arc_Cam& cam)
{
    const double normal = End_of_Nose_Normal(cam);
    if (cam.roller == 0.0)
        return normal;
    const double radius = cam.nose + cam.roller;
    return std::atan2(radius * std::sin(normal), Centres_of(cam).d + radius * std::cos(normal));
}

/// Distance from the cam's centre to a circle of a radius whose centre stands a distance away, along a ray that makes
/// an angle with the direction of that centre; and its derivatives.
std::array<double, 3> Ray_to_Circle(double distance, double radius, double angle)
{
    const double c = distance * std::cos(angle);
    const double s = distance * std::sin(angle);
    const double root = std::sqrt(radius * radius - s * s);
    const double first = -s - s * c / root;
    const double second = -c - (c * c - s * s) / root - s * s * c * c / (root * root * root);
    return {c + root, first, second};
}

}  // namespace

std::string Arcs_may_be(const Arc_Cam& cam)
{
    for (const double length : {cam.base, cam.flank, cam.nose, cam.lift})
        if (!(length > 0.0) || !std::isfinite(length))
            return "Base, flank, nose and lift of a cam of arcs must be above zero.";
    if (!(cam.roller >= 0.0))
        return "The roller's radius must not be below zero.";
    if (!(cam.flank > cam.base) || !(cam.flank > cam.nose))
        return "The flank's radius must be larger than those of base and nose.";
    const double d = cam.base + cam.lift - cam.nose;
    if (!(d > 0.0) || !(cam.nose < cam.base + cam.lift))
        return "The nose is too large for this base circle and lift.";
    const double cos_end = Centres_of(cam).cos_end;
    if (!(cos_end < 1.0) || !(cos_end > -1.0))
        return "No flank of this radius joins base circle and nose.";
    return {};
}

Arc_Angles Angles_of(const Arc_Cam& cam)
{
    return {End_of_Nose(cam) * Deg_per_Rad, End_of_Flank(cam) * Deg_per_Rad};
}

std::array<double, 3> Lift_of(const Arc_Cam& cam, double angle)
{
    const Centres c = Centres_of(cam);
    const double from_nose = std::abs(std::remainder(angle, PI2));
    const double side = std::remainder(angle, PI2) < 0.0 ? -1.0 : 1.0;
    const double end = End_of_Flank(cam);
    if (from_nose >= end)
        return {0.0, 0.0, 0.0};
    const bool nose = from_nose <= End_of_Nose(cam);
    std::array<double, 3> at{};
    if (cam.roller == 0.0) {
        // A flat face stands at the support of the outline: radius plus the centre's share along the face's normal.
        const double x = nose ? from_nose : from_nose - end;
        const double distance = nose ? c.d : -c.q;
        const double radius = nose ? cam.nose : cam.flank;
        at = {radius + distance * std::cos(x) - cam.base, -distance * std::sin(x), -distance * std::cos(x)};
    } else {
        at = nose ? Ray_to_Circle(c.d, cam.nose + cam.roller, from_nose)
                  : Ray_to_Circle(-c.q, cam.flank + cam.roller, from_nose - end);
        at[0] -= cam.base + cam.roller;
    }
    at[1] *= side;
    return at;
}

std::string Pairs_of(const Arc_Cam& cam, double step)
{
    std::string text;
    const int count = static_cast<int>(std::lround(360.0 / step));
    for (int i = 0; i < count; ++i) {
        const double degrees = i * step;
        text += Shortest(Single(degrees)) + "\t" + Shortest(Single(Lift_of(cam, (degrees - 180.0) * Rad_per_Deg)[0])) +
                "\n";
    }
    return text;
}

}  // namespace lobemax
