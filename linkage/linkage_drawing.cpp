// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "camgeom/arm.h"
#include "camgeom/cam_drawing.h"
#include "core/design_state.h"
#include "core/variables.h"
#include "linkage/linkage_kinematics.h"

namespace lobemax {

namespace {

// Half the width of a bar: a share of the scene, and of its shortest link.
constexpr double bar_of_scene = 0.013;
constexpr double bar_of_link = 0.16;
// Of half a bar's width.
constexpr double pin_share = 0.55;
constexpr double support_height = 2.6;
constexpr double support_half_width = 2.2;
constexpr double hatch_depth = 1.1;
constexpr double hatch_pitch = 1.1;
constexpr double block_half_length = 2.8;
constexpr double block_half_height = 1.7;
constexpr double guide_beyond = 2.0;  // the block's ends at the ends of its travel
constexpr double mark_radius = 1.6;
constexpr double mark_arm = 2.5;

constexpr double window_margin = 0.1;  // of what the scene holds, on each side: bars, supports and labels
// Of the window: letters are as large as those of a screen, whatever the scale.
constexpr double letter_width = 0.018;
constexpr double letter_height = 0.032;
constexpr double label_gap = 0.006;

using Points = std::vector<World_Point>;

World_Point operator+(World_Point a, World_Point b)
{
    return {a.x + b.x, a.y + b.y};
}

World_Point operator-(World_Point a, World_Point b)
{
    return {a.x - b.x, a.y - b.y};
}

World_Point operator*(double s, World_Point a)
{
    return {s * a.x, s * a.y};
}

double Dot(World_Point a, World_Point b)
{
    return a.x * b.x + a.y * b.y;
}

double Cross(World_Point a, World_Point b)
{
    return a.x * b.y - a.y * b.x;
}

double Length_of(World_Point a)
{
    return std::hypot(a.x, a.y);
}

World_Point Direction(double radians)
{
    return {std::cos(radians), std::sin(radians)};
}

World_Point Left_of(World_Point a)
{
    return {-a.y, a.x};
}

bool Apart(World_Point a, World_Point b, double distance)
{
    return Length_of(a - b) > distance;
}

/// From the nearest point of a segment to p.
World_Point From_Segment(World_Point p, World_Point a, World_Point b)
{
    const World_Point along = b - a;
    const double square = Dot(along, along);
    const double t = square > 0.0 ? std::clamp(Dot(p - a, along) / square, 0.0, 1.0) : 0.0;
    return p - (a + t * along);
}

bool Has_Scene(const Design_State& design, Drawn_Cam cam)
{
    const Flags_Group& f = design.flags;
    const bool profile = f.Sized || cam == Drawn_Cam::of_before;
    return f.Calculated && profile && !design.cam.Translating && Missing_Length(design).empty();
}

/// The arm's angle at rest, degrees. The conjugate's roller sits on a second arm of one lever, whose first arm the
/// links hang on: their rest is that of the first.
/// @return none where arm and cam close no triangle
std::optional<double> Rest_of_Lever(Design_State& design)
{
    Cam_Group& c = design.cam;
    Flags_Group& f = design.flags;
    const Integer side = c.Side_Sign;
    const auto errors = std::pair{f.Calc_Error, f.Math_Error};
    std::optional<double> rest;
    c.Side_Sign = 1;
    try {
        rest = Arm_Angle_at_Rest(design);
    } catch (const Fault&) {
        rest = {};  // there is nothing to draw
    }
    c.Side_Sign = side;
    if (side < 0 && c.Camtype == "Radial")
        Arm_Geometry(design);
    std::tie(f.Calc_Error, f.Math_Error) = errors;
    return rest;
}

/// The lever's swing at a point, degrees: as the cam has it.
double Swing_at(const Design_State& design, int i)
{
    const double s = design.results.CalcData(design.flags.Polydyne_Calc ? var::Polydyne_S : var::S, i);
    return s / (design.flags.Linkage_Calc ? Link_Ratios(design, i).S : 1.0);
}

/// What moves: the lever and the train that hangs on it, for any point of the cycle.
class Machine {
public:
    /// @param rest  of the lever, degrees
    Machine(const Design_State& design, double rest)
        : design_(design), train_(design), input_(Arm_Input_of(design, rest)), rest_(rest)
    {
    }

    World_Point Pivot() const { return {design_.cam.ArmX, design_.cam.ArmY}; }
    World_Point O4() const { return {design_.linkage.O4x, design_.linkage.O4y}; }
    World_Point O6() const { return {design_.linkage.O6x, design_.linkage.O6y}; }

    Link_Input Input(int i) const
    {
        Link_Input in = Input_at(design_, input_, i);
        in.theta2 += design_.cam.ArmDirect * (Swing_at(design_, i) - design_.results.CalcData(var::S, i)) * Rad_per_Deg;
        return in;
    }
    Train_Pose Pose(int i) const { return Pose(Input(i)); }
    Train_Pose Pose(const Link_Input& in) const { return train_.At(in); }
    /// The end of link 2, which is the lever's own whether the rest connects or not.
    World_Point A(int i) const { return A(Input(i)); }
    World_Point A(const Link_Input& in) const
    {
        return Pivot() + design_.linkage.Link_2 * Direction(in.theta2 + train_.Theta1());
    }
    /// The far end of the arm.
    World_Point Arm_End(int i) const
    {
        const Cam_Group& c = design_.cam;
        return Pivot() + c.ArmRad * Direction((rest_ + c.ArmDirect * Swing_at(design_, i)) * Rad_per_Deg);
    }
    /// The pose of the last point before i that connects; before the first of them its own.
    std::optional<Train_Pose> Last_Pose(int i) const
    {
        const auto found = [&](int k, Train_Pose& pose) {
            pose = Pose(k);
            return pose.Connects();
        };
        Train_Pose pose;
        for (int k = i - 1; k >= 0; --k)
            if (found(k, pose))
                return pose;
        for (int k = i + 1; k <= design_.motion.Max_Data_Points_used; ++k)
            if (found(k, pose))
                return pose;
        return {};
    }

private:
    const Design_State& design_;
    Linkage_Train train_;
    formulas::Arm_Input input_;
    double rest_;
};

/// A point of the cam, turned for point i of the cycle.
World_Point Turned_Point(const Design_State& design, int row, int i)
{
    const World_Point turn = Direction(design.cam.Rotflag * design.results.CalcData(var::Angle, i) * Rad_per_Deg);
    return design.results.CalcData(row, i) * turn + design.results.CalcData(row + 1, i) * Left_of(turn);
}

/// The roller's centre, or the end of a flat face, which reaches a little beyond its contact.
World_Point Follower_at(const Design_State& design, const Machine& machine, int i)
{
    constexpr double beyond_contact = 1.3;
    if (design.cam.Camtype != "Radial")
        return machine.Arm_End(i);
    if (design.cam.Followtype == 1)
        return Turned_Point(design, var::X, i);
    const World_Point pivot = machine.Pivot();
    return pivot + beyond_contact * (Turned_Point(design, var::X_Surface, i) - pivot);
}

bool Rocks_First(const Design_State& design)
{
    return Six_Links(design) || !Ends_in_Slider(design);
}

/// Whether the train has a point D: the joint of a second stage, or the mark on a rocker.
bool Has_D(const Design_State& design)
{
    return Rocks_First(design) && design.linkage.Link_4a > 0.0;
}

/// The point that the train is there for.
int Point_of_Effector(const Design_State& design)
{
    if (Six_Links(design))
        return link_point::C;
    return Has_D(design) ? link_point::D : link_point::B;
}

/// A link and the points that it carries, by link_point.
struct Link_Pins {
    int link;
    std::vector<int> points;
};

/// The links of the first stage from the coupler on, and those of the second; link 2 is the lever's.
std::vector<Link_Pins> First_Stage(const Design_State& design)
{
    using namespace link_point;
    std::vector<Link_Pins> links{{3, {A, B}}};
    if (Rocks_First(design))
        links.push_back({4, {ground, B}});
    if (Has_D(design))
        links[Link_of_D(design) == 3 ? 0 : 1].points.push_back(D);
    return links;
}

std::vector<Link_Pins> Second_Stage(const Design_State& design)
{
    using namespace link_point;
    if (!Six_Links(design))
        return {};
    std::vector<Link_Pins> links{{5, {D, C}}};
    if (!Ends_in_Slider(design))
        links.push_back({6, {end, C}});
    return links;
}

/// A link with its pins where they stand.
struct Bar {
    int link;
    Points pins;
};

std::vector<Bar> Bars_of(const std::vector<Link_Pins>& links, const Train_Pose& pose)
{
    std::vector<Bar> bars;
    for (const Link_Pins& link : links) {
        bars.push_back({link.link, {}});
        for (const int point : link.points)
            bars.back().pins.push_back(pose.point[static_cast<std::size_t>(point)]);
    }
    return bars;
}

/// The convex outline of equal circles about some points: a bar with rounded ends, a triangle with rounded corners.
Points Rounded_Hull(const Points& centres, double radius)
{
    constexpr int sides = 24;
    static const auto circle = [] {
        std::array<World_Point, sides> unit;
        for (std::size_t k = 0; k < unit.size(); ++k)
            unit[k] = Direction(PI2 * static_cast<double>(k) / sides);
        return unit;
    }();
    Points all;
    all.reserve(centres.size() * circle.size());
    for (const World_Point& centre : centres)
        for (const World_Point& unit : circle)
            all.push_back(centre + radius * unit);
    std::ranges::sort(all, [](World_Point a, World_Point b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    // The lower chain from left to right, then the upper one back.
    Points hull;
    const auto take = [&hull](World_Point p, std::size_t least) {
        while (hull.size() >= least + 2 && Cross(hull.back() - hull[hull.size() - 2], p - hull.back()) <= 0.0)
            hull.pop_back();
        hull.push_back(p);
    };
    for (const World_Point& p : all)
        take(p, 0);
    const std::size_t lower = hull.size() - 1;
    for (std::size_t k = all.size() - 1; k-- > 0;)
        take(all[k], lower);
    hull.pop_back();
    return hull;
}

/// Labels about points of the drawing, each where it covers no other and as little as can be of what is drawn.
class Label_Places {
public:
    /// @param size  of the window
    Label_Places(World_Point low, World_Point high) : low_(low), high_(high), size_(high.x - low.x) {}

    void Keep_Clear_of(World_Point a, World_Point b) { segments_.push_back({a, b}); }

    /// The best of some places for a word, the first where several are as good.
    World_Point Place(const std::string& word, const Points& candidates)
    {
        const World_Point half{size_ * letter_width * static_cast<double>(word.size()) / 2, size_ * letter_height / 2};
        Scale_Segments(half);
        // The first of equals, and of nearly equals: a label then keeps its side while the cam turns.
        constexpr double later = 0.02;
        World_Point best = candidates.front();
        double least = Cost(best, half);
        for (std::size_t k = 1; k < candidates.size(); ++k)
            if (const double cost = Cost(candidates[k], half) + later * static_cast<double>(k); cost < least) {
                least = cost;
                best = candidates[k];
            }
        boxes_.push_back({best, half});
        return best;
    }

    /// Places around a point, the upper ones first.
    Points Around(World_Point at, double clearance, const std::string& word) const
    {
        constexpr int directions = 16;
        constexpr std::array order{2, 6, 4, 1, 3, 5, 7, 0, 8, 14, 10, 12, 15, 9, 13, 11};
        const World_Point half{size_ * letter_width * static_cast<double>(word.size()) / 2, size_ * letter_height / 2};
        Points places;
        for (const double farther : {0.0, 1.0, 2.2})
            for (const int k : order) {
                const World_Point d = Direction(PI2 * k / directions);
                const double reach = clearance + size_ * (label_gap + farther * letter_height);
                places.push_back(at + World_Point{d.x * (reach + half.x), d.y * (reach + half.y)});
            }
        return places;
    }

private:
    struct Box {
        World_Point at, half;
    };

    /// In units of half a word.
    void Scale_Segments(World_Point half)
    {
        const auto scaled = [&](World_Point p) { return World_Point{p.x / half.x, p.y / half.y}; };
        scaled_segments_.clear();
        for (const auto& [a, b] : segments_)
            scaled_segments_.emplace_back(scaled(a), scaled(b));
    }

    double Cost(World_Point at, World_Point half) const
    {
        constexpr double outside = 1000.0;
        constexpr double covered = 100.0;
        double cost = 0.0;
        if (at.x - half.x < low_.x || at.x + half.x > high_.x || at.y - half.y < low_.y || at.y + half.y > high_.y)
            cost += outside;
        for (const Box& box : boxes_)
            if (std::abs(at.x - box.at.x) < half.x + box.half.x && std::abs(at.y - box.at.y) < half.y + box.half.y)
                cost += covered;
        // In units of the word's own size: within 1 a line runs through it.
        constexpr double crossed = 3.0;
        constexpr double near = 1.7;
        constexpr double close = 0.3;
        const World_Point scaled{at.x / half.x, at.y / half.y};
        for (const auto& [a, b] : scaled_segments_) {
            const World_Point away = From_Segment(scaled, a, b);
            if (std::max(std::abs(away.x), std::abs(away.y)) >= near)
                continue;
            const double distance = Length_of(away);
            cost += distance < 1.0 ? crossed : 0.0;
            cost += close * std::max(0.0, near - distance);
        }
        return cost;
    }

    World_Point low_, high_;
    double size_;
    std::vector<std::pair<World_Point, World_Point>> segments_;
    std::vector<std::pair<World_Point, World_Point>> scaled_segments_;  // for the word at work
    std::vector<Box> boxes_;
};

/// One frame onto a surface, in the window that stands.
class Frame {
public:
    Frame(Design_State& design, Surface& surface, const Machine& machine, int i)
        : design_(design),
          surface_(surface),
          machine_(machine),
          i_(i),
          pose_(machine.Pose(i)),
          broken_(!pose_.Connects()),
          window_(design.cam.View_Right - design.cam.View_Left),
          half_(Half_Width(design)),
          labels_(Low(), Low() + World_Point{window_, window_})
    {
        if (broken_) {
            const std::optional<Train_Pose> last = machine.Last_Pose(i);
            connects_somewhere_ = last.has_value();
            pose_ = last.value_or(pose_);
        }
    }

    static double Half_Width(const Design_State& design)
    {
        const Cam_Group& c = design.cam;
        const Linkage_Group& k = design.linkage;
        double shortest = std::min(k.Link_2, k.Link_3);
        if (Rocks_First(design))
            shortest = std::min<double>(shortest, k.Link_4);
        if (Six_Links(design))
            shortest = std::min<double>(shortest, k.Link_5);
        if (Six_Links(design) && !Ends_in_Slider(design))
            shortest = std::min<double>(shortest, k.Link_6);
        const double scene = (c.View_Right - c.View_Left) / c.Zoom_Factor;
        return std::min(bar_of_scene * scene, bar_of_link * shortest);
    }

    void Draw()
    {
        Draw_Cam_and_Arm();
        Draw_Pivots();
        Draw_Links();
        if (Ends_in_Slider(design_) && connects_somewhere_)
            Draw_Slider();
        if (connects_somewhere_)
            Draw_Effector();
        Draw_Labels();
    }

private:
    /// The lower left corner of the window, in the machine.
    World_Point Low() const
    {
        const Cam_Group& c = design_.cam;
        return {c.View_Left, c.Flip_Y - c.View_Right};
    }
    World_Point At(int p) const { return pose_.point[static_cast<std::size_t>(p)]; }
    Ink Of_Links() const { return broken_ ? Ink::broken : Ink::link; }

    void Line(World_Point a, World_Point b, Ink ink) const
    {
        const double flip = design_.cam.Flip_Y;
        surface_.Line(a.x, flip - a.y, b.x, flip - b.y, ink);
    }
    void Circle(World_Point at, double radius, Ink ink) const
    {
        surface_.Circle(at.x, design_.cam.Flip_Y - at.y, radius, ink);
    }
    void Outline(Points points, Ink ink) const
    {
        for (World_Point& p : points)
            p.y = design_.cam.Flip_Y - p.y;
        surface_.Outline(points, ink);
    }
    void Label(World_Point at, const std::string& word, Ink ink) const
    {
        surface_.Label(at.x, design_.cam.Flip_Y - at.y, word, ink);
    }

    /// Of a bar: its middle line and its edges.
    void Keep_Labels_Off(World_Point a, World_Point b)
    {
        const double length = Length_of(b - a);
        if (length == 0.0)
            return;
        const World_Point edge = half_ / length * Left_of(b - a);
        for (const double side : {-1.0, 0.0, 1.0})
            labels_.Keep_Clear_of(a + side * edge, b + side * edge);
    }

    void Draw_Cam_and_Arm();
    void Draw_Support(World_Point pivot);
    void Draw_Pivots();
    void Draw_Bars(const std::vector<Bar>& bars, Ink ink);
    void Draw_Links();
    void Draw_Guide(World_Point block, World_Point along, World_Point outward);
    void Draw_Slider();
    void Draw_Effector() const;
    void Label_Joint(const std::string& word, World_Point at);
    void Label_Bar(const Bar& bar);
    void Draw_Labels();

    Design_State& design_;
    Surface& surface_;
    const Machine& machine_;
    int i_;
    Train_Pose pose_;
    bool broken_;
    bool connects_somewhere_ = true;
    double window_;
    double half_;  // width of a bar
    Label_Places labels_;
    std::vector<Bar> bars_;  // as they were drawn
};

/// Shaft, arm and outline. The drum of an axial cam and its strip lie across the plane of the arm: the arm stands
/// alone.
void Frame::Draw_Cam_and_Arm()
{
    const Cam_Group& c = design_.cam;
    const bool radial = c.Camtype == "Radial";
    if (radial)
        Draw_Turned_Shaft(design_, surface_, i_);
    const World_Point end = Follower_at(design_, machine_, i_);
    if (c.Followtype == 1)
        Outline(Rounded_Hull({machine_.Pivot(), end}, half_), Ink::follower);
    if (radial)
        Draw_Follower_Arm(design_, surface_, i_);
    else
        Draw_Roller(design_, surface_, end.x, end.y, c.Follow_Rad, Ink::follower);
    Keep_Labels_Off(machine_.Pivot(), end);
    if (radial)
        Draw_Turned_Outline(design_, surface_, i_);
}

/// A pivot on the frame: pin, stand and hatched ground.
void Frame::Draw_Support(World_Point pivot)
{
    const double wide = support_half_width * half_;
    const double y = pivot.y - support_height * half_;
    Circle(pivot, pin_share * half_, Ink::ground);
    for (const double side : {-1.0, 1.0})
        Line({pivot.x + side * half_ * 0.7, pivot.y - half_ * 0.7}, {pivot.x + side * wide * 0.8, y}, Ink::ground);
    Line({pivot.x - wide, y}, {pivot.x + wide, y}, Ink::ground);
    constexpr int hatches = 5;
    for (int k = 0; k < hatches; ++k) {
        const double x = pivot.x + wide * (-1.0 + 2.0 * (k + 1) / hatches);
        Line({x, y}, {x - hatch_depth * half_, y - hatch_depth * half_}, Ink::ground);
    }
    for (const double depth : {0.0, hatch_depth})
        labels_.Keep_Clear_of({pivot.x - wide, y - depth * half_}, {pivot.x + wide, y - depth * half_});
}

void Frame::Draw_Pivots()
{
    Draw_Support(machine_.Pivot());
    if (Rocks_First(design_))
        Draw_Support(machine_.O4());
    if (Six_Links(design_) && !Ends_in_Slider(design_))
        Draw_Support(machine_.O6());
}

void Frame::Draw_Bars(const std::vector<Bar>& bars, Ink ink)
{
    for (const Bar& bar : bars) {
        Outline(Rounded_Hull(bar.pins, half_), ink);
        for (std::size_t k = 0; k < bar.pins.size(); ++k)
            Keep_Labels_Off(bar.pins[k], bar.pins[(k + 1) % bar.pins.size()]);
        bars_.push_back(bar);
    }
    Points drawn;
    for (const Bar& bar : bars)
        for (const World_Point& pin : bar.pins)
            if (std::ranges::all_of(drawn, [&](World_Point other) { return Apart(pin, other, half_ * 0.1); })) {
                Circle(pin, pin_share * half_, ink);
                drawn.push_back(pin);
            }
}

void Frame::Draw_Links()
{
    Draw_Bars({{2, {machine_.Pivot(), machine_.A(i_)}}}, Ink::link);
    if (!connects_somewhere_)
        return;
    Draw_Bars(Bars_of(First_Stage(design_), pose_), Of_Links());
    if (Six_Links(design_))
        Draw_Bars(Bars_of(Second_Stage(design_), pose_), Of_Links());
}

/// The slider's way along its axis, hatched on the side that the links do not come from.
void Frame::Draw_Guide(World_Point block, World_Point along, World_Point outward)
{
    const auto last = static_cast<std::size_t>(Last_Link(design_));
    const double now = pose_.link[last].theta;
    double least = now;
    double largest = now;
    if (design_.flags.Linkage_Calc)
        for (const Single place : design_.results.Link_Theta.Points(Last_Link(design_))) {
            least = std::min<double>(least, place);
            largest = std::max<double>(largest, place);
        }
    const double beyond = (block_half_length + guide_beyond) * half_;
    const auto on_axis = [&](double place) { return block + (place - now) * along; };
    const World_Point from = on_axis(least - beyond);
    const World_Point to = on_axis(largest + beyond);
    Line(from, to, Ink::axis);
    const World_Point side = block_half_height * half_ * outward;
    Line(from + side, to + side, Ink::ground);
    for (const double depth : {0.0, hatch_depth * 0.5, hatch_depth})
        labels_.Keep_Clear_of(from + side + depth * half_ * outward, to + side + depth * half_ * outward);
    for (const double across : {-1.0, 0.0, 1.0})  // the block
        labels_.Keep_Clear_of(block - block_half_length * half_ * along + across * side,
                              block + block_half_length * half_ * along + across * side);
    const double length = Length_of(to - from);
    const double pitch = std::max(hatch_pitch * half_, length / 200.0);
    for (double s = pitch; s <= length; s += pitch) {
        const World_Point foot = from + side + s * along;
        Line(foot, foot + hatch_depth * half_ * (outward - along), Ink::ground);
    }
}

void Frame::Draw_Slider()
{
    const bool six = Six_Links(design_);
    const World_Point block = At(six ? link_point::C : link_point::B);
    const World_Point foot = At(six ? link_point::end : link_point::ground);
    const World_Point along = Direction(design_.linkage.Global_Slider_angle_deg * Rad_per_Deg);
    const World_Point driver = six ? machine_.O4() : machine_.Pivot();
    const double offset = Dot(foot - driver, Left_of(along));
    const World_Point outward = (offset < 0.0 ? -1.0 : 1.0) * Left_of(along);
    Draw_Guide(block, along, outward);
    const World_Point length = block_half_length * half_ * along;
    const World_Point height = block_half_height * half_ * outward;
    Outline({block - length - height, block + length - height, block + length + height, block - length + height},
            broken_ ? Ink::broken : Ink::slider);
    Circle(block, pin_share * half_, Of_Links());
}

void Frame::Draw_Effector() const
{
    const World_Point at = At(Point_of_Effector(design_));
    Circle(at, mark_radius * half_, Ink::effector);
    const double arm = mark_arm * half_;
    const double gap = mark_radius * half_;
    for (const World_Point& d : {World_Point{1.0, 0.0}, World_Point{0.0, 1.0}})
        for (const double side : {-1.0, 1.0})
            Line(at + side * gap * d, at + side * arm * d, Ink::effector);
}

void Frame::Label_Joint(const std::string& word, World_Point at)
{
    Label(labels_.Place(word, labels_.Around(at, half_ * 1.4, word)), word, Ink::axis);
}

/// A link's number beside the middle of its bar, of a triangle inside it where there is room.
void Frame::Label_Bar(const Bar& bar)
{
    const std::string word = std::to_string(bar.link);
    const World_Point along = bar.pins[1] - bar.pins[0];
    const double length = Length_of(along);
    const World_Point across = length > 0.0
                                   ? (half_ + window_ * (label_gap + letter_height / 2)) / length * Left_of(along)
                                   : World_Point{0.0, half_ + window_ * letter_height};
    Points places;
    for (const double t : {0.5, 0.38, 0.62, 0.25, 0.75})
        for (const double side : {1.0, -1.0})
            places.push_back(bar.pins[0] + t * along + side * across);
    Label(labels_.Place(word, places), word, Ink::link);
}

void Frame::Draw_Labels()
{
    using namespace link_point;
    const bool six = Six_Links(design_);
    const bool slider = Ends_in_Slider(design_);
    if (broken_) {
        const World_Point top = Low() + World_Point{window_ / 2, window_ * (1.0 - letter_height)};
        const std::string word = "does not connect";
        Label(labels_.Place(word, {top}), word, Ink::broken);
    }
    struct Joint {
        std::string word;
        World_Point at;
    };
    std::vector<Joint> joints{{"O2", machine_.Pivot()}};
    if (Rocks_First(design_))
        joints.push_back({"O4", machine_.O4()});
    if (six && !slider)
        joints.push_back({"O6", machine_.O6()});
    joints.push_back({"A", machine_.A(i_)});
    if (connects_somewhere_) {
        joints.push_back({"B", At(B)});
        if (Has_D(design_)) {
            if (Apart(At(B), At(D), half_ * 0.5))
                joints.push_back({"D", At(D)});
            else
                joints.back().word = "B, D";
        }
        if (six)
            joints.push_back({"C", At(C)});
    }
    for (const Joint& joint : joints)
        Label_Joint(joint.word, joint.at);
    for (const Bar& bar : bars_)
        Label_Bar(bar);
    if (slider && connects_somewhere_) {
        const World_Point block = At(six ? C : B);
        const std::string word = std::to_string(Last_Link(design_));
        Label(labels_.Place(word, labels_.Around(block, half_ * (block_half_height + hatch_depth), word)), word,
              Ink::slider);
    }
}

/// The extremes of what a scene holds.
struct Extremes {
    World_Point low{1e30, 1e30};
    World_Point high{-1e30, -1e30};
    void Hold(World_Point p, double about = 0.0)
    {
        low = {std::min(low.x, p.x - about), std::min(low.y, p.y - about)};
        high = {std::max(high.x, p.x + about), std::max(high.y, p.y + about)};
    }
};

/// All points that bars hang on.
std::vector<std::size_t> Pinned_Points(const Design_State& design)
{
    std::vector<std::size_t> pinned;
    for (const std::vector<Link_Pins>& stage : {First_Stage(design), Second_Stage(design)})
        for (const Link_Pins& link : stage)
            for (const int point : link.points)
                pinned.push_back(static_cast<std::size_t>(point));
    return pinned;
}

Extremes Extremes_of(const Design_State& design, const Machine& machine)
{
    const Cam_Group& c = design.cam;
    Extremes scene;
    const int points = design.motion.Max_Data_Points_used;
    if (c.Camtype == "Radial") {
        const auto x = design.results.CalcData.Points(var::X_Surface);
        const auto y = design.results.CalcData.Points(var::Y_Surface);
        double reach = c.Prime_Rad;
        for (std::size_t i = 0; i <= static_cast<std::size_t>(points); ++i)
            if (x[i] * x[i] + y[i] * y[i] > reach * reach)
                reach = std::hypot(x[i], y[i]);
        scene.Hold({}, reach);
    }
    scene.Hold(machine.Pivot());
    const std::vector<std::size_t> pinned = Pinned_Points(design);
    for (int i = 0; i <= points; ++i) {
        scene.Hold(Follower_at(design, machine, i), c.Follow_Rad);
        const Link_Input input = machine.Input(i);
        scene.Hold(machine.A(input));
        if (const Train_Pose pose = machine.Pose(input); pose.Connects())
            for (const std::size_t point : pinned)
                scene.Hold(pose.point[point]);
    }
    for (const Draggable& handle : Draggable_Points(design))
        scene.Hold(handle.at);
    return scene;
}

void Use_Window(const Design_State& design, Surface& surface)
{
    const Cam_Group& c = design.cam;
    surface.Clear();
    surface.Scale(c.View_Left, c.View_Left, c.View_Right, c.View_Right);
}

}  // namespace

bool Link_Anim_Setup(Design_State& design, Surface& surface, Drawn_Cam cam)
{
    if (!Has_Scene(design, cam))
        return false;
    Cam_Group& c = design.cam;
    if (c.Camtype == "Radial" && !Set_Base_Circle(design))
        return false;
    const std::optional<double> rest = Rest_of_Lever(design);
    if (!rest)
        return false;
    const Extremes scene = Extremes_of(design, Machine(design, *rest));
    const World_Point middle = 0.5 * (scene.low + scene.high);
    const World_Point size = scene.high - scene.low;
    const double half = std::max(size.x, size.y) * (0.5 + window_margin) * c.Zoom_Factor;
    c.View_Left = middle.x - half;
    c.View_Right = middle.x + half;
    c.Flip_Y = middle.x + middle.y;  // the middle of the scene is the middle of the window
    Use_Window(design, surface);
    return true;
}

bool Link_Anim_Frame(Design_State& design, Surface& surface, int step, Drawn_Cam cam)
{
    if (!Has_Scene(design, cam) || step < 0 || step > design.motion.Max_Data_Points_used)
        return false;
    if (design.cam.Camtype == "Radial" && !Find_Base_Circle(design))
        return false;
    const std::optional<double> rest = Rest_of_Lever(design);
    if (!rest)
        return false;
    Use_Window(design, surface);
    Frame(design, surface, Machine(design, *rest), step).Draw();
    return true;
}

bool Draw_Linkage_at(Design_State& design, Surface& surface, int point)
{
    if (point < 0 || point > design.motion.Max_Data_Points_used)
        throw Fault{out_of_bounds};
    return Link_Anim_Setup(design, surface) && Link_Anim_Frame(design, surface, point);
}

std::vector<Draggable> Draggable_Points(const Design_State& design)
{
    const Linkage_Group& k = design.linkage;
    const World_Point O4{k.O4x, k.O4y};
    std::vector<Draggable> points;
    if (Rocks_First(design))
        points.push_back({Drag_Point::O4, "O4", O4});
    if (Six_Links(design) && !Ends_in_Slider(design))
        points.push_back({Drag_Point::O6, "O6", {k.O6x, k.O6y}});
    if (Ends_in_Slider(design)) {
        const World_Point along = Direction(k.Global_Slider_angle_deg * Rad_per_Deg);
        points.push_back({Drag_Point::slider, "Slider axis",
                          Six_Links(design) ? O4 + k.Offset6 * Left_of(along) : World_Point{k.S3x, k.S3y}});
    }
    return points;
}

}  // namespace lobemax
