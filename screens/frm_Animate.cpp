// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Animate.h"

#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "camgeom/cam_drawing.h"
#include "core/messages.h"
#include "forms/findings_form.h"
#include "forms/home_commands.h"
#include "forms/preference_choice.h"
#include "forms/print_form.h"
#include "forms/size_form.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Export_Question.h"
#include "screens/help_viewer.h"
#include "screens/long_run.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(std::string_view name)
{
    return Control_of(Controls_of_Animate(), name);
}

struct Path_Box {
    const char* name;
    Anim_Path path;
};

constexpr std::array path_boxes{Path_Box{"Chk_Follower", Anim_Path::follower},
                                Path_Box{"chk_Cutter", Anim_Path::cutter},
                                Path_Box{"chk_Camkey", Anim_Path::machine_zero}};

/// A drawing that a window repaints at any time: what cannot be drawn was told when it was chosen.
template <class Draw>
paint::Drawing Quietly(Draw draw)
{
    return [draw](Surface& surface) {
        try {
            draw(surface);
        } catch (const Fault&) {
            surface.Clear();
        }
    };
}

QAction* Add_Entry(QMenu& menu, QObject* owner, std::string_view name, std::function<void()> work)
{
    const Form_Control& words = Words_of(name);
    QAction* const entry = menu.addAction(To_Qt(words.caption));
    entry->setObjectName(To_Qt(words.name));
    On_Pick(entry, owner, std::move(work));
    return entry;
}

}  // namespace

frm_Animate::frm_Animate(QWidget* parent)
    : Screen(QStringLiteral("frm_Animate"), To_Qt(Words_of("frm_Animate").caption), parent),
      form_(Open_Animation(design)),
      stride_(Usual_Picture_Stride(design))
{
    auto* const row = new QHBoxLayout;
    row->addLayout(Make_Choices());
    row->addLayout(Make_Views(), 1);
    Body().addLayout(row);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Make_Menus();
    timer_ = new QTimer(this);
    connect(timer_, &QTimer::timeout, this, [this] {
        if (!Run_Guarded_Key(*this, [this] { Next_Frame(); }))
            Run(false);
    });
    Open_at({1060, 720});
    Show_View();
}

void frm_Animate::Make_Menus()
{
    auto* const bar = new QMenuBar;
    const auto menu = [bar](const char* name, QMenu* in = nullptr) {
        const QString caption = To_Qt(Words_of(name).caption);
        QMenu* const made = in == nullptr ? bar->addMenu(caption) : in->addMenu(caption);
        made->setObjectName(QString::fromUtf8(name));
        return made;
    };
    QMenu* const file = menu("mnu_File");
    Add_Entry(*file, this, "mnu_SavePictures", [this] { Save_Series(); });
    QMenu* const strides = menu("mnu_Stride", file);
    auto* const group = new QActionGroup(this);
    const std::vector<Picture_Stride> list = Picture_Strides(design);
    for (int k = 0; k < static_cast<int>(list.size()); ++k) {
        QAction* const entry = strides->addAction(To_Qt(list[static_cast<std::size_t>(k)].words));
        entry->setObjectName(Element("mnu_Stride", k));
        entry->setCheckable(true);
        entry->setChecked(k == stride_);
        group->addAction(entry);
        On_Pick(entry, this, [this, k] { stride_ = k; });
    }
    file->addSeparator();
    // The coordinates of the cam that is shown: a conjugate's are nowhere else.
    QMenu* const exports = menu("mnu_Export", file);
    for (const Export_Entry& entry : Export_Menu())
        if (entry.need == Export_Need::radial) {
            QAction* const action = exports->addAction(To_Qt(entry.caption));
            action->setObjectName(To_Qt(entry.name));
            On_Pick(action, this, [this, entry] { Export_from_Screen(view_design_, entry.name, this); });
        }
    QMenu* const zoom = menu("mnu_zoom");
    Add_Entry(*zoom, this, "mnu_plus", [this] { Show_Zoom(1); })->setShortcut(QKeySequence::ZoomIn);
    Add_Entry(*zoom, this, "mnu_minus", [this] { Show_Zoom(-1); })->setShortcut(QKeySequence::ZoomOut);
    Add_Entry(*zoom, this, "mnu_Normal", [this] { Show_Zoom(0); })->setShortcut(QStringLiteral("Ctrl+0"));
    QMenu* const help = bar->addMenu(QStringLiteral("&Help"));
    connect(help->addAction(QStringLiteral("&Animation")), &QAction::triggered, this,
            [] { Open_Help(QStringLiteral("animation")); });
    layout()->setMenuBar(bar);
    Offer_Undo(bar);
}

QLayout* frm_Animate::Make_Choices()
{
    auto* const column = new QVBoxLayout;
    column->addWidget(Make_Options("fra_Show", "opt_Show", 3, [this](int k) { Choose_Picture(k); }));
    column->addWidget(Make_Paths());
    auto* const pair = new QHBoxLayout;
    pair->addWidget(Make_Options("fra_Surface", "Opt_Surface", 2, [this](int k) {
        Choose_Surface(design, form_, k == 1);
        Changed();
    }));
    QLabel* const note = Label(QStringLiteral("lbl_Surface"), {}, To_Qt(Words_of("lbl_Surface").tip));
    note->setWordWrap(true);
    pair->addWidget(Make_Options("fra_Rotate", "opt_Rotate", 2, [this](int k) {
        Choose_Turning(design, k == 0);
        Changed();
    }));
    column->addLayout(pair);
    column->addWidget(note);
    column->addWidget(Make_Sizes());
    column->addWidget(Make_Motion());
    column->addStretch();
    return column;
}

QWidget* frm_Animate::Make_Options(const char* frame, const char* option, int count,
                                   const std::function<void(int)>& chosen)
{
    QGroupBox* const box = Make_Frame(Words_of(frame));
    auto* const column = new QVBoxLayout(box);
    for (int k = 0; k < count; ++k)
        column->addWidget(Make_Option(Words_of(From_Qt(Element(option, k))), [chosen, k] { chosen(k); }));
    return box;
}

QWidget* frm_Animate::Make_Paths()
{
    QGroupBox* const box = Make_Frame(Words_of("fra_Paths"));
    auto* const column = new QVBoxLayout(box);
    for (const Path_Box& entry : path_boxes)
        column->addWidget(Make_Check(Words_of(entry.name), [this, entry](bool ticked) {
            Choose_Path(design, entry.path, ticked);
            Draw_Rest();
            Refresh();
        }));
    return box;
}

QWidget* frm_Animate::Make_Sizes()
{
    QGroupBox* const box = Make_Frame(Words_of("fra_Sizes"));
    auto* const grid = new QGridLayout(box);
    for (const auto& row : Fields_of_Animate()) {
        Entry* const entry = Make_Entry(row);
        entry->stepped = [](const std::string& text, int steps) { return Step_Number(design, text, steps); };
        entry->accepted = [this, row](const std::string& text) { Enter(row, text); };
        Add_Line(*grid, row, entry);
    }
    return box;
}

QWidget* frm_Animate::Make_Motion()
{
    QGroupBox* const box = Make_Frame(Words_of("fra_Run"));
    auto* const grid = new QGridLayout(box);
    const Form_Control& words = Words_of("hsc_step");
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setObjectName(To_Qt(words.name));
    slider_->setToolTip(To_Qt(words.tip));
    slider_->setAccessibleName(To_Qt(words.tip));
    connect(slider_, &QSlider::valueChanged, this, [this](int point) {
        if (!updating_)
            Run_Guarded_Key(*slider_, [this, point] { Move_Slider(point); });
    });
    grid->addWidget(slider_, 0, 0, 1, 2);
    QLabel* const theta = Label(QStringLiteral("lbl_theta"), {}, To_Qt(Words_of("lbl_theta").tip));
    theta->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("359.875")));
    theta->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const angle = new QHBoxLayout;
    angle->addWidget(theta);
    angle->addWidget(Label(QStringLiteral("unit_theta"), QStringLiteral("deg")));
    angle->addStretch();
    QComboBox* const wait = Choice(
        QStringLiteral("cmb_wait"),
        [] {
            QStringList texts;
            for (const Long count : Anim_Waits)
                texts.append(QString::number(count));
            return texts;
        }(),
        [this](int place) {
            Choose_Wait(design, place);
            timer_->setInterval(Anim_Interval(Anim_Waits.at(static_cast<std::size_t>(place))));
        },
        To_Qt(Words_of("cmb_wait").tip));
    wait->setCurrentIndex(Anim_Wait_Place(design));
    auto* const speed = new QHBoxLayout;
    speed->addWidget(Make_Caption(Words_of("cmb_wait"), wait));
    speed->addWidget(wait, 1);
    grid->addLayout(angle, 1, 0);
    grid->addLayout(speed, 1, 1);
    grid->addWidget(Make_Button(Words_of("cmd_Step"), [this] { Step(); }), 2, 0);
    grid->addWidget(Make_Button(Words_of("cmd_Run"), [this] { Run(!Is_Running()); }), 2, 1);
    return box;
}

QLayout* frm_Animate::Make_Views()
{
    auto* const column = new QVBoxLayout;
    QLabel* const profile = Label(QStringLiteral("pnl_Profile"), {}, To_Qt(Words_of("pnl_Profile").tip));
    QFont bold = profile->font();
    bold.setWeight(QFont::DemiBold);
    profile->setFont(bold);
    column->addWidget(profile);
    cam_ = new paint::Drawing_View(QStringLiteral("pct_Cam"));
    cam_->setMinimumSize(320, 320);
    column->addWidget(cam_, 1);
    charts_ = new QWidget;
    auto* const charts = new QVBoxLayout(charts_);
    charts->setContentsMargins({});
    const auto add = [&](const char* chart_name, std::initializer_list<const char*> extremes) {
        auto* const chart = new paint::Chart(design, QString::fromUtf8(chart_name));
        auto* const lines = new QGridLayout;
        int place = 0;
        for (const char* const name : extremes) {  // two in a line, a gap between them
            const Form_Control& words = Words_of(name);
            QLabel* const value = Label(To_Qt(words.name));
            value->setFont(bold);
            lines->addWidget(Make_Caption(words, value), place / 2, place % 2 * 3);
            lines->addWidget(value, place / 2, place % 2 * 3 + 1);
            ++place;
        }
        lines->setColumnMinimumWidth(2, 14);
        lines->setColumnStretch(5, 1);
        charts->addLayout(lines);
        charts->addWidget(chart, 1);
        return chart;
    };
    phi_ = add("pct_Pang", {"lbl_Pamin", "lbl_Pamax"});
    rho_ = add("pct_Radcurv", {"lbl_Rhomin", "lbl_Rhomax", "lbl_Rholargest_pos", "lbl_Rholargest_neg"});
    column->addWidget(charts_, 1);
    QLabel* const initial = Label(QStringLiteral("pnl_initial"), To_Qt(Words_of("pnl_initial").caption));
    initial->setWordWrap(true);
    column->addWidget(initial);
    return column;
}

QLayout* frm_Animate::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Back", [this] {
        Run(false);
        design.flags.Skip_Profile = false;
        reject();
    });
    row->addStretch();
    auto* const progress = new QProgressBar;
    progress->setObjectName(QStringLiteral("pgs_Save"));
    progress->setMaximumWidth(200);
    row->addWidget(progress);
    add("cmd_Stop", [this] { stop_ = true; });
    row->addStretch();
    add("cmd_Redraw", [this] {
        Show_Sizes(design, form_);
        Show_View();
    });
    row->addWidget(Copy_Button(To_Qt(Words_of("cmd_Copy").caption)));
    add("cmd_AnimatePrint", [this] { paint::Print_Form(*this, Picture_Print_Note()); });
    row->addStretch();
    add("cmd_Done", [this] { Done(); });
    return row;
}

void frm_Animate::Enter(const Form_Field<Animate_Form>& row, const std::string& text)
{
    if (Enter_Text(*this, Fields_of_Animate(), row, form_, text).accepted)
        Changed();
    else
        Refresh();
}

void frm_Animate::Choose_Picture(int choice)
{
    const bool conjugate = form_.conjugate;
    Choose_Show(form_, choice);
    if (conjugate != form_.conjugate) {
        Show_View();
        return;
    }
    Draw_Rest();
    Refresh();
}

void frm_Animate::Changed()
{
    Size_Animated(design);
    Show_View();
}

void frm_Animate::Show_View()
{
    Show_Texts(*this, Fields_of_Animate(), form_);
    if (!Make_View(design, form_, view_design_) && form_.conjugate && design.flags.Sized) {
        form_.conjugate = false;
        Make_View(design, form_, view_design_);
    }
    warned_ = Warned_Stretches(Check_Design(view_design_, Desk_Limits()));
    Draw_Rest();
    Refresh();
}

void frm_Animate::Refresh()
{
    const Animate_Panels panels = Panels_of_Animate(design, form_);
    const auto on = [this](const char* name, int k) { Control<QRadioButton>(Element(name, k)).setChecked(true); };
    on("opt_Show", form_.summary ? 1 : form_.conjugate ? 2 : 0);
    on("Opt_Surface", form_.outer ? 1 : 0);
    on("opt_Rotate", design.cam.Rotflag > 0 ? 0 : 1);
    const Anim_Path path = Present_Path(design);
    for (const Path_Box& entry : path_boxes)
        Control<QCheckBox>(QString::fromUtf8(entry.name)).setChecked(entry.path == path);
    Show_Units(*this, Fields_of_Animate());
    const auto open = [this](const char* name, bool enabled) {
        Control<QWidget>(QString::fromUtf8(name)).setEnabled(enabled && !saving_);
    };
    for (const char* const name : {"hsc_step", "cmd_Step", "cmd_Run"})
        open(name, panels.motion);
    for (const char* const name : {"fra_Show", "fra_Paths", "fra_Surface", "fra_Rotate", "fra_Sizes", "cmb_wait",
                                   "cmd_Back", "cmd_Redraw", "cmd_Copy", "cmd_AnimatePrint"})
        open(name, true);
    open("cmd_Done", panels.done);
    Show_Line(*this, "txt_Follower", panels.follower_entry);
    Show_Line(*this, "txt_Offset", panels.offset_entry);
    cam_->setVisible(panels.picture);
    Control<QLabel>(QStringLiteral("pnl_initial")).setVisible(panels.picture);
    charts_->setVisible(panels.charts);
    Control<QPushButton>(QStringLiteral("cmd_Stop")).setVisible(saving_);
    Control<QProgressBar>(QStringLiteral("pgs_Save")).setVisible(saving_);
    findChild<QAction*>(QStringLiteral("mnu_SavePictures"))->setEnabled(panels.motion && !saving_);
    for (const char* const name : {"mnu_plus", "mnu_minus", "mnu_Normal"})
        findChild<QAction*>(QString::fromUtf8(name))->setEnabled(!saving_);
    const std::vector<bool> exports = Menu_Update(view_design_);
    for (std::size_t k = 0; k < exports.size(); ++k)
        if (auto* const action = findChild<QAction*>(To_Qt(Export_Menu()[k].name)))
            action->setEnabled(exports[k] && !saving_);
    Control<QLabel>(QStringLiteral("pnl_Profile"))
        .setText(view_design_.flags.Sized ? To_Qt(Profile_Name(view_design_)) : QStringLiteral("No cam: not sized"));
    auto& note = Control<QLabel>(QStringLiteral("lbl_Surface"));
    note.setText(To_Qt(Surface_Note(design, form_)));
    note.setVisible(!note.text().isEmpty());
    Show_Figures();
    status_->Refresh();
}

void frm_Animate::Show_Figures()
{
    const Animate_Figures figures = Figures_of_Animate(view_design_);
    for (const auto& [name, text] : {std::pair{"lbl_Pamin", &figures.lbl_Pamin},
                                     {"lbl_Pamax", &figures.lbl_Pamax},
                                     {"lbl_Rhomin", &figures.lbl_Rhomin},
                                     {"lbl_Rhomax", &figures.lbl_Rhomax},
                                     {"lbl_Rholargest_pos", &figures.lbl_Rholargest_pos},
                                     {"lbl_Rholargest_neg", &figures.lbl_Rholargest_neg}})
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(*text));
    if (!form_.summary)
        return;
    for (const auto& [chart, row] : {std::pair{phi_, int{var::Phi}}, std::pair{rho_, int{var::Rho}}}) {
        if (!view_design_.flags.Sized) {
            chart->Clear();
            continue;
        }
        paint::Show_Cycle(view_design_, *chart, row, row == var::Rho);
        chart->Mark_Extremes(row != var::Rho || !figures.clipped);
    }
}

bool frm_Animate::Picture_Possible()
{
    return view_design_.flags.Sized && Find_Base_Circle(view_design_);
}

void frm_Animate::Draw_Rest()
{
    Run(false);
    Follow_Settings(design, view_design_);
    frame_.reset();
    design.cam.Anim_Step = 0;
    Set_Slider(0);
    Control<QLabel>(QStringLiteral("lbl_theta")).setText(QStringLiteral("0"));
    cam_->Widen(Circle_Width(design));
    cam_->Show(Picture_Possible() ? Quietly([this](Surface& surface) { Anim_Rest(view_design_, surface, warned_); })
                                  : paint::Drawing());
}

void frm_Animate::Draw_Frame(int point)
{
    if (!Picture_Possible())
        return;
    Follow_Settings(design, view_design_);
    frame_ = point;
    Control<QLabel>(QStringLiteral("lbl_theta")).setText(To_Qt(Theta_Text(view_design_, point)));
    cam_->Show(Quietly([this, point](Surface& surface) { Anim_Frame(view_design_, surface, point, warned_); }));
}

void frm_Animate::Set_Slider(int point)
{
    updating_ = true;
    slider_->setMaximum(design.motion.Max_Data_Points_used);
    slider_->setPageStep(std::max<int>(Anim_Stride(design), 1));
    slider_->setValue(point);
    updating_ = false;
}

void frm_Animate::Step()
{
    Run(false);
    const int point = Take_Anim_Step(design);
    Draw_Frame(point);
    Set_Slider(point);
}

void frm_Animate::Move_Slider(int point)
{
    Run(false);
    design.cam.Anim_Step = point;
    if (point > 0)
        Draw_Frame(point);
    else
        Draw_Rest();
}

bool frm_Animate::Is_Running() const
{
    return run_.has_value();
}

void frm_Animate::Run(bool run)
{
    if (run == Is_Running())
        return;
    if (run) {
        run_.emplace(design);
        Control<QLabel>(QStringLiteral("lbl_theta")).setText(QStringLiteral("0"));
        timer_->start(Anim_Interval(Anim_Waits.at(static_cast<std::size_t>(Anim_Wait_Place(design)))));
    } else {
        timer_->stop();
        run_.reset();
    }
    auto& button = Control<QPushButton>(QStringLiteral("cmd_Run"));
    button.setText(run ? QStringLiteral("Stop (&R)") : To_Qt(Words_of("cmd_Run").caption));
}

void frm_Animate::Next_Frame()
{
    const std::optional<int> point = run_->Next();
    if (!point) {
        Draw_Rest();
        return;
    }
    design.cam.Anim_Step = *point;
    Draw_Frame(*point);
    Set_Slider(*point);
}

void frm_Animate::Show_Zoom(int steps)
{
    Zoom_Animation(design, steps);
    if (Is_Running())
        return;  // its next frame has it
    if (frame_)
        Draw_Frame(*frame_);
    else
        Draw_Rest();
}

void frm_Animate::Save_Series()
{
    Run(false);
    File_Dialog dialog;
    dialog.title = "Save the animation as numbered pictures";
    dialog.filter = "PNG (*.png)|*.png";
    dialog.suggestion = "frame.png";
    const Host& host = Installed_Host();
    const std::optional<std::string> name = host.save_dialog ? host.save_dialog(dialog) : std::nullopt;
    if (!name)
        return;
    stop_ = false;
    const Long_Run run(*this, saving_, [this] { Refresh(); });
    auto& bar = Control<QProgressBar>(QStringLiteral("pgs_Save"));
    bar.setValue(0);
    Control<QPushButton>(QStringLiteral("cmd_Stop")).setFocus();
    const int stride = Picture_Strides(design).at(static_cast<std::size_t>(stride_)).points;
    const QSize size = cam_->size();
    Save_Pictures(
        view_design_, *name, stride,
        [&](int point, const std::string& path, std::string& why) {
            return paint::Save_Drawing(
                [&](Surface& surface) { return Anim_Frame(view_design_, surface, point, warned_); }, size, path,
                palette(), paint::Screen_Picture_Scale, &why);
        },
        [&](int done, int count) {
            bar.setMaximum(count);
            bar.setValue(done);
            QApplication::processEvents();
            return stop_;
        });
}

void frm_Animate::Done()
{
    Run(false);
    if (wanted_messages.animation_done)
        wanted_messages.animation_done =
            Show_Message(Animate_Done_Message(), Buttons::OK_Cancel, Symbol::information) != Answer::Cancel;
    Refresh_Screens();
    accept();
}

void frm_Animate::Follow_Design()
{
    Follow_Settings(view_design_, design);  // a step holds the design as it was shown then
    Show_Sizes(design, form_);
    Show_View();
}

void frm_Animate::Escape()
{
    if (Is_Running())
        Run(false);
    else
        Close_Box();
}

void frm_Animate::Close_Box()
{
    if (saving_) {
        stop_ = true;
        return;
    }
    Run(false);
    Leave_Entry();
    if (design.flags.Sized)
        Done();
    else
        reject();
}

}  // namespace lobemax::screens
