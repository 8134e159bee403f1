// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/animate_form.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "camgeom/cam_animation.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;

class Animate_Form_Rules : public ::testing::Test {
protected:
    void SetUp() override
    {
        Make(true);
        form_ = Open_Animation(design);
    }
    void TearDown() override { design = {}; }
    static void Make(bool translating)
    {
        Cam_Maker maker;
        maker.translating = translating;
        maker.Make();
        design.cam.Offset = translating ? 15.0 : 0.0;
        design.cam.Follower_Angle = 30.0;
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Run_Forces(design));
    }
    /// Flags of the paths: follower, cutter, machine zero, surface.
    static std::string Paths()
    {
        std::string shown;
        const Cam_Group& c = design.cam;
        for (const Flag& flag : {c.Show_Follower_Path, c.Show_Cutter_Path, c.Show_Cam_Key, c.Show_Surface})
            shown += flag ? '1' : '0';
        return shown;
    }
    Form_Entry Enter(const char* name, std::string_view text)
    {
        for (const auto& row : Fields_of_Animate())
            if (row.name == name)
                return row.enter(design, form_, text);
        throw std::out_of_range(name);
    }
    Cam_Group& c_ = design.cam;
    Flags_Group& f_ = design.flags;
    Animate_Form form_;
    Design_State view_;
    testing::Script script_;
};

TEST_F(Animate_Form_Rules, the_screen_opens_with_the_primary_cam_its_inner_surface_and_no_path)
{
    c_.Show_Follower_Path = c_.Show_Cutter_Path = c_.Show_Cam_Key = true;
    c_.Show_Surface = false;
    c_.Anim_Step = 77;
    c_.In_Out = 1;
    const std::uint64_t before = Key_of(design);
    form_ = Open_Animation(design);
    EXPECT_EQ(Paths(), "0001");
    EXPECT_EQ(c_.Anim_Step, 0);
    EXPECT_FALSE(form_.conjugate || form_.summary || form_.outer);
    EXPECT_EQ(form_.txt_Prime, "60");
    EXPECT_EQ(form_.txt_Follower, "12");
    EXPECT_EQ(form_.txt_Offset, "15");
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_FALSE(view_.cam.Conjugate);
    EXPECT_EQ(view_.cam.Side_Sign, 1);
    EXPECT_EQ(view_.cam.In_Out, -1);
    EXPECT_EQ(Key_of(design), before);
}

TEST_F(Animate_Form_Rules, the_paths_exclude_each_other_and_the_cam_at_machine_zero_is_seen_alone)
{
    using enum Anim_Path;
    struct {
        Anim_Path path;
        bool ticked;
        const char* shown;
    } const clicks[] = {{follower, true, "1001"},      {cutter, true, "0101"},       {machine_zero, true, "0010"},
                        {machine_zero, false, "0001"}, {machine_zero, true, "0010"}, {follower, true, "1001"},
                        {follower, false, "0001"},     {cutter, true, "0101"},       {cutter, false, "0001"}};
    for (const auto& [path, ticked, shown] : clicks) {
        Choose_Path(design, path, ticked);
        EXPECT_EQ(Paths(), shown);
        EXPECT_EQ(Present_Path(design), ticked ? path : none);
    }
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
}

TEST_F(Animate_Form_Rules, a_change_of_surface_clears_all_paths_and_shows_the_surface)
{
    for (const Anim_Path path : {Anim_Path::follower, Anim_Path::cutter, Anim_Path::machine_zero})
        for (const bool outer : {true, false}) {
            Choose_Path(design, path, true);
            Choose_Surface(design, form_, outer);
            EXPECT_EQ(Paths(), "0001");
            EXPECT_EQ(c_.In_Out, outer ? 1 : -1);
            EXPECT_FALSE(f_.Sized);
            ASSERT_TRUE(Size_Animated(design));
            // The surface lies a roller's radius inside or outside of the path of the centre.
            const double center = std::hypot(Data(9, 0), Data(10, 0));
            const double surface = std::hypot(Data(36, 0), Data(37, 0));
            EXPECT_EQ(surface > center, outer);
        }
}

TEST_F(Animate_Form_Rules, a_surface_that_is_not_the_design_s_is_shown_and_told_but_not_stored)
{
    EXPECT_EQ(Surface_Note(design, form_), "");
    Choose_Surface(design, form_, true);
    ASSERT_TRUE(Size_Animated(design));
    const std::uint64_t outer = Key_of(design);
    form_ = Open_Animation(design);
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_LT(std::hypot(view_.results.CalcData(36, 0), view_.results.CalcData(37, 0)),
              std::hypot(Data(9, 0), Data(10, 0)));
    EXPECT_EQ(Key_of(design), outer);
    EXPECT_EQ(c_.In_Out, 1);
    EXPECT_EQ(Surface_Note(design, form_), "The design keeps its outer surface until you choose one here.");
    form_.outer = true;
    c_.In_Out = -1;
    EXPECT_EQ(Surface_Note(design, form_), "The design keeps its inner surface until you choose one here.");
}

TEST_F(Animate_Form_Rules, the_conjugate_stands_opposite_with_its_offset_on_the_other_side_and_back)
{
    const std::uint64_t before = Key_of(design);
    ASSERT_TRUE(Make_View(design, form_, view_));
    const double primary = view_.results.CalcData(9, 100);
    Choose_Show(form_, 2);
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_TRUE(view_.cam.Conjugate);
    EXPECT_EQ(view_.cam.Side_Sign, -1);
    EXPECT_EQ(view_.cam.Follower_Angle, 210.0);
    EXPECT_EQ(view_.cam.Offset, -15.0);
    // Its follower stands at the lift when the primary one is down.
    EXPECT_NEAR(view_.results.CalcData(11, 0), std::hypot(std::sqrt(60.0 * 60.0 + 15.0 * 15.0) + 20.0, 15.0), 1e-3);
    Choose_Show(form_, 1);
    EXPECT_TRUE(form_.summary && form_.conjugate);  // the summary of the cam that was shown
    Choose_Show(form_, 0);
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_FALSE(view_.cam.Conjugate);
    EXPECT_EQ(view_.cam.Side_Sign, 1);
    EXPECT_EQ(view_.cam.Follower_Angle, 30.0);
    EXPECT_EQ(view_.cam.Offset, 15.0);
    EXPECT_EQ(view_.results.CalcData(9, 100), primary);
    EXPECT_EQ(Key_of(design), before);
    EXPECT_TRUE(f_.Dynamicflag);
    EXPECT_FALSE(c_.Conjugate);
}

TEST_F(Animate_Form_Rules, a_conjugate_left_in_the_design_opens_as_the_primary_cam)
{
    const std::vector<Single> rows(design.results.CalcData.Points(9).begin(), design.results.CalcData.Points(9).end());
    ASSERT_TRUE(Make_View(design, form_, view_));
    c_.Conjugate = true;
    c_.Side_Sign = -1;
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_FALSE(view_.cam.Conjugate);
    for (int i = 0; i <= 360; ++i)
        ASSERT_EQ(view_.results.CalcData(9, i), rows[static_cast<std::size_t>(i)]);
}

TEST_F(Animate_Form_Rules, of_an_arm_the_offset_stays)
{
    Make(false);
    c_.Offset = 3.0;  // of no meaning for a roller
    form_ = Open_Animation(design);
    Choose_Show(form_, 2);
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_EQ(view_.cam.Offset, 3.0);
    EXPECT_EQ(view_.cam.Follower_Angle, 210.0);
}

TEST_F(Animate_Form_Rules, a_changed_size_is_that_of_both_cams)
{
    Choose_Show(form_, 2);
    ASSERT_TRUE(Enter("txt_Offset", "10").accepted);
    EXPECT_FALSE(f_.Sized || f_.Dynamicflag);
    ASSERT_TRUE(Size_Animated(design));
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_EQ(view_.cam.Offset, -10.0);
    Choose_Show(form_, 0);
    ASSERT_TRUE(Make_View(design, form_, view_));
    EXPECT_EQ(view_.cam.Offset, 10.0);
    EXPECT_TRUE(f_.Sized);
}

TEST_F(Animate_Form_Rules, a_conjugate_that_cannot_be_is_told)
{
    Choose_Show(form_, 2);
    script_.Expect({"Incompatible dimensions - check your data", Buttons::OK, Symbol::exclamation});
    c_.Translating = false;
    c_.ArmX = c_.ArmY = 0.0;  // the pivot stands at the cam's centre
    EXPECT_FALSE(Make_View(design, form_, view_));
    EXPECT_FALSE(view_.flags.Sized);
    EXPECT_TRUE(f_.Sized);
}

TEST_F(Animate_Form_Rules, the_sizes_have_the_checks_and_messages_of_the_sizing_screen)
{
    struct {
        const char* field;
        const char* typed;
        testing::Expected_Box box;
        const char* shown;
    } const refused[] = {
        {"txt_Prime",
         "0",
         {"Prime radius cannot be zero or negative or less than the offset", Buttons::OK, Symbol::exclamation},
         "1"},
        {"txt_Prime",
         "15",
         {"Prime radius cannot be zero or negative or less than the offset", Buttons::OK, Symbol::exclamation},
         "1"},
        {"txt_Follower", "-1", {"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation}, ""},
        {"txt_Follower",
         "60",
         {"Something is wrong\n\nThe follower radius is greater than the prime circle radius\n\nPlease check your "
          "data.",
          Buttons::OK, Symbol::exclamation},
         ""},
        {"txt_Offset",
         "-60",
         {"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
          Buttons::OK, Symbol::none, Answer::OK, "LOBEMAX"},
         "0"}};
    const std::uint64_t before = Key_of(design);
    for (const auto& [field, typed, box, shown] : refused) {
        script_.Expect(box);
        const Form_Entry entry = Enter(field, typed);
        EXPECT_FALSE(entry.accepted) << field;
        EXPECT_EQ(entry.text, shown) << field;
    }
    EXPECT_EQ(Key_of(design), before);
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
}

TEST_F(Animate_Form_Rules, a_value_typed_again_takes_nothing_away)
{
    ASSERT_TRUE(Enter("txt_Prime", "60").accepted);
    ASSERT_TRUE(Size_Animated(design));
    Choose_Turning(design, c_.Rotflag > 0);
    ASSERT_TRUE(Size_Animated(design));
    EXPECT_TRUE(f_.Dynamicflag);
}

TEST_F(Animate_Form_Rules, the_direction_sizes_the_cam_again)
{
    const double y = Data(10, 50);
    const double phi = Data(var::Phi, 50);
    Choose_Turning(design, c_.Rotflag < 0);
    ASSERT_TRUE(Size_Animated(design));
    EXPECT_NEAR(Data(10, 50), -y, 1e-4);  // the mirror of it
    EXPECT_EQ(Data(var::Phi, 50), phi);
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
}

TEST_F(Animate_Form_Rules, a_prime_circle_within_the_roller_is_told_once_and_leaves_no_cam)
{
    c_.Offset = 0.0;
    ASSERT_TRUE(Enter("txt_Prime", "10").accepted);
    script_.Expect(
        {"Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Size_Animated(design));
    EXPECT_FALSE(Make_View(design, form_, view_));
    const Animate_Panels panels = Panels_of_Animate(design, form_);
    EXPECT_FALSE(panels.motion || panels.done);
    ASSERT_TRUE(Enter("txt_Prime", "50").accepted);
    EXPECT_TRUE(Size_Animated(design));
    EXPECT_TRUE(Panels_of_Animate(design, form_).done);
}

TEST_F(Animate_Form_Rules, what_is_shown_and_open_goes_with_follower_and_choice)
{
    Animate_Panels panels = Panels_of_Animate(design, form_);
    EXPECT_TRUE(panels.picture && panels.motion && panels.follower_entry && panels.offset_entry && panels.done);
    EXPECT_FALSE(panels.charts);
    Choose_Show(form_, 1);
    panels = Panels_of_Animate(design, form_);
    EXPECT_TRUE(panels.charts && panels.done);
    EXPECT_FALSE(panels.picture || panels.motion);
    c_.Translating = false;
    EXPECT_FALSE(Panels_of_Animate(design, form_).offset_entry);
    c_.Followtype = 2;
    EXPECT_TRUE(Panels_of_Animate(design, form_).offset_entry);  // of the face from its pivot
    EXPECT_FALSE(Panels_of_Animate(design, form_).follower_entry);
}

TEST_F(Animate_Form_Rules, the_profile_is_named)
{
    EXPECT_EQ(Profile_Name(design), "Primary cam, inner surface");
    c_.Conjugate = true;
    c_.In_Out = 1;
    EXPECT_EQ(Profile_Name(design), "Conjugate cam, outer surface");
    c_.Show_Cam_Key = true;
    c_.Followtype = 2;
    EXPECT_EQ(Profile_Name(design), "Conjugate cam, at machine zero");
}

TEST_F(Animate_Form_Rules, the_summary_tells_each_extreme_with_its_angle_or_a_word)
{
    c_.Phi_Max = 31.498;
    c_.Phi_Max_Angle = 116.0;
    c_.Phi_Min = -9.2293;
    c_.Phi_Min_Angle = 61.5;
    c_.Rho_Min_Pos_Text = " 63.73 ";
    c_.Rho_Min_Pos_Angle = 12.0;
    c_.Rho_Min_Neg_Text = c_.Rho_Max_Neg_Text = "None";
    c_.Rho_Max_Pos_Text = "+ Infinity";
    c_.Rho_Max_Pos_Angle = 81.0;
    Animate_Figures figures = Figures_of_Animate(design);
    EXPECT_EQ(figures.lbl_Pamax, "31.50 at 116 deg");
    EXPECT_EQ(figures.lbl_Pamin, "-9.23 at 61.5 deg");
    EXPECT_EQ(figures.lbl_Rhomin, "63.73 at 12 deg");
    EXPECT_EQ(figures.lbl_Rhomax, "None");
    EXPECT_EQ(figures.lbl_Rholargest_pos, "+ Infinity at 81 deg");
    EXPECT_EQ(figures.lbl_Rholargest_neg, "None");
    EXPECT_FALSE(figures.clipped);
    design.results.CalcData(var::Rho, 5) = -600.0;  // ten prime radii
    EXPECT_TRUE(Figures_of_Animate(design).clipped);
    f_.Sized = false;
    figures = Figures_of_Animate(design);
    EXPECT_EQ(figures.lbl_Pamax + figures.lbl_Rhomin, "");
}

TEST_F(Animate_Form_Rules, plus_multiplies_the_zoom_minus_divides_it_and_normal_makes_it_one)
{
    Zoom_Animation(design, 1);
    EXPECT_EQ(c_.Zoom_Factor, Single(0.8));  // a smaller window: the picture comes nearer
    Zoom_Animation(design, -1);
    EXPECT_EQ(c_.Zoom_Factor, 1.0);
    Zoom_Animation(design, -2);
    EXPECT_NEAR(c_.Zoom_Factor, 1.5625, 1e-6);
    Zoom_Animation(design, 0);
    EXPECT_EQ(c_.Zoom_Factor, 1.0);
    for (int k = 0; k < 100; ++k)
        Zoom_Animation(design, 1);
    EXPECT_NEAR(c_.Zoom_Factor, 0.02, 0.005);
    for (int k = 0; k < 200; ++k)
        Zoom_Animation(design, -1);
    EXPECT_NEAR(c_.Zoom_Factor, 45.0, 6.0);
    c_.Zoom_Factor = 1e30;  // as a file may have it
    Open_Animation(design);
    EXPECT_EQ(c_.Zoom_Factor, 1.0);
    EXPECT_TRUE(f_.Sized && f_.Dynamicflag);
}

TEST_F(Animate_Form_Rules, settings_reach_the_view_without_a_calculation)
{
    ASSERT_TRUE(Make_View(design, form_, view_));
    Choose_Path(design, Anim_Path::machine_zero, true);
    Zoom_Animation(design, 1);
    c_.Anim_Step = 9;
    Follow_Settings(design, view_);
    EXPECT_TRUE(view_.cam.Show_Cam_Key && !view_.cam.Show_Surface && !view_.cam.Show_Cutter_Path);
    EXPECT_EQ(view_.cam.Zoom_Factor, c_.Zoom_Factor);
    EXPECT_EQ(view_.cam.Anim_Step, 9);
}

TEST_F(Animate_Form_Rules, a_speed_is_stored_and_an_angle_shown)
{
    Choose_Wait(design, 5);
    EXPECT_EQ(c_.Anim_Wait, 100000);
    EXPECT_EQ(Theta_Text(design, 0), "0");
    EXPECT_EQ(Theta_Text(design, 45), "45");
}

TEST_F(Animate_Form_Rules, its_messages)
{
    EXPECT_EQ(Animate_Done_Message(),
              "To export the follower coordinates, \n"
              "use the menu pulldown File/Export/Profile,\n"
              "or print desired data to disk with the Print button.\n"
              "\n"
              "To suppress this message on further calculations, hit Cancel.");
}

TEST_F(Animate_Form_Rules, pictures_come_every_point_or_every_so_many_degrees)
{
    const std::vector<Picture_Stride> strides = Picture_Strides(design);
    EXPECT_EQ(strides,
              (std::vector<Picture_Stride>{
                  {"Every point", 1}, {"2 deg", 2}, {"5 deg", 5}, {"10 deg", 10}, {"15 deg", 15}, {"30 deg", 30}}));
    EXPECT_EQ(Usual_Picture_Stride(design), 2);
    Cam_Maker maker;
    maker.step = 0.125;
    maker.Make();
    EXPECT_EQ(Picture_Strides(design)[1], (Picture_Stride{"1 deg", 8}));
    EXPECT_EQ(Picture_Strides(design)[static_cast<std::size_t>(Usual_Picture_Stride(design))].points, 40);
}

TEST_F(Animate_Form_Rules, pictures_are_numbered_in_their_order)
{
    EXPECT_EQ(Picture_Path("/a/frame.png", 0, 72), "/a/frame_000.png");
    EXPECT_EQ(Picture_Path("/a/turn.PNG", 71, 72), "/a/turn_071.png");
    EXPECT_EQ(Picture_Path("/a/v1.2", 7, 1000), "/a/v1.2_007.png");
    EXPECT_EQ(Picture_Path("frame.png", 7, 2880), "frame_0007.png");
}

class Picture_Series : public Animate_Form_Rules {
protected:
    void SetUp() override
    {
        Animate_Form_Rules::SetUp();
        folder_ = std::filesystem::temp_directory_path() / ("lobemax_series_" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder_);
        name_ = (folder_ / "frame.png").string();
    }
    void TearDown() override
    {
        std::filesystem::remove_all(folder_);
        Animate_Form_Rules::TearDown();
    }
    std::string Path(int number) const { return Picture_Path(name_, number, 12); }
    int Save(int fails_at = -1, int stops_after = -1)
    {
        return Save_Pictures(
            design, name_, 30,
            [&](int point, const std::string& path, std::string& why) {
                written_.push_back(point);
                if (point == fails_at) {
                    why = "Disk full";
                    return false;
                }
                std::ofstream(path) << point;
                return true;
            },
            [&](int done, int count) {
                EXPECT_EQ(count, 12);
                return done == stops_after;
            });
    }
    std::filesystem::path folder_;
    std::string name_;
    std::vector<int> written_;
};

TEST_F(Picture_Series, one_turn_is_written_and_told)
{
    script_.Expect({"12 pictures of one turn were saved, from\n" + Path(0) + " to\n" + Path(11)});
    EXPECT_EQ(Save(), 12);
    EXPECT_EQ(written_, (std::vector<int>{0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330}));
    EXPECT_TRUE(std::filesystem::exists(Path(11)));
    EXPECT_FALSE(std::filesystem::exists(name_));
}

TEST_F(Picture_Series, stop_ends_it_and_what_is_written_stays)
{
    script_.Expect({"Stopped: 4 of 12 pictures of one turn were saved, from\n" + Path(0) + " to\n" + Path(3)});
    EXPECT_EQ(Save(-1, 4), 4);
    EXPECT_EQ(written_.size(), 4U);
    EXPECT_TRUE(std::filesystem::exists(Path(3)));
}

TEST_F(Picture_Series, the_first_picture_that_cannot_be_written_ends_it)
{
    script_.Expect({"The picture could not be saved as\n" + Path(2) + "\nDisk full", Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Save(60), 2);
    EXPECT_EQ(written_.size(), 3U);
}

TEST_F(Picture_Series, older_pictures_are_replaced_when_the_user_says_so_alone)
{
    std::ofstream(Path(5)) << "older";
    const std::string question =
        "1 of the pictures\n" + Path(0) + " to\n" + Path(11) + "\nare there already.  Do you want to replace them?";
    script_.Expect({question, Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel});
    EXPECT_EQ(Save(), 0);
    EXPECT_TRUE(written_.empty());
    script_.Expect({question, Buttons::OK_Cancel, Symbol::exclamation, Answer::OK});
    script_.Expect({"12 pictures of one turn were saved, from\n" + Path(0) + " to\n" + Path(11)});
    EXPECT_EQ(Save(), 12);
}

}  // namespace
}  // namespace lobemax
