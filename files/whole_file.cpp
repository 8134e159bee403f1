// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/whole_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "core/basic_types.h"
#include "core/messages.h"

namespace lobemax {

int File_System::Create(const char* path, mode_t mode)
{
    const int file = ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
    if (file < 0)
        return -1;
    // The lock tells that the writer lives. Where a file system has no locks the file is written without.
    struct stat status {};
    const bool taken = ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (taken || (::fstat(file, &status) == 0 && status.st_nlink == 0)) {
        ::close(file);  // somebody who tidied up took it for a leftover between the two calls
        errno = EEXIST;
        return -1;
    }
    return file;
}

ssize_t File_System::Write(int file, const char* bytes, std::size_t size)
{
    return ::write(file, bytes, size);
}

int File_System::Change_Owner(int file, uid_t owner, gid_t group)
{
    return ::fchown(file, owner, group);
}

int File_System::Change_Mode(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int File_System::Sync(int file)
{
    return ::fsync(file);
}

int File_System::Close(int file)
{
    return ::close(file);
}

int File_System::Link(const char* from, const char* to)
{
    return ::link(from, to);
}

int File_System::Rename(const char* from, const char* to)
{
    return std::rename(from, to);
}

int File_System::Unlink(const char* path)
{
    return ::unlink(path);
}

int File_System::Sync_Folder(const char* path)
{
    const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return errno == EACCES ? 0 : -1;  // a folder that may be written and not read
    const int result = ::fsync(folder);
    const int error = errno;
    ::close(folder);
    errno = error;
    return result;
}

namespace {

constexpr std::string_view name_begins = ".lobemax-";
constexpr std::string_view name_ends = ".part";

File_System& System()
{
    static File_System plain;  // has no state
    File_System* const installed = Installed_Host().file_system;
    return installed != nullptr ? *installed : plain;
}

[[noreturn]] void Throw_Errno()
{
    throw Fault{Error_of_Errno(errno)};
}

std::string Folder_of(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// The path with the links at its end followed, so that the file behind is replaced and the links stay. The last of
/// them may lead to a file that is not there yet.
std::string Behind_Links(std::string path)
{
    constexpr int most_links = 40;  // as the kernel's own bound
    for (int i = 0; i < most_links; ++i) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0)
            return path;  // no link
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : Folder_of(path) + next;
    }
    throw Fault{path_access_error};
}

/// What a target is now; none where there is no such file. @throws Fault where it may not be replaced
std::optional<struct stat> Older_File(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        Throw_Errno();
    }
    if (!S_ISREG(status.st_mode))
        throw Fault{path_access_error};
    constexpr mode_t writable = S_IWUSR | S_IWGRP | S_IWOTH;  // root may write what is read-only: it still is
    if ((status.st_mode & writable) == 0)
        throw Fault{permission_denied};
    if (::access(path.c_str(), W_OK) != 0)
        Throw_Errno();
    return status;
}

/// A device or file system that cannot do such a thing at all has not failed to do it.
bool Cannot_Be_Asked(int error)
{
    return error == EINVAL || error == ENOTSUP || error == ENOSYS;
}

/// Gives a file the owner, group and mode of another. A group that cannot be handed on gets the rights of the others,
/// not those of the older file's group.
void Hand_On(int file, const struct stat& older)
{
    struct stat now {};
    mode_t mode = older.st_mode & 07777;
    if (::fstat(file, &now) != 0)
        Throw_Errno();
    if (now.st_uid != older.st_uid || now.st_gid != older.st_gid) {
        constexpr auto as_it_is = static_cast<uid_t>(-1);
        if (System().Change_Owner(file, older.st_uid, older.st_gid) != 0) {
            mode &= 01777;  // the rights of another user are not taken over
            if (now.st_gid != older.st_gid && System().Change_Owner(file, as_it_is, older.st_gid) != 0)
                mode = (mode & ~mode_t{070}) | ((mode & 07) << 3);
        }
    }
    if (mode != (now.st_mode & 07777) && System().Change_Mode(file, mode) != 0)
        Throw_Errno();
}

}  // namespace

Whole_File::Whole_File(const std::string& path) : target_(Behind_Links(path)), folder_(Folder_of(target_)), sink_(*this)
{
    if (target_.empty() || target_.find('\0') != std::string::npos)
        throw Fault{bad_file_name};
    if (target_.ends_with('/'))
        throw Fault{path_access_error};
    const std::optional<struct stat> older = Older_File(target_);
    Remove_Leftovers(folder_);
    constexpr mode_t for_all = 0666;  // less the umask
    constexpr mode_t for_me = 0600;   // until it has the older file's mode
    Open_Temporary(older ? for_me : for_all);
    if (!older)
        return;
    try {
        Hand_On(file_, *older);
    } catch (const Fault&) {
        System().Close(file_);
        System().Unlink(temporary_.c_str());
        Let_Go();
        throw;
    }
}

Whole_File::~Whole_File()
{
    if (file_ >= 0)
        System().Close(file_);
    if (!temporary_.empty())
        System().Unlink(temporary_.c_str());
    Let_Go();
}

void Whole_File::Let_Go()
{
    if (lock_ >= 0)
        ::close(std::exchange(lock_, -1));
}

void Whole_File::Open_Temporary(mode_t mode)
{
    constexpr int most_tries = 1000;
    for (int i = 0; i < most_tries; ++i) {
        // A short name of its own: the target's may have all the bytes that a name can have.
        std::string name = folder_;
        name.append(name_begins).append(std::to_string(::getpid())).append("-").append(std::to_string(i));
        name.append(name_ends);
        file_ = System().Create(name.c_str(), mode);
        if (file_ >= 0) {
            temporary_ = std::move(name);
            lock_ = ::fcntl(file_, F_DUPFD_CLOEXEC, 0);
            return;
        }
        if (errno != EEXIST)
            Throw_Errno();
    }
    throw Fault{path_access_error};
}

void Whole_File::File_Sink::Write(const char* bytes, std::size_t size)
{
    while (size > 0 && file_.failed_ == 0) {
        const ssize_t written = System().Write(file_.file_, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            file_.failed_ = written < 0 ? Error_of_Errno(errno) : device_io_error;
            break;
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    if (file_.failed_ != 0)
        throw Fault{file_.failed_};
}

void Whole_File::Finish_Bytes()
{
    if (failed_ != 0)
        throw Fault{failed_};
    if (System().Sync(file_) != 0 && !Cannot_Be_Asked(errno))
        Throw_Errno();
    if (System().Close(std::exchange(file_, -1)) != 0)
        Throw_Errno();
}

std::string Whole_File::Keep_Older() const
{
    constexpr int most_backups = 1000;
    for (int i = 1; i < most_backups; ++i) {
        const std::string name = target_ + ".bak" + (i == 1 ? "" : std::to_string(i));
        if (System().Link(target_.c_str(), name.c_str()) == 0)
            return name;
        if (errno == ENOENT)
            return {};  // nothing to be kept
        if (errno == EEXIST)
            continue;
        if (errno != EPERM && !Cannot_Be_Asked(errno))
            Throw_Errno();
        // A file system without links: for a moment the older file has the other name alone.
        struct stat status {};
        if (::lstat(name.c_str(), &status) == 0)
            continue;
        if (System().Rename(target_.c_str(), name.c_str()) != 0)
            Throw_Errno();
        return name;
    }
    throw Fault{path_access_error};
}

void Whole_File::Take_Place()
{
    if (System().Rename(temporary_.c_str(), target_.c_str()) != 0)
        Throw_Errno();
    temporary_.clear();
    Let_Go();
    if (System().Sync_Folder(folder_.c_str()) != 0 && !Cannot_Be_Asked(errno))
        Throw_Errno();
}

void Whole_File::Commit()
{
    Finish_Bytes();
    Take_Place();
}

std::string Whole_File::Commit_Keeping_Older()
{
    Finish_Bytes();
    const std::string kept = Keep_Older();
    try {
        Take_Place();
    } catch (const Fault&) {
        struct stat status {};
        if (!kept.empty() && !temporary_.empty()) {
            if (::lstat(target_.c_str(), &status) == 0)
                System().Unlink(kept.c_str());
            else
                System().Rename(kept.c_str(), target_.c_str());
        }
        throw;
    }
    return kept;
}

void Write_Whole_File(const std::string& path, std::string_view bytes)
{
    Whole_File file(path);
    file.Sink().Write(bytes.data(), bytes.size());
    file.Commit();
}

void Remove_Leftovers(const std::string& folder)
{
    struct Folder_Closer {
        void operator()(DIR* open) const noexcept { ::closedir(open); }
    };
    const std::unique_ptr<DIR, Folder_Closer> names(::opendir(folder.c_str()));
    if (!names)
        return;
    const int at = ::dirfd(names.get());
    while (const dirent* const entry = ::readdir(names.get())) {
        const std::string_view name(entry->d_name);
        if (!name.starts_with(name_begins) || !name.ends_with(name_ends))
            continue;
        const int file = ::openat(at, entry->d_name, O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
        if (file < 0)
            continue;
        if (::flock(file, LOCK_EX | LOCK_NB) == 0)  // its writer lives no more
            ::unlinkat(at, entry->d_name, 0);
        ::close(file);
    }
}

}  // namespace lobemax
