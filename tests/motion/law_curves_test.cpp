// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/law_curves.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/startup.h"
#include "edit/examples.h"
#include "motion/motion_programs.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

constexpr double pi = 3.14159265358979323846;

TEST(Law_Curves_In_Normal_Form, the_peak_factors_are_those_of_the_closed_forms)
{
    // Cycloid: S = x - sin(2 pi x) / (2 pi).
    const Law_Curves cycloid = Curves_of_Law("CF");
    EXPECT_NEAR(cycloid.peak_V, 2.0, 1e-5);
    EXPECT_NEAR(cycloid.peak_A, 2.0 * pi, 1e-4);
    EXPECT_NEAR(cycloid.peak_J, 4.0 * pi * pi, 1e-3);
    // Simple harmonic: S = (1 - cos(pi x)) / 2.
    const Law_Curves harmonic = Curves_of_Law("SF");
    EXPECT_NEAR(harmonic.peak_V, pi / 2.0, 1e-5);
    EXPECT_NEAR(harmonic.peak_A, pi * pi / 2.0, 1e-4);
    // 3-4-5: V = 30 x^2 (1 - x)^2, largest at the middle: 30 / 16; J = 60 at the ends.
    const Law_Curves poly = Curves_of_Law("45");
    EXPECT_NEAR(poly.peak_V, 1.875, 1e-5);
    EXPECT_NEAR(poly.peak_A, 10.0 / std::sqrt(3.0), 2e-3);  // between two points of the curve
    EXPECT_NEAR(poly.peak_J, 60.0, 1e-3);
}

TEST(Law_Curves_In_Normal_Form, every_law_rises_or_goes_up_and_down_over_the_whole_segment)
{
    for (const Motion_Program& program : Motion_Programs()) {
        const Law_Curves curves = Curves_of_Law(program.code);
        if (program.kinds != "RF") {
            EXPECT_TRUE(curves.x.empty()) << program.code;
            continue;
        }
        ASSERT_EQ(curves.x.size(), 181U) << program.code;
        EXPECT_EQ(curves.x.back(), 1.0);
        EXPECT_NEAR(curves.S.front(), 0.0, 1e-6) << program.code;
        // 3-4-5-6 is a rise and return in one segment.
        EXPECT_NEAR(curves.S.back(), program.code == "56" ? 0.0 : 1.0, 1e-4) << program.code;
    }
    EXPECT_TRUE(Curves_of_Law("ZZ").x.empty());
}

TEST(Law_Curves_In_Normal_Form, the_design_in_memory_is_untouched)
{
    ASSERT_TRUE(Sub_Main(design, "", {}));
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    const double before = design.results.CalcData(var::A, 30);
    Curves_of_Law("MS");
    EXPECT_EQ(design.results.CalcData(var::A, 30), before);
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_EQ(design.motion.No_of_segments, 4);
    design = {};
}

}  // namespace
}  // namespace lobemax
