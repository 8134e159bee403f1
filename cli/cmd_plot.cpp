// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "present/data_table.h"
#include "present/plot_selection.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::vector<std::string> variables;
    std::string preset;
    std::string output;
    std::string size = "900x600";
    int plot_style = 0;
    int segment = 0;
};

/// A variable, or a closed curve 54 to 59 by its number or name.
std::optional<int> Plot_Choice(const std::string& word)
{
    for (int choice = design.run.Saved_Variables + 1; choice <= Plot_Group::Last_Variable; ++choice)
        if (word == std::to_string(choice) || Same_Text(design.plot.Var_Name(choice), word))
            return choice;
    return Variable_Named(design, word);
}

/// Takes the variables of a preset, by its text, whose words tell its style.
bool Take_Preset(const std::string& text, int& plot_style)
{
    for (const int s : {style::two_windows, style::four_windows, style::polar}) {
        if (plot_style != 0 && plot_style != s)
            continue;
        for (const int entry : Load_Presets(design, s))
            if (Same_Text(Presets_of_Style(s)[static_cast<std::size_t>(entry - 1)].text, text)) {
                plot_style = s;
                Choose_Preset2(design, s, entry);
                return true;
            }
    }
    return false;
}

int Run(const Options& options)
{
    const auto size = Picture_Size(options.size);
    if (!size)
        return Wrong("--size: '" + options.size + "' is no size; write it as 900x600");
    if (!Is_Picture(options.output))
        return Wrong("-o: the picture's name must end in .png, .svg or .pdf");
    if (options.variables.empty() == options.preset.empty())
        return Wrong("either --vars or --preset tells what to plot");
    if (!Load(options.input))
        return wrong_input;
    if (!design.flags.Calculated)
        return Wrong("the model is not calculated: there is nothing to plot");
    if (options.segment < 0 || options.segment > design.motion.No_of_segments)
        return Wrong("there is no segment " + std::to_string(options.segment));
    int plot_style = options.plot_style;
    if (!options.preset.empty()) {
        if (!Take_Preset(options.preset, plot_style))
            return Wrong("this model offers no preset '" + options.preset + "'");
    } else {
        if (plot_style == 0)
            plot_style = style::single_window;
        std::vector<int> picks;
        for (const std::string& word : options.variables) {
            const auto variable = Plot_Choice(word);
            if (!variable || *variable == var::Angle)
                return Wrong("there is no variable '" + word + "' to plot");
            if (!Is_Offered(design, *variable))
                return Wrong("variable '" + word + "' is not calculated");
            if (*variable > design.run.Saved_Variables && plot_style != style::polar)
                return Wrong("the closed curves 54 to 59 are plotted by --style 4");
            picks.push_back(*variable);
        }
        if (static_cast<int>(picks.size()) > Functions_of_Style(plot_style).most ||
            !Select_OK(design, plot_style, picks))
            return Wrong("this style does not show " + std::to_string(picks.size()) + " functions");
        const std::string obstacle = Why_Not_Together(plot_style, picks);
        if (!obstacle.empty())
            return Wrong(obstacle);
    }
    Pick_Segment(design,
                 options.segment == 0 ? "All" : Load_SegmentList(design)[static_cast<std::size_t>(options.segment)]);
    return Draw_to_File(options.output, [&](const std::string& path) {
        return paint::Save_Plot(design, plot_style, *size, QString::fromStdString(path));
    });
}

}  // namespace

void Add_Plot(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("plot", "Plots calculated variables to a picture");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("--vars", options->variables, "one to four variables, by number, name or symbol")
        ->type_name("A,B,C,D")
        ->delimiter(',')
        ->allow_extra_args(false);
    command->add_option("--preset", options->preset, "a ready choice by its text, as 'Displacement and Velocity'")
        ->type_name("NAME");
    command->add_option("--style", options->plot_style, "1 one window, 2 two, 3 four, 4 polar")
        ->check(CLI::Range(1, 4));
    command->add_option("--segment", options->segment, "only one segment")->type_name("S");
    command->add_option("--size", options->size, "width and height in points; a PNG has two pixels a point")
        ->type_name("WxH")
        ->capture_default_str();
    Add_Output(*command, options->output, "picture to write: .png, .svg or .pdf");
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
