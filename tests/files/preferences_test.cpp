// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/preferences.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "core/startup.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::Error_Box;
using testing::Script;

const std::string built_in =
    "\"Unit Code =  \",5\r\n"
    "\"Format  \",\"USA\"\r\n"
    "\"Cam Type  \",\"Radial\"\r\n"
    "\"Follower  \",1\r\n"
    "\"Translating   \",#TRUE#\r\n"
    "\"Full Screen   \",#FALSE#\r\n"
    "\"Open Clicked File Flag \",#TRUE#\r\n"
    "\"Aspect Ratio Correction Flag \",#FALSE#\r\n"
    "\"Time Base Flag\",1\r\n";

class Preferences : public ::testing::Test {
protected:
    void SetUp() override
    {
        design = {};
        documents_ = ::testing::TempDir() + "lobemax_docs_" + std::to_string(::getpid());
        folder_ = Program_Folder(design, documents_);
    }
    void TearDown() override
    {
        fs::remove_all(documents_);
        design = {};
    }
    std::string Content() const
    {
        std::ostringstream text;
        text << std::ifstream(folder_ + "Preferences.txt", std::ios::binary).rdbuf();
        return text.str();
    }
    void Put(const std::string& text) const
    {
        fs::create_directories(folder_);
        std::ofstream(folder_ + "Preferences.txt", std::ios::binary) << text;
    }

    std::string documents_;
    std::string folder_;
    Script script_;
};

TEST_F(Preferences, the_folder_has_the_first_seven_letters_of_the_program)
{
    EXPECT_EQ(Program_Folder(design, "/home/me/Documents"), "/home/me/Documents/LOBEMAX/");
}

TEST_F(Preferences, a_first_run_makes_folder_and_file_with_the_built_in_defaults)
{
    EXPECT_FALSE(Read_Preferences(design, folder_));
    EXPECT_EQ(Content(), built_in);
    EXPECT_TRUE(Read_Preferences(design, folder_));
}

TEST_F(Preferences, what_was_written_comes_back)
{
    design.identity.WhichUnit = 1;
    design.identity.Number_Format = "Europe";
    design.cam.Camtype = "Barrel";
    design.cam.Followtype = 2;
    design.cam.Translating = false;
    design.run.Full_Screen = true;
    design.run.Open_Clicked_File = false;
    design.run.Aspect_Flag = true;
    design.motion.Time_Base = 3;
    fs::create_directories(folder_);
    ASSERT_TRUE(Write_Preferences(design, folder_));
    design = {};
    ASSERT_TRUE(Read_Preferences(design, folder_));
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.cam.Camtype, "Barrel");
    EXPECT_EQ(design.cam.Followtype, 2);
    EXPECT_FALSE(design.cam.Translating);
    EXPECT_TRUE(design.run.Full_Screen);
    EXPECT_FALSE(design.run.Open_Clicked_File);
    EXPECT_TRUE(design.run.Aspect_Flag);
    EXPECT_EQ(design.motion.Time_Base, 3);
}

TEST_F(Preferences, a_time_base_of_zero_becomes_one_at_the_start)
{
    std::string text = built_in;
    text.replace(text.rfind('1'), 1, "0");
    Put(text);
    Start_Services services;
    services.read_preferences = [this] { Read_Preferences(design, folder_); };
    ASSERT_TRUE(Sub_Main(design, "", services));
    EXPECT_EQ(design.motion.Time_Base, 1);
}

TEST_F(Preferences, a_damaged_file_is_reported_by_its_stage_and_keeps_what_it_could_not_read)
{
    std::string text = built_in;
    text.replace(text.find("Radial"), 6, "Square");
    text.replace(text.find(",5"), 2, ",2");
    Put(text);
    script_.Expect(Error_Box(13, "Type mismatch", "Read_Preferences when reading Pref_File"));
    EXPECT_FALSE(Read_Preferences(design, folder_));
    EXPECT_EQ(design.identity.WhichUnit, 2);
    EXPECT_EQ(design.cam.Camtype, "Radial");
    Put("\"Unit Code =  \",9\r\n");
    script_.Expect(Error_Box(9, "Index out of bounds", "Read_Preferences when reading Pref_File"));
    EXPECT_FALSE(Read_Preferences(design, folder_));
    Put("\"Unit Code =  \",3\r\n");
    script_.Expect(Error_Box(62, "Input past end of file", "Read_Preferences when reading Pref_File"));
    EXPECT_FALSE(Read_Preferences(design, folder_));
}

TEST_F(Preferences, a_folder_that_cannot_be_written_is_reported_by_its_stage)
{
    script_.Expect(
        {"Error 53   (File not found)  has occurred in Write_Preferences when opening Preferences.txt File\n"
         "There are no files with your chosen name in the selected directory"});
    EXPECT_FALSE(Write_Preferences(design, "/no/such/folder/"));
}

TEST_F(Preferences, the_association_is_a_line_of_the_users_default_applications)
{
    const std::string ours = "application/x-lobemax-cam=lobemax.desktop;\n";
    EXPECT_EQ(Register_Cam_File("Lobemax", "cam", ""), "[Default Applications]\n" + ours);
    const std::string others = "[Added Associations]\na/b=c.desktop;\n\n[Default Applications]\ntext/plain=e.desktop\n";
    const std::string with =
        "[Added Associations]\na/b=c.desktop;\n\n[Default Applications]\n" + ours + "text/plain=e.desktop\n";
    EXPECT_EQ(Register_Cam_File("Lobemax", "cam", others), with);
    EXPECT_EQ(Register_Cam_File("Lobemax", "cam", with), with);
    EXPECT_EQ(Register_Cam_File("Notepad", "cam", with), others);
    EXPECT_EQ(Register_Cam_File("Notepad", "cam", others), others);
}

TEST_F(Preferences, the_association_is_written_for_a_user_who_has_no_settings_yet)
{
    const std::string folder = ::testing::TempDir() + "lobemax_new_user_" + std::to_string(::getpid()) + "/.config/";
    Write_Default_Application("Notepad", folder);
    EXPECT_FALSE(std::filesystem::exists(folder)) << "nothing to write";
    Write_Default_Application("Lobemax", folder);
    std::stringstream text;
    text << std::ifstream(folder + "mimeapps.list").rdbuf();
    EXPECT_EQ(text.str(), "[Default Applications]\napplication/x-lobemax-cam=lobemax.desktop;\n");
    std::filesystem::remove_all(std::filesystem::path(folder).parent_path().parent_path());
}

}  // namespace
}  // namespace lobemax
