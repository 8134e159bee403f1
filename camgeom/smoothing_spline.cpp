// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/smoothing_spline.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/traps.h"

namespace lobemax {

namespace {

constexpr std::size_t fewest_intervals = 5;  // the five diagonals then meet no row twice

/// Five diagonals without corners, as L D L': L has the bands one and two.
struct Five_Band {
    std::vector<double> d;
    std::vector<double> one;
    std::vector<double> two;

    Five_Band(std::span<const double> diagonal, std::span<const double> next, std::span<const double> beyond)
        : d(diagonal.begin(), diagonal.end()), one(d.size()), two(d.size())
    {
        const std::size_t m = d.size();
        for (std::size_t i = 0; i < m; ++i) {
            double side = next[i];
            if (i >= 1) {
                d[i] -= one[i - 1] * one[i - 1] * d[i - 1];
                side -= one[i - 1] * two[i - 1] * d[i - 1];
            }
            if (i >= 2)
                d[i] -= two[i - 2] * two[i - 2] * d[i - 2];
            one[i] = i + 1 < m ? side / d[i] : 0.0;
            two[i] = i + 2 < m ? beyond[i] / d[i] : 0.0;
        }
    }

    void Solve(std::vector<double>& r) const
    {
        const std::size_t m = d.size();
        for (std::size_t i = 1; i < m; ++i)
            r[i] -= one[i - 1] * r[i - 1] + (i >= 2 ? two[i - 2] * r[i - 2] : 0.0);
        for (std::size_t i = 0; i < m; ++i)
            r[i] /= d[i];
        for (std::size_t i = m - 1; i-- > 0;)
            r[i] -= one[i] * r[i + 1] + (i + 2 < m ? two[i] * r[i + 2] : 0.0);
    }
};

double Dot(const std::vector<double>& a, const std::vector<double>& b)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

}  // namespace

std::vector<double> Solve_Cyclic_Five(std::span<const double> diagonal, std::span<const double> next,
                                      std::span<const double> beyond, std::span<const double> right)
{
    const std::size_t n = diagonal.size();
    if (n < fewest_intervals)
        throw Fault{out_of_bounds};
    // The last two rows border a band: what the corners couple stands in two columns.
    const std::size_t m = n - 2;
    const Five_Band band(diagonal.first(m), next.first(m), beyond.first(m));
    std::array<std::vector<double>, 2> column{std::vector<double>(m), std::vector<double>(m)};
    column[0][0] += beyond[n - 2];
    column[0][m - 2] += beyond[m - 2];
    column[0][m - 1] += next[m - 1];
    column[1][0] += next[n - 1];
    column[1][1] += beyond[n - 1];
    column[1][m - 1] += beyond[m - 1];
    std::array<std::vector<double>, 2> solved = column;
    for (std::vector<double>& z : solved)
        band.Solve(z);
    std::vector<double> w(right.begin(), right.begin() + static_cast<std::ptrdiff_t>(m));
    band.Solve(w);
    const double a = diagonal[n - 2] - Dot(column[0], solved[0]);
    const double b = next[n - 2] - Dot(column[0], solved[1]);
    const double c = diagonal[n - 1] - Dot(column[1], solved[1]);
    const std::array<double, 2> r{right[n - 2] - Dot(column[0], w), right[n - 1] - Dot(column[1], w)};
    const double determinant = a * c - b * b;
    const std::array<double, 2> last{(c * r[0] - b * r[1]) / determinant, (a * r[1] - b * r[0]) / determinant};
    for (std::size_t i = 0; i < m; ++i)
        w[i] -= solved[0][i] * last[0] + solved[1][i] * last[1];
    w.push_back(last[0]);
    w.push_back(last[1]);
    return w;
}

Smoothing_Spline Spline_of_Factor(std::span<const Single> x, std::span<const Single> y, double factor)
{
    const std::size_t n = x.size() - 1;
    std::vector<double> h(n);
    for (std::size_t i = 0; i < n; ++i)
        h[i] = x[i + 1] - x[i];
    const auto before = [n](std::size_t i) { return (i + n - 1) % n; };
    const auto after = [n](std::size_t i) { return (i + 1) % n; };
    // The change of slope at each point, by the values: q(i) and 1 / h beside it.
    const auto q = [&](std::size_t i) { return -1.0 / h[before(i)] - 1.0 / h[i]; };
    const auto slopes = [&](const auto& value) {
        std::vector<double> change(n);
        for (std::size_t i = 0; i < n; ++i)
            change[i] = (value(after(i)) - value(i)) / h[i] - (value(i) - value(before(i))) / h[before(i)];
        return change;
    };
    std::vector<double> diagonal(n), next(n), beyond(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double here = 1.0 / h[i];
        const double back = 1.0 / h[before(i)];
        diagonal[i] = (h[before(i)] + h[i]) / 3.0 + factor * (back * back + q(i) * q(i) + here * here);
        next[i] = h[i] / 6.0 + factor * here * (q(i) + q(after(i)));
        beyond[i] = factor * here / h[after(i)];
    }
    Smoothing_Spline spline;
    spline.factor = factor;
    spline.curvature = Solve_Cyclic_Five(diagonal, next, beyond, slopes([&](std::size_t i) { return double{y[i]}; }));
    const std::vector<double> pull = slopes([&](std::size_t i) { return spline.curvature[i]; });
    spline.x.assign(x.begin(), x.end());
    for (std::size_t i = 0; i < n; ++i)
        spline.s.push_back(y[i] - factor * pull[i]);
    spline.s.push_back(spline.s.front());
    spline.curvature.push_back(spline.curvature.front());
    return spline;
}

Largest_Move Largest_Move_of(const Smoothing_Spline& spline, std::span<const Single> y)
{
    Largest_Move move;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double distance = std::abs(spline.s[i] - y[i]);
        if (distance > move.distance)
            move = {distance, spline.x[i]};
    }
    return move;
}

Fit_Status Smooth_within(std::span<const Single> x, std::span<const Single> y, double bound, Smoothing_Spline& spline)
{
    const Fit_Status status = Check_Closed(x, y, static_cast<int>(fewest_intervals));
    if (status != Fit_Status::success)
        return status;
    if (!(bound >= 0.0)) {
        Show_Message("The bound of the smoothing cannot be negative.", Buttons::OK, Symbol::exclamation);
        return Fit_Status::failed;
    }
    const auto [least, largest] = std::ranges::minmax(y);
    if (bound > 0.0 && bound >= (largest - least) / 2.0) {
        Show_Message(
            "A bound of half the lift and more leaves nothing of the motion.  Please type a smaller one for the "
            "smoothing.",
            Buttons::OK, Symbol::exclamation);
        return Fit_Status::failed;
    }
    // A wave of k to the cycle of 2 pi keeps 1 / (1 + factor h k^4) of itself, h the mean step.
    const double step = (x.back() - x.front()) / static_cast<double>(x.size() - 1);
    constexpr double next_to_nothing = 1E-12;
    constexpr double next_to_everything = 1E4;
    double low = next_to_nothing * step * step * step;
    double high = next_to_everything / step;
    const auto holds = [&](double factor) {
        Smoothing_Spline tried = Spline_of_Factor(x, y, factor);
        if (!(Largest_Move_of(tried, y).distance <= bound))
            return false;
        spline = std::move(tried);
        return true;
    };
    if (bound == 0.0 || !holds(low)) {
        spline = Spline_of_Factor(x, y, 0.0);
        return Fit_Status::success;
    }
    constexpr double near = 1.0001;
    while (high > near * low) {
        const double middle = std::sqrt(low * high);
        (holds(middle) ? low : high) = middle;
    }
    return Fit_Status::success;
}

Fit_Point Smoothing_Spline_At(const Smoothing_Spline& spline, double t)
{
    const std::vector<double>& x = spline.x;
    const double within = t < x.front() ? t + PI2 : t;
    const auto found = std::lower_bound(x.begin(), x.end(), within);
    const std::size_t i = std::clamp<std::size_t>(static_cast<std::size_t>(found - x.begin()), 1, x.size() - 1) - 1;
    const double h = x[i + 1] - x[i];
    const double u = within - x[i];
    const double a = spline.curvature[i];
    const double j = (spline.curvature[i + 1] - a) / h;
    const double b = (spline.s[i + 1] - spline.s[i]) / h - h * (2 * a + spline.curvature[i + 1]) / 6.0;
    return {spline.s[i] + u * (b + u * (a / 2.0 + u * j / 6.0)), b + u * (a + u * j / 2.0), a + u * j, j};
}

bool Smoothing_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, double bound,
                   Fit_Result& result, Largest_Move& move)
{
    bool fitted = false;
    Trap("Smoothing_Fit", [&] {
        Smoothing_Spline spline;
        if (Smooth_within(x, y, bound, spline) != Fit_Status::success)
            return;
        Fill_Grid(design, result, [&](double t) { return Smoothing_Spline_At(spline, t); });
        move = Largest_Move_of(spline, y);
        fitted = true;
    });
    return fitted;
}

}  // namespace lobemax
