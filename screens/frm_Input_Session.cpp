// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Input_Session.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "files/example_designs.h"
#include "files/model_file.h"
#include "forms/home_commands.h"
#include "forms/workflow.h"
#include "motion/segments.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/frm_Bounds.h"
#include "screens/frm_Continuity.h"
#include "screens/frm_InputData.h"
#include "screens/frm_Poly.h"

namespace lobemax::screens {

namespace {

/// Plots S, V, A and J of one segment; the print button prints the same.
class Segment_Plot : public Screen {
public:
    Segment_Plot(int segment, QWidget* parent)
        : Screen(QStringLiteral("frm_Segment"), QStringLiteral("Segment %1").arg(segment), parent)
    {
        const Motion_Group& m = design.motion;
        const auto& results = design.results.CalcData;
        const int first = To_Integer(m.Shift(segment) / m.Deltatheta);
        const int last = To_Integer(m.Gamma(segment) / m.Deltatheta);
        auto* const grid = new QGridLayout;
        for (int k = 0; k < 4; ++k) {
            const int v = var::S + k;
            auto* const chart = new paint::Chart(design, Element("grf_Plot", k));
            const QString name = To_Qt(Trim(design.plot.Var_Name(v)));
            const QString unit = To_Qt(design.plot.Var_Unit(v));
            chart->Set_Axis_Titles({}, name + QStringLiteral("  ") + unit);
            chart->Show({paint::Row_Curve(name, unit, results.Points(var::Angle), results.Points(v), first, last)});
            grid->addWidget(chart, k / 2, k % 2);
        }
        auto* const buttons = new QHBoxLayout;
        buttons->addWidget(
            Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print"), [this] { paint::Print_Form(*this); }));
        buttons->addStretch();
        buttons->addWidget(Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); }));
        auto* const column = new QVBoxLayout(this);
        column->addLayout(grid, 1);
        column->addLayout(buttons);
        Open_at({760, 520});
    }
};

/// Conditions of a P or S row on their screen; after it the row is calculated from what is stored.
bool Ask_Conditions(int row, QWidget* parent)
{
    const int segment = row + 1;
    Update_Segment_Angles(design);
    design.motion.Seg = segment;
    frm_Bounds screen(segment, parent);
    if (Run_Modal(screen) != QDialog::Accepted)
        return false;
    return Calc_Segment(design, row);
}

Input_Services Services(QWidget* parent)
{
    Input_Services services;
    services.ask_boundaries = [parent](int row) { return Ask_Conditions(row, parent); };
    services.plot_segment = [parent](int segment) {
        Segment_Plot plot(segment, parent);
        Run_Modal(plot);
    };
    services.print_segment = [parent](int segment) {
        if (design.motion.Rise_Fall_Dwell(segment) == "P") {
            frm_Poly poly(segment, parent);
            Run_Modal(poly);
        }
        Segment_Plot plot(segment, parent);
        Run_Modal(plot);
    };
    services.build_example = [](const std::string& name) {
        return May_Build_Example(design) && May_Reset(design) && Open_Example(design, name);
    };
    services.change_units = [](int code) { Change_Units_from_Home(design, code); };
    return services;
}

}  // namespace

void Run_Input_Session(QWidget* parent)
{
    for (;;) {
        frm_InputData table(Services(parent), parent);
        if (Run_Modal(table) != QDialog::Accepted)
            return;
        frm_Continuity report(parent);
        if (Run_Modal(report) == QDialog::Accepted)
            return;
    }
}

}  // namespace lobemax::screens
