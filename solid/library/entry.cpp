// SPDX-License-Identifier: GPL-3.0-or-later
/// The library of solids: what a program that has loaded it calls.
#include "solid/cam_solid.h"

extern "C" void lobemax_make_solid(std::string& refusal, const lobemax::Design_State& design,
                                   const lobemax::Solid_Options& options, lobemax::Solid_Format format,
                                   std::string& bytes, lobemax::Solid_Report& report);

void lobemax_make_solid(std::string& refusal, const lobemax::Design_State& design,
                        const lobemax::Solid_Options& options, lobemax::Solid_Format format, std::string& bytes,
                        lobemax::Solid_Report& report)
{
    refusal = lobemax::Make_Solid(design, options, format, bytes, report);
}
