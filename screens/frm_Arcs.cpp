// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Arcs.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Arcs(), name);
}

}  // namespace

frm_Arcs::frm_Arcs(Arc_Form form, QWidget* parent)
    : Screen(QStringLiteral("frm_Arcs"), To_Qt(Words_of("frm_Arcs").caption), parent), form_(std::move(form))
{
    auto* const grid = new QGridLayout;
    for (const Form_Field<Arc_Form>& row : Fields_of_Arcs()) {
        Entry* const entry = Make_Entry(row);
        entry->typed = entry->accepted = [this](const std::string&) {
            Read_Texts(*this, Fields_of_Arcs(), form_);
            Refresh();
        };
        Add_Line(*grid, row, entry);
    }
    Body().addLayout(grid);
    const Form_Control& words = Words_of("lbl_Arcs");
    QLabel* const line = Label(To_Qt(words.name), {}, To_Qt(words.tip));
    line->setWordWrap(true);
    line->setMinimumHeight(2 * line->fontMetrics().lineSpacing());  // the longest takes two lines
    line->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    Body().addWidget(line);
    Body().addStretch();
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of("cmd_Cancel"), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of("cmd_OK"), [this] { accept(); }));
    Foot().addLayout(buttons);
    Stay_Small();
    Open_at({360, 280});
    Show_Texts(*this, Fields_of_Arcs(), form_);
    Show_Units(*this, Fields_of_Arcs());
    Refresh();
}

void frm_Arcs::Refresh()
{
    const Arcs_Read read = Read_Arcs(design, form_);
    Control<QLabel>(QStringLiteral("lbl_Arcs")).setText(To_Qt(read.line));
    Control<QPushButton>(QStringLiteral("cmd_OK")).setEnabled(read.cam.has_value());
}

}  // namespace lobemax::screens
