// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/departure_notes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/startup.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "motion/motion_programs.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using Notes = std::vector<std::string>;

/// The double-dwell example by 11-degree polynomials on a soft train, in millimetres, with a preload that holds.
class Notes_Beside : public ::testing::Test {
protected:
    Notes_Beside()
    {
        Host host;
        host.messenger = [](const Message& box) { return Usual_Answer(box.buttons); };
        before_ = Install_Host(std::move(host));
    }
    ~Notes_Beside() override
    {
        Install_Host(std::move(before_));
        design = {};
    }
    static void Make(int model, int base, double z1 = 0.05)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = 5;
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        for (const int i : {1, 3})
            ASSERT_TRUE(Pick_Program(design, i, "11"));
        ASSERT_TRUE(Put(design, "Model_Type", double(model)));
        ASSERT_TRUE(Put(design, "Kspring", At(1), 20000.0));
        ASSERT_TRUE(Put(design, "Kspring", At(2), 40000.0));
        ASSERT_TRUE(Put(design, "Zeta", At(1), z1));
        ASSERT_TRUE(Put(design, "Preload", 20000.0));
        ASSERT_TRUE(Put(design, "Time Base", double(base)));
        if (model == Form_Closed_Model)
            design.cam.Closure = "Form";
        ASSERT_TRUE(Recalculate(design, {.motion = true, .size = true, .forces = true}));
    }
    static void Make_Polydyne(int model, int base)
    {
        Make(model, base);
        ASSERT_TRUE(Run_Vibration(design, {}) && Run_Polydyne(design, {}));
    }
    static bool Has(const Notes& notes, const std::string& words)
    {
        return std::ranges::any_of(notes,
                                   [&](const std::string& note) { return note.find(words) != std::string::npos; });
    }

private:
    Host before_;
};

TEST_F(Notes_Beside, nothing_is_said_of_what_is_not_calculated)
{
    Make(3, 1);
    EXPECT_TRUE(Departure_Notes(design).empty());
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_FALSE(Notes_of_Vibration(design).empty());
    EXPECT_TRUE(Notes_of_Polydyne(design).empty());
    design.flags.Units_Changed = true;  // the rows are those of other units
    EXPECT_TRUE(Departure_Notes(design).empty());
}

TEST_F(Notes_Beside, the_force_tells_by_how_much_and_why)
{
    const std::string second = "in this time base the motion of the mass lacks the shaft speed and its square";
    for (const int model : {1, 2, 3, 4, 5})
        for (const int base : {1, 3}) {
            Make(model, base);
            ASSERT_TRUE(Run_Vibration(design, {}));
            const Notes notes = Notes_of_Vibration(design);
            EXPECT_EQ(Has(notes, "Force-Dyn is off mechanics by up to "), base == 3 || model == 2 || model == 3)
                << model << " " << base;
            EXPECT_EQ(Has(notes, second), base == 3) << model;
            EXPECT_EQ(Has(notes, "the damper of the train stands for that of the closing spring"), model == 2);
            EXPECT_EQ(Has(notes, "the closing spring follows the mass and not the cam"), model == 3);
        }
}

TEST_F(Notes_Beside, models_1_and_5_tell_what_their_response_is)
{
    Make(5, 1);
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(Notes_of_Vibration(design),
              Notes{"X rests at the position of the cam: mechanics has k1 / (k1 + k2) of it, 0.333."});
    Make(1, 1);
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_TRUE(Notes_of_Vibration(design).empty()) << "both ratios are alike";
    Make(1, 1, 0.1);
    ASSERT_TRUE(Run_Vibration(design, {}));
    EXPECT_EQ(Notes_of_Vibration(design),
              Notes{"The response is damped by the second ratio, 0.05: mechanics has the first, 0.1."});
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Notes_of_Vibration(design),
              Notes{"The response is damped by the second ratio, 0,05: mechanics has the first, 0,1."});
}

TEST_F(Notes_Beside, a_polydyne_cam_tells_what_its_coefficient_leaves_out)
{
    Make_Polydyne(3, 3);
    // m/k omega^2 A with the square of two pi, less 36 of 39.478 of it.
    double largest = 0.0;
    for (int i = 0; i <= 360; ++i)
        largest = std::max(largest, std::abs(double{design.results.CalcData(var::A, i)}));
    const double left = largest * 2.0 / 40000.0 * 18.0 * 18.0 * (1 - 36.0 / 39.4784176);
    const Notes notes = Notes_of_Polydyne(design);
    ASSERT_EQ(notes.size(), 1U) << "per radian the derivatives are right";
    const std::string start =
        "Polydn S takes 36 for the square of two pi, 39.478: 8.8 % of its correction is left out, up to ";
    ASSERT_TRUE(notes[0].starts_with(start)) << notes[0];
    EXPECT_NEAR(std::stod(notes[0].substr(start.size())), left, 0.01 * left) << notes[0];
    EXPECT_NE(notes[0].find(" mm ("), std::string::npos);

    Make_Polydyne(5, 3);
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), "and m1 where mechanics has m2: off by up to "));
    Make_Polydyne(4, 3);
    EXPECT_TRUE(Has(Departure_Notes(design), "the cam has the motion of S, V, A and not its polydyne one"));
    Make_Polydyne(1, 1);
    EXPECT_EQ(Notes_of_Polydyne(design), Notes{"Polydn S of a form-closed cam is zero: mechanics has S + m/k A, off by "
                                               "up to 25 mm (100 %)."});
}

TEST_F(Notes_Beside, per_second_its_derivatives_and_what_is_sized_by_them_are_told_of)
{
    Make_Polydyne(3, 1);
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), "Per second Polydn V is off the derivative of Polydn S by up to "));
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), " mm/sec ("));
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), " %), A by up to "));
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), " mm/sec^2 ("));
    ASSERT_TRUE(Size_Polydyne(design));
    EXPECT_EQ(Notes_of_Polydyne(design).size(), 3U);
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), "With them Phi goes from "));
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), " deg, and the sharpest Rho is "));
    EXPECT_EQ(Departure_Notes(design).size(), 4U);
    design.flags.Sized = false;
    EXPECT_FALSE(Has(Notes_of_Polydyne(design), "With them Phi goes from "));
}

TEST_F(Notes_Beside, a_row_that_is_right_is_not_named)
{
    Make_Polydyne(3, 1);
    for (int i = 0; i <= 360; ++i)  // a motion whose ping is not known
        design.results.CalcData(var::Ping, i) = 0.0;
    ASSERT_TRUE(Calc_Polydyne(design));
    EXPECT_TRUE(Has(Notes_of_Polydyne(design), "Per second Polydn V is off the derivative of Polydn S by up to "));
    EXPECT_FALSE(Has(Notes_of_Polydyne(design), "A by up to "));
}

TEST_F(Notes_Beside, figures_that_cannot_be_compared_have_none)
{
    Make_Polydyne(3, 1);
    design.dynamics.Mass_m(1) = 0.0;  // as a damaged file has it
    EXPECT_TRUE(Notes_of_Vibration(design).empty());
    design.dynamics.Kspring(2) = 0.0;
    EXPECT_TRUE(Departure_Notes(design).empty());
}

TEST(Departure_Lines, stand_below_each_other)
{
    EXPECT_EQ(As_Lines({}), "");
    EXPECT_EQ(As_Lines({"one.", "two."}), "one.\ntwo.");
}

}  // namespace
}  // namespace lobemax
