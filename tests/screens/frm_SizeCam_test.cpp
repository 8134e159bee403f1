// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_SizeCam.h"

#include <qcustomplot.h>

#include <QAction>
#include <QGroupBox>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "core/text.h"
#include "edit/rungs.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "tests/support/desktop_design.h"
#include "tests/support/number_in.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_SizeCam;
using testing::Driver;
using testing::Expected_Box;

class Size_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    Cam_Group& c_ = design.cam;
    Flags_Group& f_ = design.flags;
};

TEST_F(Size_Screen, opens_calculated_for_a_sized_cam_with_its_values)
{
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Prime"), "101.6");
    EXPECT_EQ(user.Text("txt_follower"), "18.75");
    EXPECT_TRUE(user.Checked(Element("opt_CamType", 0)));
    EXPECT_TRUE(user.Checked(Element("opt_Rotate", 1)));
    EXPECT_FALSE(user.Enabled("cmd_Calc"));
    EXPECT_TRUE(user.Enabled("cmd_Done") && user.Enabled("cmd_ShowCam") && user.Enabled("cmd_ShowData"));
    EXPECT_EQ(user.Text("lbl_Pamax"), Trim(FNRoundStr(design, c_.Phi_Max, 2)));
    EXPECT_EQ(user.Text("lbl_Rhomin"), Trim(c_.Rho_Min_Pos_Text));
    EXPECT_EQ(user.Text("lbl_Rhomax"), "None");
    EXPECT_TRUE(user.Visible("pct_Cam") && user.Visible("pct_Pang") && user.Visible("pct_Radcurv"));
}

TEST_F(Size_Screen, controls_carry_their_tips_and_captions)
{
    frm_SizeCam screen;
    const Driver user(screen);
    const std::pair<QString, const char*> tips[] = {
        {"txt_Prime", "Smallest radius to roller center"},
        {"txt_follower", "Roller radius (not diameter)"},
        {"txt_Offset", "Eccentricity of follower axis from cam center"},
        {"txt_folwrangle", "Angle of translating follower motion versus x axis"},
        {"txt_ArmRadius", "Radius from arm pivot to roller center"},
        {"chk_Autocalc", "Will calculate when any change is made"},
        {Element("opt_CamType", 0), "Follower moves radially"},
        {Element("opt_CamType", 1), "Follower moves axially"},
        {Element("opt_CamType", 2), "Cam moves past follower"},
        {Element("opt_topbot", 0), "Must calculate and export each track surface of cam separately"},
        {Element("opt_topbot", 1), "Must calculate and export each track surface of cam separately"}};
    for (const auto& [name, tip] : tips)
        EXPECT_EQ(user.Tip(name), tip) << name.toStdString();
    const std::pair<QString, const char*> captions[] = {{Element("opt_CamType", 0), "Radial"},
                                                        {Element("opt_CamType", 1), "Axial-Groove"},
                                                        {Element("opt_CamType", 2), "Linear"},
                                                        {Element("opt_CamType", 3), "Axial-Ribbed"},
                                                        {Element("opt_Folmotion", 0), "Translating"},
                                                        {Element("opt_Folmotion", 1), "Oscillating"},
                                                        {Element("opt_Foltype", 0), "Roller"},
                                                        {Element("opt_Foltype", 1), "Flat"},
                                                        {Element("opt_Rotate", 0), "Ccw"},
                                                        {Element("opt_Rotate", 1), "Cw"},
                                                        {Element("opt_ArmRotate", 0), "Ccw"},
                                                        {Element("opt_ArmRotate", 1), "Cw"},
                                                        {Element("opt_topbot", 0), "Inner"},
                                                        {Element("opt_topbot", 1), "Outer"},
                                                        {"cmd_Done", "&Next >"},
                                                        {"cmd_Cancel", "< &Back"}};
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(user.Text(name), caption) << name.toStdString();
    EXPECT_EQ(user.Find<QGroupBox>("fra_Prime").title(), "Prime Radius");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Rotate").title(), "Cam Rotation");
}

/// The lines of a chart at the limits that are on.
std::vector<double> Levels_of_Chart(const paint::Chart& chart)
{
    std::vector<double> values;
    for (const paint::Level& level : chart.Levels())
        values.push_back(level.value);
    return values;
}

TEST_F(Size_Screen, its_mark_follows_each_calculation_and_is_gray_before_it)
{
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Text("cmd_Mark").starts_with("\u2714 No findings")) << user.Text("cmd_Mark");
    EXPECT_TRUE(user.Enabled("cmd_Mark"));
    user.Fill("txt_follower", "70");
    user.Fill("txt_Prime", "75");
    EXPECT_FALSE(user.Enabled("cmd_Mark"));
    EXPECT_TRUE(user.Text("cmd_Mark").starts_with("\u2714 No findings"));
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Enabled("cmd_Mark"));
    EXPECT_TRUE(user.Text("cmd_Mark").starts_with("\u2716 Do not cut: ")) << user.Text("cmd_Mark");
    EXPECT_NE(user.Tip("cmd_Mark").find(screens::Desk_Check().findings.front().advice), std::string::npos);
    user.Press("chk_Autocalc");
    user.Fill("txt_follower", "20");
    EXPECT_TRUE(user.Enabled("cmd_Mark"));
    EXPECT_TRUE(user.Text("cmd_Mark").starts_with("\u2714 No findings")) << user.Text("cmd_Mark");
}

TEST_F(Size_Screen, a_cam_that_was_never_sized_is_not_checked)
{
    f_.Sized = false;
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Enabled("cmd_Mark"));
    EXPECT_EQ(user.Text("cmd_Mark"), "Not checked before the calculation");
}

TEST_F(Size_Screen, its_charts_have_the_limits_and_on_request_the_true_curves)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press("chk_Autocalc");
    user.Fill("txt_Prime", "60");
    user.Fill("txt_Offset", "20");
    const auto& phi = user.Find<paint::Chart>("pct_Pang");
    const auto& rho = user.Find<paint::Chart>("pct_Radcurv");
    EXPECT_EQ(Levels_of_Chart(phi), (std::vector<double>{30, -30}));
    EXPECT_EQ(Levels_of_Chart(rho), (std::vector<double>{1.5 * 18.75}));
    const auto beside = [](const paint::Chart& chart) {
        return std::ranges::count_if(chart.Curves(), &paint::Curve::beside);
    };
    EXPECT_EQ(beside(phi) + beside(rho), 0);
    const std::size_t before = rho.Curves().size();
    user.Press("chk_True");
    EXPECT_EQ(beside(phi), 1);
    EXPECT_EQ(beside(rho), 1);
    EXPECT_EQ(rho.Curves().size(), before + 1);
    EXPECT_EQ(rho.Curves()[0].name, "Rho");
    EXPECT_EQ(rho.Curves()[1].name, "Rho, true");
    EXPECT_EQ(rho.Curves()[1].pattern, Qt::DashLine);
    EXPECT_FALSE(phi.Curves()[1].faint);
    // Half way up a rise with an offset the row leaves the offset out of its root.
    EXPECT_GT(std::abs(rho.Curves()[1].y[65] - rho.Curves()[0].y[65]), 0.5);
    EXPECT_NEAR(phi.Curves()[1].y[65], phi.Curves()[0].y[65], 1e-3);
    user.Fill("txt_Prime", "61");  // a calculation brings its own, and leaves one faint curve, the row's
    EXPECT_EQ(beside(rho), 1);
    EXPECT_EQ(std::ranges::count_if(rho.Curves(), &paint::Curve::faint), 1);
    EXPECT_EQ(rho.Curves().size(), 3U);
    user.Press("chk_True");
    EXPECT_EQ(beside(phi) + beside(rho), 0);
}

// A face on an arm whose sense is opposed to the cam's: the rows have another cam than the true one.
TEST_F(Size_Screen, with_the_true_curves_the_outline_is_the_true_one)
{
    Build("Oscillating");
    design.cam.Followtype = 2;
    for (const int rot : {1, -1}) {
        design.cam.Rotflag = rot;
        ASSERT_TRUE(Run_Size(design));
        frm_SizeCam screen;
        screen.resize(1200, 760);
        screen.show();
        const Driver user(screen);
        const auto picture = [&] { return user.Find<QWidget>("pct_Cam").grab().toImage(); };
        const QImage rows = picture();
        user.Press("chk_True");
        const QImage truth = picture();
        EXPECT_EQ(rows == truth, rot == design.cam.ArmDirect) << rot;
        user.Press("chk_True");
        EXPECT_EQ(picture(), rows);
    }
}

TEST_F(Size_Screen, limits_changed_on_its_panel_are_those_of_its_charts)
{
    frm_SizeCam screen;
    const Driver user(screen);
    const testing::Modals modals([&](QDialog& open) {
        const Driver form(open);
        if (open.objectName() == "frm_Limits") {
            form.Fill("txt_Phi", "20");
            form.Press("cmd_OK");
        } else {
            form.Press("cmd_Limits");
            form.Press("cmd_Close");
        }
    });
    user.Press("cmd_Mark");
    EXPECT_EQ(Levels_of_Chart(user.Find<paint::Chart>("pct_Pang")), (std::vector<double>{20, -20}));
    EXPECT_TRUE(screen.isVisible());
}

TEST_F(Size_Screen, without_autocalc_a_change_waits_for_the_button)
{
    frm_SizeCam screen;
    const Driver user(screen);
    const double before = c_.Phi_Max;
    user.Fill("txt_Prime", "60");
    EXPECT_TRUE(user.Enabled("cmd_Calc"));
    for (const char* name : {"cmd_Done", "cmd_Copy", "cmd_PrintForm", "cmd_ShowCam", "cmd_ShowData"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_EQ(c_.Phi_Max, before);
    user.Press("cmd_Calc");
    EXPECT_GT(c_.Phi_Max, before);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
    EXPECT_FALSE(user.Enabled("cmd_Calc"));
    EXPECT_EQ(user.Text("lbl_Pamax"), Trim(FNRoundStr(design, c_.Phi_Max, 2)));
}

TEST_F(Size_Screen, with_autocalc_cam_and_curves_follow_and_the_last_curve_stays_faint)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press("chk_Autocalc");
    const double before = c_.Phi_Max;
    user.Fill("txt_Prime", "70");
    EXPECT_GT(c_.Phi_Max, before);
    const auto& phi = user.Find<paint::Chart>("pct_Pang");
    ASSERT_EQ(phi.Curves().size(), 2U);
    EXPECT_TRUE(phi.Curves()[1].faint);
    EXPECT_NEAR(*std::ranges::max_element(phi.Curves()[1].y), before, 1e-6);
    // The arrow key steps the value and calculates.
    const double smaller = c_.Phi_Max;
    QTest::keyClick(&user.Find<QLineEdit>("txt_Prime"), Qt::Key_Down);
    EXPECT_EQ(c_.Prime_Rad, 69.0);
    EXPECT_GT(c_.Phi_Max, smaller);
}

TEST_F(Size_Screen, refused_entries_show_their_message_and_text)
{
    frm_SizeCam screen;
    const Driver user(screen);
    script_.Expect(
        {"Prime radius cannot be zero or negative or less than the offset", Buttons::OK, Symbol::exclamation});
    c_.Offset = 5.0;
    user.Fill("txt_Prime", "0");
    EXPECT_EQ(c_.Prime_Rad, Single(101.6));
    EXPECT_EQ(user.Text("txt_Prime"), "1");
    EXPECT_TRUE(user.Enabled("cmd_Calc"));  // the box does not show what is stored
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_follower", "-2");
    EXPECT_EQ(user.Text("txt_follower"), "");
    EXPECT_EQ(c_.Follow_Rad, 18.75);
    script_.Expect(
        {"Something is wrong\n"
         "\n"
         "The follower radius is greater than the prime circle radius\n"
         "\n"
         "Please check your data.",
         Buttons::OK, Symbol::exclamation});
    user.Fill("txt_follower", "200");
    EXPECT_EQ(user.Text("txt_follower"), "");
    EXPECT_EQ(c_.Follow_Rad, 18.75);
    const Single cutter = c_.Cutter_Radius;
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Cutter", "-1");
    EXPECT_EQ(user.Text("txt_Cutter"), "");
    EXPECT_TRUE(user.Find<QLineEdit>("txt_Cutter").hasFocus());
    EXPECT_EQ(c_.Cutter_Radius, cutter);
    script_.Expect({"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
                    Buttons::OK, Symbol::none, Answer::OK, "LOBEMAX"});
    user.Fill("txt_Offset", "500");
    EXPECT_EQ(user.Text("txt_Offset"), "0");
    EXPECT_EQ(c_.Offset, 5.0);
}

TEST_F(Size_Screen, a_refused_entry_calculates_nothing_and_an_emptied_box_stands_for_the_value_that_stayed)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press("chk_Autocalc");
    const double before = c_.Phi_Max;
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_follower", "-2");
    EXPECT_EQ(c_.Follow_Rad, 18.75);
    EXPECT_TRUE(user.Enabled("cmd_Calc"));
    user.Press("cmd_Calc");
    EXPECT_EQ(c_.Follow_Rad, 18.75);
    EXPECT_EQ(user.Text("txt_follower"), "18.75");
    EXPECT_EQ(c_.Phi_Max, before);
}

TEST_F(Size_Screen, a_number_too_large_is_told_and_the_field_shows_what_is_stored)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press("chk_Autocalc");
    for (const char* name : {"txt_Prime", "txt_follower", "txt_Cutter", "txt_Offset", "txt_folwrangle"}) {
        const std::string before = user.Text(name);
        script_.Expect(testing::Error_Box(6, "Overflow", std::string("frm_SizeCam.") + name));
        user.Fill(name, "1e39");
        EXPECT_EQ(user.Text(name), before) << name;
    }
    script_.Expect({"'400000' is too large for 'Shift_Angle'", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_ShiftAng", "400000");  // more points than a count holds
    EXPECT_EQ(user.Text("txt_ShiftAng"), "0");
    EXPECT_TRUE(f_.Sized);
}

TEST_F(Size_Screen, a_pivot_off_the_cam_proposes_another_arm_and_waits_with_autocalc_too)
{
    Build("Oscillating");
    frm_SizeCam screen;
    const Driver user(screen);
    const std::string D = "503.89";  // hypot(500, 62.5)
    const Expected_Box misses{
        "The roller follower arm misses the cam entirely\n"
        "with your current choice of arm center location. \n"
        "\n"
        "Please adjust the arm radius to be about\n" +
            D + " mm for this arm center location.",
        Buttons::OK, Symbol::exclamation};
    user.Press("chk_Autocalc");
    script_.Expect(misses);
    user.Fill("txt_CLx", "500");
    EXPECT_EQ(c_.ArmX, 500.0);
    EXPECT_EQ(user.Text("txt_ArmRadius"), D);
    EXPECT_EQ(c_.ArmRad, 100.0);
    EXPECT_EQ(user.Text("lbl_CL"), D);
    EXPECT_TRUE(user.Enabled("cmd_Calc"));
    user.Press("cmd_Calc");
    EXPECT_EQ(c_.ArmRad, Single(Val(design, D)));
    EXPECT_TRUE(f_.Sized);
}

TEST_F(Size_Screen, sizes_that_go_with_no_cam_leave_it_unsized_and_its_curves_faint)
{
    Build("Oscillating");
    frm_SizeCam screen;
    const Driver user(screen);
    script_.Expect(
        {"The roller follower arm misses the cam entirely\n"
         "with your current choice of arm center location. \n"
         "\n"
         "Please adjust the arm radius to be about\n" +
             std::string("0.00") + " mm for this arm center location.",
         Buttons::OK, Symbol::exclamation});
    user.Fill("txt_CLx", "0");
    user.Fill("txt_CLy", "0");  // the pivot stands at the cam's centre
    script_.Expect({"Incompatible dimensions - check your data", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Calc");
    EXPECT_FALSE(f_.Sized);
    EXPECT_FALSE(f_.Calc_Error);
    EXPECT_TRUE(user.Enabled("cmd_Calc"));
    for (const char* name : {"cmd_Done", "cmd_ShowCam"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_EQ(user.Text("lbl_Pamax"), "");
    const auto& curves = user.Find<paint::Chart>("pct_Pang").Curves();
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_TRUE(curves.front().faint);
}

TEST_F(Size_Screen, a_base_circle_of_nothing_is_told_once_and_not_at_every_repaint)
{
    frm_SizeCam screen;
    const Driver user(screen);
    script_.Expect(
        {"Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
         Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Prime", "15");  // below the roller's radius
    for (int k = 0; k < 3; ++k)
        user.Find<QWidget>("pct_Cam").repaint();
}

TEST_F(Size_Screen, closing_the_window_takes_the_entry_that_is_being_typed)
{
    frm_SizeCam calculated;
    const Driver user(calculated);
    user.Type("txt_Prime", "120");
    QTest::keyClick(&calculated, Qt::Key_Escape);
    EXPECT_EQ(c_.Prime_Rad, 120.0);
    EXPECT_EQ(calculated.result(), QDialog::Rejected);  // its calculation was pending
    EXPECT_FALSE(calculated.isVisible());
    frm_SizeCam again;
    const Driver other(again);
    other.Press("cmd_Calc");
    again.close();
    EXPECT_EQ(again.result(), QDialog::Accepted);
}

TEST_F(Size_Screen, the_start_angle_explains_itself_while_its_field_has_the_focus)
{
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_Explanation"), "");
    user.Type("txt_ShiftAng", "30");
    EXPECT_EQ(user.Text("lbl_Explanation"), Start_Angle_Help());
    user.Leave("txt_ShiftAng");
    EXPECT_EQ(user.Text("lbl_Explanation"), "");
    EXPECT_EQ(c_.Shift_Angle, 30.0);
    EXPECT_EQ(c_.Shift_Points, 30);
}

TEST_F(Size_Screen, keyway_track_arm_and_rotation_are_stored_and_count_as_changes)
{
    Build("Oscillating");
    frm_SizeCam screen;
    const Driver user(screen);
    const auto edited = [] {
        const bool was = !design.flags.Model_Saved;
        design.flags.Model_Saved = true;
        return was;
    };
    edited();
    user.Pick("cmb_keyway", "3 O'clock");
    EXPECT_EQ(c_.Keyway_Text, "3 O'clock");
    EXPECT_TRUE(edited());
    user.Press(Element("opt_ArmRotate", c_.ArmDirect > 0 ? 1 : 0));
    EXPECT_TRUE(edited());
    user.Press(Element("opt_CamType", 1));
    edited();
    const int before = c_.Top_Bot;
    user.Press(Element("opt_topbot", before == c_.Rotflag ? 1 : 0));
    EXPECT_EQ(c_.Top_Bot, -before);
    EXPECT_TRUE(edited());
    // The rotation alone gives the track the sign opposite to the calculation's. Meant.
    const bool inner = user.Checked(Element("opt_topbot", 0));
    user.Press(Element("opt_Rotate", c_.Rotflag > 0 ? 1 : 0));
    EXPECT_EQ(c_.Top_Bot, inner ? -c_.Rotflag : +c_.Rotflag);
    user.Press("cmd_Calc");
    EXPECT_EQ(c_.Top_Bot, inner ? +c_.Rotflag : -c_.Rotflag);
}

TEST_F(Size_Screen, a_model_without_a_keyway_shows_none)
{
    c_.Keyway_Text = "";
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("cmb_keyway"), "");
}

TEST_F(Size_Screen, the_wheel_and_the_arrow_keys_step_a_number)
{
    frm_SizeCam screen;
    const Driver user(screen);
    auto& prime = user.Find<QLineEdit>("txt_Prime");
    user.Fill("txt_Prime", "100");
    prime.setFocus();
    QTest::keyClick(&prime, Qt::Key_Up);
    EXPECT_EQ(c_.Prime_Rad, 110.0);
    QTest::keyClick(&prime, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(c_.Prime_Rad, 210.0);
    user.Fill("txt_Prime", "100");
    prime.setFocus();
    const auto turn = [&](int eighths) {
        QWheelEvent event(QPointF(5, 5), prime.mapToGlobal(QPointF(5, 5)), {}, {0, eighths}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&prime, &event);
    };
    turn(40);  // a fine wheel: parts of a notch add up
    turn(40);
    EXPECT_EQ(c_.Prime_Rad, 100.0);
    turn(40);
    EXPECT_EQ(c_.Prime_Rad, 110.0);
}

TEST_F(Size_Screen, the_drawing_zooms_about_the_pointer_pans_and_is_whole_again_after_a_double_click)
{
    frm_SizeCam screen;
    const Driver user(screen);
    auto& cam = user.Find<paint::Drawing_View>("pct_Cam");
    const QRectF whole = cam.Area();
    EXPECT_EQ(whole, QRectF(cam.rect()));
    const QPointF at(40, 60);
    QWheelEvent event(at, cam.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&cam, &event);
    EXPECT_NEAR(cam.Area().width(), whole.width() * 1.2, 1e-9);
    // What was under the pointer still is.
    EXPECT_NEAR((at.x() - cam.Area().x()) / cam.Area().width(), at.x() / whole.width(), 1e-12);
    const QRectF zoomed = cam.Area();
    const auto mouse = [&](QEvent::Type type, const QPointF& where) {
        QMouseEvent drag(type, where, cam.mapToGlobal(where), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&cam, &drag);
    };
    mouse(QEvent::MouseButtonPress, {50, 50});
    mouse(QEvent::MouseMove, {60, 45});
    EXPECT_EQ(cam.Area(), zoomed.translated(10, -5));
    QTest::mouseDClick(&cam, Qt::LeftButton);
    EXPECT_EQ(cam.Area(), whole);
}

TEST_F(Size_Screen, the_kind_of_cam_changes_words_and_panels)
{
    frm_SizeCam screen;
    const Driver user(screen);
    Host host = Installed_Host();
    std::string told;
    host.messenger = [&told](const Message& box) {
        told = box.text;
        return box.buttons == Buttons::OK_Cancel ? Answer::Cancel : Answer::OK;
    };
    const Host before = Install_Host(host);
    user.Press(Element("opt_CamType", 2));
    EXPECT_EQ(told, Linear_Cam_Message());
    user.Press(Element("opt_CamType", 0));
    told.clear();
    user.Press(Element("opt_CamType", 2));
    EXPECT_EQ(told, "");  // Cancel keeps it away for the run
    Install_Host(before);
    EXPECT_EQ(user.Find<QGroupBox>("fra_Prime").title(), "Cam Length");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Rotate").title(), "Cam Direction");
    EXPECT_EQ(user.Text(Element("opt_Rotate", 0)), "-->>");
    EXPECT_EQ(user.Text(Element("opt_Rotate", 1)), "<<--");
    EXPECT_EQ(user.Text("lbl_Yinit"), "z");
    EXPECT_FALSE(user.Visible("pnl_translate") || user.Visible("fra_CL") || user.Visible("pnl_info"));
    EXPECT_FALSE(user.Enabled(Element("opt_Foltype", 1)));
    EXPECT_TRUE(user.Visible("fra_topbot"));
    EXPECT_FALSE(user.Visible("txt_Offset") || user.Visible("txt_folwrangle"));
    EXPECT_NEAR(testing::Number_In(user.Text("txt_Prime")), 101.6 * PI2, 0.01);
    user.Press(Element("opt_CamType", 3));
    EXPECT_EQ(c_.Barrel_Type, "Ribbed");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Prime").title(), "Prime Radius");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Rotate").title(), "Cam Rotation");
    EXPECT_EQ(user.Text(Element("opt_Rotate", 0)), "Ccw");
    user.Press(Element("opt_Folmotion", 1));
    EXPECT_TRUE(user.Visible("pnl_oscillate") && user.Visible("fra_CL"));
    EXPECT_EQ(user.Text("txt_CLy"), "0");
    EXPECT_FALSE(user.Enabled("txt_CLy"));
    user.Press(Element("opt_CamType", 2));
    EXPECT_TRUE(user.Visible("pnl_oscillate"));
    EXPECT_FALSE(user.Visible("fra_CL"));
    user.Press(Element("opt_Folmotion", 0));
    user.Press(Element("opt_CamType", 0));
    EXPECT_EQ(user.Text("lbl_Yinit"), "y");
    EXPECT_TRUE(user.Enabled(Element("opt_Foltype", 1)));
    EXPECT_FALSE(user.Visible("fra_topbot"));
    EXPECT_TRUE(user.Visible("txt_Offset"));
}

TEST_F(Size_Screen, a_barrel_cam_is_not_drawn_and_says_so_until_told_not_to)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press(Element("opt_CamType", 1));
    user.Press("cmd_Calc");
    ASSERT_TRUE(f_.Sized);
    user.Press("cmd_ShowCam");
    EXPECT_FALSE(user.Visible("pct_Cam"));
    script_.Expect({Axial_Cam_Message(design), Buttons::OK_Cancel, Symbol::information, Answer::Cancel});
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    frm_SizeCam again;
    const Driver other(again);
    other.Press("cmd_Done");  // silent for the rest of the run
    EXPECT_EQ(again.result(), QDialog::Accepted);
}

TEST_F(Size_Screen, an_oscillating_follower_has_its_arm_fields_and_its_test)
{
    Build("Oscillating");
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Visible("txt_CLx") && user.Visible("txt_CLy") && user.Visible("txt_ArmRadius"));
    EXPECT_TRUE(user.Visible("pnl_ArmRotate"));
    const std::string D = "117.92";  // hypot(100, 62.5)
    script_.Expect(
        {"The roller follower arm misses the cam entirely\n"
         "with your current choice of arm center location. \n"
         "\n"
         "Please adjust the arm radius to be about\n" +
             D + " mm for this arm center location.",
         Buttons::OK, Symbol::exclamation});
    user.Fill("txt_ArmRadius", "10");
    EXPECT_EQ(user.Text("txt_ArmRadius"), D);
    EXPECT_EQ(c_.ArmRad, 100.0);
    script_.Expect({"Arm radius cannot be zero. Please reenter.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_ArmRadius", "0");
    EXPECT_EQ(user.Text("txt_ArmRadius"), "100");
    user.Fill("txt_CLx", "105");
    EXPECT_EQ(c_.ArmX, 105.0);
    user.Press("cmd_Calc");
    EXPECT_TRUE(f_.Sized);
}

TEST_F(Size_Screen, a_flat_face_takes_the_offset_and_tells_its_base_radius)
{
    c_.Offset = 5.0;
    frm_SizeCam screen;
    const Driver user(screen);
    Host host = Installed_Host();
    std::string told;
    host.messenger = [&](const Message& box) {
        told = box.text;
        return Usual_Answer(box.buttons);
    };
    const Host before = Install_Host(host);
    user.Press(Element("opt_Foltype", 1));
    Install_Host(before);
    EXPECT_TRUE(told.starts_with("The minimum base circle radius for no negative Radius of Curvature is "));
    EXPECT_EQ(c_.Followtype, 2);
    EXPECT_EQ(c_.Offset, 0.0);
    EXPECT_FALSE(user.Visible("txt_follower"));
    user.Press("cmd_Calc");
    EXPECT_EQ(user.Text("lbl_Pamax"), "0.00");
}

TEST_F(Size_Screen, cam_and_curves_are_shown_alone_or_together_and_follow_the_kind_of_cam)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press("cmd_ShowData");
    EXPECT_TRUE(user.Visible("pct_Pang") && user.Visible("pct_Radcurv"));
    EXPECT_FALSE(user.Visible("pct_Cam") || user.Visible("lbl_Yinit") || user.Visible("pnl_info"));
    user.Press("cmd_ShowCam");
    EXPECT_FALSE(user.Visible("pct_Pang") || user.Visible("pct_Radcurv"));
    EXPECT_TRUE(user.Visible("pct_Cam") && user.Visible("lbl_Yinit") && user.Visible("pnl_info"));
    user.Press("cmd_ShowBoth");
    EXPECT_TRUE(user.Visible("pct_Cam") && user.Visible("pct_Pang"));
    user.Press("cmd_ShowCam");
    user.Press(Element("opt_CamType", 1));
    EXPECT_FALSE(user.Visible("pct_Cam"));
    EXPECT_TRUE(user.Visible("pct_Pang"));
    user.Press(Element("opt_CamType", 0));
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Visible("pct_Cam"));
    EXPECT_FALSE(user.Visible("pct_Pang"));
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_Cancel");
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Size_Screen, a_barrel_cam_calculates_at_each_prime_radius)
{
    frm_SizeCam screen;
    const Driver user(screen);
    user.Press(Element("opt_CamType", 1));
    user.Press("cmd_Calc");
    const double before = c_.Phi_Max;
    user.Fill("txt_Prime", "60");
    EXPECT_GT(c_.Phi_Max, before);
    EXPECT_FALSE(user.Enabled("cmd_Calc"));
    EXPECT_EQ(user.Text(Element("lbl_Status", 1)), "Sized");
}

TEST_F(Size_Screen, every_example_opens_and_draws)
{
    for (const char* name : {"Single Dwell", "Double Dwell", "Flat Follower", "Four Dwell", "Oscillating"}) {
        Build(name);
        frm_SizeCam screen;
        const Driver user(screen);
        const QImage picture = user.Find<QWidget>("pct_Cam").grab().toImage();
        int ink = 0;
        for (int y = 0; y < picture.height(); y += 3)
            for (int x = 0; x < picture.width(); x += 3)
                ink += picture.pixelColor(x, y) != picture.pixelColor(0, 0) ? 1 : 0;
        EXPECT_GT(ink, 500) << name;
    }
}

TEST_F(Size_Screen, help_carries_the_advice)
{
    frm_SizeCam screen;
    script_.Expect({Roller_Help()});
    screen.findChild<QAction*>("mnu_Roller")->trigger();
    script_.Expect({Arm_Help()});
    screen.findChild<QAction*>("mnu_arm")->trigger();
    script_.Expect({Cam_Surface_Help()});
    screen.findChild<QAction*>("mnu_camsurface")->trigger();
    script_.Expect({Start_Angle_Help()});
    screen.findChild<QAction*>("mnu_startangle")->trigger();
    script_.Expect({Linear_Help()});
    screen.findChild<QAction*>("mnu_linear")->trigger();
    script_.Expect({Barrel_Help()});
    screen.findChild<QAction*>("mnu_barrel")->trigger();
}

TEST_F(Size_Screen, what_waits_for_its_calculation_is_gray)
{
    Build("Double Dwell");
    screens::frm_SizeCam screen;
    const Driver user(screen);
    const auto& phi = user.Find<paint::Chart>("pct_Pang");
    const auto newest = [&] { return phi.Plot().graph(0)->pen().color(); };
    const QColor gray = phi.palette().color(QPalette::Mid);
    EXPECT_NE(newest(), gray);
    EXPECT_TRUE(user.Enabled("lbl_Pamin"));
    const std::string before = user.Text("lbl_Pamin");
    user.Fill("txt_Prime", "120");
    EXPECT_EQ(newest(), gray);
    for (const char* const name : {"lbl_Pamin", "lbl_Pamax", "lbl_Rhomin", "lbl_Rhomax", "pnl_info"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_EQ(user.Text("lbl_Pamin"), before);
    user.Press("cmd_Calc");
    EXPECT_NE(newest(), gray);
    EXPECT_TRUE(user.Enabled("lbl_Pamin"));
    EXPECT_NE(user.Text("lbl_Pamin"), before);
}

TEST_F(Size_Screen, the_pressure_angle_of_a_flat_face_has_a_scale_of_its_own)
{
    Build("Double Dwell");
    screens::frm_SizeCam screen;
    const Driver user(screen);
    auto& phi = user.Find<paint::Chart>("pct_Pang");
    EXPECT_GT(phi.Plot().yAxis->range().size(), 20.0);
    Build("Flat Follower");
    screens::frm_SizeCam flat;
    const Driver other(flat);
    auto& zeros = other.Find<paint::Chart>("pct_Pang");
    EXPECT_EQ(zeros.Curves()[0].y, std::vector<double>(361, 0.0));
    EXPECT_LT(zeros.Plot().yAxis->range().size(), 3.0);
}

}  // namespace
}  // namespace lobemax
