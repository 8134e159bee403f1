// SPDX-License-Identifier: GPL-3.0-or-later
/// The widgets of a form table: every control is named, captioned and explained as its row says.
#pragma once

#include <functional>

#include "forms/form_table.h"
#include "screens/desk.h"
#include "screens/screen.h"

class QGridLayout;
class QGroupBox;

namespace lobemax::screens {

Entry* Make_Entry(const Form_Control& row);
QPushButton* Make_Button(const Form_Control& row, std::function<void()> pressed);
QCheckBox* Make_Check(const Form_Control& row, std::function<void(bool)> ticked);
QRadioButton* Make_Option(const Form_Control& row, std::function<void()> chosen);
QGroupBox* Make_Frame(const Form_Control& row);

/// The caption of a field, whose access key goes to it: "lbl_" and its name, of a read-out "cap_" and its name.
QLabel* Make_Caption(const Form_Control& row, QWidget* field);
/// Its unit, "unit_" and its name.
QLabel* Make_Unit(const Form_Control& row);

/// A line below the others of a grid: caption, field, unit. Without a caption the field takes its place, too.
void Add_Line(QGridLayout& grid, const Form_Control& row, QWidget* field);
/// Shows or hides such a line.
void Show_Line(const Screen& screen, std::string_view name, bool visible);

/// The units of the lines in the system in force.
template <class Row>
void Show_Units(const Screen& screen, std::span<const Row> rows)
{
    for (const Form_Control& row : rows)
        screen.Control<QLabel>(QStringLiteral("unit_") + To_Qt(row.name)).setText(To_Qt(Unit_Word(design, row.unit)));
}

/// The texts of a form in its entries.
template <class Form>
void Show_Texts(const Screen& screen, std::span<const Form_Field<Form>> rows, const Form& form)
{
    for (const Form_Field<Form>& row : rows)
        screen.Control<Entry>(To_Qt(row.name)).Show_Text(form.*row.text);
}

/// The texts of a form in its read-outs.
template <class Form>
void Show_Read_Outs(const Screen& screen, std::span<const Form_Field<Form>> rows, const Form& form)
{
    for (const Form_Field<Form>& row : rows)
        screen.Control<QLabel>(To_Qt(row.name)).setText(To_Qt(form.*row.text));
}

/// What stands in the entries.
template <class Form>
void Read_Texts(const Screen& screen, std::span<const Form_Field<Form>> rows, Form& form)
{
    for (const Form_Field<Form>& row : rows)
        form.*row.text = screen.Control<Entry>(To_Qt(row.name)).Text();
}

/// Takes an entry through the rule of its row and shows its text, and those of other fields that the rule changed.
/// @param form  what the controls hold
template <class Form>
Form_Entry Enter_Text(const Screen& screen, std::span<const Form_Field<Form>> rows, const Form_Field<Form>& row,
                      Form& form, const std::string& typed)
{
    const Form before = form;
    Form_Entry result = row.enter(design, form, typed);
    for (const Form_Field<Form>& other : rows)
        if (other.name != row.name && form.*other.text != before.*other.text)
            screen.Control<Entry>(To_Qt(other.name)).Show_Text(form.*other.text);
    form.*row.text = result.text;
    screen.Control<Entry>(To_Qt(row.name)).Show_Text(result.text);
    return result;
}

}  // namespace lobemax::screens
