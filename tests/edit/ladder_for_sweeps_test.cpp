// SPDX-License-Identifier: GPL-3.0-or-later
// The ladder as a sweep runs it: the rows of a recalculation, without a message, without memory, without a stamp.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/messages.h"
#include "core/startup.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "motion/segments.h"
#include "tests/support/allocations.h"

namespace lobemax {
namespace {

constexpr Standing to_forces{.motion = true, .size = true, .forces = true};
constexpr Standing to_stress{.motion = true, .size = true, .forces = true, .stress = true};

class Ladder_for_Sweeps : public ::testing::Test {
protected:
    Ladder_for_Sweeps()
    {
        Host host;
        host.messenger = [this](const Message& box) {
            shown_.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        host.refresh = [this] { ++refreshed_; };
        before_ = Install_Host(std::move(host));
    }
    ~Ladder_for_Sweeps() override { Install_Host(std::move(before_)); }

    static Design_State Example(std::string_view name)
    {
        Design_State design;
        Sub_Main(design, "", {});
        EXPECT_TRUE(Load_Example(design, name));
        return design;
    }
    static bool Same_Rows(const Design_State& a, const Design_State& b)
    {
        for (int row = 0; row <= a.results.CalcData.Last_Row(); ++row) {
            const auto x = a.results.CalcData.Points(row);
            if (std::memcmp(x.data(), b.results.CalcData.Points(row).data(), x.size_bytes()) != 0)
                return false;
        }
        return true;
    }

    std::vector<std::string> shown_;
    int refreshed_ = 0;

private:
    Host before_;
};

TEST_F(Ladder_for_Sweeps, gives_the_rows_of_a_recalculation)
{
    for (const std::string_view name : {"Double Dwell", "Single Dwell", "Four Dwell", "Oscillating"}) {
        Design_State recalculated = Example(name);
        ASSERT_TRUE(Recalculate(recalculated, to_stress)) << name;
        Design_State swept = Example(name);
        const Ladder_Outcome outcome = Ladder(swept, to_stress);
        EXPECT_TRUE(outcome.reached) << name << ": " << outcome.told;
        EXPECT_TRUE(Same_Rows(recalculated, swept)) << name;
        EXPECT_EQ(Standing_of(swept), to_stress) << name;
    }
}

TEST_F(Ladder_for_Sweeps, stops_at_the_level_asked_for)
{
    Design_State design = Example("Double Dwell");
    EXPECT_TRUE(Ladder(design, {.motion = true, .size = true}).reached);
    EXPECT_EQ(Standing_of(design), (Standing{.motion = true, .size = true}));
    EXPECT_TRUE(Ladder(design, {.motion = true}).reached);
    EXPECT_EQ(Standing_of(design), (Standing{.motion = true}));
}

TEST_F(Ladder_for_Sweeps, shows_nothing_and_hands_over_what_a_user_would_have_met)
{
    Design_State design = Example("Double Dwell");
    design.dynamics.Return_Spring_Rate = 0.0;
    design.dynamics.Preload = 0.0;
    shown_.clear();
    refreshed_ = 0;
    const Ladder_Outcome outcome = Ladder(design, to_forces);
    EXPECT_TRUE(outcome.reached);
    EXPECT_TRUE(outcome.told.starts_with("The cam and follower have separated at Theta =")) << outcome.told;
    EXPECT_TRUE(shown_.empty());
    EXPECT_EQ(refreshed_, 0);
    Show_Message("of the program");  // whose host is in force again
    EXPECT_EQ(shown_, std::vector<std::string>{"of the program"});
}

TEST_F(Ladder_for_Sweeps, a_design_that_cannot_be_says_why_and_leaves_the_rungs_below)
{
    Design_State design = Example("Oscillating");
    ASSERT_TRUE(Put(design, "ArmX", 5000.0));
    const Ladder_Outcome outcome = Ladder(design, to_forces);
    EXPECT_FALSE(outcome.reached);
    EXPECT_FALSE(outcome.told.empty());
    EXPECT_EQ(Standing_of(design), (Standing{.motion = true}));
    EXPECT_TRUE(shown_.empty());
}

TEST_F(Ladder_for_Sweeps, a_motion_without_segments_is_refused_and_stands)
{
    Design_State design = Example("Double Dwell");
    ASSERT_TRUE(Ladder(design, to_forces).reached);
    design.flags.Imported_Model = true;
    const Ladder_Outcome outcome = Ladder(design, to_forces);
    EXPECT_FALSE(outcome.reached);
    EXPECT_EQ(outcome.told, "An imported motion has no segments to be recalculated from.");
    EXPECT_EQ(Standing_of(design), to_forces);
}

TEST_F(Ladder_for_Sweeps, keeps_stamp_and_number_however_long_the_sweep)
{
    Design_State design = Example("Double Dwell");
    design.identity.Date = "2001-02-03";
    design.identity.Time = "04:05:06";
    design.identity.Design_No = 32767;  // one more does not fit
    EXPECT_TRUE(Ladder(design, to_forces).reached);
    EXPECT_TRUE(Ladder(design, to_forces).reached);
    EXPECT_EQ(design.identity.Date, "2001-02-03");
    EXPECT_EQ(design.identity.Time, "04:05:06");
    EXPECT_EQ(design.identity.Design_No, 32767);
}

TEST_F(Ladder_for_Sweeps, costs_no_memory_once_the_tables_stand)
{
#ifdef LOBEMAX_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer counts its own";
#endif
    for (const std::string_view name : {"Double Dwell", "Flat Follower", "Oscillating"}) {
        Design_State design = Example(name);
        ASSERT_TRUE(Ladder(design, to_forces).reached) << name;
        const long before = testing::Allocations();
        for (int run = 0; run < 3; ++run)
            Ladder(design, to_forces);
        EXPECT_EQ(testing::Allocations() - before, 0) << name;
    }
}

}  // namespace
}  // namespace lobemax
