// SPDX-License-Identifier: GPL-3.0-or-later
/// The commands of lobemax-cli: each adds itself to the application and runs when it was named.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

namespace lobemax::cli {

class Session;

/// 0 all done; 1 a calculation did not reach its flag, or a run-time error was reported; 2 the command line
/// or an input file is wrong.
enum Exit_Status : int { done = 0, failed = 1, wrong_input = 2 };

/// What to do once the command line has been read: set by the command that was named.
using Action = std::function<int(Session& session)>;

void Add_New(CLI::App& app, Action& action);
void Add_Example(CLI::App& app, Action& action);
void Add_Import(CLI::App& app, Action& action);
void Add_Calc(CLI::App& app, Action& action);
void Add_Convert(CLI::App& app, Action& action);
void Add_Show(CLI::App& app, Action& action);
void Add_Check(CLI::App& app, Action& action);
void Add_Fft(CLI::App& app, Action& action);
void Add_Export(CLI::App& app, Action& action);
void Add_Cad(CLI::App& app, Action& action);
void Add_Plot(CLI::App& app, Action& action);
void Add_Draw(CLI::App& app, Action& action);
void Add_Table(CLI::App& app, Action& action);
void Add_Report(CLI::App& app, Action& action);

}  // namespace lobemax::cli
