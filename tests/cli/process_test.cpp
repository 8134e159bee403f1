// SPDX-License-Identifier: GPL-3.0-or-later
/// What only the process of the command line tool shows: its status in the shell, its environment, its pipes.
#include <sys/wait.h>

#include <cstdlib>

#include "tests/cli/cli_folder.h"

namespace lobemax {
namespace {

class Process : public testing::Cli_Folder {
protected:
    /// The status of a shell's command line in which $cli is the tool. Both streams go to files, unless it tells
    /// others.
    int Shell(const std::string& line) const
    {
        const int status = std::system(("{ cli='" LOBEMAX_CLI "'; " + line + "; } >out.txt 2>err.txt").c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(Process, streams_and_status_reach_the_shell)
{
    EXPECT_EQ(Shell("$cli --version"), 0);
    EXPECT_TRUE(Content("out.txt").starts_with("lobemax-cli "));
    EXPECT_EQ(Shell("$cli nonsense"), 2);
    EXPECT_EQ(Content("out.txt"), "");
    EXPECT_NE(Content("err.txt"), "");
    EXPECT_EQ(Shell("$cli new -o m.cam --rpm 120 " + segments), 0);
    EXPECT_EQ(Shell("$cli calc m.cam -o no/such/folder/m.cam"), 1);
    EXPECT_EQ(Shell("$cli show m.cam 'Beta_Deg(2)' WhichUnit"), 0);
    EXPECT_EQ(Content("out.txt"), "Beta_Deg(2) = 90\nWhichUnit = 5\n");
}

TEST_F(Process, output_that_does_not_arrive_is_status_1)
{
    ASSERT_EQ(Shell("$cli new -o m.cam " + segments), 0);
    EXPECT_EQ(Shell("$cli show m.cam CalcData >/dev/full"), 1);
    // The reader is gone before the tool writes: told by its status where a broken pipe does not end it.
    EXPECT_EQ(Shell("trap '' PIPE; { sleep 0.2; $cli show m.cam CalcData; echo $? >status.txt; } | true"), 0);
    EXPECT_EQ(Content("status.txt"), "1\n");
}

TEST_F(Process, numbers_have_a_point_and_pictures_their_bytes_in_every_locale_and_run)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    std::string shown, drawn;
    for (const std::string language : {"C", "de_DE.UTF-8", "C.UTF-8"}) {
        const std::string tool = "LC_ALL=" + language + " $cli ";
        ASSERT_EQ(Shell(tool + "draw e.cam --at 70.5 --scale 1.5 -o d.pdf && " + tool +
                        "plot e.cam --vars 1,2,3,4 -o p.pdf && " + tool + "table e.cam --vars 1,2 --decimals 3"),
                  0)
            << language;
        const std::string pictures = Content("d.pdf") + Content("p.pdf");
        EXPECT_TRUE(drawn.empty() || pictures == drawn) << language;
        EXPECT_TRUE(shown.empty() || Content("out.txt") == shown) << language;
        drawn = pictures;
        shown = Content("out.txt");
    }
    EXPECT_NE(shown.find("\n45.000\t12.500\t"), std::string::npos) << shown.substr(0, 2000);
}

}  // namespace
}  // namespace lobemax
