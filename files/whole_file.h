// SPDX-License-Identifier: GPL-3.0-or-later
/// The one way to write a file: whole or not at all. What is promised is told in docs/files.md.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "files/byte_stream.h"

namespace lobemax {

/// The calls of the operating system that a write is made of, each as POSIX has it: -1 and errno where it fails. A test
/// puts failing ones into the host (Host::file_system).
class File_System {
public:
    virtual ~File_System() = default;
    /// Makes a new file that this process alone has open and locked. EEXIST where there is one of that name.
    virtual int Create(const char* path, mode_t mode);
    virtual ssize_t Write(int file, const char* bytes, std::size_t size);
    virtual int Change_Owner(int file, uid_t owner, gid_t group);
    virtual int Change_Mode(int file, mode_t mode);
    virtual int Sync(int file);
    virtual int Close(int file);
    /// Another name for a file. EEXIST where the name is taken.
    virtual int Link(const char* from, const char* to);
    virtual int Rename(const char* from, const char* to);
    virtual int Unlink(const char* path);
    /// Makes the names of a folder safe against a loss of power.
    virtual int Sync_Folder(const char* path);
};

/// A file that is written whole or not at all. The bytes go to a temporary file in the folder of the target; Commit
/// brings them to the disk and puts that file in the target's place. Without Commit, or after a fault in any of its
/// stages, the target is as it was and the temporary file is gone.
///
/// A link is followed: the file behind it is replaced. A file that is replaced hands on its mode, its owner and its
/// group, as far as the system lets this user give them. Refused are folders, devices and pipes (75) and files that
/// nobody may write or this user may not (70).
class Whole_File {
public:
    /// @throws Fault: 53 no such folder, 70, 75 and others
    explicit Whole_File(const std::string& path);
    ~Whole_File();
    Whole_File(const Whole_File&) = delete;
    Whole_File& operator=(const Whole_File&) = delete;

    Byte_Sink& Sink() { return sink_; }

    /// @throws Fault: 57, 61, 70, 75 and others, that of a write before it too. The target is then as it was, except
    /// where the folder alone could not
    ///         be brought to the disk: then it is the new file, whole, and may be the older one after a loss of power.
    void Commit();

    /// As Commit, with the older file kept beside under a name of its own: the target's with ".bak", or ".bak2" and so
    /// on where that is taken.
    /// @return the older file's new name, empty where there was none
    std::string Commit_Keeping_Older();

    /// The file that is written: the path with its links followed.
    const std::string& Target() const noexcept { return target_; }

private:
    class File_Sink final : public Byte_Sink {
    public:
        explicit File_Sink(Whole_File& file) : file_(file) {}
        void Write(const char* bytes, std::size_t size) override;

    private:
        Whole_File& file_;
    };

    void Open_Temporary(mode_t mode);
    void Finish_Bytes();
    std::string Keep_Older() const;
    void Take_Place();
    void Let_Go();

    std::string target_;
    std::string folder_;
    std::string temporary_;  // empty once it has taken its place
    File_Sink sink_;
    int file_ = -1;
    int lock_ = -1;   // the same open file: its lock lasts until the file has its place
    int failed_ = 0;  // the fault of a write: such a file never takes a place
};

/// Writes a file whole or not at all. @throws Fault as Whole_File
void Write_Whole_File(const std::string& path, std::string_view bytes);

/// Removes the temporary files of writers that were killed from a folder; those of writers at work stay. Never fails.
/// Every write does this for its own folder.
void Remove_Leftovers(const std::string& folder);

}  // namespace lobemax
