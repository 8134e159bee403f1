// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_masses.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

#include "core/messages.h"
#include "core/numeric.h"
#include "core/units.h"
#include "core/variables.h"
#include "linkage/linkage_kinematics.h"

namespace lobemax {

namespace {

using Vector = std::complex<double>;

/// Of link 2's turning: each link's speed, and those of the points where they meet; lengths as in the forces.
struct Speeds {
    std::array<double, Max_Links + 1> link{};
    double A = 0.0;
    double B = 0.0;
    double D = 0.0;
    double end = 0.0;
};

/// Whole turns of a row or of a point, reduced to one number.
class Reducer {
public:
    explicit Reducer(Speed_Choice choice) : choice_(choice) {}
    void Take(double speed)
    {
        peak_ = std::max(peak_, std::abs(speed));
        sum_ += std::abs(speed);
        ++count_;
    }
    double Value() const { return choice_ == Speed_Choice::peak ? peak_ : sum_ / count_; }

private:
    Speed_Choice choice_;
    double peak_ = 0.0;
    double sum_ = 0.0;
    int count_ = 0;
};

double Length(const Design_State& design, double length)
{
    return length / Length_Divisor(design);
}

/// Speed of D where it rides on the coupler, at point i.
double Speed_of_Coupler_Point(const Design_State& design, int i)
{
    const Results_Group& r = design.results;
    const Linkage_Group& k = design.linkage;
    const double theta2 = r.Link_Theta(2, i) * Rad_per_Deg;
    const double theta = (r.Link_Theta(3, i) + k.Delta4) * Rad_per_Deg;
    return std::abs(r.Link_Omega(2, i) * k.Link_2 * Vector{std::cos(theta2), std::sin(theta2)} +
                    r.Link_Omega(3, i) * k.Link_4a * Vector{std::cos(theta), std::sin(theta)});
}

/// The speeds over that of link 2. @return empty after a message: the links do not move
std::optional<Speeds> Reduced_Speeds(const Design_State& design, Speed_Choice choice)
{
    const Results_Group& r = design.results;
    const Linkage_Group& k = design.linkage;
    const int points = design.motion.Max_Data_Points_used;
    const int last = Last_Link(design);
    Speeds speeds;
    for (int link = First_Moving_Link; link <= last; ++link) {
        Reducer reducer(choice);
        for (int i = 0; i <= points; ++i)
            reducer.Take(r.Link_Omega(link, i));
        speeds.link[static_cast<std::size_t>(link)] = reducer.Value();
    }
    const double input = speeds.link[First_Moving_Link];
    if (input == 0.0 || speeds.link[static_cast<std::size_t>(last)] == 0.0) {
        Show_Message("The links do not move.  There is no effective mass or stiffness.", Buttons::OK,
                     Symbol::exclamation);
        return {};
    }
    for (double& speed : speeds.link)
        speed /= input;
    const bool slider = Ends_in_Slider(design);
    if (slider)
        speeds.link[static_cast<std::size_t>(last)] /= Length_Divisor(design);
    speeds.A = Length(design, k.Link_2);
    speeds.B = slider && !Six_Links(design) ? speeds.link[4] : speeds.link[4] * Length(design, k.Link_4);
    if (!Six_Links(design))
        return speeds;
    speeds.D = speeds.link[4] * Length(design, k.Link_4a);
    if (Is_Stephenson(design)) {
        Reducer reducer(choice);
        for (int i = 0; i <= points; ++i)
            reducer.Take(Speed_of_Coupler_Point(design, i));
        speeds.D = Length(design, reducer.Value()) / input;
    }
    speeds.end = slider ? speeds.link[6] : speeds.link[6] * Length(design, k.Link_6);
    return speeds;
}

double Square(double x)
{
    return x * x;
}

/// One stage of springs, (200).
double Stage_Stiffness(double r, double k_o, double k_a, double k_b)
{
    if (r == 0.0 || k_o == 0.0)
        throw Fault{division_by_zero};
    return 1.0 / ((1.0 / (r * r * k_o)) + ((1.0 / k_a) + (1.0 / k_b)));
}

/// Centre of gravity of a link in its own coordinates: along and across its line.
struct Centre {
    double along;
    double across;
};

Centre Centre_of(const Design_State& design, int link)
{
    const Linkage_Group& k = design.linkage;
    const double d = Length(design, k.CGx_of_link(link));
    return {d * std::cos(k.CGy_of_link(link)), d * std::sin(k.CGy_of_link(link))};
}

/// A coupler as two masses at its ends and what inertia they leave over, times the squares of its speeds, (204).
struct Coupler_Share {
    double near;
    double far;  // with the rest of the inertia
};

Coupler_Share Share_of_Coupler(const Design_State& design, int link, double length, double v_near, double v_far,
                               double omega)
{
    const Linkage_Group& k = design.linkage;
    const double m = k.Mass_of_link(link);
    const Centre cg = Centre_of(design, link);
    const double d = cg.along;
    const double e = length - d;
    const double q = d / (d + e);
    const double rest = k.Inertia_of_link(link) + m * Square(cg.across) - m * d * e;
    return {(1.0 - q) * m * Square(v_near), q * m * Square(v_far) + rest * Square(omega)};
}

/// A link about a pivot, (203).
double Pivoted(const Design_State& design, int link, double omega)
{
    const Linkage_Group& k = design.linkage;
    return (k.Inertia_of_link(link) + k.Mass_of_link(link) * Square(Length(design, k.CGx_of_link(link)))) *
           Square(omega);
}

double Arm_Length(const Design_State& design)
{
    if (design.cam.ArmRad == 0.0)
        throw Fault{division_by_zero};
    return Length(design, design.cam.ArmRad);
}

}  // namespace

std::optional<double> Link_Stiffness(const Design_State& design, Speed_Choice choice)
{
    const std::optional<Speeds> v = Reduced_Speeds(design, choice);
    if (!v)
        return {};
    const Per_Link<Single>& k = design.linkage.Stiffness_of_link;
    const int last = Last_Link(design);
    for (int link = First_Moving_Link; link <= last; ++link)
        if (k(link) == 0.0) {
            Show_Message("At least one of your stiffnesses is zero.\nNone may be.  Please redo.");
            return {};
        }
    const double stage =
        Six_Links(design) ? Stage_Stiffness(v->D / v->A, Stage_Stiffness(v->end / v->D, k(6), k(5), k(4)), k(3), k(2))
                          : Stage_Stiffness(v->B / v->A, k(4), k(3), k(2));
    return Square(v->A / Arm_Length(design)) * stage;
}

std::optional<Effective_Mass> Link_Mass(const Design_State& design, Speed_Choice choice)
{
    const std::optional<Speeds> v = Reduced_Speeds(design, choice);
    if (!v)
        return {};
    const Linkage_Group& k = design.linkage;
    const bool six = Six_Links(design);
    const bool slider = Ends_in_Slider(design);
    const auto& w = v->link;
    const Coupler_Share first = Share_of_Coupler(design, 3, Length(design, k.Link_3), v->A, v->B, w[3]);
    Effective_Mass mass{Pivoted(design, 2, w[2]) + first.near, first.far};
    if (six || !slider)
        mass.at_effector += Pivoted(design, 4, w[4]);
    if (six) {
        const Coupler_Share second = Share_of_Coupler(design, 5, Length(design, k.Link_5), v->D, v->end, w[5]);
        mass.at_effector += second.near + second.far;
        if (!slider)
            mass.at_effector += Pivoted(design, 6, w[6]);
    }
    if (slider) {
        const int last = Last_Link(design);
        mass.at_effector += k.Mass_of_link(last) * Square(w[static_cast<std::size_t>(last)]);
    }
    const double arm = Square(Arm_Length(design));
    return Effective_Mass{mass.at_follower / arm, mass.at_effector / arm};
}

Mass_over_Cycle True_Mass_over_Cycle(Design_State& design)
{
    const Linkage_Group& k = design.linkage;
    const bool six = Six_Links(design);
    const bool slider = Ends_in_Slider(design);
    const double arm = Square(Arm_Length(design));
    const formulas::Arm_Input of_arm = Arm_Input_of(design, Arm_Angle_at_Rest(design));
    const Linkage_Train train(design);
    constexpr Vector quarter_turn{0.0, 1.0};
    const auto rotating = [&](int link, double length, double angle, double omega) {
        return quarter_turn * omega * std::polar(Length(design, length), angle + k.CGy_of_link(link));
    };
    Mass_over_Cycle figures;
    double sum = 0.0;
    int count = 0;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        Link_Input input = Input_at(design, of_arm, i);
        input.omega2 = 1.0;  // twice the energy is then that over the square of the arm's speed, at rest too
        input.alpha2 = 0.0;
        const Train_Pose pose = train.At(input);
        if (!pose.Connects() || pose.dead_centre)
            continue;
        const auto energy = [&](int link, const Vector& velocity) {
            return k.Mass_of_link(link) * std::norm(velocity) +
                   k.Inertia_of_link(link) * Square(pose.link[static_cast<std::size_t>(link)].omega);
        };
        const auto own = [&](int link, double turned) {
            const Link_Motion& motion = pose.link[static_cast<std::size_t>(link)];
            return rotating(link, k.CGx_of_link(link), motion.theta + turned, motion.omega);
        };
        const double theta1 = train.Theta1();
        const Vector A =
            quarter_turn * std::polar(Length(design, k.Link_2), pose.link[2].theta + theta1) * pose.link[2].omega;
        double twice = energy(2, own(2, theta1));
        const double axis = k.Global_Slider_angle_deg * Rad_per_Deg;
        if (slider && !six) {
            // The coupler's angle is that of the line from the slider to A.
            twice += energy(3, A + own(3, axis + PI)) + k.Mass_of_link(4) * Square(Length(design, pose.link[4].omega));
        } else {
            twice += energy(3, A + own(3, theta1)) + energy(4, own(4, theta1));
        }
        if (six) {
            const auto carrier = static_cast<std::size_t>(Link_of_D(design));
            const Vector on_carrier =
                quarter_turn * pose.link[carrier].omega *
                std::polar(Length(design, k.Link_4a), pose.link[carrier].theta + theta1 + k.Delta4 * Rad_per_Deg);
            const Vector D = Is_Stephenson(design) ? A + on_carrier : on_carrier;
            const double second = Atan2(k.O6x - k.O4x, k.O6y - k.O4y);
            twice += energy(5, D + own(5, slider ? axis + PI : second));
            twice +=
                slider ? k.Mass_of_link(6) * Square(Length(design, pose.link[6].omega)) : energy(6, own(6, second));
        }
        const double mass = twice / arm;
        figures.least = count == 0 ? mass : std::min(figures.least, mass);
        figures.largest = std::max(figures.largest, mass);
        sum += mass;
        ++count;
    }
    figures.mean = count == 0 ? 0.0 : sum / count;
    return figures;
}

}  // namespace lobemax
