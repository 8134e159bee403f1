// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/hertz.h"

#include <gtest/gtest.h>

#include <boost/math/special_functions/ellint_1.hpp>
#include <boost/math/special_functions/ellint_2.hpp>
#include <cmath>
#include <numbers>

namespace lobemax {
namespace {

constexpr double pi = std::numbers::pi;

/// Compliance of steel on steel, mm^2/N.
constexpr double steel = 2 * (1 - 0.28 * 0.28) / 207E3;

TEST(Line, a_strip_carries_its_force_at_the_pressure_of_the_closed_form)
{
    // p_0 = sqrt(W / (pi l m R)) with 1/R the sum of both: 256.5 N on 20 mm, rollers of 12.5 mm on 50 mm
    const double convexity = 1 / 12.5 + 1 / 50.0;
    const Contact c = Line_Contact(256.5, 20, convexity, steel);
    EXPECT_NEAR(c.pressure, std::sqrt(256.5 * convexity / (pi * 20 * steel)), 1E-6);
    EXPECT_NEAR(pi / 2 * c.half_width * c.pressure * 20, 256.5, 1E-6) << "half an ellipse of pressure over the strip";
    EXPECT_EQ(c.half_length, 0.0);
}

TEST(Line, the_largest_shear_is_where_the_stresses_below_the_strip_differ_most)
{
    const Contact c = Line_Contact(1000, 10, 0.1, steel);
    double largest = 0;
    double depth = 0;
    for (double z = 0; z < 3; z += 1E-5) {
        const double s = std::sqrt(1 + z * z);
        const double shear = ((1 / s) - ((1 + 2 * z * z) / s - 2 * z)) / 2;  // (sigma_x - sigma_z) / 2
        if (shear > largest) {
            largest = shear;
            depth = z;
        }
    }
    EXPECT_NEAR(c.shear / c.pressure, largest, 1E-9);
    EXPECT_NEAR(c.depth / c.half_width, depth, 1E-4);
    EXPECT_NEAR(c.shear / c.pressure, 0.3003, 5E-5);
    EXPECT_NEAR(c.depth / c.half_width, 0.786, 5E-4);
}

TEST(Ellipse, of_two_spheres_is_the_circle_of_the_closed_form)
{
    // a^3 = 3 W R m / 4 and p_0^3 = 6 W / (pi^3 m^2 R^2) for 1/R = 1/R_1 + 1/R_2, A = B = 1 / 2R
    const double R = 1 / (1 / 40.0 + 1 / 25.0);
    const double W = 730;
    const Contact c = Elliptic_Contact(W, 1 / (2 * R), 1 / (2 * R), steel, 0.3);
    EXPECT_NEAR(c.half_width, std::cbrt(3 * W * R * steel / 4), 1E-9);
    EXPECT_NEAR(c.half_length, c.half_width, 1E-9);
    EXPECT_NEAR(c.pressure, std::cbrt(6 * W / (pi * pi * pi * steel * steel * R * R)), 1E-6);
}

TEST(Ellipse, shear_below_a_circle_is_that_of_the_closed_form)
{
    // sigma_z = -1 / (1 + z^2), sigma_r = -(1 + nu) (1 - z atan(1/z)) + 1 / (2 (1 + z^2)), Huber 1904
    for (const double nu : {0.0, 0.2, 0.28, 0.3, 0.5}) {
        double largest = 0;
        double depth = 0;
        for (double z = 1E-5; z < 2; z += 1E-5) {
            const double sigma_z = -1 / (1 + z * z);
            const double sigma_r = -(1 + nu) * (1 - z * std::atan(1 / z)) - sigma_z / 2;
            if (const double shear = (sigma_r - sigma_z) / 2; shear > largest) {
                largest = shear;
                depth = z;
            }
        }
        const Shear_Below found = Largest_Shear(1.0, nu);
        EXPECT_NEAR(found.shear, largest, 1E-9) << nu;
        EXPECT_NEAR(found.depth, depth, 1E-3) << nu;
    }
}

TEST(Ellipse, axes_are_those_of_the_published_table)
{
    // H. L. Whittemore, S. N. Petrenko, Friction and carrying capacity of ball and roller bearings, 1921, after
    // H. Hertz, Ueber die Beruehrung fester elastischer Koerper, 1882: half axes over the cube root of
    // 3 W m / (4 (A + B)), by cos theta = (B - A) / (A + B). The angles between the
    // tens are off by up to 0.002 there.
    struct Row {
        double theta, k_a, k_b;
    };
    for (const auto& [theta, k_a, k_b] :
         {Row{30, 2.731, 0.493}, Row{35, 2.397, 0.530}, Row{40, 2.136, 0.567}, Row{45, 1.926, 0.604},
          Row{50, 1.754, 0.641}, Row{55, 1.611, 0.678}, Row{60, 1.486, 0.717}, Row{65, 1.378, 0.759},
          Row{70, 1.284, 0.802}, Row{75, 1.202, 0.846}, Row{80, 1.128, 0.893}, Row{85, 1.061, 0.944},
          Row{90, 1.000, 1.000}}) {
        const double c = std::cos(theta * pi / 180);
        const Contact found = Elliptic_Contact(4.0 / 3.0, (1 - c) / 2, (1 + c) / 2, 1.0, 0.3);
        EXPECT_NEAR(found.half_length, k_a, 2.2E-3) << theta;
        EXPECT_NEAR(found.half_width, k_b, 2.2E-3) << theta;
    }
}

TEST(Ellipse, largest_shear_is_that_of_the_published_table)
{
    // K. L. Johnson, Contact Mechanics, 1985: nu = 0.3, by the ratio of the half axes; given to about one half
    // percent of the shear and one of the depth.
    struct Row {
        double ratio, depth, shear;
    };
    for (const auto& [ratio, depth, shear] : {Row{0.0, 0.785, 0.300}, Row{0.2, 0.745, 0.322}, Row{0.4, 0.665, 0.325},
                                              Row{0.6, 0.590, 0.323}, Row{0.8, 0.530, 0.317}, Row{1.0, 0.480, 0.310}}) {
        const Shear_Below found = Largest_Shear(ratio, 0.3);
        EXPECT_NEAR(found.shear, shear, 1.1E-3) << ratio;
        EXPECT_NEAR(found.depth, depth, 7E-3) << ratio;
    }
}

TEST(Ellipse, axes_ratio_solves_the_equation_of_the_gap_from_the_circle_to_the_strip)
{
    EXPECT_EQ(Axes_Ratio(1.0), 1.0);
    EXPECT_EQ(Axes_Ratio(0.5), 1.0) << "no gap has a smaller ratio";
    double former = 1.0;
    for (double r = 1.001; r < 1.1E8; r *= 1.01) {
        const double kappa = Axes_Ratio(r);
        EXPECT_LT(kappa, former);
        former = kappa;
        if (r > 1E6)
            continue;  // the integrals of the modulus have lost the ratio's figures there
        const double e = std::sqrt((1 - kappa) * (1 + kappa));
        const double K = boost::math::ellint_1(e);
        const double E = boost::math::ellint_2(e);
        EXPECT_NEAR((E / (kappa * kappa) - K) / (K - E) / r, 1.0, 1E-9) << r;
    }
    // near the circle kappa = (A/B)^(2/3); a long ellipse has kappa^2 B/A = 1 / (ln(4 / kappa) - 1)
    EXPECT_NEAR(Axes_Ratio(1 + 1E-6), 1 - 2.0 / 3.0 * 1E-6, 1E-12);
    const double longest = Axes_Ratio(1E8);
    EXPECT_NEAR(longest * longest * 1E8 * (std::log(4 / longest) - 1), 1.0, 1E-7);
}

TEST(Ellipse, pressure_carries_the_force_and_closes_the_gap)
{
    for (const double B : {0.02, 0.05, 0.3, 4.0, 900.0}) {
        constexpr double A = 0.02;
        constexpr double W = 1200;
        const Contact c = Elliptic_Contact(W, A, B, steel, 0.28);
        EXPECT_NEAR(2.0 / 3.0 * pi * c.half_length * c.half_width * c.pressure, W, 1E-9 * W);
        const double kappa = c.half_width / c.half_length;
        const double E = boost::math::ellint_2(std::sqrt(1 - kappa * kappa));
        EXPECT_NEAR(steel * c.pressure * E / c.half_width / (A + B), 1.0, 1E-9) << B;
        const Contact turned = Elliptic_Contact(W, B, A, steel, 0.28);
        EXPECT_EQ(turned.pressure, c.pressure) << "the order of the curvatures does not matter";
    }
}

TEST(Ellipse, a_long_one_shears_as_a_strip)
{
    const Shear_Below strip = Largest_Shear(1E-6, 0.28);
    EXPECT_NEAR(strip.shear, 0.3002831, 1E-6);
    EXPECT_NEAR(strip.depth, 0.78615, 1E-3);
    // A body of a small ratio of Poisson shears more with the direction of the strip: that of the strip's plane strain.
    double largest = 0;
    for (double z = 0; z < 2; z += 1E-4) {
        const double s = std::sqrt(1 + z * z);
        const double across = -((1 + 2 * z * z) / s - 2 * z);
        largest = std::max(largest, (0.1 * (across - 1 / s) + 1 / s) / 2);
    }
    EXPECT_GT(Largest_Shear(1E-6, 0.1).shear, strip.shear);
    EXPECT_NEAR(Largest_Shear(1E-6, 0.1).shear, largest, 1E-6);
}

TEST(Ellipse, many_contacts_of_a_pair_are_the_exact_ones)
{
    for (const double nu : {0.0, 0.15, 0.21, 0.28, 0.33, 0.5}) {
        Elliptic_Contacts contacts(steel, nu);
        for (double r = 1; r < 1E9; r *= 1.7) {
            const Contact exact = Elliptic_Contact(500, 0.001, 0.001 * r, steel, nu);
            const Contact found = contacts.At(500, 0.001, 0.001 * r);
            EXPECT_EQ(found.pressure, exact.pressure);
            EXPECT_EQ(found.half_length, exact.half_length);
            EXPECT_NEAR(found.shear / exact.pressure, exact.shear / exact.pressure, 1E-5) << nu << ' ' << r;
            EXPECT_NEAR(found.depth / exact.half_width, exact.depth / exact.half_width, 2E-3) << nu << ' ' << r;
        }
    }
}

// Along a cam each ellipse starts from the one before: near the circle, through a curvature that stands still, back and
// forth.
TEST(Ellipse, one_contact_leads_to_the_next)
{
    for (const double middle : {1.0001, 1.02, 3.0, 80.0, 4E6}) {
        Elliptic_Contacts contacts(steel, 0.28);
        for (int i = 0; i < 400; ++i) {
            const double r = std::max(1.0, middle * std::exp(i % 50 < 20 ? 0.3 : 0.3 * std::cos(0.1 * i)));
            const Contact exact = Elliptic_Contact(500, 0.001, 0.001 * r, steel, 0.28);
            const Contact found = contacts.At(500, 0.001, 0.001 * r);
            EXPECT_NEAR(found.pressure, exact.pressure, 1E-12 * exact.pressure) << r;
            EXPECT_NEAR(found.half_length, exact.half_length, 1E-12 * exact.half_length) << r;
            EXPECT_NEAR(found.half_width, exact.half_width, 1E-12 * exact.half_width) << r;
        }
    }
}

}  // namespace
}  // namespace lobemax
