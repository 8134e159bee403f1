// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Quit.h"
#include "screens/desk.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace lobemax::screens {

frm_Quit::frm_Quit(QWidget* parent)
    : Screen(QStringLiteral("frm_Quit"), QStringLiteral("Quit %1").arg(To_Qt(design.identity.Program_Name)), parent)
{
    auto* const question = Label(QStringLiteral("lbl_Question"),
                                 QStringLiteral("Do you want to quit %1?").arg(To_Qt(design.identity.Program_Name)));
    QFont large = question->font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    question->setFont(large);
    auto* const yes = Button(
        QStringLiteral("cmd_YesQuit"), QStringLiteral("&Yes, quit"), [this] { accept(); },
        QStringLiteral("End the program"));
    auto* const no = Button(
        QStringLiteral("cmd_NoQuit"), QStringLiteral("&No, go back"), [this] { reject(); },
        QStringLiteral("Return to the program"));
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton(yes, QDialogButtonBox::YesRole);
    buttons->addButton(no, QDialogButtonBox::NoRole);
    no->setDefault(true);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(20);
    column->addWidget(question);
    column->addWidget(buttons);
    no->setFocus();
    Stay_Small();
}

}  // namespace lobemax::screens
