// SPDX-License-Identifier: GPL-3.0-or-later
/// Tab-delimited exports for spreadsheets and machine tools: all data, profile coordinates, motion.
///
/// Items are separated by a tab, lines end with carriage return and line feed, numbers are the shortest decimal text of
/// the stored value with a point. Every file opens with three lines: "File: ", file name, "Design #", design number;
/// user, date, time; an empty line. Files are written whole or not at all. Nothing is read back.
#pragma once

#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// What is exported in a motion file.
enum class Motion_Columns { sva, xdot };

/// Which points a profile file has: those of the rows as they are calculated, or the true ones (truth/check.h).
enum class Profile_Rows { program, truth };

/// All variables 0..Saved Variables of every Printstep-th point, under its trap.
bool Export_All_to_File(const Design_State& design, const std::string& path);

/// Two columns of coordinates, of an axial cam in reverse order, a barrel cam with its radius before them; every
/// Printstep-th point but the last, which repeats the first. Under its trap.
///
/// Versus machine zero Lambda of an axial cam is turned by the start angle, within one turn.
/// @param code  versus cam zero 1 roller centre, 2 surface, 3 cutter centre; versus machine zero 4 roller centre,
///              5 surface
/// @return      false after a fault or a refusal: the rows have no cutter centre of an axial cam, and some designs no
///              true points
bool Export_Profile_to_File(const Design_State& design, const std::string& path, int code,
                            Profile_Rows rows = Profile_Rows::program);

/// Why a design has no true points; empty where it has.
std::string Why_No_True_Profile(const Design_State& design);

/// How far the points of a profile file are from those of the same design with other rows, at most: in the unit of
/// length, along the surface of a barrel cam.
/// @param code  as Export_Profile_to_File's. @throws Fault{9} for any other
double Profile_Distance(const Design_State& design, const Design_State& other, int code);

/// Motion of an oscillating follower or its linkage, under its trap:
///
///   three opening lines; then a line of counts ("Points", n, "Step deg", step, "Links", links, "Cam speed rad/s",
///   omega); a line of arm geometry (name, value, ...), one of the links; an empty line; heads, units, and a line a
///   Printstep-th point.
///
/// sva: angle, S, V, A as stored, in the time base of the design. xdot: angle, X, Xdot, Xddot, per second in every time
/// base: the follower's response where a vibration was calculated, else its motion. With a calculated linkage both go
/// on with position, velocity and acceleration of each moving link: deg, rad/sec, rad/sec^2 in every time base; of a
/// slider its place on the axis, in the length unit, and per second.
bool Export_SVA_to_File(const Design_State& design, const std::string& path, Motion_Columns columns);

/// An entry of the Export list, by its name, from its first check to its last message.
/// @param rows  of a profile. The last message then tells how far the true points are from the rows
/// @return      true when a file was written
bool Run_Export(Design_State& design, std::string_view entry, Profile_Rows rows = Profile_Rows::program);

/// The two cutter entries versus machine zero: their messages, and nothing else.
void Refuse_Cutter_at_Machine_Zero();         // mnu_Cutter_mach
void Refuse_Barrel_Cutter_at_Machine_Zero();  // mnu_Barrel_Ctr_mach

}  // namespace lobemax
