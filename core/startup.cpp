// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/startup.h"

#include <array>
#include <utility>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/linkage_setup.h"
#include "core/messages.h"
#include "core/number_format.h"
#include "core/points.h"
#include "core/traps.h"
#include "core/units.h"

namespace lobemax {

namespace {

constexpr int stored_vibration_length = 1000;

void Set_Colours(Plot_Group& p)
{
    p.Red = {255, 0, 0};
    p.Green = {0, 255, 0};
    p.Blue = {0, 0, 255};
    p.Purple = {128, 0, 128};
    p.White = {255, 255, 255};
    p.Black = {0, 0, 0};
    p.Cyan = {0, 255, 255};
    p.Yellow = {255, 255, 0};
    p.Grey = {128, 128, 128};
    p.Magenta = {255, 0, 255};
}

}  // namespace

std::string Program_Title(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    return id.Program_Name + "  " + id.Release_Str + "  (" + id.Release_Year + ")";
}

void Fill_Labels(Design_State& design)
{
    Plot_Group& p = design.plot;
    Name_Variables(design);
    constexpr std::array dimensions{"Disp", "Veloc", "Accel", "Jerk", "Ping"};
    for (int d = 0; d <= 4; ++d)
        p.Fft_Dimension(d) = dimensions[static_cast<std::size_t>(d)];
    p.Axis_Label = "Degrees";
}

bool Initialize(Design_State& design)
{
    return Trap("Initialize in mod_Main", [&] {
        Motion_Group& m = design.motion;
        Cam_Group& c = design.cam;
        Flags_Group& f = design.flags;
        Plot_Group& p = design.plot;

        p.Idx_X = var::Time_X - var::Model_Base;
        p.Idx_Xdot = var::Time_Xdot - var::Model_Base;
        p.Idx_Xddot = var::Time_Xddot - var::Model_Base;
        p.Idx_SX = var::Time_Error - var::Model_Base;
        if (!design.run.Keep_Step) {
            m.Deltatheta = 1.0;
            m.Max_Data_Points_used = 360;
        }
        Trap("Set_Max_Variables in mod_Main", [&] { Set_Max_Variables(design); });
        Dimension_Arrays(design, design.run.Saved_Variables, m.Max_Data_Points_used);
        Dimension_Link_Arrays(design, m.Max_Data_Points_used);

        design.identity.Design_No = 1;
        m.No_of_segments = 1;
        f = Flags_Group{};
        m.Motion = true;
        c.Zoom_Factor = 1.0;
        design.dynamics.Model_Type = 3;
        design.linkage.Drive_End_Effector = false;

        c.Rotflag = -1;
        c.In_Out = -1;
        c.Top_Bot = 1;
        m.Seg = 1;

        MassProp(design);
        design.results.Ode_Time.Dimension(stored_vibration_length);
        design.results.Ode_States.Dimension(3, stored_vibration_length);

        m.Shaft_speed = 1.0;
        Set_Omega_Powers(design);
        c.ArmRad = 1.0;
        c.ArmX = 1.0;
        c.ArmY = 0.0;
        c.Prime_Rad = Shop_Prime_Radius(design, 3.0);
        m.Lift = Shop_Length(design, 1.0);
        c.Offset = 0.0;
        c.Follower_Angle = 0.0;
        c.Keyway_Clockangle = 0;
        c.Shift_Angle = 0.0;
        c.Printstep = 1;
        c.Closure = "Force";
        c.Follow_Rad = Usual_Roller(design).roller;
        c.Cutter_Radius = Usual_Roller(design).cutter;

        for (int i = 1; i <= Max_Segments; ++i)
            m.Orders(i) = 6;
        design.linkage.Assemflag1 = -1;
        design.linkage.Assemflag2 = -1;
        design.linkage.Links = 4;
        Set_Up_Linkage(design, 4);

        Fill_Labels(design);
        Set_Units(design);
        design.identity.Model_Name = "Model1";
        design.identity.Date = Today_Text();
        design.identity.Time = Now_Text();
        Refresh_Screens();
    });
}

void Clear_Segs(Design_State& design)
{
    design.flags.Clearing = true;
    Motion_Group& m = design.motion;
    for (int i = 1; i <= Max_Segments; ++i) {
        m.Rise_Fall_Dwell(i) = "";
        m.Program(i) = "";
        m.Function(i) = "";
        m.Start_Value(i) = "";
        m.End_Value(i) = "";
        m.Beta_Deg(i) = 0.0;
        m.Beta_Rad(i) = 0.0;
        m.Seg_Done(i) = false;
        m.Polydone(i) = false;
        m.No_of_conditions(i) = "";
        m.No_Conditions(i) = 0;
        for (int k = 0; k <= 9; ++k) {
            if (k > 0)
                m.T_boundary_cond(i, k) = "";
            m.S_boundary_cond(i, k) = "";
            m.V_boundary_cond(i, k) = "";
            m.A_boundary_cond(i, k) = "";
            m.J_boundary_cond(i, k) = "";
            m.Pbound(i, k) = "";
        }
        m.EvenKnots(i) = true;
        m.Orders(i) = 6;
        m.Splines_Calculated(i) = false;
    }
    m.Max_Data_Points_used = Points_of_Cycle(m.Deltatheta);
    Apply(design, Event::rows_cleared);
    design.flags.Clearing = false;
}

void Reset_All(Design_State& design)
{
    Design_State fresh;
    fresh.run = design.run;
    fresh.run.Reading_File = false;

    const Identity_Group& id = design.identity;
    fresh.identity.User = id.User;
    fresh.identity.WhichUnit = id.WhichUnit;
    fresh.identity.Number_Format = id.Number_Format;
    fresh.motion.Time_Base = design.motion.Time_Base;
    fresh.cam.Camtype = design.cam.Camtype;
    fresh.cam.Barrel_Type = design.cam.Barrel_Type;
    fresh.cam.Followtype = design.cam.Followtype;
    fresh.cam.Translating = design.cam.Translating;
    fresh.cam.Anim_Delay = design.cam.Anim_Delay;
    if (design.run.Keep_Step) {
        fresh.motion.Deltatheta = design.motion.Deltatheta;
        fresh.motion.Max_Data_Points_used = design.motion.Max_Data_Points_used;
    }
    Set_Colours(fresh.plot);
    design = std::move(fresh);

    Initialize(design);
    Clear_Segs(design);
    design.motion.Motion = true;
    Refresh_Screens();
}

void Choose_USA_Format(Design_State& design)
{
    Show_Message(
        "This will set your number system to have a period as the decimal point\n"
        "and a comma as the thousands grouping symbol.\n"
        "This can only be used if your Windows operating system is set for US units.",
        Buttons::OK, Symbol::information);
    Use_Number_Format(design, "USA");
    Refresh_Screens();
}

void Choose_European_Format(Design_State& design)
{
    Show_Message(
        "This will set your number system to have a comma as the decimal point\n"
        "and a period as the thousands grouping symbol.\n"
        "This can only be used if your Windows operating system is set for European units.",
        Buttons::OK, Symbol::information);
    design.identity.Number_Format = "Europe";
    Reset_All(design);
}

bool Sub_Main(Design_State& design, const std::string& command_line, const Start_Services& services)
{
    return Trap("Sub Main in mod_Main", [&] {
        design = Design_State{};  // the record's own start values are those of the release
        design.run.First_Activate = true;
        if (services.screen_size)
            services.screen_size();
        Set_Max_Variables(design);
        Dimension_Arrays(design, design.run.Saved_Variables, design.motion.Max_Data_Points_used);
        Dimension_Link_Arrays(design, design.motion.Max_Data_Points_used);
        if (services.read_preferences)
            services.read_preferences();
        if (design.motion.Time_Base == 0)
            design.motion.Time_Base = 1;
        design.run.Program_Title = Program_Title(design);
        if (services.register_cam_file)
            services.register_cam_file(design.run.Open_Clicked_File ? "Lobemax" : "Notepad");
        design.run.Keep_Step = false;
        Initialize(design);
        Clear_Segs(design);
        Set_Units(design);
        if (design.run.Open_Clicked_File && !command_line.empty() && services.open_model) {
            services.open_model(command_line);
            Restore_Pointer();
        }
        Set_Colours(design.plot);
        if (services.show_title)
            services.show_title();
        design.cam.Anim_Delay = 500;
        Apply(design, Event::started);
    });
}

}  // namespace lobemax
