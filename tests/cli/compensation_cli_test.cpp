// SPDX-License-Identifier: GPL-3.0-or-later
/// The level of the torque compensation.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/cli/cli_folder.h"
#include "tests/support/number_in.h"

namespace lobemax {
namespace {

using testing::Result;

class Compensation_Cli : public testing::Cli_Folder {
protected:
    void SetUp() override { ASSERT_EQ(Run("example 'Double Dwell' -o d.cam " + stamps).status, 0); }
    static const inline std::string question =
        "[exclamation] You are about to overwrite the primary cam data in memory / with this compensating cam data.  "
        "If "
        "you have not yet / saved the model for the primary cam you must do so now / or you will lose that data.   / "
        "Then "
        "you will be taken to the Size Cam screen to create the / profile for the compensating cam. / If you do not "
        "want "
        "to do this, hit 'Cancel' and then use the / 'Back' button to exit this form without overwriting any data. -> ";
};

TEST_F(Compensation_Cli, the_balancing_cam_takes_the_place_of_the_primary)
{
    const Result run = Run("calc d.cam -o c.cam --levels compcam " + stamps);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "lobemax-cli: compcam: torque reduced by 99.8 %, smallest contact force 76.352585 N\n" +
                           question + "OK\n[information] The file was successfully written to  / c.cam\n");
    EXPECT_EQ(Show("c.cam", "Calculated Sized Dynamicflag"), "Calculated = true\nSized = false\nDynamicflag = false\n");
    const std::string high = Show("c.cam", "'CalcData(1, 0)' 'CalcData(1, 120)'");
    EXPECT_NE(high.find("CalcData(1, 120) = 0\n"), std::string::npos);
    EXPECT_NE(high.find("CalcData(1, 0) = 22.88"), std::string::npos) << high;
    // Its profile by the next run; the file's rows are its motion.
    EXPECT_EQ(Run("calc c.cam -o s.cam --levels size,dynamics " + stamps).status, 0);
    EXPECT_EQ(Show("s.cam", "Sized"), "Sized = true\n");
}

TEST_F(Compensation_Cli, runs_after_the_levels_before_it)
{
    ASSERT_EQ(Run("calc d.cam -o m.cam --levels svaj " + stamps).status, 0);
    const Result early = Run("calc m.cam -o c.cam --levels compcam " + stamps);
    EXPECT_EQ(early.status, 1);
    EXPECT_EQ(early.err, "lobemax-cli: compcam: the forces are not calculated\n");
    EXPECT_FALSE(Exists("c.cam"));
    EXPECT_EQ(Run("calc m.cam -o c.cam --levels compcam,dynamics,size --set Comp_Preload=150 " + stamps).status, 0);
    EXPECT_TRUE(Exists("c.cam"));
}

TEST_F(Compensation_Cli, a_cancel_keeps_the_primary)
{
    const Result run = Run("calc d.cam -o c.cam --levels compcam --answer cancel " + stamps);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.ends_with(question + "Cancel\n")) << run.err;
    EXPECT_FALSE(Exists("c.cam"));
}

TEST_F(Compensation_Cli, what_cannot_be_compensated_is_status_1)
{
    ASSERT_EQ(Run("calc d.cam -o f.cam --set Deltatheta=0.5 " + stamps).status, 0);
    const Result fine = Run("calc f.cam -o c.cam --levels compcam " + stamps);
    EXPECT_EQ(fine.status, 1);
    EXPECT_EQ(
        fine.err,
        "[exclamation] This routine requires that delta theta be no smaller than 1 degree. / Please return to the "
        "SVAJ screen and recalculate the cam with delta theta = 1.\n");
    EXPECT_FALSE(Exists("c.cam"));
    const Result zero = Run("calc d.cam -o c.cam --levels compcam --set Comp_Mass=0 " + stamps);
    EXPECT_EQ(zero.status, 2);
    EXPECT_NE(zero.err.find("This value must be positive.  Please redo."), std::string::npos);
}

}  // namespace
}  // namespace lobemax
