// SPDX-License-Identifier: GPL-3.0-or-later
// No order of failures leaves the owner of a design with neither the old file nor the new one: every call to the disk
// fails in turn under every writer of the desktop, and a save is killed at random moments.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>

#include "core/messages.h"
#include "core/startup.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "files/exports.h"
#include "files/model_file.h"
#include "files/preferences.h"
#include "files/recovery.h"
#include "files/run_record.h"
#include "tests/support/faulty_files.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::All_Faults;
using testing::Faulty_Files;

std::string Content(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

class Lost_Nothing : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = ::testing::TempDir() + "lobemax_lost_" + std::to_string(::getpid()) + "/";
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        Host host;
        host.messenger = [this](const Message& box) {
            told_ += box.text + "\n";
            return Usual_Answer(box.buttons);
        };
        host.save_dialog = [this](const File_Dialog&) { return std::optional(path_); };
        host.date = [] { return "1/1/2026"; };
        host.time = [] { return "12:00"; };
        before_ = Install_Host(std::move(host));
        ASSERT_TRUE(Sub_Main(design, "", {}));
    }
    void TearDown() override
    {
        Install_Host(std::move(before_));
        fs::remove_all(folder_);
        design = {};
    }

    /// What stands under a work of the desktop.
    struct Writer {
        std::string name;
        std::string file;            // that it writes
        std::function<bool()> work;  // @return whether it says that the file was written
        bool tells = true;           // a failure has a message
    };

    /// Runs a writer under every fault over the file of an older run of it. @return how many faults were tried
    int Under_Every_Fault(const Writer& writer, const std::function<void()>& change)
    {
        path_ = folder_ + writer.file;
        const auto start = [&](std::string& older) {
            fs::remove_all(folder_);
            fs::create_directories(folder_);
            design = at_start_;
            design.identity.File_Name = path_;
            design.flags.Model_Saved = true;
            writer.work();
            older = Content(path_);
            change();
            told_.clear();
        };
        std::string older;
        at_start_ = design;
        start(older);
        int calls = 0;
        {
            const Faulty_Files counting({});
            EXPECT_TRUE(writer.work()) << writer.name << told_;
            calls = static_cast<int>(counting.Calls().size());
        }
        const std::string newer = Content(path_);
        EXPECT_FALSE(older.empty());
        EXPECT_NE(older, newer) << writer.name;
        int tried = 0;
        for (const Faulty_Files::Fault_Plan& plan : All_Faults(calls)) {
            start(older);
            bool written = false;
            std::string failing;
            {
                const Faulty_Files files(plan);
                written = writer.work();
                failing = files.Calls().at(static_cast<std::size_t>(plan.call - 1));
            }
            ++tried;
            const std::string found = Content(path_);
            EXPECT_TRUE(found == older || found == newer) << writer.name << ", " << failing;
            EXPECT_FALSE(written) << writer.name << ", " << failing;
            if (writer.tells) {
                EXPECT_NE(told_, "") << writer.name << ", " << failing;
            }
            EXPECT_FALSE(fs::exists(path_ + ".bak"));
        }
        design = at_start_;
        return tried;
    }

    std::string folder_;
    std::string path_;
    std::string told_;
    Host before_;
    Design_State at_start_;
};

TEST_F(Lost_Nothing, under_every_fault_of_the_disk_an_old_or_a_new_whole_file_exists_and_the_program_says_so)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    const auto renamed = [] { design.identity.User = "changed since"; };
    int tried = 0;
    tried += Under_Every_Fault({"save", "m.cam", [] { return Save_Model(design); }}, renamed);
    tried += Under_Every_Fault({"save as", "m.cam", [] { return Save_As_Plus(design); }}, renamed);
    tried += Under_Every_Fault({"save as 7", "m.cam", [] { return Save_As_V7(design); }}, renamed);
    tried += Under_Every_Fault({"export all", "m.txt", [this] { return Export_All_to_File(design, path_); }}, renamed);
    tried += Under_Every_Fault({"export profile", "m.pts", [this] { return Export_Profile_to_File(design, path_, 1); }},
                               renamed);
    tried +=
        Under_Every_Fault({"preferences", "Preferences.txt", [this] { return Write_Preferences(design, folder_); }},
                          [] { design.identity.WhichUnit = 2; });
    design.identity.User = "unsaved";
    Mark_Unsaved(design);
    const std::string recovery = Recovery_Model_Path(folder_).substr(folder_.size());
    tried +=
        Under_Every_Fault({"recovery", recovery, [this] { return Write_Recovery(design, folder_); }, false}, renamed);
    RecordProperty("faults_tried", tried);
    EXPECT_GT(tried, 500);
}

/// The run record has no older file to lose: it says one of two words, and a failure is told.
TEST_F(Lost_Nothing, the_run_record_is_whole_under_every_fault)
{
    const std::string record = folder_ + "Run_Check.txt";
    int calls = 0;
    {
        const Faulty_Files counting({});
        EXPECT_EQ(Check_Run_Record(design, folder_, ""), Run_Start::go_on);
        calls = static_cast<int>(counting.Calls().size());
    }
    for (const Faulty_Files::Fault_Plan& plan : All_Faults(calls)) {
        Terminate(folder_);
        told_.clear();
        {
            const Faulty_Files files(plan);
            Check_Run_Record(design, folder_, "");
        }
        EXPECT_NE(told_, "");
        const std::string found = Content(record);
        EXPECT_TRUE(found.starts_with("Running\r\n") || found.starts_with("Normal Exit\r\n")) << found;
    }
}

#if defined(LOBEMAX_ADDRESS_SANITIZER)
constexpr int kills = 100;  // a process under the sanitizer is slow to start
#else
constexpr int kills = 500;
#endif

TEST_F(Lost_Nothing, a_save_that_is_killed_leaves_a_whole_file_and_one_leftover_at_most)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    path_ = folder_ + "m.cam";
    design.identity.User = "first";
    ASSERT_TRUE(Save_As_Plus(design));
    const std::string first = Content(path_);
    design.identity.User = "other";
    const auto started = std::chrono::steady_clock::now();
    ASSERT_TRUE(Save_Model(design));
    const std::chrono::microseconds one_save =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started);
    const std::string other = Content(path_);
    std::mt19937 random(20261122);
    int leftovers = 0;
    int seen[2] = {};
    for (int i = 0; i < kills; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                design.identity.User = design.identity.User == "first" ? "other" : "first";
                if (!Save_Model(design))
                    ::_exit(1);
            }
        }
        // Within the first saves, on a machine of any speed.
        ::usleep(static_cast<unsigned>(random() % static_cast<unsigned long>(5 * one_save.count() + 1000)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "no save failed";
        const std::string found = Content(path_);
        ASSERT_TRUE(found == first || found == other) << found.size() << " bytes";
        ++seen[found == other];
        int parts = 0;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            const std::string name = entry.path().filename();
            parts += name.ends_with(".part");
            ASSERT_TRUE(name == "m.cam" || name.ends_with(".part")) << name;
        }
        ASSERT_LE(parts, 1);
        leftovers += parts;
        Remove_Leftovers(folder_);  // the next start
        ASSERT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
    }
    RecordProperty("kills", kills);
    RecordProperty("leftovers", leftovers);
    EXPECT_GT(leftovers, 0) << "some were killed in the midst of a write";
    EXPECT_GT(std::min(seen[0], seen[1]), 0);
}

}  // namespace
}  // namespace lobemax
