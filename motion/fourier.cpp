// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/fourier.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/messages.h"
#include "core/traps.h"

namespace lobemax {

namespace {

constexpr int real_row = 0;
constexpr int imag_row = 1;
constexpr int magnitude_row = 2;
constexpr int phase_row = 3;
constexpr int square_row = 4;

constexpr int first_fft_variable = 18;  // Real, Imag, Mag and Ang FFT
constexpr int fft_rows = 4;

struct Phasor {
    double cos;
    double sin;
};

/// cos and sin of a(j) = turn x j x stride / N for j = 0, 1, ..., where turn grows by one step from harmonic to
/// harmonic.
///
/// From one harmonic to the next each phasor is turned by its own step; every 16th harmonic it is computed anew from
/// its angle, so that no error adds up.
class Phasor_Table {
public:
    Phasor_Table(std::size_t count, double stride, double n)
        : cos_(count), sin_(count), step_cos_(count), step_sin_(count), per_turn_(count)
    {
        for (std::size_t j = 0; j < count; ++j) {
            per_turn_[j] = stride * static_cast<double>(j);
            const double step = PI2 * per_turn_[j] / n;
            step_cos_[j] = std::cos(step);
            step_sin_[j] = std::sin(step);
        }
        n_ = n;
    }

    void Go_to_Harmonic(int k)
    {
        constexpr int anchor = 16;
        if ((k - 1) % anchor == 0)
            Anchor((k - 1) * PI2);
        else
            Turn();
    }
    const double* Cos() const { return cos_.data(); }
    const double* Sin() const { return sin_.data(); }

private:
    void Anchor(double turn)
    {
        for (std::size_t j = 0; j < cos_.size(); ++j) {
            const double a = turn * per_turn_[j] / n_;
            cos_[j] = std::cos(a);
            sin_[j] = std::sin(a);
        }
    }
    void Turn()
    {
        for (std::size_t j = 0; j < cos_.size(); ++j) {
            const double c = cos_[j] * step_cos_[j] - sin_[j] * step_sin_[j];
            sin_[j] = sin_[j] * step_cos_[j] + cos_[j] * step_sin_[j];
            cos_[j] = c;
        }
    }

    std::vector<double> cos_;
    std::vector<double> sin_;
    std::vector<double> step_cos_;
    std::vector<double> step_sin_;
    std::vector<double> per_turn_;
    double n_ = 1.0;
};

/// Sum of x(j) e^(-i j theta) over the samples, j from 0, for one harmonic after the other.
///
/// With j = p B + q the sum is that of e^(-i p B theta) times an inner sum over q, whose phasors are the same for all
/// p: about 2 sqrt(N) phasors a harmonic in place of N.
class Harmonic_Kernel {
public:
    explicit Harmonic_Kernel(std::vector<double> samples)
        : x_(std::move(samples)),
          block_(static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(x_.size()))))),
          fine_(block_, 1.0, static_cast<double>(x_.size())),
          coarse_((x_.size() + block_ - 1) / block_, static_cast<double>(block_), static_cast<double>(x_.size()))
    {
    }

    /// Sum of harmonic k; they are asked for in order, from 1.
    Phasor Sum(int k)
    {
        fine_.Go_to_Harmonic(k);
        coarse_.Go_to_Harmonic(k);
        Phasor sum{0.0, 0.0};
        std::size_t p = 0;
        for (std::size_t start = 0; start < x_.size(); start += block_, ++p) {
            const auto [c, s] = Inner_Sum(&x_[start], std::min(block_, x_.size() - start));
            sum.cos += coarse_.Cos()[p] * c - coarse_.Sin()[p] * s;
            sum.sin += coarse_.Sin()[p] * c + coarse_.Cos()[p] * s;
        }
        return sum;
    }

private:
    /// Sum of one block; partial sums side by side, so that the machine can add them at once.
    Phasor Inner_Sum(const double* x, std::size_t count) const
    {
        constexpr std::size_t lanes = 4;
        const double* const cosines = fine_.Cos();
        const double* const sines = fine_.Sin();
        std::array<double, lanes> c{};
        std::array<double, lanes> s{};
        std::size_t q = 0;
        for (; q + lanes <= count; q += lanes)
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                c[lane] += cosines[q + lane] * x[q + lane];
                s[lane] += sines[q + lane] * x[q + lane];
            }
        for (; q < count; ++q) {
            c[0] += cosines[q] * x[q];
            s[0] += sines[q] * x[q];
        }
        return {(c[0] + c[1]) + (c[2] + c[3]), (s[0] + s[1]) + (s[2] + s[3])};
    }

    std::vector<double> x_;
    std::size_t block_;
    Phasor_Table fine_;
    Phasor_Table coarse_;
};

void Zero(Table<double>& table)
{
    for (int row = 0; row <= table.Last_Row(); ++row)
        std::ranges::fill(table.Points(row), 0.0);
}

/// Squared magnitude, magnitude and phase of entry k from its real and imaginary part.
void Complete(Table<double>& table, int k)
{
    const double real = table(real_row, k);
    const double imag = table(imag_row, k);
    table(square_row, k) = Power(real, 2) + Power(imag, 2);
    table(magnitude_row, k) = Sqr(table(square_row, k));
    table(phase_row, k) = Dft_Phase(real, imag);
}

void Zero_Fft_Rows()
{
    for (int row = 0; row < fft_rows; ++row)
        std::ranges::fill(design.results.CalcData.Points(first_fft_variable + row), Single{});
}

}  // namespace

double Dft_Phase(double real, double imag)
{
    double phase = 0.0;
    if (real == 0.0)
        phase = imag == 0.0 ? 0.0 : PIH;
    else
        phase = std::atan(imag / real);
    return phase * Deg_per_Rad;
}

void Calc_DFT(int variable, int first, int last)
{
    Results_Group& r = design.results;
    const auto row = r.CalcData.Points(variable);
    const int n = last - first;
    if (n < 1 || first < 0 || last > r.CalcData.Last_Point())
        throw Fault{out_of_bounds};
    Zero(r.Fft_Work_B);
    Zero(r.Fft_Work_A);
    design.motion.Fft_Points = n;
    Harmonic_Kernel kernel(std::vector<double>(row.begin() + first, row.begin() + last));
    for (int k = 1; k <= n; ++k) {
        const Phasor sum = kernel.Sum(k);
        r.Fft_Work_B(real_row, k) = sum.cos / n;
        r.Fft_Work_B(imag_row, k) = -sum.sin / n;
        Complete(r.Fft_Work_B, k);
    }
}

void Fold_DFT()
{
    Results_Group& r = design.results;
    for (int k = 1; k <= design.motion.Fft_Half; ++k) {
        r.Fft_Work_A(real_row, k) = r.Fft_Work_B(real_row, k) + r.Fft_Work_B(real_row, k);
        r.Fft_Work_A(imag_row, k) = r.Fft_Work_B(imag_row, k) + r.Fft_Work_B(imag_row, k);
        Complete(r.Fft_Work_A, k);
    }
}

void Store_Current_FFT()
{
    Results_Group& r = design.results;
    Zero_Fft_Rows();
    for (int row = 0; row < fft_rows; ++row)
        for (int k = 1; k <= design.motion.Fft_Half; ++k)
            r.CalcData(first_fft_variable + row, k) = r.Fft_Work_A(row, k);
}

bool Do_DFT(int variable, Single first, Single last, int harmonics)
{
    return Trap("Do_DFT", [&] {
        const Integer first_point = To_Integer(first);
        const Integer last_point = To_Integer(last);
        design.motion.No_Harmonics = harmonics;
        Calc_DFT(variable, first_point, last_point);
        design.motion.Fft_Half = static_cast<int>(std::floor(To_Integer(last - first) / 2.0 + 0.5));
        Fold_DFT();
        Store_Current_FFT();
    });
}

Dft_Range Range_of_Segment(int segment)
{
    const Motion_Group& m = design.motion;
    if (segment == 0)
        return {0.0, static_cast<double>(m.Max_Data_Points_used)};
    if (segment < 1 || segment > m.No_of_segments)
        throw Fault{out_of_bounds};
    return {m.Shift(segment) / m.Deltatheta, m.Gamma(segment) / m.Deltatheta};
}

bool May_Transform(bool picked, std::optional<int> variable, int harmonics)
{
    const char* missing = nullptr;
    if (!picked)
        missing = "Please select a variable from the list provided";
    else if (!variable)
        missing = " Please select a function for FFT calculation";
    else if (harmonics <= 0)
        missing = " Must set the number of harmonics to a value > 0";
    if (missing == nullptr)
        return true;
    Show_Message(missing, Buttons::OK, Symbol::exclamation);
    return false;
}

int Set_Harmonics(int harmonics)
{
    Motion_Group& m = design.motion;
    const int most = m.Max_Data_Points_used / 2;
    m.No_Harmonics = std::min(harmonics, most);
    if (harmonics > most)
        Show_Message(
            "Number of harmonics cannot exceed 1/2 the number of data points available.\n"
            "If you want more bandwidth, recalculate all data with smaller increments. \n"
            "Use the [INPUT] button from the Home Screen to do so.",
            Buttons::OK, Symbol::information);
    return m.No_Harmonics;
}

int Shown_Harmonics()
{
    const Motion_Group& m = design.motion;
    return std::clamp<int>(m.No_Harmonics, 0, m.Fft_Half);
}

double Harmonic_Power()
{
    double power = 0.0;
    for (int k = 1; k <= Shown_Harmonics(); ++k)
        power += design.results.Fft_Work_A(square_row, k) / (k == 1 ? 4.0 : 2.0);
    return power;
}

double Harmonic_Sum()
{
    double sum = 0.0;
    for (int k = 1; k <= Shown_Harmonics(); ++k)
        sum += design.results.Fft_Work_A(magnitude_row, k) / (k == 1 ? 2.0 : 1.0);
    return sum;
}

std::string Fft_Function_Text(int variable)
{
    return "Fourier Transform of  " + design.plot.Var_Name(variable);
}

std::string Fft_Power_Unit(int variable)
{
    return "(" + design.plot.Var_Unit(variable) + ") ^2";
}

std::string Fft_Sum_Unit(int variable)
{
    return "(" + design.plot.Var_Unit(variable) + ")";
}

void Clear_FFT()
{
    Zero(design.results.Fft_Work_A);
    Zero(design.results.Fft_Work_B);
    Zero_Fft_Rows();
    design.motion.Fft_Points = 0;
    design.motion.Fft_Half = 0;
    design.flags.FFT_Done = false;
    Refresh_Screens();
}

void Finish_FFT()
{
    Show_Message(
        " The FFT of the selected function is \n"
        " now available for output as \n"
        " 'Current FFT' from the Preset Format\n"
        " lists on the PRINT and PLOT screens",
        Buttons::OK, Symbol::information);
    design.flags.FFT_Done = true;
    Refresh_Screens();
}

}  // namespace lobemax
