// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/motion_programs.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <utility>

#include "tests/support/one_segment.h"

namespace lobemax {
namespace {

using namespace one_segment;

class Program_List : public ::testing::Test, protected Motion_Programs_Fixture {};
class Pick : public ::testing::Test, protected Motion_Programs_Fixture {};

// ---- The list

TEST_F(Program_List, holds_the_23_programs_with_their_texts_and_numbers)
{
    const Motion_Program expected[] = {
        {0, "MS", "MS - Mod Sine", "MS - Mod Sine", 3, 1, 0, "RF"},
        {1, "MT", "MT - Mod Trap", "MT - Mod Trap", 4, 1, 0, "RF"},
        {2, "CF", "CF - Cycloid Full", "CF - Cycloid Full", 2, 1, 0, "RF"},
        {3, "C1", "C1 - Cycloid 1st Half ", "C1 - Cycloid 1st Half", 2, 2, 1, "RF"},
        {4, "C2", "C2 - Cycloid 2nd Half", "C2 - Cycloid 2nd Half", 2, 2, 2, "RF"},
        {5, "SF", "SF - SHM Full", "SF - SHM Full", 1, 1, 0, "RF"},
        {6, "S1", "S1 - SHM 1st Half", "S1 - SHM 1st Half", 1, 2, 1, "RF"},
        {7, "S2", "S2 - SHM 2nd Half", "S2 - SHM 2nd Half", 1, 2, 2, "RF"},
        {8, "DH", "DH - Double Harmonic", "DH - Double Harmonic", 5, 1, 0, "RF"},
        {9, "PO", "PO - Polynomial", "PO - Polynomial", 6, 1, 0, "P"},
        {10, "DW", "DW - Dwell", "DW - Dwell", 7, 1, 0, "D"},
        {11, "45", "45 - 345 Poly", "45 - 345 Poly", 8, 1, 0, "RF"},
        {12, "56", "56 - 3456 Poly", "56 - 3456 Poly", 9, 1, 0, "RF"},
        {13, "67", "67 - 4567 Poly", "67 - 4567 Poly", 10, 1, 0, "RF"},
        {14, "BS", "BS - B-Spline", "BS - B-Spline", 11, 1, 0, "S"},
        {15, "11", "11 - 5-11 Poly", "11 - 5-11 Poly", 12, 1, 0, "RF"},
        {16, "BD", "BD - Berzak_D", "BD - Berzak_D", 13, 1, 0, "RF"},
        {17, "BE", "BE - Berzak_E", "BE - Berzak_E", 14, 1, 0, "RF"},
        {18, "DU", "DU - Dudley", "DU - Dudley", 15, 1, 0, "RF"},
        {19, "ST", "ST - Stoddard", "ST - Stoddard", 16, 1, 0, "RF"},
        {20, "TH", "TH - Thoren", "TH - Thoren", 17, 1, 0, "RF"},
        {21, "FR", "FR - Freudenstein 1-3", "FR - Freudenstein 1-3", 18, 1, 0, "RF"},
        {22, "GU", "GU - Gutman F3", "GU - Gutman F3", 19, 1, 0, "RF"},
    };
    const auto list = Motion_Programs();
    ASSERT_EQ(list.size(), std::size(expected));
    for (std::size_t i = 0; i < list.size(); ++i) {
        SCOPED_TRACE(expected[i].code);
        EXPECT_EQ(list[i].position, expected[i].position);
        EXPECT_EQ(list[i].code, expected[i].code);
        EXPECT_EQ(list[i].list_text, expected[i].list_text);
        EXPECT_EQ(list[i].stored_text, expected[i].stored_text);
        EXPECT_EQ(list[i].Seg_Program, expected[i].Seg_Program);
        EXPECT_EQ(list[i].Full_Half, expected[i].Full_Half);
        EXPECT_EQ(list[i].Which_half, expected[i].Which_half);
        EXPECT_EQ(list[i].kinds, expected[i].kinds);
    }
}

TEST_F(Program_List, entry_of_the_first_half_cycloid_ends_in_a_blank_that_is_not_stored)
{
    const Motion_Program* c1 = Find_Program("C1");
    ASSERT_NE(c1, nullptr);
    EXPECT_EQ(c1->list_text, "C1 - Cycloid 1st Half ");
    ASSERT_TRUE(Pick_Program(design, 1, "C1"));
    EXPECT_EQ(m().Function(1), "C1 - Cycloid 1st Half");
}

TEST_F(Program_List, finds_every_program_by_its_code)
{
    for (const Motion_Program& program : Motion_Programs())
        EXPECT_EQ(Find_Program(program.code), &program) << program.code;
}

TEST_F(Program_List, finds_a_code_in_upper_lower_and_mixed_case)
{
    const Motion_Program* ms = Find_Program("MS");
    ASSERT_NE(ms, nullptr);
    EXPECT_EQ(Find_Program("ms"), ms);
    EXPECT_EQ(Find_Program("mS"), ms);
    EXPECT_EQ(Find_Program("Ms"), ms);
    ASSERT_NE(Find_Program("c2"), nullptr);
    EXPECT_EQ(Find_Program("c2")->code, "C2");
}

TEST_F(Program_List, knows_no_single_letter_no_longer_text_and_no_other_code)
{
    for (const char* text : {"", "M", "4", "XX", "ms ", " MS", "MS - Mod Sine", "M S", "54", "C3"})
        EXPECT_EQ(Find_Program(text), nullptr) << '"' << text << '"';
}

// ---- Picking a program and a kind

TEST_F(Pick, a_program_sets_code_text_and_numbers_of_its_segment_only)
{
    ASSERT_TRUE(Pick_Program(design, 3, "s2"));
    EXPECT_EQ(m().Program(3), "S2");
    EXPECT_EQ(m().Function(3), "S2 - SHM 2nd Half");
    EXPECT_EQ(m().Seg_Program(3), 1);
    EXPECT_EQ(m().Full_Half(3), 2);
    EXPECT_EQ(m().Which_half(3), 2);
    for (const int other : {2, 4}) {
        EXPECT_EQ(m().Program(other), "");
        EXPECT_EQ(m().Function(other), "");
        EXPECT_EQ(m().Seg_Program(other), 0);
    }
}

TEST_F(Pick, every_program_gives_its_fields_to_the_segment)
{
    for (const Motion_Program& program : Motion_Programs()) {
        SCOPED_TRACE(program.code);
        m().Which_half(1) = 7;
        ASSERT_TRUE(Pick_Program(design, 1, program.code));
        EXPECT_EQ(m().Program(1), program.code);
        EXPECT_EQ(m().Function(1), program.stored_text);
        EXPECT_EQ(m().Seg_Program(1), program.Seg_Program);
        EXPECT_EQ(m().Full_Half(1), program.Full_Half);
        EXPECT_EQ(m().Which_half(1), program.Which_half == 0 ? 7 : program.Which_half);
    }
}

TEST_F(Pick, a_full_program_keeps_the_half_that_was_chosen_before)
{
    ASSERT_TRUE(Pick_Program(design, 1, "C2"));
    ASSERT_TRUE(Pick_Program(design, 1, "SF"));
    EXPECT_EQ(m().Full_Half(1), 1);
    EXPECT_EQ(m().Which_half(1), 2);
}

TEST_F(Pick, an_unknown_code_or_a_single_letter_changes_nothing)
{
    ASSERT_TRUE(Pick_Motion(design, 1, 'F'));
    ASSERT_TRUE(Pick_Program(design, 1, "C1"));
    for (const char* text : {"", "M", "QQ", "C1 "}) {
        EXPECT_FALSE(Pick_Program(design, 1, text));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), "F");
        EXPECT_EQ(m().Program(1), "C1");
        EXPECT_EQ(m().Function(1), "C1 - Cycloid 1st Half");
        EXPECT_EQ(m().Seg_Program(1), 2);
        EXPECT_EQ(m().Full_Half(1), 2);
        EXPECT_EQ(m().Which_half(1), 1);
    }
}

TEST_F(Pick, the_programs_PO_DW_and_BS_bring_their_kind_with_them)
{
    const std::pair<const char*, const char*> expected[] = {{"PO", "P"}, {"dw", "D"}, {"Bs", "S"}};
    for (const auto& [code, kind] : expected) {
        m().Rise_Fall_Dwell(1) = "R";
        ASSERT_TRUE(Pick_Program(design, 1, code));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), kind);
        ASSERT_TRUE(Pick_Program(design, 1, code));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), kind);
    }
}

TEST_F(Pick, a_rise_or_fall_program_leaves_the_kind_alone)
{
    for (const char* kind : {"R", "F"}) {
        m().Rise_Fall_Dwell(1) = kind;
        ASSERT_TRUE(Pick_Program(design, 1, "MT"));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), kind);
    }
}

TEST_F(Pick, a_rise_or_a_fall_takes_the_letter_and_waits_for_its_program)
{
    for (const char kind : {'R', 'F', 'r', 'f'}) {
        ASSERT_TRUE(Pick_Program(design, 1, "S2"));
        ASSERT_TRUE(Pick_Motion(design, 1, kind));
        const std::string letter = kind == 'R' || kind == 'r' ? "R" : "F";
        EXPECT_EQ(m().Rise_Fall_Dwell(1), letter);
        EXPECT_EQ(m().Function(1), letter);
        EXPECT_EQ(m().Program(1), "");
        EXPECT_EQ(m().Seg_Program(1), 1);
        EXPECT_EQ(m().Full_Half(1), 2);
        EXPECT_EQ(m().Which_half(1), 2);
    }
}

TEST_F(Pick, the_kinds_P_D_and_S_pick_their_only_program_and_show_its_list_text)
{
    struct Expected {
        char kind;
        const char* letter;
        const char* code;
        const char* text;
        int Seg_Program;
    };
    const Expected expected[] = {
        {'P', "P", "PO", "PO - Polynomial", 6}, {'p', "P", "PO", "PO - Polynomial", 6},
        {'D', "D", "DW", "DW - Dwell", 7},      {'d', "D", "DW", "DW - Dwell", 7},
        {'S', "S", "BS", "BS - B-Spline", 11},  {'s', "S", "BS", "BS - B-Spline", 11},
    };
    for (const Expected& e : expected) {
        ASSERT_TRUE(Pick_Program(design, 1, "C2"));
        ASSERT_TRUE(Pick_Motion(design, 1, e.kind));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), e.letter);
        EXPECT_EQ(m().Program(1), e.code);
        EXPECT_EQ(m().Function(1), e.text);
        EXPECT_EQ(m().Seg_Program(1), e.Seg_Program);
        EXPECT_EQ(m().Full_Half(1), 1);
        EXPECT_EQ(m().Which_half(1), 2);
    }
}

TEST_F(Pick, an_unknown_kind_changes_nothing)
{
    ASSERT_TRUE(Pick_Motion(design, 1, 'R'));
    ASSERT_TRUE(Pick_Program(design, 1, "MS"));
    for (const char kind : {'X', ' ', '1', '\0', 'e'}) {
        EXPECT_FALSE(Pick_Motion(design, 1, kind));
        EXPECT_EQ(m().Rise_Fall_Dwell(1), "R");
        EXPECT_EQ(m().Program(1), "MS");
        EXPECT_EQ(m().Function(1), "MS - Mod Sine");
        EXPECT_EQ(m().Seg_Program(1), 3);
    }
}

TEST_F(Pick, a_segment_outside_the_table_is_error_9)
{
    for (const int segment : {-1, 0, 21}) {
        for (const auto& pick :
             {+[](int s) { Pick_Program(design, s, "MS"); }, +[](int s) { Pick_Motion(design, s, 'R'); }}) {
            try {
                pick(segment);
                ADD_FAILURE() << "no fault for segment " << segment;
            } catch (const Fault& fault) {
                EXPECT_EQ(fault.Number(), 9);
            }
        }
    }
}

}  // namespace
}  // namespace lobemax
