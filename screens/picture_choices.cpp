// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/picture_choices.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/messages.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

Picture_Choices::Picture_Choices() : grid_(new QGridLayout) {}

void Picture_Choices::Add(const Picture& picture)
{
    QWidget* frame = nullptr;
    if (picture.title.isEmpty()) {
        auto* const plain = new QFrame;
        plain->setFrameShape(QFrame::StyledPanel);
        frame = plain;
    } else {
        frame = new QGroupBox(picture.title);
    }
    auto* const column = new QVBoxLayout(frame);
    auto* const view = new paint::Drawing_View(picture.name);
    view->Show(picture.drawing);
    view->setMinimumSize(picture.least);
    column->addWidget(view, 1);
    auto* const row = new QHBoxLayout;
    QRadioButton* const option = Make_Option(picture.option, [] {});
    option->setAutoExclusive(false);  // they stand in frames of their own: one group here
    if (!picture.title.isEmpty())
        option->setAccessibleName(picture.title);
    row->addWidget(option, 1);
    row->addWidget(Make_Button(picture.help,
                               [text = picture.help_text] { Show_Message(text(), Buttons::OK, Symbol::information); }));
    column->addLayout(row);
    constexpr int columns = 2;
    const int place = static_cast<int>(options_.size());
    grid_->addWidget(frame, place / columns, place % columns);
    options_.append(option);
    QObject::connect(option, &QRadioButton::clicked, option, [this, place] { Pick(place); });
}

void Picture_Choices::Pick(int choice)
{
    for (int k = 0; k < static_cast<int>(options_.size()); ++k)
        options_[k]->setChecked(k == choice);
}

int Picture_Choices::Picked() const
{
    for (int k = 0; k < static_cast<int>(options_.size()); ++k)
        if (options_[k]->isChecked())
            return k;
    return -1;
}

}  // namespace lobemax::screens
