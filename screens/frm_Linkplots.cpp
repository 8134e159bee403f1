// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Linkplots.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "paint/chart.h"
#include "paint/link_plot_charts.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Linkplots(), From_Qt(name));
}

}  // namespace

frm_Linkplots::frm_Linkplots(QWidget* parent)
    : Screen(QStringLiteral("frm_Linkplots"), To_Qt(Words_of(QStringLiteral("frm_Linkplots")).caption), parent),
      picks_(Usual_Link_Picks(design))
{
    Body().addLayout(Make_Choices());
    Body().addLayout(plots_.Make(), 1);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Open_at({1000, 720});
    for (int k = 0; k < Link_Plots; ++k)
        Draw(k);
    status_->Refresh();
}

QLayout* frm_Linkplots::Make_Choices()
{
    auto* const row = new QHBoxLayout;
    QStringList texts;
    for (const std::string& text : Link_Function_Texts(design))
        texts.append(To_Qt(text));
    for (int k = 0; k < Link_Plots; ++k) {
        const Form_Control& words = Words_of(Element("cmb_Function", k));
        QComboBox* const list = Choice(
            To_Qt(words.name), texts,
            [this, k](int place) {
                picks_[static_cast<std::size_t>(k)] = place - 1;  // the first is "None"
                Draw(k);
            },
            To_Qt(words.tip));
        list->setCurrentIndex(picks_[static_cast<std::size_t>(k)] + 1);
        row->addWidget(Make_Caption(words, list));
        row->addWidget(list, 1);
    }
    return row;
}

QLayout* frm_Linkplots::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Cancel")), [this] { reject(); }));
    row->addStretch();
    row->addWidget(Copy_Button(To_Qt(Words_of(QStringLiteral("cmd_Copy")).caption)));
    row->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Print")), [this] { paint::Print_Form(*this); }));
    return row;
}

void frm_Linkplots::Draw(int window)
{
    paint::Chart& chart = plots_.At(window);
    const int pick = picks_[static_cast<std::size_t>(window)];
    if (pick == No_Link_Function) {
        chart.Clear();
        chart.Set_Title({});
        chart.Set_Axis_Titles(To_Qt(Link_Plot_Axis), {});
        plots_.Show_Figures(*this, window, {}, {}, {});
        return;
    }
    const Link_Function function = Link_Functions(design).at(static_cast<std::size_t>(pick));
    paint::Fill_Link_Plot(design, {&chart}, {function});
    chart.Set_Title(To_Qt(Title_of(design, function)));
    const Link_Plot_Figures figures = Figures_of_Link_Plot(design, function);
    plots_.Show_Figures(*this, window, figures.smallest, figures.largest, figures.peak_to_peak);
}

}  // namespace lobemax::screens
