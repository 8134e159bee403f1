// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Export_Question.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "forms/finding_words.h"
#include "forms/findings_form.h"
#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Export_Question(), name);
}

}  // namespace

frm_Export_Question::frm_Export_Question(const Design_State& exported, const lobemax::Check& check, QWidget* parent)
    : Screen(QStringLiteral("frm_Export_Question"), To_Qt(Words_of("frm_Export_Question").caption), parent)
{
    auto* const line = new QHBoxLayout;
    auto* const sign = new QLabel;
    constexpr int side = 32;
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side, side));
    line->addWidget(sign, 0, Qt::AlignTop);
    auto* const text = new QPlainTextEdit(To_Qt(Export_Question(exported, check)));
    text->setObjectName(QStringLiteral("txt_Question"));
    text->setToolTip(To_Qt(Words_of("txt_Question").tip));
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    line->addWidget(text, 1);
    Body().addLayout(line, 1);
    QCheckBox* const truth = Make_Check(Words_of("chk_True"), {});
    const True_Offer offer = Offer_of_True_Surface(exported, Desk_Limits());
    truth->setEnabled(offer.there);
    truth->setChecked(offer.sound);
    Body().addWidget(truth);
    QLabel* const words = Label(QStringLiteral("lbl_True"), To_Qt(offer.words), To_Qt(Words_of("lbl_True").tip));
    words->setWordWrap(true);
    Body().addWidget(words);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of("cmd_OK"), [this] { accept(); }));
    QPushButton* const cancel = Make_Button(Words_of("cmd_Cancel"), [this] { reject(); });
    cancel->setDefault(true);
    cancel->setFocus();
    buttons->addWidget(cancel);
    Foot().addLayout(buttons);
    Stay_Small();
    Open_at({560, 300});
}

bool frm_Export_Question::True_Surface() const
{
    return Control<QCheckBox>(QStringLiteral("chk_True")).isChecked();
}

void Export_from_Screen(Design_State& exported, std::string_view entry, QWidget* over, Profile_Rows rows)
{
    if (!Is_Profile_Export(entry)) {
        Run_Export(exported, entry);
        return;
    }
    const bool truth = rows == Profile_Rows::truth && Offer_of_True_Surface(exported, Desk_Limits()).sound;
    const lobemax::Check check = &exported == &design ? Desk_Check() : Check_Design(exported, Desk_Limits());
    if (truth || !check.Do_Not_Cut()) {
        Run_Export(exported, entry, rows);
        return;
    }
    frm_Export_Question question(exported, check, over);
    if (Run_Modal(question) != QDialog::Accepted)
        return;
    Run_Export(exported, entry, question.True_Surface() ? Profile_Rows::truth : Profile_Rows::program);
}

}  // namespace lobemax::screens
