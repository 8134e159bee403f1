// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_drawing.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "camgeom/arm.h"
#include "camgeom/profile.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/points.h"

namespace lobemax {

namespace {

constexpr double shaft_share = 0.15;  // of the base circle
constexpr double stem_share = 0.25;   // of the roller radius, on each side of the axis
constexpr double cross_share = 0.35;  // of the roller radius
constexpr double center_share = 0.9;  // of the shaft radius
constexpr double rim_angle = 1.3;     // radians, of the keyway's corners on the shaft's rim
constexpr double keyway_depth = 0.3;  // of the shaft radius
constexpr double hatch_step = 0.005;  // of the shaft radius
constexpr double pivot_share = 0.08;  // of the base circle
constexpr double pivot_step = 0.01;   // of the base circle
constexpr double path_span = 3.0;     // degrees of cam over which a path shows the follower, at a Path_Step of 1

Cam_Group& C(Design_State& design)
{
    return design.cam;
}

double Data(const Design_State& design, int row, int i)
{
    return design.results.CalcData(row, i);
}

World_Point Turned(double x, double y, double degrees)
{
    const double a = degrees * Rad_per_Deg;
    return {x * std::cos(a) - y * std::sin(a), x * std::sin(a) + y * std::cos(a)};
}

/// Angle of the follower's axis in the drawing, in degrees: the cam's frame is turned with a translating follower.
double Axis_Angle(Design_State& design)
{
    return C(design).Translating ? double{C(design).Follower_Angle} : 0.0;
}

/// By how much the cam's frame is turned in the drawing while point i is under the follower, in degrees.
double Turn_at(Design_State& design, int i)
{
    return Axis_Angle(design) + C(design).Rotflag * Data(design, var::Angle, i);
}

/// Point i of a pair of rows, in the drawing with the cam turned by some degrees.
World_Point Row_Point(Design_State& design, int row, int i, double turn)
{
    return Turned(Data(design, row, i), Data(design, row + 1, i), turn);
}

/// With the cam in its first position.
World_Point Row_Point(Design_State& design, int row, int i)
{
    return Row_Point(design, row, i, Axis_Angle(design));
}

void Draw_Line(Design_State& design, Surface& s, World_Point a, World_Point b, Ink ink)
{
    s.Line(a.x, C(design).Flip_Y - a.y, b.x, C(design).Flip_Y - b.y, ink);
}

void Draw_Circle(Design_State& design, Surface& s, World_Point center, double radius, Ink ink)
{
    s.Circle(center.x, C(design).Flip_Y - center.y, radius, ink);
}

World_Point Polar(double radius, double radians)
{
    return {radius * std::cos(radians), radius * std::sin(radians)};
}

/// Points in the order in which the cam turns: from the last down for a clockwise one.
int In_Order(Design_State& design, int i)
{
    return C(design).Rotflag < 0 ? design.motion.Max_Data_Points_used - i : i;
}

/// The cam's surface, turned by some degrees.
void Draw_Outline(Design_State& design, Surface& s, double turn)
{
    std::vector<World_Point> points;
    const int last = design.motion.Max_Data_Points_used;
    points.reserve(static_cast<std::size_t>(last + 1));
    for (int i = 0; i <= last; ++i) {
        World_Point p = Row_Point(design, 36, In_Order(design, i), turn);
        p.y = C(design).Flip_Y - p.y;
        points.push_back(p);
    }
    s.Outline(points, Ink::cam);
}

/// Whether any of the stretches reaches into the way from one point to the next.
bool Warned(std::span<const Cam_Stretch> warned, double from, double to)
{
    return std::ranges::any_of(warned, [&](const Cam_Stretch& stretch) {
        return stretch.from <= stretch.to ? from <= stretch.to && to >= stretch.from
                                          : from <= stretch.to || to >= stretch.from;
    });
}

/// Those parts of a path through the points of the table. @param place  of a point, in the drawing
template <class Place>
void Draw_Warned(Design_State& design, Surface& s, std::span<const Cam_Stretch> warned, Place place)
{
    for (int i = 1; i <= design.motion.Max_Data_Points_used; ++i)
        if (Warned(warned, Data(design, var::Angle, i - 1), Data(design, var::Angle, i)))
            Draw_Line(design, s, place(i - 1), place(i), Ink::warned);
}

/// The cam's surface with these parts over it.
void Draw_Outline(Design_State& design, Surface& s, double turn, std::span<const Cam_Stretch> warned)
{
    Draw_Outline(design, s, turn);
    Draw_Warned(design, s, warned, [&](int i) { return Row_Point(design, var::X_Surface, i, turn); });
}

void Trace(Design_State& design, Surface& s, int row, int i, Ink ink)
{
    const World_Point p = Row_Point(design, row, i);
    if (i == 0)
        s.PSet(p.x, C(design).Flip_Y - p.y, ink);
    else
        s.Line_to(p.x, C(design).Flip_Y - p.y, ink);
    C(design).Pen_X = p.x;
    C(design).Pen_Y = p.y;
}

bool Roller(Design_State& design)
{
    return C(design).Followtype == 1 && C(design).Follow_Rad > 0.0;
}

/// The end of a flat arm's face, which reaches from its foot at the pivot a little beyond the contact.
World_Point Beyond(World_Point pivot, World_Point contact)
{
    constexpr double reach = 1.3;
    return {pivot.x + (contact.x - pivot.x) * reach, pivot.y + (contact.y - pivot.y) * reach};
}

/// A flat face with its stem: the face across the axis at the height of the contact, both about the stem's own line.
struct Face {
    World_Point middle;
    World_Point axis;
    World_Point across;
};

Face Face_at(Design_State& design, int i, double turn)
{
    const World_Point axis = Turned(1, 0, Axis_Angle(design));
    const World_Point across{-axis.y, axis.x};
    const World_Point contact = Row_Point(design, 9, i, turn);
    const double height = contact.x * axis.x + contact.y * axis.y;
    const double side = -C(design).Rotflag * C(design).Offset;
    return {{axis.x * height + across.x * side, axis.y * height + across.y * side}, axis, across};
}

double Face_Half_Width(Design_State& design)
{
    return (C(design).Face_Width > 0.0 ? double{C(design).Face_Width} : C(design).Prime_Rad * 1.2) / 2;
}

/// The follower in its position at point i as it stands about the cam in its first position: a roller or a flat face.
void Draw_Follower_Outline(Design_State& design, Surface& s, int i)
{
    if (Roller(design)) {
        Draw_Circle(design, s, Row_Point(design, 9, i), C(design).Follow_Rad, Ink::path);
    } else if (C(design).Translating) {
        const Face face = Face_at(design, i, Turn_at(design, i));
        const double back = -C(design).Rotflag * Data(design, var::Angle, i);
        const double half = Face_Half_Width(design);
        const auto end = [&](double side) {
            return Turned(face.middle.x + face.across.x * side, face.middle.y + face.across.y * side, back);
        };
        Draw_Line(design, s, end(-half), end(half), Ink::path);
    } else {
        const World_Point pivot{design.results.Arm_Pivot_X(i), design.results.Arm_Pivot_Y(i)};
        Draw_Line(design, s, pivot, Beyond(pivot, Row_Point(design, 36, i)), Ink::path);
    }
}

void Draw_Follower(Design_State& design, Surface& s, int i)
{
    if (C(design).Translating)
        Draw_Follower_Translating(design, s, i);
    else
        Draw_Follower_Arm(design, s, i);
}

/// Direction of the first roller centre in the drawing, in degrees. A translating follower's polar angle is counted for
/// a clockwise cam; a counterclockwise one is its mirror.
double Start_Direction(Design_State& design)
{
    const Cam_Group& c = C(design);
    return c.Translating ? Axis_Angle(design) - c.Rotflag * c.Cam_Start_Polar : double{c.Arm_Start_Theta};
}

/// The same of the cam at machine zero.
double Machine_Zero_Direction(Design_State& design)
{
    const Cam_Group& c = C(design);
    return c.Translating ? -c.Rotflag * (c.Cam_Shift_Sign_Angle + c.Cam_Start_Polar)
                         : c.Cam_Shift_Sign_Angle + c.Arm_Start_Theta;
}

/// The positions of follower or cutter that a path shows: the first points from the second on, or all around.
std::vector<int> Path_Positions(Design_State& design, const Cam_View& view)
{
    const int last = design.motion.Max_Data_Points_used;
    const int step = view.whole_paths ? std::max<int>(Point_at(design, C(design).Path_Step), 1) : 1;
    const int end = view.whole_paths ? last : std::min<int>(Point_at(design, path_span * C(design).Path_Step), last);
    std::vector<int> positions;
    for (int i = step; i <= end; i += step)
        positions.push_back(i);
    return positions;
}

void Trace_Path(Design_State& design, Surface& s, void (*trace_point)(Design_State&, Surface&, int))
{
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        trace_point(design, s, i);
}

bool Radial_Ready(Design_State& design)
{
    return C(design).Camtype == "Radial" && design.flags.Calculated;
}

void Set_Window(Design_State& design, Surface& surface, double low, double high)
{
    Cam_Group& c = C(design);
    c.View_Left = low * c.Zoom_Factor;
    c.View_Right = high * c.Zoom_Factor;
    c.Flip_Y = c.View_Left + c.View_Right;
    surface.Clear();
    surface.Scale(c.View_Left, c.View_Left, c.View_Right, c.View_Right);
}

double Margin(Design_State& design)
{
    return C(design).Prime_Rad * 0.1 + C(design).Follow_Rad * 1.35;
}

/// A window that holds the cam in all its positions, so that it stands still while the cam turns.
void Set_Turning_Scale(Design_State& design, Surface& surface)
{
    double reach = C(design).Translating ? 0.0 : Arm_Pivot_Distance(design);
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        for (const int row : {9, 36})
            reach = std::max(reach, std::hypot(Data(design, row, i), Data(design, row + 1, i)));
    reach += Margin(design);
    Set_Window(design, surface, -reach, reach);
}

/// @return false, after a message, for a flat follower on a linear cam
bool Track_Takes_Roller(Design_State& design)
{
    if (C(design).Followtype != 2)
        return true;
    Show_Message("Something is wrong.  Cannot have a flat follower on a linear cam", Buttons::OK, Symbol::information);
    return false;
}

/// The strip of a linear cam with its track, the roller at a point.
void Draw_Strip(Design_State& design, Surface& surface, int at, std::span<const Cam_Stretch> warned)
{
    const Cam_Group& c = C(design);
    Set_Scale(design, surface);
    const double L = c.Prime_Rad * PI2;
    const double u = L / 6.0;
    const double left = -L / 2;
    const double right = L / 2;
    for (const double y : {-1.25 * u, 1.25 * u})
        Draw_Line(design, surface, {left, y}, {right, y}, Ink::cam);
    for (const double x : {left, right}) {
        Draw_Line(design, surface, {x, -1.25 * u}, {x, 1.25 * u}, Ink::cam);
        Draw_Line(design, surface, {x, -1.15 * u}, {x, 1.15 * u}, Ink::key);
    }
    constexpr int ticks = 12;
    for (int k = 1; k < ticks; ++k) {
        const double x = left + L * k / ticks;
        Draw_Line(design, surface, {x, -0.95 * u}, {x, -1.15 * u}, Ink::axis);
    }
    // The track, its displacement up from the middle of the strip; the surface beside it.
    const int last = design.motion.Max_Data_Points_used;
    for (const auto& [lambda_row, z_row, ink] : {std::tuple{12, 11, Ink::path}, std::tuple{37, 36, Ink::surface}})
        for (int i = 0; i <= last; ++i) {
            const double x = left + Data(design, lambda_row, i);
            const double y = c.Flip_Y - Data(design, z_row, i);
            if (i == 0)
                surface.PSet(x, y, ink);
            else
                surface.Line_to(x, y, ink);
        }
    Draw_Warned(design, surface, warned, [&](int i) {
        return World_Point{left + Data(design, var::Lambda_Surface, i), Data(design, var::Z_Surface, i)};
    });
    Draw_Roller(design, surface, left + Data(design, 12, at), Data(design, 11, at), c.Follow_Rad, Ink::follower);
}

}  // namespace

bool Find_Base_Circle(Design_State& design)
{
    Cam_Group& c = C(design);
    c.Base_Circle = c.Followtype == 1 ? c.Prime_Rad - c.Follow_Rad : double{c.Prime_Rad};
    c.Shaft_Radius = c.Base_Circle * shaft_share;
    return c.Base_Circle > 0.0;
}

void Draw_Turned_Shaft(Design_State& design, Surface& surface, int i)
{
    Set_Keyway_Angle(design);
    Set_Machine_Zero(design);
    Draw_Shaft(design, surface, C(design).Cam_Draw_Angle - Data(design, var::Angle, i));
}

void Draw_Turned_Outline(Design_State& design, Surface& surface, int i)
{
    Draw_Outline(design, surface, Turn_at(design, i));
}

bool Set_Base_Circle(Design_State& design)
{
    if (Find_Base_Circle(design))
        return true;
    Show_Message("Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
                 Buttons::OK, Symbol::exclamation);
    return false;
}

void Set_Scale(Design_State& design, Surface& surface)
{
    Cam_Group& c = C(design);
    double low = 1000000.0;
    double high = -1000000.0;
    const auto hold = [&](World_Point p) {
        low = std::min({low, p.x, p.y});
        high = std::max({high, p.x, p.y});
    };
    const double margin = Margin(design);
    if (c.Camtype == "Linear") {
        high = (c.Prime_Rad * PI2 + c.Follow_Rad) * 1.25;
        low = -high;
    } else {
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
            hold(Row_Point(design, 9, i));
            hold(Row_Point(design, 36, i));
        }
        if (!c.Translating) {
            const double half = (c.Follow_Rad + c.Prime_Rad) * 1.25;
            hold({half - margin, -(half - margin)});
            hold({c.ArmX, c.ArmY});
            // One pair about the centre, so that pivot and cam stay where they are while the arm changes.
            high = std::max(std::abs(low), std::abs(high));
            low = -high;
        }
        high += margin;
        low -= margin;
    }
    Set_Window(design, surface, low, high);
}

bool Plot_Cam_Setup(Design_State& design, Surface& surface)
{
    if (!Track_Takes_Roller(design))
        return false;
    Draw_Strip(design, surface, 0, {});
    return true;
}

bool Cam_Preview_Possible(Design_State& design)
{
    if (C(design).Camtype == "Linear")
        return design.flags.Calculated && Track_Takes_Roller(design);
    return Radial_Ready(design) && Set_Base_Circle(design);
}

bool Draw_Cam_Preview(Design_State& design, Surface& surface)
{
    if (!Cam_Preview_Possible(design))
        return false;
    Repaint_Cam_Preview(design, surface);
    return true;
}

void Repaint_Cam_Preview(Design_State& design, Surface& surface, std::span<const Cam_Stretch> warned)
{
    if (C(design).Camtype == "Linear") {
        if (design.flags.Calculated && C(design).Followtype != 2)
            Draw_Strip(design, surface, 0, warned);
        return;
    }
    if (!Radial_Ready(design) || !Find_Base_Circle(design))
        return;
    Set_Scale(design, surface);
    Draw_Outline(design, surface, Axis_Angle(design), warned);
    Set_Keyway_Angle(design);
    Set_Machine_Zero(design);
    Draw_Shaft(design, surface, C(design).Cam_Draw_Angle);
    Draw_Follower(design, surface, 0);
}

bool Draw_Cam(Design_State& design, Surface& surface, const Cam_View& view)
{
    Cam_Group& c = C(design);
    if (c.Camtype == "Linear") {
        if (!design.flags.Calculated || !Track_Takes_Roller(design))
            return false;
        Draw_Strip(design, surface, 0, view.warned);
        return true;
    }
    if (!Radial_Ready(design) || !design.flags.Sized || !Set_Base_Circle(design))
        return false;
    if (view.turning_window)
        Set_Turning_Scale(design, surface);
    else
        Set_Scale(design, surface);
    if (!c.Translating)
        Arm_Geometry(design);  // the start of the arm is not kept in a model file
    c.Cam_Start_Polar = Atan2D(Data(design, 9, 0), -c.Rotflag * Data(design, 10, 0));
    Set_Keyway_Angle(design);
    Set_Machine_Zero(design);
    // From the bottom up, so that nothing hides what stands before it.
    if (c.Show_Surface)
        Draw_Outline(design, surface, Axis_Angle(design), view.warned);
    if (c.Show_Cam_Key)
        Trace_Path(design, surface, Trace_Key_Point);
    if (c.Show_Follower_Path) {
        Trace_Path(design, surface, Trace_Roller_Point);
        for (const int k : Path_Positions(design, view))
            Draw_Follower_Outline(design, surface, k);
    }
    if (c.Show_Cutter_Path) {
        Trace_Path(design, surface, Trace_Cutter_Point);
        if (c.Cutter_Radius > 0.0)
            for (const int k : Path_Positions(design, view))
                Draw_Circle(design, surface, Row_Point(design, 40, k), c.Cutter_Radius, Ink::cutter);
    }
    if (c.Show_Follower_Path || c.Show_Cutter_Path || c.Show_Surface)
        Draw_Keyway_Marker(design, surface, Start_Direction(design), c.Base_Circle, 1.0);
    if (c.Show_Cam_Key)
        Draw_Keyway_Marker(design, surface, Machine_Zero_Direction(design), c.Base_Circle, 1.0);
    // At machine zero the keyway stands where its clock time says.
    const bool at_machine_zero = c.Show_Cam_Key && !c.Show_Surface;
    Draw_Shaft(design, surface, c.Cam_Draw_Angle + (at_machine_zero ? double{c.Shift_Angle} : 0.0));
    Draw_Follower(design, surface, 0);
    return true;
}

bool Draw_Cam_at(Design_State& design, Surface& surface, int i, std::span<const Cam_Stretch> warned)
{
    const Cam_Group& c = C(design);
    if (i < 0 || i > design.motion.Max_Data_Points_used)
        return false;
    if (c.Camtype == "Linear") {
        if (!design.flags.Calculated || !design.flags.Sized || !Track_Takes_Roller(design))
            return false;
        Draw_Strip(design, surface, i, warned);
        return true;
    }
    if (!Radial_Ready(design) || !design.flags.Sized || !Set_Base_Circle(design))
        return false;
    Set_Turning_Scale(design, surface);
    Draw_Outline(design, surface, Turn_at(design, i), warned);
    Draw_Turned_Shaft(design, surface, i);
    Draw_Follower(design, surface, i);
    return true;
}

void Draw_Shaft(Design_State& design, Surface& surface, double angle)
{
    const Cam_Group& c = C(design);
    const double r = c.Shaft_Radius;
    Draw_Circle(design, surface, {0, 0}, r, Ink::shaft);
    if (c.Show_Prime || c.Camtype == "Barrel")
        Draw_Circle(design, surface, {0, 0}, c.Prime_Rad, Ink::prime);
    Draw_Circle(design, surface, {0, 0}, c.Base_Circle, Ink::shaft);
    // The keyway: a slot at the rim, hatched by chords from its floor outward.
    // Like the polar angles of a translating profile, the angle runs against the cam's turning.
    const double keyway = Axis_Angle(design) - c.Rotflag * angle;
    const double half = r * std::cos(rim_angle);
    const double rim = r * std::sin(rim_angle);
    const auto turned = [keyway](double along, double across) { return Turned(along, across, keyway); };
    const double floor = rim - r * keyway_depth;
    Draw_Line(design, surface, turned(rim, half), turned(floor, half), Ink::key);
    Draw_Line(design, surface, turned(floor, half), turned(floor, -half), Ink::key);
    Draw_Line(design, surface, turned(floor, -half), turned(rim, -half), Ink::key);
    for (double depth = r * keyway_depth; depth > 0.0; depth -= r * hatch_step)
        Draw_Line(design, surface, turned(rim - depth, half), turned(rim - depth, -half), Ink::key);
    const double mark = r * center_share;
    Draw_Line(design, surface, {-mark, 0}, {mark, 0}, Ink::axis);
    Draw_Line(design, surface, {0, -mark}, {0, mark}, Ink::axis);
}

void Draw_Keyway_Marker(Design_State& design, Surface& surface, double angle, double radius, double direction)
{
    const double a = direction * angle * Rad_per_Deg;
    const World_Point inner = Polar(radius * 0.85, a);
    const World_Point outer = Polar(radius * 1.15, a);
    Draw_Line(design, surface, inner, outer, Ink::key);
}

void Draw_Roller(Design_State& design, Surface& surface, double x, double y, double radius, Ink ink)
{
    const double half = radius * cross_share;
    Draw_Circle(design, surface, {x, y}, radius, ink);
    Draw_Line(design, surface, {x - half, y}, {x + half, y}, ink);
    Draw_Line(design, surface, {x, y - half}, {x, y + half}, ink);
}

void Draw_Follower_Translating(Design_State& design, Surface& surface, int i)
{
    Cam_Group& c = C(design);
    const Face face = Face_at(design, i, Turn_at(design, i));
    const World_Point at = Roller(design) ? Row_Point(design, 9, i, Turn_at(design, i)) : face.middle;
    c.Foll_X = at.x;
    c.Foll_Y = at.y;
    const double reach = (c.Prime_Rad + c.Follow_Rad) * 0.9 + design.motion.MaxLift;
    const auto place = [&](double along, double side) {
        return World_Point{at.x + face.axis.x * along + face.across.x * side,
                           at.y + face.axis.y * along + face.across.y * side};
    };
    const double stem = Roller(design) ? c.Follow_Rad * stem_share : c.Prime_Rad * 0.08;
    Draw_Line(design, surface, place(0, stem), place(reach, stem), Ink::follower);
    Draw_Line(design, surface, place(0, -stem), place(reach, -stem), Ink::follower);
    if (Roller(design))
        Draw_Roller(design, surface, at.x, at.y, c.Follow_Rad, Ink::follower);
    else
        Draw_Line(design, surface, place(0, -Face_Half_Width(design)), place(0, Face_Half_Width(design)),
                  Ink::follower);
}

void Draw_Follower_Arm(Design_State& design, Surface& surface, int i)
{
    Cam_Group& c = C(design);
    const World_Point pivot{c.ArmX, c.ArmY};
    const World_Point at = Row_Point(design, 9, i, Turn_at(design, i));
    c.Foll_X = at.x;
    c.Foll_Y = at.y;
    if (Roller(design)) {
        Draw_Line(design, surface, pivot, at, Ink::follower);
        Draw_Roller(design, surface, at.x, at.y, c.Follow_Rad, Ink::follower);
    } else {
        Draw_Line(design, surface, pivot, Beyond(pivot, Row_Point(design, 36, i, Turn_at(design, i))), Ink::follower);
    }
    for (double size = c.Base_Circle * pivot_share; size > 0.0; size -= c.Base_Circle * pivot_step)
        Draw_Circle(design, surface, pivot, size, Ink::follower);
}

void Trace_Roller_Point(Design_State& design, Surface& surface, int i)
{
    Trace(design, surface, 9, i, Ink::path);
}

void Trace_Cutter_Point(Design_State& design, Surface& surface, int i)
{
    Trace(design, surface, 40, i, Ink::cutter);
}

void Trace_Surface_Point(Design_State& design, Surface& surface, int i)
{
    Trace(design, surface, 36, i, Ink::surface);
}

void Trace_Key_Point(Design_State& design, Surface& surface, int i)
{
    Trace(design, surface, 38, i, Ink::key);
}

}  // namespace lobemax
