// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Title.h"
#include "screens/desk.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

namespace lobemax::screens {

frm_Title::frm_Title(QWidget* parent) : Screen(QStringLiteral("frm_Title"), To_Qt(design.run.Program_Title), parent)
{
    constexpr int picture_size = 168;
    auto* const picture = Label(QStringLiteral("pct_Title"));
    picture->setPixmap(QIcon(QStringLiteral(":/lobemax.svg")).pixmap(picture_size, picture_size));
    auto* const name = Label(QStringLiteral("lbl_Program"), To_Qt(design.identity.Program_Name));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 2.4);
    large.setWeight(QFont::DemiBold);
    name->setFont(large);
    auto* const purpose =
        Label(QStringLiteral("lbl_Purpose"), QStringLiteral("Design and analysis of cam-follower mechanisms"));
    auto* const release = Label(
        QStringLiteral("lbl_Release"),
        QStringLiteral("Release %1   %2").arg(To_Qt(design.identity.Release_Str), To_Qt(design.identity.Release_Date)));
    release->setEnabled(false);  // quieter than the rest
    auto* const start = Button(
        QStringLiteral("cmd_Start"), QStringLiteral("&Start"), [this] { accept(); },
        QStringLiteral("Go on to the Home screen"));
    auto* const abort = Button(
        QStringLiteral("cmd_Abort"), QStringLiteral("&Abort"), [this] { reject(); },
        QStringLiteral("Leave the program"));
    start->setDefault(true);

    auto* const words = new QVBoxLayout;
    words->addStretch();
    words->addWidget(name);
    words->addWidget(purpose);
    words->addWidget(release);
    words->addStretch();
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(start);
    buttons->addWidget(abort);
    words->addLayout(buttons);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(28, 24, 28, 20);
    row->setSpacing(28);
    row->addWidget(picture);
    row->addLayout(words, 1);
    start->setFocus();
    Stay_Small();
}

}  // namespace lobemax::screens
