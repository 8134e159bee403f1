// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/status_panel.h"

#include <QHBoxLayout>
#include <QLabel>

#include "forms/workflow.h"
#include "screens/desk.h"
#include "screens/screen.h"

namespace lobemax::screens {

Status_Panel::Status_Panel(QWidget* parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("Pnl_Status"));
    setToolTip(To_Qt(Status_Tip));
    setFrameShape(QFrame::StyledPanel);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(6);
    const auto lamps = Status_Lamps(design);
    for (int i = 0; i < static_cast<int>(lamps.size()); ++i) {
        QLabel* const lamp = Label(Element("lbl_Status", i));
        const bool units = i + 1 == static_cast<int>(lamps.size());
        // A lit lamp has the colours of a selection; the units are plain, they are always there.
        if (!units)
            lamp->setStyleSheet(
                QStringLiteral("background: palette(highlight); color: palette(highlighted-text);"
                               "border-radius: 7px; padding: 2px 8px;"));
        else
            row->addStretch();
        row->addWidget(lamp);
        lamps_.append(lamp);
    }
    Refresh();
}

void Status_Panel::Refresh()
{
    const auto lamps = Status_Lamps(design);
    for (int i = 0; i < lamps_.size(); ++i) {
        const Lamp& lamp = lamps[static_cast<std::size_t>(i)];
        lamps_[i]->setText(To_Qt(lamp.text));
        lamps_[i]->setVisible(lamp.lit);
    }
}

}  // namespace lobemax::screens
