// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/plot_view.h"

#include <QImage>

#include "core/text.h"
#include "present/plot_engine.h"
#include "tests/support/desktop_design.h"
#include "tests/support/recording_surface.h"

namespace lobemax {
namespace {

using paint::Plot_View;
using screens::Element;
using testing::Driver;

class Plot_Views : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
        view_.resize(500, 240);
    }
    /// Pixels in which the plot differs from an empty one.
    int Ink_in_View()
    {
        const QImage picture = view_.findChild<QWidget*>("pct_Plot(1)")->grab().toImage();
        const QColor ground = view_.palette().color(QPalette::Base);
        int ink = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                ink += picture.pixelColor(x, y) != ground ? 1 : 0;
        return ink;
    }
    Plot_View view_{1, 2};
};

TEST_F(Plot_Views, the_figures_of_the_plot_stand_beside_it)
{
    ASSERT_TRUE(view_.Show(var::V, 0, 360, true));
    const Driver user(view_);
    testing::Recording_Surface surface;
    const Plot_Figures figures = Plot_Dynamics(surface, 2, var::V, 0, 360, true);
    EXPECT_EQ(user.Text(Element("pnl_LeftTitle", 1)), "Velocity");
    EXPECT_EQ(user.Text(Element("pnl_Units", 1)), "mm/sec");
    EXPECT_EQ(user.Text(Element("pnl_Ymax", 1)), Trim(figures.ymax));
    EXPECT_EQ(user.Text(Element("pnl_Ymin", 1)), Trim(figures.ymin));
    EXPECT_EQ(user.Text(Element("lbl_Max", 1)), Trim(FNRoundStr(figures.largest, 1)));
    EXPECT_EQ(user.Text(Element("lbl_Min", 1)), Trim(FNRoundStr(figures.smallest, 1)));
    EXPECT_EQ(user.Text(Element("lbl_Peak", 1)), Trim(FNRoundStr(figures.largest - figures.smallest, 1)));
    EXPECT_GT(Ink_in_View(), 500);
}

TEST_F(Plot_Views, a_plot_stays_as_it_was_painted_when_the_design_goes)
{
    ASSERT_TRUE(view_.Show(var::V, 0, 360, false));
    view_.show();
    const int before = Ink_in_View();
    design.results.CalcData.Dimension(0, 0);
    EXPECT_EQ(Ink_in_View(), before);
}

TEST_F(Plot_Views, a_fault_is_reported_and_leaves_an_empty_window)
{
    ASSERT_TRUE(view_.Show(var::V, 0, 360, false));
    script_.Expect(testing::Error_Box(9, "Index out of bounds", "Plot_Dynamics"));
    EXPECT_FALSE(view_.Show(var::V, 0, 5000, false));
    EXPECT_EQ(Driver(view_).Text(Element("pnl_LeftTitle", 1)), "");
    EXPECT_EQ(Ink_in_View(), 0);
}

TEST_F(Plot_Views, a_row_of_zeros_is_a_flat_line)
{
    ASSERT_TRUE(view_.Show(var::Ext_Force, 0, 360, false));
    EXPECT_EQ(Driver(view_).Text(Element("lbl_Peak", 1)), "0.000");
    EXPECT_GT(Ink_in_View(), 100);
}

}  // namespace
}  // namespace lobemax
