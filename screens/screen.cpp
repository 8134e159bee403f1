// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/screen.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTimer>
#include <QWheelEvent>
#include <stdexcept>
#include <utility>

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

Entry::Entry(const QString& name, const QString& tip, QWidget* parent) : QLineEdit(parent)
{
    Named(this, name, tip);
    connect(this, &QLineEdit::textEdited, this, [this] {
        dirty_ = true;
        if (typed)
            typed(Text());
    });
}

void Entry::Show_Text(std::string_view text)
{
    setText(To_Qt(text));
    setCursorPosition(0);
    dirty_ = false;
}

void Entry::Leave()
{
    if (!std::exchange(dirty_, false) || !accepted)
        return;
    accepted(Text());
}

void Entry::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
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
    if (const int notches = event->angleDelta().y() / wheel_notch; notches != 0)
        Step(notches * size);
    event->accept();
}

void Entry::Step(int steps)
{
    const std::string next = stepped(Text(), steps);
    if (next.empty())
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
        QObject::connect(button, &QPushButton::clicked, button, [pressed = std::move(pressed)] { pressed(); });
    return button;
}

QCheckBox* Check(const QString& name, const QString& text, std::function<void(bool)> ticked, const QString& tip)
{
    auto* const box = Named(new QCheckBox(text), name, tip);
    if (ticked)
        QObject::connect(box, &QCheckBox::clicked, box, [ticked = std::move(ticked)](bool on) { ticked(on); });
    return box;
}

QRadioButton* Option(const QString& name, const QString& text, std::function<void()> chosen, const QString& tip)
{
    auto* const option = Named(new QRadioButton(text), name, tip);
    if (chosen)
        QObject::connect(option, &QRadioButton::clicked, option, [chosen = std::move(chosen)] { chosen(); });
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
        QObject::connect(list, &QComboBox::activated, list, [picked = std::move(picked)](int index) { picked(index); });
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
    QSettings().setValue(QStringLiteral("places/") + objectName(), saveGeometry());
}

void Screen::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Close_Box();
}

void Screen::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        Close_Box();
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
