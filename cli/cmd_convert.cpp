// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "files/model_file.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    std::string format = "9";
    int units = 0;  // 0: as they are
    bool recalculate = false;
};

/// Each rung that the file holds, in the units that the design now has.
bool Recalculate_All(Session& session)
{
    const Standing before = Standing_of(session.design);
    return Recalculate(session.design, before) && Standing_of(session.design) == before && !session.Error_Reported();
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (const int status = session.Load(options.input); status != done)
        return status;
    if (options.units != 0)
        Change_Units(design, options.units);
    if (options.recalculate && !Recalculate_All(session))
        return failed;
    if (Results_in_Other_Units(design))
        session.Say("the calculated results are still in the units before: calculate the motion again");
    if (options.format != "9" && !Confirm_Older_Format())
        return failed;
    design.identity.Version_Str = options.format;
    return session.Save(options.output);
}

}  // namespace

void Add_Convert(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("convert", "Writes a model in another file format or unit system");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Output(*command, options->output, "model file to write");
    command->add_option("--format", options->format, "file format")
        ->check(CLI::IsMember({"9", "8", "7.2"}))
        ->capture_default_str();
    command->add_option("--units", options->units, "unit system: 1 in-lb, 2 ft-lb, 3 m-N, 4 cm-N, 5 mm-N")
        ->check(CLI::Range(First_Unit_System, Last_Unit_System));
    command->add_flag("--recalculate", options->recalculate, "calculate what the model holds anew, up to the stresses");
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
