// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/train_rules.h"

#include <vector>

namespace lobemax {

namespace {

using enum Field_Role;

constexpr std::string_view must_be_positive = "This value must be positive.  Please redo.";
constexpr std::string_view no_friction = "Friction cannot be zero or negative.  Please redo.";
constexpr std::string_view positive_and_nonzero = "This value must be positive and nonzero.  Please redo.";
constexpr std::string_view must_have_radius = "You must specify a positive, nonzero crown radius";
constexpr int first_cam_roller = 1;
constexpr int last_cam_roller = 2;

bool Own_Cam(const Design_State& design)
{
    return !design.flags.CompCam_Calc;
}

Verdict Positive_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, must_be_positive);
}

Verdict Friction_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, no_friction);
}

Verdict Zeta_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number > 0.0 && value.number <= 1.0 ? Verdict{}
                                                     : Verdict{"Zeta must be between 0 and 1.  Please redo"};
}

/// The upper bound is tested on the value before: one entry above 1 passes and the next is refused. Meant; mechanics
/// would test the value itself. It matters for the flywheel's size alone, which goes with 1 over it.
Verdict Fluctuation_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (value.number > 0.0 && design.dynamics.Coeff_of_Fluctuation <= 1.0)
        return {};
    return {" Coefficient of fluctuation must be between zero and one - Try .05 ", Symbol::none};
}

// The balancing cam starts from the cam's own train: half its mass, its spring and preload.

void Mass_Follows(Design_State& design, const Field_Index&)
{
    if (Own_Cam(design))
        design.dynamics.Comp_Mass = design.dynamics.Mass / 2;
}

void Preload_Follows(Design_State& design, const Field_Index&)
{
    if (Own_Cam(design))
        design.dynamics.Comp_Preload = design.dynamics.Preload;
}

void Spring_Follows(Design_State& design, const Field_Index&)
{
    if (Own_Cam(design))
        design.dynamics.Comp_Spring_Rate = design.dynamics.Return_Spring_Rate;
}

Verdict Material_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number < 0.0 ? Verdict{std::string(positive_and_nonzero)} : Verdict{};
}

Verdict Contact_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, must_have_radius);
}

Verdict Roller_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(first_cam_roller, last_cam_roller, value);
}

std::vector<Field_Rule> Make_Rules()
{
    const auto rule = [](Event event, std::string_view field, std::string_view words,
                         decltype(Field_Rule::may_be) may_be = nullptr,
                         decltype(Field_Rule::follow) follow = nullptr) -> Field_Rule {
        return {.field = field, .role = input, .words = words, .event = event, .may_be = may_be, .follow = follow};
    };
    using enum Event;
    std::vector<Field_Rule> rules{
        rule(forces_edited, "Mass", "Effective mass", Positive_may_be, Mass_Follows),
        rule(forces_edited, "Return_Spring_Rate", "Spring constant", Positive_may_be, Spring_Follows),
        rule(closing_spring_edited, "Preload", "Spring preload", Positive_may_be, Preload_Follows),
        rule(forces_edited, "Zeta_Initial", "Damping ratio", Zeta_may_be),
        rule(forces_edited, "Damping", "Damping coefficient", Positive_may_be),
        rule(forces_edited, "Bearing Radius", "Cam journal", Positive_may_be),
        rule(forces_edited, "Mu of Shaft", "Journal friction", Friction_may_be),
        rule(forces_edited, "Mu of Follower", "Follower friction", Friction_may_be),
        rule(forces_edited, "Coeff of Fluctuation", "Coefficient of fluctuation", Fluctuation_may_be),
        rule(forces_edited, "Torque_Start_Fresh", "Start fresh or accumulate"),
        rule(forces_edited, "Ext_Force_Add", "Added external force"),
        rule(stress_edited, "Follower_Weight", "Follower weight"),
        rule(stress_edited, "Young's modulus", "Young's modulus %1", Material_may_be),
        rule(stress_edited, "Poissons' ratio", "Poisson's ratio %1", Material_may_be),
        rule(stress_edited, "Roller type", "Type of roller", Roller_may_be),
        rule(stress_edited, "Crown radius", "Crown radius", Contact_may_be),
        rule(stress_edited, "Roller length", "Contact length", Contact_may_be),
        rule(compensation_edited, "Comp_Mass", "Mass of the balancing train", Positive_may_be),
        rule(compensation_edited, "Comp_Spring_Rate", "Spring of the balancing train", Positive_may_be),
        rule(compensation_edited, "Comp_Preload", "Preload of the balancing train", Positive_may_be),
    };
    const auto derived_from = [&rules](std::string_view from, std::initializer_list<std::string_view> fields) {
        for (const std::string_view field : fields)
            rules.push_back({.field = field, .role = derived, .words = from, .event = {}});
    };
    derived_from("mass, spring and damping ratio", {"Omega_N", "Critical_Damping", "Omega_D"});
    derived_from("the calculated forces", {"Torque_Integral_Max", "Torque_Integral_Min"});
    derived_from("the velocity of the primary cam", {"Torque_Velocity_Limit"});
    return rules;
}

}  // namespace

std::span<const Field_Rule> Train_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

Verdict Figure_may_be(double figure)
{
    return figure > 0.0 ? Verdict{} : Verdict{std::string(must_be_positive)};
}

Verdict Accuracy_may_be(const Balance_Accuracy& accuracy)
{
    for (const double figure : {double{accuracy.eps}, accuracy.start_step, double(accuracy.max_steps)})
        if (const Verdict verdict = Figure_may_be(figure); !verdict)
            return verdict;
    return accuracy.min_step < 0.0 ? Verdict{std::string(must_be_positive)} : Verdict{};
}

}  // namespace lobemax
