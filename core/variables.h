// SPDX-License-Identifier: GPL-3.0-or-later
/// The calculated variables: one table of what each row of CalcData is called, in which unit it stands, which rung of
/// the ladder fills it and where it is offered. Labels, lists, units, exports and plots read it.
///
/// Rows 0 to 53 are stored; 54 to 59 are closed curves of two stored rows, offered beside them for a polar plot.
#pragma once

#include <array>
#include <span>
#include <vector>

namespace lobemax {

struct Design_State;

/// The rows by name. A row that means one thing on a radial cam and another on a barrel or linear cam has two names.
namespace var {
inline constexpr int Angle = 0;  // of the cam
inline constexpr int S = 1;
inline constexpr int V = 2;
inline constexpr int A = 3;
inline constexpr int J = 4;
inline constexpr int Phi = 5;
inline constexpr int Rho = 6;
inline constexpr int Force = 7;
inline constexpr int Torque = 8;
inline constexpr int X = 9;  // roller centre, versus cam zero
inline constexpr int Y = 10;
inline constexpr int Radius = 11;
inline constexpr int Theta = 12;
inline constexpr int Z = Radius;
inline constexpr int Lambda = Theta;
inline constexpr int X_Key = 13;  // roller centre, versus machine zero
inline constexpr int Y_Key = 14;
inline constexpr int Friction_Torque = 15;
inline constexpr int Flywheel_Torque = 16;
inline constexpr int Ping = 17;
inline constexpr int FFT_Real = 18;
inline constexpr int FFT_Imag = 19;
inline constexpr int FFT_Mag = 20;
inline constexpr int FFT_Phase = 21;
inline constexpr int Polydyne_S = 22;
inline constexpr int Polydyne_V = 23;
inline constexpr int Polydyne_A = 24;
inline constexpr int Nonpolydyne_X = 25;  // profile of the cam that is not made polydyne
inline constexpr int Nonpolydyne_Y = 26;
inline constexpr int Nonpolydyne_Radius = 27;
inline constexpr int Nonpolydyne_Theta = 28;
inline constexpr int Response_Error = 29;  // S - X, over the cam angle
inline constexpr int Response_X = 30;
inline constexpr int Response_Xdot = 31;
inline constexpr int Response_Xddot = 32;
inline constexpr int Dynamic_Force = 33;
inline constexpr int Radius_Key = 34;
inline constexpr int Theta_Key = 35;
inline constexpr int X_Surface = 36;
inline constexpr int Y_Surface = 37;
inline constexpr int Z_Surface = X_Surface;
inline constexpr int Lambda_Surface = Y_Surface;
inline constexpr int X_Surface_Key = 38;
inline constexpr int Y_Surface_Key = 39;
inline constexpr int X_Cutter = 40;
inline constexpr int Y_Cutter = 41;
inline constexpr int Z_Cutter = X_Cutter;
inline constexpr int Lambda_Cutter = Y_Cutter;
inline constexpr int Sigma_Max = 42;
inline constexpr int Tau_Max = 43;
inline constexpr int Ext_Force = 44;
inline constexpr int Torque_Integral = 45;
inline constexpr int World_X = 46;
inline constexpr int World_Y = 47;
inline constexpr int Comp_Torque = 48;
inline constexpr int Net_Torque = 49;
inline constexpr int Time_X = 50;  // the response as it was integrated, over time
inline constexpr int Time_Xdot = 51;
inline constexpr int Time_Xddot = 52;
inline constexpr int Time_Error = 53;
inline constexpr int Profile_Curve = 54;
inline constexpr int Nonpolydyne_Curve = 55;
inline constexpr int Profile_Key_Curve = 56;
inline constexpr int Surface_Curve = 57;
inline constexpr int Surface_Key_Curve = 58;
inline constexpr int Cutter_Curve = 59;

inline constexpr int Last_Stored = Time_Error;
inline constexpr int First_Curve = Profile_Curve;
inline constexpr int Last = Cutter_Curve;
inline constexpr int Model_Base = 24;  // what Idx_X, Idx_Xdot, Idx_Xddot and Idx_SX count from
}  // namespace var

/// What a row is measured in. A position is a length, or degrees of an arm.
enum class Unit_Kind {
    none,
    degrees,
    position,
    position_1,  // derivatives of the position in the time base
    position_2,
    position_3,
    position_per_sec,  // derivatives in time, whatever the time base
    position_per_sec2,
    length,
    length_1,  // derivatives of a length in the time base
    length_2,
    length_4,
    Lambda,  // around a barrel cam degrees, else a length
    force,
    torque,
    stress,
};

/// The rungs that fill rows, in the order in which lists offer what they fill.
enum class Rung {
    motion,
    size,
    force,
    profile,
    polydyne,
    vibration,
    stress,
    external_force,
    fft,
    compensation,
};

/// Where a row is offered; a set of these. Presets name their rows themselves.
namespace offer {
inline constexpr unsigned nowhere = 0;
inline constexpr unsigned radial_plot = 1;   // the variable lists of plots and of the Fourier screen
inline constexpr unsigned axial_plot = 2;    // the same, of a barrel or linear cam
inline constexpr unsigned table = 4;         // the variable lists of tables, wherever they go
inline constexpr unsigned screen_table = 8;  // the same, of a table on the screen alone
inline constexpr unsigned polar_curve = 16;  // the closed curves of the polar plot
inline constexpr unsigned spreadsheet = 32;  // a column of the spreadsheet
}  // namespace offer

/// The words of a row: in lists and heads, at the head of a spreadsheet's column, of a table's column, as a symbol.
struct Variable_Labels {
    const char* Var_Name;
    const char* Var_Long;
    const char* Var_Short;
    const char* Var_Symbol;
};

/// A line of the table, with the words of a radial cam in the time base of seconds.
struct Variable {
    int row;
    Variable_Labels labels;
    Unit_Kind unit;
    Rung rung;
    unsigned offered;
};

/// All rows, 0 to 59; element v is row v.
std::span<const Variable, var::Last + 1> Variables();

/// @throws Fault{9} for a row outside 0..59
const Variable& Variable_at(int row);

/// The words of a row for the kind of cam and the time base of a design. @throws Fault{9} for a row outside 0..59
Variable_Labels Labels_of(const Design_State& design, int row);

/// Stores the words of every row into Var_Name, Var_Long, Var_Short and Var_Symbol: due whenever the kind of cam or
/// the time base has changed.
void Name_Variables(Design_State& design);

/// The rows that are offered at one of these places, in their order.
std::vector<int> Rows_Offered(unsigned where);

/// Whether the rung that fills a row is done and its results hold.
bool Rung_Done(const Design_State& design, Rung rung);

/// The two rows of a closed curve of the cam.
struct Coordinate_Rows {
    int first;
    int second;
};

/// Rows of x and y of a closed curve 54 to 59 of a radial cam. @throws Fault{9} for any other
Coordinate_Rows Radial_Coordinates(int curve);

/// Rows of Lambda and Z of the same curve of a barrel or linear cam: versus machine zero they are those versus cam
/// zero, whose Lambda an export turns. @throws Fault{9} outside 54..59, and for the curve that these cams have not
Coordinate_Rows Axial_Coordinates(int curve);

/// The head of a column of cam angles: row 0 has no name in the lists.
inline constexpr const char* Angle_Head = "Angle";

}  // namespace lobemax
