// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/gcode.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "core/design_state.h"
#include "core/text.h"
#include "shop/curve_set.h"
#include "truth/true_cam.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;
constexpr double mm_per_inch = 25.4;
constexpr const char* line_end = "\r\n";

int Decimals_of(Program_Unit unit)
{
    return unit == Program_Unit::mm ? 4 : 5;
}

/// What a length of the design is worth in the program.
double Scale_of(const Design_State& design, Program_Unit unit)
{
    const double mm = Millimetres_per_Unit(design.identity.WhichUnit);
    return unit == Program_Unit::mm ? mm : mm / mm_per_inch;
}

const char* Name_of(Program_Unit unit)
{
    return unit == Program_Unit::mm ? "mm" : "in";
}

/// Multiples of the control's last digit.
class Grid {
public:
    explicit Grid(int decimals) : per_unit_(std::pow(10.0, decimals)) {}
    double Digit() const { return 1.0 / per_unit_; }
    double At(double value) const { return std::round(value * per_unit_) / per_unit_; }
    Vector At(Vector p) const { return {At(p.x), At(p.y)}; }

private:
    double per_unit_;
};

/// The text of a program: blocks with numbers, words in their order, a feed where it changes.
class Program_Text {
public:
    Program_Text(const Program_Words& words, int decimals) : words_(words), decimals_(decimals) {}

    void Comment(std::string_view text)
    {
        constexpr std::size_t widest = 70;
        std::string left = To_Upper(As_Comment(text));
        while (!left.empty()) {
            std::size_t end = left.size();
            if (end > widest) {
                end = left.rfind(' ', widest);
                if (end == std::string::npos || end == 0)
                    end = widest;
            }
            text_ += '(' + left.substr(0, end) + ')' + line_end;
            left = Trim(left.substr(end));
        }
    }
    void Line(std::string_view line) { text_ += std::string(line) + line_end; }
    void Block(const std::string& words)
    {
        if (words_.line_step > 0)
            text_ += 'N' + std::to_string(number_ += words_.line_step) + ' ';
        text_ += words + line_end;
    }
    std::string Word(char letter, double value) const { return letter + With_Decimals(value, decimals_); }
    std::string Place(Vector p) const { return Word('X', p.x) + ' ' + Word('Y', p.y); }
    /// A feed word with a blank before it, empty where the feed is as it was.
    std::string Feed(double feed)
    {
        const int digits = words_.unit == Program_Unit::mm ? 1 : 3;
        const std::string word = 'F' + With_Decimals(std::max(feed, std::pow(10.0, -digits)), digits);
        if (word == feed_)
            return "";
        feed_ = word;
        return ' ' + word;
    }
    void Forget_Feed() { feed_.clear(); }
    const std::string& Text() const { return text_; }

private:
    const Program_Words& words_;
    int decimals_;
    int number_ = 0;
    std::string feed_;
    std::string text_;
};

/// What no machine can do with the numbers; empty where it can.
std::string Wrong_Words(const Program_Words& w)
{
    const auto bad = [](double value, double least) { return !std::isfinite(value) || value < least; };
    if (bad(w.tolerance, 0.0) || w.tolerance < std::pow(10.0, -Decimals_of(w.unit)))
        return "The tolerance must be at least the last digit of the control, " +
               With_Decimals(std::pow(10.0, -Decimals_of(w.unit)), Decimals_of(w.unit)) + " " + Name_of(w.unit) + ".";
    if (bad(w.feed, 0.0) || w.feed == 0.0 || bad(w.plunge_feed, 0.0) || w.plunge_feed == 0.0)
        return "Feeds must be above 0.";
    if (bad(w.spindle, 0.0))
        return "The spindle's speed must not be below 0.";
    if (bad(w.depth, 0.0) || w.depth == 0.0)
        return "The depth must be above 0.";
    if (bad(w.depth_step, 0.0))
        return "The step of depth must not be below 0.";
    if (bad(w.clearance, 0.0) || bad(w.safe_height, 0.0) || w.safe_height < w.clearance)
        return "The safe height must not be below the clearance, and this not below 0.";
    if (w.depth_step > 0.0 && w.depth / w.depth_step > 1000.0)
        return "The depth would need more than 1000 steps.";
    if (w.program_number < 0 || w.program_number > 9999 || w.tool_number < 0 || w.tool_number > 9999)
        return "Numbers of program and tool run from 0 to 9999.";
    if (w.line_step < 0 || w.line_step > 1000)
        return "The step of line numbers runs from 0 to 1000.";
    return "";
}

/// The depths of the levels, the last one the whole depth.
std::vector<double> Levels_of(const Program_Words& w)
{
    std::vector<double> levels;
    const int count = w.depth_step > 0.0 ? static_cast<int>(std::ceil(w.depth / w.depth_step - 1e-9)) : 1;
    for (int i = 1; i <= std::max(count, 1); ++i)
        levels.push_back(w.depth * i / std::max(count, 1));
    return levels;
}

void Open_Program(Program_Text& text, const Program_Words& w)
{
    text.Line("%");
    if (w.program_number > 0) {
        const std::string number = std::to_string(w.program_number);
        text.Line("O" + std::string(4 - number.size(), '0') + number);
    }
}

void Start_Machine(Program_Text& text, const Program_Words& w)
{
    text.Block(std::string(w.unit == Program_Unit::mm ? "G21" : "G20") + " G17 G90 G94 G40");
    if (w.tool_number > 0)
        text.Block("T" + std::to_string(w.tool_number) + " M6");
    if (w.spindle > 0.0)
        text.Block("S" + std::to_string(std::lround(w.spindle)) + " M3");
    if (w.coolant)
        text.Block("M8");
    text.Block("G0 " + text.Word('Z', w.safe_height));
}

void End_Program(Program_Text& text, const Program_Words& w)
{
    if (w.coolant)
        text.Block("M9");
    if (w.spindle > 0.0)
        text.Block("M5");
    text.Block("M30");
    text.Line("%");
}

std::string Machine_Words(const Program_Words& w)
{
    std::string line = "Spindle ";
    line +=
        w.spindle > 0.0 ? Plain_Figures(std::round(w.spindle), 6) + " rpm clockwise" : "not started by this program";
    line += w.coolant ? ", coolant on" : ", no coolant";
    if (w.tool_number > 0)
        line += ", tool " + std::to_string(w.tool_number);
    return line;
}

std::string Height_Words(const Program_Words& w, std::size_t levels)
{
    return "Z 0 top of blank, depth " + Plain_Figures(w.depth, 7) + " in " + std::to_string(levels) +
           (levels == 1 ? " step" : " steps") + ", rapid moves at " + Plain_Figures(w.safe_height, 7) +
           ", feed from clearance " + Plain_Figures(w.clearance, 7);
}

std::string Stamp_Words(const Program_Words& w)
{
    return w.cut_anyway ? "The check of the design was passed over: cut at your own risk" : "";
}

// ---- Contour

/// A piece of the written contour, in numbers of the control.
struct Move {
    Vector from;
    Vector to;
    bool arc = false;
    bool left = false;  // counterclockwise
    Vector center{};
    double feed = 0.0;
    std::size_t source = 0;  // element of the fitted path
};

/// The centre of an element's circle; its bulge is not 0.
Vector Center_of(const Surface_Element& e)
{
    const double toward = (1.0 - e.bulge * e.bulge) / (4.0 * e.bulge);
    return 0.5 * (e.from + e.to) + toward * Quarter(e.to - e.from);
}

double Radius_of(const Surface_Element& e)
{
    return Length(e.to - e.from) * (1.0 + e.bulge * e.bulge) / (4.0 * std::abs(e.bulge));
}

Surface_Element Backwards(const Surface_Element& e)
{
    return {e.to, e.from, -e.bulge};
}

/// The distance of a point from a move.
double Distance(const Move& move, Vector p)
{
    const Vector chord = move.to - move.from;
    if (!move.arc) {
        const double square = Square(chord);
        const double x = square > 0.0 ? std::clamp(Dot(p - move.from, chord) / square, 0.0, 1.0) : 0.0;
        return Length(p - move.from - x * chord);
    }
    const double radius = 0.5 * (Length(move.from - move.center) + Length(move.to - move.center));
    const Vector middle = 0.5 * (move.from + move.to) - move.center;  // arcs turn by 60 degrees at the most
    const Vector out = p - move.center;
    if (Dot(out, middle) * radius >= Length(out) * Square(middle))
        return std::abs(Length(out) - radius);
    return std::min(Length(p - move.from), Length(p - move.to));
}

/// The contour as it is written for one allowance.
struct Pass {
    double allowance = 0.0;
    bool last = false;
    std::vector<Move> contour;
    std::vector<Move> in;  // lead; its Z falls along it if it is a ramp
    std::vector<Move> out;
    double largest_deviation = 0.0;
    double at = 0.0;
};

class Contour {
public:
    Contour(const Design_State& design, const Contour_Options& options)
        : design_(design),
          o_(options),
          cam_(design),
          m_(cam_.Follower()),
          scale_(Scale_of(design, options.unit)),
          grid_(Decimals_of(options.unit)),
          entry_(Best_Entry(cam_))
    {
        mirror_ = o_.from_back ? -1.0 : 1.0;
        // The tool is on the left of the way of a rising cam angle where rot * side is positive, (306).
        const bool left = m_.rot * m_.side * mirror_ > 0.0;
        forward_ = left == o_.climb;
        for (double theta = 0.0; theta < turn; theta += fine_step)
            points_.push_back(cam_.At(theta));
    }

    Machine_File Write();

private:
    static constexpr double fine_step = 0.25;

    double Tool() const { return o_.tool_radius / scale_; }
    /// What the rounding to the control's last digit leaves of the tolerance.
    double Within() const { return std::max(o_.tolerance - grid_.Digit(), 0.5 * o_.tolerance); }
    /// Highest feed of the tool's centre.
    double Most() const { return o_.highest_feed > 0.0 ? o_.highest_feed : 10.0 * o_.feed; }
    /// Distance of the written path from the surface, design units.
    double Offset_of(double allowance) const
    {
        return (o_.offset == Radius_Offset::in_path ? o_.tool_radius + allowance : allowance) / scale_;
    }
    double Sense() const { return forward_ ? 1.0 : -1.0; }
    Vector Out(Vector p) const { return {mirror_ * scale_ * p.x, scale_ * p.y}; }
    /// From the surface into the free, in the program.
    Vector Free_Side(double theta) const
    {
        const Vector n = m_.side * cam_.At(theta).normal;
        return {mirror_ * n.x, n.y};
    }

    std::string Wrong_Numbers() const;
    std::string Too_Large() const;
    std::string Bad_Lead(const Pass& pass) const;
    std::vector<double> Allowances() const;
    Shop_Curve Curve_at(double offset, double from, double to) const;
    std::vector<Surface_Element> Outward(const Arc_Path& path) const;
    double Feed_on(const Surface_Element& element) const;
    void Add_Moves(std::vector<Move>& moves, const Surface_Element& element, std::size_t source) const;
    void Add_Arc(std::vector<Move>& moves, const Surface_Element& piece, double feed, std::size_t source) const;
    Pass Make_Pass(double allowance);
    void Make_Arc_Lead(Pass& pass) const;
    void Make_Ramp(Pass& pass);
    void Measure(Pass& pass, const Arc_Path& path, const Shop_Curve& curve) const;
    void Write_Pass(Program_Text& text, const Pass& pass, double depth) const;
    void Write_Head(Program_Text& text, const Machine_File& file, const std::vector<Pass>& passes,
                    std::size_t levels) const;
    std::string Words_of_Move(Program_Text& text, const Move& move, std::optional<double> z) const;

    const Design_State& design_;
    const Contour_Options& o_;
    True_Cam cam_;
    const Mechanism& m_;
    double scale_;
    Grid grid_;
    Entry_Place entry_;
    double mirror_ = 1.0;
    bool forward_ = true;
    bool limited_ = false;     // a feed
    double ramp_angle_ = 0.0;  // cam degrees that a ramp takes
    std::vector<True_Point> points_;
};

std::string Contour::Wrong_Numbers() const
{
    const auto bad = [](double value) { return !std::isfinite(value) || value < 0.0; };
    if (bad(o_.tool_radius) || o_.tool_radius == 0.0)
        return "The tool's radius must be above 0.";
    if (bad(o_.stock) || bad(o_.finish) || o_.finish > o_.stock)
        return "Stock and finishing cut must not be below 0, the finishing cut not above the stock.";
    if (o_.passes < 1 || o_.passes > 100)
        return "Passes run from 1 to 100.";
    if (bad(o_.lead_size) || o_.lead_size == 0.0)
        return "The lead-in must be longer than 0.";
    if (bad(o_.highest_feed))
        return "The highest feed must not be below 0.";
    if (o_.highest_feed > 0.0 && o_.highest_feed < o_.feed)
        return "The highest feed is that of the tool's centre: it must not be below the feed of the contact.";
    if (o_.offset == Radius_Offset::in_control && o_.lead == Lead::ramp)
        return "A ramp needs the path of the tool's centre; with compensation in the control take an arc.";
    if (o_.offset == Radius_Offset::in_control && o_.lead_size <= o_.tool_radius)
        return "With compensation in the control the lead-in's radius must exceed the tool's.";
    if (o_.offset == Radius_Offset::in_control && (o_.offset_number < 1 || o_.offset_number > 999))
        return "The number of the tool's radius in the control runs from 1 to 999.";
    return "";
}

/// Hollows narrower than the tool, and other parts of the cam in its way.
std::string Contour::Too_Large() const
{
    const std::string unit = Name_of(o_.unit);
    const double stock = Allowances().front() / scale_;
    const auto of_tool = [&] { return "A tool of radius " + Plain_Figures(o_.tool_radius, 6) + " " + unit; };
    for (const True_Point& p : points_)
        if (m_.roller ? m_.side * p.Rho > 0.0 && m_.side * p.Rho < m_.roller_radius : p.Rho_Surface < 0.0)
            return "The cam is undercut at " + Plain_Figures(p.theta, 6) + " deg: no tool leaves such a surface.";
    if (const std::optional<Narrow_Hollow> hollow = Hollow_below(cam_, Tool() + stock))
        return of_tool() +
               (hollow->radius <= Tool()
                    ? ""
                    : " with " + Plain_Figures(Allowances().front(), 6) + " " + unit + " of stock left") +
               " does not go into the hollow of radius " + Plain_Figures(hollow->radius * scale_, 6) + " " + unit +
               " at " + Plain_Figures(hollow->theta, 6) + " deg.";
    const double reach = (Tool() + stock) * (1.0 - 1e-9) - o_.tolerance / scale_;
    if (reach <= 0.0)
        return "";
    for (std::size_t i = 0; i < points_.size(); i += 2) {
        const Vector center = cam_.Cutter(points_[i], Tool() + stock);
        for (const True_Point& other : points_)
            if (Square(other.surface - center) < reach * reach)
                return of_tool() + " at " + Plain_Figures(points_[i].theta, 6) + " deg cuts into the cam at " +
                       Plain_Figures(other.theta, 6) + " deg.";
    }
    return "";
}

/// (312)
std::vector<double> Contour::Allowances() const
{
    std::vector<double> left;
    const int rough = o_.passes - 1;
    for (int k = 1; k <= rough; ++k)
        left.push_back(o_.stock - (o_.stock - o_.finish) * k / rough);
    left.push_back(0.0);
    return left;
}

/// The true path at an offset from the surface, from one cam angle to another.
Shop_Curve Contour::Curve_at(double offset, double from, double to) const
{
    const Shop_Curve turned = Cutter_of(cam_, offset);
    Shop_Curve curve = turned;
    curve.from = from;
    curve.to = to;
    curve.closed = to - from >= turn;
    curve.breaks.clear();
    curve.circles.clear();
    for (const double shift : {-turn, 0.0, turn}) {
        for (const double place : turned.breaks)
            if (place + shift > from && place + shift < to)
                curve.breaks.push_back(place + shift);
        if (shift > from && shift < to)
            curve.breaks.push_back(shift);  // the cycle's start
        for (const Shop_Curve::Circle& circle : turned.circles) {
            const double start = std::max(from, circle.from + shift);
            const double end = std::min(to, circle.to + shift);
            if (end > start)
                curve.circles.push_back({start, end});
        }
    }
    std::ranges::sort(curve.breaks);
    std::ranges::sort(curve.circles, {}, &Shop_Curve::Circle::from);
    return curve;
}

/// The elements in the program's unit and in the order in which they are cut.
std::vector<Surface_Element> Contour::Outward(const Arc_Path& path) const
{
    std::vector<Surface_Element> elements;
    elements.reserve(path.elements.size());
    for (const Surface_Element& e : path.elements)
        elements.push_back({Out(e.from), Out(e.to), mirror_ * e.bulge});
    if (forward_)
        return elements;
    std::ranges::reverse(elements);
    for (Surface_Element& e : elements)
        e = Backwards(e);
    return elements;
}

/// Feed of the tool's centre that gives the contact the wanted one, (307), (308).
double Contour::Feed_on(const Surface_Element& element) const
{
    if (element.bulge == 0.0)
        return o_.feed;
    // Climbing the tool has the material on its right: what turns left is hollow.
    const bool hollow = (element.bulge > 0.0) == o_.climb;
    const double radius = Radius_of(element);
    const double R = o_.tool_radius;
    double center = radius;
    double contact = hollow ? radius + R : radius - R;
    if (o_.offset == Radius_Offset::in_control) {
        center = hollow ? radius - R : radius + R;
        contact = radius;
    }
    if (contact <= 0.0 || o_.feed * center > Most() * contact)
        return Most();
    return std::max(0.0, o_.feed * center / contact);
}

/// An arc of 60 degrees at the most in numbers of the control: of the centres next to the true one that at which both
/// ends have the same radius, (309), (310).
void Contour::Add_Arc(std::vector<Move>& moves, const Surface_Element& piece, double feed, std::size_t source) const
{
    const Vector from = piece.from;
    const Vector to = piece.to;
    const double sagitta = 0.5 * std::abs(piece.bulge) * Length(to - from);
    constexpr double longest_radius = 99999.0;
    const double radius = Radius_of(piece);
    if (sagitta < 0.5 * grid_.Digit() || radius > longest_radius) {
        const int parts = std::max(1, static_cast<int>(std::ceil(std::sqrt(4.0 * sagitta / o_.tolerance))));
        const Vector center = Center_of(piece);
        const double angle = 4.0 * std::atan(piece.bulge) / parts;
        Vector last = from;
        for (int k = 1; k <= parts; ++k) {
            const Vector next = k == parts ? to : grid_.At(center + Turned(from - center, Direction(k * angle)));
            if (Square(next - last) > 0.0)
                moves.push_back({.from = last, .to = next, .feed = feed, .source = source});
            last = next;
        }
        return;
    }
    const Vector ideal = Center_of(piece) - from;
    const Vector near = grid_.At(ideal);
    const double digit = grid_.Digit();
    Vector best = near;
    double least = std::numeric_limits<double>::infinity();
    for (int i = -1; i <= 1; ++i)
        for (int k = -1; k <= 1; ++k) {
            const Vector c{grid_.At(near.x + i * digit), grid_.At(near.y + k * digit)};
            const double apart = std::abs(Length(c) - Length(to - from - c));
            // Within the half digit the nearer one.
            const double cost = std::max(apart, 0.4 * digit) + 0.1 * Length(c - ideal);
            if (cost < least) {
                least = cost;
                best = c;
            }
        }
    moves.push_back({.from = from,
                     .to = to,
                     .arc = true,
                     .left = piece.bulge > 0.0,
                     .center = from + best,
                     .feed = feed,
                     .source = source});
}

/// An element as moves from where the last one ended.
void Contour::Add_Moves(std::vector<Move>& moves, const Surface_Element& element, std::size_t source) const
{
    const double feed = Feed_on(element);
    Vector last = moves.empty() ? grid_.At(element.from) : moves.back().to;
    if (element.bulge == 0.0) {
        const Vector to = grid_.At(element.to);
        if (Square(to - last) > 0.0)
            moves.push_back({.from = last, .to = to, .feed = feed, .source = source});
        return;
    }
    const double radius = Radius_of(element);
    const double angle = 4.0 * std::atan(element.bulge);
    double largest = PI / 3.0;
    if (!o_.arcs) {
        const double sag = std::min(0.5 * Within(), 0.5 * radius);
        largest = std::min(largest, 2.0 * std::acos(1.0 - sag / radius));
    }
    const int parts = std::max(1, static_cast<int>(std::ceil(std::abs(angle) / largest - 1e-9)));
    const Vector center = Center_of(element);
    const double bulge = std::tan(0.25 * angle / parts);
    for (int k = 1; k <= parts; ++k) {
        const Vector to =
            grid_.At(k == parts ? element.to : center + Turned(element.from - center, Direction(angle * k / parts)));
        if (Square(to - last) == 0.0)
            continue;
        if (o_.arcs)
            Add_Arc(moves, {last, to, bulge}, feed, source);
        else
            moves.push_back({.from = last, .to = to, .feed = feed, .source = source});
        last = to;
    }
}

/// What the written moves depart from the true curve by, at places between the elements' ends. Where an element ends on
/// the curve is known to its fit alone about the middle of a pair: the neighbours count too.
void Contour::Measure(Pass& pass, const Arc_Path& path, const Shop_Curve& curve) const
{
    constexpr int places = 8;
    const std::size_t count = path.elements.size();
    std::size_t first = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t source = forward_ ? i : count - 1 - i;
        std::size_t end = first;
        while (end < pass.contour.size() && pass.contour[end].source == i)
            ++end;
        for (int k = 0; k <= places && end > first; ++k) {
            const double share = static_cast<double>(k) / places;
            const double theta =
                path.parameters[source] + share * (path.parameters[source + 1] - path.parameters[source]);
            const Vector p = Out(curve.at(theta).point);
            double nearest = std::numeric_limits<double>::infinity();
            const std::size_t from = first > 0 ? first - 1 : first;
            for (std::size_t n = from; n < std::min(end + 1, pass.contour.size()); ++n)
                nearest = std::min(nearest, Distance(pass.contour[n], p));
            if (nearest > pass.largest_deviation) {
                pass.largest_deviation = nearest;
                pass.at = std::fmod(theta, turn);
            }
        }
        first = end;
    }
}

Pass Contour::Make_Pass(double allowance)
{
    Pass pass;
    pass.allowance = allowance;
    pass.last = allowance == 0.0;
    const Shop_Curve curve = Curve_at(Offset_of(allowance), entry_.angle, entry_.angle + turn);
    const double share = o_.arcs ? 1.0 : 0.5;
    const Arc_Path path = Fit_Biarcs(curve, share * Within() / scale_);
    const std::vector<Surface_Element> elements = Outward(path);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        Surface_Element element = elements[i];
        if (i + 1 == elements.size())
            element.to = elements.front().from;
        Add_Moves(pass.contour, element, i);
        if (Feed_on(element) >= Most() && Most() > o_.feed)
            limited_ = true;
    }
    Measure(pass, path, curve);
    if (o_.lead == Lead::arc)
        Make_Arc_Lead(pass);
    else
        Make_Ramp(pass);
    return pass;
}

/// A quarter circle on the free side that ends along the contour, and one that leaves it so. (311)
void Contour::Make_Arc_Lead(Pass& pass) const
{
    const Vector p = pass.contour.front().from;
    const Vector n = Free_Side(entry_.angle);
    const Vector t = o_.climb ? -1.0 * Quarter(n) : Quarter(n);
    const double L = o_.lead_size;
    const double bulge = (o_.climb ? 1.0 : -1.0) * std::tan(PI / 16.0);  // of half a quarter
    const Vector o = p + L * n;
    const double diagonal = std::sqrt(0.5) * L;
    const Vector start = grid_.At(o - L * t);
    const Vector half_in = grid_.At(o - diagonal * t - diagonal * n);
    const Vector half_out = grid_.At(o + diagonal * t - diagonal * n);
    const Vector end = grid_.At(o + L * t);
    const double run = 1.2 * std::max(L, o_.tool_radius);
    if (o_.offset == Radius_Offset::in_control)
        pass.in.push_back({.from = grid_.At(start + run * n), .to = start, .feed = o_.feed});
    // The path of the tool's centre has the feed of a hollow of the lead's radius, for the contact is not yet one.
    Add_Arc(pass.in, {start, half_in, bulge}, o_.feed, 0);
    Add_Arc(pass.in, {half_in, p, bulge}, o_.feed, 0);
    Add_Arc(pass.out, {p, half_out, bulge}, o_.feed, 0);
    Add_Arc(pass.out, {half_out, end, bulge}, o_.feed, 0);
    if (o_.offset == Radius_Offset::in_control)
        pass.out.push_back({.from = end, .to = grid_.At(end + run * n), .feed = o_.feed});
}

/// Down along the last piece of the contour before the place of entry, and up along the first behind it.
void Contour::Make_Ramp(Pass& pass)
{
    const double offset = Offset_of(pass.allowance);
    const Shop_Curve around = Curve_at(offset, entry_.angle, entry_.angle + turn);
    const double h = 0.01;
    const double speed = Length(around.at(entry_.angle + h).point - around.at(entry_.angle - h).point) / (2.0 * h);
    double angle = std::min(o_.lead_size / scale_ / speed, 90.0);
    if (entry_.room > 0.0)
        angle = std::min(angle, entry_.room);
    ramp_angle_ = std::max(ramp_angle_, angle);
    const double back = entry_.angle - Sense() * angle;
    const double ahead = entry_.angle + Sense() * angle;
    const Vector entry = pass.contour.front().from;
    const double within = std::min(0.5 * Within() / scale_, 0.1 * Most_Tolerance * speed * angle);
    const auto lay = [&](std::vector<Move>& moves, double one, double other) {
        const Shop_Curve curve = Curve_at(offset, std::min(one, other), std::max(one, other));
        std::vector<Surface_Element> elements = Outward(Fit_Biarcs(curve, within));
        (other == entry_.angle ? elements.back().to : elements.front().from) = entry;
        for (const Surface_Element& element : elements)
            Add_Moves(moves, element, 0);
    };
    lay(pass.in, back, entry_.angle);
    lay(pass.out, entry_.angle, ahead);
}

/// Why the lead of a pass cannot be; empty where it can.
std::string Contour::Bad_Lead(const Pass& pass) const
{
    if (o_.lead == Lead::ramp)
        return pass.in.empty() || pass.out.empty() ? "The ramp is shorter than the control's last digit." : "";
    const double allowance = o_.offset == Radius_Offset::in_path ? 0.0 : o_.tool_radius;
    const double reach = o_.tool_radius + pass.allowance - 2.0 * o_.tolerance;
    constexpr int places = 24;
    const Vector p = pass.contour.front().from;
    const Vector n = Free_Side(entry_.angle);
    const Vector t = o_.climb ? -1.0 * Quarter(n) : Quarter(n);
    const Vector o = p + o_.lead_size * n;
    const double r = o_.lead_size - allowance;
    for (int k = 0; k <= places; ++k) {
        const double angle = PI * k / places;
        const Vector at = o - r * std::cos(angle) * t - r * std::sin(angle) * n;
        for (const True_Point& point : points_)
            if (Square(Out(point.surface) - at) < reach * reach)
                return "The lead-in of radius " + Plain_Figures(o_.lead_size, 6) + " " + Name_of(o_.unit) + " at " +
                       Plain_Figures(entry_.angle, 6) + " deg cuts into the cam at " + Plain_Figures(point.theta, 6) +
                       " deg: take a smaller one.";
    }
    return "";
}

std::string Contour::Words_of_Move(Program_Text& text, const Move& move, std::optional<double> z) const
{
    std::string words = move.arc ? (move.left ? "G3 " : "G2 ") : "G1 ";
    words += text.Place(move.to);
    if (z)
        words += ' ' + text.Word('Z', *z);
    if (move.arc)
        words += ' ' + text.Word('I', move.center.x - move.from.x) + ' ' + text.Word('J', move.center.y - move.from.y);
    return words + text.Feed(move.feed);
}

double Length_of(const Move& move)
{
    if (!move.arc)
        return Length(move.to - move.from);
    const double r = Length(move.from - move.center);
    return 2.0 * r * std::asin(std::min(1.0, 0.5 * Length(move.to - move.from) / r));
}

double Length_of(const std::vector<Move>& moves)
{
    double length = 0.0;
    for (const Move& move : moves)
        length += Length_of(move);
    return length;
}

void Contour::Write_Pass(Program_Text& text, const Pass& pass, double depth) const
{
    const bool ramp = o_.lead == Lead::ramp;
    const bool in_control = o_.offset == Radius_Offset::in_control;
    text.Block("G0 " + text.Place(pass.in.front().from));
    text.Block("G0 " + text.Word('Z', o_.clearance));
    if (!ramp)
        text.Block("G1 " + text.Word('Z', -depth) + text.Feed(o_.plunge_feed));
    double done = 0.0;
    double whole = Length_of(pass.in);
    for (std::size_t i = 0; i < pass.in.size(); ++i) {
        done += Length_of(pass.in[i]);
        std::optional<double> z;
        if (ramp)
            z = i + 1 == pass.in.size() ? -depth : o_.clearance - (o_.clearance + depth) * done / whole;
        Move move = pass.in[i];
        if (ramp)
            move.feed = o_.plunge_feed;
        std::string words = Words_of_Move(text, move, z);
        if (in_control && i == 0)
            words = std::string(o_.climb ? "G41" : "G42") + " D" + std::to_string(o_.offset_number) + ' ' + words;
        text.Block(words);
    }
    for (const Move& move : pass.contour)
        text.Block(Words_of_Move(text, move, {}));
    done = 0.0;
    whole = Length_of(pass.out);
    for (std::size_t i = 0; i < pass.out.size(); ++i) {
        done += Length_of(pass.out[i]);
        std::optional<double> z;
        if (ramp)
            z = i + 1 == pass.out.size() ? o_.clearance : -depth + (o_.clearance + depth) * done / whole;
        std::string words = Words_of_Move(text, pass.out[i], z);
        if (in_control && i + 1 == pass.out.size())
            words = "G40 " + words;
        text.Block(words);
    }
    text.Block("G0 " + text.Word('Z', o_.safe_height));
}

void Contour::Write_Head(Program_Text& text, const Machine_File& file, const std::vector<Pass>& passes,
                         std::size_t levels) const
{
    const std::string unit = Name_of(o_.unit);
    const auto length = [&](double value) { return Plain_Figures(value, 7) + " " + unit; };
    for (const std::string& line : Opening_Lines_of(design_, "contour of a disk cam"))
        text.Comment(line);
    text.Comment("Lengths in " + unit + ", feeds in " + unit + " per minute, decimals " +
                 std::to_string(Decimals_of(o_.unit)));
    text.Comment("X 0 Y 0 cam centre, X axis cam zero" +
                 std::string(o_.from_back ? ", seen from the back: X has the other sign" : ""));
    text.Comment("The cam turns " + std::string((m_.rot > 0) != o_.from_back ? "counterclockwise" : "clockwise") +
                 " as it lies here, " +
                 (m_.side > 0 ? "the material is inside the contour" : "the material is outside the contour"));
    text.Comment("Tolerance " + length(o_.tolerance) + ", largest deviation " + length(file.largest_deviation) +
                 " at " + Plain_Figures(file.at, 6) + " deg of cam");
    text.Comment("Contour of the last pass: " + std::to_string(file.arcs) + " arcs, " + std::to_string(file.lines) +
                 " lines");
    text.Comment("Tool radius " + length(o_.tool_radius) +
                 (o_.offset == Radius_Offset::in_path
                      ? ", path of the tool centre, no compensation in the control"
                      : ", compensation " + std::string(o_.climb ? "G41" : "G42") + " in the control, D" +
                            std::to_string(o_.offset_number) + " must hold this radius"));
    text.Comment(o_.climb ? "Climb milling" : "Conventional milling");
    std::string left;
    for (const Pass& pass : passes)
        left += (left.empty() ? "" : ", ") + Plain_Figures(pass.allowance, 6);
    text.Comment("Stock on the blank " + length(o_.stock) + ", passes " + std::to_string(passes.size()) + " leaving " +
                 left);
    text.Comment(Height_Words(o_, levels));
    text.Comment((o_.lead == Lead::arc ? "Lead-in by an arc of radius " : "Lead-in by a ramp of ") +
                 length(o_.lead == Lead::arc ? o_.lead_size : Length_of(passes.back().in)) + " at " +
                 Plain_Figures(entry_.angle, 6) + " deg of cam" +
                 (entry_.room > 0.0 ? ", in a dwell of " + Plain_Figures(2.0 * entry_.room, 6) + " deg" : ""));
    double lowest = o_.feed;
    double highest = o_.feed;
    for (const Move& move : passes.back().contour) {
        lowest = std::min(lowest, move.feed);
        highest = std::max(highest, move.feed);
    }
    text.Comment("Feed of the contact " + Plain_Figures(o_.feed, 6) + ", F is that of the tool centre, " +
                 Plain_Figures(lowest, 4) + " to " + Plain_Figures(highest, 4) + ", plunging " +
                 Plain_Figures(o_.plunge_feed, 6));
    text.Comment(Machine_Words(o_));
    for (const std::string& note : file.notes)
        text.Comment(note);
}

Machine_File Contour::Write()
{
    std::string why = Wrong_Numbers();
    if (why.empty())
        why = Too_Large();
    if (!why.empty())
        return Refused(why);
    Machine_File file;
    if (!(entry_.room > 0.0))
        file.notes.push_back(No_Dwell_Sentence(entry_));
    std::vector<Pass> passes;
    double before = o_.stock;
    for (const double allowance : Allowances()) {
        passes.push_back(Make_Pass(allowance));
        const Pass& pass = passes.back();
        if (o_.lead == Lead::arc && before - allowance >= o_.lead_size)
            why = "The lead-in of radius " + Plain_Figures(o_.lead_size, 6) + " " + Name_of(o_.unit) +
                  " does not clear the " + Plain_Figures(before - allowance, 6) + " " + Name_of(o_.unit) +
                  " that a pass takes off.";
        if (why.empty())
            why = Bad_Lead(pass);
        if (!why.empty())
            return Refused(why);
        before = allowance;
        if (pass.largest_deviation > file.largest_deviation) {
            file.largest_deviation = pass.largest_deviation;
            file.at = pass.at;
        }
    }
    for (const Move& move : passes.back().contour)
        ++(move.arc ? file.arcs : file.lines);
    if (limited_)
        file.notes.push_back("Where the cam is pointed the tool centre would have to move faster than " +
                             Plain_Figures(Most(), 6) + ": the contact is slower there.");
    if (o_.lead == Lead::ramp && entry_.room > 0.0 && ramp_angle_ >= entry_.room)
        file.notes.push_back("The ramp is shortened to the dwell.");
    if (o_.lead == Lead::arc && m_.side < 0)
        file.notes.push_back("The tool enters on the inner side: the lead-in needs free room there.");
    if (const std::string stamp = Stamp_Words(o_); !stamp.empty())
        file.notes.push_back(stamp + ".");

    const std::vector<double> levels = Levels_of(o_);
    Program_Text text(o_, Decimals_of(o_.unit));
    Open_Program(text, o_);
    Write_Head(text, file, passes, levels.size());
    Start_Machine(text, o_);
    for (const double depth : levels)
        for (std::size_t k = 0; k + 1 < passes.size(); ++k) {
            text.Comment("Roughing, leaves " + Plain_Figures(passes[k].allowance, 6) + ", depth " +
                         Plain_Figures(depth, 6));
            Write_Pass(text, passes[k], depth);
        }
    text.Comment("Finishing");
    if (passes.size() == 1)
        for (const double depth : levels)
            Write_Pass(text, passes.back(), depth);
    else
        Write_Pass(text, passes.back(), levels.back());
    End_Program(text, o_);
    file.text = text.Text();
    return file;
}

// ---- Drum

/// A place of the drum and the tool over it.
struct Drum_Place {
    double theta = 0.0;  // degrees of the cam, rising beyond the turn
    double x = 0.0;
    double y = 0.0;
};

class Drum {
public:
    Drum(const Design_State& design, const Drum_Options& options)
        : o_(options),
          design_(design),
          cam_(design),
          m_(cam_.Follower()),
          scale_(Scale_of(design, options.unit)),
          grid_(Decimals_of(options.unit)),
          entry_(Best_Entry(cam_))
    {
    }

    Machine_File Write();

private:
    /// (313)
    Drum_Place At(double theta) const
    {
        const Vector f = m_.Center(cam_.Motion().At(theta).s);
        return {theta, scale_ * f.y, scale_ * f.x};
    }
    Drum_Place Written(double theta) const
    {
        const Drum_Place p = At(grid_.At(theta));
        return {p.theta, grid_.At(p.x), grid_.At(p.y)};
    }
    /// How far the straight block from one place to the other is from the true path at most. (314)
    double Departure(const Drum_Place& a, const Drum_Place& b) const;
    /// The way of the tool over the surface at the prime radius.
    double Way(double from, double to) const;
    std::vector<double> Nodes(double from, double to) const;
    double A(double theta) const { return (o_.reverse_rotary ? -1.0 : 1.0) * m_.rot * theta; }

    const Drum_Options& o_;
    const Design_State& design_;
    True_Cam cam_;
    const Mechanism& m_;
    double scale_;
    Grid grid_;
    Entry_Place entry_;
};

double Drum::Departure(const Drum_Place& a, const Drum_Place& b) const
{
    constexpr int places = 8;
    double most = 0.0;
    for (int k = 0; k <= places; ++k) {
        const double share = static_cast<double>(k) / places;
        const Drum_Place p = At(a.theta + share * (b.theta - a.theta));
        most = std::max(most, std::hypot(a.x + share * (b.x - a.x) - p.x, a.y + share * (b.y - a.y) - p.y));
    }
    return most;
}

double Drum::Way(double from, double to) const
{
    constexpr int places = 8;
    double way = 0.0;
    Vector last = cam_.At(from).center;
    for (int k = 1; k <= places; ++k) {
        Vector next = cam_.At(from + (to - from) * k / places).center;
        way += Length(next - last);
        last = next;
    }
    return scale_ * way;
}

/// Places between which straight blocks stay within the tolerance, each as far as it can be.
std::vector<double> Drum::Nodes(double from, double to) const
{
    constexpr double widest = 30.0;  // degrees of a block
    constexpr double narrowest = 1e-3;
    std::vector<double> ends;
    for (const double joint : Segment_Starts(cam_.Motion()))
        for (double place = joint; place < to; place += turn)
            if (place > from + narrowest && place < to - narrowest)
                ends.push_back(place);
    std::ranges::sort(ends);
    ends.push_back(to);
    const double within = o_.tolerance - 0.75 * grid_.Digit();
    std::vector<double> nodes{from};
    for (const double end : ends) {
        double step = widest;
        while (nodes.back() < end) {
            const double here = nodes.back();
            step = std::min(2.0 * step, widest);
            while (step > narrowest && Departure(At(here), At(std::min(end, here + step))) > within)
                step *= 0.75;
            nodes.push_back(here + step > end - narrowest ? end : here + step);
        }
    }
    return nodes;
}

Machine_File Drum::Write()
{
    if (!std::isfinite(o_.ramp) || !(o_.ramp > 0.0) || o_.ramp > 180.0)
        return Refused("The ramp runs from above 0 to 180 degrees of the drum.");
    Machine_File file;
    double ramp = o_.ramp;
    double start = entry_.angle;
    if (entry_.room > 0.0) {
        if (ramp > 2.0 * entry_.room) {
            ramp = 2.0 * entry_.room;
            file.notes.push_back("The ramp is shortened to the dwell.");
        }
        start = entry_.angle - 0.5 * ramp;
    } else {
        file.notes.push_back(No_Dwell_Sentence(entry_));
    }
    const bool beside = m_.arm;
    if (beside)
        file.notes.push_back("Y moves, for the arm of the follower leads the roller beside the axis of the drum.");
    if (design_.cam.Barrel_Type == "Ribbed")
        file.notes.push_back("This is the path of one roller of the rib, on the side that the design shows.");
    if (const std::string stamp = Stamp_Words(o_); !stamp.empty())
        file.notes.push_back(stamp + ".");

    const std::vector<double> first = Nodes(start, start + ramp);
    const std::vector<double> rest = Nodes(start + ramp, start + turn);
    struct Block {
        double theta;
        double z;
    };
    std::vector<Block> blocks;
    double above = -o_.clearance;
    double base = 0.0;
    const std::vector<double> levels = Levels_of(o_);
    const auto go_down = [&](double depth) {
        for (std::size_t i = 1; i < first.size(); ++i)
            blocks.push_back({base + first[i], -(above + (depth - above) * (first[i] - start) / ramp)});
        above = depth;
    };
    for (const double depth : levels) {
        go_down(depth);
        for (std::size_t i = 1; i < rest.size(); ++i)
            blocks.push_back({base + rest[i], -depth});
        base += turn;
    }
    go_down(levels.back());

    struct Written_Block {
        Drum_Place place;
        double z;
        double per_minute;
    };
    std::vector<Written_Block> written;
    double highest = 0.0;
    double lowest = std::numeric_limits<double>::infinity();
    double last = start;
    double z = o_.clearance;
    for (const Block& block : blocks) {
        const Drum_Place from = Written(last);
        const Drum_Place to = Written(block.theta);
        const double off = Departure(from, to);
        if (off > file.largest_deviation) {
            file.largest_deviation = off;
            file.at = std::fmod(last, turn);
        }
        const double per_minute = o_.feed / std::hypot(Way(last, block.theta), block.z - z);  // (315)
        highest = std::max(highest, per_minute);
        lowest = std::min(lowest, per_minute);
        written.push_back({to, block.z, per_minute});
        last = block.theta;
        z = block.z;
    }
    file.lines = static_cast<int>(written.size());

    Program_Text text(o_, Decimals_of(o_.unit));
    const std::string unit = Name_of(o_.unit);
    const auto length = [&](double value) { return Plain_Figures(value, 7) + " " + unit; };
    Open_Program(text, o_);
    for (const std::string& line : Opening_Lines_of(design_, "track of a barrel cam on a rotary axis"))
        text.Comment(line);
    text.Comment("Lengths in " + unit + ", angles in degrees, decimals " + std::to_string(Decimals_of(o_.unit)));
    text.Comment("X along the axis of the drum, the way of the follower, 0 at its displacement 0, Y 0 at the axis");
    text.Comment(
        "A about the axis, 0 at cam zero, goes on beyond 360 and is not turned back, Z 0 at the outer surface");
    text.Comment("The cam turns " + std::string(m_.rot > 0 ? "counterclockwise" : "clockwise") +
                 " seen from its X+ end, and so does the drum here, A " + (A(1.0) > 0.0 ? "rises" : "falls") +
                 ", A+ must turn the drum " + (o_.reverse_rotary ? "clockwise" : "counterclockwise") +
                 " seen from its X+ end");
    text.Comment("Tool radius " + length(scale_ * m_.roller_radius) +
                 ", that of the roller, other tools leave other walls");
    text.Comment("Prime radius " + length(scale_ * m_.prime));
    text.Comment("Tolerance " + length(o_.tolerance) + ", largest deviation " + length(file.largest_deviation) +
                 " at " + Plain_Figures(file.at, 6) + " deg of cam, " + std::to_string(file.lines) + " blocks");
    text.Comment(Height_Words(o_, levels.size()));
    text.Comment("Lead-in by a ramp of " + Plain_Figures(ramp, 6) + " deg from " + Plain_Figures(start, 6) +
                 " deg of cam on" + (entry_.room > 0.0 ? ", in a dwell" : ""));
    text.Comment("Feed " + Plain_Figures(o_.feed, 6) + " " + unit +
                 " per minute at the prime radius, in inverse time G93: " + Plain_Figures(lowest, 4) + " to " +
                 Plain_Figures(highest, 4) + " per minute");
    text.Comment(Machine_Words(o_));
    for (const std::string& note : file.notes)
        text.Comment(note);
    Start_Machine(text, o_);
    const Drum_Place begin = Written(start);
    text.Block("G0 " + text.Word('X', begin.x) + ' ' + text.Word('Y', beside ? begin.y : 0.0) + ' ' +
               text.Word('A', A(begin.theta)));
    text.Block("G0 " + text.Word('Z', o_.clearance));
    text.Block("G93");
    z = o_.clearance;
    for (const Written_Block& block : written) {
        std::string words = "G1 " + text.Word('X', block.place.x);
        if (beside)
            words += ' ' + text.Word('Y', block.place.y);
        words += ' ' + text.Word('A', A(block.place.theta));
        if (block.z != z)
            words += ' ' + text.Word('Z', block.z);
        text.Block(words + " F" + Plain_Figures(block.per_minute, 6));
        z = block.z;
    }
    text.Block("G94");
    text.Block("G0 " + text.Word('Z', o_.safe_height));
    End_Program(text, o_);
    file.text = text.Text();
    return file;
}

}  // namespace

Machine_File Contour_Program(const Design_State& design, const Contour_Options& options)
{
    if (std::string why = Wrong_Words(options); !why.empty())
        return Refused(std::move(why));
    if (design.cam.Camtype != "Radial")
        return Refused("A contour is that of a disk cam; a barrel cam needs the program for a rotary axis.");
    if (std::string why = Why_Not_Cut(design, options.tool_radius / Scale_of(design, options.unit), options.cut_anyway);
        !why.empty())
        return Refused(std::move(why));
    try {
        return Contour(design, options).Write();
    } catch (const Fault&) {
        return Refused("No arcs follow the contour within " + Plain_Figures(options.tolerance, 6) + " " +
                       Name_of(options.unit) +
                       ": take a tolerance of a millionth to a hundredth of the size of the cam.");
    }
}

Machine_File Drum_Program(const Design_State& design, const Drum_Options& options)
{
    if (std::string why = Wrong_Words(options); !why.empty())
        return Refused(std::move(why));
    if (design.cam.Camtype != "Barrel")
        return Refused("The program for a rotary axis is that of a barrel cam.");
    if (std::string why = Why_Not_Cut(design, design.cam.Follow_Rad, options.cut_anyway); !why.empty())
        return Refused(std::move(why));
    return Drum(design, options).Write();
}

}  // namespace lobemax
