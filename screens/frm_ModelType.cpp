// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_ModelType.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/model_form.h"
#include "forms/model_picture.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Model.h"
#include "screens/frm_SizeCam.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Model(), From_Qt(name));
}

}  // namespace

frm_ModelType::frm_ModelType(QWidget* parent)
    : Screen(QStringLiteral("frm_ModelType"), To_Qt(Words_of(QStringLiteral("frm_ModelType")).caption), parent)
{
    for (int k = 0; k < static_cast<int>(Model_Choices().size()); ++k) {
        const int model = Model_Choices()[static_cast<std::size_t>(k)].model;
        choices_.Add({.name = Element("pct_Model", k),
                      .title = {},
                      .drawing = [model](Surface& surface) { Draw_Model(surface, model); },
                      .least = {180, 240},
                      .option = Words_of(Element("opt_PickPlot", k)),
                      .help = Words_of(Element("cmd_Help", k)),
                      .help_text = [k] { return Model_Help(k); }});
    }
    Body().addLayout(choices_.Grid(), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Cancel")), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Done")), [this] { Next(); }));
    Foot().addLayout(buttons);
    Open_at({760, 800});
    choices_.Pick(std::max(Choice_of_Model(design), 0));
}

void frm_ModelType::Next()
{
    Choose_Model_Type(design, choices_.Picked());
    accept();
}

void Run_Vibration_Screens(QWidget* parent)
{
    History::Transaction work(Desk_History());
    while (true) {
        const bool asks = Asks_Model_Type(design);
        if (asks) {
            frm_ModelType type(parent);
            if (Run_Modal(type) != QDialog::Accepted)
                return;
        }
        frm_Model model(parent);
        if (Run_Modal(model) == QDialog::Accepted)
            break;
        if (!asks)
            return;
    }
    if (Model_Done(design)) {
        frm_SizeCam size(parent);
        if (Run_Modal(size) != QDialog::Accepted)
            return;  // without its profile a polydyne cam is none
    }
    work.Commit("vibration");
}

}  // namespace lobemax::screens
