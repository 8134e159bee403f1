// SPDX-License-Identifier: GPL-3.0-or-later
/// What the controls of a screen say and hold, told without their windows: each screen with entries has a table of its
/// captioned controls and one of its fields, and makes its widgets from them.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// The kinds of unit that stand beside a field.
enum class Form_Unit {
    none,
    length,
    degrees,
    mass,
    inertia,  // mass x length squared, of metres in all metric systems
    force,
    spring,   // force per length, in all metric systems per metre
    damping,  // force x s per the same length
    stress,
    torque,
    frequency,
};

/// The word of a unit in the unit system in force; empty for none.
std::string Unit_Word(const Design_State& design, Form_Unit unit);

/// A control: its name, its caption or title with the access key as "&X", its tip, and the unit of what it shows.
struct Form_Control {
    std::string_view name;
    std::string_view caption;
    std::string_view tip = "";
    Form_Unit unit = Form_Unit::none;
};

/// The control of a name. @throws std::out_of_range where the table has none: a mistake of its screen
const Form_Control& Control_of(std::span<const Form_Control> controls, std::string_view name);

/// What became of an entry.
struct Form_Entry {
    bool accepted;
    std::string text;           // that the field then shows
    bool takes_focus = false;   // the user is brought back to it
    bool recalculate = false;   // the results on the screen are calculated again at once
    bool disable_done = false;  // the screen cannot be accepted before its next calculation
};

/// A field: a control whose text stands in the form of its screen, and the rule that an entry goes through. A read-out
/// has none.
template <class Form>
struct Form_Field : Form_Control {
    std::string Form::*text;
    /// @param form   what all controls hold; what a rule changes of other texts the screen then shows
    /// @param typed  the text of this field
    Form_Entry (*enter)(Design_State& design, Form& form, std::string_view typed) = nullptr;
};

/// A rule that looks at its own field alone, as a table holds it.
template <auto rule, class Form>
Form_Entry Alone(Design_State& design, Form&, std::string_view typed)
{
    return rule(design, typed);
}

}  // namespace lobemax
