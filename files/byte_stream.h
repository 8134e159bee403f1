// SPDX-License-Identifier: GPL-3.0-or-later
/// Byte streams under the archives: a file on disk or a text in memory, in one pass through a buffer.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace lobemax {

/// The run-time error number that stands for an operating system error (errno).
int Error_of_Errno(int code);

struct File_Closer {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File_Handle = std::unique_ptr<std::FILE, File_Closer>;

/// Where bytes come from.
class Byte_Source {
public:
    virtual ~Byte_Source() = default;
    /// Fills at most size bytes; 0 at the end. @throws Fault when the device fails
    virtual std::size_t Read(char* into, std::size_t size) = 0;
    /// Bytes in the whole source, 0 when it cannot be told.
    virtual std::size_t Size() const = 0;
};

class Text_Source final : public Byte_Source {
public:
    explicit Text_Source(std::string_view text) : text_(text) {}
    explicit Text_Source(const char* text) : text_(text) {}
    explicit Text_Source(std::string&&) = delete;  // the text has to outlive its source
    std::size_t Read(char* into, std::size_t size) override;
    std::size_t Size() const override { return text_.size(); }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

class File_Source final : public Byte_Source {
public:
    /// @throws Fault{53} no such file, {70} no permission, {75} no readable file
    explicit File_Source(const std::string& path);
    std::size_t Read(char* into, std::size_t size) override;
    std::size_t Size() const override { return size_; }

private:
    File_Handle file_;
    std::size_t size_ = 0;
};

/// Where bytes go.
class Byte_Sink {
public:
    virtual ~Byte_Sink() = default;
    /// @throws Fault when the device fails
    virtual void Write(const char* bytes, std::size_t size) = 0;
};

class Text_Sink final : public Byte_Sink {
public:
    void Write(const char* bytes, std::size_t size) override { text_.append(bytes, size); }
    const std::string& Text() const noexcept { return text_; }

private:
    std::string text_;
};

}  // namespace lobemax
