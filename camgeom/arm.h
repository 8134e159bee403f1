// SPDX-License-Identifier: GPL-3.0-or-later
/// The geometry of a follower on an arm, at one point of the cycle: what sizing and profile have in common.
///
/// Lengths in the length unit, angles in degrees unless a line says radians. The displacement of an arm is its swing in
/// degrees. Equations are those of docs/theory.md, 7 and 8, which also say where they leave mechanics and how far.
#pragma once

#include "camgeom/size_formulas.h"
#include "core/basic_types.h"

namespace lobemax {

struct Design_State;

/// 1, 0 or -1 by the sign of x.
double Sgn(double x);

/// What brings the velocity of an arm from the units of Time_Base and degrees of swing to radians per radian of cam.
/// (61) Infinite for a shaft speed of zero in the seconds base.
formulas::Scale Arm_Velocity(const Design_State& design);

/// Divisors of motion between end effector and follower at a point: 1 unless the end effector is driven, and 1 where
/// the stored ratio is exactly zero. Section 5, (63). @throws Fault{9} for a point beyond the ratios
struct Ratios {
    double S = 1.0;
    double V = 1.0;
    double A = 1.0;
};
Ratios Link_Ratios(const Design_State& design, int i);

/// Distance of the arm's pivot from the cam centre. (74)
double Arm_Pivot_Distance(const Design_State& design);

/// The arm with its roller on the prime circle: derived fields Arm_Pivot_Dist to Arm_Work_Angle from ArmX, ArmY, ArmRad
/// and Prime_Rad. (74)
///
/// An arm or pivot distance of zero sets Calc_Error; sides that close no triangle set Math_Error as FNArcCos does, and
/// a flat triangle takes its 1 rad, where mechanics has 0 or PI.
void Arm_Geometry(Design_State& design);

/// The triangle of cam centre, arm pivot and roller centre.
struct Arm_Place {
    double tau = 0.0;      // degrees, angle at the cam centre
    double R = 0.0;        // distance of the roller centre from the cam centre
    double theta_c = 0.0;  // degrees, polar angle of the roller centre, 0 to 360
    double Px = 0.0;       // pivot
    double Py = 0.0;
    double X = 0.0;  // roller centre
    double Y = 0.0;
};

/// Solves that triangle for an arm angle gamma at the pivot and a pivot direction delta, both in degrees; leaves
/// Arm_Work_Angle. (75) to (77). Needs Arm_Geometry.
/// @return false when the triangle has no side: a message was shown
/// @throws Fault{6} when a side is no finite Single
bool Arm_Position(Design_State& design, double gamma, double delta, Arm_Place& place);

/// Contact of a flat face on an arm, in the cam's frame, at point i: foot point, contact point, lengths, and the angles
/// of the triangle, degrees. (83), (86)
///
/// Meant, and not as mechanics has it: 1 - w in place of 1 - K w (84), right where cam and arm rise turn the same way,
/// else the surface lies some 10 mm off in a cam of 50; the offset counts twice; a conjugate starts from the lift of
/// the segment calculated last. Section 7.4 has the figures.
/// @return false, with Calc_Error, where the pivot stands on the cam centre; Calc_Error is cleared otherwise
struct Flat_Contact {
    double Xf = 0.0;
    double Yf = 0.0;
    double Xc = 0.0;
    double Yc = 0.0;
    double pivot_angle = 0.0;
    double start_angle = 0.0;
    double arm = 0.0;
    double direction = 0.0;
};
bool Flat_Osc_Contact(Design_State& design, int i, double ArmX, double ArmY, Flat_Contact& contact);

/// The same for all points: what is constant over the cycle. @return as Flat_Osc_Contact
bool Flat_Osc_Motion(Design_State& design, double ArmX, double ArmY, formulas::Flat_Contact_Motion& contact);

/// The angle of an axial cam's arm at zero displacement, degrees: its roller ArmY above the pivot, on the side of the
/// cam. (88). Math_Error where the arm is shorter.
double Axial_Rest_Angle(Design_State& design, double ArmX, double ArmY, double ArmRad);

/// The arm of an axial cam for all points. @return false, with Calc_Error, for an arm of zero; Calc_Error is cleared
/// otherwise
bool Axial_Osc_Motion(Design_State& design, double prime, double ArmX, double ArmY, double ArmRad,
                      formulas::Axial_Arm_Motion& arm);

/// Pressure angle of a barrel or linear cam with an arm at point i: pivot ArmX, ArmY, arm ArmRad. (88), (90)
///
/// 1000000 where its divisor is within 1E-9 of zero. Meant: the drum's speed is taken at the roller's radius R_a, 0.5 %
/// above the prime radius at 6 of 60, and the angle is the true one for ArmDirect = sgn(ArmX) only; section 7.5.
/// @return false while Starting, and, with Calc_Error, for an arm of zero; Calc_Error is cleared otherwise
struct Axial_Phi {
    double Phi = 0.0;  // degrees
    double g0 = 0.0;   // degrees, arm angle at zero displacement
    double arm = 0.0;  // degrees, arm angle
};
bool Axial_Osc_Phi(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, Axial_Phi& point);
/// The same for all points. @return as Axial_Osc_Motion
bool Axial_Osc_Phi_Formula(Design_State& design, double ArmX, double ArmY, double ArmRad,
                           formulas::Phi_Oscillating_Axial& phi);

/// Radius of curvature of the same at point i. (91)
///
/// 1000000 where its divisor is within 1E-9 of zero. Meant: B belongs to one sense of rotation and its divisor to the
/// other, some 15 % beside mechanics either way; section 7.5.
/// @return as Axial_Osc_Phi
bool Axial_Osc_Rho(Design_State& design, int i, double ArmX, double ArmY, double ArmRad, double& Rho);
/// The same for all points. @return as Axial_Osc_Motion
bool Axial_Osc_Rho_Formula(Design_State& design, double ArmX, double ArmY, double ArmRad,
                           formulas::Rho_Oscillating_Axial& rho);

/// Roller centre of a barrel or linear cam with an arm, at point i. (89), (104)
///
/// Meant: Lambda leaves ArmX out, a constant turn that machine zero takes up, and Z goes with ArmDirect; section 8.2.
/// @return false, with Calc_Error, for an arm of zero; Calc_Error is cleared otherwise
struct Axial_Coords {
    double arm = 0.0;     // degrees, arm angle
    double Z = 0.0;       // length
    double Lambda = 0.0;  // degrees
};
bool Axial_Osc_Coords(Design_State& design, int i, double Prime_Rad, double ArmX, double ArmY, double ArmRad,
                      Axial_Coords& point);

}  // namespace lobemax
