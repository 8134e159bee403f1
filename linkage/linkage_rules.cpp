// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_rules.h"

#include <cmath>
#include <vector>

#include "core/linkage_setup.h"
#include "linkage/linkage_kinematics.h"

namespace lobemax {

namespace {

using enum Field_Role;

constexpr std::string_view must_be_positive = "This value must be positive.  Please redo.";
constexpr int four = 4;
constexpr int six = 6;

Verdict Links_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number == four || value.number == six ? Verdict{} : Verdict{"A linkage has 4 or 6 links."};
}

/// The type is that of as many links.
void Links_Follow(Design_State& design, const Field_Index&)
{
    Linkage_Group& k = design.linkage;
    k.Linkage_Type = (k.Linkage_Type > 1 ? 2 : 0) + (k.Links == six ? 1 : 0);
    Set_Up_Linkage(design, k.Links);
}

Verdict Type_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(0, 3, value);
}

void Type_Follows(Design_State& design, const Field_Index&)
{
    Linkage_Group& k = design.linkage;
    k.Links = k.Linkage_Type % 2 == 1 ? six : four;
    Set_Up_Linkage(design, k.Links);
}

/// A linkage with a slider, or of four links, has no such choice.
Verdict Stage_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (const Verdict verdict = One_of("|W|S", value.text); !verdict)
        return verdict;
    const bool sixbar = Six_Links(design) && !Ends_in_Slider(design);
    if (sixbar || value.text.empty())
        return {};
    return {"Watt and Stephenson are trains of six links without a slider."};
}

void Stage_Follows(Design_State& design, const Field_Index&)
{
    Set_Up_Linkage(design, design.linkage.Links);
}

Verdict Assembly_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Sign(value);
}

Verdict Length_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, must_be_positive);
}

Verdict Not_Negative(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number >= 0.0 ? Verdict{} : Verdict{"'" + value.text + "' is below 0"};
}

Verdict Effector_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    return value.number == 0.0 ? Verdict{} : Linkage_may_be(design);
}

void Ground_Follows(Design_State& design, const Field_Index&)
{
    Set_Ground(design);
}

/// O4 at a length and a direction, degrees, from the arm's pivot.
void Place_O4(Design_State& design, double length, double direction)
{
    Linkage_Group& k = design.linkage;
    k.O4x = design.cam.ArmX + length * std::cos(direction * Rad_per_Deg);
    k.O4y = design.cam.ArmY + length * std::sin(direction * Rad_per_Deg);
}

/// A typed ground length moves O4 along the line of pivots. Theta1 is taken from the design: pivots that coincide have
/// no line of their own.
void Store_Ground_Length(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Linkage_Group& k = design.linkage;
    if (k.Link_1 > 0.0)
        Set_Ground(design);
    Place_O4(design, value.number, k.Theta1);
    k.Link_1 = value.number;
}

/// A typed ground angle turns O4 about the arm's pivot.
void Store_Ground_Angle(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Linkage_Group& k = design.linkage;
    Set_Ground(design);
    Place_O4(design, k.Link_1, value.number);
    k.Theta1 = value.number;
}

std::vector<Field_Rule> Make_Rules()
{
    const auto rule = [](std::string_view field, std::string_view words, decltype(Field_Rule::may_be) may_be = nullptr,
                         decltype(Field_Rule::follow) follow = nullptr,
                         decltype(Field_Rule::store) store = nullptr) -> Field_Rule {
        return {.field = field,
                .role = input,
                .words = words,
                .event = Event::linkage_edited,
                .may_be = may_be,
                .store = store,
                .follow = follow};
    };
    std::vector<Field_Rule> rules{
        rule("Links", "Number of links", Links_may_be, Links_Follow),
        rule("Linkage_Type", "Type of linkage", Type_may_be, Type_Follows),
        rule("Stage_Mode", "Watt or Stephenson", Stage_may_be, Stage_Follows),
        rule("Assemflag1", "Assembly of the first stage", Assembly_may_be),
        rule("Assemflag2", "Assembly of the second stage", Assembly_may_be),
        rule("Theta1", "Theta1", nullptr, nullptr, Store_Ground_Angle),
        rule("Link 1", "Link 1", Length_may_be, nullptr, Store_Ground_Length),
        rule("O4x", "O4x", nullptr, Ground_Follows),
        rule("O4y", "O4y", nullptr, Ground_Follows),
        rule("Link 4a", "Link 4a", Not_Negative, Ground_Follows),
        {.field = "Drive_End_Effector",
         .role = input,
         .words = "Application of the motion",
         .event = Event::effector_changed,
         .may_be = Effector_may_be},
    };
    for (const std::string_view field : {"Link 2", "Link 3", "Link 4", "Link 5", "Link 6"})
        rules.push_back(rule(field, field, Length_may_be));
    for (const std::string_view field :
         {"Delta2", "Delta4", "O6x", "O6y", "S3x", "S3y", "Global_Slider_angle_deg", "Offset6"})
        rules.push_back(rule(field, field));
    // What a link weighs moves nothing: its effective values are taken into the model of the follower train.
    for (const std::string_view field : {"Mass of link", "Inertia of link", "Stiffness of link"})
        rules.push_back(
            {.field = field, .role = input, .words = field, .event = Event::edited, .may_be = Not_Negative});
    for (const std::string_view field : {"CGx of link", "CGy of link"})
        rules.push_back({.field = field, .role = input, .words = field, .event = Event::edited});
    for (const auto& [field, from] : {std::pair{"Linkage_Kind", "Links and Linkage_Type"}, std::pair{"O4D", "Link 4a"},
                                      std::pair{"Link_Broken", "the calculation of the linkage"},
                                      std::pair{"Link_Indeterminate", "the calculation of the linkage"}})
        rules.push_back({.field = field, .role = derived, .words = from, .event = {}});
    return rules;
}

}  // namespace

Verdict Linkage_may_be(const Design_State& design)
{
    if (!design.cam.Translating)
        return {};
    return {" Your cam currently has a translating follower.\n This feature requires an oscillating follower. "};
}

std::span<const Field_Rule> Linkage_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

}  // namespace lobemax
