// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/profile_import.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/variables.h"
#include "motion/segment_store.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

constexpr int too_many_pairs = 2881;

bool Is_Digit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view Stripped(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// Where the line ends; a carriage return alone ends one too.
std::string_view Take_Line(std::string_view& text)
{
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    const bool two = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
    text.remove_prefix(std::min(text.size(), end + (two ? 2 : 1)));
    return line;
}

bool Is_Comment(std::string_view line)
{
    return line.starts_with("//") || std::string_view("#%!*;'\"").find(line.front()) != std::string_view::npos;
}

std::vector<std::string_view> Split(std::string_view line, std::string_view separators, bool empty_count)
{
    std::vector<std::string_view> cells;
    while (true) {
        const std::size_t end = std::min(line.find_first_of(separators), line.size());
        const std::string_view cell = Stripped(line.substr(0, end));
        if (empty_count || !cell.empty())
            cells.push_back(cell);
        if (end == line.size())
            break;
        line.remove_prefix(end + 1);
    }
    while (empty_count && !cells.empty() && cells.back().empty())
        cells.pop_back();  // a separator ends the line of some machines
    return cells;
}

/// A comma between digits, as "12,5" has it.
bool Has_Inner_Comma(std::string_view cell)
{
    for (std::size_t i = 1; i + 1 < cell.size(); ++i)
        if (cell[i] == ',' && Is_Digit(cell[i - 1]) && Is_Digit(cell[i + 1]))
            return true;
    return false;
}

/// How the numbers of a line stand apart.
enum class Style { semicolons, blanks, commas };

Style Style_of(std::string_view line)
{
    if (line.find(';') != std::string_view::npos)
        return Style::semicolons;
    // A comma with a blank beside it, or one alone between two numbers, separates.
    const std::vector<std::string_view> words = Split(line, " \t", false);
    const bool comma = line.find(',') != std::string_view::npos;
    if (words.size() < 2)
        return comma ? Style::commas : Style::blanks;
    const bool every_comma_inner = std::ranges::all_of(words, [](std::string_view word) {
        return word.find(',') == std::string_view::npos || (word.front() != ',' && word.back() != ',');
    });
    return comma && !every_comma_inner ? Style::commas : Style::blanks;
}

std::vector<std::string_view> Cells_of(std::string_view line)
{
    switch (Style_of(line)) {
    case Style::semicolons:
        return Split(line, ";", true);
    case Style::commas:
        return Split(line, ",", true);
    default:
        return Split(line, " \t", false);
    }
}

std::optional<double> Number_of(std::string_view cell, Decimal_Symbol symbol)
{
    try {
        const Number_Read number = Read_Number(cell, symbol);
        if (!number.any || !number.whole)
            return {};
        return double{Single(number.value)};
    } catch (const Fault&) {
        return {};
    }
}

struct Line {
    std::string_view text;
    std::vector<std::string_view> cells;
    int number;
};

/// The lines that are not empty and no comments.
std::vector<Line> Lines_of(std::string_view text)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark))
        text.remove_prefix(mark.size());
    std::vector<Line> lines;
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = Stripped(Take_Line(text));
        if (!line.empty() && !Is_Comment(line))
            lines.push_back({line, Cells_of(line), number});
    }
    return lines;
}

/// Whether commas are decimal signs: some number has one inside, and none has a point.
bool Decimal_Commas(const std::vector<Line>& lines)
{
    bool comma = false;
    for (const Line& line : lines)
        for (const std::string_view cell : line.cells) {
            const bool number = !cell.empty() && (Is_Digit(cell.front()) || cell.front() == '-' || cell.front() == '+');
            if (number && cell.find('.') != std::string_view::npos)
                return false;
            comma = comma || (number && Has_Inner_Comma(cell));
        }
    return comma;
}

std::string Shown_Line(const Line& line)
{
    constexpr std::size_t longest = 60;
    const std::string text = On_One_Line(line.text.substr(0, longest));
    return "Line " + std::to_string(line.number) + ": '" + text + (line.text.size() > longest ? "..." : "") + "' ";
}

}  // namespace

Pairs_Read Read_Pairs(std::string_view text)
{
    Pairs_Read read;
    if (text.find('\0') != std::string_view::npos) {
        read.problem = "This is no text file.";
        return read;
    }
    const std::vector<Line> lines = Lines_of(text);
    const Decimal_Symbol symbol = Decimal_Commas(lines) ? Decimal_Symbol::comma : Decimal_Symbol::point;
    for (const Line& line : lines) {
        std::vector<double> numbers;
        for (const std::string_view cell : line.cells)
            if (const std::optional<double> number = Number_of(cell, symbol))
                numbers.push_back(*number);
        if (numbers.size() == 2 && line.cells.size() == 2) {
            read.pairs.push_back({numbers[0], numbers[1], line.number});
            continue;
        }
        if (read.pairs.empty() && numbers.size() < line.cells.size())
            continue;  // a head line
        read.problem = Shown_Line(line) + (line.cells.size() == 2
                                               ? "is not a pair of numbers."
                                               : "has " + std::to_string(line.cells.size()) +
                                                     (line.cells.size() == 1 ? " entry" : " entries") +
                                                     ", not two.  Each line holds one pair: angle and displacement, "
                                                     "or x and y.");
        return read;
    }
    if (read.pairs.empty())
        read.problem = "There is no pair of numbers in this file.";
    return read;
}

namespace {

void Exclaim(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// The finest grid that a count of pairs asks for; none for too many.
std::optional<double> Step_for(int count)
{
    struct Grid {
        double step;
        int below;
    };
    for (const Grid& grid : {Grid{0.5, 721}, Grid{0.25, 1441}, Grid{0.125, too_many_pairs}})
        if (count < grid.below)
            return grid.step;
    return {};
}

/// @return false after the message that there are too many
bool Choose_Grid(Design_State& design, int count)
{
    const std::string sets = "There are " + std::to_string(count) + " data sets in this file. \n";
    double step = design.motion.Deltatheta;
    if (count > design.motion.Max_Data_Points_used) {
        const std::optional<double> finer = Step_for(count);
        if (!finer) {
            Exclaim(sets + "Cannot have more than 2881 for this routine.");
            return false;
        }
        step = *finer;
        Show_Message(sets + "Delta Theta has been reset to allow that many.", Buttons::OK, Symbol::information);
    }
    return Set_Step(design, step);
}

/// Angles and radii of the points by rising angle, 0 to 360.
void Xy_To_Polar(std::vector<Measured_Pair>& pairs, double prime)
{
    for (Measured_Pair& pair : pairs) {
        Single radius;
        Single angle;
        Cart_to_Polar(pair.first, pair.second, radius, angle);
        pair.first = FN_Modulo(angle, 360.0);
        pair.second = radius - prime;
    }
    std::ranges::stable_sort(pairs, {}, &Measured_Pair::first);
}

/// Empty, or the line whose angle does not rise.
std::string Not_Rising(const std::vector<Measured_Pair>& pairs)
{
    for (std::size_t i = 1; i < pairs.size(); ++i)
        if (!(Single(pairs[i].first * Rad_per_Deg) > Single(pairs[i - 1].first * Rad_per_Deg)))
            return "Line " + std::to_string(pairs[i].line) + ": the angle " + Shortest(Single(pairs[i].first)) +
                   " does not rise above " + Shortest(Single(pairs[i - 1].first)) + " of line " +
                   std::to_string(pairs[i - 1].line) + ".";
    return {};
}

/// @return empty, or why the data are no cycle
std::string Beyond_a_Turn(const std::vector<Measured_Pair>& pairs)
{
    constexpr double rounding = 0.01;  // degrees
    if (pairs.back().first - pairs.front().first <= 360.0 + rounding)
        return {};
    return "Line " + std::to_string(pairs.back().line) + ": the angles run over more than one turn, from " +
           Shortest(Single(pairs.front().first)) + " to " + Shortest(Single(pairs.back().first)) + " degrees.";
}

}  // namespace

bool Take_Profile(Design_State& design, std::string_view text, const std::string& name, const Import_Choice& choice,
                  Profile& profile)
{
    profile = {};
    Pairs_Read read = Read_Pairs(text);
    if (!read.problem.empty()) {
        Exclaim(read.problem);
        return false;
    }
    if (!choice.prime && !design.flags.Starting) {
        Exclaim("Please type the cam's prime radius in its box");
        return false;
    }
    bool taken = false;
    Trap("Read_File", [&] {
        std::vector<Measured_Pair>& pairs = read.pairs;
        const bool xy = choice.coord == Import_Coord::XY;
        if (xy)
            Xy_To_Polar(pairs, choice.prime.value_or(0.0));
        if (const std::string problem = Not_Rising(pairs); !problem.empty()) {
            Exclaim(problem);
            return;
        }
        if (!Choose_Grid(design, static_cast<int>(pairs.size())))
            return;
        if (xy || choice.close)
            pairs.push_back({pairs.front().first + 360.0, pairs.front().second, pairs.back().line});
        if (const std::string problem = Beyond_a_Turn(pairs); !problem.empty()) {
            Exclaim(problem);
            return;
        }
        const double shift = std::fmod(choice.shift, 360.0);
        for (const Measured_Pair& pair : pairs) {
            profile.Raw_Angle.emplace_back(pair.first);
            profile.Raw_Displacement.emplace_back(pair.second);
            profile.x.emplace_back((pair.first + shift) * Rad_per_Deg);
        }
        profile.y = profile.Raw_Displacement;
        const auto [least, largest] = std::ranges::minmax(profile.y);
        design.motion.Lift = largest - least;
        if (choice.normalize)
            for (Single& y : profile.y)
                y = y - least;
        if (choice.prime)
            design.cam.Prime_Rad = *choice.prime;
        taken = true;
    });
    if (taken && !name.empty())
        Show_Message("File " + name + "\n\n   of Cam Profile data successfully read.", Buttons::OK,
                     Symbol::information);
    if (!taken)
        profile = {};
    return taken;
}

namespace {

/// Data shifted beyond the start of the cycle begin within it: the fit serves angles below its first a turn on.
void Begin_within_the_Turn(std::vector<Single>& x)
{
    const double turns = std::floor((x.front() + 1E-6) / PI2) * PI2;
    for (Single& angle : x)
        angle = angle - turns;
}

/// The raw displacement at the points of the grid, straight between the data.
void Fill_Raw(const Design_State& design, Profile& profile)
{
    const std::vector<Single>& x = profile.x;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        double t = i * design.motion.Deltatheta * Rad_per_Deg;
        if (t < x.front())
            t += PI2;
        const auto after =
            std::lower_bound(x.begin(), x.end(), t, [](const Single& a, double b) { return double{a} < b; });
        const std::size_t j = std::clamp<std::size_t>(static_cast<std::size_t>(after - x.begin()), 1, x.size() - 1);
        const double share = std::clamp((t - x[j - 1]) / (x[j] - x[j - 1]), 0.0, 1.0);
        profile.result(0, i) = profile.y[j - 1] + share * (profile.y[j] - profile.y[j - 1]);
    }
}

}  // namespace

bool Fit_Profile(Design_State& design, const Import_Choice& choice, Profile& profile)
{
    profile.fitted = false;
    if (profile.x.empty()) {
        Exclaim("Import the data first.");
        return false;
    }
    bool fitted = false;
    Trap("Fit_Functions", [&] {
        Begin_within_the_Turn(profile.x);
        switch (choice.method) {
        case Fit_Method::spline:
            fitted = Periodic_Spline_Fit(design, profile.x, profile.y, profile.result);
            break;
        case Fit_Method::fourier:
            fitted = Fourier_Fit(design, profile.x, profile.y, profile.result, choice.harmonics);
            break;
        case Fit_Method::lanczos:
            fitted = Lanczos_Fit(design, profile.x, profile.y, profile.result);
            break;
        case Fit_Method::smooth:
            fitted = Smoothing_Fit(design, profile.x, profile.y, choice.bound, profile.result, profile.move);
            break;
        }
        if (fitted)
            Fill_Raw(design, profile);
    });
    if (!fitted)
        Show_Message("Something is wrong with the solution - cannot continue", Buttons::OK, Symbol::information);
    profile.fitted = fitted;
    return fitted;
}

namespace {

/// The fit between its points, by their values and slopes.
double Fitted_at(const Design_State& design, const Fit_Result& result, double degrees)
{
    const double h = design.motion.Deltatheta;
    const int points = design.motion.Max_Data_Points_used;
    const double place = std::clamp(FN_Modulo(degrees, 360.0) / h, 0.0, double{static_cast<double>(points)});
    const int i = std::min(static_cast<int>(place), points - 1);
    const double u = place - i;
    const double s0 = result(1, i);
    const double s1 = result(1, i + 1);
    const double m0 = result(2, i) * h;
    const double m1 = result(2, i + 1) * h;
    return s0 + u * (m0 + u * (3 * (s1 - s0) - 2 * m0 - m1 + u * (2 * (s0 - s1) + m0 + m1)));
}

/// Standard deviation of the displacements from their fourth differences: white noise of deviation 1 has one of
/// sqrt(70) in them, a smooth motion next to nothing.
double Noise_of(const std::vector<Single>& y)
{
    std::vector<double> d(y.begin(), y.end());
    for (int order = 0; order < 4 && d.size() > 1; ++order) {
        for (std::size_t i = 0; i + 1 < d.size(); ++i)
            d[i] = d[i + 1] - d[i];
        d.pop_back();
    }
    // The median of the sizes: the few jumps of a motion's own do not count.
    if (y.size() < 8)
        return 0.0;
    for (double& value : d)
        value = std::abs(value);
    const auto middle = d.begin() + static_cast<std::ptrdiff_t>(d.size() / 2);
    std::ranges::nth_element(d, middle);
    constexpr double median_of_normal = 0.6745;
    return *middle / median_of_normal / std::sqrt(70.0);
}

/// Of the motion under the noise, per degree squared: by differences over ten degrees, which feel noise a hundredth as
/// much as those over one.
double Range_of_Acceleration(const Design_State& design, std::span<const Single> S)
{
    constexpr double over = 10.0;  // degrees
    const auto m = static_cast<std::size_t>(std::lround(over / design.motion.Deltatheta));
    const std::size_t N = S.size() - 1;
    double least = 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < N; ++i) {
        const double a = (S[(i + m) % N] - 2 * S[i] + S[(i + N - m) % N]) / (over * over);
        least = std::min(least, a);
        largest = std::max(largest, a);
    }
    return largest - least;
}

}  // namespace

Fit_Residuals Residuals_of(const Design_State& design, const Profile& profile)
{
    Fit_Residuals residuals;
    double sum = 0.0;
    for (std::size_t i = 0; i < profile.x.size(); ++i) {
        const double degrees = profile.x[i] * Deg_per_Rad;
        const double residual = std::abs(Fitted_at(design, profile.result, degrees) - profile.y[i]);
        sum += residual * residual;
        if (residual > residuals.largest) {
            residuals.largest = residual;
            residuals.angle = FN_Modulo(degrees, 360.0);
        }
    }
    residuals.rms = std::sqrt(sum / static_cast<double>(profile.x.size()));
    residuals.noise = Noise_of(profile.y);
    // A spline through white noise at even steps h has second derivatives of deviation 6 / h^2 of it, nearly.
    const double step =
        (profile.x.back() - profile.x.front()) * Deg_per_Rad / static_cast<double>(profile.x.size() - 1);
    const double range = Range_of_Acceleration(design, profile.result.Points(1));
    if (range > 0.0)
        residuals.noise_share = 6.0 * residuals.noise / (step * step) / range;
    return residuals;
}

std::optional<int> Harmonics_for_Noise(const Profile& profile)
{
    const std::size_t points = profile.x.size();
    // A closed cycle has its first point twice.
    const bool closed = points > 1 && profile.y.front() == profile.y.back();
    const std::size_t N = closed ? points - 1 : points;
    const double noise = Noise_of(profile.y);
    const double smallest = 1E-6 * (std::ranges::max(profile.y) - std::ranges::min(profile.y));
    if (N < 8 || !(noise > smallest) || !Even_Steps(profile.x))
        return {};
    const Fourier_Series series = Fourier_Coeffs(std::span(profile.x).first(N), std::span(profile.y).first(N));
    const double count = static_cast<double>(N);
    // From the top down: the mean square that the harmonics left out have, against that of white noise in as many.
    constexpr double margin = 1.1;
    double left_out = 0.0;
    for (std::size_t k = series.a.size() - 1; k > 0; --k) {
        const double share = 2 * k == N ? 1.0 : 0.5;
        left_out += share * (series.a[k] * series.a[k] + series.b[k] * series.b[k]);
        const double of_noise = noise * noise * (count - 2.0 * static_cast<double>(k) + 1.0) / count;
        if (left_out > margin * margin * of_noise && left_out - of_noise > 0.02 * noise * noise)
            return static_cast<int>(k);
    }
    return 1;
}

void Store_Functions(Design_State& design, const Import_Choice& choice, const Profile& profile)
{
    Motion_Group& m = design.motion;
    Table<Single>& data = design.results.CalcData;
    constexpr double d = Deg_per_Rad;
    for (int i = 0; i <= m.Max_Data_Points_used; ++i) {
        data(var::Angle, i) = i * m.Deltatheta;
        data(var::S, i) = profile.result(choice.raw ? 0 : 1, i);
        data(var::V, i) = m.Shaft_speed * profile.result(2, i) * d;
        data(var::A, i) = m.Shaft_Speed_Sq * profile.result(3, i) * d * d;
        data(var::J, i) = m.Shaft_Speed_Cu * profile.result(4, i) * d * d * d;
        data(var::Ping, i) = 0.0;
    }
    if (choice.prime)
        design.cam.Prime_Rad = *choice.prime;
    MaxMin1(data.Points(var::S), 0, m.Max_Data_Points_used, m.Max_Pos_Disp, m.Max_Neg_Disp);
    m.MaxLift = m.Max_Pos_Disp - m.Max_Neg_Disp;
    Update_Liftmax(design);
}

}  // namespace lobemax
