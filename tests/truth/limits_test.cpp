// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/limits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

#include "core/startup.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Limits_of_a_User : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static void Use(int units, bool translating = true)
    {
        design.identity.WhichUnit = units;
        design.cam.Translating = translating;
    }
    static std::string Put(std::string_view name, std::string_view text)
    {
        return Put_Limit(limits_, design, name, text);
    }
    static inline Limits limits_;
};

TEST_F(Limits_of_a_User, each_has_a_key_of_its_own_and_a_name_that_only_an_arm_shares)
{
    std::set<std::string_view> keys;
    ASSERT_EQ(Limit_Table().size(), static_cast<std::size_t>(Limit_Count));
    for (const Limit_Entry& entry : Limit_Table()) {
        EXPECT_TRUE(keys.insert(entry.key).second) << entry.key;
        EXPECT_EQ(&Entry_of(entry.limit), &entry);
    }
    for (const bool translating : {true, false}) {
        Use(5, translating);
        std::set<std::string_view> names;
        for (const Limit_Entry& entry : Limit_Table())
            if (Applies(design, entry.limit)) {
                EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
            }
        EXPECT_EQ(names.size(), 12U);
    }
}

TEST_F(Limits_of_a_User, are_those_of_its_follower)
{
    Use(5, true);
    for (const Limit limit : {Limit::Phi, Limit::V, Limit::A, Limit::J, Limit::Surface, Limit::Sigma, Limit::Cam_Size})
        EXPECT_TRUE(Applies(design, limit));
    for (const Limit limit : {Limit::Phi_Arm, Limit::V_Arm, Limit::A_Arm, Limit::J_Arm, Limit::Swing})
        EXPECT_FALSE(Applies(design, limit));
    Use(5, false);
    for (const Limit limit : {Limit::Phi, Limit::V, Limit::A, Limit::J, Limit::Surface})
        EXPECT_FALSE(Applies(design, limit));
    for (const Limit limit : {Limit::Phi_Arm, Limit::V_Arm, Limit::A_Arm, Limit::J_Arm, Limit::Swing, Limit::Sigma})
        EXPECT_TRUE(Applies(design, limit));
}

TEST_F(Limits_of_a_User, are_at_first_those_of_practice)
{
    const Limits usual;
    EXPECT_EQ(usual[Limit::Phi], 30.0);
    EXPECT_EQ(usual[Limit::Phi_Arm], 35.0);
    EXPECT_EQ(usual[Limit::Rho_Ratio], 1.5);
    EXPECT_EQ(usual[Limit::Surface], 0.01);
    EXPECT_EQ(usual[Limit::Swing], 0.01);
    EXPECT_EQ(usual[Limit::Chord], 0.01);
    EXPECT_EQ(std::ranges::count_if(usual.value, [](const auto& value) { return !value; }), 11);
    EXPECT_EQ(usual, Limits());
}

/// The international inch, foot and pound, and standard gravity: 25.4 mm, 304.8 mm, 0.45359237 kg x 9.80665 m/s^2. An
/// in-lb is then 0.112984829 N-m, a ft-lb 1.355817948 N-m, a psi 0.00689475729 MPa.
TEST_F(Limits_of_a_User, are_worth_the_same_in_every_unit_system)
{
    constexpr double lb = 0.45359237 * 9.80665;
    struct Row {
        double length, force, torque, stress;
        const char *length_word, *force_word, *torque_word, *stress_word;
    };
    constexpr std::array<Row, 5> rows{{{25.4, lb, 0.1129848290276167, 0.006894757293168361, "in", "lb", "in-lb", "psi"},
                                       {304.8, lb, 1.3558179483314, 0.006894757293168361, "ft", "lb", "ft-lb", "psi"},
                                       {1000.0, 1.0, 1.0, 1e-6, "m", "N", "N-m", "Pa"},
                                       {10.0, 1.0, 1.0, 1.0, "cm", "N", "N-m", "MPa"},
                                       {1.0, 1.0, 1.0, 1.0, "mm", "N", "N-m", "MPa"}}};
    for (int units = 1; units <= 5; ++units) {
        Use(units);
        const Row& row = rows.at(static_cast<std::size_t>(units - 1));
        const auto expect = [&](Limit limit, double factor, const std::string& unit) {
            SCOPED_TRACE(std::string(Entry_of(limit).key) + ", " + std::to_string(units));
            EXPECT_NEAR(Limit_Factor(design, Entry_of(limit).unit), factor, 1e-12 * factor);
            EXPECT_EQ(Unit_of_Limit(design, limit), unit);
            EXPECT_EQ(Put_Limit(limits_, design, Entry_of(limit).key, "2.5"), "");
            EXPECT_NEAR(limits_[limit].value(), 2.5 * factor, 1e-11 * factor);
            EXPECT_NEAR(In_Design_Units(design, limits_, limit).value(), 2.5, 1e-14);
        };
        const std::string length = row.length_word;
        for (const Limit limit : {Limit::Face_Width, Limit::Cam_Size, Limit::Surface, Limit::Chord})
            expect(limit, row.length, length);
        expect(Limit::V, row.length, length + "/sec");
        expect(Limit::A, row.length, length + "/sec^2");
        expect(Limit::J, row.length, length + "/sec^3");
        expect(Limit::Contact_Force, row.force, row.force_word);
        expect(Limit::Torque, row.torque, row.torque_word);
        expect(Limit::Sigma, row.stress, row.stress_word);
        for (const Limit limit : {Limit::Phi, Limit::Phi_Arm, Limit::Swing})
            expect(limit, 1.0, "deg");
        expect(Limit::V_Arm, 1.0, "deg/sec");
        expect(Limit::A_Arm, 1.0, "deg/sec^2");
        expect(Limit::J_Arm, 1.0, "deg/sec^3");
        expect(Limit::Rho_Ratio, 1.0, "");
    }
}

TEST_F(Limits_of_a_User, one_that_was_set_in_inches_holds_in_millimetres)
{
    Use(1);
    ASSERT_EQ(Put("Face_Width", "2"), "");
    ASSERT_EQ(Put("Sigma", "100000"), "");
    Use(5);
    EXPECT_NEAR(In_Design_Units(design, limits_, Limit::Face_Width).value(), 50.8, 1e-12);
    EXPECT_NEAR(In_Design_Units(design, limits_, Limit::Sigma).value(), 689.4757293168361, 1e-9);
}

TEST_F(Limits_of_a_User, are_set_by_name_for_the_follower_there_is_and_by_key_for_either)
{
    limits_ = Limits();
    Use(5, false);
    EXPECT_EQ(Put("phi", "28"), "");
    EXPECT_EQ(limits_[Limit::Phi_Arm], 28.0);
    EXPECT_EQ(limits_[Limit::Phi], 30.0);
    EXPECT_EQ(Put("SURFACE", " 0.02 "), "");
    EXPECT_EQ(limits_[Limit::Swing], 0.02);
    Use(5, true);
    EXPECT_EQ(Put("PHI", "25"), "");
    EXPECT_EQ(limits_[Limit::Phi], 25.0);
    EXPECT_EQ(Put("Phi_Arm", "33"), "");
    EXPECT_EQ(limits_[Limit::Phi_Arm], 33.0);
    EXPECT_EQ(Put("Phi", "Off"), "");
    EXPECT_FALSE(limits_[Limit::Phi].has_value());
    EXPECT_FALSE(In_Design_Units(design, limits_, Limit::Phi).has_value());
    EXPECT_EQ(limits_[Limit::Phi_Arm], 33.0);
}

TEST_F(Limits_of_a_User, that_are_none_are_refused_and_stay)
{
    limits_ = Limits();
    const Limits before = limits_;
    Use(1);
    EXPECT_EQ(Put("Phy", "28"),
              "There is no limit 'Phy'; there are Phi, Rho_Ratio, Sigma, Contact_Force, V, A, J, Torque, Face_Width, "
              "Cam_Size, Surface, Chord.");
    for (const char* const text : {"", " ", "abc", "28 deg", "28,5x", "nan", "inf", "on"})
        EXPECT_EQ(Put("Phi", text), "'" + std::string(text) + "' is neither a number nor off.");
    for (const char* const text : {"0", "-1", "-0", "-1E300"})
        EXPECT_EQ(Put("Phi", text), "A limit must be positive, or off.") << text;
    EXPECT_EQ(Put("Contact_Force", "-1"), "A limit must be positive, or off.");
    for (const char* const text : {"1E308", "1E999", "9E400"})  // feet would bring the first beyond a double
        EXPECT_EQ(Put("V", text), "A limit must not be so large.") << text;
    EXPECT_EQ(limits_, before);
    EXPECT_EQ(Put("Contact_Force", "0"), "") << "a contact that is just not lost";
    EXPECT_EQ(limits_[Limit::Contact_Force], 0.0);
}

TEST_F(Limits_of_a_User, are_typed_in_the_number_format)
{
    Use(5);
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Put("Chord", "0,005"), "");
    EXPECT_EQ(limits_[Limit::Chord], 0.005);
}

TEST_F(Limits_of_a_User, have_a_rule_for_the_values_that_they_are_kept_with)
{
    EXPECT_EQ(Refused_Limit(Limit::Phi, 1e-300), "");
    EXPECT_EQ(Refused_Limit(Limit::Contact_Force, 0.0), "");
    EXPECT_NE(Refused_Limit(Limit::Phi, 0.0), "");
    EXPECT_NE(Refused_Limit(Limit::Phi, std::nan("")), "");
    EXPECT_NE(Refused_Limit(Limit::Contact_Force, -1.0), "");
    EXPECT_NE(Refused_Limit(Limit::J, std::numeric_limits<double>::infinity()), "");
}

}  // namespace
}  // namespace lobemax
