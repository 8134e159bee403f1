// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "files/exports.h"
#include "forms/finding_words.h"
#include "truth/check.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string kind;
    std::string output;
    int code = 1;
    bool truth = false;
    bool even_if_wrong = false;
    Stage_Choice stage;
};

// Entries of the Export list by the code of their profile: the cam's kind does not matter to them.
constexpr std::array profile_entries{"mnu_profile", "mnu_Surface", "mnu_Cutter", "mnu_Profile_mach",
                                     "mnu_Surface_mach"};

const char* Entry_of(const std::string& kind)
{
    return kind == "spreadsheet" ? "mnu_Spread" : kind == "sva" ? "mnu_sva" : "mnu_xdot";
}

/// Tells what speaks against cutting by the profile. @return whether it is to be written
bool May_be_Cut(const Session& session, const Design_State& design, bool even_if_wrong)
{
    const Check check = Check_Design(design, Limits());
    for (const Finding& finding : check.findings)
        if (finding.severity == Severity::do_not_cut)
            session.Say(Line_of(design, finding) + " " + finding.advice);
    if (!check.Do_Not_Cut() || even_if_wrong)
        return true;
    session.Say("nothing was written: --even-if-wrong writes it all the same");
    return false;
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (const int status = session.Load(options.input); status != done)
        return status;
    if (!session.Read_as(options.stage))
        return wrong_input;
    const bool profile = options.kind == "profile";
    if (!profile && (options.truth || options.even_if_wrong))
        return session.Wrong(std::string(options.truth ? "--true" : "--even-if-wrong") + " is for a profile");
    if (profile && design.flags.Calculated && !design.flags.Sized)
        return session.Wrong("the cam is not sized: it has no profile");
    const bool has_it =
        design.flags.Calculated && (profile || options.kind == "spreadsheet" || !design.cam.Translating);
    if (!profile && options.kind != "spreadsheet" && !session.Linkage_Worked_Out())
        return failed;
    const Profile_Rows rows = options.truth ? Profile_Rows::truth : Profile_Rows::program;
    if (profile && has_it) {
        const auto truth = options.truth ? With_True_Profile(design) : std::nullopt;
        if (!May_be_Cut(session, truth ? *truth : design, options.even_if_wrong))
            return failed;
    }
    session.Answer_Save_Dialogs(options.output);
    if (Run_Export(design,
                   profile ? profile_entries[static_cast<std::size_t>(options.code - 1)] : Entry_of(options.kind),
                   rows))
        return done;
    return has_it ? failed : wrong_input;
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
        ->check(CLI::Range(1, static_cast<int>(profile_entries.size())))
        ->capture_default_str();
    Add_Truth_Option(*command, options->truth);
    command->add_flag("--even-if-wrong", options->even_if_wrong,
                      "profile: also where the check says that the cam should not be cut");
    Add_Output(*command, options->output, "file to write");
    Add_Stage_Options(*command, options->stage);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
