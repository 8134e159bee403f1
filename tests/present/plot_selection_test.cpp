// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/plot_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "edit/examples.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using List = std::vector<int>;

class Plot_Selection : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    }
    void TearDown() override { design = {}; }
    static List Picked()
    {
        List picked;
        for (int i = 1; i <= design.plot.Num_Sets; ++i)
            picked.push_back(design.plot.Plot_Vars(i));
        return picked;
    }

    testing::Script script_;
    Flags_Group& f_ = design.flags;
};

TEST_F(Plot_Selection, a_design_with_its_motion_alone_offers_its_curves_and_four_pairs)
{
    EXPECT_EQ(Load_Names(design), (List{1, 2, 3, 4, 17}));
    EXPECT_EQ(Load_Presets(design, style::two_windows), (List{1, 2, 3, 4}));
    EXPECT_EQ(Load_Presets(design, style::four_windows), (List{1}));
    EXPECT_TRUE(Load_Presets(design, style::polar).empty());
    EXPECT_TRUE(Load_Presets(design, style::single_window).empty());
    EXPECT_TRUE(Composite_Choices(design).empty());
}

TEST_F(Plot_Selection, the_curves_of_the_motion_are_listed_before_it_is_calculated)
{
    f_.Calculated = false;
    EXPECT_EQ(Load_Names(design), (List{1, 2, 3, 4, 17}));
}

TEST_F(Plot_Selection, each_rung_adds_its_variables)
{
    const auto added = [](Flag& flag) {
        const List before = Load_Names(design);
        flag = true;
        const List after = Load_Names(design);
        flag = false;
        List more;
        for (const int v : after)
            if (std::find(before.begin(), before.end(), v) == before.end())
                more.push_back(v);
        return more;
    };
    EXPECT_EQ(added(f_.Sized), (List{5, 6, 9, 10, 11, 12, 13, 14, 34, 35, 36, 37, 38, 39, 40, 41, 46, 47}));
    EXPECT_EQ(added(f_.Dynamicflag), (List{7, 8, 15, 16, 45}));
    EXPECT_EQ(added(f_.Polydyne_Calc), (List{22, 23, 24, 27}));
    EXPECT_EQ(added(f_.Modelflag), (List{29, 30, 31, 32, 33}));
    EXPECT_EQ(added(f_.Stressflag), (List{42, 43}));
    EXPECT_EQ(added(f_.Ext_Force_Calc), (List{44}));
    EXPECT_EQ(added(f_.FFT_Done), (List{18, 19, 20, 21}));
    EXPECT_EQ(added(f_.CompCam_Calc), (List{48, 49}));
    design.cam.Camtype = "Barrel";
    EXPECT_EQ(added(f_.Sized), (List{5, 6, 12, 11, 37, 36}));
    EXPECT_EQ(added(f_.Polydyne_Calc), List{});
}

TEST_F(Plot_Selection, the_names_of_a_list_follow_the_kind_of_cam)
{
    f_.Sized = true;
    const auto names = [](const char* kind) {
        design.cam.Camtype = kind;
        Set_Units(design);
        std::vector<std::string> texts;
        for (const int v : Load_Names(design))
            if (v > 8 && v != 17)
                texts.push_back(design.plot.Var_Name(v));
        return texts;
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(names("Barrel"), (Texts{"Lambda", "Z-coord", "Lambda_Surf", "Z_Surface"}));
    EXPECT_EQ(names("Linear"), (Texts{"Lambda", "Z-coord", "Lambda_Surf", "Z_Surface"}));
    EXPECT_EQ(Variable_Picked(design, Load_Names(design), "Lambda"), 12);
    EXPECT_EQ(names("Radial"), (Texts{"X_coord", "Y_coord", "Radius", "Theta", "X_vs_key", "Y_vs_key", "Radius_key",
                                      "Theta_key", "X_Surface", "Y_Surface", "X_Surf_key", "Y_Surf_key", "X_Cutter",
                                      "Y_Cutter", "World_X", "World_Y"}));
}

TEST_F(Plot_Selection, a_table_offers_no_coordinates_and_displacement_on_the_screen_only)
{
    f_.Sized = f_.Polydyne_Calc = true;
    design.run.Selecting_Print = true;
    EXPECT_EQ(Load_Names(design, true), (List{1, 2, 3, 4, 17, 5, 6}));
    EXPECT_EQ(Load_Names(design, false), (List{2, 3, 4, 17, 5, 6}));
    EXPECT_EQ(Load_Presets(design, style::four_windows), (List{2, 3, 4, 15, 16}));
}

TEST_F(Plot_Selection, each_rung_adds_its_presets)
{
    f_.Sized = true;
    EXPECT_EQ(Load_Presets(design, style::two_windows), (List{1, 2, 3, 4, 5, 6, 7, 8, 23, 24, 25}));
    EXPECT_EQ(Load_Presets(design, style::four_windows), (List{1, 2, 3, 4, 15, 16}));
    f_.Dynamicflag = f_.FFT_Done = f_.Modelflag = f_.Polydyne_Calc = f_.Stressflag = f_.CompCam_Calc = true;
    EXPECT_EQ(Load_Presets(design, style::two_windows),
              (List{1,  2,  3,  4,  5,  6,  7,  8,  23, 24, 25, 9,  10, 11, 12,
                    13, 14, 15, 16, 17, 21, 22, 27, 28, 29, 18, 19, 20, 26, 30}));
    EXPECT_EQ(Load_Presets(design, style::four_windows),
              (List{1, 2, 3, 4, 15, 16, 5, 6, 7, 8, 14, 9, 10, 11, 12, 13, 17}));
    EXPECT_EQ(Load_Presets(design, style::polar), (List{1}));
    design.cam.Camtype = "Linear";
    EXPECT_EQ(Load_Presets(design, style::two_windows), (List{1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                                              15, 16, 17, 21, 22, 27, 28, 29, 18, 19, 20, 26, 30}));
    EXPECT_EQ(Load_Presets(design, style::four_windows), (List{1, 2, 5, 6, 7, 8, 14, 9, 10, 11, 17}));
    design.run.Selecting_Print = true;
    EXPECT_EQ(Load_Presets(design, style::four_windows), (List{2, 7, 17}));
}

TEST_F(Plot_Selection, a_preset_has_the_variables_of_its_words)
{
    EXPECT_EQ(Presets_of_Style(style::two_windows).size(), 30U);
    EXPECT_EQ(Presets_of_Style(style::four_windows).size(), 17U);
    for (const auto& preset : Presets_of_Style(style::two_windows))
        EXPECT_EQ(preset.variables.size(), 2U) << preset.text;
    for (const auto& preset : Presets_of_Style(style::four_windows))
        EXPECT_EQ(preset.variables.size(), 4U) << preset.text;
    Choose_Preset2(design, style::two_windows, 6);
    EXPECT_EQ(Picked(), (List{11, 12}));
    Choose_Preset2(design, style::four_windows, 4);
    EXPECT_EQ(Picked(), (List{13, 14, 34, 35}));
    Choose_Preset2(design, style::four_windows, 12);
    EXPECT_EQ(Picked(), (List{9, 10, 25, 26}));
    Choose_Preset2(design, style::four_windows, 13);
    EXPECT_EQ(Picked(), (List{11, 12, 27, 28}));
    EXPECT_THROW(Choose_Preset2(design, style::two_windows, 31), Fault);
    EXPECT_THROW(Choose_Preset2(design, style::single_window, 1), Fault);
}

TEST_F(Plot_Selection, the_segment_list_marks_dwells_polynomials_and_splines)
{
    EXPECT_EQ(Load_SegmentList(design), (std::vector<std::string>{"All", "1  R", "2  [D]", "3  F", "4  [D]"}));
    Pick_Segment(design, "3  F");
    EXPECT_EQ(design.plot.Segment_Pick, "3  F");
    EXPECT_EQ(design.plot.Plot_First, 180.0);
    EXPECT_EQ(design.plot.Plot_Last, 270.0);
    Pick_Segment(design, "5");
    EXPECT_EQ(design.plot.Segment_Pick, "All");
    EXPECT_EQ(design.plot.Plot_First, 0.0);
    EXPECT_EQ(design.plot.Plot_Last, 360.0);
}

TEST_F(Plot_Selection, a_style_asks_for_its_count_of_functions)
{
    EXPECT_TRUE(Select_OK(design, style::single_window, List{3}));
    EXPECT_FALSE(Select_OK(design, style::single_window, List{0, 0, 0, 0}));
    EXPECT_FALSE(Select_OK(design, style::two_windows, List{1}));
    EXPECT_TRUE(Select_OK(design, style::two_windows, List{1, 0, 3}));
    EXPECT_EQ(Picked(), (List{1, 3}));
    EXPECT_FALSE(Select_OK(design, style::four_windows, List{1, 2, 3}));
    EXPECT_EQ(Style_Caption(4), "Polar Plot - One to Four Functions");
    EXPECT_THROW(Functions_of_Style(5), Fault);
}

/// Text and variables of every preset, as the user reads them.
struct Expected_Preset {
    const char* text;
    List variables;
};

void Expect_Presets(int plot_style, const std::vector<Expected_Preset>& expected)
{
    const std::vector<Plot_Preset>& presets = Presets_of_Style(plot_style);
    ASSERT_EQ(presets.size(), expected.size());
    for (std::size_t n = 0; n < expected.size(); ++n) {
        EXPECT_EQ(presets[n].text, expected[n].text) << "entry " << n + 1;
        EXPECT_EQ(presets[n].variables, expected[n].variables) << expected[n].text;
    }
}

TEST_F(Plot_Selection, the_two_window_presets_are_thirty_and_stand_for_their_words)
{
    const std::vector<Expected_Preset> expected{
        {"Displacement and Velocity", {1, 2}},
        {"Velocity and Acceleration", {2, 3}},
        {"Acceleration and Displacement", {3, 1}},
        {"Jerk and Acceleration", {4, 3}},
        {"Pressure Angle and Radius of Curvature", {5, 6}},
        {"R-Theta cam coordinates", {11, 12}},
        {"Cam Profile: X-Y cam follower coordinates versus Cam Zero", {9, 10}},
        {"Cam Profile: X-Y cam follower coordinates versus Machine Zero", {13, 14}},
        {"Follower Force and Total Torque", {7, 8}},
        {"Total Torque and Flywheel Torque", {8, 16}},
        {"Friction Torque and Total Torque", {15, 8}},
        {"Magnitude and Phase Components of Current FFT", {20, 21}},
        {"Real and Imaginary Components of Current FFT", {18, 19}},
        {"Dynamic Response:  X and X dot", {30, 31}},
        {"Dynamic Response:  X and X double dot", {30, 32}},
        {"Dynamic Response:  X dot and X double dot", {31, 32}},
        {"Dynamic Error:  X and Error Function (S - X)", {30, 29}},
        {"Polydyne cam:  Displacements of Cam and Follower", {22, 30}},
        {"Polydyne cam:  Velocities of Cam and Follower", {23, 31}},
        {"Polydyne cam:  Accelerations of Cam and Follower", {24, 32}},
        {"Kinetostatic Force and Dynamic Force", {7, 33}},
        {"Kinematic Acceleration and Dynamic Acceleration", {3, 32}},
        {"Cam Surface: X-Y cam surface coordinates versus Cam Zero", {36, 37}},
        {"Cam Surface: X-Y cam surface coordinates versus Machine Zero", {38, 39}},
        {"Cam Cutter: X-Y cam cutter CL coordinates versus Cam Zero", {40, 41}},
        {"Stresses: Normal and shear stress in cam and follower", {42, 43}},
        {"Kinetostatic force and Dynamic force on cam and follower", {7, 33}},
        {"Kinematic Acceleration and Dynamic Acceleration of follower", {3, 32}},
        {"Kinematic Velocity and Dynamic Velocity of follower", {2, 31}},
        {"Primary Torque and Compensating Torque", {8, 48}},
    };
    Expect_Presets(style::two_windows, expected);
}

TEST_F(Plot_Selection, the_four_window_presets_are_seventeen_and_stand_for_their_words)
{
    const std::vector<Expected_Preset> expected{
        {"Displacement, Velocity, Acceleration, Jerk", {1, 2, 3, 4}},
        {"Press Angle, Velocity, Radius of Curvature, Acceleration", {5, 2, 6, 3}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Cam zero", {9, 10, 11, 12}},
        {"Cam Profile: X-coord, Y-coord, Radius, Theta versus Machine Zero", {13, 14, 34, 35}},
        {"Displacement, Force, Velocity, Torque", {1, 7, 2, 8}},
        {"Force, Torque, Friction Torque, Flywheel Torque", {7, 8, 15, 16}},
        {"Current FFT:  Real, Imag, Magnitude, Phase", {18, 19, 20, 21}},
        {"Dynamic Response: (S - X), X, X dot, X double dot", {29, 30, 31, 32}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Cam Veloc, Cam Accel", {30, 22, 23, 24}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Veloc, Cam Veloc", {30, 22, 31, 23}},
        {"Polydyne Cam: Fol Disp X, Cam Disp S, Fol Accel, Cam Accel", {30, 22, 32, 24}},
        {"Polydyne Cam: Polydyne Cam profile X, Y, Kinematic Cam profile X, Y", {9, 10, 25, 26}},
        {"Polydyne Cam: Polydyne Cam profile R, T, Kinematic Cam profile R, T", {11, 12, 27, 28}},
        {"Acceleration, x ddot, Kinetostatic Force and Dynamic Force", {3, 32, 7, 33}},
        {"Cam Surface: X-surf, Y-surf, X-Cutter, Y-Cutter versus Cam zero", {36, 37, 40, 41}},
        {"Cam Surface: X-surf, Y-surf, Radius, Theta versus Machine Zero", {38, 39, 34, 35}},
        {"Torque, Compensating Torque, Net Torque, Force", {8, 48, 49, 7}},
    };
    Expect_Presets(style::four_windows, expected);
}

TEST_F(Plot_Selection, the_polar_preset_compares_two_profiles)
{
    Expect_Presets(style::polar, {{"Polydyne Cam profile vs. Kinematic Cam profile", {54, 55}}});
    EXPECT_TRUE(Presets_of_Style(style::single_window).empty());
}

TEST_F(Plot_Selection, styles_have_their_captions)
{
    EXPECT_EQ(Style_Caption(1), "Single Window - One to Four Functions");
    EXPECT_EQ(Style_Caption(2), "Two Windows - Two Functions");
    EXPECT_EQ(Style_Caption(3), "Four Windows - Four Functions");
    EXPECT_EQ(Style_Caption(4), "Polar Plot - One to Four Functions");
    EXPECT_THROW(Style_Caption(0), Fault);
    EXPECT_THROW(Style_Caption(5), Fault);
}

TEST_F(Plot_Selection, what_no_list_and_no_preset_has_is_not_offered)
{
    EXPECT_TRUE(Is_Offered(design, 1));
    EXPECT_FALSE(Is_Offered(design, 5));
    EXPECT_FALSE(Is_Offered(design, 54));
    EXPECT_FALSE(Is_Offered(design, 20));
    f_.Sized = true;
    EXPECT_TRUE(Is_Offered(design, 5));
    EXPECT_TRUE(Is_Offered(design, 54));
    EXPECT_FALSE(Is_Offered(design, 55));
    EXPECT_FALSE(Is_Offered(design, 28));
    f_.Polydyne_Calc = true;
    EXPECT_TRUE(Is_Offered(design, 55));
    EXPECT_TRUE(Is_Offered(design, 28));  // only a preset has it
    f_.FFT_Done = true;
    EXPECT_TRUE(Is_Offered(design, 20));
    EXPECT_FALSE(Is_Offered(design, 50));
}

TEST_F(Plot_Selection, harmonics_share_no_window_with_functions_of_the_angle)
{
    EXPECT_EQ(Why_Not_Together(1, List{1, 2, 3}), "");
    EXPECT_EQ(Why_Not_Together(1, List{18, 19, 0, 0}), "");
    EXPECT_EQ(Why_Not_Together(1, List{18, 1}),
              "The harmonics of a Fourier transform and functions of the cam angle cannot share a window.");
    EXPECT_EQ(Why_Not_Together(2, List{18, 1}), "");  // a window each
    EXPECT_EQ(Why_Not_Together(3, List{1, 2, 20, 21}), "");
    EXPECT_EQ(Why_Not_Together(4, List{21}),
              "A polar plot goes over the cam angle: the harmonics of a Fourier transform have no place in it.");
}

TEST_F(Plot_Selection, a_name_is_looked_up_in_its_list)
{
    f_.Modelflag = true;
    EXPECT_EQ(Variable_Picked(design, Load_Names(design), "S - X"), 29);  // 53 has the same name
    EXPECT_EQ(Variable_Picked(design, Load_Names(design), "X "), 30);
    EXPECT_FALSE(Variable_Picked(design, Load_Names(design), "Torque"));
}

TEST_F(Plot_Selection, closed_curves_are_offered_for_a_sized_radial_cam)
{
    f_.Sized = true;
    EXPECT_EQ(Composite_Choices(design), (List{54, 56, 57, 58, 59}));
    f_.Polydyne_Calc = true;
    EXPECT_EQ(Composite_Choices(design), (List{54, 55, 56, 57, 58, 59}));
    f_.Sized = false;
    EXPECT_EQ(Composite_Choices(design), List{});
    f_.Sized = true;
    design.cam.Camtype = "Barrel";
    EXPECT_EQ(Composite_Choices(design), List{});
}

}  // namespace
}  // namespace lobemax
