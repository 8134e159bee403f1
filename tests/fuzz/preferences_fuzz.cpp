// SPDX-License-Identifier: GPL-3.0-or-later
// Preferences.txt, Limits.txt, and the user's list of default applications.
#include <memory>

#include "files/limits_file.h"
#include "files/preferences.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

void Require_Known_Values(const Design_State& design)
{
    const int units = design.identity.WhichUnit;
    const int base = design.motion.Time_Base;
    const int follower = design.cam.Followtype;
    const std::string& format = design.identity.Number_Format;
    const std::string& kind = design.cam.Camtype;
    Require(units >= 1 && units <= 5 && base >= 0 && base <= 3 && follower >= 1 && follower <= 2 &&
                (format == "USA" || format == "Europe") && (kind == "Radial" || kind == "Barrel" || kind == "Linear"),
            "preferences hold what the program knows");
}

void Read_as_Limits(const Design_State& design, const Host_of_Fuzz& host, std::string_view input)
{
    const std::string path = Folder() + "Limits.txt";
    Put_File("Limits.txt", input);
    const int told = host.Told();
    const Limits limits = Read_Limits(design, Folder());
    Require(host.Told() - told <= 1, "what is wrong with limits is told once");
    for (const Limit_Entry& entry : Limit_Table())
        Require(!limits[entry.limit] || Refused_Limit(entry.limit, *limits[entry.limit]).empty(),
                "limits are those that can be set");
    const bool whole = host.Told() == told;
    Require(Write_Limits(design, Folder(), limits), "limits are written");
    Require(whole == (host.Told() - told == 0), "what was not read is kept, and told");
    Put_File("Limits.txt", host.files.Text(path));
    Require(Read_Limits(design, Folder()) == limits, "limits that were written come back");
}

void Run(std::string_view input)
{
    const Host_of_Fuzz host;
    const std::string path = Folder() + "Preferences.txt";
    const auto design = std::make_unique<Design_State>(Started_Design());
    Put_File("Preferences.txt", input);
    const bool whole = Read_Preferences(*design, Folder());
    Require(whole || host.Told() > 0, "preferences that were not read are told");
    Require_Known_Values(*design);

    Require(Write_Preferences(*design, Folder()), "preferences are written");
    const std::string written = host.files.Text(path);
    Put_File("Preferences.txt", written);
    const auto back = std::make_unique<Design_State>(Started_Design());
    Require(Read_Preferences(*back, Folder()), "preferences that were written are read");
    Require(Write_Preferences(*back, Folder()) && host.files.Text(path) == written, "preferences come back");

    Read_as_Limits(*design, host, input);

    const std::string list(input);
    for (const char* const application : {"Lobemax", "None"}) {
        const std::string once = Register_Cam_File(application, "cam", list);
        Require(Register_Cam_File(application, "cam", once) == once, "a registration is made once");
    }
    Put_File("mimeapps.list", list);
    Write_Default_Application("Lobemax", Folder());
}

const Registered registered("preferences", Run);

}  // namespace
}  // namespace lobemax::fuzz
