// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "camgeom/arm.h"
#include "camgeom/sizing.h"
#include "core/startup.h"
#include "core/variables.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "linkage/linkage_kinematics.h"
#include "tests/support/recording_surface.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Recording_Surface;

/// Also writes down in which order the inks come, and what of it is no number.
class Ordered_Surface : public Recording_Surface {
public:
    void Clear() override
    {
        Recording_Surface::Clear();
        order.clear();
        finite = true;
    }
    void Line(double x1, double y1, double x2, double y2, Ink ink) override
    {
        Recording_Surface::Line(x1, y1, x2, y2, ink);
        Take(ink, {x1, y1, x2, y2});
    }
    void Circle(double x, double y, double radius, Ink ink) override
    {
        Recording_Surface::Circle(x, y, radius, ink);
        Take(ink, {x, y, radius});
    }
    void Outline(std::span<const World_Point> points, Ink ink) override
    {
        Recording_Surface::Outline(points, ink);
        for (const World_Point& p : points)
            Take(ink, {p.x, p.y});
    }
    void Label(double x, double y, std::string_view text, Ink ink) override
    {
        Recording_Surface::Label(x, y, text, ink);
        Take(ink, {x, y});
        if (first_label == 0)
            first_label = order.size();
    }

    /// Where an ink comes first and last; both -1 where it does not.
    std::ptrdiff_t First(Ink ink) const
    {
        const auto at = std::ranges::find(order, ink);
        return at == order.end() ? -1 : at - order.begin();
    }
    std::ptrdiff_t Last(Ink ink) const
    {
        for (auto k = static_cast<std::ptrdiff_t>(order.size()) - 1; k >= 0; --k)
            if (order[static_cast<std::size_t>(k)] == ink)
                return k;
        return -1;
    }

    std::vector<Ink> order;
    std::size_t first_label = 0;
    bool finite = true;

private:
    void Take(Ink ink, std::initializer_list<double> numbers)
    {
        order.push_back(ink);
        for (const double number : numbers)
            finite = finite && std::isfinite(number);
    }
};

constexpr std::array trains{"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"};

class Linkage_Drawing : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    /// An example in mm, sized; its links as they are then changed are not yet calculated.
    static void Make(const char* train)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Load_Example(design, train));
        ASSERT_TRUE(Calculate_Example(design));
        ASSERT_TRUE(Run_Size(design));
    }
    static void Set(const char* field, double value) { ASSERT_TRUE(Put(design, field, value)) << field; }
    World_Point In_Machine(World_Point drawn) const { return {drawn.x, design.cam.Flip_Y - drawn.y}; }
    /// The pin circles of an ink in the order in which they were drawn.
    std::vector<World_Point> Pins(Ink ink) const
    {
        std::vector<World_Point> pins;
        for (const auto& circle : surface_.circles)
            if (circle.ink == ink)
                pins.push_back(In_Machine({circle.x, circle.y}));
        return pins;
    }
    bool Has_Pin(Ink ink, double x, double y) const
    {
        return std::ranges::any_of(Pins(ink), [&](World_Point p) { return std::hypot(p.x - x, p.y - y) < 1e-3; });
    }
    bool Has_Label(const char* text) const
    {
        return std::ranges::any_of(surface_.labels, [&](const auto& label) { return label.text == text; });
    }
    static double Distance(World_Point a, World_Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

    Ordered_Surface surface_;
    testing::Script script_;
};

TEST_F(Linkage_Drawing, joints_stand_where_the_train_has_them)
{
    for (const char* train : trains) {
        Make(train);
        const double rest = Arm_Angle_at_Rest(design);
        const Linkage_Train links(design);
        for (const int i : {0, 30, 45, 90, 200, 300, 360}) {
            ASSERT_TRUE(Draw_Linkage_at(design, surface_, i)) << train << i;
            const Train_Pose pose = links.At(Input_at(design, rest, i));
            ASSERT_TRUE(pose.Connects());
            for (const int p : {link_point::A, link_point::B, link_point::C}) {
                if (p == link_point::C && !Six_Links(design))
                    continue;
                const World_Point at = pose.point[static_cast<std::size_t>(p)];
                EXPECT_TRUE(Has_Pin(Ink::link, at.x, at.y)) << train << " point " << p << " at " << i;
            }
        }
    }
}

TEST_F(Linkage_Drawing, pins_are_as_far_apart_as_the_links_are_long)
{
    Make("6-bar Linkage");
    Set("Link 4a", 80);
    Set("Delta4", -40);
    Set("Link 5", 150);
    const Linkage_Group& k = design.linkage;
    for (const int i : {0, 60, 230}) {
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        // Link 2: pivot, A. Stage: A, B, O4, D. Stage: D, C, O6.
        const std::vector<World_Point> p = Pins(Ink::link);
        ASSERT_EQ(p.size(), 9U);
        EXPECT_NEAR(Distance(p[0], p[1]), k.Link_2, 1e-3);
        EXPECT_NEAR(Distance(p[2], p[3]), k.Link_3, 1e-3);
        EXPECT_NEAR(Distance(p[3], p[4]), k.Link_4, 1e-3);
        EXPECT_NEAR(Distance(p[4], p[5]), k.Link_4a, 1e-3);
        EXPECT_NEAR(Distance(p[6], p[7]), k.Link_5, 1e-3);
        EXPECT_NEAR(Distance(p[7], p[8]), k.Link_6, 1e-3);
        EXPECT_NEAR(Distance(p[1], p[2]), 0.0, 1e-9);
        EXPECT_NEAR(Distance(p[5], p[6]), 0.0, 1e-9);
        // D stands at Delta4 from the line O4 to B.
        const double to_B = std::atan2(p[3].y - p[4].y, p[3].x - p[4].x);
        const double to_D = std::atan2(p[5].y - p[4].y, p[5].x - p[4].x);
        EXPECT_NEAR(std::remainder(to_D - to_B, PI2), -40 * Rad_per_Deg, 1e-5);
    }
}

TEST_F(Linkage_Drawing, a_bar_reaches_as_far_beyond_both_of_its_pins_as_it_is_wide)
{
    Make("4-bar Linkage");
    ASSERT_TRUE(Draw_Linkage_at(design, surface_, 45));
    std::vector<double> longest;
    std::vector<double> beyond;
    for (const auto& outline : surface_.outlines) {
        if (outline.ink != Ink::link)
            continue;
        double most = 0.0;
        for (const World_Point& a : outline.points)
            for (const World_Point& b : outline.points)
                most = std::max(most, Distance(a, b));
        longest.push_back(most);
    }
    const Linkage_Group& k = design.linkage;
    ASSERT_EQ(longest.size(), 3U);
    for (const auto& [length, link] : {std::pair{longest[0], k.Link_2}, {longest[1], k.Link_3}, {longest[2], k.Link_4}})
        beyond.push_back(length - link);
    for (const double width : beyond) {
        EXPECT_GT(width, 0.0);
        EXPECT_NEAR(width, beyond[0], beyond[0] * 0.01);  // circles of 24 sides
    }
}

TEST_F(Linkage_Drawing, a_stephenson_couplers_triangle_bears_the_second_stage)
{
    Make("6-bar Linkage");
    ASSERT_TRUE(Put(design, "Stage_Mode", "S"));
    Set("Link 4a", 90);
    Set("Delta4", 35);
    Set("Link 5", 190);
    Set("Link 6", 150);
    ASSERT_TRUE(Draw_Linkage_at(design, surface_, 120));
    const std::vector<World_Point> p = Pins(Ink::link);
    ASSERT_EQ(p.size(), 9U);  // pivot, A; A, B, D, O4; D, C, O6
    EXPECT_NEAR(Distance(p[2], p[4]), 90, 1e-3);
    const double to_B = std::atan2(p[3].y - p[2].y, p[3].x - p[2].x);
    const double to_D = std::atan2(p[4].y - p[2].y, p[4].x - p[2].x);
    EXPECT_NEAR(std::remainder(to_D - to_B, PI2), 35 * Rad_per_Deg, 1e-5);
    EXPECT_NEAR(Distance(p[6], p[7]), 190, 1e-3);
}

TEST_F(Linkage_Drawing, the_window_is_square_and_holds_every_position)
{
    for (const char* train : trains) {
        Make(train);
        for (const double zoom : {1.0, 1.5}) {
            design.cam.Zoom_Factor = zoom;
            for (int i = 0; i <= 360; i += 15) {
                ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
                EXPECT_TRUE(surface_.finite);
                EXPECT_EQ(surface_.left, surface_.top);
                EXPECT_EQ(surface_.right, surface_.bottom);
                const auto inside = [&](double x, double y, double about = 0.0) {
                    return x - about >= surface_.left && x + about <= surface_.right && y - about >= surface_.top &&
                           y + about <= surface_.bottom;
                };
                for (const auto& circle : surface_.circles)
                    EXPECT_TRUE(inside(circle.x, circle.y, circle.radius)) << train << i;
                for (const auto& line : surface_.lines)
                    EXPECT_TRUE(inside(line.x1, line.y1) && inside(line.x2, line.y2)) << train << i;
                for (const auto& outline : surface_.outlines)
                    for (const World_Point& p : outline.points)
                        EXPECT_TRUE(inside(p.x, p.y)) << train << i;
                for (const auto& label : surface_.labels)
                    EXPECT_TRUE(inside(label.x, label.y)) << train << label.text;
            }
        }
    }
}

TEST_F(Linkage_Drawing, the_window_holds_the_arm_of_a_conjugate_and_a_flat_face)
{
    const auto holds_the_follower = [&] {
        for (int i = 0; i <= 360; i += 30) {
            ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
            EXPECT_TRUE(surface_.finite);
            for (const auto& circle : surface_.circles)
                EXPECT_GE(circle.y - circle.radius, surface_.top) << i;
            for (const auto& line : surface_.lines)
                for (const double x : {line.x1, line.x2, line.y1, line.y2}) {
                    EXPECT_GE(x, surface_.left) << i;
                    EXPECT_LE(x, surface_.right) << i;
                }
        }
    };
    Make("4-bar Linkage");
    ASSERT_TRUE(Use_Conjugate(design));
    holds_the_follower();
    Make("4-bar Linkage");
    ASSERT_TRUE(Put(design, "Followtype", 2));
    ASSERT_TRUE(Run_Size(design));
    holds_the_follower();
}

TEST_F(Linkage_Drawing, the_scene_stands_still_while_the_cam_turns)
{
    Make("6-bar Slider");
    ASSERT_TRUE(Link_Anim_Setup(design, surface_));
    const double left = surface_.left;
    const double flip = design.cam.Flip_Y;
    for (const int i : {0, 90, 360}) {
        ASSERT_TRUE(Link_Anim_Frame(design, surface_, i));
        EXPECT_EQ(surface_.left, left);
        EXPECT_EQ(design.cam.Flip_Y, flip);
        const auto pivots = Pins(Ink::ground);
        ASSERT_EQ(pivots.size(), 2U);
        EXPECT_NEAR(pivots[0].x, design.cam.ArmX, 1e-3);
        EXPECT_NEAR(pivots[1].y, design.linkage.O4y, 1e-3);
    }
}

TEST_F(Linkage_Drawing, parts_come_from_the_shaft_up_to_the_labels)
{
    Make("6-bar Slider");
    ASSERT_TRUE(Draw_Linkage_at(design, surface_, 100));
    const auto& s = surface_;
    EXPECT_EQ(s.First(Ink::shaft), 0);
    EXPECT_LT(s.Last(Ink::shaft), s.First(Ink::follower));
    EXPECT_LT(s.Last(Ink::follower), s.First(Ink::cam));
    EXPECT_LT(s.Last(Ink::cam), s.First(Ink::ground));
    EXPECT_LT(s.First(Ink::ground), s.First(Ink::link));
    EXPECT_LT(s.First(Ink::link), s.First(Ink::slider));
    EXPECT_LT(s.First(Ink::slider), s.First(Ink::effector));
    EXPECT_LT(s.Last(Ink::effector), static_cast<std::ptrdiff_t>(s.first_label));
    for (const char* label : {"O2", "O4", "A", "C", "2", "3", "4", "5", "6", "B, D"})
        EXPECT_TRUE(Has_Label(label)) << label;
}

TEST_F(Linkage_Drawing, labels_keep_clear_of_one_another)
{
    // Letters of 9 points in a picture of 800: 7 wide, 13 high.
    constexpr double wide = 7.0 / 800;
    constexpr double high = 13.0 / 800;
    for (const char* train : trains) {
        Make(train);
        for (int i = 0; i <= 360; i += 20) {
            ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
            const double size = surface_.right - surface_.left;
            const auto& labels = surface_.labels;
            for (std::size_t a = 0; a < labels.size(); ++a)
                for (std::size_t b = 0; b < a; ++b) {
                    const double room =
                        size * wide * static_cast<double>(labels[a].text.size() + labels[b].text.size()) / 2;
                    EXPECT_TRUE(std::abs(labels[a].x - labels[b].x) >= room ||
                                std::abs(labels[a].y - labels[b].y) >= size * high)
                        << train << i << labels[a].text << " on " << labels[b].text;
                }
        }
    }
}

TEST_F(Linkage_Drawing, the_block_rides_on_its_axis_and_its_guide_holds_the_travel)
{
    Make("6-bar Slider");
    Set("Global_Slider_angle_deg", 150);
    ASSERT_TRUE(Run_Linkage(design));
    const World_Point along{std::cos(150 * Rad_per_Deg), std::sin(150 * Rad_per_Deg)};
    for (const int i : {0, 45, 180}) {
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        const auto block = std::ranges::find(surface_.outlines, Ink::slider, &Recording_Surface::Drawn_Outline::ink);
        ASSERT_NE(block, surface_.outlines.end());
        World_Point middle;
        for (const World_Point& p : block->points) {
            middle.x += p.x / 4;
            middle.y += (design.cam.Flip_Y - p.y) / 4;
        }
        EXPECT_NEAR(middle.x, design.results.Link_X(link_point::C, i), 1e-3);
        EXPECT_NEAR(middle.y, design.results.Link_Y(link_point::C, i), 1e-3);
        // The axis lies Offset6 to the left of O4, seen along it.
        const double across = -(middle.x - design.linkage.O4x) * along.y + (middle.y - design.linkage.O4y) * along.x;
        EXPECT_NEAR(across, design.linkage.Offset6, 1e-3);
        // The longest line along the axis goes over the whole travel.
        double low = 0, high = 0;
        for (const auto& line : surface_.lines) {
            const World_Point a = In_Machine({line.x1, line.y1});
            const World_Point b = In_Machine({line.x2, line.y2});
            const auto place = [&](World_Point p) {
                return (p.x - design.linkage.O4x) * along.x + (p.y - design.linkage.O4y) * along.y;
            };
            if (line.ink == Ink::ground && std::abs(place(b) - place(a)) > high - low) {
                low = std::min(place(a), place(b));
                high = std::max(place(a), place(b));
            }
        }
        for (const Single place : design.results.Link_Theta.Points(6)) {
            EXPECT_GT(place, low);
            EXPECT_LT(place, high);
        }
    }
}

TEST_F(Linkage_Drawing, a_train_that_does_not_connect_is_drawn_in_its_last_pose_as_broken)
{
    Make("4-bar Linkage");
    Set("Link 3", 78.5);
    Set("Link 4", 118.5);
    script_.Expect(
        {"Linkage cannot connect or is indeterminate at Theta2 =  89.43 Degrees\n\n"
         "Choose Abort to terminate further calculations beyond the current position\n\n"
         "Choose Retry to continue calculating the linkage motion and flag new problem positions with this "
         "message\n\n"
         "Choose Ignore to continue calculating, skipping over new problem positions and suppressing "
         "further messages",
         Buttons::Abort_Retry_Ignore, Symbol::exclamation, Answer::Ignore});
    script_.Expect({"The links do not connect at 180 of 361 points.\nThey keep their last position there, at rest.",
                    Buttons::OK, Symbol::exclamation});
    ASSERT_TRUE(Run_Linkage(design));
    // The tables keep the same pose: before the first that connects its own, after one that connects that one.
    for (const int i : {0, 10, 300, 360}) {
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        EXPECT_TRUE(Has_Label("does not connect"));
        for (const int p : {link_point::A, link_point::B})
            EXPECT_TRUE(Has_Pin(Ink::broken, design.results.Link_X(p, i), design.results.Link_Y(p, i))) << i;
        // Link 2 is the arm's own and goes on.
        const auto whole = Pins(Ink::link);
        ASSERT_EQ(whole.size(), 2U);
        EXPECT_NEAR(Distance(whole[0], whole[1]), design.linkage.Link_2, 1e-3);
    }
    for (const int i : {90, 180}) {
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        EXPECT_FALSE(Has_Label("does not connect"));
        EXPECT_EQ(surface_.First(Ink::broken), -1);
    }
}

TEST_F(Linkage_Drawing, a_train_that_never_connects_shows_its_input_and_its_pivots)
{
    for (const char* train : trains) {
        Make(train);
        Set("Link 3", 20);
        Set("S3y", 400);
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, 50));
        EXPECT_TRUE(surface_.finite);
        EXPECT_TRUE(Has_Label("does not connect"));
        EXPECT_TRUE(Has_Label("A"));
        EXPECT_FALSE(Has_Label("B"));
        EXPECT_EQ(Pins(Ink::link).size(), 2U);
        EXPECT_EQ(surface_.First(Ink::effector), -1);
    }
}

TEST_F(Linkage_Drawing, a_driven_end_effector_has_the_arm_at_the_displacement_over_the_ratio)
{
    Make("4-bar Linkage");
    Set("Link 4", 60);
    Set("Link 4a", 60);
    Set("Link 3", 175);
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    ASSERT_TRUE(Run_Size(design));
    const Cam_Group& c = design.cam;
    const World_Point pivot{c.ArmX, c.ArmY};
    double largest = 0.0;
    for (const int i : {0, 20, 45, 70, 130, 200, 250}) {
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        const auto pins = Pins(Ink::link);
        // The roller of the cam's profile, and link 2 in the drawing, stand on one lever.
        const double arm = std::atan2(c.Foll_Y - c.ArmY, c.Foll_X - c.ArmX);
        const double link = std::atan2(pins[1].y - pivot.y, pins[1].x - pivot.x);
        EXPECT_NEAR(std::remainder(arm - link, PI2) * Deg_per_Rad, design.linkage.Delta2, 1e-3) << i;
        EXPECT_NEAR(Distance({c.Foll_X, c.Foll_Y}, pivot), c.ArmRad, 1e-3);
        const double swing = std::remainder(arm * Deg_per_Rad - Arm_Angle_at_Rest(design), 360.0) * c.ArmDirect;
        EXPECT_NEAR(swing, design.results.CalcData(var::S, i) / Link_Ratios(design, i).S, 1e-3) << i;
        largest = std::max(largest, std::abs(swing - design.results.CalcData(var::S, i)));
    }
    EXPECT_GT(largest, 0.005);  // degrees: the ratio tells
}

TEST_F(Linkage_Drawing, the_conjugates_roller_hangs_on_the_same_lever_and_the_links_stand_as_before)
{
    Make("4-bar Linkage");
    for (const int i : {0, 45, 180}) {
        Make("4-bar Linkage");
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        const auto before = Pins(Ink::link);
        const double first_roller = design.cam.Foll_Y;
        ASSERT_TRUE(Use_Conjugate(design));
        ASSERT_TRUE(Draw_Linkage_at(design, surface_, i));
        const auto after = Pins(Ink::link);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t k = 0; k < before.size(); ++k)
            EXPECT_NEAR(Distance(before[k], after[k]), 0.0, 1e-3);
        EXPECT_GT(std::abs(design.cam.Foll_Y - first_roller), 10.0);
        EXPECT_EQ(design.cam.Side_Sign, -1);
    }
}

TEST_F(Linkage_Drawing, an_axial_cam_lies_across_the_plane_of_its_arm_and_is_left_out)
{
    Make("4-bar Linkage");
    ASSERT_TRUE(Put(design, "Camtype$", "Linear"));
    ASSERT_TRUE(Run_Size(design));
    ASSERT_TRUE(Draw_Linkage_at(design, surface_, 45));
    EXPECT_EQ(surface_.First(Ink::cam), -1);
    EXPECT_EQ(surface_.First(Ink::shaft), -1);
    EXPECT_GT(surface_.First(Ink::follower), -1);
    EXPECT_GT(surface_.First(Ink::link), -1);
    EXPECT_TRUE(surface_.finite);
}

TEST_F(Linkage_Drawing, there_is_nothing_to_draw_before_the_size_without_an_arm_and_without_a_length)
{
    Make("6-bar Linkage");
    EXPECT_THROW(Draw_Linkage_at(design, surface_, 361), Fault);
    EXPECT_THROW(Draw_Linkage_at(design, surface_, -1), Fault);
    EXPECT_FALSE(Link_Anim_Frame(design, surface_, 361));
    EXPECT_FALSE(Link_Anim_Frame(design, surface_, -1));
    design.linkage.Link_5 = 0.0;
    EXPECT_FALSE(Link_Anim_Setup(design, surface_));
    EXPECT_FALSE(Link_Anim_Frame(design, surface_, 0));
    design.linkage.Link_5 = 150.0;
    EXPECT_TRUE(Link_Anim_Setup(design, surface_));
    Set("Prime_Rad", 90);  // the size falls
    EXPECT_FALSE(Link_Anim_Setup(design, surface_));
    EXPECT_TRUE(Link_Anim_Setup(design, surface_, Drawn_Cam::of_before));
    EXPECT_TRUE(Link_Anim_Frame(design, surface_, 0, Drawn_Cam::of_before));
    ASSERT_TRUE(Run_Size(design));
    EXPECT_TRUE(Link_Anim_Setup(design, surface_));
    design.cam.Translating = true;
    EXPECT_FALSE(Link_Anim_Setup(design, surface_));
    EXPECT_FALSE(Link_Anim_Frame(design, surface_, 0));
}

TEST_F(Linkage_Drawing, an_arm_that_misses_the_cam_is_no_scene)
{
    Make("4-bar Linkage");
    design.cam.ArmRad = 1.0;
    EXPECT_FALSE(Link_Anim_Setup(design, surface_));
    EXPECT_FALSE(Link_Anim_Frame(design, surface_, 0));
}

TEST_F(Linkage_Drawing, what_can_be_moved_is_what_the_train_has)
{
    const auto names = [] {
        std::vector<std::string> list;
        for (const Draggable& point : Draggable_Points(design))
            list.emplace_back(point.name);
        return list;
    };
    using Names = std::vector<std::string>;
    Make("4-bar Linkage");
    EXPECT_EQ(names(), (Names{"O4"}));
    Make("6-bar Linkage");
    EXPECT_EQ(names(), (Names{"O4", "O6"}));
    EXPECT_EQ(Draggable_Points(design)[1].at.x, design.linkage.O6x);
    Make("4-bar Slider");
    EXPECT_EQ(names(), (Names{"Slider axis"}));
    EXPECT_EQ(Draggable_Points(design)[0].at.y, design.linkage.S3y);
    Make("6-bar Slider");
    EXPECT_EQ(names(), (Names{"O4", "Slider axis"}));
    ASSERT_TRUE(Run_Linkage(design));
    // On the axis, where the perpendicular from O4 meets it.
    const World_Point foot = Draggable_Points(design)[1].at;
    EXPECT_NEAR(foot.x, design.results.Link_X(link_point::end, 0), 1e-3);
    EXPECT_NEAR(foot.y, design.results.Link_Y(link_point::end, 0), 1e-3);
}

}  // namespace
}  // namespace lobemax
