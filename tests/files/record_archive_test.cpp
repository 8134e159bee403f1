// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/record_archive.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/text.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

class Record_Archive : public ::testing::Test {
protected:
    Record_Archive() { Sub_Main(design, "", {}); }

    static std::string Written(Single value)
    {
        Text_Sink sink;
        Record_Writer writer(design, sink);
        writer.Bare({&value, 1});
        writer.Flush();
        return sink.Text();
    }
    static double Read(const std::string& text)
    {
        Text_Source source(text);
        Record_Reader reader(design, source);
        Single value;
        reader.Bare(value);
        return value;
    }
    static int Fault_of_Reading(const std::string& text)
    {
        try {
            Read(text);
        } catch (const Fault& fault) {
            return fault.Number();
        }
        return 0;
    }
    static std::string Read_User(const std::string& record)
    {
        Text_Source source(record);
        Record_Reader reader(design, source);
        reader.Record("User");
        return design.identity.User;
    }
    Script user_;
};

/// However many: blocks and buffers end inside of rows.
TEST_F(Record_Archive, a_row_is_its_numbers_a_line_each)
{
    std::string expected;
    std::vector<Single> row;
    for (const std::size_t count : {0U, 1U, 15U, 16U, 17U, 32U, 33U, 20000U}) {
        row.clear();
        expected.clear();
        for (std::size_t i = 0; i < count; ++i) {
            row.emplace_back(std::ldexp(i % 2 == 0 ? -1.0000001 : 3.1415927, static_cast<int>(i % 200) - 100));
            expected += Shortest(row.back()) + "\r\n";
        }
        Text_Sink sink;
        Record_Writer writer(design, sink);
        writer.Bare(row);
        writer.Flush();
        ASSERT_EQ(sink.Text(), expected) << count;
    }
}

TEST_F(Record_Archive, a_bare_number_is_the_shortest_text_that_gives_the_same_single_back)
{
    EXPECT_EQ(Written(0.0), "0\r\n");
    EXPECT_EQ(Written(25.0), "25\r\n");
    EXPECT_EQ(Written(-0.1), "-0.1\r\n");
    EXPECT_EQ(Written(16777216.0), "16777216\r\n");
    EXPECT_EQ(Written(1e-6), "1E-06\r\n");
}

TEST_F(Record_Archive, every_single_survives_a_write_and_a_read_bit_for_bit)
{
    std::mt19937 bits(20261121);
    for (int n = 0; n < 20000; ++n) {
        const std::uint32_t pattern = static_cast<std::uint32_t>(bits());
        float value = 0.0F;
        std::memcpy(&value, &pattern, sizeof value);
        if (!std::isfinite(value))
            continue;
        const Single single(static_cast<double>(value));
        const float back = static_cast<float>(Read(Written(single)));
        ASSERT_EQ(std::bit_cast<std::uint32_t>(back), pattern) << Written(single);
    }
}

TEST_F(Record_Archive, a_zero_keeps_its_sign)
{
    EXPECT_EQ(Written(-0.0), "-0\r\n");
    EXPECT_TRUE(std::signbit(Read("-0\r\n")));
    EXPECT_TRUE(std::signbit(Read(Written(-0.0))));
    EXPECT_FALSE(std::signbit(Read(Written(0.0))));
    EXPECT_FALSE(std::signbit(Read("+0\r\n")));
}

TEST_F(Record_Archive, a_signed_zero_is_read_where_a_whole_number_stands)
{
    Text_Source source("\"Design No.\",-0\r\n");
    Record_Reader reader(design, source);
    Integer value = 7;
    reader.Count("Design No.", value);
    EXPECT_EQ(value, 0);
}

TEST_F(Record_Archive, extremes_of_a_single_survive)
{
    for (const float value : {std::numeric_limits<float>::max(), std::numeric_limits<float>::min(),
                              std::numeric_limits<float>::denorm_min(), -std::numeric_limits<float>::denorm_min(),
                              -std::numeric_limits<float>::max()})
        EXPECT_EQ(Read(Written(static_cast<double>(value))), static_cast<double>(value));
}

TEST_F(Record_Archive, numbers_are_read_without_a_leading_zero_and_with_either_exponent)
{
    EXPECT_EQ(Read(".5\r\n"), 0.5);
    EXPECT_EQ(Read("-.25\r\n"), -0.25);
    EXPECT_EQ(Read("+2\r\n"), 2.0);
    EXPECT_EQ(Read("1E-03\r\n"), Single(0.001));
    EXPECT_EQ(Read("1D-03\r\n"), Single(0.001));
    EXPECT_EQ(Read("2.5e2\r\n"), 250.0);
    EXPECT_EQ(Read("5.\r\n"), 5.0);
    EXPECT_EQ(Read(" 7 \r\n"), 7.0);
    EXPECT_EQ(Read("1E-60\r\n"), 0.0) << "below the smallest Single";
    EXPECT_EQ(Read("1E-400\r\n"), 0.0) << "below the smallest double";
    EXPECT_EQ(Fault_of_Reading("1E400\r\n"), overflow);
    EXPECT_EQ(Read("0." + std::string(58, '0') + "5D59\r\n"), 5.0) << "64 characters, the most with a D";
}

TEST_F(Record_Archive, what_is_no_number_is_a_type_mismatch)
{
    for (const char* text :
         {"\"5\"\r\n", "abc\r\n", "1.2.3\r\n", "nan\r\n", "inf\r\n", "-\r\n", ".\r\n", "0x10\r\n", "5 6\r\n", "1E\r\n"})
        EXPECT_EQ(Fault_of_Reading(text), type_mismatch) << text;
    EXPECT_EQ(Fault_of_Reading("1E39\r\n"), overflow);
    EXPECT_EQ(Fault_of_Reading("1E999\r\n"), overflow);
    EXPECT_EQ(Fault_of_Reading(""), past_end_of_file);
    EXPECT_EQ(Fault_of_Reading("\r\n \r\n"), past_end_of_file);
}

TEST_F(Record_Archive, a_labelled_record_is_label_comma_value_without_a_blank)
{
    design.motion.Beta_Deg(2) = 90.0;
    design.flags.Sized = true;
    design.identity.User = "A \"B\" C";
    Text_Sink sink;
    Record_Writer writer(design, sink);
    writer.Record("Beta_Deg", At(2));
    writer.Record("Sized");
    writer.Record("User");
    writer.Record("Mass of link", At(3), Record_Shape::bare);
    writer.Text_Pair("Null", "Null");
    writer.Line("");
    writer.Flush();
    EXPECT_EQ(sink.Text(),
              "\"Segment 2 Beta_Deg\",90\r\n\"Sized\",#TRUE#\r\n\"User\",\"A \"\"B\"\" C\"\r\n0\r\n"
              "\"Null\",\"Null\"\r\n\"\"\r\n");
}

TEST_F(Record_Archive, labels_are_skipped_without_a_look)
{
    Text_Source source("\"anything, at all\",12.5\r\nbare label,7\r\n");
    Record_Reader reader(design, source);
    reader.Record("Prime_Rad");
    reader.Record("Offset");
    EXPECT_EQ(design.cam.Prime_Rad, 12.5);
    EXPECT_EQ(design.cam.Offset, 7.0);
}

TEST_F(Record_Archive, a_text_keeps_its_quotes_commas_and_line_ends)
{
    EXPECT_EQ(Read_User("\"User\",\"Miller, \"\"the cam\"\" man\"\r\n"), "Miller, \"the cam\" man");
    EXPECT_EQ(Read_User("\"User\",\"two\r\nlines\"\r\n"), "two\r\nlines");
    EXPECT_EQ(Read_User("\"User\",\"\"\r\n"), "");
    EXPECT_EQ(Read_User("\"User\" , \"blanks around\" \r\n"), "blanks around");
}

TEST_F(Record_Archive, bytes_outside_ascii_are_utf8_if_valid_and_windows_1252_if_not)
{
    EXPECT_EQ(Read_User("\"User\",\"J\xC3\xBCrgen\"\r\n"), "J\xC3\xBCrgen");
    EXPECT_EQ(Read_User("\"User\",\"J\xFCrgen \x80\"\r\n"), "J\xC3\xBCrgen \xE2\x82\xAC");
}

TEST_F(Record_Archive, lines_may_end_in_any_of_the_three_ways)
{
    Text_Source source("1\n2\r3\r\n4");
    Record_Reader reader(design, source);
    for (const double expected : {1.0, 2.0, 3.0, 4.0}) {
        Single value;
        reader.Bare(value);
        EXPECT_EQ(value, expected);
    }
    EXPECT_TRUE(reader.At_End());
    EXPECT_TRUE(reader.Last_Record_Cut());
}

TEST_F(Record_Archive, flags_are_read_in_words_and_in_numbers)
{
    const auto read = [](const std::string& text) {
        const std::string record = "\"x\"," + text + "\r\n";
        Text_Source source(record);
        Record_Reader reader(design, source);
        reader.Record("Sized");
        return static_cast<bool>(design.flags.Sized);
    };
    EXPECT_TRUE(read("#TRUE#"));
    EXPECT_FALSE(read("#FALSE#"));
    EXPECT_TRUE(read("-1"));
    EXPECT_FALSE(read("0"));
    EXPECT_THROW(read("TRUE"), Fault);
    EXPECT_THROW(read("\"#TRUE#\""), Fault);
}

TEST_F(Record_Archive, integers_are_whole_and_of_sixteen_bits)
{
    const auto fault_of = [](const std::string& text) {
        const std::string record = "\"x\"," + text + "\r\n";
        Text_Source source(record);
        Record_Reader reader(design, source);
        try {
            reader.Record("Printstep");
        } catch (const Fault& fault) {
            return fault.Number();
        }
        return 0;
    };
    EXPECT_EQ(fault_of("32767"), 0);
    EXPECT_EQ(fault_of("-32768"), 0);
    EXPECT_EQ(fault_of("32768"), overflow);
    EXPECT_EQ(fault_of("1E9"), overflow);
    EXPECT_EQ(fault_of("2.5"), type_mismatch);
    EXPECT_EQ(fault_of("\"2\""), type_mismatch);
}

TEST_F(Record_Archive, records_cross_the_ends_of_the_buffer)
{
    std::string file;
    std::vector<double> values;
    for (int n = 0; n < 60000; ++n) {
        values.push_back(n * 1.5);
        file += std::to_string(n) + (n % 3 == 0 ? ".50\r\n" : n % 3 == 1 ? "\n" : " \r\n");
        values.back() = n % 3 == 0 ? n + 0.5 : n;
    }
    Text_Source source(file);
    Record_Reader reader(design, source);
    for (const double expected : values) {
        Single value;
        reader.Bare(value);
        ASSERT_EQ(value, expected);
    }
}

/// A source of one character without end, as far as a reader can tell: nothing of it is kept in memory.
class Long_Line final : public Byte_Source {
public:
    Long_Line(std::string start, char filling, std::size_t size)
        : start_(std::move(start)), filling_(filling), left_(size)
    {
    }
    std::size_t Read(char* into, std::size_t size) override
    {
        const std::size_t count = std::min(size, left_);
        std::memset(into, filling_, count);
        const std::size_t head = std::min(count, start_.size());
        std::memcpy(into, start_.data(), head);
        start_.erase(0, head);
        left_ -= count;
        taken += count;
        return count;
    }
    std::size_t Size() const override { return 0; }
    std::size_t taken = 0;

private:
    std::string start_;
    char filling_;
    std::size_t left_;
};

TEST_F(Record_Archive, a_line_of_200_megabytes_is_no_record_and_is_given_up_early)
{
    for (const std::string start : {"", "\""}) {
        Long_Line source(start, '1', 200'000'000);
        Record_Reader reader(design, source);
        Single value;
        try {
            if (start.empty())
                reader.Bare(value);
            else
                reader.Drop_Text();
            FAIL() << "it was taken for a record";
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), bad_record_length);
        }
        EXPECT_LE(source.taken, 4 * Record_Reader::longest_record);
    }
}

TEST_F(Record_Archive, a_text_that_is_no_utf8_is_written_as_it_will_be_read)
{
    Text_Sink sink;
    Record_Writer writer(design, sink);
    writer.Line("caf\xE9.cam");
    writer.Line("caf\xC3\xA9.cam");
    writer.Flush();
    EXPECT_EQ(sink.Text(), "\"caf\xC3\xA9.cam\"\r\n\"caf\xC3\xA9.cam\"\r\n");
}

TEST(Byte_Stream, operating_system_errors_become_the_reporters_numbers)
{
    EXPECT_EQ(Error_of_Errno(ENOENT), file_not_found);
    EXPECT_EQ(Error_of_Errno(EACCES), permission_denied);
    EXPECT_EQ(Error_of_Errno(ENOSPC), disk_full);
    EXPECT_EQ(Error_of_Errno(EIO), device_io_error);
    EXPECT_EQ(Error_of_Errno(ENAMETOOLONG), bad_file_name);
    EXPECT_EQ(Error_of_Errno(EISDIR), path_access_error);
}

}  // namespace
}  // namespace lobemax
