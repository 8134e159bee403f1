// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of `new`, a word a line: segments, --bc, --order, --knots, --set. What it makes is worked through.
#include <memory>
#include <sstream>

#include "cli/commands.h"
#include "cli/session.h"
#include "files/model_file.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

/// Runs a command line as lobemax-cli does, with this one command, for its design; none where it was refused.
std::unique_ptr<Design_State> Made(const std::vector<std::string>& words)
{
    std::istringstream in;
    std::ostringstream out, err;
    CLI::App app;
    app.require_subcommand(1);
    app.fallthrough();
    cli::Common_Options options;
    cli::Add_Common_Options(app, options);
    cli::Action action;
    cli::Add_New(app, action);
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError& error) {
        app.exit(error, out, err);
        return nullptr;
    }
    cli::Session session(options, in, out, err);
    int status = cli::failed;
    try {
        status = action(session);
    } catch (const Fault& fault) {
        session.Say("run-time error " + std::to_string(fault.Number()));
    }
    Require(status == cli::done || !err.str().empty(), "a command line that is refused is told why");
    return status == cli::done ? std::make_unique<Design_State>(session.design) : nullptr;
}

void Run(std::string_view input)
{
    constexpr std::size_t most_words = 80;
    const Host_of_Fuzz host;
    const std::string path = Folder() + "made.cam";
    std::vector<std::string> words{"new", "-o", path};
    for (std::string& line : Lines_of(input))
        if (!line.starts_with("-o") && !line.starts_with("--output"))
            words.push_back(std::move(line));
    if (words.size() > most_words)
        return;
    const std::unique_ptr<Design_State> design = Made(words);
    if (design == nullptr)
        return;
    if (Has_Turn(input, 0, 8)) {
        const auto back = std::make_unique<Design_State>(Started_Design());
        Text_Source source(host.files.Text(path));
        Require(ReadFile(*back, source) || back->motion.No_of_segments == Max_Segments, "what was made is read");
    }
    Work_Through(*design, host);
    if (Has_Turn(input, 1, 8))
        Require_Same_Model_Back(*design, "9");
}

const Registered registered("command", Run);

}  // namespace
}  // namespace lobemax::fuzz
