// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <memory>
#include <sstream>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string output;
    std::vector<std::string> segments;
    std::vector<std::string> settings;
    std::string delta = "1.0";
    std::string omega;
    std::string rpm;
    int units = 5;
    bool oscillating = false;
};

/// The blank-separated words of an argument.
std::vector<std::string> Words_of(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// Puts one segment argument, 'KIND PROGRAM BETA START END', into the table; empty, or what is wrong with it.
std::string Take_Segment(int i, const std::string& argument)
{
    const std::vector<std::string> words = Words_of(argument);
    if (words.size() != 5)
        return "'" + argument + "' is not 'KIND PROGRAM BETA START END'";
    const std::string& kind = words[0];
    const std::string& program = words[1];
    const Motion_Program* entry = Find_Program(program);
    if (kind.size() != 1 || !Pick_Motion(i, kind[0]))
        return "'" + kind + "' is no motion kind: R rise, F fall, D dwell, P polynomial, S spline";
    if (entry == nullptr)
        return "there is no motion program '" + program + "'";
    if (entry->kinds.find(design.motion.Rise_Fall_Dwell(i)) == std::string_view::npos)
        return "program " + std::string(entry->code) + " does not serve motion kind " +
               design.motion.Rise_Fall_Dwell(i);
    Pick_Program(i, program);
    for (std::size_t k = 2; k < 5; ++k)
        if (!Whole_Number(words[k]))
            return "'" + words[k] + "' is not a number";
    const double beta = *Whole_Number(words[2]);
    if (!Check_Range(beta, 0.0, 360.0, "Beta cannot be > 360 or < 0"))
        return "beta " + words[2] + " is refused";
    design.motion.Beta_Deg(i) = beta;
    design.motion.Beta_Rad(i) = beta / Deg_per_Rad;
    if (entry->code == "DW" && *Whole_Number(words[3]) != *Whole_Number(words[4]))
        return "a dwell ends at the position where it starts";
    Single(*Whole_Number(words[3]));  // what no Single holds is a fault, told as such
    Single(*Whole_Number(words[4]));
    design.motion.Start_Value(i) = words[3];
    design.motion.End_Value(i) = words[4];
    return {};
}

std::string Take_Segments(const std::vector<std::string>& segments)
{
    if (segments.size() > static_cast<std::size_t>(Max_Segments))
        return std::to_string(segments.size()) + " segments are more than " + std::to_string(Max_Segments);
    Motion_Group& m = design.motion;
    m.No_of_segments = static_cast<int>(segments.size());
    for (int i = 1; i <= m.No_of_segments; ++i)
        try {
            const std::string refusal = Take_Segment(i, segments[static_cast<std::size_t>(i - 1)]);
            if (!refusal.empty())
                return "segment " + std::to_string(i) + ": " + refusal;
        } catch (const Fault&) {
            return "segment " + std::to_string(i) + ": a number is too large";
        }
    Update_Segment_Angles();
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (!Check_Range(m.Gamma(i), 0.0, 360.0, "End angle cannot be > 360 deg"))
            return "segment " + std::to_string(i) + " ends at " + Shortest(m.Gamma(i)) + " degrees";
    if (m.No_of_segments == 1 && m.Gamma(1) != 360.0) {
        Check_Range(0.0, 1.0, 1.0, "Cam must contain exactly 360 degrees");
        return "a single segment of " + Shortest(m.Gamma(1)) + " degrees is refused";
    }
    return {};
}

/// The shaft speed that was asked for, rad/s; the fresh design's own where none was.
std::string Take_Speed(const Options& options)
{
    if (options.omega.empty() && options.rpm.empty())
        return {};
    const bool per_minute = !options.rpm.empty();
    const std::string& text = per_minute ? options.rpm : options.omega;
    const auto number = Whole_Number(text);
    if (!number)
        return "'" + text + "' is not a shaft speed";
    try {
        Set_Shaft_Speed(per_minute ? *number * PI / 30.0 : *number);
    } catch (const Fault&) {
        return "the shaft speed " + text + " is too large";
    }
    return {};
}

int Run(const Options& options)
{
    Use_Units_for_New_Design(options.units);
    const auto step = Whole_Number(options.delta);
    if (!step || !Set_Step(*step)) {
        Check_Range(0.0, 1.0, 1.0, "Please select one of the drop-down menu items for Delta Theta");
        return Wrong("--delta " + options.delta + " is none of 1.0, 0.50, 0.25, 0.125");
    }
    design.cam.Translating = !options.oscillating;
    Set_Units();
    if (const std::string refusal = Take_Speed(options); !refusal.empty())
        return Wrong(refusal);
    if (const std::string refusal = Take_Segments(options.segments); !refusal.empty())
        return Wrong(refusal);
    if (!Apply_Settings(options.settings))
        return wrong_input;
    return Save(options.output);
}

}  // namespace

void Add_New(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("new", "Makes a design from segments; nothing is calculated");
    const auto options = std::make_shared<Options>();
    Add_Output(*command, options->output, "model file to write");
    command->add_option("segments", options->segments, "segments, each 'KIND PROGRAM BETA START END'")
        ->type_name("SEGMENT")
        ->required();
    command->add_option("--units", options->units, "unit system: 1 in-lb, 2 ft-lb, 3 m-N, 4 cm-N, 5 mm-N")
        ->check(CLI::Range(First_Unit_System, Last_Unit_System))
        ->capture_default_str();
    command->add_option("--delta", options->delta, "step in degrees: 1.0, 0.50, 0.25, 0.125")
        ->type_name("D")
        ->capture_default_str();
    CLI::Option* omega = command->add_option("--omega", options->omega, "shaft speed")->type_name("RAD_S");
    command->add_option("--rpm", options->rpm, "shaft speed, revolutions per minute")->type_name("N")->excludes(omega);
    command->add_flag("--oscillating", options->oscillating,
                      "the follower is an oscillating arm, positions in degrees");
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
