// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/cam_tables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>

#include "camgeom/lobe_figures.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "shop/curve_set.h"
#include "truth/true_motion.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;
constexpr const char* line_end = "\r\n";

/// The motion in the unit of position, with its velocity and acceleration per degree of cam.
class Position {
public:
    explicit Position(const Design_State& design) : motion_(design), scale_(design.cam.Translating ? 1.0 : Deg_per_Rad)
    {
    }
    double At(double theta) const { return scale_ * motion_.At(theta).s; }
    double Velocity(double theta) const { return scale_ * Rad_per_Deg * motion_.At(theta).v; }
    double Acceleration(double theta) const { return scale_ * Rad_per_Deg * Rad_per_Deg * motion_.At(theta).a; }
    const True_Motion& Motion() const { return motion_; }

private:
    True_Motion motion_;
    double scale_;
};

/// Decimals that show a share of a value.
int Decimals_for(double largest, double share)
{
    if (!(largest > 0.0))
        return 6;
    return std::clamp(static_cast<int>(std::ceil(-std::log10(largest * share))), 0, 12);
}

std::string Number(double value, int decimals, Decimal_Symbol symbol)
{
    std::string picture = "0";
    if (decimals > 0)
        picture += '.' + std::string(static_cast<std::size_t>(decimals), '0');
    return Format_Picture(value, picture, symbol);
}

/// A literal of a real number: it has a decimal point.
std::string Literal(double value)
{
    std::string text = Shortest(value);
    if (text.find('.') == std::string::npos) {
        const std::size_t e = text.find('E');
        text.insert(e == std::string::npos ? text.size() : e, ".0");
    }
    return text;
}

std::string Bad_Separators(char separator, Decimal_Symbol decimal)
{
    constexpr std::string_view known = ";,\t |";
    if (known.find(separator) == std::string_view::npos)
        return "A separator is a semicolon, a comma, a tab, a blank or a bar.";
    if (separator == ',' && decimal == Decimal_Symbol::comma)
        return "The comma cannot be both separator and decimal symbol.";
    return "";
}

bool Is_Identifier(std::string_view name)
{
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    if (name.empty() || name.size() > 24 || !letter(name.front()) || name.back() == '_' ||
        name.find("__") != std::string_view::npos)
        return false;
    return std::ranges::all_of(name, [&](char c) { return letter(c) || digit(c) || c == '_'; });
}

std::string Why_No_Motion(const Design_State& design)
{
    if (!Holds(design, Mark::motion))
        return "The design has no calculated motion.";
    return Results_in_Other_Units(design) ? Other_Units_Sentence(design) : "";
}

constexpr const char* Bad_Name =
    "A name begins with a letter and has letters, digits and single underscores, 24 at the most.";

std::string Csv_Head(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += "# " + On_One_Line(line) + line_end;
    return text;
}

std::string Code_Head(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += "(* " + As_Comment(line) + " *)" + line_end;
    return text;
}

/// Elements of an array over several lines.
std::string Array_Lines(const std::vector<std::string>& elements, std::size_t per_line)
{
    std::string text;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i % per_line == 0)
            text += "        ";
        text += elements[i];
        if (i + 1 < elements.size())
            text += i % per_line == per_line - 1 ? "," : ", ";
        if (i % per_line == per_line - 1 || i + 1 == elements.size())
            text += line_end;
    }
    return text;
}

std::string_view Name_of(Plc_Number number)
{
    switch (number) {
    case Plc_Number::REAL:
        return "REAL";
    case Plc_Number::LREAL:
        return "LREAL";
    case Plc_Number::INT:
        return "INT";
    case Plc_Number::DINT:
        return "DINT";
    }
    return "";
}

double Largest_of(Plc_Number number)
{
    return number == Plc_Number::INT ? 32767.0 : 2147483647.0;
}

bool Is_Integer(Plc_Number number)
{
    return number == Plc_Number::INT || number == Plc_Number::DINT;
}

}  // namespace

// ---- Points

namespace {

/// The positions of a table as they are written, and as whoever reads them has them.
struct Written_Points {
    std::vector<std::string> text;
    std::vector<double> value;
};

Written_Points Points_as_Written(const std::vector<double>& s, const Motion_Table_Options& o, double scale,
                                 int decimals)
{
    Written_Points points;
    for (const double value : s) {
        std::string text;
        double read = value;
        if (o.form == Table_Form::csv) {
            text = Number(value, decimals, o.decimal);
            read = Val(text, o.decimal);
        } else if (Is_Integer(o.number)) {
            const long long count = std::llround(value * scale);
            text = std::to_string(count);
            read = static_cast<double>(count) / scale;
        } else if (o.number == Plc_Number::REAL) {
            read = Single(value);
            text = Shortest(Single(value));
            if (text.find_first_of(".E") == std::string::npos)
                text += ".0";
            else if (const std::size_t e = text.find('E');
                     e != std::string::npos && text.find('.') == std::string::npos)
                text.insert(e, ".0");
        } else {
            text = Literal(value);
        }
        points.text.push_back(std::move(text));
        points.value.push_back(read);
    }
    return points;
}

}  // namespace

Machine_File Motion_Table(const Design_State& design, const Motion_Table_Options& options)
{
    const Motion_Table_Options& o = options;
    if (o.points < 256 || o.points > 8192 || !std::has_single_bit(static_cast<unsigned>(o.points)))
        return Refused("The points of a table are a power of two from 256 to 8192.");
    if (o.form == Table_Form::csv) {
        if (std::string why = Bad_Separators(o.separator, o.decimal); !why.empty())
            return Refused(std::move(why));
    } else if (!Is_Identifier(o.name)) {
        return Refused(Bad_Name);
    }
    if (!std::isfinite(o.scale) || o.scale < 0.0)
        return Refused("The scale must not be below 0.");
    if (std::string why = Why_No_Motion(design); !why.empty())
        return Refused(std::move(why));

    const Position position(design);
    const double step = turn / o.points;  // exact in binary
    const int count = o.points + (o.closing_point ? 1 : 0);
    std::vector<double> s;
    double largest = 0.0;
    for (int i = 0; i < count; ++i) {
        s.push_back(position.At(i % o.points * step));
        largest = std::max(largest, std::abs(s.back()));
    }
    const bool integers = o.form == Table_Form::structured_text && Is_Integer(o.number);
    double scale = o.scale;
    if (integers) {
        if (scale == 0.0)
            scale = largest > 0.0 ? std::pow(10.0, std::floor(std::log10(Largest_of(o.number) / largest))) : 1.0;
        if (largest * scale > Largest_of(o.number))
            return Refused("A position of " + Plain_Figures(largest, 7) + " " + Position_Unit_of(design) + " at " +
                           Plain_Figures(scale, 9) + " counts each does not fit into " +
                           std::string(Name_of(o.number)) + ".");
    }
    const int decimals = Decimals_for(largest, 1e-8);
    const Written_Points points = Points_as_Written(s, o, scale, decimals);

    Machine_File file;
    file.points = count;
    double rounding = 0.0;
    for (int i = 0; i < count; ++i) {
        const auto k = static_cast<std::size_t>(i);
        rounding = std::max(rounding, std::abs(points.value[k] - s[k]));
    }
    constexpr int places = 4;
    for (int i = 0; i < o.points; ++i) {
        const double from = points.value[static_cast<std::size_t>(i)];
        const double to = points.value[static_cast<std::size_t>((i + 1) % o.points)];
        for (int k = 0; k < places; ++k) {
            const double share = static_cast<double>(k) / places;
            const double off = std::abs(from + share * (to - from) - position.At((i + share) * step));
            if (off > file.largest_deviation) {
                file.largest_deviation = off;
                file.at = (i + share) * step;
            }
        }
    }

    const std::string unit = Position_Unit_of(design);
    std::vector<std::string> head = Opening_Lines_of(design, "motion of the follower as a table");
    head.push_back("Cam angle in degrees, position in " + unit);
    head.push_back("Points " + std::to_string(count) + ", step " + Plain_Figures(step, 12) + " deg" +
                   (o.closing_point ? ", the last is the first again" : ""));
    head.push_back("Largest rounding of a point " + Plain_Figures(rounding, 3) + " " + unit +
                   "; tolerance: straight lines between the points depart by " +
                   Plain_Figures(file.largest_deviation, 3) + " " + unit + " at most, at " + Plain_Figures(file.at, 7) +
                   " deg");
    if (integers)
        head.push_back("One " + unit + " is " + Plain_Figures(scale, 9) + " counts");

    if (o.form == Table_Form::csv) {
        file.text = Csv_Head(head);
        const std::string sep(1, o.separator);
        file.text += "Angle deg" + sep + "Position " + unit;
        if (o.derivatives)
            file.text += sep + "Velocity " + unit + "/deg" + sep + "Acceleration " + unit + "/deg2";
        file.text += line_end;
        for (int i = 0; i < count; ++i) {
            const double theta = i * step;
            file.text += Number(theta, 10, o.decimal) + sep + points.text[static_cast<std::size_t>(i)];
            if (o.derivatives)
                file.text += sep + Number(position.Velocity(theta), 12, o.decimal) + sep +
                             Number(position.Acceleration(theta), 12, o.decimal);
            file.text += line_end;
        }
        return file;
    }
    const std::string type(Name_of(o.number));
    const std::string last = std::to_string(count - 1);
    file.text = Code_Head(head);
    file.text += std::string("TYPE") + line_end + "    " + o.name + "_Table : ARRAY[0.." + last + "] OF " + type + ";" +
                 line_end + "END_TYPE" + line_end;
    file.text += std::string("VAR_GLOBAL CONSTANT") + line_end;
    file.text += "    " + o.name + "_Last : DINT := " + last + ";" + line_end;
    file.text += "    " + o.name + "_Step : LREAL := " + Literal(step) + ";" + line_end;
    if (integers)
        file.text += "    " + o.name + "_Scale : LREAL := " + Literal(scale) + ";" + line_end;
    file.text += "    " + o.name + "_Position : " + o.name + "_Table := [" + line_end;
    file.text += Array_Lines(points.text, 8);
    file.text += std::string("    ];") + line_end + "END_VAR" + line_end;
    return file;
}

// ---- Pieces

namespace {

using Function = std::function<double(double)>;

/// The polynomial of a degree that a function is: through the zeros of Chebyshev's polynomial on 0 to 1, by divided
/// differences.
std::vector<double> Through_Places(const Function& f, int degree)
{
    const auto n = static_cast<std::size_t>(degree) + 1;
    std::vector<long double> x(n);
    std::vector<long double> d(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double place = 0.5 - 0.5 * std::cos(PI * (static_cast<double>(i) + 0.5) / static_cast<double>(n));
        x[i] = place;
        d[i] = f(place);
    }
    for (std::size_t k = 1; k < n; ++k)
        for (std::size_t i = n - 1; i >= k; --i)
            d[i] = (d[i] - d[i - 1]) / (x[i] - x[i - k]);
    std::vector<long double> c(n, 0.0L);
    for (std::size_t k = n; k-- > 0;) {
        for (std::size_t i = n - 1; i > 0; --i)
            c[i] = c[i - 1] - x[k] * c[i];
        c[0] = d[k] - x[k] * c[0];
    }
    return {c.begin(), c.end()};
}

double Value_of(const std::vector<double>& c, double x)
{
    double value = 0.0;
    for (std::size_t i = c.size(); i-- > 0;)
        value = value * x + c[i];
    return value;
}

double Error_of(const std::vector<double>& c, const Function& f)
{
    constexpr int places = 97;
    double error = 0.0;
    for (int i = 0; i <= places; ++i) {
        const double x = static_cast<double>(i) / places;
        error = std::max(error, std::abs(Value_of(c, x) - f(x)));
    }
    return error;
}

/// The degree of a law that is a polynomial; none of the others.
std::optional<int> Degree_of_Law(int Seg_Program)
{
    switch (Seg_Program) {
    case selector::dwell:
        return 0;
    case selector::poly_345:
        return 5;
    case selector::poly_3456:
        return 6;
    case selector::poly_4567:
    case selector::berzak_d:
    case selector::berzak_e:
        return 7;
    case selector::poly_11:
        return 11;
    default:
        return {};
    }
}

/// Coefficients of the laws have two decimals for a lift of 1: what the places leave of rounding goes.
void Clear_Rounding(std::vector<double>& c, double lift)
{
    constexpr double decimals = 100.0;
    if (lift == 0.0)
        return;
    for (double& value : c) {
        const double normal = std::round(value / lift * decimals) / decimals;
        if (std::abs(value - normal * lift) < 1e-5 * std::abs(lift))
            value = normal * lift;
    }
}

}  // namespace

std::optional<std::vector<Motion_Piece>> Pieces_of(const Design_State& design, std::string& why)
{
    why = Why_No_Motion(design);
    if (!why.empty())
        return {};
    const True_Motion motion(design);
    const Motion_Curve* curve = motion.Curve();
    if (!curve) {
        why = "The motion stands in the rows alone and is no polynomial: take a table of points.";
        return {};
    }
    const Motion_Group& m = design.motion;
    const bool conjugate = design.cam.Conjugate;
    const double sign = conjugate ? -1.0 : 1.0;
    const double above = conjugate ? double{m.Liftmax} : 0.0;
    std::vector<Motion_Piece> pieces;
    double largest = 0.0;
    for (int i = 1; i <= curve->Segments(); ++i) {
        const Motion_Curve::Place end = curve->End_of(i);
        const double beta = end.local;
        if (!(beta > 0.0))
            continue;
        const auto of = [&](double from, double length) {
            return Function(
                [&, from, length](double x) { return above + sign * (end.base + end.curve->At(from + x * length).S); });
        };
        const Function whole = of(0.0, beta);
        const auto refuse = [&](const std::string& what) {
            why = "Segment " + std::to_string(i) + ", " + m.Function(i) + ", " + what + ": take a table of points.";
        };
        if (end.curve->Spline()) {
            const int order = m.Orders(i);
            if (order > 12) {
                refuse("is a spline of too high an order");
                return {};
            }
            double from = 0.0;
            for (int k = order + 1; k <= m.Number_of_Knots(i); ++k) {
                const double to = std::min(double{m.Knots(k, i)}, beta);
                if (!(to > from))
                    continue;
                const Function f = of(from, to - from);
                std::vector<double> c = Through_Places(f, order - 1);
                const double error = Error_of(c, f);
                pieces.push_back({double{m.Shift(i)} + from, to - from, std::move(c), error});
                from = to;
            }
        } else {
            std::vector<double> c;
            if (end.curve->Polynomial()) {
                Polynomial_Solution solution;
                if (!Solve_Polynomial(design, i, solution)) {
                    refuse("is not solved");
                    return {};
                }
                for (int k = 0; k < solution.count; ++k)
                    c.push_back(sign * solution.C.at(static_cast<std::size_t>(k)));
                c.front() += above + sign * end.base;
            } else {
                const std::optional<int> degree = Degree_of_Law(m.Seg_Program(i));
                if (!degree) {
                    refuse("is no polynomial");
                    return {};
                }
                c = Through_Places(whole, *degree);
                const double first = c.front();
                c.front() = 0.0;
                Clear_Rounding(c, double{m.Total_Displacement(i)});
                c.front() =
                    std::abs(first - whole(0.0)) <= 1e-9 * std::abs(m.Total_Displacement(i)) ? whole(0.0) : first;
            }
            const double error = Error_of(c, whole);
            pieces.push_back({double{m.Shift(i)}, beta, std::move(c), error});
        }
        for (const double x : {0.0, 0.25, 0.5, 0.75, 1.0})
            largest = std::max(largest, std::abs(whole(x)));
        if (pieces.back().error > 1e-7 * largest) {
            refuse("loses its digits as a polynomial of its angle");
            return {};
        }
    }
    return pieces;
}

Machine_File Piece_Table(const Design_State& design, const Piece_Table_Options& options)
{
    const Piece_Table_Options& o = options;
    if (o.form == Table_Form::csv) {
        if (std::string why = Bad_Separators(o.separator, o.decimal); !why.empty())
            return Refused(std::move(why));
    } else if (!Is_Identifier(o.name)) {
        return Refused(Bad_Name);
    }
    std::string why;
    const std::optional<std::vector<Motion_Piece>> pieces = Pieces_of(design, why);
    if (!pieces)
        return Refused(why);
    Machine_File file;
    file.points = static_cast<int>(pieces->size());
    std::size_t most = 0;
    for (const Motion_Piece& piece : *pieces) {
        most = std::max(most, piece.coefficients.size());
        if (piece.error > file.largest_deviation) {
            file.largest_deviation = piece.error;
            file.at = piece.start;
        }
    }
    const std::string unit = Position_Unit_of(design);
    std::vector<std::string> head = Opening_Lines_of(design, "motion of the follower as polynomials");
    head.push_back("Cam angle in degrees, position in " + unit);
    head.push_back("Position = c0 + c1 x + c2 x^2 and so on, x = (angle - start) / beta, from 0 to 1");
    head.push_back("Pieces " + std::to_string(pieces->size()) + ", largest departure from the motion " +
                   Plain_Figures(file.largest_deviation, 2) + " " + unit +
                   ", tolerance none: the polynomials are the motion");
    if (o.form == Table_Form::csv) {
        const std::string sep(1, o.separator);
        file.text = Csv_Head(head) + "Start deg" + sep + "Beta deg" + sep + "Degree";
        for (std::size_t k = 0; k < most; ++k)
            file.text += sep + "c" + std::to_string(k) + " " + unit;
        file.text += line_end;
        for (const Motion_Piece& piece : *pieces) {
            file.text += Shortest(piece.start, o.decimal) + sep + Shortest(piece.beta, o.decimal) + sep +
                         std::to_string(piece.coefficients.size() - 1);
            for (std::size_t k = 0; k < most; ++k)
                file.text += sep + Shortest(k < piece.coefficients.size() ? piece.coefficients[k] : 0.0, o.decimal);
            file.text += line_end;
        }
        return file;
    }
    file.text = Code_Head(head);
    const std::string top = std::to_string(most - 1);
    file.text += std::string("TYPE") + line_end + "    " + o.name + "_Piece : STRUCT" + line_end;
    for (const std::string& field : {std::string("Start : LREAL"), std::string("Beta : LREAL"),
                                     std::string("Degree : INT"), "C : ARRAY[0.." + top + "] OF LREAL"})
        file.text += "        " + field + ";" + line_end;
    file.text += std::string("    END_STRUCT;") + line_end + "END_TYPE" + line_end;
    file.text += std::string("VAR_GLOBAL CONSTANT") + line_end;
    file.text += "    " + o.name + "_Pieces : ARRAY[1.." + std::to_string(pieces->size()) + "] OF " + o.name +
                 "_Piece := [" + line_end;
    for (std::size_t i = 0; i < pieces->size(); ++i) {
        const Motion_Piece& piece = (*pieces)[i];
        std::vector<std::string> c;
        for (std::size_t k = 0; k < most; ++k)
            c.push_back(Literal(k < piece.coefficients.size() ? piece.coefficients[k] : 0.0));
        file.text += "        (Start := " + Literal(piece.start) + ", Beta := " + Literal(piece.beta) +
                     ", Degree := " + std::to_string(piece.coefficients.size() - 1) + ", C := [" + line_end;
        file.text += Array_Lines(c, 4);
        file.text += std::string("        ])") + (i + 1 < pieces->size() ? "," : "") + line_end;
    }
    file.text += std::string("    ];") + line_end + "END_VAR" + line_end;
    return file;
}

// ---- Lift

namespace {

/// The nose: between the stored points where the follower turns, in a rest its middle.
double Nose_of(const Position& position, double peak, double step)
{
    double before = peak - step;
    double behind = peak + step;
    if (!(position.Velocity(before) > 0.0) || !(position.Velocity(behind) < 0.0))
        return peak;
    // Where it rests for less than a step both velocities are its neighbours'.
    if (position.Velocity(peak) == 0.0)
        return peak;
    constexpr int halvings = 50;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (before + behind);
        (position.Velocity(middle) > 0.0 ? before : behind) = middle;
    }
    return 0.5 * (before + behind);
}

}  // namespace

Machine_File Lift_Table(const Design_State& design, const Lift_Table_Options& options)
{
    const Lift_Table_Options& o = options;
    if (std::string why = Bad_Separators(o.separator, o.decimal); !why.empty())
        return Refused(std::move(why));
    const double per_half = std::isfinite(o.step) && o.step > 0.0 ? 180.0 / o.step : 0.0;
    if (!(o.step <= 1.0) || !(per_half >= 180.0) || per_half > 180000.0 ||
        std::abs(per_half - std::round(per_half)) > 1e-9 * per_half)
        return Refused("The step of a lift table is 1 degree or less, and 180 degrees are a multiple of it.");
    if (std::string why = Why_No_Motion(design); !why.empty())
        return Refused(std::move(why));
    if (design.cam.Conjugate)
        return Refused("A conjugate follows its cam and has no lobe of its own.");
    const Position position(design);
    double least = std::numeric_limits<double>::infinity();
    double most = -least;
    for (int i = 0; i < 3600; ++i) {
        const double s = position.At(0.1 * i);
        least = std::min(least, s);
        most = std::max(most, s);
    }
    const double at_lift = o.at_lift > 0.0 ? o.at_lift : 0.1 * (most - least);
    const std::optional<Lobe_Figures> figures = Figures_of_Lobe(design, at_lift);
    const std::string unit = Position_Unit_of(design);
    if (!std::isfinite(o.at_lift) || o.at_lift < 0.0 || !figures)
        return Refused("The motion never has a lift of " + Plain_Figures(at_lift, 6) + " " + unit + ", or always.");
    const double nose = Nose_of(position, figures->peak, design.motion.Deltatheta);
    most = std::max(most, position.At(nose));

    Machine_File file;
    const int rows = static_cast<int>(std::lround(per_half));
    const int decimals = Decimals_for(most - least, 1e-7);
    file.points = rows + 1;
    file.largest_deviation = 0.5 * std::pow(10.0, -decimals);
    file.at = nose;
    std::vector<std::string> head = Opening_Lines_of(design, "lift of the follower from the nose");
    head.push_back("Degrees of cam, lift in " + unit + " above its smallest position");
    head.push_back("The nose is at 0, at " + Plain_Figures(nose, 8) +
                   " deg of the cycle; opening is before it, closing behind");
    head.push_back("Largest lift " + Plain_Figures(most - least, 8) + " " + unit);
    head.push_back("Duration at a lift of " + Plain_Figures(at_lift, 6) + " " + unit + ": " +
                   Plain_Figures(figures->duration, 8) + " deg, opens at " + Plain_Figures(figures->opens, 8) +
                   ", closes at " + Plain_Figures(figures->closes, 8) + " deg of the cycle");
    head.push_back("Lobe centre " + Plain_Figures(figures->centre, 8) + " deg of the cycle");
    head.push_back("Area under the lift curve " + Plain_Figures(figures->area, 8) + " " + unit + " deg");
    head.push_back("Points " + std::to_string(2 * rows + 1) + " each " + Plain_Figures(180.0 / rows, 9) +
                   " deg, tolerance and largest deviation of a point " + Plain_Figures(file.largest_deviation, 2) +
                   " " + unit + ", its rounding");
    const std::string sep(1, o.separator);
    file.text =
        Csv_Head(head) + "Degrees from nose" + sep + "Opening lift " + unit + sep + "Closing lift " + unit + line_end;
    const int angle_decimals = Decimals_for(180.0 / rows, 1e-4);
    for (int i = 0; i <= rows; ++i) {
        const double away = 180.0 * i / rows;
        file.text += Number(away, angle_decimals, o.decimal) + sep +
                     Number(position.At(nose - away) - least, decimals, o.decimal) + sep +
                     Number(position.At(nose + away) - least, decimals, o.decimal) + line_end;
    }
    return file;
}

}  // namespace lobemax
