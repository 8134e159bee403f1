// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Stress.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

struct Field {
    const char* name;
    const char* caption;
    Stress_Field field;
    std::string Stress_Form::*text;
};

constexpr Field cam_E{"txt_Cam_E", "Young's Modulus", Stress_Field::Cam_E, &Stress_Form::txt_Cam_E};
constexpr Field cam_v{"txt_Cam_V", "Poisson's ratio", Stress_Field::Cam_V, &Stress_Form::txt_Cam_V};
constexpr Field fol_E{"txt_Fol_E", "Young's Modulus", Stress_Field::Fol_E, &Stress_Form::txt_Fol_E};
constexpr Field fol_v{"txt_Fol_v", "Poisson's ratio", Stress_Field::Fol_v, &Stress_Form::txt_Fol_v};
constexpr Field length{"txt_Length", "Contact Length", Stress_Field::Length, &Stress_Form::txt_Length};
constexpr Field crown{"txt_Crownrad", "Crown Radius", Stress_Field::Crownrad, &Stress_Form::txt_Crownrad};
constexpr std::array fields{cam_E, cam_v, fol_E, fol_v, length, crown};

}  // namespace

frm_Stress::frm_Stress(QWidget* parent) : Screen(QStringLiteral("frm_Stress"), QStringLiteral("Contact stress"), parent)
{
    const auto add_field = [this](QGridLayout& grid, int line, const Field& f) {
        auto* const entry = new Entry(QString::fromUtf8(f.name), QString::fromUtf8(f.caption));
        entry->accepted = [this, entry, f](const std::string& text) {
            const lobemax::Stress_Entry result = Edit_Stress_Field(f.field, text);
            entry->Show_Text(result.text);
            if (result.accepted)
                Calculate();
        };
        auto* const label = new QLabel(QString::fromUtf8(f.caption));
        label->setObjectName(QStringLiteral("lbl_") + QString::fromUtf8(f.name));
        label->setBuddy(entry);
        grid.addWidget(label, line, 0);
        grid.addWidget(entry, line, 1);
        grid.addWidget(Label(QStringLiteral("unit_") + QString::fromUtf8(f.name)), line, 2);
    };
    auto* const left = new QVBoxLayout;
    const auto material = [&](bool cam, const QString& title, const char* option, const Field& E, const Field& v) {
        auto* const frame = new QGroupBox(title);
        auto* const grid = new QGridLayout(frame);
        grid->addWidget(Option(Element(option, 0), QStringLiteral("Steel"), [this, cam] { Set_Material(cam, true); }),
                        0, 0);
        grid->addWidget(Option(Element(option, 1), QStringLiteral("Other"), [this, cam] { Set_Material(cam, false); }),
                        0, 1);
        add_field(*grid, 1, E);
        add_field(*grid, 2, v);
        left->addWidget(frame);
    };
    material(true, QStringLiteral("Cam Material Parameters"), "opt_Cam", cam_E, cam_v);
    material(false, QStringLiteral("Follower Material Parameters"), "opt_Follower", fol_E, fol_v);
    auto* const frame = new QGroupBox(QStringLiteral("Follower Configuration"));
    auto* const grid = new QGridLayout(frame);
    auto* const prompt = new QHBoxLayout;
    prompt->addWidget(new QLabel(QStringLiteral("You have chosen a ")));
    prompt->addWidget(Label(QStringLiteral("lbl_follower")));
    prompt->addWidget(new QLabel(QStringLiteral("follower.")));
    prompt->addStretch();
    grid->addLayout(prompt, 0, 0, 1, 3);
    const auto type = [this](bool crowned) {
        return [this, crowned] {
            type_chosen_ = true;
            design.dynamics.Roller_type = crowned ? 2 : 1;
            Refresh();
            Calculate();
        };
    };
    grid->addWidget(Option(Element("opt_Fol_type", 0), QStringLiteral("Cylindrical"), type(false)), 1, 0);
    grid->addWidget(Option(Element("opt_Fol_type", 1), QStringLiteral("Crowned"), type(true)), 1, 1);
    QLabel* const explanation = Label(QStringLiteral("lbl_foltype"));
    explanation->setWordWrap(true);
    grid->addWidget(explanation, 2, 0, 1, 3);
    add_field(*grid, 3, length);
    add_field(*grid, 4, crown);
    left->addWidget(frame);
    auto* const loads = new QGridLayout;
    auto* const weight = new Entry(QStringLiteral("txt_Weight"), QStringLiteral("A force added to the contact force"));
    weight->accepted = [this](const std::string&) { Calculate(); };
    loads->addWidget(new QLabel(QStringLiteral("Follower Weight Force on Cam")), 0, 0);
    loads->addWidget(weight, 0, 1);
    loads->addWidget(Label(QStringLiteral("unit_txt_Weight")), 0, 2);
    loads->addWidget(Check(QStringLiteral("chk_Extforce"), QStringLiteral(" Include dynamic external force  "),
                           [this](bool add) {
                               design.dynamics.Ext_Force_Add = add;
                               Calculate();
                           }),
                     1, 0, 1, 3);
    left->addLayout(loads);
    left->addStretch();
    auto* const plots = new QGridLayout;
    for (int k = 0; k < 4; ++k) {
        charts_.append(new paint::Chart(Element("pct_Plot", k)));
        plots->addWidget(charts_.back(), k / 2, k % 2);
    }
    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addLayout(plots, 1);
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print Form"), [this] { paint::Print_Form(*this); }));
    add(Button(QStringLiteral("cmd_Help"), QStringLiteral("&Help"),
               [this] { Open_Help(QStringLiteral("stress"), this); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Calc"), QStringLiteral("&Calculate"), [this] { Calculate(); }));
    QPushButton* const done = Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); });
    done->setEnabled(false);
    add(done);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(row, 1);
    column->addLayout(buttons);
    status_ = new Status_Panel;
    column->addWidget(status_);
    Open_at({1000, 640});
    Fill(Opening_Stress_Form());
    if (!design.flags.Ext_Force_Calc)
        design.dynamics.Ext_Force_Add = false;
    Refresh();
    Calculate();
}

void frm_Stress::Fill(const Stress_Form& form)
{
    for (const Field& f : fields)
        Control<Entry>(QString::fromUtf8(f.name)).Show_Text(form.*f.text);
    Control<Entry>(QStringLiteral("txt_Weight")).Show_Text(form.txt_Weight);
    Control<QRadioButton>(Element("opt_Cam", form.cam_steel ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Follower", form.follower_steel ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Fol_type", form.crowned ? 1 : 0)).setChecked(true);
}

void frm_Stress::Refresh()
{
    const bool crowned = Control<QRadioButton>(Element("opt_Fol_type", 1)).isChecked();
    const Stress_Labels labels = Labels_of_Stress(type_chosen_, crowned);
    Control<QLabel>(QStringLiteral("lbl_follower")).setText(To_Qt(labels.lbl_follower));
    Control<QLabel>(QStringLiteral("lbl_foltype")).setText(To_Qt(labels.lbl_foltype));
    for (const int k : {0, 1})
        Control<QRadioButton>(Element("opt_Fol_type", k)).setVisible(labels.roller_options);
    for (const char* const name : {"txt_Crownrad", "lbl_txt_Crownrad", "unit_txt_Crownrad"})
        Control<QWidget>(QString::fromUtf8(name)).setVisible(labels.roller_options);
    Control<Entry>(QStringLiteral("txt_Length")).setEnabled(labels.length_enabled);
    Control<Entry>(QStringLiteral("txt_Crownrad")).setEnabled(labels.crown_enabled);
    for (const char* const name : {"unit_txt_Cam_E", "unit_txt_Fol_E"})
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(labels.modulus_unit));
    for (const char* const name : {"unit_txt_Length", "unit_txt_Crownrad"})
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(labels.length_unit));
    Control<QLabel>(QStringLiteral("unit_txt_Weight")).setText(To_Qt(labels.force_unit));
    for (const auto& [option, E, v] :
         {std::tuple{"opt_Cam", "txt_Cam_E", "txt_Cam_V"}, std::tuple{"opt_Follower", "txt_Fol_E", "txt_Fol_v"}}) {
        const bool steel = Control<QRadioButton>(Element(option, 0)).isChecked();
        for (const char* const name : {E, v})
            Control<Entry>(QString::fromUtf8(name)).setReadOnly(steel && !Steel_Modulus().empty());
    }
    auto& external = Control<QCheckBox>(QStringLiteral("chk_Extforce"));
    external.setEnabled(design.flags.Ext_Force_Calc);
    external.setChecked(design.dynamics.Ext_Force_Add);
    status_->Refresh();
}

Stress_Form frm_Stress::Form() const
{
    Stress_Form form;
    for (const Field& f : fields)
        form.*f.text = Control<Entry>(QString::fromUtf8(f.name)).Text();
    form.txt_Weight = Control<Entry>(QStringLiteral("txt_Weight")).Text();
    form.cam_steel = Control<QRadioButton>(Element("opt_Cam", 0)).isChecked();
    form.follower_steel = Control<QRadioButton>(Element("opt_Follower", 0)).isChecked();
    form.crowned = Control<QRadioButton>(Element("opt_Fol_type", 1)).isChecked();
    return form;
}

void frm_Stress::Set_Material(bool cam, bool steel)
{
    if (steel) {
        Control<Entry>(QString::fromUtf8(cam ? "txt_Cam_E" : "txt_Fol_E")).Show_Text(Steel_Modulus());
        Control<Entry>(QString::fromUtf8(cam ? "txt_Cam_V" : "txt_Fol_v")).Show_Text(Steel_Ratio());
    }
    Refresh();
    Calculate();
}

void frm_Stress::Calculate()
{
    Stress_Field refused{};
    if (!Calc_Stress(Form(), refused)) {
        for (const Field& f : fields)
            if (f.field == refused)
                Control<Entry>(QString::fromUtf8(f.name)).setFocus();
        return;
    }
    const auto& results = design.results.CalcData;
    const auto rows = Stress_Plot_Rows();
    for (int k = 0; k < charts_.size(); ++k) {
        const int v = rows[static_cast<std::size_t>(k)];
        const QString name = To_Qt(Trim(design.plot.Var_Name(v)));
        const QString unit = To_Qt(design.plot.Var_Unit(v));
        charts_[k]->Set_Axis_Titles(k > 1 ? QStringLiteral("Cam Angle (Deg)") : QString(),
                                    name + QStringLiteral("  ") + unit);
        charts_[k]->Show({paint::Row_Curve(name, unit, results.Points(var::Angle), results.Points(v), 0,
                                           design.motion.Max_Data_Points_used)});
    }
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(true);
    status_->Refresh();
}

void frm_Stress::Close_Box()
{
    if (design.flags.Stressflag)
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
