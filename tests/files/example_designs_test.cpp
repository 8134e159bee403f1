// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/example_designs.h"

#include <gtest/gtest.h>

#include "core/startup.h"
#include "edit/examples.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Opened_Examples : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    const Flags_Group& f_ = design.flags;
    testing::Script script_;
};

TEST_F(Opened_Examples, stand_with_their_size_and_forces)
{
    EXPECT_TRUE(Open_Example(design, "Double Dwell"));
    EXPECT_TRUE(f_.Calculated && f_.Sized && f_.Dynamicflag && f_.Model_Saved);
}

TEST_F(Opened_Examples, whose_arm_does_not_meet_the_cam_are_not_done)
{
    ASSERT_TRUE(Load_Example(design, "Oscillating"));
    design.cam.ArmX = design.cam.ArmY = 0.0;  // the pivot in the cam's centre
    EXPECT_FALSE(Example_Done(design));
    EXPECT_TRUE(f_.Calculated);
    EXPECT_FALSE(f_.Sized || f_.Dynamicflag);
}

TEST_F(Opened_Examples, whose_forces_are_too_large_for_a_number_are_not_done)
{
    ASSERT_TRUE(Load_Example(design, "Double Dwell"));
    design.dynamics.Mass = 3e38;
    script_.Expect(testing::Error_Box(6, "Overflow", "Calc_Force_Torque"));
    EXPECT_FALSE(Example_Done(design));
    EXPECT_TRUE(f_.Calculated && f_.Sized);
    EXPECT_FALSE(f_.Dynamicflag);
}

}  // namespace
}  // namespace lobemax
