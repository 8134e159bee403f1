// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/model_picture.h"

#include <array>
#include <string>

namespace lobemax {

namespace {

// A world with the camshaft at the bottom, and the train left of the middle where a closing spring stands beside it.
constexpr double width = 14.2;
constexpr double height = 18.4;
constexpr double axis = 4.6;       // of the train
constexpr double side = 10.9;      // of a closure spring that stands at the cam's end
constexpr double apart = 0.9;      // of a spring and a damper from the axis between them
constexpr double beside = 2.3;     // of their symbols from that axis: what a small picture's letters need
constexpr double half_mass = 2.0;  // half the width of a mass
constexpr double tall_mass = 1.8;

/// A surface whose heights grow upward, with its drawing moved sideways.
class Sheet {
public:
    Sheet(Surface& surface, double aside) : surface_(surface), aside_(aside)
    {
        surface_.Scale(0.0, 0.0, width, height);
        surface_.Clear();
    }
    void PSet(double x, double y, Ink ink) { surface_.PSet(x + aside_, height - y, ink); }
    void Line_to(double x, double y, Ink ink) { surface_.Line_to(x + aside_, height - y, ink); }
    void Line(double x1, double y1, double x2, double y2, Ink ink)
    {
        surface_.Line(x1 + aside_, height - y1, x2 + aside_, height - y2, ink);
    }
    void Circle(double x, double y, double radius, Ink ink) { surface_.Circle(x + aside_, height - y, radius, ink); }
    void Box(double left, double bottom, double right, double top, Ink ink)
    {
        const double low = height - bottom;
        const double high = height - top;
        const std::array<World_Point, 4> corners{
            {{left + aside_, low}, {right + aside_, low}, {right + aside_, high}, {left + aside_, high}}};
        surface_.Outline(corners, ink);
    }
    void Label(double x, double y, const std::string& text) { surface_.Label(x + aside_, height - y, text, Ink::axis); }

private:
    Surface& surface_;
    double aside_;
};

/// Zigzag between two heights, with straight ends.
void Spring(Sheet& s, double x, double low, double high)
{
    constexpr int turns = 5;
    constexpr double half = 0.42;
    constexpr double ends = 0.18;  // of the length, both together
    const double from = low + (high - low) * ends / 2.0;
    const double turn = (high - low) * (1.0 - ends) / turns;
    s.PSet(x, low, Ink::follower);
    s.Line_to(x, from, Ink::follower);
    for (int i = 0; i < turns; ++i) {
        s.Line_to(x - half, from + (i + 0.25) * turn, Ink::follower);
        s.Line_to(x + half, from + (i + 0.75) * turn, Ink::follower);
    }
    s.Line_to(x, from + turns * turn, Ink::follower);
    s.Line_to(x, high, Ink::follower);
}

/// A cup that stands on its rod and a piston that hangs in it.
void Damper(Sheet& s, double x, double low, double high)
{
    constexpr double half = 0.42;
    constexpr double piston = 0.34;
    const double length = high - low;
    const double floor = low + 0.32 * length;
    const double rim = low + 0.70 * length;
    const double head = low + 0.50 * length;
    s.Line(x, low, x, floor, Ink::follower);
    s.Line(x - half, floor, x + half, floor, Ink::follower);
    s.Line(x - half, floor, x - half, rim, Ink::follower);
    s.Line(x + half, floor, x + half, rim, Ink::follower);
    s.Line(x - piston, head, x + piston, head, Ink::follower);
    s.Line(x, head, x, high, Ink::follower);
}

/// A spring and a damper side by side, between two bars, with their symbols.
void Coupling(Sheet& s, double x, double low, double high, const std::string& number)
{
    const double middle = (low + high) / 2.0;
    s.Line(x - apart, low, x + apart, low, Ink::follower);
    s.Line(x - apart, high, x + apart, high, Ink::follower);
    Spring(s, x - apart, low, high);
    Damper(s, x + apart, low, high);
    s.Label(x - beside, middle, "k" + number);
    s.Label(x + beside, middle, "c" + number);
}

void Mass(Sheet& s, double bottom, const std::string& symbol)
{
    s.Box(axis - half_mass, bottom, axis + half_mass, bottom + tall_mass, Ink::cam);
    s.Label(axis, bottom + tall_mass / 2.0, symbol);
}

/// The frame, hatched above its line.
void Frame(Sheet& s, double x, double y)
{
    constexpr double half = 1.7;
    constexpr int strokes = 8;
    s.Line(x - half, y, x + half, y, Ink::shaft);
    for (int i = 0; i < strokes; ++i) {
        const double from = x - half + 2.0 * half * i / strokes;
        s.Line(from, y, from + 2.0 * half / strokes, y + 0.45, Ink::shaft);
    }
}

/// An upward arrow beside the train: what moves there.
void Motion(Sheet& s, double x, double y, const std::string& symbol)
{
    s.Line(x, y, x, y + 1.4, Ink::path);
    s.Line(x, y + 1.4, x - 0.22, y + 0.95, Ink::path);
    s.Line(x, y + 1.4, x + 0.22, y + 0.95, Ink::path);
    s.Label(x - 0.65, y + 0.7, symbol);
}

/// A disk cam with the roller on it; with form closure the roller runs in a groove. @return the height of the roller's
/// pin
double Cam_and_Roller(Sheet& s, bool groove)
{
    constexpr double shaft = 3.0;  // its height
    constexpr double base = 1.7;
    constexpr double eccentric = 0.35;
    constexpr double roller = 0.6;
    const double pin = shaft + eccentric + base + roller;
    s.Circle(axis, shaft + eccentric, base, Ink::cam);
    if (groove)
        s.Circle(axis, shaft + eccentric, base + 2.0 * roller, Ink::cam);
    s.Circle(axis, shaft, 0.45, Ink::shaft);
    s.Circle(axis, pin, roller, Ink::follower);
    s.Circle(axis, pin, 0.12, Ink::follower);
    Motion(s, axis - half_mass - 0.6, pin - 0.4, "s");
    return pin;
}

}  // namespace

void Draw_Model(Surface& surface, int Model_Type)
{
    if (Model_Type < 1 || Model_Type > 5)
        return;
    const bool form_closed = Model_Type == 1;
    const bool two_masses = Model_Type == 4 || Model_Type == 5;
    const bool at_cam = Model_Type == 3 || Model_Type == 4;  // where the closure spring stands
    const std::string train = at_cam ? "2" : "1";
    const std::string closure = at_cam ? "1" : "2";
    Sheet sheet(surface, at_cam ? 0.0 : width / 2.0 - axis);  // a train alone stands in the middle
    const double pin = Cam_and_Roller(sheet, form_closed);

    // What rides on the roller: the first mass, or a link without mass.
    constexpr double foot = 7.4;
    double top = foot;
    sheet.Line(axis, pin, axis, foot, Ink::follower);
    if (two_masses) {
        Mass(sheet, foot, "m1");
        top = foot + tall_mass;
    } else if (at_cam) {
        sheet.Line(axis, foot, axis, foot + tall_mass / 2.0, Ink::follower);
        top = foot + tall_mass / 2.0;
    }

    // The train's own elasticity, and the mass at its end.
    constexpr double coupling = 3.2;
    const double end = top + coupling;
    Coupling(sheet, axis, top, end, train);
    Mass(sheet, end, two_masses ? "m2" : "m1");
    Motion(sheet, axis - half_mass - 0.6, end + 0.2, "x");

    // The spring that closes the joint.
    if (form_closed)
        return;
    if (at_cam) {
        const double arm = two_masses ? foot + tall_mass / 2.0 : foot;
        sheet.Line(two_masses ? axis + half_mass : axis, arm, side, arm, Ink::follower);
        sheet.Line(side, arm, side, arm + 0.5, Ink::follower);
        Coupling(sheet, side, arm + 0.5, arm + 0.5 + coupling, closure);
        Frame(sheet, side, arm + 0.5 + coupling);
    } else {
        const double above = end + tall_mass;
        Coupling(sheet, axis, above, above + coupling, closure);
        Frame(sheet, axis, above + coupling);
    }
}

}  // namespace lobemax
