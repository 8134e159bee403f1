// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/units.h"
#include "edit/examples.h"
#include "files/example_designs.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string name;
    std::string output;
    std::vector<std::string> settings;
    int units = 5;
};

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    session.Use_Units_for_New_Design(options.units);
    if (!Load_Example(design, options.name)) {
        std::string names;
        for (const std::string_view name : Example_Names)
            names += (names.empty() ? "" : ", ") + std::string(name);
        return session.Wrong("there is no example '" + options.name + "'; there are " + names);
    }
    if (!session.Apply_Settings(options.settings))
        return wrong_input;
    if (!Example_Done(design))
        return failed;
    return session.Save(options.output);
}

}  // namespace

void Add_Example(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("example", "Makes one of the nine example designs, calculated");
    const auto options = std::make_shared<Options>();
    command->add_option("name", options->name, "its list text, as 'Single Dwell'")->type_name("NAME")->required();
    Add_Output(*command, options->output, "model file to write");
    command->add_option("--units", options->units, "unit system: 1 in-lb, 2 ft-lb, 3 m-N, 4 cm-N, 5 mm-N")
        ->check(CLI::Range(First_Unit_System, Last_Unit_System))
        ->capture_default_str();
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
