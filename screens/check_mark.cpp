// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/check_mark.h"

#include <QEvent>
#include <QKeyEvent>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "forms/findings_form.h"
#include "screens/desk.h"
#include "screens/frm_Findings.h"
#include "screens/screen.h"

namespace lobemax::screens {

Check_Mark::Check_Mark(std::optional<Finding_Place> place, std::function<void()> pressed) : place_(place)
{
    setObjectName(QStringLiteral("cmd_Mark"));
    setFlat(true);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, [this, work = std::move(pressed)] {
        if (auto* const entry = dynamic_cast<Entry*>(window()->focusWidget()))
            entry->Leave();
        if (isEnabled())  // the entry may have left the calculation behind
            Run_Guarded(*this, work);
    });
}

void Check_Mark::Refresh()
{
    const lobemax::Check& check = Desk_Check();
    const Finding* const worst = place_ ? check.Worst_of(*place_) : check.Worst();
    words_ = To_Qt(Sign_and_Words(check, place_)).simplified();
    grave_ = worst != nullptr && Is_Grave(*worst);
    setToolTip(To_Qt(Mark_Tip(design, check, place_)));
    setAccessibleName(words_);
    Colour();
    Show_Words();
    updateGeometry();
}

void Check_Mark::Set_Pending(bool pending)
{
    setEnabled(!pending);
    if (words_.isEmpty()) {
        words_ = QStringLiteral("Not checked before the calculation");
        setAccessibleName(words_);
        Show_Words();
    }
}

/// What a button has around its words.
int Check_Mark::Frame() const
{
    return style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this) +
           2 * style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this) + 2;
}

QSize Check_Mark::sizeHint() const
{
    return {Frame() + fontMetrics().horizontalAdvance(words_) + 1, QPushButton::sizeHint().height()};
}

QSize Check_Mark::minimumSizeHint() const
{
    constexpr int letters = 14;
    const QSize whole = sizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * letters), whole.height()};
}

void Check_Mark::resizeEvent(QResizeEvent* event)
{
    QPushButton::resizeEvent(event);
    Show_Words();
}

void Check_Mark::changeEvent(QEvent* event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !colouring_)
        Colour();
}

void Check_Mark::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

void Check_Mark::Show_Words()
{
    const QString shown = fontMetrics().elidedText(words_, Qt::ElideRight, std::max(width() - Frame(), 0));
    setText(QString(shown).replace(QLatin1Char('&'), QLatin1String("&&")));
}

/// Red for what must not be cut so, on light and on dark ground; the sign says the same.
void Check_Mark::Colour()
{
    colouring_ = true;
    QPalette colours = parentWidget() != nullptr ? parentWidget()->palette() : QPalette();
    if (grave_) {
        constexpr int middle = 128;
        const bool dark = colours.color(QPalette::Window).lightness() < middle;
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            colours.setColor(group, QPalette::ButtonText, dark ? QColor(0xFF, 0x7B, 0x72) : QColor(0xB4, 0x23, 0x18));
    }
    setPalette(colours);
    colouring_ = false;
}

bool Open_Findings(QWidget& over, std::optional<Finding_Place> place)
{
    frm_Findings panel(place, &over);
    return Run_Modal(panel) == QDialog::Accepted && Chosen_Place().has_value();
}

}  // namespace lobemax::screens
