// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/periodic_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "core/startup.h"
#include "core/variables.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

constexpr double pi = 3.14159265358979323846;

std::size_t At_Place(int i)
{
    return static_cast<std::size_t>(i);
}

struct Data {
    std::vector<Single> x;
    std::vector<Single> y;
};

/// Values of a function of the angle in radians at given degrees.
Data Sampled(const std::vector<double>& degrees, const std::function<double(double)>& f)
{
    Data data;
    for (const double angle : degrees) {
        data.x.emplace_back(angle * pi / 180);
        data.y.emplace_back(f(angle * pi / 180));
    }
    return data;
}

std::vector<double> Even(double from, double step, int count)
{
    std::vector<double> degrees;
    for (int i = 0; i < count; ++i)
        degrees.push_back(from + i * step);
    return degrees;
}

/// Steps between half and one and a half of their mean, closed.
std::vector<double> Uneven(int intervals)
{
    std::vector<double> degrees{0.0};
    for (int i = 0; i < intervals; ++i)
        degrees.push_back(degrees.back() + 1.0 + 0.5 * std::sin(1.7 * i));
    const double scale = 360.0 / degrees.back();
    for (double& angle : degrees)
        angle *= scale;
    return degrees;
}

/// A closed system by plain elimination, dense, in double: the independent solution.
std::vector<double> Dense_Spline_c(const Data& data)
{
    const int n = static_cast<int>(data.x.size()) - 1;
    std::vector<std::vector<double>> A(At_Place(n), std::vector<double>(At_Place(n) + 1));
    const auto h = [&](int i) { return data.x[At_Place(i % n + 1)] - data.x[At_Place(i % n)]; };
    const auto slope = [&](int i) { return (data.y[At_Place(i % n + 1)] - data.y[At_Place(i % n)]) / h(i); };
    for (int i = 0; i < n; ++i) {  // the knot i, before it the interval i - 1
        const int before = (i + n - 1) % n;
        A[At_Place(i)][At_Place(before)] += h(before);
        A[At_Place(i)][At_Place(i)] += 2 * (h(before) + h(i));
        A[At_Place(i)][At_Place((i + 1) % n)] += h(i);
        A[At_Place(i)][At_Place(n)] = 3 * (slope(i) - slope(before));
    }
    for (int k = 0; k < n; ++k) {
        const auto pivot = std::max_element(A.begin() + k, A.end(), [k](const auto& a, const auto& b) {
            return std::abs(a[At_Place(k)]) < std::abs(b[At_Place(k)]);
        });
        std::swap(*pivot, A[At_Place(k)]);
        for (int i = 0; i < n; ++i)
            if (i != k) {
                const double f = A[At_Place(i)][At_Place(k)] / A[At_Place(k)][At_Place(k)];
                for (int j = k; j <= n; ++j)
                    A[At_Place(i)][At_Place(j)] -= f * A[At_Place(k)][At_Place(j)];
            }
    }
    std::vector<double> c;
    for (int i = 0; i < n; ++i)
        c.push_back(A[At_Place(i)][At_Place(n)] / A[At_Place(i)][At_Place(i)]);
    return c;
}

class Periodic_Fit : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    static int Points() { return design.motion.Max_Data_Points_used; }
    Script script_;
};

TEST_F(Periodic_Fit, solves_the_closed_system_as_plain_elimination_does)
{
    for (const auto& degrees : {Even(0, 30, 13), Uneven(40), Even(0, 1, 361), std::vector<double>{0, 90, 200, 360}}) {
        Data data = Sampled(degrees, [](double t) { return 3 * std::sin(t) + 0.5 * std::cos(3 * t + 1); });
        data.y.back() = data.y.front();
        Periodic_Spline spline;
        ASSERT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::success);
        const std::vector<double> expected = Dense_Spline_c(data);
        double largest = 0.0;
        for (const double c : expected)
            largest = std::max(largest, std::abs(c));
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(spline.c[i], expected[i], 1E-5 * largest) << degrees.size() << " point " << i;
        EXPECT_EQ(spline.c.back(), spline.c.front());
    }
}

TEST_F(Periodic_Fit, passes_through_its_points_and_is_smooth_across_them)
{
    Data data = Sampled(Uneven(50), [](double t) { return 10 - 10 * std::cos(t); });
    data.y.back() = data.y.front();
    Periodic_Spline spline;
    ASSERT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::success);
    constexpr double h = 1E-9;
    for (std::size_t i = 1; i + 1 < data.x.size(); ++i) {
        const Fit_Point before = Spline_At(spline, data.x[i] - h);
        const Fit_Point after = Spline_At(spline, data.x[i] + h);
        EXPECT_NEAR(before.s, data.y[i], 1E-5);
        EXPECT_NEAR(after.s, data.y[i], 1E-5);
        EXPECT_NEAR(before.v, after.v, 1E-4);
        EXPECT_NEAR(before.a, after.a, 1E-3);
    }
    // And around the end of the cycle.
    EXPECT_NEAR(Spline_At(spline, 2 * pi - h).v, Spline_At(spline, h).v, 1E-4);
    EXPECT_NEAR(Spline_At(spline, 2 * pi - h).a, Spline_At(spline, h).a, 1E-3);
}

TEST_F(Periodic_Fit, comes_near_to_a_harmonic_with_the_order_of_a_spline)
{
    // A spline of step h misses a value by h^4, a curvature by h^2, a third derivative by h.
    std::vector<double> errors;
    for (const int intervals : {24, 48}) {
        const Data data = [&] {
            Data d = Sampled(Even(0, 360.0 / intervals, intervals + 1), [](double t) { return std::sin(t); });
            d.y.back() = d.y.front();
            return d;
        }();
        Periodic_Spline spline;
        ASSERT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::success);
        double a = 0.0;
        for (int i = 0; i <= 720; ++i) {
            const double t = i * pi / 360;
            a = std::max(a, std::abs(Spline_At(spline, t).a + std::sin(t)));
        }
        errors.push_back(a);
    }
    EXPECT_NEAR(errors[0] / errors[1], 4.0, 0.3);
}

TEST_F(Periodic_Fit, fills_the_grid_to_its_last_point_per_degree)
{
    Data data = Sampled(Even(0, 1, 361), [](double t) { return 5 - 5 * std::cos(t); });
    data.y.back() = data.y.front();
    for (const double step : {1.0, 0.125}) {
        design.motion.Deltatheta = step;
        design.motion.Max_Data_Points_used = static_cast<int>(360 / step);
        Allocate_Arrays(design, design.run.Saved_Variables, Points());
        Fit_Result result;
        ASSERT_TRUE(Periodic_Spline_Fit(design, data.x, data.y, result));
        EXPECT_EQ(result.Last_Point(), Points());
        for (int i = 0; i <= Points(); ++i) {
            const double t = i * step * pi / 180;
            EXPECT_EQ(design.results.CalcData(var::Angle, i), i * step);
            EXPECT_NEAR(result(1, i), 5 - 5 * std::cos(t), 2E-6);
            EXPECT_NEAR(result(2, i), 5 * std::sin(t) * pi / 180, 1E-5 * pi / 180 * 50);
            EXPECT_NEAR(result(3, i), 5 * std::cos(t) * std::pow(pi / 180, 2), 0.05 * std::pow(pi / 180, 2));
        }
    }
}

TEST_F(Periodic_Fit, serves_angles_before_its_first_a_turn_further_on)
{
    const auto f = [](double t) { return 5 - 5 * std::cos(t); };
    Data data = Sampled(Even(10, 1, 361), f);
    data.y.back() = data.y.front();
    Fit_Result result;
    ASSERT_TRUE(Periodic_Spline_Fit(design, data.x, data.y, result));
    for (const int i : {0, 5, 9, 10, 11, 355, 360})
        EXPECT_NEAR(result(1, i), f(i * pi / 180), 2E-5) << i;
}

TEST_F(Periodic_Fit, refuses_data_that_do_not_end_where_they_begin)
{
    const Data data = Sampled(Even(0, 30, 13), [](double t) { return t; });
    Periodic_Spline spline;
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    EXPECT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::not_periodic);
    EXPECT_EQ(static_cast<int>(Fit_Status::not_periodic), 2);
}

TEST_F(Periodic_Fit, refuses_three_points)
{
    const Data data = Sampled({0, 120, 360}, [](double) { return 1.0; });
    Periodic_Spline spline;
    script_.Expect({"The array of data is too small - terminating the calculation"});
    EXPECT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::too_small);
    std::vector<Single> a(3, 1.0);
    script_.Expect({"The array of data is too small - terminating the calculation"});
    EXPECT_EQ(Solve_Periodic(2, a, a, a, a, a), Fit_Status::few_points);
    EXPECT_EQ(static_cast<std::uint16_t>(Fit_Status::few_points), 65534);
}

TEST_F(Periodic_Fit, refuses_a_repeated_angle)
{
    const Data data = Sampled({0, 90, 90, 200, 360}, [](double) { return 1.0; });
    Periodic_Spline spline;
    script_.Expect({"The array is singular - terminating the calculation"});
    EXPECT_EQ(Spline_Coeffs(data.x, data.y, spline), Fit_Status::too_small);
}

TEST_F(Periodic_Fit, tells_which_matrix_it_cannot_factor)
{
    const auto factor = [](std::vector<Single> a1, std::vector<Single> a2, std::vector<Single> a3) {
        return Factor_Cyclic(static_cast<int>(a1.size()) - 1, a1, a2, a3);
    };
    const auto definite = [](int check) {
        return testing::Expected_Box{
            "The array is not positive definite - terminating the calculation (check = " + std::to_string(check) + ")"};
    };
    const testing::Expected_Box singular{"The array is singular - terminating the calculation"};
    script_.Expect(definite(2));
    EXPECT_EQ(factor({0, 0, 1, 1}, {0, 0, 0, 0}, {0, 0, 0, 0}), Fit_Status::failed);
    script_.Expect(singular);
    EXPECT_EQ(factor({0, 0, 4, 4}, {0, 1, 1, 0}, {0, 1, 0, 0}), Fit_Status::too_small);
    script_.Expect(definite(2));
    EXPECT_EQ(factor({0, -4, 4, 4}, {0, 1, 1, 0}, {0, 1, 0, 0}), Fit_Status::failed);
    script_.Expect(definite(3));
    EXPECT_EQ(factor({0, 1, 1, 4}, {0, 2, 1, 0}, {0, 1, 0, 0}), Fit_Status::failed);
    script_.Expect(singular);
    EXPECT_EQ(factor({0, 1, 1, 4}, {0, 1, 0, 0}, {0, 0, 0, 0}), Fit_Status::too_small);
    script_.Expect(definite(4));
    EXPECT_EQ(factor({0, 4, 4, 0.1}, {0, 1, 1, 0}, {0, 1, 0, 0}), Fit_Status::failed);
    script_.Expect(singular);
    EXPECT_EQ(factor({0, 1, 1, 1}, {0, 0, 0, 0}, {0, 1, 0, 0}), Fit_Status::too_small);
    EXPECT_EQ(factor({0, 4, 4, 4}, {0, 1, 1, 0}, {0, 1, 0, 0}), Fit_Status::success);
    EXPECT_EQ(static_cast<std::uint16_t>(Fit_Status::failed), 65535);
}

TEST_F(Periodic_Fit, is_exact_for_a_motion_of_few_harmonics_by_its_series)
{
    const auto s = [](double t) { return 4 + 3 * std::cos(t) - 2 * std::sin(2 * t) + 0.25 * std::cos(7 * t + 0.5); };
    const auto a = [](double t) { return -3 * std::cos(t) + 8 * std::sin(2 * t) - 12.25 * std::cos(7 * t + 0.5); };
    const Data data = Sampled(Even(0, 10, 36), s);
    Fit_Result result;
    ASSERT_TRUE(Fourier_Fit(design, data.x, data.y, result));
    for (int i = 0; i <= Points(); ++i) {
        const double t = i * pi / 180;
        EXPECT_NEAR(result(1, i), s(t), 1E-5);
        EXPECT_NEAR(result(3, i), a(t) * std::pow(pi / 180, 2), 1E-4 * std::pow(pi / 180, 2));
    }
    // The mean counts once.
    const Fourier_Series series = Fourier_Coeffs(data.x, data.y);
    EXPECT_NEAR(series.a[0], 4.0, 1E-6);
    EXPECT_NEAR(series.a[1], 3.0, 1E-6);
    EXPECT_NEAR(series.b[2], -2.0, 1E-6);
    EXPECT_EQ(series.a.size(), 19U) << "half of the count, and the mean";
}

TEST_F(Periodic_Fit, passes_through_every_point_by_its_whole_series)
{
    // The top harmonic counts half: a series of all harmonics goes through its points.
    const Data data = Sampled(Even(0, 15, 24), [](double t) { return std::abs(t - pi); });
    const Fourier_Series series = Fourier_Coeffs(data.x, data.y);
    for (std::size_t i = 0; i < data.x.size(); ++i)
        EXPECT_NEAR(Fourier_Eval(series, data.x[i]).s, data.y[i], 1E-6);
    const Fourier_Series few = Fourier_Coeffs(data.x, data.y, 3);
    EXPECT_EQ(few.a.size(), 4U);
}

TEST_F(Periodic_Fit, has_the_derivatives_of_its_series)
{
    const Data data = Sampled(Even(0, 15, 24), [](double t) { return std::exp(std::sin(t)); });
    const Fourier_Series series = Fourier_Coeffs(data.x, data.y);
    constexpr double h = 1E-5;
    for (const double t : {0.3, 2.0, 5.5}) {
        const Fit_Point before = Fourier_Eval(series, t - h);
        const Fit_Point here = Fourier_Eval(series, t);
        const Fit_Point after = Fourier_Eval(series, t + h);
        EXPECT_NEAR(here.v, (after.s - before.s) / (2 * h), 1E-8);
        EXPECT_NEAR(here.a, (after.v - before.v) / (2 * h), 1E-7);
        EXPECT_NEAR(here.j, (after.a - before.a) / (2 * h), 1E-5);
    }
}

TEST_F(Periodic_Fit, refuses_a_series_of_odd_or_closed_or_uneven_data)
{
    const testing::Expected_Box unclosed{
        "N must be even and the first and last data points unequal. (The function is unclosed.)"};
    Fit_Result result;
    const auto f = [](double t) { return std::sin(t); };
    Data odd = Sampled(Even(0, 40, 9), f);
    script_.Expect(unclosed);
    EXPECT_FALSE(Fourier_Fit(design, odd.x, odd.y, result));
    Data closed = Sampled(Even(0, 360.0 / 35, 36), f);
    closed.y.back() = closed.y.front();
    script_.Expect(unclosed);
    EXPECT_FALSE(Fourier_Fit(design, closed.x, closed.y, result));
    // The same displacement at another place is no closed cycle.
    Data dwell = Sampled(Even(0, 10, 36), [](double t) { return 1 - std::cos(t); });
    dwell.y.back() = dwell.y.front();
    EXPECT_TRUE(Fourier_Fit(design, dwell.x, dwell.y, result));
    Data uneven = Sampled({0, 50, 90, 140, 200, 300}, f);
    script_.Expect({"A Fourier series needs data at even steps of the cam angle.  Please fit a spline."});
    EXPECT_FALSE(Fourier_Fit(design, uneven.x, uneven.y, result));
}

TEST_F(Periodic_Fit, smooths_a_cubic_to_itself_and_halves_noise)
{
    // The parabola of five neighbours keeps every cubic inside, and at the ends too: fourth differences are zero, third
    // differences correct the ends of a parabola alone.
    std::vector<double> y;
    for (int i = 0; i <= 20; ++i)
        y.push_back(2 - 3 * i + 0.5 * i * i);
    std::vector<double> smooth = y;
    Lanczos_Smooth(smooth);
    for (std::size_t i = 0; i < y.size(); ++i)
        EXPECT_NEAR(smooth[i], y[i], 1E-9);
    for (std::size_t i = 0; i < y.size(); ++i)
        y[i] = 0.01 * static_cast<double>(i * i * i);
    smooth = y;
    Lanczos_Smooth(smooth);
    for (std::size_t i = 2; i + 2 < y.size(); ++i)
        EXPECT_NEAR(smooth[i], y[i], 1E-9);
    // A single disturbed value: weights 17/35 on itself, 12/35 on the next, -3/35 on the one behind.
    std::vector<double> spike(11);
    spike[5] = 35.0;
    Lanczos_Smooth(spike);
    const std::vector<double> expected{0, 0, 0, -3, 12, 17, 12, -3, 0, 0, 0};
    for (std::size_t i = 0; i < spike.size(); ++i)
        EXPECT_NEAR(spike[i], expected[i], 1E-9) << i;
    std::vector<double> few(4);
    EXPECT_THROW(Lanczos_Smooth(few), Fault);
}

TEST_F(Periodic_Fit, smooths_its_ends_as_parabolas_through_five_have_them)
{
    // Least squares of a parabola through y(0)..y(4), at 0 and 1: rows of the projection.
    std::vector<double> y{3, -1, 4, 1, -5, 9};
    std::vector<double> smooth = y;
    Lanczos_Smooth(smooth);
    EXPECT_NEAR(smooth[0], (31 * y[0] + 9 * y[1] - 3 * y[2] - 5 * y[3] + 3 * y[4]) / 35, 1E-9);
    EXPECT_NEAR(smooth[1], (9 * y[0] + 13 * y[1] + 12 * y[2] + 6 * y[3] - 5 * y[4]) / 35, 1E-9);
}

TEST_F(Periodic_Fit, differentiates_a_parabola_exactly_and_around_the_cycle)
{
    constexpr int N = 360;
    std::vector<double> wave;
    for (int i = 0; i <= N; ++i)
        wave.push_back(std::sin(i * pi / 180));
    const std::vector<double> slopes = Lanczos_Derivative(wave, pi / 180);
    // The factor of its parabola at a degree: (2 sin 2h + sin h) 2 / 10 h.
    const double h = pi / 180;
    const double factor = (2 * std::sin(2 * h) + std::sin(h)) / (5 * h);
    for (int i = 0; i <= N; ++i)
        EXPECT_NEAR(slopes[At_Place(i)], factor * std::cos(i * h), 1E-12);
    EXPECT_EQ(slopes.front(), slopes.back());
}

TEST_F(Periodic_Fit, derives_three_times_in_turn)
{
    Data data = Sampled(Even(0, 1, 361), [](double t) { return 5 - 5 * std::cos(t); });
    data.y.back() = data.y.front();
    Fit_Result result;
    ASSERT_TRUE(Lanczos_Fit(design, data.x, data.y, result));
    const double d = pi / 180;
    for (int i = 0; i <= Points(); ++i) {
        const double t = i * d;
        EXPECT_NEAR(result(1, i), 5 - 5 * std::cos(t), 1E-5);
        EXPECT_NEAR(result(2, i), 5 * std::sin(t) * d, 1E-3 * 5 * d);
        EXPECT_NEAR(result(3, i), 5 * std::cos(t) * d * d, 3E-3 * 5 * d * d);
        EXPECT_NEAR(result(4, i), -5 * std::sin(t) * d * d * d, 0.02 * 5 * d * d * d);
    }
}

}  // namespace
}  // namespace lobemax
