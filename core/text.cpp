// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <system_error>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/shortest_decimal.h"

namespace lobemax {

namespace {

constexpr bool Is_Digit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool Is_Blank(char c)
{
    return c == ' ' || c == '\t';
}

constexpr char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// A place in a text that is read forward. Past the end stands a character that fits nowhere.
struct Cursor {
    std::string_view text;
    std::size_t place = 0;

    char operator[](std::size_t ahead) const { return place + ahead < text.size() ? text[place + ahead] : '\0'; }
    char Now() const { return (*this)[0]; }
    void Skip_Blanks()
    {
        while (Is_Blank(Now()))
            ++place;
    }
};

/// The digits of a number as they come in: the significant ones and the power of ten of the last.
class Digit_Store {
public:
    void Add(char digit, bool decimal)
    {
        any_ = true;
        if (decimal)
            --last_;
        if (count_ == 0 && digit == '0')
            return;
        if (count_ < cap) {
            digits_[count_++] = digit;
            return;
        }
        ++last_;
        more_ = more_ || digit != '0';
    }
    bool Any() const { return any_; }

    /// The digits, times ten to the exponent as written; too large is error 6.
    double Value(std::int64_t exponent) const
    {
        if (count_ == 0)
            return 0.0;
        std::int64_t last = last_ + exponent;                                     // power of the last digit
        const std::int64_t first = last + static_cast<std::int64_t>(count_) - 1;  // and of the first
        if (first > 308)
            throw Fault{overflow};
        if (first < -325)
            return 0.0;
        std::array<char, cap + 16> buffer;
        char* end = std::copy_n(digits_.data(), count_, buffer.data());
        if (more_) {
            *end++ = '1';  // stands for all that did not fit: it only has to be more than nothing
            --last;
        }
        *end++ = 'e';
        end = std::to_chars(end, buffer.data() + buffer.size(), last).ptr;
        double value = 0.0;
        const std::errc error = std::from_chars(buffer.data(), end, value).ec;
        if (error == std::errc{} && std::isfinite(value))
            return value;
        if (first > 0)
            throw Fault{overflow};
        return 0.0;
    }

private:
    static constexpr std::size_t cap = 768;  // the nearest double never asks for more
    std::array<char, cap> digits_;
    std::size_t count_ = 0;
    std::int64_t last_ = 0;
    bool any_ = false;
    bool more_ = false;  // a digit other than 0 came after those kept
};

/// Whether a group of exactly three digits follows the grouping symbol at the cursor.
bool Group_Follows(const Cursor& at)
{
    if (!Is_Digit(at[1]) || !Is_Digit(at[2]) || !Is_Digit(at[3]))
        return false;
    Cursor after{at.text, at.place + 4};
    after.Skip_Blanks();
    return !Is_Digit(after.Now());
}

/// The integer part with its groups; the cursor ends behind it and its blanks.
void Read_Integer_Part(Cursor& at, Digit_Store& digits, char group_symbol)
{
    int first_group = 0;  // its digits so far, counted to 4
    bool grouped = false;
    for (;;) {
        if (Is_Digit(at.Now())) {
            digits.Add(at.Now(), false);
            ++at.place;
            if (!grouped)
                first_group = std::min(first_group + 1, 4);
        } else if (Is_Blank(at.Now())) {
            at.Skip_Blanks();
            if (!Is_Digit(at.Now()))
                return;  // a grouping symbol behind a blank is another character
        } else if (at.Now() == group_symbol && first_group >= 1 && first_group <= 3 && Group_Follows(at)) {
            ++at.place;
            grouped = true;
        } else {
            return;
        }
    }
}

/// The decimals with the blanks between and behind them.
void Read_Decimals(Cursor& at, Digit_Store& digits)
{
    for (; Is_Digit(at.Now()) || Is_Blank(at.Now()); ++at.place) {
        if (Is_Digit(at.Now()))
            digits.Add(at.Now(), true);
    }
}

/// The exponent, 0 when there is none: the cursor then stays where it is.
std::int64_t Read_Exponent(Cursor& at)
{
    constexpr std::int64_t enough = 1'000'000'000'000;  // beyond what the digits of any text could undo
    const char letter = Upper(at.Now());
    if (letter != 'E' && letter != 'D')
        return 0;
    Cursor ahead{at.text, at.place + 1};
    ahead.Skip_Blanks();
    const bool negative = ahead.Now() == '-';
    if (negative || ahead.Now() == '+') {
        ++ahead.place;
        ahead.Skip_Blanks();
    }
    if (!Is_Digit(ahead.Now()))
        return 0;
    std::int64_t exponent = 0;
    for (; Is_Digit(ahead.Now()) || Is_Blank(ahead.Now()); ++ahead.place) {
        if (Is_Digit(ahead.Now()))
            exponent = std::min(exponent * 10 + (ahead.Now() - '0'), enough);
    }
    at = ahead;
    return negative ? -exponent : exponent;
}

/// A value in 15 significant decimal digits, and what rounding leaves of them.
class Decimal_Digits {
public:
    /// @param value  finite and not negative
    explicit Decimal_Digits(double value)
    {
        std::array<char, 32> text;  // "d.dddddddddddddde+xxx"
        const char* end =
            std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, count - 1).ptr;
        digits_[0] = text[0];
        std::copy_n(&text[2], count - 1, &digits_[1]);
        const char* exponent = &text[count + 2];
        std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, first_);
    }

    /// Rounds to a multiple of ten to this power, a half away from zero.
    void Round_At(int power)
    {
        const int keep = first_ - power + 1;
        if (keep >= count)
            return;
        const bool up = keep >= 0 && digits_[static_cast<std::size_t>(keep)] >= '5';
        std::fill(digits_.begin() + std::max(keep, 0), digits_.end(), '0');
        if (!up)
            return;
        int i = keep - 1;
        for (; i >= 0 && digits_[static_cast<std::size_t>(i)] == '9'; --i)
            digits_[static_cast<std::size_t>(i)] = '0';
        if (i >= 0) {
            ++digits_[static_cast<std::size_t>(i)];
        } else {
            digits_[0] = '1';
            ++first_;
        }
    }

    void Scale(int power) { first_ += power; }
    int First() const { return first_; }
    bool Zero() const
    {
        return std::ranges::all_of(digits_, [](char digit) { return digit == '0'; });
    }
    char operator()(int power) const
    {
        const int place = first_ - power;
        return place >= 0 && place < count ? digits_[static_cast<std::size_t>(place)] : '0';
    }

private:
    static constexpr int count = 15;
    std::array<char, count> digits_;
    int first_ = 0;  // power of ten of the first digit
};

enum class Piece { place, group, decimal, exponent, literal, end };
enum class Zone { whole, decimals, exponent };

/// Reads the picture of one sign piece by piece.
class Picture_Reader {
public:
    explicit Picture_Reader(std::string_view picture) : picture_(picture) {}

    Piece Next()
    {
        if (at_ == picture_.size())
            return Piece::end;
        character_ = picture_[at_++];
        if (character_ == '0' || character_ == '#')
            return Piece::place;
        if (character_ == ',' && zone_ == Zone::whole)
            return Piece::group;
        if (character_ == '.' && zone_ == Zone::whole) {
            zone_ = Zone::decimals;
            return Piece::decimal;
        }
        if (Upper(character_) == 'E' && zone_ != Zone::exponent && at_ + 1 < picture_.size() &&
            (picture_[at_] == '+' || picture_[at_] == '-') && (picture_[at_ + 1] == '0' || picture_[at_ + 1] == '#')) {
            zone_ = Zone::exponent;
            plus_ = picture_[at_++] == '+';
            return Piece::exponent;
        }
        return Piece::literal;
    }
    char Character() const { return character_; }  // the one just read
    bool Plus() const { return plus_; }            // the sign of the exponent is printed always
    Zone In() const { return zone_; }              // where the piece just read stands

private:
    std::string_view picture_;
    std::size_t at_ = 0;
    char character_ = '\0';
    bool plus_ = false;
    Zone zone_ = Zone::whole;
};

/// What a picture asks for in one of its zones.
struct Places {
    int count = 0;
    int least = 0;  // places shown even when only zeros stand there
};

struct Picture_Shape {
    Places whole;
    Places decimals;
    Places exponent;
    bool grouped = false;
    bool has_exponent = false;
};

Picture_Shape Shape_Of(std::string_view picture)
{
    Picture_Shape shape;
    Picture_Reader reader(picture);
    for (Piece piece = reader.Next(); piece != Piece::end; piece = reader.Next()) {
        shape.grouped = shape.grouped || piece == Piece::group;
        shape.has_exponent = shape.has_exponent || piece == Piece::exponent;
        if (piece != Piece::place)
            continue;
        const bool zero = reader.Character() == '0';
        if (reader.In() == Zone::decimals) {
            ++shape.decimals.count;
            if (zero)
                shape.decimals.least = shape.decimals.count;
        } else {
            // Left of the symbol a '0' makes every place from there on show.
            Places& places = reader.In() == Zone::whole ? shape.whole : shape.exponent;
            ++places.count;
            if (zero || places.least > 0)
                ++places.least;
        }
    }
    return shape;
}

/// Rounds to what the shape can show, and returns the exponent that it shows.
int Fit(Decimal_Digits& digits, const Picture_Shape& shape)
{
    if (!shape.has_exponent) {
        digits.Round_At(-shape.decimals.count);
        return 0;
    }
    if (digits.Zero())
        return 0;
    digits.Round_At(digits.First() - std::max(shape.whole.count + shape.decimals.count, 1) + 1);
    const int exponent = digits.First() - shape.whole.count + 1;
    digits.Scale(-exponent);
    return exponent;
}

/// Writes the digits of place number `index`, counted from 0 at the left, of a run of places that shows
/// `shown` digits: one, none, or at the first place all that stand left of it too.
template <class Digit>
void Put_Place(std::string& text, int index, int count, int shown, char group_symbol, const Digit& digit)
{
    const int last = count - 1 - index;
    for (int power = index == 0 ? shown - 1 : std::min(last, shown - 1); power >= last; --power) {
        text += digit(power);
        if (group_symbol != '\0' && power > 0 && power % 3 == 0)
            text += group_symbol;
    }
}

std::string Fill(std::string_view picture, const Picture_Shape& shape, const Decimal_Digits& digits, int exponent,
                 Decimal_Symbol symbol)
{
    const bool point = symbol == Decimal_Symbol::point;
    const char group_symbol = !shape.grouped ? '\0' : point ? ',' : '.';
    const bool zero = digits.Zero();
    const int whole_shown = std::max(zero ? 0 : digits.First() + 1, shape.whole.least);
    int decimals_shown = shape.decimals.count;
    while (decimals_shown > shape.decimals.least && digits(-decimals_shown) == '0')
        --decimals_shown;

    Decimal_Digits exponent_digits(std::abs(exponent));
    const int exponent_shown = std::max(exponent == 0 ? 0 : exponent_digits.First() + 1, shape.exponent.least);

    std::string text;
    Picture_Reader reader(picture);
    Zone zone = Zone::whole;
    int index = 0;  // of the next place in its zone
    for (Piece piece = reader.Next(); piece != Piece::end; piece = reader.Next()) {
        if (reader.In() != zone) {
            zone = reader.In();
            index = 0;
        }
        switch (piece) {
        case Piece::place:
            if (zone == Zone::whole)
                Put_Place(text, index, shape.whole.count, whole_shown, group_symbol, digits);
            else if (zone == Zone::exponent)
                Put_Place(text, index, shape.exponent.count, exponent_shown, '\0', exponent_digits);
            else if (index < decimals_shown)
                text += digits(-1 - index);
            ++index;
            break;
        case Piece::decimal:
            if (shape.whole.count == 0)
                Put_Place(text, 0, 1, whole_shown, group_symbol, digits);
            text += point ? '.' : ',';
            break;
        case Piece::exponent:
            text += reader.Character();
            if (exponent < 0 || reader.Plus())
                text += exponent < 0 ? '-' : '+';
            break;
        case Piece::literal:
            text += reader.Character();
            break;
        case Piece::group:
        case Piece::end:
            break;
        }
    }
    return text;
}

/// What is not finite, in words.
std::string_view Not_Finite(double value)
{
    if (std::isnan(value))
        return "NaN";
    return value > 0.0 ? "Infinity" : "-Infinity";
}

char* Put(char* at, std::string_view text)
{
    return std::copy(text.begin(), text.end(), at);
}

/// The digits of a positive number, and the power of ten of the first of them.
struct Digits {
    std::array<char, Most_Shortest_Bytes> place;
    std::size_t count;
    int first;

    std::string_view Text() const { return {place.data(), count}; }
};

/// Digits as the library writes them, "d.ddde-xx", so many behind the point or the shortest ones.
template <class Real, class... Precision>
Digits Digits_of_Library(Real value, Precision... precision)
{
    Digits digits{};
    std::array<char, Most_Shortest_Bytes> text;
    char* const last = text.data() + text.size();
    char* const end = std::to_chars(text.data(), last, value, std::chars_format::scientific, precision...).ptr;
    const char* const letter = std::find(text.data(), end, 'e');
    digits.place[0] = text[0];
    digits.count = letter == &text[1] ? 1 : static_cast<std::size_t>(letter - &text[1]);
    std::copy_n(&text[2], digits.count - 1, &digits.place[1]);
    std::from_chars(letter[1] == '+' ? letter + 2 : letter + 1, end, digits.first);
    return digits;
}

Digits Shortest_Digits(double value)
{
    return Digits_of_Library(value);
}

Digits Shortest_Digits(float value)
{
    // A text is read as a double, which then rounds to a Single. Rounding twice misses this Single of all: nine digits
    // lie near enough to it.
    constexpr float missed = 7.038531E-26F;
    if (value == missed)
        return Digits_of_Library(value, 8);
    Digits digits{};
    const Decimal decimal = Shortest_Decimal(value);
    char* const place = digits.place.data();
    digits.count =
        static_cast<std::size_t>(std::to_chars(place, place + digits.place.size(), decimal.digits).ptr - place);
    digits.first = decimal.power + static_cast<int>(digits.count) - 1;
    return digits;
}

/// "E-06": a sign and at least two digits.
char* Put_Exponent(char* at, int exponent)
{
    *at++ = 'E';
    *at++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    if (size < 10)
        *at++ = '0';
    return std::to_chars(at, at + 3, size).ptr;
}

/// @param limit  power of ten from which on the exponent is written
template <class Real>
char* Put_Shortest(char* at, Real value, int limit)
{
    if (!std::isfinite(value))
        return Put(at, Not_Finite(static_cast<double>(value)));
    if (value == Real{})
        return Put(at, "0");
    if (value < Real{})
        *at++ = '-';
    const Digits shortest = Shortest_Digits(std::abs(value));
    const std::string_view digits = shortest.Text();
    if (shortest.first < -5 || shortest.first >= limit) {
        *at++ = digits[0];
        if (digits.size() > 1)
            at = Put(Put(at, "."), digits.substr(1));
        return Put_Exponent(at, shortest.first);
    }
    if (shortest.first < 0)
        return Put(std::fill_n(Put(at, "0."), -shortest.first - 1, '0'), digits);
    const std::size_t whole = static_cast<std::size_t>(shortest.first) + 1;
    if (digits.size() <= whole)
        return std::fill_n(Put(at, digits), whole - digits.size(), '0');
    return Put(Put(Put(at, digits.substr(0, whole)), "."), digits.substr(whole));
}

/// Whether a byte begins a character of UTF-8, and so is none of its later bytes.
constexpr bool Begins_Character(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

/// Bytes of the valid UTF-8 character at the start of a text that is not empty; 0: there is none.
std::size_t Valid_Character(std::string_view bytes)
{
    const auto byte = [bytes](std::size_t i) -> unsigned {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    const auto within = [&byte](std::size_t i, unsigned low, unsigned high) {
        return low <= byte(i) && byte(i) <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return within(1, 0x80, 0xBF) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;   // below: overlong
        const unsigned high = lead == 0xED ? 0x9F : 0xBF;  // above: surrogates
        return within(1, low, high) && within(2, 0x80, 0xBF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;   // below: overlong
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;  // above: beyond U+10FFFF
        return within(1, low, high) && within(2, 0x80, 0xBF) && within(3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

bool Is_Utf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = Valid_Character(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

/// Windows-1252 from 80 to 9F; the other bytes are their own code points.
constexpr std::array<std::uint16_t, 32> windows_1252{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Appends a code point below U+10000 in UTF-8.
void Append_Code_Point(std::string& text, unsigned point)
{
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | (point >> 6));
        text += static_cast<char>(0x80U | (point & 0x3FU));
    } else {
        text += static_cast<char>(0xE0U | (point >> 12));
        text += static_cast<char>(0x80U | ((point >> 6) & 0x3FU));
        text += static_cast<char>(0x80U | (point & 0x3FU));
    }
}

}  // namespace

Decimal_Symbol Current_Decimal_Symbol(const Design_State& design)
{
    return design.identity.Number_Format == "Europe" ? Decimal_Symbol::comma : Decimal_Symbol::point;
}

Number_Read Read_Number(std::string_view text, Decimal_Symbol symbol)
{
    const bool point = symbol == Decimal_Symbol::point;
    Cursor at{text};
    at.Skip_Blanks();
    const bool negative = at.Now() == '-';
    if (negative || at.Now() == '+') {
        ++at.place;
        at.Skip_Blanks();
    }
    Digit_Store digits;
    Read_Integer_Part(at, digits, point ? ',' : '.');
    if (at.Now() == (point ? '.' : ',')) {
        ++at.place;
        Read_Decimals(at, digits);
    }
    if (!digits.Any())
        return {};
    const std::int64_t exponent = Read_Exponent(at);
    const double size = digits.Value(exponent);
    const double value = negative && size != 0.0 ? -size : size;
    return {value, at.place, true, at.place == text.size()};
}

std::string Text_as_Read(const Design_State& design, std::string_view text)
{
    try {
        const Number_Read number = Read_Number(text, Current_Decimal_Symbol(design));
        if (!number.whole && !Trim(text).empty())
            return In_Number_Format(design, Shortest(number.value));
    } catch (const Fault&) {  // too large: left to the routine that takes it, which tells so under its name
    }
    return std::string(text);
}

std::string Cut_Sentence(const Design_State& design, std::string_view text)
{
    const std::string read = Text_as_Read(design, text);
    if (read == text)
        return {};
    return "'" + std::string(text) + "' was read as " + read;
}

std::string In_Number_Format(const Design_State& design, std::string_view text)
{
    std::string shown(text);
    if (Current_Decimal_Symbol(design) == Decimal_Symbol::comma)
        std::replace(shown.begin(), shown.end(), '.', ',');
    return shown;
}

std::string Shown(const Design_State& design, Single value)
{
    return In_Number_Format(design, Shortest(value));
}

std::array<std::string, 4> Step_Texts(const Design_State& design)
{
    return {In_Number_Format(design, "1.0"), In_Number_Format(design, "0.50"), In_Number_Format(design, "0.25"),
            In_Number_Format(design, "0.125")};
}

double Val(std::string_view text, Decimal_Symbol symbol)
{
    return Read_Number(text, symbol).value;
}

double Val(const Design_State& design, std::string_view text)
{
    return Val(text, Current_Decimal_Symbol(design));
}

std::string_view Set_Format(int decimals)
{
    static constexpr std::array<std::string_view, 7> pictures{
        "###,###,###,###,##0. ; -###,###,###,###,##0.",
        "###,###,###,###,##0.0 ; -###,###,###,###,##0.0",
        "###,###,###,###,##0.00 ; -###,###,###,###,##0.00",
        "###,###,###,###,##0.000 ; -###,###,###,###,##0.000",
        "###,###,###,###,##0.000 0 ; -###,###,###,###,##0.000 0",
        "###,###,###,###,##0.000 00 ; -###,###,###,###,##0.000 00",
        "###,###,###,###,##0.000 000 ; -###,###,###,###,##0.000 000",
    };
    if (decimals < 0 || decimals >= static_cast<int>(pictures.size()))
        return "0.000 E+##0 ; -0.000 E+##0";
    return pictures[static_cast<std::size_t>(decimals)];
}

std::string Format_Picture(double value, std::string_view picture, Decimal_Symbol symbol)
{
    if (!std::isfinite(value))
        return std::string(Not_Finite(value));
    const std::size_t end = std::min(picture.find(';'), picture.size());
    const std::string_view positive = picture.substr(0, end);
    std::string_view negative = picture.substr(std::min(end + 1, picture.size()));
    negative = negative.substr(0, negative.find(';'));

    if (value < 0.0) {
        const std::string_view used = negative.empty() ? positive : negative;
        const Picture_Shape shape = Shape_Of(used);
        Decimal_Digits digits(-value);
        const int exponent = Fit(digits, shape);
        if (!digits.Zero())
            return (negative.empty() ? "-" : "") + Fill(used, shape, digits, exponent, symbol);
        value = 0.0;
    }
    const Picture_Shape shape = Shape_Of(positive);
    Decimal_Digits digits(std::abs(value));  // zero has no sign
    const int exponent = Fit(digits, shape);
    return Fill(positive, shape, digits, exponent, symbol);
}

std::string Format_Picture(const Design_State& design, double value, std::string_view picture)
{
    return Format_Picture(value, picture, Current_Decimal_Symbol(design));
}

std::string FNRoundStr(const Design_State& design, double value, int decimals)
{
    return Format_Picture(design, FNRound(value, decimals), Set_Format(decimals));
}

char* Put_Shortest(char* at, Single value)
{
    return Put_Shortest(at, value.Bits(), 9);
}

std::string Shortest(Single value)
{
    std::array<char, Most_Shortest_Bytes> place;
    return {place.data(), Put_Shortest(place.data(), value)};
}

std::string Shortest(double value)
{
    std::array<char, Most_Shortest_Bytes> place;
    return {place.data(), Put_Shortest(place.data(), value, 15)};
}

std::string Shortest(Single value, Decimal_Symbol symbol)
{
    std::string text = Shortest(value);
    if (symbol == Decimal_Symbol::comma)
        std::ranges::replace(text, '.', ',');
    return text;
}

std::string On_One_Line(std::string_view text)
{
    std::string line(text);
    constexpr char del = 0x7f;
    for (char& c : line)
        if ((c >= 0 && c < ' ') || c == del)
            c = ' ';
    return line;
}

std::string In_Figures(const Design_State& design, double value, int figures)
{
    if (value == 0.0)
        return "0";
    const int decimals = figures - 1 - static_cast<int>(std::floor(std::log10(std::abs(value))));
    const double rounded = FNRound(std::abs(value), decimals);
    return In_Number_Format(design, Shortest(Single(value < 0.0 ? -rounded : rounded)));
}

std::string Trim(std::string_view text)
{
    constexpr std::string_view white = " \t\r\n";
    const std::size_t first = text.find_first_not_of(white);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(white) - first + 1));
}

std::string Short(std::string_view text, int n)
{
    std::size_t last = 0;  // where the last character begins
    std::size_t rest = 0;  // where the character after the first n begins
    int count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!Begins_Character(text[i]))
            continue;
        last = i;
        if (count == n)
            rest = i;
        ++count;
    }
    if (count < 4)
        return std::string(text.substr(last));  // meant: three characters or fewer give only their last
    return std::string(n < count ? text.substr(rest) : std::string_view{});
}

std::string StripFilename(std::string_view path)
{
    const std::size_t separator = path.find_last_of("/\\");
    std::string_view name = separator == std::string_view::npos ? path : path.substr(separator + 1);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string_view::npos && dot > 0)
        name = name.substr(0, dot);
    return std::string(name);
}

bool Same_Text(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, Upper, Upper);
}

std::string To_Upper(std::string_view text)
{
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), Upper);
    return upper;
}

std::string To_Utf8(std::string bytes)
{
    if (Is_Utf8(bytes))
        return bytes;
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const unsigned byte = static_cast<unsigned char>(c);
        Append_Code_Point(text, byte >= 0x80 && byte <= 0x9F ? windows_1252[byte - 0x80] : byte);
    }
    return text;
}

}  // namespace lobemax
