// SPDX-License-Identifier: GPL-3.0-or-later
/// The one door for a value: whoever changes an input of a design, a screen's entry, an option of the command line, an
/// example, a test, comes through here, so that a value is checked, stored, followed up and takes its results away the
/// same way everywhere.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/field_rule.h"

namespace lobemax {

/// All rules of all fields, by the field's name; every field of the directory has one.
const Field_Rule& Rule_of(const Field& field);

/// Whether the value may stand in the field; nothing is changed.
Verdict Query(const Design_State& design, std::string_view field, const Field_Index& at, double number);
Verdict Query(const Design_State& design, std::string_view field, double number);
/// Of a number as a field holds it, which a refusal then writes with its own digits.
Verdict Query(const Design_State& design, std::string_view field, Single number);

/// Checks, stores, follows up, and takes away what rested on the value before; an equal value changes nothing.
///
/// @return  empty, or why the value may not be; the design is then as it was
/// @throws Fault{6} when the value or what follows from it is too large; the design is then as it was
Verdict Put(Design_State& design, std::string_view field, const Field_Index& at, const Typed_Value& value);
Verdict Put(Design_State& design, std::string_view field, const Field_Index& at, double number);
Verdict Put(Design_State& design, std::string_view field, double number);
Verdict Put(Design_State& design, std::string_view field, const Field_Index& at, const std::string& text);
Verdict Put(Design_State& design, std::string_view field, const std::string& text);

/// A box of the condition table, row 0..9, order 0..4 for S to Ping, or the angle of its row.
inline constexpr int Angle_Box = -1;
Verdict Put_Condition(Design_State& design, int segment, int row, int order, const std::string& text);

/// Empties the boxes and angles of a segment's condition table.
void Clear_Conditions(Design_State& design, int segment);

/// The value as a person writes it, with a decimal point, by the field's type.
/// @return  empty, or why the text is no such value
Verdict Read_Value(const Design_State& design, const Field& field, std::string_view text, Typed_Value& value);

/// Applies a setting 'FIELD=VALUE', as 'Prime_Rad=40' or 'Beta_Deg(2)=90'.
/// @return  empty, or why the setting was refused; the design is then as it was
std::string Apply_Setting(Design_State& design, std::string_view setting);

/// Applies settings in their order. One that is refused because of another that follows it, as a roller above a prime
/// radius that grows with the next setting, is tried again after it.
/// @return  empty, or why the first of those that remain was refused
std::string Apply_Settings(Design_State& design, const std::vector<std::string>& settings);

/// The field's name for "Undo ...": "Beta of segment 2".
std::string Words_of(const Field_Rule& rule, const Field_Index& at);

}  // namespace lobemax
