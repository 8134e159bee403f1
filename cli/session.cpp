// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/session.h"

#include <ostream>
#include <utility>

#include "cli/commands.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/exports.h"
#include "files/model_file.h"
#include "files/whole_file.h"
#include "motion/segments.h"
#include "truth/check.h"

namespace lobemax::cli {

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
    return On_One_Line(line);
}

/// A message box as a line: its symbol, its text, and the answer where it asks for one.
std::string Box_Line(const Message& box, Answer answer)
{
    std::string line = std::string("[") + Symbol_Word(box.symbol) + "] " + One_Line(box.text);
    if (box.buttons != Buttons::OK)
        line += std::string(" -> ") + Button_Word(answer);
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

Session::Session(const Common_Options& options, std::istream& input, std::ostream& output, std::ostream& errors,
                 bool terminal)
    : in(input), out(output), err(errors), answers_(options.answers)
{
    Host host;
    host.file_system = Installed_Host().file_system;
    host.messenger = [this](const Message& box) {
        const Answer answer = Preferred_Answer(box.buttons, answers_);
        if (held_ != nullptr)
            held_->push_back(box);
        else
            Print(Box_Line(box, answer));
        return answer;
    };
    if (terminal)
        host.progress = [this](double share) {
            Show_Progress(share);
            return false;  // Ctrl+C ends the program
        };
    host.error_reported = [this](int) { error_reported_ = true; };
    if (options.date)
        host.date = [text = *options.date] { return text; };
    if (options.time)
        host.time = [text = *options.time] { return text; };
    before_ = Install_Host(std::move(host));
    Sub_Main(design, "", {});
}

Session::~Session()
{
    Install_Host(std::move(before_));
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

namespace {

/// A number as an option's word has it; none for any other word, and for one beyond a double.
std::optional<double> Number_of(const std::string& word)
{
    try {
        return Whole_Number(word);
    } catch (const Fault&) {
        return {};
    }
}

}  // namespace

CLI::Option* Add_Number(CLI::App& command, const std::string& name, double low, double high,
                        std::function<void(double)> take, const std::string& help)
{
    const auto store = [take = std::move(take)](const std::string& word) { take(Whole_Number(word).value()); };
    return command.add_option_function<std::string>(name, store, help)
        ->check(CLI::Validator(
            [low, high](const std::string& word) -> std::string {
                const auto number = Number_of(word);
                return number && *number >= low && *number <= high
                           ? ""
                           : "Value " + word + " not in range " + Shortest(low) + " to " + Shortest(high);
            },
            "FLOAT in [" + Shortest(low) + " - " + Shortest(high) + "]"));
}

CLI::Option* Add_Number(CLI::App& command, const std::string& name, std::optional<double>& value,
                        const std::string& help)
{
    return command.add_option_function<std::string>(
        name,
        [name, &value](const std::string& word) {
            value = Number_of(word);
            if (!value)
                throw CLI::ConversionError(word, name);
        },
        help);
}

void Add_Stage_Options(CLI::App& command, Stage_Choice& choice)
{
    CLI::Option* const watt =
        command.add_flag("--watt", choice.watt, "linkage: the second stage hangs on link 4, as in every file");
    command
        .add_flag("--stephenson", choice.stephenson,
                  "linkage: it hangs on the coupler; no file holds this choice, so each command takes it")
        ->excludes(watt);
}

std::string Take_Stage(Design_State& design, const Stage_Choice& choice)
{
    if (!choice.watt && !choice.stephenson)
        return {};
    const Verdict verdict = Put(design, "Stage_Mode", choice.watt ? "W" : "S");
    return verdict ? std::string() : std::string(choice.watt ? "--watt: " : "--stephenson: ") + verdict.sentence;
}

void Add_Truth_Option(CLI::App& command, bool& truth)
{
    command.add_flag("--true", truth,
                     "the true pressure angle, curvature and profile in place of the program's, which depart from them "
                     "in some configurations (check tells)");
}

void Add_Output(CLI::App& command, std::string& path, const std::string& help)
{
    command.add_option("-o,--output", path, help)->type_name("FILE")->required();
}

void Session::Wipe_Bar() const
{
    if (bar_ >= 0)
        err << "\r\x1b[K" << std::flush;  // the line is empty again
    bar_ = -1;
}

void Session::Show_Progress(double share)
{
    constexpr int width = 40;
    if (share >= 1.0) {
        Wipe_Bar();
        return;
    }
    const int percent = static_cast<int>(100.0 * share);
    if (percent == bar_)
        return;
    bar_ = percent;
    const auto filled = static_cast<std::size_t>(percent * width / 100);
    err << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << percent << " %"
        << std::flush;
}

void Session::Print(const std::string& line) const
{
    told_ = true;
    Wipe_Bar();
    err << line << '\n';
}

void Session::Say(const std::string& what) const
{
    Print("lobemax-cli: " + One_Line(what));
}

int Session::Wrong(const std::string& what) const
{
    Say(what);
    return wrong_input;
}

std::string Session::Refusal_of(const std::function<bool()>& check)
{
    std::vector<Message> boxes;
    held_ = &boxes;
    bool accepted = false;
    try {
        accepted = check();
    } catch (...) {
        held_ = nullptr;
        throw;
    }
    held_ = nullptr;
    std::string sentence;
    for (const Message& box : boxes)
        if (accepted)
            Print(Box_Line(box, Preferred_Answer(box.buttons, answers_)));
        else
            sentence += (sentence.empty() ? "" : "; ") + One_Line(box.text);
    return accepted || !sentence.empty() ? sentence : "refused";
}

int Session::Load(const std::string& path)
{
    if (!Load_Model(design, path))
        return wrong_input;
    return error_reported_ ? failed : done;
}

bool Session::Apply_Settings(const std::vector<std::string>& settings)
{
    const std::string refusal = lobemax::Apply_Settings(design, settings);
    if (!refusal.empty())
        Wrong("--set: " + One_Line(refusal));
    return refusal.empty();
}

int Session::Save(const std::string& path)
{
    if (error_reported_)
        return failed;
    return Write_Model_File(design, path, Save_From::command_line) ? done : failed;
}

int Session::Save_Text(const std::string& path, const std::string& text, const char* routine)
{
    if (error_reported_)
        return failed;
    return Trap(routine, [&] { Write_Whole_File(path, text); }) ? done : failed;
}

bool Session::Read_as(const Stage_Choice& choice)
{
    std::vector<Mark> stood;
    for (const Mark_Entry& entry : Mark_Table())
        if (Holds(design, entry.mark))
            stood.push_back(entry.mark);
    if (const std::string refusal = Take_Stage(design, choice); !refusal.empty()) {
        Wrong(refusal);
        return false;
    }
    for (const Mark mark : stood)
        Reach(design, mark);
    return true;
}

bool Session::Take_Truth()
{
    auto with_truth = With_True_Profile(design);
    if (with_truth)
        design = std::move(*with_truth);
    else
        Say("--true: " + Why_No_True_Profile(design));
    return with_truth.has_value();
}

bool Session::Linkage_Worked_Out()
{
    if (!Has_Linkage(design) || !design.flags.Calculated || design.flags.Linkage_Calc)
        return true;
    if (Refuse_Other_Units(design))
        return false;
    Work_Out_Linkage(design);
    return design.flags.Linkage_Calc;
}

void Session::Answer_Save_Dialogs(const std::string& path)
{
    Host host = Installed_Host();
    host.save_dialog = [path](const File_Dialog&) { return std::optional(path); };
    Install_Host(std::move(host));
}

void Session::Use_Units_for_New_Design(int units)
{
    design.identity.WhichUnit = units;
    Reset_All(design);
    Clear_Motion_Data(design, design.motion.Max_Data_Points_used, design.run.Saved_Variables);
}

std::string Session::Refused_Segment(std::optional<int> segment) const
{
    if (!segment || (1 <= *segment && *segment <= design.motion.No_of_segments))
        return {};
    return "there is no segment " + std::to_string(*segment);
}

std::optional<double> Whole_Number(const std::string& text)
{
    const Number_Read number = Read_Number(text, Decimal_Symbol::point);
    return number.whole ? std::optional(number.value) : std::nullopt;
}

}  // namespace lobemax::cli
