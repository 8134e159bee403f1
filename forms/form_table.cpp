// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_table.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "core/variables.h"

namespace lobemax {

std::string Unit_Word(const Design_State& design, Form_Unit unit)
{
    const Unit_Words& words = Words_of_Units(design.identity.WhichUnit);
    // Springs and inertias of all metric systems have metres.
    const std::string per = design.identity.WhichUnit >= 3 ? "m" : words.length;
    switch (unit) {
    case Form_Unit::none:
        return "";
    case Form_Unit::length:
        return words.length;
    case Form_Unit::degrees:
        return "deg";
    case Form_Unit::mass:
        return words.mass;
    case Form_Unit::inertia:
        return words.mass + ("-" + per + "^2");
    case Form_Unit::force:
        return words.force;
    case Form_Unit::spring:
        return words.force + ("/" + per);
    case Form_Unit::damping:
        return words.force + ("-s/" + per);
    case Form_Unit::stress:
        return words.stress;
    case Form_Unit::torque:
        return design.plot.Var_Unit(var::Torque);
    case Form_Unit::frequency:
        return "rad/s";
    }
    throw Fault{internal_error};
}

const Form_Control& Control_of(std::span<const Form_Control> controls, std::string_view name)
{
    const auto found = std::ranges::find(controls, name, &Form_Control::name);
    if (found == controls.end())
        throw std::out_of_range("no control " + std::string(name));
    return *found;
}

}  // namespace lobemax
