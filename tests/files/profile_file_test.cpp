// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/profile_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/startup.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Script;

class Profile_File : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        std::filesystem::create_directories(folder_);
        choice_.prime = 30.0;
    }
    void TearDown() override
    {
        std::filesystem::remove_all(folder_);
        design = {};
    }
    std::string Write(const std::string& name, const std::string& content) const
    {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << content;
        return folder_ + "/" + name;
    }
    const std::string folder_ = ::testing::TempDir() + "lobemax_profile_" + std::to_string(::getpid());
    Script script_;
    Import_Choice choice_;
    Profile profile_;
};

TEST_F(Profile_File, is_read_whole_and_told_by_its_name_alone)
{
    const std::string path = Write("lobe 1.txt", "0 1\r\n90 2\r\n180 3\r\n360 1");
    EXPECT_EQ(Read_Profile_Text(path), "0 1\r\n90 2\r\n180 3\r\n360 1");
    script_.Expect({"File lobe 1.txt\n\n   of Cam Profile data successfully read."});
    ASSERT_TRUE(Take_Profile_File(design, path, choice_, profile_));
    ASSERT_EQ(profile_.Data_Count(), 4);
    EXPECT_EQ(profile_.y[3], 1.0F);
    EXPECT_EQ(Name_in_Path("lobe.txt"), "lobe.txt");
}

TEST_F(Profile_File, that_is_none_says_so_and_leaves_no_profile)
{
    profile_.x.assign(4, Single(1.0));
    testing::Expected_Box none = Error_Box(53, "File not found", "Read_File");
    none.text += "There are no files with your chosen name in the selected directory";
    script_.Expect(none);
    EXPECT_FALSE(Take_Profile_File(design, folder_ + "/none.txt", choice_, profile_));
    EXPECT_EQ(profile_.Data_Count(), 0);
    script_.Expect(Error_Box(75, "Path or file access error", "Read_File"));
    EXPECT_FALSE(Read_Profile_Text(folder_));
    script_.Expect({"There is no pair of numbers in this file.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Take_Profile_File(design, Write("empty.txt", ""), choice_, profile_));
}

TEST_F(Profile_File, larger_than_any_profile_is_refused)
{
    const std::string path = Write("long.txt", std::string(Largest_Profile_File + 1, ' '));
    script_.Expect({"This file is larger than any profile: 16 MB.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Read_Profile_Text(path));
    const std::string largest = Write("large.txt", std::string(Largest_Profile_File, ' '));
    EXPECT_TRUE(Read_Profile_Text(largest));
}

}  // namespace
}  // namespace lobemax
