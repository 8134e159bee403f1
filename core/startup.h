// SPDX-License-Identifier: GPL-3.0-or-later
/// From the start of the program to its first screen, and back to a fresh design.
#pragma once

#include <functional>
#include <string>

namespace lobemax {

struct Design_State;

/// What the start needs from rooms that stand above this one; each may be left empty.
struct Start_Services {
    std::function<void()> screen_size;                                      // fills the screen scale fields
    std::function<void()> read_preferences;                                 // may overwrite the user's defaults
    std::function<void(const std::string& application)> register_cam_file;  // who opens a double-clicked .cam
    std::function<void(const std::string& path)> open_model;                // reads a model file into the design
    std::function<void()> show_title;                                       // the first screen
};

/// The start of the program, up to and with its first screen, under its trap.
///
/// @param command_line  path of a model file to open, or empty
bool Sub_Main(Design_State& design, const std::string& command_line, const Start_Services& services);

/// Puts every default into the design, under its trap; the step is left alone while Keep_Step is set.
bool Initialize(Design_State& design);

/// Empties the segment table: its rows, conditions and splines; the results no longer hold.
void Clear_Segs(Design_State& design);

/// A fresh design: the whole record at its start values, but for what belongs to the user and the run
/// (name, unit system, number format, time base, kind of cam and follower).
void Reset_All(Design_State& design);

/// The menu entries of the number format: each explains itself first. The European one also resets the design,
/// whose texts were typed with the other decimal symbol.
void Choose_USA_Format(Design_State& design);
void Choose_European_Format(Design_State& design);

/// Fills the label tables of the variables, the plots and the Fourier screen.
void Fill_Labels(Design_State& design);

/// Program title and release, as screens and reports show them.
std::string Program_Title(const Design_State& design);

}  // namespace lobemax
