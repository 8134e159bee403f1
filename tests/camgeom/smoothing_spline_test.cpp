// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/smoothing_spline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <utility>

#include "core/startup.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

constexpr double pi = 3.14159265358979323846;

struct Data {
    std::vector<Single> x;
    std::vector<Single> y;
};

/// A function of the cycle at n steps, even or between half and one and a half of their mean, closed, with normal
/// noise.
Data Sampled(int n, bool even, const std::function<double(double)>& f, double noise = 0.0)
{
    std::vector<double> place{0.0};
    for (int i = 0; i < n; ++i)
        place.push_back(place.back() + (even ? 1.0 : 1.0 + 0.5 * std::sin(1.7 * i)));
    std::mt19937 random(11);
    std::normal_distribution<double> error(0.0, 1.0);
    Data data;
    for (const double at : place) {
        const double x = at * 2 * pi / place.back();
        data.x.emplace_back(x);
        data.y.emplace_back(f(x) + noise * error(random));
    }
    data.y.back() = data.y.front();
    return data;
}

double Lobe(double x)
{
    return 5 - 5 * std::cos(x) + 0.4 * std::cos(3 * x + 1);
}

/// The integral of the squared second derivative, which goes straight from point to point.
double Bending(const Smoothing_Spline& spline)
{
    double sum = 0.0;
    for (std::size_t i = 1; i < spline.x.size(); ++i) {
        const double a = spline.curvature[i - 1];
        const double b = spline.curvature[i];
        sum += (spline.x[i] - spline.x[i - 1]) * (a * a + a * b + b * b) / 3;
    }
    return sum;
}

double Misses(const Smoothing_Spline& spline, const Data& data)
{
    double sum = 0.0;
    for (std::size_t i = 0; i + 1 < data.y.size(); ++i)
        sum += std::pow(spline.s[i] - data.y[i], 2);
    return sum;
}

class A_Smoothing_Spline : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    Script script_;
};

TEST_F(A_Smoothing_Spline, solves_five_cyclic_diagonals_as_they_multiply_out)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (const std::size_t n : {5U, 6U, 7U, 8U, 40U, 2880U}) {
        std::vector<double> d(n), next(n), beyond(n), wanted(n);
        for (std::size_t i = 0; i < n; ++i) {
            d[i] = 5 + any(random);  // dominant: definite
            next[i] = any(random);
            beyond[i] = any(random);
            wanted[i] = any(random);
        }
        std::vector<double> right(n);
        for (std::size_t i = 0; i < n; ++i) {
            right[i] += d[i] * wanted[i];
            for (const auto& [band, steps] : {std::pair{&next, 1U}, std::pair{&beyond, 2U}}) {
                const std::size_t k = (i + steps) % n;
                right[i] += (*band)[i] * wanted[k];
                right[k] += (*band)[i] * wanted[i];
            }
        }
        const std::vector<double> found = Solve_Cyclic_Five(d, next, beyond, right);
        ASSERT_EQ(found.size(), n);
        for (std::size_t i = 0; i < n; ++i)
            EXPECT_NEAR(found[i], wanted[i], 1E-12) << n << " row " << i;
    }
    const std::vector<double> few(4, 1.0);
    EXPECT_THROW(Solve_Cyclic_Five(few, few, few, few), Fault);
}

TEST_F(A_Smoothing_Spline, leaves_of_a_wave_what_its_bending_costs)
{
    // At even steps h a wave cos(k x) is its own solution: with R = h (2 + cos k h) / 3 and Q = (2 cos k h - 2) / h it
    // keeps R / (R + factor Q^2) of itself.
    const int n = 90;
    const double h = 2 * pi / n;
    for (const int k : {1, 4, 20, 45})
        for (const double factor : {1E-7, 1E-4, 0.1, 10.0}) {
            const Data data = Sampled(n, true, [k](double x) { return std::cos(k * x); });
            const double R = h * (2 + std::cos(k * h)) / 3;
            const double Q = (2 * std::cos(k * h) - 2) / h;
            const Smoothing_Spline spline = Spline_of_Factor(data.x, data.y, factor);
            for (std::size_t i = 0; i < data.x.size(); ++i)
                EXPECT_NEAR(spline.s[i], R / (R + factor * Q * Q) * data.y[i], 2E-5) << k << " " << factor;
        }
}

TEST_F(A_Smoothing_Spline, misses_and_bends_less_together_than_any_other_of_its_family)
{
    // The least of factor x bending + squares: solutions of other factors have more of that sum.
    const Data data = Sampled(60, false, Lobe, 0.05);
    const double factor = 0.002;
    const auto cost = [&](const Smoothing_Spline& s) { return factor * Bending(s) + Misses(s, data); };
    const double least = cost(Spline_of_Factor(data.x, data.y, factor));
    for (const double other : {0.0, 0.001, 0.0019, 0.0021, 0.004, 1.0})
        EXPECT_GT(cost(Spline_of_Factor(data.x, data.y, other)), least) << other;
    // And so has the spline through the points moved in any other way.
    const Smoothing_Spline best = Spline_of_Factor(data.x, data.y, factor);
    std::mt19937 random(2);
    std::uniform_real_distribution<double> any(-0.01, 0.01);
    for (int trial = 0; trial < 20; ++trial) {
        Data moved = data;
        for (std::size_t i = 0; i + 1 < moved.y.size(); ++i)
            moved.y[i] = best.s[i] + any(random);
        moved.y.back() = moved.y.front();
        EXPECT_GT(cost(Spline_of_Factor(moved.x, moved.y, 0.0)), least);
    }
}

TEST_F(A_Smoothing_Spline, is_smooth_across_its_points_and_around_the_cycle)
{
    const Data data = Sampled(50, false, Lobe, 0.02);
    Smoothing_Spline spline;
    ASSERT_EQ(Smooth_within(data.x, data.y, 0.05, spline), Fit_Status::success);
    constexpr double d = 1E-9;
    for (std::size_t i = 0; i < data.x.size(); ++i) {
        const double before = i == 0 ? double{data.x.back()} : double{data.x[i]};
        const double after = i + 1 == data.x.size() ? double{data.x.front()} : double{data.x[i]};
        const Fit_Point left = Smoothing_Spline_At(spline, before - d);
        const Fit_Point right = Smoothing_Spline_At(spline, after + d);
        EXPECT_NEAR(left.s, right.s, 1E-6) << i;
        EXPECT_NEAR(left.v, right.v, 1E-6) << i;
        EXPECT_NEAR(left.a, right.a, 1E-5) << i;
    }
    // Its derivatives are those of its values.
    for (const double t : {0.31, 2.0, 5.5}) {
        const double e = 1E-5;
        const Fit_Point a = Smoothing_Spline_At(spline, t - e);
        const Fit_Point b = Smoothing_Spline_At(spline, t);
        const Fit_Point c = Smoothing_Spline_At(spline, t + e);
        EXPECT_NEAR(b.v, (c.s - a.s) / (2 * e), 1E-6);
        EXPECT_NEAR(b.a, (c.v - a.v) / (2 * e), 1E-4);
        EXPECT_NEAR(b.j, (c.a - a.a) / (2 * e), 1E-4);
    }
}

TEST_F(A_Smoothing_Spline, moves_no_point_by_more_than_the_bound_and_uses_it)
{
    for (const bool even : {true, false})
        for (const int n : {24, 360, 2880})
            for (const double noise : {0.0, 0.01})
                for (const double bound : {0.001, 0.03, 1.0}) {
                    const Data data = Sampled(n, even, Lobe, noise);
                    Smoothing_Spline spline;
                    ASSERT_EQ(Smooth_within(data.x, data.y, bound, spline), Fit_Status::success);
                    const Largest_Move move = Largest_Move_of(spline, data.y);
                    EXPECT_LE(move.distance, bound) << n << " " << noise;
                    EXPECT_GT(move.distance, 0.99 * bound) << n << " " << noise;
                }
}

TEST_F(A_Smoothing_Spline, becomes_the_spline_through_the_data_as_the_bound_goes_to_zero)
{
    const Data data = Sampled(120, false, Lobe, 0.01);
    Periodic_Spline through;
    ASSERT_EQ(Spline_Coeffs(data.x, data.y, through), Fit_Status::success);
    for (const double bound : {0.0, 1E-12, 1E-7}) {
        Smoothing_Spline spline;
        ASSERT_EQ(Smooth_within(data.x, data.y, bound, spline), Fit_Status::success);
        for (int i = 0; i <= 1000; ++i) {
            const double t = i * 2 * pi / 1001;
            const Fit_Point a = Smoothing_Spline_At(spline, t);
            const Fit_Point b = Spline_At(through, t);
            EXPECT_NEAR(a.s, b.s, 1E-5);
            EXPECT_NEAR(a.v, b.v, 1E-3);
            EXPECT_NEAR(a.a, b.a, 0.02) << t;  // of some 30: the other one is kept in 32 bits
        }
    }
}

TEST_F(A_Smoothing_Spline, serves_angles_before_its_first_a_turn_further_on)
{
    Data data = Sampled(360, true, Lobe);
    for (Single& x : data.x)
        x = x + 0.5;
    Smoothing_Spline spline;
    ASSERT_EQ(Smooth_within(data.x, data.y, 1E-4, spline), Fit_Status::success);
    for (const double t : {0.0, 0.2, 0.49, 0.51, 6.2})
        EXPECT_NEAR(Smoothing_Spline_At(spline, t).s, Lobe(t - 0.5), 2E-4);
}

TEST_F(A_Smoothing_Spline, refuses_what_it_cannot_smooth)
{
    Smoothing_Spline spline;
    Data open = Sampled(30, true, Lobe);
    open.y.back() = 9.0;
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    EXPECT_EQ(Smooth_within(open.x, open.y, 0.1, spline), Fit_Status::not_periodic);
    const Data few = Sampled(4, true, Lobe);
    script_.Expect({"The array of data is too small - terminating the calculation"});
    EXPECT_EQ(Smooth_within(few.x, few.y, 0.1, spline), Fit_Status::too_small);
    Data repeated = Sampled(30, true, Lobe);
    repeated.x[4] = repeated.x[3];
    script_.Expect({"The array is singular - terminating the calculation"});
    EXPECT_EQ(Smooth_within(repeated.x, repeated.y, 0.1, spline), Fit_Status::too_small);
    const Data data = Sampled(30, true, [](double x) { return 5 - 5 * std::cos(x); });
    script_.Expect({"The bound of the smoothing cannot be negative.", Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Smooth_within(data.x, data.y, -0.1, spline), Fit_Status::failed);
    script_.Expect(
        {"A bound of half the lift and more leaves nothing of the motion.  Please type a smaller one for the "
         "smoothing.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Smooth_within(data.x, data.y, 5.0, spline), Fit_Status::failed);
    EXPECT_EQ(Smooth_within(data.x, data.y, 4.9, spline), Fit_Status::success);
}

TEST_F(A_Smoothing_Spline, fills_the_grid_per_degree)
{
    const Data data = Sampled(360, true, Lobe);
    Fit_Result result;
    Largest_Move move;
    ASSERT_TRUE(Smoothing_Fit(design, data.x, data.y, 1E-4, result, move));
    EXPECT_LE(move.distance, 1E-4);
    const double d = pi / 180;
    for (int i = 0; i <= 360; ++i) {
        const double t = i * d;
        EXPECT_NEAR(result(1, i), Lobe(t), 1.1E-4);
        EXPECT_NEAR(result(2, i), (5 * std::sin(t) - 1.2 * std::sin(3 * t + 1)) * d, 1E-3 * d);
        EXPECT_NEAR(result(3, i), (5 * std::cos(t) - 3.6 * std::cos(3 * t + 1)) * d * d, 5E-3 * d * d);
        EXPECT_NEAR(result(4, i), (-5 * std::sin(t) + 10.8 * std::sin(3 * t + 1)) * d * d * d, 0.5 * d * d * d);
    }
    Data open = data;
    open.y.back() = 9.0;
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    EXPECT_FALSE(Smoothing_Fit(design, open.x, open.y, 1E-4, result, move));
}

}  // namespace
}  // namespace lobemax
