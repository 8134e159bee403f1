// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "edit/rungs.h"
#include "present/data_table.h"
#include "present/linkage_plots.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::vector<std::string> variables;
    std::string preset;
    Picture_Options picture;
    int plot_style = 0;
    std::optional<int> segment;  // none: the whole cycle
    bool truth = false;
    Stage_Choice stage;
};

/// A variable, or a closed curve 54 to 59 by its number or name.
std::optional<int> Plot_Choice(const Design_State& design, const std::string& word)
{
    for (int choice = design.run.Saved_Variables + 1; choice <= Plot_Group::Last_Variable; ++choice)
        if (word == std::to_string(choice) || Same_Text(design.plot.Var_Name(choice), word))
            return choice;
    return Variable_Named(design, word);
}

/// Takes the variables of a preset, by its text, whose words tell its style.
bool Take_Preset(Design_State& design, const std::string& text, int& plot_style)
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

/// Whether a text is that of a preset of harmonics.
bool Is_Preset_of_Harmonics(const std::string& text)
{
    for (const int s : {style::two_windows, style::four_windows})
        for (const Plot_Preset& preset : Presets_of_Style(s))
            if (Same_Text(preset.text, text) && Is_Fourier(preset.variables.front()))
                return true;
    return false;
}

/// That a file has no transform to plot, for what would show one.
int No_Transform(Session& session, const std::string& place)
{
    return session.Wrong(place + ": " + std::string(Transform_not_Kept));
}

/// Whether the plot is one of the linkage: a word of it names a function of its links.
bool Shows_Links(const Design_State& design, const Options& options)
{
    return Has_Linkage(design) && std::ranges::any_of(options.variables, [&](const std::string& word) {
               return Link_Function_Named(design, word).has_value();
           });
}

int Plot_Links(Session& session, const Options& options)
{
    const Design_State& design = session.design;
    std::vector<Link_Function> functions;
    for (const std::string& word : options.variables) {
        const auto function = Link_Function_Named(design, word);
        if (!function)
            return session.Wrong("'" + word + "' is no function of the linkage: each plot has one kind");
        functions.push_back(*function);
    }
    const int plot_style = options.plot_style == 0 ? style::single_window : options.plot_style;
    if (plot_style == style::polar)
        return session.Wrong("functions of the linkage have no polar plot");
    if (options.segment)
        return session.Wrong("functions of the linkage are plotted over the whole cycle");
    const auto [least, most] = Functions_of_Style(plot_style);
    if (const int count = static_cast<int>(functions.size()); count < least || count > most)
        return session.Wrong("this style does not show " + std::to_string(count) + " functions");
    if (!session.Linkage_Worked_Out())
        return failed;
    return Draw_to_File(session, options.picture.output, [&](Drawing& drawing, std::string& why) {
        return drawing.Plot_Links(design, plot_style, functions, Picture_of(options.picture), why);
    });
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (const std::string refusal = Refused_Picture(options.picture); !refusal.empty())
        return session.Wrong(refusal);
    if (options.variables.empty() == options.preset.empty())
        return session.Wrong("either --vars or --preset tells what to plot");
    if (const int status = session.Load(options.input); status != done)
        return status;
    if (!session.Read_as(options.stage))
        return wrong_input;
    if (!design.flags.Calculated)
        return session.Wrong("the model is not calculated: there is nothing to plot");
    if (options.truth && !session.Take_Truth())
        return failed;
    if (Shows_Links(design, options))
        return Plot_Links(session, options);
    if (const std::string refusal = session.Refused_Segment(options.segment); !refusal.empty())
        return session.Wrong(refusal);
    int plot_style = options.plot_style;
    if (!options.preset.empty()) {
        if (!design.flags.FFT_Done && Is_Preset_of_Harmonics(options.preset))
            return No_Transform(session, "preset '" + options.preset + "'");
        if (!Take_Preset(design, options.preset, plot_style))
            return session.Wrong("this model offers no preset '" + options.preset + "'");
    } else {
        if (plot_style == 0)
            plot_style = style::single_window;
        std::vector<int> picks;
        for (const std::string& word : options.variables) {
            const auto variable = Plot_Choice(design, word);
            if (!variable || *variable == var::Angle)
                return session.Wrong("there is no variable '" + word + "' to plot");
            if (Is_Fourier(*variable) && !design.flags.FFT_Done)
                return No_Transform(session, "variable '" + word + "'");
            if (!Is_Offered(design, *variable))
                return session.Wrong("variable '" + word + "' is not calculated");
            if (*variable > design.run.Saved_Variables && plot_style != style::polar)
                return session.Wrong("the closed curves 54 to 59 are plotted by --style 4");
            picks.push_back(*variable);
        }
        if (static_cast<int>(picks.size()) > Functions_of_Style(plot_style).most ||
            !Select_OK(design, plot_style, picks))
            return session.Wrong("this style does not show " + std::to_string(picks.size()) + " functions");
        const std::string obstacle = Why_Not_Together(plot_style, picks);
        if (!obstacle.empty())
            return session.Wrong(obstacle);
    }
    Pick_Segment(design,
                 options.segment ? Load_SegmentList(design)[static_cast<std::size_t>(*options.segment)] : "All");
    return Draw_to_File(session, options.picture.output, [&](Drawing& drawing, std::string& why) {
        return drawing.Plot(design, plot_style, Picture_of(options.picture), why);
    });
}

}  // namespace

void Add_Plot(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("plot", "Plots calculated variables to a picture");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command
        ->add_option("--vars", options->variables,
                     "one to four variables, by number, name or symbol; or functions of the linkage, as 'Theta 4', "
                     "'Omega 4', 'Alpha 4', of a slider 'S 4', 'V 4', 'A 4', 'Ratio S', 'Ratio V'")
        ->type_name("A,B,C,D")
        ->delimiter(',')
        ->allow_extra_args(false);
    command->add_option("--preset", options->preset, "a ready choice by its text, as 'Displacement and Velocity'")
        ->type_name("NAME");
    command->add_option("--style", options->plot_style, "1 one window, 2 two, 3 four, 4 polar")
        ->check(CLI::Range(1, 4));
    command->add_option("--segment", options->segment, "only one segment")->type_name("S");
    Add_Picture_Options(*command, options->picture, "900x600");
    Add_Truth_Option(*command, options->truth);
    Add_Stage_Options(*command, options->stage);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
