// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/dark_palette.h"

#include <QApplication>
#include <QPalette>

namespace lobemax::screens {

void Use_Dark_Palette()
{
    QPalette dark;
    const QColor window(43, 45, 48);
    const QColor base(30, 31, 34);
    const QColor text(223, 225, 229);
    dark.setColor(QPalette::Window, window);
    dark.setColor(QPalette::WindowText, text);
    dark.setColor(QPalette::Base, base);
    dark.setColor(QPalette::AlternateBase, window);
    dark.setColor(QPalette::ToolTipBase, window);
    dark.setColor(QPalette::ToolTipText, text);
    dark.setColor(QPalette::Text, text);
    dark.setColor(QPalette::PlaceholderText, QColor(160, 163, 170));
    dark.setColor(QPalette::Button, QColor(57, 59, 64));
    dark.setColor(QPalette::ButtonText, text);
    dark.setColor(QPalette::Mid, QColor(110, 112, 118));
    dark.setColor(QPalette::Highlight, QColor(53, 116, 196));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(120, 170, 240));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(122, 126, 133));
    QApplication::setPalette(dark);
}

}  // namespace lobemax::screens
