// SPDX-License-Identifier: GPL-3.0-or-later
/// lobemax-cli: the design ladder without a screen.
#include <CLI/CLI.hpp>
#include <cstdio>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/basic_types.h"
#include "core/traps.h"

int main(int argc, char** argv)
{
    using namespace lobemax;
    using namespace lobemax::cli;

    CLI::App app{"LOBEMAX: design and analysis of cam-follower mechanisms, without a screen", "lobemax-cli"};
    app.set_version_flag("--version", std::string("lobemax-cli ") + LOBEMAX_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    Common_Options options;
    Add_Common_Options(app, options);
    Action action;
    Add_New(app, action);
    Add_Example(app, action);
    Add_Calc(app, action);
    Add_Convert(app, action);
    Add_Show(app, action);
    Add_Fft(app, action);
    Add_Table(app, action);
    Add_Export(app, action);
    Add_Plot(app, action);
    Add_Draw(app, action);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? done : wrong_input;
    }
    Start_Session(options);
    try {
        return action();
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), "lobemax-cli");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lobemax-cli: %s\n", error.what());
    }
    return failed;
}
