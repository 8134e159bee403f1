// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fuzz/fuzz.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>

#include "core/startup.h"
#include "core/traps.h"

namespace lobemax::fuzz {

std::vector<Target>& Targets()
{
    static std::vector<Target> targets;
    return targets;
}

void Require(bool kept, std::string_view promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "Broken promise: %.*s\n", static_cast<int>(promise.size()), promise.data());
    throw Broken_Promise{std::string(promise)};
}

// ---- files in memory

int Memory_Files::Create(const char*, mode_t)
{
    at_work_.clear();
    return ::open("/dev/null", O_WRONLY | O_CLOEXEC);  // for who asks the system about a file that is open
}

ssize_t Memory_Files::Write(int, const char* bytes, std::size_t size)
{
    at_work_.append(bytes, size);
    return static_cast<ssize_t>(size);
}

int Memory_Files::Change_Owner(int, uid_t, gid_t)
{
    return 0;
}

int Memory_Files::Change_Mode(int, mode_t)
{
    return 0;
}

int Memory_Files::Sync(int)
{
    return 0;
}

int Memory_Files::Close(int file)
{
    return ::close(file);
}

int Memory_Files::Link(const char* from, const char* to)
{
    files_[to] = files_[from];
    return 0;
}

int Memory_Files::Rename(const char*, const char* to)
{
    files_[to] = std::exchange(at_work_, {});
    return 0;
}

int Memory_Files::Unlink(const char* path)
{
    files_.erase(path);
    return 0;
}

int Memory_Files::Sync_Folder(const char*)
{
    return 0;
}

const std::string& Memory_Files::Text(const std::string& path) const
{
    static const std::string none;
    const auto found = files_.find(path);
    return found == files_.end() ? none : found->second;
}

// ---- host

Host_of_Fuzz::Host_of_Fuzz()
{
    Host host;
    static const bool aloud = std::getenv("LOBEMAX_FUZZ_TELL") != nullptr;  // for who looks into a finding
    host.messenger = [this](const Message& box) {
        if (aloud)
            std::fprintf(stderr, "[%s]\n", box.text.c_str());
        Count_Message();
        return Usual_Answer(box.buttons);
    };
    host.error_reported = [this](int number) { Count_Error(number); };
    host.date = [] { return "1/1/2026"; };
    host.time = [] { return "12:00"; };
    host.file_system = &files;
    before_ = Install_Host(std::move(host));
}

Host_of_Fuzz::~Host_of_Fuzz()
{
    Install_Host(std::move(before_));
}

void Host_of_Fuzz::Count_Message()
{
    constexpr int most = 20000;  // a box a point, in every rung
    Require(++told_ < most, "the messages come to an end");
}

void Host_of_Fuzz::Count_Error(int number)
{
    ++errors_;
    Require(number != internal_error, "no exception but a run-time error reaches a trap");
}

// ---- folder

namespace {

class Own_Folder {
public:
    Own_Folder()
    {
        namespace fs = std::filesystem;
        std::error_code none;
        const char* const asked = std::getenv("TMPDIR");
        const fs::path memory = "/dev/shm";
        const fs::path below = asked != nullptr                      ? fs::path(asked)
                               : ::access(memory.c_str(), W_OK) == 0 ? memory
                                                                     : fs::temp_directory_path();
        path_ = (below / ("lobemax_fuzz_" + std::to_string(::getpid()))).string() + "/";
        fs::create_directories(path_, none);
    }
    ~Own_Folder()
    {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    Own_Folder(const Own_Folder&) = delete;
    Own_Folder& operator=(const Own_Folder&) = delete;
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

}  // namespace

const std::string& Folder()
{
    static const Own_Folder folder;
    return folder.Path();
}

void Put_File(const std::string& name, std::string_view bytes)
{
    std::ofstream file(Folder() + name, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

const Design_State& Started_Design()
{
    static const std::unique_ptr<Design_State> started = [] {
        auto design = std::make_unique<Design_State>();
        Require(Sub_Main(*design, "", {}), "the program starts");
        return design;
    }();
    return *started;
}

void Coarsen(Design_State& design)
{
    constexpr int points = 24;
    Allocate_Arrays(design, design.run.Saved_Variables, points);
    Dimension_Link_Arrays(design, points);
    design.motion.Max_Data_Points_used = points;
    design.motion.Deltatheta = 360.0 / points;
}

bool Has_Turn(std::string_view input, std::size_t turn, std::size_t turns)
{
    std::uint32_t hash = 2166136261U;  // of Fowler, Noll and Vo: the same in every build
    for (const char c : input)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return all_turns || (hash >> 8) % turns == turn;
}

std::vector<std::string> Lines_of(std::string_view input)
{
    std::vector<std::string> lines;
    while (!input.empty()) {
        const std::size_t end = std::min(input.find('\n'), input.size());
        lines.emplace_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return lines;
}

}  // namespace lobemax::fuzz
