// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/periodic_fit.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/traps.h"
#include "core/variables.h"

namespace lobemax {

namespace {

constexpr int fewest_intervals = 3;

std::size_t At_Place(int i)
{
    return static_cast<std::size_t>(i);
}

void Tell(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::information);
}

void Tell_Too_Small()
{
    Tell("The array of data is too small - terminating the calculation");
}

Fit_Status Singular()
{
    Tell("The array is singular - terminating the calculation");
    return Fit_Status::too_small;
}

Fit_Status Not_Positive_Definite(int check)
{
    Tell("The array is not positive definite - terminating the calculation (check = " + std::to_string(check) + ")");
    return Fit_Status::failed;
}

/// Four times the smallest number that 1 feels.
double Tolerance()
{
    double eps = 1.0;
    while (1.0 + eps > 1.0)
        eps /= 2.0;
    return 4.0 * eps;
}

/// A pivot of a row: none when it is sound.
std::optional<Fit_Status> Refused_Pivot(double pivot, double row_scale, int check)
{
    if (std::abs(pivot) <= Tolerance() * row_scale)
        return Singular();
    if (pivot <= 0.0)
        return Not_Positive_Definite(check);
    return {};
}

}  // namespace

Fit_Status Factor_Cyclic(int n, std::span<Single> a1, std::span<Single> a2, std::span<Single> a3)
{
    const auto row_scale = [&](int i) {
        const double before = i > 1 ? std::abs(double{a2[At_Place(i - 1)]}) : 0.0;
        return std::abs(double{a1[At_Place(i)]}) + std::abs(double{a2[At_Place(i)]}) + before +
               (i == 1 ? std::abs(double{a3[1]}) : 0.0);
    };
    // The scales of the rows as they came; the factors stand where the rows stood.
    std::vector<double> scale(At_Place(n) + 1);
    for (int i = 1; i <= n; ++i)
        scale[At_Place(i)] =
            i < n ? row_scale(i)
                  : std::abs(double{a1[At_Place(n)]}) + std::abs(double{a2[At_Place(n - 1)]}) + std::abs(double{a3[1]});
    if (!(scale[1] > 0.0))
        return Not_Positive_Definite(2);
    if (std::abs(double{a1[1]}) <= Tolerance() * scale[1])
        return Singular();
    if (!(a1[1] / scale[1] > 0.0))
        return Not_Positive_Definite(2);

    double band = a2[1];  // of the row before, as it came
    a2[1] = a2[1] / a1[1];
    a3[1] = a3[1] / a1[1];
    for (int i = 2; i < n; ++i) {
        const double w = a2[At_Place(i - 1)];
        const double pivot = a1[At_Place(i)] - w * band;
        if (const auto refused = Refused_Pivot(pivot, scale[At_Place(i)], 3))
            return *refused;
        a1[At_Place(i)] = pivot;
        const double last = -band * a3[At_Place(i - 1)] / pivot;  // element of the last row
        band = a2[At_Place(i)];
        if (i < n - 1) {
            a2[At_Place(i)] = band / pivot;
            a3[At_Place(i)] = last;
        } else {
            // The band meets the last row: both are one element.
            a2[At_Place(i)] = band / pivot + last;
            a3[At_Place(i)] = 0.0;
        }
    }
    double pivot = a1[At_Place(n)];
    for (int i = 1; i < n - 1; ++i)
        pivot -= a1[At_Place(i)] * a3[At_Place(i)] * a3[At_Place(i)];
    pivot -= a1[At_Place(n - 1)] * a2[At_Place(n - 1)] * a2[At_Place(n - 1)];
    if (const auto refused = Refused_Pivot(pivot, scale[At_Place(n)], 4))
        return *refused;
    a1[At_Place(n)] = pivot;
    return Fit_Status::success;
}

void Back_Solve_Cyclic(int n, std::span<const Single> a1, std::span<const Single> a2, std::span<const Single> a3,
                       std::span<Single> r, std::span<Single> c)
{
    for (int i = 2; i < n; ++i)
        r[At_Place(i)] = r[At_Place(i)] - a2[At_Place(i - 1)] * r[At_Place(i - 1)];
    double last = r[At_Place(n)] - a2[At_Place(n - 1)] * r[At_Place(n - 1)];
    for (int i = 1; i < n - 1; ++i)
        last -= a3[At_Place(i)] * r[At_Place(i)];
    r[At_Place(n)] = last;
    for (int i = 1; i <= n; ++i)
        r[At_Place(i)] = r[At_Place(i)] / a1[At_Place(i)];
    c[At_Place(n)] = r[At_Place(n)];
    c[At_Place(n - 1)] = r[At_Place(n - 1)] - a2[At_Place(n - 1)] * c[At_Place(n)];
    for (int i = n - 2; i >= 1; --i)
        c[At_Place(i)] = r[At_Place(i)] - a2[At_Place(i)] * c[At_Place(i + 1)] - a3[At_Place(i)] * c[At_Place(n)];
    c[0] = c[At_Place(n)];
}

Fit_Status Solve_Periodic(int n, std::span<Single> a1, std::span<Single> a2, std::span<Single> a3, std::span<Single> r,
                          std::span<Single> c)
{
    if (n < fewest_intervals) {
        Tell_Too_Small();
        return Fit_Status::few_points;
    }
    const Fit_Status status = Factor_Cyclic(n, a1, a2, a3);
    if (status == Fit_Status::success)
        Back_Solve_Cyclic(n, a1, a2, a3, r, c);
    return status;
}

Fit_Status Check_Closed(std::span<const Single> x, std::span<const Single> y, int fewest)
{
    const int n = static_cast<int>(std::min(x.size(), y.size())) - 1;
    if (n < 1 || y[At_Place(n)] != y[0]) {
        Tell("The function is not periodic - will terminate the calculation. (Check = 1)");
        return Fit_Status::not_periodic;
    }
    if (n < fewest) {
        Tell_Too_Small();
        return Fit_Status::too_small;
    }
    for (int i = 0; i < n; ++i)
        if (!(x[At_Place(i + 1)] > x[At_Place(i)]))
            return Singular();
    return Fit_Status::success;
}

Fit_Status Spline_Coeffs(std::span<const Single> x, std::span<const Single> y, Periodic_Spline& spline)
{
    if (const Fit_Status status = Check_Closed(x, y, fewest_intervals); status != Fit_Status::success)
        return status;
    const int n = static_cast<int>(std::min(x.size(), y.size())) - 1;
    const std::size_t count = At_Place(n) + 1;
    std::vector<Single> h(count), a1(count), a2(count), a3(count), r(count);
    for (int i = 0; i < n; ++i)
        h[At_Place(i)] = x[At_Place(i + 1)] - x[At_Place(i)];
    h[At_Place(n)] = h[0];  // around the cycle
    const auto slope = [&](int i) {
        const int from = i % n;
        return (y[At_Place(from + 1)] - y[At_Place(from)]) / h[At_Place(from)];
    };
    for (int i = 1; i <= n; ++i) {
        a1[At_Place(i)] = 2 * (h[At_Place(i - 1)] + h[At_Place(i)]);
        a2[At_Place(i)] = i < n ? double{h[At_Place(i)]} : 0.0;
        r[At_Place(i)] = (slope(i) - slope(i - 1)) * 3.0;
    }
    a3[1] = h[0];
    spline.c.assign(count, 0.0);
    const Fit_Status status = Solve_Periodic(n, a1, a2, a3, r, spline.c);
    if (status != Fit_Status::success)
        return status;
    spline.x.assign(x.begin(), x.begin() + n + 1);
    spline.y.assign(y.begin(), y.begin() + n + 1);
    spline.b.assign(count, 0.0);
    spline.d.assign(count, 0.0);
    const std::vector<Single>& c = spline.c;
    for (int i = 0; i < n; ++i) {
        spline.b[At_Place(i)] =
            slope(i) - (c[At_Place(i + 1)] + c[At_Place(i)] + c[At_Place(i)]) * h[At_Place(i)] / 3.0;
        spline.d[At_Place(i)] = (c[At_Place(i + 1)] - c[At_Place(i)]) / 3.0 / h[At_Place(i)];
    }
    return Fit_Status::success;
}

Fit_Point Spline_At(const Periodic_Spline& spline, double t)
{
    const int n = static_cast<int>(spline.x.size()) - 1;
    const double within = t < spline.x[0] ? t + PI2 : t;
    const auto found = std::lower_bound(spline.x.begin(), spline.x.end(), within,
                                        [](const Single& x, double value) { return double{x} < value; });
    const int piece = std::clamp(static_cast<int>(found - spline.x.begin()) - 1, 0, n - 1);
    const double u = within - spline.x[At_Place(piece)];
    const double b = spline.b[At_Place(piece)];
    const double c = spline.c[At_Place(piece)];
    const double d = spline.d[At_Place(piece)];
    return {spline.y[At_Place(piece)] + u * (b + u * (c + u * d)), b + 2 * c * u + 3 * d * u * u, 2 * c + 6 * d * u,
            6 * d};
}

bool Even_Steps(std::span<const Single> x)
{
    constexpr double share = 0.01;
    const double step = (x.back() - x.front()) / static_cast<double>(x.size() - 1);
    for (std::size_t i = 1; i < x.size(); ++i)
        if (std::abs(x[i] - x[i - 1] - step) > share * step)
            return false;
    return true;
}

Fourier_Series Fourier_Coeffs(std::span<const Single> x, std::span<const Single> y, int harmonics)
{
    const std::size_t N = y.size();
    const double count = static_cast<double>(N);
    const double step = (x.back() - x.front()) / (count - 1.0);
    Fourier_Series series;
    series.x0 = x.front();
    series.w = PI2 / (x.back() - x.front() + step);
    const std::size_t all = N / 2;
    const std::size_t last = harmonics > 0 ? std::min(all, static_cast<std::size_t>(harmonics)) : all;
    // cos(k m 2 pi / N) has N values only.
    std::vector<double> cosine(N);
    std::vector<double> sine(N);
    for (std::size_t m = 0; m < N; ++m) {
        cosine[m] = std::cos(PI2 * static_cast<double>(m) / count);
        sine[m] = std::sin(PI2 * static_cast<double>(m) / count);
    }
    for (std::size_t k = 0; k <= last; ++k) {
        double a = 0.0;
        double b = 0.0;
        for (std::size_t m = 0; m < N; ++m) {
            a += y[m] * cosine[k * m % N];
            b += y[m] * sine[k * m % N];
        }
        const double share = k == 0 || 2 * k == N ? 1.0 : 2.0;  // the mean and the top harmonic count once
        series.a.push_back(share * a / count);
        series.b.push_back(share * b / count);
    }
    return series;
}

Fit_Point Fourier_Eval(const Fourier_Series& series, double t)
{
    const double g = (t - series.x0) * series.w;
    Fit_Point point{series.a[0]};
    for (std::size_t k = 1; k < series.a.size(); ++k) {
        const double kw = static_cast<double>(k) * series.w;
        const double cosine = std::cos(static_cast<double>(k) * g);
        const double sine = std::sin(static_cast<double>(k) * g);
        const double value = series.a[k] * cosine + series.b[k] * sine;
        const double slope = series.b[k] * cosine - series.a[k] * sine;
        point.s += value;
        point.v += kw * slope;
        point.a -= kw * kw * value;
        point.j -= kw * kw * kw * slope;
    }
    return point;
}

void Fill_Grid(Design_State& design, Fit_Result& result, const std::function<Fit_Point(double)>& at)
{
    constexpr int last_row = 4;
    const int points = design.motion.Max_Data_Points_used;
    if (result.Last_Row() != last_row || result.Last_Point() != points)
        result.Dimension(last_row, points);
    for (int i = 0; i <= points; ++i) {
        design.results.CalcData(var::Angle, i) = i * design.motion.Deltatheta;
        const Fit_Point point = at(i * design.motion.Deltatheta * Rad_per_Deg);
        result(1, i) = point.s;
        result(2, i) = point.v * Rad_per_Deg;
        result(3, i) = point.a * Rad_per_Deg * Rad_per_Deg;
        result(4, i) = point.j * Rad_per_Deg * Rad_per_Deg * Rad_per_Deg;
    }
}

namespace {

/// The same place of the cycle at the same displacement.
bool Closed(std::span<const Single> x, std::span<const Single> y)
{
    constexpr double rounding = 1E-5;
    const double turns = (x.back() - x.front()) / PI2;
    return y.back() == y.front() && std::abs(turns - std::round(turns)) < rounding;
}

}  // namespace

bool Periodic_Spline_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, Fit_Result& result)
{
    bool fitted = false;
    Trap("Periodic_Spline_Fit", [&] {
        Periodic_Spline spline;
        if (Spline_Coeffs(x, y, spline) != Fit_Status::success)
            return;
        Fill_Grid(design, result, [&](double t) { return Spline_At(spline, t); });
        fitted = true;
    });
    return fitted;
}

bool Fourier_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, Fit_Result& result,
                 int harmonics)
{
    bool fitted = false;
    Trap("Fourier_Fit", [&] {
        if (x.size() < 2 || y.size() != x.size() || x.size() % 2 != 0 || Closed(x, y)) {
            Tell("N must be even and the first and last data points unequal. (The function is unclosed.)");
            return;
        }
        if (!Even_Steps(x)) {
            Tell("A Fourier series needs data at even steps of the cam angle.  Please fit a spline.");
            return;
        }
        const Fourier_Series series = Fourier_Coeffs(x, y, harmonics);
        Fill_Grid(design, result, [&](double t) { return Fourier_Eval(series, t); });
        fitted = true;
    });
    return fitted;
}

void Lanczos_Smooth(std::span<double> y)
{
    constexpr std::size_t least = 5;
    if (y.size() < least)
        throw Fault{out_of_bounds};
    const std::size_t N = y.size() - 1;
    std::vector<double> third(y.begin(), y.end());
    const auto differ = [](std::vector<double>& values) {
        for (std::size_t i = 0; i + 1 < values.size(); ++i)
            values[i] = values[i + 1] - values[i];
        values.pop_back();
    };
    for (int order = 0; order < 3; ++order)
        differ(third);
    std::vector<double> fourth = third;
    differ(fourth);
    const double first = y[0] + 0.2 * third[0] + 3.0 / 35.0 * fourth[0];
    const double second = y[1] - 0.4 * third[0] - 1.0 / 7.0 * fourth[0];
    const double last = y[N] + 0.2 * third[N - 3] + 3.0 / 35.0 * fourth[N - 4];
    const double last_but_one = y[N - 1] - 0.4 * third[N - 3] - 1.0 / 7.0 * fourth[N - 4];
    for (std::size_t i = 2; i + 2 <= N; ++i)
        y[i] -= 3.0 / 35.0 * fourth[i - 2];
    y[0] = first;
    y[1] = second;
    y[N] = last;
    y[N - 1] = last_but_one;
}

std::vector<double> Lanczos_Derivative(std::span<const double> f, double h)
{
    // The last value is the first again, so the cycle has one less.
    const std::size_t N = f.size() - 1;
    std::vector<double> slopes(f.size());
    for (std::size_t i = 0; i < N; ++i) {
        const auto at = [&](std::size_t steps) { return f[(i + steps) % N]; };
        slopes[i] = (2 * at(2) + at(1) - at(N - 1) - 2 * at(N - 2)) / (10.0 * h);
    }
    slopes[N] = slopes[0];
    return slopes;
}

bool Lanczos_Fit(Design_State& design, std::span<const Single> x, std::span<const Single> y, Fit_Result& result)
{
    if (!Periodic_Spline_Fit(design, x, y, result))
        return false;
    return Trap("Lanczos_Derivs", [&] {
        const auto S = result.Points(1);
        std::vector<double> values(S.begin(), S.end());
        Lanczos_Smooth(values);
        for (int row = 1; row <= 4; ++row) {
            std::ranges::copy(values, result.Points(row).begin());
            values = Lanczos_Derivative(values, design.motion.Deltatheta);
        }
    });
}

}  // namespace lobemax
