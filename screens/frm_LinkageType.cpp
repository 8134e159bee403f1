// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_LinkageType.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/messages.h"
#include "forms/linkage_form.h"
#include "forms/linkage_picture.h"
#include "paint/painter_surface.h"
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

int Count()
{
    return static_cast<int>(Linkage_Choices().size());
}

}  // namespace

frm_LinkageType::frm_LinkageType(QWidget* parent)
    : Screen(QStringLiteral("frm_LinkageType"), To_Qt(Words_of(QStringLiteral("frm_LinkageType")).caption), parent)
{
    auto* const grid = new QGridLayout;
    constexpr int columns = 2;
    for (int k = 0; k < Count(); ++k)
        grid->addWidget(Make_Choice(k), k / columns, k % columns);
    Body().addLayout(grid, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Cancel")), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Done")), [this] { Next(); }));
    Foot().addLayout(buttons);
    Open_at({900, 720});
    Control<QRadioButton>(Element("opt_Select", Choice_of_Linkage(design))).setChecked(true);
}

QWidget* frm_LinkageType::Make_Choice(int choice)
{
    const Linkage_Choice& linkage = Linkage_Choices()[static_cast<std::size_t>(choice)];
    auto* const frame = new QGroupBox(To_Qt(linkage.title));
    frame->setObjectName(Element("fra_Type", choice));
    auto* const column = new QVBoxLayout(frame);
    auto* const picture = new paint::Drawing_View(Element("pct_Type", choice));
    picture->Show([type = linkage.type](Surface& surface) { Draw_Linkage_Type(surface, type); });
    picture->setMinimumSize(320, 200);
    column->addWidget(picture, 1);
    auto* const row = new QHBoxLayout;
    QRadioButton* const option = Make_Option(Words_of(Element("opt_Select", choice)), [] {});
    option->setAutoExclusive(false);  // the four stand in frames of their own: one group below
    option->setAccessibleName(To_Qt(linkage.title));
    row->addWidget(option, 1);
    const auto help = [choice] { Show_Message(Linkage_Help(choice), Buttons::OK, Symbol::information); };
    row->addWidget(Make_Button(Words_of(Element("cmd_Help", choice)), help));
    column->addLayout(row);
    QObject::connect(option, &QRadioButton::clicked, this, [this, choice] {
        for (int k = 0; k < Count(); ++k)
            Control<QRadioButton>(Element("opt_Select", k)).setChecked(k == choice);
    });
    return frame;
}

void frm_LinkageType::Next()
{
    for (int k = 0; k < Count(); ++k)
        if (Control<QRadioButton>(Element("opt_Select", k)).isChecked()) {
            Choose_Linkage_Type(design, k);
            accept();
            return;
        }
}

void Run_Linkage_Screens(QWidget* parent)
{
    bool to_size = false;
    {
        History::Transaction work(Desk_History());
        const bool drove = design.linkage.Drive_End_Effector;
        while (true) {
            frm_LinkageType type(parent);
            if (Run_Modal(type) != QDialog::Accepted)
                return;
            frm_Linkage train(parent);
            if (Run_Modal(train) == QDialog::Accepted)
                break;
        }
        to_size = Linkage_Done(design, drove);
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
