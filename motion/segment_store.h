// SPDX-License-Identifier: GPL-3.0-or-later
/// The work on one segment: its curve is made, and its points are rounded into the table of the calculated data.
///
/// Segments are 1..20, error 9 otherwise. The segment becomes the one at work.
#pragma once

#include "core/design_state.h"
#include "motion/segment_curve.h"

namespace lobemax {

/// Beta_Sq and Beta_Cu of the segment at work, from its Beta_Rad, radians squared and cubed.
void Load_Beta(Design_State& design);

/// Stores the working point Seg_S .. Seg_P of the segment at work at local angle theta, degrees, in the units of
/// Time_Base: docs/theory.md, (40) to (42).
///
/// In the degrees base every derivative takes the one factor PI / 180: meant. Mechanics has its n-th power; A
/// reads 57.3 times, J 3283 times and Ping 188091 times too large per degree^n, and whoever takes the same factor back
/// arrives at the true value per radian.
/// @throws Fault{9} when the point lies outside the cycle, Fault{6} when a value is no Single
void Store_Point(Design_State& design, Single theta);

/// Fills the table with the points of a segment's curve: the one place where a motion is rounded.
///
/// theta runs in 32 bits from 0 by Deltatheta; a law and a polynomial are asked at the 32-bit place theta / beta,
/// become the working point in 32 bits, are mirrored there in a fall, and are stored by Store_Point. A spline, whose
/// curve is over degrees, goes to the table without the working point. A law ends at the last step within its beta, a
/// segment given by conditions at the step nearest to it. A curve without points stores none.
/// @throws Fault{6} for a beta of zero, and as Store_Point
void Store_Segment(Design_State& design, int Seg, const Segment_Curve& curve);

/// Fills Firstlast of the segment Seg from the stored points: a dwell's are taken one step inside it,
/// because its end points are shared with its neighbours.
void Store_Segment_Ends(Design_State& design);

/// Liftmax: range of S over points 1..Max_Data_Points_used. docs/theory.md, (44).
void Update_Liftmax(Design_State& design);

/// Runs the law of a segment over all its points, then fills Firstlast of the segment and Liftmax.
///
/// L is Lift, the duration stands in Beta_Deg and Beta_Rad. Polynomial and spline segments, and selectors without a
/// law, store no point here. After 345, 4567, 5-11 and the polydyne laws their bare number takes the place of the list
/// text in Function: meant.
/// @return false when the law reported a fault under its own name: the segment is not calculated
/// @throws Fault of the laws that leave the report to the caller, and of the store; 6 for a beta of zero
bool Run_Motion_Program(Design_State& design, int Seg);

/// Polydyne polynomial 2-p-q-r over the segment at work, q = p + 2, r = p + 4; p is at least 4.
/// Function becomes the text of r. Returns false after a fault that it reported.
bool Dudley(Design_State& design, Single p);

/// Polynomial 2-p-q-r-s over the segment at work. Function becomes the text of r. Returns false after a
/// fault that it reported.
bool Thoren(Design_State& design, Single p, Single q, Single r, Single s);

/// Holds the segment at work at one position, which becomes its Total_Displacement.
void Dwell(Design_State& design, Single value);

/// Solves the polynomial of the conditions read for a segment, keeps its coefficients in 32 bits (Coefficient, with
/// Thetanorm and Equation beside them) and stores its points and Firstlast.
///
/// After a refusal, told by a message, Poly_OK is false and the stored points are as they were.
/// @throws Fault{6}, Fault{9}, Fault{11} of a point that cannot be stored; the stored points are as they were
bool CalPoly(Design_State& design, int Seg);

/// The whole work on a polynomial segment from its stored texts, under its trap: table, system, points, Liftmax.
///
/// S of rows 0 and 9 follow Start_Value and End_Value.
/// @return false after any refusal or fault: Poly_OK and Polydone are false, the stored points as they were
bool Calc_Polynomial(Design_State& design, int Seg);

/// Solves the spline of the conditions read for a segment over its knots and stores its points and Firstlast.
///
/// @return false where the system is singular or has too few digits left; the stored points are as they were
/// @throws Fault{6}, Fault{9}, Fault{11} of a point that cannot be stored; the stored points are as they were
bool CalcSplines(Design_State& design, int Seg);

/// The whole work on a spline segment from its stored texts, under its trap.
///
/// S of rows 0 and 9 follow Start_Value and End_Value; the count goes to No_Conditions.
/// @return Splines_Calculated; false after any refusal or fault, the stored points as they were
bool Calc_Spline(Design_State& design, int Seg);

/// The work on a segment given by conditions: a polynomial (selector 6) or a spline (11); any other selector is
/// refused with a message.
bool Calc_Bounds_Segment(Design_State& design, int Seg);

}  // namespace lobemax
