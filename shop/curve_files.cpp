// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/curve_files.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "core/design_state.h"
#include "core/text.h"
#include "files/byte_stream.h"
#include "files/whole_file.h"
#include "truth/check.h"

namespace lobemax {

namespace {

using Facts = std::vector<std::pair<std::string, std::string>>;

constexpr const char* line_end = "\r\n";
constexpr std::string_view first_fact = "File";

/// The name of a path without its folders.
std::string Name_of_File(std::string_view path)
{
    const std::size_t slash = path.find_last_of('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string Escaped(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else
            out += c;
    }
    return out;
}

}  // namespace

Facts Facts_of(const Curve_Set& set, std::string_view file_name)
{
    Facts facts{{std::string(first_fact), On_One_Line(Name_of_File(file_name))}};
    facts.insert(facts.end(), set.facts.begin(), set.facts.end());
    return facts;
}

std::string Text_of_Facts(const Facts& facts)
{
    std::string text;
    for (const auto& [name, words] : facts)
        text += On_One_Line(name + ": " + words) + line_end;
    return text;
}

// ---- SVG

namespace {

constexpr double margin = 5.0;  // mm

/// A set in millimetres of a page whose y runs downwards.
class Svg_Writer {
public:
    explicit Svg_Writer(const Curve_Set& set) : set_(set), scale_(Millimetres_per_Unit(set.units)) {}

    std::string Text(std::string_view file_name) const
    {
        const double width = (set_.high.x - set_.low.x) * scale_ + 2.0 * margin;
        const double height = (set_.high.y - set_.low.y) * scale_ + 2.0 * margin;
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        text += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(width) + "mm\" height=\"" +
                Number(height) + "mm\" viewBox=\"0 0 " + Number(width) + " " + Number(height) + "\">\n";
        text += "<desc>\n";
        for (const auto& [name, words] : Facts_of(set_, file_name))
            text += Escaped(On_One_Line(name + ": " + words)) + "\n";
        text += "</desc>\n";
        for (int i = 0; i < Curve_Layers; ++i)
            text += Layer(static_cast<Curve_Layer>(i));
        return text + "</svg>\n";
    }

private:
    static std::string Number(double value) { return Plain_Number(value, 9, false); }
    Vector Placed(Vector p) const
    {
        return {(p.x - set_.low.x) * scale_ + margin, (set_.high.y - p.y) * scale_ + margin};
    }
    std::string Point(Vector p) const
    {
        const Vector at = Placed(p);
        return Number(at.x) + " " + Number(at.y);
    }

    std::string Layer(Curve_Layer layer) const
    {
        std::string text;
        for (const Fitted_Curve& curve : set_.curves)
            if (curve.layer == layer)
                text += Path(curve.spline ? Points_of(*curve.spline) : Elements(curve.path.elements), curve.closed,
                             curve.name);
        for (const Set_Circle& circle : set_.circles)
            if (circle.layer == layer) {
                const Vector at = Placed({});
                text += "<circle cx=\"" + Number(at.x) + "\" cy=\"" + Number(at.y) + "\" r=\"" +
                        Number(circle.radius * scale_) + "\"/>\n";
            }
        if (layer == Curve_Layer::keyway && !set_.keyway.empty())
            text += Path(Elements(set_.keyway), true, "keyway");
        if (layer == Curve_Layer::notes)
            for (const Mark_Note& note : set_.notes) {
                const Vector at = Placed(note.text_at);
                text += "<path d=\"M" + Point(note.from) + " L" + Point(note.to) + "\"/>\n";
                text += "<text x=\"" + Number(at.x) + "\" y=\"" + Number(at.y) + "\" font-size=\"" +
                        Number(set_.text_height * scale_) + "\" fill=\"black\" stroke=\"none\">" + Escaped(note.text) +
                        "</text>\n";
            }
        if (text.empty())
            return "";
        return "<g id=\"" + std::string(Name_of(layer)) +
               "\" fill=\"none\" stroke=\"black\" stroke-width=\"0.1\" font-family=\"sans-serif\">\n" + text + "</g>\n";
    }

    std::string Path(const std::string& drawn, bool closed, const std::string& name) const
    {
        return "<path d=\"" + drawn + (closed ? " Z" : "") + "\"><title>" + Escaped(name) + "</title></path>\n";
    }

    std::string Elements(const std::vector<Surface_Element>& elements) const
    {
        std::string text = "M" + Point(elements.front().from);
        for (const Surface_Element& element : elements) {
            const double b = element.bulge;
            const double radius =
                b == 0.0 ? 0.0 : scale_ * Length(element.to - element.from) * (1.0 + b * b) / (4.0 * std::abs(b));
            constexpr double flattest = 1e7;  // mm: what is flatter is straight to a thousandth of a micrometre
            if (b == 0.0 || radius > flattest) {
                text += " L" + Point(element.to);
                continue;
            }
            // The page is seen from behind: what turns counterclockwise has the flag 0.
            text += " A" + Number(radius) + " " + Number(radius) + " 0 " + (std::abs(b) > 1.0 ? "1 " : "0 ") +
                    (b > 0.0 ? "0 " : "1 ") + Point(element.to);
        }
        return text;
    }

    std::string Points_of(const Cubic_Spline& spline) const
    {
        constexpr int parts = 16;
        std::string text = "M" + Point(spline.At(spline.knots.front()));
        for (std::size_t i = 0; i + 1 < spline.knots.size(); ++i) {
            const double low = spline.knots[i];
            const double high = spline.knots[i + 1];
            if (high > low)
                for (int k = 1; k <= parts; ++k)
                    text += " L" + Point(spline.At(low + (high - low) * k / parts));
        }
        return text;
    }

    const Curve_Set& set_;
    double scale_;
};

}  // namespace

std::string Svg_Text(const Curve_Set& set, std::string_view file_name)
{
    return Svg_Writer(set).Text(file_name);
}

// ---- Points

namespace {

constexpr double turn = 360.0;
constexpr double least_step = 0.001;  // degrees
constexpr double most_step = 30.0;

std::string Words_of_Points(const Mechanism& m, const std::string& unit)
{
    if (m.body == Cam_Body::disk)
        return "x, y about the cam centre, in " + unit;
    if (m.body == Cam_Body::linear)
        return "x along the cam with the cam angle, z up, in " + unit;
    return "on the cylinder of the prime radius about z, in " + unit +
           "; a point comes under the follower when the cam "
           "has turned " +
           (m.rot > 0 ? "counterclockwise" : "clockwise") + ", seen from positive z";
}

/// How far the curve lies beside the lines between its points, looked for at their middles.
double Largest_Sag(const Shop_Curve& curve, double step)
{
    double largest = 0.0;
    for (int i = 0; i * step < turn * (1.0 - 1e-9); ++i) {
        const double from = i * step;
        const double to = std::min(turn, from + step);
        const Vector start = curve.at(from).point;
        const Vector chord = curve.at(to).point - start;
        const double length = Length(chord);
        if (length > 0.0)
            largest = std::max(largest, std::abs(Cross(chord, curve.at(0.5 * (from + to)).point - start)) / length);
    }
    return largest;
}

}  // namespace

Made_Points Make_Curve_Points(const Design_State& design, const Point_Choice& choice)
{
    std::string refusal = Why_No_Cam(design, choice.though_do_not_cut);
    if (!refusal.empty())
        return {std::nullopt, std::move(refusal)};
    const double step = choice.step == 0.0 ? double{design.motion.Deltatheta} : choice.step;
    if (!(step >= least_step) || !(step <= most_step))
        return {std::nullopt, "The step must be " + Plain_Figures(least_step, 3) + " to " +
                                  Plain_Figures(most_step, 3) + " degrees."};
    const True_Cam cam(design);
    const Mechanism& m = cam.Follower();
    Shop_Curve curve;
    if (choice.layer == Curve_Layer::surface) {
        curve = m.body == Cam_Body::disk || choice.flank == 0 ? Surface_of(cam) : Flank_of(cam, choice.flank);
    } else if (choice.layer == Curve_Layer::pitch) {
        if (!m.roller)
            return {std::nullopt, "A flat face has no roller whose centre could be written."};
        curve = Pitch_of(cam);
    } else {
        refusal = Why_No_Cutter(cam, choice.cutter, design.identity.WhichUnit, choice.though_do_not_cut);
        if (!refusal.empty())
            return {std::nullopt, std::move(refusal)};
        curve = Cutter_of(cam, choice.cutter);
    }
    Curve_Points points;
    points.body = m.body;
    points.units = choice.units == 0 ? int{design.identity.WhichUnit} : choice.units;
    const double scale = Millimetres_per_Unit(design.identity.WhichUnit) / Millimetres_per_Unit(points.units);
    const auto add = [&](double theta) {
        const Curve_Place place = curve.at(theta);
        const Vector p = scale * place.point;
        Curve_Points::Row row{theta, p, std::atan2(place.tangent.y, place.tangent.x) * Deg_per_Rad, {p.x, p.y, 0.0}};
        if (m.body == Cam_Body::linear) {
            row.space[1] = 0.0;
            row.space[2] = p.y;
        } else if (m.body == Cam_Body::barrel) {
            const double radius = scale * m.prime;
            const double round = -m.rot * p.x / radius;  // as a disk cam's points, seen from positive z
            row.space[0] = radius * std::cos(round);
            row.space[1] = radius * std::sin(round);
            row.space[2] = p.y;
        }
        points.rows.push_back(row);
    };
    // A step that does not divide the turn leaves a shorter last one.
    for (int i = 0; i * step < turn * (1.0 - 1e-9); ++i)
        add(i * step);
    add(turn);
    Curve_Points::Row& last = points.rows.back();
    const Curve_Points::Row& first = points.rows.front();
    if (m.body == Cam_Body::disk) {
        last.plane = first.plane;
        last.tangent = first.tangent;
    }
    if (m.body != Cam_Body::linear)
        std::copy(std::begin(first.space), std::end(first.space), std::begin(last.space));
    points.facts = Opening_Facts(design);
    const std::string unit = Length_Unit_of(points.units);
    points.facts.back().second = unit;
    points.facts.emplace_back("Coordinates", Words_of_Points(m, unit));
    points.facts.emplace_back(std::string(Name_of(choice.layer)),
                              std::to_string(points.rows.size()) + " points every " + Plain_Figures(step, 6) +
                                  " deg of cam angle, the last closes the curve; they lie on the curve. Straight lines "
                                  "between them depart by " +
                                  Plain_Figures(scale * Largest_Sag(curve, step), 3) + " " + unit + " at the most");
    return {std::move(points), ""};
}

std::string Xyz_Text(const Curve_Points& points)
{
    std::string text;
    for (const Curve_Points::Row& row : points.rows) {
        for (int i = 0; i < 3; ++i)
            text += (i > 0 ? " " : "") + Plain_Number(row.space[i]);
        text += line_end;
    }
    return text;
}

std::string Csv_Text(const Curve_Points& points)
{
    const std::string unit = " (" + Length_Unit_of(points.units) + ")";
    const bool disk = points.body == Cam_Body::disk;
    std::string text = "Cam angle (deg),";
    text += (disk ? "X" : "Along") + unit + "," + (disk ? "Y" : "Z") + unit + ",Direction (deg)";
    text += line_end;
    for (const Curve_Points::Row& row : points.rows)
        text += Plain_Number(row.theta, 9, false) + "," + Plain_Number(row.plane.x) + "," + Plain_Number(row.plane.y) +
                "," + Plain_Number(row.tangent, 9, false) + line_end;
    return text;
}

// ---- Files

std::string Path_of_Text(const std::string& path)
{
    const std::string name = Name_of_File(path);
    const std::size_t dot = name.find_last_of('.');
    const bool extended = dot != std::string::npos && dot > 0;
    const std::string beside = (extended ? path.substr(0, path.size() - name.size() + dot) : path) + ".txt";
    const std::string behind = path + ".txt";
    if (beside == path)
        return behind;
    std::error_code failed;
    if (!std::filesystem::exists(beside, failed))
        return beside;
    const std::string own = std::string(first_fact) + ": " + On_One_Line(name) + line_end;
    std::string start(own.size(), '\0');
    try {
        File_Source source(beside);
        if (source.Read(start.data(), start.size()) == own.size() && start == own)
            return beside;
    } catch (const Fault&) {
        return behind;
    }
    return behind;
}

std::string Write_with_Text(const std::string& path, std::string_view bytes, const Facts& facts)
{
    const std::string beside = Path_of_Text(path);
    Facts named{{std::string(first_fact), On_One_Line(Name_of_File(path))}};
    for (const auto& fact : facts)
        if (fact.first != first_fact)
            named.push_back(fact);
    Write_Whole_File(beside, Text_of_Facts(named));
    Write_Whole_File(path, bytes);
    return beside;
}

}  // namespace lobemax
