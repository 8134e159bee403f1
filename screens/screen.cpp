// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/screen.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTimer>
#include <QWheelEvent>
#include <memory>
#include <stdexcept>
#include <utility>

#include "core/messages.h"
#include "core/traps.h"
#include "forms/workflow.h"

namespace lobemax::screens {

namespace {

constexpr int wheel_notch = 120;  // eighths of a degree, one step of a usual wheel
constexpr int coarse = 10;        // steps that Shift makes of one

Modal_Player& Player()
{
    static Modal_Player player;
    return player;
}

template <class Control>
Control* Named(Control* control, const QString& name, const QString& tip)
{
    control->setObjectName(name);
    control->setToolTip(tip);
    return control;
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

bool Run_Guarded(const QObject& control, const std::function<void()>& work)
{
    const auto* const widget = qobject_cast<const QWidget*>(&control);
    QString name = control.objectName();
    if (widget != nullptr && widget->window() != widget)
        name = widget->window()->objectName() + QLatin1Char('.') + name;
    return Trap(From_Qt(name), work);
}

void On_Pick(QAction* entry, QObject* owner, std::function<void()> work)
{
    QObject::connect(entry, &QAction::triggered, owner, [entry, work = std::move(work)] { Run_Guarded(*entry, work); });
}

Entry::Entry(const QString& name, const QString& tip, QWidget* parent) : QLineEdit(parent)
{
    Named(this, name, tip);
    connect(this, &QLineEdit::textEdited, this, [this] {
        dirty_ = true;
        if (typed)
            Run_Guarded(*this, [this] { typed(Text()); });
    });
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
    if (!std::exchange(dirty_, false) || !accepted)
        return;
    const QPointer<Entry> alive(this);
    const bool went_well = Run_Guarded(*this, [this] { accepted(Text()); });
    if (!alive)
        return;
    if (went_well)
        before_ = text();
    else
        Show_Text(From_Qt(before_));
}

void Entry::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
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
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
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
    auto* const button = Named(new QPushButton(text), name, tip);
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

Screen::Screen(const QString& name, const QString& title, QWidget* parent) : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    setSizeGripEnabled(true);
    const QByteArray place = QSettings().value(QStringLiteral("places/") + name).toByteArray();
    placed_ = !place.isEmpty() && restoreGeometry(place);
}

void Screen::Open_at(const QSize& size)
{
    if (!placed_)
        resize(size);
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
        Run_Guarded(*this, [this] { Close_Box(); });
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
    screen.setModal(true);
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
