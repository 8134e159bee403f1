// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/drive_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/row_extremes.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using Texts = std::vector<std::string>;

/// A torque of 10 + 40 sin(theta) and a friction of 5, in the units of its row, at 20 rad/s.
class Drive_Words : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        Lay(5);
    }
    void TearDown() override { design = {}; }

    static void Lay(int unit_system)
    {
        design.identity.WhichUnit = unit_system;
        Set_Units(design);
        design.motion.Shaft_speed = 20;
        train_design::Lay_Harmonic(1, 10, 20);
        for (int i = 0; i <= 360; ++i) {
            design.results.CalcData(var::Torque, i) = 10 + 40 * std::sin(i * std::numbers::pi / 180);
            design.results.CalcData(var::Friction_Torque, i) = 5;
        }
        design.dynamics.Mass = 2;
        design.dynamics.Coeff_of_Fluctuation = 0.1;
        design.flags.Calculated = design.flags.Dynamicflag = true;
    }
    /// The figure in a unit; its value, or that with friction.
    static double Value(std::string_view name, const std::string& unit, bool friction = false)
    {
        for (const Drive_Figure& figure : Figures_of_Drive(design))
            if (figure.name == name && figure.unit == unit)
                return friction ? figure.with_friction.value_or(NAN) : figure.value;
        return NAN;
    }
    static std::set<std::string> Units()
    {
        std::set<std::string> units;
        for (const Drive_Figure& figure : Figures_of_Drive(design))
            units.insert(figure.unit);
        return units;
    }

    testing::Script script_;
};

TEST_F(Drive_Words, metric_systems_have_si_units_alone)
{
    for (const int code : {3, 4, 5}) {
        Lay(code);
        EXPECT_EQ(Units(), (std::set<std::string>{"N-m", "deg", "W", "J", "kg-m^2"})) << code;
        EXPECT_NEAR(Value("Mean torque", "N-m"), 10, 1E-5);
        EXPECT_NEAR(Value("Mean torque", "N-m", true), 15, 1E-5);
        EXPECT_NEAR(Value("Peak power", "W"), 1000, 1E-3);
        EXPECT_EQ(Value("Peak at", "deg"), 90);
    }
}

TEST_F(Drive_Words, inch_and_foot_systems_have_each_figure_in_both)
{
    struct System {
        int code;
        const char *torque, *inertia;
        double newton_metres;
    };
    for (const auto& [code, torque, inertia, newton_metres] :
         {System{1, "in-lb", "lb-in-s^2", 0.1129848290276167}, System{2, "ft-lb", "lb-ft-s^2", 1.3558179483314004}}) {
        Lay(code);
        EXPECT_EQ(Units(), (std::set<std::string>{torque, "N-m", "deg", "W", "hp", "J", inertia, "kg-m^2"})) << code;
        EXPECT_NEAR(Value("Peak torque", torque), 50, 1E-4);
        EXPECT_NEAR(Value("Peak torque", "N-m"), 50 * newton_metres, 1E-4);
        EXPECT_NEAR(Value("Peak torque", torque, true), 55, 1E-4);
        // 550 ft-lb a second are a horsepower; 50 ft-lb at 20 rad/s are 1000 of them
        EXPECT_NEAR(Value("Peak power", "hp"), code == 1 ? 1000 / 6600.0 : 1000 / 550.0, 1E-6);
        EXPECT_NEAR(Value("Peak power", "W"), 1000 * newton_metres, 1E-3);
        // m (dx/dtheta)^2 of 2 bl or sl on 5 in or ft per radian
        EXPECT_NEAR(Value("Inertia peak", inertia), 50, 1E-4);
        EXPECT_NEAR(Value("Inertia peak", "kg-m^2"), 50 * newton_metres, 1E-4);
        EXPECT_NEAR(Value("Flywheel", inertia) * 0.1 * 400, Value("Energy swing", torque), 1E-4);
    }
}

TEST_F(Drive_Words, rounding_of_the_rows_is_no_mean_torque)
{
    for (int i = 0; i <= 360; ++i) {
        design.results.CalcData(var::Torque, i) = 40 * std::sin(i * std::numbers::pi / 180);
        design.results.CalcData(var::Friction_Torque, i) = 0;
    }
    EXPECT_EQ(Value("Mean torque", "N-m"), 0.0);
    EXPECT_EQ(Value("Mean power", "W", true), 0.0);
    EXPECT_NEAR(Value("RMS torque", "N-m"), 40 / std::sqrt(2), 1E-4);
}

TEST_F(Drive_Words, the_table_names_a_figure_once)
{
    Lay(1);
    const Report_Table table = Drive_Table(Figures_of_Drive(design), [](double x) { return Shortest(Single(x)); });
    ASSERT_GE(table.rows.size(), 6U);
    EXPECT_EQ(table.rows[0][0], "Mean torque");
    EXPECT_EQ(table.rows[0][1], "in-lb");
    EXPECT_EQ(table.rows[1][0], "");
    EXPECT_EQ(table.rows[1][1], "N-m");
    EXPECT_EQ(table.rows.back()[3], "") << "friction has no part in the inertia";
}

TEST_F(Drive_Words, the_panel_fits_its_width_and_is_in_the_number_format)
{
    design.identity.Number_Format = "Europe";
    for (const int code : {1, 2, 3, 4, 5}) {
        Lay(code);
        const Texts lines = Drive_Panel(design);
        ASSERT_FALSE(lines.empty());
        for (const std::string& line : lines)
            EXPECT_LE(line.size(), 46U) << line;
        EXPECT_TRUE(std::ranges::any_of(lines, [](const std::string& line) {
            return line.find("RMS torque") != std::string::npos && line.find("30") != std::string::npos;
        }));
    }
    EXPECT_TRUE(std::ranges::any_of(Drive_Panel(design), [](const std::string& line) {
        return line.starts_with("Inertia peak") && line.ends_with("0,00005");
    })) << Joined(Drive_Panel(design));
}

TEST_F(Drive_Words, the_torque_unit_of_centimetres_and_millimetres_is_explained)
{
    EXPECT_EQ(Note_on_Torque_Unit(design),
              "The torques are in N-m, lengths being brought to metres: in mm-N they are 1000 times as many.");
    EXPECT_EQ(Unit_of_Torque_Rows(design), "N-m");
    EXPECT_EQ(Notes_on_Drive(design).back(), Note_on_Torque_Unit(design));
    Lay(1);
    EXPECT_EQ(Note_on_Torque_Unit(design), "");
    EXPECT_EQ(Unit_of_Torque_Rows(design), "in-lb");
    EXPECT_EQ(Notes_on_Drive(design).size(), 1U);
}

TEST_F(Drive_Words, a_shaft_that_hardly_turns_has_no_flywheel_to_write)
{
    design.motion.Shaft_speed = 1E-21;
    EXPECT_TRUE(std::isnan(Value("Flywheel", "kg-m^2"))) << "beyond what 32 bits hold";
    EXPECT_NEAR(Value("Peak torque", "N-m"), 50, 1E-4);
    EXPECT_FALSE(Drive_Panel(design).empty());
}

TEST_F(Drive_Words, there_is_nothing_before_the_forces)
{
    design.flags.Dynamicflag = false;
    EXPECT_TRUE(Figures_of_Drive(design).empty());
    EXPECT_TRUE(Drive_Panel(design).empty());
}

}  // namespace
}  // namespace lobemax
