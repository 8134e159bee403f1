// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Knots.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cmath>

#include "core/messages.h"
#include "core/points.h"
#include "core/text.h"
#include "edit/conditions.h"
#include "edit/door.h"
#include "motion/polynomial.h"
#include "motion/segment_store.h"
#include "motion/spline.h"
#include "paint/chart.h"
#include "screens/desk.h"
#include "screens/frm_Plots.h"

namespace lobemax::screens {

namespace {

/// The yellow of a knot's box and the magenta of its line, in tones for the ground in force.
QColor Knot_Yellow(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < 128 ? QColor(92, 84, 20) : QColor(255, 250, 170);
}

}  // namespace

frm_Knots::frm_Knots(int segment, QWidget* parent)
    : Screen(QStringLiteral("frm_Knots"), QStringLiteral("B-spline of segment %1").arg(segment), parent),
      segment_(segment)
{
    auto* const bar = new QMenuBar;
    QMenu* const help = bar->addMenu(QStringLiteral("&Help"));
    connect(help->addAction(QStringLiteral("Spline order")), &QAction::triggered, this,
            [this] { Show_Message(Order_Help(design, segment_), Buttons::OK, Symbol::information); });
    connect(help->addAction(QStringLiteral("Knot locations")), &QAction::triggered, this,
            [] { Show_Message(Knot_Help(), Buttons::OK, Symbol::information); });

    auto* const order = new Entry(QStringLiteral("txt_Order"), QStringLiteral("Specify Desired Order of B-Spline"));
    order->setMaximumWidth(60);
    order->accepted = [this](const std::string& text) {
        Set_Order(design, segment_, text);
        Changed();
    };
    auto* const figures = new QGroupBox(QStringLiteral("Spline"));
    auto* const figure_grid = new QGridLayout(figures);
    auto* const order_label = new QLabel(QStringLiteral("Spline &Order"));
    order_label->setBuddy(order);
    figure_grid->addWidget(order_label, 0, 0);
    figure_grid->addWidget(order, 0, 1);
    int line = 1;
    for (const auto& [name, caption] :
         {std::pair{"lbl_MinOrder", "Min"}, std::pair{"lbl_MaxOrder", "Max"}, std::pair{"lbl_Bounds", "# Bound. Cond."},
          std::pair{"lbl_Total_Knots", "Total # Knots"}, std::pair{"lbl_IntKnots", "# of Interior Kts"},
          std::pair{"lbl_Segment", "Cam Segment"}, std::pair{"lbl_deltatheta", "Delta Theta"}}) {
        figure_grid->addWidget(new QLabel(QString::fromUtf8(caption)), line, 0);
        figure_grid->addWidget(Label(QString::fromUtf8(name)), line++, 1);
    }
    auto* const knots = new QWidget;
    auto* const knot_grid = new QGridLayout(knots);
    for (int i = 1; i <= Max_Interior_Knots; ++i) {
        QRadioButton* const pick = Option(Element("opt_knot", i), {}, {}, QStringLiteral("Select Knot to be moved"));
        auto* const knot = new Entry(Element("txt_Knot", i), QStringLiteral("Local angle of this knot"));
        QPalette yellow = knot->palette();
        yellow.setColor(QPalette::Base, Knot_Yellow(palette()));
        knot->setPalette(yellow);
        knot->accepted = [this, i](const std::string& text) {
            Set_Knot(design, segment_, i, text);
            Changed();
        };
        knot_grid->addWidget(pick, i, 0);
        knot_grid->addWidget(knot, i, 1);
        knot_grid->addWidget(Label(Element("lbl_deg", i), QStringLiteral("deg")), i, 2);
    }
    knot_grid->setRowStretch(Max_Interior_Knots + 1, 1);
    QScrollArea* const scroll = Scrolled(knots);
    scroll->setMinimumWidth(170);
    auto* const knot_frame = new QGroupBox(QStringLiteral("Interior knots"));
    auto* const knot_column = new QVBoxLayout(knot_frame);
    knot_column->addWidget(Check(
        QStringLiteral("chk_Even"), QStringLiteral("Even Knots"),
        [this](bool even) {
            if (even)
                Put(design, "EvenKnots", At(segment_), 1);
            Changed();
        },
        QStringLiteral("Restore to Even Knots")));
    QCheckBox* const autocalc = Check(QStringLiteral("chk_Autocalc"), QStringLiteral("Autocalc On"), {},
                                      QStringLiteral("Calculate on any changes"));
    autocalc->setChecked(true);
    knot_column->addWidget(autocalc);
    knot_column->addWidget(scroll, 1);
    auto* const left = new QVBoxLayout;
    left->addWidget(figures);
    left->addWidget(knot_frame, 1);

    auto* const plots = new QGridLayout;
    for (int k = 0; k < 4; ++k) {
        auto* const chart = new paint::Chart(design, Element("pct_Plot", k));
        chart->clicked = [this](double x, bool shift) { Plot_Clicked(x, shift); };
        plots->addWidget(chart, k / 2, k % 2);
        charts_.append(chart);
    }
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(QStringLiteral("cmd_Back"), QStringLiteral("< &Back "), [this] { reject(); }));
    buttons->addStretch();
    add(Button(
        QStringLiteral("cmd_Show"), QStringLiteral("&Show"),
        [this] {
            Draw();
            for (paint::Chart* const chart : charts_)
                chart->Reset_View();
        },
        QStringLiteral("Show the curves and the knots whole again")));
    add(Button(
        QStringLiteral("cmd_Plot"), QStringLiteral("&Plot"), [this] { Run_Segment_Plot(segment_, this); },
        QStringLiteral("Plot this segment on a screen of its own")));
    add(Button(QStringLiteral("cmd_Calc"), QStringLiteral("&Calculate"), [this] { Calculate(); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); }));

    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addLayout(plots, 1);
    Body().addLayout(row);
    layout()->setMenuBar(bar);
    Offer_Undo(bar);
    Foot().addLayout(buttons);
    Open_at({940, 620});
    Fill();
    Calculate();
}

void frm_Knots::Follow_Design()
{
    Fill();
    Draw();
}

void frm_Knots::Fill()
{
    const Motion_Group& m = design.motion;
    const auto text = [this](const char* name, const std::string& value) {
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(value));
    };
    Control<Entry>(QStringLiteral("txt_Order")).Show_Text(std::to_string(m.Orders(segment_)));
    text("lbl_MinOrder", std::to_string(Min_Order(design, segment_)));
    text("lbl_MaxOrder", std::to_string(Max_Order(design, segment_)));
    text("lbl_Bounds", std::to_string(m.Total_No_of_BCs(segment_)));
    text("lbl_Total_Knots", std::to_string(m.Number_of_Knots(segment_)));
    text("lbl_IntKnots", std::to_string(m.Interior_Knots(segment_)));
    text("lbl_Segment", std::to_string(segment_));
    text("lbl_deltatheta", Shown(design, m.Deltatheta) + " deg");
    Control<QCheckBox>(QStringLiteral("chk_Even")).setChecked(m.EvenKnots(segment_));
    for (int i = 1; i <= Max_Interior_Knots; ++i) {
        const bool used = i <= m.Interior_Knots(segment_);
        auto& knot = Control<Entry>(Element("txt_Knot", i));
        knot.setVisible(used);
        Control<QRadioButton>(Element("opt_knot", i)).setVisible(used);
        Control<QLabel>(Element("lbl_deg", i)).setVisible(used);
        if (used)
            knot.Show_Text(Shown(design, m.Knots(m.Orders(segment_) + i, segment_)));
    }
    for (const char* const name : {"cmd_Done", "cmd_Plot"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(m.Splines_Calculated(segment_));
}

void frm_Knots::Changed()
{
    design.motion.Splines_Calculated(segment_) = false;
    Fill();
    if (Control<QCheckBox>(QStringLiteral("chk_Autocalc")).isChecked())
        Calculate();
    else
        Draw();
}

void frm_Knots::Calculate()
{
    Calc_Spline(design, segment_);
    Draw();
    Fill();
}

void frm_Knots::Draw()
{
    const Motion_Group& m = design.motion;
    const auto& results = design.results.CalcData;
    std::vector<double> lines;
    for (int i = 1; i <= m.Interior_Knots(segment_); ++i)
        lines.push_back(m.Shift(segment_) + m.Knots(m.Orders(segment_) + i, segment_));
    const int first = Point_at(design, m.Shift(segment_));
    const int last = Point_at(design, m.Gamma(segment_));
    for (int k = 0; k < charts_.size(); ++k) {
        const int v = var::S + k;
        charts_[k]->Set_Axis_Titles(
            {}, To_Qt(Trim(design.plot.Var_Name(v))) + QStringLiteral("  ") + To_Qt(design.plot.Var_Unit(v)));
        charts_[k]->Update({paint::Row_Curve(To_Qt(design.plot.Var_Name(v)), To_Qt(design.plot.Var_Unit(v)),
                                             results.Points(var::Angle), results.Points(v), first, last)});
        charts_[k]->Set_Stale(!m.Splines_Calculated(segment_));
        charts_[k]->Set_Marks(lines, QColor(200, 0, 200));
    }
}

int frm_Knots::Selected_Knot() const
{
    for (int i = 1; i <= design.motion.Interior_Knots(segment_); ++i)
        if (Control<QRadioButton>(Element("opt_knot", i)).isChecked())
            return i;
    return 0;
}

void frm_Knots::Plot_Clicked(double angle, bool shift)
{
    const Motion_Group& m = design.motion;
    const double local = angle - m.Shift(segment_);
    if (shift) {  // selects the nearest knot
        int nearest = 0;
        double distance = m.Beta_Deg(segment_);
        for (int i = 1; i <= m.Interior_Knots(segment_); ++i)
            if (const double d = std::abs(m.Knots(m.Orders(segment_) + i, segment_) - local); d < distance) {
                distance = d;
                nearest = i;
            }
        if (nearest > 0)
            Control<QRadioButton>(Element("opt_knot", nearest)).setChecked(true);
        return;
    }
    if (const int knot = Selected_Knot(); knot > 0) {
        Set_Knot(design, segment_, knot, Trim(FNRoundStr(design, local, 2)));
        Changed();
    }
}

}  // namespace lobemax::screens
