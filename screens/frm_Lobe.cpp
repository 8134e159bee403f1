// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Lobe.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/text.h"
#include "core/variables.h"
#include "forms/lobe_form.h"
#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Lobe(), name);
}

}  // namespace

frm_Lobe::frm_Lobe(QWidget* parent) : Screen(QStringLiteral("frm_Lobe"), To_Qt(Words_of("frm_Lobe").caption), parent)
{
    auto* const grid = new QGridLayout;
    const Form_Control& words = Words_of("txt_Lift");
    Entry* const lift = Make_Entry(words);
    lift->Show_Text(Opening_Lift(design));
    lift->typed = lift->accepted = [this](const std::string&) { Show_Figures(); };
    Add_Line(*grid, words, lift);
    for (const Lobe_Row& row : Rows_of_Lobe()) {
        QLabel* const value = Label(To_Qt(row.name), {}, To_Qt(row.tip));
        value->setAlignment(Qt::AlignRight);
        Add_Line(*grid, row, value);
    }
    Body().addLayout(grid);
    QLabel* const note = Label(QStringLiteral("lbl_Note"), {}, To_Qt(Words_of("lbl_Note").tip));
    note->setWordWrap(true);
    note->setMinimumHeight(2 * note->fontMetrics().lineSpacing());
    note->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    Body().addWidget(note);
    Body().addStretch();
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Copy_Button(To_Qt(Words_of("cmd_Copy").caption)));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of("cmd_Close"), [this] { accept(); }));
    Foot().addLayout(buttons);
    Stay_Small();
    Open_at({360, 340});
    Control<QLabel>(QStringLiteral("unit_txt_Lift")).setText(To_Qt(Trim(design.plot.Var_Unit(var::S))));
    for (const Lobe_Row& row : Rows_of_Lobe())
        Control<QLabel>(QStringLiteral("unit_") + To_Qt(row.name)).setText(To_Qt(Unit_of_Lobe(design, row)));
    Show_Figures();
}

void frm_Lobe::Show_Figures()
{
    const Lobe_Result result = Lobe_at(design, Control<Entry>(QStringLiteral("txt_Lift")).Text());
    for (const Lobe_Row& row : Rows_of_Lobe())
        Control<QLabel>(To_Qt(row.name)).setText(To_Qt(result.texts.*row.text));
    Control<QLabel>(QStringLiteral("lbl_Note")).setText(To_Qt(result.note));
}

}  // namespace lobemax::screens
