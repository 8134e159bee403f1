// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Dynamics.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <array>

#include "core/messages.h"
#include "core/text.h"
#include "dynamics/kinetostatics.h"
#include "forms/compcam_form.h"
#include "forms/drive_words.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_CompCam.h"
#include "screens/frm_SizeCam.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Dynamics(), From_Qt(name));
}

QString Caption(const QString& name)
{
    return To_Qt(Words_of(name).caption);
}

/// The fields and read-outs that belong to a spring.
constexpr std::array spring_lines{"txt_Spring", "txt_Preload", "txt_Zeta", "txt_Damping",
                                  "lbl_OmegaN", "lbl_OmegaD",  "lbl_Cc"};

constexpr int widest_line = 46;  // characters of a panel: the dashes of the pulses

}  // namespace

frm_Dynamics::frm_Dynamics(QWidget* parent)
    : Screen(QStringLiteral("frm_Dynamics"), Caption(QStringLiteral("frm_Dynamics")), parent)
{
    Reset_Dynamics(design);
    auto* const row = new QHBoxLayout;
    row->addLayout(Inputs());
    row->addLayout(Charts(), 1);
    row->addLayout(Panels());
    Body().addLayout(row);
    Foot().addLayout(Buttons_Row());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Offer_Undo();
    Open_at({1180, 680});
    Fill();
    Refresh();
    Hide_Charts();
}

QLayout* frm_Dynamics::Inputs()
{
    auto* const column = new QVBoxLayout;
    const auto option = [](const char* name, int index, std::function<void()> chosen) {
        return Make_Option(Words_of(Element(name, index)), std::move(chosen));
    };
    const auto frame = [column](const char* name, std::initializer_list<QWidget*> widgets) {
        QGroupBox* const box = Make_Frame(Words_of(QString::fromUtf8(name)));
        auto* const line = new QHBoxLayout(box);
        for (QWidget* const widget : widgets)
            line->addWidget(widget);
        column->addWidget(box);
    };
    const auto check = [column](const QString& name, std::function<void(bool)> ticked) {
        column->addWidget(Make_Check(Words_of(name), std::move(ticked)));
    };
    const auto closure = [this] {
        Refresh();  // the spring's fields come or go before anything is told of it
        Hide_Charts();
        Show_Run(Choose_Closure(design, Form()));
    };
    frame("fra_Closure", {option("opt_Closure", 0, closure), option("opt_Closure", 1, closure)});
    column->addLayout(Entries());
    const auto start_fresh = [this] {
        Hide_Charts();
        Dynamics_Form form = Form();
        Show_Run(Choose_Start_Fresh(design, form));
    };
    frame("fra_Torque",
          {option("opt_Torque", 0, start_fresh), option("opt_Torque", 1, [] { Choose_Accumulate(design); })});
    check(QStringLiteral("chk_Extforce"), [this](bool ticked) {
        Dynamics_Form form = Form();
        Show_Run(Tick_Add_External_Force(design, form, ticked));
    });
    check(QStringLiteral("chk_compcam"), [this](bool ticked) { Compensate(ticked); });
    column->addLayout(Figures_Grid());
    column->addStretch();
    return column;
}

QLayout* frm_Dynamics::Entries()
{
    auto* const grid = new QGridLayout;
    for (const auto& field : Fields_of_Dynamics()) {
        Entry* const entry = Make_Entry(field);
        entry->accepted = [this, field](const std::string& text) {
            if (Dynamics_Entry_Hides_Charts(design))
                Hide_Charts();
            Dynamics_Form form = Form();
            const Form_Entry result = Enter_Text(*this, Fields_of_Dynamics(), field, form, text);
            if (result.disable_done)
                Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
            Refresh();
            if (result.recalculate)
                Calculate();
            else if (!result.accepted)
                Show_Stale(true);
        };
        Add_Line(*grid, field, entry);
    }
    return grid;
}

QLayout* frm_Dynamics::Figures_Grid()
{
    auto* const grid = new QGridLayout;
    for (const auto& read_out : Read_Outs_of_Dynamics()) {
        QLabel* const value = Label(To_Qt(read_out.name));
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        Add_Line(*grid, read_out, value);
    }
    return grid;
}

QLayout* frm_Dynamics::Charts()
{
    auto* const column = new QVBoxLayout;
    for (paint::Chart** const chart : {&torque_, &force_}) {
        const QString name = Element("grf_Plot", chart == &torque_ ? 0 : 1);
        *chart = new paint::Chart(design, name);
        (*chart)->Set_Title(Caption(name));
        QSizePolicy place = (*chart)->sizePolicy();
        place.setRetainSizeWhenHidden(true);  // nothing else moves when a chart comes or goes
        (*chart)->setSizePolicy(place);
        column->addWidget(*chart, 1);
    }
    return column;
}

QLayout* frm_Dynamics::Panels()
{
    auto* const column = new QVBoxLayout;
    pulses_ = Panel("pct_Pict1");
    drive_ = Panel("pct_Drive");
    column->addWidget(pulses_, 4);
    column->addWidget(drive_, 5);  // the table in inches is whole
    return column;
}

QPlainTextEdit* frm_Dynamics::Panel(const char* name)
{
    auto* const panel = new QPlainTextEdit;
    panel->setObjectName(QString::fromUtf8(name));
    panel->setToolTip(To_Qt(Words_of(panel->objectName()).tip));
    panel->setReadOnly(true);
    panel->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    panel->setLineWrapMode(QPlainTextEdit::NoWrap);
    const int line = panel->fontMetrics().horizontalAdvance(QString(widest_line, QLatin1Char('-')));
    const int margins = 2 * static_cast<int>(panel->document()->documentMargin() + panel->frameWidth() + 1);
    panel->setFixedWidth(line + margins + panel->verticalScrollBar()->sizeHint().width());
    return panel;
}

QLayout* frm_Dynamics::Buttons_Row()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(QString::fromUtf8(name)), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Copy_Button(Caption(QStringLiteral("cmd_Copy"))));
    add("cmd_Print", [this] { paint::Print_Form(*this); });
    row->addWidget(
        Button(QStringLiteral("cmd_Help"), QStringLiteral("&Help"), [] { Open_Help(QStringLiteral("dynamics")); }));
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Done", [this] { accept(); });
    return row;
}

void frm_Dynamics::Fill()
{
    const Dynamics_Form form = Opening_Dynamics_Form(design);
    Show_Texts(*this, Fields_of_Dynamics(), form);
    Control<QRadioButton>(Element("opt_Closure", form.force_closed ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Torque", form.start_fresh ? 0 : 1)).setChecked(true);
    design.dynamics.Ext_Force_Add = form.add_external;  // without a force there is nothing to add
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setChecked(form.add_external);
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
}

void frm_Dynamics::Refresh()
{
    const bool force_closed = Control<QRadioButton>(Element("opt_Closure", 0)).isChecked();
    const Dynamics_Openings open =
        Openings_of_Dynamics(design, force_closed, Control<Entry>(QStringLiteral("txt_Spring")).Text());
    Show_Units(*this, Fields_of_Dynamics());
    Show_Units(*this, Read_Outs_of_Dynamics());
    Control<QRadioButton>(Element("opt_Closure", 1)).setEnabled(open.form_closure_enabled);
    for (const char* const name : spring_lines)
        Show_Line(*this, name, open.spring_frames);
    Control<Entry>(QStringLiteral("txt_Damping")).setEnabled(open.damping_enabled);
    Control<Entry>(QStringLiteral("txt_Zeta")).setEnabled(!open.damping_enabled);
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setEnabled(open.external_enabled);
    Control<QCheckBox>(QStringLiteral("chk_compcam")).setEnabled(open.compcam_enabled);
    status_->Refresh();
}

void frm_Dynamics::Compensate(bool ticked)
{
    if (!ticked || Is_Filling())
        return;
    bool taken = false;
    if (May_Open_Compcam(design)) {
        History::Transaction work(Desk_History());
        frm_CompCam screen(this);
        taken = Run_Modal(screen) == QDialog::Accepted;
        if (taken)
            work.Commit("torque compensation");
    }
    if (!taken) {
        Control<QCheckBox>(QStringLiteral("chk_compcam")).setChecked(design.flags.CompCam_Calc);
        Refresh();
        return;
    }
    {
        History::Transaction work(Desk_History());
        frm_SizeCam size(this);
        if (Run_Modal(size) == QDialog::Accepted)
            work.Commit(From_Qt(size.windowTitle()));
    }
    accept();  // the forces on this screen were those of the primary cam
}

Dynamics_Form frm_Dynamics::Form() const
{
    Dynamics_Form form;
    Read_Texts(*this, Fields_of_Dynamics(), form);
    form.force_closed = Control<QRadioButton>(Element("opt_Closure", 0)).isChecked();
    form.start_fresh = Control<QRadioButton>(Element("opt_Torque", 0)).isChecked();
    form.add_external = Control<QCheckBox>(QStringLiteral("chk_Extforce")).isChecked();
    return form;
}

void frm_Dynamics::Follow_Design()
{
    Fill();
    if (design.flags.Dynamicflag)
        Show_Run(true);
    else
        Hide_Charts();
    Refresh();
}

void frm_Dynamics::Calculate()
{
    Show_Run(Calc_Dynamics(design, Form()));
}

void frm_Dynamics::Show_Run(bool run)
{
    if (run) {  // an aborted run, too, shows what it has filled
        Show_Results();
    } else {
        Hide_Charts();
        Show_Stale(true);
    }
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(run);
    Refresh();
}

void frm_Dynamics::Show_Stale(bool stale)
{
    torque_->Set_Stale(stale);
    force_->Set_Stale(stale);
    for (const Form_Control& read_out : Read_Outs_of_Dynamics())
        Control<QLabel>(To_Qt(read_out.name)).setEnabled(!stale);
    pulses_->setEnabled(!stale);
    drive_->setEnabled(!stale);
}

void frm_Dynamics::Hide_Charts()
{
    torque_->hide();
    force_->hide();
}

void frm_Dynamics::Show_Results()
{
    const Dynamics_Figures found = Present_Figures(design);
    const Dynamics_Texts texts = Texts_of_Dynamics(design, found);
    for (const auto& read_out : Read_Outs_of_Dynamics())
        if (const std::string& text = texts.*read_out.text; !text.empty())  // without a spring: the label keeps its own
            Control<QLabel>(To_Qt(read_out.name)).setText(To_Qt(text));
    if (!texts.txt_Damping.empty())
        Control<Entry>(QStringLiteral("txt_Damping")).Show_Text(texts.txt_Damping);
    const auto show_lines = [](QPlainTextEdit& panel, const std::vector<std::string>& lines) {
        QStringList list;
        for (const std::string& text : lines)
            list.append(To_Qt(text));
        panel.setPlainText(list.join(QLatin1Char('\n')));
    };
    show_lines(*pulses_, found.pulses.lines);
    show_lines(*drive_, Drive_Panel(design));
    paint::Show_Cycle(design, *torque_, var::Torque);
    paint::Show_Cycle(design, *force_, var::Force);
    Show_Stale(false);
    torque_->show();
    force_->show();
}

void frm_Dynamics::Close_Box()
{
    Leave_Entry();
    if (Closing_Dynamics_Is_Done(design))
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
