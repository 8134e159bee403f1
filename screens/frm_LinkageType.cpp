// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_LinkageType.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/linkage_form.h"
#include "forms/linkage_picture.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Linkage.h"
#include "screens/frm_SizeCam.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Linkage(), From_Qt(name));
}

}  // namespace

frm_LinkageType::frm_LinkageType(QWidget* parent)
    : Screen(QStringLiteral("frm_LinkageType"), To_Qt(Words_of(QStringLiteral("frm_LinkageType")).caption), parent)
{
    for (int k = 0; k < static_cast<int>(Linkage_Choices().size()); ++k) {
        const Linkage_Choice& linkage = Linkage_Choices()[static_cast<std::size_t>(k)];
        choices_.Add({.name = Element("pct_Type", k),
                      .title = To_Qt(linkage.title),
                      .drawing = [type = linkage.type](Surface& surface) { Draw_Linkage_Type(surface, type); },
                      .least = {320, 200},
                      .option = Words_of(Element("opt_Select", k)),
                      .help = Words_of(Element("cmd_Help", k)),
                      .help_text = [k] { return Linkage_Help(k); }});
    }
    Body().addLayout(choices_.Grid(), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Cancel")), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Done")), [this] { Next(); }));
    Foot().addLayout(buttons);
    Open_at({900, 720});
    choices_.Pick(Choice_of_Linkage(design));
}

void frm_LinkageType::Next()
{
    Choose_Linkage_Type(design, choices_.Picked());
    accept();
}

void Run_Linkage_Screens(QWidget* parent)
{
    bool to_size = false;
    {
        History::Transaction work(Desk_History());
        const bool drove = design.linkage.Drive_End_Effector;
        const bool sized = design.flags.Sized;
        while (true) {
            frm_LinkageType type(parent);
            if (Run_Modal(type) != QDialog::Accepted)
                return;
            frm_Linkage train(parent);
            if (Run_Modal(train) == QDialog::Accepted)
                break;
        }
        to_size = Linkage_Done(design, drove, sized);
        work.Commit("linkage");
    }
    if (!to_size)
        return;
    // Left by Back it gives the size of before back, and not the linkage: what was typed there stays.
    History::Transaction work(Desk_History());
    frm_SizeCam size(parent);
    if (Run_Modal(size) == QDialog::Accepted)
        work.Commit(From_Qt(size.windowTitle()));
}

}  // namespace lobemax::screens
