// SPDX-License-Identifier: GPL-3.0-or-later
/// Setting a field of the design by its name, with what follows from it.
#pragma once

#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// Applies a setting 'FIELD=VALUE', as 'Prime_Rad=40' or 'Beta_Deg(2)=90'. The value is checked against what
/// the field may hold, and what follows from the field follows: a new step loses the results and makes room
/// for its points, a shaft speed refreshes its powers, a beta its radians and the segment angles, a program
/// code its law.
///
/// @return  empty, or why the setting was refused; the design is then as it was
std::string Apply_Setting(Design_State& design, std::string_view setting);

}  // namespace lobemax
