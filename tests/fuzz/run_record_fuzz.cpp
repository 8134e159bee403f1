// SPDX-License-Identifier: GPL-3.0-or-later
// Run_Check.txt: whatever it holds, the program starts, and only a run that did not end is taken for one.
#include "files/run_record.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

void Run(std::string_view input)
{
    const Host_of_Fuzz host;
    const std::string path = Folder() + "Run_Check.txt";
    Put_File("Run_Check.txt", input);
    const std::string_view first = input.substr(0, input.find_first_of("\r\n"));
    const bool runs = first == "Running" || first == "\"Running\"";
    Require((Check_Run_Record(Started_Design(), Folder(), "a.cam") == Run_Start::end_at_once) == runs,
            "a double click ends at once beside a running program alone");
    Require((Check_Run_Record(Started_Design(), Folder(), "") == Run_Start::after_a_crash) == runs,
            "a run that did not end is recognised");
    Require(host.files.Text(path).starts_with("Running\r\n"), "the run is marked");
    Terminate(Folder());
    Require(host.files.Text(path).starts_with("Normal Exit\r\n"), "the end is marked");
    Require(host.Errors() == 0, "no text is an error");
}

const Registered registered("run_record", Run);

}  // namespace
}  // namespace lobemax::fuzz
