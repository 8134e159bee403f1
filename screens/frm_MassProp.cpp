// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_MassProp.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "linkage/linkage_kinematics.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Massprop(), name);
}

QString Name_of(const Massprop_Column& column, int link)
{
    return QStringLiteral("%1(%2)").arg(To_Qt(column.name)).arg(link);
}

}  // namespace

frm_MassProp::frm_MassProp(QWidget* parent)
    : Screen(To_Qt(Screen_of_Massprop(design)), To_Qt(Words_of("frm_MassProp").caption), parent)
{
    Body().addLayout(Make_Table());
    Body().addWidget(Label(QStringLiteral("lbl_Note"), To_Qt(Massprop_Note)));
    auto* const row = new QHBoxLayout;
    row->addWidget(Make_Speeds(), 0, Qt::AlignTop);
    row->addWidget(Make_Results(), 0, Qt::AlignTop);
    QLabel* const notes = Label(QStringLiteral("lbl_Notes"));
    notes->setWordWrap(true);
    notes->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    row->addWidget(notes, 1);
    Body().addLayout(row);
    Body().addStretch();
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Offer_Undo();
    Open_at({900, 460});
    Control<QRadioButton>(Element("opt_Max_Avg", 0)).setChecked(true);
    Fill();
    Refresh();
}

QLayout* frm_MassProp::Make_Table()
{
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(14);
    int place = 1;
    for (const Massprop_Column& column : Columns_of_Massprop()) {
        QLabel* const head =
            Label(QStringLiteral("lbl_") + To_Qt(column.name), To_Qt(Heading_of(design, column)), To_Qt(column.tip));
        head->setWordWrap(true);
        head->setAlignment(Qt::AlignBottom | Qt::AlignLeft);
        head->setMinimumWidth(120);
        grid->addWidget(head, 0, place);
        grid->addWidget(Make_Unit(column), 1, place);
        grid->setColumnStretch(place, 1);
        ++place;
    }
    for (int link = First_Moving_Link; link <= Last_Link(design); ++link) {
        grid->addWidget(Label(Element("lbl_Segment", link), To_Qt(Segment_of_Link(design, link))), link, 0);
        place = 1;
        for (const Massprop_Column& column : Columns_of_Massprop()) {
            const bool open = Massprop_Open(design, column.column, link);
            const QString words = To_Qt(Segment_of_Link(design, link)) + QStringLiteral(": ") + To_Qt(column.tip);
            auto* const entry = new Entry(
                Name_of(column, link), open ? words : QStringLiteral("A slider does not turn: its mass alone counts"));
            entry->setAccessibleName(To_Qt(column.caption) + QLatin1Char(' ') + QString::number(link));
            entry->setEnabled(open);
            entry->accepted = [this, entry, which = column.column, link](const std::string& text) {
                const Form_Entry result = Edit_Massprop(design, which, link, text);
                entry->Show_Text(result.text);
                if (!result.accepted)
                    return;
                Show_Results({});
                Refresh();
            };
            grid->addWidget(entry, link, place++);
        }
    }
    return grid;
}

QWidget* frm_MassProp::Make_Speeds()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Speeds"));
    auto* const column = new QVBoxLayout(frame);
    for (const char* const name : {"opt_Max_Avg(0)", "opt_Max_Avg(1)"})
        column->addWidget(Make_Option(Words_of(name), [this] { Show_Results({}); }));
    return frame;
}

QWidget* frm_MassProp::Make_Results()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Results"));
    auto* const grid = new QGridLayout(frame);
    for (const auto& row : Read_Outs_of_Massprop()) {
        QLabel* const value = Label(To_Qt(row.name), {}, To_Qt(row.tip));
        value->setMinimumWidth(90);
        value->setAlignment(Qt::AlignRight);
        Add_Line(*grid, row, value);
    }
    return frame;
}

QLayout* frm_MassProp::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    row->addStretch();
    row->addWidget(Copy_Button(To_Qt(Words_of("cmd_Copy").caption)));
    add("cmd_Print", [this] { paint::Print_Form(*this); });
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Done", [this] { accept(); });
    return row;
}

void frm_MassProp::Fill()
{
    const Filling filling(*this);
    for (int link = First_Moving_Link; link <= Last_Link(design); ++link)
        for (const Massprop_Column& column : Columns_of_Massprop())
            Control<Entry>(Name_of(column, link)).Show_Text(Massprop_Text(design, column.column, link));
}

void frm_MassProp::Refresh()
{
    Show_Units(*this, Columns_of_Massprop());
    Show_Units(*this, Read_Outs_of_Massprop());
    status_->Refresh();
}

void frm_MassProp::Show_Results(const Massprop_Result& result)
{
    Show_Read_Outs(*this, Read_Outs_of_Massprop(), result.texts);
    QStringList notes;
    for (const std::string& line : result.notes)
        notes.append(To_Qt(line));
    Control<QLabel>(QStringLiteral("lbl_Notes")).setText(notes.join(QLatin1Char('\n')));
}

Speed_Choice frm_MassProp::Choice_of_Speeds() const
{
    const bool peak = Control<QRadioButton>(Element("opt_Max_Avg", 0)).isChecked();
    return peak ? Speed_Choice::peak : Speed_Choice::average;
}

void frm_MassProp::Calculate()
{
    Show_Results(Calc_Massprop(design, Choice_of_Speeds()));
    Refresh();
}

void frm_MassProp::Follow_Design()
{
    Fill();
    Show_Results({});
    Refresh();
}

void frm_MassProp::Close_Box()
{
    Leave_Entry();
    accept();
}

}  // namespace lobemax::screens
