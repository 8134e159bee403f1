// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <sstream>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/conditions.h"
#include "edit/door.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "motion/spline.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string output;
    std::vector<std::string> segments;
    std::vector<std::string> conditions;
    std::vector<std::string> orders;
    std::vector<std::string> knots;
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

/// A value as an argument writes it, through the door; empty, or why it may not be.
std::string Take(Design_State& design, std::string_view field, const Field_Index& at, const std::string& text)
{
    Typed_Value value;
    if (const Verdict verdict = Read_Value(design, *Find_Field(field), text, value); !verdict)
        return verdict.sentence;
    return Put(design, field, at, value).sentence;
}

/// Puts one segment argument, 'KIND PROGRAM BETA START END', into the table; empty, or what is wrong with it.
std::string Take_Segment(Design_State& design, int i, const std::string& argument)
{
    const std::vector<std::string> words = Words_of(argument);
    if (words.size() != 5)
        return "'" + argument + "' is not 'KIND PROGRAM BETA START END'";
    if (std::string refusal = Take(design, "Rise_Fall_Dwell", At(i), words[0]); !refusal.empty())
        return refusal;
    const std::string kind = design.motion.Rise_Fall_Dwell(i);
    const Motion_Program* const entry = Find_Program(words[1]);
    if (entry != nullptr && entry->kinds.find(kind) == std::string_view::npos)
        return "program " + std::string(entry->code) + " does not serve motion kind " + kind;
    if (std::string refusal = Take(design, "Program", At(i), words[1]); !refusal.empty())
        return refusal;
    // A segment given by conditions may leave an end position open: '-'.
    const bool by_conditions = entry->code == "PO" || entry->code == "BS";
    const auto position = [&](std::size_t k) { return by_conditions && words[k] == "-" ? std::string() : words[k]; };
    if (std::string refusal = Take(design, "Beta_Deg", At(i), words[2]); !refusal.empty())
        return refusal;
    if (std::string refusal = Take(design, "Start Value", At(i), position(3)); !refusal.empty())
        return refusal;
    if (entry->code == "DW" && Whole_Number(words[4]) && *Whole_Number(words[3]) != *Whole_Number(words[4]))
        return "a dwell ends at the position where it starts";
    if (std::string refusal = Take(design, "End Value", At(i), position(4)); !refusal.empty())
        return refusal;
    if (by_conditions)
        Ask_Boundaries(design, i);  // the positions are the S conditions of both ends
    return {};
}

/// The segment that an argument's first word names, when it is one of the kinds; 0 otherwise.
int Segment_Word(const Design_State& design, const std::vector<std::string>& words, std::string_view kinds)
{
    const auto number = words.empty() ? std::nullopt : Whole_Number(words[0]);
    if (!number || *number != std::floor(*number) || *number < 1 || *number > design.motion.No_of_segments)
        return 0;
    const int i = static_cast<int>(*number);
    return kinds.find(design.motion.Rise_Fall_Dwell(i)) == std::string_view::npos ? 0 : i;
}

/// The row of the condition table for a local angle: 0 and 9 at the ends, else the row that has the angle, or
/// the first free one; none when the table is full.
std::optional<int> Condition_Row(Design_State& design, int i, double theta, const std::string& text)
{
    if (theta == 0.0)
        return 0;
    if (theta == design.motion.Beta_Deg(i))
        return Last_Condition_Row;
    for (int k = 1; k <= 8; ++k) {
        const std::string& angle = design.motion.T_boundary_cond(i, k);
        if (!angle.empty() && Val(design, angle) == theta)
            return k;
        if (angle.empty()) {
            Put_Condition(design, i, k, Angle_Box, text);
            return k;
        }
    }
    return std::nullopt;
}

/// Puts a condition. A position at the segment's end is the start of the next one on a screen; here the segments behind
/// keep the starts that their own arguments gave them.
void Put_Alone(Design_State& design, int segment, int row, int order, const std::string& text)
{
    const auto starts = design.motion.Start_Value;
    Put_Condition(design, segment, row, order, text);
    for (int later = segment + 1; later <= design.motion.No_of_segments; ++later)
        Put(design, "Start Value", At(later), starts(later));
}

/// Puts one condition, 'SEG THETA ORDER VALUE', into its segment's table; empty, or what is wrong with it.
std::string Take_Condition(Design_State& design, const std::string& argument)
{
    const std::vector<std::string> words = Words_of(argument);
    const std::string refused = "--bc '" + argument + "': ";
    if (words.size() != 4)
        return refused + "not 'SEG THETA ORDER VALUE'";
    for (const std::string& word : words)
        if (!Whole_Number(word))
            return refused + "'" + word + "' is not a number";
    const int i = Segment_Word(design, words, "PS");
    if (i == 0)
        return refused + "segment " + words[0] + " is not given by conditions";
    const double theta = *Whole_Number(words[1]);
    const double order = *Whole_Number(words[2]);
    if (theta < 0.0 || theta > design.motion.Beta_Deg(i))
        return refused + "the angle lies outside the segment";
    if (order != std::floor(order) || order < 0 || order > Max_Bound_Order)
        return refused + "the order is 0 to 4, for S, V, A, J, Ping";
    const auto row = Condition_Row(design, i, theta, words[1]);
    if (!row)
        return refused + "a segment has eight angles between its ends";
    Single(*Whole_Number(words[3]));
    Put_Alone(design, i, *row, static_cast<int>(order), words[3]);
    return {};
}

/// Moves the interior knots to words 1..n. A knot has to lie between its neighbours at every moment, so those
/// that go up are moved from the last one down, then those that go down from the first one up.
bool Set_Knots(Design_State& design, int i, const std::vector<std::string>& words)
{
    const int interior = static_cast<int>(words.size()) - 1;
    const auto word = [&](int knot) -> const std::string& { return words[static_cast<std::size_t>(knot)]; };
    const auto goes_up = [&](int knot) {
        return *Whole_Number(word(knot)) >= design.motion.Knots(design.motion.Orders(i) + knot, i);
    };
    std::vector<bool> up(words.size());
    for (int knot = 1; knot <= interior; ++knot)
        up[static_cast<std::size_t>(knot)] = goes_up(knot);
    for (int knot = interior; knot >= 1; --knot)
        if (up[static_cast<std::size_t>(knot)] && !Set_Knot(design, i, knot, word(knot)))
            return false;
    for (int knot = 1; knot <= interior; ++knot)
        if (!up[static_cast<std::size_t>(knot)] && !Set_Knot(design, i, knot, word(knot)))
            return false;
    return true;
}

/// Types the order of a spline. One above the count of conditions becomes the count, which is told and leaves no
/// interior knot that could be refused, though more knots at the ends than the table may hold.
bool Take_Order(Design_State& design, int i, const std::string& text)
{
    const int conditions = design.motion.No_Conditions(i);
    return Set_Order(design, i, text) || (*Whole_Number(text) > conditions && 2 * conditions <= Max_Knots);
}

/// Puts an order, 'SEG N', or interior knots, 'SEG K1 K2 ...', into a spline segment.
std::string Take_Spline_Words(Session& session, const std::string& option, const std::string& argument)
{
    Design_State& design = session.design;
    const std::vector<std::string> words = Words_of(argument);
    const std::string refused = option + " '" + argument + "': ";
    const int i = Segment_Word(design, words, "S");
    if (i == 0)
        return refused + "the first word names no spline segment";
    if (words.size() < 2 || (option == "--order" && words.size() != 2))
        return refused + (option == "--order" ? "not 'SEG N'" : "not 'SEG K1 K2 ...'");
    const int interior = design.motion.Interior_Knots(i);
    if (option == "--knots" && static_cast<int>(words.size()) - 1 != interior)
        return refused + "the segment has " + std::to_string(interior) + " interior knots";
    for (std::size_t k = 1; k < words.size(); ++k)
        if (!Whole_Number(words[k]))
            return refused + "'" + words[k] + "' is not a number";
    const std::string refusal = session.Refusal_of(
        [&] { return option == "--order" ? Take_Order(design, i, words[1]) : Set_Knots(design, i, words); });
    return refusal.empty() ? "" : refused + refusal;
}

/// Conditions, then orders, then knots: each needs what comes before it.
std::string Take_Conditions(Session& session, const Options& options)
{
    Design_State& design = session.design;
    for (const std::string& argument : options.conditions)
        if (std::string refusal = Take_Condition(session.design, argument); !refusal.empty())
            return refusal;
    for (int i = 1; i <= design.motion.No_of_segments; ++i) {
        const std::string& kind = design.motion.Rise_Fall_Dwell(i);
        if (kind != "P" && kind != "S")
            continue;
        const int count = Count_Filled_Boxes(design, i);
        const std::string refusal = session.Refusal_of([&] {
            return Set_No_of_Conditions(design, i, std::to_string(count)) && (kind != "S" || New_Spline(design, i));
        });
        if (!refusal.empty())
            return "segment " + std::to_string(i) + " has " + std::to_string(count) + " conditions: " + refusal;
    }
    for (const std::string& argument : options.orders)
        if (std::string refusal = Take_Spline_Words(session, "--order", argument); !refusal.empty())
            return refusal;
    for (const std::string& argument : options.knots)
        if (std::string refusal = Take_Spline_Words(session, "--knots", argument); !refusal.empty())
            return refusal;
    return {};
}

std::string Take_Segments(Session& session, const std::vector<std::string>& segments)
{
    if (segments.size() > static_cast<std::size_t>(Max_Segments))
        return std::to_string(segments.size()) + " segments are more than " + std::to_string(Max_Segments);
    Design_State& design = session.design;
    const Motion_Group& m = design.motion;
    Put(design, "No of segments", static_cast<double>(segments.size()));
    for (int i = 1; i <= m.No_of_segments; ++i)
        try {
            const std::string refusal = Take_Segment(design, i, segments[static_cast<std::size_t>(i - 1)]);
            if (!refusal.empty())
                return "segment " + std::to_string(i) + ": " + refusal;
        } catch (const Fault&) {
            return "segment " + std::to_string(i) + ": a number is too large";
        }
    if (m.No_of_segments == 1 && m.Gamma(1) != 360.0)
        return "a single segment of " + Shortest(m.Gamma(1)) + " degrees: Cam must contain exactly 360 degrees";
    return {};
}

/// The shaft speed that was asked for, rad/s; the fresh design's own where none was.
std::string Take_Speed(Design_State& design, const Options& options)
{
    if (options.omega.empty() && options.rpm.empty())
        return {};
    const bool per_minute = !options.rpm.empty();
    const std::string& text = per_minute ? options.rpm : options.omega;
    const auto number = Whole_Number(text);
    if (!number)
        return "'" + text + "' is not a shaft speed";
    try {
        if (const Verdict verdict = Put(design, "Shaft speed", per_minute ? *number * PI / 30.0 : *number); !verdict) {
            Show_Message(verdict.sentence, Buttons::OK, verdict.symbol);
            Put(design, "Shaft speed", 1.0);
        }
        return {};
    } catch (const Fault&) {
        return "the shaft speed " + text + " is too large";
    }
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    session.Use_Units_for_New_Design(options.units);
    if (const std::string refusal = Take(design, "Deltatheta", {}, options.delta); !refusal.empty())
        return session.Wrong("--delta: " + refusal);
    Put(design, "Translating", options.oscillating ? 0 : 1);
    if (const std::string refusal = Take_Speed(design, options); !refusal.empty())
        return session.Wrong(refusal);
    if (const std::string refusal = Take_Segments(session, options.segments); !refusal.empty())
        return session.Wrong(refusal);
    try {
        if (const std::string refusal = Take_Conditions(session, options); !refusal.empty())
            return session.Wrong(refusal);
    } catch (const Fault&) {
        return session.Wrong("a condition's number is too large");
    }
    if (!session.Apply_Settings(options.settings))
        return wrong_input;
    return session.Save(options.output);
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
    Add_Repeated(*command, "--bc", options->conditions,
                 "condition of a P or S segment, local angle in degrees, order 0 to 4 for S, V, A, J, Ping")
        ->type_name("'SEG THETA ORDER VALUE'");
    Add_Repeated(*command, "--order", options->orders, "order of a spline segment")->type_name("'SEG N'");
    Add_Repeated(*command, "--knots", options->knots, "interior knots of a spline segment, local degrees")
        ->type_name("'SEG K1 K2 ...'");
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
