// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/body_parts.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepLib.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Shell.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Circ.hxx>
#include <gp_Pln.hxx>
#include <gp_Trsf.hxx>
#include <limits>

#include "core/design_state.h"

namespace lobemax {

namespace {

constexpr double sewn = 1e-6;      // mm: edges nearer than this are one
constexpr double straight = 1e-8;  // mm: an arc as flat as this is a line

gp_Pnt Point(Vector p, double z)
{
    return {p.x, p.y, z};
}

TopoDS_Edge Edge_of(const Surface_Element& e, const TopoDS_Vertex& from, const TopoDS_Vertex& to, double z)
{
    const Vector chord = e.to - e.from;
    const double length = Length(chord);
    const double b = e.bulge;
    if (std::abs(b) * length < 2.0 * straight)
        return BRepBuilderAPI_MakeEdge(from, to).Edge();
    const double radius = length * (1.0 + b * b) / (4.0 * std::abs(b));
    // From the chord's middle to the centre, to the left where the arc turns left by less than half a turn.
    const double left = (1.0 - b * b) / (4.0 * b);
    const Vector center = 0.5 * (e.from + e.to) + left * Quarter(chord);
    const gp_Ax2 axes(Point(center, z), gp_Dir(0.0, 0.0, b > 0.0 ? 1.0 : -1.0));
    BRepBuilderAPI_MakeEdge edge(gp_Circ(axes, radius), from, to);
    return edge.Edge();
}

int Count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind)
{
    int count = 0;
    for (TopExp_Explorer it(shape, kind); it.More(); it.Next())
        ++count;
    return count;
}

}  // namespace

double Area_of(const Outline& outline)
{
    double area = 0.0;
    for (const Surface_Element& e : outline) {
        area += 0.5 * Cross(e.from, e.to);
        if (e.bulge != 0.0) {
            const double angle = 4.0 * std::atan(e.bulge);
            const double radius = Length(e.to - e.from) / (2.0 * std::sin(0.5 * angle));
            area += 0.5 * radius * radius * (angle - std::sin(angle));
        }
    }
    return area;
}

Outline Reversed(const Outline& outline)
{
    Outline back(outline.rbegin(), outline.rend());
    for (Surface_Element& e : back) {
        std::swap(e.from, e.to);
        e.bulge = -e.bulge;
    }
    return back;
}

Outline Counterclockwise(Outline outline)
{
    return Area_of(outline) < 0.0 ? Reversed(outline) : outline;
}

Outline Scaled(Outline outline, double scale)
{
    for (Surface_Element& e : outline) {
        e.from = scale * e.from;
        e.to = scale * e.to;
    }
    return outline;
}

Outline Circle(double radius)
{
    return {{{radius, 0.0}, {-radius, 0.0}, 1.0}, {{-radius, 0.0}, {radius, 0.0}, 1.0}};
}

double Least_Gap(const std::vector<Vector>& lower, const std::vector<Vector>& upper)
{
    double least = std::numeric_limits<double>::infinity();
    std::size_t i = 0;
    for (const Vector& p : lower) {
        while (i + 2 < upper.size() && upper[i + 1].x < p.x)
            ++i;
        const Vector way = upper[i + 1] - upper[i];
        if (p.x < upper[i].x || p.x > upper[i + 1].x)
            continue;
        least = std::min(least, upper[i].y + (p.x - upper[i].x) * way.y / way.x - p.y);
    }
    return least;
}

TopoDS_Wire Skin::Wire(const Outline& outline, double z)
{
    const bool closed = Length(outline.front().from - outline.back().to) < sewn;
    const TopoDS_Vertex first = BRepBuilderAPI_MakeVertex(Point(outline.front().from, z)).Vertex();
    TopoDS_Vertex from = first;
    BRepBuilderAPI_MakeWire wire;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const bool last = closed && i + 1 == outline.size();
        const TopoDS_Vertex to = last ? first : BRepBuilderAPI_MakeVertex(Point(outline[i].to, z)).Vertex();
        wire.Add(Edge_of(outline[i], from, to, z));
        from = to;
    }
    return wire.Wire();
}

TopoDS_Wire Skin::Wall(const TopoDS_Wire& wire, double height)
{
    BRepPrimAPI_MakePrism prism(wire, gp_Vec(0.0, 0.0, height));
    for (TopExp_Explorer it(prism.Shape(), TopAbs_FACE); it.More(); it.Next())
        faces_.push_back(it.Current());
    return TopoDS::Wire(prism.LastShape());
}

void Skin::Flat(const TopoDS_Wire& outer, const std::vector<TopoDS_Wire>& holes)
{
    const gp_Pnt any = BRep_Tool::Pnt(TopoDS::Vertex(TopExp_Explorer(outer, TopAbs_VERTEX).Current()));
    BRepBuilderAPI_MakeFace face(gp_Pln(gp_Pnt(0.0, 0.0, any.Z()), gp_Dir(0.0, 0.0, 1.0)), outer);
    for (const TopoDS_Wire& hole : holes)
        face.Add(TopoDS::Wire(hole.Reversed()));
    faces_.push_back(face.Face());
}

void Skin::Polygon(const std::vector<std::array<double, 3>>& corners)
{
    BRepBuilderAPI_MakePolygon polygon;
    for (const auto& [x, y, z] : corners)
        polygon.Add(gp_Pnt(x, y, z));
    polygon.Close();
    faces_.push_back(BRepBuilderAPI_MakeFace(polygon.Wire(), true).Face());
}

std::string Skin::Close(TopoDS_Solid& solid) const
{
    BRepBuilderAPI_Sewing sewing(sewn);
    for (const TopoDS_Shape& face : faces_)
        sewing.Add(face);
    sewing.Perform();
    const TopoDS_Shape whole = sewing.SewedShape();
    if (whole.IsNull() || Count(whole, TopAbs_SHELL) != 1 || sewing.NbFreeEdges() > 0 || sewing.NbMultipleEdges() > 0)
        return "The faces of this body do not close: " + std::to_string(sewing.NbFreeEdges()) +
               " of their edges have no neighbour, " + std::to_string(sewing.NbMultipleEdges()) + " more than one.";
    const TopoDS_Shell shell = TopoDS::Shell(TopExp_Explorer(whole, TopAbs_SHELL).Current());
    BRep_Builder().MakeSolid(solid);
    BRep_Builder().Add(solid, shell);
    if (!BRepLib::OrientClosedSolid(solid))
        return "The faces of this body do not close.";
    if (standing_) {
        gp_Trsf turned;
        turned.SetRotation(gp::OX(), 0.5 * PI);
        solid = TopoDS::Solid(BRepBuilderAPI_Transform(solid, turned, true).Shape());
    }
    return "";
}

std::string Check_Solid(const TopoDS_Solid& solid, Solid_Measure& measure)
{
    for (TopExp_Explorer it(solid, TopAbs_SHELL); it.More(); it.Next())
        if (!BRep_Tool::IsClosed(it.Current()))
            return "This body is not closed.";
    if (!BRepCheck_Analyzer(solid).IsValid())
        return "This body is not valid: its faces meet or cross where they should not.";
    constexpr double exact = 1e-9;
    GProp_GProps by_volume;
    BRepGProp::VolumeProperties(solid, by_volume, exact);
    GProp_GProps by_area;
    BRepGProp::SurfaceProperties(solid, by_area, exact);
    measure.volume = by_volume.Mass();
    measure.area = by_area.Mass();
    measure.faces = Count(solid, TopAbs_FACE);
    if (!(measure.volume > 0.0) || !std::isfinite(measure.volume))
        return "This body has no volume.";
    return "";
}

}  // namespace lobemax
