// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/motion_rules.h"

#include <algorithm>
#include <vector>

#include "core/points.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "motion/spline.h"

namespace lobemax {

namespace {

using enum Field_Role;

constexpr double whole_turn = 360.0;

std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

int Segment_of(const Field_Index& at)
{
    return at.at[0];
}

void Wait_for_Calculation(Design_State& design, int segment)
{
    design.motion.Seg_Done(segment) = false;
}

void Wait_All(Design_State& design)
{
    design.motion.Seg_Done.Fill(false);
}

template <int Low, int High>
Verdict Whole(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(Low, High, value);
}

// ---- the table

Verdict Beta_Rule(const Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    return Beta_may_be(design, Segment_of(at), value.number);
}

/// The radians follow from the degrees as they are stored; the rows behind start elsewhere now.
void Beta_Follows(Design_State& design, const Field_Index& at)
{
    Motion_Group& m = design.motion;
    m.Beta_Rad(Segment_of(at)) = m.Beta_Deg(Segment_of(at)) / Deg_per_Rad;
    Update_Segment_Angles(design);
    for (int i = Segment_of(at); i <= m.No_of_segments; ++i)
        Wait_for_Calculation(design, i);
}

Verdict Kind_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return One_of("R|F|P|D|S", value.text);
}

/// A program that serves the new kind stays.
void Store_Kind(Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    Motion_Group& m = design.motion;
    const int i = Segment_of(at);
    const std::string kind = *Listed_Word("R|F|P|D|S", value.text);
    const Motion_Program* const program = Find_Program(m.Program(i));
    if (program != nullptr && program->kinds.find(kind) != std::string_view::npos)
        m.Rise_Fall_Dwell(i) = kind;
    else
        Pick_Motion(design, i, kind[0]);
    if (kind == "D")
        Level_Dwell(design, i);
    Wait_for_Calculation(design, i);
}

Verdict Program_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Find_Program(Trim(value.text)) != nullptr ? Verdict{}
                                                     : Verdict{"there is no motion program " + Quoted(value.text)};
}

void Store_Program(Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    const int i = Segment_of(at);
    Pick_Program(design, i, Trim(value.text));
    if (Dwells(design, i))
        Level_Dwell(design, i);
    Wait_for_Calculation(design, i);
}

void Store_Start_Value(Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    Put_Start_Value(design, Segment_of(at), value.text);
}

void Store_End_Value(Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    Put_End_Value(design, Segment_of(at), value.text);
}

void Count_Follows(Design_State& design, const Field_Index&)
{
    Update_Segment_Angles(design);
}

Verdict Step_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    if (std::ranges::find(Steps, value.number) != Steps.end())
        return {};
    return {Quoted(value.text) + " is no step: 1.0, 0.50, 0.25, 0.125"};
}

void Store_Step(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Set_Step(design, value.number);
    Place_Start_Angle(design, design.cam.Shift_Angle);  // it is another count of points now
}

Verdict Speed_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number != 0.0 ? Verdict{} : Verdict{std::string(Zero_Speed)};
}

void Store_Speed(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    design.motion.Shaft_speed = value.number;
    Set_Omega_Powers(design);
    Wait_All(design);
}

void Store_Time_Base(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Set_Time_Base(design, static_cast<int>(value.number));
    Wait_All(design);
}

Verdict External_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number == 0.0 || value.number == -1.0 ? Verdict{}
                                                       : Verdict{Quoted(value.text) + " is neither 0 nor -1"};
}

void External_Follows(Design_State& design, const Field_Index&)
{
    if (design.motion.Ext_Force_On == 0)
        Drop_External_Force(design);
}

// ---- conditions and knots

void Row_Follows(Design_State& design, const Field_Index& at)
{
    Wait_for_Calculation(design, Segment_of(at));
}

Verdict Conditions_Rule(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    const Number_Read number = Read_Number(value.text, Decimal_Symbol::point);
    if (Trim(value.text).empty())
        return {};
    return No_of_Conditions_may_be(number.whole ? number.value : 0.0);
}

/// The count is a whole number, and so is its text.
void Store_Conditions(Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    Motion_Group& m = design.motion;
    const int i = Segment_of(at);
    m.No_Conditions(i) = To_Integer(Val(value.text, Decimal_Symbol::point));
    m.No_of_conditions(i) = Trim(value.text).empty() ? "" : std::to_string(int{m.No_Conditions(i)});
    Wait_for_Calculation(design, i);
}

/// A position at either end of a polynomial or spline is the row's own, as if it had been typed in the segment table.
void Position_Follows(Design_State& design, const Field_Index& at)
{
    const Motion_Group& m = design.motion;
    const int i = Segment_of(at);
    const int row = at.at[1];
    Row_Follows(design, at);
    if (!Asks_Conditions(design, i))
        return;
    const std::string& position = m.S_boundary_cond(i, row);
    if (row == 0 && position != m.Start_Value(i))
        Put_Start_Value(design, i, position);
    if (row == Last_Condition_Row && position != m.End_Value(i))
        Put_End_Value(design, i, position);
}

Verdict Order_Rule(const Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    return Order_may_be(design, Segment_of(at), value.number);
}

Verdict Knot_Rule(const Design_State& design, const Field_Index& at, const Typed_Value& value)
{
    return Knot_may_be(design, at.at[1], at.at[0], value.number);
}

/// A knot that was typed stays where it is.
void Knots_Follow(Design_State& design, const Field_Index& at)
{
    const int segment = at.at[1];
    design.motion.EvenKnots(segment) = false;
    design.motion.Splines_Calculated(segment) = false;
    Wait_for_Calculation(design, segment);
}

void Even_Follows(Design_State& design, const Field_Index& at)
{
    if (design.motion.EvenKnots(Segment_of(at)))
        Lay_Even_Knots(design, Segment_of(at));
    Wait_for_Calculation(design, Segment_of(at));
}

/// Another order has other knots: they stand evenly again.
void Order_Follows(Design_State& design, const Field_Index& at)
{
    Lay_Even_Knots(design, Segment_of(at));
    Wait_for_Calculation(design, Segment_of(at));
}

Verdict Limit_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, Quoted(value.text) + " is not above 0");
}

/// The same, of a field whose store writes into the rows.
Field_Rule With_Rows(Field_Rule rule)
{
    rule.rows = true;
    return rule;
}

Field_Rule Input(std::string_view field, std::string_view words, std::optional<Event> event,
                 decltype(Field_Rule::may_be) may_be = nullptr, decltype(Field_Rule::store) store = nullptr,
                 decltype(Field_Rule::follow) follow = nullptr)
{
    return {.field = field,
            .role = input,
            .words = words,
            .event = event,
            .may_be = may_be,
            .store = store,
            .follow = follow};
}

std::vector<Field_Rule> Make_Rules()
{
    std::vector<Field_Rule> rules{
        Input("No of segments", "Number of segments", Event::row_edited, Whole<1, Max_Segments>, nullptr,
              Count_Follows),
        With_Rows(Input("Deltatheta", "Delta Theta", Event::step_changed, Step_may_be, Store_Step)),
        Input("Shaft speed", "Shaft speed", Event::speed_changed, Speed_may_be, Store_Speed),
        Input("Time Base", "Time base", Event::time_base_changed, Whole<1, 3>, Store_Time_Base),
        Input("Rise_Fall_Dwell", "Motion of segment %1", Event::row_edited, Kind_may_be, Store_Kind),
        Input("Program", "Program of segment %1", Event::row_edited, Program_may_be, Store_Program),
        Input("Beta_Deg", "Beta of segment %1", Event::row_edited, Beta_Rule, nullptr, Beta_Follows),
        Input("Start Value", "Start of segment %1", Event::row_edited, nullptr, Store_Start_Value),
        Input("End Value", "End of segment %1", Event::row_edited, nullptr, Store_End_Value),
        Input("No of conditions", "Conditions of segment %1", Event::row_edited, Conditions_Rule, Store_Conditions),
        Input("EvenKnots", "Even knots of segment %1", Event::row_edited, nullptr, nullptr, Even_Follows),
        Input("Orders", "Spline order of segment %1", Event::row_edited, Order_Rule, nullptr, Order_Follows),
        Input("Knots", "Knot %1", Event::row_edited, Knot_Rule, nullptr, Knots_Follow),
        // A force function waits for its calculation; nothing that is calculated rests on its switches.
        With_Rows(Input("Ext_Force_On", "External force", Event::edited, External_may_be, nullptr, External_Follows)),
        Input("Motion", "Motion or force", Event::edited),
        {.field = "Seg", .role = setting, .words = "Segment at work", .event = {}, .may_be = Whole<1, Max_Segments>},
        {.field = "Jump_Limit", .role = setting, .words = "Limit of a jump", .event = {}, .may_be = Limit_may_be},
        {.field = "No_Harmonics",
         .role = setting,
         .words = "Number of harmonics",
         .event = {},
         .may_be = Whole<1, Max_Points / 2>},
        {.field = "Start_theta", .role = setting, .words = "Start_theta", .event = {}},
        {.field = "End_theta", .role = setting, .words = "End_theta", .event = {}},
    };
    rules.push_back(
        Input("S boundary cond", "Condition of segment %1", Event::row_edited, nullptr, nullptr, Position_Follows));
    for (const std::string_view field :
         {"T boundary cond", "V boundary cond", "A boundary cond", "J boundary cond", "Pbound"})
        rules.push_back(Input(field, "Condition of segment %1", Event::row_edited, nullptr, nullptr, Row_Follows));
    const auto derived_from = [&rules](std::string_view from, std::initializer_list<std::string_view> fields) {
        for (const std::string_view field : fields)
            rules.push_back({.field = field, .role = derived, .words = from, .event = {}});
    };
    derived_from("Deltatheta", {"Max Data Points used"});
    derived_from("Shaft speed", {"Shaft_Speed_Sq", "Shaft_Speed_Cu"});
    derived_from("Program", {"Seg_Program", "Function", "Full_Half", "Which_half"});
    derived_from("Beta_Deg", {"Beta_Rad", "Shift", "Gamma"});
    derived_from("Start Value and End Value", {"Base_Shift", "Total_Displacement", "Lift"});
    derived_from("No of conditions", {"No_Conditions", "Total No of BCs"});
    derived_from(
        "the conditions of its segment",
        {"Thetanorm", "Boundary", "Equation", "Coefficient", "Pow", "Theta_Normalized", "Eq", "BC", "Power", "Polydone",
         "Poly_OK", "Poly_Lift_Fix", "Splines_Calculated", "Number_of_Knots", "Interior_Knots", "Constraints"});
    derived_from("the calculation of its segment", {"Seg_Done", "Firstlast"});
    derived_from("the calculated motion",
                 {"Liftmax", "MaxLift", "Max_Pos_Disp", "Max_Neg_Disp", "Continuous", "Max_Jump"});
    derived_from("the Fourier transform", {"Fft_Points", "Fft_Half"});
    return rules;
}

}  // namespace

std::span<const Field_Rule> Motion_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

Verdict Beta_may_be(const Design_State& design, int segment, double beta)
{
    if (!(beta >= 0.0 && beta <= whole_turn))
        return {std::string(Beta_Range)};
    // The angles as Update_Segment_Angles adds them up, in 32 bits.
    const Motion_Group& m = design.motion;
    Single end = 0.0;
    for (int i = 1; i <= m.No_of_segments; ++i) {
        end = end + (i == segment ? Single(beta) : m.Beta_Deg(i));
        if (i >= segment && end > whole_turn)
            return {std::string(End_Angle_Range) +
                    (i == segment ? "" : "\nThis is the end of segment " + std::to_string(i) + ".")};
    }
    return {};
}

void Place_Start_Angle(Design_State& design, double angle)
{
    Cam_Group& c = design.cam;
    c.Shift_Points = To_Integer(angle / whole_turn * design.motion.Max_Data_Points_used);
    c.Shift_Angle = angle;
}

bool Dwells(const Design_State& design, int segment)
{
    return design.motion.Rise_Fall_Dwell(segment) == "D" || design.motion.Program(segment) == "DW";
}

void Level_Dwell(Design_State& design, int segment)
{
    Motion_Group& m = design.motion;
    if (m.End_Value(segment) == m.Start_Value(segment))
        return;
    m.End_Value(segment) = m.Start_Value(segment);
    if (segment >= m.No_of_segments)
        return;
    m.Start_Value(segment + 1) = m.End_Value(segment);
    Wait_for_Calculation(design, segment + 1);
    if (Dwells(design, segment + 1))
        Level_Dwell(design, segment + 1);
}

void Put_Start_Value(Design_State& design, int segment, const std::string& text)
{
    Motion_Group& m = design.motion;
    m.Start_Value(segment) = text;
    m.Base_Shift(m.Seg) = 0.0;
    Wait_for_Calculation(design, segment);
    if (Dwells(design, segment))
        Put_End_Value(design, segment, text);
}

void Put_End_Value(Design_State& design, int segment, const std::string& text)
{
    Motion_Group& m = design.motion;
    m.End_Value(segment) = text;
    if (Dwells(design, segment))
        m.Start_Value(segment) = text;
    m.Base_Shift(m.Seg) = 0.0;
    Wait_for_Calculation(design, segment);
    if (segment < m.No_of_segments)
        Put_Start_Value(design, segment + 1, text);
}

}  // namespace lobemax
