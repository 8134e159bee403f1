// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/fft_form.h"

#include <algorithm>
#include <limits>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/text.h"
#include "motion/fourier.h"

namespace lobemax {

namespace {

constexpr std::array<std::string_view, 8> harmonic_counts{"5", "10", "15", "20", "30", "50", "100", "180"};

constexpr std::array parts{FFT_Part{"Mag", 2}, FFT_Part{"Phs", 3}, FFT_Part{"Real", 0}, FFT_Part{"Img", 1}};

constexpr std::array read_outs{
    Form_Field<FFT_Texts>{{"lbl_Function", ""}, &FFT_Texts::lbl_Function},
    Form_Field<FFT_Texts>{{"lbl_Power", "Harmonic Power"}, &FFT_Texts::lbl_Power},
    Form_Field<FFT_Texts>{{"lbl_powerunits", ""}, &FFT_Texts::lbl_powerunits},
    Form_Field<FFT_Texts>{{"lbl_Sum", "Harmonic Sum"}, &FFT_Texts::lbl_Sum},
    Form_Field<FFT_Texts>{{"lbl_sumunits", ""}, &FFT_Texts::lbl_sumunits},
};

constexpr std::array controls{
    Form_Control{"frm_FFT", "Fourier transform"},
    Form_Control{"cmb_Var1", "&Variable", "The variable to transform"},
    Form_Control{"cmb_Harmonics", "No of &Harmonics", "How many harmonics are shown; a number may be typed"},
    Form_Control{"txt_Harmonics", "", "How many harmonics are shown"},
    Form_Control{"cmb_Segment", "&Segment for FFT", "The whole cycle, or the points of one segment"},
    Form_Control{"cmd_Clear1", "C&lear"},
    Form_Control{"fra_Grid", "Grid"},
    Form_Control{"chk_HGrid", "Horiz"},
    Form_Control{"chk_VGrid", "Vertic"},
    Form_Control{"fra_Style", "Style"},
    Form_Control{"chk_Line", "Envelope"},
    Form_Control{"chk_Sticks", "Spectral Lines"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Print", "&Print"},
    Form_Control{"cmd_Done", "&Next >"},
};

}  // namespace

FFT_Texts Texts_of_FFT(const Design_State& design, int variable)
{
    const auto number = [&](double value) { return Trim(FNRoundStr(design, value, 4)); };
    return {Fft_Function_Text(design, variable), number(Harmonic_Power(design)), Fft_Power_Unit(design, variable),
            number(Harmonic_Sum(design)), Fft_Sum_Unit(design, variable)};
}

std::span<const std::string_view> Harmonic_Counts()
{
    return harmonic_counts;
}

int Enter_Harmonics(Design_State& design, std::string_view typed)
{
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return Set_Harmonics(design, static_cast<int>(std::clamp(Val(design, typed), 0.0, most)));
}

std::span<const FFT_Part> Parts_of_FFT()
{
    return parts;
}

std::span<const Form_Field<FFT_Texts>> Read_Outs_of_FFT()
{
    return read_outs;
}

std::span<const Form_Control> Controls_of_FFT()
{
    return controls;
}

}  // namespace lobemax
