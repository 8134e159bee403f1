// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/true_curves.h"

#include <QHBoxLayout>
#include <utility>
#include <vector>

#include "core/variables.h"
#include "forms/findings_form.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "screens/check_mark.h"
#include "screens/desk.h"
#include "screens/screen.h"

namespace lobemax::screens {

Check_Mark* Add_Mark(QVBoxLayout& column, Finding_Place place, std::function<void()> pressed)
{
    auto* const mark = new Check_Mark(place, std::move(pressed));
    auto* const line = new QHBoxLayout;
    line->addWidget(mark);
    line->addStretch();
    column.addLayout(line);
    return mark;
}

void Show_True_Row(paint::Chart& chart, int row, bool there, bool wanted)
{
    std::vector<paint::Level> levels;
    if (there)
        for (const Limit_Level& level : Levels_of(design, Desk_Limits(), row))
            levels.push_back({level.value, To_Qt(level.words)});
    const QString name = row == var::Force || row == var::Dynamic_Force ? QStringLiteral("Contact force, true")
                         : chart.Curves().empty()                       ? QString()
                                                  : chart.Curves().front().name.trimmed() + QStringLiteral(", true");
    paint::Put_Beside(chart, name, there && wanted ? True_Values(design, Desk_Check(), row) : std::vector<double>{});
    chart.Set_Levels(std::move(levels));
}

}  // namespace lobemax::screens
