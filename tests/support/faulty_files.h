// SPDX-License-Identifier: GPL-3.0-or-later
/// A file system whose calls fail when a test wants them to.
#pragma once

#include <cerrno>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/messages.h"
#include "files/whole_file.h"

namespace lobemax::testing {

/// Counts the calls and lets one of them fail, or all from one on; a failing write may have stored half its bytes
/// before. Installed while it lives.
class Faulty_Files final : public File_System {
public:
    struct Fault_Plan {
        int call = 0;  // counted from 1; 0: none fails
        int error = EIO;
        bool from_there_on = false;
        bool half_written = false;
        std::string only{};  // the one kind of calls that fails; empty: all kinds
    };

    explicit Faulty_Files(Fault_Plan plan) : plan_(plan)
    {
        Host host = Installed_Host();
        host.file_system = this;
        before_ = Install_Host(std::move(host));
    }
    ~Faulty_Files() override { Install_Host(std::move(before_)); }
    Faulty_Files(const Faulty_Files&) = delete;
    Faulty_Files& operator=(const Faulty_Files&) = delete;

    const std::vector<std::string>& Calls() const { return calls_; }

    int Create(const char* path, mode_t mode) override
    {
        return Fails("create") ? -1 : File_System::Create(path, mode);
    }
    ssize_t Write(int file, const char* bytes, std::size_t size) override
    {
        if (!Fails("write"))
            return File_System::Write(file, bytes, size);
        if (plan_.half_written && size > 1 && !halved_) {
            halved_ = true;
            plan_.call = static_cast<int>(calls_.size()) + 1;  // the rest of the bytes meets the fault
            return File_System::Write(file, bytes, size / 2);
        }
        return -1;
    }
    int Change_Owner(int file, uid_t owner, gid_t group) override
    {
        return Fails("owner") ? -1 : File_System::Change_Owner(file, owner, group);
    }
    int Change_Mode(int file, mode_t mode) override
    {
        return Fails("mode") ? -1 : File_System::Change_Mode(file, mode);
    }
    int Sync(int file) override { return Fails("sync") ? -1 : File_System::Sync(file); }
    int Close(int file) override
    {
        const bool fails = Fails("close");
        const int result = File_System::Close(file);  // a close that fails has closed
        if (fails)
            errno = plan_.error;
        return fails ? -1 : result;
    }
    int Link(const char* from, const char* to) override { return Fails("link") ? -1 : File_System::Link(from, to); }
    int Rename(const char* from, const char* to) override
    {
        return Fails("rename") ? -1 : File_System::Rename(from, to);
    }
    int Unlink(const char* path) override { return Fails("unlink") ? -1 : File_System::Unlink(path); }
    int Sync_Folder(const char* path) override { return Fails("folder") ? -1 : File_System::Sync_Folder(path); }

private:
    bool Fails(const char* name)
    {
        calls_.emplace_back(name);
        const int number = static_cast<int>(calls_.size());
        const bool fails = plan_.call != 0 && (plan_.only.empty() || plan_.only == name) &&
                           (number == plan_.call || (plan_.from_there_on && number > plan_.call));
        if (fails)
            errno = plan_.error;
        return fails;
    }

    Fault_Plan plan_;
    bool halved_ = false;
    std::vector<std::string> calls_;
    Host before_;
};

/// Every way in which a work of so many calls can meet a fault: each call in turn fails once, or all from it on, with
/// each error that a disk gives, and with half of a write stored.
inline std::vector<Faulty_Files::Fault_Plan> All_Faults(int calls)
{
    std::vector<Faulty_Files::Fault_Plan> plans;
    for (int call = 1; call <= calls; ++call)
        for (const int error : {ENOSPC, EIO, EDQUOT})
            for (const bool on : {false, true})
                for (const bool half : {false, true})
                    plans.push_back({call, error, on, half, {}});
    return plans;
}

}  // namespace lobemax::testing
