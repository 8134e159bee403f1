// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of the Fourier transform without its window: its captions, its entry and its figures.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "forms/form_table.h"

namespace lobemax {

/// The figures below the charts, and the line above them.
struct FFT_Texts {
    std::string lbl_Function;
    std::string lbl_Power;
    std::string lbl_powerunits;
    std::string lbl_Sum;
    std::string lbl_sumunits;
};
/// Of the transform in memory, of a variable.
FFT_Texts Texts_of_FFT(const Design_State& design, int variable);

/// The counts of harmonics that the list offers.
std::span<const std::string_view> Harmonic_Counts();

/// The count of harmonics as typed: a whole number of at least 0, no more than the points of the cycle allow.
/// @return the count in force
int Enter_Harmonics(Design_State& design, std::string_view typed);

/// A result of the transform that has a chart: its row in the one-sided table and its caption.
struct FFT_Part {
    std::string_view caption;
    int row;
};
std::span<const FFT_Part> Parts_of_FFT();

/// The read-outs and all other captioned controls of the screen, each in the order of the layout.
std::span<const Form_Field<FFT_Texts>> Read_Outs_of_FFT();
std::span<const Form_Control> Controls_of_FFT();

}  // namespace lobemax
