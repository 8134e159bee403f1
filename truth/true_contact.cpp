// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/true_contact.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/design_state.h"
#include "core/ladder.h"
#include "truth/hertz.h"
#include "truth/limits.h"

namespace lobemax {

namespace {

constexpr int foot = 2;
constexpr int centimetre = 4;
constexpr int crowned_roller = 2;

bool Crowned(const Design_State& design)
{
    return design.cam.Followtype == 1 && design.dynamics.Roller_type == crowned_roller;
}

/// The units in which the stress comes out as it is told: lb and in, N and mm, N and m.
struct Contact_Units {
    double length = 1.0;   // of the design, in these
    double modulus = 1.0;  // as it stands, in these
};

Contact_Units Units_of_Contact(const Design_State& design)
{
    switch (design.identity.WhichUnit) {
    case foot:  // steel's modulus is 30E6 psi over 144
        return {12.0, 144.0};
    case centimetre:  // a modulus is what its label says, MPa
        return {10.0, 1.0};
    default:
        return {};
    }
}

/// The share of the follower's force that the normal has: (270).
double Lever(const Mechanism& follower, const True_Point& point)
{
    constexpr double least = 1E-6;
    const double lever = !follower.roller && follower.arm ? std::abs(point.along) / follower.arm_length
                                                          : std::cos(point.Phi * Rad_per_Deg);
    return std::max(lever, least);
}

std::vector<double> Contact_Forces(const Design_State& design, const Mechanism& follower,
                                   std::span<const True_Point> points)
{
    const Dynamics_Group& d = design.dynamics;
    const auto row = design.results.CalcData.Points(Holds(design, Mark::vibration) ? var::Dynamic_Force : var::Force);
    const auto external = design.results.Ext_Force_Table.Points();
    const bool added = d.Ext_Force_Add && Holds(design, Mark::external_force);
    const bool form_closed = design.cam.Closure == "Form";
    std::vector<double> forces(std::min(points.size(), row.size()));
    for (std::size_t i = 0; i < forces.size(); ++i) {
        double F = row[i];
        if (added && i < external.size())
            F += external[i];
        const double N = (F + d.Follower_Weight) / Lever(follower, points[i]);
        forces[i] = form_closed ? std::abs(N) : N;
    }
    return forces;
}

/// The contact of the design's materials and sizes, in the units of its stress.
class Pair_of_Bodies {
public:
    explicit Pair_of_Bodies(const Design_State& design)
    {
        const Dynamics_Group& d = design.dynamics;
        const Contact_Units units = Units_of_Contact(design);
        for (const int body : {1, 2}) {
            const double nu = d.Poissons_ratio(body);
            compliance_ += (1.0 - nu * nu) / (d.Youngs_modulus(body) * units.modulus);
        }
        scale_ = units.length;
        if (design.cam.Followtype == 1)
            roller_ = design.cam.Follow_Rad * scale_;
        if (Crowned(design)) {
            crown_ = d.Crown_radius * scale_;
            ellipses_.emplace(compliance_, d.Poissons_ratio(1));
        } else {
            length_ = d.Roller_length * scale_;
        }
    }

    /// None where nothing can touch so.
    std::optional<Contact> At(double force, double Rho_Surface)
    {
        const double convexity = 1.0 / (Rho_Surface * scale_) + (roller_ ? 1.0 / *roller_ : 0.0);
        if (!(force > 0.0) || !(convexity > 0.0))
            return std::nullopt;
        const Contact contact = ellipses_ ? ellipses_->At(force, 0.5 / crown_, 0.5 * convexity)
                                          : Line_Contact(force, length_, convexity, compliance_);
        if (!std::isfinite(contact.pressure) || !std::isfinite(contact.shear))
            return std::nullopt;
        return contact;
    }

private:
    double compliance_ = 0.0;
    double scale_ = 1.0;
    std::optional<double> roller_;
    double length_ = 0.0;
    double crown_ = 0.0;
    std::optional<Elliptic_Contacts> ellipses_;
};

}  // namespace

True_Contact Find_True_Contact(const Design_State& design, const Mechanism& follower,
                               std::span<const True_Point> points)
{
    True_Contact contact;
    if (!Holds(design, Mark::forces) || Holds(design, Mark::units_changed))
        return contact;
    contact.force = Contact_Forces(design, follower, points);
    if (!Holds(design, Mark::stress))
        return contact;
    Pair_of_Bodies bodies(design);
    const std::size_t count = contact.force.size();
    contact.sigma.assign(count, 0.0);
    contact.tau.assign(count, 0.0);
    for (std::size_t i = 0; i < count; ++i) {
        const std::optional<Contact> found = bodies.At(contact.force[i], points[i].Rho_Surface);
        if (!found)
            continue;
        contact.sigma[i] = -found->pressure;
        contact.tau[i] = found->shear;
    }
    return contact;
}

std::string Unit_of_True_Stress(const Design_State& design)
{
    return Unit_of_Limit(design, Limit::Sigma);
}

double Stress_Row_Factor(const Design_State& design)
{
    // The row has lengths and modulus as they stand: a strip's pressure goes with the root of E W / (l R), an
    // ellipse's with the cube root of E^2 W / R^2.
    const Contact_Units units = Units_of_Contact(design);
    const double force_per_area = 1.0 / (units.length * units.length);
    return Crowned(design) ? std::cbrt(units.modulus * units.modulus * force_per_area)
                           : std::sqrt(units.modulus * force_per_area);
}

}  // namespace lobemax
