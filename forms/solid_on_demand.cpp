// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/solid_on_demand.h"

#include "files/library_on_demand.h"
#include "solid/cam_solid.h"

namespace lobemax {

std::string Make_Solid_on_Demand(const Design_State& design, const Solid_Options& options, Solid_Format format,
                                 std::string& bytes, Solid_Report& report)
{
    std::string why;
    void* const entry = Entry_of_Library(Solid_Library, Solid_Entry, why);
    if (entry == nullptr)
        return "No solid can be made: " + why;
    std::string refusal;
    reinterpret_cast<Make_Solid_Entry>(entry)(refusal, design, options, format, bytes, report);
    return refusal;
}

}  // namespace lobemax
