// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/arc_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/startup.h"
#include "edit/door.h"
#include "files/example_designs.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Arcs_Form : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
    testing::Script script_;
};

/// Flank centre 40 from the cam's, nose centre 20 + 8 - 5 = 23, the circles touching inside, 60 - 5 = 55 apart:
/// 55^2 = 23^2 + 40^2 + 2 * 23 * 40 cos(end), end = 60.86 degrees to each side of the nose.
const Arc_Form made{"20", "60", "5", "8", ""};

TEST_F(Arcs_Form, arcs_that_make_a_cam_are_told_by_the_duration_of_their_lobe)
{
    const Arcs_Read read = Read_Arcs(design, made);
    ASSERT_TRUE(read.cam);
    EXPECT_EQ(read.cam->base, 20.0);
    EXPECT_EQ(read.cam->flank, 60.0);
    EXPECT_EQ(read.cam->nose, 5.0);
    EXPECT_EQ(read.cam->lift, 8.0);
    EXPECT_EQ(read.cam->roller, 0.0);
    EXPECT_EQ(read.line, "The lobe lasts 121.72 degrees of cam angle.");
    // The roller's centre leaves its circle on the same ray.
    const Arcs_Read rolled = Read_Arcs(design, {"20", "60", "5", "8", "9"});
    ASSERT_TRUE(rolled.cam);
    EXPECT_EQ(rolled.cam->roller, 9.0);
    EXPECT_EQ(rolled.line, read.line);
}

TEST_F(Arcs_Form, the_numbers_follow_the_number_format)
{
    design.identity.Number_Format = "Europe";
    const Arcs_Read read = Read_Arcs(design, {"20", "60", "5", "8,5", ""});
    ASSERT_TRUE(read.cam);
    EXPECT_EQ(read.cam->lift, 8.5);
    // d = 23.5: cos(end) = (55^2 - 23.5^2 - 40^2) / (2 * 23.5 * 40).
    const double end = std::acos((3025 - 23.5 * 23.5 - 1600) / 1880) * 180 / 3.14159265358979;
    const std::string duration = std::to_string(std::lround(2 * end * 100));  // hundredths
    EXPECT_EQ(read.line,
              "The lobe lasts " + duration.substr(0, 3) + "," + duration.substr(3) + " degrees of cam angle.");
}

TEST_F(Arcs_Form, arcs_that_make_no_cam_are_told_why)
{
    const auto line = [](const Arc_Form& form) {
        const Arcs_Read read = Read_Arcs(design, form);
        EXPECT_FALSE(read.cam) << read.line;
        return read.line;
    };
    EXPECT_EQ(line({}), "Base, flank, nose and lift of a cam of arcs must be above zero.");
    EXPECT_EQ(line({"20", "60", "x", "8", ""}), "Base, flank, nose and lift of a cam of arcs must be above zero.");
    EXPECT_EQ(line({"20", "15", "5", "8", ""}), "The flank's radius must be larger than those of base and nose.");
    EXPECT_EQ(line({"20", "60", "30", "8", ""}), "The nose is too large for this base circle and lift.");
    EXPECT_EQ(line({"20", "21", "5", "8", ""}), "No flank of this radius joins base circle and nose.");
    EXPECT_EQ(line({"20", "60", "5", "8", "-1"}), "The roller's radius must not be below zero.");
    EXPECT_EQ(line({"20", "60", "5", "8", "1E39"}), "These lengths are too large.");
    EXPECT_EQ(line({"1E400", "60", "5", "8", ""}), "These lengths are too large.");
    EXPECT_EQ(line({"3E38", "3.2E38", "5", "8", "3E38"}), "These lengths are too large.");  // together
}

TEST_F(Arcs_Form, the_pairs_are_closed_but_for_a_series)
{
    Import_Choice choice;
    choice.coord = Import_Coord::XY;
    Choose_as_Arcs(choice);
    EXPECT_EQ(choice.coord, Import_Coord::RT);
    EXPECT_TRUE(choice.close);
    choice.method = Fit_Method::fourier;
    Choose_as_Arcs(choice);
    EXPECT_FALSE(choice.close);
}

TEST_F(Arcs_Form, the_follower_rides_radially_on_a_radial_cam)
{
    ASSERT_TRUE(Put(design, "Prime_Rad", 50.0));
    ASSERT_TRUE(Put(design, "Offset", 30.0));
    // A roller on a prime radius below the eccentricity that was there.
    ASSERT_TRUE(Put_Measured_Cam(design, Measured_Cam_of({20, 60, 5, 8, 9})));
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_EQ(design.cam.Prime_Rad, 29.0);
    EXPECT_EQ(design.cam.Follow_Rad, 9.0);
    EXPECT_EQ(design.cam.Offset, 0.0);
    ASSERT_TRUE(Put(design, "Camtype$", "Barrel"));
    ASSERT_TRUE(Put_Measured_Cam(design, Measured_Cam_of({20, 60, 5, 8, 9})));
    EXPECT_EQ(design.cam.Camtype, "Radial");
    ASSERT_TRUE(Put_Measured_Cam(design, Measured_Cam_of({20, 60, 5, 8, 0})));
    EXPECT_EQ(design.cam.Followtype, 2);
    EXPECT_EQ(design.cam.Prime_Rad, 20.0);
    EXPECT_EQ(design.cam.Follow_Rad, 0.0);
}

TEST_F(Arcs_Form, a_measured_cam_leaves_what_it_does_not_tell)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    const double roller = design.cam.Follow_Rad;
    ASSERT_GT(roller, 0.0);
    ASSERT_TRUE(Put(design, "Offset", 10.0));
    ASSERT_TRUE(Put_Measured_Cam(design, {{}, 120.0, {}}));
    EXPECT_EQ(design.cam.Prime_Rad, 120.0);
    EXPECT_EQ(design.cam.Follow_Rad, roller);
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_EQ(design.cam.Offset, 10.0);
    EXPECT_FALSE(Put_Measured_Cam(design, {{}, 120.0, 120.0}));
    EXPECT_FALSE(Put_Measured_Cam(design, {{}, 0.0, {}}));
}

}  // namespace
}  // namespace lobemax
