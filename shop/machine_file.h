// SPDX-License-Identifier: GPL-3.0-or-later
/// What every file for a machine has: how it was made or why it was not, the lines at its head, its numbers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "truth/check.h"
#include "truth/true_cam.h"

namespace lobemax {

struct Design_State;

/// A file for a machine as text, lines ending with CR LF; or the sentence why there is none.
struct Machine_File {
    std::string text;     // empty where it was refused
    std::string refusal;  // a sentence; empty where the file was made
    std::vector<std::string>
        notes;  // sentences that whoever runs the machine has to know; the file's head has them too
    double largest_deviation = 0.0;  // of what is written from the true curve, in the file's unit
    double at = 0.0;                 // cam angle of it, degrees
    int lines = 0;                   // straight moves of the contour
    int arcs = 0;                    // and arcs
    int points = 0;                  // of a table; pieces of a motion of polynomials
};

/// A file that was refused.
Machine_File Refused(std::string sentence);

/// What the file is, and model, design number, date and time by the host's clock: the first lines of every file.
std::vector<std::string> Opening_Lines_of(const Design_State& design, std::string_view what);

/// A number with so many decimals, 0 to 12, and a decimal point, whatever the number format in force is; zero has no
/// sign.
std::string With_Decimals(double value, int decimals);

/// What may stand in a comment of every language that a machine reads: printable ASCII without brackets, quotes, stars,
/// semicolons and percent signs; each other character is a blank.
std::string As_Comment(std::string_view text);

/// Words of the unit that the follower's position has: "mm", "deg".
std::string Position_Unit_of(const Design_State& design);

/// Why a cam is not cut with a tool of a radius in the design's unit: Why_No_Cam with that tool for the cutter. Empty
/// where it is.
std::string Why_Not_Cut(const Design_State& design, double tool, bool though_do_not_cut);

/// Where the follower stands still, in rising order of the start; a dwell that runs over the end of the turn ends
/// beyond 360.
std::vector<Stretch> Dwells_of(const True_Cam& cam);

/// A place to enter a contour.
struct Entry_Place {
    double angle = 0.0;  // degrees, 0 to 360
    double room = 0.0;   // degrees of dwell to each side; 0 where there is no dwell
};
/// The middle of the longest dwell; without a dwell where the follower moves least, and there accelerates least.
Entry_Place Best_Entry(const True_Cam& cam);

/// The sentence about an entry without a dwell.
std::string No_Dwell_Sentence(const Entry_Place& entry);

}  // namespace lobemax
