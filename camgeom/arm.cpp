// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/arm.h"

#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"

namespace lobemax {

namespace {

/// Of a pivot from the cam's centre.
double Distance(double x, double y)
{
    return Sqr(x * x + y * y);
}

/// The motion of an arm on an axial cam, from degrees to radians per second. docs/theory.md, (62).
formulas::Axial_Velocity Axial_per_Second(const Design_State& design)
{
    switch (design.motion.Time_Base) {
    case 1:
        return {Rad_per_Deg};
    case 2:
        return {design.motion.Shaft_speed};
    default:
        return {Rad_per_Deg, design.motion.Shaft_speed};
    }
}

/// To radians per second squared. docs/theory.md, (62).
formulas::Axial_Velocity Axial_per_Second_Squared(const Design_State& design)
{
    switch (design.motion.Time_Base) {
    case 1:
        return {Rad_per_Deg};
    case 2:
        return {design.motion.Shaft_Speed_Sq};
    default:
        return {Rad_per_Deg, design.motion.Shaft_Speed_Sq};
    }
}

}  // namespace

double Sgn(double x)
{
    return x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
}

formulas::Scale Arm_Velocity(const Design_State& design)
{
    switch (design.motion.Time_Base) {
    case 1:
        return {PI, design.motion.Shaft_speed * 180.0};
    case 3:
        return {PI, 180.0};
    default:
        return {};
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

bool Flat_Osc_Motion(Design_State& design, double ArmX, double ArmY, formulas::Flat_Contact_Motion& contact)
{
    const Cam_Group& c = design.cam;
    design.flags.Calc_Error = false;
    const double D = Distance(ArmX, ArmY);
    if (D == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    double start_angle = FNArcSin(design, (c.Offset + c.Prime_Rad) / D) * Deg_per_Rad;
    if (c.Conjugate)
        start_angle += design.motion.Lift;
    contact = {.D = D,
               .ArmX = ArmX,
               .ArmY = ArmY,
               .pivot_angle = Atan2D(ArmX, ArmY),
               .start_angle = start_angle,
               .side = double(c.Side_Sign),
               .turn_sense = double(c.ArmDirect * c.Side_Sign),
               .rot = double(c.Rotflag),
               .offset = c.Offset,
               .velocity = Arm_Velocity(design)};
    return true;
}

bool Flat_Osc_Contact(Design_State& design, int i, double ArmX, double ArmY, Flat_Contact& contact)
{
    const Table<Single>& data = design.results.CalcData;
    const bool polydyne = design.flags.Polydyne_Calc;
    const double theta = data(var::Angle, i);
    const double s = data(polydyne ? 22 : var::S, i);
    const double v = data(polydyne ? 23 : var::V, i);
    formulas::Flat_Contact_Motion motion;
    if (!Flat_Osc_Motion(design, ArmX, ArmY, motion))
        return false;
    const auto at = motion(s, v, theta);
    contact = {.Xf = Single(at.foot.x),
               .Yf = Single(at.foot.y),
               .Xc = Single(at.contact.x),
               .Yc = Single(at.contact.y),
               .pivot_angle = motion.pivot_angle,
               .start_angle = motion.start_angle,
               .arm = motion.Arm(s),
               .direction = at.direction};
    return true;
}

double Axial_Rest_Angle(Design_State& design, double ArmX, double ArmY, double ArmRad)
{
    const double g0 = FNArcSin(design, ArmY / ArmRad) * Deg_per_Rad;
    return ArmX > 0.0 ? 180.0 - g0 : g0;
}

bool Axial_Osc_Motion(Design_State& design, double prime, double ArmX, double ArmY, double ArmRad,
                      formulas::Axial_Arm_Motion& arm)
{
    design.flags.Calc_Error = false;
    if (ArmRad == 0.0) {
        design.flags.Calc_Error = true;
        return false;
    }
    arm = {.direct = double(design.cam.ArmDirect),
           .g0 = Axial_Rest_Angle(design, ArmX, ArmY, ArmRad),
           .ArmX = ArmX,
           .ArmRad = ArmRad,
           .prime = prime};
    return true;
}

bool Axial_Osc_Phi_Formula(Design_State& design, double ArmX, double ArmY, double ArmRad,
                           formulas::Phi_Oscillating_Axial& phi)
{
    formulas::Axial_Arm_Motion arm;
    if (!Axial_Osc_Motion(design, design.cam.Prime_Rad, ArmX, ArmY, ArmRad, arm))
        return false;
    phi = {.arm = arm,
           .velocity = Axial_per_Second(design),
           .sgn_ArmX_rot = Sgn(ArmX) * design.cam.Rotflag,
           .rot = double(design.cam.Rotflag),
           .ArmRad = ArmRad,
           .omega = design.motion.Shaft_speed};
    return true;
}

bool Axial_Osc_Phi(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, Axial_Phi& point)
{
    if (design.flags.Starting)
        return false;
    // The displacement is row 1 also of a polydyne cam: meant, where mechanics has the polydyne cam's own row 22.
    const double s = design.results.CalcData(var::S, i);
    const double v = design.results.CalcData(design.flags.Polydyne_Calc ? 23 : var::V, i);
    formulas::Phi_Oscillating_Axial phi;
    if (!Axial_Osc_Phi_Formula(design, ArmX, ArmY, ArmRad, phi))
        return false;
    point = {.Phi = phi(s, v), .g0 = phi.arm.g0, .arm = phi.arm(s).arm};
    return true;
}

bool Axial_Osc_Rho_Formula(Design_State& design, double ArmX, double ArmY, double ArmRad,
                           formulas::Rho_Oscillating_Axial& rho)
{
    formulas::Axial_Arm_Motion arm;
    if (!Axial_Osc_Motion(design, design.cam.Prime_Rad, ArmX, ArmY, ArmRad, arm))
        return false;
    rho = {.arm = arm,
           .velocity = Axial_per_Second(design),
           .acceleration = Axial_per_Second_Squared(design),
           .direct = double(design.cam.ArmDirect),
           .sgn_ArmX = Sgn(ArmX),
           .ArmRad = ArmRad,
           .omega = design.motion.Shaft_speed};
    return true;
}

bool Axial_Osc_Rho(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, double& Rho)
{
    if (design.flags.Starting)
        return false;
    const Table<Single>& data = design.results.CalcData;
    const bool polydyne = design.flags.Polydyne_Calc;
    const double s = data(var::S, i);
    const double v = data(polydyne ? 23 : var::V, i);
    const double a = data(polydyne ? 24 : var::A, i);
    formulas::Rho_Oscillating_Axial rho;
    if (!Axial_Osc_Rho_Formula(design, ArmX, ArmY, ArmRad, rho))
        return false;
    const auto answer = rho(s, v, a);
    if (answer.told)
        throw Fault{invalid_argument};
    Rho = answer.Rho;
    return true;
}

bool Axial_Osc_Coords(Design_State& design, int i, double Prime_Rad, double ArmX, double ArmY, double ArmRad,
                      Axial_Coords& point)
{
    formulas::Axial_Arm_Motion arm;
    if (!Axial_Osc_Motion(design, Prime_Rad, ArmX, ArmY, ArmRad, arm))
        return false;
    const Cam_Group& c = design.cam;
    const double S = design.results.CalcData(var::S, i);
    const double theta = design.results.CalcData(var::Angle, i);
    const auto at = formulas::Axial_Arm_Center<double>::Of(arm, double(c.Rotflag), c.Camtype == "Linear", S, theta);
    point = {.arm = at.arm, .Z = at.Z, .Lambda = Single(at.Lambda)};
    return true;
}

}  // namespace lobemax
