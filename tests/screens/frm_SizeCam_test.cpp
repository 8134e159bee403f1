// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_SizeCam.h"

#include <QGroupBox>

#include "core/text.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "tests/support/desktop_design.h"

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
    EXPECT_EQ(user.Text("lbl_Pamax"), Trim(FNRoundStr(c_.Phi_Max, 2)));
    EXPECT_EQ(user.Text("lbl_Rhomin"), Trim(c_.Rho_Min_Pos_Text));
    EXPECT_EQ(user.Text("lbl_Rhominneg"), "None");
    EXPECT_TRUE(user.Visible("pct_Cam"));
    EXPECT_EQ(user.Tip("txt_Prime"), "Smallest radius to roller center");
    EXPECT_EQ(user.Tip("txt_follower"), "Roller radius (not diameter)");
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
    EXPECT_EQ(user.Text("lbl_Pamax"), Trim(FNRoundStr(c_.Phi_Max, 2)));
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
    user.Fill("txt_Prime", "0");
    EXPECT_EQ(c_.Prime_Rad, Single(101.6));
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_follower", "-2");
    EXPECT_EQ(user.Text("txt_follower"), "");
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Cutter", "-1");
    EXPECT_EQ(user.Text("txt_Cutter"), "");
    script_.Expect({"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
                    Buttons::OK, Symbol::none});
    user.Fill("txt_Offset", "500");
    EXPECT_EQ(c_.Offset, 0.0);
}

TEST_F(Size_Screen, the_kind_of_cam_changes_words_and_panels)
{
    frm_SizeCam screen;
    const Driver user(screen);
    Host host = Installed_Host();
    host.messenger = [](const Message& box) { return Usual_Answer(box.buttons); };  // the long help of linear cams
    const Host before = Install_Host(host);
    user.Press(Element("opt_CamType", 2));
    Install_Host(before);
    EXPECT_EQ(user.Text("lbl_txt_Prime"), "Cam Length");
    EXPECT_EQ(user.Text(Element("opt_Rotate", 0)), "-->>");
    EXPECT_FALSE(user.Enabled(Element("opt_Foltype", 1)));
    EXPECT_TRUE(user.Visible("fra_topbot"));
    EXPECT_FALSE(user.Visible("txt_Offset") || user.Visible("txt_folwrangle"));
    EXPECT_NEAR(std::stod(user.Text("txt_Prime")), 101.6 * PI2, 0.01);
    user.Press(Element("opt_CamType", 3));
    EXPECT_EQ(c_.Barrel_Type, "Ribbed");
    EXPECT_EQ(user.Text("lbl_txt_Prime"), "Prime Radius");
    user.Press(Element("opt_CamType", 0));
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
    script_.Expect({Axial_Cam_Message(), Buttons::OK_Cancel, Symbol::information, Answer::Cancel});
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
    const std::string D = FNRoundStr(std::hypot(100.0, 62.5), 2);
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

TEST_F(Size_Screen, the_views_are_switched)
{
    frm_SizeCam screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Visible("pct_Pang"));
    user.Press("cmd_ShowData");
    EXPECT_TRUE(user.Visible("pct_Pang") && user.Visible("pct_Radcurv"));
    user.Press("cmd_ShowCam");
    EXPECT_FALSE(user.Visible("pct_Pang"));
    EXPECT_TRUE(user.Visible("pct_Cam"));
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_Cancel");
    EXPECT_EQ(screen.result(), QDialog::Rejected);
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
}

}  // namespace
}  // namespace lobemax
