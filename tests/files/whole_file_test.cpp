// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/whole_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "core/basic_types.h"
#include "tests/support/faulty_files.h"

namespace lobemax {
namespace {

namespace fs = std::filesystem;
using testing::All_Faults;
using testing::Faulty_Files;

class Whole_Files : public ::testing::Test {
protected:
    Whole_Files() : folder_(::testing::TempDir() + "lobemax_whole_" + std::to_string(::getpid()) + "/")
    {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        path_ = folder_ + "file";
        std::ofstream(path_) << "older";
    }
    ~Whole_Files() override { fs::remove_all(folder_); }
    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    std::string Content() const { return Content(path_); }
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }
    static struct stat Status(const std::string& path)
    {
        struct stat status {};
        EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
        return status;
    }
    static int Fault_of(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const Fault& fault) {
            return fault.Number();
        }
        return 0;
    }
    std::string folder_;
    std::string path_;
};

using Names_List = std::vector<std::string>;

TEST_F(Whole_Files, an_older_file_stays_until_the_new_one_is_committed)
{
    Whole_File file(path_);
    file.Sink().Write("new", 3);
    EXPECT_EQ(Content(), "older");
    file.Commit();
    EXPECT_EQ(Content(), "new");
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, without_a_commit_nothing_changes_and_nothing_is_left_behind)
{
    {
        Whole_File file(path_);
        file.Sink().Write("new", 3);
        EXPECT_EQ(Names().size(), 2U);
    }
    EXPECT_EQ(Content(), "older");
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, a_new_file_has_the_mode_that_the_umask_leaves)
{
    const mode_t before = ::umask(027);
    Write_Whole_File(folder_ + "a", "1");
    ::umask(0);
    Write_Whole_File(folder_ + "b", "1");
    ::umask(before);
    EXPECT_EQ(Status(folder_ + "a").st_mode & 07777, 0640U);
    EXPECT_EQ(Status(folder_ + "b").st_mode & 07777, 0666U);
}

TEST_F(Whole_Files, the_mode_of_the_file_replaced_is_kept)
{
    for (const mode_t mode : {mode_t{0640}, mode_t{0600}, mode_t{0755}, mode_t{0666}, mode_t{0200}}) {
        ::chmod(path_.c_str(), mode);
        Write_Whole_File(path_, "new");
        EXPECT_EQ(Status(path_).st_mode & 07777, mode);
    }
}

TEST_F(Whole_Files, the_owner_of_the_file_replaced_is_kept)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    ASSERT_EQ(::chown(path_.c_str(), 1234, 2345), 0);
    ::chmod(path_.c_str(), 0660);
    Write_Whole_File(path_, "new");
    EXPECT_EQ(Status(path_).st_uid, 1234U);
    EXPECT_EQ(Status(path_).st_gid, 2345U);
    EXPECT_EQ(Status(path_).st_mode & 07777, 0660U);
}

TEST_F(Whole_Files, a_group_that_cannot_be_handed_on_leaves_its_rights_to_nobody_else)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    ASSERT_EQ(::chown(path_.c_str(), 1234, 2345), 0);
    ::chmod(path_.c_str(), 04664);
    const Faulty_Files files({1, EPERM, true, false, "owner"});
    Write_Whole_File(path_, "new");
    EXPECT_EQ(Status(path_).st_uid, ::geteuid());
    EXPECT_EQ(Status(path_).st_mode & 07777, 0644U);
}

TEST_F(Whole_Files, links_stay_links_and_the_file_behind_them_is_written)
{
    ASSERT_EQ(::symlink("file", (folder_ + "link").c_str()), 0);
    ASSERT_EQ(::symlink((folder_ + "link").c_str(), (folder_ + "link2").c_str()), 0);
    Write_Whole_File(folder_ + "link2", "new");
    EXPECT_TRUE(S_ISLNK(Status(folder_ + "link").st_mode));
    EXPECT_TRUE(S_ISLNK(Status(folder_ + "link2").st_mode));
    EXPECT_EQ(Content(), "new");
}

TEST_F(Whole_Files, a_link_to_a_file_that_is_not_there_yet_makes_that_file)
{
    fs::create_directories(folder_ + "below");
    ASSERT_EQ(::symlink("below/target", (folder_ + "link").c_str()), 0);
    Write_Whole_File(folder_ + "link", "new");
    EXPECT_TRUE(S_ISLNK(Status(folder_ + "link").st_mode));
    EXPECT_EQ(Content(folder_ + "below/target"), "new");
}

TEST_F(Whole_Files, a_ring_of_links_is_refused)
{
    ASSERT_EQ(::symlink("b", (folder_ + "a").c_str()), 0);
    ASSERT_EQ(::symlink("a", (folder_ + "b").c_str()), 0);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_ + "a", "new"); }), path_access_error);
}

TEST_F(Whole_Files, folders_devices_and_pipes_are_refused)
{
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_, "new"); }), path_access_error);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_.substr(0, folder_.size() - 1), "new"); }), path_access_error);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File("/dev/null", "new"); }), path_access_error);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File("/dev/full", "new"); }), path_access_error);
    ASSERT_EQ(::mkfifo((folder_ + "pipe").c_str(), 0666), 0);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_ + "pipe", "new"); }), path_access_error);
}

TEST_F(Whole_Files, what_has_no_name_or_no_folder_is_refused)
{
    EXPECT_EQ(Fault_of([&] { Write_Whole_File("", "new"); }), bad_file_name);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_ + "none/file", "new"); }), file_not_found);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_ + "none/", "new"); }), path_access_error);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(path_ + "/below", "new"); }), path_access_error);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(folder_ + std::string(256, 'n'), "new"); }), bad_file_name);
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, a_read_only_file_is_refused_even_for_root)
{
    ::chmod(path_.c_str(), 0444);
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(path_, "new"); }), permission_denied);
    EXPECT_EQ(Content(), "older");
}

TEST_F(Whole_Files, a_read_only_folder_is_refused)
{
    const pid_t child = ::fork();
    if (child == 0) {  // root may write into any folder: another user may not
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(99);
        ::_exit(Fault_of([&] { Write_Whole_File(folder_ + "new", "new"); }));
    }
    fs::permissions(folder_,
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    int status = 0;
    ::waitpid(child, &status, 0);
    fs::permissions(folder_, fs::perms::owner_all);
    EXPECT_EQ(WEXITSTATUS(status), permission_denied);
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, a_name_may_have_all_255_bytes_and_none_of_them_need_be_a_letter)
{
    for (const std::string& name : {std::string(255, 'n'), std::string("tab\there"), std::string("line\nbreak"),
                                    std::string("\xE9t\xE9.cam"), std::string(".lobemax-x.cam")}) {
        Write_Whole_File(folder_ + name, "new");
        EXPECT_EQ(Content(folder_ + name), "new");
        Write_Whole_File(folder_ + name, "newer");
        EXPECT_EQ(Content(folder_ + name), "newer");
        fs::remove(folder_ + name);
    }
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, a_file_size_limit_is_a_full_disk)
{
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit limit {
            1000, 1000
        };
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(Fault_of([&] { Write_Whole_File(path_, std::string(5000, 'x')); }));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), disk_full);
    EXPECT_EQ(Content(), "older");
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, what_a_killed_writer_left_goes_with_the_next_write_and_a_writer_at_work_stays)
{
    const pid_t child = ::fork();
    if (child == 0) {
        Whole_File file(path_);
        file.Sink().Write("half", 4);
        ::kill(::getpid(), SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_EQ(Names().size(), 2U);
    EXPECT_EQ(Content(), "older");
    Whole_File at_work(folder_ + "other");
    EXPECT_EQ(Names().size(), 2U) << "the leftover is gone, the new temporary file is there";
    Write_Whole_File(path_, "new");
    EXPECT_EQ(Names().size(), 2U) << "the writer at work keeps its file";
    at_work.Sink().Write("whole", 5);
    at_work.Commit();
    EXPECT_EQ(Content(folder_ + "other"), "whole");
    EXPECT_EQ(Names(), (Names_List{"file", "other"}));
}

/// Another program may tidy the folder at any moment, also between the last byte and the rename.
TEST_F(Whole_Files, nobody_takes_a_file_for_a_leftover_before_it_has_its_place)
{
    class Tidied final : public File_System {
    public:
        explicit Tidied(std::string folder) : folder_(std::move(folder)) {}
        int Rename(const char* from, const char* to) override
        {
            Remove_Leftovers(folder_);
            return File_System::Rename(from, to);
        }

    private:
        std::string folder_;
    };
    Tidied tidied(folder_);
    Host host = Installed_Host();
    host.file_system = &tidied;
    const Host before = Install_Host(std::move(host));
    EXPECT_EQ(Fault_of([&] { Write_Whole_File(path_, "new"); }), 0);
    Install_Host(before);
    EXPECT_EQ(Content(), "new");
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, two_writers_of_one_file_both_write_it_whole)
{
    Whole_File first(path_);
    Whole_File second(path_);
    first.Sink().Write("first", 5);
    second.Sink().Write("second", 6);
    second.Commit();
    EXPECT_EQ(Content(), "second");
    first.Commit();
    EXPECT_EQ(Content(), "first");
    EXPECT_EQ(Names(), Names_List{"file"});
}

TEST_F(Whole_Files, an_older_file_is_kept_under_a_name_that_is_free)
{
    std::ofstream(path_ + ".bak") << "somebody's own";
    Whole_File file(path_);
    file.Sink().Write("new", 3);
    EXPECT_EQ(file.Commit_Keeping_Older(), path_ + ".bak2");
    EXPECT_EQ(Content(), "new");
    EXPECT_EQ(Content(path_ + ".bak"), "somebody's own");
    EXPECT_EQ(Content(path_ + ".bak2"), "older");
    Whole_File fresh(folder_ + "fresh");
    EXPECT_EQ(fresh.Commit_Keeping_Older(), "");
    EXPECT_EQ(Names(), (Names_List{"file", "file.bak", "file.bak2", "fresh"}));
}

TEST_F(Whole_Files, where_there_are_no_links_the_older_file_is_renamed)
{
    std::ofstream(path_ + ".bak") << "somebody's own";
    // The calls of an older file: create, mode, sync, close, and then the link to ".bak", which is taken.
    Faulty_Files files({4, EPERM, false, false, {}});
    Whole_File file(path_);
    file.Sink().Write("new", 3);
    Faulty_Files without_links({3, EPERM, false, false, {}});
    EXPECT_EQ(file.Commit_Keeping_Older(), path_ + ".bak2");
    EXPECT_EQ(without_links.Calls().at(2), "link");
    EXPECT_EQ(Content(path_ + ".bak"), "somebody's own");
    EXPECT_EQ(Content(path_ + ".bak2"), "older");
    EXPECT_EQ(Content(), "new");
}

TEST_F(Whole_Files, a_write_that_failed_never_takes_a_place)
{
    Whole_File file(path_);
    {
        const Faulty_Files files({1, ENOSPC, false, false, {}});
        EXPECT_EQ(Fault_of([&] { file.Sink().Write("new", 3); }), disk_full);
    }
    EXPECT_EQ(Fault_of([&] { file.Sink().Write("more", 4); }), disk_full);
    EXPECT_EQ(Fault_of([&] { file.Commit(); }), disk_full);
    EXPECT_EQ(Content(), "older");
}

/// Under every fault the target is the older file or the new one, whole; a fault that left the older one is thrown; and
/// no other file is there, but for a temporary one whose removal was the fault.
TEST_F(Whole_Files, every_fault_in_turn_leaves_a_whole_file_and_is_told)
{
    const std::string bytes(100000, 'n');
    for (const bool keeping : {false, true}) {
        const auto write = [&] {
            Whole_File file(path_);
            file.Sink().Write(bytes.data(), bytes.size());
            if (keeping)
                file.Commit_Keeping_Older();
            else
                file.Commit();
        };
        int calls = 0;
        {
            const Faulty_Files counting({});
            write();
            calls = static_cast<int>(counting.Calls().size());
        }
        EXPECT_GE(calls, 6);
        for (const Faulty_Files::Fault_Plan& plan : All_Faults(calls)) {
            fs::remove_all(folder_);
            fs::create_directories(folder_);
            std::ofstream(path_) << "older";
            const mode_t mode = 0640;
            ::chmod(path_.c_str(), mode);
            std::string failing;
            int fault = 0;
            {
                const Faulty_Files files(plan);
                fault = Fault_of(write);
                failing = files.Calls().at(static_cast<std::size_t>(plan.call - 1));
            }
            const std::string found = Content();
            EXPECT_TRUE(found == "older" || found == bytes) << failing << ": " << found.size() << " bytes";
            EXPECT_NE(fault, 0) << failing;
            EXPECT_EQ(found == bytes, failing == "folder") << failing;
            for (const std::string& name : Names())
                EXPECT_TRUE(name == "file" || (plan.from_there_on && name.ends_with(".part")) ||
                            (keeping && name == "file.bak" && Content(folder_ + name) == "older"))
                    << failing << " left " << name;
        }
    }
}

}  // namespace
}  // namespace lobemax
