// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/arm.h"

#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"

namespace lobemax {

namespace {

constexpr double no_bound = 1000000.0;  // Phi or Rho of an axial arm where its divisor vanishes
constexpr double no_divisor = 1E-9;

/// Motion of an arm in degrees on an axial cam, brought to radians per second, per second squared. docs/theory.md,
/// (62).
double Axial_Velocity(const Design_State& design, double v)
{
    switch (design.motion.Time_Base) {
    case 1:
        return v * Rad_per_Deg;
    case 2:
        return v * design.motion.Shaft_speed;
    default:
        return v * Rad_per_Deg * design.motion.Shaft_speed;
    }
}

/// docs/theory.md, (62).
double Axial_Acceleration(const Design_State& design, double a)
{
    switch (design.motion.Time_Base) {
    case 1:
        return a * Rad_per_Deg;
    case 2:
        return a * design.motion.Shaft_Speed_Sq;
    default:
        return a * Rad_per_Deg * design.motion.Shaft_Speed_Sq;
    }
}

/// Angle of the arm of an axial cam at a point, and what hangs on it: docs/theory.md, (88). The displacement is row 1
/// also of a polydyne cam: meant, where mechanics has the polydyne cam's own row 22.
struct Axial_Arm {
    double g0;   // degrees
    double arm;  // degrees
    double ar;   // radians
    double Ra;   // radius at which the roller runs
};

Axial_Arm Axial_Arm_at(Design_State& design, int i, double prime, double ArmX, double ArmY, double ArmRad)
{
    const double g0 = Axial_Rest_Angle(design, ArmX, ArmY, ArmRad);
    const double arm = design.cam.ArmDirect * design.results.CalcData(var::S, i) + g0;
    const double ar = arm * Rad_per_Deg;
    const double xa = ArmRad * std::cos(ar) + ArmX;
    return {g0, arm, ar, Sqr(xa * xa + prime * prime)};
}

/// Of a pivot from the cam's centre.
double Distance(double x, double y)
{
    return Sqr(x * x + y * y);
}

}  // namespace

double Sgn(double x)
{
    return x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
}

double Arm_Velocity(const Design_State& design, double v)
{
    switch (design.motion.Time_Base) {
    case 1:
        return v * PI / (design.motion.Shaft_speed * 180.0);
    case 3:
        return v * PI / 180.0;
    default:
        return v;
    }
}

double Arm_Pivot_Distance(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    return Distance(c.ArmX, c.ArmY);
}

void Arm_Geometry(Design_State& design)
{
    Cam_Group& c = design.cam;
    c.Arm_Pivot_Dist = Arm_Pivot_Distance(design);
    c.Arm_Pivot_Angle = Atan2D(c.ArmX, c.ArmY);
    const double D = c.Arm_Pivot_Dist;
    const double p = c.Arm_Pivot_Angle * Rad_per_Deg;
    if (c.ArmRad * D == 0.0) {
        design.flags.Calc_Error = true;
        return;
    }
    Single start;
    CosineLaw_Angle(design, c.Prime_Rad, D, c.ArmRad, start);
    c.Arm_Start_Angle = start * Deg_per_Rad;
    double angle = 0.0;
    const double twice = 2.0 * D * c.Prime_Rad;
    if (twice != 0.0) {
        angle = FNArcCos(design, (c.Prime_Rad * c.Prime_Rad + D * D - c.ArmRad * c.ArmRad) / twice);
        c.Arm_Cam_Angle = angle * Deg_per_Rad;
    }
    c.Arm_Work_Angle = p - c.ArmDirect * c.Side_Sign * angle;
    c.Arm_Start_Theta = c.Arm_Work_Angle * Deg_per_Rad;
    c.Arm_Start_X = c.Prime_Rad * std::cos(c.Arm_Work_Angle);
    c.Arm_Start_Y = c.Prime_Rad * std::sin(c.Arm_Work_Angle);
    c.Arm_Start_Radius = Sqr(c.Arm_Start_X * c.Arm_Start_X + c.Arm_Start_Y * c.Arm_Start_Y);
}

bool Arm_Position(Design_State& design, double gamma, double delta, Arm_Place& place)
{
    Cam_Group& c = design.cam;
    const double D = c.Arm_Pivot_Dist;
    const double dr = delta * Rad_per_Deg;
    place.Px = D * std::cos(dr);
    place.Py = D * std::sin(dr);
    Single side;
    if (!CosineLaw_Side(D, c.ArmRad, gamma * Rad_per_Deg, side))
        return false;
    place.R = side;
    double t = 0.0;
    const double twice = 2.0 * D * place.R;
    if (twice != 0.0)
        t = FNArcCos(design, (place.R * place.R + D * D - c.ArmRad * c.ArmRad) / twice);
    place.tau = t * Deg_per_Rad;
    c.Arm_Work_Angle = dr - c.ArmDirect * c.Side_Sign * t;
    place.theta_c = FN_Modulo(c.Arm_Work_Angle * Deg_per_Rad, 360.0);
    place.X = place.R * std::cos(c.Arm_Work_Angle);
    place.Y = place.R * std::sin(c.Arm_Work_Angle);
    return true;
}

Ratios Link_Ratios(const Design_State& design, int i)
{
    if (!design.linkage.Drive_End_Effector)
        return {};
    const Results_Group& r = design.results;
    const auto divisor = [i](const Row<Single>& row) { return row(i) == 0.0 ? 1.0 : double{row(i)}; };
    return {divisor(r.Link_Ratio_S), divisor(r.Link_Ratio_V), divisor(r.Link_Ratio_A)};
}

bool Flat_Osc_Contact(Design_State& design, int i, double ArmX, double ArmY, Flat_Contact& contact)
{
    const Cam_Group& c = design.cam;
    const Motion_Group& m = design.motion;
    const Table<Single>& data = design.results.CalcData;
    const bool polydyne = design.flags.Polydyne_Calc;
    const double theta = data(var::Angle, i);
    design.flags.Calc_Error = false;
    double w = data(polydyne ? 23 : var::V, i);
    if (m.Time_Base == 1)
        w = w * PI / (m.Shaft_speed * 180.0);
    else if (m.Time_Base == 3)
        w = w * PI / 180.0;
    const double D = Distance(ArmX, ArmY);
    contact.pivot_angle = Atan2D(ArmX, ArmY);
    if (D == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    contact.start_angle = FNArcSin(design, (c.Offset + c.Prime_Rad) / D) * Deg_per_Rad;
    if (c.Conjugate)
        contact.start_angle += m.Lift;
    contact.arm = c.Side_Sign * data(polydyne ? 22 : var::S, i) + contact.start_angle;
    const double u = 1.0 / (1.0 - w) * D * std::cos(contact.arm * Rad_per_Deg);  // along the face, from the arm's foot
    const double d = Sqr(c.Offset * c.Offset + u * u);
    const double b = std::atan(c.Offset / d) * Deg_per_Rad;
    contact.direction = (b + contact.arm) * (c.ArmDirect * c.Side_Sign) + (contact.pivot_angle + 180.0);
    const double dr = contact.direction * Rad_per_Deg;
    const double turn = c.Rotflag * theta;
    Single x;
    Single y;
    Rotate(u * std::cos(dr) + ArmX, u * std::sin(dr) + ArmY, turn, -1, x, y);
    contact.Xf = x;
    contact.Yf = y;
    Rotate(d * std::cos(dr) + ArmX, d * std::sin(dr) + ArmY, turn, -1, x, y);
    contact.Xc = x;
    contact.Yc = y;
    return true;
}

double Axial_Rest_Angle(Design_State& design, double ArmX, double ArmY, double ArmRad)
{
    const double g0 = FNArcSin(design, ArmY / ArmRad) * Deg_per_Rad;
    return ArmX > 0.0 ? 180.0 - g0 : g0;
}

bool Axial_Osc_Phi(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, Axial_Phi& point)
{
    if (design.flags.Starting)
        return false;
    design.flags.Calc_Error = false;
    const double v = design.results.CalcData(design.flags.Polydyne_Calc ? 23 : var::V, i);
    const double w = Axial_Velocity(design, v);
    if (ArmRad == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    const Axial_Arm at = Axial_Arm_at(design, i, design.cam.Prime_Rad, ArmX, ArmY, ArmRad);
    const double num =
        Sgn(ArmX) * design.cam.Rotflag * ArmRad * w / design.motion.Shaft_speed - at.Ra * std::sin(at.ar);
    const double den = at.Ra * std::cos(at.ar);
    point.g0 = at.g0;
    point.arm = at.arm;
    point.Phi = std::abs(den) > no_divisor ? -design.cam.Rotflag * std::atan(num / den) * Deg_per_Rad : no_bound;
    return true;
}

bool Axial_Osc_Rho(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, double& Rho)
{
    if (design.flags.Starting)
        return false;
    design.flags.Calc_Error = false;
    const Table<Single>& data = design.results.CalcData;
    const bool polydyne = design.flags.Polydyne_Calc;
    const double w1 = Axial_Velocity(design, data(polydyne ? 23 : var::V, i));
    const double w2 = Axial_Acceleration(design, data(polydyne ? 24 : var::A, i));
    if (ArmRad == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    const Axial_Arm at = Axial_Arm_at(design, i, design.cam.Prime_Rad, ArmX, ArmY, ArmRad);
    const double omega = design.motion.Shaft_speed;
    const int direct = design.cam.ArmDirect;
    const double B = at.Ra * at.Ra * omega * omega + (direct * 2) * at.Ra * ArmRad * omega * w1 * std::sin(at.ar) +
                     ArmRad * ArmRad * w1 * w1;
    const double N = Power(B, 1.5);
    const double E1 = w1 * w1 * omega * at.Ra * std::sin(at.ar);
    const double E2 = w1 * w1 * w1 * direct * ArmRad;
    const double E3 = direct * at.Ra * omega * std::cos(at.ar) * w2;
    const double M = (-E1 + E2 + E3) * ArmRad;
    Rho = std::abs(M) > no_divisor ? Sgn(ArmX) * direct * N / M : no_bound;
    return true;
}

bool Axial_Osc_Coords(Design_State& design, int i, double Prime_Rad, double ArmX, double ArmY, double ArmRad,
                      Axial_Coords& point)
{
    const Cam_Group& c = design.cam;
    design.flags.Calc_Error = false;
    if (ArmRad == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    const Axial_Arm at = Axial_Arm_at(design, i, Prime_Rad, ArmX, ArmY, ArmRad);
    point.arm = at.arm;
    const double dL = ArmRad / at.Ra * std::cos(at.ar) * Deg_per_Rad;  // the angle by which the arc lags
    point.Z = c.ArmDirect * ArmRad * std::sin(at.ar);
    const double theta = design.results.CalcData(var::Angle, i);
    const double Lambda0 = c.Camtype == "Linear" ? theta : c.Rotflag * dL + theta;
    Single Lambda;
    Modulo(Lambda0, 360.0, Lambda);
    point.Lambda = Lambda;
    return true;
}

}  // namespace lobemax
