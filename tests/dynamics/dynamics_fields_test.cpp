// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/dynamics_fields.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "camgeom/sizing.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Expected_Box;
using testing::Script;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box zeta{"Zeta must be between 0 and 1.  Please redo", Buttons::OK, Symbol::exclamation};
const Expected_Box friction{"Friction cannot be zero or negative.  Please redo.", Buttons::OK, Symbol::exclamation};
const Expected_Box fluctuation{" Coefficient of fluctuation must be between zero and one - Try .05 ", Buttons::OK,
                               Symbol::none};

class Dynamics_Fields : public ::testing::Test {
protected:
    void SetUp() override
    {
        Cam_Maker().Make();
        ASSERT_TRUE(Calc_Phi(1));
    }
    void TearDown() override { design = {}; }
    Dynamics_Group& d_ = design.dynamics;
    Script script_;
};

TEST_F(Dynamics_Fields, a_new_design_has_its_defaults_by_unit_system)
{
    struct Row {
        double mass, spring, preload;
    };
    const std::array rows{Row{0.04, 75, 25}, Row{0.48, 900, 300}, Row{4, 1000, 100}, Row{4, 1000, 100},
                          Row{4, 1000, 100}};
    for (int units = 1; units <= 5; ++units) {
        Start_Services services;
        services.read_preferences = [units] { design.identity.WhichUnit = units; };
        ASSERT_TRUE(Sub_Main("", services));
        const Row& row = rows[static_cast<std::size_t>(units - 1)];
        EXPECT_EQ(d_.Mass, Single(row.mass));
        EXPECT_EQ(d_.Return_Spring_Rate, row.spring);
        EXPECT_EQ(d_.Preload, row.preload);
        EXPECT_EQ(d_.Comp_Mass, Single(row.mass) / 2);
        EXPECT_EQ(d_.Comp_Spring_Rate, row.spring * 2);
        EXPECT_EQ(d_.Comp_Preload, row.preload);
        EXPECT_EQ(d_.Zeta_Initial, Single(0.05));
        EXPECT_EQ(d_.Bearing_Radius, 1.0);
        EXPECT_EQ(d_.Mu_of_Shaft, Single(0.01));
        EXPECT_EQ(d_.Mu_of_Follower, Single(0.01));
        EXPECT_EQ(d_.Coeff_of_Fluctuation, Single(0.05));
        EXPECT_EQ(d_.Follower_Weight, 0.0);
    }
}

TEST_F(Dynamics_Fields, the_screen_opens_with_the_designs_values_in_its_number_format)
{
    Dynamics_Form form = Opening_Dynamics_Form();
    EXPECT_EQ(form.txt_Mass, "4");
    EXPECT_EQ(form.txt_Spring, "1000");
    EXPECT_EQ(form.txt_Preload, "100");
    EXPECT_EQ(form.txt_Zeta, "0.05");
    EXPECT_EQ(form.txt_Journal, "2");  // the diameter
    EXPECT_EQ(form.txt_Folfrict, "0.01");
    EXPECT_TRUE(form.force_closed && form.start_fresh);
    design.identity.Number_Format = "Europe";
    form = Opening_Dynamics_Form();
    EXPECT_EQ(form.txt_Zeta, "0,05");
    EXPECT_EQ(form.txt_Jnlfrict, "0,01");
}

TEST_F(Dynamics_Fields, a_compensating_cam_shows_its_own_train)
{
    design.flags.CompCam_Calc = true;
    const Dynamics_Form form = Opening_Dynamics_Form();
    EXPECT_EQ(form.txt_Mass, "2");
    EXPECT_EQ(form.txt_Spring, "2000");
    EXPECT_TRUE(Labels_of_Dynamics(true, "1").compcam_enabled);
}

TEST_F(Dynamics_Fields, a_vibration_model_lends_its_damping)
{
    design.flags.Modelflag = true;
    d_.Zeta(1) = 0.2;
    d_.Zeta(2) = 0.3;
    d_.Model_Type = 3;
    EXPECT_EQ(Opening_Dynamics_Form().txt_Zeta, "0.2");
    d_.Model_Type = 5;
    EXPECT_EQ(Opening_Dynamics_Form().txt_Zeta, "0.3");
    d_.Model_Type = 1;
    EXPECT_EQ(Opening_Dynamics_Form().txt_Zeta, "0.05");
}

TEST_F(Dynamics_Fields, a_flat_face_is_closed_by_a_spring)
{
    EXPECT_TRUE(Labels_of_Dynamics(true, "1").form_closure_enabled);
    design.cam.Followtype = 2;
    design.cam.Closure = "Form";
    EXPECT_TRUE(Opening_Dynamics_Form().force_closed);
    EXPECT_FALSE(Labels_of_Dynamics(true, "1").form_closure_enabled);
}

TEST_F(Dynamics_Fields, labels_have_the_units_and_what_is_open)
{
    Dynamics_Labels labels = Labels_of_Dynamics(true, "0");
    EXPECT_EQ(labels.mass, "kg");
    EXPECT_EQ(labels.spring, "N/m");
    EXPECT_EQ(labels.damping, "N-s/m");
    EXPECT_EQ(labels.length, "mm");
    EXPECT_TRUE(labels.damping_enabled && labels.spring_frames);
    EXPECT_FALSE(labels.external_enabled || labels.compcam_enabled);
    labels = Labels_of_Dynamics(false, "12");
    EXPECT_FALSE(labels.damping_enabled || labels.spring_frames);
    design.identity.WhichUnit = 1;
    EXPECT_EQ(Labels_of_Dynamics(true, "1").spring, "lb/in");
    design.flags.Ext_Force_Calc = true;
    EXPECT_TRUE(Labels_of_Dynamics(true, "1").external_enabled);
}

TEST_F(Dynamics_Fields, accepted_entries_are_stored_and_lead_the_compensating_train)
{
    using enum Dynamics_Field;
    EXPECT_TRUE(Edit_Dynamics_Field(Mass, "3").accepted);
    EXPECT_EQ(d_.Mass, 3.0);
    EXPECT_EQ(d_.Comp_Mass, 1.5);
    EXPECT_TRUE(Edit_Dynamics_Field(Preload, "50").accepted);
    EXPECT_EQ(d_.Comp_Preload, 50.0);
    EXPECT_TRUE(Edit_Dynamics_Field(Spring, "700").accepted);
    EXPECT_EQ(d_.Comp_Spring_Rate, 700.0);
    EXPECT_TRUE(Edit_Dynamics_Field(Journal, "30").accepted);
    EXPECT_EQ(d_.Bearing_Radius, 15.0);
    EXPECT_TRUE(Edit_Dynamics_Field(Damping, "8").accepted);
    EXPECT_EQ(d_.Damping, 8.0);
    EXPECT_TRUE(Edit_Dynamics_Field(Zeta, "1").accepted);
    EXPECT_TRUE(Edit_Dynamics_Field(Folfrict, "0.2").accepted);
    EXPECT_TRUE(Edit_Dynamics_Field(Jnlfrict, "0.3").accepted);
    EXPECT_EQ(d_.Mu_of_Shaft, Single(0.3));
    design.flags.CompCam_Calc = true;
    EXPECT_TRUE(Edit_Dynamics_Field(Mass, "9").accepted);
    EXPECT_EQ(d_.Comp_Mass, 1.5);  // the compensating train is its own now
}

TEST_F(Dynamics_Fields, refused_entries_have_their_message_and_new_text)
{
    using enum Dynamics_Field;
    struct Case {
        Dynamics_Field field;
        std::string typed;
        Expected_Box box;
        std::string shown;
    };
    for (const auto& [field, typed, box, shown] : std::vector<Case>{{Mass, "0", positive, "0.01"},
                                                                    {Mass, "-4", positive, "0.01"},
                                                                    {Preload, "0", positive, "1"},
                                                                    {Spring, "-1", positive, "1"},
                                                                    {Damping, "", positive, "1"},
                                                                    {Journal, "0", positive, "1"},
                                                                    {Zeta, "0", zeta, "0.25"},
                                                                    {Zeta, "1.01", zeta, "0.25"},
                                                                    {Folfrict, "0", friction, "0.1"},
                                                                    {Jnlfrict, "-1", friction, "0.01"},
                                                                    {Fluct, "0", fluctuation, "0.05"}}) {
        script_.Expect(box);
        const Dynamics_Entry entry = Edit_Dynamics_Field(field, typed);
        EXPECT_FALSE(entry.accepted) << typed;
        EXPECT_EQ(entry.text, shown);
    }
    EXPECT_EQ(d_.Mass, 4.0);
    EXPECT_EQ(d_.Return_Spring_Rate, 1.0);  // the refused spring's new text is its value, too
}

TEST_F(Dynamics_Fields, a_fluctuation_above_one_is_refused_one_entry_late)
{
    EXPECT_TRUE(Edit_Dynamics_Field(Dynamics_Field::Fluct, "1.5").accepted);  // meant
    EXPECT_EQ(d_.Coeff_of_Fluctuation, 1.5);
    script_.Expect(fluctuation);
    EXPECT_FALSE(Edit_Dynamics_Field(Dynamics_Field::Fluct, "0.2").accepted);
    EXPECT_EQ(d_.Coeff_of_Fluctuation, Single(0.05));
    EXPECT_TRUE(Edit_Dynamics_Field(Dynamics_Field::Fluct, "1").accepted);
}

TEST_F(Dynamics_Fields, the_button_reads_all_and_calculates)
{
    Dynamics_Form form = Opening_Dynamics_Form();
    form.txt_Spring = "20000";
    form.txt_Preload = "800";
    form.txt_Journal = "40";
    design.flags.Stressflag = true;
    EXPECT_TRUE(Calc_Dynamics(form));
    EXPECT_TRUE(design.flags.Dynamicflag);
    EXPECT_FALSE(design.flags.Stressflag);
    EXPECT_EQ(d_.Bearing_Radius, 20.0);
    EXPECT_EQ(design.cam.Closure, "Force");
    EXPECT_NEAR(Data(var::Force, 320), 800.0, 1e-3);  // the low dwell: preload alone
}

TEST_F(Dynamics_Fields, a_form_closed_cam_has_no_spring)
{
    Dynamics_Form form = Opening_Dynamics_Form();
    form.force_closed = false;
    Choose_Form_Closure();
    EXPECT_TRUE(Calc_Dynamics(form));
    EXPECT_EQ(design.cam.Closure, "Form");
    EXPECT_EQ(d_.Model_Type, 1);
    EXPECT_EQ(d_.Return_Spring_Rate, 0.0);
    EXPECT_EQ(d_.Preload, 0.0);
    EXPECT_EQ(d_.Damping, 0.0);
    EXPECT_NEAR(Data(var::Force, 30), 4.0 * Data(var::A, 30) / 1000, 1e-3);
}

TEST_F(Dynamics_Fields, accumulating_warns)
{
    script_.Expect(
        {"Selecting Torque Accumulation will cause each succeeding\n"
         " torque calculation to add to the existing torque function.\n"
         "So do not click the Calculate Button on this form more than once\n"
         "for each new cam on the camshaft after designing it on the other forms.",
         Buttons::OK, Symbol::exclamation});
    Choose_Accumulate();
    EXPECT_FALSE(d_.Torque_Start_Fresh);
}

}  // namespace
}  // namespace lobemax
