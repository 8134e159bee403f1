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
#include <cmath>

#include "camgeom/cam_drawing.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "core/workflow.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "paint/print.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const QStringList keyways{QStringLiteral("12 O'clock"), QStringLiteral("3 O'clock"), QStringLiteral("6 O'clock"),
                          QStringLiteral("9 O'clock")};

/// A step of a number by the arrow keys: one in its last figure but one, at least a hundredth of it.
std::string Stepped(const std::string& text, int steps)
{
    const double value = Val(text);
    const double size = std::abs(value) < 1e-9 ? 1.0 : std::pow(10.0, std::floor(std::log10(std::abs(value))) - 1.0);
    const double next = std::round(value / size + steps) * size;
    return In_Number_Format(Shortest(Single(next)));
}

/// The message of an axial cam, once a run unless the user keeps it away.
bool axial_message_wanted = true;

}  // namespace

frm_SizeCam::frm_SizeCam(QWidget* parent)
    : Screen(QStringLiteral("frm_SizeCam"), QStringLiteral("Size the cam"), parent)
{
    auto* const column = new QVBoxLayout(this);
    Make_Menu();
    auto* const left = new QVBoxLayout;
    left->addWidget(Make_Choices());
    left->addWidget(Make_Fields());
    left->addStretch();
    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addWidget(Make_Views(), 1);
    column->addLayout(row, 1);
    column->addWidget(Make_Foot());
    status_ = new Status_Panel;
    column->addWidget(status_);
    Open_at({1060, 680});
    Fill();
    Refresh();
    Show_Data(!design.flags.Sized);
    if (design.flags.Sized) {
        Set_Pending(false);
        Draw_Views();
    } else {
        Set_Pending(true);
    }
}

void frm_SizeCam::Make_Menu()
{
    auto* const bar = new QMenuBar;
    QMenu* const help = bar->addMenu(QStringLiteral("&Help"));
    const auto add = [this, help](const char* name, const char* caption, std::string (*text)()) {
        QAction* const action = help->addAction(QString::fromUtf8(caption));
        action->setObjectName(QString::fromUtf8(name));
        connect(action, &QAction::triggered, this, [text] { Show_Message(text(), Buttons::OK, Symbol::information); });
    };
    add("mnu_arm", "Follower arm", Arm_Help);
    add("mnu_Roller", "Roller radius", Roller_Help);
    add("mnu_camsurface", "Cam surface", Cam_Surface_Help);
    add("mnu_startangle", "Starting angle", Start_Angle_Help);
    add("mnu_linear", "Linear cams", Linear_Help);
    add("mnu_barrel", "Barrel cams", Barrel_Help);
    connect(help->addAction(QStringLiteral("&Sizing the cam")), &QAction::triggered, this,
            [this] { Open_Help(QStringLiteral("sizing"), this); });
    layout()->setMenuBar(bar);
}

QWidget* frm_SizeCam::Make_Choices()
{
    auto* const choices = new QWidget;
    auto* const grid = new QGridLayout(choices);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto frame = [this, grid](const char* name, const QString& title, const char* option, int line, int place,
                                    const std::vector<std::pair<QString, QString>>& captions,
                                    const std::function<void(int)>& chosen) {
        auto* const box = new QGroupBox(title);
        box->setObjectName(QString::fromUtf8(name));
        auto* const box_column = new QVBoxLayout(box);
        for (int k = 0; k < static_cast<int>(captions.size()); ++k)
            box_column->addWidget(Option(
                Element(option, k), captions[static_cast<std::size_t>(k)].first,
                [this, chosen, k] {
                    chosen(k);
                    Refresh();
                    Changed();
                },
                captions[static_cast<std::size_t>(k)].second));
        box_column->addStretch();
        grid->addWidget(box, line, place);
    };
    frame("fra_CamType", QStringLiteral("Cam type"), "opt_CamType", 0, 0,
          {{QStringLiteral("Radial"), QStringLiteral("Follower moves radially")},
           {QStringLiteral("Axial-Groove"), QStringLiteral("Follower moves axially")},
           {QStringLiteral("Linear"), QStringLiteral("Cam moves past follower")},
           {QStringLiteral("Axial-Ribbed"), QStringLiteral("Follower moves axially")}},
          [](int k) {
              Choose_Cam(static_cast<Cam_Choice>(k));
              if (static_cast<Cam_Choice>(k) == Cam_Choice::Linear)
                  Show_Message(Linear_Help(), Buttons::OK, Symbol::information);
          });
    frame("fra_Folmotion", QStringLiteral("Follower motion"), "opt_Folmotion", 0, 1,
          {{QStringLiteral("Translating"), {}}, {QStringLiteral("Oscillating"), {}}},
          [](int k) { Choose_Follower_Motion(k == 0); });
    frame("fra_Foltype", QStringLiteral("Follower type"), "opt_Foltype", 0, 2,
          {{QStringLiteral("Roller"), {}}, {QStringLiteral("Flat"), {}}}, [](int k) { Choose_Follower(k == 0); });
    frame("fra_Rotate", QStringLiteral("Cam Rotation"), "opt_Rotate", 1, 0,
          {{QStringLiteral("Ccw"), {}}, {QStringLiteral("Cw"), {}}},
          [this](int k) { Choose_Rotation(k == 0, Control<QRadioButton>(Element("opt_topbot", 0)).isChecked()); });
    frame("pnl_ArmRotate", QStringLiteral("Arm Rotation"), "opt_ArmRotate", 1, 1,
          {{QStringLiteral("Ccw"), {}}, {QStringLiteral("Cw"), {}}}, [](int k) { Choose_Arm_Rotation(k == 0); });
    const QString track = QStringLiteral("Must calculate and export each track surface of cam separately");
    frame("fra_topbot", QStringLiteral("Cam Surface"), "opt_topbot", 1, 2,
          {{QStringLiteral("Inner"), track}, {QStringLiteral("Outer"), track}}, [](int k) { Choose_Track(k == 0); });
    return choices;
}

QWidget* frm_SizeCam::Make_Fields()
{
    auto* const fields = new QWidget;
    auto* const grid = new QGridLayout(fields);
    grid->setContentsMargins(0, 0, 0, 0);
    int line = 0;
    const auto add = [&](const char* name, const QString& caption, const QString& tip,
                         std::function<Size_Entry(std::string_view)> enter, bool always = false) {
        auto* const entry = new Entry(QString::fromUtf8(name), tip);
        auto* const label = new QLabel(caption);
        label->setObjectName(QStringLiteral("lbl_") + QString::fromUtf8(name));
        label->setBuddy(entry);
        entry->stepped = Stepped;
        entry->accepted = [this, entry, enter = std::move(enter), always](const std::string& text) {
            Trap("frm_SizeCam.fields", [&] {
                const Size_Entry result = enter(text);
                entry->Show_Text(result.text);
                if (result.takes_focus)
                    entry->setFocus();
                Model_Edited();
            });
            Refresh();
            Changed(always && design.cam.Camtype == "Barrel");
        };
        QLabel* const unit = Label(QStringLiteral("unit_") + QString::fromUtf8(name));
        grid->addWidget(label, line, 0);
        grid->addWidget(entry, line, 1);
        grid->addWidget(unit, line++, 2);
    };
    add("txt_Prime", QStringLiteral("Prime Radius"), QStringLiteral("Smallest radius to roller center"), Enter_Prime,
        true);
    add("txt_follower", QStringLiteral("Roller Radius"), QStringLiteral("Roller radius (not diameter)"), Enter_Roller);
    add("txt_Cutter", QStringLiteral("Cutter Radius"), QStringLiteral("Cutter radius for cutter compensation"),
        Enter_Cutter);
    add("txt_Offset", QStringLiteral("Offset"), QStringLiteral("Eccentricity of follower axis from cam center"),
        Enter_Offset);
    add("txt_folwrangle", QStringLiteral("Follower Angle"),
        QStringLiteral("Angle of translating follower motion versus x axis"), Enter_Follower_Angle);
    // A moved pivot is stored, and the arm tested against it as if its radius had been typed.
    const auto pivot = [this](void (*store)(std::string_view)) {
        return [this, store](std::string_view text) {
            store(text);
            auto& arm = Control<Entry>(QStringLiteral("txt_ArmRadius"));
            arm.Show_Text(Enter_Arm_Radius(arm.Text()).text);
            return Size_Entry{true, std::string(text)};
        };
    };
    add("txt_CLx", QStringLiteral("Pivot x"), QStringLiteral("x distance from cam center to arm pivot"),
        pivot(Enter_ArmX));
    add("txt_CLy", QStringLiteral("Pivot y"), QStringLiteral("y distance from cam center to arm pivot"),
        pivot(Enter_ArmY));
    add("txt_ArmRadius", QStringLiteral("Arm Radius"), QStringLiteral("Radius from arm pivot to roller center"),
        Enter_Arm_Radius);
    add("txt_ShiftAng", QStringLiteral("Starting Angle"), To_Qt(Start_Angle_Help()), Enter_Shift_Angle);
    QComboBox* const keyway = Choice(
        QStringLiteral("cmb_keyway"), keyways,
        [this](int k) {
            design.cam.Keyway_Text = From_Qt(keyways.at(k));
            Model_Edited();
            Changed();
        },
        QStringLiteral("Where the keyway points"));
    grid->addWidget(new QLabel(QStringLiteral("Keyway")), line, 0);
    grid->addWidget(keyway, line, 1);
    grid->setColumnStretch(1, 1);
    return fields;
}

QWidget* frm_SizeCam::Make_Views()
{
    auto* const views = new QWidget;
    auto* const column = new QVBoxLayout(views);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const extremes = new QHBoxLayout;
    for (const auto& [name, caption] :
         {std::pair{"lbl_Pamin", "Min Phi"}, std::pair{"lbl_Pamax", "Max Phi"}, std::pair{"lbl_Rhomin", "Min Rho +"},
          std::pair{"lbl_Rhominneg", "Min Rho -"}}) {
        extremes->addWidget(new QLabel(QString::fromUtf8(caption)));
        QLabel* const value = Label(QString::fromUtf8(name));
        QFont bold = value->font();
        bold.setWeight(QFont::DemiBold);
        value->setFont(bold);
        extremes->addWidget(value);
        extremes->addSpacing(14);
    }
    extremes->addStretch();
    column->addLayout(extremes);
    cam_ = new paint::Drawing_View(QStringLiteral("pct_Cam"));
    data_view_ = new QWidget;
    auto* const charts = new QVBoxLayout(data_view_);
    charts->setContentsMargins(0, 0, 0, 0);
    phi_ = new paint::Chart(QStringLiteral("pct_Pang"));
    rho_ = new paint::Chart(QStringLiteral("pct_Radcurv"));
    phi_->Set_Axis_Titles({}, QStringLiteral("Phi  deg"));
    charts->addWidget(phi_);
    charts->addWidget(rho_);
    auto* const row = new QHBoxLayout;
    row->addWidget(cam_, 1);
    row->addWidget(data_view_, 1);
    column->addLayout(row, 1);
    return views;
}

QWidget* frm_SizeCam::Make_Foot()
{
    auto* const foot = new QWidget;
    auto* const row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [row](QPushButton* button) { row->addWidget(button); };
    add(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    row->addStretch();
    QCheckBox* const autocalc = Check(QStringLiteral("chk_Autocalc"), QStringLiteral("&Autocalc"), {},
                                      QStringLiteral("Will calculate when any change is made"));
    row->addWidget(autocalc);
    add(Button(QStringLiteral("cmd_ShowCam"), QStringLiteral("Show &Cam"), [this] { Show_Data(false); }));
    add(Button(QStringLiteral("cmd_ShowData"), QStringLiteral("Show &Data"), [this] { Show_Data(true); }));
    add(Button(QStringLiteral("cmd_Copy"), QStringLiteral("Cop&y"), [] {
        Show_Message("Use the Alt-PrintScrn key combo to copy the screen to the clipboard", Buttons::OK,
                     Symbol::information);
    }));
    add(Button(QStringLiteral("cmd_PrintForm"), QStringLiteral("&Print"), [this] { paint::Print_Form(*this); }));
    row->addStretch();
    add(Button(QStringLiteral("cmd_Calc"), QStringLiteral("Ca&lculate"), [this] { Calculate(); }));
    add(Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { Done(); }));
    return foot;
}

void frm_SizeCam::Fill()
{
    const Filling filling(*this);
    const Size_Form form = Size_Form_of_Design();
    const auto text = [this](const char* name, const std::string& value) {
        Control<Entry>(QString::fromUtf8(name)).Show_Text(value);
    };
    text("txt_Prime", form.txt_Prime);
    text("txt_follower", form.txt_follower);
    text("txt_Cutter", form.txt_Cutter);
    text("txt_Offset", form.txt_Offset);
    text("txt_folwrangle", form.txt_folwrangle);
    text("txt_CLx", form.txt_CLx);
    text("txt_CLy", form.txt_CLy);
    text("txt_ArmRadius", form.txt_ArmRadius);
    text("txt_ShiftAng", form.txt_ShiftAng);
    Control<QComboBox>(QStringLiteral("cmb_keyway")).setCurrentText(To_Qt(form.cmb_keyway));
    Control<QRadioButton>(Element("opt_topbot", form.inner_track ? 0 : 1)).setChecked(true);
}

void frm_SizeCam::Refresh()
{
    const Cam_Group& c = design.cam;
    const Size_Panels panels = Set_Cam_Type_Panels();
    const auto on = [this](const char* name, int k) { Control<QRadioButton>(Element(name, k)).setChecked(true); };
    on("opt_CamType", static_cast<int>(Present_Cam_Choice()));
    on("opt_Folmotion", c.Translating ? 0 : 1);
    on("opt_Foltype", c.Followtype == 2 ? 1 : 0);
    on("opt_Rotate", c.Rotflag > 0 ? 0 : 1);
    on("opt_ArmRotate", c.ArmDirect > 0 ? 0 : 1);
    Control<QLabel>(QStringLiteral("lbl_txt_Prime")).setText(To_Qt(panels.fra_Prime));
    Control<QGroupBox>(QStringLiteral("fra_Rotate")).setTitle(To_Qt(panels.fra_Rotate));
    for (const int k : {0, 1})
        Control<QRadioButton>(Element("opt_Rotate", k)).setText(To_Qt(panels.opt_Rotate[k]));
    Control<QRadioButton>(Element("opt_Foltype", 1)).setEnabled(panels.flat_enabled);
    Control<QGroupBox>(QStringLiteral("fra_topbot")).setVisible(panels.track_frame);
    Control<QGroupBox>(QStringLiteral("pnl_ArmRotate")).setVisible(panels.oscillate_panel);
    const std::string length = Words_of_Units(design.identity.WhichUnit).length;
    const auto shown = [this, &length](const char* name, bool visible, const char* unit = nullptr) {
        const QString field = QString::fromUtf8(name);
        Control<Entry>(field).setVisible(visible);
        Control<QLabel>(QStringLiteral("lbl_") + field).setVisible(visible);
        auto& label = Control<QLabel>(QStringLiteral("unit_") + field);
        label.setVisible(visible);
        label.setText(To_Qt(unit == nullptr ? length : std::string(unit)));
    };
    shown("txt_Prime", true);
    shown("txt_follower", c.Followtype != 2);
    shown("txt_Cutter", true);
    // The offset of a flat face on an arm is that of the face from the pivot.
    shown("txt_Offset", panels.translate_panel || (panels.oscillate_panel && c.Followtype == 2));
    shown("txt_folwrangle", panels.translate_panel, "deg");
    shown("txt_CLx", panels.oscillate_panel);
    shown("txt_CLy", panels.oscillate_panel);
    shown("txt_ArmRadius", panels.oscillate_panel);
    shown("txt_ShiftAng", true, "deg");
    Control<Entry>(QStringLiteral("txt_CLy")).setEnabled(panels.arm_y_enabled);
    if (!panels.arm_y_enabled)
        Control<Entry>(QStringLiteral("txt_CLy")).Show_Text("0");
    Control<Entry>(QStringLiteral("txt_Prime")).Show_Text(Size_Form_of_Design().txt_Prime);
    if (!Control<Entry>(QStringLiteral("txt_Offset")).Dirty())
        Control<Entry>(QStringLiteral("txt_Offset")).Show_Text(Size_Form_of_Design().txt_Offset);
    status_->Refresh();
}

Size_Form frm_SizeCam::Form() const
{
    const auto chosen = [this](const char* name, int count) {
        for (int k = 0; k < count; ++k)
            if (Control<QRadioButton>(Element(name, k)).isChecked())
                return k;
        return 0;
    };
    const auto text = [this](const char* name) { return Control<Entry>(QString::fromUtf8(name)).Text(); };
    return {static_cast<Cam_Choice>(chosen("opt_CamType", 4)),
            chosen("opt_Folmotion", 2) == 0,
            chosen("opt_Foltype", 2) == 0,
            chosen("opt_Rotate", 2) == 0,
            chosen("opt_ArmRotate", 2) == 0,
            chosen("opt_topbot", 2) == 0,
            text("txt_Prime"),
            text("txt_follower"),
            text("txt_Cutter"),
            text("txt_Offset"),
            text("txt_folwrangle"),
            text("txt_CLx"),
            text("txt_CLy"),
            text("txt_ArmRadius"),
            text("txt_ShiftAng"),
            From_Qt(Control<QComboBox>(QStringLiteral("cmb_keyway")).currentText())};
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
    cam_->update();
}

void frm_SizeCam::Calculate()
{
    const Filling filling(*this);
    Size_Form form = Form();
    const bool sized = Calc_Size(form, Control<QCheckBox>(QStringLiteral("chk_Autocalc")).isChecked());
    Control<Entry>(QStringLiteral("txt_follower")).Show_Text(form.txt_follower);
    Control<Entry>(QStringLiteral("txt_Offset")).Show_Text(form.txt_Offset);
    Control<Entry>(QStringLiteral("txt_ArmRadius")).Show_Text(form.txt_ArmRadius);
    Refresh();
    Set_Pending(!sized);
    if (sized)
        Draw_Views();
}

void frm_SizeCam::Set_Pending(bool pending)
{
    calculated_ = !pending;
    Control<QPushButton>(QStringLiteral("cmd_Calc")).setEnabled(pending);
    for (const char* const name : {"cmd_Done", "cmd_ShowCam", "cmd_ShowData", "cmd_Copy", "cmd_PrintForm"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(!pending);
    status_->Refresh();
}

void frm_SizeCam::Draw_Views()
{
    const Cam_Group& c = design.cam;
    const auto& results = design.results.CalcData;
    const int last = design.motion.Max_Data_Points_used;
    const auto number = [](double value) { return To_Qt(Trim(FNRoundStr(value, 2))); };
    Control<QLabel>(QStringLiteral("lbl_Pamin")).setText(number(c.Phi_Min));
    Control<QLabel>(QStringLiteral("lbl_Pamax")).setText(number(c.Phi_Max));
    Control<QLabel>(QStringLiteral("lbl_Rhomin")).setText(To_Qt(Trim(c.Rho_Min_Pos_Text)));
    Control<QLabel>(QStringLiteral("lbl_Rhominneg")).setText(To_Qt(Trim(c.Rho_Min_Neg_Text)));
    const auto show = [&](paint::Chart& chart, const char* name, const QString& unit, int row) {
        std::vector<paint::Curve> curves{
            paint::Row_Curve(QString::fromUtf8(name), unit, results.Points(var::Angle), results.Points(row), 0, last)};
        // The calculation before this one stays behind as a faint curve.
        if (!chart.Curves().empty()) {
            paint::Curve before = chart.Curves().front();
            before.faint = true;
            curves.push_back(std::move(before));
        }
        chart.Update(std::move(curves));
    };
    const QString length = To_Qt(std::string(Words_of_Units(design.identity.WhichUnit).length));
    rho_->Set_Axis_Titles(QStringLiteral("Cam Angle (Deg)"), QStringLiteral("Rho  ") + length);
    show(*phi_, "Phi", QStringLiteral("deg"), var::Phi);
    show(*rho_, "Rho", length, var::Rho);
    cam_->Show([](Surface& surface) { Draw_Cam_Preview(surface); });
}

void frm_SizeCam::Show_Data(bool shown)
{
    const bool drawn = design.cam.Camtype != "Barrel";
    cam_->setVisible(drawn);
    data_view_->setVisible(shown || !drawn);
}

void frm_SizeCam::Done()
{
    design.flags.Sized = true;
    const std::string message = Axial_Cam_Message();
    if (!message.empty() && axial_message_wanted)
        axial_message_wanted = Show_Message(message, Buttons::OK_Cancel, Symbol::information) != Answer::Cancel;
    Refresh_Screens();
    accept();
}

void frm_SizeCam::Close_Box()
{
    if (calculated_)
        Done();
    else
        reject();
}

}  // namespace lobemax::screens
