// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/input_form.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/points.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/door.h"
#include "forms/size_form.h"
#include "forms/workflow.h"
#include "motion/motion_programs.h"
#include "motion/motion_rules.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

constexpr std::string_view kinds = "RFPDS";
constexpr double whole_turn = 360.0;

int Segment_of(int row)
{
    return row + 1;
}

int Decimals_of_Step(const Design_State& design)
{
    const double step = design.motion.Deltatheta;
    return step == 1.0 ? 0 : step == 0.5 ? 1 : step == 0.25 ? 2 : 3;
}

/// After a change of speed: every row waits for its calculation again, and no result holds. The data go too, unless
/// they are an example's.
void Results_Gone(Design_State& design)
{
    Rearm_All_Rows(design);
    Apply(design, Event::speed_changed);
    if (!Holds(design, Mark::example_loaded))
        Clear_Motion_Data(design, design.motion.Max_Data_Points_used, design.run.Saved_Variables);
}

bool Any_End_Position(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (!m.End_Value(i).empty())
            return true;
    return false;
}

}  // namespace

Row_Openings Openings_of_Row(const Design_State& design, int row)
{
    const Motion_Group& m = design.motion;
    const int segment = Segment_of(row);
    const std::string& kind = m.Rise_Fall_Dwell(segment);
    Row_Openings open;
    if (kind.empty())
        return open;
    const bool moving = kind == "R" || kind == "F";
    const bool chosen = !m.Program(segment).empty();
    open.program = moving;
    open.low = chosen;
    open.high = chosen && kind != "D";
    open.show = m.Seg_Done(segment);
    open.calculate = !open.show && chosen && !(m.Start_Value(segment).empty() && m.End_Value(segment).empty());
    return open;
}

int Kind_Place(const Design_State& design, int row)
{
    const std::string& kind = design.motion.Rise_Fall_Dwell(Segment_of(row));
    const std::size_t place = kind.empty() ? std::string_view::npos : kinds.find(kind.front());
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

char Kind_at(int place)
{
    return kinds[Checked_Place(place, 0, static_cast<int>(kinds.size()) - 1)];
}

int Program_Place(const Design_State& design, int row)
{
    const Motion_Program* const program = Find_Program(design.motion.Program(Segment_of(row)));
    return program == nullptr ? -1 : program->position;
}

int Kind_Place_of(std::string_view letter)
{
    const std::size_t place = letter.size() == 1 ? kinds.find(To_Upper(letter)) : std::string_view::npos;
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

int Program_Place_of(std::string_view code)
{
    const Motion_Program* const program = Find_Program(code);
    return program == nullptr ? -1 : program->position;
}

void Pick_Row_Kind(Design_State& design, int row, int place)
{
    Motion_Group& m = design.motion;
    const int segment = Segment_of(row);
    const char kind = Kind_at(place);
    Put(design, "Rise_Fall_Dwell", At(segment), std::string(1, kind));
    if (kind == 'R' || kind == 'F') {
        Pick_Motion(design, segment, kind);  // picked in the list, it waits for its program
        Rearm_Row(design, row);
        Apply(design, Event::row_edited);
    }
    m.Seg = kind == 'S' ? segment : 1;
}

void Pick_Row_Program(Design_State& design, int row, int place)
{
    for (const Motion_Program& program : Motion_Programs())
        if (program.position == place)
            Put(design, "Program", At(Segment_of(row)), std::string(program.code));
}

void Rearm_Row(Design_State& design, int row)
{
    design.motion.Seg_Done(Segment_of(row)) = false;
}

void Rearm_All_Rows(Design_State& design)
{
    for (int row = 0; row < Max_Segments; ++row)
        Rearm_Row(design, row);
}

void Enter_Low(Design_State& design, int row, std::string_view text)
{
    Put(design, "Start Value", At(Segment_of(row)), std::string(text));
}

void Enter_High(Design_State& design, int row, std::string_view text)
{
    Put(design, "End Value", At(Segment_of(row)), std::string(text));
}

std::string Enter_Beta(Design_State& design, int row, std::string_view text)
{
    const Motion_Group& m = design.motion;
    const int segment = Segment_of(row);
    if (text.empty()) {
        Rearm_Row(design, row);
        Apply(design, Event::row_edited);
        return "";
    }
    const Verdict verdict = Put(design, "Beta_Deg", At(segment), Val(design, text));
    if (verdict)
        return std::string(text);
    Check_Range(design, 1.0, 0.0, 0.0, verdict.sentence);
    Rearm_Row(design, row);
    Apply(design, Event::row_edited);
    if (verdict.sentence == Beta_Range)
        return m.Beta_Deg(segment) == 0.0 ? "" : Shown(design, m.Beta_Deg(segment));
    Put(design, "Beta_Deg", At(segment), 0.0);  // its end would lie beyond the cycle
    return "";
}

bool Whole_Turn(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    if (m.No_of_segments != 1 || m.Beta_Deg(1) == 0.0 || m.Gamma(1) == whole_turn)
        return true;
    if (!design.flags.File_Loaded)
        Show_Message("Cam must contain exactly 360 degrees", Buttons::OK, Symbol::information);
    return false;
}

std::string Start_Label(const Design_State& design, int row)
{
    if (row == 0)
        return "0";  // the cycle's own start, in no format
    return End_Label(design, row - 1);
}

std::string End_Label(const Design_State& design, int row)
{
    const Motion_Group& m = design.motion;
    const int segment = Segment_of(row);
    if (m.Beta_Deg(segment) == 0.0 || (m.No_of_segments == 1 && m.Gamma(1) != whole_turn))
        return "";
    return Trim(FNRoundStr(design, m.Gamma(segment), Decimals_of_Step(design)));
}

std::string Enter_Segment_Count(Design_State& design, std::string_view text, bool clear_rows)
{
    const double typed = Val(design, text);
    Put(design, "No of segments", std::clamp(std::floor(typed), 1.0, double{Max_Segments}));
    if (clear_rows)
        Clear_Segs(design);
    Apply(design, Event::edited);
    return std::to_string(design.motion.No_of_segments);
}

std::optional<double> Listed_Step(const Design_State& design, std::string_view text)
{
    const std::array<std::string, 4> texts = Step_Texts(design);
    const auto found = std::find(texts.begin(), texts.end(), text);
    if (found != texts.end())
        return Steps.at(static_cast<std::size_t>(found - texts.begin()));
    Show_Message("Please select one of the drop-down menu items for Delta Theta", Buttons::OK, Symbol::information);
    return {};
}

std::string Enter_Step(Design_State& design, std::string_view text)
{
    const std::optional<double> listed = Listed_Step(design, text);
    const double step = listed.value_or(1.0);
    const bool filled = Any_End_Position(design);
    Put(design, "Deltatheta", step);
    if (filled)
        Rearm_All_Rows(design);
    return listed ? std::string(text) : Step_Texts(design)[0];
}

void Enter_Omega(Design_State& design, std::string_view text)
{
    if (const Verdict verdict = Put(design, "Shaft speed", Val(design, text) * PI / 30.0); !verdict) {
        Show_Refusal(verdict);
        Put(design, "Shaft speed", 1.0);
    }
    Results_Gone(design);
}

std::string Omega_Text(const Design_State& design)
{
    return Shown(design, FNRound(design.motion.Shaft_speed * 30.0 / PI, 4));
}

void Enter_Start_Angle(Design_State& design, std::string_view text)
{
    if (const Verdict verdict = Put(design, "Shift_Angle", Val(design, text)); !verdict)
        Show_Refusal(verdict);
}

namespace {

Form_Entry Enter_Segmts(Design_State& design, Input_Head& head, std::string_view typed)
{
    return {true, Enter_Segment_Count(design, typed, head.clear_rows)};
}

Form_Entry Enter_Speed(Design_State& design, std::string_view typed)
{
    Enter_Omega(design, typed);
    return {true, Omega_Text(design)};
}

Form_Entry Enter_Delta(Design_State& design, std::string_view typed)
{
    return {true, Enter_Step(design, typed)};
}

Form_Entry Enter_Shift(Design_State& design, std::string_view typed)
{
    Enter_Start_Angle(design, typed);
    return {true, Shown(design, design.cam.Shift_Angle)};
}

constexpr std::array fields{
    Form_Field<Input_Head>{
        {"txt_Segmts", "Number of se&gments", "1 to 20 segments"}, &Input_Head::txt_Segmts, Enter_Segmts},
    Form_Field<Input_Head>{{"cmb_Delta", "Delta &theta (deg)", "Step of the cam angle, degrees", Form_Unit::degrees},
                           &Input_Head::cmb_Delta,
                           Alone<Enter_Delta>},
    Form_Field<Input_Head>{
        {"txt_Omega", "Cam &Omega (rpm)", "Camshaft speed"}, &Input_Head::txt_Omega, Alone<Enter_Speed>},
    Form_Field<Input_Head>{{"txt_ShiftAng", "Starting angle (deg)", Start_Angle_Text, Form_Unit::degrees},
                           &Input_Head::txt_ShiftAng,
                           Alone<Enter_Shift>},
};

constexpr std::array controls{
    Form_Control{"frm_InputData", "Input: segments of the cam program"},
    Form_Control{"fra_Follower", "Follower"},
    Form_Control{"opt_Folmotion(0)", "Translating", "Position data must be in length units"},
    Form_Control{"opt_Folmotion(1)", "Oscillating", "Position data must be in degrees"},
    Form_Control{"fra_Function", "Function"},
    Form_Control{"opt_Function(0)", "Motion", "Calculate a cam follower motion"},
    Form_Control{"opt_Function(1)", "Force", "Calculate a force function on follower"},
    Form_Control{"fra_Options", "Options"},
    Form_Control{"chk_Extforce", "External Force", "A force on the follower beside spring and inertia"},
    Form_Control{"chk_ClearOnOpen", "Clear", "Changing the number of segments also clears the rows"},
    Form_Control{"cmb_Examples", "Examples", "A finished design to start from"},
};

}  // namespace

Input_Head Input_Head_of_Design(const Design_State& design)
{
    const auto step = std::ranges::find(Steps, double{design.motion.Deltatheta});
    Input_Head head;
    head.txt_Segmts = std::to_string(design.motion.No_of_segments);
    head.txt_Omega = Omega_Text(design);
    if (step != Steps.end())
        head.cmb_Delta = Step_Texts(design).at(static_cast<std::size_t>(step - Steps.begin()));
    head.txt_ShiftAng = Shown(design, design.cam.Shift_Angle);
    return head;
}

std::span<const Form_Field<Input_Head>> Fields_of_Input()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Input()
{
    return controls;
}

void Choose_Follower_Motion_on_Input(Design_State& design, bool translating)
{
    design.cam.Translating = translating;
    if (!design.flags.Example_Loaded && !design.flags.File_Loaded)
        Show_Message(translating ? "The position data for a translating follower arm\n"
                                   "must be in length units and must start or end at zero\n"
                                   "or go through zero at some point in the cycle.\n"
                                   "It is a relative displacement from the initial position \n"
                                   "of the follower in local coordinates.  The absolute\n"
                                   "position of the follower will be calculated later\n"
                                   "on the Size Cam screen where the prime radius is defined. \n"
                                   "Do not include the cam prime radius in position data here. "
                                 : "The position data for an oscillating follower arm\n"
                                   "must be in degrees and must start or end at zero\n"
                                   "or go through zero at some point in the cycle for a radial cam.\n"
                                   "If you intend to make a barrel or linear cam then you do not\n"
                                   "need to pass the displacement through zero degrees here.\n"
                                   "It is a relative displacement from the initial position \n"
                                   "of the follower arm in local coordinates.  The absolute\n"
                                   "angle of the arm start position will be calculated later\n"
                                   "on the Size Cam screen where the arm geometry is defined. \n"
                                   "Do not include the initial angle of the follower arm here. ",
                     Buttons::OK, Symbol::information);
    Set_Units(design);
    Rearm_All_Rows(design);
    Apply(design, Event::follower_motion_changed);
}

Table_Headings Headings(const Design_State& design)
{
    const bool motion = design.motion.Motion;
    const std::string unit =
        "(" + Unit_Text(design, design.identity.WhichUnit, Variable_at(motion ? var::S : var::Ext_Force).unit) + ")";
    if (motion)
        return {"Position", "Cam Contour", "Motion", "Program", unit};
    return {"Force", "Force Contour", "Force", "Shape", unit};
}

bool Tick_External_Force(Design_State& design, bool ticked)
{
    Motion_Group& m = design.motion;
    if (!ticked) {
        Drop_External_Force(design);
        return false;
    }
    const Answer answer = Show_Message(
        "Warning!\n"
        "If you have already calculated a cam program and you \n"
        "now calculate an external force function, it will \n"
        "zero all your cam motion data.  You need to first calculate \n"
        "the external force function and then calculate the cam.  \n"
        "The external force data will be preserved for later stress calculations\n"
        "provided that you leave the External Force box checked\n"
        "when you subsequently do the cam motion calculation.\n"
        "Unchecking the External Force box zeros the force data.",
        Buttons::OK_Cancel, Symbol::exclamation);
    if (answer != Answer::OK)
        return false;
    m.Ext_Force_On = -1;
    m.Motion = false;
    return true;
}

bool May_Calculate_All(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (m.Program(i).empty() || m.End_Value(i).empty() || m.Beta_Deg(i) == 0.0)
            return false;
    return true;
}

bool May_Be_Done(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (!m.Seg_Done(i))
            return false;
    return All_Rows_Filled(design);
}

void Force_Row_Calculated(Design_State& design)
{
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (!m.Seg_Done(i))
            design.motion.Motion = false;
}

void Example_Picked(Design_State& design)
{
    Reach(design, Mark::example_loaded);
}

void Clear_All_Rows(Design_State& design)
{
    Clear_Segs(design);
    Clear_Motion_Data(design, design.motion.Max_Data_Points_used, design.run.Saved_Variables);
    Apply(design, Event::table_cleared);
}

void Clear_All_Input(Design_State& design)
{
    Set_Shaft_Speed(design, PI / 30.0);  // 1 rpm
    design.motion.No_of_segments = 1;
    Set_Step(design, 1.0);
    design.cam.Shift_Angle = 0.0;
    design.cam.Shift_Points = 0;
    Clear_All_Rows(design);
}

void Open_Input(Design_State& design)
{
    if (design.flags.Units_Changed) {
        Apply(design, Event::units_changed_open);
        Rearm_All_Rows(design);
    }
    design.motion.Running_Min = 1000000.0;
    design.motion.Running_Max = -1000000.0;
}

void Units_Changed_in_Table(Design_State& design)
{
    Rearm_All_Rows(design);  // their points are in the old units
    Apply(design, Event::units_changed_in_table);
    Refresh_Screens();
}

}  // namespace lobemax
