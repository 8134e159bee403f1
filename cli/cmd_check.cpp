// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/number_format.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/finding_words.h"
#include "present/report.h"
#include "truth/check.h"
#include "truth/limits.h"

namespace lobemax::cli {

namespace {

using nlohmann::ordered_json;

struct Options {
    std::string input;
    std::vector<std::string> limits;
    bool json = false;
};

/// Takes the limits of the command line over the usual ones. @return empty, or why one is refused
std::string Take_Limits(const Design_State& design, const std::vector<std::string>& texts, Limits& limits)
{
    for (const std::string& text : texts) {
        const std::size_t at = text.find('=');
        if (at == std::string::npos)
            return "--limit: '" + text + "' is not NAME=VALUE";
        const std::string refusal = Put_Limit(limits, design, Trim(text.substr(0, at)), text.substr(at + 1));
        if (!refusal.empty())
            return "--limit " + text + ": " + refusal;
    }
    return "";
}

/// "Limits: Phi 30 deg, Rho_Ratio 1.5; off: Sigma, V"
std::string Limits_Line(const Design_State& design, const Limits& limits)
{
    std::string on, off;
    for (const Limit_Entry& entry : Limit_Table()) {
        if (!Applies(design, entry.limit))
            continue;
        std::string& list = limits[entry.limit] ? on : off;
        list += (list.empty() ? "" : ", ") + std::string(entry.name);
        if (const auto value = In_Design_Units(design, limits, entry.limit))
            list += " " + Figure_Text(design, *value, Unit_of_Limit(design, entry.limit));
    }
    return "Limits: " + (on.empty() ? "none" : on) + (off.empty() ? "" : "; off: " + off);
}

std::string Text_of(const Design_State& design, const Check& check, const Limits& limits)
{
    constexpr std::size_t width = 100;
    constexpr std::size_t indent = 4;
    const auto figure = [&](const std::optional<double>& value) {
        return value ? Figure_Text(design, *value, "") : std::string();
    };
    Report_Table table{
        {{"Severity", true}, {"Finding", true}, {"At deg"}, {"Segment"}, {"Row"}, {"True"}, {"Limit"}, {"Unit", true}},
        {}};
    for (const Finding& finding : check.findings)
        table.rows.push_back({Severity_Caption(finding), finding.name,
                              finding.angle ? Degrees_Text(design, *finding.angle) : "",
                              finding.segment > 0 ? std::to_string(finding.segment) : "", figure(finding.row),
                              figure(finding.truth), figure(finding.limit), finding.unit});
    Report_Lines lines;
    if (!check.findings.empty())
        lines = Table_Lines(table);
    for (const Finding& finding : check.findings) {
        lines.emplace_back();
        const std::string in_table = Figures_of(design, finding);
        std::string margin;
        for (const std::string& line : Lines_of(design, finding)) {
            if (line != in_table)
                for (std::string& part : Wrapped(margin + line, width, indent))
                    lines.push_back(std::move(part));
            margin = std::string(indent, ' ');
        }
    }
    if (!check.findings.empty())
        lines.emplace_back();
    lines.push_back(Count_of_Findings(check));
    for (const std::string& line : Not_Checked(design))
        lines.push_back(line);
    for (std::string& part : Wrapped(Limits_Line(design, limits), width, indent))
        lines.push_back(std::move(part));
    return Joined(lines);
}

/// A number; null for none, and for one that JSON has no word for.
ordered_json Json_Number(const std::optional<double>& value)
{
    return value ? ordered_json(*value) : ordered_json(nullptr);
}

std::string_view Json_Place(Finding_Place place)
{
    constexpr std::array<std::string_view, 4> places{"motion", "size", "forces", "stress"};
    return places[static_cast<std::size_t>(place)];
}

ordered_json Json_Finding(const Finding& finding)
{
    ordered_json object;
    object["code"] = finding.code;
    object["name"] = finding.name;
    object["severity"] = Words_of(finding.severity);
    object["beyond_limit"] = finding.beyond_limit;
    object["row"] = Json_Number(finding.row);
    object["truth"] = Json_Number(finding.truth);
    object["limit"] = Json_Number(finding.limit);
    object["unit"] = finding.unit;
    object["angle"] = Json_Number(finding.angle);
    object["segment"] = finding.segment > 0 ? ordered_json(finding.segment) : ordered_json(nullptr);
    ordered_json stretches = ordered_json::array();
    for (const Stretch& stretch : finding.stretch)
        stretches.push_back({stretch.from, stretch.to});
    object["stretch"] = stretches;
    object["place"] = Json_Place(finding.place);
    object["sentence"] = finding.sentence;
    object["advice"] = finding.advice;
    return object;
}

std::string Json_of(const Design_State& design, const Check& check, const Limits& limits)
{
    ordered_json object;
    object["units"] = Words_of_Units(design.identity.WhichUnit).status;
    object["do_not_cut"] = check.Do_Not_Cut();
    object["fails"] = check.Fails();
    ordered_json findings = ordered_json::array();
    for (const Finding& finding : check.findings)
        findings.push_back(Json_Finding(finding));
    object["findings"] = findings;
    object["not_checked"] = Not_Checked(design);
    ordered_json used;
    for (const Limit_Entry& entry : Limit_Table())
        if (Applies(design, entry.limit))
            used[std::string(entry.name)] = {{"value", Json_Number(In_Design_Units(design, limits, entry.limit))},
                                             {"unit", Unit_of_Limit(design, entry.limit)}};
    object["limits"] = used;
    return object.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (session.Load(options.input) == wrong_input)
        return wrong_input;
    Use_Number_Format(design, "USA");  // the command line has a decimal point
    Limits limits;
    if (const std::string refusal = Take_Limits(design, options.limits, limits); !refusal.empty())
        return session.Wrong(refusal);
    const Check check = Check_Design(design, limits);
    session.out << (options.json ? Json_of(design, check, limits) : Text_of(design, check, limits));
    if (!check.Fails())
        return done;
    session.Say(check.Do_Not_Cut() ? "the cam should not be cut" : "the design is beyond a limit");
    return failed;
}

}  // namespace

void Add_Check(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand(
        "check",
        "Tells where the figures of a model cannot be trusted and what limits it breaks: status 1 where its "
        "surface must not be cut or a limit is broken");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    std::string names;
    for (const Limit_Entry& entry : Limit_Table())  // those of an arm have the names of a translating follower's
        if (std::ranges::find(Limit_Table(), entry.name, &Limit_Entry::name)->limit == entry.limit)
            names += (names.empty() ? "" : ", ") + std::string(entry.name);
    Add_Repeated(*command, "--limit", options->limits,
                 "a limit in the units of the model, or off, any number of times: " + names)
        ->type_name("NAME=VALUE");
    command->add_flag("--json", options->json, "as a JSON object");
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
