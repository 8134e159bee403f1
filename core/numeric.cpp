// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/numeric.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "core/design_state.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric_formulas.h"
#include "core/numeric_rows.h"
#include "core/text.h"

namespace lobemax {

namespace {

/// 10^n, exact up to 10^22; infinity beyond the doubles.
double Ten_to(int n)
{
    double power = 1.0;
    for (int i = 0; i < std::min(n, 309); ++i)
        power *= 10.0;
    return power;
}

/// The elements first..last, none when last lies below first; outside the array is error 9.
std::span<const Single> Range(std::span<const Single> array, int first, int last)
{
    const int end = static_cast<int>(array.size()) - 1;
    if (last < first)
        return {};
    const std::size_t place = Checked_Place(first, 0, end);
    return array.subspan(place, Checked_Place(last, 0, end) - place + 1);
}

/// sum over last - first + 1; nothing over nothing is error 6, told here because the division would only
/// leave a not-a-number behind.
double Mean(double sum, int first, int last)
{
    const double count = static_cast<double>(last) - first + 1.0;
    if (count == 0.0)
        throw Fault{overflow};
    return sum / count;
}

}  // namespace

double FNArcCos(Design_State& design, double x)
{
    const auto arc = formulas::Arc<double>::Cosine(x);
    if (arc.exists)
        return arc.angle;
    if (std::isnan(x))
        Show_Message("Something wrong - cannot take ArcCos of " + Shortest(x));
    else
        design.flags.Math_Error = true;
    return 0.0;
}

std::optional<double> Arc_Sine(double x)
{
    const auto arc = formulas::Arc<double>::Sine(x);
    return arc.exists ? std::optional(arc.angle) : std::nullopt;
}

double FNArcSin(Design_State& design, double x)
{
    const std::optional<double> angle = Arc_Sine(x);
    if (std::isnan(x))
        Show_Message("Something wrong - cannot take ArcSin of " + Shortest(x));
    else if (!angle)
        design.flags.Math_Error = true;
    return angle.value_or(0.0);
}

bool CosineLaw_Side(double a, double b, double C, Single& c)
{
    const auto side = formulas::Third_Side<double>::Of(a, b, std::cos(C));
    const Single c_squared = side.c_squared;
    if (c_squared < 0.0) {
        Show_Message("Cannot do law of cosines - negative Sqrt argument in Sub CosineLaw_Side; check your data",
                     Buttons::OK, Symbol::exclamation);
        return false;
    }
    c = side.c;
    return true;
}

bool CosineLaw_Angle(Design_State& design, double a, double b, double c, Single& A)
{
    const Single numerator = b * b + c * c - a * a;
    const Single denominator = 2.0 * b * c;
    if (denominator == 0.0) {  // meant: the words speak of a negative number, only zero brings them
        Show_Message("Are trying to divide by negative number in Sub CosineLaw_Angle; check your data", Buttons::OK,
                     Symbol::exclamation);
        return false;
    }
    A = FNArcCos(design, numerator / denominator);
    return true;
}

double Atan2(double x, double y)
{
    return formulas::Angle_of(x, y);
}

double Atan2D(double x, double y)
{
    return Atan2(x, y) * Deg_per_Rad;
}

void Cart_to_Polar(double x, double y, Single& radius, Single& angle)
{
    radius = std::sqrt(x * x + y * y);
    angle = Atan2D(x, y);
}

Single FN_Modulo(double a, double b)
{
    if (b == 0.0)
        throw Fault{a == 0.0 ? overflow : division_by_zero};
    const double quotient = a / b;
    return (quotient - std::floor(quotient)) * b;
}

void Modulo(double value, double base, Single& result)
{
    if (value > base)
        result = value <= 0.0 ? value + base : value - base;  // the sum needs a negative base
    else
        result = value;
}

Matrix_View::Matrix_View(std::span<double> elements, int rows, int columns, int leading)
    : elements_(elements), rows_(rows), columns_(columns), leading_(static_cast<std::size_t>(std::max(leading, 0)))
{
    if (rows < 1 || columns < 1 || leading < columns ||
        elements.size() < static_cast<std::size_t>(rows - 1) * leading_ + static_cast<std::size_t>(columns))
        throw Fault{out_of_bounds};
}

void SimQ(int n, Matrix_View A, std::span<double> B, int& status)
{
    if (n < 1 || n > A.Rows() || n > A.Columns() || B.size() < static_cast<std::size_t>(n))
        throw Fault{out_of_bounds};
    const auto no_pivot = [&status](int column) {
        Show_Message("There is a zero value on diagonal in column " + std::to_string(column), Buttons::OK,
                     Symbol::exclamation);
        status = column;
    };
    const std::size_t count = static_cast<std::size_t>(n);

    for (int k = 1; k <= n - 1; ++k) {
        const std::size_t column = static_cast<std::size_t>(k - 1);
        int pivot = k;
        for (int i = k + 1; i <= n; ++i) {
            if (std::abs(A(i, k)) > std::abs(A(pivot, k)))
                pivot = i;
        }
        if (A(pivot, k) == 0.0)
            return no_pivot(k);
        const std::span<double> top = A.Elements(k).first(count);
        if (pivot != k) {
            std::ranges::swap_ranges(top, A.Elements(pivot).first(count));
            std::swap(B[column], B[static_cast<std::size_t>(pivot - 1)]);
        }
        for (int i = k + 1; i <= n; ++i) {
            const std::span<double> row = A.Elements(i).first(count);
            const double factor = row[column] / top[column];
            row[column] = 0.0;
            for (std::size_t j = column + 1; j < count; ++j)
                row[j] -= factor * top[j];
            B[static_cast<std::size_t>(i - 1)] -= factor * B[column];
        }
    }
    if (A(n, n) == 0.0)
        return no_pivot(n);

    for (int i = n; i >= 1; --i) {
        const std::span<const double> row = A.Elements(i).first(count);
        const std::size_t diagonal = static_cast<std::size_t>(i - 1);
        double sum = B[diagonal];
        for (std::size_t j = diagonal + 1; j < count; ++j)
            sum -= row[j] * B[j];
        B[diagonal] = sum / row[diagonal];
    }
    status = 0;
}

double FNRound(double value, int decimals)
{
    if (decimals < 0) {
        const double step = Ten_to(decimals < -309 ? 309 : -decimals);
        return std::isfinite(step) ? std::floor(value / step + 0.5) * step : 0.0;
    }
    const double scale = Ten_to(decimals);
    const double scaled = value * scale;
    // So many decimals that the scaled value leaves the doubles: the value has none to lose.
    return std::isfinite(scaled) ? std::floor(scaled + 0.5) / scale : value;
}

void MaxMin1(std::span<const Single> array, int first, int last, Single& largest, Single& smallest)
{
    const std::span<const Single> range = Range(array, first, std::max(first, last));
    const Row_Kernels& kernels = Kernels_in_Use<Row_Kernels>();
    const float* const row = Bits(range);
    const Row_Extremes found = kernels.extremes(row, range.size());
    largest = found.largest;
    smallest = found.smallest;
    // Zeros of both signs are one value: the last of the largest and the first of the smallest counts.
    if (largest == 0.0)
        largest = range[kernels.last_place(row, range.size(), 0.0F)];
    if (smallest == 0.0)
        smallest = range[kernels.first_place(row, range.size(), 0.0F)];
}

Extremes MaxMin2(const Table<Single>& array, int row, int first, int last)
{
    const std::span<const Single> range = Range(array.Points(row), first, std::max(first, last));
    const Row_Kernels& kernels = Kernels_in_Use<Row_Kernels>();
    const Row_Extremes found = kernels.extremes(Bits(range), range.size());
    const std::size_t largest = kernels.first_place(Bits(range), range.size(), found.largest);
    const std::size_t smallest = kernels.first_place(Bits(range), range.size(), found.smallest);
    return {range[largest], range[smallest], first + static_cast<int>(largest), first + static_cast<int>(smallest)};
}

void Average(int first, int last, std::span<const Single> array, Single& mean)
{
    double sum = 0.0;
    for (const Single x : Range(array, first, last))
        sum += x;
    mean = Mean(sum, first, last);
}

void Average2(int first, int last, const Table<Single>& array, std::string_view order, int fixed, Single& mean)
{
    double sum = 0.0;
    if (order == "I_Pointer") {
        for (int i = first; i <= last; ++i)
            sum += array(i, fixed);
    } else if (order == "Pointer_I") {
        for (const Single x : Range(array.Points(fixed), first, last))
            sum += x;
    }
    mean = Mean(sum, first, last);
}

void Rotate(double x, double y, double angle, double sign, Single& x2, Single& y2)
{
    const Single a = sign * angle * Rad_per_Deg;
    x2 = x * std::cos(a) - y * std::sin(a);
    y2 = x * std::sin(a) + y * std::cos(a);
}

void Shift_Vector(double x, double y, double dx, double dy, double sign, Single& x2, Single& y2)
{
    x2 = x + sign * dx;
    y2 = y + sign * dy;
}

}  // namespace lobemax
