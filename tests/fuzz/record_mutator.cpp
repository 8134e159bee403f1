// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fuzz/record_mutator.h"

#include <algorithm>
#include <array>
#include <random>
#include <vector>

namespace lobemax::fuzz {

namespace {

constexpr std::array<std::string_view, 84> wild_values{
    "0",       "-0",      "1",          "-1",         "2",          "3",        "4",      "5",      "6",
    "7",       "8",       "9",          "19",         "20",         "21",       "39",     "40",     "41",
    "66",      "67",      "90",         "180",        "359.5",      "360",      "361",    "720",    "2880",
    "2881",    "32767",   "32768",      "-32768",     "65536",      "1E+09",    "1E+20",  "1E+30",  "1E+38",
    "-1E+38",  "3.4E+38", "3.5E+38",    "1E+300",     "1E+999",     "1E-06",    "1E-20",  "1E-30",  "1E-38",
    "-1E-38",  "1E-45",   "1E-300",     "0.001",      "0.125",      "0.25",     "0.5",    "0.9999", "1.0001",
    "12.5",    "-12.5",   "100",        "1000",       "#TRUE#",     "#FALSE#",  "true",   "false",  "\"\"",
    "\"R\"",   "\"F\"",   "\"D\"",      "\"P\"",      "\"S\"",      "\"PO\"",   "\"BS\"", "\"67\"", "\"MS\"",
    "\"DW\"",  "\"abc\"", "\"Radial\"", "\"Barrel\"", "\"Linear\"", "\"Form\"", "NaN",    "inf",    "1,5",
    "\"1,5\"", "",        "abc"};

class Mutation {
public:
    Mutation(std::string_view text, unsigned seed) : random_(seed)
    {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            lines_.emplace_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        if (lines_.empty())
            lines_.emplace_back();
    }

    std::string Run()
    {
        for (std::size_t changes = 1 + Below(4); changes > 0; --changes)
            Change();
        std::string text;
        for (const std::string& line : lines_)
            text += line + '\n';
        return text;
    }

private:
    std::size_t Below(std::size_t count) { return random_() % count; }

    /// A line: the first ones, with the counts that all others depend on, more often.
    std::size_t Place()
    {
        constexpr std::size_t head = 20;
        return Below(Below(5) == 0 ? std::min(head, lines_.size()) : lines_.size());
    }

    /// Where the value of a line stands: from its first byte to behind its last.
    std::pair<std::size_t, std::size_t> Value(const std::string& line)
    {
        std::size_t end = line.size();
        if (end > 0 && line[end - 1] == '\r')
            --end;
        const std::string_view seen = std::string_view(line).substr(0, end);
        const std::size_t equals = seen.find('=');
        if (equals != std::string_view::npos)
            return {equals + 1, end};
        const std::size_t comma = seen.rfind("\",");
        if (comma != std::string_view::npos)
            return {comma + 2, end};
        std::vector<std::pair<std::size_t, std::size_t>> words;
        for (std::size_t from = 0; from < end;) {
            const std::size_t stop = std::min(seen.find(' ', from), end);
            if (stop > from)
                words.emplace_back(from, stop);
            from = stop + 1;
        }
        return words.empty() ? std::pair<std::size_t, std::size_t>{0, end} : words[Below(words.size())];
    }

    std::string Wild()
    {
        if (Below(400) == 0)
            return "\"" + std::string(70000, 'x') + "\"";
        if (Below(6) == 0)
            return std::to_string(static_cast<int>(Below(400)) - 20);
        if (Below(8) == 0)
            return std::to_string(static_cast<double>(Below(36000)) / 100.0);
        return std::string(wild_values[Below(wild_values.size())]);
    }

    void Put(std::string& line, std::string value)
    {
        const auto [from, to] = Value(line);
        const bool quoted = from < to && line[from] == '"';  // the record stays valid
        if (quoted && (value.empty() || value.front() != '"') && Below(8) != 0)
            value = '"' + value + '"';
        else if (!quoted && !value.empty() && value.front() == '"' && Below(8) != 0)
            value = value.substr(1, value.size() - 2);
        line.replace(from, to - from, value);
    }

    void Change()
    {
        std::string& line = lines_[Place()];
        switch (Below(16)) {
        case 0:
            lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(Place()));
            if (lines_.empty())
                lines_.emplace_back();
            return;
        case 1: {
            const std::string again = line;
            lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(Place()), again);
            return;
        }
        case 2:
            std::swap(line, lines_[Place()]);
            return;
        case 3: {
            const std::string& other = lines_[Place()];
            const auto [from, to] = Value(other);
            Put(line, other.substr(from, to - from));
            return;
        }
        case 4:  // a digit
            if (!line.empty())
                line[Below(line.size())] = static_cast<char>('0' + Below(10));
            return;
        default:
            Put(line, Wild());
        }
    }

    std::mt19937 random_;
    std::vector<std::string> lines_;
};

}  // namespace

std::string Mutate_Records(std::string_view text, unsigned seed)
{
    return Mutation(text, seed).Run();
}

}  // namespace lobemax::fuzz
