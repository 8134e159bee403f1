// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Poly.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>

#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "paint/print.h"
#include "screens/desk.h"

namespace lobemax::screens {

namespace {

QTableWidget* Table_of(const QString& name, const QStringList& heads, const QList<QStringList>& rows)
{
    auto* const table = new QTableWidget(static_cast<int>(rows.size()), static_cast<int>(heads.size()));
    table->setObjectName(name);
    table->setHorizontalHeaderLabels(heads);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);  // the arrow keys go through it, the tabulator past it
    for (int r = 0; r < rows.size(); ++r)
        for (int k = 0; k < rows[r].size(); ++k) {
            auto* const item = new QTableWidgetItem(rows[r][k]);
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
    const int n = m.Total_No_of_BCs(segment);
    constexpr std::array functions{"S", "V", "A", "J", "Ping"};
    QList<QStringList> conditions;
    QList<QStringList> coefficients;
    for (int j = 1; j <= n; ++j) {
        const double x = m.Thetanorm(j, segment);
        const auto order = static_cast<std::size_t>(std::clamp<double>(m.Equation(j, segment), 0, 4));
        conditions.append({QString::fromUtf8(functions[order]), To_Qt(Shown(design, x * m.Beta_Deg(segment))),
                           To_Qt(Shown(design, x * 100.0)), To_Qt(Shown(design, m.Boundary(j, segment)))});
        coefficients.append({QString::number(j - 1), To_Qt(Shown(design, m.Coefficient(j, segment)))});
    }
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
    grid->addWidget(Table_of(QStringLiteral("grd_Conditions"),
                             {QStringLiteral("Function"), QStringLiteral("Theta"), QStringLiteral("% Beta"),
                              QStringLiteral("Boundary Cond.")},
                             conditions),
                    1, 0);
    grid->addWidget(Table_of(QStringLiteral("grd_Coefficients"),
                             {QStringLiteral("Exponent"), QStringLiteral("Coefficient")}, coefficients),
                    1, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Copy_Button());
    buttons->addWidget(Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print"), [this] {
        if (!Refuse_Other_Units(design))
            paint::Print_Form(*this);
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
