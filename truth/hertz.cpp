// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/hertz.h"

#include <algorithm>
#include <boost/math/special_functions/ellint_rd.hpp>
#include <boost/math/tools/minima.hpp>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "core/design_state.h"

namespace lobemax {

namespace {

namespace policies = boost::math::policies;
/// Nothing is thrown: an argument out of the domain gives what IEEE 754 has for it.
using Quiet =
    policies::policy<policies::domain_error<policies::ignore_error>, policies::pole_error<policies::ignore_error>,
                     policies::overflow_error<policies::ignore_error>,
                     policies::underflow_error<policies::ignore_error>,
                     policies::evaluation_error<policies::ignore_error>, policies::promote_double<false>>;

/// Carlson's symmetric integral of the second kind. (262)
double R_D(double x, double y, double z)
{
    return boost::math::ellint_rd(x, y, z, Quiet());
}

/// The ellipse of a ratio of half axes, and the two integrals that it has.
struct Ellipse {
    double kappa;  // b/a
    double P;      // R_D(0, 1, kappa^2) = 3 (E / kappa^2 - K) / e^2
    double Q;      // R_D(0, kappa^2, 1) = 3 (K - E) / e^2
    double E;      // of second kind

    explicit Ellipse(double ratio)
        : kappa(ratio),
          P(R_D(0.0, 1.0, ratio * ratio)),
          Q(R_D(0.0, ratio * ratio, 1.0)),
          E(ratio * ratio * (P + Q) / 3.0)
    {
    }

    double Curvatures() const { return P / Q; }
    /// d ln(B/A) / d ln(kappa) at a ratio of curvatures. (263)
    double Slope() const
    {
        constexpr double almost_circle = 1E-6;
        const double e2 = (1.0 - kappa) * (1.0 + kappa);
        if (e2 < almost_circle)
            return -1.5;
        const double r = Curvatures();
        return -2.0 + (kappa * kappa * r - 1.0 / r) / e2;
    }
};

/// Near the root of (130): within 4 % of it.
double First_Ratio(double r)
{
    constexpr double long_ellipse = 50.0;
    if (r <= long_ellipse)
        return std::min(1.0, std::pow(r, -0.636));
    double kappa = std::pow(r, -0.6);
    for (int k = 0; k < 3; ++k)  // kappa^2 B/A = 1 / (ln(4 / kappa) - 1) of a long ellipse
        kappa = 1.0 / std::sqrt(r * (std::log(4.0 / kappa) - 1.0));
    return kappa;
}

Ellipse Ellipse_of(double r)
{
    constexpr double close = 1E-8;  // of a step: the next one would be of its square
    constexpr int most_steps = 60;
    double low = 0.0;
    double high = 1.0;
    if (!(r > 1.0))
        return Ellipse(1.0);
    Ellipse ellipse(First_Ratio(r));
    for (int k = 0; k < most_steps; ++k) {
        const double error = std::log(ellipse.Curvatures() / r);
        (error > 0.0 ? low : high) = ellipse.kappa;  // a rounder ellipse has a smaller ratio of curvatures
        const double step = -error / ellipse.Slope();
        double next = ellipse.kappa * std::exp(step);
        const bool arrived = std::abs(step) < close;
        if (!(next > low && next <= high))
            next = arrived ? ellipse.kappa : std::midpoint(low, high);
        if (arrived) {  // E of a ratio so near is its own: it goes with kappa^2 ln(kappa)
            ellipse.kappa = next;
            break;
        }
        ellipse = Ellipse(next);
    }
    return ellipse;
}

/// Stresses below the centre of an ellipse of half axes 1 / kappa and 1 under the pressure 1: (264) to (268).
struct Centre_Stresses {
    double along;   // of the longer axis
    double across;  // of the shorter
    double normal;
};

Centre_Stresses Stresses_Below(double kappa, double nu, double z)
{
    const double a = 1.0 / kappa;
    const double z2 = z * z;
    const double p = std::sqrt(a * a + z2);
    const double q = std::sqrt(1.0 + z2);
    const double I_a = 2.0 / 3.0 * R_D(z2, q * q, p * p);
    const double I_b = 2.0 / 3.0 * R_D(z2, p * p, q * q);
    const double both = -4.0 * nu / (p * q) + 2.0 * nu * z * (I_a + I_b);
    const auto lateral = [&](double I, double own) {
        return a / 2.0 * (both + 2.0 * (1.0 - nu) * z * I - (1.0 - 2.0 * nu) * 2.0 / (own * (p + q)));
    };
    return {lateral(I_a, p), lateral(I_b, q), -a / (p * q)};
}

/// The largest shear of a direction with the normal, and its depth.
Shear_Below Largest_of(double kappa, double nu, double Centre_Stresses::*direction)
{
    constexpr double deepest = 2.0;
    constexpr int bits = 20;
    std::uintmax_t most_steps = 60;
    const auto less = [&](double z) {
        const Centre_Stresses s = Stresses_Below(kappa, nu, z);
        return -(s.*direction - s.normal) / 2.0;
    };
    const auto [depth, value] = boost::math::tools::brent_find_minima(less, 0.0, deepest, bits, most_steps);
    return {-value, depth};
}

/// A strip is the limit of long ellipses: what is shorter than this is one.
constexpr double shortest_ratio = 1E-9;

/// Nodes lie even in the square root of the ratio: the shear bends most in long ellipses.
double Ratio_of_Node(int k, int last)
{
    const double u = static_cast<double>(k) / last;
    return std::max(u * u, shortest_ratio);
}

/// (131) and (132): force, sum of the curvatures and compliance give the axes and the largest pressure.
Contact Of_Ellipse(double force, double sum, double compliance, const Ellipse& ellipse)
{
    Contact contact;
    contact.half_length =
        std::cbrt(3.0 * force * compliance * ellipse.E / (2.0 * PI * ellipse.kappa * ellipse.kappa * sum));
    contact.half_width = ellipse.kappa * contact.half_length;
    contact.pressure = 1.5 * force / (PI * contact.half_length * contact.half_width);
    return contact;
}

double Ratio_of_Curvatures(double& A, double& B)
{
    if (A > B)
        std::swap(A, B);
    return B / A;
}

}  // namespace

Contact Line_Contact(double force, double length, double convexity, double compliance)
{
    constexpr double shear = 0.3002831060007776;  // (261)
    constexpr double depth = 0.7861513777574233;
    Contact contact;
    contact.half_width = std::sqrt(4.0 / PI * compliance / convexity * force / length);
    contact.pressure = 2.0 * force / (PI * contact.half_width * length);
    contact.shear = shear * contact.pressure;
    contact.depth = depth * contact.half_width;
    return contact;
}

double Axes_Ratio(double B_over_A)
{
    return Ellipse_of(B_over_A).kappa;
}

Shear_Below Largest_Shear(double axes_ratio, double poisson)
{
    const double kappa = std::clamp(axes_ratio, shortest_ratio, 1.0);
    const Shear_Below across = Largest_of(kappa, poisson, &Centre_Stresses::across);
    const Shear_Below along = Largest_of(kappa, poisson, &Centre_Stresses::along);
    return across.shear >= along.shear ? across : along;
}

Contact Elliptic_Contact(double force, double A, double B, double compliance, double poisson)
{
    const Ellipse ellipse = Ellipse_of(Ratio_of_Curvatures(A, B));
    Contact contact = Of_Ellipse(force, A + B, compliance, ellipse);
    const Shear_Below largest = Largest_Shear(ellipse.kappa, poisson);
    contact.shear = largest.shear * contact.pressure;
    contact.depth = largest.depth * contact.half_width;
    return contact;
}

Elliptic_Contacts::Elliptic_Contacts(double compliance, double poisson) : compliance_(compliance)
{
    for (int k = 0; k < Nodes; ++k) {
        const auto at = static_cast<std::size_t>(k);
        const double kappa = Ratio_of_Node(k, Nodes - 1);
        const Shear_Below across = Largest_of(kappa, poisson, &Centre_Stresses::across);
        const Shear_Below along = Largest_of(kappa, poisson, &Centre_Stresses::along);
        across_[at] = across.shear;
        across_depth_[at] = across.depth;
        along_[at] = along.shear;
        along_depth_[at] = along.depth;
    }
}

Contact Elliptic_Contacts::At(double force, double A, double B) const
{
    const Ellipse ellipse = Ellipse_of(Ratio_of_Curvatures(A, B));
    Contact contact = Of_Ellipse(force, A + B, compliance_, ellipse);
    const double x = std::sqrt(ellipse.kappa) * (Nodes - 1);
    const int first = std::clamp(static_cast<int>(x) - 1, 0, Nodes - 4);
    const double t = x - first;  // of the four nodes about the ratio, at 0, 1, 2, 3
    const std::array weights{-(t - 1.0) * (t - 2.0) * (t - 3.0) / 6.0, t * (t - 2.0) * (t - 3.0) / 2.0,
                             -t * (t - 1.0) * (t - 3.0) / 2.0, t * (t - 1.0) * (t - 2.0) / 6.0};
    const auto between = [&](const Curve& curve) {
        double value = 0.0;
        for (std::size_t k = 0; k < weights.size(); ++k)
            value += weights[k] * curve[static_cast<std::size_t>(first) + k];
        return value;
    };
    const double across = between(across_);
    const double along = between(along_);
    contact.shear = std::max(across, along) * contact.pressure;
    contact.depth = between(across >= along ? across_depth_ : along_depth_) * contact.half_width;
    return contact;
}

}  // namespace lobemax
