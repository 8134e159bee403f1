// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/session.h"

#include <cstdio>

#include "cli/commands.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/startup.h"
#include "core/text.h"
#include "edit/door.h"
#include "files/model_file.h"
#include "motion/segments.h"

namespace lobemax::cli {

Design_State design;

namespace {

const char* Symbol_Word(Symbol symbol)
{
    switch (symbol) {
    case Symbol::exclamation:
        return "exclamation";
    case Symbol::stop:
        return "stop";
    case Symbol::information:
    case Symbol::none:
        break;
    }
    return "information";
}

/// The text on one line: line breaks as " / ", those at the end left out.
std::string One_Line(std::string_view text)
{
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    std::string line;
    for (const char c : text)
        if (c == '\n')
            line += " / ";
        else
            line += c;
    return line;
}

Answer Preferred_Answer(Buttons buttons, const std::vector<std::string>& answers)
{
    for (const std::string& word : answers)
        for (const Answer answer :
             {Answer::OK, Answer::Cancel, Answer::Abort, Answer::Retry, Answer::Ignore, Answer::Yes, Answer::No})
            if (Same_Text(word, Button_Word(answer)) && Offers(buttons, answer))
                return answer;
    return Usual_Answer(buttons);
}

bool error_reported = false;

}  // namespace

void Add_Common_Options(CLI::App& app, Common_Options& options)
{
    app.add_option("--answer", options.answers, "button to prefer in message boxes, any number of times")
        ->type_name("BUTTON")
        ->allow_extra_args(false)
        ->check(CLI::IsMember({"abort", "retry", "ignore", "ok", "cancel", "yes", "no"}, CLI::ignore_case))
        ->take_all();
    app.add_option("--date", options.date, "text in place of today's date")->type_name("TEXT");
    app.add_option("--time", options.time, "text in place of the time of day")->type_name("TEXT");
}

void Start_Session(const Common_Options& options)
{
    Host host;
    host.messenger = [answers = options.answers](const Message& box) {
        const Answer answer = Preferred_Answer(box.buttons, answers);
        std::string line = std::string("[") + Symbol_Word(box.symbol) + "] " + One_Line(box.text);
        if (box.buttons != Buttons::OK)
            line += std::string(" -> ") + Button_Word(answer);
        std::fprintf(stderr, "%s\n", line.c_str());
        return answer;
    };
    host.error_reported = [](int) { error_reported = true; };
    if (options.date)
        host.date = [text = *options.date] { return text; };
    if (options.time)
        host.time = [text = *options.time] { return text; };
    Install_Host(std::move(host));
    error_reported = false;
    Sub_Main(design, "", {});
}

bool Error_Reported()
{
    return error_reported;
}

CLI::Option* Add_Repeated(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& help)
{
    return command.add_option(name, values, help)->allow_extra_args(false)->take_all();
}

void Add_Settings(CLI::App& command, std::vector<std::string>& settings)
{
    Add_Repeated(command, "--set", settings, "changes a field before anything is calculated, any number of times")
        ->type_name("FIELD=VALUE");
}

void Add_Output(CLI::App& command, std::string& path, const std::string& help)
{
    command.add_option("-o,--output", path, help)->type_name("FILE")->required();
}

int Wrong(const std::string& what)
{
    std::fprintf(stderr, "lobemax-cli: %s\n", what.c_str());
    return wrong_input;
}

bool Load(const std::string& path)
{
    return Load_Model(design, path);
}

bool Apply_Settings(const std::vector<std::string>& settings)
{
    const std::string refusal = lobemax::Apply_Settings(design, settings);
    if (!refusal.empty())
        Wrong("--set: " + refusal);
    return refusal.empty();
}

int Save(const std::string& path)
{
    design.identity.File_Name = path;
    const bool written = Write_Model_File(design, Replace::whole_or_nothing);
    return written && !error_reported ? done : failed;
}

void Use_Units_for_New_Design(int units)
{
    design.identity.WhichUnit = units;
    Reset_All(design);
    Clear_Motion_Data(design, design.motion.Max_Data_Points_used, design.run.Saved_Variables);
}

std::optional<double> Whole_Number(const std::string& text)
{
    const Number_Read number = Read_Number(text, Decimal_Symbol::point);
    return number.whole ? std::optional(number.value) : std::nullopt;
}

}  // namespace lobemax::cli
