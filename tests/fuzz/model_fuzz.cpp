// SPDX-License-Identifier: GPL-3.0-or-later
// Model files of every format. What was read is written in every format and comes back, and is worked through.
#include <array>
#include <memory>

#include "core/ladder.h"
#include "files/byte_stream.h"
#include "files/model_file.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

void Run(std::string_view input)
{
    const Host_of_Fuzz host;
    const auto design = std::make_unique<Design_State>(Started_Design());
    Text_Source source(input);
    const bool whole = ReadFile(*design, source);
    const Run_Group& run = design->run;
    Require(whole == (!run.Read_Abort && !run.Read_Partial), "the flags of a read tell its outcome");
    Require(whole || host.Told() > 0, "a read that was not whole is told");
    Require_Finite_Rows(*design);
    if (run.Read_Abort)
        return;
    // As the Home screen goes on after a read.
    Apply(*design, run.Read_Partial && !run.Read_Complete ? Event::load_partial : Event::load_succeeded);
    constexpr std::array formats{"7.2", "8", "9"};
    for (std::size_t i = 0; i < formats.size(); ++i)
        if (whole && Has_Turn(input, i, formats.size()))
            Require_Same_Model_Back(*design, formats[i]);
    Work_Through(*design, host);
    if (Has_Turn(input, 0, 4))
        Require_Same_Model_Back(*design, "9");
}

const Registered registered("model", Run);

}  // namespace
}  // namespace lobemax::fuzz
