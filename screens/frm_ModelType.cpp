// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_ModelType.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/messages.h"
#include "forms/model_form.h"
#include "forms/model_picture.h"
#include "paint/painter_surface.h"
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
    auto* const grid = new QGridLayout;
    constexpr int columns = 2;
    const int count = static_cast<int>(Model_Choices().size());
    for (int k = 0; k < count; ++k)
        grid->addWidget(Make_Choice(k), k / columns, k % columns);
    Body().addLayout(grid, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Cancel")), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Make_Button(Words_of(QStringLiteral("cmd_Done")), [this] { Next(); }));
    Foot().addLayout(buttons);
    Open_at({760, 800});
    Control<QRadioButton>(Element("opt_PickPlot", std::max(Choice_of_Model(design), 0))).setChecked(true);
}

QWidget* frm_ModelType::Make_Choice(int choice)
{
    auto* const frame = new QFrame;
    frame->setFrameShape(QFrame::StyledPanel);
    auto* const column = new QVBoxLayout(frame);
    auto* const picture = new paint::Drawing_View(Element("pct_Model", choice));
    const int model = Model_Choices()[static_cast<std::size_t>(choice)].model;
    picture->Show([model](Surface& surface) { Draw_Model(surface, model); });
    picture->setMinimumSize(180, 240);
    column->addWidget(picture, 1);
    auto* const row = new QHBoxLayout;
    QRadioButton* const option = Make_Option(Words_of(Element("opt_PickPlot", choice)), [] {});
    option->setAutoExclusive(false);  // the four stand in frames of their own: one group below
    row->addWidget(option, 1);
    const auto help = [choice] { Show_Message(Model_Help(choice), Buttons::OK, Symbol::information); };
    row->addWidget(Make_Button(Words_of(Element("cmd_Help", choice)), help));
    column->addLayout(row);
    QObject::connect(option, &QRadioButton::clicked, this, [this, choice] {
        for (int k = 0; k < static_cast<int>(Model_Choices().size()); ++k)
            Control<QRadioButton>(Element("opt_PickPlot", k)).setChecked(k == choice);
    });
    return frame;
}

void frm_ModelType::Next()
{
    for (int k = 0; k < static_cast<int>(Model_Choices().size()); ++k)
        if (Control<QRadioButton>(Element("opt_PickPlot", k)).isChecked()) {
            Choose_Model_Type(design, k);
            accept();
            return;
        }
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
