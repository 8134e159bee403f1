// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "motion/continuity.h"
#include "motion/segments.h"

namespace lobemax::cli {

namespace {

/// A rung of the ladder that this release calculates; work() is true when its flag was reached.
struct Level {
    std::string_view name;
    bool (*work)();
};

/// The table's texts are read by the number format in force: one that is not wholly a number would be cut
/// short in silence.
void Warn_of_Cut_Numbers()
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        for (const std::string* text : {&m.Start_Value(i), &m.End_Value(i)}) {
            const Number_Read number = Read_Number(*text, Current_Decimal_Symbol());
            if (!text->empty() && !number.whole)
                std::fprintf(stderr, "lobemax-cli: segment %d: position '%s' is read as %s (number format %s)\n", i,
                             text->c_str(), Shortest(number.value).c_str(), design.identity.Number_Format.c_str());
        }
}

bool Calculate_Motion()
{
    Warn_of_Cut_Numbers();
    const bool motion = design.motion.Motion;
    if (!Calc_All(motion) || !Motion_Done() || !design.flags.Calculated)
        return false;
    // The report that follows cmd_Done: of a smooth design it has nothing to tell.
    ContinuityCheck(design.motion.Firstlast, design.motion.Continuous, design.motion.Max_Jump);
    return design.motion.Continuous || Continuity_Report();
}

// In ladder order.
constexpr std::array ladder{Level{"svaj", Calculate_Motion}};

std::vector<std::string> Split_at_Commas(const std::string& list)
{
    std::vector<std::string> words;
    std::size_t from = 0;
    while (from <= list.size()) {
        const std::size_t comma = std::min(list.find(',', from), list.size());
        words.push_back(Trim(std::string_view(list).substr(from, comma - from)));
        from = comma + 1;
    }
    return words;
}

struct Options {
    std::string input;
    std::string output;
    std::string levels = "svaj";
    std::vector<std::string> settings;
};

int Run(const Options& options)
{
    const std::vector<std::string> wanted = Split_at_Commas(options.levels);
    for (const std::string& word : wanted)
        if (std::none_of(ladder.begin(), ladder.end(), [&](const Level& level) { return level.name == word; }))
            return Wrong("--levels: this release has no level '" + word + "'");
    if (!Load(options.input) || !Apply_Settings(options.settings))
        return wrong_input;
    for (const Level& level : ladder)
        if (std::find(wanted.begin(), wanted.end(), level.name) != wanted.end() && !level.work())
            return failed;
    return Save(options.output);
}

}  // namespace

void Add_Calc(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("calc", "Calculates the levels named, in ladder order");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Output(*command, options->output, "model file to write");
    command->add_option("--levels", options->levels, "comma-separated; this release has svaj")
        ->type_name("LIST")
        ->capture_default_str();
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
