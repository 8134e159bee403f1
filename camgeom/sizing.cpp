// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/sizing.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "camgeom/arm.h"
#include "camgeom/profile.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"

namespace lobemax {

namespace {

constexpr double practically_infinite = 99999.0;
constexpr double flat_curve = 100000.0;     // Rho where a translating axial cam does not curve
constexpr double quarter_turn = 1.5707964;  // pi / 2 as a 32-bit number, which the arm's formula is built on: 7e-8 more

/// The motion rows in force, each taken once.
struct Motion_Rows {
    const Design_State& design;
    std::span<const Single> theta = design.results.CalcData.Points(var::Angle);
    std::span<const Single> s = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 22 : var::S);
    std::span<const Single> v = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 23 : var::V);
    std::span<const Single> a = design.results.CalcData.Points(design.flags.Polydyne_Calc ? 24 : var::A);
    std::size_t count = static_cast<std::size_t>(design.motion.Max_Data_Points_used + 1);
};

/// Velocity and acceleration per radian of cam, as the translating follower takes them: docs/theory.md, (60). In the
/// degrees base the acceleration is scaled once only, which is meant: it undoes the single factor of the stored rows.
struct Per_Radian {
    const Design_State& design;
    int base = design.motion.Time_Base;
    double omega = design.motion.Shaft_speed;
    double omega_sq = design.motion.Shaft_Speed_Sq;

    double V(double v) const { return base == 1 ? v / omega : base == 2 ? v * 180 / PI : v; }
    double A(double a) const { return base == 1 ? a / omega_sq : base == 2 ? a * 180 / PI : a; }
};

/// The same for the curvature of a translating axial cam, over the prime radius. In the degrees base the factor stands
/// the other way round than for the pressure angle: meant. Mechanics has 180 / pi as there; Rho comes out up to 3283
/// times too large, and shows little but its limit. docs/theory.md, 6.3.
struct Per_Axial_Radian {
    const Design_State& design;
    int base = design.motion.Time_Base;
    double omega = design.motion.Shaft_speed;
    double omega_sq = design.motion.Shaft_Speed_Sq;
    double prime = design.cam.Prime_Rad;

    double V(double v) const
    {
        return base == 1 ? v / (omega * prime) : base == 2 ? v * Rad_per_Deg / prime : v / prime;
    }
    double A(double a) const
    {
        return base == 1   ? a / (prime * prime * omega_sq)
               : base == 2 ? a * Rad_per_Deg / (prime * prime)
                           : a / (prime * prime);
    }
};

/// Motion of an arm in degrees, brought to radians per radian of cam, for the curvature of a radial cam.
/// docs/theory.md, (61).
struct Arm_Per_Radian {
    const Design_State& design;
    int base = design.motion.Time_Base;
    double omega = design.motion.Shaft_speed;
    double omega_sq = design.motion.Shaft_Speed_Sq;

    double V(double v) const { return base == 1 ? v * Rad_per_Deg / omega : base == 3 ? v * Rad_per_Deg : v; }
    double A(double a) const { return base == 1 ? a * Rad_per_Deg / omega_sq : base == 3 ? a * Rad_per_Deg : a; }
};

// ---- Phi by configuration

/// Slope of the unrolled track, degrees. docs/theory.md, (72). A prime radius of zero gives +-90, or error 6 or 11.
void Phi_Translating_Axial(const Design_State& design, const Motion_Rows& m, std::span<Single> Phi)
{
    const Per_Radian per{design};
    const double prime = design.cam.Prime_Rad;
    for (std::size_t i = 0; i < m.count; ++i)
        Phi[i] = std::atan(per.V(m.v[i]) / prime) * Deg_per_Rad;
}

/// Angle between the stem and the contact normal, degrees; positive where a rise pushes the stem aside.
/// docs/theory.md, (66). @throws Fault{5} for an offset above the prime radius
void Phi_Translating_Roller(const Design_State& design, const Motion_Rows& m, std::span<Single> Phi)
{
    const Cam_Group& c = design.cam;
    const Per_Radian per{design};
    const double Rp = Sqr(c.Prime_Rad * c.Prime_Rad - c.Offset * c.Offset);
    const double offset = c.Offset;
    const double lift = design.motion.Liftmax;
    for (std::size_t i = 0; i < m.count; ++i) {
        const double sp = c.Conjugate ? lift - m.s[i] : double{m.s[i]};
        const double vn = per.V(c.Conjugate ? -m.v[i] : double{m.v[i]});
        Phi[i] = std::atan((vn - offset) / (sp + Rp)) * Deg_per_Rad;
    }
}

/// All points by Axial_Osc_Phi; one without an answer keeps what it had. docs/theory.md, (90).
void Phi_Oscillating_Axial(Design_State& design, std::span<Single> Phi)
{
    const Cam_Group& c = design.cam;
    for (std::size_t i = 0; i < Phi.size(); ++i) {
        Axial_Phi point;
        if (Axial_Osc_Phi(design, static_cast<int>(i), c.ArmX, c.ArmY, c.ArmRad, point))
            Phi[i] = point.Phi;
    }
}

void Fill_Phi(Design_State& design, int type)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Phi = design.results.CalcData.Points(var::Phi).first(m.count);
    const bool radial = c.Camtype == "Radial";
    if (!radial) {
        if (c.Translating)
            Phi_Translating_Axial(design, m, Phi);
        else
            Phi_Oscillating_Axial(design, Phi);
    } else if (type != 1) {
        std::fill(Phi.begin(), Phi.end(), Single{});
    } else if (c.Translating) {
        Phi_Translating_Roller(design, m, Phi);
    } else {
        Arm_Geometry(design);
        if (!design.flags.Calc_Error)
            Autopress(design);
    }
}

// ---- Rho by configuration

/// Curvature of the unrolled track, length; 100000 where it is straight. docs/theory.md, (73).
void Rho_Translating_Axial(const Motion_Rows& m, std::span<Single> Rho)
{
    constexpr double no_acceleration = 1E-7;
    const Per_Axial_Radian per{m.design};
    for (std::size_t i = 0; i < m.count; ++i) {
        const double v = per.V(m.v[i]);
        const double a = per.A(m.a[i]);
        Rho[i] = std::abs(a) > no_acceleration ? -std::pow(1.0 + v * v, 1.5) / a : flat_curve;
    }
}

/// Curvature under a flat face, length. docs/theory.md, (70).
void Rho_Translating_Flat(const Design_State& design, const Motion_Rows& m, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    const Per_Radian per{design};
    const double lift = design.motion.Liftmax;
    for (std::size_t i = 0; i < m.count; ++i) {
        const double sp = c.Conjugate ? lift - m.s[i] : double{m.s[i]};
        const double an = per.A(c.Conjugate ? -m.a[i] : double{m.a[i]});
        Rho[i] = sp + c.Prime_Rad + an;
    }
}

/// Curvature of the roller centre's path, length. docs/theory.md, (68).
///
/// The offset enters by the radius alone, and not as in the pressure angle: meant. Mechanics has docs/theory.md, (67);
/// the difference is of the order of offset over prime radius.
void Rho_Translating_Roller(const Design_State& design, const Motion_Rows& m, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    const Per_Radian per{design};
    const double lift = design.motion.Liftmax;
    for (std::size_t i = 0; i < m.count; ++i) {
        const double r0 = c.Conjugate ? lift + c.Prime_Rad - m.s[i] : c.Prime_Rad + m.s[i];
        Single radius;
        Single angle;
        Cart_to_Polar(r0, c.Offset, radius, angle);
        const double r = radius;
        const double vn = per.V(c.Side_Sign * m.v[i]);
        const double an = per.A(c.Side_Sign * m.a[i]);
        const double q = vn * vn + r * r;
        Rho[i] = std::sqrt(q * q * q) / (vn * vn + vn * vn + r * r - r * an);
    }
}

/// All points by Axial_Osc_Rho; the user is asked at one without an answer. docs/theory.md, (91).
/// @return false when the user cancelled
bool Rho_Oscillating_Axial(Design_State& design, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    for (std::size_t i = 0; i < Rho.size(); ++i) {
        double value = 0.0;
        if (Axial_Osc_Rho(design, static_cast<int>(i), c.ArmX, c.ArmY, c.ArmRad, value)) {
            Rho[i] = value;
            continue;
        }
        if (Show_Message("Hit Retry to continue or Cancel to Abort the calculation", Buttons::Retry_Cancel,
                         Symbol::information) == Answer::Cancel)
            return false;
    }
    return true;
}

/// Rho of a radial cam with an arm that stands still at a point, length: docs/theory.md, (82), (87) at rest.
///
/// A roller has the distance of its centre from the cam's, meant: right in a dwell, while at an instant of rest with an
/// acceleration mechanics has (80), 55.7 for 77.8 in section 7.3's design.
double Rho_Standing(Design_State& design, int i, int type, double gd, double aa, double previous)
{
    const Cam_Group& c = design.cam;
    if (type == 1) {
        Arm_Place place;
        const double delta = c.Arm_Pivot_Angle - c.Rotflag * design.results.CalcData(var::Angle, i);
        return Arm_Position(design, gd, delta, place) ? place.R : previous;
    }
    Flat_Contact contact;
    if (!Flat_Osc_Contact(design, i, c.ArmX, c.ArmY, contact))
        return previous;
    const double ad = contact.arm * Rad_per_Deg;
    return (aa * std::cos(ad) + std::sin(ad)) * c.Arm_Pivot_Dist + c.Offset;
}

/// Rho of a radial cam with an arm, length: roller docs/theory.md, (81), flat face (87).
///
/// Meant, and not as mechanics has it: 1 - w in place of 1 - K w in (81), right for K = Rotflag ArmDirect = 1, else 10
/// % beside on the unsafe side; (1 + w)^2 in place of (1 - w)^2 and a plus sign of the offset in (87), 12.05 for 48.21
/// mm in section 7.4's design. Check a flat arm's cam by its surface.
void Rho_Oscillating_Radial(Design_State& design, int type, const Motion_Rows& m, std::span<Single> Rho)
{
    const Cam_Group& c = design.cam;
    Arm_Geometry(design);
    if (design.flags.Calc_Error)
        return;
    const Arm_Per_Radian per{design};
    const auto Phi = design.results.CalcData.Points(var::Phi);
    const double D = c.Arm_Pivot_Dist;
    double c1 = 0.0;  // these two, and Rho, keep the values of the point before where a divisor vanishes
    double c2 = 0.0;
    double rho = 0.0;
    for (std::size_t i = 0; i < m.count; ++i) {
        const int point = static_cast<int>(i);
        const Ratios ratio = Link_Ratios(design, point);
        const double gd = m.s[i] / ratio.S + c.Arm_Start_Angle;
        const double gr = gd * Rad_per_Deg;
        const double ph = Phi[i] * Rad_per_Deg;
        const double vv = per.V(m.v[i] / ratio.V);
        const double aa = per.A(m.a[i] / ratio.A);
        if (vv == 0.0) {
            rho = Rho_Standing(design, point, type, gd, aa, rho);
        } else if (type == 1) {
            const double Q = D * std::sin(gr);
            if (Q != 0.0) {
                c1 = std::cos(ph) / Q;
                c2 = c.ArmRad * std::cos(ph) / Q;
            }
            const double k = (1.0 - vv) * vv * std::sin(ph) - aa * std::cos(ph);
            const double n = (k * c2 + 1.0) * c1;
            if (n != 0.0)
                rho = 1.0 / n;
        } else {
            Flat_Contact contact;
            if (Flat_Osc_Contact(design, point, c.ArmX, c.ArmY, contact)) {
                const double ad = contact.arm * Rad_per_Deg;
                rho = D / ((vv + 1.0) * (vv + 1.0)) *
                          (aa / (1.0 - vv) * std::cos(ad) + (1.0 - (vv + vv)) * std::sin(ad)) +
                      c.Offset;
            }
        }
        Rho[i] = rho;
    }
}

/// @return false when the user cancelled
bool Fill_Rho(Design_State& design, int type)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Rho = design.results.CalcData.Points(var::Rho).first(m.count);
    if (c.Camtype != "Radial") {
        if (!c.Translating)
            return Rho_Oscillating_Axial(design, Rho);
        Rho_Translating_Axial(m, Rho);
    } else if (!c.Translating) {
        Rho_Oscillating_Radial(design, type, m, Rho);
    } else if (type == 2) {
        Rho_Translating_Flat(design, m, Rho);
    } else {
        Rho_Translating_Roller(design, m, Rho);
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

void Autopress(Design_State& design)
{
    const Cam_Group& c = design.cam;
    const Motion_Rows m{design};
    const auto Phi = design.results.CalcData.Points(var::Phi);
    const int K = c.Rotflag * c.ArmDirect;
    const double D = c.Arm_Pivot_Dist;
    const double arm = c.ArmRad;
    for (std::size_t i = 0; i < m.count; ++i) {
        const Ratios ratio = Link_Ratios(design, static_cast<int>(i));
        // The conjugate adds its displacement here and nowhere else; the plus sign is meant, mechanics has a minus.
        const double sv = c.Conjugate ? design.motion.Liftmax + m.s[i] : double{m.s[i]};
        const double gamma = sv / ratio.S + c.Arm_Start_Angle;
        const double delta = c.Arm_Pivot_Angle - c.Rotflag * m.theta[i] / ratio.S;
        Arm_Place place;
        if (!Arm_Position(design, gamma, delta, place))
            continue;
        const double R = place.R;
        const double tr = place.tau * Rad_per_Deg;
        const double gr = gamma * Rad_per_Deg;
        const double w = Arm_Velocity(design, c.Conjugate ? -m.v[i] : double{m.v[i]});
        const double al = PI - gr - tr;
        const double T0 = D * arm * std::sin(gr) * w;
        if (T0 == 0.0) {
            Phi[i] = (K > 0 ? al - quarter_turn : quarter_turn - al) * Deg_per_Rad;
            continue;
        }
        const double T1 = R * R / T0;
        const double Denom2 = 2.0 * R * D * std::sin(tr);
        if (Denom2 == 0.0) {
            Autopress_Message(design, "Denom2", m.theta[i]);
            continue;
        }
        const double T2 = (D * D - R * R - arm * arm) / Denom2;
        const double T3 = K > 0 ? T2 + T1 : T1 - T2;
        if (T3 == 0.0) {
            Autopress_Message(design, K > 0 ? "Term3  in K2" : "Term3c  in K1", m.theta[i]);
            continue;
        }
        Phi[i] =
            (K > 0 ? al - quarter_turn + std::atan(1.0 / T3) : quarter_turn - al + std::atan(1.0 / T3)) * Deg_per_Rad;
    }
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
    c.Phi_Max = 0.0;
    c.Phi_Max_Angle = 0.0;
    c.Phi_Min = 10000.0;
    c.Phi_Min_Angle = 0.0;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        const Single phi = data(var::Phi, i);
        if (phi > c.Phi_Max) {
            c.Phi_Max = phi;
            c.Phi_Max_Angle = data(var::Angle, i);
        }
        if (phi < c.Phi_Min) {
            c.Phi_Min = phi;
            c.Phi_Min_Angle = data(var::Angle, i);
        }
    }
}

void Rho_Extremes(Design_State& design)
{
    struct Extreme {
        Single value;
        Single angle;
        bool found = false;
    };
    constexpr double unreached = 100000.0;
    Extreme max_pos{0.0, 0.0};
    Extreme min_pos{unreached, 0.0};
    Extreme max_neg{0.0, 0.0};
    Extreme min_neg{unreached, 0.0};
    const auto Rho = design.results.CalcData.Points(var::Rho);
    const auto theta = design.results.CalcData.Points(var::Angle);
    const auto count = static_cast<std::size_t>(design.motion.Max_Data_Points_used + 1);
    for (std::size_t i = 0; i < count; ++i) {
        const Single r = Rho[i];
        if (r > 0.0) {
            if (r > max_pos.value)
                max_pos = {r, theta[i], true};
            if (r < min_pos.value)
                min_pos = {r, theta[i], true};
        } else {
            if (std::abs(r) > std::abs(max_neg.value))
                max_neg = {r, theta[i], true};
            if (std::abs(r) < std::abs(min_neg.value))
                min_neg = {r, theta[i], true};
        }
    }
    const auto text = [&](const Extreme& extreme, int decimals) {
        return extreme.found ? FNRoundStr(design, extreme.value, decimals) : std::string("None");
    };
    Cam_Group& c = design.cam;
    c.Rho_Max_Pos = max_pos.value;
    c.Rho_Max_Pos_Angle = max_pos.angle;
    c.Rho_Max_Pos_Text = text(max_pos, 1);
    c.Rho_Min_Pos = min_pos.value;
    c.Rho_Min_Pos_Angle = min_pos.angle;
    c.Rho_Min_Pos_Text = text(min_pos, 2);
    c.Rho_Max_Neg = max_neg.value;
    c.Rho_Max_Neg_Angle = max_neg.angle;
    c.Rho_Max_Neg_Text = text(max_neg, 1);
    c.Rho_Min_Neg = min_neg.value;
    c.Rho_Min_Neg_Angle = min_neg.angle;
    c.Rho_Min_Neg_Text = text(min_neg, 2);
    c.Rho_Smallest = std::abs(c.Rho_Min_Neg) < c.Rho_Min_Pos ? c.Rho_Min_Neg : c.Rho_Min_Pos;
    if (c.Rho_Max_Pos >= practically_infinite)
        c.Rho_Max_Pos_Text = "+ Infinity";
    if (std::abs(c.Rho_Max_Neg) >= practically_infinite)
        c.Rho_Max_Neg_Text = "- Infinity";
}

void Clip_Rho(Design_State& design, double limit)
{
    const auto Rho = design.results.CalcData.Points(var::Rho);
    for (std::size_t i = 0; i <= static_cast<std::size_t>(design.motion.Max_Data_Points_used); ++i) {
        if (Rho[i] > limit)
            Rho[i] = limit;
        if (Rho[i] < -limit)
            Rho[i] = -limit;
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
