// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/number_format.h"
#include "core/text.h"
#include "forms/design_report.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    Stage_Choice stage;
};

bool Ends_in(const std::string& path, std::string_view ending)
{
    return path.size() > ending.size() && Same_Text(std::string_view(path).substr(path.size() - ending.size()), ending);
}

int Run(Session& session, const Options& options)
{
    const bool pdf = Ends_in(options.output, ".pdf");
    if (!pdf && !Ends_in(options.output, ".txt"))
        return session.Wrong("-o: the report's name must end in .txt or .pdf");
    Design_State& design = session.design;
    if (session.Load(options.input) == wrong_input)
        return wrong_input;
    if (!session.Read_as(options.stage))
        return wrong_input;
    session.Linkage_Worked_Out();      // a train that cannot be was told of; the rest is reported without it
    Use_Number_Format(design, "USA");  // the command line writes a decimal point
    const Design_Report report = Make_Design_Report(design);
    if (!pdf)
        return session.Save_Text(options.output, Report_Text(report), "report");
    return Draw_to_File(session, options.output, [&](Drawing& drawing, std::string& why) {
        return std::optional(drawing.Report(design, report, options.output, why));
    });
}

}  // namespace

void Add_Report(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("report", "Writes the whole design as a report");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Output(*command, options->output, "report to write: .txt or .pdf");
    Add_Stage_Options(*command, options->stage);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
