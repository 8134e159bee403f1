// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <memory>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "files/exports.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string kind;
    std::string output;
    int code = 1;
};

int Run(const Options& options)
{
    if (!Load(options.input))
        return wrong_input;
    if (!design.flags.Calculated)
        return Wrong("the model is not calculated: there is nothing to export");
    if (options.kind == "spreadsheet")
        return Export_All_to_File(design, options.output) ? done : failed;
    if (options.kind == "profile") {
        if (!design.flags.Sized)
            return Wrong("the cam is not sized: it has no profile");
        return Export_Profile_to_File(design, options.output, options.code) ? done : failed;
    }
    if (design.cam.Translating)
        return Wrong("this feature is intended for oscillating follower systems only");
    const Motion_Columns columns = options.kind == "sva" ? Motion_Columns::sva : Motion_Columns::xdot;
    return Export_SVA_to_File(design, options.output, columns) ? done : failed;
}

}  // namespace

void Add_Export(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("export", "Writes results for spreadsheets and machine tools");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("kind", options->kind, "spreadsheet, profile, sva or xdot")
        ->check(CLI::IsMember({"spreadsheet", "profile", "sva", "xdot"}))
        ->required();
    command
        ->add_option("--code", options->code,
                     "profile: 1 roller centre, 2 surface, 3 cutter centre; 4, 5 the first two versus machine zero")
        ->check(CLI::Range(1, 5))
        ->capture_default_str();
    Add_Output(*command, options->output, "file to write");
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
