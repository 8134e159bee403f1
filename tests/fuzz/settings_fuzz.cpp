// SPDX-License-Identifier: GPL-3.0-or-later
// Settings 'FIELD=VALUE' on an example design, a line each behind the number of the example, then all rungs.
#include <array>
#include <memory>

#include "core/text.h"
#include "core/traps.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "files/example_designs.h"
#include "files/model_file.h"
#include "motion/segments.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

const Design_State& Example(std::size_t number)
{
    static std::array<std::unique_ptr<Design_State>, Example_Names.size()> made;
    std::unique_ptr<Design_State>& example = made[number % made.size()];
    if (!example) {
        example = std::make_unique<Design_State>(Started_Design());
        Require(Load_Example(*example, Example_Names[number % made.size()]), "an example is known");
        Coarsen(*example);
        Require(Example_Done(*example), "an example is calculated");
    }
    return *example;
}

void Run(std::string_view input)
{
    constexpr std::size_t most_settings = 40;
    const Host_of_Fuzz host;
    std::vector<std::string> settings = Lines_of(input);
    if (settings.empty() || settings.size() > most_settings)
        return;
    const std::size_t number = settings.front().empty() ? 0 : static_cast<unsigned char>(settings.front().front());
    settings.erase(settings.begin());
    const auto design = std::make_unique<Design_State>(Example(number));
    for (const std::string& setting : settings)
        Apply_Setting(*design, setting);
    Apply_Settings(*design, settings);
    Require_Finite_Rows(*design);
    if (Has_Turn(input, 0, 8))
        Require_Same_Model_Back(*design, "9");
    Work_Through(*design, host);
    if (Has_Turn(input, 1, 8))
        Require_Same_Model_Back(*design, "9");
}

const Registered registered("settings", Run);

}  // namespace
}  // namespace lobemax::fuzz
