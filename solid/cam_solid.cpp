// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/cam_solid.h"

#include <Standard_Failure.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "shop/curve_files.h"
#include "shop/curve_set.h"
#include "solid/body_parts.h"
#include "solid/drum.h"
#include "solid/solid_files.h"

namespace lobemax {

namespace {

/// Works a body out, in millimetres, and what is to be told of it.
class Body_Maker {
public:
    Body_Maker(const Design_State& design, const Solid_Options& options, const True_Cam& cam, Solid_Report& report)
        : options_(options),
          cam_(cam),
          m_(cam.Follower()),
          report_(report),
          units_(design.identity.WhichUnit),
          mm_(Millimetres_per_Unit(units_)),
          rib_(design.cam.Barrel_Type == "Ribbed"),
          keyway_angle_(Keyway_Angle(design))
    {
        const double face = design.cam.Face_Width;
        thickness_ = options.thickness == 0.0 ? face : options.thickness;
        depth_ = options.groove_depth == 0.0 ? face : options.groove_depth;
        track_ = m_.body == Cam_Body::disk && (options.groove || m_.side < 0);
        report_.tolerance = options.tolerance == 0.0 ? Usual_Tolerance(units_) : options.tolerance;
        report_.facts = Opening_Facts(design);
        Tell("Tolerance", Words(report_.tolerance));
    }

    /// Adds the skin. @return why there is none; empty where there is
    std::string Make(Skin& skin)
    {
        std::string refusal = Why_No_Number();
        if (!refusal.empty())
            return refusal;
        const Curve_Samples surface(Surface_of(cam_));
        refusal = Why_No_Tolerance(report_.tolerance, surface.Size(), units_);
        if (!refusal.empty())
            return refusal;
        switch (m_.body) {
        case Cam_Body::disk:
            return track_ ? Make_Track(skin, surface) : Make_Plate(skin, surface);
        case Cam_Body::barrel:
            return Make_Drum(skin);
        case Cam_Body::linear:
            return Make_Straight(skin, surface);
        }
        return "";
    }

private:
    std::string Words(double value) const { return Length_Words(value, units_); }
    void Tell(std::string name, std::string words) { report_.facts.emplace_back(std::move(name), std::move(words)); }

    // ---- What is wanted

    std::string Why_No_Number() const
    {
        const Solid_Options& o = options_;
        const bool disk = m_.body == Cam_Body::disk;
        const std::array<std::pair<const char*, double>, 8> sizes{{{"thickness", o.thickness},
                                                                   {"diameter of the hub", o.hub_diameter},
                                                                   {"length of the hub", o.hub_length},
                                                                   {"diameter of the plate", o.plate_diameter},
                                                                   {"depth of the groove", o.groove_depth},
                                                                   {"radius of the drum", o.drum_radius},
                                                                   {"length of the body", o.body_length},
                                                                   {"width of the rib", o.rib_width}}};
        for (const auto& [name, value] : sizes)
            if (!(value >= 0.0) || !std::isfinite(value))
                return std::string("The ") + name + " must be a number above 0.";
        if (!disk && (o.hub_diameter > 0.0 || o.hub_length > 0.0))
            return "A hub belongs to a disk cam.";
        if (m_.body == Cam_Body::linear && (o.bore.diameter != 0.0 || o.bore.keyway))
            return "A bore belongs to a cam that turns.";
        if (m_.body != Cam_Body::barrel && !(thickness_ > 0.0))
            return "Give the thickness of the plate; the design has no face width that could be taken.";
        if ((!disk || track_) && !(depth_ > 0.0))
            return "Give the depth of the groove; the design has no face width that could be taken.";
        if (m_.body != Cam_Body::barrel && (!disk || track_) && depth_ >= thickness_)
            return "A groove of a depth of " + Words(depth_) + " goes through a plate of " + Words(thickness_) + ".";
        if (track_ && !m_.roller)
            return "A flat face runs in no track.";
        if ((o.hub_diameter > 0.0) != (o.hub_length > 0.0))
            return "A hub needs its diameter and its length beyond the plate.";
        return "";
    }

    /// How far bore and keyway reach.
    double Bore_Reach() const
    {
        const Bore& bore = options_.bore;
        if (!bore.keyway)
            return 0.5 * bore.diameter;
        const Keyway_Size size = Size_of_Keyway(bore, units_);
        return std::hypot(0.5 * bore.diameter + size.depth, 0.5 * size.width);
    }

    /// Why bore and hub have no place within a radius; told where they have.
    std::string Why_No_Middle(double least)
    {
        const Bore& bore = options_.bore;
        const std::string refusal = Why_No_Bore(bore, least, units_);
        if (!refusal.empty())
            return refusal;
        const double hub = 0.5 * options_.hub_diameter;
        if (hub > 0.0 && hub <= Bore_Reach())
            return "The hub's radius is " + Words(hub) + ", its bore reaches to " + Words(Bore_Reach()) +
                   " from the centre.";
        if (hub >= least)
            return "The hub's radius is " + Words(hub) + ", the surface of the cam comes as near as " + Words(least) +
                   " to the centre: the follower would meet it.";
        if (bore.diameter > 0.0)
            Tell("Bore", "diameter " + Words(bore.diameter) + ", through the whole body");
        if (bore.keyway) {
            const Keyway_Size size = Size_of_Keyway(bore, units_);
            Tell("Keyway", "width " + Words(size.width) + ", depth beyond the bore " + Words(size.depth) +
                               ", in the direction of " + Plain_Figures(keyway_angle_, 6) + " deg");
        }
        if (hub > 0.0)
            Tell("Hub", "diameter " + Words(options_.hub_diameter) + ", " + Words(options_.hub_length) +
                            " beyond the plate's upper face");
        return "";
    }

    /// The hole, counterclockwise, in millimetres; empty: none.
    Outline Hole() const
    {
        const Bore& bore = options_.bore;
        if (bore.diameter == 0.0)
            return {};
        if (!bore.keyway)
            return Circle(0.5 * bore.diameter * mm_);
        return Counterclockwise(
            Scaled(Keyway_Outline(bore.diameter, Size_of_Keyway(bore, units_), keyway_angle_), mm_));
    }

    // ---- Curves

    static double Nearest(const Curve_Samples& samples)
    {
        double least = std::numeric_limits<double>::infinity();
        for (const Curve_Samples::Node& node : samples.Nodes())
            least = std::min(least, Length(node.place.point));
        return least;
    }
    static double Furthest(const Curve_Samples& samples)
    {
        double most = 0.0;
        for (const Curve_Samples::Node& node : samples.Nodes())
            most = std::max(most, Length(node.place.point));
        return most;
    }

    /// Arcs along a curve, in lengths of the design.
    Outline Arcs(const Curve_Samples& samples, const std::string& name)
    {
        const Arc_Path path = Fit_Biarcs(samples, report_.tolerance);
        if (path.largest_deviation > report_.largest_deviation) {
            report_.largest_deviation = path.largest_deviation;
            report_.deviation_at = path.at;
        }
        Tell(name, std::to_string(path.elements.size()) + " arcs and lines");
        return path.elements;
    }

    void Tell_Disk()
    {
        Tell("Coordinates",
             "x, y about the cam centre, z along its axis from the plate's lower face; at cam angle 0 the "
             "follower is on the side of positive x; the cam turns " +
                 std::string(m_.rot > 0 ? "counterclockwise" : "clockwise") + " seen from positive z");
        Tell("Plate", "thickness " + Words(thickness_));
    }

    // ---- Bodies

    /// The faces of the middle of a plate: its lower face around the bore, the bore, the hub, and the upper face within
    /// an outline.
    void Add_Middle(Skin& skin, const TopoDS_Wire& lower, const TopoDS_Wire& upper)
    {
        const double top = thickness_ * mm_;
        const double end = top + options_.hub_length * mm_;
        const Outline hole = Hole();
        std::vector<TopoDS_Wire> below;
        std::vector<TopoDS_Wire> above;
        if (!hole.empty()) {
            below.push_back(Skin::Wire(hole, 0.0));
            above.push_back(skin.Wall(below.front(), end));
        }
        skin.Flat(lower, below);
        if (options_.hub_diameter > 0.0) {
            const TopoDS_Wire foot = Skin::Wire(Circle(0.5 * options_.hub_diameter * mm_), top);
            skin.Flat(skin.Wall(foot, end - top), above);
            above = {foot};
        }
        skin.Flat(upper, above);
    }

    std::string Make_Plate(Skin& skin, const Curve_Samples& surface)
    {
        Tell("Body", "disk cam");
        Tell_Disk();
        const std::string refusal = Why_No_Middle(Nearest(surface));
        if (!refusal.empty())
            return refusal;
        const TopoDS_Wire lower = Skin::Wire(Counterclockwise(Scaled(Arcs(surface, "Surface"), mm_)), 0.0);
        Add_Middle(skin, lower, skin.Wall(lower, thickness_ * mm_));
        return "";
    }

    std::string Make_Track(Skin& skin, const Curve_Samples& used)
    {
        Tell("Body", "plate with a track in its upper face, both walls by the roller");
        Tell_Disk();
        const Curve_Samples other(Cutter_of(cam_, 2.0 * m_.roller_radius));
        if (const std::optional<double> back = Runs_Back(other))
            return "The track's other wall runs back on itself at " + Plain_Figures(*back, 6) +
                   " deg: the roller cuts it away there. A larger cam or a smaller roller helps.";
        const Curve_Samples& inner = m_.side > 0 ? used : other;
        const Curve_Samples& outer = m_.side > 0 ? other : used;
        std::string refusal = Why_No_Middle(Nearest(inner));
        if (!refusal.empty())
            return refusal;
        const double reach = Furthest(outer);
        const double radius =
            options_.plate_diameter == 0.0 ? reach + 2.0 * m_.roller_radius : 0.5 * options_.plate_diameter;
        if (radius <= reach)
            return "The track reaches to " + Words(reach) + " from the centre, the plate to " + Words(radius) + ".";
        Tell("Track", "depth " + Words(depth_) + ", in a plate of a diameter of " + Words(2.0 * radius));
        const double top = thickness_ * mm_;
        const double floor = top - depth_ * mm_;
        const TopoDS_Wire outside = Skin::Wire(Counterclockwise(Scaled(Arcs(outer, "Outer wall"), mm_)), floor);
        const TopoDS_Wire inside = Skin::Wire(Counterclockwise(Scaled(Arcs(inner, "Inner wall"), mm_)), floor);
        skin.Flat(outside, {inside});
        const TopoDS_Wire rim = Skin::Wire(Circle(radius * mm_), 0.0);
        skin.Flat(skin.Wall(rim, top), {skin.Wall(outside, top - floor)});
        Add_Middle(skin, rim, skin.Wall(inside, top - floor));
        return "";
    }

    double Rib_Width() const { return options_.rib_width == 0.0 ? 2.0 * m_.roller_radius : options_.rib_width; }

    void Tell_Rib()
    {
        Tell("Rib", "height " + Words(depth_) + ", width at rest " + Words(Rib_Width()) +
                        ", between two rollers of which the second goes beside the first along " +
                        (m_.body == Cam_Body::barrel ? "the axis" : "z") +
                        (m_.arm ? "; AN ARM TURNS ITS SECOND ROLLER, which needs clearance on that flank" : ""));
    }

    std::string Make_Drum(Skin& skin)
    {
        Drum drum;
        drum.outer = options_.drum_radius == 0.0 ? m_.prime : options_.drum_radius;
        drum.inner = drum.outer - depth_;
        drum.rib = rib_;
        drum.rib_width = Rib_Width();
        drum.length = options_.body_length;
        drum.tolerance = report_.tolerance;
        drum.bore = Hole();
        drum.millimetres = mm_;
        if (!(drum.inner > 0.0))
            return "A groove of a depth of " + Words(depth_) + " goes through a drum of a radius of " +
                   Words(drum.outer) + ".";
        Tell("Body", rib_ ? "drum with a rib" : "drum with a groove");
        Tell("Coordinates",
             "z along the drum's axis in the sense of the follower's Z; at cam angle 0 the follower is on the side of "
             "positive x; the cam turns " +
                 std::string(m_.rot > 0 ? "counterclockwise" : "clockwise") + " seen from positive z");
        const std::string refusal = Why_No_Middle(drum.inner);
        if (!refusal.empty())
            return refusal;
        if (rib_)
            Tell_Rib();
        else
            Tell("Groove", "depth " + Words(depth_) + ", both walls by the roller");
        Drum_Walls walls;
        std::string no_drum = Add_Drum(cam_, drum, skin, walls);
        if (!no_drum.empty())
            return no_drum;
        report_.largest_deviation = walls.largest_deviation;
        report_.deviation_at = walls.at;
        Tell("Drum", "radius " + Words(drum.outer) + (rib_ ? " over the rib" : "") + ", from z " + Words(walls.low) +
                         " to " + Words(walls.high));
        Tell("Walls", "B-spline surfaces through " + std::to_string(walls.places) + " places of both walls at " +
                          std::to_string(walls.depths) + " depths" + (walls.depths == 2 ? ", ruled" : ""));
        return "";
    }

    /// A place of an element, 0 its start to 1 its end.
    static Vector Within(const Surface_Element& e, double part)
    {
        const double half = 2.0 * std::atan(e.bulge);
        const Vector chord = e.to - e.from;
        if (half == 0.0)
            return e.from + part * chord;
        return e.from + std::sin(part * half) / std::sin(half) * Turned(chord, Direction((part - 1.0) * half));
    }

    /// Where an element that runs along x comes to a place.
    static double Part_at(const Surface_Element& e, double x)
    {
        double low = 0.0;
        double high = 1.0;
        for (int i = 0; i < 60; ++i) {
            const double middle = 0.5 * (low + high);
            (Within(e, middle).x < x ? low : high) = middle;
        }
        return 0.5 * (low + high);
    }

    static Surface_Element Part_of(const Surface_Element& e, double from, double to)
    {
        return {from == 0.0 ? e.from : Within(e, from), to == 1.0 ? e.to : Within(e, to),
                std::tan(std::atan(e.bulge) * (to - from))};
    }

    /// A flank over one turn from a place on; it goes on by a turn at both ends.
    Outline Over_Turn(const Outline& flank, double start) const
    {
        const double round = Turn_of(cam_);
        const double nothing = 1e-9 * round;
        Outline cut;
        for (const double shift : {-round, 0.0, round})
            for (Surface_Element e : flank) {
                e.from.x += shift;
                e.to.x += shift;
                if (e.to.x <= start + nothing || e.from.x >= start + round - nothing)
                    continue;
                const double from = e.from.x < start - nothing ? Part_at(e, start) : 0.0;
                const double to = e.to.x > start + round + nothing ? Part_at(e, start + round) : 1.0;
                cut.push_back(Part_of(e, from, to));
            }
        for (std::size_t i = 0; i + 1 < cut.size(); ++i)
            cut[i].to = cut[i + 1].from;
        cut.front().from.x = start;
        cut.back().to.x = start + round;
        return cut;
    }

    static std::vector<Vector> Joints_of(const Outline& outline)
    {
        std::vector<Vector> joints{outline.front().from};
        for (const Surface_Element& e : outline)
            joints.push_back(e.to);
        return joints;
    }

    std::string Make_Straight(Skin& skin, const Curve_Samples& used)
    {
        Tell("Body", rib_ ? "straight cam with a rib" : "straight cam with a groove");
        Tell("Coordinates",
             "x along the cam with the cam angle, z in the sense of the follower's Z; the follower comes from negative "
             "y, "
             "seen from where the walls lie as the drawing has them; the face is y 0; length of one turn " +
                 Words(Turn_of(cam_)));
        Tell("Plate", "thickness " + Words(thickness_));
        if (rib_)
            Tell_Rib();
        else
            Tell("Groove", "depth " + Words(depth_) + ", both walls by the roller");
        const double apart = Rib_Width() + 2.0 * m_.roller_radius;
        const double start = used.Nodes().front().place.point.x;
        std::array<Outline, 2> walls;  // the lower, the upper
        double low = std::numeric_limits<double>::infinity();
        double high = -low;
        for (const std::size_t w : {0U, 1U}) {
            const int side = (w == 0) != rib_ ? 1 : -1;
            const double shift = rib_ && side != m_.side ? (w == 0 ? -apart : apart) : 0.0;
            const Curve_Samples samples(Flank_of(cam_, side));
            const std::string name = w == 0 ? "Lower wall" : "Upper wall";
            for (const Curve_Samples::Node& node : samples.Nodes())
                if (!(node.place.tangent.x > 0.0))
                    return "The " + std::string(w == 0 ? "lower" : "upper") + " wall runs back on itself at " +
                           Plain_Figures(node.t, 6) + " deg: the roller cuts it away there. A smaller roller helps.";
            low = std::min(low, samples.Low().y + shift);
            high = std::max(high, samples.High().y + shift);
            walls[w] = Over_Turn(Arcs(samples, name), start);
            for (Surface_Element& e : walls[w]) {
                e.from.y += shift;
                e.to.y += shift;
            }
            walls[w] = Scaled(walls[w], mm_);
        }
        if (rib_ && !(Least_Gap(Joints_of(walls[0]), Joints_of(walls[1])) > 0.0))
            return "A rib " + Words(Rib_Width()) +
                   " wide at rest has no width left on the slope: its two rollers meet there. A wider rib or a longer "
                   "rise helps.";
        const double width = options_.body_length == 0.0 ? high - low + 2.0 * m_.roller_radius : options_.body_length;
        if (width <= high - low)
            return "A plate " + Words(width) + " wide does not hold its walls, which reach " + Words(high - low) + ".";
        Tell("Width", Words(width));
        const double middle = 0.5 * (low + high);
        Add_Straight(skin, walls, (middle - 0.5 * width) * mm_, (middle + 0.5 * width) * mm_);
        return "";
    }

    /// In a frame with z towards the follower: that of the drawing.
    void Add_Straight(Skin& skin, const std::array<Outline, 2>& walls, double low, double high)
    {
        const double down = -mm_;
        const double beside = rib_ ? down * depth_ : 0.0;
        const double between = rib_ ? 0.0 : down * depth_;
        const double base = down * thickness_;
        const double left = walls[0].front().from.x;
        const double right = walls[0].back().to.x;
        const auto strip = [&](const Outline& below, const Outline& above, double z) {
            Outline round = below;
            round.push_back({below.back().to, above.back().to, 0.0});
            const Outline back = Reversed(above);
            round.insert(round.end(), back.begin(), back.end());
            round.push_back({above.front().from, below.front().from, 0.0});
            skin.Flat(Skin::Wire(round, z), {});
        };
        const Outline lowest{{{left, low}, {right, low}, 0.0}};
        const Outline highest{{{left, high}, {right, high}, 0.0}};
        strip(lowest, highest, base);
        strip(lowest, walls[0], beside);
        strip(walls[0], walls[1], between);
        strip(walls[1], highest, beside);
        for (const Outline& wall : walls)
            skin.Wall(Skin::Wire(wall, beside), between - beside);
        for (const Outline& edge : {lowest, highest})
            skin.Wall(Skin::Wire(edge, base), beside - base);
        for (const bool end : {false, true}) {
            const double x = end ? right : left;
            const auto y = [&](std::size_t w) { return end ? walls[w].back().to.y : walls[w].front().from.y; };
            skin.Polygon({{x, low, base},
                          {x, high, base},
                          {x, high, beside},
                          {x, y(1), beside},
                          {x, y(1), between},
                          {x, y(0), between},
                          {x, y(0), beside},
                          {x, low, beside}});
        }
        skin.Stand_Up();
    }

    const Solid_Options& options_;
    const True_Cam& cam_;
    const Mechanism& m_;
    Solid_Report& report_;
    int units_;
    double mm_;
    bool rib_;
    double keyway_angle_;
    double thickness_ = 0.0;
    double depth_ = 0.0;
    bool track_ = false;
};

bool In_Inches(int units)
{
    return units <= 2;
}

std::string Make_Checked(const Design_State& design, const Solid_Options& options, Solid_Format format,
                         const std::string& file, std::string& bytes, Solid_Report& report)
{
    std::string refusal = Why_No_Cam(design, options.though_do_not_cut);
    if (!refusal.empty())
        return refusal;
    const True_Cam cam(design);
    Body_Maker maker(design, options, cam, report);
    Skin skin;
    refusal = maker.Make(skin);
    if (!refusal.empty())
        return refusal;
    TopoDS_Solid solid;
    refusal = skin.Close(solid);
    Solid_Measure measure;
    if (refusal.empty())
        refusal = Check_Solid(solid, measure);
    if (!refusal.empty())
        return refusal + " No file is written.";
    const int units = design.identity.WhichUnit;
    const double mm = Millimetres_per_Unit(units);
    report.volume = measure.volume / (mm * mm * mm);
    report.area = measure.area / (mm * mm);
    report.faces = measure.faces;
    // A viewer's picture, where no tolerance is wanted.
    const double deflection = options.tolerance == 0.0 ? 10.0 * report.tolerance : report.tolerance;
    Stl_Triangles triangles;
    const Solid_Names names{design.identity.Model_Name, file, Today_Text(), Now_Text(), In_Inches(units)};
    refusal = format == Solid_Format::step ? Step_Bytes(solid, names, bytes)
                                           : Stl_Bytes(solid, names, deflection * mm, bytes, triangles);
    if (!refusal.empty())
        return refusal;
    report.triangles = triangles.count;
    report.triangle_deviation = triangles.largest_deviation / mm;
    const std::string unit = Length_Unit_of(units);
    const auto tell = [&](const char* name, std::string words) { report.facts.emplace_back(name, std::move(words)); };
    tell("Largest deviation", Plain_Figures(report.largest_deviation, 3) + " " + unit + " at " +
                                  Plain_Figures(report.deviation_at, 6) + " deg");
    tell("Volume", Plain_Figures(report.volume, 9) + " " + unit + "^3");
    tell("Area", Plain_Figures(report.area, 9) + " " + unit + "^2");
    tell("Solid", "closed and valid, of " + std::to_string(report.faces) + " faces");
    const std::string in = names.inches ? "in inches" : "in millimetres";
    if (format == Solid_Format::step)
        tell("Form", "STEP AP214, " + in);
    else
        tell("Form", "STL, " + in + ", " + std::to_string(report.triangles) + " triangles, as far as " +
                         Plain_Figures(report.triangle_deviation, 3) + " " + unit + " beside the solid's faces");
    if (options.though_do_not_cut) {
        const std::string against = Why_No_Cam(design, false);
        if (!against.empty())
            tell("WARNING", against);
    }
    return "";
}

std::string Make_Guarded(const Design_State& design, const Solid_Options& options, Solid_Format format,
                         const std::string& file, std::string& bytes, Solid_Report& report)
{
    report = Solid_Report{};
    bytes.clear();
    try {
        return Make_Checked(design, options, format, file, bytes, report);
    } catch (const Standard_Failure& failure) {
        const char* const words = failure.GetMessageString();
        return std::string("No solid can be made of this cam: the library for solids stopped (") +
               failure.DynamicType()->Name() + (words != nullptr && *words != '\0' ? ": " : "") +
               (words != nullptr ? words : "") + "). No file is written.";
    }
}

}  // namespace

std::string Make_Solid(const Design_State& design, const Solid_Options& options, Solid_Format format,
                       std::string& bytes, Solid_Report& report)
{
    return Make_Guarded(design, options, format, "", bytes, report);
}

std::string Write_Solid(const Design_State& design, const Solid_Options& options, const std::string& path,
                        Solid_Report& report)
{
    const std::string name = path.substr(path.find_last_of('/') + 1);
    const std::size_t dot = name.find_last_of('.');
    const std::string extension = dot == std::string::npos ? "" : To_Upper(name.substr(dot));
    if (extension != ".STEP" && extension != ".STP" && extension != ".STL")
        return "A solid is written to a file .step or .stp, or .stl: \"" + name + "\" is none of these.";
    std::string bytes;
    const std::string refusal = Make_Guarded(
        design, options, extension == ".STL" ? Solid_Format::stl : Solid_Format::step, name, bytes, report);
    if (!refusal.empty())
        return refusal;
    report.text_path = Write_with_Text(path, bytes, report.facts);
    return "";
}

}  // namespace lobemax
