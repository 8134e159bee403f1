// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/lobe_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/startup.h"
#include "core/units.h"
#include "core/variables.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

constexpr double pi = 3.14159265358979323846;

class Lobe_Screen_Form : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        for (int i = 0; i <= 360; ++i)  // above 2.5 from 60 to 300 degrees, its mean 5
            design.results.CalcData(var::S, i) = 5 - 5 * std::cos(i * pi / 180);
    }
    void TearDown() override { design = {}; }
    testing::Script script_;
};

TEST_F(Lobe_Screen_Form, shows_the_figures_at_a_lift)
{
    const Lobe_Result at = Lobe_at(design, "2.5");
    EXPECT_EQ(at.note, "");
    EXPECT_EQ(at.texts.lbl_Opens, "60");
    EXPECT_EQ(at.texts.lbl_Closes, "300");
    EXPECT_EQ(at.texts.lbl_Duration, "240");
    EXPECT_EQ(at.texts.lbl_Centre, "180");
    EXPECT_EQ(at.texts.lbl_Peak, "180");
    EXPECT_EQ(at.texts.lbl_Area, "1800");
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Lobe_at(design, "2,5").texts.lbl_Opens, "60");
}

TEST_F(Lobe_Screen_Form, opens_at_half_of_the_lift)
{
    EXPECT_EQ(Opening_Lift(design), "5");
    EXPECT_EQ(Lobe_at(design, Opening_Lift(design)).texts.lbl_Opens, "90");
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::S, i) = 3.0;
    EXPECT_EQ(Opening_Lift(design), "");
}

TEST_F(Lobe_Screen_Form, tells_where_a_lift_has_no_figures)
{
    for (const char* const typed : {"", "0", "-1", "10", "x", "1E400"}) {
        const Lobe_Result at = Lobe_at(design, typed);
        EXPECT_EQ(at.note, "No figures: the motion never has this lift above its lowest position, or has it always.")
            << typed;
        EXPECT_EQ(at.texts.lbl_Opens, "") << typed;
        EXPECT_EQ(at.texts.lbl_Area, "") << typed;
    }
}

TEST_F(Lobe_Screen_Form, the_area_is_of_the_displacement_and_degrees)
{
    std::string units;
    for (const Lobe_Row& row : Rows_of_Lobe())
        units += Unit_of_Lobe(design, row) + " ";
    EXPECT_EQ(units, "deg deg deg deg deg mm-deg ");
    design.cam.Translating = false;
    Set_Units(design);
    EXPECT_EQ(Unit_of_Lobe(design, Rows_of_Lobe().back()), "deg-deg");
}

}  // namespace
}  // namespace lobemax
