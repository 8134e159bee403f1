// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>

#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/compcam_form.h"
#include "forms/dynamics_form.h"
#include "forms/fft_form.h"
#include "forms/import_form.h"
#include "forms/input_form.h"
#include "forms/size_form.h"
#include "forms/stress_form.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Form_Tables : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
};

TEST_F(Form_Tables, units_are_those_of_the_system_in_force)
{
    struct Row {
        const char *length, *mass, *force, *spring, *damping, *stress;
    };
    const std::array rows{Row{"in", "bl", "lb", "lb/in", "lb-s/in", "psi"},
                          Row{"ft", "sl", "lb", "lb/ft", "lb-s/ft", "psf"}, Row{"m", "kg", "N", "N/m", "N-s/m", "Pa"},
                          Row{"cm", "kg", "N", "N/m", "N-s/m", "MPa"}, Row{"mm", "kg", "N", "N/m", "N-s/m", "MPa"}};
    for (int code = 1; code <= 5; ++code) {
        design.identity.WhichUnit = code;
        Set_Units(design);
        const Row& row = rows.at(static_cast<std::size_t>(code - 1));
        EXPECT_EQ(Unit_Word(design, Form_Unit::length), row.length);
        EXPECT_EQ(Unit_Word(design, Form_Unit::mass), row.mass);
        EXPECT_EQ(Unit_Word(design, Form_Unit::force), row.force);
        EXPECT_EQ(Unit_Word(design, Form_Unit::spring), row.spring);
        EXPECT_EQ(Unit_Word(design, Form_Unit::damping), row.damping);
        EXPECT_EQ(Unit_Word(design, Form_Unit::stress), row.stress);
        EXPECT_EQ(Unit_Word(design, Form_Unit::torque), design.plot.Var_Unit(var::Torque));
        EXPECT_EQ(Unit_Word(design, Form_Unit::degrees), "deg");
        EXPECT_EQ(Unit_Word(design, Form_Unit::frequency), "rad/s");
        EXPECT_EQ(Unit_Word(design, Form_Unit::none), "");
    }
}

/// Collects the names of a table; none may stand in it twice.
void Add_Names(std::set<std::string>& names, const auto& rows, const char* screen)
{
    for (const Form_Control& row : rows)
        EXPECT_TRUE(names.insert(std::string(row.name)).second) << screen << "." << row.name;
}

TEST_F(Form_Tables, name_each_control_of_a_screen_once)
{
    const auto expect = [](const char* screen, const auto&... tables) {
        std::set<std::string> names;
        (Add_Names(names, tables, screen), ...);
        EXPECT_TRUE(names.contains(screen));  // its title
    };
    expect("frm_SizeCam", Fields_of_Size(), Controls_of_Size());
    expect("frm_InputData", Fields_of_Input(), Controls_of_Input());
    expect("frm_Dynamics", Fields_of_Dynamics(), Read_Outs_of_Dynamics(), Controls_of_Dynamics());
    expect("frm_Stress", Fields_of_Stress(), Controls_of_Stress());
    expect("frm_CompCam", Fields_of_Compcam(), Read_Outs_of_Compcam(), Controls_of_Compcam());
    expect("frm_Import_data", Fields_of_Import(), Controls_of_Import());
    expect("frm_FFT", Read_Outs_of_FFT(), Controls_of_FFT());
}

template <class Form>
void Expect_Complete(std::span<const Form_Field<Form>> rows)
{
    for (const Form_Field<Form>& row : rows) {
        EXPECT_FALSE(row.tip.empty() && row.caption.empty()) << row.name;
        EXPECT_NE(row.enter, nullptr) << row.name;
    }
    for (std::size_t k = 1; k < rows.size(); ++k)
        for (std::size_t before = 0; before < k; ++before)
            EXPECT_NE(rows[k].text, rows[before].text) << rows[k].name;  // a text is one field's
}

TEST_F(Form_Tables, give_each_field_its_words_its_text_and_its_rule)
{
    Expect_Complete(Fields_of_Size());
    Expect_Complete(Fields_of_Input());
    Expect_Complete(Fields_of_Dynamics());
    Expect_Complete(Fields_of_Stress());
    Expect_Complete(Fields_of_Compcam());
    Expect_Complete(Fields_of_Import());
    for (const Stress_Field field : {Stress_Field::Cam_E, Stress_Field::Fol_v, Stress_Field::Weight})
        EXPECT_EQ(Fields_of_Stress()[static_cast<std::size_t>(field)].name, field == Stress_Field::Cam_E ? "txt_Cam_E"
                                                                            : field == Stress_Field::Fol_v
                                                                                ? "txt_Fol_v"
                                                                                : "txt_Weight");
}

TEST_F(Form_Tables, a_name_that_a_screen_does_not_have_is_a_mistake_of_it)
{
    EXPECT_EQ(Control_of(Controls_of_Size(), "opt_CamType(2)").tip, "Cam moves past follower");
    EXPECT_THROW(Control_of(Controls_of_Size(), "opt_CamType(4)"), std::out_of_range);
}

TEST_F(Form_Tables, an_entry_goes_through_the_rule_of_its_row)
{
    Size_Form form = Size_Form_of_Design(design);
    const auto size = *std::ranges::find(Fields_of_Size(), std::string_view("txt_Prime"), &Form_Control::name);
    EXPECT_TRUE(size.enter(design, form, "120").accepted);
    EXPECT_EQ(design.cam.Prime_Rad, 120.0);
    Input_Head head = Input_Head_of_Design(design);
    const auto count = *std::ranges::find(Fields_of_Input(), std::string_view("txt_Segmts"), &Form_Control::name);
    EXPECT_EQ(count.enter(design, head, "25").text, "20");
    EXPECT_EQ(design.motion.No_of_segments, 20);
}

TEST_F(Form_Tables, a_moved_pivot_tests_the_arm_that_stands_typed)
{
    design.cam.Translating = false;
    design.cam.Prime_Rad = 50.0;
    design.cam.ArmX = 100.0;
    design.cam.ArmY = 0.0;
    design.cam.ArmRad = 80.0;
    Size_Form form = Size_Form_of_Design(design);
    const auto pivot = *std::ranges::find(Fields_of_Size(), std::string_view("txt_CLx"), &Form_Control::name);
    const Form_Entry moved = pivot.enter(design, form, "110");
    EXPECT_TRUE(moved.accepted);
    EXPECT_EQ(moved.text, "110");
    EXPECT_EQ(form.txt_ArmRadius, "80");  // the circles still meet: 110 is less than 80 and 50
    EXPECT_EQ(design.cam.ArmX, 110.0);
}

}  // namespace
}  // namespace lobemax
