// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Bounds.h"

#include <qcustomplot.h>

#include <QTableWidget>

#include "core/text.h"
#include "edit/conditions.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "paint/chart.h"
#include "screens/frm_Knots.h"
#include "screens/frm_Poly.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Bounds;
using screens::frm_Knots;
using screens::frm_Poly;
using testing::Driver;

class Conditions_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    static void Make(char kind, const char* from = "0", const char* to = "25")
    {
        Pick_Motion(design, 1, kind);
        design.motion.Start_Value(1) = from;
        design.motion.End_Value(1) = to;
    }
    static void Fill_Ends(const Driver& user)
    {
        user.Fill("txt_NoConds", "6");
        for (const char* box : {"txt_Vbound", "txt_Abound"})
            for (const int row : {0, 9})
                user.Fill(Element(box, row), "0");
    }
    static double S(int i) { return design.results.CalcData(var::S, i); }
    Motion_Group& m_ = design.motion;
};

TEST_F(Conditions_Screen, opens_with_the_segment_and_its_positions)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_segment"), "1");
    EXPECT_EQ(user.Text("lbl_start"), "0");
    EXPECT_EQ(user.Text("lbl_end"), "90");
    EXPECT_EQ(user.Text("lbl_Segangle"), "90");
    EXPECT_EQ(user.Text("txt_NoConds"), "2");
    EXPECT_EQ(user.Text("lbl_Selected"), "2");
    EXPECT_EQ(user.Text(Element("txt_Sbound", 0)), "0");
    EXPECT_EQ(user.Text(Element("txt_Sbound", 9)), "25");
}

TEST_F(Conditions_Screen, six_conditions_make_the_345_polynomial_and_show_it)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    Fill_Ends(user);
    EXPECT_EQ(user.Text("lbl_Selected"), "6");
    bool shown = false;
    const testing::Modals modals([&](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Poly");
        const Driver reader(open);
        auto& coefficients = reader.Find<QTableWidget>("grd_Coefficients");
        EXPECT_EQ(coefficients.rowCount(), 6);
        EXPECT_EQ(coefficients.item(3, 1)->text(), "250");  // 10, -15, 6 times the lift of 25
        EXPECT_EQ(coefficients.item(4, 1)->text(), "-375");
        EXPECT_EQ(coefficients.item(5, 1)->text(), "150");
        reader.Press("cmd_Done");
        shown = true;
    });
    user.Press("cmd_Done");
    EXPECT_TRUE(shown);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_TRUE(m_.Poly_OK);
    const double x = 30.0 / 90;
    EXPECT_NEAR(S(30), 25 * (10 * x * x * x - 15 * x * x * x * x + 6 * x * x * x * x * x), 1e-4);
}

TEST_F(Conditions_Screen, a_position_typed_at_an_end_is_the_rows_and_the_next_rows)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    user.Fill(Element("txt_Sbound", 0), "1.5");
    user.Fill(Element("txt_Sbound", 9), "20");
    EXPECT_EQ(m_.Start_Value(1), "1.5");
    EXPECT_EQ(m_.End_Value(1), "20");
    EXPECT_EQ(m_.Start_Value(2), "20");
    EXPECT_EQ(m_.End_Value(2), "20") << "a dwell";
    EXPECT_EQ(m_.Start_Value(3), "20");
    EXPECT_EQ(m_.End_Value(3), "0");
}

TEST_F(Conditions_Screen, counts_outside_their_range_are_refused_and_too_many_boxes_told_of)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    script_.Expect(
        {"Number of boundary conditions must be between 2 and 40 - please re-enter", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_NoConds", "41");
    EXPECT_EQ(user.Text("txt_NoConds"), "2");
    user.Fill("txt_NoConds", "6");
    Fill_Ends(user);
    script_.Expect({"You have input more boundary conditions than specified", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_NoConds", "5");
}

TEST_F(Conditions_Screen, a_count_that_does_not_match_keeps_the_screen_open)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    user.Fill("txt_NoConds", "4");
    script_.Expect({"Something wrong - Have input different number of boundary conditions than specified", Buttons::OK,
                    Symbol::exclamation});
    user.Press("cmd_Done");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_FALSE(m_.Poly_OK);
}

TEST_F(Conditions_Screen, a_row_without_its_angle_counts_nothing)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    user.Fill(Element("txt_Sbound", 4), "9");
    EXPECT_EQ(user.Text("lbl_Selected"), "2");
    user.Fill(Element("txt_Theta", 4), "40");
    EXPECT_EQ(user.Text("lbl_Selected"), "3");
    user.Press("cmd_ClearBounds");
    EXPECT_EQ(user.Text("lbl_Selected"), "0");
    EXPECT_EQ(user.Text(Element("txt_Theta", 4)), "");
}

TEST_F(Conditions_Screen, back_and_the_close_box_leave_the_polynomial_unsolved)
{
    Make('P');
    {
        frm_Bounds screen(1);
        const Driver user(screen);
        user.Press("cmd_Cancel");
        EXPECT_FALSE(m_.Poly_OK);
    }
    frm_Bounds screen(1);
    const Driver user(screen);
    testing::Expected_Box question{
        "Closing this form with the control box as you have done will abort the calculation.\n"
        "You must click the Next button to complete the calculation.\n"
        "Do you wish to close the form without completing the calculation?",
        Buttons::Yes_No, Symbol::exclamation, Answer::No};
    script_.Expect(question);
    screen.close();
    EXPECT_TRUE(screen.isVisible());
    question.answer = Answer::Yes;
    script_.Expect(question);
    screen.close();
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Conditions_Screen, escape_goes_back_at_once)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    QTest::keyClick(&user.Find<QWidget>(Element("txt_Sbound", 0)), Qt::Key_Escape);  // no box, whose Escape would stay
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Conditions_Screen, arrow_keys_go_through_the_table)
{
    Make('P');
    frm_Bounds screen(1);
    const Driver user(screen);
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(screen.focusWidget(), key);
        return screen.focusWidget()->objectName().toStdString();
    };
    user.Find<QWidget>(Element("txt_Sbound", 0)).setFocus();
    EXPECT_EQ(press(Qt::Key_Left), "txt_Sbound(0)");  // the angle of the start is not typed
    EXPECT_EQ(press(Qt::Key_Up), "txt_Sbound(0)");
    EXPECT_EQ(press(Qt::Key_Right), "txt_Vbound(0)");
    EXPECT_EQ(press(Qt::Key_Down), "txt_Vbound(1)");
    EXPECT_EQ(press(Qt::Key_Left), "txt_Sbound(1)");
    EXPECT_EQ(press(Qt::Key_Left), "txt_Theta(1)");
    EXPECT_EQ(press(Qt::Key_Up), "txt_Theta(1)");
    for (int row = 2; row <= 8; ++row)
        EXPECT_EQ(press(Qt::Key_Down), Element("txt_Theta", row).toStdString());
    EXPECT_EQ(press(Qt::Key_Right), "txt_Sbound(8)");
    EXPECT_EQ(press(Qt::Key_Down), "txt_Sbound(9)");
    auto& end = user.Find<QLineEdit>(Element("txt_Sbound", 9));
    EXPECT_EQ(end.selectedText(), "25");
    end.setCursorPosition(1);  // inside of the text the arrows go through it
    EXPECT_EQ(press(Qt::Key_Right), "txt_Sbound(9)");
    EXPECT_EQ(end.cursorPosition(), 2);
    EXPECT_EQ(press(Qt::Key_Right), "txt_Vbound(9)");
    EXPECT_EQ(m_.End_Value(1), "25");
}

TEST_F(Conditions_Screen, another_program_is_corrupted_data)
{
    frm_Bounds screen(1);
    const Driver user(screen);
    script_.Expect({"Something is wrong - Data are corrupted", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Done");
    EXPECT_FALSE(m_.Poly_OK);
}

TEST_F(Conditions_Screen, the_solved_polynomial_prints_its_conditions)
{
    Make('P');
    for (const int row : {0, 9})
        for (const int order : {1, 2})
            Bound_Text(design, 1, row, order) = "0";
    ASSERT_TRUE(Set_No_of_Conditions(design, 1, "6"));
    ASSERT_TRUE(Calc_Segment(design, 0));
    frm_Poly screen(1);
    const Driver user(screen);
    auto& table = user.Find<QTableWidget>("grd_Conditions");
    EXPECT_EQ(table.rowCount(), 6);
    EXPECT_EQ(table.item(0, 0)->text(), "S");
    EXPECT_EQ(table.item(3, 1)->text(), "90");
    EXPECT_EQ(table.item(3, 2)->text(), "100");
    EXPECT_EQ(table.item(3, 3)->text(), "25");
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

/// A spline rise with S, V, A at both ends and one position between.
class Knot_Screen : public Conditions_Screen {
protected:
    void SetUp() override
    {
        Conditions_Screen::SetUp();
        Make('S');
        for (const int row : {0, 9})
            for (const int order : {1, 2})
                Bound_Text(design, 1, row, order) = "0";
        Bound_Text(design, 1, 4, 0) = "10";
        m_.T_boundary_cond(1, 4) = "45";
        ASSERT_TRUE(Set_No_of_Conditions(design, 1, "7"));
        ASSERT_TRUE(Calc_Segment(design, 0));
    }
};

TEST_F(Knot_Screen, opens_calculated_with_its_figures)
{
    frm_Knots screen(1);
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Order"), "6");
    EXPECT_EQ(user.Text("lbl_MinOrder"), "4");
    EXPECT_EQ(user.Text("lbl_MaxOrder"), "7");
    EXPECT_EQ(user.Text("lbl_Bounds"), "7");
    EXPECT_EQ(user.Text("lbl_Total_Knots"), "13");
    EXPECT_EQ(user.Text("lbl_IntKnots"), "1");
    EXPECT_EQ(user.Text(Element("txt_Knot", 1)), "45");
    EXPECT_FALSE(user.Visible(Element("txt_Knot", 2)));
    EXPECT_TRUE(user.Checked("chk_Even"));
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Tip("txt_Order"), "Specify Desired Order of B-Spline");
    EXPECT_NEAR(S(45), 10.0, 1e-4);
}

TEST_F(Knot_Screen, a_moved_knot_recalculates_and_is_no_longer_even)
{
    frm_Knots screen(1);
    const Driver user(screen);
    const double before = S(20);
    user.Fill(Element("txt_Knot", 1), "30");
    EXPECT_FALSE(user.Checked("chk_Even"));
    EXPECT_NE(S(20), before);
    EXPECT_NEAR(S(45), 10.0, 1e-4);
    user.Press("chk_Even");
    EXPECT_EQ(user.Text(Element("txt_Knot", 1)), "45");
    EXPECT_EQ(S(20), before);
}

TEST_F(Knot_Screen, without_autocalc_the_button_calculates)
{
    frm_Knots screen(1);
    const Driver user(screen);
    user.Press("chk_Autocalc");
    const double before = S(20);
    user.Fill(Element("txt_Knot", 1), "30");
    EXPECT_EQ(S(20), before);
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Press("cmd_Calc");
    EXPECT_NE(S(20), before);
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Knot_Screen, what_is_not_of_the_knots_on_the_screen_is_gray)
{
    frm_Knots screen(1);
    const Driver user(screen);
    const auto& chart = user.Find<paint::Chart>(Element("pct_Plot", 0));
    const auto colour = [&] { return chart.Plot().graph(0)->pen().color(); };
    const auto knot = [&] {
        for (int k = 0; k < chart.Plot().itemCount(); ++k)
            if (const auto* line = qobject_cast<const QCPItemStraightLine*>(chart.Plot().item(k)))
                return line->point1->coords().x();
        return -1.0;
    };
    const QColor gray = chart.palette().color(QPalette::Mid);
    EXPECT_NE(colour(), gray);
    EXPECT_TRUE(user.Enabled("cmd_Plot"));
    user.Press("chk_Autocalc");
    user.Fill(Element("txt_Knot", 1), "30");
    EXPECT_EQ(colour(), gray);
    EXPECT_EQ(knot(), 30.0);
    EXPECT_FALSE(user.Enabled("cmd_Plot"));
    user.Press("cmd_Calc");
    EXPECT_NE(colour(), gray);
}

TEST_F(Knot_Screen, show_brings_the_whole_back_and_plot_opens_the_plot_screen)
{
    frm_Knots screen(1);
    const Driver user(screen);
    auto& chart = user.Find<paint::Chart>(Element("pct_Plot", 1));
    chart.Plot().xAxis->setRange(20, 40);
    user.Fill(Element("txt_Knot", 1), "30");
    EXPECT_EQ(chart.Plot().xAxis->range().upper, 40.0);  // a recalculation keeps what is zoomed into view
    user.Press("cmd_Show");
    EXPECT_EQ(chart.Plot().xAxis->range().upper, 90.0);
    EXPECT_EQ(chart.Plot().xAxis->range().lower, 0.0);
    std::string opened;
    const testing::Modals modals([&](QDialog& open) {
        opened = (open.objectName() + " " + open.windowTitle()).toStdString();
        const auto& curve = Driver(open).Find<paint::Chart>(Element("grf_Plot", 0)).Curves()[0];
        EXPECT_EQ(curve.y[20], S(20));
        Driver(open).Press("cmd_PlotDone");
    });
    user.Press("cmd_Plot");
    EXPECT_EQ(opened, "frm_Plot3 Segment 1");
}

TEST_F(Knot_Screen, orders_and_knots_out_of_range_have_their_messages)
{
    frm_Knots screen(1);
    const Driver user(screen);
    script_.Expect({"Spline order must be four or greater", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Order", "3");
    EXPECT_EQ(user.Text("txt_Order"), "6");
    script_.Expect({"Spline Order must be less than 8", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Order", "9");
    EXPECT_EQ(user.Text("txt_Order"), "7");
    EXPECT_FALSE(user.Visible(Element("txt_Knot", 1)));
    user.Fill("txt_Order", "5");
    EXPECT_EQ(user.Text("lbl_IntKnots"), "2");
    script_.Expect(
        {" Knot values must be in ascending order, left to right.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill(Element("txt_Knot", 1), "80");
    EXPECT_EQ(user.Text(Element("txt_Knot", 1)), "30");
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill(Element("txt_Knot", 1), "-5");
}

TEST_F(Knot_Screen, the_condition_screen_goes_on_to_it_for_a_spline)
{
    frm_Bounds screen(1);
    const Driver user(screen);
    const testing::Modals modals([](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Knots");
        Driver(open).Press("cmd_Done");
    });
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_EQ(m_.No_Conditions(1), 7);
}

}  // namespace
}  // namespace lobemax
