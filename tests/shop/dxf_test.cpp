// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/dxf.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <sstream>

#include "core/design_state.h"
#include "shop/curve_files.h"
#include "tests/support/number_in.h"
#include "tests/support/python.h"
#include "tests/support/shop_test.h"
#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using testing::Number_In;
using testing::Truth_Maker;

/// The group code and the value of each pair.
std::vector<std::pair<int, std::string>> Pairs_of(const std::string& text)
{
    std::vector<std::pair<int, std::string>> pairs;
    std::istringstream in(text);
    std::string code, value;
    while (std::getline(in, code) && std::getline(in, value)) {
        EXPECT_TRUE(code.ends_with('\r') && value.ends_with('\r'));
        value.pop_back();
        pairs.emplace_back(static_cast<int>(Number_In(code)), value);
    }
    return pairs;
}

class Dxf : public testing::Shop_Test {
protected:
    /// What the reader that nobody here wrote tells of a file.
    std::vector<std::vector<std::string>> Read_Back(const std::string& python, const std::string& text)
    {
        const std::string path = Path("cam.dxf");
        Write(path, text);
        const testing::Process process =
            testing::Run_Process(python + " " + LOBEMAX_SOURCE + "/tests/shop/read_dxf.py " + path);
        EXPECT_EQ(process.status, 0) << process.out;
        std::vector<std::vector<std::string>> lines;
        std::istringstream in(process.out);
        for (std::string line; std::getline(in, line);) {
            std::istringstream words(line);
            lines.emplace_back();
            for (std::string word; words >> word;)
                lines.back().push_back(word);
            if (line.starts_with("# "))
                ADD_FAILURE() << line;
        }
        return lines;
    }
};

std::vector<std::string> Line_of(const std::vector<std::vector<std::string>>& lines, const std::string& kind,
                                 const std::string& layer = "")
{
    for (const auto& line : lines)
        if (!line.empty() && line[0] == kind && (layer.empty() || line[1] == layer))
            return line;
    return {};
}

/// The area within a closed curve of a cam by the integral of x dy - y dx over its points and tangents: Simpson's rule
/// on the cubics through them, within 1E-9 of itself at these steps.
double Area_of(const Shop_Curve& curve)
{
    constexpr int steps = 14400;
    double area = 0.0;
    Curve_Place a = curve.at(0.0);
    for (int i = 1; i <= steps; ++i) {
        const Curve_Place b = curve.at(360.0 * i / steps);
        const Vector chord = b.point - a.point;
        // The cubic with the two tangents over the chord's length: chord and the area beside it.
        const double length = Length(chord);
        area += 0.5 * Cross(a.point, b.point);
        area += length / 12.0 * (Cross(a.tangent, chord) + Cross(chord, b.tangent)) / 1.0;
        a = b;
    }
    return std::abs(area);
}

constexpr const char* no_reader =
    "NOT TESTED: no Python here has ezdxf. Install Debian's python3-ezdxf, so that drawing files are read back.";

TEST_F(Dxf, is_read_by_another_program_without_a_complaint)
{
    const std::string python = testing::Python_with("ezdxf");
    if (python.empty())
        GTEST_SKIP() << no_reader;
    const std::vector<Truth_Maker> makers{{},
                                          {.rot = 1, .In_Out = 1, .offset = 7.0},
                                          {.arm = true, .dir = -1},
                                          {.flat = true},
                                          {.Camtype = "Barrel"},
                                          {.Camtype = "Linear", .rot = 1}};
    for (const Truth_Maker& maker : makers) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const bool disk = std::string(maker.Camtype) == "Radial";
        Curve_Choice choice;
        if (disk) {
            choice.cutter = 6.0;
            choice.bore = {.diameter = 25.0, .keyway = true};
        }
        for (const Curve_Form form : {Curve_Form::arcs, Curve_Form::lines, Curve_Form::spline}) {
            if (form != Curve_Form::arcs && &maker != &makers.front())
                continue;  // what differs between mechanisms, arcs have too
            choice.form = form;
            choice.tolerance = form == Curve_Form::lines ? 0.01 : 0.001;
            const auto lines = Read_Back(python, Dxf_Text(Set(choice), "cam.dxf"));
            EXPECT_EQ(Line_of(lines, "errors"), (std::vector<std::string>{"errors", "0"}));
            EXPECT_EQ(Line_of(lines, "fixes"), (std::vector<std::string>{"fixes", "0"}));
            EXPECT_EQ(Line_of(lines, "version"), (std::vector<std::string>{"version", "AC1024"}));
            EXPECT_EQ(Line_of(lines, "units"), (std::vector<std::string>{"units", "4"}));
            EXPECT_EQ(Line_of(lines, "layers"),
                      (std::vector<std::string>{"layers", "0", "SURFACE", "PITCH", "CUTTER", "BASE", "PRIME", "SHAFT",
                                                "KEYWAY", "NOTES"}));
            std::vector<std::string> order{"order", "SURFACE"};
            if (!maker.flat)
                order.emplace_back("PITCH");
            if (disk) {
                order.insert(order.end(), {"CUTTER", "BASE"});
                if (!maker.flat)
                    order.emplace_back("PRIME");
                order.insert(order.end(), {"SHAFT", "KEYWAY"});
            }
            order.emplace_back("NOTES");
            EXPECT_EQ(Line_of(lines, "order"), order);
            EXPECT_EQ(std::ranges::count_if(lines, [](const auto& line) { return line[0] == "text"; }), 4);
            const auto surfaces = std::ranges::count_if(lines, [](const auto& line) {
                return (line[0] == "polyline" || line[0] == "spline") && line[1] == "SURFACE";
            });
            EXPECT_EQ(surfaces, disk ? 1 : 2) << "both flanks of a groove";
        }
    }
}

// Closed, and of the area that the integral over the true curve has, within the tolerance along its length: by the
// bulges as the library turns them into arcs, and by points of these arcs.
TEST_F(Dxf, holds_the_area_of_the_true_curve)
{
    const std::string python = testing::Python_with("ezdxf");
    if (python.empty())
        GTEST_SKIP() << no_reader;
    for (const Truth_Maker& maker : {Truth_Maker{}, Truth_Maker{.arm = true, .rot = 1}, Truth_Maker{.flat = true}}) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        Curve_Choice choice;
        choice.cutter = 8.0;
        for (const double tolerance : {0.05, 0.001})
            for (const Curve_Form form : {Curve_Form::arcs, Curve_Form::lines, Curve_Form::spline}) {
                if (form != Curve_Form::arcs && tolerance < 0.05)
                    continue;
                choice.tolerance = tolerance;
                choice.form = form;
                const auto lines = Read_Back(python, Dxf_Text(Set(choice), "cam.dxf"));
                for (const auto& [layer, curve] :
                     {std::pair{"SURFACE", Surface_of(cam)}, std::pair{"CUTTER", Cutter_of(cam, 8.0)}}) {
                    const double area = Area_of(curve);
                    const double around = 2.0 * std::sqrt(PI * area) * 1.1;
                    if (form == Curve_Form::spline) {
                        const auto line = Line_of(lines, "spline", layer);
                        ASSERT_EQ(line.size(), 6U);
                        EXPECT_NEAR(std::abs(Number_In(line[4])), area, tolerance * around);
                        EXPECT_LT(Number_In(line[5]), 1e-9 * 80.0) << "closed";
                        continue;
                    }
                    const auto line = Line_of(lines, "polyline", layer);
                    ASSERT_EQ(line.size(), 7U);
                    EXPECT_EQ(line[2], "1") << "closed";
                    EXPECT_NEAR(std::abs(Number_In(line[4])), area, tolerance * around);
                    EXPECT_NEAR(std::abs(Number_In(line[5])), std::abs(Number_In(line[4])), 0.002);
                    EXPECT_LT(Number_In(line[6]), 1e-9 * 80.0) << "an arc ends where the next begins";
                }
            }
    }
}

// A drawing program opens it and prints it: what it prints is far more than an empty drawing.
TEST_F(Dxf, is_printed_by_a_drawing_program)
{
    if (testing::Run_Process("command -v librecad").status != 0)
        GTEST_SKIP()
            << "NOT TESTED: LibreCAD is not here. Install Debian's librecad, so that drawing files are printed.";
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Curve_Choice choice;
    choice.bore = {.diameter = 25.0, .keyway = true};
    std::vector<std::uintmax_t> sizes;
    for (const Curve_Form form : {Curve_Form::arcs, Curve_Form::spline}) {
        choice.form = form;
        Curve_Set set = Set(choice);
        for (const bool empty : {false, true}) {
            if (empty) {
                set.curves.clear();
                set.circles.clear();
                set.keyway.clear();
                set.notes.clear();
            }
            const std::string name = Path(empty ? "empty" : "full");
            Write(name + ".dxf", Dxf_Text(set, "cam.dxf"));
            const testing::Process process = testing::Run_Process(
                "HOME=" + Folder() + " QT_QPA_PLATFORM=offscreen timeout 60 librecad dxf2pdf -c -o " + name + ".pdf " +
                name + ".dxf");
            EXPECT_EQ(process.status, 0) << process.out;
            const std::string printed = std::filesystem::exists(name + ".pdf") ? name + ".pdf" : "";
            ASSERT_FALSE(printed.empty()) << process.out;
            sizes.push_back(std::filesystem::file_size(printed));
        }
    }
    for (std::size_t i = 0; i < sizes.size(); i += 2)
        EXPECT_GT(sizes[i], 2 * sizes[i + 1]);
}

TEST_F(Dxf, tells_the_unit_of_the_design)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Curve_Set set = Set({});
    for (const auto& [units, code] : {std::pair{1, "1"}, {2, "2"}, {3, "6"}, {4, "5"}, {5, "4"}}) {
        set.units = units;
        const auto pairs = Pairs_of(Dxf_Text(set, "cam.dxf"));
        const auto at = std::ranges::find(pairs, std::pair{9, std::string("$INSUNITS")});
        ASSERT_NE(at, pairs.end());
        EXPECT_EQ((at + 1)->second, code);
    }
}

// Every handle is given once, below the seed; every pointer has its object; the owner of an entity is the model space.
TEST_F(Dxf, has_handles_that_hold_together)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Curve_Choice choice;
    choice.bore = {.diameter = 20.0, .keyway = true};
    const auto pairs = Pairs_of(Dxf_Text(Set(choice), "cam.dxf"));
    std::map<std::string, int> given;
    unsigned long seed = 0;
    for (std::size_t i = 1; i < pairs.size(); ++i) {
        const bool is_seed = pairs[i - 1] == std::pair{9, std::string("$HANDSEED")};
        if (is_seed)
            seed = std::stoul(pairs[i].second, nullptr, 16);
        else if (pairs[i].first == 5 || pairs[i].first == 105)
            ++given[pairs[i].second];
    }
    for (const auto& [handle, times] : given) {
        EXPECT_EQ(times, 1) << handle;
        EXPECT_LT(std::stoul(handle, nullptr, 16), seed);
    }
    for (const auto& [code, value] : pairs)
        if ((code == 330 || code == 340 || code == 350 || code == 390) && value != "0") {
            EXPECT_TRUE(given.contains(value)) << code << ' ' << value;
        }
}

TEST_F(Dxf, has_its_sections_in_order_and_plain_numbers)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const std::string text = Dxf_Text(Set({}), "cam.dxf");
    const auto pairs = Pairs_of(text);
    std::vector<std::string> sections;
    for (std::size_t i = 1; i < pairs.size(); ++i)
        if (pairs[i - 1] == std::pair{0, std::string("SECTION")})
            sections.push_back(pairs[i].second);
    EXPECT_EQ(sections, (std::vector<std::string>{"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"}));
    EXPECT_EQ(pairs.back(), (std::pair{0, std::string("EOF")}));
    for (const auto& [code, value] : pairs)
        if (code >= 10 && code < 60) {
            EXPECT_EQ(value.find_first_not_of("-0123456789."), std::string::npos) << value;
            EXPECT_NE(value, "-0.0");
        }
    EXPECT_EQ(pairs.front().first, 999);
    EXPECT_EQ(pairs.front().second, "File: cam.dxf");
}

TEST_F(Dxf, is_the_same_for_the_same_design)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    EXPECT_EQ(Dxf_Text(Set({}), "cam.dxf"), Dxf_Text(Set({}), "cam.dxf"));
}

}  // namespace
}  // namespace lobemax
