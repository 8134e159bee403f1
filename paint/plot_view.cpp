// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/plot_view.h"

#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

#include "core/text.h"
#include "core/traps.h"
#include "paint/painter_surface.h"
#include "present/plot_engine.h"

namespace lobemax::paint {

namespace {

/// A drawing kept as its strokes, to be painted at any time and size without looking at the design again.
class Kept_Drawing : public Surface {
public:
    void Scale(double left, double top, double right, double bottom) override
    {
        Keep([=](Surface& s) { s.Scale(left, top, right, bottom); });
    }
    void Window(double left, double top, double right, double bottom) override
    {
        Keep([=](Surface& s) { s.Window(left, top, right, bottom); });
    }
    void Clear() override { strokes_.clear(); }
    void PSet(double x, double y, Ink ink) override
    {
        Keep([=](Surface& s) { s.PSet(x, y, ink); });
    }
    void Line(double x1, double y1, double x2, double y2, Ink ink) override
    {
        Keep([=](Surface& s) { s.Line(x1, y1, x2, y2, ink); });
    }
    void Line_to(double x, double y, Ink ink) override
    {
        Keep([=](Surface& s) { s.Line_to(x, y, ink); });
    }
    void Circle(double x, double y, double radius, Ink ink) override
    {
        Keep([=](Surface& s) { s.Circle(x, y, radius, ink); });
    }
    void Outline(std::span<const World_Point> points, Ink ink) override
    {
        Keep([kept = std::vector(points.begin(), points.end()), ink](Surface& s) { s.Outline(kept, ink); });
    }

    void Draw(Surface& surface) const
    {
        for (const auto& stroke : strokes_)
            stroke(surface);
    }

private:
    void Keep(std::function<void(Surface&)> stroke) { strokes_.push_back(std::move(stroke)); }
    std::vector<std::function<void(Surface&)>> strokes_;
};

QString To_Qt(const std::string& text)
{
    return QString::fromStdString(Trim(text));
}

}  // namespace

Plot_View::Plot_View(int window, int windows, QWidget* parent)
    : QWidget(parent),
      window_(window),
      windows_(windows),
      surface_(new Drawing_View(QStringLiteral("pct_Plot(%1)").arg(window))),
      left_title_(Panel("pnl_LeftTitle")),
      units_(Panel("pnl_Units")),
      ymax_(Panel("pnl_Ymax")),
      ymin_(Panel("pnl_Ymin")),
      min_(Panel("lbl_Min")),
      max_(Panel("lbl_Max")),
      peak_(Panel("lbl_Peak"))
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(ymax_, 0, 0, Qt::AlignRight | Qt::AlignTop);
    grid->addWidget(left_title_, 1, 0, Qt::AlignRight);
    grid->addWidget(units_, 2, 0, Qt::AlignRight);
    grid->addWidget(ymin_, 4, 0, Qt::AlignRight | Qt::AlignBottom);
    grid->addWidget(surface_, 0, 1, 5, 1);
    int row = 0;
    for (const auto& [caption, figure] : {std::pair{"Max", max_}, std::pair{"Min", min_}, std::pair{"P to P", peak_}}) {
        grid->addWidget(new QLabel(QString::fromUtf8(caption)), row, 2);
        grid->addWidget(figure, row, 3, Qt::AlignRight);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
}

QLabel* Plot_View::Panel(const char* name)
{
    auto* const label = new QLabel;
    label->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(window_));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

bool Plot_View::Show(int variable, int first, int last, bool vertical_lines)
{
    const bool painted = Trap("Plot_Dynamics", [&] {
        const auto drawing = std::make_shared<Kept_Drawing>();
        const Plot_Figures figures = Plot_Dynamics(*drawing, windows_, variable, first, last, vertical_lines);
        const int decimals = Plot_Decimals(std::max(figures.largest, std::abs(figures.smallest)));
        left_title_->setText(To_Qt(figures.left_title));
        units_->setText(To_Qt(figures.units));
        ymax_->setText(To_Qt(figures.ymax));
        ymin_->setText(To_Qt(figures.ymin));
        max_->setText(To_Qt(FNRoundStr(figures.largest, decimals)));
        min_->setText(To_Qt(FNRoundStr(figures.smallest, decimals)));
        peak_->setText(To_Qt(FNRoundStr(figures.peak, decimals)));
        surface_->Show([drawing](Surface& surface) { drawing->Draw(surface); });
    });
    if (!painted)
        Clear();
    return painted;
}

void Plot_View::Clear()
{
    for (QLabel* const label : {left_title_, units_, ymax_, ymin_, min_, max_, peak_})
        label->clear();
    surface_->Show({});
}

}  // namespace lobemax::paint
