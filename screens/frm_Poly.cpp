// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Poly.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "paint/print.h"
#include "present/report.h"
#include "screens/desk.h"

namespace lobemax::screens {

namespace {

QStringList In_Qt(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list.append(To_Qt(text));
    return list;
}

/// A table as a list behind the print of the form.
paint::Printed_List Printed(std::string_view title, const Report_Table& table)
{
    paint::Printed_List list{To_Qt(Trim(title)), {}, {}};
    for (const Report_Table::Column& column : table.columns)
        list.heads.append(To_Qt(Trim(column.head)));
    for (const std::vector<std::string>& row : table.rows)
        list.rows.push_back(In_Qt(row));
    return list;
}

QTableWidget* Table_of(const QString& name, const Report_Table& content)
{
    const paint::Printed_List list = Printed({}, content);
    const auto& rows = list.rows;
    auto* const table = new QTableWidget(static_cast<int>(rows.size()), static_cast<int>(list.heads.size()));
    table->setObjectName(name);
    table->setHorizontalHeaderLabels(list.heads);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);  // the arrow keys go through it, the tabulator past it
    for (int r = 0; r < static_cast<int>(rows.size()); ++r)
        for (int k = 0; k < list.heads.size(); ++k) {
            auto* const item = new QTableWidgetItem(rows[static_cast<std::size_t>(r)][k]);
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table->setItem(r, k, item);
        }
    return table;
}

}  // namespace

frm_Poly::frm_Poly(int segment, QWidget* parent)
    : Screen(QStringLiteral("frm_Poly"), QStringLiteral("Polynomial of segment %1").arg(segment), parent)
{
    const Motion_Group& m = design.motion;
    const Report_Table conditions = Condition_Table(design, segment);
    const Report_Table coefficients = Coefficient_Table(design, segment);
    QLabel* const heading =
        Label(QStringLiteral("lbl_Heading"),
              QStringLiteral("Boundary Conditions Selected and Resulting Displacement Equation Coefficients"));
    QFont bold = heading->font();
    bold.setWeight(QFont::DemiBold);
    heading->setFont(bold);
    QLabel* const place =
        Label(QStringLiteral("lbl_segment"),
              QStringLiteral("Segment %1    beta %2 deg    from %3 to %4 deg")
                  .arg(segment)
                  .arg(To_Qt(Shown(design, m.Beta_Deg(segment))), To_Qt(Shown(design, m.Shift(segment))),
                       To_Qt(Shown(design, m.Gamma(segment)))));
    auto* const title = new Entry(QStringLiteral("txt_Title"), QStringLiteral("A title for the print"));
    title->Takes_Words();
    title->setPlaceholderText(QStringLiteral("Title"));
    auto* const tables = new QWidget;
    tables->setObjectName(QStringLiteral("pct_Poly"));
    auto* const grid = new QGridLayout(tables);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Boundary Conditions Selected for this Polynomial")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Coefficients for S Equation with Theta/Beta as Variable")), 0, 1);
    grid->addWidget(Label(QStringLiteral("lbl_Imposed"), To_Qt(Conditions_Heading)), 1, 0);
    grid->addWidget(Label(QStringLiteral("lbl_Resulting"), To_Qt(Equation_Heading_of_Form)), 1, 1);
    grid->addWidget(Table_of(QStringLiteral("grd_Conditions"), conditions), 2, 0);
    grid->addWidget(Table_of(QStringLiteral("grd_Coefficients"), coefficients), 2, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Copy_Button());
    buttons->addWidget(Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print"), [this, conditions, coefficients] {
        if (!Refuse_Other_Units(design))
            paint::Print_Form(
                *this, {Printed(Conditions_Heading, conditions), Printed(Equation_Heading_of_Printer, coefficients)});
    }));
    buttons->addStretch();
    QPushButton* const done = Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); });
    buttons->addWidget(done);
    Body().addWidget(heading);
    Body().addWidget(place);
    Body().addWidget(title);
    Body().addWidget(tables, 1);
    Foot().addLayout(buttons);
    done->setFocus();
    Open_at({880, 420});
}

}  // namespace lobemax::screens
