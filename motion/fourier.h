// SPDX-License-Identifier: GPL-3.0-or-later
/// The discrete Fourier transform of one calculated variable, over the cycle or one segment.
///
/// Harmonic k = 1 is the mean, harmonic k + 1 goes k times over the range. The angle of term n of harmonic k is
/// ((k - 1) x 6.283185308) x (n - 1) / N: the circle constant is the program's own, so the transform is this plain sum
/// and not quite the ideal transform.
#pragma once

#include <optional>
#include <string>

#include "core/design_state.h"

namespace lobemax {

/// Full transform of points first..last - 1 of a row of CalcData, N = last - first of them, into Fft_Work_B(row, 1..N):
/// row 0 real part, 1 imaginary part, 2 magnitude, 3 phase in degrees within -90..90, 4 squared magnitude. Clears
/// both work tables first. Fft_Points becomes N.
///
/// Equal to the plain double sum to 1e-12 of its largest harmonic for any samples, a single spike among them, by two
/// short tables of sines a harmonic in place of one pair of calls a term; the roundings of that angle, which grow
/// to 6e-12 at the finest step, are followed.
/// @throws Fault{9} for a row or points outside the table, or N below 1
/// Source: docs/theory.md, (53), (54).
void Calc_DFT(Design_State& design, int variable, int first, int last);

/// One-sided result in Fft_Work_A(row, 1..Fft_Half): real and imaginary parts doubled, the mean's too, and squared
/// magnitude, magnitude and phase of those. docs/theory.md, (55). @throws Fault{9} when Fft_Half does not fit
void Fold_DFT(Design_State& design);

/// Copies real part, imaginary part, magnitude and phase to rows 18 to 21 of CalcData, points 1..Fft_Half; all other
/// points of these rows become 0, so that nothing of an earlier, longer transform remains.
/// @throws Fault{6} when a value is no finite Single; the rows are then as they were
void Store_Current_FFT(Design_State& design);

/// The whole work, under its trap: Fft_Half = Int(round(last - first) / 2 + 0.5), transform, fold and store. The count
/// of harmonics goes to No_Harmonics, the variable to Fft_Variable.
///
/// @param first, last  bounds of the range as point indices
/// @return             false when a fault was reported; No_Harmonics and the rows of CalcData are then as they were
bool Do_DFT(Design_State& design, int variable, Single first, Single last, int harmonics);

/// Phase of a harmonic in degrees: Atn(imag / real), which does not look at the quadrant. With no real part it is
/// +90, whatever the sign of the imaginary part, or 0 for no harmonic at all. Both are meant: a phase
/// in the left half plane reads 180 degrees beside that of mechanics, which takes both signs; magnitudes are not
/// touched.
double Dft_Phase(double real, double imag);

/// The range of a segment in points, Shift to Gamma over the step; the whole cycle for segment 0.
/// @throws Fault{9} for a segment not in use
struct Dft_Range {
    Single first;
    Single last;
};
Dft_Range Range_of_Segment(const Design_State& design, int segment);

/// Whether a transform can start; if not, a message says what is missing.
///
/// @param picked    an entry of the variable list was picked
/// @param variable  the variable it names; none for a name that is no variable
bool May_Transform(bool picked, std::optional<int> variable, int harmonics);

/// Sets No_Harmonics, at most half the points of the cycle: more are refused with a message and become that.
/// @return the count in force
int Set_Harmonics(Design_State& design, int harmonics);

/// Harmonics shown: No_Harmonics, but no more than the transform has.
int Shown_Harmonics(const Design_State& design);

/// Power of the shown harmonics: the mean square of the signal that they make, in the square of the variable's unit.
///
/// A harmonic of amplitude M (row 2 of Fft_Work_A) brings M^2 / 2; the mean, which the fold has doubled, (M / 2)^2.
/// Over all harmonics this is the mean square of the N samples (Parseval), less the square of the harmonic N / 2 + 1
/// where N is even, which a one-sided list leaves out. docs/theory.md, (57).
double Harmonic_Power(const Design_State& design);

/// Sum of the amplitudes of the shown harmonics, the mean once, in the variable's unit: the signal made of them stays
/// within it. docs/theory.md, (58).
double Harmonic_Sum(const Design_State& design);

/// Texts of the Fourier screen for a variable.
std::string Fft_Function_Text(const Design_State& design, int variable);
std::string Fft_Power_Unit(const Design_State& design, int variable);
std::string Fft_Sum_Unit(const Design_State& design, int variable);

/// What cmd_Clear1 does: the result and its flag go.
void Clear_FFT(Design_State& design);

/// What cmd_Done does: the user is told where the result is found, and FFT_Done is set.
void Finish_FFT(Design_State& design);

}  // namespace lobemax
