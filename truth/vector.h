// SPDX-License-Identifier: GPL-3.0-or-later
/// Points and directions of the plane of a cam.
#pragma once

#include <cmath>

namespace lobemax {

struct Vector {
    double x = 0.0;
    double y = 0.0;
};

constexpr Vector operator+(Vector a, Vector b)
{
    return {a.x + b.x, a.y + b.y};
}
constexpr Vector operator-(Vector a, Vector b)
{
    return {a.x - b.x, a.y - b.y};
}
constexpr Vector operator*(double k, Vector a)
{
    return {k * a.x, k * a.y};
}
constexpr double Dot(Vector a, Vector b)
{
    return a.x * b.x + a.y * b.y;
}
/// Positive where b stands counterclockwise of a.
constexpr double Cross(Vector a, Vector b)
{
    return a.x * b.y - a.y * b.x;
}
/// A quarter turn counterclockwise.
constexpr Vector Quarter(Vector a)
{
    return {-a.y, a.x};
}
constexpr double Square(Vector a)
{
    return Dot(a, a);
}
inline double Length(Vector a)
{
    return std::sqrt(Square(a));
}
/// The unit vector at an angle in radians.
inline Vector Direction(double angle)
{
    return {std::cos(angle), std::sin(angle)};
}
/// a turned by the angle of the unit vector e.
constexpr Vector Turned(Vector a, Vector e)
{
    return {a.x * e.x - a.y * e.y, a.x * e.y + a.y * e.x};
}

}  // namespace lobemax
