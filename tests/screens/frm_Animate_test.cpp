// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Animate.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QImage>
#include <QProgressBar>
#include <QSlider>
#include <QTemporaryDir>
#include <QTimer>
#include <fstream>

#include "core/text.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "motion/segments.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "screens/frm_HomeScreen.h"
#include "tests/support/desktop_design.h"
#include "tests/support/watched_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Animate;
using testing::Driver;

const testing::Expected_Box done_box{
    "To export the follower coordinates, \n"
    "use the menu pulldown File/Export/Profile,\n"
    "or print desired data to disk with the Print button.\n"
    "\n"
    "To suppress this message on further calculations, hit Cancel.",
    Buttons::OK_Cancel, Symbol::information};

class Animate_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
        c_.Anim_Wait = 1;
        screens::Desk_History().Start_Anew();
    }
    static QImage Picture(const Driver& user) { return user.Find<paint::Drawing_View>("pct_Cam").grab().toImage(); }
    static int Slider(const Driver& user) { return user.Find<QSlider>("hsc_step").value(); }
    static void Trigger(const frm_Animate& screen, const char* name)
    {
        auto* const action = screen.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
    /// Lets the events of the screen go on until a run ends.
    static void Wait_for_End(const frm_Animate& screen)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !screen.Is_Running(); }));
    }

    Cam_Group& c_ = design.cam;
    Flags_Group& f_ = design.flags;
};

TEST_F(Animate_Screen, opens_with_the_primary_cam_at_rest)
{
    c_.Show_Follower_Path = true;
    const std::uint64_t before = Key_of(design);
    frm_Animate screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Checked(Element("opt_Show", 0)));
    EXPECT_TRUE(user.Checked(Element("Opt_Surface", 0)));
    EXPECT_TRUE(user.Checked(Element("opt_Rotate", 1)));
    for (const char* const path : {"Chk_Follower", "chk_Cutter", "chk_Camkey"})
        EXPECT_FALSE(user.Checked(path)) << path;
    EXPECT_TRUE(c_.Show_Surface);
    EXPECT_FALSE(c_.Show_Follower_Path);
    EXPECT_EQ(user.Text("txt_Prime"), "101.6");
    EXPECT_EQ(user.Text("txt_Follower"), "18.75");
    EXPECT_EQ(user.Text("txt_Offset"), "0");
    EXPECT_EQ(user.Text("lbl_theta"), "0");
    EXPECT_EQ(user.Text("pnl_Profile"), "Primary cam, inner surface");
    EXPECT_EQ(user.Text("pnl_initial"), "Note:  Initial follower position is shown at cam zero, not at machine zero");
    EXPECT_TRUE(user.Visible("pct_Cam"));
    EXPECT_FALSE(user.Visible("pct_Pang") || user.Visible("pct_Radcurv") || user.Visible("lbl_Surface"));
    EXPECT_EQ(user.Find<QSlider>("hsc_step").minimum(), 0);
    EXPECT_EQ(user.Find<QSlider>("hsc_step").maximum(), 360);
    EXPECT_EQ(user.Text("cmb_wait"), "1");
    EXPECT_EQ(Key_of(design), before);
}

TEST_F(Animate_Screen, controls_carry_their_tips_captions_and_speeds)
{
    frm_Animate screen;
    const Driver user(screen);
    const std::pair<QString, const char*> captions[] = {{Element("opt_Show", 0), "Show Cam "},
                                                        {Element("opt_Show", 1), "Show Summary"},
                                                        {Element("opt_Show", 2), "Show Conjugate"},
                                                        {"Chk_Follower", "Follower Path"},
                                                        {"chk_Cutter", "Cutter Path"},
                                                        {"chk_Camkey", "Cam vs Machine Zero"},
                                                        {Element("Opt_Surface", 0), "Inner Surface"},
                                                        {Element("Opt_Surface", 1), "Outer Surface"},
                                                        {Element("opt_Rotate", 0), "Ccw"},
                                                        {Element("opt_Rotate", 1), "Cw"}};
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(user.Text(name), caption) << name.toStdString();
    const std::pair<QString, const char*> tips[] = {
        {Element("opt_Show", 0), "Draws the primary cam profile"},
        {Element("opt_Show", 1), "Shows pressure angles and radii of curvature"},
        {Element("opt_Show", 2), "Draws the conjugate cam profile"},
        {"Chk_Follower", "Show the roller or flat follower in all positions"},
        {"chk_Cutter", "Show the cutter in all positions"},
        {"chk_Camkey", "Show cam referenced to machine zero instead of cam zero"},
        {"txt_Prime", "Smallest radius to roller center"},
        {"txt_Follower", "Roller radius (not diameter)"},
        {"txt_Offset", "Eccentricity of follower axis from cam center"}};
    for (const auto& [name, tip] : tips)
        EXPECT_EQ(user.Tip(name), tip) << name.toStdString();
    const auto& wait = user.Find<QComboBox>("cmb_wait");
    QStringList speeds;
    for (int k = 0; k < wait.count(); ++k)
        speeds.append(wait.itemText(k));
    EXPECT_EQ(speeds, (QStringList{"1", "10", "100", "1000", "10000", "100000"}));
}

TEST_F(Animate_Screen, step_goes_through_the_points_and_from_the_last_to_the_first)
{
    frm_Animate screen;
    const Driver user(screen);
    const QImage rest = Picture(user);
    user.Press("cmd_Step");
    EXPECT_EQ(Slider(user), 0);
    EXPECT_EQ(c_.Anim_Step, 1);
    user.Press("cmd_Step");
    EXPECT_EQ(Slider(user), 1);
    EXPECT_EQ(user.Text("lbl_theta"), "1");
    EXPECT_NE(Picture(user), rest);
    user.Find<QSlider>("hsc_step").setValue(360);
    EXPECT_EQ(c_.Anim_Step, 360);
    user.Press("cmd_Step");
    EXPECT_EQ(user.Text("lbl_theta"), "360");
    EXPECT_EQ(c_.Anim_Step, 361);
    user.Press("cmd_Step");
    EXPECT_EQ(user.Text("lbl_theta"), "0");
    EXPECT_EQ(Slider(user), 0);
    EXPECT_EQ(c_.Anim_Step, 1);
}

TEST_F(Animate_Screen, the_slider_shows_its_point_and_at_its_left_end_the_cam_at_rest)
{
    frm_Animate screen;
    const Driver user(screen);
    const QImage rest = Picture(user);
    auto& slider = user.Find<QSlider>("hsc_step");
    slider.setValue(120);
    EXPECT_EQ(c_.Anim_Step, 120);
    EXPECT_EQ(user.Text("lbl_theta"), "120");
    EXPECT_NE(Picture(user), rest);
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(user.Text("lbl_theta"), "121");
    slider.setValue(0);
    EXPECT_EQ(c_.Anim_Step, 0);
    EXPECT_EQ(user.Text("lbl_theta"), "0");
    EXPECT_EQ(Picture(user), rest);
}

TEST_F(Animate_Screen, a_run_goes_through_one_cycle_every_five_degrees_and_ends_at_rest)
{
    const std::uint64_t before = Key_of(design);
    frm_Animate screen;
    const Driver user(screen);
    const QImage rest = Picture(user);
    std::vector<int> seen;
    QObject::connect(&user.Find<QSlider>("hsc_step"), &QSlider::valueChanged,
                     [&](int point) { seen.push_back(point); });
    user.Press("cmd_Run");
    EXPECT_TRUE(screen.Is_Running());
    EXPECT_EQ(user.Text("cmd_Run"), "Stop (&R)");
    Wait_for_End(screen);
    ASSERT_EQ(seen.size(), 73U);  // 5 to 360, and back to 0
    for (int k = 0; k < 72; ++k)
        EXPECT_EQ(seen[static_cast<std::size_t>(k)], 5 * (k + 1));
    EXPECT_EQ(seen.back(), 0);
    EXPECT_EQ(user.Text("cmd_Run"), "&Run");
    EXPECT_EQ(user.Text("lbl_theta"), "0");
    EXPECT_EQ(Picture(user), rest);
    EXPECT_EQ(Key_of(design), before);
    EXPECT_FALSE(screens::Desk_History().May_Undo());
}

TEST_F(Animate_Screen, stop_ends_a_run_where_it_is_and_step_goes_on_from_there)
{
    frm_Animate screen;
    const Driver user(screen);
    user.Press("cmd_Run");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Slider(user) >= 20; }));
    user.Press("cmd_Run");
    EXPECT_FALSE(screen.Is_Running());
    const int at = Slider(user);
    EXPECT_GE(at, 20);
    EXPECT_EQ(c_.Anim_Step, at);
    QTest::qWait(60);
    EXPECT_EQ(Slider(user), at);
    user.Press("cmd_Step");
    user.Press("cmd_Step");
    EXPECT_EQ(Slider(user), at + 1);
}

TEST_F(Animate_Screen, the_window_lives_while_the_cam_turns)
{
    c_.Anim_Wait = 100000;
    frm_Animate screen;
    const Driver user(screen);
    user.Press("cmd_Run");
    QTest::qWait(30);
    EXPECT_TRUE(screen.Is_Running());  // its first frame is a second away
    Trigger(screen, "mnu_plus");       // the zoom and the speed go with it
    EXPECT_TRUE(screen.Is_Running());
    user.Pick("cmb_wait", "1");
    EXPECT_EQ(c_.Anim_Wait, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Slider(user) > 5; }));
    EXPECT_TRUE(screen.Is_Running());
    user.Press("chk_Cutter");  // another picture ends it
    EXPECT_FALSE(screen.Is_Running());
    for (const QString& control : {Element("opt_Show", 2), Element("opt_Show", 1), Element("opt_Show", 0)}) {
        user.Press("cmd_Redraw");
        if (user.Enabled("cmd_Run"))
            user.Press("cmd_Run");
        user.Press(control);
        EXPECT_FALSE(screen.Is_Running());
    }
    user.Press("cmd_Run");
    user.Find<QSlider>("hsc_step").setValue(300);
    EXPECT_FALSE(screen.Is_Running());
    EXPECT_EQ(user.Text("lbl_theta"), "300");
    user.Press("cmd_Run");
    QTest::keyClick(&screen, Qt::Key_Escape);  // stops, and closes nothing
    EXPECT_FALSE(screen.Is_Running());
    EXPECT_TRUE(screen.isVisible());
}

TEST_F(Animate_Screen, a_run_at_the_finest_step_has_as_many_frames)
{
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    ASSERT_TRUE(Set_Step(design, 0.125));
    ASSERT_TRUE(Calculate_Example(design) && Run_Size(design));
    c_.Anim_Wait = 1;
    frm_Animate screen;
    const Driver user(screen);
    std::vector<int> seen;
    QObject::connect(&user.Find<QSlider>("hsc_step"), &QSlider::valueChanged,
                     [&](int point) { seen.push_back(point); });
    user.Press("cmd_Run");
    Wait_for_End(screen);
    ASSERT_EQ(seen.size(), 73U);
    EXPECT_EQ(seen[0], 40);
    EXPECT_EQ(seen[71], 2880);
}

TEST_F(Animate_Screen, the_conjugate_is_looked_at_and_changes_nothing)
{
    const std::uint64_t before = Key_of(design);
    frm_Animate screen;
    const Driver user(screen);
    const QImage primary = Picture(user);
    user.Press(Element("opt_Show", 2));
    EXPECT_EQ(user.Text("pnl_Profile"), "Conjugate cam, inner surface");
    EXPECT_NE(Picture(user), primary);
    EXPECT_EQ(user.Text("txt_Offset"), "0");
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
    EXPECT_EQ(Key_of(design), before);
    user.Press(Element("opt_Show", 0));
    EXPECT_EQ(user.Text("pnl_Profile"), "Primary cam, inner surface");
    EXPECT_EQ(Picture(user), primary);
    EXPECT_FALSE(screens::Desk_History().May_Undo());
}

TEST_F(Animate_Screen, the_conjugate_has_its_exports)
{
    const QTemporaryDir folder;
    script_.path = folder.filePath("conjugate.txt").toStdString();
    frm_Animate screen;
    const Driver user(screen);
    user.Press(Element("opt_Show", 2));
    {
        const testing::Watched_Boxes boxes(Answer::OK);
        Trigger(screen, "mnu_profile");
    }
    std::ifstream file(*script_.path);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string first = Shortest(Single(c_.Prime_Rad + design.motion.Liftmax)) + "\t0\t\r\n";
    EXPECT_NE(text.find(first), std::string::npos) << first << text.substr(0, 300);
}

TEST_F(Animate_Screen, the_summary_has_both_curves_with_their_extremes)
{
    frm_Animate screen;
    const Driver user(screen);
    user.Press(Element("opt_Show", 1));
    EXPECT_FALSE(user.Visible("pct_Cam") || user.Visible("pnl_initial"));
    EXPECT_TRUE(user.Visible("pct_Pang") && user.Visible("pct_Radcurv"));
    for (const char* const name : {"cmd_Step", "cmd_Run", "hsc_step"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    const auto& phi = user.Find<paint::Chart>("pct_Pang").Curves();
    const auto& rho = user.Find<paint::Chart>("pct_Radcurv").Curves();
    ASSERT_EQ(phi.size(), 1U);
    ASSERT_EQ(rho.size(), 1U);
    EXPECT_EQ(phi[0].y, Row(var::Phi));
    EXPECT_EQ(rho[0].y, Row(var::Rho));
    const auto at = [](const std::string& value, Single angle) {
        return Trim(value) + " at " + Shortest(angle) + " deg";
    };
    EXPECT_EQ(user.Text("lbl_Pamax"), at(FNRoundStr(design, c_.Phi_Max, 2), c_.Phi_Max_Angle));
    EXPECT_EQ(user.Text("lbl_Pamin"), at(FNRoundStr(design, c_.Phi_Min, 2), c_.Phi_Min_Angle));
    EXPECT_EQ(user.Text("lbl_Rhomin"), at(c_.Rho_Min_Pos_Text, c_.Rho_Min_Pos_Angle));
    EXPECT_EQ(user.Text("lbl_Rholargest_pos"), at(c_.Rho_Max_Pos_Text, c_.Rho_Max_Pos_Angle));
    EXPECT_EQ(user.Text("lbl_Rhomax"), "None");
    const std::string primary = user.Text("lbl_Pamax");
    user.Press(Element("opt_Show", 2));
    user.Press(Element("opt_Show", 1));
    EXPECT_EQ(user.Text("pnl_Profile"), "Conjugate cam, inner surface");
    EXPECT_NE(user.Text("lbl_Pamax"), primary);
    EXPECT_NE(phi[0].y, Row(var::Phi));
    user.Press(Element("opt_Show", 0));
    EXPECT_TRUE(user.Visible("pct_Cam") && user.Visible("pnl_initial"));
    EXPECT_TRUE(user.Enabled("cmd_Run"));
}

TEST_F(Animate_Screen, the_paths_exclude_each_other)
{
    frm_Animate screen;
    const Driver user(screen);
    const QImage bare = Picture(user);
    const char* const boxes[] = {"Chk_Follower", "chk_Cutter", "chk_Camkey"};
    std::vector<QImage> seen{bare};
    for (const char* const box : boxes) {
        user.Press(box);
        for (const char* const other : boxes)
            EXPECT_EQ(user.Checked(other), other == box) << box << " " << other;
        EXPECT_EQ(c_.Show_Follower_Path, box == boxes[0]);
        EXPECT_EQ(c_.Show_Cutter_Path, box == boxes[1]);
        EXPECT_EQ(c_.Show_Cam_Key, box == boxes[2]);
        EXPECT_EQ(c_.Show_Surface, box != boxes[2]);
        const QImage now = Picture(user);
        for (const QImage& before : seen)
            EXPECT_NE(now, before) << box;
        seen.push_back(now);
    }
    EXPECT_EQ(user.Text("pnl_Profile"), "Primary cam, inner surface, at machine zero");
    user.Press("chk_Camkey");
    EXPECT_TRUE(c_.Show_Surface);
    EXPECT_EQ(Picture(user), bare);
    EXPECT_TRUE(f_.Dynamicflag);
}

TEST_F(Animate_Screen, a_chosen_surface_clears_the_paths_and_is_the_design_s)
{
    frm_Animate screen;
    const Driver user(screen);
    user.Press("Chk_Follower");
    user.Press(Element("Opt_Surface", 1));
    EXPECT_EQ(c_.In_Out, 1);
    EXPECT_FALSE(user.Checked("Chk_Follower"));
    EXPECT_TRUE(c_.Show_Surface);
    EXPECT_EQ(user.Text("pnl_Profile"), "Primary cam, outer surface");
    EXPECT_NEAR(Data(36, 0), c_.Prime_Rad + c_.Follow_Rad, 1e-3);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
    EXPECT_EQ(Lit_Lamps(user), (std::vector<std::string>{"S-V-A-J", "Sized", "mm-kg-N-s"}));
    frm_Animate again;
    const Driver second(again);
    EXPECT_TRUE(second.Checked(Element("Opt_Surface", 0)));
    EXPECT_EQ(second.Text("lbl_Surface"), "The design keeps its outer surface until you choose one here.");
    EXPECT_TRUE(second.Visible("lbl_Surface"));
    EXPECT_EQ(c_.In_Out, 1);
    second.Press(Element("Opt_Surface", 1));
    EXPECT_FALSE(second.Visible("lbl_Surface"));
    second.Press(Element("Opt_Surface", 0));
    EXPECT_EQ(c_.In_Out, -1);
}

TEST_F(Animate_Screen, the_direction_turns_the_cam_over)
{
    frm_Animate screen;
    const Driver user(screen);
    const double y = Data(10, 60);
    user.Press(Element("opt_Rotate", 0));
    EXPECT_EQ(c_.Rotflag, 1);
    EXPECT_NEAR(Data(10, 60), -y, 1e-4);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
}

TEST_F(Animate_Screen, sizes_are_changed_in_place_and_undone)
{
    frm_Animate screen;
    const Driver user(screen);
    const QImage before = Picture(user);
    const double phi = c_.Phi_Max;
    user.Fill("txt_Prime", "60");
    EXPECT_EQ(c_.Prime_Rad, 60.0);
    EXPECT_GT(c_.Phi_Max, phi);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
    EXPECT_NE(Picture(user), before);
    user.Fill("txt_Follower", "10");
    user.Fill("txt_Offset", "5");
    EXPECT_EQ(c_.Follow_Rad, 10.0);
    EXPECT_EQ(c_.Offset, 5.0);
    QTest::keyClick(&user.Find<QLineEdit>("txt_Offset"), Qt::Key_Up);
    EXPECT_EQ(c_.Offset, 5.1F);
    Trigger(screen, "mnu_plus");
    user.Press("chk_Camkey");
    for (int k = 0; k < 4; ++k)
        Trigger(screen, "mnu_Undo");
    EXPECT_EQ(c_.Zoom_Factor, Single(0.8));  // how it is shown is nobody's step
    EXPECT_TRUE(user.Checked("chk_Camkey"));
    user.Press("chk_Camkey");
    Trigger(screen, "mnu_Normal");
    EXPECT_EQ(user.Text("txt_Prime"), "101.6");
    EXPECT_EQ(user.Text("txt_Follower"), "18.75");
    EXPECT_EQ(user.Text("txt_Offset"), "0");
    EXPECT_EQ(c_.Phi_Max, phi);
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_EQ(Picture(user), before);
}

TEST_F(Animate_Screen, refused_sizes_show_their_message_and_text_and_redraw_shows_what_is_stored)
{
    frm_Animate screen;
    const Driver user(screen);
    script_.Expect(
        {"Prime radius cannot be zero or negative or less than the offset", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Prime", "0");
    EXPECT_EQ(user.Text("txt_Prime"), "1");
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Follower", "-2");
    EXPECT_EQ(user.Text("txt_Follower"), "");
    script_.Expect({"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
                    Buttons::OK, Symbol::none, Answer::OK, "LOBEMAX"});
    user.Fill("txt_Offset", "200");
    EXPECT_EQ(user.Text("txt_Offset"), "0");
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
    user.Press("cmd_Redraw");
    EXPECT_EQ(user.Text("txt_Prime"), "101.6");
    EXPECT_EQ(user.Text("txt_Follower"), "18.75");
}

TEST_F(Animate_Screen, sizes_without_a_cam_leave_nothing_to_turn_until_they_are_mended)
{
    frm_Animate screen;
    const Driver user(screen);
    script_.Expect(
        {"Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
         Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Prime", "15");
    EXPECT_FALSE(f_.Sized);
    for (const char* const name : {"cmd_Step", "cmd_Run", "hsc_step", "cmd_Done"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_FALSE(screen.findChild<QAction*>("mnu_SavePictures")->isEnabled());
    EXPECT_TRUE(user.Enabled("cmd_Back"));
    user.Fill("txt_Follower", "5");
    EXPECT_TRUE(f_.Sized);
    EXPECT_TRUE(user.Enabled("cmd_Run") && user.Enabled("cmd_Done"));
}

TEST_F(Animate_Screen, a_flat_follower_has_no_radius_and_a_roller_on_an_arm_no_offset)
{
    Build("Flat Follower");
    {
        frm_Animate screen;
        const Driver user(screen);
        EXPECT_FALSE(user.Visible("txt_Follower"));
        EXPECT_TRUE(user.Visible("txt_Offset"));
        EXPECT_EQ(user.Text("pnl_Profile"), "Primary cam");
    }
    Build("Oscillating");
    frm_Animate screen;
    const Driver user(screen);
    EXPECT_TRUE(user.Visible("txt_Follower"));
    EXPECT_FALSE(user.Visible("txt_Offset"));
    const QImage primary = Picture(user);
    user.Press(Element("opt_Show", 2));
    EXPECT_NE(Picture(user), primary);
    user.Press("cmd_Run");
    Wait_for_End(screen);
}

TEST_F(Animate_Screen, the_zoom_widens_and_narrows_the_window)
{
    frm_Animate screen;
    const Driver user(screen);
    const QImage whole = Picture(user);
    Trigger(screen, "mnu_plus");
    EXPECT_EQ(c_.Zoom_Factor, Single(0.8));
    EXPECT_NE(Picture(user), whole);
    Trigger(screen, "mnu_minus");
    Trigger(screen, "mnu_minus");
    EXPECT_EQ(c_.Zoom_Factor, Single(1.25));
    user.Find<QSlider>("hsc_step").setValue(50);
    Trigger(screen, "mnu_Normal");
    EXPECT_EQ(c_.Zoom_Factor, 1.0);
    EXPECT_EQ(user.Text("lbl_theta"), "50");  // the frame stays
    user.Press("cmd_Redraw");
    EXPECT_EQ(Picture(user), whole);
}

TEST_F(Animate_Screen, pictures_of_one_turn_are_saved_with_numbers)
{
    const QTemporaryDir folder;
    script_.path = folder.filePath("turn.png").toStdString();
    frm_Animate screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Visible("cmd_Stop"));
    Trigger(screen, "mnu_Stride(5)");  // 30 degrees
    const std::string stem = folder.filePath("turn_0").toStdString();
    script_.Expect({"12 pictures of one turn were saved, from\n" + stem + "00.png to\n" + stem + "11.png"});
    Trigger(screen, "mnu_SavePictures");
    EXPECT_EQ(script_.dialogs.back().suggestion, "frame.png");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 12);
    const QImage first(folder.filePath("turn_000.png"));
    const QImage fourth(folder.filePath("turn_003.png"));
    EXPECT_EQ(first.size(), user.Find<paint::Drawing_View>("pct_Cam").size() * 2);
    EXPECT_NE(first, fourth);
    EXPECT_FALSE(user.Visible("cmd_Stop") || user.Visible("pgs_Save"));
    EXPECT_TRUE(user.Enabled("cmd_Run"));
    script_.path = std::nullopt;
    Trigger(screen, "mnu_SavePictures");  // cancelled: nothing is told
}

TEST_F(Animate_Screen, pictures_that_cannot_be_written_are_told_once)
{
    const QTemporaryDir folder;
    script_.path = folder.filePath("none/turn.png").toStdString();
    frm_Animate screen;
    const Driver user(screen);
    const testing::Watched_Boxes boxes(Answer::OK);
    Trigger(screen, "mnu_SavePictures");
    ASSERT_EQ(boxes.texts.size(), 1U);
    const std::string start =
        "The picture could not be saved as\n" + folder.filePath("none/turn_000.png").toStdString() + "\n";
    EXPECT_TRUE(boxes.texts[0].starts_with(start) && boxes.texts[0].size() > start.size()) << boxes.texts[0];
    EXPECT_TRUE(user.Enabled("cmd_Run"));
}

TEST_F(Animate_Screen, saving_shows_its_progress_and_can_be_stopped)
{
    const QTemporaryDir folder;
    script_.path = folder.filePath("turn.png").toStdString();
    frm_Animate screen;
    const Driver user(screen);
    QTimer press;
    int pressed = 0;
    QObject::connect(&press, &QTimer::timeout, [&] {
        if (user.Find<QProgressBar>("pgs_Save").value() < 3)
            return;
        ++pressed;
        EXPECT_TRUE(user.Visible("cmd_Stop") && user.Visible("pgs_Save"));
        for (const char* const name : {"cmd_Run", "cmd_Step", "cmd_Done", "cmd_Back", "cmd_Redraw"})
            EXPECT_FALSE(user.Enabled(name)) << name;
        for (const char* const name : {"mnu_SavePictures", "mnu_plus", "mnu_profile", "mnu_Undo"})
            EXPECT_FALSE(screen.findChild<QAction*>(name)->isEnabled()) << name;
        user.Press("cmd_Stop");
        press.stop();
    });
    press.start(1);
    const testing::Watched_Boxes boxes(Answer::OK);
    Trigger(screen, "mnu_SavePictures");
    ASSERT_EQ(boxes.texts.size(), 1U);
    EXPECT_EQ(pressed, 1);
    const auto written = QDir(folder.path()).entryList(QDir::Files).size();
    EXPECT_GE(written, 3);
    EXPECT_LT(written, 72);
    EXPECT_TRUE(boxes.texts[0].starts_with("Stopped: " + std::to_string(written) + " of 72 pictures of one turn"));
}

TEST_F(Animate_Screen, the_buttons_of_the_foot)
{
    frm_Animate screen;
    const Driver user(screen);
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    f_.Skip_Profile = true;
    user.Press("cmd_Back");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(screen.result(), QDialog::Rejected);
    EXPECT_FALSE(f_.Skip_Profile);
}

TEST_F(Animate_Screen, back_gives_back_what_was_before_and_next_keeps_it)
{
    const std::uint64_t before = Key_of(design);
    const double zoom = c_.Zoom_Factor;
    screens::frm_HomeScreen home("");
    const Driver user(home);
    const auto open = [&](const std::function<void(const Driver&, QDialog&)>& work) {
        const testing::Modals modals([&](QDialog& screen) {
            EXPECT_EQ(screen.objectName(), "frm_Animate");
            const Driver animation(screen);
            work(animation, screen);
        });
        user.Press("cmd_Draw");
    };
    open([&](const Driver& animation, QDialog& screen) {
        animation.Fill("txt_Prime", "120");
        animation.Press(Element("Opt_Surface", 1));
        animation.Press(Element("opt_Show", 2));
        screen.findChild<QAction*>("mnu_plus")->trigger();
        animation.Type("txt_Offset", "4");
        animation.Press("cmd_Back");
    });
    EXPECT_EQ(Key_of(design), before);
    EXPECT_EQ(c_.Zoom_Factor, zoom);
    EXPECT_FALSE(home.isWindowModified());
    // Looked at and left: nothing to save, nothing to take back.
    open([&](const Driver& animation, QDialog&) {
        animation.Press(Element("opt_Show", 2));
        animation.Press("cmd_Step");
        animation.Press("chk_Cutter");
        script_.Expect(done_box);
        animation.Press("cmd_Done");
    });
    EXPECT_EQ(Key_of(design), before);
    EXPECT_FALSE(c_.Conjugate);
    EXPECT_FALSE(home.isWindowModified());
    EXPECT_FALSE(screens::Desk_History().May_Undo());
    open([&](const Driver& animation, QDialog&) {
        animation.Fill("txt_Prime", "120");
        script_.Expect(done_box);
        animation.Press("cmd_Done");
    });
    EXPECT_EQ(c_.Prime_Rad, 120.0);
    EXPECT_TRUE(f_.Sized);
    EXPECT_TRUE(home.isWindowModified());
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo Prime radius");
}

TEST_F(Animate_Screen, home_opens_it_for_a_sized_radial_cam_alone)
{
    screens::frm_HomeScreen home("");
    const Driver user(home);
    EXPECT_TRUE(user.Enabled("cmd_Draw"));
    c_.Camtype = "Barrel";
    home.Refresh();
    EXPECT_FALSE(user.Enabled("cmd_Draw"));
}

TEST_F(Animate_Screen, escape_is_next_where_there_is_a_cam_and_back_where_there_is_none)
{
    {
        frm_Animate screen;
        const Driver user(screen);
        script_.Expect(done_box);
        QTest::keyClick(&screen, Qt::Key_Escape);
        EXPECT_EQ(screen.result(), QDialog::Accepted);
    }
    frm_Animate screen;
    const Driver user(screen);
    f_.Sized = false;
    QTest::keyClick(&screen, Qt::Key_Escape);
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

/// The last one: the message stays away for the run of the program.
TEST_F(Animate_Screen, z_cancel_keeps_the_message_away)
{
    for (const auto& [answer, again] :
         {std::pair{Answer::OK, true}, std::pair{Answer::Cancel, true}, std::pair{Answer::OK, false}}) {
        frm_Animate screen;
        const Driver user(screen);
        if (again) {
            testing::Expected_Box box = done_box;
            box.answer = answer;
            script_.Expect(box);
        }
        user.Press("cmd_Done");
        EXPECT_EQ(screen.result(), QDialog::Accepted);
    }
}

}  // namespace
}  // namespace lobemax
