// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_picture.h"

#include <array>
#include <cmath>
#include <complex>
#include <string>

#include "core/design_state.h"

namespace lobemax {

namespace {

using Vector = std::complex<double>;

constexpr double arm = 4.0;  // the lengths of the examples, whose arm is 4
constexpr double link_3 = 7.5;
constexpr double link_4 = 5.0;
constexpr double pin = 0.22;
constexpr double floor_height = -4.0;
constexpr double ceiling = 10.5;
constexpr double left = -4.0;

Vector At_Degrees(double length, double degrees)
{
    return std::polar(length, degrees * Rad_per_Deg);
}

/// Where two links from P and Q meet: to the left of the line from P to Q.
Vector Meet(const Vector& P, double from_P, const Vector& Q, double from_Q)
{
    const Vector line = Q - P;
    const double distance = std::abs(line);
    const double along = (distance * distance + from_P * from_P - from_Q * from_Q) / (2.0 * distance);
    const double across = std::sqrt(from_P * from_P - along * along);
    return P + line / distance * Vector{along, across};
}

/// A surface whose heights grow upward.
class Sheet {
public:
    Sheet(Surface& surface, double right) : surface_(surface)
    {
        surface_.Scale(left, 0.0, right, ceiling - floor_height);
        surface_.Clear();
    }
    void Line(const Vector& from, const Vector& to, Ink ink)
    {
        surface_.Line(from.real(), Down(from), to.real(), Down(to), ink);
    }
    void Circle(const Vector& at, double radius, Ink ink) { surface_.Circle(at.real(), Down(at), radius, ink); }
    void Outline(std::initializer_list<Vector> corners, Ink ink)
    {
        std::vector<World_Point> points;
        for (const Vector& corner : corners)
            points.push_back({corner.real(), Down(corner)});
        surface_.Outline(points, ink);
    }
    void Label(const Vector& at, const std::string& text) { surface_.Label(at.real(), Down(at), text, Ink::axis); }

    /// A link with its pins and its number beside its middle.
    void Link(const Vector& from, const Vector& to, const std::string& number)
    {
        constexpr double beside = 0.65;
        Line(from, to, Ink::follower);
        Circle(from, pin, Ink::follower);
        Circle(to, pin, Ink::follower);
        const Vector line = to - from;
        Label((from + to) / 2.0 + line / std::abs(line) * Vector{0.0, beside}, number);
    }

    /// A pivot on the ground, with its name.
    void Pivot(const Vector& at, const std::string& name)
    {
        constexpr double half = 0.7;
        constexpr double tall = 1.1;
        const Vector below = at - Vector{0.0, tall};
        Line(at, below - half, Ink::shaft);
        Line(at, below + half, Ink::shaft);
        Ground(below - 1.5 * half, below + 1.5 * half);
        Circle(at, pin, Ink::shaft);
        Label(below - Vector{0.0, 1.1}, name);
    }

    /// The frame, hatched below its line.
    void Ground(const Vector& from, const Vector& to)
    {
        constexpr double hatch = 0.35;
        const int strokes = static_cast<int>(std::abs(to - from) / hatch);
        Line(from, to, Ink::shaft);
        for (int i = 1; i <= strokes; ++i) {
            const Vector at = from + (to - from) * (double(i) / strokes);
            Line(at, at - Vector{hatch, hatch}, Ink::shaft);
        }
    }

    /// A slider on its guide.
    void Slider(const Vector& at, const std::string& number)
    {
        constexpr double half = 0.9;
        constexpr double tall = 0.5;
        const Vector corner{half, tall};
        Outline({at - corner, at + std::conj(corner), at + corner, at - std::conj(corner)}, Ink::path);
        Ground(at - Vector{2.0 * half, tall}, at + Vector{2.0 * half, -tall});
        Circle(at, pin, Ink::follower);
        Label(at + Vector{0.0, tall + 0.65}, number);
    }

private:
    double Down(const Vector& at) const { return ceiling - at.imag(); }
    Surface& surface_;
};

/// Cam, roller and arm, and the arm's pivot. @return the end of link 2, which is fixed to the arm
Vector Driven_Arm(Sheet& s)
{
    constexpr double roller = 0.6;
    const Vector pivot{4.0, 2.5};
    const Vector end = pivot + At_Degrees(arm, 168.0);
    const Vector eccentric{0.0, 0.5};
    s.Circle(eccentric, std::abs(end - eccentric) - roller, Ink::cam);
    s.Circle({}, 0.45, Ink::shaft);
    s.Circle(end, roller, Ink::follower);
    s.Line(end, pivot, Ink::follower);
    const Vector A = pivot + At_Degrees(arm, 78.0);
    s.Pivot(pivot, "O2");
    s.Link(pivot, A, "2");
    return A;
}

}  // namespace

void Draw_Linkage_Type(Surface& surface, int Linkage_Type)
{
    if (Linkage_Type < 0 || Linkage_Type > 3)
        return;
    const bool slider = Linkage_Type > 1;
    const bool six = Linkage_Type % 2 == 1;
    Sheet sheet(surface, six ? 23.0 : slider ? 16.0 : 14.0);
    const Vector A = Driven_Arm(sheet);
    if (slider && !six) {
        constexpr double height = 6.5;  // of the slider's axis
        constexpr double coupler = 8.0;
        const double rise = A.imag() - height;
        const Vector end{A.real() + std::sqrt(coupler * coupler - rise * rise), height};
        sheet.Link(A, end, "3");
        sheet.Slider(end, "4");
        return;
    }
    const Vector O4{11.0, 2.5};
    const Vector B = Meet(A, link_3, O4, link_4);
    sheet.Link(A, B, "3");
    sheet.Pivot(O4, "O4");
    sheet.Link(B, O4, "4");
    if (!six)
        return;
    if (slider) {
        constexpr double height = 7.0;
        constexpr double coupler = 8.0;
        const double rise = B.imag() - height;
        const Vector end{B.real() + std::sqrt(coupler * coupler - rise * rise), height};
        sheet.Link(B, end, "5");
        sheet.Slider(end, "6");
        return;
    }
    const Vector O6{18.0, 2.5};
    const Vector C = Meet(B, link_3, O6, arm);
    sheet.Link(B, C, "5");
    sheet.Pivot(O6, "O6");
    sheet.Link(C, O6, "6");
}

}  // namespace lobemax
