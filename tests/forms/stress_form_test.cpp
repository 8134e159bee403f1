// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/stress_form.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Data;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

const Expected_Box positive{"This value must be positive and nonzero.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box radius{"You must specify a positive, nonzero crown radius", Buttons::OK, Symbol::exclamation};

class Stress_Fields : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        for (int i = 0; i <= 360; ++i) {
            design.results.CalcData(var::Angle, i) = i;
            design.results.CalcData(var::Force, i) = 500.0;
            design.results.CalcData(var::Rho, i) = 40.0;
        }
        design.flags.Dynamicflag = true;
        form_ = Opening_Stress_Form(design);
    }
    void TearDown() override { design = {}; }

    Stress_Form form_;
    Stress_Field refused_ = Stress_Field::Length;
    Script script_;
    Dynamics_Group& d_ = design.dynamics;
};

TEST_F(Stress_Fields, steel_has_its_texts_in_each_unit_system_and_format)
{
    const std::vector<std::pair<std::string, std::string>> steel{
        {"3E7", "3E7"}, {"208.4E3", "208,4E3"}, {"206.8E9", "206,8E9"}, {"", ""}, {"206.8E3", "206,8E3"}};
    for (int units = 1; units <= 5; ++units) {
        design.identity.WhichUnit = units;
        design.identity.Number_Format = "USA";
        EXPECT_EQ(Steel_Modulus(design), steel[static_cast<std::size_t>(units - 1)].first);
        EXPECT_EQ(Steel_Ratio(design), "0.28");
        design.identity.Number_Format = "Europe";
        EXPECT_EQ(Steel_Modulus(design), steel[static_cast<std::size_t>(units - 1)].second);
        EXPECT_EQ(Steel_Ratio(design), "0,28");
    }
}

TEST_F(Stress_Fields, the_screen_opens_with_steel_or_what_is_stored)
{
    EXPECT_EQ(form_.txt_Cam_E, "206.8E3");
    EXPECT_TRUE(form_.cam_steel && form_.follower_steel);
    EXPECT_EQ(form_.txt_Length, "25");
    EXPECT_EQ(form_.txt_Crownrad, "1500");
    EXPECT_EQ(form_.txt_Weight, "0");
    d_.Youngs_modulus(2) = 70000.0;
    d_.Poissons_ratio(2) = 0.33;
    d_.Roller_type = 2;
    const Stress_Form stored = Opening_Stress_Form(design);
    EXPECT_FALSE(stored.follower_steel);
    EXPECT_EQ(stored.txt_Fol_E, "70000");
    EXPECT_EQ(stored.txt_Fol_v, "0.33");
    EXPECT_TRUE(stored.crowned);
}

TEST_F(Stress_Fields, labels_follow_the_follower_and_the_type_of_roller)
{
    EXPECT_EQ(Labels_of_Stress(design, false, false).lbl_foltype, "Please specify type.");
    Stress_Labels labels = Labels_of_Stress(design, true, false);
    EXPECT_EQ(labels.lbl_follower, "Roller");
    EXPECT_EQ(labels.lbl_foltype, "Please specify contact length as the smaller of cam face width or roller length.");
    EXPECT_TRUE(labels.length_enabled && !labels.crown_enabled && labels.roller_options);
    labels = Labels_of_Stress(design, true, true);
    EXPECT_EQ(labels.lbl_foltype, "Please specify the follower crown radius.");
    EXPECT_TRUE(!labels.length_enabled && labels.crown_enabled);
    design.cam.Followtype = 2;
    labels = Labels_of_Stress(design, true, true);
    EXPECT_EQ(labels.lbl_follower, "Flat-Faced");
    EXPECT_EQ(labels.lbl_foltype, "Contact length is the smaller of cam face width or roller length.");
    EXPECT_TRUE(labels.length_enabled && !labels.roller_options);
}

TEST_F(Stress_Fields, after_the_calculation_both_members_carry_the_followers_ratio)
{
    form_.txt_Cam_V = "0.25";
    form_.txt_Fol_v = "0.33";
    ASSERT_TRUE(Calc_Stress(design, form_, refused_));
    EXPECT_EQ(d_.Poissons_ratio(1), Single(0.33));  // meant
    EXPECT_EQ(d_.Poissons_ratio(2), Single(0.33));
    EXPECT_TRUE(design.flags.Stressflag);
    EXPECT_LT(Data(42, 10), 0.0);
}

TEST_F(Stress_Fields, the_stresses_are_those_of_two_members_with_the_followers_ratio)
{
    design.identity.Number_Format = "Europe";
    form_.txt_Cam_E = "200000,5";
    form_.txt_Cam_V = "0,1";
    form_.txt_Fol_E = "100000";
    form_.txt_Fol_v = "0,4";
    form_.txt_Length = "20";
    design.cam.Followtype = 2;
    ASSERT_TRUE(Calc_Stress(design, form_, refused_));
    // docs/theory.md, (125): p0 = sqrt(W / (pi l m R)), with 0.4 for both ratios: meant.
    const double compliance = (1 - 0.4 * 0.4) / 200000.5 + (1 - 0.4 * 0.4) / 100000.0;
    const double p0 = std::sqrt(500.0 / 20.0 / compliance / (3.14159265358979 * 40.0));
    EXPECT_NEAR(Data(42, 10), -p0, p0 * 1e-6);
    EXPECT_NEAR(Data(43, 10), 0.304 * p0, p0 * 1e-6);
}

TEST_F(Stress_Fields, all_fields_are_stored_before_the_first_is_refused)
{
    form_.txt_Cam_V = "0.25";
    form_.txt_Fol_E = "-70000";
    form_.txt_Fol_v = "-1";
    form_.txt_Length = "33";
    form_.txt_Crownrad = "444";
    form_.txt_Weight = "55";
    form_.crowned = true;
    script_.Expect(positive);  // one box alone: the follower's modulus comes before its ratio
    EXPECT_FALSE(Apply_Stress_Fields(design, form_, refused_));
    EXPECT_EQ(refused_, Stress_Field::Fol_E);
    EXPECT_EQ(d_.Youngs_modulus(2), -70000.0);
    EXPECT_EQ(d_.Poissons_ratio(1), 0.25);
    EXPECT_EQ(d_.Poissons_ratio(2), -1.0);
    EXPECT_EQ(d_.Roller_type, 2);
    EXPECT_EQ(d_.Roller_length, 33.0);
    EXPECT_EQ(d_.Crown_radius, 444.0);
    EXPECT_EQ(d_.Follower_Weight, 0.0);  // taken last
}

TEST_F(Stress_Fields, a_flat_face_keeps_the_stored_type_of_roller)
{
    d_.Roller_type = 1;
    design.cam.Followtype = 2;
    form_.crowned = true;
    form_.txt_Crownrad = "0";  // hidden, and of no account
    EXPECT_TRUE(Apply_Stress_Fields(design, form_, refused_));
    EXPECT_EQ(d_.Roller_type, 1);
}

TEST_F(Stress_Fields, each_value_that_is_not_positive_stops_the_calculation_at_its_field)
{
    struct Case {
        std::string Stress_Form::*field;
        Stress_Field refused;
    };
    for (const auto& [field, refused] :
         {Case{&Stress_Form::txt_Cam_E, Stress_Field::Cam_E}, Case{&Stress_Form::txt_Cam_V, Stress_Field::Cam_V},
          Case{&Stress_Form::txt_Fol_E, Stress_Field::Fol_E}, Case{&Stress_Form::txt_Fol_v, Stress_Field::Fol_v},
          Case{&Stress_Form::txt_Length, Stress_Field::Length}})
        for (const char* text : {"0", "-1", "", "abc"}) {
            Stress_Form form = form_;
            form.*field = text;
            script_.Expect(positive);
            EXPECT_FALSE(Calc_Stress(design, form, refused_)) << text;
            EXPECT_EQ(refused_, refused);
            EXPECT_FALSE(design.flags.Stressflag);
        }
    Stress_Form form = form_;
    form.crowned = true;
    form.txt_Crownrad = "0";
    script_.Expect(positive);
    EXPECT_FALSE(Calc_Stress(design, form, refused_));
    EXPECT_EQ(refused_, Stress_Field::Crownrad);
    form.txt_Crownrad = "600";
    form.txt_Length = "0";  // of no account for a crowned roller
    EXPECT_TRUE(Calc_Stress(design, form, refused_));
    EXPECT_EQ(d_.Roller_type, 2);
    EXPECT_EQ(d_.Crown_radius, 600.0);
}

TEST_F(Stress_Fields, the_flag_is_set_also_where_the_run_left_early)
{
    design.results.CalcData(var::Force, 0) = 0.0;
    script_.Expect(
        {"Something is wrong. - The follower force is zero at cam angle 0 deg.  Stresses will be larger than "
         "theoretical due to impact.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_TRUE(Calc_Stress(design, form_, refused_));
    EXPECT_TRUE(design.flags.Stressflag);
}

TEST_F(Stress_Fields, edited_fields_are_stored_or_refused_with_their_texts)
{
    Form_Entry entry = Edit_Stress_Field(design, Stress_Field::Cam_E, "70000");
    EXPECT_TRUE(entry.accepted);
    EXPECT_EQ(d_.Youngs_modulus(1), 70000.0);
    EXPECT_TRUE(Edit_Stress_Field(design, Stress_Field::Cam_E, "0").accepted);  // only a negative value is refused here
    for (const auto& [field, text] : std::vector<std::pair<Stress_Field, std::string>>{{Stress_Field::Cam_E, "0.01"},
                                                                                       {Stress_Field::Fol_E, "0.01"},
                                                                                       {Stress_Field::Fol_v, "0.01"},
                                                                                       {Stress_Field::Cam_V, "0.3"}}) {
        script_.Expect(positive);
        entry = Edit_Stress_Field(design, field, "-2");
        EXPECT_FALSE(entry.accepted);
        EXPECT_EQ(entry.text, text);
    }
    for (const Stress_Field field : {Stress_Field::Length, Stress_Field::Crownrad}) {
        script_.Expect(radius);  // the same words for both, on purpose
        EXPECT_FALSE(Edit_Stress_Field(design, field, "0").accepted);
    }
    EXPECT_TRUE(Edit_Stress_Field(design, Stress_Field::Length, "30").accepted);
    EXPECT_EQ(d_.Roller_length, 30.0);
    EXPECT_TRUE(Edit_Stress_Field(design, Stress_Field::Fol_v, "0.3").accepted);
    EXPECT_EQ(d_.Poissons_ratio(2), Single(0.3));
}

TEST_F(Stress_Fields, steel_of_any_unit_system_opens_as_that_of_the_system_in_force)
{
    const std::vector<double> stored{3e7, 208.4e3, 206.8e9, 206.8e3};
    const std::vector<std::string> texts{"3E7", "208.4E3", "206.8E9", "", "206.8E3"};
    for (int units = 1; units <= 5; ++units)
        for (const double modulus : stored) {
            design.identity.WhichUnit = units;
            d_.Youngs_modulus(1) = d_.Youngs_modulus(2) = modulus;
            d_.Poissons_ratio(1) = d_.Poissons_ratio(2) = 0.28;
            Stress_Form form = Opening_Stress_Form(design);
            if (units == 4 && modulus == 206.8e3) {  // typed in centimetres' own MPa: it stays
                EXPECT_FALSE(form.cam_steel || form.follower_steel);
                EXPECT_EQ(form.txt_Cam_E, "206800");
                continue;
            }
            EXPECT_TRUE(form.cam_steel && form.follower_steel) << units << ' ' << modulus;
            EXPECT_EQ(form.txt_Cam_E, texts[static_cast<std::size_t>(units - 1)]);
            EXPECT_EQ(form.txt_Fol_E, form.txt_Cam_E);
            EXPECT_EQ(form.txt_Cam_V, "0.28");
            d_.Poissons_ratio(1) = 0.3;  // another ratio is another material
            d_.Youngs_modulus(2) = modulus * 1.01;
            form = Opening_Stress_Form(design);
            EXPECT_FALSE(form.cam_steel || form.follower_steel) << units << ' ' << modulus;
            EXPECT_EQ(form.txt_Cam_V, "0.3");
        }
}

TEST_F(Stress_Fields, with_a_number_too_large_no_field_is_stored_and_nothing_calculated)
{
    struct Case {
        std::string Stress_Form::*field;
        Stress_Field refused;
    };
    const Dynamics_Group before = d_;
    for (const auto& [field, refused] :
         {Case{&Stress_Form::txt_Cam_E, Stress_Field::Cam_E}, Case{&Stress_Form::txt_Cam_V, Stress_Field::Cam_V},
          Case{&Stress_Form::txt_Fol_E, Stress_Field::Fol_E}, Case{&Stress_Form::txt_Fol_v, Stress_Field::Fol_v},
          Case{&Stress_Form::txt_Length, Stress_Field::Length},
          Case{&Stress_Form::txt_Crownrad, Stress_Field::Crownrad},
          Case{&Stress_Form::txt_Weight, Stress_Field::Weight}}) {
        Stress_Form form = form_;
        form.txt_Length = "33";
        form.*field = "1E40";
        form.crowned = true;
        script_.Expect(Error_Box(6, "Overflow", "Apply_Stress_Fields"));
        EXPECT_FALSE(Calc_Stress(design, form, refused_));
        EXPECT_EQ(refused_, refused);
        EXPECT_EQ(d_.Youngs_modulus(1), before.Youngs_modulus(1));
        EXPECT_EQ(d_.Youngs_modulus(2), before.Youngs_modulus(2));
        EXPECT_EQ(d_.Poissons_ratio(2), before.Poissons_ratio(2));
        EXPECT_EQ(d_.Roller_length, before.Roller_length);
        EXPECT_EQ(d_.Roller_type, before.Roller_type);
        EXPECT_FALSE(design.flags.Stressflag);
        EXPECT_THROW(Edit_Stress_Field(design, refused, "1E40"), Fault);
    }
    EXPECT_EQ(d_.Crown_radius, before.Crown_radius);
    EXPECT_EQ(d_.Follower_Weight, before.Follower_Weight);
}

TEST_F(Stress_Fields, what_32_bits_hold_as_zero_is_not_positive)
{
    form_.txt_Length = "1E-50";
    script_.Expect(positive);
    EXPECT_FALSE(Calc_Stress(design, form_, refused_));
    EXPECT_EQ(refused_, Stress_Field::Length);
    script_.Expect(radius);
    EXPECT_FALSE(Edit_Stress_Field(design, Stress_Field::Crownrad, "1E-50").accepted);
}

TEST_F(Stress_Fields, under_form_closure_the_external_force_joins_the_force_s_amount)
{
    design.cam.Closure = "Form";
    design.flags.Ext_Force_Calc = true;
    d_.Ext_Force_Add = true;
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(var::Force, i) = -500.0;
        design.results.Ext_Force_Table(i) = -380.0;
    }
    ASSERT_TRUE(Calc_Stress(design, form_, refused_));
    const double with = Data(42, 10);  // of |-500| - 380 = 120, not of |-500 - 380|
    d_.Ext_Force_Add = false;
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::Force, i) = 120.0;
    ASSERT_TRUE(Calc_Stress(design, form_, refused_));
    EXPECT_LT(with, 0.0);
    EXPECT_EQ(Data(42, 10), with);
}

TEST_F(Stress_Fields, the_weight_counts)
{
    form_.txt_Weight = "120.5";
    ASSERT_TRUE(Calc_Stress(design, form_, refused_));
    EXPECT_EQ(d_.Follower_Weight, 120.5);
}

TEST_F(Stress_Fields, the_plots_show_the_force_that_counted)
{
    EXPECT_EQ(Stress_Plot_Rows(design), (std::array<int, 4>{7, 6, 42, 43}));
    design.flags.Modelflag = true;
    EXPECT_EQ(Stress_Plot_Rows(design)[0], 33);
}

}  // namespace
}  // namespace lobemax
