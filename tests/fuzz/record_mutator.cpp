// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fuzz/record_mutator.h"

#include <algorithm>
#include <array>
#include <random>
#include <vector>

namespace lobemax::fuzz {

namespace {

constexpr std::array wild_numbers{
    "0",      "-0",    "1",      "-1",     "2",     "3",      "4",      "5",       "6",       "7",
    "8",      "9",     "19",     "20",     "21",    "39",     "40",     "41",      "66",      "67",
    "90",     "180",   "359.5",  "360",    "361",   "720",    "2880",   "2881",    "32767",   "32768",
    "-32768", "65536", "1E+09",  "1E+20",  "1E+30", "1E+38",  "-1E+38", "3.4E+38", "3.5E+38", "1E+300",
    "1E+999", "1E-06", "1E-20",  "1E-30",  "1E-38", "-1E-38", "1E-45",  "1E-300",  "0.001",   "0.125",
    "0.25",   "0.5",   "0.9999", "1.0001", "12.5",  "-12.5",  "100",    "1000",    "1,5",     "NaN"};
constexpr std::array wild_texts{"\"\"",     "\"R\"",   "\"F\"",   "\"D\"",  "\"P\"",      "\"S\"",     "\"PO\"",
                                "\"BS\"",   "\"67\"",  "\"MS\"",  "\"DW\"", "\"C1\"",     "\"abc\"",   "\"Radial\"",
                                "\"Form\"", "\"1,5\"", "\"3D1\"", "\"-\"",  "\"Barrel\"", "\"Linear\""};
constexpr std::array flag_values{"#TRUE#", "#FALSE#"};
constexpr std::array wild_words{"true", "false", "Radial", "Barrel", "Linear", "Force", "Form",
                                "abc",  "R",     "D",      "S",      "BS",     ""};

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
        for (std::size_t changes = 1 + Below(2); changes > 0; --changes)
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
        return Below(Below(16) == 0 ? std::min(head, lines_.size()) : lines_.size());
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

    template <class List>
    std::string One_of(const List& list)
    {
        return list[Below(list.size())];
    }

    std::string Number()
    {
        switch (Below(8)) {
        case 0:
            return std::to_string(static_cast<int>(Below(400)) - 20);
        case 1:
            return std::to_string(static_cast<double>(Below(36000)) / 100.0);
        default:
            return One_of(wild_numbers);
        }
    }

    /// A wild value in place of another, mostly of its kind: the record stays valid.
    std::string Wild(char first)
    {
        if (Below(1000) == 0)
            return '"' + std::string(70000, 'x') + '"';
        const bool other_kind = Below(40) == 0;
        if (other_kind)
            first = "0#\"a"[Below(4)];
        if (first == '#')
            return One_of(flag_values);
        if (first == '"')
            return Below(2) == 0 ? One_of(wild_texts) : '"' + Number() + '"';
        const bool number = (first >= '0' && first <= '9') || first == '-' || first == '.' || first == '+';
        return number || Below(3) == 0 ? Number() : One_of(wild_words);
    }

    void Change()
    {
        std::string& line = lines_[Place()];
        constexpr std::size_t changes_of_order = 100;
        switch (Below(changes_of_order)) {
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
        default:
            break;
        }
        const auto [from, to] = Value(line);
        const char first = from < to ? line[from] : '\0';
        const std::string& other = lines_[Place()];
        const auto [other_from, other_to] = Value(other);
        const bool same_kind = other_from < other_to && (other[other_from] == '"') == (first == '"') &&
                               (other[other_from] == '#') == (first == '#');
        if (same_kind && Below(8) == 0)
            line.replace(from, to - from, std::string(other, other_from, other_to - other_from));
        else
            line.replace(from, to - from, Wild(first));
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
