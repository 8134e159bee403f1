// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/limits_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "tests/support/faulty_files.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::All_Faults;
using testing::Faulty_Files;
using testing::Script;

const std::string head = "\"Limits of cams in mm, N, N-m, MPa, deg, sec\"\r\n";
const std::string usual =
    "\"Phi\", 30\r\n"
    "\"Phi_Arm\", 35\r\n"
    "\"Rho_Ratio\", 1.5\r\n"
    "\"Sigma\", off\r\n"
    "\"Contact_Force\", off\r\n"
    "\"V\", off\r\n"
    "\"A\", off\r\n"
    "\"J\", off\r\n"
    "\"V_Arm\", off\r\n"
    "\"A_Arm\", off\r\n"
    "\"J_Arm\", off\r\n"
    "\"Torque\", off\r\n"
    "\"Face_Width\", off\r\n"
    "\"Cam_Size\", off\r\n"
    "\"Surface\", 0.01\r\n"
    "\"Swing\", 0.01\r\n"
    "\"Chord\", 0.01\r\n";

class Limits_File : public ::testing::Test {
protected:
    void SetUp() override
    {
        design = {};
        folder_ = ::testing::TempDir() + "lobemax_limits_" + std::to_string(::getpid()) + "/";
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override
    {
        fs::remove_all(folder_);
        design = {};
    }
    std::string Content(const std::string& name = "Limits.txt") const
    {
        std::ostringstream text;
        text << std::ifstream(folder_ + name, std::ios::binary).rdbuf();
        return text.str();
    }
    void Put(const std::string& text) const { std::ofstream(folder_ + "Limits.txt", std::ios::binary) << text; }
    /// The usual file with a part of it changed.
    static std::string Changed(const std::string& from, const std::string& to)
    {
        std::string text = head + usual;
        text.replace(text.find(from), from.size(), to);
        return text;
    }
    void Expect_Told(const std::string& lines)
    {
        script_.Expect(
            {"The limits were not read in full from " + folder_ + "Limits.txt\n" + lines + "The file is left as it is.",
             Buttons::OK, Symbol::exclamation});
    }
    /// A text gives these limits, and the message says so.
    void Expect_Read(const std::string& text, const std::string& told, const Limits& expected = {})
    {
        SCOPED_TRACE(text);
        Put(text);
        Expect_Told(told);
        EXPECT_EQ(Read_Limits(design, folder_), expected);
        EXPECT_EQ(Content(), text);
    }

    std::string folder_;
    Script script_;
};

TEST_F(Limits_File, a_user_without_one_has_the_usual_limits_and_none_is_made)
{
    EXPECT_EQ(Read_Limits(design, folder_), Limits());
    EXPECT_TRUE(fs::is_empty(folder_));
    EXPECT_EQ(Read_Limits(design, folder_ + "none/"), Limits());
}

TEST_F(Limits_File, has_its_units_in_the_first_line_and_a_line_a_limit)
{
    ASSERT_TRUE(Write_Limits(design, folder_, Limits()));
    EXPECT_EQ(Content(), head + usual);
    EXPECT_EQ(Read_Limits(design, folder_), Limits());
}

TEST_F(Limits_File, what_was_written_comes_back_to_the_last_bit_in_every_number_format)
{
    std::mt19937 dice(20261122);
    std::uniform_real_distribution<double> exponent(-300.0, 300.0);
    for (int times = 0; times < 50; ++times) {
        design.identity.Number_Format = times % 2 == 0 ? "USA" : "Europe";
        design.identity.WhichUnit = 1 + times % 5;
        Limits limits;
        for (auto& value : limits.value)
            value = dice() % 4 == 0 ? std::nullopt : std::optional(std::pow(10.0, exponent(dice)));
        if (times % 3 == 0)
            limits[Limit::Contact_Force] = 0.0;
        ASSERT_TRUE(Write_Limits(design, folder_, limits));
        EXPECT_EQ(Read_Limits(design, folder_), limits);
        EXPECT_EQ(Content().find("0,"), std::string::npos);
    }
}

TEST_F(Limits_File, that_a_hand_has_changed_is_read_whatever_its_order_its_blanks_and_its_line_ends)
{
    std::string text = head + "\n  \"Chord\" ,0.002\n" + usual;
    text.erase(text.find("\"Chord\", 0.01\r\n"));
    std::erase(text, '\r');
    text.pop_back();
    Put(text);
    Limits expected;
    expected[Limit::Chord] = 0.002;
    EXPECT_EQ(Read_Limits(design, folder_), expected);
}

TEST_F(Limits_File, what_cannot_be_read_keeps_its_usual_value_and_is_told_once)
{
    Expect_Read(Changed("\"Phi\", 30", "\"Phi\", 3O"), "Line 2: '3O' is neither a number nor off. Phi is 30.\n");
    Expect_Read(Changed("\"Phi\", 30", "\"Phi\", 28,5"), "Line 2: '28,5' is neither a number nor off. Phi is 30.\n");
    Expect_Read(Changed("\"Phi\", 30", "\"Phi\","), "Line 2: '' is neither a number nor off. Phi is 30.\n");
    Expect_Read(Changed("\"Sigma\", off", "\"Sigma\", -3"),
                "Line 5: A limit must be positive, or off. Sigma is off.\n");
    Expect_Read(Changed("\"Sigma\", off", "\"Sigma\", 1E999"), "Line 5: A limit must not be so large. Sigma is off.\n");
    Expect_Read(Changed("\"Rho_Ratio\", 1.5\r\n", ""), "There is no line of Rho_Ratio: Rho_Ratio is 1.5.\n");
    Expect_Read(Changed("\"Chord\", 0.01", "\"Cord\", 0.02"),
                "Line 18: there is no limit 'Cord'.\nThere is no line of Chord: Chord is 0.01.\n");
    Expect_Read(Changed("\"Chord\", 0.01", "Chord 0.02"),
                "Line 18: it is none of a limit.\nThere is no line of Chord: Chord is 0.01.\n");
    Expect_Read(Changed("\"Phi_Arm\", 35", "\"Phi\", 20\r\n\"Phi_Arm\", 35"),
                "Line 3: Phi comes again: the first line counts.\n");
    design.identity.Number_Format = "Europe";
    Expect_Read(Changed("\"Chord\", 0.01", "\"Chord\", fine"),
                "Line 18: 'fine' is neither a number nor off. Chord is 0,01.\n");
}

TEST_F(Limits_File, the_rest_of_a_damaged_one_is_read)
{
    Limits expected;
    expected[Limit::Phi] = 20.0;
    expected[Limit::Torque] = 300.0;
    std::string text = Changed("\"Phi\", 30", "\"Phi\", 20");
    text.replace(text.find("\"Torque\", off"), 13, "\"Torque\", 300");
    text.replace(text.find("\"V\", off"), 8, "\"V\", of");
    Expect_Read(text, "Line 7: 'of' is neither a number nor off. V is off.\n", expected);
}

TEST_F(Limits_File, without_its_units_none_of_it_is_believed)
{
    const std::string told = "It does not begin with the line of its units: all limits are the usual ones.\n";
    Expect_Read(usual, told);
    Expect_Read("\"Limits of cams in inches\"\r\n" + usual, told);
    Expect_Read("", told);
    Expect_Read(std::string(3000, '\0'), told);
}

TEST_F(Limits_File, a_message_has_an_end)
{
    std::string told;
    for (const char* const line :
         {"Phi: Phi is 30", "Phi_Arm: Phi_Arm is 35", "Rho_Ratio: Rho_Ratio is 1.5", "Sigma: Sigma is off",
          "Contact_Force: Contact_Force is off", "V: V is off", "A: A is off", "J: J is off"})
        told += "There is no line of " + std::string(line) + ".\n";
    Expect_Read(head, told + "and 9 more.\n");
    const std::string key(5000, 'x');
    Expect_Read(head + usual + "\"" + key + "\", 1", "Line 19: there is no limit '" + std::string(40, 'x') + "'.\n");
    Expect_Read(head + usual + std::string(70000, ' '),
                "It is too long: what follows its first 65536 bytes was not read.\n");
}

TEST_F(Limits_File, one_that_was_not_read_in_full_stays_beside_the_new_one)
{
    const std::string older = Changed("\"Phi\", 30", "\"Phi\", 3O");
    Put(older);
    script_.Expect({"The limits that could not be read in full are kept as " + folder_ + "Limits.txt.bak"});
    ASSERT_TRUE(Write_Limits(design, folder_, Limits()));
    EXPECT_EQ(Content(), head + usual);
    EXPECT_EQ(Content("Limits.txt.bak"), older);
    ASSERT_TRUE(Write_Limits(design, folder_, Limits()));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 2);
}

TEST_F(Limits_File, that_is_no_file_is_reported)
{
    fs::create_directories(folder_ + "Limits.txt");
    script_.Expect({"Error 75   (Path or file access error)  has occurred in Read_Limits\n"});
    EXPECT_EQ(Read_Limits(design, folder_), Limits());
    script_.Expect({"Error 75   (Path or file access error)  has occurred in Write_Limits\n"});
    EXPECT_FALSE(Write_Limits(design, folder_, Limits()));
}

TEST_F(Limits_File, a_folder_that_is_not_there_is_reported)
{
    script_.Expect(
        {"Error 53   (File not found)  has occurred in Write_Limits\n"
         "There are no files with your chosen name in the selected directory"});
    EXPECT_FALSE(Write_Limits(design, "/no/such/folder/", Limits()));
}

/// Every call to the disk fails in turn: the file is the older one or the new one, whole, and a failure is told.
TEST(Limits_File_Faults, no_failing_disk_leaves_half_a_file)
{
    const std::string folder = ::testing::TempDir() + "lobemax_limits_faults_" + std::to_string(::getpid()) + "/";
    int told = 0;
    Host host;
    host.messenger = [&told](const Message& box) {
        ++told;
        return Usual_Answer(box.buttons);
    };
    const Host before = Install_Host(std::move(host));
    const auto content = [&] {
        std::ostringstream text;
        text << std::ifstream(folder + "Limits.txt", std::ios::binary).rdbuf();
        return text.str();
    };
    Limits changed;
    changed[Limit::Phi] = 20.0;
    const std::string newer = head + "\"Phi\", 20" + usual.substr(9);
    for (const bool damaged : {false, true}) {
        const std::string older = damaged ? head + "\"Phi\", wide\r\n" : head + usual;
        const auto start = [&] {
            fs::remove_all(folder);
            fs::create_directories(folder);
            std::ofstream(folder + "Limits.txt", std::ios::binary) << older;
            told = 0;
        };
        start();
        int calls = 0;
        {
            const Faulty_Files counting({});
            ASSERT_TRUE(Write_Limits(design, folder, changed));
            calls = static_cast<int>(counting.Calls().size());
            ASSERT_EQ(content(), newer);
        }
        for (const Faulty_Files::Fault_Plan& plan : All_Faults(calls)) {
            start();
            bool written = false;
            {
                const Faulty_Files files(plan);
                written = Write_Limits(design, folder, changed);
            }
            EXPECT_TRUE(content() == older || content() == newer) << plan.call;
            EXPECT_FALSE(written) << plan.call;
            EXPECT_EQ(told, 1) << plan.call;
            if (plan.from_there_on)
                continue;  // nothing can be removed any more
            for (const auto& entry : fs::directory_iterator(folder))
                EXPECT_TRUE(entry.path().filename() == "Limits.txt" || entry.path().filename() == "Limits.txt.bak")
                    << entry.path();
        }
    }
    Install_Host(before);
    fs::remove_all(folder);
}

}  // namespace
}  // namespace lobemax
