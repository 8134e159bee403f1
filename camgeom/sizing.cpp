// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/sizing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <string>

#include "camgeom/arm.h"
#include "camgeom/profile.h"
#include "camgeom/size_rows.h"
#include "core/design_state.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"

namespace lobemax {

namespace {

constexpr double practically_infinite = 99999.0;

/// An extreme of a row and the first point that has it; none where the row does not reach the value it started from.
struct Extreme {
    double value;
    std::optional<std::size_t> place{};

    Single Angle(std::span<const Single> theta) const { return place ? theta[*place] : Single{}; }
};

using namespace formulas;

std::size_t Points_in_Use(const Design_State& design)
{
    return static_cast<std::size_t>(design.motion.Max_Data_Points_used + 1);
}

/// The motion rows in force.
struct Motion_Rows {
    const Design_State& design;
    std::span<const Single> theta = design.results.CalcData.Points(var::Angle);
    std::span<const Single> s = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 22 : var::S);
    std::span<const Single> v = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 23 : var::V);
    std::span<const Single> a = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 24 : var::A);

    Size_Rows For_Kernels() const
    {
        const Results_Group& r = design.results;
        const bool driven = design.linkage.Drive_End_Effector;
        const auto ratio = [&](const Row<Single>& row) { return driven ? Bits(row.Points()) : nullptr; };
        return {.s = Bits(s),
                .v = Bits(v),
                .a = Bits(a),
                .Phi = Bits(r.CalcData.Points(var::Phi)),
                .ratio_S = ratio(r.Link_Ratio_S),
                .ratio_V = ratio(r.Link_Ratio_V),
                .ratio_A = ratio(r.Link_Ratio_A)};
    }
};

/// Runs a formula over all points of a row; odd(i) works a point out that the kernel leaves.
template <class Formula, class Odd>
void Fill(const Formula& formula, Size_Kernels::Kernel<Formula> kernel, const Motion_Rows& m, std::span<Single> to,
          const Odd& odd)
{
    const Size_Rows rows = m.For_Kernels();
    Run_Points(
        to.size(), [&](std::size_t first, std::size_t count) { return kernel(formula, rows, Bits(to), first, count); },
        odd);
}

/// The point is stored by the formula itself, for the fault of a value that is no finite Single.
template <class Formula, class... Row>
auto By_Formula(const Formula& formula, std::span<Single> to, const Row&... rows)
{
    return [&formula, to, rows...](std::size_t i) { to[i] = formula(double{rows[i]}...); };
}

/// Velocity and acceleration per radian of cam, as the translating follower takes them: docs/theory.md, (60). In the
/// degrees base the acceleration is scaled once only, which is meant: it undoes the single factor of the stored rows.
Scale Per_Radian(const Design_State& design, double per_second)
{
    const int base = design.motion.Time_Base;
    return base == 1 ? Scale{1.0, per_second} : base == 2 ? Scale{180.0, PI} : Scale{};
}

Translating_Motion Translating(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    return {.conjugate = design.cam.Conjugate,
            .lift = m.Liftmax,
            .per_radian_V = Per_Radian(design, m.Shaft_speed),
            .per_radian_A = Per_Radian(design, m.Shaft_Speed_Sq)};
}

/// The same for the curvature of a translating axial cam, over the prime radius. In the degrees base the factor stands
/// the other way round than for the pressure angle: meant. Mechanics has 180 / pi as there; Rho comes out up to 3283
/// times too large, and shows little but its limit. docs/theory.md, 6.3.
Scale Per_Axial_Radian(const Design_State& design, double per_second, double prime)
{
    const int base = design.motion.Time_Base;
    return base == 1 ? Scale{1.0, prime * per_second} : base == 2 ? Scale{Rad_per_Deg, prime} : Scale{1.0, prime};
}

/// Motion of an arm in degrees, brought to radians per radian of cam, for the curvature of a radial cam.
/// docs/theory.md, (61).
Scale Arm_Per_Radian(const Design_State& design, double per_second)
{
    const int base = design.motion.Time_Base;
    return base == 1 ? Scale{Rad_per_Deg, per_second} : base == 3 ? Scale{Rad_per_Deg, 1.0} : Scale{};
}

// ---- Phi by configuration

/// Slope of the unrolled track, degrees. docs/theory.md, (72). A prime radius of zero gives +-90, or error 6 or 11.
void Fill_Phi_Translating_Axial(const Motion_Rows& m, std::span<Single> Phi)
{
    const Phi_Translating_Axial formula{Translating(m.design).per_radian_V, m.design.cam.Prime_Rad};
    Fill(formula, Kernels_in_Use<Size_Kernels>().phi_translating_axial, m, Phi, By_Formula(formula, Phi, m.v));
}

/// Angle between the stem and the contact normal, degrees; positive where a rise pushes the stem aside.
/// docs/theory.md, (66). @throws Fault{5} for an offset above the prime radius
void Fill_Phi_Translating_Roller(const Motion_Rows& m, std::span<Single> Phi)
{
    const Cam_Group& c = m.design.cam;
    const Phi_Translating_Roller formula{.motion = Translating(m.design),
                                         .offset = c.Offset,
                                         .Rp = Sqr(c.Prime_Rad * c.Prime_Rad - c.Offset * c.Offset)};
    Fill(formula, Kernels_in_Use<Size_Kernels>().phi_translating_roller, m, Phi, By_Formula(formula, Phi, m.s, m.v));
}

/// docs/theory.md, (90); without an arm, or while Starting, the points keep what they had. The displacement is row 1
/// also of a polydyne cam: meant, where mechanics has the polydyne cam's own row 22.
void Fill_Phi_Oscillating_Axial(Design_State& design, Motion_Rows m, std::span<Single> Phi)
{
    const Cam_Group& c = design.cam;
    Phi_Oscillating_Axial formula;
    if (design.flags.Starting || !Axial_Osc_Phi_Formula(design, c.ArmX, c.ArmY, c.ArmRad, formula))
        return;
    m.s = design.results.CalcData.Points(var::S);
    Fill(formula, Kernels_in_Use<Size_Kernels>().phi_oscillating_axial, m, Phi, By_Formula(formula, Phi, m.s, m.v));
}

void Fill_Phi(Design_State& design, int type)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Phi = design.results.CalcData.Points(var::Phi).first(Points_in_Use(design));
    const bool radial = c.Camtype == "Radial";
    if (!radial) {
        if (c.Translating)
            Fill_Phi_Translating_Axial(m, Phi);
        else
            Fill_Phi_Oscillating_Axial(design, m, Phi);
    } else if (type != 1) {
        std::fill(Phi.begin(), Phi.end(), Single{});
    } else if (c.Translating) {
        Fill_Phi_Translating_Roller(m, Phi);
    } else {
        Arm_Geometry(design);
        if (!design.flags.Calc_Error)
            Autopress(design);
    }
}

// ---- Rho by configuration

/// Curvature of the unrolled track, length; 100000 where it is straight. docs/theory.md, (73).
void Fill_Rho_Translating_Axial(const Motion_Rows& m, std::span<Single> Rho)
{
    const Motion_Group& motion = m.design.motion;
    const double prime = m.design.cam.Prime_Rad;
    const bool seconds = motion.Time_Base == 1;
    const Rho_Translating_Axial formula{
        .per_V = Per_Axial_Radian(m.design, motion.Shaft_speed, prime),
        .per_A = seconds ? Scale{1.0, prime * prime * motion.Shaft_Speed_Sq}
                         : Per_Axial_Radian(m.design, motion.Shaft_Speed_Sq, prime * prime)};
    Fill(formula, Kernels_in_Use<Size_Kernels>().rho_translating_axial, m, Rho, By_Formula(formula, Rho, m.v, m.a));
}

/// Curvature under a flat face, length. docs/theory.md, (70).
void Fill_Rho_Translating_Flat(const Motion_Rows& m, std::span<Single> Rho)
{
    const Rho_Translating_Flat formula{.motion = Translating(m.design), .prime = m.design.cam.Prime_Rad};
    Fill(formula, Kernels_in_Use<Size_Kernels>().rho_translating_flat, m, Rho, By_Formula(formula, Rho, m.s, m.a));
}

/// Curvature of the roller centre's path, length. docs/theory.md, (68).
///
/// The offset enters by the radius alone, and not as in the pressure angle: meant. Mechanics has docs/theory.md, (67);
/// the difference is of the order of offset over prime radius.
void Fill_Rho_Translating_Roller(const Motion_Rows& m, std::span<Single> Rho)
{
    const Cam_Group& c = m.design.cam;
    const Rho_Translating_Roller formula{
        .motion = Translating(m.design), .side = double(c.Side_Sign), .prime = c.Prime_Rad, .offset = c.Offset};
    Fill(formula, Kernels_in_Use<Size_Kernels>().rho_translating_roller, m, Rho,
         By_Formula(formula, Rho, m.s, m.v, m.a));
}

/// docs/theory.md, (91); the user is asked at each point without an answer. The displacement is row 1 also of a
/// polydyne cam, as for the pressure angle.
/// @return false when the user cancelled
bool Fill_Rho_Oscillating_Axial(Design_State& design, Motion_Rows m, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    Rho_Oscillating_Axial formula;
    if (design.flags.Starting || !Axial_Osc_Rho_Formula(design, c.ArmX, c.ArmY, c.ArmRad, formula)) {
        for (std::size_t i = 0; i < Rho.size(); ++i)
            if (Show_Message("Hit Retry to continue or Cancel to Abort the calculation", Buttons::Retry_Cancel,
                             Symbol::information) == Answer::Cancel)
                return false;
        return true;
    }
    m.s = design.results.CalcData.Points(var::S);
    Fill(formula, Kernels_in_Use<Size_Kernels>().rho_oscillating_axial, m, Rho, [&](std::size_t i) {
        double value = 0.0;
        Axial_Osc_Rho(design, static_cast<int>(i), c.ArmX, c.ArmY, c.ArmRad, value);
        Rho[i] = value;
    });
    return true;
}

/// Rho of a radial cam with a roller on an arm that stands still at a point, length: docs/theory.md, (82).
///
/// The distance of the roller's centre from the cam's, meant: right in a dwell, while at an instant of rest with an
/// acceleration mechanics has (80), 55.7 for 77.8 in section 7.3's design.
double Rho_Standing(Design_State& design, int i, double gd, double previous)
{
    const Cam_Group& c = design.cam;
    Arm_Place place;
    const double delta = c.Arm_Pivot_Angle - c.Rotflag * design.results.CalcData(var::Angle, i);
    return Arm_Position(design, gd, delta, place) ? place.R : previous;
}

/// The curvature of a roller's cam point by point, from the first one on, for a cycle where a divisor vanishes or the
/// arm has no place: Rho and the two factors of (81) keep the values of the point before there.
void Keep_Rho_Oscillating_Roller(Design_State& design, const Rho_Oscillating_Roller& formula, const Motion_Rows& m,
                                 std::span<Single> Rho)
{
    const auto Phi = design.results.CalcData.Points(var::Phi);
    Rho_Oscillating_Roller::Factors<double> factors{0.0, 0.0};
    double rho = 0.0;
    for (std::size_t i = 0; i < Rho.size(); ++i) {
        const Ratios ratio = Link_Ratios(design, static_cast<int>(i));
        const auto at = formula.motion(double{m.s[i]}, double{m.v[i]}, double{m.a[i]}, ratio.S, ratio.V, ratio.A);
        if (at.vv == 0.0) {
            rho = Rho_Standing(design, static_cast<int>(i), at.gd, rho);
        } else {
            const Circular<double> ph = Sin_Cos(Phi[i] * Rad_per_Deg);
            const double Q = formula.Q(std::sin(at.gd * Rad_per_Deg));
            if (Q != 0.0)
                factors = formula.Factors_of(ph, Q);
            const double n = formula.Curvature(at, ph, factors);
            if (n != 0.0)
                rho = 1.0 / n;
        }
        Rho[i] = rho;
    }
}

/// Leaves Arm_Work_Angle as the last point where the arm stands still has it.
void Leave_Work_Angle(Design_State& design, const Radial_Arm_Motion& motion, const Motion_Rows& m)
{
    for (std::size_t i = Points_in_Use(design); i-- > 0;) {
        const Ratios ratio = Link_Ratios(design, static_cast<int>(i));
        const auto at = motion(double{m.s[i]}, double{m.v[i]}, double{m.a[i]}, ratio.S, ratio.V, ratio.A);
        if (at.vv == 0.0) {
            Rho_Standing(design, static_cast<int>(i), at.gd, 0.0);
            return;
        }
    }
}

/// Rho of a radial cam with an arm, length: roller docs/theory.md, (81), flat face (87).
///
/// Meant, and not as mechanics has it: 1 - w in place of 1 - K w in (81), right for K = Rotflag ArmDirect = 1, else 10
/// % beside on the unsafe side; (1 + w)^2 in place of (1 - w)^2 and a plus sign of the offset in (87), 12.05 for 48.21
/// mm in section 7.4's design. Check a flat arm's cam by its surface.
void Fill_Rho_Oscillating_Radial(Design_State& design, int type, const Motion_Rows& m, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    Arm_Geometry(design);
    if (design.flags.Calc_Error || Rho.empty())
        return;
    Link_Ratios(design, static_cast<int>(Rho.size()) - 1);  // there are as many ratios as points
    const Radial_Arm_Motion motion{.per_radian_V = Arm_Per_Radian(design, design.motion.Shaft_speed),
                                   .per_radian_A = Arm_Per_Radian(design, design.motion.Shaft_Speed_Sq),
                                   .start_angle = c.Arm_Start_Angle};
    const Size_Kernels& kernels = Kernels_in_Use<Size_Kernels>();
    if (type == 1) {
        const Rho_Oscillating_Roller formula{.motion = motion, .triangle = {c.Arm_Pivot_Dist, c.ArmRad}};
        const auto all_stored = [&] {
            const Status_Kept status;
            return kernels.rho_oscillating_roller(formula, m.For_Kernels(), Bits(Rho), 0, Rho.size()) == Rho.size();
        };
        if (all_stored())
            Leave_Work_Angle(design, motion, m);
        else
            Keep_Rho_Oscillating_Roller(design, formula, m, Rho);
        return;
    }
    Rho_Oscillating_Flat formula{.motion = motion, .contact = {}, .D = c.Arm_Pivot_Dist, .offset = c.Offset};
    if (!Flat_Osc_Motion(design, c.ArmX, c.ArmY, formula.contact))
        return;
    Fill(formula, kernels.rho_oscillating_flat, m, Rho, [&](std::size_t i) {
        const Ratios ratio = Link_Ratios(design, static_cast<int>(i));
        Rho[i] =
            formula(motion(double{m.s[i]}, double{m.v[i]}, double{m.a[i]}, ratio.S, ratio.V, ratio.A), double{m.s[i]});
    });
}

/// @return false when the user cancelled
bool Fill_Rho(Design_State& design, int type)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Rho = design.results.CalcData.Points(var::Rho).first(Points_in_Use(design));
    if (c.Camtype != "Radial") {
        if (!c.Translating)
            return Fill_Rho_Oscillating_Axial(design, m, Rho);
        Fill_Rho_Translating_Axial(m, Rho);
    } else if (!c.Translating) {
        Fill_Rho_Oscillating_Radial(design, type, m, Rho);
    } else if (type == 2) {
        Fill_Rho_Translating_Flat(m, Rho);
    } else {
        Fill_Rho_Translating_Roller(m, Rho);
    }
    return true;
}

}  // namespace

bool Calc_Phi(Design_State& design, int type)
{
    if (design.flags.Starting)
        return true;
    const bool no_fault = Trap("Calc_Phi", [&] {
        Fill_Phi(design, type);
        if (!design.flags.Skip_Profile && !design.flags.Calc_Error)
            Cam_Profile(design);
        Phi_Extremes(design);
    });
    if (!no_fault)
        design.flags.Calc_Error = true;
    return no_fault;
}

bool Calc_Rho(Design_State& design, int type)
{
    if (design.flags.Starting)
        return true;
    bool finished = false;
    const bool no_fault = Trap("Calc_Rho", [&] {
        design.flags.Calc_Error = false;
        Set_Units(design);
        finished = Fill_Rho(design, type);
        if (!finished)
            return;
        Rho_Extremes(design);
        Clip_Rho(design, design.cam.Prime_Rad * 10.0);
    });
    if (!no_fault)
        design.flags.Calc_Error = true;
    return no_fault && finished;
}

bool Use_Conjugate(Design_State& design)
{
    Cam_Group& c = design.cam;
    Flags_Group& f = design.flags;
    c.Conjugate = true;
    c.Side_Sign = -1;
    c.Follower_Angle = c.Follower_Angle + 180.0;
    if (c.Translating && c.Camtype == "Radial")
        c.Offset = -c.Offset;
    f.Calc_Error = f.Math_Error = false;
    return Calc_Phi(design, c.Followtype) && !f.Calc_Error && Calc_Rho(design, c.Followtype) && !f.Calc_Error &&
           !f.Math_Error;
}

namespace {

/// One point of Autopress with what it has to tell; a point without an answer keeps what it had.
void Autopress_Point(Design_State& design, const Phi_Oscillating_Roller& formula, const Motion_Rows& m, std::size_t i)
{
    const Cam_Group& c = design.cam;
    const Ratios ratio = Link_Ratios(design, static_cast<int>(i));
    const double gamma = formula.Gamma(double{m.s[i]}, ratio.S);
    const double delta = c.Arm_Pivot_Angle - c.Rotflag * m.theta[i] / ratio.S;
    Arm_Place place;
    if (!Arm_Position(design, gamma, delta, place))
        return;
    const auto answer = formula.From(gamma, std::sin(gamma * Rad_per_Deg), place.R, place.tau, double{m.v[i]});
    if (answer.Denom2_vanishes)
        Autopress_Message(design, "Denom2", m.theta[i]);
    else if (answer.Term3_vanishes)
        Autopress_Message(design, formula.K > 0 ? "Term3  in K2" : "Term3c  in K1", m.theta[i]);
    else
        design.results.CalcData.Points(var::Phi)[i] = answer.Phi;
}

}  // namespace

void Autopress(Design_State& design)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Phi = design.results.CalcData.Points(var::Phi).first(Points_in_Use(design));
    if (Phi.empty())
        return;
    const std::size_t last = Phi.size() - 1;
    const Ratios ratio = Link_Ratios(design, static_cast<int>(last));  // there are as many ratios as points
    const Phi_Oscillating_Roller formula{.triangle = {c.Arm_Pivot_Dist, c.ArmRad},
                                         .velocity = Arm_Velocity(design),
                                         .K = c.Rotflag * c.ArmDirect,
                                         .conjugate = c.Conjugate,
                                         .lift = design.motion.Liftmax,
                                         .start_angle = c.Arm_Start_Angle};
    Fill(formula, Kernels_in_Use<Size_Kernels>().phi_oscillating_roller, m, Phi,
         [&](std::size_t i) { Autopress_Point(design, formula, m, i); });
    if (Arm_Place place; formula.triangle.At(std::cos(formula.Gamma(double{m.s[last]}, ratio.S) * Rad_per_Deg)).closes)
        Arm_Position(design, formula.Gamma(double{m.s[last]}, ratio.S),
                     c.Arm_Pivot_Angle - c.Rotflag * m.theta[last] / ratio.S, place);  // leaves Arm_Work_Angle
}

void Autopress_Message(const Design_State& design, std::string_view label, Single theta)
{
    Show_Message(
        "An attempt to divide by zero was detected in Autopress when calculating\n"
        "the pressure angle at theta = " +
            Shown(design, theta) +
            "\n"
            "Will continue to attempt calculation at other points" +
            std::string(label),
        Buttons::OK, Symbol::exclamation);
}

void Phi_Extremes(Design_State& design)
{
    Cam_Group& c = design.cam;
    const Table<Single>& data = design.results.CalcData;
    const auto Phi = data.Points(var::Phi).first(Points_in_Use(design));
    const auto theta = data.Points(var::Angle);
    Extreme largest{0.0};
    Extreme smallest{10000.0};
    for (std::size_t i = 0; i < Phi.size(); ++i) {
        const double phi = Phi[i];
        if (phi > largest.value)
            largest = {phi, i};
        if (phi < smallest.value)
            smallest = {phi, i};
    }
    c.Phi_Max = largest.value;
    c.Phi_Max_Angle = largest.Angle(theta);
    c.Phi_Min = smallest.value;
    c.Phi_Min_Angle = smallest.Angle(theta);
}

void Rho_Extremes(Design_State& design)
{
    constexpr double unreached = 100000.0;
    Extreme max_pos{0.0};
    Extreme min_pos{unreached};
    Extreme max_neg{0.0};
    Extreme min_neg{unreached};
    const auto Rho = design.results.CalcData.Points(var::Rho).first(Points_in_Use(design));
    const auto theta = design.results.CalcData.Points(var::Angle);
    for (std::size_t i = 0; i < Rho.size(); ++i) {
        const double r = Rho[i];
        if (r > 0.0) {
            if (r > max_pos.value)
                max_pos = {r, i};
            if (r < min_pos.value)
                min_pos = {r, i};
        } else {
            if (-r > std::abs(max_neg.value))
                max_neg = {r, i};
            if (-r < std::abs(min_neg.value))
                min_neg = {r, i};
        }
    }
    const auto text = [&](const Extreme& extreme, int decimals) {
        return extreme.place ? FNRoundStr(design, extreme.value, decimals) : std::string("None");
    };
    Cam_Group& c = design.cam;
    c.Rho_Max_Pos = max_pos.value;
    c.Rho_Max_Pos_Angle = max_pos.Angle(theta);
    c.Rho_Max_Pos_Text = text(max_pos, 1);
    c.Rho_Min_Pos = min_pos.value;
    c.Rho_Min_Pos_Angle = min_pos.Angle(theta);
    c.Rho_Min_Pos_Text = text(min_pos, 2);
    c.Rho_Max_Neg = max_neg.value;
    c.Rho_Max_Neg_Angle = max_neg.Angle(theta);
    c.Rho_Max_Neg_Text = text(max_neg, 1);
    c.Rho_Min_Neg = min_neg.value;
    c.Rho_Min_Neg_Angle = min_neg.Angle(theta);
    c.Rho_Min_Neg_Text = text(min_neg, 2);
    c.Rho_Smallest = std::abs(c.Rho_Min_Neg) < c.Rho_Min_Pos ? c.Rho_Min_Neg : c.Rho_Min_Pos;
    if (c.Rho_Max_Pos >= practically_infinite)
        c.Rho_Max_Pos_Text = "+ Infinity";
    if (std::abs(c.Rho_Max_Neg) >= practically_infinite)
        c.Rho_Max_Neg_Text = "- Infinity";
}

void Clip_Rho(Design_State& design, double limit)
{
    const auto Rho = design.results.CalcData.Points(var::Rho).first(Points_in_Use(design));
    if (limit > std::numeric_limits<float>::max())  // no Single is beyond it
        return;
    const float most = Single(limit).Bits();
    float* const values = Bits(Rho);
    for (std::size_t i = 0; i < Rho.size(); ++i) {
        const float upper = values[i] > most ? most : values[i];
        values[i] = upper < -most ? -most : upper;
    }
}

void Flat_Min_Base_Radius(const Design_State& design)
{
    if (design.flags.Skip_Profile || design.run.Reading_File)
        return;
    const Table<Single>& data = design.results.CalcData;
    const Extremes a = MaxMin2(data, var::A, 0, design.motion.Max_Data_Points_used);
    // By the square of the shaft speed in every time base, which is meant; docs/theory.md, (71).
    const double Rb = -(a.smallest / design.motion.Shaft_Speed_Sq) - data(var::S, a.smallest_point);
    Show_Message("The minimum base circle radius for no negative Radius of Curvature is " +
                     Trim(FNRoundStr(design, Rb, 2)) + "  " + Words_of_Units(design.identity.WhichUnit).length,
                 Buttons::OK, Symbol::information);
}

}  // namespace lobemax
