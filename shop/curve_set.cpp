// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/curve_set.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "truth/check.h"

namespace lobemax {

namespace {

/// Findings that tell of the program's rows or of its own cutter, which these curves are not made from.
constexpr std::array<std::string_view, 3> findings_of_rows{"surface_row", "center_row", "cutter_too_large"};

std::string Do_Not_Cut_Sentence(const Check& check)
{
    for (const Finding& f : check.findings)
        if (f.severity == Severity::do_not_cut && std::ranges::find(findings_of_rows, f.code) == findings_of_rows.end())
            return "Do not cut this cam: " + f.sentence + " " + f.advice;
    return "";
}

std::string No_Cam_Sentence(const Design_State& design, const Check& check, bool though_do_not_cut)
{
    if (!Holds(design, Mark::motion) || !Holds(design, Mark::size))
        return "The cam is not sized yet. Calculate its motion and size it; then its curves can be written.";
    if (Results_in_Other_Units(design))
        return Other_Units_Sentence(design);
    const auto none = std::ranges::find(check.findings, std::string_view("no_geometry"), &Finding::code);
    if (none != check.findings.end())
        return none->sentence + " " + none->advice;
    if (!check.truth)
        return "This design has no geometry that a curve could be made from.";
    return though_do_not_cut ? "" : Do_Not_Cut_Sentence(check);
}

/// Works a choice out.
class Maker {
public:
    Maker(const Design_State& design, const Curve_Choice& choice, const True_Cam& cam)
        : design_(design), choice_(choice), cam_(cam), m_(cam.Follower())
    {
        set_.units = design.identity.WhichUnit;
        unit_ = Length_Unit_of(set_.units);
        tolerance_ = choice.tolerance == 0.0 ? Usual_Tolerance(set_.units) : choice.tolerance;
    }

    std::string Refusal() const
    {
        const std::string tolerance = Why_No_Tolerance(tolerance_, surface_->Size(), set_.units);
        if (!tolerance.empty())
            return tolerance;
        const std::string cutter = Cutter_Refusal();
        return cutter.empty() ? Bore_Refusal(*surface_) : cutter;
    }

    Curve_Set Make()
    {
        set_.facts = Opening_Facts(design_);
        Tell("Tolerance", Length(tolerance_));
        Tell("Coordinates", Coordinates());
        if (m_.body == Cam_Body::disk) {
            Add(Curve_Layer::surface, "surface", *surface_);
        } else {
            const bool rib = design_.cam.Barrel_Type == "Ribbed";
            for (const int side : {m_.side, -m_.side})
                if (side == m_.side || !rib)
                    Add(Curve_Layer::surface,
                        std::string("flank ") + (side > 0 ? "below" : "above") + " the roller" +
                            (side == m_.side ? ", in use" : ""),
                        side == m_.side ? *surface_ : Curve_Samples(Flank_of(cam_, side)));
        }
        if (choice_.pitch && m_.roller)
            Add(Curve_Layer::pitch, "roller centre", Curve_Samples(Pitch_of(cam_)));
        if (choice_.cutter)
            Add(Curve_Layer::cutter, "centre of a cutter of radius " + Length(*choice_.cutter),
                Curve_Samples(Cutter_of(cam_, *choice_.cutter)));
        if (m_.body == Cam_Body::disk)
            Add_Circles();
        if (choice_.notes)
            Add_Notes();
        Find_Box();
        return std::move(set_);
    }

    /// The curve in use, which the refusals look at.
    void Find_Surface() { surface_.emplace(Surface_of(cam_)); }

private:
    std::string Length(double value) const { return Length_Words(value, set_.units); }
    void Tell(std::string name, std::string words) { set_.facts.emplace_back(std::move(name), std::move(words)); }

    std::string Coordinates() const
    {
        const std::string sense = m_.rot > 0 ? "counterclockwise" : "clockwise";
        if (m_.body == Cam_Body::disk)
            return "x, y about the cam centre; at cam angle 0 the follower is on the side of positive x; the cam "
                   "turns " +
                   sense;
        const std::string turn =
            ": x along the turn with the cam angle, y is Z; length of one turn " + Length(Turn_of(cam_));
        if (m_.body == Cam_Body::linear)
            return "flat" + turn + "; the cam moves towards negative x";
        // Its points go round against the turning, (300): to the left of who looks at a counterclockwise drum.
        return "unrolled at the prime radius" + turn + "; the cam turns " + sense +
               " seen from positive Z, and this is the drum as seen from " + (m_.rot > 0 ? "inside" : "outside");
    }

    std::string Cutter_Refusal() const
    {
        return choice_.cutter ? Why_No_Cutter(cam_, *choice_.cutter, set_.units, choice_.though_do_not_cut) : "";
    }

    std::string Bore_Refusal(const Curve_Samples& samples) const
    {
        if (choice_.bore.diameter > 0.0 && m_.body != Cam_Body::disk)
            return "An unrolled cam shows no bore.";
        double least = std::numeric_limits<double>::infinity();
        for (const Curve_Samples::Node& node : samples.Nodes())
            least = std::min(least, lobemax::Length(node.place.point));
        return Why_No_Bore(choice_.bore, least, set_.units);
    }

    void Add(Curve_Layer layer, std::string name, const Curve_Samples& samples)
    {
        Fitted_Curve fitted;
        fitted.layer = layer;
        fitted.name = std::move(name);
        fitted.closed = samples.Curve().closed;
        std::string words;
        if (choice_.form == Curve_Form::spline) {
            fitted.spline = Fit_Spline(samples, tolerance_);
            fitted.deviation = fitted.spline->largest_deviation;
            fitted.deviation_at = fitted.spline->at;
            words = "cubic spline of " + std::to_string(fitted.spline->control.size()) + " control points through " +
                    std::to_string(fitted.spline->points) + " points";
        } else {
            const bool arcs = choice_.form == Curve_Form::arcs;
            fitted.path = arcs ? Fit_Biarcs(samples, tolerance_) : Fit_Lines(samples, tolerance_);
            fitted.deviation = fitted.path.largest_deviation;
            fitted.deviation_at = fitted.path.at;
            words = Counted(fitted.path, arcs);
        }
        const auto& pieces = samples.Pieces();
        const auto corners = std::ranges::count(pieces, true, &Curve_Piece::corner);
        if (corners > 0)
            words += ", " + std::to_string(corners) + (corners == 1 ? " corner" : " corners");
        words += std::string(fitted.closed ? ", closed" : ", open") + ", largest deviation " +
                 Plain_Figures(fitted.deviation, 3) + " " + unit_ + " at " + Plain_Figures(fitted.deviation_at, 6) +
                 " deg";
        if (fitted.deviation > tolerance_)
            words += ", BEYOND THE TOLERANCE";
        if (const std::optional<double> back = Runs_Back(samples))
            words += ", RUNS BACK ON ITSELF at " + Plain_Figures(*back, 6) + " deg";
        Tell(std::string(Name_of(layer)) + ", " + fitted.name, words);
        low_ = {std::min(low_.x, samples.Low().x), std::min(low_.y, samples.Low().y)};
        high_ = {std::max(high_.x, samples.High().x), std::max(high_.y, samples.High().y)};
        set_.curves.push_back(std::move(fitted));
    }

    static std::string Counted(const Arc_Path& path, bool arcs)
    {
        const auto straight = std::ranges::count(path.elements, 0.0, &Surface_Element::bulge);
        const auto round = static_cast<std::ptrdiff_t>(path.elements.size()) - straight;
        const std::string lines = std::to_string(straight) + (straight == 1 ? " line" : " lines");
        if (!arcs)
            return lines;
        const std::string words = std::to_string(round) + (round == 1 ? " arc" : " arcs");
        return straight > 0 ? words + " and " + lines : words;
    }

    void Add_Circle(Curve_Layer layer, const std::string& name, double radius)
    {
        set_.circles.push_back({layer, name, radius});
        Tell(std::string(Name_of(layer)) + ", " + name, "circle of radius " + Length(radius));
    }

    void Add_Circles()
    {
        if (choice_.circles) {
            Add_Circle(Curve_Layer::base, "base circle", Base_Radius(cam_));
            if (m_.roller)
                Add_Circle(Curve_Layer::prime, "prime circle", m_.prime);
        }
        const Bore& bore = choice_.bore;
        if (bore.diameter == 0.0)
            return;
        Add_Circle(Curve_Layer::shaft, "bore", 0.5 * bore.diameter);
        if (!bore.keyway)
            return;
        const Keyway_Size size = Size_of_Keyway(bore, set_.units);
        const double angle = Keyway_Angle(design_);
        set_.keyway = Keyway_Outline(bore.diameter, size, angle);
        Tell("KEYWAY", "width " + Length(size.width) + ", depth beyond the bore " + Length(size.depth) +
                           ", in the direction of " + Plain_Figures(angle, 6) + " deg; outline with the bore");
    }

    void Add_Notes()
    {
        const double size = std::max(high_.x - low_.x, high_.y - low_.y);
        set_.text_height = 0.015 * size;
        std::vector<double> starts = Segment_Starts(cam_.Motion());
        const bool segments = !starts.empty();
        if (!segments)
            starts.push_back(0.0);
        for (std::size_t i = 0; i < starts.size(); ++i) {
            const True_Point p = cam_.At(starts[i]);
            const Vector away = m_.side * p.normal;  // from the material
            const std::string angle = Plain_Figures(starts[i], 6) + " deg";
            set_.notes.push_back({p.surface, p.surface + 0.03 * size * away, p.surface + 0.035 * size * away,
                                  segments ? std::to_string(i + 1) + ": " + angle : angle, away.x < 0.0});
        }
    }

    void Find_Box()
    {
        for (const Set_Circle& c : set_.circles) {
            low_ = {std::min(low_.x, -c.radius), std::min(low_.y, -c.radius)};
            high_ = {std::max(high_.x, c.radius), std::max(high_.y, c.radius)};
        }
        for (const Mark_Note& note : set_.notes) {
            low_ = {std::min(low_.x, note.text_at.x), std::min(low_.y, note.text_at.y)};
            high_ = {std::max(high_.x, note.text_at.x), std::max(high_.y, note.text_at.y)};
        }
        set_.low = low_;
        set_.high = high_;
    }

    const Design_State& design_;
    const Curve_Choice& choice_;
    const True_Cam& cam_;
    const Mechanism& m_;
    std::optional<Curve_Samples> surface_;
    double tolerance_ = 0.0;
    std::string unit_;
    Vector low_{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Vector high_{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    Curve_Set set_;
};

}  // namespace

double Usual_Tolerance(int units)
{
    constexpr std::array<double, 5> usual{0.00005, 0.00005 / 12.0, 0.000001, 0.0001, 0.001};
    return usual[Checked_Place(units, 1, static_cast<int>(usual.size()))];
}

std::string Length_Unit_of(int units)
{
    return Words_of_Units(units).length;
}

double Millimetres_per_Unit(int units)
{
    constexpr std::array<double, 5> lengths{25.4, 304.8, 1000.0, 10.0, 1.0};
    return lengths[Checked_Place(units, 1, static_cast<int>(lengths.size()))];
}

std::vector<std::pair<std::string, std::string>> Opening_Facts(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    const int units = id.WhichUnit;
    return {{"Model", On_One_Line(id.Model_Name)},
            {"Design", std::to_string(id.Design_No)},
            {"Date", On_One_Line(Today_Text() + " " + Now_Text())},
            {"Unit", Length_Unit_of(units)}};
}

std::string Plain_Number(double value, int decimals, bool one_decimal)
{
    std::string picture = one_decimal ? "0.0" : "0";
    if (!one_decimal && decimals > 0)
        picture += '.';
    picture += std::string(static_cast<std::size_t>(std::max(0, decimals - (one_decimal ? 1 : 0))), '#');
    std::string text = Format_Picture(value, picture, Decimal_Symbol::point);
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

std::string Plain_Figures(double value, int figures)
{
    const double size = std::abs(value);
    const int magnitude = size > 0.0 ? static_cast<int>(std::floor(std::log10(size))) : 0;
    return Plain_Number(value, std::clamp(figures - 1 - magnitude, 0, 15), false);
}

std::string Why_No_Cutter(const True_Cam& cam, double radius, int units, bool though_do_not_cut)
{
    const Mechanism& m = cam.Follower();
    if (!(radius > 0.0) || !std::isfinite(radius))
        return "The radius of the cutter must be a number above 0.";
    if (m.body == Cam_Body::barrel && radius != m.roller_radius)
        return "A drum has another wall at every depth, so that a cutter of " + Length_Words(radius, units) +
               " has no one path: use a cutter of the roller's size, " + Length_Words(m.roller_radius, units) + ".";
    const std::optional<Narrow_Hollow> hollow = Hollow_below(cam, radius);
    if (hollow && !though_do_not_cut)
        return "A cutter of " + Length_Words(radius, units) + " is larger than the hollow at " +
               Plain_Figures(hollow->theta, 6) + " deg, whose radius is " + Length_Words(hollow->radius, units) +
               ": it would cut into the surface beside it.";
    return "";
}

std::optional<double> Runs_Back(const Curve_Samples& samples)
{
    const auto& nodes = samples.Nodes();
    for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
        if (Dot(nodes[i].place.tangent, nodes[i + 1].place.tangent) < 0.0)
            return nodes[i + 1].t;
    return std::nullopt;
}

std::string Length_Words(double value, int units)
{
    return Plain_Figures(value, 6) + " " + Length_Unit_of(units);
}

std::string Why_No_Tolerance(double tolerance, double size, int units)
{
    const auto words = [units](double value) { return Length_Words(value, units); };
    if (!(tolerance > 0.0) || !std::isfinite(tolerance))
        return "The tolerance must be a number above 0.";
    if (tolerance < Least_Tolerance * size)
        return "A tolerance of " + words(tolerance) + " is finer than the motion itself is known on a cam of " +
               words(size) + ": take " + words(Least_Tolerance * size) + " or more.";
    if (tolerance > Most_Tolerance * size)
        return "A tolerance of " + words(tolerance) + " leaves nothing of a cam of " + words(size) + ": take " +
               words(Most_Tolerance * size) + " or less.";
    return "";
}

Keyway_Size Size_of_Keyway(const Bore& bore, int units)
{
    const Keyway_Size usual = Usual_Keyway(bore.diameter, units).value_or(Keyway_Size{});
    return {bore.width != 0.0 ? bore.width : usual.width, bore.depth != 0.0 ? bore.depth : usual.depth};
}

std::string Why_No_Bore(const Bore& bore, double least, int units)
{
    const auto words = [units](double value) { return Length_Words(value, units); };
    if (bore.diameter == 0.0)
        return bore.keyway ? "A keyway needs the diameter of its bore." : "";
    if (!(bore.diameter > 0.0) || !std::isfinite(bore.diameter))
        return "The diameter of the bore must be a number above 0.";
    double reach = 0.5 * bore.diameter;
    if (bore.keyway) {
        const std::optional<Keyway_Size> usual = Usual_Keyway(bore.diameter, units);
        if (!usual && (bore.width == 0.0 || bore.depth == 0.0))
            return "There is no usual keyway for a bore of " + words(bore.diameter) + ": give width and depth.";
        const Keyway_Size size = Size_of_Keyway(bore, units);
        if (!(size.width > 0.0) || !(size.depth > 0.0) || !std::isfinite(size.width + size.depth))
            return "Width and depth of the keyway must be numbers above 0.";
        if (size.width >= bore.diameter)
            return "A keyway of " + words(size.width) + " is as wide as its bore of " + words(bore.diameter) + ".";
        reach = std::hypot(reach + size.depth, 0.5 * size.width);
    }
    if (reach >= least)
        return "The bore reaches to " + words(reach) + " from the centre, the surface of the cam comes as near as " +
               words(least) + ".";
    return "";
}

std::string Why_No_Cam(const Design_State& design, bool though_do_not_cut)
{
    return No_Cam_Sentence(design, Check_Design(design, Limits{}), though_do_not_cut);
}

Made_Curves Make_Curve_Set(const Design_State& design, const Curve_Choice& choice)
{
    const Check check = Check_Design(design, Limits{});
    std::string refusal = No_Cam_Sentence(design, check, choice.though_do_not_cut);
    if (!refusal.empty())
        return {std::nullopt, std::move(refusal)};
    Maker maker(design, choice, check.truth->cam);
    Curve_Set set;
    try {
        maker.Find_Surface();
        refusal = maker.Refusal();
        if (!refusal.empty())
            return {std::nullopt, std::move(refusal)};
        set = maker.Make();
    } catch (const Fault&) {
        return {std::nullopt, choice.form == Curve_Form::spline
                                  ? "No spline comes within the tolerance of a curve of this cam: take arcs."
                                  : "A curve of this cam has places that are no numbers, and cannot be written."};
    }
    const std::string against = choice.though_do_not_cut ? Do_Not_Cut_Sentence(check) : "";
    if (!against.empty())
        set.facts.emplace_back("WARNING", against);
    return {std::move(set), ""};
}

}  // namespace lobemax
