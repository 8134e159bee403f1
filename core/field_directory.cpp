// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/field_directory.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "core/text.h"
#include "core/units.h"

namespace lobemax {

namespace {

template <class T>
constexpr Field_Type Type_of()
{
    if constexpr (std::is_same_v<T, Single>)
        return Field_Type::single;
    else if constexpr (std::is_same_v<T, Integer>)
        return Field_Type::integer;
    else if constexpr (std::is_same_v<T, Flag>)
        return Field_Type::flag;
    else if constexpr (std::is_same_v<T, std::string>)
        return Field_Type::text;
    else if constexpr (std::is_same_v<T, Long>)
        return Field_Type::long_integer;
    else {
        static_assert(std::is_same_v<T, double>);
        return Field_Type::real;
    }
}

/// How a member of the design is indexed: its element, its number of dimensions, its bounds.
template <class Member>
struct Shape {
    using Element = Member;
    static constexpr int dimensions = 0;
    static std::array<Bounds, 3> Of(const Member&) { return {}; }
    static Element& At(Member& m, const Field_Index&) { return m; }
};

template <class T, int Lo, int Hi>
struct Shape<Bounded<T, Lo, Hi>> {
    using Element = T;
    static constexpr int dimensions = 1;
    static std::array<Bounds, 3> Of(const Bounded<T, Lo, Hi>&) { return {{{Lo, Hi}}}; }
    static Element& At(Bounded<T, Lo, Hi>& m, const Field_Index& i) { return m(i.at[0]); }
};

template <class T, int A, int B, int C, int D>
struct Shape<Bounded2<T, A, B, C, D>> {
    using Element = T;
    static constexpr int dimensions = 2;
    static std::array<Bounds, 3> Of(const Bounded2<T, A, B, C, D>&) { return {{{A, B}, {C, D}}}; }
    static Element& At(Bounded2<T, A, B, C, D>& m, const Field_Index& i) { return m(i.at[0], i.at[1]); }
};

template <class T, int A, int B, int C, int D, int E, int F>
struct Shape<Bounded3<T, A, B, C, D, E, F>> {
    using Member = Bounded3<T, A, B, C, D, E, F>;
    using Element = T;
    static constexpr int dimensions = 3;
    static std::array<Bounds, 3> Of(const Member&) { return {{{A, B}, {C, D}, {E, F}}}; }
    static Element& At(Member& m, const Field_Index& i) { return m(i.at[0], i.at[1], i.at[2]); }
};

template <class T>
struct Shape<Row<T>> {
    using Element = T;
    static constexpr int dimensions = 1;
    static std::array<Bounds, 3> Of(const Row<T>& m) { return {{{0, m.Last()}}}; }
    static Element& At(Row<T>& m, const Field_Index& i) { return m(i.at[0]); }
};

template <class T>
struct Shape<Table<T>> {
    using Element = T;
    static constexpr int dimensions = 2;
    static std::array<Bounds, 3> Of(const Table<T>& m) { return {{{0, m.Last_Row()}, {0, m.Last_Point()}}}; }
    static Element& At(Table<T>& m, const Field_Index& i) { return m(i.at[0], i.at[1]); }
};

/// One row of the directory. Get is a captureless lambda from the design to the member.
template <class Get>
Field Entry(std::string_view name, Get, Field_Unit unit = Field_Unit::none, std::string_view label = {})
{
    using Member = std::remove_cvref_t<std::invoke_result_t<Get, Design_State&>>;
    using Kind = Shape<Member>;
    return Field{
        name,
        label.empty() ? name : label,
        Type_of<typename Kind::Element>(),
        Kind::dimensions,
        unit,
        false,
        [](const Design_State& d) { return Kind::Of(Get{}(const_cast<Design_State&>(d))); },
        [](Design_State& d, const Field_Index& i) { return Field_Ref{&Kind::At(Get{}(d), i)}; },
    };
}

/// A field that follows from others: it can be shown, but not set by name.
Field Computed(Field field)
{
    field.computed = true;
    return field;
}

// One line of the table: the field's own name in its group, then its name in files and on the command line.
#define IN(group, member)         \
    [](Design_State & d) -> auto& \
    {                             \
        return d.group.member;    \
    }

std::vector<Field> Make_Directory()
{
    using enum Field_Unit;
    return {
        // identity
        Entry("User", IN(identity, User)),
        Entry("Design No.", IN(identity, Design_No)),
        Entry("Date", IN(identity, Date)),
        Entry("Time", IN(identity, Time)),
        Entry("Model_Name", IN(identity, Model_Name)),
        Entry("File_Name", IN(identity, File_Name)),
        Computed(Entry("Program_Name", IN(identity, Program_Name))),
        Computed(Entry("Version_Str", IN(identity, Version_Str))),
        Computed(Entry("Release_Str", IN(identity, Release_Str))),
        Computed(Entry("Release_Date", IN(identity, Release_Date))),
        Computed(Entry("Release_Year", IN(identity, Release_Year))),
        Entry("Number_Format", IN(identity, Number_Format)),
        Entry("WhichUnit", IN(identity, WhichUnit)),
        Computed(Entry("Decimals_1", IN(identity, Decimals_1))),
        Computed(Entry("Decimals_2", IN(identity, Decimals_2))),
        Computed(Entry("Decimals_3", IN(identity, Decimals_3))),
        Computed(Entry("Decimals_4", IN(identity, Decimals_4))),
        Computed(Entry("Decimals_5", IN(identity, Decimals_5))),
        Computed(Entry("Decimals_6", IN(identity, Decimals_6))),

        // motion
        Entry("No of segments", IN(motion, No_of_segments)),
        Entry("Seg", IN(motion, Seg)),
        Entry("Deltatheta", IN(motion, Deltatheta), degrees),
        Computed(Entry("Max Data Points used", IN(motion, Max_Data_Points_used))),
        Entry("Shaft speed", IN(motion, Shaft_speed), rad_per_s),
        Computed(Entry("Shaft_Speed_Sq", IN(motion, Shaft_Speed_Sq))),
        Computed(Entry("Shaft_Speed_Cu", IN(motion, Shaft_Speed_Cu))),
        Entry("Time Base", IN(motion, Time_Base)),
        Entry("Base_Shift", IN(motion, Base_Shift), position, "Segment %1 Base_Shift"),
        Entry("Rise_Fall_Dwell", IN(motion, Rise_Fall_Dwell), none, "Segment %1 Rise_Fall_Dwell"),
        Entry("Program", IN(motion, Program), none, "Segment %1 Program"),
        Entry("Function", IN(motion, Function), none, "Segment %1 Function"),
        Entry("Total_Displacement", IN(motion, Total_Displacement), position, "Segment %1 Total_Displacement"),
        Entry("Shift", IN(motion, Shift), degrees, "Segment %1 Shift"),
        Entry("Gamma", IN(motion, Gamma), degrees, "Segment %1 Gamma"),
        Entry("Beta_Deg", IN(motion, Beta_Deg), degrees, "Segment %1 Beta_Deg"),
        Entry("Beta_Rad", IN(motion, Beta_Rad), radians, "Segment %1 Beta_Rad"),
        Entry("Start Value", IN(motion, Start_Value), position, "Segment %1 Start Value"),
        Entry("End Value", IN(motion, End_Value), position, "Segment %1 End Value"),
        Entry("Thetanorm", IN(motion, Thetanorm), none, "Thetanorm %1, for segment %2"),
        Entry("Boundary", IN(motion, Boundary), none, "Boundary %1, for segment %2"),
        Entry("Equation", IN(motion, Equation), none, "Equation %1, for segment %2"),
        Entry("Coefficient", IN(motion, Coefficient), none, "Coefficient %1, for segment %2"),
        Entry("Pow", IN(motion, Pow), none, "Pow %1, for segment %2"),
        Entry("Firstlast", IN(motion, Firstlast), none, "Firstlast %1, %2, %3"),
        Entry("Total No of BCs", IN(motion, Total_No_of_BCs), none, "Total No of BCs %1"),
        Entry("Theta_Normalized", IN(motion, Theta_Normalized), none, "Theta_Normalized %1, for segment %2"),
        Entry("Eq", IN(motion, Eq), none, "Eq %1, for segment %2"),
        Entry("BC", IN(motion, BC), none, "BC %1, for segment %2"),
        Entry("Power", IN(motion, Power), none, "Power %1, for segment %2"),
        Entry("Polydone", IN(motion, Polydone), none, "Polydone for segment (%1)"),
        Entry("No of conditions", IN(motion, No_of_conditions), none, "No of conditions for segment (%1)"),
        Computed(Entry("No_Conditions", IN(motion, No_Conditions))),
        Entry("T boundary cond", IN(motion, T_boundary_cond), degrees, "T boundary cond for segment %1 at angle %2"),
        Entry("S boundary cond", IN(motion, S_boundary_cond), position, "S boundary cond for segment %1 at angle %2"),
        Entry("V boundary cond", IN(motion, V_boundary_cond), none, "V boundary cond for segment %1 at angle %2"),
        Entry("A boundary cond", IN(motion, A_boundary_cond), none, "A boundary cond for segment %1 at angle %2"),
        Entry("J boundary cond", IN(motion, J_boundary_cond), none, "J boundary cond for segment %1 at angle %2"),
        Entry("Pbound", IN(motion, Pbound), none, "Pbound( %1, %2)"),
        Entry("Seg_Program", IN(motion, Seg_Program), none,
              "Seg_Program( %1, 10)"),  // the 10 is meant, in every record
        Entry("Full_Half", IN(motion, Full_Half), none, "Full_Half (%1)"),
        Entry("Which_half", IN(motion, Which_half), none, "Which_half (%1)"),
        Entry("Seg_Done", IN(motion, Seg_Done)),
        Entry("Poly_OK", IN(motion, Poly_OK)),
        Entry("Poly_Lift_Fix", IN(motion, Poly_Lift_Fix)),
        Entry("Start_theta", IN(motion, Start_theta)),
        Entry("End_theta", IN(motion, End_theta)),
        Entry("Splines_Calculated", IN(motion, Splines_Calculated), none, "Splines_Calculated %1"),
        Entry("EvenKnots", IN(motion, EvenKnots), none, "EvenKnots %1"),
        Entry("Orders", IN(motion, Orders), none, "Orders %1"),
        Entry("Number_of_Knots", IN(motion, Number_of_Knots), none, "Number_of_Knots %1"),
        Entry("Interior_Knots", IN(motion, Interior_Knots), none, "Interior_Knots %1"),
        Entry("Knots", IN(motion, Knots), degrees, "Knots( %1, %2)"),
        Entry("Constraints", IN(motion, Constraints), none, "Constraints( %1, %2)"),
        Entry("Lift", IN(motion, Lift), position),
        Entry("Liftmax", IN(motion, Liftmax), position),
        Entry("MaxLift", IN(motion, MaxLift), position),
        Entry("Max_Pos_Disp", IN(motion, Max_Pos_Disp), position),
        Entry("Max_Neg_Disp", IN(motion, Max_Neg_Disp), position),
        Entry("Motion", IN(motion, Motion)),
        Entry("Ext_Force_On", IN(motion, Ext_Force_On)),
        Entry("Continuous", IN(motion, Continuous)),
        Entry("Max_Jump", IN(motion, Max_Jump)),
        Entry("Jump_Limit", IN(motion, Jump_Limit)),
        Entry("Fft_Points", IN(motion, Fft_Points)),
        Entry("Fft_Half", IN(motion, Fft_Half)),
        Entry("No_Harmonics", IN(motion, No_Harmonics)),

        // cam and follower
        Entry("Camtype$", IN(cam, Camtype)),
        Entry("Barrel_Type$", IN(cam, Barrel_Type)),
        Entry("Followtype", IN(cam, Followtype)),
        Entry("Translating", IN(cam, Translating)),
        Entry("Closure$", IN(cam, Closure)),
        Entry("Rotflag", IN(cam, Rotflag)),
        Entry("ArmDirect", IN(cam, ArmDirect)),
        Entry("ArmX", IN(cam, ArmX), length),
        Entry("ArmY", IN(cam, ArmY), length),
        Entry("ArmRad", IN(cam, ArmRad), length),
        Entry("Prime_Rad", IN(cam, Prime_Rad), length),
        Entry("Offset", IN(cam, Offset), length),
        Entry("Follow_Rad", IN(cam, Follow_Rad), length),
        Entry("Face_Width", IN(cam, Face_Width), length),
        Entry("Cutter Radius", IN(cam, Cutter_Radius), length),
        Entry("Follower_Angle", IN(cam, Follower_Angle), degrees),
        Entry("Keyway_Clockangle", IN(cam, Keyway_Clockangle), degrees),
        Entry("Keyway_Text", IN(cam, Keyway_Text)),
        Entry("Shift_Angle", IN(cam, Shift_Angle), degrees),
        Entry("Shift_Points", IN(cam, Shift_Points)),
        Entry("In_Out", IN(cam, In_Out)),
        Entry("Top_Bot", IN(cam, Top_Bot)),
        Entry("Versus_Keyway", IN(cam, Versus_Keyway)),
        Entry("Zoom Factor", IN(cam, Zoom_Factor)),
        Entry("Printstep", IN(cam, Printstep)),
        Entry("Arm_Pivot_Dist", IN(cam, Arm_Pivot_Dist), length),
        Entry("Arm_Start_Angle", IN(cam, Arm_Start_Angle), degrees),
        Entry("Arm_Cam_Angle", IN(cam, Arm_Cam_Angle), degrees),
        Entry("Arm_Pivot_Angle", IN(cam, Arm_Pivot_Angle), degrees),
        Entry("Arm_Start_Radius", IN(cam, Arm_Start_Radius), length),
        Entry("Arm_Start_Theta", IN(cam, Arm_Start_Theta), degrees),
        Entry("Arm_Start_X", IN(cam, Arm_Start_X), length),
        Entry("Arm_Start_Y", IN(cam, Arm_Start_Y), length),
        Entry("Arm_Work_Angle", IN(cam, Arm_Work_Angle), radians),
        Entry("Phi_Max", IN(cam, Phi_Max), degrees),
        Entry("Phi_Max_Angle", IN(cam, Phi_Max_Angle), degrees),
        Entry("Phi_Min", IN(cam, Phi_Min), degrees),
        Entry("Phi_Min_Angle", IN(cam, Phi_Min_Angle), degrees),
        Entry("Rho_Max_Pos", IN(cam, Rho_Max_Pos), length),
        Entry("Rho_Max_Pos_Angle", IN(cam, Rho_Max_Pos_Angle), degrees),
        Entry("Rho_Max_Pos_Text", IN(cam, Rho_Max_Pos_Text)),
        Entry("Rho_Min_Pos", IN(cam, Rho_Min_Pos), length),
        Entry("Rho_Min_Pos_Angle", IN(cam, Rho_Min_Pos_Angle), degrees),
        Entry("Rho_Min_Pos_Text", IN(cam, Rho_Min_Pos_Text)),
        Entry("Rho_Max_Neg", IN(cam, Rho_Max_Neg), length),
        Entry("Rho_Max_Neg_Angle", IN(cam, Rho_Max_Neg_Angle), degrees),
        Entry("Rho_Max_Neg_Text", IN(cam, Rho_Max_Neg_Text)),
        Entry("Rho_Min_Neg", IN(cam, Rho_Min_Neg), length),
        Entry("Rho_Min_Neg_Angle", IN(cam, Rho_Min_Neg_Angle), degrees),
        Entry("Rho_Min_Neg_Text", IN(cam, Rho_Min_Neg_Text)),
        Entry("Rho_Smallest", IN(cam, Rho_Smallest), length),
        Entry("Cam_Shift_Angle", IN(cam, Cam_Shift_Angle), degrees),
        Entry("Cam_Draw_Angle", IN(cam, Cam_Draw_Angle), degrees),
        Entry("Cam_Shift_Sign_Angle", IN(cam, Cam_Shift_Sign_Angle), degrees),
        Entry("Conjugate", IN(cam, Conjugate)),
        Entry("Side_Sign", IN(cam, Side_Sign)),
        Entry("View_Left", IN(cam, View_Left), length),
        Entry("View_Right", IN(cam, View_Right), length),
        Entry("Base_Circle", IN(cam, Base_Circle), length),
        Entry("Shaft_Radius", IN(cam, Shaft_Radius), length),
        Entry("Show_Follower_Path", IN(cam, Show_Follower_Path)),
        Entry("Show_Cutter_Path", IN(cam, Show_Cutter_Path)),
        Entry("Show_Cam_Key", IN(cam, Show_Cam_Key)),
        Entry("Show_Surface", IN(cam, Show_Surface)),
        Entry("Show_Prime", IN(cam, Show_Prime)),
        Entry("Path_Step", IN(cam, Path_Step)),
        Entry("Anim_Step", IN(cam, Anim_Step)),
        Entry("Anim_Wait", IN(cam, Anim_Wait)),

        // dynamics
        Entry("Mass", IN(dynamics, Mass), mass),
        Entry("Return_Spring_Rate", IN(dynamics, Return_Spring_Rate), spring_rate),
        Entry("Preload", IN(dynamics, Preload), force),
        Entry("Zeta_Initial", IN(dynamics, Zeta_Initial)),
        Entry("Damping", IN(dynamics, Damping), damping),
        Entry("Bearing Radius", IN(dynamics, Bearing_Radius), length),
        Entry("Mu of Shaft", IN(dynamics, Mu_of_Shaft)),
        Entry("Mu of Follower", IN(dynamics, Mu_of_Follower)),
        Entry("Coeff of Fluctuation", IN(dynamics, Coeff_of_Fluctuation)),
        Entry("Follower_Weight", IN(dynamics, Follower_Weight), force),
        Entry("Torque_Start_Fresh", IN(dynamics, Torque_Start_Fresh)),
        Entry("Ext_Force_Add", IN(dynamics, Ext_Force_Add)),
        Entry("Omega_N", IN(dynamics, Omega_N), rad_per_s),
        Entry("Critical_Damping", IN(dynamics, Critical_Damping), damping),
        Entry("Omega_D", IN(dynamics, Omega_D), rad_per_s),
        Entry("Torque_Integral_Max", IN(dynamics, Torque_Integral_Max), torque),
        Entry("Torque_Integral_Min", IN(dynamics, Torque_Integral_Min), torque),
        Entry("Model_Type", IN(dynamics, Model_Type)),
        Entry("Mass_m", IN(dynamics, Mass_m), mass, "Mass_m (%1)"),
        Entry("Kspring", IN(dynamics, Kspring), spring_rate, "Kspring (%1)"),
        Entry("Zeta", IN(dynamics, Zeta), none, "Zeta (%1)"),
        Entry("Omega_Sq", IN(dynamics, Omega_Sq)),
        Entry("Omega", IN(dynamics, Omega), rad_per_s),
        Entry("Crit_Damping", IN(dynamics, Crit_Damping), damping),
        Entry("Damping_C", IN(dynamics, Damping_C), damping),
        Entry("Freq_Ratio", IN(dynamics, Freq_Ratio)),
        Entry("Gamma_Ratio", IN(dynamics, Gamma_Ratio)),
        Entry("Follower_Stiffness", IN(dynamics, Follower_Stiffness), spring_rate),
        Entry("x-Initial", IN(dynamics, x_Initial), position),
        Entry("Ode_Max_Steps", IN(dynamics, Ode_Max_Steps)),
        Entry("Ode_Save_Interval", IN(dynamics, Ode_Save_Interval), seconds),
        Entry("Ode_Count", IN(dynamics, Ode_Count)),
        Entry("Force_Dyn_Max", IN(dynamics, Force_Dyn_Max), force),
        Entry("Force_Dyn_Min", IN(dynamics, Force_Dyn_Min), force),
        Entry("Polydyne_Max", IN(dynamics, Polydyne_Max), position),
        Entry("Polydyne_Min", IN(dynamics, Polydyne_Min), position),
        Entry("Comp_Mass", IN(dynamics, Comp_Mass), mass),
        Entry("Comp_Spring_Rate", IN(dynamics, Comp_Spring_Rate), spring_rate),
        Entry("Comp_Preload", IN(dynamics, Comp_Preload), force),
        Entry("Torque_Velocity_Limit", IN(dynamics, Torque_Velocity_Limit)),
        Entry("Young's modulus", IN(dynamics, Youngs_modulus), stress, "Young's modulus (%1)"),
        Entry("Poissons' ratio", IN(dynamics, Poissons_ratio), none, "Poissons' ratio (%1)"),
        Entry("Roller type", IN(dynamics, Roller_type)),
        Entry("Crown radius", IN(dynamics, Crown_radius), length),
        Entry("Roller length", IN(dynamics, Roller_length), length),

        // linkage
        Entry("Links", IN(linkage, Links)),
        Entry("Linkage_Type", IN(linkage, Linkage_Type)),
        Entry("Linkage_Kind", IN(linkage, Linkage_Kind)),
        Entry("Stage_Mode", IN(linkage, Stage_Mode)),
        Entry("Theta1", IN(linkage, Theta1), degrees),
        Entry("Link 1", IN(linkage, Link_1), length),
        Entry("Link 2", IN(linkage, Link_2), length),
        Entry("Link 3", IN(linkage, Link_3), length),
        Entry("Link 4", IN(linkage, Link_4), length),
        Entry("Link 4a", IN(linkage, Link_4a), length),
        Entry("Delta4", IN(linkage, Delta4), degrees),
        Entry("Link 5", IN(linkage, Link_5), length),
        Entry("Link 6", IN(linkage, Link_6), length),
        Entry("S3x", IN(linkage, S3x), length),
        Entry("S3y", IN(linkage, S3y), length),
        Entry("Delta2", IN(linkage, Delta2), degrees),
        Entry("O4x", IN(linkage, O4x), length),
        Entry("O4y", IN(linkage, O4y), length),
        Entry("O6x", IN(linkage, O6x), length),
        Entry("O6y", IN(linkage, O6y), length),
        Entry("O4D", IN(linkage, O4D), length),
        Entry("Global_Slider_angle_deg", IN(linkage, Global_Slider_angle_deg), degrees),
        Entry("Offset6", IN(linkage, Offset6), length),
        Entry("Assemflag1", IN(linkage, Assemflag1)),
        Entry("Assemflag2", IN(linkage, Assemflag2)),
        Entry("Drive_End_Effector", IN(linkage, Drive_End_Effector)),
        Entry("Mass of link", IN(linkage, Mass_of_link), mass, "Mass of link  %1"),
        Entry("Inertia of link", IN(linkage, Inertia_of_link), inertia, "Inertia of link  %1"),
        Entry("CGx of link", IN(linkage, CGx_of_link), length, "CGx of link  %1"),
        Entry("CGy of link", IN(linkage, CGy_of_link), radians, "CGy of link  %1"),
        Entry("Stiffness of link", IN(linkage, Stiffness_of_link), spring_rate),
        Entry("Link_Broken", IN(linkage, Link_Broken)),
        Entry("Link_Indeterminate", IN(linkage, Link_Indeterminate)),

        // plot
        Computed(Entry("Var_Name", IN(plot, Var_Name))),
        Computed(Entry("Var_Short", IN(plot, Var_Short))),
        Computed(Entry("Var_Symbol", IN(plot, Var_Symbol))),
        Computed(Entry("Var_Long", IN(plot, Var_Long))),
        Computed(Entry("Var_Unit", IN(plot, Var_Unit))),
        Computed(Entry("Idx_X", IN(plot, Idx_X))),
        Computed(Entry("Idx_Xdot", IN(plot, Idx_Xdot))),
        Computed(Entry("Idx_Xddot", IN(plot, Idx_Xddot))),
        Computed(Entry("Idx_SX", IN(plot, Idx_SX))),
        Entry("Plot_Style", IN(plot, Plot_Style)),
        Entry("Plot_Vars", IN(plot, Plot_Vars)),
        Entry("Num_Sets", IN(plot, Num_Sets)),
        Entry("Segment_Pick", IN(plot, Segment_Pick)),
        Entry("Plot_First", IN(plot, Plot_First), degrees),
        Entry("Plot_Last", IN(plot, Plot_Last), degrees),
        Entry("Plot_Color", IN(plot, Plot_Color)),

        // flags
        Entry("Calculated", IN(flags, Calculated)),
        Entry("Sized", IN(flags, Sized)),
        Entry("Dynamicflag", IN(flags, Dynamicflag)),
        Entry("Modelflag", IN(flags, Modelflag)),
        Entry("Stressflag", IN(flags, Stressflag)),
        Entry("Polydyne_Calc", IN(flags, Polydyne_Calc)),
        Entry("Ext_Force_Calc", IN(flags, Ext_Force_Calc)),
        Entry("CompCam_Calc", IN(flags, CompCam_Calc)),
        Entry("Linkage_Calc", IN(flags, Linkage_Calc)),
        Entry("FFT_Done", IN(flags, FFT_Done)),
        Entry("From_Disk", IN(flags, From_Disk)),
        Entry("Imported_Model", IN(flags, Imported_Model)),
        Entry("Model_Saved", IN(flags, Model_Saved)),
        Entry("Calc_Abort", IN(flags, Calc_Abort)),
        Entry("Calc_Error", IN(flags, Calc_Error)),
        Entry("Math_Error", IN(flags, Math_Error)),
        Entry("Separated", IN(flags, Separated)),
        Entry("Separation_Answer", IN(flags, Separation_Answer)),
        Entry("Example_Loaded", IN(flags, Example_Loaded)),
        Entry("File_Loaded", IN(flags, File_Loaded)),
        Entry("Units_Changed", IN(flags, Units_Changed)),

        // run
        Computed(Entry("Saved Variables", IN(run, Saved_Variables))),
        Computed(Entry("Max Variables", IN(run, Max_Variables))),
        Computed(Entry("Max Segments possible", IN(run, Max_Segments_possible))),
        Computed(Entry("Max Bounds possible", IN(run, Max_Bounds_possible))),
        Computed(Entry("File_Version", IN(run, File_Version))),
        Computed(Entry("File_Release", IN(run, File_Release))),
        Computed(Entry("File_Max_Variables", IN(run, File_Max_Variables))),
        Computed(Entry("File_Max_Segments", IN(run, File_Max_Segments))),
        Computed(Entry("File_Max_Bounds", IN(run, File_Max_Bounds))),
        Computed(Entry("File_Saved_Variables", IN(run, File_Saved_Variables))),
        Computed(Entry("Read_Abort", IN(run, Read_Abort))),
        Computed(Entry("Read_Partial", IN(run, Read_Partial))),
        Computed(Entry("Read_Complete", IN(run, Read_Complete))),

        // results
        Entry("CalcData", IN(results, CalcData)),
        Entry("Profile_X", IN(results, Profile_X), length),
        Entry("Profile_Y", IN(results, Profile_Y), length),
        Entry("Fft_Work_A", IN(results, Fft_Work_A)),
        Entry("Fft_Work_B", IN(results, Fft_Work_B)),
        Entry("Ext_Force_Table", IN(results, Ext_Force_Table), force),
        Entry("Arm_Pivot_X", IN(results, Arm_Pivot_X), length),
        Entry("Arm_Pivot_Y", IN(results, Arm_Pivot_Y), length),
        Entry("Link_Theta", IN(results, Link_Theta), degrees),
        Entry("Link_Omega", IN(results, Link_Omega), rad_per_s),
        Entry("Link_Alpha", IN(results, Link_Alpha)),
        Entry("Link_X", IN(results, Link_X), length),
        Entry("Link_Y", IN(results, Link_Y), length),
        Entry("Link_Ratio_S", IN(results, Link_Ratio_S)),
        Entry("Link_Ratio_V", IN(results, Link_Ratio_V)),
        Entry("Link_Ratio_A", IN(results, Link_Ratio_A)),
        Entry("Ode_Time", IN(results, Ode_Time), seconds),
        Entry("Ode_States", IN(results, Ode_States)),
    };
}

#undef IN

struct Alias {
    std::string_view other;
    std::string_view name;
};

// One field under several names: the names settled at the head of the design state.
constexpr std::array aliases{
    Alias{"Ext_Force_Data", "Ext_Force_Table"},
    Alias{"No_Conditions_Int", "No_Conditions"},
    Alias{"Shift_Point", "Shift_Points"},
    Alias{"Omega2", "Shaft_Speed_Sq"},
    Alias{"Omega3", "Shaft_Speed_Cu"},
    Alias{"Omega_Squared_Shaft", "Shaft_Speed_Sq"},
    Alias{"Imported", "Imported_Model"},
    Alias{"Model_Spring_Rate", "Follower_Stiffness"},
    Alias{"CG of link", "CGx of link"},
    Alias{"Camtype", "Camtype$"},
    Alias{"Closure", "Closure$"},
    Alias{"Barrel_Type", "Barrel_Type$"},
};

const std::vector<Field>& Directory()
{
    static const std::vector<Field> fields = Make_Directory();
    return fields;
}

std::string Index_Text(const Field_Index& index)
{
    std::string text;
    for (int k = 0; k < index.count; ++k)
        text += (k == 0 ? "(" : ", ") + std::to_string(index.at[static_cast<std::size_t>(k)]);
    return index.count == 0 ? text : text + ")";
}

/// Reads "(2)" or "(1, 0)"; false when it is not of that form.
bool Read_Index(std::string_view text, Field_Index& index)
{
    if (text.size() < 3 || text.front() != '(' || text.back() != ')')
        return false;
    text = text.substr(1, text.size() - 2);
    while (true) {
        if (index.count == 3)
            return false;
        const std::size_t comma = text.find(',');
        const std::string part = Trim(text.substr(0, comma));
        int value = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        if (error != std::errc{} || end != part.data() + part.size())
            return false;
        index.at[static_cast<std::size_t>(index.count++)] = value;
        if (comma == std::string_view::npos)
            return true;
        text.remove_prefix(comma + 1);
    }
}

}  // namespace

std::span<const Field> Field_Directory()
{
    return Directory();
}

const Field* Find_Field(std::string_view name)
{
    static const std::unordered_map<std::string, const Field*> by_name = [] {
        std::unordered_map<std::string, const Field*> map;
        for (const Field& field : Directory())
            map.emplace(To_Upper(field.name), &field);
        for (const Alias& alias : aliases)
            map.emplace(To_Upper(alias.other), map.at(To_Upper(alias.name)));
        return map;
    }();
    const auto found = by_name.find(To_Upper(name));
    return found == by_name.end() ? nullptr : found->second;
}

Field_Reference Read_Field_Reference(const Design_State& design, std::string_view text)
{
    Field_Reference reference;
    const std::string whole = Trim(text);
    const std::size_t parenthesis = whole.find('(');
    const std::string name = Trim(std::string_view(whole).substr(0, parenthesis));
    const Field* field = Find_Field(name);
    if (field == nullptr) {
        reference.error = "there is no field '" + name + "'";
        return reference;
    }
    if (parenthesis != std::string::npos) {
        if (!Read_Index(std::string_view(whole).substr(parenthesis), reference.index)) {
            reference.error = "'" + whole + "' has no readable index";
            return reference;
        }
        if (reference.index.count != field->dimensions) {
            reference.error = "'" + name + "' has " + std::to_string(field->dimensions) + " indices";
            return reference;
        }
        const auto bounds = field->bounds(design);
        for (std::size_t k = 0; k < static_cast<std::size_t>(field->dimensions); ++k)
            if (!bounds[k].Holds(reference.index.at[k])) {
                reference.error = "index " + std::to_string(reference.index.at[k]) + " of '" + name + "' is outside " +
                                  std::to_string(bounds[k].lo) + " to " + std::to_string(bounds[k].hi);
                return reference;
            }
    }
    reference.field = field;
    return reference;
}

std::string Field_Name(const Field& field, const Field_Index& index)
{
    return std::string(field.name) + Index_Text(index);
}

std::string Field_Label(const Field& field, const Field_Index& index)
{
    std::string label;
    for (std::size_t i = 0; i < field.label.size(); ++i) {
        if (field.label[i] == '%' && i + 1 < field.label.size()) {
            label += std::to_string(index.at[static_cast<std::size_t>(field.label[++i] - '1')]);
            continue;
        }
        label += field.label[i];
    }
    return label;
}

std::string Field_Value(Design_State& design, const Field& field, const Field_Index& index)
{
    return std::visit(
        [](auto* at) -> std::string {
            using T = std::remove_pointer_t<decltype(at)>;
            if constexpr (std::is_same_v<T, std::string>)
                return *at;
            else if constexpr (std::is_same_v<T, Flag>)
                return *at ? "true" : "false";
            else if constexpr (std::is_same_v<T, Integer> || std::is_same_v<T, Long>)
                return std::to_string(static_cast<int>(*at));
            else
                return Shortest(*at);
        },
        field.at(design, index));
}

std::string Unit_Text(const Design_State& design, Field_Unit unit)
{
    const Unit_Words& w = Words_of_Units(design.identity.WhichUnit);
    const auto of_a_variable = [&](Unit_Kind kind) { return Unit_Text(design, design.identity.WhichUnit, kind); };
    const bool metric = design.identity.WhichUnit > 2;  // rates and inertias of all metric systems are in metres
    const std::string rate_length = metric ? "m" : w.length;
    const std::string F = w.force;
    switch (unit) {
    case Field_Unit::none:
        return {};
    case Field_Unit::position:
        return of_a_variable(Unit_Kind::position);
    case Field_Unit::length:
        return of_a_variable(Unit_Kind::length);
    case Field_Unit::force:
        return of_a_variable(Unit_Kind::force);
    case Field_Unit::torque:
        return of_a_variable(Unit_Kind::torque);
    case Field_Unit::mass:
        return w.mass;
    case Field_Unit::inertia:
        return std::string(w.mass) + "-" + rate_length + "^2";
    case Field_Unit::spring_rate:
        return F + "/" + rate_length;
    case Field_Unit::damping:
        return F + "-s/" + rate_length;
    case Field_Unit::stress:
        return of_a_variable(Unit_Kind::stress);
    case Field_Unit::degrees:
        return of_a_variable(Unit_Kind::degrees);
    case Field_Unit::radians:
        return "rad";
    case Field_Unit::rad_per_s:
        return "rad/s";
    case Field_Unit::seconds:
        return "s";
    }
    return {};
}

void Each_Element(const Design_State& design, const Field& field, const std::function<void(const Field_Index&)>& visit)
{
    Field_Index index;
    index.count = field.dimensions;
    const auto bounds = field.bounds(design);
    const auto over = [&](auto&& self, int dimension) -> void {
        if (dimension == field.dimensions) {
            visit(index);
            return;
        }
        const std::size_t k = static_cast<std::size_t>(dimension);
        for (int i = bounds[k].lo; i <= bounds[k].hi; ++i) {
            index.at[k] = i;
            self(self, dimension + 1);
        }
    };
    over(over, 0);
}

}  // namespace lobemax
