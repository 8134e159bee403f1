// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/byte_stream.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

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

}  // namespace lobemax
