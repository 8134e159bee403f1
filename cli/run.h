// SPDX-License-Identifier: GPL-3.0-or-later
/// lobemax-cli as a routine: a command line in, streams and an exit status out.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace lobemax::cli {

/// Runs one command line, from its parsing to its last message.
///
/// Each run has a design and a host of its own and puts the host before it back: runs one after the other know nothing
/// of each other. Two at the same time would share the host. Commands that draw use the application object of Qt that
/// there is, and else one of their own for as long as they draw.
///
/// @param words     the arguments, without the program's name
/// @param terminal  err is a terminal: long work shows a progress bar there
/// @return          the exit status, 0, 1 or 2 (Exit_Status)
int Run(const std::vector<std::string>& words, std::istream& in, std::ostream& out, std::ostream& err,
        bool terminal = false);

}  // namespace lobemax::cli
