// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_SizeCam.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "camgeom/sizing.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/departure_notes.h"
#include "forms/findings_form.h"
#include "forms/preference_choice.h"
#include "forms/workflow.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "screens/check_mark.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"
#include "screens/true_curves.h"

namespace lobemax::screens {

namespace {

const QStringList keyways{QStringLiteral("12 O'clock"), QStringLiteral("3 O'clock"), QStringLiteral("6 O'clock"),
                          QStringLiteral("9 O'clock")};

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Size(), From_Qt(name));
}

void Explain_Linear_Cam()
{
    if (wanted_messages.linear_help)
        wanted_messages.linear_help =
            Show_Message(Linear_Cam_Message(), Buttons::OK_Cancel, Symbol::information) != Answer::Cancel;
}

}  // namespace

frm_SizeCam::frm_SizeCam(QWidget* parent)
    : Screen(QStringLiteral("frm_SizeCam"), To_Qt(Words_of(QStringLiteral("frm_SizeCam")).caption), parent)
{
    Make_Menu();
    auto* const left = new QVBoxLayout;
    left->addWidget(Make_Choices());
    left->addWidget(Make_Fields());
    left->addStretch();
    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addWidget(Make_Views(), 1);
    Body().addLayout(row);
    mark_ = Add_Mark(Foot(), Finding_Place::size, [this] { Show_Findings(); });
    Foot().addWidget(Make_Foot());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Open_at({1180, 720});
    Fill();
    has_results_ = design.flags.Sized;
    Refresh();
    Set_Pending(!has_results_);
    if (has_results_)
        Draw_Views();
}

void frm_SizeCam::Make_Menu()
{
    auto* const bar = new QMenuBar;
    QMenu* const help = bar->addMenu(QStringLiteral("&Help"));
    const auto add = [this, help](const char* name, const char* caption, std::string (*text)()) {
        QAction* const action = help->addAction(QString::fromUtf8(caption));
        action->setObjectName(QString::fromUtf8(name));
        On_Pick(action, this, [text] { Show_Message(text(), Buttons::OK, Symbol::information); });
    };
    add("mnu_arm", "Follower arm", Arm_Help);
    add("mnu_Roller", "Roller radius", Roller_Help);
    add("mnu_camsurface", "Cam surface", Cam_Surface_Help);
    add("mnu_startangle", "Starting angle", Start_Angle_Help);
    add("mnu_linear", "Linear cams", Linear_Help);
    add("mnu_barrel", "Barrel cams", Barrel_Help);
    connect(help->addAction(QStringLiteral("&Sizing the cam")), &QAction::triggered, this,
            [] { Open_Help(QStringLiteral("sizing")); });
    Body();
    layout()->setMenuBar(bar);
    Offer_Undo(bar);
}

QWidget* frm_SizeCam::Make_Choices()
{
    auto* const choices = new QWidget;
    auto* const grid = new QGridLayout(choices);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto frame = [this, grid](const char* name, const char* option, int count, int line, int place,
                                    const std::function<void(int)>& chosen) {
        QGroupBox* const box = Make_Frame(Words_of(QString::fromUtf8(name)));
        auto* const box_column = new QVBoxLayout(box);
        for (int k = 0; k < count; ++k)
            box_column->addWidget(Make_Option(Words_of(Element(option, k)), [this, chosen, k] {
                chosen(k);
                Refresh();
                Show_Stored();
                Changed();
            }));
        box_column->addStretch();
        grid->addWidget(box, line, place);
    };
    frame("fra_CamType", "opt_CamType", 4, 0, 0, [](int k) {
        Choose_Cam(design, static_cast<Cam_Choice>(k));
        if (static_cast<Cam_Choice>(k) == Cam_Choice::Linear)
            Explain_Linear_Cam();
    });
    frame("fra_Folmotion", "opt_Folmotion", 2, 0, 1, [](int k) { Choose_Follower_Motion(design, k == 0); });
    frame("fra_Foltype", "opt_Foltype", 2, 0, 2, [](int k) { Choose_Follower(design, k == 0); });
    frame("fra_Rotate", "opt_Rotate", 2, 1, 0, [this](int k) {
        Choose_Rotation(design, k == 0, Control<QRadioButton>(Element("opt_topbot", 0)).isChecked());
    });
    frame("pnl_ArmRotate", "opt_ArmRotate", 2, 1, 1, [](int k) { Choose_Arm_Rotation(design, k == 0); });
    frame("fra_topbot", "opt_topbot", 2, 1, 2, [](int k) {
        Choose_Track(design, k == 0);
        Apply(design, Event::edited);
    });
    return choices;
}

/// A panel of lines: caption, entry, unit.
QGridLayout& frm_SizeCam::Make_Panel(const char* name, QWidget* panel)
{
    panel->setObjectName(QString::fromUtf8(name));
    auto* const grid = new QGridLayout(panel);
    if (qobject_cast<QGroupBox*>(panel) == nullptr)
        grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(1, 1);
    // The fields of all panels stand in one column.
    grid->setColumnMinimumWidth(2, fontMetrics().horizontalAdvance(QStringLiteral("deg ")));
    return *grid;
}

void frm_SizeCam::Add_Row(QGridLayout& panel, const Form_Control& row, QWidget* field)
{
    if (!row.caption.empty())
        panel.setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QStringLiteral("Center Distance ")));
    Add_Line(panel, row, field);
}

void frm_SizeCam::Add_Entry(QGridLayout& panel, std::string_view name)
{
    const auto& row = *std::ranges::find(Fields_of_Size(), name, &Form_Control::name);
    Entry* const entry = Make_Entry(row);
    entry->stepped = [](const std::string& text, int steps) { return Step_Number(design, text, steps); };
    entry->accepted = [this, entry, row](const std::string& text) {
        Size_Form form = Form();
        const Form_Entry result = Enter_Text(*this, Fields_of_Size(), row, form, text);
        Refresh();
        if (!result.accepted) {
            // The box shows what the value is not: it is calculated with only when the user says so.
            if (result.takes_focus)
                QMetaObject::invokeMethod(
                    entry, [entry] { entry->setFocus(); }, Qt::QueuedConnection);
            Set_Pending(true);
            if (has_results_)
                Draw_Cam_View();
            return;
        }
        Apply(design, Event::edited);
        Changed(row.name == "txt_Prime" && design.cam.Camtype == "Barrel");
    };
    Add_Row(panel, row, entry);
}

QWidget* frm_SizeCam::Make_Fields()
{
    auto* const fields = new QWidget;
    auto* const column = new QVBoxLayout(fields);
    column->setContentsMargins(0, 0, 0, 0);
    const auto panel = [this, column](const char* name, QWidget* widget,
                                      std::initializer_list<std::string_view> entries) -> QGridLayout& {
        QGridLayout& grid = Make_Panel(name, widget);
        for (const std::string_view entry : entries)
            Add_Entry(grid, entry);
        column->addWidget(widget);
        return grid;
    };
    panel("fra_Prime", new QGroupBox, {"txt_Prime"});
    panel("pnl_roller", new QWidget, {"txt_follower", "txt_Cutter"});
    panel("pnl_translate", new QWidget, {"txt_Offset", "txt_folwrangle"});
    panel("pnl_oscillate", new QWidget, {"txt_CLx", "txt_CLy", "txt_ArmRadius"});
    // A linear cam has no centre that the pivot could be distant from.
    const Form_Control& center = Words_of(QStringLiteral("lbl_CL"));
    Add_Row(panel("fra_CL", new QWidget, {}), center, Label(To_Qt(center.name), {}, To_Qt(center.tip)));
    auto* const start = new QWidget;
    QGridLayout& start_grid = panel("pnl_start", start, {"txt_ShiftAng"});
    const Form_Control& keyway = Words_of(QStringLiteral("cmb_keyway"));
    Add_Row(start_grid, keyway,
            Choice(
                To_Qt(keyway.name), keyways,
                [this](int k) {
                    Choose_Keyway(design, From_Qt(keyways.at(k)));
                    Changed();
                },
                To_Qt(keyway.tip)));
    QLabel* const explanation = Label(QStringLiteral("lbl_Explanation"));
    explanation->setWordWrap(true);
    column->addWidget(explanation);
    start->findChild<Entry*>(QStringLiteral("txt_ShiftAng"))->focused = [explanation](bool in) {
        explanation->setText(in ? To_Qt(Start_Angle_Help()) : QString());
    };
    return fields;
}

QWidget* frm_SizeCam::Make_Views()
{
    auto* const views = new QWidget;
    auto* const column = new QVBoxLayout(views);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const extremes = new QHBoxLayout;
    for (const char* const name : {"lbl_Pamin", "lbl_Pamax", "lbl_Rhomin", "lbl_Rhomax"}) {
        const Form_Control& row = Words_of(QString::fromUtf8(name));
        QLabel* const value = Label(To_Qt(row.name));
        extremes->addWidget(Make_Caption(row, value));
        QFont bold = value->font();
        bold.setWeight(QFont::DemiBold);
        value->setFont(bold);
        extremes->addWidget(value);
        extremes->addSpacing(14);
    }
    extremes->addStretch();
    extremes->addWidget(Make_Check(Words_of(QStringLiteral("chk_True")), [this](bool) {
        Show_Truth();
        Draw_Cam_View();
    }));
    column->addLayout(extremes);
    const Form_Control& words = Words_of(QStringLiteral("lbl_Notes"));
    QLabel* const notes = Label(To_Qt(words.name), {}, To_Qt(words.tip));
    notes->setWordWrap(true);
    notes->hide();
    column->addWidget(notes);
    // The cam with its axes beside it, and what it starts from below.
    cam_view_ = new QWidget;
    auto* const drawing = new QGridLayout(cam_view_);
    drawing->setContentsMargins(0, 0, 0, 0);
    cam_ = new paint::Drawing_View(QStringLiteral("pct_Cam"));
    drawing->addWidget(Label(QStringLiteral("lbl_Yinit"), {}, QStringLiteral("The axis upward")), 0, 0, Qt::AlignTop);
    drawing->addWidget(cam_, 0, 1);
    drawing->addWidget(Label(QStringLiteral("lbl_Xinit"), QStringLiteral("x")), 1, 1, Qt::AlignRight);
    QLabel* const info = Label(QStringLiteral("pnl_info"), {}, QStringLiteral("Where the roller center starts"));
    info->setMinimumWidth(1);  // the drawing's width is its own
    drawing->addWidget(info, 2, 1);
    drawing->setColumnStretch(1, 1);
    drawing->setRowStretch(0, 1);
    data_view_ = new QWidget;
    auto* const charts = new QVBoxLayout(data_view_);
    charts->setContentsMargins(0, 0, 0, 0);
    phi_ = new paint::Chart(design, QStringLiteral("pct_Pang"));
    rho_ = new paint::Chart(design, QStringLiteral("pct_Radcurv"));
    phi_->Set_Axis_Titles({}, QStringLiteral("Phi  deg"));
    charts->addWidget(phi_);
    charts->addWidget(rho_);
    auto* const row = new QHBoxLayout;
    row->addWidget(cam_view_, 1);
    row->addWidget(data_view_, 1);
    column->addLayout(row, 1);
    return views;
}

QWidget* frm_SizeCam::Make_Foot()
{
    auto* const foot = new QWidget;
    auto* const row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(QString::fromUtf8(name)), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Make_Check(Words_of(QStringLiteral("chk_Autocalc")), {}));
    const auto view = [this](View chosen) {
        return [this, chosen] {
            view_ = chosen;
            Show_Views();
            Draw_Cam_View();
        };
    };
    add("cmd_ShowCam", view(View::cam));
    add("cmd_ShowData", view(View::data));
    add("cmd_ShowBoth", view(View::both));
    row->addWidget(Copy_Button(To_Qt(Words_of(QStringLiteral("cmd_Copy")).caption)));
    add("cmd_PrintForm", [this] { paint::Print_Form(*this); });
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Done", [this] { Done(); });
    return foot;
}

void frm_SizeCam::Fill()
{
    const Filling filling(*this);
    const Size_Form form = Size_Form_of_Design(design);
    Show_Texts(*this, Fields_of_Size(), form);
    auto& keyway = Control<QComboBox>(QStringLiteral("cmb_keyway"));
    keyway.setCurrentIndex(keyway.findText(To_Qt(form.cmb_keyway)));
    Control<QRadioButton>(Element("opt_topbot", form.inner_track ? 0 : 1)).setChecked(true);
}

void frm_SizeCam::Refresh()
{
    const Cam_Group& c = design.cam;
    const Size_Panels panels = Set_Cam_Type_Panels(design);
    const auto on = [this](const char* name, int k) { Control<QRadioButton>(Element(name, k)).setChecked(true); };
    on("opt_CamType", static_cast<int>(Present_Cam_Choice(design)));
    on("opt_Folmotion", c.Translating ? 0 : 1);
    on("opt_Foltype", c.Followtype == 2 ? 1 : 0);
    on("opt_Rotate", c.Rotflag > 0 ? 0 : 1);
    on("opt_ArmRotate", c.ArmDirect > 0 ? 0 : 1);
    Control<QGroupBox>(QStringLiteral("fra_Prime")).setTitle(To_Qt(panels.fra_Prime));
    Control<QLabel>(QStringLiteral("lbl_Yinit")).setText(To_Qt(panels.lbl_Yinit));
    Control<QLabel>(QStringLiteral("lbl_txt_CLy")).setText(QStringLiteral("Pivot ") + To_Qt(panels.lbl_Yinit));
    Control<QLabel>(QStringLiteral("pnl_info")).setVisible(panels.info_panel);
    Control<QWidget>(QStringLiteral("pnl_oscillate")).setVisible(panels.oscillate_panel);
    Control<QWidget>(QStringLiteral("fra_CL")).setVisible(panels.oscillate_panel && panels.arm_frame);
    Control<QLabel>(QStringLiteral("lbl_CL")).setText(To_Qt(Texts_of_Size(design).lbl_CL));
    Control<QGroupBox>(QStringLiteral("fra_Rotate")).setTitle(To_Qt(panels.fra_Rotate));
    for (const int k : {0, 1})
        Control<QRadioButton>(Element("opt_Rotate", k)).setText(To_Qt(panels.opt_Rotate[k]));
    Control<QRadioButton>(Element("opt_Foltype", 1)).setEnabled(panels.flat_enabled);
    Control<QGroupBox>(QStringLiteral("fra_topbot")).setVisible(panels.track_frame);
    Control<QGroupBox>(QStringLiteral("pnl_ArmRotate")).setVisible(panels.oscillate_panel);
    Show_Units(*this, Fields_of_Size());
    Show_Units(*this, std::span(&Words_of(QStringLiteral("lbl_CL")), 1));
    const bool flat = c.Followtype == 2;
    Show_Line(*this, "txt_follower", !flat);
    // The offset of a flat face on an arm is that of the face from the pivot.
    Control<QWidget>(QStringLiteral("pnl_translate"))
        .setVisible(panels.translate_panel || (panels.oscillate_panel && flat));
    Show_Line(*this, "txt_folwrangle", panels.translate_panel);
    auto& pivot_y = Control<Entry>(QStringLiteral("txt_CLy"));
    pivot_y.setEnabled(panels.arm_y_enabled);
    if (!panels.arm_y_enabled)
        pivot_y.Show_Text("0");
    Show_Views();
    status_->Refresh();
}

void frm_SizeCam::Show_Stored()
{
    const Size_Form form = Size_Form_of_Design(design);
    Control<Entry>(QStringLiteral("txt_Prime")).Show_Text(form.txt_Prime);
    Control<Entry>(QStringLiteral("txt_Offset")).Show_Text(form.txt_Offset);
}

Size_Form frm_SizeCam::Form() const
{
    const auto chosen = [this](const char* name, int count) {
        for (int k = 0; k < count; ++k)
            if (Control<QRadioButton>(Element(name, k)).isChecked())
                return k;
        return 0;
    };
    Size_Form form;
    form.cam = static_cast<Cam_Choice>(chosen("opt_CamType", 4));
    form.translating = chosen("opt_Folmotion", 2) == 0;
    form.roller = chosen("opt_Foltype", 2) == 0;
    form.ccw = chosen("opt_Rotate", 2) == 0;
    form.arm_ccw = chosen("opt_ArmRotate", 2) == 0;
    form.inner_track = chosen("opt_topbot", 2) == 0;
    Read_Texts(*this, Fields_of_Size(), form);
    form.cmb_keyway = From_Qt(Control<QComboBox>(QStringLiteral("cmb_keyway")).currentText());
    return form;
}

void frm_SizeCam::Changed(bool calculate_anyway)
{
    if (Is_Filling())
        return;
    if (calculate_anyway || Control<QCheckBox>(QStringLiteral("chk_Autocalc")).isChecked()) {
        Calculate();
        return;
    }
    Set_Pending(true);
    if (has_results_)
        Draw_Cam_View();
}

void frm_SizeCam::Calculate()
{
    const Filling filling(*this);
    Size_Form form = Form();
    has_results_ = Calc_Size(design, form, Control<QCheckBox>(QStringLiteral("chk_Autocalc")).isChecked());
    Show_Texts(*this, Fields_of_Size(), form);
    Refresh();
    Set_Pending(!has_results_);
    Draw_Views();
}

void frm_SizeCam::Set_Pending(bool pending)
{
    calculated_ = !pending;
    Control<QPushButton>(QStringLiteral("cmd_Calc")).setEnabled(pending);
    for (const char* const name :
         {"cmd_Done", "cmd_ShowCam", "cmd_ShowData", "cmd_Copy", "cmd_PrintForm", "cmd_ShowBoth"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(!pending);
    // What the last calculation left is gray while it is not that of the values on the screen.
    for (const char* const name : {"lbl_Pamin", "lbl_Pamax", "lbl_Rhomin", "lbl_Rhomax", "pnl_info", "lbl_Notes"})
        Control<QLabel>(QString::fromUtf8(name)).setEnabled(!pending);
    phi_->Set_Stale(pending);
    rho_->Set_Stale(pending);
    mark_->Set_Pending(pending);
    status_->Refresh();
}

void frm_SizeCam::Draw_Views()
{
    const Size_Texts texts = has_results_ ? Texts_of_Size(design) : Size_Texts{};
    for (const auto& [name, text] :
         {std::pair{"lbl_Pamin", &texts.lbl_Pamin}, std::pair{"lbl_Pamax", &texts.lbl_Pamax},
          std::pair{"lbl_Rhomin", &texts.lbl_Rhomin}, std::pair{"lbl_Rhomax", &texts.lbl_Rhomax}})
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(*text));
    auto& notes = Control<QLabel>(QStringLiteral("lbl_Notes"));
    notes.setText(has_results_ ? To_Qt(As_Lines(Notes_of_Polydyne(design))) : QString());
    notes.setVisible(!notes.text().isEmpty());
    const QString length = To_Qt(Words_of_Units(design.identity.WhichUnit).length);
    rho_->Set_Axis_Titles(QStringLiteral("Cam Angle (Deg)"), QStringLiteral("Rho  ") + length);
    Show_Curve(*phi_, "Phi", QStringLiteral("deg"), var::Phi);
    Show_Curve(*rho_, "Rho", length, var::Rho);
    Show_Truth();
    Draw_Cam_View();
}

void frm_SizeCam::Show_Curve(paint::Chart& chart, const char* name, const QString& unit, int row)
{
    const auto& results = design.results.CalcData;
    std::vector<paint::Curve> curves;
    if (has_results_)
        curves.push_back(paint::Row_Curve(QString::fromUtf8(name), unit, results.Points(var::Angle),
                                          results.Points(row), 0, design.motion.Max_Data_Points_used));
    // The calculation before this one stays behind as a faint curve.
    if (!chart.Curves().empty()) {
        curves.push_back(chart.Curves().front());
        curves.back().faint = true;
    }
    paint::Set_Angle_Ticks(design, chart);
    chart.Update(std::move(curves));
}

void frm_SizeCam::Show_Truth()
{
    if (has_results_)
        mark_->Refresh();
    const bool wanted = has_results_ && Control<QCheckBox>(QStringLiteral("chk_True")).isChecked();
    Show_True_Row(*phi_, var::Phi, has_results_, wanted);
    Show_True_Row(*rho_, var::Rho, has_results_, wanted);
    warned_ = has_results_ ? Warned_Stretches(Desk_Check()) : std::vector<Cam_Stretch>{};
}

void frm_SizeCam::Show_Findings()
{
    if (Open_Findings(*this, Finding_Place::size)) {
        Close_Box();
        return;
    }
    Show_Truth();
    Draw_Cam_View();
}

void frm_SizeCam::Draw_Cam_View()
{
    auto& info = Control<QLabel>(QStringLiteral("pnl_info"));
    if (!has_results_ || design.cam.Camtype == "Barrel" || !Cam_Preview_Possible(design)) {
        cam_->Show({});
        info.clear();
        return;
    }
    cam_->Widen(Circle_Width(design));
    // A changed follower is drawn at once; the outline waits for its calculation.
    const std::vector<Ink> old =
        calculated_ ? std::vector<Ink>{} : std::vector<Ink>{Ink::cam, Ink::surface, Ink::path, Ink::warned};
    // With the true curves the outline is the true one too.
    std::shared_ptr<Design_State> truth;
    if (calculated_ && has_results_ && Control<QCheckBox>(QStringLiteral("chk_True")).isChecked())
        if (std::optional<Design_State> copy = With_True_Profile(design))
            truth = std::make_shared<Design_State>(std::move(*copy));
    cam_->Show([this, truth](Surface& surface) { Repaint_Cam_Preview(truth ? *truth : design, surface, warned_); },
               old);
    info.setText(To_Qt(Texts_of_Size(design).pnl_info));
}

void frm_SizeCam::Show_Views()
{
    const bool drawn = design.cam.Camtype != "Barrel";  // whose profile is not drawn
    cam_view_->setVisible(drawn && view_ != View::data);
    data_view_->setVisible(!drawn || view_ != View::cam);
}

void frm_SizeCam::Done()
{
    Reach(design, Mark::size);
    const std::string message = Axial_Cam_Message(design);
    if (!message.empty() && wanted_messages.axial_cam)
        wanted_messages.axial_cam = Show_Message(message, Buttons::OK_Cancel, Symbol::information) != Answer::Cancel;
    Refresh_Screens();
    accept();
}

void frm_SizeCam::Follow_Design()
{
    Fill();
    Refresh();
    has_results_ = design.flags.Sized;
    Set_Pending(!has_results_);
    Draw_Views();
    Draw_Cam_View();
}

void frm_SizeCam::Close_Box()
{
    Leave_Entry();
    if (calculated_)
        Done();
    else
        reject();
}

}  // namespace lobemax::screens
