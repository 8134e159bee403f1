// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/fourier.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "core/ladder.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/traps.h"
#include "motion/fourier_rows.h"

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

using formulas::Angle_Slip;

static_assert(Max_Points < 4096, "a count of points has 12 bits, as Angle_Slip wants");

/// cos and sin of (k - 1) x 6.283185308 x j x stride / N, without rounding of the angle, for j = 0, 1, ...
///
/// From one harmonic to the next each phasor is turned by its own step; every 16th harmonic it is computed anew from
/// its angle, so that no error adds up.
class Phasor_Table {
public:
    Phasor_Table(std::size_t count, double stride, double n)
        : cos_(count), sin_(count), step_cos_(count), step_sin_(count), place_(count)
    {
        for (std::size_t j = 0; j < count; ++j) {
            place_[j] = stride * static_cast<double>(j);
            const double step = PI2 * place_[j] / n;
            step_cos_[j] = std::cos(step);
            step_sin_[j] = std::sin(step);
        }
        n_ = n;
    }

    void Go_to_Harmonic(int k, const Angle_Slip& slip)
    {
        constexpr int anchor = 16;
        if ((k - 1) % anchor == 0)
            Anchor(slip);
        else
            turn_(cos_.data(), sin_.data(), step_cos_.data(), step_sin_.data(), cos_.size());
    }
    const double* Cos() const { return cos_.data(); }
    const double* Sin() const { return sin_.data(); }

private:
    void Anchor(const Angle_Slip& slip)
    {
        for (std::size_t j = 0; j < cos_.size(); ++j) {
            const double above = slip.Times_N(place_[j]) / n_;
            const double a = slip.Angle(place_[j]);
            const double c = std::cos(a);
            const double s = std::sin(a);
            cos_[j] = c + above * s;
            sin_[j] = s - above * c;
        }
    }
    std::vector<double> cos_;
    std::vector<double> sin_;
    std::vector<double> step_cos_;
    std::vector<double> step_sin_;
    std::vector<double> place_;
    double n_ = 1.0;
    decltype(Fourier_Kernels::turn) turn_ = Kernels_in_Use<Fourier_Kernels>().turn;
};

/// Sum of x(m) e^(i a(m)) over the samples, m from 0, for one harmonic after the other, a the angle with its
/// roundings. docs/theory.md, (59).
///
/// With m = p B + q the sum is that of e^(i p B theta) times an inner sum over q, whose phasors are the same for all
/// p: about 2 sqrt(N) phasors a harmonic in place of N. The slip d of a term's angle turns its sample a little,
/// x (1 + i d), where it can be felt.
class Harmonic_Kernel {
public:
    explicit Harmonic_Kernel(std::span<const Single> samples)
        : kernels_(Kernels_in_Use<Fourier_Kernels>()),
          n_(static_cast<double>(samples.size())),
          block_(Whole_Block(samples.size())),
          blocks_(Times_Fitted(samples.size(), block_)),
          groups_(Times_Fitted(blocks_, kernels_.side_by_side)),
          x_(groups_ * kernels_.side_by_side * block_),  // zeros fill the last blocks
          cos_(groups_ * kernels_.side_by_side),
          sin_(cos_.size()),
          fine_(block_, 1.0, n_),
          coarse_(blocks_, static_cast<double>(block_), n_)
    {
        for (std::size_t m = 0; m < samples.size(); ++m)
            x_[Place_of(m)] = samples[m];
    }

    /// Sum of harmonic k; they are asked for in order, from 1.
    Phasor Sum(int k)
    {
        const Angle_Slip slip = Angle_Slip::Of(k, n_);
        fine_.Go_to_Harmonic(k, slip);
        coarse_.Go_to_Harmonic(k, slip);
        Find_Inner_Sums(slip);
        Phasor sum{0.0, 0.0};
        for (std::size_t p = 0; p < blocks_; ++p) {
            sum.cos += coarse_.Cos()[p] * cos_[p] - coarse_.Sin()[p] * sin_[p];
            sum.sin += coarse_.Sin()[p] * cos_[p] + coarse_.Cos()[p] * sin_[p];
        }
        return sum;
    }

private:
    static constexpr std::size_t pair = 2;  // samples of a block that stand together

    /// How many of a size it takes to hold a count.
    static std::size_t Times_Fitted(std::size_t count, std::size_t size) { return (count + size - 1) / size; }

    static std::size_t Whole_Block(std::size_t count)
    {
        constexpr std::size_t multiple = 2 * pair;
        const auto root = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(count))));
        return Times_Fitted(root, multiple) * multiple;
    }

    /// Of sample m among those of its group, Sample_Blocks.
    std::size_t Place_of(std::size_t m) const
    {
        const std::size_t side = kernels_.side_by_side;
        const std::size_t p = m / block_;
        const std::size_t q = m % block_;
        return (p / side * block_ + q / pair * pair) * side + p % side * pair + q % pair;
    }

    /// With the slip of their terms where it can be felt.
    void Find_Inner_Sums(const Angle_Slip& slip)
    {
        // The three roundings are each at most 1.2e-16 of the angle: below this one they stay under 7e-13.
        constexpr double felt = 2048.0;
        const Sample_Blocks samples{.x = x_.data(), .block = block_, .cosines = fine_.Cos(), .sines = fine_.Sin()};
        const auto feels = [&](std::size_t p) { return !(slip.Angle(static_cast<double>((p + 1) * block_)) < felt); };
        std::size_t first_felt = 0;
        while (first_felt < blocks_ && !feels(first_felt))
            ++first_felt;
        const std::size_t side = kernels_.side_by_side;
        for (std::size_t group = 0; group < groups_; ++group) {
            const std::size_t p = group * side;
            if (first_felt < p + side)
                kernels_.slipped_sums(samples, slip, group, &cos_[p], &sin_[p]);
            if (p >= first_felt)
                continue;
            // Of a group with blocks of both kinds those in front of the first that feels it are found without.
            std::array<double, most_side_by_side> cos;
            std::array<double, most_side_by_side> sin;
            kernels_.sums(samples, group, cos.data(), sin.data());
            const std::size_t without = std::min(side, first_felt - p);
            std::copy_n(cos.begin(), without, &cos_[p]);
            std::copy_n(sin.begin(), without, &sin_[p]);
        }
    }

    static constexpr std::size_t most_side_by_side = 4;

    const Fourier_Kernels& kernels_;
    double n_;
    std::size_t block_;
    std::size_t blocks_;
    std::size_t groups_;
    std::vector<double> x_;
    std::vector<double> cos_;  // inner sums, by block
    std::vector<double> sin_;
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
    table(square_row, k) = real * real + imag * imag;
    table(magnitude_row, k) = Sqr(table(square_row, k));
    table(phase_row, k) = Dft_Phase(real, imag);
}

void Zero_Fft_Rows(Design_State& design)
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

void Calc_DFT(Design_State& design, int variable, int first, int last)
{
    Results_Group& r = design.results;
    const auto row = r.CalcData.Points(variable);
    const int n = last - first;
    if (n < 1 || first < 0 || last > r.CalcData.Last_Point())
        throw Fault{out_of_bounds};
    Zero(r.Fft_Work_B);
    Zero(r.Fft_Work_A);
    design.motion.Fft_Points = n;
    Harmonic_Kernel kernel(row.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(n)));
    for (int k = 1; k <= n; ++k) {
        const Phasor sum = kernel.Sum(k);
        r.Fft_Work_B(real_row, k) = sum.cos / n;
        r.Fft_Work_B(imag_row, k) = -sum.sin / n;
        Complete(r.Fft_Work_B, k);
    }
}

void Fold_DFT(Design_State& design)
{
    Results_Group& r = design.results;
    for (int k = 1; k <= design.motion.Fft_Half; ++k) {
        r.Fft_Work_A(real_row, k) = r.Fft_Work_B(real_row, k) + r.Fft_Work_B(real_row, k);
        r.Fft_Work_A(imag_row, k) = r.Fft_Work_B(imag_row, k) + r.Fft_Work_B(imag_row, k);
        Complete(r.Fft_Work_A, k);
    }
}

void Store_Current_FFT(Design_State& design)
{
    Results_Group& r = design.results;
    for (int k = 1; k <= design.motion.Fft_Half; ++k)
        (void)Single(r.Fft_Work_A(magnitude_row, k));  // what fits no Single faults before a row is touched
    Zero_Fft_Rows(design);
    for (int row = 0; row < fft_rows; ++row)
        for (int k = 1; k <= design.motion.Fft_Half; ++k)
            r.CalcData(first_fft_variable + row, k) = r.Fft_Work_A(row, k);
}

bool Do_DFT(Design_State& design, int variable, Single first, Single last, int harmonics)
{
    return Trap("Do_DFT", [&] {
        const Integer first_point = To_Integer(first);
        const Integer last_point = To_Integer(last);
        const Integer count = harmonics;
        Calc_DFT(design, variable, first_point, last_point);
        design.motion.Fft_Half = static_cast<int>(std::floor(To_Integer(last - first) / 2.0 + 0.5));
        Fold_DFT(design);
        Store_Current_FFT(design);
        design.motion.No_Harmonics = count;
        design.motion.Fft_Variable = variable;
    });
}

Dft_Range Range_of_Segment(const Design_State& design, int segment)
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

int Set_Harmonics(Design_State& design, int harmonics)
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

int Shown_Harmonics(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    return std::clamp<int>(m.No_Harmonics, 0, m.Fft_Half);
}

double Harmonic_Power(const Design_State& design)
{
    double power = 0.0;
    for (int k = 1; k <= Shown_Harmonics(design); ++k)
        power += design.results.Fft_Work_A(square_row, k) / (k == 1 ? 4.0 : 2.0);
    return power;
}

double Harmonic_Sum(const Design_State& design)
{
    double sum = 0.0;
    for (int k = 1; k <= Shown_Harmonics(design); ++k)
        sum += design.results.Fft_Work_A(magnitude_row, k) / (k == 1 ? 2.0 : 1.0);
    return sum;
}

std::string Fft_Function_Text(const Design_State& design, int variable)
{
    return "Fourier Transform of  " + design.plot.Var_Name(variable);
}

std::string Fft_Power_Unit(const Design_State& design, int variable)
{
    return "(" + design.plot.Var_Unit(variable) + ") ^2";
}

std::string Fft_Sum_Unit(const Design_State& design, int variable)
{
    return "(" + design.plot.Var_Unit(variable) + ")";
}

void Clear_FFT(Design_State& design)
{
    Zero(design.results.Fft_Work_A);
    Zero(design.results.Fft_Work_B);
    Zero_Fft_Rows(design);
    design.motion.Fft_Points = 0;
    design.motion.Fft_Half = 0;
    design.motion.Fft_Variable = 0;
    Apply(design, Event::transform_began);
    Refresh_Screens();
}

void Finish_FFT(Design_State& design)
{
    Show_Message(
        " The FFT of the selected function is \n"
        " now available for output as \n"
        " 'Current FFT' from the Preset Format\n"
        " lists on the PRINT and PLOT screens",
        Buttons::OK, Symbol::information);
    Reach(design, Mark::transform);
    Refresh_Screens();
}

}  // namespace lobemax
