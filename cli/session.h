// SPDX-License-Identifier: GPL-3.0-or-later
/// What the commands share: the host of the command line, input, output and settings.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"

namespace lobemax::cli {

/// The design that the command works on.
extern Design_State design;

/// Options that every command takes.
struct Common_Options {
    std::vector<std::string> answers;  // buttons preferred wherever a box offers them
    std::optional<std::string> date;
    std::optional<std::string> time;
};

void Add_Common_Options(CLI::App& app, Common_Options& options);

/// Installs the host that prints each message as one line on standard error and answers it, and starts a
/// fresh design. Nothing is read from or written to the user's documents.
void Start_Session(const Common_Options& options);

/// Whether a run-time error was reported since the session started.
bool Error_Reported();

/// An option that may be given any number of times, one value each.
CLI::Option* Add_Repeated(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& help);

void Add_Settings(CLI::App& command, std::vector<std::string>& settings);
void Add_Output(CLI::App& command, std::string& path, const std::string& help);

/// Prints what is wrong with the command line or an input, and returns the status for it.
int Wrong(const std::string& what);

/// Reads a model; false: it was not read in full, and the user was told.
bool Load(const std::string& path);

/// Applies the settings in order; false: one was refused, and the user was told.
bool Apply_Settings(const std::vector<std::string>& settings);

/// Writes the design to a file, whole or not at all, and returns the command's status.
int Save(const std::string& path);

/// Sets the unit system of a fresh design, whose defaults then follow it.
void Use_Units_for_New_Design(int units);

/// A number wholly read from an argument, with a decimal point.
std::optional<double> Whole_Number(const std::string& text);

}  // namespace lobemax::cli
