// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/model_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "camgeom/arm.h"
#include "camgeom/cam_rules.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/linkage_setup.h"
#include "core/messages.h"
#include "core/number_format.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/record_archive.h"
#include "files/whole_file.h"

namespace lobemax {

namespace {

constexpr int fillers_of_9 = 143;
constexpr int fillers_of_72 = 21;
constexpr int fillers_of_71 = 42;
constexpr int tail_lines = 50;
constexpr std::size_t identifying_characters = 6;

/// The counts that head a file: a writer tells its own, a reader keeps those of the file.
struct Model_Counts {
    Integer segments;       // N, 1..20
    Integer variables;      // Max Variables
    Integer segment_limit;  // Max Segments possible
    Integer bound_limit;    // Max Bounds possible
    Integer points;         // Max Data Points used
};

/// What distinguishes the written formats.
struct Format {
    bool link_masses_labelled;  // from tag 9 and release 5 on
    bool linkage;               // from tag 8 on: linkage, later fields, tail
};

Format Format_Of(double tag, double release)
{
    return {tag >= 9.0 && release >= 5.0, tag >= 8.0};
}

int Conditions_of(const Design_State& design, int segment)
{
    return To_Integer(Val(design.motion.No_of_conditions(segment), Decimal_Symbol::point));
}

/// The lumped fields follow the two-mass model where a vibration run stands behind it.
void Lump_Two_Masses(Design_State& design)
{
    Dynamics_Group& d = design.dynamics;
    switch (d.Model_Type) {
    case 1:
        d.Return_Spring_Rate = 0.0;
        d.Follower_Stiffness = d.Kspring(1);
        d.Zeta_Initial = d.Zeta(2);
        break;
    case 2:
    case 5:
        d.Return_Spring_Rate = d.Kspring(2);
        d.Follower_Stiffness = d.Kspring(1);
        d.Zeta_Initial = d.Zeta(2);
        break;
    case 3:
    case 4:
        d.Return_Spring_Rate = d.Kspring(1);
        d.Follower_Stiffness = d.Kspring(2);
        d.Zeta_Initial = d.Zeta(1);
        break;
    default:
        return;
    }
    d.Mass = d.Mass_m(1);
}

// ---- the record order, written once: visited by the writer and by the reader

template <class Archive>
void Fields(Archive& ar, std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names)
        ar.Record(name);
}

template <class Archive>
void Fields_at(Archive& ar, std::initializer_list<std::string_view> names, const Field_Index& index)
{
    for (const std::string_view name : names)
        ar.Record(name, index);
}

/// A speed whose powers are no Singles is a fault, and does not stay: a design with it could not be read again.
void Read_Shaft_Speed(Design_State& design, Record_Reader& ar)
{
    Single& speed = design.motion.Shaft_speed;
    const Single before = speed;
    ar.Record("Shaft speed");
    try {
        Set_Omega_Powers(design);
    } catch (const Fault&) {
        speed = before;
        Set_Omega_Powers(design);
        throw;
    }
}

template <class Archive>
void Counts_Block(Design_State& design, Archive& ar, Model_Counts& n)
{
    Fields(ar, {"User", "Design No.", "Date", "Time"});
    if constexpr (Archive::reading)
        Read_Shaft_Speed(design, ar);
    else
        ar.Record("Shaft speed");
    ar.Count("No of segments", n.segments);
    if constexpr (Archive::reading) {
        if (n.segments < 1 || n.segments > Max_Segments)
            throw Fault{out_of_bounds};
        design.motion.No_of_segments = n.segments;
    }
    ar.Record("Deltatheta");
    ar.Count("Max Variables", n.variables);
    ar.Count("Max Segments possible", n.segment_limit);
    ar.Count("Max Bounds possible", n.bound_limit);
    ar.Count("Max Data Points used", n.points);
}

template <class Archive>
void Segment_Block(Archive& ar, const Model_Counts& n)
{
    for (int i = 1; i <= n.segments; ++i) {
        Fields_at(ar,
                  {"Base_Shift", "Rise_Fall_Dwell", "Program", "Function", "Total_Displacement", "Shift", "Gamma",
                   "Beta_Deg", "Beta_Rad", "Start Value", "End Value"},
                  At(i));
        for (int j = 1; j <= n.bound_limit; ++j)
            Fields_at(ar, {"Thetanorm", "Boundary", "Equation", "Coefficient", "Pow"}, At(j, i));
        for (int a = 0; a <= 2; ++a)
            for (int b = 0; b <= 3; ++b)
                ar.Record("Firstlast", At(i, a, b));
        ar.Record("Total No of BCs", At(i));
        for (int j = 1; j <= n.bound_limit; ++j)
            Fields_at(ar, {"Theta_Normalized", "Eq", "BC", "Power"}, At(j, i));
    }
}

/// A kind of cam that the program knows, or a fault: every other would be calculated as now one, now another.
void Read_Cam_Type(Design_State& design, Record_Reader& ar)
{
    const std::string before = design.cam.Camtype;
    ar.Record("Camtype$");
    const std::optional<std::string> known = Listed_Word(Cam_Types, design.cam.Camtype);
    design.cam.Camtype = known.value_or(before);
    if (!known)
        throw Fault{type_mismatch};
}

/// Cam and dynamics, up to the unit system; "Cutter Radius" follows where the format has it.
template <class Archive>
void Cam_Block(Design_State& design, Archive& ar)
{
    Fields(ar, {"Prime_Rad", "Offset", "Followtype", "Follow_Rad", "Rotflag", "ArmDirect", "Translating"});
    if constexpr (Archive::reading)
        Read_Cam_Type(design, ar);
    else
        ar.Record("Camtype$");
    Fields(ar, {"ArmX", "ArmY", "ArmRad", "Lift", "Liftmax", "Calculated", "Sized", "Dynamicflag", "Printstep", "Mass",
                "Return_Spring_Rate", "Preload", "Zeta_Initial", "Damping", "Bearing Radius", "Mu of Shaft",
                "Mu of Follower", "Coeff of Fluctuation"});
    if constexpr (Archive::reading) {
        Integer code;
        ar.Count("WhichUnit", code);
        Words_of_Units(code);  // a system that the program knows, or a fault
        design.identity.WhichUnit = code;
    } else {
        ar.Record("WhichUnit");
    }
}

/// The count of conditions by the text that was read, on which the length of later lists rests. One that no table holds
/// is a fault, and does not stay: a design with it could not be written.
void Take_Conditions_Count(Design_State& design, int segment)
{
    std::string text = std::exchange(design.motion.No_of_conditions(segment), {});
    const double count = Val(text, Decimal_Symbol::point);
    if (count < 0.0 || count > Max_Bounds)
        throw Fault{out_of_bounds};
    design.motion.No_Conditions(segment) = To_Integer(count);
    design.motion.No_of_conditions(segment) = std::move(text);
}

/// Boundary conditions of the twenty segments, whatever the number in use.
template <class Archive>
void Condition_Lists(Design_State& design, Archive& ar, int segments, int last_angle, int last_condition)
{
    for (int i = 1; i <= segments; ++i) {
        ar.Record("Polydone", At(i));
        ar.Record("No of conditions", At(i));
        if constexpr (Archive::reading)
            Take_Conditions_Count(design, i);
        for (int k = 1; k <= last_angle; ++k)
            ar.Record("T boundary cond", At(i, k));
        for (int k = 0; k <= last_condition; ++k)
            Fields_at(ar, {"S boundary cond", "V boundary cond", "A boundary cond", "J boundary cond"}, At(i, k));
    }
}

template <class Archive>
void Seg_Program_List(Archive& ar, int segments)
{
    for (int i = 1; i <= segments; ++i)
        ar.Record("Seg_Program", At(i));
}

template <class Archive>
void Spline_Block(const Design_State& design, Archive& ar, const Model_Counts& n)
{
    Fields(ar, {"Start_theta", "End_theta"});
    for (int i = 1; i <= n.segments; ++i) {
        Fields_at(ar, {"Splines_Calculated", "EvenKnots", "Orders", "Number_of_Knots", "Interior_Knots"}, At(i));
        // More knots than the table has were told of, and are not laid; the count and the order stand.
        const int knots = std::min(Conditions_of(design, i) + design.motion.Orders(i), Max_Knots);
        for (int j = 1; j <= knots; ++j)
            ar.Record("Knots", At(j, i));
        for (int k = 0; k <= 9; ++k)
            ar.Record("Pbound", At(i, k));
    }
}

/// Spline constraints, as many as the segment one past the last has conditions: the count is taken there by
/// every release, so it is part of the format. With twenty segments there is no such entry, and the visit
/// ends here with an index out of bounds.
template <class Archive, class After_Value>
void Constraint_Block(const Design_State& design, Archive& ar, const Model_Counts& n, const After_Value& after_value)
{
    const int constraints = Conditions_of(design, n.segments + 1);
    for (int j = 1; j <= constraints; ++j)
        for (int k = 1; k <= 3; ++k) {
            ar.Record("Constraints", At(j, k));
            after_value(j, k);
        }
}

template <class Archive>
void Two_Mass_Block(Archive& ar)
{
    for (int i = 1; i <= 2; ++i)
        Fields_at(ar, {"Mass_m", "Kspring", "Zeta"}, At(i));
    ar.Record("Model_Type");
}

/// From the polydyne flag to the range of S.
template <class Archive>
void Settings_Block(Archive& ar, const Model_Counts& n)
{
    Fields(ar, {"Polydyne_Calc", "Versus_Keyway"});
    for (int i = 1; i <= n.segments; ++i)
        Fields_at(ar, {"Full_Half", "Which_half"}, At(i));
    Fields(ar, {"Keyway_Clockangle", "Follower_Angle", "Shift_Angle"});
    for (const std::string_view material : {"Young's modulus", "Poissons' ratio"})
        for (int i = 1; i <= 2; ++i)
            ar.Record(material, At(i));
    Fields(ar, {"Roller type", "Crown radius", "Roller length", "Motion", "Ext_Force_On", "Ext_Force_Calc",
                "Follower_Weight", "In_Out", "Top_Bot", "MaxLift"});
}

template <class Archive>
void Compensation_Block(Design_State& design, Archive& ar)
{
    ar.Record("Modelflag");
    if constexpr (Archive::reading)
        if (design.flags.Modelflag)
            Lump_Two_Masses(design);
    Fields(ar, {"Comp_Mass", "Comp_Spring_Rate", "Comp_Preload", "CompCam_Calc", "Closure$"});
}

template <class Archive>
void Linkage_Block(Design_State& design, Archive& ar, const Format& format)
{
    Fields(ar, {"Links", "Theta1", "Link 1", "Link 2", "Link 3", "Link 4", "Link 4a", "Delta4", "Link 5", "Link 6",
                "S3x", "S3y", "Delta2"});
    if constexpr (Archive::reading)
        Set_Up_Linkage(design, design.linkage.Links);
    Fields(ar, {"O4x", "O4y", "O6x", "O6y", "Assemflag1", "Assemflag2"});
    const Record_Shape shape = format.link_masses_labelled ? Record_Shape::labelled : Record_Shape::bare;
    for (int n = 2; n <= Max_Links; ++n)
        for (const std::string_view name : {"Mass of link", "Inertia of link", "CGx of link", "CGy of link"})
            ar.Record(name, At(n), shape);
}

template <class Archive>
void Later_Fields(Design_State& design, Archive& ar)
{
    Fields(ar, {"Drive_End_Effector", "Global_Slider_angle_deg", "Offset6", "Max_Neg_Disp", "Zoom Factor", "Stressflag",
                "Linkage_Type"});
    if constexpr (Archive::reading) {
        if (design.cam.Zoom_Factor == 0.0)
            design.cam.Zoom_Factor = 1.0;
        Set_Up_Linkage(design, design.linkage.Links);  // the kind of linkage is known only now
        Integer dropped;                               // the table's rows follow from "Max Variables"
        ar.Count("Saved Variables", dropped);
    } else {
        ar.Record("Saved Variables");
    }
    ar.Record("Time Base");
}

template <class Archive>
void Fillers(Archive& ar, int count)
{
    for (int i = 0; i < count; ++i)
        ar.Text_Pair("Null", "Null");
}

/// Every labelled item of formats 9, 8 and 7.2 from "User" to the last one. after_counts: called when the
/// counts are known, where a reader makes room.
template <class Archive, class After_Counts>
void Labelled_Items(Design_State& design, Archive& ar, Model_Counts& n, const Format& format,
                    const After_Counts& after_counts)
{
    Counts_Block(design, ar, n);
    after_counts();
    Segment_Block(ar, n);
    Cam_Block(design, ar);
    ar.Record("Cutter Radius");
    Condition_Lists(design, ar, n.segment_limit, 8, 9);
    Seg_Program_List(ar, n.segment_limit);
    Spline_Block(design, ar, n);
    Constraint_Block(design, ar, n, [](int, int) {});
    Two_Mass_Block(ar);
    Settings_Block(ar, n);
    Compensation_Block(design, ar);
    if (format.linkage) {
        Linkage_Block(design, ar, format);
        Later_Fields(design, ar);
    }
    Fillers(ar, format.linkage ? fillers_of_9 : fillers_of_72);
    ar.Text_Pair("Last Labeled Item", "Calculated data follow");
}

// ---- reading

/// Keeps the counts that head a file, and the last row of its table.
void Keep_Counts(Design_State& design, const Model_Counts& n, int saved_variables)
{
    if (saved_variables < 0)
        throw Fault{out_of_bounds};
    Run_Group& run = design.run;
    run.File_Max_Variables = n.variables;
    run.File_Max_Segments = n.segment_limit;
    run.File_Max_Bounds = n.bound_limit;
    run.File_Saved_Variables = saved_variables;
}

/// Makes room for a file's table. A count larger than any design of this program is believed only when the
/// file is long enough to hold that table.
void Make_Room(Design_State& design, const Record_Reader& ar, int saved_variables, int points)
{
    if (saved_variables > design.run.Saved_Variables && points >= 0 &&
        !ar.May_Hold(static_cast<std::size_t>(saved_variables + 1) * static_cast<std::size_t>(points + 1)))
        throw Fault{past_end_of_file};
    Allocate_Arrays(design, saved_variables, points);
    Dimension_Link_Arrays(design, points);
    design.motion.Max_Data_Points_used = points;
}

void Read_Rows(Design_State& design, Record_Reader& ar, int first, int last)
{
    Table<Single>& data = design.results.CalcData;
    for (int v = first; v <= last; ++v)
        for (Single& value : data.Points(v))
            ar.Bare(value);
}

/// The external force function stands in row 44; a table too short to have that row has none to copy.
void Copy_External_Force(Design_State& design)
{
    Results_Group& r = design.results;
    if (design.run.File_Saved_Variables < var::Ext_Force)
        return;
    for (int p = 0; p <= design.motion.Max_Data_Points_used; ++p)
        r.Ext_Force_Table(p) = r.CalcData(var::Ext_Force, p);
}

void Read_Calc_Data(Design_State& design, Record_Reader& ar)
{
    Read_Rows(design, ar, 0, design.run.File_Saved_Variables);
    Copy_External_Force(design);
}

/// Behind the table stand empty texts or nothing. Further numbers there mean that the counts do not fit the
/// table; where texts have to follow, a last value without a line end means that the file was cut inside it.
void Check_Tail(Record_Reader& ar, bool texts_follow)
{
    const bool cut = ar.Last_Record_Cut();
    if (ar.At_End()) {
        if (cut && texts_follow)
            throw Fault{past_end_of_file};
        return;
    }
    if (ar.Peek(1) != "\"")
        throw Fault{type_mismatch};
}

/// The keyway's clock position is not in the file: it follows from its angle and the direction of rotation.
void Rebuild_Keyway_Text(Design_State& design)
{
    const int quarter = (((design.cam.Keyway_Clockangle * design.cam.Rotflag) % 360) + 360) % 360;
    switch (quarter) {
    case 0:
        design.cam.Keyway_Text = "12 O'clock";
        break;
    case 90:
        design.cam.Keyway_Text = "3 O'clock";
        break;
    case 180:
        design.cam.Keyway_Text = "6 O'clock";
        break;
    case 270:
        design.cam.Keyway_Text = "9 O'clock";
        break;
    default:
        design.cam.Keyway_Text = "";
        break;
    }
}

constexpr double whole_turn = 360.0;

/// The entries refuse a start angle whose count of points needs more than 16 bits. A file may hold one: the same place
/// within one turn takes its place, and the user is told.
void Settle_Start_Angle(Design_State& design)
{
    Cam_Group& c = design.cam;
    const auto points = [&](double angle) { return angle / whole_turn * design.motion.Max_Data_Points_used; };
    const double count = std::rint(points(c.Shift_Angle));
    if (count < std::numeric_limits<std::int16_t>::min() || count > std::numeric_limits<std::int16_t>::max()) {
        const Single reduced = std::fmod(double{c.Shift_Angle}, whole_turn);
        Show_Message("The starting angle of this file, " + Shortest(c.Shift_Angle) +
                         " degrees, is beyond any count of turns.  It is taken as " + Shortest(reduced) + " degrees.",
                     Buttons::OK, Symbol::exclamation);
        c.Shift_Angle = reduced;
    }
    c.Shift_Points = To_Integer(points(c.Shift_Angle));
}

/// The step is the cycle's share of each point: a file that tells another is read by its points, and the user is told.
void Settle_Step(Design_State& design)
{
    Motion_Group& m = design.motion;
    if (m.Max_Data_Points_used < 1)
        return;
    const double step = whole_turn / m.Max_Data_Points_used;
    if (std::abs(m.Deltatheta - step) <= step * 1e-4)  // as wide as a step that was typed in a few digits
        return;
    Show_Message("The Delta Theta of this file, " + Shortest(m.Deltatheta) + " degrees, does not fit its " +
                     std::to_string(int{m.Max_Data_Points_used}) + " points.  It is taken as " +
                     Shortest(Single(step)) + " degrees.",
                 Buttons::OK, Symbol::exclamation);
    m.Deltatheta = step;
}

/// What the loaded fields bring with them: units, labels, arm, keyway, shift, extremes.
void Refresh_Derived(Design_State& design)
{
    Cam_Group& c = design.cam;
    Set_Units(design);
    c.Arm_Pivot_Dist = Arm_Pivot_Distance(design);
    Rebuild_Keyway_Text(design);
    Settle_Step(design);
    Settle_Start_Angle(design);
    Phi_Extremes(design);
    Rho_Extremes(design);
}

void Skip(Design_State& design)
{
    Trap("Skip in mod_Disksubs", [&] {
        Reach(design, Mark::from_disk);
        design.run.Reading_File = false;
        Refresh_Derived(design);
        Refresh_Screens();
    });
}

void ReadFile_8(Design_State& design, Record_Reader& ar)
{
    Run_Group& run = design.run;
    const bool whole = Trap("ReadFile_8", [&] {
        Reach(design, Mark::from_disk);
        Model_Counts n;
        Labelled_Items(design, ar, n, Format_Of(run.File_Version, run.File_Release), [&] {
            Keep_Counts(design, n, n.variables - 6);
            Make_Room(design, ar, run.File_Saved_Variables, n.points);
        });
        run.Read_Complete = true;
        Read_Calc_Data(design, ar);
        Check_Tail(ar, true);
        Skip(design);
    });
    if (!whole)
        run.Read_Partial = true;
}

void ReadFile_72(Design_State& design, Record_Reader& ar)
{
    Run_Group& run = design.run;
    const bool whole = Trap("ReadFile_72", [&] {
        Reach(design, Mark::from_disk);
        Model_Counts n;
        Labelled_Items(design, ar, n, Format_Of(run.File_Version, run.File_Release), [&] {
            Keep_Counts(design, n, n.variables - 6);
            Make_Room(design, ar, run.Saved_Variables, n.points);
        });
        run.Read_Complete = true;
        if (run.Has_Calc_Data) {
            Read_Calc_Data(design, ar);
            Check_Tail(ar, false);
            Skip(design);
            return;
        }
        Skip(design);
        Apply(design, Event::load_without_table);
        Refresh_Screens();
    });
    if (!whole)
        run.Read_Partial = true;
}

enum class Condition_Form { none, three_angles, eight_angles };

/// How the bare files of formats 7.1, 7.0 and 6 differ from one another, by tag and release.
struct Old_Layout {
    int less_variables;  // the table's last row is Max Variables less this
    int first_row;       // 0, or 1 where the angles are not stored
    bool copies_force;   // row 44 goes to the external force table
    Condition_Form conditions;
    bool seg_programs;
    bool to_model_type;     // the items from Start_theta to Model_Type
    bool after_model_type;  // those from Polydyne_Calc to MaxLift, and fillers
};

Condition_Form Conditions_In(double tag, double release)
{
    if (tag >= 7.0)
        return Condition_Form::eight_angles;
    return release >= Single(2.3) ? Condition_Form::three_angles : Condition_Form::none;
}

Old_Layout Layout_71(double tag, double release)
{
    const bool tag_6 = tag < 7.0;
    const bool tag_70 = !tag_6 && tag < Single(7.1);
    Old_Layout layout{};
    if (tag_70)
        layout.less_variables = release <= Single(1.3) ? 0 : release >= Single(1.7) ? 6 : 2;
    else
        layout.less_variables = tag_6 ? 0 : 6;
    layout.first_row = tag_6 || (tag_70 && release <= Single(1.2)) ? 1 : 0;
    layout.copies_force = layout.first_row == 0;
    layout.conditions = Conditions_In(tag, release);
    layout.seg_programs = !(tag_6 && release < Single(2.5));
    layout.to_model_type = layout.after_model_type = !tag_6;
    return layout;
}

Old_Layout Layout_Old(double tag, double release)
{
    const bool tag_6 = tag < 7.0;
    Old_Layout layout{};
    layout.less_variables = 0;
    layout.first_row = tag_6 && release <= Single(1.3) ? 1 : 0;
    layout.copies_force = false;
    layout.conditions = Conditions_In(tag, release);
    layout.seg_programs = !(tag_6 && release < Single(2.5));
    layout.to_model_type = !tag_6;
    layout.after_model_type = false;
    return layout;
}

/// Header counts, segments and the calculated rows behind them.
void Read_Old_Start(Design_State& design, Record_Reader& ar, const Old_Layout& layout, Model_Counts& n)
{
    Counts_Block(design, ar, n);
    Keep_Counts(design, n, n.variables - layout.less_variables);
    Make_Room(design, ar, design.run.File_Saved_Variables, n.points);
    Segment_Block(ar, n);
    Read_Rows(design, ar, layout.first_row, design.run.File_Saved_Variables);
    if (layout.first_row == 1) {  // the angles were not stored
        Single angle = 0.0;
        for (Single& point : design.results.CalcData.Points(var::Angle)) {
            point = angle;
            angle += design.motion.Deltatheta;
        }
    }
    if (layout.copies_force)
        Copy_External_Force(design);
    Cam_Block(design, ar);
}

/// From the condition lists to the end of what the layout holds.
void Read_Old_Lists(Design_State& design, Record_Reader& ar, const Old_Layout& layout, const Model_Counts& n)
{
    if (layout.conditions == Condition_Form::three_angles)
        Condition_Lists(design, ar, n.segment_limit, 3, 4);
    else if (layout.conditions == Condition_Form::eight_angles)
        Condition_Lists(design, ar, n.segment_limit, 8, 9);
    if (layout.seg_programs)
        Seg_Program_List(ar, n.segment_limit);
    if (!layout.to_model_type)
        return;
    Spline_Block(design, ar, n);
    Constraint_Block(design, ar, n, [&](int j, int k) {
        for (int p = 0; p <= design.motion.Max_Data_Points_used; ++p) {
            Single value;
            ar.Bare(value);
            design.results.Constraint_Curve.Store(k, j, p, value);
        }
    });
    Two_Mass_Block(ar);
    Lump_Two_Masses(design);
    if (!layout.after_model_type)
        return;
    Settings_Block(ar, n);
    for (int i = 0; i < fillers_of_71; ++i)
        ar.Drop_Text();
}

void ReadFile71(Design_State& design, Record_Reader& ar)
{
    Run_Group& run = design.run;
    const bool whole = Trap("ReadFile71", [&] {
        Reach(design, Mark::from_disk);
        const Old_Layout layout = Layout_71(run.File_Version, run.File_Release);
        Model_Counts n;
        Read_Old_Start(design, ar, layout, n);
        ar.Record("Cutter Radius");
        Read_Old_Lists(design, ar, layout, n);
        Skip(design);
    });
    if (!whole)
        run.Read_Partial = true;
}

/// The end of Read_Old_file, reached also after an error: what was read is put in order.
void Old_File_Tail(Design_State& design)
{
    Reach(design, Mark::from_disk);
    design.run.Reading_File = false;
    Trap("Read_Old_file", [&] { Refresh_Derived(design); });
    Refresh_Screens();
}

void Read_Old_file(Design_State& design, Record_Reader& ar)
{
    Run_Group& run = design.run;
    bool too_old = false;
    bool nothing_follows = false;
    const bool whole = Trap("Read_Old_file", [&] {
        nothing_follows = ar.At_End();
        if (nothing_follows)
            return;
        Reach(design, Mark::from_disk);
        const double tag = run.File_Version;
        const double release = run.File_Release;
        const Old_Layout layout = Layout_Old(tag, release);
        Model_Counts n;
        Read_Old_Start(design, ar, layout, n);
        if (tag < 7.0 && release < Single(2.2)) {
            too_old = true;
            return;
        }
        ar.Drop_Text();  // the cutter radius, kept as a text that no later release takes
        if (tag < 7.0 && release < Single(2.3))
            return;
        Read_Old_Lists(design, ar, layout, n);
    });
    if (too_old) {
        Show_Message("This file is too old to read", Buttons::OK, Symbol::stop);
        run.Read_Partial = true;
        run.Reading_File = false;
        return;
    }
    if (!whole)
        run.Read_Partial = true;
    if (!nothing_follows)
        Old_File_Tail(design);
}

void Refuse(Design_State& design, const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
    design.run.Read_Abort = true;
}

/// The header: identity, tag, release and stored path. false: the read ends here.
bool Read_Header(Design_State& design, Record_Reader& ar)
{
    Run_Group& run = design.run;
    const std::string_view start = ar.Peek(identifying_characters + 1);
    if (start.empty())
        throw Fault{past_end_of_file};
    const std::string_view program = design.identity.Program_Name;
    const std::string_view first = start.substr(start.front() == '"' ? 1 : 0, identifying_characters);
    if (first != program.substr(0, identifying_characters)) {
        Refuse(design, "This data file is not compatible with " + std::string(program) + ". ");
        return false;
    }
    ar.Line();
    const std::string tag = ar.Line();
    const std::string release = ar.Line();
    run.File_Release = Val(std::string_view(release).substr(0, 3), Decimal_Symbol::point);
    const double version = Val(tag, Decimal_Symbol::point);
    if (version == 6.0 && run.File_Release < Single(1.3)) {
        design.identity.File_Name = release;
        run.File_Release_Str = Shortest(run.File_Release);
    } else {
        run.File_Release_Str = release;
        ar.Line();
        design.identity.File_Name = ar.Line();
    }
    design.identity.Model_Name = StripFilename(design.identity.File_Name);
    run.File_Version = version;

    if (Val(design.identity.Version_Str, Decimal_Symbol::point) < run.File_Version) {
        const Answer answer =
            Show_Message("This file was saved from LOBEMAX version " + tag + "\nYou are now running LOBEMAX version " +
                             design.identity.Version_Str +
                             "\n\nThe file may input incorrectly or incompletely. \n"
                             "Please check all input data if you proceed.\n\nClick OK to proceed or Cancel to abort. ",
                         Buttons::OK_Cancel, Symbol::exclamation);
        if (answer == Answer::Cancel) {
            run.Read_Abort = true;
            return false;
        }
    }
    return true;
}

/// Choices that hold what is none of them, as a sense of rotation of 0: the usual one is taken and told, and what was
/// calculated with the other falls. One that this cam does not ask for stays as the file has it.
void Mend_Choices(Design_State& design)
{
    const Cam_Group& c = design.cam;
    struct Choice {
        const char* field;
        int held;
        int usual;
        bool counts;
    };
    std::string told;
    for (const Choice& choice : {Choice{"Followtype", c.Followtype, 1, true}, Choice{"Rotflag", c.Rotflag, -1, true},
                                 Choice{"ArmDirect", c.ArmDirect, 1, !c.Translating}})
        if (choice.counts && !Query(design, choice.field, choice.held)) {
            Put(design, choice.field, choice.usual);
            told += std::string(choice.field) + " is " + std::to_string(choice.held) +
                    " in this file: " + std::to_string(choice.usual) + " is taken.\n";
        }
    if (!told.empty())
        Show_Message(told + "Please check the cam and size it again.", Buttons::OK, Symbol::exclamation);
}

using Reader = void (*)(Design_State&, Record_Reader&);

/// The reader of a version, or none for a version that never was.
Reader Choose_Reader(Design_State& design)
{
    Run_Group& run = design.run;
    const double version = run.File_Version;
    if (version == 6.0)
        return Read_Old_file;
    if (version == 7.0)
        return run.File_Release <= Single(1.3) ? Read_Old_file : ReadFile71;
    if (version == Single(7.1))
        return ReadFile71;
    if (version == Single(7.2)) {
        run.Has_Calc_Data = run.File_Release >= 2.0;
        return ReadFile_72;
    }
    if (version == 7.5) {
        run.Has_Calc_Data = true;
        return ReadFile_72;
    }
    return version >= 8.0 ? ReadFile_8 : nullptr;
}

}  // namespace

bool ReadFile(Design_State& design, Byte_Source& source)
{
    Run_Group& run = design.run;
    run.Read_Abort = run.Read_Partial = run.Read_Complete = run.Has_Calc_Data = false;
    Show_Wait_Pointer();
    Record_Reader ar(design, source);
    bool go_on = false;
    if (!Trap("ReadFile", [&] { go_on = Read_Header(design, ar); }))
        run.Read_Abort = true;
    if (go_on) {
        run.Reading_File = true;
        const Reader reader = Choose_Reader(design);
        if (reader == nullptr) {
            Refuse(design, "This data file is corrupted and cannot be read.");
        } else {
            ar.Use_Shape(reader == ReadFile_8 || reader == ReadFile_72 ? Record_Shape::labelled : Record_Shape::bare);
            reader(design, ar);
        }
        run.Reading_File = false;
        if (run.Read_Partial)  // labels and decimals follow whatever was read
            Trap("ReadFile", [&] { Refresh_Derived(design); });
    }
    if (!run.Read_Abort) {
        Trap("ReadFile", [&] { Mend_Choices(design); });
        Adopt_Texts(design);
    }
    Restore_Pointer();
    const bool whole = !run.Read_Abort && !run.Read_Partial;
    if (whole)
        Reach(design, Mark::file_loaded);
    return whole;
}

bool Load_Model(Design_State& design, const std::string& path)
{
    std::unique_ptr<File_Source> source;
    if (!Trap("ReadFile", [&] { source = std::make_unique<File_Source>(path); })) {
        Run_Group& run = design.run;
        run.Read_Partial = run.Read_Complete = false;
        run.Read_Abort = true;
        return false;
    }
    return ReadFile(design, *source);
}

// ---- writing

void Write_Model(Design_State& design, Byte_Sink& sink, std::string_view tag)
{
    const Identity_Group& id = design.identity;
    const Run_Group& run = design.run;
    Record_Writer ar(design, sink);
    try {
        ar.Line(id.Program_Name);
        ar.Line(tag);
        ar.Line(id.Release_Str);
        ar.Line("Professional");
        ar.Line(id.File_Name);
        Model_Counts n{design.motion.No_of_segments, run.Max_Variables, run.Max_Segments_possible,
                       run.Max_Bounds_possible, design.motion.Max_Data_Points_used};
        const Format format = Format_Of(Val(tag, Decimal_Symbol::point), Val(id.Release_Str, Decimal_Symbol::point));
        Labelled_Items(design, ar, n, format, [] {});
        for (int v = 0; v <= run.Saved_Variables; ++v)
            ar.Bare(design.results.CalcData.Points(v));
        if (format.linkage)
            for (int i = 0; i < tail_lines; ++i)
                ar.Line("");
    } catch (const Fault&) {
        ar.Flush();  // what came before the fault stays in the file
        throw;
    }
    ar.Flush();
}

namespace {

/// What was typed and no format of the file has a place for; empty: nothing.
std::string Not_Kept(const Design_State& design)
{
    const Linkage_Group& k = design.linkage;
    std::string lost;
    if (k.Stage_Mode == "S")
        lost = "the choice of Stephenson";
    for (int link = 2; link <= Max_Links; ++link)
        if (k.Stiffness_of_link(link) != 0.0)
            return lost + (lost.empty() ? "" : " and ") + "the stiffnesses of the links";
    return lost;
}

void Tell_Written(const Design_State& design)
{
    Show_Message("The file was successfully written to \n" + design.identity.File_Name, Buttons::OK,
                 Symbol::information);
    if (const std::string lost = Not_Kept(design); !lost.empty())
        Show_Message("This file has no place for " + lost + ".\nPlease set that again after opening it.", Buttons::OK,
                     Symbol::exclamation);
}

/// The name under which a failed write is reported.
std::string_view Writer_Name(const Design_State& design)
{
    return design.identity.Version_Str == "7.2" ? "WriteFile_72" : "WriteFile_8";
}

/// Whether the format cannot hold the design, so that a cut file is all there can be.
bool Cut_By_Format(const Design_State& design)
{
    return design.motion.No_of_segments == Max_Segments;
}

/// Whether a file is a model without the end of its labelled items, as the format leaves it for 20 segments. A file
/// that cannot be read, or is no model with labels, counts as whole: nothing takes its place unkept.
bool Is_Cut(const Design_State& design, const std::string& path)
{
    constexpr std::size_t compared = 6;
    const std::string begins = '"' + design.identity.Program_Name.substr(0, compared);
    const std::string end_of_items = "\"Last Labeled Item\"";
    try {
        File_Source source(path);
        std::string text(std::size_t{64} * 1024, '\0');
        std::size_t held = 0;
        for (bool first = true;; first = false) {
            const std::size_t count = source.Read(text.data() + held, text.size() - held);
            const std::string_view seen(text.data(), held + count);
            if (first) {
                const std::size_t line = seen.find('\n');
                if (!seen.starts_with(begins) || line == std::string_view::npos)
                    return false;
                const std::string_view tag = seen.substr(line + 1, 5);
                if (!tag.starts_with("\"9\"") && !tag.starts_with("\"8\"") && tag != "\"7.2\"")
                    return false;
            }
            if (seen.find(end_of_items) != std::string_view::npos)
                return false;
            if (count == 0)
                return true;
            held = std::min(seen.size(), end_of_items.size());
            std::memmove(text.data(), seen.data() + seen.size() - held, held);
        }
    } catch (const Fault&) {
        return false;
    }
}

bool Exists(const std::string& path)
{
    std::error_code none;
    return !path.empty() && std::filesystem::is_regular_file(path, none);
}

/// Where the last whole copy of the design lies after a save that failed; empty where there is none.
std::string Last_Whole_Copy(const Design_State& design, const std::string& path, const std::string& kept,
                            const std::string& before)
{
    for (const std::string& copy : {kept, path, path + ".bak", before})
        if (Exists(copy) && !Is_Cut(design, copy))
            return copy;
    return {};
}

void Tell_Not_Saved(const std::string& path, bool cut, const std::string& whole_copy)
{
    std::string text = cut ? "The file was cut short, for its format cannot hold all of this design:\n" + path
                           : "The design was not saved to \n" + path;
    text +=
        whole_copy.empty() ? "\nThere is no whole copy of it on the disk." : "\nThe last whole copy is \n" + whole_copy;
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// What became of a file that was to be written.
enum class Outcome { whole, cut, none };

/// Writes the design to a file. @param kept  out: where the older file lies now that a cut one has its name
Outcome Write_to(Design_State& design, const std::string& path, std::string_view opener, std::string& kept)
{
    std::unique_ptr<Whole_File> file;
    if (!Trap(opener, [&] { file = std::make_unique<Whole_File>(path); }))
        return Outcome::none;
    const std::string_view writer = Writer_Name(design);
    if (Trap(writer, [&] { Write_Model(design, file->Sink(), design.identity.Version_Str); }))
        return Trap(writer, [&] { file->Commit(); }) ? Outcome::whole : Outcome::none;
    if (!Cut_By_Format(design))
        return Outcome::none;
    const bool in_place = Trap(writer, [&] {
        if (Is_Cut(design, file->Target()))
            file->Commit();
        else
            kept = file->Commit_Keeping_Older();
    });
    return in_place ? Outcome::cut : Outcome::none;
}

}  // namespace

bool Write_Model_File(Design_State& design, const std::string& path, Save_From from)
{
    Show_Wait_Pointer();
    const bool home = from == Save_From::home_screen;
    const std::string before = design.identity.File_Name;
    design.identity.File_Name = path;  // the file holds its own name
    std::string kept;
    const Outcome outcome = Write_to(design, path, home ? "frm_Homescreen.Save" : Writer_Name(design), kept);
    if (outcome == Outcome::whole) {
        Reach(design, Mark::saved);
        Mark_Saved(design);
        design.identity.Model_Name = StripFilename(path);
    } else {
        if (outcome == Outcome::none)
            design.identity.File_Name = before;
        Apply(design, Event::save_failed);
        Mark_Unsaved(design);
    }
    Restore_Pointer();
    if (outcome == Outcome::whole)
        Tell_Written(design);
    else if (home)
        Tell_Not_Saved(path, outcome == Outcome::cut, Last_Whole_Copy(design, path, kept, before));
    Refresh_Screens();
    return outcome == Outcome::whole;
}

namespace {

/// A file holds one unit system: results of other units are recalculated first, if the user wants so.
/// @return false: nothing is to be saved
bool Units_Are_Settled(Design_State& design)
{
    if (!Results_in_Other_Units(design))
        return true;
    const Answer answer = Show_Message(Other_Units_Sentence(design) +
                                           "\nThe file would give them the names of the new units.\n"
                                           "Do you want to recalculate them before saving?",
                                       Buttons::Yes_No_Cancel, Symbol::exclamation);
    return answer == Answer::No || (answer == Answer::Yes && Recalculate(design, Standing_of(design)));
}

}  // namespace

bool SaveAs(Design_State& design, std::string_view format)
{
    if (!Units_Are_Settled(design))
        return false;
    const Host& host = Installed_Host();
    File_Dialog dialog;
    dialog.title = "Save the Model";
    dialog.filter = "(*.cam)|*.cam";
    dialog.suggestion = design.identity.Model_Name + ".cam";
    dialog.overwrite_prompt = true;
    const auto chosen = host.save_dialog ? host.save_dialog(dialog) : std::nullopt;
    if (!chosen)
        return false;
    const std::string version = design.identity.Version_Str;
    if (format == "7.2")
        design.identity.Version_Str = "7.2";
    const bool written = Write_Model_File(design, *chosen, Save_From::home_screen);
    design.identity.Version_Str = version;
    return written;
}

bool Confirm_Older_Format()
{
    return Show_Message(
               "This will save in a format readable by an earlier version of \n"
               "Lobemax and will lose some information unique to this version.\n\n"
               "Do you wish to proceed?",
               Buttons::Yes_No) == Answer::Yes;
}

namespace {

bool Save_As_Older(Design_State& design, const std::string& tag)
{
    if (!Confirm_Older_Format())
        return false;
    const std::string version = design.identity.Version_Str;
    design.identity.Version_Str = tag;
    const bool written = SaveAs(design, tag);
    design.identity.Version_Str = version;
    return written;
}

}  // namespace

bool Save_As_Plus(Design_State& design)
{
    return SaveAs(design, design.identity.Version_Str);
}

bool Save_As_V8(Design_State& design)
{
    return Save_As_Older(design, "8");
}

bool Save_As_V7(Design_State& design)
{
    return Save_As_Older(design, "7.2");
}

bool Save_Model(Design_State& design)
{
    if (!design.flags.Model_Saved || design.identity.File_Name.empty())  // an example has no name yet
        return SaveAs(design, design.identity.Version_Str);
    if (!Units_Are_Settled(design))
        return false;
    return Write_Model_File(design, std::string(design.identity.File_Name), Save_From::home_screen);
}

namespace {

std::string Read_Report(const std::string& path, bool whole)
{
    return "The LOBEMAX file  " + path + " has been" + (whole ? " successfully " : " only partially ") +
           "read into memory.\n"
           "All previously saved setup data for this cam-follower design have been updated on their screens. \n" +
           (whole ? "Any previously calculated parameters are now in memory and can be plotted or printed. \n"
                  : "The model must now be recalculated to plot and print results. \n") +
           "The setup data from the saved model will be preserved until you change it and recalculate.\n"
           "You can view any segment's boundary conditions or spline data by recalculating that segment (SVAJ "
           "button).\n"
           "When you recalculate at any level, all higher levels of results that are dependent\n"
           "on that calculation will be zeroed. \n"
           "For example, if you recalculate SVAJ data,the Sizecam and Dynamic data results \n"
           "will be erased, though their setup data is preserved.\n"
           "Before exporting any manufacturing data from an old file, recalculate and check all design data,\n"
           "especially if you have updated LOBEMAX since the file was last saved.  ";
}

/// Reads the chosen file into a design that was just reset, and tells the user what became of it.
bool Read_Chosen(Design_State& design, const std::string& path)
{
    const Run_Group& run = design.run;
    design.identity.File_Name = path;
    Load_Model(design, path);
    design.identity.File_Name = path;  // where it lies now, whatever it was called when it was written
    Mark_Saved(design);
    if (run.Read_Abort)
        return false;
    design.identity.Model_Name = StripFilename(path);
    if (run.Read_Partial && !run.Read_Complete) {
        Show_Message("The LOBEMAX file     " + path +
                         "     was only partially read into memory.\n It may have been created in an earlier version "
                         "of LOBEMAX and its setup info may be incomplete.  Please check carefully.",
                     Buttons::OK, Symbol::exclamation);
        Apply(design, Event::load_partial);
        Mark_Saved(design);
        Refresh_Screens();
        return false;
    }
    Apply(design, Event::load_succeeded);
    const int segment = design.motion.Seg;
    design.motion.No_Conditions(segment) = Conditions_of(design, segment);
    Mark_Saved(design);
    Refresh_Screens();
    Show_Message(Read_Report(path, !run.Read_Partial), Buttons::OK, Symbol::information);
    return !run.Read_Partial;
}

}  // namespace

bool May_Reset(Design_State& design)
{
    if (!Unsaved(design))
        return true;
    const Answer answer = Show_Message("The current data has not been saved.  Do you want to save it before resetting?",
                                       Buttons::Yes_No_Cancel);
    return answer == Answer::No || (answer == Answer::Yes && Save_As_Plus(design));
}

bool Open_Model(Design_State& design)
{
    if (!May_Reset(design))
        return false;
    bool read = false;
    Trap("frm_Homescreen.Open", [&] {
        Reset_All(design);
        const Host& host = Installed_Host();
        File_Dialog dialog;
        dialog.title = "Open a model";
        dialog.filter = "LOBEMAX (*.cam)|*.cam|All (*.*)|*.*|";
        dialog.filter_index = 1;
        dialog.suggestion = "*.cam";
        const auto chosen = host.open_dialog ? host.open_dialog(dialog) : std::nullopt;
        if (chosen)  // a cancelled dialog leaves the design reset
            read = Read_Chosen(design, *chosen);
    });
    return read;
}

bool Open_Model(Design_State& design, const std::string& path)
{
    if (!May_Reset(design))
        return false;
    bool read = false;
    Trap("frm_Homescreen.Open", [&] {
        Reset_All(design);
        read = Read_Chosen(design, path);
    });
    return read;
}

}  // namespace lobemax
