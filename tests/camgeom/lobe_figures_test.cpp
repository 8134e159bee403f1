// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/lobe_figures.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/startup.h"
#include "core/variables.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

constexpr double pi = 3.14159265358979323846;

class Lobe : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    static void Fill(double (*f)(double))
    {
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(var::S, i) = f(i);
    }
    testing::Script script_;
};

TEST_F(Lobe, of_a_harmonic_is_open_by_its_arc_cosine)
{
    // 5 - 5 cos: above 2.5 from 60 to 300 degrees, its mean 5 over the turn.
    Fill([](double a) { return 5 - 5 * std::cos(a * pi / 180); });
    const auto figures = Figures_of_Lobe(design, 2.5);
    ASSERT_TRUE(figures);
    EXPECT_NEAR(figures->opens, 60.0, 1E-3);
    EXPECT_NEAR(figures->closes, 300.0, 1E-3);
    EXPECT_NEAR(figures->duration, 240.0, 1E-3);
    EXPECT_NEAR(figures->centre, 180.0, 1E-6);
    EXPECT_NEAR(figures->peak, 180.0, 1E-6);
    EXPECT_NEAR(figures->area, 5.0 * 360.0, 1E-2);
}

TEST_F(Lobe, may_cross_the_start_of_the_cycle_and_stand_on_any_height)
{
    // A triangle of 10 about 350 degrees, 40 wide on each side, on a height of 3.
    Fill([](double a) { return 3 + std::max(0.0, 10 - std::abs(std::remainder(a - 350, 360)) / 4); });
    const auto figures = Figures_of_Lobe(design, 5.0);
    ASSERT_TRUE(figures);
    EXPECT_NEAR(figures->opens, 330.0, 1E-4);
    EXPECT_NEAR(figures->closes, 370.0, 1E-4);
    EXPECT_NEAR(figures->centre, 350.0, 1E-4);
    EXPECT_NEAR(figures->area, 400.0, 1E-3);
}

TEST_F(Lobe, has_its_peak_in_the_middle_of_a_dwell)
{
    Fill([](double a) { return std::min(1.0, std::max(0.0, 2 - std::abs(a - 200) / 20)); });
    const auto figures = Figures_of_Lobe(design, 0.5);
    ASSERT_TRUE(figures);
    EXPECT_NEAR(figures->peak, 200.0, 1E-6);
    EXPECT_NEAR(figures->duration, 60.0, 1E-4);
}

TEST_F(Lobe, is_none_where_the_motion_never_has_the_lift)
{
    Fill([](double a) { return 5 - 5 * std::cos(a * pi / 180); });
    for (const double lift : {10.0, 11.0, 0.0, -1.0})
        EXPECT_FALSE(Figures_of_Lobe(design, lift)) << lift;
    Fill([](double) { return 2.0; });
    EXPECT_FALSE(Figures_of_Lobe(design, 0.1));
}

}  // namespace
}  // namespace lobemax
