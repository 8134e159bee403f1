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
#include <QVBoxLayout>
#include <array>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "dynamics/kinetostatics.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

/// A field of the screen: its control, caption and tip, how it is checked, and where its text stands in the form.
struct Field {
    const char* name;
    const char* caption;
    const char* tip;
    Dynamics_Field field;
    std::string Dynamics_Form::*text;
};

constexpr std::array fields{
    Field{"txt_Mass", "Effective Mass", "Effective mass at roller follower - must be in mass units",
          Dynamics_Field::Mass, &Dynamics_Form::txt_Mass},
    Field{"txt_Spring", "Spring Constant", "Return spring rate", Dynamics_Field::Spring, &Dynamics_Form::txt_Spring},
    Field{"txt_Preload", "Spring Preload", "Initial spring load at assembly", Dynamics_Field::Preload,
          &Dynamics_Form::txt_Preload},
    Field{"txt_Zeta", "Ratio z", "Dimensionless damping ratio, zeta", Dynamics_Field::Zeta, &Dynamics_Form::txt_Zeta},
    Field{"txt_Damping", "Coefficient C", "Damping coefficient", Dynamics_Field::Damping, &Dynamics_Form::txt_Damping},
    Field{"txt_Journal", "Cam Journal Dia", "Camshaft diameter for friction torque calculation",
          Dynamics_Field::Journal, &Dynamics_Form::txt_Journal},
    Field{"txt_Folfrict", "Follower Friction", "Coefficient of friction at the follower", Dynamics_Field::Folfrict,
          &Dynamics_Form::txt_Folfrict},
    Field{"txt_Jnlfrict", "Journal Friction", "Coefficient of friction at the journal", Dynamics_Field::Jnlfrict,
          &Dynamics_Form::txt_Jnlfrict},
    Field{"txt_Fluct", "Coef Fluctuation", "Desired coefficient of fluctuaion for a flywheel", Dynamics_Field::Fluct,
          &Dynamics_Form::txt_Fluct},
};

}  // namespace

frm_Dynamics::frm_Dynamics(QWidget* parent)
    : Screen(QStringLiteral("frm_Dynamics"), QStringLiteral("Cam Dynamics"), parent)
{
    Reset_Dynamics();
    auto* const left = new QVBoxLayout;
    const auto options = [left](const QString& title, std::initializer_list<QWidget*> widgets) {
        auto* const frame = new QGroupBox(title);
        auto* const row = new QHBoxLayout(frame);
        for (QWidget* const widget : widgets)
            row->addWidget(widget);
        left->addWidget(frame);
    };
    const auto closure = [this](bool force) {
        return [this, force] {
            if (!force)
                Choose_Form_Closure();
            Hide_Results();
            Calculate();
        };
    };
    options(QStringLiteral("Joint Closure"),
            {Option(Element("opt_Closure", 0), QStringLiteral("Force Closed"), closure(true),
                    QStringLiteral("Uses a spring closure")),
             Option(Element("opt_Closure", 1), QStringLiteral("Form Closed"), closure(false),
                    QStringLiteral("Tracked, ribbed, or conjugate cam"))});
    auto* const grid = new QGridLayout;
    int line = 0;
    for (const Field& f : fields) {
        auto* const entry = new Entry(QString::fromUtf8(f.name), QString::fromUtf8(f.tip));
        entry->accepted = [this, entry, f](const std::string& text) {
            Dynamics_Entry result{false, text};
            if (!Trap("frm_Dynamics.fields", [&] { result = Edit_Dynamics_Field(f.field, text); }))
                return;
            entry->Show_Text(result.text);
            if (result.disable_done)
                Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
            Refresh();
            if (result.hide_charts)
                Hide_Results();
            if (result.recalculate)
                Calculate();
        };
        auto* const label = new QLabel(QString::fromUtf8(f.caption));
        label->setObjectName(QStringLiteral("lbl_") + QString::fromUtf8(f.name));
        label->setBuddy(entry);
        grid->addWidget(label, line, 0);
        grid->addWidget(entry, line, 1);
        grid->addWidget(Label(QStringLiteral("unit_") + QString::fromUtf8(f.name)), line++, 2);
    }
    left->addLayout(grid);
    options(QStringLiteral("Torque Calcs"),
            {Option(
                 Element("opt_Torque", 0), QStringLiteral("Start Fresh"),
                 [this] {
                     design.dynamics.Torque_Start_Fresh = true;
                     Hide_Results();
                     Calculate();
                 },
                 QStringLiteral("New torque calculation overwrites previous values")),
             Option(
                 Element("opt_Torque", 1), QStringLiteral("Accumulate"), [] { Choose_Accumulate(); },
                 QStringLiteral("Retains previous torque and adds new to it"))});
    left->addWidget(Check(
        QStringLiteral("chk_Extforce"), QStringLiteral("Add ext. force"),
        [this](bool add) {
            design.dynamics.Ext_Force_Add = add;
            Calculate();
        },
        QStringLiteral("This will superpose any external force previously calculated")));
    left->addWidget(Check(QStringLiteral("chk_compcam"), QStringLiteral("Calc Comp Cam"), {},
                          QStringLiteral("Create a torque compensation cam")));
    auto* const figures = new QGridLayout;
    line = 0;
    for (const auto& [name, caption] :
         {std::pair{"lbl_Fmax", "Fmax"}, std::pair{"lbl_Fmin", "Fmin"}, std::pair{"lbl_Tmax", "Tmax"},
          std::pair{"lbl_OmegaN", "Undamped natural frequency"}, std::pair{"lbl_OmegaD", "Damped natural frequency"},
          std::pair{"lbl_Cc", "Coefficient of critical damping"}}) {
        auto* const words = new QLabel(QString::fromUtf8(caption));
        words->setObjectName(QStringLiteral("cap_") + QString::fromUtf8(name));
        figures->addWidget(words, line, 0);
        figures->addWidget(Label(QString::fromUtf8(name)), line, 1, Qt::AlignRight);
        figures->addWidget(Label(QStringLiteral("unit_") + QString::fromUtf8(name)), line++, 2);
    }
    left->addLayout(figures);
    left->addStretch();

    torque_ = new paint::Chart(Element("grf_Plot", 0));
    torque_->Set_Title(QStringLiteral("Kinetostatic camshaft torque"));
    force_ = new paint::Chart(Element("grf_Plot", 1));
    force_->Set_Title(QStringLiteral("Kinetostatic force at follower"));
    auto* const charts = new QVBoxLayout;
    charts->addWidget(torque_, 1);
    charts->addWidget(force_, 1);
    pulses_ = new QPlainTextEdit;
    pulses_->setObjectName(QStringLiteral("pct_Pict1"));
    pulses_->setToolTip(QStringLiteral("These data can be used to calculate flywheel size - see textbook"));
    pulses_->setReadOnly(true);
    pulses_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pulses_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addLayout(charts, 2);
    row->addWidget(pulses_, 1);
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Copy"), QStringLiteral("&Copy"), [] {
        Show_Message("Use the Alt-PrintScrn key combo to copy the screen to the clipboard", Buttons::OK,
                     Symbol::information);
    }));
    add(Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print Form"), [this] { paint::Print_Form(*this); }));
    add(Button(QStringLiteral("cmd_Help"), QStringLiteral("&Help"),
               [this] { Open_Help(QStringLiteral("dynamics"), this); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Calc"), QStringLiteral("C&alculate"), [this] { Calculate(); }));
    QPushButton* const done = Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); });
    done->setEnabled(false);
    add(done);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(row, 1);
    column->addLayout(buttons);
    status_ = new Status_Panel;
    column->addWidget(status_);
    Open_at({1080, 640});
    Fill();
    Refresh();
    Hide_Results();
}

void frm_Dynamics::Fill()
{
    const Dynamics_Form form = Opening_Dynamics_Form();
    for (const Field& f : fields)
        Control<Entry>(QString::fromUtf8(f.name)).Show_Text(form.*f.text);
    Control<QRadioButton>(Element("opt_Closure", form.force_closed ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Torque", form.start_fresh ? 0 : 1)).setChecked(true);
    if (!design.flags.Ext_Force_Calc)
        design.dynamics.Ext_Force_Add = false;
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setChecked(design.dynamics.Ext_Force_Add);
}

void frm_Dynamics::Refresh()
{
    const bool force_closed = Control<QRadioButton>(Element("opt_Closure", 0)).isChecked();
    const Dynamics_Labels labels =
        Labels_of_Dynamics(force_closed, Control<Entry>(QStringLiteral("txt_Spring")).Text());
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
    return form;
}

void frm_Dynamics::Calculate()
{
    const bool done = Calc_Dynamics(Form());
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(done);
    Refresh();
    if (done)
        Show_Results();
    else
        Hide_Results();
}

void frm_Dynamics::Hide_Results()
{
    torque_->hide();
    force_->hide();
    pulses_->clear();
    for (const char* const name : {"lbl_Fmax", "lbl_Fmin", "lbl_Tmax", "lbl_OmegaN", "lbl_OmegaD", "lbl_Cc"})
        Control<QLabel>(QString::fromUtf8(name)).clear();
}

void frm_Dynamics::Show_Results()
{
    const Dynamics_Group& d = design.dynamics;
    const Dynamics_Figures figures = Present_Figures();
    const auto set = [this](const char* name, double value, int decimals) {
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(Trim(FNRoundStr(value, decimals))));
    };
    set("lbl_Fmax", figures.Fmax, 1);
    set("lbl_Fmin", figures.Fmin, 1);
    set("lbl_Tmax", figures.Tmax, 1);
    if (figures.frequencies) {
        set("lbl_OmegaN", d.Omega_N, 1);
        set("lbl_OmegaD", d.Omega_D, 1);
        set("lbl_Cc", d.Critical_Damping, 2);
        Control<Entry>(QStringLiteral("txt_Damping")).Show_Text(Trim(FNRoundStr(d.Damping, 2)));
    }
    QStringList lines;
    for (const std::string& text : figures.pulses.lines)
        lines.append(To_Qt(text));
    pulses_->setPlainText(lines.join(QLatin1Char('\n')));
    const auto& results = design.results.CalcData;
    const auto show = [&](paint::Chart& chart, int row) {
        const QString name = To_Qt(Trim(design.plot.Var_Name(row)));
        const QString unit = To_Qt(design.plot.Var_Unit(row));
        chart.Set_Axis_Titles(QStringLiteral("Cam Angle (Deg)"), name + QStringLiteral("  ") + unit);
        chart.Show({paint::Row_Curve(name, unit, results.Points(var::Angle), results.Points(row), 0,
                                     design.motion.Max_Data_Points_used)});
        chart.show();
    };
    show(*torque_, var::Torque);
    show(*force_, var::Force);
}

void frm_Dynamics::Close_Box()
{
    if (design.flags.Dynamicflag)
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
