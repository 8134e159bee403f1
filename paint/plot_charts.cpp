// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/plot_charts.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/design_state.h"
#include "core/text.h"
#include "motion/fourier.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"

namespace lobemax::paint {

namespace {

constexpr int first_composite = 54;

QString To_Qt(const std::string& text)
{
    return QString::fromStdString(text);
}

QString Name_of(int variable)
{
    return To_Qt(Trim(design.plot.Var_Name(variable)));
}

QString Unit_of(int variable)
{
    return variable >= first_composite ? To_Qt(design.plot.Var_Unit(Rows_of_Composite(variable).x))
                                       : To_Qt(design.plot.Var_Unit(variable));
}

struct Range {
    int first;
    int last;
};

Range Range_of_Plot()
{
    const double step = design.motion.Deltatheta;
    const int last = To_Integer(design.plot.Plot_Last / step);
    return {To_Integer(design.plot.Plot_First / step), std::min<int>(last, design.motion.Max_Data_Points_used)};
}

}  // namespace

int Windows_of(int plot_style)
{
    return plot_style == style::two_windows ? 2 : plot_style == style::four_windows ? 4 : 1;
}

Curve Plotted_Curve(int plot_style, int variable)
{
    const auto& results = design.results.CalcData;
    Curve curve;
    curve.name = Name_of(variable);
    curve.unit = Unit_of(variable);
    const auto [first, last] = Range_of_Plot();
    if (variable >= first_composite) {
        const Coordinate_Rows rows = Rows_of_Composite(variable);
        for (int i = first; i <= last; ++i) {
            curve.x.push_back(results(rows.x, i));
            curve.y.push_back(results(rows.y, i));
        }
        return curve;
    }
    if (Is_Fourier(variable)) {
        curve.style = Curve_Style::sticks;
        for (int k = 1; k <= Shown_Harmonics(); ++k) {
            curve.x.push_back(k);
            curve.y.push_back(results(variable, k));
        }
        return curve;
    }
    if (plot_style != style::polar)
        return Row_Curve(curve.name, curve.unit, results.Points(var::Angle), results.Points(variable), first, last);
    for (int i = first; i <= last; ++i) {  // the value as a radius at its cam angle
        const double angle = results(var::Angle, i) * Rad_per_Deg;
        curve.x.push_back(results(variable, i) * std::cos(angle));
        curve.y.push_back(results(variable, i) * std::sin(angle));
    }
    return curve;
}

QString Fill_Plot(const std::vector<Chart*>& charts, int plot_style, bool sticks, Curve_Style look)
{
    const Plot_Group& p = design.plot;
    const Range range = Range_of_Plot();
    const bool fourier = p.Num_Sets > 0 && Is_Fourier(p.Plot_Vars(1));
    const Plot_Setup setup = PlotSetup(plot_style, range.first, range.last, fourier);
    const bool one_chart = charts.size() == 1;
    for (int k = 0; k < static_cast<int>(charts.size()); ++k) {
        Chart& chart = *charts[static_cast<std::size_t>(k)];
        const int first_set = one_chart ? 1 : k + 1;
        const int last_set = one_chart ? int{p.Num_Sets} : std::min(k + 1, int{p.Num_Sets});
        std::vector<Curve> curves;
        for (int set = first_set; set <= last_set; ++set)
            curves.push_back(Plotted_Curve(plot_style, p.Plot_Vars(set)));
        if (curves.empty())
            continue;
        const bool alone = curves.size() == 1;
        // Two functions of different units have an axis each.
        const bool two_axes = curves.size() == 2 && curves[0].unit != curves[1].unit && plot_style != style::polar;
        if (two_axes)
            curves[1].right_axis = true;
        const auto title = [](const Curve& curve) { return curve.name + QStringLiteral("  ") + curve.unit; };
        chart.Set_Axis_Titles(To_Qt(setup.bottom_title), alone || two_axes ? title(curves[0]) : QString(),
                              two_axes ? title(curves[1]) : QString());
        chart.Set_Legend(!alone);
        chart.Set_Equal_Scales(plot_style == style::polar);
        for (Curve& curve : curves)
            if (!fourier || sticks)
                curve.style = look;
        chart.Show(std::move(curves));
    }
    return To_Qt(setup.graph_title).trimmed();
}

bool Save_Plot(int plot_style, const QSize& size, const QString& path)
{
    std::vector<std::unique_ptr<Chart>> owned;
    std::vector<Chart*> charts;
    for (int k = 0; k < Windows_of(plot_style); ++k) {
        owned.push_back(std::make_unique<Chart>(QStringLiteral("grf_Plot")));
        charts.push_back(owned.back().get());
    }
    Fill_Plot(charts, plot_style, false, Curve_Style::line);
    return Save_Charts(charts, plot_style == style::four_windows ? 2 : 1, size, path);
}

}  // namespace lobemax::paint
