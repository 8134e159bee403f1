// SPDX-License-Identifier: GPL-3.0-or-later
/// Solids without the wait for what makes them: the library of room solid is loaded at the first one.
#pragma once

#include "forms/cad_form.h"

namespace lobemax {

/// As Make_Solid. A library that cannot be loaded is a refusal.
std::string Make_Solid_on_Demand(const Design_State& design, const Solid_Options& options, Solid_Format format,
                                 std::string& bytes, Solid_Report& report);

}  // namespace lobemax
