// SPDX-License-Identifier: GPL-3.0-or-later
// The linkage screens: the choice of the train, the train, its masses and its plots, from the Home screen on.
#include "screens/frm_Linkage.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <algorithm>
#include <cmath>

#include "edit/rungs.h"
#include "linkage/linkage_kinematics.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_LinkageType.h"
#include "screens/frm_Linkplots.h"
#include "screens/frm_MassProp.h"
#include "tests/support/desktop_design.h"
#include "tests/support/number_in.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_HomeScreen;
using screens::frm_Linkage;
using screens::frm_LinkageType;
using screens::frm_Linkplots;
using screens::frm_MassProp;
using testing::Driver;
using testing::Expected_Box;
using testing::Modals;
using testing::Watched_Boxes;

const char* const examples[]{"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"};

QString Field(int index)
{
    return Element("txt_Linkout", index);
}

class Linkage_Screens : public testing::Desktop_Test {
protected:
    static void Build(const char* example)
    {
        Desktop_Test::Build(example);
        ASSERT_TRUE(Run_Size(design));
        screens::Desk_History().Start_Anew();
    }
    static QImage Picture(const Driver& user) { return user.Find<QWidget>("pct_Cam").grab().toImage(); }
    static std::string Field_Text(const Driver& user, int index) { return user.Text(Field(index)); }

    Linkage_Group& k_ = design.linkage;
    Flags_Group& f_ = design.flags;
};

TEST_F(Linkage_Screens, four_pictures_are_offered_with_help_and_next_takes_one)
{
    Build("Oscillating");
    for (int choice = 0; choice < 4; ++choice) {
        frm_LinkageType screen;
        const Driver user(screen);
        EXPECT_EQ(user.Text(Element("opt_Select", choice)), "Select");
        {
            const Watched_Boxes boxes(Answer::OK);
            user.Press(Element("cmd_Help", choice));
            ASSERT_EQ(boxes.texts.size(), 1U);
            EXPECT_TRUE(boxes.texts[0].starts_with("Link 2 is fixed to the cam follower arm"));
        }
        user.Press(Element("opt_Select", choice));
        int checked = 0;
        for (int other = 0; other < 4; ++other)
            checked += user.Checked(Element("opt_Select", other)) ? 1 : 0;
        EXPECT_EQ(checked, 1) << "one of the four frames";
        user.Press("cmd_Done");
        EXPECT_EQ(screen.result(), QDialog::Accepted);
        EXPECT_EQ(k_.Linkage_Type, choice);
    }
    frm_LinkageType again;
    const Driver user(again);
    EXPECT_TRUE(user.Checked("opt_Select(3)"));
    user.Press("opt_Select(0)");
    user.Press("cmd_Cancel");
    EXPECT_EQ(again.result(), QDialog::Rejected);
    EXPECT_EQ(k_.Linkage_Type, 3);
}

TEST_F(Linkage_Screens, the_train_has_the_name_and_the_controls_of_its_kind)
{
    const char* const names[]{"frm_Linkage", "frm_Linkage", "frm_CamSlider4", "frm_CamSlider6"};
    for (int type = 0; type < 4; ++type) {
        Build(examples[type]);
        frm_Linkage screen;
        const Driver user(screen);
        EXPECT_EQ(screen.objectName(), names[type]);
        for (int index = 0; index < static_cast<int>(Fields_of_Linkage().size()); ++index) {
            EXPECT_EQ(user.Visible(Field(index)), Linkout_Shown(design, index)) << type << " " << index;
            EXPECT_EQ(user.Visible("lbl_" + Field(index)), Linkout_Shown(design, index));
            EXPECT_EQ(Field_Text(user, index), Linkout_Text(design, index));
        }
        EXPECT_EQ(user.Visible("fra_Assemflag2"), type % 2 == 1);
        EXPECT_EQ(user.Visible("fra_SteveWatt"), type == 1);
        EXPECT_EQ(user.Find<QGroupBox>("fra_Effector").title(), "Apply SVAJ to:");
        EXPECT_EQ(user.Find<QGroupBox>("fra_Drag").title(), "Shift-Click-drag to move");
        EXPECT_EQ(user.Text("Opt_SVAJ(0)"), "Cam Arm");
        EXPECT_EQ(user.Text("Opt_SVAJ(1)"), "End Effector");
        EXPECT_EQ(user.Visible("opt_Shift_Drag(0)"), type != 2);
        EXPECT_EQ(user.Visible("opt_Shift_Drag(1)"), type == 1);
        EXPECT_EQ(user.Visible("opt_Shift_Drag(2)"), type > 1);
        EXPECT_TRUE(user.Checked(type == 2 ? "opt_Shift_Drag(2)" : "opt_Shift_Drag(0)"));
        EXPECT_TRUE(f_.Linkage_Calc) << "worked out as the screen opens";
        EXPECT_NE(user.Text("lbl_Largest(1)"), "");
        EXPECT_TRUE(user.Enabled("cmd_Plot") && user.Enabled("cmd_MassProp") && user.Enabled("cmd_Step"));
    }
}

TEST_F(Linkage_Screens, captions_and_lists_are_those_of_the_controls)
{
    Build("6-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    for (const auto& [name, caption] :
         std::initializer_list<std::pair<const char*, const char*>>{{"cmd_Calc", "&Calculate"},
                                                                    {"cmd_Plot", "Plot &Funct"},
                                                                    {"cmd_MassProp", "&Mass Prop"},
                                                                    {"cmd_Cancel", "< &Back"},
                                                                    {"cmd_Done", "&Next >"},
                                                                    {"lbl_hsc_speed", "<< Slow    Fast >>"},
                                                                    {"opt_SteveWatt(0)", "Watt"},
                                                                    {"opt_SteveWatt(1)", "Stephenson"},
                                                                    {"opt_Assemflag1(0)", "Open"},
                                                                    {"opt_Assemflag2(1)", "Crossed"}})
        EXPECT_EQ(user.Text(name), caption);
    EXPECT_EQ(user.Tip("txt_Cycles"), "Number of revolutions in animation");
    EXPECT_EQ(user.Tip("cmb_wait"), "Changes the range of speed control slider");
    const auto texts = [&](const char* name) {
        std::string all;
        const auto& list = user.Find<QComboBox>(name);
        for (int k = 0; k < list.count(); ++k)
            all += list.itemText(k).toStdString() + " ";
        return all;
    };
    EXPECT_EQ(texts("cmb_wait"), "1 10 100 1000 10000 100000 ");
    EXPECT_EQ(texts("cmb_Steps"), "1 2 4 8 12 24 36 72 ");
}

TEST_F(Linkage_Screens, looking_at_a_screen_changes_nothing)
{
    for (const char* const example : examples) {
        Build(example);
        const Linkage_Group before = k_;
        {
            frm_Linkage screen;
            const Driver user(screen);
            for (int index = 0; index < static_cast<int>(Fields_of_Linkage().size()); ++index)
                if (user.Visible(Field(index))) {
                    user.Find<QLineEdit>(Field(index)).setFocus();
                    user.Leave(Field(index));
                }
            user.Press("cmd_Step");
        }
        for (int index = 0; index < static_cast<int>(Fields_of_Linkage().size()); ++index) {
            const std::string now = Linkout_Text(design, index);
            const Linkage_Group changed = std::exchange(k_, before);
            EXPECT_EQ(now, Linkout_Text(design, index)) << example << " " << index;
            k_ = changed;
        }
        EXPECT_TRUE(f_.Sized);
    }
}

TEST_F(Linkage_Screens, a_train_without_lengths_says_so_and_is_suggested)
{
    Build("Oscillating");
    frm_Linkage screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Visible("lbl_Missing"));
    EXPECT_FALSE(user.Visible("pct_Cam"));
    EXPECT_EQ(user.Text("lbl_Missing"), What_to_Type(design));
    for (const char* const name : {"cmd_Play", "cmd_Step", "cmd_Redraw", "cmd_Plot", "cmd_MassProp", "hsc_step"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    script_.Expect({"Link 2 has no length above zero.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Enabled("cmd_Suggest"));
    user.Press("cmd_Suggest");
    EXPECT_FALSE(user.Enabled("cmd_Suggest"));
    EXPECT_EQ(Field_Text(user, 2), "100");
    EXPECT_EQ(Field_Text(user, 0), "175");
    EXPECT_TRUE(f_.Linkage_Calc);
    EXPECT_TRUE(user.Visible("pct_Cam"));
    EXPECT_FALSE(user.Visible("lbl_Missing"));
    for (const char* const name : {"cmd_Play", "cmd_Step", "cmd_Redraw", "cmd_Plot", "cmd_MassProp", "hsc_step"})
        EXPECT_TRUE(user.Enabled(name)) << name;
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "Linkage", "mm-kg-N-s"}));
}

TEST_F(Linkage_Screens, an_entry_is_stored_drawn_and_calculated_when_it_is_asked_for)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    const QImage before = Picture(user);
    const std::string largest = user.Text("lbl_Largest(0)");
    user.Fill(Field(3), "200");
    EXPECT_EQ(k_.Link_3, Single(200.0));
    EXPECT_NE(Picture(user), before) << "the picture follows at once";
    EXPECT_FALSE(f_.Linkage_Calc);
    EXPECT_EQ(user.Text("lbl_Largest(0)"), "") << "no figures of the links before";
    EXPECT_FALSE(user.Enabled("cmd_Plot") || user.Enabled("cmd_MassProp"));
    user.Press("cmd_Calc");
    EXPECT_TRUE(f_.Linkage_Calc);
    EXPECT_NE(user.Text("lbl_Largest(0)"), largest);
    EXPECT_EQ(testing::Number_In(user.Text("lbl_Largest(0)")),
              std::round(Summary_of_Effector(design).largest[0].value * 100.0) / 100.0);
    EXPECT_EQ(user.Text("lbl_Unit(0)"), "deg");
    EXPECT_EQ(user.Text("lbl_Unit(2)"), "rad/sec^2");
}

TEST_F(Linkage_Screens, a_refused_length_is_told_and_the_field_shows_what_stays)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill(Field(3), "-7");
    EXPECT_EQ(Field_Text(user, 3), "187.5");
    EXPECT_TRUE(f_.Linkage_Calc);
}

TEST_F(Linkage_Screens, ground_and_pivots_follow_each_other)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    user.Fill(Field(0), "180");
    EXPECT_EQ(Field_Text(user, 8), "280");
    user.Fill(Field(8), "275");
    EXPECT_EQ(Field_Text(user, 0), "175");
    user.Fill(Field(9), "100");
    EXPECT_NEAR(testing::Number_In(Field_Text(user, 1)), std::atan2(37.5, 175.0) * 180.0 / 3.14159265358979, 1E-3);
}

TEST_F(Linkage_Screens, options_put_their_choices_and_draw_them)
{
    Build("6-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    const Watched_Boxes boxes(Answer::Ignore);
    for (const auto& [option, field] : {std::pair{"opt_Assemflag1(1)", &Linkage_Group::Assemflag1},
                                        std::pair{"opt_Assemflag2(1)", &Linkage_Group::Assemflag2}}) {
        const QImage before = Picture(user);
        EXPECT_EQ(k_.*field, -1);
        user.Press(option);
        EXPECT_EQ(k_.*field, 1);
        EXPECT_NE(Picture(user), before) << option;
    }
    user.Press("opt_SteveWatt(1)");
    EXPECT_EQ(k_.Stage_Mode, "S");
    user.Press("Opt_SVAJ(1)");
    EXPECT_TRUE(k_.Drive_End_Effector);
    EXPECT_FALSE(f_.Sized) << "the cam is that of the arm";
    // It is drawn all the same, with the cam of before, and moves.
    EXPECT_TRUE(user.Visible("pct_Cam") && user.Enabled("cmd_Step") && user.Enabled("hsc_step"));
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Text("lbl_Notes").starts_with("The cam in gray is that of the size before"));
    const QImage before = Picture(user);
    user.Find<QScrollBar>("hsc_step").setValue(45);
    EXPECT_NE(Picture(user), before);
    user.Press("Opt_SVAJ(0)");
    EXPECT_FALSE(k_.Drive_End_Effector);
}

TEST_F(Linkage_Screens, links_that_do_not_connect_ask_once_and_the_notes_count_them)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    double length = 60.0;
    for (; length < 190.0; length += 2.0) {
        k_.Link_3 = length;
        if (Calc_Linkage_Quietly(design) && k_.Link_Broken > 0)
            break;
    }
    k_.Link_3 = 187.5;
    user.Fill(Field(3), QString::number(length));
    {
        const Watched_Boxes boxes(Answer::Ignore);
        user.Press("cmd_Calc");
        ASSERT_EQ(boxes.texts.size(), 2U);
        EXPECT_TRUE(boxes.texts[0].starts_with("Linkage cannot connect or is indeterminate at Theta2 =  "));
        EXPECT_TRUE(boxes.texts[1].starts_with("The links do not connect at "));
    }
    EXPECT_TRUE(
        user.Text("lbl_Notes")
            .starts_with("The links do not connect at " + std::to_string(int{k_.Link_Broken}) + " of 361 points"));
    const Watched_Boxes boxes(Answer::Abort);
    user.Press("cmd_Calc");
    EXPECT_FALSE(f_.Linkage_Calc);
    EXPECT_EQ(user.Text("lbl_Notes"), "");
    EXPECT_EQ(Field_Text(user, 3), QString::number(length).toStdString()) << "nothing that was typed is lost";
}

TEST_F(Linkage_Screens, step_goes_through_the_cycle_and_wraps)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    auto& bar = user.Find<QScrollBar>("hsc_step");
    EXPECT_EQ(bar.minimum(), 0);
    EXPECT_EQ(bar.maximum(), 360);
    user.Press("cmd_Step");
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(k_.Link_Anim_Step, 1);
    const QImage first = Picture(user);
    user.Pick("cmb_Steps", "36");
    EXPECT_EQ(bar.singleStep(), 36);
    for (int k = 0; k < 2; ++k)
        user.Press("cmd_Step");
    EXPECT_EQ(bar.value(), 37);
    EXPECT_EQ(k_.Link_Anim_Step, 73);
    EXPECT_EQ(user.Text("lbl_theta"), "37 deg");
    EXPECT_NE(Picture(user), first);
    k_.Link_Anim_Step = 361;
    user.Press("cmd_Step");
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(Picture(user), first);
}

TEST_F(Linkage_Screens, the_bar_shows_the_point_it_is_moved_to)
{
    Build("6-bar Slider");
    frm_Linkage screen;
    const Driver user(screen);
    auto& bar = user.Find<QScrollBar>("hsc_step");
    const QImage first = Picture(user);
    bar.setValue(90);
    EXPECT_EQ(k_.Link_Anim_Step, 90);
    EXPECT_EQ(user.Text("lbl_theta"), "90 deg");
    const QImage quarter = Picture(user);
    EXPECT_NE(quarter, first);
    // Its left end draws nothing of its own, until the bar is let go.
    bar.setValue(0);
    EXPECT_EQ(k_.Link_Anim_Step, 0);
    EXPECT_EQ(user.Text("lbl_theta"), "90 deg");
    EXPECT_EQ(Picture(user), quarter);
    QTest::mouseRelease(&bar, Qt::LeftButton);
    EXPECT_EQ(user.Text("lbl_theta"), "0 deg");
    EXPECT_EQ(Picture(user), first);
}

TEST_F(Linkage_Screens, an_arrow_of_the_bar_runs_while_it_is_held)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    user.Find<QSlider>("hsc_speed").setValue(Fastest_Speed);
    auto& bar = user.Find<QScrollBar>("hsc_step");
    const QPoint arrow(bar.width() - 5, bar.height() / 2);
    QTest::mousePress(&bar, Qt::LeftButton, {}, arrow);
    QTest::qWait(500);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, arrow);
    EXPECT_GT(bar.value(), 5) << "a step in 10 ms after the first quarter of a second";
    const int at = bar.value();
    QTest::qWait(100);
    EXPECT_EQ(bar.value(), at);
}

TEST_F(Linkage_Screens, play_runs_its_turns_and_stop_ends_it)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    user.Find<QSlider>("hsc_speed").setValue(Fastest_Speed);
    user.Pick("cmb_Steps", "72");
    user.Fill("txt_Cycles", "2");
    const auto steps = screens::Desk_History().Steps();
    user.Press("cmd_Play");
    EXPECT_TRUE(screen.Is_Playing());
    EXPECT_EQ(user.Text("cmd_Play"), "Stop (&y)");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !screen.Is_Playing(); }, 5000));
    EXPECT_EQ(user.Text("cmd_Play"), "Pla&y");
    EXPECT_EQ(user.Find<QScrollBar>("hsc_step").value(), 360);
    EXPECT_EQ(screens::Desk_History().Steps(), steps) << "nothing to be taken back";
    user.Pick("cmb_wait", "100000");
    user.Find<QSlider>("hsc_speed").setValue(0);
    EXPECT_EQ(screen.Delay(), 1000);
    user.Press("cmd_Play");
    EXPECT_TRUE(screen.Is_Playing());
    user.Press("cmd_Play");
    EXPECT_FALSE(screen.Is_Playing());
}

TEST_F(Linkage_Screens, speed_and_its_range_set_the_pace)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    auto& speed = user.Find<QSlider>("hsc_speed");
    int before = 0;
    for (const char* const range : {"1", "10", "100", "1000", "10000", "100000"}) {
        user.Pick("cmb_wait", range);
        speed.setValue(0);
        const int slow = screen.Delay();
        EXPECT_GT(slow, before) << range;
        before = slow;
        speed.setValue(Fastest_Speed);
        EXPECT_EQ(screen.Delay(), 10) << range;
    }
}

TEST_F(Linkage_Screens, steps_and_turns_that_may_not_be_are_told)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    auto& list = user.Find<QComboBox>("cmb_Steps");
    script_.Expect({"Please select one of the drop-down menu items for Steps", Buttons::OK, Symbol::exclamation});
    list.lineEdit()->setFocus();
    list.lineEdit()->selectAll();
    QTest::keyClicks(list.lineEdit(), "7");
    QTest::keyClick(list.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(list.currentText(), "1");
    list.lineEdit()->selectAll();
    QTest::keyClicks(list.lineEdit(), "24");
    QTest::keyClick(list.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(list.currentText(), "24");
    EXPECT_EQ(user.Find<QScrollBar>("hsc_step").singleStep(), 24);
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Cycles", "0");
    EXPECT_EQ(user.Text("txt_Cycles"), "1");
}

TEST_F(Linkage_Screens, run_copy_and_print_say_what_to_do)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    script_.Expect({Run_Advice()});
    user.Press("cmd_Run");
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
}

/// Where a point of the machine stands on the drawing: the middle of the world window is that of the widget.
QPoint On_Widget(const QWidget& view, const World_Window& window, const World_Point& at)
{
    const double size = window.right - window.left;
    const double scale = std::min(view.width(), view.height()) / size;
    const double x = at.x - (window.left + window.right) / 2.0;
    const double y = design.cam.Flip_Y - at.y - (window.top + window.bottom) / 2.0;
    return QPointF(view.width() / 2.0 + x * scale, view.height() / 2.0 + y * scale).toPoint();
}

void Drag(QWidget& view, const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys)
{
    QTest::mousePress(&view, Qt::LeftButton, keys, from);
    for (int k = 1; k <= 4; ++k) {
        const QPoint at = from + (to - from) * k / 4;
        QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, keys);
        QApplication::sendEvent(&view, &move);
    }
    QTest::mouseRelease(&view, Qt::LeftButton, keys, to);
    QApplication::processEvents();
}

TEST_F(Linkage_Screens, a_drag_with_shift_moves_the_point_picked_and_calculates)
{
    for (int type = 0; type < 4; ++type) {
        Build(examples[type]);
        frm_Linkage screen;
        const Driver user(screen);
        for (std::size_t k = 0; k < Draggable_Points(design).size(); ++k) {
            const Draggable point = Draggable_Points(design)[k];
            user.Press(Element("opt_Shift_Drag", static_cast<int>(point.point)));
            const auto window = Window_of_Linkage(design);
            ASSERT_TRUE(window.has_value());
            auto& view = user.Find<QWidget>("pct_Cam");
            // A pixel is worth more than a millimetre here, so the fields get whole ones.
            const double per_pixel = (window->right - window->left) / std::min(view.width(), view.height());
            const QPoint from = On_Widget(view, *window, point.at);
            const QImage before = Picture(user);
            const auto steps = screens::Desk_History().Steps();
            Drag(view, from, from + QPoint(4, -3), Qt::ShiftModifier);
            const std::vector<Draggable> now = Draggable_Points(design);
            const auto moved = std::ranges::find(now, point.point, &Draggable::point);
            ASSERT_NE(moved, now.end());
            const bool along_axis = type == 3 && point.point == Drag_Point::slider;  // which is level
            EXPECT_NEAR(moved->at.x - point.at.x, along_axis ? 0.0 : 4.0 * per_pixel, 0.51) << point.name;
            EXPECT_NEAR(moved->at.y - point.at.y, 3.0 * per_pixel, 0.51) << point.name;
            EXPECT_TRUE(f_.Linkage_Calc);
            EXPECT_NE(Picture(user), before);
            EXPECT_EQ(screens::Desk_History().Steps(), steps + 1) << "one step to be taken back";
            EXPECT_EQ(screens::Desk_History().Undo_Text(), std::string("Undo ") + point.name);
            for (int index = 0; index < static_cast<int>(Fields_of_Linkage().size()); ++index)
                EXPECT_EQ(Field_Text(user, index), Linkout_Text(design, index));
        }
    }
}

TEST_F(Linkage_Screens, a_drag_without_shift_moves_the_view_alone)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    const Linkage_Group before = k_;
    const QImage picture = Picture(user);
    Drag(user.Find<QWidget>("pct_Cam"), {200, 200}, {240, 220}, Qt::NoModifier);
    EXPECT_EQ(k_.O4x, before.O4x);
    EXPECT_EQ(k_.O4y, before.O4y);
    EXPECT_TRUE(f_.Linkage_Calc);
    EXPECT_NE(Picture(user), picture);
}

TEST_F(Linkage_Screens, where_the_links_do_not_reach_a_drag_asks_when_it_ends)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    auto& view = user.Find<QWidget>("pct_Cam");
    const QPoint from(300, 200);
    const Watched_Boxes boxes(Answer::Ignore);
    QTest::mousePress(&view, Qt::LeftButton, Qt::ShiftModifier, from);
    for (const int right : {100, 200, 300}) {
        const QPoint at = from + QPoint(right, 0);
        QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&view, &move);
    }
    EXPECT_GT(k_.O4x, 400.0);
    EXPECT_TRUE(boxes.texts.empty()) << "not under the hand";
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::ShiftModifier, from + QPoint(300, 0));
    ASSERT_EQ(boxes.texts.size(), 2U);
    EXPECT_TRUE(boxes.texts[1].starts_with("The links connect at no point of the cycle."));
    EXPECT_FALSE(f_.Linkage_Calc);
}

TEST_F(Linkage_Screens, undo_takes_an_entry_back)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    user.Fill(Field(3), "200");
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo Link 3");
    screen.findChild<QAction*>("mnu_Undo")->trigger();
    EXPECT_EQ(k_.Link_3, Single(187.5));
    EXPECT_EQ(Field_Text(user, 3), "187.5");
    EXPECT_TRUE(f_.Linkage_Calc);
    EXPECT_NE(user.Text("lbl_Largest(0)"), "");
}

// ---- masses

TEST_F(Linkage_Screens, masses_have_a_line_a_moving_link)
{
    for (int type = 0; type < 4; ++type) {
        Build(examples[type]);
        ASSERT_TRUE(Run_Linkage(design));
        frm_MassProp screen;
        const Driver user(screen);
        const bool six = type % 2 == 1;
        EXPECT_EQ(screen.objectName(), six ? "frm_MassProp6" : "frm_MassProp4");
        EXPECT_EQ(user.Text("lbl_txt_Inertia"), six ? "Mass Mom of Inertia vs CG" : "Mass Moment of Inertia about CG");
        EXPECT_EQ(user.Text("unit_txt_Inertia"), "kg-m^2");
        EXPECT_EQ(user.Text("unit_txt_DistCG"), "mm");
        EXPECT_EQ(user.Text("unit_txt_Spring"), "N/m");
        const int last = six ? 6 : 4;
        for (int link = 2; link <= last; ++link) {
            EXPECT_EQ(user.Text(Element("lbl_Segment", link)),
                      "Link " + std::to_string(link) + (type > 1 && link == last ? " (slider)" : ""));
            const bool turns = type < 2 || link != last;
            EXPECT_TRUE(user.Enabled(Element("txt_Mass", link)) && user.Enabled(Element("txt_Spring", link)));
            for (const char* const name : {"txt_Inertia", "txt_DistCG", "txt_AngCG"})
                EXPECT_EQ(user.Enabled(Element(name, link)), turns) << name;
        }
        EXPECT_EQ(screen.findChild<QWidget*>(Element("txt_Mass", last + 1)), nullptr);
    }
}

TEST_F(Linkage_Screens, masses_are_typed_and_calculated_and_a_change_takes_the_results_away)
{
    Build("4-bar Linkage");
    ASSERT_TRUE(Run_Linkage(design));
    design.dynamics.Model_Type = 5;
    frm_MassProp screen;
    const Driver user(screen);
    for (int link = 2; link <= 4; ++link) {
        user.Fill(Element("txt_Mass", link), "0.5");
        user.Fill(Element("txt_Inertia", link), "0.002");
        user.Fill(Element("txt_DistCG", link), "60");
        user.Fill(Element("txt_AngCG", link), "30");
    }
    EXPECT_EQ(user.Text("txt_AngCG(3)"), "30.00");
    EXPECT_NEAR(k_.CGy_of_link(3), 3.14159265358979 / 6.0, 1E-6);
    script_.Expect(
        {"At least one of your stiffnesses is zero.\nNone may be.  Please redo.", Buttons::OK, Symbol::none});
    user.Press("cmd_Calc");
    EXPECT_NE(user.Text("lbl_Mass1"), "");
    EXPECT_EQ(user.Text("lbl_Effspring"), "");
    for (int link = 2; link <= 4; ++link)
        user.Fill(Element("txt_Spring", link), "1E6");
    EXPECT_EQ(user.Text("lbl_Mass1"), "");
    EXPECT_EQ(user.Text("lbl_Notes"), "");
    user.Press("cmd_Calc");
    EXPECT_NEAR(testing::Number_In(user.Text("lbl_Mass1")), design.dynamics.Mass_m(1), 1E-5);
    EXPECT_NEAR(testing::Number_In(user.Text("lbl_Effspring")), design.dynamics.Kspring(1), 1.0);
    EXPECT_NE(user.Text("lbl_Notes").find("By its kinetic energy the train weighs from "), std::string::npos);
    const std::string peak = user.Text("lbl_Mass2");
    user.Press("opt_Max_Avg(1)");
    EXPECT_EQ(user.Text("lbl_Mass2"), "");
    user.Press("cmd_Calc");
    EXPECT_NE(user.Text("lbl_Mass2"), peak);
    script_.Expect({"'-1' is below 0", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Mass(2)", "-1");
    EXPECT_EQ(user.Text("txt_Mass(2)"), "0.5");
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Linkage_Screens, masses_left_by_back_are_as_they_were)
{
    Build("4-bar Linkage");
    frm_Linkage screen;
    const Driver user(screen);
    for (const bool accept : {false, true}) {
        const Modals modals([&](QDialog& open) {
            EXPECT_EQ(open.objectName(), "frm_MassProp4");
            const Driver masses(open);
            masses.Fill("txt_Mass(3)", "0.75");
            masses.Press(accept ? "cmd_Done" : "cmd_Cancel");
        });
        user.Press("cmd_MassProp");
        EXPECT_EQ(k_.Mass_of_link(3), Single(accept ? 0.75 : 0.0));
    }
}

// ---- plots

TEST_F(Linkage_Screens, up_to_four_functions_are_plotted_over_the_cam_angle)
{
    Build("6-bar Slider");
    frm_Linkage screen;
    const Driver user(screen);
    bool played = false;
    const Modals modals([&](QDialog& open) {
        played = true;
        EXPECT_EQ(open.objectName(), "frm_Linkplots");
        const Driver plots(open);
        EXPECT_EQ(plots.Text("cmb_Function(0)"), "Dsplcmt of Link 6");
        EXPECT_EQ(plots.Text("cmb_Function(3)"), "Dsplcmt Out / Dsplcmt In");
        for (int k = 0; k < 4; ++k) {
            const auto& chart = plots.Find<paint::Chart>(Element("pct_Plot", k));
            ASSERT_EQ(chart.Curves().size(), 1U);
            EXPECT_EQ(chart.Curves()[0].x.size(), 361U);
            EXPECT_EQ(chart.Title().toStdString(), plots.Text(Element("cmb_Function", k)));
        }
        plots.Pick("cmb_Function(1)", "Omega of Link 4");
        const auto& chart = plots.Find<paint::Chart>("pct_Plot(1)");
        EXPECT_EQ(chart.Title(), "Omega of Link 4");
        EXPECT_NEAR(chart.Curves()[0].y[45], design.results.Link_Omega(4, 45), 1E-6);
        const double largest = *std::ranges::max_element(chart.Curves()[0].y);
        EXPECT_NEAR(testing::Number_In(plots.Text("lbl_Max(1)")), largest, 1E-3);
        plots.Pick("cmb_Function(1)", "None");
        EXPECT_TRUE(chart.Curves().empty());
        EXPECT_EQ(plots.Text("lbl_Max(1)"), "");
        plots.Press("cmd_Cancel");
    });
    user.Press("cmd_Plot");
    EXPECT_TRUE(played);
}

// ---- the way through the screens

TEST_F(Linkage_Screens, home_leads_to_the_choice_then_to_the_train_and_next_keeps_it)
{
    Build("4-bar Linkage");
    frm_HomeScreen home("");
    const Driver user(home);
    std::vector<std::string> opened;
    const Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        const Driver screen(open);
        if (opened.back() == "frm_LinkageType") {
            EXPECT_TRUE(screen.Checked("opt_Select(0)"));
            screen.Press("cmd_Done");
        } else if (opened.size() == 2) {
            screen.Fill(Field(3), "195");
            screen.Press("cmd_Cancel");  // back to the choice
        } else {
            EXPECT_EQ(screen.Text(Field(3)), "195") << "what was typed waits there";
            screen.Press("cmd_Calc");
            screen.Press("cmd_Done");
        }
    });
    user.Press("cmd_Linkage");
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_LinkageType", "frm_Linkage", "frm_LinkageType", "frm_Linkage"}));
    EXPECT_EQ(k_.Link_3, Single(195.0));
    EXPECT_TRUE(f_.Linkage_Calc && f_.Sized);
    while (screens::Desk_History().Undo()) {
    }
    EXPECT_EQ(k_.Link_3, Single(187.5));
}

TEST_F(Linkage_Screens, leaving_by_back_gives_everything_back)
{
    Build("4-bar Linkage");
    frm_HomeScreen home("");
    const Driver user(home);
    int opened = 0;
    const Modals modals([&](QDialog& open) {
        ++opened;
        const Driver screen(open);
        if (opened == 1) {
            screen.Press("opt_Select(1)");
            screen.Press("cmd_Done");
        } else if (opened == 2) {
            screen.Fill(Field(2), "90");
            screen.Press("Opt_SVAJ(1)");
            screen.Press("cmd_Cancel");
        } else {
            screen.Press("cmd_Cancel");
        }
    });
    user.Press("cmd_Linkage");
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(k_.Linkage_Type, 0);
    EXPECT_EQ(k_.Link_2, Single(100.0));
    EXPECT_FALSE(k_.Drive_End_Effector);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(screens::Desk_History().May_Undo());
}

TEST_F(Linkage_Screens, a_changed_driven_end_leads_to_the_sizing_screen)
{
    Build("4-bar Linkage");
    frm_HomeScreen home("");
    const Driver user(home);
    for (const bool sized : {false, true}) {
        const bool end = !k_.Drive_End_Effector;
        std::vector<std::string> opened;
        const Modals modals([&](QDialog& open) {
            opened.push_back(open.objectName().toStdString());
            const Driver screen(open);
            if (opened.size() == 2)
                screen.Press(end ? "Opt_SVAJ(1)" : "Opt_SVAJ(0)");
            if (opened.size() == 3 && !sized) {
                screen.Press("cmd_Cancel");
                return;
            }
            if (opened.size() == 3)
                screen.Press("cmd_Calc");
            screen.Press("cmd_Done");
        });
        const Watched_Boxes boxes(Answer::OK);
        if (!user.Enabled("cmd_Linkage")) {  // sized again on its own screen, the choice as it is
            ASSERT_TRUE(Run_Size(design));
            home.Refresh();
        }
        user.Press("cmd_Linkage");
        EXPECT_EQ(opened, (std::vector<std::string>{"frm_LinkageType", "frm_Linkage", "frm_SizeCam"}));
        ASSERT_FALSE(boxes.texts.empty());
        EXPECT_TRUE(
            boxes.texts[0].starts_with(end ? "You have chosen to apply the SVAJ functions to the end effector \n"
                                           : "You have changed the point of application of the SVAJ functions.\n"));
        EXPECT_EQ(static_cast<bool>(k_.Drive_End_Effector), end) << "the choice stays whatever the sizing screen does";
        EXPECT_EQ(static_cast<bool>(f_.Sized), sized);
    }
}

TEST_F(Linkage_Screens, the_close_box_keeps_a_calculated_train)
{
    Build("4-bar Linkage");
    {
        frm_Linkage screen;
        const Driver user(screen);
        user.Type(Field(3), "195");  // not left yet
        QTest::keyClick(screen.focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(k_.Link_3, Single(195.0)) << "an entry that was not left counts";
        EXPECT_EQ(screen.result(), QDialog::Rejected) << "not calculated";
    }
    ASSERT_TRUE(Run_Linkage(design));
    frm_Linkage screen;
    const Driver user(screen);
    screen.close();
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace lobemax
