// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/plot_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/text.h"
#include "core/unit_change.h"
#include "edit/rungs.h"
#include "motion/fourier.h"
#include "present/plot_selection.h"
#include "tests/support/cam_design.h"
#include "tests/support/recording_surface.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Recording_Surface;

class Plot_Engine : public ::testing::Test {
protected:
    void SetUp() override { Cam_Maker().Make(); }
    void TearDown() override { design = {}; }
    Recording_Surface surface_;
};

TEST_F(Plot_Engine, decimals_follow_the_size_with_each_later_test_overriding)
{
    EXPECT_EQ(Plot_Decimals(1000), 0);
    EXPECT_EQ(Plot_Decimals(999), 1);
    EXPECT_EQ(Plot_Decimals(100), 1);
    EXPECT_EQ(Plot_Decimals(99), 2);
    EXPECT_EQ(Plot_Decimals(10), 2);
    EXPECT_EQ(Plot_Decimals(9), 3);
    EXPECT_EQ(Plot_Decimals(0), 3);
}

TEST_F(Plot_Engine, windows_have_their_margins)
{
    const Plot_Window two = SetWindow(2, 10, 0, 360);
    EXPECT_NEAR(two.left, -57.6, 1e-9);
    EXPECT_NEAR(two.right, 374.4, 1e-9);
    EXPECT_NEAR(two.bottom, -14.0, 1e-9);
    EXPECT_NEAR(two.top, 11.4, 1e-9);
    const Plot_Window four = SetWindow(4, 10, 90, 190);
    EXPECT_NEAR(four.left, 72.0, 1e-9);
    EXPECT_NEAR(four.right, 194.0, 1e-9);
    EXPECT_NEAR(four.bottom, -17.0, 1e-9);
    EXPECT_NEAR(four.top, 11.5, 1e-9);
    EXPECT_THROW(SetWindow(3, 10, 0, 360), Fault);
}

TEST_F(Plot_Engine, a_function_of_zeros_keeps_a_scale)
{
    EXPECT_NEAR(SetWindow(2, 0, 0, 360).top, 1.14e-4, 1e-12);
    const Plot_Figures figures = Plot_Dynamics(design, surface_, 4, var::Torque, 0, 360, false);
    EXPECT_EQ(figures.peak, 0.0);
    EXPECT_EQ(Trim(figures.pnl_Ymax), "0.000");
    EXPECT_EQ(surface_.Lines_in(Ink::curve), 360);
}

TEST_F(Plot_Engine, the_curve_goes_through_every_point_of_the_range)
{
    const Plot_Figures figures = Plot_Dynamics(design, surface_, 2, var::V, 20, 100, true);
    EXPECT_EQ(surface_.Lines_in(Ink::curve), 80);
    const auto& last = surface_.lines.back();
    EXPECT_EQ(last.x2, 100.0);
    EXPECT_EQ(last.y2, Data(var::V, 100));
    EXPECT_EQ(figures.pnl_LeftTitle, "Velocity");
    EXPECT_EQ(figures.pnl_Units, "mm/sec");
    double largest = 0.0;
    for (int i = 20; i <= 100; ++i)
        largest = std::max(largest, Data(var::V, i));
    EXPECT_EQ(figures.largest, largest);
    EXPECT_EQ(figures.pnl_Ymax, FNRoundStr(design, largest, Plot_Decimals(largest)));
    EXPECT_EQ(figures.pnl_Ymin, FNRoundStr(design, -largest, Plot_Decimals(largest)));
    EXPECT_GT(surface_.top, surface_.bottom);  // y runs upward
}

TEST_F(Plot_Engine, axes_ticks_and_segment_boundaries_stand_where_they_belong)
{
    Plot_Dynamics(design, surface_, 2, var::S, 0, 360, true);
    EXPECT_EQ(surface_.Lines_in(Ink::axis), 2 + 25 + 5);
    EXPECT_EQ(surface_.Lines_in(Ink::prime), 3);  // between four segments
    const auto& tick = surface_.lines[2 + 24];
    EXPECT_NEAR(tick.x1, 360.0, 1e-3);
    EXPECT_NEAR(tick.y2, 0.07 * 20, 1e-6);
    surface_.Clear();
    Plot_Dynamics(design, surface_, 2, var::S, 0, 360, false);
    EXPECT_EQ(surface_.Lines_in(Ink::prime), 0);
}

TEST_F(Plot_Engine, the_peak_goes_from_the_smallest_to_the_largest_value)
{
    const Plot_Figures figures = Plot_Dynamics(design, surface_, 2, var::V, 0, 360, false);
    EXPECT_GT(figures.largest, 0.0);
    EXPECT_LT(figures.smallest, 0.0);
    EXPECT_EQ(figures.peak, figures.largest - figures.smallest);
}

TEST_F(Plot_Engine, a_mainly_negative_row_scales_by_its_smallest_value)
{
    auto row = design.results.CalcData.Points(var::Torque);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = i == 50 ? -437.26 : 12.0;
    const Plot_Figures figures = Plot_Dynamics(design, surface_, 2, var::Torque, 0, 360, false);
    EXPECT_EQ(Trim(figures.pnl_Ymax), "437.3");  // below 1000: one decimal
    EXPECT_EQ(Trim(figures.pnl_Ymin), "-437.3");
    EXPECT_NEAR(surface_.top, 1.14 * 437.26, 1e-3);
    EXPECT_NEAR(surface_.bottom, -1.4 * 437.26, 1e-3);
}

TEST_F(Plot_Engine, the_axis_of_values_has_ticks_at_five_levels)
{
    Plot_Dynamics(design, surface_, 4, var::S, 0, 360, false);
    std::vector<double> levels;
    for (const auto& line : surface_.lines)
        if (line.ink == Ink::axis && line.y1 == line.y2 && line.x1 < 0.0 && line.x2 > 0.0)
            levels.push_back(line.y1);
    ASSERT_EQ(levels.size(), 5U);
    EXPECT_NEAR(levels.front(), -20.0, 1e-5);
    EXPECT_NEAR(levels[1], -10.0, 1e-5);
    EXPECT_EQ(levels[2], 0.0);
    EXPECT_NEAR(levels[3], 10.0, 1e-5);
    EXPECT_NEAR(levels.back(), 20.0, 1e-5);
}

TEST_F(Plot_Engine, ticks_count_points_of_the_range)
{
    const std::array s{1};
    Plot_Setup setup = PlotSetup(design, style::single_window, 0, 360, s);
    EXPECT_EQ(setup.NumPoints, 361);
    EXPECT_EQ(setup.TickEvery, 30);
    EXPECT_EQ(setup.LabelEvery, 60);
    EXPECT_EQ(setup.NumSets, 1);
    EXPECT_EQ(setup.bottom_title, "Cam Angle (Deg)");
    EXPECT_EQ(PlotSetup(design, style::two_windows, 10, 15, s).TickEvery, 1);
    EXPECT_EQ(PlotSetup(design, style::polar, 0, 360, s).bottom_title, "Cam Profile at Follower Centerline");
    design.cam.Followtype = 2;
    EXPECT_EQ(PlotSetup(design, style::polar, 0, 360, s).bottom_title, "Cam Surface Profile");
    setup = PlotSetup(design, style::single_window, 880, 1760, s);  // a segment of 110 degrees at an eighth of a degree
    EXPECT_EQ(setup.NumPoints, 881);
    EXPECT_EQ(setup.TickEvery, 73);
    EXPECT_EQ(setup.LabelEvery, 146);
}

TEST_F(Plot_Engine, a_plot_of_harmonics_has_a_place_for_each_and_one_before)
{
    const std::array magnitude{20};
    design.motion.No_Harmonics = 45;
    Plot_Setup setup = PlotSetup(design, style::four_windows, 0, 360, magnitude);
    EXPECT_EQ(setup.NumPoints, 46);
    EXPECT_EQ(setup.TickEvery, 3);
    EXPECT_EQ(setup.LabelEvery, 6);
    EXPECT_EQ(setup.bottom_title, "Harmonic Number");
    design.motion.No_Harmonics = 5;  // 5 / 15 is no tick at all
    EXPECT_EQ(PlotSetup(design, style::four_windows, 0, 360, magnitude).TickEvery, 1);
    EXPECT_TRUE(Is_Fourier(18) && Is_Fourier(21));
    EXPECT_FALSE(Is_Fourier(17) || Is_Fourier(22));
}

TEST_F(Plot_Engine, the_title_follows_what_is_plotted)
{
    const auto title = [](std::vector<int> variables) {
        return PlotSetup(design, style::single_window, 0, 360, variables).graph_title;
    };
    EXPECT_EQ(title({1, 2}), "Selected Cam-Follower Parameters    Model1  ");
    EXPECT_EQ(title({29, 30}), "Dynamic Response of Follower    Model1  ");
    EXPECT_EQ(title({7, 33}), "Dynamic Response of Follower    Model1  ");
    EXPECT_EQ(title({28}), "Selected Cam-Follower Parameters    Model1  ");
    EXPECT_EQ(title({34}), "Selected Cam-Follower Parameters    Model1  ");
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    design.flags.FFT_Done = true;
    EXPECT_EQ(title({20}), "Fourier Transform of  Accel");
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 360, 15));
    EXPECT_EQ(title({18, 19}), "Fourier Transform of  Velocity");
    EXPECT_EQ(Left_Title(design, 20), "FFT of Mag FFT");
    EXPECT_EQ(Left_Title(design, 2), "Velocity");
}

TEST_F(Plot_Engine, axes_have_the_units_that_their_values_have)
{
    EXPECT_EQ(Axis_Unit(design, 12), "deg");
    EXPECT_EQ(design.plot.Var_Unit(12), "mm");  // the table keeps its own
    EXPECT_EQ(Axis_Unit(design, 11), "mm");
    design.cam.Camtype = "Linear";
    EXPECT_EQ(Axis_Unit(design, 12), "mm");
    EXPECT_EQ(Axis_Unit(design, 20), "");
    ASSERT_TRUE(Do_DFT(design, var::A, 0, 360, 15));
    design.flags.FFT_Done = true;
    EXPECT_EQ(Axis_Unit(design, 20), "mm/sec^2");
    EXPECT_EQ(Axis_Unit(design, 21), "deg");
}

TEST_F(Plot_Engine, the_panels_tell_basic_data_and_once_sized_the_size)
{
    Pick_Segment(design, "1  R");
    Panel_Lines basic = Basic_Data(design);
    ASSERT_EQ(basic.size(), 6U);
    EXPECT_EQ(basic[0], (std::pair<std::string, std::string>{"Segment", "1  R"}));
    EXPECT_EQ(basic[2], (std::pair<std::string, std::string>{"End Theta", "110.00"}));
    EXPECT_EQ(basic[4].second, "Cw");
    EXPECT_TRUE(Size_Data(design).empty());
    ASSERT_TRUE(Run_Size(design));
    const Panel_Lines size = Size_Data(design);
    ASSERT_EQ(size.size(), 7U);
    EXPECT_EQ(size[3], (std::pair<std::string, std::string>{"Prime Radius", "60.00 mm"}));
    EXPECT_EQ(size[4].second, Trim(design.cam.Rho_Min_Pos_Text) + " mm");
    EXPECT_EQ(size[5].second, "None");
}

TEST_F(Plot_Engine, the_panels_have_their_captions_in_order)
{
    ASSERT_TRUE(Run_Size(design));
    const auto captions = [](const Panel_Lines& lines) {
        std::vector<std::string> found;
        for (const auto& [caption, value] : lines)
            found.push_back(caption);
        return found;
    };
    EXPECT_EQ(captions(Basic_Data(design)), (std::vector<std::string>{"Segment", "Start Theta", "End Theta",
                                                                      "Delta Theta", "Cam Rotates", "Cam Omega"}));
    EXPECT_EQ(captions(Size_Data(design)), (std::vector<std::string>{"Min Phi", "Max Phi", "Offset", "Prime Radius",
                                                                     "Min Rho +", "Min Rho -", "Folwr Rad"}));
}

TEST_F(Plot_Engine, lengths_in_the_panels_have_the_decimals_of_their_unit)
{
    ASSERT_TRUE(Run_Size(design));
    Change_Units(design, 1);
    const Panel_Lines size = Size_Data(design);
    EXPECT_EQ(size[3].second, "2.362 in");
    EXPECT_EQ(size[6].second, "0.472 in");
}

TEST_F(Plot_Engine, a_cam_turns_and_a_linear_cam_goes_to_and_fro)
{
    const auto sense = [](const char* kind, int rotflag) {
        design.cam.Camtype = kind;
        design.cam.Rotflag = rotflag;
        return Basic_Data(design)[4].second;
    };
    EXPECT_EQ(sense("Radial", 1), "Ccw");
    EXPECT_EQ(sense("Barrel", -1), "Cw");
    EXPECT_EQ(sense("Linear", 1), "-->>");
    EXPECT_EQ(sense("Linear", -1), "<<--");
}

TEST_F(Plot_Engine, the_header_names_design_file_and_time)
{
    design.identity.Design_No = 7;
    design.identity.Model_Name = "rocker";
    design.identity.Time = "10:11:12";
    EXPECT_EQ(Plot_Header(design), " Design No. 7 File: rocker at 10:11:12");
}

}  // namespace
}  // namespace lobemax
