// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/limits_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>
#include <sstream>
#include <vector>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "files/byte_stream.h"
#include "files/whole_file.h"

namespace lobemax {

namespace {

constexpr const char* file_name = "Limits.txt";
constexpr const char* line_end = "\r\n";
constexpr std::string_view head = "\"Limits of cams in mm, N, N-m, MPa, deg, sec\"";
constexpr std::size_t most_bytes = 64 * 1024;  // of a head and one short line a limit

std::string Value_Text(const std::optional<double>& value)
{
    return value ? Shortest(*value) : "off";
}

std::string Text_of(const Limits& limits)
{
    std::string text = std::string(head) + line_end;
    for (const Limit_Entry& entry : Limit_Table())
        text += "\"" + std::string(entry.key) + "\", " + Value_Text(limits[entry.limit]) + line_end;
    return text;
}

/// What a text gave, and what it did not.
struct Reading {
    Limits limits;
    std::vector<std::string> faults;
};

/// The key between the quotes a line begins with, and what follows its comma; none where the line is no such line.
struct Parts {
    std::string key;
    std::string value;
};
std::optional<Parts> Parts_of(const std::string& line)
{
    const std::size_t closing = line.find('"', 1);
    if (!line.starts_with('"') || closing == std::string::npos)
        return std::nullopt;
    const std::string rest = Trim(std::string_view(line).substr(closing + 1));
    if (!rest.starts_with(','))
        return std::nullopt;
    return Parts{line.substr(1, closing - 1), Trim(std::string_view(rest).substr(1))};
}

/// A number that a limit can have. @return none, and why
std::optional<double> Number_of(Limit limit, const std::string& text, std::string& why)
{
    try {
        const Number_Read number = Read_Number(text, Decimal_Symbol::point);
        if (!number.any || !number.whole)
            why = "'" + text.substr(0, 40) + "' is neither a number nor off.";
        else
            why = Refused_Limit(limit, number.value);
        if (why.empty())
            return number.value;
    } catch (const Fault&) {
        why = Refused_Limit(limit, std::numeric_limits<double>::infinity());
    }
    return std::nullopt;
}

std::string Usual_Words(const Design_State& design, const Limit_Entry& entry)
{
    return std::string(entry.key) + " is " + (entry.usual ? In_Number_Format(design, Shortest(*entry.usual)) : "off");
}

/// The lines of a text that hold something, with their numbers.
std::vector<std::pair<int, std::string>> Filled_Lines(const std::string& text)
{
    std::vector<std::pair<int, std::string>> lines;
    std::istringstream stream(text);
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (std::string trimmed = Trim(line); !trimmed.empty())
            lines.emplace_back(number, std::move(trimmed));
    }
    return lines;
}

Reading Read_Text(const Design_State& design, const std::string& text)
{
    Reading result;
    const auto lines = Filled_Lines(text);
    if (lines.empty() || lines.front().second != head) {
        result.faults.emplace_back("It does not begin with the line of its units: all limits are the usual ones.");
        return result;
    }
    std::array<bool, Limit_Count> told{};  // the limits that the text has a line of
    for (auto line = lines.begin() + 1; line != lines.end(); ++line) {
        const std::string place = "Line " + std::to_string(line->first) + ": ";
        const auto parts = Parts_of(line->second);
        if (!parts) {
            result.faults.push_back(place + "it is none of a limit.");
            continue;
        }
        const auto entry = std::ranges::find(Limit_Table(), std::string_view(parts->key), &Limit_Entry::key);
        if (entry == Limit_Table().end()) {
            result.faults.push_back(place + "there is no limit '" + parts->key.substr(0, 40) + "'.");
            continue;
        }
        bool& known = told[static_cast<std::size_t>(entry->limit)];
        if (known) {
            result.faults.push_back(place + std::string(entry->key) + " comes again: the first line counts.");
            continue;
        }
        known = true;
        std::optional<double>& limit = result.limits[entry->limit];
        if (parts->value == "off") {
            limit = std::nullopt;
            continue;
        }
        std::string why;
        if (const auto number = Number_of(entry->limit, parts->value, why))
            limit = number;
        else
            result.faults.push_back(place + why + " " + Usual_Words(design, *entry) + ".");
    }
    for (const Limit_Entry& entry : Limit_Table())
        if (!told[static_cast<std::size_t>(entry.limit)])
            result.faults.push_back("There is no line of " + std::string(entry.key) + ": " +
                                    Usual_Words(design, entry) + ".");
    return result;
}

/// @throws Fault as File_Source
Reading Read_File(const Design_State& design, const std::string& path)
{
    File_Source source(path);
    std::string text(most_bytes + 1, '\0');
    std::size_t held = 0;
    while (const std::size_t count = source.Read(text.data() + held, text.size() - held))
        held += count;
    text.resize(std::min(held, most_bytes));
    Reading result = Read_Text(design, text);
    if (held > most_bytes)
        result.faults.push_back("It is too long: what follows its first " + std::to_string(most_bytes) +
                                " bytes was not read.");
    return result;
}

bool Exists(const std::string& path)
{
    std::error_code none;
    return std::filesystem::exists(path, none);
}

void Tell(const std::string& path, const std::vector<std::string>& faults)
{
    constexpr std::size_t most_told = 8;
    std::string text = "The limits were not read in full from " + path + "\n";
    for (std::size_t i = 0; i < std::min(faults.size(), most_told); ++i)
        text += faults[i] + "\n";
    if (faults.size() > most_told)
        text += "and " + std::to_string(faults.size() - most_told) + " more.\n";
    Show_Message(text + "The file is left as it is.", Buttons::OK, Symbol::exclamation);
}

/// Whether there is a file that a new one must not take the place of without a trace.
bool Holds_More(const Design_State& design, const std::string& path)
{
    try {
        return Exists(path) && !Read_File(design, path).faults.empty();
    } catch (const Fault&) {
        return true;
    }
}

}  // namespace

Limits Read_Limits(const Design_State& design, const std::string& folder)
{
    const std::string path = folder + file_name;
    Reading result;
    Trap("Read_Limits", [&] {
        if (Exists(path))
            result = Read_File(design, path);
    });
    if (!result.faults.empty())
        Tell(path, result.faults);
    return result.limits;
}

bool Write_Limits(const Design_State& design, const std::string& folder, const Limits& limits)
{
    const std::string path = folder + file_name;
    std::string older;
    const bool written = Trap("Write_Limits", [&] {
        const std::string text = Text_of(limits);
        Whole_File file(path);
        file.Sink().Write(text.data(), text.size());
        if (Holds_More(design, path))
            older = file.Commit_Keeping_Older();
        else
            file.Commit();
    });
    if (written && !older.empty())
        Show_Message("The limits that could not be read in full are kept as " + older, Buttons::OK,
                     Symbol::information);
    return written;
}

}  // namespace lobemax
