// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_drawing.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "camgeom/profile.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"

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
constexpr int path_step = 1;          // degrees between the rollers that are drawn along a path

Cam_Group& C()
{
    return design.cam;
}

double Data(int row, int i)
{
    return design.results.CalcData(row, i);
}

/// A point of the cam's frame in the drawing: turned with a translating follower's axis.
World_Point In_Drawing(double x, double y)
{
    const double turn = C().Translating ? C().Follower_Angle * Rad_per_Deg : 0.0;
    return {x * std::cos(turn) - y * std::sin(turn), x * std::sin(turn) + y * std::cos(turn)};
}

World_Point Row_Point(int row, int i)
{
    return In_Drawing(Data(row, i), Data(row + 1, i));
}

void Draw_Line(Surface& s, World_Point a, World_Point b, Ink ink)
{
    s.Line(a.x, C().Flip_Y - a.y, b.x, C().Flip_Y - b.y, ink);
}

void Draw_Circle(Surface& s, World_Point center, double radius, Ink ink)
{
    s.Circle(center.x, C().Flip_Y - center.y, radius, ink);
}

World_Point Polar(double radius, double radians)
{
    return {radius * std::cos(radians), radius * std::sin(radians)};
}

/// Points in the order in which the cam turns: from the last down for a clockwise one.
int In_Order(int i)
{
    return C().Rotflag < 0 ? design.motion.Max_Data_Points_used - i : i;
}

void Draw_Outline(Surface& s, int row, Ink ink)
{
    std::vector<World_Point> points;
    const int last = design.motion.Max_Data_Points_used;
    points.reserve(static_cast<std::size_t>(last + 1));
    for (int i = 0; i <= last; ++i) {
        World_Point p = Row_Point(row, In_Order(i));
        p.y = C().Flip_Y - p.y;
        points.push_back(p);
    }
    s.Outline(points, ink);
}

void Trace(Surface& s, int row, int i, Ink ink)
{
    const World_Point p = Row_Point(row, i);
    if (i == 0)
        s.PSet(p.x, C().Flip_Y - p.y, ink);
    else
        s.Line_to(p.x, C().Flip_Y - p.y, ink);
    C().Pen_X = p.x;
    C().Pen_Y = p.y;
}

bool Roller()
{
    return C().Followtype == 1 && C().Follow_Rad > 0.0;
}

void Draw_Follower(Surface& s)
{
    if (C().Translating)
        Draw_Follower_Translating(s);
    else
        Draw_Follower_Arm(s);
}

double Marker_Angle(double start)
{
    return start + (C().Translating ? double{C().Cam_Start_Polar} : double{C().Arm_Start_Theta});
}

bool Radial_Ready()
{
    return C().Camtype == "Radial" && design.flags.Calculated;
}

}  // namespace

bool Set_Base_Circle()
{
    Cam_Group& c = C();
    c.Base_Circle = c.Followtype == 1 ? c.Prime_Rad - c.Follow_Rad : double{c.Prime_Rad};
    c.Shaft_Radius = c.Base_Circle * shaft_share;
    if (c.Base_Circle > 0.0)
        return true;
    Show_Message("Something Wrong - Base Circle has become zero or minus.  Change follower radius or prime/base circle",
                 Buttons::OK, Symbol::exclamation);
    return false;
}

void Set_Scale(Surface& surface)
{
    Cam_Group& c = C();
    double low = 1000000.0;
    double high = -1000000.0;
    const auto hold = [&](World_Point p) {
        low = std::min({low, p.x, p.y});
        high = std::max({high, p.x, p.y});
    };
    const double margin = c.Prime_Rad * 0.1 + c.Follow_Rad * 1.35;
    if (c.Camtype == "Linear") {
        high = (c.Prime_Rad * PI2 + c.Follow_Rad) * 1.25;
        low = -high;
    } else {
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
            hold(Row_Point(9, i));
            hold(Row_Point(36, i));
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
    c.View_Left = low * c.Zoom_Factor;
    c.View_Right = high * c.Zoom_Factor;
    c.Flip_Y = c.View_Left + c.View_Right;
    surface.Clear();
    surface.Scale(c.View_Left, c.View_Left, c.View_Right, c.View_Right);
}

bool Plot_Cam_Setup(Surface& surface)
{
    Cam_Group& c = C();
    if (c.Followtype == 2) {
        Show_Message("Something is wrong.  Cannot have a flat follower on a linear cam", Buttons::OK,
                     Symbol::information);
        return false;
    }
    Set_Scale(surface);
    const double L = c.Prime_Rad * PI2;
    const double u = L / 6.0;
    const double left = -L / 2;
    const double right = L / 2;
    for (const double y : {-1.25 * u, 1.25 * u})
        Draw_Line(surface, {left, y}, {right, y}, Ink::cam);
    for (const double x : {left, right}) {
        Draw_Line(surface, {x, -1.25 * u}, {x, 1.25 * u}, Ink::cam);
        Draw_Line(surface, {x, -1.15 * u}, {x, 1.15 * u}, Ink::key);
    }
    constexpr int ticks = 12;
    for (int k = 1; k < ticks; ++k) {
        const double x = left + L * k / ticks;
        Draw_Line(surface, {x, -0.95 * u}, {x, -1.15 * u}, Ink::axis);
    }
    // The track, its displacement up from the middle of the strip; the surface beside it.
    const int last = design.motion.Max_Data_Points_used;
    for (const auto& [lambda_row, z_row, ink] : {std::tuple{12, 11, Ink::path}, std::tuple{37, 36, Ink::surface}})
        for (int i = 0; i <= last; ++i) {
            const double x = left + Data(lambda_row, i);
            const double y = c.Flip_Y - Data(z_row, i);
            if (i == 0)
                surface.PSet(x, y, ink);
            else
                surface.Line_to(x, y, ink);
        }
    Draw_Roller(surface, left + Data(12, 0), Data(11, 0), c.Follow_Rad, Ink::follower);
    return true;
}

bool Draw_Cam_Preview(Surface& surface)
{
    if (C().Camtype == "Linear")
        return design.flags.Calculated && Plot_Cam_Setup(surface);
    if (!Radial_Ready() || !Set_Base_Circle())
        return false;
    Set_Scale(surface);
    Draw_Outline(surface, 36, Ink::cam);
    Set_Keyway_Angle();
    Set_Machine_Zero();
    Draw_Shaft(surface, C().Cam_Draw_Angle);
    Draw_Follower(surface);
    return true;
}

bool Draw_Cam(Surface& surface)
{
    Cam_Group& c = C();
    if (c.Camtype == "Linear")
        return design.flags.Calculated && Plot_Cam_Setup(surface);
    if (!Radial_Ready() || !design.flags.Sized || !Set_Base_Circle())
        return false;
    Set_Scale(surface);
    c.Cam_Start_Polar = Atan2D(Data(9, 0), -c.Rotflag * Data(10, 0));
    Draw_Outline(surface, 36, Ink::cam);
    Set_Keyway_Angle();
    Set_Machine_Zero();
    Draw_Shaft(surface, c.Cam_Draw_Angle);
    Draw_Follower(surface);
    const int last = design.motion.Max_Data_Points_used;
    if (c.Show_Follower_Path) {
        for (int i = 0; i <= last; ++i)
            Trace_Roller_Point(surface, i);
        const int rollers = To_Integer(3.0 * path_step / design.motion.Deltatheta);
        for (int k = 1; k <= rollers && Roller(); ++k) {
            const World_Point p = Row_Point(9, k);
            Draw_Circle(surface, p, c.Follow_Rad, Ink::path);
        }
        Draw_Keyway_Marker(surface, Marker_Angle(0.0), c.Base_Circle, 1.0);
    }
    if (c.Show_Cutter_Path)
        for (int i = 0; i <= last; ++i)
            Trace_Cutter_Point(surface, i);
    if (c.Show_Surface)
        for (int i = 0; i <= last; ++i)
            Trace_Surface_Point(surface, i);
    if (c.Show_Cam_Key) {
        for (int i = 0; i <= last; ++i)
            Trace_Key_Point(surface, i);
        Draw_Keyway_Marker(surface, Marker_Angle(c.Cam_Shift_Sign_Angle), c.Base_Circle, 1.0);
    }
    return true;
}

void Draw_Shaft(Surface& surface, double angle)
{
    const Cam_Group& c = C();
    const double r = c.Shaft_Radius;
    Draw_Circle(surface, {0, 0}, r, Ink::shaft);
    if (c.Show_Prime || c.Camtype == "Barrel")
        Draw_Circle(surface, {0, 0}, c.Prime_Rad, Ink::prime);
    Draw_Circle(surface, {0, 0}, c.Base_Circle, Ink::shaft);
    // The keyway: a slot at the rim, hatched by chords from its floor outward.
    const double a = angle * Rad_per_Deg;
    const double half = r * std::cos(rim_angle);
    const double rim = r * std::sin(rim_angle);
    const auto turned = [a](double along, double across) {
        return World_Point{along * std::cos(a) - across * std::sin(a), along * std::sin(a) + across * std::cos(a)};
    };
    const double floor = rim - r * keyway_depth;
    Draw_Line(surface, turned(rim, half), turned(floor, half), Ink::key);
    Draw_Line(surface, turned(floor, half), turned(floor, -half), Ink::key);
    Draw_Line(surface, turned(floor, -half), turned(rim, -half), Ink::key);
    for (double depth = r * keyway_depth; depth > 0.0; depth -= r * hatch_step)
        Draw_Line(surface, turned(rim - depth, half), turned(rim - depth, -half), Ink::key);
    const double mark = r * center_share;
    Draw_Line(surface, {-mark, 0}, {mark, 0}, Ink::axis);
    Draw_Line(surface, {0, -mark}, {0, mark}, Ink::axis);
}

void Draw_Keyway_Marker(Surface& surface, double angle, double radius, double direction)
{
    const double a = direction * angle * Rad_per_Deg;
    const World_Point inner = Polar(radius * 0.85, a);
    const World_Point outer = Polar(radius * 1.15, a);
    Draw_Line(surface, inner, outer, Ink::key);
}

void Draw_Roller(Surface& surface, double x, double y, double radius, Ink ink)
{
    const double half = radius * cross_share;
    Draw_Circle(surface, {x, y}, radius, ink);
    Draw_Line(surface, {x - half, y}, {x + half, y}, ink);
    Draw_Line(surface, {x, y - half}, {x, y + half}, ink);
}

void Draw_Follower_Translating(Surface& surface)
{
    Cam_Group& c = C();
    const World_Point axis = In_Drawing(1, 0);
    const World_Point across{-axis.y, axis.x};
    const World_Point at = Row_Point(9, 0);
    c.Foll_X = at.x;
    c.Foll_Y = at.y;
    const double reach = (c.Prime_Rad + c.Follow_Rad) * 0.9 + design.motion.MaxLift;
    const auto place = [&](double along, double side) {
        return World_Point{at.x + axis.x * along + across.x * side, at.y + axis.y * along + across.y * side};
    };
    if (Roller()) {
        const double half = c.Follow_Rad * stem_share;
        Draw_Line(surface, place(0, half), place(reach, half), Ink::follower);
        Draw_Line(surface, place(0, -half), place(reach, -half), Ink::follower);
        Draw_Roller(surface, at.x, at.y, c.Follow_Rad, Ink::follower);
        return;
    }
    // A flat face: across the axis, at the height of the contact point.
    const double face = (c.Face_Width > 0.0 ? double{c.Face_Width} : c.Prime_Rad * 1.2) / 2;
    const double stem = c.Prime_Rad * 0.08;
    Draw_Line(surface, place(0, -face), place(0, face), Ink::follower);
    Draw_Line(surface, place(0, stem), place(reach, stem), Ink::follower);
    Draw_Line(surface, place(0, -stem), place(reach, -stem), Ink::follower);
}

void Draw_Follower_Arm(Surface& surface)
{
    Cam_Group& c = C();
    const World_Point pivot{c.ArmX, c.ArmY};
    const World_Point at = Row_Point(9, 0);
    c.Foll_X = at.x;
    c.Foll_Y = at.y;
    if (Roller()) {
        Draw_Line(surface, pivot, at, Ink::follower);
        Draw_Roller(surface, at.x, at.y, c.Follow_Rad, Ink::follower);
    } else {
        // The face reaches from its foot at the arm a little beyond the contact.
        const World_Point contact = Row_Point(36, 0);
        const World_Point end{pivot.x + (contact.x - pivot.x) * 1.3, pivot.y + (contact.y - pivot.y) * 1.3};
        Draw_Line(surface, pivot, end, Ink::follower);
    }
    for (double size = c.Base_Circle * pivot_share; size > 0.0; size -= c.Base_Circle * pivot_step)
        Draw_Circle(surface, pivot, size, Ink::follower);
}

void Trace_Roller_Point(Surface& surface, int i)
{
    Trace(surface, 9, i, Ink::path);
}

void Trace_Cutter_Point(Surface& surface, int i)
{
    Trace(surface, 40, i, Ink::cutter);
}

void Trace_Surface_Point(Surface& surface, int i)
{
    Trace(surface, 36, i, Ink::surface);
}

void Trace_Key_Point(Surface& surface, int i)
{
    Trace(surface, 38, i, Ink::key);
}

}  // namespace lobemax
