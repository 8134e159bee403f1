// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/drum.h"

#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRep_Builder.hxx>
#include <BSplCLib.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Line.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <gp_Pln.hxx>

#include "core/basic_types.h"
#include "core/design_state.h"
#include "shop/cam_curves.h"
#include "shop/curve_set.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;
constexpr int most_depths = 7;

// ---- Interpolation

/// Cubic pieces between nodes: through values there, along derivatives at both ends.
struct Knots {
    std::vector<double> nodes;

    TColStd_Array1OfReal Values() const
    {
        TColStd_Array1OfReal knots(1, Count());
        for (int i = 1; i <= Count(); ++i)
            knots(i) = nodes[static_cast<std::size_t>(i - 1)];
        return knots;
    }
    TColStd_Array1OfInteger Multiplicities() const
    {
        TColStd_Array1OfInteger many(1, Count());
        many.Init(1);
        many(1) = many(Count()) = 4;
        return many;
    }
    int Count() const { return static_cast<int>(nodes.size()); }
    int Poles() const { return Count() + 2; }
};

/// Control points of cubic pieces. @param values  a row a node, with that of the first derivative behind the first
///                                                and before the last: rows of the same length
std::vector<double> Cubic_Poles(const Knots& knots, std::vector<double> values, int dimension)
{
    const int poles = knots.Poles();
    TColStd_Array1OfReal flat(1, poles + 4);
    TColStd_Array1OfReal at(1, poles);
    TColStd_Array1OfInteger order(1, poles);
    order.Init(0);
    order(2) = order(poles - 1) = 1;
    for (int i = 1; i <= 4; ++i) {
        flat(i) = knots.nodes.front();
        flat(poles + i) = knots.nodes.back();
    }
    for (int i = 0; i < knots.Count(); ++i) {
        const double node = knots.nodes[static_cast<std::size_t>(i)];
        if (i > 0 && i + 1 < knots.Count())
            flat(4 + i) = node;
        at(i == 0 ? 1 : i + 1 == knots.Count() ? poles : i + 2) = node;
    }
    at(2) = knots.nodes.front();
    at(poles - 1) = knots.nodes.back();
    int failed = 0;
    BSplCLib::Interpolate(3, flat, at, order, dimension, values[0], failed);
    if (failed != 0)
        throw Fault{invalid_argument};
    return values;
}

/// Depths that a wall goes through, as shares of its height: close together at both ends.
std::vector<double> Shares(int depths)
{
    std::vector<double> shares;
    for (int i = 0; i < depths; ++i)
        shares.push_back(0.5 * (1.0 - std::cos(PI * i / (depths - 1))));
    return shares;
}

/// Control points of one polynomial through points at shares.
std::vector<double> Bezier_Poles(const std::vector<double>& shares, std::vector<double> points)
{
    const int count = static_cast<int>(shares.size());
    TColStd_Array1OfReal flat(1, 2 * count);
    TColStd_Array1OfReal at(1, count);
    TColStd_Array1OfInteger order(1, count);
    order.Init(0);
    for (int i = 1; i <= count; ++i) {
        flat(i) = 0.0;
        flat(count + i) = 1.0;
        at(i) = shares[static_cast<std::size_t>(i - 1)];
    }
    int failed = 0;
    BSplCLib::Interpolate(count - 1, flat, at, order, 3, points[0], failed);
    if (failed != 0)
        throw Fault{invalid_argument};
    return points;
}

// ---- Edges

TopoDS_Vertex Vertex_at(const gp_Pnt& point)
{
    TopoDS_Vertex vertex;
    BRep_Builder().MakeVertex(vertex, point, Precision::Confusion());
    return vertex;
}

TopoDS_Edge Edge_of(const Handle(Geom_Curve) & curve, double from, double to, const TopoDS_Vertex& first,
                    const TopoDS_Vertex& last)
{
    const BRep_Builder builder;
    TopoDS_Edge edge;
    builder.MakeEdge(edge, curve, Precision::Confusion());
    builder.Add(edge, first.Oriented(TopAbs_FORWARD));
    builder.Add(edge, last.Oriented(TopAbs_REVERSED));
    builder.Range(edge, from, to);
    return edge;
}

/// Lays an edge on a surface and widens its tolerance, and that of its ends, to what lies between.
void Lay(const TopoDS_Edge& edge, const Handle(Geom2d_Curve) & flat, const Handle(Geom_Surface) & surface,
         double tolerance = Precision::Confusion())
{
    BRep_Builder().UpdateEdge(edge, flat, surface, TopLoc_Location(), tolerance);
}

Handle(Geom2d_Line) Flat_Line(double u, double v, double du, double dv)
{
    return new Geom2d_Line(gp_Pnt2d(u, v), gp_Dir2d(du, dv));
}

/// A face inside a loop of edges.
TopoDS_Face Face_of(const Handle(Geom_Surface) & surface, const std::vector<TopoDS_Edge>& loop, bool counterclockwise)
{
    const BRep_Builder builder;
    TopoDS_Wire wire;
    builder.MakeWire(wire);
    for (std::size_t i = 0; i < loop.size(); ++i)
        builder.Add(wire, counterclockwise ? loop[i] : TopoDS::Edge(loop[loop.size() - 1 - i].Reversed()));
    wire.Closed(true);
    TopoDS_Face face;
    builder.MakeFace(face, surface, Precision::Confusion());
    builder.Add(face, wire);
    return face;
}

// ---- Walls

/// Where a point lies on the drum: a turned angle in radians, and Z.
struct Drum_Place {
    double angle;
    double z;
};

/// One wall of the drum, from the radius a to the radius b.
struct Wall {
    int side;      // of the roller that leaves it
    double shift;  // along Z
};

/// One stretch of a wall between two joints of the motion.
struct Wall_Piece {
    Knots knots;                                      // degrees
    Handle(Geom_BSplineSurface) surface;              // u degrees, v share of the height from a to b
    std::array<Handle(Geom_BSplineCurve), 2> rim;     // at a, at b
    std::array<Handle(Geom2d_BSplineCurve), 2> flat;  // the same on the cylinders
    double deviation = 0.0;
    double at = 0.0;
    double low = 0.0;
    double high = 0.0;
};

class Drum_Maker {
public:
    Drum_Maker(const True_Cam& cam, const Drum& drum) : cam_(cam), m_(cam.Follower()), sense_(-m_.rot), drum_(drum)
    {
        const double apart = drum.rib_width + 2.0 * m_.roller_radius;
        radii_ = {drum.outer, drum.inner};
        walls_ = {Wall{1, 0.0}, Wall{-1, 0.0}};
        if (drum.rib) {
            std::swap(radii_[0], radii_[1]);
            walls_ = {Wall{-1, m_.side > 0 ? -apart : 0.0}, Wall{1, m_.side > 0 ? 0.0 : apart}};
        }
        joints_ = Segment_Starts(cam.Motion());
        std::erase_if(joints_, [](double t) { return t >= turn * (1.0 - 1e-12); });
        joints_.erase(std::unique(joints_.begin(), joints_.end()), joints_.end());
        if (joints_.empty() || joints_.front() > 0.0)
            joints_.insert(joints_.begin(), 0.0);
        if (joints_.size() < 2)
            joints_ = {0.0, 0.25 * turn, 0.5 * turn, 0.75 * turn};
        joints_.push_back(turn);
    }

    std::string Make(Skin& skin, Drum_Walls& told)
    {
        for (const Wall& wall : walls_) {
            const std::string refusal = Why_No_Wall(wall);
            if (!refusal.empty())
                return refusal;
        }
        std::string refusal = Why_No_Rib();
        if (refusal.empty())
            refusal = Fit();
        if (refusal.empty())
            refusal = Find_Ends();
        if (!refusal.empty())
            return refusal;
        Build(skin);
        told.depths = depths_;
        for (const auto& wall : pieces_)
            for (const Wall_Piece& piece : wall) {
                told.places += piece.knots.Count() - 1;
                if (piece.deviation > told.largest_deviation) {
                    told.largest_deviation = piece.deviation;
                    told.at = piece.at;
                }
            }
        told.low = low_;
        told.high = high_;
        return "";
    }

private:
    Drum_Place Place(const Wall& wall, double theta, double radius) const
    {
        // The last joint is the first, a turn on.
        const double round = theta >= turn ? turn : 0.0;
        const Wall_Point p = cam_.Wall_at_Radius(theta - round, wall.side, radius);
        return {sense_ * (p.Lambda + round) * Rad_per_Deg, p.Z + wall.shift};
    }
    double Radius(double share) const { return radii_[0] + share * (radii_[1] - radii_[0]); }

    static std::string Name_of(const Wall& wall)
    {
        return wall.side > 0 ? "wall below the roller" : "wall above the roller";
    }

    /// A wall that no roller leaves whole.
    std::string Why_No_Wall(const Wall& wall) const
    {
        constexpr double step = 0.25;
        constexpr double shortly = 1e-6;
        constexpr double open = 1e-5;  // of the radius
        for (const double share : {0.0, 0.5, 1.0}) {
            const double radius = Radius(share);
            const std::string where = " at a radius of " + Plain_Figures(radius, 6);
            for (std::size_t k = 0; k + 1 < joints_.size(); ++k) {
                const double end = joints_[k + 1];
                const Drum_Place before = Place(wall, end - shortly, radius);
                const Drum_Place at = Place(wall, end, radius);
                if (std::hypot(radius * (at.angle - before.angle), at.z - before.z) > open * radius)
                    return "The velocity jumps at " + Plain_Figures(end, 6) + " deg, so that the " + Name_of(wall) +
                           " has a corner there: a drum needs a motion without jumps of the velocity.";
                const double length = end - joints_[k];
                const int parts = std::max(4, static_cast<int>(std::ceil(length / step)));
                for (int i = 0; i < parts; ++i) {
                    const double from = joints_[k] + length * i / parts;
                    const Wall_Point p = cam_.Wall_at_Radius(from, wall.side, radius);
                    const Drum_Place here = Place(wall, from, radius);
                    const Drum_Place next = Place(wall, joints_[k] + length * (i + 1) / parts, radius);
                    const Vector way{sense_ * radius * (next.angle - here.angle), next.z - here.z};
                    if (!(std::abs(p.radius - radius) < 1e-9 * radius))
                        return "The " + Name_of(wall) + " does not reach" + where + " at " + Plain_Figures(from, 6) +
                               " deg.";
                    if (!(Dot(way, p.tangent) > 0.0))
                        return "The " + Name_of(wall) + " runs back on itself at " + Plain_Figures(from, 6) + " deg" +
                               where + ": the roller cuts it away there. A smaller roller or a less deep groove helps.";
                }
            }
        }
        return "";
    }

    /// A rib that its two rollers cut through on a slope.
    std::string Why_No_Rib() const
    {
        constexpr int places = 1440;
        if (!drum_.rib)
            return "";
        for (const double share : {0.0, 1.0}) {
            const double radius = Radius(share);
            std::array<std::vector<Vector>, 2> walls;
            for (const std::size_t w : {0U, 1U})
                for (int i = 0; i <= places; ++i) {
                    const Drum_Place p = Place(walls_[w], turn * i / places, radius);
                    walls[w].push_back({sense_ * p.angle, p.z});
                }
            if (!(Least_Gap(walls[0], walls[1]) > 0.0))
                return "A rib " + Plain_Figures(drum_.rib_width, 6) +
                       " wide at rest has no width left on the slope, at a radius of " + Plain_Figures(radius, 6) +
                       ": its two rollers meet there. A wider rib or a longer rise helps.";
        }
        return "";
    }

    /// Fits the pieces: more places along, then more depths, until all are within the tolerance.
    std::string Fit()
    {
        constexpr double coarsest = 2.0;  // degrees
        constexpr int doublings = 7;
        const std::size_t pieces = joints_.size() - 1;
        for (depths_ = 2; depths_ <= most_depths; ++depths_) {
            bool within = true;
            for (std::size_t w = 0; w < walls_.size() && within; ++w) {
                pieces_[w].assign(pieces, {});
                for (std::size_t k = 0; k < pieces && within; ++k) {
                    const double length = joints_[k + 1] - joints_[k];
                    int parts = std::max(4, static_cast<int>(std::ceil(length / coarsest)));
                    double along = 0.0;
                    for (int i = 0; i < doublings; ++i, parts *= 2) {
                        pieces_[w][k] = Piece(walls_[w], joints_[k], joints_[k + 1], parts);
                        along = Deviation_Along(walls_[w], pieces_[w][k]);
                        if (along <= 0.25 * drum_.tolerance)
                            break;
                    }
                    if (along > drum_.tolerance)
                        return "The " + Name_of(walls_[w]) + " cannot be brought within the tolerance between " +
                               Plain_Figures(joints_[k], 6) + " and " + Plain_Figures(joints_[k + 1], 6) + " deg.";
                    Find_Deviation(walls_[w], pieces_[w][k]);
                    within = pieces_[w][k].deviation <= drum_.tolerance;
                }
            }
            if (within)
                return "";
        }
        return "The walls cannot be brought within the tolerance at every depth: they turn too much from the floor to "
               "the drum's surface.";
    }

    Wall_Piece Piece(const Wall& wall, double from, double to, int parts) const
    {
        Wall_Piece piece;
        for (int i = 0; i <= parts; ++i)
            piece.knots.nodes.push_back(i == parts ? to : from + (to - from) * i / parts);
        const std::vector<double> shares = Shares(depths_);
        const int row = 5 * depths_;  // x, y, z, angle and z again, at each depth
        const auto at = [&](double theta) {
            std::vector<double> values;
            for (const double share : shares) {
                const double radius = Radius(share);
                const Drum_Place p = Place(wall, theta, radius);
                values.insert(values.end(), {drum_.millimetres * radius * std::cos(p.angle),
                                             drum_.millimetres * radius * std::sin(p.angle), drum_.millimetres * p.z,
                                             p.angle, drum_.millimetres * p.z});
            }
            return values;
        };
        // One-sided differences of fourth order.
        const auto slope = [&](double theta, double inwards) {
            constexpr std::array weights{-25.0 / 12.0, 4.0, -3.0, 4.0 / 3.0, -0.25};
            const double h = inwards * std::min(0.02, (to - from) / 16.0);
            std::vector<double> sum(static_cast<std::size_t>(row), 0.0);
            for (std::size_t i = 0; i < weights.size(); ++i) {
                const std::vector<double> values = at(theta + h * static_cast<double>(i));
                for (std::size_t j = 0; j < sum.size(); ++j)
                    sum[j] += weights[i] * values[j] / h;
            }
            return sum;
        };
        std::vector<double> values;
        for (int i = 0; i <= parts; ++i) {
            const double theta = piece.knots.nodes[static_cast<std::size_t>(i)];
            if (i == parts) {
                const std::vector<double> last = slope(theta, -1.0);
                values.insert(values.end(), last.begin(), last.end());
            }
            const std::vector<double> here = at(theta);
            values.insert(values.end(), here.begin(), here.end());
            if (i == 0) {
                const std::vector<double> first = slope(theta, 1.0);
                values.insert(values.end(), first.begin(), first.end());
            }
        }
        const std::vector<double> poles = Cubic_Poles(piece.knots, values, row);
        const int along = piece.knots.Poles();
        TColgp_Array2OfPnt net(1, along, 1, depths_);
        std::array<TColgp_Array1OfPnt, 2> rim{TColgp_Array1OfPnt(1, along), TColgp_Array1OfPnt(1, along)};
        std::array<TColgp_Array1OfPnt2d, 2> flat{TColgp_Array1OfPnt2d(1, along), TColgp_Array1OfPnt2d(1, along)};
        for (int i = 0; i < along; ++i) {
            const double* const start = &poles[static_cast<std::size_t>(i) * static_cast<std::size_t>(row)];
            std::vector<double> points;
            for (int j = 0; j < depths_; ++j)
                points.insert(points.end(), start + 5 * j, start + 5 * j + 3);
            points = Bezier_Poles(shares, std::move(points));
            for (int j = 0; j < depths_; ++j) {
                const double* const p = &points[static_cast<std::size_t>(3 * j)];
                net(i + 1, j + 1) = gp_Pnt(p[0], p[1], p[2]);
            }
            for (const std::size_t end : {0U, 1U}) {
                const double* const p = start + (end == 0 ? 0 : 5 * (depths_ - 1));
                rim[end](i + 1) = net(i + 1, end == 0 ? 1 : depths_);
                flat[end](i + 1) = gp_Pnt2d(p[3], p[4]);
            }
        }
        TColStd_Array1OfReal ends(1, 2);
        ends(1) = 0.0;
        ends(2) = 1.0;
        TColStd_Array1OfInteger many(1, 2);
        many.Init(depths_);
        const TColStd_Array1OfReal knots = piece.knots.Values();
        const TColStd_Array1OfInteger multiplicities = piece.knots.Multiplicities();
        piece.surface = new Geom_BSplineSurface(net, knots, ends, multiplicities, many, 3, depths_ - 1);
        for (const std::size_t end : {0U, 1U}) {
            piece.rim[end] = new Geom_BSplineCurve(rim[end], knots, multiplicities, 3);
            piece.flat[end] = new Geom2d_BSplineCurve(flat[end], knots, multiplicities, 3);
        }
        return piece;
    }

    /// Distance of a place of the surface from the wall, square to it, in lengths of the design.
    double Deviation(const Wall& wall, const Wall_Piece& piece, double theta, double share) const
    {
        gp_Pnt p;
        gp_Vec du;
        gp_Vec dv;
        piece.surface->D1(theta, share, p, du, dv);
        const gp_Vec normal = du.Crossed(dv);
        const double radius = std::hypot(p.X(), p.Y()) / drum_.millimetres;
        const Drum_Place w = Place(wall, theta, radius);
        const gp_Pnt there(drum_.millimetres * radius * std::cos(w.angle),
                           drum_.millimetres * radius * std::sin(w.angle), drum_.millimetres * w.z);
        return std::abs(gp_Vec(p, there).Dot(normal)) / normal.Magnitude() / drum_.millimetres;
    }

    /// The largest deviation at the depths that the surface goes through, between its places.
    double Deviation_Along(const Wall& wall, const Wall_Piece& piece) const
    {
        double largest = 0.0;
        const auto& nodes = piece.knots.nodes;
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
            for (const double share : {0.0, 1.0})
                largest = std::max(largest, Deviation(wall, piece, 0.5 * (nodes[i] + nodes[i + 1]), share));
        return largest;
    }

    void Find_Deviation(const Wall& wall, Wall_Piece& piece) const
    {
        constexpr int heights = 12;
        const auto& nodes = piece.knots.nodes;
        piece.low = piece.high = piece.surface->Value(nodes.front(), 0.0).Z() / drum_.millimetres;
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
            for (const double part : {0.0, 0.25, 0.5, 0.75}) {
                const double theta = nodes[i] + part * (nodes[i + 1] - nodes[i]);
                for (int j = 0; j <= heights; ++j) {
                    const double share = static_cast<double>(j) / heights;
                    const double deviation = Deviation(wall, piece, theta, share);
                    if (deviation > piece.deviation) {
                        piece.deviation = deviation;
                        piece.at = theta;
                    }
                    const double z = piece.surface->Value(theta, share).Z() / drum_.millimetres;
                    piece.low = std::min(piece.low, z);
                    piece.high = std::max(piece.high, z);
                }
            }
    }

    std::string Find_Ends()
    {
        double low = pieces_[0][0].low;
        double high = pieces_[0][0].high;
        for (const auto& wall : pieces_)
            for (const Wall_Piece& piece : wall) {
                low = std::min(low, piece.low);
                high = std::max(high, piece.high);
            }
        const double middle = 0.5 * (low + high);
        const double length = drum_.length == 0.0 ? high - low + 2.0 * m_.roller_radius : drum_.length;
        low_ = middle - 0.5 * length;
        high_ = middle + 0.5 * length;
        if (!(low_ < low) || !(high_ > high))
            return "A drum of a length of " + Plain_Figures(drum_.length, 6) +
                   " does not hold its walls, which reach " + Plain_Figures(high - low, 6) + " along the axis.";
        return "";
    }

    // ---- Faces

    gp_Pnt Point(const Drum_Place& place, double radius) const
    {
        return {drum_.millimetres * radius * std::cos(place.angle), drum_.millimetres * radius * std::sin(place.angle),
                drum_.millimetres * place.z};
    }

    /// The ends of a wall at a joint: corners at a and at b and the edge between.
    struct Corner {
        std::array<Drum_Place, 2> place;
        std::array<TopoDS_Vertex, 2> vertex;
        TopoDS_Edge edge;
        TopoDS_Vertex end;      // on the drum's end
        TopoDS_Edge generator;  // from there to the wall
    };

    void Build(Skin& skin) const
    {
        const std::size_t count = joints_.size() - 1;
        const double mm = drum_.millimetres;
        const std::array<double, 2> ends{low_ * mm, high_ * mm};
        // One corner a joint; the last joint is the first.
        std::array<std::vector<Corner>, 2> corners;
        std::vector<TopoDS_Edge> across;
        for (std::size_t k = 0; k < count; ++k) {
            for (const std::size_t w : {0U, 1U})
                corners[w].push_back(Corner_at(w, k, ends[w]));
            across.push_back(Across(corners[0][k], corners[1][k]));
        }
        std::array<BRepBuilderAPI_MakeWire, 2> rims;
        for (std::size_t k = 0; k < count; ++k) {
            const std::size_t next = (k + 1) % count;
            const double from = joints_[k];
            const double to = joints_[k + 1];
            const double round = next == 0 ? sense_ * 2.0 * PI : 0.0;
            const Handle(Geom_Surface) between = Cylinder(1);
            std::array<TopoDS_Edge, 2> inner;
            for (const std::size_t w : {0U, 1U}) {
                const Corner& c = corners[w][k];
                const Corner& d = corners[w][next];
                const Wall_Piece& piece = pieces_[w][k];
                const Handle(Geom_Surface) outside = Cylinder(0);
                std::array<TopoDS_Edge, 2> rim;
                for (const std::size_t end : {0U, 1U}) {
                    rim[end] = Edge_of(piece.rim[end], from, to, c.vertex[end], d.vertex[end]);
                    Lay(rim[end], piece.flat[end], end == 0 ? outside : between, Beside(piece, end));
                    Lay(rim[end], Flat_Line(0.0, end == 0 ? 0.0 : 1.0, 1.0, 0.0), piece.surface);
                }
                inner[w] = rim[1];
                Lay(c.edge, Flat_Line(from, 0.0, 0.0, 1.0), piece.surface);
                Lay(d.edge, Flat_Line(to, 0.0, 0.0, 1.0), piece.surface);
                skin.Add(Face_of(piece.surface, {rim[0], d.edge, Back(rim[1]), Back(c.edge)}, true));
                // The drum beside the wall, up to its end.
                const double start = c.place[0].angle;
                const double stop = d.place[0].angle + round;
                const TopoDS_Edge arc = Arc(c.end, d.end, start, stop, ends[w]);
                Lay(arc, Flat_Line(0.0, ends[w], 1.0, 0.0), outside);
                rims[w].Add(arc);
                Lay(c.generator, Flat_Line(start, 0.0, 0.0, 1.0), outside);
                Lay(d.generator, Flat_Line(stop, 0.0, 0.0, 1.0), outside);
                skin.Add(
                    Face_of(outside, {arc, d.generator, Back(rim[0]), Back(c.generator)}, (sense_ > 0) == (w == 0)));
            }
            for (const auto& [joint, turned] : {std::pair{k, 0.0}, std::pair{next, round}}) {
                const Drum_Place& p = corners[0][joint].place[1];
                const Drum_Place& q = corners[1][joint].place[1];
                Lay(across[joint], Flat_Line(p.angle + turned, mm * p.z, q.angle - p.angle, mm * (q.z - p.z)), between);
            }
            skin.Add(Face_of(between, {inner[0], across[next], Back(inner[1]), Back(across[k])}, sense_ > 0));
        }
        std::array<TopoDS_Wire, 2> bores;
        if (!drum_.bore.empty()) {
            bores[0] = Skin::Wire(drum_.bore, ends[0]);
            bores[1] = skin.Wall(bores[0], ends[1] - ends[0]);
        }
        for (const std::size_t w : {0U, 1U}) {
            std::vector<TopoDS_Wire> holes;
            if (!drum_.bore.empty())
                holes.push_back(bores[w]);
            skin.Flat(rims[w].Wire(), holes);
        }
    }

    static TopoDS_Edge Back(const TopoDS_Edge& edge) { return TopoDS::Edge(edge.Reversed()); }

    /// One of its own for each face: an edge has one place on a surface, and the last joint's is a turn on.
    Handle(Geom_Surface) Cylinder(std::size_t which) const
    {
        const gp_Ax3 axes(gp_Pnt(0.0, 0.0, 0.0), gp_Dir(0.0, 0.0, 1.0), gp_Dir(1.0, 0.0, 0.0));
        return new Geom_CylindricalSurface(axes, radii_[which] * drum_.millimetres);
    }

    Corner Corner_at(std::size_t w, std::size_t k, double end) const
    {
        const double mm = drum_.millimetres;
        Corner c;
        for (const std::size_t i : {0U, 1U}) {
            c.place[i] = Place(walls_[w], joints_[k], radii_[i]);
            c.vertex[i] = Vertex_at(Point(c.place[i], radii_[i]));
        }
        c.edge = Edge_of(pieces_[w][k].surface->UIso(joints_[k]), 0.0, 1.0, c.vertex[0], c.vertex[1]);
        c.end = Vertex_at(Point({c.place[0].angle, end / mm}, radii_[0]));
        const Handle(Geom_Curve) line = new Geom_Line(Point({c.place[0].angle, 0.0}, radii_[0]), gp_Dir(0.0, 0.0, 1.0));
        const double wall = mm * c.place[0].z;
        c.generator = end < wall ? Edge_of(line, end, wall, c.end, c.vertex[0])
                                 : Back(Edge_of(line, wall, end, c.vertex[0], c.end));
        return c;
    }

    /// From the lower wall to the upper one on the cylinder between, straight where it is unrolled.
    TopoDS_Edge Across(const Corner& c, const Corner& d) const
    {
        constexpr int parts = 24;
        const double mm = drum_.millimetres;
        const double radius = mm * radii_[1];
        const double turned = d.place[1].angle - c.place[1].angle;
        const double rise = mm * (d.place[1].z - c.place[1].z);
        const double length = std::hypot(turned, rise);
        Knots knots;
        std::vector<double> values;
        for (int i = 0; i <= parts; ++i) {
            const double part = static_cast<double>(i) / parts;
            const double angle = c.place[1].angle + part * turned;
            knots.nodes.push_back(part * length);
            const std::array point{radius * std::cos(angle), radius * std::sin(angle), mm * c.place[1].z + part * rise};
            const double speed = turned / length;
            const std::array slope{-radius * speed * std::sin(angle), radius * speed * std::cos(angle), rise / length};
            if (i == parts)
                values.insert(values.end(), slope.begin(), slope.end());
            values.insert(values.end(), point.begin(), point.end());
            if (i == 0)
                values.insert(values.end(), slope.begin(), slope.end());
        }
        values = Cubic_Poles(knots, values, 3);
        TColgp_Array1OfPnt poles(1, knots.Poles());
        for (int i = 0; i < knots.Poles(); ++i) {
            const double* const p = &values[static_cast<std::size_t>(3 * i)];
            poles(i + 1) = gp_Pnt(p[0], p[1], p[2]);
        }
        return Edge_of(new Geom_BSplineCurve(poles, knots.Values(), knots.Multiplicities(), 3), 0.0, length,
                       c.vertex[1], d.vertex[1]);
    }

    TopoDS_Edge Arc(const TopoDS_Vertex& from, const TopoDS_Vertex& to, double start, double stop, double z) const
    {
        const gp_Ax2 axes(gp_Pnt(0.0, 0.0, z), gp_Dir(0.0, 0.0, 1.0), gp_Dir(1.0, 0.0, 0.0));
        const Handle(Geom_Curve) circle = new Geom_Circle(axes, radii_[0] * drum_.millimetres);
        return start < stop ? Edge_of(circle, start, stop, from, to) : Back(Edge_of(circle, stop, start, to, from));
    }

    /// How far a rim lies beside its cylinder's place at the same parameter.
    double Beside(const Wall_Piece& piece, std::size_t end) const
    {
        const Geom_CylindricalSurface cylinder(gp_Ax3(gp::XOY()), radii_[end] * drum_.millimetres);
        const auto& nodes = piece.knots.nodes;
        double largest = 0.0;
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
            for (const double part : {0.25, 0.5, 0.75}) {
                const double t = nodes[i] + part * (nodes[i + 1] - nodes[i]);
                const gp_Pnt2d flat = piece.flat[end]->Value(t);
                largest = std::max(largest, cylinder.Value(flat.X(), flat.Y()).Distance(piece.rim[end]->Value(t)));
            }
        return std::max(Precision::Confusion(), 1.5 * largest);
    }

    const True_Cam& cam_;
    const Mechanism& m_;
    int sense_;  // in which Lambda turns in space, seen from positive z: against the cam, as files of points have it
    const Drum& drum_;
    std::array<double, 2> radii_{};  // beside the walls, between them
    std::array<Wall, 2> walls_{};    // the lower, the upper
    std::vector<double> joints_;     // degrees
    std::array<std::vector<Wall_Piece>, 2> pieces_;
    int depths_ = 0;
    double low_ = 0.0;
    double high_ = 0.0;
};

}  // namespace

std::string Add_Drum(const True_Cam& cam, const Drum& drum, Skin& skin, Drum_Walls& walls)
{
    return Drum_Maker(cam, drum).Make(skin, walls);
}

}  // namespace lobemax
