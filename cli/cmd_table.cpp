// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "present/data_table.h"

namespace lobemax::cli {

namespace {

constexpr std::size_t most_columns = 4;

struct Options {
    std::string input;
    std::vector<std::string> variables;
    std::string output;
    std::optional<int> segment;  // none: all points
    int step = 0;
    int decimals = -1;
    bool truth = false;
};

int Run(Session& session, const Options& options)
{
    const Design_State& design = session.design;
    if (session.Load(options.input) == wrong_input)
        return wrong_input;
    if (options.truth && !session.Take_Truth())
        return failed;
    Table_Choice choice;
    for (const std::string& word : options.variables) {
        const auto variable = Variable_Named(design, word);
        if (!variable)
            return session.Wrong("there is no variable '" + word + "'");
        choice.variables.push_back(*variable);
    }
    if (choice.variables.size() > most_columns)
        return session.Wrong("a table shows four variables at the most");
    if (const std::string refusal = session.Refused_Segment(options.segment); !refusal.empty())
        return session.Wrong(refusal);
    choice.segment = options.segment.value_or(0);
    choice.step = options.step > 0 ? options.step : std::max(1, static_cast<int>(design.cam.Printstep));
    const std::string text = Table_Text(Make_Data_Table(design, choice),
                                        options.decimals < 0 ? std::nullopt : std::optional(options.decimals));
    if (!options.output.empty())
        return session.Save_Text(options.output, text, "Print_to_File");
    session.out << text;
    return done;
}

}  // namespace

void Add_Table(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("table", "Prints a table of up to four variables beside the cam angle");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("--vars", options->variables, "one to four variables, by number, name or symbol")
        ->type_name("A,B,C,D")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->required();
    command->add_option("--segment", options->segment, "only the points of one segment")->type_name("S");
    command->add_option("--step", options->step, "a row every N points (default: the model's print step)")
        ->type_name("N")
        ->check(CLI::Range(1, Max_Points));
    command->add_option("--decimals", options->decimals, "decimal places (default: shortest)")
        ->type_name("D")
        ->check(CLI::Range(0, 9));
    Add_Truth_Option(*command, options->truth);
    command->add_option("-o,--output", options->output, "file to write instead of standard output")->type_name("FILE");
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
