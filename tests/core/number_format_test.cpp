// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/number_format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Typed_Texts : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
    Motion_Group& m_ = design.motion;
};

TEST_F(Typed_Texts, switching_converts_every_text_that_holds_a_number)
{
    m_.Start_Value(1) = "1,234.5";
    m_.End_Value(20) = "-0.25";
    m_.T_boundary_cond(2, 9) = "12.5";
    m_.S_boundary_cond(2, 0) = "0.5";
    m_.V_boundary_cond(2, 9) = "1.5";
    m_.A_boundary_cond(3, 1) = "2.5";
    m_.J_boundary_cond(3, 8) = "3.5";
    m_.Pbound(20, 9) = "4.5";
    m_.No_of_conditions(2) = "6";
    Use_Number_Format(design, "Europe");
    EXPECT_EQ(m_.Start_Value(1), "1.234,5");
    EXPECT_EQ(Val(design, m_.Start_Value(1)), 1234.5);
    EXPECT_EQ(m_.End_Value(20), "-0,25");
    EXPECT_EQ(m_.T_boundary_cond(2, 9), "12,5");
    EXPECT_EQ(m_.S_boundary_cond(2, 0), "0,5");
    EXPECT_EQ(m_.V_boundary_cond(2, 9), "1,5");
    EXPECT_EQ(m_.A_boundary_cond(3, 1), "2,5");
    EXPECT_EQ(m_.J_boundary_cond(3, 8), "3,5");
    EXPECT_EQ(m_.Pbound(20, 9), "4,5");
    EXPECT_EQ(m_.No_of_conditions(2), "6");
    Use_Number_Format(design, "Europe");  // it is the format already
    EXPECT_EQ(m_.End_Value(20), "-0,25");
    Use_Number_Format(design, "USA");
    EXPECT_EQ(m_.Start_Value(1), "1,234.5");
}

TEST_F(Typed_Texts, of_every_box_of_the_condition_table_are_converted)
{
    const auto boxes_of = [this](int i, int row) {
        std::vector<std::string*> boxes{&m_.S_boundary_cond(i, row), &m_.V_boundary_cond(i, row),
                                        &m_.A_boundary_cond(i, row), &m_.J_boundary_cond(i, row), &m_.Pbound(i, row)};
        if (row > 0)
            boxes.push_back(&m_.T_boundary_cond(i, row));
        return boxes;
    };
    for (int i = 1; i <= 20; ++i)
        for (int row = 0; row <= 9; ++row)
            for (std::string* box : boxes_of(i, row))
                *box = "0.5";
    Use_Number_Format(design, "Europe");
    for (int i = 1; i <= 20; ++i)
        for (int row = 0; row <= 9; ++row)
            for (const std::string* box : boxes_of(i, row))
                ASSERT_EQ(*box, "0,5") << i << " " << row;
}

TEST_F(Typed_Texts, the_menus_way_back_to_the_point_keeps_the_numbers)
{
    design.identity.Number_Format = "Europe";
    m_.Start_Value(1) = "25,7";
    testing::Script script(
        {{"This will set your number system to have a period as the decimal point\n"
          "and a comma as the thousands grouping symbol.\n"
          "This can only be used if your Windows operating system is set for US units."}});
    Choose_USA_Format(design);
    EXPECT_EQ(design.identity.Number_Format, "USA");
    EXPECT_EQ(m_.Start_Value(1), "25.7");
}

TEST_F(Typed_Texts, texts_from_elsewhere_come_over_where_only_the_other_format_reads_them_whole)
{
    m_.Start_Value(1) = "0";
    m_.End_Value(1) = "25,7";
    EXPECT_TRUE(Adopt_Texts(design));
    EXPECT_EQ(m_.End_Value(1), "25.7");
    EXPECT_FALSE(Adopt_Texts(design));

    m_.End_Value(1) = "1,234";  // whole in both: it stays what the format in force reads
    EXPECT_FALSE(Adopt_Texts(design));
    EXPECT_EQ(m_.End_Value(1), "1,234");

    m_.End_Value(1) = "25,7";
    m_.Start_Value(2) = "25.7";  // one of each: neither format has them all
    EXPECT_FALSE(Adopt_Texts(design));
    EXPECT_EQ(m_.End_Value(1), "25,7");

    design.identity.Number_Format = "Europe";
    m_.End_Value(1) = "25.7";
    EXPECT_TRUE(Adopt_Texts(design));
    EXPECT_EQ(m_.Start_Value(2), "25,7");
}

TEST_F(Typed_Texts, a_number_too_large_to_be_read_tells_nothing_of_the_symbol)
{
    m_.Start_Value(1) = "1E+999";
    EXPECT_FALSE(Adopt_Texts(design));
    m_.End_Value(1) = "25,7";
    EXPECT_TRUE(Adopt_Texts(design));
    EXPECT_EQ(m_.Start_Value(1), "1E+999");
    EXPECT_EQ(m_.End_Value(1), "25.7");
}

}  // namespace
}  // namespace lobemax
