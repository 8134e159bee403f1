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
#include <algorithm>
#include <array>
#include <stdexcept>

#include "core/messages.h"
#include "core/text.h"
#include "dynamics/kinetostatics.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

/// Caption and tip of a control; a name that has none is a mistake of this file.
const Dynamics_Control& Words_of(const QString& name)
{
    const auto controls = Dynamics_Controls();
    const auto found = std::ranges::find(controls, From_Qt(name), &Dynamics_Control::name);
    if (found == controls.end())
        throw std::out_of_range("frm_Dynamics has no control " + From_Qt(name));
    return *found;
}

QString Caption(const QString& name)
{
    return To_Qt(Words_of(name).caption);
}

QString Tip(const QString& name)
{
    return To_Qt(Words_of(name).tip);
}

QGroupBox* Frame(const char* name)
{
    auto* const frame = new QGroupBox(Caption(QString::fromUtf8(name)));
    frame->setObjectName(QString::fromUtf8(name));
    return frame;
}

/// A field of the screen: its control, how it is checked, and where its text stands in the form.
struct Field {
    const char* name;
    Dynamics_Field field;
    std::string Dynamics_Form::*text;
};

constexpr std::array fields{
    Field{"txt_Mass", Dynamics_Field::Mass, &Dynamics_Form::txt_Mass},
    Field{"txt_Spring", Dynamics_Field::Spring, &Dynamics_Form::txt_Spring},
    Field{"txt_Preload", Dynamics_Field::Preload, &Dynamics_Form::txt_Preload},
    Field{"txt_Zeta", Dynamics_Field::Zeta, &Dynamics_Form::txt_Zeta},
    Field{"txt_Damping", Dynamics_Field::Damping, &Dynamics_Form::txt_Damping},
    Field{"txt_Journal", Dynamics_Field::Journal, &Dynamics_Form::txt_Journal},
    Field{"txt_Folfrict", Dynamics_Field::Folfrict, &Dynamics_Form::txt_Folfrict},
    Field{"txt_Jnlfrict", Dynamics_Field::Jnlfrict, &Dynamics_Form::txt_Jnlfrict},
    Field{"txt_Fluct", Dynamics_Field::Fluct, &Dynamics_Form::txt_Fluct},
};

/// The labels of the figures, and where their texts come from.
struct Figure {
    const char* name;
    std::string Dynamics_Texts::*text;
};

constexpr std::array figures{
    Figure{"lbl_Fmax", &Dynamics_Texts::lbl_Fmax},     Figure{"lbl_Fmin", &Dynamics_Texts::lbl_Fmin},
    Figure{"lbl_Tmax", &Dynamics_Texts::lbl_Tmax},     Figure{"lbl_OmegaN", &Dynamics_Texts::lbl_OmegaN},
    Figure{"lbl_OmegaD", &Dynamics_Texts::lbl_OmegaD}, Figure{"lbl_Cc", &Dynamics_Texts::lbl_Cc},
};

constexpr int widest_pulse_line = 46;  // characters: the dashes

}  // namespace

frm_Dynamics::frm_Dynamics(QWidget* parent)
    : Screen(QStringLiteral("frm_Dynamics"), Caption(QStringLiteral("frm_Dynamics")), parent)
{
    Reset_Dynamics(design);
    auto* const row = new QHBoxLayout;
    row->addLayout(Inputs());
    row->addLayout(Charts(), 1);
    row->addWidget(Pulses());
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
        const QString element = Element(name, index);
        return Option(element, Caption(element), std::move(chosen), Tip(element));
    };
    const auto frame = [column](const char* name, std::initializer_list<QWidget*> widgets) {
        QGroupBox* const box = Frame(name);
        auto* const line = new QHBoxLayout(box);
        for (QWidget* const widget : widgets)
            line->addWidget(widget);
        column->addWidget(box);
    };
    const auto check = [column](const QString& name, std::function<void(bool)> ticked) {
        column->addWidget(Check(name, Caption(name), std::move(ticked), Tip(name)));
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
    check(QStringLiteral("chk_compcam"), {});
    column->addLayout(Figures_Grid());
    column->addStretch();
    return column;
}

QLayout* frm_Dynamics::Entries()
{
    auto* const grid = new QGridLayout;
    int line = 0;
    for (const Field& f : fields) {
        const QString name = QString::fromUtf8(f.name);
        auto* const entry = new Entry(name, Tip(name));
        entry->accepted = [this, entry, f](const std::string& text) {
            if (Dynamics_Entry_Hides_Charts(design))
                Hide_Charts();
            const Dynamics_Entry result = Edit_Dynamics_Field(design, f.field, text);
            entry->Show_Text(result.text);
            if (result.disable_done)
                Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
            Refresh();
            if (result.recalculate)
                Calculate();
            else if (!result.accepted)
                Show_Stale(true);
        };
        QLabel* const label = Label(QStringLiteral("lbl_") + name, Caption(name), Tip(name));
        label->setBuddy(entry);
        grid->addWidget(label, line, 0);
        grid->addWidget(entry, line, 1);
        grid->addWidget(Label(QStringLiteral("unit_") + name), line++, 2);
    }
    return grid;
}

QLayout* frm_Dynamics::Figures_Grid()
{
    auto* const grid = new QGridLayout;
    int line = 0;
    for (const Figure& f : figures) {
        const QString name = QString::fromUtf8(f.name);
        grid->addWidget(Label(QStringLiteral("cap_") + name, Caption(name)), line, 0);
        grid->addWidget(Label(name), line, 1, Qt::AlignRight);
        grid->addWidget(Label(QStringLiteral("unit_") + name), line++, 2);
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

QWidget* frm_Dynamics::Pulses()
{
    pulses_ = new QPlainTextEdit;
    pulses_->setObjectName(QStringLiteral("pct_Pict1"));
    pulses_->setToolTip(Tip(pulses_->objectName()));
    pulses_->setReadOnly(true);
    pulses_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pulses_->setLineWrapMode(QPlainTextEdit::NoWrap);
    const int line = pulses_->fontMetrics().horizontalAdvance(QString(widest_pulse_line, QLatin1Char('-')));
    const int margins = 2 * static_cast<int>(pulses_->document()->documentMargin() + pulses_->frameWidth() + 1);
    pulses_->setFixedWidth(line + margins + pulses_->verticalScrollBar()->sizeHint().width());
    return pulses_;
}

QLayout* frm_Dynamics::Buttons_Row()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        const QString button = QString::fromUtf8(name);
        row->addWidget(Button(button, Caption(button), std::move(pressed), Tip(button)));
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
    for (const Field& f : fields)
        Control<Entry>(QString::fromUtf8(f.name)).Show_Text(form.*f.text);
    Control<QRadioButton>(Element("opt_Closure", form.force_closed ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Torque", form.start_fresh ? 0 : 1)).setChecked(true);
    design.dynamics.Ext_Force_Add = form.add_external;  // without a force there is nothing to add
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setChecked(form.add_external);
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
}

void frm_Dynamics::Refresh()
{
    const bool force_closed = Control<QRadioButton>(Element("opt_Closure", 0)).isChecked();
    const Dynamics_Labels labels =
        Labels_of_Dynamics(design, force_closed, Control<Entry>(QStringLiteral("txt_Spring")).Text());
    const auto unit = [this](const char* name, const std::string& text) {
        Control<QLabel>(QStringLiteral("unit_") + QString::fromUtf8(name)).setText(To_Qt(text));
    };
    unit("txt_Mass", labels.mass);
    unit("txt_Spring", labels.spring);
    unit("txt_Preload", labels.force);
    unit("txt_Damping", labels.damping);
    unit("txt_Journal", labels.length);
    unit("lbl_Fmax", labels.force);
    unit("lbl_Fmin", labels.force);
    unit("lbl_Tmax", labels.torque);
    unit("lbl_OmegaN", "rad/s");
    unit("lbl_OmegaD", "rad/s");
    unit("lbl_Cc", labels.damping);
    Control<QRadioButton>(Element("opt_Closure", 1)).setEnabled(labels.form_closure_enabled);
    for (const char* const name : {"txt_Spring", "txt_Preload", "txt_Zeta", "txt_Damping"}) {
        const QString field = QString::fromUtf8(name);
        Control<Entry>(field).setVisible(labels.spring_frames);
        Control<QLabel>(QStringLiteral("lbl_") + field).setVisible(labels.spring_frames);
        Control<QLabel>(QStringLiteral("unit_") + field).setVisible(labels.spring_frames);
    }
    for (const char* const name : {"lbl_OmegaN", "lbl_OmegaD", "lbl_Cc"})
        for (const char* const prefix : {"", "cap_", "unit_"})
            Control<QLabel>(QString::fromUtf8(prefix) + QString::fromUtf8(name)).setVisible(labels.spring_frames);
    Control<Entry>(QStringLiteral("txt_Damping")).setEnabled(labels.damping_enabled);
    Control<Entry>(QStringLiteral("txt_Zeta")).setEnabled(!labels.damping_enabled);
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setEnabled(labels.external_enabled);
    Control<QCheckBox>(QStringLiteral("chk_compcam")).setEnabled(labels.compcam_enabled);
    status_->Refresh();
}

Dynamics_Form frm_Dynamics::Form() const
{
    Dynamics_Form form;
    for (const Field& f : fields)
        form.*f.text = Control<Entry>(QString::fromUtf8(f.name)).Text();
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
    for (const Figure& f : figures)
        Control<QLabel>(QString::fromUtf8(f.name)).setEnabled(!stale);
    pulses_->setEnabled(!stale);
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
    for (const Figure& f : figures)
        if (const std::string& text = texts.*f.text; !text.empty())
            Control<QLabel>(QString::fromUtf8(f.name)).setText(To_Qt(text));
    if (!texts.txt_Damping.empty())
        Control<Entry>(QStringLiteral("txt_Damping")).Show_Text(texts.txt_Damping);
    QStringList lines;
    for (const std::string& text : found.pulses.lines)
        lines.append(To_Qt(text));
    pulses_->setPlainText(lines.join(QLatin1Char('\n')));
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
