// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/units.h"
#include "core/unit_change.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "core/variables.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

template <class Work>
int Fault_Of(Work&& work)
{
    try {
        work();
    } catch (const Fault& fault) {
        return fault.Number();
    }
    return 0;
}

/// A started design; Start_In picks its unit system.
class Units : public ::testing::Test {
protected:
    void SetUp() override { Start_In(5); }
    void TearDown() override { design = {}; }

    static void Start_In(int units)
    {
        Start_Services services;
        services.read_preferences = [units] { design.identity.WhichUnit = units; };
        ASSERT_TRUE(Sub_Main(design, "", services));
    }
};

// ---- words and decimals

struct System_Case {
    int code;
    const char *menu, *length, *force, *mass, *stress, *status;
    std::array<int, 6> decimals;
};

const System_Case system_cases[] = {
    {1, "in-lb", "in", "lb", "bl", "psi", "in-lb-bl-s", {3, 2, 2, 4, 2, 1}},
    {2, "ft-lb", "ft", "lb", "sl", "psf", "ft-lb-sl-s", {3, 2, 3, 3, 2, 1}},
    {3, "m-N", "m", "N", "kg", "Pa", "m-kg-N-s", {4, 2, 3, 3, 3, 0}},
    {4, "cm-N", "cm", "N", "kg", "MPa", "cm-kg-N-s", {3, 2, 3, 3, 3, 0}},
    {5, "mm-N", "mm", "N", "kg", "MPa", "mm-kg-N-s", {2, 2, 3, 3, 3, 0}},
};

void Expect_Decimals(const std::array<int, 6>& expected)
{
    const Identity_Group& id = design.identity;
    const std::array<int, 6> found{id.Decimals_1, id.Decimals_2, id.Decimals_3,
                                   id.Decimals_4, id.Decimals_5, id.Decimals_6};
    EXPECT_EQ(found, expected);
}

class Unit_System : public Units, public ::testing::WithParamInterface<System_Case> {};

TEST_P(Unit_System, has_its_words)
{
    const Unit_Words& w = Words_of_Units(GetParam().code);
    EXPECT_STREQ(w.menu, GetParam().menu);
    EXPECT_STREQ(w.length, GetParam().length);
    EXPECT_STREQ(w.force, GetParam().force);
    EXPECT_STREQ(w.mass, GetParam().mass);
    EXPECT_STREQ(w.stress, GetParam().stress);
    EXPECT_STREQ(w.status, GetParam().status);
}

TEST_P(Unit_System, has_its_decimals)
{
    design.identity.WhichUnit = GetParam().code;
    Set_Decimals(design);
    Expect_Decimals(GetParam().decimals);
}

TEST_P(Unit_System, sets_its_decimals_at_the_start_and_after_a_change)
{
    Start_In(GetParam().code);
    Expect_Decimals(GetParam().decimals);
    Start_In(GetParam().code == 5 ? 1 : 5);
    Change_Units(design, GetParam().code);
    Expect_Decimals(GetParam().decimals);
    EXPECT_EQ(design.identity.WhichUnit, GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(All, Unit_System, ::testing::ValuesIn(system_cases),
                         [](const auto& row) { return "code_" + std::to_string(row.param.code); });

TEST_F(Units, a_code_outside_1_to_5_is_error_9)
{
    for (const int code : {0, 6, -1}) {
        EXPECT_EQ(Fault_Of([&] { Words_of_Units(code); }), 9) << code;
        EXPECT_EQ(Fault_Of([&] { Single_Pass_Factors(code, 1); }), 9) << code;
        EXPECT_EQ(Fault_Of([&] { Single_Pass_Factors(1, code); }), 9) << code;
        EXPECT_EQ(Fault_Of([&] { Change_Units(design, code); }), 9) << code;
        EXPECT_EQ(design.identity.WhichUnit, 5);
    }
}

// ---- the unit table of the variables

/// The whole table, with L, F and stress the labels of the system.
void Expect_Var_Unit(const std::string& L, const std::string& F, const std::string& stress, bool translating,
                     bool barrel, int base)
{
    const auto per = [base](const std::string& unit, int order) {
        if (base == 2)
            return unit + "/deg";
        if (base == 3)
            return unit + "/rad";
        return unit + (order == 1 ? "/sec" : "/sec^" + std::to_string(order));
    };
    const std::string position = translating ? L : "deg";
    const std::string torque = L + "-" + F;
    const std::vector<std::string> first{"deg",
                                         position,
                                         per(position, 1),
                                         per(position, 2),
                                         per(position, 3),
                                         "deg",
                                         L,
                                         F,
                                         torque,
                                         L,
                                         L,
                                         L,
                                         barrel ? "deg" : L,
                                         L,
                                         L,
                                         torque,
                                         torque,
                                         per(L, 4)};
    const auto& unit = design.plot.Var_Unit;
    for (int v = 0; v <= 17; ++v)
        EXPECT_EQ(unit(v), first[static_cast<std::size_t>(v)]) << v;
    EXPECT_EQ(unit(22), L);
    EXPECT_EQ(unit(23), per(L, 1));
    EXPECT_EQ(unit(24), per(L, 2));
    for (const int v : {18, 19, 20, 60, 61, 62, 63, 64, 65})
        EXPECT_EQ(unit(v), "") << v;
    for (const int v : {21, 28, 35})
        EXPECT_EQ(unit(v), "deg") << v;
    for (const int v : {25, 26, 27, 34, 36, 38, 39, 40, 41, 46, 47, 54, 55, 56, 57, 58, 59})
        EXPECT_EQ(unit(v), L) << v;
    EXPECT_EQ(unit(37), barrel ? "deg" : L);
    // the response of the vibration model: over the cam angle in the time base, over time per second whatever it is
    for (const int v : {29, 30, 50, 53})
        EXPECT_EQ(unit(v), position) << v;
    EXPECT_EQ(unit(31), per(position, 1));
    EXPECT_EQ(unit(32), per(position, 2));
    EXPECT_EQ(unit(51), position + "/sec");
    EXPECT_EQ(unit(52), position + "/sec^2");
    for (const int v : {33, 44})
        EXPECT_EQ(unit(v), F) << v;
    for (const int v : {42, 43})
        EXPECT_EQ(unit(v), stress) << v;
    for (const int v : {45, 48, 49})
        EXPECT_EQ(unit(v), torque) << v;
}

TEST_F(Units, table_of_every_system_time_base_cam_and_follower)
{
    for (const System_Case& system : system_cases)
        for (int base = 1; base <= 3; ++base)
            for (const bool translating : {true, false})
                for (const char* cam : {"Radial", "Barrel", "Linear"}) {
                    design.identity.WhichUnit = system.code;
                    design.motion.Time_Base = base;
                    design.cam.Translating = translating;
                    design.cam.Camtype = cam;
                    ASSERT_TRUE(CamUnits(design, system.code, design.plot.Var_Unit, 59));
                    SCOPED_TRACE(std::string(system.status) + ", " + cam + ", base " + std::to_string(base));
                    Expect_Var_Unit(system.length, system.force, system.stress, translating,
                                    std::string(cam) == "Barrel", base);
                }
}

TEST_F(Units, literal_labels_of_millimetres_in_seconds)
{
    const auto& unit = design.plot.Var_Unit;
    EXPECT_EQ(unit(0), "deg");
    EXPECT_EQ(unit(1), "mm");
    EXPECT_EQ(unit(2), "mm/sec");
    EXPECT_EQ(unit(3), "mm/sec^2");
    EXPECT_EQ(unit(4), "mm/sec^3");
    EXPECT_EQ(unit(7), "N");
    EXPECT_EQ(unit(8), "mm-N");
    EXPECT_EQ(unit(17), "mm/sec^4");
}

TEST_F(Units, later_variables_take_the_unit_of_their_kind)
{
    const auto& unit = design.plot.Var_Unit;
    for (const int v : {25, 26, 27, 34, 36, 37, 38, 39, 40, 41, 46, 47})
        EXPECT_EQ(unit(v), "mm") << v;
    for (const int v : {28, 35})
        EXPECT_EQ(unit(v), "deg") << v;
    for (const int v : {33, 44})
        EXPECT_EQ(unit(v), "N") << v;
    for (const int v : {42, 43})
        EXPECT_EQ(unit(v), "MPa") << v;
    for (const int v : {45, 48, 49})
        EXPECT_EQ(unit(v), "mm-N") << v;
}

TEST_F(Units, literal_labels_of_the_response_rows)
{
    const auto& unit = design.plot.Var_Unit;
    const auto labels = [&](int first) {
        return std::vector<std::string>{unit(first), unit(first + 1), unit(first + 2), unit(first + 3)};
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(labels(29), (Texts{"mm", "mm", "mm/sec", "mm/sec^2"}));
    EXPECT_EQ(labels(50), (Texts{"mm", "mm/sec", "mm/sec^2", "mm"}));
    design.cam.Translating = false;
    Set_Time_Base(design, 3);
    EXPECT_EQ(unit(2), "deg/rad");
    EXPECT_EQ(labels(29), (Texts{"deg", "deg", "deg/rad", "deg/rad"}));
    EXPECT_EQ(labels(50), (Texts{"deg", "deg/sec", "deg/sec^2", "deg"}));
}

TEST_F(Units, the_label_of_a_kind_in_another_system_is_asked_without_a_change)
{
    EXPECT_EQ(Unit_Text(design, 2, Unit_Kind::position_2), "ft/sec^2");
    EXPECT_EQ(Unit_Text(design, 1, Unit_Kind::torque), "in-lb");
    EXPECT_EQ(Unit_Text(design, 3, Unit_Kind::stress), "Pa");
    EXPECT_EQ(Unit_Text(design, 4, Unit_Kind::none), "");
    EXPECT_EQ(design.plot.Var_Unit(1), "mm");
    EXPECT_EQ(Fault_Of([] { Unit_Text(design, 6, Unit_Kind::none); }), 9);
}

TEST_F(Units, table_has_59_and_six_entries_and_is_left_clean_at_its_end)
{
    design.plot.Var_Unit.Fill("old");
    ASSERT_TRUE(CamUnits(design, 5, design.plot.Var_Unit, 59));
    for (int v = 0; v <= 65; ++v)
        EXPECT_NE(design.plot.Var_Unit(v), "old") << v;
}

TEST_F(Units, a_wrong_code_or_size_is_trapped)
{
    EXPECT_FALSE(CamUnits(design, 0, design.plot.Var_Unit, 59));
    EXPECT_FALSE(CamUnits(design, 5, design.plot.Var_Unit, 60));
}

TEST_F(Units, time_base_renames_jerk_and_ping)
{
    const Plot_Group& p = design.plot;
    EXPECT_EQ(p.Var_Name(4), "Jerk *E3");
    EXPECT_EQ(p.Var_Name(17), "Ping *E3");
    for (const int base : {2, 3}) {
        Set_Time_Base(design, base);
        EXPECT_EQ(p.Var_Name(4), "Jerk") << base;
        EXPECT_EQ(p.Var_Name(17), "Ping") << base;
        EXPECT_EQ(p.Var_Unit(4), base == 2 ? "mm/deg" : "mm/rad");
        EXPECT_EQ(p.Var_Unit(17), base == 2 ? "mm/deg" : "mm/rad");
    }
    Set_Time_Base(design, 1);
    EXPECT_EQ(p.Var_Name(4), "Jerk *E3");
    EXPECT_EQ(p.Var_Name(17), "Ping *E3");
    EXPECT_EQ(p.Var_Unit(4), "mm/sec^3");
}

TEST_F(Units, time_base_outside_1_to_3_is_refused)
{
    for (const int base : {0, 4, -1})
        EXPECT_EQ(Fault_Of([&] { Set_Time_Base(design, base); }), 5) << base;
    EXPECT_EQ(design.motion.Time_Base, 1);
}

// ---- factors

std::array<double, 6> In_Order(const Unit_Factors& f)
{
    return {f.length, f.force, f.torque, f.mass, f.inertia, f.spring_rate};
}

const char* const kinds[] = {"length", "force", "torque", "mass", "inertia", "spring rate"};

void Expect_Factors(int from, int to, const std::array<double, 6>& expected)
{
    const std::array<double, 6> found = In_Order(Single_Pass_Factors(from, to));
    for (std::size_t k = 0; k < 6; ++k)
        EXPECT_DOUBLE_EQ(found[k], expected[k]) << kinds[k] << " from " << from << " to " << to;
}

TEST_F(Units, factors_from_inches)
{
    const double mass = 386 / 2.2046225;
    const double inertia = 0.0254 * 0.0254 * mass;
    const double rate = 4.448222 / 0.0254;
    Expect_Factors(1, 2, {1.0 / 12, 1.0, 1.0 / 12, 12.0, 1.0 / 12, 12.0});
    Expect_Factors(1, 3, {0.0254, 4.448222, 0.1129848388, mass, inertia, rate});
    Expect_Factors(1, 4, {2.54, 4.448222, 11.29848388, mass, inertia, rate});
    Expect_Factors(1, 5, {25.4, 4.448222, 112.9848388, mass, inertia, rate});
}

TEST_F(Units, factors_from_feet_to_inches)
{
    Expect_Factors(2, 1, {12.0, 1.0, 12.0, 1.0 / 12, 12.0, 1.0 / 12});
}

TEST_F(Units, torque_factors_are_those_of_length_and_force_to_their_last_figure)
{
    for (const int to : {3, 4, 5}) {
        const Unit_Factors f = Single_Pass_Factors(1, to);
        EXPECT_NEAR(f.torque / (f.length * f.force), 1.0, 1E-9);
    }
}

TEST_F(Units, factors_among_metric_systems)
{
    Expect_Factors(3, 4, {100, 1, 100, 1, 1, 1});
    Expect_Factors(3, 5, {1000, 1, 1000, 1, 1, 1});
    Expect_Factors(4, 5, {10, 1, 10, 1, 1, 1});
    Expect_Factors(4, 3, {0.01, 1, 0.01, 1, 1, 1});
    Expect_Factors(5, 3, {0.001, 1, 0.001, 1, 1, 1});
    Expect_Factors(5, 4, {0.1, 1, 0.1, 1, 1, 1});
}

TEST_F(Units, a_factor_times_its_reverse_is_one)
{
    for (int from = 1; from <= 5; ++from)
        for (int to = 1; to <= 5; ++to) {
            if ((from == 2 && to > 2) || (to == 2 && from > 2))
                continue;  // two passes
            const std::array<double, 6> there = In_Order(Single_Pass_Factors(from, to));
            const std::array<double, 6> back = In_Order(Single_Pass_Factors(to, from));
            for (std::size_t k = 0; k < 6; ++k)
                EXPECT_DOUBLE_EQ(there[k] * back[k], 1.0) << kinds[k] << " of " << from << " and " << to;
        }
}

TEST_F(Units, feet_and_metric_systems_have_no_single_pass)
{
    for (const int metric : {3, 4, 5}) {
        EXPECT_EQ(Fault_Of([&] { Single_Pass_Factors(2, metric); }), 5);
        EXPECT_EQ(Fault_Of([&] { Single_Pass_Factors(metric, 2); }), 5);
    }
}

// ---- shop lengths

TEST_F(Units, shop_lengths_of_each_system)
{
    const double prime[] = {3.0, 0.25, 0.075, 7.62, 76.2};
    const double lift[] = {3.0, 0.25, 0.075, 7.5, 75.0};
    for (int code = 1; code <= 5; ++code) {
        design.identity.WhichUnit = code;
        EXPECT_DOUBLE_EQ(Shop_Prime_Radius(design, 3.0), prime[code - 1]) << code;
        EXPECT_DOUBLE_EQ(Shop_Length(design, 3.0), lift[code - 1]) << code;
    }
}

// ---- conversion of the design

using Field_Of = Single& (*)();

struct Converted_Field {
    const char* name;
    Field_Of at;
    int kind;  // place in the order of the factors
};

enum Kind : int { length, force, torque, mass, inertia, rate };

#define FIELD(member) []() -> Single& { return design.member; }

const Converted_Field converted_fields[] = {
    {"Prime_Rad", FIELD(cam.Prime_Rad), length},
    {"Offset", FIELD(cam.Offset), length},
    {"Follow_Rad", FIELD(cam.Follow_Rad), length},
    {"Cutter Radius", FIELD(cam.Cutter_Radius), length},
    {"ArmX", FIELD(cam.ArmX), length},
    {"ArmY", FIELD(cam.ArmY), length},
    {"ArmRad", FIELD(cam.ArmRad), length},
    {"Link 2", FIELD(linkage.Link_2), length},
    {"Link 3", FIELD(linkage.Link_3), length},
    {"Link 4", FIELD(linkage.Link_4), length},
    {"Link 1", FIELD(linkage.Link_1), length},
    {"Link 4a", FIELD(linkage.Link_4a), length},
    {"Link 5", FIELD(linkage.Link_5), length},
    {"Link 6", FIELD(linkage.Link_6), length},
    {"O4x", FIELD(linkage.O4x), length},
    {"O4y", FIELD(linkage.O4y), length},
    {"O6x", FIELD(linkage.O6x), length},
    {"O6y", FIELD(linkage.O6y), length},
    {"Offset6", FIELD(linkage.Offset6), length},
    {"Mass", FIELD(dynamics.Mass), mass},
    {"Return_Spring_Rate", FIELD(dynamics.Return_Spring_Rate), rate},
    {"Preload", FIELD(dynamics.Preload), force},
    {"Bearing Radius", FIELD(dynamics.Bearing_Radius), length},
    {"Comp_Mass", FIELD(dynamics.Comp_Mass), mass},
    {"Comp_Preload", FIELD(dynamics.Comp_Preload), force},
    {"Comp_Spring_Rate", FIELD(dynamics.Comp_Spring_Rate), rate},
    {"Roller length", FIELD(dynamics.Roller_length), length},
    {"Crown radius", FIELD(dynamics.Crown_radius), length},
    {"Follower_Weight", FIELD(dynamics.Follower_Weight), force},
    {"Mass_m(1)", FIELD(dynamics.Mass_m(1)), mass},
    {"Mass_m(2)", FIELD(dynamics.Mass_m(2)), mass},
    {"Kspring(1)", FIELD(dynamics.Kspring(1)), rate},
    {"Kspring(2)", FIELD(dynamics.Kspring(2)), rate},
    {"Mass of link(2)", FIELD(linkage.Mass_of_link(2)), mass},
    {"Mass of link(6)", FIELD(linkage.Mass_of_link(6)), mass},
    {"CGx of link(2)", FIELD(linkage.CGx_of_link(2)), length},
    {"CGx of link(6)", FIELD(linkage.CGx_of_link(6)), length},
    {"Inertia of link(2)", FIELD(linkage.Inertia_of_link(2)), inertia},
    {"Inertia of link(6)", FIELD(linkage.Inertia_of_link(6)), inertia},
    {"Stiffness of link(2)", FIELD(linkage.Stiffness_of_link(2)), rate},
    {"Stiffness of link(6)", FIELD(linkage.Stiffness_of_link(6)), rate},
};

const Converted_Field other_fields[] = {
    {"Deltatheta", FIELD(motion.Deltatheta), 0},
    {"Shaft speed", FIELD(motion.Shaft_speed), 0},
    {"Follower_Angle", FIELD(cam.Follower_Angle), 0},
    {"Shift_Angle", FIELD(cam.Shift_Angle), 0},
    {"Zoom Factor", FIELD(cam.Zoom_Factor), 0},
    {"Zeta_Initial", FIELD(dynamics.Zeta_Initial), 0},
    {"Zeta(1)", FIELD(dynamics.Zeta(1)), 0},
    {"Mu of Shaft", FIELD(dynamics.Mu_of_Shaft), 0},
    {"Coeff of Fluctuation", FIELD(dynamics.Coeff_of_Fluctuation), 0},
    {"Theta1", FIELD(linkage.Theta1), 0},
    {"Delta2", FIELD(linkage.Delta2), 0},
    {"Delta4", FIELD(linkage.Delta4), 0},
    {"Global_Slider_angle_deg", FIELD(linkage.Global_Slider_angle_deg), 0},
    {"Mass of link(1)", FIELD(linkage.Mass_of_link(1)), 0},
    {"CGx of link(1)", FIELD(linkage.CGx_of_link(1)), 0},
    {"CGy of link(2)", FIELD(linkage.CGy_of_link(2)), 0},
    {"Young's modulus(1)", FIELD(dynamics.Youngs_modulus(1)), 0},
    {"Follower_Stiffness", FIELD(dynamics.Follower_Stiffness), 0},
};

#undef FIELD

/// Rounding to decimals, a half upward; the table's decimals are those of System_Case.
double Rounded(double value, int places)
{
    const double scale = std::pow(10.0, places);
    return std::floor(value * scale + 0.5) / scale;
}

/// Which of the six decimals rounds a kind: the order of both is the same.
int Places(int code, int kind)
{
    return system_cases[code - 1].decimals[static_cast<std::size_t>(kind)];
}

class Conversion : public Units, public ::testing::WithParamInterface<std::array<int, 2>> {
protected:
    int from = GetParam()[0];
    int to = GetParam()[1];
};

TEST_P(Conversion, multiplies_every_field_by_its_factor_and_rounds_to_its_decimals)
{
    Start_In(from);
    double start = 1.2345;
    std::vector<double> before;
    for (const Converted_Field& field : converted_fields) {
        field.at() = start;
        before.push_back(field.at());
        start += 7.8917;
    }
    // feet and metric systems meet in inches, and the numbers are rounded there too
    std::vector<int> passes{from, to};
    if ((from == 2 && to > 2) || (to == 2 && from > 2))
        passes.insert(passes.begin() + 1, 1);

    Change_Units(design, to);

    for (std::size_t i = 0; i < std::size(converted_fields); ++i) {
        const Converted_Field& field = converted_fields[i];
        double expected = before[i];
        for (std::size_t pass = 1; pass < passes.size(); ++pass) {
            const double factor =
                In_Order(Single_Pass_Factors(passes[pass - 1], passes[pass]))[static_cast<std::size_t>(field.kind)];
            expected = static_cast<float>(Rounded(expected * factor, Places(passes[pass], field.kind)));
        }
        EXPECT_EQ(static_cast<double>(field.at()), expected) << field.name;
    }
}

TEST_P(Conversion, leaves_every_other_field_alone)
{
    Start_In(from);
    double start = 0.5;
    for (const Converted_Field& field : other_fields)
        field.at() = start += 0.25;
    Change_Units(design, to);
    start = 0.5;
    for (const Converted_Field& field : other_fields)
        EXPECT_EQ(static_cast<double>(field.at()), start += 0.25) << field.name;
}

TEST_P(Conversion, follows_with_labels_and_the_units_changed_flag)
{
    Start_In(from);
    EXPECT_FALSE(design.flags.Units_Changed);
    Change_Units(design, to);
    EXPECT_TRUE(design.flags.Units_Changed);
    EXPECT_EQ(design.identity.WhichUnit, to);
    Expect_Decimals(system_cases[to - 1].decimals);
    Expect_Var_Unit(system_cases[to - 1].length, system_cases[to - 1].force, system_cases[to - 1].stress, true, false,
                    1);
}

TEST_P(Conversion, keeps_results_and_their_flags)
{
    Start_In(from);
    Flags_Group& f = design.flags;
    f.Calculated = f.Sized = f.Dynamicflag = f.Modelflag = f.Stressflag = true;
    for (int v = 0; v <= 53; ++v)
        design.results.CalcData(v, 100) = v + 0.5;
    Change_Units(design, to);
    for (const Flag flag : {f.Calculated, f.Sized, f.Dynamicflag, f.Modelflag, f.Stressflag})
        EXPECT_TRUE(flag);
    for (int v = 0; v <= 53; ++v) {
        if (v == var::Ext_Force)
            continue;  // no result
        EXPECT_EQ(static_cast<double>(design.results.CalcData(v, 100)), v + 0.5) << v;
    }
}

TEST_P(Conversion, takes_the_external_force_along_in_its_table_and_in_its_row)
{
    Start_In(from);
    Flags_Group& f = design.flags;
    f.Calculated = f.Sized = f.Dynamicflag = true;
    design.results.Ext_Force_Table(100) = design.results.CalcData(var::Ext_Force, 100) = 44.5;
    Change_Units(design, to);
    // 1 lb is 4.448222 N; inches and feet share the pound, the metric systems the newton.
    const double factor = (from <= 2) == (to <= 2) ? 1.0 : from <= 2 ? 4.448222 : 1.0 / 4.448222;
    EXPECT_NEAR(design.results.Ext_Force_Table(100), 44.5 * factor, 44.5 * factor * 1e-7);
    EXPECT_EQ(design.results.CalcData(var::Ext_Force, 100), design.results.Ext_Force_Table(100));
    EXPECT_EQ(design.plot.Var_Unit(var::Ext_Force), to <= 2 ? "lb" : "N");
    EXPECT_EQ(design.plot.Var_Unit(var::Force), from <= 2 ? "lb" : "N") << "a result of the units before";
}

std::vector<std::array<int, 2>> Every_Pair()
{
    std::vector<std::array<int, 2>> pairs;
    for (int from = 1; from <= 5; ++from)
        for (int to = 1; to <= 5; ++to)
            if (from != to)
                pairs.push_back({from, to});
    return pairs;
}

INSTANTIATE_TEST_SUITE_P(All, Conversion, ::testing::ValuesIn(Every_Pair()), [](const auto& row) {
    return "from_" + std::to_string(row.param[0]) + "_to_" + std::to_string(row.param[1]);
});

TEST_F(Units, a_change_to_its_own_system_does_nothing)
{
    design.cam.Prime_Rad = 1.23456;  // more decimals than the system shows
    const Single before = design.cam.Prime_Rad;
    Change_Units(design, 5);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), before.Bits());
    EXPECT_FALSE(design.flags.Units_Changed);
}

TEST_F(Units, an_inch_is_25_4_millimetres_and_an_inch_again)
{
    Start_In(1);
    design.cam.Prime_Rad = 1.0;
    Change_Units(design, 5);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 25.4F);
    Change_Units(design, 1);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 1.0F);
}

TEST_F(Units, a_round_trip_need_not_give_the_old_value_back)
{
    Start_In(5);
    design.cam.Prime_Rad = 0.01;  // 0.00001 m, and metres keep four decimals
    Change_Units(design, 3);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 0.0F);
    Change_Units(design, 5);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 0.0F);
}

TEST_F(Units, feet_reach_millimetres_through_inches_that_are_rounded_on_the_way)
{
    Start_In(2);
    design.cam.Prime_Rad = 0.083;  // 0.996 in, 25.2984 mm
    design.dynamics.Mass = 0.001;  // 0.000083 bl, which is 0.0001 bl in four decimals, 0.0175 kg
    design.cam.Offset = 0.0001;    // 0.0012 in, which is 0.001 in, 0.0254 mm; in one pass 0.03048 mm
    Change_Units(design, 5);
    EXPECT_EQ(design.cam.Prime_Rad.Bits(), 25.3F);
    EXPECT_EQ(design.dynamics.Mass.Bits(), 0.018F);  // in one pass 0.0146 kg, 0.015
    EXPECT_EQ(design.cam.Offset.Bits(), 0.03F);
}

TEST_F(Units, millimetres_reach_feet_through_inches_that_are_rounded_on_the_way)
{
    design.dynamics.Mass = 0.008;  // 0.0000457 bl: nothing in four decimals
    Change_Units(design, 2);
    EXPECT_EQ(design.dynamics.Mass.Bits(), 0.0F);  // in one pass 0.00055 sl, 0.001
}

TEST_F(Units, a_half_goes_up_for_a_negative_length_too)
{
    Start_In(4);
    design.cam.Offset = -0.0625;  // -0.625 mm, both exact in binary
    Change_Units(design, 5);
    EXPECT_EQ(design.cam.Offset.Bits(), -0.62F);
}

// ---- the texts of the segments

/// Number of a text, which the number format may have closed with blanks.
double Number(const std::string& text)
{
    const Number_Read reading = Read_Number(text, Decimal_Symbol::point);
    EXPECT_TRUE(reading.whole) << "'" << text << "'";
    return reading.value;
}

using Text_Of = std::string& (*)(int segment, int k);

struct Condition_Table {
    const char* name;
    Text_Of at;
};

const Condition_Table condition_tables[] = {
    {"T", [](int i, int k) -> std::string& { return design.motion.T_boundary_cond(i, k); }},
    {"S", [](int i, int k) -> std::string& { return design.motion.S_boundary_cond(i, k); }},
    {"V", [](int i, int k) -> std::string& { return design.motion.V_boundary_cond(i, k); }},
    {"A", [](int i, int k) -> std::string& { return design.motion.A_boundary_cond(i, k); }},
    {"J", [](int i, int k) -> std::string& { return design.motion.J_boundary_cond(i, k); }},
};

TEST_F(Units, a_condition_of_1_5_inches_reads_38_1_millimetres)
{
    Start_In(1);
    design.motion.S_boundary_cond(1, 1) = "1.5";
    Change_Units(design, 5);
    EXPECT_EQ(Trim(design.motion.S_boundary_cond(1, 1)), "38.10");  // two decimals in millimetres
    EXPECT_EQ(Number(design.motion.S_boundary_cond(1, 1)), 38.1);
}

TEST_F(Units, all_five_condition_tables_take_the_length_factor_the_angles_too)
{
    for (const Condition_Table& table : condition_tables)
        for (const int i : {1, 2, 20})
            for (int k = 1; k <= 9; ++k) {
                Start_In(1);
                table.at(i, k) = "1.5";
                Change_Units(design, 5);
                EXPECT_EQ(Number(table.at(i, k)), 38.1) << table.name << " " << i << ", " << k;
            }
}

TEST_F(Units, row_0_of_the_condition_tables_and_segment_0_are_left_alone)
{
    Start_In(1);
    for (const Condition_Table& table : condition_tables) {
        table.at(0, 1) = "1.5";
        if (std::string(table.name) != "T")  // the angles start with row 1
            table.at(1, 0) = "1.5";
    }
    design.motion.Start_Value(0) = "1.5";
    Change_Units(design, 5);
    for (const Condition_Table& table : condition_tables) {
        EXPECT_EQ(table.at(0, 1), "1.5") << table.name;
        if (std::string(table.name) != "T") {
            EXPECT_EQ(table.at(1, 0), "1.5") << table.name;
        }
    }
    EXPECT_EQ(design.motion.Start_Value(0), "1.5");
}

TEST_F(Units, ping_conditions_are_left_alone)
{
    Start_In(1);
    design.motion.Pbound(1, 1) = "1.5";
    Change_Units(design, 5);
    EXPECT_EQ(design.motion.Pbound(1, 1), "1.5");
}

TEST_F(Units, start_and_end_of_all_twenty_segments_are_converted_whatever_their_number)
{
    Start_In(1);
    for (int i = 1; i <= 20; ++i) {
        design.motion.Start_Value(i) = "0";
        design.motion.End_Value(i) = "1.25";
    }
    Change_Units(design, 5);
    for (int i = 1; i <= 20; ++i) {
        EXPECT_EQ(Number(design.motion.Start_Value(i)), 0.0) << i;
        EXPECT_EQ(Number(design.motion.End_Value(i)), 31.75) << i;
    }
}

TEST_F(Units, texts_are_rounded_to_the_decimals_of_a_length)
{
    Start_In(5);
    design.motion.End_Value(1) = "25";  // 0.984252 in
    Change_Units(design, 1);
    EXPECT_EQ(Number(design.motion.End_Value(1)), 0.984);
}

TEST_F(Units, texts_of_feet_take_two_passes)
{
    Start_In(2);
    design.motion.S_boundary_cond(1, 1) = "0.0001";  // 0.0012 in, 0.001 in, 0.0254 mm
    design.motion.End_Value(1) = "1";
    Change_Units(design, 5);
    EXPECT_EQ(Number(design.motion.S_boundary_cond(1, 1)), 0.03);
    EXPECT_EQ(Number(design.motion.End_Value(1)), 304.8);
}

TEST_F(Units, empty_texts_stay_empty)
{
    Start_In(1);
    Change_Units(design, 5);
    Change_Units(design, 2);
    for (int i = 1; i <= 20; ++i) {
        EXPECT_EQ(design.motion.Start_Value(i), "");
        EXPECT_EQ(design.motion.End_Value(i), "");
        for (int k = 1; k <= 9; ++k)
            for (const Condition_Table& table : condition_tables)
                EXPECT_EQ(table.at(i, k), "");
    }
}

TEST_F(Units, a_large_position_is_grouped_and_reads_back)
{
    Start_In(3);
    design.motion.End_Value(1) = "12.345";
    Change_Units(design, 5);
    EXPECT_EQ(Trim(design.motion.End_Value(1)), "12,345.00");
    EXPECT_EQ(Number(design.motion.End_Value(1)), 12345.0);
    Change_Units(design, 3);
    EXPECT_EQ(Number(design.motion.End_Value(1)), 12.345);
}

TEST_F(Units, texts_follow_the_European_format)
{
    Start_In(1);
    design.identity.Number_Format = "Europe";
    design.motion.End_Value(1) = "1,5";
    Change_Units(design, 5);
    EXPECT_EQ(Trim(design.motion.End_Value(1)), "38,10");
}

TEST_F(Units, the_texts_of_an_oscillating_follower_are_left_alone)
{
    Start_In(1);
    design.cam.Translating = false;
    design.motion.Start_Value(1) = "0";
    design.motion.End_Value(1) = "15";
    for (const Condition_Table& table : condition_tables)
        table.at(1, 1) = "1.5";
    design.cam.ArmRad = 2.0;
    Change_Units(design, 5);
    EXPECT_EQ(design.motion.Start_Value(1), "0");
    EXPECT_EQ(design.motion.End_Value(1), "15");
    for (const Condition_Table& table : condition_tables)
        EXPECT_EQ(table.at(1, 1), "1.5") << table.name;
    EXPECT_EQ(design.cam.ArmRad.Bits(), 50.8F);  // its lengths are converted
}

// ---- what is derived again

TEST_F(Units, displacements_of_the_segments_follow_their_texts)
{
    Start_In(1);
    Motion_Group& m = design.motion;
    m.No_of_segments = 3;
    const char* const kind[] = {"R", "D", "F"};
    const char* const low[] = {"0.5", "1.5", "1.5"};
    const char* const high[] = {"1.5", "1.5", "0.5"};
    for (int i = 1; i <= 3; ++i) {
        m.Rise_Fall_Dwell(i) = kind[i - 1];
        m.Start_Value(i) = low[i - 1];
        m.End_Value(i) = high[i - 1];
    }
    Change_Units(design, 5);
    // a rise and a fall of 1 in from and to 0.5 in; a dwell holds its absolute position; 38.1 - 12.7 of Singles
    EXPECT_FLOAT_EQ(m.Total_Displacement(1).Bits(), 25.4F);
    EXPECT_EQ(m.Total_Displacement(2).Bits(), 38.1F);
    EXPECT_FLOAT_EQ(m.Total_Displacement(3).Bits(), 25.4F);
    EXPECT_EQ(m.Base_Shift(1).Bits(), 12.7F);
    EXPECT_EQ(m.Base_Shift(3).Bits(), 12.7F);
}

TEST_F(Units, squares_and_cubes_of_the_speed_are_refreshed)
{
    design.motion.Shaft_speed = 3.0;
    Change_Units(design, 1);
    EXPECT_EQ(design.motion.Shaft_Speed_Sq.Bits(), 9.0F);
    EXPECT_EQ(design.motion.Shaft_Speed_Cu.Bits(), 27.0F);
}

TEST_F(Units, a_number_too_large_for_the_new_system_leaves_the_whole_design_in_the_old_one)
{
    design.identity.WhichUnit = 3;
    Set_Units(design);
    design.cam.Prime_Rad = 2.0;
    design.dynamics.Crown_radius = 1E38;  // metres: no Single holds it in millimetres
    EXPECT_THROW(Change_Units(design, 5), Fault);
    EXPECT_EQ(design.identity.WhichUnit, 3);
    EXPECT_EQ(design.cam.Prime_Rad, 2.0);
    EXPECT_EQ(design.identity.Decimals_1, 4);
    EXPECT_FALSE(design.flags.Units_Changed);
}

TEST_F(Units, the_linkage_is_set_up_again)
{
    design.linkage.Links = 6;
    design.linkage.Linkage_Type = 3;
    design.linkage.Linkage_Kind = "";
    Change_Units(design, 1);
    EXPECT_EQ(design.linkage.Linkage_Kind, "Sixslide");
}

}  // namespace
}  // namespace lobemax
