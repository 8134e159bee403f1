// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/traps.h"
#include "forms/cad_form.h"
#include "forms/solid_on_demand.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    std::string kind;
    bool even_if_wrong = false;
    std::map<std::string, std::string> given;  // by the names of the table
};

std::string Make_Sheet(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts)
{
    std::string why;
    const std::unique_ptr<Drawing> drawing = Open_Drawing(why);
    return drawing != nullptr ? drawing->Sheet(sheet, bytes, facts) : "No sheet can be drawn: " + why;
}

int Run(Session& session, const Options& options)
{
    Cad_Wish wish;
    wish.kind = Cad_Kind_of(options.kind).value();
    wish.even_if_wrong = options.even_if_wrong;
    Design_State& design = session.design;
    if (const int loaded = session.Load(options.input); loaded != done)
        return loaded;
    for (const auto& [name, text] : options.given)
        if (const std::string refusal = Put_Option(design, wish, name, text); !refusal.empty())
            return session.Wrong("--" + refusal);
    if (const std::string refusal = Why_Not_Even_if_Wrong(wish.kind); wish.even_if_wrong && !refusal.empty())
        return session.Wrong("--" + refusal);
    const Made_Cad made = Make_Cad(design, wish, options.output, Make_Solid_on_Demand);
    if (!made.refusal.empty()) {
        session.Say(made.refusal);
        if (made.may_be_forced)
            session.Say("nothing was written: --even-if-wrong writes it all the same");
        return failed;
    }
    Written_Cad written;
    try {
        written = Write_Cad(made, options.output, Make_Sheet);
    } catch (const Fault& fault) {
        return Not_Written(session, options.output, Error_Description(fault.Number()));
    }
    if (!written.refusal.empty()) {
        session.Say(written.refusal);
        return failed;
    }
    for (const std::string& line : Lines_of_Written(written.facts, options.output, written.text_path))
        session.out << line << '\n';
    return done;
}

/// What an option is for, of each row that has its name.
std::string Help_of(std::string_view name)
{
    std::string help;
    for (const Cad_Option& option : Cad_Options()) {
        if (option.name != name)
            continue;
        std::string of;
        for (const Cad_Kind_Entry& kind : Cad_Kind_Table())
            if (Find_Option(kind.kind, name) == &option)
                of += (of.empty() ? "" : ", ") + std::string(kind.name);
        help += (help.empty() ? "" : " | ") + of + ": " + std::string(option.words);
        if (option.entry == Cad_Entry::choice) {
            std::string words;
            for (const std::string& word : Choices_of(option))
                words += (words.empty() ? "" : ", ") + word;
            help += ": " + words;
        }
        if (!option.usual.empty() && option.entry != Cad_Entry::flag) {
            help += " [" + std::string(option.usual);
            if (!option.in_inches.empty() && option.in_inches != option.usual)
                help += " in mm, " + std::string(option.in_inches) + " in inches";
            help += "]";
        }
    }
    return help;
}

}  // namespace

void Add_Cad(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand(
        "cad",
        "Writes a cam for CAD, machines and controllers, from the true geometry, and a text beside it that "
        "tells what was written");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    std::vector<std::string> kinds;
    std::string words;
    for (const Cad_Kind_Entry& kind : Cad_Kind_Table()) {
        kinds.emplace_back(kind.name);
        words += (words.empty() ? "" : ", ") + std::string(kind.name);
    }
    command->add_option("--as", options->kind, "kind of the file: " + words)->check(CLI::IsMember(kinds))->required();
    Add_Output(*command, options->output, "file to write; the text beside it is NAME.txt");
    command->add_flag("--even-if-wrong", options->even_if_wrong,
                      "also where the check says that the cam should not be cut");
    std::map<std::string, bool> added;
    for (const Cad_Option& option : Cad_Options()) {
        const std::string name(option.name);
        if (added[name])
            continue;
        added[name] = true;
        if (option.entry == Cad_Entry::flag) {
            const bool usually = option.usual == "yes";
            command->add_flag_callback((usually ? "--no-" : "--") + name,
                                       [options, name, usually] { options->given[name] = usually ? "no" : "yes"; },
                                       (usually ? "without: " : "") + Help_of(name));
            continue;
        }
        command
            ->add_option_function<std::string>(
                "--" + name, [options, name](const std::string& text) { options->given[name] = text; }, Help_of(name))
            ->type_name(option.entry == Cad_Entry::choice || option.entry == Cad_Entry::word ? "WORD" : "N");
    }
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
