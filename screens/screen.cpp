// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/screen.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QStyle>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "forms/workflow.h"
#include "screens/desk.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

constexpr int wheel_notch = 120;  // eighths of a degree, one step of a usual wheel
constexpr int coarse = 10;        // steps that Shift makes of one

Modal_Player& Player()
{
    static Modal_Player player;
    return player;
}

Available_Geometry& Available()
{
    static Available_Geometry available;
    return available;
}

bool Is_Enter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// A button that Enter presses while it has the focus; no other control's Enter does.
class Push_Button : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (Is_Enter(*event))
            click();
        else
            QPushButton::keyPressEvent(event);
    }
};

class Scroll_Area : public QScrollArea {
public:
    explicit Scroll_Area(QWidget* content)
    {
        setWidget(content);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            if (now != nullptr && widget() != nullptr && widget()->isAncestorOf(now))
                ensureWidgetVisible(now, margin, margin);
        });
    }
    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override { return {160, 80}; }

private:
    static constexpr int margin = 8;
};

void Collect_Stops(const QLayout& layout, QList<QWidget*>& stops);

void Collect_Stops(QWidget& widget, QList<QWidget*>& stops)
{
    const Qt::FocusPolicy focus = widget.focusPolicy();
    // Of options only the chosen one takes the focus by Tab; which one that is changes.
    const bool option = qobject_cast<QAbstractButton*>(&widget) != nullptr && focus != Qt::NoFocus;
    if (option || (focus & Qt::TabFocus) != 0)
        stops.append(&widget);
    else if (const auto* const area = qobject_cast<QScrollArea*>(&widget))
        Collect_Stops(*area->widget(), stops);
    else if (widget.layout() != nullptr)
        Collect_Stops(*widget.layout(), stops);
}

void Collect_Stops(const QLayout& layout, QList<QWidget*>& stops)
{
    struct Place {
        int row;
        int column;
        QLayoutItem* item;
    };
    std::vector<Place> places;
    const auto* const grid = qobject_cast<const QGridLayout*>(&layout);
    for (int k = 0; k < layout.count(); ++k) {
        Place place{0, k, layout.itemAt(k)};
        int rows = 0;
        int columns = 0;
        if (grid != nullptr)
            grid->getItemPosition(k, &place.row, &place.column, &rows, &columns);
        places.push_back(place);
    }
    std::ranges::stable_sort(places, {}, [](const Place& place) { return std::pair(place.row, place.column); });
    for (const Place& place : places) {
        if (place.item->widget() != nullptr)
            Collect_Stops(*place.item->widget(), stops);
        else if (place.item->layout() != nullptr)
            Collect_Stops(*place.item->layout(), stops);
    }
}

template <class Control>
Control* Named(Control* control, const QString& name, const QString& tip)
{
    control->setObjectName(name);
    control->setToolTip(tip);
    return control;
}

/// A caption with an access key that no other caption of the screen has; where all its letters are taken, without one.
QString With_Free_Key(const QString& caption, const QWidget& screen, const QMenuBar& bar)
{
    QString taken;
    const auto take = [&taken](const QString& text) {
        if (const qsizetype at = text.indexOf(QLatin1Char('&')); at >= 0 && at + 1 < text.size())
            taken += text[at + 1].toUpper();
    };
    for (const auto* const button : screen.findChildren<QAbstractButton*>())
        take(button->text());
    for (const auto* const label : screen.findChildren<QLabel*>())
        take(label->text());
    for (const QAction* const action : bar.actions())
        take(action->text());
    for (qsizetype k = 0; k < caption.size(); ++k)
        if (!taken.contains(caption[k].toUpper()))
            return caption.left(k) + QLatin1Char('&') + caption.mid(k);
    return caption;
}

/// What a control is called in "Undo ...": its caption without the access key, else its tip's first sentence.
std::string Caption_of(const QObject& control)
{
    QString caption;
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control))
        caption = button->text();
    else if (const auto* const action = qobject_cast<const QAction*>(&control))
        caption = action->text();
    else if (const auto* const widget = qobject_cast<const QWidget*>(&control))
        caption = widget->toolTip().section(QLatin1Char('.'), 0, 0).section(QLatin1Char('\n'), 0, 0);
    caption.remove(QLatin1Char('&')).remove(QLatin1Char('<')).remove(QLatin1Char('>')).remove(QStringLiteral("..."));
    caption = caption.trimmed();
    return caption.isEmpty() ? "change" : From_Qt(caption);
}

/// Whatever a control has changed becomes a step: of a button under its own name, of an entry or a choice under that of
/// the value that came through the door.
void Remember_Step(const std::string& caption, bool command)
{
    const std::string edit = std::exchange(design.run.Last_Edit, {});
    if (Desk_History().Remember(command || edit.empty() ? caption : edit))
        Step_Taken();
}

}  // namespace

QString To_Qt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string From_Qt(const QString& text)
{
    return text.toStdString();
}

QString Element(const char* name, int index)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

bool Run_Guarded_Key(const QObject& control, const std::function<void()>& work)
{
    const auto* const widget = qobject_cast<const QWidget*>(&control);
    QString name = control.objectName();
    if (widget != nullptr && widget->window() != widget)
        name = widget->window()->objectName() + QLatin1Char('.') + name;
    return Trap(From_Qt(name), work);
}

bool Run_Guarded(const QObject& control, const std::function<void()>& work)
{
    const std::string caption = Caption_of(control);
    const bool command = qobject_cast<const QPushButton*>(&control) != nullptr;
    design.run.Last_Edit.clear();
    const bool went_well = Run_Guarded_Key(control, work);  // the control may be gone after it
    Remember_Step(caption, command);
    return went_well;
}

void On_Pick(QAction* entry, QObject* owner, std::function<void()> work)
{
    QObject::connect(entry, &QAction::triggered, owner, [entry, work = std::move(work)] { Run_Guarded(*entry, work); });
}

Entry::Entry(const QString& name, const QString& tip, QWidget* parent) : QLineEdit(parent)
{
    Named(this, name, tip);
    connect(this, &QLineEdit::textEdited, this, [this] {
        if (!std::exchange(dirty_, true))
            design.run.Last_Edit.clear();
        if (typed)
            Run_Guarded_Key(*this, [this] { typed(Text()); });
    });
    connect(this, &QLineEdit::textChanged, this, [this] { Mark_Cut({}); });
}

std::string Entry::Cut() const
{
    return cut_ != nullptr && cut_->isVisible() ? From_Qt(cut_->toolTip()) : std::string();
}

void Entry::Mark_Cut(const std::string& sentence)
{
    if (cut_ == nullptr && sentence.empty())
        return;
    if (cut_ == nullptr) {
        cut_ = addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning), QLineEdit::TrailingPosition);
        cut_->setObjectName(objectName() + QStringLiteral("_cut"));
    }
    cut_->setToolTip(To_Qt(sentence));
    cut_->setVisible(!sentence.empty());
    setAccessibleDescription(To_Qt(sentence));
}

void Entry::Show_Text(std::string_view text)
{
    setText(To_Qt(text));
    setCursorPosition(0);
    dirty_ = false;
    before_ = this->text();
}

void Entry::Leave()
{
    if (!std::exchange(dirty_, false))
        return;
    if (!accepted) {  // each key has changed the design; the whole entry is one step
        const std::string cut_short = numeric_ ? Cut_Sentence(design, Text()) : std::string();
        if (!cut_short.empty()) {
            setText(To_Qt(Text_as_Read(design, Text())));
            if (typed)
                Run_Guarded_Key(*this, [this] { typed(Text()); });
        }
        Mark_Cut(cut_short);
        Remember_Step(Caption_of(*this), false);
        return;
    }
    const QPointer<Entry> alive(this);
    std::string cut;
    const bool went_well = Run_Guarded(*this, [&] {
        if (numeric_) {
            cut = Cut_Sentence(design, Text());
            if (!cut.empty())
                setText(To_Qt(Text_as_Read(design, Text())));
        }
        accepted(Text());
    });
    if (!alive)
        return;
    Mark_Cut(cut);
    if (went_well)
        before_ = text();
    else
        Show_Text(From_Qt(before_));
}

void Entry::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
        selectAll();
    if (focused)
        focused(true);
}

void Entry::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (focused)
        focused(false);
    Leave();
}

void Entry::keyPressEvent(QKeyEvent* event)
{
    if (moved && Moves(*event))
        return;
    if (Is_Enter(*event)) {
        Leave();
        selectAll();
        return;  // Enter belongs to the field, not to the screen's default button
    }
    if (stepped && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        const int size = event->modifiers().testFlag(Qt::ShiftModifier) ? coarse : 1;
        Step(event->key() == Qt::Key_Up ? size : -size);
        return;
    }
    QLineEdit::keyPressEvent(event);
}

bool Entry::Moves(const QKeyEvent& event) const
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    const bool whole = selectedText() == text();
    // At the edge of the table the key does nothing, and the text stays selected.
    const auto move = [this](int columns, int rows) {
        moved(columns, rows);
        return true;
    };
    switch (event.key()) {
    case Qt::Key_Up:
        return move(0, -1);
    case Qt::Key_Down:
        return move(0, 1);
    case Qt::Key_Left:
        return (whole || (cursorPosition() == 0 && !hasSelectedText())) && move(-1, 0);
    case Qt::Key_Right:
        return (whole || (cursorPosition() == text().size() && !hasSelectedText())) && move(1, 0);
    default:
        return false;
    }
}

void Entry::wheelEvent(QWheelEvent* event)
{
    if (!stepped || !hasFocus() || !isEnabled()) {
        QLineEdit::wheelEvent(event);
        return;
    }
    const int size = event->modifiers().testFlag(Qt::ShiftModifier) ? coarse : 1;
    wheel_remainder_ += event->angleDelta().y();
    const int notches = wheel_remainder_ / wheel_notch;
    wheel_remainder_ %= wheel_notch;
    if (notches != 0)
        Step(notches * size);
    event->accept();
}

void Entry::Step(int steps)
{
    std::string next;
    if (!Run_Guarded(*this, [&] { next = stepped(Text(), steps); }) || next.empty())
        return;
    setText(To_Qt(next));
    dirty_ = true;
    Leave();
}

QPushButton* Button(const QString& name, const QString& text, std::function<void()> pressed, const QString& tip)
{
    QPushButton* const button = Named(new Push_Button(text), name, tip);
    button->setAutoDefault(false);
    if (pressed)
        QObject::connect(button, &QPushButton::clicked, button, [button, pressed = std::move(pressed)] {
            if (auto* const entry = dynamic_cast<Entry*>(button->window()->focusWidget()))
                entry->Leave();
            if (button->isEnabled())
                Run_Guarded(*button, pressed);
        });
    return button;
}

QPushButton* Copy_Button(const QString& text)
{
    return Button(QStringLiteral("cmd_Copy"), text,
                  [] { Show_Message(std::string(Copy_Advice), Buttons::OK, Symbol::information); });
}

QCheckBox* Check(const QString& name, const QString& text, std::function<void(bool)> ticked, const QString& tip)
{
    auto* const box = Named(new QCheckBox(text), name, tip);
    if (ticked)
        QObject::connect(box, &QCheckBox::clicked, box,
                         [box, ticked = std::move(ticked)](bool on) { Run_Guarded(*box, [&] { ticked(on); }); });
    return box;
}

QRadioButton* Option(const QString& name, const QString& text, std::function<void()> chosen, const QString& tip)
{
    auto* const option = Named(new QRadioButton(text), name, tip);
    if (!chosen)
        return option;
    const auto was_chosen = std::make_shared<bool>(false);
    QObject::connect(option, &QRadioButton::pressed, option, [=] { *was_chosen = option->isChecked(); });
    QObject::connect(option, &QRadioButton::clicked, option, [option, was_chosen, chosen = std::move(chosen)] {
        if (!*was_chosen)
            Run_Guarded(*option, chosen);
    });
    return option;
}

QLabel* Label(const QString& name, const QString& text, const QString& tip)
{
    return Named(new QLabel(text), name, tip);
}

QComboBox* Choice(const QString& name, const QStringList& entries, std::function<void(int)> picked, const QString& tip)
{
    auto* const list = Named(new QComboBox, name, tip);
    list->addItems(entries);
    if (picked)
        QObject::connect(list, &QComboBox::activated, list,
                         [list, picked = std::move(picked)](int index) { Run_Guarded(*list, [&] { picked(index); }); });
    return list;
}

Available_Geometry Use_Available_Geometry(Available_Geometry available)
{
    return std::exchange(Available(), std::move(available));
}

void Fit_to_Desktop(QWidget& window)
{
    constexpr int border = 2;
    const QRect room = Available() ? Available()(window) : window.screen()->availableGeometry();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QRect inside = room.adjusted(border, title, -border, -border);  // what the frame of the window leaves
    const QSize wanted = window.testAttribute(Qt::WA_Resized) ? window.size() : window.sizeHint();
    const QSize size = wanted.boundedTo(inside.size());
    if (size != window.size())
        window.resize(size);
    if (window.testAttribute(Qt::WA_Moved))
        window.move(std::clamp(window.x(), room.left(), room.left() + room.width() - size.width() - 2 * border),
                    std::clamp(window.y(), room.top(), room.top() + room.height() - size.height() - title - border));
}

QScrollArea* Scrolled(QWidget* content)
{
    return new Scroll_Area(content);
}

void Order_Tabs(QWidget& window)
{
    QList<QWidget*> stops;
    if (window.layout() != nullptr)
        Collect_Stops(*window.layout(), stops);
    for (int k = 1; k < stops.size(); ++k)
        QWidget::setTabOrder(stops[k - 1], stops[k]);
}

void Show_Undo(QAction& undo, QAction& redo)
{
    // The keys work whatever the menu showed last; with nothing to take back they do nothing.
    undo.setText(QStringLiteral("&") + To_Qt(Desk_History().Undo_Text()));
    redo.setText(QStringLiteral("&") + To_Qt(Desk_History().Redo_Text()));
}

Screen::Screen(const QString& name, const QString& title, QWidget* parent) : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    setSizeGripEnabled(true);
    const QByteArray place = QSettings().value(QStringLiteral("places/") + name).toByteArray();
    placed_ = !place.isEmpty() && restoreGeometry(place);
}

void Screen::Offer_Undo(QMenuBar* bar)
{
    if (bar == nullptr) {
        bar = new QMenuBar;
        layout()->setMenuBar(bar);
    }
    auto* const menu = new QMenu(With_Free_Key(QStringLiteral("Edit"), *this, *bar), bar);
    bar->insertMenu(bar->actions().value(0), menu);
    menu->setObjectName(QStringLiteral("mnu_Edit"));
    const auto add = [this, menu](const QString& name, const QKeySequence& key, bool (History::*step)()) {
        QAction* const action = menu->addAction(QString());
        action->setObjectName(name);
        action->setShortcut(key);
        On_Pick(action, this, [this, step] {
            Leave_Entry();
            if ((Desk_History().*step)())
                Follow_Design();
        });
        return action;
    };
    QAction* const undo = add(QStringLiteral("mnu_Undo"), QKeySequence::Undo, &History::Undo);
    QAction* const redo = add(QStringLiteral("mnu_Redo"), QKeySequence(QStringLiteral("Ctrl+Shift+Z")), &History::Redo);
    const auto refresh = [undo, redo] { Show_Undo(*undo, *redo); };
    connect(menu, &QMenu::aboutToShow, this, refresh);
    refresh();
}

void Screen::Open_at(const QSize& size)
{
    if (!placed_)
        resize(size);
}

void Screen::Make_Parts()
{
    if (body_ != nullptr)
        return;
    auto* const content = new QWidget;
    body_ = new QVBoxLayout(content);
    const QMargins margins = body_->contentsMargins();
    foot_ = new QVBoxLayout;
    foot_->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(Scrolled(content), 1);
    column->addLayout(foot_);
}

QVBoxLayout& Screen::Body()
{
    Make_Parts();
    return *body_;
}

QVBoxLayout& Screen::Foot()
{
    Make_Parts();
    return *foot_;
}

/// The least size that shows the content whole, without scrolling.
QSize Screen::Whole() const
{
    const QSize content = body_->parentWidget()->minimumSizeHint();
    const QSize foot = foot_->minimumSize();
    const int menu = layout()->menuBar() == nullptr ? 0 : layout()->menuBar()->sizeHint().height();
    return {std::max(content.width(), foot.width()), content.height() + foot.height() + layout()->spacing() + menu};
}

/// Gives the focus to the first control that takes it.
void Screen::Focus_First()
{
    for (QWidget* stop = nextInFocusChain(); stop != this; stop = stop->nextInFocusChain())
        if ((stop->focusPolicy() & Qt::TabFocus) != 0 && stop->isEnabled() && stop->isVisibleTo(this)) {
            stop->setFocus(Qt::TabFocusReason);
            return;
        }
}

void Screen::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        if (!std::exchange(tabs_ordered_, true)) {
            Order_Tabs(*this);
            if (focusWidget() == nullptr)
                Focus_First();
        }
        const bool full = design.run.Full_Screen && !stays_small_;
        setWindowState(full ? windowState() | Qt::WindowMaximized : windowState() & ~Qt::WindowMaximized);
        if (!full) {
            if (!placed_ && body_ != nullptr && testAttribute(Qt::WA_Resized))
                resize(size().expandedTo(Whole()));
            Fit_to_Desktop(*this);
        }
    }
    QDialog::setVisible(visible);
    if (auto* const entry = dynamic_cast<Entry*>(focusWidget()); visible && entry != nullptr)
        entry->selectAll();
}

Screen::~Screen()
{
    // The focus leaves its field while the window goes, and the screen that the field would tell is gone already.
    for (QObject* const control : findChildren<QObject*>()) {
        control->blockSignals(true);
        if (auto* const entry = dynamic_cast<Entry*>(control)) {
            entry->accepted = entry->typed = nullptr;
            entry->focused = nullptr;
        }
    }
    QSettings().setValue(QStringLiteral("places/") + objectName(), saveGeometry());
}

void Screen::Leave_Entry()
{
    if (auto* const entry = dynamic_cast<Entry*>(focusWidget()))
        entry->Leave();
}

void Screen::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Run_Guarded(*this, [this] { Close_Box(); });
}

void Screen::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        Run_Guarded(*this, [this] { Escape(); });
        return;
    }
    if (event->matches(QKeySequence::HelpContents)) {
        Open_Help(Help_Page_of(objectName()));
        return;
    }
    QDialog::keyPressEvent(event);
}

void Screen::No_Control(const QString& name) const
{
    throw std::out_of_range(From_Qt(objectName() + QStringLiteral(" has no control ") + name));
}

int Run_Modal(QDialog& screen)
{
    // Over its own windows alone, where it has any: a box without a parent waits for all.
    screen.setWindowModality(screen.parentWidget() != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
    if (!Player())
        return screen.exec();
    int result = QDialog::Rejected;
    QObject::connect(&screen, &QDialog::finished, &screen, [&result](int how) { result = how; });
    screen.show();
    Modal_Player player = Player();  // the player may install another while it plays
    player(screen);
    if (screen.isVisible())
        screen.done(QDialog::Rejected);
    return result;
}

Modal_Player Play_Modals(Modal_Player player)
{
    return std::exchange(Player(), std::move(player));
}

}  // namespace lobemax::screens
