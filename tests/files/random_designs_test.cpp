// SPDX-License-Identifier: GPL-3.0-or-later
// Any design that a machine could have goes up the ladder, into every file and back without a fault, and what a file
// holds comes back bit for bit. LOBEMAX_RANDOM_DESIGNS is how many, LOBEMAX_RANDOM_SEED the seed of the first.
#include <gtest/gtest.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_set>
#include <variant>
#include <vector>

#include "core/field_directory.h"
#include "core/startup.h"
#include "core/unit_change.h"
#include "core/variables.h"
#include "edit/rungs.h"
#include "files/exports.h"
#include "files/model_file.h"
#include "motion/fourier.h"
#include "present/data_table.h"
#include "present/plot_selection.h"
#include "tests/support/random_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Dice;
using testing::Drawn_Design;

constexpr std::array entries{"mnu_Spread",
                             "mnu_profile",
                             "mnu_Surface",
                             "mnu_Cutter",
                             "mnu_Profile_mach",
                             "mnu_Surface_mach",
                             "mnu_Cutter_mach",
                             "mnu_Barrel",
                             "mnu_Barrel_Surf",
                             "mnu_Barrel_Ctr",
                             "mnu_Barrel_mach",
                             "mnu_Barrel_Surf_mach",
                             "mnu_Barrel_Ctr_mach",
                             "mnu_Linear",
                             "mnu_Linear_surf",
                             "mnu_sva",
                             "mnu_xdot",
                             "mnu_Cadkey"};

/// The 32 or 64 bits of a number, a flag's or an integer's value, a text.
std::variant<std::uint64_t, std::string> Bits_of(Design_State& of, const Field& field, const Field_Index& at)
{
    return std::visit(
        [](const auto* place) -> std::variant<std::uint64_t, std::string> {
            using T = std::remove_cvref_t<decltype(*place)>;
            if constexpr (std::is_same_v<T, std::string>)
                return *place;
            else if constexpr (std::is_same_v<T, Single>)
                return std::uint64_t{std::bit_cast<std::uint32_t>(place->Bits())};
            else if constexpr (std::is_same_v<T, double>)
                return std::bit_cast<std::uint64_t>(*place);
            else
                return static_cast<std::uint64_t>(static_cast<std::int64_t>(*place));
        },
        field.at(of, at));
}

/// The labels of the records of a model file.
std::unordered_set<std::string> Labels_of(const std::string& text)
{
    std::unordered_set<std::string> labels;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", from), text.size());
        const std::size_t comma = text.find("\",", from);
        if (text[from] == '"' && comma < end)
            labels.insert(text.substr(from + 1, comma - from - 1));
        from = end + 2;
    }
    return labels;
}

std::string Written(Design_State& of, std::string_view tag)
{
    Text_Sink sink;
    Write_Model(of, sink, tag);
    return sink.Text();
}

/// Whether the text of figures holds one that is none.
bool No_Figures(const std::string& text)
{
    for (const char* const word : {"\tinf", "\t-inf", "\tnan", "\t-nan", ",inf", ",-inf", ",nan", ",-nan"})
        if (text.find(word) != std::string::npos)
            return true;
    return false;
}

class Random_Designs : public ::testing::Test {
protected:
    Random_Designs() : path_(::testing::TempDir() + "lobemax_random_" + std::to_string(::getpid()))
    {
        Host host;
        host.messenger = [this](const Message& box) {
            boxes_.push_back(box.text);
            if (box.text.starts_with("Error "))
                faults_.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        host.save_dialog = [this](const File_Dialog&) { return path_; };
        host.date = [] { return std::string("2026-11-22"); };
        host.time = [] { return std::string("12:34:56"); };
        before_ = Install_Host(std::move(host));
    }
    ~Random_Designs() override
    {
        Install_Host(std::move(before_));
        std::filesystem::remove(path_);
        design = {};
    }

    std::string Told() const
    {
        std::string all;
        for (const std::string& box : boxes_)
            all += (all.empty() ? "" : " | ") + box;
        return all;
    }
    std::string Content() const
    {
        std::ostringstream text;
        text << std::ifstream(path_, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Whether a crowned roller meets a hollow of the cam's surface that is narrower than itself: such a contact is no
    /// ellipse, and its calculation ends with an error that is told.
    static bool Roller_too_wide()
    {
        const double R2 = design.cam.Follow_Rad, R3 = design.dynamics.Crown_radius;
        if (design.dynamics.Roller_type != 2 || design.cam.Followtype == 2)
            return false;
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
            if (const double R1 = design.results.CalcData(var::Rho, i) - R2; 1.0 / R1 + 1.0 / R2 + 1.0 / R3 <= 0.0)
                return true;
        return false;
    }

    void Forget_Stress_Faults()
    {
        std::erase_if(faults_, [](const std::string& text) { return text.ends_with("in Calc_Contact_Stress\n"); });
    }

    /// The rungs, each that rests on one that stands.
    void Climb()
    {
        moved_ += Calc_All(design, true) && Motion_Done(design) ? 1 : 0;
        EXPECT_TRUE(design.flags.Calculated) << Told();
        if (!design.flags.Calculated)
            return;
        sized_ += Run_Size(design) ? 1 : 0;
        if (!design.flags.Sized)
            return;
        forced_ += Run_Forces(design) ? 1 : 0;
        if (!design.flags.Dynamicflag)
            return;
        Put_Materials(design);
        Contact_Field refused{};
        const bool stressed = Run_Stress(design, refused) && design.flags.Stressflag;
        stressed_ += stressed ? 1 : 0;
        EXPECT_TRUE(stressed || !boxes_.empty());
        if (Roller_too_wide())
            Forget_Stress_Faults();
    }

    /// Written in a format, read, and the same in every record and in every bit of what the records hold.
    static void Expect_Back(Design_State& of, std::string_view tag)
    {
        SCOPED_TRACE("format " + std::string(tag));
        const std::string text = Written(of, tag);
        EXPECT_FALSE(No_Figures(text));
        static Design_State back;
        Reset_All(back);
        Text_Source source(text);
        ASSERT_TRUE(ReadFile(back, source));
        EXPECT_TRUE(Written(back, tag) == text);
        const std::unordered_set<std::string> labels = Labels_of(text);
        int compared = 0;
        for (const Field& field : Field_Directory()) {
            const auto bounds = field.bounds(of);
            if (field.dimensions > 0 && (bounds[0].hi > 100 || (field.dimensions > 1 && bounds[1].hi > 100)))
                continue;  // the tables of points
            Each_Element(of, field, [&](const Field_Index& at) {
                if (!labels.contains(Field_Label(field, at)))
                    return;
                ++compared;
                EXPECT_EQ(Bits_of(back, field, at), Bits_of(of, field, at))
                    << Field_Name(field, at) << ": " << Field_Value(of, field, at) << " became "
                    << Field_Value(back, field, at);
            });
        }
        EXPECT_GT(compared, 1000);
        const auto& rows = of.results.CalcData;
        ASSERT_EQ(back.results.CalcData.Last_Point(), rows.Last_Point());
        ASSERT_EQ(back.results.CalcData.Last_Row(), rows.Last_Row());
        for (int row = 0; row <= rows.Last_Row(); ++row)
            for (int i = 0; i <= of.motion.Max_Data_Points_used; ++i)
                ASSERT_EQ(std::bit_cast<std::uint32_t>(back.results.CalcData(row, i).Bits()),
                          std::bit_cast<std::uint32_t>(rows(row, i).Bits()))
                    << "row " << row << ", point " << i;
    }

    /// Every entry of the Export list gives its file or says why not.
    void Export_All()
    {
        for (const char* const entry : entries) {
            boxes_.clear();
            std::filesystem::remove(path_);
            const bool written = Run_Export(design, entry);
            EXPECT_EQ(std::filesystem::exists(path_), written) << entry;
            EXPECT_TRUE(written || !boxes_.empty()) << entry << " says nothing";
            EXPECT_FALSE(written && No_Figures(Content())) << entry;
            exported_.insert(written ? entry : "");
        }
    }

    static void Print_Tables()
    {
        for (const int variable : Load_Names(design))
            EXPECT_FALSE(No_Figures(Table_Text(Make_Data_Table(design, {{variable}, 0, 7}), {}))) << variable;
    }

    void Transform(Dice& dice)
    {
        const Dft_Range range = Range_of_Segment(design, 0);
        EXPECT_TRUE(
            Do_DFT(design, dice.Whole(1, 4), range.first, range.last, Set_Harmonics(design, dice.Whole(1, 30))));
        Finish_FFT(design);
    }

    /// Another unit system: told that the results are of the one before, then calculated again in it.
    void Change(int units, bool by_conditions)
    {
        const Standing standing = Standing_of(design);
        Change_Units(design, units);
        EXPECT_EQ(design.identity.WhichUnit, units);
        Expect_Back(design, "9");
        boxes_.clear();
        if (!Recalculate(design, standing)) {
            EXPECT_FALSE(boxes_.empty()) << "units " << units;
            // The angles of conditions take the length's factor: the segment is another curve, which may be anything.
            if (by_conditions)
                faults_.clear();
            return;
        }
        ++recalculated_;
        Expect_Back(design, "9");
    }

    void Run_Design(std::uint32_t seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        boxes_.clear();
        Dice dice(seed);
        const Drawn_Design drawn = testing::Draw_Design(dice);
        std::string words;
        for (const std::string& word : testing::Words_of(drawn))
            words += " '" + word + "'";
        SCOPED_TRACE(words);
        ASSERT_TRUE(Sub_Main(design, "", {}));
        EXPECT_EQ(testing::Type_into(design, drawn), "");
        Expect_Back(design, "9");
        Climb();
        if (design.flags.Calculated && dice.Chance(30))
            Transform(dice);
        for (const char* const tag : {"9", "8", "7.2"})
            Expect_Back(design, tag);
        Export_All();
        Print_Tables();
        for (int other = dice.Whole(1, 5), n = 0; n < 2; ++n, other = other % 5 + 1)
            Change(other, !drawn.conditions.empty());
        EXPECT_TRUE(faults_.empty()) << faults_.front();
        faults_.clear();
    }

    const std::string path_;
    std::vector<std::string> boxes_;
    std::vector<std::string> faults_;
    std::set<std::string> exported_;
    int moved_ = 0, sized_ = 0, forced_ = 0, stressed_ = 0, recalculated_ = 0;

private:
    Host before_;
};

TEST_F(Random_Designs, go_up_the_ladder_and_into_every_file_and_back_bit_for_bit)
{
    const auto number = [](const char* name, int otherwise) {
        const char* const text = std::getenv(name);
        return text != nullptr ? std::atoi(text) : otherwise;
    };
    const int count = number("LOBEMAX_RANDOM_DESIGNS", 25);
    const int first = number("LOBEMAX_RANDOM_SEED", 20261122);
    for (int n = 0; n < count; ++n)
        Run_Design(static_cast<std::uint32_t>(first + n));
    std::cout << count << " designs: motion " << moved_ << ", size " << sized_ << ", forces " << forced_
              << ", stresses " << stressed_ << ", again in other units " << recalculated_ << " of " << 2 * count
              << '\n';
    if (count >= 25) {
        EXPECT_EQ(moved_, count);
        EXPECT_GT(sized_, count * 8 / 10);
        EXPECT_GT(stressed_, count * 6 / 10);
        EXPECT_GT(recalculated_, count);
        EXPECT_EQ(exported_.size(), entries.size() - 3 + 1) << "three entries refuse always";
    }
}

}  // namespace
}  // namespace lobemax
