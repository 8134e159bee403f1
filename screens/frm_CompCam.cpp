// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_CompCam.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "core/messages.h"
#include "core/text.h"
#include "files/compensation_output.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/long_run.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Compcam(), name);
}

QTableWidget* Make_List(const char* name)
{
    const Form_Control& words = Words_of(name);
    auto* const list = new QTableWidget;
    list->setObjectName(To_Qt(words.name));
    list->setToolTip(To_Qt(words.tip));
    list->setAccessibleName(To_Qt(words.tip));
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTabKeyNavigation(false);
    list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
    return list;
}

/// A list for the printer: names of rows stand before them.
paint::Printed_List Printed(const char* name, const Compcam_List& content)
{
    paint::Printed_List list{To_Qt(Words_of(name).tip), {}, {}};
    const bool named = !content.names.empty();
    if (named)
        list.heads.append(QString());
    for (const std::string& head : content.heads)
        list.heads.append(To_Qt(head));
    for (std::size_t row = 0; row < content.rows.size(); ++row) {
        QStringList& cells = list.rows.emplace_back();
        if (named)
            cells.append(To_Qt(content.names[row]));
        for (const std::string& cell : content.rows[row])
            cells.append(To_Qt(cell));
    }
    return list;
}

void Fill_List(QTableWidget& list, const Compcam_List& content)
{
    list.clear();
    list.setColumnCount(static_cast<int>(content.heads.size()));
    list.setRowCount(static_cast<int>(content.rows.size()));
    for (int column = 0; column < list.columnCount(); ++column)
        list.setHorizontalHeaderItem(column,
                                     new QTableWidgetItem(To_Qt(content.heads[static_cast<std::size_t>(column)])));
    for (int row = 0; row < list.rowCount(); ++row) {
        const auto& cells = content.rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < list.columnCount(); ++column) {
            auto* const cell = new QTableWidgetItem(To_Qt(cells[static_cast<std::size_t>(column)]));
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            list.setItem(row, column, cell);
        }
        if (!content.names.empty())
            list.setVerticalHeaderItem(row, new QTableWidgetItem(To_Qt(content.names[static_cast<std::size_t>(row)])));
    }
    list.verticalHeader()->setVisible(!content.names.empty());
    list.resizeColumnsToContents();
}

}  // namespace

frm_CompCam::frm_CompCam(QWidget* parent)
    : Screen(QStringLiteral("frm_CompCam"), To_Qt(Words_of("frm_CompCam").caption), parent),
      form_(Opening_Compcam_Form(design))
{
    auto* const row = new QHBoxLayout;
    row->addLayout(Make_Inputs());
    row->addWidget(Make_Results(), 1);
    Body().addLayout(row);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    auto* const bar = new QMenuBar;
    layout()->setMenuBar(bar);
    auto* const help = bar->addMenu(QStringLiteral("&Help"));
    QAction* const instructions = help->addAction(To_Qt(Words_of("mnu_Instructions").caption), this, [] {
        Show_Message({.text = Compcam_Instructions(),
                      .symbol = Symbol::information,
                      .title = std::string(Compcam_Instructions_Title)});
    });
    instructions->setObjectName(QStringLiteral("mnu_Instructions"));
    Offer_Undo(bar);
    Open_at({1180, 720});
    Fill();
    Refresh();
}

QLayout* frm_CompCam::Make_Inputs()
{
    auto* const column = new QVBoxLayout;
    auto* const entries = new QGridLayout;
    for (const auto& row : Fields_of_Compcam()) {
        Entry* const entry = Make_Entry(row);
        entry->accepted = [this, row](const std::string& text) { Enter(row, text); };
        Add_Line(*entries, row, entry);
    }
    column->addLayout(entries);
    auto* const figures = new QGridLayout;
    for (const auto& row : Read_Outs_of_Compcam())
        Add_Line(*figures, row, Label(To_Qt(row.name), {}, To_Qt(row.tip)));
    column->addLayout(figures);
    const Form_Control& words = Words_of("lbl_Notes");
    QLabel* const notes = Label(To_Qt(words.name), {}, To_Qt(words.tip));
    notes->setWordWrap(true);
    column->addWidget(notes);
    auto* const progress = new QProgressBar;
    progress->setObjectName(QStringLiteral("pgs_step"));
    progress->setToolTip(To_Qt(Words_of("pgs_step").tip));
    progress->setRange(0, 1000);
    column->addWidget(progress);
    column->addWidget(Label(QStringLiteral("Lbl_Step"), {}, To_Qt(Words_of("Lbl_Step").tip)));
    column->addWidget(Make_Button(Words_of("cmd_Stop"), [this] { stop_ = true; }));
    column->addStretch();
    return column;
}

QWidget* frm_CompCam::Make_Results()
{
    auto* const tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("tab_Results"));
    tabs->tabBar()->setFocusPolicy(Qt::NoFocus);  // Alt+T and Alt+D turn the leaves
    auto* const plots = new QWidget;
    auto* const grid = new QGridLayout(plots);
    for (int k = 0; k < 4; ++k) {
        charts_.append(new paint::Chart(design, Element("grf_Plot", k)));
        grid->addWidget(charts_.back(), k / 2, k % 2);
    }
    tabs->addTab(plots, QStringLiteral("Plo&ts"));
    auto* const lists = new QWidget;
    auto* const column = new QVBoxLayout(lists);
    column->addWidget(Make_List("ListView1"), 1);
    for (const char* const name : {"ListView2", "ListView3"}) {
        constexpr int lines = 4;  // heads, two rows, and a bar where they are wider than the screen
        QTableWidget* const list = Make_List(name);
        list->setFixedHeight(lines * list->verticalHeader()->defaultSectionSize() + list->fontMetrics().height());
        column->addWidget(list);
    }
    tabs->addTab(lists, QStringLiteral("&Data"));
    return tabs;
}

QLayout* frm_CompCam::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Copy_Button(To_Qt(Words_of("cmd_Copy").caption)));
    add("cmd_Print", [this] { paint::Print_Form(*this, Printed_Lists()); });
    add("cmd_Outputfile", [this] {
        if (form_.result)
            Output_Compensation(design, *form_.result);
    });
    row->addStretch();
    add("cmd_Reset", [this] {
        Reset_Compcam(design, form_);
        Fill();
        Clear_Results();
        Refresh();
    });
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Replot", [this] { Draw(); });
    add("cmd_Done", [this] {
        if (Compcam_Done(design, form_))
            accept();
        else
            Refresh();
    });
    return row;
}

std::vector<paint::Printed_List> frm_CompCam::Printed_Lists() const
{
    if (!form_.result)
        return {};
    const Compensation& result = *form_.result;
    return {Printed("ListView2", Motion_Extremes_of_Compcam(design, result)),
            Printed("ListView3", Torque_Extremes_of_Compcam(design, result)),
            Printed("ListView1", Points_of_Compcam(design, result))};
}

void frm_CompCam::Follow_Design()
{
    form_ = Opening_Compcam_Form(design);
    Fill();
    Clear_Results();
    Refresh();
}

void frm_CompCam::Fill()
{
    const Filling filling(*this);
    Show_Texts(*this, Fields_of_Compcam(), form_);
}

void frm_CompCam::Refresh()
{
    Show_Units(*this, Fields_of_Compcam());
    Show_Units(*this, Read_Outs_of_Compcam());
    const bool result = form_.result.has_value();
    for (const char* const name : {"cmd_Done", "cmd_Outputfile", "cmd_Replot"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(result && !running_);
    for (const char* const name : {"cmd_Cancel", "cmd_Copy", "cmd_Print", "cmd_Reset", "cmd_Calc"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(!running_);
    for (const auto& row : Fields_of_Compcam())
        Control<Entry>(To_Qt(row.name)).setEnabled(!running_);
    auto& notes = Control<QLabel>(QStringLiteral("lbl_Notes"));
    notes.setText(result && !running_ ? To_Qt(Note_of_Compcam(design)) : QString());
    notes.setVisible(!notes.text().isEmpty());
    Control<QPushButton>(QStringLiteral("cmd_Stop")).setVisible(running_);
    Control<QProgressBar>(QStringLiteral("pgs_step")).setVisible(running_);
    Control<QLabel>(QStringLiteral("Lbl_Step")).setVisible(running_);
    status_->Refresh();
}

void frm_CompCam::Enter(const Form_Field<Compcam_Form>& row, const std::string& text)
{
    const Form_Entry entry = Enter_Text(*this, Fields_of_Compcam(), row, form_, text);
    if (entry.accepted)
        Clear_Results();
    Refresh();
}

void frm_CompCam::Calculate()
{
    if (running_)
        return;
    Clear_Results();
    stop_ = false;
    {
        const Long_Run run(*this, running_, [this] { Refresh(); });
        Integrate();
    }
    Show_Results();
}

void frm_CompCam::Integrate()
{
    auto& bar = Control<QProgressBar>(QStringLiteral("pgs_step"));
    form_.run.progress = [this, &bar](const Comp_Progress& progress) {
        bar.setValue(static_cast<int>(std::lround(progress.share * bar.maximum())));
        Control<QLabel>(QStringLiteral("Lbl_Step")).setText(To_Qt(Step_Text(progress)));
        Control<QLabel>(QStringLiteral("lbl_Kount")).setText(QString::number(progress.steps));
        QApplication::processEvents();
        return stop_;
    };
    Calc_Compcam(design, form_);
    form_.run.progress = nullptr;
}

void frm_CompCam::Clear_Results()
{
    for (paint::Chart* const chart : charts_)
        chart->Clear();
    for (const char* const name : {"ListView1", "ListView2", "ListView3"})
        Fill_List(Control<QTableWidget>(QString::fromUtf8(name)), {});
    Show_Read_Outs(*this, Read_Outs_of_Compcam(), Compcam_Texts{});
}

void frm_CompCam::Show_Results()
{
    if (!form_.result) {
        Show_Read_Outs(*this, Read_Outs_of_Compcam(), Compcam_Texts{});
        return;
    }
    Show_Read_Outs(*this, Read_Outs_of_Compcam(), Texts_of_Compcam(design, *form_.result));
    Fill_List(Control<QTableWidget>(QStringLiteral("ListView1")), Points_of_Compcam(design, *form_.result));
    Fill_List(Control<QTableWidget>(QStringLiteral("ListView2")), Motion_Extremes_of_Compcam(design, *form_.result));
    Fill_List(Control<QTableWidget>(QStringLiteral("ListView3")), Torque_Extremes_of_Compcam(design, *form_.result));
    Draw();
}

void frm_CompCam::Draw()
{
    if (!form_.result)
        return;
    qsizetype k = 0;
    for (const Compcam_Plot& plot : Plots_of_Compcam(design, *form_.result)) {
        std::vector<paint::Curve> curves;
        for (const Compcam_Curve& values : plot.curves) {
            paint::Curve curve;
            curve.name = To_Qt(values.name);
            if (plot.curves.size() == 1)  // the legend of several is narrow: their unit stands at the axis
                curve.unit = To_Qt(plot.unit);
            for (std::size_t i = 0; i < values.values.size(); ++i) {
                curve.x.push_back(static_cast<double>(i) * design.motion.Deltatheta);
                curve.y.push_back(values.values[i]);
            }
            curves.push_back(std::move(curve));
        }
        paint::Chart& chart = *charts_[k++];
        chart.Set_Legend(curves.size() > 1);
        chart.Set_Title(To_Qt(plot.title));
        chart.Set_Axis_Titles(QStringLiteral("Cam angle (deg)"), To_Qt(plot.unit));
        chart.Show(std::move(curves));
    }
}

void frm_CompCam::Close_Box()
{
    if (running_) {
        stop_ = true;
        return;
    }
    Leave_Entry();
    reject();
}

}  // namespace lobemax::screens
