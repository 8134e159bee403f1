// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segments.h"

#include <algorithm>
#include <array>

#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/points.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/motion_programs.h"
#include "motion/segment_store.h"

namespace lobemax {

namespace {

void Zero_Row(Design_State& design, int variable, int max_point)
{
    const auto row = design.results.CalcData.Points(variable);
    if (max_point < 0 || static_cast<std::size_t>(max_point) >= row.size())
        throw Fault{out_of_bounds};
    std::fill_n(row.begin(), max_point + 1, Single{});
}

/// The external force of points 0..max_point as the force function has it.
void Fill_Force_Row(Results_Group& r, int max_point)
{
    const std::size_t last = Checked_Place(max_point, 0, r.Ext_Force_Table.Last());
    std::ranges::copy(r.Ext_Force_Table.Points().first(last + 1), r.CalcData.Points(var::Ext_Force).begin());
}

/// Zeroes variables first..last, sparing the torque while runs accumulate, and keeping the external force.
void Zero_Rows(Design_State& design, int max_point, int first, int last)
{
    Results_Group& r = design.results;
    for (int v = first; v <= last; ++v) {
        if (v == var::Torque && !design.dynamics.Torque_Start_Fresh)
            continue;
        Zero_Row(design, v, max_point);
        if (v == var::Ext_Force)
            Fill_Force_Row(r, max_point);
    }
}

bool Force_Function_Stored(const Design_State& design)
{
    const auto table = design.results.Ext_Force_Table.Points();
    return std::any_of(table.begin(), table.end(), [](Single f) { return f != 0.0; });
}

void Zero_Vibration_Arrays(Design_State& design)
{
    Results_Group& r = design.results;
    r.Ode_Time.Fill({});
    for (int row = 0; row <= r.Ode_States.Last_Row(); ++row) {
        const auto states = r.Ode_States.Points(row);
        std::fill(states.begin(), states.end(), Single{});
    }
    design.dynamics.Ode_Count = 0;
}

/// Displacement of the segment and the position it is added to: a rise adds to its start, a mirrored fall
/// (which itself runs from L down to 0) to its end, a dwell's position is absolute.
void Place_Segment(Design_State& design, int segment, Single Low, Single High)
{
    Motion_Group& m = design.motion;
    const std::string& kind = m.Rise_Fall_Dwell(segment);
    m.Total_Displacement(segment) = kind == "D" ? double{High} : std::abs(High - Low);
    m.Lift = m.Total_Displacement(segment);
    const double start = kind == "R" ? Low : kind == "F" ? High : Single{};
    m.Base_Shift(segment) = start == 0.0 ? 0.0 : start;  // never a negative zero
}

/// Runs what the segment's kind asks for; false when it reported a fault or a refusal itself.
bool Run_Segment(Design_State& design, int segment)
{
    if (Asks_Conditions(design, segment))
        return Calc_Bounds_Segment(design, segment);
    design.motion.Poly_Lift_Fix = false;  // it belongs to the polynomial that set it
    return Run_Motion_Program(design, segment);
}

}  // namespace

void Update_Segment_Angles(Design_State& design)
{
    Motion_Group& m = design.motion;
    m.Shift(1) = 0.0;
    m.Gamma(1) = m.Beta_Deg(1);
    for (int i = 2; i <= m.No_of_segments; ++i) {
        m.Shift(i) = m.Beta_Deg(i - 1) + m.Shift(i - 1);
        m.Gamma(i) = m.Beta_Deg(i) + m.Shift(i);
    }
}

void Set_Shaft_Speed(Design_State& design, Single rad_per_s)
{
    Motion_Group& m = design.motion;
    m.Shaft_speed = rad_per_s;
    if (m.Shaft_speed == 0.0) {
        Show_Message(" Shaft Omega cannot be zero - Please check", Buttons::OK, Symbol::exclamation);
        m.Shaft_speed = 1.0;
    }
    Set_Omega_Powers(design);
}

void Read_Omega(Design_State& design, std::string_view txt_Omega)
{
    Set_Shaft_Speed(design, Val(design, txt_Omega) * PI / 30.0);
}

bool Check_Range(const Design_State& design, double value, double low, double high, const std::string& message)
{
    if (low <= value && value <= high)
        return true;
    if (!design.flags.Quiet_Checks)
        Show_Message(message, Buttons::OK, Symbol::exclamation);
    return false;
}

void Clear_Motion_Data(Design_State& design, int max_point, int max_variable)
{
    Single angle = 0.0;
    for (int i = 0; i <= max_point; ++i) {
        design.results.CalcData(var::Angle, i) = angle;
        angle += design.motion.Deltatheta;
    }
    Zero_Rows(design, max_point, 1, max_variable);
}

void Clear_Variables_From(Design_State& design, int max_point, int max_variable, int first)
{
    Zero_Rows(design, max_point, first, max_variable);
}

void Drop_External_Force(Design_State& design)
{
    design.results.Ext_Force_Table.Fill({});
    Zero_Row(design, var::Ext_Force, design.motion.Max_Data_Points_used);
    design.motion.Ext_Force_On = 0;
    design.motion.Motion = true;
    Apply(design, Event::external_force_dropped);
}

bool Set_Step(Design_State& design, double Deltatheta)
{
    if (std::ranges::find(Steps, Deltatheta) == Steps.end())
        return false;
    Motion_Group& m = design.motion;
    const int points = Points_of_Cycle(Deltatheta);
    if (!Dimension_Arrays(design, design.run.Saved_Variables, points))
        return false;
    Dimension_Link_Arrays(design, points);
    m.Deltatheta = Deltatheta;
    m.Max_Data_Points_used = points;
    m.Seg_Done.Fill(false);
    Apply(design, Event::step_changed);
    Clear_Motion_Data(design, points, design.run.Saved_Variables);
    return true;
}

void Reset_Status(Design_State& design)
{
    design.motion.Motion = true;
    Apply(design, Event::status_reset);
    Refresh_Screens();
}

bool Has_Beta(const Design_State& design, int segment)
{
    return design.motion.Beta_Deg(segment) != 0.0;
}

bool All_Rows_Filled(const Design_State& design)
{
    for (int i = 1; i <= design.motion.No_of_segments; ++i)
        if (design.motion.End_Value(i).empty())
            return false;
    return true;
}

namespace {

/// Without a duration a segment has no points: told by its number before a law divides by it.
bool Beta_Missing(const Design_State& design, int segment)
{
    if (Has_Beta(design, segment))
        return false;
    Show_Message("Segment " + std::to_string(segment) + " has no beta: please enter its duration in degrees.",
                 Buttons::OK, Symbol::exclamation);
    return true;
}

}  // namespace

bool Calc_Segment(Design_State& design, int row, std::optional<double> rpm)
{
    Motion_Group& m = design.motion;
    bool stored = false;
    const bool no_fault = Trap("cmd_CalcSeg_Click", [&] {
        Checked_Place(row, 0, Max_Segments - 1);
        m.Seg = row + 1;
        const int segment = m.Seg;
        m.Seg_Done(segment) = false;
        Update_Segment_Angles(design);
        m.Seg_Start_Angle = m.Shift(segment);
        m.Seg_End_Angle = m.Gamma(segment);
        Set_Shaft_Speed(design, rpm ? Single(*rpm * PI / 30.0) : m.Shaft_speed);
        const Single Low = Val(design, m.Start_Value(segment));
        const Single High = Val(design, m.End_Value(segment));
        m.Running_Min = std::min<double>(m.Running_Min, Low);
        m.Running_Max = std::max<double>(m.Running_Max, High);
        Place_Segment(design, segment, Low, High);
        stored = !Beta_Missing(design, segment) && Run_Segment(design, segment);
        m.Seg_Done(segment) = stored;
    });
    stored = stored && no_fault;
    // Whatever became of the segment, its points may have changed: no later result stands.
    Apply(design, Event::segment_calculated);
    Reset_Status(design);
    if (stored && All_Rows_Filled(design))
        Reach(design, Mark::motion);
    Refresh_Screens();
    return stored;
}

bool Calc_All(Design_State& design, bool motion, std::optional<double> rpm)
{
    return Calc_All(design, motion, [&](int row) { return Calc_Segment(design, row, rpm); });
}

bool Calc_All(Design_State& design, bool motion, const Row_Runner& run)
{
    bool all_stored = true;
    for (int row = 0; row < design.motion.No_of_segments; ++row) {
        design.motion.Motion = motion;
        all_stored = run(row) && all_stored;
    }
    Reset_Status(design);
    if (all_stored)
        Reach(design, Mark::motion);
    Refresh_Screens();
    return all_stored;
}

bool Motion_Done(Design_State& design, std::optional<double> rpm)
{
    return Trap("cmd_Done_Click", [&] {
        Motion_Group& m = design.motion;
        Set_Shaft_Speed(design, rpm ? Single(*rpm * PI / 30.0) : m.Shaft_speed);
        const bool example = Holds(design, Mark::example_loaded);
        Apply(design, Event::motion_done);
        if (example) {
            Reach(design, Mark::size);
            Reach(design, Mark::forces);
        } else if (m.Motion) {
            // Ping (17) stands among the results to clear, but this same calculation has just stored it.
            Zero_Rows(design, m.Max_Data_Points_used, 5, var::Ping - 1);
            Zero_Rows(design, m.Max_Data_Points_used, var::Ping + 1, design.run.Saved_Variables);
        }
        design.identity.Design_No += 1;
        Reach(design, Mark::motion);
        Zero_Vibration_Arrays(design);
        design.identity.Time = Now_Text();
        design.identity.Date = Today_Text();
        // The force function outlives the motion's own calculation, for dynamics and stresses.
        if (m.Ext_Force_On != 0 && Force_Function_Stored(design)) {
            Reach(design, Mark::external_force);
            Fill_Force_Row(design.results, m.Max_Data_Points_used);
        }
        design.linkage.Drive_End_Effector = false;
        MaxMin1(design.results.CalcData.Points(var::S), 0, Point_at(design, 360.0), m.Max_Pos_Disp, m.Max_Neg_Disp);
        m.MaxLift = m.Max_Pos_Disp - m.Max_Neg_Disp;
        Refresh_Screens();
    });
}

}  // namespace lobemax
