// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile.h"

#include <algorithm>

#include "camgeom/arm.h"
#include "camgeom/profile_rows.h"
#include "core/design_state.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"

namespace lobemax {

namespace {

using namespace formulas;

/// The rows of the table that a profile is worked out from, and those that it is.
Profile_Rows Rows_of(Design_State& design)
{
    Results_Group& r = design.results;
    Table<Single>& data = r.CalcData;
    const bool polydyne = design.flags.Polydyne_Calc;
    Profile_Rows rows{.theta = Bits(data.Points(var::Angle)),
                      .S = Bits(data.Points(var::S)),
                      .s = Bits(data.Points(polydyne ? 22 : var::S)),
                      .v = Bits(data.Points(polydyne ? 23 : var::V)),
                      .Phi = Bits(data.Points(var::Phi)),
                      .ratio_S = design.linkage.Drive_End_Effector ? Bits(r.Link_Ratio_S.Points()) : nullptr,
                      .row = {},
                      .pivot_x = Bits(r.Arm_Pivot_X.Points()),
                      .pivot_y = Bits(r.Arm_Pivot_Y.Points())};
    for (const int row : {9, 10, 11, 12, 13, 14, 34, 35, 36, 37, 38, 39, 40, 41})
        rows.row[row] = Bits(data.Points(row));
    return rows;
}

/// A point into its place in the table, with the fault of a value that is no finite Single.
void Store(Table<Single>& data, int i, const Radial_Point<double>& p)
{
    data(9, i) = p.center.x;
    data(10, i) = p.center.y;
    data(11, i) = p.radius;
    data(12, i) = p.angle;
    data(13, i) = p.center_key.x;
    data(14, i) = p.center_key.y;
    const Polar<double> key = p.Key_Polar();
    data(34, i) = key.radius;
    data(35, i) = key.angle;
    data(36, i) = p.surface.x;
    data(37, i) = p.surface.y;
    data(38, i) = p.surface_key.x;
    data(39, i) = p.surface_key.y;
    data(40, i) = p.cutter.x;
    data(41, i) = p.cutter.y;
}

void Store(Table<Single>& data, int i, const Axial_Point<double>& p)
{
    data(11, i) = p.Z;
    data(12, i) = p.Lambda;
    data(36, i) = p.surface_Z;
    data(37, i) = p.surface_Lambda;
}

/// What a formula takes of the motion at a point.
struct Motion_at {
    double theta;
    double S;  // row 1
    double s;
    double v;
    double phi;
    double ratio_S;

    Motion_at(const Design_State& design, int i)
        : theta(design.results.CalcData(var::Angle, i)),
          S(design.results.CalcData(var::S, i)),
          s(design.results.CalcData(design.flags.Polydyne_Calc ? 22 : var::S, i)),
          v(design.results.CalcData(design.flags.Polydyne_Calc ? 23 : var::V, i)),
          phi(design.results.CalcData(var::Phi, i)),
          ratio_S(Link_Ratios(design, i).S)
    {
    }
};

/// Runs a formula over the points; at_point(m) is the same formula at one of them, for what the kernel leaves.
template <class Formula, class At_Point>
void Fill(Design_State& design, std::size_t count, const Formula& formula, Profile_Kernels::Kernel<Formula> kernel,
          const At_Point& at_point)
{
    const Profile_Rows rows = Rows_of(design);
    Run_Points(
        count, [&](std::size_t first, std::size_t points) { return kernel(formula, rows, first, points); },
        [&](std::size_t i) {
            const int point = static_cast<int>(i);
            Store(design.results.CalcData, point, at_point(Motion_at(design, point)));
        });
}

Radial_Cam Radial_Cam_of(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    const Single machine_zero = -1.0 * (c.Rotflag * c.Shift_Angle) * Rad_per_Deg;
    return {.rot = double(c.Rotflag),
            .machine_zero = Sin_Cos(double{machine_zero}),
            .Follow_Rad = c.Follow_Rad,
            .Cutter_Radius = c.Cutter_Radius,
            .displacement = {.conjugate = c.Conjugate, .lift = design.motion.Liftmax}};
}

/// Velocity per radian of cam. docs/theory.md, (60).
Scale Velocity_per_Radian(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    return m.Time_Base == 1 ? Scale{1.0, m.Shaft_speed} : m.Time_Base == 2 ? Scale{180.0, PI} : Scale{};
}

/// A translating follower: roller (92), (93), (95), (96), flat face (69), (97) of docs/theory.md.
/// @throws Fault{5} for an offset above the prime radius
void Translating_Profile(Design_State& design, std::size_t count)
{
    const Cam_Group& c = design.cam;
    const Profile_Kernels& kernels = Kernels_in_Use<Profile_Kernels>();
    // For a conjugate the root holds the sum of the squares: meant. Mechanics has the difference on both sides; the
    // whole cam is larger by e^2 / r_p, 0.81 mm for a prime radius of 61 and an offset of 7.04.
    const double height = Sqr(c.Prime_Rad * c.Prime_Rad - c.Offset * c.Offset * c.Side_Sign);
    if (c.Followtype == 1) {
        const Translating_Roller_Profile formula{
            .cam = Radial_Cam_of(design), .height = height, .offset = c.Offset, .In_Out = double(c.In_Out)};
        Fill(design, count, formula, kernels.translating_roller,
             [&](const Motion_at& m) { return formula(m.theta, m.s, m.phi, m.ratio_S); });
    } else {
        const Translating_Flat_Profile formula{.cam = Radial_Cam_of(design),
                                               .height = height,
                                               .side = double(c.Side_Sign),
                                               .per_radian_V = Velocity_per_Radian(design)};
        Fill(design, count, formula, kernels.translating_flat,
             [&](const Motion_at& m) { return formula(m.theta, m.s, m.v, m.ratio_S); });
    }
}

/// The points of an arm's cam. What the kernel leaves is worked out by `at_point(m, place)`, after what the arm has to
/// tell; where its triangle has no side the profile ends there, with Calc_Error. The last point leaves Arm_Work_Angle.
template <class Formula, class At_Point>
void Fill_Arm(Design_State& design, std::size_t count, const Formula& formula, Profile_Kernels::Kernel<Formula> kernel,
              const At_Point& at_point)
{
    Results_Group& r = design.results;
    const Cam_Group& c = design.cam;
    const Profile_Rows rows = Rows_of(design);
    const auto arm_at = [&](const Motion_at& m, Arm_Place& place) {
        const bool meets =
            Arm_Position(design, formula.arm.Gamma(m.s, m.ratio_S), c.Arm_Pivot_Angle - c.Rotflag * m.theta, place);
        design.flags.Calc_Error = !meets;
        return meets;
    };
    std::size_t told = count;  // the last point that the arm told of
    Run_Points(
        count,
        [&](std::size_t first, std::size_t points) {
            return design.flags.Calc_Error ? points : kernel(formula, rows, first, points);
        },
        [&](std::size_t i) {
            const int point = static_cast<int>(i);
            const Motion_at m(design, point);
            Arm_Place place;
            told = i;
            if (!arm_at(m, place))
                return;
            r.Arm_Pivot_X(point) = place.Px;
            r.Arm_Pivot_Y(point) = place.Py;
            Store(r.CalcData, point,
                  at_point(m, {.pivot = {r.Arm_Pivot_X(point), r.Arm_Pivot_Y(point)},
                               .R = place.R,
                               .theta_c = place.theta_c,
                               .center = {place.X, place.Y},
                               .closes = true})
                      .point);
        });
    if (Arm_Place place; !design.flags.Calc_Error && told != count - 1)
        arm_at(Motion_at(design, static_cast<int>(count) - 1), place);
}

/// A follower on an arm: roller (77), (94) to (96), flat face (86), (98) of docs/theory.md.
///
/// The flat face's cutter is turned by the swing s, nu = rot s + A + 90 deg: meant. Mechanics has nu = A + 90 deg; of a
/// cutter of 6 mm the centre is 2.1 mm off at a swing of 20 deg, right in the dwell at s = 0.
void Oscillating_Profile(Design_State& design, std::size_t count)
{
    using Place = Oscillating_Cam::Place<double>;
    const Cam_Group& c = design.cam;
    const Profile_Kernels& kernels = Kernels_in_Use<Profile_Kernels>();
    const Oscillating_Cam arm{.cam = Radial_Cam_of(design),
                              .triangle = {c.Arm_Pivot_Dist, c.ArmRad},
                              .start_angle = c.Arm_Start_Angle,
                              .pivot_angle = c.Arm_Pivot_Angle,
                              .turn_sense = double(c.ArmDirect * c.Side_Sign),
                              .normal_sign = double(-(c.In_Out * c.Side_Sign) * c.ArmDirect)};
    if (c.Followtype == 1) {
        const Oscillating_Roller_Profile formula{arm};
        Fill_Arm(design, count, formula, kernels.oscillating_roller,
                 [&](const Motion_at& m, const Place& place) { return formula.From(place, m.phi); });
        return;
    }
    Oscillating_Flat_Profile formula{arm, {}};
    if (Flat_Osc_Motion(design, c.ArmX, c.ArmY, formula.contact))
        Fill_Arm(design, count, formula, kernels.oscillating_flat, [&](const Motion_at& m, const Place& place) {
            return formula.From(place, formula.contact(m.s, m.v, m.theta), m.S);
        });
}

/// All points of a radial cam; stops with Calc_Error where the arm closes no triangle.
void Radial_Profile(Design_State& design)
{
    Results_Group& r = design.results;
    const int last = design.motion.Max_Data_Points_used;
    const auto count = static_cast<std::size_t>(last + 1);
    design.flags.Calc_Error = false;
    // The rows that are written and the ratios that divide have a place for every point.
    Checked_Place(last, 0, r.CalcData.Last_Point());
    Link_Ratios(design, last);
    if (design.cam.Translating)
        return Translating_Profile(design, count);
    Arm_Geometry(design);
    if (design.flags.Calc_Error)
        return;
    Checked_Place(last, 0, std::min(r.Arm_Pivot_X.Last(), r.Arm_Pivot_Y.Last()));
    Oscillating_Profile(design, count);
}

/// Told of by a message.
bool No_Prime_Radius(Design_State& design)
{
    if (design.cam.Prime_Rad != 0.0)
        return false;
    Show_Message(" Your prime circle radius is zero - Please provide a positive value.", Buttons::OK,
                 Symbol::information);
    design.flags.Calc_Error = true;
    return true;
}

/// All points of a barrel or linear cam: docs/theory.md, (102) to (105); stops with Calc_Error where there are none.
void Axial_Profile(Design_State& design)
{
    const Cam_Group& c = design.cam;
    Table<Single>& data = design.results.CalcData;
    const int last = design.motion.Max_Data_Points_used;
    const auto count = static_cast<std::size_t>(last + 1);
    Checked_Place(last, 0, data.Last_Point());
    const Profile_Kernels& kernels = Kernels_in_Use<Profile_Kernels>();
    Axial_Cam cam{.rot = double(c.Rotflag),
                  .prime = c.Prime_Rad,
                  .Follow_Rad = c.Follow_Rad,
                  .linear = c.Camtype == "Linear",
                  .length = c.Prime_Rad * PI2,
                  .sign = double(c.Top_Bot)};
    if (c.Translating) {
        if (No_Prime_Radius(design))
            return;
        const Translating_Axial_Profile formula{cam};
        Fill(design, count, formula, kernels.translating_axial,
             [&](const Motion_at& m) { return formula(m.theta, m.S, m.phi); });
    } else {
        cam.sign = -(Sgn(c.ArmX) * c.Top_Bot);
        Oscillating_Axial_Profile formula{cam, {}, {}};
        if (!Axial_Osc_Motion(design, c.Prime_Rad, c.ArmX, c.ArmY, c.ArmRad, formula.arm) ||
            !Axial_Osc_Phi_Formula(design, c.ArmX, c.ArmY, c.ArmRad, formula.Phi) || No_Prime_Radius(design))
            return;
        Fill(design, count, formula, kernels.oscillating_axial,
             [&](const Motion_at& m) { return formula(m.theta, m.S, m.v); });
    }
    for (const int row : {9, 10, 13, 14, 34, 35, 38, 39, 40, 41})
        std::fill_n(data.Points(row).begin(), count, Single{});
}

}  // namespace

void Cam_Profile(Design_State& design)
{
    if (design.flags.Starting)
        return;
    Set_Keyway_Angle(design);
    Set_Machine_Zero(design);
    if (design.cam.Camtype == "Radial")
        Radial_Profile(design);
    else
        Axial_Profile(design);
}

void Set_Keyway_Angle(Design_State& design)
{
    Cam_Group& c = design.cam;
    const std::string& text = c.Keyway_Text;
    int angle = 0;
    if (text == "3 O'clock")
        angle = 90;
    else if (text == "6 O'clock")
        angle = 180;
    else if (text == "9 O'clock")
        angle = 270;
    c.Keyway_Clockangle = c.Rotflag * angle;
}

void Set_Machine_Zero(Design_State& design)
{
    Cam_Group& c = design.cam;
    c.Cam_Shift_Angle = c.Translating ? c.Rotflag * c.Follower_Angle - c.Shift_Angle : -c.Shift_Angle;
    c.Cam_Shift_Sign_Angle = c.Translating ? -c.Cam_Shift_Angle : c.Rotflag * c.Cam_Shift_Angle;
    c.Cam_Draw_Angle = Integer(c.Keyway_Clockangle - c.Rotflag * 90) + c.Cam_Shift_Angle;
}

}  // namespace lobemax
