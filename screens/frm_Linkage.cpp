// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Linkage.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/messages.h"
#include "core/text.h"
#include "edit/rungs.h"
#include "forms/preference_choice.h"
#include "forms/print_form.h"
#include "paint/painter_surface.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Linkplots.h"
#include "screens/frm_MassProp.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

/// The drawing. With Shift held a drag is told of instead of moving the view.
class Linkage_View : public paint::Drawing_View {
public:
    using Drawing_View::Drawing_View;

    std::function<void(const QPointF&)> gripped;
    std::function<void(const QPointF&)> dragged;
    std::function<void()> let_go;

    /// The place in the drawing's world of a position on the widget.
    World_Point World_at(const QPointF& position, const World_Window& window) const
    {
        QImage none(1, 1, QImage::Format_ARGB32);
        QPainter painter(&none);
        paint::Painter_Surface surface(painter, Area(), palette());
        surface.Widen(Circle_Width(design));
        surface.Scale(window.left, window.top, window.right, window.bottom);
        return surface.To_World(position);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ShiftModifier)) {
            dragging_ = true;
            gripped(event->position());
            return;
        }
        Drawing_View::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (dragging_)
            dragged(event->position());
        else
            Drawing_View::mouseMoveEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (dragging_ && event->button() == Qt::LeftButton) {
            dragging_ = false;
            let_go();
            return;
        }
        Drawing_View::mouseReleaseEvent(event);
    }

private:
    bool dragging_ = false;
};

namespace {

/// The bar of the steps: its arrows repeat while they are held, as fast as the speed control says.
class Step_Bar : public QScrollBar {
public:
    Step_Bar() : QScrollBar(Qt::Horizontal) {}

    std::function<int()> delay;
    std::function<void()> settled;  // let go

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        constexpr int first_wait = 250;
        QScrollBar::mousePressEvent(event);
        if (repeatAction() != SliderNoAction)
            setRepeatAction(repeatAction(), first_wait, delay());
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QScrollBar::mouseReleaseEvent(event);
        settled();
    }
};

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Linkage(), From_Qt(name));
}

const Form_Control& Words_of(const char* name)
{
    return Words_of(QString::fromUtf8(name));
}

template <class Numbers>
QStringList Texts_of(const Numbers& numbers)
{
    QStringList texts;
    for (const auto number : numbers)
        texts.append(QString::number(number));
    return texts;
}

constexpr std::array summary_columns{"lbl_Least", "lbl_LeastAt", "lbl_Largest", "lbl_LargestAt", "lbl_Unit"};
constexpr int summary_lines = 3;

QString In_Lines(const std::vector<std::string>& lines)
{
    QStringList texts;
    for (const std::string& line : lines)
        texts.append(To_Qt(line));
    return texts.join(QLatin1Char('\n'));
}

}  // namespace

frm_Linkage::frm_Linkage(QWidget* parent)
    : Screen(To_Qt(Screen_of_Linkage(design)), To_Qt(Title_of_Linkage(design)), parent), stride_(Usual_Stride(design))
{
    auto* const row = new QHBoxLayout;
    auto* const left = new QVBoxLayout;
    left->addWidget(Make_Links());
    left->addStretch();
    row->addLayout(left);
    row->addLayout(Make_Picture(), 1);
    row->addLayout(Make_Choices());
    Body().addLayout(row, 1);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Offer_Undo();
    timer_ = new QTimer(this);
    connect(timer_, &QTimer::timeout, this, [this] {
        if (!Run_Guarded_Key(*this, [this] { Next_Frame(); }))
            Play(false);
    });
    Open_at({1200, 760});
    design.linkage.Link_Anim_Step = 0;
    Fill();
    Refresh();
}

QWidget* frm_Linkage::Make_Links()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Links"));
    auto* const grid = new QGridLayout(frame);
    for (int k = 0; k < static_cast<int>(Fields_of_Linkage().size()); ++k) {
        const Linkout_Row& row = Fields_of_Linkage()[static_cast<std::size_t>(k)];
        Entry* const entry = Make_Entry(row);
        entry->setMinimumWidth(entry->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 8);
        entry->setMaximumWidth(entry->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 13);
        entry->accepted = [this, k](const std::string& text) { Enter(k, text); };
        Add_Line(*grid, row, entry);
    }
    const auto suggest = [this] {
        Suggest_Linkage(design);
        Fill();
        Calculate();
    };
    grid->addWidget(Make_Button(Words_of("cmd_Suggest"), suggest), grid->rowCount(), 0, 1, 3);
    return frame;
}

QLayout* frm_Linkage::Make_Picture()
{
    auto* const column = new QVBoxLayout;
    view_ = new Linkage_View(QStringLiteral("pct_Cam"));
    view_->setToolTip(To_Qt(Words_of("pct_Cam").tip));
    view_->setMinimumSize(320, 280);
    view_->gripped = [this](const QPointF& at) { Run_Guarded_Key(*view_, [this, at] { Grip(at); }); };
    view_->dragged = [this](const QPointF& to) { Run_Guarded_Key(*view_, [this, to] { Drag(to); }); };
    view_->let_go = [this] { Run_Guarded(*view_, [this] { Let_Go(); }); };
    column->addWidget(view_, 1);
    QLabel* const missing = Label(QStringLiteral("lbl_Missing"));
    missing->setAlignment(Qt::AlignCenter);
    missing->setFrameShape(QFrame::StyledPanel);
    missing->setMinimumSize(view_->minimumSize());
    column->addWidget(missing, 1);
    auto* const bar = new Step_Bar;
    bar->setObjectName(QStringLiteral("hsc_step"));
    bar->setToolTip(To_Qt(Words_of("hsc_step").tip));
    bar->setAccessibleName(To_Qt(Words_of("hsc_step").tip));
    bar->setMinimumHeight(20);
    bar->delay = [this] { return Delay(); };
    bar->settled = [this] { Draw(bar_->value()); };
    bar_ = bar;
    connect(bar_, &QScrollBar::valueChanged, this,
            [this](int value) { Run_Guarded_Key(*bar_, [this, value] { Move_Bar(value); }); });
    auto* const line = new QHBoxLayout;
    line->addWidget(bar_, 1);
    QLabel* const angle = Label(QStringLiteral("lbl_theta"), {}, To_Qt(Words_of("lbl_theta").tip));
    angle->setMinimumWidth(angle->fontMetrics().horizontalAdvance(QStringLiteral("359.875 deg")));
    line->addWidget(Make_Caption(Words_of("lbl_theta"), angle));
    line->addWidget(angle);
    column->addLayout(line);
    column->addLayout(Make_Animation());
    return column;
}

QLayout* frm_Linkage::Make_Animation()
{
    auto* const rows = new QVBoxLayout;
    auto* const run = new QHBoxLayout;
    run->addWidget(Make_Button(Words_of("cmd_Play"), [this] { Play(!Is_Playing()); }));
    run->addWidget(Make_Button(Words_of("cmd_Step"), [this] { Step(); }));
    run->addWidget(
        Make_Button(Words_of("cmd_Run"), [] { Show_Message(Run_Advice(), Buttons::OK, Symbol::information); }));
    run->addWidget(Make_Button(Words_of("cmd_Redraw"), [this] { New_Scene(); }));
    run->addStretch();
    QComboBox* const steps = Choice(
        QStringLiteral("cmb_Steps"), Texts_of(Step_Strides),
        [this](int place) { Pick_Steps(std::to_string(Step_Strides.at(static_cast<std::size_t>(place)))); },
        To_Qt(Words_of("cmb_Steps").tip));
    steps->setEditable(true);
    steps->setInsertPolicy(QComboBox::NoInsert);
    steps->setCompleter(nullptr);  // which would make 72 of a 7
    steps->setCurrentText(QString::number(stride_));
    steps->lineEdit()->setMaximumWidth(60);
    connect(steps->lineEdit(), &QLineEdit::editingFinished, this,
            [this, steps] { Run_Guarded_Key(*steps, [this, steps] { Pick_Steps(From_Qt(steps->currentText())); }); });
    run->addWidget(Make_Caption(Words_of("cmb_Steps"), steps));
    run->addWidget(steps);
    rows->addLayout(run);

    auto* const pace = new QHBoxLayout;
    auto* const speed = new QSlider(Qt::Horizontal);
    speed->setObjectName(QStringLiteral("hsc_speed"));
    speed->setToolTip(To_Qt(Words_of("hsc_speed").tip));
    speed->setRange(0, Fastest_Speed);
    speed->setPageStep(Fastest_Speed / 10);
    speed->setValue(Fastest_Speed / 2);
    speed->setMinimumWidth(80);
    connect(speed, &QSlider::valueChanged, this, [this] { timer_->setInterval(Delay()); });
    auto* const pace_of_speed = new QVBoxLayout;
    pace_of_speed->setSpacing(0);
    pace_of_speed->addWidget(Make_Caption(Words_of("hsc_speed"), speed), 0, Qt::AlignHCenter);
    pace_of_speed->addWidget(speed);
    pace->addLayout(pace_of_speed, 1);
    pace->addSpacing(10);
    QComboBox* const wait = Choice(
        QStringLiteral("cmb_wait"), Texts_of(Anim_Waits),
        [this](int range) {
            wait_range_ = range;
            timer_->setInterval(Delay());
        },
        To_Qt(Words_of("cmb_wait").tip));
    wait->setCurrentIndex(wait_range_);
    pace->addWidget(Make_Caption(Words_of("cmb_wait"), wait));
    pace->addWidget(wait);
    Entry* const cycles = Make_Entry(Words_of("txt_Cycles"));
    cycles->setMaximumWidth(60);
    cycles->accepted = [this, cycles](const std::string& text) {
        cycles->Show_Text(Edit_Cycles(design, cycles_, text).text);
    };
    cycles->Show_Text(std::to_string(cycles_));
    pace->addSpacing(6);
    QLabel* const turns = Make_Caption(Words_of("txt_Cycles"), cycles);
    turns->setMinimumWidth(turns->sizeHint().width() + 4);
    pace->addWidget(turns);
    pace->addWidget(cycles);
    rows->addLayout(pace);
    return rows;
}

QWidget* frm_Linkage::Make_Frame_of_Options(const char* frame_name, const char* option, int count,
                                            const std::function<void(int)>& chosen, bool changes)
{
    QGroupBox* const frame = Make_Frame(Words_of(frame_name));
    auto* const row = new QHBoxLayout(frame);
    for (int k = 0; k < count; ++k)
        row->addWidget(Make_Option(Words_of(Element(option, k)), [this, chosen, k, changes] {
            chosen(k);
            if (changes)
                Changed();
        }));
    row->addStretch();
    return frame;
}

QLayout* frm_Linkage::Make_Choices()
{
    auto* const column = new QVBoxLayout;
    for (const int stage : {1, 2})
        column->addWidget(Make_Frame_of_Options(stage == 1 ? "fra_Assemflag1" : "fra_Assemflag2",
                                                stage == 1 ? "opt_Assemflag1" : "opt_Assemflag2", 2,
                                                [stage](int k) { Choose_Assembly(design, stage, k == 1); }));
    column->addWidget(
        Make_Frame_of_Options("fra_SteveWatt", "opt_SteveWatt", 2, [](int k) { Choose_Stage_Mode(design, k == 1); }));
    column->addWidget(
        Make_Frame_of_Options("fra_Effector", "Opt_SVAJ", 2, [](int k) { Choose_Effector(design, k == 1); }));
    column->addWidget(Make_Frame_of_Options(
        "fra_Drag", "opt_Shift_Drag", 3, [](int) {}, false));
    column->addWidget(Make_Summary());
    QLabel* const notes = Label(QStringLiteral("lbl_Notes"));
    notes->setWordWrap(true);
    notes->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    notes->setMinimumWidth(220);
    column->addWidget(notes, 1);
    return column;
}

QWidget* frm_Linkage::Make_Summary()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Summary"));
    auto* const grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(12);
    const std::array heads{"Min", "at deg", "Max", "at deg"};
    for (int k = 0; k < static_cast<int>(heads.size()); ++k)
        grid->addWidget(new QLabel(QString::fromUtf8(heads[static_cast<std::size_t>(k)])), 0, k + 1, Qt::AlignRight);
    for (int line = 0; line < summary_lines; ++line) {
        // The unit stands under the name, so that the figures keep their room.
        grid->addWidget(Label(Element("lbl_Quantity", line)), 2 * line + 1, 0);
        for (int k = 0; k < static_cast<int>(summary_columns.size()); ++k) {
            const bool unit = k + 1 == static_cast<int>(summary_columns.size());
            grid->addWidget(Label(Element(summary_columns[static_cast<std::size_t>(k)], line)),
                            2 * line + (unit ? 2 : 1), unit ? 0 : k + 1, unit ? Qt::AlignLeft : Qt::AlignRight);
        }
    }
    grid->setColumnStretch(0, 1);
    return frame;
}

QLayout* frm_Linkage::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Copy_Button(To_Qt(Words_of("cmd_Copy").caption)));
    add("cmd_Print", [this] { paint::Print_Form(*this, Picture_Print_Note()); });
    row->addStretch();
    add("cmd_MassProp", [this] { Open_Masses(); });
    add("cmd_Plot", [this] { Open_Plots(); });
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Done", [this] { accept(); });
    return row;
}

void frm_Linkage::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    if (std::exchange(opened_, true))
        return;
    // No file keeps the results: they are worked out where the train is whole. What there is to tell the notes say.
    const auto first = [this] {
        Run_Guarded(*this, [this] {
            if (Has_Linkage(design) && !design.flags.Linkage_Calc) {
                Calc_Linkage_Quietly(design);
                design.run.Last_Edit = "calculation of the linkage";
            }
            New_Scene();
            Refresh();
        });
    };
    QMetaObject::invokeMethod(this, first, Qt::QueuedConnection);
}

void frm_Linkage::Fill()
{
    const Filling filling(*this);
    for (int k = 0; k < static_cast<int>(Fields_of_Linkage().size()); ++k)
        Control<Entry>(Element("txt_Linkout", k)).Show_Text(Linkout_Text(design, k));
}

void frm_Linkage::Refresh()
{
    for (int k = 0; k < static_cast<int>(Fields_of_Linkage().size()); ++k)
        Show_Line(*this, From_Qt(Element("txt_Linkout", k)), Linkout_Shown(design, k));
    Show_Units(*this, Fields_of_Linkage());
    const Linkage_Choices_Shown shown = Choices_of_Linkage(design);
    Control<QGroupBox>(QStringLiteral("fra_Assemflag1")).setTitle(To_Qt(shown.first_stage_title));
    Control<QGroupBox>(QStringLiteral("fra_Assemflag2")).setVisible(shown.second_stage);
    Control<QGroupBox>(QStringLiteral("fra_SteveWatt")).setVisible(shown.stage_mode);
    const auto on = [this](const char* option, bool second) {
        Control<QRadioButton>(Element(option, second ? 1 : 0)).setChecked(true);
    };
    on("opt_Assemflag1", Is_Crossed(design, 1));
    on("opt_Assemflag2", Is_Crossed(design, 2));
    on("opt_SteveWatt", design.linkage.Stage_Mode == "S");
    on("Opt_SVAJ", design.linkage.Drive_End_Effector);
    const std::vector<Draggable> points = Draggable_Points(design);
    bool picked = false;
    for (const Drag_Point point : {Drag_Point::O4, Drag_Point::O6, Drag_Point::slider}) {
        auto& option = Control<QRadioButton>(Element("opt_Shift_Drag", static_cast<int>(point)));
        const bool may = std::ranges::find(points, point, &Draggable::point) != points.end();
        option.setVisible(may);
        picked = picked || (may && option.isChecked());
    }
    if (!picked && !points.empty())
        Control<QRadioButton>(Element("opt_Shift_Drag", static_cast<int>(points.front().point))).setChecked(true);
    const std::string missing = What_to_Type(design);
    Control<QLabel>(QStringLiteral("lbl_Missing")).setText(To_Qt(missing));
    Control<QLabel>(QStringLiteral("lbl_Missing")).setVisible(!missing.empty());
    view_->setVisible(missing.empty());
    Control<QPushButton>(QStringLiteral("cmd_Suggest")).setEnabled(May_Suggest(design));
    for (const char* const name : {"cmd_Play", "cmd_Step", "cmd_Redraw"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(window_.has_value());
    bar_->setEnabled(window_.has_value());
    for (const char* const name : {"cmd_Plot", "cmd_MassProp"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(design.flags.Linkage_Calc);
    Show_Figures();
    status_->Refresh();
}

void frm_Linkage::Show_Figures()
{
    const auto lines = Effector_Lines(design);
    for (int line = 0; line < summary_lines; ++line) {
        const Effector_Line& figures = lines[static_cast<std::size_t>(line)];
        Control<QLabel>(Element("lbl_Quantity", line)).setText(To_Qt(figures.name));
        const std::array texts{figures.least, figures.least_at, figures.largest, figures.largest_at, figures.unit};
        for (std::size_t k = 0; k < texts.size(); ++k)
            Control<QLabel>(Element(summary_columns[k], line)).setText(To_Qt(texts[k]));
    }
    Control<QLabel>(QStringLiteral("lbl_Notes")).setText(In_Lines(Notes_of_Linkage(design)));
}

void frm_Linkage::Changed()
{
    New_Scene();
    Refresh();
}

void frm_Linkage::Enter(int index, const std::string& text)
{
    const Form_Entry entry = Edit_Linkout(design, index, text);
    Fill();
    Control<Entry>(Element("txt_Linkout", index)).Show_Text(entry.text);
    if (entry.accepted)
        Changed();
}

void frm_Linkage::Calculate()
{
    Run_Linkage(design);
    Fill();  // Link 1 and Theta1 follow the pivots
    Changed();
}

void frm_Linkage::New_Scene()
{
    window_ = Window_of_Linkage(design);
    view_->Widen(Circle_Width(design));
    const Filling filling(*this);
    updating_ = true;
    bar_->setMaximum(design.motion.Max_Data_Points_used);
    bar_->setSingleStep(stride_);
    bar_->setPageStep(std::max(stride_, design.motion.Max_Data_Points_used / 12));
    updating_ = false;
    Draw(std::min(frame_, int{design.motion.Max_Data_Points_used}));
}

void frm_Linkage::Draw(int frame)
{
    frame_ = frame;
    Control<QLabel>(QStringLiteral("lbl_theta"))
        .setText(To_Qt(In_Number_Format(design, Shortest(Single(frame * design.motion.Deltatheta)))) +
                 QStringLiteral(" deg"));
    if (!window_) {
        view_->Show({});
        return;
    }
    const auto picture = [frame](Surface& surface) {
        try {
            Link_Anim_Frame(design, surface, frame, Drawn_Cam::of_before);
        } catch (const Fault&) {  // told as the scene was set: a repaint does not tell it again
        }
    };
    view_->Show(picture, design.flags.Sized ? std::vector<Ink>{} : std::vector<Ink>{Ink::cam, Ink::prime, Ink::key});
}

void frm_Linkage::Set_Bar(int value)
{
    updating_ = true;
    bar_->setValue(value);
    updating_ = false;
}

void frm_Linkage::Step()
{
    const int frame = Take_Step(design, stride_);
    Draw(frame);
    Set_Bar(frame);
}

void frm_Linkage::Move_Bar(int value)
{
    if (Move_Step(design, value, updating_))
        Draw(value);
}

int frm_Linkage::Delay() const
{
    return Anim_Interval(Wait_of(wait_range_, Control<QSlider>(QStringLiteral("hsc_speed")).value()));
}

bool frm_Linkage::Is_Playing() const
{
    return timer_->isActive();
}

void frm_Linkage::Play(bool play)
{
    if (play) {
        turns_left_ = cycles_;
        Begin_Anew_at_End(design);
        timer_->start(Delay());
    } else {
        timer_->stop();
    }
    Control<QPushButton>(QStringLiteral("cmd_Play"))
        .setText(play ? QStringLiteral("Stop (&y)") : To_Qt(Words_of("cmd_Play").caption));
}

void frm_Linkage::Next_Frame()
{
    if (window_ && Play_On(design, turns_left_))
        Step();
    else
        Play(false);
}

void frm_Linkage::Pick_Steps(const std::string& text)
{
    auto& list = Control<QComboBox>(QStringLiteral("cmb_Steps"));
    if (text == std::to_string(stride_))
        return;
    list.setCurrentText(QString::number(stride_));  // the box takes the focus: its text is not read a second time
    if (const std::optional<int> stride = Stride_of(text))
        stride_ = *stride;
    list.setCurrentText(QString::number(stride_));
    bar_->setSingleStep(stride_);
}

Drag_Point frm_Linkage::Picked_Point() const
{
    for (const Drag_Point point : {Drag_Point::O4, Drag_Point::O6})
        if (Control<QRadioButton>(Element("opt_Shift_Drag", static_cast<int>(point))).isChecked())
            return point;
    return Drag_Point::slider;
}

void frm_Linkage::Grip(const QPointF& at)
{
    const std::vector<Draggable> points = Draggable_Points(design);
    const auto found = std::ranges::find(points, Picked_Point(), &Draggable::point);
    gripped_ = window_.has_value() && found != points.end();
    if (!gripped_)
        return;
    // The point keeps its distance from the pointer: it does not jump to where the button went down.
    const World_Point pointer = view_->World_at(at, *window_);
    grip_at_ = {found->at.x - pointer.x, found->at.y + pointer.y};  // drawings have y downward
}

void frm_Linkage::Drag(const QPointF& to)
{
    if (!gripped_)
        return;
    const World_Point pointer = view_->World_at(to, *window_);
    const World_Point beside = view_->World_at(to + QPointF(1.0, 0.0), *window_);
    if (!Move_Point(design, Picked_Point(), {pointer.x + grip_at_.x, grip_at_.y - pointer.y},
                    std::abs(beside.x - pointer.x)))
        return;
    Calc_Linkage_Quietly(design);
    Fill();
    Refresh();
    Draw(frame_);  // in the window as it is: the ground does not move under the hand
}

void frm_Linkage::Let_Go()
{
    if (!std::exchange(gripped_, false))
        return;
    if (!design.flags.Linkage_Calc)
        Run_Linkage(design);  // tells why
    const std::vector<Draggable> points = Draggable_Points(design);
    if (const auto moved = std::ranges::find(points, Picked_Point(), &Draggable::point); moved != points.end())
        design.run.Last_Edit = moved->name;  // one step, however many places it went through
    Refresh();
}

void frm_Linkage::Open_Plots()
{
    Play(false);
    frm_Linkplots plots(this);
    Run_Modal(plots);
}

void frm_Linkage::Open_Masses()
{
    Play(false);
    History::Transaction work(Desk_History());
    frm_MassProp masses(this);
    if (Run_Modal(masses) == QDialog::Accepted)
        work.Commit(From_Qt(masses.windowTitle()));
    Refresh();
}

void frm_Linkage::Follow_Design()
{
    setWindowTitle(To_Qt(Title_of_Linkage(design)));
    Fill();
    Changed();
}

void frm_Linkage::Close_Box()
{
    Leave_Entry();
    if (design.flags.Linkage_Calc)
        accept();
    else
        reject();
}

}  // namespace lobemax::screens
