// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/plot_charts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

#include "core/design_state.h"
#include "core/points.h"
#include "core/text.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"

namespace lobemax::paint {

namespace {

constexpr int most_functions = 4;

QString To_Qt(const std::string& text)
{
    return QString::fromStdString(text);
}

QString Name_of(const Design_State& design, int variable)
{
    return To_Qt(Trim(design.plot.Var_Name(variable)));
}

QString Unit_of(const Design_State& design, int variable)
{
    return To_Qt(Axis_Unit(design, variable >= var::First_Curve ? Radial_Coordinates(variable).first : variable));
}

struct Range {
    int first;
    int last;
};

/// A segment may begin before the cycle or end behind it: there are no points there.
Range Range_of_Plot(const Design_State& design)
{
    const int most = std::min<int>(design.motion.Max_Data_Points_used, design.results.CalcData.Last_Point());
    const int last = std::clamp<int>(Point_at(design, design.plot.Plot_Last), 0, most);
    return {std::clamp<int>(Point_at(design, design.plot.Plot_First), 0, last), last};
}

/// The picked functions of chart k of so many.
std::vector<int> Functions_of_Chart(const Design_State& design, int k, int charts)
{
    const Plot_Group& p = design.plot;
    std::vector<int> functions;
    for (int set = 1; set <= std::min<int>(p.Num_Sets, most_functions); ++set)
        if (charts == 1 || set == k + 1)
            functions.push_back(p.Plot_Vars(set));
    return functions;
}

Curve_Style Look_of(const std::vector<int>& functions)
{
    return !functions.empty() && std::ranges::all_of(functions, Is_Fourier) ? Curve_Style::sticks : Curve_Style::line;
}

void Set_Point_Ticks(Chart& chart, const Plot_Setup& setup, const Curve& curve, bool harmonics)
{
    Point_Ticks ticks;
    ticks.points = setup.NumPoints;
    ticks.tick_every = setup.TickEvery;
    ticks.label_every = setup.LabelEvery;
    if (harmonics) {  // the harmonics stand on whole numbers, the last one clear of the border
        ticks.margin = 0.5;
    } else {
        ticks.first = curve.x.front();
        ticks.per_point = (curve.x.back() - curve.x.front()) / std::max(setup.NumPoints - 1, 1);
    }
    chart.Set_Ticks(ticks);
}

/// @param look  none: that of the chart's own kind
void Fill_Chart(const Design_State& design, Chart& chart, int plot_style, const std::vector<int>& functions,
                const Plot_Setup& setup, std::optional<Curve_Style> look)
{
    const bool polar = plot_style == style::polar;
    std::vector<Curve> curves;
    for (const int variable : functions) {
        curves.push_back(Plotted_Curve(design, plot_style, variable));
        curves.back().style = look.value_or(Look_of(functions));
        if (!design.plot.Plot_Color)
            Take_Colour_Away(curves.back(), curves.size() - 1);
    }
    const bool alone = curves.size() == 1;
    // Two functions of different units have an axis each.
    const bool two_axes = curves.size() == 2 && curves[0].unit != curves[1].unit && !polar;
    if (two_axes)
        curves[1].right_axis = true;
    const auto title = [&](std::size_t k) {
        const QString name =
            functions[k] >= var::First_Curve ? curves[k].name : To_Qt(Left_Title(design, functions[k]));
        return name + QStringLiteral("  ") + curves[k].unit;
    };
    chart.Set_Axis_Titles(To_Qt(setup.bottom_title), alone || two_axes ? title(0) : QString(),
                          two_axes ? title(1) : QString());
    chart.Set_Legend(!alone);
    chart.Set_Equal_Scales(polar);
    if (polar)
        chart.Clear_Ticks();
    else
        Set_Point_Ticks(chart, setup, curves.front(), Is_Fourier(functions.front()));
    chart.Show(std::move(curves));
}

}  // namespace

void Take_Colour_Away(Curve& curve, std::size_t place)
{
    constexpr std::array patterns{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    constexpr int gray = 0x6E;  // seen on light and on dark ground
    curve.colour = QColor(gray, gray, gray);
    curve.pattern = patterns[place % patterns.size()];
}

void Set_Angle_Ticks(const Design_State& design, Chart& chart)
{
    const int last = design.motion.Max_Data_Points_used;
    const Plot_Setup setup = PlotSetup(design, style::single_window, 0, last, {});
    Point_Ticks ticks;
    ticks.per_point = design.motion.Deltatheta;
    ticks.points = setup.NumPoints;
    ticks.tick_every = setup.TickEvery;
    ticks.label_every = setup.LabelEvery;
    chart.Set_Ticks(ticks);
}

void Show_Cycle(const Design_State& design, Chart& chart, int row, bool with_bottom_title)
{
    const auto& results = design.results.CalcData;
    const QString name = Name_of(design, row);
    const QString unit = Unit_of(design, row);
    chart.Set_Axis_Titles(with_bottom_title ? QStringLiteral("Cam Angle (Deg)") : QString(),
                          name + QStringLiteral("  ") + unit);
    Set_Angle_Ticks(design, chart);
    chart.Show({Row_Curve(name, unit, results.Points(var::Angle), results.Points(row), 0,
                          design.motion.Max_Data_Points_used)});
}

void Put_Beside(Chart& chart, const QString& name, const std::vector<double>& values)
{
    std::vector<Curve> curves = chart.Curves();
    const bool there = std::erase_if(curves, [](const Curve& curve) { return curve.beside; }) > 0;
    if (!values.empty() && !curves.empty()) {
        Curve beside = curves.front();
        beside.name = name;
        beside.y = values;
        beside.y.resize(beside.x.size(), std::numeric_limits<double>::quiet_NaN());
        for (double& value : beside.y)
            if (!std::isfinite(value))
                value = std::numeric_limits<double>::quiet_NaN();  // a gap
        beside.style = Curve_Style::line;
        beside.pattern = Qt::DashLine;
        beside.beside = true;
        curves.insert(curves.begin() + 1, std::move(beside));
    } else if (!there) {
        return;
    }
    chart.Update(std::move(curves));
}

int Windows_of(int plot_style)
{
    return plot_style == style::two_windows ? 2 : plot_style == style::four_windows ? 4 : 1;
}

Curve Plotted_Curve(const Design_State& design, int plot_style, int variable)
{
    const auto& results = design.results.CalcData;
    Curve curve;
    curve.name = Name_of(design, variable);
    curve.unit = Unit_of(design, variable);
    const auto [first, last] = Range_of_Plot(design);
    if (variable >= var::First_Curve) {
        const Coordinate_Rows rows = Radial_Coordinates(variable);
        for (int i = first; i <= last; ++i) {
            curve.x.push_back(results(rows.first, i));
            curve.y.push_back(results(rows.second, i));
            curve.angle.push_back(results(var::Angle, i));
        }
        return curve;
    }
    if (Is_Fourier(variable)) {
        const bool there = Transform_in_Memory(design);
        for (int k = 1; k <= Plotted_Harmonics(design); ++k) {
            curve.x.push_back(k);
            curve.y.push_back(there ? double{results(variable, k)} : 0.0);
        }
        return curve;
    }
    if (plot_style != style::polar)
        return Row_Curve(curve.name, curve.unit, results.Points(var::Angle), results.Points(variable), first, last);
    curve.value_as_radius = true;
    for (int i = first; i <= last; ++i) {  // the value as a radius at its cam angle
        const double angle = results(var::Angle, i) * Rad_per_Deg;
        curve.angle.push_back(results(var::Angle, i));
        curve.x.push_back(results(variable, i) * std::cos(angle));
        curve.y.push_back(results(variable, i) * std::sin(angle));
    }
    return curve;
}

Curve_Style Usual_Look(const Design_State& design, int plot_style)
{
    const int charts = Windows_of(plot_style);
    int harmonic = 0;
    for (int k = 0; k < charts; ++k)
        harmonic += Look_of(Functions_of_Chart(design, k, charts)) == Curve_Style::sticks ? 1 : 0;
    if (harmonic == 0)
        return Curve_Style::line;
    return harmonic == charts ? Curve_Style::sticks : Curve_Style::sticks_and_line;
}

QString Fill_Plot(const Design_State& design, const std::vector<Chart*>& charts, int plot_style,
                  std::optional<Curve_Style> look)
{
    const Range range = Range_of_Plot(design);
    QStringList titles;
    for (int k = 0; k < static_cast<int>(charts.size()); ++k) {
        Chart& chart = *charts[static_cast<std::size_t>(k)];
        const std::vector<int> functions = Functions_of_Chart(design, k, static_cast<int>(charts.size()));
        if (functions.empty()) {
            chart.Clear();
            continue;
        }
        const Plot_Setup setup = PlotSetup(design, plot_style, range.first, range.last, functions);
        titles.append(To_Qt(setup.graph_title));
        chart.Set_Title(titles.back());
        Fill_Chart(design, chart, plot_style, functions, setup, look);
    }
    const bool shared = charts.size() > 1 && !titles.isEmpty() && titles.count(titles.front()) == titles.size();
    if (!shared)
        return {};
    for (Chart* const chart : charts)
        chart->Set_Title({});
    return titles.front();
}

bool Save_Plot(const Design_State& design, int plot_style, const QSize& size, const std::string& path, double scale,
               std::string* why)
{
    std::vector<std::unique_ptr<Chart>> owned;
    std::vector<Chart*> charts;
    for (int k = 0; k < Windows_of(plot_style); ++k) {
        owned.push_back(std::make_unique<Chart>(design, QStringLiteral("grf_Plot")));
        charts.push_back(owned.back().get());
    }
    const QString title = Fill_Plot(design, charts, plot_style);
    return Save_Charts(charts, plot_style == style::four_windows ? 2 : 1, size, path, title, scale, why);
}

}  // namespace lobemax::paint
