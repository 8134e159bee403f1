// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_FFT.h"

#include <qcustomplot.h>

#include <QComboBox>

#include "motion/fourier.h"
#include "paint/chart.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::frm_FFT;
using testing::Driver;

class Fourier_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static const paint::Chart& Magnitudes(const Driver& user)
    {
        return user.Find<paint::Chart>(screens::Element("grf_Plot", 0));
    }
    static void Type_Harmonics(const Driver& user, const char* text)
    {
        auto& box = user.Find<QComboBox>("cmb_Harmonics");
        box.setFocus();
        box.lineEdit()->selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    }
};

TEST_F(Fourier_Screen, a_picked_variable_is_transformed_and_shown)
{
    frm_FFT screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text("cmb_Harmonics"), "15");
    user.Pick("cmb_Var1", "Accel");
    EXPECT_EQ(user.Text("lbl_Function"), "Fourier Transform of  Accel");
    EXPECT_EQ(Magnitudes(user).Curves()[0].y.size(), 15U);
    EXPECT_EQ(Magnitudes(user).Curves()[0].y[1], design.results.Fft_Work_A(2, 2));
    EXPECT_EQ(user.Text("lbl_powerunits"), "(mm/sec^2) ^2");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    script_.Expect(
        {" The FFT of the selected function is \n"
         " now available for output as \n"
         " 'Current FFT' from the Preset Format\n"
         " lists on the PRINT and PLOT screens"});
    user.Press("cmd_Done");
    EXPECT_TRUE(design.flags.FFT_Done);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Fourier_Screen, a_segment_and_a_count_are_followed)
{
    frm_FFT screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Velocity");
    user.Pick("cmb_Segment", "1  R");
    EXPECT_EQ(design.motion.Fft_Points, 90);
    user.Pick("cmb_Harmonics", "5");
    EXPECT_EQ(Magnitudes(user).Curves()[0].y.size(), 5U);
    Type_Harmonics(user, "8");
    EXPECT_EQ(Magnitudes(user).Curves()[0].y.size(), 8U);
}

TEST_F(Fourier_Screen, harmonics_typed_as_2000_are_capped)
{
    frm_FFT screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Velocity");
    script_.Expect(
        {"Number of harmonics cannot exceed 1/2 the number of data points available.\n"
         "If you want more bandwidth, recalculate all data with smaller increments. \n"
         "Use the [INPUT] button from the Home Screen to do so."});
    Type_Harmonics(user, "2000");
    EXPECT_EQ(user.Text("cmb_Harmonics"), "180");
    script_.Expect({" Must set the number of harmonics to a value > 0", Buttons::OK, Symbol::exclamation});
    Type_Harmonics(user, "0");
    EXPECT_TRUE(Magnitudes(user).Curves().empty());  // nothing of the transform before is left
    EXPECT_EQ(user.Text("lbl_Power"), "");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
}

TEST_F(Fourier_Screen, a_picked_count_takes_the_mark_of_a_cut_one_away)
{
    frm_FFT screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Velocity");
    Type_Harmonics(user, "12abc");
    EXPECT_EQ(user.Text("cmb_Harmonics"), "12");
    EXPECT_EQ(design.motion.No_Harmonics, 12);
    EXPECT_EQ(user.Find<screens::Entry>("txt_Harmonics").Cut(), "'12abc' was read as 12");
    user.Pick("cmb_Harmonics", "30");
    EXPECT_EQ(design.motion.No_Harmonics, 30);
    EXPECT_EQ(user.Find<screens::Entry>("txt_Harmonics").Cut(), "");
}

TEST_F(Fourier_Screen, without_a_variable_it_says_so)
{
    frm_FFT screen;
    const Driver user(screen);
    script_.Expect({"Please select a variable from the list provided", Buttons::OK, Symbol::exclamation});
    user.Pick("cmb_Segment", "2  [D]");
}

TEST_F(Fourier_Screen, clear_takes_picks_and_results_away)
{
    frm_FFT screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Accel");
    user.Press("cmd_Clear1");
    EXPECT_EQ(user.Text("cmb_Var1"), "");
    EXPECT_EQ(user.Text("lbl_Function"), "");
    EXPECT_TRUE(Magnitudes(user).Curves().empty());
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(design.motion.Fft_Points, 0);
}

TEST_F(Fourier_Screen, styles_and_grids_change_the_chart)
{
    frm_FFT screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Accel");
    EXPECT_EQ(Magnitudes(user).Curves()[0].style, paint::Curve_Style::sticks);
    user.Press("chk_Line");
    EXPECT_EQ(Magnitudes(user).Curves()[0].style, paint::Curve_Style::sticks_and_line);
    user.Press("chk_Sticks");
    EXPECT_EQ(Magnitudes(user).Curves()[0].style, paint::Curve_Style::line);
    user.Press("chk_Line");  // neither: the harmonics themselves
    EXPECT_EQ(Magnitudes(user).Curves()[0].style, paint::Curve_Style::points);
    EXPECT_EQ(Magnitudes(user).Plot().graph(0)->lineStyle(), QCPGraph::lsNone);
    EXPECT_EQ(Magnitudes(user).Plot().graph(0)->scatterStyle().shape(), QCPScatterStyle::ssDisc);
    user.Press("cmd_Cancel");
    EXPECT_FALSE(design.flags.FFT_Done);
}

}  // namespace
}  // namespace lobemax
