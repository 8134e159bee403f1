// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/byte_stream.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "core/basic_types.h"

namespace lobemax {

namespace {

[[noreturn]] void Throw_Errno()
{
    throw Fault{Error_of_Errno(errno)};
}

File_Handle Open(const std::string& path, const char* mode)
{
    File_Handle file(std::fopen(path.c_str(), mode));
    if (!file)
        Throw_Errno();
    std::setvbuf(file.get(), nullptr, _IONBF, 0);  // the archives have a buffer of their own
    return file;
}

/// Where a link leads, so that replacing the file behind it leaves the link in place.
std::string Behind_Links(const std::string& path)
{
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (resolved == nullptr)
        return path;
    std::string target(resolved);
    std::free(resolved);
    return target;
}

}  // namespace

int Error_of_Errno(int code)
{
    switch (code) {
    case ENOENT:
        return file_not_found;
    case EACCES:
    case EPERM:
    case EROFS:
        return permission_denied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return disk_full;
    case EIO:
        return device_io_error;
    case ENAMETOOLONG:
    case EINVAL:
        return bad_file_name;
    case ENOMEM:
        return out_of_memory;
    default:
        return path_access_error;
    }
}

std::size_t Text_Source::Read(char* into, std::size_t size)
{
    const std::size_t count = std::min(size, text_.size() - at_);
    std::memcpy(into, text_.data() + at_, count);
    at_ += count;
    return count;
}

File_Source::File_Source(const std::string& path) : file_(Open(path, "rb"))
{
    struct stat status {};
    if (::fstat(::fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode))
        size_ = static_cast<std::size_t>(status.st_size);
}

std::size_t File_Source::Read(char* into, std::size_t size)
{
    errno = 0;
    const std::size_t count = std::fread(into, 1, size, file_.get());
    if (count == 0 && std::ferror(file_.get()) != 0)
        Throw_Errno();
    return count;
}

File_Sink::File_Sink(const std::string& path) : file_(Open(path, "wb")) {}

void File_Sink::Write(const char* bytes, std::size_t size)
{
    errno = 0;
    if (std::fwrite(bytes, 1, size, file_.get()) != size)
        Throw_Errno();
}

void File_Sink::Close()
{
    errno = 0;
    if (std::fflush(file_.get()) != 0 || std::fclose(file_.release()) != 0)
        Throw_Errno();
}

Whole_File::Whole_File(std::string path)
    : path_(Behind_Links(path)), temporary_(path_ + ".part" + std::to_string(::getpid()))
{
    struct stat status {};
    if (::stat(path_.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {  // a device or pipe is written as it stands, nothing replaces it
            if (S_ISDIR(status.st_mode))
                throw Fault{path_access_error};
            temporary_.clear();
        } else if (::access(path_.c_str(), W_OK) != 0) {
            Throw_Errno();
        }
    }
    sink_ = std::make_unique<File_Sink>(temporary_.empty() ? path_ : temporary_);
}

Whole_File::~Whole_File()
{
    if (sink_ && !temporary_.empty())
        ::unlink(temporary_.c_str());
}

void Whole_File::Commit()
{
    sink_->Close();
    if (!temporary_.empty()) {
        struct stat status {};
        if (::stat(path_.c_str(), &status) == 0)
            ::chmod(temporary_.c_str(), status.st_mode & 07777);
        if (std::rename(temporary_.c_str(), path_.c_str()) != 0)
            Throw_Errno();
    }
    sink_.reset();
}

}  // namespace lobemax
