// SPDX-License-Identifier: GPL-3.0-or-later
/// The one design in memory: every field of the cam, its follower train and its results.
///
/// One record of named groups, whole by value: a reset is an assignment, a test starts from a fresh one.
/// Fields keep the names, widths and bounds of model files and the command line. Names settled once, here:
///
///   one field                     also called
///   ----------------------------  ---------------------------------------------------
///   Ext_Force_Table               Ext_Force_Data
///   No_Conditions                 No_Conditions_Int
///   Shift_Points                  Shift_Point
///   Shaft_Speed_Sq, _Cu           Omega2, Omega3 of the motion, Omega_Squared_Shaft;
///                                 Omega_of_link(2..6) are the links' own Omega2 to Omega6
///   Imported_Model                Imported
///   Follower_Stiffness            Model_Spring_Rate
///   Fft_Work_A, Fft_Work_B        the one-sided and the full transform (row, point); Fft_Half is the count
///   Reading_File                  Loading: true while a read runs
///   File_Loaded                   true once a file has filled the input screen
///   Polydyne_Calc                 the flag; Calc_Polydyne is the routine
///   CGx_of_link, CGy_of_link      CG of link: distance of the centre of gravity from the link's pivot,
///                                 and its angle in the link's rotating coordinates, radians
///   Beta_Sq, Beta_Cu              square and cube of Beta_Rad of the segment at work
#pragma once

#include <string>

#include "core/basic_types.h"
#include "core/circle.h"
#include "core/variables.h"

namespace lobemax {

struct Design_State;

// The limits of a design.
inline constexpr int Max_Segments = 20;
inline constexpr int Max_Bounds = 40;
inline constexpr int Max_Knots = 66;
inline constexpr int Max_Links = 6;
inline constexpr int Max_Points = 2880;  // the finest step, 0.125 degrees

template <class T>
using Per_Segment = Bounded<T, 0, Max_Segments>;
template <class T>
using Per_Bound_and_Segment = Bounded2<T, 0, Max_Bounds, 0, Max_Segments>;
template <class T>
using Per_Link = Bounded<T, 1, Max_Links>;
template <class T>
using Pair = Bounded<T, 1, 2>;

/// Identity and bookkeeping.
struct Identity_Group {
    std::string User;
    Integer Design_No = 1;
    std::string Date;
    std::string Time;
    std::string Model_Name = "Model1";
    std::string File_Name;
    std::string Program_Name = "LOBEMAX Plus";
    std::string Version_Str = "9";
    std::string Release_Str = "9.0";
    std::string Release_Date = "11/30/08";
    std::string Release_Year = "2008";
    std::string Number_Format = "USA";  // "USA" or "Europe"
    Integer WhichUnit = 5;              // 1 in-lb, 2 ft-lb, 3 m-N, 4 cm-N, 5 mm-N
    Integer Decimals_1 = 2;             // length
    Integer Decimals_2 = 2;             // force
    Integer Decimals_3 = 3;             // torque
    Integer Decimals_4 = 3;             // mass
    Integer Decimals_5 = 3;             // inertia
    Integer Decimals_6 = 0;             // spring rate
};

/// The segment table, its boundary conditions, polynomials and splines.
struct Motion_Group {
    Integer No_of_segments = 1;
    Integer Seg = 1;                     // segment at work
    Single Deltatheta = 1.0;             // degrees
    Integer Max_Data_Points_used = 360;  // last point, 360 / Deltatheta
    Single Shaft_speed = 1.0;            // rad/s
    Single Shaft_Speed_Sq = 1.0;
    Single Shaft_Speed_Cu = 1.0;
    Integer Time_Base = 1;  // 1 per second, 2 per degree, 3 per radian

    Per_Segment<std::string> Rise_Fall_Dwell;  // "R", "F", "P", "D", "S"
    Per_Segment<std::string> Program;          // two-letter code
    Per_Segment<Integer> Seg_Program;          // law selector 1 to 19
    Per_Segment<std::string> Function;         // display text
    Per_Segment<Single> Total_Displacement;    // of a dwell: its absolute position
    Per_Segment<Single> Shift;                 // degrees, where the segment starts
    Per_Segment<Single> Gamma;                 // degrees, where it ends
    Per_Segment<Single> Base_Shift;            // position where the local displacement starts
    Per_Segment<Single> Beta_Deg;              // degrees
    Per_Segment<Single> Beta_Rad;              // radians
    Per_Segment<std::string> Start_Value;      // as typed
    Per_Segment<std::string> End_Value;        // as typed
    Per_Segment<Integer> Full_Half;            // 1 full law, 2 half law
    Per_Segment<Integer> Which_half;           // 1 first, 2 second
    Per_Segment<Flag> Seg_Done;                // calculated since it was last changed

    Per_Bound_and_Segment<Single> Thetanorm;
    Per_Bound_and_Segment<Single> Boundary;
    Per_Bound_and_Segment<Single> Equation;
    Per_Bound_and_Segment<Single> Coefficient;
    Per_Bound_and_Segment<Single> Pow;
    Bounded3<Single, 0, Max_Segments, 0, 2, 0, 3> Firstlast;  // (segment, end 1 or 2, derivative)
    Per_Segment<Integer> Total_No_of_BCs;
    Per_Bound_and_Segment<Single> Theta_Normalized;
    Per_Bound_and_Segment<Single> Eq;
    Per_Bound_and_Segment<Single> BC;
    Per_Bound_and_Segment<Single> Power;
    Per_Segment<Flag> Polydone;
    Per_Segment<std::string> No_of_conditions;  // as typed
    Per_Segment<Integer> No_Conditions;         // its value
    Bounded2<std::string, 0, Max_Segments, 1, 9> T_boundary_cond;
    Bounded2<std::string, 0, Max_Segments, 0, 9> S_boundary_cond;
    Bounded2<std::string, 0, Max_Segments, 0, 9> V_boundary_cond;
    Bounded2<std::string, 0, Max_Segments, 0, 9> A_boundary_cond;
    Bounded2<std::string, 0, Max_Segments, 0, 9> J_boundary_cond;
    Bounded2<std::string, 0, Max_Segments, 0, 9> Pbound;  // Ping conditions
    Flag Poly_OK;
    Flag Poly_Lift_Fix;

    Per_Segment<Flag> Splines_Calculated;
    Per_Segment<Flag> EvenKnots;
    Per_Segment<Integer> Orders;
    Per_Segment<Integer> Number_of_Knots;
    Per_Segment<Integer> Interior_Knots;
    Bounded2<Single, 0, Max_Knots, 0, Max_Segments> Knots;  // local degrees
    Bounded2<Single, 0, Max_Bounds, 0, 3> Constraints;      // angle, order, value
    Single Start_theta;  // kept for the file layout: written and read, used by nothing else
    Single End_theta;    // as Start_theta

    Single Lift;
    Single Liftmax;
    Single MaxLift;
    Single Max_Pos_Disp;
    Single Max_Neg_Disp;
    Flag Motion = true;  // true: a cam motion, false: an external force function
    Integer Ext_Force_On;
    Single Running_Min = 1000000.0;  // of the positions calculated since the input screen opened
    Single Running_Max = -1000000.0;
    Single Seg_Start_Angle;
    Single Seg_End_Angle;
    Single Beta_Sq;
    Single Beta_Cu;
    Single Seg_S;  // the point at work, local: per radian to the order of the derivative
    Single Seg_V;
    Single Seg_A;
    Single Seg_J;
    Single Seg_P;

    Flag Continuous;
    Bounded<Single, 0, 2> Max_Jump;
    Single Jump_Limit = 0.001;
    Integer Fft_Points;
    Integer Fft_Half;
    Integer Fft_Variable;  // the variable that was transformed, 0 for none
    Integer No_Harmonics = 15;
};

/// Cam, follower, sizing results, profile and drawing settings.
struct Cam_Group {
    std::string Camtype = "Radial";  // "Radial", "Barrel", "Linear"
    std::string Barrel_Type;         // "Grooved", "Ribbed" or empty
    Integer Followtype = 1;          // 1 roller, 2 flat-faced
    Flag Translating = true;
    std::string Closure = "Force";  // "Force" or "Form"
    Integer Rotflag = -1;
    Integer ArmDirect = 1;
    Single ArmX = 1.0;
    Single ArmY;
    Single ArmRad = 1.0;
    Single Prime_Rad;
    Single Offset;
    Single Follow_Rad;
    Single Face_Width;
    Single Cutter_Radius;
    Single Follower_Angle;      // degrees
    Integer Keyway_Clockangle;  // degrees
    std::string Keyway_Text = "12 O'clock";
    Single Shift_Angle;  // degrees
    Integer Shift_Points;
    Integer In_Out = -1;
    Integer Top_Bot = 1;
    Flag Versus_Keyway;
    Single Zoom_Factor = 1.0;
    Integer Printstep = 1;

    Single Arm_Pivot_Dist;
    Single Arm_Start_Angle;
    Single Arm_Cam_Angle;
    Single Arm_Pivot_Angle;
    Single Arm_Start_Radius;
    Single Arm_Start_Theta;
    Single Arm_Start_X;
    Single Arm_Start_Y;
    Single Arm_Work_Angle;  // radians

    Single Phi_Max;
    Single Phi_Max_Angle;
    Single Phi_Min;
    Single Phi_Min_Angle;
    Single Rho_Max_Pos;
    Single Rho_Max_Pos_Angle;
    std::string Rho_Max_Pos_Text;
    Single Rho_Min_Pos;
    Single Rho_Min_Pos_Angle;
    std::string Rho_Min_Pos_Text;
    Single Rho_Max_Neg;
    Single Rho_Max_Neg_Angle;
    std::string Rho_Max_Neg_Text;
    Single Rho_Min_Neg;
    Single Rho_Min_Neg_Angle;
    std::string Rho_Min_Neg_Text;
    Single Rho_Smallest;

    Single Cam_Shift_Angle;
    Single Cam_Draw_Angle;
    Single Cam_Shift_Sign_Angle;
    Flag Conjugate;
    Integer Side_Sign = 1;

    Single View_Left;
    Single View_Right;
    Single Flip_Y;
    Single Base_Circle;
    Single Shaft_Radius;
    Single Foll_X;
    Single Foll_Y;
    Single Pen_X;
    Single Pen_Y;
    Single Cam_Start_Polar;
    Flag Show_Follower_Path;
    Flag Show_Cutter_Path;
    Flag Show_Cam_Key;
    Flag Show_Surface;
    Flag Show_Prime = true;
    Integer Path_Step = 1;
    Integer Anim_Step;
    Long Anim_Wait = 0;
    Long Anim_Count = 0;
    Integer Anim_Delay;
};

/// Force, torque, stress, vibration and torque compensation.
struct Dynamics_Group {
    Single Mass;
    Single Return_Spring_Rate;
    Single Preload;
    Single Zeta_Initial;
    Single Damping;
    Single Bearing_Radius;
    Single Mu_of_Shaft;
    Single Mu_of_Follower;
    Single Coeff_of_Fluctuation;
    Single Follower_Weight;
    Flag Torque_Start_Fresh = true;
    Flag Ext_Force_Add;
    Single Omega_N;
    Single Critical_Damping;
    Single Omega_D;
    Single Torque_Integral_Max;
    Single Torque_Integral_Min;

    Integer Model_Type = 3;
    Pair<Single> Mass_m;
    Pair<Single> Kspring;
    Pair<Single> Zeta;
    Pair<Single> Omega_Sq;
    Pair<Single> Omega;
    Pair<Single> Crit_Damping;
    Pair<Single> Damping_C;
    Single Freq_Ratio;
    Single Gamma_Ratio;
    Single Follower_Stiffness;
    Single x_Initial;
    Long Ode_Max_Steps = 20000;
    Single Ode_Save_Interval;
    Long Ode_Count = 0;
    std::string Ode_Message;
    Single Force_Dyn_Max;  // of the dynamic force over the cycle
    Single Force_Dyn_Min;
    Single Polydyne_Max;  // of the polydyne displacement
    Single Polydyne_Min;

    Single Comp_Mass;
    Single Comp_Spring_Rate;
    Single Comp_Preload;
    double Torque_Velocity_Limit = 0.0;

    Pair<Single> Youngs_modulus;  // 1 cam, 2 follower
    Pair<Single> Poissons_ratio;
    Integer Roller_type;  // 1 cylindrical, 2 crowned
    Single Crown_radius;
    Single Roller_length;
};

/// Linkage follower train.
struct Linkage_Group {
    Integer Links = 4;
    Integer Linkage_Type;                  // 0 fourbar, 1 sixbar, 2 fourbar with slider, 3 sixbar with slider
    std::string Linkage_Kind = "Linkage";  // "Linkage", "Fourslide", "Sixslide"
    std::string Stage_Mode;                // "W" Watt, "S" Stephenson, empty with four links
    Single Theta1;                         // degrees
    Single Link_1;
    Single Link_2;
    Single Link_3;
    Single Link_4;
    Single Link_4a;
    Single Delta4;  // degrees
    Single Link_5;
    Single Link_6;
    Single S3x;
    Single S3y;
    Single Delta2;  // degrees
    Single O4x;
    Single O4y;
    Single O6x;
    Single O6y;
    Single O4D;
    Single Global_Slider_angle_deg;
    Single Offset6;
    Integer Assemflag1 = -1;
    Integer Assemflag2 = -1;
    Flag Drive_End_Effector;
    Per_Link<Single> Mass_of_link;
    Per_Link<Single> Inertia_of_link;
    Per_Link<Single> CGx_of_link;
    Per_Link<Single> CGy_of_link;  // radians
    Per_Link<Single> Stiffness_of_link;
    Per_Link<Single> Theta_of_link;  // the point at work
    Per_Link<Single> Omega_of_link;
    Per_Link<Single> Alpha_of_link;
    Integer Link_Anim_Step;
    Integer Link_Broken;         // points of the last calculation where the links did not connect
    Integer Link_Indeterminate;  // those at a dead centre, without velocities
};

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Colour&, const Colour&) = default;
};

/// Plot choices, the label tables of the variables and the colours.
struct Plot_Group {
    static constexpr int Last_Variable = var::Last;
    static constexpr int Last_Unit = Last_Variable + 6;

    Bounded<std::string, 0, Last_Variable> Var_Name;
    Bounded<std::string, -1, Last_Variable> Var_Short;  // the heading of variable v stands at v - 1
    Bounded<std::string, 0, Last_Variable> Var_Symbol;
    Bounded<std::string, 0, Last_Variable> Var_Long;
    Bounded<std::string, 0, Last_Unit> Var_Unit;
    Bounded<std::string, 0, 4> Fft_Dimension;  // "Disp", "Veloc", "Accel", "Jerk", "Ping"
    std::string Axis_Label;                    // first horizontal axis label
    Integer Idx_X;                             // rows of the model's response, relative to var::Model_Base
    Integer Idx_Xdot;
    Integer Idx_Xddot;
    Integer Idx_SX;

    Integer Plot_Style = 1;
    Bounded<Integer, 0, 4> Plot_Vars;
    Integer Num_Sets;
    std::string Segment_Pick = "All";
    Single Plot_First;
    Single Plot_Last;
    Flag Plot_Color = true;

    Colour Red;
    Colour Green;
    Colour Blue;
    Colour Purple;
    Colour White;
    Colour Black;
    Colour Cyan;
    Colour Yellow;
    Colour Grey;
    Colour Magenta;
};

/// How far the results in CalcData are valid, and what a run has met.
struct Flags_Group {
    Flag Calculated;
    Flag Sized;
    Flag Dynamicflag;
    Flag Modelflag;
    Flag Stressflag;
    Flag Polydyne_Calc;
    Flag Ext_Force_Calc;
    Flag CompCam_Calc;
    Flag Linkage_Calc;
    Flag FFT_Done;
    Flag From_Disk;
    Flag Imported_Model;
    Flag Model_Saved;

    Flag Calc_Abort;
    Flag Calc_Error;
    Flag Math_Error;
    Flag Separated;
    Integer Separation_Answer = 4;  // 3 abort, 4 retry (ask at the next problem), 5 ignore
    Flag Ode_Hint_Shown;
    Flag Example_Loaded;
    Flag File_Loaded;
    Flag Units_Changed;
    Flag Quiet_Checks;
    Flag Skip_Profile;
    Flag Starting;
    Flag Clearing;  // guard: the segments are being cleared
};

/// What belongs to the run of the program rather than to the design.
struct Run_Group {
    Flag First_Activate;
    Flag Keep_Step;  // Initialize leaves Deltatheta and the point count alone
    Flag Full_Screen;
    Flag Open_Clicked_File = true;
    Flag Aspect_Flag;
    Single Aspect_Correction = 1.0;
    Single Screen_Width;
    Single Screen_Height;
    std::string Program_Title;
    Flag Selecting_Print;
    std::uint64_t Saved_Key = 0;  // of the design that was last opened or saved (edit/unsaved)
    std::string Last_Edit;        // the first value that came through the door since it was last asked for, in words

    Integer Saved_Variables = var::Last_Stored;
    Integer Max_Variables = var::Last;
    Integer Unit_Table_Size = var::Last;
    Integer Max_Segments_possible = Max_Segments;
    Integer Max_Bounds_possible = Max_Bounds;

    Flag Reading_File;
    Flag Read_Abort;
    Flag Read_Partial;
    Flag Read_Complete;
    Single File_Version;
    Single File_Release;
    std::string File_Release_Str;
    Integer File_Max_Variables;
    Integer File_Max_Segments;
    Integer File_Max_Bounds;
    Integer File_Saved_Variables;
    Flag Has_Calc_Data;
};

/// The curves that old model files keep for each spline constraint: (column 0..4, constraint 0..40, 0..points).
/// A curve takes its memory when its first value is stored; until then it reads as zeros.
class Curve_Store {
public:
    void Dimension(int last_point);
    void Store(int column, int constraint, int p, Single value);
    Single operator()(int column, int constraint, int p) const;

private:
    Bounded2<std::vector<Single>, 0, 4, 0, Max_Bounds> curves_;
    int last_point_ = -1;
};

/// The large arrays, all of the same point count; Dimension_Arrays allocates them.
struct Results_Group {
    Integer WhichUnit;       // unit system of the calculated rows; 0: the design's own
    Table<Single> CalcData;  // (variable 0..Saved Variables, point 0..Max Data Points used)
    Curve_Store Constraint_Curve;
    Row<Single> Profile_X;
    Row<Single> Profile_Y;
    Table<double> Fft_Work_A;  // (0..4, 0..points / 2), one-sided transform
    Table<double> Fft_Work_B;  // (0..4, 0..points), full transform
    Row<Single> Ext_Force_Table;
    Row<Single> Arm_Pivot_X;
    Row<Single> Arm_Pivot_Y;

    Table<Single> Link_Theta;  // (link 0..6, point)
    Table<Single> Link_Omega;
    Table<Single> Link_Alpha;
    Table<Single> Link_X;
    Table<Single> Link_Y;
    Row<Single> Link_Ratio_S;
    Row<Single> Link_Ratio_V;
    Row<Single> Link_Ratio_A;

    Row<Single> Ode_Time;
    Table<Single> Ode_States;  // (0..3, stored point)
};

struct Design_State {
    Identity_Group identity;
    Motion_Group motion;
    Cam_Group cam;
    Dynamics_Group dynamics;
    Linkage_Group linkage;
    Plot_Group plot;
    Flags_Group flags;
    Run_Group run;
    Results_Group results;
};

/// Saved Variables 53, Max Variables 59, and the size of the unit table.
void Set_Max_Variables(Design_State& design);

/// Reallocates the arrays of the calculated data, contents lost: rows 0..saved_variables (at least
/// 0..Saved Variables, which every routine counts on), points 0..points.
/// @throws Fault{9} when saved_variables is negative or points lies outside 1..Max_Points
void Allocate_Arrays(Design_State& design, int saved_variables, int points);

/// Allocate_Arrays under its trap; false: the arrays are as they were.
bool Dimension_Arrays(Design_State& design, int saved_variables, int points);

/// Reallocates the arrays by link and point, contents lost. @throws Fault{9} as Allocate_Arrays
void Dimension_Link_Arrays(Design_State& design, int points);

/// The short column heading of a variable: Var_Short counts one lower than the variables.
const std::string& Short_Heading(const Design_State& design, int variable);

/// Squares and cubes the shaft speed.
void Set_Omega_Powers(Design_State& design);

}  // namespace lobemax
