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
#include <utility>

#include "core/text.h"
#include "dynamics/contact_stress.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "present/plot_engine.h"
#include "screens/check_mark.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"
#include "screens/true_curves.h"

namespace lobemax::screens {

namespace {

const Form_Field<Stress_Form>& Field_of(Stress_Field field)
{
    return Fields_of_Stress()[static_cast<std::size_t>(field)];
}

QString Name_of(Stress_Field field)
{
    return To_Qt(Field_of(field).name);
}

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Stress(), From_Qt(name));
}

/// A member of the contact: its frame, the options of its material, its fields, and where its choice stands.
struct Member {
    const char* frame;
    const char* option;  // (0) steel, (1) other
    Stress_Field modulus;
    Stress_Field ratio;
    bool Stress_Form::*steel;
};

constexpr std::array members{
    Member{"fra_Cam", "opt_Cam", Stress_Field::Cam_E, Stress_Field::Cam_V, &Stress_Form::cam_steel},
    Member{"fra_Follower", "opt_Follower", Stress_Field::Fol_E, Stress_Field::Fol_v, &Stress_Form::follower_steel}};

/// A field that only shows has the ground of the screen, so that nobody tries to type into it.
void Set_Read_Only(QLineEdit& field, bool read_only)
{
    QPalette colours;
    if (read_only)
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    field.setPalette(colours);
    field.setReadOnly(read_only);
}

}  // namespace

frm_Stress::frm_Stress(QWidget* parent)
    : Screen(QStringLiteral("frm_Stress"), To_Qt(Words_of(QStringLiteral("frm_Stress")).caption), parent)
{
    auto* const row = new QHBoxLayout;
    row->addLayout(Inputs());
    auto* const views = new QVBoxLayout;
    auto* const line = new QHBoxLayout;
    line->addStretch();
    line->addWidget(Make_Check(Words_of(QStringLiteral("chk_True")), [this](bool) { Show_Truth(); }));
    views->addLayout(line);
    views->addLayout(plots_.Make(), 1);
    row->addLayout(views, 1);
    Body().addLayout(row);
    mark_ = Add_Mark(Foot(), Finding_Place::stress, [this] { Show_Findings(); });
    Foot().addLayout(Buttons_Row());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Offer_Undo();
    Open_at({1000, 640});
    if (!design.flags.Ext_Force_Calc)
        design.dynamics.Ext_Force_Add = false;
    Fill(Opening_Stress_Form(design));
    Refresh();
}

QLayout* frm_Stress::Inputs()
{
    auto* const column = new QVBoxLayout;
    for (int m = 0; m < static_cast<int>(members.size()); ++m)
        column->addWidget(Material(m));
    column->addWidget(Configuration());
    auto* const loads = new QGridLayout;
    Add_Field(*loads, Stress_Field::Weight);
    const auto external = [this](bool add) {
        design.dynamics.Ext_Force_Add = add;
        Calculate();
    };
    loads->addWidget(Make_Check(Words_of(QStringLiteral("chk_Extforce")), external), loads->rowCount(), 0, 1, 3);
    column->addLayout(loads);
    column->addStretch();
    return column;
}

void frm_Stress::Add_Field(QGridLayout& grid, Stress_Field field)
{
    const auto& row = Field_of(field);
    Entry* const entry = Make_Entry(row);
    entry->accepted = [this, row](const std::string& text) {
        Stress_Form form = Form();
        if (Enter_Text(*this, Fields_of_Stress(), row, form, text).accepted)
            Calculate();
    };
    Add_Line(grid, row, entry);
}

QWidget* frm_Stress::Material(int member)
{
    const Member& m = members.at(static_cast<std::size_t>(member));
    QGroupBox* const frame = Make_Frame(Words_of(QString::fromUtf8(m.frame)));
    auto* const grid = new QGridLayout(frame);
    for (const int index : {0, 1}) {
        const auto chosen = [this, member, index] { Choose_Material(member, index == 0); };
        grid->addWidget(Make_Option(Words_of(Element(m.option, index)), chosen), 0, index);
    }
    Add_Field(*grid, m.modulus);
    Add_Field(*grid, m.ratio);
    return frame;
}

QWidget* frm_Stress::Configuration()
{
    QGroupBox* const frame = Make_Frame(Words_of(QStringLiteral("fra_Configuration")));
    auto* const grid = new QGridLayout(frame);
    auto* const prompt = new QHBoxLayout;
    const auto words = [](const QString& name) { return Label(name, To_Qt(Words_of(name).caption)); };
    prompt->addWidget(words(QStringLiteral("lbl_chosen")));
    prompt->addWidget(Label(QStringLiteral("lbl_follower")));
    prompt->addWidget(words(QStringLiteral("lbl_kind")));
    prompt->addStretch();
    grid->addLayout(prompt, 0, 0, 1, 3);
    for (const int index : {0, 1}) {
        const auto chosen = [this, index] { Choose_Roller(index == 1); };
        grid->addWidget(Make_Option(Words_of(Element("opt_Fol_type", index)), chosen), 1, index);
    }
    QLabel* const explanation = Label(QStringLiteral("lbl_foltype"));
    explanation->setWordWrap(true);
    grid->addWidget(explanation, 2, 0, 1, 3);
    Add_Field(*grid, Stress_Field::Length);
    Add_Field(*grid, Stress_Field::Crownrad);
    return frame;
}

QLayout* frm_Stress::Buttons_Row()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(QString::fromUtf8(name)), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    add("cmd_Print", [this] { paint::Print_Form(*this); });
    add("cmd_Help", [] { Open_Help(QStringLiteral("stress")); });
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Done", [this] { accept(); });
    return row;
}

void frm_Stress::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    if (std::exchange(opened_, true))
        return;
    // Queued, so that what the first calculation has to tell appears over this screen.
    const auto first = [this] { Run_Guarded(*this, [this] { Calculate(); }); };
    QMetaObject::invokeMethod(this, first, Qt::QueuedConnection);
}

void frm_Stress::Follow_Design()
{
    Fill(Opening_Stress_Form(design));
    Refresh();
}

void frm_Stress::Fill(const Stress_Form& form)
{
    Show_Texts(*this, Fields_of_Stress(), form);
    for (const Member& m : members)
        Control<QRadioButton>(Element(m.option, form.*m.steel ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Fol_type", form.crowned ? 1 : 0)).setChecked(true);
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
}

void frm_Stress::Refresh()
{
    const bool crowned = Control<QRadioButton>(Element("opt_Fol_type", 1)).isChecked();
    const Stress_Labels labels = Labels_of_Stress(design, type_chosen_, crowned);
    const auto text = [this](const char* name, const std::string& shown) {
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(shown));
    };
    text("lbl_follower", labels.lbl_follower);
    text("lbl_foltype", labels.lbl_foltype);
    Show_Units(*this, Fields_of_Stress());
    for (const int k : {0, 1})
        Control<QRadioButton>(Element("opt_Fol_type", k)).setVisible(labels.roller_options);
    Show_Line(*this, "txt_Crownrad", labels.roller_options);
    Control<Entry>(QStringLiteral("txt_Length")).setEnabled(labels.length_enabled);
    Control<Entry>(QStringLiteral("txt_Crownrad")).setEnabled(labels.crown_enabled);
    for (const Member& m : members) {
        const bool steel = Control<QRadioButton>(Element(m.option, 0)).isChecked();
        // Where the unit system has no steel its modulus must be typed.
        Set_Read_Only(Control<Entry>(Name_of(m.modulus)), steel && !Steel_Modulus(design).empty());
        Set_Read_Only(Control<Entry>(Name_of(m.ratio)), steel);
    }
    auto& external = Control<QCheckBox>(QStringLiteral("chk_Extforce"));
    external.setEnabled(design.flags.Ext_Force_Calc);
    external.setChecked(design.dynamics.Ext_Force_Add);
    if (design.flags.Stressflag)
        mark_->Refresh();
    mark_->Set_Pending(!design.flags.Stressflag);
    status_->Refresh();
}

Stress_Form frm_Stress::Form() const
{
    Stress_Form form;
    Read_Texts(*this, Fields_of_Stress(), form);
    for (const Member& m : members)
        form.*m.steel = Control<QRadioButton>(Element(m.option, 0)).isChecked();
    form.crowned = Control<QRadioButton>(Element("opt_Fol_type", 1)).isChecked();
    return form;
}

void frm_Stress::Choose_Material(int member, bool steel)
{
    const Member& m = members.at(static_cast<std::size_t>(member));
    if (steel) {
        Control<Entry>(Name_of(m.modulus)).Show_Text(Steel_Modulus(design));
        Control<Entry>(Name_of(m.ratio)).Show_Text(Steel_Ratio(design));
    }
    Refresh();
    Calculate();
}

void frm_Stress::Choose_Roller(bool crowned)
{
    type_chosen_ = true;
    design.dynamics.Roller_type = crowned ? crowned_roller : cylindrical_roller;
    Refresh();
    plots_.Clear(*this);
    Calculate();
}

void frm_Stress::Calculate()
{
    Stress_Field refused{};
    if (!Calc_Stress(design, Form(), refused)) {
        Control<Entry>(Name_of(refused)).setFocus();
        Show_Stale(true);
        return;
    }
    if (!design.flags.Stressflag) {  // a fault: what it left in the rows is no result
        Show_Stale(true);
        return;
    }
    const auto rows = Stress_Plot_Rows(design);
    for (int k = 0; k < plots_.Count(); ++k) {
        const int v = rows.at(static_cast<std::size_t>(k));
        paint::Show_Cycle(design, plots_.At(k), v, k > 1);
        const Plot_Figures figures = Figures_of_Plot(design, v, 0, design.motion.Max_Data_Points_used);
        plots_.Show_Figures(*this, k, figures.lbl_Min, figures.lbl_Max, figures.lbl_Peak);
    }
    Show_Truth();
    Show_Stale(false);
}

void frm_Stress::Show_Truth()
{
    const bool there = design.flags.Stressflag && !plots_.At(0).Curves().empty();
    const bool wanted = Control<QCheckBox>(QStringLiteral("chk_True")).isChecked();
    const auto rows = Stress_Plot_Rows(design);
    for (int k = 0; k < plots_.Count(); ++k)
        Show_True_Row(plots_.At(k), rows.at(static_cast<std::size_t>(k)), there, wanted);
    if (there)
        mark_->Refresh();
}

void frm_Stress::Show_Findings()
{
    if (Open_Findings(*this, Finding_Place::stress))
        Close_Box();
    else
        Show_Truth();
}

void frm_Stress::Show_Stale(bool stale)
{
    plots_.Set_Stale(*this, stale);
    mark_->Set_Pending(stale);
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(!stale);
    status_->Refresh();
}

void frm_Stress::Close_Box()
{
    Leave_Entry();
    if (design.flags.Stressflag)
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
