// SPDX-License-Identifier: GPL-3.0-or-later
// The recovery of unsaved work: a note and a model, separated by a line "====".
#include <filesystem>
#include <memory>

#include "edit/unsaved.h"
#include "files/model_file.h"
#include "files/recovery.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

namespace fs = std::filesystem;

void Run(std::string_view input)
{
    constexpr std::string_view separator = "====\n";
    const Host_of_Fuzz host;
    const std::size_t place = input.find(separator);
    const std::string_view note = input.substr(0, place);
    const std::string_view model = place == std::string_view::npos ? "" : input.substr(place + separator.size());
    Put_File("Recovery.txt", note);
    Put_File("Recovery.cam", model);

    const auto design = std::make_unique<Design_State>(Started_Design());
    const bool recovered = Offer_Recovery(*design, Folder());
    Require(host.Told() > 0, "a recovery is offered");
    Require_Finite_Rows(*design);
    const bool kept = fs::exists(Folder() + "Recovery.cam.bad");
    if (recovered) {
        Require(Unsaved(*design), "what was recovered is not saved");
        const bool gone = !fs::exists(Folder() + "Recovery.cam");
        const bool written = !host.files.Text(Recovery_Model_Path(Folder())).empty();
        Require(gone && written, "a recovered design is in this program's own recovery");
        Require(kept == static_cast<bool>(design->run.Read_Partial), "a recovery read in part is kept beside");
        Require_Same_Model_Back(*design, "9");
        Work_Through(*design, host);
    } else {
        Require(kept, "a recovery that cannot be read is kept beside");
    }
    for (const char* const name : {"Recovery.txt", "Recovery.cam", "Recovery.cam.bad"}) {
        std::error_code none;
        fs::remove(Folder() + name, none);
    }
}

const Registered registered("recovery", Run);

}  // namespace
}  // namespace lobemax::fuzz
