// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/true_contact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"
#include "truth/hertz.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Script;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double deg = std::numbers::pi / 180;

/// A sized design with forces and stresses in mm, force closed, on a cylindrical roller; and points made by hand.
class True_Contacts : public ::testing::Test {
protected:
    void SetUp() override
    {
        Cam_Maker().Make();
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Run_Forces(design));
        Stress();
    }
    void TearDown() override { design = {}; }

    static void Stress()
    {
        Contact_Field refused{};
        Put_Materials(design);
        ASSERT_TRUE(Run_Stress(design, refused));
    }
    static std::vector<True_Point> True_Points()
    {
        const True_Cam cam(design);
        std::vector<True_Point> points;
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
            points.push_back(cam.At(Data(var::Angle, i)));
        return points;
    }
    static True_Contact Found(std::vector<True_Point> points)
    {
        return Find_True_Contact(design, Mechanism(design), points);
    }
    /// The one point of a pressure angle and a radius of the surface, under the force of the first row.
    static True_Contact At_One(double Phi, double Rho_Surface)
    {
        True_Point point;
        point.Phi = Phi;
        point.Rho_Surface = Rho_Surface;
        return Found({point});
    }

    Dynamics_Group& d_ = design.dynamics;
    Script script_;
};

TEST_F(True_Contacts, of_a_centric_translating_roller_are_those_of_the_rows)
{
    const std::vector<True_Point> points = True_Points();
    const True_Contact found = Found(points);
    ASSERT_EQ(found.force.size(), 361U);
    ASSERT_EQ(found.sigma.size(), 361U);
    for (int i = 0; i <= 360; ++i) {
        const auto k = static_cast<std::size_t>(i);
        EXPECT_NEAR(found.force[k], Data(var::Force, i) / std::cos(Data(var::Phi, i) * deg), 2E-4 * found.force[k]);
        if (std::abs(points[k].Rho) > 9.9 * 60)
            continue;  // the row is held within ten prime radii
        EXPECT_NEAR(found.sigma[k], Data(var::Sigma_Max, i), 1E-3 * std::abs(found.sigma[k])) << i;
        EXPECT_NEAR(found.tau[k], Data(var::Tau_Max, i) * 0.3002831 / 0.304, 1E-3 * found.tau[k]) << i;
    }
    EXPECT_EQ(Unit_of_True_Stress(design), "MPa");
    EXPECT_EQ(Stress_Row_Factor(design), 1.0);
}

TEST_F(True_Contacts, external_force_and_weight_are_shared_like_the_followers_own)
{
    design.flags.Ext_Force_Calc = true;
    design.results.Ext_Force_Table(0) = 70;
    d_.Follower_Weight = 30;
    const double F = Data(var::Force, 0);
    EXPECT_NEAR(At_One(30, 50).force[0], (F + 30) / std::cos(30 * deg), 1E-7) << "it is not added";
    d_.Ext_Force_Add = true;
    EXPECT_NEAR(At_One(30, 50).force[0], (F + 100) / std::cos(30 * deg), 1E-7);
    EXPECT_NEAR(At_One(-30, 50).force[0], (F + 100) / std::cos(30 * deg), 1E-7);
    design.cam.Closure = "Form";
    design.results.CalcData(var::Force, 0) = -500;
    EXPECT_NEAR(At_One(0, 50).force[0], 400, 1E-7) << "the other flank of a closed form takes what pulls";
}

TEST_F(True_Contacts, after_a_vibration_the_dynamic_force_counts)
{
    design.results.CalcData(var::Dynamic_Force, 0) = 1234;
    EXPECT_NEAR(At_One(0, 50).force[0], Data(var::Force, 0), 1E-9);
    design.flags.Modelflag = true;
    EXPECT_NEAR(At_One(0, 50).force[0], 1234, 1E-9);
}

TEST_F(True_Contacts, a_face_on_an_arm_bears_by_its_lever)
{
    design.cam.Followtype = 2;
    design.cam.Translating = false;
    design.cam.ArmRad = 80;
    True_Point point;
    point.Rho_Surface = 40;
    point.along = -50;
    const True_Contact found = Found({point});
    EXPECT_NEAR(found.force[0], Data(var::Force, 0) * 80 / 50, 1E-9) << "moments about the pivot";
    const double m = 2 * (1 - 0.28 * 0.28) / double{d_.Youngs_modulus(1)};
    EXPECT_NEAR(found.sigma[0], -Line_Contact(found.force[0], d_.Roller_length, 1 / 40.0, m).pressure, 1E-3)
        << "a face has no curvature of its own";
}

TEST_F(True_Contacts, nothing_touches_under_a_pull_or_where_the_surface_is_hollower_than_the_roller)
{
    EXPECT_LT(At_One(0, 50).sigma[0], -1.0);
    for (const double hollow : {-1.0, -6.0, -11.99, 0.0})
        EXPECT_EQ(At_One(0, hollow).sigma[0], 0.0) << hollow;
    EXPECT_EQ(At_One(0, -12.0).sigma[0], 0.0) << "the roller fits the hollow all around";
    EXPECT_LT(At_One(0, -13.0).sigma[0], 0.0);
    EXPECT_LT(At_One(0, infinite).sigma[0], 0.0) << "a straight flank";
    design.results.CalcData(var::Force, 0) = -5;
    const True_Contact pulled = At_One(0, 50);
    EXPECT_EQ(pulled.force[0], -5);
    EXPECT_EQ(pulled.sigma[0], 0.0);
    EXPECT_EQ(pulled.tau[0], 0.0);
}

TEST_F(True_Contacts, a_follower_pushed_across_its_way_has_a_large_force_and_no_fault)
{
    for (const double Phi : {90.0, -90.0, 89.99999999, 120.0}) {
        const True_Contact found = At_One(Phi, 50);
        EXPECT_TRUE(std::isfinite(found.force[0]) && std::isfinite(found.sigma[0])) << Phi;
        EXPECT_NEAR(found.force[0] / Data(var::Force, 0), 1E6, 1) << Phi;
    }
}

TEST_F(True_Contacts, a_crowned_roller_presses_an_ellipse)
{
    d_.Roller_type = 2;
    d_.Crown_radius = 300;
    const double m = 2 * (1 - 0.28 * 0.28) / double{d_.Youngs_modulus(1)};
    for (const double R_1 : {30.0, 400.0, -50.0}) {
        const True_Contact found = At_One(0, R_1);
        const Contact c = Elliptic_Contact(found.force[0], 1 / 600.0, (1 / R_1 + 1 / 12.0) / 2, m, 0.28);
        EXPECT_NEAR(found.sigma[0], -c.pressure, 1E-4 * c.pressure) << R_1;
        EXPECT_NEAR(found.tau[0], c.shear, 1E-4 * c.pressure) << R_1;
    }
}

TEST_F(True_Contacts, stand_empty_until_their_rows_are_calculated_in_the_units_of_the_design)
{
    design.flags.Stressflag = false;
    EXPECT_EQ(Found(True_Points()).force.size(), 361U);
    EXPECT_TRUE(Found(True_Points()).sigma.empty());
    design.flags.Stressflag = true;
    design.flags.Units_Changed = true;
    EXPECT_TRUE(Found(True_Points()).force.empty());
    design.flags.Units_Changed = false;
    design.flags.Dynamicflag = false;
    EXPECT_TRUE(Found(True_Points()).force.empty());
}

/// The same steel follower in every unit system: a force of 800 N on a roller of 1 inch radius over 2 inches of cam.
TEST_F(True_Contacts, the_same_contact_has_the_same_stress_in_every_unit_system)
{
    struct System {
        int code;
        double inch, newton, modulus;  // in the unit of the field
        double mpa;                    // what is told is worth in MPa
        const char* unit;
        double strip, ellipse;  // the row by what it is told in
    };
    constexpr double psi = 0.006894757293168;
    constexpr double pound = 4.4482216152605;
    constexpr double E = 206842.7;  // 30E6 psi in MPa
    for (const System& s :
         {System{1, 1.0, 1 / pound, 30E6, psi, "psi", 1.0, 1.0},
          System{2, 1 / 12.0, 1 / pound, 30E6 / 144, psi, "psi", 1.0, std::cbrt(144.0)},
          System{3, 0.0254, 1.0, E * 1E6, 1E-6, "Pa", 1.0, 1.0},
          System{4, 2.54, 1.0, E, 1.0, "MPa", 0.1, std::cbrt(0.01)}, System{5, 25.4, 1.0, E, 1.0, "MPa", 1.0, 1.0}}) {
        design.identity.WhichUnit = s.code;
        EXPECT_EQ(Unit_of_True_Stress(design), s.unit);
        design.cam.Follow_Rad = s.inch;
        d_.Youngs_modulus(1) = d_.Youngs_modulus(2) = s.modulus;
        d_.Poissons_ratio(1) = d_.Poissons_ratio(2) = 0.28;
        d_.Roller_length = 0.8 * s.inch;
        d_.Crown_radius = 20 * s.inch;
        design.results.CalcData(var::Force, 0) = 800 * s.newton;
        design.results.CalcData(var::Phi, 0) = 0;
        design.results.CalcData(var::Rho, 0) = 3 * s.inch;
        const double m = 2 * (1 - 0.28 * 0.28) / E;
        const double strip = Line_Contact(800, 0.8 * 25.4, 1.5 / 25.4, m).pressure;
        const double ellipse = Elliptic_Contact(800, 0.5 / (20 * 25.4), 0.75 / 25.4, m, 0.28).pressure;
        for (const int type : {1, 2}) {
            d_.Roller_type = type;
            const double truth = type == 1 ? strip : ellipse;
            EXPECT_NEAR(-At_One(0, 2 * s.inch).sigma[0] * s.mpa, truth, 1E-4 * truth) << s.code << ' ' << type;
            EXPECT_NEAR(Stress_Row_Factor(design), type == 1 ? s.strip : s.ellipse, 1E-9) << s.code << ' ' << type;
            // and so does the row by its factor: as it is for a strip, within the fits' five percent for an ellipse
            Contact_Field refused{};
            ASSERT_TRUE(Run_Stress(design, refused));
            const double row = -Data(var::Sigma_Max, 0) * Stress_Row_Factor(design) * s.mpa;
            EXPECT_NEAR(row, truth, (type == 1 ? 1E-4 : 0.05) * truth) << s.code << ' ' << type;
            design.flags.Dynamicflag = design.flags.Stressflag = true;
        }
    }
}

}  // namespace
}  // namespace lobemax
