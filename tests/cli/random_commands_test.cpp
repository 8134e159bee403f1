// SPDX-License-Identifier: GPL-3.0-or-later
// Random command lines, two numbers in a hundred of them wild. Whatever they ask for, work that was not done is told, a
// file is there or was left as it was, and no figure that is infinite or not a number reaches a reader.
//
// LOBEMAX_RANDOM_LINES is how many command lines are run, LOBEMAX_RANDOM_SEED the first design's seed: a finding names
// the seed of its design, which a run of one line from there repeats. LOBEMAX_RANDOM_TRACE prints each line.
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>

#include "core/field_directory.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "files/whole_file.h"
#include "forms/cad_form.h"
#include "tests/cli/cli_folder.h"
#include "tests/support/random_design.h"
#include "truth/limits.h"

namespace lobemax {
namespace {

using testing::Dice;
using testing::Draw_Design;
using testing::Drawn_Design;
using testing::Result;

int From_Environment(const char* name, int otherwise)
{
    const char* const text = std::getenv(name);
    return text != nullptr ? std::atoi(text) : otherwise;
}

bool Letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The first place in the text where "inf", "infinity" or "nan" stands as a word, in any case; none. "+ Infinity" is
/// what the radius of a straight flank is told as.
std::optional<std::size_t> No_Figure(const std::string& text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!Letter(text[at]))
            continue;
        std::size_t end = at;
        while (end < text.size() && Letter(text[end]))
            ++end;
        const std::size_t length = end - at;
        if (length == 3 || length == 8) {
            std::string word = text.substr(at, length);
            std::ranges::transform(word, word.begin(), [](char c) { return static_cast<char>(c | 0x20); });
            const bool straight = at >= 2 && text[at - 1] == ' ' && (text[at - 2] == '+' || text[at - 2] == '-');
            if (word == "inf" || word == "nan" || (word == "infinity" && !straight))
                return at;
        }
        at = end;
    }
    return std::nullopt;
}

/// The drawing operators of a PDF: its streams, those that are deflated inflated.
std::string Streams_of(const std::string& pdf)
{
    std::string all;
    std::size_t from = 0;
    while (true) {
        const std::size_t start = pdf.find("stream\n", from);
        if (start == std::string::npos)
            return all;
        const std::size_t end = pdf.find("endstream", start);
        if (end == std::string::npos)
            return all;
        const std::size_t dictionary = pdf.rfind("obj", start);
        const std::string head = pdf.substr(dictionary, start - dictionary);
        const std::string body = pdf.substr(start + 7, end - start - 7);
        if (head.find("/FlateDecode") == std::string::npos)
            all += body;
        else if (head.find("/Length1") == std::string::npos && head.find("/Image") == std::string::npos) {
            QByteArray packed(4, '\0');  // the size to expect, which is not known
            packed[1] = 1;
            packed.append(body.data(), static_cast<qsizetype>(body.size()));
            all += qUncompress(packed).toStdString();
        }
        from = end + 9;
    }
}

/// The system's files without the wait for the disk, which would be most of the time: nobody cuts the power here.
class Unsynchronized_Files final : public File_System {
public:
    Unsynchronized_Files()
    {
        Host host = Installed_Host();
        host.file_system = this;
        before_ = Install_Host(std::move(host));
    }
    ~Unsynchronized_Files() override { Install_Host(std::move(before_)); }
    Unsynchronized_Files(const Unsynchronized_Files&) = delete;
    Unsynchronized_Files& operator=(const Unsynchronized_Files&) = delete;

    int Sync(int) override { return 0; }
    int Sync_Folder(const char*) override { return 0; }

private:
    Host before_;
};

/// A command line on its way, and what it is to be held to.
struct Line {
    std::vector<std::string> words;
    std::string file;  // what it writes; empty: nothing
    QSize pixels{};    // of a PNG
};

class Random_Commands : public testing::Cli_Folder {
protected:
    /// The number as it is, or one in fifty a wild one.
    static std::string Maybe_Wild(Dice& dice, const std::string& number)
    {
        static const std::array wild{"0",      "-0",    "1e-38", "-1e-38", "1e-45", "3e38", "-3e38",
                                     "3.5e38", "1e308", "-1",    "-250",   "32768", "1e10", "1e-6",
                                     "text",   "",      "1,5",   "nan",    "inf",   "1e"};
        return dice.Chance(2) ? dice.One_of(wild) : number;
    }

    /// The words of a text with its numbers drawn anew.
    static std::string Maybe_Wild_Numbers(Dice& dice, const std::string& text)
    {
        std::string changed;
        std::size_t from = 0;
        while (from <= text.size()) {
            const std::size_t blank = std::min(text.find(' ', from), text.size());
            const std::string word = text.substr(from, blank - from);
            const bool number = !word.empty() && Read_Number(word, Decimal_Symbol::point).whole;
            changed += (from == 0 ? "" : " ") + (number ? Maybe_Wild(dice, word) : word);
            from = blank + 1;
        }
        return changed;
    }

    static Drawn_Design With_Wild_Numbers(Dice& dice, Drawn_Design drawn)
    {
        drawn.omega = Maybe_Wild(dice, drawn.omega);
        for (auto& row : drawn.segments)
            for (std::string* const text : {&row.beta, &row.start, &row.end})
                *text = Maybe_Wild(dice, *text);
        for (auto& condition : drawn.conditions)
            for (std::string* const text : {&condition.theta, &condition.value})
                *text = Maybe_Wild(dice, *text);
        for (auto& [segment, order] : drawn.orders)
            order = Maybe_Wild(dice, order);
        for (auto& [segment, places] : drawn.knots)
            for (std::string& place : places)
                place = Maybe_Wild(dice, place);
        for (std::string& setting : drawn.settings) {
            const std::size_t value = setting.find('=') + 1;
            setting = setting.substr(0, value) + Maybe_Wild_Numbers(dice, setting.substr(value));
        }
        return drawn;
    }

    /// A setting of any field, with a value that may well be refused.
    std::string Any_Setting(Dice& dice)
    {
        const Field& field = dice.One_of(Field_Directory());
        if (Rule_of(field).role == Field_Role::derived && !dice.Chance(3))
            return Any_Setting(dice);
        Field_Index index{field.dimensions, {}};
        const auto bounds = field.bounds(sample_);
        for (std::size_t k = 0; k < static_cast<std::size_t>(field.dimensions); ++k)
            index.at[k] = dice.Whole(bounds[k].lo - (dice.Chance(2) ? 1 : 0), std::min(bounds[k].hi, 9));
        std::string value;
        switch (field.type) {
        case Field_Type::flag:
            value = dice.One_of(std::array{"true", "false", "-1", "0"});
            break;
        case Field_Type::integer:
        case Field_Type::long_integer:
            value = std::to_string(dice.Whole(-1, 6));
            break;
        case Field_Type::text:
            value = dice.Chance(50) ? testing::Typed(dice.Real(-50.0, 50.0))
                                    : dice.One_of(std::array{"R", "F", "P", "S", "D", "MS", "DW", "PO", "BS", "Barrel",
                                                             "Linear", "Form", "Europe", "Ribbed", "W", "two words"});
            break;
        case Field_Type::single:
        case Field_Type::real:
            value = testing::Typed(dice.Real(-30.0, 100.0));
            break;
        }
        return Field_Name(field, index) + "=" + Maybe_Wild_Numbers(dice, value);
    }

    void Add_Any_Settings(Dice& dice, std::vector<std::string>& words)
    {
        for (int n = dice.Chance(50) ? 0 : dice.Whole(1, 3); n > 0; --n) {
            words.emplace_back("--set");
            words.push_back(Any_Setting(dice));
        }
    }

    Line First_Line(Dice& dice)
    {
        Line line{.words = {}, .file = "n.cam"};
        if (dice.Chance(15)) {
            line.words = {"example", std::string(dice.One_of(Example_Names)), "-o", "n.cam",
                          "--units", std::to_string(dice.Whole(1, 5))};
        } else {
            line.words = {"new", "-o", "n.cam"};
            const auto drawn = testing::Words_of(With_Wild_Numbers(dice, Draw_Design(dice)));
            line.words.insert(line.words.end(), drawn.begin(), drawn.end());
        }
        Add_Any_Settings(dice, line.words);
        return line;
    }

    Line Calculation(Dice& dice, bool first)
    {
        Line line{.words = {"calc", "n.cam", "-o", "t.cam"}, .file = "t.cam"};
        static const std::array levels{"svaj,size,dynamics,stress",
                                       "svaj,size,dynamics,stress",
                                       "svaj,size,dynamics",
                                       "svaj,size",
                                       "svaj",
                                       "size,stress",
                                       "stress"};
        if (!first && dice.Chance(10))
            line.words[1] = "t.cam";
        line.words.insert(line.words.end(), {"--levels", first ? levels.front() : dice.One_of(levels)});
        if (dice.Chance(10))
            line.words.emplace_back("--accumulate");
        if (dice.Chance(10))
            line.words.emplace_back("--external-force");
        for (const char* const option : {"--cam-e", "--follower-e", "--cam-nu", "--follower-nu"})
            if (dice.Chance(5))
                line.words.push_back(std::string(option) + "=" + Maybe_Wild(dice, "2e5"));
        if (dice.Chance(20))
            line.words.insert(line.words.end(), {"--answer", dice.One_of(std::array{"no", "cancel", "abort", "yes"})});
        Add_Any_Settings(dice, line.words);
        return line;
    }

    static std::string Variables(Dice& dice, int most)
    {
        std::string list;
        for (int n = dice.Whole(1, most); n > 0; --n)
            list +=
                (list.empty() ? "" : ",") + std::to_string(dice.Chance(95) ? dice.Whole(1, 17) : dice.Whole(-1, 61));
        return list;
    }

    /// A picture's name and size, small ones that are soon drawn.
    static void Add_Picture(Dice& dice, Line& line, const std::string& name)
    {
        const std::string ending = dice.One_of(std::array{".svg", ".svg", ".svg", ".svg", ".pdf", ".png"});
        const int width = dice.Whole(50, 300), height = dice.Whole(50, 300);
        line.file = name + ending;
        line.words.insert(line.words.end(),
                          {"-o", line.file, "--size", std::to_string(width) + "x" + std::to_string(height)});
        line.pixels = QSize(width, height);
        if (dice.Chance(20)) {
            line.words.insert(line.words.end(), {"--scale", "2"});
            line.pixels *= 2;
        }
    }

    static void Maybe_True(Dice& dice, Line& line)
    {
        if (dice.Chance(30))
            line.words.emplace_back("--true");
    }

    static Line Question(Dice& dice)
    {
        const std::string model = dice.Chance(95) ? "t.cam" : "n.cam";
        Line line;
        switch (dice.Whole(0, 13)) {
        case 11:
            line.words = {"check", model};
            if (dice.Chance(50))
                line.words.emplace_back("--json");
            for (int n = dice.Whole(-1, 2); n > 0; --n) {
                const Limit_Entry& entry = dice.One_of(Limit_Table());
                const std::string value = dice.Chance(20) ? "off" : testing::Typed(dice.Real(0.0, 50.0));
                line.words.insert(line.words.end(),
                                  {"--limit", std::string(entry.name) + "=" + Maybe_Wild(dice, value)});
            }
            break;
        case 0:
            line.words = {"show", model};
            if (dice.Chance(50))
                line.words.emplace_back("--json");
            for (int n = dice.Whole(-2, 3); n > 0; --n)
                line.words.emplace_back(dice.One_of(Field_Directory()).name);
            break;
        case 1:
        case 2:
            line.words = {"table", model, "--vars", Variables(dice, 4)};
            if (dice.Chance(50))
                line.words.insert(line.words.end(), {"--step", std::to_string(dice.Whole(1, 60))});
            if (dice.Chance(20))
                line.words.insert(line.words.end(), {"--segment", std::to_string(dice.Whole(0, 4))});
            if (dice.Chance(30))
                line.words.insert(line.words.end(), {"--decimals", std::to_string(dice.Whole(0, 9))});
            Maybe_True(dice, line);
            if (dice.Chance(30)) {
                line.file = "table.txt";
                line.words.insert(line.words.end(), {"-o", line.file});
            }
            break;
        case 3:
        case 4:
            line.file = "export.txt";
            line.words = {"export",
                          model,
                          dice.One_of(std::array{"spreadsheet", "profile", "profile", "sva", "xdot"}),
                          "-o",
                          line.file,
                          "--code",
                          std::to_string(dice.Whole(1, 5))};
            if (line.words[2] == "profile" && dice.Chance(30))
                line.words.emplace_back("--even-if-wrong");
            if (line.words[2] == "profile")
                Maybe_True(dice, line);
            break;
        case 5:
            line.file = "fft.cam";
            line.words = {"fft",         model,
                          "-o",          line.file,
                          "--harmonics", std::to_string(dice.Chance(98) ? dice.Whole(1, 40) : 32767),
                          "--var",       Variables(dice, 1)};
            if (dice.Chance(30))
                line.words.insert(line.words.end(), {"--segment", std::to_string(dice.Whole(0, 4))});
            break;
        case 6:
            line.file = "converted.cam";
            line.words = {"convert", model, "-o", line.file};
            if (dice.Chance(50))
                line.words.insert(line.words.end(), {"--format", dice.One_of(std::array{"9", "8", "7.2"})});
            if (dice.Chance(70))
                line.words.insert(line.words.end(), {"--units", std::to_string(dice.Whole(1, 5))});
            if (dice.Chance(40))
                line.words.emplace_back("--recalculate");
            break;
        case 12:
        case 13:
            Add_Cad(dice, model, line);
            break;
        case 10:
            line.file = dice.Chance(80) ? "report.txt" : "report.pdf";
            line.words = {"report", model, "-o", line.file};
            break;
        case 7:
        case 8:
            line.words = {"plot", model, "--vars", dice.Chance(80) ? Variables(dice, 4) : "54,57"};
            if (dice.Chance(70))
                line.words.insert(line.words.end(), {"--style", std::to_string(dice.Whole(1, 4))});
            if (dice.Chance(20))
                line.words.insert(line.words.end(), {"--segment", std::to_string(dice.Whole(0, 4))});
            Maybe_True(dice, line);
            Add_Picture(dice, line, "plot");
            break;
        default:
            line.words = {"draw", model};
            if (dice.Chance(30))
                line.words.insert(line.words.end(), {"--at", Maybe_Wild(dice, std::to_string(dice.Whole(0, 360)))});
            if (dice.Chance(30))
                line.words.emplace_back("--conjugate");
            if (dice.Chance(30))
                line.words.insert(line.words.end(),
                                  {"--path", dice.One_of(std::array{"follower", "cutter", "machine"})});
            Maybe_True(dice, line);
            Add_Picture(dice, line, "draw");
        }
        return line;
    }

    /// A file for CAD or a machine: its kind, and some options, those of another kind among them.
    static void Add_Cad(Dice& dice, const std::string& model, Line& line)
    {
        const auto kinds = Cad_Kind_Table();
        const Cad_Kind_Entry& kind = kinds[static_cast<std::size_t>(dice.Whole(0, Cad_Kinds - 1))];
        line.file = "cad" + std::string(kind.ending);
        line.words = {"cad", model, "--as", std::string(kind.name), "-o", line.file};
        for (const Cad_Option& option : Cad_Options()) {
            if (!dice.Chance(Find_Option(kind.kind, option.name) == &option ? 15 : 1) || !dice.Chance(90))
                continue;
            const std::string name(option.name);
            if (option.entry == Cad_Entry::flag) {
                line.words.push_back("--" + std::string(option.usual == "yes" ? "no-" : "") + name);
                continue;
            }
            line.words.push_back("--" + name);
            const std::vector<std::string> words = Choices_of(option);
            line.words.push_back(
                option.entry == Cad_Entry::choice
                    ? words[static_cast<std::size_t>(dice.Whole(0, static_cast<int>(words.size()) - 1))]
                : option.entry == Cad_Entry::word ? "Cam"
                                                  : Maybe_Wild(dice, std::to_string(dice.Whole(0, 30))));
        }
        if (kind.surface && dice.Chance(60))
            line.words.emplace_back("--even-if-wrong");
    }

    /// What a file held before a line, or none.
    std::optional<std::string> Held(const std::string& file) const
    {
        return !file.empty() && Exists(file) ? std::optional(Content(file)) : std::nullopt;
    }

    static std::string Around(const std::string& text, std::size_t at)
    {
        const std::size_t from = at > 60 ? at - 60 : 0;
        return text.substr(from, 120);
    }

    void Expect_Figures(const std::string& file, const std::string& text) const
    {
        const auto at = No_Figure(text);
        EXPECT_FALSE(at) << file << ": " << Around(text, at.value_or(0));
    }

    void Check_File(const Line& line) const
    {
        const std::string text = Content(line.file);
        if (line.file.ends_with(".png")) {
            EXPECT_EQ(QImage(QString::fromStdString(line.file)).size(), line.pixels);
        } else if (line.file.ends_with(".pdf")) {
            EXPECT_TRUE(text.starts_with("%PDF"));
            const std::string operators = Streams_of(text);
            EXPECT_NE(operators, "");
            Expect_Figures(line.file, operators);
        } else {
            Expect_Figures(line.file, text);
        }
    }

    void Run_Line(const Line& line, std::uint32_t seed)
    {
        std::string told = "seed " + std::to_string(seed) + ": lobemax-cli";
        for (const std::string& word : line.words)
            told += " '" + word + "'";
        SCOPED_TRACE(told);
        if (std::getenv("LOBEMAX_RANDOM_TRACE") != nullptr)
            std::cerr << told << std::endl;
        const auto before = Held(line.file);
        const auto began = std::chrono::steady_clock::now();
        const Result result = testing::Run_Cli(line.words);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
        ++statuses_[static_cast<std::size_t>(std::clamp(result.status, 0, 3))];
        EXPECT_TRUE(result.status >= 0 && result.status <= 2) << result.status;
        EXPECT_LT(took.count(), 20.0) << "no work rests on the size of a number";
        EXPECT_TRUE(result.err.empty() || result.err.ends_with('\n'));
        Expect_Figures("standard output", result.out);
        if (result.status != 0) {
            EXPECT_NE(result.err, "");
            EXPECT_TRUE(Held(line.file) == before) << "the older file has gone";
        } else if (!line.file.empty()) {
            ASSERT_TRUE(Exists(line.file));
            Check_File(line);
        }
    }

    /// A design from its making to what is asked of it: some twelve lines.
    int Run_Design(std::uint32_t seed)
    {
        Dice dice(seed);
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            std::filesystem::remove(entry.path());
        int lines = 0;
        do {
            Run_Line(First_Line(dice), seed);
            ++lines;
        } while (!Exists("n.cam") && lines < 5);
        for (int n = 0; n < 3; ++n) {
            Run_Line(Calculation(dice, n == 0), seed);
            ++lines;
        }
        for (int n = Exists("t.cam") ? 8 : 2; n > 0; --n) {
            Run_Line(Question(dice), seed);
            ++lines;
        }
        return lines;
    }

    Random_Commands() { Sub_Main(sample_, "", {}); }

    std::array<int, 4> statuses_{};

private:
    const Unsynchronized_Files files_;
    Design_State sample_;  // for the bounds of its arrays
};

TEST_F(Random_Commands, tell_what_they_did_not_do_and_give_no_infinite_figures)
{
    const int wanted = From_Environment("LOBEMAX_RANDOM_LINES", 2000);
    auto seed = static_cast<std::uint32_t>(From_Environment("LOBEMAX_RANDOM_SEED", 20261122));
    int lines = 0;
    while (lines < wanted)
        lines += Run_Design(seed++);
    RecordProperty("lines", lines);
    std::cout << lines << " command lines: status 0 " << statuses_[0] << ", 1 " << statuses_[1] << ", 2 "
              << statuses_[2] << '\n';
    if (wanted >= 1000) {
        EXPECT_GT(statuses_[0], lines / 3) << "the designs are too wild to be calculated";
        EXPECT_GT(statuses_[1], 0);
        EXPECT_GT(statuses_[2], 0);
    }
}

TEST(Random_Commands_Check, finds_what_is_no_figure)
{
    for (const char* const text : {"inf", "a\tNaN\n", "-INF,", "1 Infinity", "x=\"nan\""})
        EXPECT_TRUE(No_Figure(text)) << text;
    for (const char* const text : {"", "information", "Nano", "finance", "1e38"})
        EXPECT_FALSE(No_Figure(text)) << text;
}

}  // namespace
}  // namespace lobemax
