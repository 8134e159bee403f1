// SPDX-License-Identifier: GPL-3.0-or-later
/// What the fuzzers share: a target's name and work, the host and the files that it runs over, the check that every
/// finished design has to stand. A target is linked alone into its fuzzer and with the others into the tests, which run
/// the inputs kept in the repository.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/design_state.h"
#include "core/messages.h"
#include "files/whole_file.h"

namespace lobemax::fuzz {

struct Target {
    std::string name;
    void (*run)(std::string_view input);
};

/// The targets that were linked in.
std::vector<Target>& Targets();

/// Declared by each target's file: puts it into the list.
struct Registered {
    Registered(const char* name, void (*run)(std::string_view)) { Targets().push_back({name, run}); }
};

/// What a broken promise throws: no standard exception, so that no trap takes it for a run-time error.
struct Broken_Promise {
    std::string promise;
};

/// Ends the target's run, and the fuzzer, where a promise is not kept; the text goes to standard error.
void Require(bool kept, std::string_view promise);

/// Keeps what is written in memory; only the names of the folder are looked up on the disk.
class Memory_Files final : public File_System {
public:
    int Create(const char* path, mode_t mode) override;
    ssize_t Write(int file, const char* bytes, std::size_t size) override;
    int Change_Owner(int file, uid_t owner, gid_t group) override;
    int Change_Mode(int file, mode_t mode) override;
    int Sync(int file) override;
    int Close(int file) override;
    int Link(const char* from, const char* to) override;
    int Rename(const char* from, const char* to) override;
    int Unlink(const char* path) override;
    int Sync_Folder(const char* path) override;

    /// A file's bytes; empty where it was not written.
    const std::string& Text(const std::string& path) const;

private:
    std::map<std::string, std::string> files_;  // by path
    std::string at_work_;                       // the one that is being written
};

/// A host while it lives: every message has its usual answer, no dialog is answered, the clock stands still.
class Host_of_Fuzz {
public:
    Host_of_Fuzz();
    ~Host_of_Fuzz();
    Host_of_Fuzz(const Host_of_Fuzz&) = delete;
    Host_of_Fuzz& operator=(const Host_of_Fuzz&) = delete;

    /// Messages so far.
    int Told() const { return told_; }
    /// Run-time errors so far.
    int Errors() const { return errors_; }

    Memory_Files files;

private:
    void Count_Message();
    void Count_Error(int number);

    Host before_;
    int told_ = 0;
    int errors_ = 0;
};

/// A folder of this process in memory, where the machine has such, with a separator behind; gone when the process ends.
const std::string& Folder();

/// Writes a file of that folder for a reader that wants one.
void Put_File(const std::string& name, std::string_view bytes);

/// A started design, as the program has it before its first screen.
const Design_State& Started_Design();

/// Gives a design every 15th point of a cycle, as a file may have them, and no results: a run takes a tenth of the
/// time.
void Coarsen(Design_State& design);

/// Whether an input has its turn at what is too slow to be done with every one: each has one turn of so many, always
/// the same. In the tests every input has all.
bool Has_Turn(std::string_view input, std::size_t turn, std::size_t turns);
inline bool all_turns = false;

std::vector<std::string> Lines_of(std::string_view input);

/// Every number of the calculated table and of the transform is finite.
void Require_Finite_Rows(const Design_State& design);

/// Does with a design what its owner can: motion, size, forces and stresses, then every export, table, plot and
/// drawing, the next unit system and all that stood anew. Each ends, leaves nothing infinite, and says so where it was
/// not done.
void Work_Through(Design_State& design, const Host_of_Fuzz& host);

/// Writes a design in a format, "9", "8" or "7.2", reads it back and writes that: both texts are the same bytes. A
/// design of 20 segments, which no format holds, is left alone, and one whose texts would be taken for another number
/// format's.
void Require_Same_Model_Back(Design_State& design, const std::string& format);

}  // namespace lobemax::fuzz
