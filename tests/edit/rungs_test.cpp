// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/rungs.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/ladder.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "files/example_designs.h"
#include "motion/segments.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

/// Collects the boxes; each is answered as it usually is.
class Rungs : public ::testing::Test {
protected:
    Rungs()
    {
        Host host;
        host.messenger = [this](const Message& box) {
            boxes.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        before_ = Install_Host(std::move(host));
        EXPECT_TRUE(Sub_Main(design, "", {}));
    }
    ~Rungs() override
    {
        Install_Host(std::move(before_));
        design = {};
    }

    std::vector<std::string> boxes;

private:
    Host before_;
};

void Open(std::string_view name, int units)
{
    design.identity.WhichUnit = units;
    ASSERT_TRUE(Open_Example(design, name));
}

void Add_Stress()
{
    const Materials materials = Materials_of(design);
    for (const int k : {1, 2}) {
        design.dynamics.Youngs_modulus(k) = materials.E[static_cast<std::size_t>(k - 1)];
        design.dynamics.Poissons_ratio(k) = materials.nu[static_cast<std::size_t>(k - 1)];
    }
    Contact_Field refused{};
    ASSERT_TRUE(Run_Stress(design, refused));
}

double Value(int row, int point)
{
    return design.results.CalcData(row, point);
}

using Rows = std::vector<double>;

Rows All_Rows(const Design_State& of)
{
    Rows rows;
    for (int v = 0; v <= of.run.Saved_Variables; ++v)
        for (const Single value : of.results.CalcData.Points(v))
            rows.push_back(value);
    return rows;
}

std::vector<double> Row_of(int row)
{
    std::vector<double> values;
    for (const Single value : design.results.CalcData.Points(row))
        values.push_back(value);
    return values;
}

double Largest(const std::vector<double>& values)
{
    double largest = 0.0;
    for (const double value : values)
        largest = std::max(largest, std::abs(value));
    return largest;
}

/// Every point of a row is a factor times the one before, within a share of the largest.
void Expect_Scaled(int row, const std::vector<double>& before, double factor, double share)
{
    const std::vector<double> now = Row_of(row);
    ASSERT_EQ(now.size(), before.size());
    const double largest = Largest(before) * factor;
    ASSERT_GT(largest, 0.0) << row;
    for (std::size_t i = 0; i < now.size(); ++i)
        ASSERT_NEAR(now[i], before[i] * factor, share * largest) << "row " << row << " point " << i;
}

class Recalculated_Example : public Rungs, public ::testing::WithParamInterface<std::tuple<std::string_view, int>> {};

TEST_P(Recalculated_Example, equals_itself_bit_for_bit)
{
    const auto [name, units] = GetParam();
    Open(name, units);
    if (units != 4)  // centimetres have no steel of their own
        Add_Stress();
    const std::vector<std::string> boxes_before = std::exchange(boxes, {});
    const Rows before = All_Rows(design);
    const Standing standing = Standing_of(design);
    ASSERT_TRUE(standing.motion && standing.size && standing.forces);
    EXPECT_TRUE(Recalculate(design, standing));
    EXPECT_EQ(Standing_of(design), standing);
    EXPECT_TRUE(All_Rows(design) == before);
    EXPECT_EQ(boxes, boxes_before);  // what the design has to be told of
}

INSTANTIATE_TEST_SUITE_P(Examples, Recalculated_Example,
                         ::testing::Combine(::testing::ValuesIn(Example_Names), ::testing::Values(1, 3, 4, 5)));

TEST_F(Rungs, a_design_converted_and_recalculated_is_the_one_typed_in_the_new_units)
{
    Open("Single Dwell", 1);
    Add_Stress();
    const auto S = Row_of(var::S);
    const auto Phi = Row_of(var::Phi);
    const auto Rho = Row_of(var::Rho);
    const auto Force = Row_of(var::Force);
    const auto Torque = Row_of(var::Torque);
    Change_Units(design, 5);
    EXPECT_TRUE(Results_in_Other_Units(design));
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_TRUE(boxes.empty());
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, true}));
    EXPECT_EQ(design.plot.Var_Unit(var::S), "mm");
    EXPECT_EQ(design.plot.Var_Unit(var::Sigma_Max), "MPa");

    // An inch is 25.4 mm and a pound 4.448222 N; the mass is rounded to 7.003 kg of 7.00347, 7E-5 of it.
    Expect_Scaled(var::S, S, 25.4, 1e-6);
    Expect_Scaled(var::Phi, Phi, 1.0, 1e-5);
    for (std::size_t i = 0; i < Rho.size(); ++i)
        if (std::abs(Rho[i]) < 100.0) {  // far out a radius is the inverse of what nearly cancels
            ASSERT_NEAR(Value(var::Rho, static_cast<int>(i)), Rho[i] * 25.4, 0.01) << i;
        }
    Expect_Scaled(var::Force, Force, 4.448222, 3e-4);
    Expect_Scaled(var::Torque, Torque, 0.0254 * 4.448222, 3e-4);  // a metric torque is in N-m

    // The same numbers typed: 0.04 bl, 75 lb/in and 25 lb are 7.003 kg, 13135 N/m and 111.21 N.
    const Rows converted = All_Rows(design);
    Open("Single Dwell", 5);
    for (const auto& [i, from, to] : {std::tuple{1, "0", "25.4"}, {2, "25.4", "0"}, {3, "0", "0"}}) {
        ASSERT_TRUE(Put(design, "Start Value", At(i), from));
        ASSERT_TRUE(Put(design, "End Value", At(i), to));
    }
    for (const auto& [field, value] : {std::pair{"Prime_Rad", 76.2},
                                       {"Offset", 19.05},
                                       {"Follow_Rad", 25.4},
                                       {"Cutter Radius", 6.35},
                                       {"Mass", 7.003},
                                       {"Return_Spring_Rate", 13135.0},
                                       {"Preload", 111.21},
                                       {"Bearing Radius", 25.4},
                                       {"Roller length", 25.4},
                                       {"Crown radius", 1422.4}})
        ASSERT_TRUE(Put(design, field, value)) << field;
    ASSERT_TRUE(Recalculate(design, {true, true, true, false}));
    Add_Stress();
    const Rows typed = All_Rows(design);
    ASSERT_EQ(typed.size(), converted.size());
    for (std::size_t i = 0; i < typed.size(); ++i)
        ASSERT_EQ(typed[i], converted[i]) << "row " << i / 361 << " point " << i % 361;
}

TEST_F(Rungs, conditions_of_polynomials_and_splines_are_calculated_from_their_converted_texts)
{
    design.identity.WhichUnit = 1;
    Reset_All(design);
    Motion_Group& m = design.motion;
    m.No_of_segments = 3;
    for (const auto& [i, kind, program, beta, from, to] : {std::tuple{1, "P", "PO", 120.0, "0", "1"},
                                                           {2, "S", "BS", 140.0, "1", "0"},
                                                           {3, "D", "DW", 100.0, "0", "0"}}) {
        ASSERT_TRUE(Put(design, "Rise_Fall_Dwell", At(i), kind));
        ASSERT_TRUE(Put(design, "Program", At(i), program));
        ASSERT_TRUE(Put(design, "Beta_Deg", At(i), beta));
        ASSERT_TRUE(Put(design, "Start Value", At(i), from));
        ASSERT_TRUE(Put(design, "End Value", At(i), to));
    }
    for (const int i : {1, 2})
        for (const auto& [row, S] : {std::pair{0, i == 1 ? "0" : "1"}, {9, i == 1 ? "1" : "0"}}) {
            m.S_boundary_cond(i, row) = S;
            m.V_boundary_cond(i, row) = m.A_boundary_cond(i, row) = "0";
            m.No_Conditions(i) = 6;
            m.No_of_conditions(i) = "6";
        }
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    const auto S = Row_of(var::S);
    const auto A = Row_of(var::A);
    EXPECT_NEAR(Value(var::S, 60), 0.5, 1e-6);  // the 3-4-5 polynomial of these conditions, half way
    Change_Units(design, 5);
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    Expect_Scaled(var::S, S, 25.4, 1e-6);
    Expect_Scaled(var::A, A, 25.4, 1e-5);
}

TEST_F(Rungs, a_force_function_goes_along_and_outlives_the_recalculation)
{
    design.identity.WhichUnit = 1;
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    design.motion.Ext_Force_On = -1;
    for (int i = 1; i <= 4; ++i) {  // 100 lb where the cam dwells high
        design.motion.Start_Value(i) = i == 2 || i == 3 ? "100" : "0";
        design.motion.End_Value(i) = i == 1 || i == 2 ? "100" : "0";
    }
    ASSERT_TRUE(Calc_All(design, false));
    for (int i = 1; i <= 4; ++i) {
        design.motion.Start_Value(i) = i == 2 || i == 3 ? "1" : "0";
        design.motion.End_Value(i) = i == 1 || i == 2 ? "1" : "0";
    }
    ASSERT_TRUE(Calc_All(design, true) && Motion_Done(design));
    ASSERT_TRUE(Run_Size(design) && Run_Forces(design));
    ASSERT_TRUE(design.flags.Ext_Force_Calc);
    ASSERT_EQ(Value(var::Ext_Force, 120), 100.0);
    design.motion.Motion = false;  // the next calculation is to be a force's

    Change_Units(design, 5);
    EXPECT_NEAR(Value(var::Ext_Force, 120), 444.8222, 1e-4);  // no calculation makes this row
    EXPECT_EQ(design.plot.Var_Unit(var::Ext_Force), "N");
    EXPECT_EQ(design.plot.Var_Unit(var::Force), "lb");
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_FALSE(design.motion.Motion);
    EXPECT_TRUE(design.flags.Ext_Force_Calc && design.flags.Dynamicflag);
    EXPECT_NEAR(Value(var::Ext_Force, 120), 444.8222, 1e-4);
    EXPECT_EQ(design.plot.Var_Unit(var::Ext_Force), "N");
    EXPECT_NEAR(Value(var::S, 120), 25.4, 1e-5);
}

TEST_F(Rungs, a_rung_that_is_not_reached_leaves_all_as_it_was)
{
    Open("Double Dwell", 1);
    Change_Units(design, 5);
    design.motion.Beta_Deg(2) = 0.0;
    const Rows before = All_Rows(design);
    EXPECT_FALSE(Recalculate(design, Standing_of(design)));
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0], "Segment 2 has no beta: please enter its duration in degrees.");
    EXPECT_TRUE(All_Rows(design) == before);
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, false}));
    EXPECT_EQ(design.plot.Var_Unit(var::S), "in");

    design.motion.Beta_Deg(2) = 90.0;
    design.cam.Translating = false;
    design.cam.ArmX = 1000.0;
    design.cam.ArmY = 0.0;
    design.cam.ArmRad = 10.0;  // ends 990 mm from the cam
    boxes.clear();
    EXPECT_FALSE(Recalculate(design, Standing_of(design)));
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_TRUE(boxes[0].starts_with("The roller follower arm misses the cam entirely"));
    EXPECT_EQ(boxes[1], "Incompatible dimensions - check your data");
    EXPECT_TRUE(All_Rows(design) == before);
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && Results_in_Other_Units(design));
}

TEST_F(Rungs, stresses_that_end_in_an_error_are_a_rung_that_is_not_reached)
{
    Open("Double Dwell", 5);
    design.dynamics.Roller_type = 2;
    design.dynamics.Crown_radius = 200.0;
    Add_Stress();
    ASSERT_TRUE(design.flags.Stressflag);
    design.dynamics.Follower_Weight = 3e38;  // the peak pressure is no Single
    design.dynamics.Crown_radius = 1e-30;
    const Rows before = All_Rows(design);
    boxes.clear();
    EXPECT_FALSE(Recalculate(design, Standing_of(design)));
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_NE(boxes[0].find("has occurred in Calc_Contact_Stress"), std::string::npos) << boxes[0];
    EXPECT_TRUE(All_Rows(design) == before);
    EXPECT_TRUE(design.flags.Stressflag);
}

TEST_F(Rungs, an_imported_motion_is_not_recalculated)
{
    Open("Double Dwell", 5);
    design.flags.Imported_Model = true;
    const Rows before = All_Rows(design);
    EXPECT_FALSE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(boxes, (std::vector<std::string>{"An imported motion has no segments to be recalculated from."}));
    EXPECT_TRUE(All_Rows(design) == before);
}

TEST_F(Rungs, no_rung_is_calculated_over_results_of_other_units)
{
    Open("Single Dwell", 1);
    Change_Units(design, 5);
    const Rows before = All_Rows(design);
    EXPECT_FALSE(Run_Size(design));
    EXPECT_FALSE(Run_Size_Curves(design, true));
    EXPECT_FALSE(Run_Forces(design));
    Contact_Field refused{};
    EXPECT_FALSE(Run_Stress(design, refused));
    ASSERT_EQ(boxes.size(), 4U);
    for (const std::string& box : boxes)
        EXPECT_TRUE(box.starts_with("The results in memory are those of the units before (in-lb-bl-s)")) << box;
    EXPECT_TRUE(All_Rows(design) == before);
    EXPECT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
}

TEST_F(Rungs, a_modulus_that_is_not_steels_is_not_taken_for_another_unit_of_stress)
{
    Open("Single Dwell", 1);
    Add_Stress();
    design.dynamics.Youngs_modulus(1) = 1e7;  // aluminium, psi
    design.dynamics.Poissons_ratio(1) = 0.33;
    Change_Units(design, 5);
    EXPECT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, false}));
    EXPECT_EQ(boxes, (std::vector<std::string>{
                         "The stresses are not recalculated: Young's modulus is not converted with the units.\n"
                         "Please type it in MPa on the stress screen."}));
    EXPECT_EQ(double{design.dynamics.Youngs_modulus(1)}, 1e7);
}

TEST_F(Rungs, nor_is_the_followers)
{
    Open("Single Dwell", 1);
    Add_Stress();
    design.dynamics.Youngs_modulus(2) = 1e7;
    design.dynamics.Poissons_ratio(2) = 0.33;
    Change_Units(design, 5);
    EXPECT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, false}));
    EXPECT_EQ(boxes.size(), 1U);
    EXPECT_EQ(double{design.dynamics.Youngs_modulus(2)}, 1e7);
}

TEST_F(Rungs, steel_of_either_material_becomes_that_of_the_new_unit)
{
    Open("Single Dwell", 1);
    Add_Stress();
    design.run.Last_Edit = "what was typed";
    Change_Units(design, 5);
    EXPECT_TRUE(Recalculate(design, Standing_of(design)));
    for (const int k : {1, 2}) {
        EXPECT_EQ(design.dynamics.Youngs_modulus(k), Single(206800.0)) << k;  // MPa
        EXPECT_EQ(design.dynamics.Poissons_ratio(k), Single(0.28)) << k;
    }
    EXPECT_EQ(design.run.Last_Edit, "what was typed") << "nobody typed the materials";
}

TEST_F(Rungs, each_material_keeps_its_own_modulus_in_the_same_unit_of_stress)
{
    Open("Single Dwell", 5);
    Add_Stress();
    const double both_steel = Largest(Row_of(var::Sigma_Max));
    design.dynamics.Youngs_modulus(2) = 71700.0;  // aluminium, MPa
    design.dynamics.Poissons_ratio(2) = 0.33;
    EXPECT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, true}));
    EXPECT_EQ(double{design.dynamics.Youngs_modulus(1)}, double{Single(206800.0)});
    EXPECT_EQ(double{design.dynamics.Youngs_modulus(2)}, 71700.0);
    EXPECT_LT(Largest(Row_of(var::Sigma_Max)), 0.9 * both_steel) << "the softer one gives way";
}

TEST_F(Rungs, forces_are_recalculated_without_stresses_and_under_them)
{
    Open("Single Dwell", 5);
    EXPECT_TRUE(Recalculate(design, {.motion = true, .size = true, .forces = true, .stress = false}));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, false}));
    EXPECT_TRUE(Recalculate(design, {.motion = true, .size = true, .forces = false, .stress = false}));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, false, false}));
    EXPECT_TRUE(Recalculate(design, {.motion = false, .size = false, .forces = false, .stress = true}));
    EXPECT_EQ(Standing_of(design), (Standing{true, true, true, true}));
    EXPECT_TRUE(boxes.empty());
}

TEST_F(Rungs, a_torque_of_several_cams_becomes_that_of_this_cam_and_is_told)
{
    Open("Single Dwell", 5);
    const auto once = Row_of(var::Torque);
    design.dynamics.Torque_Start_Fresh = false;
    ASSERT_TRUE(Run_Forces(design));
    Expect_Scaled(var::Torque, once, 2.0, 1e-6);
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(Row_of(var::Torque) == once);
    EXPECT_FALSE(design.dynamics.Torque_Start_Fresh);
}

TEST_F(Rungs, a_form_closure_has_neither_spring_nor_preload_and_a_flat_face_is_closed_by_a_spring)
{
    Open("Single Dwell", 5);
    ASSERT_TRUE(Put(design, "Closure$", "Form"));
    ASSERT_TRUE(Run_Forces(design));
    const Dynamics_Group& d = design.dynamics;
    EXPECT_TRUE(d.Return_Spring_Rate == 0.0 && d.Preload == 0.0 && d.Damping == 0.0);
    EXPECT_NEAR(Value(var::Force, 300), 0.0, 1e-3);  // in the dwell nothing is accelerated, nothing pressed

    Open("Flat Follower", 5);
    design.cam.Closure = "Form";
    ASSERT_TRUE(Run_Forces(design));
    EXPECT_EQ(design.cam.Closure, "Force");
    EXPECT_GT(Value(var::Force, 300), 99.0);  // the preload of 100 N
}

TEST_F(Rungs, a_stress_run_is_refused_by_its_first_field_that_is_not_positive)
{
    Open("Single Dwell", 5);
    design.dynamics.Youngs_modulus(1) = 206800.0;
    design.dynamics.Youngs_modulus(2) = 0.0;
    design.dynamics.Poissons_ratio(1) = design.dynamics.Poissons_ratio(2) = 0.28;
    Contact_Field refused{};
    EXPECT_FALSE(Run_Stress(design, refused));
    EXPECT_EQ(refused, Contact_Field::Fol_E);
    EXPECT_FALSE(design.flags.Stressflag);
    EXPECT_EQ(boxes, (std::vector<std::string>{"This value must be positive and nonzero.  Please redo."}));
}

}  // namespace
}  // namespace lobemax
