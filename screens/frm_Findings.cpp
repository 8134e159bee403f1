// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Findings.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "forms/finding_words.h"
#include "forms/findings_form.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_Limits.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Findings(), name);
}

QString At_Length(const Finding& finding)
{
    QStringList lines;
    for (const std::string& line : Lines_of(design, finding))
        lines.append(To_Qt(line));
    return lines.join(QLatin1Char('\n'));
}

/// A table whose Enter key leads on, as its double click does.
class Findings_Table : public QTableWidget {
public:
    std::function<void()> entered;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && entered)
            entered();
        else
            QTableWidget::keyPressEvent(event);
    }
};

}  // namespace

frm_Findings::frm_Findings(std::optional<Finding_Place> here, QWidget* parent)
    : Screen(QStringLiteral("frm_Findings"), To_Qt(Words_of("frm_Findings").caption), parent), here_(here)
{
    Chosen_Place().reset();
    Body().addWidget(Label(QStringLiteral("lbl_Count"), {}, To_Qt(Words_of("lbl_Count").tip)));
    auto* const table = new Findings_Table;
    table_ = table;
    table_->setObjectName(QStringLiteral("tbl_Findings"));
    table_->setToolTip(To_Qt(Words_of("tbl_Findings").tip));
    table_->setColumnCount(Finding_Columns);
    QStringList heads;
    for (const std::string_view head : Heads_of_Findings())
        heads.append(To_Qt(head));
    table_->setHorizontalHeaderLabels(heads);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->verticalHeader()->hide();
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->setMinimumHeight(120);
    table->entered = [this] { Run_Guarded_Key(*table_, [this] { Go(); }); };
    connect(table_, &QTableWidget::itemDoubleClicked, this, [this] { Run_Guarded_Key(*table_, [this] { Go(); }); });
    connect(table_, &QTableWidget::itemSelectionChanged, this, [this] { Show_Finding(); });
    Body().addWidget(table_, 3);
    text_ = new QPlainTextEdit;
    text_->setObjectName(QStringLiteral("txt_Finding"));
    text_->setToolTip(To_Qt(Words_of("txt_Finding").tip));
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setTabChangesFocus(true);
    text_->setMinimumHeight(7 * text_->fontMetrics().lineSpacing());
    Body().addWidget(text_, 2);
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](const char* name, std::function<void()> pressed) {
        buttons->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Close", [this] { reject(); });
    buttons->addStretch();
    add("cmd_CopyText", [] {
        QStringList all{To_Qt(Count_of_Findings(Desk_Check()))};
        for (const Finding& finding : Desk_Check().findings)
            all.append(At_Length(finding));
        QApplication::clipboard()->setText(all.join(QStringLiteral("\n\n")) + QLatin1Char('\n'));
    });
    add("cmd_Limits", [this] { Open_Limits(); });
    add("cmd_Help", [] { Open_Help(QStringLiteral("findings")); });
    buttons->addStretch();
    add("cmd_Go", [this] { Go(); });
    Foot().addLayout(buttons);
    Open_at({900, 520});
    Fill();
}

void frm_Findings::Fill()
{
    const lobemax::Check& check = Desk_Check();
    Control<QLabel>(QStringLiteral("lbl_Count")).setText(To_Qt(Count_of_Findings(check)));
    const Filling filling(*this);
    table_->setRowCount(static_cast<int>(check.findings.size()));
    int row = 0;
    for (const Finding& finding : check.findings) {
        const auto cells = Cells_of(design, finding);
        for (int column = 0; column < Finding_Columns; ++column) {
            auto* const cell = new QTableWidgetItem(To_Qt(cells.at(static_cast<std::size_t>(column))));
            cell->setToolTip(To_Qt(finding.sentence));
            if (column == 0 && Is_Grave(finding)) {
                QFont bold = table_->font();
                bold.setWeight(QFont::DemiBold);
                cell->setFont(bold);
            }
            table_->setItem(row, column, cell);
        }
        ++row;
    }
    table_->resizeColumnsToContents();
    if (row > 0)
        table_->selectRow(0);
    Show_Finding();
}

const Finding* frm_Findings::Chosen() const
{
    const auto& findings = Desk_Check().findings;
    const int row = table_->currentRow();
    return row >= 0 && row < static_cast<int>(findings.size()) ? &findings[static_cast<std::size_t>(row)] : nullptr;
}

void frm_Findings::Show_Finding()
{
    const Finding* const chosen = Chosen();
    text_->setPlainText(chosen == nullptr ? QString() : At_Length(*chosen));
    Control<QPushButton>(QStringLiteral("cmd_Go"))
        .setEnabled(chosen != nullptr && (chosen->place == here_ || May_Go(design, chosen->place)));
}

void frm_Findings::Go()
{
    const Finding* const chosen = Chosen();
    if (chosen == nullptr || !Control<QPushButton>(QStringLiteral("cmd_Go")).isEnabled())
        return;
    if (chosen->place != here_)
        Chosen_Place() = chosen->place;
    accept();
}

void frm_Findings::Open_Limits()
{
    frm_Limits limits(this);
    if (Run_Modal(limits) == QDialog::Accepted)
        Fill();
}

}  // namespace lobemax::screens
