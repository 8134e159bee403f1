// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Plots.h"

#include <QComboBox>
#include <QRegularExpression>

#include "files/example_designs.h"
#include "motion/fourier.h"
#include "paint/plot_charts.h"
#include "present/plot_selection.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Plot;
using screens::frm_PlotSelect;
using screens::frm_PlotType;
using testing::Driver;

class Plot_Screens : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static double Data(int row, int i) { return design.results.CalcData(row, i); }
    Plot_Group& p_ = design.plot;
};

TEST_F(Plot_Screens, the_type_screen_keeps_the_picked_style)
{
    frm_PlotType screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text(Element("opt_PickPlot", 2)), "Two Windows - Two Functions");
    user.Press(Element("opt_PickPlot", 4));
    user.Press("cmd_PickPlotDone");
    EXPECT_EQ(p_.Plot_Style, 4);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Plot_Screens, presets_grow_with_the_ladder_and_fill_the_functions)
{
    frm_PlotSelect screen(2);
    const Driver user(screen);
    EXPECT_EQ(screen.objectName(), "frm_PlotSelect2");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_FALSE(user.Enabled("fra_Mix"));
    user.Pick("cmb_Preset", "Pressure Angle and Radius of Curvature");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(p_.Plot_Vars(1), 5);
    EXPECT_EQ(p_.Plot_Vars(2), 6);
    EXPECT_EQ(user.Text(Element("lbl_Function", 2)), "Rho");
    user.Press("cmd_ClearPreset");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Find<QComboBox>("cmb_Preset").findText("Dynamic Response:  X and X dot"), -1);
}

TEST_F(Plot_Screens, mix_and_match_opens_one_function_after_the_other)
{
    frm_PlotSelect screen(3);
    const Driver user(screen);
    user.Press(Element("opt_PrintSet", 1));
    EXPECT_FALSE(user.Enabled("fra_Preset"));
    EXPECT_TRUE(user.Enabled("cmb_Var1"));
    EXPECT_FALSE(user.Enabled("cmb_Var2"));
    user.Press("cmd_On2");
    EXPECT_TRUE(user.Enabled("cmb_Var2"));
    user.Pick("cmb_Var1", "Velocity");
    user.Pick("cmb_Var2", "Accel");
    user.Pick("cmb_Var3", "Torque");
    EXPECT_FALSE(user.Enabled("cmd_Done"));  // four windows want four functions
    user.Pick("cmb_Var4", "Phi");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(p_.Plot_Vars(3), 8);
    user.Press("cmd_Clear2");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
}

TEST_F(Plot_Screens, a_design_with_its_motion_alone_offers_little)
{
    design.flags.Sized = design.flags.Dynamicflag = false;
    frm_PlotSelect screen(2);
    const Driver user(screen);
    EXPECT_EQ(user.Find<QComboBox>("cmb_Preset").count(), 4);
    EXPECT_EQ(user.Find<QComboBox>("cmb_Var1").count(), 5);
    frm_PlotSelect single(1);
    const Driver other(single);
    EXPECT_TRUE(other.Checked(Element("opt_PrintSet", 1)));  // a single window has no presets
    EXPECT_FALSE(other.Enabled(Element("opt_PrintSet", 0)));
}

TEST_F(Plot_Screens, a_segment_limits_the_range)
{
    frm_PlotSelect select(1);
    Driver(select).Pick("cmb_Segment", "3  F");
    const std::vector<int> accel{3};
    ASSERT_TRUE(Select_OK(1, accel));
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& curves = user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves();
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_EQ(curves[0].x.front(), 180.0);
    EXPECT_EQ(curves[0].x.back(), 270.0);
    EXPECT_EQ(curves[0].y[10], Data(3, 190));
    EXPECT_EQ(user.Text(Element("lbl_Left", 0)), "3  F");
}

TEST_F(Plot_Screens, each_style_has_its_windows)
{
    const std::vector<int> picks{1, 2, 3, 4};
    for (const auto& [plot_style, windows] : {std::pair{1, 1}, std::pair{2, 2}, std::pair{3, 4}, std::pair{4, 1}}) {
        Pick_Segment("All");
        ASSERT_TRUE(Select_OK(plot_style, picks));
        frm_Plot screen(plot_style);
        const Driver user(screen);
        EXPECT_EQ(screen.objectName().toStdString(), "frm_Plot" + std::to_string(plot_style));
        EXPECT_EQ(screen.findChildren<QWidget*>(QRegularExpression("^grf_Plot\\(\\d\\)$")).size(), windows);
        EXPECT_EQ(user.Text(Element("lbl_Right", 3)), "101.60 mm");
    }
}

TEST_F(Plot_Screens, two_functions_of_different_units_have_an_axis_each)
{
    Pick_Segment("All");
    const std::vector<int> picks{1, 2};
    ASSERT_TRUE(Select_OK(1, picks));
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& curves = user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves();
    ASSERT_EQ(curves.size(), 2U);
    EXPECT_FALSE(curves[0].right_axis);
    EXPECT_TRUE(curves[1].right_axis);
}

TEST_F(Plot_Screens, a_polar_plot_shows_closed_curves_and_values_as_radii)
{
    Pick_Segment("All");
    const paint::Curve profile = paint::Plotted_Curve(4, 54);
    EXPECT_EQ(profile.x.size(), 361U);
    EXPECT_NEAR(profile.x.front(), profile.x.back(), 1e-3);
    EXPECT_EQ(profile.y[90], Data(10, 90));
    const paint::Curve radius = paint::Plotted_Curve(4, 11);
    EXPECT_NEAR(std::hypot(radius.x[50], radius.y[50]), Data(11, 50), 1e-4);
    EXPECT_NEAR(std::atan2(radius.y[50], radius.x[50]) * 57.29577951, 50.0, 1e-4);
}

TEST_F(Plot_Screens, a_transform_is_plotted_over_its_harmonics)
{
    ASSERT_TRUE(Do_DFT(var::A, 0, 360, 15));
    design.flags.FFT_Done = true;
    Choose_Preset2(2, 12);
    frm_Plot screen(2);
    const Driver user(screen);
    const auto& curves = user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves();
    EXPECT_EQ(curves[0].x.size(), 15U);
    EXPECT_EQ(curves[0].style, paint::Curve_Style::sticks);
    EXPECT_EQ(curves[0].y[3], Data(20, 4));
}

TEST_F(Plot_Screens, grids_styles_and_grounds_can_be_changed)
{
    Pick_Segment("All");
    const std::vector<int> picks{2};
    ASSERT_TRUE(Select_OK(1, picks));
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    user.Press("chk_Sticks");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks_and_line);
    user.Press("chk_Line");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks);
    user.Press("chk_HGrid");
    user.Press(Element("opt_Back", 1));
    user.Press(Element("opt_color", 0));
    user.Press("cmd_Replot");
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_PlotDone");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Plot_Screens, back_returns_to_the_choice_and_done_to_home)
{
    std::vector<std::string> path;
    const testing::Modals modals([&](QDialog& open) {
        const Driver user(open);
        path.push_back(open.objectName().toStdString());
        if (path.back() == "frm_PlotType") {
            user.Press(Element("opt_PickPlot", 2));
            user.Press("cmd_PickPlotDone");
        } else if (path.back() == "frm_PlotSelect2") {
            user.Pick("cmb_Preset", "Displacement and Velocity");
            user.Press("cmd_Done");
        } else {
            user.Press(path.size() == 3 ? "cmd_Back" : "cmd_PlotDone");
        }
    });
    screens::Run_Plots(nullptr);
    EXPECT_EQ(path, (std::vector<std::string>{"frm_PlotType", "frm_PlotSelect2", "frm_Plot2", "frm_PlotSelect2",
                                              "frm_Plot2"}));
}

TEST_F(Plot_Screens, every_offered_variable_of_every_example_can_be_plotted)
{
    for (const char* name : {"Single Dwell", "Flat Follower", "Four Dwell", "Oscillating"}) {
        Build(name);
        Pick_Segment("All");
        for (int plot_style = 1; plot_style <= 4; ++plot_style)
            for (const int v : Load_Names())
                EXPECT_EQ(paint::Plotted_Curve(plot_style, v).y.size(), 361U) << name << v;
    }
}

}  // namespace
}  // namespace lobemax
