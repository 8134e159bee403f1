// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "core/startup.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/examples.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "motion/segments.h"
#include "tests/support/faulty_files.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::Expected_Box;

const std::string question =
    "An unsaved design of the last run was found.\n"
    "Do you want to recover it?";

class Recovery : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = ::testing::TempDir() + "lobemax_recovery_" + std::to_string(::getpid()) + "/";
        fs::create_directories(folder_);
        ASSERT_TRUE(Sub_Main(design, "", {}));
    }
    void TearDown() override
    {
        fs::remove_all(folder_);
        design = {};
    }
    bool Kept() const { return fs::exists(Recovery_Model_Path(folder_)); }

    std::string folder_;
    testing::Script script_;
};

TEST_F(Recovery, an_unsaved_design_comes_back_as_it_was)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.identity.File_Name = "/home/me/work.cam";
    design.cam.Prime_Rad = 123.5;
    design.flags.Model_Saved = false;
    const double S = design.results.CalcData(var::S, 25);
    ASSERT_TRUE(Write_Recovery(design, folder_));
    EXPECT_FALSE(design.flags.Model_Saved);
    EXPECT_EQ(design.identity.File_Name, "/home/me/work.cam");

    ASSERT_TRUE(Sub_Main(design, "", {}));  // the next run
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.motion.No_of_segments, 8);
    EXPECT_EQ(design.cam.Prime_Rad, 123.5);
    EXPECT_EQ(design.results.CalcData(var::S, 25), S);
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_FALSE(design.flags.Model_Saved);
    EXPECT_EQ(design.identity.File_Name, "/home/me/work.cam");
    EXPECT_TRUE(Kept()) << "it is in this program's own recovery at once";
    Drop_Recovery(folder_);
    EXPECT_FALSE(Offer_Recovery(design, folder_));  // once: no second question
}

TEST_F(Recovery, of_a_program_that_still_runs_is_neither_offered_nor_dropped)
{
    const pid_t other = ::fork();
    if (other == 0) {
        ::pause();
        ::_exit(0);
    }
    const std::string theirs = folder_ + "Recovery-" + std::to_string(other) + ".cam";
    std::ofstream(theirs) << "another program's work\n";
    EXPECT_FALSE(Offer_Recovery(design, folder_));  // no question
    Drop_Recovery(folder_);
    EXPECT_TRUE(fs::exists(theirs));
    ::kill(other, SIGKILL);
    ::waitpid(other, nullptr, 0);
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::No});
    EXPECT_FALSE(Offer_Recovery(design, folder_));  // now it is left behind
    EXPECT_FALSE(fs::exists(theirs));
}

TEST_F(Recovery, of_an_earlier_release_is_offered_and_a_recovered_design_has_a_name)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.cam.Prime_Rad = 123.5;
    ASSERT_TRUE(Write_Recovery(design, folder_));
    fs::rename(Recovery_Model_Path(folder_), folder_ + "Recovery.cam");
    fs::rename(Recovery_Note_Path(folder_), folder_ + "Recovery.txt");
    ASSERT_TRUE(Sub_Main(design, "", {}));
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.cam.Prime_Rad, 123.5);
    EXPECT_EQ(design.identity.Model_Name, "Recovered");
    EXPECT_TRUE(Unsaved(design));
}

TEST_F(Recovery, results_of_the_units_before_stay_those)
{
    ASSERT_TRUE(Open_Example(design, "Four Dwell"));
    Change_Units(design, 1);
    ASSERT_TRUE(Results_in_Other_Units(design));
    ASSERT_TRUE(Write_Recovery(design, folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_TRUE(Results_in_Other_Units(design));
    EXPECT_EQ(design.plot.Var_Unit(var::S), "mm");
}

TEST_F(Recovery, a_no_drops_it)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.flags.Model_Saved = false;
    ASSERT_TRUE(Write_Recovery(design, folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::No});
    EXPECT_FALSE(Offer_Recovery(design, folder_));
    EXPECT_FALSE(Kept());
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Recovery, what_is_saved_or_empty_is_not_kept_and_drops_an_older_one)
{
    Mark_Saved(design);
    EXPECT_FALSE(Worth_Recovering(design));
    ASSERT_TRUE(Write_Recovery(design, folder_));
    EXPECT_FALSE(Kept());
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.flags.Model_Saved = false;
    ASSERT_TRUE(Write_Recovery(design, folder_));
    EXPECT_TRUE(Kept());
    Mark_Saved(design);
    ASSERT_TRUE(Write_Recovery(design, folder_));
    EXPECT_FALSE(Kept());
}

TEST_F(Recovery, a_table_that_was_only_typed_is_worth_keeping)
{
    design.motion.Start_Value(1) = "0";
    EXPECT_TRUE(Worth_Recovering(design));
}

TEST_F(Recovery, the_number_format_of_the_typed_texts_comes_back)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.identity.Number_Format = "Europe";
    design.motion.End_Value(1) = "12,5";
    design.flags.Model_Saved = false;
    ASSERT_TRUE(Write_Recovery(design, folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    ASSERT_EQ(design.identity.Number_Format, "USA");
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.motion.End_Value(1), "12,5");
}

TEST_F(Recovery, without_its_note_is_read_in_the_number_format_in_force)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.motion.End_Value(1) = "12.5";
    ASSERT_TRUE(Write_Recovery(design, folder_));
    fs::remove(Recovery_Note_Path(folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.identity.Number_Format, "USA");
    EXPECT_EQ(design.motion.End_Value(1), "12.5");
    EXPECT_EQ(design.identity.Model_Name, "Recovered");
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_TRUE(Unsaved(design));
}

TEST_F(Recovery, takes_from_its_note_only_what_a_design_may_have)
{
    for (const auto& [note, units] : {std::pair{"Asia\n/x/y.cam\n0\n", 0},
                                      {"USA\n/x/y.cam\n6\n", 0},
                                      {"USA\n/x/y.cam\ninches\n", 0},
                                      {"USA\n/x/y.cam\n1\n", 1},
                                      {"USA\n/x/y.cam\n4\n", 4}}) {
        SCOPED_TRACE(note);
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
        design.cam.Prime_Rad = 123.5;
        ASSERT_TRUE(Write_Recovery(design, folder_));
        std::ofstream(Recovery_Note_Path(folder_)) << note;
        ASSERT_TRUE(Sub_Main(design, "", {}));
        script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
        ASSERT_TRUE(Offer_Recovery(design, folder_));
        EXPECT_EQ(design.identity.Number_Format, "USA");
        EXPECT_EQ(design.identity.Model_Name, "y");
        EXPECT_EQ(design.results.WhichUnit, units);
    }
}

TEST_F(Recovery, a_damaged_file_is_kept_aside_and_told_of)
{
    std::ofstream(Recovery_Model_Path(folder_)) << "nothing of ours\n";
    Host host = Installed_Host();
    int boxes = 0;
    host.messenger = [&](const Message& box) {
        ++boxes;
        return box.buttons == Buttons::Yes_No ? Answer::Yes : Answer::OK;
    };
    const Host before = Install_Host(host);
    EXPECT_FALSE(Offer_Recovery(design, folder_));
    Install_Host(before);
    EXPECT_GE(boxes, 2);
    EXPECT_FALSE(Kept());
    EXPECT_TRUE(fs::exists(Recovery_Model_Path(folder_) + ".bad"));
    EXPECT_FALSE(design.flags.Calculated);
}

TEST_F(Recovery, a_recovered_design_survives_the_next_crash_too)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.cam.Prime_Rad = 123.5;
    ASSERT_TRUE(Write_Recovery(design, folder_));
    const std::string theirs = folder_ + "Recovery-999999999.cam";  // of a program that died
    fs::rename(Recovery_Model_Path(folder_), theirs);
    fs::rename(Recovery_Note_Path(folder_), folder_ + "Recovery-999999999.txt");
    for (const bool full : {true, false}) {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
        std::optional<testing::Faulty_Files> disk;
        if (full)
            disk.emplace(testing::Faulty_Files::Fault_Plan{1, ENOSPC, true, false, {}});
        EXPECT_TRUE(Offer_Recovery(design, folder_));
        EXPECT_EQ(design.cam.Prime_Rad, 123.5);
        EXPECT_EQ(fs::exists(theirs), full) << "what could not be written anew stays";
        EXPECT_EQ(Kept(), !full);
    }
}

TEST_F(Recovery, what_is_read_in_part_is_kept_beside)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    ASSERT_TRUE(Write_Recovery(design, folder_));
    const std::string theirs = folder_ + "Recovery-999999999.cam";
    fs::rename(Recovery_Model_Path(folder_), theirs);
    fs::resize_file(theirs, fs::file_size(theirs) / 2);
    const auto size = fs::file_size(theirs);
    for (const char* const kept : {".bad", ".bad2"}) {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        std::string last;
        Host host = Installed_Host();
        host.messenger = [&](const Message& box) {
            last = box.text;
            return box.buttons == Buttons::Yes_No ? Answer::Yes : Answer::OK;
        };
        const Host before = Install_Host(host);
        EXPECT_TRUE(Offer_Recovery(design, folder_));
        Install_Host(before);
        EXPECT_EQ(last, "The recovery file was read in part only.  It is kept as\n" + theirs + kept);
        EXPECT_EQ(fs::file_size(theirs + kept), size);
        EXPECT_FALSE(fs::exists(theirs));
        EXPECT_TRUE(Kept()) << "what was read is in this program's own recovery";
        EXPECT_EQ(design.motion.No_of_segments, 8);
        Drop_Recovery(folder_);
        fs::copy_file(theirs + kept, theirs);
    }
}

TEST_F(Recovery, a_huge_or_broken_note_costs_its_name_alone)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.cam.Prime_Rad = 123.5;
    const std::string huge(100000, 'x');
    for (const std::string& note :
         {std::string(), std::string("\0\n\xFF\xFE\n\n9e99", 10), std::string("USA\na.cam\n1E+999\n"), huge,
          "USA\n" + huge, std::string("Europe"), std::string("USA\n/a/b.cam"), std::string("USA\n\n99\n")}) {
        design.identity.File_Name.clear();
        ASSERT_TRUE(Write_Recovery(design, folder_));
        std::ofstream(Recovery_Note_Path(folder_), std::ios::binary) << note;
        ASSERT_TRUE(Sub_Main(design, "", {}));
        script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
        EXPECT_TRUE(Offer_Recovery(design, folder_));
        EXPECT_EQ(design.cam.Prime_Rad, 123.5);
        EXPECT_EQ(design.results.WhichUnit, 0) << "no unit system is taken from a broken note";
    }
    ASSERT_TRUE(Write_Recovery(design, folder_));
    fs::resize_file(Recovery_Note_Path(folder_), std::uintmax_t{1} << 40);  // a file with a hole of a terabyte
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
}

TEST_F(Recovery, a_file_name_with_a_line_break_comes_back)
{
    ASSERT_TRUE(Build_Example(design, "Four Dwell"));
    design.identity.File_Name = "/home/me/two\nlines.cam";
    ASSERT_TRUE(Write_Recovery(design, folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    script_.Expect({question, Buttons::Yes_No, Symbol::exclamation, Answer::Yes});
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    EXPECT_EQ(design.identity.File_Name, "/home/me/two\nlines.cam");
}

TEST_F(Recovery, a_folder_that_cannot_be_written_tells_nobody)
{
    ASSERT_TRUE(Build_Example(design, "Double Dwell"));
    design.flags.Model_Saved = false;
    EXPECT_FALSE(Write_Recovery(design, folder_ + "missing/"));
}

TEST_F(Recovery, twenty_segments_keep_what_was_typed)
{
    design.motion.No_of_segments = 20;
    for (int i = 1; i <= 20; ++i) {
        design.motion.Beta_Deg(i) = 18;
        design.motion.Start_Value(i) = design.motion.End_Value(i) = std::to_string(i);
    }
    ASSERT_TRUE(Write_Recovery(design, folder_));
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Host host = Installed_Host();
    host.messenger = [](const Message& box) { return box.buttons == Buttons::Yes_No ? Answer::Yes : Answer::OK; };
    const Host before = Install_Host(host);
    EXPECT_TRUE(Offer_Recovery(design, folder_));
    Install_Host(before);
    EXPECT_EQ(design.motion.No_of_segments, 20);
    EXPECT_EQ(design.motion.End_Value(20), "20");
    EXPECT_FALSE(design.flags.Calculated);
}

}  // namespace
}  // namespace lobemax
