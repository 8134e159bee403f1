// SPDX-License-Identifier: GPL-3.0-or-later
/// The drawing surface of cams and plots, in world coordinates: screen, picture, SVG, PDF and printer are backends of
/// it, and so is the recorder of the tests.
#pragma once

#include <span>
#include <string_view>

namespace lobemax {

/// What a line stands for; the backend gives it the colour of its palette.
enum class Ink {
    cam,
    shaft,
    prime,
    follower,
    path,
    cutter,
    surface,
    key,
    axis,
    curve,
    link,
    ground,
    slider,
    effector,
    broken,  // of a linkage that does not connect
    warned,  // a stretch of an outline that must not be cut so
};

struct World_Point {
    double x = 0.0;
    double y = 0.0;
};

class Surface {
public:
    virtual ~Surface() = default;

    /// Sets the world window: x from left to right, y from top to bottom. Both scales are equal: the window is fitted
    /// whole into the picture, in its middle.
    virtual void Scale(double left, double top, double right, double bottom) = 0;
    /// Sets a world window whose scales are each its own: x from left to right, y from top to bottom, top above or
    /// below bottom. For curves, not for shapes.
    virtual void Window(double left, double top, double right, double bottom) = 0;
    virtual void Clear() = 0;
    /// Marks a point and leaves the pen there.
    virtual void PSet(double x, double y, Ink ink) = 0;
    virtual void Line(double x1, double y1, double x2, double y2, Ink ink) = 0;
    /// From the pen to a point, where the pen then is.
    virtual void Line_to(double x, double y, Ink ink) = 0;
    virtual void Circle(double x, double y, double radius, Ink ink) = 0;
    /// A closed curve, its inside lightly filled.
    virtual void Outline(std::span<const World_Point> points, Ink ink) = 0;
    /// A word about a point, upright and as large as the letters of a screen.
    virtual void Label(double x, double y, std::string_view text, Ink ink) = 0;
};

}  // namespace lobemax
