// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Continuity.h"

#include <QPushButton>

#include "motion/continuity.h"
#include "motion/segments.h"
#include "paint/chart.h"
#include "screens/frm_Input_Session.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::frm_Continuity;
using testing::Driver;

class Continuity_Screen : public testing::Desktop_Test {};

TEST_F(Continuity_Screen, a_smooth_design_is_accepted_after_its_box)
{
    Build("Double Dwell");
    frm_Continuity screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_Header"), "The segments meet within rounding.");
    EXPECT_EQ(user.Tip("pct_Continuity"), "If blank, click here to replot");
    for (int k = 0; k < 4; ++k) {
        const auto& chart = user.Find<paint::Chart>(screens::Element("grf_Continuity", k));
        ASSERT_EQ(chart.Curves().size(), 1U);
        EXPECT_EQ(chart.Curves()[0].y.size(), 361U);
        EXPECT_EQ(chart.Curves()[0].y[40], double{design.results.CalcData(var::S + k, 40)});
    }
    user.Press("cmd_Redraw");
    script_.Expect({Continuity_Text(design)});
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_TRUE(design.flags.Calculated);
}

TEST_F(Continuity_Screen, a_jump_is_told_and_cancel_goes_back)
{
    Build("Double Dwell");
    design.motion.Firstlast(2, 1, 0) = 20.0;  // 5 below the rise's end
    {
        frm_Continuity screen;
        const Driver user(screen);
        EXPECT_EQ(user.Text("lbl_Header"), "One or more of the segment boundaries is discontinuous.");
        EXPECT_NE(user.Text("lbl_Explanation").find("at the end of segment 1"), std::string::npos);
        script_.Expect({Continuity_Text(design), Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
        user.Press("cmd_Done");
        EXPECT_EQ(screen.result(), QDialog::Rejected);
    }
    frm_Continuity screen;
    const Driver user(screen);
    script_.Expect({Continuity_Text(design), Buttons::OK_Cancel, Symbol::exclamation, Answer::OK});
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Continuity_Screen, opens_with_the_focus_on_next)
{
    Build("Double Dwell");
    frm_Continuity screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Find<QPushButton>("cmd_Done").hasFocus());
    script_.Expect({Continuity_Text(design)});
    QTest::keyClick(screen.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Continuity_Screen, escape_ends_whether_the_segments_meet_or_not)
{
    for (const bool smooth : {true, false}) {
        Build("Double Dwell");
        if (!smooth) {
            design.motion.End_Value(1) = "20";
            ASSERT_TRUE(Calc_All(design, true));
        }
        std::vector<std::string> path;
        const testing::Modals modals([&](QDialog& open) {
            path.push_back(open.objectName().toStdString());
            ASSERT_LE(path.size(), 5U);
            if (path.back() == "frm_InputData" && path.size() == 1)
                Driver(open).Find<QWidget>("txt_High(0)").setFocus();
            if (path.back() == "frm_InputData" && path.size() == 3) {
                EXPECT_EQ(open.focusWidget()->objectName(), "txt_High(0)");  // where the user was
            }
            if (path.back() == "frm_Continuity") {
                testing::Expected_Box box{Continuity_Text(design)};
                if (!smooth)
                    box = {box.text, Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel};
                script_.Expect(box);
            }
            QTest::keyClick(&open, Qt::Key_Escape);
        });
        screens::Run_Input_Session(nullptr);
        EXPECT_EQ(path.size(), smooth ? 2U : 3U);
    }
}

TEST_F(Continuity_Screen, a_row_of_the_table_is_plotted_on_the_plot_screen)
{
    Build("Double Dwell");
    std::vector<std::string> path;
    const testing::Modals modals([&](QDialog& open) {
        path.push_back((open.objectName() + " " + open.windowTitle()).toStdString());
        const Driver user(open);
        if (path.size() == 1) {
            user.Press("cmd_PlotSeg(2)");
            user.Press("cmd_Cancel");
            return;
        }
        const auto& chart = user.Find<paint::Chart>("grf_Plot(1)");
        EXPECT_EQ(chart.Curves()[0].x.front(), 180.0);
        EXPECT_EQ(chart.Curves()[0].x.back(), 270.0);
        user.Press("cmd_PlotDone");
    });
    screens::Run_Input_Session(nullptr);
    ASSERT_EQ(path.size(), 2U);
    EXPECT_EQ(path[1], "frm_Plot3 Segment 3");
}

TEST_F(Continuity_Screen, back_returns_without_a_box)
{
    Build("Double Dwell");
    frm_Continuity screen;
    const Driver user(screen);
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_Back");
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

}  // namespace
}  // namespace lobemax
