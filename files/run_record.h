// SPDX-License-Identifier: GPL-3.0-or-later
/// Run_Check.txt: whether the last run ended properly. The file, not a lock, is the whole of the test.
#pragma once

#include <string>

namespace lobemax {

struct Design_State;

enum class Run_Start {
    go_on,          // the first run, or the last one ended properly
    after_a_crash,  // the last run died, or another runs: the user was told
    end_at_once,    // a file was double-clicked while the program runs: the user was told
};

/// Reads the record and marks the run as running. Called once, before the first screen.
///
/// @param folder        of the program, ending with its separator; made where it is not there
/// @param command_line  the file named on the command line, or empty
Run_Start Check_Run_Record(const Design_State& design, const std::string& folder, const std::string& command_line);

/// Marks the normal end of the run, where every normal exit comes by. An empty folder writes nothing.
void Terminate(const std::string& folder);

}  // namespace lobemax
