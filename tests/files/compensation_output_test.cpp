// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/compensation_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "files/example_designs.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Compensation_Output : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        ASSERT_TRUE(Calc_Compensation(design, {}, result_));
    }
    void TearDown() override { design = {}; }

    static std::vector<std::string> Lines(const std::string& text)
    {
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            lines.push_back(text.substr(at, end - at));
            at = end + 2;
        }
        return lines;
    }

    testing::Script script_;
    Compensation result_;
};

TEST_F(Compensation_Output, holds_parameters_heads_and_a_line_a_point)
{
    const std::vector<std::string> lines = Lines(Compensation_Text(design, result_));
    ASSERT_EQ(lines.size(), 9U + 1U + 1U + 361U);
    const std::vector<std::string> head{"start step\t0.0001",
                                        "min step\t0",
                                        "shaftomega\t18",
                                        "Comp_Mass\t2",
                                        "c\t0",
                                        "Comp_Spring_Rate\t2000",
                                        "Comp_Preload\t100",
                                        "accuracy\t0.001",
                                        "Delta Theta\t1",
                                        "",
                                        "Theta\tPosition\tVelocity\tAcceleration\tTcomp\tTprimary"
                                        "\tT-net\tForce comp"};
    for (std::size_t k = 0; k < head.size(); ++k)
        EXPECT_EQ(lines[k], head[k]);
    for (const std::size_t i : {0U, 45U, 263U, 360U}) {
        std::string line = std::to_string(i);
        for (const double value :
             {result_.S[i], result_.V[i], result_.A[i], result_.Tc[i], result_.Tp[i], result_.net[i], result_.F[i]})
            line += "\t" + Shortest(Single(value));
        EXPECT_EQ(lines[11 + i], line);
    }
}

TEST_F(Compensation_Output, carries_a_point_in_every_number_format)
{
    const std::string text = Compensation_Text(design, result_);
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Compensation_Text(design, result_), text);
}

TEST_F(Compensation_Output, asks_for_a_name_and_writes_the_file_whole)
{
    EXPECT_FALSE(Output_Compensation(design, result_));  // cancelled
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs[0].title, "Output the Data");
    EXPECT_EQ(script_.dialogs[0].filter, "(*.out)|*.out");
    EXPECT_TRUE(script_.dialogs[0].suggestion.ends_with(".out"));
    const std::string path = ::testing::TempDir() + "lobemax_compensation.out";
    script_.path = path;
    EXPECT_TRUE(Output_Compensation(design, result_));
    std::ostringstream written;
    written << std::ifstream(path, std::ios::binary).rdbuf();
    EXPECT_EQ(written.str(), Compensation_Text(design, result_));
    std::filesystem::remove(path);
    script_.path = ::testing::TempDir() + "no such folder/a.out";
    script_.Expect(
        {"Error 53   (File not found)  has occurred in frm_CompCam.Outputfile\n"
         "There are no files with your chosen name in the selected directory"});
    EXPECT_FALSE(Output_Compensation(design, result_));
}

}  // namespace
}  // namespace lobemax
