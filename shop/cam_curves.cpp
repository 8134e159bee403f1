// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/cam_curves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/design_state.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;

/// Whether the follower stands still from an angle to another.
bool Stands(const True_Cam& cam, double from, double to)
{
    const double still = 1e-12 * cam.Follower().prime;
    constexpr int places = 8;
    const double level = cam.Motion().At(0.5 * (from + to)).s;
    for (int i = 0; i < places; ++i) {
        const Follower_Point p = cam.Motion().At(from + (to - from) * (i + 0.5) / places);
        if (std::abs(p.s - level) > still || std::abs(p.v) > still || std::abs(p.a) > still)
            return false;
    }
    return true;
}

/// Stretches of at least some degrees of a motion from rows whose points do not differ.
std::vector<Shop_Curve::Circle> Standing_Rows(const True_Cam& cam)
{
    constexpr double step = 0.125;
    constexpr double least = 5.0;
    std::vector<Shop_Curve::Circle> found;
    double from = 0.0;
    double level = cam.Motion().At(0.0).s;
    const auto end = [&](double to) {
        if (to - from >= least && Stands(cam, from, to))
            found.push_back({from, to});
    };
    for (int i = 1; i * step < turn; ++i) {
        const double s = cam.Motion().At(i * step).s;
        if (s != level) {
            end((i - 1) * step);
            from = i * step;
            level = s;
        }
    }
    end(turn);
    return found;
}

/// A curve of the cam without its places.
Shop_Curve Bare_Curve(const True_Cam& cam)
{
    Shop_Curve curve;
    curve.closed = cam.Follower().body == Cam_Body::disk;
    std::vector<double> starts = Segment_Starts(cam.Motion());
    if (starts.empty()) {
        curve.circles = Standing_Rows(cam);
        return curve;
    }
    for (const double t : starts)
        if (t > 0.0 && t < turn)
            curve.breaks.push_back(t);
    starts.push_back(turn);
    for (std::size_t i = 0; i + 1 < starts.size(); ++i)
        if (starts[i + 1] > starts[i] && Stands(cam, starts[i], starts[i + 1]))
            curve.circles.push_back({starts[i], starts[i + 1]});
    return curve;
}

/// The sense in which the roller's path of a convex cam turns.
double Convex_Sense(const Mechanism& m)
{
    return m.body == Cam_Body::disk ? -m.rot : -1.0;
}

/// The way along the curve that lies a distance inside the path of a point: back where it is beyond its centre of
/// curvature. (298)
Vector Along(const Mechanism& m, const True_Point& p, double inside)
{
    const double sense = 1.0 - inside / p.Rho < 0.0 ? -1.0 : 1.0;
    return sense * Convex_Sense(m) * Quarter(p.normal);
}

/// The way of a flat face's contact, or of what stands a distance outside of it: along the face, which turns with the
/// cam less the arm. (298)
Vector Along_Face(const Mechanism& m, const True_Point& p, const Follower_Point& motion, double outside)
{
    const double turning = m.arm ? m.swing * motion.v - m.rot : -m.rot;
    return (p.Rho + outside) * turning < 0.0 ? -1.0 * Quarter(p.normal) : Quarter(p.normal);
}

/// Of the roller centre of a drum as it is unrolled: the arm swings in a plane, the drum is round. (300)
Vector Along_Drum(const Mechanism& m, const Follower_Point& motion)
{
    const Vector f = m.Center(motion.s);
    Vector first{0.0, motion.v};
    if (m.arm) {
        const Vector arm{f.x - m.pivot_x, m.z_sense * f.y};
        first = m.swing * motion.v * Quarter(arm);
        first.y *= m.z_sense;
    }
    const double lateral = f.x / m.prime;
    const Vector along{m.prime + m.rot * first.x / (1.0 + lateral * lateral), first.y};
    return 1.0 / Length(along) * along;
}

Curve_Place Place_on_Wall(const True_Cam& cam, double theta, const Follower_Point& motion, int side)
{
    const Mechanism& m = cam.Follower();
    const Wall_Point wall = cam.Wall_at_Radius(theta, motion, side, m.prime);
    return {{m.prime * wall.Lambda * Rad_per_Deg, wall.Z}, wall.tangent};
}

}  // namespace

std::string_view Name_of(Curve_Layer layer)
{
    constexpr std::array<std::string_view, Curve_Layers> names{"SURFACE", "PITCH", "CUTTER", "BASE",
                                                               "PRIME",   "SHAFT", "KEYWAY", "NOTES"};
    return names[static_cast<std::size_t>(layer)];
}

std::vector<double> Segment_Starts(const True_Motion& motion)
{
    std::vector<double> starts;
    const Motion_Curve* const curve = motion.Curve();
    if (curve == nullptr)
        return starts;
    double end = 0.0;
    for (int i = 1; i <= curve->Segments(); ++i) {
        const double beta = curve->End_of(i).local;
        const double middle = std::min(end + 0.5 * beta, turn * (1.0 - 1e-12));
        const Motion_Curve::Place place = curve->Find(middle);
        starts.push_back(place.segment == i ? std::max(0.0, middle - place.local) : end);
        end = starts.back() + beta;
    }
    return starts;
}

double Turn_of(const True_Cam& cam)
{
    const Mechanism& m = cam.Follower();
    return m.body == Cam_Body::disk ? 0.0 : m.prime * turn * Rad_per_Deg;
}

double Base_Radius(const True_Cam& cam)
{
    const Mechanism& m = cam.Follower();
    return m.prime - m.side * m.roller_radius;
}

Shop_Curve Surface_of(const True_Cam& cam)
{
    const Mechanism& m = cam.Follower();
    if (m.body != Cam_Body::disk)
        return Flank_of(cam, m.side);
    Shop_Curve curve = Bare_Curve(cam);
    curve.at = [&cam](double theta) {
        const Mechanism& by = cam.Follower();
        const Follower_Point motion = cam.Motion().At(theta);
        const True_Point p = cam.Path_At(theta, motion);
        return Curve_Place{p.surface,
                           by.roller ? Along(by, p, by.side * by.roller_radius) : Along_Face(by, p, motion, 0.0)};
    };
    return curve;
}

Shop_Curve Flank_of(const True_Cam& cam, int side)
{
    if (cam.Follower().body == Cam_Body::disk)
        throw Fault{invalid_argument};
    Shop_Curve curve = Bare_Curve(cam);
    const bool used = side == cam.Follower().side;
    curve.at = [&cam, side, used](double theta) {
        const Follower_Point motion = cam.Motion().At(theta);
        Curve_Place place = Place_on_Wall(cam, theta, motion, side);
        const True_Point p = cam.Path_At(theta, motion);
        // Towards the wall the radius of the roller's way over the drum is the one that the flank in use has.
        const double centre = (used ? 1.0 : -1.0) * (p.Rho_Surface + cam.Follower().roller_radius);
        if (1.0 - cam.Follower().roller_radius / centre < 0.0)
            place.tangent = -1.0 * place.tangent;
        return place;
    };
    return curve;
}

Shop_Curve Pitch_of(const True_Cam& cam)
{
    if (!cam.Follower().roller)
        throw Fault{invalid_argument};
    Shop_Curve curve = Bare_Curve(cam);
    curve.at = [&cam](double theta) {
        const Mechanism& m = cam.Follower();
        const Follower_Point motion = cam.Motion().At(theta);
        const True_Point p = cam.Path_At(theta, motion);
        const bool drum = m.body == Cam_Body::barrel;
        return Curve_Place{p.center, drum ? Along_Drum(m, motion) : Along(m, p, 0.0)};
    };
    return curve;
}

Shop_Curve Cutter_of(const True_Cam& cam, double radius)
{
    const Mechanism& m = cam.Follower();
    if (!(radius >= 0.0) || (m.body == Cam_Body::barrel && radius != m.roller_radius))
        throw Fault{invalid_argument};
    if (m.roller && radius == m.roller_radius)
        return Pitch_of(cam);
    Shop_Curve curve = Bare_Curve(cam);
    curve.at = [&cam, radius](double theta) {
        const Mechanism& by = cam.Follower();
        const Follower_Point motion = cam.Motion().At(theta);
        const True_Point p = cam.Path_At(theta, motion);
        return Curve_Place{cam.Cutter(p, radius), by.roller ? Along(by, p, by.side * (by.roller_radius - radius))
                                                            : Along_Face(by, p, motion, radius)};
    };
    return curve;
}

std::optional<Narrow_Hollow> Hollow_below(const True_Cam& cam, double radius)
{
    constexpr double step = 0.25;
    std::optional<Narrow_Hollow> narrowest;
    for (int i = 0; i * step < turn; ++i) {
        const double hollow = -cam.Path_At(i * step, cam.Motion().At(i * step)).Rho_Surface;
        if (hollow > 0.0 && hollow < radius && (!narrowest || hollow < narrowest->radius))
            narrowest = {i * step, hollow};
    }
    return narrowest;
}

namespace {

struct Key_Row {
    double above;  // bores above this, to the next row's
    double width;
    double depth;  // of the keyway in the hub
};

/// Millimetres: DIN 6885-1, width and depth t2.
constexpr std::array metric_keys{
    Key_Row{6, 2, 1.0},    Key_Row{8, 3, 1.4},    Key_Row{10, 4, 1.8},   Key_Row{12, 5, 2.3},    Key_Row{17, 6, 2.8},
    Key_Row{22, 8, 3.3},   Key_Row{30, 10, 3.3},  Key_Row{38, 12, 3.3},  Key_Row{44, 14, 3.8},   Key_Row{50, 16, 4.3},
    Key_Row{58, 18, 4.4},  Key_Row{65, 20, 4.9},  Key_Row{75, 22, 5.4},  Key_Row{85, 25, 5.4},   Key_Row{95, 28, 6.4},
    Key_Row{110, 32, 7.4}, Key_Row{130, 36, 8.4}, Key_Row{150, 40, 9.4}, Key_Row{170, 45, 10.4}, Key_Row{200, 50, 11.4},
};
constexpr double last_metric_bore = 230.0;

/// Inches: ANSI B17.1, square keys.
constexpr std::array inch_keys{
    Key_Row{0.3125, 0.09375, 0}, Key_Row{0.4375, 0.125, 0}, Key_Row{0.5625, 0.1875, 0}, Key_Row{0.875, 0.25, 0},
    Key_Row{1.25, 0.3125, 0},    Key_Row{1.375, 0.375, 0},  Key_Row{1.75, 0.5, 0},      Key_Row{2.25, 0.625, 0},
    Key_Row{2.75, 0.75, 0},      Key_Row{3.25, 0.875, 0},   Key_Row{3.75, 1.0, 0},      Key_Row{4.5, 1.25, 0},
    Key_Row{5.5, 1.5, 0},
};
constexpr double last_inch_bore = 6.5;
constexpr double inch_clearance = 0.005;

template <std::size_t Count>
const Key_Row* Row_of(const std::array<Key_Row, Count>& rows, double diameter, double last)
{
    const Key_Row* found = nullptr;
    for (const Key_Row& row : rows)
        if (diameter > row.above && diameter <= last)
            found = &row;
    return found;
}

}  // namespace

std::optional<Keyway_Size> Usual_Keyway(double diameter, int units)
{
    constexpr std::array<double, 5> per_unit{1.0, 12.0, 1000.0, 10.0, 1.0};  // inches, or millimetres
    const double unit = per_unit[Checked_Place(units, 1, static_cast<int>(per_unit.size()))];
    const double d = diameter * unit;
    if (units <= 2) {
        const Key_Row* const row = Row_of(inch_keys, d, last_inch_bore);
        if (row == nullptr)
            return std::nullopt;
        // (304): a square key stands half in the shaft, measured where its side meets the shaft's circle.
        const double w = row->width;
        const double depth = 0.5 * (w - d + std::sqrt(d * d - w * w)) + inch_clearance;
        return Keyway_Size{w / unit, depth / unit};
    }
    const Key_Row* const row = Row_of(metric_keys, d, last_metric_bore);
    if (row == nullptr)
        return std::nullopt;
    return Keyway_Size{row->width / unit, row->depth / unit};
}

double Keyway_Angle(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    return (c.Rotflag < 0 ? 1.0 : -1.0) * c.Cam_Draw_Angle;
}

std::vector<Surface_Element> Keyway_Outline(double diameter, Keyway_Size size, double angle)
{
    const double radius = 0.5 * diameter;
    const double half = 0.5 * size.width;
    if (!(half > 0.0) || !(half < radius) || !(size.depth > 0.0))
        throw Fault{invalid_argument};
    // Turned so that the keyway points along x.
    const Vector e = Direction(angle * Rad_per_Deg);
    const double shoulder = std::sqrt(radius * radius - half * half);
    const double bottom = radius + size.depth;
    const Vector right = Turned({shoulder, -half}, e);
    const Vector left = Turned({shoulder, half}, e);
    const Vector back = Turned({-radius, 0.0}, e);
    const double quarter = 0.25 * (PI - std::asin(half / radius));
    return {{right, Turned({bottom, -half}, e), 0.0},
            {Turned({bottom, -half}, e), Turned({bottom, half}, e), 0.0},
            {Turned({bottom, half}, e), left, 0.0},
            {left, back, std::tan(quarter)},
            {back, right, std::tan(quarter)}};
}

}  // namespace lobemax
