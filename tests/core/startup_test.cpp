// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/startup.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "core/messages.h"
#include "core/traps.h"
#include "core/units.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using lobemax::testing::Error_Box;
using lobemax::testing::Script;

struct Variable_Row {
    int v;
    const char* Var_Name;
    const char* Var_Long;
    const char* Var_Short;
    const char* Var_Symbol;
};

// The plot variables, row by row; jerk and ping as the time base of seconds names them.
const Variable_Row variable_rows[] = {
    {0, "", "Cam Angle", "", ""},
    {1, "Displcmnt", "Displacement", "Displ ", "S"},
    {2, "Velocity", "Velocity", "Veloc", "V"},
    {3, "Accel", "Acceleration", "Acc", "A"},
    {4, "Jerk *E3", "Jerk x 10^3", "Jrk", "J"},
    {5, "Phi", "Pressure Angle", "Phi   ", "P"},
    {6, "Rho", "Radius of Curvature", "Rho   ", "r"},
    {7, "Force-kin", "Force", "Force", "F-kin"},
    {8, "Torque", "Torque", "Torque", "T"},
    {9, "X_coord", "X-Cam Profile", "Xcoord", "X"},
    {10, "Y_coord", "Y-Cam Profile", "Ycoord", "Y"},
    {11, "Radius", "Cam Profile Radius", "Radius", "R"},
    {12, "Theta", "Cam Profile Theta", "Theta ", "Th"},
    {13, "X_vs_key", "X-shifted to keyway", "X-shift", "X-kw"},
    {14, "Y_vs_key", "Y-shifted to keyway", "Y-shift", "Y-kw"},
    {15, "Frict Trq", "Friction Torque", "T-frict ", "Fr"},
    {16, "Flywhl Trq", "Flywheel Torque", "T-Flywl", "Fl"},
    {17, "Ping *E3", "Ping x 10^3", "Ping", "Pg"},
    {18, "Real FFT", "Real FFT", "Real", "Re"},
    {19, "Imag FFT", "Imag FFT", "Imag", "Im"},
    {20, "Mag FFT", "Mag FFT", "Mag", "Mg"},
    {21, "Ang FFT", "Ang FFT", "Phs", "Ph"},
    {22, "Polydn S", "Polydn S", "PD-Disp", "Sp"},
    {23, "Polydn V", "Polydn V", "PD-Veloc", "Vp"},
    {24, "Polydn A", "Polydn A", "PD-Accel", "Ap"},
    {25, "X-nonpolydyn", "X-nonpolydyn", "X-nonplydn", "x-kin"},
    {26, "Y-nonpolydyn", "Y-nonpolydyn", "Y-nonplydn", "y-kin"},
    {27, "R-nonpolydyn", "R-nonpolydyn", "R-nonplydn", "R-kin"},
    {28, "Th-nonpolydyn", "Th-nonpolydyn", "T-nonplydn", "Th-kin"},
    {29, "S - X", "S - X", "s - x", "S - X"},
    {30, "X ", "X ", "x", "X"},
    {31, "X dot", "X dot", "x dot", "Xdot"},
    {32, "Xdbl dot", "Xdbl dot", "x ddot", "Xddot"},
    {33, "Force-Dyn", "Force-Dyn", "F dyn", "F-dyn"},
    {34, "Radius_key", "Radius_key", "", "R_key"},
    {35, "Theta_key", "Theta_key", "", "Th_key"},
    {36, "X_Surface", "X_Surface", "", "X_Srf"},
    {37, "Y_Surface", "Y_Surface", "", "Y_Srf"},
    {38, "X_Surf_key", "X_Surf_key", "", "X_Srf_key"},
    {39, "Y_Surf_key", "Y_Surf_key", "", "Y_Srf_key"},
    {40, "X_Cutter", "X_Cutter", "", "X_Ctr"},
    {41, "Y_Cutter", "Y_Cutter", "", "Y_Ctr"},
    {42, "Sig_max", "Sig_max", "", "Sigmax"},
    {43, "Tau_max", "Tau_max", "", "Taumax"},
    {44, "Ext Force", "Ext Force", "", "Ext Force"},
    {45, "Torque_Integral", "Torque_Integral", "", "Torque_Integral"},
    {46, "World_X", "World_X", "", "World_X"},
    {47, "World_Y", "", "", "World_Y"},
    {48, "Comp Cam Torque", "", "Comp Cam Torque", "Comp Cam Torque"},
    {49, "Net Comp Torque", "", "Net Comp Torque", "Net Comp Torque"},
    {50, "X", "", "x", ""},
    {51, "X dot", "", "x dot", ""},
    {52, "X dbl dot", "", "x ddot", ""},
    {53, "S - X", "", "s - x", ""},
    {54, "Cam Profile", "", "Profile", ""},
    {55, "Non-Polydyne Profile", "", "NP profile", ""},
    {56, "Cam Profile vs Keyway", "", "", ""},
    {57, "Cam Surface Profile", "", "", ""},
    {58, "Cam Surface vs Keyway", "", "", ""},
    {59, "Cam Cutter Coord", "", "", ""},
};

/// A design as the start leaves it, in a unit system, with nobody to answer a box.
class Startup : public ::testing::Test {
protected:
    void SetUp() override { Sub_Main(design, "", {}); }
    void TearDown() override { design = {}; }

    static void Start_In(int units)
    {
        Start_Services services;
        services.read_preferences = [units] { design.identity.WhichUnit = units; };
        ASSERT_TRUE(Sub_Main(design, "", services));
    }

    Script user;
};

/// Every flag of the results and of a run is down; the answer to a separation is "ask".
void Expect_No_Flag()
{
    const Flags_Group& f = design.flags;
    for (const Flag flag : {f.Calculated,    f.Sized,          f.Dynamicflag,    f.Modelflag,    f.Stressflag,
                            f.Polydyne_Calc, f.Ext_Force_Calc, f.CompCam_Calc,   f.Linkage_Calc, f.FFT_Done,
                            f.From_Disk,     f.Imported_Model, f.Model_Saved,    f.Calc_Abort,   f.Calc_Error,
                            f.Math_Error,    f.Separated,      f.Example_Loaded, f.File_Loaded,  f.Clearing})
        EXPECT_FALSE(flag);
    EXPECT_EQ(f.Separation_Answer, 4);
}

void Raise_Every_Flag()
{
    Flags_Group& f = design.flags;
    f.Calculated = f.Sized = f.Dynamicflag = f.Modelflag = f.Stressflag = f.Polydyne_Calc = f.Ext_Force_Calc = true;
    f.CompCam_Calc = f.Linkage_Calc = f.FFT_Done = f.From_Disk = f.Imported_Model = f.Model_Saved = true;
    f.Calc_Abort = f.Calc_Error = f.Math_Error = f.Separated = true;
    f.Separation_Answer = 5;
}

// ---- label tables

class Labels : public Startup, public ::testing::WithParamInterface<Variable_Row> {};

TEST_P(Labels, of_a_variable_stand_at_its_number)
{
    const Variable_Row& row = GetParam();
    const Plot_Group& p = design.plot;
    EXPECT_EQ(p.Var_Name(row.v), row.Var_Name);
    EXPECT_EQ(p.Var_Long(row.v), row.Var_Long);
    EXPECT_EQ(p.Var_Symbol(row.v), row.Var_Symbol);
}

TEST_P(Labels, short_heading_stands_one_lower)
{
    const Variable_Row& row = GetParam();
    EXPECT_EQ(design.plot.Var_Short(row.v - 1), row.Var_Short);
    EXPECT_EQ(Short_Heading(design, row.v), row.Var_Short);
}

INSTANTIATE_TEST_SUITE_P(By_Variable, Labels, ::testing::ValuesIn(variable_rows),
                         [](const auto& row) { return "variable_" + std::to_string(row.param.v); });

TEST_F(Startup, the_label_table_of_the_test_counts_from_0_to_59)
{
    ASSERT_EQ(std::size(variable_rows), 60U);
    for (int v = 0; v <= 59; ++v)
        EXPECT_EQ(variable_rows[v].v, v);
}

TEST_F(Startup, dimensions_of_the_Fourier_screen_and_the_axis)
{
    const char* const names[] = {"Disp", "Veloc", "Accel", "Jerk", "Ping"};
    for (int d = 0; d <= 4; ++d)
        EXPECT_EQ(design.plot.Fft_Dimension(d), names[d]);
    EXPECT_EQ(design.plot.Axis_Label, "Degrees");
}

TEST_F(Startup, rows_of_the_model_are_50_to_53_and_the_composites_follow)
{
    const Plot_Group& p = design.plot;
    EXPECT_EQ(p.Idx_X, 26);
    EXPECT_EQ(p.Idx_Xdot, 27);
    EXPECT_EQ(p.Idx_Xddot, 28);
    EXPECT_EQ(p.Idx_SX, 29);
    EXPECT_EQ(p.Var_Name(24 + p.Idx_X), "X");
    EXPECT_EQ(p.Var_Name(24 + p.Idx_Xdot), "X dot");
    EXPECT_EQ(p.Var_Name(24 + p.Idx_Xddot), "X dbl dot");
    EXPECT_EQ(p.Var_Name(24 + p.Idx_SX), "S - X");
    EXPECT_EQ(p.Var_Name(24 + p.Idx_SX + 1), "Cam Profile");
    EXPECT_EQ(p.Var_Name(24 + p.Idx_SX + 6), "Cam Cutter Coord");
}

TEST_F(Startup, Time_Base_2_and_3_name_jerk_and_ping_without_thousands)
{
    for (const int base : {2, 3}) {
        Start_Services services;
        services.read_preferences = [base] { design.motion.Time_Base = base; };
        ASSERT_TRUE(Sub_Main(design, "", services));
        EXPECT_EQ(design.motion.Time_Base, base);
        EXPECT_EQ(design.plot.Var_Name(4), "Jerk") << base;
        EXPECT_EQ(design.plot.Var_Name(17), "Ping") << base;
    }
}

TEST_F(Startup, the_limits_of_variables)
{
    EXPECT_EQ(design.run.Saved_Variables, 53);
    EXPECT_EQ(design.run.Max_Variables, 59);
    EXPECT_EQ(design.run.Unit_Table_Size, 59);
    design.run.Saved_Variables = 1;
    design.run.Max_Variables = 2;
    design.run.Unit_Table_Size = 3;
    Set_Max_Variables(design);
    EXPECT_EQ(design.run.Saved_Variables, 53);
    EXPECT_EQ(design.run.Max_Variables, 59);
    EXPECT_EQ(design.run.Unit_Table_Size, 59);
}

// ---- arrays

TEST_F(Startup, arrays_have_the_default_point_count)
{
    const Results_Group& r = design.results;
    EXPECT_EQ(r.CalcData.Last_Row(), 53);
    EXPECT_EQ(r.CalcData.Last_Point(), 360);
    EXPECT_EQ(r.Profile_X.Last(), 360);
    EXPECT_EQ(r.Profile_Y.Last(), 360);
    EXPECT_EQ(r.Ext_Force_Table.Last(), 360);
    EXPECT_EQ(r.Fft_Work_A.Last_Row(), 4);
    EXPECT_EQ(r.Fft_Work_A.Last_Point(), 180);
    EXPECT_EQ(r.Fft_Work_B.Last_Row(), 4);
    EXPECT_EQ(r.Fft_Work_B.Last_Point(), 360);
    EXPECT_EQ(static_cast<double>(r.Constraint_Curve(4, 40, 360)), 0.0);
    EXPECT_THROW(static_cast<void>(r.Constraint_Curve(5, 0, 0)), Fault);
    EXPECT_THROW(static_cast<void>(r.Constraint_Curve(0, 41, 0)), Fault);
    EXPECT_THROW(static_cast<void>(r.Constraint_Curve(0, 0, 361)), Fault);
    EXPECT_EQ(r.Link_Theta.Last_Point(), 360);
    EXPECT_EQ(r.Ode_Time.Last(), 1000);
    EXPECT_EQ(r.Ode_States.Last_Row(), 3);
    EXPECT_EQ(r.Ode_States.Last_Point(), 1000);
}

TEST_F(Startup, a_constraint_curve_keeps_what_is_stored_until_the_arrays_are_made_anew)
{
    Curve_Store& curves = design.results.Constraint_Curve;
    curves.Store(4, 40, 360, 2.5);
    EXPECT_EQ(static_cast<double>(curves(4, 40, 360)), 2.5);
    EXPECT_EQ(static_cast<double>(curves(4, 40, 359)), 0.0);
    EXPECT_EQ(static_cast<double>(curves(3, 40, 360)), 0.0);
    EXPECT_TRUE(Dimension_Arrays(design, 53, 360));
    EXPECT_EQ(static_cast<double>(curves(4, 40, 360)), 0.0);
}

TEST_F(Startup, Dimension_Arrays_loses_all_contents)
{
    Results_Group& r = design.results;
    r.CalcData(53, 360) = 1.0;
    r.Profile_X(0) = 1.0;
    r.Ext_Force_Table(360) = 1.0;
    r.Fft_Work_A(4, 180) = 1.0;
    EXPECT_TRUE(Dimension_Arrays(design, 53, 360));
    EXPECT_EQ(static_cast<double>(r.CalcData(53, 360)), 0.0);
    EXPECT_EQ(static_cast<double>(r.Profile_X(0)), 0.0);
    EXPECT_EQ(static_cast<double>(r.Ext_Force_Table(360)), 0.0);
    EXPECT_EQ(r.Fft_Work_A(4, 180), 0.0);
}

TEST_F(Startup, Dimension_Arrays_refuses_impossible_bounds_and_leaves_the_arrays_as_they_were)
{
    design.results.CalcData(1, 1) = 7.0;
    user.Expect(Error_Box(9, "Index out of bounds", "Dimension_Arrays in mod_Main"));
    EXPECT_FALSE(Dimension_Arrays(design, 53, 2881));
    user.Expect(Error_Box(9, "Index out of bounds", "Dimension_Arrays in mod_Main"));
    EXPECT_FALSE(Dimension_Arrays(design, 53, 0));
    user.Expect(Error_Box(9, "Index out of bounds", "Dimension_Arrays in mod_Main"));
    EXPECT_FALSE(Dimension_Arrays(design, -1, 360));
    EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
    EXPECT_EQ(static_cast<double>(design.results.CalcData(1, 1)), 7.0);
    EXPECT_TRUE(Dimension_Arrays(design, 0, 360));  // the angles alone
}

TEST_F(Startup, a_step_of_an_eighth_makes_CalcData_54_by_2881_and_loses_all_results)
{
    Raise_Every_Flag();
    design.results.CalcData(1, 100) = 12.5;
    ASSERT_TRUE(Set_Step(design, 0.125));
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 0.125);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 2880);
    EXPECT_EQ(design.results.CalcData.Last_Row() + 1, 54);
    EXPECT_EQ(design.results.CalcData.Last_Point() + 1, 2881);
    for (int v = 1; v <= 53; ++v)
        for (const Single x : design.results.CalcData.Points(v))
            ASSERT_EQ(static_cast<double>(x), 0.0) << v;
    const Flags_Group& f = design.flags;
    for (const Flag flag : {f.Calculated, f.Sized, f.Dynamicflag, f.Modelflag, f.Stressflag, f.Polydyne_Calc,
                            f.Ext_Force_Calc, f.CompCam_Calc, f.Linkage_Calc, f.FFT_Done})
        EXPECT_FALSE(flag);
}

TEST_F(Startup, only_the_four_steps_of_the_screen_are_taken)
{
    const double steps[] = {1.0, 0.5, 0.25, 0.125};
    const int points[] = {360, 720, 1440, 2880};
    for (int k = 0; k < 4; ++k) {
        EXPECT_TRUE(Set_Step(design, steps[k]));
        EXPECT_EQ(design.motion.Max_Data_Points_used, points[k]);
    }
    for (const double step : {0.0, -1.0, 0.1, 2.0, 0.0625})
        EXPECT_FALSE(Set_Step(design, step)) << step;
    EXPECT_EQ(design.motion.Max_Data_Points_used, 2880);
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 0.125);
}

// ---- the start

TEST_F(Startup, sets_release_names_and_the_users_defaults)
{
    const Identity_Group& id = design.identity;
    EXPECT_EQ(id.Release_Date, "11/30/08");
    EXPECT_EQ(id.Version_Str, "9");
    EXPECT_EQ(id.Release_Str, "9.0");
    EXPECT_EQ(id.Release_Year, "2008");
    EXPECT_EQ(id.Program_Name, "LOBEMAX Plus");
    EXPECT_EQ(id.Number_Format, "USA");
    EXPECT_EQ(id.WhichUnit, 5);
    EXPECT_EQ(design.cam.Camtype, "Radial");
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_TRUE(design.cam.Translating);
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 1.0);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 360);
    EXPECT_EQ(design.motion.Time_Base, 1);
    EXPECT_TRUE(design.run.First_Activate);
    EXPECT_EQ(static_cast<double>(design.run.Aspect_Correction), 1.0);
    EXPECT_FALSE(design.run.Keep_Step);
    EXPECT_EQ(design.cam.Anim_Delay, 500);
    EXPECT_FALSE(design.flags.Linkage_Calc);
    EXPECT_NE(design.run.Program_Title.find("LOBEMAX Plus"), std::string::npos);
    EXPECT_NE(design.run.Program_Title.find("9.0"), std::string::npos);
}

TEST_F(Startup, forgets_a_design_that_was_there_before)
{
    design.motion.No_of_segments = 7;
    design.motion.Start_Value(3) = "12";
    design.identity.WhichUnit = 1;
    design.motion.Time_Base = 3;
    design.run.Keep_Step = true;
    design.motion.Deltatheta = 0.25;
    ASSERT_TRUE(Sub_Main(design, "", {}));
    EXPECT_EQ(design.motion.No_of_segments, 1);
    EXPECT_EQ(design.motion.Start_Value(3), "");
    EXPECT_EQ(design.identity.WhichUnit, 5);
    EXPECT_EQ(design.motion.Time_Base, 1);
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 1.0);
}

TEST_F(Startup, calls_its_services_in_order_each_with_the_state_of_its_place)
{
    std::vector<std::string> steps;
    design = {};
    Start_Services services;
    services.screen_size = [&] {
        steps.emplace_back("screen");
        EXPECT_EQ(design.identity.Program_Name, "LOBEMAX Plus");
        EXPECT_TRUE(design.run.First_Activate);
    };
    services.read_preferences = [&] {
        steps.emplace_back("preferences");
        EXPECT_EQ(design.motion.Time_Base, 1);
        EXPECT_EQ(design.results.CalcData.Last_Row(), 53);
        EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
        EXPECT_EQ(design.results.Link_Theta.Last_Point(), 360);
        EXPECT_EQ(design.plot.Var_Name(1), "");  // Initialize comes later
    };
    services.register_cam_file = [&](const std::string& application) {
        steps.push_back("register " + application);
        EXPECT_EQ(design.run.Program_Title, Program_Title(design));
        EXPECT_EQ(design.plot.Var_Name(1), "");
    };
    services.open_model = [&](const std::string& path) {
        steps.push_back("open " + path);
        EXPECT_EQ(design.plot.Var_Name(1), "Displcmnt");
        EXPECT_EQ(design.plot.Var_Unit(1), "mm");
        EXPECT_EQ(design.identity.Model_Name, "Model1");
        EXPECT_EQ(design.plot.Red, Colour{});  // the colours come after the file
    };
    services.show_title = [&] {
        steps.emplace_back("title");
        EXPECT_EQ(design.plot.Red, (Colour{255, 0, 0}));
        EXPECT_EQ(design.cam.Anim_Delay, 0);  // set when the title is closed
    };
    EXPECT_TRUE(Sub_Main(design, "/models/valve.cam", services));
    EXPECT_EQ(steps, (std::vector<std::string>{"screen", "preferences", "register Lobemax", "open /models/valve.cam",
                                               "title"}));
}

TEST_F(Startup, preferences_come_before_the_defaults)
{
    Start_Services services;
    services.read_preferences = [] {
        design.identity.WhichUnit = 1;
        design.identity.Number_Format = "Europe";
        design.cam.Camtype = "Barrel";
        design.cam.Followtype = 2;
        design.cam.Translating = false;
        design.motion.Time_Base = 3;
    };
    ASSERT_TRUE(Sub_Main(design, "", services));
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.cam.Camtype, "Barrel");
    EXPECT_EQ(design.cam.Followtype, 2);
    EXPECT_FALSE(design.cam.Translating);
    EXPECT_EQ(design.motion.Time_Base, 3);
    EXPECT_EQ(design.dynamics.Preload.Bits(), 25.0F);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 3.0F);
    EXPECT_EQ(design.plot.Var_Unit(1), "deg");
    EXPECT_EQ(design.plot.Var_Unit(6), "in");
    EXPECT_EQ(design.plot.Var_Unit(12), "deg");
    EXPECT_EQ(design.identity.Decimals_4, 4);
}

TEST_F(Startup, a_Time_Base_of_0_becomes_1)
{
    Start_Services services;
    services.read_preferences = [] { design.motion.Time_Base = 0; };
    ASSERT_TRUE(Sub_Main(design, "", services));
    EXPECT_EQ(design.motion.Time_Base, 1);
    EXPECT_EQ(design.plot.Var_Name(4), "Jerk *E3");
}

TEST_F(Startup, without_the_open_clicked_preference_Notepad_opens_cam_files_and_the_command_line_is_left)
{
    std::string application;
    Start_Services services;
    services.read_preferences = [] { design.run.Open_Clicked_File = false; };
    services.register_cam_file = [&](const std::string& name) { application = name; };
    services.open_model = [](const std::string& path) { ADD_FAILURE() << "opened " << path; };
    ASSERT_TRUE(Sub_Main(design, "/models/valve.cam", services));
    EXPECT_EQ(application, "Notepad");
}

TEST_F(Startup, an_empty_command_line_opens_nothing)
{
    Start_Services services;
    services.open_model = [](const std::string& path) { ADD_FAILURE() << "opened '" << path << "'"; };
    ASSERT_TRUE(Sub_Main(design, "", services));
}

TEST_F(Startup, what_the_file_brings_is_kept_but_for_Linkage_Calc)
{
    Start_Services services;
    services.open_model = [](const std::string&) {
        design.identity.Model_Name = "valve";
        design.motion.No_of_segments = 4;
        design.flags.Calculated = true;
        design.flags.Linkage_Calc = true;
    };
    ASSERT_TRUE(Sub_Main(design, "/models/valve.cam", services));
    EXPECT_EQ(design.identity.Model_Name, "valve");
    EXPECT_EQ(design.motion.No_of_segments, 4);
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_FALSE(design.flags.Linkage_Calc);
}

TEST_F(Startup, the_pointer_is_restored_after_the_file)
{
    std::vector<std::string> steps;
    Host host = Installed_Host();
    host.wait_pointer = [&](bool wait) { steps.emplace_back(wait ? "wait" : "restore"); };
    const Host before = Install_Host(host);
    Start_Services services;
    services.open_model = [](const std::string&) { Show_Wait_Pointer(); };
    ASSERT_TRUE(Sub_Main(design, "/models/valve.cam", services));
    Install_Host(before);
    EXPECT_EQ(steps, (std::vector<std::string>{"wait", "restore"}));
}

TEST_F(Startup, a_fault_on_the_way_is_reported_under_Sub_Main)
{
    Start_Services services;
    services.read_preferences = [] { throw Fault{13}; };
    services.show_title = [] { ADD_FAILURE() << "the title came all the same"; };
    user.Expect(Error_Box(13, "Type mismatch", "Sub Main in mod_Main"));
    EXPECT_FALSE(Sub_Main(design, "", services));
}

TEST_F(Startup, the_ten_colours)
{
    const Plot_Group& p = design.plot;
    EXPECT_EQ(p.Red, (Colour{255, 0, 0}));
    EXPECT_EQ(p.Green, (Colour{0, 255, 0}));
    EXPECT_EQ(p.Blue, (Colour{0, 0, 255}));
    EXPECT_EQ(p.Purple, (Colour{128, 0, 128}));
    EXPECT_EQ(p.White, (Colour{255, 255, 255}));
    EXPECT_EQ(p.Black, (Colour{0, 0, 0}));
    EXPECT_EQ(p.Cyan, (Colour{0, 255, 255}));
    EXPECT_EQ(p.Yellow, (Colour{255, 255, 0}));
    EXPECT_EQ(p.Grey, (Colour{128, 128, 128}));
    EXPECT_EQ(p.Magenta, (Colour{255, 0, 255}));
}

TEST_F(Startup, the_colours_survive_a_reset)
{
    Reset_All(design);
    EXPECT_EQ(design.plot.Red, (Colour{255, 0, 0}));
    EXPECT_EQ(design.plot.White, (Colour{255, 255, 255}));
    EXPECT_EQ(design.plot.Magenta, (Colour{255, 0, 255}));
}

// ---- Initialize

TEST_F(Startup, Initialize_puts_every_default_back)
{
    Motion_Group& m = design.motion;
    Cam_Group& c = design.cam;
    Linkage_Group& k = design.linkage;
    design.identity.Design_No = 9;
    m.No_of_segments = 12;
    Raise_Every_Flag();
    m.Motion = false;
    c.Zoom_Factor = 2.0;
    design.dynamics.Model_Type = 5;
    k.Drive_End_Effector = true;
    c.Rotflag = 1;
    c.In_Out = 1;
    c.Top_Bot = -1;
    m.Seg = 4;
    m.Shaft_speed = 12.0;
    m.Shaft_Speed_Sq = m.Shaft_Speed_Cu = 5.0;
    c.ArmRad = c.ArmX = c.ArmY = 8.0;
    c.Prime_Rad = c.Offset = c.Follower_Angle = c.Shift_Angle = 8.0;
    m.Lift = 8.0;
    c.Keyway_Clockangle = 90;
    c.Printstep = 10;
    c.Closure = "Form";
    m.Orders.Fill(4);
    k.Assemflag1 = k.Assemflag2 = 1;
    k.Links = 6;
    design.identity.Model_Name = "valve";
    design.identity.Date = design.identity.Time = "";

    ASSERT_TRUE(Initialize(design));

    EXPECT_EQ(design.identity.Design_No, 1);
    EXPECT_EQ(m.No_of_segments, 1);
    Expect_No_Flag();
    EXPECT_TRUE(m.Motion);
    EXPECT_EQ(c.Zoom_Factor.Bits(), 1.0F);
    EXPECT_EQ(design.dynamics.Model_Type, 3);
    EXPECT_FALSE(k.Drive_End_Effector);
    EXPECT_EQ(c.Rotflag, -1);
    EXPECT_EQ(c.In_Out, -1);
    EXPECT_EQ(c.Top_Bot, 1);
    EXPECT_EQ(m.Seg, 1);
    EXPECT_EQ(m.Shaft_speed.Bits(), 1.0F);
    EXPECT_EQ(m.Shaft_Speed_Sq.Bits(), 1.0F);
    EXPECT_EQ(m.Shaft_Speed_Cu.Bits(), 1.0F);
    EXPECT_EQ(c.ArmRad.Bits(), 1.0F);
    EXPECT_EQ(c.ArmX.Bits(), 1.0F);
    EXPECT_EQ(c.ArmY.Bits(), 0.0F);
    EXPECT_EQ(c.Prime_Rad.Bits(), 76.2F);
    EXPECT_EQ(m.Lift.Bits(), 25.0F);
    EXPECT_EQ(c.Offset.Bits(), 0.0F);
    EXPECT_EQ(c.Follower_Angle.Bits(), 0.0F);
    EXPECT_EQ(c.Keyway_Clockangle, 0);
    EXPECT_EQ(c.Shift_Angle.Bits(), 0.0F);
    EXPECT_EQ(c.Printstep, 1);
    EXPECT_EQ(c.Closure, "Force");
    for (int i = 1; i <= 20; ++i)
        EXPECT_EQ(m.Orders(i), 6) << i;
    EXPECT_EQ(k.Assemflag1, -1);
    EXPECT_EQ(k.Assemflag2, -1);
    EXPECT_EQ(k.Links, 4);
    EXPECT_EQ(design.identity.Model_Name, "Model1");
    EXPECT_EQ(design.identity.Date, "2026-11-21");  // the clock of the script
    EXPECT_EQ(design.identity.Time, "12:34:56");
}

TEST_F(Startup, Initialize_leaves_the_step_of_a_quarter_while_the_keep_step_flag_is_set)
{
    ASSERT_TRUE(Set_Step(design, 0.25));
    design.run.Keep_Step = true;
    ASSERT_TRUE(Initialize(design));
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 0.25);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 1440);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 1440);
}

TEST_F(Startup, Initialize_takes_the_step_back_to_1_without_the_keep_step_flag)
{
    ASSERT_TRUE(Set_Step(design, 0.25));
    ASSERT_TRUE(Initialize(design));
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 1.0);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 360);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
}

TEST_F(Startup, Initialize_reports_under_its_own_name)
{
    design.identity.WhichUnit = 6;
    user.Expect(Error_Box(9, "Index out of bounds", "Initialize in mod_Main"));
    EXPECT_FALSE(Initialize(design));
}

TEST_F(Startup, Initialize_empties_the_results)
{
    design.results.CalcData(1, 90) = 12.0;
    ASSERT_TRUE(Initialize(design));
    EXPECT_EQ(static_cast<double>(design.results.CalcData(1, 90)), 0.0);
}

// ---- defaults by unit system

struct Default_Row {
    const char* field;
    std::array<float, 5> value;  // by WhichUnit; of a field that feet leave unchanged, the value it had
    Single& (*at)();
};

constexpr float kept = 17.0F;  // put into the fields first

const Default_Row default_rows[] = {
    {"Mass", {0.04F, 0.48F, 4, 4, 4}, []() -> Single& { return design.dynamics.Mass; }},
    {"Return_Spring_Rate", {75, 900, 1000, 1000, 1000}, []() -> Single& { return design.dynamics.Return_Spring_Rate; }},
    {"Preload", {25, 300, 100, 100, 100}, []() -> Single& { return design.dynamics.Preload; }},
    {"Follower_Stiffness",
     {6000, kept, 600000, 600000, 600000},
     []() -> Single& { return design.dynamics.Follower_Stiffness; }},
    {"Mass_m_1", {0.01F, kept, 2, 2, 2}, []() -> Single& { return design.dynamics.Mass_m(1); }},
    {"Mass_m_2", {0.03F, kept, 3, 3, 3}, []() -> Single& { return design.dynamics.Mass_m(2); }},
    {"Kspring_1", {6000, kept, 400000, 400000, 400000}, []() -> Single& { return design.dynamics.Kspring(1); }},
    {"Kspring_2", {6000, kept, 400000, 400000, 400000}, []() -> Single& { return design.dynamics.Kspring(2); }},
    {"Roller_length", {1.0F, 0.083F, 0.025F, 2.5F, 25}, []() -> Single& { return design.dynamics.Roller_length; }},
    {"Crown_radius", {56, 4.667F, 1.5F, 150, 1500}, []() -> Single& { return design.dynamics.Crown_radius; }},
    {"Follow_Rad", {0.5F, 0.0415F, 0.0125F, 1.3F, 12.5F}, []() -> Single& { return design.cam.Follow_Rad; }},
    {"Cutter_Radius", {0.25F, 0.0208F, 0.00625F, 1.0F, 8.0F}, []() -> Single& { return design.cam.Cutter_Radius; }},
    // in inches 3, in feet a twelfth, in metres a fortieth, then 2.54 and 25.4 times
    {"Prime_Rad", {3, 0.25F, 0.075F, 7.62F, 76.2F}, []() -> Single& { return design.cam.Prime_Rad; }},
    // the same of 1 inch, but 2.5 and 25 times
    {"Lift", {1, 1.0F / 12, 0.025F, 2.5F, 25}, []() -> Single& { return design.motion.Lift; }},
    // derived: half the mass, twice the rate, the preload itself
    {"Comp_Mass", {0.02F, 0.24F, 2, 2, 2}, []() -> Single& { return design.dynamics.Comp_Mass; }},
    {"Comp_Spring_Rate", {150, 1800, 2000, 2000, 2000}, []() -> Single& { return design.dynamics.Comp_Spring_Rate; }},
    {"Comp_Preload", {25, 300, 100, 100, 100}, []() -> Single& { return design.dynamics.Comp_Preload; }},
    // common to all
    {"Zeta_Initial", {0.05F, 0.05F, 0.05F, 0.05F, 0.05F}, []() -> Single& { return design.dynamics.Zeta_Initial; }},
    {"Bearing_Radius", {1, 1, 1, 1, 1}, []() -> Single& { return design.dynamics.Bearing_Radius; }},
    {"Mu_of_Shaft", {0.01F, 0.01F, 0.01F, 0.01F, 0.01F}, []() -> Single& { return design.dynamics.Mu_of_Shaft; }},
    {"Mu_of_Follower", {0.01F, 0.01F, 0.01F, 0.01F, 0.01F}, []() -> Single& { return design.dynamics.Mu_of_Follower; }},
    {"Coeff_of_Fluctuation",
     {0.05F, 0.05F, 0.05F, 0.05F, 0.05F},
     []() -> Single& { return design.dynamics.Coeff_of_Fluctuation; }},
    {"Zeta_1", {0.05F, 0.05F, 0.05F, 0.05F, 0.05F}, []() -> Single& { return design.dynamics.Zeta(1); }},
    {"Zeta_2", {0.05F, 0.05F, 0.05F, 0.05F, 0.05F}, []() -> Single& { return design.dynamics.Zeta(2); }},
    {"Follower_Weight", {0, 0, 0, 0, 0}, []() -> Single& { return design.dynamics.Follower_Weight; }},
};

class Defaults : public Startup, public ::testing::WithParamInterface<Default_Row> {};

TEST_P(Defaults, are_those_of_each_unit_system)
{
    for (int units = 1; units <= 5; ++units) {
        design.identity.WhichUnit = units;
        GetParam().at() = kept;
        ASSERT_TRUE(Initialize(design));
        EXPECT_EQ(GetParam().at().Bits(), GetParam().value[static_cast<std::size_t>(units - 1)]) << units;
    }
}

INSTANTIATE_TEST_SUITE_P(By_Field, Defaults, ::testing::ValuesIn(default_rows),
                         [](const auto& row) { return std::string(row.param.field); });

TEST_F(Startup, only_the_inch_system_sets_the_links)
{
    Linkage_Group& k = design.linkage;
    for (int units = 1; units <= 5; ++units) {
        design.identity.WhichUnit = units;
        for (auto* field : {&k.Mass_of_link, &k.Inertia_of_link, &k.CGx_of_link, &k.CGy_of_link})
            field->Fill(kept);
        MassProp(design);
        for (int n = 2; n <= 6; ++n) {
            EXPECT_EQ(k.Mass_of_link(n).Bits(), units == 1 ? 0.001F : kept) << units << ", " << n;
            EXPECT_EQ(k.Inertia_of_link(n).Bits(), units == 1 ? 0.004F : kept) << units << ", " << n;
            EXPECT_EQ(k.CGx_of_link(n).Bits(), units == 1 ? 1.0F : kept) << units << ", " << n;
            EXPECT_EQ(k.CGy_of_link(n).Bits(), units == 1 ? 0.0F : kept) << units << ", " << n;
        }
        EXPECT_EQ(k.Mass_of_link(1).Bits(), kept);
    }
}

// ---- Clear_Segs and Reset_All

TEST_F(Startup, Clear_Segs_empties_every_segment)
{
    Motion_Group& m = design.motion;
    for (int i = 1; i <= 20; ++i) {
        m.Rise_Fall_Dwell(i) = "R";
        m.Program(i) = "MS";
        m.Start_Value(i) = "0";
        m.End_Value(i) = "25";
        m.Beta_Deg(i) = 18.0;
        m.Polydone(i) = true;
        m.No_of_conditions(i) = "8";
        for (int k = 0; k <= 9; ++k) {
            if (k > 0)
                m.T_boundary_cond(i, k) = "1";
            m.S_boundary_cond(i, k) = "2";
            m.V_boundary_cond(i, k) = "3";
            m.A_boundary_cond(i, k) = "4";
            m.J_boundary_cond(i, k) = "5";
        }
        m.EvenKnots(i) = false;
        m.Orders(i) = 4;
        m.Splines_Calculated(i) = true;
    }
    Raise_Every_Flag();
    m.Deltatheta = 0.5;

    Clear_Segs(design);

    for (int i = 1; i <= 20; ++i) {
        EXPECT_EQ(m.Rise_Fall_Dwell(i), "") << i;
        EXPECT_EQ(m.Program(i), "") << i;
        EXPECT_EQ(m.Start_Value(i), "") << i;
        EXPECT_EQ(m.End_Value(i), "") << i;
        EXPECT_EQ(m.Beta_Deg(i).Bits(), 0.0F) << i;
        EXPECT_FALSE(m.Polydone(i)) << i;
        EXPECT_EQ(m.No_of_conditions(i), "") << i;
        for (int k = 0; k <= 9; ++k) {
            if (k > 0 && k < 9) {
                EXPECT_EQ(m.T_boundary_cond(i, k), "") << i << ", " << k;
            }
            EXPECT_EQ(m.S_boundary_cond(i, k), "") << i << ", " << k;
            EXPECT_EQ(m.V_boundary_cond(i, k), "") << i << ", " << k;
            EXPECT_EQ(m.A_boundary_cond(i, k), "") << i << ", " << k;
            EXPECT_EQ(m.J_boundary_cond(i, k), "") << i << ", " << k;
        }
        EXPECT_TRUE(m.EvenKnots(i)) << i;
        EXPECT_EQ(m.Orders(i), 6) << i;
        EXPECT_FALSE(m.Splines_Calculated(i)) << i;
    }
    EXPECT_EQ(m.Max_Data_Points_used, 720);
    const Flags_Group& f = design.flags;
    for (const Flag flag : {f.Calculated, f.Sized, f.Dynamicflag, f.Modelflag, f.Polydyne_Calc, f.Clearing})
        EXPECT_FALSE(flag);
    // the others are no matter of the segments
    for (const Flag flag : {f.Stressflag, f.Ext_Force_Calc, f.CompCam_Calc, f.FFT_Done, f.From_Disk})
        EXPECT_TRUE(flag);
}

TEST_F(Startup, after_Reset_All_there_is_a_fresh_design)
{
    Raise_Every_Flag();
    design.motion.No_of_segments = 5;
    design.motion.Orders(20) = 4;
    design.motion.EvenKnots(20) = false;
    design.motion.Start_Value(2) = "3";
    design.motion.Motion = false;
    design.identity.Model_Name = "valve";
    design.identity.File_Name = "/models/valve.cam";
    design.results.CalcData(1, 90) = 4.0;
    ASSERT_TRUE(Set_Step(design, 0.125));

    Reset_All(design);

    EXPECT_EQ(design.motion.No_of_segments, 1);
    Expect_No_Flag();
    EXPECT_EQ(design.identity.Model_Name, "Model1");
    EXPECT_EQ(design.identity.File_Name, "");
    EXPECT_EQ(design.motion.Orders(20), 6);
    EXPECT_TRUE(design.motion.EvenKnots(20));
    EXPECT_EQ(design.motion.Start_Value(2), "");
    EXPECT_TRUE(design.motion.Motion);
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 1.0);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 360);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
    EXPECT_EQ(static_cast<double>(design.results.CalcData(1, 90)), 0.0);
}

TEST_F(Startup, Reset_All_leaves_what_belongs_to_the_user)
{
    Start_In(1);
    design.identity.User = "A. Designer";
    design.identity.Number_Format = "Europe";
    ASSERT_NO_THROW(Set_Time_Base(design, 2));
    design.cam.Camtype = "Barrel";
    design.cam.Followtype = 2;
    design.cam.Translating = false;
    design.run.Open_Clicked_File = false;
    Reset_All(design);
    EXPECT_EQ(design.identity.User, "A. Designer");
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.motion.Time_Base, 2);
    EXPECT_EQ(design.cam.Camtype, "Barrel");
    EXPECT_EQ(design.cam.Followtype, 2);
    EXPECT_FALSE(design.cam.Translating);
    EXPECT_FALSE(design.run.Open_Clicked_File);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 3.0F);
    EXPECT_EQ(design.plot.Var_Name(4), "Jerk");
}

TEST_F(Startup, Reset_All_keeps_the_step_while_its_flag_is_set)
{
    ASSERT_TRUE(Set_Step(design, 0.25));
    design.run.Keep_Step = true;
    Reset_All(design);
    EXPECT_EQ(static_cast<double>(design.motion.Deltatheta), 0.25);
    EXPECT_EQ(design.motion.Max_Data_Points_used, 1440);
    EXPECT_EQ(design.results.CalcData.Last_Point(), 1440);
}

TEST_F(Startup, Reset_All_keeps_the_animation_delay_that_only_the_start_sets)
{
    Reset_All(design);
    EXPECT_EQ(design.cam.Anim_Delay, 500);
}

// ---- number formats

TEST_F(Startup, choosing_the_European_format_explains_and_resets_the_design)
{
    design.motion.No_of_segments = 5;
    user.Expect(
        {"This will set your number system to have a comma as the decimal point\n"
         "and a period as the thousands grouping symbol.\n"
         "This can only be used if your Windows operating system is set for European units."});
    Choose_European_Format(design);
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.motion.No_of_segments, 1);
}

TEST_F(Startup, choosing_the_USA_format_explains_and_keeps_the_design)
{
    design.identity.Number_Format = "Europe";
    design.motion.No_of_segments = 5;
    user.Expect(
        {"This will set your number system to have a period as the decimal point\n"
         "and a comma as the thousands grouping symbol.\n"
         "This can only be used if your Windows operating system is set for US units."});
    Choose_USA_Format(design);
    EXPECT_EQ(design.identity.Number_Format, "USA");
    EXPECT_EQ(design.motion.No_of_segments, 5);
}

}  // namespace
}  // namespace lobemax
