// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/curve_files.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "core/design_state.h"
#include "core/messages.h"
#include "shop/dxf.h"
#include "tests/support/number_in.h"
#include "tests/support/shop_curve.h"
#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using testing::Number_In;
using testing::Truth_Maker;

class Curve_Files : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = std::filesystem::temp_directory_path() / ("lobemax_curves_" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder_);
        Host host;
        host.date = [] { return "11/22/2026"; };
        host.time = [] { return "10:00"; };
        before_ = Install_Host(std::move(host));
    }
    void TearDown() override
    {
        Install_Host(std::move(before_));
        std::filesystem::remove_all(folder_);
    }
    std::string Path(const char* name) const { return (folder_ / name).string(); }

    static Curve_Set Set(const Curve_Choice& choice = {})
    {
        Made_Curves made = Make_Curve_Set(design, choice);
        EXPECT_TRUE(made.set) << made.refusal;
        return made.set.value_or(Curve_Set{});
    }
    static Curve_Points Points(const Point_Choice& choice = {})
    {
        Made_Points made = Make_Curve_Points(design, choice);
        EXPECT_TRUE(made.points) << made.refusal;
        return made.points.value_or(Curve_Points{});
    }
    static std::string Read(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static void Write(const std::string& path, const std::string& text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }

    std::filesystem::path folder_;
    Host before_;
};

std::vector<std::string> Lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        EXPECT_TRUE(line.ends_with('\r'));
        line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<double> Numbers_of(const std::string& line, char separator)
{
    std::vector<double> numbers;
    std::istringstream in(line);
    for (std::string word; std::getline(in, word, separator);) {
        EXPECT_EQ(word.find_first_not_of("-0123456789."), std::string::npos) << word;
        numbers.push_back(Number_In(word));
    }
    return numbers;
}

std::string Fact(const Curve_Set& set, const std::string& name)
{
    for (const auto& [key, words] : set.facts)
        if (key.starts_with(name))
            return words;
    return "";
}

// ---- What is told

TEST_F(Curve_Files, tell_what_was_written)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.identity.Model_Name = "Presse 7";
    design.identity.Design_No = 12;
    Curve_Choice choice;
    choice.tolerance = 0.002;
    const Curve_Set set = Set(choice);
    EXPECT_EQ(Fact(set, "Model"), "Presse 7");
    EXPECT_EQ(Fact(set, "Design"), "12");
    EXPECT_EQ(Fact(set, "Date"), "11/22/2026 10:00");
    EXPECT_EQ(Fact(set, "Unit"), "mm");
    EXPECT_EQ(Fact(set, "Tolerance"), "0.002 mm");
    ASSERT_EQ(set.curves.size(), 2U);
    const Fitted_Curve& surface = set.curves.front();
    const std::string words = Fact(set, "SURFACE");
    EXPECT_TRUE(words.starts_with(std::to_string(surface.path.elements.size()) + " arcs, closed, largest deviation "))
        << words;
    EXPECT_NEAR(Number_In(words.substr(words.find("deviation ") + 10)), surface.deviation, 1e-5);
    EXPECT_EQ(Fact(set, "BASE"), "circle of radius 48 mm");
    EXPECT_EQ(Fact(set, "PRIME"), "circle of radius 60 mm");
}

TEST_F(Curve_Files, have_the_text_beside_them)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const Curve_Set set = Set();
    const std::string path = Path("cam.dxf");
    EXPECT_EQ(Write_with_Text(path, Dxf_Text(set, path), set.facts), Path("cam.txt"));
    const std::string text = Read(Path("cam.txt"));
    EXPECT_EQ(text, Text_of_Facts(Facts_of(set, "cam.dxf")));
    EXPECT_TRUE(text.starts_with("File: cam.dxf\r\nModel: Model1\r\n"));
    EXPECT_TRUE(Read(path).starts_with("999\r\nFile: cam.dxf\r\n"));
    // The same lines stand in the file itself.
    for (const std::string& line : Lines_of(text))
        EXPECT_NE(Read(path).find("999\r\n" + line + "\r\n"), std::string::npos) << line;
    // Written again it replaces its own text; a text of another file is left alone.
    EXPECT_EQ(Path_of_Text(path), Path("cam.txt"));
    EXPECT_EQ(Path_of_Text(Path("cam.svg")), Path("cam.svg.txt"));
    Write(Path("cam.txt"), "notes of somebody");
    EXPECT_EQ(Path_of_Text(path), Path("cam.dxf.txt"));
    EXPECT_EQ(Path_of_Text(Path("points.txt")), Path("points.txt.txt"));
    EXPECT_EQ(Path_of_Text(Path("plain")), Path("plain.txt"));
}

TEST_F(Curve_Files, are_the_same_for_the_same_design)
{
    for (const Truth_Maker& maker : {Truth_Maker{}, Truth_Maker{.Camtype = "Barrel"}}) {
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        for (const Curve_Form form : {Curve_Form::arcs, Curve_Form::lines, Curve_Form::spline}) {
            Curve_Choice choice;
            choice.form = form;
            choice.tolerance = 0.01;
            const Curve_Set first = Set(choice);
            const Curve_Set second = Set(choice);
            EXPECT_EQ(Dxf_Text(first, "a.dxf"), Dxf_Text(second, "a.dxf"));
            EXPECT_EQ(Svg_Text(first, "a.svg"), Svg_Text(second, "a.svg"));
        }
        EXPECT_EQ(Xyz_Text(Points()), Xyz_Text(Points()));
        EXPECT_EQ(Csv_Text(Points()), Csv_Text(Points()));
    }
}

// ---- Points

TEST_F(Curve_Files, points_lie_on_the_curve_and_close_it)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    const std::vector<std::string> lines = Lines_of(Xyz_Text(Points({.step = 1.0})));
    ASSERT_EQ(lines.size(), 361U);
    EXPECT_EQ(lines.front(), lines.back());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::vector<double> p = Numbers_of(lines[i], ' ');
        ASSERT_EQ(p.size(), 3U);
        const Vector surface = cam.At(static_cast<double>(i)).surface;
        EXPECT_NEAR(p[0], surface.x, 1e-7);
        EXPECT_NEAR(p[1], surface.y, 1e-7);
        EXPECT_EQ(p[2], 0.0);
    }
    // In inches.
    const std::vector<std::string> inches = Lines_of(Xyz_Text(Points({.step = 1.0, .units = 1})));
    EXPECT_NEAR(Numbers_of(inches[30], ' ')[0], Numbers_of(lines[30], ' ')[0] / 25.4, 1e-11);
    // A step that does not divide the turn has a shorter last one.
    EXPECT_EQ(Points({.step = 7.0}).rows.size(), 53U);
    EXPECT_EQ(Points().rows.size(), 721U) << "the design's own step";
}

// Of a drum they go round its axis on the cylinder and close there; a linear cam is as long as its turn.
TEST_F(Curve_Files, points_of_a_drum_lie_round_its_axis)
{
    for (const int rot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel", .rot = rot}.Make()));
        for (const int flank : {1, -1}) {
            const Curve_Points points = Points({.flank = flank, .step = 1.0});
            for (const auto& row : points.rows)
                EXPECT_NEAR(std::hypot(row.space[0], row.space[1]), 60.0, 1e-9);
            const auto& first = points.rows.front();
            const auto& last = points.rows.back();
            for (int k = 0; k < 3; ++k)
                EXPECT_EQ(first.space[k], last.space[k]);
            EXPECT_NEAR(last.plane.x - first.plane.x, PI2 * 60.0, 1e-6);
            EXPECT_NEAR(first.space[2], -flank * 12.0, 1e-9);
            const auto& quarter = points.rows[90];
            EXPECT_EQ(quarter.space[1] > 0.0, rot < 0);
        }
    }
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear"}.Make()));
    const Curve_Points points = Points({.layer = Curve_Layer::pitch, .step = 1.0});
    EXPECT_NEAR(points.rows.back().space[0], PI2 * 60.0, 1e-6);
    EXPECT_NEAR(points.rows[140].space[2], 20.0, 1e-9);
    EXPECT_EQ(points.rows[140].space[1], 0.0);
}

TEST_F(Curve_Files, tables_have_heads_and_units)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const std::vector<std::string> lines = Lines_of(Csv_Text(Points({.layer = Curve_Layer::pitch, .step = 5.0})));
    ASSERT_EQ(lines.size(), 74U);
    EXPECT_EQ(lines.front(), "Cam angle (deg),X (mm),Y (mm),Direction (deg)");
    const std::vector<double> row = Numbers_of(lines[1 + 28], ',');
    ASSERT_EQ(row.size(), 4U);
    EXPECT_EQ(row[0], 140.0);
    EXPECT_NEAR(std::hypot(row[1], row[2]), 80.0, 1e-9);
    // Along the circle of the dwell; a clockwise cam is met counterclockwise.
    EXPECT_NEAR(std::remainder(row[3] - (140.0 + 90.0), 360.0), 0.0, 1e-6);
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear"}.Make()));
    EXPECT_EQ(Lines_of(Csv_Text(Points())).front(), "Cam angle (deg),Along (mm),Z (mm),Direction (deg)");
}

// ---- Pictures

struct Svg_Path {
    std::vector<Surface_Element> elements;  // in millimetres of the page, y upwards from its foot
    bool closed = false;
};

/// The paths of a group, read by the commands M, L, A and Z alone: an arc's centre from its two radii and flags.
std::vector<Svg_Path> Paths_of(const std::string& svg, const std::string& group, double page_height)
{
    std::vector<Svg_Path> paths;
    const std::size_t start = svg.find("<g id=\"" + group + "\"");
    if (start == std::string::npos)
        return paths;
    const std::string body = svg.substr(start, svg.find("</g>", start) - start);
    for (std::size_t at = body.find(" d=\""); at != std::string::npos; at = body.find(" d=\"", at + 1)) {
        std::string data = body.substr(at + 4, body.find('"', at + 4) - at - 4);
        for (const char c : {'M', 'L', 'A', 'Z'})
            for (std::size_t i = 0; (i = data.find(c, i)) != std::string::npos; i += 3)
                data.replace(i, 1, std::string(" ") + c + " ");
        std::istringstream in(data);
        in.imbue(std::locale::classic());
        Svg_Path path;
        Vector here;
        for (char command = 0; in >> command;) {
            Vector to;
            if (command == 'Z') {
                path.closed = true;
            } else if (command == 'A') {
                double rx = 0.0, ry = 0.0, turn = 0.0;
                int large = 0, sweep = 0;
                in >> rx >> ry >> turn >> large >> sweep >> to.x >> to.y;
                EXPECT_EQ(rx, ry);
                const double half = std::asin(std::min(1.0, 0.5 * Length(to - here) / rx));
                const double angle = large != 0 ? 2.0 * (std::acos(-1.0) - half) : 2.0 * half;
                // With y downwards the flag 1 is clockwise to the eye: a negative bulge seen with y upwards.
                path.elements.push_back({{here.x, page_height - here.y},
                                         {to.x, page_height - to.y},
                                         (sweep != 0 ? -1.0 : 1.0) * std::tan(0.25 * angle)});
                here = to;
            } else {
                in >> to.x >> to.y;
                if (command == 'L')
                    path.elements.push_back({{here.x, page_height - here.y}, {to.x, page_height - to.y}, 0.0});
                here = to;
            }
        }
        paths.push_back(path);
    }
    return paths;
}

/// The number of an attribute of the picture itself.
double Attribute(const std::string& svg, const std::string& name)
{
    const std::size_t at = svg.find(name + "=\"");
    return at == std::string::npos ? std::nan("") : Number_In(std::string_view(svg).substr(at + name.size() + 2));
}

TEST_F(Curve_Files, pictures_are_in_true_size)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const True_Cam cam(design);
    for (const int units : {5, 4, 1}) {
        Curve_Choice choice;
        choice.tolerance = 0.001;
        choice.cutter = 8.0;
        choice.bore = {.diameter = 25.0, .keyway = true};
        choice.notes = false;
        Curve_Set set = Set(choice);
        set.units = units;
        const double mm = units == 5 ? 1.0 : units == 4 ? 10.0 : 25.4;
        const std::string svg = Svg_Text(set, "cam.svg");
        const double height = Attribute(svg, "height");
        // Roller centre of the cutter's path: 80 on the far side; the page is as wide as what is drawn and two margins.
        EXPECT_NEAR(Attribute(svg, "width"), (set.high.x - set.low.x) * mm + 10.0, 1e-6);
        EXPECT_NE(svg.find("mm\" height=\""), std::string::npos);
        std::istringstream box(svg.substr(svg.find("viewBox=\"") + 9));
        double x = 1.0, y = 1.0, w = 0.0, h = 0.0;
        box >> x >> y >> w >> h;
        EXPECT_EQ(x, 0.0);
        EXPECT_EQ(y, 0.0);
        EXPECT_EQ(w, Attribute(svg, "width"));
        EXPECT_EQ(h, height);
        const auto paths = Paths_of(svg, "SURFACE", height);
        ASSERT_EQ(paths.size(), 1U);
        EXPECT_TRUE(paths[0].closed);
        EXPECT_EQ(Length(paths[0].elements.front().from - paths[0].elements.back().to), 0.0);
        // Every point of the true surface lies on the picture's arcs: centre at the margin and the lowest point.
        const Vector center{5.0 - set.low.x * mm, 5.0 - set.low.y * mm};
        for (double t = 0.0; t < 360.0; t += 1.3)
            EXPECT_LT(testing::Distance(center + mm * cam.At(t).surface, paths[0].elements), 0.0011 * mm) << t;
        EXPECT_LT(testing::Joints_of(paths[0].elements, true).kink, 1e-5);
        for (const char* const group : {"PITCH", "CUTTER", "KEYWAY"})
            EXPECT_EQ(Paths_of(svg, group, height).size(), 1U) << group;
        for (const char* const group : {"BASE", "PRIME", "SHAFT"})
            EXPECT_NE(svg.find("<g id=\"" + std::string(group) + "\""), std::string::npos) << group;
        EXPECT_EQ(svg.find("<g id=\"NOTES\""), std::string::npos);
    }
}

TEST_F(Curve_Files, pictures_of_drums_have_both_flanks)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    const std::string groove = Svg_Text(Set(), "a.svg");
    EXPECT_EQ(Paths_of(groove, "SURFACE", Attribute(groove, "height")).size(), 2U);
    design.cam.Barrel_Type = "Ribbed";
    const std::string rib = Svg_Text(Set(), "a.svg");
    const auto paths = Paths_of(rib, "SURFACE", Attribute(rib, "height"));
    ASSERT_EQ(paths.size(), 1U) << "a rib has its other flank at a distance that no field holds";
    EXPECT_FALSE(paths[0].closed);
    EXPECT_NEAR(paths[0].elements.back().to.x - paths[0].elements.front().from.x, PI2 * 60.0, 1e-6);
}

TEST_F(Curve_Files, names_are_escaped_and_on_one_line)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.identity.Model_Name = "a<b>&\nc";
    const Curve_Set set = Set();
    EXPECT_NE(Svg_Text(set, "a.svg").find("Model: a&lt;b&gt;&amp; c\n"), std::string::npos);
    EXPECT_NE(Dxf_Text(set, "a.dxf").find("Model: a<b>& c\r\n"), std::string::npos);
}

// ---- Refusals

TEST_F(Curve_Files, are_refused_with_a_sentence)
{
    const auto refusal = [](const Curve_Choice& choice) {
        const Made_Curves made = Make_Curve_Set(design, choice);
        EXPECT_NE(made.set.has_value(), !made.refusal.empty());
        return made.refusal;
    };
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.lift = 50.0}.Make()));
    EXPECT_EQ(refusal({}), "");
    EXPECT_EQ(refusal({.tolerance = -0.1}), "The tolerance must be a number above 0.");
    EXPECT_EQ(refusal({.tolerance = std::nan("")}), "The tolerance must be a number above 0.");
    EXPECT_NE(refusal({.tolerance = 1e-7}).find("is finer than"), std::string::npos);
    EXPECT_NE(refusal({.tolerance = 20.0}).find("leaves nothing"), std::string::npos);
    EXPECT_NE(refusal({.cutter = 0.0}).find("must be a number above 0"), std::string::npos);
    EXPECT_NE(refusal({.cutter = 4000.0}).find("is larger than the hollow at "), std::string::npos);
    EXPECT_EQ(refusal({.cutter = 4000.0, .though_do_not_cut = true}), "");
    EXPECT_NE(refusal({.bore = {.diameter = 96.0}}).find("comes as near as 48 mm"), std::string::npos);
    EXPECT_NE(refusal({.bore = {.diameter = -1.0}}).find("must be a number above 0"), std::string::npos);
    EXPECT_NE(refusal({.bore = {.keyway = true}}).find("needs the diameter"), std::string::npos);
    EXPECT_NE(refusal({.bore = {.diameter = 5.0, .keyway = true}}).find("no usual keyway"), std::string::npos);
    EXPECT_NE(refusal({.bore = {.diameter = 5.0, .keyway = true, .width = 6.0, .depth = 1.0}}).find("as wide as"),
              std::string::npos);
    EXPECT_EQ(refusal({.bore = {.diameter = 5.0, .keyway = true, .width = 1.0, .depth = 0.5}}), "");
    EXPECT_NE(refusal({.bore = {.diameter = 90.0, .keyway = true}}).find("reaches to"), std::string::npos);

    const Made_Points points = Make_Curve_Points(design, {.step = 0.0001});
    EXPECT_FALSE(points.points);
    EXPECT_EQ(points.refusal, "The step must be 0.001 to 30 degrees.");
    EXPECT_NE(Make_Curve_Points(design, {.layer = Curve_Layer::cutter, .cutter = 4000.0}).refusal, "");

    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true}.Make()));
    EXPECT_NE(Make_Curve_Points(design, {.layer = Curve_Layer::pitch}).refusal, "");

    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    EXPECT_NE(refusal({.cutter = 6.0}).find("use a cutter of the roller's size, 12 mm"), std::string::npos);
    EXPECT_EQ(refusal({.cutter = 12.0}), "");
    EXPECT_NE(refusal({.bore = {.diameter = 20.0}}).find("no bore"), std::string::npos);
}

// A roller larger than the path's curvature: refused, and told in the file when it is wanted all the same.
TEST_F(Curve_Files, of_a_cam_that_must_not_be_cut_are_refused_unless_wanted)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.cam.Prime_Rad = 45.0;
    design.cam.Follow_Rad = 40.0;
    ASSERT_TRUE(Run_Size(design));
    const Made_Curves made = Make_Curve_Set(design, {});
    EXPECT_FALSE(made.set);
    EXPECT_TRUE(made.refusal.starts_with("Do not cut this cam: ")) << made.refusal;
    EXPECT_EQ(Make_Curve_Points(design, {}).refusal, made.refusal);
    Curve_Choice choice;
    choice.though_do_not_cut = true;
    const Curve_Set set = Set(choice);
    EXPECT_EQ(Fact(set, "WARNING"), made.refusal);
    EXPECT_NE(Fact(set, "SURFACE").find("RUNS BACK ON ITSELF at "), std::string::npos);
    EXPECT_TRUE(Make_Curve_Points(design, {.though_do_not_cut = true}).points);
}

TEST_F(Curve_Files, of_a_design_that_is_not_sized_are_refused)
{
    ASSERT_NO_FATAL_FAILURE((testing::Cam_Maker{}.Make()));
    EXPECT_EQ(Make_Curve_Set(design, {}).refusal,
              "The cam is not sized yet. Calculate its motion and size it; then its curves can be written.");
    EXPECT_FALSE(Make_Curve_Points(design, {}).points);
}

// ---- Numbers

TEST(Plain_Numbers, have_no_exponent_and_no_negative_zero)
{
    EXPECT_EQ(Plain_Number(-0.0), "0.0");
    EXPECT_EQ(Plain_Number(-1e-20), "0.0");
    EXPECT_EQ(Plain_Number(1e-9), "0.000000001");
    EXPECT_EQ(Plain_Number(12.0), "12.0");
    EXPECT_EQ(Plain_Number(12.0, 3, false), "12");
    EXPECT_EQ(Plain_Number(12345678.5, 3, false), "12345678.5");
    EXPECT_EQ(Plain_Figures(0.00099912, 3), "0.000999");
    EXPECT_EQ(Plain_Figures(48.0, 6), "48");
    EXPECT_EQ(Plain_Figures(0.0, 3), "0");
    EXPECT_EQ(Plain_Figures(123456.7, 3), "123457");
}

}  // namespace
}  // namespace lobemax
