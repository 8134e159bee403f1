// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/link_plot_charts.h"

#include <memory>

#include "core/design_state.h"
#include "paint/plot_charts.h"
#include "present/plot_selection.h"

namespace lobemax::paint {

namespace {

QString To_Qt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString Axis_Title(const Curve& curve)
{
    return curve.unit.isEmpty() ? curve.name : curve.name + QStringLiteral("  ") + curve.unit;
}

void Fill_Chart(const Design_State& design, Chart& chart, const std::vector<Link_Function>& functions,
                std::optional<Curve_Style> look)
{
    std::vector<Curve> curves;
    for (const Link_Function& function : functions) {
        curves.push_back(Link_Curve(design, function));
        curves.back().style = look.value_or(Curve_Style::line);
        if (!design.plot.Plot_Color)
            Take_Colour_Away(curves.back(), curves.size() - 1);
    }
    const bool alone = curves.size() == 1;
    // Two functions of different units have an axis each.
    const bool two_axes = curves.size() == 2 && curves[0].unit != curves[1].unit;
    if (two_axes)
        curves[1].right_axis = true;
    chart.Set_Axis_Titles(To_Qt(Link_Plot_Axis), alone || two_axes ? Axis_Title(curves[0]) : QString(),
                          two_axes ? Axis_Title(curves[1]) : QString());
    chart.Set_Legend(!alone);
    chart.Set_Equal_Scales(false);
    Set_Angle_Ticks(design, chart);
    chart.Show(std::move(curves));
}

}  // namespace

Curve Link_Curve(const Design_State& design, const Link_Function& function)
{
    Curve curve;
    curve.name = To_Qt(Title_of(design, function));
    curve.unit = To_Qt(Unit_of(design, function));
    curve.y = Values_of(design, function);
    const auto angles = design.results.CalcData.Points(var::Angle);
    curve.x.assign(angles.begin(), angles.begin() + static_cast<std::ptrdiff_t>(curve.y.size()));
    return curve;
}

QString Fill_Link_Plot(const Design_State& design, const std::vector<Chart*>& charts,
                       const std::vector<Link_Function>& functions, std::optional<Curve_Style> look)
{
    const QString title = To_Qt(Link_Plot_Title(design));
    const bool alone = charts.size() == 1;
    for (std::size_t k = 0; k < charts.size(); ++k) {
        Chart& chart = *charts[k];
        chart.Set_Title(alone ? title : QString());
        if (alone && !functions.empty())
            Fill_Chart(design, chart, functions, look);
        else if (k < functions.size())
            Fill_Chart(design, chart, {functions[k]}, look);
        else
            chart.Clear();
    }
    return alone ? QString() : title;
}

bool Save_Link_Plot(const Design_State& design, int plot_style, const std::vector<Link_Function>& functions,
                    const QSize& size, const std::string& path, double scale, std::string* why)
{
    std::vector<std::unique_ptr<Chart>> owned;
    std::vector<Chart*> charts;
    for (int k = 0; k < Windows_of(plot_style); ++k) {
        owned.push_back(std::make_unique<Chart>(design, QStringLiteral("grf_Plot")));
        charts.push_back(owned.back().get());
    }
    const QString title = Fill_Link_Plot(design, charts, functions);
    return Save_Charts(charts, plot_style == style::four_windows ? 2 : 1, size, path, title, scale, why);
}

}  // namespace lobemax::paint
