// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/trial_design.h"

#include <gtest/gtest.h>

#include "camgeom/sizing.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Script;

struct Size {
    double Phi_Max, Rho_Smallest, phi, rho;
    friend bool operator==(const Size&, const Size&) = default;
};

Size Found(Design_State& of)
{
    const int type = of.cam.Followtype;
    EXPECT_TRUE(Calc_Phi(of, type));
    EXPECT_TRUE(Calc_Rho(of, type));
    const Table<Single>& data = of.results.CalcData;
    return {of.cam.Phi_Max, of.cam.Rho_Smallest, data(var::Phi, 77), data(var::Rho, 77)};
}

TEST(Trial_Designs, have_the_size_of_the_design_and_leave_it_as_it_is)
{
    Script script;
    for (const bool translating : {true, false}) {
        Cam_Maker maker;
        maker.translating = translating;
        maker.Make();
        const Size before = Found(design);
        Design_State trial = Trial_Design(design);
        EXPECT_EQ(Found(trial), before);
        trial.cam.Prime_Rad = 1.5 * trial.cam.Prime_Rad;
        trial.results.CalcData(var::S, 10) = 123.0;
        EXPECT_NE(Found(trial), before);
        EXPECT_EQ(Found(design), before);
    }
}

TEST(Trial_Designs, leave_the_trajectory_and_the_transform_behind)
{
    Script script;
    Cam_Maker().Make();
    design.results.Ode_Time.Dimension(1000);
    const Design_State trial = Trial_Design(design);
    EXPECT_EQ(trial.results.Ode_Time.Last(), -1);
    EXPECT_EQ(trial.results.Fft_Work_B.Last_Point(), -1);
    EXPECT_EQ(design.results.Ode_Time.Last(), 1000);
}

}  // namespace
}  // namespace lobemax
