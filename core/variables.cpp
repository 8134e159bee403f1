// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/variables.h"

#include <algorithm>

#include "core/basic_types.h"
#include "core/design_state.h"

namespace lobemax {

namespace {

using enum Unit_Kind;

constexpr unsigned stored = offer::spreadsheet;
constexpr unsigned plot = offer::radial_plot | offer::axial_plot | stored;
constexpr unsigned plot_and_table = plot | offer::table;
constexpr unsigned plot_and_screen_table = plot | offer::screen_table;
constexpr unsigned radial = offer::radial_plot | stored;
constexpr unsigned curve = offer::polar_curve;

constexpr std::array<Variable, var::Last + 1> variables{{
    {var::Angle, {"", "Cam Angle", "", ""}, degrees, Rung::motion, stored},
    {var::S, {"Displcmnt", "Displacement", "Displ ", "S"}, position, Rung::motion, plot_and_screen_table},
    {var::V, {"Velocity", "Velocity", "Veloc", "V"}, position_1, Rung::motion, plot_and_table},
    {var::A, {"Accel", "Acceleration", "Acc", "A"}, position_2, Rung::motion, plot_and_table},
    {var::J, {"Jerk *E3", "Jerk x 10^3", "Jrk", "J"}, position_3, Rung::motion, plot_and_table},
    {var::Phi, {"Phi", "Pressure Angle", "Phi   ", "P"}, degrees, Rung::size, plot_and_table},
    {var::Rho, {"Rho", "Radius of Curvature", "Rho   ", "r"}, length, Rung::size, plot_and_table},
    {var::Force, {"Force-kin", "Force", "Force", "F-kin"}, force, Rung::force, plot_and_table},
    {var::Torque, {"Torque", "Torque", "Torque", "T"}, torque, Rung::force, plot_and_table},
    {var::X, {"X_coord", "X-Cam Profile", "Xcoord", "X"}, length, Rung::profile, radial},
    {var::Y, {"Y_coord", "Y-Cam Profile", "Ycoord", "Y"}, length, Rung::profile, radial},
    {var::Radius, {"Radius", "Cam Profile Radius", "Radius", "R"}, length, Rung::profile, plot},
    {var::Theta, {"Theta", "Cam Profile Theta", "Theta ", "Th"}, Lambda, Rung::profile, plot},
    {var::X_Key, {"X_vs_key", "X-shifted to keyway", "X-shift", "X-kw"}, length, Rung::profile, radial},
    {var::Y_Key, {"Y_vs_key", "Y-shifted to keyway", "Y-shift", "Y-kw"}, length, Rung::profile, radial},
    {var::Friction_Torque, {"Frict Trq", "Friction Torque", "T-frict ", "Fr"}, torque, Rung::force, plot_and_table},
    {var::Flywheel_Torque, {"Flywhl Trq", "Flywheel Torque", "T-Flywl", "Fl"}, torque, Rung::force, plot_and_table},
    {var::Ping, {"Ping *E3", "Ping x 10^3", "Ping", "Pg"}, length_4, Rung::motion, plot_and_table},
    {var::FFT_Real, {"Real FFT", "Real FFT", "Real", "Re"}, none, Rung::fft, plot_and_table},
    {var::FFT_Imag, {"Imag FFT", "Imag FFT", "Imag", "Im"}, none, Rung::fft, plot_and_table},
    {var::FFT_Mag, {"Mag FFT", "Mag FFT", "Mag", "Mg"}, none, Rung::fft, plot_and_table},
    {var::FFT_Phase, {"Ang FFT", "Ang FFT", "Phs", "Ph"}, degrees, Rung::fft, plot_and_table},
    {var::Polydyne_S, {"Polydn S", "Polydn S", "PD-Disp", "Sp"}, length, Rung::polydyne, radial},
    {var::Polydyne_V, {"Polydn V", "Polydn V", "PD-Veloc", "Vp"}, length_1, Rung::polydyne, radial},
    {var::Polydyne_A, {"Polydn A", "Polydn A", "PD-Accel", "Ap"}, length_2, Rung::polydyne, radial},
    {var::Nonpolydyne_X, {"X-nonpolydyn", "X-nonpolydyn", "X-nonplydn", "x-kin"}, length, Rung::polydyne, stored},
    {var::Nonpolydyne_Y, {"Y-nonpolydyn", "Y-nonpolydyn", "Y-nonplydn", "y-kin"}, length, Rung::polydyne, stored},
    {var::Nonpolydyne_Radius, {"R-nonpolydyn", "R-nonpolydyn", "R-nonplydn", "R-kin"}, length, Rung::polydyne, radial},
    {var::Nonpolydyne_Theta,
     {"Th-nonpolydyn", "Th-nonpolydyn", "T-nonplydn", "Th-kin"},
     degrees,
     Rung::polydyne,
     stored},
    {var::Response_Error, {"S - X", "S - X", "s - x", "S - X"}, position, Rung::vibration, plot_and_table},
    {var::Response_X, {"X ", "X ", "x", "X"}, position, Rung::vibration, plot_and_table},
    {var::Response_Xdot, {"X dot", "X dot", "x dot", "Xdot"}, position_1, Rung::vibration, plot_and_table},
    {var::Response_Xddot, {"Xdbl dot", "Xdbl dot", "x ddot", "Xddot"}, position_2, Rung::vibration, plot_and_table},
    {var::Dynamic_Force, {"Force-Dyn", "Force-Dyn", "F dyn", "F-dyn"}, force, Rung::vibration, plot_and_table},
    {var::Radius_Key, {"Radius_key", "Radius_key", "", "R_key"}, length, Rung::profile, radial},
    {var::Theta_Key, {"Theta_key", "Theta_key", "", "Th_key"}, degrees, Rung::profile, radial},
    {var::X_Surface, {"X_Surface", "X_Surface", "", "X_Srf"}, length, Rung::profile, plot},
    {var::Y_Surface, {"Y_Surface", "Y_Surface", "", "Y_Srf"}, Lambda, Rung::profile, plot},
    {var::X_Surface_Key, {"X_Surf_key", "X_Surf_key", "", "X_Srf_key"}, length, Rung::profile, radial},
    {var::Y_Surface_Key, {"Y_Surf_key", "Y_Surf_key", "", "Y_Srf_key"}, length, Rung::profile, radial},
    {var::X_Cutter, {"X_Cutter", "X_Cutter", "", "X_Ctr"}, length, Rung::profile, radial},
    {var::Y_Cutter, {"Y_Cutter", "Y_Cutter", "", "Y_Ctr"}, length, Rung::profile, radial},
    {var::Sigma_Max, {"Sig_max", "Sig_max", "", "Sigmax"}, stress, Rung::stress, plot_and_table},
    {var::Tau_Max, {"Tau_max", "Tau_max", "", "Taumax"}, stress, Rung::stress, plot_and_table},
    {var::Ext_Force, {"Ext Force", "Ext Force", "", "Ext Force"}, force, Rung::external_force, plot_and_table},
    {var::Torque_Integral,
     {"Torque_Integral", "Torque_Integral", "", "Torque_Integral"},
     torque,
     Rung::force,
     plot_and_table},
    {var::World_X, {"World_X", "World_X", "", "World_X"}, length, Rung::profile, radial},
    {var::World_Y, {"World_Y", "", "", "World_Y"}, length, Rung::profile, radial},
    {var::Comp_Torque,
     {"Comp Cam Torque", "", "Comp Cam Torque", "Comp Cam Torque"},
     torque,
     Rung::compensation,
     plot_and_table},
    {var::Net_Torque,
     {"Net Comp Torque", "", "Net Comp Torque", "Net Comp Torque"},
     torque,
     Rung::compensation,
     plot_and_table},
    {var::Time_X, {"X", "", "x", ""}, position, Rung::vibration, stored},
    {var::Time_Xdot, {"X dot", "", "x dot", ""}, position_per_sec, Rung::vibration, stored},
    {var::Time_Xddot, {"X dbl dot", "", "x ddot", ""}, position_per_sec2, Rung::vibration, stored},
    {var::Time_Error, {"S - X", "", "s - x", ""}, position, Rung::vibration, stored},
    {var::Profile_Curve, {"Cam Profile", "", "Profile", ""}, length, Rung::profile, curve},
    {var::Nonpolydyne_Curve, {"Non-Polydyne Profile", "", "NP profile", ""}, length, Rung::polydyne, curve},
    {var::Profile_Key_Curve, {"Cam Profile vs Keyway", "", "", ""}, length, Rung::profile, curve},
    {var::Surface_Curve, {"Cam Surface Profile", "", "", ""}, length, Rung::profile, curve},
    {var::Surface_Key_Curve, {"Cam Surface vs Keyway", "", "", ""}, length, Rung::profile, curve},
    {var::Cutter_Curve, {"Cam Cutter Coord", "", "", ""}, length, Rung::profile, curve},
}};

constexpr bool Rows_Stand_at_Their_Number()
{
    for (std::size_t v = 0; v < variables.size(); ++v)
        if (variables[v].row != static_cast<int>(v))
            return false;
    return true;
}
static_assert(Rows_Stand_at_Their_Number());

struct Renamed_Row {
    int row;
    Variable_Labels labels;
};

/// The rows of the profile as a barrel or linear cam has them: heights Z, and Lambda around or along the cam.
constexpr std::array axial_rows{
    Renamed_Row{var::Z, {"Z-coord", "Z-coord", "Z-coord", "Z"}},
    Renamed_Row{var::Lambda, {"Lambda", "Lambda", "Lambda", "Lm"}},
    Renamed_Row{var::Z_Surface, {"Z_Surface", "Z_Surface", "", "Z_Srf"}},
    Renamed_Row{var::Lambda_Surface, {"Lambda_Surf", "Lambda_Surf", "", "Lm_Srf"}},
    Renamed_Row{var::Z_Cutter, {"Z_Cutter", "Z_Cutter", "", "Z_Ctr"}},
    Renamed_Row{var::Lambda_Cutter, {"Lambda_Ctr", "Lambda_Ctr", "", "Lm_Ctr"}},
};

/// Jerk and ping outside the time base of seconds, in which alone they are kept in thousands.
constexpr std::array unscaled_rows{
    Renamed_Row{var::J, {"Jerk", "Jerk", "Jrk", "J"}},
    Renamed_Row{var::Ping, {"Ping", "Ping", "Ping", "Pg"}},
};

constexpr int no_row = -1;

struct Curve_Rows {
    Coordinate_Rows radial;
    Coordinate_Rows axial;
};

/// From Profile_Curve on.
constexpr std::array curves{
    Curve_Rows{{var::X, var::Y}, {var::Lambda, var::Z}},
    Curve_Rows{{var::Nonpolydyne_X, var::Nonpolydyne_Y}, {no_row, no_row}},
    Curve_Rows{{var::X_Key, var::Y_Key}, {var::Lambda, var::Z}},
    Curve_Rows{{var::X_Surface, var::Y_Surface}, {var::Lambda_Surface, var::Z_Surface}},
    Curve_Rows{{var::X_Surface_Key, var::Y_Surface_Key}, {var::Lambda_Surface, var::Z_Surface}},
    Curve_Rows{{var::X_Cutter, var::Y_Cutter}, {var::Lambda_Cutter, var::Z_Cutter}},
};

const Curve_Rows& Rows_of_Curve(int number)
{
    return curves[Checked_Place(number, var::First_Curve, var::Last)];
}

}  // namespace

std::span<const Variable, var::Last + 1> Variables()
{
    return variables;
}

const Variable& Variable_at(int row)
{
    return variables[Checked_Place(row, 0, var::Last)];
}

Variable_Labels Labels_of(const Design_State& design, int row)
{
    const auto renamed = [row](std::span<const Renamed_Row> rows) {
        const auto found = std::ranges::find(rows, row, &Renamed_Row::row);
        return found == rows.end() ? nullptr : &found->labels;
    };
    const Variable_Labels* words = nullptr;
    if (design.cam.Camtype != "Radial")
        words = renamed(axial_rows);
    if (words == nullptr && design.motion.Time_Base != 1)
        words = renamed(unscaled_rows);
    return words == nullptr ? Variable_at(row).labels : *words;
}

void Name_Variables(Design_State& design)
{
    Plot_Group& p = design.plot;
    for (int v = 0; v <= var::Last; ++v) {
        const Variable_Labels words = Labels_of(design, v);
        p.Var_Name(v) = words.Var_Name;
        p.Var_Long(v) = words.Var_Long;
        p.Var_Short(v - 1) = words.Var_Short;
        p.Var_Symbol(v) = words.Var_Symbol;
    }
}

std::vector<int> Rows_Offered(unsigned where)
{
    std::vector<int> rows;
    for (const Variable& v : variables)
        if ((v.offered & where) != 0)
            rows.push_back(v.row);
    return rows;
}

bool Rung_Done(const Design_State& design, Rung rung)
{
    const Flags_Group& f = design.flags;
    switch (rung) {
    case Rung::motion:
        return f.Calculated;
    case Rung::size:
    case Rung::profile:
        return f.Sized;
    case Rung::force:
        return f.Dynamicflag;
    case Rung::polydyne:
        return f.Polydyne_Calc;
    case Rung::vibration:
        return f.Modelflag;
    case Rung::stress:
        return f.Stressflag;
    case Rung::external_force:
        return f.Ext_Force_Calc;
    case Rung::fft:
        return f.FFT_Done;
    case Rung::compensation:
        return f.CompCam_Calc;
    }
    throw Fault{internal_error};
}

Coordinate_Rows Radial_Coordinates(int curve_number)
{
    return Rows_of_Curve(curve_number).radial;
}

Coordinate_Rows Axial_Coordinates(int curve_number)
{
    const Coordinate_Rows rows = Rows_of_Curve(curve_number).axial;
    if (rows.first == no_row)
        throw Fault{out_of_bounds};
    return rows;
}

}  // namespace lobemax
