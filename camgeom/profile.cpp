// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile.h"

#include <array>
#include <cmath>

#include "camgeom/arm.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"

namespace lobemax {

namespace {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

/// The coordinates of one point of a radial cam, as they are stored.
struct Radial_Point {
    Point center;       // rows 9, 10
    Single radius;      // 11
    Single angle;       // 12, degrees
    Point center_key;   // 13, 14
    Point surface;      // 36, 37
    Point surface_key;  // 38, 39
    Point cutter;       // 40, 41
};

/// Versus machine zero: turned back by the start angle, degrees. docs/theory.md, (99).
Point Turned(const Point& p, double angle)
{
    Single x;
    Single y;
    Rotate(p.x, p.y, angle, -1, x, y);
    return {x, y};
}

/// Velocity per radian of cam, under the sign of the side of a conjugate. docs/theory.md, (60).
double Velocity_per_Radian(const Design_State& design, double v)
{
    const Motion_Group& m = design.motion;
    const double w = design.cam.Side_Sign * v;
    return m.Time_Base == 1 ? w / m.Shaft_speed : m.Time_Base == 2 ? w * 180 / PI : w;
}

void Store(Design_State& design, const Radial_Point& p, int i)
{
    Table<Single>& data = design.results.CalcData;
    data(9, i) = p.center.x;
    data(10, i) = p.center.y;
    data(11, i) = p.radius;
    data(12, i) = p.angle;
    data(13, i) = p.center_key.x;
    data(14, i) = p.center_key.y;
    Single radius;
    Single angle;
    Cart_to_Polar(p.center_key.x, p.center_key.y, radius, angle);
    data(34, i) = radius;
    data(35, i) = angle;
    data(36, i) = p.surface.x;
    data(37, i) = p.surface.y;
    data(38, i) = p.surface_key.x;
    data(39, i) = p.surface_key.y;
    data(40, i) = p.cutter.x;
    data(41, i) = p.cutter.y;
}

/// Displacement at a point as a radial profile takes it: by the ratio of a driven end effector, from the top for a
/// conjugate. docs/theory.md, (63).
double Displacement(const Design_State& design, int i)
{
    const double s = design.results.CalcData(design.flags.Polydyne_Calc ? 22 : var::S, i) / Link_Ratios(design, i).S;
    return design.cam.Conjugate ? design.motion.Liftmax - s : s;
}

/// A point of a translating follower: roller (92), (93), (95), (96), flat face (69), (97) of docs/theory.md.
/// @throws Fault{5} for an offset above the prime radius
Radial_Point Translating_Point(const Design_State& design, int i)
{
    const Cam_Group& c = design.cam;
    const Table<Single>& data = design.results.CalcData;
    const double theta = data(var::Angle, i);
    const double shift = c.Rotflag * c.Shift_Angle;
    const double w = Velocity_per_Radian(design, data(design.flags.Polydyne_Calc ? 23 : var::V, i));
    // For a conjugate the root holds the sum of the squares: meant. Mechanics has the difference on both sides; the
    // whole cam is larger by e^2 / r_p, 0.81 mm for a prime radius of 61 and an offset of 7.04.
    const double Rs = Sqr(c.Prime_Rad * c.Prime_Rad - c.Offset * c.Offset * c.Side_Sign) + Displacement(design, i);
    const bool roller = c.Followtype == 1;
    Radial_Point p;
    Single A0;
    Cart_to_Polar(Rs, roller ? double{c.Offset} : w, p.radius, A0);  // a flat face is touched off its axis by w
    const double R = p.radius;
    const double A = A0 + theta;
    p.angle = A;
    const double ar = A * Rad_per_Deg;
    p.center = {R * std::cos(ar), -c.Rotflag * std::sin(ar) * R};
    p.center_key = Turned(p.center, shift);
    if (roller) {
        const double nu = (data(var::Phi, i) - theta) * c.Rotflag;
        const Surface_Cutter s =
            Surface_Cutter_Point(design, c.In_Out, p.center.x, p.center.y, nu, c.Follow_Rad, c.Cutter_Radius);
        p.surface = {s.Xs, s.Ys};
        p.cutter = {s.Xc, s.Yc};
        p.surface_key = Turned(p.surface, shift);
    } else {
        p.surface = p.center;
        p.surface_key = p.center_key;
        const double face = c.Cutter_Radius + Rs;
        const double Rc = Sqr(face * face + w * w);
        const double Ac = std::atan(w / face) + theta * Rad_per_Deg;
        p.cutter = {Rc * std::cos(Ac), -c.Rotflag * Rc * std::sin(Ac)};
    }
    return p;
}

/// A point of a follower on an arm: roller (77), (94) to (96), flat face (86), (98) of docs/theory.md.
///
/// The flat face's cutter is turned by the swing s, nu = rot s + A + 90 deg: meant. Mechanics has nu = A + 90 deg; of a
/// cutter of 6 mm the centre is 2.1 mm off at a swing of 20 deg, right in the dwell at s = 0.
/// @return false where the triangle of the arm does not close
bool Oscillating_Point(Design_State& design, int i, Radial_Point& p)
{
    const Cam_Group& c = design.cam;
    Results_Group& r = design.results;
    const double theta = r.CalcData(var::Angle, i);
    const double shift = c.Rotflag * c.Shift_Angle;
    const double gamma = c.Arm_Start_Angle + Displacement(design, i);
    const double delta = c.Arm_Pivot_Angle - c.Rotflag * theta;
    const double sign = -(c.In_Out * c.Side_Sign) * c.ArmDirect;
    const bool roller = c.Followtype == 1;
    Flat_Contact face;
    if (!roller && !Flat_Osc_Contact(design, i, c.ArmX, c.ArmY, face))
        return false;
    Arm_Place place;
    if (!Arm_Position(design, gamma, delta, place))
        return false;
    r.Arm_Pivot_X(i) = place.Px;
    r.Arm_Pivot_Y(i) = place.Py;
    if (roller) {
        p.radius = place.R;
        p.angle = place.theta_c;
        p.center = {place.X, place.Y};
        p.center_key = Turned(p.center, shift);
    } else {
        p.center = {face.Xf, face.Yf};
        p.surface = {face.Xc, face.Yc};
        Cart_to_Polar(p.surface.x, p.surface.y, p.radius, p.angle);
        p.center_key = Turned(p.surface, shift);
    }
    const double A = Atan2D(r.Arm_Pivot_X(i) - p.center.x, r.Arm_Pivot_Y(i) - p.center.y);
    if (roller) {
        const double nu = c.Rotflag * r.CalcData(var::Phi, i) + (A + 90.0);
        const Surface_Cutter s =
            Surface_Cutter_Point(design, sign, p.center.x, p.center.y, nu, c.Follow_Rad, c.Cutter_Radius);
        p.surface = {s.Xs, s.Ys};
        p.cutter = {s.Xc, s.Yc};
        p.surface_key = Turned(p.surface, shift);
    } else {
        const double nu = c.Rotflag * r.CalcData(var::S, i) + (A + 90.0);
        const Surface_Cutter s = Surface_Cutter_Point(design, sign, p.surface.x, p.surface.y, nu, 0.0, c.Cutter_Radius);
        p.cutter = {s.Xc, s.Yc};
        p.surface_key = p.center_key;
    }
    return true;
}

/// All points of a radial cam; stops with Calc_Error where the arm closes no triangle.
void Radial_Profile(Design_State& design)
{
    const Cam_Group& c = design.cam;
    Flags_Group& f = design.flags;
    f.Calc_Error = false;
    if (!c.Translating) {
        Arm_Geometry(design);
        if (f.Calc_Error)
            return;
    }
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        Radial_Point p;
        if (c.Translating) {
            p = Translating_Point(design, i);
        } else if (!Oscillating_Point(design, i, p)) {
            f.Calc_Error = true;
            return;
        }
        Store(design, p, i);
    }
}

/// All points of a barrel or linear cam: docs/theory.md, (102) to (105); stops with Calc_Error where a point has none.
void Axial_Profile(Design_State& design)
{
    const Cam_Group& c = design.cam;
    Table<Single>& data = design.results.CalcData;
    const bool linear = c.Camtype == "Linear";
    const double L = c.Prime_Rad * PI2;  // length of a linear cam
    constexpr std::array unused{9, 10, 13, 14, 34, 35, 38, 39, 40, 41};
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        Axial_Surface surface;
        double sign = c.Top_Bot;
        double nu = data(var::Phi, i);
        if (c.Translating) {
            data(11, i) = data(var::S, i);
            data(12, i) = data(var::Angle, i);
        } else {
            Axial_Coords center;
            if (!Axial_Osc_Coords(design, i, c.Prime_Rad, c.ArmX, c.ArmY, c.ArmRad, center))
                return;
            data(11, i) = center.Z;
            data(12, i) = center.Lambda;
            nu = center.arm + data(var::Phi, i) - 180.0;
            sign = -(Sgn(c.ArmX) * c.Top_Bot);
        }
        if (!Axial_Surface_Point(design, sign, i, data(11, i), data(12, i), nu, c.Follow_Rad, surface))
            return;
        data(36, i) = surface.Z;
        data(37, i) = surface.Lambda;
        if (linear) {
            data(12, i) = data(12, i) / 360.0 * L;
            data(37, i) = data(37, i) / 360.0 * L;
        }
        for (const int row : unused)
            data(row, i) = 0.0;
    }
}

}  // namespace

void Cam_Profile(Design_State& design)
{
    if (design.flags.Starting)
        return;
    Set_Keyway_Angle(design);
    Set_Machine_Zero(design);
    if (design.cam.Camtype == "Radial")
        Radial_Profile(design);
    else
        Axial_Profile(design);
}

void Set_Keyway_Angle(Design_State& design)
{
    Cam_Group& c = design.cam;
    const std::string& text = c.Keyway_Text;
    int angle = 0;
    if (text == "3 O'clock")
        angle = 90;
    else if (text == "6 O'clock")
        angle = 180;
    else if (text == "9 O'clock")
        angle = 270;
    c.Keyway_Clockangle = c.Rotflag * angle;
}

void Set_Machine_Zero(Design_State& design)
{
    Cam_Group& c = design.cam;
    c.Cam_Shift_Angle = c.Translating ? c.Rotflag * c.Follower_Angle - c.Shift_Angle : -c.Shift_Angle;
    c.Cam_Shift_Sign_Angle = c.Translating ? -c.Cam_Shift_Angle : c.Rotflag * c.Cam_Shift_Angle;
    c.Cam_Draw_Angle = Integer(c.Keyway_Clockangle - c.Rotflag * 90) + c.Cam_Shift_Angle;
}

bool Axial_Surface_Point(Design_State& design, double sign, int i, double Z, double Lambda, double normal_angle,
                         double Follow_Rad, Axial_Surface& point)
{
    const Cam_Group& c = design.cam;
    double nu = normal_angle * Rad_per_Deg;
    if (!c.Translating) {
        Axial_Phi at;
        if (!Axial_Osc_Phi(design, i, c.ArmX, c.ArmY, c.ArmRad, at))
            return false;
        nu = -c.Rotflag * at.Phi * Rad_per_Deg + (at.arm * Rad_per_Deg - PI);
    }
    const double th = Lambda * Rad_per_Deg;
    const double q = c.Rotflag * sign;
    point.Z = q * Follow_Rad * std::cos(nu) + Z;
    if (c.Prime_Rad == 0.0) {
        Show_Message(" Your prime circle radius is zero - Please provide a positive value.", Buttons::OK,
                     Symbol::information);
        design.flags.Calc_Error = true;
        return false;
    }
    point.Lambda = (c.Prime_Rad * th - q * Follow_Rad * std::sin(nu)) / c.Prime_Rad * Deg_per_Rad;
    return true;
}

Surface_Cutter Surface_Cutter_Point(const Design_State& design, double sign, double X, double Y, double nu,
                                    double radius, double Cutter)
{
    if (design.flags.Starting)
        return {};
    const double nr = nu * Rad_per_Deg;
    const double c = std::cos(nr);
    const double s = std::sin(nr);
    return {X + sign * radius * c, Y + sign * radius * s, X + sign * (radius - Cutter) * c,
            Y + sign * (radius - Cutter) * s};
}

}  // namespace lobemax
