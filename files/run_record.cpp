// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/run_record.h"

#include <filesystem>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/traps.h"
#include "files/byte_stream.h"
#include "files/whole_file.h"

namespace lobemax {

namespace {

constexpr const char* file_name = "Run_Check.txt";
constexpr const char* running = "Running";

constexpr const char* running_text =
    "Running\r\n"
    "\r\n"
    "This file records an abnormal exit from the program on last execution\r\n"
    "and is checked at each startup.  Please do not move or delete it.\r\n";
constexpr const char* normal_text =
    "Normal Exit\r\n"
    "\r\n"
    "This file records a normal exit from the program on last run\r\n"
    "and is checked at each startup.  Please do not move or delete.\r\n";

void Write_Record(const std::string& routine, const std::string& folder, const std::string& text)
{
    try {
        Write_Whole_File(folder + file_name, text);
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), routine + " when writing Checkfile");
    }
}

/// The state word: the first line, without quotes.
std::string State_Word(const std::string& path)
{
    std::string stage = " when opening Checkfile";
    try {
        File_Source source(path);
        stage = " when reading Checkfile";
        std::string text(64, '\0');
        text.resize(source.Read(text.data(), text.size()));
        text = text.substr(0, text.find_first_of("\r\n"));
        if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
            text = text.substr(1, text.size() - 2);
        return text;
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), "Check_Run_Record" + stage);
        return "";
    }
}

}  // namespace

Run_Start Check_Run_Record(const Design_State& design, const std::string& folder, const std::string& command_line)
{
    const std::string path = folder + file_name;
    const std::string& program = design.identity.Program_Name;
    std::error_code none;
    Run_Start start = Run_Start::go_on;
    if (!std::filesystem::exists(path, none)) {
        std::filesystem::create_directories(folder, none);
    } else if (State_Word(path) == running) {
        if (!command_line.empty()) {
            Show_Message("   You double-clicked on a " + program +
                             " data file when the program was already running.\n"
                             "   You cannot have two instances of " +
                             program +
                             " running at once.\n"
                             "   Please open the data file from within " +
                             program + " with File/Open  ",
                         Buttons::OK, Symbol::information);
            return Run_Start::end_at_once;
        }
        Show_Message(
            "   The program did not shut down properly on its last run.     \n"
            "            This problem will now be corrected.\n"
            "   To avoid this problem in the future, please use the   \n"
            "   Quit button or File/Quit menu to stop the program.   ",
            Buttons::OK, Symbol::information);
        start = Run_Start::after_a_crash;
    }
    Write_Record("Check_Run_Record", folder, running_text);
    return start;
}

void Terminate(const std::string& folder)
{
    if (!folder.empty())
        Write_Record("Terminate", folder, normal_text);
}

}  // namespace lobemax
