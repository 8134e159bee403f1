// SPDX-License-Identifier: GPL-3.0-or-later
// The number reader and the number writers, by both decimal symbols.
#include <charconv>
#include <cmath>
#include <memory>

#include "core/text.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

/// The number that was read, without blanks and grouping, as the standard library reads it.
double By_the_Library(std::string_view text, Decimal_Symbol symbol)
{
    const char decimal = symbol == Decimal_Symbol::point ? '.' : ',';
    const char grouping = symbol == Decimal_Symbol::point ? ',' : '.';
    std::string plain;
    for (const char c : text)
        if (c == decimal)
            plain += '.';
        else if (c == 'D' || c == 'd')
            plain += 'e';
        else if (c != ' ' && c != '\t' && c != grouping && (c != '+' || !plain.empty()))
            plain += c;
    double value = 0.0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (error == std::errc::result_out_of_range)
        return 0.0;  // too small: what is too large was a fault
    return error == std::errc{} && end == plain.data() + plain.size() ? value : std::nan("");
}

void Read(Design_State& design, std::string_view text)
{
    const Decimal_Symbol symbol = Current_Decimal_Symbol(design);
    const Number_Read number = Read_Number(text, symbol);
    Require(number.used <= text.size() && number.any == (number.used > 0), "a number has characters of the text");
    Require(number.any || (number.value == 0.0 && !number.whole), "no number is 0");
    Require(std::isfinite(number.value) && (number.value != 0.0 || !std::signbit(number.value)),
            "a number is finite and a zero has no sign");
    if (number.any) {
        Require(number.value == By_the_Library(text.substr(0, number.used), symbol), "a number is the nearest double");
        const std::string_view alone = text.substr(0, number.used);
        const Number_Read again = Read_Number(alone, symbol);
        Require(again.whole && again.value == number.value, "a number alone is whole");
    }
    Require(number.whole == (number.any && number.used == text.size()), "whole is without a rest");
    Require(Val(text, symbol) == number.value && Val(design, text) == number.value, "Val is the number's value");
    Require(Read_Number(Shortest(number.value), Decimal_Symbol::point).value == number.value,
            "the shortest text reads back");
    for (int decimals = 0; decimals <= 7; ++decimals)
        FNRoundStr(design, number.value, decimals);
    Shown(design, Single(number.value));
    Format_Picture(number.value, text.substr(0, std::size_t{200}), symbol);
}

void Run(std::string_view input)
{
    const Host_of_Fuzz host;
    const auto design = std::make_unique<Design_State>(Started_Design());
    const std::string text(input);
    for (const char* const format : {"USA", "Europe"}) {
        design->identity.Number_Format = format;
        try {
            Read(*design, text);
            Cut_Sentence(*design, text);
        } catch (const Fault& fault) {
            Require(fault.Number() == overflow, "a number that is not read is too large");
        }
        Text_as_Read(*design, text);
        In_Number_Format(*design, text);
    }
    const std::string valid = To_Utf8(text);
    Require(To_Utf8(valid) == valid, "UTF-8 stays as it is");
    Require(Trim(Trim(text)) == Trim(text), "a trimmed text is trimmed");
    StripFilename(text);
    for (int n = 0; n <= 3; ++n)
        Short(valid, n);
}

const Registered registered("number", Run);

}  // namespace
}  // namespace lobemax::fuzz
