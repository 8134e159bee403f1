// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/startup.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "present/plot_selection.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

const Expected_Box not_positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};

class Compensation_Rung : public ::testing::Test {
protected:
    void SetUp() override { Open(5); }
    void TearDown() override { design = {}; }
    static void Open(int units)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = units;
        Initialize(design);
        Set_Units(design);
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    }
    static std::vector<float> Motion_Rows()
    {
        std::vector<float> rows;
        for (const int row : {var::S, var::V, var::A, var::J, var::Ping})
            for (const Single value : design.results.CalcData.Points(row))
                rows.push_back(value.Bits());
        return rows;
    }

    Script script_;
    Compensation result_;
};

TEST_F(Compensation_Rung, leaves_the_primary_motion_and_its_results)
{
    const std::vector<float> before = Motion_Rows();
    ASSERT_TRUE(Run_Compensation(design, {}, result_));
    EXPECT_EQ(Motion_Rows(), before);
    EXPECT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_FALSE(design.flags.CompCam_Calc);
}

TEST_F(Compensation_Rung, taken_it_is_the_motion_and_takes_the_rest_away)
{
    ASSERT_TRUE(Run_Compensation(design, {}, result_));
    for (Flag Flags_Group::*const flag :
         {&Flags_Group::Modelflag, &Flags_Group::Stressflag, &Flags_Group::Polydyne_Calc, &Flags_Group::Linkage_Calc,
          &Flags_Group::FFT_Done})
        design.flags.*flag = true;
    const std::vector<float> before = Motion_Rows();
    ASSERT_TRUE(Take_Compensation(design, result_));
    EXPECT_NE(Motion_Rows(), before);
    const Flags_Group& f = design.flags;
    EXPECT_TRUE(f.Calculated && f.CompCam_Calc);
    EXPECT_FALSE(f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag || f.Polydyne_Calc || f.Linkage_Calc ||
                 f.FFT_Done || f.Model_Saved);
    const std::vector<int> offered = Load_Names(design);
    EXPECT_NE(std::ranges::find(offered, var::Comp_Torque), offered.end());
    EXPECT_NE(std::ranges::find(offered, var::Net_Torque), offered.end());
}

TEST_F(Compensation_Rung, its_profile_and_forces_follow_from_its_rows)
{
    // The balancing cam, sized and driven by its own train without a damper, takes the torque that it was made for.
    for (int units = 1; units <= 5; ++units) {
        Open(units);
        ASSERT_TRUE(Run_Compensation(design, {}, result_));
        ASSERT_TRUE(Take_Compensation(design, result_));
        ASSERT_TRUE(Run_Size(design)) << units;
        EXPECT_TRUE(design.flags.CompCam_Calc);
        for (int i = 0; i <= 360; i += 5)
            EXPECT_NEAR(design.results.CalcData(var::Phi, i), result_.phi[static_cast<std::size_t>(i)], 1e-5) << units;
        Dynamics_Group& d = design.dynamics;
        d.Mass = double{d.Comp_Mass};
        d.Return_Spring_Rate = double{d.Comp_Spring_Rate};
        d.Preload = double{d.Comp_Preload};
        d.Zeta_Initial = 1e-9;
        ASSERT_TRUE(Run_Forces(design)) << units;
        double peak = 0.0;
        for (const double torque : result_.Tp)
            peak = std::max(peak, std::abs(torque));
        for (int i = 0; i <= 360; ++i)
            EXPECT_NEAR(design.results.CalcData(var::Torque, i) + result_.Tp[static_cast<std::size_t>(i)], 0.0,
                        0.005 * peak)
                << units << " " << i;
    }
}

TEST_F(Compensation_Rung, each_figure_must_be_positive)
{
    for (const char* field : {"Comp_Mass", "Comp_Spring_Rate", "Comp_Preload"})
        for (const double value : {0.0, -1.0}) {
            const Verdict verdict = Put(design, field, value);
            EXPECT_EQ(verdict.sentence, not_positive.text) << field;
        }
    design.dynamics.Comp_Preload = 0.0;  // as a file may hold it
    script_.Expect(not_positive);
    EXPECT_FALSE(Run_Compensation(design, {}, result_));
    design.dynamics.Comp_Preload = 100.0;
    for (int k = 0; k < 4; ++k) {
        Compensation_Run run;
        if (k == 0)
            run.eps = 0.0;
        if (k == 1)
            run.start_step = -1.0;
        if (k == 2)
            run.max_steps = 0;
        if (k == 3)
            run.min_step = -1.0;
        script_.Expect(not_positive);
        EXPECT_FALSE(Run_Compensation(design, run, result_)) << k;
    }
}

TEST_F(Compensation_Rung, does_not_rest_on_results_of_other_units)
{
    Change_Units(design, 1);
    script_.Expect({Other_Units_Sentence(design) + "\nPlease recalculate first: File menu, Recalculate.", Buttons::OK,
                    Symbol::exclamation});
    EXPECT_FALSE(Run_Compensation(design, {}, result_));
}

TEST_F(Compensation_Rung, a_compensating_cam_is_not_recalculated_from_the_table)
{
    ASSERT_TRUE(Run_Compensation(design, {}, result_));
    ASSERT_TRUE(Take_Compensation(design, result_));
    const std::vector<float> rows = Motion_Rows();
    script_.Expect({"The motion of a compensating cam has no segments to be recalculated from.", Buttons::OK,
                    Symbol::exclamation});
    EXPECT_FALSE(Recalculate(design, Standing_of(design)));
    EXPECT_EQ(Motion_Rows(), rows);
    EXPECT_TRUE(design.flags.CompCam_Calc);
}

TEST_F(Compensation_Rung, a_fault_while_it_is_taken_leaves_the_design)
{
    ASSERT_TRUE(Run_Compensation(design, {}, result_));
    result_.A[200] = 1e300;
    const std::vector<float> rows = Motion_Rows();
    script_.Expect(testing::Error_Box(overflow, "Overflow", "Take_Compensation"));
    EXPECT_FALSE(Take_Compensation(design, result_));
    EXPECT_EQ(Motion_Rows(), rows);
    EXPECT_TRUE(design.flags.Sized);
    EXPECT_FALSE(design.flags.CompCam_Calc);
}

}  // namespace
}  // namespace lobemax
