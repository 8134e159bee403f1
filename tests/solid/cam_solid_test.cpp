// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/cam_solid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>

#include "core/design_state.h"
#include "core/messages.h"
#include "shop/curve_files.h"
#include "tests/support/python.h"
#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using std::numbers::pi;
using testing::Every_Configuration;
using testing::Truth_Maker;

/// A folder of its own, and what another process reads in the files there.
class Solids : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = std::filesystem::path(::testing::TempDir()) /
                  (std::string("solids_") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
        Host host;
        host.date = [] { return std::string("2026-11-22"); };
        host.time = [] { return std::string("10:30:00"); };
        before_ = Install_Host(std::move(host));
    }
    void TearDown() override
    {
        Install_Host(std::move(before_));
        std::filesystem::remove_all(folder_);
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    static std::string Bytes_of(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    struct Read_Back {
        std::map<std::string, std::string> words;
        double At(const std::string& name) const
        {
            const auto found = words.find(name);
            return found == words.end() ? std::nan("") : std::stod(found->second);
        }
    };

    /// What Open CASCADE's reader finds, in a process of its own. @param points  whose distance from the skin is asked
    Read_Back Read(const std::string& path, const std::vector<std::array<double, 3>>& points = {}) const
    {
        std::string command = std::string(LOBEMAX_READ_STEP) + " '" + path + "'";
        if (!points.empty()) {
            std::ofstream out(Path("points"));
            out.precision(15);
            for (const auto& [x, y, z] : points)
                out << x << ' ' << y << ' ' << z << '\n';
            command += " '" + Path("points") + "'";
        }
        const testing::Process process = testing::Run_Process(command);
        EXPECT_EQ(process.status, 0) << process.out;
        Read_Back back;
        std::istringstream lines(process.out);
        std::string name;
        std::string value;
        while (lines >> name >> value)
            back.words[name] = value;
        return back;
    }

    /// Writes the design at hand, reads it back, and holds the reader's figures against the report's.
    Read_Back Written(const Solid_Options& options, Solid_Report& report,
                      const std::vector<std::array<double, 3>>& points = {}) const
    {
        const std::string path = Path("cam.step");
        EXPECT_EQ(Write_Solid(design, options, path, report), "");
        EXPECT_EQ(report.text_path, Path("cam.txt"));
        const Read_Back back = Read(path, points);
        EXPECT_EQ(back.At("solids"), 1);
        EXPECT_EQ(back.At("valid"), 1);
        EXPECT_EQ(back.At("closed"), 1);
        EXPECT_EQ(back.At("faces"), report.faces);
        const double mm = Millimetres_per_Unit(design.identity.WhichUnit);
        EXPECT_NEAR(back.At("volume") / (mm * mm * mm), report.volume, 1e-7 * report.volume);
        EXPECT_NEAR(back.At("area") / (mm * mm), report.area, 1e-7 * report.area);
        EXPECT_LE(report.largest_deviation, report.tolerance);
        EXPECT_GT(report.largest_deviation, 0.0);
        return back;
    }

    std::filesystem::path folder_;
    Host before_;
};

/// Area and length of a closed curve of the cam by sums over its own points, evenly between the joints of the motion.
struct Measured {
    double area = 0.0;
    double length = 0.0;
};
Measured Measure(const std::function<Vector(double)>& at)
{
    // Chords of 1/400 degree: their area is short by a share of 1e-9.
    constexpr int count = 144000;
    Measured sum;
    Vector from = at(0.0);
    for (int i = 1; i <= count; ++i) {
        const Vector to = at(360.0 * i / count);
        sum.area += 0.5 * Cross(from, to);
        sum.length += Length(to - from);
        from = to;
    }
    sum.area = std::abs(sum.area);
    return sum;
}

double Circle_Area(double diameter)
{
    return 0.25 * pi * diameter * diameter;
}

// ---- Disk cams

TEST_F(Solids, of_a_disk_cam_have_the_volume_and_area_of_its_true_surface)
{
    for (const bool flat : {false, true}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = flat}.Make()));
        const True_Cam cam(design);
        const Measured surface = Measure([&](double t) { return cam.At(t).surface; });
        Solid_Report report;
        const Read_Back plain = Written({.thickness = 20.0}, report);
        // The surface lies within the tolerance on both sides.
        const double skin = report.tolerance * surface.length;
        EXPECT_NEAR(report.volume, 20.0 * surface.area, 20.0 * skin);
        EXPECT_NEAR(report.area, 2.0 * surface.area + 20.0 * surface.length, 2.0 * skin + 20.0 * 1e-4 * surface.length);
        EXPECT_NEAR(plain.At("low_z"), 0.0, 1e-6);
        EXPECT_NEAR(plain.At("high_z"), 20.0, 1e-6);
        EXPECT_EQ(plain.words.at("unit"), "millimetre");

        // A bore of 25, a hub of 50 that is 15 beyond.
        Written({.thickness = 20.0, .bore = {.diameter = 25.0}, .hub_diameter = 50.0, .hub_length = 15.0}, report);
        const double plain_volume = 20.0 * (surface.area - Circle_Area(25.0));
        EXPECT_NEAR(report.volume, plain_volume + 15.0 * (Circle_Area(50.0) - Circle_Area(25.0)), 20.0 * skin);
        EXPECT_NEAR(
            report.area,
            2.0 * (surface.area - Circle_Area(25.0)) + 20.0 * surface.length + 15.0 * pi * 50.0 + 35.0 * pi * 25.0,
            2.0 * skin + 20.0 * 1e-4 * surface.length);
    }
}

// The keyway takes a rectangle off, less what the bore has of it already.
TEST_F(Solids, have_a_keyway_through_plate_and_hub)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Solid_Options options{.thickness = 20.0, .bore = {.diameter = 30.0}, .hub_diameter = 55.0, .hub_length = 15.0};
    Solid_Report without;
    Written(options, without);
    options.bore = {.diameter = 30.0, .keyway = true, .width = 8.0, .depth = 3.3};
    Solid_Report with;
    Written(options, with);
    const double half = std::asin(4.0 / 15.0);
    const double cap = 15.0 * 15.0 * half - 4.0 * 15.0 * std::cos(half);
    const double rectangle = 8.0 * (15.0 + 3.3 - 15.0 * std::cos(half));
    EXPECT_NEAR(without.volume - with.volume, 35.0 * (rectangle - cap), 1e-4);
}

TEST_F(Solids, of_a_track_have_the_volume_between_both_walls)
{
    for (const int In_Out : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.In_Out = In_Out}.Make()));
        const True_Cam cam(design);
        const auto wall = [&](double side) {
            return Measure([&](double t) {
                const True_Point p = cam.At(t);
                return p.center + side * 12.0 * p.normal;
            });
        };
        const Measured outer = wall(1.0);
        const Measured inner = wall(-1.0);
        Solid_Report report;
        // An outer surface is a track's wall whether asked for or not.
        Written({.thickness = 30.0,
                 .bore = {.diameter = 25.0},
                 .groove = In_Out < 0,
                 .plate_diameter = 220.0,
                 .groove_depth = 12.0},
                report);
        EXPECT_NEAR(report.volume, 30.0 * (Circle_Area(220.0) - Circle_Area(25.0)) - 12.0 * (outer.area - inner.area),
                    12.0 * report.tolerance * (outer.length + inner.length));
        EXPECT_NEAR(report.area,
                    2.0 * (Circle_Area(220.0) - Circle_Area(25.0)) + 30.0 * pi * (220.0 + 25.0) +
                        12.0 * (outer.length + inner.length),
                    0.1);
        EXPECT_EQ(
            Write_Solid(design, {.thickness = 30.0, .groove = true, .plate_diameter = 180.0, .groove_depth = 12.0},
                        Path("no.step"), report)
                .substr(0, 20),
            "The track reaches to");
    }
}

// ---- Drums

/// A place of a wall in space, as the files of points lay a drum round its axis.
std::array<double, 3> In_Space(const True_Cam& cam, const Wall_Point& wall, double shift = 0.0)
{
    const double angle = -cam.Follower().rot * wall.Lambda * pi / 180.0;
    return {wall.radius * std::cos(angle), wall.radius * std::sin(angle), wall.Z + shift};
}

/// The area under a wall on the cylinder of a radius, unrolled: the integral of Z along it.
double Under(const True_Cam& cam, int side, double radius)
{
    constexpr int count = 14400;
    double sum = 0.0;
    Wall_Point from = cam.Wall_at_Radius(0.0, side, radius);
    for (int i = 1; i <= count; ++i) {
        const Wall_Point to = cam.Wall_at_Radius(360.0 * i / count, side, radius);
        sum += 0.5 * (from.Z + to.Z) * (to.Lambda - from.Lambda) * pi / 180.0 * radius;
        from = to;
    }
    return sum;
}

/// Over the depth by Gauss's rule with five places.
double Over_Depth(double inner, double outer, const std::function<double(double)>& area)
{
    constexpr std::array places{-0.906179845938664, -0.538469310105683, 0.0, 0.538469310105683, 0.906179845938664};
    constexpr std::array weights{0.236926885056189, 0.478628670499366, 0.568888888888889, 0.478628670499366,
                                 0.236926885056189};
    double sum = 0.0;
    for (std::size_t i = 0; i < places.size(); ++i)
        sum += weights[i] * area(0.5 * (inner + outer) + 0.5 * (outer - inner) * places[i]);
    return 0.5 * (outer - inner) * sum;
}

TEST_F(Solids, of_a_groove_have_the_volume_of_its_width_over_every_depth)
{
    for (const int rot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel", .rot = rot}.Make()));
        const True_Cam cam(design);
        Solid_Report report;
        const Read_Back back = Written(
            {.bore = {.diameter = 25.0}, .groove_depth = 12.0, .drum_radius = 64.0, .body_length = 90.0}, report);
        const double groove = Over_Depth(52.0, 64.0, [&](double r) { return Under(cam, -1, r) - Under(cam, 1, r); });
        EXPECT_NEAR(report.volume, 90.0 * (Circle_Area(128.0) - Circle_Area(25.0)) - groove, 20.0)
            << "both walls of some 420 by 12 mm, a micrometre each at the most";
        EXPECT_NEAR(back.At("high_z") - back.At("low_z"), 90.0, 1e-5);
        EXPECT_NEAR(back.At("high_x"), 64.0, 1e-5);
    }
}

// The wall is the roller's at every depth: its points, between those that the surface goes through too, lie on the skin
// that another process reads; so do those of the file of points at the prime radius.
TEST_F(Solids, of_a_groove_have_the_wall_that_the_roller_leaves_at_every_depth)
{
    for (const bool arm : {false, true})
        for (const int rot : {-1, 1}) {
            ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel",
                                                 .arm = arm,
                                                 .rot = rot,
                                                 .ArmX = 100.0,
                                                 .ArmY = 0.0,
                                                 .ArmRad = 100.0,
                                                 .lift = arm ? 12.0 : 20.0}
                                         .Make()));
            const True_Cam cam(design);
            std::vector<std::array<double, 3>> points;
            for (const int side : {1, -1})
                for (double t = 3.1; t < 360.0; t += 11.7)
                    for (const double radius : {48.2, 51.0, 54.3, 57.7, 59.5})
                        points.push_back(In_Space(cam, cam.Wall_at_Radius(t, side, radius)));
            const Made_Points file = Make_Curve_Points(design, {.step = 10.0});
            ASSERT_TRUE(file.points) << file.refusal;
            for (const Curve_Points::Row& row : file.points->rows)
                points.push_back({row.space[0], row.space[1], row.space[2]});
            Solid_Report report;
            const Read_Back back = Written({.groove_depth = 12.0}, report, points);
            EXPECT_GE(back.At("furthest"), 0.0);
            EXPECT_LE(back.At("furthest"), report.tolerance) << "arm " << arm << " rot " << rot;
        }
}

// Two rollers hold the rib between them: its lower flank is the wall above the lower one.
TEST_F(Solids, of_a_rib_stand_between_two_rollers)
{
    for (const int Top_Bot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel", .Top_Bot = Top_Bot}.Make()));
        design.cam.Barrel_Type = "Ribbed";
        const True_Cam cam(design);
        const int used = cam.Follower().side;
        std::vector<std::array<double, 3>> points;
        for (double t = 3.1; t < 360.0; t += 11.7)
            for (const double radius : {50.2, 55.0, 59.3}) {
                points.push_back(In_Space(cam, cam.Wall_at_Radius(t, used, radius)));
                // The other roller lies 15 and two radii of 12 from the first.
                points.push_back(In_Space(cam, cam.Wall_at_Radius(t, -used, radius), -used * 39.0));
            }
        Solid_Report report;
        const Read_Back back = Written({.groove_depth = 10.0, .body_length = 100.0, .rib_width = 15.0}, report, points);
        EXPECT_LE(back.At("furthest"), report.tolerance);
        const double rib = Over_Depth(50.0, 60.0, [&](double r) {
            return std::abs(Under(cam, used, r) - Under(cam, -used, r) + used * 39.0 * 2.0 * pi * r);
        });
        EXPECT_NEAR(report.volume, 100.0 * Circle_Area(100.0) + rib, 20.0);
    }
}

// Ruled walls, where the depths are two, do not stay within a micrometre of what the roller leaves over 12 mm; within a
// tenth of a millimetre they do.
TEST_F(Solids, of_a_groove_go_through_as_many_depths_as_the_tolerance_needs)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    const auto depths = [&](double tolerance) {
        std::string bytes;
        Solid_Report report;
        EXPECT_EQ(Make_Solid(design, {.tolerance = tolerance, .groove_depth = 12.0}, Solid_Format::step, bytes, report),
                  "");
        EXPECT_LE(report.largest_deviation, tolerance);
        for (const auto& [name, words] : report.facts)
            if (name == "Walls")
                return words;
        return std::string();
    };
    EXPECT_NE(depths(0.1).find("2 depths, ruled"), std::string::npos);
    EXPECT_EQ(depths(0.001).find("ruled"), std::string::npos);
}

// ---- Straight cams

TEST_F(Solids, of_a_straight_cam_have_the_volume_between_its_walls)
{
    for (const bool rib : {false, true})
        for (const int rot : {-1, 1}) {
            ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear", .rot = rot}.Make()));
            design.cam.Barrel_Type = rib ? "Ribbed" : "";
            const True_Cam cam(design);
            const int used = cam.Follower().side;
            const double length = 2.0 * pi * 60.0;
            const double between = Under(cam, -1, 60.0) - Under(cam, 1, 60.0);
            Solid_Report report;
            const Read_Back back =
                Written({.thickness = 25.0, .groove_depth = 10.0, .body_length = 90.0, .rib_width = 15.0}, report);
            const double groove = 25.0 * 90.0 * length - 10.0 * between;
            const double ribbed = 15.0 * 90.0 * length + 10.0 * (39.0 * length - between);
            EXPECT_NEAR(report.volume, rib ? ribbed : groove, 10.0 * 1e-3 * 900.0) << used;
            EXPECT_NEAR(back.At("low_y"), 0.0, 1e-6);
            EXPECT_NEAR(back.At("high_y"), 25.0, 1e-6);
            EXPECT_NEAR(back.At("high_x") - back.At("low_x"), length, 1e-4);
        }
}

// Where a turn begins on a slope, walls and plate still end at the same places.
TEST_F(Solids, of_a_straight_cam_end_square_where_the_turn_begins_on_a_slope)
{
    ASSERT_NO_FATAL_FAILURE(
        (Truth_Maker{.Camtype = "Linear", .arm = true, .ArmX = 100.0, .ArmY = 0.0, .ArmRad = 100.0, .lift = 12.0}
             .Make()));
    const True_Cam cam(design);
    std::vector<std::array<double, 3>> points;
    const double start = Surface_of(cam).at(0.0).point.x;
    for (double t = 5.3; t < 355.0; t += 9.7)
        for (const int side : {1, -1}) {
            const Vector p = Flank_of(cam, side).at(t).point;
            EXPECT_GT(p.x, start);
            points.push_back({p.x, 4.0, p.y});
        }
    Solid_Report report;
    const Read_Back back = Written({.thickness = 25.0, .groove_depth = 10.0}, report, points);
    EXPECT_NEAR(back.At("low_x"), start, 1e-5);
    EXPECT_LE(back.At("furthest"), report.tolerance);
}

// ---- All

TEST_F(Solids, are_made_in_every_configuration)
{
    for (const Truth_Maker& maker : Every_Configuration()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        std::string bytes;
        Solid_Report report;
        EXPECT_EQ(Make_Solid(design, {.thickness = 20.0, .groove_depth = 8.0}, Solid_Format::step, bytes, report), "");
        EXPECT_GT(report.volume, 0.0);
        EXPECT_GT(report.largest_deviation, 0.0);
        EXPECT_LE(report.largest_deviation, report.tolerance);
    }
}

TEST_F(Solids, have_the_same_bytes_for_the_same_design)
{
    for (const char* const body : {"Radial", "Barrel", "Linear"}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = body}.Make()));
        design.identity.Model_Name = "Lever's c\xC3\xA1m 7";
        const Solid_Options options{.thickness = 20.0, .groove_depth = 8.0};
        for (const char* const name : {"cam.step", "cam.stl"}) {
            Solid_Report report;
            ASSERT_EQ(Write_Solid(design, options, Path(name), report), "");
            const std::string first = Bytes_of(Path(name));
            const std::string text = Bytes_of(report.text_path);
            ASSERT_EQ(Write_Solid(design, options, Path(name), report), "");
            EXPECT_TRUE(Bytes_of(Path(name)) == first) << body << ' ' << name;
            EXPECT_EQ(Bytes_of(report.text_path), text);
            EXPECT_GT(first.size(), 1000U);
        }
        const std::string step = Bytes_of(Path("cam.step"));
        EXPECT_NE(step.find("AUTOMOTIVE_DESIGN"), std::string::npos) << "the schema of AP214";
        EXPECT_NE(step.find("'2026-11-22T10:30:00'"), std::string::npos);
        EXPECT_NE(step.find("PRODUCT('Lever''s c_m 7','Lever''s c_m 7'"), std::string::npos);
    }
}

TEST_F(Solids, of_a_design_in_inches_are_written_in_inches)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    const double area = Measure([cam = True_Cam(design)](double t) { return cam.At(t).surface; }).area;
    design.identity.WhichUnit = 1;
    Set_Units(design);
    Solid_Report report;
    const Read_Back back = Written({.tolerance = 0.001, .thickness = 20.0}, report);
    EXPECT_EQ(back.words.at("unit"), "INCH");
    EXPECT_NEAR(report.volume, 20.0 * area, 20.0 * 0.001 * 400.0);
    EXPECT_NEAR(back.At("high_z"), 20.0 * 25.4, 1e-5);
    EXPECT_NE(Bytes_of(report.text_path).find("Unit: in\r\n"), std::string::npos);
    // An STL has the same lengths.
    ASSERT_EQ(Write_Solid(design, {.tolerance = 0.1, .thickness = 20.0}, Path("cam.stl"), report), "");
    const std::string stl = Bytes_of(Path("cam.stl"));
    float highest = 0.0F;
    for (std::size_t i = 84; i + 50 <= stl.size(); i += 50) {
        std::array<float, 12> triangle{};
        std::memcpy(triangle.data(), stl.data() + i, sizeof triangle);
        highest = std::max({highest, triangle[5], triangle[8], triangle[11]});
    }
    EXPECT_FLOAT_EQ(highest, 20.0F);
}

TEST_F(Solids, are_told_in_the_text_beside)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.identity.Model_Name = "Press";
    Solid_Report report;
    ASSERT_EQ(
        Write_Solid(design, {.thickness = 20.0, .bore = {.diameter = 25.0, .keyway = true}}, Path("cam.stp"), report),
        "");
    const std::string text = Bytes_of(Path("cam.txt"));
    for (const char* const line :
         {"File: cam.stp\r\n", "Model: Press\r\n", "Date: 2026-11-22 10:30:00\r\n", "Unit: mm\r\n",
          "Tolerance: 0.001 mm\r\n", "Keyway: width 8 mm, depth beyond the bore 3.3 mm", "Largest deviation: 0.000",
          "Volume: ", "Area: ", "Design: "})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

// ---- STL

TEST_F(Solids, are_closed_triangles_for_viewers)
{
    for (const char* const body : {"Radial", "Barrel", "Linear"}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = body}.Make()));
        Solid_Report report;
        ASSERT_EQ(
            Write_Solid(design, {.tolerance = 0.01, .thickness = 20.0, .groove_depth = 8.0}, Path("cam.STL"), report),
            "");
        const std::string bytes = Bytes_of(Path("cam.STL"));
        ASSERT_GT(bytes.size(), 84U);
        EXPECT_NE(bytes.substr(0, 5), "solid") << "that is how a text begins";
        std::uint32_t count = 0;
        std::memcpy(&count, bytes.data() + 80, sizeof count);
        ASSERT_EQ(bytes.size(), 84U + 50U * count);
        EXPECT_EQ(static_cast<int>(count), report.triangles);
        // Each edge is run through once in either sense; the signed pyramids over the origin are the volume.
        std::map<std::array<float, 6>, int> edges;
        double volume = 0.0;
        for (std::uint32_t i = 0; i < count; ++i) {
            std::array<std::array<float, 3>, 4> v{};
            std::memcpy(v.data(), bytes.data() + 84 + 50 * i, sizeof v);
            const auto& [n, a, b, c] = v;
            volume += (double{a[0]} * (double{b[1]} * c[2] - double{b[2]} * c[1]) +
                       double{a[1]} * (double{b[2]} * c[0] - double{b[0]} * c[2]) +
                       double{a[2]} * (double{b[0]} * c[1] - double{b[1]} * c[0])) /
                      6.0;
            for (const auto& [p, q] : {std::pair{a, b}, std::pair{b, c}, std::pair{c, a}}) {
                ++edges[{p[0], p[1], p[2], q[0], q[1], q[2]}];
                --edges[{q[0], q[1], q[2], p[0], p[1], p[2]}];
            }
        }
        int open = 0;
        for (const auto& [edge, times] : edges)
            open += times != 0 ? 1 : 0;
        EXPECT_EQ(open, 0) << body;
        EXPECT_GT(report.triangle_deviation, 0.0);
        EXPECT_LE(report.triangle_deviation, 2.0 * report.tolerance) << body;
        EXPECT_NEAR(volume, report.volume, 0.01 * report.area);
    }
}

// ---- Refusals

TEST_F(Solids, are_refused_with_a_sentence_and_no_file)
{
    struct Case {
        const char* body;
        Solid_Options options;
        const char* start;
    };
    const std::vector<Case> cases{
        {"Radial", {}, "Give the thickness of the plate"},
        {"Radial", {.thickness = -1.0}, "The thickness must be a number above 0."},
        {"Radial", {.thickness = std::nan("")}, "The thickness must be"},
        {"Radial", {.tolerance = 1e-9, .thickness = 20.0}, "A tolerance of"},
        {"Radial", {.thickness = 20.0, .bore = {.diameter = 97.0}}, "The bore reaches to 48.5 mm"},
        {"Radial", {.thickness = 20.0, .bore = {.diameter = 0.0, .keyway = true}}, "A keyway needs the diameter"},
        {"Radial",
         {.thickness = 20.0, .bore = {.diameter = 25.0}, .hub_diameter = 20.0, .hub_length = 5.0},
         "The hub's radius is 10 mm, its bore reaches to 12.5 mm"},
        {"Radial",
         {.thickness = 20.0, .hub_diameter = 100.0, .hub_length = 5.0},
         "The hub's radius is 50 mm, the surface"},
        {"Radial", {.thickness = 20.0, .hub_diameter = 40.0}, "A hub needs its diameter and its length"},
        {"Radial",
         {.thickness = 20.0, .groove = true, .groove_depth = 20.0},
         "A groove of a depth of 20 mm goes through"},
        {"Radial", {.thickness = 20.0, .groove = true}, "Give the depth of the groove"},
        {"Barrel", {}, "Give the depth of the groove"},
        {"Barrel", {.groove_depth = 60.0}, "A groove of a depth of 60 mm goes through a drum"},
        {"Barrel", {.bore = {.diameter = 100.0}, .groove_depth = 10.0}, "The bore reaches to 50 mm"},
        {"Barrel", {.groove_depth = 10.0, .body_length = 40.0}, "A drum of a length of 40"},
        {"Barrel", {.hub_diameter = 50.0, .hub_length = 5.0, .groove_depth = 10.0}, "A hub belongs to a disk cam."},
        {"Barrel", {.groove_depth = 45.0}, "The wall "},
        {"Linear",
         {.thickness = 20.0, .bore = {.diameter = 5.0}, .groove_depth = 10.0},
         "A bore belongs to a cam that turns."},
        {"Linear", {.thickness = 20.0, .groove_depth = 10.0, .body_length = 30.0}, "A plate 30 mm wide"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.start);
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = c.body}.Make()));
        design.cam.Face_Width = 0.0;
        Solid_Report report;
        const std::string refusal = Write_Solid(design, c.options, Path("no.step"), report);
        EXPECT_EQ(refusal.substr(0, std::strlen(c.start)), c.start);
        EXPECT_TRUE(std::filesystem::is_empty(folder_));
    }
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Solid_Report report;
    EXPECT_EQ(Write_Solid(design, {.thickness = 20.0}, Path("cam.iges"), report),
              "A solid is written to a file .step or .stp, or .stl: \"cam.iges\" is none of these.");
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true}.Make()));
    EXPECT_EQ(Write_Solid(design, {.thickness = 20.0, .groove = true, .groove_depth = 5.0}, Path("no.step"), report),
              "A flat face runs in no track.");
}

// A roller too large for its lift leaves a surface that is cut away.
TEST_F(Solids, are_refused_where_the_cam_must_not_be_cut)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.cam.Follow_Rad = 55.0;
    ASSERT_TRUE(Run_Size(design));
    Solid_Report report;
    const std::string refusal = Write_Solid(design, {.thickness = 20.0}, Path("no.step"), report);
    EXPECT_EQ(refusal.substr(0, 20), "Do not cut this cam:") << refusal;
    // Told to make it in spite of that, the checker of the body has the last word.
    const std::string still =
        Write_Solid(design, {.thickness = 20.0, .though_do_not_cut = true}, Path("no.step"), report);
    EXPECT_NE(still.find("No file is written."), std::string::npos) << still;
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

// On a steep slope the two rollers of a rib come as near to each other as they do along its normal.
TEST_F(Solids, of_a_rib_are_refused_where_its_rollers_meet)
{
    for (const char* const body : {"Barrel", "Linear"}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = body, .lift = 60.0}.Make()));
        design.cam.Barrel_Type = "Ribbed";
        const Solid_Options thin{.thickness = 20.0, .groove_depth = 5.0, .rib_width = 1.0, .though_do_not_cut = true};
        Solid_Report report;
        EXPECT_EQ(Write_Solid(design, thin, Path("no.step"), report).substr(0, 6), "A rib ");
        Solid_Options wide = thin;
        wide.rib_width = 30.0;
        EXPECT_EQ(Write_Solid(design, wide, Path("cam.step"), report), "");
    }
}

// A drum's wall with a corner is no roller's.
TEST_F(Solids, of_a_drum_are_refused_where_the_velocity_jumps)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    Pick_Program(design, 1, "C2");
    Pick_Program(design, 3, "C1");
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
    ASSERT_TRUE(Run_Size(design));
    Solid_Report report;
    const std::string refusal =
        Write_Solid(design, {.groove_depth = 10.0, .though_do_not_cut = true}, Path("no.step"), report);
    EXPECT_NE(refusal.find("velocity jumps at"), std::string::npos) << refusal;
}

}  // namespace
}  // namespace lobemax
