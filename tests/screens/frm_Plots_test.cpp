// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Plots.h"

#include <qcustomplot.h>

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <set>

#include "files/example_designs.h"
#include "files/model_file.h"
#include "motion/fourier.h"
#include "motion/segments.h"
#include "paint/plot_charts.h"
#include "present/plot_selection.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Plot;
using screens::frm_PlotSelect;
using screens::frm_PlotType;
using screens::From_Qt;
using testing::Driver;

class Plot_Screens : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static double Data(int row, int i) { return design.results.CalcData(row, i); }
    static void Transform(int variable)
    {
        ASSERT_TRUE(Do_DFT(design, variable, 0, 360, 15));
        design.flags.FFT_Done = true;
    }
    /// Functions of a style over the whole cycle.
    static void Pick(const std::vector<int>& functions, int plot_style)
    {
        Pick_Segment(design, "All");
        ASSERT_TRUE(Select_OK(design, plot_style, functions));
    }
    /// Labels of the abscissa, empty ones for marks without.
    static QVector<QString> Labels(const paint::Chart& chart)
    {
        QVector<double> ticks;
        QVector<QString> labels;
        QCPAxis& axis = *chart.Plot().xAxis;
        axis.ticker()->generate(axis.range(), chart.Plot().locale(), 'g', 6, ticks, nullptr, &labels);
        return labels;
    }
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
    ASSERT_TRUE(Select_OK(design, 1, accel));
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
        Pick_Segment(design, "All");
        ASSERT_TRUE(Select_OK(design, plot_style, picks));
        frm_Plot screen(plot_style);
        const Driver user(screen);
        EXPECT_EQ(screen.objectName().toStdString(), "frm_Plot" + std::to_string(plot_style));
        EXPECT_EQ(screen.findChildren<QWidget*>(QRegularExpression("^grf_Plot\\(\\d\\)$")).size(), windows);
        EXPECT_EQ(user.Text(Element("lbl_Right", 3)), "101.60 mm");
    }
}

TEST_F(Plot_Screens, two_functions_of_different_units_have_an_axis_each)
{
    Pick_Segment(design, "All");
    const std::vector<int> picks{1, 2};
    ASSERT_TRUE(Select_OK(design, 1, picks));
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& curves = user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves();
    ASSERT_EQ(curves.size(), 2U);
    EXPECT_FALSE(curves[0].right_axis);
    EXPECT_TRUE(curves[1].right_axis);
}

TEST_F(Plot_Screens, a_polar_plot_shows_closed_curves_and_values_as_radii)
{
    Pick_Segment(design, "All");
    const paint::Curve profile = paint::Plotted_Curve(design, 4, 54);
    EXPECT_EQ(profile.x.size(), 361U);
    EXPECT_NEAR(profile.x.front(), profile.x.back(), 1e-3);
    EXPECT_EQ(profile.y[90], Data(10, 90));
    const paint::Curve radius = paint::Plotted_Curve(design, 4, 11);
    EXPECT_NEAR(std::hypot(radius.x[50], radius.y[50]), Data(11, 50), 1e-4);
    EXPECT_NEAR(std::atan2(radius.y[50], radius.x[50]) * 57.29577951, 50.0, 1e-4);
}

TEST_F(Plot_Screens, a_transform_is_plotted_over_its_harmonics)
{
    Transform(var::A);
    Choose_Preset2(design, 2, 12);
    frm_Plot screen(2);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    ASSERT_EQ(chart.Curves()[0].x.size(), 15U);
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks);
    EXPECT_EQ(chart.Curves()[0].y[3], Data(20, 4));
    EXPECT_FALSE(user.Checked("chk_Line"));  // the boxes tell what is drawn
    EXPECT_TRUE(user.Checked("chk_Sticks"));
    EXPECT_EQ(user.Text("lbl_Title"), "Fourier Transform of  Accel");
    EXPECT_EQ(chart.Plot().xAxis->label(), "Harmonic Number");
    EXPECT_EQ(chart.Plot().yAxis->label(), "FFT of Mag FFT  mm/sec^2");
    EXPECT_EQ(Labels(chart),
              (QVector<QString>{"0", "", "2", "", "4", "", "6", "", "8", "", "10", "", "12", "", "14", ""}));
    user.Press("chk_Line");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks_and_line);
}

TEST_F(Plot_Screens, harmonics_beside_functions_keep_their_own_abscissa_and_title)
{
    Transform(var::V);
    Pick({2, 20}, 2);
    frm_Plot screen(2);
    const Driver user(screen);
    const auto& motion = user.Find<paint::Chart>(Element("grf_Plot", 0));
    const auto& harmonics = user.Find<paint::Chart>(Element("grf_Plot", 1));
    EXPECT_EQ(motion.Plot().xAxis->label(), "Cam Angle (Deg)");
    EXPECT_EQ(harmonics.Plot().xAxis->label(), "Harmonic Number");
    EXPECT_EQ(motion.Curves()[0].x.size(), 361U);
    EXPECT_EQ(harmonics.Curves()[0].x.size(), 15U);
    EXPECT_EQ(From_Qt(motion.Title()), "Selected Cam-Follower Parameters    " + design.identity.Model_Name + "  ");
    EXPECT_EQ(harmonics.Title(), "Fourier Transform of  Velocity");
    EXPECT_FALSE(user.Visible("lbl_Title"));
    EXPECT_TRUE(user.Checked("chk_Line"));
    EXPECT_TRUE(user.Checked("chk_Sticks"));
    EXPECT_EQ(harmonics.Curves()[0].style, paint::Curve_Style::sticks_and_line);
}

TEST_F(Plot_Screens, a_transform_that_is_not_in_memory_is_a_line_of_zeros)
{
    Transform(var::A);
    ASSERT_NE(Data(20, 4), 0.0);
    design.motion.Fft_Half = 0;  // as after a model was read: it holds the rows, but not how far they go
    design.flags.FFT_Done = false;
    Pick({20}, 1);
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    EXPECT_EQ(chart.Curves()[0].y, std::vector<double>(15, 0.0));
    EXPECT_GT(chart.Plot().yAxis->range().size(), 1.0);
}

TEST_F(Plot_Screens, a_loaded_transform_is_not_offered_and_the_screen_says_why)
{
    {
        frm_PlotSelect screen(2);
        EXPECT_FALSE(Driver(screen).Visible("lbl_Transform"));  // there was none
    }
    Transform(var::A);
    {
        frm_PlotSelect screen(2);
        const Driver user(screen);
        EXPECT_FALSE(user.Visible("lbl_Transform"));
        EXPECT_NE(user.Find<QComboBox>("cmb_Var1").findText("Mag FFT"), -1);
    }
    const QTemporaryDir folder;
    const std::string path = folder.filePath("f.cam").toStdString();
    script_.Expect({"The file was successfully written to \n" + path});
    ASSERT_TRUE(Write_Model_File(design, path, Save_From::home_screen));
    ASSERT_TRUE(Sub_Main(design, "", {}));  // opening a file begins with a fresh design
    ASSERT_TRUE(Load_Model(design, path));
    ASSERT_NE(Data(20, 4), 0.0);  // the file has the rows
    for (const int plot_style : {1, 2, 3, 4}) {
        frm_PlotSelect screen(plot_style);
        const Driver user(screen);
        EXPECT_EQ(user.Text("lbl_Transform"),
                  "A model file keeps no Fourier transform to plot. The FFT screen makes one, and the command fft "
                  "prints one.");
        EXPECT_TRUE(user.Visible("lbl_Transform"));
        EXPECT_EQ(user.Find<QComboBox>("cmb_Var1").findText("Mag FFT"), -1);
        EXPECT_EQ(user.Find<QComboBox>("cmb_Preset").findText("Magnitude and Phase Components of Current FFT"), -1);
    }
}

TEST_F(Plot_Screens, harmonics_and_functions_in_one_window_are_refused_with_the_reason)
{
    Transform(var::A);
    frm_PlotSelect screen(1);
    const Driver user(screen);
    user.Pick("cmb_Var1", "Velocity");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    user.Pick("cmb_Var2", "Mag FFT");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text("lbl_Reason"),
              "The harmonics of a Fourier transform and functions of the cam angle cannot share a window.");
    user.Press("cmd_Clear1");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text("lbl_Reason"), "");
    frm_PlotSelect polar(4);
    const Driver other(polar);
    other.Pick("cmb_Var1", "Mag FFT");
    EXPECT_FALSE(other.Enabled("cmd_Done"));
    EXPECT_NE(other.Text("lbl_Reason"), "");
}

TEST_F(Plot_Screens, a_fault_in_a_plot_is_reported_and_leaves_the_screen)
{
    Pick({2}, 1);
    design.motion.Deltatheta = 0.0;
    script_.Expect(testing::Error_Box(11, "Division by zero", "frm_Plot1.Replot"));
    frm_Plot screen(1);
    const Driver user(screen);
    design.motion.Deltatheta = 1.0;
    user.Press("cmd_Replot");
    EXPECT_EQ(user.Find<paint::Chart>(Element("grf_Plot", 0)).Curves().size(), 1U);
}

TEST_F(Plot_Screens, a_segment_outside_the_cycle_is_plotted_as_far_as_there_are_points)
{
    design.motion.Shift(1) = -50.0;
    Pick_Segment(design, "1  R");
    for (const int plot_style : {1, 4}) {
        EXPECT_EQ(paint::Plotted_Curve(design, plot_style, 2).x.size(), 91U);
        EXPECT_EQ(paint::Plotted_Curve(design, plot_style, 2).y[0], 0.0);
    }
    design.motion.Shift(1) = 1000.0;
    design.motion.Gamma(1) = 2000.0;
    Pick_Segment(design, "1  R");
    EXPECT_EQ(paint::Plotted_Curve(design, 4, 2).x.size(), 1U);
}

TEST_F(Plot_Screens, the_title_stands_once_on_the_screen_and_blanks_are_kept)
{
    design.identity.Model_Name = "press 7";
    Pick({2}, 1);
    frm_Plot one(1);
    EXPECT_EQ(Driver(one).Find<paint::Chart>(Element("grf_Plot", 0)).Title(),
              "Selected Cam-Follower Parameters    press 7  ");
    EXPECT_FALSE(Driver(one).Visible("lbl_Title"));
    Pick({2, 3}, 2);
    frm_Plot two(2);
    EXPECT_EQ(Driver(two).Text("lbl_Title"), "Selected Cam-Follower Parameters    press 7  ");
    EXPECT_EQ(Driver(two).Find<paint::Chart>(Element("grf_Plot", 0)).Title(), "");
    Pick({31, 32}, 2);
    frm_Plot response(2);
    EXPECT_EQ(Driver(response).Text("lbl_Title"), "Dynamic Response of Follower    press 7  ");
}

TEST_F(Plot_Screens, a_saved_plot_has_its_title)
{
    design.identity.Model_Name = "press 7";
    const QTemporaryDir folder;
    for (const auto& [plot_style, name] : {std::pair{1, "1.svg"}, std::pair{2, "2.svg"}, std::pair{4, "4.svg"}}) {
        Pick({2, 3}, plot_style);
        const QString path = folder.filePath(name);
        ASSERT_TRUE(paint::Save_Plot(design, plot_style, {500, 400}, path.toStdString()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString::fromUtf8(file.readAll()).count("Selected Cam-Follower Parameters"), 1) << name;
    }
}

TEST_F(Plot_Screens, the_ticks_of_a_chart_are_those_of_the_plot)
{
    Pick({2}, 1);
    frm_Plot whole(1);
    EXPECT_EQ(Labels(Driver(whole).Find<paint::Chart>(Element("grf_Plot", 0))),
              (QVector<QString>{"0", "", "60", "", "120", "", "180", "", "240", "", "300", "", "360"}));
    Pick_Segment(design, "3  F");  // 180 to 270: every 7 points
    frm_Plot part(1);
    EXPECT_EQ(Labels(Driver(part).Find<paint::Chart>(Element("grf_Plot", 0))),
              (QVector<QString>{"180", "", "194", "", "208", "", "222", "", "236", "", "250", "", "264"}));
}

TEST_F(Plot_Screens, ticks_of_a_segment_below_a_degree_count_its_points)
{
    ASSERT_TRUE(Set_Step(design, 0.25));
    ASSERT_TRUE(Calc_All(design, true));
    Pick({2}, 1);
    Pick_Segment(design, "3  F");  // 361 points: a mark every 30, a label every 60
    frm_Plot screen(1);
    const auto& chart = Driver(screen).Find<paint::Chart>(Element("grf_Plot", 0));
    EXPECT_EQ(chart.Curves()[0].x.size(), 361U);
    EXPECT_EQ(Labels(chart),
              (QVector<QString>{"180", "", "195", "", "210", "", "225", "", "240", "", "255", "", "270"}));
}

TEST_F(Plot_Screens, the_polar_angle_of_a_radial_cam_is_in_degrees)
{
    Pick({12}, 1);
    frm_Plot screen(1);
    EXPECT_EQ(Driver(screen).Find<paint::Chart>(Element("grf_Plot", 0)).Plot().yAxis->label(), "Theta  deg");
}

TEST_F(Plot_Screens, gray_plots_tell_their_curves_by_pattern)
{
    p_.Plot_Color = false;
    Pick({1, 2, 3, 4}, 1);
    frm_Plot screen(1);
    const auto& chart = Driver(screen).Find<paint::Chart>(Element("grf_Plot", 0));
    std::set<Qt::PenStyle> patterns;
    for (const paint::Curve& curve : chart.Curves()) {
        patterns.insert(curve.pattern);
        EXPECT_EQ(curve.colour.saturation(), 0);
    }
    EXPECT_EQ(patterns.size(), 4U);
    EXPECT_EQ(chart.Plot().graph(1)->pen().style(), Qt::DashLine);
    p_.Plot_Color = true;
    frm_Plot coloured(1);
    EXPECT_GT(Driver(coloured).Find<paint::Chart>(Element("grf_Plot", 0)).Plot().graph(1)->pen().color().saturation(),
              100);
}

TEST_F(Plot_Screens, a_function_without_data_is_a_line_of_zeros)
{
    Pick({42}, 1);  // no stresses yet
    frm_Plot screen(1);
    const auto& chart = Driver(screen).Find<paint::Chart>(Element("grf_Plot", 0));
    EXPECT_EQ(chart.Curves()[0].y, std::vector<double>(361, 0.0));
    EXPECT_TRUE(chart.Plot().yAxis->range().contains(0.0));
}

TEST_F(Plot_Screens, functions_open_with_on_and_close_with_off)
{
    frm_PlotSelect screen(1);
    const Driver user(screen);
    user.Press("cmd_On3");
    user.Press("cmd_On4");
    user.Pick("cmb_Var1", "Velocity");
    EXPECT_TRUE(user.Enabled("fra_Function3"));
    EXPECT_TRUE(user.Enabled("fra_Function4"));
    user.Pick("cmb_Var2", "Accel");
    user.Pick("cmb_Var3", "Phi");
    EXPECT_EQ(user.Text("cmd_Clear2"), "O&ff");
    user.Press("cmd_Clear2");
    EXPECT_FALSE(user.Enabled("fra_Function2"));
    EXPECT_TRUE(user.Enabled("fra_Function3"));
    EXPECT_EQ(user.Text(Element("lbl_Function", 1)), "Velocity");
    EXPECT_EQ(user.Text(Element("lbl_Function", 2)), "");
    EXPECT_EQ(user.Text(Element("lbl_Function", 3)), "Phi");  // its own pick, whatever stands before it
    EXPECT_EQ(p_.Num_Sets, 2);
    EXPECT_EQ(p_.Plot_Vars(2), 5);
    user.Press("cmd_Clear1");
    EXPECT_TRUE(user.Enabled("fra_Function1"));
    EXPECT_EQ(p_.Num_Sets, 1);
}

TEST_F(Plot_Screens, coming_back_to_the_presets_shows_no_pick)
{
    frm_PlotSelect screen(2);
    const Driver user(screen);
    user.Pick("cmb_Preset", "Displacement and Velocity");
    user.Press(Element("opt_PrintSet", 1));
    user.Press(Element("opt_PrintSet", 0));
    EXPECT_EQ(user.Find<QComboBox>("cmb_Preset").currentIndex(), -1);
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text(Element("lbl_Function", 1)), "");
}

TEST_F(Plot_Screens, controls_have_their_captions)
{
    frm_PlotType type;
    const Driver types(type);
    EXPECT_EQ(types.Text("cmd_PickPlotDone"), "&Next >");
    EXPECT_EQ(types.Text("cmd_CancelPickPlot"), "< &Back");
    frm_PlotSelect select(1);
    const Driver choices(select);
    EXPECT_EQ(choices.Text(Element("opt_PrintSet", 0)), "Preset Formats");
    EXPECT_EQ(choices.Text(Element("opt_PrintSet", 1)), "Mix and Match");
    EXPECT_EQ(choices.Text("cmd_Done"), "&Next >");
    EXPECT_EQ(choices.Text("cmd_Cancel"), "< &Back");
    EXPECT_EQ(choices.Text("cmd_Clear2"), "O&ff");
    for (const char* const off : {"cmd_Clear3", "cmd_Clear4"})  // the key is that of the first
        EXPECT_EQ(choices.Text(off), "Off");
    Pick({2}, 1);
    frm_Plot screen(1);
    const Driver user(screen);
    for (const auto& [name, caption] :
         {std::pair{"chk_HGrid", "Horiz"}, std::pair{"chk_VGrid", "Vertic"}, std::pair{"chk_Line", "Lines"},
          std::pair{"chk_Sticks", "Fills"}, std::pair{"opt_Back(0)", "White"}, std::pair{"opt_Back(1)", "Blue"},
          std::pair{"opt_Back(2)", "Gray"}, std::pair{"opt_color(0)", "Cyan Boxes"},
          std::pair{"opt_color(1)", "White Boxes"}, std::pair{"cmd_Copy", "&Copy"}})
        EXPECT_EQ(user.Text(name), caption);
    EXPECT_EQ(user.Find<QGroupBox>("pnl_Left").title(), "Cam Basic Data");
    EXPECT_EQ(user.Find<QGroupBox>("pnl_Right").title(), "Cam Size Data");
    design.flags.Sized = false;
    frm_Plot unsized(1);
    EXPECT_EQ(unsized.findChild<QGroupBox*>("pnl_Right"), nullptr);
}

TEST_F(Plot_Screens, the_style_boxes_act_on_polar_plots_too)
{
    Pick({54}, 4);
    frm_Plot screen(4);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    EXPECT_EQ(chart.Plot().plottableCount(), 1);
    user.Press("chk_Sticks");
    EXPECT_EQ(chart.Plot().plottableCount(), 2);
    user.Press("chk_Line");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks);
    user.Press("chk_Sticks");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::points);
}

TEST_F(Plot_Screens, a_ticked_box_keeps_what_is_zoomed_into_view)
{
    Pick({2}, 1);
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    chart.Plot().xAxis->setRange(20, 60);
    user.Press("chk_Sticks");
    EXPECT_EQ(chart.Plot().xAxis->range().upper, 60.0);
    user.Press("cmd_Replot");
    EXPECT_EQ(chart.Plot().xAxis->range().upper, 360.0);
}

TEST_F(Plot_Screens, grids_styles_and_grounds_can_be_changed)
{
    Pick({2}, 1);
    frm_Plot screen(1);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("grf_Plot", 0));
    user.Press("chk_Sticks");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks_and_line);
    user.Press("chk_Line");
    EXPECT_EQ(chart.Curves()[0].style, paint::Curve_Style::sticks);
    EXPECT_TRUE(chart.Plot().yAxis->grid()->visible());
    user.Press("chk_HGrid");
    EXPECT_FALSE(chart.Plot().yAxis->grid()->visible());
    EXPECT_TRUE(chart.Plot().xAxis->grid()->visible());
    user.Press("chk_VGrid");
    EXPECT_FALSE(chart.Plot().xAxis->grid()->visible());
    const auto ground = [&](int k) {
        user.Press(Element("opt_Back", k));
        return screen.Control<paint::Chart>(Element("grf_Plot", 0)).Picture({40, 30}).toImage().pixelColor(1, 1);
    };
    EXPECT_EQ(ground(0), QColor(Qt::white));
    EXPECT_GT(ground(1).blue(), ground(1).red());
    EXPECT_EQ(ground(2).saturation(), 0);
    EXPECT_NE(ground(2), QColor(Qt::white));
    const auto& panel = user.Find<QGroupBox>("pnl_Left");
    user.Press(Element("opt_color", 0));
    EXPECT_GT(panel.palette().color(QPalette::Window).saturation(), 30);
    user.Press(Element("opt_color", 1));
    EXPECT_EQ(panel.palette().color(QPalette::Window), QColor(Qt::white));
    user.Press("cmd_Replot");
    EXPECT_FALSE(chart.Plot().yAxis->grid()->visible());
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_PlotDone");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Plot_Screens, a_segment_has_its_four_functions_on_the_plot_screen_and_leaves_the_picks_alone)
{
    Pick({5, 6}, 2);
    p_.Plot_Style = 2;
    bool shown = false;
    const testing::Modals modals([&](QDialog& open) {
        shown = true;
        const Driver user(open);
        EXPECT_EQ(open.objectName(), "frm_Plot3");
        EXPECT_EQ(open.windowTitle(), "Segment 3");
        EXPECT_EQ(user.Text(Element("lbl_Left", 0)), "3  F");
        for (int k = 0; k < 4; ++k) {
            const auto& curves = user.Find<paint::Chart>(Element("grf_Plot", k)).Curves();
            ASSERT_EQ(curves.size(), 1U);
            EXPECT_EQ(curves[0].x.front(), 180.0);
            EXPECT_EQ(curves[0].x.back(), 270.0);
            EXPECT_EQ(curves[0].y[10], Data(var::S + k, 190));
        }
        user.Press("cmd_PlotDone");
    });
    screens::Run_Segment_Plot(3, nullptr);
    EXPECT_TRUE(shown);
    EXPECT_EQ(p_.Plot_Vars(1), 5);
    EXPECT_EQ(p_.Num_Sets, 2);
    EXPECT_EQ(p_.Segment_Pick, "All");
    EXPECT_EQ(p_.Plot_Last, 360.0);
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
        Pick_Segment(design, "All");
        for (int plot_style = 1; plot_style <= 4; ++plot_style)
            for (const int v : Load_Names(design))
                EXPECT_EQ(paint::Plotted_Curve(design, plot_style, v).y.size(), 361U) << name << v;
    }
}

}  // namespace
}  // namespace lobemax
