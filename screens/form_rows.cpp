// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/form_rows.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

namespace lobemax::screens {

namespace {

QString Caption_Name(std::string_view name)
{
    return (name.starts_with("lbl_") ? QStringLiteral("cap_") : QStringLiteral("lbl_")) + To_Qt(name);
}

}  // namespace

Entry* Make_Entry(const Form_Control& row)
{
    return new Entry(To_Qt(row.name), To_Qt(row.tip));
}

QPushButton* Make_Button(const Form_Control& row, std::function<void()> pressed)
{
    return Button(To_Qt(row.name), To_Qt(row.caption), std::move(pressed), To_Qt(row.tip));
}

QCheckBox* Make_Check(const Form_Control& row, std::function<void(bool)> ticked)
{
    return Check(To_Qt(row.name), To_Qt(row.caption), std::move(ticked), To_Qt(row.tip));
}

QRadioButton* Make_Option(const Form_Control& row, std::function<void()> chosen)
{
    return Option(To_Qt(row.name), To_Qt(row.caption), std::move(chosen), To_Qt(row.tip));
}

QGroupBox* Make_Frame(const Form_Control& row)
{
    auto* const frame = new QGroupBox(To_Qt(row.caption));
    frame->setObjectName(To_Qt(row.name));
    frame->setToolTip(To_Qt(row.tip));
    return frame;
}

QLabel* Make_Caption(const Form_Control& row, QWidget* field)
{
    QLabel* const label = Label(Caption_Name(row.name), To_Qt(row.caption), To_Qt(row.tip));
    label->setBuddy(field);
    return label;
}

QLabel* Make_Unit(const Form_Control& row)
{
    return Label(QStringLiteral("unit_") + To_Qt(row.name));
}

void Add_Line(QGridLayout& grid, const Form_Control& row, QWidget* field)
{
    const int line = grid.rowCount();
    const bool alone = row.caption.empty();
    grid.addWidget(Make_Caption(row, field), line, 0);
    grid.addWidget(field, line, alone ? 0 : 1, 1, alone ? 2 : 1);
    grid.addWidget(Make_Unit(row), line, 2);
}

void Show_Line(const Screen& screen, std::string_view name, bool visible)
{
    for (const QString& part : {To_Qt(name), Caption_Name(name), QStringLiteral("unit_") + To_Qt(name)})
        screen.Control<QWidget>(part).setVisible(visible);
}

}  // namespace lobemax::screens
