// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/history.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

#include "core/startup.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

class Design_History : public ::testing::Test {
protected:
    Design_History()
    {
        Sub_Main(design, "", {});
        Open_Example(design, "Double Dwell");
    }

    /// Whether two designs hold the same calculated rows, bit for bit.
    static bool Same_Rows(const Design_State& a, const Design_State& b)
    {
        const auto& x = a.results.CalcData;
        const auto& y = b.results.CalcData;
        if (x.Last_Row() != y.Last_Row() || x.Last_Point() != y.Last_Point())
            return false;
        for (int row = 0; row <= x.Last_Row(); ++row)
            if (std::memcmp(x.Points(row).data(), y.Points(row).data(), x.Points(row).size_bytes()) != 0)
                return false;
        return true;
    }

    Script script_;
};

TEST_F(Design_History, a_change_is_undone_and_redone_with_fields_results_and_marks)
{
    History history(design);
    const Design_State before = design;
    ASSERT_TRUE(Put(design, "Prime_Rad", 130.0));
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(history.Remember("size"));
    const Design_State after = design;
    ASSERT_FALSE(Same_Rows(before, after));

    EXPECT_EQ(history.Undo_Text(), "Undo size");
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(design.cam.Prime_Rad, before.cam.Prime_Rad);
    EXPECT_TRUE(Same_Rows(design, before));
    EXPECT_TRUE(design.flags.Dynamicflag);
    EXPECT_EQ(history.Redo_Text(), "Redo size");
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(design.cam.Prime_Rad, 130.0);
    EXPECT_TRUE(Same_Rows(design, after));
    EXPECT_FALSE(design.flags.Dynamicflag);
    EXPECT_FALSE(history.Redo());
}

TEST_F(Design_History, results_come_back_with_the_units_they_were_calculated_in)
{
    History history(design);
    const Standing standing = Standing_of(design);
    Change_Units(design, 1);
    ASSERT_TRUE(history.Remember("Units"));
    ASSERT_TRUE(Recalculate(design, standing));
    ASSERT_TRUE(history.Remember("Recalculate"));
    ASSERT_FALSE(Results_in_Other_Units(design));
    ASSERT_TRUE(history.Undo());
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(Units_of_Results(design), 5);
    ASSERT_TRUE(history.Undo());
    EXPECT_FALSE(Results_in_Other_Units(design));
    ASSERT_TRUE(history.Redo());
    EXPECT_TRUE(Results_in_Other_Units(design));
    ASSERT_TRUE(history.Redo());
    EXPECT_FALSE(Results_in_Other_Units(design));
}

TEST_F(Design_History, what_changes_nothing_is_no_step)
{
    History history(design);
    ASSERT_TRUE(Put(design, "Prime_Rad", design.cam.Prime_Rad));
    design.motion.Seg = 2;         // at work on another segment
    design.cam.View_Left = -77.0;  // drawn in another window
    EXPECT_FALSE(history.Remember("nothing"));
    EXPECT_FALSE(history.May_Undo());
}

TEST_F(Design_History, a_new_change_takes_the_undone_ones_away)
{
    History history(design);
    for (const double prime : {130.0, 140.0}) {
        Put(design, "Prime_Rad", prime);
        history.Remember("prime");
    }
    history.Undo();
    Put(design, "Mass", 3.0);
    history.Remember("mass");
    EXPECT_FALSE(history.May_Redo());
    history.Undo();
    EXPECT_EQ(design.cam.Prime_Rad, 130.0);
}

TEST_F(Design_History, a_transaction_gives_back_all_or_keeps_all)
{
    History history(design);
    const Design_State before = design;
    {
        const History::Transaction work(history);
        Put(design, "Beta_Deg", At(2), 80.0);
        history.Remember("beta");
        Calc_All(design, true);
        design.motion.S_boundary_cond(1, 3) = "5";
        design.motion.Knots(2, 1) = 4.0;
    }
    EXPECT_EQ(design.motion.Beta_Deg(2), before.motion.Beta_Deg(2));
    EXPECT_EQ(design.motion.S_boundary_cond(1, 3), "");
    EXPECT_EQ(design.motion.Knots(2, 1), before.motion.Knots(2, 1));
    EXPECT_TRUE(Same_Rows(design, before));
    EXPECT_TRUE(design.flags.Calculated && design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_FALSE(history.May_Undo());
    {
        History::Transaction work(history);
        Put(design, "Beta_Deg", At(2), 80.0);
        work.Commit("motion");
    }
    EXPECT_EQ(design.motion.Beta_Deg(2), 80.0);
    EXPECT_EQ(history.Undo_Text(), "Undo motion");
}

TEST_F(Design_History, undo_within_a_transaction_stops_at_its_beginning)
{
    History history(design);
    Put(design, "Prime_Rad", 130.0);
    history.Remember("prime");
    History::Transaction work(history);
    EXPECT_FALSE(history.Undo());
    Put(design, "Mass", 3.0);
    history.Remember("mass");
    EXPECT_TRUE(history.Undo());
    EXPECT_FALSE(history.Undo());
    work.Commit("nothing new");
    EXPECT_TRUE(history.Undo());  // now the one before
}

TEST_F(Design_History, a_transaction_longer_than_the_history_is_given_back_all_the_same)
{
    History history(design);
    const double prime = design.cam.Prime_Rad;
    {
        const History::Transaction work(history);
        for (std::size_t k = 0; k < History::Most_Steps + 20; ++k) {
            Put(design, "Prime_Rad", 110.0 + static_cast<double>(k));
            ASSERT_TRUE(history.Remember("prime"));
        }
    }
    EXPECT_EQ(design.cam.Prime_Rad, prime);
    EXPECT_FALSE(history.Remember("nothing has changed since"));
    EXPECT_FALSE(history.May_Undo());
}

TEST_F(Design_History, transactions_stand_within_one_another)
{
    History history(design);
    History::Transaction outer(history);
    Put(design, "Prime_Rad", 130.0);
    {
        const History::Transaction inner(history);
        Put(design, "Prime_Rad", 140.0);
    }
    EXPECT_EQ(design.cam.Prime_Rad, 130.0);
    outer.Commit("both");
    EXPECT_EQ(design.cam.Prime_Rad, 130.0);
}

TEST_F(Design_History, a_step_that_changes_the_profile_or_the_force_table_alone_gives_each_back)
{
    const auto shared = [](Results_Group& r) { return std::array{&r.Profile_X, &r.Profile_Y, &r.Ext_Force_Table}; };
    History history(design);
    for (std::size_t k = 0; k < 3; ++k) {
        Single& point = (*shared(design.results)[k])(7);
        const Single before = point;
        point = before + 1.0;
        ASSERT_TRUE(Put(design, "Prime_Rad", design.cam.Prime_Rad + 1.0));
        ASSERT_TRUE(history.Remember("a size"));
        history.Undo();
        EXPECT_EQ((*shared(design.results)[k])(7), before) << k;
        history.Redo();
        EXPECT_EQ((*shared(design.results)[k])(7), before + 1.0) << k;
    }
}

TEST_F(Design_History, counts_the_bytes_of_the_calculated_rows)
{
    ASSERT_TRUE(Put(design, "Deltatheta", 0.125));
    ASSERT_TRUE(Calc_All(design, true) && Motion_Done(design));
    const History history(design);
    const Results_Group& r = design.results;
    const auto bytes_of = [](const auto& table, std::size_t value) {
        return static_cast<std::size_t>((table.Last_Row() + 1) * (table.Last_Point() + 1)) * value;
    };
    std::size_t least = sizeof(Design_State) + bytes_of(r.CalcData, sizeof(Single));
    for (const auto* const row : {&r.Profile_X, &r.Profile_Y, &r.Ext_Force_Table, &r.Arm_Pivot_X, &r.Arm_Pivot_Y,
                                  &r.Link_Ratio_S, &r.Link_Ratio_V, &r.Link_Ratio_A, &r.Ode_Time})
        least += row->Points().size_bytes();
    for (const auto* const table : {&r.Link_Theta, &r.Link_Omega, &r.Link_Alpha, &r.Link_X, &r.Link_Y, &r.Ode_States})
        least += bytes_of(*table, sizeof(Single));
    least += bytes_of(r.Fft_Work_A, sizeof(double)) + bytes_of(r.Fft_Work_B, sizeof(double));
    EXPECT_GE(history.Bytes(), least);
}

TEST_F(Design_History, keeps_two_hundred_calculations_of_the_finest_step_within_its_memory)
{
    ASSERT_TRUE(Put(design, "Deltatheta", 0.125));
    ASSERT_TRUE(Calc_All(design, true) && Motion_Done(design));
    History history(design);
    const double first = design.cam.Prime_Rad;
    for (int k = 1; k <= 250; ++k) {
        ASSERT_TRUE(Put(design, "Prime_Rad", 100.0 + k));
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(history.Remember("prime " + std::to_string(k)));
    }
    EXPECT_EQ(history.Steps(), 250U);
    EXPECT_LE(history.Bytes(), History::Most_Bytes);
    int back = 0;
    while (history.Undo())
        ++back;
    EXPECT_EQ(back, 250);
    EXPECT_EQ(design.cam.Prime_Rad, first);
    while (history.Redo())
        continue;
    EXPECT_EQ(design.cam.Prime_Rad, 350.0);
    EXPECT_TRUE(design.flags.Sized);
}

TEST_F(Design_History, beyond_its_memory_the_oldest_lose_their_rows_and_say_so)
{
    History history(design, 2'000'000);
    const double first = design.cam.Prime_Rad;
    for (int k = 1; k <= 60; ++k) {
        Put(design, "Prime_Rad", 100.0 + k);
        Run_Size(design);
        history.Remember("prime");
    }
    EXPECT_LT(history.Bytes(), 60 * 2 * sizeof(Design_State) + 2'000'000);
    while (history.Undo())
        continue;
    EXPECT_EQ(design.cam.Prime_Rad, first);  // never what was typed
    EXPECT_FALSE(design.flags.Calculated);   // but its results are not claimed
    EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
}

TEST_F(Design_History, what_is_typed_is_unsaved_until_it_is_saved_or_taken_back)
{
    EXPECT_FALSE(Unsaved(design));  // an example holds nothing of the user's
    History history(design);
    Put(design, "End Value", At(1), std::string("7"));
    EXPECT_TRUE(Unsaved(design));
    history.Remember("end");
    history.Undo();
    EXPECT_FALSE(Unsaved(design));
    design.dynamics.Youngs_modulus(1) = 210000.0;
    EXPECT_TRUE(Unsaved(design));
    Mark_Saved(design);
    EXPECT_FALSE(Unsaved(design));
    design.results.CalcData(5, 7) = -design.results.CalcData(5, 7) + 1.0;
    EXPECT_TRUE(Unsaved(design));
    Mark_Unsaved(design);
    EXPECT_TRUE(Unsaved(design));
}

}  // namespace
}  // namespace lobemax
