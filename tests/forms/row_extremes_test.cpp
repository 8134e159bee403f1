// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/row_extremes.h"

#include <gtest/gtest.h>

#include <array>

#include "core/startup.h"
#include "core/units.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

class Row_Extreme : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        train_design::Lay_Harmonic(1, 10, 20);
    }
    void TearDown() override { design = {}; }

    static std::vector<int> Rows()
    {
        std::vector<int> rows;
        for (const Row_Extremes& e : Main_Extremes(design))
            rows.push_back(e.row);
        return rows;
    }
    testing::Script script_;
};

TEST_F(Row_Extreme, stand_at_their_cam_angles)
{
    constexpr std::array rows{var::V, var::S};
    const std::vector<Row_Extremes> found = Extremes_of(design, rows);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "Velocity");
    EXPECT_EQ(found[0].unit, "mm/sec");
    EXPECT_EQ(found[0].largest, Single(100.0));
    EXPECT_EQ(found[0].largest_at, 90.0);
    EXPECT_EQ(found[0].smallest, Single(-100.0));
    EXPECT_EQ(found[0].smallest_at, 270.0);
    EXPECT_EQ(found[1].largest_at, 180.0);
    EXPECT_EQ(found[1].smallest_at, 0.0);
}

TEST_F(Row_Extreme, the_main_ones_grow_with_what_is_calculated)
{
    EXPECT_TRUE(Rows().empty());
    design.flags.Calculated = true;
    EXPECT_EQ(Rows(), (std::vector<int>{1, 2, 3, 4}));
    design.flags.Dynamicflag = true;
    EXPECT_EQ(Rows(), (std::vector<int>{1, 2, 3, 4, 7, 8}));
    design.flags.Modelflag = design.flags.Stressflag = true;
    EXPECT_EQ(Rows(), (std::vector<int>{1, 2, 3, 4, 7, 8, 33, 42, 43}));
}

TEST_F(Row_Extreme, a_metric_torque_is_told_in_the_unit_that_it_is_in)
{
    design.flags.Calculated = design.flags.Dynamicflag = true;
    for (const auto& [code, unit] : {std::pair{5, "N-m"}, std::pair{4, "N-m"}, std::pair{3, "N-m"},
                                     std::pair{2, "ft-lb"}, std::pair{1, "in-lb"}}) {
        design.identity.WhichUnit = code;
        Set_Units(design);
        EXPECT_EQ(Main_Extremes(design).back().unit, unit);
    }
}

}  // namespace
}  // namespace lobemax
