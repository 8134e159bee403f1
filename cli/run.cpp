// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/run.h"

#include <CLI/CLI.hpp>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/basic_types.h"
#include "core/traps.h"

namespace lobemax::cli {

namespace {

int Run_Action(Session& session, const Action& action)
{
    try {
        const int status = action(session);
        if (status != done && !session.Told())
            session.Say("the work did not come to its end, and nothing was written");
        // An error that a command went on after still counts.
        return status == done && session.Error_Reported() ? failed : status;
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), "lobemax-cli");
    } catch (const std::bad_alloc&) {
        Error_Report(out_of_memory, "lobemax-cli");
    } catch (const std::exception& error) {
        session.Say(error.what());
    }
    return failed;
}

}  // namespace

int Run(const std::vector<std::string>& words, std::istream& in, std::ostream& out, std::ostream& err, bool terminal)
{
    CLI::App app{"LOBEMAX: design and analysis of cam-follower mechanisms, without a screen", "lobemax-cli"};
    app.set_version_flag("--version", std::string("lobemax-cli ") + LOBEMAX_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    Common_Options options;
    Add_Common_Options(app, options);
    Action action;
    Add_New(app, action);
    Add_Example(app, action);
    Add_Import(app, action);
    Add_Calc(app, action);
    Add_Convert(app, action);
    Add_Show(app, action);
    Add_Check(app, action);
    Add_Fft(app, action);
    Add_Table(app, action);
    Add_Export(app, action);
    Add_Cad(app, action);
    Add_Plot(app, action);
    Add_Draw(app, action);
    Add_Report(app, action);

    int status = done;
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));  // the parser takes them from the back
        Session session(options, in, out, err, terminal);
        status = Run_Action(session, action);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error, out, err) == 0 ? done : wrong_input;
    }
    out.flush();
    if (!out) {
        err << "lobemax-cli: standard output could not be written\n";
        return status == done ? failed : status;
    }
    return status;
}

}  // namespace lobemax::cli
