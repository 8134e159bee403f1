// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/run_record.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::Script;

class Run_Record : public ::testing::Test {
protected:
    void SetUp() override
    {
        design = {};
        folder_ = ::testing::TempDir() + "lobemax_run_" + std::to_string(::getpid()) + "/LOBEMAX/";
    }
    void TearDown() override { fs::remove_all(fs::path(folder_).parent_path().parent_path()); }
    std::string Content() const
    {
        std::ostringstream text;
        text << std::ifstream(folder_ + "Run_Check.txt", std::ios::binary).rdbuf();
        return text.str();
    }

    const std::string running_ =
        "Running\r\n\r\nThis file records an abnormal exit from the program on last execution\r\n"
        "and is checked at each startup.  Please do not move or delete it.\r\n";
    std::string folder_;
    Script script_;
};

TEST_F(Run_Record, a_first_run_makes_folder_and_record_and_shows_nothing)
{
    EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::go_on);
    EXPECT_EQ(Content(), running_);
}

TEST_F(Run_Record, a_run_that_ended_properly_is_followed_by_no_box)
{
    Check_Run_Record(design, folder_, "");
    Terminate(folder_);
    EXPECT_EQ(Content(),
              "Normal Exit\r\n\r\nThis file records a normal exit from the program on last run\r\n"
              "and is checked at each startup.  Please do not move or delete.\r\n");
    EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::go_on);
    EXPECT_EQ(Content(), running_);
}

TEST_F(Run_Record, a_killed_run_is_told_of_once)
{
    Check_Run_Record(design, folder_, "");
    script_.Expect(
        {"   The program did not shut down properly on its last run.     \n"
         "            This problem will now be corrected.\n"
         "   To avoid this problem in the future, please use the   \n"
         "   Quit button or File/Quit menu to stop the program.   "});
    EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::after_a_crash);
    EXPECT_EQ(Content(), running_);
    Terminate(folder_);
    EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::go_on);
}

TEST_F(Run_Record, a_file_double_clicked_while_the_program_runs_ends_the_second_one)
{
    Check_Run_Record(design, folder_, "");
    script_.Expect(
        {"   You double-clicked on a LOBEMAX Plus data file when the program was already running.\n"
         "   You cannot have two instances of LOBEMAX Plus running at once.\n"
         "   Please open the data file from within LOBEMAX Plus with File/Open  "});
    EXPECT_EQ(Check_Run_Record(design, folder_, "x.cam"), Run_Start::end_at_once);
    EXPECT_EQ(Content(), running_);
    Terminate(folder_);
    EXPECT_EQ(Check_Run_Record(design, folder_, "x.cam"), Run_Start::go_on);
}

TEST_F(Run_Record, a_record_that_cannot_be_written_is_reported_by_its_stage)
{
    script_.Expect(
        {"Error 53   (File not found)  has occurred in Terminate when writing Checkfile\n"
         "There are no files with your chosen name in the selected directory"});
    Terminate("/no/such/folder/");
    Terminate("");  // no path, nothing to write
}

TEST_F(Run_Record, a_record_that_cannot_be_read_counts_as_none)
{
    fs::create_directories(folder_ + "Run_Check.txt");
    script_.Expect(testing::Error_Box(75, "Path or file access error", "Check_Run_Record when reading Checkfile"));
    script_.Expect(testing::Error_Box(75, "Path or file access error", "Check_Run_Record when writing Checkfile"));
    EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::go_on);
}

}  // namespace
}  // namespace lobemax
