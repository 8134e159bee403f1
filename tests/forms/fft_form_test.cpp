// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/fft_form.h"

#include <gtest/gtest.h>

#include "core/startup.h"
#include "files/example_designs.h"
#include "motion/fourier.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class FFT_Form : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    }
    void TearDown() override { design = {}; }
    testing::Script script_;
};

TEST_F(FFT_Form, a_typed_count_of_harmonics_is_a_whole_number_within_half_the_points)
{
    EXPECT_EQ(Enter_Harmonics(design, "12"), 12);
    EXPECT_EQ(Enter_Harmonics(design, "12.9"), 12);
    EXPECT_EQ(Enter_Harmonics(design, "-5"), 0);
    EXPECT_EQ(Enter_Harmonics(design, ""), 0);
    const testing::Expected_Box half{
        "Number of harmonics cannot exceed 1/2 the number of data points available.\n"
        "If you want more bandwidth, recalculate all data with smaller increments. \n"
        "Use the [INPUT] button from the Home Screen to do so."};
    script_.Expect(half);
    EXPECT_EQ(Enter_Harmonics(design, "181"), 180);
    script_.Expect(half);
    EXPECT_EQ(Enter_Harmonics(design, "1E9"), 180);
    EXPECT_EQ(design.motion.No_Harmonics, 180);
}

TEST_F(FFT_Form, its_figures_are_those_of_the_transform)
{
    ASSERT_TRUE(Do_DFT(design, var::S, 0, 360, 1));
    // The mean alone: 25 mm up for a quarter, held, down, held is half of it; its power is its square.
    const FFT_Texts texts = Texts_of_FFT(design, var::S);
    EXPECT_EQ(texts.lbl_Function, "Fourier Transform of  Displcmnt");
    EXPECT_NEAR(std::stod(texts.lbl_Sum), 12.5, 0.01);
    EXPECT_NEAR(std::stod(texts.lbl_Power), 12.5 * 12.5, 0.2);
    EXPECT_EQ(texts.lbl_powerunits, "(mm) ^2");
    EXPECT_EQ(texts.lbl_sumunits, "(mm)");
}

}  // namespace
}  // namespace lobemax
