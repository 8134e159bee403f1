// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/hertz.h"

#include <algorithm>
#include <boost/math/constants/constants.hpp>
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

/// By the arithmetic and geometric means of 1 and kappa, which come together: with c half the difference of each pair K
/// is a quarter turn over their limit, and (K - E) / K half the sum of 2^n c_n^2 from c_0 = e on. Over e^2 term by term
/// nothing cancels, from the circle to the strip. (262)
Contact_Ellipse Ellipse_at(double kappa)
{
    constexpr double close = 1E-16;  // of squares: the next difference would be the square of this one
    constexpr double quarter = boost::math::constants::half_pi<double>();
    const double e2 = (1.0 - kappa) * (1.0 + kappa);
    double a = 0.5 * (1.0 + kappa);
    double b = std::sqrt(kappa);
    double c2 = 0.25 * (1.0 - kappa) * (1.0 - kappa);
    double sum = 1.0 + 0.5 * (1.0 - kappa) / (1.0 + kappa);
    for (double share = 4.0; c2 > close * a * a; share *= 2.0) {
        const double c = 0.5 * (a - b);
        const double mean = 0.5 * (a + b);
        b = std::sqrt(a * b);
        a = mean;
        c2 = c * c;
        sum += share * c2 / e2;
    }
    const double K = 2.0 * quarter / (a + b);
    const double S = 0.5 * sum;  // (K - E) / (K e^2)
    return {kappa, 3.0 * K * (1.0 - S) / (kappa * kappa), 3.0 * K * S, K * (1.0 - e2 * S)};
}

/// The step of ln(kappa) that brings an ellipse's ratio of curvatures, P / Q, to r: by Halley's rule with the slope
/// (263) and its own.
double Step_to(const Contact_Ellipse& ellipse, double r)
{
    constexpr double almost_circle = 1E-3;
    const double curvatures = ellipse.P / ellipse.Q;
    const double error = std::log(curvatures / r);
    const double kappa_2 = ellipse.kappa * ellipse.kappa;
    const double e2 = (1.0 - ellipse.kappa) * (1.0 + ellipse.kappa);
    if (e2 < 1E-6)
        return error / 1.5;
    const double slope = -2.0 + (kappa_2 * curvatures - 1.0 / curvatures) / e2;
    const double newton = -error / slope;
    if (e2 < almost_circle)
        return newton;
    const double bend =
        (kappa_2 * curvatures * (2.0 + slope) + slope / curvatures + 2.0 * kappa_2 * (2.0 + slope)) / e2;
    return newton / (1.0 + 0.5 * newton * bend / slope);
}

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

/// The ellipse of a ratio of curvatures, from one near it: left behind is the last one that was worked out.
Contact_Ellipse Ellipse_from(Contact_Ellipse& ellipse, double r)
{
    constexpr double close = 1E-6;  // of a step: the next one would be of its cube
    constexpr int most_steps = 60;
    double low = 0.0;
    double high = 1.0;
    for (int k = 0; k < most_steps; ++k) {
        const double step = Step_to(ellipse, r);
        (step < 0.0 ? high : low) = ellipse.kappa;
        double next = ellipse.kappa * std::exp(step);
        const bool arrived = std::abs(step) < close;
        if (!(next > low && next <= high))
            next = arrived ? ellipse.kappa : std::midpoint(low, high);
        if (arrived)  // dE / d ln(kappa) is kappa^2 Q / 3
            return {next, ellipse.P, ellipse.Q, ellipse.E + ellipse.kappa * ellipse.kappa * ellipse.Q / 3.0 * step};
        ellipse = Ellipse_at(next);
    }
    return ellipse;
}

Contact_Ellipse Ellipse_of(double r)
{
    Contact_Ellipse ellipse = Ellipse_at(r > 1.0 ? First_Ratio(r) : 1.0);
    return r > 1.0 ? Ellipse_from(ellipse, r) : ellipse;
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
Contact Of_Ellipse(double force, double sum, double compliance, const Contact_Ellipse& ellipse)
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
    const Contact_Ellipse ellipse = Ellipse_of(Ratio_of_Curvatures(A, B));
    Contact contact = Of_Ellipse(force, A + B, compliance, ellipse);
    const Shear_Below largest = Largest_Shear(ellipse.kappa, poisson);
    contact.shear = largest.shear * contact.pressure;
    contact.depth = largest.depth * contact.half_width;
    return contact;
}

const Elliptic_Contacts::Node& Elliptic_Contacts::Node_at(int k)
{
    Node& node = nodes_[static_cast<std::size_t>(k)];
    if (!node.found) {
        const double kappa = Ratio_of_Node(k, Nodes - 1);
        node.across = Largest_of(kappa, poisson_, &Centre_Stresses::across);
        node.along = Largest_of(kappa, poisson_, &Centre_Stresses::along);
        node.found = true;
    }
    return node;
}

Contact_Ellipse Elliptic_Contacts::Ellipse_near(double r)
{
    constexpr double near = 1.1;
    const bool follows = r > 1.0 && r < near * curvatures_ && curvatures_ < near * r;
    const Contact_Ellipse found = follows ? Ellipse_from(ellipse_, r) : Ellipse_of(r);
    if (!follows)
        ellipse_ = Ellipse_at(found.kappa);
    curvatures_ = r;
    return found;
}

Contact Elliptic_Contacts::At(double force, double A, double B)
{
    const Contact_Ellipse ellipse = Ellipse_near(Ratio_of_Curvatures(A, B));
    Contact contact = Of_Ellipse(force, A + B, compliance_, ellipse);
    const double x = std::sqrt(ellipse.kappa) * (Nodes - 1);
    const int first = std::clamp(static_cast<int>(x) - 1, 0, Nodes - 4);
    const double t = x - first;  // of the four nodes about the ratio, at 0, 1, 2, 3
    const std::array weights{-(t - 1.0) * (t - 2.0) * (t - 3.0) / 6.0, t * (t - 2.0) * (t - 3.0) / 2.0,
                             -t * (t - 1.0) * (t - 3.0) / 2.0, t * (t - 1.0) * (t - 2.0) / 6.0};
    Shear_Below across;
    Shear_Below along;
    const auto add = [](Shear_Below& to, double weight, const Shear_Below& of) {
        to.shear += weight * of.shear;
        to.depth += weight * of.depth;
    };
    for (int k = 0; k < 4; ++k) {
        const Node& node = Node_at(first + k);
        add(across, weights[static_cast<std::size_t>(k)], node.across);
        add(along, weights[static_cast<std::size_t>(k)], node.along);
    }
    const Shear_Below& largest = across.shear >= along.shear ? across : along;
    contact.shear = largest.shear * contact.pressure;
    contact.depth = largest.depth * contact.half_width;
    return contact;
}

}  // namespace lobemax
