// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/plot_windows.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "core/text.h"
#include "paint/chart.h"
#include "screens/desk.h"

namespace lobemax::screens {

namespace {

constexpr int windows = 4;
constexpr int columns = 2;
constexpr std::array figures{std::pair{"lbl_Min", "Min"}, std::pair{"lbl_Max", "Max"}, std::pair{"lbl_Peak", "P to P"}};

}  // namespace

QLayout* Plot_Windows::Make()
{
    auto* const grid = new QGridLayout;
    for (int k = 0; k < windows; ++k) {
        charts_.append(new paint::Chart(design, Element("pct_Plot", k)));
        auto* const line = new QHBoxLayout;
        for (const auto& [name, caption] : figures) {
            line->addWidget(new QLabel(QString::fromUtf8(caption)));
            line->addWidget(Label(Element(name, k)));
            line->addSpacing(8);
        }
        line->addStretch();
        auto* const window = new QVBoxLayout;
        window->addWidget(charts_.back(), 1);
        window->addLayout(line);
        grid->addLayout(window, k / columns, k % columns);
    }
    return grid;
}

void Plot_Windows::Clear(const Screen& screen) const
{
    for (int k = 0; k < Count(); ++k) {
        At(k).Clear();
        Show_Figures(screen, k, {}, {}, {});
    }
}

void Plot_Windows::Show_Figures(const Screen& screen, int window, const std::string& least, const std::string& largest,
                                const std::string& peak_to_peak) const
{
    screen.Control<QLabel>(Element("lbl_Min", window)).setText(To_Qt(Trim(least)));
    screen.Control<QLabel>(Element("lbl_Max", window)).setText(To_Qt(Trim(largest)));
    screen.Control<QLabel>(Element("lbl_Peak", window)).setText(To_Qt(Trim(peak_to_peak)));
}

void Plot_Windows::Set_Stale(const Screen& screen, bool stale) const
{
    for (int k = 0; k < Count(); ++k) {
        At(k).Set_Stale(stale);
        for (const auto& [name, caption] : figures)
            screen.Control<QLabel>(Element(name, k)).setEnabled(!stale);
    }
}

}  // namespace lobemax::screens
