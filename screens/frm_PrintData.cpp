// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_PrintData.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/traps.h"
#include "paint/print.h"
#include "paint/report_pages.h"
#include "paint/save_picture.h"
#include "present/plot_engine.h"
#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(std::string_view name)
{
    return Control_of(Controls_of_Print(), name);
}

/// The pages of a choice's table, under the trap of what asks for them; none after a fault.
paint::Page_Maker Pages(const Print_Choice& choice, std::string_view routine)
{
    paint::Page_Maker pages;
    Trap(routine, [&] { pages = paint::Table_Pages(design, Print_Table(design, choice)); });
    return pages;
}

}  // namespace

void Print_to_Form(QTableWidget& grd_Data, const Table_in_Texts& table)
{
    const int columns = static_cast<int>(table.heads.size());
    grd_Data.clear();
    grd_Data.setRowCount(static_cast<int>(table.rows.size()) + 2);
    grd_Data.setColumnCount(columns);
    const QFontMetrics metrics(grd_Data.font());
    std::vector<int> widths;
    for (std::size_t k = 0; k < table.heads.size(); ++k) {
        auto* const head = new QTableWidgetItem(To_Qt(table.heads[k] + "\n" + table.units[k]));
        head->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grd_Data.setHorizontalHeaderItem(static_cast<int>(k), head);
        widths.push_back(std::max(metrics.horizontalAdvance(To_Qt(table.heads[k])),
                                  metrics.horizontalAdvance(To_Qt(table.units[k]))));
    }
    int at = 0;
    const auto add = [&](const std::vector<std::string>& cells, bool strong) {
        for (int k = 0; k < columns; ++k) {
            auto* const item = new QTableWidgetItem(To_Qt(cells[static_cast<std::size_t>(k)]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (strong) {
                QFont bold = grd_Data.font();
                bold.setBold(true);
                item->setFont(bold);
            }
            widths[static_cast<std::size_t>(k)] =
                std::max(widths[static_cast<std::size_t>(k)], metrics.horizontalAdvance(item->text()));
            grd_Data.setItem(at, k, item);
        }
        ++at;
    };
    for (const std::vector<std::string>& row : table.rows)
        add(row, false);
    add(table.smallest, true);
    add(table.largest, true);
    constexpr int margin = 32;
    constexpr int least = 84;
    for (int k = 0; k < columns; ++k)
        grd_Data.setColumnWidth(k, std::max(widths[static_cast<std::size_t>(k)] + margin, least));
}

bool Print_to_Printer(QWidget* parent, const Print_Choice& choice)
{
    constexpr std::string_view name = "Print_to_Printer";
    const paint::Page_Maker pages = Pages(choice, name);
    return pages && paint::Print_Pages(parent, pages, paint::Prints_on_Letter(design), name);
}

void Preview_Table(QWidget* parent, const Print_Choice& choice)
{
    constexpr std::string_view name = "Print_to_Printer";
    if (const paint::Page_Maker pages = Pages(choice, name))
        paint::Preview_Pages(parent, pages, paint::Prints_on_Letter(design), name);
}

void Save_Table_as_PDF(const Print_Choice& choice)
{
    if (const paint::Page_Maker pages = Pages(choice, "Print_to_File"))
        paint::Save_Pages_As("Save the table", design.identity.Model_Name + ".pdf", pages,
                             paint::Prints_on_Letter(design));
}

frm_PrintData::frm_PrintData(const Print_Choice& choice, QWidget* parent)
    : Screen(QStringLiteral("frm_PrintData"), QStringLiteral("Data table"), parent)
{
    auto* const grid = new QTableWidget;
    grid->setObjectName(QStringLiteral("grd_Data"));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setAlternatingRowColors(true);
    grid->setTabKeyNavigation(false);  // the arrow keys go through it, the tabulator past it
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setDefaultSectionSize(QFontMetrics(grid->font()).height() + 6);
    bool filled = false;
    Trap("Print_to_Form", [&] {
        Print_to_Form(*grid, Print_Table(design, choice));
        filled = true;
    });
    int width = 0;
    for (int k = 0; k < grid->columnCount(); ++k)
        width += grid->columnWidth(k);
    auto* const buttons = new QHBoxLayout;
    const auto add = [&](const char* name, std::function<void()> work) {
        QPushButton* const button = Make_Button(Words_of(name), std::move(work));
        buttons->addWidget(button);
        return button;
    };
    add("cmd_Another", [this] { reject(); });
    buttons->addStretch();
    buttons->addWidget(Copy_Button());
    for (QPushButton* const button : {add("cmd_Print", [this, choice] { Print_to_Printer(this, choice); }),
                                      add("cmd_Preview", [this, choice] { Preview_Table(this, choice); }),
                                      add("cmd_PDF", [choice] { Save_Table_as_PDF(choice); }),
                                      add("cmd_File", [choice] { Print_to_File(design, choice); })})
        button->setEnabled(filled);
    buttons->addStretch();
    add("cmd_Close", [this] { accept(); });
    Body().addWidget(Label(QStringLiteral("lbl_Header"), To_Qt(Plot_Header(design))));
    Body().addWidget(grid, 1);
    Foot().addLayout(buttons);
    constexpr int frame = 60;
    constexpr int height = 620;
    Open_at({std::max(width + frame, 640), height});
}

}  // namespace lobemax::screens
