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

/// Adds what a rung fills and a list wants. The coordinates of an axial cam stand Lambda before Z, as in its machining
/// files.
void Add_Rows(std::vector<int>& list, Rung rung, unsigned wanted)
{
    const auto add = [&](const Variable& v) {
        if (v.rung == rung && (v.offered & wanted) != 0)
            list.push_back(v.row);
    };
    if (rung == Rung::profile && wanted == offer::axial_plot) {
        for (const int curve : {var::Profile_Curve, var::Surface_Curve, var::Cutter_Curve}) {
            const Coordinate_Rows rows = Axial_Coordinates(curve);
            add(Variable_at(rows.first));
            add(Variable_at(rows.second));
        }
        return;
    }
    std::ranges::for_each(Variables(), add);
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
    const bool plotting = !design.run.Selecting_Print;
    const bool radial = design.cam.Camtype == "Radial";
    const unsigned wanted = plotting    ? radial ? offer::radial_plot : offer::axial_plot
                            : to_screen ? offer::table | offer::screen_table
                                        : offer::table;
    std::vector<int> list;
    for (int rung = static_cast<int>(Rung::motion); rung <= static_cast<int>(Rung::compensation); ++rung) {
        const Rung now = static_cast<Rung>(rung);
        if (now == Rung::motion || Rung_Done(design, now))
            Add_Rows(list, now, wanted);
    }
    return list;
}

std::vector<int> Composite_Choices(const Design_State& design)
{
    std::vector<int> list;
    if (design.flags.Sized && design.cam.Camtype == "Radial")
        for (const int curve : Rows_Offered(offer::polar_curve))
            if (Rung_Done(design, Variable_at(curve).rung))
                list.push_back(curve);
    return list;
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

std::string Note_on_Transform(const Design_State& design)
{
    if (design.flags.FFT_Done || !design.flags.Calculated || !design.flags.File_Loaded)
        return {};
    const auto harmonics = design.results.CalcData.Points(var::FFT_Mag);
    const bool any = std::any_of(harmonics.begin(), harmonics.end(), [](Single value) { return value != 0.0; });
    return any ? std::string(Transform_not_Kept) : std::string();
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
        {"Displacement and Velocity", {var::S, var::V}},
        {"Velocity and Acceleration", {var::V, var::A}},
        {"Acceleration and Displacement", {var::A, var::S}},
        {"Jerk and Acceleration", {var::J, var::A}},
        {"Pressure Angle and Radius of Curvature", {var::Phi, var::Rho}},
        {"R-Theta cam coordinates", {var::Radius, var::Theta}},
        {"Cam Profile: X-Y cam follower coordinates versus Cam Zero", {var::X, var::Y}},
        {"Cam Profile: X-Y cam follower coordinates versus Machine Zero", {var::X_Key, var::Y_Key}},
        {"Follower Force and Total Torque", {var::Force, var::Torque}},
        {"Total Torque and Flywheel Torque", {var::Torque, var::Flywheel_Torque}},
        {"Friction Torque and Total Torque", {var::Friction_Torque, var::Torque}},
        {"Magnitude and Phase Components of Current FFT", {var::FFT_Mag, var::FFT_Phase}},
        {"Real and Imaginary Components of Current FFT", {var::FFT_Real, var::FFT_Imag}},
        {"Dynamic Response:  X and X dot", {var::Response_X, var::Response_Xdot}},
        {"Dynamic Response:  X and X double dot", {var::Response_X, var::Response_Xddot}},
        {"Dynamic Response:  X dot and X double dot", {var::Response_Xdot, var::Response_Xddot}},
        {"Dynamic Error:  X and Error Function (S - X)", {var::Response_X, var::Response_Error}},
        {"Polydyne cam:  Displacements of Cam and Follower", {var::Polydyne_S, var::Response_X}},
        {"Polydyne cam:  Velocities of Cam and Follower", {var::Polydyne_V, var::Response_Xdot}},
        {"Polydyne cam:  Accelerations of Cam and Follower", {var::Polydyne_A, var::Response_Xddot}},
        {"Kinetostatic Force and Dynamic Force", {var::Force, var::Dynamic_Force}},
        {"Kinematic Acceleration and Dynamic Acceleration", {var::A, var::Response_Xddot}},
        {"Cam Surface: X-Y cam surface coordinates versus Cam Zero", {var::X_Surface, var::Y_Surface}},
        {"Cam Surface: X-Y cam surface coordinates versus Machine Zero", {var::X_Surface_Key, var::Y_Surface_Key}},
        {"Cam Cutter: X-Y cam cutter CL coordinates versus Cam Zero", {var::X_Cutter, var::Y_Cutter}},
        {"Stresses: Normal and shear stress in cam and follower", {var::Sigma_Max, var::Tau_Max}},
        {"Kinetostatic force and Dynamic force on cam and follower", {var::Force, var::Dynamic_Force}},
        {"Kinematic Acceleration and Dynamic Acceleration of follower", {var::A, var::Response_Xddot}},
        {"Kinematic Velocity and Dynamic Velocity of follower", {var::V, var::Response_Xdot}},
        {"Primary Torque and Compensating Torque", {var::Torque, var::Comp_Torque}},
    };
    static const std::vector<Plot_Preset> four{
        {"Displacement, Velocity, Acceleration, Jerk", {var::S, var::V, var::A, var::J}},
        {"Press Angle, Velocity, Radius of Curvature, Acceleration", {var::Phi, var::V, var::Rho, var::A}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Cam zero", {var::X, var::Y, var::Radius, var::Theta}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Machine Zero",
         {var::X_Key, var::Y_Key, var::Radius_Key, var::Theta_Key}},
        {"Displacement, Force, Velocity, Torque", {var::S, var::Force, var::V, var::Torque}},
        {"Force, Torque, Friction Torque, Flywheel Torque",
         {var::Force, var::Torque, var::Friction_Torque, var::Flywheel_Torque}},
        {"Current FFT:  Real, Imag, Magnitude, Phase", {var::FFT_Real, var::FFT_Imag, var::FFT_Mag, var::FFT_Phase}},
        {"Dynamic Response: (S - X), X, X dot, X double dot",
         {var::Response_Error, var::Response_X, var::Response_Xdot, var::Response_Xddot}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Cam Veloc, Cam Accel",
         {var::Response_X, var::Polydyne_S, var::Polydyne_V, var::Polydyne_A}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Veloc, Cam Veloc",
         {var::Response_X, var::Polydyne_S, var::Response_Xdot, var::Polydyne_V}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Accel, Cam Accel",
         {var::Response_X, var::Polydyne_S, var::Response_Xddot, var::Polydyne_A}},
        {"Polydyne Cam: Polydyne Cam profile X, Y, Kinematic Cam profile X, Y",
         {var::X, var::Y, var::Nonpolydyne_X, var::Nonpolydyne_Y}},
        {"Polydyne Cam: Polydyne Cam profile R, T, Kinematic Cam profile R, T",
         {var::Radius, var::Theta, var::Nonpolydyne_Radius, var::Nonpolydyne_Theta}},
        {"Acceleration, x ddot, Kinetostatic Force and Dynamic Force",
         {var::A, var::Response_Xddot, var::Force, var::Dynamic_Force}},
        {"Cam Surface: X-surf, Y-surf, X-Cutter, Y-Cutter versus Cam zero",
         {var::X_Surface, var::Y_Surface, var::X_Cutter, var::Y_Cutter}},
        {"Cam Surface: X-surf, Y-surf, Radius, Theta versus Machine Zero",
         {var::X_Surface_Key, var::Y_Surface_Key, var::Radius_Key, var::Theta_Key}},
        {"Torque, Compensating Torque, Net Torque, Force",
         {var::Torque, var::Comp_Torque, var::Net_Torque, var::Force}},
    };
    static const std::vector<Plot_Preset> polar_only{
        {"Polydyne Cam profile vs. Kinematic Cam profile", {var::Profile_Curve, var::Nonpolydyne_Curve}},
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
