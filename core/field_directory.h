// SPDX-License-Identifier: GPL-3.0-or-later
/// Every field of the design by the name that the model file and the command line give it, with its
/// type, bounds and unit. Whatever asks for a field by name reads this table.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "core/design_state.h"

namespace lobemax {

enum class Field_Type { single, integer, flag, text, long_integer, real };

/// What kind of quantity a field holds; Unit_Text words it in the system in force.
enum class Field_Unit {
    none,
    position,  // length, or degrees for an oscillating follower
    length,
    force,
    torque,
    mass,
    inertia,
    spring_rate,
    damping,
    stress,
    degrees,
    radians,
    rad_per_s,
    seconds,
};

/// The indices of one element: none for a scalar, up to three for an array.
struct Field_Index {
    int count = 0;
    std::array<int, 3> at{};
};

/// An index, for fields of arrays: At(2), At(1, 3).
template <class... Indices>
Field_Index At(Indices... indices)
{
    return {static_cast<int>(sizeof...(indices)), {indices...}};
}

using Field_Ref = std::variant<Single*, Integer*, Flag*, std::string*, Long*, double*>;

struct Field {
    std::string_view name;
    std::string_view label;  // in the model file: %1, %2, %3 stand for the indices
    Field_Type type;
    int dimensions;
    Field_Unit unit;
    bool computed;  // follows from other fields: not to be set by name
    std::array<Bounds, 3> (*bounds)(const Design_State&);
    Field_Ref (*at)(Design_State&, const Field_Index&);
};

/// The whole table, in the order of the design's groups.
std::span<const Field> Field_Directory();

/// The field of that name, upper and lower case the same; nullptr when there is none.
const Field* Find_Field(std::string_view name);

/// A field and an element of it as a person writes them, "Beta_Deg(2)", "S boundary cond(1, 0)".
/// The index may be left out; field is nullptr when the text names none, error then says why.
struct Field_Reference {
    const Field* field = nullptr;
    Field_Index index;
    std::string error;
};
Field_Reference Read_Field_Reference(const Design_State& design, std::string_view text);

/// The element's name: "Beta_Deg(2)".
std::string Field_Name(const Field& field, const Field_Index& index);

/// Its label in a model file: "Segment 2 Beta_Deg".
std::string Field_Label(const Field& field, const Field_Index& index);

/// Its value as text: numbers with a decimal point, shortest; flags "true" or "false"; texts as they are.
/// @throws Fault{9} when the index is out of bounds
std::string Field_Value(Design_State& design, const Field& field, const Field_Index& index);

/// The unit of a field in the system in force, empty when it has none.
std::string Unit_Text(const Design_State& design, Field_Unit unit);

/// Calls visit(index) for every element of the field, in order.
void Each_Element(const Design_State& design, const Field& field, const std::function<void(const Field_Index&)>& visit);

}  // namespace lobemax
