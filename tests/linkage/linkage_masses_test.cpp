// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_masses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/variables.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "tests/support/linkage_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

using testing::Kind_of_Train;
using testing::Make_Train;
using testing::Script;
using testing::Turned;
using testing::Vector;

constexpr double pi = 3.14159265358979323846;

Linkage_Group& k()
{
    return design.linkage;
}

void Calculate()
{
    Integer answer;
    ASSERT_TRUE(Calc_Linkage_All(design, answer));
}

void Put_Masses(double off_line_degrees)
{
    for (int link = 2; link <= Max_Links; ++link) {
        k().Mass_of_link(link) = 0.5 + 0.3 * link;
        k().Inertia_of_link(link) = 0.002 * link;
        k().CGx_of_link(link) = 20.0 + 8 * link;
        k().CGy_of_link(link) = off_line_degrees * pi / 180.0;
        k().Stiffness_of_link(link) = 1E5 * link;
    }
}

/// Where a link's centre of gravity stands, metres, from its joints in a pose: the point that the link turns about and
/// its line.
Vector Centre_of_Gravity(const Train_Pose& pose, int link)
{
    const auto at = [&](int p) {
        const World_Point& point = pose.point[static_cast<std::size_t>(p)];
        return Vector{point.x, point.y};
    };
    const Vector pivot{design.cam.ArmX, design.cam.ArmY};
    const Vector O4{k().O4x, k().O4y};
    const Vector O6{k().O6x, k().O6y};
    const bool four_slider = k().Linkage_Type == 2;
    Vector from;
    Vector line;
    switch (link) {
    case 2:
        from = pivot;
        line = at(link_point::A) - pivot;
        break;
    case 3:
        from = at(link_point::A);
        line = at(link_point::B) - from;
        break;
    case 4:
        if (four_slider)
            return at(link_point::B) / 1000.0;
        from = O4;
        line = at(link_point::B) - O4;
        break;
    case 5:
        from = at(link_point::D);
        line = at(link_point::C) - from;
        break;
    default:
        if (k().Linkage_Type == 3)
            return at(link_point::C) / 1000.0;
        from = O6;
        line = at(link_point::C) - O6;
        break;
    }
    return (from + line / std::abs(line) * Turned(k().CGx_of_link(link), k().CGy_of_link(link) * 180.0 / pi)) / 1000.0;
}

/// Twice the kinetic energy over the square of the roller's speed, by moving the train a little either way.
double Weighed_by_Moving(const Linkage_Train& train, double theta2)
{
    constexpr double h = 1E-5;
    const Train_Pose before = train.At({theta2 - h, 1.0, 0.0});
    const Train_Pose after = train.At({theta2 + h, 1.0, 0.0});
    double twice = 0.0;
    for (int link = 2; link <= Last_Link(design); ++link) {
        const auto place = static_cast<std::size_t>(link);
        const bool slides = Ends_in_Slider(design) && link == Last_Link(design);
        const double speed = std::abs(Centre_of_Gravity(after, link) - Centre_of_Gravity(before, link)) / (2 * h);
        const double turning = slides ? 0.0 : (after.link[place].theta - before.link[place].theta) / (2 * h);
        twice += k().Mass_of_link(link) * speed * speed + k().Inertia_of_link(link) * turning * turning;
    }
    const double arm = design.cam.ArmRad / 1000.0;
    return twice / (arm * arm);
}

class Every_Mass : public ::testing::TestWithParam<Kind_of_Train> {
protected:
    void SetUp() override { Make_Train(GetParam()); }
    Script script_;
};

TEST_P(Every_Mass, is_twice_the_kinetic_energy_over_the_square_of_the_followers_speed)
{
    for (const double off_line : {0.0, 35.0}) {
        Put_Masses(off_line);
        Calculate();
        const double rest = Arm_Angle_at_Rest(design);
        const Linkage_Train train(design);
        double least = 1E30;
        double largest = 0.0;
        double sum = 0.0;
        const int points = design.motion.Max_Data_Points_used;
        for (int i = 0; i <= points; ++i) {
            const double mass = Weighed_by_Moving(train, Input_at(design, rest, i).theta2);
            least = std::min(least, mass);
            largest = std::max(largest, mass);
            sum += mass;
        }
        const Mass_over_Cycle figures = True_Mass_over_Cycle(design);
        EXPECT_NEAR(figures.least, least, 1E-6 * least);
        EXPECT_NEAR(figures.largest, largest, 1E-6 * largest);
        EXPECT_NEAR(figures.mean, sum / (points + 1), 1E-6 * figures.mean);
    }
}

TEST_P(Every_Mass, is_that_of_the_instant_where_its_speeds_are_those_of_one_instant)
{
    Put_Masses(0.0);
    Calculate();
    // The tables tell of one moving point alone: peak speeds are then those of one pose.
    const int moving = 45;
    Results_Group& r = design.results;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        for (int link = 2; link <= Max_Links && i != moving; ++link)
            r.Link_Omega(link, i) = 0.0;
    const double rest = Arm_Angle_at_Rest(design);
    const double expected = Weighed_by_Moving(Linkage_Train(design), Input_at(design, rest, moving).theta2);
    const auto mass = Link_Mass(design, Speed_Choice::peak);
    ASSERT_TRUE(mass);
    EXPECT_NEAR(mass->Total(), expected, 1E-5 * expected);
    // Means over the cycle are all the same share of it.
    const auto mean = Link_Mass(design, Speed_Choice::average);
    ASSERT_TRUE(mean);
    EXPECT_NEAR(mean->Total(), expected, 1E-5 * expected);
    EXPECT_GT(mass->at_follower, 0.0);
    EXPECT_GT(mass->at_effector, 0.0);
}

TEST_P(Every_Mass, is_the_same_in_metres_and_millimetres)
{
    Put_Masses(20.0);
    Calculate();
    const auto in_mm = Link_Mass(design, Speed_Choice::peak);
    const auto k_in_mm = Link_Stiffness(design, Speed_Choice::peak);
    const Mass_over_Cycle true_in_mm = True_Mass_over_Cycle(design);
    ASSERT_TRUE(in_mm && k_in_mm);
    // The same machine in metres, unrounded.
    design.identity.WhichUnit = 3;
    Linkage_Group& l = k();
    Cam_Group& c = design.cam;
    for (Single* length : {&l.Link_2, &l.Link_3, &l.Link_4, &l.Link_4a, &l.Link_5, &l.Link_6, &l.O4x, &l.O4y, &l.O6x,
                           &l.O6y, &l.S3x, &l.S3y, &l.Offset6, &c.ArmX, &c.ArmY, &c.ArmRad, &c.Prime_Rad})
        *length = *length / 1000;
    for (int link = 2; link <= Max_Links; ++link)
        l.CGx_of_link(link) = l.CGx_of_link(link) / 1000;
    Calculate();
    const auto in_m = Link_Mass(design, Speed_Choice::peak);
    const auto k_in_m = Link_Stiffness(design, Speed_Choice::peak);
    ASSERT_TRUE(in_m && k_in_m);
    EXPECT_NEAR(in_m->Total(), in_mm->Total(), 1E-4 * in_mm->Total());
    EXPECT_NEAR(*k_in_m, *k_in_mm, 1E-4 * *k_in_mm);
    EXPECT_NEAR(True_Mass_over_Cycle(design).mean, true_in_mm.mean, 1E-4 * true_in_mm.mean);
}

TEST_P(Every_Mass, has_a_spring_softer_than_its_softest_link_through_the_gearing)
{
    Put_Masses(0.0);
    Calculate();
    const auto whole = Link_Stiffness(design, Speed_Choice::peak);
    ASSERT_TRUE(whole);
    // In series, so: with all but one link rigid the spring is that link's, and the compliances add up.
    double compliance = 0.0;
    for (int soft = 2; soft <= Last_Link(design); ++soft) {
        for (int link = 2; link <= Max_Links; ++link)
            k().Stiffness_of_link(link) = link == soft ? 1E5 * link : 1E25;
        const auto one = Link_Stiffness(design, Speed_Choice::peak);
        ASSERT_TRUE(one);
        EXPECT_GT(*one, *whole);
        compliance += 1.0 / *one;
    }
    EXPECT_NEAR(1.0 / compliance, *whole, 1E-5 * *whole);
}

INSTANTIATE_TEST_SUITE_P(All, Every_Mass,
                         ::testing::Values(Kind_of_Train{0}, Kind_of_Train{0, "", 1}, Kind_of_Train{1, "W"},
                                           Kind_of_Train{1, "S"}, Kind_of_Train{2}, Kind_of_Train{3}),
                         [](const auto& train) { return train.param.Name(); });

class Masses : public ::testing::Test {
protected:
    /// Link 4 parallel to the arm: every speed ratio is 1.
    void Make_Parallelogram()
    {
        Make_Train({});
        ASSERT_TRUE(Put(design, "Link 2", 80.0));
        ASSERT_TRUE(Put(design, "Link 4", 80.0));
        Set_Ground(design);
        ASSERT_TRUE(Put(design, "Link 3", double{k().Link_1}));
        Calculate();
    }
    Script script_;
};

TEST_F(Masses, of_a_parallelogram_are_those_of_its_links)
{
    Make_Parallelogram();
    Put_Masses(0.0);
    // The coupler moves without turning: it counts with its whole mass at the pins. 0.08 m pins and arm.
    const auto pivoted = [](int link) {
        const double d = k().CGx_of_link(link) / 1000.0;
        return (k().Inertia_of_link(link) + k().Mass_of_link(link) * d * d) / (0.08 * 0.08);
    };
    const auto mass = Link_Mass(design, Speed_Choice::peak);
    ASSERT_TRUE(mass);
    EXPECT_NEAR(mass->Total(), pivoted(2) + k().Mass_of_link(3) + pivoted(4), 1E-3);
    // 1 / k = 1 / k2 + 1 / k3 + 1 / k4, pins and roller at one radius.
    const auto stiffness = Link_Stiffness(design, Speed_Choice::average);
    ASSERT_TRUE(stiffness);
    EXPECT_NEAR(*stiffness, 1.0 / (1 / 2E5 + 1 / 3E5 + 1 / 4E5), 30.0);
}

TEST_F(Masses, may_be_zero)
{
    Make_Parallelogram();
    Put_Masses(0.0);
    for (int link = 2; link <= Max_Links; ++link)
        k().Mass_of_link(link) = k().Inertia_of_link(link) = 0.0;
    const auto mass = Link_Mass(design, Speed_Choice::peak);
    ASSERT_TRUE(mass);
    EXPECT_EQ(mass->Total(), 0.0);
}

TEST_F(Masses, need_every_stiffness_of_the_train)
{
    for (const Kind_of_Train& kind : {Kind_of_Train{0}, Kind_of_Train{1, "W"}}) {
        Make_Train(kind);
        Calculate();
        for (int soft = 2; soft <= Last_Link(design); ++soft) {
            Put_Masses(0.0);
            k().Stiffness_of_link(soft) = 0.0;
            Script script(
                {{"At least one of your stiffnesses is zero.\nNone may be.  Please redo.", Buttons::OK, Symbol::none}});
            EXPECT_FALSE(Link_Stiffness(design, Speed_Choice::peak)) << soft;
        }
    }
    // A fourbar asks for those of its own links alone.
    Make_Train({});
    Calculate();
    Put_Masses(0.0);
    k().Stiffness_of_link(5) = k().Stiffness_of_link(6) = k().Stiffness_of_link(1) = 0.0;
    EXPECT_TRUE(Link_Stiffness(design, Speed_Choice::peak));
}

TEST_F(Masses, are_none_of_links_that_stand)
{
    Make_Train({});
    Calculate();
    for (Single& omega : design.results.Link_Omega.Points(2))
        omega = 0.0;
    const testing::Expected_Box box{"The links do not move.  There is no effective mass or stiffness.", Buttons::OK,
                                    Symbol::exclamation};
    script_.Expect(box);
    EXPECT_FALSE(Link_Mass(design, Speed_Choice::peak));
    script_.Expect(box);
    EXPECT_FALSE(Link_Stiffness(design, Speed_Choice::peak));
}

TEST_F(Masses, go_into_the_model_of_the_follower_train)
{
    for (const int model : {1, 2, 3, 4, 5}) {
        Make_Train({});
        Put_Masses(0.0);
        ASSERT_TRUE(Put(design, "Model_Type", model));
        Calculate();
        const auto effect = Run_Link_Masses(design, Speed_Choice::peak);
        ASSERT_TRUE(effect && effect->stiffness);
        const Dynamics_Group& d = design.dynamics;
        const bool two = model >= 4;
        EXPECT_NEAR(d.Mass_m(1), two ? effect->mass.at_follower : effect->mass.Total(), 1E-6);
        EXPECT_NEAR(d.Mass_m(2), effect->mass.at_effector, 1E-6);
        EXPECT_EQ(d.Mass, d.Mass_m(1));
        const int train = model == 3 || model == 4 ? 2 : 1;
        EXPECT_NEAR(d.Kspring(train), *effect->stiffness, 1E-2);
        EXPECT_EQ(d.Kspring(3 - train), 400000.0F) << "the closing spring stays";
    }
}

TEST_F(Masses, ask_for_a_calculated_linkage)
{
    Make_Train({});
    script_.Expect({"Calculate the linkage first.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Run_Link_Masses(design, Speed_Choice::peak));
}

}  // namespace
}  // namespace lobemax
