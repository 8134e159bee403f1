// SPDX-License-Identifier: GPL-3.0-or-later
/// Faces between outlines of arcs and lines, and what makes one checked solid of them. Lengths in millimetres.
#pragma once

#include <TopoDS_Shape.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>
#include <array>
#include <string>
#include <vector>

#include "truth/retrace.h"

namespace lobemax {

using Outline = std::vector<Surface_Element>;

/// The area that a closed outline goes round, positive counterclockwise.
double Area_of(const Outline& outline);

/// The same way run through backwards.
Outline Reversed(const Outline& outline);

/// Run through counterclockwise.
Outline Counterclockwise(Outline outline);

Outline Scaled(Outline outline, double scale);

/// A circle about the origin, counterclockwise, of two halves.
Outline Circle(double radius);

/// How far a wall stands over another at the least. @param lower  places of a wall, x rising; straight between
double Least_Gap(const std::vector<Vector>& lower, const std::vector<Vector>& upper);

/// Faces that become the skin of a body.
class Skin {
public:
    /// A wire at a height z.
    static TopoDS_Wire Wire(const Outline& outline, double z);

    /// The wall over an outline from a height to another. @return its other end
    TopoDS_Wire Wall(const TopoDS_Wire& wire, double height);

    /// A flat face square to z: within a counterclockwise outline, and outside of others.
    void Flat(const TopoDS_Wire& outer, const std::vector<TopoDS_Wire>& holes);

    /// A flat face with corners.
    void Polygon(const std::vector<std::array<double, 3>>& corners);

    void Add(const TopoDS_Shape& face) { faces_.push_back(face); }

    /// Turns the body about x, y to z.
    void Stand_Up() { standing_ = true; }

    /// The solid. @return why there is none; empty where there is
    std::string Close(TopoDS_Solid& solid) const;

private:
    std::vector<TopoDS_Shape> faces_;
    bool standing_ = false;
};

/// What a checked solid measures.
struct Solid_Measure {
    double volume = 0.0;
    double area = 0.0;
    int faces = 0;
};

/// Checks a solid: valid, closed, of a volume above 0. @return why it is not; empty where it is
std::string Check_Solid(const TopoDS_Solid& solid, Solid_Measure& measure);

}  // namespace lobemax
