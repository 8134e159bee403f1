// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/gcode.h"

#include <algorithm>
#include <cmath>

#include "tests/support/gcode_interpreter.h"
#include "tests/support/script.h"
#include "tests/support/truth_design.h"
#include "truth/retrace.h"

namespace lobemax {
namespace {

using testing::Gcode_Interpreter;
using testing::Tool_Move;
using testing::Truth_Maker;

constexpr double pi = 3.14159265358979323846;

/// Moves with feed between two rapid ones: a pass with its lead-in and lead-out.
std::vector<std::vector<Tool_Move>> Passes_of(const std::vector<Tool_Move>& moves)
{
    std::vector<std::vector<Tool_Move>> passes;
    bool open = false;
    for (const Tool_Move& move : moves) {
        if (move.rapid) {
            open = false;
            continue;
        }
        if (!open)
            passes.emplace_back();
        open = true;
        passes.back().push_back(move);
    }
    return passes;
}

/// The closed part of a pass: from a place on until the tool is there again.
std::vector<Tool_Move> Closed_Part(const std::vector<Tool_Move>& pass)
{
    for (std::size_t i = 0; i < pass.size(); ++i)
        for (std::size_t k = pass.size(); k-- > i + 2;) {
            const double apart = std::hypot(pass[k].to[0] - pass[i].from[0], pass[k].to[1] - pass[i].from[1]);
            const double deep = std::abs(pass[k].to[2] - pass[i].from[2]);
            if (apart < 1e-9 && deep < 1e-9)
                return {pass.begin() + static_cast<std::ptrdiff_t>(i),
                        pass.begin() + static_cast<std::ptrdiff_t>(k) + 1};
        }
    return {};
}

struct Cut {
    double scale = 1.0;   // of the program in mm
    double radius = 0.0;  // of the tool, mm
    bool right = true;    // the side of the tool's way on which the material lies
    bool mirrored = false;

    Vector Place(double x, double y) const { return {mirrored ? -x * scale : x * scale, y * scale}; }
    /// Where the tool touches what it leaves, at a share of a move.
    Vector Edge(const Tool_Move& move, double share) const
    {
        double x = 0.0;
        double y = 0.0;
        double dx = 0.0;
        double dy = 0.0;
        move.At(share, x, y, dx, dy);
        const double r = (right ? radius : -radius) / scale;
        return Place(x + r * dy, y - r * dx);
    }
};

/// The surface that the tool leaves: its path aside by its radius, lines that cross cut off where they do.
Surface_Path Surface_Left(const std::vector<Tool_Move>& path, const Cut& cut)
{
    std::vector<Surface_Element> elements;
    for (const Tool_Move& move : path) {
        double bulge = move.arc ? std::tan(move.Turn() / 4.0) : 0.0;
        elements.push_back({cut.Edge(move, 0.0), cut.Edge(move, 1.0), cut.mirrored ? -bulge : bulge});
    }
    const std::size_t count = elements.size();
    std::vector<Surface_Element> whole;
    for (std::size_t i = 0; i < count; ++i) {
        Surface_Element& here = elements[i];
        Surface_Element& next = elements[(i + 1) % count];
        const Vector a = here.to - here.from;
        const Vector b = next.to - next.from;
        const Vector gap = next.from - here.to;
        const double cross = Cross(a, b);
        if (here.bulge == 0.0 && next.bulge == 0.0 && Dot(gap, a) < 0.0 && cross != 0.0) {
            const double t = Cross(next.from - here.from, b) / cross;
            here.to = here.from + t * a;
            next.from = here.to;
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        whole.push_back(elements[i]);
        const Surface_Element& next = elements[(i + 1) % count];
        if (Length(next.from - elements[i].to) > 1e-12)
            whole.push_back({elements[i].to, next.from, 0.0});
    }
    return Surface_Path(std::move(whole));
}

std::vector<double> Angles(double step)
{
    std::vector<double> angles;
    for (double theta = 0.1; theta < 360.0; theta += step)
        angles.push_back(theta);
    return angles;
}

/// What an error of the surface may be worth in displacement, at an angle: over the cosine of the pressure angle, of an
/// arm over its length.
double Worth(const True_Cam& cam, double theta)
{
    const True_Point p = cam.At(theta);
    const Mechanism& m = cam.Follower();
    if (!m.roller)
        return m.arm ? 1.0 / std::abs(p.along) : 1.0;
    const double cosine = std::cos(p.Phi * pi / 180.0);
    return 1.0 / (m.arm ? std::abs(cosine) * m.arm_length : std::abs(cosine));
}

void Expect_Lift(const True_Cam& cam, const Surface_Path& surface, double tolerance)
{
    const std::vector<double> angles = Angles(0.7);
    const Retraced lift = Retrace(cam, surface, angles);
    double worst = 0.0;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const double error = std::abs(lift.s[i] - cam.Motion().At(angles[i]).s);
        worst = std::max(worst, error / Worth(cam, angles[i]));
    }
    EXPECT_LT(worst, 1.02 * tolerance) << "retraced, across the surface";
    EXPECT_GT(worst, 1e-9);
}

/// Nearest distances from a place to the true surface.
class Surface_Cloud {
public:
    explicit Surface_Cloud(const True_Cam& cam)
    {
        for (double theta = 0.0; theta < 360.0; theta += 0.1) {
            const True_Point p = cam.At(theta);
            points_.push_back(p.surface);
            normals_.push_back(cam.Follower().side * p.normal);
        }
    }
    double From(Vector place) const
    {
        double least = 1e30;
        for (const Vector& p : points_)
            least = std::min(least, Square(p - place));
        return std::sqrt(least);
    }
    /// Signed distance of a place near the surface, positive in the free.
    double Height(Vector place) const
    {
        std::size_t nearest = 0;
        for (std::size_t i = 1; i < points_.size(); ++i)
            if (Square(points_[i] - place) < Square(points_[nearest] - place))
                nearest = i;
        return Dot(place - points_[nearest], normals_[nearest]);
    }
    double Around() const
    {
        double length = 0.0;
        for (std::size_t i = 0; i < points_.size(); ++i)
            length += Length(points_[(i + 1) % points_.size()] - points_[i]);
        return length;
    }

private:
    std::vector<Vector> points_;
    std::vector<Vector> normals_;
};

std::vector<Truth_Maker> Disk_Cams()
{
    return {
        {.rot = -1},
        {.rot = 1, .offset = 7.0},
        {.rot = -1, .In_Out = 1},
        {.rot = 1, .In_Out = 1, .offset = -7.0},
        {.flat = true, .rot = -1},
        {.flat = true, .rot = 1},
        {.arm = true, .rot = -1, .dir = 1},
        {.arm = true, .rot = 1, .dir = -1, .In_Out = 1},
        {.arm = true, .flat = true, .rot = 1, .dir = 1, .offset = 5.0, .ArmX = 110.0, .lift = 6.0},
    };
}

class Contours : public ::testing::Test {
protected:
    testing::Script script_;
};

// The surface that the tool leaves moves the follower as the design wants, within the tolerance; the contact passes
// over it at the wanted feed; nothing is cut that has to stay.
TEST_F(Contours, give_back_the_lift_at_a_constant_feed)
{
    for (const Truth_Maker& maker : Disk_Cams()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const Surface_Cloud cloud(cam);
        for (const bool climb : {true, false}) {
            Contour_Options options;
            options.climb = climb;
            options.tolerance = 0.004;
            options.tool_radius = 6.0;
            const Machine_File file = Contour_Program(design, options);
            ASSERT_EQ(file.refusal, "");
            EXPECT_LE(file.largest_deviation, 0.004);
            EXPECT_GT(file.largest_deviation, 1e-4);
            Gcode_Interpreter control;
            const std::vector<std::vector<Tool_Move>> passes = Passes_of(control.Run(file.text));
            ASSERT_EQ(passes.size(), 1U);
            const std::vector<Tool_Move> contour = Closed_Part(passes[0]);
            ASSERT_GT(contour.size(), 10U);
            EXPECT_LT(contour.size(), 200U);
            const Cut cut{.radius = 6.0, .right = climb};
            Expect_Lift(cam, Surface_Left(contour, cut), 0.004);

            double minutes = 0.0;
            for (const Tool_Move& move : contour) {
                minutes += move.Plane_Length() / move.feed;
                // The edge's way over the time that the centre takes for its own.
                constexpr double h = 1e-4;
                const double edge = Length(cut.Edge(move, 0.5 + h) - cut.Edge(move, 0.5 - h));
                EXPECT_NEAR(edge / (2.0 * h * move.Plane_Length() / move.feed), 200.0, 2.0);
            }
            EXPECT_NEAR(cloud.Around() / minutes, 200.0, 0.4);
            for (const Tool_Move& move : passes[0])
                for (const double share : {0.0, 0.3, 0.7}) {
                    double x = 0.0;
                    double y = 0.0;
                    double dx = 0.0;
                    double dy = 0.0;
                    move.At(share, x, y, dx, dy);
                    EXPECT_GT(cloud.From({x, y}), 6.0 - 0.0045);
                }
        }
    }
}

TEST_F(Contours, of_straight_moves_in_inches_seen_from_the_back)
{
    for (const Truth_Maker& maker : {Truth_Maker{.rot = 1}, Truth_Maker{.rot = -1, .In_Out = 1}}) {
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        Contour_Options options;
        options.unit = Program_Unit::inch;
        options.arcs = false;
        options.from_back = true;
        options.tolerance = 0.0002;
        options.tool_radius = 0.25;
        options.feed = 8.0;
        options.lead_size = 0.125;
        options.clearance = 0.1;
        options.safe_height = 1.0;
        options.depth = 0.4;
        const Machine_File file = Contour_Program(design, options);
        ASSERT_EQ(file.refusal, "");
        EXPECT_EQ(file.arcs, 0);
        Gcode_Interpreter control;
        const std::vector<std::vector<Tool_Move>> passes = Passes_of(control.Run(file.text));
        EXPECT_TRUE(control.Inch());
        ASSERT_EQ(passes.size(), 1U);
        const std::vector<Tool_Move> contour = Closed_Part(passes[0]);
        EXPECT_EQ(static_cast<int>(contour.size()), file.lines);
        double minutes = 0.0;
        for (const Tool_Move& move : contour) {
            EXPECT_FALSE(move.arc);
            minutes += move.Plane_Length() / move.feed;
        }
        EXPECT_NEAR(Surface_Cloud(cam).Around() / 25.4 / minutes, 8.0, 0.04);
        const Cut cut{.scale = 25.4, .radius = 6.35, .right = true, .mirrored = true};
        Expect_Lift(cam, Surface_Left(contour, cut), 25.4 * 0.0002);
    }
}

// With compensation in the control the same tool's centre comes out, on either side of the contour.
TEST_F(Contours, may_leave_the_radius_to_the_control)
{
    for (const bool climb : {true, false}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = -1, .offset = 5.0}.Make()));
        const True_Cam cam(design);
        Contour_Options options;
        options.offset = Radius_Offset::in_control;
        options.offset_number = 7;
        options.climb = climb;
        options.lead_size = 8.0;
        const Machine_File file = Contour_Program(design, options);
        ASSERT_EQ(file.refusal, "");
        EXPECT_NE(file.text.find(climb ? "G41 D7" : "G42 D7"), std::string::npos);
        Gcode_Interpreter control({{7, 5.0}});
        const auto passes = Passes_of(control.Run(file.text));
        ASSERT_EQ(passes.size(), 1U);
        // The contour is closed, its compensated path too but for the last digit.
        std::vector<Tool_Move> contour;
        for (const Tool_Move& move : passes[0])
            if (move.compensated != 40 && move.to[2] == move.from[2])
                contour.push_back(move);
        ASSERT_GT(contour.size(), 10U);
        contour.erase(contour.begin(), contour.begin() + 3);  // approach, two arcs of the lead-in
        contour.resize(contour.size() - 2);
        const Cut cut{.radius = 5.0, .right = climb};
        Expect_Lift(cam, Surface_Left(contour, cut), 0.005 + 4e-4);
        for (const Tool_Move& move : contour) {
            constexpr double h = 1e-4;
            const double edge = Length(cut.Edge(move, 0.5 + h) - cut.Edge(move, 0.5 - h));
            EXPECT_NEAR(edge / (2.0 * h * move.Plane_Length() / move.feed), 200.0, 2.0);
        }
        options.lead_size = 5.0;
        EXPECT_NE(Contour_Program(design, options).refusal.find("must exceed the tool's"), std::string::npos);
        options.lead = Lead::ramp;
        EXPECT_NE(Contour_Program(design, options).refusal.find("A ramp needs"), std::string::npos);
    }
}

// Roughing leaves what it says, everywhere, in every step of depth; no pass takes more than was left for it.
TEST_F(Contours, are_roughed_in_passes_and_steps_of_depth)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = 1}.Make()));
    const True_Cam cam(design);
    const Surface_Cloud cloud(cam);
    Contour_Options options;
    options.stock = 4.0;
    options.finish = 0.5;
    options.passes = 4;
    options.depth = 12.0;
    options.depth_step = 5.0;
    options.lead_size = 5.0;
    const Machine_File file = Contour_Program(design, options);
    ASSERT_EQ(file.refusal, "");
    Gcode_Interpreter control;
    const auto passes = Passes_of(control.Run(file.text));
    // 4 - 3.5 / 3 k: three roughing passes at each of three depths, then the last.
    ASSERT_EQ(passes.size(), 10U);
    const Cut cut{.radius = 5.0};
    for (std::size_t i = 0; i < passes.size(); ++i) {
        const bool last = i == 9;
        const double left = last ? 0.0 : 4.0 - 3.5 / 3.0 * static_cast<double>(i % 3 + 1);
        const double depth = last ? 12.0 : 4.0 * static_cast<double>(i / 3 + 1);
        const std::vector<Tool_Move> contour = Closed_Part(passes[i]);
        ASSERT_FALSE(contour.empty());
        for (const Tool_Move& move : contour) {
            EXPECT_EQ(move.from[2], -depth);
            for (const double share : {0.0, 0.5})
                EXPECT_NEAR(cloud.Height(cut.Edge(move, share)), left, 0.0055);
        }
        for (const Tool_Move& move : passes[i]) {
            double x = 0.0;
            double y = 0.0;
            double dx = 0.0;
            double dy = 0.0;
            move.At(0.5, x, y, dx, dy);
            EXPECT_GT(cloud.From({x, y}), 5.0 + left - 0.0055);
        }
    }
    options.lead_size = 1.1;
    EXPECT_NE(Contour_Program(design, options).refusal.find("does not clear"), std::string::npos);
}

TEST_F(Contours, enter_in_the_middle_of_the_longest_dwell)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = -1}.Make()));
    // Dwells: 110 to 170, and 290 to 360.
    Contour_Options options;
    const Machine_File file = Contour_Program(design, options);
    EXPECT_TRUE(file.notes.empty());
    Gcode_Interpreter control;
    const std::vector<Tool_Move> contour = Closed_Part(Passes_of(control.Run(file.text)).at(0));
    const double entry = std::atan2(contour[0].from[1], contour[0].from[0]) * 180.0 / pi;
    EXPECT_NEAR(std::fmod(entry + 360.0, 360.0), 325.0, 1e-3);  // a clockwise cam's points go counterclockwise
    EXPECT_NEAR(std::hypot(contour[0].from[0], contour[0].from[1]), 60.0 - 12.0 + 5.0, 1e-4);
    EXPECT_NEAR(contour[0].cx, 0.0, 2e-4);
    EXPECT_NEAR(contour[0].cy, 0.0, 2e-4);
}

// A ramp goes down along the dwell and up again; between both the tool stays at its depth and comes round.
TEST_F(Contours, may_be_entered_by_a_ramp)
{
    for (const bool climb : {true, false}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.rot = 1}.Make()));
        const True_Cam cam(design);
        Contour_Options options;
        options.lead = Lead::ramp;
        options.lead_size = 15.0;
        options.climb = climb;
        const Machine_File file = Contour_Program(design, options);
        ASSERT_EQ(file.refusal, "");
        Gcode_Interpreter control;
        const auto passes = Passes_of(control.Run(file.text));
        ASSERT_EQ(passes.size(), 1U);
        double down = 0.0;
        double up = 0.0;
        std::vector<Tool_Move> contour;
        double z = 2.0;
        for (const Tool_Move& move : passes[0]) {
            EXPECT_EQ(move.from[2], z);
            z = move.to[2];
            (move.to[2] < move.from[2]   ? down
             : move.to[2] > move.from[2] ? up
                                         : z) += move.to[2] == move.from[2] ? 0.0 : move.Plane_Length();
            if (move.to[2] != move.from[2])
                EXPECT_NEAR(std::hypot(move.to[0], move.to[1]), 53.0, 2e-4);
            else
                contour.push_back(move);
        }
        EXPECT_EQ(z, 2.0);
        EXPECT_NEAR(down, 15.0, 0.01);
        EXPECT_NEAR(up, 15.0, 0.01);
        Expect_Lift(cam, Surface_Left(contour, {.radius = 5.0, .right = climb}), 0.005);
        options.lead_size = 80.0;  // the dwell has 35 degrees of 53 mm to each side
        const Machine_File shortened = Contour_Program(design, options);
        ASSERT_EQ(shortened.notes.size(), 1U);
        EXPECT_EQ(shortened.notes[0], "The ramp is shortened to the dwell.");
    }
}

/// A rise and a fall without a rest.
void Make_Without_Dwell()
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Motion_Group& m = design.motion;
    m.No_of_segments = 2;
    for (const int i : {1, 2}) {
        Pick_Motion(design, i, i == 1 ? 'R' : 'F');
        Pick_Program(design, i, "CF");
        m.Beta_Deg(i) = 180.0F;
        m.Beta_Rad(i) = 180.0 / Deg_per_Rad;
        m.Start_Value(i) = i == 1 ? "0" : "20";
        m.End_Value(i) = i == 1 ? "20" : "0";
    }
    Update_Segment_Angles(design);
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Run_Size(design));
}

TEST_F(Contours, without_a_dwell_tell_where_they_are_entered)
{
    ASSERT_NO_FATAL_FAILURE(Make_Without_Dwell());
    const Machine_File file = Contour_Program(design, {});
    ASSERT_EQ(file.refusal, "");
    ASSERT_EQ(file.notes.size(), 1U);
    EXPECT_EQ(file.notes[0],
              "The motion has no dwell: the tool enters at 0 deg, where the follower moves least, and may leave a mark "
              "there.");
    std::string heads;
    Gcode_Interpreter control;
    control.Run(file.text);
    for (const std::string& comment : control.Comments())
        heads += comment + ' ';
    EXPECT_NE(heads.find("THE MOTION HAS NO DWELL"), std::string::npos);
}

// Around a crest the tool's centre has a longer way than the contact: what is too fast for the machine is told.
TEST_F(Contours, keep_to_the_highest_feed)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    Contour_Options options;
    options.highest_feed = 215.0;
    const Machine_File file = Contour_Program(design, options);
    ASSERT_EQ(file.notes.size(), 1U);
    EXPECT_NE(file.notes[0].find("faster than 215"), std::string::npos);
    Gcode_Interpreter control;
    double fastest = 0.0;
    for (const Tool_Move& move : control.Run(file.text))
        fastest = std::max(fastest, move.rapid ? 0.0 : move.feed);
    EXPECT_EQ(fastest, 215.0);
    options.highest_feed = 199.0;
    EXPECT_NE(Contour_Program(design, options).refusal.find("must not be below the feed"), std::string::npos);
}

TEST_F(Contours, tell_their_values_in_the_head)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.identity.Model_Name = "Rev (2) \xC3\xA4 100%";
    design.identity.Design_No = 17;
    Contour_Options options;
    options.program_number = 42;
    options.line_step = 10;
    options.tool_number = 3;
    options.coolant = true;
    options.spindle = 1800.0;
    const Machine_File file = Contour_Program(design, options);
    ASSERT_EQ(file.refusal, "");
    Gcode_Interpreter control;
    const auto& moves = control.Run(file.text);
    EXPECT_EQ(control.Program_Number(), 42);
    EXPECT_EQ(control.Tool(), 3);
    EXPECT_EQ(control.Speed(), 1800.0);
    EXPECT_TRUE(control.Coolant_Was_On());
    EXPECT_EQ(control.Last_Line_Number() % 10, 0);
    EXPECT_GT(control.Last_Line_Number(), 200);
    for (const Tool_Move& move : moves)
        EXPECT_TRUE(move.spindle);
    std::string head;
    for (const std::string& comment : control.Comments())
        head += comment + ' ';
    for (const char* const part :
         {"MODEL: REV  2    100 ", "DESIGN: 17", "LENGTHS IN MM", "TOLERANCE 0.005 MM, LARGEST DEVIATION 0.00",
          "TOOL RADIUS 5 MM", "CLIMB MILLING", "SPINDLE 1800 RPM", "COOLANT ON", "TOOL 3",
          "LEAD-IN BY AN ARC OF RADIUS 3", "DATE: ", "ARCS", "FEED OF THE CONTACT 200"})
        EXPECT_NE(head.find(part), std::string::npos) << part << " in " << head;
    // The same input gives the same bytes.
    EXPECT_EQ(Contour_Program(design, options).text, file.text);
}

TEST_F(Contours, are_refused_with_a_sentence)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.In_Out = 1}.Make()));
    Contour_Options options;
    options.tool_radius = 75.0;
    options.cut_anyway = true;
    EXPECT_NE(Contour_Program(design, options).refusal.find("does not go into the hollow of radius"),
              std::string::npos);
    options.cut_anyway = false;
    EXPECT_NE(Contour_Program(design, options).refusal.find("hollow"), std::string::npos);
    options.tool_radius = 5.0;
    options.lead_size = 70.0;
    EXPECT_NE(Contour_Program(design, options).refusal.find("cuts into the cam"), std::string::npos);

    // A roller of 40 on a cam whose centre path turns more tightly.
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.lift = 40.0}.Make()));
    design.cam.Follow_Rad = 55.0F;
    Run_Size(design);
    const Machine_File undercut = Contour_Program(design, {});
    EXPECT_NE(undercut.refusal.find("Do not cut this cam: "), std::string::npos);
    EXPECT_EQ(undercut.text, "");
    options = {};
    options.cut_anyway = true;
    EXPECT_NE(Contour_Program(design, options).refusal.find("The cam is undercut at"), std::string::npos);

    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Barrel"}.Make()));
    EXPECT_NE(Contour_Program(design, {}).refusal.find("rotary axis"), std::string::npos);
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    EXPECT_NE(Drum_Program(design, {}).refusal.find("barrel"), std::string::npos);
    const auto refused = [](auto change) {
        Contour_Options wrong;
        change(wrong);
        return !Contour_Program(design, wrong).refusal.empty();
    };
    EXPECT_TRUE(refused([](auto& o) { o.tolerance = 0.00001; }));
    EXPECT_TRUE(refused([](auto& o) { o.tolerance = std::nan(""); }));
    EXPECT_TRUE(refused([](auto& o) { o.tolerance = 50.0; }));
    Contour_Options coarse;
    coarse.tolerance = 50.0;
    EXPECT_NE(Contour_Program(design, coarse).refusal.find("No arcs follow"), std::string::npos);
    EXPECT_TRUE(refused([](auto& o) { o.feed = 0.0; }));
    EXPECT_TRUE(refused([](auto& o) { o.tool_radius = -1.0; }));
    EXPECT_TRUE(refused([](auto& o) { o.finish = 1.0; }));
    EXPECT_TRUE(refused([](auto& o) { o.passes = 0; }));
    EXPECT_TRUE(refused([](auto& o) { o.depth_step = 1e-9; }));
    EXPECT_TRUE(refused([](auto& o) { o.safe_height = 1.0; }));
    EXPECT_TRUE(refused([](auto& o) { o.program_number = 10000; }));
    EXPECT_FALSE(refused([](auto&) {}));
    Initialize(design);
    EXPECT_FALSE(Contour_Program(design, {}).refusal.empty());
}

// Whatever is chosen, a control runs the program, its arcs have one radius each, and it keeps to the tolerance.
TEST_F(Contours, run_on_a_control_whatever_is_chosen)
{
    int made = 0;
    for (const Truth_Maker& maker : Disk_Cams()) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        for (int bits = made % 5; bits < 64; bits += 5) {
            SCOPED_TRACE(bits);
            Contour_Options options;
            const bool inch = (bits & 1) != 0;
            const double k = inch ? 1.0 / 25.4 : 1.0;
            options.unit = inch ? Program_Unit::inch : Program_Unit::mm;
            options.arcs = (bits & 2) != 0;
            options.climb = (bits & 4) != 0;
            options.from_back = (bits & 8) != 0;
            options.lead = (bits & 16) != 0 ? Lead::ramp : Lead::arc;
            options.offset =
                bits >= 32 && options.lead == Lead::arc ? Radius_Offset::in_control : Radius_Offset::in_path;
            options.tolerance = 0.002 * k;
            options.tool_radius = 3.0 * k;
            options.lead_size = 4.0 * k;
            options.stock = 3.0 * k;
            options.finish = 0.2 * k;
            options.passes = 3;
            options.cut_anyway = true;
            const Machine_File file = Contour_Program(design, options);
            ASSERT_EQ(file.refusal, "");
            EXPECT_LE(file.largest_deviation, options.tolerance);
            Gcode_Interpreter control({{1, options.tool_radius}});
            EXPECT_NO_THROW(control.Run(file.text));
            ++made;
        }
    }
    EXPECT_GT(made, 100);
}

class Drums : public Contours {};

// Taken off the machine the blocks' ends are the roller's centre on the drum, and so is what lies between them.
TEST_F(Drums, follow_the_roller_centre)
{
    for (const Truth_Maker& maker :
         {Truth_Maker{.Camtype = "Barrel", .rot = 1}, Truth_Maker{.Camtype = "Barrel", .rot = -1, .Top_Bot = -1},
          Truth_Maker{.Camtype = "Barrel", .arm = true, .rot = -1, .ArmX = 100.0, .ArmY = 0.0, .ArmRad = 100.0},
          Truth_Maker{
              .Camtype = "Barrel", .arm = true, .rot = 1, .dir = -1, .ArmX = -100.0, .ArmY = 0.0, .ArmRad = 100.0}}) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        const True_Cam cam(design);
        const double prime = cam.Follower().prime;
        for (const bool reverse : {false, true}) {
            Drum_Options options;
            options.depth = 9.0;
            options.depth_step = 4.0;
            options.reverse_rotary = reverse;
            const Machine_File file = Drum_Program(design, options);
            ASSERT_EQ(file.refusal, "");
            EXPECT_LE(file.largest_deviation, 0.005);
            Gcode_Interpreter control;
            const auto passes = Passes_of(control.Run(file.text));
            ASSERT_EQ(passes.size(), 1U);
            const double sense = maker.rot * (reverse ? -1.0 : 1.0);
            double worst = 0.0;
            double way = 0.0;
            double minutes = 0.0;
            for (const Tool_Move& move : passes[0]) {
                ASSERT_TRUE(move.inverse);
                EXPECT_GT(sense * (move.to[3] - move.from[3]), 0.0);  // never back
                EXPECT_LE(move.to[2], move.from[2]);
                for (const double share : {0.0, 0.25, 0.5, 0.75}) {
                    double at[4];
                    for (int k = 0; k < 4; ++k)
                        at[k] = move.from[k] + share * (move.to[k] - move.from[k]);
                    const double theta = sense * at[3];
                    // On the drum unrolled: along = prime (theta + atan(lateral / prime)).
                    const double around = prime * (theta * pi / 180.0 + std::atan2(maker.rot * at[1], prime));
                    const Vector center = cam.At(theta).center;
                    worst = std::max(worst, std::hypot(around - center.x, at[0] - center.y));
                }
                const Vector from = cam.At(sense * move.from[3]).center;
                const Vector to = cam.At(sense * move.to[3]).center;
                const double step = std::hypot(Length(to - from), move.to[2] - move.from[2]);
                if (move.to[2] == move.from[2] && step < 2.0) {
                    EXPECT_NEAR(step * move.feed, 200.0, 0.5);
                }
                way += step;
                minutes += 1.0 / move.feed;
            }
            EXPECT_LT(worst, 0.0052);
            EXPECT_GT(worst, 1e-4);
            EXPECT_NEAR(way / minutes, 200.0, 1.0);
            // Three depths, each a turn, and the last ramp once more.
            EXPECT_NEAR(std::abs(passes[0].back().to[3] - passes[0].front().from[3]), 3 * 360.0 + 10.0, 1e-3);
            EXPECT_EQ(passes[0].back().to[2], -9.0);
            std::string head;
            for (const std::string& comment : control.Comments())
                head += comment + ' ';
            EXPECT_NE(head.find(maker.rot > 0 ? "TURNS COUNTERCLOCKWISE" : "TURNS CLOCKWISE"), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace lobemax
