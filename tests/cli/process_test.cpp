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

/// In every command that prints, and for help; a file size limit and a closed output are no other.
TEST_F(Process, output_that_does_not_arrive_is_told_by_every_command)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    const std::string told = "lobemax-cli: standard output could not be written\n";
    for (const char* const command : {"--help", "--version", "plot --help", "show e.cam", "show e.cam CalcData",
                                      "show e.cam --json", "table e.cam --vars 1,2,3,4", "fft e.cam --var 1 -o f.cam"})
        for (const char* const output : {">/dev/full", ">&-"}) {
            EXPECT_EQ(Shell(std::string("$cli ") + command + " " + output), 1) << command << output;
            EXPECT_TRUE(Content("err.txt").ends_with(told)) << command << output << Content("err.txt");
        }
    EXPECT_EQ(Shell("ulimit -f 1; $cli table e.cam --vars 1,2,3,4 >limited.txt"), 1);
    EXPECT_TRUE(Content("err.txt").ends_with(told));
}

/// The first file that a program opens takes the lowest free number: with its output closed that of the output, and
/// what is printed would go into it.
TEST_F(Process, what_is_printed_into_a_closed_output_never_goes_into_a_file)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam --date d --time t"), 0);
    ASSERT_EQ(Shell("$cli fft e.cam --var 1 -o whole.cam --date d --time t"), 0);
    EXPECT_EQ(Shell("$cli fft e.cam --var 1 -o f.cam --date d --time t >&- 2>&- <&-"), 1);
    std::string whole = Content("whole.cam");
    whole.replace(whole.find("whole.cam"), 9, "f.cam");
    EXPECT_EQ(Content("f.cam"), whole);
}

TEST_F(Process, a_full_disk_leaves_older_models_exports_and_pictures)
{
    if (Shell("unshare -rm true") != 0)
        GTEST_SKIP() << "this machine mounts no file systems for its users";
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    // A disk of 64 KiB, with an older file of each kind and no room for a new one.
    EXPECT_EQ(Shell("mkdir disk; unshare -rm sh -c \"mount -t tmpfs -o size=64k none disk && cd disk && "
                    "for f in o.cam o.txt o.png o.svg o.pdf o.pts; do echo older >\\$f; done; "
                    "head -c 100000 /dev/zero >filler; "
                    "$cli calc ../e.cam -o o.cam; echo \\$? >>../status; "
                    "$cli export ../e.cam spreadsheet -o o.txt; echo \\$? >>../status; "
                    "$cli export ../e.cam profile --code 1 -o o.pts; echo \\$? >>../status; "
                    "$cli plot ../e.cam --vars 1 -o o.svg; echo \\$? >>../status; "
                    "$cli draw ../e.cam -o o.png; echo \\$? >>../status; "
                    "$cli draw ../e.cam -o o.pdf; echo \\$? >>../status; "
                    "cat o.* >../kept; ls -A >../names\""),
              0)
        << Content("err.txt");
    EXPECT_EQ(Content("status"), "1\n1\n1\n1\n1\n1\n") << Content("err.txt");
    EXPECT_EQ(Content("kept"), "older\nolder\nolder\nolder\nolder\nolder\n");
    EXPECT_EQ(Content("names"), "filler\no.cam\no.pdf\no.png\no.pts\no.svg\no.txt\n");
}

TEST_F(Process, a_picture_that_there_is_no_memory_for_is_told)
{
#if defined(LOBEMAX_ADDRESS_SANITIZER)
    GTEST_SKIP() << "the sanitizer has memory of its own";
#endif
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    for (const char* const command : {"draw e.cam", "plot e.cam --vars 1"}) {
        EXPECT_EQ(Shell(std::string("ulimit -v 1200000; $cli ") + command + " --size 10000x10000 --scale 2 -o p.png"),
                  1)
            << command;
        EXPECT_EQ(Content("err.txt"), "lobemax-cli: 'p.png' cannot be written: Out of memory\n");
        EXPECT_FALSE(Exists("p.png"));
    }
}

TEST_F(Process, a_picture_may_have_a_name_that_is_no_utf_8)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    EXPECT_EQ(Shell("umask 027; $cli draw e.cam -o \"$(printf 'b\\351.png')\""), 0);
    EXPECT_TRUE(Exists("b\xE9.png"));
    EXPECT_EQ(Shell("stat -c %a b*.png"), 0);
    EXPECT_EQ(Content("out.txt"), "640\n");
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

/// Which libraries a command loads, by what the loader tells of itself.
TEST_F(Process, a_command_loads_qt_for_pictures_alone_and_open_cascade_for_solids_alone)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam"), 0);
    const auto loads = [&](const std::string& command) {
        EXPECT_EQ(Shell("LD_DEBUG=files LD_DEBUG_OUTPUT=loader $cli " + command +
                        "; status=$?; cat loader.* >loaded; "
                        "rm loader.*; exit $status"),
                  0)
            << command;
        const std::string text = Content("loaded");
        EXPECT_NE(text.find("file=libc.so"), std::string::npos);
        std::string found;
        for (const char* const library : {"libQt6Core", "libqoffscreen", "libTKernel"})
            if (text.find(std::string("file=") + library) != std::string::npos ||
                text.find(std::string("/") + library + ".so") != std::string::npos)
                found += std::string(" ") + library;
        return found;
    };
    for (const char* const command :
         {"--help", "new -o n.cam 'R MS 180 0 10' 'F MS 180 10 0'", "calc e.cam -o c.cam", "show e.cam",
          "table e.cam --vars 1,2", "check e.cam", "fft e.cam --var 1 -o f.cam", "convert e.cam -o b.cam --format 8",
          "export e.cam spreadsheet -o e.txt", "report e.cam -o r.txt", "cad e.cam --as dxf -o e.dxf"})
        EXPECT_EQ(loads(command), "") << command;
    for (const char* const command : {"plot e.cam --vars 1 -o p.png", "draw e.cam -o d.svg", "report e.cam -o r.pdf",
                                      "cad e.cam --as pdf -o s.pdf"})
        EXPECT_EQ(loads(command), " libQt6Core libqoffscreen") << command;
    EXPECT_EQ(loads("cad e.cam --as step --thickness 10 -o e.step"), " libTKernel");
}

TEST_F(Process, a_tool_without_its_libraries_tells_it_and_does_all_else)
{
    ASSERT_EQ(Shell("$cli example 'Double Dwell' -o e.cam && cp \"$cli\" alone && echo older >p.png"), 0);
    // The user's folder of the moment is none that libraries are taken from.
    ASSERT_EQ(Shell("cp /dev/null lobemax_drawing.so; cp /dev/null lobemax_solid.so"), 0);
    EXPECT_EQ(Shell("./alone table e.cam --vars 1 -o t.txt"), 0) << Content("err.txt");
    EXPECT_EQ(Shell("./alone plot e.cam --vars 1 -o p.png"), 1);
    EXPECT_TRUE(Content("err.txt").starts_with(
        "lobemax-cli: 'p.png' cannot be written: a part of the program cannot be loaded: lobemax_drawing.so: "))
        << Content("err.txt");
    EXPECT_EQ(Content("err.txt").find("too short"), std::string::npos) << "the empty file was taken";
    EXPECT_EQ(Content("p.png"), "older\n");
    EXPECT_EQ(Shell("./alone cad e.cam --as pdf -o s.pdf"), 1);
    EXPECT_TRUE(Content("err.txt").starts_with("lobemax-cli: No sheet can be drawn: a part of the program"))
        << Content("err.txt");
    EXPECT_EQ(Shell("./alone cad e.cam --as step --thickness 10 -o s.step"), 1);
    EXPECT_TRUE(Content("err.txt").starts_with("lobemax-cli: No solid can be made: a part of the program"))
        << Content("err.txt");
    EXPECT_FALSE(Exists("s.pdf") || Exists("s.step"));
}

}  // namespace
}  // namespace lobemax
