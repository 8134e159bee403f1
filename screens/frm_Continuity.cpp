// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Continuity.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/messages.h"
#include "core/text.h"
#include "motion/continuity.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "present/report.h"
#include "screens/desk.h"

namespace lobemax::screens {

frm_Continuity::frm_Continuity(QWidget* parent)
    : Screen(QStringLiteral("frm_Continuity"), QStringLiteral("Continuity of the cam program"), parent)
{
    Motion_Group& m = design.motion;
    ContinuityCheck(design, m.Firstlast, m.Continuous, m.Max_Jump);
    const Report_Lines report = Continuity_Form(design);
    QLabel* const header = Label(QStringLiteral("lbl_Header"), To_Qt(report.front()));
    QFont bold = header->font();
    bold.setWeight(QFont::DemiBold);
    header->setFont(bold);
    QLabel* const explanation =
        Label(QStringLiteral("lbl_Explanation"), To_Qt(Trim(Joined({report.begin() + 1, report.end()}))));
    explanation->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* const plots = new QWidget;
    plots->setObjectName(QStringLiteral("pct_Continuity"));
    plots->setToolTip(QStringLiteral("If blank, click here to replot"));
    auto* const grid = new QGridLayout(plots);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < 4; ++k) {
        auto* const chart = new paint::Chart(design, Element("grf_Continuity", k));
        chart->clicked = [this](double, bool) { Draw(); };
        grid->addWidget(chart, k / 2, k % 2);
        charts_.append(chart);
    }
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(
        QStringLiteral("cmd_Back"), QStringLiteral("< &Back"), [this] { reject(); },
        QStringLiteral("Return to the segment table")));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Redraw"), QStringLiteral("&Redraw"), [this] { Draw(); }));
    add(Copy_Button());
    add(Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print"), [this] { paint::Print_Form(*this); }));
    buttons->addStretch();
    QPushButton* const done = Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { Done(); });
    add(done);

    Body().addWidget(header);
    Body().addWidget(explanation);
    Body().addWidget(plots, 1);
    Foot().addLayout(buttons);
    done->setFocus();
    Open_at({820, 600});
    Draw();
}

void frm_Continuity::Draw()
{
    const auto& results = design.results.CalcData;
    const Motion_Group& m = design.motion;
    std::vector<double> joints;
    for (int i = 2; i <= m.No_of_segments; ++i)
        joints.push_back(m.Shift(i));
    for (int k = 0; k < charts_.size(); ++k) {
        const int v = var::S + k;
        const QString name = To_Qt(Trim(design.plot.Var_Name(v)));
        const QString unit = To_Qt(design.plot.Var_Unit(v));
        charts_[k]->Set_Axis_Titles({}, name + QStringLiteral("  ") + unit);
        charts_[k]->Show(
            {paint::Row_Curve(name, unit, results.Points(var::Angle), results.Points(v), 0, m.Max_Data_Points_used)});
        charts_[k]->Set_Marks(joints);
    }
}

void frm_Continuity::Done()
{
    if (Continuity_Report(design))
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
