// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/record_archive.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "core/text.h"

namespace lobemax {

namespace {

const Field& Field_Named(std::string_view name)
{
    const Field* field = Find_Field(name);
    if (field == nullptr)
        throw Fault{internal_error};  // a slip in a record order
    return *field;
}

bool Is_Blank(char c)
{
    return c == ' ' || c == '\t';
}

bool Is_Line_End(char c)
{
    return c == '\r' || c == '\n';
}

bool Ends_Value(char c)
{
    return c == ',' || Is_Line_End(c);
}

std::string_view Without_Blanks_Behind(std::string_view text)
{
    while (!text.empty() && Is_Blank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// A real number as files write it: optional sign, digits with an optional point, optional exponent with
/// E or D. A leading zero may be missing. Anything else is error 13.
Single Single_of(std::string_view text)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    std::array<char, 64> copy;  // from_chars knows no D
    std::string_view digits = text;
    if (const auto d = std::ranges::find_if(text, [](char c) { return c == 'd' || c == 'D'; }); d != text.end()) {
        if (text.size() > copy.size())
            throw Fault{type_mismatch};
        std::ranges::copy(text, copy.begin());
        copy[static_cast<std::size_t>(d - text.begin())] = 'E';
        digits = {copy.data(), text.size()};
    }
    const std::size_t first = !digits.empty() && digits.front() == '-' ? 1 : 0;
    if (digits.size() == first || !(digits[first] == '.' || (digits[first] >= '0' && digits[first] <= '9')))
        throw Fault{type_mismatch};  // also "inf" and "nan", which from_chars would take
    float value = 0.0F;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (end != digits.data() + digits.size() || error == std::errc::invalid_argument)
        throw Fault{type_mismatch};
    if (error == std::errc::result_out_of_range) {
        double wide = 0.0;  // too small for a Single is a small or zero Single; too large is a fault
        if (std::from_chars(digits.data(), digits.data() + digits.size(), wide).ec != std::errc{}) {
            const std::size_t exponent = digits.find_first_of("eE");
            if (exponent != std::string_view::npos && exponent + 1 < digits.size() && digits[exponent + 1] == '-')
                return 0.0;
            throw Fault{overflow};
        }
        return wide;
    }
    return static_cast<double>(value);
}

Integer Integer_of(std::string_view text)
{
    const double value = Single_of(text);
    if (value == std::floor(value) && std::abs(value) <= 32768.0)
        return To_Integer(value);
    if (std::abs(value) > 32768.0)
        throw Fault{overflow};
    throw Fault{type_mismatch};
}

Flag Flag_of(std::string_view text)
{
    if (Same_Text(text, "#TRUE#") || text == "-1")
        return true;
    if (Same_Text(text, "#FALSE#") || text == "0")
        return false;
    throw Fault{type_mismatch};
}

}  // namespace

// ---- writer

void Record_Writer::Quoted(std::string_view text)
{
    const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    std::string utf8;
    if (!ascii)  // the name of a file may be no UTF-8: it is written as it will be read
        text = utf8 = To_Utf8(std::string(text));
    if (text.size() > Record_Reader::longest_record)  // what cannot be read again is not written
        throw Fault{bad_record_length};
    buffer_ += '"';
    for (const char c : text) {
        if (c == '"')
            buffer_ += '"';
        buffer_ += c;
    }
    buffer_ += '"';
}

namespace {

constexpr std::size_t longest_number = Most_Shortest_Bytes + 1;

char* Put_Number(char* at, Single value)
{
    if (value == 0.0 && std::signbit(value.Bits()))
        *at++ = '-';  // the sign of a zero is kept: a table comes back bit for bit
    return Put_Shortest(at, value);
}

}  // namespace

void Record_Writer::Number(Single value)
{
    std::array<char, longest_number> text;
    buffer_.append(text.data(), Put_Number(text.data(), value));
}

void Record_Writer::End_Line()
{
    buffer_ += "\r\n";
    Flush_when_Full();
}

void Record_Writer::Flush_when_Full()
{
    constexpr std::size_t a_step = 1024;  // no line but of long texts has as many, and no block of numbers
    if (buffer_.size() >= capacity - a_step)
        Flush();
}

void Record_Writer::Flush()
{
    sink_.Write(buffer_.data(), buffer_.size());
    buffer_.clear();
}

void Record_Writer::Value(const Field_Ref& value)
{
    std::visit(
        [this](auto* at) {
            using T = std::remove_pointer_t<decltype(at)>;
            if constexpr (std::is_same_v<T, std::string>)
                Quoted(*at);
            else if constexpr (std::is_same_v<T, Flag>)
                buffer_ += *at ? "#TRUE#" : "#FALSE#";
            else if constexpr (std::is_same_v<T, Integer> || std::is_same_v<T, Long>)
                buffer_ += std::to_string(static_cast<int>(*at));
            else if constexpr (std::is_same_v<T, Single>)
                Number(*at);
            else
                buffer_ += Shortest(*at);
        },
        value);
}

void Record_Writer::Line(std::string_view text)
{
    Quoted(text);
    End_Line();
}

void Record_Writer::Record(std::string_view name, const Field_Index& index, Record_Shape shape)
{
    const Field& field = Field_Named(name);
    const Field_Ref value = field.at(design_, index);
    if (shape == Record_Shape::labelled) {
        Quoted(Field_Label(field, index));
        buffer_ += ',';
    }
    Value(value);
    End_Line();
}

void Record_Writer::Count(std::string_view name, const Integer& value)
{
    Quoted(Field_Label(Field_Named(name), {}));
    buffer_ += ',';
    buffer_ += std::to_string(static_cast<int>(value));
    End_Line();
}

void Record_Writer::Text_Pair(std::string_view first, std::string_view second)
{
    Quoted(first);
    buffer_ += ',';
    Quoted(second);
    End_Line();
}

void Record_Writer::Bare(std::span<const Single> values)
{
    constexpr std::size_t lines = 16;  // at a time: the buffer takes many bytes as fast as few
    std::array<char, lines*(longest_number + 2)> block;
    for (; !values.empty(); values = values.subspan(std::min(lines, values.size()))) {
        char* end = block.data();
        for (const Single value : values.first(std::min(lines, values.size()))) {
            end = Put_Number(end, value);
            *end++ = '\r';
            *end++ = '\n';
        }
        buffer_.append(block.data(), end);
        Flush_when_Full();
    }
}

// ---- reader

Record_Reader::Record_Reader(Design_State& design, Byte_Source& source, Record_Shape shape)
    : design_(design), source_(source), shape_(shape)
{
}

/// Moves what is left to the front of the buffer and fills up behind it; false when there is nothing more.
bool Record_Reader::Fill()
{
    if (ended_)
        return false;
    std::memmove(buffer_.data(), buffer_.data() + at_, end_ - at_);
    taken_ += at_;
    end_ -= at_;
    at_ = 0;
    if (end_ == buffer_.size())
        return false;
    const std::size_t count = source_.Read(buffer_.data() + end_, buffer_.size() - end_);
    ended_ = count == 0;
    end_ += count;
    return count > 0;
}

/// The first place from here on with such a byte; the end of the bytes in the buffer where there is none.
template <class Is_Wanted>
std::size_t Record_Reader::Find(std::size_t from, Is_Wanted is_wanted) const
{
    const char* const bytes = buffer_.data();
    return static_cast<std::size_t>(std::find_if(bytes + from, bytes + end_, is_wanted) - bytes);
}

void Record_Reader::Skip_Gap()
{
    while (true) {
        at_ = Find(at_, [](char c) { return !Is_Blank(c) && !Is_Line_End(c); });
        if (at_ < end_ || !Fill())
            return;
    }
}

/// Takes what stands before `end`, with the comma or line end behind it.
void Record_Reader::End_Token(std::size_t end)
{
    at_ = end;
    while (true) {
        at_ = Find(at_, [](char c) { return !Is_Blank(c); });
        if (at_ < end_ || !Fill())
            break;
    }
    cut_ = at_ == end_;
    if (cut_)
        return;
    if (buffer_[at_] != ',' && !Is_Line_End(buffer_[at_]))
        throw Fault{type_mismatch};
    ++at_;  // of a CR LF pair the LF goes with the next gap
}

Record_Reader::Token Record_Reader::Next()
{
    Skip_Gap();
    if (at_ == end_)
        throw Fault{past_end_of_file};
    if (buffer_[at_] == '"')
        return Next_Quoted();
    std::size_t end = at_;
    while (true) {
        end = Find(end, Ends_Value);
        if (end - at_ > longest_record)
            throw Fault{bad_record_length};
        if (end < end_)
            break;
        const std::size_t length = end - at_;
        const bool more = Fill();
        end = at_ + length;
        if (!more)
            break;
    }
    const std::string_view text = Without_Blanks_Behind({buffer_.data() + at_, end - at_});
    cut_ = end == end_;
    at_ = cut_ ? end : end + 1;
    return {text, false};
}

Record_Reader::Token Record_Reader::Next_Quoted()
{
    ++at_;
    unquoted_.clear();
    while (true) {
        if (at_ == end_ && !Fill())
            throw Fault{past_end_of_file};
        const void* quote = std::memchr(buffer_.data() + at_, '"', end_ - at_);
        const std::size_t stop =
            quote == nullptr ? end_ : static_cast<std::size_t>(static_cast<const char*>(quote) - buffer_.data());
        if (unquoted_.size() + (stop - at_) > longest_record)
            throw Fault{bad_record_length};
        unquoted_.append(buffer_.data() + at_, stop - at_);
        at_ = stop;
        if (at_ == end_)
            continue;
        ++at_;
        if (at_ == end_)
            Fill();
        if (at_ == end_ || buffer_[at_] != '"')
            break;
        unquoted_ += '"';
        ++at_;
    }
    End_Token(at_);
    return {unquoted_, true};
}

void Record_Reader::Skip_Label(Record_Shape shape)
{
    if (shape_ == Record_Shape::labelled && shape == Record_Shape::labelled)
        Next();
}

Single Record_Reader::Number()
{
    const Token token = Next();
    if (token.quoted)
        throw Fault{type_mismatch};
    return Single_of(token.text);
}

std::string Record_Reader::Text()
{
    const Token token = Next();
    if (!token.quoted)
        throw Fault{type_mismatch};
    return To_Utf8(std::string(token.text));
}

void Record_Reader::Value(const Field_Ref& value)
{
    std::visit(
        [this](auto* at) {
            using T = std::remove_pointer_t<decltype(at)>;
            if constexpr (std::is_same_v<T, std::string>) {
                *at = Text();
            } else if constexpr (std::is_same_v<T, Single> || std::is_same_v<T, double>) {
                *at = Number();
            } else {
                const Token token = Next();
                if (token.quoted)
                    throw Fault{type_mismatch};
                if constexpr (std::is_same_v<T, Flag>)
                    *at = Flag_of(token.text);
                else
                    *at = Integer_of(token.text);
            }
        },
        value);
}

std::string Record_Reader::Line()
{
    Skip_Gap();
    if (at_ == end_)
        throw Fault{past_end_of_file};
    if (buffer_[at_] == '"')
        return To_Utf8(std::string(Next_Quoted().text));
    std::string line;  // an unquoted line may hold commas
    while (true) {
        const std::size_t first = at_;
        at_ = Find(at_, Is_Line_End);
        line.append(buffer_.data() + first, at_ - first);
        if (line.size() > longest_record)
            throw Fault{bad_record_length};
        if (at_ < end_ || !Fill())
            break;
    }
    cut_ = at_ == end_;
    return To_Utf8(std::string(Without_Blanks_Behind(line)));
}

void Record_Reader::Record(std::string_view name, const Field_Index& index, Record_Shape shape)
{
    const Field_Ref value = Field_Named(name).at(design_, index);
    Skip_Label(shape);
    Value(value);
}

void Record_Reader::Count(std::string_view, Integer& value)
{
    Skip_Label(Record_Shape::labelled);
    Value(Field_Ref{&value});
}

void Record_Reader::Text_Pair(std::string_view, std::string_view)
{
    Next();
    Next();
}

void Record_Reader::Drop_Text()
{
    Next();
}

bool Record_Reader::At_End()
{
    Skip_Gap();
    return at_ == end_;
}

bool Record_Reader::May_Hold(std::size_t values) const
{
    const std::size_t size = source_.Size();
    const std::size_t place = taken_ + at_;
    return size > place && (size - place) / 2 >= values;  // a value takes a digit and a line end at least
}

std::string_view Record_Reader::Peek(std::size_t count)
{
    while (end_ - at_ < count && Fill()) {
    }
    return {buffer_.data() + at_, std::min(count, end_ - at_)};
}

}  // namespace lobemax
