// SPDX-License-Identifier: GPL-3.0-or-later
/// The two archives that visit a record order: one writes the design, one reads it.
///
/// A record is a line. It is labelled, `"label",value`, or a bare value; texts stand in double quotes, a
/// quote inside a text doubled; flags are #TRUE# and #FALSE#; numbers carry a decimal point, shortest.
/// The reader looks at no label: position alone decides.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "core/field_directory.h"
#include "files/byte_stream.h"

namespace lobemax {

enum class Record_Shape { labelled, bare };

class Record_Writer {
public:
    static constexpr bool reading = false;

    Record_Writer(Design_State& design, Byte_Sink& sink) : design_(design), sink_(sink) { buffer_.reserve(capacity); }

    /// A bare line holding a text, for the header and the tail.
    void Line(std::string_view text);
    /// One element of a field of the design, by its name in the directory.
    void Record(std::string_view name, const Field_Index& index = {}, Record_Shape shape = Record_Shape::labelled);
    /// A record whose label is a field's but whose value the caller holds.
    void Count(std::string_view name, const Integer& value);
    /// A record of two texts.
    void Text_Pair(std::string_view first, std::string_view second);
    /// Bare numbers, a line each: most of a model file.
    void Bare(std::span<const Single> values);
    /// Hands everything to the sink. What was written before a fault has to be flushed too.
    void Flush();

private:
    static constexpr std::size_t capacity = 1 << 16;
    void Quoted(std::string_view text);
    void Value(const Field_Ref& value);
    void Number(Single value);
    void End_Line();
    void Flush_when_Full();

    Design_State& design_;
    Byte_Sink& sink_;
    std::string buffer_;
};

class Record_Reader {
public:
    static constexpr bool reading = true;
    /// A record longer than this is no record of a model: error 59. It bounds the memory of a read.
    static constexpr std::size_t longest_record = 1 << 16;

    /// shape: how the records of this file stand where the order does not say so itself
    explicit Record_Reader(Design_State& design, Byte_Source& source, Record_Shape shape = Record_Shape::labelled);

    void Use_Shape(Record_Shape shape) { shape_ = shape; }

    /// A bare line of text, quoted or not.
    std::string Line();
    /// One element of a field of the design; a labelled record in a bare file has no label to skip.
    void Record(std::string_view name, const Field_Index& index = {}, Record_Shape shape = Record_Shape::labelled);
    void Count(std::string_view name, Integer& value);
    void Text_Pair(std::string_view first, std::string_view second);
    void Bare(Single& value) { value = Number(); }
    /// A bare text that nothing keeps.
    void Drop_Text();

    /// Whether the source has nothing more but blanks and line ends.
    bool At_End();
    /// Whether the last record ran into the end of the source without a line end: it may be cut.
    bool Last_Record_Cut() const noexcept { return cut_; }
    /// Whether the source is known to be large enough for that many more values.
    bool May_Hold(std::size_t values) const;
    /// The first characters of the source, without taking them.
    std::string_view Peek(std::size_t count);

private:
    struct Token {
        std::string_view text;  // valid until the next token
        bool quoted = false;
    };
    bool Fill();
    template <class Is_Wanted>
    std::size_t Find(std::size_t from, Is_Wanted is_wanted) const;
    void Skip_Gap();
    Token Next();
    Token Next_Quoted();
    void End_Token(std::size_t end);
    void Skip_Label(Record_Shape shape);
    Single Number();
    std::string Text();
    void Value(const Field_Ref& value);

    Design_State& design_;
    Byte_Source& source_;
    Record_Shape shape_;
    std::string unquoted_;  // a quoted text with its doubled quotes undone
    std::array<char, 2 * longest_record> buffer_;
    std::size_t at_ = 0;     // first byte not taken yet
    std::size_t end_ = 0;    // end of the bytes in the buffer
    std::size_t taken_ = 0;  // bytes of the source before the buffer
    bool ended_ = false;
    bool cut_ = false;
};

}  // namespace lobemax
