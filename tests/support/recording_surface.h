// SPDX-License-Identifier: GPL-3.0-or-later
/// A surface that writes down what is drawn on it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "core/surface.h"

namespace lobemax::testing {

class Recording_Surface : public Surface {
public:
    struct Drawn_Circle {
        double x, y, radius;
        Ink ink;
    };
    struct Drawn_Line {
        double x1, y1, x2, y2;
        Ink ink;
    };
    struct Drawn_Label {
        double x, y;
        std::string text;
    };
    struct Drawn_Outline {
        std::vector<World_Point> points;
        Ink ink;
    };

    void Scale(double l, double t, double r, double b) override
    {
        left = l;
        top = t;
        right = r;
        bottom = b;
        ++scales;
    }
    void Window(double l, double t, double r, double b) override { Scale(l, t, r, b); }
    void Clear() override
    {
        circles.clear();
        lines.clear();
        outlines.clear();
        labels.clear();
    }
    void PSet(double x, double y, Ink) override { pen_ = {x, y}; }
    void Line(double x1, double y1, double x2, double y2, Ink ink) override
    {
        lines.push_back({x1, y1, x2, y2, ink});
        pen_ = {x2, y2};
    }
    void Line_to(double x, double y, Ink ink) override { Line(pen_.x, pen_.y, x, y, ink); }
    void Circle(double x, double y, double radius, Ink ink) override { circles.push_back({x, y, radius, ink}); }
    void Outline(std::span<const World_Point> points, Ink ink) override
    {
        outlines.push_back({{points.begin(), points.end()}, ink});
    }
    void Label(double x, double y, std::string_view text, Ink) override { labels.push_back({x, y, std::string(text)}); }

    auto Lines_in(Ink ink) const
    {
        return std::ranges::count_if(lines, [ink](const Drawn_Line& line) { return line.ink == ink; });
    }
    auto Circles_in(Ink ink) const
    {
        return std::ranges::count_if(circles, [ink](const Drawn_Circle& circle) { return circle.ink == ink; });
    }

    double left = 0, top = 0, right = 0, bottom = 0;
    int scales = 0;
    std::vector<Drawn_Circle> circles;
    std::vector<Drawn_Line> lines;
    std::vector<Drawn_Label> labels;
    std::vector<Drawn_Outline> outlines;

private:
    World_Point pen_;
};

}  // namespace lobemax::testing
