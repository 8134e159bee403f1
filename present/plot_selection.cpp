// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/plot_selection.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/text.h"
#include "present/plot_engine.h"

namespace lobemax {

namespace {

struct Style_Entry {
    std::string_view caption;
    Function_Count functions;
};

constexpr std::array styles{
    Style_Entry{"Single Window - One to Four Functions", {1, 4}},
    Style_Entry{"Two Windows - Two Functions", {2, 2}},
    Style_Entry{"Four Windows - Four Functions", {4, 4}},
    Style_Entry{"Polar Plot - One to Four Functions", {1, 4}},
};

const Style_Entry& Style_at(int plot_style)
{
    return styles[Checked_Place(plot_style, style::single_window, style::polar)];
}

void Add(std::vector<int>& list, std::initializer_list<int> more)
{
    for (const int v : more)
        list.push_back(v);
}

std::vector<int> Two_Window_Entries(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    std::vector<int> list{1, 2, 3, 4};
    if (f.Sized) {
        Add(list, {5, 6, 7, 8});
        if (design.cam.Camtype == "Radial")
            Add(list, {23, 24, 25});
    }
    if (f.Dynamicflag)
        Add(list, {9, 10, 11});
    if (f.FFT_Done)
        Add(list, {12, 13});
    if (f.Modelflag)
        Add(list, {14, 15, 16, 17, 21, 22, 27, 28, 29});
    if (f.Polydyne_Calc)
        Add(list, {18, 19, 20});
    if (f.Stressflag)
        Add(list, {26});
    if (f.CompCam_Calc)
        Add(list, {30});
    return list;
}

std::vector<int> Four_Window_Entries(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    const bool plotting = !design.run.Selecting_Print;
    const bool radial = design.cam.Camtype == "Radial";
    std::vector<int> list;
    if (plotting)
        Add(list, {1});
    if (f.Sized) {
        Add(list, {2});
        if (radial)
            Add(list, {3, 4, 15, 16});
    }
    if (f.Dynamicflag && plotting)
        Add(list, {5, 6});
    if (f.FFT_Done)
        Add(list, {7});
    if (f.Modelflag && plotting)
        Add(list, {8, 14});
    if (f.Polydyne_Calc && plotting) {
        Add(list, {9, 10, 11});
        if (radial)
            Add(list, {12, 13});
    }
    if (f.CompCam_Calc)
        Add(list, {17});
    return list;
}

}  // namespace

std::string_view Style_Caption(int plot_style)
{
    return Style_at(plot_style).caption;
}

Function_Count Functions_of_Style(int plot_style)
{
    return Style_at(plot_style).functions;
}

std::vector<int> Load_Names(const Design_State& design, bool to_screen)
{
    const Flags_Group& f = design.flags;
    const bool plotting = !design.run.Selecting_Print;
    const bool radial = design.cam.Camtype == "Radial";
    std::vector<int> list;
    if (plotting || to_screen)
        Add(list, {var::S});
    Add(list, {2, 3, 4, 17});
    if (f.Sized)
        Add(list, {5, 6});
    if (f.Dynamicflag)
        Add(list, {7, 8, 15, 16, 45});
    if (f.Sized && plotting) {
        if (radial)
            Add(list, {9, 10, 11, 12, 13, 14, 34, 35, 36, 37, 38, 39, 40, 41, 46, 47});
        else
            Add(list, {12, 11, 37, 36});
    }
    if (radial && f.Polydyne_Calc && plotting)
        Add(list, {22, 23, 24, 27});
    if (f.Modelflag)
        Add(list, {29, 30, 31, 32, 33});
    if (f.Stressflag)
        Add(list, {42, 43});
    if (f.Ext_Force_Calc)
        Add(list, {44});
    if (f.FFT_Done)
        Add(list, {18, 19, 20, 21});
    if (f.CompCam_Calc)
        Add(list, {48, 49});
    return list;
}

std::vector<int> Composite_Choices(const Design_State& design)
{
    std::vector<int> list;
    if (!design.flags.Sized || design.cam.Camtype != "Radial")
        return list;
    Add(list, {54});
    if (design.flags.Polydyne_Calc)
        Add(list, {55});
    Add(list, {56, 57, 58, 59});
    return list;
}

Coordinate_Rows Rows_of_Composite(int choice)
{
    constexpr std::array rows{Coordinate_Rows{9, 10},  Coordinate_Rows{25, 26}, Coordinate_Rows{13, 14},
                              Coordinate_Rows{36, 37}, Coordinate_Rows{38, 39}, Coordinate_Rows{40, 41}};
    return rows[Checked_Place(choice, 54, 59)];
}

std::optional<int> Variable_Picked(const Design_State& design, std::span<const int> list, std::string_view name)
{
    const std::string word = Trim(name);
    const auto found =
        std::find_if(list.begin(), list.end(), [&](int v) { return Trim(design.plot.Var_Name(v)) == word; });
    return found == list.end() ? std::nullopt : std::optional(*found);
}

bool Is_Offered(const Design_State& design, int choice)
{
    const auto among = [choice](const std::vector<int>& list) {
        return std::find(list.begin(), list.end(), choice) != list.end();
    };
    if (among(Load_Names(design)) || among(Composite_Choices(design)))
        return true;
    for (const int plot_style : {style::two_windows, style::four_windows, style::polar})
        for (const int entry : Load_Presets(design, plot_style))
            if (among(Presets_of_Style(plot_style)[static_cast<std::size_t>(entry - 1)].variables))
                return true;
    return false;
}

std::string Why_Not_Together(int plot_style, std::span<const int> variables)
{
    const auto harmonics = std::count_if(variables.begin(), variables.end(), Is_Fourier);
    const auto functions = std::count_if(variables.begin(), variables.end(), [](int v) { return v != 0; });
    if (harmonics == 0)
        return {};
    if (plot_style == style::polar)
        return "A polar plot goes over the cam angle: the harmonics of a Fourier transform have no place in it.";
    if (plot_style == style::single_window && harmonics < functions)
        return "The harmonics of a Fourier transform and functions of the cam angle cannot share a window.";
    return {};
}

const std::vector<Plot_Preset>& Presets_of_Style(int plot_style)
{
    static const std::vector<Plot_Preset> two{
        {"Displacement and Velocity", {1, 2}},
        {"Velocity and Acceleration", {2, 3}},
        {"Acceleration and Displacement", {3, 1}},
        {"Jerk and Acceleration", {4, 3}},
        {"Pressure Angle and Radius of Curvature", {5, 6}},
        {"R-Theta cam coordinates", {11, 12}},
        {"Cam Profile: X-Y cam follower coordinates versus Cam Zero", {9, 10}},
        {"Cam Profile: X-Y cam follower coordinates versus Machine Zero", {13, 14}},
        {"Follower Force and Total Torque", {7, 8}},
        {"Total Torque and Flywheel Torque", {8, 16}},
        {"Friction Torque and Total Torque", {15, 8}},
        {"Magnitude and Phase Components of Current FFT", {20, 21}},
        {"Real and Imaginary Components of Current FFT", {18, 19}},
        {"Dynamic Response:  X and X dot", {30, 31}},
        {"Dynamic Response:  X and X double dot", {30, 32}},
        {"Dynamic Response:  X dot and X double dot", {31, 32}},
        {"Dynamic Error:  X and Error Function (S - X)", {30, 29}},
        {"Polydyne cam:  Displacements of Cam and Follower", {22, 30}},
        {"Polydyne cam:  Velocities of Cam and Follower", {23, 31}},
        {"Polydyne cam:  Accelerations of Cam and Follower", {24, 32}},
        {"Kinetostatic Force and Dynamic Force", {7, 33}},
        {"Kinematic Acceleration and Dynamic Acceleration", {3, 32}},
        {"Cam Surface: X-Y cam surface coordinates versus Cam Zero", {36, 37}},
        {"Cam Surface: X-Y cam surface coordinates versus Machine Zero", {38, 39}},
        {"Cam Cutter: X-Y cam cutter CL coordinates versus Cam Zero", {40, 41}},
        {"Stresses: Normal and shear stress in cam and follower", {42, 43}},
        {"Kinetostatic force and Dynamic force on cam and follower", {7, 33}},
        {"Kinematic Acceleration and Dynamic Acceleration of follower", {3, 32}},
        {"Kinematic Velocity and Dynamic Velocity of follower", {2, 31}},
        {"Primary Torque and Compensating Torque", {8, 48}},
    };
    static const std::vector<Plot_Preset> four{
        {"Displacement, Velocity, Acceleration, Jerk", {1, 2, 3, 4}},
        {"Press Angle, Velocity, Radius of Curvature, Acceleration", {5, 2, 6, 3}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Cam zero", {9, 10, 11, 12}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Machine Zero", {13, 14, 34, 35}},
        {"Displacement, Force, Velocity, Torque", {1, 7, 2, 8}},
        {"Force, Torque, Friction Torque, Flywheel Torque", {7, 8, 15, 16}},
        {"Current FFT:  Real, Imag, Magnitude, Phase", {18, 19, 20, 21}},
        {"Dynamic Response: (S - X), X, X dot, X double dot", {29, 30, 31, 32}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Cam Veloc, Cam Accel", {30, 22, 23, 24}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Veloc, Cam Veloc", {30, 22, 31, 23}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Accel, Cam Accel", {30, 22, 32, 24}},
        {"Polydyne Cam: Polydyne Cam profile X, Y, Kinematic Cam profile X, Y", {9, 10, 25, 26}},
        {"Polydyne Cam: Polydyne Cam profile R, T, Kinematic Cam profile R, T", {11, 12, 27, 28}},
        {"Acceleration, x ddot, Kinetostatic Force and Dynamic Force", {3, 32, 7, 33}},
        {"Cam Surface: X-surf, Y-surf, X-Cutter, Y-Cutter versus Cam zero", {36, 37, 40, 41}},
        {"Cam Surface: X-surf, Y-surf, Radius, Theta versus Machine Zero", {38, 39, 34, 35}},
        {"Torque, Compensating Torque, Net Torque, Force", {8, 48, 49, 7}},
    };
    static const std::vector<Plot_Preset> polar_only{
        {"Polydyne Cam profile vs. Kinematic Cam profile", {54, 55}},
    };
    static const std::vector<Plot_Preset> none;
    switch (plot_style) {
    case style::two_windows:
        return two;
    case style::four_windows:
        return four;
    case style::polar:
        return polar_only;
    default:
        return none;
    }
}

std::vector<int> Load_Presets(const Design_State& design, int plot_style)
{
    switch (plot_style) {
    case style::two_windows:
        return Two_Window_Entries(design);
    case style::four_windows:
        return Four_Window_Entries(design);
    case style::polar:
        return design.flags.Polydyne_Calc ? std::vector<int>{1} : std::vector<int>{};
    default:
        return {};
    }
}

void Choose_Preset2(Design_State& design, int plot_style, int entry)
{
    const std::vector<Plot_Preset>& presets = Presets_of_Style(plot_style);
    Select_OK(design, plot_style, presets[Checked_Place(entry, 1, static_cast<int>(presets.size()))].variables);
}

std::vector<std::string> Load_SegmentList(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    std::vector<std::string> list{"All"};
    for (int i = 1; i <= m.No_of_segments; ++i) {
        const std::string& kind = m.Rise_Fall_Dwell(i);
        const bool marked = kind == "D" || kind == "P" || kind == "S";
        list.push_back(std::to_string(i) + "  " + (marked ? "[" + kind + "]" : kind));
    }
    return list;
}

int Segment_of_Entry(const Design_State& design, std::string_view entry)
{
    int segment = 0;
    std::from_chars(entry.data(), entry.data() + entry.size(), segment);
    return segment >= 1 && segment <= design.motion.No_of_segments ? segment : 0;
}

void Pick_Segment(Design_State& design, std::string_view entry)
{
    const Motion_Group& m = design.motion;
    Plot_Group& p = design.plot;
    const int segment = Segment_of_Entry(design, entry);
    p.Segment_Pick = segment == 0 ? "All" : std::string(entry);
    p.Plot_First = segment == 0 ? Single(0.0) : m.Shift(segment);
    p.Plot_Last = segment == 0 ? Single(360.0) : m.Gamma(segment);
}

bool Select_OK(Design_State& design, int plot_style, std::span<const int> variables)
{
    const Function_Count functions = Functions_of_Style(plot_style);
    Plot_Group& p = design.plot;
    p.Plot_Vars.Fill(0);
    p.Num_Sets = 0;
    for (const int v : variables)
        if (v != 0 && p.Num_Sets < functions.most) {
            p.Num_Sets += 1;
            p.Plot_Vars(p.Num_Sets) = v;
        }
    return p.Num_Sets >= functions.least;
}

}  // namespace lobemax
