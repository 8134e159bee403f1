// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/linkage_plots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/startup.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "linkage/linkage_kinematics.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using enum Link_Quantity;

class Linkage_Plots : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    static void Make(const char* train, bool calculated = true)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Load_Example(design, train));
        ASSERT_TRUE(Calculate_Example(design));
        ASSERT_TRUE(!calculated || Run_Linkage(design));
    }
    testing::Script script_;
};

TEST_F(Linkage_Plots, every_moving_link_has_three_functions_and_the_train_two_ratios)
{
    Make("4-bar Linkage");
    EXPECT_EQ(Link_Functions(design).size(), 3U * 3U + 2U);
    Make("6-bar Slider");
    const auto functions = Link_Functions(design);
    EXPECT_EQ(functions.size(), 5U * 3U + 2U);
    EXPECT_EQ(functions.front(), (Link_Function{2, position}));
    EXPECT_EQ(functions[14], (Link_Function{6, acceleration}));
    EXPECT_EQ(functions.back(), (Link_Function{0, velocity_ratio}));
}

TEST_F(Linkage_Plots, titles_and_units_tell_an_angle_from_a_place)
{
    Make("6-bar Linkage");
    EXPECT_EQ(Title_of(design, {6, position}), "Angle of Link 6");
    EXPECT_EQ(Title_of(design, {6, velocity}), "Omega of Link 6");
    EXPECT_EQ(Title_of(design, {6, acceleration}), "Alpha of Link 6");
    EXPECT_EQ(Title_of(design, {0, position_ratio}), "Theta Out / Theta In");
    EXPECT_EQ(Title_of(design, {0, velocity_ratio}), "Omega Out / Omega In");
    EXPECT_EQ(Unit_of(design, {6, position}), "deg");
    EXPECT_EQ(Unit_of(design, {6, velocity}), "rad/sec");
    EXPECT_EQ(Unit_of(design, {6, acceleration}), "rad/sec^2");
    Make("6-bar Slider");
    EXPECT_EQ(Title_of(design, {6, position}), "Dsplcmt of Link 6");
    EXPECT_EQ(Title_of(design, {6, velocity}), "Veloc of Link 6");
    EXPECT_EQ(Title_of(design, {6, acceleration}), "Accel of Link 6");
    EXPECT_EQ(Title_of(design, {5, position}), "Angle of Link 5");
    EXPECT_EQ(Title_of(design, {0, position_ratio}), "Dsplcmt Out / Dsplcmt In");
    EXPECT_EQ(Title_of(design, {0, velocity_ratio}), "Velocity Out / Velocity In");
    EXPECT_EQ(Unit_of(design, {6, position}), "mm");
    EXPECT_EQ(Unit_of(design, {6, velocity}), "mm/sec");
    EXPECT_EQ(Unit_of(design, {6, acceleration}), "mm/sec^2");
    EXPECT_EQ(Unit_of(design, {5, velocity}), "rad/sec");
    EXPECT_EQ(Unit_of(design, {0, velocity_ratio}), "");
    // Of the units that the results are in.
    design.identity.WhichUnit = 1;
    EXPECT_EQ(Unit_of(design, {6, position}), "in");
}

TEST_F(Linkage_Plots, the_title_above_has_the_models_name)
{
    Make("4-bar Linkage");
    design.identity.Model_Name = "Press feed";
    EXPECT_EQ(Link_Plot_Title(design), "Selected Linkage Parameters    Press feed  ");
    EXPECT_EQ(Link_Plot_Axis, "Cam Angle (deg)");
}

TEST_F(Linkage_Plots, values_are_those_of_the_tables_and_angles_have_no_jumps)
{
    Make("4-bar Linkage");
    for (const auto& [function, table] : {std::pair{Link_Function{3, velocity}, &design.results.Link_Omega},
                                          std::pair{Link_Function{4, acceleration}, &design.results.Link_Alpha}}) {
        const auto values = Values_of(design, function);
        ASSERT_EQ(values.size(), 361U);
        for (const int i : {0, 45, 225, 360})
            EXPECT_EQ(values[static_cast<std::size_t>(i)], (*table)(function.link, i));
    }
    for (int i = 0; i <= 360; ++i)
        design.results.Link_Theta(3, i) = std::fmod(350.0 + i * 0.25, 360.0);
    const auto angles = Values_of(design, {3, position});
    for (int i = 0; i <= 360; ++i)
        EXPECT_NEAR(angles[static_cast<std::size_t>(i)], 350.0 + i * 0.25, 1e-4);
    design.results.Link_Ratio_S(40) = 0.75;
    design.results.Link_Ratio_V(41) = -0.5;
    EXPECT_EQ(Values_of(design, {0, position_ratio})[40], 0.75);
    EXPECT_EQ(Values_of(design, {0, velocity_ratio})[41], -0.5);
}

TEST_F(Linkage_Plots, a_sliders_place_jumps_by_no_turn)
{
    Make("4-bar Slider");
    for (int i = 0; i <= 360; ++i)
        design.results.Link_Theta(4, i) = i % 2 == 0 ? 10.0 : 390.0;
    const auto places = Values_of(design, {4, position});
    EXPECT_EQ(places[1], 390.0);
    EXPECT_EQ(places[2], 10.0);
}

TEST_F(Linkage_Plots, there_are_no_values_before_the_calculation)
{
    Make("4-bar Linkage", false);
    for (const Link_Function& function : Link_Functions(design))
        EXPECT_THROW(Values_of(design, function), Fault);
}

TEST_F(Linkage_Plots, a_function_is_found_by_its_title_and_its_short_names)
{
    Make("6-bar Slider");
    for (const Link_Function& function : Link_Functions(design))
        EXPECT_EQ(Link_Function_Named(design, Title_of(design, function)), function);
    EXPECT_EQ(Link_Function_Named(design, "Theta 4"), (Link_Function{4, position}));
    EXPECT_EQ(Link_Function_Named(design, "omega 5"), (Link_Function{5, velocity}));
    EXPECT_EQ(Link_Function_Named(design, "ALPHA3"), (Link_Function{3, acceleration}));
    EXPECT_EQ(Link_Function_Named(design, "s 6"), (Link_Function{6, position}));
    EXPECT_EQ(Link_Function_Named(design, "V 6"), (Link_Function{6, velocity}));
    EXPECT_EQ(Link_Function_Named(design, "A6"), (Link_Function{6, acceleration}));
    EXPECT_EQ(Link_Function_Named(design, "Ratio S"), (Link_Function{0, position_ratio}));
    EXPECT_EQ(Link_Function_Named(design, "ratio v"), (Link_Function{0, velocity_ratio}));
    for (const char* none : {"", "S", "V", "S 5", "Theta 1", "Theta 7", "Theta", "Ratio A", "3"})
        EXPECT_FALSE(Link_Function_Named(design, none)) << none;
    Make("4-bar Linkage");
    EXPECT_FALSE(Link_Function_Named(design, "S 4"));
    EXPECT_FALSE(Link_Function_Named(design, "Theta 5"));
}

}  // namespace
}  // namespace lobemax
