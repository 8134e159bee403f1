// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Import_data.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/text.h"
#include "edit/rungs.h"
#include "forms/workflow.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Arcs.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Import(), From_Qt(name));
}

const Form_Field<Import_Form>& Field_of(std::string_view name)
{
    return *std::ranges::find(Fields_of_Import(), name, &Form_Control::name);
}

QStringList Texts_of(const auto& list)
{
    QStringList texts;
    for (const auto& text : list)
        texts.append(To_Qt(text));
    return texts;
}

}  // namespace

frm_Import_data::frm_Import_data(QWidget* parent)
    : Screen(QStringLiteral("frm_Import_data"), To_Qt(Words_of(QStringLiteral("frm_Import_data")).caption), parent),
      form_(Opening_Import_Form(design))
{
    auto* const row = new QHBoxLayout;
    row->addLayout(Make_Inputs());
    row->addLayout(Make_Results(), 1);
    Body().addLayout(row);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Open_at({1180, 720});
    {
        const Filling filling(*this);
        Show_Texts(*this, Fields_of_Import(), form_);
    }
    Refresh();
}

QLayout* frm_Import_data::Make_Inputs()
{
    auto* const column = new QVBoxLayout;
    const auto frame = [column](const char* name, bool upright) {
        QGroupBox* const box = Make_Frame(Words_of(QString::fromUtf8(name)));
        box->setLayout(new QBoxLayout(upright ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight));
        column->addWidget(box);
        return box->layout();
    };
    const auto option = [this](const char* name, int k, std::function<void()> chosen) {
        return Make_Option(Words_of(Element(name, k)), [this, chosen = std::move(chosen)] { Change(chosen); });
    };
    const auto check = [this](const char* name, std::function<void(bool)> ticked) {
        return Make_Check(Words_of(QString::fromUtf8(name)),
                          [this, ticked = std::move(ticked)](bool on) { Change([&] { ticked(on); }); });
    };
    const auto add_entry = [this](QGridLayout& grid, std::string_view name) {
        const Form_Field<Import_Form>& row = Field_of(name);
        Entry* const entry = Make_Entry(row);
        entry->accepted = [this, row](const std::string& text) {
            Change([&] { Enter_Text(*this, Fields_of_Import(), row, form_, text); });
        };
        Add_Line(grid, row, entry);
    };

    auto* const head = new QGridLayout;
    const auto add_list = [&](const char* name, QComboBox* list) {
        Add_Line(*head, Words_of(QString::fromUtf8(name)), list);
    };
    add_list("cmb_Units", Make_List("cmb_Units", "txt_Units", Texts_of(Import_Units_Items()), Choose_Import_Units));
    add_list("cmb_Delta", Make_List("cmb_Delta", "txt_Delta", Texts_of(Step_Texts(design)), Choose_Import_Step));
    for (const char* const name : {"txt_Omega", "txt_Base", "txt_follower"})
        add_entry(*head, name);
    column->addLayout(head);

    QLayout* const motion = frame("fra_Folmotion", false);
    motion->addWidget(option("opt_Folmotion", 0, [this] { Choose_Import_Motion(design, form_, true); }));
    motion->addWidget(option("opt_Folmotion", 1, [this] { Choose_Import_Motion(design, form_, false); }));

    auto* const ways = new QGridLayout;
    ways->addWidget(option("opt_Coord", 0, [this] { Choose_Import_Coord(design, form_, Import_Coord::RT); }), 0, 0);
    ways->addWidget(option("opt_Coord", 1, [this] { Choose_Import_Coord(design, form_, Import_Coord::XY); }), 0, 1);
    ways->addWidget(check("chk_Close", [this](bool on) { Choose_Close(design, form_, on); }), 1, 0);
    ways->addWidget(check("chk_Normalize", [this](bool on) { Choose_Normalize(design, form_, on); }), 1, 1);
    auto* const shift = new QGridLayout;
    add_entry(*shift, "txt_ShiftAng");
    const Form_Control& count = Words_of(QStringLiteral("txt_Data"));
    Entry* const shown = Make_Entry(count);
    shown->setReadOnly(true);
    shown->setFocusPolicy(Qt::NoFocus);
    Add_Line(*shift, count, shown);
    QLayout* const read = frame("fra_Data", true);
    static_cast<QBoxLayout*>(read)->addLayout(ways);
    static_cast<QBoxLayout*>(read)->addLayout(shift);
    auto* const sources = new QHBoxLayout;
    sources->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Import")), [this] {
        view_ = View::all;
        Change([this] { Import_Data(design, form_); });
    }));
    sources->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Arcs")), [this] { Take_Arcs(); }));
    static_cast<QBoxLayout*>(read)->addLayout(sources);

    auto* const methods = new QGridLayout;
    for (int k = 0; k < 4; ++k)
        methods->addWidget(
            option("opt_Interpolate", k, [this, k] { Choose_Import_Method(form_, static_cast<Fit_Method>(k + 1)); }),
            k / 2, k % 2);
    auto* const figures = new QGridLayout;
    add_entry(*figures, "txt_Harmonics");
    add_entry(*figures, "txt_Bound");
    QLayout* const fit = frame("fra_Interpolate", true);
    static_cast<QBoxLayout*>(fit)->addLayout(methods);
    static_cast<QBoxLayout*>(fit)->addLayout(figures);
    fit->addWidget(check("chk_Rawdata", [this](bool on) { Choose_Raw(form_, on); }));
    column->addStretch();
    return column;
}

QComboBox* frm_Import_data::Make_List(const char* name, const char* line, const QStringList& items,
                                      bool (*choose)(Design_State& design, Import_Form& form, std::string_view item))
{
    const Form_Control& words = Words_of(QString::fromUtf8(name));
    const auto enter = [this, choose](const std::string& item) {
        if (!Is_Filling())
            Change([&] { choose(design, form_, item); });
    };
    QComboBox* const list = Choice(
        To_Qt(words.name), items, [enter, items](int k) { enter(From_Qt(items.at(k))); }, To_Qt(words.tip));
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    Entry* const typed = Make_Entry(Words_of(QString::fromUtf8(line)));
    typed->Takes_Words();
    typed->accepted = enter;
    list->setLineEdit(typed);
    list->setCompleter(nullptr);  // a text counts as it is typed
    return list;
}

QLayout* frm_Import_data::Make_Results()
{
    auto* const column = new QVBoxLayout;
    auto* const views = new QHBoxLayout;
    const auto view = [this, views](const char* name, View chosen) {
        views->addWidget(Make_Button(Words_of(QString::fromUtf8(name)), [this, chosen] {
            if (chosen == View::derivatives)
                Show_Message(Derivatives_Text(), Buttons::OK, Symbol::information);
            view_ = chosen;
            Draw();
        }));
    };
    view("cmd_Functions", View::functions);
    view("cmd_Derivs", View::derivatives);
    views->addStretch();
    column->addLayout(views);
    for (const char* const name : {"lbl_Notes", "lbl_Advice"}) {
        const Form_Control& words = Words_of(QString::fromUtf8(name));
        QLabel* const label = Label(To_Qt(words.name), {}, To_Qt(words.tip));
        label->setWordWrap(true);
        column->addWidget(label);
    }
    auto* const plots = new QWidget;
    plots->setObjectName(QStringLiteral("grf_Plot"));
    plots_ = new QGridLayout(plots);
    plots_->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < Import_Chart_Count; ++k) {
        charts_.append(new paint::Chart(design, Element("grf_Plot", k)));
        charts_.back()->Set_Legend(k == 0);
    }
    column->addWidget(plots, 1);
    column->addStretch();
    return column;
}

QLayout* frm_Import_data::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(QString::fromUtf8(name)), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Copy_Button(To_Qt(Words_of(QStringLiteral("cmd_Copy")).caption)));
    add("cmd_PlotPrint", [this] { paint::Print_Form(*this); });
    row->addStretch();
    add("cmd_Calc", [this] {
        view_ = View::all;
        Change([this] { Fit_Functions(design, form_); });
    });
    add("cmd_Save_Functions", [this] { Save(); });
    add("cmd_Done", [this] {
        Keep_Import(design);
        accept();
    });
    return row;
}

void frm_Import_data::Change(const std::function<void()>& work)
{
    {
        const Filling filling(*this);  // a message takes the focus from an entry
        work();
    }
    Refresh();
}

void frm_Import_data::Take_Arcs()
{
    frm_Arcs arcs(form_.arcs, this);
    if (Run_Modal(arcs) != QDialog::Accepted)
        return;
    view_ = View::all;
    Change([&] {
        Import_Arcs(design, form_, arcs.Form());
        Show_Texts(*this, Fields_of_Import(), form_);
    });
}

void frm_Import_data::Save()
{
    Save_Outcome outcome = Save_Outcome::refused;
    Change([&] { outcome = Save_Imported(design, form_); });
    if (outcome == Save_Outcome::no_omega)
        Control<Entry>(QStringLiteral("txt_Omega")).setFocus();
    if (outcome == Save_Outcome::no_base)
        Control<Entry>(QStringLiteral("txt_Base")).setFocus();
}

void frm_Import_data::Refresh()
{
    const Filling filling(*this);
    const auto on = [this](const QString& name) { Control<QRadioButton>(name).setChecked(true); };
    Control<QCheckBox>(QStringLiteral("chk_Close")).setChecked(form_.close);
    on(Element("opt_Coord", form_.coord == Import_Coord::RT ? 0 : 1));
    on(Element("opt_Interpolate", static_cast<int>(form_.method) - 1));
    on(Element("opt_Folmotion", design.cam.Translating ? 0 : 1));
    const auto show_item = [this](const char* line, std::string_view item) {
        Control<Entry>(QString::fromUtf8(line)).Show_Text(item);
    };
    auto& units = Control<QComboBox>(QStringLiteral("cmb_Units"));
    units.setCurrentIndex(units.findText(To_Qt(Import_Units_Item(design))));
    show_item("txt_Units", Import_Units_Item(design));
    auto& delta = Control<QComboBox>(QStringLiteral("cmb_Delta"));
    const std::string step = Step_Item(design);
    delta.setCurrentIndex(delta.findText(To_Qt(step)));
    show_item("txt_Delta", step);
    Show_Units(*this, Fields_of_Import());
    if (!design.cam.Translating)  // what is moved then are degrees
        Control<QLabel>(QStringLiteral("unit_txt_Bound")).setText(To_Qt(Unit_Word(design, Form_Unit::degrees)));
    Show_Line(*this, "txt_Harmonics", Harmonics_Open(form_));
    Show_Line(*this, "txt_Bound", Bound_Open(form_));
    Control<Entry>(QStringLiteral("txt_Data")).Show_Text(Data_Text(form_));
    const Import_Buttons buttons = Buttons_of_Import(form_);
    const auto enable = [this](const char* name, bool open) {
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(open);
    };
    enable("cmd_Calc", buttons.cmd_Calc);
    for (const char* const name : {"cmd_Copy", "cmd_PlotPrint", "cmd_Derivs", "cmd_Functions", "cmd_Save_Functions"})
        enable(name, buttons.fitted);
    enable("cmd_Done", buttons.cmd_Done);
    auto& notes = Control<QLabel>(QStringLiteral("lbl_Notes"));
    notes.setText(To_Qt(Notes_of_Import(design, form_)));
    notes.setVisible(!notes.text().isEmpty());
    auto& advice = Control<QLabel>(QStringLiteral("lbl_Advice"));
    advice.setText(To_Qt(Advice_of_Import()));
    advice.setVisible(form_.profile.x.empty());
    Control<QWidget>(QStringLiteral("grf_Plot")).setVisible(!form_.profile.x.empty());
    status_->Refresh();
    Draw();
}

void frm_Import_data::Draw()
{
    const std::vector<Import_Chart> content = Charts_of_Import(design, form_);
    for (int k = 0; k < Import_Chart_Count; ++k) {
        const Import_Chart& chart = content[static_cast<std::size_t>(k)];
        std::vector<paint::Curve> curves;
        for (const Import_Series& series : chart.series) {
            paint::Curve curve;
            curve.name = To_Qt(series.name);
            curve.x = series.x;
            curve.y = series.y;
            if (series.name == "RawData")
                curve.style = paint::Curve_Style::points;
            curves.push_back(std::move(curve));
        }
        const bool wanted = view_ == View::all || (view_ == View::functions) == (k == 0);
        if (view_ == View::derivatives)  // one above the other
            plots_->addWidget(charts_[k], k, 0, 1, 2);
        else
            plots_->addWidget(charts_[k], k / 2, k % 2);
        charts_[k]->setVisible(wanted && !curves.empty());
        charts_[k]->Set_Axis_Titles(QStringLiteral("Cam angle (deg)"), To_Qt(chart.axis));
        charts_[k]->Show(std::move(curves));
    }
}

void Run_Import(QWidget* parent)
{
    bool given_up = false;
    {
        History::Transaction work(Desk_History());
        if (!May_Build_Example(design))
            return;
        frm_Import_data screen(parent);
        if (Run_Modal(screen) == QDialog::Accepted) {
            work.Commit(From_Qt(screen.windowTitle()));
            return;
        }
        given_up = screen.Overwritten();
    }
    if (!given_up)
        return;
    Give_Up_Import(design);
    Desk_History().Remember("import given up");
}

}  // namespace lobemax::screens
