// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Limits.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Limits(), name);
}

QString Box_of(Limit limit)
{
    return QStringLiteral("chk_") + To_Qt(Entry_of(limit).key);
}

QString Entry_Name(Limit limit)
{
    return QStringLiteral("txt_") + To_Qt(Entry_of(limit).key);
}

}  // namespace

frm_Limits::frm_Limits(QWidget* parent)
    : Screen(QStringLiteral("frm_Limits"), To_Qt(Words_of("frm_Limits").caption), parent), limits_(Desk_Limits())
{
    QLabel* const head = Label(QStringLiteral("lbl_Head"), To_Qt(Words_of("lbl_Head").tip));
    Body().addWidget(head);
    auto* const grid = new QGridLayout;
    grid->setColumnStretch(2, 1);
    for (const Limit_Entry& row : Limit_Table()) {
        const Limit limit = row.limit;
        const QString tip = To_Qt(Tip_of_Limit(design, limit));
        const int line = grid->rowCount();
        grid->addWidget(screens::Check(
                            Box_of(limit), To_Qt(row.caption), [this, limit](bool on) { Tick(limit, on); }, tip),
                        line, 0);
        auto* const entry = new Entry(Entry_Name(limit), tip);
        entry->setAccessibleName(To_Qt(row.caption));
        entry->accepted = [this, limit, entry](const std::string& text) {
            const Form_Entry result = Enter_Limit(design, limits_, limit, text);
            entry->Show_Text(result.text);
            if (result.takes_focus)
                QMetaObject::invokeMethod(
                    entry, [entry] { entry->setFocus(); }, Qt::QueuedConnection);
        };
        grid->addWidget(Label(QStringLiteral("lbl_") + To_Qt(row.key),
                              row.least ? QStringLiteral("at least") : QStringLiteral("at most"), tip),
                        line, 1);
        grid->addWidget(entry, line, 2);
        grid->addWidget(Label(QStringLiteral("unit_") + To_Qt(row.key), To_Qt(Unit_of_Limit(design, limit))), line, 3);
    }
    Body().addLayout(grid);
    Body().addStretch();
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](const char* name, std::function<void()> pressed) {
        buttons->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { reject(); });
    buttons->addStretch();
    add("cmd_Usual", [this] {
        limits_ = Limits();
        Fill();
    });
    add("cmd_Help", [] { Open_Help(QStringLiteral("findings")); });
    buttons->addStretch();
    add("cmd_OK", [this] { Use(); });
    Foot().addLayout(buttons);
    Stay_Small();
    Open_at({480, 540});
    Fill();
}

void frm_Limits::Fill()
{
    const auto lines = Lines_of_Limits(design, limits_);
    for (const Limit_Entry& row : Limit_Table()) {
        const Limit_Line& line = lines[static_cast<std::size_t>(row.limit)];
        Control<QCheckBox>(Box_of(row.limit)).setChecked(line.on);
        auto& entry = Control<Entry>(Entry_Name(row.limit));
        entry.setEnabled(line.on);
        entry.Show_Text(line.text);
    }
}

void frm_Limits::Tick(Limit limit, bool on)
{
    auto& entry = Control<Entry>(Entry_Name(limit));
    entry.setEnabled(on);
    if (!on) {
        limits_[limit].reset();
        return;
    }
    if (Turn_On(design, limits_, limit, entry.Text()))
        entry.Show_Text(Lines_of_Limits(design, limits_)[static_cast<std::size_t>(limit)].text);
    else
        entry.setFocus();
}

void frm_Limits::Use()
{
    std::array<Limit_Line, Limit_Count> lines;
    for (const Limit_Entry& row : Limit_Table())
        lines[static_cast<std::size_t>(row.limit)] = {Control<QCheckBox>(Box_of(row.limit)).isChecked(),
                                                      Control<Entry>(Entry_Name(row.limit)).Text()};
    Limit missing{};
    if (!Limits_Are_Whole(design, lines, missing)) {
        Control<Entry>(Entry_Name(missing)).setFocus();
        return;
    }
    Set_Desk_Limits(limits_);
    accept();
}

}  // namespace lobemax::screens
