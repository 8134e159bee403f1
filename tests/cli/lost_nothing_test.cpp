// SPDX-License-Identifier: GPL-3.0-or-later
// Every command that writes a file, under every fault of the disk: the file is the older one or the new one, whole, and
// the command says so.
#include "tests/cli/cli_folder.h"
#include "tests/support/faulty_files.h"

namespace lobemax {
namespace {

using testing::All_Faults;
using testing::Faulty_Files;
using testing::Result;

using Lost_Nothing_Cli = testing::Cli_Folder;

TEST_F(Lost_Nothing_Cli, each_command_leaves_an_old_or_a_new_whole_file_under_every_fault_and_says_so)
{
    ASSERT_EQ(Run("example 'Double Dwell' -o e.cam").status, 0);
    struct Command {
        std::string line;
        std::string file;
    };
    int tried = 0;
    for (const auto& [line, file] : {Command{"new -o o.cam " + segments, "o.cam"},
                                     {"example 'Four Dwell' -o o.cam", "o.cam"},
                                     {"calc e.cam -o o.cam", "o.cam"},
                                     {"convert e.cam --format 7.2 -o o.cam", "o.cam"},
                                     {"fft e.cam --var 1 -o o.cam", "o.cam"},
                                     {"table e.cam --vars 1,2 -o o.txt", "o.txt"},
                                     {"export e.cam spreadsheet -o o.txt", "o.txt"},
                                     {"export e.cam profile --code 1 -o o.pts", "o.pts"},
                                     {"plot e.cam --vars 1 -o o.svg --size 200x100", "o.svg"},
                                     {"draw e.cam -o o.png --size 100x100", "o.png"},
                                     {"draw e.cam -o o.pdf --size 100x100", "o.pdf"}}) {
        const std::string command = stamps + line;
        int calls = 0;
        {
            const Faulty_Files counting({});
            ASSERT_EQ(Run(command).status, 0) << line;
            calls = static_cast<int>(counting.Calls().size());
        }
        const std::string newer = Content(file);
        ASSERT_GE(calls, 4) << line;
        for (const Faulty_Files::Fault_Plan& plan : All_Faults(calls)) {
            if (plan.error == EDQUOT && file != "o.cam")
                continue;  // as ENOSPC: pictures are slow to draw
            Write(file, "older");
            Result result;
            std::string failing;
            {
                const Faulty_Files files(plan);
                result = Run(command);
                failing = files.Calls().at(static_cast<std::size_t>(plan.call - 1));
            }
            ++tried;
            const std::string found = Content(file);
            EXPECT_TRUE(found == "older" || found == newer) << line << ", " << failing;
            // A new file that had no older one has no mode to take over.
            EXPECT_EQ(result.status, 1) << line << ", " << failing << ": " << result.err;
            EXPECT_NE(result.err, "") << line << ", " << failing;
            EXPECT_EQ(found == newer, failing == "folder") << line << ", " << failing;
        }
        std::filesystem::remove(file);
    }
    RecordProperty("faults_tried", tried);
    EXPECT_GT(tried, 500);
}

TEST_F(Lost_Nothing_Cli, a_cut_file_leaves_the_older_one_beside_it)
{
    Write("o.cam", "older");
    std::string twenty;
    for (int i = 0; i < 20; ++i)
        twenty += " 'D DW 18 0 0'";
    EXPECT_EQ(Run("new -o o.cam" + twenty).status, 1);
    EXPECT_TRUE(Content("o.cam").starts_with("\"LOBEMAX Plus\""));
    EXPECT_EQ(Content("o.cam.bak"), "older");
}

}  // namespace
}  // namespace lobemax
