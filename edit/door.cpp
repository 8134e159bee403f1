// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/door.h"

#include <array>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "camgeom/cam_rules.h"
#include "core/text.h"
#include "dynamics/train_rules.h"
#include "dynamics/vibration_rules.h"
#include "linkage/linkage_rules.h"
#include "motion/motion_rules.h"
#include "motion/polynomial.h"

namespace lobemax {

namespace {

std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

/// Whether the element belongs to segment 0, which no design uses.
bool Of_Segment_0(const Design_State& design, const Field& field, const Field_Index& index)
{
    const Bounds bounds = field.bounds(design)[0];
    return field.dimensions == 1 && bounds.lo == 0 && bounds.hi == Max_Segments && index.count == 1 && index.at[0] == 0;
}

const Field& Field_of(std::string_view name)
{
    const Field* const field = Find_Field(name);
    if (field == nullptr)
        throw std::logic_error("no field " + std::string(name));
    return *field;
}

/// Stores by the field's type and tells whether the field then differs.
bool Plain_Store(Design_State& design, const Field& field, const Field_Index& at, const Typed_Value& value)
{
    return std::visit(
        [&](auto* place) {
            using T = std::remove_pointer_t<decltype(place)>;
            const T before = *place;
            if constexpr (std::is_same_v<T, std::string>)
                *place = value.text;
            else if constexpr (std::is_same_v<T, Flag>)
                *place = value.number != 0.0;
            else if constexpr (std::is_same_v<T, Integer>)
                *place = To_Integer(value.number);
            else if constexpr (std::is_same_v<T, Long>)
                *place = static_cast<Long>(value.number);
            else
                *place = value.number;
            return !(*place == before);
        },
        field.at(design, at));
}

/// Whether the field holds the value already.
bool Holds_Already(const Design_State& design, const Field& field, const Field_Index& at, const Typed_Value& value)
{
    return std::visit(
        [&](const auto* place) {
            using T = std::remove_cvref_t<decltype(*place)>;
            if constexpr (std::is_same_v<T, std::string>)
                return *place == value.text;
            else if constexpr (std::is_same_v<T, Flag>)
                return *place == (value.number != 0.0);
            else
                return static_cast<double>(*place) == value.number;
        },
        field.at(const_cast<Design_State&>(design), at));  // looked at alone
}

Verdict Check(const Design_State& design, const Field& field, const Field_Index& at, const Typed_Value& value)
{
    const Field_Rule& rule = Rule_of(field);
    if (rule.role == Field_Role::derived)
        return {Quoted(field.name) + " follows from " + std::string(rule.words) + " and cannot be set"};
    if (at.count != field.dimensions)
        return {Quoted(field.name) + " needs an index"};
    if (value.text.size() > Most_Text_Bytes)
        return {Quoted(field.name) + " has " + std::to_string(Most_Text_Bytes) + " bytes at the most, this text has " +
                std::to_string(value.text.size())};
    if (Of_Segment_0(design, field, at))
        return {"index 0 of " + Quoted(field.name) + " is outside 1 to " + std::to_string(Max_Segments)};
    return rule.may_be == nullptr ? Verdict{} : rule.may_be(design, at, value);
}

/// A number as the field stores it. @throws Fault{6} when the field cannot hold it
double As_Stored(const Field& field, double number)
{
    return field.type == Field_Type::single ? double{Single(number)} : number;
}

/// A design as it was before a store, its rows only where they are asked for: they are large.
class Before {
public:
    Before(const Design_State& design, bool rows)
        : identity_(design.identity),
          motion_(design.motion),
          cam_(design.cam),
          dynamics_(design.dynamics),
          linkage_(design.linkage),
          plot_(design.plot),
          flags_(design.flags),
          run_(design.run)
    {
        if (rows)
            results_ = design.results;
    }
    void Put_Back(Design_State& design) const
    {
        design.identity = identity_;
        design.motion = motion_;
        design.cam = cam_;
        design.dynamics = dynamics_;
        design.linkage = linkage_;
        design.plot = plot_;
        design.flags = flags_;
        design.run = run_;
        if (results_)
            design.results = *results_;
    }

private:
    Identity_Group identity_;
    Motion_Group motion_;
    Cam_Group cam_;
    Dynamics_Group dynamics_;
    Linkage_Group linkage_;
    Plot_Group plot_;
    Flags_Group flags_;
    Run_Group run_;
    std::optional<Results_Group> results_;
};

}  // namespace

const Field_Rule& Rule_of(const Field& field)
{
    static const std::unordered_map<std::string_view, const Field_Rule*> by_name = [] {
        std::unordered_map<std::string_view, const Field_Rule*> map;
        for (const auto rules :
             {General_Rules(), Motion_Rules(), Cam_Rules(), Train_Rules(), Vibration_Rules(), Linkage_Rules()})
            for (const Field_Rule& rule : rules)
                map.emplace(rule.field, &rule);
        return map;
    }();
    const auto found = by_name.find(field.name);
    if (found == by_name.end())
        throw std::logic_error("no rule for " + std::string(field.name));
    return *found->second;
}

Verdict Query(const Design_State& design, std::string_view name, const Field_Index& at, double number)
{
    const Field& field = Field_of(name);
    return Check(design, field, at, {Shortest(number), As_Stored(field, number)});
}

Verdict Query(const Design_State& design, std::string_view field, double number)
{
    return Query(design, field, Field_Index{}, number);
}

Verdict Query(const Design_State& design, std::string_view name, Single number)
{
    return Check(design, Field_of(name), {}, {Shortest(number), number});
}

Verdict Put(Design_State& design, std::string_view name, const Field_Index& at, const Typed_Value& value)
{
    const Field& field = Field_of(name);
    if (Verdict verdict = Check(design, field, at, value); !verdict)
        return verdict;
    if (Holds_Already(design, field, at, value))
        return {};
    const Field_Rule& rule = Rule_of(field);
    if (rule.store == nullptr && rule.follow == nullptr) {
        Plain_Store(design, field, at, value);  // one that faults has stored nothing
    } else {
        const Before before(design, rule.rows);
        try {
            if (rule.store != nullptr)
                rule.store(design, at, value);
            else
                Plain_Store(design, field, at, value);
            if (rule.follow != nullptr)
                rule.follow(design, at);
        } catch (...) {
            before.Put_Back(design);
            throw;
        }
    }
    if (rule.event)
        Apply(design, *rule.event);
    if (design.run.Last_Edit.empty())
        design.run.Last_Edit = Words_of(rule, at);
    return {};
}

Verdict Put(Design_State& design, std::string_view name, const Field_Index& at, double number)
{
    return Put(design, name, at, Typed_Value{Shortest(number), As_Stored(Field_of(name), number)});
}

Verdict Put(Design_State& design, std::string_view field, double number)
{
    return Put(design, field, Field_Index{}, number);
}

Verdict Put(Design_State& design, std::string_view field, const Field_Index& at, const std::string& text)
{
    return Put(design, field, at, Typed_Value{text, 0.0});
}

Verdict Put(Design_State& design, std::string_view field, const std::string& text)
{
    return Put(design, field, Field_Index{}, text);
}

Verdict Put_Condition(Design_State& design, int segment, int row, int order, const std::string& text)
{
    constexpr std::array fields{"T boundary cond", "S boundary cond", "V boundary cond",
                                "A boundary cond", "J boundary cond", "Pbound"};
    const std::size_t place = Checked_Place(order, Angle_Box, Max_Bound_Order);
    return Put(design, fields[place], At(segment, row), text);
}

void Clear_Conditions(Design_State& design, int segment)
{
    for (int row = 0; row <= Last_Condition_Row; ++row)
        for (int order = row == 0 ? 0 : Angle_Box; order <= Max_Bound_Order; ++order)
            Put_Condition(design, segment, row, order, "");
}

Verdict Read_Value(const Design_State& design, const Field& field, std::string_view text, Typed_Value& value)
{
    value = {std::string(text), 0.0};
    const Number_Read reading = Read_Number(text, Decimal_Symbol::point);
    switch (field.type) {
    case Field_Type::text:
        // Positions and conditions are numbers, kept as texts in the design's own number format.
        if (field.unit == Field_Unit::position || field.name.ends_with("boundary cond") || field.name == "Pbound") {
            const Number_Read own = Read_Number(text, Current_Decimal_Symbol(design));
            if (!Trim(text).empty() && !reading.whole && !own.whole)
                return {Quoted(text) + " is not a number"};
            static_cast<void>(Single(reading.whole ? reading.value : own.value));  // what no Single holds is a fault
            value.text = reading.whole ? In_Number_Format(design, Trim(text)) : Trim(text);
        }
        return {};
    case Field_Type::flag: {
        const std::string word = Trim(text);
        if (Same_Text(word, "true") || word == "-1")
            value.number = 1.0;
        else if (!Same_Text(word, "false") && word != "0")
            return {Quoted(word) + " is not true, false, -1 or 0"};
        return {};
    }
    case Field_Type::integer:
    case Field_Type::long_integer:
        if (reading.any && reading.whole && reading.value != std::floor(reading.value))
            return {Quoted(text) + " is not a whole number"};
        break;
    case Field_Type::single:
    case Field_Type::real:
        break;
    }
    if (!reading.any || !reading.whole) {
        // A field of few values names them.
        value.number = std::nan("");
        const Field_Rule& rule = Rule_of(field);
        const bool few = field.type == Field_Type::integer || rule.event == Event::step_changed;
        if (few && rule.may_be != nullptr && field.dimensions == 0)
            return rule.may_be(design, {}, value);
        return {Quoted(text) + " is not a number"};
    }
    if (field.type == Field_Type::long_integer && std::abs(reading.value) > 2147483647.0)
        throw Fault{overflow};
    value.number = As_Stored(field, reading.value);
    return {};
}

std::string Apply_Setting(Design_State& design, std::string_view setting)
{
    const std::size_t equals = setting.find('=');
    if (equals == std::string_view::npos)
        return Quoted(setting) + " is not FIELD=VALUE";
    const Field_Reference reference = Read_Field_Reference(design, setting.substr(0, equals));
    if (reference.field == nullptr)
        return reference.error;
    const Field& field = *reference.field;
    const std::string_view text = setting.substr(equals + 1);
    try {
        Typed_Value value;
        const Field_Rule& rule = Rule_of(field);
        if (rule.role != Field_Role::derived)  // what cannot be set is told as that, whatever the text
            if (const Verdict verdict = Read_Value(design, field, text, value); !verdict)
                return verdict.sentence;
        return Put(design, field.name, reference.index, value).sentence;
    } catch (const Fault& fault) {
        if (fault.Number() == out_of_bounds)
            return Quoted(Field_Name(field, reference.index)) + " does not exist";
        return Quoted(text) + " is too large for " + Quoted(field.name);
    }
}

std::string Apply_Settings(Design_State& design, const std::vector<std::string>& settings)
{
    std::vector<std::string_view> waiting(settings.begin(), settings.end());
    while (!waiting.empty()) {
        std::vector<std::string_view> refused;
        std::string first;
        for (const std::string_view setting : waiting)
            if (std::string refusal = Apply_Setting(design, setting); !refusal.empty()) {
                if (refused.empty())
                    first = std::move(refusal);
                refused.push_back(setting);
            }
        if (refused.size() == waiting.size())
            return first;
        waiting = std::move(refused);
    }
    return {};
}

std::string Words_of(const Field_Rule& rule, const Field_Index& at)
{
    std::string words(rule.words);
    if (const std::size_t place = words.find("%1"); place != std::string::npos)
        words.replace(place, 2, std::to_string(at.at[0]));
    return words;
}

}  // namespace lobemax
