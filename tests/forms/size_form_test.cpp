// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/size_form.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/text.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Expected_Box;
using testing::Script;

const Expected_Box prime{"Prime radius cannot be zero or negative or less than the offset", Buttons::OK,
                         Symbol::exclamation};
const Expected_Box incompatible{"Incompatible dimensions - check your data", Buttons::OK, Symbol::exclamation};

Expected_Box Missed(double D)
{
    return {
        "The roller follower arm misses the cam entirely\n"
        "with your current choice of arm center location. \n"
        "\n"
        "Please adjust the arm radius to be about\n" +
            Trim(FNRoundStr(design, D, 2)) + " mm for this arm center location.",
        Buttons::OK, Symbol::exclamation};
}

class Sizing_Fields : public ::testing::Test {
protected:
    void SetUp() override { Cam_Maker().Make(); }
    void TearDown() override { design = {}; }
    static void Make_Arm()
    {
        Cam_Maker maker;
        maker.translating = false;
        maker.Make();
    }
    Cam_Group& c_ = design.cam;
    Flags_Group& f_ = design.flags;
    Script script_;
};

TEST_F(Sizing_Fields, the_form_reads_back_as_it_was_made)
{
    c_.Offset = 7.25;
    c_.Shift_Angle = 33.5;
    c_.Top_Bot = -1;
    const Size_Form form = Size_Form_of_Design(design);
    EXPECT_EQ(form.txt_Prime, "60");
    EXPECT_EQ(form.txt_Offset, "7.25");
    EXPECT_EQ(form.txt_ShiftAng, "33.5");
    EXPECT_TRUE(form.translating && form.roller && !form.ccw && form.inner_track);
    c_.Camtype = "Linear";
    c_.Prime_Rad = 100.0 / PI2;
    EXPECT_EQ(Size_Form_of_Design(design).txt_Prime, "100");
    c_.Camtype = "Barrel";
    c_.Barrel_Type = "Ribbed";
    EXPECT_EQ(Size_Form_of_Design(design).cam, Cam_Choice::Axial_Ribbed);
}

TEST_F(Sizing_Fields, sizing_sets_its_flag_and_takes_away_what_rested_on_the_old_size)
{
    f_.Dynamicflag = f_.Stressflag = true;
    EXPECT_TRUE(Run_Size(design));
    EXPECT_TRUE(f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag || f_.Stressflag || f_.Model_Saved);
    EXPECT_NE(Data(9, 100), 0.0);
    EXPECT_NE(Data(var::Rho, 100), 0.0);
    EXPECT_EQ(c_.Prime_Rad, 60.0);
    EXPECT_EQ(c_.Follow_Rad, 12.0);
}

TEST_F(Sizing_Fields, a_prime_radius_that_is_none_is_refused)
{
    for (const char* text : {"0", "-3", "abc", ""}) {
        script_.Expect(prime);
        const Form_Entry entry = Enter_Prime(design, text);
        EXPECT_FALSE(entry.accepted);
        EXPECT_EQ(entry.text, "1");
    }
    c_.Offset = 50.0;
    script_.Expect(prime);
    EXPECT_FALSE(Enter_Prime(design, "50").accepted);
    EXPECT_TRUE(Enter_Prime(design, "50.5").accepted);
    EXPECT_EQ(c_.Prime_Rad, 50.5);
    c_.Camtype = "Barrel";
    EXPECT_TRUE(Enter_Prime(design, "40").accepted);  // an axial cam has no offset
}

TEST_F(Sizing_Fields, the_button_with_a_refused_prime_radius_goes_on_with_the_old_one)
{
    Size_Form form = Size_Form_of_Design(design);
    form.txt_Prime = "0";
    script_.Expect(prime);
    EXPECT_TRUE(Calc_Size(design, form, true));
    EXPECT_EQ(form.txt_Prime, "1");
    EXPECT_EQ(c_.Prime_Rad, 60.0);
}

TEST_F(Sizing_Fields, the_length_of_a_linear_cam_is_one_turn)
{
    c_.Camtype = "Linear";
    EXPECT_TRUE(Enter_Prime(design, "300").accepted);
    EXPECT_EQ(c_.Prime_Rad, Single(300.0 / PI2));
    const double before = c_.Prime_Rad;
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(Enter_Prime(design, Size_Form_of_Design(design).txt_Prime).accepted);
    EXPECT_EQ(c_.Prime_Rad, before);  // no drift by going back and forth
}

TEST_F(Sizing_Fields, a_roller_must_be_smaller_than_the_prime_circle_and_not_negative)
{
    const Expected_Box large{
        "Something is wrong\n\nThe follower radius is greater than the prime circle radius\n\nPlease check your data.",
        Buttons::OK, Symbol::exclamation};
    script_.Expect(large);
    Form_Entry entry = Enter_Roller(design, "60");
    EXPECT_FALSE(entry.accepted);
    EXPECT_EQ(entry.text, "");
    EXPECT_EQ(c_.Follow_Rad, 12.0);
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Enter_Roller(design, "-1").accepted);
    EXPECT_TRUE(Enter_Roller(design, "0").accepted);
    c_.Camtype = "Linear";
    EXPECT_TRUE(Enter_Roller(design, "70").accepted);  // a linear cam has no prime circle
}

TEST_F(Sizing_Fields, a_negative_cutter_is_refused_and_gets_the_focus)
{
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    const Form_Entry entry = Enter_Cutter(design, "-2");
    EXPECT_FALSE(entry.accepted);
    EXPECT_TRUE(entry.takes_focus);
    EXPECT_EQ(entry.text, "");
    EXPECT_TRUE(Enter_Cutter(design, "0").accepted);
}

TEST_F(Sizing_Fields, an_offset_must_be_smaller_than_the_prime_radius_either_way)
{
    const Expected_Box refusal{
        "Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity", Buttons::OK,
        Symbol::none, Answer::OK, "LOBEMAX"};
    c_.Offset = 3.0;
    for (const char* text : {"60", "-60", "100"}) {
        script_.Expect(refusal);
        EXPECT_EQ(Enter_Offset(design, text).text, "0");
        EXPECT_EQ(c_.Offset, 3.0);
    }
    EXPECT_TRUE(Enter_Offset(design, "-59.9").accepted);
    EXPECT_EQ(c_.Offset, Single(-59.9));
}

TEST_F(Sizing_Fields, an_arm_must_have_a_length_and_meet_the_cam)
{
    Make_Arm();
    script_.Expect({"Arm radius cannot be zero. Please reenter.", Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Enter_Arm_Radius(design, "0.001").text, "80");
    const double D = std::hypot(90.0, 30.0);
    for (const char* text : {"30", "160"}) {
        script_.Expect(Missed(D));
        const Form_Entry entry = Enter_Arm_Radius(design, text);
        EXPECT_FALSE(entry.accepted);
        EXPECT_EQ(entry.text, Trim(FNRoundStr(design, D, 2)));
        EXPECT_EQ(c_.ArmRad, 80.0);
    }
    EXPECT_TRUE(Enter_Arm_Radius(design, "100").accepted);
    Enter_ArmX(design, "200");
    script_.Expect(Missed(std::hypot(200.0, 30.0)));
    EXPECT_FALSE(Enter_Arm_Radius(design, "100").accepted);  // the pivot has moved away
    c_.Camtype = "Linear";
    EXPECT_TRUE(Enter_Arm_Radius(design, "100").accepted);
}

TEST_F(Sizing_Fields, the_button_tells_of_an_arm_that_misses_and_of_the_dimensions)
{
    Make_Arm();
    Size_Form form = Size_Form_of_Design(design);
    form.txt_ArmRadius = "20";
    script_.Expect(Missed(std::hypot(90.0, 30.0)));
    script_.Expect(incompatible);
    EXPECT_FALSE(Calc_Size(design, form, false));
    EXPECT_FALSE(f_.Sized);
    EXPECT_FALSE(f_.Calc_Error);
    EXPECT_EQ(form.txt_ArmRadius, "94.87");
    EXPECT_EQ(c_.ArmRad, 80.0);
}

TEST_F(Sizing_Fields, an_impossible_triangle_does_not_pass_in_silence)
{
    Make_Arm();
    Size_Form form = Size_Form_of_Design(design);
    form.txt_ArmRadius = "20";
    script_.Expect(incompatible);
    EXPECT_FALSE(Calc_Size(design, form, true));  // with Autocalc on the handlers would have made the test
    EXPECT_FALSE(f_.Sized);
}

TEST_F(Sizing_Fields, a_fault_leaves_the_cam_unsized)
{
    c_.Offset = 70.0;
    f_.Sized = true;
    Size_Form form = Size_Form_of_Design(design);
    form.txt_Offset = "70";
    script_.Expect(prime);
    script_.Expect({"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
                    Buttons::OK, Symbol::none, Answer::OK, "LOBEMAX"});
    script_.Expect(testing::Error_Box(5, "Invalid argument", "Calc_Phi"));
    script_.Expect(incompatible);
    EXPECT_FALSE(Calc_Size(design, form, false));
    EXPECT_FALSE(f_.Sized);
}

TEST_F(Sizing_Fields, the_start_angle_has_its_point)
{
    EXPECT_TRUE(Enter_Shift_Angle(design, "90.4").accepted);
    EXPECT_EQ(c_.Shift_Angle, Single(90.4));
    EXPECT_EQ(c_.Shift_Points, 90);
    ASSERT_TRUE(Put(design, "Deltatheta", 0.25));
    EXPECT_EQ(c_.Shift_Points, 362);  // 361.6 of 1440
}

TEST_F(Sizing_Fields, the_rotation_button_alone_gives_the_track_the_other_sign)
{
    Choose_Rotation(design, true, true);
    EXPECT_EQ(c_.Rotflag, 1);
    EXPECT_EQ(c_.Top_Bot, -1);  // meant
    Size_Form form = Size_Form_of_Design(design);
    form.inner_track = true;
    ASSERT_TRUE(Calc_Size(design, form, true));
    EXPECT_EQ(c_.Top_Bot, 1);
    Choose_Track(design, false);
    EXPECT_EQ(c_.Top_Bot, -1);
    Choose_Rotation(design, false, false);
    EXPECT_EQ(c_.Rotflag, -1);
    EXPECT_EQ(c_.Top_Bot, -1);
}

TEST_F(Sizing_Fields, a_flat_face_takes_offset_and_axial_cam_away_and_tells_its_base_radius)
{
    c_.Camtype = "Barrel";
    c_.Offset = 5.0;
    design.linkage.Drive_End_Effector = true;
    f_.Skip_Profile = true;  // silent here; the text is tested with the calculation
    Choose_Follower(design, false);
    EXPECT_EQ(c_.Followtype, 2);
    EXPECT_EQ(c_.Offset, 0.0);
    EXPECT_EQ(c_.Camtype, "Radial");
    EXPECT_FALSE(design.linkage.Drive_End_Effector);
    f_.Skip_Profile = false;
    EXPECT_TRUE(Run_Size(design));
    EXPECT_EQ(c_.Follow_Rad, 0.0);
    EXPECT_EQ(c_.Phi_Max, 0.0);
}

TEST_F(Sizing_Fields, the_kind_of_cam_changes_words_panels_and_names)
{
    Choose_Cam(design, Cam_Choice::Linear);
    EXPECT_EQ(c_.Camtype, "Linear");
    Size_Panels p = Set_Cam_Type_Panels(design);
    EXPECT_EQ(p.fra_Prime, "Cam Length");
    EXPECT_EQ(p.opt_Rotate[0], "-->>");
    EXPECT_EQ(p.opt_Rotate[1], "<<--");
    EXPECT_EQ(p.fra_Rotate, "Cam Direction");
    EXPECT_EQ(p.lbl_Yinit, "z");
    EXPECT_FALSE(p.flat_enabled || p.translate_panel || p.arm_frame || p.info_panel);
    EXPECT_TRUE(p.track_frame && p.arm_y_enabled);
    EXPECT_EQ(design.plot.Var_Name(12), "Lambda");
    EXPECT_EQ(design.plot.Var_Symbol(37), "Lm_Srf");
    c_.Translating = false;
    EXPECT_FALSE(Set_Cam_Type_Panels(design).arm_y_enabled);

    Choose_Cam(design, Cam_Choice::Axial_Ribbed);
    EXPECT_EQ(c_.Barrel_Type, "Ribbed");
    p = Set_Cam_Type_Panels(design);
    EXPECT_EQ(p.fra_Prime, "Prime Radius");
    EXPECT_EQ(p.opt_Rotate[0], "Ccw");
    EXPECT_EQ(p.fra_Rotate, "Cam Rotation");
    EXPECT_TRUE(p.arm_frame && p.track_frame && p.oscillate_panel);
    EXPECT_EQ(design.plot.Var_Name(11), "Z-coord");
    EXPECT_EQ(design.plot.Var_Name(40), "Z_Cutter");

    Choose_Cam(design, Cam_Choice::Radial);
    c_.Translating = true;
    p = Set_Cam_Type_Panels(design);
    EXPECT_EQ(p.lbl_Yinit, "y");
    EXPECT_TRUE(p.flat_enabled && p.translate_panel && p.info_panel && !p.track_frame && !p.oscillate_panel);
    EXPECT_EQ(design.plot.Var_Name(11), "Radius");
    EXPECT_EQ(design.plot.Var_Symbol(41), "Y_Ctr");
    EXPECT_EQ(c_.Barrel_Type, "");
}

TEST_F(Sizing_Fields, an_axial_cam_has_a_roller_and_no_offset)
{
    Size_Form form = Size_Form_of_Design(design);
    form.cam = Cam_Choice::Axial_Groove;
    form.roller = false;
    form.txt_Offset = "4";
    ASSERT_TRUE(Calc_Size(design, form, false));
    EXPECT_EQ(c_.Followtype, 1);
    EXPECT_TRUE(form.roller);
    EXPECT_EQ(c_.Offset, 0.0);
    EXPECT_EQ(c_.Barrel_Type, "Grooved");
}

TEST_F(Sizing_Fields, a_cam_that_is_not_drawn_says_where_its_data_are)
{
    EXPECT_EQ(Axial_Cam_Message(design), "");
    c_.Camtype = "Barrel";
    EXPECT_EQ(Axial_Cam_Message(design),
              "The Barrel cam data for pressure angle, radius of\n"
              "curvature, and cam profile has been calculated. \n\n"
              "The  Barrel-cam profile is not drawn on screen by this program,\n"
              "but it is stored in memory for the output of cutter coordinates.\n\n"
              "Note that the roller centerline coordinates of a Barrel cam are\n"
              "the same as its displacement diagram's R-theta data.\n\n"
              "To export the cutter coordinates, use the menu pulldown:\n"
              "                       File/Export/Profile.\n\n"
              "To suppress this message on further calculations, hit Cancel.");
}

TEST_F(Sizing_Fields, help_carries_the_design_advice)
{
    EXPECT_EQ(Roller_Help(),
              "The radius of the roller should be less than the \n"
              "minimum radius of curvature by a comfortable margin.\n"
              "A factor of 2 is sufficient, and 1.5 is minimal.");
    EXPECT_EQ(Arm_Help(),
              "These data define the location of the cam arm pivot and its rotation.\n"
              "If you change x and y such that the arm radius falls off the cam,\n"
              "It will automatically change the arm radius to find the cam.");
    EXPECT_EQ(Cam_Surface_Help(),
              "Selects the cam surface that you want to create.\n"
              "If you want a track cam, you will have to select each in turn,\n"
              "calculate the surface, export it from the Home screen, return to this screen\n"
              "and calculate the other surface, then export it as a separate file.");
}

TEST_F(Sizing_Fields, all_configurations_can_be_sized)
{
    for (const bool translating : {true, false})
        for (const Cam_Choice cam :
             {Cam_Choice::Radial, Cam_Choice::Axial_Groove, Cam_Choice::Linear, Cam_Choice::Axial_Ribbed})
            for (const bool ccw : {true, false})
                for (const int base : {1, 2, 3}) {
                    Cam_Maker maker;
                    maker.translating = translating;
                    maker.time_base = base;
                    maker.lift = 10.0;
                    maker.Make();
                    Size_Form form = Size_Form_of_Design(design);
                    form.cam = cam;
                    form.ccw = ccw;
                    EXPECT_TRUE(Calc_Size(design, form, false));
                }
}

TEST_F(Sizing_Fields, the_pivot_of_an_axial_arm_stands_level_with_the_track)
{
    for (const Cam_Choice cam : {Cam_Choice::Axial_Groove, Cam_Choice::Linear, Cam_Choice::Axial_Ribbed}) {
        Make_Arm();
        Choose_Cam(design, cam);
        EXPECT_FALSE(Set_Cam_Type_Panels(design).arm_y_enabled);
        EXPECT_EQ(Size_Form_of_Design(design).txt_CLy, "0");
        Make_Arm();
        Size_Form form = Size_Form_of_Design(design);
        form.cam = cam;
        form.txt_CLy = "30";
        EXPECT_TRUE(Calc_Size(design, form, false));
        EXPECT_EQ(form.txt_CLy, "0");
        EXPECT_EQ(c_.ArmY, 0.0);
    }
    Make_Arm();
    EXPECT_TRUE(Set_Cam_Type_Panels(design).arm_y_enabled);
    EXPECT_EQ(c_.ArmY, 30.0);
}

TEST_F(Sizing_Fields, all_profile_rows_are_renamed_by_the_kind_of_cam)
{
    constexpr int rows[]{11, 12, 36, 37, 40, 41};
    const char* const axial[][2]{{"Z-coord", "Z"},          {"Lambda", "Lm"},      {"Z_Surface", "Z_Srf"},
                                 {"Lambda_Surf", "Lm_Srf"}, {"Z_Cutter", "Z_Ctr"}, {"Lambda_Ctr", "Lm_Ctr"}};
    const char* const radial[][2]{{"Radius", "R"},        {"Theta", "Th"},       {"X_Surface", "X_Srf"},
                                  {"Y_Surface", "Y_Srf"}, {"X_Cutter", "X_Ctr"}, {"Y_Cutter", "Y_Ctr"}};
    for (const Cam_Choice kind : {Cam_Choice::Linear, Cam_Choice::Axial_Groove, Cam_Choice::Radial}) {
        Choose_Cam(design, kind);
        const auto& words = c_.Camtype == "Radial" ? radial : axial;
        for (int k = 0; k < 6; ++k) {
            EXPECT_EQ(design.plot.Var_Name(rows[k]), words[k][0]);
            EXPECT_EQ(design.plot.Var_Symbol(rows[k]), words[k][1]);
        }
    }
}

TEST_F(Sizing_Fields, a_flat_face_brings_the_names_of_a_radial_cam)
{
    Choose_Cam(design, Cam_Choice::Axial_Groove);
    ASSERT_EQ(design.plot.Var_Name(var::Lambda), "Lambda");
    c_.Translating = false;  // no smallest base radius to tell
    Choose_Follower(design, false);
    EXPECT_EQ(c_.Camtype, "Radial");
    EXPECT_EQ(design.plot.Var_Name(var::Theta), "Theta");
    EXPECT_EQ(design.plot.Var_Unit(var::Theta), "mm");
}

TEST_F(Sizing_Fields, switching_to_a_flat_face_tells_its_smallest_base_radius)
{
    double least = 0.0;
    int where = 0;
    for (int i = 0; i <= 360; ++i)
        if (Data(var::A, i) < least) {
            least = Data(var::A, i);
            where = i;
        }
    script_.Expect({"The minimum base circle radius for no negative Radius of Curvature is " +
                    Trim(FNRoundStr(design, -least / 144.0 - Data(var::S, where), 2)) + "  mm"});
    Choose_Follower(design, false);
    Choose_Follower(design, true);  // back again: silent
    EXPECT_EQ(c_.Followtype, 1);
    Make_Arm();
    Choose_Follower(design, false);  // on an arm: silent
    EXPECT_EQ(c_.Followtype, 2);
}

TEST_F(Sizing_Fields, an_axial_arm_of_no_length_leaves_the_cam_unsized)
{
    Make_Arm();
    Size_Form form = Size_Form_of_Design(design);
    form.cam = Cam_Choice::Linear;  // no arm test
    form.txt_ArmRadius = "0";
    script_.Expect(incompatible);  // Phi has told already, Rho is not begun
    f_.Sized = true;
    EXPECT_FALSE(Calc_Size(design, form, false));
    EXPECT_FALSE(f_.Sized);
    EXPECT_FALSE(f_.Calc_Error);
}

TEST_F(Sizing_Fields, numbers_are_read_by_the_number_format)
{
    design.identity.Number_Format = "Europe";
    EXPECT_TRUE(Enter_Follower_Angle(design, "12,5").accepted);
    EXPECT_EQ(c_.Follower_Angle, 12.5);
    EXPECT_EQ(Size_Form_of_Design(design).txt_folwrangle, "12,5");
}

TEST_F(Sizing_Fields, a_number_steps_by_one_in_its_second_figure)
{
    EXPECT_EQ(Step_Number(design, "70", -1), "69");
    EXPECT_EQ(Step_Number(design, "100", 1), "110");
    EXPECT_EQ(Step_Number(design, "100", -1), "90");
    EXPECT_EQ(Step_Number(design, "18.75", 1), "20");  // onto the grid of its steps
    EXPECT_EQ(Step_Number(design, "0.05", 10), "0.06");
    EXPECT_EQ(Step_Number(design, "-3", 1), "-2.9");
    EXPECT_EQ(Step_Number(design, "0", -1), "-1");
    EXPECT_EQ(Step_Number(design, "", 10), "10");
    EXPECT_THROW(Step_Number(design, "3e38", 10), Fault);
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Step_Number(design, "2,5", 1), "2,6");
}

TEST_F(Sizing_Fields, figures_and_start_are_told_in_the_length_unit)
{
    c_.Offset = 11.0;
    ASSERT_TRUE(Run_Size(design));
    const Size_Texts texts = Texts_of_Size(design);
    EXPECT_NEAR(std::stod(texts.lbl_Pamax), c_.Phi_Max, 0.005);
    EXPECT_NEAR(std::stod(texts.lbl_Pamin), c_.Phi_Min, 0.005);
    EXPECT_EQ(texts.lbl_Rhomin, Trim(c_.Rho_Min_Pos_Text));
    EXPECT_EQ(texts.lbl_Rhomax, "None");
    // The roller centre is on the prime circle, the offset to the side; a clockwise cam has it above the axis.
    EXPECT_EQ(texts.pnl_info, "At cam zero  x 58.98   y 11.00   base circle 48.00 mm");
    c_.ArmX = 90.0;
    c_.ArmY = 120.0;
    EXPECT_EQ(Texts_of_Size(design).lbl_CL, "150.00");
}

TEST_F(Sizing_Fields, a_linear_cam_explains_itself_until_cancelled)
{
    EXPECT_EQ(Linear_Cam_Message(), Linear_Help() + "\n\nTo suppress this message on further choices, hit Cancel.");
}

}  // namespace
}  // namespace lobemax
